// Builds the hit of a single treatment from the rows around it.
//
// This is the shortest way to a hit: every record is read by its key, nothing is remembered but the last patient, and
// nothing is valued. A statistic run does the same steps with the accumulator's tables.
#pragma once

#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/Stammdaten.h"

namespace orvostat {

class CHitbau {
public:
    CHitbau();
    // The hit of the treatment that beh stands on; it stays until the next call. Steps whose rows are missing are
    // left out.
    const CBehHitLine & Baue(const CTBeh & beh);

private:
    // Each reads one record for the work hit as far as it is built; false without such a row.
    bool LiesBill();
    bool LiesBehandler();
    bool LiesPatient();
    bool LiesVersicherung();
    bool LiesKasse();
    bool LiesGebuehr();
    bool LiesPunktwert();
    bool LiesBefund();

    CBehHitLine m_hit;
    CBill m_bill;
    CLebStruct m_leb;
    CVDesc m_vdesc;
    CKas m_kas;
    CGOStruct m_go;
    CPw m_pw;
    CTPat m_rPat;
    CString m_sPatient; // whose row was asked for last, and whether there is one
    bool m_bPatient = false;
    CTABefund m_rBefund;
    CString m_sKzvNr; // the practice's association
};

} // namespace orvostat
