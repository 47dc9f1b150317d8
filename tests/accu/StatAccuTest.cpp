#include "accu/AccuTest.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

using namespace orvostat;

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
    // An entry in every table that a run fills, and its cursors moved.
    void FuelleTabellen();
    [[nodiscard]] std::vector<std::size_t> Tabellengroessen() const;
    [[nodiscard]] std::vector<std::size_t> Poolgroessen() const;
};

void StatAccuTest::FuelleTabellen() {
    m_accu.m_vBehHits.resize(1);
    m_accu.m_vBehErrors.resize(1);
    m_accu.m_vPat.resize(1);
    m_accu.m_mapPat["1"] = 0;
    m_accu.m_mapVDesc["1"].resize(1);
    m_accu.m_vKas.resize(1);
    m_accu.m_vGipsHits.resize(1);
    m_accu.m_vRechHits.resize(1);
    m_accu.m_vVerordnungHits.resize(1);
    m_accu.m_vGlabHits.resize(1);
    m_accu.m_vGlabFaktHits.resize(1);
    m_accu.m_vMischPwPlaene.resize(1);
    m_accu.m_vPwPlaene.resize(1);
    m_accu.m_iGlabPos = 1;
    m_accu.m_iErrPos = 2;
    m_accu.m_iGipsPos = 3;
    m_accu.m_iRechPos = 4;
}

std::vector<std::size_t> StatAccuTest::Tabellengroessen() const {
    return {m_accu.m_vBehHits.size(),  m_accu.m_vBehErrors.size(),    m_accu.m_vPat.size(),
            m_accu.m_mapPat.size(),    m_accu.m_mapVDesc.size(),      m_accu.m_vKas.size(),
            m_accu.m_vGipsHits.size(), m_accu.m_vRechHits.size(),     m_accu.m_vVerordnungHits.size(),
            m_accu.m_vGlabHits.size(), m_accu.m_vGlabFaktHits.size(), m_accu.m_vMischPwPlaene.size(),
            m_accu.m_vPwPlaene.size()};
}

std::vector<std::size_t> StatAccuTest::Poolgroessen() const {
    return {m_accu.m_vSpGoStat.size(),    m_accu.m_vSpStatistik.size(), m_accu.m_vSpMedStatistik.size(),
            m_accu.m_vSpKassenArt.size(), m_accu.m_vSpTechLst.size(),   m_accu.m_vSpKassenGrp.size(),
            m_accu.m_vSpHvm.size()};
}

// ---- the object

TEST_F(StatAccuTest, FrischOhneRecordsetsUndMitCursornAufAnfang) {
    EXPECT_EQ(m_accu.m_iLQPunktwert, 10000);
    EXPECT_EQ(m_accu.m_pRPat, nullptr);
    EXPECT_EQ(m_accu.m_pRABefund, nullptr);
    EXPECT_EQ(m_accu.m_pFachbereiche, nullptr);
    EXPECT_EQ(m_accu.m_pParent, nullptr);
    for (const std::int32_t i : {m_accu.m_iGlabPos, m_accu.m_iErrPos, m_accu.m_iGipsPos, m_accu.m_iRechPos})
        EXPECT_EQ(i, -1);
}

TEST_F(StatAccuTest, KopieHatInhaltAberKeineZeiger) {
    m_accu.GetMemForTables();
    m_accu.m_pFachbereiche = new SFachbereiche;
    m_accu.m_pParent = reinterpret_cast<HWND>(&m_accu);
    FuelleTabellen();
    m_accu.m_BehHit.PATNR = "4711";
    const CStatAccu kopie(m_accu);
    EXPECT_EQ(kopie.m_pRPat, nullptr);
    EXPECT_EQ(kopie.m_pRAdr, nullptr);
    EXPECT_EQ(kopie.m_pRBeh, nullptr);
    EXPECT_EQ(kopie.m_pRVDesc, nullptr);
    EXPECT_EQ(kopie.m_pROrvoKas, nullptr);
    EXPECT_EQ(kopie.m_pRABefund, nullptr);
    EXPECT_EQ(kopie.m_pFachbereiche, nullptr);
    EXPECT_EQ(kopie.m_iGlabPos, -1);
    EXPECT_EQ(kopie.m_iRechPos, -1);
    EXPECT_EQ(kopie.m_pParent, m_accu.m_pParent);
    EXPECT_EQ(kopie.m_vBehHits.size(), 1u);
    EXPECT_EQ(kopie.m_mapVDesc.size(), 1u);
    EXPECT_EQ(kopie.m_BehHit.PATNR, "4711"_t);
}

TEST_F(StatAccuTest, ZuweisungBehaeltEigeneZeigerUndNimmtCursor) {
    FuelleTabellen();
    m_accu.GetMemForTables();
    CStatAccu ziel;
    ziel.GetMemForTables();
    ziel.m_pFachbereiche = new SFachbereiche;
    const CTPat * pPat = ziel.m_pRPat;
    const SFachbereiche * pFachbereiche = ziel.m_pFachbereiche;
    ziel = m_accu;
    EXPECT_EQ(ziel.m_pRPat, pPat);
    EXPECT_EQ(ziel.m_pFachbereiche, pFachbereiche);
    EXPECT_EQ(ziel.m_iGlabPos, 1);
    EXPECT_EQ(ziel.m_iErrPos, 2);
    EXPECT_EQ(ziel.m_iGipsPos, 3);
    EXPECT_EQ(ziel.m_iRechPos, 4);
    EXPECT_EQ(ziel.m_vBehHits.size(), 1u);
    ziel.DeleteMemForTables();
}

TEST_F(StatAccuTest, RecordsetsEntstehenUndVergehen) {
    m_accu.DeleteMemForTables();
    m_accu.GetMemForTables();
    EXPECT_TRUE(m_accu.m_pRPat && m_accu.m_pRAdr && m_accu.m_pRBeh && m_accu.m_pRVDesc &&
                m_accu.m_pROrvoKas && m_accu.m_pRABefund);
    m_accu.DeleteMemForTables();
    EXPECT_FALSE(m_accu.m_pRPat || m_accu.m_pRAdr || m_accu.m_pRBeh || m_accu.m_pRVDesc ||
                 m_accu.m_pROrvoKas || m_accu.m_pRABefund);
    m_accu.DeleteMemForTables();
}

// ---- start and end of a run

TEST_F(StatAccuTest, VorlaufLeertDieTabellenDesLaufs) {
    SchreibePools();
    FuelleTabellen();
    m_accu.SetMandant("1");
    m_accu.m_vLeb = {Leb("  1", " 1", " 2"), Leb("  2", " 3", " 3"), Leb("  3", " 2", " 1")};
    EXPECT_EQ(m_accu.DataSumVorlauf(true), 0);
    EXPECT_EQ(Tabellengroessen(), std::vector<std::size_t>(13, 0));
    for (const std::int32_t i : {m_accu.m_iGlabPos, m_accu.m_iErrPos, m_accu.m_iGipsPos, m_accu.m_iRechPos})
        EXPECT_EQ(i, -1);
    EXPECT_EQ(m_accu.m_sLebsString, "'  1','  3'"_t);
    EXPECT_FALSE(m_accu.m_bAlleLebsPassen);
    EXPECT_NE(m_accu.m_pRPat, nullptr);
    m_accu.DataSumNachlauf();
    EXPECT_EQ(m_accu.m_pRPat, nullptr);
}

TEST_F(StatAccuTest, VorlaufBehaeltWasUeberLaeufeGilt) {
    SchreibePools();
    m_accu.m_vMd.resize(1);
    m_accu.m_vLeb.resize(1);
    m_accu.m_vLebAlle.resize(2);
    m_accu.m_vGO.resize(3);
    m_accu.m_vPwGrp.resize(4);
    m_accu.m_mapBill["1"].resize(1);
    m_accu.m_vUewStrings = {"u"};
    m_accu.m_vLstErsatz.resize(1);
    EXPECT_EQ(m_accu.DataSumVorlauf(false), 0);
    EXPECT_EQ(m_accu.m_vMd.size(), 1u);
    EXPECT_EQ(m_accu.m_vLeb.size(), 1u);
    EXPECT_EQ(m_accu.m_vLebAlle.size(), 2u);
    EXPECT_EQ(m_accu.m_vGO.size(), 3u);
    EXPECT_EQ(m_accu.m_vPwGrp.size(), 4u);
    EXPECT_EQ(m_accu.m_mapBill.size(), 1u);
    EXPECT_EQ(m_accu.m_vUewStrings.size(), 1u);
    EXPECT_EQ(m_accu.m_vLstErsatz.size(), 1u);
}

TEST_F(StatAccuTest, GescheiterterVorlaufLaesstDieTabellenStehen) {
    SchreibePools("techlsttyp");
    FuelleTabellen();
    m_accu.m_sLebsString = "'1'";
    m_accu.m_bAlleLebsPassen = true;
    EXPECT_EQ(m_accu.DataSumVorlauf(false), 17);
    EXPECT_EQ(Tabellengroessen(), std::vector<std::size_t>(13, 1));
    EXPECT_EQ(m_accu.m_iGlabPos, 1);
    EXPECT_EQ(m_accu.m_iErrPos, 2);
    EXPECT_EQ(m_accu.m_sLebsString, "'1'"_t);
    EXPECT_TRUE(m_accu.m_bAlleLebsPassen);
    EXPECT_NE(m_accu.m_pRPat, nullptr);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
    m_accu.DataSumNachlauf();
    EXPECT_EQ(m_accu.m_pRPat, nullptr);
}

TEST_F(StatAccuTest, JederFehlendePoolHatSeinenCode) {
    const struct {
        const char * pOhne;
        int iCode;
        std::vector<std::size_t> vGroessen;
    } vFaelle[] = {
        {"gostattyp", 14, {0, 0, 0, 0, 0, 0, 0}},
        {"statistikspalte", 15, {5, 0, 0, 0, 0, 0, 0}},
        {"medstatistikspalte", 15, {5, 2, 0, 0, 0, 0, 0}},
        {"kassenarttyp", 16, {5, 2, 2, 0, 0, 0, 0}},
        {"techlsttyp", 17, {5, 2, 2, 2, 0, 0, 0}},
        {"kassengrptyp", 18, {5, 2, 2, 2, 2, 0, 0}},
        {"hvmbudget", 19, {5, 2, 2, 2, 2, 2, 0}},
        {"gostattyp3", 0, {4, 2, 2, 2, 2, 2, 2}},
        {"", 0, {5, 2, 2, 2, 2, 2, 2}},
    };
    for (const auto & fall : vFaelle) {
        const auto pSpeicher = std::make_shared<CMemorySpeicher>();
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
        SchreibePools(fall.pOhne);
        m_accu = CStatAccu();
        EXPECT_EQ(m_accu.GetGlobalData(true), fall.iCode) << fall.pOhne;
        EXPECT_EQ(Poolgroessen(), fall.vGroessen) << fall.pOhne;
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
    EXPECT_EQ(m_accu.m_vSpHvm.size(), 2u);
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    const int iOhnePools = pZaehler->Operationen() - iNachlesen;
    EXPECT_EQ(iNachlesen - iOhnePools, 3); // the pool's walk, its row, its end
    EXPECT_EQ(Poolgroessen(), (std::vector<std::size_t>{5, 2, 2, 2, 2, 2, 2}));
}

TEST_F(StatAccuTest, NurKassenartenWerdenGrossgeschrieben) {
    SchreibePools("kassenarttyp");
    SchreibePool("kassenarttyp", "äk");
    EXPECT_EQ(m_accu.GetGlobalData(false), 0);
    EXPECT_EQ(m_accu.m_vSpKassenArt.front().m_sKey, "ÄK"_t);
    EXPECT_EQ(m_accu.m_vSpKassenArt.back().m_sText, "Unbekannt ..."_t);
    EXPECT_EQ(m_accu.m_vSpKassenGrp.front().m_sKey, "k1"_t);
}

TEST_F(StatAccuTest, GoStatistiktypenStehenHinterUnbekannt) {
    SchreibePool("gostattyp", "a");
    SchreibePool("gostattyp2", "b");
    SchreibePool("gostattyp4", "d");
    EXPECT_EQ(m_accu.GetGlobalData(false), 15);
    std::vector<CString> vKeys;
    for (const CSPData & eintrag : m_accu.m_vSpGoStat)
        vKeys.push_back(eintrag.m_sKey);
    EXPECT_EQ(vKeys, (std::vector<CString>{"a", "", "b", "d"}));
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
    const CString sSammlung = "Datensammlung gescheitert."_t;
    const CString sGlobal = "GetGlobalData()"_t;
    const struct {
        int iCode;
        std::vector<SPrompt> vPrompts;
    } vFaelle[] = {
        {1,
         {{SPrompt::HALT_I, sSammlung,
           "Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t}}},
        {2,
         {{SPrompt::HALT_I, sSammlung,
           "Keine Patienten gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t}}},
        {10, {{SPrompt::HALT_E, sGlobal, "Kein Mandant verfügbar!"_t}}},
        {11, {{SPrompt::HALT_E, sGlobal, "Kein Behandler verfügbar!"_t}}},
        {12, {{SPrompt::HALT_E, sGlobal, "Keine Punktwerte verfügbar!"_t}}},
        {13, {{SPrompt::HALT_E, sGlobal, "Keine Leistung verfügbar!"_t}}},
        {14, {{SPrompt::HALT_E, sGlobal, "Keine GO-Statistiktypen im Selectpool verfügbar!"_t}}},
        {15, {{SPrompt::HALT_E, sGlobal, "Keine Kassenstatistiktypen im Selectpool verfügbar!"_t}}},
        {16, {{SPrompt::HALT_E, sGlobal, "Keine Kassenarten im Selectpool verfügbar!"_t}}},
        {17, {{SPrompt::HALT_E, sGlobal, "Keine techn. Leistungstypen im Selectpool verfügbar!"_t}}},
        {18, {{SPrompt::HALT_E, sGlobal, "Keine Kassengruppen im Selectpool verfügbar!"_t}}},
        {19, {{SPrompt::HALT_E, sGlobal, "Keine HVM-Gruppen im Selectpool verfügbar!"_t}}},
        {-1, {}},
        {0, {}},
        {3, {}},
        {9, {}},
        {20, {}},
    };
    for (const auto & fall : vFaelle) {
        m_rekorder.m_vPrompts.clear();
        m_accu.DisplayGlobalDataError(fall.iCode);
        EXPECT_EQ(m_rekorder.m_vPrompts, fall.vPrompts) << fall.iCode;
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
    EXPECT_EQ(m_accu.m_vBehErrors.Lesend()[0].m_iFehler, 6);
    EXPECT_EQ(m_accu.m_vBehErrors.Lesend()[1].m_iFehler, 5);
    EXPECT_EQ(m_accu.m_vBehErrors.Lesend()[2].PATNR, "x"_t);
    EXPECT_EQ(m_accu.m_vBehErrors.Lesend()[9].DATUM, "2"_t);
    EXPECT_EQ(m_accu.m_BehError.DATUM, "2"_t);
}

TEST_F(StatAccuTest, FindErrorFolgtDerTabelle) {
    CBehHitLine hit;
    for (const char * pPat : {"1", "2", "3"}) {
        hit.PATNR = pPat;
        m_accu.AddError(hit, 6);
    }
    const CBehErrors letzter = m_accu.m_BehError;
    EXPECT_EQ(m_accu.FindError(letzter), 2);
    m_accu.m_vBehErrors.erase(m_accu.m_vBehErrors.begin());
    EXPECT_EQ(m_accu.FindError(letzter), 1);
    m_accu.m_vBehErrors[0].PATNR = "3";
    EXPECT_EQ(m_accu.FindError(letzter), 0);
    m_accu.m_vBehErrors.clear();
    EXPECT_EQ(m_accu.FindError(letzter), -1);
    m_accu.AddError(hit, 6);
    EXPECT_EQ(m_accu.FindError(letzter), 0);
}

TEST_F(StatAccuTest, StatusDerLeistung) {
    const struct {
        bool bAbgerechnet, bErfasst;
        bool bOffener, bFakt1, bFakt2, bBeide; // whether such a hit passes
    } vFaelle[] = {
        {true, true, true, true, true, true},
        {true, false, false, true, true, true},
        {false, true, true, false, false, false},
        {false, false, false, false, false, false},
    };
    CBehHitLine offener, fakt1, fakt2, beide;
    fakt1.FAKT1 = beide.FAKT1 = "R1";
    fakt2.FAKT2 = beide.FAKT2 = "R2";
    for (const auto & fall : vFaelle) {
        m_accu.SetIsAbgerechnet(fall.bAbgerechnet);
        m_accu.SetIsErfasst(fall.bErfasst);
        EXPECT_EQ(m_accu.IsLstStatusOK(offener), fall.bOffener) << fall.bAbgerechnet << fall.bErfasst;
        EXPECT_EQ(m_accu.IsLstStatusOK(fakt1), fall.bFakt1) << fall.bAbgerechnet << fall.bErfasst;
        EXPECT_EQ(m_accu.IsLstStatusOK(fakt2), fall.bFakt2) << fall.bAbgerechnet << fall.bErfasst;
        EXPECT_EQ(m_accu.IsLstStatusOK(beide), fall.bBeide) << fall.bAbgerechnet << fall.bErfasst;
    }
}

// ---- sorting

struct SHit {
    CString sName, sPatNr, sDatum;
    char cSitzung;
    CString sLfd, sMarke;
};

std::vector<CBehHitLine> Hits(const std::vector<SHit> & v) {
    std::vector<CBehHitLine> vHits;
    for (const SHit & h : v) {
        CBehHitLine & hit = vHits.emplace_back();
        hit.PATNAME = h.sName;
        hit.PATNR = h.sPatNr;
        hit.DATUM = h.sDatum;
        hit.SITZUNG = h.cSitzung;
        hit.LFDBEHEINTRAG = h.sLfd;
        hit.LSTIN = h.sMarke;
    }
    return vHits;
}

std::string Marken(const std::vector<CBehHitLine> & vHits) {
    std::string s;
    for (const CBehHitLine & hit : vHits)
        s += hit.LSTIN.Utf8();
    return s;
}

TEST_F(StatAccuTest, SortierungNachNameOderPatient) {
    const std::vector<CBehHitLine> vHits = Hits({
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
    });
    const struct {
        char cSortierung;
        const char * pErwartet;
    } vFaelle[] = {
        {'1', "edcbkfjhiga"}, {'2', "gaijedcfbhk"}, {'3', "abcdefghijk"}, {'0', "abcdefghijk"},
        {0, "abcdefghijk"},   {1, "abcdefghijk"},   {'a', "abcdefghijk"},
    };
    for (const auto & fall : vFaelle) {
        m_accu.SetSortierung(fall.cSortierung);
        m_accu.m_vBehHits.clear();
        m_accu.DoSortLines();
        EXPECT_TRUE(m_accu.m_vBehHits.empty());
        m_accu.m_vBehHits = vHits;
        m_accu.DoSortLines();
        EXPECT_EQ(Marken(m_accu.m_vBehHits), fall.pErwartet) << static_cast<int>(fall.cSortierung);
    }
}

TEST_F(StatAccuTest, GrosseSortierungVerliertUndVerdoppeltKeinenHit) {
    constexpr int ANZAHL = 3000;
    std::mt19937 zufall(4711);
    const auto Wurf = [&zufall](unsigned i) { return static_cast<int>(zufall() % i); };
    std::vector<CBehHitLine> vHits(ANZAHL);
    for (int i = 0; i < ANZAHL; ++i) {
        CBehHitLine & hit = vHits[static_cast<std::size_t>(i)];
        hit.ANZAHL = i;
        hit.TEXT.Format("Bemerkung zu %d"_t, i);
        hit.PATNAME.Format("Name %d"_t, Wurf(40));
        hit.PATNR.Format("%10d", Wurf(60));
        hit.DATUM.Format("202401%02d"_t, Wurf(30));
        hit.SITZUNG = static_cast<char>('a' + Wurf(3));
        hit.LFDBEHEINTRAG.Format("%d", Wurf(4));
    }
    using CKey = std::tuple<CString, CString, CString, char, CString>;
    for (const char cSortierung : {'1', '2'}) {
        m_accu.m_vBehHits = vHits;
        m_accu.SetSortierung(cSortierung);
        m_accu.DoSortLines();
        std::set<int> setGesehen;
        CKey vorher;
        for (const CBehHitLine & hit : m_accu.m_vBehHits) {
            const CBehHitLine & original = vHits[static_cast<std::size_t>(hit.ANZAHL)];
            ASSERT_TRUE(setGesehen.insert(hit.ANZAHL).second);
            ASSERT_EQ(hit.TEXT, original.TEXT);
            ASSERT_EQ(hit.PATNR, original.PATNR);
            CKey key(cSortierung == '1' ? hit.PATNAME : CString(), hit.PATNR, hit.DATUM, hit.SITZUNG,
                     hit.LFDBEHEINTRAG);
            ASSERT_LE(vorher, key);
            vorher = key;
        }
        EXPECT_EQ(setGesehen.size(), static_cast<std::size_t>(ANZAHL));
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
    m_accu.m_vPat[1].BEHANDLERNR = "  2";
    m_accu.m_BehHit.BEHANDLERNR = "  1";
    const struct {
        int iModus, iPat;
        CString sErwartet;
    } vFaelle[] = {
        {0, 1, " 1"}, {0, -1, " 1"}, {1, 1, " 2"}, {1, 0, ""},
        {1, 2, ""},   {1, -1, ""},   {2, 1, ""},   {-1, 1, ""},
    };
    for (const auto & fall : vFaelle) {
        m_accu.m_BehHit.PRAXISNR = "";
        m_accu.Braitretru(fall.iModus, fall.iPat);
        EXPECT_EQ(m_accu.m_BehHit.PRAXISNR, fall.sErwartet) << fall.iModus << ' ' << fall.iPat;
    }
}

TEST_F(StatAccuTest, ArztNurMitMKGUndPassenderMandantenart) {
    for (const char * pArt : {"a", "b", "d", "bd", "db", "B", ""})
        Schreibe<CTMandant>({.m_MDID = CString(pArt) + "1", .m_MDART = CString(pArt)});
    const struct {
        bool bMKG;
        CString sMd;
        bool bErwartet;
    } vFaelle[] = {
        {true, "b1", true},   {true, "d1", true},   {true, "a1", false},  {true, "bd1", false},
        {true, "db1", false}, {true, "B1", false},  {true, "1", false},   {true, "", false},
        {true, "x", false},   {false, "b1", false}, {false, "d1", false},
    };
    for (const auto & fall : vFaelle) {
        m_accu.SetArzt("");
        dbMKGVersion = fall.bMKG;
        m_accu.SetArzt(fall.sMd);
        EXPECT_EQ(m_accu.GetArzt(), fall.bErwartet) << fall.bMKG << fall.sMd.Utf8();
    }
}

TEST_F(StatAccuTest, NurEinWechselDerArztartLeertDieGebuehrenzeilen) {
    dbMKGVersion = true;
    Schreibe<CTMandant>({.m_MDID = " 1", .m_MDART = "b"});
    Schreibe<CTMandant>({.m_MDID = " 2", .m_MDART = "d"});
    m_accu.m_vGO.resize(1);
    m_accu.SetArzt(" 9");
    EXPECT_EQ(m_accu.m_vGO.size(), 1u);
    m_accu.SetArzt(" 1");
    EXPECT_EQ(m_accu.m_vGO.size(), 0u);
    m_accu.m_vGO.resize(1);
    m_accu.SetArzt(" 2");
    EXPECT_EQ(m_accu.m_vGO.size(), 1u);
    m_accu.SetArzt("");
    EXPECT_EQ(m_accu.m_vGO.size(), 0u);
}

TEST_F(StatAccuTest, ArztnameAusDerAdresse) {
    Schreibe<CTAdr>({.m_ADRNR = "7",
                     .m_ADRLFD = "1",
                     .m_PATTITEL = "Dr.",
                     .m_PATVORNAME = "Eva",
                     .m_PATNAME = "Gold",
                     .m_PATANREDE = "Frau"});
    EXPECT_EQ(m_accu.ReadArzt("7"), "Dr. Eva Gold"_t);
    EXPECT_EQ(m_accu.ReadArzt("8"), ""_t);
    EXPECT_EQ(m_accu.ReadArzt(""), ""_t);
}

TEST_F(StatAccuTest, GesamtBehDauerZaehltAllePatienten) {
    EXPECT_EQ(m_accu.GesamtBehDauer(), 0);
    m_accu.m_vPat.resize(3);
    m_accu.m_vPat[0].BEHDAUER = 15;
    m_accu.m_vPat[2].BEHDAUER = 45;
    EXPECT_EQ(m_accu.GesamtBehDauer(), 60);
    m_accu.ClearP();
    EXPECT_EQ(m_accu.GesamtBehDauer(), 0);
}

} // namespace
