#include "orvostatbs/calendar/Holiday.h"

#include "orvostatbs/calendar/WPFApplication.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/hvm/HVMCf.h"
#include "support/Praxis.h"
#include "support/Wert.h"

#include <gtest/gtest.h>

namespace orvostat {

namespace {

CHoliday Alle() {
    CHoliday kalender;
    for (const auto pSchalter : FEIERTAGSSCHALTER)
        kalender.*pSchalter = true;
    return kalender;
}

// The days of the switches in the order of the practice's setting, each a Monday to Friday; 1 for a working day.
std::string Schaltertage(const CHoliday & kalender) {
    std::string s;
    for (const char * p : {"20241101", "20241120", "20240530", "20241224", "20250106", "20240815", "20241031",
                           "20240212", "20241231"})
        s += kalender.IstArbeitstag(CString(p)) ? '1' : '0';
    return s;
}

// ---- feasts

TEST(Holiday, OsternUndBeweglicheFeste) {
    std::string s;
    for (const char * p : {"2025", "1981", "2038", "1583", "1818", "1943", "1954", "1666", "4099"})
        s += CHoliday::OsternImJahr(CString(p)).Utf8() + " ";
    EXPECT_EQ(s, "20250420 19810419 20380425 15830410 18180322 19430425 19540418 16660425 40990419 ");
    s.clear();
    for (const auto fFest : {&CHoliday::GetRosenmontag, &CHoliday::GetKarfreitag, &CHoliday::GetOstermontag,
                             &CHoliday::GetChristiHimmelfahrt, &CHoliday::GetPfingstmontag,
                             &CHoliday::GetFronleichnam, &CHoliday::GetBussBettag})
        s += Werte(fFest("2024"), fFest("20x4")) + " ";
    EXPECT_EQ(s, "20240212| 20240329| 20240401| 20240509| 20240520| 20240530| 20241120| ");
    // The last possible day and the first.
    EXPECT_EQ(Werte(CHoliday::GetBussBettag("2023"), CHoliday::GetBussBettag("2022"),
                    CHoliday::GetRosenmontag("9999999")),
              "20231122|20221116|");
}

// ---- working days

TEST(Holiday, WochentageEntscheidenZuerstUndInitStelltAllesZurueck) {
    CHoliday kalender = Alle();
    kalender.m_vFerien.push_back({"20240101", "20240102", ""});
    kalender.m_abWochentag[0] = kalender.m_abWochentag[7] = true;
    kalender.m_abWochentag[4] = false;
    EXPECT_TRUE(kalender.IstArbeitstag("20240706")); // a Saturday
    EXPECT_FALSE(kalender.IstArbeitstag("20240707") || kalender.IstArbeitstag("20240703"));
    EXPECT_EQ(Schaltertage(kalender), "000000000");
    kalender.Init();
    EXPECT_EQ(Schaltertage(kalender), "111111111");
    EXPECT_TRUE(kalender.m_vFerien.empty() && kalender.IstArbeitstag("20240703"));
    EXPECT_FALSE(kalender.IstArbeitstag("20240706") || kalender.IstArbeitstag("20240707") ||
                 kalender.IstArbeitstag(""));
}

TEST(Holiday, GetAnzArbeitsTage) {
    CHoliday kalender;
    const auto Tage = [&](const char * pVon, const char * pBis) {
        return kalender.GetAnzArbeitsTage(CString(pVon), CString(pBis));
    };
    EXPECT_EQ(Werte(Tage("20240101", "20241231"), Tage("20241230", "20250103"), Tage("20240228", "20240301"),
                    Tage("20240703", "20240703"), Tage("20240704", "20240703"), Tage("99991201", "99999999"),
                    Tage("20240230", "20240310"), Tage("", "20240310"), Tage("20240301", "")),
              "253|4|3|1||23|||");
    EXPECT_EQ(Alle().GetAnzArbeitsTage("20241028", "20241103"), 3); // without 31 October and 1 November
    kalender.m_vFerien = {{"20240701", "20240703", "Sommer"_t}, {"20240705", "20240712", ""}};
    EXPECT_EQ(Tage("20240701", "20240714"), 1);
    EXPECT_TRUE(kalender.IstArbeitstag("20240702")) << "holidays of the practice count in numbers only";
}

TEST(Holiday, NaechsterArbeitstag) {
    CHoliday ohneTage;
    std::ranges::fill(ohneTage.m_abWochentag, false);
    const auto Ab = [](CString sDatum, const CHoliday & kalender = {}) {
        return kalender.NaechsterArbeitstag(sDatum) ? sDatum : CString();
    };
    EXPECT_EQ(Werte(Ab("20240703"), Ab("20240706"), Ab("20240329"), Ab("20241231", Alle()),
                    Ab("20240703", ohneTage), Ab("20240231"), Ab("06.07.2024"), Ab("99991231", Alle())),
              "20240703|20240708|20240402|20250102|20240703|20240231|06.07.2024|99991231");
}

// ---- holidays of a period

TEST(Holiday, GetAllHolidaysInIhrerReihenfolgeUndImZeitraum) {
    std::vector<CFerien> v = {{"19990101", "19990101", ""}}; // stays
    Alle().GetAllHolidays(v, "20240101", "20241231");
    CHoliday().GetAllHolidays(v, "20231226", "20240101");
    CHoliday().GetAllHolidays(v, "20240502", "20240501");
    CHoliday().GetAllHolidays(v, "20240301", "");
    CString sTage;
    for (const CFerien & ferien : v)
        sTage += ferien.m_sVon + (ferien.m_sBis == ferien.m_sVon ? ' ' : '!');
    EXPECT_EQ(sTage, "19990101 20241101 20241120 20240530 20240106 20240815 20241031 20241224 20241231 "
                     "20240212 20240329 20240401 20240509 20240520 20241225 20241226 20240101 20240501 "
                     "20241003 20231226 20240101 "_t);
    std::string s;
    v = {{"20240705", "20240712", ""}, {"20240101", "20240101", ""}};
    for (const char * p : {"20240705", "20240712", "20240101", "20240704", "20240713"})
        s += CHoliday::DayInHoliday(v, CString(p)) ? '1' : '0';
    EXPECT_EQ(s, "11100");
}

// ---- lengths

TEST(Holiday, LaengenVonZeitraeumen) {
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzMonate("20240101", "20241231"), 12.0);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzMonate("20231115", "20240210"), 16.0 / 30 + 2 + 10.0 / 29);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzMonate("20240110", "20240119"), 10.0 / 31);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzQuartale("20240210", "20240219"), 10.0 / 91);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzQuartale("20240215", "20240515"), 46.0 / 91 + 45.0 / 91);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzQuartale("20231101", "20240815"), 61.0 / 92 + 2 + 46.0 / 92);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzJahre("20240131", "20240301"), (1.0 + 29 + 1) / 366);
    EXPECT_DOUBLE_EQ(CHoliday::GetAnzJahre("20230701", "20250630"), 184.0 / 365 + 1 + 181.0 / 365);
    EXPECT_EQ(CHoliday::GetAnzQuartale("", ""), 0.0);
    EXPECT_EQ(CHoliday::GetAnzJahre("20249901", "20249930"), 0.0);
}

// ---- with the practice's settings

class HolidayPool : public CPraxisTest {
protected:
    static void Setze(const std::string & sKuerzel, const std::string & sWert) {
        Schreibe("PARPOOL GRUPPE=\" 53\" KUERZEL=\"" + sKuerzel + "\" WERT=\"" + sWert + "\"");
    }
};

TEST_F(HolidayPool, JedeStelleDerReiheGiltFuerIhrenTag) {
    CHoliday kalender = Alle();
    EXPECT_TRUE(kalender.ReadFeiertage());
    EXPECT_EQ(Schaltertage(kalender), "000000000") << "without the setting the switches stay";
    std::string s;
    for (const char * pWert : {"100000000", "010101010", "001000001", "000010100", "7x 9", ""}) {
        CTParPool pool(dbDatabase);
        pool.GetAll();
        pool.DeleteRows();
        Setze("feiertag", pWert);
        EXPECT_TRUE(kalender.ReadFeiertage());
        s += Schaltertage(kalender) + " ";
    }
    // No number is 0, and so is what is missing.
    EXPECT_EQ(s, "011111111 101010101 110111110 111101011 011011111 111111111 ");
}

TEST_F(HolidayPool, EinFehlerDesSpeichersLaesstAllesStehen) {
    Setze("feiertag", "111111111");
    m_praxis.Lesend().FehlerBei(1);
    CHoliday kalender;
    EXPECT_FALSE(kalender.ReadFeiertage() || kalender.m_bAllerheiligen);
    m_praxis.Lesend().FehlerBei(1);
    CString sDatum = "20240706";
    EXPECT_FALSE(NaechsterArbeitstag(31, sDatum));
    EXPECT_EQ(sDatum, "20240706"_t);
}

TEST_F(HolidayPool, FreieFunktionMitMaske) {
    Setze("feiertag", "100000000"); // 1 November
    const auto Ab = [](int iMaske, CString sDatum) {
        return NaechsterArbeitstag(iMaske, sDatum) ? sDatum : sDatum + "!";
    };
    EXPECT_EQ(
        Werte(Ab(31, "20240706"), Ab(31, "20240330"), Ab(31, "20241101"), Ab(1, "20240702"),
              Ab(2, "20240703"), Ab(4, "20240704"), Ab(8, "20240705"), Ab(16, "20240706"), Ab(64, "20240707"),
              Ab(128, "20240701"), Ab(31, "20240231")),
        "20240708|20240402|20241104|20240708|20240709|20240710|20240711|20240712|20240713|20240707|20240231");
    EXPECT_EQ(Werte(Ab(0, "20240706"), Ab(32, "20240706"), Ab(256, "20240706")),
              "20240706!|20240706!|20240706!");
}

TEST_F(HolidayPool, SetWPFHolidaysSchicktFeiertageUndUrlaube) {
    struct CAnzeige : CFeiertagsanzeige {
        void SetHolidays(const CString & sFeiertage,
                         const std::vector<std::pair<CString, CString>> & vPerioden) override {
            s += sFeiertage.Utf8();
            for (const auto & [sVon, sBis] : vPerioden)
                s += " " + Werte(sVon, sBis);
        }
        std::string s;
    } anzeige;
    Setze("feiertag", "1010x");
    Setze("ur- 120250", "2025040120250405");
    Setze("ur- 120240", "2024070120240712");
    Setze("ur- 220240", "2024010120240112"); // of another owner
    dbMdId = " 1";
    SetWPFHolidays(); // to nobody
    const CFeiertagsanzeigeErsatz ersatz(anzeige);
    SetWPFHolidays();
    EXPECT_EQ(anzeige.s, "1010x 20240701|20240712 20250401|20250405");
}

} // namespace

} // namespace orvostat
