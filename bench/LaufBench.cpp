// A whole valued run over the sample practice, from both stores and in three sizes.
//
// One benchmark makes a practice of about so many treatments, walks its rows alone, and runs the statistic; the times
// of all roads stand in one row, so that their ratios hold on a noisy machine; each is the best of three:
//
//   schritte_sqlite, schritte_speicher   nanoseconds a row for stepping the treatments alone
//   lauf_sqlite, lauf_speicher           nanoseconds a hit of a whole run, look-ups and valuation included, in memory
//                                        that the process has used before
//   ..._kalt                             the same in memory fresh from the system, which clears each page first
//   verhaeltnis                          run to stepping, both from SQLite
//   hits_je_sekunde                      of the run from memory
//   sortieren_name, sortieren_patient    nanoseconds a hit of DoSortLines on shuffled hits
//   byte_je_hit                          growth of the resident set by the hits of a run

#include "Muster.h"
#include "Stumm.h"

#include "orvostatbs/lauf/Lauf.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <stdexcept>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

namespace orvostat {

namespace {

template <class F> double Nanosekunden(F f) {
    const auto anfang = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - anfang).count();
}

double Residenz() {
    long iSeiten = 0;
    long iResident = 0;
    std::ifstream("/proc/self/statm") >> iSeiten >> iResident;
    return static_cast<double>(iResident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// A practice of a size, in a file of its own and in memory.
class CBenchpraxis {
public:
    explicit CBenchpraxis(int iBehandlungen)
        : m_sDatei((std::filesystem::temp_directory_path() / ("orvobench" + std::to_string(getpid()) + ".db"))
                       .string()) {
        SMusterwahl wahl;
        wahl.iPatienten = std::max(1, iBehandlungen / (wahl.iJahre * MUSTER_BEHANDLUNGEN_JE_JAHR));
        CString sMeldung;
        const auto pNeu = CSqliteSpeicher::OeffneDatei(m_sDatei, EModus::NeuUngesichert, sMeldung);
        m_pSpeicher = std::make_shared<CMemorySpeicher>();
        if (!pNeu || ErzeugeMuster(*pNeu, wahl) != ZEILE_OK || ErzeugeMuster(*m_pSpeicher, wahl) != ZEILE_OK)
            throw std::runtime_error("no sample practice");
    }
    ~CBenchpraxis() { std::filesystem::remove(m_sDatei); }

    void VerbindeDatei() const {
        CString sMeldung;
        Verbinde(CSqliteSpeicher::OeffneDatei(m_sDatei, EModus::Lesen, sMeldung));
    }
    void VerbindeSpeicher() const { Verbinde(m_pSpeicher); }
    static void Verbinde(const std::shared_ptr<CZeilenspeicher> & pSpeicher) {
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
    }

private:
    std::string m_sDatei;
    std::shared_ptr<CZeilenspeicher> m_pSpeicher;
};

double Schritte() {
    std::int64_t iZeilen = 0;
    CTBeh beh;
    const double dZeit = Nanosekunden([&] {
        for (int i = beh.GetAll(); i == 0; i = beh.Next())
            ++iZeilen;
    });
    return dZeit / static_cast<double>(iZeilen);
}

void Waehle(CStatAccu & accu, char cSortierung = 0) {
    accu.SetIsAbgerechnet(true);
    accu.SetIsErfasst(true);
    accu.SetSortierung(cSortierung);
}

struct SLaufmass {
    double dZeit; // nanoseconds a hit
    double dByte; // of growth a hit
};

// The run's tables go with the accumulator; the time is that of the run alone.
SLaufmass Miss() {
    CStatAccu accu;
    Waehle(accu);
    CLauf lauf(accu, SLaufauftrag());
    const double dVorher = Residenz();
    const double dZeit = Nanosekunden([&] { lauf.Laufe(); });
    const auto dHits = static_cast<double>(accu.m_vBehHits.size());
    return {dZeit / dHits, (Residenz() - dVorher) / dHits};
}

double Lauf() { return Miss().dZeit; }

// Free memory stays with the process, so that a run finds it again; Miss in fresh memory gives it back before.
void BehalteSpeicher() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}
SLaufmass MissKalt() {
    malloc_trim(0);
    return Miss();
}

double Sortiere(char cSortierung) {
    CStatAccu accu;
    Waehle(accu, cSortierung);
    CStatAccu ohne;
    Waehle(ohne);
    CLauf lauf(ohne, SLaufauftrag());
    lauf.Laufe();
    accu.m_vBehHits = std::move(ohne.m_vBehHits);
    std::mt19937 zufall(1); // NOLINT: the same shuffle each time
    std::shuffle(accu.m_vBehHits.begin(), accu.m_vBehHits.end(), zufall);
    const double dZeit = Nanosekunden([&] { accu.DoSortLines(); });
    return dZeit / static_cast<double>(accu.m_vBehHits.size());
}

void BM_Lauf(benchmark::State & state) {
    BehalteSpeicher();
    CStumm stumm;
    const COberflaecheErsatz ersatz(stumm);
    const bool bKlein = std::getenv("ORVOSTATBS_BENCH_SMALL") != nullptr;
    const CBenchpraxis praxis(bKlein ? 2000 : static_cast<int>(state.range(0)));
    for (auto _ : state) {
        auto & z = state.counters;
        const auto Bestes = [&z](const char * pName, double dWert) {
            z[pName] = z.contains(pName) ? std::min<double>(z[pName], dWert) : dWert;
        };
        for (int i = 0; i < 3; ++i) {
            praxis.VerbindeDatei();
            const SLaufmass kalt = MissKalt();
            Bestes("lauf_sqlite_kalt", kalt.dZeit);
            Bestes("byte_je_hit", kalt.dByte);
            Bestes("schritte_sqlite", Schritte());
            Bestes("lauf_sqlite", Lauf());
            praxis.VerbindeSpeicher();
            Bestes("lauf_speicher_kalt", MissKalt().dZeit);
            Bestes("schritte_speicher", Schritte());
            Bestes("lauf_speicher", Lauf());
        }
        z["verhaeltnis"] = z["lauf_sqlite"] / z["schritte_sqlite"];
        z["verhaeltnis_kalt"] = z["lauf_sqlite_kalt"] / z["schritte_sqlite"];
        z["hits_je_sekunde"] = 1e9 / z["lauf_speicher"];
        z["hits_je_sekunde_kalt"] = 1e9 / z["lauf_speicher_kalt"];
        z["sortieren_name"] = Sortiere('1');
        z["sortieren_patient"] = Sortiere('2');
    }
    CBenchpraxis::Verbinde(nullptr);
}
BENCHMARK(BM_Lauf)->Arg(10000)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
