#include "Leistungstabellen.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <utility>

namespace orvostat {

namespace {

constexpr int BREITE_NAME = 34;
constexpr int BREITE_ZAHL = 14;

// Hundredths as a cell with two places.
CString Hundertstel(std::int64_t i) { return DezimalZelle(i, 2); }

} // namespace

CString Zahlername(char c) {
    switch (c) {
    case '0':
        return "Kasse";
    case '1':
        return "Privat";
    default:
        return "Sonstige"_t;
    }
}

// The class of a group in words is the name of its kind; the letter stands before it.
CString Artname(CStatAccu & accu, const CLSLstGrp & grp) {
    const CString sName = accu.GetLstGrpName(grp.m_cGoTyp == 'T' ? 'T' : 'K', grp.m_cStatArt);
    const CString sArt(grp.m_cStatArt);
    return sName.IsEmpty() ? sArt : sArt + " " + sName;
}

CString Behandlername(CStatAccu & accu, const CString & sNr) {
    const int i = accu.FindLeb(sNr);
    return i < 0 ? sNr : accu.m_vLeb[static_cast<std::size_t>(i)].GetLebLine();
}

void OrdneNachQuartalen(std::vector<CBehHitLine> & vHits) {
    // Hits are large: their places are sorted, and each hit is moved once, along the cycles of the new order.
    std::vector<std::pair<CString, std::size_t>> vOrdnung;
    vOrdnung.reserve(vHits.size());
    for (const CBehHitLine & hit : vHits)
        vOrdnung.emplace_back(DbDate2Quartal(hit.DATUM), vOrdnung.size());
    if (std::ranges::is_sorted(vOrdnung)) return;
    std::ranges::sort(vOrdnung);
    for (std::size_t i = 0; i < vHits.size(); ++i) {
        if (vOrdnung[i].second == i) continue;
        CBehHitLine erster = std::move(vHits[i]);
        std::size_t iLeer = i;
        for (std::size_t iVon; (iVon = std::exchange(vOrdnung[iLeer].second, iLeer)) != i; iLeer = iVon)
            vHits[iLeer] = std::move(vHits[iVon]);
        vHits[iLeer] = std::move(erster);
    }
}

void LadeNormen(CPx100F & px, const CStatAccu & accu) {
    CString sVon = accu.GetAbDatum();
    CString sBis = accu.GetBisDatum();
    if (const auto & vHits = accu.m_vBehHits; !vHits.empty()) {
        const auto [itErster, itLetzter] = std::ranges::minmax_element(vHits, {}, &CBehHitLine::DATUM);
        if (sVon.IsEmpty()) sVon = itErster->DATUM;
        if (sBis.IsEmpty()) sBis = itLetzter->DATUM;
    }
    px.LoadBudgets(sVon, sBis);
}

const char * Auslassgrund(const CLSSum & sum, const CBehHitLine & hit, const CString & sPraxis) {
    if (sum.TestBehSelOk(hit, sPraxis)) return nullptr;
    if (hit.GOSTATISTIKART == 0) return "ohne Statistikart";
    if (hit.LSTIN.IsEmpty()) return "ohne Leistung";
    return !sPraxis.IsEmpty() && hit.PRAXISNR != sPraxis ? "anderer Praxisinhaber" : "nicht zu zählen";
}

namespace {

// ---- practice and treaters

const SAusgabespalte PRAXISSPALTEN[] = {
    {"Kostenträger", EZelle::Text, BREITE_NAME},          {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
    {"Leistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"},     {"Art k", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Labor/Material", EZelle::Zahl, BREITE_ZAHL, "EUR"}, {"Abzug", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Gesamt", EZelle::Zahl, BREITE_ZAHL, "EUR"},         {"Netto", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
};

void SchreibePraxis(CDokument & dokument, const CLSPxLstGrp & px) {
    CAusgabe & tabelle = dokument.Tabelle("Praxis", PRAXISSPALTEN);
    const auto Zeile = [](const CString & sName, const CLSLst & std, const CLSLst & k, const CLSLst & lm,
                          const CDBetrag & abz, const CLSLst & ges, const CLSLst & netto,
                          const CString & sAnteil) {
        return std::vector<CString>{sName,
                                    Hundertstel(ges.ANZAHL),
                                    BetragZelle(std.BETRAG),
                                    BetragZelle(k.BETRAG),
                                    BetragZelle(lm.BETRAG),
                                    BetragZelle(abz),
                                    BetragZelle(ges.BETRAG),
                                    BetragZelle(netto.BETRAG),
                                    sAnteil};
    };
    const auto Anteil = [](const CLSLst & ges) { return Hundertstel(ges.ANTEILPRAXIS); };
    tabelle.Zeile(Zeile(Zahlername('0'), px.m_KasseStd, px.m_KasseK, px.m_KasseLM, px.m_KasseAbz.BETRAG,
                        px.m_KasseGes, px.m_KasseNetto, Anteil(px.m_KasseGes)));
    tabelle.Zeile(Zeile(Zahlername('1'), px.m_PrivatStd, px.m_PrivatK, px.m_PrivatLM, px.m_PrivatAbz.BETRAG,
                        px.m_PrivatGes, px.m_PrivatNetto, Anteil(px.m_PrivatGes)));
    tabelle.Zeile(Zeile(Zahlername('2'), px.m_SonstStd, px.m_SonstK, px.m_SonstLM, px.m_SonstAbz.BETRAG,
                        px.m_SonstGes, px.m_SonstNetto, Anteil(px.m_SonstGes)));
    CDBetrag abz(px.m_KasseAbz.BETRAG);
    abz += px.m_PrivatAbz.BETRAG;
    abz += px.m_SonstAbz.BETRAG;
    tabelle.Summe(Zeile("Gesamt", px.m_SumStd, px.m_SumK, px.m_SumLM, abz, px.m_Gesamt, px.m_SumNetto, {}));
    tabelle.Ende();
}

const SAusgabespalte BEHANDLERSPALTEN[] = {
    {"Behandler", EZelle::Text, BREITE_NAME},       {"Tage", EZelle::Zahl, BREITE_ZAHL},
    {"Anzahl", EZelle::Zahl, BREITE_ZAHL},          {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Kasse", EZelle::Zahl, BREITE_ZAHL, "EUR"},    {"Kasse Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Privat", EZelle::Zahl, BREITE_ZAHL, "EUR"},   {"Privat Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Sonstige", EZelle::Zahl, BREITE_ZAHL, "EUR"}, {"Sonstige Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
};

void SchreibeBehandler(CDokument & dokument, CStatAccu & accu, const CLSSum & sum) {
    const std::map<std::int32_t, std::int32_t> mapTage(sum.m_vBehTage.begin(), sum.m_vBehTage.end());
    const auto Tage = [&](int iNr) {
        const auto it = mapTage.find(iNr);
        return it == mapTage.end() ? CString() : itoc(it->second);
    };
    CAusgabe & tabelle = dokument.Tabelle("Behandler", BEHANDLERSPALTEN);
    const auto Zeile = [&](const CString & sName, int iNr, const auto & t) {
        return std::vector<CString>{sName,
                                    Tage(iNr),
                                    Hundertstel(t.m_Gesamt.ANZAHL),
                                    BetragZelle(t.m_Gesamt.BETRAG),
                                    BetragZelle(t.m_KasseGes.BETRAG),
                                    Hundertstel(t.m_KasseGes.ANTEILPRAXIS),
                                    BetragZelle(t.m_PrivatGes.BETRAG),
                                    Hundertstel(t.m_PrivatGes.ANTEILPRAXIS),
                                    BetragZelle(t.m_SonstGes.BETRAG),
                                    Hundertstel(t.m_SonstGes.ANTEILPRAXIS)};
    };
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        tabelle.Zeile(Zeile(Behandlername(accu, beh.BEHANDLERNR), Zahl(beh.BEHANDLERNR), beh));
    tabelle.Summe(Zeile("Gesamt", 0, sum.m_Praxis));
    tabelle.Ende();
}

// ---- groups

const SAusgabespalte GRUPPENSPALTEN[] = {
    {"Kostenträger", EZelle::Text, BREITE_NAME},
    {"Statistikart", EZelle::Text, BREITE_NAME},
    {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
    {"Kassenpunkte", EZelle::Zahl, BREITE_ZAHL},
    {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Betrag genau", EZelle::Zahl, BREITE_ZAHL, "EUR", true},
    {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"},
};

// Points of the insurers' services only: those of private schedules are of another worth.
std::vector<CString> Werte(const CLSLst & lst, char cZahler = 0) {
    return {Hundertstel(lst.ANZAHL), cZahler == '0' ? Hundertstel(lst.PUNKTE) : CString(),
            BetragZelle(lst.BETRAG), GenauZelle(lst.BETRAG)};
}

std::vector<CString> Reihe(std::vector<CString> vKopf, const std::vector<CString> & vWerte,
                           std::initializer_list<CString> vAnteile) {
    vKopf.insert(vKopf.end(), vWerte.begin(), vWerte.end());
    vKopf.insert(vKopf.end(), vAnteile);
    return vKopf;
}

void SchreibeNachArt(CDokument & dokument, CStatAccu & accu, const CLSPxLstGrp & px) {
    CAusgabe & tabelle = dokument.Tabelle("Nach Statistikart", GRUPPENSPALTEN);
    for (const CLSLstGrp & grp : px.m_vLstGrp)
        tabelle.Zeile(Reihe({Zahlername(grp.m_cZahler), Artname(accu, grp)}, Werte(grp.m_Sum, grp.m_cZahler),
                            {Hundertstel(grp.m_Sum.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", ""}, Werte(px.m_Gesamt), {CString()}));
    tabelle.Ende();
}

// Buckets of each payer, each with its share of the practice's bucket.
void SchreibeNachZahler(CDokument & dokument, const CLSPxLstGrp & px) {
    static const SAusgabespalte SPALTEN[] = {{"Kostenträger", EZelle::Text, BREITE_NAME},
                                             {"Bereich", EZelle::Text, BREITE_NAME},
                                             {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                                             {"Kassenpunkte", EZelle::Zahl, BREITE_ZAHL},
                                             {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Betrag genau", EZelle::Zahl, BREITE_ZAHL, "EUR", true},
                                             {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"}};
    const struct {
        char cZahler;
        std::array<const CLSLst *, 6> apSummen;
    } aZahler[] = {
        {'0',
         {&px.m_KasseStd, &px.m_KasseK, &px.m_KasseLM, &px.m_KasseAbz, &px.m_KasseGes, &px.m_KasseNetto}},
        {'1',
         {&px.m_PrivatStd, &px.m_PrivatK, &px.m_PrivatLM, &px.m_PrivatAbz, &px.m_PrivatGes,
          &px.m_PrivatNetto}},
        {'2',
         {&px.m_SonstStd, &px.m_SonstK, &px.m_SonstLM, &px.m_SonstAbz, &px.m_SonstGes, &px.m_SonstNetto}}};
    const std::array<CString, 6> asBereich = {"Leistungen"_t, "Art k",  "Labor/Material"_t,
                                              "Abzug",        "Gesamt", "Netto"};
    CAusgabe & tabelle = dokument.Tabelle("Nach Kostenträger", SPALTEN);
    for (const auto & zahler : aZahler)
        for (std::size_t i = 0; i < asBereich.size(); ++i)
            if (const CLSLst & lst = *zahler.apSummen[i]; lst.ANZAHL != 0)
                tabelle.Zeile(Reihe({Zahlername(zahler.cZahler), asBereich[i]}, Werte(lst, zahler.cZahler),
                                    {Hundertstel(lst.ANTEILPRAXIS)}));
    tabelle.Ende();
}

void SchreibeNachBehandler(CDokument & dokument, CStatAccu & accu, const CLSSum & sum) {
    static const SAusgabespalte SPALTEN[] = {{"Behandler", EZelle::Text, BREITE_NAME},
                                             {"Kostenträger", EZelle::Text, BREITE_NAME},
                                             {"Statistikart", EZelle::Text, BREITE_NAME},
                                             {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                                             {"Kassenpunkte", EZelle::Zahl, BREITE_ZAHL},
                                             {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Betrag genau", EZelle::Zahl, BREITE_ZAHL, "EUR", true},
                                             {"Anteil Behandler", EZelle::Zahl, BREITE_ZAHL, "%"},
                                             {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"}};
    CAusgabe & tabelle = dokument.Tabelle("Nach Behandler und Statistikart", SPALTEN);
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        for (const CLSLstGrp & grp : beh.m_vLstGrp)
            tabelle.Zeile(
                Reihe({Behandlername(accu, beh.BEHANDLERNR), Zahlername(grp.m_cZahler), Artname(accu, grp)},
                      Werte(grp.m_Sum, grp.m_cZahler),
                      {Hundertstel(grp.m_Sum.ANTEILBEH), Hundertstel(grp.m_Sum.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", "", ""}, Werte(sum.m_Praxis.m_Gesamt), {CString(), CString()}));
    tabelle.Ende();
}

void SchreibeNachLeistung(CDokument & dokument, CStatAccu & accu, const CLSPxLstGrp & px) {
    static const SAusgabespalte SPALTEN[] = {{"Kostenträger", EZelle::Text, BREITE_NAME},
                                             {"Statistikart", EZelle::Text, BREITE_NAME},
                                             {"Leistung", EZelle::Text, BREITE_NAME},
                                             {"Kürzel", EZelle::Text, BREITE_NAME},
                                             {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                                             {"Kassenpunkte", EZelle::Zahl, BREITE_ZAHL},
                                             {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Betrag genau", EZelle::Zahl, BREITE_ZAHL, "EUR", true},
                                             {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"}};
    CAusgabe & tabelle = dokument.Tabelle("Nach Leistung", SPALTEN);
    for (const CLSLstGrp & grp : px.m_vLstGrp)
        for (const CLSLst & lst : grp.m_vLst)
            tabelle.Zeile(Reihe({Zahlername(grp.m_cZahler), Artname(accu, grp), lst.LSTNR, lst.LSTKUERZEL},
                                Werte(lst, grp.m_cZahler), {Hundertstel(lst.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", "", "", ""}, Werte(px.m_Gesamt), {CString()}));
    tabelle.Ende();
}

// Why the statistic has fewer hits than the run.
void SchreibeAusgelassene(CDokument & dokument, const CStatAccu & accu, const CLSSum & sum,
                          const CString & sPraxis) {
    std::map<std::string, int> mapGrund;
    for (const CBehHitLine & hit : accu.m_vBehHits)
        if (const char * pGrund = Auslassgrund(sum, hit, sPraxis)) ++mapGrund[pGrund];
    std::string sSatz;
    for (const auto & [sGrund, iAnzahl] : mapGrund)
        sSatz += (sSatz.empty() ? "Nicht in der Statistik: " : ", ") + std::to_string(iAnzahl) + ' ' + sGrund;
    if (!sSatz.empty()) dokument.Satz(sSatz + '.');
}

} // namespace

void SchreibeLeistungen(CDokument & dokument, CStatAccu & accu, const CLSSum & sum, const CString & sPraxis,
                        ELeistungNach eNach) {
    SchreibePraxis(dokument, sum.m_Praxis);
    SchreibeBehandler(dokument, accu, sum);
    switch (eNach) {
    case ELeistungNach::Art:
        SchreibeNachArt(dokument, accu, sum.m_Praxis);
        break;
    case ELeistungNach::Zahler:
        SchreibeNachZahler(dokument, sum.m_Praxis);
        break;
    case ELeistungNach::Behandler:
        SchreibeNachBehandler(dokument, accu, sum);
        break;
    case ELeistungNach::Leistung:
        SchreibeNachLeistung(dokument, accu, sum.m_Praxis);
        break;
    }
    dokument.Satz(itoc(sum.m_Praxis.m_iAnzFaelle).Utf8() +
                  (sum.m_Praxis.m_iAnzFaelle == 1 ? " Fall." : " Fälle."));
    SchreibeAusgelassene(dokument, accu, sum, sPraxis);
    dokument.Satz(
        "Anteile sind auf Hundertstel gerundet und stehen gegen die Summe des eigenen Bereichs; Beträge "
        "bis 0 haben keinen. So ergeben sie zusammen nicht immer 100 %.");
}

// ---- hundred cases

namespace {

constexpr const char * SPALTENNAMEN[] = {"Gesamt", "VDAK",       "VDAK primär", "VDAK fremd",
                                         "RVO",    "RVO primär", "RVO fremd",   "Gruppe 9"};
static_assert(std::size(SPALTENNAMEN) == SPALTEN_100F);

// Own and foreign insurers apart are shown on demand only, an empty column never.
bool Gezeigt(const CPx100F & px, std::size_t i, const SHundertwahl & wahl) {
    const bool bTeil = i == SPALTE_VDAK_PRIMAER || i == SPALTE_VDAK_FREMD || i == SPALTE_RVO_PRIMAER ||
                       i == SPALTE_RVO_FREMD;
    return !px.m_aSpalten[i].m_vLst.empty() && (wahl.bAlleSpalten || !bTeil);
}

void SchreibeSpalten(CDokument & dokument, const CPx100F & px) {
    static const SAusgabespalte SPALTEN[] = {{"Spalte", EZelle::Text, BREITE_NAME},
                                             {"Fälle", EZelle::Zahl, BREITE_ZAHL},
                                             {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                                             {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Hauptleistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Nebenleistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"}};
    CAusgabe & tabelle = dokument.Tabelle("Spalten", SPALTEN);
    for (std::size_t i = 0; i < SPALTEN_100F; ++i) {
        const CKasArt100F & spalte = px.m_aSpalten[i];
        tabelle.Zeile({AusUtf8(SPALTENNAMEN[i]), itoc(spalte.m_iAnzFaelle),
                       Hundertstel(spalte.m_Gesamt.ANZAHL), BetragZelle(spalte.m_Gesamt.BETRAG),
                       BetragZelle(spalte.m_Hauptleistung.BETRAG),
                       BetragZelle(spalte.m_Nebenleistung.BETRAG)});
    }
    tabelle.Ende();
}

void SchreibeSpalte(CDokument & dokument, const CKasArt100F & spalte, const std::string & sName,
                    const SHundertwahl & wahl) {
    static const SAusgabespalte SPALTEN[] = {
        {"Kürzel", EZelle::Text, BREITE_NAME},          {"Leistung", EZelle::Text, BREITE_NAME},
        {"Anzahl", EZelle::Zahl, BREITE_ZAHL},          {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
        {"je 100 Fälle", EZelle::Zahl, BREITE_ZAHL},    {"Norm", EZelle::Zahl, BREITE_ZAHL},
        {"Abweichung", EZelle::Zahl, BREITE_ZAHL, "%"}, {"Differenz", EZelle::Zahl, BREITE_ZAHL},
        {"Hinweis", EZelle::Text, BREITE_NAME}};
    CAusgabe & tabelle = dokument.Tabelle(sName, SPALTEN);
    for (const CLSLst & lst : spalte.m_vLst) {
        if (lst.m_iF100Soll == 0 && !wahl.bAlleZeilen) continue;
        const bool bUeber = wahl.iGrenze > 0 && lst.m_iF100Abweichung > wahl.iGrenze * 100;
        tabelle.Zeile({lst.LSTKUERZEL, lst.LSTNR, Hundertstel(lst.ANZAHL), Hundertstel(lst.m_iAnteilAnz),
                       Hundertstel(lst.m_iAnzJe100Fall),
                       lst.m_iF100Soll == 0 ? CString() : Hundertstel(lst.m_iF100Soll),
                       lst.m_iF100Soll == 0 ? CString() : Hundertstel(lst.m_iF100Abweichung),
                       lst.m_iF100Soll == 0 ? CString() : itoc(lst.m_iAnzDiff),
                       bUeber ? "über der Grenze"_t : CString()});
    }
    tabelle.Ende();
}

// "F3 F4/F1" as " F3 F4 " and " F1 ".
CVerhLst Verhaeltnis(const SSelectPool & eintrag) {
    const int iTrenner = eintrag.m_sExtra.Find('/');
    if (iTrenner < 0) return {};
    return {" " + eintrag.m_sExtra.Left(iTrenner) + " ", " " + eintrag.m_sExtra.Mid(iTrenner + 1) + " "};
}

std::vector<SSelectPool *> Verhaeltniseintraege() {
    std::vector<SSelectPool *> v;
    GetSPEntries("verhaeltnis"_t, v);
    return v;
}

void SchreibeVerhaeltnisse(CDokument & dokument, const CPx100F & px, const SHundertwahl & wahl) {
    static const SAusgabespalte SPALTEN[] = {{"Verhältnis", EZelle::Text, 50},
                                             {"Spalte", EZelle::Text, BREITE_NAME},
                                             {"Zähler", EZelle::Zahl, BREITE_ZAHL},
                                             {"Nenner", EZelle::Zahl, BREITE_ZAHL},
                                             {"je 100", EZelle::Zahl, BREITE_ZAHL}};
    const std::vector<SSelectPool *> vEintraege = Verhaeltniseintraege();
    if (vEintraege.empty()) return;
    CAusgabe & tabelle = dokument.Tabelle("Verhältnisse", SPALTEN);
    for (std::size_t iVerh = 0; iVerh < vEintraege.size(); ++iVerh)
        for (std::size_t i = 0; i < SPALTEN_100F; ++i) {
            if (!Gezeigt(px, i, wahl) || iVerh >= px.m_aSpalten[i].m_vVerh.size()) continue;
            const auto [iZaehler, iNenner] = px.m_aSpalten[i].m_vVerh[iVerh];
            tabelle.Zeile({vEintraege[iVerh]->m_sText, AusUtf8(SPALTENNAMEN[i]), Hundertstel(iZaehler),
                           Hundertstel(iNenner),
                           iNenner == 0 ? CString() : Hundertstel(MulDiv(10000, iZaehler, iNenner))});
        }
    tabelle.Ende();
}

} // namespace

void LadeVerhaeltnisse() {
    CKasArt100F::s_vVerhLst.clear();
    for (const SSelectPool * pEintrag : Verhaeltniseintraege())
        CKasArt100F::s_vVerhLst.push_back(Verhaeltnis(*pEintrag));
}

void SchreibeHundert(CDokument & dokument, const CLSSum & sum, const SHundertwahl & wahl) {
    const CPx100F & px = sum.m_100F;
    SchreibeSpalten(dokument, px);
    for (std::size_t i = 0; i < SPALTEN_100F; ++i)
        if (Gezeigt(px, i, wahl)) SchreibeSpalte(dokument, px.m_aSpalten[i], SPALTENNAMEN[i], wahl);
    SchreibeVerhaeltnisse(dokument, px, wahl);
    if (px.m_mBudgets.empty() || !wahl.bAlleZeilen)
        dokument.Satz(
            "Gezeigt sind Leistungen mit Norm; der Anteil steht gegen alle Leistungen der Spalte Gesamt.");
}

// ---- insurers

namespace {

// The selections of insurers that the program knows.
constexpr KAS_GRP_SEL SELEKTIONEN[] = {
    {"Prim\xE4rkassen", "", STATKASGRP_1, "", "", ""},
    {"Ersatzkassen", "", STATKASGRP_2, "", "", ""},
    {"AOK", "", STATKASGRP_KEINE, "a", "", ""},
    {"BKK", "", STATKASGRP_KEINE, "b", "", ""},
    {"IKK", "", STATKASGRP_KEINE, "i", "", ""},
    {"Fremdkassen", "", STATKASGRP_KEINE, "", "", "1"},
    {"\xDC"
     "brige",
     "", STATKASGRP_9, "", "", ""},
};

const SAusgabespalte KASSENSPALTEN[] = {
    {"Praxis", EZelle::Text, BREITE_NAME},
    {"Kasse", EZelle::Text, BREITE_NAME},
    {"Art", EZelle::Text, BREITE_NAME},
    {"Gruppe", EZelle::Text, BREITE_NAME},
    {"fremd", EZelle::Text, BREITE_NAME},
    {"Fälle", EZelle::Zahl, BREITE_ZAHL},
    {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
    {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"je Fall", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"über Kasse", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"},
};

std::vector<CString> Kassenzeile(const CLSKasLstGrp & kas, bool bEine) {
    const CString sGruppe =
        kas.KASSENGRP == STATKASGRP_KEINE ? CString() : CString(static_cast<char>(kas.KASSENGRP));
    CDBetrag jeFall(kas.m_Gesamt.BETRAG);
    if (kas.m_iAnzFaelle != 0) jeFall /= kas.m_iAnzFaelle;
    return {bEine ? kas.PRAXISNR : CString(),
            kas.KASKUERZEL,
            bEine ? kas.KASSENART : CString(),
            bEine ? sGruppe : CString(),
            CString(bEine && kas.FREMDKASSE ? "ja" : ""),
            itoc(kas.m_iAnzFaelle),
            Hundertstel(kas.m_Gesamt.ANZAHL),
            BetragZelle(kas.m_Gesamt.BETRAG),
            kas.m_iAnzFaelle == 0 ? CString() : BetragZelle(jeFall),
            BetragZelle(kas.m_KasseGes.BETRAG),
            Hundertstel(kas.m_KasseGes.ANTEILKAS),
            Hundertstel(kas.m_KasseGes.ANTEILPRAXIS)};
}

} // namespace

void SchreibeKassen(CDokument & dokument, CLSSum & sum, const CString & sPraxis, const SKassenwahl & wahl) {
    CAusgabe & kassen = dokument.Tabelle("Kassen", KASSENSPALTEN);
    for (const CLSKasLstGrp & kas : sum.m_vKas)
        if (wahl.sKuerzel.IsEmpty() || kas.KASKUERZEL == wahl.sKuerzel) kassen.Zeile(Kassenzeile(kas, true));
    CLSKasLstGrp gesamt(sum.m_KasSum);
    gesamt.KASKUERZEL = "Gesamt";
    kassen.Summe(Kassenzeile(gesamt, false));
    kassen.Ende();

    CAusgabe & selektionen = dokument.Tabelle("Auswahlen von Kassen", KASSENSPALTEN);
    std::vector<CFallJeQuartal> vFaelle;
    for (const KAS_GRP_SEL & selektion : SELEKTIONEN) {
        sum.AnalyseForKasSel(sPraxis, sum.m_vKas, sum.m_KasSel, vFaelle, selektion, wahl.sKuerzel,
                             wahl.bFremdGrp1, wahl.bFremdGrp2);
        sum.m_KasSel.KASKUERZEL = CString(std::string_view(selektion.m_szName));
        selektionen.Zeile(Kassenzeile(sum.m_KasSel, false));
    }
    selektionen.Ende();
    dokument.Satz(
        "Eine Kasse kann in mehreren Auswahlen stehen oder in keiner; sie ergeben zusammen nicht die Summe. "
        "Der Anteil ist das über die Kasse Abgerechnete am Ganzen der Kasse, der Anteil Praxis am Ganzen "
        "aller Kassen.");
}

} // namespace orvostat
