#include "Programmlauf.h"

#include "Aufruf.h"
#include "Befehle.h"
#include "Gegenrechnung.h"
#include "Praxis.h"
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>
#include <iostream>
#include <regex>
#include <sstream>

namespace orvostat {
namespace {

class CLaufTest : public CProgrammTest {
protected:
    CLaufTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }

    // b.db becomes a copy of a.db in which these statements have been run.
    void Kopiere(const std::string & sSql) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", sSql);
    }

    // How many hits a selection has.
    long Hits(const std::vector<std::string> & vWahl) {
        std::vector<std::string> vArgumente{"run", "a.db", "--hits", "--format", "csv", "--ohne-kopf"};
        vArgumente.insert(vArgumente.end(), vWahl.begin(), vWahl.end());
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return std::count(ende.sAus.begin(), ende.sAus.end(), '\n') - 1;
    }
};

// What is missing in the data has its reading: the run goes on and says so, or ends with the stated message. A
// selection that fits nobody is no failure.
TEST_F(CLaufTest, MissingRowsAreReadAsStated) {
    const struct {
        const char * pSql;
        const char * pText;
        int iCode;
        const char * pWahl = "";
    } aFaelle[] = {
        {"DELETE FROM BILL", "Hits ohne Rechnung", 0},
        {"DELETE FROM ADR WHERE ADRART = 'p'", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM PAT", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM VDESC", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM ORVOKAS", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM GO", "keine Gebührenzeile zur Leistung", 0},
        {"DELETE FROM PUNKTWERT", "kein Punktwert für eine Kassenleistung", 0},
        {"DELETE FROM PLAN", "der Plan der Leistung fehlt", 0},
        {"DELETE FROM BEH", "0 Behandlungen gelesen, 0 Hits", 0},
        {"", " 0 Hits", 0, "--selektion zzz"},
        {"", " 0 Hits", 0, "--alter 150..160"},
        {"", " 0 Hits", 0, "--plan 999"},
        {"", " 0 Hits", 0, "--von 01.01.1999 --bis 02.01.1999"},
        {"DELETE FROM MANDANT", "Kein Mandant verfügbar!", 1},
        {"DELETE FROM LEB", "Kein Behandler verfügbar!", 1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL = 'hvmbudget'",
         "Fehler: Keine HVM-Gruppen im Selectpool verfügbar!", 1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL LIKE 'gostattyp%'",
         "Keine GO-Statistiktypen im Selectpool verfügbar!", 1},
    };
    for (const auto & fall : aFaelle) {
        Kopiere(fall.pSql);
        const SProgrammende ende = Laufe(std::string("run b.db ") + fall.pWahl);
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pSql;
        EXPECT_NE((ende.sAus + ende.sFehler).find(fall.pText), std::string::npos) << fall.pSql << '\n'
                                                                                  << ende.sAus;
    }
}

TEST_F(CLaufTest, NonsenseIsRefusedWithWhatIsWrong) {
    Sql("a.db", "UPDATE ORVOKAS SET KASKUERZEL = 'Aok01' WHERE KASKUERZEL = 'AOK02'");
    const struct {
        const char * pWahl;
        int iCode;
        const char * pMeldung; // part of the error output
    } aFaelle[] = {
        {"--von 31.02.2024", 2, "--von: \"31.02.2024\" ist kein Tag"},
        {"--von 02.01.2024 --bis 01.01.2024", 2, "--bis: das Ende liegt vor dem Anfang"},
        {"--karte 02.01.2024..01.01.2024", 2, "--karte: das Ende liegt vor dem Anfang"},
        {"--letzter-besuch 02.01.2024..gestern", 2, "\"gestern\" ist kein Tag"},
        {"--geburtstag 01.12.2023..31.01.2024", 2, "--geburtstag: der Bereich geht über das Jahresende"},
        {"--alter 60..18", 2, "--alter: das Ende liegt vor dem Anfang"},
        {"--alter 18..abc", 2, "--alter: \"abc\" ist kein Alter in Jahren"},
        {"--patient 99", 1, "Einen Patienten \"99\" gibt es nicht."},
        {"--behandler 1,99", 1, "Einen Behandler \"99\" gibt es nicht."},
        {"--mandant 7", 1, "Die Praxis hat keinen Praxisinhaber \"7\"."},
        {"--kasse keine", 1, "Eine Kasse \"keine\" gibt es nicht."},
        {"--kasse aok01", 1, "Die Kasse \"aok01\" ist nicht eindeutig geschrieben."},
        {"--recall **", 2, "--recall: \"**\" ist weder eine Recallart noch *"},
        {"--recall-intervall W26", 2, "--recall-intervall: \"W26\": erlaubt sind nur die Zeichen 0123456789"},
        {"--recall-vor gestern", 2, "\"gestern\" ist kein Tag"},
        {"--goart kg", 2, "--goart: \"kg\" ist länger als 1 Zeichen"},
        {"--pwlart a;b", 2, "--pwlart: \"a;b\": erlaubt sind nur die Zeichen"},
        {"--abrart C+", 2, "--abrart: \"c+\": erlaubt sind nur die Zeichen"},
        {"--plan 1a", 2, "--plan: \"1a\": erlaubt sind nur die Zeichen"},
        {"--mfr Mitglied", 2, "--mfr: \"Mitglied\": erlaubt sind nur die Zeichen"},
        {"--karte .. --kartenart X", 2, "--kartenart: \"X\": erlaubt sind nur die Zeichen GgjE"},
        {"--kartenart G", 2, "--kartenart geht nur zusammen mit --karte"},
        {"--technik 7", 2, "--technik: \"7\" ist keines von ziffern, buchstaben, alle"},
        {"--nach kasse,kasse", 2, "--nach: \"kasse\" steht doppelt"},
        {"--nach kasse,art,monat", 2, "--nach: mehr als zwei Kriterien"},
        {"--nach jahr", 2, "--nach: \"jahr\" ist keines von behandler, kostentraeger, art, kasse, monat, "},
        {"--nach art --hits", 2, "--hits und --nach schließen sich aus"},
        {"-o a.db --force", 1, "\"a.db\" ist eine Datenbank und wird nicht überschrieben."},
        {"-o nirgends/x.csv", 1,
         "\"nirgends/x.csv\" lässt sich nicht schreiben: das Verzeichnis gibt es nicht."},
        {"-o .", 1, "\".\" ist keine gewöhnliche Datei."},
        {"--sort alter", 2, "--sort: \"alter\" ist keines von name, patient"},
        {"--status offen", 2, "--status: \"offen\" ist keines von"},
        {"--unbekannt", 2, "--unbekannt"},
    };
    for (const auto & fall : aFaelle) {
        const SProgrammende ende = Laufe("run a.db " + std::string(fall.pWahl));
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pWahl;
        EXPECT_NE(ende.sFehler.find(fall.pMeldung), std::string::npos) << fall.pWahl << '\n' << ende.sFehler;
    }
    EXPECT_EQ(Laufe("run").iCode, 2);
    EXPECT_EQ(Laufe("explain a.db --patient 1001").iCode, 2);
}

// ---- the comparison with SQL

// What is written otherwise than usual and what a flag changes is left out with its reason, or compared as ever.
TEST_F(CLaufTest, TheComparisonWithSqlRaisesNoFalseAlarm) {
    const struct {
        const char * pSql;
        const char * pWahl;
        const char * pGrund; // empty: all hits are compared as before
    } aFaelle[] = {
        {"SELECT 1", "--nebenakten", ""},
        {"UPDATE PUNKTWERT SET PWWEST = PWWEST || '.9', PWOST = PWOST || '.123456'", "", ""},
        {"UPDATE GO SET FAKTOR = '-23000'; UPDATE BEH SET FAKTOR = '' WHERE GOART = 'q'", "", ""},
        {"UPDATE PUNKTWERT SET PWWEST = SUBSTR(PWWEST, 2)", "", "ohne Punktwert"},
        {"UPDATE PUNKTWERT SET PWOST = 'e-' || SUBSTR(PWOST, 2); UPDATE VDESC SET WSO = '9'", "",
         "ohne Punktwert"},
        {"UPDATE VDESC SET KASKUERZEL = LOWER(KASKUERZEL)", "", "ohne Punktwert"},
        {"UPDATE ORVOKAS SET KASFLAG1 = '0' WHERE KASKUERZEL LIKE 'A%'", "--nur-gesetzliche",
         "ohne Punktwert"},
        {"SELECT 1", "--ersatz", "Ersatzleistung"},
        {"SELECT 1", "--kassenanteil", "Kassenanteil"},
    };
    const auto Pruefe = [this](const char * pSql, const char * pWahl) {
        Kopiere(pSql);
        const SProgrammende ende = Laufe(std::string("run b.db --check ") + pWahl);
        EXPECT_EQ(ende.iCode, 0) << pSql << pWahl << ende.sAus;
        return ende.sAus.substr(ende.sAus.find("mit SQL: ") + 9);
    };
    const int iAlle = std::stoi(Pruefe("SELECT 1", ""));
    for (const auto & fall : aFaelle) {
        const std::string sZeile = Pruefe(fall.pSql, fall.pWahl);
        EXPECT_EQ(std::stoi(sZeile) < iAlle, *fall.pGrund != 0) << fall.pSql << fall.pWahl << sZeile;
        EXPECT_NE(sZeile.find(fall.pGrund), std::string::npos) << fall.pSql << fall.pWahl << sZeile;
    }
}

// A run over a.db against the rows of a file in which one thing is other than it was then.
TEST_F(CLaufTest, TheComparisonWithSqlFindsACent) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    CStatAccu accu;
    {
        const CPraxis praxis(Pfad("a.db"), EModus::Lesen);
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        ASSERT_EQ(CLauf(accu, SLaufauftrag()).Laufe(), ELauf::Fertig);
    }
    const auto Verschieden = [&](const std::string & sSql) {
        Kopiere(sSql);
        const SGegenrechnung rechnung = RechneGegen(Pfad("b.db"), accu.m_vBehHits, {});
        EXPECT_TRUE(rechnung.bGerechnet) << rechnung.sFehler;
        return std::ranges::count_if(rechnung.vSummen, &SGegensumme::Verschieden);
    };
    const auto Eine = [](const std::string & sSatz, const std::string & sWo) {
        return "UPDATE BEH SET " + sSatz + " WHERE SCHLUESSEL1 = (SELECT MIN(SCHLUESSEL1) FROM BEH WHERE " +
               sWo + ")";
    };
    EXPECT_EQ(Verschieden("SELECT 1"), 0);
    EXPECT_EQ(
        Verschieden(Eine("BETRAG = 'e' || (SUBSTR(BETRAG, 2) + 1)", "ABRMERKMAL = '=' AND GOART = 'k'")), 1);
    EXPECT_EQ(Verschieden(Eine("ANZAHL = 'x101'", "GOART = 'q' AND ANZAHL = 'x100' AND ABRMERKMAL = ''")), 1);
    EXPECT_EQ(Verschieden(Eine("LSTNR = '04'", "GOART = 'k' AND LSTNR = '01'")), 1);
    EXPECT_GT(Verschieden("UPDATE PUNKTWERT SET PWWEST = 'e' || (SUBSTR(PWWEST, 2) + 9)"), 9);
}

TEST_F(CLaufTest, EverySectionCanBeReachedAndNarrows) {
    const auto iAlle = Hits({});
    for (const char * pWahl :
         {"--anrede Frau", "--alter 18..60", "--geburtstag 01.01.2024..30.06.2024", "--plz 50667",
          "--letzter-besuch 01.01.2024..30.06.2024", "--ohne-leistung 01.01.2024..31.12.2024", "--recall *",
          "--karte 01.01.2024..31.03.2024", "--karte 01.01.2024..31.12.2024 --karte-fehlt", "--kasse AOK01",
          "--goart q", "--leistung 13a", "--abrart z", "--status abgerechnet", "--mfr 1", "--rsa",
          "--pwlart a", "--selektion zzz", "--anamnese zzz"})
        EXPECT_LT(Hits(Worte(pWahl)), iAlle) << pWahl;
    for (const char * pOption : {"--strasse", "--ueberweiser", "--hausarzt", "--recall"})
        EXPECT_LT(Hits({pOption, ""}), iAlle) << pOption;
}

// ---- explain

// What a service's lines are, between its headline and the next one.
TEST_F(CLaufTest, ExplainTellsWhereAnAmountComesFrom) {
    const char * pPlan = "Punktwert 1,1112 EUR: mit Plan 1 vom 23.04.2024 festgeschrieben\n";
    const struct {
        const char * pSql;
        const char * pWahl; // patient, day, service, flags
        std::string sSoll;
    } aFaelle[] = {
        {"", "1011 --datum 05.06.2024 --lst 0120",
         "  Gebührenzeile 0120, Art \"1\" (Eigenlabor, Kassenliste), Kürzel Fix\n"
         "  Betrag der Laborleistung, wie eingetragen: 11,25 EUR\n  Ergebnis: 11,25 EUR\n"},
        {"", "1011 --datum 22.05.2024 --lst 91B",
         std::string("  ") + pPlan +
             "  Stattdessen Mischpunktwert 1,0774 EUR aus dem Faktor dieser Leistung, für Plan 1\n"
             "  128 Punkte x Anzahl 1 x 1,0774 EUR = 137,9072 EUR\n  Ergebnis: 137,9072 EUR\n"},
        {"", "1011 --datum 05.06.2024 --lst 89 --kassenanteil",
         "Mischpunktwert 1,0774 EUR aus der ersten Leistung des Plans 1\n"
         "  16 Punkte x Anzahl 1 x 1,0774 EUR = 17,2384 EUR\n  Anteil der Kasse 65 %: 11,20496 EUR\n"},
        {"", "1003 --datum 12.11.2024 --lst 44 --ersatz", "  Ersetzt: X3 wird als 44 gezählt\n"},
        {"", "1003 --datum 12.11.2024 --lst 45 --ersatz=53",
         "  40 Punkte x Anzahl 1 x 1,004 EUR = 40,16 EUR\n"},
        {"DELETE FROM LEB WHERE LEB = '  12'", "1001 --datum 05.03.2024 --lst 8",
         "  Im Lauf nicht gezählt: den Behandler 12 gibt es nicht\n  Gebührenzeile 8, "},
        {"UPDATE LEB SET MDKASSE = ' 9' WHERE LEB = '  12'",
         "1001 --datum 05.03.2024 --lst 8 --praxis-lassen",
         "  Im Lauf nicht gezählt: der Behandler 12 hat keinen bekannten Praxisinhaber\n"},
        {"", "1001 --datum 05.03.2024 --lst 8 --goart q",
         "  Im Lauf nicht gezählt: Gebührenart nicht gewählt\n"},
        {"UPDATE BEH SET GOART = '7' WHERE LSTNR = '8'", "1001 --datum 05.03.2024 --lst 8",
         "  Im Lauf nicht gezählt: Leistungen der Art 7 zählen nur mit --technik\n"},
        {"DELETE FROM PAT", "1001 --datum 05.03.2024 --lst 8", "x 1,2285 EUR = 7,371 EUR\n"},
        {"", "1001 --datum 23.01.2024", "Eintrag ohne Leistung: Röntgenbild besprochen: keine a"},
        {"", "1003 --datum 14.03.2024 --lst 24a",
         "  Im Lauf nicht gezählt: Leistung ohne Plannummer\n  Gebührenzeile 24a, "},
        {"", "1035 --datum 09.10.2024 --lst 41a",
         "  Im Lauf nicht gezählt: der Plan 1 ist nicht im abrechenbaren Stand\n  Gebührenzeile 41a, "},
        {"DELETE FROM PLAN", "1011 --datum 05.06.2024 --lst 89",
         "  Im Lauf nicht gezählt: der Plan 1 fehlt\n  Gebührenzeile 89, Art \"k\" (BEMA), Kürzel 89\n"
         "  Punktwert 1,1212 EUR: Gruppe ersatz, Art \"f\" (ZE), West, Stichtag 05.06.2024, gültig ab "
         "01.01.2024\n  Stattdessen Mischpunktwert 1,0774 EUR aus der ersten Leistung des Plans 1\n"},
        {"UPDATE PLAN SET PLANPW = ''", "1011 --datum 05.06.2024 --lst 89",
         "West, Stichtag 23.04.2024 (Datum des Plans 1), gültig ab 01.01.2024\n"},
        {"DELETE FROM VDESC", "1001 --datum 05.03.2024 --lst 8",
         "  Kein Punktwert: am 05.03.2024 keine Kasse\n  6 Punkte ohne Punktwert: kein Betrag\n"
         "  Ergebnis: kein Betrag\n"},
        {"UPDATE ORVOKAS SET KASSENPWGRP = ''", "1001 --datum 05.03.2024 --lst 8",
         "  Kein Punktwert: keine Punktwertgruppe zur Kasse EK04\n"},
        {"UPDATE BEH SET ENTFERNUNG = 'K50'", "1024 --datum 15.11.2024 --lst 4",
         "  Entfernung 50 % von 44 Punkten: 22 Punkte\n  22 Punkte x"},
        {"UPDATE BEH SET FAKTOR = '0'", "1001 --datum 23.01.2024 --lst 1040", "  Faktor 0: Betrag 0\n"},
        {"UPDATE VDESC SET KSART = 'V'", "1008 --datum 08.08.2024 --lst 1",
         "  Zweiter Einfachsatz (Kassenart \"V\") 4,23 EUR x Faktor 1 = 4,23 EUR (gerundet)\n"},
        {"UPDATE LEB SET ABSCHLAGGOZ = '500'; UPDATE BEH SET ICDNOTATIONSKZ = 's'",
         "1008 --datum 08.08.2024 --lst 1", "  Abschlag des Behandlers 5 %, bleibt 4,465 EUR\n"},
        {"UPDATE GO SET PWLART = ''; UPDATE BILL SET ABRART = ''", "1001 --datum 05.03.2024 --lst 8",
         "  Kein Punktwert: Gruppe ersatz, ohne Art, Stichtag 05.03.2024\n"},
    };
    for (const auto & fall : aFaelle) {
        Kopiere(fall.pSql);
        const SProgrammende ende = Laufe("explain b.db --patient " + std::string(fall.pWahl));
        EXPECT_EQ(ende.iCode, 0) << fall.pWahl << '\n' << ende.sFehler;
        EXPECT_NE(ende.sAus.find(fall.sSoll), std::string::npos) << fall.pSql << ' ' << fall.pWahl << '\n'
                                                                 << ende.sAus;
    }
}

// The rows of a page cannot be read: of the treatments before the day, or of a table where rows are only looked up.
TEST_F(CLaufTest, WhatMissesRowsIsNeverCalledWhole) {
    const std::string sSchaden =
        "UNVOLLSTÄNDIG. Die Datei ist nicht vollständig lesbar: sie ist beschädigt. ";
    for (const auto & [pSql, pErklaere] : std::initializer_list<std::pair<const char *, const char *>>{
             {"UPDATE BEH SET TEXT = 'zu überschreiben' WHERE PATNR = '      1017' AND DATUM < '20240605'",
              "explain b.db --patient 1017 --datum 05.06.2024"},
             {"UPDATE GO SET GOTEXT = 'zu überschreiben' WHERE GOART = 'k' AND LSTNR = '89'",
              "explain b.db --patient 1011 --datum 05.06.2024"},
             {"UPDATE ORVOKAS SET KASFELD1 = 'zu überschreiben' WHERE KASKUERZEL = 'EK04'",
              "explain b.db --patient 1011 --datum 05.06.2024"}}) {
        Kopiere(pSql);
        Zerstoere("b.db", "zu überschreiben");
        for (const char * pBefehl : {"run b.db", "run b.db --check", "hits b.db --format csv", pErklaere}) {
            const SProgrammende ende = Laufe(pBefehl);
            EXPECT_EQ(ende.iCode, 1) << pSql << pBefehl;
            EXPECT_EQ(ende.sFehler.substr(0, sSchaden.size()), sSchaden) << pSql << pBefehl;
            EXPECT_EQ(ende.sAus.find("Gesamt"), std::string::npos) << pSql << pBefehl;
            EXPECT_TRUE(!ende.sAus.starts_with("\xEF") ||
                        ende.sAus.ends_with("nicht vollständig lesbar.\r\n"));
        }
    }
}

// ---- options

// The treatments that a condition on the rows finds, against the hits of the option that stands for it.
TEST_F(CLaufTest, AnOptionFindsWhatItsRowsSay) {
    const std::string sVersichert =
        "EXISTS (SELECT 1 FROM VDESC v WHERE v.PATNR = BEH.PATNR AND VDABDATUM <= DATUM AND (VDBISDATUM = "
        "'' OR VDBISDATUM >= DATUM)";
    const struct {
        std::vector<std::string> vWahl;
        std::string sBedingung;
    } aFaelle[] = {
        {{"--mfr", "1"}, sVersichert + " AND MFRDIG = '1')"},
        {{"--mfr", ""}, "1"},
        {{"--mfr", "5", "--karte", "01.07.2024.."},
         sVersichert + " AND MFRDIG = '5') AND PATNR IN (SELECT PATNR FROM VDESC WHERE "
                       "max(EINLESEDATUM, VDABDATUM) >= '20240701')"},
        {{"--plan", "1"},
         "EXISTS (SELECT 1 FROM BILL b WHERE b.PATNR = BEH.PATNR AND b.PATBILL = BEH.PATBILL AND PLANNR = '  "
         "1')"},
        {{"--kasse", "aok01"}, sVersichert + " AND KASKUERZEL = 'AOK01')"},
        {{"--letzter-besuch", "01.12.2024.."},
         "PATNR IN (SELECT PATNR FROM PAT WHERE LASTBEHDATUM >= '20241201')"},
        {{"--geburtstag", "..31.03.2024"},
         "PATNR IN (SELECT PATNR FROM PAT WHERE substr(PATGEBDATUM, 5, 2) <= '03')"},
        {{"--ohne-leistung", "01.01.2024..31.01.2024"},
         "PATNR NOT IN (SELECT PATNR FROM BEH WHERE DATUM < '20240201')"},
        {{"--ohne-leistung", "01.11.2024..", "--bis", "30.06.2024"},
         "DATUM <= '20240630' AND PATNR NOT IN (SELECT PATNR FROM BEH WHERE DATUM >= '20241101')"},
        {{"--recall", "1", "--recall-intervall", "3"},
         "PATNR IN (SELECT PATNR FROM PAT WHERE RECALLART LIKE '_1%' AND RECALLITV LIKE '_3%')"},
        {{"--recall-intervall", "6"},
         "PATNR IN (SELECT PATNR FROM PAT WHERE RECALLART LIKE '1%' AND RECALLITV LIKE '6%')"},
        {{"--nur-abrechenbare"},
         "EXISTS (SELECT 1 FROM GO g WHERE g.GOART = BEH.GOART AND g.LSTNR = BEH.LSTNR AND GOKZ = '1')"},
    };
    for (const auto & fall : aFaelle) {
        std::vector<std::string> vWahl = fall.vWahl;
        vWahl.push_back("--ohne-plangatter");
        const long iSoll = std::stol(Frage("a.db", "SELECT count(*) FROM BEH WHERE " + fall.sBedingung));
        EXPECT_GT(iSoll, 0) << vWahl[0] << ' ' << vWahl[1];
        EXPECT_EQ(Hits(vWahl), iSoll) << vWahl[0] << ' ' << vWahl[1];
    }
}

TEST_F(CLaufTest, WhatARunDoesBesideTheSelectionShows) {
    const std::vector<std::string> vHits = {"run", "a.db", "--hits", "--format", "csv"};
    const std::string sOhne = Laufe(vHits).sAus;
    for (const char * pWahl :
         {"--ersatz", "--kassenanteil", "--ohne-plangatter", "--par-marken", "--par-beva",
          "--nur-gesetzliche", "--nebenakten", "--sort name", "--mandant 2"}) {
        std::vector<std::string> vArgumente = vHits;
        for (const std::string & sWort : Worte(pWahl))
            vArgumente.push_back(sWort);
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << pWahl << ende.sFehler;
        EXPECT_NE(ende.sAus, sOhne) << pWahl;
    }
    EXPECT_NE(Laufe("run a.db --par-marken --abrart 67").sAus.find(" Hits"), std::string::npos);
}

// ---- what leaves the terminal

// In this process, with a user who stops the run at its first look.
TEST_F(CLaufTest, ACancelledRunSaysSoInItsOutput) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    const std::string sDatei = Pfad("a.db").string();
    const std::string sZiel = Pfad("x.csv").string();
    const struct {
        std::vector<const char *> vWahl;
        const char * pSoll; // the end of the output
    } aFaelle[] = {
        {{}, "\nUNVOLLSTÄNDIG. Abgebrochen: hier steht, was bis dahin gelesen war.\n"},
        {{"--format", "csv"}, "\r\nUNVOLLSTÄNDIG. Abgebrochen: hier steht, was bis dahin gelesen war.\r\n"},
        {{"--format", "json"}, "  \"vollständig\": false\n}\n"},
        {{"--format", "json", "--hits"}, "  \"vollständig\": false\n}\n"},
        {{"--format", "csv", "-o", sZiel.c_str()}, ""},
    };
    for (const auto & fall : aFaelle) {
        rekorder.m_iAbbruchAb = static_cast<int>(rekorder.m_vSchritte.size()) + 1;
        rekorder.m_vAntworten = {true};
        CLI::App app;
        Beschrifte(app);
        FuegeRunHinzu(app);
        std::vector<const char *> vArgumente{"orvostat", "run", sDatei.c_str()};
        vArgumente.insert(vArgumente.end(), fall.vWahl.begin(), fall.vWahl.end());
        std::ostringstream aus;
        std::streambuf * const pVorher = std::cout.rdbuf(aus.rdbuf());
        EXPECT_EQ(FuehreAus(app, static_cast<int>(vArgumente.size()), vArgumente.data()), 130);
        std::cout.rdbuf(pVorher);
        EXPECT_TRUE(aus.str().ends_with(fall.pSoll)) << aus.str();
        EXPECT_EQ(aus.str().find("UNVOLLSTÄNDIG") < 200, *fall.pSoll != 0) << "said at the head too";
    }
    for (const auto & eintrag : std::filesystem::directory_iterator(Pfad("")))
        EXPECT_EQ(eintrag.path().string().find("x.csv"), std::string::npos) << "whole or not at all";
}

// The head names all that the sums depend on; the exact amounts of a column add up to the last figure.
TEST_F(CLaufTest, AFileOfSumsSpeaksForItself) {
    const std::string sWahl = "run a.db --von 01.10.2024 --goart k --nach monat --format csv -o x.csv";
    ASSERT_EQ(Laufe(sWahl).iCode, 0);
    std::string s =
        std::regex_replace(Inhalt("x.csv"), std::regex("Erstellt;[0-9. :]{16}\r"), "Erstellt;jetzt\r");
    s = std::regex_replace(s, std::regex("Version;[0-9.]+\r"), "Version;1\r");
    EXPECT_EQ(s.substr(0, s.find("Bilanz")),
              "\xEF\xBB\xBF"
              "Datei;a.db\r\nZeitraum;ab 01.10.2024\r\n"
              "Auswahl;\"goart = \"\"k\"\"\"\r\nVersion;1\r\nErstellt;jetzt\r\n\r\n");
    std::istringstream zeilen(s.substr(s.find("Betrag genau EUR\r\n") + 18));
    std::vector<long long> viEinheiten;
    for (std::string sZeile; std::getline(zeilen, sZeile);) {
        std::string sGenau = sZeile.substr(sZeile.rfind(';') + 1);
        const std::size_t iKomma = sGenau.find(',');
        sGenau = sGenau.substr(0, iKomma) +
                 (sGenau.substr(iKomma + 1, sGenau.size() - iKomma - 2) + "00000000").substr(0, 8);
        viEinheiten.push_back(std::stoll(sGenau));
    }
    ASSERT_EQ(viEinheiten.size(), 4U);
    EXPECT_EQ(viEinheiten[0] + viEinheiten[1] + viEinheiten[2], viEinheiten[3]);
    EXPECT_NE(viEinheiten[3] % 1'000'000, 0) << "nothing was rounded, so nothing is seen";

    const std::string sVorher = Inhalt("x.csv");
    const SProgrammende verweigert = Laufe(sWahl);
    EXPECT_EQ(verweigert.sFehler,
              "\"x.csv\" gibt es schon und wird nicht überschrieben; --force tut auch das.\n");
    EXPECT_EQ(Inhalt("x.csv"), sVorher);
    EXPECT_EQ(Laufe("run a.db --format json -o x.csv --force").iCode, 0);
    EXPECT_TRUE(Inhalt("x.csv").ends_with("\"vollständig\": true\n}\n"));
}

// Texts of rows reach neither the terminal's control nor a spreadsheet's formulas.
TEST_F(CLaufTest, ControlCharactersAndFormulasOfRowsAreHarmless) {
    Kopiere(
        "UPDATE PAT SET PATNAME = '=1+1' || char(27) || '[31m' || char(157) || char(13), PATVORNAME = ''; "
        "UPDATE BEH SET LSTIN = char(27) || ']0;x' || char(7), TEXT = char(9) || '@SUM(A1)'; DELETE FROM "
        "PLAN");
    for (const char * pBefehl :
         {"run b.db", "run b.db --hits", "run b.db --nach patient", "run b.db --weggelassen=alle",
          "hits b.db", "hits b.db --format csv", "hits b.db --format json",
          "explain b.db --patient 1001 --datum 23.01.2024"}) {
        const SProgrammende ende = Laufe(pBefehl);
        const std::string sAlles = ende.sAus + ende.sFehler;
        EXPECT_EQ(ende.iCode, 0) << pBefehl;
        for (std::size_t i = 0; i + 1 < sAlles.size(); ++i) {
            const auto c = static_cast<unsigned char>(sAlles[i]);
            const auto cNach = static_cast<unsigned char>(sAlles[i + 1]);
            ASSERT_FALSE((c < 0x20 && c != '\n' && (c != '\r' || cNach != '\n')) || c == 0x7F ||
                         (c == 0xC2 && cNach < 0xA0))
                << pBefehl << " at " << i;
        }
        if (std::string_view(pBefehl).find("csv") == std::string_view::npos) continue;
        EXPECT_NE(sAlles.find(";\"'=1+1"), std::string::npos);
        EXPECT_NE(sAlles.find(";' @SUM"), std::string::npos);
    }
}

// ---- examples

TEST_F(CProgrammTest, CommandsAnswerAsTheExamplesSay) {
    const std::string sQuelle = ORVOSTATBS_SOURCE_DIR;
    EXPECT_EQ(PruefeBefehle(sQuelle + "/README.md"), 3);
    EXPECT_GT(PruefeBefehle(sQuelle + "/tests/program/faelle/lauf.txt"), 0);
}

} // namespace
} // namespace orvostat
