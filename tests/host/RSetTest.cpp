// The record layer over both stores: match modes, directions, filters, what moves and what stays.
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "support/Praxis.h"

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace orvostat {

namespace {

using ::testing::Values;

std::shared_ptr<CZeilenspeicher> Speicher(const std::string & sArt, const CTempVerzeichnis & verzeichnis) {
    CString sMeldung;
    if (sArt == "Memory") return std::make_shared<CMemorySpeicher>();
    return CSqliteSpeicher::OeffneDatei((verzeichnis / "p.db").string(), EModus::NeuUngesichert, sMeldung);
}

// Both handles on one store, empty at first.
class RSetTest : public ::testing::TestWithParam<const char *> {
protected:
    RSetTest() { m_praxis.ZaehleAlles(); }

    CTempVerzeichnis m_verzeichnis;
    CTestpraxis m_praxis{Speicher(GetParam(), m_verzeichnis)};
    CFehlerspeicher * const m_pFehler = &m_praxis.Lesend();
};

CTBeh Beh(CMxDatabase & db, const CString & sPat, const CString & sDatum = "", const CString & sSitzung = "",
          const CString & sLfd = "", const CString & sLst = "") {
    CTBeh beh(db);
    beh.m_PATNR = sPat;
    beh.m_DATUM = sDatum;
    beh.m_SITZUNG = sSitzung;
    beh.m_LFDBEHEINTRAG = sLfd;
    beh.m_LSTNR = sLst;
    return beh;
}

void SchreibeBeh(const CString & sPat, const CString & sDatum, const CString & sSitzung, const CString & sLfd,
                 const CString & sLst) {
    ASSERT_EQ(Beh(dbDatabase, sPat, sDatum, sSitzung, sLfd, sLst).Write(), 0);
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

// The set of the key fields.
std::string Gelesen(CTBeh & beh, MatchMode mode = MATCH_ALLE) {
    return Alle(beh, beh.GetByK1(mode), beh.m_LSTNR);
}

std::string Gelesen(CTParPool & pool, MatchMode mode = MATCH_ALLE) {
    return Alle(pool, pool.GetByK1(mode), pool.m_WERT);
}

std::string AlleBeh() {
    CTBeh beh(dbDatabaseRO);
    return Alle(beh, beh.GetAll(), beh.m_LSTNR);
}

// ---- what a read finds

TEST_P(RSetTest, MatchModesTakeTheKeyFieldsAsTheySay) {
    SchreibeSieben();
    struct SFall {
        MatchMode mode;
        CString sPat, sDatum, sSitzung, sLfd;
        std::string sSoll;
    };
    const SFall aFaelle[] = {{MATCH_GENAU, "1", "20240101", "a", "2", "b"},
                             {MATCH_GENAU, "1", "20240101", "a", "", ""},
                             {MATCH_ALLE, "", "", "", "", "abcdefg"},
                             {MATCH_ALLE, "1", "", "", "", "abcd"}, // not of another that begins so
                             {MATCH_ALLE, "1", "20240101", "b", "1", "c"},
                             {MATCH_ALLE, "1", "", "a", "", "abd"}, // a part between left open
                             {MATCH_ALLE, "", "", "", "2", "b"},
                             {MATCH_ALLE, "", "20240101", "a", "1", "aeg"},
                             {MATCH_TEIL, "1", "202401", "", "", "abc"},
                             {MATCH_TEIL, "1", "", "", "", "abcde"},
                             {MATCH_TEIL, "", "2024", "", "", ""}, // an earlier part empty
                             {MATCH_TEIL, "", "", "", "", "abcdefg"}};
    for (const SFall & fall : aFaelle) {
        SCOPED_TRACE(std::to_string(fall.mode) + ": " + fall.sSoll);
        CTBeh beh = Beh(dbDatabaseRO, fall.sPat, fall.sDatum, fall.sSitzung, fall.sLfd);
        CTBeh absteigend = beh;
        absteigend.SetKey(1, false);
        EXPECT_EQ(Gelesen(beh, fall.mode), fall.sSoll);
        EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "abcdefg") << "nothing stays of the read before";
        EXPECT_EQ(Gelesen(absteigend, fall.mode), std::string(fall.sSoll.rbegin(), fall.sSoll.rend()));
    }
}

TEST_P(RSetTest, KeyTextsCompareAsTheirTableSays) {
    SchreibePool("53", "ab ", "1");
    SchreibePool("53", "AB", "2");
    CTGO go(dbDatabase);
    for (const CString & sLst : {CString("Ä1"), CString("ä935d"), CString("Ä1 ")}) {
        go.m_GOART = "Q";
        go.m_LSTNR = sLst;
        go.m_DRUCKBILD = sLst + ";";
        ASSERT_EQ(go.Write(), 0);
    }
    SchreibeBeh("7 ", "20240101", "", "", "x");
    struct SFall {
        CString sText;
        const char * pSoll;
    };
    for (const SFall & fall : {SFall{"ab", ""}, {"ab ", "1"}, {"AB", "2"}, {"AB ", ""}}) {
        CTParPool pool(dbDatabaseRO);
        pool.m_GRUPPE = "53";
        pool.m_KUERZEL = fall.sText;
        EXPECT_EQ(Gelesen(pool, MATCH_GENAU), fall.pSoll) << fall.sText.Utf8();
    }
    for (const SFall & fall :
         {SFall{"ä1", "Ä1;Ä1 ;"}, {"Ä1  ", "Ä1;Ä1 ;"}, {"Ä935D", "ä935d;"}, {"A1", ""}}) {
        go.m_GOART = "q";
        go.m_LSTNR = fall.sText;
        EXPECT_EQ(Alle(go, go.GetByK1(MATCH_ALLE), go.m_DRUCKBILD), fall.pSoll) << fall.sText.Utf8();
    }
    CTBeh beh = Beh(dbDatabaseRO, "7");
    EXPECT_EQ(Gelesen(beh), "x");
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
    EXPECT_EQ(Gelesen(pool), "abc") << "no group set is the whole table";
    EXPECT_EQ(pool.m_GRUPPE, CString("1234"));
}

TEST_P(RSetTest, BoundsAndFiltersHoldForOneRead) {
    SchreibeSieben();
    struct SFall {
        CString sPat, sVon, sBis;
        const char * pSoll;
    };
    const SFall aFaelle[] = {{"1", "20240101", "20240101", "abc"},
                             {"1", "20240102", "20240301", "d"},
                             {"1", "20240102", "20240228", ""},
                             {"1", "20240301", "20240101", ""},
                             {"", "1", "10", "abcde"}};
    for (const SFall & fall : aFaelle) {
        CTBeh beh = Beh(dbDatabaseRO, fall.sPat);
        beh.AddKeysBW(fall.sVon, fall.sBis);
        EXPECT_EQ(Gelesen(beh), fall.pSoll) << fall.sVon.Utf8();
        beh.ClearKey();
        EXPECT_EQ(Gelesen(beh), "abcdefg");
        beh.ClearKey();
        beh.ModifyFilter([&beh] { return beh.m_SITZUNG == "b"; });
        EXPECT_EQ(Gelesen(beh), "c");
        EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "c");
    }
}

TEST_P(RSetTest, AReadByTextsTakesTheObjectsOwnFieldsToo) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    beh.m_SITZUNG = "z";
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "b", "1", "too many"_t}), ZEILE_OK);
    EXPECT_EQ(beh.m_LSTNR, CString("c"));
    EXPECT_EQ(Alle(beh, beh.LiesMit(1, MATCH_ALLE, {beh.m_PATNR, beh.m_DATUM}), beh.m_LSTNR), "abc");
    EXPECT_EQ(Alle(beh, beh.LiesMit(1, MATCH_ALLE, {beh.m_LFDBEHEINTRAG}), beh.m_LSTNR), "abcd");
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101"}), ZEILE_KEINE) << "the other parts are empty";
}

// ---- the object and its set

TEST_P(RSetTest, WithoutASetThereIsNoRow) {
    SchreibeSieben();
    SchreibeBeh("", "20240101", "", "", "n"); // nobody's, as is every number of blanks
    const auto pSpeicher = dbDatabase.Speicher();
    const struct {
        int iSoll;
        std::function<int(CTBeh &)> fLies;
    } aFaelle[] = {
        {ZEILE_KEINE, [](CTBeh & beh) { return (beh = CTBeh(dbDatabase)).First(); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.ExecSQL(""); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.GetByK3(MATCH_ALLE); }}, // a key that the table lacks
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.SetKey(9), beh.GetAll(); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.SetKey(0), beh.GetRecByParam({"1"}); }},
        {ZEILE_KEINE,
         [](CTBeh & beh) {
             return beh.GetRecByParam({"", "20240101"});
         }},
        {ZEILE_KEINE, [](CTBeh & beh) { return beh.LiesMit(1, MATCH_ALLE, {""}); }},
        {ZEILE_KEINE,
         [](CTBeh & beh) { return beh.ClearKey(), beh.m_PATNR = "  ", beh.GetByK1(MATCH_ALLE); }},
        {ZEILE_FEHLER, [&](CTBeh & beh) { return m_pFehler->FehlerBei(1), beh.GetAll(); }}, // opening
        {ZEILE_FEHLER, [&](CTBeh & beh) { return m_pFehler->FehlerBei(2), beh.GetAll(); }}, // the first row
        {ZEILE_KEINE, [](CTBeh & beh) { return dbDatabase.Verbinde(nullptr), beh.GetAll(); }},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(&fall - aFaelle);
        CTBeh beh = Beh(dbDatabase, "1");
        ASSERT_EQ(beh.GetByK1(MATCH_ALLE), ZEILE_OK);
        EXPECT_EQ(fall.fLies(beh), fall.iSoll);
        dbDatabase.Verbinde(pSpeicher);
        EXPECT_NE(beh.Delete(), ZEILE_OK);
        for (const int iErgebnis :
             {beh.First(), beh.Next(), beh.Delete(), beh.DeleteRows(), beh.RewriteRec()})
            EXPECT_EQ(iErgebnis, ZEILE_KEINE);
    }
    EXPECT_EQ(AlleBeh(), "nabcdefg");
}

TEST_P(RSetTest, AFailedNextLeavesTheFields) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    for (const bool bFilter : {false, true}) {
        beh.ClearKey();
        beh.m_PATNR = "1";
        if (bFilter) beh.ModifyFilter([&beh] { return beh.m_LSTNR != "d"; });
        EXPECT_EQ(Gelesen(beh), bFilter ? "abc" : "abcd");
        EXPECT_EQ(beh.m_DATUM + beh.m_LSTNR, bFilter ? "20240101c"_t : "20240301d"_t);
        EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    }
    beh.m_PATNR = "4";
    EXPECT_EQ(beh.GetByK1(MATCH_ALLE), ZEILE_KEINE);
    EXPECT_EQ(beh.m_PATNR, CString("4"));
}

TEST_P(RSetTest, AJoinedAddressStaysWithItsRow) {
    CTAdr adr(dbDatabase);
    adr.m_ADRNR = "1";
    adr.m_PATNAME = "111";
    ASSERT_EQ(adr.Write(), 0);
    CTMandant md(dbDatabase);
    for (const char c : {'1', '2', '3'}) {
        md.m_MDID = md.m_MDADRNR = CString(c);
        md.m_GELOESCHT = c == '2' ? CString("1") : CString();
        ASSERT_EQ(md.Write(), 0);
    }
    CTMandantAdr mandant;
    ASSERT_EQ(mandant.GetValidMandant("1"), 0);
    EXPECT_EQ(mandant.Next(), ZEILE_KEINE);
    EXPECT_EQ(mandant.m_PATNAME, CString("111"));
    ASSERT_EQ(mandant.GetValidMandant(""), 0);
    ASSERT_EQ(mandant.Next(), 0);
    EXPECT_EQ(mandant.m_MDID + mandant.m_PATNAME, CString("3")) << "no such address";
    ASSERT_EQ(mandant.First(), 0);
    mandant.ClearAll();
    EXPECT_EQ(mandant.m_PATNAME, CString());
}

TEST_P(RSetTest, FirstStartsTheSetAnew) {
    SchreibeSieben();
    CTBeh beh = Beh(dbDatabaseRO, "1");
    ASSERT_EQ(beh.GetByK1(MATCH_ALLE), 0);
    beh.m_PATNR = "3"; // the set is that of the last read, not of the fields
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
    EXPECT_EQ(Gelesen(beh, MATCH_GENAU), "y");
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
    ziel.GetAll();
    ziel = beh;
    for (CTBeh * p : {&kopie, &ziel}) {
        EXPECT_TRUE(*p == beh);
        EXPECT_EQ(&p->Datenbank(), &dbDatabaseRO);
        EXPECT_EQ(p->Next(), ZEILE_KEINE);
        EXPECT_EQ(Alle(*p, p->GetAll(), p->m_LSTNR), "gfedcba");
        EXPECT_FALSE(*p == beh);
    }
    CTPat pat(dbDatabaseRO), andere(dbDatabaseRO);
    pat.SetKey(7); // which the table lacks
    andere = pat;
    EXPECT_EQ(andere.GetAll(), ZEILE_FEHLER);
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
    EXPECT_EQ(beh.m_PATNR + beh.m_LFDBEHEINTRAG + beh.m_LSTNR, CString("g"));
    EXPECT_EQ(beh.Next(), 0) << "the set stays open";
    beh.InitI();
    EXPECT_EQ(beh.m_LSTNR, CString("f"));
    EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    beh.Init();
    EXPECT_EQ(static_cast<const CTBeh_Fields &>(beh), CTBeh_Fields());
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "abcdefg") << "ascending again";
}

// ---- writes

TEST_P(RSetTest, DeleteMovesToTheNextRowAndDeleteRowsGoesToTheEnd) {
    SchreibeSieben();
    CTBeh beh = Beh(dbDatabase, "1");
    beh.ModifyFilter([&beh] { return beh.m_LSTNR != "c"; });
    ASSERT_EQ(beh.GetByK1(MATCH_ALLE), 0);
    EXPECT_EQ(beh.Delete(), 0);
    EXPECT_EQ(beh.m_LSTNR, CString("b"));
    EXPECT_EQ(beh.DeleteRows(), 0);
    EXPECT_EQ(AlleBeh(), "cefg");
    EXPECT_EQ(beh.DeleteRows(), ZEILE_KEINE);
    EXPECT_EQ(beh.Delete(), ZEILE_KEINE);
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
    EXPECT_EQ(Gelesen(pool), "1x2x");
    pool.m_WERT = "z";
    EXPECT_EQ(pool.RewriteRec(), ZEILE_KEINE) << "the set has ended";
}

TEST_P(RSetTest, AReadOnlyHandleAndOneWithoutStoreRefuseWrites) {
    SchreibeSieben();
    CTBeh beh(dbDatabaseRO);
    ASSERT_EQ(beh.GetAll(), 0);
    for (const int iErgebnis :
         {beh.Write(), beh.RewriteRec(), beh.Delete(), beh.DeleteRows(), dbDatabaseRO.Beginne()})
        EXPECT_EQ(iErgebnis, ZEILE_VERWEIGERT);
    EXPECT_EQ(beh.Next(), 0) << "the set goes on";
    EXPECT_EQ(AlleBeh(), "abcdefg");
    dbDatabase.Verbinde(nullptr);
    for (const int iErgebnis : {CTBeh(dbDatabase).Write(), dbDatabase.Beginne(), dbDatabase.Beende(true)})
        EXPECT_EQ(iErgebnis, ZEILE_VERWEIGERT);
}

TEST_P(RSetTest, EveryChangeThroughAHandleMovesTheState) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    const auto Bewegt = [](const auto & fTut) {
        const std::uint64_t iVorher = CMxDatabase::Stand();
        fTut();
        return CMxDatabase::Stand() != iVorher;
    };
    EXPECT_FALSE(Bewegt([&] { beh.GetAll(); }));
    dbDatabase.Beginne();
    EXPECT_TRUE(Bewegt([&] { beh.Write(); }));
    EXPECT_TRUE(Bewegt([&] { beh.RewriteRec(); }));
    EXPECT_TRUE(Bewegt([&] { beh.Delete(); }));
    EXPECT_TRUE(Bewegt([] { dbDatabase.Beende(false); }));
    EXPECT_TRUE(Bewegt([] { dbDatabaseRO.Verbinde(dbDatabase.Speicher()); }));
    EXPECT_EQ(AlleBeh(), "abcdefg");
}

// ---- failures of the store

TEST_P(RSetTest, AFailureOfTheStoreIsNeitherARowNorTheEnd) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    m_pFehler->FehlerBei(4);
    EXPECT_EQ(Alle(beh, beh.GetAll(), beh.m_LSTNR), "ab!") << "the third row";
    EXPECT_EQ(beh.Delete(), ZEILE_FEHLER);
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcdefg") << "the store goes on";
}

// Every kind of operation is counted where it fails, on its handle; neither an end nor a refusal is.
TEST_P(RSetTest, AHandleCountsWhatFails) {
    SchreibeSieben();
    CTBeh beh(dbDatabase), eine = Beh(dbDatabase, "1", "", "a");
    const std::tuple<const char *, int, std::function<void()>> aFaelle[] = {
        {"opening", 1, [&] { beh.GetAll(); }},
        {"stepping", 2, [&] { beh.GetAll(); }},
        {"stepping on with a filter", 3, [&] { eine.GetByK1(MATCH_ALLE), eine.Next(); }},
        {"rewriting", 3, [&] { beh.GetAll(), beh.RewriteRec(); }},
        {"deleting", 3, [&] { beh.GetAll(), beh.Delete(); }},
        {"writing", 1, [&] { beh.Write(); }},
        {"beginning", 1, [&] { dbDatabase.Beginne(); }},
        {"ending", 2, [&] { dbDatabase.Beginne(), dbDatabase.Beende(true); }},
        {"counting", 1, [&] { EXPECT_EQ(dbDatabase.Zeilenzahl(beh.Tabelle()), -1); }}};
    std::uint64_t iSoll = 0;
    for (const auto & [pWas, iFehler, fTut] : aFaelle) {
        m_pFehler->FehlerBei(iFehler);
        fTut();
        EXPECT_EQ(dbDatabase.Fehlschlaege(), ++iSoll) << pWas;
    }
    EXPECT_EQ(AlleBeh(), "abcdefg");
    EXPECT_EQ(CTBeh(dbDatabaseRO).Write(), ZEILE_VERWEIGERT);
    EXPECT_EQ(dbDatabaseRO.Fehlschlaege(), 0u);
    dbDatabase.Verbinde(dbDatabase.Speicher());
    EXPECT_EQ(dbDatabase.Fehlschlaege(), 0u);
}

TEST_P(RSetTest, AGroupStaysOnlyIfItIsTakenOver) {
    for (const bool bUebernehmen : {false, true}) {
        SchreibePool("53", "vorher", "1");
        CMxGruppe gruppe(dbDatabase);
        SchreibePool("53", "neu", "2");
        EXPECT_EQ(gruppe.Beende(bUebernehmen), bUebernehmen);
        EXPECT_FALSE(gruppe.Offen() || gruppe.Beende(true));
    }
    CTParPool pool(dbDatabaseRO);
    EXPECT_EQ(Gelesen(pool), "211");
}

TEST_P(RSetTest, DeletingTellsWhenNotAllIsGone) {
    SchreibeSieben();
    CTBeh beh(dbDatabase);
    for (const int iFehler : {3, 2}) { // the second deletion; the step behind the first one
        ASSERT_EQ(beh.GetAll(), 0);
        m_pFehler->FehlerBei(iFehler);
        EXPECT_EQ(beh.DeleteRows(), ZEILE_FEHLER);
        EXPECT_EQ(AlleBeh(), iFehler == 3 ? "bcdefg" : "cdefg");
    }
}

// ---- the pool, nested reads

TEST_P(RSetTest, BorrowedSetsAreFreshAndCounted) {
    SchreibeSieben();
    const int iVorher = EntlieheneRSets();
    CTPlan * p = CAutoRSet<CTPlan>::GetRSet(OPEN_TABELLE, false);
    CTPlan * q = CAutoRSet<CTPlan>::GetRSet(OPEN_DYNAMISCH, false);
    EXPECT_NE(p, q);
    EXPECT_EQ(&p->Datenbank(), &dbDatabaseRO);
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
    CTBeh beh(dbDatabaseRO);
    CAutoRSet<CTGips>()->GetAll();
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "a", "1"}), 0);
    EXPECT_EQ(m_pFehler->OffeneWege(), 0) << "neither a released set nor an exact read holds a walk";
}

TEST_P(RSetTest, ChecksAreReadInsideAWalkOverFeesAndTheSameTableInsideItself) {
    CTGO go(dbDatabase);
    CTGoCheck check(dbDatabase);
    go.m_GOART = check.m_GOART = "q";
    for (const char c : {'1', '2', '3'}) {
        go.m_LSTNR = check.m_LSTNR = CString(c);
        check.m_EXTRAFLAG = CString(c == '2' ? 'q' : 'p');
        check.m_CHECKTEXT = CString(c, 2);
        ASSERT_EQ(go.Write() + check.Write(), 0);
    }
    std::string s;
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

TEST_P(RSetTest, SelectPoolEntriesAreReadAnewAndStayTillTheStoreGoes) {
    SchreibeEintrag("P", " 2", "b");
    SchreibeEintrag("P", " 1", "a");
    SchreibeEintrag("PX", " 1", "c");
    SchreibeEintrag("", " 1", "n");
    std::vector<SSelectPool *> v{nullptr}, vNochmal;
    EXPECT_FALSE(GetSPEntries("", v) || GetSPEntries(" ", v) || GetSPEntries("Q", v));
    EXPECT_TRUE(v.empty());
    m_pFehler->FehlerBei(3);
    EXPECT_EQ(dbDatabaseRO.SelectPool("P", v), ZEILE_FEHLER);
    EXPECT_TRUE(v.empty()) << "not even the entries before the failure";
    ASSERT_TRUE(GetSPEntries("P", v));
    ASSERT_EQ(v.size(), 2u);
    EXPECT_EQ(v[0]->m_sKey, CString("a"));
    SchreibeEintrag("P", " 0", "d");
    SchreibeEintrag("P", " 3", "a");
    CTSelectPool pool(dbDatabase);
    ASSERT_EQ(pool.GetRecByParam({"P", " 1"}) + pool.Delete(), 0);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(GetSPEntries("P ", vNochmal));
        ASSERT_EQ(vNochmal.size(), 3u);
        EXPECT_EQ(vNochmal[0]->m_sKey, CString("d"));
        EXPECT_TRUE(vNochmal[1] == v[1] && vNochmal[2] == v[0]) << "the same objects in the new order";
    }
    EXPECT_EQ(v[1]->m_sText + v[1]->m_sExtra, "b textb+"_t);
}

INSTANTIATE_TEST_SUITE_P(Speicher, RSetTest, Values("Memory", "Sqlite"),
                         [](const auto & art) { return std::string(art.param); });

} // namespace

} // namespace orvostat
