#include "orvostatbs/records/Pat.h"

#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include "Praxisfixture.h"

namespace orvostat {

namespace {

TEST(Pat, NameFuerBriefListeUndKurzform) {
    const struct {
        CString sTitel, sVorname, sZusatz, sName, sBrief, sListe, sKurz;
    } vFaelle[] = {
        {"Dr.", "Eva", "von", "Muster", "Dr. Eva von Muster"_t, "Muster, Dr. Eva von"_t, "Muster, E."_t},
        {"", "Eva", "", "Muster", "Eva Muster"_t, "Muster, Eva "_t, "Muster, E."_t},
        {"Dr.", "", "", "Muster", "Dr.  Muster"_t, "Muster, Dr.  "_t, "Muster, ."_t},
        {"", "", "", " Muster", " Muster", "Muster,  "_t, "Muster, ."_t},
    };
    for (const auto & fall : vFaelle) {
        CPat pat;
        pat.PATTITEL = fall.sTitel;
        pat.PATVORNAME = fall.sVorname;
        pat.PATZUSATZ = fall.sZusatz;
        pat.PATNAME = fall.sName;
        EXPECT_EQ(pat.GetName(), fall.sBrief);
        EXPECT_EQ(pat.BuildNameUndVn(), fall.sListe);
        EXPECT_EQ(pat.BuildNVPkt(), fall.sKurz);
        EXPECT_EQ(pat.GetNameUndGeb(), fall.sBrief + " *");
        pat.PATGEBDATUM = "19600201";
        EXPECT_EQ(pat.GetNameVornameUndGeb(), fall.sListe + " *01.02.1960"_t);
    }
}

TEST(Pat, ClearLaesstNurGelesenStehen) {
    CPat pat;
    pat.PATNR = "4711";
    pat.m_bPatValid = pat.m_bPatGelesen = true;
    pat.m_iPatProzent = pat.BEHDAUER = 1;
    pat.BENACHRICHTIGUNG = pat.FRUCHT = 'x';
    pat.INDEXMARKERS = 1;
    pat.LASTBEHDATUM = "20240102";
    pat.ClearBeh();
    EXPECT_TRUE(pat.LASTBEHDATUM.IsEmpty() && pat.BEHDAUER == 1 && pat.PATNR == "4711");
    pat.Clear();
    EXPECT_TRUE(pat.PATNR.IsEmpty());
    EXPECT_FALSE(pat.m_bPatValid);
    EXPECT_TRUE(pat.m_iPatProzent == 0 && pat.BEHDAUER == 0 && pat.BENACHRICHTIGUNG == 0 && pat.FRUCHT == 0 &&
                pat.INDEXMARKERS == 0);
    EXPECT_TRUE(pat.m_bPatGelesen);
}

class CPatTest : public CPraxisFixture {
protected:
    CPatTest() {
        Adresse("A1", [](CTAdr & a) { a.m_PATORT = "Anders"; });
        Adresse("A2", [](CTAdr & a) { a.m_PATORT = "Ort"; });
        m_rPat.m_PATNR = "4711";
        m_rPat.m_ADRNR = "A2";
    }
    template <class F> static void Adresse(const CString & sNr, F f) {
        Zeile<CTAdr>([&](CTAdr & a) {
            a.m_ADRNR = sNr;
            a.m_ADRLFD = "1";
            f(a);
        });
    }
    bool Move() { return m_pat.MovePatFields(&m_rPat, &m_rAdr, &m_rRecall); }

    CTPat m_rPat;
    CTAdr m_rAdr;
    CTHistRecall m_rRecall;
    CPat m_pat;
};

TEST_F(CPatTest, JedesFeldKommtAusSeinerSpalte) {
    const struct {
        CString CTPat::*pSpalte;
        CString CPat::*pFeld;
    } vPat[] = {{&CTPat::m_SELEKTION, &CPat::SELEKTION},
                {&CTPat::m_PATVORNAME, &CPat::PATVORNAME},
                {&CTPat::m_PATNAME, &CPat::PATNAME},
                {&CTPat::m_PATGEBDATUM, &CPat::PATGEBDATUM},
                {&CTPat::m_LASTBEHDATUM, &CPat::LASTBEHDATUM},
                {&CTPat::m_UEBERWARZT, &CPat::UEBERWARZT},
                {&CTPat::m_HAUSARZT, &CPat::HAUSARZT},
                {&CTPat::m_EINTRDATUM, &CPat::EINTRDATUM},
                {&CTPat::m_RISIKOANAMNESE, &CPat::RISIKOANAMNESE},
                {&CTPat::m_RECALLART, &CPat::RECALLART},
                {&CTPat::m_RECALLITV, &CPat::RECALLITV},
                {&CTPat::m_PATFELD1, &CPat::m_sPatFeld1},
                {&CTPat::m_PATFELD3, &CPat::m_sPatFeld3},
                {&CTPat::m_BEHANDLERNR, &CPat::BEHANDLERNR},
                {&CTPat::m_PFLEGEGRAD, &CPat::m_sPflegegrad},
                {&CTPat::m_PFLEGEGRADENDE, &CPat::m_sPflegegradEnde},
                {&CTPat::m_FALLBESONDERHEIT, &CPat::m_sFallBesonderheit}};
    const struct {
        CString CTAdr::*pSpalte;
        CString CPat::*pFeld;
    } vAdr[] = {{&CTAdr::m_PATTITEL, &CPat::PATTITEL},     {&CTAdr::m_PATZUSATZ, &CPat::PATZUSATZ},
                {&CTAdr::m_PATSTRASSE, &CPat::PATSTRASSE}, {&CTAdr::m_PATPLZ, &CPat::PATPLZ},
                {&CTAdr::m_PATORT, &CPat::PATORT},         {&CTAdr::m_PATANREDE, &CPat::PATANREDE},
                {&CTAdr::m_TELEFON1, &CPat::PATTELEFON},   {&CTAdr::m_TELEFON2, &CPat::m_sTelefon2},
                {&CTAdr::m_TELEFON3, &CPat::m_sTelefon3},  {&CTAdr::m_TELEFON4, &CPat::m_sTelefon4},
                {&CTAdr::m_EMAIL, &CPat::PATEMAIL},        {&CTAdr::m_TELEFON6, &CPat::m_sTelefon6},
                {&CTAdr::m_TELEFON6, &CPat::TELEFONPRIO},  {&CTAdr::m_FRUEHERENAMEN, &CPat::FRUEHERENAMEN}};
    for (const auto & paar : vPat)
        m_rPat.*paar.pSpalte = itoc(&paar - vPat + 100);
    m_rPat.m_ADRNR = "A3";
    m_rPat.m_BENACHRICHTIGUNG = "tx";
    m_rPat.m_FRUCHT = "f";
    m_rPat.m_INDEXMARKERS = "4294967295";
    Adresse("A3", [&](CTAdr & a) {
        for (const auto & paar : vAdr)
            a.*paar.pSpalte = itoc(&paar - vAdr + 200);
        a.m_TELEFONPRIO = "6";
        a.m_PATNAME = a.m_PATVORNAME = "Adresse"; // the names of the person's row count
    });
    ASSERT_TRUE(Move());
    for (const auto & paar : vPat)
        EXPECT_EQ(m_pat.*paar.pFeld, itoc(&paar - vPat + 100));
    for (const auto & paar : vAdr)
        EXPECT_EQ(m_pat.*paar.pFeld, m_rAdr.*paar.pSpalte) << &paar - vAdr;
    EXPECT_EQ(m_rAdr.m_TELEFON1, CString("206")); // the row was really read
    EXPECT_EQ(m_pat.m_sAdrNr + m_pat.PATNR, CString("A34711"));
    EXPECT_EQ(m_pat.BENACHRICHTIGUNG, 't');
    EXPECT_EQ(m_pat.FRUCHT, 'f');
    EXPECT_EQ(m_pat.INDEXMARKERS, 4294967295u);
}

TEST_F(CPatTest, OhneAdresseKommenNurDieErstenFelder) {
    Adresse("", [](CTAdr & a) { a.m_PATORT = "Niemandes"_t; });
    m_rPat.m_PATNAME = "Muster";
    m_rPat.m_BEHANDLERNR = " 5";
    for (const char * pAdrNr : {"A9", "", "  "}) { // none, or nobody's
        m_rPat.m_ADRNR = CString(pAdrNr);
        EXPECT_FALSE(m_pat.MoveValidPat(&m_rPat, &m_rAdr, &m_rRecall)) << pAdrNr;
        EXPECT_EQ(m_pat.PATNR + m_pat.BEHANDLERNR, CString("4711 5"));
        EXPECT_EQ(m_pat.m_iPatProzent, 100);
        EXPECT_EQ(m_pat.PATNAME + m_pat.PATORT + m_pat.GESCHLECHT, CString());
        EXPECT_FALSE(m_pat.m_bPatGelesen || m_pat.m_bPatValid);
    }
    m_rPat.m_ADRNR = "A2"; // with any running number, not that of the address before
    m_rAdr.m_ADRLFD = "2";
    EXPECT_TRUE(m_pat.MoveValidPat(&m_rPat, &m_rAdr, &m_rRecall));
    EXPECT_TRUE(m_pat.m_bPatGelesen && m_pat.m_bPatValid && m_pat.PATORT == "Ort");
}

TEST_F(CPatTest, OhnePatientenzeileKommtNurDieNummer) {
    m_rPat.m_BEHANDLERNR = " 5"; // of a patient read before
    EXPECT_FALSE(m_pat.ReadAndMovePat("4712", &m_rPat, &m_rAdr, &m_rRecall));
    EXPECT_EQ(m_pat.PATNR + m_pat.BEHANDLERNR, CString("4712"));

    Zeile<CTPat>([](CTPat & p) {
        p.m_PATNR = "4712";
        p.m_ADRNR = "A1";
    });
    EXPECT_TRUE(m_pat.ReadAndMovePat("4712", &m_rPat, &m_rAdr, &m_rRecall));
    EXPECT_EQ(m_pat.PATORT, CString("Anders"));
}

TEST_F(CPatTest, GeschlechtUndProzentWerdenGedeutet) {
    const struct {
        CString sAdresse, sProzent, sGeschlecht;
        int iProzent;
    } vFaelle[] = {{"f", "", "w", 100},
                   {"m", "   ", "m", 100},
                   {"d", "0", "d", 0},
                   {"w", "x", "?", 0},
                   {"", "50", "?", 50}};
    for (const auto & fall : vFaelle) {
        m_rPat.m_ADRNR = "C" + fall.sAdresse;
        m_rPat.m_PATPROZENT = fall.sProzent;
        Adresse(m_rPat.m_ADRNR, [&](CTAdr & a) { a.m_GESCHLECHT = fall.sAdresse; });
        ASSERT_TRUE(Move());
        EXPECT_EQ(m_pat.GESCHLECHT, fall.sGeschlecht) << fall.sAdresse.Utf8();
        EXPECT_EQ(m_pat.m_iPatProzent, fall.iProzent) << fall.sProzent.Utf8();
    }
}

TEST_F(CPatTest, LetzterRecallGibtDatumUndIntervall) {
    m_rPat.m_RECALLITV = "63";
    const struct {
        CString sArt, sDatum, sWochen, sRecallItv;
    } vRecalls[] = {{"1", "20230110", "26", "W26"},
                    {"2", "20230301", "0", "63"},
                    {"1", "20230302", "-4", "63"},
                    {"3", "20240101", "13", "W13"}};
    for (const auto & recall : vRecalls) {
        Zeile<CTHistRecall>([&](CTHistRecall & r) {
            r.m_PATNR = "4711";
            r.m_RECALLART = recall.sArt;
            r.m_RECALLDATUM = recall.sDatum;
            r.m_RECALLITV = recall.sWochen;
        });
        ASSERT_TRUE(Move());
        EXPECT_EQ(m_pat.LASTRECALL, recall.sDatum);
        EXPECT_EQ(m_pat.RECALLITV, recall.sRecallItv) << recall.sDatum.Utf8();
    }
}

} // namespace

} // namespace orvostat
