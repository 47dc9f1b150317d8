// Holidays and working days as the program shows them.
#include "Programmlauf.h"

namespace orvostat {
namespace {

using CKalenderBefehlTest = CProgrammTest;

TEST_F(CKalenderBefehlTest, FeiertageEinesLandesInJedemFormat) {
    const struct {
        const char * pArgumente;
        const char * pAnfang;
    } vFaelle[] = {
        {"kalender --land SN 2024 --format csv",
         "\xEF\xBB\xBF"
         "datum;wochentag;name\r\n01.01.2024;Montag;Neujahr\r\n29.03.2024;Freitag;Karfreitag\r\n"},
        {"kalender --land BY 2024", "datum       wochentag   name\n"
                                    "----------  ----------  -------------------------\n"
                                    "01.01.2024  Montag      Neujahr\n"
                                    "06.01.2024  Samstag     Heilige Drei Könige\n"},
        {"kalender --land BE --format json 2024-2025",
         "[\n  {\"datum\": \"2024-01-01\", \"wochentag\": \"Montag\", \"name\": \"Neujahr\"},\n"},
        {"kalender --land NW --format ics 2024",
         "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//OrvoStatBs//Kalender//DE\r\nCALSCALE:GREGORIAN\r\n"
         "BEGIN:VEVENT\r\nUID:feiertag-20240101@orvostat\r\nDTSTAMP:20"},
    };
    for (const auto & fall : vFaelle) {
        const SProgrammende ende = Laufe(fall.pArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        EXPECT_EQ(ende.sAus.substr(0, std::string(fall.pAnfang).size()), fall.pAnfang);
    }
}

// As counted with another library's holidays; Berlin has one more here, since 8 March has no switch.
TEST_F(CKalenderBefehlTest, ArbeitstageJeLand) {
    const struct {
        const char * pLand;
        const char * pZeile;
    } vFaelle[] = {
        {"BB", "\nArbeitstage  252\n"}, {"BE", "\nArbeitstage  253\n"}, {"BW", "\nArbeitstage  251\n"},
        {"BY", "\nArbeitstage  250\n"}, {"HE", "\nArbeitstage  252\n"}, {"NW", "\nArbeitstage  251\n"},
        {"SL", "\nArbeitstage  250\n"}, {"SN", "\nArbeitstage  251\n"}, {"ST", "\nArbeitstage  252\n"}};
    for (const auto & fall : vFaelle) {
        const SProgrammende ende = Laufe(std::string("arbeitstage 01.01.2024 20241231 --land ") + fall.pLand);
        EXPECT_NE(ende.sAus.find(fall.pZeile), std::string::npos) << fall.pLand << ende.sAus;
    }
}

TEST_F(CKalenderBefehlTest, EinePraxisHatEigeneFeiertageUndUrlaube) {
    ASSERT_EQ(Laufe("sample praxis.db --patients 1 --years 1").iCode, 0);
    const std::string sKalender = Laufe("kalender praxis.db 2024").sAus;
    EXPECT_NE(sKalender.find("12.02.2024  Montag      Rosenmontag\n"), std::string::npos) << sKalender;
    EXPECT_EQ(Laufe("arbeitstage 20240801 20240831 --praxis praxis.db").sAus,
              "Zeitraum     01.08.2024 bis 31.08.2024\nArbeitstage  7\nMonate       1,0000\n"
              "Quartale     0,3370\nJahre        0,0847\n"); // a vacation of three weeks
}

TEST_F(CKalenderBefehlTest, NaechsterArbeitstag) {
    const struct {
        const char * pArgumente;
        int iCode;
        const char * pAusgabe;
    } vFaelle[] = {
        {"naechster 06.07.2024", 0, "08.07.2024  Montag\n"},
        {"naechster 20240706 --wochentage sa,so", 0, "06.07.2024  Samstag\n"},
        {"naechster 01.11.2024 --land NW", 0, "04.11.2024  Montag\n"},
        {"naechster 01.11.2024", 0, "01.11.2024  Freitag\n"},
        {"naechster 99991231 --wochentage mo", 1, ""},
    };
    for (const auto & fall : vFaelle) {
        const SProgrammende ende = Laufe(fall.pArgumente);
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pArgumente;
        EXPECT_EQ(ende.sAus, fall.pAusgabe) << fall.pArgumente;
    }
}

TEST_F(CKalenderBefehlTest, FalscherAufrufIstZweiUndEineFehlendePraxisEins) {
    for (const char * pArgumente :
         {"kalender 2024", "kalender --land XX 2024", "kalender --land NW 24", "kalender --land NW 2025-2024",
          "kalender --land NW 2024 2025", "arbeitstage 20240231 20241231", "arbeitstage 20241231 20240101",
          "arbeitstage 20240101 20241231 --mandant 1", "naechster morgen",
          "naechster 20240706 --wochentage xx"}) {
        const SProgrammende ende = Laufe(pArgumente);
        EXPECT_EQ(ende.iCode, 2) << pArgumente;
        EXPECT_EQ(ende.sAus, "") << pArgumente;
    }
    EXPECT_EQ(Laufe("kalender nirgends.db 2024").iCode, 1);
}

} // namespace
} // namespace orvostat
