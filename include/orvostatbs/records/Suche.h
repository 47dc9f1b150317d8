// Search values: what a user looks for, and what a hit was found by.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>
#include <vector>

namespace orvostat {

// A service to look for. Without a number or without a kind it looks for nothing.
class CSucheLstStruct {
public:
    CString m_sKuerzel;
    CString m_sLst;
    char m_cGoArt = 0;
    char m_cSuche1 = 0;
    char m_cSuche2 = 0;

    // Both clear all fields.
    void Empty() { *this = CSucheLstStruct(); }
    void SetDefaults() { Empty(); }
    [[nodiscard]] bool IsEmpty() const { return m_sLst.IsEmpty() || m_cGoArt == 0; }
};

// The same for the fee distribution, without the free letters.
class CHVMLstStruct {
public:
    CString m_sKuerzel;
    CString m_sLst;
    char m_cGoArt = 0;

    [[nodiscard]] bool IsEmpty() const { return m_sLst.IsEmpty() || m_cGoArt == 0; }
};

// A text block to look for.
class CSucheTbStruct {
public:
    CString m_sTb;
    CString m_sText;

    void Empty() { *this = CSucheTbStruct(); }
    // There is no block to look for; the text does not count.
    [[nodiscard]] bool IsEmpty() const { return m_sTb.IsEmpty(); }
};

// One criterion of a search for teeth by which a hit was found.
class CQueryTeeth {
public:
    CString m_sQuery1;
    CString m_sQuery2;
    std::int32_t m_iQuery = 0;
    std::vector<CString> m_vTeeth;

    // Empties the teeth; the query itself stays.
    void clear() { m_vTeeth.clear(); }
};

} // namespace orvostat
