// What plans and bills need to be found quickly: keys that compare as the record layer compares them, and a mark by
// which an index of a plain vector notices that the vector has changed.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <cstddef>
#include <cstdint>

namespace orvostat {

// The number as a key: without trailing blanks.
[[nodiscard]] inline CString Schluesseltext(const CString & s) {
    return s[s.GetLength() - 1] == ' ' ? TrimRight(s) : s;
}
// The numbers are the same key.
[[nodiscard]] inline bool GleicherSchluessel(const CString & a, const CString & b) {
    return a == b || (a.GetLength() != b.GetLength() && TrimRight(a) == TrimRight(b));
}

// For maps whose keys are such numbers.
struct SSchluesselHash {
    [[nodiscard]] std::size_t operator()(const CString & s) const { return Schluesseltext(s).Hash(); }
};
struct SSchluesselGleich {
    [[nodiscard]] bool operator()(const CString & a, const CString & b) const {
        return GleicherSchluessel(a, b);
    }
};

// A member of records that callers keep in vectors of their own. An index marks the elements that it knows. Whatever
// then happens to a marked one - it is destroyed, assigned to, moved from - raises Stand, and with it end all indexes.
// So as long as Stand is the same, the elements of an index stand where they stood, in the memory where they stood,
// whichever vector may own that now. Copies are unmarked.
class CIndexMarke {
public:
    CIndexMarke() = default;
    CIndexMarke(const CIndexMarke &) noexcept {}
    CIndexMarke(CIndexMarke && marke) noexcept { marke.Loese(); }
    CIndexMarke & operator=(const CIndexMarke &) noexcept {
        Loese();
        return *this;
    }
    CIndexMarke & operator=(CIndexMarke && marke) noexcept {
        marke.Loese();
        Loese();
        return *this;
    }
    ~CIndexMarke() { Loese(); }

    void Setze() const { m_bGesetzt = true; }
    // To be called by every operation of the record that changes its key.
    void Loese() {
        if (!m_bGesetzt) return;
        m_bGesetzt = false;
        ++s_iStand;
    }
    [[nodiscard]] static std::uint64_t Stand() { return s_iStand; }

private:
    mutable bool m_bGesetzt = false;
    inline static std::uint64_t s_iStand = 0;
};

} // namespace orvostat
