// The statistics of a denture plan.
#include "orvostatbs/plan/StatZE.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Rekorder.h"
#include "support/Schreiber.h"

#include <memory>
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

class StatZETest : public CHostTest {
protected:
    StatZETest() {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pSpeicher);
    }
    ~StatZETest() override {
        EXPECT_EQ(EntlieheneRSets(), 0);
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    std::shared_ptr<CMemorySpeicher> m_pSpeicher = std::make_shared<CMemorySpeicher>();
    CStatZEOffen m_ze;
};

const auto SchreibePlan = Schreiber<CTPlan>(&CTPlan::m_PATNR, &CTPlan::m_PLANNR, &CTPlan::m_PLANSUBART);
const auto SchreibeBlock =
    Schreiber<CTLBlock>(&CTLBlock::m_PATNR, &CTLBlock::m_PLANNR, &CTLBlock::m_LFDLBLOCK,
                        &CTLBlock::m_LBLOCKART, &CTLBlock::m_LBLOCKBETRAEGE);
const auto SchreibeEntry = Schreiber<CTLBlockEntry>(
    &CTLBlockEntry::m_PATNR, &CTLBlockEntry::m_PLANNR, &CTLBlockEntry::m_LFDLBLOCK,
    &CTLBlockEntry::m_LFDENTRY, &CTLBlockEntry::m_LBLOCKENTRYART, &CTLBlockEntry::m_LBLNR,
    &CTLBlockEntry::m_BEGRKEY, &CTLBlockEntry::m_LSTNR, &CTLBlockEntry::m_BETRAG, &CTLBlockEntry::m_ANZAHL);
const auto SchreibeText =
    Schreiber<CTTbEntry>(&CTTbEntry::m_TBKEY, &CTTbEntry::m_TBLFD, &CTTbEntry::m_TBTEXT);

std::string Text(const CWBetragBasis & betrag) { return betrag.ToDb(0, true, false, 0, 0).Utf8(); }

TEST_F(StatZETest, TheAmountsOfTheFirstFittingBlock) {
    const CString sBetraege = "e         1e         2   1.234,56e         4e         5e       678"
                              "      -7,89e         8e         9e        10"_t;
    SchreibeBlock("1", "1", "1", "3", "e        99"_t);
    SchreibeBlock("1", "1", "2", "4", sBetraege);
    SchreibeBlock("1", "1", "3", "4", "e        99"_t);
    SchreibeBlock("1", "2", "1", "44", sBetraege);
    SchreibeBlock("1", "3", "1", "4", sBetraege.Left(66));
    SchreibeBlock("1", "4", "1", "4", "");
    SchreibeBlock("1", "", "1", "4", sBetraege);
    SchreibeBlock("", "1", "1", "4", sBetraege);
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
        EXPECT_EQ(Text(a) + ' ' + Text(b) + ' ' + Text(c), f.pBetraege) << (f.sPat + '/' + f.sPlan).Utf8();
    }
}

// The sample entries of plans 1 to 5 of their kinds; each has the same blocks and entries.
TEST_F(StatZETest, SampleEntries) {
    const struct {
        CString sArt, sLblNr;
        bool bMuster;
    } aEintraege[] = {{"p", "4", true},  {"q", "4", true},   {"kx", "4", true},
                      {"g", "4", true},  {"", "4", false},   {"z", "4", false},
                      {"k", "3", false}, {"k", "44", false}, {"K", "4", false}};
    for (const char c : {'1', '2', '3', '4', '5', '6'}) {
        const CString sPlan(c);
        if (c != '6') SchreibePlan("1", sPlan, sPlan);
        SchreibeBlock("1", sPlan, "1", "1", "");
        SchreibeBlock("1", sPlan, "2", "4", "");
        SchreibeEntry("1", sPlan, "1", "1", "k", "4", "", "falsch", "e100", "");
        for (const auto & e : aEintraege) {
            const auto iLfd = static_cast<char>('1' + (&e - aEintraege));
            SchreibeEntry("1", sPlan, "2", CString(iLfd), e.sArt, e.sLblNr, "T", e.sArt, "e100", "x250");
        }
    }
    SchreibePlan("1", "7", "4"); // without blocks
    SchreibePlan("1", "8", "41");
    SchreibeText("T", "1", "eins");
    SchreibeText("T", "2", "");
    SchreibeText("T", "3", "drei");
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
             '/' + std::to_string(hit.ANZAHL) + Text(hit.BETRAG) + ' ';
    EXPECT_EQ(s, "p/4/eins  drei/bpz/250e250 q/4/eins  drei/bqz/250e250 kx/4/eins  drei/bkz/250e250 "
                 "g/4/eins  drei/bgz/250e250 ");
}

TEST_F(StatZETest, TextsKindsAndNumbers) {
    SchreibeText("A", "1", "a");
    SchreibeText("AB", "1", "ab");
    SchreibeText("", "1", "leer");
    EXPECT_EQ(m_ze.ReadBegr("A"), CString("a"));
    EXPECT_EQ(m_ze.ReadBegr(""), CString());
    EXPECT_EQ(m_ze.ReadBegr("X"), CString());
    SchreibePlan("1", "1", "4");
    SchreibeBlock("1", "1", "1", "4", "");
    SchreibeEntry("1", "1", "1", "1", "k", "4", "X", "1", "e100", "x0");
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
