// Holidays and working days as the program shows them.
#include "Programmlauf.h"

#include <utility>

namespace orvostat {
namespace {

using CKalenderBefehlTest = CProgrammTest;

TEST_F(CKalenderBefehlTest, Befehle) {
    PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/kalender.txt");
    PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/docs/kalender.md");
}

TEST_F(CKalenderBefehlTest, FeiertageFuerAndereProgramme) {
    const std::pair<const char *, std::string> FAELLE[] = {
        {"csv", "\xEF\xBB\xBF"
                "datum;wochentag;name\r\n01.01.2024;Montag;Neujahr\r\n29.03.2024;Freitag;Karfreitag\r\n"},
        {"ICS",
         "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//OrvoStatBs//Kalender//DE\r\nCALSCALE:GREGORIAN\r\n"
         "BEGIN:VEVENT\r\nUID:feiertag-20240101@orvostat\r\nDTSTAMP:20"}};
    for (const auto & [pFormat, sAnfang] : FAELLE)
        EXPECT_EQ(
            Laufe("kalender --land NW 2024 --format " + std::string(pFormat)).sAus.substr(0, sAnfang.size()),
            sAnfang);
    EXPECT_TRUE(Laufe("kalender --land NW 2024")
                    .sAus.ends_with("\n\nFeiertage    bundesweite, Nordrhein-Westfalen\n"));
}

} // namespace
} // namespace orvostat
