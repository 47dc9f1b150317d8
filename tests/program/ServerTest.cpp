#ifdef ORVOSTATBS_POSTGRES
#include "Programmlauf.h"

#include "support/Testserver.h"

namespace orvostat {
namespace {

using ServerBefehlTest = CProgrammTest;

TEST_F(ServerBefehlTest, APracticeOnAServerIsCopiedRunAndSavedAsOneInAFile) {
    CTestserver & server = CTestserver::Einziger();
    if (!server.Hindernis().empty()) GTEST_SKIP() << "NOT RUN: " << server.Hindernis();
    ASSERT_EQ(Laufe("sample a.db --patients 30").iCode, 0);
    const std::string sServer = server.Verbindung("orvo:geheim"), sA = sServer + "&praxis=Haus%20A";
    const std::string sName = sServer.substr(sServer.find("host=") + 5);
    EXPECT_EQ(Laufe("copy a.db " + sA).sAus, Laufe("copy a.db b.db").sAus);
    EXPECT_EQ(Laufe("run " + sServer).sAus, Laufe("run a.db").sAus) << "the only practice";
    ASSERT_EQ(Laufe("copy b.db " + sServer + "&praxis=B").iCode, 0);
    ASSERT_EQ(Laufe("copy " + sA + " c.db").iCode, 0);
    EXPECT_EQ(Laufe("hits c.db --format csv --ohne-kopf").sAus,
              Laufe("hits a.db --format csv --ohne-kopf").sAus);
    EXPECT_EQ(Laufe("run " + sServer + " --praxis B --im-bestand --speichern X").iCode, 0);
    EXPECT_EQ(Laufe("pruefen " + sServer + "&praxis=B X --im-bestand").iCode, 0);
    const std::pair<std::string, std::string> aFaelle[] = {
        {"run " + sServer, "Die Datenbank \"postgres\" auf \"" + sName +
                               "\" hat mehrere Praxen; gesagt werden muss, welche gemeint ist.\n"},
        {"copy a.db " + sA,
         "Die Datenbank \"postgres\" auf \"" + sName + "\" hat schon eine Praxis \"Haus A\".\n"},
        {"check " + sA,
         "Das geht nur mit einer Praxisdatei. \"orvostat copy\" macht eine aus der Praxis auf dem Server.\n"},
        {"run a.db --praxis B", "Eine Praxisdatei hält nur eine Praxis; --praxis gilt für einen Server.\n"},
        {"run " + sA + " --speichern X",
         "Neben einer Praxis auf dem Server liegt kein Ordner; --daten oder --im-bestand sagt, wohin.\n"},
    };
    for (const auto & [sBefehl, sSatz] : aFaelle) {
        const SProgrammende ende = Laufe(sBefehl);
        EXPECT_EQ(ende.iCode, 1) << sBefehl;
        EXPECT_EQ(ende.sFehler, sSatz);
    }
    EXPECT_EQ(Laufe("run " + sA + " --format json").sAus.find("geheim"), std::string::npos);
    server.Sql("ALTER TABLE \"BEH\" RENAME TO \"X\"");
    EXPECT_NE(Laufe("run " + sA).sFehler.find("eine Tabelle fehlt oder ist anders aufgebaut"),
              std::string::npos);
}

} // namespace
} // namespace orvostat
#endif
