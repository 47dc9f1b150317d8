#include "Weggelassenes.h"

#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

constexpr SAusgabespalte SPALTEN[] = {
    {"Datum", EZelle::Datum, 10},
    {"Patient", EZelle::Text, 10},
    {"Name", EZelle::Text, 22},
    {"Beh", EZelle::Text, 4},
    {"GO", EZelle::Text, 2},
    {"Leistung", EZelle::Text, 8},
    {"Betrag", EZelle::Zahl, 10, "EUR"},
    {"Grund", EZelle::Text, 40},
    {"Betrag genau", EZelle::Zahl, 22, "EUR", true},
};

} // namespace

void CWeggelassenes::Nimm(const CTBeh & beh, EWeglassgrund eGrund) {
    // The kind "7" counts only where somebody asks for it.
    const bool bUngefragt = eGrund == EWeglassgrund::Technik && m_accu.GetTecGoSubArten() == 0;
    if (!m_bAlle && !IstMangel(eGrund) && !bUngefragt) return;
    CBehHitLine hit;
    if (eGrund == EWeglassgrund::Zeitraum)
        hit.MoveBeh(&beh);
    else
        hit = m_accu.m_BehHit;
    CDBetrag euro(hit.BETRAG);
    euro.ToW('e');
    m_summe += euro;
    const bool bBekannt = !hit.BETRAG.IsEmpty() && !hit.BETRAG.IsZero();
    m_vZeilen.push_back({hit.DATUM, Trim(hit.PATNR), hit.PATNAME, Trim(hit.BEHANDLERNR),
                         hit.GOART == 0 ? CString() : CString(hit.GOART), hit.LSTNR,
                         bBekannt ? BetragZelle(euro) : CString(), Weglassname(eGrund),
                         bBekannt ? GenauZelle(euro) : CString()});
}

void CWeggelassenes::Schreibe(CDokument & dokument) const {
    CAusgabe & tabelle = dokument.Tabelle(
        m_bAlle ? "Nicht gezählt" : "Nicht gezählt, aber auch nicht ausgeschlossen", SPALTEN);
    for (const auto & vZellen : m_vZeilen)
        tabelle.Zeile(vZellen);
    tabelle.Summe({"Gesamt", "", "", "", "", "", BetragZelle(m_summe), "", GenauZelle(m_summe)});
    tabelle.Ende();
}

} // namespace orvostat
