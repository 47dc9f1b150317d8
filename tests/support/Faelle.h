// Cases by name in text files, one line each:
//
//   # Points times point value.
//   [betrag: by points] GOART=k ANZAHL=100
//   + GO GOART=k LSTNR=13a
//   PUNKTE=3300 PUNKTWERT=e13233 -> BETRAG=e4366.89
//   PUNKTE=3300 PUNKTWERT=|e0 -> BETRAG=
//   & PUNKTE=1 -> BETRAG=e1
//
// A section names the operation that its cases call; what stands behind its bracket, outputs too, holds for each
// that does not say otherwise. "+" is a row of a table, "->" is followed by what comes out. A value of several words,
// or with a sign in it, stands in
// quotation marks, "\r" and "\n" are a line's end; a name without "=" has the value 1; PUNKTWERT=|e0 makes a case of
// each alternative. Indented lines go on with the line before. Each case has a fixture of its own with the section's
// rows in it and those that it names as PLAN.PLANNR=1; "&" goes on with that of the case before, and behind an inner
// "+" the row comes before that case.
//
// A case fails for a name that its operation does not know, and for an output that is not empty and not named. A file
// fails for an operation that the test does not have, and a test for an operation without a case.
#pragma once

#include "support/Verzeichnis.h"
#include "support/Wert.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orvostat {

// Adds rows to the practice of dbDatabase, one line each: "GO GOART=k LSTNR=13a". The table and its columns have the
// names that they have in the database.
void Schreibe(const std::string & sZeilen);

// The lines of a text file without comments, continuations joined, each with its number.
[[nodiscard]] std::vector<std::pair<int, std::string>> LiesZeilen(const std::string & sDatei);
// What stands behind the name and its blank in the line that begins with them; "-" without such a line.
[[nodiscard]] std::string LiesZeile(const std::string & sDatei, const std::string & sName);

class CFall {
public:
    using CWerteliste = std::vector<std::pair<std::string, std::string>>;
    struct SOrt {
        std::string sDatei;
        int iZeile;
    };

    CFall(SOrt ort, CWerteliste vEin, CWerteliste vAus);

    // ---- what goes in; an operation asks for every name that it knows

    [[nodiscard]] bool Hat(const std::string & sName) const { return m_mapEin.contains(sName); }
    [[nodiscard]] bool Erwartet(const std::string & sName) const { return m_mapAus.contains(sName); }
    // Puts the value into a variable; false, and the variable stays, where the case does not name it.
    template <class T> bool Nimm(const std::string & sName, T & ziel) {
        const auto it = m_mapEin.find(sName);
        if (it == m_mapEin.end()) return false;
        it->second.bGebraucht = true;
        if (!Lies(it->second.sWert, ziel)) Melde(sName + "=" + it->second.sWert + " is no such value");
        return true;
    }
    template <class T = CString> T Ein(const std::string & sName, T start = {}) {
        Nimm(sName, start);
        return start;
    }
    // All fields of a record that have a list (JedesFeld) and that the case names, behind a prefix.
    template <class T> T & Fuelle(T & satz, const std::string & sVorsatz = {}) {
        JedesFeld(satz, [&](const std::string & sName, auto & wert) { Nimm(sVorsatz + sName, wert); });
        return satz;
    }

    // ---- what comes out

    template <class T> void Aus(const std::string & sName, const T & wert) { Vergleiche(sName, Wert(wert)); }
    // The fields of a record that differ from those before.
    template <class T> void Geaendert(const T & vorher, const T & nachher) {
        std::map<std::string, std::string> mapVorher;
        JedesFeld(vorher,
                  [&](const std::string & sName, const auto & wert) { mapVorher[sName] = Wert(wert); });
        JedesFeld(nachher, [&](const std::string & sName, const auto & wert) {
            VergleicheAenderung(sName, mapVorher[sName], Wert(wert));
        });
    }
    // Those that the case names; the others do not count.
    template <class T> void Genannt(const T & satz) {
        JedesFeld(satz, [&](const std::string & sName, const auto & wert) {
            if (Erwartet(sName)) Vergleiche(sName, Wert(wert));
        });
    }

    void Melde(const std::string & sText) const;
    // What nobody asked for is a failure.
    void Schliesse() const;

private:
    struct SWert {
        std::string sWert;
        bool bGebraucht = false;
    };
    void Vergleiche(const std::string & sName, const std::string & sIst);
    void VergleicheAenderung(const std::string & sName, const std::string & sVorher,
                             const std::string & sIst);

    SOrt m_ort;
    std::map<std::string, SWert> m_mapEin, m_mapAus;
};

namespace detail {

struct SFallzeile {
    int iZeile = 0;
    std::string sOperation;
    std::vector<std::string> vTabellenzeilen; // to be written before
    bool bWeiter = false;
    std::vector<CFall::CWerteliste> vEin; // one for each choice of alternatives
    CFall::CWerteliste vAus;
};
[[nodiscard]] std::vector<SFallzeile> LiesFaelle(const std::string & sDatei);
// Writes the rows that a case has in its names, "PLAN.PLANNR=1"; gives the other values.
[[nodiscard]] CFall::CWerteliste SchreibeEigene(const CFall::CWerteliste & vEin);

template <class TFixture> class CBuehne : public TFixture {
    void TestBody() override {}
};

} // namespace detail

// Runs all cases of a file, each in a fixture of its own.
template <class TFixture>
void PruefeFaelle(const std::string & sDatei,
                  const std::map<std::string, std::function<void(TFixture &, CFall &)>> & mapOperationen) {
    std::map<std::string, int> mapAnzahl;
    const auto pVerzeichnis = CTempVerzeichnis::Gemeinsam();
    std::unique_ptr<TFixture> pBuehne;
    for (const detail::SFallzeile & zeile : detail::LiesFaelle(sDatei)) {
        const auto it = mapOperationen.find(zeile.sOperation);
        if (it == mapOperationen.end()) {
            ADD_FAILURE_AT(sDatei.c_str(), zeile.iZeile) << "no operation " << zeile.sOperation;
            continue;
        }
        for (const CFall::CWerteliste & vEin : zeile.vEin) {
            ++mapAnzahl[zeile.sOperation];
            if (!zeile.bWeiter) pBuehne.reset();
            if (!pBuehne) pBuehne = std::make_unique<detail::CBuehne<TFixture>>();
            for (const std::string & sZeile : zeile.vTabellenzeilen)
                Schreibe(sZeile);
            CFall fall({sDatei, zeile.iZeile}, detail::SchreibeEigene(vEin), zeile.vAus);
            it->second(*pBuehne, fall);
            fall.Schliesse();
        }
    }
    for (const auto & [sOperation, f] : mapOperationen)
        EXPECT_GT(mapAnzahl[sOperation], 0) << sDatei << " has no case of " << sOperation;
}

} // namespace orvostat
