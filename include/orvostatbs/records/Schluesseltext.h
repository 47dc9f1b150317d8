// Numbers of patients, plans and bills as keys: they compare as the record layer compares them, without trailing
// blanks.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

// The number as a key: without trailing blanks.
[[nodiscard]] inline CString Schluesseltext(const CString & s) {
    return s[s.GetLength() - 1] == ' ' ? TrimRight(s) : s;
}
// The numbers are the same key.
[[nodiscard]] inline bool GleicherSchluessel(const CString & a, const CString & b) {
    return a == b || (a.GetLength() != b.GetLength() && TrimRight(a) == TrimRight(b));
}

} // namespace orvostat
