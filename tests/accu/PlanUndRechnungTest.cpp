#include "accu/AccuTest.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <random>

namespace orvostat {

namespace {

class PlanUndRechnungTest : public CAccuTest {
public:
    // Which questions about a plan's row are answered with yes: Z denture, M additional costs, P private,
    // K orthodontic, A any orthodontic.
    void Planstand(CFall & fall) {
        fall.Fuelle<CTPlan_Fields>(m_plan);
        std::string sGut;
        for (const auto & [cName, pFrage] : {std::pair('Z', &CStatAccu::IsZEPlanOK),
                                             {'M', &CStatAccu::IsMehrkostenPlanOK},
                                             {'P', &CStatAccu::IsZEPrivatPlanOK},
                                             {'K', &CStatAccu::IsKFOPlanOK},
                                             {'A', &CStatAccu::IsKFOPlan}})
            if ((m_accu.*pFrage)(&m_plan)) sGut += cName;
        fall.Aus("GUT", sGut);
    }
    // The gate; errors are those of the work hit, whose day is TAG.
    void Tor(CFall & fall) {
        m_accu.m_BehHit.PATNR = "work";
        m_accu.m_BehHit.DATUM = fall.Ein("TAG");
        CBehHitLine hit;
        hit.PATNR = "1";
        const CBehHitLine vorher = fall.Fuelle(hit);
        (void)HatGelesen();
        const bool bOk = m_accu.OnlyForZEorKFOorPAROk(&m_plan, m_vPlaene, hit, fall.Ein<bool>("OHNE22A"),
                                                      fall.Ein<bool>("PARMARKEN"), fall.Ein<bool>("PARBEVA"),
                                                      &m_beh, m_iPos);
        fall.Aus("JA", bOk);
        fall.Geaendert(vorher, hit);
        if (fall.Erwartet("POS")) fall.Aus("POS", std::to_string(m_iPos));
        if (fall.Erwartet("GELESEN")) fall.Aus("GELESEN", std::to_string(HatGelesen()));
        if (fall.Erwartet("PROZENT")) fall.Aus("PROZENT", m_vPlaene.at(std::size_t(m_iPos)).m_iKasProzent);
        if (fall.Erwartet("LETZTER")) fall.Aus("LETZTER", m_vPlaene.back().PLANNR);
        if (hit.PLANNR.IsEmpty() && !m_vPlaene.empty()) fall.Melde("a plan without number");
        std::vector<int> vFehler;
        for (const CBehErrors & fehler : m_accu.m_vBehErrors.Lesend())
            vFehler.push_back(fehler.PATNR == "work"_t ? fehler.m_iFehler : 0);
        fall.Aus("FEHLER", vFehler);
    }

    CTPlan m_plan{dbDatabaseRO};
    CTBeh m_beh{dbDatabaseRO};
    std::vector<CPlan> m_vPlaene;
    int m_iPos = 99;
};

} // namespace

TEST_F(PlanUndRechnungTest, Faelle) {
    PruefeFaelle<PlanUndRechnungTest>(
        ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/plaene.txt",
        {{"planstand", &PlanUndRechnungTest::Planstand}, {"tor", &PlanUndRechnungTest::Tor}});
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
            CBehHitLine hit;
            hit.PATNR = "1 ";
            hit.PLANNR = Neuer().PLANNR;
            const auto it = std::find_if(pV->rbegin(), pV->rend(), [&](const CPlan & plan) {
                return TrimRight(plan.PLANNR) == TrimRight(hit.PLANNR);
            });
            ASSERT_EQ(m_accu.FindPlan(*pV, hit), pV->rend() - it - 1) << i;
        }
    }
}

// ---- bills and owners

TEST_F(PlanUndRechnungTest, ABillIsReadOnce) {
    Schreibe("BILL PATNR=1 PATBILL=7 PRAXISNR=\" 1\"");
    for (const auto & [pPatNr, pPatBill] : {std::pair("", "7"), {"1", ""}, {"1", " "}, {"  ", "7"}})
        EXPECT_EQ(m_accu.GetBill(pPatNr, pPatBill), nullptr);
    EXPECT_TRUE(m_accu.m_mapBill.empty());
    EXPECT_EQ(m_accu.FindBill("1", "7"), nullptr);
    EXPECT_FALSE(HatGelesen());
    EXPECT_EQ(m_accu.GetBill("1", "8"), nullptr);
    const CBill * pBill = m_accu.GetBill("1", "7");
    ASSERT_TRUE(pBill != nullptr && pBill->PRAXISNR == " 1");
    EXPECT_TRUE(HatGelesen());
    EXPECT_TRUE(m_accu.GetBill("1", "7") == pBill && m_accu.GetBill("1 ", "7  ") == pBill);
    EXPECT_EQ(m_accu.FindBill("2", "7"), nullptr);
    std::vector<CBill> & vBills = m_accu.m_mapBill["1"];
    vBills.push_back(vBills[0]);
    EXPECT_EQ(m_accu.FindBill("1", "7"), &vBills[1]) << "the last of two counts";
    for (int i = 0; i < 200; ++i) // more than a walk
        vBills.emplace_back().PATBILL = itoc(i % 100) + " ";
    EXPECT_EQ(m_accu.FindBill("1 ", "50  "), &vBills[2 + 150]);
}

TEST_F(PlanUndRechnungTest, IsFuerMandantAsksTheSelectionThenTheTable) {
    CBill bill;
    bill.PRAXISNR = " 2";
    const auto Fuer = [&] { return Werte(m_accu.IsFuerMandant(bill), m_accu.IsFuerMandant(" 3")); };
    EXPECT_EQ(Fuer(), "|");
    m_accu.m_vMd.resize(2);
    m_accu.m_vMd[1].m_sMdId = " 2";
    EXPECT_EQ(Fuer(), "1|");
    m_accu.SetMandant("3");
    EXPECT_EQ(Fuer(), "|1");
}

} // namespace orvostat
