#include "Lauf.h"

#include "Konsole.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Oberflaeche.h"

#include <algorithm>

namespace orvostat {

namespace {

// Rows between two looks at the progress box.
constexpr std::int64_t FORTSCHRITT_SCHRITT = 512;

bool Gleich(const CString & sGewaehlt, const CString & sWert) {
    return sGewaehlt.IsEmpty() || sGewaehlt == sWert;
}

} // namespace

CLauf::CLauf(CStatAccu & accu, const SLaufauftrag & auftrag)
    : m_accu(accu), m_auftrag(auftrag), m_rPlan(dbDatabaseRO), m_rBehPlan(dbDatabaseRO) {}

// Empties what the accumulator keeps from run to run, for a run after one that could not read all of it.
void CLauf::Vergiss() {
    m_accu.m_vGO.clear();
    m_accu.m_mapBill.clear();
    for (const auto pTabelle : {&CStatAccu::m_vSpGoStat, &CStatAccu::m_vSpStatistik,
                                &CStatAccu::m_vSpMedStatistik, &CStatAccu::m_vSpKassenArt,
                                &CStatAccu::m_vSpTechLst, &CStatAccu::m_vSpKassenGrp, &CStatAccu::m_vSpHvm})
        (m_accu.*pTabelle).clear();
}

bool CLauf::Vorlauf() {
    Nachlauf();
    if (Lesefehler()) Vergiss();
    m_stand = SStand();
    m_stand.iFehlschlaege = Fehlschlaege();
    m_stand.sVon = Oder(m_accu.GetAbDatum(), ERSTER_TAG);
    m_stand.sBis = Oder(m_accu.GetBisDatum(), LETZTER_TAG);
    CBehHitLine::ClearMaps();
    const int iCode = LiesStammdaten();
    if (LaeuftNoch() && iCode == 0) return true;
    if (m_stand.eLauf == ELauf::Fertig) {
        m_stand.eLauf = ELauf::Gescheitert;
        m_accu.DisplayGlobalDataError(iCode);
    }
    Nachlauf();
    return false;
}

int CLauf::LiesStammdaten() {
    if (!m_accu.GetAllMd(true, false)) return 10;
    if (!m_accu.GetAllLeb(false, true)) return 11;
    if (m_auftrag.bErsatz) m_accu.ReadParPoolData(m_auftrag.iErsatzgruppe);
    return m_accu.DataSumVorlauf(false);
}

ELauf CLauf::Laufe() {
    if (!Vorlauf()) return m_stand.eLauf;
    OrvoOpenProgressBox(0, 0, "Datensammlung"_t);
    if (LaufeBehandlungen() && m_auftrag.bNebenakten) LaufeNebenakten();
    OrvoCloseProgressBox();
    m_accu.DoSortLines();
    m_accu.m_lAnzHits = static_cast<std::int32_t>(m_accu.m_vBehHits.size());
    return m_stand.eLauf;
}

// ---- treatments

// The rows of a table that is to be walked now.
std::int64_t CLauf::Erwarte(const CMxRSet & tabelle) {
    m_stand.iZeilen += std::max<std::int64_t>(dbDatabaseRO.Zeilenzahl(tabelle.Tabelle()), 0);
    return m_stand.iZeilen;
}

// A run over everything gets the room for its hits at once, since they are big and moving them costs.
void CLauf::ReserviereHits(std::int64_t iZeilen) {
    if (m_accu.GetPatient().IsEmpty() && m_accu.GetAbDatum().IsEmpty() && m_accu.GetBisDatum().IsEmpty())
        m_accu.m_vBehHits.reserve(static_cast<std::size_t>(iZeilen));
}

bool CLauf::LaufeBehandlungen() {
    CTBeh & beh = *m_accu.m_pRBeh;
    const CString sPatient = m_accu.GetPatient();
    ReserviereHits(Erwarte(beh));
    beh.SetKey(1);
    beh.ClearKey();
    beh.m_PATNR = sPatient;
    return Gehe(beh, beh.GetByK1(MATCH_ALLE), [&] {
        ++m_stand.zahlen.iBehandlungen;
        if (m_auftrag.bNebenakten && !beh.m_LFDLBLOCK.IsEmpty())
            m_stand.setBlockleistungen.insert(Blockleistung(beh.m_PATNR, beh.m_LFDLBLOCK, beh.m_LSTNR));
        if (ImZeitraum(beh.m_DATUM) && BaueHit(beh)) m_accu.m_vBehHits.push_back(m_accu.m_BehHit);
    });
}

// The order in which a hit is built: each step reads what the steps before it have given, and each section of the
// selection is asked as soon as it can be, so that a hit outside of it leaves no error and no mixed point value.
bool CLauf::BaueHit(const CTBeh & beh) {
    CBehHitLine & hit = m_accu.m_BehHit;
    if (!NimmPatient(beh.m_PATNR)) return false;
    const CLebStruct * const pLeb = Behandler(beh.m_BEHANDLERNR);
    if (pLeb == nullptr) return false;

    hit.Clear();
    hit.MoveBeh(&beh);
    if (!EintragPasst(hit)) return false;
    const CBill * const pBill = m_accu.GetBill(hit.PATNR, hit.PATBILL);
    if (pBill != nullptr) hit.MoveBill(*pBill);
    if (!RechnungPasst(hit)) return false;
    int iPlan = -1;
    if (m_auftrag.bPlangatter &&
        !m_accu.OnlyForZEorKFOorPAROk(&m_rPlan, m_stand.vPlaene, hit, m_auftrag.bOhne22a,
                                      m_auftrag.bParMarken, m_auftrag.bParBeva, &m_rBehPlan, iPlan))
        return false;
    hit.TestMultiband();
    if (!AbrechnungsartPasst(hit)) return false;
    hit.MoveMdId(pLeb->m_sMdKasse, pLeb->m_sMdPrivat);
    if (!m_accu.GetNoChangeMdId()) m_accu.Braitretru(0, -1);
    if (!m_accu.IsFuerMandant(hit.PRAXISNR)) return false;
    MovePatient(hit);
    const bool bKasse = MoveVersicherung(hit);
    if (!KassePasst(hit)) return false;
    hit.FiktiveLeistungen();
    m_accu.GetGOData(hit);
    if (m_auftrag.bErsatz) m_accu.GetLstErsatz(hit);
    if (!LeistungPasst(hit)) return false;
    hit.MoveLeb(*pLeb);
    m_accu.GetPunkte(hit);
    m_accu.GetBetrag(hit, nullptr);
    if (m_auftrag.bKassenanteil)
        m_accu.NurDenKassenanteil(m_stand.vPlaene, hit, iPlan, m_accu.GetProzPrivatSachkosten());
    hit.MoveProvision(*pLeb);
    m_accu.GetBefund(hit);

    m_stand.zahlen.iOhneBill += pBill == nullptr ? 1 : 0;
    m_stand.zahlen.iOhneKasse += bKasse ? 0 : 1;
    m_stand.zahlen.iOhnePatient += m_stand.iPat < 0 ? 1 : 0;
    return true;
}

// Takes the patient; his sections are asked once. A patient who cannot be read has no name and passes no section that
// looks at him, but his treatments count.
bool CLauf::NimmPatient(const CString & sPatNr) {
    if (m_stand.sPatNr == sPatNr) return m_stand.bPatient;
    m_stand.sPatNr = sPatNr;
    m_stand.iPat = m_accu.GetPat(sPatNr, true);
    if (const CPat * const pPat = Patient()) return m_stand.bPatient = PatientPasst(*pPat);
    if (!m_accu.m_mapVDesc.contains(sPatNr)) m_accu.GetVDesc(sPatNr, ERSTER_TAG);
    CPat ohne;
    ohne.Clear();
    ohne.PATNR = sPatNr;
    return m_stand.bPatient = PatientPasst(ohne);
}

const CPat * CLauf::Patient() const {
    return m_stand.iPat < 0 ? nullptr : &m_accu.m_vPat[static_cast<std::size_t>(m_stand.iPat)];
}

void CLauf::MovePatient(CBehHitLine & hit) {
    if (const CPat * const pPat = Patient()) hit.MovePatName(pPat->PATNAME, pPat->PATVORNAME);
}

bool CLauf::MoveVersicherung(CBehHitLine & hit) {
    const CVDesc * pVDesc = m_accu.FindVDescByDate(hit.PATNR, hit.DATUM);
    const int iKas = pVDesc == nullptr ? -1 : m_accu.FindKas(pVDesc->KASKUERZEL, hit.DATUM);
    if (pVDesc != nullptr) hit.MoveVDesc(*pVDesc);
    if (iKas >= 0) hit.MoveKas(m_accu.m_vKas.Lesend()[static_cast<std::size_t>(iKas)]);
    hit.ISPRIVATPATIENT = pVDesc == nullptr || pVDesc->IsPrivat();
    return iKas >= 0;
}

const CLebStruct * CLauf::Behandler(const CString & sLeb) {
    const int iLeb = m_accu.FindLeb(sLeb);
    if (iLeb >= 0) return &m_accu.m_vLeb[static_cast<std::size_t>(iLeb)];
    ++m_stand.zahlen.iOhneBehandler;
    return nullptr;
}

// ---- the selection

// The patient's sections: texts first, then those that read rows.
bool CLauf::PatientPasst(const CPat & pat) {
    CTBeh & beh = m_rBehPlan;
    return m_accu.PatSelektOk(pat.SELEKTION) && m_accu.PatAnamneseOk(pat.RISIKOANAMNESE) &&
           m_accu.PatAnredeOk(pat.PATANREDE) && m_accu.PatPlzOrtOk(pat.PATPLZ, pat.PATORT) &&
           m_accu.PatStrasseOk(pat.PATSTRASSE) && m_accu.LastBehDatumOk(pat.LASTBEHDATUM) &&
           m_accu.UeberwArztOk(pat.UEBERWARZT) && m_accu.HausArztOk(pat.HAUSARZT) &&
           m_accu.PatGebDatOk(pat.PATGEBDATUM) && m_accu.PatAlterOk(pat.PATGEBDATUM) && RecallPasst(pat) &&
           m_accu.PatLastLstOK(&beh, pat.PATNR, CString()) &&
           m_accu.PatOhneLstOK(&beh, pat.PATNR, CString()) && m_accu.KvkVorgabenOk(&beh, pat.PATNR);
}

// Asked of the patient's row: where he had a recall, the record holds the last one's weeks in the place of the
// interval digits.
bool CLauf::RecallPasst(const CPat & pat) {
    if (!m_accu.GetChRecall()) return true;
    return m_accu.ReadPat(pat.PATNR) ? m_accu.PatRecallOk(m_accu.m_pRPat) : m_accu.PatRecallOk(pat);
}

bool CLauf::ImZeitraum(const CString & sDatum) const {
    return sDatum >= m_stand.sVon && sDatum <= m_stand.sBis;
}

bool CLauf::EintragPasst(const CBehHitLine & hit) {
    return (m_accu.GetGoArt() == 0 || m_accu.GetGoArt() == hit.GOART) &&
           Gleich(m_accu.GetErfasser(), hit.ERFASSER);
}

bool CLauf::RechnungPasst(const CBehHitLine & hit) {
    return m_accu.IsLstStatusOK(hit) && Gleich(m_accu.GetPlan(), hit.PLANNR);
}

bool CLauf::AbrechnungsartPasst(const CBehHitLine & hit) {
    return m_accu.GetAbrArt().IsEmpty() || m_accu.GetAbrArt().Find(hit.ABRART) >= 0;
}

bool CLauf::KassePasst(const CBehHitLine & hit) {
    return m_accu.MFR_Ok(hit.MFRDIG) && m_accu.RSA_Ok(hit.RSA) &&
           Gleich(m_accu.GetKasKuerzel(), hit.KASKUERZEL) && Gleich(m_accu.GetKasStat(), hit.KASSTATISTIKART);
}

bool CLauf::LeistungPasst(const CBehHitLine & hit) {
    return Gleich(m_accu.GetLst(), hit.LSTNR) && m_accu.PwLArtOk(hit.PWLART) &&
           m_accu.OnlyAbrechenbareOk(hit.m_cGoKz) && m_accu.IsTecGoSubArtOK(hit);
}

// ---- progress

// A read that has failed ends the run, whatever else would: the sums already miss something.
bool CLauf::LaeuftNoch() {
    if (Lesefehler()) m_stand.eLauf = ELauf::Unlesbar;
    return m_stand.eLauf == ELauf::Fertig;
}

// Before each row. Moves the progress box now and then; false when the run ends, also because the user wants to stop
// and says so again.
bool CLauf::Weiter() {
    if (!LaeuftNoch()) return false;
    if (++m_stand.iZeile % FORTSCHRITT_SCHRITT != 0) return true;
    if (OrvoUpdateProgressBox2(static_cast<long>(m_stand.iZeile), static_cast<long>(m_stand.iZeilen)))
        return true;
    if (!FrageAbbruch()) return true;
    m_stand.eLauf = ELauf::Abgebrochen;
    return false;
}

} // namespace orvostat
