#include "Programmlauf.h"

#include "MusterZufall.h"
#include "NeueDatei.h"

#include "support/Faelle.h"

#include <CLI/CLI.hpp>

#include <fstream>
#include <sstream>

namespace orvostat {
namespace {

using CMusterTest = CProgrammTest;

// The numbers are those of the published algorithm, computed by hand elsewhere: a change would change every sample.
TEST(MusterZufall, DrawsTheSameNumbersEverywhere) {
    CZufall zufall(1, 0);
    std::string s;
    for (int i = 0; i < 8; ++i)
        s += std::to_string(zufall.Unter(1000)) + ' ';
    EXPECT_EQ(s, "258 876 351 4 892 233 375 627 ");
}

TEST_F(CMusterTest, SeedAndPatientDecideAndNothingElse) {
    ASSERT_EQ(Laufe("sample a.db --patients 25 --seed 7").iCode, 0);
    ASSERT_EQ(Laufe("sample b.db --patients 25 --seed 7").iCode, 0);
    ASSERT_EQ(Laufe("sample c.db --patients 25 --seed 8").iCode, 0);
    ASSERT_EQ(Laufe("sample d.db --patients 5 --seed 7").iCode, 0);
    EXPECT_TRUE(Inhalt("a.db") == Inhalt("b.db"));
    const std::string sSql =
        "SELECT group_concat(DATUM || LSTNR || BETRAG) FROM BEH WHERE PATNR <= '      1005'";
    EXPECT_NE(Frage("a.db", sSql), Frage("c.db", sSql));
    EXPECT_EQ(Frage("a.db", sSql), Frage("d.db", sSql));
}

TEST_F(CMusterTest, FilesThatAreThereStayUnlessTheUserSaysSo) {
    std::ofstream(Pfad("text")) << "text";
    std::ofstream(Pfad("rest.db-journal"));
    std::filesystem::create_symlink("text", Pfad("verweis.db"));
    PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/dateien.txt");
    EXPECT_EQ(Dateien(), "kopie.db muster.db rest.db-journal text verweis.db");
}

TEST_F(CMusterTest, OfTwoNewFilesTheFirstToBeCompleteGetsTheName) {
    std::ofstream(Pfad("a.db.neu")) << "fremd";
    std::string sErste;
    {
        CNeueDatei erste(Pfad("a.db"), EVorhanden::Bleibt);
        CNeueDatei zweite(Pfad("a.db"), EVorhanden::Bleibt);
        ASSERT_TRUE(erste.Speicher().SetzeHerkunft(HERKUNFT_MUSTER));
        erste.Fertig();
        sErste = Inhalt("a.db");
        EXPECT_THROW(zweite.Fertig(), CLI::RuntimeError);
        // What may be replaced at the beginning may be another file at the end.
        CNeueDatei dritte(Pfad("a.db"), EVorhanden::MusterWeicht);
        std::filesystem::rename(Pfad("a.db"), Pfad("b.db"));
        std::ofstream(Pfad("a.db")) << "fremd";
        EXPECT_THROW(dritte.Fertig(), CLI::RuntimeError);
        CNeueDatei vierte(Pfad("c.db"), EVorhanden::Bleibt);
        std::filesystem::path eigener;
        for (const auto & eintrag : std::filesystem::directory_iterator(Pfad("")))
            if (eintrag.path().filename().string().starts_with("c.db.neu-")) eigener = eintrag.path();
        std::filesystem::rename(eigener, Pfad("d.db"));
        std::ofstream(eigener) << "fremd";
        EXPECT_THROW(vierte.Fertig(), CLI::RuntimeError);
        EXPECT_TRUE(std::filesystem::remove(eigener));
    }
    EXPECT_EQ(Dateien(), "a.db a.db.neu b.db d.db");
    EXPECT_EQ(Inhalt("a.db") + Inhalt("a.db.neu"), "fremdfremd");
    EXPECT_TRUE(Inhalt("b.db") == sErste);
}

TEST_F(CMusterTest, WhateverEndsItNothingIsLeftBehind) {
    for (const int iSignal : {SIGINT, SIGTERM}) {
        const SProgrammende ende = Laufe({"sample", "a.db", "--patients", "1000000"}, "j\n", 400, iSignal);
        EXPECT_EQ(ende.iCode, iSignal == SIGINT ? 130 : -1);
        EXPECT_EQ(ende.sFehler.find("den Vorgang abbrechen?") != ende.sFehler.npos, iSignal == SIGINT);
        EXPECT_EQ(Dateien(), "") << iSignal;
    }
}

TEST_F(CMusterTest, TreatmentsLieInTheYearsAskedFor) {
    ASSERT_EQ(Laufe("sample a.db --patients 60 --years 1 --von 01.07.2010").iCode, 0);
    EXPECT_EQ(Frage("a.db", "SELECT min(DATUM) >= '20100701' AND max(DATUM) < '20110701' FROM BEH"), "1");
    EXPECT_EQ(Frage("a.db", "SELECT count(DISTINCT substr(DATUM, 1, 6)) FROM BEH"), "12");
}

TEST_F(CMusterTest, HoldsWhatAPracticeHolds) {
    ASSERT_EQ(Laufe("sample a.db --patients 400").iCode, 0);
    ASSERT_EQ(Laufe("sample gross.db --patients 1500").iCode, 0);
    for (const auto & [iZeile, sZeile] :
         LiesZeilen(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/bestand.txt")) {
        const auto iPfeil = sZeile.find(" <- ");
        if (iPfeil != sZeile.npos) {
            EXPECT_EQ(Frage("gross.db", sZeile.substr(iPfeil + 4)), sZeile.substr(0, iPfeil)) << iZeile;
            continue;
        }
        std::istringstream ein(sZeile);
        std::string sVon, sBis, sSql;
        std::getline(ein >> sVon >> sBis, sSql);
        const int iAnzahl = std::stoi(Frage("a.db", sSql));
        EXPECT_GE(iAnzahl, std::stoi(sVon)) << sZeile;
        EXPECT_LE(iAnzahl, sBis == "-" ? iAnzahl : std::stoi(sBis)) << sZeile;
    }
}

} // namespace
} // namespace orvostat
