#include "Hittabelle.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

// Empty for 0, so that a list shows what there is.
CString Dezimal(std::int64_t iWert, int iStellen) {
    return iWert == 0 ? CString() : DezimalZelle(iWert, iStellen);
}

// The point value of an insurer service, the factor of a private one.
CString Satz(const CBehHitLine & hit) {
    if (IstPrivatArt(hit.GOART)) return Dezimal(Zahl(hit.FAKTOR), 4);
    return hit.PUNKTWERT.IsZero() || !IstPunktArt(hit.GOART)
               ? CString()
               : Dezimal(Zahl(hit.PUNKTWERT.ToDb(0, true, false, 0, 0).Mid(1)), 4);
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
    EHitspalten eAb = EHitspalten::Kurz;
};
const SHitspalte HITSPALTEN[] = {
    {{"Datum", EZelle::Datum, 10}, [](const CBehHitLine & h) { return h.DATUM; }},
    {{"Patient", EZelle::Text, 10}, [](const CBehHitLine & h) { return Trim(h.PATNR); }},
    {{"Name", EZelle::Text, 22}, [](const CBehHitLine & h) { return h.PATNAME; }},
    {{"Beh", EZelle::Text, 4}, [](const CBehHitLine & h) { return Trim(h.BEHANDLERNR); }},
    {{"Praxis", EZelle::Text, 6}, [](const CBehHitLine & h) { return Trim(h.PRAXISNR); }, EHitspalten::Alle},
    {{"Kasse", EZelle::Text, 8}, [](const CBehHitLine & h) { return h.KASKUERZEL; }},
    {{"Art", EZelle::Text, 3}, [](const CBehHitLine & h) { return Buchstabe(h.ABRART); }},
    {{"GO", EZelle::Text, 2}, [](const CBehHitLine & h) { return Buchstabe(h.GOART); }},
    {{"Leistung", EZelle::Text, 8}, [](const CBehHitLine & h) { return h.LSTNR; }},
    {{"Zähne", EZelle::Text, 14}, [](const CBehHitLine & h) { return h.TEETH; }},
    {{"Menge", EZelle::Zahl, 7}, Menge},
    {{"Punkte", EZelle::Zahl, 8}, Punktzelle},
    {{"PW/Faktor", EZelle::Zahl, 9}, Satz},
    {{"Betrag", EZelle::Zahl, 10}, [](const CBehHitLine & h) { return BetragZelle(h.BETRAG); }},
    {{"Text", EZelle::Text, 34}, Leistungstext},
    {{"Betrag genau", EZelle::Zahl, 22, "", true},
     [](const CBehHitLine & h) { return GenauZelle(h.BETRAG); }},
};

std::vector<SAusgabespalte> Spalten(EHitspalten eSpalten) {
    std::vector<SAusgabespalte> v;
    for (const SHitspalte & spalte : HITSPALTEN)
        if (spalte.eAb <= eSpalten) v.push_back(spalte.spalte);
    return v;
}

} // namespace

CString Punktzelle(const CBehHitLine & hit) {
    if (IstGozArt(hit.GOART)) return hit.PUNKTE == 0 ? CString() : itoc(hit.PUNKTE);
    return Dezimal(hit.PUNKTE, 2);
}

CHittabelle::CHittabelle(CDokument & dokument, EHitspalten eSpalten)
    : m_eSpalten(eSpalten), m_vSpalten(Spalten(eSpalten)), m_ausgabe(dokument.Tabelle({}, m_vSpalten)) {}

void CHittabelle::Zeile(const CBehHitLine & hit) {
    std::vector<CString> vZellen;
    for (const SHitspalte & spalte : HITSPALTEN)
        if (spalte.eAb <= m_eSpalten) vZellen.push_back(spalte.pWert(hit));
    m_ausgabe.Zeile(vZellen);
}

} // namespace orvostat
