#include "orvostatbs/accu/StatAccu.h"

#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace orvostat {

CStatAccu::CStatAccu(HWND hParent)
    : m_rGO(dbDatabaseRO), m_rGoCheck(dbDatabaseRO), m_rBill(dbDatabaseRO), m_rHistRecall(dbDatabaseRO),
      m_pParent(hParent) {
    Clear_Selekt();
    m_rGO.SetForwardOnly(true);
    m_rGoCheck.SetForwardOnly(true);
    m_rBill.SetForwardOnly(true);
    m_rHistRecall.SetForwardOnly(true);
}

CStatAccu::~CStatAccu() { delete m_pFachbereiche; }

void CStatAccu::Clear_Selekt() {
    LeereSelektion();
    m_lAnzHits = 0;
    m_bAlleLebsPassen = false;
    m_sLebsString.Empty();
    m_sKzvNr.Empty();
    m_vLstErsatz.clear();
}

// ---- the record sets of a run

namespace {

template <class T> void LegeAn(T *& pRSet) {
    pRSet = new T(dbDatabaseRO);
    pRSet->SetForwardOnly(true);
}

template <class T> void GibFrei(T *& pRSet) {
    delete pRSet;
    pRSet = nullptr;
}

} // namespace

void CStatAccu::GetMemForTables() {
    if (m_pRPat == nullptr) BeginneNutzung();
    LegeAn(m_pRPat);
    LegeAn(m_pRAdr);
    LegeAn(m_pRBeh);
    LegeAn(m_pRVDesc);
    LegeAn(m_pROrvoKas);
    LegeAn(m_pRABefund);
}

void CStatAccu::DeleteMemForTables() {
    const bool bLauf = m_pRPat != nullptr;
    GibFrei(m_pRABefund);
    GibFrei(m_pROrvoKas);
    GibFrei(m_pRVDesc);
    GibFrei(m_pRPat);
    GibFrei(m_pRBeh);
    GibFrei(m_pRAdr);
    if (bLauf) BeendeNutzung();
}

// ---- start and end of a run

int CStatAccu::DataSumVorlauf(bool) {
    CTGO::VergissGebPkt();
    GetMemForTables();
    const int iCode = GetGlobalData(false);
    if (iCode == 0) LeereTabellen();
    return iCode;
}

void CStatAccu::LeereTabellen() {
    m_vBehHits.clear();
    m_vBehErrors.clear();
    ClearP();
    ClearV();
    m_vKas.clear();
    m_iGipsPos = -1;
    m_vGipsHits.clear();
    m_iRechPos = -1;
    m_vRechHits.clear();
    m_vVerordnungHits.clear();
    m_iGlabPos = -1;
    m_vGlabHits.clear();
    m_iErrPos = -1;
    m_vGlabFaktHits.clear();

    m_bAlleLebsPassen = false;
    m_sLebsString = Lebs2String();
    m_vMischPwPlaene.clear();
    m_vPwPlaene.clear();
}

void CStatAccu::DataSumNachlauf() { DeleteMemForTables(); }

namespace {

// The tables of the select pool in reading order: the pools of each, and the code where they have no entries.
struct SPool {
    std::vector<CSPData> CStatAccu::*pTabelle;
    int iCode;
    bool bGross; // keys are turned to upper case
    std::array<const char *, 4> apSchluessel;
};

constexpr SPool POOLS[] = {
    {&CStatAccu::m_vSpGoStat, 14, false, {"gostattyp", "gostattyp2", "gostattyp3", "gostattyp4"}},
    {&CStatAccu::m_vSpStatistik, 15, false, {"statistikspalte"}},
    {&CStatAccu::m_vSpMedStatistik, 15, false, {"medstatistikspalte"}},
    {&CStatAccu::m_vSpKassenArt, 16, true, {"kassenarttyp"}},
    {&CStatAccu::m_vSpTechLst, 17, false, {"techlsttyp"}},
    {&CStatAccu::m_vSpKassenGrp, 18, false, {"kassengrptyp"}},
    {&CStatAccu::m_vSpHvm, 19, false, {"hvmbudget"}},
};

bool LiesPool(CStatAccu & accu, const SPool & pool) {
    std::vector<CSPData> & vTabelle = accu.*pool.pTabelle;
    bool bNeu = true;
    for (const char * pSchluessel : pool.apSchluessel) {
        if (pSchluessel == nullptr) break;
        if (!accu.GetSelectPoolData(CString(pSchluessel), vTabelle, bNeu)) {
            vTabelle.clear(); // half a table would pass for a whole one the next time
            return false;
        }
        bNeu = false;
    }
    if (pool.bGross)
        for (CSPData & eintrag : vTabelle)
            eintrag.m_sKey.MakeUpper();
    return true;
}

} // namespace

int CStatAccu::GetGlobalData(bool) {
    m_iLQPunktwert = Zahl(GetLQPunktwert());
    m_mapPw.clear();
    m_sPwGruppe.Empty();
    GetAllPw();
    for (const SPool & pool : POOLS)
        if ((this->*pool.pTabelle).empty() && !LiesPool(*this, pool)) return pool.iCode;
    return 0;
}

void CStatAccu::DisplayGlobalDataError(int iCode) {
    struct SMeldung {
        int iCode;
        void (*pZeige)(const CString & sCaption, const CString & sText, int iArt);
        CString sCaption;
        CString sText;
    };
    static const CString s_sLeer = "Datensammlung gescheitert."_t;
    static const CString s_sFehlt = "GetGlobalData()"_t;
    static const SMeldung s_aMeldungen[] = {
        {1, HaltI, s_sLeer, "Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t},
        {2, HaltI, s_sLeer, "Keine Patienten gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t},
        {10, HaltE, s_sFehlt, "Kein Mandant verfügbar!"_t},
        {11, HaltE, s_sFehlt, "Kein Behandler verfügbar!"_t},
        {12, HaltE, s_sFehlt, "Keine Punktwerte verfügbar!"_t},
        {13, HaltE, s_sFehlt, "Keine Leistung verfügbar!"_t},
        {14, HaltE, s_sFehlt, "Keine GO-Statistiktypen im Selectpool verfügbar!"_t},
        {15, HaltE, s_sFehlt, "Keine Kassenstatistiktypen im Selectpool verfügbar!"_t},
        {16, HaltE, s_sFehlt, "Keine Kassenarten im Selectpool verfügbar!"_t},
        {17, HaltE, s_sFehlt, "Keine techn. Leistungstypen im Selectpool verfügbar!"_t},
        {18, HaltE, s_sFehlt, "Keine Kassengruppen im Selectpool verfügbar!"_t},
        {19, HaltE, s_sFehlt, "Keine HVM-Gruppen im Selectpool verfügbar!"_t},
    };
    for (const SMeldung & meldung : s_aMeldungen)
        if (meldung.iCode == iCode) meldung.pZeige(meldung.sCaption, meldung.sText, 0);
}

// ---- errors

void CStatAccu::AddError(const CBehHitLine & hit, int iFehler) {
    m_BehError.MoveError(hit, iFehler);
    if (FindError(m_BehError) < 0) m_vBehErrors.push_back(m_BehError);
}

int CStatAccu::FindError(const CBehErrors & fehler) {
    return m_indexFehler.Finde(m_vBehErrors, fehler, std::identity{}, std::identity{});
}

// Over the fields by which CBehErrors compares.
std::size_t CStatAccu::SFehlerHash::operator()(const CBehErrors & fehler) const {
    auto iHash = static_cast<std::size_t>(fehler.m_iFehler);
    for (const CString * pFeld :
         {&fehler.PATNR, &fehler.DATUM, &fehler.LSTIN, &fehler.KASKUERZEL, &fehler.MFRDIG, &fehler.WSO})
        iHash = iHash * 31 + pFeld->Hash();
    return iHash;
}

// ---- status of a hit

bool CStatAccu::IsLstStatusOK(const CBehHitLine & hit) {
    const bool bAbgerechnet = !hit.FAKT1.IsEmpty() || !hit.FAKT2.IsEmpty();
    return bAbgerechnet ? GetIsAbgerechnet() : GetIsErfasst();
}

bool CStatAccu::IsTecGoSubArtOK(const CBehHitLine & hit) {
    if (hit.GOART != '7') return true;
    const auto In = [&hit](std::string_view sArten) {
        return sArten.find(hit.GOSUBART) != std::string_view::npos;
    };
    const int iBits = GetTecGoSubArten();
    return ((iBits & 1) != 0 && In("1234567")) || ((iBits & 2) != 0 && In("acikpsw"));
}

// ---- tables

void CStatAccu::ClearP() {
    m_vPat.clear();
    m_mapPat.clear();
}

void CStatAccu::ClearV() { m_mapVDesc.clear(); }

int CStatAccu::GesamtBehDauer() {
    std::int64_t iDauer = 0;
    for (const CPat & pat : m_vPat)
        iDauer += pat.BEHDAUER;
    return static_cast<int>(iDauer);
}

// ---- sorting
//
// Hits are big, so positions are sorted and each hit then moves once. Fetching a hit from memory takes longer than
// all that is done with it, so every walk asks for hits some steps before it needs them: of LaufBench with 100,000
// treatments, sortieren_name and sortieren_patient take half as long again without it.

namespace {

constexpr std::size_t VORAUS = 16;

// Asks for the memory of an object that will be used soon.
template <class T> void Hole(const T & objekt) {
    constexpr std::size_t CACHEZEILE = 64;
    const char * p = reinterpret_cast<const char *>(&objekt);
    for (std::size_t i = 0; i < sizeof(T); i += CACHEZEILE)
        __builtin_prefetch(p + i);
}

using CHits = std::vector<CBehHitLine>;
using CReihenfolge = std::vector<std::uint32_t>; // positions of hits

struct SSortierSchluessel {
    CString sPatNr;
    CString sDatum;
    CString sLfd;
    signed char cSitzung;
    std::uint32_t iPos;

    [[nodiscard]] bool operator<(const SSortierSchluessel & b) const {
        if (sPatNr != b.sPatNr) return sPatNr.Compare(b.sPatNr) < 0;
        if (sDatum != b.sDatum) return sDatum.Compare(b.sDatum) < 0;
        if (cSitzung != b.cSitzung) return cSitzung < b.cSitzung;
        return sLfd.Compare(b.sLfd) < 0;
    }
};

CReihenfolge NachPatient(const CHits & vHits) {
    std::vector<SSortierSchluessel> vSchluessel;
    vSchluessel.reserve(vHits.size());
    for (std::size_t i = 0; i < vHits.size(); ++i) {
        const CBehHitLine & voraus = vHits[std::min(i + VORAUS, vHits.size() - 1)];
        Hole(voraus.PATNR);
        Hole(voraus.DATUM);
        Hole(voraus.SITZUNG);
        Hole(voraus.LFDBEHEINTRAG);
        const CBehHitLine & hit = vHits[i];
        vSchluessel.push_back({hit.PATNR, hit.DATUM, hit.LFDBEHEINTRAG, static_cast<signed char>(hit.SITZUNG),
                               static_cast<std::uint32_t>(i)});
    }
    std::sort(vSchluessel.begin(), vSchluessel.end());
    CReihenfolge vOrdnung;
    vOrdnung.reserve(vHits.size());
    for (const SSortierSchluessel & schluessel : vSchluessel)
        vOrdnung.push_back(schluessel.iPos);
    return vOrdnung;
}

// The order by name out of the order by patient: the stretches of one name in it are sorted by the name's sort form,
// and stay in their order where that is the same.
CReihenfolge NachName(const CHits & vHits, const CReihenfolge & vNachPatient) {
    struct SStrecke {
        CString sForm;
        std::size_t iAb;
        std::size_t iBis;
    };
    std::vector<SStrecke> vStrecken;
    for (std::size_t i = 0; i < vNachPatient.size(); ++i) {
        Hole(vHits[vNachPatient[std::min(i + VORAUS, vNachPatient.size() - 1)]].PATNAME);
        const CString & sName = vHits[vNachPatient[i]].PATNAME;
        if (i == 0 || sName != vHits[vNachPatient[i - 1]].PATNAME)
            vStrecken.push_back({CMxField::MakeKY(sName, 2147483647), i, i});
        ++vStrecken.back().iBis;
    }
    std::stable_sort(vStrecken.begin(), vStrecken.end(),
                     [](const SStrecke & a, const SStrecke & b) { return a.sForm.Compare(b.sForm) < 0; });
    CReihenfolge vOrdnung;
    vOrdnung.reserve(vHits.size());
    for (const SStrecke & strecke : vStrecken)
        for (std::size_t i = strecke.iAb; i < strecke.iBis; ++i)
            vOrdnung.push_back(vNachPatient[i]);
    return vOrdnung;
}

// Brings the hits into the order, following each cycle of the permutation once.
void Ordne(CHits & vHits, CReihenfolge vOrdnung) {
    for (std::uint32_t i = 0; i < vOrdnung.size(); ++i) {
        if (vOrdnung[i] == i) continue;
        CBehHitLine hit = std::move(vHits[i]);
        std::uint32_t iZiel = i;
        while (vOrdnung[iZiel] != i) {
            const std::uint32_t iQuelle = vOrdnung[iZiel];
            Hole(vHits[vOrdnung[iQuelle]]);
            vHits[iZiel] = std::move(vHits[iQuelle]);
            vOrdnung[iZiel] = iZiel;
            iZiel = iQuelle;
        }
        vHits[iZiel] = std::move(hit);
        vOrdnung[iZiel] = iZiel;
    }
}

} // namespace

void CStatAccu::DoSortLines() {
    const int iSortierung = GetSortierung() - '0';
    if (iSortierung != 1 && iSortierung != 2) return;
    CReihenfolge vOrdnung = NachPatient(m_vBehHits);
    if (iSortierung == 1) vOrdnung = NachName(m_vBehHits, vOrdnung);
    Ordne(m_vBehHits, std::move(vOrdnung));
}

// ---- practice and physician

void CStatAccu::ChangeHitMdId(const CString & sLeb) {
    const auto it = std::find_if(m_vLebAlle.begin(), m_vLebAlle.end(),
                                 [&sLeb](const CLebStruct & leb) { return leb.m_sLeb == sLeb; });
    if (it == m_vLebAlle.end()) return;
    const CString sMd = m_BehHit.KASSENABR ? it->m_sMdKasse : it->m_sMdPrivat;
    const int iMd = FindMd(sMd);
    if (iMd < 0 || !m_BehHit.KASSENABR) return;
    const int iPos = m_BehHit.ABRART == 'e' ? 0 : m_BehHit.ABRART == 'c' ? 2 : 4;
    const CString sCode = GetMidStr(m_vMd[static_cast<std::size_t>(iMd)].m_sMdCodes, iPos, 2);
    if (!TrimRight(sCode).IsEmpty()) m_BehHit.PRAXISNR = sMd;
}

void CStatAccu::Braitretru(int iModus, int iPat) {
    if (iModus == 0) ChangeHitMdId(m_BehHit.BEHANDLERNR);
    if (iModus == 1 && iPat >= 0 && static_cast<std::size_t>(iPat) < m_vPat.size())
        ChangeHitMdId(m_vPat[static_cast<std::size_t>(iPat)].BEHANDLERNR);
}

void CStatAccu::SetArzt(const CString & sMdId) {
    bool bArzt = false;
    if (dbMKGVersion && !sMdId.IsEmpty()) {
        CTMandant rMd(dbDatabaseRO);
        rMd.SetForwardOnly(true);
        rMd.m_MDID = sMdId;
        bArzt = rMd.GetByK1() == 0 && (rMd.m_MDART == "b" || rMd.m_MDART == "d");
    }
    if (bArzt == m_Selekt.Arzt) return;
    m_Selekt.Arzt = bArzt;
    m_vGO.clear();
}

CString CStatAccu::ReadArzt(const CString & sAdrNr) {
    const CAutoRSet<CTAdr> pAdr;
    return pAdr->GetByAdrNr(sAdrNr) == 0 ? pAdr->MakeFullName(FULLNAME_NAME) : CString();
}

} // namespace orvostat
