#include "accu/AccuTest.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <random>
#include <set>
#include <string_view>
#include <thread>
#include <tuple>

namespace orvostat {

namespace {

using namespace std::string_view_literals;

constexpr const char * POOLS[] = {
    "gostattyp",          "gostattyp2",   "gostattyp3", "gostattyp4",   "statistikspalte",
    "medstatistikspalte", "kassenarttyp", "techlsttyp", "kassengrptyp", "hvmbudget",
};

class StatAccuTest : public CAccuTest {
protected:
    // One entry "k1" in every pool but one.
    static void SchreibePools(const std::string & sOhne = "") {
        for (const char * pPool : POOLS)
            if (pPool != sOhne) SchreibePool(pPool, "k1");
    }
    static void SchreibePool(const char * pPool, const CString & sKey) {
        Schreibe<CTSelectPool>(
            {.m_SPPOOL = CString(pPool), .m_SPLFD = "1", .m_SPKEY = sKey, .m_SPTEXT = "Text"});
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
#endif

TEST_F(StatAccuTest, JederFehlendePoolHatSeinenCode) {
    const struct {
        const char * pOhne;
        int iCode;
        std::vector<std::size_t> vGroessen;
    } vFaelle[] = {
        {"gostattyp", 14, {0, 0, 0, 0, 0, 0, 0}},          {"statistikspalte", 15, {5, 0, 0, 0, 0, 0, 0}},
        {"medstatistikspalte", 15, {5, 2, 0, 0, 0, 0, 0}}, {"kassenarttyp", 16, {5, 2, 2, 0, 0, 0, 0}},
        {"techlsttyp", 17, {5, 2, 2, 2, 0, 0, 0}},         {"kassengrptyp", 18, {5, 2, 2, 2, 2, 0, 0}},
        {"hvmbudget", 19, {5, 2, 2, 2, 2, 2, 0}},          {"gostattyp3", 0, {4, 2, 2, 2, 2, 2, 2}},
    };
    SchreibePools();
    for (const auto & fall : vFaelle) {
        CTSelectPool pool(dbDatabase);
        EXPECT_EQ(pool.GetRecByParam({CString(fall.pOhne), "1"}) + pool.Delete(), 0);
        m_accu = CStatAccu();
        EXPECT_EQ(m_accu.GetGlobalData(true), fall.iCode) << fall.pOhne;
        EXPECT_EQ(Poolgroessen(), fall.vGroessen) << fall.pOhne;
        SchreibePool(fall.pOhne, "k1");
        EXPECT_EQ(m_accu.GetGlobalData(true), 0) << "filled by and by";
    }
}

TEST_F(StatAccuTest, GlobalDataLiestNurNachWasFehlt) {
    SchreibePools("hvmbudget");
    EXPECT_EQ(m_accu.GetGlobalData(false), 19);
    SchreibePool("hvmbudget", "h");
    const auto pZaehler = std::make_shared<CFehlerspeicher>(dbDatabaseRO.Speicher());
    dbDatabaseRO.Verbinde(pZaehler);
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    const int iNachlesen = pZaehler->Operationen();
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(2 * iNachlesen - pZaehler->Operationen(), 3); // the pool's walk, its row, its end
    m_accu.m_vSpGoStat.clear();
    pZaehler->FehlerBei(8); // practice and point values have none, "gostattyp" one: opens the second pool
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
    Schreibe<CTPraxis>({.m_PRAXISID = " 1", .m_KZVNR = "04"});
    Schreibe<CTKzv>({.m_KZVNR = "04", .m_LQ = "9050"});
    Schreibe<CTPunktWert>({.m_PWAB = "20240101", .m_PWGRP = "AOK", .m_PWLART = "1"});
    m_accu.m_mapPw["alt"].resize(1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(m_accu.GetGlobalData(false), 14);
        EXPECT_EQ(m_accu.m_iLQPunktwert, 9050);
        EXPECT_EQ(m_accu.m_sKzvNr, "04"_t);
        EXPECT_EQ(m_accu.m_mapPw.size(), 1u);
        EXPECT_EQ(m_accu.m_mapPw["aok"].size(), 1u);
    }
}

TEST_F(StatAccuTest, MeldungJeCode) {
    const struct {
        int iCode;
        CString sText; // empty: no message
    } vFaelle[] = {
        {1, "Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t},
        {2, "Keine Patienten gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t},
        {10, "Kein Mandant verfügbar!"_t},
        {11, "Kein Behandler verfügbar!"_t},
        {12, "Keine Punktwerte verfügbar!"_t},
        {13, "Keine Leistung verfügbar!"_t},
        {14, "Keine GO-Statistiktypen im Selectpool verfügbar!"_t},
        {15, "Keine Kassenstatistiktypen im Selectpool verfügbar!"_t},
        {16, "Keine Kassenarten im Selectpool verfügbar!"_t},
        {17, "Keine techn. Leistungstypen im Selectpool verfügbar!"_t},
        {18, "Keine Kassengruppen im Selectpool verfügbar!"_t},
        {19, "Keine HVM-Gruppen im Selectpool verfügbar!"_t},
        {0, ""},
        {3, ""},
        {20, ""},
    };
    for (const auto & [iCode, sText] : vFaelle) {
        const SPrompt prompt = iCode < 10 ? SPrompt{SPrompt::HALT_I, "Datensammlung gescheitert."_t, sText}
                                          : SPrompt{SPrompt::HALT_E, "GetGlobalData()"_t, sText};
        m_rekorder.m_vPrompts.clear();
        m_accu.DisplayGlobalDataError(iCode);
        EXPECT_EQ(m_rekorder.m_vPrompts, std::vector<SPrompt>(sText.IsEmpty() ? 0 : 1, prompt)) << iCode;
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

TEST_F(StatAccuTest, StatusDerLeistung) {
    const auto Zugelassen = [this](bool bAbgerechnet, bool bErfasst) {
        m_accu.SetIsAbgerechnet(bAbgerechnet);
        m_accu.SetIsErfasst(bErfasst);
        std::string s;
        for (const auto & [pFakt1, pFakt2] : {std::pair("", ""), {"1", ""}, {"", "2"}, {"1", "2"}}) {
            CBehHitLine hit;
            hit.FAKT1 = pFakt1;
            hit.FAKT2 = pFakt2;
            s += m_accu.IsLstStatusOK(hit) ? 'x' : '-';
        }
        return s;
    };
    EXPECT_EQ(Zugelassen(true, true), "xxxx");
    EXPECT_EQ(Zugelassen(true, false), "-xxx");
    EXPECT_EQ(Zugelassen(false, true), "x---");
    EXPECT_EQ(Zugelassen(false, false), "----");
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

TEST_F(StatAccuTest, HitZiehtInDiePraxisInDerDerBehandlerAbrechnet) {
    m_accu.m_vMd = {Md(" 1", "E1C1X1"), Md(" 2", "  C2"), Md(" 3", "")};
    m_accu.m_vLebAlle = {Leb("  1", " 1", " 2"), Leb("  2", " 2", " 1"), Leb("  3", " 3", " 1"),
                         Leb("  4", " 9", " 1")};
    m_accu.m_vLeb = {Leb("  5", " 1", " 1")};
    const struct {
        CString sLeb;
        char cAbrArt;
        bool bKasse;
        CString sErwartet;
    } vFaelle[] = {
        {"  1", 'e', true, " 1"},   {"  1", 'c', true, " 1"},   {"  1", 'z', true, " 1"},
        {"  1", 0, true, " 1"},     {"  2", 'e', true, "alt"}, // the code is blank
        {"  2", 'c', true, " 2"},   {"  2", 'p', true, "alt"}, // the codes end before it
        {"  3", 'c', true, "alt"},                             // no codes at all
        {"  4", 'c', true, "alt"},                             // no such practice
        {"  5", 'c', true, "alt"},                             // not among all treaters
        {"  1", 'c', false, "alt"}, {"  2", 'c', false, "alt"}, {"", 'c', true, "alt"},
    };
    for (const auto & fall : vFaelle) {
        m_accu.m_BehHit.PRAXISNR = "alt";
        m_accu.m_BehHit.ABRART = fall.cAbrArt;
        m_accu.m_BehHit.KASSENABR = fall.bKasse;
        m_accu.ChangeHitMdId(fall.sLeb);
        EXPECT_EQ(m_accu.m_BehHit.PRAXISNR, fall.sErwartet)
            << fall.sLeb.Utf8() << fall.cAbrArt << fall.bKasse;
    }
}

TEST_F(StatAccuTest, BraitretruNimmtBehandlerDesHitsOderDesPatienten) {
    m_accu.m_vMd = {Md(" 1", "E1C1X1"), Md(" 2", "E2C2X2")};
    m_accu.m_vLebAlle = {Leb("  1", " 1", ""), Leb("  2", " 2", "")};
    m_accu.m_vPat.resize(2);
    m_accu.m_vPat[0].BEHANDLERNR = "  2";
    m_accu.m_BehHit.BEHANDLERNR = "  1";
    const auto Praxis = [this](int iModus, int iPat) {
        m_accu.m_BehHit.PRAXISNR = "";
        m_accu.Braitretru(iModus, iPat);
        return m_accu.m_BehHit.PRAXISNR.Utf8();
    };
    EXPECT_EQ(Praxis(0, -1), " 1");
    EXPECT_EQ(Praxis(1, 0), " 2");
    for (const auto & [iModus, iPat] : {std::pair(1, 1), {1, 2}, {1, -1}, {2, 0}, {-1, 0}})
        EXPECT_EQ(Praxis(iModus, iPat), "") << iModus << ' ' << iPat;
}

TEST_F(StatAccuTest, ArztNurMitMKGUndPassenderMandantenartUndEinWechselLeertDieGebuehren) {
    for (const char * pArt : {"a", "b", "d", "bd", "B", ""})
        Schreibe<CTMandant>({.m_MDID = CString(pArt) + "1", .m_MDART = pArt});
    for (const bool bMKG : {true, false})
        for (const char * pMd : {"b1", "d1", "a1", "bd1", "B1", "1", "", "x"}) {
            dbMKGVersion = bMKG;
            m_accu.m_vGO.resize(1);
            const bool bVorher = m_accu.GetArzt();
            m_accu.SetArzt(pMd);
            EXPECT_EQ(m_accu.GetArzt(), bMKG && (pMd == "b1"sv || pMd == "d1"sv)) << bMKG << pMd;
            EXPECT_EQ(m_accu.m_vGO.empty(), m_accu.GetArzt() != bVorher) << bMKG << pMd;
        }
}

TEST_F(StatAccuTest, ArztnameAusDerAdresse) {
    Schreibe<CTAdr>({.m_ADRNR = "7", .m_PATTITEL = "Dr.", .m_PATNAME = "Gold", .m_PATANREDE = "Frau"});
    Schreibe<CTAdr>({.m_PATNAME = "Niemand"});
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
