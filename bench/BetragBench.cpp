// What amounts cost: adding them up, factor and rounding, and their texts.
#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <vector>

#include <benchmark/benchmark.h>

namespace orvostat {

namespace {

constexpr int ANZAHL = 1000; // amounts, of which a pass takes each once

// Amounts of a few euro, every third with the decimals that points times value leave.
std::vector<CString> Texte() {
    std::vector<CString> v;
    for (int i = 0; i < ANZAHL; ++i)
        v.push_back("e" + itoc(1000 + 37 * i % 9000) + (i % 3 == 0 ? "." + itoc(1 + i % 99) : CString()));
    return v;
}

std::vector<CDBetrag> Betraege() {
    std::vector<CDBetrag> v;
    for (const CString & s : Texte())
        v.emplace_back(s);
    return v;
}

// fNimm of each value over and over.
template <class T, class F> void Lauf(benchmark::State & state, const std::vector<T> & v, F fNimm) {
    for (auto _ : state)
        for (const T & wert : v)
            benchmark::DoNotOptimize(fNimm(wert));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(v.size()));
}

void BetraegeSummieren(benchmark::State & state) {
    CDBetrag summe;
    Lauf(state, Betraege(), [&](const CDBetrag & betrag) { return summe += betrag; });
}
void BetraegeMalFaktor(benchmark::State & state) {
    int iFaktor = 10000;
    Lauf(state, Betraege(), [&](CDBetrag betrag) {
        iFaktor = iFaktor == 35000 ? 10000 : iFaktor + 1000;
        return betrag.MalBruch(iFaktor, 10000).Round();
    });
}
void BetraegeUmrechnen(benchmark::State & state) {
    Lauf(state, Betraege(), [](CDBetrag betrag) { return betrag.ToW(' ').ToW('e'); });
}
void BetraegeLesen(benchmark::State & state) {
    Lauf(state, Texte(), [](const CString & s) { return CDBetrag(s); });
}
void BetraegeSchreiben(benchmark::State & state) {
    Lauf(state, Betraege(), [](const CDBetrag & betrag) { return betrag.ToDb(0, true, false, 0, 0); });
}
BENCHMARK(BetraegeSummieren);
BENCHMARK(BetraegeMalFaktor);
BENCHMARK(BetraegeUmrechnen);
BENCHMARK(BetraegeLesen);
BENCHMARK(BetraegeSchreiben);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
