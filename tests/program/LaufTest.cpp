#include "Programmlauf.h"

#include "Gegenrechnung.h"
#include "Lauf.h"
#include "Muster.h"
#include "Praxis.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <fstream>

namespace orvostat {
namespace {

class CLaufTest : public CProgrammTest {
protected:
    CLaufTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }
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
         {"--selektion zzz", "--alter 150..160", "--behandler 99", "--von 01.01.1999 --bis 02.01.1999"}) {
        const SProgrammende ende = Laufe("run a.db " + std::string(pWahl));
        const bool bLeer = ende.iCode == 0 && ende.sAus.find(" 0 Hits") != std::string::npos;
        const bool bKeinBehandler =
            ende.iCode == 1 && ende.sFehler.find("Kein Behandler") != std::string::npos;
        EXPECT_TRUE(bLeer || bKeinBehandler) << pWahl << '\n' << ende.sAus << ende.sFehler;
    }
}

TEST_F(CLaufTest, WrongUsageIsTwo) {
    for (const char * pWahl :
         {"--von 31.02.2024", "--sort alter", "--status offen", "--recall-vor gestern", "--unbekannt"})
        EXPECT_EQ(Laufe("run a.db " + std::string(pWahl)).iCode, 2) << pWahl;
    EXPECT_EQ(Laufe("run").iCode, 2);
    EXPECT_EQ(Laufe("explain a.db --patient 1001").iCode, 2);
}

// ---- the comparison with SQL

// What is written otherwise than usual and what a flag changes is left out with its reason, or compared as ever.
TEST_F(CLaufTest, TheComparisonWithSqlRaisesNoFalseAlarm) {
    const struct {
        const char * pSql;
        const char * pWahl;
        const char * pGrund; // empty: all hits are compared as before
    } aFaelle[] = {
        {"SELECT 1", "--nebenakten", ""},
        {"UPDATE PUNKTWERT SET PWWEST = PWWEST || '.9', PWOST = PWOST || '.123456'", "", ""},
        {"UPDATE GO SET FAKTOR = '-23000'; UPDATE BEH SET FAKTOR = '' WHERE GOART = 'q'", "", ""},
        {"UPDATE PUNKTWERT SET PWWEST = SUBSTR(PWWEST, 2)", "", "ohne Punktwert"},
        {"UPDATE PUNKTWERT SET PWOST = 'e-' || SUBSTR(PWOST, 2); UPDATE VDESC SET WSO = '9'", "",
         "ohne Punktwert"},
        {"UPDATE VDESC SET KASKUERZEL = LOWER(KASKUERZEL)", "", "ohne Punktwert"},
        {"UPDATE ORVOKAS SET KASFLAG1 = '0' WHERE KASKUERZEL LIKE 'A%'", "--nur-gesetzliche",
         "ohne Punktwert"},
        {"SELECT 1", "--ersatz", "Ersatzleistung"},
        {"SELECT 1", "--kassenanteil", "Kassenanteil"},
    };
    const auto Pruefe = [this](const char * pSql, const char * pWahl) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", pSql);
        const SProgrammende ende = Laufe(std::string("run b.db --check ") + pWahl);
        EXPECT_EQ(ende.iCode, 0) << pSql << pWahl << ende.sAus;
        return ende.sAus.substr(ende.sAus.find("mit SQL: ") + 9);
    };
    const int iAlle = std::stoi(Pruefe("SELECT 1", ""));
    for (const auto & fall : aFaelle) {
        const std::string sZeile = Pruefe(fall.pSql, fall.pWahl);
        EXPECT_EQ(std::stoi(sZeile) < iAlle, *fall.pGrund != 0) << fall.pSql << fall.pWahl << sZeile;
        EXPECT_NE(sZeile.find(fall.pGrund), std::string::npos) << fall.pSql << fall.pWahl << sZeile;
    }
}

// A run over a.db against the rows of a file in which one thing is other than it was then.
TEST_F(CLaufTest, TheComparisonWithSqlFindsACent) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    CStatAccu accu;
    {
        const CPraxis praxis(Pfad("a.db"), EModus::Lesen);
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        ASSERT_EQ(CLauf(accu, SLaufauftrag()).Laufe(), ELauf::Fertig);
    }
    const auto Verschieden = [&](const std::string & sSql) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", sSql);
        const SGegenrechnung rechnung = RechneGegen(Pfad("b.db"), accu.m_vBehHits, {});
        EXPECT_TRUE(rechnung.bGerechnet) << rechnung.sFehler;
        return std::ranges::count_if(rechnung.vSummen, &SGegensumme::Verschieden);
    };
    const auto Eine = [](const std::string & sSatz, const std::string & sWo) {
        return "UPDATE BEH SET " + sSatz + " WHERE SCHLUESSEL1 = (SELECT MIN(SCHLUESSEL1) FROM BEH WHERE " +
               sWo + ")";
    };
    EXPECT_EQ(Verschieden("SELECT 1"), 0);
    EXPECT_EQ(
        Verschieden(Eine("BETRAG = 'e' || (SUBSTR(BETRAG, 2) + 1)", "ABRMERKMAL = '=' AND GOART = 'k'")), 1);
    EXPECT_EQ(Verschieden(Eine("ANZAHL = 'x101'", "GOART = 'q' AND ANZAHL = 'x100' AND ABRMERKMAL = ''")), 1);
    EXPECT_EQ(Verschieden(Eine("LSTNR = '04'", "GOART = 'k' AND LSTNR = '01'")), 1);
    EXPECT_GT(Verschieden("UPDATE PUNKTWERT SET PWWEST = 'e' || (SUBSTR(PWWEST, 2) + 9)"), 9);
}

TEST_F(CLaufTest, EverySectionCanBeReachedAndNarrows) {
    const auto Hits = [this](const std::vector<std::string> & vWahl) {
        std::vector<std::string> vArgumente{"run", "a.db", "--hits", "--format", "csv"};
        vArgumente.insert(vArgumente.end(), vWahl.begin(), vWahl.end());
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return std::count(ende.sAus.begin(), ende.sAus.end(), '\n');
    };
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
        {"--kasse", "keine"},
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
