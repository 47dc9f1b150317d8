// The way of holidays and vacations to the screen layer, whose calendars mark them.
//
// This library has no screens. A program that has puts an object of its own in place, for as long as it wishes:
//
//   CMeinKalender kalender;
//   orvostat::CFeiertagsanzeigeErsatz ersatz(kalender);
//
// Without one, what is sent ends here.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Umgebung.h"

#include <utility>
#include <vector>

namespace orvostat {

// Takes the practice's holiday switches as the holidays row holds them (docs/hvm.md; empty without a row), and its
// vacations from and to, YYYYMMDD, both days included. Both are borrowed for the call.
class CFeiertagsanzeige {
public:
    virtual ~CFeiertagsanzeige() = default;
    virtual void SetHolidays(const CString & sFeiertage,
                             const std::vector<std::pair<CString, CString>> & vPerioden) = 0;
};

// Null is none, as at the start; returns the former one.
CFeiertagsanzeige * SetzeFeiertagsanzeige(CFeiertagsanzeige * pAnzeige);
using CFeiertagsanzeigeErsatz = CErsatz<CFeiertagsanzeige, &SetzeFeiertagsanzeige>;

class CWPFApplication {
public:
    // Hands both to the object in place.
    static void SetHolidays(const CString & sFeiertage,
                            const std::vector<std::pair<CString, CString>> & vPerioden);
};

} // namespace orvostat
