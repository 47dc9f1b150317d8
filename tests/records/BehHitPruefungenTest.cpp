#include "orvostatbs/host/TabellenLeistung.h"
#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

class BehHitPruefungen : public CPraxisFixture {
protected:
    static void Schreibe(const std::string & sPat, const std::string & sDatum, const std::string & sLst) {
        orvostat::Schreibe("BEH GOART=k PATNR=" + sPat + " DATUM=" + sDatum + " LSTNR=" + sLst);
    }
    // The kind of billing behind the question for multiband, and "+" where deductions are there.
    static std::string Antworten(const CString & sPat, const CString & sDatum, char cAbrArt = 'k') {
        CBehHitLine hit;
        hit.PATNR = sPat;
        hit.DATUM = sDatum;
        hit.ABRART = cAbrArt;
        const bool bAbschlaege = hit.TestKFOAbschlaege();
        hit.TestMultiband();
        return Wert(hit.ABRART) + (bAbschlaege ? "+" : "");
    }
};

// ---- the record layer's answers

TEST_F(BehHitPruefungen, antworten_gelten_fuer_patient_und_quartal_und_werden_behalten) {
    Schreibe("1", "20240331", "127a");
    Schreibe("1", "20240331", "119");
    Schreibe("3", "20240331", "127");
    EXPECT_EQ(Antworten("1", "20240101"), "m+");
    EXPECT_EQ(Antworten("1", "20240101", 'm'), "m+");
    EXPECT_EQ(Antworten("3", "20240101"), "m");
    EXPECT_EQ(Antworten("1", "20240401"), "k");
    EXPECT_EQ(Antworten("1", "20231231", 'm'), "m");
    EXPECT_EQ(Antworten("2", "20240101"), "k");
    EXPECT_EQ(Antworten("1", "20231231", 'c'), "c+"); // no orthodontics
    for (const char * pLst : {"127", "119"})
        Schreibe("1", "20240515", pLst);
    EXPECT_EQ(Antworten("1", "20240630"), "k") << "a no is not asked for again";
    dbDatabaseRO.Verbinde(nullptr);
    EXPECT_EQ(Antworten("1", "20240301"), "m+") << "nor is a yes";
    CBehHitLine::ClearMaps();
    EXPECT_EQ(Antworten("1", "20240301"), "k");
}

// ---- tests and predicates of the hit alone

TEST_F(BehHitPruefungen, zugelassene_leistungen_einer_abrechnungsart) {
    constexpr struct {
        char cAbrArt, cGoArt, cGoSubArt;
        const char *pLst, *pErwartet; // the tests passed: b, p without and B, P with material, r
    } FAELLE[] = {
        {'c', 'k', 0, "13a", "bBpPr"},
        {0, 'k', 0, "13a", "bBpPr"},
        // jaw fracture: its own services of the insurers, and material
        {'b', 'k', 0, "13a", "pPr"},
        {'4', 'k', 0, "k1", "bBpPr"},
        {'5', 'g', 0, "k2", "bBpPr"},
        {'b', 'k', 0, "k3", "bBpPr"},
        {'b', 'k', 0, "k4", "bBpPr"},
        {'b', 'k', 0, "up3", "bBpPr"},
        {'b', 'k', 0, "K1", "pPr"},
        {'b', 'b', 0, "k1", "pPr"},
        {'b', 'k', '7', "13a", "BpPr"},
        {'b', 'q', 't', "13a", "BpPr"},
        // periodontics
        {'p', 'k', 0, "13a", "bBr"},
        {'p', 'k', 0, "p200", "bBpPr"},
        {'6', 'g', 0, "p201", "bBpPr"},
        {'7', 'k', 0, "p202", "bBpPr"},
        {'8', 'k', 0, "p203", "bBpPr"},
        {'9', 'k', 0, "p204", "bBr"},
        {'p', 'b', 0, "p200", "bBr"},
        {'p', '7', 0, "13a", "bBPr"},
        {'p', '5', 0, "13a", "bBr"},
        // orthodontics and multiband
        {'k', 'k', 0, "13a", "bBpP"},
        {'m', 'g', 0, "ä925", "bBpP"},
        {'k', 'b', 0, "12", "bBpP"},
        {'k', 'k', 0, "Ä928", "bBpP"},
    };
    for (const auto & fall : FAELLE) {
        CBehHitLine hit;
        hit.ABRART = fall.cAbrArt;
        hit.GOART = fall.cGoArt;
        hit.GOSUBART = fall.cGoSubArt;
        hit.GOSTATISTIKART = 'a';
        hit.LSTNR = AusUtf8(fall.pLst);
        const std::string s = std::string(hit.TestKBRKX(false) ? "b" : "") +
                              (hit.TestKBRKX(true) ? "B" : "") + (hit.TestPARP20X(false) ? "p" : "") +
                              (hit.TestPARP20X(true) ? "P" : "") + (hit.TestKFORoe() ? "r" : "");
        EXPECT_EQ(s, fall.pErwartet) << fall.cAbrArt << fall.cGoArt << fall.cGoSubArt << fall.pLst;
    }
    CBehHitLine hit; // the x-rays of orthodontics, and a service of the statistic "f"
    hit.ABRART = 'k';
    hit.GOART = 'g';
    for (const char * pLst : {"ä925a", "ä925b", "ä925c", "ä925d", "ä928", "ä934a", "ä934b", "ä934c", "ä935a",
                              "ä935b", "ä935c", "ä935d", "12", ""}) {
        hit.LSTNR = AusUtf8(pLst);
        hit.GOSTATISTIKART = *pLst == 0 ? 'f' : 'a';
        EXPECT_TRUE(hit.TestKFORoe()) << pLst;
    }
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

TEST_F(BehHitPruefungen, fiktive_leistungen_und_mitglied) {
    for (const auto & [cGoArt, cGrund, pLst, pErwartet] : {std::tuple('k', 'f', "13a", "13a0"),
                                                           {'g', 'i', "13b", "13b1"},
                                                           {'k', 'f', "13c", "13c0"},
                                                           {'k', 'i', "13d", "13d1"},
                                                           {'k', 'x', "13a", "13a"},
                                                           {'k', 'f', "13e", "13e"},
                                                           {'b', 'f', "13a", "13a"}}) {
        CBehHitLine hit;
        hit.GOART = cGoArt;
        hit.DTAGRUND = cGrund;
        hit.LSTNR = pLst;
        hit.FiktiveLeistungen();
        EXPECT_EQ(Wert(hit.LSTNR), pErwartet) << cGoArt << cGrund;
    }
    for (const auto & [pMfr, pWso, pErwartet] : {std::tuple("1", "1", "M/1"),
                                                 {"3", "9", "F/9"},
                                                 {"5", "", "R/"},
                                                 {"2", "1", "/1"},
                                                 {"2", "", ""},
                                                 {" 1", "1", "M/1"},
                                                 {"10", "1", "/1"}}) {
        CBehHitLine hit;
        hit.MFRDIG = pMfr;
        hit.WSO = pWso;
        EXPECT_EQ(Wert(hit.GetMFR_OW()), pErwartet) << pMfr << '/' << pWso;
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
