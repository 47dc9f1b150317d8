#include "orvostatbs/accu/Bewertungsspur.h"

#include "accu/AccuTest.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <string>
#include <vector>

namespace orvostat {
namespace {

CString Text(const CDBetrag & betrag) { return betrag.ToDb(0, true, false, 0, 0); }
const std::vector<int> KEIN_FEHLER;

class CBewertungTest : public CAccuTest {
protected:
    // A service of one unit in May 2024, insured in the west.
    static CBehHitLine Hit(char cGoArt, char cGoSubArt = 0) {
        CBehHitLine hit;
        hit.PATNR = "1";
        hit.DATUM = "20240515";
        hit.LSTNR = "100";
        hit.GOART = cGoArt;
        hit.GOSUBART = cGoSubArt;
        hit.ANZAHL = 100;
        hit.KASSENPWGRP = "aok";
        hit.WSO_ERG = "1";
        return hit;
    }

    // A private service with factor and simple rate, and another rate for the special insurer.
    static CBehHitLine Privat(char cGoArt, char cGoSubArt, const CString & sFaktor, const CString & sSatz) {
        CBehHitLine hit = Hit(cGoArt, cGoSubArt);
        hit.FAKTOR = sFaktor;
        hit.EINFACHSATZ = CDBetrag(sSatz);
        hit.m_EinfachsatzV = CDBetrag("e777");
        return hit;
    }

    // GetBetrag. It reads nothing, and whatever it does, its last note is the amount.
    CDBetrag Betrag(CBehHitLine & hit) {
        CDBetrag abschlag;
        CBewertungsspur spur;
        m_accu.m_pSpur = &spur;
        (void)HatGelesen();
        m_accu.GetBetrag(hit, &abschlag);
        EXPECT_FALSE(HatGelesen());
        m_accu.m_pSpur = nullptr;
        EXPECT_TRUE(spur.Schritte().empty() || spur.Schritte().back().betrag == hit.BETRAG);
        return abschlag;
    }

    // Codes of the errors so far, in their order.
    std::vector<int> Fehler() const {
        std::vector<int> v;
        for (const CBehErrors & fehler : m_accu.m_vBehErrors.Lesend())
            v.push_back(fehler.m_iFehler);
        return v;
    }
};

// ---- the amount of a private service

TEST_F(CBewertungTest, PrivateLeistung) {
    const struct {
        const char * pName;
        char cGoArt, cGoSubArt;
        CString sFaktor, sSatz;
        int iAnzahl;
        CString sBetrag;
        int iPunkte = 5000;
    } aFaelle[] = {
        {"exact product is not cut", 'p', '1', "23000", "e1000", 100, "e2300"},
        {"half a cent cut", 'p', '1', "23000", "e1005", 100, "e2311"},
        {"half a cent rounded up", 'p', '2', "23000", "e1005", 100, "e2312"},
        {"only p cuts", 'a', '1', "23000", "e1005", 100, "e2312"},
        {"q by rate", 'q', '2', "23000", "e1005", 100, "e2312"},
        {"rounded before the quantity", 'p', '2', "23000", "e1005", 300, "e6936"},
        {"not rounded behind it", 'p', '2', "10000", "e33", 50, "e16.5"},
        {"no quantity", 'p', '2', "10000", "e1000", 0, "e0"},
        {"rate in the old currency", 'p', '2', "23000", " 1000", 100, " 2300"},
        {"factor empty", 'p', '2', "", "e1000", 100, "0"},
        {"factor no number", 'p', '2', "x", "e1000", 100, "0"},
        {"rate empty", 'p', '2', "23000", "", 100, "0"},
        {"rate 0", 'a', 0, "23000", "e0", 100, "0"},
        {"points", 'q', '1', "10000", "e777", 100, "e6", 1},
        {"no points", 'q', '1', "23000", "e777", 100, "0", 0},
        {"points without factor", 'q', '1', "", "e777", 100, "0"},
        {"highest points", 'q', '1', "35000", "", 100, "e1968473480", 99999999},
    };
    for (const auto & fall : aFaelle) {
        CBehHitLine hit = Privat(fall.cGoArt, fall.cGoSubArt, fall.sFaktor, fall.sSatz);
        hit.PUNKTE = fall.iPunkte;
        hit.ANZAHL = fall.iAnzahl;
        Betrag(hit);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag) << fall.pName;
    }
}

TEST_F(CBewertungTest, BesondererVersichererZahltDenZweitenSatz) {
    const struct {
        char cSonderKsArt;
        CString sSatzV, sBetrag;
    } aFaelle[] = {{'V', "e2000", "e4600"}, {'v', "e2000", "e2300"}, {0, "e2000", "e2300"}, {'V', "", "0"}};
    for (const auto & fall : aFaelle) {
        CBehHitLine hit = Privat('p', '2', "23000", "e1000");
        hit.m_EinfachsatzV = CDBetrag(fall.sSatzV);
        hit.m_cSonderKsArt = fall.cSonderKsArt;
        Betrag(hit);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag) << fall.cSonderKsArt << fall.sSatzV.Utf8();
    }
}

// The amount goes back to the currency of the stored one, the deductions with it.
TEST_F(CBewertungTest, WaehrungUndAbschlaege) {
    const struct {
        const char * pName;
        CString sGespeichert;
        int iLQ, iLebAbschlag;
        CString sBetrag, sAbschlag;
    } aFaelle[] = {
        {"old currency", " 1", 10000, 0, " 19558.3", ""},
        {"without currency", "1", 10000, 0, "e10000", ""},
        {"region above 1", "", 11000, 0, "e11000", "e-1000"},
        {"region in the old currency", " 1", 9000, 0, " 17602.47", " 1955.83"},
        {"treater behind region", "", 9000, 1500, "e7650", "e1000"},
        {"treater's supplement", "", 10000, -1000, "e11000", ""},
        {"treater takes all", "", 10000, 10000, "e0", ""},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.pName);
        m_accu.m_iLQPunktwert = fall.iLQ;
        CBehHitLine hit = Privat('p', '2', "10000", "e10000");
        hit.BETRAG = CDBetrag(fall.sGespeichert);
        hit.m_iLebAbschlag = fall.iLebAbschlag;
        EXPECT_EQ(Text(Betrag(hit)), fall.sAbschlag);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag);
    }
}

TEST_F(CBewertungTest, RegionalabschlagNurAufLeistungenDerGoz) {
    const struct {
        char cGoArt;
        std::string_view sSubArten;
        char cAbrMerkmal;
        bool bAbschlag;
    } aFaelle[] = {
        {'p', "123abhx", 0, true}, {'q', "23abhx", '>', true}, {'p', "1", '<', false},
        {'p', "yvwz", 0, false},   {'q', "y", 0, false},       {'p', "tursnpoq", 0, false},
        {'q', "t", 0, false},      {'a', "1", 0, false},       {'u', "1", 0, false},
    };
    m_accu.m_iLQPunktwert = 9000;
    for (const auto & fall : aFaelle)
        for (const char cSubArt : fall.sSubArten) {
            CBehHitLine hit = Hit(fall.cGoArt, cSubArt);
            hit.ABRMERKMAL = fall.cAbrMerkmal;
            hit.BETRAG = CDBetrag("e10000");
            CDBetrag abschlag("e4711");
            m_accu.AbzglAbschlagOst(hit, abschlag);
            EXPECT_EQ(Text(hit.BETRAG), CString(fall.bAbschlag ? "e9000" : "e10000"))
                << fall.cGoArt << cSubArt;
            EXPECT_EQ(Text(abschlag), CString(fall.bAbschlag ? "e1000" : "")) << fall.cGoArt << cSubArt;
        }
}

TEST_F(CBewertungTest, AbschlagBleibtUnberuehrtAusserNachEinemFaktor) {
    m_accu.m_iLQPunktwert = 9000;
    const struct {
        char cGoArt, cAbrMerkmal;
        CString sFaktor, sAbschlag;
    } aFaelle[] = {
        {'p', 0, "10000", "e100"},
        {'p', 0, "", "e4711"},
        {'p', '=', "10000", "e4711"},
        {'k', 0, "10000", "e4711"},
    };
    for (const auto & fall : aFaelle) {
        CBehHitLine hit = Privat(fall.cGoArt, '2', fall.sFaktor, "e1000");
        hit.ABRMERKMAL = fall.cAbrMerkmal;
        CDBetrag abschlag("e4711");
        m_accu.GetBetrag(hit, &abschlag);
        EXPECT_EQ(Text(abschlag), fall.sAbschlag) << fall.cGoArt << fall.sFaktor.Utf8();
    }
}

// ---- the stored amount

TEST_F(CBewertungTest, GespeicherterBetragStehtJeKopf) {
    const auto Gespeichert = [this](char cGoArt, const char * pDruckbild, const char * pText) {
        CBehHitLine hit = Privat(cGoArt, 0, "23000", "e777");
        hit.ABRMERKMAL = '=';
        hit.DRUCKBILD = CString(pDruckbild);
        hit.TEXT = CString(pText);
        hit.BETRAG = CDBetrag("e3000");
        hit.ZUSCHLAG = CDBetrag("e99");
        hit.m_iLebAbschlag = 1500;
        Betrag(hit);
        EXPECT_TRUE(hit.ZUSCHLAG.IsEmpty());
        return Text(hit.BETRAG);
    };
    const std::pair<const char *, const char *> aTexte[] = {
        {"gruppe pat/3 am Abend", "e1000"},
        {"F\xFCr Pat/ 4", "e750"}, // Windows-1252
        {"PAT/2 PAT/3", "e1500"},
        {"PATPAT/3", "e1000"},
        {"PAT/1", "e3000"},
        {"PAT/0", "e3000"},
        {"PAT/-3", "e3000"},
        {"3 Patienten", "e3000"},
        {"PAT/7", "e428.571428"},
    };
    for (const auto & [pText, pBetrag] : aTexte)
        EXPECT_EQ(Gespeichert('g', "7810", pText), CString(pBetrag)) << pText;
    for (const char * pBild : {"7811", "7820", "7821", "7830", "7831", "7840", "7841", "7928", "7929"})
        EXPECT_EQ(Gespeichert('g', pBild, "PAT/3"), "e1000"_t) << pBild;
    for (const auto & [cGoArt, pBild] : {std::pair{'g', "7812"}, {'g', "781"}, {'k', "7810"}, {'p', "7810"}})
        EXPECT_EQ(Gespeichert(cGoArt, pBild, "PAT/3"), "e3000"_t) << cGoArt << pBild;
}

// ---- the amount by points

TEST_F(CBewertungTest, PunkteMalPunktwert) {
    const struct {
        char cGoArt;
        int iPunkte, iAnzahl;
        CString sPunktwert, sBetrag;
    } aFaelle[] = {
        {'k', 3300, 100, "e13233", "e4366.89"},
        {'g', 3300, 50, "e13233", "e2183.445"},
        {'k', 3300, 100, " 18000", " 5940"},
        {'k', 0, 100, "e13233", "e0"},
        {'k', 3300, 100, "", ""},
        {'k', 1000000, 3000, "e10000", "e-12949672.96"},
        {'1', 3300, 100, "e13233", "e777"},
        {0, 3300, 100, "e13233", "e777"},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(std::to_string(fall.iPunkte) + " x " + fall.sPunktwert.Utf8());
        CBehHitLine hit = Hit(fall.cGoArt);
        hit.PUNKTE = fall.iPunkte;
        hit.ANZAHL = fall.iAnzahl;
        hit.PUNKTWERT = CDPw(fall.sPunktwert);
        hit.BETRAG = CDBetrag("e777");
        hit.ZUSCHLAG = CDBetrag("e99");
        hit.FAKTOR = "23000";
        Betrag(hit);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag);
        EXPECT_EQ(Text(hit.ZUSCHLAG), "e99"_t);
    }
}

TEST_F(CBewertungTest, AnderePunkteNachVersicherer) {
    const struct {
        char cKasKz, cSonderKsArt;
        int iPunkte2, iPunkte3, iPunkte4;
        int iErwartet; // of 1000
    } aFaelle[] = {
        {0, 0, 200, 300, 400, 1000},    {0, 'A', 200, 300, 400, 200}, {'1', 'C', 200, 300, 400, 200},
        {0, 'D', 200, 300, 400, 1000},  {0, 'B', 0, 300, 400, 1000},  {'2', 0, 200, 300, 400, 300},
        {'2', 'A', 200, 300, 400, 400}, {'2', 'B', 200, 300, 0, 300}, {'2', 'C', 200, 0, 0, 200},
        {'2', 0, 200, 0, 400, 1000},    {'2', 'A', 0, 0, 0, 1000},
    };
    for (const auto & fall : aFaelle)
        for (const char cGoArt : {'e', 'f', 'h', 'b', 'k', 'g'}) {
            CBehHitLine hit = Hit(cGoArt);
            hit.PUNKTE = 1000;
            hit.m_iPunkte2 = fall.iPunkte2;
            hit.m_iPunkte3 = fall.iPunkte3;
            hit.m_iPunkte4 = fall.iPunkte4;
            hit.m_cKasKz = fall.cKasKz;
            hit.m_cSonderKsArt = fall.cSonderKsArt;
            Betrag(hit);
            const bool bHauptart = cGoArt == 'b' || cGoArt == 'k' || cGoArt == 'g';
            EXPECT_EQ(hit.PUNKTE, bHauptart ? 1000 : fall.iErwartet)
                << cGoArt << " mark " << fall.cKasKz << " type " << fall.cSonderKsArt;
        }
}

TEST_F(CBewertungTest, EntfernungInProzent) {
    const struct {
        CString sEntfernung;
        int iPunkte, iAnzahl, iPunkteDanach;
        CString sBetrag; // of 10.00 stored, at a point value of 1 euro
    } aFaelle[] = {
        {"k50", 1000, 200, 500, "e1000"},   {"K200", 1000, 100, 2000, "e2000"},
        {"K33", 250, 100, 83, "e83"},       {"K50", 0, 300, 0, "e1500"},
        {"K", 1000, 100, 1000, "e1000"},    {"K0", 0, 100, 0, "e0"},
        {"K-50", 1000, 100, 1000, "e1000"}, {"X50", 1000, 100, 1000, "e1000"},
        {"50", 1000, 100, 1000, "e1000"},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.sEntfernung.Utf8() + " of " + std::to_string(fall.iPunkte));
        CBehHitLine hit = Hit('k');
        hit.ENTFERNUNG = fall.sEntfernung;
        hit.PUNKTE = fall.iPunkte;
        hit.ANZAHL = fall.iAnzahl;
        hit.PUNKTWERT = CDPw("e10000");
        hit.BETRAG = CDBetrag("e1000");
        Betrag(hit);
        EXPECT_EQ(hit.PUNKTE, fall.iPunkteDanach);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag);
    }
}

// ---- the fee row

class CGebuehrenzeileTest : public CBewertungTest {
protected:
    CGebuehrenzeileTest() {
        Schreibe<CTGO>({.m_GOART = "k",
                        .m_LSTNR = "ä1",
                        .m_LSTKUERZEL = "be",
                        .m_GEBPKT = "900",
                        .m_STDFAKTOR = "10000"});
        Schreibe<CTGO>({.m_GOART = "k", .m_LSTNR = "13b", .m_LSTKUERZEL = "f2", .m_GEBPKT = "4100"});
    }
};

TEST_F(CGebuehrenzeileTest, GetGODataNimmtDieZeileDerGebuehrenordnung) {
    const struct {
        CString sLstNr;
        char cGoArt;
        CString sLstNrDanach;
        int iPunkte;
        std::vector<int> vFehler;
    } aFaelle[] = {{"Ä1", 'k', "ä1", 900, {}},
                   {"", 'k', "", 0, {}},
                   {"ä2", 'k', "ä2", 0, {6}},
                   {"ä1", 'g', "ä1", 0, {6}}};
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.sLstNr.Utf8() + " of kind " + fall.cGoArt);
        m_accu.m_vBehErrors.clear();
        CBehHitLine hit = Hit(fall.cGoArt);
        hit.LSTNR = fall.sLstNr;
        EXPECT_EQ(m_accu.GetStdFaktor(hit), fall.iPunkte != 0 ? "10000"_t : ""_t);
        EXPECT_TRUE(m_accu.GetGOData(hit));
        EXPECT_TRUE(m_accu.GetGOData(hit)) << "again, for the errors";
        EXPECT_EQ(hit.LSTNR, fall.sLstNrDanach);
        EXPECT_EQ(hit.PUNKTE, fall.iPunkte);
        EXPECT_EQ(Fehler(), fall.vFehler);
    }
}

TEST_F(CGebuehrenzeileTest, ErsatzleistungUeberDasKuerzel) {
    m_accu.m_vLstErsatz = {{"f1"_t, ""_t}, {"F1"_t, "f2"_t}, {"f1"_t, "be"_t}, {"x"_t, "fehlt"_t}};
    const struct {
        CString sKuerzel;
        char cGoArt;
        bool bErsetzt;
        CString sLstNr, sKuerzelDanach;
        int iPunkte = 0;
    } aFaelle[] = {
        {"f1", 'k', true, "13b", "f2", 4100}, {"f1", 'g', true, "100", "f1"}, {"x", 'k', true, "100", "x"},
        {"f3", 'k', false, "100", "f3"},      {"", 'k', false, "100", ""},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.sKuerzel.Utf8() + " of kind " + fall.cGoArt);
        CBehHitLine hit = Hit(fall.cGoArt);
        hit.LSTKUERZEL = fall.sKuerzel;
        EXPECT_EQ(m_accu.GetLstErsatz(hit), fall.bErsetzt);
        EXPECT_EQ(hit.LSTNR, fall.sLstNr);
        EXPECT_EQ(hit.LSTKUERZEL, fall.sKuerzelDanach);
        EXPECT_EQ(hit.PUNKTE, fall.iPunkte);
    }
    EXPECT_EQ(Fehler(), KEIN_FEHLER);
}

// ---- the point value

class CPunktwertTest : public CBewertungTest {
protected:
    CPunktwertTest() {
        SchreibeWert("20230101", "a", "e10000", "e9000");
        SchreibeWert("20240401", "a", "e11000", "e9900");
        SchreibeWert("20250101", "a", "e12000", "e9990");
        SchreibeWert("20230101", "f", "e7000", "");
        m_accu.GetAllPw();
    }
    static void SchreibeWert(const CString & sAb, const CString & sArt, const CString & sWest,
                             const CString & sOst) {
        Schreibe<CTPunktWert>(
            {.m_PWAB = sAb, .m_PWGRP = "aok", .m_PWLART = sArt, .m_PWWEST = sWest, .m_PWOST = sOst});
    }
    static void SchreibePlan(const CString & sNr, const CString & sArt, const CString & sStatus = "4",
                             const CString & sDatum = "20230601", const CString & sPw = "e8888") {
        Schreibe<CTPlan>({.m_PATNR = "1",
                          .m_PLANNR = sNr,
                          .m_PLANART = sArt,
                          .m_PLANSTATUS = sStatus,
                          .m_PLANDATUM = sDatum,
                          .m_PLANPW = sPw});
    }
    static CBehHitLine Punkthit(char cGoArt, char cPwLArt, const CString & sPlanNr = {}) {
        CBehHitLine hit = Hit(cGoArt);
        hit.PWLART = cPwLArt;
        hit.PUNKTE = 1000;
        hit.PLANNR = sPlanNr;
        return hit;
    }
};

TEST_F(CPunktwertTest, NeuesterWertDesTages) {
    const struct {
        CString sDatum, sGrp;
        char cPwLArt;
        CString sWso, sPunktwert;
    } aFaelle[] = {
        {"20240401", "AOK", 'a', "1", "e11000"}, {"20240515", "aok", 'a', "9", "e9900"},
        {"20240515", "aok", 'a', "", "e11000"},  {"20240331", "aok", 'a', "1", "e10000"},
        {"20221231", "aok", 'a', "1", ""},       {"20240515", "aok", 'f', "9", ""},
        {"20240515", "aok", 'g', "1", ""},       {"20240515", "bkk", 'a', "1", ""},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.sDatum.Utf8() + fall.sGrp.Utf8() + fall.cPwLArt + fall.sWso.Utf8());
        m_accu.m_vBehErrors.clear();
        CBehHitLine hit = Punkthit('k', fall.cPwLArt);
        hit.DATUM = fall.sDatum;
        hit.KASSENPWGRP = fall.sGrp;
        hit.WSO_ERG = fall.sWso;
        EXPECT_TRUE(m_accu.GetPunkte(hit));
        EXPECT_EQ(CString(hit.PUNKTWERT), fall.sPunktwert);
        EXPECT_EQ(Fehler(), fall.sPunktwert.IsEmpty() ? std::vector{5} : KEIN_FEHLER);
    }
}

TEST_F(CPunktwertTest, FehlenderWertIstNurBeiKassenleistungenEinFehler) {
    const struct {
        char cGoArt, cAbrMerkmal, cStatArt, cPwLArt;
        CString sLstNr;
        bool bFehler;
    } aFaelle[] = {
        {'k', 0, 'a', 'x', "1", true},  {'g', '<', 'a', 'x', "1", true},  {'b', 0, 0, 0, "1", true},
        {'e', 0, 'f', 'x', "1", true},  {'p', 0, 'a', 'x', "1", false},   {'1', 0, '1', 'x', "1", false},
        {'k', 0, 'n', 'x', "1", false}, {'k', '=', 'a', 'x', "1", false}, {'k', 0, 'a', '0', "1", false},
        {'k', 0, 'a', 'x', "", false},
    };
    for (const auto & fall : aFaelle) {
        m_accu.m_vBehErrors.clear();
        CBehHitLine hit = Punkthit(fall.cGoArt, fall.cPwLArt);
        hit.ABRMERKMAL = fall.cAbrMerkmal;
        hit.GOSTATISTIKART = fall.cStatArt;
        hit.LSTNR = fall.sLstNr;
        EXPECT_TRUE(m_accu.GetPunkte(hit));
        EXPECT_EQ(Fehler(), fall.bFehler ? std::vector{5} : KEIN_FEHLER)
            << fall.cGoArt << fall.cAbrMerkmal << fall.cStatArt << fall.cPwLArt << fall.sLstNr.Utf8();
    }
}

// A plan freezes the value of its day, unless it is orthodontic, not fixed, or a periodontal one since July 2021.
TEST_F(CPunktwertTest, PunktwertDesPlans) {
    const struct {
        CString sArt, sStatus, sDatum, sPw;
        CString sPlanDatum; // what is given back
        bool bNeuerPar;
        CString sPunktwert;
    } aFaelle[] = {
        {"3", "0", "20230601", "e8888", "20230601", false, "e8888"},
        {"2", "4", "20230601", "e8888", "20230601", false, "e8888"},
        {"3", "7", "20230601", "e8888", "20230601", false, "e8888"},
        {"3", "1", "20230601", "e8888", "", false, "e11000"},
        {"3", "47", "20230601", "e8888", "", false, "e11000"},
        {"3", "", "20230601", "e8888", "", false, "e11000"},
        {"8", "4", "20230601", "e8888", "", false, "e11000"}, // orthodontic
        {"9", "4", "20230601", "e8888", "", false, "e11000"},
        {"3", "4", "20230601", "", "20230601", false, "e10000"}, // the table's value of the plan's day
        {"3", "4", "", "", "", false, "e11000"},
        {"4", "4", "20210630", "e8888", "20210630", false, "e8888"}, // periodontal
        {"4", "4", "20210701", "e8888", "", true, "e11000"},
        {"p", "4", "20230601", "e8888", "", true, "e11000"},
        {"4", "1", "20230601", "e8888", "", false, "e11000"},
    };
    int iNr = 0;
    for (const auto & fall : aFaelle) {
        const CString sPlanNr = itoc(++iNr);
        SchreibePlan(sPlanNr, fall.sArt, fall.sStatus, fall.sDatum, fall.sPw);
        for (const char * pMal : {"read", "remembered"}) {
            SCOPED_TRACE("row " + sPlanNr.Utf8() + " " + pMal);
            CBehHitLine hit = Punkthit('k', 'a', sPlanNr);
            bool bNeuerPar = !fall.bNeuerPar;
            EXPECT_EQ(m_accu.GetPwFromPlanDatum(hit, bNeuerPar), fall.sPlanDatum);
            EXPECT_EQ(bNeuerPar, fall.bNeuerPar);
            m_accu.GetPunkte(hit);
            EXPECT_EQ(CString(hit.PUNKTWERT), fall.sPunktwert);
            CBehHitLine privat = Punkthit('p', 'a', sPlanNr);
            m_accu.GetPunkte(privat);
            EXPECT_EQ(CString(privat.PUNKTWERT), fall.sPunktwert == "e8888" ? "e8888"_t : ""_t);
        }
        EXPECT_EQ(m_accu.m_vPwPlaene.size(), static_cast<std::size_t>(iNr));
    }
}

TEST_F(CPunktwertTest, PlanWirdNurEinmalGelesen) {
    CBehHitLine hit = Punkthit('k', 'a', "1");
    bool bNeuerPar = true;
    EXPECT_EQ(m_accu.GetPwFromPlanDatum(hit, bNeuerPar), ""_t);
    EXPECT_FALSE(bNeuerPar);
    SchreibePlan("1", "3");
    EXPECT_TRUE(HatGelesen());
    EXPECT_EQ(m_accu.GetPwFromPlanDatum(hit, bNeuerPar), ""_t) << "a missing plan is remembered as well";
    EXPECT_FALSE(HatGelesen());
}

// The plan's value replaces whatever the hit carried, also by nothing; without plan that stays.
TEST_F(CPunktwertTest, PlanGehtVorVorhandenemWert) {
    SchreibePlan("1", "3");
    const std::pair<CString, CString> aFaelle[] = {
        {"1"_t, "e8888"_t}, {"2"_t, "e11000"_t}, {""_t, "e5000"_t}};
    for (const auto & [sPlanNr, sPunktwert] : aFaelle) {
        CBehHitLine hit = Punkthit('k', 'a', sPlanNr);
        hit.PUNKTWERT = CDPw("e5000");
        m_accu.GetPunkte(hit);
        EXPECT_EQ(CString(hit.PUNKTWERT), sPunktwert) << sPlanNr.Utf8();
    }
}

// ---- mixed point values

TEST_F(CPunktwertTest, MischwertFaehig) {
    const struct {
        char cGoArt, cGoSubArt;
        std::string_view sAbrArten;
        bool bFaehig;
    } aFaelle[] = {
        {'k', 0, "zp6789", true}, {'g', '1', "z", true}, {'k', 0, "ckmb45ie", false}, {'k', '7', "zp", false},
        {'g', '5', "zp", false},  {'b', 0, "zp", false}, {'p', 0, "zp", false},
    };
    for (const auto & fall : aFaelle)
        for (const char cAbrArt : fall.sAbrArten) {
            CBehHitLine hit = Hit(fall.cGoArt, fall.cGoSubArt);
            hit.ABRART = cAbrArt;
            EXPECT_FALSE(m_accu.IsMischPwFaehig(hit)) << "without plan " << fall.cGoArt << cAbrArt;
            hit.PLANNR = "1";
            EXPECT_EQ(m_accu.IsMischPwFaehig(hit), fall.bFaehig) << fall.cGoArt << fall.cGoSubArt << cAbrArt;
        }
}

// The hits of one run, in their order.
TEST_F(CPunktwertTest, ErsterMischwertGiltFuerDenRestDesPlans) {
    SchreibePlan("1", "3");
    SchreibePlan("9", "4");
    const struct {
        const char * pName;
        CString sPlanNr;
        char cAbrArt, cPwLArt;
        CString sFaktor, sPunktwert, sFaktorDanach;
    } aFaelle[] = {
        {"zero is none", "1", 'z', 'a', "0", "e8888", "0"},
        {"first", "1", 'z', 'a', "9500", "9500", ""},
        {"later without", "1", 'z', 'a', "", "9500", ""},
        {"later with another", "1", 'z', 'a', "7000", "9500", ""},
        {"no kind for it", "1", 'c', 'a', "7000", "e8888", "7000"},
        {"another plan", "2", 'z', 'a', "", "e11000", ""},
        {"in another plan", "2", 'z', 'a', "12345", "12345", ""},
        {"periodontal since 2021", "9", 'p', 'a', "7000", "e11000", "7000"},
        {"no cure for a missing value", "3", 'z', 'x', "9500", "9500", ""},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.pName);
        CBehHitLine hit = Punkthit('k', fall.cPwLArt, fall.sPlanNr);
        hit.ABRART = fall.cAbrArt;
        hit.FAKTOR = fall.sFaktor;
        m_accu.GetPunkte(hit);
        EXPECT_EQ(CString(hit.PUNKTWERT), fall.sPunktwert);
        EXPECT_EQ(hit.FAKTOR, fall.sFaktorDanach);
        EXPECT_EQ(Fehler(), fall.cPwLArt == 'x' ? std::vector{5} : KEIN_FEHLER);
    }
}

// ---- the visit fee of the billing library

std::vector<std::pair<CString, CString>> s_vGerufen; // kind of insurer and region of each call

const SFachbereiche * s_pFachbereiche = nullptr; // of the last call

int TestOrdination(SFachbereiche * pFachbereiche, CTVDesc * pVDesc) {
    s_pFachbereiche = pFachbereiche;
    s_vGerufen.emplace_back(pVDesc->m_KSART, pVDesc->m_MFRDIG);
    return 1850;
}

class COrdinationTest : public CPunktwertTest {
protected:
    int Punkte(char cGoArt, const CString & sLstNr, char cSonderKsArt = 0) {
        CBehHitLine hit = Punkthit(cGoArt, 'a');
        hit.LSTNR = sLstNr;
        hit.MFRDIG = "5";
        hit.m_cSonderKsArt = cSonderKsArt;
        m_accu.GetPunkte(hit);
        return hit.PUNKTE;
    }
};

TEST_F(COrdinationTest, FragtDieBibliothekNurFuerDieOrdination) {
    s_vGerufen.clear();
    m_bibliotheken.Registriere("kelabr", "PunkteOrdination"_t, &TestOrdination);
    EXPECT_EQ(Punkte('b', "1"), 1000) << "no library in this run";
    m_accu.m_pFachbereiche = new SFachbereiche;
    const int iEntliehen = EntlieheneRSets();
    EXPECT_EQ(Punkte('b', "1", 'A'), 1850);
    EXPECT_EQ(Punkte('b', "1"), 1850);
    EXPECT_EQ(s_pFachbereiche, m_accu.m_pFachbereiche);
    EXPECT_EQ(Punkte('b', "01"), 1000);
    EXPECT_EQ(Punkte('b', "1a"), 1000);
    EXPECT_EQ(Punkte('k', "1"), 1000);
    EXPECT_EQ(s_vGerufen, (std::vector<std::pair<CString, CString>>{{"A"_t, "5"_t}, {""_t, "5"_t}}));
    EXPECT_EQ(EntlieheneRSets(), iEntliehen);
    EXPECT_EQ(m_rekorder.m_vPrompts, std::vector<SPrompt>{});
}

TEST_F(COrdinationTest, FehlendeFunktionWirdGezeigtUndGibtKeinePunkte) {
    m_bibliotheken.Registriere("kelabr", "InitialisiereFachbereiche"_t, &TestOrdination);
    m_accu.m_pFachbereiche = new SFachbereiche;
    EXPECT_EQ(Punkte('b', "1"), 0);
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{{SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0}}));
}

// ---- region, insurer's share, finding, names

TEST_F(CBewertungTest, RegionalfaktorDerKzv) {
    const struct {
        CString sKzvNr; // of the practice
        CString sLQ;    // of association 02
        CString sErwartet;
    } aFaelle[] = {
        {"02", "09150", "09150"}, {"02", "0", "10000"}, {"02", "x", "10000"}, {"03", "9000", "10000"}};
    m_accu.m_sKzvNr = "alt";
    EXPECT_EQ(m_accu.GetLQPunktwert(), "10000"_t) << "no practice";
    EXPECT_EQ(m_accu.m_sKzvNr, "alt"_t);
    for (const auto & fall : aFaelle) {
        CPraxisErsatz praxis;
        Schreibe<CTPraxis>({.m_PRAXISID = " 1", .m_KZVNR = fall.sKzvNr});
        Schreibe<CTPraxis>({.m_PRAXISID = " 2", .m_KZVNR = "77"});
        Schreibe<CTKzv>({.m_KZVNR = "02", .m_LQ = fall.sLQ});
        EXPECT_EQ(m_accu.GetLQPunktwert(), fall.sErwartet) << fall.sKzvNr.Utf8() << " " << fall.sLQ.Utf8();
        EXPECT_EQ(m_accu.m_sKzvNr, fall.sKzvNr);
    }
}

// Dentures by the plan; laboratory and material of orthodontics by the plan or as given.
TEST_F(CBewertungTest, KassenanteilDesPlansUndDerKfo) {
    std::vector<CPlan> vPlaene(2);
    vPlaene[1].m_iKasProzent = 65;
    const struct {
        char cAbrArt;
        CString sPlanNr;
        char cGoArt, cGoSubArt, cStatArt;
        int iPlan;
        CString sBetrag; // of 100.00, 80 percent given
    } aFaelle[] = {
        {'z', "1", 'k', 0, 'c', 1, "e6500"},   {'z', "1", 'k', 0, 'c', 0, "e0"},
        {'z', "1", 'k', 0, 'c', 2, "e10000"},  {'z', "1", 'k', 0, 'c', -2, "e10000"},
        {'z', "", 'k', 0, 'c', 1, "e10000"},   {'z', "1", '1', 0, 'f', -1, "e10000"},
        {'k', "1", 'k', 0, 'a', 1, "e10000"},  {'k', "1", 'k', 0, 'f', 1, "e6500"},
        {'k', "", 'k', 0, 'f', -1, "e8000"},   {'k', "", 'k', 0, 'a', -1, "e10000"},
        {'k', "", '8', 0, '8', -1, "e8000"},   {'k', "", '5', 0, '5', -1, "e10000"},
        {'k', "", 'g', '6', 'a', -1, "e8000"}, {'k', "", 'q', 's', 'a', -1, "e8000"},
        {'m', "1", '1', 0, 'f', 1, "e10000"},
    };
    for (const auto & fall : aFaelle) {
        CBehHitLine hit = Hit(fall.cGoArt, fall.cGoSubArt);
        hit.ABRART = fall.cAbrArt;
        hit.PLANNR = fall.sPlanNr;
        hit.GOSTATISTIKART = fall.cStatArt;
        hit.BETRAG = CDBetrag("e10000");
        m_accu.NurDenKassenanteil(vPlaene, hit, fall.iPlan, 80);
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag)
            << fall.cAbrArt << fall.cGoArt << fall.cStatArt << " plan " << fall.iPlan;
    }
}

TEST_F(CBewertungTest, BefundEinerUntersuchung) {
    Schreibe<CTABefund>({.m_PATNR = "1", .m_LFDBEFENTRY = "7", .m_BEFUND = "ff", .m_ZAHNSTEIN = "0010"});
    const struct {
        const char * pDruckbild;
        char cGoArt, cGoSubArt;
        CString sLfd;
        bool bBefund;
    } aFaelle[] = {
        {"01", 'k', 0, "7", true},     {"01k", 'g', 0, "7", true}, {"001", 'p', 0, "7", true},
        {"0010", 'q', '1', "7", true}, {"", 'k', 'h', "7", true},  {"01", 'k', 0, "8", false},
        {"010", 'k', 0, "7", false},   {"", 'k', 0, "7", false},   {"01", 'b', 0, "7", false},
        {"01", 'a', 'h', "7", false},
    };
    for (const bool bLauf : {false, true}) {
        if (bLauf) m_accu.GetMemForTables();
        for (const auto & fall : aFaelle) {
            SCOPED_TRACE(std::string(fall.pDruckbild) + " of kind " + fall.cGoArt +
                         " in a run: " + "ny"[bLauf]);
            CBehHitLine hit = Hit(fall.cGoArt, fall.cGoSubArt);
            hit.DRUCKBILD = CString(fall.pDruckbild);
            hit.LFDBEFENTRY = fall.sLfd;
            const bool bBefund = bLauf && fall.bBefund;
            EXPECT_EQ(m_accu.GetBefund(hit), bBefund);
            EXPECT_EQ(hit.BEFUND.GetLength(), bBefund ? 33 : 0);
            EXPECT_EQ(hit.ZAHNSTEIN, bBefund ? "1"_t : ""_t);
        }
    }
}

TEST_F(CBewertungTest, NameEinerLeistungsgruppe) {
    const auto Eintrag = [](const CString & sKey, const CString & sText) {
        CSPData eintrag;
        eintrag.m_sKey = sKey;
        eintrag.m_sText = sText;
        return eintrag;
    };
    m_accu.m_vSpTechLst = {Eintrag("1", "Labor"), Eintrag("$", "Dollar")};
    m_accu.m_vSpGoStat = {Eintrag("1", "Eins"), Eintrag("2", "Zwei"), Eintrag("", "Ohne")};
    EXPECT_EQ(m_accu.GetLstGrpName('T', '1'), "Labor"_t);
    EXPECT_EQ(m_accu.GetLstGrpName('T', '2'), "Zwei"_t);
    EXPECT_EQ(m_accu.GetLstGrpName('t', '1'), "Eins"_t);
    EXPECT_EQ(m_accu.GetLstGrpName(0, 0), "Ohne"_t);
    EXPECT_EQ(m_accu.GetLstGrpName(0, '3'), ""_t);
    EXPECT_EQ(m_accu.GetLstGrpName(0, '$'), "Kons./Chir. KFO"_t);
    EXPECT_EQ(m_accu.GetLstGrpName('T', '$'), "Dollar"_t);
}

// ---- the trace

// A step as a line: its name and the fields that are not empty.
std::string Zeile(const SBewertungsschritt & schritt) {
    constexpr const char * NAMEN[] = {
        "Gebuehrenzeile", "KeineZeile",        "Ersatzleistung",  "Ordination",       "PunktwertPlan",
        "NeuerParPlan",   "PunktwertTafel",    "KeinPunktwert",   "Mischwert",        "MischwertFaktor",
        "Gespeichert",    "Eingetragen",       "Gruppenleistung", "OhneFaktor",       "OhneSatz",
        "PunkteQ",        "Einfachsatz",       "EinfachsatzAb",   "Anzahl",           "Regionalabschlag",
        "Waehrung",       "Behandlerabschlag", "AnderePunkte",    "EntfernungBetrag", "EntfernungPunkte",
        "PunkteMalWert",  "Kassenanteil"};
    std::string s = NAMEN[static_cast<std::size_t>(schritt.eSchritt)];
    for (const CString & sText : {schritt.sText, schritt.sText2, schritt.sText3, schritt.sText4})
        if (!sText.IsEmpty()) s += " <" + sText.Utf8() + ">";
    for (const char c : {schritt.cArt, schritt.cUnterart})
        if (c != 0) s += std::string(" '") + c + "'";
    for (const int i : {schritt.iZahl, schritt.iZahl2, schritt.iZahl3})
        if (i != 0) s += " " + std::to_string(i);
    for (const CDBetrag & betrag : {schritt.betrag, schritt.betrag2})
        if (!betrag.IsEmpty()) s += " [" + Text(betrag).Utf8() + "]";
    return s;
}

using CZeilen = std::vector<std::string>;

class CSpurTest : public CPunktwertTest {
protected:
    CSpurTest() {
        SchreibeGebuehr({.m_GOART = "k", .m_LSTNR = "13a", .m_LSTKUERZEL = "f1", .m_GOSUBART = "2"});
        SchreibeGebuehr({.m_GOART = "e", .m_LSTNR = "13a", .m_GOWERT3 = "2000"});
        Schreibe<CTGO>({.m_GOART = "p", .m_LSTNR = "1", .m_GOSUBART = "1", .m_EINFACHSATZ = "e1005"});
        Schreibe<CTGO>({.m_GOART = "q", .m_LSTNR = "2", .m_GOSUBART = "1", .m_GEBPKT = "100"});
    }
    static void SchreibeGebuehr(CZeileVon<CTGO> zeile) {
        zeile.m_PWLART = "a";
        zeile.m_GEBPKT = "3300";
        Schreibe<CTGO>(zeile);
    }
    static CBehHitLine Leistung(char cGoArt, const CString & sLstNr, const CString & sBetrag = {}) {
        CBehHitLine hit = Hit(cGoArt);
        hit.LSTNR = sLstNr;
        hit.BETRAG = CDBetrag(sBetrag);
        return hit;
    }
    // Everything that a run asks for, once with a trace and once without: the same hit comes out.
    CZeilen Spur(CBehHitLine hit) {
        CBehHitLine ohne = hit;
        CStatAccu accuOhne(m_accu);
        CBewertungsspur spur;
        m_accu.m_pSpur = &spur;
        Bewerte(m_accu, hit);
        m_accu.m_pSpur = nullptr;
        Bewerte(accuOhne, ohne);
        EXPECT_EQ(hit.BETRAG, ohne.BETRAG);
        EXPECT_EQ(hit.PUNKTWERT, ohne.PUNKTWERT);
        EXPECT_EQ(hit.PUNKTE, ohne.PUNKTE);
        CZeilen v;
        for (const SBewertungsschritt & schritt : spur.Schritte())
            v.push_back(Zeile(schritt));
        return v;
    }
    const std::string m_s13a = "Gebuehrenzeile <13a> <f1> 'k' '2'";

private:
    static void Bewerte(CStatAccu & accu, CBehHitLine & hit) {
        std::vector<CPlan> vPlaene(1);
        vPlaene[0].m_iKasProzent = 60;
        accu.GetGOData(hit);
        accu.GetLstErsatz(hit);
        accu.GetPunkte(hit);
        accu.GetBetrag(hit, nullptr);
        accu.NurDenKassenanteil(vPlaene, hit, 0, 0);
    }
};

TEST_F(CSpurTest, PrivateLeistungMitAllenAbzuegen) {
    m_accu.m_iLQPunktwert = 9000;
    CBehHitLine hit = Leistung('p', "1", " 1");
    hit.FAKTOR = "23000";
    hit.ANZAHL = 200;
    hit.m_iLebAbschlag = 1500;
    EXPECT_EQ(Spur(hit), (CZeilen{"Gebuehrenzeile <1> 'p' '1'", "EinfachsatzAb 23000 [e2311] [e1005]",
                                  "Anzahl 200 [e4622]", "Regionalabschlag 9000 [e4159.8] [e462.2]",
                                  "Waehrung ' ' [ 8135.861634]", "Behandlerabschlag 1500 [ 6915.482388]"}));
}

TEST_F(CSpurTest, PrivateLeistungen) {
    CBehHitLine hit = Leistung('q', "2");
    const std::string s2 = "Gebuehrenzeile <2> 'q' '1'";
    EXPECT_EQ(Spur(hit), (CZeilen{s2, "OhneFaktor [0]"}));
    hit.FAKTOR = "23000";
    hit.BETRAG = CDBetrag("e1");
    EXPECT_EQ(Spur(hit), (CZeilen{s2, "PunkteQ 100 23000 [e1294]", "Anzahl 100 [e1294]"}));
    hit.LSTNR = "3";
    EXPECT_EQ(Spur(hit), (CZeilen{"KeineZeile <3> 'q'", "OhneSatz [e0]"}));

    hit = Leistung('p', "1", "e1");
    hit.FAKTOR = "10000";
    hit.m_cSonderKsArt = 'V';
    EXPECT_EQ(Spur(hit)[1], "OhneSatz 'V' [e0]") << "the row has no second rate";
    hit = Privat('u', 0, "10000", "e500");
    hit.LSTNR.Empty();
    hit.m_cSonderKsArt = 'V';
    EXPECT_EQ(Spur(hit).front(), "Einfachsatz 'V' 10000 [e777] [e777]");
}

// Where points and point values have no say, the trace has none of them.
TEST_F(CSpurTest, NurWasDenBetragBestimmt) {
    SchreibePlan("1", "3");
    const struct {
        char cGoArt;
        const char * pMerkmal;
        CZeilen vSoll;
    } aFaelle[] = {
        {'1', "", {"Eingetragen '1' [e13360]"}}, {'9', "", {"Eingetragen '9' [e13360]"}},
        {'7', "=", {"Gespeichert [e13360]"}},    {'k', "=", {"Gespeichert [e13360]"}},
        {'g', "=", {"Gespeichert [e13360]"}},    {'u', "", {"OhneFaktor [e0]"}},
    };
    for (const auto & fall : aFaelle)
        for (const CString & sPlan : {CString(), CString("1")}) {
            CBehHitLine hit = Leistung(fall.cGoArt, "x", "e13360");
            hit.ABRMERKMAL = *fall.pMerkmal;
            hit.PLANNR = sPlan;
            CZeilen vSoll = fall.vSoll;
            vSoll.insert(vSoll.begin(), std::string("KeineZeile <x> '") + fall.cGoArt + "'");
            EXPECT_EQ(Spur(hit), vSoll) << fall.cGoArt;
        }
    CBehHitLine hit = Leistung('k', "13a", "e1");
    hit.ABRMERKMAL = '=';
    hit.PLANNR = "1";
    hit.ABRART = 'z';
    hit.FAKTOR = "9500";
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, "Gespeichert [e1]", "Kassenanteil 60 [e0.6]"}));
}

TEST_F(CSpurTest, Kassenleistungen) {
    CBehHitLine hit = Leistung('k', "13a");
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, "PunktwertTafel <aok> <20240515> <20240401> 'a' '1' [e110]",
                                  "PunkteMalWert 3300 100 [e3630] [e110]"}));
    hit.DATUM = "20200101";
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, "KeinPunktwert <aok> <20200101> 'a'", "PunkteMalWert 3300 100"}));

    hit = Leistung('e', "13a");
    hit.PUNKTWERT = CDPw("e10000");
    hit.m_cKasKz = '2';
    hit.ENTFERNUNG = "K50";
    EXPECT_EQ(Spur(hit), (CZeilen{"Gebuehrenzeile <13a> 'e'", "AnderePunkte 2000",
                                  "EntfernungPunkte 50 1000 2000", "PunkteMalWert 1000 100 [e1000] [e100]"}));
    hit = Leistung('k', "", "e1000");
    hit.ENTFERNUNG = "K50";
    EXPECT_EQ(Spur(hit), (CZeilen{"EntfernungBetrag 50 [e500]"}));
}

TEST_F(CSpurTest, PlanLeistungen) {
    SchreibePlan("1", "3");
    SchreibePlan("2", "4");
    CBehHitLine hit = Leistung('k', "13a");
    hit.PLANNR = "1";
    hit.ABRART = 'z';
    const std::string sPlan = "PunktwertPlan <1> <20230601> [e88.88]";
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, sPlan, "PunkteMalWert 3300 100 [e2933.04] [e88.88]",
                                  "Kassenanteil 60 [e1759.824]"}));
    hit.FAKTOR = "9500";
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, sPlan, "MischwertFaktor <1> [95]",
                                  "PunkteMalWert 3300 100 [3135] [95]", "Kassenanteil 60 [1881]"}));
    hit.FAKTOR.Empty();
    EXPECT_EQ(Spur(hit)[2], "Mischwert <1> [95]") << "of the service before";
    hit.PLANNR = "2";
    hit.ABRART = 'p';
    EXPECT_EQ(Spur(hit)[1], "NeuerParPlan <2> <20230601>");
    hit.PLANNR = "3";
    hit.KASKUERZEL = "AOK01";
    EXPECT_EQ(Spur(hit)[1], "KeinPunktwert <aok> <20240515> <AOK01> 'g'") << "a missing plan is no step";
    Schreibe<CTPlan>({.m_PATNR = "1", .m_PLANNR = "4", .m_PLANSTATUS = "4", .m_PLANDATUM = "20230601"});
    hit.PLANNR = "4";
    EXPECT_EQ(Spur(hit)[1], "KeinPunktwert <aok> <20230601> <AOK01> <4> 'g'") << "asked for the plan's date";
}

TEST_F(CSpurTest, ErsatzGruppeUndOrdination) {
    m_accu.m_vLstErsatz = {{"f1"_t, "f2"_t}};
    SchreibeGebuehr({.m_GOART = "k", .m_LSTNR = "13b", .m_LSTKUERZEL = "f2"});
    CBehHitLine hit = Leistung('k', "13a", "e3000");
    hit.ABRMERKMAL = '=';
    hit.PUNKTWERT = CDPw("e10000");
    EXPECT_EQ(Spur(hit), (CZeilen{m_s13a, "Ersatzleistung <13b> <f1> 'k'", "Gespeichert [e3000]"}));

    SchreibeGebuehr({.m_GOART = "g", .m_LSTNR = "5", .m_DRUCKBILD = "7810"});
    hit.GOART = 'g';
    hit.LSTNR = "5";
    hit.TEXT = "PAT/3";
    EXPECT_EQ(Spur(hit),
              (CZeilen{"Gebuehrenzeile <5> 'g'", "Gespeichert [e3000]", "Gruppenleistung 3 [e1000]"}));

    m_bibliotheken.Registriere("kelabr", "PunkteOrdination"_t, &TestOrdination);
    m_accu.m_pFachbereiche = new SFachbereiche;
    CBewertungsspur spur;
    m_accu.m_pSpur = &spur;
    hit = Leistung('b', "1");
    m_accu.GetPunkte(hit);
    EXPECT_EQ(Zeile(spur.Schritte().front()), "Ordination 1850");
    m_accu.m_pSpur = nullptr;
}

} // namespace
} // namespace orvostat
