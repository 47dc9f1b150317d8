#include "orvostatbs/host/Datum.h"

#include "support/Rekorder.h"

#include <limits>

namespace orvostat {

namespace {

struct SPaar {
    CString sDatum, sErwartet;
};

TEST(Datum, QuartaleUndIhreGrenzen) {
    const struct {
        CString sDatum, sQuartal, sAnfang, sEnde;
    } vFaelle[] = {
        {"20240101", "20241", "20240101", "20240331"}, {"20240331", "20241", "20240101", "20240331"},
        {"20240401", "20242", "20240401", "20240630"}, {"20240630", "20242", "20240401", "20240630"},
        {"20240701", "20243", "20240701", "20240930"}, {"20241001", "20244", "20241001", "20241231"},
        {"99991231", "99994", "99991001", "99991231"}, {"00010101", "00011", "00010101", "00010331"},
        {"20240500", "20242", "20240401", "20240630"}}; // the day is not asked for
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(DbDate2Quartal(fall.sDatum), fall.sQuartal) << fall.sDatum.Utf8();
        EXPECT_EQ(QuartalsAnfang(fall.sDatum), fall.sAnfang) << fall.sDatum.Utf8();
        EXPECT_EQ(QuartalsEnde(fall.sDatum), fall.sEnde) << fall.sDatum.Utf8();
    }
    const CString vOhneQuartal[] = {"",        "20240001",  "20241301", "00000101",
                                    "2024010", "202401011", "-2024010", "2024010x"_t};
    for (const CString & s : vOhneQuartal)
        EXPECT_EQ(DbDate2Quartal(s) + QuartalsAnfang(s) + QuartalsEnde(s), CString()) << s.Utf8();
}

TEST(Datum, GleichesQuartalTrenntJahreUndFehlendeDaten) {
    for (const auto & [sA, sB] : {SPaar{"20240101", "20240331"}, {"", "20241301"}, {"", ""}})
        EXPECT_TRUE(GleichesQuartal(sA, sB) && GleichesQuartal(sB, sA)) << sA.Utf8() << ' ' << sB.Utf8();
    for (const auto & [sA, sB] : {SPaar{"20240331", "20240401"}, {"20230101", "20240101"}, {"20240101", ""}})
        EXPECT_FALSE(GleichesQuartal(sA, sB) || GleichesQuartal(sB, sA)) << sA.Utf8() << ' ' << sB.Utf8();
}

TEST(Datum, TageDesMonats) {
    const int vTage2023[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31, 0};
    for (int iMonat = 0; iMonat <= 13; ++iMonat)
        EXPECT_EQ(LastDayI(iMonat, 2023), vTage2023[iMonat]) << iMonat;
    EXPECT_EQ(LastDayI(2, 2024), 29);
    EXPECT_EQ(LastDayI(2, 2000), 29);
    EXPECT_EQ(LastDayI(2, 1900), 28);
}

TEST(Datum, AnzeigeUndZurueck) {
    const SPaar vFaelle[] = {
        {"20240709", "09.07.2024"}, {"00010203", "03.02.0001"}, {"19560000", "00.00.1956"}};
    for (const auto & [sDb, sAnzeige] : vFaelle) {
        EXPECT_EQ(StrToExt(sDb, 5, 8), sAnzeige);
        EXPECT_EQ(Date2Db(sAnzeige), sDb);
    }
    EXPECT_EQ(Db2Date("1956"), CString("1956"));
    EXPECT_EQ(Db2Date("2024070x"_t), "2024070x"_t);
    EXPECT_EQ(StrToExt("20240709", 1, 8), CString("20240709"));
}

TEST(Datum, Date2DbNimmtNurDaten) {
    EXPECT_EQ(Date2Db("9.7.2024"), CString("20240709"));
    EXPECT_EQ(Date2Db("31.02.2024"), CString("20240231"));
    EXPECT_EQ(Date2Db("20240709"), CString("20240709"));
    const CString vKeine[] = {"",           "9.7.24", "09.07.20245",  "009.7.2024", ".7.2024", "9..2024",
                              "09/07/2024", "09.07",  "a9.07.2024"_t, "09.07.20 4", "."};
    for (const CString & s : vKeine)
        EXPECT_EQ(Date2Db(s), CString()) << s.Utf8();
}

TEST(Datum, GueltigkeitUndWochentag) {
    const struct {
        CString sDatum;
        int iWochentag; // 0: no date
    } vFaelle[] = {{"20240630", 1}, {"20240701", 2}, {"20240706", 7}, {"20240229", 5}, {"00010101", 2},
                   {"99991231", 6}, {"20230229", 0}, {"19000229", 0}, {"20240400", 0}, {"20240001", 0},
                   {"20241301", 0}, {"00000101", 0}, {"", 0},         {"2024063", 0},  {"30.06.2024", 0}};
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(Wochentag(fall.sDatum), fall.iWochentag) << fall.sDatum.Utf8();
        EXPECT_EQ(GueltigesDatum(fall.sDatum), fall.iWochentag != 0) << fall.sDatum.Utf8();
    }
}

TEST(Datum, TageAddieren) {
    const struct {
        CString sDatum;
        long iTage;
        CString sErwartet;
    } vFaelle[] = {{"20240228", 1, "20240229"},   {"20230228", 1, "20230301"},
                   {"20240331", -48, "20240212"}, {"20231231", 1, "20240101"},
                   {"20240101", 0, "20240101"},   {"00010101", 3652058, "99991231"}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(CString(CMxDate(fall.sDatum, true) + fall.iTage), fall.sErwartet)
            << fall.sDatum.Utf8() << fall.iTage;
    EXPECT_FALSE((CMxDate("99991231") + 1).IsValid());
    EXPECT_FALSE((CMxDate("00010101") + -1).IsValid());
    EXPECT_FALSE((CMxDate("20230229") + 1).IsValid());
    for (const long iTage : {std::numeric_limits<long>::min(), std::numeric_limits<long>::max()})
        EXPECT_FALSE((CMxDate("20240101") + iTage).IsValid());
    EXPECT_EQ(CString(CMxDate("01.07.2024", false)), CString("20240701"));
    EXPECT_LT(CMxDate("20240630"), CMxDate("20240701"));
}

class DatumAmHost : public CHostTest {};

TEST_F(DatumAmHost, HeuteUndJetztKommenVonDerUhr) {
    EXPECT_EQ(CString(CMxDate()), CString("20240701"));
    EXPECT_EQ(GetMxTime(), CString("09:05"));
    m_uhr.m_zeit = {2031, 12, 24, 23, 59};
    EXPECT_EQ(GetMxDate(), CString("20311224"));
    EXPECT_EQ(GetMxTime(), CString("23:59"));
}

TEST(Datum, OhneErsatzGehtDieUhrDesRechners) {
    EXPECT_TRUE(GueltigesDatum(GetMxDate()));
    EXPECT_GT(GetMxDate(), CString("20240101"));
}

} // namespace

} // namespace orvostat
