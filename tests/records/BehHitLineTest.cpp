#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/Stammdaten.h"
#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using namespace orvostat;

class BehHitLine : public CPraxisFixture {};

TEST_F(BehHitLine, felder_stehen_in_ihrer_reihenfolge) {
    CBehHitLine hit;
    const void * pVorher = nullptr;
    JedesFeld(hit, [&](const char * pName, auto & wert) {
        EXPECT_LT(pVorher, static_cast<const void *>(&wert)) << pName;
        pVorher = &wert;
    });
}

TEST_F(BehHitLine, clear_leert_alles_bis_auf_die_ausnahmen) {
    CBehHitLine leer;
    JedesFeld(leer, [](const char *, auto & wert) { wert = {}; });
    for (const bool bFlags : {false, true}) {
        CBehHitLine hit = MarkierterHit(bFlags);
        hit.Clear();
        EXPECT_EQ(Aenderungen(leer, hit),
                  "KASSENABR=1, SITZUNG= , m_sBefundKuerzel=<m_sBefundKuerzel>, ISELAB=1, ISORVOPAT=1");
        EXPECT_GE(hit.SUCHKRITERIEN.capacity(), 7u);
        EXPECT_GE(hit.m_vHitFrei1.capacity(), 7u);
        EXPECT_GE(hit.m_vHitFrei2.capacity(), 7u);
    }
}

// ---- the entry

TEST_F(BehHitLine, eintrag) {
    CTBeh beh;
    Fuelle<CTBeh_Fields>(beh);
    beh.m_ANZAHL = "x250";
    beh.m_BETRAG = "e1234";
    beh.m_USTKEY = "h";
    beh.m_CHARGE = " 4 7 ";
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveBeh(&beh); }),
              "BEHANDLERNR=BEHANDLERNR, PATNR=PATNR, DATUM=DATUM, LSTNR=LSTNR, TEETH=TEETH, EINHEIT=x, "
              "ANZAHL=250, LSTIN=LSTIN, TEXT=TEXT, FAKTOR=FAKTOR, BETRAG=e1234, PATBILL=PATBILL, "
              "GOART=G, m_cBehKz=B, LAGE=LAGE, UHRZEIT=UHRZEIT, DTAGRUND=D, TEXTART=T, "
              "ICDCODE=ICDCODE, ICDNOTATIONSKZ=I, ERFASSER=ERFASSER, SITZUNG=S, m_sBehInfo=BEHINFO, "
              "LFDBEFENTRY=LFDBEFENTRY, LFDLBLOCK=LFDLBLOCK, LFDBEHEINTRAG=LFDBEHEINTRAG, "
              "ABRMERKMAL=A, ENTFERNUNG=ENTFERNUNG, MWSTSATZ=7, CHARGENNUMMER=4 7, m_sAbrJJME=ABRJJME");
}

TEST_F(BehHitLine, eintrag_menge_und_sitzung) {
    struct SFall {
        CString sMenge;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {
        {"", "|100"},      {"x", "x|100"},    {"x0", "x|100"},  {"x250", "x|250"},
        {"x-50", "x|-50"}, {" 300", " |300"}, {"xyz", "x|100"}, {"x99999999999"_t, "x|2147483647"}};
    for (const auto & [sMenge, sErwartet] : aFaelle) {
        CTBeh beh;
        beh.m_ANZAHL = sMenge;
        CBehHitLine hit;
        hit.SITZUNG = 'b';
        hit.MoveBeh(&beh);
        EXPECT_EQ(Wert(hit.EINHEIT) + "|" + Wert(hit.ANZAHL), sErwartet);
        EXPECT_EQ(hit.SITZUNG, ' '); // none stored
    }
}

TEST_F(BehHitLine, eintrag_text) {
    struct SFall {
        CString sArt, sText;
        std::string sErwartet; // kind and text
    };
    const SFall aFaelle[] = {{"b", "text", "b|text"}, {"c", "text", "|"}, {"cd", "text", "c|text"},
                             {"", "text", "|text"},   {"b", "", "|"},     {"C", "text", "C|text"}};
    for (const SFall & fall : aFaelle) {
        CTBeh beh;
        beh.m_TEXTART = fall.sArt;
        beh.m_TEXT = fall.sText;
        CBehHitLine hit;
        hit.MoveBeh(&beh);
        EXPECT_EQ(Wert(hit.TEXTART) + "|" + Wert(hit.TEXT), fall.sErwartet) << fall.sArt.Utf8();
    }
}

TEST_F(BehHitLine, schluessel_mandant_und_name) {
    CBehHitLine hit = MarkierterHit(true);
    CTBeh beh;
    hit.MoveLst2BehKey1(&beh);
    EXPECT_EQ(Werte(beh.m_PATNR, beh.m_DATUM, beh.m_SITZUNG, beh.m_LFDBEHEINTRAG),
              "<PATNR>|<DATUM>|~|<LFDBEHEINTRAG>");
    hit.SITZUNG = 0;
    hit.MoveLst2BehKey1(&beh);
    EXPECT_EQ(Wert(beh.m_SITZUNG), "");

    hit.MoveMdId("01", "02");
    EXPECT_EQ(Wert(hit.PRAXISNR), "01");
    hit.KASSENABR = false;
    hit.MoveMdId("01", "02");
    EXPECT_EQ(Wert(hit.PRAXISNR), "02");

    struct SFall {
        CString sName, sVorname;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"Müller", "Jörg", "MÜLLER JÖRG"},
                             {"Müller", "Jörg", "MÜLLER JÖRG"},
                             {"Müller", "Ida", "MÜLLER IDA"},
                             {"Mahr", "Ida", "MAHR IDA"},
                             {"", "Ida", "IDA"},
                             {" Groß", "", "GROß "}};
    for (const SFall & fall : aFaelle) {
        hit.MovePatName(fall.sName, fall.sVorname);
        EXPECT_EQ(Wert(hit.PATNAME), fall.sErwartet);
    }
}

// ---- bill

CBill Bill() {
    CTBill row;
    Fuelle<CTBill_Fields>(row);
    CBill bill;
    bill.MoveBill(&row);
    bill.ABRART = 'z';
    bill.KASSENABR = true;
    bill.m_bAbrArtE = true;
    return bill;
}

TEST_F(BehHitLine, bill) {
    EXPECT_EQ(Wirkung([](CBehHitLine & hit) { hit.MoveBill(Bill()); }),
              "PRAXISNR=PRAXISNR, PATBILL=PATBILL, ABRART=z, KASSENABR=1, m_bAbrArtE=1, "
              "PLANNR=PLANNR, FAKT1=FAKT1, FAKT2=FAKT2, m_sBillInfo1=BILLINFO1, "
              "m_sBillInfo2=BILLINFO2, m_sAbrKennung=KENNUNG1");
}

TEST_F(BehHitLine, bill_wer_bezahlt) {
    struct SFall {
        const char * pName;
        char cGoArt;
        CString sLst;
        char cBehKz;
        bool bBill, bErwartet;
    };
    const SFall aFaelle[] = {{"insurer service", 'k', "13a", 0, true, true},
                             {"insurer service on a private bill", 'k', "13a", 0, false, false},
                             {"private service leaves the insurer", 'q', "2060", 0, true, false},
                             {"any mark but 0", 'a', "1", '1', true, false},
                             {"mark 0 keeps it", 'u', "1", '0', true, true},
                             {"mark 0 on a private bill", 'p', "1", '0', false, false},
                             {"9262 of kind p on a private bill", 'p', "9262", 0, false, true},
                             {"9262 of kind q", 'q', "9262", 0, true, true},
                             {"9262 of another private kind", 'u', "9262", 0, true, false}};
    for (const SFall & fall : aFaelle) {
        CBill bill = Bill();
        bill.KASSENABR = fall.bBill;
        CBehHitLine hit;
        hit.GOART = fall.cGoArt;
        hit.LSTNR = fall.sLst;
        hit.m_cBehKz = fall.cBehKz;
        hit.MoveBill(bill);
        EXPECT_EQ(hit.KASSENABR, fall.bErwartet) << fall.pName;
        EXPECT_EQ(Wert(hit.m_sAbrKennung), fall.bBill ? "KENNUNG1" : "KENNUNG2")
            << fall.pName; // the bill's own flag
    }
}

TEST_F(BehHitLine, bill_rechnungsnummern) {
    struct SFall { // "old1" and "old2" were there before
        CString sLst, sFakt1, sFakt1Alt, sFakt2, sFakt2Alt;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"13a", "n1", "99991", "n2", "99992", "n1|n2"},
                             {"13a", "", "99991", "", "9999", "99991|9999"},
                             {"13a", "", "9998", "", "10000", "old1|old2"},
                             {"13a", "n1", "", "", "99992", "n1|99992"},
                             {"13a", "", "", "", "", "old1|old2"},
                             {"kkgeb", "n1", "99991", "n2", "99992", "KKFAKT|old2"},
                             {"kkent", "", "", "n2", "", "KKFAKT|old2"}};
    for (const SFall & fall : aFaelle) {
        CBill bill = Bill();
        bill.m_sFakt1 = fall.sFakt1;
        bill.m_sFakt1Alt = fall.sFakt1Alt;
        bill.m_sFakt2 = fall.sFakt2;
        bill.m_sFakt2Alt = fall.sFakt2Alt;
        CBehHitLine hit;
        hit.GOART = 'k';
        hit.LSTNR = fall.sLst;
        hit.FAKT1 = "old1";
        hit.FAKT2 = "old2";
        hit.MoveBill(bill);
        EXPECT_EQ(Werte(hit.FAKT1, hit.FAKT2), fall.sErwartet) << &fall - aFaelle;
    }
}

// ---- insurance, treater, point value

TEST_F(BehHitLine, periode) {
    CTVDesc row;
    Fuelle<CTVDesc_Fields>(row);
    CVDesc vdesc;
    vdesc.MoveVDesc(&row);
    vdesc.WSO_ERG = "8";
    vdesc.BPG = "6";
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveVDesc(vdesc); }),
              "KASKUERZEL=KASKUERZEL, m_sAbrKennung=VDESCNR, VDABDATUM=VDABDATUM, "
              "VDBISDATUM=VDBISDATUM, MFRDIG=MFRDIG, WSO=WSO, WSO_ERG=8, RSA=RSA, VNACHWEIS=VNACHWEIS, "
              "EINLESEDATUM=EINLESEDATUM, m_cSonderKsArt=K, BPG=6, "
              "GEBUEHRENBEFREITBIS=GEBUEHRENBEFREITBIS");
    CBehHitLine hit;
    hit.MoveVDesc(CVDesc());
    EXPECT_EQ(Werte(hit.WSO, hit.WSO_ERG), "1|1");
}

TEST_F(BehHitLine, kasse) {
    CTOrvoKas row;
    Fuelle<CTOrvoKas_Fields>(row);
    CKas kas;
    kas.MoveKas(&row, "");
    kas.KASSENGRP = '2';
    kas.FREMDKASSE = true;
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveKas(kas); }),
              "KASSENPWGRP=KASSENPWGRP, KASSTATISTIKART=KASSTATISTIKART, "
              "KASMEDSTATISTIKART=KASMEDSTATISTIKART, KASSENART=KASSENART, FREMDKASSE=1, KASSENGRP=2, "
              "m_cKasKz=K");
}

TEST_F(BehHitLine, abschlag_des_behandlers) {
    CLebStruct leb;
    leb.m_iAbschlagGOZ = 250;
    leb.m_iAbschlagU = 1500;
    std::string sGOZ, sU; // ICDNOTATIONSKZ and GOART with each of the two
    for (int i = 0; i < 256 * 256; ++i) {
        CBehHitLine hit;
        hit.ICDNOTATIONSKZ = static_cast<char>(i / 256);
        hit.GOART = static_cast<char>(i % 256);
        hit.MoveLeb(leb);
        if (hit.m_iLebAbschlag != 0)
            (hit.m_iLebAbschlag == 250 ? sGOZ : sU) += std::string{hit.ICDNOTATIONSKZ, hit.GOART, ' '};
    }
    EXPECT_EQ(sGOZ, "na np nq sa sp sq ta tp tq va vp vq ");
    EXPECT_EQ(sU, "nu su tu vu ");
}

TEST_F(BehHitLine, punktwert_der_region) {
    CPw pw;
    pw.m_PwWest = CDPw(CString("e11000"));
    pw.m_PwOst = CDPw(CString("e9500"));
    struct SFall {
        char cGoArt;
        CString sWso;
        std::string sErwartet;
    };
    for (const SFall & fall : {SFall{'k', "1", "e11000"},
                               {'k', "9", "e9500"},
                               {'b', "", "e11000"},
                               {'q', "9", ""},
                               {'1', "1", ""}}) {
        CBehHitLine hit;
        hit.GOART = fall.cGoArt;
        hit.WSO_ERG = fall.sWso;
        hit.DATUM = "20240215";
        hit.MovePw(pw);
        EXPECT_EQ(Wert(hit.PUNKTWERT), fall.sErwartet) << fall.cGoArt << fall.sWso.Utf8();
    }
}

TEST_F(BehHitLine, provision) {
    CLebStruct leb;
    leb.m_sProvision = " 1000 2500";
    struct SFall {
        CString sGrp;
        int iErwartet;
    };
    const SFall aFaelle[] = {{" 2", 2500}, {"01", 1000}, {" 0", -77}, {"", -77}, {"-1", -77}, {" 9", 0}};
    for (const auto & [sGrp, iErwartet] : aFaelle) {
        CBehHitLine hit = MarkierterHit(false);
        hit.PROVISONSGRP = sGrp;
        hit.MoveProvision(leb);
        EXPECT_EQ(hit.PROVISONSWERT, iErwartet) << sGrp.Utf8();
    }
}

// ---- fee row

CGOStruct Gebuehrenzeile(char cGoArt, char cGoSubArt) {
    CGOStruct go;
    go.m_sLst = "13B";
    go.m_sKuerzel = "F2";
    go.m_cGoArt = cGoArt;
    go.m_cGoSubArt = cGoSubArt;
    go.m_sDruckbild = "01";
    go.m_cPwLArt = 'c';
    go.m_cStatArt = 's';
    go.m_iGebPkt = 3200;
    go.m_iPunkte2 = 200;
    go.m_iPunkte3 = 300;
    go.m_iPunkte4 = 400;
    go.m_Zuschlag = CDBetrag(CString("e500"));
    go.m_Einfachsatz = CDBetrag(CString("e700"));
    go.m_EinfachsatzV = CDBetrag(CString("e800"));
    go.m_iF100AEV = 4;
    go.m_iPruefZeitT = 5;
    go.m_iPruefZeitQ = 6;
    go.m_cGoKz = 'K';
    go.m_sGoText = "gotext";
    go.m_sProvGrp = " 4";
    go.m_sFaktor = "18000";
    return go;
}

// The hit of the given kinds after the move; -33 is its quantity.
CBehHitLine NachGebuehr(CGOStruct go, char cGoArt, char cAbrArt) {
    CBehHitLine hit;
    hit.DATUM = "20240215";
    hit.ANZAHL = -33;
    hit.GOART = cGoArt;
    hit.ABRART = cAbrArt;
    hit.GOSTATISTIKART = '~';
    hit.MoveGO(go);
    return hit;
}

TEST_F(BehHitLine, gebuehr) {
    CGOStruct go = Gebuehrenzeile('e', '7');
    EXPECT_EQ(
        Wirkung([&](CBehHitLine & hit) { hit.MoveGO(go); }), // the hit's own kind is "~", its quantity -77
        "LSTNR=13B, LSTKUERZEL=F2, GOSUBART=7, DRUCKBILD=01, PUNKTE=3200, m_iPunkte2=200, "
        "m_iPunkte3=300, m_iPunkte4=400, PWLART=c, ZUSCHLAG=e-385, F100AEV=4, PRUEFZEITT=5, "
        "PRUEFZEITQ=6, m_cGoKz=K, m_sGoText=gotext, PROVISONSGRP= 4");
    go.m_sProvGrp = "";
    go.m_Zuschlag.Empty();
    const CBehHitLine hit = NachGebuehr(go, 'k', 'c');
    EXPECT_EQ(Wert(hit.FAKTOR) + "|" + Wert(hit.PROVISONSGRP) + "|" + Wert(hit.ZUSCHLAG), "18000| 0|");
}

TEST_F(BehHitLine, gebuehr_bewertet_nach_der_art_der_zeile) {
    struct SFall {
        char cGoArt, cGoSubArt;
        std::string sErwartet; // both rates, points one to four, statistic kind
    };
    const std::string sSaetze = "e700|e800||||", sPunkte = "||3200|200|300|400";
    const SFall aFaelle[] = {
        {'a', 0, sSaetze + "|~"},   {'u', '1', sSaetze + "|~"}, {'p', '1', sSaetze + "|~"},
        {'q', '2', sSaetze + "|~"}, {'q', 0, sSaetze + "|~"},   {'q', '1', "||3200||||~"},
        {'b', '1', sPunkte + "|~"}, {'e', 0, sPunkte + "|~"},   {'f', 0, sPunkte + "|~"},
        {'h', 0, sPunkte + "|~"},   {'k', 0, sPunkte + "|~"},   {'g', 0, sPunkte + "|~"},
        {'1', 0, "||||||1"},        {'9', 0, "||||||9"},        {'0', 0, "||||||~"},
        {'z', 0, "||||||~"},        {0, 0, "||||||~"}};
    for (const SFall & fall : aFaelle) {
        const CBehHitLine hit = NachGebuehr(Gebuehrenzeile(fall.cGoArt, fall.cGoSubArt), 0, 0);
        EXPECT_EQ(Wert(hit.EINFACHSATZ) + "|" + Wert(hit.m_EinfachsatzV) + "|" + Wert(hit.PUNKTE) + "|" +
                      Wert(hit.m_iPunkte2) + "|" + Wert(hit.m_iPunkte3) + "|" + Wert(hit.m_iPunkte4) + "|" +
                      Wert(hit.GOSTATISTIKART),
                  fall.sErwartet)
            << fall.cGoArt << fall.cGoSubArt;
    }
}

TEST_F(BehHitLine, gebuehr_des_tages) {
    CTGoPunkte punkte(dbDatabase);
    punkte.m_GOART = "k";
    punkte.m_LSTNR = "13b";
    punkte.m_PKTAB = "20020101";
    punkte.m_PUNKTE = "3400";
    ASSERT_EQ(punkte.Write(), 0);
    struct SFall {
        CString sDatum;
        char cWaehrung;
        int iPunkte;
    };
    for (const SFall & fall : {SFall{"20011231", ' ', 3200}, {"20020101", 'e', 3400}, {"", ' ', 3200}}) {
        CGOStruct satz = Gebuehrenzeile('q', 0), pkt = Gebuehrenzeile('k', 0);
        CBehHitLine hit;
        hit.DATUM = fall.sDatum;
        hit.MoveGO(satz);
        hit.MoveGO(pkt);
        EXPECT_EQ(hit.EINFACHSATZ.GetWaehrung(), fall.cWaehrung) << fall.sDatum.Utf8();
        EXPECT_EQ(hit.m_EinfachsatzV.GetWaehrung(), fall.cWaehrung) << fall.sDatum.Utf8();
        EXPECT_EQ(hit.PUNKTE, fall.iPunkte) << fall.sDatum.Utf8();
    }
}

TEST_F(BehHitLine, gebuehr_statistikart_nach_der_art_des_hits) {
    struct SFall {
        char cGoArt, cStatArt, cErwartet;
    };
    for (const SFall & fall : {SFall{'k', 's', 's'},
                               {'q', 's', 's'},
                               {'u', 's', 's'},
                               {'k', 0, '~'},
                               {'1', 's', '~'},
                               {'k', 'x', 'x'}}) {
        CGOStruct go = Gebuehrenzeile('k', 0);
        go.m_cStatArt = fall.cStatArt;
        EXPECT_EQ(NachGebuehr(go, fall.cGoArt, 0).GOSTATISTIKART, fall.cErwartet)
            << fall.cGoArt << fall.cStatArt;
    }
}

TEST_F(BehHitLine, gebuehr_offene_arten_nach_abrechnungsart) {
    CGOStruct go = Gebuehrenzeile('k', 0);
    go.m_cStatArt = 'x';
    go.m_cPwLArt = '~';
    std::string sStatistik, sPunktwert; // ABRART and what it gives, where it gives something
    for (int c = 0; c < 256; ++c) {
        const CBehHitLine hit = NachGebuehr(go, 'k', static_cast<char>(c));
        if (hit.GOSTATISTIKART != 'x') sStatistik += std::string{hit.ABRART, hit.GOSTATISTIKART, ' '};
        if (hit.PWLART != '~') sPunktwert += std::string{hit.ABRART, hit.PWLART, ' '};
    }
    EXPECT_EQ(sStatistik, "4g 5g 6d 7d 8d 9d bg ca ie kf mf pd zc ");
    EXPECT_EQ(sPunktwert, "4h 5h 6g 7g 8g 9g bh ca ij ki mi pg zf ");
}

TEST_F(BehHitLine, gebuehr_punktwertart) {
    struct SFall {
        const char * pName;
        char cAbrArt, cGoArt, cGoSubArt, cPwLArt, cErwartet;
    };
    const SFall aFaelle[] = {{"c stays", 'z', 'k', 0, 'c', 'c'},
                             {"d stays", 'p', 'k', 0, 'd', 'd'},
                             {"e stays", 'c', 'q', 0, 'e', 'e'},
                             {"f does not", 'c', 'k', 0, 'f', 'a'},
                             {"orthodontics keeps a", 'k', 'k', 0, 'a', 'a'},
                             {"multiband keeps b", 'm', 'g', 0, 'b', 'b'},
                             {"but not another letter", 'k', 'k', 0, 'x', 'i'},
                             {"nor with material", 'k', 'k', '7', 'a', 'i'},
                             {"nor in another schedule", 'k', 'b', 0, 'a', 'i'},
                             {"other billing keeps the row's", 's', 'k', 0, 'b', 'b'}};
    for (const SFall & fall : aFaelle) {
        CGOStruct go = Gebuehrenzeile('k', fall.cGoSubArt);
        go.m_cPwLArt = fall.cPwLArt;
        EXPECT_EQ(NachGebuehr(go, fall.cGoArt, fall.cAbrArt).PWLART, fall.cErwartet) << fall.pName;
    }
}

// ---- finding

TEST_F(BehHitLine, befund) {
    CTABefund befund;
    befund.m_BEFUND = "cf";
    befund.m_ZAHNSTEIN = "00010";
    befund.m_MUNDKRANKHEIT = "mk";
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveBefund(&befund); }),
              "BEFUND=cf                               , ZAHNSTEIN=1, MUNDKRANKHEIT=mk");
    befund.m_BEFUND = "123456789-123456789-123456789-12345"_t;
    befund.m_ZAHNSTEIN = "000";
    CBehHitLine hit;
    hit.MoveBefund(&befund);
    EXPECT_EQ(Werte(hit.BEFUND, hit.ZAHNSTEIN), "123456789-123456789-123456789-12345|0");
}

TEST_F(BehHitLine, befundkuerzel_an_ihrer_stelle) {
    CBefunde befunde;
    struct SFall {
        int iBefund, iPos;
        std::string sKuerzel, sBefund; // of eight and four points
    };
    const SFall aFaelle[] = {{2, 0, "f.......", "f..."},  {10, 2, "..kw....", ".k.."},
                             {12, 6, "......tw", "...t"}, {2, 7, ".......f", "...f"},
                             {0, 2, "........", "...."},  {0, 99, "........", "...."}};
    for (const SFall & fall : aFaelle) {
        CBehHitLine hit;
        hit.m_sBefundKuerzel = "........"_t;
        hit.BEFUND = "....";
        hit.Befund2Kuerzel(befunde, fall.iBefund, fall.iPos);
        EXPECT_EQ(Werte(hit.m_sBefundKuerzel, hit.BEFUND), fall.sKuerzel + "|....") << &fall - aFaelle;
        hit.m_sBefundKuerzel = "........"_t;
        hit.Befund2Kuerzel2(befunde, fall.iBefund, fall.iPos);
        EXPECT_EQ(Werte(hit.m_sBefundKuerzel, hit.BEFUND), fall.sKuerzel + "|" + fall.sBefund)
            << &fall - aFaelle;
    }
}

TEST_F(BehHitLine, befundkuerzel_ausserhalb_ist_ein_fehler) {
    CBefunde befunde;
    CBehHitLine hit;
    hit.m_sBefundKuerzel = "......";
    hit.BEFUND = "..";
    EXPECT_THROW(hit.Befund2Kuerzel(befunde, 2, 6), std::invalid_argument);
    EXPECT_THROW(hit.Befund2Kuerzel(befunde, 10, 5), std::invalid_argument); // its second character
    EXPECT_THROW(hit.Befund2Kuerzel2(befunde, 2, -2), std::invalid_argument);
    EXPECT_THROW(hit.Befund2Kuerzel2(befunde, 2, 4), std::invalid_argument); // outside of BEFUND only
}

// ---- entries that are no treatments

TEST_F(BehHitLine, laboreintraege_des_plans) {
    CTLBlockEntry eigen;
    Fuelle<CTLBlockEntry_Fields>(eigen);
    eigen.m_LBLNR = "0815";
    eigen.m_ANZAHL = "x250";
    eigen.m_BETRAG = " 1000";
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveZEKasseLBlockEntry(eigen); }),
              "BEHANDLERNR=BEHANDLERNR, PATNR=PATNR, DATUM=DATUM, LSTNR=LSTNR, TEETH=TEETH, EINHEIT=x, "
              "ANZAHL=250, LSTIN=LSTNR, FAKTOR=FAKTOR, BETRAG= 2500, ABRART=z, GOART=L, PLANNR=PLANNR, "
              "m_sLblNr=0815, CHARGENNUMMER=CHARGE");
    CTGLBlocEntry fremd;
    Fuelle<CTGLBlocEntry_Fields>(fremd); // its LBLNR reads as 0
    fremd.m_ANZAHL = "x";
    fremd.m_BETRAG = "e1000";
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveZEKasseGLBlocEntry(fremd); }),
              "BEHANDLERNR=BEHANDLERNR, DATUM=DATUM, LSTNR=LSTNR, EINHEIT=x, ANZAHL=100, LSTIN=LSTNR, "
              "BETRAG=e1000, ABRART=z, GOART=G, CHARGENNUMMER=CHARGE");
}

TEST_F(BehHitLine, koepfe_von_bloecken_und_rechnungen) {
    const std::string sKopf = "PRAXISNR=PRAXISNR, BEHANDLERNR=BEHANDLERNR, PATNR=PATNR, DATUM=DATUM, "
                              "PLANNR=PLANNR, LFDLBLOCK=LFDLBLOCK";
    CTLBlock eigen;
    Fuelle<CTLBlock_Fields>(eigen);
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveLBlock(&eigen); }), sKopf + ", ISELAB=1, ISORVOPAT=1");
    CTGLBloc fremd;
    Fuelle<CTGLBloc_Fields>(fremd);
    const auto MoveGLBloc = [&](CBehHitLine & hit) { hit.MoveGLBloc(&fremd); };
    EXPECT_EQ(Wirkung(MoveGLBloc, false), sKopf + ", ISORVOPAT=1");
    EXPECT_EQ(Wirkung(MoveGLBloc, true), sKopf + ", ISELAB=");
    fremd.m_PATREF = "";
    EXPECT_EQ(Wirkung(MoveGLBloc, true), sKopf + ", ISELAB=, ISORVOPAT=");
    CTFakt fakt;
    Fuelle<CTFakt_Fields>(fakt);
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveFakt(&fakt); }), "PATNR=PATNR, DATUM=DATUM");
}

TEST_F(BehHitLine, roentgenbuch) {
    CTRoeBefund roe;
    Fuelle<CTRoeBefund_Fields>(roe);
    EXPECT_EQ(Wirkung([&](CBehHitLine & hit) { hit.MoveRoeBuch(&roe); }),
              "ROEGRAV=ROEGRAV, ROEANZAHL=ROEANZAHL, ROEGERAET=ROEGERAET, ROEXRAYMS=ROEXRAYMS, "
              "ROEXRAYCURRENT=ROEXRAYCURRENT, ROEXRAYVOLTAGE=ROEXRAYVOLTAGE, "
              "ROEBELICHTUNG=ROEBELICHTUNG, ROEINDIKATION=ROEINDIKATION, ROEBEMERKUNG=ROEBEMERKUNG, "
              "ROELFDNR=ROELFDNR, ROELASTDATUM=ROELASTDATUM, ROELASTREGIO=ROELASTREGIO, "
              "ROELASTPASSDRUCK=ROELASTPASSDRUCK, PRAXISID=PRAXISID");
}

} // namespace
