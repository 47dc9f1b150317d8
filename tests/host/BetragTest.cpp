#include "orvostatbs/host/Betrag.h"

#include "support/Wert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

namespace {

using orvostat::Wert; // the stored text, which shows all that an amount holds

CString Text(const std::string & s) { return CString(std::string_view(s)); }

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

TEST(BetragTest, WasDoublesNichtHaltenIstNull) {
    const CDBetrag rest = CDBetrag("e30") - CDBetrag("e10") - CDBetrag("e20"); // as doubles not quite nothing
    EXPECT_FALSE(rest == CDBetrag("e0"));
    EXPECT_TRUE(rest.IsZero() && CDBetrag("e0.000001").IsPos());
    EXPECT_FALSE((rest * -1).IsPos() || rest.IsPos());
    EXPECT_EQ(Wert(rest), "e0");
    EXPECT_FALSE(CDBetrag("e-0.000001").IsZero() || CDBetrag("e-0.000001").IsPos());
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
    EXPECT_EQ(Wert(CDBetrag("e100") * 2.5), "e250");
    EXPECT_EQ(Wert(2.5 * CDBetrag(" 100")), " 250");
    EXPECT_EQ(Wert(CDBetrag("e100") *= -0.5), "e-50");
    EXPECT_EQ(Wert(CDBetrag("e100") /= 0), "e100");
    EXPECT_TRUE(CDBetrag() * -2.0 == CDBetrag());
    EXPECT_TRUE((CDBetrag() *= HUGE_VAL) == CDBetrag());
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag("e400"), 0.25);
    EXPECT_DOUBLE_EQ(CDBetrag("e100") / CDBetrag(" 195583"), 0.001);
    EXPECT_DOUBLE_EQ(CDBetrag(" 195.583") / CDPw("e20000"), 0.5);
    EXPECT_EQ(CDBetrag("e100") / CDBetrag("e0"), 0.0);
    EXPECT_EQ(CDBetrag() / CDBetrag("e100"), 0.0);
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
    constexpr SPaar FAELLE[] = {{"e12345", "e12345"}, {" 12345", " 12345"}, {"-12345", "-12345"},
                                {"+5", "5"},          {"e   7", "e7"},      {"e  -7", "e-7"},
                                {"  -7", " -7"},      {"e007", "e7"},       {"e43.89", "e43.89"},
                                {"e-0.5", "e-0.5"},   {"e.5", "e0.5"},      {"e1.50", "e1.5"},
                                {"e1.5.7", "e1.5"},   {"e12x9", "e12"},     {"e12,5", "e12"},
                                {"e1 2", "e1"},       {"e--1", "e0"},       {"x12", "x12"}};
    for (const auto & [pText, pSoll] : FAELLE) {
        SCOPED_TRACE(pText);
        EXPECT_EQ(Wert(CDBetrag{CString(pText)}), pSoll);
        EXPECT_EQ(Wert(CW7Betrag{CString(pText)}), pSoll);
        EXPECT_EQ(CString(CVzW7Betrag{CString(pText)}).Utf8(), pSoll);
        EXPECT_EQ(CString(CDPw{CString(pText)}).Utf8(), pSoll);
    }
    EXPECT_EQ(Wert(CDBetrag("€12")), "€12");
    EXPECT_EQ(Wert(CDBetrag("e900719925474099"_t)), "e900719925474099");
    EXPECT_EQ(Wert(CDBetrag("e1.2345678"_t)), "e1.234568");
    EXPECT_EQ(Wert(CDPw("e1.2345678"_t)), "e1.2346");
    const std::string sLang(400, '7');
    const std::string sNullen(400, '0');
    EXPECT_EQ(Wert(CDBetrag(Text("e-" + sLang))).size(), 2 + 309 + 2) << "the largest double, in hundredths";
    EXPECT_EQ(Wert(CDBetrag(Text("e" + sNullen + "5"))), "e5");
    EXPECT_EQ(Wert(CDBetrag(Text("e." + sNullen + "5"))), "e0");
    EXPECT_EQ(Wert(CDBetrag(Text("e5." + sNullen))), "e5");
    EXPECT_EQ(Wert(CDBetrag("e1") *= HUGE_VAL), "");
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
        ASSERT_EQ(Wert(betrag), sText);
        ASSERT_TRUE(betrag == CDBetrag(sText[1] == '-' ? -dWert : dWert, sText[0])) << sText;
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
    const SFall faelle[] = {{1.005, "e101", "e100"}, {1.0049999, "e100", "e100"}, {-1.009, "e-101", "e-100"},
                            {0.005, "e1", "e0"},     {0.0049999, "e0", "e0"},     {-0.004, "e0", "e0"}};
    for (const SFall & f : faelle) {
        EXPECT_EQ(Wert(CDBetrag(f.dWert, 'e').Round()), f.pRound) << f.dWert;
        EXPECT_EQ(Wert(CDBetrag(f.dWert, 'e').RoundDown()), f.pRoundDown) << f.dWert;
    }
    EXPECT_EQ(Wert(CDBetrag(100000000.005, 'e').Round()), "e10000000001");
    EXPECT_EQ(Wert(CDBetrag(40000000000000.0, 'e').Round()), "e4000000000000000");
    EXPECT_EQ(Wert(CDBetrag(1e20, 'e').RoundDown()), "e10000000000000000000000");
    CDBetrag leer;
    leer.Round();
    EXPECT_TRUE(leer.RoundDown() == CDBetrag());
}

// Rounds both ways and compares with cents from integer arithmetic: dWert is iZaehler / iNenner cents.
void PruefeRundung(double dWert, std::int64_t iZaehler, std::int64_t iNenner) {
    EXPECT_EQ(Wert(CDBetrag(dWert, 'e').Round()), "e" + std::to_string((iZaehler + iNenner / 2) / iNenner));
    EXPECT_EQ(Wert(CDBetrag(dWert, 'e').RoundDown()), "e" + std::to_string(iZaehler / iNenner));
}

// Rates times factors; points of the private schedule in hundredths of their count, at 5.62421 euro: eleven decimals
// in all. Every other row is round enough to meet half cents, as 50000 points at factor 1 do (2812.105).
TEST(BetragTest, ProdukteRundenWieInGanzenZahlen) {
    std::mt19937_64 zufall(562421);
    for (int i = 0; i < 10000 && !HasFailure(); ++i) {
        const bool bRund = i % 2 != 0;
        const auto iSatz = static_cast<int>((1 + zufall() % (bRund ? 20 : 3000)) * (bRund ? 10000 : 1));
        const auto iFaktor = static_cast<int>((1 + zufall() % (bRund ? 40 : 99999)) * (bRund ? 1000 : 1));
        const std::int64_t iProdukt = std::int64_t{iSatz} * iFaktor;
        SCOPED_TRACE(std::to_string(iSatz) + " mal " + std::to_string(iFaktor));
        PruefeRundung(iSatz * 0.01 * iFaktor * 0.0001 * 5.62421, iProdukt * 562421, 1'000'000'000);
        PruefeRundung(iSatz / 100.0 * (iFaktor * 0.0001), iProdukt, 10000);
        const int iGross = 99 * i + 1; // up to nearly 10000 euro
        PruefeRundung(iGross / 100.0 * iFaktor * 0.0001, std::int64_t{iGross} * iFaktor, 10000);
    }
}

} // namespace
