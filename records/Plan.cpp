#include "orvostatbs/records/Plan.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/records/Schluesseltext.h"

#include <utility>

namespace orvostat {

namespace {

constexpr int ABSCHLAG_STELLE = 6; // of the fee row's text

bool IstPar(const CPlan & plan) { return plan.m_sPlanArt == "4" || plan.m_sPlanArt == "p"; }

} // namespace

void CPlan::Clear() {
    CPlan frisch;
    frisch.PATNR = std::move(PATNR);
    *this = std::move(frisch);
}

void CPlan::MovePlan(const CTPlan * pPlan, CTBeh * pBeh) {
    m_marke.Loese();
    PATNR = pPlan->m_PATNR;
    PLANNR = pPlan->m_PLANNR;
    m_sPlanArt = pPlan->m_PLANART;
    m_iKasProzent = Zahl(pPlan->m_PLANNUM);
    m_sPlanFeld = pPlan->m_PLANSTATUS2;
    m_sPlanDatum = pPlan->m_PLANDATUM;
    m_bPlanOk = true;
    m_PlanPw = CDPw(pPlan->m_PLANPW);
    if (pBeh == nullptr || !IstPar(*this)) return;
    for (int i = pBeh->GetWithBEVX(PATNR, PLANNR); i == 0; i = pBeh->Next()) {
        const CString sKey = pBeh->m_DATUM + pBeh->m_SITZUNG + pBeh->m_LFDBEHEINTRAG;
        if (pBeh->m_LSTNR == "beva") m_sBevA = sKey;
        if (pBeh->m_LSTNR == "bevb") m_sBevB = sKey;
    }
}

void CPlan::MovePlanNotOk(const CBehHitLine & hit) {
    Clear();
    PATNR = hit.PATNR;
    PLANNR = hit.PLANNR;
    m_bPlanOk = false;
}

void CPlan::MovePlanForMischPw(const CString & sPat, const CString & sPlan, const CString & sArt,
                               const CDPw & pw) {
    m_marke.Loese();
    PATNR = sPat;
    PLANNR = sPlan;
    m_sPlanArt = sArt;
    m_MischPw = pw;
}

void CPlan::WithLst5orAbschlag(const CBehHitLine & hit) {
    if (hit.LSTIN == "5") m_bMitLst5 = true;
    if (hit.m_sGoText[ABSCHLAG_STELLE] == '5') m_bMitAbschlag = true;
}

bool CPlan::IsNewPARPlan() const { return IstPar(*this) && m_sPlanDatum >= "20210701"; }

bool CPlan::operator==(const CBehHitLine & hit) const {
    return GleicherSchluessel(PATNR, hit.PATNR) && GleicherSchluessel(PLANNR, hit.PLANNR);
}

} // namespace orvostat
