// Treatments over a server: stepping and writing them, beside the plainest use of libpq.
//
// The server is one of its own in a temporary directory, reached by a socket. BM_Schritte walks the same rows in turns
// by COPY of the same columns to pointers and lengths, which is what a C program would write, and out of a store that
// reads, into the fields of a CTBeh; it reports the best turn of each in nanoseconds of the clock on the wall a row,
// since the server works too. BM_Lade does the same for writing: COPY of ready lines, and the store.

#include "Gang.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/postgres/PostgresSpeicher.h"
#include "support/Testserver.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <stdexcept>

#include <benchmark/benchmark.h>

namespace orvostat {

namespace {

int Zeilen() { return std::getenv("ORVOSTATBS_BENCH_SMALL") ? 2000 : 200000; }

// The i-th treatment: a patient has ten on five days, and one of three has a text.
void Fuelle(CTBeh_Fields & beh, int i) {
    beh.m_PATNR.Format("%10d", i / 10 + 1);
    beh.m_DATUM.Format("2024%02d%02d"_t, i / 10 % 12 + 1, i % 10 / 2 * 5 + 1);
    beh.m_SITZUNG = "a";
    beh.m_LFDBEHEINTRAG.Format("%3d", i % 2 + 1);
    beh.m_BEHANDLERNR.Format("%3d", i % 6 + 1);
    beh.m_TEETH = i % 2 ? CString("16") : CString("36,37");
    beh.m_ANZAHL = "a100";
    beh.m_LSTIN = beh.m_LSTNR = i % 3 ? CString("13b") : CString("Ä1");
    beh.m_GOART = beh.m_ABRART = i % 5 ? CString("k") : CString("q");
    beh.m_FAKTOR = "23000";
    beh.m_BETRAG.Format("e%d", 1000 + i % 5000);
    beh.m_UHRZEIT.Format("%02d:%02d"_t, 8 + i % 10, i % 60);
    beh.m_TEXT = i % 3 ? CString() : "Füllung gelegt, Kontrolle in zwei Wochen"_t;
    beh.m_PATBILL.Format("%4d", i / 40);
    beh.m_ABRJJME = "202403";
}

std::shared_ptr<CPostgresSpeicher> Oeffne(const std::string & sPraxis, EServermodus eModus) {
    const CTestserver & server = CTestserver::Einziger();
    if (!server.Hindernis().empty()) throw std::runtime_error(server.Hindernis());
    CString sMeldung;
    auto p = CPostgresSpeicher::OeffneServer(server.Verbindung(), sPraxis, eModus, sMeldung);
    if (!p) throw std::runtime_error(sMeldung.Utf8());
    return p;
}

int SchreibeAlle(const std::string & sPraxis) {
    CMxDatabase db(false);
    db.Verbinde(Oeffne(sPraxis, EServermodus::Anlegen));
    CTBeh ziel(db);
    int iFehler = db.Speicher()->Beginne();
    for (int i = 0; i < Zeilen(); ++i) {
        Fuelle(ziel, i);
        iFehler |= ziel.Write();
    }
    if ((iFehler | db.Speicher()->Beende(true)) != 0) throw std::runtime_error("cannot write");
    return Zeilen();
}

class CNackt {
public:
    CNackt() : m_p(PQconnectdb(CTestserver::Einziger().Verbindung().c_str())) {
        for (const SSpalteInfo & spalte : SBeschreibung<CTBeh_Fields>::aSpalten)
            m_sSpalten += (m_sSpalten.empty() ? "\"" : ", \"") + std::string(spalte.pName) + '"';
    }
    ~CNackt() { PQfinish(m_p); }
    CNackt(const CNackt &) = delete;
    CNackt & operator=(const CNackt &) = delete;

    void Sql(const std::string & sSql) { PQclear(PQexec(m_p, sSql.c_str())); }
    // Calls f with each line as it comes, in COPY's text form.
    template <class F> int Gehe(F f) {
        Sql("COPY \"BEH\" (" + m_sSpalten + ") TO STDOUT");
        char * pZeile = nullptr;
        int iAnzahl = 0;
        for (int n; (n = PQgetCopyData(m_p, &pZeile, 0)) > 0; ++iAnzahl) {
            f(std::string_view(pZeile, static_cast<std::size_t>(n)));
            PQfreemem(pZeile);
        }
        PQclear(PQgetResult(m_p));
        return iAnzahl;
    }
    int Lies() {
        return Gehe([](std::string_view s) {
            for (std::size_t i = 0; i != s.npos; i = s.find('\t', i + 1))
                benchmark::DoNotOptimize(s.data() + i);
        });
    }
    std::vector<std::string> Alle() {
        std::vector<std::string> v;
        Gehe([&](std::string_view s) { v.emplace_back(s); });
        return v;
    }
    int Schreibe(const std::vector<std::string> & vZeilen) {
        Sql("COPY \"NACKT\" (" + m_sSpalten + ") FROM STDIN");
        for (const std::string & s : vZeilen)
            PQputCopyData(m_p, s.data(), static_cast<int>(s.size()));
        PQputCopyEnd(m_p, nullptr);
        while (PGresult * p = PQgetResult(m_p))
            PQclear(p);
        return static_cast<int>(vZeilen.size());
    }

private:
    PGconn * m_p;
    std::string m_sSpalten;
};

// The best time of a road in nanoseconds a row.
class CZeit {
public:
    template <class F> void Miss(F f) {
        const auto beginn = std::chrono::steady_clock::now();
        const int iAnzahl = f();
        const std::chrono::duration<double, std::nano> dauer = std::chrono::steady_clock::now() - beginn;
        if (iAnzahl != Zeilen()) throw std::runtime_error("rows are missing");
        m_dBeste = std::min(m_dBeste, dauer.count() / iAnzahl);
    }
    [[nodiscard]] double Ns() const { return m_dBeste; }

private:
    double m_dBeste = std::numeric_limits<double>::max();
};

void Melde(benchmark::State & state, const CZeit & nackt, const CZeit & server) {
    state.counters["copy_ns"] = nackt.Ns();
    state.counters["store_ns"] = server.Ns();
    state.counters["store_per_copy"] = server.Ns() / nackt.Ns();
}

// Makes the practice of all benchmarks.
void Fuelle() {
    static const int s_iZeilen = SchreibeAlle("bench");
    (void)s_iZeilen;
}

void BM_Schritte(benchmark::State & state) {
    Fuelle();
    CNackt nackt;
    nackt.Sql("VACUUM ANALYZE");
    CMxDatabase db(true);
    db.Verbinde(Oeffne("bench", EServermodus::Lesen));
    CZeit zeitNackt, zeitServer;
    for ([[maybe_unused]] auto _ : state) {
        zeitNackt.Miss([&] { return nackt.Lies(); });
        zeitServer.Miss([&] { return Gehe(db); });
    }
    Melde(state, zeitNackt, zeitServer);
}
BENCHMARK(BM_Schritte)->Unit(benchmark::kMillisecond)->MinTime(3);

// One row by its full key, in the order of the keys as a run asks, and in none.
void BM_EineZeile(benchmark::State & state) {
    Fuelle();
    CMxDatabase db(true);
    db.Verbinde(Oeffne("bench", EServermodus::Lesen));
    CTBeh beh(db);
    int i = 0;
    for ([[maybe_unused]] auto _ : state) {
        Fuelle(beh, i = (i + static_cast<int>(state.range(0))) % Zeilen());
        if (beh.GetByK1() != 0) state.SkipWithError("a row is missing");
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_EineZeile)->Arg(1)->Arg(7919)->UseRealTime();

// The bare table has one key, as every table of a practice.
void BM_Lade(benchmark::State & state) {
    Fuelle();
    CNackt nackt;
    const std::vector<std::string> vZeilen = nackt.Alle();
    static int s_iPraxis = 0;
    CZeit zeitNackt, zeitServer;
    for ([[maybe_unused]] auto _ : state) {
        nackt.Sql("DROP TABLE IF EXISTS \"NACKT\"");
        nackt.Sql(
            "CREATE TABLE \"NACKT\" (LIKE \"BEH\"); ALTER TABLE \"NACKT\" ALTER \"PRAXIS\" DROP NOT NULL, "
            "ALTER \"SCHLUESSEL1\" DROP NOT NULL, ALTER \"SCHLUESSEL2\" DROP NOT NULL, "
            "ALTER \"LFD\" DROP NOT NULL");
        nackt.Sql("CREATE INDEX ON \"NACKT\" (\"PATNR\", \"DATUM\", \"SITZUNG\", \"LFDBEHEINTRAG\")");
        zeitNackt.Miss([&] { return nackt.Schreibe(vZeilen); });
        const std::string sPraxis = "lade " + std::to_string(++s_iPraxis);
        zeitServer.Miss([&] { return SchreibeAlle(sPraxis); });
        nackt.Sql("DELETE FROM \"BEH\" WHERE \"PRAXIS\" = '" + sPraxis + "'");
    }
    Melde(state, zeitNackt, zeitServer);
}
BENCHMARK(BM_Lade)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace

} // namespace orvostat

// Where there is no server, there is nothing to measure.
int main(int argc, char ** argv) {
    const std::string & sHindernis = orvostat::CTestserver::Einziger().Hindernis();
    if (!sHindernis.empty()) return std::printf("NOT RUN: %s\n", sHindernis.c_str()), 0;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
