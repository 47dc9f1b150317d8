#include "Satzvergleich.h"

#include "Summentabelle.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace orvostat {

namespace {

CString Zeichen(char c) { return c == 0 ? CString() : CString(c); }

// What makes an entry the same one in both.
CString Schluessel(const CBehHitLine & hit) {
    CString s = hit.PATNR + "|" + hit.DATUM + "|" + Zeichen(hit.SITZUNG) + "|" + hit.LFDBEHEINTRAG;
    if (hit.LFDBEHEINTRAG.IsEmpty()) s += "|" + hit.LFDLBLOCK + "|" + Zeichen(hit.GOART) + hit.LSTNR;
    return s;
}

const struct {
    const char * pName;
    const char * pTitel; // of its column in a set
    CString (*fWert)(const CBehHitLine &);
} SPALTEN[] = {
    {"Leistung", "LSTNR", [](const CBehHitLine & h) { return Zeichen(h.GOART) + " " + h.LSTNR; }},
    {"Betrag", "BETRAG", [](const CBehHitLine & h) { return GenauZelle(h.BETRAG); }},
    {"Menge", "ANZAHL", [](const CBehHitLine & h) { return DezimalZelle(h.ANZAHL, 2); }},
    {"Punkte", "PUNKTE", [](const CBehHitLine & h) { return itoc(h.PUNKTE); }},
    {"Behandler", "BEHANDLERNR", [](const CBehHitLine & h) { return h.BEHANDLERNR; }},
    {"Praxis", "PRAXISNR", [](const CBehHitLine & h) { return h.PRAXISNR; }},
    {"Kasse", "KASKUERZEL", [](const CBehHitLine & h) { return h.KASKUERZEL; }},
    {"Zahler", "KASSENABR", [](const CBehHitLine & h) { return CString(h.KASSENABR ? 'K' : 'P'); }},
    {"Statistikart", "GOSTATISTIKART", [](const CBehHitLine & h) { return Zeichen(h.GOSTATISTIKART); }},
    {"Zuschlag", "ZUSCHLAG", [](const CBehHitLine & h) { return GenauZelle(h.ZUSCHLAG); }},
    {"Merkmal", "ABRMERKMAL", [](const CBehHitLine & h) { return Zeichen(h.ABRMERKMAL); }},
};

// "Betrag 12,34" of each column that differs.
std::string Werte(const CBehHitLine & hit, const CBehHitLine & andere,
                  const std::vector<std::string> & vOhne) {
    std::string s;
    for (const auto & spalte : SPALTEN)
        if (const CString sWert = spalte.fWert(hit);
            sWert != spalte.fWert(andere) && std::ranges::find(vOhne, spalte.pTitel) == vOhne.end())
            s += (s.empty() ? std::string() : ", ") + spalte.pName + ' ' + sWert.Utf8();
    return s;
}

std::string Alles(const CBehHitLine & hit) {
    return "Leistung " + SPALTEN[0].fWert(hit).Utf8() + ", Betrag " + SPALTEN[1].fWert(hit).Utf8();
}

using CNimm = std::function<void(const char * pWas, const CBehHitLine & hit, const std::string & sAlt,
                                 const std::string & sNeu)>;

// Entries of one key stand against each other in their order.
SUnterschiede Gehe(const CStatAccu & alt, const CStatAccu & neu, const std::vector<std::string> & vOhne,
                   const CNimm & fNimm) {
    std::map<CString, std::array<std::vector<const CBehHitLine *>, 2>> map;
    for (const CBehHitLine & hit : alt.m_vBehHits)
        map[Schluessel(hit)][0].push_back(&hit);
    for (const CBehHitLine & hit : neu.m_vBehHits)
        map[Schluessel(hit)][1].push_back(&hit);
    SUnterschiede u;
    for (const auto & [sSchluessel, apv] : map) {
        const auto & [vAlt, vNeu] = apv;
        for (std::size_t i = 0; i < std::max(vAlt.size(), vNeu.size()); ++i) {
            if (i >= vAlt.size()) {
                ++u.iDazu;
                fNimm("dazu", *vNeu[i], "", Alles(*vNeu[i]));
            } else if (i >= vNeu.size()) {
                ++u.iFort;
                fNimm("fort", *vAlt[i], Alles(*vAlt[i]), "");
            } else if (const std::string sAlt = Werte(*vAlt[i], *vNeu[i], vOhne); !sAlt.empty()) {
                ++u.iAnders;
                fNimm("anders", *vNeu[i], sAlt, Werte(*vNeu[i], *vAlt[i], vOhne));
            }
        }
    }
    return u;
}

struct SSeiten {
    CString sName;
    std::array<std::int64_t, 2> aiHits{};
    std::array<CDBetrag, 2> aBetraege{CDBetrag(0.0, 'e'), CDBetrag(0.0, 'e')};
};

void ZeigeSummen(CDokument & dokument, CStatAccu & alt, CStatAccu & neu) {
    static const SAusgabespalte SUMMENSPALTEN[] = {{"Summe", EZelle::Text, 14},
                                                   {"Gruppe", EZelle::Text, 34},
                                                   {"Hits vorher", EZelle::Zahl, 11},
                                                   {"Hits", EZelle::Zahl, 11},
                                                   {"Betrag vorher", EZelle::Zahl, 16, "EUR"},
                                                   {"Betrag", EZelle::Zahl, 16, "EUR"},
                                                   {"Unterschied", EZelle::Zahl, 16, "EUR"}};
    CAusgabe & tabelle = dokument.Tabelle("Summen, die sich unterscheiden", SUMMENSPALTEN);
    for (const ENach eNach : {ENach::Behandler, ENach::Kostentraeger, ENach::Art}) {
        const SKriterium & kriterium = Kriterium(eNach);
        std::map<CString, SSeiten> map;
        for (std::size_t i = 0; i < 2; ++i) {
            CStatAccu & accu = i == 0 ? alt : neu;
            for (const CBehHitLine & hit : accu.m_vBehHits) {
                const auto [it, bNeu] = map.try_emplace(kriterium.fSchluessel(hit));
                if (bNeu) it->second.sName = kriterium.fName(accu, hit);
                ++it->second.aiHits[i];
                CDBetrag euro(hit.BETRAG);
                it->second.aBetraege[i] += euro.ToW('e');
            }
        }
        for (const auto & [sSchluessel, seiten] : map) {
            const CDBetrag unterschied = seiten.aBetraege[1] - seiten.aBetraege[0];
            if (seiten.aiHits[0] == seiten.aiHits[1] && unterschied.GetEinheiten() == 0) continue;
            tabelle.Zeile({AusUtf8(kriterium.pName), seiten.sName, itoc(seiten.aiHits[0]),
                           itoc(seiten.aiHits[1]), BetragZelle(seiten.aBetraege[0]),
                           BetragZelle(seiten.aBetraege[1]), BetragZelle(unterschied)});
        }
    }
    tabelle.Ende();
}

} // namespace

SUnterschiede Vergleiche(const CStatAccu & alt, const CStatAccu & neu,
                         const std::vector<std::string> & vOhne) {
    return Gehe(alt, neu, vOhne,
                [](const char *, const CBehHitLine &, const std::string &, const std::string &) {});
}

SUnterschiede ZeigeVergleich(CDokument & dokument, CStatAccu & alt, CStatAccu & neu,
                             const std::vector<std::string> & vOhne) {
    static const SAusgabespalte EINTRAGSSPALTEN[] = {{"Was", EZelle::Text, 6},
                                                     {"Patient", EZelle::Text, 10},
                                                     {"Datum", EZelle::Datum, 10},
                                                     {"Vorher", EZelle::Text, 60},
                                                     {"Jetzt", EZelle::Text, 60}};
    ZeigeSummen(dokument, alt, neu);
    CAusgabe & tabelle = dokument.Tabelle("Einträge, die sich unterscheiden", EINTRAGSSPALTEN);
    const SUnterschiede u = Gehe(
        alt, neu, vOhne,
        [&](const char * pWas, const CBehHitLine & hit, const std::string & sAlt, const std::string & sNeu) {
            tabelle.Zeile(
                {CString(std::string_view(pWas)), hit.PATNR, hit.DATUM, AusUtf8(sAlt), AusUtf8(sNeu)});
        });
    tabelle.Ende();
    return u;
}

} // namespace orvostat
