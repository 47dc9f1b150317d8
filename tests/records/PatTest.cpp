#include "orvostatbs/records/Pat.h"

#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include "support/Praxis.h"

namespace orvostat {

namespace {

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

class CPatTest : public CPraxisTest {
protected:
    CPatTest() {
        Schreibe(R"(ADR ADRNR=A1 ADRLFD=1 PATORT=Anders
                    ADR ADRNR=A2 ADRLFD=1 PATORT=Ort)");
        m_rPat.m_PATNR = "4711";
        m_rPat.m_ADRNR = "A2";
    }
    bool Move() { return m_pat.MovePatFields(&m_rPat, &m_rAdr, &m_rRecall); }

    CTPat m_rPat;
    CTAdr m_rAdr;
    CTHistRecall m_rRecall;
    CPat m_pat;
};

TEST_F(CPatTest, OhneAdresseKommenNurDieErstenFelder) {
    Schreibe("ADR ADRLFD=1 PATORT=Niemandes");
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

    Schreibe("PAT PATNR=4712 ADRNR=A1");
    EXPECT_TRUE(m_pat.ReadAndMovePat("4712", &m_rPat, &m_rAdr, &m_rRecall));
    EXPECT_EQ(m_pat.PATORT, CString("Anders"));
}

} // namespace

} // namespace orvostat
