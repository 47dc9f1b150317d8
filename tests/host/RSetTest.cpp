// The record layer: match modes, directions, filters, what moves and what stays.
#include "orvostatbs/host/Tabellen.h"
#include "support/Praxis.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

namespace {

// Both handles on one store, with seven treatments of four patients, named a to g in key order.
class RSetTest : public CPraxisTest {
protected:
    RSetTest() {
        m_praxis.ZaehleAlles();
        Schreibe(R"(BEH PATNR=2 DATUM=20240103 SITZUNG=a LFDBEHEINTRAG=1 LSTNR=f
                    BEH PATNR=1 DATUM=20240101 SITZUNG=a LFDBEHEINTRAG=1 LSTNR=a
                    BEH PATNR=1 DATUM=20240101 SITZUNG=b LFDBEHEINTRAG=1 LSTNR=c
                    BEH PATNR=1 DATUM=20240101 SITZUNG=a LFDBEHEINTRAG=2 LSTNR=b
                    BEH PATNR=1 DATUM=20240301 SITZUNG=a LFDBEHEINTRAG=1 LSTNR=d
                    BEH PATNR=10 DATUM=20240101 SITZUNG=a LFDBEHEINTRAG=1 LSTNR=e
                    BEH PATNR=3 DATUM=20240101 SITZUNG=a LFDBEHEINTRAG=1 LSTNR=g)");
    }

    CFehlerspeicher * const m_pFehler = &m_praxis.Lesend();
};

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

std::string Ganz(CTBeh & beh) { return Alle(beh, beh.GetAll(), beh.m_LSTNR); }

std::string AlleBeh() {
    CTBeh beh(dbDatabaseRO);
    return Ganz(beh);
}

// ---- what a read finds

TEST_F(RSetTest, MatchModesTakeTheKeyFieldsAsTheySay) {
    const auto Mit = [](MatchMode mode, const char * pPat, const char * pDatum, const char * pSitzung,
                        const char * pLfd) {
        std::string asGelesen[2];
        for (const bool bAufsteigend : {true, false}) {
            CTBeh beh(dbDatabaseRO);
            beh.SetKey(1, bAufsteigend);
            beh.m_PATNR = CString(pPat);
            beh.m_DATUM = CString(pDatum);
            beh.m_SITZUNG = CString(pSitzung);
            beh.m_LFDBEHEINTRAG = CString(pLfd);
            asGelesen[bAufsteigend] = Gelesen(beh, mode);
            EXPECT_EQ(Ganz(beh), bAufsteigend ? "abcdefg" : "gfedcba") << "nothing stays of the read before";
        }
        EXPECT_EQ(asGelesen[0], std::string(asGelesen[1].rbegin(), asGelesen[1].rend()));
        return asGelesen[1];
    };
    EXPECT_EQ(Werte(Mit(MATCH_GENAU, "1", "20240101", "a", "2"), Mit(MATCH_GENAU, "1", "20240101", "a", "")),
              "b|");
    // Not of another number that begins so; a part between left open.
    EXPECT_EQ(Werte(Mit(MATCH_ALLE, "", "", "", ""), Mit(MATCH_ALLE, "1", "", "", ""),
                    Mit(MATCH_ALLE, "1", "20240101", "b", "1"), Mit(MATCH_ALLE, "1", "", "a", ""),
                    Mit(MATCH_ALLE, "", "20240101", "a", "1")),
              "abcdefg|abcd|c|abd|aeg");
    EXPECT_EQ(Werte(Mit(MATCH_TEIL, "1", "202401", "", ""), Mit(MATCH_TEIL, "1", "", "", ""),
                    Mit(MATCH_TEIL, "", "2024", "", ""), Mit(MATCH_TEIL, "", "", "", "")),
              "abc|abcde||abcdefg");
    CTBeh beh(dbDatabaseRO);
    beh.m_SITZUNG = "z"; // of which a read by texts takes no notice
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "b", "1", "too many"_t}), ZEILE_OK);
    EXPECT_EQ(beh.m_LSTNR, CString("c"));
    EXPECT_EQ(Alle(beh, beh.LiesMit(1, MATCH_ALLE, {beh.m_PATNR, beh.m_DATUM}), beh.m_LSTNR), "abc");
    EXPECT_EQ(Alle(beh, beh.LiesMit(1, MATCH_ALLE, {beh.m_LFDBEHEINTRAG}), beh.m_LSTNR), "abcd");
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101"}), ZEILE_KEINE) << "the other parts are empty";
}

TEST_F(RSetTest, KeyTextsCompareAsTheirTableSays) {
    Schreibe(R"(PARPOOL GRUPPE=" 53" KUERZEL="ab " WERT=1
                PARPOOL GRUPPE=" 53" KUERZEL=AB WERT=2
                GO GOART=Q LSTNR=Ä1 DRUCKBILD=a
                GO GOART=Q LSTNR=ä935d DRUCKBILD=b
                GO GOART=Q LSTNR="Ä1 " DRUCKBILD=c
                BEH PATNR="7 " LSTNR=x)");
    std::string s;
    for (const char * p : {"ab", "ab ", "AB", "AB "}) {
        CTParPool pool(dbDatabaseRO);
        s += (pool.GetRecByParam({" 53", CString(p)}) == 0 ? pool.m_WERT.Utf8() : "-") + " ";
    }
    for (const CString & sLst : {"ä1"_t, "Ä1  "_t, "Ä935D"_t, "A1"_t}) {
        CTGO go(dbDatabaseRO);
        s += Alle(go, go.LiesMit(1, MATCH_ALLE, {"q", sLst}), go.m_DRUCKBILD) + " ";
    }
    EXPECT_EQ(s, "- 1 2 - ac ac b  ");
    CTBeh beh(dbDatabaseRO);
    beh.m_PATNR = "7";
    EXPECT_EQ(Gelesen(beh), "x");
}

TEST_F(RSetTest, ThePoolsGroupHasThreePlaces) {
    CTParPool pool(dbDatabase);
    for (const auto & [pGruppe, pKuerzel] : {std::pair{"0", "showa"}, {"  0", "showb"}, {"1234", "sc"}}) {
        pool.m_GRUPPE = CString(pGruppe);
        pool.m_KUERZEL = pool.m_WERT = CString(pKuerzel);
        ASSERT_EQ(pool.Write("journal"), 0);
    }
    pool.m_GRUPPE = " 0";
    pool.m_KUERZEL = "show";
    EXPECT_EQ(Alle(pool, pool.GetByTeilKuerzel(), pool.m_WERT), "showashowb");
    EXPECT_EQ(pool.m_GRUPPE, CString("  0"));
    pool.ClearKey();
    EXPECT_EQ(Alle(pool, pool.GetByK1(MATCH_ALLE), pool.m_WERT), "showashowbsc")
        << "no group set is the whole table";
    EXPECT_EQ(pool.m_GRUPPE, CString("1234"));
}

TEST_F(RSetTest, BoundsAndFiltersHoldForOneRead) {
    CTBeh beh(dbDatabaseRO);
    const auto Zwischen = [&](const char * pPat, const char * pVon, const char * pBis) {
        beh.ClearKey();
        beh.m_PATNR = CString(pPat);
        beh.AddKeysBW(CString(pVon), CString(pBis));
        return Gelesen(beh);
    };
    EXPECT_EQ(Werte(Zwischen("1", "20240101", "20240101"), Zwischen("1", "20240102", "20240301"),
                    Zwischen("1", "20240102", "20240228"), Zwischen("1", "20240301", "20240101"),
                    Zwischen("", "1", "10")),
              "abc|d|||abcde");
    beh.AddKeysBW("2", "2"); // of which reading all takes no notice
    EXPECT_EQ(Ganz(beh), "abcdefg");
    beh.ClearKey();
    EXPECT_EQ(Gelesen(beh), "abcdefg");
    beh.ClearKey();
    beh.ModifyFilter([&beh] { return beh.m_SITZUNG == "b"; });
    EXPECT_EQ(Gelesen(beh), "c");
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "c");
    EXPECT_EQ(Ganz(beh), "abcdefg");
}

// ---- the object and its set

TEST_F(RSetTest, WithoutASetThereIsNoRow) {
    Schreibe("BEH DATUM=20240101 LSTNR=n"); // nobody's, as is every number of blanks
    const auto pSpeicher = dbDatabase.Speicher();
    const std::pair<int, std::function<int(CTBeh &)>> aFaelle[] = {
        {ZEILE_KEINE, [](CTBeh & beh) { return (beh = CTBeh(dbDatabase)).First(); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.ExecSQL(""); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.GetByK3(MATCH_ALLE); }}, // a key that the table lacks
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.SetKey(9), beh.GetAll(); }},
        {ZEILE_FEHLER, [](CTBeh & beh) { return beh.SetKey(0), beh.LiesMit(0, MATCH_GENAU, {"1"}); }},
        {ZEILE_KEINE,
         [](CTBeh & beh) {
             return beh.LiesMit(1, MATCH_GENAU, {"", "20240101"});
         }},
        {ZEILE_KEINE, [](CTBeh & beh) { return beh.LiesMit(1, MATCH_ALLE, {""}); }},
        {ZEILE_KEINE,
         [](CTBeh & beh) { return beh.ClearKey(), beh.m_PATNR = "  ", beh.GetByK1(MATCH_ALLE); }},
        {ZEILE_FEHLER, [&](CTBeh & beh) { return m_pFehler->FehlerBei(1), beh.GetAll(); }}, // opening
        {ZEILE_FEHLER, [&](CTBeh & beh) { return m_pFehler->FehlerBei(2), beh.GetAll(); }}, // the first row
        {ZEILE_KEINE, [](CTBeh & beh) { return dbDatabase.Verbinde(nullptr), beh.GetAll(); }},
    };
    for (const auto & [iSoll, fLies] : aFaelle) {
        CTBeh beh(dbDatabase);
        ASSERT_EQ(beh.LiesMit(1, MATCH_ALLE, {"1"}), ZEILE_OK);
        EXPECT_EQ(fLies(beh), iSoll) << &iSoll - &aFaelle[0].first;
        dbDatabase.Verbinde(pSpeicher);
        EXPECT_NE(beh.Delete(), ZEILE_OK);
        EXPECT_EQ(Elemente<int>({beh.First(), beh.Next(), beh.Delete(), beh.DeleteRows(), beh.RewriteRec()}),
                  "1,1,1,1,1");
    }
    EXPECT_EQ(AlleBeh(), "nabcdefg");
}

TEST_F(RSetTest, AFailedNextLeavesTheFieldsAndFirstStartsTheSetAnew) {
    CTBeh beh(dbDatabaseRO);
    for (const bool bFilter : {false, true}) {
        beh.ClearKey();
        beh.m_PATNR = "1";
        if (bFilter) beh.ModifyFilter([&beh] { return beh.m_LSTNR != "d"; });
        EXPECT_EQ(Gelesen(beh), bFilter ? "abc" : "abcd");
        EXPECT_EQ(beh.m_DATUM + beh.m_LSTNR, bFilter ? "20240101c"_t : "20240301d"_t);
        EXPECT_EQ(beh.Next(), ZEILE_KEINE);
    }
    beh.m_PATNR = "3"; // the set is that of the last read, not of the fields
    Schreibe("BEH PATNR=1 DATUM=20250101 LSTNR=n");
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcn");
    EXPECT_EQ(beh.LiesMit(1, MATCH_ALLE, {"4"}), ZEILE_KEINE);
    EXPECT_EQ(beh.m_PATNR, CString("4"));
}

TEST_F(RSetTest, AJoinedAddressStaysWithItsRow) {
    Schreibe("ADR ADRNR=1 PATNAME=111\nMANDANT MDID=1 MDADRNR=1\nMANDANT MDID=3 MDADRNR=3");
    CTMandantAdr mandant;
    EXPECT_EQ(Alle(mandant, mandant.GetValidMandant("1"), mandant.m_PATNAME), "111");
    EXPECT_EQ(mandant.m_PATNAME, CString("111"));
    EXPECT_EQ(Alle(mandant, mandant.GetValidMandant(""), mandant.m_PATNAME), "111");
    EXPECT_EQ(mandant.m_MDID + mandant.m_PATNAME, CString("3")) << "no such address";
    ASSERT_EQ(mandant.First(), 0);
    mandant.ClearAll();
    EXPECT_EQ(mandant.m_PATNAME, CString());
}

TEST_F(RSetTest, AnExactReadIsASetOfOneRow) {
    Schreibe("BEH PATNR=9 DATUM=20240101 LSTNR=x\nBEH PATNR=9 DATUM=20240101 LSTNR=y");
    CTBeh beh(dbDatabase);
    EXPECT_EQ(beh.GetRecByParam({"9", "20240101"}), 0);
    EXPECT_TRUE(beh.m_LSTNR == "x" && beh.Next() == ZEILE_KEINE);
    beh.SetKey(1, false);
    EXPECT_EQ(Gelesen(beh, MATCH_GENAU), "y");
    EXPECT_TRUE(beh.First() == 0 && beh.Delete() == 0);
    EXPECT_EQ(AlleBeh(), "abcdefgx");
}

TEST_F(RSetTest, CopiesTakeFieldsAndKeyButNoSetAndTheClearsEmptyWhatTheySay) {
    CTBeh beh(dbDatabaseRO);
    beh.SetKey(1, false);
    ASSERT_EQ(beh.GetAll(), 0);
    CTBeh kopie(beh);
    CTBeh ziel(dbDatabase);
    ziel.GetAll();
    ziel = beh;
    for (CTBeh * p : {&kopie, &ziel}) {
        EXPECT_TRUE(*p == beh && &p->Datenbank() == &dbDatabaseRO && p->Next() == ZEILE_KEINE);
        p->m_PATNR += "x";
        EXPECT_FALSE(*p == beh) << "the first column";
        EXPECT_EQ(Ganz(*p), "gfedcba");
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
    beh.ClearKey();
    EXPECT_EQ(beh.m_PATNR + beh.m_LFDBEHEINTRAG + beh.m_LSTNR, CString("g"));
    EXPECT_EQ(beh.Next(), 0) << "the set stays open";
    beh.InitI();
    EXPECT_TRUE(beh.Next() == ZEILE_KEINE && beh.m_LSTNR == "f");
    beh.Init();
    EXPECT_EQ(static_cast<const CTBeh_Fields &>(beh), CTBeh_Fields());
    EXPECT_EQ(Ganz(beh), "abcdefg") << "ascending again";
}

// ---- writes

TEST_F(RSetTest, DeleteMovesToTheNextRowAndDeleteRowsGoesToTheEnd) {
    CTBeh beh(dbDatabase);
    beh.ModifyFilter([&beh] { return beh.m_LSTNR != "c"; });
    ASSERT_EQ(beh.LiesMit(1, MATCH_ALLE, {"1"}), 0);
    EXPECT_TRUE(beh.Delete() == 0 && beh.m_LSTNR == "b");
    EXPECT_EQ(Elemente<int>({beh.DeleteRows(), beh.DeleteRows(), beh.Delete()}), ",1,1");
    EXPECT_EQ(AlleBeh(), "cefg");
    for (int i = beh.GetAll(); i == 0; i = beh.Next()) {
        beh.m_LSTNR += "x";
        EXPECT_EQ(beh.RewriteRec(), 0);
    }
    EXPECT_EQ(beh.RewriteRec(), ZEILE_KEINE) << "the set has ended";
    EXPECT_EQ(AlleBeh(), "cxexfxgx");
}

TEST_F(RSetTest, AReadOnlyHandleAndOneWithoutStoreRefuseWrites) {
    CTBeh beh(dbDatabaseRO);
    ASSERT_EQ(beh.GetAll(), 0);
    EXPECT_EQ(Elemente<int>(
                  {beh.Write(), beh.RewriteRec(), beh.Delete(), beh.DeleteRows(), dbDatabaseRO.Beginne()}),
              "3,3,3,3,3");
    EXPECT_EQ(beh.Next(), 0) << "the set goes on";
    EXPECT_EQ(AlleBeh(), "abcdefg");
    dbDatabase.Verbinde(nullptr);
    EXPECT_EQ(Elemente<int>({CTBeh(dbDatabase).Write(), dbDatabase.Beginne(), dbDatabase.Beende(true)}),
              "3,3,3");
}

TEST_F(RSetTest, EveryChangeThroughAHandleMovesTheState) {
    CTBeh beh(dbDatabase);
    std::string s;
    const std::function<void()> aTaten[] = {[&] { beh.GetAll(), dbDatabase.Beginne(); },
                                            [&] { beh.Write(); },
                                            [&] { beh.RewriteRec(); },
                                            [&] { beh.Delete(); },
                                            [] { dbDatabase.Beende(false); },
                                            [] { dbDatabaseRO.Verbinde(dbDatabase.Speicher()); }};
    for (const auto & fTut : aTaten) {
        const std::uint64_t iVorher = CMxDatabase::Stand();
        fTut();
        s += CMxDatabase::Stand() != iVorher ? '1' : '0';
    }
    EXPECT_EQ(s, "011111");
    EXPECT_EQ(AlleBeh(), "abcdefg");
}

// ---- failures of the store

TEST_F(RSetTest, AFailureOfTheStoreIsNeitherARowNorTheEnd) {
    CTBeh beh(dbDatabase);
    m_pFehler->FehlerBei(4);
    EXPECT_EQ(Ganz(beh), "ab!") << "the third row";
    EXPECT_EQ(beh.Delete(), ZEILE_FEHLER);
    EXPECT_EQ(Alle(beh, beh.First(), beh.m_LSTNR), "abcdefg") << "the store goes on";
    for (const int iFehler : {3, 2}) { // the second deletion; the step behind the first one
        ASSERT_EQ(beh.GetAll(), 0);
        m_pFehler->FehlerBei(iFehler);
        EXPECT_EQ(beh.DeleteRows(), ZEILE_FEHLER);
        EXPECT_EQ(AlleBeh(), iFehler == 3 ? "bcdefg" : "cdefg");
    }
}

// Every kind of operation is counted where it fails, on its handle; neither an end nor a refusal is.
TEST_F(RSetTest, AHandleCountsWhatFails) {
    CTBeh beh(dbDatabase), eine(dbDatabase);
    eine.m_PATNR = "1";
    eine.m_SITZUNG = "a";
    const std::pair<int, std::function<void()>> aFaelle[] = {
        {1, [&] { beh.GetAll(); }},
        {2, [&] { beh.GetAll(); }},
        {3, [&] { eine.GetByK1(MATCH_ALLE), eine.Next(); }}, // stepping on with a filter
        {3, [&] { beh.GetAll(), beh.RewriteRec(); }},
        {3, [&] { beh.GetAll(), beh.Delete(); }},
        {1, [&] { beh.Write(); }},
        {1, [&] { dbDatabase.Beginne(); }},
        {2, [&] { dbDatabase.Beginne(), dbDatabase.Beende(true); }},
        {1, [&] { EXPECT_EQ(dbDatabase.Zeilenzahl(beh.Tabelle()), -1); }}};
    std::uint64_t iSoll = 0;
    for (const auto & [iFehler, fTut] : aFaelle) {
        m_pFehler->FehlerBei(iFehler);
        fTut();
        EXPECT_EQ(dbDatabase.Fehlschlaege(), ++iSoll);
    }
    EXPECT_EQ(AlleBeh(), "abcdefg");
    EXPECT_EQ(CTBeh(dbDatabaseRO).Write(), ZEILE_VERWEIGERT);
    EXPECT_EQ(dbDatabaseRO.Fehlschlaege(), 0u);
    dbDatabase.Verbinde(dbDatabase.Speicher());
    EXPECT_EQ(dbDatabase.Fehlschlaege(), 0u);
}

TEST_F(RSetTest, AGroupStaysOnlyIfItIsTakenOver) {
    for (const bool bUebernehmen : {false, true}) {
        CMxGruppe gruppe(dbDatabase);
        Schreibe("BEH PATNR=9 LSTNR=x");
        EXPECT_EQ(gruppe.Beende(bUebernehmen), bUebernehmen);
        EXPECT_FALSE(gruppe.Offen() || gruppe.Beende(true));
        EXPECT_EQ(AlleBeh(), bUebernehmen ? "abcdefgx" : "abcdefg");
    }
}

// ---- the pool

TEST_F(RSetTest, BorrowedSetsAreFreshAndCounted) {
    const int iVorher = EntlieheneRSets();
    CTPlan * p = CAutoRSet<CTPlan>::GetRSet(OPEN_TABELLE, false);
    CTPlan * q = CAutoRSet<CTPlan>::GetRSet(OPEN_DYNAMISCH, false);
    EXPECT_TRUE(p != q && &p->Datenbank() == &dbDatabaseRO);
    p->m_PATNR = "1";
    p->SetKey(2, false);
    CAutoRSet<CTPlan>::ReleaseRSet(p);
    CAutoRSet<CTPlan>::ReleaseRSet(nullptr);
    EXPECT_EQ(EntlieheneRSets(), iVorher + 1);
    {
        const CAutoRSet<CTPlan> plan;
        EXPECT_TRUE(&*plan == p && EntlieheneRSets() == iVorher + 2) << "the object is used again";
        EXPECT_TRUE(plan->m_PATNR.IsEmpty() && plan->GetAll() == ZEILE_KEINE) << "key 1";
    }
    CAutoRSet<CTPlan>::ReleaseRSet(q);
    EXPECT_EQ(EntlieheneRSets(), iVorher);
    CTBeh beh(dbDatabaseRO);
    CAutoRSet<CTGips>()->GetAll();
    EXPECT_EQ(beh.GetRecByParam({"1", "20240101", "a", "1"}), 0);
    EXPECT_EQ(m_pFehler->OffeneWege(), 0) << "neither a released set nor an exact read holds a walk";
}

// ---- the select pool

TEST_F(RSetTest, SelectPoolEntriesAreReadAnewAndStayTillTheStoreGoes) {
    Schreibe(R"(SELECTPOOL SPPOOL=P SPLFD=" 2" SPKEY=b SPTEXT=bt SPEXTRA=be
                SELECTPOOL SPPOOL=P SPLFD=" 1" SPKEY=a
                SELECTPOOL SPPOOL=PX SPLFD=" 1" SPKEY=c
                SELECTPOOL SPLFD=" 1" SPKEY=n)");
    std::vector<SSelectPool *> v{nullptr}, vNochmal;
    EXPECT_FALSE(GetSPEntries("", v) || GetSPEntries(" ", v) || GetSPEntries("Q", v));
    EXPECT_TRUE(v.empty());
    m_pFehler->FehlerBei(3);
    EXPECT_EQ(dbDatabaseRO.SelectPool("P", v), ZEILE_FEHLER);
    EXPECT_TRUE(v.empty()) << "not even the entries before the failure";
    ASSERT_TRUE(GetSPEntries("P", v) && v.size() == 2);
    EXPECT_EQ(v[0]->m_sKey, CString("a"));
    Schreibe("SELECTPOOL SPPOOL=P SPLFD=\" 0\" SPKEY=d\nSELECTPOOL SPPOOL=P SPLFD=\" 3\" SPKEY=a");
    CTSelectPool pool(dbDatabase);
    ASSERT_EQ(pool.GetRecByParam({"P", " 1"}) + pool.Delete(), 0);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(GetSPEntries("P ", vNochmal) && vNochmal.size() == 3);
        EXPECT_EQ(vNochmal[0]->m_sKey, CString("d"));
        EXPECT_TRUE(vNochmal[1] == v[1] && vNochmal[2] == v[0]) << "the same objects in the new order";
    }
    EXPECT_EQ(v[1]->m_sText + v[1]->m_sExtra, CString("btbe"));
}

} // namespace

} // namespace orvostat
