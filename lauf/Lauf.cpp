#include "orvostatbs/lauf/Lauf.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Praxispruefung.h"
#include "orvostatbs/host/detail/Reihenfolge.h"

#include <algorithm>
#include <iterator>

namespace orvostat {

namespace {

// Rows between two looks at the progress box.
constexpr std::int64_t FORTSCHRITT_SCHRITT = 512;

bool Gleich(const CString & sGewaehlt, const CString & sWert) {
    return sGewaehlt.IsEmpty() || sGewaehlt == sWert;
}

bool Unlesbar(const CTBeh & beh) {
    return Mangel(EArt::Menge, beh.m_ANZAHL.Sicht()) || Mangel(EArt::Faktor, beh.m_FAKTOR.Sicht());
}

struct SName {
    EWeglassgrund eGrund;
    CString sName;
};
const SName NAMEN[] = {
    {EWeglassgrund::Zeitraum, "außerhalb des Zeitraums"_t},
    {EWeglassgrund::Patient, "Patient nicht gewählt"_t},
    {EWeglassgrund::Behandler, "Behandler nicht gewählt"_t},
    {EWeglassgrund::Gebuehrenart, "Gebührenart nicht gewählt"_t},
    {EWeglassgrund::Erfasser, "Erfasser nicht gewählt"_t},
    {EWeglassgrund::Status, "Abrechnungsstatus nicht gewählt"_t},
    {EWeglassgrund::Plan, "Plan nicht gewählt"_t},
    {EWeglassgrund::Abrechnungsart, "Abrechnungsart nicht gewählt"_t},
    {EWeglassgrund::Praxis, "Praxisinhaber nicht gewählt"_t},
    {EWeglassgrund::Versicherung, "Versichertenstatus nicht gewählt"_t},
    {EWeglassgrund::Kasse, "Kasse nicht gewählt"_t},
    {EWeglassgrund::Leistung, "Leistung nicht gewählt"_t},
    {EWeglassgrund::Punktwertart, "Leistungsart des Punktwerts nicht gewählt"_t},
    {EWeglassgrund::Abrechenbar, "Gebührenzeile nicht abrechenbar"_t},
    {EWeglassgrund::Technik, "Leistung der Art 7 nicht gewählt"_t},
    {EWeglassgrund::BehandlerUnbekannt, "Behandler unbekannt"_t},
    {EWeglassgrund::PraxisUnbekannt, "Praxisinhaber unbekannt"_t},
    {EWeglassgrund::OhnePlannummer, "ohne Plannummer"_t},
    {EWeglassgrund::PlanFehlt, "Plan fehlt"_t},
    {EWeglassgrund::Planstand, "Plan nicht abrechenbar"_t},
};
static_assert(std::size(NAMEN) == WEGLASSGRUENDE);

} // namespace

const CString & Weglassname(EWeglassgrund eGrund) {
    return std::ranges::find(NAMEN, eGrund, &SName::eGrund)->sName;
}

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
    const bool bNoetig = m_auftrag.bStammdatenNoetig;
    if (!m_accu.GetAllMd(true, false) && bNoetig) return 10;
    if (!m_accu.GetAllLeb(false, true) && bNoetig) return 11;
    if (m_auftrag.bErsatz) m_accu.ReadParPoolData(m_auftrag.iErsatzgruppe);
    const int iCode = m_accu.DataSumVorlauf(false);
    if (iCode == 0 || bNoetig) return iCode;
    m_accu.LeereTabellen();
    return 0;
}

ELauf CLauf::Laufe() {
    if (!Vorlauf()) return m_stand.eLauf;
    OrvoOpenProgressBox(0, 0, "Datensammlung"_t);
    if (LaufeBehandlungen() && m_auftrag.bNebenakten) LaufeNebenakten();
    OrvoCloseProgressBox();
    m_accu.DoSortLines();
    m_accu.m_lAnzHits = static_cast<std::int32_t>(m_stand.zahlen.iHits);
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
    if (!m_auftrag.fNach && m_accu.GetPatient().IsEmpty() && m_accu.GetAbDatum().IsEmpty() &&
        m_accu.GetBisDatum().IsEmpty())
        m_accu.m_vBehHits.reserve(static_cast<std::size_t>(iZeilen));
}

bool CLauf::LaufeBehandlungen() {
    CTBeh & beh = *m_accu.m_pRBeh;
    const CString sPatient = m_accu.GetPatient();
    ReserviereHits(Erwarte(beh));
    beh.SetKey(1);
    beh.ClearKey();
    beh.m_PATNR = sPatient;
    return Gehe(beh, beh.GetByK1(MATCH_ALLE),
                [&] {
                    if (MeldePatient(beh.m_PATNR)) NimmBehandlung(beh);
                }) &&
           (!m_stand.sGemeldet || Melde(ELaufstelle::Patient)) && Melde(ELaufstelle::Behandlungen);
}

void CLauf::NimmBehandlung(const CTBeh & beh) {
    ++m_stand.zahlen.iBehandlungen;
    if (m_auftrag.bNebenakten && !beh.m_LFDLBLOCK.IsEmpty())
        m_stand.setBlockleistungen.insert(Blockleistung(beh.m_PATNR, beh.m_LFDLBLOCK, beh.m_LSTNR));
    if (!ImZeitraum(beh.m_DATUM))
        LasseWeg(beh, EWeglassgrund::Zeitraum);
    else if (BaueHit(beh))
        Behalte(m_accu.m_BehHit);
}

void CLauf::Behalte(const CBehHitLine & hit) {
    ++m_stand.zahlen.iHits;
    m_accu.m_vBehHits.push_back(hit);
}

void CLauf::LasseWeg(const CTBeh & beh, EWeglassgrund eGrund) {
    m_stand.grund = eGrund;
    ++m_stand.zahlen.aiWeggelassen[static_cast<std::size_t>(eGrund)];
    if (m_auftrag.fWeggelassen) m_auftrag.fWeggelassen(beh, eGrund);
}

// What a treatment that is left out has put into the tables goes with it: errors, a plan that was found missing (the
// next of its services shall enter the error), a mixed point value. Only what the plan gate refuses keeps the gate's
// error and, since it refuses all of a plan, the value.
bool CLauf::BaueHit(const CTBeh & beh) {
    Verlange(m_accu.m_pRPat != nullptr, "BaueHit is called outside of a run: Vorlauf comes before.");
    const std::size_t iFehler = m_accu.m_vBehErrors.size();
    const std::size_t iPlaene = m_stand.vPlaene.size();
    const std::size_t iMischwerte = m_accu.m_vMischPwPlaene.size();
    m_stand.grund.reset();
    m_stand.iFehlerNachGatter = iFehler;
    Baue(beh);
    if (!m_stand.grund) {
        ++m_stand.zahlen.iTreffer;
        return true;
    }
    const bool bGatter = *m_stand.grund >= EWeglassgrund::OhnePlannummer;
    const std::size_t iBleiben = bGatter ? m_stand.iFehlerNachGatter : iFehler;
    if (m_accu.m_vBehErrors.size() > iBleiben) m_accu.m_vBehErrors.resize(iBleiben);
    if (!bGatter && m_stand.vPlaene.size() > iPlaene && m_stand.vPlaene.back().m_bFehlt)
        m_stand.vPlaene.pop_back();
    if (!bGatter && m_accu.m_vMischPwPlaene.size() > iMischwerte) m_accu.m_vMischPwPlaene.pop_back();
    LasseWeg(beh, *m_stand.grund);
    return false;
}

// The order in which a hit is built: each step reads what the steps before it have given, and each section of the
// selection is asked as soon as it can be. What the plan gate refuses is asked on, since a treatment outside of the
// selection is no defect.
//
//   step                     reads                                       gives
//   MoveBeh                  the treatment                               the entry
//   GetBill, MoveBill        kind, service, mark                         billing kind, whether the insurer pays, plan
//   plan gate                billing kind "z", "k", "p"; plan            finer periodontal kinds
//   TestMultiband            billing kind "k"                            "m" for multiband treatment
//   MoveMdId, Braitretru     whether the insurer pays, billing kind      the practice
//   MovePatient              the patient                                 his name
//   MoveVersicherung         patient, date                               insurance period and insurer
//   FiktiveLeistungen        reason letter                               a number of its own for such a service
//   GetGOData                service, kind, date, billing kind           points or rate, statistic kind, kind of value
//   GetLstErsatz             short code                                  the substitute
//   MoveLeb                  notation mark, kind                         the treater's deduction
//   GetPunkte                insurer group, value kind, date, plan, region   the point value
//   GetBetrag                all of the above                            the amount
//   NurDenKassenanteil       plan, amount                                the insurer's share
//   MoveProvision            commission group                            the commission
//   GetBefund                print image, subkind, entry                 the finding
void CLauf::Baue(const CTBeh & beh) {
    CBehHitLine & hit = m_accu.m_BehHit;
    if (!Passt(EWeglassgrund::Patient, NimmPatient(beh.m_PATNR))) return;
    const CLebStruct * const pLeb = Behandler(beh.m_BEHANDLERNR);
    if (!BehandlerPasst(beh.m_BEHANDLERNR, pLeb != nullptr)) return;

    hit.Clear();
    hit.MoveBeh(&beh);
    if (!EintragPasst(hit)) return;
    const CBill * const pBill = m_accu.GetBill(hit.PATNR, hit.PATBILL);
    if (pBill != nullptr) hit.MoveBill(*pBill);
    if (!RechnungPasst(hit)) return;
    int iPlan = -1;
    if (m_auftrag.bPlangatter) FragePlan(hit, iPlan);
    hit.TestMultiband();
    if (!AbrechnungsartPasst(hit)) return;
    if (pLeb != nullptr) hit.MoveMdId(pLeb->m_sMdKasse, pLeb->m_sMdPrivat);
    if (!m_accu.GetNoChangeMdId()) m_accu.Braitretru(0, -1);
    if (!PraxisPasst(hit.PRAXISNR)) return;
    MovePatient(hit);
    const bool bKasse = MoveVersicherung(hit);
    if (!KassePasst(hit)) return;
    hit.FiktiveLeistungen();
    m_accu.GetGOData(hit);
    if (m_auftrag.bErsatz) m_accu.GetLstErsatz(hit);
    if (!LeistungPasst(hit)) return;
    if (!m_stand.grund || m_auftrag.bWeggelasseneBewerten) Bewerte(hit, pLeb, iPlan);
    if (m_stand.grund) return;

    m_stand.zahlen.iUnlesbar += Unlesbar(beh) ? 1 : 0;
    m_stand.zahlen.iOhneBill += pBill == nullptr ? 1 : 0;
    m_stand.zahlen.iOhneKasse += bKasse ? 0 : 1;
    m_stand.zahlen.iOhnePatient += m_stand.iPat < 0 && !m_stand.bName ? 1 : 0;
}

void CLauf::Bewerte(CBehHitLine & hit, const CLebStruct * pLeb, int iPlan) {
    if (pLeb != nullptr) hit.MoveLeb(*pLeb);
    m_accu.GetPunkte(hit);
    if (m_auftrag.bBewertung) m_accu.GetBetrag(hit, nullptr);
    if (m_auftrag.bBewertung && m_auftrag.bKassenanteil)
        m_accu.NurDenKassenanteil(m_stand.vPlaene, hit, iPlan, m_accu.GetProzPrivatSachkosten());
    if (pLeb != nullptr) hit.MoveProvision(*pLeb);
    m_accu.GetBefund(hit);
}

// The plan gate. A refused plan that is met first has no position; it is the last one. The hit goes on without it.
void CLauf::FragePlan(CBehHitLine & hit, int & iPlan) {
    const bool bPasst =
        m_accu.OnlyForZEorKFOorPAROk(&m_rPlan, m_stand.vPlaene, hit, m_auftrag.bOhne22a, m_auftrag.bParMarken,
                                     m_auftrag.bParBeva, &m_rBehPlan, iPlan);
    m_stand.iFehlerNachGatter = m_accu.m_vBehErrors.size();
    if (bPasst) return;
    EWeglassgrund eGrund = EWeglassgrund::OhnePlannummer;
    if (!hit.PLANNR.IsEmpty()) {
        const CPlan & plan =
            iPlan < 0 ? m_stand.vPlaene.back() : m_stand.vPlaene[static_cast<std::size_t>(iPlan)];
        eGrund = plan.m_bFehlt ? EWeglassgrund::PlanFehlt : EWeglassgrund::Planstand;
    }
    iPlan = -1;
    (void)Merke(eGrund);
}

// Takes the patient; his sections are asked once. A patient who cannot be read has no name and passes no section that
// looks at him, but his treatments count.
bool CLauf::NimmPatient(const CString & sPatNr) {
    if (m_stand.sPatNr == sPatNr) return m_stand.bPatient;
    m_stand.sPatNr = sPatNr;
    if (!m_auftrag.bPatienten) return m_stand.bPatient = NimmNamen(sPatNr);
    m_stand.iPat = m_accu.GetPat(sPatNr, true);
    if (const CPat * const pPat = Patient()) return m_stand.bPatient = PatientPasst(*pPat);
    if (!m_accu.m_mapVDesc.contains(sPatNr)) m_accu.GetVDesc(sPatNr, ERSTER_TAG);
    CPat ohne;
    ohne.Clear();
    ohne.PATNR = sPatNr;
    return m_stand.bPatient = PatientPasst(ohne);
}

// Forgets the patient before, and reads the name alone.
bool CLauf::NimmNamen(const CString & sPatNr) {
    m_accu.ClearV();
    m_accu.m_mapBill.clear();
    m_accu.m_vPwPlaene.clear();
    m_accu.m_vMischPwPlaene.clear();
    m_accu.m_vBehErrors.clear();
    m_stand.vPlaene.clear();
    m_accu.GetVDesc(sPatNr, ERSTER_TAG);
    m_stand.bName = m_accu.ReadPat(sPatNr);
    CPat ohne;
    ohne.Clear();
    ohne.PATNR = sPatNr;
    return !m_auftrag.bSelektion || PatientPasst(ohne);
}

const CPat * CLauf::Patient() const {
    return m_stand.iPat < 0 ? nullptr : &m_accu.m_vPat[static_cast<std::size_t>(m_stand.iPat)];
}

void CLauf::MovePatient(CBehHitLine & hit) {
    if (const CPat * const pPat = Patient()) hit.MovePatName(pPat->PATNAME, pPat->PATVORNAME);
    if (m_stand.bName) hit.MovePatName(m_accu.m_pRPat->m_PATNAME, m_accu.m_pRPat->m_PATVORNAME);
}

bool CLauf::MoveVersicherung(CBehHitLine & hit) {
    const CVDesc * pVDesc = m_accu.FindVDescByDate(hit.PATNR, hit.DATUM);
    const int iKas = pVDesc == nullptr ? -1 : m_accu.FindKas(pVDesc->KASKUERZEL, hit.DATUM);
    if (pVDesc != nullptr) hit.MoveVDesc(*pVDesc);
    if (iKas >= 0) hit.MoveKas(m_accu.m_vKas.Lesend()[static_cast<std::size_t>(iKas)]);
    hit.ISPRIVATPATIENT = pVDesc == nullptr || pVDesc->IsPrivat();
    return iKas >= 0;
}

const CLebStruct * CLauf::Behandler(const CString & sLeb) const {
    const int iLeb = m_accu.FindLeb(sLeb);
    return iLeb < 0 ? nullptr : &m_accu.m_vLeb[static_cast<std::size_t>(iLeb)];
}

// ---- the selection

bool CLauf::Passt(EWeglassgrund eGrund, bool bPasst) {
    return bPasst || !m_auftrag.bSelektion || Merke(eGrund);
}

// Keeps the first reason, a section's rather than a defect; true if the hit is built on.
bool CLauf::Merke(EWeglassgrund eGrund) {
    if (!m_stand.grund || (IstMangel(*m_stand.grund) && !IstMangel(eGrund))) m_stand.grund = eGrund;
    return IstMangel(eGrund) || m_auftrag.bWeggelasseneBewerten;
}

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

// One who is known but not selected stands among all treaters; where some are selected, an unknown one is not.
bool CLauf::BehandlerPasst(const CString & sLeb, bool bGewaehlt) {
    if (bGewaehlt || !m_auftrag.bSelektion) return true;
    const bool bBekannt =
        !m_accu.GetLebs().empty() ||
        std::ranges::find(m_accu.m_vLebAlle, sLeb, &CLebStruct::m_sLeb) != m_accu.m_vLebAlle.end();
    return Passt(bBekannt ? EWeglassgrund::Behandler : EWeglassgrund::BehandlerUnbekannt, false);
}

// Without a selected owner any will do, but he must be one of the practice's.
bool CLauf::PraxisPasst(const CString & sPraxis) {
    return Passt(m_accu.GetMandant().IsEmpty() ? EWeglassgrund::PraxisUnbekannt : EWeglassgrund::Praxis,
                 m_accu.IsFuerMandant(sPraxis));
}

bool CLauf::EintragPasst(const CBehHitLine & hit) {
    return Passt(EWeglassgrund::Gebuehrenart, m_accu.GetGoArt() == 0 || m_accu.GetGoArt() == hit.GOART) &&
           Passt(EWeglassgrund::Erfasser, Gleich(m_accu.GetErfasser(), hit.ERFASSER));
}

bool CLauf::RechnungPasst(const CBehHitLine & hit) {
    return Passt(EWeglassgrund::Status, m_accu.IsLstStatusOK(hit)) &&
           Passt(EWeglassgrund::Plan, Gleich(m_accu.GetPlan(), hit.PLANNR));
}

bool CLauf::AbrechnungsartPasst(const CBehHitLine & hit) {
    return Passt(EWeglassgrund::Abrechnungsart,
                 m_accu.GetAbrArt().IsEmpty() || m_accu.GetAbrArt().Find(hit.ABRART) >= 0);
}

bool CLauf::KassePasst(const CBehHitLine & hit) {
    return Passt(EWeglassgrund::Versicherung, m_accu.MFR_Ok(hit.MFRDIG) && m_accu.RSA_Ok(hit.RSA)) &&
           Passt(EWeglassgrund::Kasse, Gleich(m_accu.GetKasKuerzel(), hit.KASKUERZEL) &&
                                           Gleich(m_accu.GetKasStat(), hit.KASSTATISTIKART));
}

bool CLauf::LeistungPasst(const CBehHitLine & hit) {
    return Passt(EWeglassgrund::Leistung, Gleich(m_accu.GetLst(), hit.LSTNR)) &&
           Passt(EWeglassgrund::Punktwertart, m_accu.PwLArtOk(hit.PWLART)) &&
           Passt(EWeglassgrund::Abrechenbar, m_accu.OnlyAbrechenbareOk(hit.m_cGoKz)) &&
           Passt(EWeglassgrund::Technik, m_accu.IsTecGoSubArtOK(hit));
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

bool CLauf::Melde(ELaufstelle eStelle) {
    if (!m_auftrag.fNach || m_auftrag.fNach(eStelle)) return true;
    m_stand.eLauf = ELauf::Gescheitert;
    return false;
}

// Before a treatment is taken: tells that the patient before is done.
bool CLauf::MeldePatient(const CString & sNaechster) {
    if (!m_auftrag.fNach || m_stand.sGemeldet == sNaechster) return true;
    const bool bWeiter = !m_stand.sGemeldet || Melde(ELaufstelle::Patient);
    m_stand.sGemeldet = sNaechster;
    return bWeiter;
}

} // namespace orvostat
