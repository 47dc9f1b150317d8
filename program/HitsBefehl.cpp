#include "HitsBefehl.h"

#include "Aufruf.h"
#include "Ausgabe.h"
#include "Datenbank.h"
#include "Hitbau.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/Leistungsarten.h"

#include <functional>
#include <iostream>
#include <map>
#include <memory>

namespace orvostat {

namespace {

struct SAuswahl {
    std::string sDatei;
    std::string sVon;
    std::string sBis;
    std::string sPatient;
    std::string sBehandler;
    int iLimit = 0; // 0 is all
    EFormat eFormat = EFormat::Tabelle;
};

// ---- what a hit shows

// Empty for 0, so that a list shows what there is.
CString Dezimal(std::int64_t iWert, int iStellen) {
    return iWert == 0 ? CString() : DezimalZelle(iWert, iStellen);
}

// The point value of an insurer service, the factor of a private one.
CString Satz(const CBehHitLine & hit) {
    if (IstPrivatArt(hit.GOART)) return Dezimal(Zahl(hit.FAKTOR), 4);
    return hit.PUNKTWERT.IsZero() ? CString()
                                  : Dezimal(Zahl(hit.PUNKTWERT.ToDb(0, true, false, 0, 0).Mid(1)), 4);
}

// Points of the private schedule are stored whole, all others in hundredths.
CString Punkte(const CBehHitLine & hit) {
    if (IstGozArt(hit.GOART)) return hit.PUNKTE == 0 ? CString() : itoc(hit.PUNKTE);
    return Dezimal(hit.PUNKTE, 2);
}

CString Menge(const CBehHitLine & hit) {
    if (hit.LSTNR.IsEmpty()) return {};
    return hit.ANZAHL % 100 == 0 ? itoc(hit.ANZAHL / 100) : Dezimal(hit.ANZAHL, 2);
}

CString Leistungstext(const CBehHitLine & hit) { return hit.TEXT.IsEmpty() ? hit.m_sGoText : hit.TEXT; }
CString Buchstabe(char c) { return c == 0 ? CString() : CString(c); }

struct SHitspalte {
    SAusgabespalte spalte;
    CString (*pWert)(const CBehHitLine &);
};
const SHitspalte HITSPALTEN[] = {
    {{"Datum", EZelle::Datum, 10}, [](const CBehHitLine & h) { return h.DATUM; }},
    {{"Patient", EZelle::Text, 10}, [](const CBehHitLine & h) { return Trim(h.PATNR); }},
    {{"Name", EZelle::Text, 22}, [](const CBehHitLine & h) { return h.PATNAME; }},
    {{"Beh", EZelle::Text, 4}, [](const CBehHitLine & h) { return Trim(h.BEHANDLERNR); }},
    {{"Kasse", EZelle::Text, 8}, [](const CBehHitLine & h) { return h.KASKUERZEL; }},
    {{"Art", EZelle::Text, 3}, [](const CBehHitLine & h) { return Buchstabe(h.ABRART); }},
    {{"GO", EZelle::Text, 2}, [](const CBehHitLine & h) { return Buchstabe(h.GOART); }},
    {{"Leistung", EZelle::Text, 8}, [](const CBehHitLine & h) { return h.LSTNR; }},
    {{"Zähne", EZelle::Text, 14}, [](const CBehHitLine & h) { return h.TEETH; }},
    {{"Menge", EZelle::Zahl, 7}, Menge},
    {{"Punkte", EZelle::Zahl, 8}, Punkte},
    {{"PW/Faktor", EZelle::Zahl, 9}, Satz},
    {{"Betrag", EZelle::Zahl, 10}, [](const CBehHitLine & h) { return BetragZelle(h.BETRAG); }},
    {{"Text", EZelle::Text, 34}, Leistungstext},
};

std::vector<SAusgabespalte> Spalten() {
    std::vector<SAusgabespalte> v;
    for (const SHitspalte & spalte : HITSPALTEN)
        v.push_back(spalte.spalte);
    return v;
}

void Gib(CAusgabe & ausgabe, const CBehHitLine & hit) {
    std::vector<CString> vZellen;
    for (const SHitspalte & spalte : HITSPALTEN)
        vZellen.push_back(spalte.pWert(hit));
    ausgabe.Zeile(vZellen);
}

// ---- the walk

CString Grenze(const std::string & sText, const CString & sOhne) {
    return sText.empty() ? sOhne : LiesDatum(sText);
}

CString PruefeBehandler(const std::string & sBehandler) {
    if (sBehandler.empty()) return {};
    CTLeb leb;
    leb.m_LEB = RightFix(AusUtf8(sBehandler), 4);
    if (leb.GetByK1() != 0) Verweigere("Einen Behandler \"" + sBehandler + "\" gibt es nicht.");
    return leb.m_LEB;
}

// Opens the treatments in key order, of one patient by his key.
int Oeffne(CTBeh & beh, const SAuswahl & auswahl, const CString & sVon, const CString & sBis) {
    if (auswahl.sPatient.empty()) return beh.GetAll();
    beh.m_PATNR = PruefePatient(auswahl.sPatient);
    beh.AddKeysBW(sVon, sBis);
    return beh.GetByK1(MATCH_ALLE);
}

void Zeige(const SAuswahl & auswahl) {
    const CString sVon = Grenze(auswahl.sVon, ERSTER_TAG);
    const CString sBis = Grenze(auswahl.sBis, LETZTER_TAG);
    const CPraxis praxis(auswahl.sDatei, EModus::Lesen);
    const CString sBehandler = PruefeBehandler(auswahl.sBehandler);
    const std::vector<SAusgabespalte> vSpalten = Spalten();
    const auto pAusgabe = CAusgabe::Neu(auswahl.eFormat, std::cout, vSpalten);
    CHitbau bau;
    CTBeh beh;
    int iHits = 0;
    int i = Oeffne(beh, auswahl, sVon, sBis);
    for (; i == ZEILE_OK && (auswahl.iLimit == 0 || iHits < auswahl.iLimit); i = beh.Next()) {
        Fortschritt(iHits, iHits);
        if (beh.m_DATUM < sVon || beh.m_DATUM > sBis ||
            (!sBehandler.IsEmpty() && beh.m_BEHANDLERNR != sBehandler))
            continue;
        Gib(*pAusgabe, bau.Baue(beh));
        ++iHits;
    }
    pAusgabe->Ende();
    if (i > ZEILE_KEINE) Verweigere("Die Behandlungen sind nicht vollständig lesbar.");
    if (auswahl.eFormat == EFormat::Tabelle)
        std::cout << '\n' << iHits << (iHits == 1 ? " Hit\n" : " Hits\n");
}

} // namespace

void FuegeHitsHinzu(CLI::App & app) {
    CLI::App * pBefehl = app.add_subcommand("hits", "Zeigt die Hits der Behandlungen, unbewertet");
    auto pAuswahl = std::make_shared<SAuswahl>();
    pBefehl->add_option("DATEI", pAuswahl->sDatei, "Die Praxisdatei")->required();
    pBefehl->add_option("--von", pAuswahl->sVon, "Erster Tag, TT.MM.JJJJ oder JJJJMMTT")->type_name("TAG");
    pBefehl->add_option("--bis", pAuswahl->sBis, "Letzter Tag")->type_name("TAG");
    pBefehl->add_option("--patient", pAuswahl->sPatient, "Nur dieser Patient")->type_name("NR");
    pBefehl->add_option("--behandler", pAuswahl->sBehandler, "Nur dieser Behandler")->type_name("NR");
    pBefehl->add_option("--limit", pAuswahl->iLimit, "Höchstens so viele Hits")
        ->check(Bereich(1, 1'000'000'000))
        ->type_name("ZAHL");
    OptionFormat(*pBefehl, pAuswahl->eFormat);
    pBefehl->callback([pAuswahl] { Zeige(*pAuswahl); });
}

} // namespace orvostat
