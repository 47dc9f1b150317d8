// The hundred-case columns: norms by date, columns, ratios, bad input.
#include "Ausdruck.h"
#include "support/Praxis.h"

namespace orvostat {

namespace {

class Px100FTest : public CPraxisTest {
protected:
    ~Px100FTest() override { CKasArt100F::s_vVerhLst.clear(); }
    // The columns that have hits, as "column:cases/line texts".
    [[nodiscard]] std::string Spalten() const {
        std::string s;
        for (std::size_t i = 0; i < SPALTEN_100F; ++i) {
            const CKasArt100F & spalte = m_sum.m_100F.m_aSpalten[i];
            if (spalte.m_Gesamt.ANZAHL == 0) continue;
            s += std::to_string(i) + ":" + std::to_string(spalte.m_iAnzFaelle);
            for (const CLSLst & lst : spalte.m_vLst)
                s += " / " + Text(lst);
            s += '\n';
        }
        return s;
    }

    CLSSum m_sum;
};

TEST_F(Px100FTest, NormsAreThoseOfTheHitsDateUnlessThePeriodRunsOverAChange) {
    for (const char * pZeile :
         {"g GUELTIGAB=20240101 RVO=1 VDAK=2 GESAMT=3 RVOMKG=4 VDAKMKG=5 GESAMTMKG=6",
          "g GUELTIGAB=20240701 RVO=10 VDAK=20 GESAMT=30", "k GUELTIGAB=20240101 RVO=100 VDAK=200 GESAMT=300",
          "k GUELTIGAB=20240401 RVO=110 VDAK=210 GESAMT=310",
          "p GUELTIGAB=20240101 RVO=9 VDAK=9 GESAMT=9 RVOMKG=9 VDAKMKG=9 GESAMTMKG=9"})
        Schreibe(std::string("GOBUDGET LSTKUERZEL=K01 GOART=") + pZeile);
    const SPrompt meldung{
        SPrompt::HALT, "",
        "Der ausgewählte Zeitraum ist quartalsübergreifend.\nDie Aufbereitung der KZV-Statistik erfolgt mit "
        "den aktuell hinterlegten 100-Fall-Zahlen.\nMöchten Sie die Berücksichtung der historischen "
        "100-Fall-Zahlen, tragen Sie im Bereich Zeitraum das entsprechende Quartal ein."_t,
        6};
    const struct {
        CString sVon, sBis, sDatum;
        char cGoArt;
        bool bZweiter, bMkg, bMeldung;
        const char * pSoll; // all insurers, statutory ones
    } aFaelle[] = {
        {"20240101", "20240630", "20240301", 'g', false, false, false, "3,1"},
        {"20240101", "20240630", "20240301", 'g', true, true, false, "6,4"},
        {"20240101", "20240630", "20240301", 'g', true, false, false, ","},
        {"20240701", "20241231", "20240701", 'g', false, false, false, "30,10"},
        {"20230101", "20231231", "20231231", 'g', false, false, false, ","}, // before the first norm
        {"20231231", "20240101", "20231231", 'g', false, false, true, "30,10"},
        {"20240101", "20240701", "20240301", 'k', false, false, true, "310,110"},
        {"20240101", "20240630", "20240331", 'k', false, false, false, "300,100"}, // of "k" alone no message
        {"20240101", "20240630", "20240401", 'k', false, false, false, "310,110"},
        {"20240101", "20240630", "20240401", 'p', false, false, false, ","},
    };
    for (const auto & f : aFaelle) {
        dbMKGVersion = f.bMkg;
        CLSSum sum;
        m_rekorder.m_vPrompts.clear();
        sum.m_100F.LoadBudgets(f.sVon, f.sBis);
        EXPECT_EQ(m_rekorder.m_vPrompts, std::vector<SPrompt>(f.bMeldung ? 1 : 0, meldung));
        sum.ClearAll(); // leaves norms and flag
        CBehHitLine hit = Hit("LSTNR=01 KASSENART=1 KASSENGRP=1");
        hit.DATUM = f.sDatum;
        hit.GOART = f.cGoArt;
        sum.Analyse100Fall("", {hit}, false, 0, true, false, f.bZweiter);
        EXPECT_EQ(Elemente<int>({sum.m_100F.m_aSpalten[SPALTE_GESAMT].m_vLst[0].m_iF100Soll,
                                 sum.m_100F.m_aSpalten[SPALTE_RVO_PRIMAER].m_vLst[0].m_iF100Soll}),
                  f.pSoll)
            << &f - aFaelle;
    }
}

TEST_F(Px100FTest, Columns) {
    CPx100F & px = m_sum.m_100F;
    px.m_mBudgets['k']["20240101"] = {{"x", "", "9", "9", "9", {}, {}, {}},
                                      {"K01", "", "100", "200", "300", "1", "2", "3"},
                                      {"K01", "", "8", "8", "8", {}, {}, {}}};
    const struct {
        const char * pHit;
        bool bMit9, b9Extra;
        const char * pSpalten;
    } aFaelle[] = {
        {"KASSENART=1 KASSENGRP=1", false, false, "0:300 4:100 5:100 "},
        {"KASSENART=1 KASSENGRP=1 FREMDKASSE=1", false, true, "0:300 4:100 6:100 "},
        {"KASSENART=7 KASSENGRP=2", true, true, "0:300 1:200 2:200 "},
        {"KASSENART=8 KASSENGRP=2 FREMDKASSE=1", true, true, "0:300 1:200 3:200 "},
        {"KASSENART=78 KASSENGRP=1", true, true, "0:300 4:100 5:100 "},
        {"KASSENART=1 KASSENGRP=9", false, true, ""},
        {"KASSENART=1 KASSENGRP=9", true, false, "0:300 4:100 5:100 "},
        {"KASSENART=1 KASSENGRP=9 FREMDKASSE=1", true, true, "0:300 7:100 "},
        {"KASSENART=7 KASSENGRP=9", true, true, "0:300 1:200 2:200 "},
    };
    for (const auto & f : aFaelle) {
        const CBehHitLine hit = Hit(std::string("LSTNR=01 ") + f.pHit);
        m_sum.m_vFaelle.clear();
        for (const bool bSchlicht : {false, true}) {
            px.Clear();
            if (bSchlicht)
                px.MovePx100F(hit, "", true, f.bMit9, f.b9Extra, false);
            else
                m_sum.Analyse100Fall("", {hit}, false, 0, f.bMit9, f.b9Extra, false);
            std::string s;
            for (std::size_t i = 0; i < SPALTEN_100F; ++i)
                for (const CLSLst & lst : px.m_aSpalten[i].m_vLst)
                    s += std::to_string(i) + ":" + std::to_string(lst.m_iF100Soll) + " ";
            EXPECT_EQ(s, f.pSpalten) << &f - aFaelle << bSchlicht;
        }
        EXPECT_EQ(m_sum.m_vFaelle.size(), 1u) << "a dropped hit has its case noted";
    }
}

TEST_F(Px100FTest, CountsCasesAndDeviations) {
    m_sum.m_100F.m_mBudgets['k']["20240101"] = {{"K01", "", "8000", "x", "-5", {}, {}, {}}};
    m_sum.m_100F.m_mBudgets['k']["20240103"] = {
        {"K01", "", "1", "1", "1", {}, {}, {}}}; // too late for the lines
    const std::string s = "LSTNR=01 KASSENART=1 KASSENGRP=1 ";
    std::vector<CBehHitLine> v{Hit(s),
                               Hit(s + "DATUM=20240102 PATNR=2 KASSENART=7 KASSENGRP=2 FREMDKASSE=1"),
                               Hit(s + "DATUM=20240103 GOSTATISTIKART="), // counts here
                               Hit(s + "DATUM=20231231 PATNR=3 FREMDKASSE=1"),
                               Hit(s + "LSTIN="),
                               Hit(s + "PRAXISNR=9")};
    v[3].LSTNR = "00"; // with the same short code
    m_sum.Analyse100Fall(" 1", v, false, 0, false, false, false);
    EXPECT_EQ(
        Spalten(),
        R"(0:3 / 01 K01 300 3,00 0 soll-5 abw-20010000 anz7500 je100:10000 diff3 / 00 K01 100 1,00 0 anz2500 je100:3333 diff1
1:1 / 01 K01 100 1,00 0 anz2500 je100:10000 diff1
3:1 / 01 K01 100 1,00 0 anz2500 je100:10000 diff1
4:2 / 01 K01 200 2,00 0 soll8000 abw2500 anz5000 je100:10000 / 00 K01 100 1,00 0 anz2500 je100:5000 diff1
5:1 / 01 K01 200 2,00 0 soll8000 abw15000 anz5000 je100:20000 diff1
6:1 / 00 K01 100 1,00 0 anz2500 je100:10000 diff1
)") << "a norm that is no number is none; so is one of a date before the first";
    EXPECT_EQ(m_sum.m_100F.m_sPraxis, CString(" 1"));
    for (const int iFaelle : {4, 0}) { // given ones; the second time the cases are known
        m_sum.Analyse100Fall("", {v[0], v[1]}, true, iFaelle, false, false, false);
        EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_RVO].m_vLst[0].m_iAnzJe100Fall, iFaelle == 4 ? 2500 : 0);
    }
    EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_RVO].m_iAnzFaelle, 0);
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
}

TEST_F(Px100FTest, MainAndSubsidiaryServicesAndRatios) {
    auto & vVerh = CKasArt100F::s_vVerhLst;
    vVerh.resize(2);
    vVerh[0].m_sZaehler = " K1 K01 "_t;
    vVerh[0].m_sNenner = " K01 K2 "_t;
    vVerh[1].m_sNenner = "K01"; // without its blanks it is not found
    std::string sNeben, sSoll;
    for (const char cGoArt : std::string("123456789kgpqaub"))
        for (const char cSub : std::string("5678turnsopq4")) {
            CKasArt100F spalte;
            spalte.Clear();
            CBehHitLine hit = Hit("LSTNR=01");
            hit.GOART = cGoArt;
            hit.GOSUBART = cSub;
            spalte.MoveKasArt100F(hit, false, 0);
            EXPECT_EQ(spalte.m_Nebenleistung.ANZAHL + spalte.m_Hauptleistung.ANZAHL, 100);
            if (spalte.m_Nebenleistung.ANZAHL == 100) sNeben += {cGoArt, cSub, ' '};
            if (std::string("123478").find(cGoArt) != std::string::npos) sSoll += {cGoArt, cSub, ' '};
            EXPECT_EQ(Text(spalte.m_vVerh), "100:100 0:0 ");
        }
    EXPECT_EQ(sNeben, sSoll + "k5 k6 k7 k8 g5 g6 g7 g8 pt pu pr pn ps po pp pq qt qu qr qn qs qo qp qq ")
        << "5, 6 and 9 are main services";
    CKasArt100F spalte;
    spalte.Clear();
    for (const std::size_t iVerh : {1u, 3u}) { // the shorter list counts
        vVerh.resize(iVerh);
        vVerh.back().m_sNenner = " K2 K1 ";
        spalte.MoveKasArt100F(Hit(""), false, 0);
    }
    EXPECT_EQ(Text(spalte.m_vVerh), "200:200 0:0 ");
}

} // namespace

} // namespace orvostat
