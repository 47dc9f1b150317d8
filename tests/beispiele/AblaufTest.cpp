// The run that docs/lauf.md shows, against the program's: Ablauf.h is made of the page when the build is configured.
#include "Muster.h"
#include "orvostatbs/orvostatbs.h"
#include "support/Praxis.h"

namespace orvostat {
namespace {

#include "Ablauf.h"

struct SErgebnis {
    std::size_t iHits = 0;
    CDBetrag summe{0.0, 'e'};
};

SErgebnis Summiere(CStatAccu & accu) {
    SErgebnis ergebnis{.iHits = accu.m_vBehHits.size()};
    for (const CBehHitLine & hit : accu.m_vBehHits) {
        CDBetrag euro(hit.BETRAG);
        ergebnis.summe += euro.ToW('e');
    }
    accu.DataSumNachlauf();
    return ergebnis;
}

TEST(Ablauf, TheLoopOfThePageHasTheProgramsFigures) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    CTestpraxis praxis;
    ASSERT_EQ(ErzeugeMuster(praxis.Speicher(), {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
    const struct {
        void (*fWaehle)(CStatAccu &);
        SLaufauftrag auftrag = {};
        std::size_t iHits = 0; // as the README shows them; 0: not there
        const char * pSumme = "";
    } aFaelle[] = {
        {[](CStatAccu & a) { a.SetZeitraum("20241001", "20241231"); }, {}, 355, "7821,55"},
        {[](CStatAccu &) {}},
        {[](CStatAccu & a) { a.SetTecGoSubArten(3); }, {.bErsatz = true, .bKassenanteil = true}},
        {[](CStatAccu & a) { a.SetAbrArt("678"); }, {.bOhne22a = true, .bParMarken = true, .bParBeva = true}},
        {[](CStatAccu & a) { a.SetPatient("1011"); }, {.bPlangatter = false}},
        {[](CStatAccu & a) {
            a.SetLebs({"   3", "   5"});
        }},
        {[](CStatAccu & a) { a.SetMandant("2"); }},
        {[](CStatAccu & a) {
            a.SetNoChangeMdId(true);
            a.SetIsErfasst(false);
        }},
        {[](CStatAccu & a) {
            a.SetChAnrede(true);
            a.SetPatAnrede("Frau");
        }},
        {[](CStatAccu & a) {
            a.SetChAlter(true);
            a.SetAlter("18", "60");
        }},
        {[](CStatAccu & a) {
            a.SetChRecall(true);
            a.SetRecallData("*", "", "");
        }},
        {[](CStatAccu & a) {
            a.SetChOhneLst(true);
            a.SetZeitraum(ERSTER_TAG, LETZTER_TAG);
            a.SetOhneLst("20240101", "20240131");
        }},
        {[](CStatAccu & a) {
            a.SetChKvk(true);
            a.SetMFR("15");
            a.SetKvkDatum("20240401", LETZTER_TAG);
        }},
        {[](CStatAccu & a) { a.SetGoArt('q'); }},
        {[](CStatAccu & a) { a.SetPlan("  1"); }},
        {[](CStatAccu & a) { a.SetKasse("AOK01"); }},
        {[](CStatAccu & a) { a.SetNurGesetzlicheKassen(true); }},
        {[](CStatAccu & a) { a.SetLst("13a"); }},
        {[](CStatAccu & a) { a.SetPwLArt("f"); }},
        {[](CStatAccu & a) { a.SetOnlyAbrechenbare(true); }},
    };
    std::size_t iFall = 0;
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(++iFall);
        CStatAccu accu, soll;
        for (CStatAccu * pAccu : {&accu, &soll}) {
            pAccu->SetIsAbgerechnet(true);
            pAccu->SetIsErfasst(true);
            fall.fWaehle(*pAccu);
        }
        ASSERT_TRUE(Laufe(accu, fall.auftrag));
        const SErgebnis ist = Summiere(accu);
        ASSERT_EQ(CLauf(soll, fall.auftrag).Laufe(), ELauf::Fertig);
        const SErgebnis programm = Summiere(soll);
        EXPECT_GT(ist.iHits, 0U);
        EXPECT_EQ(ist.iHits, programm.iHits);
        EXPECT_EQ(ist.summe.GetEinheiten(), programm.summe.GetEinheiten());
        if (fall.iHits == 0) continue;
        EXPECT_EQ(ist.iHits, fall.iHits);
        EXPECT_EQ(ist.summe.ToExt(0, false), fall.pSumme);
    }
}

} // namespace
} // namespace orvostat
