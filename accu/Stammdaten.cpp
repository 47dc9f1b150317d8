// The accumulator's master data: practices, treaters, point values, fee rows, pools. What a run needs is read once
// and looked up in memory from then on.
#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

#include <algorithm>
#include <string_view>

namespace orvostat {

namespace {

CString Kleintext(CString s) { return s.MakeLower(); }
// Of a fee row's key.
std::pair<CString, char> Kleinschluessel(std::pair<CString, char> schluessel) {
    schluessel.first.MakeLower();
    return schluessel;
}

template <class T> int Groesse(const T & v) { return static_cast<int>(v.size()); }

// The position of the first element whose field equals sWert.
template <class T> int Position(const std::vector<T> & v, CString T::*pFeld, const CString & sWert) {
    const auto it = std::find_if(v.begin(), v.end(), [&](const T & t) { return t.*pFeld == sWert; });
    return it == v.end() ? -1 : static_cast<int>(it - v.begin());
}

} // namespace

// ---- practices

bool CStatAccu::GetAllMd(bool bFilter, bool bNurEigenes) {
    CTMandantAdr rMd(dbDatabase);
    return rMd.GetValidMandant(GetMandant()) == 0 && FillMdStruct(rMd, bFilter, bNurEigenes) > 0;
}

int CStatAccu::FillMdStruct(CTMandantAdr & rMd, bool bFilter, bool bNurEigenes) {
    using FInitialisiere = int(SFachbereiche *, CTPraxis *, CTMandantAdr *, std::vector<CString> *);
    const CAutoRSet<CTPraxis> pPraxis;
    pPraxis->SetForwardOnly(true);
    if (pPraxis->GetAll() != 0) return 0;
    m_vMd.clear();
    for (int i = rMd.First(); i == 0; i = rMd.Next()) {
        if (bFilter && bNurEigenes && !rMd.m_MDZWEIG.IsEmpty() && rMd.m_MDID != dbMdId) continue;
        m_vMd.emplace_back().MoveMd(&rMd);
        if (!Bibliotheken().Installiert("kelabr")) continue;
        if (m_pFachbereiche == nullptr) m_pFachbereiche = new SFachbereiche;
        std::vector<CString> vArbeit;
        if (auto * pInitialisiere = LadeFunktionAls<FInitialisiere>("kelabr", "InitialisiereFachbereiche"_t))
            pInitialisiere(m_pFachbereiche, &*pPraxis, &rMd, &vArbeit);
    }
    std::sort(m_vMd.begin(), m_vMd.end());
    return Groesse(m_vMd);
}

int CStatAccu::FindMd(const CString & sMdId) { return Position(m_vMd, &CMdStruct::m_sMdId, sMdId); }

// ---- treaters

bool CStatAccu::GetAllLeb(bool bFilter, bool bAlle) {
    CTParPool rPool(dbDatabaseRO);
    rPool.SetForwardOnly(true);
    rPool.m_GRUPPE = "  0";
    rPool.m_KUERZEL = "showdelleb"_t;
    const bool bGeloeschte = rPool.GetByK1() == 0 && rPool.m_WERT == "1";
    const CAutoRSet<CTLeb> pLeb(OPEN_DYNAMISCH);
    const int iErgebnis = bGeloeschte ? pLeb->GetAll() : pLeb->GetValidLebs(CString());
    return iErgebnis == 0 && FillLebStruct(*pLeb, bFilter, bAlle) > 0;
}

int CStatAccu::FillLebStruct(CTLeb & rLeb, bool bFilter, bool bAlle) {
    m_vLeb.clear();
    m_vLebAlle.clear();
    std::map<CString, CTAdr_Fields> mapAdr;
    GetPersAdrCache(mapAdr);
    const std::vector<CString> & vLebs = GetLebs();
    for (int i = rLeb.First(); i == 0; i = rLeb.Next()) {
        const bool bGewaehlt =
            vLebs.empty() || std::find(vLebs.begin(), vLebs.end(), rLeb.m_LEB) != vLebs.end();
        if (bGewaehlt && bFilter && !bAlle && rLeb.m_PID != dbPId) continue;
        CLebStruct & leb = m_vLebAlle.emplace_back();
        leb.MoveLeb(&rLeb);
        if (!bGewaehlt) continue;
        if (const auto it = mapAdr.find(rLeb.m_PID); it != mapAdr.end()) leb.MoveAdr(&it->second);
        if (!dbPraxisLeb || rLeb.m_PRAXISID == dbPraxisId) m_vLeb.push_back(leb);
    }
    std::sort(m_vLeb.begin(), m_vLeb.end());
    return Groesse(m_vLeb);
}

int CStatAccu::FindLeb(const CString & sLeb) const { return Position(m_vLeb, &CLebStruct::m_sLeb, sLeb); }

CString CStatAccu::Lebs2String() {
    m_bAlleLebsPassen = true;
    std::vector<CString> vLebs;
    const CString sMandant = GetMandant();
    for (const CLebStruct & leb : m_vLeb) {
        if (sMandant.IsEmpty() || sMandant == leb.m_sMdPrivat || sMandant == leb.m_sMdKasse)
            vLebs.push_back(leb.m_sLeb);
        else
            m_bAlleLebsPassen = false;
    }
    return AlsListe(vLebs);
}

bool CStatAccu::GetPersAdr(CTPersonalAdr & rPersonal, const CString & sPers) {
    rPersonal.SetKey(1);
    rPersonal.m_PID = sPers;
    return rPersonal.GetByK1() == 0;
}

void CStatAccu::GetPersAdrCache(std::map<CString, CTAdr_Fields> & mapAdr) {
    std::map<CString, CTAdr_Fields> mapNachNr;
    const CAutoRSet<CTAdr> pAdr(OPEN_TABELLE, true);
    pAdr->m_ADRART = "w";
    for (int i = pAdr->GetByK3(MATCH_ALLE); i == 0; i = pAdr->Next())
        if (!Blank(pAdr->m_ADRNR)) mapNachNr[TrimRight(pAdr->m_ADRNR)] = *pAdr;
    const CAutoRSet<CTPersonal> pPersonal(OPEN_TABELLE, true);
    for (int i = pPersonal->GetAll(); i == 0; i = pPersonal->Next()) {
        const auto it = mapNachNr.find(TrimRight(pPersonal->m_PERSADRNR));
        if (it != mapNachNr.end()) mapAdr[pPersonal->m_PID] = it->second;
    }
}

// ---- point values

bool CStatAccu::GetAllPwGrp() {
    CTPwGroup rGrp(dbDatabaseRO);
    rGrp.SetForwardOnly(true);
    rGrp.SetKey(1);
    for (int i = rGrp.GetAll(); i == 0; i = rGrp.Next())
        m_vPwGrp.emplace_back().MovePw(&rGrp);
    return !m_vPwGrp.empty();
}

int CStatAccu::FindPwGrp(const CString & sGrp) {
    const CString sKlein = Kleintext(sGrp);
    const auto it = std::find_if(m_vPwGrp.begin(), m_vPwGrp.end(),
                                 [&](const CPwGrp & grp) { return Kleintext(grp.m_sPwGrp) == sKlein; });
    return it == m_vPwGrp.end() ? -1 : static_cast<int>(it - m_vPwGrp.begin());
}

bool CStatAccu::GetAllPw() {
    CTPunktWert rPw(dbDatabaseRO);
    rPw.SetOpenType(OPEN_TABELLE, true);
    rPw.SetKey(1, false);
    for (int i = rPw.GetAll(); i == 0; i = rPw.Next())
        m_mapPw[Kleintext(rPw.m_PWGRP)].emplace_back().MovePw(&rPw);
    return !m_mapPw.empty();
}

const CPw * CStatAccu::FindPw(const CString & sGrp, CChar cLArt, const CString & sDatum) {
    if (sGrp.IsEmpty()) return nullptr;
    for (const CPw & pw : m_mapPw[Kleintext(sGrp)])
        if (pw.m_cPwLArt == cLArt && pw.m_sPwAb <= sDatum) return &pw;
    return nullptr;
}

// ---- fee rows

int CStatAccu::FillGOStruct(CTGO * pGO) {
    int iErgebnis = 0;
    do {
        CGOStruct go;
        go.MoveGO(pGO, GetArzt(), &m_rGoCheck);
        const auto & vGO = m_vGO.Lesend();
        if (vGO.empty() || vGO.back().m_sLstLower != go.m_sLstLower || vGO.back().m_cGoArt != go.m_cGoArt)
            m_vGO.push_back(std::move(go));
        iErgebnis = pGO->Next();
    } while (iErgebnis == 0);
    return Groesse(m_vGO);
}

int CStatAccu::FindGO(const CString & sLst, CChar cGoArt) {
    const int iPos = m_indexGoLst.Finde(
        m_vGO, {sLst, cGoArt}, [](const CGOStruct & go) { return SGoSchluessel(go.m_sLst, go.m_cGoArt); },
        Kleinschluessel);
    if (iPos >= 0) return iPos;
    return GetGOLstFromTable(sLst, cGoArt) ? Groesse(m_vGO) - 1 : -1;
}

int CStatAccu::FindGOKuerzel(const CString & sKuerzel, CChar cGoArt) {
    const int iPos = m_indexGoKuerzel.Finde(
        m_vGO, {sKuerzel, cGoArt},
        [](const CGOStruct & go) { return SGoSchluessel(go.m_sKuerzel, go.m_cGoArt); }, Kleinschluessel);
    if (iPos >= 0) return iPos;
    return GetGOKuerzelFromTable(sKuerzel, cGoArt) ? Groesse(m_vGO) - 1 : -1;
}

bool CStatAccu::LiesGO(int iKey, const CString & sWert, CChar cGoArt) {
    if (sWert.IsEmpty()) return false;
    m_rGO.SetKey(iKey);
    const CString sGoArt = cGoArt == 0 ? CString() : CString(cGoArt);
    return m_rGO.LiesMit(iKey, MATCH_ALLE, {sGoArt, sWert}) == 0 && FillGOStruct(&m_rGO) > 0;
}

bool CStatAccu::GetGOLstFromTable(const CString & sLst, CChar cGoArt) { return LiesGO(1, sLst, cGoArt); }

bool CStatAccu::GetGOKuerzelFromTable(const CString & sKuerzel, CChar cGoArt) {
    return LiesGO(2, sKuerzel, cGoArt);
}

// ---- pools

bool CStatAccu::GetSelectPoolData(const CString & sKey, std::vector<CSPData> & vDaten, bool bNeu) {
    if (bNeu) vDaten.clear();
    std::vector<SSelectPool *> vEintraege;
    const int iErgebnis = dbDatabaseRO.SelectPool(sKey, vEintraege);
    if (iErgebnis != ZEILE_OK && iErgebnis != ZEILE_KEINE) return false;
    for (const SSelectPool * pEintrag : vEintraege)
        if (!pEintrag->m_sKey.IsEmpty()) vDaten.emplace_back().MoveSP(pEintrag);
    if (vDaten.empty()) return false;
    if (bNeu) {
        CSPData unbekannt;
        unbekannt.m_sText = "Unbekannt ..."_t;
        vDaten.push_back(unbekannt);
    }
    return true;
}

int CStatAccu::FindSelectPoolData(const std::vector<CSPData> & vDaten, const CString & sKey) {
    return Position(vDaten, &CSPData::m_sKey, sKey);
}

bool CStatAccu::ReadParPoolData(int iNr) {
    m_vLstErsatz.clear();
    const CAutoRSet<CTParPool> pPool;
    pPool->ClearKey();
    pPool->SetKey(1);
    pPool->m_GRUPPE = itoc(iNr);
    for (int i = pPool->GetByK1(MATCH_ALLE); i == 0; i = pPool->Next()) {
        const CString sErsatz = GetMidStr(pPool->m_KUERZEL, 2);
        const int iBlank = pPool->m_WERT.Find(' ');
        if (sErsatz.IsEmpty() || iBlank < 0 || pPool->m_WERT.Erstes() == '0') continue;
        const CString sKuerzel = GetMidStr(pPool->m_WERT, iBlank + 1);
        if (!sKuerzel.IsEmpty()) m_vLstErsatz.emplace_back(sKuerzel, sErsatz);
    }
    return true;
}

} // namespace orvostat
