#include "accu/AccuTest.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <set>

namespace orvostat {

namespace {

using PatientenfilterTest = CAccuTest;

CPat Patient(const CString & sPatNr, const CString & sArten = "", const CString & sIntervalle = "") {
    CPat pat;
    pat.PATNR = sPatNr;
    pat.RECALLART = sArten;
    pat.RECALLITV = sIntervalle;
    return pat;
}

// Two bounds, and values that pass and that fail.
struct SSpanne {
    CString sVon, sBis;
    std::vector<CString> vGut, vSchlecht;
};

void Pruefe(CStatAccu & accu, void (CSelektion::*pWaehle)(const CString &, const CString &),
            bool (CStatAccu::*pFilter)(const CString &), std::initializer_list<SSpanne> vSpannen) {
    for (const auto & [sVon, sBis, vGut, vSchlecht] : vSpannen) {
        SCOPED_TRACE(sVon.Utf8() + '-' + sBis.Utf8());
        (accu.*pWaehle)(sVon, sBis);
        for (const CString & sWert : vGut)
            EXPECT_TRUE((accu.*pFilter)(sWert)) << sWert.Utf8();
        for (const CString & sWert : vSchlecht)
            EXPECT_FALSE((accu.*pFilter)(sWert)) << sWert.Utf8();
    }
}

} // namespace

// ---- the patient table

TEST_F(PatientenfilterTest, GetPatReadsOnceWhatItCanRead) {
    SchreibePatient("1");
    Schreibe<CTPat>({.m_PATNR = "2", .m_ADRNR = "7"});
    Schreibe<CTOrvoKas>({.m_KASKUERZEL = "aok", .m_GUELTIGAB = "20200101"});
    Schreibe<CTVDesc>({.m_PATNR = "2", .m_VDABDATUM = "20200101", .m_KASKUERZEL = "aok"});
    m_accu.GetMemForTables();
    EXPECT_EQ(m_accu.GetPat("2", false), -1) << "no address";
    EXPECT_EQ(m_accu.GetPat("3", false), -1);
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
    Schreibe<CTAdr>({.m_ADRNR = "7"});
    EXPECT_EQ(m_accu.GetPat("1", false), 0);
    EXPECT_EQ(m_accu.GetPat("2", false), 1) << "tried again";
    EXPECT_EQ(m_accu.GetPat("1", true), 0);
    EXPECT_EQ(m_accu.GetPat("2", true), 1);
    EXPECT_EQ(m_accu.m_mapVDesc["2"].size(), 1U);
    m_accu.ClearP();
    EXPECT_EQ(m_accu.FindPat("1", false), -1);
    m_accu.m_vPat = {Patient("2")};
    EXPECT_EQ(m_accu.GetPat(m_accu.m_vPat[0].PATNR, false), 1) << "the number may be an entry's own";
    EXPECT_EQ(m_accu.m_mapVDesc["2"].size(), 2U);
}

TEST_F(PatientenfilterTest, FindPatSearchesTheTableOnlyForPatientsNotInTheIndex) {
    m_accu.m_vPat = {Patient("1"), Patient("2"), Patient("1")};
    EXPECT_EQ(m_accu.FindPat("1", true), -1);
    EXPECT_EQ(m_accu.FindPat("1", false), 2);
    EXPECT_EQ(m_accu.FindPat("1", true), 2);
    m_accu.GetMemForTables();
    EXPECT_EQ(m_accu.GetPat("3", false), -1);
    m_accu.m_vPat.push_back(Patient("3"));
    EXPECT_EQ(m_accu.FindPat("3", false), -1) << "the index says that there is none";
}

TEST_F(PatientenfilterTest, TheIndexSpreadsRightAlignedNumbers) {
    std::set<std::size_t> setHashes;
    for (int i = 1000; i < 2000; ++i)
        setHashes.insert(SPatientenHash()(RightFix(itoc(i), 10)));
    EXPECT_GT(setHashes.size(), 990U);
}

// ---- texts

TEST_F(PatientenfilterTest, EachSectionReadsAnEmptySelectionInItsOwnWay) {
    using C = CStatAccu;
    // Switched off; nothing selected, the patient has a value or none; the same value in other case.
    struct SAbschnitt {
        void (CSelektion::*pSchalte)(bool);
        void (CSelektion::*pWaehle)(const CString &);
        bool (CStatAccu::*pFilter)(const CString &);
        bool bAus, bLeerWert, bLeerLeer, bGross;
    };
    const SAbschnitt aAbschnitte[] = {
        {&C::SetChSelektion, &C::SetSelektion, &C::PatSelektOk, false, true, true, true},
        {&C::SetChRisikoAnamnese, &C::SetRisikoAnamnese, &C::PatAnamneseOk, false, true, true, true},
        {&C::SetChAnrede, &C::SetPatAnrede, &C::PatAnredeOk, true, false, true, true},
        {&C::SetChStrasse, &C::SetStrasse, &C::PatStrasseOk, true, false, true, true},
        {&C::SetChUeberwArzt, &C::SetUeberwArzt, &C::UeberwArztOk, true, true, false, false},
        {&C::SetChHausArzt, &C::SetHausArzt, &C::HausArztOk, true, true, false, false},
    };
    for (const SAbschnitt & abschnitt : aAbschnitte) {
        const auto Ok = [&](bool bAn, const CString & sGewaehlt, const CString & sWert) {
            (m_accu.*abschnitt.pSchalte)(bAn);
            (m_accu.*abschnitt.pWaehle)(sGewaehlt);
            return (m_accu.*abschnitt.pFilter)(sWert);
        };
        SCOPED_TRACE(&abschnitt - aAbschnitte);
        EXPECT_EQ(Ok(false, "Jäger", "Koch"), abschnitt.bAus);
        EXPECT_EQ(Ok(true, "", "Koch"), abschnitt.bLeerWert);
        EXPECT_EQ(Ok(true, "", ""), abschnitt.bLeerLeer);
        EXPECT_EQ(Ok(true, "Jäger", "JÄGER"), abschnitt.bGross);
        EXPECT_TRUE(Ok(true, "Jäger", "Jäger"));
        EXPECT_FALSE(Ok(true, "Jäger", ""));
        EXPECT_FALSE(Ok(true, "*", "Koch"));
    }
}

TEST_F(PatientenfilterTest, OfPostcodeAndTownTheSelectedOnesCount) {
    struct SFall {
        CString sPlz, sOrt, sPatPlz, sPatOrt;
        bool bOk;
    };
    const SFall aFaelle[] = {
        {"", "", "", "", true},      {"", "", "8", "", false},        {"", "", "", "Ulm", false},
        {"8", "", "8", "Ulm", true}, {"8", "", "", "Ulm", false},     {"", "Ulm", "9", "ULM", true},
        {"", "Ulm", "9", "", false}, {"8", "Ulm", "8", "Bon", false}, {"8", "Ulm", "8", "Ulm", true},
    };
    EXPECT_TRUE(m_accu.PatPlzOrtOk("8", "")) << "switched off";
    m_accu.SetChPlzOrt(true);
    for (const SFall & fall : aFaelle) {
        m_accu.SetPlzOrt(fall.sPlz, fall.sOrt);
        EXPECT_EQ(m_accu.PatPlzOrtOk(fall.sPatPlz, fall.sPatOrt), fall.bOk) << &fall - aFaelle;
    }
}

TEST_F(PatientenfilterTest, MembershipRiskAdjustmentQuestionnaires) {
    m_accu.SetMFR("123");
    EXPECT_TRUE(m_accu.MFR_Ok("5") && m_accu.RSA_Ok("0")) << "switched off";
    m_accu.SetChKvk(true);
    EXPECT_TRUE(m_accu.MFR_Ok("23"));
    EXPECT_FALSE(m_accu.MFR_Ok("13") || m_accu.MFR_Ok(""));
    m_accu.SetMFR("");
    EXPECT_TRUE(m_accu.MFR_Ok(""));
    m_accu.SetRsa(true);
    EXPECT_TRUE(m_accu.RSA_Ok("4"));
    EXPECT_FALSE(m_accu.RSA_Ok("0"));

    std::vector<CString> vFragen = {"alt"};
    m_accu.SetFragebogen(" Herz ;; ;Über;"_t);
    m_accu.GetFragebogenVec(vFragen);
    EXPECT_EQ(vFragen, (std::vector<CString>{"HERZ", "ÜBER"}));
}

// ---- dates

TEST_F(PatientenfilterTest, LastVisitHasNoOpenEnd) {
    EXPECT_TRUE(m_accu.LastBehDatumOk("20240101")) << "switched off";
    m_accu.SetChLetzterBesuch(true);
    Pruefe(m_accu, &CStatAccu::SetLetzterBesuch, &CStatAccu::LastBehDatumOk,
           {
               {"", "", {""}, {"20240101"}},
               {"20240101", "", {}, {"", "20240101", "20240202"}},
               {"20240101", "20240331", {"20240101", "20240331"}, {"", "20231231", "20240401"}},
               {"", "20240331", {"", "20240331"}, {"20240401"}},
           });
}

TEST_F(PatientenfilterTest, BirthdayIsMonthAndDayWithoutWrapOverTheYear) {
    Pruefe(m_accu, &CStatAccu::SetGeburtstag, &CStatAccu::PatGebDatOk,
           {
               {"20240301", "", {"", "20240101"}, {}},
               {"", "20240229", {"19990101", "20230229"}, {"", "19990301"}},
               {"20240310", "20240412", {"19700310", "19700401", "19700412"}, {"19700309", "19700413"}},
               {"20231201", "20240131", {}, {"19991215", "19990115"}},
           });
}

TEST_F(PatientenfilterTest, AgeIsCompletedYearsToday) {
    EXPECT_TRUE(m_accu.PatAlterOk("")) << "switched off";
    m_uhr.m_zeit = {2024, 3, 15, 9, 0};
    m_accu.SetChAlter(true);
    Pruefe(m_accu, &CStatAccu::SetAlter, &CStatAccu::PatAlterOk,
           {
               {"", "", {""}, {}},
               {"44", "", {"19800315", "18240315"}, {"", "19800316", "18230315"}},
               {"", "43", {"19800316"}, {"19800315"}},
               {"", "0", {"20230316", "20250314"}, {"20230315", "20250316"}},
           });
}

// ---- treatments and recalls

TEST_F(PatientenfilterTest, TreatmentsInThePeriod) {
    const struct {
        CString sAb, sBis, sOhneVon, sOhneBis;
        bool bHat, bOhne;
    } aFaelle[] = {
        {"", "", "20250101", "20251231", true, false}, // no bounds of the run: all days, also for the section
        {"20240101", "20241231", "", "", true, true},  // bounds of the run alone: no days for the section
        {"20230101", "20231231", "20240101", "20240301", false, false},
        {"20240101", "20241231", "20240101", "20240201", true, true},
        {"", "20240201", "20250101", "20241231", false, false}, // the section's start is open through the run
    };
    for (const char * pPatNr : {"2", "1"})
        Schreibe<CTBeh>({.m_PATNR = pPatNr, .m_DATUM = "20240301", .m_BEHANDLERNR = pPatNr});
    m_accu.m_sLebsString = "'1'";
    CTBeh beh(dbDatabaseRO);
    EXPECT_TRUE(m_accu.PatLastLstOK(&beh, "9", "") && m_accu.PatOhneLstOK(&beh, "1", "")) << "switched off";
    m_accu.SetChHatLst(true);
    EXPECT_TRUE(m_accu.PatLastLstOK(&beh, "1", ""));
    EXPECT_EQ(beh.m_DATUM, "20240301"_t) << "the record stands on the treatment";
    m_accu.SetChOhneLst(true);
    for (const auto & fall : aFaelle) {
        m_accu.SetZeitraum(fall.sAb, fall.sBis);
        m_accu.SetOhneLst(fall.sOhneVon, fall.sOhneBis);
        beh.m_PATNR = "1"; // the record's own number
        EXPECT_EQ(m_accu.PatLastLstOK(&beh, beh.m_PATNR, ""), fall.bHat) << &fall - aFaelle;
        EXPECT_EQ(m_accu.PatOhneLstOK(&beh, beh.m_PATNR, ""), fall.bOhne) << &fall - aFaelle;
        EXPECT_FALSE(m_accu.PatLastLstOK(&beh, "2", "")) << "another treater";
    }
}

TEST_F(PatientenfilterTest, Recalls) {
    // Patient 1 had a recall of kind 1 on 20240105, patient 9 none.
    const CString sArt39 = CString('0', 39) + "1";
    const struct {
        CString sArt, sIntervall, sLast, sPatNr, sArten, sIntervalle;
        bool bOk;
    } aFaelle[] = {
        {"", "", "", "9", "000", "0", true}, // none at all
        {"", "", "", "9", "01", "", false},
        {"", "", "", "9", "", "2", false},
        {"", "", "", "1", "", "", false},
        {"1", "", "", "9", "01", "", true},
        {"3", "", "", "9", "1", "", false},   // behind the text
        {"", "2", "", "9", "1", "2", true},   // no kind is kind 0
        {"**", "", "", "9", "01", "", false}, // and so are two stars
        {"*", "3", "", "9", "1", "2", false}, // not with this interval
        {"*", "", "", "9", sArt39, "", true}, // kind 39 is the last of any
        {"*", "", "", "9", '0' + sArt39, "", false},
        {"1", "3", "", "9", "11", "23", true}, // the interval is the kind's
        {"0", "3", "", "9", "11", "23", false},
        {"1", "0", "", "9", "11", "2", true},         // and 0 behind the text
        {"0", "2", "", "9", "1", "W2", false},        // in weeks it is no digit
        {"2", "", "20990101", "1", "111", "", false}, // never had this kind
        {"1", "", "20240105", "1", "111", "", false},
        {"1", "", "20240106", "1", "111", "", true},
    };
    Schreibe<CTHistRecall>({.m_PATNR = "1", .m_RECALLART = "1", .m_RECALLDATUM = "20240105"});
    m_accu.SetRecallData("0", "", "");
    EXPECT_TRUE(m_accu.PatRecallOk(Patient("9"))) << "switched off";
    EXPECT_FALSE(m_accu.PatRecallOk(Patient("9"), 0)) << "the test of one kind has no switch";
    m_accu.SetChRecall(true);
    for (const auto & fall : aFaelle) {
        CTPat row;
        row.m_PATNR = fall.sPatNr;
        row.m_RECALLART = fall.sArten;
        row.m_RECALLITV = fall.sIntervalle;
        m_accu.SetRecallData(fall.sArt, fall.sIntervall, fall.sLast);
        SCOPED_TRACE(&fall - aFaelle);
        EXPECT_EQ(m_accu.PatRecallOk(&row), fall.bOk);
        EXPECT_TRUE(fall.sArt != "1" || m_accu.PatRecallOk(&row, 1) == fall.bOk);
        EXPECT_EQ(m_accu.PatRecallOk(Patient(fall.sPatNr, fall.sArten, fall.sIntervalle)), fall.bOk);
    }
}

TEST_F(PatientenfilterTest, PatRecallIsEmptyAsksTextsAndHistory) {
    Schreibe<CTHistRecall>({.m_PATNR = "1", .m_RECALLART = "1", .m_RECALLDATUM = "20240105"});
    for (const char * pPatNr : {"9", "", " "}) // or nobody
        EXPECT_TRUE(m_accu.PatRecallIsEmpty(Patient(CString(pPatNr), "00", "0")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("9", "010")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("9", "", "1")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("1", "1")));
    EXPECT_EQ(m_accu.m_rHistRecall.m_RECALLDATUM, "20240105"_t) << "read whatever the texts say";
}

} // namespace orvostat
