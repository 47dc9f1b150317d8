// The days on which the sample practice works: Monday to Friday without the holidays of a fixed date.
#pragma once

#include "orvostatbs/host/CString.h"

#include <vector>

namespace orvostat {

class CMusterKalender {
public:
    // iJahre years from sVon (a day of the calendar) on.
    CMusterKalender(const CString & sVon, int iJahre);
    // Working days are numbered from 0.
    [[nodiscard]] int Anzahl() const { return static_cast<int>(m_vTage.size()); }
    [[nodiscard]] const CString & Tag(int i) const { return m_vTage[static_cast<std::size_t>(i)]; }
    [[nodiscard]] int Jahre() const { return m_iJahre; }

private:
    int m_iJahre;
    std::vector<CString> m_vTage;
};

// The day iTage after a date; before it for a negative number.
[[nodiscard]] CString TagePlus(const CString & sDatum, int iTage);
// The day of month and day in the year iJahre.
[[nodiscard]] CString Datum(int iJahr, int iMonat, int iTag);
[[nodiscard]] int Jahr(const CString & sDatum);

} // namespace orvostat
