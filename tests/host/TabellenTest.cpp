// The table classes: what their operations find, and the list of all columns and keys.
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Schreiber.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

class TabellenTest : public ::testing::Test {
protected:
    TabellenTest() {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pSpeicher);
    }
    ~TabellenTest() override {
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    std::shared_ptr<CFehlerspeicher> m_pSpeicher =
        std::make_shared<CFehlerspeicher>(std::make_shared<CMemorySpeicher>());
};

const auto SchreibeBeh = Schreiber<CTBeh>(&CTBeh::m_PATNR, &CTBeh::m_DATUM, &CTBeh::m_BEHANDLERNR,
                                          &CTBeh::m_GOART, &CTBeh::m_LSTNR, &CTBeh::m_PATBILL);

template <class T> std::string Alle(T & t, int iErgebnis, const CString & sFeld) {
    std::string s;
    for (; iErgebnis == 0; iErgebnis = t.Next())
        s += sFeld.Utf8() + " ";
    return s;
}

TEST_F(TabellenTest, TheTreatmentsOfTheFiltersArePatientPeriodAndTreater) {
    SchreibeBeh("1", "20240101", "  5", "k", "a", "");
    SchreibeBeh("1", "20240105", " 12", "k", "b", "");
    SchreibeBeh("1", "20240131", "  5", "k", "c", "");
    SchreibeBeh("1", "20240201", "  5", "k", "d", "");
    SchreibeBeh("2", "20240110", "  5", "k", "e", "");
    SchreibeBeh("", "20240110", "  5", "k", "f", "");
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
    const auto SchreibeBill = Schreiber<CTBill>(&CTBill::m_PATNR, &CTBill::m_PATBILL, &CTBill::m_PLANNR);
    SchreibeBill("1", "1", "10");
    SchreibeBill("1", "2", "20");
    SchreibeBeh("1", "20240101", "5", "k", "beva", "1");
    SchreibeBeh("1", "20240102", "5", "k", "bevb", "1");
    SchreibeBeh("1", "20240103", "5", "k", "bevb", "2");
    SchreibeBeh("1", "20240104", "5", "k", "01", "1");
    SchreibeBeh("1", "20240105", "5", "k", "beva", "9");
    SchreibeBeh("2", "20240106", "5", "k", "beva", "1");
    SchreibeBill("", "1", "10");
    SchreibeBeh("", "20240107", "5", "k", "beva", "1");
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
        SchreibeBeh(sPat, fall.sDatum, "5", fall.sGoArt, fall.sLst, "");
        EXPECT_EQ(std::string(CTBeh::IsMultibandBehandlung(sPat, "20240101", "20240331") ? "m" : "") +
                      (CTBeh::IsKfoAbschlaege(sPat, "20240101", "20240331") ? "a" : ""),
                  fall.sSoll)
            << (fall.sGoArt + fall.sLst + " " + fall.sDatum).Utf8();
    }
}

// ---- insurance periods

const auto SchreibePeriode =
    Schreiber<CTVDesc>(&CTVDesc::m_PATNR, &CTVDesc::m_VDESCNR, &CTVDesc::m_VDABDATUM, &CTVDesc::m_VDBISDATUM,
                       &CTVDesc::m_VNACHWEIS, &CTVDesc::m_KSART, &CTVDesc::m_EEB);

TEST_F(TabellenTest, PeriodsOfAnIntervalEndOnTheDateOrLaterOrNever) {
    SchreibePeriode("1", "1", "20200101", "20211231", "", "", "");
    SchreibePeriode("1", "2", "20220101", "20221231", "", "", "");
    SchreibePeriode("1", "3", "20230101", "", "", "", "");
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
    SchreibePeriode("1", "1", "20200101", "20201231", "", "", "");
    SchreibePeriode("1", "2", "20210101", "20211231", "p", "", ""); // private
    SchreibePeriode("1", "3", "20210201", "20211231", "1", "b", "");
    SchreibePeriode("1", "4", "20210301", "20211231", "1", "a", "");
    SchreibePeriode("1", "5", "20210401", "20211231", "1", "a", "");
    SchreibePeriode("1", "6", "20210501", "20211231", "pX", "a", "1"); // electronic and private
    SchreibePeriode("1", "7", "20230101", "20230630", "p", "", "");    // of one key
    SchreibePeriode("1", "7 ", "20230101", "20230630", "1", "", "");
    SchreibePeriode("1", "7  ", "20230101", "20230131", "1", "", "");
    SchreibePeriode("1", "7   ", "20230101", "20230630", "1", "b", "");
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
        m_pSpeicher->FehlerBei(i);
        EXPECT_EQ(vdesc.FindMatching("1", "20210601", 0), ZEILE_FEHLER) << i;
        EXPECT_EQ(vdesc.First(), ZEILE_KEINE) << i;
    }
}

TEST_F(TabellenTest, TheLastRecallIsTheLatestOfItsKind) {
    const auto Schreibe = Schreiber<CTHistRecall>(&CTHistRecall::m_PATNR, &CTHistRecall::m_RECALLART,
                                                  &CTHistRecall::m_RECALLDATUM, &CTHistRecall::m_RECALLITV);
    Schreibe("1", "1", "20230101", "26");
    Schreibe("1", "1", "20220101", "12");
    Schreibe("1", "2", "20220601", "52");
    Schreibe("1", "10", "20210101", "");
    Schreibe("2", "1", "20240101", "4");
    Schreibe("", "1", "20240601", "4");
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
    const auto Schreibe = Schreiber<CTGoPunkte>(&CTGoPunkte::m_GOART, &CTGoPunkte::m_LSTNR,
                                                &CTGoPunkte::m_PKTAB, &CTGoPunkte::m_PUNKTE);
    Schreibe("K", "13B ", "20240101 ", "5400");
    Schreibe("k", "13b", "20220101", "4900");
    Schreibe("k", "13", "20200101", "1");
    struct SFall {
        CString sGoArt, sLst, sDatum, sSoll;
    };
    const SFall aFaelle[] = {{"k", "13b", "20211231", "4700"},   {"k", "13b", "20220101", "4900"},
                             {"k", "13b", "20231231", "4900"},   {"K", "13B", "20240101", "5400"},
                             {"k", "13b  ", "20240101", "5400"}, {"g", "13b", "20240101", "4700"}};
    for (const auto & [sGoArt, sLst, sDatum, sSoll] : aFaelle)
        EXPECT_EQ(CTGO::GetGebPkt(sGoArt, sLst, "4700", sDatum), sSoll) << sDatum.Utf8();
    Schreibe("k", "14", "20240102", "98");
    EXPECT_EQ(CTGO::GetGebPkt('k', "14", 47, "20240102"), 98) << "after a change";
}

TEST_F(TabellenTest, TheSimpleRateGoesIntoTheCurrencyOfTheDate) {
    const CDBetrag satz("e562");
    EXPECT_EQ(CTGO::EinfachsatzToW(satz, false, 'e').ToDb(0, true, false, 0.0, 0.0), CString("e562"));
    EXPECT_EQ(CTGO::EinfachsatzToW(CDBetrag(" 195583"), true, 'e').Round().ToDb(0, true, false, 0.0, 0.0),
              CString("e100000"));
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
    const auto Schreibe = Schreiber<CTKzv>(&CTKzv::m_KZVNR, &CTKzv::m_REGION);
    Schreibe("37", "NW");
    Schreibe("04", "");
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

// Name, columns, keys. What is written here is what other programs find in the database.
const char * const TABELLEN[][3] = {
    {"PRAXIS", "PRAXISID PRAXISNAME KZVNR", "PRAXISID"},
    {"KZV", "KZVNR KZVNAME LQ REGION", "KZVNR"},
    {"MANDANT", "MDID MDNAME MDINFO MDCODES MDABAKTIV MDAB MDZWEIG MDART MDADRNR GELOESCHT", "MDID"},
    {"ADR",
     "ADRNR ADRLFD ADRART PATTITEL PATVORNAME PATZUSATZ PATNAME PATSTRASSE PATPLZ PATORT PATANREDE "
     "GESCHLECHT TELEFON1 TELEFON2 TELEFON3 TELEFON4 EMAIL TELEFON6 TELEFONPRIO FRUEHERENAMEN",
     "ADRNR ADRLFD; PATNAME PATVORNAME; ADRART"},
    {"PERSONAL", "PID PERSADRNR", "PID"},
    {"LEB",
     "LEB LEBANR PID MDKASSE MDPRIVAT PROVISION ABSCHLAGGOZ ABSCHLAGU LEBKZ LEBINFO PRAXISID GELOESCHT",
     "LEB"},
    {"ORVOKAS",
     "KASKUERZEL KASFELD0 GUELTIGAB KASFLAG1 KASSENPWGRP KASIK BKVKASNR KASSENART KASFELD1 KASFELD2 "
     "KASSORT KASSTATISTIKART KASMEDSTATISTIKART KASFLAG2 KASKZ",
     "KASKUERZEL GUELTIGAB"},
    {"PWGROUP", "PWGRP PWGRPNAME", "PWGRP"},
    {"PUNKTWERT", "PWAB PWGRP PWLART PWWEST PWOST PWINFO", "PWAB PWGRP PWLART"},
    {"PARPOOL", "GRUPPE KUERZEL WERT", "GRUPPE KUERZEL"},
    {"SELECTPOOL", "SPPOOL SPLFD SPKEY SPTEXT SPEXTRA", "SPPOOL SPLFD"},
    {"GO",
     "GOART LSTNR LSTKUERZEL GOSUBART DRUCKBILD PWLART STATART GOFELD1 GOFELD2 GOFELD3 GEBPKT GOWERT2 "
     "GOWERT3 GOWERT4 ZUSCHLAG BETRAG2 EINFACHSATZ F100AEVWERT GOKZ GOTEXT FAKTOR STDFAKTOR",
     "GOART LSTNR; GOART LSTKUERZEL"},
    {"GOPUNKTE", "GOART LSTNR PKTAB PUNKTE", "GOART LSTNR PKTAB"},
    {"GOCHECK", "GOART LSTNR EXTRAFLAG CHECKTEXT", "GOART LSTNR EXTRAFLAG"},
    {"GOBUDGET", "GOART LSTKUERZEL GUELTIGAB TEXT RVO VDAK GESAMT RVOMKG VDAKMKG GESAMTMKG",
     "GOART LSTKUERZEL GUELTIGAB"},
    {"PAT",
     "PATNR SELEKTION ADRNR PATVORNAME PATNAME PATGEBDATUM LASTBEHDATUM UEBERWARZT HAUSARZT EINTRDATUM "
     "RISIKOANAMNESE RECALLART RECALLITV BENACHRICHTIGUNG PATFELD1 PATFELD3 BEHANDLERNR PATPROZENT FRUCHT "
     "PFLEGEGRAD PFLEGEGRADENDE FALLBESONDERHEIT INDEXMARKERS",
     "PATNR; PATNAME PATVORNAME"},
    {"VDESC",
     "PATNR VDESCNR VDABDATUM VDBISDATUM EINLESEDATUM KASKUERZEL VNACHWEIS KSART VDESCFELD MFRDIG RSA WSO "
     "VDESCEXTRA KOSTENERSTATTUNG GEBUEHRENBEFREITBIS EEB EGK EGKDATEN",
     "PATNR VDABDATUM VDESCNR"},
    {"HISTRECALL", "PATNR RECALLART RECALLDATUM RECALLITV", "PATNR RECALLART RECALLDATUM"},
    {"ABEFUND", "PATNR LFDBEFENTRY BEFUND ZAHNSTEIN MUNDKRANKHEIT", "PATNR LFDBEFENTRY"},
    {"PLAN", "PATNR PLANNR PLANART PLANSUBART PLANSTATUS PLANSTATUS2 PLANNUM PLANDATUM PLANPW PAR22A",
     "PATNR PLANNR"},
    {"BILL",
     "PATNR PATBILL PRAXISNR ABRART KENNUNG1 KENNUNG2 PLANNR FAKT1 FAKT1ALT FAKT2 FAKT2ALT KKFAKT "
     "BILLINFO1 BILLINFO2",
     "PATNR PATBILL"},
    {"BEH",
     "PATNR DATUM SITZUNG LFDBEHEINTRAG BEHANDLERNR ERFASSER TEETH ANZAHL LSTIN LSTNR GOART ABRART FAKTOR "
     "BETRAG USTKEY LAGE ENTFERNUNG UHRZEIT DTAGRUND TEXTART ICDCODE ICDNOTATIONSKZ TEXT ABRMERKMAL "
     "PATBILL BEHKZ LFDBEFENTRY LFDLBLOCK BEHINFO CHARGE ABRJJME",
     "PATNR DATUM SITZUNG LFDBEHEINTRAG; DATUM PATNR SITZUNG LFDBEHEINTRAG"},
    {"ROEBEFUND",
     "PATNR ROELFDNR PRAXISID ROEGRAV ROEANZAHL ROEGERAET ROEXRAYMS ROEXRAYCURRENT ROEXRAYVOLTAGE "
     "ROEBELICHTUNG ROEINDIKATION ROEBEMERKUNG ROELASTDATUM ROELASTREGIO ROELASTPASSDRUCK",
     "PATNR ROELFDNR"},
    {"LBLOCK", "PATNR PLANNR LFDLBLOCK LBLOCKART LBLOCKBETRAEGE BEHANDLERNR DATUM PRAXISNR",
     "PATNR PLANNR LFDLBLOCK"},
    {"LBLOCKENTRY",
     "PATNR PLANNR LFDLBLOCK LFDENTRY LBLOCKENTRYART LBLNR BEGRKEY DATUM BEHANDLERNR LSTNR TEETH FAKTOR "
     "ANZAHL BETRAG CHARGE",
     "PATNR PLANNR LFDLBLOCK LFDENTRY"},
    {"GLBLOC",
     "LABORKUNDE LFDGLBLOC GLBLOCSTATUS PATNR PLANNR LFDLBLOCK BEHANDLERNR DATUM PRAXISNR PATREF AUFTRAG "
     "LABORNAME TECHNIKER ARBEIT FARBE MATERIALTEXT CHARGE EINGANG LIEFERUNG RECHNUNGNR RECHDATUM ZAHLZIEL "
     "GLBEMERKUNG GLKENNUNG GLBLOCBETRAEGE UST",
     "LABORKUNDE LFDGLBLOC"},
    {"GLBLOCENTRY",
     "LABORKUNDE LFDGLBLOC LFDENTRY GLBLOCENTRYART LBLNR DATUM BEHANDLERNR LSTNR ANZAHL BETRAG USTKEY "
     "CHARGE",
     "LABORKUNDE LFDGLBLOC LFDENTRY"},
    {"GLKUFAKT",
     "PRAXISNR LABORKUNDE LFDGLKUFAKT FAKTDATUM VONDATUM BISDATUM ANZGLBLOCKS BEGLICHEN STORNIERT "
     "KUFAKTBETRAEGE UST",
     "LABORKUNDE LFDGLKUFAKT; PRAXISNR LABORKUNDE LFDGLKUFAKT"},
    {"FAKT",
     "PRAXISNR PATNR FAKT1 FORTLFDJAHR FORTLFDFAKT DATUM FORMULARNR BETRAG1 HONORAR1 ELABGESAMT1 "
     "FLABGESAMT1 ELABMWST1 BETRAG2 HONORAR2 ELABGESAMT2 FLABGESAMT2 ELABMWST2 BEGLICHEN AUSGEBUCHT "
     "MWSTLISTE STORNIERT MAHNSTUFE KTRAEGER KASKUERZEL",
     "PATNR FAKT1; DATUM PATNR"},
    {"KTRAEGER", "PATNR KTART KTNAME", "PATNR"},
    {"REZEPT", "PATNR REZEPTNR DATUM REZEPTSCHLUESSEL", "PATNR REZEPTNR; DATUM PATNR"},
    {"HMV", "PATNR REZEPTNR FORMULARNAME TEXTBLOCK ANZAHL1 ANZAHL2 ANZAHL3 ANZAHL4 BETRAG", "PATNR REZEPTNR"},
    {"GIPS", "GIPSNR PATNR DATUM GIPSART BEHANDLERNR BESCHREIBUNG GEDRUCKT ARCHIVIERT",
     "GIPSNR; PATNR DATUM"},
    {"TBENTRY", "TBKEY TBLFD TBTEXT", "TBKEY TBLFD"},
    {"DATEI", "DATEINAME STUECK INHALT", "DATEINAME STUECK"},
};

TEST(TabellenListe, ColumnsAndKeysOfEachTable) {
    std::map<std::string, const STabelle *> mapTabellen;
    for (const STabelle * pTabelle : AlleTabellen())
        mapTabellen[pTabelle->pName] = pTabelle;
    EXPECT_EQ(mapTabellen.size(), std::size(TABELLEN));
    for (const auto & [pName, pSpalten, pSchluessel] : TABELLEN) {
        ASSERT_TRUE(mapTabellen.contains(pName)) << pName;
        const STabelle & tabelle = *mapTabellen[pName];
        const auto Haenge = [&](std::string & s, std::size_t iSpalte, const char * pTrenner) {
            if (!s.empty()) s += pTrenner;
            s += tabelle.vSpalten[iSpalte].pName;
        };
        std::string sSpalten;
        for (std::size_t i = 0; i < tabelle.vSpalten.size(); ++i)
            Haenge(sSpalten, i, " ");
        EXPECT_EQ(sSpalten, pSpalten) << pName;
        std::string sSchluessel;
        for (const SSchluessel & schluessel : tabelle.vSchluessel) {
            std::string sTeile;
            for (const std::uint8_t iSpalte : schluessel.Spalten())
                Haenge(sTeile, iSpalte, " ");
            sSchluessel += (sSchluessel.empty() ? "" : "; ") + sTeile;
        }
        EXPECT_EQ(sSchluessel, pSchluessel) << pName;
    }
}

TEST(TabellenListe, OnlyServicesIgnoreCaseAndOnlyThePoolCountsTrailingBlanks) {
    std::string sOhneGross;
    std::string sEndblanks;
    for (const STabelle * p : AlleTabellen()) {
        if (p->eVergleich == EVergleich::OhneGross) sOhneGross += p->pName + std::string(" ");
        if (p->eVergleich == EVergleich::MitEndblanks) sEndblanks += p->pName + std::string(" ");
    }
    EXPECT_EQ(sOhneGross, "GO GOPUNKTE GOCHECK ");
    EXPECT_EQ(sEndblanks, "PARPOOL ");
}

} // namespace

} // namespace orvostat
