#include "orvostatbs/host/TabellenLeistung.h"
#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

#include <string>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

class BehHitPruefungen : public CPraxisFixture {
protected:
    static void Schreibe(const char * pPat, const char * pDatum, const char * pLst) {
        orvostat::Schreibe(std::string("BEH GOART=k PATNR=") + pPat + " DATUM=" + pDatum + " LSTNR=" + pLst);
    }
    static CBehHitLine Hit(const CString & sPat, const CString & sDatum, char cAbrArt) {
        CBehHitLine hit;
        hit.PATNR = sPat;
        hit.DATUM = sDatum;
        hit.ABRART = cAbrArt;
        return hit;
    }
    static char Multiband(const CString & sPat, const CString & sDatum, char cAbrArt = 'k') {
        CBehHitLine hit = Hit(sPat, sDatum, cAbrArt);
        hit.TestMultiband();
        return hit.ABRART;
    }
    static bool Abschlaege(const CString & sPat, const CString & sDatum, char cAbrArt = 'k') {
        return Hit(sPat, sDatum, cAbrArt).TestKFOAbschlaege();
    }
};

// ---- the record layer's answers

TEST_F(BehHitPruefungen, antworten_gelten_fuer_patient_und_quartal) {
    Schreibe("1", "20240331", "127a");
    Schreibe("1", "20240331", "119");
    EXPECT_EQ(Multiband("1", "20240101"), 'm');
    EXPECT_EQ(Multiband("1", "20240401"), 'k');
    EXPECT_EQ(Multiband("2", "20240101"), 'k');
    EXPECT_EQ(Multiband("1", "20240101", 'c'), 'c');
    EXPECT_TRUE(Abschlaege("1", "20240101"));
    EXPECT_TRUE(Abschlaege("1", "20240101", 'm'));
    EXPECT_FALSE(Abschlaege("1", "20231231", 'm'));
    EXPECT_TRUE(Abschlaege("2", "20240101", 'c')); // no orthodontics
}

TEST_F(BehHitPruefungen, ein_nein_wird_nicht_wiederholt_gefragt) {
    EXPECT_EQ(Multiband("1", "20240215"), 'k');
    EXPECT_FALSE(Abschlaege("1", "20240515"));
    for (const char * sDatum : {"20240215", "20240515"}) {
        Schreibe("1", sDatum, "127");
        Schreibe("1", sDatum, "119");
    }
    EXPECT_EQ(Multiband("1", "20240101"), 'k');
    EXPECT_FALSE(Abschlaege("1", "20240630"));
    EXPECT_EQ(Multiband("1", "20240515"), 'm'); // the caches are two
    EXPECT_TRUE(Abschlaege("1", "20240215"));
    CBehHitLine::ClearMaps();
    EXPECT_EQ(Multiband("1", "20240215"), 'm');
    EXPECT_TRUE(Abschlaege("1", "20240515"));
}

TEST_F(BehHitPruefungen, ein_ja_wird_nicht_wiederholt_gefragt) {
    Schreibe("1", "20240215", "127");
    EXPECT_EQ(Multiband("1", "20240215"), 'm');
    dbDatabaseRO.Verbinde(nullptr);
    EXPECT_EQ(Multiband("1", "20240301"), 'm');
    CBehHitLine::ClearMaps();
    EXPECT_EQ(Multiband("1", "20240301"), 'k');
}

// ---- tests and predicates of the hit alone

TEST_F(BehHitPruefungen, zugelassene_leistungen_einer_abrechnungsart) {
    struct SFall {
        const char * pName;
        char cAbrArt, cGoArt, cGoSubArt;
        CString sLst;
        std::string sErwartet; // the tests passed: b, p without and B, P with material, r
    };
    const SFall aFaelle[] = {
        {"other billing", 'c', 'k', 0, "13a", "bBpPr"},
        {"no billing", 0, 'k', 0, "13a", "bBpPr"},
        {"jaw fracture, other service", 'b', 'k', 0, "13a", "pPr"},
        {"jaw fracture", '4', 'k', 0, "k1", "bBpPr"},
        {"jaw fracture", '5', 'g', 0, "k2", "bBpPr"},
        {"jaw fracture", 'b', 'k', 0, "k3", "bBpPr"},
        {"jaw fracture", 'b', 'k', 0, "k4", "bBpPr"},
        {"jaw fracture", 'b', 'k', 0, "up3", "bBpPr"},
        {"jaw fracture, capital", 'b', 'k', 0, "K1", "pPr"},
        {"jaw fracture, other schedule", 'b', 'b', 0, "k1", "pPr"},
        {"jaw fracture, material of the insurers", 'b', 'k', '7', "13a", "BpPr"},
        {"jaw fracture, private material", 'b', 'q', 't', "13a", "BpPr"},
        {"periodontics, other service", 'p', 'k', 0, "13a", "bBr"},
        {"periodontics", 'p', 'k', 0, "p200", "bBpPr"},
        {"periodontics", '6', 'g', 0, "p201", "bBpPr"},
        {"periodontics", '7', 'k', 0, "p202", "bBpPr"},
        {"periodontics", '8', 'k', 0, "p203", "bBpPr"},
        {"periodontics, next number", '9', 'k', 0, "p204", "bBr"},
        {"periodontics, other schedule", 'p', 'b', 0, "p200", "bBr"},
        {"periodontics, laboratory", 'p', '7', 0, "13a", "bBPr"},
        {"periodontics, a laboratory kind that is no material", 'p', '5', 0, "13a", "bBr"},
        {"orthodontics, other service", 'k', 'k', 0, "13a", "bBpP"},
        {"multiband, other service", 'm', 'g', 0, "ä925", "bBpP"},
        {"orthodontics, other schedule", 'k', 'b', 0, "12", "bBpP"},
        {"orthodontics, capital", 'k', 'k', 0, "Ä928", "bBpP"},
    };
    for (const SFall & fall : aFaelle) {
        CBehHitLine hit;
        hit.ABRART = fall.cAbrArt;
        hit.GOART = fall.cGoArt;
        hit.GOSUBART = fall.cGoSubArt;
        hit.GOSTATISTIKART = 'a';
        hit.LSTNR = fall.sLst;
        const std::string s = std::string(hit.TestKBRKX(false) ? "b" : "") +
                              (hit.TestKBRKX(true) ? "B" : "") + (hit.TestPARP20X(false) ? "p" : "") +
                              (hit.TestPARP20X(true) ? "P" : "") + (hit.TestKFORoe() ? "r" : "");
        EXPECT_EQ(s, fall.sErwartet) << fall.pName << ' ' << fall.sLst.Utf8();
    }
}

TEST_F(BehHitPruefungen, roentgen_in_der_kfo) {
    CBehHitLine hit;
    hit.ABRART = 'k';
    hit.GOART = 'g';
    hit.GOSTATISTIKART = 'a';
    for (const char * pLst : {"ä925a", "ä925b", "ä925c", "ä925d", "ä928", "ä934a", "ä934b", "ä934c", "ä935a",
                              "ä935b", "ä935c", "ä935d", "12"}) {
        hit.LSTNR = AusUtf8(pLst);
        EXPECT_TRUE(hit.TestKFORoe()) << pLst;
    }
    hit.LSTNR = "13a";
    EXPECT_FALSE(hit.TestKFORoe());
    hit.GOSTATISTIKART = 'f';
    EXPECT_TRUE(hit.TestKFORoe());
}

// The kinds for which a question is answered with yes.
template <class F> std::string Arten(const CString & sLst, char cGoSubArt, F f) {
    std::string s;
    for (int c = 0; c < 256; ++c) {
        CBehHitLine hit;
        hit.GOART = static_cast<char>(c);
        hit.GOSUBART = cGoSubArt;
        hit.LSTNR = sLst;
        if ((hit.*f)()) s += static_cast<char>(c);
    }
    return s;
}

TEST_F(BehHitPruefungen, besondere_leistungen) {
    EXPECT_EQ(Arten("9262", 0, &CBehHitLine::IsKasZu), "pq");
    EXPECT_EQ(Arten("9263", 0, &CBehHitLine::IsKasZu), "");
    EXPECT_EQ(Arten("kkgeb", 0, &CBehHitLine::IsKKGebEnt), "gk");
    EXPECT_EQ(Arten("kkent", 0, &CBehHitLine::IsKKGebEnt), "gk");
    EXPECT_EQ(Arten("kkge", 0, &CBehHitLine::IsKKGebEnt), "");
    for (int c = 0; c < 256; ++c)
        EXPECT_EQ(Arten("1", static_cast<char>(c), &CBehHitLine::IsPrivatSachkosten),
                  c >= '1' && c <= '3' ? "apq" : "a")
            << c;
}

TEST_F(BehHitPruefungen, fiktive_leistungen) {
    struct SFall {
        char cGoArt;
        CString sLst;
        char cGrund;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{'k', "13a", 'f', "13a0"}, {'g', "13b", 'i', "13b1"}, {'k', "13c", 'f', "13c0"},
                             {'k', "13d", 'i', "13d1"}, {'k', "13a", 0, "13a"},    {'k', "13a", 'x', "13a"},
                             {'k', "13e", 'f', "13e"},  {'b', "13a", 'f', "13a"}};
    for (const SFall & fall : aFaelle) {
        CBehHitLine hit;
        hit.GOART = fall.cGoArt;
        hit.LSTNR = fall.sLst;
        hit.DTAGRUND = fall.cGrund;
        hit.FiktiveLeistungen();
        EXPECT_EQ(Wert(hit.LSTNR), fall.sErwartet) << fall.cGoArt << fall.sLst.Utf8() << fall.cGrund;
    }
}

TEST_F(BehHitPruefungen, mitglied_und_region) {
    struct SFall {
        CString sMfr, sWso;
        std::string sErwartet;
    };
    const SFall aFaelle[] = {{"1", "1", "M/1"}, {"3", "9", "F/9"},  {"5", "", "R/"},  {"2", "1", "/1"},
                             {"2", "", ""},     {" 1", "1", "M/1"}, {"10", "1", "/1"}};
    for (const SFall & fall : aFaelle) {
        CBehHitLine hit;
        hit.MFRDIG = fall.sMfr;
        hit.WSO = fall.sWso;
        EXPECT_EQ(Wert(hit.GetMFR_OW()), fall.sErwartet) << fall.sMfr.Utf8() << '/' << fall.sWso.Utf8();
    }
}

TEST_F(BehHitPruefungen, gleichheit_haengt_an_zwanzig_feldern) {
    std::string sUnterscheiden;
    const CBehHitLine namen;
    JedesFeld(namen, [&](const std::string & sGesucht, const auto &) {
        CBehHitLine hit;
        JedesFeld(hit, [&](const char * pName, auto & wert) {
            if (pName == sGesucht) Markiere(wert, pName);
        });
        EXPECT_NE(Aenderungen(CBehHitLine(), hit), "") << sGesucht;
        if (!(hit == CBehHitLine())) sUnterscheiden += sGesucht + " ";
    });
    EXPECT_EQ(
        sUnterscheiden,
        "BEHANDLERNR PATNR DATUM LSTNR TEXT ABRART PLANNR LFDLBLOCK LFDBEHEINTRAG MATBUCHUNG m_sGbAnzahl "
        "DMBETRAG GESBETRAG ENDGEWICHT SCHLEIFRESTE PREISOMWST SCHLEIFRESTEGES BESTANDOSR LABORKUNDE "
        "LFDGLBLOC ");
}

} // namespace

} // namespace orvostat
