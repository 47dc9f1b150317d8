#include "Hitbau.h"

#include "orvostatbs/records/Leistungsarten.h"

namespace orvostat {

CHitbau::CHitbau() {
    CTPraxis praxis;
    if (praxis.GetAll() == 0) m_sKzvNr = praxis.m_KZVNR;
    CBehHitLine::ClearMaps();
}

const CBehHitLine & CHitbau::Baue(const CTBeh & beh) {
    m_hit.Clear();
    m_hit.MoveBeh(&beh);
    if (LiesBill()) m_hit.MoveBill(m_bill);
    m_hit.TestMultiband();
    const bool bLeb = LiesBehandler();
    if (bLeb) m_hit.MoveMdId(m_leb.m_sMdKasse, m_leb.m_sMdPrivat);
    if (LiesPatient()) m_hit.MovePatName(m_rPat.m_PATNAME, m_rPat.m_PATVORNAME);
    if (LiesVersicherung()) m_hit.MoveVDesc(m_vdesc);
    if (LiesKasse()) m_hit.MoveKas(m_kas);
    m_hit.FiktiveLeistungen();
    if (LiesGebuehr()) m_hit.MoveGO(m_go);
    if (bLeb) m_hit.MoveLeb(m_leb);
    if (LiesPunktwert()) m_hit.MovePw(m_pw);
    if (bLeb) m_hit.MoveProvision(m_leb);
    if (LiesBefund()) m_hit.MoveBefund(&m_rBefund);
    return m_hit;
}

bool CHitbau::LiesBill() {
    if (m_hit.PATBILL.IsEmpty() || m_hit.PATBILL == " ") return false;
    CTBill bill;
    bill.m_PATNR = m_hit.PATNR;
    bill.m_PATBILL = m_hit.PATBILL;
    if (bill.GetByK1() != 0) return false;
    m_bill.Clear();
    m_bill.MoveBill(&bill);
    return true;
}

bool CHitbau::LiesBehandler() {
    CTLeb leb;
    leb.m_LEB = m_hit.BEHANDLERNR;
    if (leb.GetByK1() != 0) return false;
    m_leb.Clear();
    m_leb.MoveLeb(&leb);
    return true;
}

bool CHitbau::LiesPatient() {
    if (m_sPatient != m_hit.PATNR) {
        m_sPatient = m_hit.PATNR;
        m_bPatient = m_rPat.GetByPatNr(m_sPatient) == 0;
    }
    return m_bPatient;
}

bool CHitbau::LiesVersicherung() {
    CTVDesc vdesc;
    if (vdesc.FindMatching(m_hit.PATNR, m_hit.DATUM, 0) != 0) return false;
    m_vdesc.Clear();
    m_vdesc.MoveVDesc(&vdesc);
    return true;
}

// The insurer's row of the day: the newest not after it, or the oldest there is.
bool CHitbau::LiesKasse() {
    if (m_hit.KASKUERZEL.IsEmpty()) return false;
    CTOrvoKas kas;
    kas.SetKey(1, false);
    kas.m_KASKUERZEL = m_hit.KASKUERZEL;
    bool bGelesen = false;
    for (int i = kas.GetByK1(MATCH_ALLE); i == 0; i = kas.Next()) {
        m_kas.Clear();
        m_kas.MoveKas(&kas, m_sKzvNr);
        bGelesen = true;
        if (kas.m_GUELTIGAB <= m_hit.DATUM) break;
    }
    return bGelesen;
}

bool CHitbau::LiesGebuehr() {
    if (m_hit.LSTNR.IsEmpty()) return false;
    CTGO go;
    go.m_GOART = CString(m_hit.GOART);
    go.m_LSTNR = m_hit.LSTNR;
    if (go.GetByK1() != 0) return false;
    CTGoCheck check;
    m_go.Clear();
    m_go.MoveGO(&go, false, &check);
    return true;
}

// The newest value of the insurer's group and the service's kind on the day.
bool CHitbau::LiesPunktwert() {
    if (m_hit.KASSENPWGRP.IsEmpty() || !IstPunktArt(m_hit.GOART)) return false;
    CTPunktWert pw;
    pw.SetKey(1, false);
    pw.AddKeysBW(CString(), m_hit.DATUM);
    pw.ModifyFilter([&] {
        return pw.m_PWLART.Erstes() == m_hit.PWLART && pw.m_PWGRP.CompareNoCase(m_hit.KASSENPWGRP) == 0;
    });
    if (pw.GetByK1(MATCH_ALLE) != 0) return false;
    m_pw.Clear();
    m_pw.MovePw(&pw);
    return true;
}

bool CHitbau::LiesBefund() {
    if (m_hit.LFDBEFENTRY.IsEmpty()) return false;
    m_rBefund.m_PATNR = m_hit.PATNR;
    m_rBefund.m_LFDBEFENTRY = m_hit.LFDBEFENTRY;
    return m_rBefund.GetByK1() == 0;
}

} // namespace orvostat
