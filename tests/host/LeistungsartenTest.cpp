#include "orvostatbs/host/Leistungsarten.h"

#include <string>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

// The letters out of all 256 for which a question is answered with yes, in the order of their codes.
template <class F> std::string Buchstaben(F f) {
    std::string s;
    for (int c = 0; c < 256; ++c)
        if (f(static_cast<char>(c))) s += static_cast<char>(c);
    return s;
}

// GOART and behind it the GOSUBART with which it is in, "*" for all 256.
template <class F> std::string Paare(F f) {
    std::string sPaare;
    for (int c = 0; c < 256; ++c) {
        const char cArt = static_cast<char>(c);
        const std::string s = Buchstaben([&](char cSub) { return f(cArt, cSub); });
        if (!s.empty()) sPaare += cArt + (s.size() == 256 ? "*" : s) + " ";
    }
    return sPaare;
}

TEST(Leistungsarten, gruppen_enthalten_genau_ihre_buchstaben) {
    EXPECT_EQ(Buchstaben(IstPrivatArt), "apqu");
    EXPECT_EQ(Buchstaben(IstPunktArt), "befghk");
    EXPECT_EQ(Buchstaben(IstKassenArt), "gk");
    EXPECT_EQ(Buchstaben(IstGozArt), "pq");
    EXPECT_EQ(Buchstaben(IstAlternativArt), "efh");
    EXPECT_EQ(Buchstaben(IstLaborArt), "123456789");
    EXPECT_EQ(Buchstaben(IstKfoAbrArt), "km");
    EXPECT_EQ(Buchstaben(IstKbrAbrArt), "45b");
    EXPECT_EQ(Buchstaben(IstParAbrArt), "6789p");
    EXPECT_EQ(Buchstaben(CBuchstaben{"\xE4z"}), "z\xE4");
}

TEST(Leistungsarten, sachleistungen_nach_art_und_unterart) {
    EXPECT_EQ(Paare(&IstKGSachLeistung), "g5678 k5678 ");
    EXPECT_EQ(Paare(&IstPrivatSachLeistung), "pnopqrstu qnopqrstu ");
    EXPECT_EQ(Paare(&IstSachLeistung), "1* 2* 3* 4* 7* 8* g5678 k5678 pnopqrstu qnopqrstu ");
}

TEST(Leistungsarten, private_nachweise_sind_genau_ein_buchstabe) {
    for (const CString & s : {CString("p"), CString("P"), CString("O")})
        EXPECT_TRUE(IstPrivatNachweis(s)) << s.Utf8();
    for (const CString & s : {CString(), CString("o"), CString("E"), CString("pP"), CString("p ")})
        EXPECT_FALSE(IstPrivatNachweis(s)) << s.Utf8();
}

} // namespace

} // namespace orvostat
