// Holidays with their names, and by federal state.
//
// The engine's calendar knows switches: which holidays a practice keeps. Which of them a state has stands here, and
// what a day is called.
#pragma once

#include "orvostatbs/calendar/Holiday.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvostat {

// A federal state and which of the switched holidays it has today, as its law on Sundays and holidays says; a custom
// of some towns only (Fronleichnam in parts of Saxony and Thuringia) counts as none. The engine does not know
// states: a practice states its own calendar.
struct SBundesland {
    std::string_view sKuerzel;  // "NW"
    const char * pName;         // UTF-8
    std::string_view sSchalter; // nine characters "0" or "1" in the order of FEIERTAGSSCHALTER
};
[[nodiscard]] std::span<const SBundesland> Bundeslaender();
// The state of a code in capitals; null for none.
[[nodiscard]] const SBundesland * FindeBundesland(std::string_view sKuerzel);
// A calendar with the state's holidays; Monday to Friday are worked, and there is no closed period.
[[nodiscard]] CHoliday KalenderFuer(const SBundesland & land);

// The name of the holiday behind a switch, UTF-8.
[[nodiscard]] std::string NameDesSchalters(bool CHoliday::*pSchalter);

struct SFeiertag {
    CString sDatum; // YYYYMMDD
    CString sWochentag;
    CString sName; // two with " / " between them where a day is a holiday for two reasons
};
// The holidays of the years in the order of the calendar, each day once.
[[nodiscard]] std::vector<SFeiertag> Feiertage(const CHoliday & kalender, int iVonJahr, int iBisJahr);

// "Montag" to "Sonntag"; empty for a text that is no day of the calendar.
[[nodiscard]] CString Wochentagname(const CString & sDatum);

} // namespace orvostat
