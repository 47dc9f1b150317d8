#include "orvostatbs/records/Gebuehr.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

#include <string>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

class Gebuehr : public CPraxisFixture {};

TEST_F(Gebuehr, clear_leert_alles) {
    CGOStruct go;
    go.m_sLst = go.m_sGoWert3Text = "1";
    go.m_cGoArt = 'k';
    go.m_iGebPkt = 1;
    go.m_Einfachsatz = CDBetrag("e1");
    go.Clear();
    EXPECT_EQ(Werte(go.m_sLst, go.m_cGoArt, go.m_Einfachsatz, go.m_iGebPkt, go.m_sGoWert3Text), "||||");
}

TEST_F(Gebuehr, nummer_eines_kuerzels) {
    Schreibe("GO GOART=k LSTNR=LSTNR LSTKUERZEL=F1");
    struct SFall {
        CString sKuerzel;
        const char * pGoArt;
        bool bErwartet;
        std::string sErwartet; // "old" was there before
    };
    const SFall aFaelle[] = {{"F1", "k", true, "LSTNR"},    {"F", "k", false, ""},
                             {"F1", "b", false, ""},        {"F1", "", false, "old"},
                             {"F1", nullptr, false, "old"}, {"", "k", false, "old"}};
    for (const SFall & fall : aFaelle) {
        CString sLst = "old";
        EXPECT_EQ(GetGOPosLstNr(fall.sKuerzel, fall.pGoArt, sLst), fall.bErwartet) << &fall - aFaelle;
        EXPECT_EQ(Wert(sLst), fall.sErwartet) << &fall - aFaelle;
    }
    CString sBeides = "F1"; // one text for both
    EXPECT_TRUE(GetGOPosLstNr(sBeides, "k", sBeides));
    EXPECT_EQ(EntlieheneRSets(), 0);
}

struct SAufruf {
    char cFunktion = 0;
    char cGoArt = 0;
    void * pEltern = nullptr;
    void * pSuche = nullptr;
    int iArt = 0;
};
SAufruf s_aufruf;
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
        if (s_aufruf.cFunktion == 'G') sGebuehr += c == 0 ? '0' : static_cast<char>(c);
    }
    EXPECT_EQ(sGebuehr, "0abefghkpqu");

    int iEltern = 0, iSuche = 0;
    EXPECT_EQ(SucheGO('k', &iEltern, &iSuche, 7), 4711);
    EXPECT_EQ(s_aufruf.cGoArt, 'k');
    EXPECT_EQ(s_aufruf.pEltern, &iEltern);
    EXPECT_EQ(s_aufruf.pSuche, &iSuche);
    EXPECT_EQ(s_aufruf.iArt, 7);
}

} // namespace

} // namespace orvostat
