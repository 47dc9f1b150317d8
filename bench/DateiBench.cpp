// A saved statistic: writing its hits to a file and reading them back, beside the plainest loops over the same bytes.
//
// The hits are those of a run over the sample practice, taken again and again up to the number asked for; the columns
// are those of iFS_SICHERUNG. All times stand in one row, so that their ratios hold on a noisy machine; each is the
// best of five, nanoseconds of the processor a hit, the system's part included:
//
//   schreiben, lesen             WriteDaten and ReadDaten of a set, everything included
//   schlicht_schreiben           57 ready texts a hit joined into a buffer, which is written when it is full
//   schlicht_lesen               the file read whole and cut at line ends and delimiters into views
//   v_schreiben, v_lesen         how many times the plain loop
//   bestand_schreiben, ..._lesen the same set in the practice's own store, in memory
//   byte_je_hit                  of the file
//
// The reading includes what the plain loop has no use for: a table of hits, about a thousand bytes each. The table's
// memory has been used before, as in a program that reopens a list.

#include "Muster.h"
#include "Stumm.h"
#include "orvostatbs/lauf/Lauf.h"

#include "orvostatbs/files/Statistikdatei.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace orvostat {

namespace {

constexpr std::size_t SPALTEN = 57;

// What it would say is a failure.
class CStreng : public CStumm {
public:
    void Hinweis(EHinweis, const CString & sTitel, const CString & sText, int) override {
        throw std::runtime_error((sTitel + ": " + sText).Utf8());
    }
};

double Rechenzeit() {
    timespec zeit{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &zeit);
    return static_cast<double>(zeit.tv_sec) * 1e9 + static_cast<double>(zeit.tv_nsec);
}
template <class F> double Nanosekunden(F f) {
    const double dAnfang = Rechenzeit();
    f();
    return Rechenzeit() - dAnfang;
}

// ---- the set, as a screen writes and reads it

template <class T> class CSchreiber : public CStat2File<T> {
public:
    CSchreiber() : CStat2File<T>(nullptr) { this->m_sDateiName = "BENCH"; }
    int * SetLineStruct() override { return iFS_SICHERUNG; }
    long GetGesamtPos() override { return static_cast<long>(this->m_pFilter->m_vBehHits.size()); }
    int DoData(T & file, int & iCount) override {
        this->WriteTitel(file);
        for (const CBehHitLine & hit : this->m_pFilter->m_vBehHits) {
            if (!this->DoProgress(++this->m_lPos, this->m_lGesamtPos)) return CODE_STILL;
            this->m_Line.MoveHit(hit);
            this->WriteLines(file, this->m_Line);
            ++iCount;
        }
        return CODE_OK;
    }
};

template <class T> class CLeser : public CFile2Stat<T> {
public:
    CLeser() : CFile2Stat<T>(nullptr) { this->m_sDateiName = "BENCH"; }
    int * SetLineStruct() override { return iFS_SICHERUNG; }
};

template <class T> double Schreibe(CStatAccu & accu) {
    CSchreiber<T> schreiber;
    schreiber.SetFilter(&accu);
    return Nanosekunden([&] {
        if (!schreiber.WriteDaten()) throw std::runtime_error("not written");
    });
}

template <class T> double Lies(CStatAccu & accu) {
    CLeser<T> leser;
    leser.SetFilter(&accu);
    return Nanosekunden([&] {
        if (!leser.ReadDaten()) throw std::runtime_error("not read");
    });
}

// ---- the plainest loops

std::string LiesDatei(const std::string & sPfad) {
    const int iGriff = open(sPfad.c_str(), O_RDONLY);
    std::string s(std::filesystem::file_size(sPfad), '\0');
    for (std::size_t i = 0; i < s.size();) {
        const auto n = read(iGriff, s.data() + i, s.size() - i);
        if (n <= 0) throw std::runtime_error("not read");
        i += static_cast<std::size_t>(n);
    }
    close(iGriff);
    return s;
}

using CZeile = std::array<std::string_view, SPALTEN>;

// Calls f with each line's columns.
template <class F> void Zerlege(std::string_view s, F f) {
    CZeile zeile;
    std::size_t iSpalte = 0;
    const char * pAnfang = s.data();
    for (const char & c : s) {
        if (c != ';' && c != '\n') continue;
        zeile[iSpalte++] = {pAnfang, static_cast<std::size_t>(&c - pAnfang)};
        pAnfang = &c + 1;
        if (c == ';') continue;
        f(zeile);
        iSpalte = 0;
    }
}

double SchlichtSchreiben(const std::vector<CZeile> & vZeilen, std::size_t iHits, const std::string & sPfad) {
    std::filesystem::remove(sPfad);
    return Nanosekunden([&] {
        const int iGriff = open(sPfad.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        std::string sPuffer;
        const auto Leere = [&] {
            if (write(iGriff, sPuffer.data(), sPuffer.size()) != static_cast<ssize_t>(sPuffer.size()))
                throw std::runtime_error("not written");
            sPuffer.clear();
        };
        for (std::size_t i = 0; i < iHits; ++i) {
            const CZeile & zeile = vZeilen[i % vZeilen.size()];
            for (std::size_t j = 0; j < SPALTEN; ++j) {
                if (j > 0) sPuffer += ';';
                sPuffer += zeile[j];
            }
            sPuffer += '\n';
            if (sPuffer.size() > 256 * 1024) Leere();
        }
        Leere();
        close(iGriff);
    });
}

double SchlichtLesen(const std::string & sPfad) {
    return Nanosekunden([&] {
        const std::string s = LiesDatei(sPfad);
        Zerlege(s, [](const CZeile & zeile) { benchmark::DoNotOptimize(zeile.data()); });
    });
}

// ---- the practice

class CBenchordner {
public:
    CBenchordner()
        : m_pfad(std::filesystem::temp_directory_path() / ("orvodatei" + std::to_string(getpid()))),
          m_pfade{CString(), Verzeichnistext(m_pfad.string()), CString()}, m_ersatz(m_pfade) {
        std::filesystem::create_directories(m_pfad / "stat" / "01");
    }
    ~CBenchordner() { std::filesystem::remove_all(m_pfad); }
    [[nodiscard]] std::string Datei(const char * pName) const {
        return (m_pfad / "stat" / "01" / pName).string();
    }

private:
    std::filesystem::path m_pfad;
    SPfade m_pfade;
    CPfadeErsatz m_ersatz;
};

// The hits of a run, so many.
void Sammle(CStatAccu & accu, std::size_t iHits) {
    accu.SetIsAbgerechnet(true);
    accu.SetIsErfasst(true);
    CLauf lauf(accu, SLaufauftrag());
    lauf.Laufe();
    lauf.Nachlauf();
    auto & vHits = accu.m_vBehHits;
    const std::size_t iEcht = vHits.size();
    vHits.reserve(iHits);
    for (std::size_t i = 0; vHits.size() < iHits; ++i)
        vHits.push_back(vHits[i % iEcht]);
    vHits.resize(iHits);
    accu.m_lAnzHits = static_cast<int>(iHits);
}

void BM_Datei(benchmark::State & state) {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    CStreng stumm;
    const COberflaecheErsatz ersatz(stumm);
    const CBenchordner ordner;
    const bool bKlein = std::getenv("ORVOSTATBS_BENCH_SMALL") != nullptr;
    const auto iHits = static_cast<std::size_t>(bKlein ? 2000 : state.range(0));
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    SMusterwahl wahl;
    wahl.iPatienten = static_cast<int>(std::min<std::size_t>(iHits, 100'000) / 50) + 1;
    if (ErzeugeMuster(*pSpeicher, wahl) != ZEILE_OK) throw std::runtime_error("no sample practice");
    dbDatabase.Verbinde(pSpeicher);
    dbDatabaseRO.Verbinde(pSpeicher);

    CStatAccu accu;
    Sammle(accu, iHits);
    Schreibe<CStdioFile>(accu);
    CStatAccu gelesen;
    Lies<CStdioFile>(gelesen);
    const std::string sBytes = LiesDatei(ordner.Datei("BENCH.SVE"));
    std::vector<CZeile> vZeilen;
    Zerlege(std::string_view(sBytes).substr(sBytes.find('\n') + 1), [&](const CZeile & zeile) {
        if (vZeilen.size() < 100'000) vZeilen.push_back(zeile);
    });

    for (auto _ : state) {
        auto & z = state.counters;
        const auto Bestes = [&](const char * pName, double dZeit) {
            const double dWert = dZeit / static_cast<double>(iHits);
            z[pName] = z.contains(pName) ? std::min<double>(z[pName], dWert) : dWert;
        };
        for (int i = 0; i < 5; ++i) {
            Bestes("schlicht_schreiben", SchlichtSchreiben(vZeilen, iHits, ordner.Datei("SCHLICHT")));
            Bestes("schreiben", Schreibe<CStdioFile>(accu));
            Bestes("schlicht_lesen", SchlichtLesen(ordner.Datei("BENCH.SVE")));
            CStatAccu frisch;
            Bestes("lesen", Lies<CStdioFile>(frisch));
            if (i > 0) continue;
            Bestes("bestand_schreiben", Schreibe<CDBStdioFile>(accu));
            Bestes("bestand_lesen", Lies<CDBStdioFile>(gelesen));
            CSchreiber<CDBStdioFile>::DeleteFileA(CLeser<CDBStdioFile>().GetDatFilename());
        }
        z["v_schreiben"] = z["schreiben"] / z["schlicht_schreiben"];
        z["v_lesen"] = z["lesen"] / z["schlicht_lesen"];
        z["byte_je_hit"] = static_cast<double>(sBytes.size()) / static_cast<double>(iHits);
        if (gelesen.m_vBehHits.size() != iHits) throw std::runtime_error("hits are missing");
    }
    dbDatabase.Verbinde(nullptr);
    dbDatabaseRO.Verbinde(nullptr);
}
BENCHMARK(BM_Datei)->Arg(10000)->Arg(100000)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
