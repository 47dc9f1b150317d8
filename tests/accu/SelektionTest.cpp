#include "accu/AccuTest.h"

#include <string>

namespace orvostat {

namespace {

// ---- the list of fields

const char * Kuerzel(const CString &) { return "s"; }
const char * Kuerzel(const std::vector<CString> &) { return "v"; }
const char * Kuerzel(CChar) { return "c"; }
const char * Kuerzel(bool) { return "b"; }
const char * Kuerzel(KZVKFO) { return "k"; }
const char * Kuerzel(int) { return "i"; }
const char * Kuerzel(char) { return "z"; }
const char * Kuerzel(std::uint32_t) { return "u"; }

// Setters take texts by reference, all else by value.
template <class P> const char * Uebergabe(void (CSelektion::*)(P)) {
    if constexpr (std::is_same_v<P, const CString &>)
        return "s";
    else
        return std::is_reference_v<P> ? "reference" : Kuerzel(std::remove_cvref_t<P>());
}

// A field as the text file has it, and a blank.
template <class T>
std::string Zeile(const std::string & sName, const char * pArt, const T & start,
                  const std::string & sSetter) {
    return sName + ':' + pArt + (start == T() ? "" : "=1") + (sSetter == sName ? "" : '<' + sSetter) + ' ';
}

class SelektionTest : public CAccuTest {
protected:
    void SetzeAlles(); // gives every field a value that is not its start, each by its own setter
};

TEST_F(SelektionTest, FelderStehenInIhrerReihenfolgeMitIhremStart) {
    std::string sIst;
    const SSelektion & s = m_accu.Selektion();
#define FELD(TYP, NAME, SETTER, START)                                                                       \
    sIst += Zeile(#NAME, Uebergabe(&CSelektion::Set##SETTER), s.NAME, #SETTER);
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    sIst += Zeile(#ERSTES, "s", s.ERSTES, #SETTER "1");                                                      \
    sIst += Zeile(#ZWEITES, "s", s.ZWEITES, #SETTER "2");
#define EIGEN(TYP, NAME, START) sIst += Zeile(#NAME, Kuerzel(s.NAME), s.NAME, "*");
#include "orvostatbs/accu/Selektion.def"
    EXPECT_EQ(sIst, LiesZeile(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/selektion.txt", "fields") + " ");
}

// ---- setters, getters, Clear_Selekt

CString Anders(const CString &) { return "x"; }
CChar Anders(CChar) { return 'x'; }
bool Anders(bool bStart) { return !bStart; }
KZVKFO Anders(KZVKFO) { return KZVKFO_NUR; }
int Anders(int) { return 7; }
std::uint32_t Anders(std::uint32_t) { return 0x80000001; }

void SelektionTest::SetzeAlles() {
#define FELD(TYP, NAME, SETTER, START)                                                                       \
    m_accu.Set##SETTER(Anders(m_accu.Get##NAME()));                                                          \
    EXPECT_EQ(m_accu.Get##NAME(), Anders(SSelektion().NAME)) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    m_accu.Set##SETTER("von", "bis");                                                                        \
    EXPECT_EQ(m_accu.Get##ERSTES(), "von"_t) << #ERSTES;                                                     \
    EXPECT_EQ(m_accu.Get##ZWEITES(), "bis"_t) << #ZWEITES;
#define EIGEN(TYP, NAME, START)
#include "orvostatbs/accu/Selektion.def"
    m_accu.SetMandant("1");
    m_accu.SetLebs({"  5"});
    m_accu.SetPatient("1");
    m_accu.SetPatUeber("x");
    m_accu.SetRecallData("*", "6", "20240101");
    m_accu.SetHatLstArt(1);
    m_accu.SetOhneLstArt(2);
    m_accu.SetHatLstAbg(3);
    m_accu.SetOhneLstAbg(4);
    m_accu.SetStdKTraeger("k");
    m_accu.SetGipsArt("g");
    m_accu.SetPraxisId("2");
    m_accu.SetEndePflegegradVon("v");
    m_accu.SetEndePflegegradBis("b");
    Schreibe(R"(MANDANT MDID=" 1" MDART=b)");
    dbMKGVersion = true;
    m_accu.SetArzt(" 1");
    const SSelektion & s = m_accu.Selektion();
    const SSelektion start;
#define FELD(TYP, NAME, SETTER, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)
#define EIGEN(TYP, NAME, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#include "orvostatbs/accu/Selektion.def"
}

TEST_F(SelektionTest, ClearSelektLaesstNurZweiFelderStehen) {
    SetzeAlles();
    m_accu.m_lAnzHits = 5;
    m_accu.m_bAlleLebsPassen = true;
    m_accu.m_sLebsString = m_accu.m_sKzvNr = "04";
    m_accu.m_vLstErsatz.resize(1);
    m_accu.m_vBehHits.resize(1);
    SSelektion erwartet;
    erwartet.OhneKchSach = true;
    erwartet.Arzt = true;
    m_accu.Clear_Selekt();
    EXPECT_TRUE(m_accu.Selektion() == erwartet);
    EXPECT_EQ(m_accu.m_lAnzHits, 0);
    EXPECT_FALSE(m_accu.m_bAlleLebsPassen);
    EXPECT_EQ(m_accu.m_sLebsString + m_accu.m_sKzvNr, ""_t);
    EXPECT_TRUE(m_accu.m_vLstErsatz.empty());
    EXPECT_EQ(m_accu.m_vBehHits.size(), 1u) << "the hits stay";
}

TEST_F(SelektionTest, KopieUndZuweisungNehmenAlleFelder) {
    SetzeAlles();
    const CStatAccu kopie(m_accu);
    CStatAccu ziel;
    ziel = m_accu;
    EXPECT_TRUE(kopie.Selektion() == m_accu.Selektion());
    EXPECT_TRUE(ziel.Selektion() == m_accu.Selektion());
}

// ---- setters that do more than store

TEST_F(SelektionTest, NummernHabenIhreStellen) {
    const struct {
        CString sGesetzt, sZwei, sZehn;
    } aFaelle[] = {
        {"", "", ""},
        {"  7 ", " 7", "         7"},
        {"0", " 0", "         0"},
        {"abc", " 0", "         0"},
        {"123", "123", "       123"},
    };
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.sGesetzt.Utf8());
        m_accu.SetPatient(fall.sGesetzt);
        EXPECT_EQ(m_accu.GetPatient(), fall.sZehn);
        m_accu.SetMandant(fall.sGesetzt);
        m_accu.SetPraxisId(fall.sGesetzt);
        EXPECT_EQ(m_accu.GetMandant(), fall.sZwei);
        EXPECT_EQ(m_accu.GetPraxisId(), fall.sZwei);
    }
    m_accu.SetPatient("12345678901");
    EXPECT_EQ(m_accu.GetPatient(), "2345678901"_t);
}

TEST_F(SelektionTest, ZaehlerWerdenNieNegativ) {
    for (const int i : {3, -1, std::numeric_limits<int>::min()}) {
        m_accu.SetHatLstArt(i);
        m_accu.SetOhneLstArt(i);
        m_accu.SetHatLstAbg(i);
        m_accu.SetOhneLstAbg(i);
        for (const int iZaehler :
             {m_accu.GetHatLstArt(), m_accu.GetOhneLstArt(), m_accu.GetHatLstAbg(), m_accu.GetOhneLstAbg()})
            EXPECT_EQ(iZaehler, std::max(i, 0));
    }
}

TEST_F(SelektionTest, ZeichenfelderBehaltenDasErsteZeichen) {
    for (const auto & [sGesetzt, sErwartet] : {std::pair{"ük"_t, "ü"_t}, {""_t, ""_t}}) {
        m_accu.SetGipsArt(sGesetzt);
        m_accu.SetStdKTraeger(sGesetzt);
        EXPECT_EQ(m_accu.GetGipsArt(), sErwartet);
        EXPECT_EQ(m_accu.GetStdKTraeger(), sErwartet);
    }
}

TEST_F(SelektionTest, RecallFelderStehenInIhrerReihenfolge) {
    m_accu.SetRecallData("3", "6", "20240101");
    EXPECT_EQ(m_accu.GetRecallArt() + "/" + m_accu.GetRecallIntervall() + "/" + m_accu.GetRecallLast(),
              "3/6/20240101"_t);
}

// ---- questions that the selection answers itself

TEST_F(SelektionTest, LebsListeStehtInApostrophen) {
    EXPECT_EQ(m_accu.GetLebsListe(), ""_t);
    m_accu.SetLebs({"", "  5", " 12"});
    EXPECT_EQ(m_accu.GetLebsListe(), "'','  5',' 12'"_t);
}

TEST_F(SelektionTest, PunktwertArtenUndAbrechenbare) {
    EXPECT_TRUE(m_accu.PwLArtOk(0)) << "without selection";
    m_accu.SetPwLArt("13");
    for (const auto & [cArt, bErwartet] : {std::pair{'1', true}, {'3', true}, {'2', false}, {'\0', false}})
        EXPECT_EQ(m_accu.PwLArtOk(cArt), bErwartet) << cArt;
    EXPECT_TRUE(m_accu.OnlyAbrechenbareOk('0'));
    m_accu.SetOnlyAbrechenbare(true);
    EXPECT_TRUE(m_accu.OnlyAbrechenbareOk('1'));
    EXPECT_FALSE(m_accu.OnlyAbrechenbareOk('0'));
    EXPECT_FALSE(m_accu.OnlyAbrechenbareOk(0));
}

TEST_F(SelektionTest, TechnischeUnterarten) {
    const struct {
        char cGoArt;
        std::string_view sSubArten;
        bool abErwartet[4]; // by the bits of TecGoSubArten
    } aFaelle[] = {
        {'7', "17", {false, true, false, true}},
        {'7', "acikpsw", {false, false, true, true}},
        {'7', {"80A\0", 4}, {false, false, false, false}},
        {'8', "8", {true, true, true, true}},
    };
    for (const auto & fall : aFaelle)
        for (const char cSubArt : fall.sSubArten)
            for (const int iBits : {0, 1, 2, 3, 4, 7}) {
                CBehHitLine hit;
                hit.GOART = fall.cGoArt;
                hit.GOSUBART = cSubArt;
                m_accu.SetTecGoSubArten(iBits);
                EXPECT_EQ(m_accu.IsTecGoSubArtOK(hit), fall.abErwartet[iBits & 3])
                    << fall.cGoArt << cSubArt << iBits;
            }
}

} // namespace

} // namespace orvostat
