#include "Programmlauf.h"

#include "support/Faelle.h"

#include <fstream>
#include <sstream>

namespace orvostat {
namespace {

using CPruefbefehlTest = CProgrammTest;

TEST_F(CPruefbefehlTest, NamesTheRowAndWhatIsWrongWithIt) {
    ASSERT_EQ(Laufe("sample gut.db --patients 20").iCode, 0);
    const SProgrammende gut = Laufe("check gut.db");
    EXPECT_EQ(gut.iCode, 0) << gut.sAus;
    EXPECT_NE(gut.sAus.find("\nPAT              20       0\n"), std::string::npos) << gut.sAus;
    EXPECT_NE(gut.sAus.find("\nDie Praxisdatei ist in Ordnung.\n"), std::string::npos);

    const auto vZeilen = LiesZeilen(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/maengel.txt");
    for (std::size_t i = 0; i + 1 < vZeilen.size(); i += 2) {
        std::filesystem::copy_file(Pfad("gut.db"), Pfad("a.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("a.db", vZeilen[i].second);
        const SProgrammende ende = Laufe("check a.db");
        EXPECT_EQ(ende.iCode, 1) << vZeilen[i].second;
        EXPECT_NE(ende.sAus.find('\n' + vZeilen[i + 1].second + '\n'), std::string::npos)
            << "missing: " << vZeilen[i + 1].second << '\n'
            << ende.sAus;
    }
}

TEST_F(CPruefbefehlTest, ARunCountsWhatItCannotRead) {
    ASSERT_EQ(Laufe("sample a.db --patients 20").iCode, 0);
    Sql("a.db", "UPDATE BEH SET ANZAHL = 'xABC' WHERE GOART = 'k' AND LSTNR = '01'; "
                "UPDATE BEH SET FAKTOR = '2.3fach' WHERE GOART = 'q' AND LSTNR = '0010'");
    const std::string sAnzahl =
        Frage("a.db", "SELECT count(*) FROM BEH WHERE ANZAHL = 'xABC' OR FAKTOR = '2.3fach'");
    const std::string sAus = Laufe("run a.db").sAus;
    EXPECT_NE(sAus.find("\n  " + sAnzahl + " Hits, deren Menge oder Faktor unlesbar oder unmöglich ist\n"),
              std::string::npos)
        << sAus;
}

TEST_F(CPruefbefehlTest, ACopyEqualsItsOriginalAndKeepsWhoMayReadIt) {
    ASSERT_EQ(Laufe("sample a.db --patients 30").iCode, 0);
    const auto Rechte = [&](const char * pName) {
        return static_cast<int>(std::filesystem::status(Pfad(pName)).permissions());
    };
    EXPECT_EQ(Rechte("a.db"), 0600);
    std::filesystem::permissions(Pfad("a.db"), std::filesystem::perms(0640));
    ASSERT_EQ(Laufe("copy a.db b.db").iCode, 0);
    EXPECT_EQ(Rechte("b.db"), 0640);
    EXPECT_EQ(Laufe("hits a.db --format csv --ohne-kopf").sAus,
              Laufe("hits b.db --format csv --ohne-kopf").sAus);
    EXPECT_EQ(Laufe("check b.db").iCode, 0);

    Sql("a.db", "UPDATE BEH SET TEXT = '漢' WHERE PATNR <= '      1009'; "
                "UPDATE PAT SET PATNAME = 'Łódź' WHERE PATNR = '      1003'");
    const std::string sTexte = Frage("a.db", "SELECT count(*) + 1 FROM BEH WHERE PATNR <= '      1009'");
    EXPECT_EQ(Laufe("copy a.db c.db").sFehler, "Die Kopie verlöre Zeichen, die Windows-1252 fehlen, in " +
                                                   sTexte + " Texten, zuerst in: PAT [1003] PATNAME.\n");
    std::fstream(Pfad("b.db"), std::ios::in | std::ios::out | std::ios::binary)
        .seekp(39)
        .put(5); // free pages
    EXPECT_EQ(Laufe("hits b.db").iCode, 0);
    EXPECT_EQ(Laufe("copy b.db c.db").sFehler,
              "Die Praxisdatei hat Schäden und wird nicht kopiert. \"orvostat check\" zeigt sie.\n");
    EXPECT_EQ(Dateien(), "a.db b.db");
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
