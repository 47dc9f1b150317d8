#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "records/Zug.h"
#include "support/Satzfelder.h"

#include <stdexcept>

namespace orvostat {

namespace {

class BehHitLine : public CPraxisFixture {};

TEST_F(BehHitLine, clear_leert_alles_bis_auf_die_ausnahmen) {
    CBehHitLine leer;
    JedesFeld(leer, [](const char *, auto & wert) { wert = {}; });
    for (const bool bFlags : {false, true}) {
        CBehHitLine hit = MarkierterHit(bFlags);
        hit.Clear();
        EXPECT_EQ(Aenderungen(leer, hit),
                  "KASSENABR=1, SITZUNG= , m_sBefundKuerzel=<m_sBefundKuerzel>, ISELAB=1, ISORVOPAT=1");
    }
}

// ---- what a hit takes from rows and records

void Schluessel(CPraxisTest &, CFall & fall) {
    CBehHitLine hit;
    fall.Fuelle(hit);
    CTBeh beh;
    hit.MoveLst2BehKey1(&beh);
    fall.Aus("SCHLUESSEL", Werte(beh.m_PATNR, beh.m_DATUM, beh.m_SITZUNG, beh.m_LFDBEHEINTRAG));
    hit.MoveMdId("01", "02");
    fall.Aus("PRAXISNR", hit.PRAXISNR);
    hit.MovePatName(fall.Ein("NAME"), fall.Ein("VORNAME"));
    fall.Aus("PATNAME", hit.PATNAME);
}

void Provision(CPraxisTest &, CFall & fall) {
    CLebStruct leb;
    leb.m_sProvision = " 1000 2500";
    CBehHitLine hit = MarkierterHit(false);
    const CBehHitLine vorher = fall.Fuelle(hit);
    hit.MoveProvision(leb);
    fall.Geaendert(vorher, hit);
}

// A fee row whose fields the case names behind "go:"; the hit's quantity is -0.33.
void Gebuehr(CPraxisTest &, CFall & fall) {
    CGOStruct go;
    fall.Fuelle(go, "go:");
    CBehHitLine hit;
    if (fall.Ein<bool>("MARKEN")) hit = MarkierterHit(false);
    const CBehHitLine vorher = fall.Fuelle(hit);
    hit.MoveGO(go);
    fall.Genannt(hit);
    if (fall.Ein<bool>("GANZ")) fall.Geaendert(vorher, hit);
    if (fall.Erwartet("WAEHRUNG")) fall.Aus("WAEHRUNG", hit.EINFACHSATZ.GetWaehrung());
    if (fall.Erwartet("WAEHRUNGV")) fall.Aus("WAEHRUNGV", hit.m_EinfachsatzV.GetWaehrung());
}

// Into the texts of the finding's short codes alone, and into both texts.
void Befundkuerzel(CPraxisTest &, CFall & fall) {
    CBefunde befunde;
    for (const bool bBeide : {false, true}) {
        CBehHitLine hit;
        hit.m_sBefundKuerzel = "........"_t;
        hit.BEFUND = "....";
        (hit.*(bBeide ? &CBehHitLine::Befund2Kuerzel2 : &CBehHitLine::Befund2Kuerzel))(
            befunde, fall.Ein<int>("NR"), fall.Ein<int>("POS"));
        fall.Aus("KUERZEL", hit.m_sBefundKuerzel);
        if (bBeide)
            fall.Aus("BEFUND", hit.BEFUND);
        else
            EXPECT_EQ(hit.BEFUND, "...."_t);
    }
}

TEST(Hit, Faelle) {
    PruefeFaelle<CPraxisTest>(
        ORVOSTATBS_SOURCE_DIR "/tests/records/faelle/hit.txt",
        {{"beh", Zug(&CBehHitLine::MoveBeh)},
         {"schluessel", &Schluessel},
         {"bill", Zug<CBehHitLine, CTBill>([](CFall &, CBehHitLine & hit, CTBill & zeile) {
              CBill bill;
              bill.MoveBill(&zeile);
              hit.MoveBill(bill);
          })},
         {"vdesc", Zug<CBehHitLine, CTVDesc>([](CFall & fall, CBehHitLine & hit, CTVDesc & zeile) {
              CVDesc vdesc;
              vdesc.MoveVDesc(&zeile);
              fall.Fuelle(vdesc, "vd:");
              hit.MoveVDesc(vdesc);
          })},
         {"kas", Zug<CBehHitLine, CTOrvoKas>([](CFall & fall, CBehHitLine & hit, CTOrvoKas & zeile) {
              CKas kas;
              kas.MoveKas(&zeile, "");
              fall.Fuelle(kas, "kas:");
              hit.MoveKas(kas);
          })},
         {"pw", Zug<CBehHitLine, CTPunktWert>([](CFall &, CBehHitLine & hit, CTPunktWert & zeile) {
              CPw pw;
              pw.MovePw(&zeile);
              hit.MovePw(pw);
          })},
         {"provision", &Provision},
         {"go", &Gebuehr},
         {"befund", Zug(&CBehHitLine::MoveBefund)},
         {"kuerzel", &Befundkuerzel},
         {"zelabor", Zug(&CBehHitLine::MoveZEKasseLBlockEntry)},
         {"zefremdlabor", Zug(&CBehHitLine::MoveZEKasseGLBlocEntry)},
         {"lblock", Zug(&CBehHitLine::MoveLBlock)},
         {"glbloc", Zug<CBehHitLine, CTGLBloc>([](CFall & fall, CBehHitLine & hit, CTGLBloc & zeile) {
              fall.Nimm("PATREF", zeile.m_PATREF);
              hit.MoveGLBloc(&zeile);
          })},
         {"fakt", Zug(&CBehHitLine::MoveFakt)},
         {"roe", Zug(&CBehHitLine::MoveRoeBuch)}});
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

TEST_F(BehHitLine, gebuehr_offene_arten_nach_abrechnungsart) {
    CGOStruct go;
    go.m_cGoArt = 'k';
    go.m_cStatArt = 'x';
    go.m_cPwLArt = '~';
    std::string sStatistik, sPunktwert; // ABRART and what it gives, where it gives something
    for (int c = 0; c < 256; ++c) {
        CBehHitLine hit;
        hit.GOART = 'k';
        hit.ABRART = static_cast<char>(c);
        hit.MoveGO(go);
        if (hit.GOSTATISTIKART != 'x') sStatistik += std::string{hit.ABRART, hit.GOSTATISTIKART, ' '};
        if (hit.PWLART != '~') sPunktwert += std::string{hit.ABRART, hit.PWLART, ' '};
    }
    EXPECT_EQ(sStatistik, "4g 5g 6d 7d 8d 9d bg ca ie kf mf pd zc ");
    EXPECT_EQ(sPunktwert, "4h 5h 6g 7g 8g 9g bh ca ij ki mi pg zf ");
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

} // namespace

} // namespace orvostat
