#include "orvostatbs/host/Datum.h"

#include "support/Rekorder.h"
#include "support/Wert.h"

#include <limits>

namespace orvostat {

namespace {

std::string Quartal(const char * p) {
    const CString s(p);
    return Werte(DbDate2Quartal(s), QuartalsAnfang(s), QuartalsEnde(s));
}

TEST(Datum, QuartaleUndIhreGrenzen) {
    EXPECT_EQ(Quartal("20240101"), "20241|20240101|20240331");
    EXPECT_EQ(Quartal("20240331"), "20241|20240101|20240331");
    EXPECT_EQ(Quartal("20240500"), "20242|20240401|20240630"); // the day is not asked for
    EXPECT_EQ(Quartal("20240930"), "20243|20240701|20240930");
    EXPECT_EQ(Quartal("99991231"), "99994|99991001|99991231");
    EXPECT_EQ(Quartal("00011001"), "00014|00011001|00011231");
    for (const char * p :
         {"", "20240001", "20241301", "00000101", "2024010", "202401011", "-2024010", "2024010x"})
        EXPECT_EQ(Quartal(p), "||") << p;
    const auto Gleich = [](const char * pA, const char * pB) {
        return GleichesQuartal(CString(pA), CString(pB)) && GleichesQuartal(CString(pB), CString(pA));
    };
    EXPECT_TRUE(Gleich("20240101", "20240331") && Gleich("", "20241301") && Gleich("", ""));
    EXPECT_FALSE(Gleich("20240331", "20240401") || Gleich("20230101", "20240101") || Gleich("20240101", ""));
}

TEST(Datum, TageDesMonats) {
    std::string s;
    for (int iMonat = 0; iMonat <= 13; ++iMonat)
        s += Wert(LastDayI(iMonat, 2023)) + " ";
    EXPECT_EQ(s, " 31 28 31 30 31 30 31 31 30 31 30 31  ");
    EXPECT_EQ(Werte(LastDayI(2, 2024), LastDayI(2, 2000), LastDayI(2, 1900), LastDayI(1, 2024)),
              "29|29|28|31");
}

TEST(Datum, AnzeigeUndZurueck) {
    EXPECT_EQ(Werte(StrToExt("20240709", 5, 8), StrToExt("19560000", 5, 8), StrToExt("20240709", 1, 8),
                    Db2Date("1956"), Db2Date("2024070x"_t)),
              "09.07.2024|00.00.1956|20240709|1956|2024070x");
    EXPECT_EQ(Werte(Date2Db("03.02.0001"), Date2Db("9.7.2024"), Date2Db("31.02.2024"), Date2Db("20240709")),
              "00010203|20240709|20240231|20240709");
    for (const char * p : {"", "9.7.24", "09.07.20245", "009.7.2024", ".7.2024", "9..2024", "09/07/2024",
                           "09.07", "2024", "a9.07.2024", "09.07.20 4", "."})
        EXPECT_EQ(Date2Db(CString(p)), CString()) << p;
}

TEST(Datum, GueltigkeitUndWochentag) {
    std::string s; // 0: no date
    for (const char * p :
         {"20240630", "20240701", "20240706", "20240229", "00010101", "99991231", "20230229", "19000229",
          "20240400", "20240001", "20241301", "00001230", "", "2024063", "30.06.2024"}) {
        s += static_cast<char>('0' + Wochentag(CString(p)));
        EXPECT_EQ(GueltigesDatum(CString(p)), s.back() != '0') << p;
    }
    EXPECT_EQ(s, "127526000000000");
    EXPECT_EQ(CMxDate("", false).Wochentag(), 0);
}

TEST(Datum, TageAddieren) {
    const auto Plus = [](const char * p, long iTage) { return CString(CMxDate(CString(p), true) + iTage); };
    EXPECT_EQ(Werte(Plus("20240228", 1), Plus("20230228", 1), Plus("20240331", -48), Plus("20231231", 1),
                    Plus("20240101", 0), Plus("00010101", 3652058)),
              "20240229|20230301|20240212|20240101|20240101|99991231");
    EXPECT_EQ(Werte(Plus("99991231", 1), Plus("00010101", -1), Plus("20230229", 1),
                    Plus("20240101", std::numeric_limits<long>::min()),
                    Plus("20240101", std::numeric_limits<long>::max())),
              "||||");
    EXPECT_EQ(CString(CMxDate("01.07.2024", false)), CString("20240701"));
    EXPECT_LT(CMxDate("20240630"), CMxDate("20240701"));
}

class DatumAmHost : public CHostTest {};

TEST_F(DatumAmHost, HeuteUndJetztKommenVonDerUhr) {
    EXPECT_EQ(Werte(CString(CMxDate()), GetMxTime()), "20240701|09:05");
    m_uhr.m_zeit = {2031, 12, 24, 23, 59};
    EXPECT_EQ(Werte(GetMxDate(), GetMxTime()), "20311224|23:59");
}

TEST(Datum, OhneErsatzGehtDieUhrDesRechners) {
    EXPECT_TRUE(GueltigesDatum(GetMxDate()) && GetMxDate() > "20240101");
}

} // namespace

} // namespace orvostat
