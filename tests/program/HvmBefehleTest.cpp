// The configuration as the program shows and changes it.
#include "Programmlauf.h"

#include <chrono>
#include <future>
#include <sstream>
#include <thread>
#include <utility>

#include <sqlite3.h>

namespace orvostat {
namespace {

class CHvmBefehlTest : public CProgrammTest {
protected:
    CHvmBefehlTest() { EXPECT_EQ(Laufe("sample praxis.db --patients 1 --years 1").iCode, 0); }
    SProgrammende Hvm(const std::string & sArgumente) { return Laufe("hvm praxis.db " + sArgumente); }
    // The lines that show has now and did not have before, each with a "+", and those that are gone, with a "-".
    std::string Unterschied() {
        const std::string sVorher = std::exchange(m_sShow, Hvm("show").sAus);
        return Ohne(sVorher, m_sShow, '-') + Ohne(m_sShow, sVorher, '+');
    }

private:
    static std::string Ohne(const std::string & sText, const std::string & sAndere, char cVorsatz) {
        std::istringstream zeilen(sText);
        std::string sErgebnis;
        for (std::string s; std::getline(zeilen, s);)
            if (('\n' + sAndere).find('\n' + s + '\n') == std::string::npos) sErgebnis += cVorsatz + s + '\n';
        return sErgebnis;
    }
    std::string m_sShow;
};

// Each change shows in exactly its own lines.
TEST_F(CHvmBefehlTest, AenderungenTreffenNurDasGenannte) {
    const struct {
        const char * pArgumente;
        const char * pUnterschied;
    } vFaelle[] = {
        {"set KBRMitLab an", "-  aus  KBRMitLab           Laborbeträge zählen zum KBR-Topf\n"
                             "+  an   KBRMitLab           Laborbeträge zählen zum KBR-Topf\n"},
        {"set Einstell14 7", "-  0    Einstell14\n+  7    Einstell14\n"},
        {"set --land SN",
         "-  Allerheiligen, Fronleichnam, Rosenmontag\n+  Buß- und Bettag, Reformationstag\n"},
        {"set Heiligabend 1",
         "-  Buß- und Bettag, Reformationstag\n+  Buß- und Bettag, Heiligabend, Reformationstag\n"},
        {"pots z --mandant 2 --wert -5 --gruppe n --name Neu --auswahl x1",
         "+  Topf \"z\": aktiv, Budget aus, Wert -5\n+    Gruppe n: e\n+    Gruppe n \"Neu\": x1\n"},
        {"pots 9 --aktiv an", "+  Topf \"9\": aktiv, Budget aus, Wert 1\n"},
        {"vacation 2026 --tage sa --urlaub 01.07.2026-03.07.2026 20261224",
         "+  Jahr 2026  Arbeitstage sa\n+    Urlaub 01.07.2026 bis 03.07.2026\n"
         "+    Urlaub 24.12.2026 bis 24.12.2026\n"},
        {"vacation 2026 --kein-urlaub",
         "-    Urlaub 01.07.2026 bis 03.07.2026\n-    Urlaub 24.12.2026 bis 24.12.2026\n"},
        {"services 107a Ä1", "-  01 04 10 12 13a 13b 13c 107 107a IP1 IP2 IP4 Ä1\n+  107a Ä1\n"},
        {"services --keine", "-  107a Ä1\n+  keine\n"},
    };
    Unterschied();
    for (const auto & fall : vFaelle) {
        const SProgrammende ende = Hvm(fall.pArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        EXPECT_EQ(Unterschied(), fall.pUnterschied) << fall.pArgumente;
    }
}

TEST_F(CHvmBefehlTest, WasNichtGehtAendertNichts) {
    const struct {
        const char * pArgumente;
        int iCode;
    } vFaelle[] = {
        {"set KBRMitLab", 2},
        {"set KBRMitLab vielleicht", 2},
        {"set Einstell14 12", 2},
        {"set Nichts an", 2},
        {"set KBRMitLab an --land NW", 2},
        {"pots q --aktiv an", 2},
        {"pots --aktiv an", 2},
        {"pots c --auswahl x", 2},
        {"pots c --gruppe q --auswahl x", 2},
        {"pots c --gruppe g --auswahl a|b", 2},
        {"pots c --mandant 7 --aktiv aus", 1},
        {"vacation 24 --kein-urlaub", 2},
        {"vacation 2024 --urlaub 01.07.2025-12.07.2025", 2},
        {"vacation 2024 --urlaub 31.12.2023-02.01.2024", 2},
        {"vacation 2024 --urlaub 30.12.2024-01.01.2025", 2},
        {"vacation 2024 --urlaub 03.07.2024-01.07.2024", 2},
        {"vacation 2024 --urlaub 20240101 20240102 20240103 20240104 20240105 20240106", 2},
        {"services 4", 2},
        {"services 12345678", 2},
    };
    Unterschied();
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(Hvm(fall.pArgumente).iCode, fall.iCode) << fall.pArgumente;
        EXPECT_EQ(Unterschied(), "") << fall.pArgumente;
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
         {"hvm praxis.db show", "hvm praxis.db pots", "hvm praxis.db services", "hvm praxis.db vacation",
          "hvm praxis.db set KBRMitLab an", "hvm praxis.db set --land NW", "hvm praxis.db pots c --aktiv an",
          "hvm praxis.db services 107a", "hvm praxis.db vacation 2024 --kein-urlaub",
          "kalender praxis.db 2024", "naechster 20240706 --praxis praxis.db",
          "arbeitstage 20240801 20240831 --praxis praxis.db"}) {
        const SProgrammende ende = Laufe(pBefehl);
        EXPECT_EQ(ende.iCode, 1) << pBefehl;
        EXPECT_EQ(ende.sAus, "") << pBefehl;
        EXPECT_TRUE(ende.sFehler.starts_with("UNVOLLSTÄNDIG. ")) << pBefehl << ende.sFehler;
        EXPECT_EQ(Inhalt("praxis.db"), sInhalt) << pBefehl;
    }
}

} // namespace
} // namespace orvostat
