// The statistics of a denture plan.
#include "orvostatbs/plan/StatZE.h"
#include "support/Praxis.h"

#include <string>

#include <gtest/gtest.h>

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

void SchreibeBlock(const std::string & sBlock, const CString & sBetraege = {}) {
    Schreibe("LBLOCK " + sBlock + " LBLOCKBETRAEGE=\"" + sBetraege.Utf8() + '"');
}

TEST_F(StatZETest, TheAmountsOfTheFirstFittingBlock) {
    const CString sBetraege = "e         1e         2   1.234,56e         4e         5e       678"
                              "      -7,89e         8e         9e        10"_t;
    SchreibeBlock("PATNR=1 PLANNR=1 LFDLBLOCK=1 LBLOCKART=3", "e        99"_t);
    SchreibeBlock("PATNR=1 PLANNR=1 LFDLBLOCK=2 LBLOCKART=4", sBetraege);
    SchreibeBlock("PATNR=1 PLANNR=1 LFDLBLOCK=3 LBLOCKART=4", "e        99"_t);
    SchreibeBlock("PATNR=1 PLANNR=2 LFDLBLOCK=1 LBLOCKART=44", sBetraege);
    SchreibeBlock("PATNR=1 PLANNR=3 LFDLBLOCK=1 LBLOCKART=4", sBetraege.Left(66));
    SchreibeBlock("PATNR=1 PLANNR=4 LFDLBLOCK=1 LBLOCKART=4");
    SchreibeBlock("PATNR=1 LFDLBLOCK=1 LBLOCKART=4", sBetraege);
    SchreibeBlock("PLANNR=1 LFDLBLOCK=1 LBLOCKART=4", sBetraege);
    const struct {
        CString sPat, sPlan;
        bool bSoll;
        const char * pBetraege; // columns 5, 6 and 2
    } aFaelle[] = {
        {"1", "1", true, "e678 -789 123456"}, {"1", "2", false, "e1 e1 e1"},
        {"1", "3", true, "e678  123456"},     {"1", "4", true, "  "},
        {"1", "5", false, "e1 e1 e1"},        {"1", "", false, "e1 e1 e1"},
        {"", "1", false, "e1 e1 e1"},         {"2", "1", false, "e1 e1 e1"},
    };
    for (const auto & f : aFaelle) {
        CDBetrag a("e1");
        CDBetrag b("e1");
        CDBetrag c("e1");
        EXPECT_EQ(m_ze.GetLBlockData(f.sPat, f.sPlan, a, b, c), f.bSoll);
        EXPECT_EQ(Wert(a) + ' ' + Wert(b) + ' ' + Wert(c), f.pBetraege) << (f.sPat + '/' + f.sPlan).Utf8();
    }
}

// The sample entries of plans 1 to 5 of their kinds; each has the same blocks and entries.
TEST_F(StatZETest, SampleEntries) {
    const char * const aArten[][2] = {{"p", "4"}, {"q", "4"}, {"kx", "4"}, {"g", "4"}, // these four fit
                                      {"", "4"},  {"z", "4"}, {"k", "3"},  {"k", "44"}, {"K", "4"}};
    for (const char c : {'1', '2', '3', '4', '5', '6'}) {
        const std::string sPlan = std::string(" PATNR=1 PLANNR=") + c;
        if (c != '6') Schreibe("PLAN PLANSUBART=" + std::string(1, c) + sPlan);
        SchreibeBlock("LFDLBLOCK=1 LBLOCKART=1" + sPlan);
        SchreibeBlock("LFDLBLOCK=2 LBLOCKART=4" + sPlan);
        Schreibe("LBLOCKENTRY LFDLBLOCK=1 LFDENTRY=1 LBLOCKENTRYART=k LBLNR=4 LSTNR=falsch BETRAG=e100" +
                 sPlan);
        for (int i = 0; const auto & [pArt, pLblNr] : aArten)
            Schreibe(
                "LBLOCKENTRY LFDLBLOCK=2 BEGRKEY=T BETRAG=e100 ANZAHL=x250 LFDENTRY=" + std::to_string(++i) +
                " LBLOCKENTRYART=" + pArt + " LSTNR=" + pArt + " LBLNR=" + pLblNr + sPlan);
    }
    Schreibe(R"(PLAN PATNR=1 PLANNR=7 PLANSUBART=4
                PLAN PATNR=1 PLANNR=8 PLANSUBART=41
                TBENTRY TBKEY=T TBLFD=1 TBTEXT=eins
                TBENTRY TBKEY=T TBLFD=2
                TBENTRY TBKEY=T TBLFD=3 TBTEXT=drei)"); // plan 7 without blocks
    const struct {
        CString sPlan;
        int iAnzahl;
    } aPlaene[] = {{"4", 4}, {"2", 0}, {"1", 4}, {"3", 0}, {"5", 4},
                   {"6", 0}, {"4", 4}, {"7", 0}, {"8", 0}, {"", 0}};
    for (const auto & [sPlan, iAnzahl] : aPlaene) {
        EXPECT_EQ(m_ze.GetAbdingungsLst("1", sPlan), iAnzahl) << sPlan.Utf8();
        EXPECT_EQ(m_ze.m_vHits.size(), static_cast<std::size_t>(iAnzahl))
            << "emptied also after one with hits";
    }
    EXPECT_EQ(m_ze.GetAbdingungsLst("1", "4"), 4);
    CStatZE kopie;
    kopie = m_ze;
    EXPECT_EQ(kopie.GetAbdingungsLst(kopie.m_vHits[0].PATNR, kopie.m_vHits[0].PLANNR), 4) << "by its own hit";
    std::string s;
    for (const CBehHitLine & hit : kopie.m_vHits)
        s += (hit.LSTNR + '/' + hit.m_sLblNr + '/' + hit.TEXT + '/' + hit.TEXTART + hit.GOART + hit.ABRART)
                 .Utf8() +
             '/' + std::to_string(hit.ANZAHL) + Wert(hit.BETRAG) + ' ';
    EXPECT_EQ(s, "p/4/eins  drei/bpz/250e250 q/4/eins  drei/bqz/250e250 kx/4/eins  drei/bkz/250e250 "
                 "g/4/eins  drei/bgz/250e250 ");
}

TEST_F(StatZETest, TextsKindsAndNumbers) {
    Schreibe(R"(TBENTRY TBKEY=A TBLFD=1 TBTEXT=a
                TBENTRY TBKEY=AB TBLFD=1 TBTEXT=ab
                TBENTRY TBLFD=1 TBTEXT=leer
                PLAN PATNR=1 PLANNR=1 PLANSUBART=4
                LBLOCK PATNR=1 PLANNR=1 LFDLBLOCK=1 LBLOCKART=4)");
    Schreibe("LBLOCKENTRY PATNR=1 PLANNR=1 LFDLBLOCK=1 LFDENTRY=1 LBLOCKENTRYART=k LBLNR=4 "
             "BEGRKEY=X LSTNR=1 BETRAG=e100 ANZAHL=x0");
    EXPECT_EQ(m_ze.ReadBegr("A"), CString("a"));
    EXPECT_EQ(m_ze.ReadBegr(""), CString());
    EXPECT_EQ(m_ze.ReadBegr("X"), CString());
    ASSERT_EQ(m_ze.GetAbdingungsLst("1", "1"), 1);
    EXPECT_EQ(m_ze.m_vHits[0].TEXTART, 0) << "no text, no kind of text";
    EXPECT_TRUE(m_ze.IsZePlan(" 12", "z"));
    EXPECT_TRUE(m_ze.IsZePlan("-1", "z"));
    EXPECT_FALSE(m_ze.IsZePlan("0", "z") || m_ze.IsZePlan("x", "z") || m_ze.IsZePlan("1", "zz") ||
                 m_ze.IsZePlan("1", "Z"));
    // No entry passes with kind "3", whatever its number.
    CTLBlockEntry entry;
    entry.m_LBLOCKENTRYART = "k";
    for (const CString & sLblNr : {CString("3"), CString("4")}) {
        entry.m_LBLNR = sLblNr;
        EXPECT_FALSE(m_ze.CheckGemMuster("3", entry));
        EXPECT_EQ(m_ze.CheckGemMuster("4", entry), sLblNr == "4");
    }
}

} // namespace

} // namespace orvostat
