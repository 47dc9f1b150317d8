#include "orvostatbs/records/Gebuehr.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "support/Hitfelder.h"
#include "records/Praxisfixture.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using namespace orvostat;

class Gebuehr : public CPraxisFixture {};

CTGO GoZeile(const CString & sGoArt) {
    CTGO row;
    Fuelle<CTGO_Fields>(row);
    row.m_GOART = sGoArt;
    row.m_GEBPKT = "3200";
    row.m_GOWERT2 = "200";
    row.m_GOWERT3 = "300";
    row.m_GOWERT4 = "400";
    row.m_ZUSCHLAG = "e500";
    row.m_BETRAG2 = "e600";
    row.m_EINFACHSATZ = "e700";
    row.m_F100AEVWERT = "4";
    row.m_FAKTOR = "18000";
    row.m_STDFAKTOR = "23000";
    return row;
}

TEST_F(Gebuehr, nimmt_jede_spalte) {
    CTGO row = GoZeile("ex");
    row.m_LSTNR = "Ä1B";
    row.m_LSTKUERZEL = "BÜ";
    CGOStruct go;
    go.MoveGO(&row, false, nullptr);
    EXPECT_EQ(Werte(go.m_sLst, go.m_sKuerzel, go.m_sLstLower, go.m_sKuerzelLower, go.m_cGoArt, go.m_cGoSubArt,
                    go.m_sDruckbild, go.m_cPwLArt, go.m_cStatArt, go.m_sGoFeld1, go.m_sGoFeld2, go.m_sGoFeld3,
                    go.m_iGebPkt, go.m_Betrag2, go.m_Einfachsatz, go.m_iF100AEV, go.m_cGoKz, go.m_sGoText,
                    go.m_sProvGrp, go.m_sFaktor, go.m_sStdFaktor, go.m_sGoWert3Text),
              "Ä1B|BÜ|ä1b|bü|e|G|DRUCKBILD|P|S|GOFELD1|GOFELD2|GOFELD3|3200|e600|e700|4|G|GOTEXT| "
              "4|18000|23000|300");
    go.Clear();
    EXPECT_EQ(Werte(go.m_sLst, go.m_cGoArt, go.m_Einfachsatz, go.m_iGebPkt, go.m_sGoWert3Text), "");
}

TEST_F(Gebuehr, werte_haengen_an_der_art) {
    struct SFall {
        CString sGoArt;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {// points 2 to 4, second rate, surcharge
                             {"e", "200|300|400||e500"}, {"f", "200|300|400||e500"},
                             {"h", "200|300|400||e500"}, {"b", "|||200|e500"},
                             {"p", "|||200|e500"},       {"u", "|||200|"},
                             {"u ", "|||200|e500"}, // not exactly "u"
                             {"", "|||200|e500"}};
    for (const auto & [sGoArt, sErwartet] : aFaelle) {
        CTGO row = GoZeile(sGoArt);
        CGOStruct go;
        go.MoveGO(&row, true, nullptr);
        EXPECT_EQ(Wert(go.m_iPunkte2) + "|" + Wert(go.m_iPunkte3) + "|" + Wert(go.m_iPunkte4) + "|" +
                      Wert(go.m_EinfachsatzV) + "|" + Wert(go.m_Zuschlag),
                  sErwartet)
            << sGoArt.Utf8();
    }
}

TEST_F(Gebuehr, faktor_und_provisionsgruppe) {
    struct SFall {
        CString sFaktor, sF100;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"18000", "", "18000| 0|"},
                             {"", "7", "23000| 7|7"},
                             {"0", "12", "23000|12|12"},
                             {"x", "4711", "23000|11|4711"}};
    for (const SFall & fall : aFaelle) {
        CTGO row = GoZeile("q");
        row.m_FAKTOR = fall.sFaktor;
        row.m_F100AEVWERT = fall.sF100;
        CGOStruct go;
        go.MoveGO(&row, false, nullptr);
        EXPECT_EQ(Werte(go.m_sFaktor, go.m_sProvGrp, go.m_iF100AEV), fall.sErwartet);
    }
}

TEST_F(Gebuehr, pruefzeiten) {
    struct SFall { // 5 and 6 were there before
        CString sFlag, sText;
        int iTag, iQuartal;
    };
    const SFall aFaelle[] = {{"p", "x000012__2"_t, 5, 12},      {"p", "x000012__3"_t, 12, 12},
                             {"p", "x000012__1"_t, 5, 6},       {"p", "x000012__"_t, 5, 6}, // nine characters
                             {"p", "x1234567_2z"_t, 5, 123456}, {"q", "x000012__3"_t, 5, 6}}; // another check
    for (const SFall & fall : aFaelle) {
        CTGO row = GoZeile("k");
        row.m_LSTNR = CString(static_cast<char>('a' + (&fall - aFaelle)));
        CTGoCheck check(dbDatabase);
        check.m_GOART = "k";
        check.m_LSTNR = row.m_LSTNR;
        check.m_EXTRAFLAG = fall.sFlag;
        check.m_CHECKTEXT = fall.sText;
        ASSERT_EQ(check.Write(), 0);
        CTGoCheck suche(dbDatabaseRO);
        CGOStruct go;
        go.m_iPruefZeitT = 5;
        go.m_iPruefZeitQ = 6;
        go.MoveGO(&row, false, &suche);
        EXPECT_EQ(go.m_iPruefZeitT, fall.iTag) << fall.sText.Utf8();
        EXPECT_EQ(go.m_iPruefZeitQ, fall.iQuartal) << fall.sText.Utf8();
    }
}

TEST_F(Gebuehr, punkte_eines_tages) {
    const auto Schreibe = [](const CString & sAb, const CString & sPunkte) {
        CTGoPunkte punkte(dbDatabase);
        punkte.m_GOART = "k";
        punkte.m_LSTNR = "13a";
        punkte.m_PKTAB = sAb;
        punkte.m_PUNKTE = sPunkte;
        ASSERT_EQ(punkte.Write(), 0);
    };
    Schreibe("20240101", "3400");
    Schreibe("20240701", "3600");
    struct SFall {
        char cGoArt;
        CString sLst;
        int iGebPkt;
        CString sDatum;
        int iErwartet;
    };
    const SFall aFaelle[] = {{'k', "13a", 3200, "20231231", 3200},
                             {'k', "13a", 3200, "20240101", 3400},
                             {'k', "13a", 3200, "20240701", 3600},
                             {'k', "13a", 0, "20240101", 3400}, // 0 points are asked for as well
                             {'k', "13b", -5, "20240101", -5},
                             {'b', "13a", 3200, "20240101", 3200}};
    for (const SFall & fall : aFaelle) {
        CGOStruct go;
        go.m_cGoArt = fall.cGoArt;
        go.m_sLst = fall.sLst;
        go.m_iGebPkt = fall.iGebPkt;
        EXPECT_EQ(go.GetGebPkt(fall.sDatum), fall.iErwartet) << fall.sLst.Utf8() << ' ' << fall.sDatum.Utf8();
    }
}

TEST_F(Gebuehr, nummer_eines_kuerzels) {
    CTGO zeile(dbDatabase);
    static_cast<CTGO_Fields &>(zeile) = GoZeile("k");
    zeile.m_LSTKUERZEL = "F1";
    ASSERT_EQ(zeile.Write(), 0);
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
