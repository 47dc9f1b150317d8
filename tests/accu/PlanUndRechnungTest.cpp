#include "accu/AccuTest.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <random>
#include <tuple>

namespace orvostat {

namespace {

class PlanUndRechnungTest : public CAccuTest {
protected:
    PlanUndRechnungTest() { m_accu.m_BehHit.PATNR = "work"; }

    // The gate for m_hit.
    bool Tor(char cAbrArt, const CString & sPlanNr, bool bOhne22a = false, bool bParMarken = false,
             bool bParBeva = false) {
        m_hit.PATNR = "1";
        m_hit.ABRART = cAbrArt;
        m_hit.PLANNR = sPlanNr;
        return m_accu.OnlyForZEorKFOorPAROk(&m_plan, m_vPlaene, m_hit, bOhne22a, bParMarken, bParBeva, &m_beh,
                                            m_iPos);
    }
    // The codes of the errors so far; each is one of the work hit.
    std::vector<int> Fehler() const {
        std::vector<int> v;
        for (const CBehErrors & fehler : m_accu.m_vBehErrors) {
            EXPECT_EQ(fehler.PATNR, "work"_t);
            v.push_back(fehler.m_iFehler);
        }
        return v;
    }
    static void SchreibePlan(const CString & sNr, const CString & sArt, const CString & sNum = "",
                             const CString & sStatus2 = "", const CString & sPar22a = "") {
        Schreibe<CTPlan>({"1", sNr, sArt, "", "", sStatus2, sNum, "", "", sPar22a});
    }

    CTPlan m_plan{dbDatabaseRO};
    CTBeh m_beh{dbDatabaseRO};
    CBehHitLine m_hit;
    std::vector<CPlan> m_vPlaene;
    int m_iPos = 99;
};

using VFehler = std::vector<int>;

} // namespace

// ---- plans

TEST_F(PlanUndRechnungTest, StateOfAPlan) {
    const struct {
        CString sArt, sStatus, sSubArt, sNum, sStatus2;
        std::string sGut; // Z denture, M additional costs, P private, K orthodontic, A any orthodontic
    } aFaelle[] = {
        {"2", "", "", "60", "4", "Z"}, {"3", "", "", "1", "4", "Z"},    {"2", "", "", "0", "4", ""},
        {"2", "", "", "60", "3", ""},  {"23", "4", "1", "60", "4", ""}, {"", "4", "1", "60", "4", ""},
        {"2", "4", "1", "", "", "M"},  {"3", "7", "5", "", "", "M"},    {"2", "4", "2", "", "", ""},
        {"2", "4", "", "", "", ""},    {"2", "5", "3", "", "", ""},     {"4", "7", "4", "", "", ""},
        {"2", "1", "1", "", "", "P"},  {"3", "3", "", "60", "4", "ZP"}, {"2", "12", "", "", "", ""},
        {"8", "1", "", "1", "", "KA"}, {"9", "", "", "", "", "A"},      {"89", "", "", "1", "", ""},
    };
    for (const auto & fall : aFaelle) {
        m_plan.m_PLANART = fall.sArt;
        m_plan.m_PLANSTATUS = fall.sStatus;
        m_plan.m_PLANSUBART = fall.sSubArt;
        m_plan.m_PLANNUM = fall.sNum;
        m_plan.m_PLANSTATUS2 = fall.sStatus2;
        std::string sGut;
        if (m_accu.IsZEPlanOK(&m_plan)) sGut += 'Z';
        if (m_accu.IsMehrkostenPlanOK(&m_plan)) sGut += 'M';
        if (m_accu.IsZEPrivatPlanOK(&m_plan)) sGut += 'P';
        if (m_accu.IsKFOPlanOK(&m_plan)) sGut += 'K';
        if (m_accu.IsKFOPlan(&m_plan)) sGut += 'A';
        EXPECT_EQ(sGut, fall.sGut) << &fall - aFaelle;
    }
}

TEST_F(PlanUndRechnungTest, WithoutPlanNumber) {
    for (const char cAbrArt : {'c', 'e', 'm', '5', '\0', 'k'})
        EXPECT_TRUE(Tor(cAbrArt, "")) << cAbrArt;
    EXPECT_EQ(Fehler(), VFehler());
    for (const char cAbrArt : {'z', 'p', '6', '7', '8', '9'}) {
        m_accu.m_vBehErrors.clear();
        EXPECT_FALSE(Tor(cAbrArt, "")) << cAbrArt;
        EXPECT_EQ(Fehler(), VFehler{9}) << cAbrArt;
    }
    EXPECT_EQ(m_iPos, -1);
    EXPECT_TRUE(m_vPlaene.empty());
}

TEST_F(PlanUndRechnungTest, APlanIsJudgedByTheKindOfBilling) {
    SchreibePlan("ze", "2", "60", "4");
    SchreibePlan("kfo", "8", "80");
    SchreibePlan("par", "4");
    SchreibePlan("22a", "4", "", "", "1");
    const struct {
        char cAbrArt;
        CString sPlan;
        bool bOhne22a, bOk;
    } aFaelle[] = {
        {'z', "ze", true, true},   {'z', "kfo", false, false}, {'k', "kfo", true, true},
        {'k', "ze", false, false}, {'p', "par", true, true},   {'9', "22a", false, true},
        {'p', "22a", true, false}, {'7', "22a", true, false},  {'p', "ze", false, true},
        {'c', "weg", true, true},
    };
    for (const auto & fall : aFaelle) {
        m_vPlaene.clear();
        EXPECT_EQ(Tor(fall.cAbrArt, fall.sPlan, fall.bOhne22a), fall.bOk)
            << fall.cAbrArt << fall.sPlan.Utf8();
    }
    EXPECT_EQ(Fehler(), VFehler());
}

TEST_F(PlanUndRechnungTest, APlanIsReadAndReportedOnce) {
    SchreibePlan("gut", "2", "60", "4");
    SchreibePlan("roh", "2");
    const std::tuple<const char *, int, bool> aSchritte[] = {
        {"weg", -1, true}, {"gut", 1, true},    {"roh", -1, true},  {"gut", 1, false},
        {"weg", 0, false}, {"roh  ", 2, false}, {"gut ", 1, false},
    };
    for (const auto & [pPlan, iPos, bGelesen] : aSchritte) {
        SCOPED_TRACE(pPlan);
        EXPECT_EQ(Tor('z', pPlan), *pPlan == 'g');
        EXPECT_EQ(m_iPos, iPos);
        EXPECT_EQ(HatGelesen(), bGelesen);
        EXPECT_EQ(Fehler(), VFehler{8});
        m_accu.m_BehHit.DATUM = "20240102"; // would be an error of its own
    }
    EXPECT_EQ(m_vPlaene[1].m_iKasProzent, 60);
    EXPECT_EQ(m_vPlaene[2].PLANNR, "roh"_t);
    m_vPlaene.push_back(m_vPlaene[1]);
    EXPECT_TRUE(Tor('z', "gut"));
    EXPECT_EQ(m_iPos, 3) << "the last of two counts";
}

// Whatever a caller does with his vectors, the answers are those of a walk from the end.
TEST_F(PlanUndRechnungTest, ASearchAnswersLikeAWalkThroughTheVector) {
    std::mt19937 zufall(1);
    const auto Wurf = [&](std::size_t iMax) { return static_cast<std::ptrdiff_t>(zufall() % iMax); };
    const auto Neuer = [&] {
        CPlan plan;
        plan.PATNR = "1";
        plan.PLANNR = itoc(Wurf(300)) + (Wurf(9) == 0 ? "  " : "");
        return plan;
    };
    std::vector<CPlan> v, w;
    const std::function<void()> aAenderungen[] = {
        [&] { v.push_back(Neuer()); },
        [&] { v.resize(v.size() + 30, Neuer()); },
        [&] { v.erase(v.begin() + Wurf(v.size())); },
        [&] { v.insert(v.begin() + Wurf(v.size()), Neuer()); },
        [&] { v[static_cast<std::size_t>(Wurf(v.size()))] = Neuer(); },
        [&] { v.front().MovePlanForMischPw("1", Neuer().PLANNR, "", CDPw()); },
        [&] { std::swap(v.front(), v.back()); },
        [&] { std::reverse(v.begin(), v.end()); },
        [&] { v.swap(w); },
        [&] { std::generate_n(std::back_inserter(w = {}), v.size(), Neuer); },
        [&] { v = std::vector<CPlan>(v.size(), Neuer()); }, // often where the former ones stood
        [&] { w = std::exchange(v, w); },
        [&] { m_accu = CStatAccu(m_accu); },
        [&] { v.clear(); },
    };
    for (int i = 0; i < 6000; ++i) {
        const std::size_t iAuswahl = v.empty()        ? 2
                                     : v.size() > 400 ? std::size(aAenderungen)
                                                      : std::size(aAenderungen) - 1;
        aAenderungen[Wurf(iAuswahl)]();
        for (const std::vector<CPlan> * pV : {&v, &w}) {
            m_hit.PATNR = "1 ";
            m_hit.PLANNR = Neuer().PLANNR;
            const auto it = std::find_if(pV->rbegin(), pV->rend(), [&](const CPlan & plan) {
                return TrimRight(plan.PLANNR) == TrimRight(m_hit.PLANNR);
            });
            ASSERT_EQ(m_accu.FindPlan(*pV, m_hit), pV->rend() - it - 1) << i;
        }
    }
}

TEST_F(PlanUndRechnungTest, PeriodontalHitsTakeAFinerKind) {
    // The last "beva" of plan "mit" is the entry 002 of visit "a" on 20240301.
    const struct {
        char cAbrArt;
        CString sPlan, sLst, sDatum;
        char cSitzung;
        CString sLfd;
        char cMarken, cBeva; // the kind by each of the two flags
    } aFaelle[] = {
        {'p', "mit", "p200", "20240301", 'a', "002", '6', '6'},
        {'p', "mit", "p200", "20240301", 'a', "003", '6', '7'},
        {'p', "mit", "p200", "20240301", 0, "b", '6', '7'},
        {'p', "mit", "p200", "20240301", ' ', "003", '6', '6'}, // a blank stands before "a"
        {'p', "mit", "upta", "20240302", 0, "", '7', '8'},
        {'p', "mit", "uptg", "20240302", 'a', "", '7', '8'},
        {'p', "mit", "upta1", "20240302", 'a', "", '7', '8'},
        {'p', "mit", "uptg1", "20240302", 'a', "", '6', '7'},
        {'p', "mit", "upt", "20240302", 'a', "", '6', '7'},
        {'p', "mit", "uptc", "20240201", 'a', "", '7', '6'},
        {'p', "ohne", "uptc", "20240302", 'a', "", '7', '6'},
        {'8', "mit", "p200", "20240201", 'a', "", '8', '8'},
        {'9', "mit", "uptc", "20240302", 'a', "", '9', '9'},
    };
    SchreibePlan("mit", "4");
    SchreibePlan("ohne", "4");
    Schreibe<CTBill>({.m_PATNR = "1", .m_PATBILL = "7", .m_PLANNR = "mit"});
    for (const char * pDatum : {"20240101", "20240301"})
        Schreibe<CTBeh>({.m_PATNR = "1",
                         .m_DATUM = pDatum,
                         .m_SITZUNG = "a",
                         .m_LFDBEHEINTRAG = "002",
                         .m_LSTNR = "beva",
                         .m_PATBILL = "7"});
    for (const auto & fall : aFaelle) {
        const auto Kind = [&](bool bParMarken, bool bParBeva) {
            m_hit.LSTNR = fall.sLst;
            m_hit.DATUM = fall.sDatum;
            m_hit.SITZUNG = fall.cSitzung;
            m_hit.LFDBEHEINTRAG = fall.sLfd;
            EXPECT_TRUE(Tor(fall.cAbrArt, fall.sPlan, false, bParMarken, bParBeva));
            return m_hit.ABRART;
        };
        SCOPED_TRACE(&fall - aFaelle);
        m_vPlaene.clear();
        EXPECT_EQ(Kind(false, true), fall.cBeva) << "plan met for the first time";
        EXPECT_EQ(Kind(true, true), fall.cBeva);
        EXPECT_EQ(Kind(true, false), fall.cMarken);
        EXPECT_EQ(Kind(false, false), fall.cAbrArt);
    }
}

TEST_F(PlanUndRechnungTest, ARefusedPlanMarksFromTheSecondHitOn) {
    EXPECT_FALSE(Tor('p', "weg", false, true));
    EXPECT_EQ(m_hit.ABRART, 'p');
    EXPECT_FALSE(Tor('p', "weg", false, true));
    EXPECT_EQ(m_hit.ABRART, '6');
}

// ---- bills and owners

TEST_F(PlanUndRechnungTest, ABillIsReadOnce) {
    Schreibe<CTBill>({.m_PATNR = "1", .m_PATBILL = "7", .m_PRAXISNR = " 1"});
    for (const auto & [pPatNr, pPatBill] : {std::pair("", "7"), {"1", ""}, {"1", " "}, {"  ", "7"}})
        EXPECT_EQ(m_accu.GetBill(pPatNr, pPatBill), nullptr);
    EXPECT_TRUE(m_accu.m_mapBill.empty());
    EXPECT_EQ(m_accu.FindBill("1", "7"), nullptr);
    EXPECT_EQ(m_accu.m_mapBill.count("1"), 1U) << "one who was asked for has a list";
    EXPECT_FALSE(HatGelesen());
    EXPECT_EQ(m_accu.GetBill("1", "8"), nullptr);
    const CBill * pBill = m_accu.GetBill("1", "7");
    ASSERT_NE(pBill, nullptr);
    EXPECT_EQ(pBill->PRAXISNR, " 1"_t);
    EXPECT_TRUE(HatGelesen());
    EXPECT_EQ(m_accu.GetBill("1", "7"), pBill);
    EXPECT_EQ(m_accu.GetBill("1 ", "7  "), pBill) << "numbers are keys";
    EXPECT_EQ(m_accu.GetBill(" 1", "7"), nullptr);
    EXPECT_TRUE(HatGelesen());
    EXPECT_EQ(m_accu.FindBill("2", "7"), nullptr);
    EXPECT_FALSE(HatGelesen());
    std::vector<CBill> & vBills = m_accu.m_mapBill["1"];
    vBills.push_back(vBills[0]);
    EXPECT_EQ(m_accu.FindBill("1", "7"), &vBills[1]) << "the last of two counts";
    for (int i = 0; i < 200; ++i)
        vBills.emplace_back().PATBILL = itoc(i % 100);
    for (const int iAb : {0, 100, 0}) { // the rows from there on are moved to the front
        std::rotate(vBills.begin() + 2, vBills.begin() + 2 + iAb, vBills.end());
        vBills[2 + 50].PATBILL += " ";
        EXPECT_EQ(m_accu.FindBill("1", "50 "), &vBills[2 + 150]);
        vBills.resize(2 + 151);
        EXPECT_EQ(m_accu.FindBill("1 ", "51"), &vBills[2 + 51]);
        vBills.insert(vBills.end(), vBills.begin() + 2 + 51, vBills.begin() + 2 + 100);
    }
}

TEST_F(PlanUndRechnungTest, IsFuerMandantAsksTheSelectionThenTheTable) {
    CBill bill;
    bill.PRAXISNR = " 2";
    EXPECT_FALSE(m_accu.IsFuerMandant(bill));
    m_accu.m_vMd.resize(2);
    m_accu.m_vMd[1].m_sMdId = " 2";
    EXPECT_TRUE(m_accu.IsFuerMandant(bill));
    EXPECT_FALSE(m_accu.IsFuerMandant(" 3"));
    m_accu.SetMandant("3");
    EXPECT_TRUE(m_accu.IsFuerMandant(" 3"));
    EXPECT_FALSE(m_accu.IsFuerMandant(bill));
}

} // namespace orvostat
