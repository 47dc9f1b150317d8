#include "accu/AccuTest.h"

#include <algorithm>
#include <random>
#include <set>
#include <sstream>
#include <thread>
#include <tuple>

namespace orvostat {

namespace {

constexpr const char * POOLS[] = {
    "gostattyp",          "gostattyp2",   "gostattyp3", "gostattyp4",   "statistikspalte",
    "medstatistikspalte", "kassenarttyp", "techlsttyp", "kassengrptyp", "hvmbudget",
};

class StatAccuTest : public CAccuTest {
public:
    // One entry "k1" in every pool but one.
    static void SchreibePools(const std::string & sOhne = "") {
        for (const char * pPool : POOLS)
            if (pPool != sOhne) SchreibePool(pPool, "k1");
    }
    static void SchreibePool(const char * pPool, const CString & sKey) {
        Schreibe(std::string("SELECTPOOL SPLFD=1 SPTEXT=Text SPPOOL=") + pPool + " SPKEY=" + sKey.Utf8());
    }
    static CLebStruct Leb(const CString & sLeb, const CString & sMdKasse, const CString & sMdPrivat) {
        CLebStruct leb;
        leb.m_sLeb = sLeb;
        leb.m_sMdKasse = sMdKasse;
        leb.m_sMdPrivat = sMdPrivat;
        return leb;
    }
    static CMdStruct Md(const CString & sMdId, const CString & sCodes) {
        CMdStruct md;
        md.m_sMdId = sMdId;
        md.m_sMdCodes = sCodes;
        return md;
    }
    // Gives f every table that a run fills.
    template <class F> void JedeTabelle(F f) {
        const auto Alle = [&f](auto &... tabelle) { (f(tabelle), ...); };
        Alle(m_accu.m_vBehHits, m_accu.m_vBehErrors, m_accu.m_vPat, m_accu.m_mapPat, m_accu.m_mapVDesc,
             m_accu.m_vKas, m_accu.m_vGipsHits, m_accu.m_vRechHits, m_accu.m_vVerordnungHits,
             m_accu.m_vGlabHits, m_accu.m_vGlabFaktHits, m_accu.m_vMischPwPlaene, m_accu.m_vPwPlaene);
    }
    // An entry in each of them, and the cursors moved.
    void FuelleTabellen() {
        JedeTabelle([](auto & tabelle) {
            if constexpr (requires { tabelle.resize(1); })
                tabelle.resize(1);
            else
                tabelle["1"] = {};
        });
        m_accu.m_iGlabPos = m_accu.m_iErrPos = m_accu.m_iGipsPos = m_accu.m_iRechPos = 1;
    }
    [[nodiscard]] std::vector<std::size_t> Tabellengroessen() {
        std::vector<std::size_t> v;
        JedeTabelle([&v](const auto & tabelle) { v.push_back(tabelle.size()); });
        return v;
    }
    [[nodiscard]] std::vector<std::size_t> Poolgroessen() const;

    void Pools(CFall & fall) {
        const auto sOhne = fall.Ein<std::string>("OHNE");
        SchreibePools();
        EXPECT_EQ(CStatAccu().GetGlobalData(true), 0);
        CTSelectPool pool(dbDatabase);
        EXPECT_EQ(pool.GetRecByParam({AusUtf8(sOhne), "1"}) + pool.Delete(), 0);
        fall.Aus("CODE", m_accu.GetGlobalData(true));
        fall.Aus("GROESSEN", Poolgroessen());
        SchreibePool(sOhne.c_str(), "k1");
        EXPECT_EQ(m_accu.GetGlobalData(true), 0) << "filled by and by";
    }
    void Meldung(CFall & fall) {
        m_accu.DisplayGlobalDataError(fall.Ein<int>("CODE"));
        std::string s;
        for (const SPrompt & prompt : m_rekorder.m_vPrompts)
            s += (std::ostringstream() << prompt).str();
        fall.Aus("PROMPT", s);
    }
    void Status(CFall & fall) {
        Waehle(m_accu, fall);
        CBehHitLine hit;
        fall.Aus("JA", m_accu.IsLstStatusOK(fall.Fuelle(hit)));
    }
    void Praxis(CFall & fall) {
        m_accu.m_vMd = {Md(" 1", "E1C1X1"), Md(" 2", "  C2"), Md(" 3", "")};
        m_accu.m_vLebAlle = {Leb("  1", " 1", " 2"), Leb("  2", " 2", " 1"), Leb("  3", " 3", " 1"),
                             Leb("  4", " 9", " 1")};
        m_accu.m_vLeb = {Leb("  5", " 1", " 1")};
        const CBehHitLine vorher = fall.Fuelle(m_accu.m_BehHit);
        m_accu.ChangeHitMdId(fall.Ein("LEB"));
        fall.Geaendert(vorher, m_accu.m_BehHit);
    }
    void BehandlersPraxis(CFall & fall) {
        m_accu.m_vMd = {Md(" 1", "E1C1X1"), Md(" 2", "E2C2X2")};
        m_accu.m_vLebAlle = {Leb("  1", " 1", ""), Leb("  2", " 2", "")};
        m_accu.m_vPat.resize(2);
        m_accu.m_vPat[0].BEHANDLERNR = "  2";
        const CBehHitLine vorher = fall.Fuelle(m_accu.m_BehHit);
        m_accu.Braitretru(fall.Ein<int>("MODUS"), fall.Ein<int>("PAT"));
        fall.Geaendert(vorher, m_accu.m_BehHit);
    }
    void Arzt(CFall & fall) {
        fall.Nimm("MKG", dbMKGVersion);
        m_accu.m_vGO.resize(1);
        m_accu.SetArzt(fall.Ein("MDID"));
        fall.Aus("JA", m_accu.GetArzt());
        fall.Aus("GELEERT", m_accu.m_vGO.empty());
    }
    [[nodiscard]] std::vector<std::int32_t> Cursor() const {
        return {m_accu.m_iGlabPos, m_accu.m_iErrPos, m_accu.m_iGipsPos, m_accu.m_iRechPos};
    }
    // How many of the record sets are there.
    [[nodiscard]] static int Recordsets(const CStatAccu & accu) {
        return (accu.m_pRPat != nullptr) + (accu.m_pRAdr != nullptr) + (accu.m_pRBeh != nullptr) +
               (accu.m_pRVDesc != nullptr) + (accu.m_pROrvoKas != nullptr) + (accu.m_pRABefund != nullptr);
    }
};

std::vector<std::size_t> StatAccuTest::Poolgroessen() const {
    return {m_accu.m_vSpGoStat.size(),    m_accu.m_vSpStatistik.size(), m_accu.m_vSpMedStatistik.size(),
            m_accu.m_vSpKassenArt.size(), m_accu.m_vSpTechLst.size(),   m_accu.m_vSpKassenGrp.size(),
            m_accu.m_vSpHvm.size()};
}

TEST_F(StatAccuTest, Faelle) {
    PruefeFaelle<StatAccuTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/lauf.txt",
                               {{"pools", &StatAccuTest::Pools},
                                {"meldung", &StatAccuTest::Meldung},
                                {"status", &StatAccuTest::Status},
                                {"praxis", &StatAccuTest::Praxis},
                                {"braitretru", &StatAccuTest::BehandlersPraxis},
                                {"arzt", &StatAccuTest::Arzt}});
}

// ---- the object

TEST_F(StatAccuTest, KopieHatInhaltAberKeineZeiger) {
    EXPECT_EQ(Cursor(), std::vector<std::int32_t>(4, -1));
    EXPECT_EQ(m_accu.m_iLQPunktwert, 10000);
    m_accu.GetMemForTables();
    for (const CMxRSet * pRSet : std::initializer_list<const CMxRSet *>{
             m_accu.m_pRPat, m_accu.m_pRAdr, m_accu.m_pRBeh, m_accu.m_pRVDesc, m_accu.m_pROrvoKas,
             m_accu.m_pRABefund, &m_accu.m_rGO, &m_accu.m_rGoCheck, &m_accu.m_rBill, &m_accu.m_rHistRecall})
        EXPECT_EQ(&pRSet->Datenbank(), &dbDatabaseRO);
    m_accu.m_pFachbereiche = new SFachbereiche;
    m_accu.m_pParent = reinterpret_cast<HWND>(&m_accu);
    FuelleTabellen();
    const CStatAccu kopie(m_accu);
    EXPECT_EQ(Recordsets(kopie), 0);
    EXPECT_EQ(kopie.m_pFachbereiche, nullptr);
    EXPECT_EQ(kopie.m_pParent, m_accu.m_pParent);
    EXPECT_TRUE(kopie.m_iGlabPos == -1 && kopie.m_iErrPos == -1 && kopie.m_iGipsPos == -1 &&
                kopie.m_iRechPos == -1);
    EXPECT_TRUE(kopie.m_vBehHits.size() == 1 && kopie.m_mapVDesc.size() == 1);
}

TEST_F(StatAccuTest, ZuweisungBehaeltEigeneZeigerUndNimmtCursor) {
    CStatAccu quelle;
    quelle.m_iGlabPos = quelle.m_iErrPos = quelle.m_iGipsPos = quelle.m_iRechPos = 4;
    quelle.m_vBehHits.resize(1);
    m_accu.GetMemForTables();
    m_accu.m_pFachbereiche = new SFachbereiche;
    const CTPat * pPat = m_accu.m_pRPat;
    const SFachbereiche * pFachbereiche = m_accu.m_pFachbereiche;
    m_accu = quelle;
    EXPECT_TRUE(m_accu.m_pRPat == pPat && m_accu.m_pFachbereiche == pFachbereiche);
    EXPECT_EQ(Cursor(), std::vector<std::int32_t>(4, 4));
    EXPECT_EQ(m_accu.m_vBehHits.size(), 1u);
}

// ---- start and end of a run

TEST_F(StatAccuTest, VorlaufLeertNurDieTabellenDesLaufs) {
    SchreibePools();
    FuelleTabellen();
    m_accu.SetMandant("1");
    m_accu.m_vLeb = {Leb("  1", " 1", " 2"), Leb("  2", " 3", " 3"), Leb("  3", " 2", " 1")};
    m_accu.m_vMd.resize(1);
    m_accu.m_vGO.resize(1);
    m_accu.m_mapBill["1"].resize(1);
    m_accu.m_vLstErsatz.resize(1);
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 47);
    const CString asPunkte[] = {"k", "01", "20240101", "99"}; // written by another workstation
    const CString * const apPunkte[] = {&asPunkte[0], &asPunkte[1], &asPunkte[2], &asPunkte[3]};
    dbDatabase.Speicher()->Schreibe(CTGoPunkte().Tabelle(), apPunkte);
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 47) << "read once in a run";
    EXPECT_EQ(m_accu.DataSumVorlauf(true), 0);
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 99);
    EXPECT_EQ(Tabellengroessen(), std::vector<std::size_t>(13, 0));
    EXPECT_EQ(Cursor(), std::vector<std::int32_t>(4, -1));
    EXPECT_EQ(m_accu.m_sLebsString, "'  1','  3'"_t);
    EXPECT_FALSE(m_accu.m_bAlleLebsPassen);
    EXPECT_TRUE(m_accu.m_vMd.size() == 1 && m_accu.m_vGO.size() == 1);
    EXPECT_TRUE(m_accu.m_mapBill.size() == 1 && m_accu.m_vLstErsatz.size() == 1);
    EXPECT_EQ(Recordsets(m_accu), 6);
    m_accu.DataSumNachlauf();
    EXPECT_EQ(Recordsets(m_accu), 0);
    m_accu.DataSumNachlauf();
}

TEST_F(StatAccuTest, GescheiterterVorlaufLaesstDieTabellenStehen) {
    SchreibePools("techlsttyp");
    FuelleTabellen();
    m_accu.m_sLebsString = "'1'";
    EXPECT_EQ(m_accu.DataSumVorlauf(false), 17);
    EXPECT_EQ(Tabellengroessen(), std::vector<std::size_t>(13, 1));
    EXPECT_EQ(Cursor(), std::vector<std::int32_t>(4, 1));
    EXPECT_EQ(m_accu.m_sLebsString, "'1'"_t);
    EXPECT_EQ(Recordsets(m_accu), 6);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
}

#ifndef NDEBUG
TEST_F(StatAccuTest, EinZweiterFadenNebenEinemLaufMeldetSich) {
    const auto Zweiter = [] {
        std::thread([] {
            const CAutoRSet<CTAdr> adr;
            CStatAccu accu;
            accu.GetMemForTables();
            accu.DataSumNachlauf();
        }).join();
    };
    {
        const CAutoRSet<CTAdr> adr;
        EXPECT_DEATH(Zweiter(), "a second thread");
        m_accu.GetMemForTables();
    }
    EXPECT_DEATH(Zweiter(), "one run in a process at a time");
    m_accu.DataSumNachlauf();
    m_accu.DataSumNachlauf();
    Zweiter();
    const CAutoRSet<CTAdr> adr;
}

TEST_F(StatAccuTest, EineFalscheReihenfolgeMeldetSich) {
    Schreibe("GO GOART=k LSTNR=01");
    CBehHitLine hit;
    hit.GOART = 'k';
    hit.LSTNR = "01";
    CTBeh beh;
    EXPECT_DEATH(m_accu.GetPat("1", true), "GetPat is called outside of a run");
    EXPECT_DEATH((void)m_accu.ReadPat("1"), "DataSumVorlauf comes before");
    EXPECT_DEATH(m_accu.GetVDesc("1", ""), "GetVDesc is");
    EXPECT_DEATH(m_accu.GetActVDesc("1", ""), "GetActVDesc is");
    EXPECT_DEATH(m_accu.ReadKas("1"), "ReadKas is");
    EXPECT_DEATH((m_accu.GetGOData(hit), m_accu.GetBetrag(hit, nullptr)), "no point value yet");
    EXPECT_DEATH((hit.MoveBeh(&beh), hit.MoveBeh(&beh)), "Clear comes before the next one");
    hit.MoveBeh(&beh);
    hit.Clear();
    hit.MoveBeh(&beh);
}
#endif

TEST_F(StatAccuTest, GlobalDataLiestNurNachWasFehlt) {
    SchreibePools("hvmbudget");
    EXPECT_EQ(m_accu.GetGlobalData(false), 19);
    SchreibePool("hvmbudget", "h");
    const auto Zugriffe = [this] { return m_praxis.Lesend().Operationen(); };
    const int iVorher = Zugriffe();
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    const int iNachher = Zugriffe();
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(2 * iNachher - iVorher - Zugriffe(), 3); // the pool's walk, its row, its end
    m_accu.m_vSpGoStat.clear();
    m_praxis.Lesend().FehlerBei(
        8); // practice and point values have none, "gostattyp" one: opens the second pool
    EXPECT_EQ(m_accu.GetGlobalData(false), 14);
    EXPECT_EQ(m_accu.GetGlobalData(false), 0) << "half a table is none";
    EXPECT_EQ(Poolgroessen(), (std::vector<std::size_t>{5, 2, 2, 2, 2, 2, 2}));
}

TEST_F(StatAccuTest, KassenartenWerdenGrossUndStatistiktypenStehenHinterUnbekannt) {
    SchreibePools("kassenarttyp");
    SchreibePool("kassenarttyp", "äk");
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(m_accu.m_vSpKassenArt.front().m_sKey, "ÄK"_t);
    EXPECT_EQ(m_accu.m_vSpKassenGrp.front().m_sKey, "k1"_t);
    std::string sKeys;
    for (const CSPData & eintrag : m_accu.m_vSpGoStat)
        sKeys += eintrag.m_sKey.Utf8() + '/';
    EXPECT_EQ(sKeys, "k1//k1/k1/k1/");
}

TEST_F(StatAccuTest, GlobalDataLiestRegionalfaktorUndPunktwerteNeu) {
    Schreibe(R"(PRAXIS PRAXISID=" 1" KZVNR=04
                KZV KZVNR=04 LQ=9050
                PUNKTWERT PWAB=20240101 PWGRP=AOK PWLART=1)");
    m_accu.m_mapPw["alt"].resize(1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(m_accu.GetGlobalData(false), 14);
        EXPECT_EQ(m_accu.m_iLQPunktwert, 9050);
        EXPECT_EQ(m_accu.m_sKzvNr, "04"_t);
        EXPECT_EQ(m_accu.m_mapPw.size(), 1u);
        EXPECT_EQ(m_accu.m_mapPw["aok"].size(), 1u);
    }
}

// ---- errors

TEST_F(StatAccuTest, JederFehlerStehtEinmalInDerFolgeSeinesAuftretens) {
    CBehHitLine hit;
    hit.PATNR = "1";
    hit.LSTIN = "2";
    m_accu.AddError(hit, 6);
    m_accu.AddError(hit, 5);
    hit.SITZUNG = 'b'; // tells nothing apart
    hit.LFDBEHEINTRAG = hit.WSO_ERG = "9";
    hit.GOART = 'p';
    m_accu.AddError(hit, 6);
    EXPECT_EQ(m_accu.m_vBehErrors.size(), 2u);
    // Each of these differs from the first in one field; the last two only in where one text ends.
    for (CString CBehHitLine::*pFeld : {&CBehHitLine::PATNR, &CBehHitLine::DATUM, &CBehHitLine::LSTIN,
                                        &CBehHitLine::KASKUERZEL, &CBehHitLine::MFRDIG, &CBehHitLine::WSO}) {
        CBehHitLine anderer = hit;
        anderer.*pFeld = "x";
        m_accu.AddError(anderer, 6);
        m_accu.AddError(anderer, 6);
    }
    hit.PATNR = "12";
    hit.DATUM = hit.LSTIN = "";
    m_accu.AddError(hit, 6);
    hit.PATNR = "1";
    hit.DATUM = "2";
    m_accu.AddError(hit, 6);
    ASSERT_EQ(m_accu.m_vBehErrors.size(), 10u);
    const std::vector<CBehErrors> & v = m_accu.m_vBehErrors.Lesend();
    EXPECT_TRUE(v[0].m_iFehler == 6 && v[1].m_iFehler == 5 && v[2].PATNR == "x"_t && v[9].DATUM == "2"_t);
    EXPECT_EQ(m_accu.m_BehError.DATUM, "2"_t);
}

// ---- sorting

TEST_F(StatAccuTest, SortierungNachNameOderPatient) {
    const struct {
        CString sName, sPatNr, sDatum;
        char cSitzung;
        CString sLfd, sMarke;
    } vZeilen[] = {
        {"Zorn"_t, "         1", "20240102", 'b', "1", "a"},
        {"Möller"_t, "         9", "20240101", 'a', "1", "b"},
        {"MOLLER"_t, "         7", "20240101", 'a', "2", "c"},
        {"MOLLER"_t, "         7", "20240101", 'a', "10", "d"},   // "10" stands before "2"
        {"MOLLER"_t, "         7", "20240101", '\xE4', "9", "e"}, // a negative letter
        {"Molnar"_t, "         8", "20230101", 'a', "1", "f"},
        {"Zorn"_t, "         1", "20240101", 'c', "1", "g"},
        {"Öhm"_t, "        10", "20240101", 'a', "1", "h"},
        {"Osten"_t, "         2", "20240101", 'a', "1", "i"},
        {"Nagel"_t, "         3", "20240101", 'a', "1", "j"},
        {"MOLLER"_t, "        11", "20240101", 'a', "1", "k"}, // the same form again, behind another spelling
    };
    const auto Sortiert = [&](char cSortierung) {
        m_accu.SetSortierung(cSortierung);
        m_accu.m_vBehHits.clear();
        m_accu.DoSortLines();
        for (const auto & zeile : vZeilen) {
            CBehHitLine & hit = m_accu.m_vBehHits.emplace_back();
            hit.PATNAME = zeile.sName;
            hit.PATNR = zeile.sPatNr;
            hit.DATUM = zeile.sDatum;
            hit.SITZUNG = zeile.cSitzung;
            hit.LFDBEHEINTRAG = zeile.sLfd;
            hit.LSTIN = zeile.sMarke;
        }
        m_accu.DoSortLines();
        std::string s;
        for (const CBehHitLine & hit : m_accu.m_vBehHits)
            s += hit.LSTIN.Utf8();
        return s;
    };
    EXPECT_EQ(Sortiert('1'), "edcbkfjhiga");
    EXPECT_EQ(Sortiert('2'), "gaijedcfbhk");
    for (const char cSortierung : {'3', '0', '\0', '\1'})
        EXPECT_EQ(Sortiert(cSortierung), "abcdefghijk") << static_cast<int>(cSortierung);
}

TEST_F(StatAccuTest, GrosseSortierungVerliertUndVerdoppeltKeinenHit) {
    std::mt19937 zufall(4711);
    const auto Wurf = [&zufall](unsigned i) { return static_cast<int>(zufall() % i); };
    std::vector<CBehHitLine> vHits(3000);
    for (CBehHitLine & hit : vHits) {
        hit.ANZAHL = static_cast<int>(&hit - vHits.data());
        hit.PATNAME.Format("Name %d"_t, Wurf(40));
        hit.PATNR.Format("%10d", Wurf(60));
        hit.DATUM.Format("202401%02d"_t, Wurf(30));
        hit.SITZUNG = static_cast<char>('a' + Wurf(3));
        hit.LFDBEHEINTRAG.Format("%d", hit.ANZAHL);
    }
    for (const char cSortierung : {'1', '2'}) {
        const auto Schluessel = [&](const CBehHitLine & hit) {
            return std::tuple(cSortierung == '1' ? hit.PATNAME : CString(), hit.PATNR, hit.DATUM, hit.SITZUNG,
                              hit.LFDBEHEINTRAG, hit.ANZAHL);
        };
        std::set<decltype(Schluessel(vHits[0]))> setErwartet;
        for (const CBehHitLine & hit : vHits)
            setErwartet.insert(Schluessel(hit));
        m_accu.m_vBehHits = vHits;
        m_accu.SetSortierung(cSortierung);
        m_accu.DoSortLines();
        EXPECT_TRUE(std::ranges::equal(m_accu.m_vBehHits, setErwartet, {}, Schluessel)) << cSortierung;
    }
}

// ---- practice and physician

TEST_F(StatAccuTest, ArztnameAusDerAdresse) {
    Schreibe("ADR ADRNR=7 PATTITEL=Dr. PATNAME=Gold PATANREDE=Frau\nADR PATNAME=Niemand");
    EXPECT_EQ(m_accu.ReadArzt("7"), "Dr. Gold"_t);
    for (const char * pNr : {"8", "", " "})
        EXPECT_EQ(m_accu.ReadArzt(pNr), ""_t) << pNr;
}

TEST_F(StatAccuTest, GesamtBehDauerZaehltAllePatienten) {
    m_accu.m_vPat.resize(3);
    m_accu.m_vPat[0].BEHDAUER = 15;
    m_accu.m_vPat[2].BEHDAUER = 45;
    EXPECT_EQ(m_accu.GesamtBehDauer(), 60);
}

} // namespace

} // namespace orvostat
