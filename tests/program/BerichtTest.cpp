#include "Programmlauf.h"

#include <nlohmann/json.hpp>

namespace orvostat {
namespace {

using nlohmann::json;

class CBerichtTest : public CProgrammTest {
protected:
    void SetUp() override { ASSERT_EQ(Laufe("sample a.db --patients 60 --years 2").iCode, 0); }

    json Zahlen(const std::string & sWahl) {
        const SProgrammende ende = Laufe("bericht a.db --format json " + sWahl);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return json::parse(ende.sAus, nullptr, false);
    }
    static json Tafel(const json & bericht, const std::string & sTitel) {
        for (const json & tafel : bericht["tabellen"])
            if (tafel["titel"].get<std::string>().starts_with(sTitel)) return tafel;
        return {};
    }
    static long Cent(const json & zahl) { return std::lround(zahl.get<double>() * 100); }
};

// All ways to cut the turnover give the same whole, and it is that of the service statistic.
TEST_F(CBerichtTest, TheTurnoverIsTheSameByEachCut) {
    const std::string sWahl = "--von 01.01.2025 --bis 31.12.2025";
    const json bericht = Zahlen(sWahl + " --vorjahr");
    const json leistungen = json::parse(Laufe("leistungen a.db --format json " + sWahl).sAus);
    const long lUmsatz = Cent(Tafel(bericht, "Kennzahlen")["zeilen"][0]["Wert"]);
    EXPECT_EQ(lUmsatz, Cent(Tafel(leistungen, "Praxis")["gesamt"]["Gesamt EUR"]));
    EXPECT_GT(lUmsatz, 0);
    for (const char * pTitel : {"Umsatz nach Monat", "Umsatz nach Behandler", "Umsatz nach Kostenträger",
                                "Umsatz nach Statistikart"}) {
        const json tafel = Tafel(bericht, pTitel);
        long lSumme = 0;
        for (const json & zeile : tafel["zeilen"])
            lSumme += Cent(zeile["Gesamt EUR"]);
        const long lZeilen = static_cast<long>(tafel["zeilen"].size());
        EXPECT_EQ(Cent(tafel["gesamt"]["Gesamt EUR"]), lUmsatz) << pTitel;
        EXPECT_NEAR(static_cast<double>(lSumme), static_cast<double>(lUmsatz), static_cast<double>(lZeilen))
            << pTitel;
    }
    const json vorjahr = Zahlen("--von 01.01.2024 --bis 31.12.2024");
    EXPECT_EQ(Tafel(bericht, "Vergleich: Vorjahr")["zeilen"][0]["Vergleich"],
              Tafel(vorjahr, "Kennzahlen")["zeilen"][0]["Wert"]);
    EXPECT_EQ(Tafel(bericht, "Monate im Vergleich")["zeilen"][4]["Vergleichsmonat"], "2024-05");
}

// Of a saved statistic the same, but for what only a run knows.
TEST_F(CBerichtTest, ASavedStatisticGivesTheSameFigures) {
    const std::string sWahl = "--von 01.04.2025 --bis 20.05.2025";
    ASSERT_EQ(Laufe("run a.db --speichern q " + sWahl).iCode, 0);
    json lauf = Zahlen(sWahl + " --stichtag 20.05.2025")["tabellen"];
    json satz = Zahlen("--aus q --vergleich q --stichtag 20.05.2025")["tabellen"];
    EXPECT_EQ(satz[1]["zeilen"][0]["Änderung"], 0);
    satz.erase(satz.begin() + 1, satz.begin() + 3); // the comparison with itself
    ASSERT_EQ(lauf.size(), satz.size());
    for (std::size_t i = 0; i < lauf.size(); ++i)
        EXPECT_TRUE(lauf[i] == satz[i] || lauf[i]["titel"] == "Was nicht gezählt ist" ||
                    lauf[i]["titel"] == "Fehler nach Art" || lauf[i]["titel"] == "Zum Nachsehen")
            << lauf[i] << satz[i];
    EXPECT_EQ(Laufe("bericht a.db --aus q --behandler 1 -o b.html").iCode, 2);
}

// Beyond the limit and in a running quarter a service has the day on which it gets there, all others have none.
TEST_F(CBerichtTest, TheDayOfTheLimitIsOfTheRunningQuarterOnly) {
    const std::string sWahl = "--von 01.04.2025 --bis 20.05.2025 --grenze 60";
    const json laufend = Tafel(Zahlen(sWahl + " --stichtag 20.05.2025"), "Je 100 Fälle");
    int iUeber = 0;
    for (const json & zeile : laufend["zeilen"]) {
        const bool bUeber = zeile["Abweichung %"].get<double>() > 60;
        EXPECT_EQ(zeile["Hinweis"] == "über der Grenze", bUeber) << zeile;
        EXPECT_EQ(zeile["Grenze erreicht"].is_string(), bUeber) << zeile;
        if (bUeber) {
            EXPECT_LE(zeile["Grenze erreicht"], "2025-06-30");
            ++iUeber;
        }
    }
    EXPECT_GT(iUeber, 0);
    EXPECT_FALSE(Tafel(Zahlen(sWahl), "Je 100 Fälle")["zeilen"][0].contains("Grenze erreicht"));
}

TEST_F(CBerichtTest, ThePageEscapesTextsAndNamesPatientsOnDemandOnly) {
    Sql("a.db", "UPDATE GO SET GOTEXT = '<script>x</script>\"&'; UPDATE PAT SET PATNAME = 'Geheim<b>';");
    const std::string sWahl = "bericht a.db --von 01.01.2024 --bis 31.12.2024 --force -o ";
    ASSERT_EQ(Laufe(sWahl + "ohne.html").iCode, 0);
    ASSERT_EQ(Laufe(sWahl + "mit.html --mit-namen").iCode, 0);
    const std::string sOhne = Inhalt("ohne.html");
    EXPECT_EQ(sOhne.find("<script>x"), std::string::npos);
    EXPECT_NE(sOhne.find("&lt;script&gt;x&lt;/script&gt;&quot;&amp;"), std::string::npos);
    EXPECT_EQ(sOhne.find("GEHEIM"), std::string::npos);
    EXPECT_NE(Inhalt("mit.html").find("GEHEIM&lt;B&gt;"), std::string::npos);
    EXPECT_NE(sOhne.find("Permission is hereby granted"), std::string::npos);
    for (const char * pAussen : {"src=\"http", "href=\"http", "url(", "@import"})
        EXPECT_EQ(sOhne.find(pAussen), std::string::npos) << pAussen;
}

TEST_F(CBerichtTest, WhatCannotBeReportedIsRefused) {
    EXPECT_EQ(Laufe("bericht a.db").iCode, 2);
    EXPECT_EQ(Laufe("bericht a.db --vorjahr -o b.html").iCode, 1);
    EXPECT_EQ(Laufe("bericht a.db --aus nichts -o b.html").iCode, 1);
    EXPECT_EQ(Zahlen("--von 01.01.2030")["vollständig"], true);
    EXPECT_EQ(Dateien().find("b.html"), std::string::npos);
}

} // namespace
} // namespace orvostat
