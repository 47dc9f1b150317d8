// What summing a run's hits costs, beside loops written by hand for the same sums.
//
// The loops know beforehand what the engine has to find out: all numbers are small integers, so that a place
// is an array's element, and a service has one kind. Their arrays are there and empty before the clock
// starts. Each benchmark lets both have the same hits in turn and compares the best of each: "faktor" is
// engine by loop.
#include "Stumm.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/service/LSSum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

namespace orvostat {

namespace {

constexpr int HITS_JE_FALL = 6;
constexpr int QUARTALE = 8;
constexpr int ERSTE_LEISTUNG = 1000;

struct SGroesse {
    int iHits, iBehandler, iLeistungen, iKassen;
};

// A practice renders a dozen services all the time and most of its schedule hardly ever.
int Leistung(std::mt19937 & zufall, int iLeistungen) {
    const double d = std::uniform_real_distribution<double>(0, 1)(zufall);
    return static_cast<int>(std::pow(static_cast<double>(iLeistungen), d)) - 1;
}

// What a service is, by its number: mostly insurers' services, every fifth private, every tenth laboratory.
void SetzeLeistung(CBehHitLine & hit, int iLst) {
    hit.LSTNR = hit.LSTIN = itoc(ERSTE_LEISTUNG + iLst);
    hit.LSTKUERZEL = "L" + itoc(ERSTE_LEISTUNG + iLst * 7919 % 2000);
    hit.GOART = iLst % 10 == 9 ? '2' : iLst % 5 == 4 ? 'q' : iLst % 7 == 6 ? 'g' : 'k';
    hit.GOSUBART = iLst % 25 == 3 ? '6' : iLst % 25 == 4 ? 'o' : 0;
    hit.GOSTATISTIKART = "acdefklm"[iLst % 8];
    hit.PUNKTE = 100 * (5 + iLst % 150);
}

// The hits of eight quarters, patient by patient in each; a visit has one day and one treater.
std::vector<CBehHitLine> Hits(const SGroesse & g) {
    std::mt19937 zufall(4711);
    std::vector<CBehHitLine> vHits(static_cast<std::size_t>(g.iHits));
    const int iJeQuartal = (g.iHits + QUARTALE - 1) / QUARTALE;
    for (int i = 0; i < g.iHits; ++i) {
        CBehHitLine & hit = vHits[static_cast<std::size_t>(i)];
        const int iQuartal = i / iJeQuartal;
        const int iFall = i % iJeQuartal / HITS_JE_FALL;
        const int iBesuch = i % iJeQuartal % HITS_JE_FALL / 4; // four services and two, on another day
        const int iTag = (iFall * 5 + iBesuch * 11) % 28;
        hit.PRAXISNR = " 1";
        hit.BEHANDLERNR = RightFix(itoc((iFall * 7 + iBesuch * 3) % g.iBehandler), 3);
        hit.PATNR = RightFix(itoc(iFall), 10);
        hit.DATUM = itoc(20230001 + iQuartal / 4 * 10000 + (iQuartal % 4 * 3 + 1 + iTag % 3) * 100 + iTag);
        SetzeLeistung(hit, Leistung(zufall, g.iLeistungen));
        hit.ANZAHL = 100;
        hit.BETRAG = CDBetrag("e" + itoc(500 + static_cast<std::int64_t>(zufall() % 20000)));
        if (hit.GOART == '2') hit.MWSTSATZ = 7;
        if (hit.GOART == 'q') hit.ZUSCHLAG = CDBetrag("e250");
        const int iKasse = iFall * 31 % g.iKassen;
        hit.KASSENABR = hit.GOART != 'q' && iKasse % 8 != 0;
        hit.ISPRIVATPATIENT = iKasse % 8 == 0;
        hit.KASKUERZEL = "K" + itoc(iKasse);
        hit.KASSENART = CString(static_cast<char>('1' + iKasse % 9));
        hit.KASSENGRP = iKasse % 20 == 19 ? '9' : iKasse % 2 ? '1' : '2';
        hit.FREMDKASSE = iKasse % 3 == 0;
        hit.MFRDIG = "1";
        hit.WSO = "1";
        hit.ABRART = 'c';
    }
    return vHits;
}

// ---- The loops by hand -----------------------------------------------------------------------------

struct SSumme {
    std::int64_t iAnzahl = 0;
    std::int64_t iPunkte = 0;
    std::int64_t iGrund4 = 0;
    std::int64_t iGrund5 = 0;
    CDBetrag betrag;
    void operator+=(const SSumme & s) {
        iAnzahl += s.iAnzahl;
        iPunkte += s.iPunkte;
        iGrund4 += s.iGrund4;
        iGrund5 += s.iGrund5;
        betrag += s.betrag;
    }
};

SSumme Beitrag(const CBehHitLine & hit) {
    SSumme s;
    s.iAnzahl = hit.ANZAHL;
    if (hit.DTAGRUND == '4') s.iGrund4 = hit.ANZAHL;
    if (hit.DTAGRUND == '5') s.iGrund5 = hit.ANZAHL;
    if (hit.ABRMERKMAL == 'o' || hit.ABRMERKMAL == 'n') return s;
    s.iPunkte = std::int64_t{hit.PUNKTE} * hit.ANZAHL / 100;
    s.betrag = hit.BETRAG;
    if (hit.MWSTSATZ != 0) s.betrag += hit.BETRAG * hit.MWSTSATZ * 0.01;
    s.betrag += hit.ZUSCHLAG;
    return s;
}

// What of a hit is a position.
struct SStelle {
    std::size_t iLst, iBeh, iPat, iTag, iZahler, iGruppe, iTopf;
    bool bAbzug;
    explicit SStelle(const CBehHitLine & hit) {
        iLst = static_cast<std::size_t>(Zahl(hit.LSTNR) - ERSTE_LEISTUNG);
        iBeh = static_cast<std::size_t>(Zahl(hit.BEHANDLERNR));
        iPat = static_cast<std::size_t>(Zahl(hit.PATNR));
        const int iDatum = Zahl(hit.DATUM);
        iTag =
            static_cast<std::size_t>(((iDatum / 10000 - 2023) * 12 + iDatum / 100 % 100) * 32 + iDatum % 100);
        iZahler = hit.KASSENABR ? 0 : hit.ISPRIVATPATIENT ? 1 : 2;
        const bool bLabor = hit.GOART >= '1' && hit.GOART <= '9';
        const char cArt = bLabor ? hit.GOART : hit.GOSTATISTIKART;
        iGruppe = (iZahler * 2 + (bLabor ? 1 : 0)) * 64 + static_cast<std::size_t>(cArt & 63);
        bAbzug = ((hit.GOART == 'k' || hit.GOART == 'g') && hit.GOSUBART == '6') ||
                 ((hit.GOART == 'p' || hit.GOART == 'q') && (hit.GOSUBART == 'o' || hit.GOSUBART == 'q'));
        const char c = hit.GOSTATISTIKART;
        iTopf = !bLabor && c != 'k' && c != 'l' && c != 'm' ? 0 : c == 'k' ? 1 : bAbzug ? 3 : 2;
    }
};

constexpr std::size_t GRUPPEN = 3 * 2 * 64;
constexpr std::size_t TAGE = 2 * 13 * 32;

struct SRecord {
    explicit SRecord(int iLeistungen) : vZeilen(static_cast<std::size_t>(iLeistungen) * 3) {}
    std::vector<SSumme> vZeilen; // by service and payer
    std::array<SSumme, GRUPPEN> aGruppen;
    SSumme gesamt, sumNetto;
    std::array<SSumme, 3> aGes, aNetto, aTopf;
    std::array<std::array<SSumme, 4>, 3> aZahlerTopf;
    std::array<bool, TAGE> aTage{};
    int iTage = 0;

    void Nimm(const SStelle & st, const SSumme & s) {
        vZeilen[st.iLst * 3 + st.iZahler] += s;
        aGruppen[st.iGruppe] += s;
        gesamt += s;
        aGes[st.iZahler] += s;
        if (!st.bAbzug) {
            aNetto[st.iZahler] += s;
            sumNetto += s;
        }
        if (st.iTopf != 3) aTopf[st.iTopf] += s;
        aZahlerTopf[st.iZahler][st.iTopf] += s;
        if (!aTage[st.iTag]) ++iTage;
        aTage[st.iTag] = true;
    }
};

// Tells new cases of sorted hits by the patient's last quarter.
struct SFaelle {
    explicit SFaelle(int iHits) : vQuartal(static_cast<std::size_t>(iHits / HITS_JE_FALL) + 2, 0) {}
    std::vector<std::int32_t> vQuartal;
    bool IstNeu(const SStelle & st) {
        const auto iQuartal = static_cast<std::int32_t>(1 + (st.iTag / 32 - 1) / 3);
        if (vQuartal[st.iPat] == iQuartal) return false;
        vQuartal[st.iPat] = iQuartal;
        return true;
    }
};

struct SHandAnalyse {
    explicit SHandAnalyse(const SGroesse & g)
        : praxis(g.iLeistungen), vBeh(static_cast<std::size_t>(g.iBehandler), SRecord(g.iLeistungen)),
          faelle(g.iHits) {}
    SRecord praxis;
    std::vector<SRecord> vBeh;
    SFaelle faelle;
    int iFaelle = 0;
    void Laufe(const std::vector<CBehHitLine> & vHits) {
        for (const CBehHitLine & hit : vHits) {
            if (hit.GOSTATISTIKART == 0 || hit.LSTIN.IsEmpty()) continue;
            const SStelle st(hit);
            const SSumme s = Beitrag(hit);
            if (faelle.IstNeu(st)) ++iFaelle;
            praxis.Nimm(st, s);
            vBeh[st.iBeh].Nimm(st, s);
        }
    }
};

struct SHandKassen {
    struct SKasse {
        std::vector<SSumme> vZeilen;
        std::array<SSumme, GRUPPEN> aGruppen;
        SSumme gesamt, summe, kasse;
        int iFaelle = 0;
        void Nimm(const CBehHitLine & hit, const SStelle & st, const SSumme & s, bool bNeu) {
            vZeilen[st.iLst * 3 + st.iZahler] += s;
            aGruppen[st.iGruppe] += s;
            gesamt += s;
            summe += s;
            if (hit.KASSENABR) kasse += s;
            iFaelle += bNeu ? 1 : 0;
        }
    };
    struct SSpalte {
        std::vector<SSumme> vZeilen;
        SSumme gesamt, neben, haupt;
        int iFaelle = 0;
        void Nimm(const CBehHitLine & hit, const SStelle & st, const SSumme & s, bool bNeu) {
            vZeilen[st.iLst] += s;
            gesamt += s;
            (IstSachLeistung(hit.GOART, hit.GOSUBART) ? neben : haupt) += s;
            iFaelle += bNeu ? 1 : 0;
        }
    };

    explicit SHandKassen(const SGroesse & g) : faelle(g.iHits), faelle100(g.iHits) {
        const auto iLst = static_cast<std::size_t>(g.iLeistungen);
        summe.vZeilen.resize(iLst * 3);
        vKassen.assign(static_cast<std::size_t>(g.iKassen), summe);
        for (SSpalte & spalte : aSpalten)
            spalte.vZeilen.resize(iLst);
    }
    std::vector<SKasse> vKassen;
    SKasse summe;
    std::array<SSpalte, 8> aSpalten;
    SFaelle faelle, faelle100;
    void Laufe(const std::vector<CBehHitLine> & vHits) {
        for (const CBehHitLine & hit : vHits) {
            const SStelle st(hit);
            const SSumme s = Beitrag(hit);
            const bool bNeu = faelle.IstNeu(st);
            vKassen[static_cast<std::size_t>(Zahl(hit.KASKUERZEL.Mid(1)))].Nimm(hit, st, s, bNeu);
            summe.Nimm(hit, st, s, bNeu);
        }
        for (const CBehHitLine & hit : vHits) {
            const SStelle st(hit);
            const SSumme s = Beitrag(hit);
            const bool bNeu = faelle100.IstNeu(st);
            const bool bVdak = hit.KASSENART == "7" || hit.KASSENART == "8";
            aSpalten[0].Nimm(hit, st, s, bNeu);
            aSpalten[bVdak ? 1 : 4].Nimm(hit, st, s, bNeu);
            aSpalten[(bVdak ? 2u : 5u) + (hit.FREMDKASSE ? 1 : 0)].Nimm(hit, st, s, bNeu);
        }
    }
};

// ---- The comparison --------------------------------------------------------------------------------

// The processor's time, which other programs on the machine do not count into.
template <class F> double Sekunden(F f) {
    const std::clock_t von = std::clock();
    f();
    return static_cast<double>(std::clock() - von) / CLOCKS_PER_SEC;
}

SGroesse Groesse(const benchmark::State & state) {
    const bool bKlein = std::getenv("ORVOSTATBS_BENCH_SMALL") != nullptr;
    const bool bGross = state.range(1) != 0;
    return {bKlein ? 2000 : static_cast<int>(state.range(0)), bGross ? 40 : 4, bGross ? 2000 : 200,
            bGross ? 500 : 50};
}

// Lets loop and engine run in turn; fEngine gets a fresh statistic and checks against the loop.
template <class THand, class F> void Vergleiche(benchmark::State & state, F fEngine) {
    CStumm stumm;
    const COberflaecheErsatz ersatz(stumm);
    const SGroesse g = Groesse(state);
    const std::vector<CBehHitLine> vHits = Hits(g);
    double dHand = 1e9;
    double dEngine = 1e9;
    for (auto _ : state) {
        const auto pHand = std::make_unique<THand>(g);
        dHand = std::min(dHand, Sekunden([&] { pHand->Laufe(vHits); }));
        CLSSum sum;
        for (int i = 0; i < g.iLeistungen; ++i)
            sum.m_100F.m_mBudgets['k']["20230101"].push_back(
                {"L" + itoc(ERSTE_LEISTUNG + i), {}, "100", "90", "95", {}, {}, {}});
        const double d = Sekunden([&] { fEngine(sum, vHits); });
        state.SetIterationTime(d);
        dEngine = std::min(dEngine, d);
        if (!Gleich(*pHand, sum)) return state.SkipWithError("engine and loop differ");
    }
    state.SetItemsProcessed(state.iterations() * g.iHits);
    state.counters["hand_ns"] = dHand * 1e9 / g.iHits;
    state.counters["engine_ns"] = dEngine * 1e9 / g.iHits;
    state.counters["faktor"] = dEngine / dHand;
}

// To the cent; a practice's points may pass the 32 bits of their field.
bool Gleich(const SSumme & s, const CLSLst & lst) {
    const std::int64_t iGrenze = std::numeric_limits<std::int32_t>::max();
    return s.iAnzahl == lst.ANZAHL && std::min(s.iPunkte, iGrenze) == lst.PUNKTE &&
           (s.betrag - lst.BETRAG).Round().IsZero();
}

bool Gleich(const SHandAnalyse & hand, const CLSSum & sum) {
    const CLSPxLstGrp & px = sum.m_Praxis;
    if (!Gleich(hand.praxis.gesamt, px.m_Gesamt) || !Gleich(hand.praxis.sumNetto, px.m_SumNetto))
        return false;
    if (!Gleich(hand.praxis.aZahlerTopf[0][2], px.m_KasseLM) || !Gleich(hand.praxis.aTopf[0], px.m_SumStd))
        return false;
    if (hand.iFaelle != px.m_iAnzFaelle || hand.praxis.iTage != sum.m_vBehTage[0].second) return false;
    for (const CLSBehLstGrp & beh : sum.m_vBeh) {
        const SRecord & rec = hand.vBeh[static_cast<std::size_t>(Zahl(beh.BEHANDLERNR))];
        if (!Gleich(rec.gesamt, beh.m_Gesamt) || !Gleich(rec.aNetto[2], beh.m_SonstNetto)) return false;
    }
    return true;
}

bool Gleich(const SHandKassen & hand, const CLSSum & sum) {
    if (!Gleich(hand.summe.gesamt, sum.m_KasSum.m_Gesamt) ||
        !Gleich(hand.summe.kasse, sum.m_KasSum.m_KasseGes))
        return false;
    if (hand.summe.iFaelle != sum.m_KasSum.m_iAnzFaelle) return false;
    for (std::size_t i = 0; i < hand.aSpalten.size(); ++i)
        if (!Gleich(hand.aSpalten[i].gesamt, sum.m_100F.m_aSpalten[i].m_Gesamt) ||
            !Gleich(hand.aSpalten[i].neben, sum.m_100F.m_aSpalten[i].m_Nebenleistung))
            return false;
    return true;
}

void Analyse(benchmark::State & state) {
    Vergleiche<SHandAnalyse>(
        state, [](CLSSum & sum, const std::vector<CBehHitLine> & vHits) { sum.Analyse("", vHits, nullptr); });
}

void KassenUnd100Fall(benchmark::State & state) {
    Vergleiche<SHandKassen>(state, [](CLSSum & sum, const std::vector<CBehHitLine> & vHits) {
        for (const CBehHitLine & hit : vHits)
            sum.AddKasData(hit);
        sum.AnalyseKasDataSum("", sum.m_vKasData);
        sum.m_vFaelle.clear();
        sum.Analyse100Fall("", vHits, false, 0, true, false, false);
    });
}

void Groessen(benchmark::internal::Benchmark * pBench) {
    pBench->ArgNames({"hits", "gross"})->UseManualTime()->Unit(benchmark::kMillisecond);
    for (const int iHits : {10'000, 100'000, 1'000'000})
        for (const int iGross : {0, 1})
            pBench->Args({iHits, iGross});
}
BENCHMARK(Analyse)->Apply(Groessen);
BENCHMARK(KassenUnd100Fall)->Apply(Groessen);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
