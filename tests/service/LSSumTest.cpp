// The service statistic: one list of hits worked by hand, its rules, its progress, and that its indexes
// change nothing.
#include "Ausdruck.h"
#include "support/Rekorder.h"

#include <random>

namespace orvostat {

namespace {

class LSSumTest : public CHostTest {
protected:
    CLSSum m_sum;
};

// Three payers, three buckets, the deducted set in a bucket and outside of any, two treaters, two quarters.
std::vector<CBehHitLine> SechsHits() {
    const std::string AOK =
        " KASKUERZEL=AOK KASSENART=p KASSENGRP=1 KASSTATISTIKART=sAOK KASMEDSTATISTIKART=mAOK "
        "PATNR=1 BEHANDLERNR=__1";
    const std::string DKV =
        " KASKUERZEL=DKV KASSENART=p KASSENGRP=9 KASSTATISTIKART=sDKV KASMEDSTATISTIKART=mDKV "
        "PATNR=2 BEHANDLERNR=__2 KASSENABR=0";
    const std::string BKK =
        " KASKUERZEL=BKK KASSENART=8 KASSENGRP=2 KASSTATISTIKART=sBKK KASMEDSTATISTIKART=mBKK "
        "PATNR=3 BEHANDLERNR=__2 FREMDKASSE=1";
    return {
        Hit("DATUM=20240110 LSTNR=01 BETRAG=e10000 PUNKTE=1800" + AOK),
        Hit("DATUM=20240110 GOART=7 LSTNR=0010 BETRAG=e2000 GOSTATISTIKART=l ANZAHL=200 MWSTSATZ=7" + AOK),
        Hit("DATUM=20240212 GOART=p LSTNR=2060 BETRAG=e8000 ZUSCHLAG=e500 ISPRIVATPATIENT=1" + DKV),
        Hit("DATUM=20240410 GOART=q LSTNR=M1 BETRAG=e3000 GOSTATISTIKART=m GOSUBART=o" + DKV),
        Hit("DATUM=20240411 GOART=g LSTNR=k1 BETRAG=e5000 GOSTATISTIKART=k PUNKTE=33 ANZAHL=150 DTAGRUND=4" +
            AOK),
        Hit("DATUM=20240411 LSTNR=01 BETRAG=e2500 GOSUBART=6 PUNKTE=1800" + BKK)};
}

TEST_F(LSSumTest, SixHitsByHand) {
    m_sum.Analyse("", SechsHits(), nullptr);
    // The group of "M1" is measured against m_SumLM, 21.40, in which it is not: 140.19 %.
    EXPECT_EQ(Text(m_sum.m_Praxis), R"(Praxis , 5 Fälle, Arten 0a 0k 0m T7
  Gesamt 01 K01 750 311,40 3649 g4:150
  PrivatStd 2060 K2060 100 85,00 0 p4048
  KasseStd 01 K01 200 125,00 3600 p5952
  KasseK k1 Kk1 150 50,00 49 p10000 g4:150
  KasseLM 0010 K0010 200 21,40 0 p10000
  SumStd 01 K01 300 210,00 3600
  SumK k1 Kk1 150 50,00 49 g4:150
  SumLM 0010 K0010 200 21,40 0
  PrivatGes 2060 K2060 100 85,00 0 p2730
  KasseGes 01 K01 550 196,40 3649 p6307 g4:150
  SonstGes M1 KM1 100 30,00 0 p963
  SonstAbz M1 KM1 100 30,00 0
  PrivatNetto 2060 K2060 100 85,00 0 p3315
  KasseNetto k1 Kk1 450 171,40 1849 p6685 g4:150
  SumNetto k1 Kk1 550 256,40 1849 g4:150
  [0Ka] 01 K01 200 125,00 3600 p5952 | p5952
  [0Kk] k1 Kk1 150 50,00 49 p10000 g4:150 | p10000 g4:150
  [0T7] 0010 K0010 200 21,40 0 p10000 | p10000
  [1Pa] 2060 K2060 100 85,00 0 p4048 | p4048
  [2Pm] M1 KM1 100 30,00 0 p14019 | p14019
)");
    EXPECT_EQ(Alle(m_sum.m_vBeh), R"(Behandler   1, 0 Fälle
  Gesamt k1 Kk1 450 171,40 1849 g4:150
  KasseStd 01 K01 100 100,00 1800 b10000 p4762
  KasseK k1 Kk1 150 50,00 49 b10000 p10000 g4:150
  KasseLM 0010 K0010 200 21,40 0 b10000 p10000
  SumStd 01 K01 100 100,00 1800
  SumK k1 Kk1 150 50,00 49 g4:150
  SumLM 0010 K0010 200 21,40 0
  KasseGes k1 Kk1 450 171,40 1849 b10000 p5504 g4:150
  KasseNetto k1 Kk1 450 171,40 1849 b10000 p6685 g4:150
  SumNetto k1 Kk1 450 171,40 1849 g4:150
  [0Ka] 01 K01 100 100,00 1800 b10000 p4762 | b10000 p8000
  [0Kk] k1 Kk1 150 50,00 49 b10000 p10000 g4:150 | b10000 p10000 g4:150
  [0T7] 0010 K0010 200 21,40 0 b10000 p10000 | b10000 p10000
Behandler   2, 0 Fälle
  Gesamt 01 K01 300 140,00 1800
  PrivatStd 2060 K2060 100 85,00 0 b7727 p4048
  KasseStd 01 K01 100 25,00 1800 b2273 p1190
  SumStd 01 K01 200 110,00 1800
  PrivatGes 2060 K2060 100 85,00 0 b6071 p2730
  KasseGes 01 K01 100 25,00 1800 b1786 p803
  SonstGes M1 KM1 100 30,00 0 b2143 p963
  SonstAbz M1 KM1 100 30,00 0
  PrivatNetto 2060 K2060 100 85,00 0 b10000 p3315
  SumNetto 2060 K2060 100 85,00 0
  [0Ka] 01 K01 100 25,00 1800 b2273 p1190 | b2273 p2000
  [1Pa] 2060 K2060 100 85,00 0 b7727 p4048 | b7727 p10000
  [2Pm] M1 KM1 100 30,00 0 p14019 | p10000
)");
    EXPECT_EQ(Text(m_sum.m_vFaelle), "20242/1/2/DKV// 20242/1/1/AOK// 20242/1/3/BKK// ");
    EXPECT_EQ(Text(m_sum.m_vBehTage) + '/' + Text(m_sum.m_vPraxisTage), "0:4 1:2 2:3 /0:4 1:4 ");
    EXPECT_EQ(m_sum.GetAnzStatLines(), 1 + 5 + (1 + 3) + (1 + 3) + 1);
    EXPECT_TRUE(m_sum.m_vKas.empty() && m_sum.m_vKasData.empty());
    EXPECT_EQ(Text(m_sum.m_KasSum) + Text(m_sum.m_KasSel), Text(CLSKasLstGrp()) + Text(CLSKasLstGrp()));

    m_sum.Analyse("", SechsHits(), nullptr); // adds up
    EXPECT_EQ(Text(m_sum.m_Praxis.m_Gesamt), "01 K01 1500 622,80 7298 g4:300");
    EXPECT_EQ(Text(m_sum.m_vBehTage), "0:4 1:2 2:3 0:4 1:2 2:3 ");
    m_sum.ClearAll();
    EXPECT_EQ(Text(m_sum.m_Praxis) + Alle(m_sum.m_vBeh) + Text(m_sum.m_vFaelle), Text(CLSPxLstGrp()));
}

TEST_F(LSSumTest, TheInsurersOfTheSixHitsByHand) {
    for (const CBehHitLine & hit : SechsHits())
        m_sum.AddKasData(hit);
    m_sum.AnalyseKasDataSum("", m_sum.m_vKasData);
    EXPECT_EQ(Alle(m_sum.m_vKas), R"(Kasse  1 AOK sAOK mAOK p 1, 2 Fälle
  Gesamt k1 Kk1 450 171,40 1849 g4:150
  Sum k1 Kk1 450 171,40 1849 g4:150
  KasseGes k1 Kk1 450 171,40 1849 b10000 p5504 g4:150
  [0Ka] 01 K01 100 100,00 1800 b5834 p3211 | b5834 p8000
  [0Kk] k1 Kk1 150 50,00 49 b2917 p1606 g4:150 | b2917 p10000 g4:150
  [0T7] 0010 K0010 200 21,40 0 b1249 p687 | b1249 p10000
Kasse  1 BKK sBKK mBKK 8 2 fremd, 1 Fälle
  Gesamt 01 K01 100 25,00 1800
  Sum 01 K01 100 25,00 1800
  KasseGes 01 K01 100 25,00 1800 b10000 p803
  [0Ka] 01 K01 100 25,00 1800 b10000 p803 | b10000 p2000
Kasse  1 DKV sDKV mDKV p 9, 2 Fälle
  Gesamt M1 KM1 200 115,00 0
  Sum M1 KM1 200 115,00 0
  [1Pa] 2060 K2060 100 85,00 0 b7391 p2730 | b7391 p10000
  [2Pm] M1 KM1 100 30,00 0 b2609 p963 | b2609 p10000
)");
    // Each new group brings its kind again, "a" twice; four sums hold the whole. The counts by reason do not
    // move in a merge, those of a copied line do.
    EXPECT_EQ(Text(m_sum.m_Praxis), R"(Praxis  1, 5 Fälle, Arten 07 0a 0k 1a 2m
  Gesamt 01 K01 750 311,40 3649
  KasseStd 01 K01 750 311,40 3649 p10000
  SumStd 01 K01 750 311,40 3649
  KasseGes 01 K01 750 311,40 3649 p10000
  [0Ka] 01 K01 200 125,00 3600 p4014 | p4014
  [0Kk] k1 Kk1 150 50,00 49 g4:150 | g4:150
  [0T7] 0010 K0010 200 21,40 0 |
  [1Pa] 2060 K2060 100 85,00 0 p2730 | p2730
  [2Pm] M1 KM1 100 30,00 0 |
)");
    const std::string sKasSum = Text(m_sum.m_KasSum);
    EXPECT_EQ(sKasSum.substr(0, sKasSum.find("  [0Kk]")), R"(Kasse  1 BKK sBKK mBKK 8 2 fremd, 5 Fälle
  Gesamt 01 K01 750 311,40 3649
  Sum 01 K01 750 311,40 3649
  KasseGes 01 K01 550 196,40 3649 b6307 p6307
  [0Ka] 01 K01 200 125,00 3600 b4014 p4014 | b4014 p10000
)");
    const std::string sPraxis = Text(m_sum.m_Praxis);
    m_sum.m_vKasData.insert(m_sum.m_vKasData.begin(), CLSKasLstGrp())->PRAXISNR = " 2"; // of no interest
    m_sum.AnalyseKasDataSum(m_sum.m_Praxis.m_sPraxis, m_sum.m_vKasData);
    EXPECT_EQ(Text(m_sum.m_Praxis), sPraxis) << "the practice is begun anew";
    EXPECT_EQ(m_sum.m_KasSum.m_Gesamt.ANZAHL, 1500) << "the total of the insurers is not";
    m_sum.AnalyseKasDataSum("3", m_sum.m_vKasData);
    EXPECT_EQ(Alle(m_sum.m_vKas) + Text(m_sum.m_Praxis), Text(CLSPxLstGrp()));
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
}

TEST_F(LSSumTest, TheSumOfASelectionOfInsurers) {
    for (const CBehHitLine & hit : SechsHits())
        m_sum.AddKasData(hit);
    m_sum.AnalyseKasDataSum("", m_sum.m_vKasData);
    CLSKasLstGrp & result = m_sum.m_KasSel;
    const auto Waehle = [&](const KAS_GRP_SEL & sel, const CString & sKuerzel) {
        m_sum.AnalyseForKasSel("9", m_sum.m_vKasData, result, m_sum.m_vFaelle, sel, sKuerzel, false, false);
        return (result.KASKUERZEL + itoc(result.m_iAnzFaelle)).Utf8();
    };
    Waehle({"P", nullptr, STATKASGRP_KEINE, "p", "", nullptr}, "");
    EXPECT_EQ(Text(result).substr(0, Text(result).find("  [0Ka]")), R"(Kasse  1 P sDKV mDKV p 9, 4 Fälle
  Gesamt M1 KM1 650 286,40 1849
  Sum M1 KM1 650 286,40 1849
  KasseGes   450 171,40 1849 b5985 p5504
)") << "the last insurer names the sums, also one that has none";
    EXPECT_EQ(Text(result.m_vLstGrp[0].m_vLst[0]), "01 K01 100 100,00 1800 b3492 p8000");
    EXPECT_TRUE(m_sum.m_vFaelle.empty());
    EXPECT_EQ(Waehle({"ALLE", nullptr, STATKASGRP_KEINE, nullptr, nullptr, nullptr}, "BKK"), "BKK1");
    EXPECT_EQ(Waehle({}, result.KASKUERZEL), "BKK1") << "by its own name";
    EXPECT_EQ(Waehle({}, ""), "5") << "null texts";
    EXPECT_EQ(Waehle({}, "-"), "0");
}

TEST(LSSum, AnInsurerInASelection) {
    constexpr auto G0 = STATKASGRP_KEINE, G1 = STATKASGRP_1, G2 = STATKASGRP_2, G9 = STATKASGRP_9;
    const struct {
        CString sArt;
        STATKASGRP eGrp;
        CString sStat;
        bool bFremd;
        KAS_GRP_SEL sel;
        const char * pSoll; // neither, group 1, group 2, both let foreign ones in
    } aFaelle[] = {
        {"p", G1, "s", true, {}, "1111"},
        {"P", G0, "", false, {"", "", G0, "px", "", ""}, "1111"}, // the capital of the first letter
        {"p", G0, "", false, {"", "", G0, "P", "", ""}, "0000"},
        {"PP", G0, "", false, {"", "", G0, "p", "", ""}, "0000"},
        {"Ä", G0, "", false, {"", "", G0, "\xE4", nullptr, nullptr}, "1111"},
        {"p", G2, "", false, {"", "", G1, "", "", ""}, "0000"},
        {"p", G1, "T", false, {"", "", G1, "", "t", ""}, "1111"},
        {"p", G1, "t", false, {"", "", G1, "", "T", ""}, "0000"},
        {"p", G1, "", true, {"", "", G1, "", "", ""}, "0101"}, // foreign ones
        {"p", G2, "", true, {nullptr, nullptr, G2, nullptr, "", ""}, "0011"},
        {"p", G9, "", true, {"", "", G9, "", "", ""}, "1111"},
        {"p", G1, "", true, {"", "", G1, "p", "", ""}, "1111"},
        {"p", G1, "s", true, {"", "", G1, "", "s", ""}, "0101"},
        {"p", G1, "", true, {"", "", G1, "", "", "1"}, "1111"}, // nothing but foreign ones
        {"p", G1, "", false, {"", "", G1, "", "", "1"}, "0000"},
        {"p", G1, "", true, {"", "", G0, "", "", "0"}, "0000"},
    };
    for (const auto & f : aFaelle) {
        std::string s;
        for (int i = 0; i < 4; ++i)
            s += std::to_string(
                CLSSum::KasInSel(f.sArt, f.eGrp, f.sStat, f.bFremd, f.sel, i % 2 == 1, i >= 2));
        EXPECT_EQ(s, f.pSoll) << &f - aFaelle;
    }
}

TEST_F(LSSumTest, HitsOfTheStatistic) {
    std::string s;
    for (const char * pHit : {"ak01", "\0k01", "nk01", "ng01", "np01", "nq01", "nu01", "ab31", "ae31", "af31",
                              "ah31", "ak31", "ak0"}) {
        CBehHitLine hit = Hit("");
        hit.GOSTATISTIKART = pHit[0];
        hit.GOART = pHit[1];
        hit.GOSUBART = pHit[2];
        hit.LSTIN = CString(pHit + 3);
        s += m_sum.TestBehSelOk(hit, "") ? '1' : '0';
    }
    EXPECT_EQ(s, "1000001000010");
    EXPECT_TRUE(m_sum.TestBehSelOk(SechsHits()[0], " 1") && !m_sum.TestBehSelOk(SechsHits()[0], "1"));
}

TEST_F(LSSumTest, LookUps) {
    m_sum.Analyse("", SechsHits(), nullptr);
    const auto & vGrp = m_sum.m_vBeh[0].m_vLstGrp;
    m_sum.m_vBeh[0].m_vLstGrp[0].m_Sum.ANTEILKAS = 7;
    const auto Wert = [&](char cZahler, char cGoTyp, char cStat) {
        return m_sum.GetLstGrpBetrag(vGrp, cZahler, cGoTyp, cStat).ToExt(0, false).Utf8() + ' ' +
               Elemente<int>({m_sum.FindLSLstGrp(vGrp, cZahler, cGoTyp, cStat),
                              m_sum.GetLstGrpPunkte(vGrp, cZahler, cGoTyp, cStat),
                              m_sum.GetLstGrpBehAnteil(vGrp, cZahler, cGoTyp, cStat),
                              m_sum.GetLstGrpKasAnteil(vGrp, cZahler, cGoTyp, cStat),
                              m_sum.GetLstGrpPxAnteil(vGrp, cZahler, cGoTyp, cStat)});
    };
    EXPECT_EQ(Wert('0', 'K', 'a') + Wert('1', 'K', 'a'), "100,00 ,1800,10000,7,4762 -1,,,,");
    EXPECT_EQ(Wert('0', 'P', 'k'), "50,00 1,49,10000,10000,10000") << "K and P are one class";
    std::vector<CLSKasLstGrp> vKas(3);
    vKas[0].PRAXISNR = vKas[2].PRAXISNR = " 1";
    vKas[0].KASKUERZEL = vKas[2].KASKUERZEL = "AOK";
    EXPECT_EQ(m_sum.FindKas(vKas, SechsHits()[0]), 2) << "from the end";
    CLSLstGrp & pxGrp = m_sum.m_Praxis.m_vLstGrp.emplace_back(m_sum.m_Praxis.m_vLstGrp[0]);
    pxGrp.m_vLst[0].BETRAG = CDBetrag("e100");
    CLSLstGrp grp = vGrp[0];
    m_sum.DoLstGrpAnteil(grp, CLSLst(), CLSLst());
    EXPECT_EQ(grp.m_vLst[0].ANTEILPRAXIS, 8000) << "in the first of two equal groups";
}

TEST_F(LSSumTest, ProgressIsShownAboveThousandHitsAndMayBeCancelled) {
    std::vector<CBehHitLine> v(1000, SechsHits()[0]);
    m_sum.Analyse("", v, nullptr);
    EXPECT_TRUE(m_rekorder.m_vBoxTexte.empty() && m_rekorder.m_vSchritte.empty());
    v.push_back(v[0]);
    m_rekorder.m_bBoxGeht = false;
    m_sum.Analyse("", v, nullptr);
    EXPECT_EQ(m_sum.m_Praxis.m_Gesamt.ANZAHL, 200100) << "no box, no question";
    EXPECT_TRUE(m_rekorder.m_vSchritte.empty() && m_rekorder.m_vPrompts.empty());
    m_rekorder.m_bBoxGeht = true;
    m_sum.Analyse("", v, nullptr);
    EXPECT_EQ(m_rekorder.m_vBoxTexte.back(), "Auswertung gestartet... / Bitte ein wenig Geduld..."_t);
    EXPECT_EQ(m_rekorder.m_vSchritte.size(), 1001u);
    EXPECT_EQ(m_rekorder.m_vSchritte.front(), std::make_pair(0L, 1001L));
    EXPECT_FALSE(m_rekorder.m_bWartezeiger || m_rekorder.m_bBoxOffen);

    CLSSum sum;
    m_rekorder.m_vSchritte.clear();
    m_rekorder.m_iAbbruchAb = 4;
    m_rekorder.m_vAntworten = {false, true};
    sum.Analyse("", v, nullptr);
    const SPrompt frage{SPrompt::FRAGE, "Vorgang abbrechen..."_t,
                        "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0};
    EXPECT_EQ(m_rekorder.m_vPrompts, (std::vector{frage, frage}));
    EXPECT_EQ(Text(sum.m_Praxis.m_Gesamt), "01 K01 400 400,00 7200") << "what was added stays";
    EXPECT_EQ(Text(sum.m_vBeh[0].m_KasseGes), "01 K01 400 400,00 7200") << "without shares";
    EXPECT_TRUE(sum.m_vBehTage.empty() && sum.m_vPraxisTage.empty());
    EXPECT_TRUE(m_rekorder.m_bWartezeiger && !m_rekorder.m_bBoxOffen) << "the wait cursor is left on";
}

TEST_F(LSSumTest, OnePracticeAndTreatersThatAreNoNumber) {
    std::vector<CBehHitLine> v = SechsHits();
    v[0].PRAXISNR = " 2";
    v[1].BEHANDLERNR = "Dr";
    v[2].BEHANDLERNR = "1";
    m_sum.Analyse(" 1", v, nullptr);
    EXPECT_EQ(m_sum.m_Praxis.m_sPraxis, CString(" 1"));
    EXPECT_EQ(m_sum.m_Praxis.m_Gesamt.ANZAHL, 650);
    // The first day counts under 0 only; "  1" and "1" are one number.
    EXPECT_EQ(Text(m_sum.m_vBehTage) + Text(m_sum.m_vPraxisTage), "0:4 1:2 2:2 0:4 1:4 ");
    EXPECT_EQ(m_sum.m_vBeh.at(3).BEHANDLERNR, CString("Dr")) << "in the order of their bytes";
}

// The shares that docs/leistungsstatistik.md works out.
TEST_F(LSSumTest, TheDocumentedExample) {
    m_sum.Analyse("",
                  {Hit("BEHANDLERNR=1 LSTNR=01 BETRAG=e3000"), Hit("BEHANDLERNR=2 LSTNR=01 BETRAG=e7000"),
                   Hit("BEHANDLERNR=2 LSTNR=13a BETRAG=e10000")},
                  nullptr);
    std::string sAnteile;
    const auto Zeige = [&](const CLSLst & lst) {
        sAnteile += std::to_string(lst.ANTEILBEH) + '/' + std::to_string(lst.ANTEILPRAXIS) + ' ';
    };
    for (const CLSLst & lst : m_sum.m_Praxis.m_vLstGrp[0].m_vLst)
        Zeige(lst);
    for (const CLSBehLstGrp & beh : m_sum.m_vBeh) {
        Zeige(beh.m_vLstGrp[0].m_Sum);
        for (const CLSLst & lst : beh.m_vLstGrp[0].m_vLst)
            Zeige(lst);
    }
    EXPECT_EQ(sAnteile, "0/5000 0/5000 10000/1500 10000/3000 10000/8500 4118/7000 5882/10000 ");
}

// ---- Indexes

// Random hits by patient within quarters; with bMark some of them in the old currency and some in both.
std::vector<CBehHitLine> Zufallshits(unsigned iSaat, bool bMark) {
    std::mt19937 zufall(iSaat);
    const auto W = [&](unsigned n) { return static_cast<int>(zufall() % n); };
    std::vector<CBehHitLine> v;
    for (int i = 0; i < 900; ++i) {
        CBehHitLine hit;
        hit.DATUM = itoc(20010101 + i / 300 * 300 + W(3) * 100 + W(28));
        hit.BEHANDLERNR = RightFix(itoc(W(5)), 3);
        hit.PATNR = itoc(i % 300 / 4);
        hit.KASKUERZEL = "K" + itoc(W(4));
        hit.GOART = "kgpqubT7129"[W(11)];
        hit.LSTNR = hit.LSTIN = itoc(W(40));
        hit.BETRAG = CDBetrag("e" + itoc(W(9000)));
        hit.GOSTATISTIKART = "acklmnx7"[W(8)];
        hit.GOSUBART = "6oq "[W(4)];
        hit.PUNKTE = W(5000);
        hit.ANZAHL = W(300);
        hit.KASSENABR = W(2) == 0;
        hit.ISPRIVATPATIENT = W(2) == 0;
        hit.PRAXISNR = itoc(1 + W(2));
        hit.ABRMERKMAL = "on  "[W(4)];
        hit.DTAGRUND = "45 "[W(3)];
        hit.MWSTSATZ = W(3) * 7;
        if (W(3) == 0) hit.ZUSCHLAG = CDBetrag((bMark && W(9) == 0 ? ' ' : 'e') + itoc(W(900)));
        if (bMark && W(3) == 0) hit.BETRAG = CDBetrag(" " + itoc(W(9000)));
        if (W(9) == 0) hit.BETRAG.Empty();
        hit.LSTKUERZEL = "S" + hit.LSTNR; // no two the same, so that sorting has one result
        v.push_back(hit);
    }
    return v;
}

// The steps of a run with the records' own operations, which search through their vectors.
void AnalyseSchlicht(CLSSum & sum, const std::vector<CBehHitLine> & vHits) {
    for (const CBehHitLine & hit : vHits) {
        if (!sum.TestBehSelOk(hit, "")) continue;
        sum.m_Praxis.MovePxLstGrp(hit, "", FindFallImQuartal(sum.m_vFaelle, hit) == -1);
        if (sum.FindBeh(hit) < 0) sum.m_vBeh.emplace_back().BEHANDLERNR = hit.BEHANDLERNR;
        sum.m_vBeh[static_cast<std::size_t>(sum.FindBeh(hit))].MoveBehLstGrp(hit);
    }
    sum.DoPraxisAnteile();
    sum.DoBehandlerAnteile();
}

TEST_F(LSSumTest, ARunGivesWhatItsStepsGive) {
    for (const bool bMark : {false, true})
        for (const unsigned iSaat : {1u, 2u, 3u}) {
            CLSSum schlicht;
            for (const unsigned i : {0u, 10u}) { // the second run adds to the sorted records of the first
                const std::vector<CBehHitLine> v = Zufallshits(iSaat + i, bMark);
                m_sum.Analyse("", v, nullptr);
                AnalyseSchlicht(schlicht, v);
                EXPECT_EQ(Text(m_sum.m_Praxis), Text(schlicht.m_Praxis)) << iSaat;
                EXPECT_EQ(Alle(m_sum.m_vBeh), Alle(schlicht.m_vBeh)) << iSaat;
                EXPECT_EQ(Text(m_sum.m_vFaelle), Text(schlicht.m_vFaelle)) << iSaat;
            }
            EXPECT_EQ(m_sum.m_Praxis.m_Gesamt.BETRAG.GetWaehrung(),
                      schlicht.m_Praxis.m_Gesamt.BETRAG.GetWaehrung());
            m_sum.ClearAll();
        }
}

TEST_F(LSSumTest, InsurersAreFoundWhateverHappensToTheVectors) {
    CLSSum schlicht;
    int i = 0;
    for (const CBehHitLine & hit : Zufallshits(7, true)) {
        m_sum.AddKasData(hit);
        auto & vKas = schlicht.m_vKasData;
        const int iKas = schlicht.FindKas(vKas, hit);
        CLSKasLstGrp & kas = iKas < 0 ? vKas.emplace_back() : vKas[static_cast<std::size_t>(iKas)];
        kas.MoveKasLstGrp(hit, FindFallImQuartal(schlicht.m_vFaelle, hit) == -1);
        for (CLSSum * pSum : {&m_sum, &schlicht}) {
            auto & v = pSum->m_vKasData;
            if (i % 50 == 10) std::reverse(v.begin(), v.end());
            if (i % 50 == 20) std::reverse(v[0].m_vLstGrp.begin(), v[0].m_vLstGrp.end());
            if (i % 50 == 30) std::reverse(v[0].m_vLstGrp[0].m_vLst.begin(), v[0].m_vLstGrp[0].m_vLst.end());
            if (i % 50 == 35)
                for (CLSLstGrp & grp : v.back().m_vLstGrp)
                    grp.m_vLst.clear();
            if (i % 50 == 40) v.push_back(v.front());
            if (i % 50 == 41) v.erase(v.begin());
            if (i % 50 == 45) pSum->m_vFaelle.clear();
            if (i % 300 == 299) pSum->m_vKasData.clear();
            if (i % 100 == 99) *pSum = CLSSum(*pSum);
        }
        ++i;
        ASSERT_EQ(Alle(m_sum.m_vKasData), Alle(schlicht.m_vKasData)) << i;
    }
    EXPECT_EQ(Text(m_sum.m_vFaelle), Text(schlicht.m_vFaelle));

    // Another run leaves as many cases at the same place, but others.
    m_sum.ClearAll();
    for (const char * pPat : {"PATNR=1", "PATNR=2"})
        m_sum.AddKasData(Hit(pPat));
    const std::vector<CBehHitLine> v = {Hit("PATNR=3 DATUM=20240401"), Hit("PATNR=4 DATUM=20240401")};
    m_sum.Analyse("", v, nullptr);
    m_sum.AddKasData(v[0]);
    EXPECT_EQ(m_sum.m_vKasData[0].m_iAnzFaelle, 2);
    EXPECT_EQ(m_sum.m_vFaelle.size(), 2u);
}

// ---- Cases

TEST(Fall, WhatMakesACaseAndAnEntry) {
    const struct {
        std::string sFelder;
        int iFall, iMitAbrArt;
    } aHits[] = {
        {"", -1, -2},
        {"DATUM=20240331 PRAXISNR=_01 PATNR=_4711_", 0, 0},
        {"ABRART=z PRAXISNR=65537", 0, -1},
        {"ABRART=z", 0, 1},
        {"PRAXISNR=2", -1, -2},
        {"KASKUERZEL=a", -1, -2},
        {"MFRDIG=3", -1, -2},
        {"WSO=9", -1, -2},
        {"PATNR=4294971007", -1, -2},
        {"DATUM=20240401", -1, -2},
        {"DATUM=kaputt PATNR=4294971007", -1, -2},
    };
    std::vector<CFallJeQuartal> vFaelle, vMitAbrArt;
    CLSSum sum;
    for (const auto & f : aHits) {
        const CBehHitLine hit = Hit("PATNR=4711 KASKUERZEL=A MFRDIG=1 WSO=1 ABRART=c " + f.sFelder);
        EXPECT_EQ(FindFallImQuartal(vFaelle, hit), f.iFall) << f.sFelder;
        EXPECT_EQ(FindFallImQuartalMitAbrArt(vMitAbrArt, hit), f.iMitAbrArt) << f.sFelder;
        EXPECT_TRUE(f.iFall == 0 || vFaelle.back().m_Fall == hit);
        sum.m_Praxis.m_iAnzFaelle = 0;
        sum.Analyse("", {hit}, nullptr);
        EXPECT_EQ(sum.m_Praxis.m_iAnzFaelle, f.iFall == 0 ? 0 : 1) << f.sFelder;
    }
    EXPECT_EQ(Text(vFaelle), "/1/4294971007/A/1/1c ") << "a date without quarter is a quarter";
    CLastFall fall;
    fall.m_iMerker1 = 1;
    fall.m_bMerker = true;
    fall.m_iMerker2 = 2;
    fall.MoveNewFall(Hit("PATNR=5"));
    EXPECT_EQ(Werte(fall.m_iMerker1, fall.m_bMerker, fall.m_iMerker2, fall.PATNR), "1|1|2|5");
}

} // namespace

} // namespace orvostat
