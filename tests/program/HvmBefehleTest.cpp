// The configuration as the program shows and changes it.
#include "Programmlauf.h"

#include <sstream>
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

// Somebody who only wants to write lets others read, so the command gets as far as its own writing.
TEST_F(CHvmBefehlTest, WasSichNichtSpeichernLaesstHatEinenGrund) {
    sqlite3 * p = nullptr;
    sqlite3_open(Pfad("praxis.db").c_str(), &p);
    sqlite3_exec(p, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    const SProgrammende ende = Hvm("set KBRMitLab an");
    sqlite3_close(p);
    EXPECT_EQ(ende.iCode, 1);
    EXPECT_EQ(ende.sFehler,
              "Die Einstellungen konnten nicht gespeichert werden: ein anderes Programm schreibt "
              "gerade in die Datei; es gelten die alten.\n");
}

} // namespace
} // namespace orvostat
