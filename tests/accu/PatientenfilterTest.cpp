#include "accu/AccuTest.h"

using namespace orvostat;

namespace {

using PatientenfilterTest = CAccuTest;

CPat Patient(const CString & sPatNr, const CString & sArten = CString(),
             const CString & sIntervalle = CString()) {
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

template <std::size_t N>
void Pruefe(CStatAccu & accu, void (CSelektion::*pWaehle)(const CString &, const CString &),
            bool (CStatAccu::*pFilter)(const CString &), const SSpanne (&aSpannen)[N]) {
    for (const auto & [sVon, sBis, vGut, vSchlecht] : aSpannen) {
        (accu.*pWaehle)(sVon, sBis);
        for (const CString & sWert : vGut)
            EXPECT_TRUE((accu.*pFilter)(sWert)) << sVon.Utf8() << '-' << sBis.Utf8() << ": " << sWert.Utf8();
        for (const CString & sWert : vSchlecht)
            EXPECT_FALSE((accu.*pFilter)(sWert)) << sVon.Utf8() << '-' << sBis.Utf8() << ": " << sWert.Utf8();
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

// ---- texts

TEST_F(PatientenfilterTest, EachSectionReadsAnEmptySelectionInItsOwnWay) {
    using C = CStatAccu;
    struct SAbschnitt {
        const char * pName;
        void (CSelektion::*pSchalte)(const bool &);
        void (CSelektion::*pWaehle)(const CString &);
        bool (CStatAccu::*pFilter)(const CString &);
        bool bAus;      // switched off, another value selected
        bool bLeerWert; // nothing selected, the patient has a value
        bool bLeerLeer; // nothing selected, the patient has none
        bool bGross;    // the same value in other case
    };
    const SAbschnitt aAbschnitte[] = {
        {"SELEKTION", &C::SetChSelektion, &C::SetSelektion, &C::PatSelektOk, false, true, true, true},
        {"RISIKO", &C::SetChRisikoAnamnese, &C::SetRisikoAnamnese, &C::PatAnamneseOk, false, true, true,
         true},
        {"ANREDE", &C::SetChAnrede, &C::SetPatAnrede, &C::PatAnredeOk, true, false, true, true},
        {"STRASSE", &C::SetChStrasse, &C::SetStrasse, &C::PatStrasseOk, true, false, true, true},
        {"UEBERWARZT", &C::SetChUeberwArzt, &C::SetUeberwArzt, &C::UeberwArztOk, true, true, false, false},
        {"HAUSARZT", &C::SetChHausArzt, &C::SetHausArzt, &C::HausArztOk, true, true, false, false},
    };
    for (const SAbschnitt & abschnitt : aAbschnitte) {
        const auto Ok = [&](bool bAn, const CString & sGewaehlt, const CString & sWert) {
            (m_accu.*abschnitt.pSchalte)(bAn);
            (m_accu.*abschnitt.pWaehle)(sGewaehlt);
            return (m_accu.*abschnitt.pFilter)(sWert);
        };
        SCOPED_TRACE(abschnitt.pName);
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
    const SSpanne aSpannen[] = {
        {"", "", {""}, {"20240101"}},
        {"20240101", "", {}, {"", "20240101", "20240202"}},
        {"20240101", "20240331", {"20240101", "20240331"}, {"", "20231231", "20240401"}},
        {"", "20240331", {"", "20240331"}, {"20240401"}},
    };
    Pruefe(m_accu, &CStatAccu::SetLetzterBesuch, &CStatAccu::LastBehDatumOk, aSpannen);
}

TEST_F(PatientenfilterTest, BirthdayIsMonthAndDayWithoutWrapOverTheYear) {
    const SSpanne aSpannen[] = {
        {"20240301", "", {"", "20240101"}, {}},
        {"", "20240229", {"19990101", "20230229"}, {"", "19990301"}},
        {"20240310", "20240412", {"19700310", "19700401", "19700412"}, {"19700309", "19700413"}},
        {"20231201", "20240131", {}, {"19991215", "19990115"}},
    };
    Pruefe(m_accu, &CStatAccu::SetGeburtstag, &CStatAccu::PatGebDatOk, aSpannen);
}

TEST_F(PatientenfilterTest, AgeIsCompletedYearsToday) {
    EXPECT_TRUE(m_accu.PatAlterOk("")) << "switched off";
    m_uhr.m_zeit = {2024, 3, 15, 9, 0};
    m_accu.SetChAlter(true);
    const SSpanne aSpannen[] = {
        {"", "", {""}, {}},
        {"44", "", {"19800315", "18240315"}, {"", "19800316", "18230315"}},
        {"", "43", {"19800316"}, {"19800315"}},
        {"", "0", {"20230316", "20250314"}, {"20230315", "20250316"}},
    };
    Pruefe(m_accu, &CStatAccu::SetAlter, &CStatAccu::PatAlterOk, aSpannen);
}

// ---- treatments and recalls

TEST_F(PatientenfilterTest, TreatmentsInThePeriod) {
    struct SFall {
        const char * pName;
        CString sAb, sBis, sOhneVon, sOhneBis;
        bool bHat, bOhne;
    };
    const SFall aFaelle[] = {
        {"no bounds of the run: all days, also for the section", "", "", "20250101", "20251231", true, false},
        {"bounds of the run alone: no days for the section", "20240101", "20241231", "", "", true, true},
        {"the section's days", "20230101", "20231231", "20240101", "20240301", false, false},
        {"the section's days before the treatment", "20240101", "20241231", "20240101", "20240201", true,
         true},
        {"the section's start is open through the run", "", "20240201", "20250101", "20241231", false, false},
    };
    for (const char * pPatNr : {"1", "2"})
        Schreibe<CTBeh>({.m_PATNR = pPatNr, .m_DATUM = "20240301", .m_BEHANDLERNR = pPatNr});
    m_accu.m_sLebsString = "'1'";
    CTBeh beh(dbDatabaseRO);
    EXPECT_TRUE(m_accu.PatLastLstOK(&beh, "9", "") && m_accu.PatOhneLstOK(&beh, "1", "")) << "switched off";
    m_accu.SetChHatLst(true);
    m_accu.SetChOhneLst(true);
    for (const SFall & fall : aFaelle) {
        m_accu.SetZeitraum(fall.sAb, fall.sBis);
        m_accu.SetOhneLst(fall.sOhneVon, fall.sOhneBis);
        EXPECT_EQ(m_accu.PatLastLstOK(&beh, "1", ""), fall.bHat) << fall.pName;
        EXPECT_EQ(m_accu.PatOhneLstOK(&beh, "1", ""), fall.bOhne) << fall.pName;
        EXPECT_FALSE(m_accu.PatLastLstOK(&beh, "2", "")) << "another treater";
    }
}

TEST_F(PatientenfilterTest, Recalls) {
    struct SFall {
        const char * pName;
        CString sArt, sIntervall, sLast; // of the selection
        CString sPatNr, sArten, sIntervalle;
        bool bOk;
    };
    // Patient 1 had a recall of kind 1 on 20240105, patient 9 none.
    const CString sArt39 = CString('0', 39) + "1";
    const SFall aFaelle[] = {
        {"none at all", "", "", "", "9", "000", "0", true},
        {"none, but a kind is on", "", "", "", "9", "01", "", false},
        {"none, but an interval", "", "", "", "9", "", "2", false},
        {"none, but one in the past", "", "", "", "1", "", "", false},
        {"kind on", "1", "", "", "9", "01", "", true},
        {"kind behind the text", "3", "", "", "9", "1", "", false},
        {"no kind is kind 0", "", "2", "", "9", "1", "2", true},
        {"two stars are kind 0", "**", "", "", "9", "01", "", false},
        {"kind 39 is the last of any", "*", "", "", "9", sArt39, "", true},
        {"kind 40 is none of any", "*", "", "", "9", '0' + sArt39, "", false},
        {"interval of the kind", "1", "3", "", "9", "11", "23", true},
        {"interval of another kind", "0", "3", "", "9", "11", "23", false},
        {"interval behind the text is 0", "1", "0", "", "9", "11", "2", true},
        {"interval in weeks is no digit", "0", "2", "", "9", "1", "W2", false},
        {"never had this kind", "2", "", "20990101", "1", "111", "", false},
        {"last one on the day", "1", "", "20240105", "1", "111", "", false},
        {"last one before the day", "1", "", "20240106", "1", "111", "", true},
    };
    Schreibe<CTHistRecall>({.m_PATNR = "1", .m_RECALLART = "1", .m_RECALLDATUM = "20240105"});
    m_accu.SetRecallData("0", "", "");
    EXPECT_TRUE(m_accu.PatRecallOk(Patient("9"))) << "switched off";
    EXPECT_FALSE(m_accu.PatRecallOk(Patient("9"), 0)) << "the test of one kind has no switch";
    m_accu.SetChRecall(true);
    for (const SFall & fall : aFaelle) {
        CTPat row;
        row.m_PATNR = fall.sPatNr;
        row.m_RECALLART = fall.sArten;
        row.m_RECALLITV = fall.sIntervalle;
        m_accu.SetRecallData(fall.sArt, fall.sIntervall, fall.sLast);
        SCOPED_TRACE(fall.pName);
        EXPECT_EQ(m_accu.PatRecallOk(&row), fall.bOk);
        EXPECT_EQ(m_accu.PatRecallOk(Patient(fall.sPatNr, fall.sArten, fall.sIntervalle)), fall.bOk);
    }
}

TEST_F(PatientenfilterTest, PatRecallIsEmptyAsksTextsAndHistory) {
    Schreibe<CTHistRecall>({.m_PATNR = "1", .m_RECALLART = "1", .m_RECALLDATUM = "20240105"});
    EXPECT_TRUE(m_accu.PatRecallIsEmpty(Patient("9", "00", "0")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("9", "010")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("9", "", "1")));
    EXPECT_FALSE(m_accu.PatRecallIsEmpty(Patient("1", "1")));
    EXPECT_EQ(m_accu.m_rHistRecall.m_RECALLDATUM, "20240105"_t) << "read whatever the texts say";
}
