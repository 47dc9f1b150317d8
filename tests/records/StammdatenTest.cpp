#include "orvostatbs/records/Stammdaten.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/records/Suche.h"
#include "support/Hitfelder.h"
#include "records/Praxisfixture.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using namespace orvostat;

class Stammdaten : public CPraxisFixture {};

// A row in which each column has its own name as its text.
template <class T, class TFelder> T Gefuellt() {
    T zeile;
    Fuelle<TFelder>(zeile);
    return zeile;
}

TEST_F(Stammdaten, mandant) {
    struct SFall {
        CString sAktiv, sAb;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"1", "20200401", "20200401"},
                             {"1", "", "19800101"},
                             {"0", "20200401", ""},
                             {"", "20200401", ""},
                             {"11", "20200401", ""}};
    auto row = Gefuellt<CTMandantAdr, CTMandant_Fields>();
    Fuelle<CTAdr_Fields>(row);
    CMdStruct md;
    for (const SFall & fall : aFaelle) {
        row.m_MDABAKTIV = fall.sAktiv;
        row.m_MDAB = fall.sAb;
        md.MoveMd(&row);
        EXPECT_EQ(Wert(md.m_sMdAb), fall.sErwartet) << fall.sAktiv.Utf8() << '/' << fall.sAb.Utf8();
    }
    EXPECT_EQ(Werte(md.m_sMdId, md.m_sMdName, md.m_sMdInfo, md.m_sMdCodes, md.m_sMdAdr1, md.m_sMdAdr2,
                    md.m_sMdAdr3, md.m_sMdAdr4, md.m_sMdAdr4b, md.m_sMdVollName),
              "MDID|MDNAME|MDINFO|MDCODES|PATSTRASSE|PATPLZ|PATORT|TELEFON1|TELEFON1|PATVORNAME PATNAME");
}

TEST_F(Stammdaten, behandler) {
    auto row = Gefuellt<CTLeb, CTLeb_Fields>();
    row.m_ABSCHLAGGOZ = "250";
    row.m_ABSCHLAGU = "1500";
    row.m_LEBKZ = "1";
    CLebStruct leb;
    leb.m_sLebName = "name";
    leb.MoveLeb(&row);
    EXPECT_EQ(Werte(leb.m_sLeb, leb.m_sLebAnr, leb.m_sPersId, leb.m_sLebName, leb.m_sMdKasse, leb.m_sMdPrivat,
                    leb.m_sProvision, leb.m_iAbschlagGOZ, leb.m_iAbschlagU, leb.m_bLebKz, leb.m_sLebInfo),
              "LEB|LEBANR|PID|name|MDKASSE|MDPRIVAT|PROVISION|250|1500|ja|LEBINFO");
    EXPECT_EQ(Wert(leb.GetLebLine()), "LEB-name / LEBANR");
    row.m_LEBKZ = "10";
    row.m_LEBANR = "";
    leb.MoveLeb(&row);
    EXPECT_FALSE(leb.m_bLebKz);
    EXPECT_EQ(Wert(leb.GetLebLine()), "LEB-name");
    leb.m_sProvision = " 1000 2500 33";
    std::string sGruppen;
    for (const int iGrp : {1, 2, 3, 4, 0, -1, 2147483647})
        sGruppen += Wert(leb.GetProvisionForGrp(iGrp)) + "|";
    EXPECT_EQ(sGruppen, " 1000| 2500| 33|||||");
}

TEST_F(Stammdaten, name_des_behandlers) {
    struct SFall {
        CString sTitel, sVorname, sZusatz, sName;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"Dr.", "Eva", "von", "Gold", "Dr. Eva von Gold"},
                             {"", "Eva", "", "Gold", "Eva Gold"},
                             {"", "", "von", "Gold", "von Gold"},
                             {"Dr.", "", "", "Gold", "Dr.  Gold"}, // the missing first name's blank stays
                             {"", "Eva", "", "", "Eva "}};
    for (const SFall & fall : aFaelle) {
        CTAdr_Fields adr;
        adr.m_PATTITEL = fall.sTitel;
        adr.m_PATVORNAME = fall.sVorname;
        adr.m_PATZUSATZ = fall.sZusatz;
        adr.m_PATNAME = fall.sName;
        CLebStruct leb;
        leb.MoveAdr(&adr);
        EXPECT_EQ(Wert(leb.m_sLebName), fall.sErwartet);
    }
}

TEST_F(Stammdaten, periode) {
    auto row = Gefuellt<CTVDesc, CTVDesc_Fields>();
    row.m_KOSTENERSTATTUNG = "1";
    row.m_WSO = "9";
    CVDesc vd;
    vd.MoveVDesc(&row);
    EXPECT_EQ(Werte(vd.PATNR, vd.m_sVDescNr, vd.VDABDATUM, vd.VDBISDATUM, vd.EINLESEDATUM, vd.KASKUERZEL,
                    vd.VNACHWEIS, vd.m_cSonderKsArt, vd.m_sVDescFeld, vd.MFRDIG, vd.RSA, vd.WSO, vd.WSO_ERG,
                    vd.m_sVDescExtra, vd.m_bKostenerstattung, vd.GEBUEHRENBEFREITBIS),
              "PATNR|VDESCNR|VDABDATUM|VDBISDATUM|EINLESEDATUM|KASKUERZEL|VNACHWEIS|K|VDESCFELD|MFRDIG|RSA|9|"
              "9|VDESCEXTRA|ja|"
              "GEBUEHRENBEFREITBIS");
    row.m_WSO = "";
    vd.MoveVDesc(&row);
    EXPECT_EQ(Wert(vd.WSO + "/" + vd.WSO_ERG), "/1");
}

TEST_F(Stammdaten, elektronischer_nachweis) {
    struct SFall {
        CString sEeb, sNachweis;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"1", "g", "E"}, {"1", "jx", "E"}, {"1", "p", "O"}, {"1", "n", "n"},
                             {"1", "", ""},   {"1", "P", "P"},  {"0", "g", "g"}, {"", "p", "p"}};
    for (const SFall & fall : aFaelle) {
        CTVDesc row;
        row.m_EEB = fall.sEeb;
        row.m_VNACHWEIS = fall.sNachweis;
        CVDesc vdesc;
        vdesc.MoveVDesc(&row);
        EXPECT_EQ(Wert(vdesc.VNACHWEIS), fall.sErwartet) << fall.sEeb.Utf8() << '/' << fall.sNachweis.Utf8();
    }
}

TEST_F(Stammdaten, besondere_personengruppe) {
    struct SFall {
        const char * pName;
        CString sEgk, sDaten, sEeb, sWso, sAb, sNachweis;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"from the card", "1", "NAME=x|BPG=6"_t, "", "9", "20150101", "j", "6"},
                             {"card data unreadable", "1", "BPG", "", "9", "20150101", "j", ""},
                             {"region, j", "", "BPG=6", "", "9", "20150101", "j", "9"},
                             {"region, n", "0", "", "", "9", "20240101", "n", "9"},
                             {"too early", "", "", "", "9", "20141231", "j", ""},
                             {"other region", "", "", "", "1", "20150101", "j", ""},
                             {"longer proof", "", "", "", "9", "20150101", "jj", ""},
                             {"the stored proof counts", "", "", "1", "9", "20150101", "j", "9"}};
    for (const SFall & fall : aFaelle) {
        CTVDesc row;
        row.m_EGK = fall.sEgk;
        row.m_EGKDATEN = fall.sDaten;
        row.m_EEB = fall.sEeb;
        row.m_WSO = fall.sWso;
        row.m_VDABDATUM = fall.sAb;
        row.m_VNACHWEIS = fall.sNachweis;
        CVDesc vdesc;
        vdesc.MoveVDesc(&row);
        EXPECT_EQ(Wert(vdesc.BPG), fall.sErwartet) << fall.pName;
    }
}

TEST_F(Stammdaten, bill) {
    auto row = Gefuellt<CTBill, CTBill_Fields>();
    row.m_ABRART = "tx";
    CBill b;
    b.MoveBill(&row);
    EXPECT_EQ(Werte(b.PATNR, b.PATBILL, b.PRAXISNR, b.ABRART, b.KASSENABR, b.m_bAbrArtE, b.m_sKennung1,
                    b.m_sFakt2, b.m_sFakt2Alt, b.m_sKKFakt, b.m_sKennung2, b.m_sFakt1, b.m_sFakt1Alt,
                    b.PLANNR, b.m_sBillInfo1, b.m_sBillInfo2),
              "PATNR|PATBILL|PRAXISNR|e|ja|ja|KENNUNG1|FAKT2|FAKT2ALT|KKFAKT|KENNUNG2|FAKT1|FAKT1ALT|PLANNR|"
              "BILLINFO1|"
              "BILLINFO2");
    b.Clear();
    EXPECT_EQ(Werte(b.PATNR, b.ABRART, b.KASSENABR, b.m_sBillInfo2), "");
}

TEST_F(Stammdaten, abrechnungsart_aller_gespeicherten_buchstaben) {
    std::string sAbrArt, sKasse, sAbrArtE; // stored letter and what it gives, where that is not "s"
    for (int c = 0; c < 256; ++c) {
        CTBill row;
        if (c != 0) row.m_ABRART = CString(static_cast<char>(c));
        CBill bill;
        bill.MoveBill(&row);
        if (bill.ABRART != 's') sAbrArt += std::string{static_cast<char>(c), bill.ABRART, ' '};
        if (bill.KASSENABR) sKasse += static_cast<char>(c);
        if (bill.m_bAbrArtE) sAbrArtE += static_cast<char>(c);
    }
    EXPECT_EQ(sAbrArt, "1c 2z 3k 4b 5p 6i 7e 8e ac bz ck db ep ge nr pk te ");
    EXPECT_EQ(sKasse, "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(sAbrArtE, "78gt");
}

TEST_F(Stammdaten, abgerechnete_bills) {
    struct SFall {
        CString sFakt1, sFakt1Alt, sFakt2, sFakt2Alt;
        bool bAlt, bAbgerechnet;
    };
    const SFall aFaelle[] = {{"", "", "", "", false, false},    {"1", "", "", "", false, true},
                             {"", "", "1", "", false, true},    {"", "9999", "", "", true, true},
                             {"", "", "", "9999", true, true},  {"", "9998", "", "10000", false, false},
                             {"", "99990", "", "", true, true}, {"", "A", "", "", true, true}};
    for (const SFall & fall : aFaelle) {
        CBill bill;
        bill.m_sFakt1 = fall.sFakt1;
        bill.m_sFakt1Alt = fall.sFakt1Alt;
        bill.m_sFakt2 = fall.sFakt2;
        bill.m_sFakt2Alt = fall.sFakt2Alt;
        EXPECT_EQ(bill.IsAltAbrechnung(), fall.bAlt) << &fall - aFaelle;
        EXPECT_EQ(bill.IsAbgerechnet(), fall.bAbgerechnet) << &fall - aFaelle;
    }
}

TEST_F(Stammdaten, kasse) {
    auto row = Gefuellt<CTOrvoKas, CTOrvoKas_Fields>();
    row.m_KASFLAG1 = "1";
    CKas k;
    k.MoveKas(&row, "01");
    EXPECT_EQ(
        Werte(k.KASKUERZEL, k.m_sKasFeld0, k.m_sGueltigAb, k.m_bKasKz, k.KASSENPWGRP, k.m_sKasIk, k.BKVKASNR,
              k.KASSENART, k.m_sKasFeld1, k.m_sKasFeld2, k.m_sKasSort, k.KASSTATISTIKART,
              k.KASMEDSTATISTIKART, static_cast<char>(k.m_iKasFlag2), k.m_cKasKz),
        "KASKUERZEL|KASFELD0|GUELTIGAB|ja|KASSENPWGRP|KASIK|BKVKASNR|KASSENART|KASFELD1|KASFELD2|KASSORT|"
        "KASSTATISTIKART|KASMEDSTATISTIKART|K|K");
    row.m_KASSORT = "";
    k.MoveKas(&row, "01");
    EXPECT_EQ(Wert(k.m_sKasSort), "KASKUERZEL");
}

TEST_F(Stammdaten, fremdkasse_und_gruppe) {
    const auto Schreibe = [](const CString & sNr, const CString & sRegion) {
        CTKzv kzv(dbDatabase);
        kzv.m_KZVNR = sNr;
        kzv.m_REGION = sRegion;
        ASSERT_EQ(kzv.Write(), 0);
    };
    Schreibe("02", "BY");
    Schreibe("11", "BY");
    Schreibe("20", "NO");
    struct SFall { // the practice belongs to 02
        CString sKasNr, sStatistik;
        bool bFremd;
        char cGrp;
    };
    const SFall aFaelle[] = {
        {"302000000000", "2", false, '3'}, // same association
        {"311000000000", "2", false, '3'}, // another one of the region
        {"820000000000", "1", true, '8'},  // another region
        {"877000000000", "1", true, '8'},  // an unknown association
        {"002000000000", "5", false, '2'}, // leading 0: group by statistic kind
        {"82000000000", "1", false, '1'},  // not the modern form: eleven and thirteen characters
        {"8200000000000", "1", false, '1'},
        {"", "2", true, '1'},
        {"", "3", false, '9'},
        {"", "4", false, '2'},
        {"", "5", true, '2'},
        {"", "6", false, '9'},
        {"", "7", false, '2'},
        {"", "8", false, '2'},
        {"", "9", true, '2'},
        {"", "", false, '9'},
        {"", "25", false, '9'},
    };
    for (const SFall & fall : aFaelle) {
        CTOrvoKas row;
        row.m_BKVKASNR = fall.sKasNr;
        row.m_KASSTATISTIKART = fall.sStatistik;
        CKas kas;
        kas.MoveKas(&row, "02");
        EXPECT_EQ(kas.FREMDKASSE, fall.bFremd) << fall.sKasNr.Utf8() << '/' << fall.sStatistik.Utf8();
        EXPECT_EQ(kas.KASSENGRP, fall.cGrp) << fall.sKasNr.Utf8() << '/' << fall.sStatistik.Utf8();
    }
}

// The columns in which a row must not differ to be still the record's.
template <class TFelder, class TRecord, class T>
std::string Entscheidende(const TRecord & record, const T & row, const CString & sAnders) {
    using SInfo = SBeschreibung<TFelder>;
    std::string s;
    for (std::size_t i = 0; i < std::size(SInfo::aZeiger); ++i) {
        T andere = row;
        andere.*SInfo::aZeiger[i] = sAnders;
        if (!(record == &andere)) s += SInfo::aSpalten[i].pName + std::string(" ");
    }
    return s;
}

TEST_F(Stammdaten, gleich_bis_auf_spalten_ohne_bedeutung) {
    auto kasse = Gefuellt<CTOrvoKas, CTOrvoKas_Fields>();
    kasse.m_KASFLAG1 = "1";
    CKas kas;
    kas.MoveKas(&kasse, "");
    EXPECT_EQ(Entscheidende<CTOrvoKas_Fields>(kas, kasse, "?"),
              "KASKUERZEL GUELTIGAB KASFLAG1 KASSENPWGRP BKVKASNR KASSENART KASFELD1 "
              "KASFELD2 KASSTATISTIKART KASMEDSTATISTIKART ");
    auto periode = Gefuellt<CTVDesc, CTVDesc_Fields>();
    periode.m_VDABDATUM = "20240201";
    CVDesc vdesc;
    vdesc.MoveVDesc(&periode);
    EXPECT_EQ(Entscheidende<CTVDesc_Fields>(vdesc, periode, "20240401"),
              "PATNR VDABDATUM KASKUERZEL MFRDIG WSO ");
    periode.m_VDABDATUM = "20240331"; // another day of the quarter
    EXPECT_TRUE(vdesc == &periode);
}

TEST_F(Stammdaten, punktwert_gruppe_und_pool) {
    auto punktwert = Gefuellt<CTPunktWert, CTPunktWert_Fields>();
    punktwert.m_PWWEST = "e11000";
    punktwert.m_PWOST = "e9500";
    CPw pw;
    pw.MovePw(&punktwert);
    EXPECT_EQ(Werte(pw.m_sPwGrp, pw.m_cPwLArt, pw.m_sPwAb, pw.m_PwWest, pw.m_PwOst, pw.m_sPwInfo),
              "PWGRP|P|PWAB|e11000|e9500|PWINFO");
    auto gruppe = Gefuellt<CTPwGroup, CTPwGroup_Fields>();
    CPwGrp grp;
    grp.MovePw(&gruppe);
    EXPECT_EQ(Werte(grp.m_sPwGrp, grp.m_sPwGrpName), "PWGRP|PWGRPNAME");
    const SSelectPool eintrag{"k", "text", "extra"};
    CSPData sp;
    sp.MoveSP(&eintrag);
    EXPECT_EQ(Werte(sp.m_sKey, sp.m_sText, sp.m_sExtra), "k|text|extra");
}

TEST(Suche, leer_ohne_nummer_oder_ohne_art) {
    struct SFall {
        CString sLst;
        char cGoArt;
        bool bLeer;
    };
    for (const SFall & fall : {SFall{"", 0, true}, {"", 'k', true}, {"13a", 0, true}, {"13a", 'k', false}}) {
        EXPECT_EQ((CSucheLstStruct{"F1", fall.sLst, fall.cGoArt, 0, 0}.IsEmpty()), fall.bLeer);
        EXPECT_EQ((CHVMLstStruct{"F1", fall.sLst, fall.cGoArt}.IsEmpty()), fall.bLeer);
    }
    EXPECT_TRUE((CSucheTbStruct{"", "text"}.IsEmpty()));
    EXPECT_FALSE((CSucheTbStruct{"tb", ""}.IsEmpty()));
}

} // namespace
