#include "accu/AccuTest.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <set>

namespace orvostat {

namespace {

class PatientenfilterTest : public CAccuTest {
public:
    // The same for the six sections of one text: which of them let the value pass.
    void Texte(CFall & fall) {
        const struct {
            char cName;
            void (CSelektion::*pSchalte)(bool);
            void (CSelektion::*pWaehle)(const CString &);
            bool (CStatAccu::*pFilter)(const CString &);
        } aAbschnitte[] = {
            {'S', &CStatAccu::SetChSelektion, &CStatAccu::SetSelektion, &CStatAccu::PatSelektOk},
            {'N', &CStatAccu::SetChRisikoAnamnese, &CStatAccu::SetRisikoAnamnese, &CStatAccu::PatAnamneseOk},
            {'A', &CStatAccu::SetChAnrede, &CStatAccu::SetPatAnrede, &CStatAccu::PatAnredeOk},
            {'T', &CStatAccu::SetChStrasse, &CStatAccu::SetStrasse, &CStatAccu::PatStrasseOk},
            {'U', &CStatAccu::SetChUeberwArzt, &CStatAccu::SetUeberwArzt, &CStatAccu::UeberwArztOk},
            {'H', &CStatAccu::SetChHausArzt, &CStatAccu::SetHausArzt, &CStatAccu::HausArztOk},
        };
        std::string sOk;
        for (const auto & [cName, pSchalte, pWaehle, pFilter] : aAbschnitte) {
            (m_accu.*pSchalte)(fall.Ein<bool>("AN"));
            (m_accu.*pWaehle)(fall.Ein("GEWAEHLT"));
            if ((m_accu.*pFilter)(fall.Ein("WERT"))) sOk += cName;
        }
        fall.Aus("OK", sOk);
    }
    // The filter whose name the case has.
    void Filter(CFall & fall) {
        const std::pair<const char *, bool (CStatAccu::*)(const CString &)> aFilter[] = {
            {"MFR", &CStatAccu::MFR_Ok},
            {"RSA", &CStatAccu::RSA_Ok},
            {"BESUCH", &CStatAccu::LastBehDatumOk},
            {"GEBURTSTAG", &CStatAccu::PatGebDatOk},
            {"ALTER", &CStatAccu::PatAlterOk},
        };
        m_uhr.m_zeit = {2024, 3, 15, 9, 0};
        Waehle(m_accu, fall);
        for (const auto & [pName, pFilter] : aFilter)
            if (fall.Hat(pName)) fall.Aus("JA", (m_accu.*pFilter)(fall.Ein(pName)));
        if (fall.Hat("PLZ")) fall.Aus("JA", m_accu.PatPlzOrtOk(fall.Ein("PLZ"), fall.Ein("ORT")));
    }
    void Behandlungen(CFall & fall) {
        m_accu.m_sLebsString = "'1'";
        Waehle(m_accu, fall);
        CTBeh beh(dbDatabaseRO);
        beh.m_PATNR = fall.Ein("PATNR"); // the number may be the record's own
        fall.Aus("OHNE", m_accu.PatOhneLstOK(&beh, beh.m_PATNR, ""));
        beh.m_PATNR = fall.Ein("PATNR");
        fall.Aus("HAT", m_accu.PatLastLstOK(&beh, beh.m_PATNR, ""));
        if (fall.Erwartet("DATUM")) fall.Aus("DATUM", beh.m_DATUM);
    }
    void Recall(CFall & fall) {
        Waehle(m_accu, fall);
        CTPat row;
        CPat pat;
        row.m_PATNR = pat.PATNR = fall.Ein("PATNR");
        row.m_RECALLART = pat.RECALLART = fall.Ein("ARTEN");
        row.m_RECALLITV = pat.RECALLITV = fall.Ein("INTERVALLE");
        int iArt = 0;
        const bool bArt = fall.Nimm("ART", iArt);
        fall.Aus("JA", bArt ? m_accu.PatRecallOk(&row, iArt) : m_accu.PatRecallOk(&row));
        fall.Aus("JA", bArt ? m_accu.PatRecallOk(pat, iArt) : m_accu.PatRecallOk(pat));
        fall.Aus("OHNE", m_accu.PatRecallIsEmpty(pat));
    }
};

} // namespace

TEST_F(PatientenfilterTest, Faelle) {
    PruefeFaelle<PatientenfilterTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/patienten.txt",
                                      {{"texte", &PatientenfilterTest::Texte},
                                       {"filter", &PatientenfilterTest::Filter},
                                       {"behandlungen", &PatientenfilterTest::Behandlungen},
                                       {"recall", &PatientenfilterTest::Recall}});
}

TEST_F(PatientenfilterTest, NamesOfQuestionnaires) {
    std::vector<CString> vFragen = {"alt"};
    m_accu.SetFragebogen(" Herz ;; ;Über;"_t);
    m_accu.GetFragebogenVec(vFragen);
    EXPECT_EQ(vFragen, (std::vector<CString>{"HERZ", "ÜBER"}));
}

// ---- the patient table

TEST_F(PatientenfilterTest, GetPatReadsOnceWhatItCanRead) {
    Schreibe(R"(PAT PATNR=1 ADRNR=1
                ADR ADRNR=1 ADRART=p
                PAT PATNR=2 ADRNR=7
                ORVOKAS KASKUERZEL=aok GUELTIGAB=20200101
                VDESC PATNR=2 VDABDATUM=20200101 KASKUERZEL=aok)");
    m_accu.GetMemForTables();
    EXPECT_EQ(m_accu.GetPat("2", false), -1) << "no address";
    EXPECT_EQ(m_accu.GetPat("3", false), -1);
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
    Schreibe("ADR ADRNR=7");
    EXPECT_EQ(m_accu.GetPat("1", false), 0);
    for (const bool b : {false, true})
        EXPECT_EQ(m_accu.GetPat("2", b), 1) << "tried again, then remembered";
    EXPECT_EQ(m_accu.m_mapVDesc["2"].size(), 1U);
    m_accu.m_vPat.emplace_back().PATNR = "3";
    EXPECT_EQ(m_accu.FindPat("3", false), -1) << "the index says that there is none";
    m_accu.m_vPat[0].PATNR = "3";
    m_accu.m_mapPat.clear();
    EXPECT_EQ(m_accu.FindPat("3", true), -1);
    EXPECT_EQ(m_accu.FindPat("3", false), 2) << "the last one";
    EXPECT_EQ(m_accu.FindPat("3", true), 2);
    m_accu.ClearP();
    EXPECT_EQ(m_accu.FindPat("1", false), -1);
    m_accu.m_vPat.emplace_back().PATNR = "2";
    EXPECT_EQ(m_accu.GetPat(m_accu.m_vPat[0].PATNR, false), 1) << "the number may be an entry's own";
    EXPECT_EQ(m_accu.m_mapVDesc["2"].size(), 2U);
}

TEST_F(PatientenfilterTest, TheIndexSpreadsRightAlignedNumbers) {
    std::set<std::size_t> setHashes;
    for (int i = 1000; i < 2000; ++i)
        setHashes.insert(SPatientenHash()(RightFix(itoc(i), 10)));
    EXPECT_GT(setHashes.size(), 990U);
}

} // namespace orvostat
