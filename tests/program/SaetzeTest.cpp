#include "Programmlauf.h"

#include <filesystem>
#include <fstream>
#include <regex>

namespace orvostat {
namespace {

class CSaetzeTest : public CProgrammTest {
protected:
    CSaetzeTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }

    // What a command shows from its first table of sums on.
    std::string Summen(const std::string & sBefehl) {
        const SProgrammende ende = Laufe(sBefehl);
        EXPECT_EQ(ende.iCode, 0) << sBefehl << '\n' << ende.sFehler;
        return ende.sAus.substr(std::min(ende.sAus.find("Nach "), ende.sAus.size()));
    }
    void Schreibe(const std::string & sName, const std::string & sInhalt) const {
        std::ofstream(Pfad(sName), std::ios::binary) << sInhalt;
    }
};

TEST_F(CSaetzeTest, AReopenedStatisticHasTheSumsOfItsRun) {
    for (const char * pWahl :
         {"", " --von 01.06.2024 --nebenakten", " --im-bestand", " --layout tp", " --layout ls"}) {
        const bool bBestand = std::string(pWahl).find("bestand") != std::string::npos;
        const std::string sOrt = bBestand ? " --im-bestand" : " --daten d/e";
        const std::string sLauf = "run a.db" + std::string(pWahl) + (bBestand ? "" : sOrt) + " --speichern s";
        const std::string sVorher = Summen(sLauf);
        EXPECT_EQ(Summen("oeffnen a.db s" + sOrt), sVorher) << pWahl;
        EXPECT_EQ(Laufe("vergleichen a.db s" + sOrt).iCode, 0) << pWahl;
        EXPECT_EQ(Laufe("pruefen a.db s" + sOrt).iCode, 0) << pWahl;
        EXPECT_EQ(Laufe("leistungen a.db --check --aus s" + sOrt).iCode, 0) << pWahl;
    }
    const std::string sHits = Laufe("run a.db --hits --format csv --ohne-kopf --speichern h").sAus;
    EXPECT_EQ(Laufe("oeffnen a.db h --hits --format csv --ohne-kopf").sAus, sHits);
    EXPECT_NE(Laufe("gespeichert a.db").sAus.find("\nh     LAUF  1"), std::string::npos);
}

TEST_F(CSaetzeTest, WhatHasChangedSinceIsNamed) {
    ASSERT_EQ(Laufe("run a.db --speichern s").iCode, 0);
    const std::string sZeile =
        "(SELECT LFD FROM BEH WHERE LSTNR <> '' AND BETRAG = '' ORDER BY LFD LIMIT 1 OFFSET ";
    Sql("a.db", "UPDATE BEH SET ANZAHL = 'z700' WHERE LFD = " + sZeile +
                    "3); DELETE FROM BEH WHERE LFD = " + sZeile + "9)");
    ASSERT_EQ(Laufe("run a.db --speichern t").iCode, 0);
    for (const char * pBefehl : {"vergleichen a.db s", "vergleichen a.db s t"}) {
        const SProgrammende ende = Laufe(pBefehl);
        EXPECT_EQ(ende.iCode, 1);
        EXPECT_TRUE(std::regex_search(ende.sAus, std::regex("anders .*Menge 1\\.00.*Menge 7\\.00\nfort ")))
            << ende.sAus;
        EXPECT_NE(ende.sAus.find("0 dazu, 1 fort, 1 anders."), std::string::npos) << ende.sAus;
    }
    EXPECT_NE(Laufe("pruefen a.db s").sAus.find("geändert: 0 dazu, 1 fort, 1 anders."), std::string::npos);
}

// Each row is done to a whole set; the message is what pruefen says.
TEST_F(CSaetzeTest, DamageAndHandsAreTold) {
    ASSERT_EQ(Laufe("run a.db --speichern s").iCode, 0);
    const std::string sDaten = Inhalt("stat/s.SVE");
    const std::string sAuswahl = Inhalt("stat/s.ISV");
    const auto Ersetzt = [](std::string s, const std::string & sAlt, const std::string & sNeu) {
        return s.replace(s.find(sAlt), sAlt.size(), sNeu);
    };
    const std::size_t iZeile2 = sDaten.find('\n') + 1;
    const std::string sDritte = sDaten.substr(sDaten.find('\n', iZeile2) + 1);
    const struct {
        std::string sDaten, sAuswahl, sErwartet;
    } aFaelle[] = {
        {sDaten, sAuswahl, ""},
        {Ersetzt(sDaten, ";e", ";f"), sAuswahl, "ist von Hand geändert, in den tausend Zeilen ab Zeile 1."},
        {sDaten, Ersetzt(sAuswahl, "DatumVon=", "DatumVon=01.02.2024"),
         "ist in ihrer Auswahl von Hand geändert."},
        {Ersetzt(sDaten, "\nH;", "\nH"), sAuswahl, "ist beschädigt ab Zeile 2."},
        {sDaten.substr(0, iZeile2 + 10), sAuswahl, "ist beschädigt ab Zeile 2."},
        {sDaten.substr(0, iZeile2), sAuswahl, "ist beschädigt ab Zeile 1."},
        {sDaten.substr(0, iZeile2) + sDritte, sAuswahl, "ist beschädigt ab Zeile 1."},
        {sDaten, Ersetzt(sAuswahl, "Layout=alles", "Layout=fremd"),
         "ist nicht von diesem Programm geschrieben."},
        {sDaten, Ersetzt(sAuswahl, "Praxis=", "Abfrage001=\"--rsa\"\nPraxis="),
         "ist in ihrer Auswahl von Hand geändert."},
        {sDaten, sAuswahl.substr(0, sAuswahl.find("Block0001")),
         "ist beschädigt: ihre Auswahldatei ist unvollständig."},
        {"", sAuswahl, "ist beschädigt ab Zeile 1."},
    };
    for (const auto & fall : aFaelle) {
        Schreibe("stat/s.SVE", fall.sDaten);
        Schreibe("stat/s.ISV", fall.sAuswahl);
        const SProgrammende ende = Laufe("pruefen a.db s --ohne-lauf");
        EXPECT_EQ(ende.iCode, fall.sErwartet.empty() ? 0 : 1) << fall.sErwartet;
        const std::string sFehler =
            fall.sErwartet.empty() ? "" : "Die Statistik \"s\" " + fall.sErwartet + '\n';
        EXPECT_EQ(ende.sFehler, sFehler);
        EXPECT_EQ(Laufe("oeffnen a.db s").sFehler, sFehler); // which shows what is only edited
    }
    std::filesystem::remove(Pfad("stat/s.ISV"));
    EXPECT_EQ(Laufe("oeffnen a.db s").sFehler, "Die Statistik \"s\" ist unfertig.\n");
    EXPECT_NE(Laufe("gespeichert a.db").sAus.find("unfertig"), std::string::npos);
    EXPECT_EQ(Laufe("oeffnen a.db fehlt").sFehler, "Es gibt keine gespeicherte Statistik \"fehlt\".\n");
}

TEST_F(CSaetzeTest, AFailedWriteLeavesTheEarlierSet) {
    ASSERT_EQ(Laufe("run a.db --patient 1001 --speichern s").iCode, 0);
    const std::string sVorher = Inhalt("stat/s.SVE") + Inhalt("stat/s.ISV");
    for (const std::string & sName :
         {std::string(), std::string("a/b"), std::string("CON"), std::string("lpt1.x"), std::string(".x"),
          std::string("x "), std::string("a*b"), std::string(65, 'a'), std::string("a\tb")}) {
        const SProgrammende ende = Laufe({"run", "a.db", "--speichern", sName});
        EXPECT_EQ(ende.iCode, 1) << sName;
        EXPECT_NE(ende.sFehler.find("ist kein Name für eine Statistik: "), std::string::npos) << ende.sFehler;
    }
    EXPECT_EQ(Laufe("run a.db --speichern s --daten a.db").iCode, 1);
    EXPECT_TRUE(Inhalt("stat/s.SVE") + Inhalt("stat/s.ISV") == sVorher);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Pfad("stat")), {}), 2);
    std::filesystem::create_directory(Pfad("stat/d.ISV"));
    EXPECT_NE(Laufe("run a.db --speichern d").sFehler.find("ist ein Verzeichnis"), std::string::npos);
    // What a program that was killed between two renamings has left.
    std::filesystem::rename(Pfad("stat/s.ISV"), Pfad("stat/s.ISV.alt"));
    std::filesystem::rename(Pfad("stat/s.SVE"), Pfad("stat/s.SVE.alt"));
    Schreibe("stat/s.SVE", "neu");
    EXPECT_EQ(Laufe("pruefen a.db s --ohne-lauf").iCode, 0);
    EXPECT_TRUE(Inhalt("stat/s.SVE") + Inhalt("stat/s.ISV") == sVorher);
}

TEST_F(CSaetzeTest, AHandOverIsReadByGermanNumbers) {
    ASSERT_EQ(Laufe("run a.db --patient 1001 --speichern ü").iCode, 0);
    Schreibe("calc", "");
    std::filesystem::permissions(Pfad("calc"), std::filesystem::perms::owner_all);
    const SProgrammende ende = Laufe("tabelle a.db ü --nach t --programm calc");
    const std::string sMappe = "\" \"" + Pfad("t/Orvo2Excel.xls").string() + "\"\n";
    EXPECT_TRUE(ende.sAus.ends_with(sMappe)) << ende.sAus << ende.sFehler;
    EXPECT_NE(Inhalt("t/Orvo2Excel.xls").find("/%C3%BC.CSV\""), std::string::npos);
    EXPECT_TRUE(std::regex_search(Inhalt("t/ü.CSV"),
                                  std::regex("\nH;      1001;.*;\\d\\d\\.\\d\\d\\.2024;.*;\\d+,\\d\\d;")));
    EXPECT_NE(Inhalt("t/ü.INI").find("\nPatient=1001\n"), std::string::npos);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Pfad("t")), {}), 3);
    EXPECT_NE(Laufe("tabelle a.db ü --nach t --programm calc").sFehler.find("gibt es schon"),
              std::string::npos);
}

} // namespace
} // namespace orvostat
