#include "orvostatbs/host/Betrag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace {

// The stored text, which shows all that an amount holds.
template <class T> std::string Db(const T & betrag) { return betrag.ToDb(0, true, false, 0.0, 0.0).Utf8(); }

CString Text(const std::string & s) { return CString(std::string_view(s)); }

TEST(BetragTest, LeerIstNichtNull) {
    for (const char * pLeer : {"", " ", "           "}) {
        const CDBetrag leer{CString(pLeer)};
        EXPECT_TRUE(leer.IsEmpty() && leer.IsZero() && !leer.IsPos()) << "'" << pLeer << "'";
        EXPECT_EQ(leer.GetWaehrung(), 0);
        EXPECT_EQ(Db(leer), "");
        EXPECT_TRUE(leer == CDBetrag());
    }
    for (const char * pNull : {"e0", "e", "e         0", "e-0", " 0", "0", "-", "exyz"}) {
        const CDBetrag null{CString(pNull)};
        EXPECT_TRUE(!null.IsEmpty() && null.IsZero() && !null.IsPos()) << "'" << pNull << "'";
        EXPECT_FALSE(null == CDBetrag());
    }
    CDBetrag betrag("e500");
    betrag.Zero();
    EXPECT_EQ(Db(betrag), "e0");
    betrag.Empty();
    EXPECT_TRUE(betrag == CDBetrag());
    betrag.Zero();
    EXPECT_EQ(Db(betrag), "0");
}

TEST(BetragTest, GleichheitSiehtWertWaehrungUndLeere) {
    EXPECT_TRUE(CDBetrag("e100") == CDBetrag(1.0, 'e'));
    EXPECT_FALSE(CDBetrag("e100") == CDBetrag("e101"));
    EXPECT_FALSE(CDBetrag("e100") == CDBetrag(" 100"));
    EXPECT_FALSE(CDBetrag("0") == CDBetrag(""));
    EXPECT_TRUE(CDPw("e10000") == CDBetrag("e100"));
}

TEST(BetragTest, WasDoublesNichtHaltenIstNull) {
    const CDBetrag rest = CDBetrag("e30") - CDBetrag("e10") - CDBetrag("e20");
    EXPECT_FALSE(rest == CDBetrag("e0"))
        << "0.3 - 0.1 - 0.2 leaves nothing: the case no longer shows anything";
    EXPECT_TRUE(rest.IsZero());
    EXPECT_FALSE((rest * -1).IsPos() || rest.IsPos());
    EXPECT_EQ(Db(rest), "e0");
    EXPECT_TRUE(CDBetrag("e0.000001").IsPos());
    EXPECT_FALSE(CDBetrag("e-0.000001").IsZero() || CDBetrag("e-0.000001").IsPos());
}

struct SSumme {
    const char * pLinks;
    const char * pRechts;
    const char * pSumme;
    const char * pDifferenz;
};
constexpr SSumme SUMMEN[] = {
    {"e100", "e23", "e123", "e77"},
    {"e100", "e250", "e350", "e-150"},
    {"e100", " 195583", "e100100", "e-99900"},
    {" 100", "e100", " 295.583", " -95.583"},
    {"100", "e23", "e123", "e77"},
    {"e100", "23", "e123", "e77"},
    {"100", "23", "123", "77"},
    {"", "e23", "e23", "e-23"},
    {"", " 23", " 23", " -23"},
    {"e100", "", "e100", "e100"},
    {"e0", "", "e0", "e0"},
    {"", "e0", "e0", "e0"},
    {"", "", "", ""},
    {"e10", "x5", "e15", "e5"},
    {"x10", "e5", "x15", "x5"},
};

template <class T> void PruefeSummen() {
    for (const SSumme & f : SUMMEN) {
        SCOPED_TRACE(std::string(f.pLinks) + " und " + f.pRechts);
        const T links{CString(f.pLinks)};
        const T rechts{CString(f.pRechts)};
        EXPECT_EQ(Db(links + rechts), f.pSumme);
        EXPECT_EQ(Db(links - rechts), f.pDifferenz);
    }
}

TEST(BetragTest, Summen) {
    PruefeSummen<CDBetrag>();
    PruefeSummen<CWBetrag>();
    PruefeSummen<CVzW7Betrag>();
    CDBetrag summe;
    summe += CDBetrag("e100");
    (summe += CDBetrag(" 195583")) += summe;
    EXPECT_EQ(Db(summe), "e200200");
}

TEST(BetragTest, ProdukteUndQuotienten) {
    EXPECT_EQ(Db(CDBetrag("e100") * 2.5), "e250");
    EXPECT_EQ(Db(2.5 * CDBetrag(" 100")), " 250");
    EXPECT_EQ(Db(CDBetrag("e100") *= -0.5), "e-50");
    EXPECT_EQ(Db(CDBetrag("e100") /= 3), "e33.333333");
    EXPECT_EQ(Db(CDBetrag("e100") /= 0), "e100");
    EXPECT_TRUE(CDBetrag() * -2.0 == CDBetrag());
    EXPECT_TRUE((CDBetrag() *= HUGE_VAL) == CDBetrag());
    EXPECT_TRUE((CDBetrag() /= 4) == CDBetrag());
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag("e400"), 0.25);
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag(" 195583"), 0.001);
    EXPECT_DOUBLE_EQ(CDBetrag(" 195.583") / CDPw("e20000"), 0.5);
    EXPECT_EQ(CDBetrag("e100") / CDBetrag("e0"), 0.0);
    EXPECT_EQ(CDBetrag("e100") / CDBetrag(), 0.0);
    EXPECT_EQ(CDBetrag() / CDBetrag("e100"), 0.0);
}

TEST(BetragTest, Umrechnung) {
    struct SFall {
        const char * pVon;
        char cW;
        const char * pNach;
    };
    for (const SFall & f :
         {SFall{"e10000", ' ', " 19558.3"}, SFall{" 19558.3", 'e', "e10000"}, SFall{"e-1", ' ', " -1.95583"},
          SFall{"e123", 'e', "e123"}, SFall{" 7", ' ', " 7"}, SFall{"123", 'e', "e123"},
          SFall{"123", ' ', " 123"}, SFall{"e123", 'x', "x123"}, SFall{"x123", 'e', "e123"},
          SFall{"e123", 0, "123"}, SFall{"", 'e', ""}}) {
        CDBetrag betrag{CString(f.pVon)};
        EXPECT_EQ(&betrag.ToW(f.cW), &betrag);
        EXPECT_EQ(Db(betrag), f.pNach) << "'" << f.pVon << "' nach '" << f.cW << "'";
    }
}

// What is written after reading; where it differs from the text, the text is another way to write the same.
TEST(BetragTest, GespeicherterText) {
    struct SFall {
        const char * pGelesen;
        const char * pGeschrieben;
        const char * pAlsPunktwert; // the same read and written as a point value
    };
    const std::string sLang(400, '7');
    const std::string sNullen(400, '0');
    for (const SFall & f : {
             SFall{"e12345", "e12345", "e12345"},
             SFall{"e-12345", "e-12345", "e-12345"},
             SFall{" 12345", " 12345", " 12345"},
             SFall{"12345", "12345", "12345"},
             SFall{"-12345", "-12345", "-12345"},
             SFall{"+5", "5", "5"},
             SFall{"e         7", "e7", "e7"},
             SFall{"e  -7", "e-7", "e-7"},
             SFall{"     -7", " -7", " -7"},
             SFall{"e007", "e7", "e7"},
             SFall{"e4366.89", "e4366.89", "e4366.89"},
             SFall{"e0.000001", "e0.000001", "e0"},
             SFall{"e-0.5", "e-0.5", "e-0.5"},
             SFall{"e.5", "e0.5", "e0.5"},
             SFall{"e1.50", "e1.5", "e1.5"},
             SFall{"e1.2345678", "e1.234568", "e1.2346"},
             SFall{"e1.5.7", "e1.5", "e1.5"},
             SFall{"e12x9", "e12", "e12"},
             SFall{"e12,5", "e12", "e12"},
             SFall{"e1 2", "e1", "e1"},
             SFall{"e--1", "e0", "e0"},
             SFall{"\x80"
                   "12",
                   "€12", "€12"},
             SFall{"e900719925474099", "e900719925474099", "e900719925474099"},
         }) {
        SCOPED_TRACE(f.pGelesen);
        EXPECT_EQ(Db(CDBetrag{CString(f.pGelesen)}), f.pGeschrieben);
        EXPECT_EQ(Db(CW7Betrag{CString(f.pGelesen)}), f.pGeschrieben);
        EXPECT_EQ(CString(CVzW7Betrag{CString(f.pGelesen)}).Utf8(), f.pGeschrieben);
        EXPECT_EQ(CString(CDPw{CString(f.pGelesen)}).Utf8(), f.pAlsPunktwert);
        EXPECT_EQ(Db(CDPw{CString(f.pGelesen)}), f.pAlsPunktwert);
    }
    EXPECT_TRUE(CDBetrag(Text("e" + sLang)) == CDBetrag(CString(CVzW7Betrag(Text("e" + sLang)))));
    EXPECT_EQ(Db(CDBetrag(Text("e-" + sLang))).size(), 2 + 309 + 2) << "the largest double, in hundredths";
    EXPECT_EQ(Db(CDBetrag(Text("e" + sNullen + "5"))), "e5");
    EXPECT_EQ(Db(CDBetrag(Text("e." + sNullen + "5"))), "e0");
    EXPECT_EQ(Db(CDBetrag(Text("e5." + sNullen))), "e5");
    EXPECT_EQ(Db(CDBetrag("e1") *= HUGE_VAL), "");
}

TEST(BetragTest, GespeicherterTextInSpalten) {
    struct SFall {
        const char * pText;
        int iWidth;
        bool bSigned;
        const char * pSoll;
    };
    for (const SFall & f :
         {SFall{"e0", 11, true, "e         0"}, SFall{"e-5", 6, true, "e   -5"},
          SFall{"e-5", 6, false, "e    5"}, SFall{"e-5", 0, false, "e5"}, SFall{" 5", 4, true, "   5"},
          SFall{"5", 4, true, "5   "}, SFall{"e12345", 3, true, "e12345"}, SFall{"e5", -1, true, "e5"},
          SFall{"", 4, true, "    "}}) {
        const CDBetrag betrag{CString(f.pText)};
        const CString sSpalte = betrag.ToDb(f.iWidth, f.bSigned, false, 0.0, 0.0);
        EXPECT_EQ(sSpalte.Utf8(), f.pSoll);
        EXPECT_TRUE(!f.bSigned || CDBetrag(sSpalte) == betrag) << f.pText;
    }
}

TEST(BetragTest, PunktwertZaehltZehntausendstel) {
    EXPECT_TRUE(CDPw("23000") == CDBetrag(2.3, 0));
    EXPECT_TRUE(CDPw("e13233.0001") == CDBetrag(1.32330001, 'e'));
    EXPECT_EQ(Db(CDBetrag(CDPw("e13233") * 33.0)), "e4366.89");
    EXPECT_EQ(Db(CDPw("e13233") * 0.5), "e6616.5");
    EXPECT_TRUE(CDBetrag(CDPw() * 33.0) == CDBetrag());
}

// Every text of the stored form comes back as it was, and is read as the double next to its decimal value.
TEST(BetragTest, GespeicherteTexteUeberstehenDieReise) {
    std::mt19937_64 zufall(20020101);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t iEinheiten = zufall() % 6'000'000'000'000'000 >> zufall() % 50;
        std::string s = std::to_string(iEinheiten);
        s.insert(0, s.size() < 9 ? 9 - s.size() : 0, '0'); // eight decimals and at least one digit in front
        const double dWert =
            std::strtod((s.substr(0, s.size() - 8) + "." + s.substr(s.size() - 8)).c_str(), nullptr);
        s.insert(s.size() - 6, 1, '.');
        s.erase(s.find_last_not_of('0') + 1);
        if (s.back() == '.') s.pop_back();
        s.erase(0, std::min(s.find_first_not_of('0'), std::min(s.find('.'), s.size()) - 1));
        const std::string sText = (i % 2 ? "e" : " ") + std::string(i % 3 || s == "0" ? "" : "-") + s;

        const CDBetrag betrag{Text(sText)};
        ASSERT_EQ(Db(betrag), sText);
        ASSERT_TRUE(betrag == CDBetrag(sText[1] == '-' ? -dWert : dWert, sText[0])) << sText;
    }
    for (int i = 0; i < 2000; ++i) {
        std::string s(1 + zufall() % 40, '0');
        for (char & c : s)
            c = static_cast<char>('0' + zufall() % 10);
        ASSERT_TRUE(CDBetrag(Text("e" + s)) == CDBetrag(std::strtod((s + "e-2").c_str(), nullptr), 'e')) << s;
    }
}

TEST(BetragTest, Anzeigetext) {
    struct SFall {
        const char * pText;
        int iWidth;
        bool bThousands;
        const char * pSoll;
    };
    for (const SFall & f :
         {SFall{"e123456", 0, false, "1234,56"}, SFall{"e123456", 0, true, "1.234,56"},
          SFall{"e-123456789", 0, true, "-1.234.567,89"}, SFall{"e-12345678", 0, true, "-123.456,78"},
          SFall{"e99999", 0, true, "999,99"}, SFall{" 5", 0, false, "0,05"}, SFall{"e-50", 0, true, "-0,50"},
          SFall{"e0", 0, false, "0,00"}, SFall{"e-0.4", 0, false, "0,00"}, SFall{"e100.5", 0, false, "1,01"},
          SFall{"e123456", 10, false, "   1234,56"}, SFall{"e123456", 3, true, "1.234,56"},
          SFall{"", 0, false, ""}, SFall{"", 3, false, "   "}})
        EXPECT_EQ((CDBetrag{CString(f.pText)}.ToExt(f.iWidth, f.bThousands).Utf8()), f.pSoll) << f.pText;
}

TEST(BetragTest, LiestAnzeigetexteAusSpalten) {
    struct SFall {
        const char * pText;
        const char * pSoll;
    };
    for (const SFall & f :
         {SFall{"1234,56", "123456"}, SFall{"1.234,56", "123456"}, SFall{"e1234,56", "e123456"},
          SFall{"e   1.234,56", "e123456"}, SFall{"    1234,56", "123456"}, SFall{"-0,05", "-5"},
          SFall{"e-1.234.567,8", "e-123456780"}, SFall{"e12,", "e1200"}, SFall{"e,5", "e50"},
          SFall{"e1,2,3", "e120"}, SFall{"e1,234.5", "e123.4"}, SFall{"e     12345", "e12345"},
          SFall{"      12345", " 12345"}, SFall{"e4366.89", "e4366.89"}, SFall{"           ", ""}})
        EXPECT_EQ(Db(CWBetrag{CString(f.pText)}), f.pSoll) << "'" << f.pText << "'";
    EXPECT_EQ(Db(CWBetrag(12.34, 'e')), "e1234");
}

TEST(BetragTest, RundenUndAbschneiden) {
    struct SFall {
        double dWert;
        const char * pRound;
        const char * pRoundDown;
    };
    for (const SFall & f : {
             SFall{10.00 * 23000 * 0.0001, "e2300", "e2300"},
             SFall{0.57 * 10000 * 0.0001, "e57", "e57"},
             SFall{0.57, "e57", "e57"},
             SFall{1.15 * 100 * 0.01, "e115", "e115"},
             SFall{10.05 * 23000 * 0.0001, "e2312", "e2311"},
             SFall{-10.05 * 23000 * 0.0001, "e-2312", "e-2311"},
             SFall{1.005, "e101", "e100"},
             SFall{-1.005, "e-101", "e-100"},
             SFall{1.0049999, "e100", "e100"},
             SFall{1.00999999, "e101", "e100"},
             SFall{-1.00999999, "e-101", "e-100"},
             SFall{0.005, "e1", "e0"},
             SFall{0.00499999999, "e0", "e0"},
             SFall{-0.004, "e0", "e0"},
             SFall{0.1 + 0.2, "e30", "e30"},
             SFall{0.3 - 0.1 - 0.2, "e0", "e0"},
             SFall{100000000.005, "e10000000001", "e10000000000"},
             SFall{40000000000000.0, "e4000000000000000", "e4000000000000000"},
             SFall{1e20, "e10000000000000000000000", "e10000000000000000000000"},
         }) {
        CDBetrag rund(f.dWert, 'e');
        CDBetrag ab(f.dWert, 'e');
        EXPECT_EQ(&rund.Round(), &rund);
        EXPECT_EQ(&ab.RoundDown(), &ab);
        EXPECT_EQ(Db(rund), f.pRound) << f.dWert;
        EXPECT_EQ(Db(ab), f.pRoundDown) << f.dWert;
    }
    CDBetrag leer;
    leer.Round();
    EXPECT_TRUE(leer.RoundDown() == CDBetrag());
}

// Rounds both ways and compares with cents from integer arithmetic: dWert is iZaehler / iNenner cents.
void PruefeRundung(double dWert, std::int64_t iZaehler, std::int64_t iNenner) {
    CDBetrag rund(dWert, 'e');
    CDBetrag ab(dWert, 'e');
    rund.Round();
    ab.RoundDown();
    ASSERT_EQ(Db(rund), "e" + std::to_string((iZaehler + iNenner / 2) / iNenner))
        << iZaehler << "/" << iNenner;
    ASSERT_EQ(Db(ab), "e" + std::to_string(iZaehler / iNenner)) << iZaehler << "/" << iNenner;
}

TEST(BetragTest, SaetzeMalFaktorenWieInGanzenZahlen) {
    std::mt19937_64 zufall(100);
    for (int i = 0; i < 10000; ++i) {
        const auto iSatz = static_cast<std::int64_t>(1 + zufall() % (i % 2 ? 1000 : 1'000'000));
        auto iFaktor = static_cast<std::int64_t>(zufall() % 100'000);
        if (i % 3 == 0) iFaktor -= iFaktor % 1000; // 2.3, 3.5: these meet half and whole cents
        const auto dSatz = static_cast<double>(iSatz) / 100;
        const auto dFaktor = static_cast<double>(iFaktor);
        ASSERT_NO_FATAL_FAILURE(PruefeRundung(dSatz * dFaktor * 0.0001, iSatz * iFaktor, 10000));
        ASSERT_NO_FATAL_FAILURE(PruefeRundung(dSatz * (dFaktor * 0.0001), iSatz * iFaktor, 10000));
    }
}

// Points of the private schedule in hundredths of their count, at 5.62421 euro: eleven decimals in all. Every other
// row is round enough to meet half cents, as 50000 points at factor 1 do (2812.105).
TEST(BetragTest, PunkteMalFaktorenWieInGanzenZahlen) {
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 10000; ++i) {
        const bool bRund = i % 2 != 0;
        const auto iPunkte =
            static_cast<std::int64_t>((1 + zufall() % (bRund ? 20 : 3000)) * (bRund ? 10000 : 1));
        const auto iFaktor =
            static_cast<std::int64_t>((1 + zufall() % (bRund ? 40 : 99999)) * (bRund ? 1000 : 1));
        const auto dPunkte = static_cast<double>(iPunkte);
        const double dWert = dPunkte * 0.01 * static_cast<double>(iFaktor) * 0.0001 * 5.62421;
        ASSERT_NO_FATAL_FAILURE(PruefeRundung(dWert, iPunkte * iFaktor * 562421, 1'000'000'000));
    }
}

} // namespace
