#include "Programmlauf.h"

#include "Lauf.h"
#include "Muster.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <fstream>

namespace orvostat {
namespace {

class CLaufTest : public CProgrammTest {
protected:
    CLaufTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }

    // How many hits a selection has.
    long Hits(const std::vector<std::string> & vWahl) {
        std::vector<std::string> vArgumente{"run", "a.db", "--hits", "--format", "csv"};
        vArgumente.insert(vArgumente.end(), vWahl.begin(), vWahl.end());
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return std::count(ende.sAus.begin(), ende.sAus.end(), '\n') - 1;
    }
};

// What is missing in the data has its reading: the run goes on and says so, or ends with the stated message.
TEST_F(CLaufTest, MissingRowsAreReadAsStated) {
    const struct {
        const char * pSql;
        const char * pText;
        int iCode;
    } aFaelle[] = {
        {"DELETE FROM BILL", "Hits ohne Rechnung", 0},
        {"DELETE FROM ADR WHERE ADRART = 'p'", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM PAT", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM VDESC", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM ORVOKAS", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM GO", "keine Gebührenzeile zur Leistung", 0},
        {"DELETE FROM PUNKTWERT", "kein Punktwert für eine Kassenleistung", 0},
        {"DELETE FROM PLAN", "der Plan der Leistung fehlt", 0},
        {"DELETE FROM BEH", "0 Behandlungen gelesen, 0 Hits", 0},
        {"DELETE FROM MANDANT", "Kein Mandant verfügbar!", 1},
        {"DELETE FROM LEB", "Kein Behandler verfügbar!", 1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL = 'hvmbudget'", "Keine HVM-Gruppen im Selectpool verfügbar!",
         1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL LIKE 'gostattyp%'",
         "Keine GO-Statistiktypen im Selectpool verfügbar!", 1},
    };
    for (const auto & fall : aFaelle) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", fall.pSql);
        const SProgrammende ende = Laufe("run b.db");
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pSql;
        EXPECT_NE((ende.sAus + ende.sFehler).find(fall.pText), std::string::npos) << fall.pSql << '\n'
                                                                                  << ende.sAus;
    }
}

TEST_F(CLaufTest, ASelectionThatFitsNobodyIsNoFailure) {
    for (const char * pWahl :
         {"--selektion zzz", "--alter 150..160", "--plan 999", "--von 01.01.1999 --bis 02.01.1999"}) {
        const SProgrammende ende = Laufe("run a.db " + std::string(pWahl));
        EXPECT_EQ(ende.iCode, 0) << pWahl;
        EXPECT_NE(ende.sAus.find(" 0 Hits"), std::string::npos) << pWahl << '\n' << ende.sAus;
    }
}

TEST_F(CLaufTest, NonsenseIsRefusedWithWhatIsWrong) {
    Sql("a.db", "UPDATE ORVOKAS SET KASKUERZEL = 'Aok01' WHERE KASKUERZEL = 'AOK02'");
    const struct {
        const char * pWahl;
        int iCode;
        const char * pMeldung; // part of the error output
    } aFaelle[] = {
        {"--von 31.02.2024", 2, "--von: DATUM: \"31.02.2024\" ist kein Tag"},
        {"--von 02.01.2024 --bis 01.01.2024", 2, "--bis: das Ende liegt vor dem Anfang"},
        {"--karte 02.01.2024..01.01.2024", 2, "--karte: das Ende liegt vor dem Anfang"},
        {"--letzter-besuch 02.01.2024..gestern", 2, "\"gestern\" ist kein Tag"},
        {"--geburtstag 01.12.2023..31.01.2024", 2, "--geburtstag: der Bereich geht über das Jahresende"},
        {"--alter 60..18", 2, "--alter: das Ende liegt vor dem Anfang"},
        {"--alter 18..abc", 2, "--alter: \"abc\" ist kein Alter in Jahren"},
        {"--patient 99", 1, "Einen Patienten \"99\" gibt es nicht."},
        {"--behandler 1,99", 1, "Einen Behandler \"99\" gibt es nicht."},
        {"--mandant 7", 1, "Die Praxis hat keinen Praxisinhaber \"7\"."},
        {"--kasse keine", 1, "Eine Kasse \"keine\" gibt es nicht."},
        {"--kasse aok01", 1, "Die Kasse \"aok01\" ist nicht eindeutig geschrieben."},
        {"--recall **", 2, "--recall: \"**\" ist weder eine Recallart noch *"},
        {"--recall-intervall W26", 2, "--recall-intervall: \"W26\" hat andere Zeichen als 0123456789"},
        {"--recall-intervall 40", 2, "--recall-intervall: 40 liegt nicht zwischen 0 und 39"},
        {"--recall-vor gestern", 2, "\"gestern\" ist kein Tag"},
        {"--goart kg", 2, "--goart: \"kg\" ist länger als 1 Zeichen"},
        {"--pwlart a,b", 2, "--pwlart: \"a,b\" hat andere Zeichen als"},
        {"--abrart C", 2, "--abrart: \"C\" hat andere Zeichen als czkm"},
        {"--plan 1a", 2, "--plan: \"1a\" hat andere Zeichen als"},
        {"--mfr Mitglied", 2, "--mfr: \"Mitglied\" hat andere Zeichen als"},
        {"--karte .. --kartenart X", 2, "--kartenart: \"X\" hat andere Zeichen als GgjE"},
        {"--kartenart G", 2, "Es gehört dazu: --karte zu --kartenart"},
        {"--format csv", 2, "Es gehört dazu: --hits zu --format"},
        {"--sort alter", 2, "--sort: \"alter\" ist keines von name, patient"},
        {"--status offen", 2, "--status: \"offen\" ist keines von"},
        {"--unbekannt", 2, "--unbekannt"},
    };
    for (const auto & fall : aFaelle) {
        const SProgrammende ende = Laufe("run a.db " + std::string(fall.pWahl));
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pWahl;
        EXPECT_NE(ende.sFehler.find(fall.pMeldung), std::string::npos) << fall.pWahl << '\n' << ende.sFehler;
    }
    EXPECT_EQ(Laufe("run").iCode, 2);
    EXPECT_EQ(Laufe("explain a.db --patient 1001").iCode, 2);
}

// The engine reads a fraction of a ten-thousandth that the SQL does not: the comparison has to notice.
TEST_F(CLaufTest, TheComparisonWithSqlFindsWhatDiffers) {
    EXPECT_EQ(Laufe("run a.db --check").iCode, 0);
    Sql("a.db", "UPDATE PUNKTWERT SET PWWEST = PWWEST || '.9', PWOST = PWOST || '.9'");
    const SProgrammende ende = Laufe("run a.db --check");
    EXPECT_EQ(ende.iCode, 1);
    EXPECT_NE(ende.sAus.find("Abweichungen von der Gegenrechnung mit SQL"), std::string::npos);
}

TEST_F(CLaufTest, EverySectionCanBeReachedAndNarrows) {
    const auto iAlle = Hits({});
    const std::vector<std::string> avWahlen[] = {
        {"--anrede", "Frau"},
        {"--alter", "18..60"},
        {"--geburtstag", "01.01.2024..30.06.2024"},
        {"--plz", "50667"},
        {"--strasse", ""},
        {"--letzter-besuch", "01.01.2024..30.06.2024"},
        {"--ueberweiser", ""},
        {"--hausarzt", ""},
        {"--ohne-leistung", "01.01.2024..31.12.2024"},
        {"--recall", "*"},
        {"--recall", ""},
        {"--karte", "01.01.2024..31.03.2024"},
        {"--kasse", "AOK01"},
        {"--goart", "q"},
        {"--leistung", "13a"},
        {"--abrart", "z"},
        {"--status", "abgerechnet"},
        {"--karte", "01.01.2024..31.12.2024", "--karte-fehlt"},
        {"--mfr", "1"},
        {"--rsa"},
        {"--pwlart", "a"},
        {"--selektion", "zzz"},
        {"--anamnese", "zzz"},
    };
    for (const auto & vWahl : avWahlen)
        EXPECT_LT(Hits(vWahl), iAlle) << vWahl.front() << (vWahl.size() > 1 ? " " + vWahl[1] : "");
}

// The treatments that a condition on the rows finds, against the hits of the option that stands for it.
TEST_F(CLaufTest, AnOptionFindsWhatItsRowsSay) {
    const std::string sRecall =
        "PATNR IN (SELECT PATNR FROM PAT JOIN HISTRECALL h USING (PATNR) WHERE PAT.RECALLART LIKE '_1%' AND "
        "RECALLDATUM = (SELECT max(RECALLDATUM) FROM HISTRECALL WHERE PATNR = h.PATNR) AND h.RECALLITV = ";
    const std::string sVersichert =
        "EXISTS (SELECT 1 FROM VDESC v WHERE v.PATNR = BEH.PATNR AND VDABDATUM <= DATUM AND (VDBISDATUM = "
        "'' OR VDBISDATUM >= DATUM)";
    const struct {
        std::vector<std::string> vWahl;
        std::string sBedingung;
    } aFaelle[] = {
        {{"--mfr", "1"}, sVersichert + " AND MFRDIG = '1')"},
        {{"--mfr", ""}, "1"},
        {{"--mfr", "5", "--karte", "01.07.2024.."},
         sVersichert + " AND MFRDIG = '5') AND PATNR IN (SELECT PATNR FROM VDESC WHERE "
                       "max(EINLESEDATUM, VDABDATUM) >= '20240701')"},
        {{"--plan", "1"},
         "EXISTS (SELECT 1 FROM BILL b WHERE b.PATNR = BEH.PATNR AND b.PATBILL = BEH.PATBILL AND PLANNR = '  "
         "1')"},
        {{"--kasse", "aok01"}, sVersichert + " AND KASKUERZEL = 'AOK01')"},
        {{"--letzter-besuch", "01.12.2024.."},
         "PATNR IN (SELECT PATNR FROM PAT WHERE LASTBEHDATUM >= '20241201')"},
        {{"--geburtstag", "..31.03.2024"},
         "PATNR IN (SELECT PATNR FROM PAT WHERE substr(PATGEBDATUM, 5, 2) <= '03')"},
        {{"--ohne-leistung", "01.01.2024..31.01.2024"},
         "PATNR NOT IN (SELECT PATNR FROM BEH WHERE DATUM < '20240201')"},
        {{"--ohne-leistung", "01.11.2024..", "--bis", "30.06.2024"},
         "DATUM <= '20240630' AND PATNR NOT IN (SELECT PATNR FROM BEH WHERE DATUM >= '20241101')"},
        // A recall that has been: "W" and the weeks stand where the interval digits of the kinds would.
        {{"--recall", "1", "--recall-intervall", "2"}, sRecall + "26)"},
        {{"--recall", "1", "--recall-intervall", "1"}, sRecall + "13)"},
        {{"--recall-intervall", "39"}, "PATNR IN (SELECT PATNR FROM PAT WHERE RECALLART LIKE '1%')"},
        {{"--nur-abrechenbare"},
         "EXISTS (SELECT 1 FROM GO g WHERE g.GOART = BEH.GOART AND g.LSTNR = BEH.LSTNR AND GOKZ = '1')"},
    };
    for (const auto & fall : aFaelle) {
        std::vector<std::string> vWahl = fall.vWahl;
        vWahl.push_back("--ohne-plangatter");
        const long iSoll = std::stol(Frage("a.db", "SELECT count(*) FROM BEH WHERE " + fall.sBedingung));
        EXPECT_GT(iSoll, 0) << vWahl[0] << ' ' << vWahl[1];
        EXPECT_EQ(Hits(vWahl), iSoll) << vWahl[0] << ' ' << vWahl[1];
    }
}

// ---- in the process, with a user who cancels

TEST(CLauf, ACancelledRunKeepsWhatItHas) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    ASSERT_EQ(ErzeugeMuster(*pSpeicher, {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
    dbDatabase.Verbinde(pSpeicher);
    dbDatabaseRO.Verbinde(pSpeicher);
    const auto Laufe = [&](int iAntwort) {
        CStatAccu accu;
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        rekorder.m_iAbbruchAb = static_cast<int>(rekorder.m_vSchritte.size()) + 1;
        rekorder.m_vAntworten = {iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA};
        CLauf lauf(accu, SLaufauftrag());
        const ELauf eLauf = lauf.Laufe();
        return std::pair(eLauf, accu.m_vBehHits.size());
    };
    const auto [eJa, iJa] = Laufe(SOLLICH_JA);
    EXPECT_EQ(eJa, ELauf::Abgebrochen);
    EXPECT_GT(iJa, 400U);
    EXPECT_LT(iJa, 513U);
    const auto [eNein, iNein] = Laufe(0);
    EXPECT_EQ(eNein, ELauf::Fertig);
    EXPECT_GT(iNein, 1200U);
    EXPECT_EQ(EntlieheneRSets(), 0);
    dbDatabase.Verbinde(nullptr);
    dbDatabaseRO.Verbinde(nullptr);
}

// ---- the README's examples

TEST_F(CProgrammTest, TheReadmeShowsWhatTheProgramSays) {
    std::ifstream ein(std::filesystem::path(ORVOSTATBS_SOURCE_DIR) / "README.md");
    std::string sZeile;
    while (std::getline(ein, sZeile) && !sZeile.starts_with("$ orvostat"))
        ;
    int iBeispiele = 0;
    while (sZeile.starts_with("$ orvostat ")) {
        const std::string sBefehl = sZeile.substr(11);
        std::string sSoll;
        while (std::getline(ein, sZeile) && !sZeile.starts_with("$ ") && sZeile != "```")
            sSoll += sZeile + '\n';
        EXPECT_EQ(Laufe(sBefehl).sAus, sSoll) << sBefehl;
        ++iBeispiele;
    }
    EXPECT_EQ(iBeispiele, 3);
}

} // namespace
} // namespace orvostat
