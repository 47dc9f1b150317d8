#include "orvostatbs/host/Betrag.h"

#include "support/Wert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace orvostat {

namespace {

using namespace std::string_literals;

// Wert gives the stored text, which shows all that an amount holds.
CString Text(const std::string & s) { return CString(std::string_view(s)); }

const std::string GROESSTER = "e9223372036854.775807";
const std::string GROESSTES_MINUS = "e-9223372036854.775807";

struct SPaar {
    const char * pText;
    const char * pSoll;
};

TEST(BetragTest, LeerIstNichtNull) {
    CDBetrag betrag("e500");
    EXPECT_TRUE(betrag.IsPos() && betrag == CDBetrag(5.0, 'e') && betrag == CDPw("e50000"));
    betrag.Zero();
    EXPECT_TRUE(Wert(betrag) == "e0" && betrag.IsZero() && !betrag.IsEmpty() && !betrag.IsPos());
    EXPECT_FALSE(betrag == CDBetrag("e1") || betrag == CDBetrag(" 0") || betrag == CDBetrag());
    betrag.Empty();
    EXPECT_TRUE(betrag == CDBetrag("   ") && betrag.IsZero() && betrag.IsEmpty());
    betrag.Round();
    EXPECT_TRUE(betrag.RoundDown() == CDBetrag() && Wert(betrag) == "");
    betrag.Zero();
    EXPECT_EQ(Wert(betrag), "0");
    for (const char c : {'\0', '\1'}) // nothing stands between thousands
        EXPECT_EQ(Wert(CDBetrag(Text("e12"s + c + "5"))) + Wert(CDPw(Text("e12"s + c + "5"))), "e12e12");
}

// In any order.
TEST(BetragTest, SummenSindGenau) {
    std::mt19937_64 zufall(195583);
    std::vector<std::int64_t> vEinheiten(1000);
    for (std::int64_t & i : vEinheiten)
        i = static_cast<std::int64_t>(zufall()) / 1024 >> zufall() % 50;
    for (int i = 0; i < 20; ++i, std::shuffle(vEinheiten.begin(), vEinheiten.end(), zufall)) {
        CDBetrag plus;
        CDBetrag minus;
        for (const std::int64_t iEinheiten : vEinheiten) {
            plus += CDBetrag::AusEinheiten(iEinheiten, 'e');
            minus = minus - CDBetrag::AusEinheiten(iEinheiten, 'e');
        }
        const auto iSumme = std::accumulate(vEinheiten.begin(), vEinheiten.end(), std::int64_t{0});
        ASSERT_TRUE(plus.GetEinheiten() == iSumme && minus.GetEinheiten() == -iSumme) << iSumme;
    }
}

template <class T> std::string Beide(const char * pLinks, const char * pRechts) {
    const T links{CString(pLinks)};
    const T rechts{CString(pRechts)};
    return Werte(links + rechts, links - rechts);
}

template <class T> void PruefeSummen() {
    EXPECT_EQ(Werte(Beide<T>("e100", "e250"), Beide<T>("e1", " 195.583"), Beide<T>(" 100", "e100"),
                    Beide<T>("100", "e23"), Beide<T>("100", "23"), Beide<T>("", " 23"), Beide<T>("e100", ""),
                    Beide<T>("e10", "x5"), Beide<T>("", "")),
              "e350|e-150|e101|e-99| 295.583| -95.583|e123|e77|123|77| 23| -23|e100|e100|e15|e5||");
}

TEST(BetragTest, SummenProdukteUndQuotienten) {
    PruefeSummen<CDBetrag>();
    PruefeSummen<CWBetrag>();
    PruefeSummen<CVzW7Betrag>();
    CDBetrag summe("e100");
    (summe += CDBetrag(" 195583")) += summe;
    EXPECT_EQ(Werte(summe, 2.5 * CDBetrag(" 100"), CDBetrag("e100") *= -0.5), "e200200| 250|e-50");
    EXPECT_EQ(Werte(CDBetrag("e100") /= 0, CDBetrag("e100") /= -0.3, CDBetrag("e100").MalBruch(-1, 0)),
              "e100|e-333.333333|e100");
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag("e400"), 0.25);
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag(" 195583"), 0.001);
    EXPECT_DOUBLE_EQ(CDBetrag(" 195.583") / CDPw("e20000"), 0.5);
    EXPECT_EQ(CDBetrag("e100") / CDBetrag("e0"), 0.0);
    EXPECT_EQ(Werte(CDBetrag(CDPw("e13233") * 33.0), CDPw("e13233") * 0.5), "e4366.89|e6616.5");
}

// What a double means, as the product with 1 euro shows it.
TEST(BetragTest, DoubleStehtFuerSeineDezimalzahl) {
    const auto Wie = [](double d) {
        const std::string s = Wert(CDBetrag(d, 'e'));
        EXPECT_EQ(Werte(CDBetrag("e100") * d, CDBetrag("e0") * d), s + (s.empty() ? "|" : "|e0")) << d;
        return s;
    };
    EXPECT_EQ(Werte(Wie(2.3), Wie(3 * 0.0001), Wie(1 / 3.0), Wie(-1.00499999999), Wie(4e-9), Wie(1e-300),
                    Wie(43894734.82202017), Wie(std::nan(""))),
              "e230|e0.03|e33.333333|e-100.499999|e0.000001|e0|e4389473482.202017|");
    EXPECT_EQ(Werte(Wie(1e11), Wie(HUGE_VAL), Wie(-1e300)), Werte(GROESSTER, GROESSTER, GROESSTES_MINUS));
    // 1608 hundredths times 174 ten-thousandths, as a double 0.2797920000000001
    EXPECT_EQ(Wert(CDBetrag("e100000000000") * (1608 * 0.01 * (174 * 0.0001))), "e27979200000");
    EXPECT_EQ(Werte(CDBetrag("e5") /= -HUGE_VAL, CDBetrag("e5") /= std::nan(""), CDBetrag("e-5") /= 1e-300,
                    CDBetrag("e0") /= 1e-300),
              "e0||" + GROESSTES_MINUS + "|e0");
}

TEST(BetragTest, DarueberBleibtDasGroesste) {
    const CDBetrag max{Text(GROESSTER)};
    const CDBetrag min{Text(GROESSTES_MINUS)};
    EXPECT_TRUE(CDBetrag::AusEinheiten(INT64_MIN, 'e') == min && max.GetEinheiten() == INT64_MAX);
    EXPECT_TRUE(max + CDBetrag("e0.000001") == max && min - CDBetrag("e0.000001") == min);
    EXPECT_TRUE(min - max == min && max - min == max && (max - max).IsZero());
    EXPECT_TRUE(CDBetrag(max).Round() == max && CDBetrag(min).Round() == min);
    EXPECT_EQ(Wert(CDBetrag(max).RoundDown()), "e9223372036854");
    EXPECT_EQ(CDBetrag(max).ToW(' ').GetEinheiten(), INT64_MAX);
    EXPECT_TRUE(CDBetrag(max).MalBruch(INT64_MIN, INT64_MIN) == max);
    EXPECT_TRUE(CDBetrag(max).MalBruch(INT64_MIN, 1) == min);
    EXPECT_EQ((CDBetrag("e0.000001") * 0x1p63).GetEinheiten(), INT64_MAX);
    EXPECT_TRUE(CDBetrag(min).MalBruch(INT64_MIN, -7) == min);
}

TEST(BetragTest, Umrechnung) {
    const auto Nach = [](char cW, const char * p) { return CDBetrag(CString(p)).ToW(cW); };
    EXPECT_EQ(Werte(Nach(' ', "e-10000"), Nach('e', " -19558.3"), Nach('e', "123"), Nach('x', "e123"),
                    Nach('e', "x123"), Nach(0, "e123"), Nach('e', "")),
              " -19558.3|e-10000|e123|x123|e123|123|");
}

// What is written after reading; where it differs from the text, the text is another way to write the same.
TEST(BetragTest, GespeicherterText) {
    constexpr SPaar FAELLE[] = {{"e-12345", "e-12345"}, {" 12345", " 12345"}, {"-12345", "-12345"},
                                {"e-    5", "e-5"},     {"- 5", "-5"},        {"  e - 5", "e-5"},
                                {"  .5", " 0.5"},       {"+5", "5"},          {"e   7", "e7"},
                                {"  -7", " -7"},        {"e007", "e7"},       {"e43.89", "e43.89"},
                                {"e1.5.70", "e1.5"},    {"e12x9", "e12"},     {"e12,5", "e12"},
                                {"e--1", "e0"},         {"x12", "x12"},       {"€12", "€12"},
                                {"exyz", "e0"},         {"-", "0"},           {"  ", ""}};
    for (const auto & [pText, pSoll] : FAELLE) {
        const CString s{AusUtf8(pText)};
        const std::string sSoll = pSoll;
        EXPECT_EQ(Werte(CDBetrag(s), CW7Betrag(s), CString(CVzW7Betrag(s)), CString(CDPw(s))),
                  sSoll + "|" + sSoll + "|" + sSoll + "|" + sSoll);
    }
    // More decimals are cut, one up behind a 0 or 5; 2^64 + 5 and all beyond are the largest.
    const std::string sNullen(400, '0');
    const auto Gelesen = [](const std::string & s) { return CDBetrag(Text(s)); };
    EXPECT_EQ(Werte(Gelesen("e1.2345678"), Gelesen("e-1.2345651"), Gelesen("e1.2345650"),
                    Gelesen("e" + sNullen + "5"), Gelesen("e5." + sNullen)),
              "e1.234567|e-1.234566|e1.234565|e5|e5");
    EXPECT_EQ(Werte(Gelesen("e9223372036854.775808"), Gelesen("e18446744073709551621"),
                    Gelesen("e-" + std::string(400, '7'))),
              Werte(GROESSTER, GROESSTER, GROESSTES_MINUS));
    EXPECT_EQ(Wert(CDPw("e1.23409"_t)), "e1.2341");
}

// Every text of the stored form comes back as it was, and the double of its value means the same up to 60 million euro.
TEST(BetragTest, GespeicherteTexteUeberstehenDieReise) {
    std::mt19937_64 zufall(20020101);
    for (int i = 0; i < 20000; ++i) {
        const auto iEinheiten = static_cast<std::int64_t>(zufall()) >> zufall() % 60;
        const std::int64_t iBetrag = std::abs(iEinheiten);
        std::string s = std::to_string(iBetrag % 1'000'000 + 1'000'000).replace(0, 1, ".");
        s = (iEinheiten < 0 ? "-" : "") + std::to_string(iBetrag / 1'000'000) + s;
        s.erase(s.find_last_not_of('0') + 1);
        if (s.back() == '.') s.pop_back();
        const CDBetrag betrag{Text("e" + s)};
        ASSERT_EQ(Wert(betrag), "e" + s);
        ASSERT_TRUE(betrag == CDBetrag::AusEinheiten(iEinheiten, 'e')) << s;
        if (iBetrag < 6'000'000'000'000'000) {
            ASSERT_TRUE(betrag == CDBetrag(std::strtod((s + "e-2").c_str(), nullptr), 'e')) << s;
        }
    }
}

TEST(BetragTest, SpaltenUndAnzeige) {
    const auto Spalte = [](const char * p, int i, bool b) {
        return CDBetrag(CString(p)).ToDb(i, b, false, 0, 0);
    };
    EXPECT_EQ(Werte(Spalte("e-5", 5, true), Spalte(" 5", 5, true), Spalte("5", 5, true),
                    Spalte("e12345", 5, true), Spalte("", 5, true), Spalte("e-5", 5, false),
                    Spalte("e5", -1, true)),
              "e  -5|    5|5    |e12345|     |e   5|e5");
    const auto Anzeige = [](const char * p, int i, bool b) { return CDBetrag(CString(p)).ToExt(i, b); };
    EXPECT_EQ(Werte(Anzeige("e99999", 3, true), Anzeige(" 5", 3, true), Anzeige("e-123456789", 3, true),
                    Anzeige("e-0.4", 3, true), Anzeige("e100.5", 0, true), Anzeige("e123456", 9, false),
                    Anzeige("", 3, false), Anzeige(GROESSTER.c_str(), 0, true)),
              "999,99|0,05|-1.234.567,89|0,00|1,01|  1234,56|   |92.233.720.368,55");
    constexpr SPaar FAELLE[] = {{"1.234,56", "123456"}, {"e 1.234,5", "e123450"}, {"  1234,5", "123450"},
                                {"-0,05", "-5"},        {"e,125", "e12.5"},       {"e1,2,3", "e120"},
                                {"e1,23.5", "e123"},    {"  12345", " 12345"},    {"e4366.89", "e4366.89"}};
    for (const auto & [pText, pSoll] : FAELLE)
        EXPECT_EQ(Wert(CWBetrag{CString(pText)}), pSoll) << "'" << pText << "'";
}

__extension__ typedef __int128 Int128;

// Rounds and cuts as the exact value of iZaehler / iNenner hundred-millionths does.
void PruefeRunden(CDBetrag betrag, Int128 iZaehler, std::int64_t iNenner) {
    const Int128 iCent = Int128{iNenner} * 1'000'000;
    const Int128 iBetrag = iZaehler < 0 ? -iZaehler : iZaehler;
    const int iVorzeichen = iZaehler < 0 ? -1'000'000 : 1'000'000;
    ASSERT_EQ(CDBetrag(betrag).RoundDown().GetEinheiten(),
              static_cast<std::int64_t>(iBetrag / iCent) * iVorzeichen);
    ASSERT_EQ(betrag.Round().GetEinheiten(),
              static_cast<std::int64_t>((2 * iBetrag + iCent) / (2 * iCent)) * iVorzeichen);
}

// Products, and what they leave of another amount. Every other product lies on a whole or half cent or next to one by
// less than a hundred-millionth.
TEST(BetragTest, ProdukteRundenWieDerExakteWert) {
    constexpr std::int64_t NENNER[] = {3, 7, 100, 10000, 195583, 1000000};
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 50000 && !::testing::Test::HasFailure(); ++i) {
        const std::int64_t iNenner = NENNER[zufall() % std::size(NENNER)];
        std::int64_t iWert = static_cast<std::int64_t>(zufall() % 3'000'000'000'000);
        std::int64_t iZaehler = static_cast<std::int64_t>(zufall() % 100'000) - 50'000;
        if (i % 2 == 0) {
            iWert = static_cast<std::int64_t>(zufall() % 1'000'000) * 500'000 * iNenner;
            iWert += static_cast<std::int64_t>(zufall() % 3) - 1;
            iZaehler = i % 4 - 1;
        }
        SCOPED_TRACE(Werte(iWert, iZaehler, iNenner));
        const Int128 iProdukt = Int128{iWert} * iZaehler;
        const CDBetrag produkt = CDBetrag::AusEinheiten(iWert, 'e').MalBruch(iZaehler, iNenner);
        PruefeRunden(produkt, iProdukt, iNenner);
        const std::int64_t iGanzes = static_cast<std::int64_t>(zufall() % 1'000'000) * 1'000'000;
        PruefeRunden(CDBetrag::AusEinheiten(iGanzes, 'e') - produkt, Int128{iGanzes} * iNenner - iProdukt,
                     iNenner);
    }
}

// Rates times factors; points in hundredths, at 5.62421 euro: eleven decimals in all.
TEST(BetragTest, DoublesRundenWieDerExakteWert) {
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 10000 && !::testing::Test::HasFailure(); ++i) {
        const bool bRund = i % 2 != 0; // half cents, as 50000 points at factor 1 (2812.105)
        const auto iSatz = static_cast<int>((1 + zufall() % (bRund ? 20 : 3000)) * (bRund ? 10000 : 1));
        const auto iFaktor = static_cast<int>((1 + zufall() % (bRund ? 40 : 99999)) * (bRund ? 1000 : 1));
        SCOPED_TRACE(Werte(iSatz, iFaktor));
        const Int128 iProdukt = Int128{iSatz} * iFaktor;
        PruefeRunden(CDBetrag(iSatz * 0.01 * iFaktor * 0.0001 * 5.62421, 'e'), iProdukt * 562421, 1000);
        PruefeRunden(CDBetrag(iSatz / 100.0, 'e') * (iFaktor * 0.0001), iProdukt * 100, 1);
    }
}

} // namespace

} // namespace orvostat
