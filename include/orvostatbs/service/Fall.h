// Cases: the billing unit of a practice.
//
// A case (Fall) is one patient with one insurance in one quarter: the same practice owner, patient, insurer,
// state of membership and region. Cases are counted while a run walks its hits, with a list of the cases of
// one quarter: the first hit of another quarter empties it. So the hits come sorted by quarter; coming back
// to a quarter counts its cases anew.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/BehHitLine.h"

#include <cstdint>
#include <vector>

namespace orvostat {

class CLastFall {
public:
    std::int16_t PRAXISNR = 0; // cut to its 16 bits
    std::int64_t PATNR = 0;
    CString KASKUERZEL;
    CString MFRDIG;
    CString WSO;
    char ABRART = 0;             // of the entry; no part of the case
    std::int32_t m_iMerker1 = 0; // these three are the caller's
    bool m_bMerker = false;
    std::int32_t m_iMerker2 = 0;

    void Clear() { *this = CLastFall(); }
    // Takes case and ABRART of the hit; the caller's fields stay.
    void MoveNewFall(const CBehHitLine & hit);
    [[nodiscard]] bool GleicheAbrArt(const CBehHitLine & hit) const { return ABRART == hit.ABRART; }
    // The same case, quarter and ABRART aside.
    [[nodiscard]] bool operator==(const CLastFall & fall) const;
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const;
};

class CFallJeQuartal {
public:
    CString m_sQuartal; // as DbDate2Quartal gives it
    CLastFall m_Fall;

    void Clear() { *this = CFallJeQuartal(); }
    void MoveNewFall(const CBehHitLine & hit);
    [[nodiscard]] bool GleicheAbrArt(const CBehHitLine & hit) const { return m_Fall.GleicheAbrArt(hit); }
};

// The position of the hit's case in the list. A case that is not there is put at the end: -1.
int FindFallImQuartal(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit);

// The same with one entry per case and billing kind: the entry's position, -1 for a known case of another
// ABRART and -2 for a new case; these two put an entry at the end. Not to be used on one list with the lookup
// above.
int FindFallImQuartalMitAbrArt(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit);

} // namespace orvostat
