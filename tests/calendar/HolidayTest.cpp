#include "orvostatbs/calendar/Holiday.h"

#include "orvostatbs/calendar/WPFApplication.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/hvm/HVMCf.h"
#include "support/Praxis.h"

#include <gtest/gtest.h>

namespace orvostat {

namespace {

using FLaenge = double (*)(const CString &, const CString &);

// The switches in the order of the practice's setting, each with its day in 2024 or 2025, a Monday to Friday.
constexpr struct {
    bool CHoliday::*pSchalter;
    CString sTag;
} SCHALTER[] = {{&CHoliday::m_bAllerheiligen, "20241101"},   {&CHoliday::m_bBussBettag, "20241120"},
                {&CHoliday::m_bFronleichnam, "20240530"},    {&CHoliday::m_bHeiligabend, "20241224"},
                {&CHoliday::m_bDreiKoenige, "20250106"},     {&CHoliday::m_bMariaHimmelfahrt, "20240815"},
                {&CHoliday::m_bReformationstag, "20241031"}, {&CHoliday::m_bRosenmontag, "20240212"},
                {&CHoliday::m_bSilvester, "20241231"}};

CHoliday Alle() {
    CHoliday kalender;
    for (const auto & schalter : SCHALTER)
        kalender.*schalter.pSchalter = true;
    return kalender;
}

// ---- feasts

TEST(Holiday, OsternImJahr) {
    constexpr struct {
        CString sJahr, sOstern;
    } FAELLE[] = {{"2024", "20240331"}, {"2025", "20250420"}, {"1981", "19810419"}, {"2038", "20380425"},
                  {"1583", "15830410"}, {"1818", "18180322"}, {"1943", "19430425"}, {"1954", "19540418"},
                  {"1666", "16660425"}, {"4099", "40990419"}};
    for (const auto & fall : FAELLE)
        EXPECT_EQ(CHoliday::OsternImJahr(fall.sJahr), fall.sOstern);
}

TEST(Holiday, BeweglicheFeste) {
    CString sFeste;
    for (const auto fFest : {&CHoliday::GetRosenmontag, &CHoliday::GetKarfreitag, &CHoliday::GetOstermontag,
                             &CHoliday::GetChristiHimmelfahrt, &CHoliday::GetPfingstmontag,
                             &CHoliday::GetFronleichnam, &CHoliday::GetBussBettag}) {
        sFeste += fFest("2024") + " ";
        EXPECT_EQ(fFest("20x4"), CString());
    }
    EXPECT_EQ(sFeste, "20240212 20240329 20240401 20240509 20240520 20240530 20241120 "_t);
    EXPECT_EQ(CHoliday::GetBussBettag("2023"), CString("20231122")); // the last possible day
    EXPECT_EQ(CHoliday::GetBussBettag("2022"), CString("20221116")); // the first
    EXPECT_EQ(CHoliday::GetRosenmontag("9999999"), CString());
}

// ---- working days

TEST(Holiday, NachInit) {
    CHoliday kalender = Alle();
    kalender.m_vFerien.push_back({"20240101", "20240102", ""});
    kalender.m_abWochentag[0] = kalender.m_abWochentag[7] = true;
    kalender.Init();
    EXPECT_TRUE(kalender.m_vFerien.empty());
    for (const auto & [pSchalter, sTag] : SCHALTER)
        EXPECT_TRUE(kalender.IstArbeitstag(sTag)) << sTag.Utf8();
    for (const CString & sTag : {CString("20240706"), CString("20240707")})
        EXPECT_FALSE(kalender.IstArbeitstag(sTag)) << sTag.Utf8();
}

// Each switch makes its own day a holiday and no other one.
TEST(Holiday, JederSchalterGiltFuerSeinenTag) {
    for (const auto & schalter : SCHALTER) {
        CHoliday kalender;
        kalender.*schalter.pSchalter = true;
        for (const auto & anderer : SCHALTER)
            EXPECT_EQ(kalender.IstArbeitstag(anderer.sTag), anderer.pSchalter != schalter.pSchalter)
                << schalter.sTag.Utf8() << " switched, " << anderer.sTag.Utf8() << " asked";
    }
}

TEST(Holiday, GetAnzArbeitsTage) {
    const struct {
        CString sVon, sBis;
        int iTage;
    } FAELLE[] = {{"20240101", "20241231", 253}, {"20241230", "20250103", 4}, // over the turn of the year
                  {"20240228", "20240301", 3},   {"20240703", "20240703", 1}, {"20240704", "20240703", 0},
                  {"99991201", "99999999", 23}, // to the calendar's end
                  {"20240230", "20240310", 0},   {"", "20240310", 0},         {"20240301", "", 0}};
    for (const auto & fall : FAELLE)
        EXPECT_EQ(CHoliday().GetAnzArbeitsTage(fall.sVon, fall.sBis), fall.iTage)
            << fall.sVon.Utf8() << " to " << fall.sBis.Utf8();
    EXPECT_EQ(Alle().GetAnzArbeitsTage("20241028", "20241103"), 3); // without 31 October and 1 November
}

TEST(Holiday, FerienZaehlenMitBeidenEndenUndNurInDerAnzahl) {
    CHoliday kalender;
    kalender.m_vFerien = {{"20240701", "20240703", "Sommer"_t}, {"20240705", "20240712", ""}};
    EXPECT_EQ(kalender.GetAnzArbeitsTage("20240628", "20240715"),
              3); // the day before, the one between, the one after
    EXPECT_TRUE(kalender.IstArbeitstag("20240702"));
}

TEST(Holiday, NaechsterArbeitstag) {
    CHoliday ohneTage;
    std::ranges::fill(ohneTage.m_abWochentag, false);
    const struct {
        CHoliday kalender;
        CString sAb, sErwartet;
    } FAELLE[] = {{CHoliday(), "20240703", "20240703"}, {CHoliday(), "20240706", "20240708"},
                  {CHoliday(), "20240329", "20240402"}, // Good Friday to Easter Monday
                  {Alle(), "20241231", "20250102"},     {ohneTage, "20240703", "20240703"},
                  {CHoliday(), "20240231", "20240231"}, {CHoliday(), "06.07.2024", "06.07.2024"},
                  {Alle(), "99991231", "99991231"}}; // a holiday, and no day behind it
    for (const auto & fall : FAELLE) {
        CString sDatum = fall.sAb;
        EXPECT_TRUE(fall.kalender.NaechsterArbeitstag(sDatum));
        EXPECT_EQ(sDatum, fall.sErwartet) << "from " << fall.sAb.Utf8();
    }
}

// ---- holidays of a period

// The days, one behind the other.
CString Tage(const std::vector<CFerien> & v) {
    CString sTage;
    for (const CFerien & ferien : v) {
        sTage += ferien.m_sVon + " ";
        EXPECT_EQ(ferien.m_sBis, ferien.m_sVon);
    }
    return sTage;
}

TEST(Holiday, GetAllHolidaysInIhrerReihenfolge) {
    std::vector<CFerien> vOut = {{"19990101", "19990101", ""}}; // stays
    Alle().GetAllHolidays(vOut, "20240101", "20241231");
    EXPECT_EQ(Tage(vOut), "19990101 20241101 20241120 20240530 20240106 20240815 20241031 20241224 20241231 "
                          "20240212 20240329 20240401 20240509 20240520 20241225 20241226 20240101 20240501 "
                          "20241003 "_t);
}

TEST(Holiday, GetAllHolidaysNurImZeitraum) {
    std::vector<CFerien> vOut;
    CHoliday().GetAllHolidays(vOut, "20231226", "20240101");
    CHoliday().GetAllHolidays(vOut, "20240502", "20240501");
    CHoliday().GetAllHolidays(vOut, "20240301", "");
    EXPECT_EQ(Tage(vOut), "20231226 20240101 "_t);
}

// ---- lengths

TEST(Holiday, LaengenVonZeitraeumen) {
    constexpr struct {
        FLaenge fLaenge;
        CString sVon, sBis;
        double fErwartet;
    } FAELLE[] = {
        {&CHoliday::GetAnzMonate, "20240101", "20241231", 12.0},
        {&CHoliday::GetAnzMonate, "20231115", "20240210", 16.0 / 30 + 2 + 10.0 / 29},
        {&CHoliday::GetAnzMonate, "20240110", "20240119", 10.0 / 31},
        {&CHoliday::GetAnzQuartale, "20240210", "20240219", 10.0 / 91},
        {&CHoliday::GetAnzQuartale, "20240215", "20240515", 46.0 / 91 + 45.0 / 91},
        {&CHoliday::GetAnzQuartale, "20231101", "20240815", 61.0 / 92 + 2 + 46.0 / 92},
        {&CHoliday::GetAnzJahre, "20240131", "20240301", (1.0 + 29 + 1) / 366},
        {&CHoliday::GetAnzJahre, "20230701", "20250630", 184.0 / 365 + 1 + 181.0 / 365},
        {&CHoliday::GetAnzQuartale, "", "", 0.0},
        {&CHoliday::GetAnzJahre, "20249901", "20249930", 0.0},
    };
    for (const auto & fall : FAELLE)
        EXPECT_DOUBLE_EQ(fall.fLaenge(fall.sVon, fall.sBis), fall.fErwartet)
            << fall.sVon.Utf8() << " to " << fall.sBis.Utf8() << ", line of " << fall.fErwartet;
}

// ---- with the practice's settings

class HolidayPool : public CPraxisTest {
protected:
    static void Schreibe(const CString & sKuerzel, const CString & sWert) {
        CTParPool pool(dbDatabase);
        pool.m_GRUPPE = "53";
        pool.m_KUERZEL = sKuerzel;
        pool.m_WERT = sWert; // of several lines
        ASSERT_EQ(pool.Write(), 0);
    }
};

TEST_F(HolidayPool, ReadFeiertageLiestDieStellenDerReihe) {
    CHoliday kalender = Alle();
    EXPECT_TRUE(kalender.ReadFeiertage());
    EXPECT_TRUE(kalender.m_bRosenmontag) << "without the setting the switches stay";
    for (const char * pWert : {"100000000", "010101010", "001000001", "7x 9", ""}) {
        SCOPED_TRACE(pWert);
        CTParPool pool(dbDatabase);
        pool.GetAll();
        pool.DeleteRows();
        Schreibe("feiertag"_t, CString(pWert));
        EXPECT_TRUE(kalender.ReadFeiertage());
        for (int i = 0; i < 9; ++i) // no number is 0, and so is what is missing
            EXPECT_EQ(kalender.*SCHALTER[i].pSchalter,
                      CString("123456789").Find(CString(pWert).GetAt(i)) >= 0)
                << i;
    }
}

TEST_F(HolidayPool, EinFehlerDesSpeichersLaesstAllesStehen) {
    Schreibe("feiertag"_t, "111111111"_t);
    CFehlerspeicher * const pFehler = &m_praxis.Lesend();
    pFehler->FehlerBei(1);
    CHoliday kalender;
    EXPECT_FALSE(kalender.ReadFeiertage());
    EXPECT_FALSE(kalender.m_bAllerheiligen);

    pFehler->FehlerBei(1);
    CString sDatum = "20240706";
    EXPECT_FALSE(NaechsterArbeitstag(31, sDatum));
    EXPECT_EQ(sDatum, "20240706"_t);
}

TEST_F(HolidayPool, FreieFunktionMitMaske) {
    Schreibe("feiertag"_t, "100000000"_t); // 1 November
    constexpr struct {
        int iMaske;
        CString sAb, sErwartet;
    } FAELLE[] = {{31, "20240706", "20240708"},  {31, "20240330", "20240402"}, {31, "20241101", "20241104"},
                  {1, "20240702", "20240708"},   {2, "20240703", "20240709"},  {4, "20240704", "20240710"},
                  {8, "20240705", "20240711"},   {16, "20240706", "20240712"}, {64, "20240707", "20240713"},
                  {128, "20240701", "20240707"}, {31, "20240231", "20240231"}, {0, "20240706", "20240706"},
                  {32, "20240706", "20240706"},  {256, "20240706", "20240706"}};
    for (const auto & fall : FAELLE) {
        CString sDatum = fall.sAb;
        EXPECT_EQ(NaechsterArbeitstag(fall.iMaske, sDatum), (fall.iMaske & 0b11011111) != 0) << fall.iMaske;
        EXPECT_EQ(sDatum, fall.sErwartet) << fall.iMaske << " from " << fall.sAb.Utf8();
    }
}

TEST_F(HolidayPool, SetWPFHolidaysSchicktFeiertageUndUrlaube) {
    class CAnzeige : public CFeiertagsanzeige {
    public:
        void SetHolidays(const CString & sFeiertage,
                         const std::vector<std::pair<CString, CString>> & vPerioden) override {
            m_sFeiertage = sFeiertage;
            m_vPerioden = vPerioden;
        }
        CString m_sFeiertage;
        std::vector<std::pair<CString, CString>> m_vPerioden;
    } anzeige;
    Schreibe("feiertag"_t, "1010x");
    Schreibe("ur- 120250"_t, "2025040120250405"_t);
    Schreibe("ur- 120240"_t, "2024070120240712"_t);
    Schreibe("ur- 220240"_t, "2024010120240112"_t); // of another owner
    dbMdId = " 1";

    SetWPFHolidays(); // to nobody
    const CFeiertagsanzeigeErsatz ersatz(anzeige);
    SetWPFHolidays();

    const std::vector<std::pair<CString, CString>> vErwartet = {{"20240701"_t, "20240712"_t},
                                                                {"20250401"_t, "20250405"_t}};
    EXPECT_EQ(anzeige.m_sFeiertage, "1010x"_t);
    EXPECT_EQ(anzeige.m_vPerioden, vErwartet);
}

} // namespace

} // namespace orvostat
