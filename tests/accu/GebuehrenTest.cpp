// The amounts of the published fee schedules, against exact integer arithmetic.
//
// tests/accu/data holds the numbers of points of GOZ and BEMA as printed, and point values that associations of
// dentists have published. A private fee is points x 5.62421 cent x factor, rounded once, after the factor (GOZ
// section 5, half a cent upwards); an insurer's fee is points x point value.
#include "accu/AccuTest.h"

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace orvostat {
namespace {

using CSpalten = std::vector<std::string>;

// The lines of a file behind its title line.
std::vector<CSpalten> Lies(const std::string & sDatei) {
    std::ifstream datei(ORVOSTATBS_SOURCE_DIR "/tests/accu/data/" + sDatei);
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

CString Text(const CDBetrag & betrag) { return betrag.ToDb(0, true, false, 0, 0); }

class CGebuehrenTest : public CAccuTest {
protected:
    // Fee row, points, amount of one service.
    CBehHitLine Bewerte(char cGoArt, const std::string & sNummer, char cAbrArt, const CString & sFaktor) {
        CBehHitLine hit;
        hit.PATNR = "1";
        hit.DATUM = "20250301";
        hit.GOART = cGoArt;
        hit.LSTNR = AusUtf8(sNummer);
        hit.ABRART = cAbrArt;
        hit.FAKTOR = sFaktor;
        hit.ANZAHL = 100;
        hit.WSO_ERG = "1";
        m_accu.GetGOData(hit);
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
            Schreibe<CTGO>({.m_GOART = "q",
                            .m_LSTNR = CString(std::string_view(zeile[0])),
                            .m_GOSUBART = "1",
                            .m_GEBPKT = CString(std::string_view(zeile[1]))});
    }
    std::vector<CSpalten> m_vZeilen = Lies("goz.csv");
};

// The cents of a number of points at a factor in ten-thousandths.
std::int64_t GozCent(std::int64_t iPunkte, std::int64_t iFaktor) {
    constexpr std::int64_t CENT = 1'000'000'000; // a cent in units of the product
    return (iPunkte * 562421 * iFaktor + CENT / 2) / CENT;
}

TEST_F(CGozTest, JedeZeileZuDenUeblichenFaktoren) {
    ASSERT_EQ(m_vZeilen.size(), 42u);
    for (const CSpalten & zeile : m_vZeilen)
        for (const int iFaktor : {10000, 23000, 35000}) {
            SCOPED_TRACE(zeile[0] + " x " + std::to_string(iFaktor));
            const std::int64_t iCent = GozCent(std::stoi(zeile[1]), iFaktor);
            EXPECT_EQ(Text(Bewerte('q', zeile[0], 0, Zahltext(iFaktor)).BETRAG), "e" + Zahltext(iCent));
        }
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
    EXPECT_EQ(m_accu.m_vGO.size(), 42u) << "each row is read once";
}

// As dentists' invoices show them.
TEST_F(CGozTest, BekannteBetraege) {
    const struct {
        const char * pNummer;
        CString sFaktor;
        CString sBetrag;
    } aFaelle[] = {
        {"0010", "10000", "e562"},   {"0010", "23000", "e1294"}, {"0010", "35000", "e1968"},
        {"1040", "23000", "e362"},   {"2197", "23000", "e1682"}, {"2060", "23000", "e6817"},
        {"2210", "23000", "e21706"}, {"9010", "10000", "e8689"}, {"4050", "10000", "e56"},
        {"9100", "35000", "e53031"},
    };
    for (const auto & fall : aFaelle)
        EXPECT_EQ(Text(Bewerte('q', fall.pNummer, 0, fall.sFaktor).BETRAG), fall.sBetrag)
            << fall.pNummer << " x " << fall.sFaktor.Utf8();
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
            ASSERT_EQ(Text(hit.BETRAG), "e" + Zahltext(GozCent(hit.PUNKTE, iFaktor)))
                << hit.PUNKTE << " x " << iFaktor;
        }
    }
}

// ---- BEMA

// A group of the schedule, how it is billed, and its kind in the table of point values. Individual prophylaxis is
// billed with conservative treatment and tells itself apart by its fee rows.
struct SGruppe {
    std::string_view sGruppe;
    char cAbrArt;
    char cPwLArt;
    CString sPwLArtZeile;
};
const SGruppe GRUPPEN[] = {
    {"KCH", 'c', 'a', "a"}, {"IP", 'c', 'c', "c"},  {"KFO", 'k', 'i', "x"},
    {"ZE", 'z', 'f', "x"},  {"PAR", 'p', 'g', "x"}, {"KBR", 'b', 'h', "x"},
};

const SGruppe & Gruppe(const std::string & sGruppe) {
    for (const SGruppe & gruppe : GRUPPEN)
        if (gruppe.sGruppe == sGruppe) return gruppe;
    throw std::invalid_argument("no such group of services: " + sGruppe);
}

// A published value, in ten-thousandths of a euro.
struct SPunktwert {
    CString sKasse;
    std::string sGruppe;
    CString sAb;
    int iWert;
};

std::vector<SPunktwert> LiesPunktwerte() {
    std::vector<SPunktwert> v;
    for (const CSpalten & zeile : Lies("punktwerte.csv")) {
        std::string sWert = zeile[3]; // four decimals
        sWert.erase(sWert.find('.'), 1);
        v.push_back({CString(std::string_view(zeile[0])), zeile[1], CString(std::string_view(zeile[2])),
                     std::stoi(sWert)});
    }
    return v;
}

class CBemaTest : public CGebuehrenTest {
protected:
    CBemaTest() {
        for (const CSpalten & zeile : m_vZeilen)
            Schreibe<CTGO>({.m_GOART = "k",
                            .m_LSTNR = AusUtf8(zeile[0]),
                            .m_PWLART = Gruppe(zeile[2]).sPwLArtZeile,
                            .m_GEBPKT = CString(std::string_view(zeile[1] + "00"))});
        for (const SPunktwert & wert : m_vPunktwerte)
            Schreibe<CTPunktWert>({.m_PWAB = wert.sAb,
                                   .m_PWGRP = wert.sKasse,
                                   .m_PWLART = CString(Gruppe(wert.sGruppe).cPwLArt),
                                   .m_PWWEST = "e" + Zahltext(wert.iWert)});
        m_accu.GetAllPw();
    }

    // The service on the first day of the value, as if it belonged to the value's group of services.
    CBehHitLine BewerteMit(const CSpalten & zeile, const SPunktwert & wert) {
        CBehHitLine hit;
        hit.DATUM = wert.sAb;
        hit.GOART = 'k';
        hit.LSTNR = AusUtf8(zeile[0]);
        hit.KASSENPWGRP = wert.sKasse;
        hit.ANZAHL = 100;
        hit.WSO_ERG = "1";
        m_accu.GetGOData(hit);
        hit.PWLART = Gruppe(wert.sGruppe).cPwLArt;
        m_accu.GetPunkte(hit);
        m_accu.GetBetrag(hit, nullptr);
        return hit;
    }

    std::vector<CSpalten> m_vZeilen = Lies("bema.csv");
    std::vector<SPunktwert> m_vPunktwerte = LiesPunktwerte();
};

TEST_F(CBemaTest, JedeZeileMitJedemPunktwert) {
    ASSERT_EQ(m_vZeilen.size(), 95u);
    ASSERT_EQ(m_vPunktwerte.size(), 13u);
    for (const CSpalten & zeile : m_vZeilen)
        for (const SPunktwert & wert : m_vPunktwerte) {
            SCOPED_TRACE(zeile[0] + " x " + wert.sKasse.Utf8() + " " + wert.sGruppe + " " + wert.sAb.Utf8());
            const std::int64_t iZehntausendstel = std::int64_t{std::stoi(zeile[1])} * wert.iWert;
            CBehHitLine hit = BewerteMit(zeile, wert);
            EXPECT_EQ(Text(hit.BETRAG), EuroAusMillionsteln(100 * iZehntausendstel));
            hit.BETRAG.Round();
            EXPECT_EQ(Text(hit.BETRAG), "e" + Zahltext((iZehntausendstel + 50) / 100));
        }
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
}

TEST_F(CBemaTest, JedeZeileNimmtDenPunktwertIhrerGruppe) {
    for (const CSpalten & zeile : m_vZeilen) {
        const SGruppe & gruppe = Gruppe(zeile[2]);
        EXPECT_EQ(Bewerte('k', zeile[0], gruppe.cAbrArt, CString()).PWLART, gruppe.cPwLArt) << zeile[0];
    }
}

// A filling of one surface at an insurer of the region through the years: 33 points.
TEST_F(CBemaTest, EinflaechigeFuellungDurchDieJahre) {
    const struct {
        CString sDatum;
        CString sBetrag;
    } aFaelle[] = {
        {"20120401", "e2938"}, {"20151231", "e2938"}, {"20160101", "e3313"},
        {"20241231", "e3313"}, {"20250101", "e4367"},
    };
    for (const auto & fall : aFaelle) {
        CBehHitLine hit = BewerteMit({"13a", "33", "KCH"},
                                     {.sKasse = "aok", .sGruppe = "KCH", .sAb = fall.sDatum, .iWert = 0});
        hit.BETRAG.Round();
        EXPECT_EQ(Text(hit.BETRAG), fall.sBetrag) << fall.sDatum.Utf8();
    }
}

} // namespace
} // namespace orvostat
