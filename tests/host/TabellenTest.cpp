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

// The treatments of a patient, a period and the treaters, and of nobody.
TEST_F(TabellenTest, TheTreatmentsOfTheFiltersArePatientPeriodAndTreater) {
    Schreibe(R"(BEH PATNR=1 DATUM=20240101 BEHANDLERNR="  5" LSTNR=a
                BEH PATNR=1 DATUM=20240105 BEHANDLERNR=" 12" LSTNR=b
                BEH PATNR=1 DATUM=20240131 BEHANDLERNR="  5" LSTNR=c
                BEH PATNR=1 DATUM=20240201 BEHANDLERNR="  5" LSTNR=d
                BEH PATNR=2 DATUM=20240110 BEHANDLERNR="  5" LSTNR=e
                BEH DATUM=20240110 BEHANDLERNR="  5" LSTNR=f)");
    const auto Gelesen = [](const char * pPat, const char * pVon, const char * pBis, const char * pLebs) {
        CTBeh beh(dbDatabaseRO); // whose own fields may be what is asked for
        beh.m_PATNR = CString(pPat);
        beh.m_DATUM = CString(pVon);
        beh.SetKey(1, false);
        return Alle(beh, beh.GetForPatSel(beh.m_PATNR, beh.m_DATUM, CString(pBis), CString(pLebs), true),
                    beh.m_LSTNR);
    };
    EXPECT_EQ(Werte(Gelesen("1", "20240101", "20240131", ""), Gelesen("1", "20240101", "20240131", "'  5'"),
                    Gelesen("1", "20240101", "20241231", "'  5',' 12'"),
                    Gelesen("1", "20240101", "20241231", "'5'"), Gelesen("1", "20240102", "20240104", ""),
                    Gelesen("1", "", "", ""), Gelesen("2", "19800101", "99991231", ""),
                    Gelesen("", "19800101", "99991231", ""), Gelesen("  ", "19800101", "99991231", "")),
              "a b c |a c |a b c d ||||e ||");
}

TEST_F(TabellenTest, BevServicesBelongToThePlanOfTheirBill) {
    Schreibe(R"(BILL PATNR=1 PATBILL=1 PLANNR=10
                BILL PATNR=1 PATBILL=2 PLANNR=20
                BILL PATBILL=1 PLANNR=10
                BEH PATNR=1 DATUM=20240101 LSTNR=beva PATBILL=1
                BEH PATNR=1 DATUM=20240102 LSTNR=bevb PATBILL=1
                BEH PATNR=1 DATUM=20240103 LSTNR=bevb PATBILL=2
                BEH PATNR=1 DATUM=20240104 LSTNR=01 PATBILL=1
                BEH PATNR=1 DATUM=20240105 LSTNR=beva PATBILL=9
                BEH PATNR=2 DATUM=20240106 LSTNR=beva PATBILL=1
                BEH DATUM=20240107 LSTNR=beva PATBILL=1)");
    CTBeh beh(dbDatabaseRO);
    EXPECT_EQ(Alle(beh, beh.GetWithBEVX("1", "10"), beh.m_DATUM), "20240101 20240102 ");
    EXPECT_EQ(Alle(beh, beh.GetWithBEVX(beh.m_PATNR, "20"), beh.m_DATUM), "20240103 ");
    for (const char * pPat : {"2", "", " "}) // has no bill, is nobody
        EXPECT_EQ(beh.GetWithBEVX(CString(pPat), "10"), ZEILE_KEINE) << pPat;
}

// m for multiband, a for deductions.
TEST_F(TabellenTest, MultibandAndDeductionsAreInsurerServicesOfThePeriod) {
    int iPat = 0;
    const auto Art = [&iPat](const std::string & sLeistung, const std::string & sDatum = "20240215") {
        const std::string sPat = std::to_string(++iPat);
        Schreibe("BEH PATNR=" + sPat + " DATUM=" + sDatum + " GOART=" + sLeistung.substr(0, 1) +
                 " LSTNR=" + sLeistung.substr(1));
        const CString sNr = AusUtf8(sPat);
        return std::string(CTBeh::IsMultibandBehandlung(sNr, "20240101", "20240331") ? "m" : "") +
               (CTBeh::IsKfoAbschlaege(sNr, "20240101", "20240331") ? "a" : "");
    };
    EXPECT_EQ(
        Werte(Art("k126", "20240101"), Art("g127a", "20240331"), Art("k128B"), Art("k119"), Art("g120c")),
        "m|m|m|a|a");
    EXPECT_EQ(Werte(Art("k129"), Art("k125"), Art("k126ab"), Art("k1260"), Art("q126"),
                    Art("k126", "20231231"), Art("k126", "20240401"), Art("k121"), Art("p119")),
              "||||||||");
}

// ---- insurance periods

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
                VDESC PATNR=1 VDESCNR="7   " VDABDATUM=20230101 VDBISDATUM=20230630 VNACHWEIS=1 KSART=b
                VDESC PATNR=1 VDESCNR=8 VDABDATUM=20250101)");
    for (const bool bAufsteigend : {true, false}) {
        std::string s;
        for (const char * pDatum : {"20191231", "20200101", "20201231", "20210115", "20210215", "20210315",
                                    "20210415", "20210601", "20220101", "20230131", "20230201", "20990101"}) {
            CTVDesc vdesc(dbDatabaseRO);
            vdesc.SetKey(1, bAufsteigend);
            vdesc.m_PATNR = "1";
            vdesc.m_VDABDATUM = CString(pDatum);
            s += vdesc.FindMatching(vdesc.m_PATNR, vdesc.m_VDABDATUM, 0) == 0 ? vdesc.m_VDESCNR.Utf8() + "|"
                                                                              : "-|";
            EXPECT_EQ(Alle(vdesc, vdesc.GetAll(), vdesc.m_VDESCNR).front(), bAufsteigend ? '1' : '8')
                << "the direction stays";
        }
        EXPECT_EQ(s, "-|1|1|2|3|4|5|5|-|7  |7 |8|");
    }
    for (int i = 1; i <= 15; ++i) { // the walk over eleven rows and its end, then the row itself
        CTVDesc vdesc(dbDatabaseRO);
        m_praxis.Lesend().FehlerBei(i);
        EXPECT_TRUE(vdesc.FindMatching("1", "20210601", 0) == ZEILE_FEHLER && vdesc.First() == ZEILE_KEINE)
            << i;
    }
}

TEST_F(TabellenTest, TheLastRecallIsTheLatestOfItsKind) {
    Schreibe(R"(HISTRECALL PATNR=1 RECALLART=1 RECALLDATUM=20230101 RECALLITV=26
                HISTRECALL PATNR=1 RECALLART=1 RECALLDATUM=20220101 RECALLITV=12
                HISTRECALL PATNR=1 RECALLART=2 RECALLDATUM=20220601 RECALLITV=52
                HISTRECALL PATNR=1 RECALLART=10 RECALLDATUM=20210101
                HISTRECALL PATNR=2 RECALLART=1 RECALLDATUM=20240101 RECALLITV=4
                HISTRECALL RECALLART=1 RECALLDATUM=20240601 RECALLITV=4)");
    const auto Letztes = [](const char * pPat, int iArt) {
        CTHistRecall r(dbDatabaseRO);
        int iItv = 99;
        r.m_PATNR = CString(pPat);
        const CString sDatum = r.LastRecallDatum(r.m_PATNR, iArt, iItv);
        return Werte(sDatum, iItv);
    };
    EXPECT_EQ(Werte(Letztes("1", -1), Letztes("1", 1), Letztes("1", 2), Letztes("1", 10), Letztes("1", 3),
                    Letztes("", 1), Letztes(" ", 1)),
              "20230101|26|20230101|26|20220601|52|20210101|||||||");
}

// ---- fees

TEST_F(TabellenTest, ChangedPointsHoldFromTheirDateOn) {
    EXPECT_EQ(CTGO::GetGebPkt("k", "01", "1800", "20240101"), CString("1800"));
    Schreibe(R"(GOPUNKTE GOART=K LSTNR="13B " PKTAB="20240101 " PUNKTE=5400
                GOPUNKTE GOART=k LSTNR=13b PKTAB=20220101 PUNKTE=4900
                GOPUNKTE GOART=k LSTNR=13 PKTAB=20200101 PUNKTE=1)");
    EXPECT_EQ(Werte(CTGO::GetGebPkt("k", "13b", "4700", "20211231"),
                    CTGO::GetGebPkt("k", "13b", "4700", "20220101"),
                    CTGO::GetGebPkt("k", "13b", "4700", "20231231"),
                    CTGO::GetGebPkt("K", "13B", "4700", "20240101"),
                    CTGO::GetGebPkt("k", "13b  ", "4700", "20240101"),
                    CTGO::GetGebPkt("g", "13b", "4700", "20240101")),
              "4700|4900|4900|5400|5400|4700");
    Schreibe("GOPUNKTE GOART=k LSTNR=14 PKTAB=20240102 PUNKTE=98");
    EXPECT_EQ(CTGO::GetGebPkt('k', "14", 47, "20240102"), 98) << "after a change";
    EXPECT_EQ(Werte(CTGO::EinfachsatzToW(CDBetrag("e562"), false, 'e'),
                    CTGO::EinfachsatzToW(CDBetrag(" 195583"), true, 'e').Round()),
              "e562|e100000");
}

// ---- the practice

TEST_F(TabellenTest, ValidRowsAreThoseNotDeleted) {
    Schreibe("LEB LEB=1\nLEB LEB=2 GELOESCHT=1\nLEB LEB=3\nMANDANT MDID=1\nMANDANT MDID=2 "
             "GELOESCHT=1\nMANDANT MDID=3");
    CTLeb leb(dbDatabase);
    CTMandant md(dbDatabase);
    for (const char * pAlle : {"", "3"}) {
        leb.m_LEB = md.m_MDID = CString(pAlle); // the fields themselves may be what is asked for
        EXPECT_EQ(Alle(leb, leb.GetValidLebs(leb.m_LEB), leb.m_LEB), *pAlle ? "3 " : "1 3 ");
        EXPECT_EQ(Alle(md, md.GetValidMandant(md.m_MDID), md.m_MDID), *pAlle ? "3 " : "1 3 ");
    }
    EXPECT_TRUE(leb.GetValidLebs("2") == ZEILE_KEINE && md.GetValidMandant("2") == ZEILE_KEINE);
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
    std::string s;
    adr.m_TELEFON1 = "1";
    adr.m_TELEFON2 = " 0221 1 ";
    adr.m_TELEFON6 = "6";
    for (const char * pPrio : {"", "0", "1", "2", "6", "7", "x"}) {
        adr.m_TELEFONPRIO = CString(pPrio);
        s += adr.LoadPrioTelefon().Utf8() + "|";
    }
    EXPECT_EQ(s, "||1|0221 1|6|||");
}

TEST(TabellenTexte, CodesAndCardData) {
    EXPECT_EQ(Werte(CTIcd::AddPoint("K021"), CTIcd::AddPoint("K02.1"), CTIcd::AddPoint("K02")),
              "K02.1|K02.1|K02");
    SEGKVersichertenstammdaten daten{"alt"};
    EXPECT_FALSE(StringToEGKVersichertenstammdaten("", daten) ||
                 StringToEGKVersichertenstammdaten("BPG=6|kaputt"_t, daten));
    EXPECT_EQ(daten.m_sBesonderePersonengruppe, CString("alt"));
    EXPECT_TRUE(StringToEGKVersichertenstammdaten("NAME=Mai|BPG=6"_t, daten));
    EXPECT_EQ(daten.m_sBesonderePersonengruppe, CString("6"));
    CString sBefund, sKuerzel;
    std::string s;
    for (const int i : {2, 15, 16, -1}) {
        CBefunde().Befund2Kuerzel(i, sBefund, sKuerzel);
        s += Werte(sBefund, sKuerzel) + " ";
    }
    EXPECT_EQ(s, "f|f )|)( | | ");
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
    for (const auto & [iZeile, s] : LiesZeilen(ORVOSTATBS_SOURCE_DIR "/docs/tabellen.txt"))
        setSoll.insert(s);
    for (const STabelle * pTabelle : AlleTabellen())
        setIst.insert(Beschreibung(*pTabelle));
    EXPECT_EQ(setIst.size(), AlleTabellen().size());
    EXPECT_EQ(setIst, setSoll);
}

} // namespace

} // namespace orvostat
