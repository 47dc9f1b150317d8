// The walk that the stores' benchmarks time.
#pragma once

#include "orvostatbs/host/TabellenLeistung.h"

#include <benchmark/benchmark.h>

namespace orvostat {

// Steps through all treatments of a handle: how many.
inline int Gehe(CMxDatabase & db) {
    CTBeh beh(db);
    int iAnzahl = 0;
    for (int i = beh.GetAll(); i == 0; i = beh.Next()) {
        benchmark::DoNotOptimize(beh.m_PATNR);
        ++iAnzahl;
    }
    return iAnzahl;
}

} // namespace orvostat
