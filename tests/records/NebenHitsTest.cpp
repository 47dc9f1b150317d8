#include "orvostatbs/records/NebenHits.h"

#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/Pat.h"

#include "Praxisfixture.h"

#include <limits>

namespace orvostat {

namespace {

CString Stored(const CWBetragBasis & betrag) { return betrag.ToDb(0, true, false, 0, 0); }

// ---- Plaster models ------------------------------------------------------------------------------------------------

TEST(GipsHitLine, MoveGipsDeutetMerkerUndArchivdatum) {
    const struct {
        CString sArt, sGedruckt, sArchiviert;
        char cArt;
        bool bGedruckt;
        CString sErwartet;
    } vFaelle[] = {{"ab", "1", "20240102", 'a', true, "20240102"},
                   {"", "0", "2024010", 0, false, ""},
                   {"c", "-1x", "202401021", 'c', true, ""}};
    for (const auto & fall : vFaelle) {
        CTGips gips;
        gips.m_GIPSART = fall.sArt;
        gips.m_GEDRUCKT = fall.sGedruckt;
        gips.m_ARCHIVIERT = fall.sArchiviert;
        CGipsHitLine hit;
        hit.ARCHIVIERT = "20000101"; // of a model before
        hit.MoveGips(&gips);
        EXPECT_EQ(hit.GIPSART, fall.cArt);
        EXPECT_EQ(hit.GEDRUCKT, fall.bGedruckt) << fall.sGedruckt.Utf8();
        EXPECT_EQ(hit.ARCHIVIERT, fall.sErwartet) << fall.sArchiviert.Utf8();
        hit.m_bGipsFrei2 = false;
        hit.Clear();
        EXPECT_TRUE(hit.GIPSART == 0 && hit.m_bGipsFrei2); // the flag that is set in a cleared line
    }
}

TEST(GipsHitLine, JedesFeldKommtAusSeinerSpalte) {
    CTGips gips;
    gips.m_GIPSNR = "1";
    gips.m_PATNR = "2";
    gips.m_DATUM = "3";
    gips.m_BEHANDLERNR = "4";
    gips.m_BESCHREIBUNG = "5";
    CPat pat;
    pat.PATNAME = "a";
    pat.PATVORNAME = "b";
    pat.PATTITEL = "c";
    pat.PATZUSATZ = "d";
    pat.PATGEBDATUM = "e";
    CGipsHitLine hit;
    hit.MoveGips(&gips);
    hit.MovePat(pat);
    EXPECT_EQ(hit.GIPSNR + hit.PATNR + hit.DATUM + hit.BEHANDLERNR + hit.BESCHREIBUNG, CString("12345"));
    EXPECT_EQ(hit.PATNAME + hit.PATVORNAME + hit.PATTITEL + hit.PATZUSATZ + hit.PATGEBDATUM,
              CString("abcde"));
}

// ---- Laboratories --------------------------------------------------------------------------------------------------

class CLaborTest : public CPraxisFixture {
protected:
    static void Eintrag(const CString & sBlock, const CString & sBetrag, const CString & sAnzahl,
                        const CString & sUst) {
        Zeile<CTGLBlocEntry>([&](CTGLBlocEntry & e) {
            e.m_LABORKUNDE = "K1";
            e.m_LFDGLBLOC = sBlock;
            e.m_BETRAG = sBetrag;
            e.m_ANZAHL = sAnzahl;
            e.m_USTKEY = sUst;
        });
    }
};

template <class THit> CString Betraege(const THit & hit) {
    return CString(hit.TECHNLST) + ' ' + hit.MATERIAL + ' ' + hit.METALL + ' ' + hit.PRAXMAT + ' ' +
           hit.USTGES + ' ' + hit.NETTO + ' ' + hit.GESAMT;
}

constexpr int INDEX_MAX = std::numeric_limits<int>::max();

TEST(GlabHitLine, GepackteBetraegeSindZehnOderNeunBreit) {
    const CString sBlock = "e    12345e    -6789e        0e   9"_t;
    const CString sSammel = "e   12345e   -6789e       0e   9"_t;
    const struct {
        int iIndex;
        CString sErwartet;
    } vFaelle[] = {{0, "e12345"}, {1, "e-6789"}, {2, "e0"}, {3, "e9"}, {4, ""}, {INDEX_MAX, ""}};
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(CGlabHitLine::GetBetrag(sBlock, fall.iIndex), fall.sErwartet) << fall.iIndex;
        EXPECT_EQ(CGlabFaktHitLine::GetBetrag(sSammel, fall.iIndex), fall.sErwartet) << fall.iIndex;
    }
}

TEST(GlabHitLine, BruttoSummiertZehnFenster) {
    const struct {
        CString sBetraege, sErwartet;
    } vFaelle[] = {
        {"", "0"},
        {"e    12345", "12345"},
        {"e    12345e    -6789e        0e      120"_t, "5676"},
        {"e   12345e    6789e       0e   12345"_t, "31479"},
        {"e   12345e    6789e       0e  112345"_t, "31479"}, // nine wide: places of the fourth are lost
        {CString('9', 110), "21474836470"},                  // ten windows, not eleven
    };
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(CGlabHitLine::GetGesamtBetragBrutto(fall.sBetraege), fall.sErwartet);
        EXPECT_EQ(CGlabFaktHitLine::GetGesamtBetragBrutto(fall.sBetraege), fall.sErwartet);
    }
}

TEST_F(CLaborTest, SteuerEinesEintrags) {
    const struct {
        CString sBetrag, sAnzahl, sUst, sUst7, sUst16;
    } vFaelle[] = {
        {"e1000", "x250", "7", "e175", "e0"},
        {"e   1000", "   250", "g", "e0", "e400"},
        {"e1000", "100", "0", "e0", "e0"},
        {"e1000", "100", "1", "e0", "e0"},
        {"e50", "100", "7", "e4", "e0"}, // 3.5 cents, and halves go away from zero
        {"e-50", "100", "7", "e-4", "e0"},
        {"e50", "x-100", "7", "e-4", "e0"},
        {"e-50", "-100", "7", "e4", "e0"},
        {"e  -99", "50", "7", "e-4", "e0"}, // -49.5 cents become -50
        {" 1000", "100", "g", "e0", " 160"},
        {"", "100", "7", "e0", "e0"},
        {"e9223372036854775807"_t, "9223372036854775807"_t, "7", "e0", "e0"}, // beyond 64 bits: no harm
    };
    for (const auto & fall : vFaelle) {
        const CString sBlock = itoc(&fall - vFaelle + 1);
        Eintrag(sBlock, fall.sBetrag, fall.sAnzahl, fall.sUst);
        CString sUst7, sUst16;
        CGlabHitLine::GetGesamtUst(sUst7, sUst16, sBlock, "K1");
        EXPECT_EQ(sUst7, fall.sUst7) << sBlock.Utf8();
        EXPECT_EQ(sUst16, fall.sUst16) << sBlock.Utf8();
    }
}

TEST_F(CLaborTest, SteuerZaehltNurDenEigenenBlock) {
    Eintrag("1", "e2000", "100", "7");
    Eintrag("1", "e333", "150", "7"); // 499.5 cents become 500
    Eintrag("1", "e1000", "100", "g");
    Eintrag("1", "e-101", "150", "g"); // -151.5 cents become -152
    Eintrag("1", "e9999", "100", "0");
    Eintrag("2", "e7777", "100", "7");
    CString sUst7, sUst16;
    CGlabHitLine::GetGesamtUst(sUst7, sUst16, "1", "K1");
    EXPECT_EQ(sUst7, CString("e175"));  // of 25.00
    EXPECT_EQ(sUst16, CString("e136")); // of 8.48
    CGlabHitLine::GetGesamtUst(sUst7, sUst16, "3", "K1");
    EXPECT_EQ(sUst7 + sUst16, CString("e0e0"));
    EXPECT_EQ(EntlieheneRSets(), 0);
}

TEST_F(CLaborTest, MoveLabRechNimmtTexteUndBildetSummen) {
    CTGLBloc rec;
    rec.m_LABORKUNDE = "K1";
    rec.m_LFDGLBLOC = "7";
    CString CTGLBloc::*const apTexte[] = {
        &CTGLBloc::m_AUFTRAG,     &CTGLBloc::m_LABORNAME,    &CTGLBloc::m_TECHNIKER, &CTGLBloc::m_ARBEIT,
        &CTGLBloc::m_FARBE,       &CTGLBloc::m_MATERIALTEXT, &CTGLBloc::m_CHARGE,    &CTGLBloc::m_EINGANG,
        &CTGLBloc::m_LIEFERUNG,   &CTGLBloc::m_RECHNUNGNR,   &CTGLBloc::m_RECHDATUM, &CTGLBloc::m_ZAHLZIEL,
        &CTGLBloc::m_GLBEMERKUNG, &CTGLBloc::m_GLKENNUNG};
    for (const auto & pText : apTexte)
        rec.*pText = itoc(&pText - apTexte + 1);
    rec.m_GLBLOCBETRAEGE = "e    12345e     6789e        0"_t;
    rec.m_UST = "e3000";
    rec.m_GLBLOCSTATUS = "1";
    CGlabHitLine hit;
    hit.PRAXMAT = CVzW7Betrag("e99"); // of a block before
    hit.MoveLabRech(rec);
    const CString asTexte[] = {hit.m_sGlab1,  hit.m_sGlab2,  hit.m_sGlab3,  hit.m_sGlab4, hit.m_sGlab5,
                               hit.m_sGlab6,  hit.m_sGlab7,  hit.m_sGlab8,  hit.m_sGlab9, hit.m_sGlab10,
                               hit.m_sGlab11, hit.m_sGlab12, hit.m_sGlab13, hit.m_sGlab14};
    for (const CString & sText : asTexte)
        EXPECT_EQ(sText, itoc(&sText - asTexte + 1));
    EXPECT_EQ(Betraege(hit), "e12345 e6789 e0 e0 e3000 e16134 e19134"_t);
    EXPECT_TRUE(hit.m_bGlabStatus);
    rec.m_GLBLOCSTATUS = "01";
    hit.MoveLabRech(rec);
    EXPECT_TRUE(hit.m_bGlabStatus);
    rec.m_GLBLOCSTATUS = "0";
    hit.MoveLabRech(rec);
    EXPECT_FALSE(hit.m_bGlabStatus);
}

TEST(GlabFaktHitLine, SkontoGehoertDemAufrufer) {
    CTGLKuFakt rec;
    rec.m_PRAXISNR = "1";
    rec.m_LABORKUNDE = "2";
    rec.m_FAKTDATUM = "3";
    rec.m_VONDATUM = "4";
    rec.m_BISDATUM = "5";
    rec.m_ANZGLBLOCKS = "6";
    rec.m_BEGLICHEN = "7";
    rec.m_LFDGLKUFAKT = "9";
    rec.m_STORNIERT = "1";
    rec.m_KUFAKTBETRAEGE = "e   12345e    6789e       0"_t;
    rec.m_UST = "e3000";
    CGlabFaktHitLine hit;
    hit.SKONTOPROZENT = "200";
    hit.m_sGlabFakt1 = "frei";
    hit.MoveSammelLabRech(rec);
    EXPECT_EQ(Betraege(hit), "e12345 e6789 e0 e0 e3000 e16134 e19134"_t);
    EXPECT_EQ(hit.PRAXISNR + hit.LABORKUNDE + hit.FAKTDATUM + hit.VONDATUM + hit.BISDATUM + hit.ANZGLBLOCKS +
                  hit.BEGLICHEN + hit.SKONTOPROZENT,
              CString("1234567200"));
    EXPECT_TRUE(hit.STORNIERT);
    rec.m_STORNIERT = "11";
    hit.MoveSammelLabRech(rec);
    EXPECT_FALSE(hit.STORNIERT);
    hit.Clear();
    EXPECT_EQ(hit.m_sGlabFakt1 + hit.LFDGLKUFAKT + CString(hit.GESAMT) + hit.SKONTOPROZENT, CString("200"));
}

TEST_F(CLaborTest, OhneNummerGiltJederBlockDesKunden) {
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

// ---- Invoices ------------------------------------------------------------------------------------------------------

class CRechTest : public CPraxisFixture {};

TEST_F(CRechTest, PaketIstAlleinDerKasse) {
    Zeile<CTKTraeger>([](CTKTraeger & k) {
        k.m_PATNR = "KZV1";
        k.m_KTART = "p";
    });
    CTFakt fakt;
    fakt.m_BETRAG1 = "e10000";
    fakt.m_BETRAG2 = "e5000";
    fakt.m_BEGLICHEN = "e1500";
    fakt.m_AUSGEBUCHT = "e250";
    const struct {
        CString sPatNr, sBetrag, sBetragK, sOffen;
    } vFaelle[] = {{"4711", "e10000", "e5000", "e8250"}, {"KZV1", "", "e10000", "e8250"}};
    for (const auto & fall : vFaelle) {
        fakt.m_PATNR = fall.sPatNr;
        CRechHitLine hit;
        hit.MoveFakt(&fakt);
        EXPECT_EQ(Stored(hit.RECHBETRAG), fall.sBetrag) << fall.sPatNr.Utf8();
        EXPECT_EQ(Stored(hit.RECHBETRAGK), fall.sBetragK) << fall.sPatNr.Utf8();
        EXPECT_EQ(Stored(hit.Offen()), fall.sOffen) << fall.sPatNr.Utf8();
    }
}

TEST_F(CRechTest, TexteUndMerker) {
    CString CTFakt::*const apSpalten[] = {&CTFakt::m_PRAXISNR,    &CTFakt::m_PATNR,       &CTFakt::m_FAKT1,
                                          &CTFakt::m_FORTLFDJAHR, &CTFakt::m_FORTLFDFAKT, &CTFakt::m_DATUM,
                                          &CTFakt::m_FORMULARNR,  &CTFakt::m_KASKUERZEL};
    CString CRechHitLine::*const apFelder[] = {&CRechHitLine::PRAXISNR,    &CRechHitLine::PATNR,
                                               &CRechHitLine::FAKT1,       &CRechHitLine::FORTLFDJAHR,
                                               &CRechHitLine::FORTLFDFAKT, &CRechHitLine::DATUM,
                                               &CRechHitLine::FORMULARNR,  &CRechHitLine::KASKUERZEL};
    CTFakt fakt;
    for (std::size_t i = 0; i < std::size(apSpalten); ++i)
        fakt.*apSpalten[i] = itoc(static_cast<int>(i) + 1);
    fakt.m_STORNIERT = "2x";
    fakt.m_MAHNSTUFE = "3m";
    fakt.m_KTRAEGER = "ab";
    fakt.m_MWSTLISTE = "7e    10000";
    CRechHitLine hit;
    hit.HONMWSTBETRAG = CDBetrag("e50");
    hit.MoveFakt(&fakt);
    for (std::size_t i = 0; i < std::size(apFelder); ++i)
        EXPECT_EQ(hit.*apFelder[i], itoc(static_cast<int>(i) + 1));
    EXPECT_TRUE(hit.STORNIERT && hit.MAHNSTUFE == '3' && hit.KTRAEGER == 'a');
    EXPECT_EQ(Stored(hit.HONMWSTBETRAG), CString("e750")) << "added to what is there";
    fakt.m_STORNIERT = "x";
    hit.MoveFakt(&fakt);
    EXPECT_FALSE(hit.STORNIERT);
    hit.Clear();
    EXPECT_TRUE(hit.HONMWSTBETRAG.IsEmpty() && hit.KTRAEGER == 0);
}

TEST_F(CRechTest, BetraegeBeiderGruppenZusammen) {
    const struct {
        CString CTFakt::*pErste, CTFakt::*pZweite;
        CDBetrag CRechHitLine::*pSumme;
    } vPaare[] = {{&CTFakt::m_HONORAR1, &CTFakt::m_HONORAR2, &CRechHitLine::HONORAR},
                  {&CTFakt::m_ELABGESAMT1, &CTFakt::m_ELABGESAMT2, &CRechHitLine::ELABGESAMT},
                  {&CTFakt::m_FLABGESAMT1, &CTFakt::m_FLABGESAMT2, &CRechHitLine::FLABGESAMT},
                  {&CTFakt::m_ELABMWST1, &CTFakt::m_ELABMWST2, &CRechHitLine::ELABMWSTBETRAG}};
    for (const auto & paar : vPaare) {
        CTFakt fakt;
        fakt.*paar.pErste = "e100";
        fakt.*paar.pZweite = "e20";
        CRechHitLine hit;
        hit.MoveFakt(&fakt);
        EXPECT_EQ(Stored(hit.*paar.pSumme), CString("e120")) << &paar - vPaare;
    }
}

TEST_F(CRechTest, HonorarsteuerAusDerSteuerliste) {
    const struct {
        CString sListe, sErwartet;
    } vFaelle[] = {
        {"", ""},
        {"7", ""},
        {"7e    10000", "e700"},
        {"g    100,00"_t, "1900"}, // display texts
        {"7e   100,00"_t, "e700"},
        {"7e    10000ge    200"_t, "e738"},   // the second piece is cut
        {"7e   -10000ge     1000"_t, "e190"}, // a negative amount adds nothing
        {"0e    10000", "e0"},                // taxed with nothing is not untaxed
        {"7e      100ge      100he      100te      1001e      100"_t,
         "e33"}, // no fifth piece, no rate for "t"
    };
    for (const auto & fall : vFaelle) {
        CTFakt fakt;
        fakt.m_MWSTLISTE = fall.sListe;
        CRechHitLine hit;
        hit.MoveFakt(&fakt);
        EXPECT_EQ(Stored(hit.HONMWSTBETRAG), fall.sErwartet) << fall.sListe.Utf8();
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

// ---- Prescriptions -------------------------------------------------------------------------------------------------

class CVerordnungTest : public CHostTest {
protected:
    CTRezept m_rez;
    CHMVRecord m_hmv;
    CVerordnungHitLine m_hit; // the clock stands at 1 July 2024
};

TEST_F(CVerordnungTest, NameUndGeburtsdatumAusDenZeilen) {
    const struct {
        CString sText, sName, sGebDatum, sFeld;
    } vFaelle[] = {
        {"", "", "", ""},
        {"Kasse", "", "", ""},
        {"Kasse\nMuster   "_t, "Muster", "", ""},
        {"Kasse\nMuster  \nEva                   12.03.59"_t, "Muster, Eva"_t, "19590312", ""},
        {"Kasse\r\nMuster\r\nEva                    01.02.19 \r\n"_t, "Muster, Eva"_t, "20190201", ""},
        {"Kasse\nMuster\n                      01.07.24"_t, "Muster", "20240701", ""},
        {"Kasse\nMuster\nEva"_t, "Muster, Eva"_t, "", ""},
        {"1\n2\n3\n4\n5\n0123456789ABCDEFGHIJKL"_t, "2, 3", "", "ABCDEFGHIJ"_t},
        {"1\n2\n3\n4\n5\n0123456789AB   "_t, "2, 3", "", "AB"},
        {"1\n2\n3\n4\n5\n012"_t, "2, 3", "", ""},
    };
    for (const auto & fall : vFaelle) {
        m_hit.Clear();
        m_hmv.m_TEXTBLOCK = fall.sText;
        m_hit.MoveVerordnung(m_rez, m_hmv);
        EXPECT_EQ(m_hit.m_sVoName, fall.sName) << fall.sText.Utf8();
        EXPECT_EQ(m_hit.m_sVoGebDatum, fall.sGebDatum) << fall.sText.Utf8();
        EXPECT_EQ(m_hit.m_sVoFeld, fall.sFeld) << fall.sText.Utf8();
    }
}

TEST_F(CVerordnungTest, NummernFormularUndBetrag) {
    m_rez.m_PATNR = "1";
    m_rez.m_REZEPTNR = "2";
    m_hmv.m_BETRAG = "e345";
    for (const CString & sFormular : {"BLANKOVERORDNUNG"_t, "BLANKO"_t, "Blankoverordnung"_t}) {
        m_hmv.m_FORMULARNAME = sFormular;
        m_hit.MoveVerordnung(m_rez, m_hmv);
        EXPECT_EQ(m_hit.m_bVoBlanko, sFormular == "BLANKOVERORDNUNG"_t);
    }
    EXPECT_EQ(m_hit.m_sVoKey1 + m_hit.m_sVoKey2 + Stored(m_hit.m_VoBetrag), CString("12e345"));
}

TEST_F(CVerordnungTest, SchluesselUndCodesHabenFestePlaetze) {
    const struct {
        CString sText, sSchluessel, sIcd1, sIcd2, sListe;
    } vFaelle[] = {
        {"CMD1 K021   K0530  "_t, "CMD1", "K02.1", "K05.30", "K02.1; K05.30"_t},
        {"CMD1 K021"_t, "CMD1", "K02.1", "", "K02.1"},
        {"CMD1 K021123K053012x"_t, "CMD1", "K02.1123"_t, "K05.3012"_t, "K02.1123; K05.3012"_t},
        {"CMD1        K05.3"_t, "CMD1", "", "K05.3", "K05.3"},
        {"CMD12"_t, "CMD12", "", "", ""},
        {"", "", "", "", ""},
    };
    for (const auto & fall : vFaelle) {
        m_rez.m_REZEPTSCHLUESSEL = fall.sText;
        m_hit.MoveVerordnung(m_rez, m_hmv);
        EXPECT_EQ(m_hit.m_sVoSchluessel, fall.sSchluessel);
        EXPECT_EQ(m_hit.m_sVoIcd1, fall.sIcd1);
        EXPECT_EQ(m_hit.m_sVoIcd2, fall.sIcd2);
        EXPECT_EQ(m_hit.m_sVoIcdListe, fall.sListe) << fall.sText.Utf8();
    }
}

TEST_F(CVerordnungTest, EinheitenSindDieErstenDreiOderDieVierte) {
    const struct {
        CString s1, s2, s3, s4;
        int iErwartet;
    } vFaelle[] = {{"6", "", "2", "10", 8},
                   {"0", "", "x", "10", 10},
                   {"", "", "", "", 0},
                   {"5", "-5", "", "10", 0},
                   {"2147483647", "2147483647", "1", "", 2147483647}};
    for (const auto & fall : vFaelle) {
        m_hmv.m_ANZAHL1 = fall.s1;
        m_hmv.m_ANZAHL2 = fall.s2;
        m_hmv.m_ANZAHL3 = fall.s3;
        m_hmv.m_ANZAHL4 = fall.s4;
        m_hit.MoveVerordnung(m_rez, m_hmv);
        EXPECT_EQ(m_hit.m_iVoAnzahl, fall.iErwartet) << fall.s1.Utf8();
    }
}

} // namespace

} // namespace orvostat
