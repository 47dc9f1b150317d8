#include "accu/AccuTest.h"

#include <map>
#include <string>
#include <vector>

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
public:
    VersicherungTest() { m_accu.GetMemForTables(); }

    // The insurers in memory: "aok 20140101,bkk 19800101".
    void Kassen(CFall & fall) const {
        std::vector<std::string> v;
        for (const CKas & kas : m_accu.m_vKas)
            v.push_back(kas.KASKUERZEL.Utf8() + ' ' + kas.m_sGueltigAb.Utf8());
        fall.Aus("KASSEN", v);
    }
    void EineKasse(CFall & fall) {
        Waehle(m_accu, fall);
        if (fall.Ein<bool>("ALT")) m_accu.m_vKas = {Kasse("alt", "20000101")};
        (void)HatGelesen();
        CString & sKuerzel = m_accu.m_pROrvoKas->m_KASKUERZEL; // the code may be the record's own
        sKuerzel = fall.Ein("KUERZEL");
        fall.Aus("JA", m_accu.GetKasFromVDesc(sKuerzel, fall.Ein("DATUM"), ""));
        if (fall.Erwartet("GELESEN")) fall.Aus("GELESEN", HatGelesen());
        if (fall.Erwartet("KASSEN")) Kassen(fall);
        if (fall.Erwartet("POS")) fall.Aus("POS", m_accu.FindKas(fall.Ein("KUERZEL"), fall.Ein("DATUM")));
    }
    void AlleKassen(CFall & fall) {
        Waehle(m_accu, fall);
        m_accu.m_mapVDesc["1"].clear();
        for (const CString & sKuerzel : fall.Ein<std::vector<CString>>("PERIODEN"))
            m_accu.m_mapVDesc["1"].emplace_back().KASKUERZEL = sKuerzel;
        EXPECT_TRUE(m_accu.GetKasFromAllVDesc(fall.Ein("PATNR", "1"_t)));
        Kassen(fall);
    }
    // Which of some periods holds today, 20240701.
    void Periodenwahl(CFall & fall) {
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
        vVDesc.clear();
        for (const char c : fall.Ein<std::string>("PERIODEN"))
            vVDesc.push_back(mapPerioden.at(c));
        const CVDesc * pWahl = m_accu.FindVDescByDate("1", fall.Ein("DATUM"));
        if (pWahl != nullptr) fall.Aus("WAHL", pWahl - vVDesc.data() + 1);
    }
    // Statutory to the end of 2010, private from then on.
    void Privatpatient(CFall & fall) {
        m_accu.m_mapVDesc["1"] = {Periode("20050101", "20101231", "g"), Periode("20110101", "", "p")};
        Waehle(m_accu, fall);
        fall.Aus("JA", m_accu.IsPrivatPatient(fall.Ein("PATNR", "1"_t), fall.Ein("VON"), fall.Ein("BIS")));
    }
    // The card section, for a patient with one period or with none.
    void Karte(CFall & fall) {
        Waehle(m_accu, fall);
        m_accu.m_sLebsString = "'7'";
        const CString sPatNr = fall.Ein("PATNR");
        if (fall.Hat("VNACHWEIS")) {
            CVDesc vdesc = Periode(fall.Ein("VON"), fall.Ein("BIS"), fall.Ein("VNACHWEIS"));
            fall.Nimm("EINLESEDATUM", vdesc.EINLESEDATUM);
            m_accu.m_mapVDesc[sPatNr] = {vdesc};
        }
        CTBeh beh(dbDatabaseRO);
        fall.Aus("JA", m_accu.KvkVorgabenOk(&beh, sPatNr));
    }
};

} // namespace

TEST_F(VersicherungTest, Faelle) {
    PruefeFaelle<VersicherungTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/versicherung.txt",
                                   {{"kasse", &VersicherungTest::EineKasse},
                                    {"kassen", &VersicherungTest::AlleKassen},
                                    {"periode", &VersicherungTest::Periodenwahl},
                                    {"privat", &VersicherungTest::Privatpatient},
                                    {"karte", &VersicherungTest::Karte}});
}

// ---- insurers

// The random model of the fee rows proves what can happen to such a table; here is what is the insurers' own.
TEST_F(VersicherungTest, FindKasFollowsTheTable) {
    auto & vKas = m_accu.m_vKas;
    vKas = {Kasse("aok", "20200101"), Kasse("aok", "19800101"), Kasse("BKK", "20150101")};
    const auto Finde = [this](const char * pKuerzel, const char * pDatum) {
        return m_accu.FindKas(pKuerzel, pDatum);
    };
    EXPECT_EQ(Werte(Finde("AOK", "20210101"), Finde("Aok", "20191231"), Finde("bkk", "20150101")), "|1|2");
    EXPECT_EQ(Werte(Finde("bkk", "20141231"), Finde("tk", "20210101")), "-2|-1");
    vKas[2].m_sGueltigAb = "20100101";
    EXPECT_EQ(Finde("bkk", "20141231"), 2);
    vKas[2].KASKUERZEL = "tk";
    EXPECT_EQ(Werte(Finde("bkk", "20210101"), Finde("TK", "20210101")), "-1|2");
    vKas.erase(vKas.begin());
    EXPECT_EQ(Finde("Aok", "20210101"), 0);
    const auto vWeg = std::move(vKas);
    EXPECT_EQ(Finde("tk", "20210101"), -1);
}

// ---- periods

TEST_F(VersicherungTest, GetVDescTakesThePeriodsWithAnInsurerNewestFirst) {
    Schreibe(R"(ORVOKAS KASKUERZEL=aok GUELTIGAB=20100101 KASFLAG1=1
                VDESC PATNR=1 VDESCNR=a VDABDATUM=20100101 VDBISDATUM=20111231 KASKUERZEL=aok
                VDESC PATNR=1 VDESCNR=b VDABDATUM=20120101 VDBISDATUM=20131231 KASKUERZEL=aok
                VDESC PATNR=1 VDESCNR=c VDABDATUM=20140101 KASKUERZEL=weg
                VDESC PATNR=1 VDESCNR=d VDABDATUM=20150101
                VDESC PATNR=1 VDESCNR=e VDABDATUM=20160101 KASKUERZEL=aok
                VDESC PATNR=1 VDESCNR=f VDABDATUM=20160101 VDBISDATUM=20161231 KASKUERZEL=aok)");
    EXPECT_FALSE(m_accu.GetVDesc("2", "19800101"));
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
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
    Schreibe("VDESC PATNR=1 VDESCNR=a VDABDATUM=20100101 VDBISDATUM=20111231 KASKUERZEL=weg");
    EXPECT_EQ(m_accu.GetActVDesc("1", "20120101"), nullptr);
    EXPECT_TRUE(m_accu.m_mapVDesc.empty());
    for (const std::size_t i : {0u, 1u}) {
        const CVDesc * pVDesc = m_accu.GetActVDesc("1", "20111231");
        ASSERT_EQ(pVDesc, &m_accu.m_mapVDesc["1"].at(i));
        EXPECT_EQ(pVDesc->m_sVDescNr, "a"_t);
    }
}

} // namespace orvostat
