// Builds the hit of a single treatment from the rows around it.
//
// This is the shortest way to a hit: no selection, no practices, and what belongs to a patient is forgotten with him.
// The hit has its points, its point value or factor, and the amount that was entered; it is not valued. A statistic run
// (Lauf.h) does the same steps with everything that a statistic needs.
#pragma once

#include "orvostatbs/accu/StatAccu.h"

namespace orvostat {

class CHitbau {
public:
    CHitbau();
    ~CHitbau();
    CHitbau(const CHitbau &) = delete;
    CHitbau & operator=(const CHitbau &) = delete;
    // The hit of the treatment that beh stands on; it stays until the next call. Steps whose rows are missing are
    // left out.
    const CBehHitLine & Baue(const CTBeh & beh);

private:
    void NimmPatient(const CString & sPatNr);
    [[nodiscard]] const CLebStruct * Behandler(const CString & sLeb);

    CStatAccu m_accu; // its look-ups, without a run
    CTPat m_rPat;
    CString m_sPatNr; // whose row was asked for last, and whether there is one
    bool m_bPatient = false;
};

} // namespace orvostat
