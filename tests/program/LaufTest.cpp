#include "Programmlauf.h"

#include "Lauf.h"
#include "Muster.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <fstream>

namespace orvostat {
namespace {

class CLaufTest : public CProgrammTest {
protected:
    CLaufTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }
};

// What is missing in the data has its reading: the run goes on and says so, or ends with the stated message.
TEST_F(CLaufTest, MissingRowsAreReadAsStated) {
    const struct {
        const char * pSql;
        const char * pText;
        int iCode;
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
        {"DELETE FROM MANDANT", "Kein Mandant verfügbar!", 1},
        {"DELETE FROM LEB", "Kein Behandler verfügbar!", 1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL = 'hvmbudget'", "Keine HVM-Gruppen im Selectpool verfügbar!",
         1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL LIKE 'gostattyp%'",
         "Keine GO-Statistiktypen im Selectpool verfügbar!", 1},
    };
    for (const auto & fall : aFaelle) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", fall.pSql);
        const SProgrammende ende = Laufe("run b.db");
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pSql;
        EXPECT_NE((ende.sAus + ende.sFehler).find(fall.pText), std::string::npos) << fall.pSql << '\n'
                                                                                  << ende.sAus;
    }
}

TEST_F(CLaufTest, ASelectionThatFitsNobodyIsNoFailure) {
    for (const char * pWahl :
         {"--selektion zzz", "--alter 150..160", "--behandler 99", "--von 01.01.1999 --bis 02.01.1999"}) {
        const SProgrammende ende = Laufe("run a.db " + std::string(pWahl));
        const bool bLeer = ende.iCode == 0 && ende.sAus.find(" 0 Hits") != std::string::npos;
        const bool bKeinBehandler =
            ende.iCode == 1 && ende.sFehler.find("Kein Behandler") != std::string::npos;
        EXPECT_TRUE(bLeer || bKeinBehandler) << pWahl << '\n' << ende.sAus << ende.sFehler;
    }
}

TEST_F(CLaufTest, WrongUsageIsTwo) {
    for (const char * pWahl :
         {"--von 31.02.2024", "--sort alter", "--status offen", "--recall-vor gestern", "--unbekannt"})
        EXPECT_EQ(Laufe("run a.db " + std::string(pWahl)).iCode, 2) << pWahl;
    EXPECT_EQ(Laufe("run").iCode, 2);
    EXPECT_EQ(Laufe("explain a.db --patient 1001").iCode, 2);
}

// The engine reads a fraction of a ten-thousandth that the SQL does not: the comparison has to notice.
TEST_F(CLaufTest, TheComparisonWithSqlFindsWhatDiffers) {
    EXPECT_EQ(Laufe("run a.db --check").iCode, 0);
    Sql("a.db", "UPDATE PUNKTWERT SET PWWEST = PWWEST || '.9', PWOST = PWOST || '.9'");
    const SProgrammende ende = Laufe("run a.db --check");
    EXPECT_EQ(ende.iCode, 1);
    EXPECT_NE(ende.sAus.find("Abweichungen von der Gegenrechnung mit SQL"), std::string::npos);
}

TEST_F(CLaufTest, EverySectionCanBeReachedAndNarrows) {
    const auto Hits = [this](const std::vector<std::string> & vWahl) {
        std::vector<std::string> vArgumente{"run", "a.db", "--hits", "--format", "csv"};
        vArgumente.insert(vArgumente.end(), vWahl.begin(), vWahl.end());
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return std::count(ende.sAus.begin(), ende.sAus.end(), '\n');
    };
    const auto iAlle = Hits({});
    const std::vector<std::string> avWahlen[] = {
        {"--anrede", "Frau"},
        {"--alter", "18..60"},
        {"--geburtstag", "01.01.2024..30.06.2024"},
        {"--plz", "50667"},
        {"--strasse", ""},
        {"--letzter-besuch", "01.01.2024..30.06.2024"},
        {"--ueberweiser", ""},
        {"--hausarzt", ""},
        {"--ohne-leistung", "01.01.2024..31.12.2024"},
        {"--recall", "*"},
        {"--recall", ""},
        {"--karte", "01.01.2024..31.03.2024"},
        {"--kasse", "keine"},
        {"--goart", "q"},
        {"--leistung", "13a"},
        {"--abrart", "z"},
        {"--status", "abgerechnet"},
        {"--karte", "01.01.2024..31.12.2024", "--karte-fehlt"},
        {"--mfr", "1"},
        {"--rsa"},
        {"--pwlart", "a"},
        {"--selektion", "zzz"},
        {"--anamnese", "zzz"},
    };
    for (const auto & vWahl : avWahlen)
        EXPECT_LT(Hits(vWahl), iAlle) << vWahl.front() << (vWahl.size() > 1 ? " " + vWahl[1] : "");
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
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", fall.pSql);
        const SProgrammende ende = Laufe("explain b.db --patient " + std::string(fall.pWahl));
        EXPECT_EQ(ende.iCode, 0) << fall.pWahl << '\n' << ende.sFehler;
        EXPECT_NE(ende.sAus.find(fall.sSoll), std::string::npos) << fall.pSql << ' ' << fall.pWahl << '\n'
                                                                 << ende.sAus;
    }
}

TEST_F(CLaufTest, ExplainRefusesWhatItCannotExplain) {
    const auto Erklaere = [this](const std::string & sWahl) {
        const SProgrammende ende = Laufe("explain a.db --patient " + sWahl);
        EXPECT_EQ(ende.iCode, 1) << sWahl;
        return ende.sFehler;
    };
    EXPECT_EQ(Erklaere("99 --datum 05.03.2024"), "Einen Patienten \"99\" gibt es nicht.\n");
    const std::string sNichts = "An diesem Tag hat der Patient keine solche Leistung.\n";
    EXPECT_EQ(Erklaere("1001 --datum 06.03.2024"), sNichts);
    EXPECT_EQ(Erklaere("1001 --datum 05.03.2024 --lst 89"), sNichts);

    // A page of treatments is overwritten that the walk comes to before the day.
    Sql("a.db", "UPDATE BEH SET TEXT = 'zu überschreiben' WHERE PATNR = '      1011' AND DATUM < '20240605'");
    const std::string sInhalt = Inhalt("a.db");
    const auto iStelle = sInhalt.find("zu überschreiben");
    ASSERT_NE(iStelle, std::string::npos);
    std::fstream(Pfad("a.db"), std::ios::in | std::ios::out | std::ios::binary)
            .seekp(static_cast<std::streamoff>(iStelle / 8192 * 8192))
        << std::string(60, '\xff');
    EXPECT_EQ(Erklaere("1011 --datum 05.06.2024"), "Die Behandlungen sind nicht vollständig lesbar.\n");
}

// ---- in the process, with a user who cancels

TEST(CLauf, ACancelledRunKeepsWhatItHas) {
    CRekorder rekorder;
    const COberflaecheErsatz ersatz(rekorder);
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    ASSERT_EQ(ErzeugeMuster(*pSpeicher, {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
    dbDatabase.Verbinde(pSpeicher);
    dbDatabaseRO.Verbinde(pSpeicher);
    const auto Laufe = [&](int iAntwort) {
        CStatAccu accu;
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        rekorder.m_iAbbruchAb = static_cast<int>(rekorder.m_vSchritte.size()) + 1;
        rekorder.m_vAntworten = {iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA};
        CLauf lauf(accu, SLaufauftrag());
        const ELauf eLauf = lauf.Laufe();
        return std::pair(eLauf, accu.m_vBehHits.size());
    };
    const auto [eJa, iJa] = Laufe(SOLLICH_JA);
    EXPECT_EQ(eJa, ELauf::Abgebrochen);
    EXPECT_GT(iJa, 400U);
    EXPECT_LT(iJa, 513U);
    const auto [eNein, iNein] = Laufe(0);
    EXPECT_EQ(eNein, ELauf::Fertig);
    EXPECT_GT(iNein, 1200U);
    EXPECT_EQ(EntlieheneRSets(), 0);
    dbDatabase.Verbinde(nullptr);
    dbDatabaseRO.Verbinde(nullptr);
}

// ---- the README's examples

TEST_F(CProgrammTest, TheReadmeShowsWhatTheProgramSays) {
    std::ifstream ein(std::filesystem::path(ORVOSTATBS_SOURCE_DIR) / "README.md");
    std::string sZeile;
    while (std::getline(ein, sZeile) && !sZeile.starts_with("$ orvostat"))
        ;
    int iBeispiele = 0;
    while (sZeile.starts_with("$ orvostat ")) {
        const std::string sBefehl = sZeile.substr(11);
        std::string sSoll;
        while (std::getline(ein, sZeile) && !sZeile.starts_with("$ ") && sZeile != "```")
            sSoll += sZeile + '\n';
        EXPECT_EQ(Laufe(sBefehl).sAus, sSoll) << sBefehl;
        ++iBeispiele;
    }
    EXPECT_EQ(iBeispiele, 3);
}

} // namespace
} // namespace orvostat
