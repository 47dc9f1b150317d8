// The record layer over both stores: match modes, directions, filters, what moves and what stays.
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace orvostat;
using ::testing::Values;

// Both handles on one store, empty at first.
class RSetTest : public ::testing::TestWithParam<const char *> {
protected:
    RSetTest() {
        std::shared_ptr<CZeilenspeicher> pSpeicher;
        if (std::string(GetParam()) == "Memory") {
            pSpeicher = std::make_shared<CMemorySpeicher>();
        } else {
            std::string sMuster = (std::filesystem::temp_directory_path() / "rset-XXXXXX").string();
            m_verzeichnis = mkdtemp(sMuster.data());
            CString sMeldung;
            pSpeicher = CSqliteSpeicher::OeffneDatei((m_verzeichnis / "p.db").string(),
                                                     EModus::NeuUngesichert, sMeldung);
        }
        m_pFehler = std::make_shared<CFehlerspeicher>(pSpeicher);
        dbDatabase.Verbinde(m_pFehler);
        dbDatabaseRO.Verbinde(m_pFehler);
    }
    ~RSetTest() override {
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
        if (!m_verzeichnis.empty()) std::filesystem::remove_all(m_verzeichnis);
    }

    std::shared_ptr<CFehlerspeicher> m_pFehler;

private:
    std::filesystem::path m_verzeichnis;
};

void SchreibeBeh(const CString & sPat, const CString & sDatum, const CString & sSitzung, const CString & sLfd,
                 const CString & sLst) {
    CTBeh beh(dbDatabase);
    beh.m_PATNR = sPat;
    beh.m_DATUM = sDatum;
    beh.m_SITZUNG = sSitzung;
    beh.m_LFDBEHEINTRAG = sLfd;
    beh.m_LSTNR = sLst;
    ASSERT_EQ(beh.Write(), 0);
}

void SchreibePool(const CString & sGruppe, const CString & sKuerzel, const CString & sWert) {
    CTParPool pool(dbDatabase);
    pool.m_GRUPPE = sGruppe;
    pool.m_KUERZEL = sKuerzel;
    pool.m_WERT = sWert;
    ASSERT_EQ(pool.Write("journal"), 0);
}

// Seven treatments of three patients, named a to g in key order.
void SchreibeSieben() {
    SchreibeBeh("2", "20240103", "a", "1", "f");
    SchreibeBeh("1", "20240101", "a", "1", "a");
    SchreibeBeh("1", "20240101", "b", "1", "c");
    SchreibeBeh("1", "20240101", "a", "2", "b");
    SchreibeBeh("1", "20240301", "a", "1", "d");
    SchreibeBeh("10", "20240101", "a", "1", "e");
    SchreibeBeh("3", "20240101", "a", "1", "g");
}

// The set that a read has opened, as the texts of one field one behind the other; a failure shows as "!".
template <class T> std::string Alle(T & t, int iErgebnis, const CString & sFeld) {
    std::string s;
    for (; iErgebnis == 0; iErgebnis = t.Next())
        s += sFeld.Utf8();
    return iErgebnis == ZEILE_KEINE ? s : s + "!";
}

std::string AlleBeh() {
    CTBeh beh(dbDatabaseRO);
    return Alle(beh, beh.GetAll(), beh.m_LSTNR);
}

// ---- what a read finds

TEST_P(RSetTest, MatchModesTakeTheKeyFieldsAsTheySay) {
    SchreibeSieben();
    struct SFall {
        const char * pName;
        MatchMode mode;
        CString sPat, sDatum, sSitzung, sLfd;
        const char * pSoll;
        const char * pAbsteigend;
    };
    const SFall aFaelle[] = {
        {"exact", MATCH_GENAU, "1", "20240101", "a", "2", "b", "b"},
        {"exact, a part missing", MATCH_GENAU, "1", "20240101", "a", "", "", ""},
        {"exact, no such row", MATCH_GENAU, "1", "20240101", "a", "3", "", ""},
        {"exact, nothing set", MATCH_GENAU, "", "", "", "", "", ""},
        {"all, nothing set", MATCH_ALLE, "", "", "", "", "abcdefg", "gfedcba"},
        {"all of a patient, not of another that begins so", MATCH_ALLE, "1", "", "", "", "abcd", "dcba"},
        {"all of a day", MATCH_ALLE, "1", "20240101", "", "", "abc", "cba"},
        {"all, the full key", MATCH_ALLE, "1", "20240101", "b", "1", "c", "c"},
        {"all, a part between left open", MATCH_ALLE, "1", "", "a", "", "abd", "dba"},
        {"all, only a part behind", MATCH_ALLE, "", "", "", "2", "b", "b"},
        {"all, two parts with a gap", MATCH_ALLE, "", "20240101", "a", "1", "aeg", "gea"},
        {"all, no such row", MATCH_ALLE, "4", "", "", "", "", ""},
        {"beginning of the last part set", MATCH_TEIL, "1", "202401", "", "", "abc", "cba"},
        {"beginning of the first part", MATCH_TEIL, "1", "", "", "", "abcde", "edcba"},
        {"beginning, earlier part empty", MATCH_TEIL, "", "2024", "", "", "", ""},
        {"beginning, nothing set", MATCH_TEIL, "", "", "", "", "abcdefg", "gfedcba"},
    };
    for (const SFall & fall : aFaelle)
        for (const bool bAufsteigend : {true, false}) {
            CTBeh beh(dbDatabaseRO);
            beh.m_PATNR = fall.sPat;
            beh.m_DATUM = fall.sDatum;
            beh.m_SITZUNG = fall.sSitzung;
            beh.m_LFDBEHEINTRAG = fall.sLfd;
            beh.SetKey(1, bAufsteigend);
            EXPECT_EQ(Alle(beh, beh.GetByK1(fall.mode), beh.m_LSTNR),
                      bAufsteigend ? fall.pSoll : fall.pAbsteigend)
                << fall.pName;
        }
}

TEST_P(RSetTest, KeyTextsCompareAsTheirTableSays) {
    SchreibePool("53", "ab ", "1");
    SchreibePool("53", "AB", "2");
    for (const CString & sLst : {CString("Ä1"), CString("ä935d"), CString("Ä1 ")}) {
        CTGO go(dbDatabase);
        go.m_GOART = "Q";
        go.m_LSTNR = sLst;
        go.m_DRUCKBILD = sLst + ";";
        ASSERT_EQ(go.Write(), 0);
    }
    SchreibeBeh("7 ", "20240101", "", "", "x");
    struct SPoolFall {
        CString sKuerzel;
        const char * pSoll;
    };
    for (const SPoolFall & fall : {SPoolFall{"ab", ""}, {"ab ", "1"}, {"AB", "2"}, {"AB ", ""}, {"Ab", ""}}) {
        CTParPool pool(dbDatabaseRO);
        pool.m_GRUPPE = "53";
        pool.m_KUERZEL = fall.sKuerzel;
        EXPECT_EQ(Alle(pool, pool.GetByK1(), pool.m_WERT), fall.pSoll) << fall.sKuerzel.Utf8();
    }
    for (const SPoolFall & fall :
         {SPoolFall{"ä1", "Ä1;Ä1 ;"}, {"Ä1  ", "Ä1;Ä1 ;"}, {"Ä935D", "ä935d;"}, {"A1", ""}}) {
        CTGO go(dbDatabaseRO);
        go.m_GOART = "q";
        go.m_LSTNR = fall.sKuerzel;
        EXPECT_EQ(Alle(go, go.GetByK1(MATCH_ALLE), go.m_DRUCKBILD), fall.pSoll) << fall.sKuerzel.Utf8();
    }
    CTBeh beh(dbDatabaseRO);
    beh.m_PATNR = "7";
    EXPECT_EQ(Alle(beh, beh.GetByK1(MATCH_ALLE), beh.m_LSTNR), "x");
}

TEST_P(RSetTest, ThePoolsGroupHasThreePlaces) {
    SchreibePool("0", "showdel", "a");
    SchreibePool("  0", "showx", "b");
    SchreibePool("1234", "s", "c");
    CTParPool pool(dbDatabaseRO);
    pool.m_GRUPPE = " 0";
    pool.m_KUERZEL = "show";
    EXPECT_EQ(Alle(pool, pool.GetByTeilKuerzel(), pool.m_WERT), "ab");
    EXPECT_EQ(pool.m_GRUPPE, CString("  0"));
    pool.ClearKey();
    EXPECT_EQ(Alle(pool, pool.GetByK1(MATCH_ALLE), pool.m_WERT), "abc") << "no group set is the whole table";
    EXPECT_EQ(pool.m_GRUPPE, CString("1234"));
}

TEST_P(RSetTest, BoundsNarrowTheFirstPartLeftOpenForOneRead) {
    SchreibeSieben();
    struct SFall {
        CString sPat, sVon, sBis;
        const char * pSoll;
    };
    for (const SFall & fall : {SFall{"1", "20240101", "20240101", "abc"},
                               {"1", "20240102", "20240301", "d"},
                               {"1", "20240102", "20240228", ""},
                               {"1", "20240301", "20240101", ""},
                               {"1", "", "", ""},
                               {"", "1", "10", "abcde"}}) {
        CTBeh beh(dbDatabaseRO);
        beh.m_PATNR = fall.sPat;
        beh.AddKeysBW(fall.sVon, fall.sBis);
        EXPECT_EQ(Alle(beh, beh.GetByK1(MATCH_ALLE), beh.m_LSTNR), fall.pSoll) << fall.sVon.Utf8();
        beh.ClearKey();
        EXPECT_EQ(Alle(beh, beh.GetByK1(MATCH_ALLE), beh.m_LSTNR), "abcdefg");
    }
}

TEST_P(RSetTest, AFilterHoldsForOneSet) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.m_PATNR = "1";
    beh.ModifyFilter([&beh] { return beh.m_SITZUNG == "a"; });
    EXPECT_EQ(Alle(beh, beh.GetByK1(MATCH_ALLE), beh.m_LSTNR), "abd");
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abd");
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "abcdefg");
}

TEST_P(RSetTest, AKeyThatTheTableLacksFindsNothing) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    EXPECT_EQ(beh.GetByK2(MATCH_ALLE), ZEILE_FEHLER);
    beh.SetKey(9);
    EXPECT_EQ(beh.GetAll(), ZEILE_FEHLER);
    EXPECT_EQ(beh.GetRecByParam({"1"}), ZEILE_FEHLER);
    EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    beh.SetKey(1);
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "abcdefg");
}

TEST_P(RSetTest, GetRecByParamReadsTheRowOfTheChosenKey) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.m_SITZUNG = "z";
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "b", "1", "too many"_t}), ZEILE_OK);
    EXPECT_EQ(beh.m_LSTNR, CString("c"));
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101"}), ZEILE_KEINE) << "the other parts are empty";
}

// ---- the object and its set

TEST_P(RSetTest, AFreshObjectHasNoSetAndNoRow) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    EXPECT_EQ(beh.First(), ZEILE_KEINE);
    EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    EXPECT_EQ(beh.Delete(), ZEILE_KEINE);
    EXPECT_EQ(beh.DeleteRows(), ZEILE_KEINE);
    EXPECT_EQ(beh.RewriteRec(), ZEILE_KEINE);
    EXPECT_EQ(static_cast<const CTBeh_Fields &>(beh), CTBeh_Fields());
    EXPECT_EQ(AlleBeh(), "abcdefg");
}

TEST_P(RSetTest, AFailedNextLeavesTheFields) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    for (const bool bFilter : {false, true}) {
        beh.m_PATNR = "1";
        beh.m_DATUM = beh.m_SITZUNG = beh.m_LFDBEHEINTRAG = CString();
        if (bFilter) beh.ModifyFilter([&beh] { return beh.m_LSTNR != "d"; });
        int iErgebnis = beh.GetByK1(MATCH_ALLE);
        while (iErgebnis == 0) {
            const CTBeh_Fields vorher = beh;
            iErgebnis = beh.Next();
            EXPECT_EQ(iErgebnis != 0, static_cast<const CTBeh_Fields &>(beh) == vorher);
        }
        EXPECT_EQ(iErgebnis, ZEILE_KEINE);
        EXPECT_EQ(beh.m_LSTNR, CString(bFilter ? 'c' : 'd'));
        EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    }
    beh.m_PATNR = "4";
    EXPECT_EQ(beh.GetByK1(MATCH_ALLE), ZEILE_KEINE);
    EXPECT_EQ(beh.m_PATNR, CString("4"));
}

TEST_P(RSetTest, AJoinedAddressStaysWithItsRow) {
    CTAdr adr(dbDatabase);
    for (const char c : {'1', '2'}) {
        adr.m_ADRNR = CString(c);
        adr.m_PATNAME = CString(c, 3);
        ASSERT_EQ(adr.Write(), 0);
    }
    CTMandant md(dbDatabase);
    for (const char c : {'1', '2', '3'}) {
        md.m_MDID = md.m_MDADRNR = CString(c);
        md.m_GELOESCHT = c == '2' ? CString("1") : CString();
        ASSERT_EQ(md.Write(), 0);
    }
    CTMandantAdr mandant;
    ASSERT_EQ(mandant.GetValidMandant("1"), 0);
    EXPECT_EQ(mandant.m_PATNAME, CString("111"));
    EXPECT_EQ(mandant.Next(), ZEILE_KEINE);
    EXPECT_EQ(mandant.m_PATNAME, CString("111"));
    ASSERT_EQ(mandant.GetValidMandant(""), 0);
    ASSERT_EQ(mandant.Next(), 0);
    EXPECT_EQ(mandant.m_MDID, CString("3"));
    EXPECT_EQ(mandant.m_PATNAME, CString()) << "no such address";
    ASSERT_EQ(mandant.First(), 0);
    mandant.ClearAll();
    EXPECT_EQ(mandant.m_PATNAME, CString());
}

TEST_P(RSetTest, FirstStartsTheSetAnew) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.m_PATNR = "1";
    ASSERT_EQ(beh.GetByK1(MATCH_ALLE), 0);
    ASSERT_EQ(beh.Next(), 0);
    beh.m_PATNR = "3"; // the set is that of the last read, not of the fields
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcd");
    SchreibeBeh("1", "20250101", "a", "1", "n");
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcdn");
}

TEST_P(RSetTest, AnExactReadIsASetOfOneRow) {
    SchreibeBeh("1", "20240101", "a", "1", "x");
    SchreibeBeh("1", "20240101", "a", "1", "y");
    CTBeh beh(dbDatabase);
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "a", "1"}), 0);
    EXPECT_EQ(beh.m_LSTNR, CString("x"));
    EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    beh.SetKey(1, false);
    EXPECT_EQ(beh.GetByK1(), 0);
    EXPECT_EQ(beh.m_LSTNR, CString("y"));
    EXPECT_EQ(beh.First(), 0);
    EXPECT_EQ(beh.Delete(), 0);
    EXPECT_EQ(AlleBeh(), "x");
}

TEST_P(RSetTest, CopiesTakeFieldsAndKeyButNoSet) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.SetKey(1, false);
    ASSERT_EQ(beh.GetAll(), 0);
    CTBeh kopie(beh);
    CTBeh ziel(dbDatabase);
    ziel = beh;
    for (CTBeh * p : {&kopie, &ziel}) {
        EXPECT_TRUE(*p == beh);
        EXPECT_EQ(&p->Datenbank(), &dbDatabaseRO);
        EXPECT_EQ(p->Next(), ZEILE_KEINE);
        EXPECT_EQ(Alle(*p, p->GetAll(), p->m_LSTNR), "gfedcba");
        EXPECT_FALSE(*p == beh);
    }
    EXPECT_EQ(Alle(beh, beh.Next(), beh.m_LSTNR), "fedcba");
    CTBill bill(dbDatabaseRO);
    static_cast<CMxRSet &>(bill) = beh; // of another table: nothing happens
    EXPECT_FALSE(static_cast<CMxRSet &>(bill) == beh);
    EXPECT_EQ(bill.m_PATNR, CString());
}

TEST_P(RSetTest, InitAndTheClearsEmptyWhatTheySay) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.SetKey(1, false);
    ASSERT_EQ(beh.GetAll(), 0);
    beh.ClearKey();
    EXPECT_TRUE(beh.m_PATNR.IsEmpty() && beh.m_LFDBEHEINTRAG.IsEmpty());
    EXPECT_EQ(beh.m_LSTNR, CString("g"));
    EXPECT_EQ(beh.Next(), 0) << "the set stays open";
    beh.InitI();
    EXPECT_EQ(beh.m_LSTNR, CString("f"));
    EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    beh.Init();
    EXPECT_EQ(static_cast<const CTBeh_Fields &>(beh), CTBeh_Fields());
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "abcdefg") << "ascending again";
}

// ---- writes

TEST_P(RSetTest, DeleteMovesToTheNextRowOfTheSet) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    beh.m_PATNR = "1";
    ASSERT_EQ(beh.GetByK1(MATCH_ALLE), 0);
    ASSERT_EQ(beh.Next(), 0);
    EXPECT_EQ(beh.Delete(), 0);
    EXPECT_EQ(beh.m_LSTNR, CString("c"));
    int iGeloescht = 0;
    while (beh.Delete() == 0)
        ++iGeloescht;
    EXPECT_EQ(iGeloescht, 2);
    EXPECT_EQ(beh.Delete(), ZEILE_KEINE);
    EXPECT_EQ(AlleBeh(), "aefg");
}

TEST_P(RSetTest, DeleteRowsTakesTheCurrentRowAndAllBehindIt) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    beh.m_PATNR = "1";
    beh.ModifyFilter([&beh] { return beh.m_LSTNR != "c"; });
    ASSERT_EQ(beh.GetByK1(MATCH_ALLE), 0);
    ASSERT_EQ(beh.Next(), 0);
    EXPECT_EQ(beh.DeleteRows(), 0);
    EXPECT_EQ(AlleBeh(), "acefg");
    EXPECT_EQ(beh.DeleteRows(), ZEILE_KEINE);
}

TEST_P(RSetTest, RewriteReplacesTheCurrentRow) {
    SchreibePool("53", "a", "1");
    SchreibePool("53", "b", "2");
    CTParPool pool(dbDatabase);
    pool.m_GRUPPE = "53";
    for (int i = pool.GetByK1(MATCH_ALLE); i == 0; i = pool.Next()) {
        pool.m_WERT += "x";
        EXPECT_EQ(pool.RewriteRec(), 0);
    }
    pool.ClearKey();
    EXPECT_EQ(Alle(pool, pool.GetByK1(MATCH_ALLE), pool.m_WERT), "1x2x");
    pool.m_WERT = "z";
    EXPECT_EQ(pool.RewriteRec(), ZEILE_KEINE) << "the set has ended";
}

TEST_P(RSetTest, AReadOnlyHandleRefusesWritesAndChangesNothing) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    ASSERT_EQ(beh.GetAll(), 0);
    beh.m_LSTNR = "z";
    EXPECT_EQ(beh.Write(), ZEILE_VERWEIGERT);
    EXPECT_EQ(beh.RewriteRec(), ZEILE_VERWEIGERT);
    EXPECT_EQ(beh.Delete(), ZEILE_VERWEIGERT);
    EXPECT_EQ(beh.DeleteRows(), ZEILE_VERWEIGERT);
    EXPECT_EQ(dbDatabaseRO.Beginne(), ZEILE_VERWEIGERT);
    EXPECT_EQ(beh.Next(), 0) << "the set goes on";
    EXPECT_EQ(AlleBeh(), "abcdefg");
}

TEST_P(RSetTest, AHandleWithoutStoreHasNoRowsAndRefusesWrites) {
    dbDatabase.Verbinde(nullptr);
    CTBeh beh(dbDatabase);
    EXPECT_EQ(beh.GetAll(), ZEILE_KEINE);
    EXPECT_EQ(beh.Write(), ZEILE_VERWEIGERT);
    EXPECT_EQ(dbDatabase.Beginne(), ZEILE_VERWEIGERT);
    EXPECT_EQ(dbDatabase.Beende(true), ZEILE_VERWEIGERT);
}

TEST_P(RSetTest, EveryChangeThroughAHandleMovesTheState) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    std::uint64_t iStand = CMxDatabase::Stand();
    const auto Bewegt = [&iStand] {
        return std::exchange(iStand, CMxDatabase::Stand()) != CMxDatabase::Stand();
    };
    beh.GetAll();
    EXPECT_FALSE(Bewegt()) << "reading";
    dbDatabase.Beginne();
    beh.Write();
    EXPECT_TRUE(Bewegt()) << "writing";
    beh.RewriteRec();
    EXPECT_TRUE(Bewegt()) << "rewriting";
    beh.Delete();
    EXPECT_TRUE(Bewegt()) << "deleting";
    dbDatabase.Beende(false);
    EXPECT_TRUE(Bewegt()) << "the end of a group";
    dbDatabaseRO.Verbinde(dbDatabase.Speicher());
    EXPECT_TRUE(Bewegt()) << "attaching";
    EXPECT_EQ(AlleBeh(), "abcdefg");
}

// ---- failures of the store

TEST_P(RSetTest, AFailureOfTheStoreIsNeitherARowNorTheEnd) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    m_pFehler->FehlerBei(1);
    EXPECT_EQ(beh.GetAll(), ZEILE_FEHLER) << "opening";
    m_pFehler->FehlerBei(2);
    EXPECT_EQ(beh.GetAll(), ZEILE_FEHLER) << "the first row";
    EXPECT_EQ(beh.m_LSTNR, CString());
    m_pFehler->FehlerBei(4);
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "ab!") << "the third row";
    EXPECT_EQ(beh.Delete(), ZEILE_FEHLER);
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcdefg") << "the store goes on";
}

TEST_P(RSetTest, DeletingTellsWhenNotAllIsGone) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    ASSERT_EQ(beh.GetAll(), 0);
    m_pFehler->FehlerBei(3); // the second deletion
    EXPECT_EQ(beh.DeleteRows(), ZEILE_FEHLER);
    EXPECT_EQ(AlleBeh(), "bcdefg");
    ASSERT_EQ(beh.GetAll(), 0);
    m_pFehler->FehlerBei(2); // the step behind the first deletion
    EXPECT_EQ(beh.DeleteRows(), ZEILE_FEHLER);
    EXPECT_EQ(AlleBeh(), "cdefg");
}

// ---- the pool, nested reads

TEST_P(RSetTest, BorrowedSetsAreFreshAndCounted) {
    SchreibeSieben();
    const int iVorher = EntlieheneRSets();
    CTPlan * p = CAutoRSet<CTPlan>::GetRSet(OPEN_TABELLE, false);
    CTPlan * q = CAutoRSet<CTPlan>::GetRSet(OPEN_DYNAMISCH, false);
    EXPECT_NE(p, q);
    EXPECT_EQ(&p->Datenbank(), &dbDatabaseRO);
    EXPECT_EQ(EntlieheneRSets(), iVorher + 2);
    p->m_PATNR = "1";
    p->SetKey(2, false);
    CAutoRSet<CTPlan>::ReleaseRSet(p);
    CAutoRSet<CTPlan>::ReleaseRSet(nullptr);
    EXPECT_EQ(EntlieheneRSets(), iVorher + 1);
    {
        const CAutoRSet<CTPlan> plan;
        EXPECT_EQ(&*plan, p) << "the object is used again";
        EXPECT_EQ(plan->m_PATNR, CString());
        EXPECT_EQ(plan->GetAll(), ZEILE_KEINE) << "key 1";
        EXPECT_EQ(EntlieheneRSets(), iVorher + 2);
    }
    CAutoRSet<CTPlan>::ReleaseRSet(q);
    EXPECT_EQ(EntlieheneRSets(), iVorher);
}

TEST_P(RSetTest, AReleasedSetHoldsNoWalk) {
    SchreibeSieben();
    {
        const CAutoRSet<CTGips> gips;
        gips->GetAll();
        CTBeh beh(dbDatabaseRO);
        beh.GetRecByParam({"1", "20240101", "a", "1"});
        EXPECT_EQ(m_pFehler->OffeneWege(), 1) << "nor does an exact read";
    }
    EXPECT_EQ(m_pFehler->OffeneWege(), 0);
}

TEST_P(RSetTest, InsurersAreReadInsideAWalkOverPeriods) {
    CTVDesc vdesc(dbDatabase);
    CTOrvoKas kas(dbDatabase);
    for (const char c : {'a', 'b'})
        for (const CString & sAb : {CString("20200101"), CString("20230101")}) {
            kas.m_KASKUERZEL = CString(c);
            kas.m_GUELTIGAB = sAb;
            kas.m_KASSENART = CString(c) + sAb.Mid(3, 1);
            ASSERT_EQ(kas.Write(), 0);
        }
    for (const CString & sAb : {CString("20210101"), CString("20220101"), CString("20240101")}) {
        vdesc.m_PATNR = "1";
        vdesc.m_VDABDATUM = sAb;
        vdesc.m_KASKUERZEL = sAb == "20220101" ? CString("b") : CString("a");
        ASSERT_EQ(vdesc.Write(), 0);
    }
    std::string s;
    CTVDesc periode(dbDatabaseRO);
    periode.SetKey(1, false);
    periode.m_PATNR = "1";
    CTOrvoKas kasse(dbDatabaseRO);
    for (int i = periode.GetByK1(MATCH_ALLE); i == 0; i = periode.Next()) {
        s += periode.m_VDABDATUM.Mid(3, 1).Utf8() + ":";
        kasse.ClearKey();
        kasse.SetKey(1, false);
        kasse.m_KASKUERZEL = periode.m_KASKUERZEL;
        s += Alle(kasse, kasse.GetByK1(MATCH_ALLE), kasse.m_KASSENART) + " ";
    }
    EXPECT_EQ(s, "4:a3a0 2:b3b0 1:a3a0 ");
}

TEST_P(RSetTest, ChecksAreReadInsideAWalkOverFeesAndTheSameTableInsideItself) {
    for (const char c : {'1', '2', '3'}) {
        CTGO go(dbDatabase);
        go.m_GOART = "q";
        go.m_LSTNR = CString(c);
        ASSERT_EQ(go.Write(), 0);
        CTGoCheck check(dbDatabase);
        check.m_GOART = "q";
        check.m_LSTNR = CString(c);
        check.m_EXTRAFLAG = "p";
        check.m_CHECKTEXT = CString(c, 2);
        ASSERT_EQ(c == '2' ? 0 : check.Write(), 0);
    }
    std::string s;
    CTGO go(dbDatabaseRO);
    CTGoCheck check(dbDatabaseRO);
    for (int i = go.GetAll(); i == 0; i = go.Next()) {
        s += check.GetByExtraFlag(go.m_GOART, go.m_LSTNR, 'p') == 0 ? check.m_CHECKTEXT.Utf8() : "-";
        const CAutoRSet<CTGO> innen;
        innen->SetKey(1, false);
        s += "(" + Alle(*innen, innen->GetAll(), innen->m_LSTNR) + ")";
    }
    EXPECT_EQ(s, "11(321)-(321)33(321)");
}

// ---- the select pool

void SchreibeEintrag(const CString & sPool, const CString & sLfd, const CString & sKey) {
    CTSelectPool pool(dbDatabase);
    pool.m_SPPOOL = sPool;
    pool.m_SPLFD = sLfd;
    pool.m_SPKEY = sKey;
    pool.m_SPTEXT = sKey + " text";
    pool.m_SPEXTRA = sKey + "+";
    ASSERT_EQ(pool.Write(), 0);
}

TEST_P(RSetTest, SelectPoolEntriesComeInOrderAndStayTillTheStoreGoes) {
    SchreibeEintrag("P", " 2", "b");
    SchreibeEintrag("P", " 1", "a");
    SchreibeEintrag("PX", " 1", "c");
    std::vector<SSelectPool *> v{nullptr};
    EXPECT_FALSE(GetSPEntries("", v));
    EXPECT_TRUE(v.empty());
    EXPECT_FALSE(GetSPEntries("Q", v));
    ASSERT_TRUE(GetSPEntries("P", v));
    ASSERT_EQ(v.size(), 2u);
    EXPECT_EQ(v[0]->m_sKey, CString("a"));
    EXPECT_EQ(v[1]->m_sText, CString("b text"));
    EXPECT_EQ(v[1]->m_sExtra, CString("b+"));
    std::vector<SSelectPool *> vNochmal;
    SchreibeEintrag("P", " 3", "d");
    GetSPEntries("P", vNochmal);
    EXPECT_EQ(v, vNochmal) << "the same objects";
    dbDatabaseRO.Verbinde(m_pFehler);
    GetSPEntries("P", vNochmal);
    EXPECT_EQ(vNochmal.size(), 3u);
}

TEST_P(RSetTest, ASelectPoolThatCouldNotBeReadIsAskedAgain) {
    SchreibeEintrag("P", " 1", "a");
    std::vector<SSelectPool *> v;
    m_pFehler->FehlerBei(3);
    EXPECT_FALSE(GetSPEntries("P", v));
    EXPECT_TRUE(GetSPEntries("P", v));
}

INSTANTIATE_TEST_SUITE_P(Speicher, RSetTest, Values("Memory", "Sqlite"),
                         [](const auto & art) { return std::string(art.param); });

} // namespace
