#include "orvostatbs/calendar/WPFApplication.h"

#include <utility>

namespace orvostat {

namespace {
CFeiertagsanzeige * s_pAnzeige = nullptr;
}

CFeiertagsanzeige * SetzeFeiertagsanzeige(CFeiertagsanzeige * pAnzeige) {
    return std::exchange(s_pAnzeige, pAnzeige);
}

void CWPFApplication::SetHolidays(const CString & sFeiertage,
                                  const std::vector<std::pair<CString, CString>> & vPerioden) {
    if (s_pAnzeige) s_pAnzeige->SetHolidays(sFeiertage, vPerioden);
}

} // namespace orvostat
