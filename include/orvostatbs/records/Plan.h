// What a statistic run remembers of a treatment plan: denture, orthodontic or periodontal.
//
// A plan freezes the point value of its day for all services that belong to it; where a denture plan runs over a
// change of prices, its services get a mixed point value instead. Periodontal plans (kinds "4" and "p") since July
// 2021 do neither. The record is a plain value; the accumulator keeps one per plan and run, found by patient and plan
// number.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/Indexmarke.h"

#include <cstdint>

namespace orvostat {

class CBehHitLine;
class CTBeh;
class CTPlan;

class CPlan {
public:
    // Every initial value is the value after Clear. Of an entry that a search has seen the two numbers stay.
    CString PATNR;
    CString PLANNR;
    CString m_sPlanArt;
    std::int32_t m_iKasProzent = 0; // the insurer's share in percent
    CString m_sPlanFeld;            // second state of the plan, for callers
    bool m_bPlanOk = true;          // services of the plan may be counted
    bool m_bFehlt = false;          // there is no row of the plan, for callers
    bool m_bMitLst5 = false;        // the plan has a service entered as "5"
    bool m_bMitAbschlag = false;    // the plan has a service whose fee row is marked for a deduction
    CIndexMarke m_marke;            // the search's own
    CString m_sPlanDatum;           // YYYYMMDD
    CDPw m_PlanPw;                  // frozen with the plan
    CDPw m_MischPw;
    CString m_sBevA; // the last service "beva" of the plan: date, visit letter and running number in one
    CString m_sBevB; // the last "bevb"

    // All fields but PATNR to their initial values; every move sets PATNR.
    void Clear();

    // Takes the plan's row (not null), which makes the plan usable; both flags and m_MischPw stay. For a periodontal
    // plan pBeh, unless null, is moved over the plan's services "beva" and "bevb" to set m_sBevA and m_sBevB, which
    // stay where there is none.
    void MovePlan(const CTPlan * pPlan, CTBeh * pBeh);
    // Nothing but the numbers of a plan that may not be used.
    void MovePlanNotOk(const CBehHitLine & hit);
    // Takes the arguments, all other fields stay.
    void MovePlanForMischPw(const CString & sPat, const CString & sPlan, const CString & sArt,
                            const CDPw & pw);
    // Raises m_bMitLst5 and m_bMitAbschlag if the hit says so; never lowers them.
    void WithLst5orAbschlag(const CBehHitLine & hit);

    // A periodontal plan under the guideline of the G-BA on systematic treatment of periodontitis (PAR-Richtlinie)
    // in force since 1 July 2021, by its date.
    [[nodiscard]] bool IsNewPARPlan() const;
    // The hit's plan: same patient, same plan number, trailing blanks of both apart.
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const;
};

} // namespace orvostat
