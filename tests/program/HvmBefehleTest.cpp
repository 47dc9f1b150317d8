// The configuration as the program shows and changes it.
#include "Programmlauf.h"

#include "support/Verzeichnis.h"

#include <chrono>
#include <fstream>
#include <future>
#include <thread>

#include <sqlite3.h>

namespace orvostat {
namespace {

class CHvmBefehlTest : public CProgrammTest {
protected:
    CHvmBefehlTest() { EXPECT_EQ(Laufe("sample praxis.db --patients 1 --years 1").iCode, 0); }
    SProgrammende Hvm(const std::string & sArgumente) { return Laufe("hvm praxis.db " + sArgumente); }
    int Pruefe(const std::string & sName) {
        return PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/" + sName + ".txt");
    }
};

TEST_F(CHvmBefehlTest, AenderungenTreffenNurDasGenannte) { Pruefe("hvm"); }

TEST_F(CHvmBefehlTest, WasNichtGehtAendertNichts) {
    const std::string sVorher = Inhalt("praxis.db");
    Pruefe("hvm_verweigert");
    EXPECT_EQ(Inhalt("praxis.db"), sVorher);
}

// What another practice has, and the file does not, is gone: groups, selections, years.
TEST_F(CHvmBefehlTest, EineDateiBringtDieEinstellungenZurueck) {
    const std::string sVorher = Hvm("show --format JSON").sAus;
    std::ofstream(Pfad("alles.json")) << sVorher;
    for (const char * pAenderung : {"set PARZuKCH an", "set --land BE", "services 107a Ä1",
                                    "pots c --gruppe h --auswahl x", "pots 9 --aktiv an", "pots p --bw 7",
                                    "vacation 2026 --tage mo", "vacation 2024 --urlaub 03.01.2024"})
        EXPECT_EQ(Hvm(pAenderung).iCode, 0) << pAenderung;
    EXPECT_NE(Hvm("show --format json").sAus, sVorher);
    const std::string sAntwort = Hvm("set --aus alles.json").sAus;
    EXPECT_EQ(sAntwort, Hvm("show").sAus);
    EXPECT_EQ(Hvm("show --format json").sAus, sVorher);
}

// The documented file, which names parts: the rest stays.
TEST_F(CHvmBefehlTest, EineDateiAendertNurWasSieNennt) {
    const std::string sSeite = LiesDatei(ORVOSTATBS_SOURCE_DIR "/docs/hvm.md");
    const std::size_t iAb = sSeite.find("```json\n") + 8;
    std::ofstream(Pfad("teil.json")) << sSeite.substr(iAb, sSeite.find("```", iAb) - iAb);
    EXPECT_EQ(Hvm("set --aus teil.json").iCode, 0);
    EXPECT_EQ(Frage("praxis.db",
                    "SELECT WERT FROM PARPOOL WHERE KUERZEL LIKE 'bg- 1%' OR KUERZEL = 'einstell' OR "
                    "KUERZEL LIKE 'leist%' OR KUERZEL LIKE 'ur- 1%' ORDER BY KUERZEL"),
              "eKons|1|100|1| x1|Ersatzkassen 001100111000100010001 01     04     107a    2024070120240712");
}

TEST_F(CHvmBefehlTest, EineDateiMitFehlernAendertNichts) {
    const struct {
        const char * pDatei;
        const char * pMeldung;
    } vFaelle[] = {
        {"[]", "Die Datei: erwartet wird { Name: Wert, ... }."},
        {R"({"schalter": {"PARZuKCH": true, "Nix": true}})", "schalter.Nix: diesen Schalter gibt es nicht."},
        {R"({"schalter": {"PARZuKCH": 1}})", "schalter.PARZuKCH: erwartet wird true oder false."},
        {R"({"schalter": {"Einstell14": 10}})",
         "schalter.Einstell14: erwartet wird eine ganze Zahl von 0 bis 9."},
        {R"({"feiertage": ["Ostern"]})", "feiertage[1]: diesen Feiertag kann man nicht schalten."},
        {R"({"leistungen": ["01", "01"]})", "leistungen: \"01\" steht zweimal in der Liste."},
        {R"({"leistungen": ["\u4e2d\u4e2d"]})",
         "leistungen[1]: \"中中\" hat Zeichen, die Windows-1252 fehlen."},
        {R"({"inhaber": {"9": {}}})", "Die Praxis hat keinen Praxisinhaber \"9\"."},
        {R"({"inhaber": {"1": {"toepfe": {"q": {}}}}})", "inhaber.1.toepfe.q: diesen Topf gibt es nicht."},
        {R"({"inhaber": {"1": {"toepfe": {"c": {"wert": 3000000000}}}}})",
         "inhaber.1.toepfe.c.wert: erwartet wird eine ganze Zahl von -2147483648 bis 2147483647."},
        {R"({"inhaber": {"1": {"toepfe": {"c": {"gruppen": {"g": {"": "a|b"}}}}}}})",
         "inhaber.1.toepfe.c.gruppen.g.: das Zeichen | trennt die Felder der Zeile."},
        {R"({"inhaber": {"1": {"jahre": {"2024": {"urlaub": ["2024-02-30"]}}}}})",
         "inhaber.1.jahre.2024.urlaub[1]: \"2024-02-30\" ist kein Tag, erwartet wird TT.MM.JJJJ, JJJJ-MM-TT "
         "oder "
         "JJJJMMTT."},
    };
    const std::string sVorher = Inhalt("praxis.db");
    for (const auto & fall : vFaelle) {
        std::ofstream(Pfad("falsch.json")) << fall.pDatei;
        const SProgrammende ende = Hvm("set --aus falsch.json");
        EXPECT_EQ(ende.iCode, 1) << fall.pDatei;
        EXPECT_EQ(ende.sFehler, std::string(fall.pMeldung) + '\n');
        EXPECT_EQ(Inhalt("praxis.db"), sVorher) << fall.pDatei;
    }
}

// Somebody else is about to change the row in which the switch stands: the command waits and keeps his change; where
// he takes too long, it gives up.
TEST_F(CHvmBefehlTest, VonZweiAenderungenEinerReiheGehtKeineVerloren) {
    sqlite3 * p = nullptr;
    sqlite3_open(Pfad("praxis.db").c_str(), &p);
    const auto Fuehre = [&](const char * pSql) {
        EXPECT_EQ(sqlite3_exec(p, pSql, nullptr, nullptr, nullptr), 0);
    };
    Fuehre("BEGIN IMMEDIATE");
    auto ende = std::async(std::launch::async, [&] { return Hvm("set KCHMitKFO an"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(400)); // it has got as far as it can
    Fuehre("UPDATE PARPOOL SET WERT = '1' || substr(WERT, 2) WHERE KUERZEL = 'einstell'; COMMIT");
    EXPECT_EQ(ende.get().iCode, 0);
    EXPECT_EQ(Frage("praxis.db", "SELECT substr(WERT, 1, 2) FROM PARPOOL WHERE KUERZEL = 'einstell'"), "11");

    Fuehre("BEGIN IMMEDIATE");
    const SProgrammende gescheitert = Hvm("set KBRMitLab aus");
    sqlite3_close(p);
    EXPECT_EQ(gescheitert.iCode, 1);
    EXPECT_EQ(gescheitert.sFehler,
              "Die Einstellungen konnten nicht gespeichert werden: ein anderes Programm schreibt "
              "gerade in die Datei; es gelten die alten.\n");
}

// Start values are neither shown nor written where the practice's settings cannot be read.
TEST_F(CHvmBefehlTest, UnlesbareEinstellungenSindKeineAnfangswerte) {
    Sql("praxis.db",
        "INSERT INTO PARPOOL WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 99) "
        "SELECT CAST(printf('  1%03d', i) AS BLOB), i, '  1', i, printf('%400s', '') FROM n");
    Zerstoere("praxis.db", "feiertag"); // the pages before it hold other groups
    const std::string sInhalt = Inhalt("praxis.db");
    for (const char * pBefehl :
         {"hvm praxis.db show", "hvm praxis.db show --format json", "hvm praxis.db pots",
          "hvm praxis.db services", "hvm praxis.db vacation", "hvm praxis.db set KBRMitLab an",
          "hvm praxis.db set --land NW", "hvm praxis.db pots c --aktiv an", "hvm praxis.db services 107a",
          "hvm praxis.db vacation 2024 --kein-urlaub", "kalender praxis.db 2024",
          "naechster 20240706 --praxis praxis.db", "arbeitstage 20240801 20240831 --praxis praxis.db"}) {
        const SProgrammende ende = Laufe(pBefehl);
        EXPECT_EQ(ende.iCode, 1) << pBefehl;
        EXPECT_EQ(ende.sAus, "") << pBefehl;
        EXPECT_TRUE(ende.sFehler.starts_with("UNVOLLSTÄNDIG. ")) << pBefehl << ende.sFehler;
        EXPECT_EQ(Inhalt("praxis.db"), sInhalt) << pBefehl;
    }
}

} // namespace
} // namespace orvostat
