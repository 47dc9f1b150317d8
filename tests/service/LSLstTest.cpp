// The records that a statistic adds up in: what a hit adds, which group takes it, the derived figures.
#include "Ausdruck.h"

#include <limits>
#include <tuple>

namespace orvostat {

namespace {

constexpr int GRENZE = std::numeric_limits<std::int32_t>::max();

TEST(LSLst, WhatAHitAdds) {
    const std::pair<const char *, const char *> aFaelle[] = {
        {"ANZAHL=150 PUNKTE=33 BETRAG=e1 DTAGRUND=4", "1 K1 300 0,02 98 g4:300"},
        {"ANZAHL=150 PUNKTE=-33 BETRAG=e-1 DTAGRUND=5", "1 K1 300 -0,02 -98 g5:300"},
        {"MWSTSATZ=19 BETRAG=e10000 ZUSCHLAG=e500", "1 K1 200 248,00 0"},
        {"PUNKTE=5 MWSTSATZ=19 BETRAG= ZUSCHLAG=e500", "1 K1 200 10,00 10"},
        {"PUNKTE=5 MWSTSATZ=7 ZUSCHLAG=e9 ABRMERKMAL=o DTAGRUND=4", "1 K1 200  0 g4:200"},
        {"PUNKTE=5 MWSTSATZ=7 ABRMERKMAL=n", "1 K1 200  0"},
        {"PUNKTE=5 ZUSCHLAG=_196 ABRMERKMAL=N", "1 K1 200 4,00 10"},
        {"ANZAHL=2147483647 PUNKTE=2147483647 BETRAG= DTAGRUND=4",
         "1 K1 2147483647  2147483647 g4:2147483647"},
    };
    for (const auto & [pHit, pZweimal] : aFaelle) {
        CLSLst lst, summe;
        lst.MoveLst(Hit(pHit));
        lst.MoveLst(Hit(pHit));
        EXPECT_EQ(Text(lst), pZweimal);
        lst.ANTEILBEH = summe.ANTEILKAS = 7;
        summe.MoveLst(lst);
        EXPECT_EQ(Text(summe), Zahlen(lst) + " k7") << "the rest does not move";
    }
    CLSLst lst; // each part of a hit comes in the currency of the sum
    lst.MoveLst(Hit("DATUM=20011231 BETRAG=_195583"));
    lst.MoveLst(Hit("DATUM=20020101 ZUSCHLAG=_5"));
    EXPECT_EQ(lst.BETRAG.Round().ToDb(0, true, false, 0, 0), CString(" 195784"));
    lst.Clear();
    EXPECT_TRUE(lst.BETRAG.IsEmpty());
}

TEST(LSLst, DerivedFigures) {
    const auto Lst = [](const char * pBetrag, int iAnzahl = 0, int iSoll = 0) {
        CLSLst lst;
        lst.BETRAG = CDBetrag(AusUtf8(pBetrag));
        lst.ANZAHL = iAnzahl;
        lst.m_iF100Soll = iSoll;
        lst.ANTEILBEH = lst.ANTEILKAS = lst.ANTEILPRAXIS = lst.m_iAnzJe100Fall = 7; // from before
        return lst;
    };
    using CZeile = std::tuple<const char *, const char *, int>; // amount, whole, share
    const CZeile aAnteile[] = {{"e50", "e100", 5000},
                               {"e1", "e3", 3333},
                               {"e2", "e3", 6667},
                               {"e-1", "e100", 7},
                               {"e100", "e0", 7},
                               {"e100", "e-300", -3332},
                               {"e100000", " 391166", 5000},
                               {"e99999999999", "e1", GRENZE},
                               {"e99999999999", "e-1", -GRENZE - 1}};
    for (const auto & [pBetrag, pBasis, iSoll] : aAnteile) {
        CLSLst lst = Lst(pBetrag);
        lst.SumAnteilGesamtBetrag(Lst(pBasis));
        EXPECT_EQ(Elemente<int>({lst.ANTEILBEH, lst.ANTEILKAS, lst.ANTEILPRAXIS}),
                  Elemente<int>({iSoll, iSoll, 7}))
            << pBetrag << pBasis;
        lst.SumAnteilPxBetrag(Lst(pBasis));
        EXPECT_EQ(lst.ANTEILPRAXIS, iSoll);
    }
    const struct {
        int iAnzahl, iNorm, iFaelle;
        const char * pSoll; // share, for a hundred cases, deviation, difference; 7 stays
    } aFaelle[] = {
        {500, 0, 10, "5000,5000,,5"},          // no norm
        {625, 5000, 10, "6250,6250,2500,1"},   // expected 500
        {450, 5000, 10, "4500,4500,-1000,-1"}, // halves away from zero
        {0, 5000, 10, ",,,-5"},                // nothing rendered is no deviation
        {500, 5000, 0, "5000,7,,5"},
        {-500, 5000, 10, "-5000,-5000,-20000,-10"},
        {500, 5000, -10, "5000,-5000,-20000,10"},
        {GRENZE, 1, 1, "2147483647,2147483647,2147483647,21474836"},
        {1, GRENZE, GRENZE, "10,,,-2147483648"},
    };
    for (const auto & f : aFaelle) {
        CLSLst lst = Lst("", f.iAnzahl, f.iNorm);
        lst.SumAnteilAnz(Lst("", 1000));
        lst.SumAnteilAnz(CLSLst()); // a count of 0 leaves it
        lst.SumAnteilAnz100Fall(f.iFaelle);
        lst.Sum100FallAbweichung(f.iFaelle);
        lst.SumAnzDiff(f.iFaelle);
        EXPECT_EQ(
            Elemente<int>({lst.m_iAnteilAnz, lst.m_iAnzJe100Fall, lst.m_iF100Abweichung, lst.m_iAnzDiff}),
            f.pSoll);
    }
}

TEST(LSLstGrp, TheKeyOfAGroupIsThatOfItsFirstHit) {
    std::string s; // "+": takes a service of an insurer too, and keeps its class
    for (const char cGoArt : std::string("befghkapqux190")) {
        CBehHitLine hit = Hit("GOSTATISTIKART=l");
        hit.GOART = cGoArt;
        CLSLstGrp grp;
        grp.MoveLstGrp(hit);
        EXPECT_TRUE(grp == hit) << cGoArt;
        hit.GOART = 'k';
        const bool bGleich = grp == hit;
        grp.MoveLstGrp(hit);
        s += {grp.m_cZahler, grp.m_cGoTyp, grp.m_cStatArt, bGleich ? '+' : ' '};
        hit.KASSENABR = false;
        EXPECT_FALSE(grp == hit) << cGoArt << ": another payer";
    }
    EXPECT_EQ(s, "0Kl+0Kl+0Kl+0Kl+0Kl+0Kl+0Pl+0Pl+0Pl+0Pl+0xl 0T1 0T9 00l ");
    CLSLstGrp k, p;
    k.MoveLstGrp(Hit(""));
    p.MoveLstGrp(Hit("GOART=p LSTNR=2 BETRAG=e50"));
    p.MoveLstGrp(Hit("GOART=p BETRAG=e25"));
    p.m_Sum.ANZAHL = 4711; // not read
    EXPECT_TRUE(k.IstGleicheLstGrp(p) && k == p);
    k.MoveLstGrp(p);
    EXPECT_EQ(Text(std::vector{k}), "  [0Pa] 1 K1 300 1,75 0\n    1 K1 200 1,25 0\n    2 K2 100 0,50 0\n");
    p.m_cStatArt = 'b';
    EXPECT_FALSE(k == p);
    CPxLstGrp art; // the kinds of the practice
    art.MoveLstGrp(Hit("GOART=7 GOSTATISTIKART=l"));
    EXPECT_EQ((std::string{art.m_cZahler, art.m_cStatArt}), "T7");
    EXPECT_TRUE(art == Hit("GOSTATISTIKART=7")) << "only the kind is compared";
    EXPECT_FALSE(art == Hit("GOART=1 GOSTATISTIKART=7"));
    k.m_cGoTyp = k.m_cStatArt = 'x';
    art.MoveLstGrp(k);
    EXPECT_TRUE(art.m_cZahler == '0' && art == k) << "class and kind are one letter";
    k.m_cGoTyp = 'K';
    EXPECT_FALSE(art == k);
}

// Where a hit is among the sums beside m_Gesamt.
TEST(LSLstGrp, BucketsAndTheDeductedSet) {
    const std::pair<const char *, const char *> aFaelle[] = {
        {"GOART=k", "KasseStd SumStd KasseGes KasseNetto SumNetto "},
        {"GOART=k GOSUBART=6", "KasseStd SumStd KasseGes "},
        {"GOART=g GOSUBART=6 GOSTATISTIKART=k", "KasseK SumK KasseGes "},
        {"GOART=g GOSUBART=6 GOSTATISTIKART=l", "KasseGes KasseAbz "},
        {"GOART=q GOSUBART=o GOSTATISTIKART=m", "KasseGes KasseAbz "},
        {"GOART=p GOSUBART=q GOSTATISTIKART=l", "KasseGes KasseAbz "},
        {"GOART=p GOSUBART=6 GOSTATISTIKART=l", "KasseLM SumLM KasseGes KasseNetto SumNetto "},
        {"GOART=k GOSUBART=o GOSTATISTIKART=m", "KasseLM SumLM KasseGes KasseNetto SumNetto "},
        {"GOART=a GOSUBART=o GOSTATISTIKART=m", "KasseLM SumLM KasseGes KasseNetto SumNetto "},
        {"GOART=7 GOSUBART=6", "KasseLM SumLM KasseGes KasseNetto SumNetto "},
        {"GOART=1 GOSTATISTIKART=k", "KasseK SumK KasseGes KasseNetto SumNetto "},
        {"GOART=u GOSTATISTIKART=n", "KasseStd SumStd KasseGes KasseNetto SumNetto "},
    };
    for (const auto & [pHit, pSummen] : aFaelle) {
        CLSPxLstGrp px;
        CLSBehLstGrp beh;
        const CBehHitLine hit = Hit(pHit);
        px.MovePxLstGrp(hit, "7", true);
        beh.MoveBehLstGrp(hit);
        std::string sSummen = Zahlersummen(px);
        EXPECT_EQ(sSummen, Zahlersummen(beh));
        for (const std::string s : {"  ", "Gesamt ", "1 K1 100 1,00 0\n"})
            while (sSummen.find(s) != std::string::npos)
                sSummen.erase(sSummen.find(s), s.size());
        EXPECT_EQ(sSummen, pSummen) << pHit;
        EXPECT_EQ(px.m_iAnzFaelle * 10 + beh.m_iAnzFaelle, 10);
        EXPECT_TRUE(px == CString("7") && beh == hit);
    }
}

// The orders of groups, kinds, lines and treaters; capitals before small letters, behind folding.
TEST(LSLstGrp, Orders) {
    CLSSum sum;
    for (const std::string c : {"b", "a", "B", "ä", "A"})
        for (const std::string sGoArt : {" GOART=u", " GOART=2"})
            sum.Analyse("", {Hit("BEHANDLERNR=" + c + " LSTNR=" + c + " GOSTATISTIKART=" + c + sGoArt)},
                        nullptr);
    std::string s;
    for (const CLSLstGrp & grp : sum.m_Praxis.m_vLstGrp)
        s += {grp.m_cGoTyp, grp.m_cStatArt, ' '};
    for (const CPxLstGrp & art : sum.m_Praxis.m_vPxLstGrp)
        s += {art.m_cZahler, art.m_cStatArt, ' '};
    for (const CLSLst & lst : sum.m_Praxis.m_vLstGrp[5].m_vLst)
        s += lst.LSTNR.Utf8();
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        s += beh.BEHANDLERNR.Utf8();
    EXPECT_EQ(s, "P\xE4 PA Pa PB Pb T2 0\xE4 0A 0a 0B 0b T2 ABabäABabä") << "letters are signed";
}

} // namespace

} // namespace orvostat
