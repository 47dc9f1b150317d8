#include "orvostatbs/host/Praxispruefung.h"

#include "Zeilenlauf.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace orvostat {

namespace {

bool NurZiffern(std::string_view s) {
    return !s.empty() && std::ranges::all_of(s, [](char c) { return ismxdigit(c); });
}

std::string_view OhneBlanks(std::string_view s) {
    s.remove_prefix(std::min(s.find_first_not_of(' '), s.size()));
    return s.substr(0, s.find_last_not_of(' ') + 1);
}

// Of a day only the month or the year may be known: "19560000".
bool IstDatum(std::string_view s) {
    if (s.size() != 8 || !NurZiffern(s)) return false;
    const std::string_view sMonat = s.substr(4, 2);
    if (s.substr(6) == "00") return s.substr(0, 4) != "0000" && sMonat <= "12";
    return GueltigesDatum(CString(s));
}

// How a number is written, and from where to where it is a plausible one, without what stands behind its point.
struct SForm {
    EArt eArt;
    const char * pMangel;
    std::size_t iNachkomma;
    std::int64_t iVon;
    std::int64_t iBis;
};
constexpr SForm FORMEN[] = {
    {EArt::Zahl, "ist keine Zahl", 0, INT32_MIN, INT32_MAX},
    {EArt::Betrag, "ist kein Betrag", 6, -1'000'000'000, 1'000'000'000}, // ten million
    {EArt::Punktwert, "ist kein Punktwert", 4, 0, 1'000'000},            // a hundred
    {EArt::Punkte, "ist keine Punktzahl", 0, 0, 10'000'000},             // a hundred thousand
    {EArt::Menge, "ist keine Menge", 0, 0, 1'000'000},                   // ten thousand
    {EArt::Faktor, "ist kein Faktor", 0, 0, 1'000'000},                  // a hundred
};

const char * MangelDerZahl(const SForm & form, std::string_view s) {
    s = OhneBlanks(s);
    const bool bMinus = s.starts_with('-');
    if (bMinus) s.remove_prefix(1);
    const auto iPunkt = s.find('.');
    const std::string_view sGanze = s.substr(0, iPunkt);
    const std::string_view sRest = iPunkt == s.npos ? "0" : s.substr(iPunkt + 1);
    if (!NurZiffern(sGanze) || !NurZiffern(sRest) || (iPunkt != s.npos && sRest.size() > form.iNachkomma))
        return form.pMangel;
    std::int64_t iWert = 0;
    for (const char c : sGanze)
        iWert = std::min<std::int64_t>(iWert * 10 + (c - '0'), INT64_MAX / 100);
    if (bMinus) iWert = -iWert;
    return iWert >= form.iVon && iWert <= form.iBis ? nullptr : "liegt außerhalb des Möglichen";
}

std::string Zitat(const CString & s) { return '"' + s.Utf8() + '"'; }

// Without a row of these, deleted ones aside, no run is possible.
struct SNoetig {
    const STabelle * pTabelle;
    const char * pFehlt;
};
constexpr SNoetig NOETIGE[] = {
    {&SBeschreibung<CTPraxis_Fields>::tabelle, "die Praxis selbst fehlt"},
    {&SBeschreibung<CTMandant_Fields>::tabelle, "die Praxis hat keinen Praxisinhaber"},
    {&SBeschreibung<CTLeb_Fields>::tabelle, "die Praxis hat keinen Behandler"},
};

bool Geloescht(const STabelle & tabelle, CWerte vZeile) {
    for (std::size_t i = 0; i < vZeile.size(); ++i)
        if (tabelle.vSpalten[i].pName == std::string_view("GELOESCHT")) return *vZeile[i] == "1";
    return false;
}

} // namespace

const char * Mangel(EArt eArt, std::string_view s1252) {
    if (OhneBlanks(s1252).empty()) return nullptr;
    if (eArt == EArt::Datum) return IstDatum(s1252) ? nullptr : "ist kein Datum";
    if (eArt == EArt::Faktor && s1252.starts_with('e')) eArt = EArt::Punktwert;
    const auto * pForm = std::ranges::find(FORMEN, eArt, &SForm::eArt);
    if (pForm == std::end(FORMEN)) return nullptr;
    if (eArt == EArt::Menge) {
        if (ismxdigit(s1252.front()) || s1252.front() == '-') return pForm->pMangel;
        s1252.remove_prefix(1);
        if (OhneBlanks(s1252).empty()) return nullptr;
    }
    if ((eArt == EArt::Betrag || eArt == EArt::Punktwert) && s1252.starts_with('e')) s1252.remove_prefix(1);
    return MangelDerZahl(*pForm, s1252);
}

std::string Zeilenname(const STabelle & tabelle, CWerte vZeile) {
    std::string sSchluessel;
    for (const std::uint8_t iSpalte : tabelle.vSchluessel[0].Spalten())
        sSchluessel += (sSchluessel.empty() ? "" : ", ") + Trim(*vZeile[iSpalte]).Utf8();
    return std::string(tabelle.pName) + " [" + sSchluessel + "]";
}

CPraxispruefung::CPraxispruefung(CZeilenspeicher & speicher, std::function<void(const std::string &)> fMangel,
                                 std::function<void()> fSchritt)
    : m_speicher(speicher), m_fMangel(std::move(fMangel)), m_fSchritt(std::move(fSchritt)) {}

std::int64_t CPraxispruefung::Pruefe(const STabelle & tabelle) {
    std::int64_t iZeilen = 0;
    const auto * pNoetig = std::ranges::find(NOETIGE, &tabelle, &SNoetig::pTabelle);
    const std::vector<SZiel> vZiele = Ziele(tabelle);
    CZeilenlauf lauf(m_speicher, tabelle);
    for (; lauf.Naechste(); ++iZeilen) {
        m_fSchritt();
        PruefeZeile(tabelle, lauf.Werte());
        PruefeVerweise(tabelle, vZiele, lauf.Werte());
        if (pNoetig != std::end(NOETIGE) && !Geloescht(tabelle, lauf.Werte())) pNoetig = std::end(NOETIGE);
    }
    if (lauf.Ergebnis() != ZEILE_KEINE)
        m_fMangel(std::string(tabelle.pName) + ": die Tabelle ist nicht lesbar");
    else if (pNoetig != std::end(NOETIGE))
        m_fMangel(std::string(tabelle.pName) + ": " + pNoetig->pFehlt);
    for (int i = 1; i <= static_cast<int>(tabelle.vSchluessel.size()); ++i)
        PruefeReihenfolge(tabelle, i);
    return iZeilen;
}

void CPraxispruefung::PruefeZeile(const STabelle & tabelle, CWerte vZeile) {
    for (std::size_t i = 0; i < vZeile.size(); ++i)
        if (const char * pMangel = Mangel(tabelle.vSpalten[i].eArt, vZeile[i]->Sicht()))
            Melde(tabelle, vZeile,
                  std::string(tabelle.vSpalten[i].pName) + ' ' + Zitat(*vZeile[i]) + ' ' + pMangel);
    if (Blank(*vZeile[tabelle.vSchluessel[0].aiSpalten[0]])) Melde(tabelle, vZeile, "der Schlüssel ist leer");
}

// The rows come in the order of the key that the file keeps beside them; it must be the order of the columns.
void CPraxispruefung::PruefeReihenfolge(const STabelle & tabelle, int iSchluessel) {
    std::string sVorige;
    for (CZeilenlauf lauf(m_speicher, tabelle, iSchluessel); lauf.Naechste();) {
        std::string sDiese = Schluesselbytes(tabelle, iSchluessel, lauf.Werte());
        const std::string sName = "Schlüssel " + std::to_string(iSchluessel);
        if (sDiese < sVorige) Melde(tabelle, lauf.Werte(), sName + " steht nicht an seinem Platz");
        if (iSchluessel == 1 && sDiese == sVorige)
            Melde(tabelle, lauf.Werte(), "den Schlüssel gibt es mehrfach");
        sVorige = std::move(sDiese);
    }
}

std::vector<CPraxispruefung::SZiel> CPraxispruefung::Ziele(const STabelle & tabelle) {
    std::vector<SZiel> v;
    for (const SVerweis & verweis : AlleVerweise())
        if (verweis.pVon == &tabelle)
            v.push_back({&verweis, &Schluessel(*verweis.pNach, verweis.spalten.iAnzahl)});
    return v;
}

void CPraxispruefung::PruefeVerweise(const STabelle & tabelle, const std::vector<SZiel> & vZiele,
                                     CWerte vZeile) {
    for (const auto & [pVerweis, pSchluessel] : vZiele) {
        const auto viSpalten = pVerweis->spalten.Spalten();
        const std::size_t iLetzte = viSpalten.back();
        if (Blank(*vZeile[iLetzte])) continue;
        std::string sSchluessel;
        for (const std::uint8_t i : viSpalten)
            HaengeTeilAn(sSchluessel, *pVerweis->pNach, *vZeile[i], false);
        if (!pSchluessel->contains(sSchluessel))
            Melde(tabelle, vZeile,
                  std::string(tabelle.vSpalten[iLetzte].pName) + ' ' + Zitat(*vZeile[iLetzte]) +
                      " gibt es in " + pVerweis->pNach->pName + " nicht");
    }
}

const CPraxispruefung::CSchluesselmenge & CPraxispruefung::Schluessel(const STabelle & tabelle,
                                                                      std::size_t iTeile) {
    const auto [it, bNeu] = m_mapSchluessel.try_emplace(tabelle.pName + std::to_string(iTeile));
    if (!bNeu) return it->second;
    for (CZeilenlauf lauf(m_speicher, tabelle); lauf.Naechste();) {
        std::string sSchluessel;
        for (std::size_t i = 0; i < iTeile; ++i)
            HaengeTeilAn(sSchluessel, tabelle, lauf.Texte()[tabelle.vSchluessel[0].aiSpalten[i]], false);
        it->second.insert(std::move(sSchluessel));
    }
    return it->second;
}

void CPraxispruefung::Melde(const STabelle & tabelle, CWerte vZeile, const std::string & sWas) {
    m_fMangel(Zeilenname(tabelle, vZeile) + ": " + sWas);
}

} // namespace orvostat
