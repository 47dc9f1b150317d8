#include "accu/AccuTest.h"

#include <string_view>

namespace orvostat {

namespace {

CKas Kasse(const CString & sKuerzel, const CString & sAb) {
    CKas kas;
    kas.KASKUERZEL = sKuerzel;
    kas.m_sGueltigAb = sAb;
    return kas;
}

CVDesc Periode(const CString & sAb, const CString & sBis, const CString & sNachweis, char cSonderKsArt = 0) {
    CVDesc vdesc;
    vdesc.VDABDATUM = sAb;
    vdesc.VDBISDATUM = sBis;
    vdesc.VNACHWEIS = sNachweis;
    vdesc.m_cSonderKsArt = cSonderKsArt;
    return vdesc;
}

class VersicherungTest : public CAccuTest {
protected:
    VersicherungTest() { m_accu.GetMemForTables(); }

    // Rows of an insurer, one for each day; their kinds tell them apart.
    static void SchreibeKasse(const CString & sKuerzel,
                              std::initializer_list<std::pair<const char *, const char *>> vZeilen,
                              const CString & sGesetzlich = "1") {
        for (const auto & [pAb, pKassenart] : vZeilen)
            Schreibe<CTOrvoKas>({.m_KASKUERZEL = sKuerzel,
                                 .m_GUELTIGAB = pAb,
                                 .m_KASFLAG1 = sGesetzlich,
                                 .m_KASSENART = pKassenart});
    }
    // The insurers in memory: "aok 20140101, bkk 19800101".
    std::string Kassen() const {
        std::string s;
        for (const CKas & kas : m_accu.m_vKas)
            s += (s.empty() ? "" : ", ") + kas.KASKUERZEL.Utf8() + ' ' + kas.m_sGueltigAb.Utf8();
        return s;
    }
    void FuegePerioden(std::initializer_list<const char *> vKuerzel) {
        for (const char * pKuerzel : vKuerzel)
            m_accu.m_mapVDesc["1"].emplace_back().KASKUERZEL = pKuerzel;
    }
};

} // namespace

// ---- insurers

TEST_F(VersicherungTest, FindKasFollowsWhateverHappensToTheTable) {
    auto & vKas = m_accu.m_vKas;
    vKas = {Kasse("aok", "20200101"), Kasse("aok", "19800101"), Kasse("BKK", "20150101")};
    EXPECT_EQ(m_accu.FindKas("AOK", "20210101"), 0);
    EXPECT_EQ(m_accu.FindKas("Aok", "20191231"), 1);
    EXPECT_EQ(m_accu.FindKas("bkk", "20150101"), 2);
    EXPECT_EQ(m_accu.FindKas("bkk", "20141231"), -2);
    EXPECT_EQ(m_accu.FindKas("tk", "20210101"), -1);
    vKas[2].m_sGueltigAb = "20100101";
    EXPECT_EQ(m_accu.FindKas("bkk", "20141231"), 2);
    vKas[2].KASKUERZEL = "tk";
    EXPECT_EQ(m_accu.FindKas("bkk", "20210101"), -1);
    EXPECT_EQ(m_accu.FindKas("TK", "20210101"), 2);
    vKas.erase(vKas.begin());
    EXPECT_EQ(m_accu.FindKas("Aok", "20210101"), 0);
    vKas = {Kasse("bkk", "20200101"), Kasse("aok", "20200101")};
    EXPECT_EQ(m_accu.FindKas("bkk", "20210101"), 0);
    std::vector<CKas> vListe = {Kasse("tk", "20200101")};
    vKas = vListe;
    EXPECT_EQ(m_accu.FindKas("tk", "20210101"), 0);
    vKas.front().KASKUERZEL = "bkk";
    EXPECT_EQ(m_accu.FindKas("tk", "20210101"), -1);
    vKas.assign(2, vListe[0]);
    EXPECT_EQ(m_accu.FindKas("bkk", "20210101"), -1);
    EXPECT_EQ(m_accu.FindKas("tk", "20210101"), 0);
    const std::vector<CKas> & vLesend = vKas;
    EXPECT_EQ(vLesend.size(), 2U);
    const auto vWeg = std::move(vKas);
    EXPECT_EQ(m_accu.FindKas("tk", "20210101"), -1);
}

TEST_F(VersicherungTest, AnInsurerIsReadOnceAndUnchangedRowsMelt) {
    SchreibeKasse("aok", {{"2008", "a"}, {"20100101", "b"}, {"2012", "b"}, {"20140101", "a"}, {"2015", "a"}});
    SchreibeKasse("bkk", {{"20100101", "a"}});
    EXPECT_TRUE(m_accu.GetKasFromVDesc("aok", "20240101", ""));
    EXPECT_TRUE(HatGelesen());
    EXPECT_TRUE(m_accu.GetKasFromVDesc("AOK", "19900101", "")) << "the oldest holds from the start";
    EXPECT_FALSE(m_accu.GetKasFromVDesc("aok", "19791231", "")) << "known, but no row for the date";
    EXPECT_FALSE(HatGelesen());
    EXPECT_EQ(m_accu.ReadKas("bkk"), 0);
    EXPECT_EQ(m_accu.ReadKas(m_accu.m_pROrvoKas->m_KASKUERZEL), 0);
    EXPECT_TRUE(m_accu.GetKasFromVDesc(m_accu.m_pROrvoKas->m_KASKUERZEL, "20240101", ""));
    EXPECT_FALSE(m_accu.GetKasFromVDesc("tk", "20240101", ""));
    EXPECT_EQ(Kassen(), "aok 20140101, aok 20100101, aok 19800101, bkk 19800101");
}

TEST_F(VersicherungTest, StatutoryInsurersOnly) {
    SchreibeKasse("aok", {{"20100101", "a"}});
    SchreibeKasse("aok", {{"20120101", "b"}}, "2");
    SchreibeKasse("pkv", {{"20100101", "a"}}, "");
    m_accu.SetNurGesetzlicheKassen(true);
    m_accu.m_vKas = {Kasse("alt", "20000101")};
    EXPECT_FALSE(m_accu.GetKasFromVDesc("pkv", "20240101", ""));
    EXPECT_TRUE(m_accu.GetKasFromVDesc("aok", "20240101", ""));
    EXPECT_EQ(Kassen(), "alt 20000101, aok 19800101");
    EXPECT_EQ(m_accu.FindKas("pkv", "20240101"), -1);
}

TEST_F(VersicherungTest, GetKasFromAllVDescStopsAtTheStartOfTheRun) {
    SchreibeKasse("aok", {{"20080101", "a"}, {"20120101", "c"}, {"20140101", "d"}});
    SchreibeKasse("bkk", {{"20200101", "a"}});
    SchreibeKasse("tk", {{"20100101", "a"}, {"20120102", "a"}});
    m_accu.m_vKas = {Kasse("alt", "20000101")};
    FuegePerioden({"tk", "", "bkk", "aok", "weg", "tk", "aok"});
    m_accu.SetZeitraum("20120101", "");
    EXPECT_TRUE(m_accu.GetKasFromAllVDesc("1"));
    EXPECT_EQ(Kassen(), "aok 20140101, aok 20120101, bkk 19800101, tk 20100101");
    EXPECT_TRUE(m_accu.GetKasFromAllVDesc("2"));
    EXPECT_EQ(Kassen(), "");
}

TEST_F(VersicherungTest, SkippedRowsRewriteTheLastEntryAndStopTheWalk) {
    SchreibeKasse("aok", {{"20120101", "a"}});
    SchreibeKasse("pkv", {{"20200101", "a"}}, "");
    SchreibeKasse("tk", {{"20110101", "a"}});
    SchreibeKasse("tk", {{"20120101", "a"}}, "");
    m_accu.SetNurGesetzlicheKassen(true);
    m_accu.SetZeitraum("20130101", "");
    FuegePerioden({"aok", "tk"});
    EXPECT_TRUE(m_accu.GetKasFromAllVDesc("1"));
    EXPECT_EQ(Kassen(), "aok 20120101") << "tk stops before its statutory row";
    FuegePerioden({"pkv"});
    EXPECT_TRUE(m_accu.GetKasFromAllVDesc("1"));
    EXPECT_EQ(Kassen(), "aok 19800101") << "rewritten by pkv";
}

// ---- periods

TEST_F(VersicherungTest, GetVDescTakesThePeriodsWithAnInsurerNewestFirst) {
    SchreibeKasse("aok", {{"20100101", "a"}});
    Schreibe<CTVDesc>({"1", "a", "20100101", "20111231", "", "aok"});
    Schreibe<CTVDesc>({"1", "b", "20120101", "20131231", "", "aok"});
    Schreibe<CTVDesc>({"1", "c", "20140101", "", "", "weg"});
    Schreibe<CTVDesc>({"1", "d", "20150101", "", "", ""});
    Schreibe<CTVDesc>({"1", "e", "20160101", "", "", "aok"});
    Schreibe<CTVDesc>({"1", "f", "20160101", "20161231", "", "aok"});
    EXPECT_FALSE(m_accu.GetVDesc("2", "19800101"));
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
    EXPECT_EQ(m_accu.FindVDescByDate("2", ""), nullptr);
    EXPECT_TRUE(m_accu.m_mapVDesc.contains("2")) << "whoever was looked up has a list";
    EXPECT_TRUE(m_accu.GetVDesc("1", "20131231"));
    m_accu.m_pRVDesc->m_VDABDATUM = "19800101";
    EXPECT_TRUE(m_accu.GetVDesc(m_accu.m_pRVDesc->m_PATNR, m_accu.m_pRVDesc->m_VDABDATUM));
    const std::vector<CVDesc> & v = m_accu.m_mapVDesc["1"];
    std::string sNummern;
    for (const CVDesc & vdesc : v)
        sNummern += vdesc.m_sVDescNr.Utf8();
    EXPECT_EQ(sNummern, "febfeba");
    EXPECT_EQ(m_accu.FindVDesc("1", "b"), &v[5]) << "the last one of the number";
    EXPECT_EQ(m_accu.FindVDesc("1", "c"), nullptr);
    m_accu.ClearV();
    EXPECT_EQ(m_accu.FindVDesc("1", "b"), nullptr);
}

TEST_F(VersicherungTest, GetActVDescAddsThePeriodOfTheDayWhateverItsInsurer) {
    Schreibe<CTVDesc>({"1", "a", "20100101", "20111231", "", "weg"});
    EXPECT_EQ(m_accu.GetActVDesc("1", "20120101"), nullptr);
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
    for (const std::size_t i : {0u, 1u}) {
        const CVDesc * pVDesc = m_accu.GetActVDesc("1", "20111231");
        ASSERT_EQ(pVDesc, &m_accu.m_mapVDesc["1"].at(i));
        EXPECT_EQ(pVDesc->m_sVDescNr, "a"_t);
    }
}

TEST_F(VersicherungTest, FindVDescByDateChoosesAmongOverlappingPeriods) {
    const std::map<char, CVDesc> mapPerioden = {
        {'g', Periode("20240701", "20240701", "g")}, // statutory, of one day
        {'a', Periode("2024", "", "E", 'a')},        // "a" is no special insurer type
        {'s', Periode("2024", "", "j", 'b')},        // special
        {'p', Periode("2024", "", "p")},             // private
        {'0', Periode("20240702", "", "g")},         // not begun
        {'1', Periode("20230101", "20240630", "g")}, // over
        {'x', Periode("20240701", "20240601", "g")}, // ends before it begins
    };
    auto & vVDesc = m_accu.m_mapVDesc["1"];
    const std::pair<const char *, int> aFaelle[] = {
        {"", -1},  {"01x", -1}, {"xg", 1}, {"ga", 0}, {"pg", 1},   {"ps", 1}, {"sa", 1},
        {"ss", 0}, {"gs", 0},   {"pp", 0}, {"sp", 0}, {"pspa", 3}, {"gp", 0},
    };
    for (const auto & [pPerioden, iWahl] : aFaelle) {
        vVDesc.clear();
        for (const char c : std::string_view(pPerioden))
            vVDesc.push_back(mapPerioden.at(c));
        const CVDesc * pWahl = m_accu.FindVDescByDate("1", ""); // today, 20240701
        EXPECT_EQ(pWahl == nullptr ? -1 : pWahl - vVDesc.data(), iWahl) << pPerioden;
    }
    EXPECT_EQ(m_accu.FindVDescByDate("1", "20231231"), nullptr);
}

TEST_F(VersicherungTest, IsPrivatPatientTakesEmptyBoundsFromTheRun) {
    // Statutory to the end of 2010, private from then on; today is 20240701.
    const struct {
        CString sAb, sBis, sVon, sEnde; // of the run, and asked for
        bool bPrivat;
    } aFaelle[] = {
        {"", "", "", "", true},
        {"", "", "20101231", "20240101", false},
        {"", "", "20110101", "20240101", true},
        {"", "", "", "20240101", false},
        {"", "", "20100101", "", false},
        {"20100101", "20101231", "", "", false},
        {"20110101", "", "", "20240101", true},
        {"", "20041231", "20000101", "", true},
    };
    m_accu.m_mapVDesc["1"] = {Periode("20050101", "20101231", "g"), Periode("20110101", "", "p")};
    for (const auto & fall : aFaelle) {
        m_accu.SetZeitraum(fall.sAb, fall.sBis);
        EXPECT_EQ(m_accu.IsPrivatPatient("1", fall.sVon, fall.sEnde), fall.bPrivat) << &fall - aFaelle;
    }
    EXPECT_TRUE(m_accu.IsPrivatPatient("2", "", "")) << "no period at all";
}

// ---- the card section

TEST_F(VersicherungTest, EachKindOfProofHasItsSwitch) {
    const auto Zugelassen = [this](bool bDurchzug, bool bMev, bool bSchein, bool bEEB) {
        m_accu.SetKvkDurchzug(bDurchzug);
        m_accu.SetKvkMev(bMev);
        m_accu.SetSchein(bSchein);
        m_accu.SetEEB(bEEB);
        std::string s;
        for (const char * pNachweis : {"G", "g", "j", "E", "O", "p", ""})
            if (m_accu.CheckKvkVorgaben(Periode("", "", pNachweis))) s += *pNachweis == 0 ? "-" : pNachweis;
        return s;
    };
    EXPECT_EQ(Zugelassen(false, false, false, false), "GgjEOp-");
    EXPECT_EQ(Zugelassen(true, false, false, false), "G");
    EXPECT_EQ(Zugelassen(false, true, true, false), "gj");
    EXPECT_EQ(Zugelassen(false, false, false, true), "EO");
}

TEST_F(VersicherungTest, CardInTheSectionsDays) {
    CTBeh beh(dbDatabaseRO);
    m_accu.SetKvkDatum("20240101", "20240331");
    EXPECT_TRUE(m_accu.KvkVorgabenOk(&beh, "1")) << "switched off";
    m_accu.SetChKvk(true);
    EXPECT_FALSE(m_accu.KvkVorgabenOk(&beh, "1")) << "no period";
    CVDesc & vdesc = m_accu.m_mapVDesc["1"].emplace_back(Periode("20240101", "", "g"));
    // The day of reading goes first, else the first day counts.
    const std::pair<const char *, bool> aTage[] = {
        {"", true}, {"20231231", false}, {"20240331", true}, {"20240401", false}, {"20240101", true}};
    for (const auto & [pTag, bOk] : aTage) {
        vdesc.EINLESEDATUM = pTag;
        EXPECT_EQ(m_accu.KvkVorgabenOk(&beh, "1"), bOk) << pTag;
    }
    m_accu.SetSchein(true);
    EXPECT_FALSE(m_accu.KvkVorgabenOk(&beh, "1")) << "not the kind of proof";
}

TEST_F(VersicherungTest, MissingCard) {
    const CVDesc abgelaufen = Periode("20230101", "20231231", "g");
    const struct {
        CVDesc vdesc;
        CString sPatNr;
        bool bFehlt;
    } aFaelle[] = {
        {abgelaufen, "1", true},
        {abgelaufen, "2", true},  // the kind of fees where there is none of billing
        {abgelaufen, "3", false}, // the kind of billing goes first
        {abgelaufen, "4", false}, // treated by another treater or on the days beside
        {Periode("20240101", "", "g"), "1", false},
        {Periode("20230101", "20240101", "j"), "1", false},
        {Periode("20240331", "", "G"), "1", false},
        {Periode("20240401", "", "G"), "1", true},
        {Periode("20231231", "", "g"), "1", true}, // without end, to the end of its quarter
        {Periode("20240101", "", "E"), "1", true}, // electronic proof is no card
    };
    Schreibe<CTBeh>({.m_PATNR = "1", .m_DATUM = "20240201", .m_BEHANDLERNR = "7", .m_ABRART = "p"});
    Schreibe<CTBeh>({.m_PATNR = "1", .m_DATUM = "20240202", .m_BEHANDLERNR = "7", .m_ABRART = "b"});
    Schreibe<CTBeh>({.m_PATNR = "2", .m_DATUM = "20240331", .m_BEHANDLERNR = "7", .m_GOART = "k"});
    Schreibe<CTBeh>(
        {.m_PATNR = "3", .m_DATUM = "20240201", .m_BEHANDLERNR = "7", .m_GOART = "k", .m_ABRART = "p"});
    Schreibe<CTBeh>({.m_PATNR = "4", .m_DATUM = "20240201", .m_BEHANDLERNR = "8", .m_ABRART = "b"});
    for (const char * pTag : {"20231231", "20240401"})
        Schreibe<CTBeh>({.m_PATNR = "4", .m_DATUM = pTag, .m_BEHANDLERNR = "7", .m_ABRART = "b"});
    constexpr std::string_view ARTEN = "abcdefghijkmprsuz";
    for (const char c : ARTEN)
        Schreibe<CTBeh>(
            {.m_PATNR = CString(c), .m_DATUM = "20240201", .m_BEHANDLERNR = "7", .m_ABRART = CString(c)});
    m_accu.m_sLebsString = "'7'";
    m_accu.SetChKvk(true);
    m_accu.SetKvkFehlt(true);
    m_accu.SetKvkDatum("20240101", "20240331");
    for (const auto & fall : aFaelle) {
        m_accu.m_mapVDesc[fall.sPatNr] = {fall.vdesc};
        CTBeh beh(dbDatabaseRO);
        EXPECT_EQ(m_accu.KvkVorgabenOk(&beh, fall.sPatNr), fall.bFehlt) << &fall - aFaelle;
    }
    std::string sBrauchtKarte;
    for (const char c : ARTEN) {
        CTBeh beh(dbDatabaseRO);
        if (m_accu.KvkVorgabenOk(&beh, CString(c))) sBrauchtKarte += c;
    }
    EXPECT_EQ(sBrauchtKarte, "befghk");
}

} // namespace orvostat
