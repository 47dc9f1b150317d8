// An index of plain vectors that callers own: plans and bills, searched for every hit.
//
// The index cannot see what a caller does with his vector, so the elements tell: each has a CIndexMarke, which the
// index sets, and which reports when a marked element is destroyed, assigned to or moved. While no mark has reported,
// the elements of an index are where they were, and what has been added behind them is taken in as it comes.
#pragma once

#include "orvostatbs/records/Indexmarke.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

namespace orvostat {

// The last position of each key in plain vectors, whoever owns them, of elements with an m_marke. What was looked for
// just before is mostly looked for again, so the end of a vector is walked first, and a short one altogether. Of what
// is done to a vector only the writing of an element's key field by field goes unnoticed, and only in a long one.
template <class T, class K, class FHash = std::hash<K>> class CLetztposition {
public:
    CLetztposition() = default;
    // A copy begins without indexes, which cost nothing but time.
    CLetztposition(const CLetztposition &) noexcept {}
    CLetztposition & operator=(const CLetztposition &) noexcept { return *this; }
    ~CLetztposition() = default;

    // The position of the last element for which FPASST is true, -1 for none: those are the elements whose
    // FSCHLUESSEL is that of the call without an element.
    template <class FPasst, class FSchluessel, class FGesucht>
    int Finde(const std::vector<T> & v, FPasst fPasst, FSchluessel fSchluessel, FGesucht fGesucht) {
        const std::size_t iWeit = v.size() <= KURZ ? 0 : v.size() - NAH;
        for (std::size_t i = v.size(); i-- > iWeit;)
            if (fPasst(v[i])) return static_cast<int>(i);
        if (iWeit == 0) return -1;
        SFach & fach = Fach(v);
        for (; fach.iBis < v.size(); ++fach.iBis) {
            fach.map[fSchluessel(v[fach.iBis])] = static_cast<int>(fach.iBis);
            v[fach.iBis].m_marke.Setze();
        }
        const auto it = fach.map.find(fGesucht());
        return it == fach.map.end() ? -1 : it->second;
    }

private:
    static constexpr std::size_t KURZ = 32;
    static constexpr std::size_t NAH = 16;

    // The index of the elements in one piece of memory.
    struct SFach {
        const T * pAb = nullptr;
        std::uint64_t iStand = 0; // of the marks
        std::size_t iBis = 0;     // elements before this position are in the map
        std::unordered_map<K, int, FHash> map;
    };

    // The index of the vector's elements, or an empty one in the place of one that is void or not used for long.
    SFach & Fach(const std::vector<T> & v) {
        const std::uint64_t iStand = CIndexMarke::Stand();
        for (SFach & fach : m_aFaecher)
            if (fach.pAb == v.data() && fach.iStand == iStand) return fach;
        const auto itFrei = std::find_if(m_aFaecher.begin(), m_aFaecher.end(),
                                         [&](const SFach & fach) { return fach.iStand != iStand; });
        SFach & frei = itFrei != m_aFaecher.end() ? *itFrei : m_aFaecher[m_iAbzugeben++ % m_aFaecher.size()];
        frei.map.clear();
        frei.pAb = v.data();
        frei.iStand = iStand;
        frei.iBis = 0;
        return frei;
    }

    std::array<SFach, 4> m_aFaecher; // a run asks three vectors of plans in turn
    std::size_t m_iAbzugeben = 0;
};

} // namespace orvostat
