// The valuation of a hit: where each point, point value and amount comes from.
//
// German dental billing knows two worlds. In the private schedules a service has a simple rate, and the amount is the
// rate times the treater's factor, rounded once after the factor (GOZ section 5). In the insurers' schedules a service
// has points, and a point value in euro is agreed for each insurer group, kind of service, date and region; the amount
// is points times value. Deductions for the region, for a treater and for a plan's point value come on top.
#include "orvostatbs/accu/Bewertungsspur.h"
#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"
#include "orvostatbs/host/detail/Reihenfolge.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orvostat {

namespace {

// The denominators of quantities, points and percentages, and of factors and deductions.
constexpr int HUNDERTSTEL = 100;
constexpr int ZEHNTAUSENDSTEL = 10000;
constexpr int LQ_NEUTRAL = 10000;
// A point of the dentists' private schedule is 5.62421 cent (GOZ section 5). Its fee rows hold the number of points
// as printed, and PUNKTE counts hundredths: 100 printed points are PUNKTE 100 and 5.62421 euro.
constexpr CDBetrag EURO_JE_PUNKT = CDBetrag::AusEinheiten(562'421'000, 'e');

// Print images of the group services that are billed per head, and of the examinations that have a finding.
constexpr CString GRUPPENBILDER[] = {"7810", "7811", "7820", "7821", "7830",
                                     "7831", "7840", "7841", "7928", "7929"};
constexpr CString BEFUNDBILDER[] = {"01", "01k", "001", "0010"};
// States of a plan that freeze its point value.
constexpr CString FESTE_PLANSTATUS[] = {"0", "4", "7"};

constexpr CBuchstaben OhneRegionalabschlag{"yvwz"};
constexpr CBuchstaben BesondereKassenart{"ABC"};

template <std::size_t N> bool In(const CString & s, const CString (&asTexte)[N]) {
    return std::find(std::begin(asTexte), std::end(asTexte), s) != std::end(asTexte);
}

// The number of heads behind "PAT/" in a text, in any case of letters; 0 where there is none.
int Koepfe(const CString & sText) {
    constexpr std::string_view MARKE = "PAT/";
    const CSicht sicht(sText);
    const std::string_view s = sicht;
    const auto it = std::search(s.begin(), s.end(), MARKE.begin(), MARKE.end(),
                                [](char c, char cMarke) { return Gross(c) == cMarke; });
    return it == s.end() ? 0 : Zahl(sText.Mid(static_cast<int>(it - s.begin() + std::ssize(MARKE))));
}

// The percentage of a distance field "K50"; 0 where there is none.
int Entfernungsprozent(const CString & sEntfernung) {
    const char c = sEntfernung.Erstes();
    return c == 'K' || c == 'k' ? Zahl(sEntfernung.Mid(1)) : 0;
}

// Brings an amount to a currency, unless that is none (0); true if it was another one before.
bool NachWaehrung(CDBetrag & betrag, char cWaehrung) {
    if (cWaehrung == 0 || betrag.IsEmpty() || betrag.GetWaehrung() == cWaehrung) return false;
    betrag.ToW(cWaehrung);
    return true;
}

// The fields of a step as SBewertungsschritt has them, by reference: nothing is copied unless somebody listens.
const CString OHNE_TEXT;
constexpr CDBetrag OHNE_BETRAG;
struct SAngaben {
    const CString & sText = OHNE_TEXT;
    const CString & sText2 = OHNE_TEXT;
    const CString & sText3 = OHNE_TEXT;
    const CString & sText4 = OHNE_TEXT;
    char cArt = 0;
    char cUnterart = 0;
    int iZahl = 0;
    int iZahl2 = 0;
    int iZahl3 = 0;
    const CWBetragBasis & betrag = OHNE_BETRAG;
    const CWBetragBasis & betrag2 = OHNE_BETRAG;
};

// Notes a step where there is a spur. Inlined, so that nothing of the fields is formed where there is none.
[[gnu::always_inline]] inline void Notiere(CBewertungsspur * pSpur, EBewertung eSchritt, const SAngaben & a) {
    if (pSpur == nullptr) return;
    pSpur->Notiere({eSchritt, a.sText, a.sText2, a.sText3, a.sText4, a.cArt, a.cUnterart, a.iZahl, a.iZahl2,
                    a.iZahl3, a.betrag, a.betrag2});
}

// The spur for points and point values: null where the hit's amount does not come from them.
CBewertungsspur * Punktspur(CBewertungsspur * pSpur, const CBehHitLine & hit) {
    return pSpur && IstPunktArt(hit.GOART) && hit.ABRMERKMAL != '=' ? pSpur : nullptr;
}

} // namespace

// ---- fee row

bool CStatAccu::GetGOData(CBehHitLine & hit) {
    if (hit.LSTNR.IsEmpty()) return true;
    const int iPos = FindGO(hit.LSTNR, hit.GOART);
    if (iPos < 0) {
        AddError(hit, FEHLER_GEBUEHR);
        Notiere(m_pSpur, EBewertung::KeineZeile, {.sText = hit.LSTNR, .cArt = hit.GOART});
        return true;
    }
    const CGOStruct & go = m_vGO.Lesend()[static_cast<std::size_t>(iPos)];
    hit.MoveGO(go);
    hit.m_bOhnePunktwert = IstPunktArt(hit.GOART);
    Notiere(m_pSpur, EBewertung::Gebuehrenzeile,
            {.sText = go.m_sLst, .sText2 = go.m_sKuerzel, .cArt = go.m_cGoArt, .cUnterart = go.m_cGoSubArt});
    return true;
}

CString CStatAccu::GetStdFaktor(const CBehHitLine & hit) {
    const int iPos = hit.LSTNR.IsEmpty() ? -1 : FindGO(hit.LSTNR, hit.GOART);
    return iPos < 0 ? CString() : m_vGO.Lesend()[static_cast<std::size_t>(iPos)].m_sStdFaktor;
}

bool CStatAccu::GetLstErsatz(CBehHitLine & hit) {
    if (hit.LSTKUERZEL.IsEmpty()) return false;
    const CString sErsatz = FindInLstErsatz(hit.LSTKUERZEL);
    if (sErsatz.IsEmpty()) return false;
    const int iPos = FindGOKuerzel(sErsatz, hit.GOART);
    if (iPos < 0) return true;
    const CGOStruct & go = m_vGO.Lesend()[static_cast<std::size_t>(iPos)];
    Notiere(m_pSpur, EBewertung::Ersatzleistung,
            {.sText = go.m_sLst, .sText2 = hit.LSTKUERZEL, .cArt = go.m_cGoArt, .cUnterart = go.m_cGoSubArt});
    hit.MoveGO(go);
    return true;
}

CString CStatAccu::FindInLstErsatz(const CString & sKuerzel) {
    for (const auto & [sAlt, sNeu] : m_vLstErsatz)
        if (sAlt.CompareNoCase(sKuerzel) == 0 && !sNeu.IsEmpty()) return sNeu;
    return {};
}

// ---- point value

bool CStatAccu::GetPunkte(CBehHitLine & hit) {
    hit.m_bOhnePunktwert = false;
    if (hit.LSTNR.IsEmpty()) return true;
    if (hit.GOART == 'b' && hit.LSTNR == "1" && m_pFachbereiche != nullptr) PunkteOrdination(hit);

    bool bKeinPw = false;
    bool bNeuerParPlan = false;
    CString sPlanDatum;
    if (!hit.PLANNR.IsEmpty()) sPlanDatum = GetPwFromPlanDatum(hit, bNeuerParPlan);
    const bool bPunktArt = IstPunktArt(hit.GOART);
    if (hit.PUNKTWERT.IsZero()) {
        if (bPunktArt)
            bKeinPw = !PunktwertAusTafel(hit, sPlanDatum);
        else
            FragePwGruppe(hit.KASSENPWGRP);
    }
    if (!bNeuerParPlan && IsMischPwFaehig(hit)) PunkteAusMischwert(hit);

    if (bPunktArt && hit.ABRMERKMAL != '=' && hit.GOSTATISTIKART != 'n' && hit.PWLART != '0' &&
        (bKeinPw || hit.PUNKTWERT.IsZero()))
        AddError(hit, FEHLER_PUNKTWERT);
    return true;
}

void CStatAccu::PunkteOrdination(CBehHitLine & hit) {
    using FOrdination = int(SFachbereiche *, CTVDesc *);
    const CAutoRSet<CTVDesc> pVDesc;
    pVDesc->m_KSART = hit.m_cSonderKsArt == 0 ? CString() : CString(hit.m_cSonderKsArt);
    pVDesc->m_MFRDIG = hit.MFRDIG;
    auto * pOrdination = LadeFunktionAls<FOrdination>("kelabr", "PunkteOrdination"_t);
    hit.PUNKTE = pOrdination == nullptr ? 0 : pOrdination(m_pFachbereiche, &*pVDesc);
    Notiere(Punktspur(m_pSpur, hit), EBewertung::Ordination, {.iZahl = hit.PUNKTE});
}

// What FindPw leaves in the table for a hit that takes no value from it: the group, without walking it. The hits of an
// insurer follow each other, so the last group is not asked for again.
void CStatAccu::FragePwGruppe(const CString & sGrp) {
    if (sGrp.IsEmpty() || (sGrp == m_sPwGruppe && m_mapPw.size() == m_iPwGruppen)) return;
    m_sPwGruppe = sGrp;
    m_mapPw.try_emplace(CString(sGrp).MakeLower());
    m_iPwGruppen = m_mapPw.size();
}

// The table's value on the plan's date, on the service's own where that is empty.
bool CStatAccu::PunktwertAusTafel(CBehHitLine & hit, const CString & sPlanDatum) {
    const CString & sDatum = Oder(sPlanDatum, hit.DATUM);
    const CString & sPlan = sPlanDatum.IsEmpty() ? OHNE_TEXT : hit.PLANNR; // whose date it is
    const CPw * pPw = FindPw(hit.KASSENPWGRP, hit.PWLART, sDatum);
    if (pPw == nullptr) {
        Notiere(Punktspur(m_pSpur, hit), EBewertung::KeinPunktwert,
                {.sText = hit.KASSENPWGRP,
                 .sText2 = sDatum,
                 .sText3 = hit.KASKUERZEL,
                 .sText4 = sPlan,
                 .cArt = hit.PWLART});
        return false;
    }
    hit.MovePw(*pPw);
    Notiere(Punktspur(m_pSpur, hit), EBewertung::PunktwertTafel,
            {.sText = hit.KASSENPWGRP,
             .sText2 = sDatum,
             .sText3 = pPw->m_sPwAb,
             .sText4 = sPlan,
             .cArt = hit.PWLART,
             .cUnterart = hit.WSO_ERG.Erstes(),
             .betrag = hit.PUNKTWERT});
    return true;
}

namespace {

// The hit's plan as it is read once per run. One that is missing, orthodontic or not yet fixed freezes nothing, and
// is remembered as such.
CPlan LiesPwPlan(CStatAccu & accu, const CBehHitLine & hit) {
    CPlan plan;
    const CAutoRSet<CTPlan> pPlan;
    pPlan->m_PATNR = hit.PATNR;
    pPlan->m_PLANNR = hit.PLANNR;
    if (pPlan->GetByK1() == 0 && !accu.IsKFOPlan(&*pPlan) && In(pPlan->m_PLANSTATUS, FESTE_PLANSTATUS))
        plan.MovePlan(&*pPlan, nullptr);
    else
        plan.MovePlanNotOk(hit);
    return plan;
}

} // namespace

CString CStatAccu::GetPwFromPlanDatum(CBehHitLine & hit, bool & bNeuerParPlan) {
    int iPlan = FindPlan(m_vPwPlaene, hit);
    if (iPlan < 0) {
        iPlan = static_cast<int>(m_vPwPlaene.size());
        m_vPwPlaene.push_back(LiesPwPlan(*this, hit));
    }
    const CPlan & plan = m_vPwPlaene[static_cast<std::size_t>(iPlan)];
    bNeuerParPlan = plan.IsNewPARPlan();
    CBewertungsspur * const pSpur = Punktspur(m_pSpur, hit);
    if (bNeuerParPlan) {
        Notiere(pSpur, EBewertung::NeuerParPlan, {.sText = plan.PLANNR, .sText2 = plan.m_sPlanDatum});
        return {};
    }
    hit.PUNKTWERT = plan.m_PlanPw;
    if (!plan.m_PlanPw.IsZero())
        Notiere(pSpur, EBewertung::PunktwertPlan,
                {.sText = plan.PLANNR, .sText2 = plan.m_sPlanDatum, .betrag = plan.m_PlanPw});
    return plan.m_sPlanDatum;
}

bool CStatAccu::IsMischPwFaehig(CBehHitLine & hit) {
    return IstKassenArt(hit.GOART) && !IstKGSachLeistung(hit.GOART, hit.GOSUBART) && !hit.PLANNR.IsEmpty() &&
           (hit.ABRART == 'z' || IstParAbrArt(hit.ABRART));
}

// The first hit of a plan that carries a mixed value in its factor sets it for all later hits of the plan.
void CStatAccu::PunkteAusMischwert(CBehHitLine & hit) {
    const int iPlan = FindPlan(m_vMischPwPlaene, hit);
    if (iPlan < 0) {
        const CDPw pw(hit.FAKTOR);
        if (pw.IsZero()) return;
        hit.PUNKTWERT = pw;
        CPlan plan;
        plan.MovePlanForMischPw(hit.PATNR, hit.PLANNR, CString(), hit.PUNKTWERT);
        m_vMischPwPlaene.push_back(std::move(plan));
    } else {
        hit.PUNKTWERT = m_vMischPwPlaene[static_cast<std::size_t>(iPlan)].m_MischPw;
    }
    hit.FAKTOR.Empty();
    Notiere(Punktspur(m_pSpur, hit), iPlan < 0 ? EBewertung::MischwertFaktor : EBewertung::Mischwert,
            {.sText = hit.PLANNR, .betrag = hit.PUNKTWERT});
}

// ---- amount

void CStatAccu::GetBetrag(CBehHitLine & hit, CDBetrag * pAbschlag) {
    Verlange(!hit.m_bOhnePunktwert,
             "GetBetrag is called between GetGOData and GetPunkte: the hit has no point value yet.");
    if (hit.ABRMERKMAL == '=')
        BetragGespeichert(hit);
    else if (IstPrivatArt(hit.GOART))
        BetragPrivat(hit, pAbschlag);
    else if (IstPunktArt(hit.GOART))
        BetragPunkte(hit);
    else // laboratory: the entered amount is the amount
        Notiere(m_pSpur, EBewertung::Eingetragen, {.cArt = hit.GOART, .betrag = hit.BETRAG});
}

void CStatAccu::BetragGespeichert(CBehHitLine & hit) {
    Notiere(m_pSpur, EBewertung::Gespeichert, {.betrag = hit.BETRAG});
    if (hit.GOART == 'g' && In(hit.DRUCKBILD, GRUPPENBILDER)) {
        const int iKoepfe = Koepfe(hit.TEXT);
        if (iKoepfe > 1) {
            hit.BETRAG /= iKoepfe;
            Notiere(m_pSpur, EBewertung::Gruppenleistung, {.iZahl = iKoepfe, .betrag = hit.BETRAG});
        }
    }
    hit.ZUSCHLAG.Empty();
}

namespace {

// Special insurers of type "V" have a simple rate of their own.
bool ZweiterSatz(const CBehHitLine & hit) { return hit.m_cSonderKsArt == 'V'; }
// The mark of that rate in a step.
char Satzart(const CBehHitLine & hit) { return ZweiterSatz(hit) ? 'V' : '\0'; }

// The amount of one service out of its points.
void EinzelbetragAusPunkten(CBehHitLine & hit, int iFaktor, CBewertungsspur * pSpur) {
    hit.BETRAG = EURO_JE_PUNKT;
    hit.BETRAG.MalBruch(std::int64_t{hit.PUNKTE} * iFaktor, HUNDERTSTEL * ZEHNTAUSENDSTEL).Round();
    Notiere(pSpur, EBewertung::PunkteQ, {.iZahl = hit.PUNKTE, .iZahl2 = iFaktor, .betrag = hit.BETRAG});
}

// The amount of one service out of its simple rate; the physicians' rows of the dentists' schedule are rounded down.
void EinzelbetragAusSatz(CBehHitLine & hit, const CDBetrag & satz, int iFaktor, CBewertungsspur * pSpur) {
    const bool bAbrunden = hit.GOART == 'p' && hit.GOSUBART == '1';
    hit.BETRAG = satz;
    hit.BETRAG.MalBruch(iFaktor, ZEHNTAUSENDSTEL);
    if (bAbrunden)
        hit.BETRAG.RoundDown();
    else
        hit.BETRAG.Round();
    Notiere(pSpur, bAbrunden ? EBewertung::EinfachsatzAb : EBewertung::Einfachsatz,
            {.cArt = Satzart(hit), .iZahl2 = iFaktor, .betrag = hit.BETRAG, .betrag2 = satz});
}

// The amount of one private service, rounded once, after the factor. False, and zero, where factor, rate or points
// are 0.
bool EinzelbetragPrivat(CBehHitLine & hit, CBewertungsspur * pSpur) {
    const int iFaktor = Zahl(hit.FAKTOR);
    const bool bPunkte = hit.GOART == 'q' && hit.GOSUBART == '1';
    const CDBetrag & satz = ZweiterSatz(hit) ? hit.m_EinfachsatzV : hit.EINFACHSATZ;
    const bool bOhneSatz = bPunkte ? hit.PUNKTE == 0 : satz.IsZero();
    if (iFaktor == 0 || bOhneSatz) {
        hit.BETRAG.Zero();
        if (iFaktor == 0)
            Notiere(pSpur, EBewertung::OhneFaktor, {.betrag = hit.BETRAG});
        else
            Notiere(pSpur, EBewertung::OhneSatz,
                    {.cArt = bPunkte ? '\0' : Satzart(hit), .betrag = hit.BETRAG});
        return false;
    }
    if (bPunkte)
        EinzelbetragAusPunkten(hit, iFaktor, pSpur);
    else
        EinzelbetragAusSatz(hit, satz, iFaktor, pSpur);
    return true;
}

} // namespace

void CStatAccu::BetragPrivat(CBehHitLine & hit, CDBetrag * pAbschlag) {
    const char cWaehrung = hit.BETRAG.GetWaehrung();
    if (!EinzelbetragPrivat(hit, m_pSpur)) return;
    hit.BETRAG.MalBruch(hit.ANZAHL, HUNDERTSTEL);
    Notiere(m_pSpur, EBewertung::Anzahl, {.iZahl = hit.ANZAHL, .betrag = hit.BETRAG});

    CDBetrag abschlag;
    AbzglAbschlagOst(hit, abschlag);
    if (NachWaehrung(hit.BETRAG, cWaehrung))
        Notiere(m_pSpur, EBewertung::Waehrung, {.cArt = cWaehrung, .betrag = hit.BETRAG});
    NachWaehrung(abschlag, cWaehrung);
    if (pAbschlag != nullptr) *pAbschlag = abschlag;

    if (hit.m_iLebAbschlag == 0) return;
    hit.BETRAG.MalBruch(std::int64_t{ZEHNTAUSENDSTEL} - hit.m_iLebAbschlag, ZEHNTAUSENDSTEL);
    Notiere(m_pSpur, EBewertung::Behandlerabschlag, {.iZahl = hit.m_iLebAbschlag, .betrag = hit.BETRAG});
}

void CStatAccu::AbzglAbschlagOst(CBehHitLine & hit, CDBetrag & abschlag) {
    abschlag.Empty();
    if (m_iLQPunktwert == LQ_NEUTRAL || hit.ABRMERKMAL == '<' || !IstGozArt(hit.GOART) ||
        IstPrivatSachLeistung(hit.GOART, hit.GOSUBART) || OhneRegionalabschlag(hit.GOSUBART))
        return;
    abschlag = hit.BETRAG;
    hit.BETRAG.MalBruch(m_iLQPunktwert, ZEHNTAUSENDSTEL);
    abschlag = abschlag - hit.BETRAG;
    Notiere(m_pSpur, EBewertung::Regionalabschlag,
            {.iZahl = m_iLQPunktwert, .betrag = hit.BETRAG, .betrag2 = abschlag});
}

// The points of the kinds "e", "f" and "h" depend on insurer and region; the first that is not 0 counts.
void CStatAccu::WaehlePunkte(CBehHitLine & hit) {
    const bool bBesonders = BesondereKassenart(hit.m_cSonderKsArt);
    std::int32_t iPunkte = 0;
    if (hit.m_cKasKz == '2') {
        if (bBesonders) iPunkte = hit.m_iPunkte4;
        if (iPunkte == 0) iPunkte = hit.m_iPunkte3;
    }
    if (iPunkte == 0 && bBesonders) iPunkte = hit.m_iPunkte2;
    if (iPunkte == 0) return;
    hit.PUNKTE = iPunkte;
    Notiere(m_pSpur, EBewertung::AnderePunkte, {.iZahl = iPunkte});
}

void CStatAccu::BetragPunkte(CBehHitLine & hit) {
    if (IstAlternativArt(hit.GOART)) WaehlePunkte(hit);
    const int iProzent = Entfernungsprozent(hit.ENTFERNUNG);
    if (iProzent > 0 && hit.PUNKTE == 0) {
        hit.BETRAG.MalBruch(std::int64_t{iProzent} * hit.ANZAHL, HUNDERTSTEL * HUNDERTSTEL);
        Notiere(m_pSpur, EBewertung::EntfernungBetrag, {.iZahl = iProzent, .betrag = hit.BETRAG});
        return;
    }
    if (iProzent > 0) {
        const int iVorher = hit.PUNKTE;
        hit.PUNKTE = MulDiv(iVorher, iProzent, 100);
        Notiere(m_pSpur, EBewertung::EntfernungPunkte,
                {.iZahl = iProzent, .iZahl2 = hit.PUNKTE, .iZahl3 = iVorher});
    }
    // The product is a 32-bit one, and wraps as such.
    const auto iProdukt = static_cast<std::int32_t>(static_cast<std::uint32_t>(hit.PUNKTE) *
                                                    static_cast<std::uint32_t>(hit.ANZAHL));
    hit.BETRAG = hit.PUNKTWERT;
    hit.BETRAG.MalBruch(iProdukt, HUNDERTSTEL * HUNDERTSTEL);
    Notiere(m_pSpur, EBewertung::PunkteMalWert,
            {.iZahl = hit.PUNKTE, .iZahl2 = hit.ANZAHL, .betrag = hit.BETRAG, .betrag2 = hit.PUNKTWERT});
}

CString CStatAccu::GetLQPunktwert() {
    const CString sOhne = "10000";
    const CAutoRSet<CTPraxis> pPraxis;
    pPraxis->SetKey(1);
    if (pPraxis->GetAll() != 0) return sOhne;
    m_sKzvNr = pPraxis->m_KZVNR;
    const CAutoRSet<CTKzv> pKzv;
    pKzv->m_KZVNR = m_sKzvNr;
    pKzv->SetKey(1);
    return pKzv->GetByK1() == 0 && Zahl(pKzv->m_LQ) != 0 ? pKzv->m_LQ : sOhne;
}

void CStatAccu::NurDenKassenanteil(std::vector<CPlan> & vPlaene, CBehHitLine & hit, int iPlan, int iProzent) {
    const bool bZE = hit.ABRART == 'z';
    if ((!bZE && hit.ABRART != 'k') || (bZE && hit.PLANNR.IsEmpty())) return;
    const bool bMaterial = hit.GOSTATISTIKART == 'f' || IstSachLeistung(hit.GOART, hit.GOSUBART);
    if (iPlan == -1) {
        if (bZE || !bMaterial) return;
    } else {
        if (iPlan < 0 || static_cast<std::size_t>(iPlan) >= vPlaene.size() || (!bZE && !bMaterial)) return;
        iProzent = vPlaene[static_cast<std::size_t>(iPlan)].m_iKasProzent;
    }
    hit.BETRAG.MalBruch(iProzent, HUNDERTSTEL);
    Notiere(m_pSpur, EBewertung::Kassenanteil, {.iZahl = iProzent, .betrag = hit.BETRAG});
}

// ---- finding, names

bool CStatAccu::GetBefund(CBehHitLine & hit) {
    if (!In(hit.DRUCKBILD, BEFUNDBILDER) && hit.GOSUBART != 'h') return false;
    if (!IstKassenArt(hit.GOART) && !IstGozArt(hit.GOART)) return false;
    if (m_pRABefund == nullptr) return false;
    m_pRABefund->ClearKey();
    m_pRABefund->SetKey(1);
    m_pRABefund->m_PATNR = hit.PATNR;
    m_pRABefund->m_LFDBEFENTRY = hit.LFDBEFENTRY;
    if (m_pRABefund->GetByK1() != 0) return false;
    hit.MoveBefund(m_pRABefund);
    return true;
}

CString CStatAccu::GetLstGrpName(CChar cArt, CChar cGrp) {
    const CString sGrp = cGrp == 0 ? CString() : CString(cGrp);
    if (cArt == 'T') {
        const int i = FindSelectPoolData(m_vSpTechLst, sGrp);
        if (i >= 0) return m_vSpTechLst[static_cast<std::size_t>(i)].m_sText;
    }
    const int i = FindSelectPoolData(m_vSpGoStat, sGrp);
    if (i >= 0) return m_vSpGoStat[static_cast<std::size_t>(i)].m_sText;
    return cGrp == '$' ? "Kons./Chir. KFO"_t : CString();
}

} // namespace orvostat
