// The fee-distribution configuration of the sample practice: pots, working days, vacations, services, holidays.
#pragma once

#include "orvostatbs/host/RSet.h"

#include <vector>

namespace orvostat {

// Writes the configuration rows of the owners and of the years iVonJahr to iBisJahr, as parts of the group of writes
// that may be open on the store; rows that are there are replaced. The holidays are those of Nordrhein-Westfalen and
// Rosenmontag. All of it is invented. False where the store failed.
[[nodiscard]] bool SchreibeHvmMuster(CZeilenspeicher & speicher, const std::vector<CString> & vMandanten,
                                     int iVonJahr, int iBisJahr);

} // namespace orvostat
