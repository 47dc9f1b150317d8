// Holidays and working days as the program shows them.
#include "Programmlauf.h"

namespace orvostat {
namespace {

using CKalenderBefehlTest = CProgrammTest;

TEST_F(CKalenderBefehlTest, Befehle) {
    PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/kalender.txt");
}

TEST_F(CKalenderBefehlTest, EinKalenderprogrammLiestDieFeiertage) {
    const std::string sAnfang =
        "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//OrvoStatBs//Kalender//DE\r\nCALSCALE:GREGORIAN\r\n"
        "BEGIN:VEVENT\r\nUID:feiertag-20240101@orvostat\r\nDTSTAMP:20";
    EXPECT_EQ(Laufe("kalender --land NW --format ics 2024").sAus.substr(0, sAnfang.size()), sAnfang);
}

} // namespace
} // namespace orvostat
