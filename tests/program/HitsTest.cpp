#include "Ausgabe.h"
#include "Programmlauf.h"

#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <sstream>

namespace orvostat {
namespace {

// ---- the writers

constexpr SAusgabespalte SPALTEN[] = {
    {"Tag", EZelle::Datum, 10}, {"Größe", EZelle::Zahl, 8}, {"Wort", EZelle::Text, 12}};

std::string Schreibe(EFormat eFormat, const std::vector<std::vector<CString>> & vZeilen) {
    std::ostringstream aus;
    const auto pAusgabe = CAusgabe::Neu(eFormat, aus, SPALTEN);
    for (const auto & vZellen : vZeilen)
        pAusgabe->Zeile(vZellen);
    pAusgabe->Ende();
    return aus.str();
}

const std::vector<std::vector<CString>> ZEILEN = {
    {"20240229", "-12.5", "Süß; \"bitter\""_t}, {"", "", "a\nb\\"_t}, {"20240", "x1", " "}};

TEST(Ausgabe, TableAlignsCutsAndKeepsALineALine) {
    EXPECT_EQ(Schreibe(EFormat::Tabelle, ZEILEN), "Tag         Größe  Wort\n"
                                                  "----------  -----  ------------\n"
                                                  "29.02.2024  -12,5  Süß; \"bit...\n"
                                                  "                   a b\\\n"
                                                  "20240          x1\n");
    EXPECT_EQ(Schreibe(EFormat::Tabelle, {{"", "-89319305493.25"_t, ""}}), // a number is never cut
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
    EXPECT_EQ(Schreibe(EFormat::Csv, ZEILEN), "\xEF\xBB\xBF"
                                              "Tag;Größe;Wort\r\n"
                                              "29.02.2024;-12,5;\"Süß; \"\"bitter\"\"\"\r\n"
                                              ";;a b\\\r\n"
                                              "20240;x1;\" \"\r\n");
}

TEST(Ausgabe, JsonHasNumbersAndNulls) {
    EXPECT_EQ(Schreibe(EFormat::Json, ZEILEN),
              "[\n"
              R"(  {"Tag": "2024-02-29", "Größe": -12.5, "Wort": "Süß; \"bitter\""},)"
              "\n"
              R"(  {"Tag": null, "Größe": null, "Wort": "a\u000ab\\"},)"
              "\n"
              R"(  {"Tag": "20240", "Größe": "x1", "Wort": " "})"
              "\n]\n");
    EXPECT_EQ(Schreibe(EFormat::Json, {}), "[]\n");
}

// ---- the command

// A practice of one patient, made by hand.
class CHitsTest : public CProgrammTest {
protected:
    CHitsTest() {
        CString sMeldung;
        m_pSpeicher = CSqliteSpeicher::OeffneDatei(Pfad("a.db").string(), EModus::Neu, sMeldung);
        m_db.Verbinde(m_pSpeicher);
        Neu<CTPraxis>([](auto & t) { t.m_PRAXISID = " 1", t.m_KZVNR = "11"; });
        Neu<CTLeb>([](auto & t) { t.m_LEB = "   5", t.m_MDKASSE = " 1", t.m_MDPRIVAT = " 2"; });
        Neu<CTOrvoKas>(
            [](auto & t) { t.m_KASKUERZEL = "AOK01", t.m_GUELTIGAB = "20200101", t.m_KASSENPWGRP = "aok"; });
        Neu<CTOrvoKas>(
            [](auto & t) { t.m_KASKUERZEL = "AOK01", t.m_GUELTIGAB = "20240401", t.m_KASSENPWGRP = "bkk"; });
        Punktwert("20160101", "aok", "e10040", "e9738");
        Punktwert("20240101", "aok", "e11000", "e10000");
        Punktwert("20250101", "aok", "e13233", "e12836");
        Punktwert("20240101", "bkk", "e12000", "e11000");
        Neu<CTGO>([](auto & t) {
            t.m_GOART = "k", t.m_LSTNR = "13a", t.m_GEBPKT = "3300", t.m_PWLART = "a", t.m_STATART = "x",
            t.m_GOTEXT = "Füllung";
        });
        Neu<CTGO>([](auto & t) {
            t.m_GOART = "k", t.m_LSTNR = "13a0", t.m_GEBPKT = "3200", t.m_PWLART = "a", t.m_GOTEXT = "fiktiv";
        });
        Neu<CTGO>([](auto & t) {
            t.m_GOART = "q", t.m_LSTNR = "0010", t.m_GOSUBART = "1", t.m_GEBPKT = "100",
            t.m_STDFAKTOR = "23000", t.m_GOTEXT = "Untersuchung"_t;
        });
        Neu<CTPat>([](auto & t) { t.m_PATNR = "      1001", t.m_PATNAME = "Größ", t.m_PATVORNAME = "Änne"; });
        Neu<CTVDesc>([](auto & t) {
            t.m_PATNR = "      1001", t.m_VDESCNR = "   1", t.m_VDABDATUM = "20230101",
            t.m_KASKUERZEL = "AOK01", t.m_VNACHWEIS = "G", t.m_WSO = "1";
        });
        Neu<CTBill>([](auto & t) { t.m_PATNR = "      1001", t.m_PATBILL = "   1", t.m_ABRART = "a"; });
    }

    template <class T, class F> void Neu(F fFuelle) {
        T zeile(m_db);
        fFuelle(zeile);
        ASSERT_EQ(zeile.Write(), 0);
    }
    void Punktwert(const CString & sAb, const CString & sGruppe, const CString & sWest,
                   const CString & sOst) {
        Neu<CTPunktWert>([&](auto & t) {
            t.m_PWAB = sAb, t.m_PWGRP = sGruppe, t.m_PWLART = "a", t.m_PWWEST = sWest, t.m_PWOST = sOst;
        });
    }
    // A treatment of the patient: an insurer's filling unless fAendere says otherwise.
    template <class F> void Behandlung(const CString & sDatum, F fAendere) {
        Neu<CTBeh>([&](CTBeh & t) {
            t.m_PATNR = "      1001";
            t.m_DATUM = sDatum;
            t.m_SITZUNG = "a";
            t.m_LFDBEHEINTRAG = CString(static_cast<char>('0' + ++m_iLfd));
            t.m_BEHANDLERNR = "   5";
            t.m_GOART = "k";
            t.m_LSTNR = t.m_LSTIN = "13a";
            t.m_ANZAHL = "x100";
            t.m_PATBILL = "   1";
            fAendere(t);
        });
    }
    void Behandlung(const CString & sDatum) {
        Behandlung(sDatum, [](CTBeh &) {});
    }
    // The rows of the table, without its head and its last line.
    std::string Zeilen(const std::string & sOptionen) {
        const SProgrammende ende = Laufe("hits a.db --format csv " + sOptionen);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return ende.sAus.substr(std::min(ende.sAus.size(), ende.sAus.find("\r\n") + 2));
    }

    std::shared_ptr<CSqliteSpeicher> m_pSpeicher;
    CMxDatabase m_db{false};
    int m_iLfd = 0;
};

TEST_F(CHitsTest, AHitHasWhatItsRowsSay) {
    Behandlung("20240215", [](CTBeh & t) { t.m_TEETH = "36"; });
    EXPECT_EQ(Zeilen(""), "15.02.2024;1001;GRÖß ÄNNE;5;AOK01;c;k;13a;36;1;33,00;1,10;;Füllung\r\n");
}

// One change each, and the line it makes.
TEST_F(CHitsTest, EachRecordShows) {
    struct SFall {
        CString sDatum;
        void (*pAendere)(CTBeh &);
        const char * pZeile;
    };
    const SFall FAELLE[] = {
        {"20231231", [](CTBeh &) {}, "c;k;13a;;1;33,00;1,004;;Füllung"}, // the point value before
        {"20240401", [](CTBeh &) {}, "c;k;13a;;1;33,00;1,20;;Füllung"},  // the insurer's new group
        {"20240215", [](CTBeh & t) { t.m_DTAGRUND = "f"; }, "c;k;13a0;;1;32,00;1,10;;fiktiv"},
        {"20240215", [](CTBeh & t) { t.m_PATBILL = " "; }, ";k;13a;;1;33,00;1,10;;Füllung"}, // no bill
        {"20240215", [](CTBeh & t) { t.m_PATBILL = "   9"; },
         ";k;13a;;1;33,00;1,10;;Füllung"},                                    // a bill without row
        {"20240215", [](CTBeh & t) { t.m_LSTNR = "99z"; }, "c;k;99z;;1;;;;"}, // no fee row
        {"20240215", [](CTBeh & t) { t.m_ANZAHL = "x250"; }, "c;k;13a;;2,50;33,00;1,10;;Füllung"},
        {"20240215", [](CTBeh & t) { t.m_GOART = "q", t.m_LSTNR = "0010", t.m_BETRAG = "e1294"; },
         "c;q;0010;;1;100;2,30;12,94;Untersuchung"},
        {"20240215",
         [](CTBeh & t) {
             t.m_GOART = t.m_LSTNR = t.m_ANZAHL = "", t.m_TEXTART = "t", t.m_TEXT = "Anruf; später"_t;
         },
         "c;;;;;;;;\"Anruf; später\""},
        {"20240215", [](CTBeh & t) { t.m_GOART = t.m_LSTNR = "", t.m_TEXTART = "c", t.m_TEXT = "geheim"; },
         "c;;;;;;;;"},
        {"20240215", [](CTBeh & t) { t.m_BETRAG = "Unsinn"; },
         "c;k;13a;;1;33,00;1,10;0,00;Füllung"}, // text for a number
    };
    for (const SFall & fall : FAELLE) {
        Sql("a.db", "DELETE FROM BEH");
        Behandlung(fall.sDatum, fall.pAendere);
        const std::string s = Zeilen("");
        EXPECT_EQ(s.substr(std::min(s.size(), s.find("AOK01;") + 6)), std::string(fall.pZeile) + "\r\n");
    }
}

TEST_F(CHitsTest, MissingPatientInsuranceAndTreaterLeaveTheirColumnsEmpty) {
    Behandlung("20221231"); // before the insurance period
    Sql("a.db", "DELETE FROM LEB; DELETE FROM PAT");
    EXPECT_EQ(Zeilen(""), "31.12.2022;1001;;5;;c;k;13a;;1;33,00;;;Füllung\r\n");
}

TEST_F(CHitsTest, OptionsChooseInTheOrderOfTheKeys) {
    Neu<CTLeb>([](auto & t) { t.m_LEB = "  12"; });
    Neu<CTPat>([](auto & t) { t.m_PATNR = "       999"; });
    for (const char * pTag : {"20240301", "20240115", "20240215"})
        Behandlung(CString(pTag));
    Behandlung("20240401", [](CTBeh & t) { t.m_BEHANDLERNR = "  12"; });
    Behandlung("20240115", [](CTBeh & t) { t.m_PATNR = "       999"; });
    struct SFall {
        const char * pOptionen;
        const char * pTage;
    };
    for (const SFall & fall : std::initializer_list<SFall>{
             {"", "15.01.2024 15.01.2024 15.02.2024 01.03.2024 01.04.2024 "},
             {"--patient 1001", "15.01.2024 15.02.2024 01.03.2024 01.04.2024 "},
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

TEST_F(CHitsTest, APatientOrTreaterThatDoesNotExistIsRefused) {
    const SProgrammende patient = Laufe("hits a.db --patient 4711");
    EXPECT_EQ(patient.iCode, 1);
    EXPECT_EQ(patient.sFehler, "Einen Patienten \"4711\" gibt es nicht.\n");
    const SProgrammende behandler = Laufe("hits a.db --behandler 77");
    EXPECT_EQ(behandler.iCode, 1);
    EXPECT_EQ(behandler.sFehler, "Einen Behandler \"77\" gibt es nicht.\n");
}

} // namespace
} // namespace orvostat
