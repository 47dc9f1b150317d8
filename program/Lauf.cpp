#include "Lauf.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Oberflaeche.h"

#include <algorithm>

namespace orvostat {

namespace {

// Rows between two looks at the progress box.
constexpr std::int64_t FORTSCHRITT_SCHRITT = 512;
constexpr long FORTSCHRITT_MAX = 1000;

} // namespace

CLauf::CLauf(CStatAccu & accu, const SLaufauftrag & auftrag)
    : m_accu(accu), m_auftrag(auftrag), m_rPlan(dbDatabaseRO), m_rBehPlan(dbDatabaseRO) {
    m_sVon = Oder(accu.GetAbDatum(), ERSTER_TAG);
    m_sBis = Oder(accu.GetBisDatum(), LETZTER_TAG);
}

bool CLauf::Vorlauf() {
    CBehHitLine::ClearMaps();
    if (!m_accu.GetAllMd(true, false)) {
        m_accu.DisplayGlobalDataError(10);
        return false;
    }
    if (!m_accu.GetAllLeb(false, true)) {
        m_accu.DisplayGlobalDataError(11);
        return false;
    }
    if (m_auftrag.bErsatz) m_accu.ReadParPoolData(m_auftrag.iErsatzgruppe);
    const int iCode = m_accu.DataSumVorlauf(false);
    if (iCode == 0) return true;
    m_accu.DisplayGlobalDataError(iCode);
    m_accu.DataSumNachlauf();
    return false;
}

ELauf CLauf::Laufe() {
    if (!Vorlauf()) return ELauf::Gescheitert;
    OrvoOpenProgressBox(0, 0, "Datensammlung"_t);
    const bool bFertig = LaufeBehandlungen();
    if (bFertig && m_auftrag.bNebenakten) LaufeNebenakten();
    OrvoCloseProgressBox();
    m_accu.DoSortLines();
    m_accu.m_lAnzHits = static_cast<std::int32_t>(m_accu.m_vBehHits.size());
    Nachlauf();
    return bFertig ? ELauf::Fertig : ELauf::Abgebrochen;
}

// ---- treatments

// A run over everything gets the room for its hits at once, since they are big and moving them costs.
void CLauf::ReserviereHits() {
    const auto & pSpeicher = dbDatabaseRO.Speicher();
    const bool bAlles =
        m_accu.GetPatient().IsEmpty() && m_accu.GetAbDatum().IsEmpty() && m_accu.GetBisDatum().IsEmpty();
    if (!bAlles || !pSpeicher) return;
    const std::int64_t iZeilen = pSpeicher->Zeilenzahl(m_accu.m_pRBeh->Tabelle());
    m_accu.m_vBehHits.reserve(static_cast<std::size_t>(std::max<std::int64_t>(iZeilen, 0)));
}

bool CLauf::LaufeBehandlungen() {
    CTBeh & beh = *m_accu.m_pRBeh;
    const CString sPatient = m_accu.GetPatient();
    ReserviereHits();
    beh.SetKey(1);
    beh.ClearKey();
    beh.m_PATNR = sPatient;
    for (int i = beh.GetByK1(MATCH_ALLE); i == 0; i = beh.Next()) {
        if (!Weiter(++m_zahlen.iBehandlungen)) return false;
        if (ImZeitraum(beh.m_DATUM) && BaueHit(beh)) m_accu.m_vBehHits.push_back(m_accu.m_BehHit);
    }
    return true;
}

// The order in which a hit is built: each step reads what the steps before it have given.
bool CLauf::BaueHit(const CTBeh & beh) {
    CBehHitLine & hit = m_accu.m_BehHit;
    if (!NimmPatient(beh.m_PATNR)) return false;
    const CLebStruct * pLeb = Behandler(beh.m_BEHANDLERNR);
    if (pLeb == nullptr) return false;
    const CLebStruct & leb = *pLeb;

    hit.Clear();
    hit.MoveBeh(&beh);
    const CBill * pBill = m_accu.GetBill(hit.PATNR, hit.PATBILL);
    if (pBill == nullptr)
        ++m_zahlen.iOhneBill;
    else
        hit.MoveBill(*pBill);
    int iPlan = -1;
    if (m_auftrag.bPlangatter &&
        !m_accu.OnlyForZEorKFOorPAROk(&m_rPlan, m_vPlaene, hit, m_auftrag.bOhne22a, m_auftrag.bParMarken,
                                      m_auftrag.bParBeva, &m_rBehPlan, iPlan))
        return false;
    hit.TestMultiband();
    hit.MoveMdId(leb.m_sMdKasse, leb.m_sMdPrivat);
    if (!m_accu.GetNoChangeMdId()) m_accu.Braitretru(0, -1);
    if (!m_accu.IsFuerMandant(hit.PRAXISNR)) return false;
    if (m_iPat >= 0) {
        const CPat & pat = m_accu.m_vPat[static_cast<std::size_t>(m_iPat)];
        hit.MovePatName(pat.PATNAME, pat.PATVORNAME);
    }
    MoveVersicherung(hit);
    hit.FiktiveLeistungen();
    m_accu.GetGOData(hit);
    if (m_auftrag.bErsatz) m_accu.GetLstErsatz(hit);
    hit.MoveLeb(leb);
    m_accu.GetPunkte(hit);
    m_accu.GetBetrag(hit, nullptr);
    if (m_auftrag.bKassenanteil)
        m_accu.NurDenKassenanteil(m_vPlaene, hit, iPlan, m_accu.GetProzPrivatSachkosten());
    hit.MoveProvision(leb);
    m_accu.GetBefund(hit);
    return HitPasst(hit);
}

// Takes the treatment's patient; its filters are asked once. A patient who cannot be read has no name and passes no
// section that looks at him, but his treatments count.
bool CLauf::NimmPatient(const CString & sPatNr) {
    if (sPatNr != m_sPatNr) {
        m_sPatNr = sPatNr;
        m_vPlaene.clear(); // a plan belongs to one patient, and his treatments follow each other
        m_iPat = m_accu.GetPat(sPatNr, true);
        if (m_iPat < 0 && !m_accu.m_mapVDesc.contains(sPatNr)) m_accu.GetVDesc(sPatNr, ERSTER_TAG);
        CPat ohne;
        ohne.Clear();
        m_bPatient = PatientPasst(m_iPat < 0 ? ohne : m_accu.m_vPat[static_cast<std::size_t>(m_iPat)]);
    }
    if (m_bPatient && m_iPat < 0) ++m_zahlen.iOhnePatient;
    return m_bPatient;
}

// The patient sections of the selection: texts first, then those that read rows.
bool CLauf::PatientPasst(const CPat & pat) {
    CTBeh & beh = m_rBehPlan;
    return m_accu.PatSelektOk(pat.SELEKTION) && m_accu.PatAnamneseOk(pat.RISIKOANAMNESE) &&
           m_accu.PatAnredeOk(pat.PATANREDE) && m_accu.PatPlzOrtOk(pat.PATPLZ, pat.PATORT) &&
           m_accu.PatStrasseOk(pat.PATSTRASSE) && m_accu.LastBehDatumOk(pat.LASTBEHDATUM) &&
           m_accu.UeberwArztOk(pat.UEBERWARZT) && m_accu.HausArztOk(pat.HAUSARZT) &&
           m_accu.PatGebDatOk(pat.PATGEBDATUM) && m_accu.PatAlterOk(pat.PATGEBDATUM) &&
           m_accu.PatRecallOk(pat) && m_accu.PatLastLstOK(&beh, m_sPatNr, CString()) &&
           m_accu.PatOhneLstOK(&beh, m_sPatNr, CString()) && m_accu.KvkVorgabenOk(&beh, m_sPatNr);
}

void CLauf::MoveVersicherung(CBehHitLine & hit) {
    const CVDesc * pVDesc = m_accu.FindVDescByDate(hit.PATNR, hit.DATUM);
    const int iKas = pVDesc == nullptr ? -1 : m_accu.FindKas(pVDesc->KASKUERZEL, hit.DATUM);
    if (pVDesc != nullptr) hit.MoveVDesc(*pVDesc);
    if (iKas >= 0)
        hit.MoveKas(m_accu.m_vKas.Lesend()[static_cast<std::size_t>(iKas)]);
    else
        ++m_zahlen.iOhneKasse;
    hit.ISPRIVATPATIENT = pVDesc == nullptr || pVDesc->IsPrivat();
}

const CLebStruct * CLauf::Behandler(const CString & sLeb) {
    const int iLeb = m_accu.FindLeb(sLeb);
    if (iLeb >= 0) return &m_accu.m_vLeb[static_cast<std::size_t>(iLeb)];
    ++m_zahlen.iOhneBehandler;
    return nullptr;
}

// The sections that look at a finished hit.
bool CLauf::HitPasst(const CBehHitLine & hit) {
    const auto Gleich = [](const CString & sGewaehlt, const CString & sWert) {
        return sGewaehlt.IsEmpty() || sGewaehlt == sWert;
    };
    return m_accu.MFR_Ok(hit.MFRDIG) && m_accu.RSA_Ok(hit.RSA) && m_accu.PwLArtOk(hit.PWLART) &&
           m_accu.OnlyAbrechenbareOk(hit.m_cGoKz) && m_accu.IsTecGoSubArtOK(hit) &&
           m_accu.IsLstStatusOK(hit) && (m_accu.GetGoArt() == 0 || m_accu.GetGoArt() == hit.GOART) &&
           Gleich(m_accu.GetLst(), hit.LSTNR) &&
           (m_accu.GetAbrArt().IsEmpty() || m_accu.GetAbrArt().Find(hit.ABRART) >= 0) &&
           Gleich(m_accu.GetKasKuerzel(), hit.KASKUERZEL) &&
           Gleich(m_accu.GetKasStat(), hit.KASSTATISTIKART) && Gleich(m_accu.GetErfasser(), hit.ERFASSER) &&
           Gleich(m_accu.GetPlan(), hit.PLANNR);
}

bool CLauf::ImZeitraum(const CString & sDatum) const { return sDatum >= m_sVon && sDatum <= m_sBis; }

// Moves the progress box now and then; false when the user wants to stop and says so again.
bool CLauf::Weiter(std::int64_t iPos) {
    if (iPos % FORTSCHRITT_SCHRITT != 0) return true;
    const long iBalken = static_cast<long>((iPos / FORTSCHRITT_SCHRITT) % FORTSCHRITT_MAX);
    if (OrvoUpdateProgressBox2(iBalken, FORTSCHRITT_MAX)) return true;
    return SollIch("Vorgang abbrechen..."_t, "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0) !=
           SOLLICH_JA;
}

// ---- side records

void CLauf::LaufeNebenakten() {
    if (m_accu.GetELabChecked()) LaufeLaborbloecke();
    if (m_accu.GetGLabChecked()) LaufeGewerbelabor();
    LaufeSammelrechnungen();
    LaufeGipsmodelle();
    LaufeRechnungen();
    LaufeVerordnungen();
}

// Blocks of the own laboratory: the head, and a hit for each entry.
void CLauf::LaufeLaborbloecke() {
    const CAutoRSet<CTLBlock> pBlock;
    const CAutoRSet<CTLBlockEntry> pEntry;
    CBehHitLine & hit = m_accu.m_BehHit;
    for (int i = pBlock->GetAll(); i == 0; i = pBlock->Next()) {
        if (!ImZeitraum(pBlock->m_DATUM)) continue;
        pEntry->ClearKey();
        pEntry->m_PATNR = pBlock->m_PATNR;
        pEntry->m_PLANNR = pBlock->m_PLANNR;
        pEntry->m_LFDLBLOCK = pBlock->m_LFDLBLOCK;
        for (int j = pEntry->GetByK1(MATCH_ALLE); j == 0; j = pEntry->Next()) {
            hit.Clear();
            hit.MoveLBlock(&*pBlock);
            hit.MoveZEKasseLBlockEntry(*pEntry);
            m_accu.m_vBehHits.push_back(hit);
        }
    }
}

void CLauf::LaufeGewerbelabor() {
    const CAutoRSet<CTGLBloc> pBlock;
    const CAutoRSet<CTGLBlocEntry> pEntry;
    CBehHitLine & hit = m_accu.m_BehHit;
    for (int i = pBlock->GetAll(); i == 0; i = pBlock->Next()) {
        if (!ImZeitraum(pBlock->m_DATUM)) continue;
        m_accu.m_GlabHit.Clear();
        m_accu.m_GlabHit.MoveLabRech(*pBlock);
        m_accu.m_vGlabHits.push_back(m_accu.m_GlabHit);
        pEntry->ClearKey();
        pEntry->m_LABORKUNDE = pBlock->m_LABORKUNDE;
        pEntry->m_LFDGLBLOC = pBlock->m_LFDGLBLOC;
        for (int j = pEntry->GetByK1(MATCH_ALLE); j == 0; j = pEntry->Next()) {
            hit.Clear();
            hit.MoveGLBloc(&*pBlock);
            hit.MoveZEKasseGLBlocEntry(*pEntry);
            m_accu.m_vBehHits.push_back(hit);
        }
    }
}

void CLauf::LaufeSammelrechnungen() {
    const CAutoRSet<CTGLKuFakt> pFakt;
    for (int i = pFakt->GetAll(); i == 0; i = pFakt->Next()) {
        if (!ImZeitraum(pFakt->m_FAKTDATUM)) continue;
        m_accu.m_GlabFaktHit.Clear();
        m_accu.m_GlabFaktHit.MoveSammelLabRech(*pFakt);
        m_accu.m_vGlabFaktHits.push_back(m_accu.m_GlabFaktHit);
    }
}

void CLauf::LaufeGipsmodelle() {
    const CAutoRSet<CTGips> pGips;
    for (int i = pGips->GetAll(); i == 0; i = pGips->Next()) {
        if (!ImZeitraum(pGips->m_DATUM)) continue;
        m_accu.m_GipsHit.Clear();
        m_accu.m_GipsHit.MoveGips(&*pGips);
        const int iPat = m_accu.GetPat(pGips->m_PATNR, true);
        if (iPat >= 0) m_accu.m_GipsHit.MovePat(m_accu.m_vPat[static_cast<std::size_t>(iPat)]);
        m_accu.m_vGipsHits.push_back(m_accu.m_GipsHit);
    }
}

void CLauf::LaufeRechnungen() {
    const CAutoRSet<CTFakt> pFakt;
    for (int i = pFakt->GetAll(); i == 0; i = pFakt->Next()) {
        if (!ImZeitraum(pFakt->m_DATUM)) continue;
        m_accu.m_RechHit.Clear();
        m_accu.m_RechHit.MoveFakt(&*pFakt);
        const int iPat = m_accu.GetPat(pFakt->m_PATNR, true);
        if (iPat >= 0)
            m_accu.m_RechHit.MovePat(m_accu.m_vPat[static_cast<std::size_t>(iPat)], m_accu.GetChTelefon());
        m_accu.m_vRechHits.push_back(m_accu.m_RechHit);
    }
}

void CLauf::LaufeVerordnungen() {
    const CAutoRSet<CTRezept> pRezept;
    const CAutoRSet<CHMVRecord> pHmv;
    for (int i = pRezept->GetAll(); i == 0; i = pRezept->Next()) {
        if (!ImZeitraum(pRezept->m_DATUM)) continue;
        pHmv->m_PATNR = pRezept->m_PATNR;
        pHmv->m_REZEPTNR = pRezept->m_REZEPTNR;
        if (pHmv->GetByK1() != 0) continue;
        CVerordnungHitLine hit;
        hit.MoveVerordnung(*pRezept, *pHmv);
        m_accu.m_vVerordnungHits.push_back(hit);
    }
}

} // namespace orvostat
