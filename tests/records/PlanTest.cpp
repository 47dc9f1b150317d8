#include "orvostatbs/records/Plan.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/BehHitLine.h"

#include "support/Praxis.h"

namespace orvostat {

namespace {

class CPlanTest : public CPraxisTest {
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
