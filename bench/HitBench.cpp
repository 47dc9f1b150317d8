// What a hit costs: building it from rows in memory, keeping it, and the texts that it is made of.
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/Stammdaten.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace orvostat {

namespace {

// The rows that a hit is built from, as many of each as stay in a processor's nearer memory during a run.
struct SZeilen {
    std::vector<CTBeh> vBeh;
    std::vector<CBill> vBill;
    std::vector<CVDesc> vVDesc;
    std::vector<CKas> vKas;
    std::vector<CGOStruct> vGO;
};

constexpr int ZEILEN = 256; // of each kind

CTBeh MakeBeh(int i) {
    CTBeh beh;
    beh.m_PATNR = RightFix(itoc(1000 + i / 4), 10);
    beh.m_DATUM = "20240" + itoc(101 + i % 28 + 100 * (i % 9));
    beh.m_SITZUNG = "a";
    beh.m_LFDBEHEINTRAG = itoc(i);
    beh.m_BEHANDLERNR = RightFix(itoc(1 + i % 6), 3);
    beh.m_ERFASSER = "HL";
    beh.m_TEETH = i % 3 == 0 ? CString("16") : i % 3 == 1 ? CString("11 12 13 21") : CString();
    beh.m_ANZAHL = "x" + itoc(100 * (1 + i % 3));
    beh.m_LSTIN = "13a";
    beh.m_LSTNR = i % 2 == 0 ? CString("13a") : CString("2060");
    beh.m_GOART = i % 2 == 0 ? CString("k") : CString("q");
    beh.m_FAKTOR = i % 2 == 0 ? CString() : CString("23000");
    beh.m_BETRAG = "e" + itoc(3000 + i);
    beh.m_USTKEY = "0";
    beh.m_LAGE = i % 3 == 0 ? CString("mod") : CString();
    beh.m_UHRZEIT = "09:15";
    beh.m_TEXTART = i % 8 == 0 ? CString("b") : CString();
    beh.m_TEXT = i % 8 == 0 ? "Füllung an Zahn 16 erneuert, Patient wünscht Komposit"_t : CString();
    beh.m_PATBILL = itoc(i % 40);
    beh.m_LFDBEFENTRY = itoc(i % 10);
    beh.m_ABRJJME = "202401";
    return beh;
}

CBill MakeBill(int i) {
    CBill bill;
    bill.PATBILL = itoc(i % 40);
    bill.PRAXISNR = "01";
    bill.ABRART = "ckzp"[i % 4];
    bill.KASSENABR = i % 2 == 0;
    bill.PLANNR = i % 4 == 2 ? CString("3") : CString();
    bill.m_sFakt1 = "2024-001" + itoc(10 + i % 80);
    return bill;
}

CVDesc MakeVDesc(int i) {
    CVDesc vdesc;
    vdesc.m_sVDescNr = itoc(1 + i % 3);
    vdesc.VDABDATUM = "20240101";
    vdesc.EINLESEDATUM = "20240110";
    vdesc.KASKUERZEL = "AOK" + itoc(10 + i % 60);
    vdesc.VNACHWEIS = "j";
    vdesc.MFRDIG = "1";
    vdesc.WSO = "1";
    vdesc.WSO_ERG = "1";
    return vdesc;
}

CKas MakeKas(int i) {
    CKas kas;
    kas.KASSTATISTIKART = itoc(1 + i % 9);
    kas.KASMEDSTATISTIKART = "1";
    kas.KASSENART = "P";
    kas.KASSENPWGRP = "VDAK";
    kas.KASSENGRP = '1';
    return kas;
}

CGOStruct MakeGO(int i) {
    CTGO row;
    row.m_GOART = i % 2 == 0 ? CString("k") : CString("q");
    row.m_LSTNR = i % 2 == 0 ? CString("13a") : CString("2060");
    row.m_LSTKUERZEL = "F1";
    row.m_GOSUBART = "2";
    row.m_DRUCKBILD = "01";
    row.m_PWLART = "a";
    row.m_STATART = "x";
    row.m_GEBPKT = itoc(3200 + i);
    row.m_EINFACHSATZ = "e2964";
    row.m_GOTEXT = "Kavität füllen, einflächig"_t;
    row.m_F100AEVWERT = "12";
    row.m_STDFAKTOR = "23000";
    CGOStruct go;
    go.MoveGO(&row, false, nullptr);
    return go;
}

const SZeilen & Zeilen() {
    static const SZeilen s_zeilen = [] {
        SZeilen z;
        for (int i = 0; i < ZEILEN; ++i) {
            z.vBeh.push_back(MakeBeh(i));
            z.vBill.push_back(MakeBill(i));
            z.vVDesc.push_back(MakeVDesc(i));
            z.vKas.push_back(MakeKas(i));
            z.vGO.push_back(MakeGO(i));
        }
        return z;
    }();
    return s_zeilen;
}

// The moves alone, without look-ups and selection: what of a run's hit (CLauf::Baue) is the records' own cost.
void BewegeZeilen(CBehHitLine & hit, SZeilen & z, std::size_t i) {
    hit.Clear();
    hit.MoveBeh(&z.vBeh[i]);
    hit.MoveBill(z.vBill[i]);
    hit.MoveVDesc(z.vVDesc[i]);
    hit.MoveKas(z.vKas[i]);
    hit.MoveGO(z.vGO[i]);
}

// A practice whose schedule has changed iGeaenderte services, none, or as many as after a new fee agreement.
void VerbindePraxis(int iGeaenderte) {
    auto pSpeicher = std::make_shared<CMemorySpeicher>();
    dbDatabase.Verbinde(pSpeicher);
    dbDatabaseRO.Verbinde(pSpeicher);
    for (int i = 0; i < iGeaenderte; ++i) {
        CTGoPunkte punkte(dbDatabase);
        punkte.m_GOART = "k";
        punkte.m_LSTNR = i == 0 ? CString("13a") : itoc(i);
        punkte.m_PKTAB = "20240401";
        punkte.m_PUNKTE = "3400";
        punkte.Write();
    }
}

void HitBauen(benchmark::State & state) {
    VerbindePraxis(static_cast<int>(state.range(0)));
    SZeilen zeilen = Zeilen();
    CBehHitLine hit;
    std::size_t i = 0;
    for (auto _ : state) {
        BewegeZeilen(hit, zeilen, i++ % ZEILEN);
        benchmark::DoNotOptimize(hit);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(HitBauen)->ArgName("geaenderte_leistungen")->Arg(0)->Arg(200);

void PatNameBauen(benchmark::State & state) {
    CBehHitLine hit;
    const CString asNamen[] = {"Müller-Lüdenscheidt"_t, "Schmidt"};
    int i = 0;
    for (auto _ : state) { // eight treatments of a patient behind each other
        hit.MovePatName(asNamen[i++ / 8 % 2], "Maximiliane"_t);
        benchmark::DoNotOptimize(hit);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(PatNameBauen);

std::size_t ResidenteBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t iGesamt = 0, iResident = 0;
    statm >> iGesamt >> iResident;
    return iResident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Finished hits copied into a vector that has its room, as a run does; the growth of the resident set counts all.
void HitsBehalten(benchmark::State & state) {
    VerbindePraxis(0);
    const std::size_t iAnzahl = std::getenv("ORVOSTATBS_BENCH_SMALL") ? 10'000 : 1'000'000;
    SZeilen zeilen = Zeilen();
    std::size_t iBytes = 0;
    for (auto _ : state) {
        const std::size_t iVorher = ResidenteBytes();
        std::vector<CBehHitLine> vHits;
        vHits.reserve(iAnzahl);
        CBehHitLine hit;
        for (std::size_t i = 0; i < iAnzahl; ++i) {
            BewegeZeilen(hit, zeilen, i % ZEILEN);
            hit.MovePatName(i / 8 % 2 == 0 ? "Müller-Lüdenscheidt"_t : "Schmidt"_t, "Maximiliane"_t);
            vHits.push_back(hit);
        }
        benchmark::DoNotOptimize(vHits.data());
        iBytes = ResidenteBytes() - iVorher;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(iAnzahl));
    state.counters["bytes_per_hit"] = static_cast<double>(iBytes) / static_cast<double>(iAnzahl);
    state.counters["sizeof_hit"] = sizeof(CBehHitLine);
}
BENCHMARK(HitsBehalten)->Unit(benchmark::kMillisecond)->Iterations(1);

// The three forms of a text: short, digits, free.
CString Text(std::int64_t iForm) {
    return iForm == 0 ? CString("13a") : iForm == 1 ? CString("20240115") : "Kavität füllen, einflächig"_t;
}

void TexteKopieren(benchmark::State & state) {
    const std::vector<CString> vQuelle(1000, CString(Text(state.range(0)).Sicht().Text()));
    std::vector<CString> vZiel(vQuelle.size());
    for (auto _ : state) {
        vZiel = vQuelle;
        benchmark::DoNotOptimize(vZiel.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(vQuelle.size()));
}
BENCHMARK(TexteKopieren)->ArgName("form")->DenseRange(0, 2);

// Equal texts that do not share a block, the dearest case.
void TexteVergleichen(benchmark::State & state) {
    std::vector<CString> vTexte;
    for (int i = 0; i < 1000; ++i)
        vTexte.push_back(CString(Text(state.range(0)).Sicht().Text()));
    const CString sGesucht = Text(state.range(0));
    for (auto _ : state) {
        int iGleiche = 0;
        for (const CString & s : vTexte)
            iGleiche += s == sGesucht ? 1 : 0;
        benchmark::DoNotOptimize(iGleiche);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(vTexte.size()));
}
BENCHMARK(TexteVergleichen)->ArgName("form")->DenseRange(0, 2);

} // namespace

} // namespace orvostat

BENCHMARK_MAIN();
