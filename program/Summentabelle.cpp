#include "Summentabelle.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>

namespace orvostat {

namespace {

struct SSumme {
    std::int64_t iHits = 0;
    std::int64_t iPunkte = 0; // ten-thousandths
    CDBetrag betrag{0.0, 'e'};

    void Nimm(const CBehHitLine & hit) {
        ++iHits;
        if (IstPunktArt(hit.GOART)) iPunkte += static_cast<std::int64_t>(hit.PUNKTE) * hit.ANZAHL;
        CDBetrag euro(hit.BETRAG);
        betrag += euro.ToW('e');
    }
};

// ---- the criteria

// A letter and what it stands for.
CString MitName(char c, const CString & sName) {
    const CString sLetter = c == 0 ? CString("-") : CString(c);
    return sName.IsEmpty() ? sLetter : sLetter + " " + sName;
}

CString Behandlername(CStatAccu & accu, const CBehHitLine & hit) {
    const int i = accu.FindLeb(hit.BEHANDLERNR);
    return i < 0 ? hit.BEHANDLERNR : accu.m_vLeb[static_cast<std::size_t>(i)].GetLebLine();
}

// "1" for hits without an insurer, "2" and sKasse, "3" for private ones: they are the last.
CString Kassenschluessel(const CBehHitLine & hit, const CString & sKasse) {
    if (!hit.KASSENABR) return "3";
    return hit.KASKUERZEL.IsEmpty() ? CString("1") : "2" + sKasse;
}

CString Kassenname(CStatAccu &, const CBehHitLine & hit) {
    if (!hit.KASSENABR) return "Privat";
    return hit.KASKUERZEL.IsEmpty() ? "(ohne Kasse)"_t : hit.KASKUERZEL;
}

CString Kostentraeger(CStatAccu & accu, const CBehHitLine & hit) {
    if (!hit.KASSENABR || hit.KASKUERZEL.IsEmpty()) return Kassenname(accu, hit);
    const int i = accu.FindSelectPoolData(accu.m_vSpKassenGrp, CString(hit.KASSENGRP));
    return "Kassengruppe "_t +
           MitName(hit.KASSENGRP,
                   i < 0 ? CString() : accu.m_vSpKassenGrp[static_cast<std::size_t>(i)].m_sText);
}

// Laboratory services are counted under the letter of their kind.
CString Statistikart(CStatAccu & accu, const CBehHitLine & hit) {
    const char c = hit.GOSTATISTIKART;
    return MitName(c, accu.GetLstGrpName(IstLaborArt(c) ? 'T' : 'K', c));
}

CString Leistungsname(CStatAccu &, const CBehHitLine & hit) {
    if (hit.LSTNR.IsEmpty()) return "(ohne Leistung)"_t;
    const CString sName = CString(hit.GOART) + " " + hit.LSTNR;
    return hit.m_sGoText.IsEmpty() ? sName : sName + " " + hit.m_sGoText;
}

CString Patientenname(CStatAccu &, const CBehHitLine & hit) { return hit.PATNR + " " + hit.PATNAME; }

CString Buchstabe(char c) { return c == 0 ? CString() : CString(c); }

const SKriterium KRITERIEN[] = {
    {"behandler", "Behandler", [](const CBehHitLine & h) { return h.BEHANDLERNR; }, Behandlername},
    {"kostentraeger", "Kostenträger",
     [](const CBehHitLine & h) { return Kassenschluessel(h, Buchstabe(h.KASSENGRP)); }, Kostentraeger},
    {"art", "Statistikart", [](const CBehHitLine & h) { return Buchstabe(h.GOSTATISTIKART); }, Statistikart},
    {"kasse", "Kasse", [](const CBehHitLine & h) { return Kassenschluessel(h, h.KASKUERZEL); }, Kassenname},
    {"monat", "Monat", [](const CBehHitLine & h) { return h.DATUM.Left(6); },
     [](CStatAccu &, const CBehHitLine & h) { return h.DATUM.Left(4) + "-" + h.DATUM.Mid(4, 2); }},
    {"leistung", "Leistung", [](const CBehHitLine & h) { return Buchstabe(h.GOART) + h.LSTNR; },
     Leistungsname},
    {"patient", "Patient", [](const CBehHitLine & h) { return h.PATNR; }, Patientenname},
};
static_assert(std::size(KRITERIEN) == static_cast<std::size_t>(ENach::Patient) + 1);

// ---- the table

constexpr std::size_t HOECHSTENS = 2;

struct SGruppe {
    std::array<CString, HOECHSTENS> asName;
    SSumme summe;
};

} // namespace

const SKriterium & Kriterium(ENach eNach) { return KRITERIEN[static_cast<std::size_t>(eNach)]; }

std::vector<std::string> Kriterienworte() {
    std::vector<std::string> v;
    for (const SKriterium & kriterium : KRITERIEN)
        v.emplace_back(kriterium.pWort);
    return v;
}

const SKriterium * FindeKriterium(const std::string & sWort) {
    const auto * const p = std::ranges::find(KRITERIEN, sWort, &SKriterium::pWort);
    return p == std::end(KRITERIEN) ? nullptr : p;
}

void SchreibeSummen(CDokument & dokument, CStatAccu & accu, std::span<const SKriterium * const> vNach) {
    std::map<std::array<CString, HOECHSTENS>, SGruppe> map;
    for (const CBehHitLine & hit : accu.m_vBehHits) {
        std::array<CString, HOECHSTENS> asSchluessel;
        for (std::size_t i = 0; i < vNach.size(); ++i)
            asSchluessel[i] = vNach[i]->fSchluessel(hit);
        const auto [it, bNeu] = map.try_emplace(std::move(asSchluessel));
        for (std::size_t i = 0; bNeu && i < vNach.size(); ++i)
            it->second.asName[i] = vNach[i]->fName(accu, hit);
        it->second.summe.Nimm(hit);
    }

    std::string sTitel = "Nach ";
    std::vector<SAusgabespalte> vSpalten;
    for (const SKriterium * pNach : vNach) {
        sTitel += (vSpalten.empty() ? std::string() : " und ") + pNach->pName;
        vSpalten.push_back({pNach->pName, EZelle::Text, 34});
    }
    vSpalten.insert(vSpalten.end(), {{"Hits", EZelle::Zahl, 10},
                                     {"Kassenpunkte", EZelle::Zahl, 14},
                                     {"Betrag", EZelle::Zahl, 16, "EUR"},
                                     {"Betrag genau", EZelle::Zahl, 22, "EUR", true}});
    CAusgabe & tabelle = dokument.Tabelle(sTitel, vSpalten);
    const auto Zellen = [&](const std::array<CString, HOECHSTENS> & asName, const SSumme & summe) {
        std::vector<CString> v(asName.begin(), asName.begin() + static_cast<std::ptrdiff_t>(vNach.size()));
        v.insert(v.end(), {itoc(summe.iHits), DezimalZelle(summe.iPunkte, 4), BetragZelle(summe.betrag),
                           GenauZelle(summe.betrag)});
        return v;
    };
    SSumme gesamt;
    for (const auto & [asSchluessel, gruppe] : map) {
        tabelle.Zeile(Zellen(gruppe.asName, gruppe.summe));
        gesamt.iHits += gruppe.summe.iHits;
        gesamt.iPunkte += gruppe.summe.iPunkte;
        gesamt.betrag += gruppe.summe.betrag;
    }
    tabelle.Summe(Zellen({"Gesamt"}, gesamt));
    tabelle.Ende();
}

} // namespace orvostat
