// What valuing a hit costs when fee rows, point values and plans have been read, and what ordering the hits costs.
#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

std::int64_t s_iAllokationen = 0;

} // namespace

// Counts what is allocated, for "alloc_per_hit".
[[gnu::noinline]] void * operator new(std::size_t iBytes) {
    ++s_iAllokationen;
    if (void * const p = std::malloc(iBytes)) return p;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void * p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void * p, std::size_t) noexcept { std::free(p); }

namespace orvostat {

namespace {

constexpr int LEISTUNGEN = 300; // that a run meets, of each kind
constexpr int PLAENE = 400;

CString Nr(int i) { return itoc(1000 + i); }

template <class T, class F> void Schreibe(F fFuelle) {
    T tabelle(dbDatabase);
    fFuelle(tabelle);
    tabelle.Write();
}

void SchreibeGebuehren() {
    for (int i = 0; i < LEISTUNGEN; ++i) {
        Schreibe<CTGO>([i](CTGO & go) {
            go.m_GOART = "p";
            go.m_LSTNR = Nr(i);
            go.m_GOSUBART = "2";
            go.m_STATART = "x";
            go.m_EINFACHSATZ = "e" + itoc(562 + i);
            go.m_STDFAKTOR = "23000";
        });
        Schreibe<CTGO>([i](CTGO & go) {
            go.m_GOART = "k";
            go.m_LSTNR = Nr(i);
            go.m_PWLART = "a";
            go.m_STATART = "x";
            go.m_GEBPKT = itoc(100 * (5 + i % 150));
        });
    }
}

// Ten years of quarterly values for six kinds of service.
void SchreibePunktwerte() {
    for (int i = 0; i < 40; ++i)
        for (const char cArt : {'a', 'b', 'f', 'g', 'h', 'i'})
            Schreibe<CTPunktWert>([i, cArt](CTPunktWert & pw) {
                pw.m_PWAB = itoc((2015 + i / 4) * 10000 + (1 + i % 4 * 3) * 100 + 1);
                pw.m_PWGRP = "VDAK";
                pw.m_PWLART = CString(cArt);
                pw.m_PWWEST = "e" + itoc(10000 + 30 * i);
                pw.m_PWOST = "e" + itoc(9900 + 30 * i);
            });
}

void SchreibePlaene() {
    for (int i = 0; i < PLAENE; ++i)
        Schreibe<CTPlan>([i](CTPlan & plan) {
            plan.m_PATNR = RightFix(itoc(1000 + i), 10);
            plan.m_PLANNR = "1";
            plan.m_PLANART = "3";
            plan.m_PLANSTATUS = "4";
            plan.m_PLANDATUM = "20240301";
            plan.m_PLANPW = "e11197";
        });
}

// An accumulator over a practice in memory, everything read that its hits ask for.
class CPraxis {
public:
    CPraxis() {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pSpeicher);
        SchreibeGebuehren();
        SchreibePunktwerte();
        SchreibePlaene();
        m_accu.GetAllPw();
    }
    ~CPraxis() {
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    CPraxis(const CPraxis &) = delete;
    CPraxis & operator=(const CPraxis &) = delete;

private:
    std::shared_ptr<CMemorySpeicher> m_pSpeicher = std::make_shared<CMemorySpeicher>();

public:
    CStatAccu m_accu;
};

// What the valuation reads of an entry; the hit itself is reused, as in a run.
struct SEintrag {
    CString sPatNr, sPlanNr, sLstNr, sFaktor;
};

// Five services of each patient behind each other. Their plans are the last of those that a run has read.
std::vector<SEintrag> Eintraege(bool bPrivat, bool bPlan) {
    std::vector<SEintrag> v;
    for (int i = 0; i < 5 * PLAENE; ++i)
        v.push_back({RightFix(itoc(1000 + i / 5), 10), bPlan ? CString("1") : CString(),
                     Nr(i * 7 % LEISTUNGEN), bPrivat ? CString("23000") : CString()});
    return v;
}

// Values the entries over and over; abrart 0 is a private hit.
void Bewerte(benchmark::State & state, char cAbrArt, bool bPlan) {
    CPraxis praxis;
    CStatAccu & accu = praxis.m_accu;
    const bool bPrivat = cAbrArt == 0;
    const std::vector<SEintrag> vEintraege = Eintraege(bPrivat, bPlan);
    CBehHitLine hit;
    hit.GOART = bPrivat ? 'p' : 'k';
    hit.ABRART = cAbrArt;
    hit.DATUM = "20240515";
    hit.ANZAHL = 100;
    hit.WSO_ERG = "1";
    hit.KASSENPWGRP = "VDAK";
    const auto Eins = [&](const SEintrag & eintrag) {
        hit.PATNR = eintrag.sPatNr;
        hit.PLANNR = eintrag.sPlanNr;
        hit.LSTNR = eintrag.sLstNr;
        hit.FAKTOR = eintrag.sFaktor;
        hit.PUNKTWERT.Empty();
        hit.BETRAG.Empty();
        accu.GetGOData(hit);
        accu.GetPunkte(hit);
        accu.GetBetrag(hit, nullptr);
    };
    for (const SEintrag & eintrag : vEintraege)
        Eins(eintrag);
    if (!accu.m_vBehErrors.empty() || !hit.BETRAG.IsPos())
        return state.SkipWithError("hits without an amount");

    const std::int64_t iVorher = s_iAllokationen;
    const std::size_t iAb = bPlan ? vEintraege.size() - 50 : 0;
    std::size_t i = iAb;
    for (auto _ : state) {
        Eins(vEintraege[i]);
        i = i + 1 == vEintraege.size() ? iAb : i + 1;
        benchmark::DoNotOptimize(hit);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["alloc_per_hit"] = benchmark::Counter(static_cast<double>(s_iAllokationen - iVorher),
                                                         benchmark::Counter::kAvgIterations);
}

void PrivatBewerten(benchmark::State & state) { Bewerte(state, 0, false); }
void KasseBewerten(benchmark::State & state) { Bewerte(state, 'c', false); }
void PlanBewerten(benchmark::State & state) { Bewerte(state, 'z', true); }
BENCHMARK(PrivatBewerten);
BENCHMARK(KasseBewerten);
BENCHMARK(PlanBewerten);

// A run over plans of which each is looked for five times: missed, entered, found where it stands last. A sixth time
// it is looked for when all are there.
void PlaeneSuchen(benchmark::State & state) {
    const bool bKlein = std::getenv("ORVOSTATBS_BENCH_SMALL") != nullptr;
    const int iPlaene = std::min(static_cast<int>(state.range(0)), bKlein ? PLAENE : 100'000);
    std::vector<CBehHitLine> vHits(static_cast<std::size_t>(iPlaene));
    for (int i = 0; i < iPlaene; ++i) {
        vHits[static_cast<std::size_t>(i)].PATNR = RightFix(itoc(i / 2), 10);
        vHits[static_cast<std::size_t>(i)].PLANNR = i % 2 == 0 ? CString("1") : CString("2");
    }
    CStatAccu accu;
    for (auto _ : state) {
        std::vector<CPlan> vPlaene;
        std::int64_t iSumme = 0;
        for (const CBehHitLine & hit : vHits)
            for (int i = 0; i < 5; ++i) {
                const int iPos = accu.FindPlan(vPlaene, hit);
                if (iPos < 0) vPlaene.emplace_back().MovePlanNotOk(hit);
                iSumme += iPos;
            }
        for (const CBehHitLine & hit : vHits)
            iSumme += accu.FindPlan(vPlaene, hit);
        if (iSumme != (std::int64_t{iPlaene} - 1) * iPlaene / 2 * 5 - iPlaene)
            return state.SkipWithError("wrong positions");
    }
    state.SetItemsProcessed(state.iterations() * iPlaene * 6);
}
BENCHMARK(PlaeneSuchen)->ArgName("plaene")->Arg(5)->Arg(400)->Arg(100'000)->Unit(benchmark::kMillisecond);

// A practice's names: a few hundred surnames and many first names, so that patients share both.
CString Name(int iPat) {
    static const CString s_asNamen[] = {"MÜLLER"_t, "SCHMIDT-LÖWENSTEIN"_t, "VON DER HEIDE"_t, "WEIß"_t};
    return s_asNamen[iPat % 4] + itoc(iPat / 4 % 200) + " MAXIMILIANE "_t + itoc(iPat);
}

// Eight entries of each patient, in any order.
std::vector<CBehHitLine> GemischteHits(int iAnzahl) {
    std::vector<CBehHitLine> vHits(static_cast<std::size_t>(iAnzahl));
    CString sName;
    for (int i = 0; i < iAnzahl; ++i) {
        CBehHitLine & hit = vHits[static_cast<std::size_t>(i)];
        if (i % 8 == 0) sName = Name(i / 8);
        hit.PATNAME = sName;
        hit.PATNR = RightFix(itoc(i / 8), 10);
        hit.DATUM = "20240" + itoc(101 + i % 28 + 100 * (i % 9));
        hit.SITZUNG = "ab"[i % 2];
        hit.LFDBEHEINTRAG = itoc(i);
    }
    std::shuffle(vHits.begin(), vHits.end(), std::mt19937(4711));
    return vHits;
}

// A million hits, sorted by name (1) or by patient (2).
void HitsSortieren(benchmark::State & state) {
    const int iAnzahl = std::getenv("ORVOSTATBS_BENCH_SMALL") ? 10'000 : 1'000'000;
    CStatAccu accu;
    accu.m_vBehHits = GemischteHits(iAnzahl);
    accu.SetSortierung(state.range(0) == 1 ? '1' : '2');
    std::mt19937 zufall(42);
    for (auto _ : state) {
        accu.DoSortLines();
        state.PauseTiming();
        std::shuffle(accu.m_vBehHits.begin(), accu.m_vBehHits.end(), zufall);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * iAnzahl);
    state.counters["s_per_hit"] = benchmark::Counter(iAnzahl, benchmark::Counter::kIsIterationInvariantRate |
                                                                  benchmark::Counter::kInvert);
}
BENCHMARK(HitsSortieren)->ArgName("sortierung")->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
