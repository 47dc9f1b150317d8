// The sample practice: a practice that never was, with everything in it that the engine can meet.
//
// Two owners with a site each, six treaters, sixty insurers with their histories, fee schedules and point values,
// and as many patients as asked for, each with insurance periods, treatments, bills, plans, findings and the records
// around them. Service numbers, points and part of the point values are published ones; everything else is invented,
// every person and insurer too.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/RSet.h"

#include <cstdint>

namespace orvostat {

struct SMusterwahl {
    int iPatienten = 300;                                 // 1 to 1,000,000
    int iJahre = 2;                                       // 1 to 30
    std::uint64_t iSaat = 1;                              // the same seed gives the same practice
    CString sVon = CString(std::string_view("20240101")); // first day, YYYYMMDD, from 20020101 on
};

// About so many treatments a patient has in a year.
inline constexpr int MUSTER_BEHANDLUNGEN_JE_JAHR = 25;

// Writes the practice into a store that has all tables and no rows yet, as one group of writes, and shows the
// progress. ZEILE_OK; ZEILE_KEINE when the user has cancelled, ZEILE_FEHLER when the store failed: then nothing has
// been written.
[[nodiscard]] int ErzeugeMuster(CZeilenspeicher & speicher, const SMusterwahl & wahl);

} // namespace orvostat
