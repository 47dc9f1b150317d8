#include "orvostatbs/records/Plan.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/BehHitLine.h"

#include "Praxisfixture.h"

namespace orvostat {

namespace {

class CPlanTest : public CPraxisFixture {
protected:
    CPlanTest() {
        m_rPlan.m_PATNR = "4711";
        m_rPlan.m_PLANNR = "P1";
        m_rPlan.m_PLANART = "p";
        m_rPlan.m_PLANNUM = "60";
        m_rPlan.m_PLANSTATUS2 = "Z";
        m_rPlan.m_PLANDATUM = "20200303";
        m_rPlan.m_PLANPW = "e11234";
    }
    static CBehHitLine Hit(const CString & sPat, const CString & sPlan) {
        CBehHitLine hit;
        hit.PATNR = sPat;
        hit.PLANNR = sPlan;
        return hit;
    }

    CTPlan m_rPlan;
    CPlan m_plan;
};

TEST_F(CPlanTest, MovePlanNimmtDieZeileUndLaesstMerkerStehen) {
    m_plan.m_bPlanOk = false;
    m_plan.m_bMitLst5 = true;
    m_plan.m_MischPw = CDPw("e9999");
    m_plan.MovePlan(&m_rPlan, nullptr);
    EXPECT_EQ(m_plan.PATNR + m_plan.PLANNR + m_plan.m_sPlanArt + m_plan.m_sPlanFeld, "4711P1pZ"_t);
    EXPECT_EQ(m_plan.m_iKasProzent, 60);
    EXPECT_EQ(m_plan.m_sPlanDatum, CString("20200303"));
    EXPECT_EQ(CString(m_plan.m_PlanPw), CString("e11234"));
    EXPECT_EQ(CString(m_plan.m_MischPw), CString("e9999"));
    EXPECT_TRUE(m_plan.m_bPlanOk && m_plan.m_bMitLst5);
}

TEST_F(CPlanTest, NurParPlaeneSuchenDieLetztenStufen) {
    const struct {
        CString sPlan, sLst, sDatum, sLfd;
    } vLeistungen[] = {{"P1", "beva", "20220101", "01"},
                       {"P1", "beva", "20220601", "02"},
                       {"P1", "bevb", "20220301", "03"},
                       {"P2", "beva", "20220801", "05"}};
    for (const auto & leistung : vLeistungen) {
        Zeile<CTBill>([&](CTBill & b) {
            b.m_PATNR = "4711";
            b.m_PATBILL = "B" + leistung.sPlan;
            b.m_PLANNR = leistung.sPlan;
        });
        Zeile<CTBeh>([&](CTBeh & b) {
            b.m_PATNR = "4711";
            b.m_PATBILL = "B" + leistung.sPlan;
            b.m_LSTNR = leistung.sLst;
            b.m_DATUM = leistung.sDatum;
            b.m_SITZUNG = "a";
            b.m_LFDBEHEINTRAG = leistung.sLfd;
        });
    }
    const struct {
        CString sArt, sBevA, sBevB;
    } vFaelle[] = {
        {"4", "20220601a02"_t, "20220301a03"_t}, {"p", "20220601a02"_t, "20220301a03"_t}, {"z", "", ""}};
    CTBeh rBeh;
    for (const auto & fall : vFaelle) {
        CPlan plan;
        m_rPlan.m_PLANART = fall.sArt;
        plan.MovePlan(&m_rPlan, &rBeh);
        EXPECT_EQ(plan.m_sBevA, fall.sBevA) << fall.sArt.Utf8();
        EXPECT_EQ(plan.m_sBevB, fall.sBevB) << fall.sArt.Utf8();
    }
    m_rPlan.m_PLANART = "4";
    m_plan.m_sBevA = "alt";
    m_plan.m_sBevB = "B";
    m_plan.MovePlan(&m_rPlan, nullptr);
    EXPECT_EQ(m_plan.m_sBevA + m_plan.m_sBevB, "altB"_t) << "not asked for";
    m_rPlan.m_PLANNR = "P3";
    m_plan.MovePlan(&m_rPlan, &rBeh);
    EXPECT_EQ(m_plan.m_sBevA + m_plan.m_sBevB, "altB"_t) << "none";
}

TEST_F(CPlanTest, NichtBrauchbarerPlanBehaeltNurSeineNummern) {
    m_plan.MovePlan(&m_rPlan, nullptr);
    m_plan.MovePlanNotOk(Hit("815", "P7"));
    EXPECT_TRUE(m_plan == Hit("815", "P7") && m_plan == Hit("815 ", "P7  "));
    for (const auto & hit : {Hit("815", "P1"), Hit("4711", "P7"), Hit(" 815", "P7"), Hit("815", "")})
        EXPECT_FALSE(m_plan == hit) << hit.PATNR.Utf8() << hit.PLANNR.Utf8();
    EXPECT_TRUE(m_plan.m_PlanPw.IsEmpty());
    EXPECT_TRUE(m_plan.m_sPlanDatum.IsEmpty());
    EXPECT_FALSE(m_plan.m_bPlanOk);
    m_plan.Clear();
    EXPECT_TRUE(m_plan == Hit("815", ""));
    EXPECT_TRUE(m_plan.m_bPlanOk);
}

TEST_F(CPlanTest, MischPwSetztVierFelder) {
    m_plan.MovePlan(&m_rPlan, nullptr);
    m_plan.MovePlanForMischPw("815", "P7", "", CDPw("e10500"));
    EXPECT_EQ(m_plan.PATNR + m_plan.PLANNR + m_plan.m_sPlanArt, CString("815P7"));
    EXPECT_EQ(CString(m_plan.m_MischPw) + CString(m_plan.m_PlanPw), "e10500e11234"_t);
}

TEST_F(CPlanTest, MerkerWerdenNurGehoben) {
    const struct {
        CString sLstIn, sGoText;
        bool bLst5, bAbschlag;
    } vSchritte[] = {{"55", "555555", false, false}, // the mark would be the seventh character
                     {"1", "0000005", false, true},
                     {"5", "00000000", true, true},
                     {"", "", true, true}};
    for (const auto & schritt : vSchritte) {
        CBehHitLine hit;
        hit.LSTIN = schritt.sLstIn;
        hit.m_sGoText = schritt.sGoText;
        m_plan.WithLst5orAbschlag(hit);
        EXPECT_EQ(m_plan.m_bMitLst5, schritt.bLst5) << schritt.sLstIn.Utf8();
        EXPECT_EQ(m_plan.m_bMitAbschlag, schritt.bAbschlag) << schritt.sGoText.Utf8();
    }
}

TEST_F(CPlanTest, NeuerParPlanAbJuli2021) {
    const struct {
        CString sArt, sDatum;
        bool bNeu;
    } vFaelle[] = {{"4", "20210630", false},  {"4", "20210701", true},  {"p", "20220101", true},
                   {"4p", "20220101", false}, {"z", "20220101", false}, {"p", "", false}};
    for (const auto & fall : vFaelle) {
        m_plan.m_sPlanArt = fall.sArt;
        m_plan.m_sPlanDatum = fall.sDatum;
        EXPECT_EQ(m_plan.IsNewPARPlan(), fall.bNeu) << fall.sArt.Utf8() << ' ' << fall.sDatum.Utf8();
    }
}

TEST(BehErrors, MoveErrorNimmtDenEintrag) {
    CBehHitLine hit;
    hit.SITZUNG = 'a';
    hit.LFDBEHEINTRAG = "04";
    hit.GOART = 'k';
    hit.WSO_ERG = "9";
    CBehErrors fehler;
    EXPECT_EQ(fehler.SITZUNG, ' ');
    fehler.MoveError(hit, 8);
    EXPECT_EQ(fehler.SITZUNG + fehler.LFDBEHEINTRAG + fehler.GOART + fehler.WSO_ERG, CString("a04k9"));
    EXPECT_EQ(fehler.m_iFehler, 8);
    fehler.Clear();
    EXPECT_TRUE(fehler.SITZUNG == ' ' && fehler.GOART == 0 && fehler.LFDBEHEINTRAG.IsEmpty());
}

TEST(BehErrors, GleichheitFragtNichtNachDerSitzung) {
    const struct {
        const char * pName;
        void (*fAendere)(CBehHitLine &);
        bool bGleich;
    } vFaelle[] = {
        {"SITZUNG", [](CBehHitLine & h) { h.SITZUNG = 'c'; }, true},
        {"LFDBEHEINTRAG", [](CBehHitLine & h) { h.LFDBEHEINTRAG = "04"; }, true},
        {"GOART", [](CBehHitLine & h) { h.GOART = 'g'; }, true},
        {"WSO_ERG", [](CBehHitLine & h) { h.WSO_ERG = "1"; }, true},
        {"LSTNR", [](CBehHitLine & h) { h.LSTNR = "02"; }, true},
        {"PATNR", [](CBehHitLine & h) { h.PATNR = "4712"; }, false},
        {"DATUM", [](CBehHitLine & h) { h.DATUM = "20240103"; }, false},
        {"LSTIN", [](CBehHitLine & h) { h.LSTIN = "02"; }, false},
        {"KASKUERZEL", [](CBehHitLine & h) { h.KASKUERZEL = "AOK"; }, false},
        {"MFRDIG", [](CBehHitLine & h) { h.MFRDIG = "3"; }, false},
        {"WSO", [](CBehHitLine & h) { h.WSO = "7"; }, false},
    };
    for (const auto & fall : vFaelle) {
        CBehHitLine hit;
        CBehErrors a, b;
        a.MoveError(hit, FEHLER_GEBUEHR);
        fall.fAendere(hit);
        b.MoveError(hit, 6);
        EXPECT_EQ(a == b, fall.bGleich) << fall.pName;
        b = a;
        b.m_iFehler = 5;
        EXPECT_FALSE(a == b);
    }
}

} // namespace

} // namespace orvostat
