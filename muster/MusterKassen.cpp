#include "MusterKassen.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <string>

namespace orvostat {

namespace {

// A family of insurers. BKVKASNR is the group digit, two digits of the association and nine of its own.
struct SKassenart {
    int iAnzahl;
    EKostentraeger eTraeger;
    char cGoArt;
    const char * pKuerzel;
    const char * pName;
    const char * pPwGrp;
    char cGruppe;            // 0: no modern number
    char cArt;               // KASSENART
    const char * pStatistik; // in the practice's own region, in another
    const char * pStatistikFremd;
    const char * pMedStatistik;
    const char * pKasKz;
};
constexpr SKassenart KASSENARTEN[] = {
    {14, EKostentraeger::Gesetzlich, 'k', "AOK", "Regionalkasse", "aok", '1', 'a', "1", "2", "1", "1"},
    {8, EKostentraeger::Gesetzlich, 'k', "EK", "Ersatzkasse", "ersatz", '2', '7', "4", "5", "2", "1"},
    {12, EKostentraeger::Gesetzlich, 'k', "BKKÖ", "Betriebskasse", "bkk", '1', 'b', "1", "2", "1", "1"},
    {5, EKostentraeger::Gesetzlich, 'k', "IKK", "Innungskasse", "ikk", '1', 'i', "1", "2", "1", "1"},
    {1, EKostentraeger::Gesetzlich, 'k', "LKK", "Landwirtschaftskasse", "lkk", '0', 'l', "1", "2", "1", "1"},
    {1, EKostentraeger::Gesetzlich, 'k', "KNAPP", "Knappschaft", "knapp", 0, 'k', "1", "2", "1", "1"},
    {14, EKostentraeger::Privat, 'q', "PKV", "Private Krankenversicherung", "", 0, 'p', "6", "6", "9", ""},
    {2, EKostentraeger::Sonstiger, 'e', "BWÄ", "Fürsorge Heer", "sonst", '9', 's', "9", "9", "9", "2"},
    {1, EKostentraeger::Sonstiger, 'f', "POL", "Fürsorge Ordnungsdienst", "sonst", '9', 's', "9", "9", "9",
     "1"},
    {1, EKostentraeger::Sonstiger, 'h', "SOZ", "Hilfe Kreis Mühlgau", "sonst", 0, 's', "9", "9", "9", "2"},
    {1, EKostentraeger::Sonstiger, 'u', "UNF", "Unfallträger Süd", "sonst", 0, 's', "9", "9", "9", "1"},
};

// Dental associations: invented numbers and regions, two of them one region.
struct SBezirk {
    const char * pNr;
    const char * pName;
    const char * pRegion;
};
constexpr SBezirk BEZIRKE[] = {{"02", "Nordmark", "02"}, {"06", "Seeland", "06"},
                               {"11", "Mühlgau", "11"},  {"12", "Mühlgau-Süd", "11"},
                               {"37", "Westerau", "37"}, {"55", "Ostfelde", "55"}};
constexpr const char * EIGENER_BEZIRK = "11";

CTOrvoKas_Fields ErsteZeile(const SKassenart & art, int iNr, const SBezirk & bezirk) {
    CTOrvoKas_Fields zeile;
    const std::string sNr = std::to_string(iNr);
    const bool bEigener = bezirk.pRegion == std::string_view(EIGENER_BEZIRK);
    zeile.m_KASKUERZEL = AusUtf8(art.pKuerzel + (iNr < 10 ? "0" + sNr : sNr));
    zeile.m_KASFELD0 = AusUtf8(std::string(art.pName) + " " + bezirk.pName + " " + sNr);
    zeile.m_GUELTIGAB = "20020101";
    zeile.m_KASFLAG1 = CString(art.eTraeger == EKostentraeger::Gesetzlich ? '1' : '0');
    zeile.m_KASSENPWGRP = CString(art.pPwGrp);
    zeile.m_KASIK = CString(std::string_view("10" + std::to_string(1000000 + iNr * 7919 + art.cArt * 31)));
    if (art.cGruppe != 0)
        zeile.m_BKVKASNR = CString(
            std::string_view(art.cGruppe + std::string(bezirk.pNr) + std::to_string(400000000 + iNr)));
    zeile.m_KASSENART = CString(art.cArt);
    zeile.m_KASSORT = CMxField::MakeKY(zeile.m_KASFELD0, 12);
    zeile.m_KASSTATISTIKART = CString(bEigener ? art.pStatistik : art.pStatistikFremd);
    zeile.m_KASMEDSTATISTIKART = CString(art.pMedStatistik);
    zeile.m_KASKZ = CString(art.pKasKz);
    return zeile;
}

// A later row: mostly something that does not matter to a statistic, sometimes nothing at all, sometimes a merger into
// another group of point values.
CTOrvoKas_Fields SpaetereZeile(CTOrvoKas_Fields zeile, int iJahr, CZufall & zufall) {
    static constexpr const char * QUARTALE[] = {"0101", "0401", "0701", "1001"};
    zeile.m_GUELTIGAB = CString(std::string_view(std::to_string(iJahr) + zufall.Eines(QUARTALE)));
    switch (zufall.Unter(4)) {
    case 0:
        zeile.m_KASFELD1 = itoc(zufall.Zwischen(100, 999));
        break;
    case 1:
        zeile.m_KASFELD2 = itoc(zufall.Zwischen(10, 99));
        break;
    case 2:
        if (zeile.m_KASSENPWGRP == "bkk") zeile.m_KASSENPWGRP = "ikk";
        break;
    default:
        break;
    }
    return zeile;
}

SMusterKasse Kasse(const SKassenart & art, int iNr, CZufall & zufall) {
    const SBezirk & bezirk = zufall.Prozent(70) ? BEZIRKE[2] : zufall.Eines(BEZIRKE);
    SMusterKasse kasse{
        CString(), art.eTraeger, art.cGoArt, std::max(2, 40 / iNr), {ErsteZeile(art, iNr, bezirk)}};
    kasse.sKuerzel = kasse.vZeilen[0].m_KASKUERZEL;
    for (int iJahr = 2004; iJahr < 2026; iJahr += zufall.Zwischen(3, 9))
        kasse.vZeilen.push_back(SpaetereZeile(kasse.vZeilen.back(), iJahr, zufall));
    return kasse;
}

} // namespace

CMusterKassen::CMusterKassen(std::uint64_t iSaat) {
    CZufall zufall(iSaat, 0);
    for (const SKassenart & art : KASSENARTEN)
        for (int i = 1; i <= art.iAnzahl; ++i)
            m_vKassen[static_cast<int>(art.eTraeger)].push_back(Kasse(art, i, zufall));
}

const SMusterKasse & CMusterKassen::Ziehe(EKostentraeger eTraeger, CZufall & zufall) const {
    return zufall.Gewichtet(m_vKassen[static_cast<int>(eTraeger)]);
}

void CMusterKassen::Schreibe(CMusterSchreiber & schreiber) const {
    for (const auto & vKassen : m_vKassen)
        for (const SMusterKasse & kasse : vKassen)
            schreiber.Schreibe(kasse.vZeilen);
    for (const SBezirk & bezirk : BEZIRKE)
        schreiber.Schreibe(
            CTKzv_Fields{CString(bezirk.pNr), AusUtf8(bezirk.pName), "10000", CString(bezirk.pRegion)});
}

} // namespace orvostat
