#include "Programmlauf.h"

#include "orvostatbs/host/Praxispruefung.h"

#include <fstream>
#include <sstream>

namespace orvostat {
namespace {

TEST(Mangel, KnowsWhichTextsAreSound) {
    struct SFall {
        EArt eArt;
        const char * pText;
        bool bGut;
    };
    constexpr SFall FAELLE[] = {
        {EArt::Text, "x\x01", true},          {EArt::Zahl, "", true},
        {EArt::Zahl, "  12", true},           {EArt::Zahl, "-7", true},
        {EArt::Zahl, "12a", false},           {EArt::Zahl, "-", false},
        {EArt::Zahl, "1 2", false},           {EArt::Datum, "20240229", true},
        {EArt::Datum, "20230229", false},     {EArt::Datum, "19560000", true},
        {EArt::Datum, "19560500", true},      {EArt::Datum, "19561300", false},
        {EArt::Datum, "00000000", false},     {EArt::Datum, "2024010", false},
        {EArt::Datum, "01.01.2024", false},   {EArt::Datum, "99991231", true},
        {EArt::Datum, "        ", true},      {EArt::Betrag, "e12345", true},
        {EArt::Betrag, "e         0", true},  {EArt::Betrag, " -5", true},
        {EArt::Betrag, "12345", true},        {EArt::Betrag, "e4366.89", true},
        {EArt::Betrag, "e1.1234567", false},  {EArt::Betrag, "e", false},
        {EArt::Betrag, "12,34", false},       {EArt::Betrag, "e12.", false},
        {EArt::Betrag, "x100", false},        {EArt::Betrag, "e--5", false},
        {EArt::Punktwert, "e13233", true},    {EArt::Punktwert, "e13233.1234", true},
        {EArt::Punktwert, "e1.12345", false}, {EArt::Punktwert, "1.3233 Euro", false},
    };
    for (const SFall & fall : FAELLE)
        EXPECT_EQ(Mangel(fall.eArt, fall.pText) == nullptr, fall.bGut) << '"' << fall.pText << '"';
}

using CPruefbefehlTest = CProgrammTest;

TEST_F(CPruefbefehlTest, ASampleIsSound) {
    ASSERT_EQ(Laufe("sample a.db --patients 300 --years 3").iCode, 0);
    const SProgrammende ende = Laufe("check a.db");
    EXPECT_EQ(ende.iCode, 0) << ende.sAus;
    EXPECT_NE(ende.sAus.find("\nPAT             300       0\n"), std::string::npos) << ende.sAus;
    EXPECT_NE(ende.sAus.find("\nDie Praxisdatei ist in Ordnung.\n"), std::string::npos);
}

TEST_F(CPruefbefehlTest, NamesTheRowAndWhatIsWrongWithIt) {
    ASSERT_EQ(Laufe("sample gut.db --patients 20").iCode, 0);
    struct SFall {
        const char * pSql;
        const char * pMeldung; // a whole line
    };
    constexpr SFall FAELLE[] = {
        {"UPDATE PAT SET PATGEBDATUM = '31.12.1956' WHERE PATNR = '      1003'",
         "PAT [1003]: PATGEBDATUM \"31.12.1956\" ist kein Datum"},
        {"UPDATE PAT SET PATPROZENT = 'alle' WHERE PATNR = '      1003'",
         "PAT [1003]: PATPROZENT \"alle\" ist keine Zahl"},
        {"UPDATE PUNKTWERT SET PWWEST = 'e1,32' WHERE PWAB = '20250101' AND PWGRP = 'aok' AND PWLART = 'a'",
         "PUNKTWERT [20250101, aok, a]: PWWEST \"e1,32\" ist kein Punktwert"},
        {"UPDATE GO SET EINFACHSATZ = 'viel' WHERE GOART = 'p' AND LSTNR = '5'",
         "GO [p, 5]: EINFACHSATZ \"viel\" ist kein Betrag"},
        {"DELETE FROM LEB WHERE LEB = '  90'; UPDATE PAT SET ADRNR = '      9999' WHERE PATNR = '      1003'",
         "PAT [1003]: ADRNR \"      9999\" gibt es in ADR nicht"},
        {"UPDATE BILL SET PRAXISNR = ' 9' WHERE PATNR = '      1001' AND PATBILL = '   1'",
         "BILL [1001, 1]: PRAXISNR \" 9\" gibt es in MANDANT nicht"},
        {"UPDATE PAT SET PATNAME = 'Łódź' WHERE PATNR = '      1003'",
         "PAT [1003]: PATNAME \"?ód?\" hat in der Datei Zeichen, die Windows-1252 fehlen"},
        {"UPDATE PAT SET PATNR = '      1999' WHERE PATNR = '      1003'",
         "PAT [1004]: Schlüssel 1 steht nicht an seinem Platz"},
        {"UPDATE PAT SET PATNR = '      1003a' WHERE PATNR = '      1003'",
         "PAT [1003a]: Schlüssel 1 passt nicht zu den Spalten"},
        {"UPDATE GO SET LSTKUERZEL = LSTKUERZEL || 'a' WHERE GOART = 'p' AND LSTNR = '5'",
         "GO [p, 5]: Schlüssel 2 passt nicht zu den Spalten"},
        {"INSERT INTO GOCHECK SELECT SCHLUESSEL1, LFD + 1000000, GOART, LSTNR, EXTRAFLAG, CHECKTEXT FROM "
         "GOCHECK "
         "WHERE LSTNR = '01'",
         "GOCHECK [k, 01, p]: den Schlüssel gibt es mehrfach"},
    };
    for (const SFall & fall : FAELLE) {
        std::filesystem::copy_file(Pfad("gut.db"), Pfad("a.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("a.db", fall.pSql);
        const SProgrammende ende = Laufe("check a.db");
        EXPECT_EQ(ende.iCode, 1) << fall.pSql;
        EXPECT_NE(ende.sAus.find(std::string("\n") + fall.pMeldung + '\n'), std::string::npos)
            << "missing: " << fall.pMeldung << '\n'
            << ende.sAus;
    }
}

TEST_F(CPruefbefehlTest, ATreatmentWithoutItsRowsIsNamedOncePerReference) {
    ASSERT_EQ(Laufe("sample a.db --patients 3 --seed 3").iCode, 0);
    Sql("a.db", "DELETE FROM GO WHERE GOART = 'k' AND LSTNR = '01'");
    const SProgrammende ende = Laufe("check a.db");
    EXPECT_EQ(ende.iCode, 1);
    const std::string sAnzahl = Frage("a.db", "SELECT count(*) FROM BEH WHERE GOART = 'k' AND LSTNR = '01'");
    EXPECT_NE(ende.sAus.find("\n" + sAnzahl + " Mängel\n"), std::string::npos) << ende.sAus;
}

TEST_F(CPruefbefehlTest, ACopyEqualsItsOriginalAndReplacesNothing) {
    ASSERT_EQ(Laufe("sample a.db --patients 30").iCode, 0);
    const SProgrammende ende = Laufe("copy a.db b.db");
    EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
    EXPECT_NE(ende.sAus.find(" kopiert und verglichen\n"), std::string::npos);
    EXPECT_EQ(Laufe("hits a.db --format csv --ohne-kopf").sAus,
              Laufe("hits b.db --format csv --ohne-kopf").sAus);
    EXPECT_EQ(Laufe("check b.db").iCode, 0);

    const std::string sVorher = Inhalt("b.db");
    EXPECT_EQ(Laufe("copy a.db b.db").iCode, 1);
    EXPECT_EQ(Laufe("copy a.db a.db").iCode, 1);
    EXPECT_EQ(Laufe("copy nirgends.db c.db").iCode, 1);
    EXPECT_TRUE(Inhalt("b.db") == sVorher);

    Sql("a.db", "UPDATE BEH SET TEXT = '漢' WHERE PATNR <= '      1009'; "
                "UPDATE PAT SET PATNAME = 'Łódź' WHERE PATNR = '      1003'");
    const std::string sTexte = Frage("a.db", "SELECT count(*) + 1 FROM BEH WHERE PATNR <= '      1009'");
    EXPECT_EQ(Laufe("copy a.db c.db").iCode, 1);
    EXPECT_EQ(Laufe("copy a.db c.db").sFehler, "Die Kopie verlöre Zeichen, die Windows-1252 fehlen, in " +
                                                   sTexte + " Texten, zuerst in: PAT [1003] PATNAME.\n");
    std::fstream(Pfad("b.db"), std::ios::in | std::ios::out | std::ios::binary)
        .seekp(39)
        .put(5); // free pages
    EXPECT_EQ(Laufe("hits b.db").iCode, 0);
    EXPECT_EQ(Laufe("copy b.db c.db").sFehler,
              "Die Praxisdatei hat Schäden und wird nicht kopiert. \"orvostat check\" zeigt sie.\n");
    EXPECT_FALSE(std::filesystem::exists(Pfad("c.db")) || std::filesystem::exists(Pfad("c.db.neu")));
}

TEST_F(CPruefbefehlTest, AnOlderFileIsCheckedAsItIsAndCopiedIntoANewerOne) {
    std::ostringstream sSql;
    sSql << std::ifstream(ORVOSTATBS_SOURCE_DIR "/tests/data/praxis-v1.sql").rdbuf();
    Sql("a.db", sSql.str());
    const std::string sVorher = Inhalt("a.db");
    EXPECT_EQ(Laufe("check a.db").iCode, 0);
    EXPECT_EQ(Laufe("copy a.db b.db").iCode, 0);
    EXPECT_TRUE(Inhalt("a.db") == sVorher);
    EXPECT_EQ(Frage("b.db", "PRAGMA user_version"), "2");
    EXPECT_EQ(Laufe("check b.db").iCode, 0);
    EXPECT_EQ(Laufe("hits a.db --format csv --ohne-kopf").sAus,
              Laufe("hits b.db --format csv --ohne-kopf").sAus);
}

} // namespace
} // namespace orvostat
