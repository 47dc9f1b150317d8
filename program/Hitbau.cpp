#include "Hitbau.h"

#include "orvostatbs/host/Datum.h"

#include <algorithm>

namespace orvostat {

CHitbau::CHitbau() {
    CBehHitLine::ClearMaps();
    m_accu.GetMemForTables();
    (void)m_accu.GetLQPunktwert(); // the practice's association, which an insurer's row is read by
    m_accu.GetAllPw();
    CTLeb leb;
    for (int i = leb.GetAll(); i == ZEILE_OK; i = leb.Next())
        m_accu.m_vLebAlle.emplace_back().MoveLeb(&leb);
}

CHitbau::~CHitbau() { m_accu.DeleteMemForTables(); }

const CBehHitLine & CHitbau::Baue(const CTBeh & beh) {
    CBehHitLine & hit = m_accu.m_BehHit;
    hit.Clear();
    hit.MoveBeh(&beh);
    NimmPatient(hit.PATNR);
    if (const CBill * pBill = m_accu.GetBill(hit.PATNR, hit.PATBILL)) hit.MoveBill(*pBill);
    hit.TestMultiband();
    const CLebStruct * const pLeb = Behandler(hit.BEHANDLERNR);
    if (pLeb != nullptr) hit.MoveMdId(pLeb->m_sMdKasse, pLeb->m_sMdPrivat);
    if (m_bPatient) hit.MovePatName(m_rPat.m_PATNAME, m_rPat.m_PATVORNAME);
    if (const CVDesc * pVDesc = m_accu.FindVDescByDate(hit.PATNR, hit.DATUM)) {
        hit.MoveVDesc(*pVDesc);
        const int iKas = m_accu.FindKas(pVDesc->KASKUERZEL, hit.DATUM);
        if (iKas >= 0) hit.MoveKas(m_accu.m_vKas.Lesend()[static_cast<std::size_t>(iKas)]);
    }
    hit.FiktiveLeistungen();
    m_accu.GetGOData(hit);
    if (pLeb != nullptr) hit.MoveLeb(*pLeb);
    m_accu.GetPunkte(hit);
    if (pLeb != nullptr) hit.MoveProvision(*pLeb);
    m_accu.GetBefund(hit);
    return hit;
}

// Treatments come patient by patient.
void CHitbau::NimmPatient(const CString & sPatNr) {
    if (m_sPatNr == sPatNr) return;
    m_sPatNr = sPatNr;
    m_bPatient = m_rPat.GetByPatNr(sPatNr) == 0;
    m_accu.ClearV();
    m_accu.m_mapBill.clear();
    m_accu.m_vPwPlaene.clear();
    m_accu.m_vMischPwPlaene.clear();
    m_accu.m_vBehErrors.clear();
    m_accu.GetVDesc(sPatNr, ERSTER_TAG);
}

const CLebStruct * CHitbau::Behandler(const CString & sLeb) {
    const auto & v = m_accu.m_vLebAlle;
    const auto it = std::ranges::find(v, sLeb, &CLebStruct::m_sLeb);
    return it == v.end() ? nullptr : &*it;
}

} // namespace orvostat
