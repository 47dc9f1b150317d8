// The insurers of a service statistic, and selections of them.
#include "Gruppen.h"
#include "Register.h"

#include "orvostatbs/service/LSSum.h"

#include <memory>

namespace orvostat {

namespace {

CString Text(const char * pText) { return pText ? CString(pText) : CString(); }

bool IstLeer(const char * pText) { return pText == nullptr || *pText == 0; }

// The insurer's kind is the one asked for, or its capital: "P" is found where "p" is asked for, not the other
// way.
bool IstArt(const CString & sArt, const char * pGesucht) {
    return IstLeer(pGesucht) || sArt == Text(pGesucht) ||
           (sArt.GetLength() == 1 && sArt[0] == Gross(*pGesucht));
}

// A foreign insurer in a selection that asks for its group and nothing else, which the caller has not opened
// to it.
bool IstUnerwuenschtFremd(bool bFremd, const KAS_GRP_SEL & sel, bool bFremdGrp1, bool bFremdGrp2) {
    if (!bFremd || !IstLeer(sel.m_szKassenArt) || !IstLeer(sel.m_szFremd)) return false;
    return (sel.m_eGrp == STATKASGRP_1 && !bFremdGrp1) || (sel.m_eGrp == STATKASGRP_2 && !bFremdGrp2);
}

} // namespace

void CLSSum::AddKasData(const CBehHitLine & hit) {
    if (!m_register.p) m_register.p = std::make_unique<CKasRegister>();
    CKasRegister & reg = *m_register.p;
    int iKas = reg.Finde(m_vKasData, hit);
    if (iKas < 0) {
        iKas = static_cast<int>(m_vKasData.size());
        CLSKasLstGrp & kas = m_vKasData.emplace_back();
        kas.PRAXISNR = hit.PRAXISNR;
        kas.KASKUERZEL = hit.KASKUERZEL;
        reg.Angehaengt(m_vKasData);
    }
    const auto i = static_cast<std::size_t>(iKas);
    const SHit h(hit, reg.m_arten);
    const CWegweiser weg(reg.Zeilen(i), m_vKasData[i].m_vLstGrp, h); // far away in memory: sent for first
    const bool bNeuerFall = reg.m_faelle.IstNeu(m_vFaelle, hit);
    weg.HoleZeile();
    NimmInKasse(m_vKasData[i], weg.Gruppe(), h, bNeuerFall, &reg.Zeilen(i));
}

void CLSSum::AnalyseKasDataSum(const CString & sPraxis, const std::vector<CLSKasLstGrp> & vKas) {
    BeginWaitCursor();
    const CString sGesucht = sPraxis; // it may be the practice's own, which is emptied
    m_vKas.clear();
    m_Praxis.Clear();
    // m_KasSum is not emptied: a screen adds further practices to it, or calls ClearAll.
    CZeilenregister praxis;
    CZeilenregister summe;
    for (const CLSKasLstGrp & kas : vKas) {
        if (!sGesucht.IsEmpty() && sGesucht != kas.PRAXISNR) continue;
        MischeInPraxis(m_Praxis, kas, praxis);
        for (CLSLst * pSumme :
             {&m_Praxis.m_Gesamt, &m_Praxis.m_KasseStd, &m_Praxis.m_SumStd, &m_Praxis.m_KasseGes})
            pSumme->MoveLst(kas.m_Gesamt);
        m_vKas.push_back(kas);
        MischeKasse(m_KasSum, kas, summe);
    }
    DoPraxisAnteile();
    DoKassenAnteile();
    EndWaitCursor();
}

void CLSSum::AnalyseForKasSel(const CString &, const std::vector<CLSKasLstGrp> & vKas, CLSKasLstGrp & result,
                              std::vector<CFallJeQuartal> & vFaelle, const KAS_GRP_SEL & sel,
                              const CString & sKuerzel, bool bFremdGrp1, bool bFremdGrp2) {
    const CString sGesucht = sKuerzel; // it may be the result's own
    result.Clear();
    vFaelle.clear();
    BeginWaitCursor();
    CZeilenregister summe;
    for (const CLSKasLstGrp & kas : vKas) {
        if (!sGesucht.IsEmpty() && sGesucht != kas.KASKUERZEL) continue;
        if (KasInSel(kas.KASSENART, kas.KASSENGRP, kas.KASSTATISTIKART, kas.FREMDKASSE, sel, bFremdGrp1,
                     bFremdGrp2) == 0)
            continue;
        MischeKasse(result, kas, summe);
        result.KASKUERZEL = sGesucht.IsEmpty() ? Text(sel.m_szName) : sGesucht;
    }
    SumKassenAnteile(result);
    SortiereGruppen(result.m_vLstGrp);
    EndWaitCursor();
}

int CLSSum::KasInSel(const CString & sKassenArt, STATKASGRP eGrp, const CString & sStatArt, bool bFremd,
                     const KAS_GRP_SEL & sel, bool bFremdGrp1, bool bFremdGrp2) {
    if (IstUnerwuenschtFremd(bFremd, sel, bFremdGrp1, bFremdGrp2)) return 0;
    if (!IstArt(sKassenArt, sel.m_szKassenArt)) return 0;
    if (sel.m_eGrp != STATKASGRP_KEINE && eGrp != sel.m_eGrp) return 0;
    if (!IstArt(sStatArt, sel.m_szStatArt)) return 0;
    return IstLeer(sel.m_szFremd) || (bFremd && *sel.m_szFremd == '1') ? 1 : 0;
}

} // namespace orvostat
