// The amounts of the published fee schedules, against exact integer arithmetic.
//
// data/ holds the numbers of points of GOZ and BEMA as printed, and point values that associations of dentists have
// published. A private fee is points x 5.62421 cent x factor, rounded once, after the factor (GOZ section 5, half a
// cent upwards); an insurer's fee is points x point value.
#include "accu/AccuTest.h"

#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace orvostat {
namespace {

using CSpalten = std::vector<std::string>;

// The lines of a file behind its title line.
std::vector<CSpalten> Lies(const std::string & sDatei) {
    std::ifstream datei(ORVOSTATBS_SOURCE_DIR "/data/" + sDatei);
    std::vector<CSpalten> vZeilen;
    std::string sZeile;
    std::getline(datei, sZeile);
    while (std::getline(datei, sZeile)) {
        std::istringstream zeile(sZeile);
        CSpalten & spalten = vZeilen.emplace_back();
        for (std::string s; std::getline(zeile, s, ';');)
            spalten.push_back(s);
    }
    return vZeilen;
}

CString Zahltext(std::int64_t i) { return CString(std::string_view(std::to_string(i))); }

// Stored text of so many millionths of a euro: hundredths, and behind a point what is left.
CString EuroAusMillionsteln(std::int64_t iMillionstel) {
    std::string s = std::to_string(iMillionstel / 10'000);
    std::string sRest = std::to_string(10'000 + iMillionstel % 10'000).substr(1);
    sRest.erase(sRest.find_last_not_of('0') + 1);
    if (!sRest.empty()) s += "." + sRest;
    return CString(std::string_view("e" + s));
}

class CGebuehrenTest : public CAccuTest {
protected:
    // One service on a day; of the given kind of point value, if not of that of its fee row.
    CBehHitLine Bewerte(CBehHitLine hit, const std::string & sNummer, char cPwLArt = 0) {
        hit.LSTNR = AusUtf8(sNummer);
        hit.ANZAHL = 100;
        hit.WSO_ERG = "1";
        m_accu.GetGOData(hit);
        if (cPwLArt != 0) hit.PWLART = cPwLArt;
        m_accu.GetPunkte(hit);
        m_accu.GetBetrag(hit, nullptr);
        return hit;
    }
};

// ---- GOZ

class CGozTest : public CGebuehrenTest {
protected:
    CGozTest() {
        for (const CSpalten & zeile : m_vZeilen)
            Schreibe("GO GOART=q GOSUBART=1 LSTNR=\"" + zeile[0] + "\" GEBPKT=" + zeile[1]);
    }
    CString Betrag(const std::string & sNummer, int iFaktor) {
        CBehHitLine hit;
        hit.GOART = 'q';
        hit.FAKTOR = Zahltext(iFaktor);
        return AusUtf8(Wert(Bewerte(hit, sNummer).BETRAG));
    }
    std::vector<CSpalten> m_vZeilen = Lies("goz.csv");
};

// The amount of a number of points at a factor in ten-thousandths.
CString GozBetrag(std::int64_t iPunkte, std::int64_t iFaktor) {
    constexpr std::int64_t CENT = 1'000'000'000; // a cent in units of the product
    return "e" + Zahltext((iPunkte * 562421 * iFaktor + CENT / 2) / CENT);
}

TEST_F(CGozTest, JedeZeileZuDenUeblichenFaktoren) {
    ASSERT_EQ(m_vZeilen.size(), 42u);
    for (const CSpalten & zeile : m_vZeilen)
        for (const int iFaktor : {10000, 23000, 35000})
            EXPECT_EQ(Betrag(zeile[0], iFaktor), GozBetrag(std::stoi(zeile[1]), iFaktor)) << zeile[0];
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
    EXPECT_EQ(m_accu.m_vGO.size(), 42u) << "each row is read once";
    // As dentists' invoices show them.
    EXPECT_EQ(Betrag("0010", 23000), "e1294"_t);
    EXPECT_EQ(Betrag("2210", 23000), "e21706"_t);
    EXPECT_EQ(Betrag("4050", 10000), "e56"_t);
}

TEST_F(CGozTest, JedePunktzahlZuJedemFaktorDesRahmens) {
    CBehHitLine hit;
    hit.GOART = 'q';
    hit.GOSUBART = '1';
    hit.ANZAHL = 100;
    for (int iFaktor = 10000; iFaktor <= 35000; iFaktor += 500) {
        hit.FAKTOR = Zahltext(iFaktor);
        for (hit.PUNKTE = 1; hit.PUNKTE <= 3000; ++hit.PUNKTE) {
            m_accu.GetBetrag(hit, nullptr);
            ASSERT_EQ(AusUtf8(Wert(hit.BETRAG)), GozBetrag(hit.PUNKTE, iFaktor))
                << hit.PUNKTE << " x " << iFaktor;
        }
    }
}

// ---- BEMA

// A group of the schedule, how it is billed, and its kind in the table of point values. Individual prophylaxis is
// billed with conservative treatment and tells itself apart by its fee rows.
struct SGruppe {
    char cAbrArt, cPwLArt;
    CString sPwLArtZeile;
};
const std::map<std::string, SGruppe> GRUPPEN = {
    {"KCH", {'c', 'a', "a"}}, {"IP", {'c', 'c', "c"}},  {"KFO", {'k', 'i', "x"}},
    {"ZE", {'z', 'f', "x"}},  {"PAR", {'p', 'g', "x"}}, {"KBR", {'b', 'h', "x"}},
};

// A published value has four decimals: in ten-thousandths of a euro.
int Zehntausendstel(std::string sWert) { return std::stoi(sWert.erase(sWert.find('.'), 1)); }

class CBemaTest : public CGebuehrenTest {
protected:
    CBemaTest() {
        std::erase_if(m_vZeilen, [](const CSpalten & zeile) { return zeile[4] != "BEMA"; }); // invented
        for (const CSpalten & zeile : m_vZeilen)
            Schreibe("GO GOART=k LSTNR=\"" + zeile[0] + "\" GEBPKT=" + zeile[2] +
                     "00 PWLART=" + GRUPPEN.at(zeile[3]).sPwLArtZeile.Utf8());
        for (const CSpalten & wert : m_vPunktwerte)
            Schreibe("PUNKTWERT PWAB=" + wert[2] + " PWGRP=" + wert[0] + " PWLART=" +
                     GRUPPEN.at(wert[1]).cPwLArt + " PWWEST=e" + std::to_string(Zehntausendstel(wert[3])));
        m_accu.GetAllPw();
    }
    static CBehHitLine Leistung(const std::string & sDatum, const std::string & sKasse = "") {
        CBehHitLine hit;
        hit.DATUM = AusUtf8(sDatum);
        hit.GOART = 'k';
        hit.KASSENPWGRP = AusUtf8(sKasse);
        return hit;
    }
    std::vector<CSpalten> m_vZeilen = Lies("bema.csv");
    std::vector<CSpalten> m_vPunktwerte = Lies("punktwerte.csv"); // insurer, group, first day, value
};

// Each service on the first day of each value, as if it belonged to the value's group of services.
TEST_F(CBemaTest, JedeZeileMitJedemPunktwert) {
    ASSERT_EQ(m_vZeilen.size(), 95u);
    ASSERT_EQ(m_vPunktwerte.size(), 13u);
    for (const CSpalten & zeile : m_vZeilen)
        for (const CSpalten & wert : m_vPunktwerte) {
            SCOPED_TRACE(zeile[0] + " x " + wert[0] + " " + wert[1] + " " + wert[2]);
            const std::int64_t iBetrag = std::int64_t{std::stoi(zeile[2])} * Zehntausendstel(wert[3]);
            CBehHitLine hit = Bewerte(Leistung(wert[2], wert[0]), zeile[0], GRUPPEN.at(wert[1]).cPwLArt);
            EXPECT_EQ(AusUtf8(Wert(hit.BETRAG)), EuroAusMillionsteln(100 * iBetrag));
            hit.BETRAG.Round();
            EXPECT_EQ(AusUtf8(Wert(hit.BETRAG)), "e" + Zahltext((iBetrag + 50) / 100));
        }
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
}

TEST_F(CBemaTest, JedeZeileNimmtDenPunktwertIhrerGruppe) {
    for (const CSpalten & zeile : m_vZeilen) {
        CBehHitLine hit = Leistung("20250301");
        hit.ABRART = GRUPPEN.at(zeile[3]).cAbrArt;
        EXPECT_EQ(Bewerte(hit, zeile[0]).PWLART, GRUPPEN.at(zeile[3]).cPwLArt) << zeile[0];
    }
}

// A filling of one surface at an insurer of the region through the years: 33 points.
TEST_F(CBemaTest, EinflaechigeFuellungDurchDieJahre) {
    const std::pair<const char *, const char *> aFaelle[] = {
        {"20151231", "e2938"}, {"20160101", "e3313"}, {"20241231", "e3313"}, {"20250101", "e4367"}};
    for (const auto & [pDatum, pBetrag] : aFaelle) {
        CBehHitLine hit = Bewerte(Leistung(pDatum, "aok"), "13a", 'a');
        hit.BETRAG.Round();
        EXPECT_EQ(Wert(hit.BETRAG), pBetrag) << pDatum;
    }
}

} // namespace
} // namespace orvostat
