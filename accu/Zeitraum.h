// The bounds of a period that a selection leaves open.
#pragma once

#include "orvostatbs/host/CString.h"

namespace orvostat {

inline constexpr CString ERSTER_TAG = "19800101";
inline constexpr CString LETZTER_TAG = "99991231";

// The text, or the other one where it is empty; a reference to one of the two.
[[nodiscard]] inline const CString & Oder(const CString & s, const CString & sErsatz) {
    return s.IsEmpty() ? sErsatz : s;
}

} // namespace orvostat
