// The mark by which a record in a caller's vector tells an index that it is no longer what it was.
//
// An index marks the elements that it knows. Whatever then happens to a marked one - it is destroyed, assigned to,
// moved from - raises Stand, and with it end all indexes. So as long as Stand is the same, the elements of an index
// stand where they stood, in the memory where they stood, whichever vector may own that now. Copies are unmarked. Only
// the writing of a field goes unnoticed, unless the record calls Loese.
#pragma once

#include <cstdint>

namespace orvostat {

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
