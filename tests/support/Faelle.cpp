#include "support/Faelle.h"

#include "orvostatbs/host/RSet.h"
#include "orvostatbs/host/Tabellen.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace orvostat {

namespace {

// A word "NAME=value" as it stands in the line.
struct SWort {
    std::string sName;
    std::vector<std::string> vAlternativen{{}};
};

std::string LiesInZeichen(const std::string & s, std::size_t & i) {
    std::string sWert;
    for (++i; i < s.size() && s[i] != '"'; ++i) {
        if (s[i] == '\\' && i + 1 < s.size())
            sWert += s[++i] == 'n' ? '\n' : s[i] == 'r' ? '\r' : s[i];
        else
            sWert += s[i];
    }
    if (i++ >= s.size()) throw std::invalid_argument("no closing quotation mark: " + s);
    return sWert;
}

SWort LiesWort(const std::string & s, std::size_t & i) {
    SWort wort;
    while (i < s.size() && s[i] != ' ' && s[i] != '=')
        wort.sName += s[i++];
    if (i >= s.size() || s[i] == ' ') {
        wort.vAlternativen = {"1"};
        return wort;
    }
    for (++i; i < s.size() && s[i] != ' ';) {
        if (s[i] == '"')
            wort.vAlternativen.back() += LiesInZeichen(s, i);
        else if (s[i++] == '|')
            wort.vAlternativen.emplace_back();
        else
            wort.vAlternativen.back() += s[i - 1];
    }
    return wort;
}

std::vector<SWort> LiesWorte(const std::string & s) {
    std::vector<SWort> v;
    for (std::size_t i = 0; (i = s.find_first_not_of(' ', i)) != s.npos;)
        v.push_back(LiesWort(s, i));
    return v;
}

// All choices of alternatives.
std::vector<CFall::CWerteliste> Auswahlen(const std::vector<SWort> & vWorte) {
    std::vector<CFall::CWerteliste> vAlle{{}};
    for (const SWort & wort : vWorte) {
        std::vector<CFall::CWerteliste> vNeu;
        for (const CFall::CWerteliste & v : vAlle)
            for (const std::string & sWert : wort.vAlternativen) {
                vNeu.push_back(v);
                vNeu.back().emplace_back(wort.sName, sWert);
            }
        vAlle = std::move(vNeu);
    }
    return vAlle;
}

// Of words without alternatives.
CFall::CWerteliste Einzige(const std::vector<SWort> & vWorte) {
    const std::vector<CFall::CWerteliste> v = Auswahlen(vWorte);
    if (v.size() != 1) throw std::invalid_argument("alternatives in a row or an output: " + vWorte[0].sName);
    return v[0];
}

// Later values replace earlier ones of the same name.
std::vector<SWort> Zusammen(std::vector<SWort> v, const std::vector<SWort> & vSpaeter) {
    for (const SWort & wort : vSpaeter) {
        std::erase_if(v, [&](const SWort & w) { return w.sName == wort.sName; });
        v.push_back(wort);
    }
    return v;
}

// Where "->" stands; the line's end where it does not.
std::size_t Pfeil(const std::string & s) {
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i] == '"') {
            LiesInZeichen(s, i);
            --i;
        } else if (s.compare(i, 2, "->") == 0) {
            return i;
        }
    }
    return s.size();
}

class CLeser {
public:
    std::vector<detail::SFallzeile> m_vFaelle;

    void Lies(int iZeile, const std::string & s) {
        if (s[0] == '[') {
            const std::size_t iEnde = s.find(']');
            m_sOperation = s.substr(1, std::min(s.find(':'), iEnde) - 1);
            const std::size_t iPfeil = Pfeil(s.substr(iEnde)) + iEnde;
            m_vVorgaben = LiesWorte(s.substr(iEnde + 1, iPfeil - iEnde - 1));
            m_vErwartet = LiesWorte(iPfeil == s.size() ? "" : s.substr(iPfeil + 2));
            m_vZeilen.clear();
            m_iEigene = 0;
        } else if (s[0] == '+') {
            m_vZeilen.push_back(s.substr(2));
        } else {
            Nimm(iZeile, s);
        }
    }

private:
    void Nimm(int iZeile, const std::string & s) {
        const bool bWeiter = s[0] == '&';
        const std::size_t iAb = bWeiter ? 1 : 0, iPfeil = Pfeil(s);
        if (iPfeil == s.size()) throw std::invalid_argument("no ->: " + s);
        const auto ab = m_vZeilen.begin() + (bWeiter ? static_cast<std::ptrdiff_t>(m_iEigene) : 0);
        m_vFaelle.push_back({iZeile,
                             m_sOperation,
                             {ab, m_vZeilen.end()},
                             bWeiter,
                             Auswahlen(Zusammen(m_vVorgaben, LiesWorte(s.substr(iAb, iPfeil - iAb)))),
                             Einzige(Zusammen(m_vErwartet, LiesWorte(s.substr(iPfeil + 2))))});
        m_iEigene = m_vZeilen.size();
    }

    std::string m_sOperation;
    std::vector<SWort> m_vVorgaben, m_vErwartet;
    std::vector<std::string> m_vZeilen; // rows of the section
    std::size_t m_iEigene = 0;          // of these, written for the case before
};

// A row of any table.
class CZeile final : public COrvoRSetEx {
public:
    explicit CZeile(const STabelle & tabelle)
        : COrvoRSetEx(dbDatabase), m_tabelle(tabelle), m_vTexte(tabelle.vSpalten.size()) {
        for (CString & s : m_vTexte)
            m_vZeiger.push_back(&s);
    }
    [[nodiscard]] const STabelle & Tabelle() const override { return m_tabelle; }
    [[nodiscard]] CFelder Felder() override { return m_vZeiger; }

    const STabelle & m_tabelle;
    std::vector<CString> m_vTexte;
    std::vector<CString *> m_vZeiger;
};

void SchreibeZeile(const std::string & sTabelle, const CFall::CWerteliste & vWerte) {
    const auto vTabellen = AlleTabellen();
    const auto itTabelle = std::find_if(vTabellen.begin(), vTabellen.end(),
                                        [&](const STabelle * p) { return p->pName == sTabelle; });
    if (itTabelle == vTabellen.end()) throw std::invalid_argument("no table " + sTabelle);
    CZeile zeile(**itTabelle);
    const auto vSpalten = (*itTabelle)->vSpalten;
    for (const auto & wert : vWerte) {
        const auto it = std::find_if(vSpalten.begin(), vSpalten.end(),
                                     [&](const SSpalteInfo & spalte) { return spalte.pName == wert.first; });
        if (it == vSpalten.end()) throw std::invalid_argument("no column " + sTabelle + "." + wert.first);
        zeile.m_vTexte[static_cast<std::size_t>(it - vSpalten.begin())] = AusUtf8(wert.second);
    }
    EXPECT_EQ(zeile.Write(), 0) << sTabelle;
}

} // namespace

std::vector<std::pair<int, std::string>> LiesZeilen(const std::string & sDatei) {
    std::ifstream ein(sDatei);
    std::vector<std::pair<int, std::string>> v;
    std::string s;
    for (int iZeile = 1; std::getline(ein, s); ++iZeile) {
        if (s.empty() || s[0] == '#') continue;
        if (s[0] == ' ' && !v.empty())
            v.back().second += ' ' + s.substr(s.find_first_not_of(' '));
        else
            v.emplace_back(iZeile, s);
    }
    return v;
}

std::string LiesZeile(const std::string & sDatei, const std::string & sName) {
    for (const auto & [iZeile, s] : LiesZeilen(sDatei))
        if (s.starts_with(sName + ' ')) return s.substr(sName.size() + 1);
    return "-";
}

void Schreibe(const std::string & sZeilen) {
    std::istringstream ein(sZeilen);
    for (std::string s; std::getline(ein, s);)
        if (const CFall::CWerteliste v = Einzige(LiesWorte(s)); !v.empty())
            SchreibeZeile(v[0].first, {v.begin() + 1, v.end()});
}

namespace detail {

CFall::CWerteliste SchreibeEigene(const CFall::CWerteliste & vEin) {
    CFall::CWerteliste vRest;
    std::map<std::string, CFall::CWerteliste> mapZeilen;
    for (const auto & [sName, sWert] : vEin) {
        const std::size_t iPunkt = sName.find('.');
        (iPunkt == sName.npos ? vRest : mapZeilen[sName.substr(0, iPunkt)])
            .emplace_back(sName.substr(iPunkt + 1), sWert);
    }
    for (const auto & [sTabelle, vWerte] : mapZeilen)
        SchreibeZeile(sTabelle, vWerte);
    return vRest;
}

std::vector<SFallzeile> LiesFaelle(const std::string & sDatei) {
    CLeser leser;
    for (const auto & [iZeile, s] : LiesZeilen(sDatei))
        leser.Lies(iZeile, s);
    if (leser.m_vFaelle.empty()) ADD_FAILURE_AT(sDatei.c_str(), 1) << "no cases";
    return std::move(leser.m_vFaelle);
}

} // namespace detail

CFall::CFall(SOrt ort, CWerteliste vEin, CWerteliste vAus) : m_ort(std::move(ort)) {
    for (auto & [sName, sWert] : vEin)
        m_mapEin[sName] = {std::move(sWert)};
    for (auto & [sName, sWert] : vAus)
        m_mapAus[sName] = {std::move(sWert)};
}

void CFall::Melde(const std::string & sText) const {
    std::string sEin;
    for (const auto & [sName, wert] : m_mapEin)
        sEin += " " + sName + "=" + wert.sWert;
    ADD_FAILURE_AT(m_ort.sDatei.c_str(), m_ort.iZeile) << sText << "\n  of" << sEin;
}

void CFall::Vergleiche(const std::string & sName, const std::string & sIst) {
    const auto it = m_mapAus.find(sName);
    if (it != m_mapAus.end()) it->second.bGebraucht = true;
    const std::string sSoll = it == m_mapAus.end() ? "" : it->second.sWert;
    if (sIst != sSoll) Melde(sName + " is \"" + sIst + "\" instead of \"" + sSoll + '"');
}

void CFall::VergleicheAenderung(const std::string & sName, const std::string & sVorher,
                                const std::string & sIst) {
    if (Erwartet(sName))
        Vergleiche(sName, sIst);
    else if (sIst != sVorher)
        Melde(sName + " changed from \"" + sVorher + "\" to \"" + sIst + '"');
}

void CFall::Schliesse() const {
    for (const auto & [map, pText] : {std::pair(&m_mapEin, "nobody reads "), {&m_mapAus, "nothing gives "}})
        for (const auto & [sName, wert] : *map)
            if (!wert.bGebraucht) Melde(pText + sName);
}

} // namespace orvostat
