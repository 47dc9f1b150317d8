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

// A federal state. The holidays that it adds to the nationwide ones follow its law on Sundays and holidays, each in the
// years for which it was or is one, from 1991 on; a custom of some towns only (Fronleichnam in parts of Saxony and
// Thuringia) counts as none. The engine does not know states: a practice states its own calendar.
struct SBundesland {
    std::string_view sKuerzel; // "NW"
    const char * pName;        // UTF-8
};
[[nodiscard]] std::span<const SBundesland> Bundeslaender();
// The state of a code; null for none.
[[nodiscard]] const SBundesland * FindeBundesland(std::string_view sKuerzel);

inline constexpr int NACH_GELTENDEM_RECHT = 9999;
// A calendar for one year with the state's holidays: those that have a switch are switched on, each other one is a
// closed period of that single day and has its name. Monday to Friday are worked. For the switches that a practice
// stores for all years, ask for the law as it stands.
[[nodiscard]] CHoliday KalenderFuer(const SBundesland & land, int iJahr = NACH_GELTENDEM_RECHT);

// The name of the holiday behind a switch, UTF-8.
[[nodiscard]] std::string NameDesSchalters(bool CHoliday::*pSchalter);

struct SFeiertag {
    CString sDatum; // YYYYMMDD
    CString sWochentag;
    CString sName; // two with " / " between them where a day is a holiday for two reasons
};
// The holidays of the years in the order of the calendar, each day once. Closed single days with a name are among them.
[[nodiscard]] std::vector<SFeiertag> Feiertage(const CHoliday & kalender, int iVonJahr, int iBisJahr);

// "Montag" to "Sonntag"; empty for a text that is no day of the calendar.
[[nodiscard]] CString Wochentagname(const CString & sDatum);

} // namespace orvostat
