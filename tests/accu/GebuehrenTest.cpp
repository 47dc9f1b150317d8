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

class CGebuehrenTest : public CAccuTest {
protected:
    CDBetrag Betrag(CBehHitLine hit, const std::string & sNummer) {
        hit.LSTNR = AusUtf8(sNummer);
        hit.ANZAHL = 100;
        hit.WSO_ERG = "1";
        m_accu.GetGOData(hit);
        m_accu.GetPunkte(hit);
        m_accu.GetBetrag(hit, nullptr);
        return hit.BETRAG;
    }
    std::string GozBetrag(const std::string & sNummer, int iFaktor) {
        CBehHitLine hit;
        hit.GOART = 'q';
        hit.FAKTOR = itoc(iFaktor);
        return Wert(Betrag(hit, sNummer));
    }
    std::string BemaBetrag(const CSpalten & zeile, const std::string & sKasse, const std::string & sDatum);
};

// The amount of a number of points at a factor in ten-thousandths.
std::string GozSoll(std::int64_t iPunkte, std::int64_t iFaktor) {
    constexpr std::int64_t CENT = 1'000'000'000; // a cent in units of the product
    return "e" + std::to_string((iPunkte * 562421 * iFaktor + CENT / 2) / CENT);
}

TEST_F(CGebuehrenTest, JedeZeileDerGozZuDenUeblichenFaktoren) {
    const std::vector<CSpalten> vZeilen = Lies("goz.csv");
    for (const CSpalten & zeile : vZeilen)
        Schreibe("GO GOART=q GOSUBART=1 LSTNR=\"" + zeile[0] + "\" GEBPKT=" + zeile[1]);
    for (const CSpalten & zeile : vZeilen)
        for (const int iFaktor : {10000, 23000, 35000})
            EXPECT_EQ(GozBetrag(zeile[0], iFaktor), GozSoll(std::stoi(zeile[1]), iFaktor)) << zeile[0];
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
    EXPECT_EQ(m_accu.m_vGO.size(), 42u) << "each row is read once";
    // As dentists' invoices show them.
    EXPECT_EQ(GozBetrag("0010", 23000), "e1294");
    EXPECT_EQ(GozBetrag("2210", 23000), "e21706");
    EXPECT_EQ(GozBetrag("4050", 10000), "e56");
}

TEST_F(CGebuehrenTest, JedePunktzahlDerGozZuJedemFaktorDesRahmens) {
    CBehHitLine hit;
    hit.GOART = 'q';
    hit.GOSUBART = '1';
    hit.ANZAHL = 100;
    for (int iFaktor = 10000; iFaktor <= 35000; iFaktor += 500) {
        hit.FAKTOR = itoc(iFaktor);
        for (hit.PUNKTE = 1; hit.PUNKTE <= 3000; ++hit.PUNKTE) {
            m_accu.GetBetrag(hit, nullptr);
            ASSERT_EQ(Wert(hit.BETRAG), GozSoll(hit.PUNKTE, iFaktor)) << hit.PUNKTE << " x " << iFaktor;
        }
    }
}

// A group of the schedule, how it is billed, and its kind in the table of point values. Individual prophylaxis is
// billed with conservative treatment and tells itself apart by its fee rows.
struct SGruppe {
    char cAbrArt, cPwLArt, cPwLArtZeile;
};
const std::map<std::string, SGruppe> GRUPPEN = {{"KCH", {'c', 'a', 'a'}}, {"IP", {'c', 'c', 'c'}},
                                                {"KFO", {'k', 'i', 'x'}}, {"ZE", {'z', 'f', 'x'}},
                                                {"PAR", {'p', 'g', 'x'}}, {"KBR", {'b', 'h', 'x'}}};

// A published value has four decimals: in ten-thousandths of a euro.
int Zehntausendstel(std::string sWert) { return std::stoi(sWert.erase(sWert.find('.'), 1)); }

// In whole cents.
std::string CGebuehrenTest::BemaBetrag(const CSpalten & zeile, const std::string & sKasse,
                                       const std::string & sDatum) {
    CBehHitLine hit;
    hit.GOART = 'k';
    hit.ABRART = GRUPPEN.at(zeile[3]).cAbrArt;
    hit.KASSENPWGRP = AusUtf8(sKasse);
    hit.DATUM = AusUtf8(sDatum);
    CDBetrag betrag = Betrag(hit, zeile[0]);
    return Wert(betrag.Round());
}

TEST_F(CGebuehrenTest, JedeZeileDesBemaZuJedemPunktwertIhrerGruppe) {
    std::vector<CSpalten> vZeilen = Lies("bema.csv");
    const std::vector<CSpalten> vPunktwerte = Lies("punktwerte.csv"); // insurer, group, first day, value
    std::erase_if(vZeilen, [](const CSpalten & zeile) { return zeile[4] != "BEMA"; }); // invented
    for (const CSpalten & zeile : vZeilen)
        Schreibe("GO GOART=k LSTNR=\"" + zeile[0] + "\" GEBPKT=" + zeile[2] +
                 "00 PWLART=" + GRUPPEN.at(zeile[3]).cPwLArtZeile);
    for (const CSpalten & wert : vPunktwerte)
        Schreibe("PUNKTWERT PWAB=" + wert[2] + " PWGRP=" + wert[0] + " PWLART=" +
                 GRUPPEN.at(wert[1]).cPwLArt + " PWWEST=e" + std::to_string(Zehntausendstel(wert[3])));
    m_accu.GetAllPw();
    for (const CSpalten & zeile : vZeilen)
        for (const CSpalten & wert : vPunktwerte) {
            if (wert[1] != zeile[3]) continue;
            const int iBetrag = std::stoi(zeile[2]) * Zehntausendstel(wert[3]);
            EXPECT_EQ(BemaBetrag(zeile, wert[0], wert[2]), "e" + std::to_string((iBetrag + 50) / 100))
                << zeile[0] << " x " << wert[0] << " " << wert[2];
        }
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
    // A filling of one surface at an insurer of the region through the years: 33 points.
    for (const auto & [pDatum, pBetrag] : {std::pair("20151231", "e2938"),
                                           {"20160101", "e3313"},
                                           {"20241231", "e3313"},
                                           {"20250101", "e4367"}})
        EXPECT_EQ(BemaBetrag({"13a", "", "", "KCH"}, "aok", pDatum), pBetrag) << pDatum;
}

} // namespace
} // namespace orvostat
