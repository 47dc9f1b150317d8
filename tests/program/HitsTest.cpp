#include "Ausgabe.h"
#include "Programmlauf.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "support/Praxis.h"

#include <sstream>

namespace orvostat {
namespace {

// ---- the writers

constexpr SAusgabespalte SPALTEN[] = {
    {"Tag", EZelle::Datum, 10}, {"Größe", EZelle::Zahl, 8}, {"Wort", EZelle::Text, 12}};

std::string Ausgegeben(EFormat eFormat, const std::vector<std::vector<CString>> & vZeilen) {
    std::ostringstream aus;
    const auto pAusgabe = CAusgabe::Neu(eFormat, aus, SPALTEN);
    for (const auto & vZellen : vZeilen)
        pAusgabe->Zeile(vZellen);
    pAusgabe->Ende();
    return aus.str();
}

const std::vector<std::vector<CString>> ZEILEN = {
    {"20240229", "-12.5", "Süß; \"bitter\""_t}, {"", "", "a\nb\\"_t}, {"20240", "x1", " "}, {"", "-x", "-1"}};

TEST(Ausgabe, TableAlignsCutsAndKeepsALineALine) {
    EXPECT_EQ(Ausgegeben(EFormat::Tabelle, ZEILEN), "Tag         Größe  Wort\n"
                                                    "----------  -----  ------------\n"
                                                    "29.02.2024  -12,5  Süß; \"bit...\n"
                                                    "                   a b\\\n"
                                                    "20240          x1\n"
                                                    "               -x  -1\n");
    EXPECT_EQ(Ausgegeben(EFormat::Tabelle, {{"", "-89319305493.25"_t, ""}}), // a number is never cut
              "Tag            Größe  Wort\n"
              "---  ---------------  ----\n"
              "     -89319305493,25\n");
}

TEST(Ausgabe, DecimalsKeepTheDigitsAskedForAndNoOtherZeros) {
    struct SFall {
        std::int64_t iWert;
        int iStellen, iMindestens;
        const char * pSoll;
    };
    constexpr SFall FAELLE[] = {
        {600, 2, 0, "6"},           {610, 2, 0, "6,1"},
        {-1, 2, 0, "-0,01"},        {50, 2, 0, "0,5"},
        {0, 2, 2, "0,00"},          {12285, 4, 0, "1,2285"},
        {737100000, 8, 2, "7,371"}, {2300000000, 8, 2, "23,00"},
        {23000, 4, 4, "2,3000"},    {INT64_MIN, 0, 0, "-9223372036854775808"},
    };
    for (const SFall & fall : FAELLE)
        EXPECT_EQ(Dezimal(fall.iWert, fall.iStellen, fall.iMindestens, ','), fall.pSoll);
}

TEST(Ausgabe, CsvOpensInASpreadsheet) {
    EXPECT_EQ(Ausgegeben(EFormat::Csv, ZEILEN), "\xEF\xBB\xBF"
                                                "Tag;Größe;Wort\r\n"
                                                "29.02.2024;-12,5;\"Süß; \"\"bitter\"\"\"\r\n"
                                                ";;a b\\\r\n"
                                                "20240;x1;\" \"\r\n"
                                                ";'-x;'-1\r\n");
}

TEST(Ausgabe, JsonHasNumbersAndNulls) {
    EXPECT_EQ(Ausgegeben(EFormat::Json, ZEILEN),
              "[\n"
              R"(  {"Tag": "2024-02-29", "Größe": -12.5, "Wort": "Süß; \"bitter\""},)"
              "\n"
              R"(  {"Tag": null, "Größe": null, "Wort": "a\u000ab\\"},)"
              "\n"
              R"(  {"Tag": "20240", "Größe": "x1", "Wort": " "},)"
              "\n"
              R"(  {"Tag": null, "Größe": "-x", "Wort": "-1"})"
              "\n]\n");
    EXPECT_EQ(Ausgegeben(EFormat::Json, {}), "[]\n");
}

// ---- the command

// A practice of one patient, made by hand.
class CHitsTest : public CProgrammTest {
protected:
    CHitsTest() {
        Schreibe(R"(PRAXIS PRAXISID=" 1" KZVNR=11
                    LEB LEB="   5" MDKASSE=" 1" MDPRIVAT=" 2"
                    ORVOKAS KASKUERZEL=AOK01 GUELTIGAB=20200101 KASSENPWGRP=aok
                    ORVOKAS KASKUERZEL=AOK01 GUELTIGAB=20240401 KASSENPWGRP=bkk
                    PUNKTWERT PWAB=20240101 PWGRP=aok PWLART=a PWWEST=e11000 PWOST=e10000
                    PUNKTWERT PWAB=20240101 PWGRP=bkk PWLART=a PWWEST=e12000 PWOST=e11000
                    GO GOART=k LSTNR=13a GEBPKT=3300 PWLART=a STATART=x GOTEXT=Füllung
                    GO GOART=k LSTNR=13a0 GEBPKT=3200 PWLART=a GOTEXT=fiktiv
                    GO GOART=q LSTNR=0010 GOSUBART=1 GEBPKT=100 STDFAKTOR=23000 GOTEXT=Untersuchung
                    PAT PATNR="      1001" PATNAME=Größ PATVORNAME=Änne
                    VDESC PATNR="      1001" VDESCNR="   1" VDABDATUM=20230101 KASKUERZEL=AOK01 VNACHWEIS=G WSO=1
                    BILL PATNR="      1001" PATBILL="   1" ABRART=a)");
    }

    // A treatment of the patient: an insurer's filling unless the other columns say otherwise.
    void Behandlung(const std::string & sDatum, const std::string & sAnders = {}) {
        Schreibe(
            "BEH PATNR=\"      1001\" SITZUNG=a BEHANDLERNR=\"   5\" GOART=k LSTNR=13a LSTIN=13a ANZAHL=x100 "
            "PATBILL=\"   1\" DATUM=" +
            sDatum + " LFDBEHEINTRAG=" + std::to_string(++m_iLfd) + " " + sAnders);
    }
    // The rows of the table, without its head and its last line.
    std::string Zeilen(const std::string & sOptionen) {
        const SProgrammende ende = Laufe("hits a.db --format csv --ohne-kopf " + sOptionen);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return ende.sAus.substr(std::min(ende.sAus.size(), ende.sAus.find("\r\n") + 2));
    }

    CString m_sMeldung;
    CTestpraxis m_praxis{CSqliteSpeicher::OeffneDatei(Pfad("a.db").string(), EModus::Neu, m_sMeldung)};
    int m_iLfd = 0;
};

TEST_F(CHitsTest, AHitHasWhatItsRowsSay) {
    Behandlung("20240215", "TEETH=36");
    EXPECT_EQ(Zeilen(""), "15.02.2024;1001;GRÖß ÄNNE;5;AOK01;c;k;13a;36;1;33,00;1,10;;Füllung;\r\n");
}

// One change each, and the line it makes.
TEST_F(CHitsTest, EachRecordShows) {
    struct SFall {
        const char *pDatum, *pAnders, *pZeile;
    };
    const SFall FAELLE[] = {
        {"20240401", "", "c;k;13a;;1;33,00;1,20;;Füllung;"}, // the insurer's new group
        {"20240215", "DTAGRUND=f", "c;k;13a0;;1;32,00;1,10;;fiktiv;"},
        {"20240215", "PATBILL=\" \"", ";k;13a;;1;33,00;1,10;;Füllung;"}, // no bill
        {"20240215", "LSTNR=99z", "c;k;99z;;1;;;;;"},                    // no fee row
        {"20240215", "GOART=q LSTNR=0010 BETRAG=e1294", "c;q;0010;;1;100;2,30;12,94;Untersuchung;12,94"},
        {"20240215", "GOART= LSTNR= ANZAHL= TEXTART=t TEXT=\"Anruf; später\"", "c;;;;;;;;\"Anruf; später\";"},
        {"20240215", "BETRAG=Unsinn", "c;k;13a;;1;33,00;1,10;0,00;Füllung;0,00"}, // text for a number
    };
    for (const SFall & fall : FAELLE) {
        Sql("a.db", "DELETE FROM BEH");
        Behandlung(fall.pDatum, fall.pAnders);
        const std::string s = Zeilen("");
        EXPECT_EQ(s.substr(std::min(s.size(), s.find("AOK01;") + 6)), std::string(fall.pZeile) + "\r\n");
    }
}

TEST_F(CHitsTest, MissingPatientInsuranceAndTreaterLeaveTheirColumnsEmpty) {
    Behandlung("20221231"); // before the insurance period
    Sql("a.db", "DELETE FROM LEB; DELETE FROM PAT");
    EXPECT_EQ(Zeilen(""), "31.12.2022;1001;;5;;c;k;13a;;1;33,00;;;Füllung;\r\n");
}

TEST_F(CHitsTest, OptionsChooseInTheOrderOfTheKeys) {
    Schreibe("LEB LEB=\"  12\"");
    Schreibe("PAT PATNR=\"       999\"");
    for (const char * pTag : {"20240301", "20240115", "20240215"})
        Behandlung(pTag);
    Behandlung("20240401", "BEHANDLERNR=\"  12\"");
    Behandlung("20240115", "PATNR=\"       999\"");
    struct SFall {
        const char * pOptionen;
        const char * pTage;
    };
    for (const SFall & fall : std::initializer_list<SFall>{
             {"", "15.01.2024 15.01.2024 15.02.2024 01.03.2024 01.04.2024 "},
             {"--von 15.02.2024 --bis 20240301", "15.02.2024 01.03.2024 "},
             {"--patient 1001 --von 01.03.2024", "01.03.2024 01.04.2024 "},
             {"--patient 999 --bis 31.12.2023", ""},
             {"--behandler 12", "01.04.2024 "},
             {"--limit 2", "15.01.2024 15.01.2024 "},
         }) {
        std::istringstream zeilen(Zeilen(fall.pOptionen));
        std::string sTage;
        for (std::string s; std::getline(zeilen, s);)
            sTage += s.substr(0, s.find(';')) + ' ';
        EXPECT_EQ(sTage, fall.pTage) << fall.pOptionen;
    }
}

} // namespace
} // namespace orvostat
