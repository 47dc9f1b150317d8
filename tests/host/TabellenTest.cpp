// The table classes: what their operations find, and the list of all columns and keys.
#include "orvostatbs/host/Tabellen.h"
#include "support/Praxis.h"

#include <set>
#include <span>
#include <string>

namespace orvostat {

namespace {

using TabellenTest = CPraxisTest;

template <class T> std::string Alle(T & t, int iErgebnis, const CString & sFeld) {
    std::string s;
    for (; iErgebnis == 0; iErgebnis = t.Next())
        s += sFeld.Utf8() + " ";
    return s;
}

TEST_F(TabellenTest, TheTreatmentsOfTheFiltersArePatientPeriodAndTreater) {
    Schreibe(R"(BEH PATNR=1 DATUM=20240101 BEHANDLERNR="  5" GOART=k LSTNR=a
                BEH PATNR=1 DATUM=20240105 BEHANDLERNR=" 12" GOART=k LSTNR=b
                BEH PATNR=1 DATUM=20240131 BEHANDLERNR="  5" GOART=k LSTNR=c
                BEH PATNR=1 DATUM=20240201 BEHANDLERNR="  5" GOART=k LSTNR=d
                BEH PATNR=2 DATUM=20240110 BEHANDLERNR="  5" GOART=k LSTNR=e
                BEH DATUM=20240110 BEHANDLERNR="  5" GOART=k LSTNR=f)");
    struct SFall {
        const char * pName;
        CString sPat, sVon, sBis, sLebs;
        const char * pSoll;
    };
    const SFall aFaelle[] = {
        {"all treaters, both days included", "1", "20240101", "20240131", "", "a b c "},
        {"one treater", "1", "20240101", "20240131", "'  5'", "a c "},
        {"several treaters", "1", "20240101", "20241231", "'  1',' 12','  5'"_t, "a b c d "},
        {"a number that another one ends with", "1", "20240101", "20241231", "'5'", ""},
        {"no treatment in the period", "1", "20240102", "20240104", "", ""},
        {"no dates", "1", "", "", "", ""},
        {"another patient", "2", "19800101", "99991231", "", "e "},
        {"nobody", "", "19800101", "99991231", "", ""},
        {"blanks are nobody", "  ", "19800101", "99991231", "", ""},
    };
    for (const SFall & fall : aFaelle)
        for (const bool bAlle : {false, true}) {
            CTBeh beh(dbDatabaseRO); // whose own fields may be what is asked for
            beh.m_PATNR = fall.sPat;
            beh.m_DATUM = fall.sVon;
            beh.SetKey(1, false);
            const int iErgebnis = beh.GetForPatSel(beh.m_PATNR, beh.m_DATUM, fall.sBis, fall.sLebs, bAlle);
            if (bAlle) {
                EXPECT_EQ(Alle(beh, iErgebnis, beh.m_LSTNR), fall.pSoll) << fall.pName;
            } else {
                EXPECT_EQ(iErgebnis == 0, *fall.pSoll != 0) << fall.pName;
            }
        }
}

TEST_F(TabellenTest, BevServicesBelongToThePlanOfTheirBill) {
    Schreibe(R"(BILL PATNR=1 PATBILL=1 PLANNR=10
                BILL PATNR=1 PATBILL=2 PLANNR=20
                BILL PATBILL=1 PLANNR=10)");
    Schreibe(R"(BEH PATNR=1 DATUM=20240101 BEHANDLERNR=5 GOART=k LSTNR=beva PATBILL=1
                BEH PATNR=1 DATUM=20240102 BEHANDLERNR=5 GOART=k LSTNR=bevb PATBILL=1
                BEH PATNR=1 DATUM=20240103 BEHANDLERNR=5 GOART=k LSTNR=bevb PATBILL=2
                BEH PATNR=1 DATUM=20240104 BEHANDLERNR=5 GOART=k LSTNR=01 PATBILL=1
                BEH PATNR=1 DATUM=20240105 BEHANDLERNR=5 GOART=k LSTNR=beva PATBILL=9
                BEH PATNR=2 DATUM=20240106 BEHANDLERNR=5 GOART=k LSTNR=beva PATBILL=1
                BEH DATUM=20240107 BEHANDLERNR=5 GOART=k LSTNR=beva PATBILL=1)");
    CTBeh beh(dbDatabaseRO);
    EXPECT_EQ(Alle(beh, beh.GetWithBEVX("1", "10"), beh.m_DATUM), "20240101 20240102 ");
    EXPECT_EQ(Alle(beh, beh.GetWithBEVX(beh.m_PATNR, "20"), beh.m_DATUM), "20240103 ");
    for (const char * pPat : {"2", "", " "}) // has no bill, is nobody
        EXPECT_EQ(beh.GetWithBEVX(CString(pPat), "10"), ZEILE_KEINE) << pPat;
}

TEST_F(TabellenTest, MultibandAndDeductionsAreInsurerServicesOfThePeriod) {
    struct SFall {
        CString sGoArt, sLst, sDatum;
        std::string sSoll; // m for multiband, a for deductions
    };
    const SFall aFaelle[] = {
        {"k", "126", "20240101", "m"}, {"g", "127a", "20240331", "m"}, {"k", "128B", "20240215", "m"},
        {"k", "129", "20240215", ""},  {"k", "125", "20240215", ""},   {"k", "126ab", "20240215", ""},
        {"k", "1260", "20240215", ""}, {"q", "126", "20240215", ""},   {"k", "126", "20231231", ""},
        {"k", "126", "20240401", ""},  {"k", "119", "20240215", "a"},  {"g", "120c", "20240215", "a"},
        {"k", "121", "20240215", ""},  {"p", "119", "20240215", ""},
    };
    CString sPat = "1";
    for (const SFall & fall : aFaelle) {
        sPat += "1";
        Schreibe("BEH BEHANDLERNR=5 PATNR=" + sPat.Utf8() + " DATUM=" + fall.sDatum.Utf8() +
                 " GOART=" + fall.sGoArt.Utf8() + " LSTNR=" + fall.sLst.Utf8());
        EXPECT_EQ(std::string(CTBeh::IsMultibandBehandlung(sPat, "20240101", "20240331") ? "m" : "") +
                      (CTBeh::IsKfoAbschlaege(sPat, "20240101", "20240331") ? "a" : ""),
                  fall.sSoll)
            << (fall.sGoArt + fall.sLst + " " + fall.sDatum).Utf8();
    }
}

// ---- insurance periods

TEST_F(TabellenTest, PeriodsOfAnIntervalEndOnTheDateOrLaterOrNever) {
    Schreibe(R"(VDESC PATNR=1 VDESCNR=1 VDABDATUM=20200101 VDBISDATUM=20211231
                VDESC PATNR=1 VDESCNR=2 VDABDATUM=20220101 VDBISDATUM=20221231
                VDESC PATNR=1 VDESCNR=3 VDABDATUM=20230101)");
    struct SFall {
        CString sDatum;
        bool bAufsteigend;
        const char * pSoll;
    };
    for (const SFall & fall : {SFall{"20211231", true, "1 2 3 "},
                               {"20220101", true, "2 3 "},
                               {"20220101", false, "3 2 "},
                               {"20990101", true, "3 "}}) {
        CTVDesc vdesc(dbDatabaseRO);
        vdesc.SetKey(1, fall.bAufsteigend);
        vdesc.m_PATNR = "1";
        vdesc.m_VDBISDATUM = fall.sDatum;
        const int iErgebnis = vdesc.GetByIntervall(vdesc.m_PATNR, vdesc.m_VDBISDATUM, "", "", false);
        EXPECT_EQ(Alle(vdesc, iErgebnis, vdesc.m_VDESCNR), fall.pSoll) << fall.sDatum.Utf8();
    }
    CTVDesc vdesc(dbDatabaseRO);
    for (const char * pPat : {"2", "", " "})
        EXPECT_EQ(vdesc.GetByIntervall(CString(pPat), "20220101", "", "", false), ZEILE_KEINE) << pPat;
}

TEST_F(TabellenTest, TheMatchingPeriodIsTheBestOfThoseValidOnTheDate) {
    Schreibe(R"(VDESC PATNR=1 VDESCNR=1 VDABDATUM=20200101 VDBISDATUM=20201231
                VDESC PATNR=1 VDESCNR=2 VDABDATUM=20210101 VDBISDATUM=20211231 VNACHWEIS=p
                VDESC PATNR=1 VDESCNR=3 VDABDATUM=20210201 VDBISDATUM=20211231 VNACHWEIS=1 KSART=b
                VDESC PATNR=1 VDESCNR=4 VDABDATUM=20210301 VDBISDATUM=20211231 VNACHWEIS=1 KSART=a
                VDESC PATNR=1 VDESCNR=5 VDABDATUM=20210401 VDBISDATUM=20211231 VNACHWEIS=1 KSART=a
                VDESC PATNR=1 VDESCNR=6 VDABDATUM=20210501 VDBISDATUM=20211231 VNACHWEIS=pX KSART=a EEB=1
                VDESC PATNR=1 VDESCNR=7 VDABDATUM=20230101 VDBISDATUM=20230630 VNACHWEIS=p
                VDESC PATNR=1 VDESCNR="7 " VDABDATUM=20230101 VDBISDATUM=20230630 VNACHWEIS=1
                VDESC PATNR=1 VDESCNR="7  " VDABDATUM=20230101 VDBISDATUM=20230131 VNACHWEIS=1
                VDESC PATNR=1 VDESCNR="7   " VDABDATUM=20230101 VDBISDATUM=20230630 VNACHWEIS=1 KSART=b)");
    struct SFall {
        CString sDatum;
        const char * pSoll;
    };
    for (const SFall & fall : {SFall{"20191231", ""},
                               {"20200101", "1"},
                               {"20201231", "1"},
                               {"20210115", "2"},
                               {"20210215", "3"},
                               {"20210315", "4"},
                               {"20210415", "5"},
                               {"20210601", "5"},
                               {"20220101", ""},
                               {"20230131", "7  "},
                               {"20230201", "7 "}})
        for (const bool bAufsteigend : {true, false}) {
            CTVDesc vdesc(dbDatabaseRO);
            vdesc.SetKey(1, bAufsteigend);
            vdesc.m_PATNR = "1";
            vdesc.m_VDABDATUM = fall.sDatum;
            const bool bDa = vdesc.FindMatching(vdesc.m_PATNR, vdesc.m_VDABDATUM, 0) == 0;
            EXPECT_EQ(bDa ? vdesc.m_VDESCNR.Utf8() : "", fall.pSoll) << fall.sDatum.Utf8();
            EXPECT_EQ(Alle(vdesc, vdesc.GetAll(), vdesc.m_VDESCNR).front(), bAufsteigend ? '1' : '7')
                << "the direction stays";
        }
    for (int i = 1; i <= 14; ++i) { // the walk over ten rows and its end, then the row itself
        CTVDesc vdesc(dbDatabaseRO);
        m_praxis.Lesend().FehlerBei(i);
        EXPECT_EQ(vdesc.FindMatching("1", "20210601", 0), ZEILE_FEHLER) << i;
        EXPECT_EQ(vdesc.First(), ZEILE_KEINE) << i;
    }
}

TEST_F(TabellenTest, TheLastRecallIsTheLatestOfItsKind) {
    Schreibe(R"(HISTRECALL PATNR=1 RECALLART=1 RECALLDATUM=20230101 RECALLITV=26
                HISTRECALL PATNR=1 RECALLART=1 RECALLDATUM=20220101 RECALLITV=12
                HISTRECALL PATNR=1 RECALLART=2 RECALLDATUM=20220601 RECALLITV=52
                HISTRECALL PATNR=1 RECALLART=10 RECALLDATUM=20210101
                HISTRECALL PATNR=2 RECALLART=1 RECALLDATUM=20240101 RECALLITV=4
                HISTRECALL RECALLART=1 RECALLDATUM=20240601 RECALLITV=4)");
    const std::pair<int, std::string> aFaelle[] = {
        {-1, "20230101 26"}, {1, "20230101 26"}, {2, "20220601 52"}, {10, "20210101 0"}, {3, " 0"}};
    for (const auto & [iArt, sSoll] : aFaelle) {
        CTHistRecall r(dbDatabaseRO);
        int iItv = 99;
        r.m_PATNR = "1";
        const std::string sDatum = r.LastRecallDatum(r.m_PATNR, iArt, iItv).Utf8();
        EXPECT_EQ(sDatum + " " + std::to_string(iItv), sSoll) << iArt;
        EXPECT_EQ(r.LastRecallDatum("", iArt, iItv) + r.LastRecallDatum(" ", iArt, iItv), CString());
    }
}

// ---- fees

TEST_F(TabellenTest, ChangedPointsHoldFromTheirDateOn) {
    EXPECT_EQ(CTGO::GetGebPkt("k", "01", "1800", "20240101"), CString("1800"));
    Schreibe(R"(GOPUNKTE GOART=K LSTNR="13B " PKTAB="20240101 " PUNKTE=5400
                GOPUNKTE GOART=k LSTNR=13b PKTAB=20220101 PUNKTE=4900
                GOPUNKTE GOART=k LSTNR=13 PKTAB=20200101 PUNKTE=1)");
    struct SFall {
        CString sGoArt, sLst, sDatum, sSoll;
    };
    const SFall aFaelle[] = {{"k", "13b", "20211231", "4700"},   {"k", "13b", "20220101", "4900"},
                             {"k", "13b", "20231231", "4900"},   {"K", "13B", "20240101", "5400"},
                             {"k", "13b  ", "20240101", "5400"}, {"g", "13b", "20240101", "4700"}};
    for (const auto & [sGoArt, sLst, sDatum, sSoll] : aFaelle)
        EXPECT_EQ(CTGO::GetGebPkt(sGoArt, sLst, "4700", sDatum), sSoll) << sDatum.Utf8();
    Schreibe("GOPUNKTE GOART=k LSTNR=14 PKTAB=20240102 PUNKTE=98");
    EXPECT_EQ(CTGO::GetGebPkt('k', "14", 47, "20240102"), 98) << "after a change";
}

// ---- the practice

TEST_F(TabellenTest, ValidRowsAreThoseNotDeleted) {
    CTLeb leb(dbDatabase);
    CTMandant md(dbDatabase);
    for (const char c : {'1', '2', '3'}) {
        leb.m_LEB = md.m_MDID = CString(c);
        leb.m_GELOESCHT = md.m_GELOESCHT = c == '2' ? CString("1") : CString();
        ASSERT_EQ(leb.Write(), 0);
        ASSERT_EQ(md.Write(), 0);
    }
    EXPECT_EQ(Alle(leb, leb.GetValidLebs(""), leb.m_LEB), "1 3 ");
    EXPECT_EQ(Alle(leb, leb.GetValidLebs(leb.m_LEB), leb.m_LEB), "3 ");
    EXPECT_EQ(Alle(leb, leb.GetValidLebs("2"), leb.m_LEB), "");
    EXPECT_EQ(Alle(md, md.GetValidMandant(""), md.m_MDID), "1 3 ");
    EXPECT_EQ(Alle(md, md.GetValidMandant(md.m_MDID), md.m_MDID), "3 ");
    EXPECT_EQ(Alle(md, md.GetValidMandant("2"), md.m_MDID), "");
}

TEST_F(TabellenTest, TheRegionOfAnAssociationIsItsColumnOrItsNumber) {
    Schreibe("KZV KZVNR=37 REGION=NW\nKZV KZVNR=04");
    EXPECT_EQ(CTKzv::RLP("37") + CTKzv::RLP("02") + CTKzv::RLP("04 "), CString("NW0204"));
}

TEST_F(TabellenTest, NamesAndContactsOfAnAddress) {
    CTAdr adr(dbDatabaseRO);
    EXPECT_EQ(adr.MakeFullName(FULLNAME_NAME), CString());
    adr.m_PATANREDE = "Frau";
    adr.m_PATTITEL = "Dr.";
    adr.m_PATNAME = "Groß";
    EXPECT_EQ(adr.MakeFullName(FULLNAME_NAME), CString("Dr. Groß"_t));
    adr.m_PATVORNAME = "Änne";
    adr.m_PATZUSATZ = "von";
    EXPECT_EQ(adr.MakeFullName(FULLNAME_ANREDE), "Frau Dr. Änne von Groß"_t);
    adr.m_TELEFON2 = " 0221 1 ";
    for (const char * pPrio : {"", "0", "7", "x"}) {
        adr.m_TELEFONPRIO = CString(pPrio);
        EXPECT_EQ(adr.LoadPrioTelefon(), CString()) << pPrio;
    }
    adr.m_TELEFONPRIO = "2";
    EXPECT_EQ(adr.LoadPrioTelefon(), CString("0221 1"));
}

TEST(TabellenTexte, CodesAndCardData) {
    EXPECT_EQ(CTIcd::AddPoint("K021"), CString("K02.1"));
    EXPECT_EQ(CTIcd::AddPoint("K02.1"), CString("K02.1"));
    EXPECT_EQ(CTIcd::AddPoint("K02"), CString("K02"));
    SEGKVersichertenstammdaten daten{"alt"};
    EXPECT_FALSE(StringToEGKVersichertenstammdaten("", daten));
    EXPECT_FALSE(StringToEGKVersichertenstammdaten("BPG=6|kaputt"_t, daten));
    EXPECT_EQ(daten.m_sBesonderePersonengruppe, CString("alt"));
    EXPECT_TRUE(StringToEGKVersichertenstammdaten("NAME=Mai|BPG=6"_t, daten));
    EXPECT_EQ(daten.m_sBesonderePersonengruppe, CString("6"));
    CString sBefund = "x";
    CString sKuerzel = "x";
    CBefunde().Befund2Kuerzel(2, sBefund, sKuerzel);
    EXPECT_EQ(sBefund + sKuerzel, CString("ff"));
    CBefunde().Befund2Kuerzel(-1, sBefund, sKuerzel);
    EXPECT_EQ(sBefund + sKuerzel, CString());
}

// ---- the list of all

std::string Namen(const STabelle & tabelle, std::span<const std::uint8_t> aiSpalten) {
    std::string s;
    for (const std::uint8_t i : aiSpalten)
        s += (s.empty() ? "" : " ") + std::string(tabelle.vSpalten[i].pName);
    return s;
}

// As in the text file, which is what other programs find in the database.
std::string Beschreibung(const STabelle & tabelle) {
    std::string s = tabelle.pName;
    for (const SSchluessel & schluessel : tabelle.vSchluessel)
        s += (&schluessel == tabelle.vSchluessel.data() ? " (" : "; ") + Namen(tabelle, schluessel.Spalten());
    if (tabelle.eVergleich == EVergleich::OhneGross) s += ", case alike";
    if (tabelle.eVergleich == EVergleich::MitEndblanks) s += ", trailing blanks";
    s += "):";
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        s += std::string(" ") + spalte.pName;
    return s;
}

TEST(TabellenListe, ColumnsAndKeysOfEachTable) {
    std::set<std::string> setSoll, setIst;
    for (const auto & [iZeile, s] : LiesZeilen(ORVOSTATBS_SOURCE_DIR "/tests/host/faelle/tabellen.txt"))
        setSoll.insert(s);
    for (const STabelle * pTabelle : AlleTabellen())
        setIst.insert(Beschreibung(*pTabelle));
    EXPECT_EQ(setIst.size(), AlleTabellen().size());
    EXPECT_EQ(setIst, setSoll);
}

} // namespace

} // namespace orvostat
