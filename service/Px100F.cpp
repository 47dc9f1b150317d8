#include "orvostatbs/service/Px100F.h"

#include "Hundertlauf.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/service/LSSum.h"

#include <algorithm>

namespace orvostat {

namespace {

// The valid norms of a day: those of the latest first day that is not after it; null before the first.
const std::vector<SGoBudget> * FindBudget(const CPx100F::CBudgetJeTag & mDaten, const CString & sDatum) {
    const auto it = mDaten.upper_bound(sDatum);
    return it == mDaten.begin() ? nullptr : &std::prev(it)->second;
}

SNormen Normen(const SGoBudget & budget, bool bZweiterSatz) {
    if (bZweiterSatz) return {Zahl(budget.m_sGesamtMkg), Zahl(budget.m_sVdakMkg), Zahl(budget.m_sRvoMkg)};
    return {Zahl(budget.m_sGesamt), Zahl(budget.m_sVdak), Zahl(budget.m_sRvo)};
}

// Which counts of a ratio take a hit of this short code.
SVerhTreffer VerhTreffer(const CVerhLst & verh, const CString & sKuerzel) {
    const CString sGesucht = ' ' + sKuerzel + ' ';
    return {verh.m_sZaehler.Find(sGesucht) >= 0, verh.m_sNenner.Find(sGesucht) >= 0};
}

} // namespace

// ---- CKasArt100F -----------------------------------------------------------------------------------

std::vector<CVerhLst> CKasArt100F::s_vVerhLst;

void CKasArt100F::Clear() {
    *this = CKasArt100F();
    m_vVerh.assign(s_vVerhLst.size(), {0, 0});
}

void CKasArt100F::MoveKasArt100F(const CBehHitLine & hit, bool bNeuerFall, int iSoll) {
    NimmInSpalte(*this, SHit(hit), bNeuerFall, iSoll, nullptr, VerhTrefferVon(hit.LSTKUERZEL));
}

std::vector<SVerhTreffer> VerhTrefferVon(const CString & sKuerzel) {
    std::vector<SVerhTreffer> vTreffer;
    for (const CVerhLst & verh : CKasArt100F::s_vVerhLst)
        vTreffer.push_back(VerhTreffer(verh, sKuerzel));
    return vTreffer;
}

void NimmInSpalte(CKasArt100F & spalte, const SHit & h, bool bNeuerFall, int iSoll, int * pStelle,
                  const std::vector<SVerhTreffer> & vTreffer) {
    spalte.KASSENART = h.hit.KASSENART;
    const std::size_t iZeilen = spalte.m_vLst.size();
    CLSLst & zeile = pStelle == nullptr ? Zeile(spalte.m_vLst, h, nullptr)
                     : *pStelle < 0     ? NeueZeile(spalte.m_vLst, h.hit.LSTNR)
                                        : spalte.m_vLst[static_cast<std::size_t>(*pStelle)];
    if (pStelle != nullptr && *pStelle < 0) *pStelle = static_cast<int>(iZeilen);
    if (spalte.m_vLst.size() > iZeilen) zeile.m_iF100Soll = iSoll; // the norm of the first hit stays
    Addiere(zeile, h.posten);
    Addiere(spalte.m_Gesamt, h.posten);
    const bool bNeben = IstSachLeistung(h.hit.GOART, h.hit.GOSUBART);
    Addiere(bNeben ? spalte.m_Nebenleistung : spalte.m_Hauptleistung, h.posten);
    if (bNeuerFall) Plus(spalte.m_iAnzFaelle, 1);
    const std::size_t iVerh = std::min(spalte.m_vVerh.size(), vTreffer.size());
    for (std::size_t i = 0; i < iVerh; ++i) {
        if (vTreffer[i].bZaehler) Plus(spalte.m_vVerh[i].first, h.hit.ANZAHL);
        if (vTreffer[i].bNenner) Plus(spalte.m_vVerh[i].second, h.hit.ANZAHL);
    }
}

// ---- CPx100F ---------------------------------------------------------------------------------------

void CPx100F::Clear() {
    m_sPraxis.Empty();
    for (CKasArt100F & spalte : m_aSpalten)
        spalte.Clear();
}

const std::vector<SGoBudget> * BudgetVon(CPx100F & px, const CBehHitLine & hit) {
    const CPx100F::CBudgetJeTag & mDaten = px.m_mBudgets[hit.GOART];
    if (!px.m_bQuartalsuebergreifend) return FindBudget(mDaten, hit.DATUM);
    return mDaten.empty() ? nullptr : &mDaten.rbegin()->second;
}

SNormen NormenVon(const std::vector<SGoBudget> * pBudgets, const CString & sKuerzel, bool bZweiterSatz) {
    if (pBudgets == nullptr) return {};
    const auto it = std::find_if(pBudgets->begin(), pBudgets->end(),
                                 [&](const SGoBudget & budget) { return budget.m_sKuerzel == sKuerzel; });
    return it == pBudgets->end() ? SNormen() : Normen(*it, bZweiterSatz);
}

void CPx100F::MovePx100F(const CBehHitLine & hit, const CString & sPraxis, bool bNeuerFall, bool bMitGruppe9,
                         bool bGruppe9Extra, bool bZweiterSatz) {
    if (!bMitGruppe9 && hit.KASSENGRP == STATKASGRP_9) return;
    const SNormen normen = NormenVon(BudgetVon(*this, hit), hit.LSTKUERZEL, bZweiterSatz);
    m_sPraxis = sPraxis;
    const SHit h(hit);
    const std::vector<SVerhTreffer> vTreffer = VerhTrefferVon(hit.LSTKUERZEL);
    JedeSpalte(hit, normen, bGruppe9Extra, [&](E100FSpalte eSpalte, int iSoll) {
        NimmInSpalte(m_aSpalten[eSpalte], h, bNeuerFall, iSoll, nullptr, vTreffer);
    });
}

void CPx100F::LoadBudgets(const CString & sVon, const CString & sBis) {
    CTGoBudget budget(dbDatabaseRO);
    budget.SetOpenType(OPEN_TABELLE, true);
    budget.SetKey(1, true);
    std::set<CString> sDaten;
    for (const char cGoArt : {'k', 'g'})
        LoadBudget(budget, cGoArt, m_mBudgets[cGoArt], sDaten);
    // Only the kind "g" is asked: a change of "k" alone is told to nobody.
    const CBudgetJeTag & mDaten = m_mBudgets['g'];
    if (FindBudget(mDaten, sVon) == FindBudget(mDaten, sBis)) return;
    Halt(
        "",
        "Der ausgewählte Zeitraum ist quartalsübergreifend.\n"
        "Die Aufbereitung der KZV-Statistik erfolgt mit den aktuell hinterlegten 100-Fall-Zahlen.\n"
        "Möchten Sie die Berücksichtung der historischen 100-Fall-Zahlen, tragen Sie im Bereich Zeitraum das "
        "entsprechende Quartal ein."_t,
        6);
    m_bQuartalsuebergreifend = true;
}

void CPx100F::LoadBudget(CTGoBudget & budget, char cGoArt, CBudgetJeTag & mDaten,
                         std::set<CString> & sDaten) {
    budget.ClearKey();
    budget.m_GOART = CString(cGoArt);
    for (int i = budget.GetByK1(MATCH_ALLE); i == 0; i = budget.Next()) {
        SGoBudget eintrag{
            budget.m_LSTKUERZEL, budget.m_TEXT, budget.m_RVO, budget.m_VDAK, budget.m_GESAMT, {}, {}, {}};
        if (dbMKGVersion) {
            eintrag.m_sRvoMkg = budget.m_RVOMKG;
            eintrag.m_sVdakMkg = budget.m_VDAKMKG;
            eintrag.m_sGesamtMkg = budget.m_GESAMTMKG;
        }
        mDaten[budget.m_GUELTIGAB].push_back(std::move(eintrag));
        sDaten.insert(budget.m_GUELTIGAB);
    }
}

// ---- The run ---------------------------------------------------------------------------------------

CHundertlauf::CHundertlauf(CPx100F & px, const CString & sPraxis, bool bMitGruppe9, bool bGruppe9Extra,
                           bool bZweiterSatz)
    : m_px(px), m_sPraxis(sPraxis), m_bMitGruppe9(bMitGruppe9), m_bGruppe9Extra(bGruppe9Extra),
      m_bZweiterSatz(bZweiterSatz) {}

SNormen CHundertlauf::Normen(const CBehHitLine & hit, SKuerzel & kuerzel) {
    if (hit.GOART != m_cGoArt || hit.DATUM != m_sTag || m_sTag.IsEmpty()) {
        m_cGoArt = hit.GOART;
        m_sTag = hit.DATUM;
        m_pBudgets = BudgetVon(m_px, hit);
    }
    for (const auto & [pGemerkt, normen] : kuerzel.vNormen)
        if (pGemerkt == m_pBudgets) return normen;
    return kuerzel.vNormen.emplace_back(m_pBudgets, NormenVon(m_pBudgets, hit.LSTKUERZEL, m_bZweiterSatz))
        .second;
}

CHundertlauf::SLeistung & CHundertlauf::Leistung(const CBehHitLine & hit) {
    const auto i = static_cast<std::size_t>(m_leistungen.Nummer(hit.LSTNR));
    if (i == m_vLeistungen.size()) m_vLeistungen.emplace_back().aStellen.fill(-1);
    SLeistung & leistung = m_vLeistungen[i];
    if (leistung.iKuerzel >= 0 && leistung.sKuerzel == hit.LSTKUERZEL) return leistung;
    leistung.sKuerzel = hit.LSTKUERZEL;
    leistung.iKuerzel = m_kuerzel.Nummer(hit.LSTKUERZEL);
    if (static_cast<std::size_t>(leistung.iKuerzel) == m_vKuerzel.size())
        m_vKuerzel.push_back({{}, VerhTrefferVon(hit.LSTKUERZEL)});
    return leistung;
}

void CHundertlauf::Nimm(const CBehHitLine & hit, bool bNeuerFall) {
    if (!m_bMitGruppe9 && hit.KASSENGRP == STATKASGRP_9) return;
    SLeistung & leistung = Leistung(hit);
    SKuerzel & kuerzel = m_vKuerzel[static_cast<std::size_t>(leistung.iKuerzel)];
    m_px.m_sPraxis = m_sPraxis;
    const SHit h(hit);
    JedeSpalte(hit, Normen(hit, kuerzel), m_bGruppe9Extra, [&](E100FSpalte eSpalte, int iSoll) {
        NimmInSpalte(m_px.m_aSpalten[eSpalte], h, bNeuerFall, iSoll, &leistung.aStellen[eSpalte],
                     kuerzel.vTreffer);
    });
}

void CLSSum::Analyse100Fall(const CString & sPraxis, const std::vector<CBehHitLine> & vHits,
                            bool bFesteFallzahl, int iFallzahl, bool bMitGruppe9, bool bGruppe9Extra,
                            bool bZweiterSatz) {
    BeginWaitCursor();
    const CString sGesucht = sPraxis; // it may be that of the columns, which are emptied
    m_100F.Clear();
    m_register.p.reset(); // the list of cases changes without it
    CHundertlauf lauf(m_100F, sGesucht, bMitGruppe9, bGruppe9Extra, bZweiterSatz);
    CFallregister faelle;
    for (const CBehHitLine & hit : vHits) {
        if (hit.LSTIN.IsEmpty() || (!sGesucht.IsEmpty() && sGesucht != hit.PRAXISNR)) continue;
        lauf.Nimm(hit, faelle.IstNeu(m_vFaelle, hit));
    }
    for (CKasArt100F & spalte : m_100F.m_aSpalten)
        Do100F_Anteile(spalte.m_vLst, m_100F.m_aSpalten[SPALTE_GESAMT].m_Gesamt,
                       bFesteFallzahl ? iFallzahl : spalte.m_iAnzFaelle);
    EndWaitCursor();
}

void CLSSum::Do100F_Anteile(std::vector<CLSLst> & vLst, const CLSLst & gesamt, int iFaelle) {
    for (CLSLst & lst : vLst) {
        lst.SumAnteilAnz(gesamt);
        lst.SumAnteilAnz100Fall(iFaelle);
        lst.Sum100FallAbweichung(iFaelle);
        lst.SumAnzDiff(iFaelle);
    }
    Sort100Fall(vLst);
}

void CLSSum::Sort100Fall(std::vector<CLSLst> & vLst) { SortiereZeilen(vLst); }

} // namespace orvostat
