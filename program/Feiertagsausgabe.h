// Holidays as tables and in the format of calendar programs.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/calendar/Feiertage.h"

#include <iosfwd>
#include <string>
#include <vector>

namespace orvostat {

// The codes of the federal states, for the command line: "BB", "BE" ...
[[nodiscard]] std::vector<std::string> Landeskuerzel();

// The columns datum, wochentag, name.
void SchreibeFeiertage(std::ostream & aus, EFormat eFormat, const std::vector<SFeiertag> & vFeiertage);
// As a calendar program reads them (RFC 5545, iCalendar): whole days that block no time.
void SchreibeIcs(std::ostream & aus, const std::vector<SFeiertag> & vFeiertage);

} // namespace orvostat
