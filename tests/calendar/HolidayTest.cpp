#include "orvostatbs/calendar/Holiday.h"

#include "orvostatbs/calendar/WPFApplication.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/hvm/HVMCf.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

#include <gtest/gtest.h>

namespace {

using namespace orvostat;

using FJahr = CString (*)(const CString &);
using FLaenge = double (*)(const CString &, const CString &);

CHoliday Mit(std::initializer_list<bool CHoliday::*> vSchalter) {
    CHoliday kalender;
    for (const auto pSchalter : vSchalter)
        kalender.*pSchalter = true;
    return kalender;
}

// Every switch on.
CHoliday Alle() {
    return Mit({&CHoliday::m_bAllerheiligen, &CHoliday::m_bBussBettag, &CHoliday::m_bFronleichnam,
                &CHoliday::m_bHeiligabend, &CHoliday::m_bDreiKoenige, &CHoliday::m_bMariaHimmelfahrt,
                &CHoliday::m_bReformationstag, &CHoliday::m_bRosenmontag, &CHoliday::m_bSilvester});
}

// ---- feasts

TEST(Holiday, OsternImJahr) {
    constexpr struct {
        CString sJahr, sOstern;
    } FAELLE[] = {
        {"2024", "20240331"}, {"2025", "20250420"}, {"2000", "20000423"}, {"1981", "19810419"},
        {"2038", "20380425"}, {"1583", "15830410"}, {"1818", "18180322"}, {"1943", "19430425"},
        {"1954", "19540418"}, {"1666", "16660425"}, {"2285", "22850322"}, {"4099", "40990419"},
    };
    for (const auto & fall : FAELLE)
        EXPECT_EQ(CHoliday::OsternImJahr(fall.sJahr), fall.sOstern);
}

TEST(Holiday, BeweglicheFeste) {
    constexpr struct {
        FJahr fFest;
        CString sJahr, sDatum;
    } FAELLE[] = {
        {&CHoliday::GetKarfreitag, "2024", "20240329"},
        {&CHoliday::GetOstermontag, "2024", "20240401"},
        {&CHoliday::GetChristiHimmelfahrt, "2024", "20240509"},
        {&CHoliday::GetPfingstmontag, "2024", "20240520"},
        {&CHoliday::GetFronleichnam, "2024", "20240530"},
        {&CHoliday::GetRosenmontag, "2024", "20240212"},
        {&CHoliday::GetRosenmontag, "2023", "20230220"},
        {&CHoliday::GetBussBettag, "2024", "20241120"},
        {&CHoliday::GetBussBettag, "2023", "20231122"}, // the last possible day
        {&CHoliday::GetBussBettag, "2022", "20221116"}, // the first
        {&CHoliday::GetBussBettag, "", ""},
        {&CHoliday::GetBussBettag, "20x4", ""},
        {&CHoliday::GetKarfreitag, "24", ""},
        {&CHoliday::GetRosenmontag, "9999999", ""},
    };
    for (const auto & fall : FAELLE)
        EXPECT_EQ(fall.fFest(fall.sJahr), fall.sDatum)
            << fall.sJahr.Utf8() << ", feast of " << fall.sDatum.Utf8();
}

// ---- working days

TEST(Holiday, NachInit) {
    CHoliday kalender = Alle();
    kalender.m_vFerien.push_back({"20240101", "20240102", ""});
    kalender.m_abWochentag[0] = kalender.m_abWochentag[7] = true;
    kalender.Init();
    EXPECT_TRUE(kalender.m_vFerien.empty());
    const bool abErwartet[8] = {false, false, true, true, true, true, true, false};
    EXPECT_TRUE(std::ranges::equal(kalender.m_abWochentag, abErwartet));
    EXPECT_TRUE(kalender.IstArbeitstag("20241101"));
}

TEST(Holiday, FeiertageImGanzenLand) {
    const CHoliday kalender;
    for (const CString & sTag : {CString("20240101"), CString("20240329"), CString("20240401"),
                                 CString("20240501"), CString("20240509"), CString("20240520"),
                                 CString("20241003"), CString("20241225"), CString("20241226")})
        EXPECT_FALSE(kalender.IstArbeitstag(sTag)) << sTag.Utf8();
}

// Each switch makes its own day a holiday and no other one.
TEST(Holiday, JederSchalterGiltFuerSeinenTag) {
    constexpr struct {
        bool CHoliday::*pSchalter;
        CString sTag; // a Monday to Friday
    } FAELLE[] = {
        {&CHoliday::m_bAllerheiligen, "20241101"},   {&CHoliday::m_bBussBettag, "20241120"},
        {&CHoliday::m_bFronleichnam, "20240530"},    {&CHoliday::m_bHeiligabend, "20241224"},
        {&CHoliday::m_bDreiKoenige, "20250106"},     {&CHoliday::m_bMariaHimmelfahrt, "20240815"},
        {&CHoliday::m_bReformationstag, "20241031"}, {&CHoliday::m_bRosenmontag, "20240212"},
        {&CHoliday::m_bSilvester, "20241231"},
    };
    for (const auto & schalter : FAELLE) {
        const CHoliday kalender = Mit({schalter.pSchalter});
        for (const auto & fall : FAELLE)
            EXPECT_EQ(kalender.IstArbeitstag(fall.sTag), fall.pSchalter != schalter.pSchalter)
                << schalter.sTag.Utf8() << " switched, " << fall.sTag.Utf8() << " asked";
    }
}

TEST(Holiday, WochentageEntscheidenZuerst) {
    CHoliday kalender;
    EXPECT_FALSE(kalender.IstArbeitstag("20240706")); // a Saturday
    kalender.m_abWochentag[7] = true;
    EXPECT_TRUE(kalender.IstArbeitstag("20240706"));
    EXPECT_FALSE(kalender.IstArbeitstag("20240707"));
    kalender.m_abWochentag[1] = true;
    EXPECT_TRUE(kalender.IstArbeitstag("20240707"));
    kalender.m_abWochentag[4] = false; // Wednesday
    EXPECT_FALSE(kalender.IstArbeitstag("20240703"));
}

TEST(Holiday, GetAnzArbeitsTage) {
    const CHoliday bund;
    const CHoliday bayern = Mit({&CHoliday::m_bAllerheiligen, &CHoliday::m_bFronleichnam,
                                 &CHoliday::m_bDreiKoenige, &CHoliday::m_bMariaHimmelfahrt});
    const struct {
        const CHoliday & kalender;
        CString sVon, sBis;
        int iTage;
    } FAELLE[] = {
        {bund, "20240101", "20241231", 253}, {bayern, "20240101", "20241231", 250},
        {bund, "20240429", "20240503", 4}, // a holiday on Wednesday
        {bund, "20241230", "20250103", 4}, // over the turn of the year
        {bund, "20240228", "20240301", 3}, // with a leap day
        {bund, "20240703", "20240703", 1},   {bund, "20240501", "20240501", 0},
        {bund, "20240704", "20240703", 0},  // start behind end
        {bund, "99991201", "99999999", 23}, // to the calendar's end
        {bund, "20240230", "20240310", 0},  // no day of the calendar
        {bund, "", "20240310", 0},           {bund, "20240301", "", 0},
        {bund, "01.03.2024", "20240310", 0},
    };
    for (const auto & fall : FAELLE)
        EXPECT_EQ(fall.kalender.GetAnzArbeitsTage(fall.sVon, fall.sBis), fall.iTage)
            << fall.sVon.Utf8() << " to " << fall.sBis.Utf8();
}

TEST(Holiday, FerienZaehlenNurInDerAnzahl) {
    CHoliday kalender;
    kalender.m_vFerien = {{"20240701", "20240703", "Sommer"_t}, {"20240705", "20240712", ""}};
    EXPECT_EQ(kalender.GetAnzArbeitsTage("20240701", "20240714"), 1);
    EXPECT_TRUE(kalender.IstArbeitstag("20240702"));
    kalender.m_vFerien = {{"20240429", "20240503", ""}};
    EXPECT_EQ(kalender.GetAnzArbeitsTage("20240429", "20240503"), 0);
}

TEST(Holiday, NaechsterArbeitstag) {
    CHoliday ohneTage;
    std::ranges::fill(ohneTage.m_abWochentag, false);
    const struct {
        CHoliday kalender;
        CString sAb, sErwartet;
    } FAELLE[] = {
        {CHoliday(), "20240703", "20240703"},     {CHoliday(), "20240706", "20240708"},
        {CHoliday(), "20240329", "20240402"}, // Good Friday to Easter Monday
        {CHoliday(), "20241231", "20241231"},     {Alle(), "20241231", "20250102"},
        {ohneTage, "20240703", "20240703"},       {CHoliday(), "20240231", "20240231"},
        {CHoliday(), "06.07.2024", "06.07.2024"}, {CHoliday(), "", ""},
        {Alle(), "99991231", "99991231"}, // a holiday, and no day behind it
    };
    for (const auto & fall : FAELLE) {
        CString sDatum = fall.sAb;
        EXPECT_TRUE(fall.kalender.NaechsterArbeitstag(sDatum));
        EXPECT_EQ(sDatum, fall.sErwartet) << "from " << fall.sAb.Utf8();
    }
}

// ---- holidays of a period

std::vector<CString> Tage(const std::vector<CFerien> & v) {
    std::vector<CString> vTage;
    for (const CFerien & ferien : v) {
        vTage.push_back(ferien.m_sVon);
        EXPECT_EQ(ferien.m_sBis, ferien.m_sVon);
        EXPECT_TRUE(ferien.m_sName.IsEmpty());
    }
    return vTage;
}

TEST(Holiday, GetAllHolidaysInIhrerReihenfolge) {
    std::vector<CFerien> vOut = {{"19990101", "19990101", ""}}; // stays
    Alle().GetAllHolidays(vOut, "20240101", "20241231");
    const std::vector<CString> vErwartet = {"19990101", "20241101", "20241120", "20240530", "20240106",
                                            "20240815", "20241031", "20241224", "20241231", "20240212",
                                            "20240329", "20240401", "20240509", "20240520", "20241225",
                                            "20241226", "20240101", "20240501", "20241003"};
    EXPECT_EQ(Tage(vOut), vErwartet);
}

TEST(Holiday, GetAllHolidaysNurImZeitraum) {
    constexpr CString VON_BIS[][2] = {{"20231226", "20250101"}, {"20240502", "20240501"}, {"20240301", ""}};
    const std::vector<CString> vErwartet[] = {{"20231226", "20240329", "20240401", "20240509", "20240520",
                                               "20241225", "20241226", "20240101", "20240501", "20241003",
                                               "20250101"},
                                              {},
                                              {}};
    for (std::size_t i = 0; i < std::size(VON_BIS); ++i) {
        std::vector<CFerien> vOut;
        CHoliday().GetAllHolidays(vOut, VON_BIS[i][0], VON_BIS[i][1]);
        EXPECT_EQ(Tage(vOut), vErwartet[i]) << "from " << VON_BIS[i][0].Utf8();
    }
}

TEST(Holiday, DayInHolidaySchliesstBeideEndenEin) {
    const std::vector<CFerien> v = {{"20240705", "20240712", ""}, {"20240101", "20240101", ""}};
    for (const CString & s : {CString("20240705"), CString("20240712"), CString("20240101")})
        EXPECT_TRUE(CHoliday::DayInHoliday(v, s)) << s.Utf8();
    for (const CString & s : {CString("20240704"), CString("20240713"), CString()})
        EXPECT_FALSE(CHoliday::DayInHoliday(v, s)) << s.Utf8();
}

// ---- lengths

TEST(Holiday, LaengenVonZeitraeumen) {
    constexpr struct {
        FLaenge fLaenge;
        CString sVon, sBis;
        double fErwartet;
    } FAELLE[] = {
        {&CHoliday::GetAnzMonate, "20240101", "20240131", 1.0},
        {&CHoliday::GetAnzMonate, "20240101", "20241231", 12.0},
        {&CHoliday::GetAnzMonate, "20230115", "20230215", 17.0 / 31 + 15.0 / 28},
        {&CHoliday::GetAnzMonate, "20231115", "20240210", 16.0 / 30 + 2 + 10.0 / 29},
        {&CHoliday::GetAnzMonate, "20240110", "20240119", 10.0 / 31},
        {&CHoliday::GetAnzQuartale, "20240101", "20240331", 1.0},
        {&CHoliday::GetAnzQuartale, "20240210", "20240219", 10.0 / 91},
        {&CHoliday::GetAnzQuartale, "20240215", "20240515", 46.0 / 91 + 45.0 / 91},
        {&CHoliday::GetAnzQuartale, "20231101", "20240815", 61.0 / 92 + 2 + 46.0 / 92},
        {&CHoliday::GetAnzJahre, "20240101", "20241231", 1.0},
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

class HolidayPool : public CHostTest {
protected:
    HolidayPool() {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pSpeicher);
    }
    ~HolidayPool() override {
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    static void Schreibe(const CString & sKuerzel, const CString & sWert) {
        CTParPool pool(dbDatabase);
        pool.m_GRUPPE = "53";
        pool.m_KUERZEL = sKuerzel;
        pool.m_WERT = sWert;
        ASSERT_EQ(pool.Write(), 0);
    }

    std::shared_ptr<CMemorySpeicher> m_pSpeicher = std::make_shared<CMemorySpeicher>();
};

TEST_F(HolidayPool, ReadFeiertageLiestDieStellenDerReihe) {
    constexpr bool CHoliday::*REIHE[] = {
        &CHoliday::m_bAllerheiligen,   &CHoliday::m_bBussBettag,  &CHoliday::m_bFronleichnam,
        &CHoliday::m_bHeiligabend,     &CHoliday::m_bDreiKoenige, &CHoliday::m_bMariaHimmelfahrt,
        &CHoliday::m_bReformationstag, &CHoliday::m_bRosenmontag, &CHoliday::m_bSilvester,
    };
    constexpr struct {
        const char * pWert;
        bool ab[9];
    } FAELLE[] = {
        {"10000000000000000000", {true}},
        {"01010101000000000000", {false, true, false, true, false, true, false, true}},
        {"00000000100000000000", {false, false, false, false, false, false, false, false, true}},
        {"7x 9", {true, false, false, true}}, // no number is 0, and so is what is missing
        {"", {}},
    };
    for (const auto & fall : FAELLE) {
        CTParPool pool(dbDatabase);
        pool.GetAll();
        pool.DeleteRows();
        Schreibe("feiertag"_t, CString(fall.pWert));
        CHoliday kalender = Alle();
        EXPECT_TRUE(kalender.ReadFeiertage());
        for (std::size_t i = 0; i < 9; ++i)
            EXPECT_EQ(kalender.*REIHE[i], fall.ab[i]) << fall.pWert << " at " << i;
    }
}

TEST_F(HolidayPool, OhneReiheBleibenDieSchalter) {
    CHoliday kalender = Mit({&CHoliday::m_bRosenmontag});
    EXPECT_TRUE(kalender.ReadFeiertage());
    EXPECT_TRUE(kalender.m_bRosenmontag);
}

TEST_F(HolidayPool, EinFehlerDesSpeichersLaesstAllesStehen) {
    Schreibe("feiertag"_t, "111111111"_t);
    const auto pFehler = std::make_shared<CFehlerspeicher>(m_pSpeicher);
    pFehler->FehlerBei(1);
    dbDatabaseRO.Verbinde(pFehler);
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
        CString sAb;
        bool bErgebnis;
        CString sErwartet;
    } FAELLE[] = {
        {31, "20240706", true, "20240708"},   {31, "20240330", true, "20240402"}, // Monday is a holiday
        {31, "20241101", true, "20241104"},   {1, "20240702", true, "20240708"},
        {2, "20240703", true, "20240709"},    {4, "20240704", true, "20240710"},
        {8, "20240705", true, "20240711"},    {16, "20240706", true, "20240712"},
        {64, "20240707", true, "20240713"},   {128, "20240701", true, "20240707"},
        {0, "20240706", false, "20240706"},   {32, "20240706", false, "20240706"},
        {256, "20240706", false, "20240706"}, {33, "20240702", true, "20240708"},
        {31, "20240231", true, "20240231"},
    };
    for (const auto & fall : FAELLE) {
        CString sDatum = fall.sAb;
        EXPECT_EQ(NaechsterArbeitstag(fall.iMaske, sDatum), fall.bErgebnis) << fall.iMaske;
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
    Schreibe("ur- 120241"_t, "2024122320241231"_t);
    Schreibe("ur- 120240"_t, "2024070120240712"_t);
    Schreibe("ur- 220240"_t, "2024010120240112"_t); // of another owner
    dbMdId = " 1";

    SetWPFHolidays(); // to nobody
    const CFeiertagsanzeigeErsatz ersatz(anzeige);
    SetWPFHolidays();

    const std::vector<std::pair<CString, CString>> vErwartet = {
        {"20240701"_t, "20240712"_t}, {"20241223"_t, "20241231"_t}, {"20250401"_t, "20250405"_t}};
    EXPECT_EQ(anzeige.m_sFeiertage, "1010x"_t);
    EXPECT_EQ(anzeige.m_vPerioden, vErwartet);
}

} // namespace
