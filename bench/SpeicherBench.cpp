// The stores: stepping and writing treatments, and a read by key.
//
// What counts is the ratio between roads that were measured side by side: BM_Schritte walks the same rows in turns
// with bare SQLite calls, out of the SQLite store and out of the memory store, and reports the best turn of each in
// nanoseconds a row. Every road ends in the fields of a CTBeh, but for the bare one, which ends in pointers.

#include "Gang.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <vector>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

namespace orvostat {

namespace {

int Zeilen() { return std::getenv("ORVOSTATBS_BENCH_SMALL") ? 2000 : 200000; }

// The i-th treatment: a patient has ten on five days, and one of three has a text.
void Fuelle(CTBeh_Fields & beh, int i) {
    static const CString asTexte[] = {"Füllung gelegt, Kontrolle in zwei Wochen"_t,
                                      "Lokalanästhesie, Aufklärung erfolgt"_t,
                                      "Befund und Beratung; keine Beschwerden seit der letzten Sitzung"_t};
    static const CString asLeistungen[] = {"01", "13b", "Ä1", "8", "40", "105", "2060", "107"};
    beh.m_PATNR.Format("%10d", i / 10 + 1);
    beh.m_DATUM.Format("2024%02d%02d"_t, i / 10 % 12 + 1, i % 10 / 2 * 5 + 1);
    beh.m_SITZUNG = "a";
    beh.m_LFDBEHEINTRAG.Format("%3d", i % 2 + 1);
    beh.m_BEHANDLERNR.Format("%3d", i % 6 + 1);
    beh.m_ERFASSER.Format("%3d", i % 9 + 1);
    beh.m_TEETH = i % 2 ? CString("16") : CString("36,37");
    beh.m_ANZAHL = "a100";
    beh.m_LSTIN = beh.m_LSTNR = asLeistungen[i % 8];
    beh.m_GOART = beh.m_ABRART = i % 5 ? CString("k") : CString("q");
    beh.m_FAKTOR = "23000";
    beh.m_BETRAG.Format("e%d", 1000 + i % 5000);
    beh.m_LAGE = i % 4 ? CString() : CString("mod");
    beh.m_UHRZEIT.Format("%02d:%02d"_t, 8 + i % 10, i % 60);
    beh.m_TEXT = i % 3 ? CString() : asTexte[i / 3 % 3];
    beh.m_ABRMERKMAL = "1";
    beh.m_PATBILL.Format("%4d", i / 40);
    beh.m_BEHKZ = "0";
    beh.m_LFDBEFENTRY.Format("%4d", i % 7);
    beh.m_ABRJJME = "202403";
}

int Schreibe(CZeilenspeicher & speicher, int iAnzahl) {
    CMxDatabase db(false);
    db.Verbinde(std::shared_ptr<CZeilenspeicher>(std::shared_ptr<void>(), &speicher));
    CTBeh ziel(db);
    int iFehler = speicher.Beginne();
    for (int i = 0; i < iAnzahl; ++i) {
        Fuelle(ziel, i);
        iFehler |= ziel.Write();
    }
    return iFehler | speicher.Beende(true);
}

// The table of all benchmarks, made once: the file and its copy in memory.
class CPraxis {
public:
    static CPraxis & Einzige() {
        static CPraxis s_praxis;
        return s_praxis;
    }
    ~CPraxis() { std::filesystem::remove_all(m_verzeichnis); }

    [[nodiscard]] std::string Datei() const { return (m_verzeichnis / "p.db").string(); }
    CMxDatabase m_dbSqlite{true};
    CMxDatabase m_dbMemory{true};

    static std::filesystem::path Verzeichnis() {
        std::string sMuster = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
        if (!mkdtemp(sMuster.data())) throw std::runtime_error("no directory");
        return sMuster;
    }
    static std::shared_ptr<CSqliteSpeicher> Oeffne(const std::string & sDatei, EModus eModus) {
        CString sMeldung;
        auto p = CSqliteSpeicher::OeffneDatei(sDatei, eModus, sMeldung);
        if (!p) throw std::runtime_error(sMeldung.Utf8());
        return p;
    }

private:
    CPraxis() {
        const auto pMemory = std::make_shared<CMemorySpeicher>();
        if (Schreibe(*Oeffne(Datei(), EModus::NeuUngesichert), Zeilen()) != 0 ||
            Schreibe(*pMemory, Zeilen()) != 0)
            throw std::runtime_error("cannot fill");
        m_dbSqlite.Verbinde(Oeffne(Datei(), EModus::Lesen));
        m_dbMemory.Verbinde(pMemory);
    }
    std::filesystem::path m_verzeichnis = Verzeichnis();
};

// What a C program would write: the statement, and for each column its text and its length.
class CNackt {
public:
    explicit CNackt(const CPraxis & praxis) {
        const auto & speicher = static_cast<const CSqliteSpeicher &>(*praxis.m_dbSqlite.Speicher());
        sqlite3_open_v2(praxis.Datei().c_str(), &m_pDb, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
        sqlite3_exec(m_pDb, "PRAGMA cache_size = -32768", nullptr, nullptr, nullptr);
        const std::string sSql = speicher.WegSql(SBeschreibung<CTBeh_Fields>::tabelle);
        if (sqlite3_prepare_v3(m_pDb, sSql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &m_pAnweisung, nullptr) !=
            SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_pDb));
        sqlite3_bind_blob(m_pAnweisung, 1, "", 0, SQLITE_STATIC);
    }
    ~CNackt() {
        sqlite3_finalize(m_pAnweisung);
        sqlite3_close(m_pDb);
    }
    CNackt(const CNackt &) = delete;
    CNackt & operator=(const CNackt &) = delete;

    int Gehe() {
        constexpr int SPALTEN = static_cast<int>(std::size(SBeschreibung<CTBeh_Fields>::aSpalten));
        int iAnzahl = 0;
        for (; sqlite3_step(m_pAnweisung) == SQLITE_ROW; ++iAnzahl)
            for (int i = 0; i < SPALTEN; ++i) {
                benchmark::DoNotOptimize(sqlite3_column_text(m_pAnweisung, i));
                benchmark::DoNotOptimize(sqlite3_column_bytes(m_pAnweisung, i));
            }
        sqlite3_reset(m_pAnweisung);
        return iAnzahl;
    }

private:
    sqlite3 * m_pDb = nullptr;
    sqlite3_stmt * m_pAnweisung = nullptr;
};

// The best time of a road in nanoseconds of the processor a row, so that other programs hardly count.
class CZeit {
public:
    template <class F> void Miss(F f) {
        const std::clock_t beginn = std::clock();
        const int iAnzahl = f();
        const double dNs = static_cast<double>(std::clock() - beginn) * (1e9 / CLOCKS_PER_SEC);
        if (iAnzahl != Zeilen()) throw std::runtime_error("rows are missing");
        m_dBeste = std::min(m_dBeste, dNs / iAnzahl);
    }
    [[nodiscard]] double Ns() const { return m_dBeste; }

private:
    double m_dBeste = std::numeric_limits<double>::max();
};

void BM_Schritte(benchmark::State & state) {
    CPraxis & praxis = CPraxis::Einzige();
    CNackt nackt(praxis);
    CZeit zeitNackt, zeitSqlite, zeitMemory;
    for ([[maybe_unused]] auto _ : state) {
        zeitNackt.Miss([&] { return nackt.Gehe(); });
        zeitSqlite.Miss([&] { return Gehe(praxis.m_dbSqlite); });
        zeitMemory.Miss([&] { return Gehe(praxis.m_dbMemory); });
    }
    state.SetItemsProcessed(state.iterations() * Zeilen() * 3);
    state.counters["bare_ns"] = zeitNackt.Ns();
    state.counters["sqlite_ns"] = zeitSqlite.Ns();
    state.counters["memory_ns"] = zeitMemory.Ns();
    state.counters["sqlite_per_bare"] = zeitSqlite.Ns() / zeitNackt.Ns();
    state.counters["sqlite_per_memory"] = zeitSqlite.Ns() / zeitMemory.Ns();
}
BENCHMARK(BM_Schritte)->Unit(benchmark::kMillisecond);

// One row by its full key, out of all places of the table; with bInWeg while a walk over the table is open, as in a
// run, where SQLite then keeps its lock on the file.
void LiesEine(benchmark::State & state, CMxDatabase & db, bool bInWeg) {
    std::vector<CTBeh> vGesucht(1000, CTBeh(db));
    for (std::size_t i = 0; i < vGesucht.size(); ++i)
        Fuelle(vGesucht[i], static_cast<int>(i * 7919) % Zeilen());
    CTBeh weg(db);
    if (bInWeg) weg.GetAll();
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state)
        if (vGesucht[i++ % vGesucht.size()].GetByK1() != 0) state.SkipWithError("a row is missing");
    state.SetItemsProcessed(state.iterations());
}
void BM_EineZeileSqlite(benchmark::State & state) {
    LiesEine(state, CPraxis::Einzige().m_dbSqlite, state.range(0) != 0);
}
void BM_EineZeileMemory(benchmark::State & state) { LiesEine(state, CPraxis::Einzige().m_dbMemory, false); }
BENCHMARK(BM_EineZeileSqlite)->Arg(0)->Arg(1);
BENCHMARK(BM_EineZeileMemory);

void BM_SchreibeMemory(benchmark::State & state) {
    for ([[maybe_unused]] auto _ : state) {
        CMemorySpeicher speicher;
        if (Schreibe(speicher, Zeilen()) != 0) state.SkipWithError("cannot write");
    }
    state.SetItemsProcessed(state.iterations() * Zeilen());
}
BENCHMARK(BM_SchreibeMemory)->Unit(benchmark::kMillisecond);

// In one group; 1 with the guards of a file that must survive a crash.
void BM_SchreibeSqlite(benchmark::State & state) {
    const auto verzeichnis = CPraxis::Verzeichnis();
    const std::string sDatei = (verzeichnis / "s.db").string();
    for ([[maybe_unused]] auto _ : state) {
        std::filesystem::remove(sDatei);
        const auto p = CPraxis::Oeffne(sDatei, state.range(0) ? EModus::Neu : EModus::NeuUngesichert);
        if (Schreibe(*p, Zeilen()) != 0) state.SkipWithError("cannot write");
    }
    state.SetItemsProcessed(state.iterations() * Zeilen());
    state.counters["bytes_per_row"] = static_cast<double>(std::filesystem::file_size(sDatei)) / Zeilen();
    std::filesystem::remove_all(verzeichnis);
}
BENCHMARK(BM_SchreibeSqlite)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
