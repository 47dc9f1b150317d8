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

CBehHitLine Kassenhit(const CString & sDatum, const CString & sPat, char cKasArt, char cKasGrp, bool bFremd) {
    CBehHitLine hit = Hit(sDatum, "1", sPat, "A", {'k', "01", "e100"});
    hit.KASSENART = CString(cKasArt, cKasArt == 0 ? 0 : 1);
    hit.KASSENGRP = cKasGrp;
    hit.FREMDKASSE = bFremd;
    return hit;
}

TEST_F(Px100FTest, NormsAreThoseOfTheHitsDateUnlessThePeriodRunsOverAChange) {
    for (const char * pZeile :
         {"g GUELTIGAB=20240101 TEXT=Text RVO=1 VDAK=2 GESAMT=3 RVOMKG=4 VDAKMKG=5 GESAMTMKG=6",
          "g GUELTIGAB=20240701 TEXT=Text RVO=10 VDAK=20 GESAMT=30 RVOMKG=40 VDAKMKG=50 GESAMTMKG=60",
          "k GUELTIGAB=20240101 RVO=100 VDAK=200 GESAMT=300",
          "k GUELTIGAB=20240401 RVO=110 VDAK=210 GESAMT=310",
          "p GUELTIGAB=20240101 RVO=9 VDAK=9 GESAMT=9 RVOMKG=9 VDAKMKG=9 GESAMTMKG=9"})
        Schreibe(std::string("GOBUDGET LSTKUERZEL=K01 GOART=") + pZeile);
    const struct {
        CString sVon, sBis, sDatum;
        char cGoArt;
        bool bZweiter, bMkg, bMeldung;
        int iGesamt, iRvo;
    } aFaelle[] = {
        {"20240101", "20240630", "20240301", 'g', false, false, false, 3, 1},
        {"20240101", "20240630", "20240301", 'g', true, true, false, 6, 4},
        {"20240101", "20240630", "20240301", 'g', true, false, false, 0, 0},
        {"20240701", "20241231", "20240701", 'g', false, false, false, 30, 10},
        {"20230101", "20231231", "20231231", 'g', false, false, false, 0, 0}, // before the first norm
        {"20231231", "20240101", "20231231", 'g', false, false, true, 30, 10},
        {"20240101", "20240701", "20240301", 'g', false, false, true, 30, 10},
        {"20240101", "20240701", "20240301", 'k', false, false, true, 310, 110},
        {"20240101", "20240630", "20240331", 'k', false, false, false, 300, 100}, // of "k" alone no message
        {"20240101", "20240630", "20240401", 'k', false, false, false, 310, 110},
        {"20240101", "20240630", "20240401", 'p', false, false, false, 0, 0},
    };
    for (const auto & f : aFaelle) {
        dbMKGVersion = f.bMkg;
        CLSSum sum;
        m_rekorder.m_vPrompts.clear();
        sum.m_100F.LoadBudgets(f.sVon, f.sBis);
        EXPECT_EQ(sum.m_100F.m_bQuartalsuebergreifend, f.bMeldung);
        ASSERT_EQ(m_rekorder.m_vPrompts.size(), f.bMeldung ? 1u : 0u) << f.sVon.Utf8() << f.sBis.Utf8();
        if (f.bMeldung) {
            EXPECT_EQ(
                m_rekorder.m_vPrompts[0],
                (SPrompt{
                    SPrompt::HALT, "",
                    "Der ausgewählte Zeitraum ist quartalsübergreifend.\nDie Aufbereitung der KZV-Statistik "
                    "erfolgt mit den aktuell hinterlegten 100-Fall-Zahlen.\nMöchten Sie die Berücksichtung "
                    "der historischen 100-Fall-Zahlen, tragen Sie im Bereich Zeitraum das entsprechende "
                    "Quartal ein."_t,
                    6}));
        }
        sum.ClearAll(); // leaves norms and flag
        CBehHitLine hit = Kassenhit(f.sDatum, "1", '1', '1', false);
        hit.GOART = f.cGoArt;
        sum.Analyse100Fall("", {hit}, false, 0, true, false, f.bZweiter);
        CPx100F schlicht = sum.m_100F;
        schlicht.Clear();
        schlicht.MovePx100F(hit, "", true, true, false, f.bZweiter);
        for (const CPx100F * p : {&sum.m_100F, &schlicht}) {
            EXPECT_EQ(p->m_aSpalten[SPALTE_GESAMT].m_vLst[0].m_iF100Soll, f.iGesamt)
                << f.sDatum.Utf8() << f.cGoArt;
            EXPECT_EQ(p->m_aSpalten[SPALTE_RVO_PRIMAER].m_vLst[0].m_iF100Soll, f.iRvo);
        }
        EXPECT_EQ(sum.m_100F.m_mBudgets.contains('p'), f.cGoArt == 'p')
            << "an empty map for the kind of the hit";
    }
}

TEST_F(Px100FTest, Columns) {
    m_sum.m_100F.m_mBudgets['k']["20240101"] = {{"x", "", "9", "9", "9", {}, {}, {}},
                                                {"K01", "", "100", "200", "300", "1", "2", "3"},
                                                {"K01", "", "8", "8", "8", {}, {}, {}}};
    const struct {
        const char * pName;
        char cArt, cGrp;
        bool bFremd, bMit9, b9Extra;
        const char * pSpalten;
    } aFaelle[] = {
        {"RVO", '1', '1', false, false, false, "0:300 4:100 5:100 "},
        {"RVO foreign", '1', '1', true, false, true, "0:300 4:100 6:100 "},
        {"VDAK", '7', '2', false, true, true, "0:300 1:200 2:200 "},
        {"VDAK foreign", '8', '2', true, true, true, "0:300 1:200 3:200 "},
        {"no kind", 0, '1', false, true, true, "0:300 4:100 5:100 "},
        {"group 9 dropped", '1', '9', false, false, true, ""},
        {"group 9 with the others", '1', '9', false, true, false, "0:300 4:100 5:100 "},
        {"group 9 apart", '1', '9', true, true, true, "0:300 7:100 "},
        {"VDAK of group 9", '7', '9', false, true, true, "0:300 1:200 2:200 "},
    };
    for (const auto & f : aFaelle) {
        const CBehHitLine hit = Kassenhit("20240301", "1", f.cArt, f.cGrp, f.bFremd);
        m_sum.m_vFaelle.clear();
        m_sum.Analyse100Fall("", {hit}, false, 0, f.bMit9, f.b9Extra, false);
        CPx100F schlicht = m_sum.m_100F;
        schlicht.Clear();
        schlicht.MovePx100F(hit, "", true, f.bMit9, f.b9Extra, false);
        std::string s;
        std::string sSchlicht;
        for (std::size_t i = 0; i < SPALTEN_100F; ++i)
            for (auto [pPx, pText] : {std::pair{&m_sum.m_100F, &s}, {&schlicht, &sSchlicht}})
                for (const CLSLst & lst : pPx->m_aSpalten[i].m_vLst)
                    *pText += std::to_string(i) + ":" + std::to_string(lst.m_iF100Soll) + " ";
        EXPECT_EQ(s, f.pSpalten) << f.pName;
        EXPECT_EQ(sSchlicht, f.pSpalten) << f.pName;
        EXPECT_EQ(m_sum.m_vFaelle.size(), 1u) << "a dropped hit has its case noted";
    }
    CBehHitLine hit = Kassenhit("20240301", "1", '7', '1', false);
    hit.KASSENART = "78";
    m_sum.Analyse100Fall("", {hit}, false, 0, false, false, false);
    EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_VDAK].m_Gesamt.ANZAHL, 0) << "78 is no VDAK";
}

TEST_F(Px100FTest, CountsCasesAndDeviations) {
    m_sum.m_100F.m_mBudgets['k']["20240101"] = {{"K01", "", "8000", "x", "-5", {}, {}, {}}};
    m_sum.m_100F.m_mBudgets['k']["20240103"] = {
        {"K01", "", "1", "1", "1", {}, {}, {}}}; // too late for the lines
    std::vector<CBehHitLine> v{
        Kassenhit("20240101", "1", '1', '1', false), Kassenhit("20240102", "2", '7', '2', true),
        Kassenhit("20240103", "1", '1', '1', false), Kassenhit("20231231", "3", '1', '1', true),
        Kassenhit("20240104", "1", '1', '1', false), Kassenhit("20240104", "9", '1', '1', false)};
    v[2].GOSTATISTIKART = 0; // counts here
    v[3].LSTNR = "00";
    v[4].LSTIN.Empty();
    v[5].PRAXISNR = "9";
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
    m_sum.ClearAll();
    m_sum.Analyse100Fall("", {v[0], v[1]}, true, 4, false, false, false);
    EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_RVO].m_vLst[0].m_iAnzJe100Fall, 2500);
    m_sum.Analyse100Fall("", {v[0], v[1]}, true, 0, false, false, false);
    EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_RVO].m_vLst[0].m_iAnzJe100Fall, 0);
    EXPECT_EQ(m_sum.m_100F.m_aSpalten[SPALTE_RVO].m_iAnzFaelle, 0) << "the cases of the first run are known";
    m_sum.Analyse100Fall("", {}, false, 0, false, false, false);
    EXPECT_EQ(Spalten(), "");
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
}

TEST_F(Px100FTest, MainAndSubsidiaryServicesAndRatios) {
    CKasArt100F::s_vVerhLst.resize(2);
    CKasArt100F::s_vVerhLst[0].m_sZaehler = " K1 K01 "_t;
    CKasArt100F::s_vVerhLst[0].m_sNenner = " K01 K2 "_t;
    CKasArt100F::s_vVerhLst[1].m_sNenner = "K01"; // without its blanks it is not found
    std::string sNeben;
    for (const char cGoArt : std::string("123456789kgpqaub"))
        for (const char cSub : std::string("5678turnsopq4")) {
            CKasArt100F spalte;
            spalte.Clear();
            EXPECT_EQ(Text(spalte.m_vVerh), "0:0 0:0 ");
            spalte.MoveKasArt100F(Hit("", "", "", "", {cGoArt, "01", "", 'a', cSub}), false, 0);
            EXPECT_EQ(spalte.m_Nebenleistung.ANZAHL + spalte.m_Hauptleistung.ANZAHL, 100);
            if (spalte.m_Nebenleistung.ANZAHL == 100) sNeben += {cGoArt, cSub, ' '};
            EXPECT_EQ(Text(spalte.m_vVerh), "100:100 0:0 ");
        }
    std::string sSoll; // "5", "6" and "9" are main services
    for (const char cGoArt : std::string("123478"))
        for (const char cSub : std::string("5678turnsopq4"))
            sSoll += {cGoArt, cSub, ' '};
    EXPECT_EQ(sNeben, sSoll + "k5 k6 k7 k8 g5 g6 g7 g8 pt pu pr pn ps po pp pq qt qu qr qn qs qo qp qq ");

    CKasArt100F spalte;
    spalte.Clear();
    CKasArt100F::s_vVerhLst.resize(1);
    spalte.MoveKasArt100F(Hit("", "", "", "", {'k', "1", ""}), false, 0);
    EXPECT_EQ(Text(spalte.m_vVerh), "100:0 0:0 ") << "the shorter one counts";
    CKasArt100F::s_vVerhLst.resize(3);
    CKasArt100F::s_vVerhLst[2].m_sNenner = " K1 ";
    spalte.MoveKasArt100F(Hit("", "", "", "", {'k', "1", ""}), false, 0);
    EXPECT_EQ(Text(spalte.m_vVerh), "200:0 0:0 ");
}

} // namespace

} // namespace orvostat
