#include "Programmlauf.h"

#include "MusterZufall.h"

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

TEST_F(CMusterTest, AnExistingFileIsOverwrittenOnlyOnDemand) {
    ASSERT_EQ(Laufe("sample a.db --patients 3").iCode, 0);
    const std::string sVorher = Inhalt("a.db");
    const SProgrammende ende = Laufe("sample a.db --patients 4");
    EXPECT_EQ(ende.iCode, 1);
    EXPECT_EQ(ende.sFehler, "\"a.db\" gibt es schon und wird nicht überschrieben.\n");
    EXPECT_TRUE(Inhalt("a.db") == sVorher);
    EXPECT_EQ(Laufe("sample a.db --patients 4 --force").iCode, 0);
    EXPECT_EQ(Frage("a.db", "SELECT count(*) FROM PAT"), "4");
}

TEST_F(CMusterTest, CancellingLeavesNothingBehind) {
    const SProgrammende ende = Laufe({"sample", "a.db", "--patients", "1000000"}, "j\n", 400);
    EXPECT_EQ(ende.iCode, 130);
    EXPECT_NE(ende.sFehler.find("Möchten Sie wirklich den Vorgang abbrechen?"), std::string::npos)
        << ende.sFehler;
    EXPECT_FALSE(std::filesystem::exists(Pfad("a.db")));
    EXPECT_FALSE(std::filesystem::exists(Pfad("a.db.neu")));
}

TEST_F(CMusterTest, TreatmentsLieInTheYearsAskedFor) {
    ASSERT_EQ(Laufe("sample a.db --patients 60 --years 1 --von 01.07.2010").iCode, 0);
    EXPECT_EQ(Frage("a.db", "SELECT min(DATUM) >= '20100701' AND max(DATUM) < '20110701' FROM BEH"), "1");
    EXPECT_EQ(Frage("a.db", "SELECT count(DISTINCT substr(DATUM, 1, 6)) FROM BEH"), "12");
}

// What has to be in a practice for the engine to meet all of its cases: numbers, or at least so many.
struct SBestand {
    const char * pName;
    const char * pSql;
    int iVon;
    int iBis;
};
constexpr int VIELE = 1 << 30;
constexpr SBestand BESTAENDE[] = {
    {"owners", "SELECT count(*) FROM MANDANT", 2, 2},
    {"sites", "SELECT count(*) FROM PRAXIS", 2, 2},
    {"treaters at work", "SELECT count(*) FROM LEB WHERE GELOESCHT = ''", 6, 6},
    {"insurers", "SELECT count(DISTINCT KASKUERZEL) FROM ORVOKAS", 60, 60},
    {"insurers with a history",
     "SELECT count(*) FROM (SELECT 1 FROM ORVOKAS GROUP BY KASKUERZEL HAVING count(*) > 2)", 50, 60},
    {"treatments a patient and year", "SELECT count(*) / 800 FROM BEH", 22, 28},
    {"published point values", "SELECT count(*) FROM PUNKTWERT WHERE PWINFO = 'veröffentlicht'", 13, 13},
    {"point values that differ by region", "SELECT count(*) FROM PUNKTWERT WHERE PWWEST <> PWOST", 100,
     VIELE},
    {"select pools", "SELECT count(DISTINCT SPPOOL) FROM SELECTPOOL", 11, 11},
    {"replaced services", "SELECT count(*) FROM PARPOOL WHERE GRUPPE = ' 54'", 3, 3},
    {"changes of insurer within a quarter",
     "SELECT count(*) FROM VDESC a JOIN VDESC b ON a.PATNR = b.PATNR AND a.VDABDATUM < b.VDABDATUM AND "
     "substr(a.VDABDATUM, 1, 4) = substr(b.VDABDATUM, 1, 4) AND (substr(a.VDABDATUM, 5, 2) - 1) / 3 = "
     "(substr(b.VDABDATUM, 5, 2) - 1) / 3 AND a.KASKUERZEL <> b.KASKUERZEL AND a.VNACHWEIS <> 'p'",
     1, 60},
    {"private patients", "SELECT count(DISTINCT PATNR) FROM VDESC WHERE VNACHWEIS IN ('p', 'P')", 30, 90},
    {"electronic proofs", "SELECT count(*) FROM VDESC WHERE EEB = '1'", 20, VIELE},
    {"foreign patients", "SELECT count(DISTINCT PATNR) FROM VDESC WHERE WSO = '7' AND MFRDIG <> ''", 1, 20},
    {"east region", "SELECT count(DISTINCT PATNR) FROM VDESC WHERE WSO = '9'", 10, 80},
    {"patients without insurance", "SELECT count(*) FROM PAT WHERE PATNR NOT IN (SELECT PATNR FROM VDESC)", 1,
     40},
    {"denture plans with a point value",
     "SELECT count(*) FROM PLAN WHERE PLANART IN ('2', '3') AND PLANPW <> ''", 5, VIELE},
    {"periodontal plans", "SELECT count(*) FROM PLAN WHERE PLANART IN ('4', 'p')", 5, VIELE},
    {"orthodontic plans", "SELECT count(*) FROM PLAN WHERE PLANART IN ('8', '9')", 2, VIELE},
    {"evaluations of a periodontal plan", "SELECT count(*) FROM BEH WHERE LSTNR IN ('beva', 'bevb')", 3,
     VIELE},
    {"mixed point values", "SELECT count(*) FROM BEH WHERE GOART = 'k' AND FAKTOR LIKE 'e1%'", 3, VIELE},
    {"fictitious fillings",
     "SELECT count(DISTINCT DTAGRUND) FROM BEH WHERE LSTNR LIKE '13%' AND DTAGRUND <> ''", 2, 2},
    {"services of a group",
     "SELECT count(*) FROM BEH WHERE GOART = 'g' AND TEXT LIKE 'PAT/%' AND ABRMERKMAL = '='", 5, VIELE},
    {"agreed amounts", "SELECT count(*) FROM BEH WHERE GOART = 'q' AND ABRMERKMAL = '='", 5, VIELE},
    {"distance fields", "SELECT count(*) FROM BEH WHERE ENTFERNUNG LIKE 'K%'", 5, VIELE},
    {"treater deductions", "SELECT count(*) FROM BEH WHERE ICDNOTATIONSKZ IN ('s', 't', 'n', 'v')", 5, VIELE},
    {"entries of text only", "SELECT count(*) FROM BEH WHERE LSTNR = '' AND TEXT <> ''", 500, VIELE},
    {"plain treatments of a hundred",
     "SELECT 100 * sum(ABRMERKMAL = '' AND ENTFERNUNG = '' AND DTAGRUND = '') / count(*) FROM BEH", 90, 99},
    {"names with umlauts",
     "SELECT count(*) FROM PAT WHERE PATNAME LIKE '%ü%' OR PATNAME LIKE '%ö%' OR PATNAME LIKE '%ß%'", 50,
     VIELE},
    {"laboratory entries", "SELECT count(*) FROM LBLOCKENTRY", 20, VIELE},
    {"collective invoices", "SELECT count(*) FROM GLKUFAKT", 3, VIELE},
    {"plaster models", "SELECT count(*) FROM GIPS", 5, VIELE},
    {"invoices", "SELECT count(*) FROM FAKT", 100, VIELE},
    {"remedy prescriptions", "SELECT count(*) FROM REZEPT JOIN HMV USING (PATNR, REZEPTNR)", 10, VIELE},
    {"recalls", "SELECT count(*) FROM HISTRECALL", 100, VIELE},
};

TEST_F(CMusterTest, HoldsWhatAPracticeHolds) {
    ASSERT_EQ(Laufe("sample a.db --patients 400").iCode, 0);
    for (const SBestand & bestand : BESTAENDE) {
        const int iAnzahl = std::stoi(Frage("a.db", bestand.pSql));
        EXPECT_GE(iAnzahl, bestand.iVon) << bestand.pName;
        EXPECT_LE(iAnzahl, bestand.iBis) << bestand.pName;
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
