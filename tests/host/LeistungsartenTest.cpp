#include "orvostatbs/host/Leistungsarten.h"

#include "support/Wert.h"

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
    for (const char cArt : Buchstaben([](char) { return true; })) {
        const std::string s = Buchstaben([&](char cSub) { return f(cArt, cSub); });
        if (!s.empty()) sPaare += cArt + (s.size() == 256 ? "*" : s) + " ";
    }
    return sPaare;
}

TEST(Leistungsarten, gruppen_enthalten_genau_ihre_buchstaben) {
    EXPECT_EQ(Werte(Buchstaben(IstPrivatArt), Buchstaben(IstPunktArt), Buchstaben(IstKassenArt),
                    Buchstaben(IstGozArt), Buchstaben(IstAlternativArt), Buchstaben(IstLaborArt),
                    Buchstaben(IstKfoAbrArt), Buchstaben(IstKbrAbrArt), Buchstaben(IstParAbrArt),
                    Buchstaben(CBuchstaben{"\xE4z"})),
              "apqu|befghk|gk|pq|efh|123456789|km|45b|6789p|z\xE4");
    EXPECT_EQ(Werte(Paare(&IstKGSachLeistung), Paare(&IstPrivatSachLeistung), Paare(&IstSachLeistung)),
              "g5678 k5678 |pnopqrstu qnopqrstu |1* 2* 3* 4* 7* 8* g5678 k5678 pnopqrstu qnopqrstu ");
    std::string sPrivat;
    for (const char * p : {"p", "P", "O", "", "o", "E", "pP", "p "})
        sPrivat += IstPrivatNachweis(CString(p)) ? '1' : '0';
    EXPECT_EQ(sPrivat, "11100000");
}

} // namespace

} // namespace orvostat
