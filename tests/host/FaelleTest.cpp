// The kit's cases from text files: what must not pass unnoticed.
#include "orvostatbs/host/TabellenPatient.h"
#include "support/Praxis.h"

#include <fstream>

#include <gtest/gtest-spi.h>

namespace orvostat {

namespace {

// Runs the lines with an operation "doppelt", which doubles N, and "zeilen", which counts the patients.
void Pruefe(const std::string & sZeilen) {
    const auto pVerzeichnis = CTempVerzeichnis::Gemeinsam();
    const std::string sDatei = (*pVerzeichnis / "faelle.txt").string();
    std::ofstream(sDatei) << sZeilen;
    PruefeFaelle<CPraxisTest>(
        sDatei, {{"doppelt", [](CPraxisTest &, CFall & fall) { fall.Aus("M", 2 * fall.Ein<int>("N")); }},
                 {"zeilen", [](CPraxisTest & test, CFall & fall) {
                      fall.Aus("ZAHL", test.m_praxis.Speicher().Zeilenzahl(CTPat().Tabelle()));
                  }}});
}

const std::string GUT =
    "# comment\n[doppelt: it] N=3 -> M=6\n->\nN=|0 -> M=\nN=\"4\" ->\n    M=8\n"
    "[zeilen]\n+ PAT PATNR=1\n-> ZAHL=1\nPAT.PATNR=2|3 -> ZAHL=2\n& PAT.PATNR=4 -> ZAHL=3\n"
    "+ PAT PATNR=5\n& -> ZAHL=4\n-> ZAHL=2\n";

TEST(Faelle, AnythingUnknownUnreadOrMissingFails) {
    Pruefe(GUT);
    const std::pair<const char *, const char *> aFaelle[] = {
        {"[doppelt]\nN=3 -> M=7\n", "M is \"6\" instead of \"7\""},
        {"[doppelt]\nN=3 ->\n", "M is \"6\" instead of \"\""},
        {"[doppelt]\nN=3 X=1 -> M=6\n", "nobody reads X"},
        {"[doppelt]\nN=3 -> M=6 Y=\n", "nothing gives Y"},
        {"[doppelt]\nN=drei -> M=\n", "N=drei is no such value"},
        {"[anders]\nN=3 -> M=6\n", "no operation anders"},
    };
    for (const auto & [pZeilen, pMeldung] : aFaelle) {
        static const char * s_pZeilen;
        s_pZeilen = pZeilen;
        EXPECT_NONFATAL_FAILURE(Pruefe(GUT + s_pZeilen), pMeldung);
    }
    EXPECT_NONFATAL_FAILURE(Pruefe(GUT.substr(0, GUT.find("[zeilen]"))), "has no case of zeilen");
    for (const char * pZeilen :
         {"[doppelt]\nN=3\n", "[doppelt]\nN=\"3 -> M=6\n", "[doppelt]\nN=3 -> M=6|7\n",
          "[doppelt]\n+ NICHTS A=1\nN=3 -> M=6\n", "[doppelt]\n+ PAT A=1\nN=3 -> M=6\n"})
        EXPECT_THROW(Pruefe(GUT + pZeilen), std::invalid_argument) << pZeilen;
    ::testing::TestPartResultArray ergebnisse;
    {
        const ::testing::ScopedFakeTestPartResultReporter melder(&ergebnisse);
        Pruefe("");
    }
    EXPECT_EQ(ergebnisse.size(), 3) << "no cases, and none of each operation";
}

} // namespace

} // namespace orvostat
