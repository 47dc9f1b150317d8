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

// Wert gives the stored text, which shows all that an amount holds.
CString Text(const std::string & s) { return CString(std::string_view(s)); }

constexpr const char * GROESSTER = "e9223372036854.775807";
constexpr const char * GROESSTES_MINUS = "e-9223372036854.775807";

struct SPaar {
    const char * pText;
    const char * pSoll;
};

TEST(BetragTest, LeerIstNichtNull) {
    for (const char * pLeer : {"", "           "}) {
        const CDBetrag leer{CString(pLeer)};
        EXPECT_TRUE(leer.IsEmpty() && leer.IsZero() && !leer.IsPos()) << "'" << pLeer << "'";
        EXPECT_EQ(leer.GetWaehrung(), 0);
        EXPECT_EQ(Wert(leer), "");
        EXPECT_TRUE(leer == CDBetrag());
    }
    for (const char * pNull : {"e0", "e", "e-0", "0", "-", "exyz"}) {
        const CDBetrag null{CString(pNull)};
        EXPECT_TRUE(!null.IsEmpty() && null.IsZero() && !null.IsPos()) << "'" << pNull << "'";
        EXPECT_FALSE(null == CDBetrag());
    }
    CDBetrag betrag("e500");
    betrag.Zero();
    EXPECT_EQ(Wert(betrag), "e0");
    betrag.Empty();
    EXPECT_TRUE(betrag == CDBetrag());
    betrag.Zero();
    EXPECT_EQ(Wert(betrag), "0");
}

TEST(BetragTest, GleichheitSiehtWertWaehrungUndLeere) {
    EXPECT_TRUE(CDBetrag("e100") == CDBetrag(1.0, 'e'));
    EXPECT_FALSE(CDBetrag("e100") == CDBetrag("e101"));
    EXPECT_FALSE(CDBetrag("e100") == CDBetrag(" 100"));
    EXPECT_FALSE(CDBetrag("0") == CDBetrag(""));
    EXPECT_TRUE(CDPw("e10000") == CDBetrag("e100"));
}

// In any order; as doubles the sum of a million times 0.10 is 100000.00000133, and 60 times 5.9999999999999964.
TEST(BetragTest, SummenSindGenau) {
    CDBetrag summe;
    for (int i = 0; i < 1'000'000; ++i)
        summe += CDBetrag("e10");
    EXPECT_EQ(Wert(summe), "e10000000");
    EXPECT_TRUE(CDBetrag("e30") - CDBetrag("e10") - CDBetrag("e20") == CDBetrag("e0"));

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

struct SSumme {
    const char *pLinks, *pRechts, *pSumme, *pDifferenz;
};
constexpr SSumme SUMMEN[] = {{"e100", "e250", "e350", "e-150"}, {"e1", " 195.583", "e101", "e-99"},
                             {"100", "e23", "e123", "e77"},     {"e100", "23", "e123", "e77"},
                             {"100", "23", "123", "77"},        {"", " 23", " 23", " -23"},
                             {"e100", "", "e100", "e100"},      {"e10", "x5", "e15", "e5"}};

template <class T> void PruefeSummen() {
    for (const SSumme & f : SUMMEN) {
        SCOPED_TRACE(std::string(f.pLinks) + " und " + f.pRechts);
        const T links{CString(f.pLinks)};
        const T rechts{CString(f.pRechts)};
        EXPECT_EQ(Wert(links + rechts), f.pSumme);
        EXPECT_EQ(Wert(links - rechts), f.pDifferenz);
    }
}

TEST(BetragTest, Summen) {
    PruefeSummen<CDBetrag>();
    PruefeSummen<CWBetrag>();
    PruefeSummen<CVzW7Betrag>();
    EXPECT_EQ(Wert(CDBetrag(" 100") + CDBetrag("e100")), " 295.583");
    EXPECT_TRUE(CDBetrag() - CDBetrag() == CDBetrag());
    CDBetrag summe;
    summe += CDBetrag("e100");
    (summe += CDBetrag(" 195583")) += summe;
    EXPECT_EQ(Wert(summe), "e200200");
}

TEST(BetragTest, ProdukteUndQuotienten) {
    EXPECT_EQ(Wert(2.5 * CDBetrag(" 100")), " 250");
    EXPECT_EQ(Wert(CDBetrag("e100") *= -0.5), "e-50");
    EXPECT_EQ(Wert(CDBetrag("e100") /= 0), "e100");
    EXPECT_EQ(Wert(CDBetrag("e100") /= -0.3), "e-333.333333");
    EXPECT_EQ(Wert(CDBetrag("e100").MalBruch(-1, 0)), "e100");
    EXPECT_TRUE(CDBetrag() * -2.0 == CDBetrag() && CDBetrag() / CDBetrag("e1") == 0.0);
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag("e400"), 0.25);
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag(" 195583"), 0.001);
    EXPECT_DOUBLE_EQ(CDBetrag(" 195.583") / CDPw("e20000"), 0.5);
    EXPECT_EQ(CDBetrag("e100") / CDBetrag("e0"), 0.0);
}

// What a double means, as the product with 1 euro shows it.
TEST(BetragTest, DoubleStehtFuerSeineDezimalzahl) {
    struct SFall {
        double dFaktor;
        const char * pSoll;
    };
    const SFall faelle[] = {{2.3, "e230"},
                            {3 * 0.0001, "e0.03"},
                            {0.1 * 7, "e70"},
                            {1 / 3.0, "e33.333333"},
                            {-1.00499999999, "e-100.499999"},
                            {4e-9, "e0.000001"},
                            {1e-300, "e0"},
                            {1e11, GROESSTER},
                            {43894734.82202017, "e4389473482.202017"},
                            {100000000.005, "e10000000000.5"},
                            {-1e300, GROESSTES_MINUS},
                            {HUGE_VAL, GROESSTER},
                            {std::nan(""), ""}};
    for (const auto & [dFaktor, pSoll] : faelle) {
        EXPECT_EQ(Wert(CDBetrag("e100") * dFaktor), pSoll) << dFaktor;
        EXPECT_EQ(Wert(CDBetrag(dFaktor, 'e')), pSoll) << dFaktor;
        EXPECT_EQ(Wert(CDBetrag("e0") * dFaktor), std::isnan(dFaktor) ? "" : "e0") << dFaktor;
    }
    // 1608 hundredths times 174 ten-thousandths, as a double 0.2797920000000001
    EXPECT_EQ(Wert(CDBetrag("e100000000000") * (1608 * 0.01 * (174 * 0.0001))), "e27979200000");
    EXPECT_EQ(Wert(CDBetrag("e5") /= -HUGE_VAL), "e0");
    EXPECT_EQ(Wert(CDBetrag("e5") /= std::nan("")), "");
    EXPECT_EQ(Wert(CDBetrag("e-5") /= 1e-300), GROESSTES_MINUS);
    EXPECT_EQ(Wert(CDBetrag("e0") /= 1e-300), "e0");
}

TEST(BetragTest, DarueberBleibtDasGroesste) {
    const CDBetrag max{CString(GROESSTER)};
    const CDBetrag min{CString(GROESSTES_MINUS)};
    EXPECT_TRUE(CDBetrag::AusEinheiten(INT64_MIN, 'e') == min && max.GetEinheiten() == INT64_MAX);
    EXPECT_TRUE(max + CDBetrag("e0.000001") == max && min - CDBetrag("e0.000001") == min);
    EXPECT_TRUE(min - max == min && max - min == max && (max - max).IsZero());
    EXPECT_TRUE(CDBetrag(max).Round() == max && CDBetrag(min).Round() == min);
    EXPECT_EQ(Wert(CDBetrag(max).RoundDown()), "e9223372036854");
    EXPECT_EQ(CDBetrag(max).ToW(' ').GetEinheiten(), INT64_MAX);
    EXPECT_EQ(max.ToExt(0, true).Utf8(), "92.233.720.368,55");
    EXPECT_TRUE(CDBetrag(max).MalBruch(INT64_MIN, INT64_MIN) == max);
    EXPECT_TRUE(CDBetrag(max).MalBruch(INT64_MIN, 1) == min);
    EXPECT_EQ((CDBetrag("e0.000001") * 0x1p63).GetEinheiten(), INT64_MAX);
    EXPECT_TRUE(CDBetrag(min).MalBruch(INT64_MIN, -7) == min);
}

TEST(BetragTest, Umrechnung) {
    struct SFall {
        const char * pVon;
        char cW;
        const char * pNach;
    };
    constexpr SFall FAELLE[] = {{"e10000", ' ', " 19558.3"}, {" 19558.3", 'e', "e10000"},
                                {"e123", 'e', "e123"},       {" 7", ' ', " 7"},
                                {"123", 'e', "e123"},        {"123", ' ', " 123"},
                                {"e123", 'x', "x123"},       {"x123", 'e', "e123"},
                                {"e123", 0, "123"},          {"", 'e', ""}};
    for (const SFall & f : FAELLE) {
        CDBetrag betrag{CString(f.pVon)};
        EXPECT_EQ(&betrag.ToW(f.cW), &betrag);
        EXPECT_EQ(Wert(betrag), f.pNach) << "'" << f.pVon << "' nach '" << f.cW << "'";
        EXPECT_EQ(betrag.IsEmpty(), *f.pVon == 0);
    }
}

// What is written after reading; where it differs from the text, the text is another way to write the same.
TEST(BetragTest, GespeicherterText) {
    constexpr SPaar FAELLE[] = {
        {"e12345", "e12345"}, {" 12345", " 12345"}, {"-12345", "-12345"}, {"e-    5", "e-5"},
        {"- 5", "-5"},        {"  e500", "e500"},   {"  e - 5", "e-5"},   {"  .5", " 0.5"},
        {"   -  5", " -5"},   {"+5", "5"},          {"e   7", "e7"},      {"e  -7", "e-7"},
        {"  -7", " -7"},      {"e007", "e7"},       {"e43.89", "e43.89"}, {"e-0.5", "e-0.5"},
        {"e.5", "e0.5"},      {"e1.50", "e1.5"},    {"e1.5.7", "e1.5"},   {"e12x9", "e12"},
        {"e12,5", "e12"},     {"e1 2", "e1"},       {"e--1", "e0"},       {"x12", "x12"}};
    for (const auto & [pText, pSoll] : FAELLE) {
        SCOPED_TRACE(pText);
        EXPECT_EQ(Wert(CDBetrag{CString(pText)}), pSoll);
        EXPECT_EQ(Wert(CW7Betrag{CString(pText)}), pSoll);
        EXPECT_EQ(CString(CVzW7Betrag{CString(pText)}).Utf8(), pSoll);
        EXPECT_EQ(CString(CDPw{CString(pText)}).Utf8(), pSoll);
    }
    EXPECT_EQ(Wert(CDBetrag("€12")), "€12");
    // More decimals are cut, one up behind a 0 or 5.
    EXPECT_EQ(Wert(CDBetrag("e1.2345678"_t)), "e1.234567");
    EXPECT_EQ(Wert(CDBetrag("e-1.2345651"_t)), "e-1.234566");
    EXPECT_EQ(Wert(CDPw("e1.23409"_t)), "e1.2341");
    EXPECT_EQ(Wert(CDBetrag("e9223372036854.775808"_t)), GROESSTER);
    EXPECT_EQ(Wert(CDBetrag("e18446744073709551621"_t)), GROESSTER); // 2^64 + 5
    const std::string sLang(400, '7');
    const std::string sNullen(400, '0');
    EXPECT_EQ(Wert(CDBetrag(Text("e-" + sLang))), GROESSTES_MINUS);
    EXPECT_EQ(Wert(CDBetrag(Text("e" + sNullen + "5"))), "e5");
    EXPECT_EQ(Wert(CDBetrag(Text("e5." + sNullen))), "e5");
}

TEST(BetragTest, GespeicherterTextInSpalten) {
    constexpr SPaar FAELLE[] = {
        {"e-5", "e  -5"}, {" 5", "    5"}, {"5", "5    "}, {"e12345", "e12345"}, {"", "     "}};
    for (const auto & [pText, pSoll] : FAELLE) {
        const CString sSpalte = CDBetrag{CString(pText)}.ToDb(5, true, false, 0.0, 0.0);
        EXPECT_EQ(sSpalte.Utf8(), pSoll);
        EXPECT_TRUE(CDBetrag(sSpalte) == CDBetrag{CString(pText)}) << pText;
    }
    EXPECT_EQ(CDBetrag("e-5").ToDb(5, false, false, 0.0, 0.0), CString("e   5"));
    EXPECT_EQ(CDBetrag("e5").ToDb(-1, true, false, 0.0, 0.0), CString("e5"));
}

TEST(BetragTest, PunktwertZaehltZehntausendstel) {
    EXPECT_TRUE(CDPw("23000") == CDBetrag(2.3, 0));
    EXPECT_TRUE(CDPw("e13233.0001") == CDBetrag(1.32330001, 'e'));
    EXPECT_EQ(Wert(CDBetrag(CDPw("e13233") * 33.0)), "e4366.89");
    EXPECT_EQ(Wert(CDPw("e13233") * 0.5), "e6616.5");
    EXPECT_TRUE(CDBetrag(CDPw() * 33.0) == CDBetrag());
}

// Every text of the stored form comes back as it was, and the double of its value means the same up to 60 million euro.
TEST(BetragTest, GespeicherteTexteUeberstehenDieReise) {
    std::mt19937_64 zufall(20020101);
    for (int i = 0; i < 20000; ++i) {
        const auto iEinheiten = static_cast<std::int64_t>(zufall()) >> zufall() % 60;
        const bool bMinus = iEinheiten < 0;
        std::string s = std::to_string(iEinheiten).substr(bMinus ? 1 : 0);
        s.insert(0, s.size() < 9 ? 9 - s.size() : 0, '0'); // eight decimals and at least one digit in front
        const double dWert =
            std::strtod((s.substr(0, s.size() - 8) + "." + s.substr(s.size() - 8)).c_str(), nullptr);
        s.insert(s.size() - 6, 1, '.');
        s.erase(s.find_last_not_of('0') + 1);
        if (s.back() == '.') s.pop_back();
        s.erase(0, std::min(s.find_first_not_of('0'), std::min(s.find('.'), s.size()) - 1));
        const std::string sText = (i % 2 ? "e" : " ") + std::string(bMinus ? "-" : "") + s;

        const CDBetrag betrag{Text(sText)};
        ASSERT_EQ(Wert(betrag), sText);
        ASSERT_TRUE(betrag == CDBetrag::AusEinheiten(iEinheiten, sText[0])) << sText;
        if (std::abs(iEinheiten) < 6'000'000'000'000'000) {
            ASSERT_TRUE(betrag == CDBetrag(bMinus ? -dWert : dWert, sText[0])) << sText;
        }
    }
}

TEST(BetragTest, Anzeigetext) {
    constexpr SPaar FAELLE[] = {
        {"e12345678", "123.456,78"},      {"e99999", "999,99"}, {" 5", "0,05"},    {"e-5", "-0,05"},
        {"e-123456789", "-1.234.567,89"}, {"e-0.4", "0,00"},    {"e100.5", "1,01"}};
    for (const auto & [pText, pSoll] : FAELLE)
        EXPECT_EQ(CDBetrag{CString(pText)}.ToExt(3, true).Utf8(), pSoll) << pText;
    EXPECT_EQ(CDBetrag("e123456").ToExt(0, false).Utf8(), "1234,56");
    EXPECT_EQ(CDBetrag("e123456").ToExt(9, false).Utf8(), "  1234,56");
    EXPECT_EQ(CDBetrag().ToExt(3, false).Utf8(), "   ");
}

TEST(BetragTest, LiestAnzeigetexteAusSpalten) {
    constexpr SPaar FAELLE[] = {{"1.234,56", "123456"}, {"e 1.234,5", "e123450"}, {"  1234,5", "123450"},
                                {"-0,05", "-5"},        {"e12,", "e1200"},        {"e,125", "e12.5"},
                                {"e1,2,3", "e120"},     {"e1,23.5", "e123"},      {"e  12345", "e12345"},
                                {"  12345", " 12345"},  {"e4366.89", "e4366.89"}};
    for (const auto & [pText, pSoll] : FAELLE)
        EXPECT_EQ(Wert(CWBetrag{CString(pText)}), pSoll) << "'" << pText << "'";
    EXPECT_EQ(Wert(CWBetrag(12.34, 'e')), "e1234");
}

TEST(BetragTest, RundenUndAbschneiden) {
    struct SFall {
        double dWert;
        const char *pRound, *pRoundDown;
    };
    const SFall faelle[] = {{1.005, "e101", "e100"},         {1.0049999, "e100", "e100"},
                            {-1.009, "e-101", "e-100"},      {0.005, "e1", "e0"},
                            {0.0049999, "e0", "e0"},         {-0.004, "e0", "e0"},
                            {10.05 * 2.3, "e2312", "e2311"}, {0.57 * 1.0, "e57", "e57"}};
    for (const SFall & f : faelle) {
        EXPECT_EQ(Wert(CDBetrag(f.dWert, 'e').Round()), f.pRound) << f.dWert;
        EXPECT_EQ(Wert(CDBetrag(f.dWert, 'e').RoundDown()), f.pRoundDown) << f.dWert;
    }
    CDBetrag leer;
    leer.Round();
    EXPECT_TRUE(leer.RoundDown() == CDBetrag());
}

__extension__ typedef __int128 Int128;

// Whole cents of iZaehler / iNenner hundred-millionths, the exact value rounded once, in hundred-millionths again.
std::int64_t Exakt(Int128 iZaehler, std::int64_t iNenner, bool bAbschneiden) {
    const Int128 iCent = Int128{iNenner} * 1'000'000;
    const Int128 iBetrag = iZaehler < 0 ? -iZaehler : iZaehler;
    const auto iErgebnis =
        static_cast<std::int64_t>((2 * iBetrag + (bAbschneiden ? 0 : iCent)) / (2 * iCent));
    return (iZaehler < 0 ? -iErgebnis : iErgebnis) * 1'000'000;
}

// Products, and what they leave of another amount, round as the exact values do. Every other product lies on a whole
// or half cent or next to one by less than a hundred-millionth.
TEST(BetragTest, ProdukteRundenWieDerExakteWert) {
    constexpr std::int64_t NENNER[] = {3, 7, 100, 10000, 195583, 1000000};
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 50000; ++i) {
        const std::int64_t iNenner = NENNER[zufall() % std::size(NENNER)];
        std::int64_t iWert = static_cast<std::int64_t>(zufall() % 3'000'000'000'000);
        std::int64_t iZaehler = static_cast<std::int64_t>(zufall() % 100'000) - 50'000;
        if (i % 2 == 0) {
            iWert = static_cast<std::int64_t>(zufall() % 1'000'000) * 500'000 * iNenner;
            iWert += static_cast<std::int64_t>(zufall() % 3) - 1;
            iZaehler = i % 4 - 1;
        }
        SCOPED_TRACE(std::to_string(iWert) + " * " + std::to_string(iZaehler) + " / " +
                     std::to_string(iNenner));
        const Int128 iProdukt = Int128{iWert} * iZaehler;
        const CDBetrag produkt = CDBetrag::AusEinheiten(iWert, 'e').MalBruch(iZaehler, iNenner);
        ASSERT_EQ(CDBetrag(produkt).Round().GetEinheiten(), Exakt(iProdukt, iNenner, false));
        ASSERT_EQ(CDBetrag(produkt).RoundDown().GetEinheiten(), Exakt(iProdukt, iNenner, true));
        const std::int64_t iGanzes = static_cast<std::int64_t>(zufall() % 1'000'000) * 1'000'000;
        CDBetrag rest = CDBetrag::AusEinheiten(iGanzes, 'e') - produkt;
        const Int128 iRest = Int128{iGanzes} * iNenner - iProdukt;
        ASSERT_EQ(CDBetrag(rest).Round().GetEinheiten(), Exakt(iRest, iNenner, false));
        ASSERT_EQ(rest.RoundDown().GetEinheiten(), Exakt(iRest, iNenner, true));
    }
}

// The same with doubles: rates times factors; points in hundredths, at 5.62421 euro: eleven decimals in all.
TEST(BetragTest, DoublesRundenWieDerExakteWert) {
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 10000; ++i) {
        const bool bRund = i % 2 != 0; // half cents, as 50000 points at factor 1 (2812.105)
        const auto iSatz = static_cast<int>((1 + zufall() % (bRund ? 20 : 3000)) * (bRund ? 10000 : 1));
        const auto iFaktor = static_cast<int>((1 + zufall() % (bRund ? 40 : 99999)) * (bRund ? 1000 : 1));
        const Int128 iProdukt = Int128{iSatz} * iFaktor;
        CDBetrag betrag(iSatz * 0.01 * iFaktor * 0.0001 * 5.62421, 'e');
        ASSERT_EQ(betrag.Round().GetEinheiten(), Exakt(iProdukt * 562421, 1000, false))
            << iSatz << ' ' << iFaktor;
        betrag = CDBetrag(iSatz / 100.0, 'e') * (iFaktor * 0.0001);
        ASSERT_EQ(betrag.RoundDown().GetEinheiten(), Exakt(iProdukt * 100, 1, true))
            << iSatz << ' ' << iFaktor;
    }
}

} // namespace

} // namespace orvostat
