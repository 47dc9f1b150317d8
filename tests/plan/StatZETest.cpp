// The statistics of a denture plan.
#include "orvostatbs/plan/StatZE.h"
#include "support/Praxis.h"

#include <string>

namespace orvostat {

namespace {

class CStatZEOffen : public CStatZE {
public:
    using CStatZE::CheckGemMuster;
    using CStatZE::IsZePlan;
    using CStatZE::ReadBegr;
};

class StatZETest : public CPraxisTest {
protected:
    ~StatZETest() override { EXPECT_EQ(EntlieheneRSets(), 0); }
    CStatZEOffen m_ze;
};

TEST_F(StatZETest, TheAmountsOfTheFirstFittingBlock) {
    const std::string sBetraege = "e         1e         2   1.234,56e         4e         5e       678";
    const std::string sLetzte = "      -7,89e         8e         9e        10";
    for (const std::string sBlock :
         {"1 PLANNR=1 LFDLBLOCK=1 LBLOCKART=3 LBLOCKBETRAEGE=99",
          "1 PLANNR=1 LFDLBLOCK=3 LBLOCKART=4 LBLOCKBETRAEGE=99", "1 PLANNR=2 LFDLBLOCK=1 LBLOCKART=44",
          "1 PLANNR=4 LFDLBLOCK=1 LBLOCKART=4", "1 LFDLBLOCK=1 LBLOCKART=4", "\"\" PLANNR=1 LBLOCKART=4"})
        Schreibe("LBLOCK PATNR=" + sBlock);
    Schreibe("LBLOCK PATNR=1 PLANNR=1 LFDLBLOCK=2 LBLOCKART=4 LBLOCKBETRAEGE=\"" + sBetraege + sLetzte + '"');
    Schreibe("LBLOCK PATNR=1 PLANNR=3 LFDLBLOCK=1 LBLOCKART=4 LBLOCKBETRAEGE=\"" + sBetraege + '"');
    const struct {
        CString sPat, sPlan;
        const char * pBetraege; // columns 5, 6 and 2; e1 stays
    } aFaelle[] = {
        {"1", "1", "e678|-789|123456"}, {"1", "2", "e1|e1|e1"}, {"1", "3", "e678||123456"}, {"1", "4", "||"},
        {"1", "5", "e1|e1|e1"},         {"1", "", "e1|e1|e1"},  {"", "1", "e1|e1|e1"}};
    for (const auto & f : aFaelle) {
        CDBetrag a("e1"), b("e1"), c("e1");
        const bool bSoll = std::string(f.pBetraege) != "e1|e1|e1";
        EXPECT_EQ(m_ze.GetLBlockData(f.sPat, f.sPlan, a, b, c), bSoll);
        EXPECT_EQ(Werte(a, b, c), f.pBetraege) << (f.sPat + '/' + f.sPlan).Utf8();
    }
}

// The sample entries of plans 1 to 5 of their kinds; each has the same blocks and entries.
TEST_F(StatZETest, SampleEntries) {
    const char * const aArten[][2] = {{"p", "4"}, {"q", "4"}, {"kx", "4"}, {"g", "4"}, // these four fit
                                      {"", "4"},  {"z", "4"}, {"k", "3"},  {"k", "44"}, {"K", "4"}};
    for (const char c : {'1', '2', '3', '4', '5', '6'}) {
        const std::string sPlan = std::string(" PATNR=1 PLANNR=") + c;
        if (c != '6') Schreibe("PLAN PLANSUBART=" + std::string(1, c) + sPlan);
        Schreibe("LBLOCK LFDLBLOCK=1 LBLOCKART=1" + sPlan + "\nLBLOCK LFDLBLOCK=2 LBLOCKART=4" + sPlan +
                 "\nLBLOCKENTRY LFDLBLOCK=1 LFDENTRY=1 LBLOCKENTRYART=k LBLNR=4 LSTNR=falsch" + sPlan);
        for (int i = 1; const auto & [pArt, pLblNr] : aArten)
            Schreibe("LBLOCKENTRY LFDLBLOCK=2 BETRAG=e100 ANZAHL=x250 LFDENTRY=" + std::to_string(i++) +
                     " LBLOCKENTRYART=" + pArt + " LSTNR=" + pArt + " LBLNR=" + pLblNr +
                     " BEGRKEY=" + (*pArt == 'q' ? "X" : "T") + sPlan);
    }
    Schreibe(R"(PLAN PATNR=1 PLANNR=7 PLANSUBART=4
                PLAN PATNR=1 PLANNR=8 PLANSUBART=41
                TBENTRY TBLFD=1 TBTEXT=leer
                TBENTRY TBKEY=T TBLFD=1 TBTEXT=eins
                TBENTRY TBKEY=T TBLFD=2
                TBENTRY TBKEY=T TBLFD=3 TBTEXT=drei
                TBENTRY TBKEY=TX TBLFD=1 TBTEXT=falsch)"); // plan 7 without blocks
    std::string sAnzahl;
    for (const CString sPlan : {"4", "2", "1", "3", "5", "6", "4", "7", "8", "", "4"}) {
        sAnzahl += std::to_string(m_ze.GetAbdingungsLst("1", sPlan));
        EXPECT_EQ(std::to_string(m_ze.m_vHits.size()), sAnzahl.substr(sAnzahl.size() - 1));
    }
    EXPECT_EQ(sAnzahl, "40404040004");
    CStatZE kopie;
    kopie = m_ze;
    EXPECT_EQ(kopie.GetAbdingungsLst(kopie.m_vHits[0].PATNR, kopie.m_vHits[0].PLANNR), 4) << "by its own hit";
    std::string s;
    for (const CBehHitLine & h : kopie.m_vHits)
        s += Werte(h.LSTNR, h.m_sLblNr, h.TEXT, h.TEXTART, h.GOART, h.ABRART, h.ANZAHL, h.BETRAG) + '\n';
    EXPECT_EQ(s, "p|4|eins  drei|b|p|z|250|e250\nq|4|||q|z|250|e250\nkx|4|eins  drei|b|k|z|250|e250\n"
                 "g|4|eins  drei|b|g|z|250|e250\n");
    EXPECT_EQ(m_ze.ReadBegr(""), CString());
    EXPECT_TRUE(m_ze.IsZePlan(" 12", "z") && m_ze.IsZePlan("-1", "z"));
    EXPECT_FALSE(m_ze.IsZePlan("0", "z") || m_ze.IsZePlan("1", "zz") || m_ze.IsZePlan("1", "Z"));
    CTLBlockEntry entry;
    entry.m_LBLOCKENTRYART = "k";
    entry.m_LBLNR = "3";
    EXPECT_FALSE(m_ze.CheckGemMuster("3", entry)) << "no entry passes with this kind";
}

} // namespace

} // namespace orvostat
