// Working days: one day, a year, and the longest period that a practice's open bounds make.

#include "orvostatbs/calendar/Holiday.h"
#include "orvostatbs/host/Datum.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace orvostat {

namespace {

CHoliday Kalender(bool bAlleFeiertage) {
    CHoliday kalender;
    for (const auto pSchalter : FEIERTAGSSCHALTER)
        kalender.*pSchalter = bAlleFeiertage;
    return kalender;
}

// The days of four years in order, as a statistic meets them.
std::vector<CString> Tage() {
    std::vector<CString> vTage;
    for (CMxDate tag("20240101"); tag <= CMxDate("20271231"); tag = tag + 1)
        vTage.push_back(tag);
    return vTage;
}

// A million times "is this a working day"; items are questions.
void IstArbeitstagMillion(benchmark::State & state) {
    constexpr int ANZAHL = 1'000'000;
    const CHoliday kalender = Kalender(state.range(0) != 0);
    const std::vector<CString> vTage = Tage();
    for (auto _ : state) {
        int iArbeitstage = 0;
        for (int i = 0; i < ANZAHL; ++i)
            iArbeitstage += kalender.IstArbeitstag(vTage[static_cast<std::size_t>(i) % vTage.size()]);
        benchmark::DoNotOptimize(iArbeitstage);
    }
    state.SetItemsProcessed(state.iterations() * ANZAHL);
}
BENCHMARK(IstArbeitstagMillion)->ArgName("alle")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// Saturdays and Sundays, which are turned away before any feast is computed.
void IstArbeitstagWochenende(benchmark::State & state) {
    const CHoliday kalender = Kalender(true);
    const CString sSamstag = "20240706";
    for (auto _ : state)
        benchmark::DoNotOptimize(kalender.IstArbeitstag(sSamstag));
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(IstArbeitstagWochenende);

// Items are days of the period.
void GetAnzArbeitsTageJahr(benchmark::State & state) {
    CHoliday kalender = Kalender(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(kalender.GetAnzArbeitsTage("20240101", "20241231"));
    state.SetItemsProcessed(state.iterations() * 366);
}
BENCHMARK(GetAnzArbeitsTageJahr)->Unit(benchmark::kMicrosecond);

void GetAnzArbeitsTageOffeneGrenzen(benchmark::State & state) {
    const CHoliday kalender = Kalender(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(kalender.GetAnzArbeitsTage("19800101", "99991231"));
    state.SetItemsProcessed(state.iterations() * 2'929'245);
}
BENCHMARK(GetAnzArbeitsTageOffeneGrenzen)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
