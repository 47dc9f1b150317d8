#include "orvostatbs/records/Gebuehr.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

class Gebuehr : public CPraxisFixture {};

TEST_F(Gebuehr, nummer_eines_kuerzels) {
    Schreibe("GO GOART=k LSTNR=LSTNR LSTKUERZEL=F1");
    for (const auto & [sKuerzel, pGoArt, sErwartet] : {std::tuple("F1", "k", "1|LSTNR"),
                                                       {"F", "k", "|"},
                                                       {"F1", "b", "|"},
                                                       {"F1", "", "|old"},
                                                       {"F1", static_cast<const char *>(nullptr), "|old"},
                                                       {"", "k", "|old"}}) {
        CString sLst = "old";
        const bool bDa = GetGOPosLstNr(sKuerzel, pGoArt, sLst);
        EXPECT_EQ(Werte(bDa, sLst), sErwartet);
    }
    CString sBeides = "F1"; // one text for both
    EXPECT_TRUE(GetGOPosLstNr(sBeides, "k", sBeides));
    EXPECT_EQ(EntlieheneRSets(), 0);
}

using CAufruf = std::tuple<char, char, void *, void *, int>; // function, kind, parent, search, int
CAufruf s_aufruf;
template <char FUNKTION> int Suche(char cGoArt, void * pEltern, void * pSuche, int iArt) {
    s_aufruf = {FUNKTION, cGoArt, pEltern, pSuche, iArt};
    return 4711;
}

TEST_F(Gebuehr, suche_in_der_bibliothek) {
    m_bibliotheken.Registriere("orvogo", "SucheGebuehr"_t, &Suche<'G'>);
    EXPECT_EQ(SucheGO('2', nullptr, nullptr, 0), 0); // no SucheBEL
    ASSERT_EQ(m_rekorder.m_vPrompts.size(), 1u);
    EXPECT_EQ(Wert(m_rekorder.m_vPrompts[0].sText), "Programm in Vorbereitung!");
    m_bibliotheken.Registriere("orvogo", "SucheBEL"_t, &Suche<'B'>);
    std::string sGebuehr;
    for (int c = 0; c < 256; ++c) {
        SucheGO(static_cast<char>(c), nullptr, nullptr, 0);
        if (std::get<0>(s_aufruf) == 'G') sGebuehr += c == 0 ? '0' : static_cast<char>(c);
    }
    EXPECT_EQ(sGebuehr, "0abefghkpqu");
    int iEltern = 0, iSuche = 0;
    EXPECT_EQ(SucheGO('k', &iEltern, &iSuche, 7), 4711);
    EXPECT_EQ(s_aufruf, CAufruf('G', 'k', &iEltern, &iSuche, 7));
}

} // namespace

} // namespace orvostat
