#include "accu/AccuTest.h"

#include <algorithm>
#include <iterator>
#include <map>
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
    static void SchreibePool(const std::string & sPool, const std::string & sKey) {
        Schreibe("SELECTPOOL SPLFD=1 SPTEXT=Text SPPOOL=" + sPool + " SPKEY=" + sKey);
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
    // How long each table is, and where the cursors stand.
    [[nodiscard]] std::string Tabellen() {
        std::string s;
        JedeTabelle([&s](const auto & tabelle) { s += std::to_string(tabelle.size()); });
        return s + " " + Cursor(m_accu);
    }
    [[nodiscard]] static std::string Cursor(const CStatAccu & accu) {
        return Werte(accu.m_iGlabPos, accu.m_iErrPos, accu.m_iGipsPos, accu.m_iRechPos);
    }
    // How many of the record sets are there.
    [[nodiscard]] static int Recordsets(const CStatAccu & accu) {
        return (accu.m_pRPat != nullptr) + (accu.m_pRAdr != nullptr) + (accu.m_pRBeh != nullptr) +
               (accu.m_pRVDesc != nullptr) + (accu.m_pROrvoKas != nullptr) + (accu.m_pRABefund != nullptr);
    }
    [[nodiscard]] std::string Poolgroessen() const {
        return Werte(m_accu.m_vSpGoStat, m_accu.m_vSpStatistik, m_accu.m_vSpMedStatistik,
                     m_accu.m_vSpKassenArt, m_accu.m_vSpTechLst, m_accu.m_vSpKassenGrp, m_accu.m_vSpHvm);
    }

    void Pools(CFall & fall) {
        const auto sOhne = fall.Ein<std::string>("OHNE");
        SchreibePools(sOhne);
        fall.Aus("CODE", m_accu.GetGlobalData(true));
        fall.Aus("GROESSEN", Poolgroessen());
        SchreibePool(sOhne, "k1");
        EXPECT_EQ(m_accu.GetGlobalData(true), 0) << "filled by and by";
    }
    void Meldung(CFall & fall) {
        m_accu.DisplayGlobalDataError(fall.Ein<int>("CODE"));
        for (const SPrompt & prompt : m_rekorder.m_vPrompts)
            fall.Aus("PROMPT", (std::ostringstream() << prompt).str());
    }
    void Status(CFall & fall) {
        Waehle(m_accu, fall);
        CBehHitLine hit;
        fall.Aus("JA", m_accu.IsLstStatusOK(fall.Fuelle(hit)));
    }
    void Praxis(CFall & fall) {
        for (const auto & [sNr, sCodes] : {std::pair("1", "E1C1X1"), {"2", "  C2"}, {"3", ""}}) {
            m_accu.m_vMd.emplace_back().m_sMdCodes = sCodes;
            CLebStruct & leb = m_accu.m_vLebAlle.emplace_back();
            leb.m_sLeb = CString("  ") + sNr;
            leb.m_sMdKasse = m_accu.m_vMd.back().m_sMdId = CString(" ") + sNr;
        }
        m_accu.m_vLebAlle.emplace_back().m_sLeb = "  4";
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
};

TEST_F(StatAccuTest, Faelle) {
    PruefeFaelle<StatAccuTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/lauf.txt",
                               {{"pools", &StatAccuTest::Pools},
                                {"meldung", &StatAccuTest::Meldung},
                                {"status", &StatAccuTest::Status},
                                {"praxis", &StatAccuTest::Praxis},
                                {"arzt", &StatAccuTest::Arzt}});
}

// ---- the object

TEST_F(StatAccuTest, KopieHatInhaltAberKeineZeigerUndZuweisungBehaeltDieEigenen) {
    m_accu.GetMemForTables();
    for (const CMxRSet * pRSet : std::initializer_list<const CMxRSet *>{
             m_accu.m_pRPat, m_accu.m_pRAdr, m_accu.m_pRBeh, m_accu.m_pRVDesc, m_accu.m_pROrvoKas,
             m_accu.m_pRABefund, &m_accu.m_rGO, &m_accu.m_rGoCheck, &m_accu.m_rBill, &m_accu.m_rHistRecall})
        EXPECT_EQ(&pRSet->Datenbank(), &dbDatabaseRO);
    m_accu.m_pFachbereiche = new SFachbereiche;
    m_accu.m_pParent = reinterpret_cast<HWND>(&m_accu);
    FuelleTabellen();
    CStatAccu kopie(m_accu);
    EXPECT_EQ(Recordsets(kopie), 0);
    EXPECT_TRUE(kopie.m_pFachbereiche == nullptr && kopie.m_pParent == m_accu.m_pParent);
    EXPECT_EQ(Cursor(kopie), "-1|-1|-1|-1");
    EXPECT_TRUE(kopie.m_vBehHits.size() == 1 && kopie.m_mapVDesc.size() == 1);

    kopie.m_iGlabPos = kopie.m_iErrPos = kopie.m_iGipsPos = kopie.m_iRechPos = 4;
    kopie.m_vBehHits.resize(2);
    const CTPat * pPat = m_accu.m_pRPat;
    const SFachbereiche * pFachbereiche = m_accu.m_pFachbereiche;
    m_accu = kopie;
    EXPECT_TRUE(m_accu.m_pRPat == pPat && m_accu.m_pFachbereiche == pFachbereiche);
    EXPECT_EQ(Tabellen(), "2111111111111 4|4|4|4");
}

// ---- start and end of a run

TEST_F(StatAccuTest, VorlaufLeertNurDieTabellenDesLaufs) {
    SchreibePools("techlsttyp");
    FuelleTabellen();
    m_accu.m_sLebsString = "'1'";
    m_accu.m_vGO.resize(1);
    m_accu.m_mapBill["1"].resize(1);
    m_accu.m_vLstErsatz.resize(1);
    EXPECT_EQ(m_accu.DataSumVorlauf(false), 17);
    EXPECT_EQ(Tabellen(), "1111111111111 1|1|1|1") << "without start all stays";
    EXPECT_EQ(m_accu.m_sLebsString, "'1'"_t);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
    EXPECT_EQ(Recordsets(m_accu), 6);
    m_accu.DataSumNachlauf();

    SchreibePool("techlsttyp", "k1");
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 47);
    const CString asPunkte[] = {"k", "01", "20240101", "99"}; // written by another workstation
    const CString * const apPunkte[] = {&asPunkte[0], &asPunkte[1], &asPunkte[2], &asPunkte[3]};
    dbDatabase.Speicher()->Schreibe(CTGoPunkte().Tabelle(), apPunkte);
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 47) << "read once in a run";
    EXPECT_EQ(m_accu.DataSumVorlauf(true), 0);
    EXPECT_EQ(CTGO::GetGebPkt('k', "01", 47, "20240101"), 99);
    EXPECT_EQ(Tabellen(), "0000000000000 -1|-1|-1|-1");
    EXPECT_TRUE(m_accu.m_sLebsString.IsEmpty() && m_accu.m_bAlleLebsPassen);
    EXPECT_EQ(Werte(m_accu.m_vGO.Lesend(), m_accu.m_mapBill.size(), m_accu.m_vLstErsatz.size()), "1|1|1");
    m_accu.DataSumNachlauf();
    EXPECT_EQ(Recordsets(m_accu), 0);
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

TEST_F(StatAccuTest, GlobalDataLiestNurNachWasFehltUndPunktwerteNeu) {
    SchreibePools("kassenarttyp");
    SchreibePool("kassenarttyp", "äk");
    m_accu.m_mapPw["alt"].resize(1);
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(Werte(m_accu.m_vSpKassenArt.front().m_sKey, m_accu.m_vSpKassenGrp.front().m_sKey), "ÄK|k1");
    EXPECT_TRUE(m_accu.m_vSpGoStat[1].m_sKey.IsEmpty()) << "the unknown one stands behind the first pool";
    const auto Zugriffe = [this] { return m_praxis.Lesend().Operationen(); };
    const int iVorher = Zugriffe();
    m_accu.m_vSpHvm.clear();
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    const int iNachher = Zugriffe();
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(2 * iNachher - iVorher - Zugriffe(), 3); // the pool's walk, its row, its end
    m_accu.m_vSpGoStat.clear();
    // Practice and point values have none, "gostattyp" one: opens the second pool.
    m_praxis.Lesend().FehlerBei(8);
    EXPECT_EQ(m_accu.GetGlobalData(false), 14);
    EXPECT_EQ(m_accu.GetGlobalData(false), 0) << "half a table is none";
    EXPECT_EQ(Poolgroessen(), "5|2|2|2|2|2|2");

    Schreibe(R"(PRAXIS PRAXISID=" 1" KZVNR=04
                KZV KZVNR=04 LQ=9050
                PUNKTWERT PWAB=20240101 PWGRP=AOK PWLART=1)");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(m_accu.GetGlobalData(false), 0);
        EXPECT_EQ(m_accu.m_iLQPunktwert, 9050);
        EXPECT_TRUE(m_accu.m_mapPw.size() == 1 && m_accu.m_mapPw["aok"].size() == 1);
    }
}

// ---- errors

TEST_F(StatAccuTest, JederFehlerStehtEinmalInDerFolgeSeinesAuftretens) {
    CBehHitLine hit;
    hit.PATNR = "1";
    hit.LSTIN = "2";
    m_accu.AddError(hit, 6);
    m_accu.AddError(hit, 5);
    // Each of these differs from the first in one field; the last two only in where one text ends.
    for (CString CBehHitLine::*pFeld : {&CBehHitLine::PATNR, &CBehHitLine::DATUM, &CBehHitLine::LSTIN,
                                        &CBehHitLine::KASKUERZEL, &CBehHitLine::MFRDIG, &CBehHitLine::WSO}) {
        CBehHitLine anderer = hit;
        anderer.*pFeld = "x";
        m_accu.AddError(anderer, 6);
        m_accu.AddError(anderer, 6);
    }
    for (const auto & [pPatNr, pDatum] : {std::pair("12", ""), {"1", "2"}}) {
        hit.PATNR = pPatNr;
        hit.DATUM = pDatum;
        hit.LSTIN = "";
        m_accu.AddError(hit, 6);
    }
    const std::vector<CBehErrors> & v = m_accu.m_vBehErrors.Lesend();
    ASSERT_EQ(v.size(), 10u);
    EXPECT_TRUE(v[0].m_iFehler == 6 && v[1].m_iFehler == 5 && v[2].PATNR == "x"_t && v[9].DATUM == "2"_t);
}

// ---- sorting

// Spellings of one form stand together, a negative letter comes first, and "10" stands before "2".
TEST_F(StatAccuTest, SortierungVerliertUndVerdoppeltKeinenHit) {
    const std::map<CString, std::string> mapFormen = {
        {"Möller"_t, "MOLLER"}, {"MOLLER"_t, "MOLLER"}, {"Molnar"_t, "MOLNAR"}, {"Nagel"_t, "NAGEL"},
        {"Öhm"_t, "OHM"},       {"Osten"_t, "OSTEN"},   {"Zorn"_t, "ZORN"}};
    std::mt19937 zufall(4711);
    const auto Wurf = [&zufall](std::size_t i) { return static_cast<int>(zufall() % i); };
    std::vector<CBehHitLine> vHits(3000);
    for (CBehHitLine & hit : vHits) {
        hit.ANZAHL = static_cast<int>(&hit - vHits.data());
        hit.PATNAME = std::next(mapFormen.begin(), Wurf(mapFormen.size()))->first;
        hit.PATNR.Format("%10d", Wurf(60));
        hit.DATUM.Format("202401%02d"_t, Wurf(30));
        hit.SITZUNG = "ab\xE4"[Wurf(3)];
        hit.LFDBEHEINTRAG = itoc(hit.ANZAHL);
    }
    for (const char cSortierung : {'1', '2', '3', '0', '\0'}) {
        const auto Schluessel = [&](const CBehHitLine & hit) {
            const bool bSortiert = cSortierung == '1' || cSortierung == '2';
            return std::tuple(cSortierung == '1' ? mapFormen.at(hit.PATNAME) : "",
                              bSortiert ? hit.PATNR + hit.DATUM : CString(),
                              bSortiert ? static_cast<signed char>(hit.SITZUNG) : 0,
                              bSortiert ? hit.LFDBEHEINTRAG : CString(), hit.ANZAHL);
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

TEST_F(StatAccuTest, ArztnameUndBehandlungsdauer) {
    Schreibe("ADR ADRNR=7 PATTITEL=Dr. PATNAME=Gold PATANREDE=Frau\nADR PATNAME=Niemand");
    EXPECT_EQ(Werte(m_accu.ReadArzt("7"), m_accu.ReadArzt("8"), m_accu.ReadArzt(" ")), "Dr. Gold||");
    m_accu.m_vPat.resize(3);
    m_accu.m_vPat[0].BEHDAUER = 15;
    m_accu.m_vPat[2].BEHDAUER = 45;
    EXPECT_EQ(m_accu.GesamtBehDauer(), 60);
}

} // namespace

} // namespace orvostat
