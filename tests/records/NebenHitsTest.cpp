#include "orvostatbs/records/NebenHits.h"

#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/records/Pat.h"

#include <gtest/gtest.h>

namespace orvostat {

namespace {

TEST(NebenHits, ClearLaesstWasDemAufruferGehoert) {
    CGipsHitLine gips;
    gips.GIPSART = 'a';
    gips.m_bGipsFrei2 = false;
    gips.Clear();
    EXPECT_TRUE(gips.GIPSART == 0 && gips.m_bGipsFrei2); // the flag that is set in a cleared line
    CGlabFaktHitLine fakt;
    fakt.SKONTOPROZENT = "200";
    fakt.m_sGlabFakt1 = fakt.LFDGLKUFAKT = "frei";
    fakt.GESAMT = CVzW7Betrag("e1");
    fakt.Clear();
    EXPECT_EQ(fakt.m_sGlabFakt1 + fakt.LFDGLKUFAKT + CString(fakt.GESAMT) + fakt.SKONTOPROZENT,
              CString("200"));
    CRechHitLine rech;
    rech.HONMWSTBETRAG = CDBetrag("e1");
    rech.KTRAEGER = 'a';
    rech.Clear();
    EXPECT_TRUE(rech.HONMWSTBETRAG.IsEmpty() && rech.KTRAEGER == 0);
    CVerordnungHitLine verordnung;
    verordnung.m_sVoName = "Muster";
    verordnung.m_iVoAnzahl = 1;
    verordnung.Clear();
    EXPECT_TRUE(verordnung.m_sVoName.IsEmpty() && verordnung.m_iVoAnzahl == 0);
}

TEST(GipsHitLine, NameUndGeburtsdatumDesPatienten) {
    CPat pat;
    pat.PATNAME = "a";
    pat.PATVORNAME = "b";
    pat.PATTITEL = "c";
    pat.PATZUSATZ = "d";
    pat.PATGEBDATUM = "e";
    CGipsHitLine hit;
    hit.MovePat(pat);
    EXPECT_EQ(hit.PATNAME + hit.PATVORNAME + hit.PATTITEL + hit.PATZUSATZ + hit.PATGEBDATUM,
              CString("abcde"));
}

TEST(GlabHitLine, OhneNummerGiltJederBlockDesKunden) {
    const struct {
        CString sKunde, sLfd, sAndererKunde, sAndereLfd;
        bool bGleich;
    } vFaelle[] = {{"K1", "7", "K1", "7", true},
                   {"K1", "7", "K1", "8", false},
                   {"K1", "", "K1", "8", true},
                   {"K1", "7", "K1", "", false},
                   {"K1", "", "K2", "", false}};
    for (const auto & fall : vFaelle) {
        CGlabHitLine hit;
        CTGLBloc rec;
        CGlabFaktHitLine fakt;
        CTGLKuFakt recFakt;
        hit.LABORKUNDE = fakt.LABORKUNDE = fall.sKunde;
        hit.LFDGLBLOC = fakt.LFDGLKUFAKT = fall.sLfd;
        rec.m_LABORKUNDE = recFakt.m_LABORKUNDE = fall.sAndererKunde;
        rec.m_LFDGLBLOC = recFakt.m_LFDGLKUFAKT = fall.sAndereLfd;
        EXPECT_EQ(hit == rec, fall.bGleich);
        EXPECT_EQ(fakt == recFakt, fall.bGleich);
        CGlabHitLine anderer;
        anderer.MoveLabRech(rec);
        EXPECT_EQ(hit == anderer, fall.bGleich);
        CGlabFaktHitLine andererFakt;
        andererFakt.MoveSammelLabRech(recFakt);
        EXPECT_EQ(fakt == andererFakt, fall.bGleich);
    }
}

TEST(RechHitLine, MovePatWaehltDenKontakt) {
    CPat pat;
    pat.PATTELEFON = "t1";
    pat.m_sTelefon2 = "t2";
    pat.m_sTelefon3 = "t3";
    pat.m_sTelefon4 = "t4";
    pat.PATEMAIL = "t5";
    pat.m_sTelefon6 = "t6";
    pat.TELEFONPRIO = "t7";
    pat.PATNAME = "Ott";
    pat.PATVORNAME = "Eva";
    pat.BEHANDLERNR = " 5";
    const CString asErwartet[] = {"alt", "t1", "t2", "t3", "t4", "t5", "t6", "t7", "alt"};
    for (int i = 0; i <= 8; ++i) {
        CRechHitLine hit;
        hit.PATTELEFON = "alt";
        hit.MovePat(pat, i);
        EXPECT_EQ(hit.PATTELEFON, asErwartet[i]) << i;
        EXPECT_EQ(hit.PATNAME + hit.PATVORNAME + hit.BEHANDLERNR, "OttEva 5"_t) << i;
    }
}

} // namespace

} // namespace orvostat
