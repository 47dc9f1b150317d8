// Plans and bills. Denture, orthodontic and periodontal services are billed through plans, and a hit counts only when
// its plan has reached the right state.
#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

constexpr CBuchstaben ZEArt{"32"};
constexpr CBuchstaben KFOArt{"89"};
constexpr CBuchstaben MehrkostenStatus{"47"};
constexpr CBuchstaben MehrkostenSubArt{"1345"};
constexpr CBuchstaben PrivatStatus{"123"};

// The column is one of the letters, and only that.
bool Ist(const CString & s, const CBuchstaben & menge) { return s.GetLength() == 1 && menge(s.Erstes()); }

bool HatPlanNum(const CTPlan & plan) { return Zahl(plan.m_PLANNUM) != 0; }

// The follow-up services of periodontal care, in the order of texts.
bool IstUpt(const CString & sLst) { return sLst >= "upta" && sLst <= "uptg"; }

// The hit stands behind the plan's last service "beva".
bool NachBevA(const CBehHitLine & hit, const CPlan & plan) {
    if (plan.m_sBevA.IsEmpty()) return false;
    CString sHit = hit.DATUM;
    if (hit.SITZUNG != 0) sHit += hit.SITZUNG;
    return sHit + hit.LFDBEHEINTRAG > plan.m_sBevA;
}

// The finer kind of billing of a periodontal hit: follow-up or not, with bParBeva also before or behind "beva".
char ParAbrArt(const CBehHitLine & hit, const CPlan & plan, bool bParBeva) {
    const bool bUpt = IstUpt(hit.LSTNR);
    if (!bParBeva) return bUpt ? '7' : '6';
    if (!NachBevA(hit, plan)) return '6';
    return bUpt ? '8' : '7';
}

bool LiesPlan(CTPlan & plan, const CBehHitLine & hit) {
    plan.ClearKey();
    plan.SetKey(1, true);
    plan.m_PATNR = hit.PATNR;
    plan.m_PLANNR = hit.PLANNR;
    return plan.GetByK1() == 0;
}

} // namespace

// ---- the gate

bool CStatAccu::OnlyForZEorKFOorPAROk(CTPlan * pPlan, std::vector<CPlan> & vPlaene, CBehHitLine & hit,
                                      bool bOhne22a, bool bParMarken, bool bParBeva, CTBeh * pBeh,
                                      int & iPos) {
    const auto Markiere = [&](const CPlan & plan) {
        if ((bParMarken || bParBeva) && hit.ABRART == 'p') hit.ABRART = ParAbrArt(hit, plan, bParBeva);
    };
    iPos = -1;
    if (hit.ABRART != 'z' && hit.ABRART != 'k' && !IstParAbrArt(hit.ABRART)) return true;
    if (hit.PLANNR.IsEmpty()) {
        if (hit.ABRART == 'k') return true;
        AddError(m_BehHit, FEHLER_OHNE_PLANNR);
        return false;
    }
    iPos = FindPlan(vPlaene, hit);
    if (iPos >= 0) {
        const CPlan & bekannter = vPlaene[static_cast<std::size_t>(iPos)];
        Markiere(bekannter);
        return bekannter.m_bPlanOk;
    }
    const bool bDa = LiesPlan(*pPlan, hit);
    if (!bDa) AddError(m_BehHit, FEHLER_PLAN_FEHLT);
    CPlan & plan = vPlaene.emplace_back();
    if (!bDa || !IstPlanstandOk(pPlan, hit.ABRART, bOhne22a)) {
        plan.MovePlanNotOk(hit);
        plan.m_bFehlt = !bDa;
        return false;
    }
    plan.MovePlan(pPlan, pBeh);
    Markiere(plan);
    iPos = static_cast<int>(vPlaene.size()) - 1;
    return true;
}

// The plan has reached the state in which services of this plan-bound kind of billing count.
bool CStatAccu::IstPlanstandOk(CTPlan * pPlan, char cAbrArt, bool bOhne22a) {
    if (cAbrArt == 'z') return IsZEPlanOK(pPlan);
    if (cAbrArt == 'k') return IsKFOPlanOK(pPlan);
    return !(bOhne22a && pPlan->IsPAR22a());
}

bool CStatAccu::IsZEPlanOK(CTPlan * pPlan) {
    return Ist(pPlan->m_PLANART, ZEArt) && HatPlanNum(*pPlan) && pPlan->m_PLANSTATUS2 == "4";
}

bool CStatAccu::IsMehrkostenPlanOK(CTPlan * pPlan) {
    return Ist(pPlan->m_PLANART, ZEArt) && Ist(pPlan->m_PLANSTATUS, MehrkostenStatus) &&
           Ist(pPlan->m_PLANSUBART, MehrkostenSubArt);
}

bool CStatAccu::IsZEPrivatPlanOK(CTPlan * pPlan) {
    return Ist(pPlan->m_PLANART, ZEArt) && Ist(pPlan->m_PLANSTATUS, PrivatStatus);
}

bool CStatAccu::IsKFOPlan(CTPlan * pPlan) { return Ist(pPlan->m_PLANART, KFOArt); }
bool CStatAccu::IsKFOPlanOK(CTPlan * pPlan) { return IsKFOPlan(pPlan) && HatPlanNum(*pPlan); }

int CStatAccu::FindPlan(const std::vector<CPlan> & vPlaene, const CBehHitLine & hit) {
    const auto Schluessel = [](const auto & satz) {
        return CTexte(Schluesseltext(satz.PATNR), Schluesseltext(satz.PLANNR));
    };
    return m_indexPlan.Finde(
        vPlaene,
        [&](const CPlan & plan) { // ==, in the loop
            return GleicherSchluessel(plan.PATNR, hit.PATNR) && GleicherSchluessel(plan.PLANNR, hit.PLANNR);
        },
        Schluessel, [&] { return Schluessel(hit); });
}

// ---- bills

CBill * CStatAccu::FindBill(const CString & sPatNr, const CString & sPatBill) {
    std::vector<CBill> & vBills = m_mapBill[sPatNr];
    const int iPos = m_indexBill.Finde(
        vBills, [&](const CBill & bill) { return GleicherSchluessel(bill.PATBILL, sPatBill); },
        [](const CBill & bill) { return Schluesseltext(bill.PATBILL); },
        [&] { return Schluesseltext(sPatBill); });
    return iPos < 0 ? nullptr : &vBills[static_cast<std::size_t>(iPos)];
}

CBill * CStatAccu::GetBill(const CString & sPatNr, const CString & sPatBill) {
    if (Blank(sPatNr) || Blank(sPatBill)) return nullptr;
    if (CBill * const pBill = FindBill(sPatNr, sPatBill)) return pBill;
    m_rBill.m_PATNR = sPatNr;
    m_rBill.m_PATBILL = sPatBill;
    if (m_rBill.GetByK1() != 0) return nullptr;
    CBill & bill = m_mapBill[sPatNr].emplace_back();
    bill.MoveBill(&m_rBill);
    return &bill;
}

bool CStatAccu::IsFuerMandant(const CString & sMdId) {
    const CString & sMandant = m_Selekt.Mandant;
    return sMandant.IsEmpty() ? FindMd(sMdId) >= 0 : sMdId == sMandant;
}

bool CStatAccu::IsFuerMandant(const CBill & bill) { return IsFuerMandant(bill.PRAXISNR); }

} // namespace orvostat
