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

TEST_F(CMusterTest, SameSeedGivesTheSameBytesAndAnotherSeedDoesNot) {
    ASSERT_EQ(Laufe("sample a.db --patients 40 --seed 7").iCode, 0);
    ASSERT_EQ(Laufe("sample b.db --patients 40 --seed 7").iCode, 0);
    ASSERT_EQ(Laufe("sample c.db --patients 40 --seed 8").iCode, 0);
    EXPECT_TRUE(Inhalt("a.db") == Inhalt("b.db"));
    EXPECT_FALSE(Inhalt("a.db") == Inhalt("c.db"));
}

TEST_F(CMusterTest, PatientsDoNotDependOnHowManyThereAre) {
    ASSERT_EQ(Laufe("sample a.db --patients 5").iCode, 0);
    ASSERT_EQ(Laufe("sample b.db --patients 25").iCode, 0);
    const std::string sSql =
        "SELECT group_concat(DATUM || LSTNR || BETRAG) FROM BEH WHERE PATNR <= '      1005'";
    EXPECT_EQ(Frage("a.db", sSql), Frage("b.db", sSql));
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
        for (const auto & eintrag : std::filesystem::directory_iterator(Pfad("")))
            if (eintrag.path().filename().string().starts_with("c.db.neu-"))
                std::filesystem::rename(eintrag, Pfad("d.db"));
        EXPECT_THROW(vierte.Fertig(), CLI::RuntimeError);
    }
    EXPECT_EQ(Dateien(), "a.db a.db.neu b.db d.db");
    EXPECT_EQ(Inhalt("a.db") + Inhalt("a.db.neu"), "fremdfremd");
    EXPECT_TRUE(Inhalt("b.db") == sErste);
}

TEST_F(CMusterTest, WhateverEndsItNothingIsLeftBehind) {
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP}) {
        const SProgrammende ende = Laufe({"sample", "a.db", "--patients", "1000000"}, "j\n", 400, iSignal);
        EXPECT_EQ(ende.iCode, iSignal == SIGINT ? 130 : -1);
        EXPECT_EQ(ende.sFehler.find("Möchten Sie wirklich den Vorgang abbrechen?") != ende.sFehler.npos,
                  iSignal == SIGINT)
            << ende.sFehler;
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
    for (const auto & [iZeile, sZeile] :
         LiesZeilen(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/bestand.txt")) {
        std::istringstream ein(sZeile);
        std::string sVon, sBis, sSql;
        std::getline(ein >> sVon >> sBis, sSql);
        const int iAnzahl = std::stoi(Frage("a.db", sSql));
        EXPECT_GE(iAnzahl, std::stoi(sVon)) << sZeile;
        EXPECT_LE(iAnzahl, sBis == "-" ? iAnzahl : std::stoi(sBis)) << sZeile;
    }
    EXPECT_EQ(
        Frage("a.db", "SELECT DISTINCT SPPOOL FROM SELECTPOOL ORDER BY 1"),
        "gostattyp gostattyp2 gostattyp3 gostattyp4 hvmbudget kassenarttyp kassengrptyp medstatistikspalte "
        "statistikspalte techlsttyp verhaeltnis");
}

TEST_F(CMusterTest, BillsHaveEveryStoredKind) {
    ASSERT_EQ(Laufe("sample a.db --patients 1500").iCode, 0);
    EXPECT_EQ(
        Frage("a.db", "SELECT group_concat(ABRART, '') FROM (SELECT DISTINCT ABRART FROM BILL ORDER BY 1)"),
        "12345678abcdegnpst");
}

// GOZ section 5 (1): points times 5.62421 cents times factor, rounded once.
TEST_F(CMusterTest, PrivateAmountsAreThoseOfTheSchedule) {
    ASSERT_EQ(Laufe("sample a.db --patients 1500").iCode, 0);
    struct SFall {
        const char * pLst;
        const char * pFaktor;
        const char * pBetrag;
    };
    for (const SFall & fall : std::initializer_list<SFall>{{"0010", "23000", "e1294"},
                                                           {"0010", "10000", "e562"},
                                                           {"2080", "23000", "e7192"},
                                                           {"2080", "35000", "e10945"},
                                                           {"2197", "", "e1682"}}) // the schedule's own 2.3
        EXPECT_EQ(
            Frage("a.db",
                  std::string("SELECT DISTINCT BETRAG FROM BEH WHERE GOART = 'q' AND ANZAHL = 'x100' AND "
                              "ABRMERKMAL <> '=' AND LSTNR = '") +
                      fall.pLst + "' AND FAKTOR = '" + fall.pFaktor + "'"),
            fall.pBetrag)
            << fall.pLst << ' ' << fall.pFaktor;
}

TEST_F(CMusterTest, ServicesCarryThePublishedPoints) {
    ASSERT_EQ(Laufe("sample a.db --patients 1").iCode, 0);
    const std::string sGo = "SELECT GEBPKT FROM GO WHERE LSTNR = ";
    EXPECT_EQ(Frage("a.db", sGo + "'13a' AND GOART = 'k'"), "3300");
    EXPECT_EQ(Frage("a.db", sGo + "'ä935d' AND GOART = 'g'"), "3600");
    EXPECT_EQ(Frage("a.db", sGo + "'0010' AND GOART = 'q'"), "100");
    EXPECT_EQ(Frage("a.db", "SELECT PUNKTE FROM GOPUNKTE WHERE GOART = 'k' AND LSTNR = '13a' ORDER BY PKTAB"),
              "3200 3300");
    EXPECT_EQ(
        Frage("a.db",
              "SELECT PWWEST FROM PUNKTWERT WHERE PWGRP = 'aok' AND PWLART = 'a' AND PWAB = '20250101'"),
        "e13233");
}

} // namespace
} // namespace orvostat
