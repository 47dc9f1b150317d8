#include "accu/AccuTest.h"

namespace orvostat {
namespace {

template <class T> T Anders(const T & start) {
    if constexpr (std::same_as<T, bool>)
        return !start;
    else if constexpr (std::same_as<T, CString>)
        return "x";
    else
        return static_cast<T>(7);
}

class SelektionTest : public CAccuTest {
protected:
    // Gives every field a value that is not its start, each by its own setter.
    void SetzeAlles() {
#define FELD(TYP, NAME, SETTER, START)                                                                       \
    m_accu.Set##SETTER(Anders(m_accu.Get##NAME()));                                                          \
    EXPECT_EQ(m_accu.Get##NAME(), Anders<TYP>(START)) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    m_accu.Set##SETTER("von", "bis");                                                                        \
    EXPECT_EQ(m_accu.Get##ERSTES() + m_accu.Get##ZWEITES(), "vonbis"_t) << #SETTER;
#define EIGEN(TYP, NAME, START)
#include "orvostatbs/accu/Selektion.def"
        m_accu.SetLebs({"", "  5", " 12"});
        m_accu.SetPatUeber("x");
        m_accu.SetRecallData("*", "6", "20240101");
        m_accu.SetEndePflegegradVon("v");
        m_accu.SetEndePflegegradBis("b");
        SetzeNummern("1");
        SetzeZaehler(4);
        m_accu.SetGipsArt("g");
        m_accu.SetStdKTraeger("k");
        Schreibe(R"(MANDANT MDID=" 1" MDART=b)");
        dbMKGVersion = true;
        m_accu.SetArzt(" 1");
    }
    std::string SetzeNummern(const CString & s) {
        m_accu.SetPatient(s);
        m_accu.SetMandant(s);
        m_accu.SetPraxisId(s);
        return Werte(m_accu.GetPatient(), m_accu.GetMandant(), m_accu.GetPraxisId());
    }
    std::string SetzeZaehler(int i) {
        m_accu.SetHatLstArt(i);
        m_accu.SetOhneLstArt(i - 1);
        m_accu.SetHatLstAbg(i - 2);
        m_accu.SetOhneLstAbg(i - 3);
        return Werte(m_accu.GetHatLstArt(), m_accu.GetOhneLstArt(), m_accu.GetHatLstAbg(),
                     m_accu.GetOhneLstAbg());
    }
};

TEST_F(SelektionTest, KopieUndClearNehmenAlleFelder) {
    const SSelektion start;
    SetzeAlles();
    const SSelektion s = m_accu.Selektion();
#define FELD(TYP, NAME, SETTER, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)
#define EIGEN(TYP, NAME, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#include "orvostatbs/accu/Selektion.def"
    EXPECT_EQ(m_accu.GetLebsListe(), "'','  5',' 12'"_t);
    EXPECT_EQ(Werte(s.RecallArt, s.RecallIntervall, s.RecallLast), "*|6|20240101");
    EXPECT_EQ(Werte(s.EndePflegegradVon, s.EndePflegegradBis), "v|b");
    CStatAccu ziel;
    ziel = m_accu;
    EXPECT_TRUE(ziel.Selektion() == s && CStatAccu(m_accu).Selektion() == s);

    m_accu.m_lAnzHits = 5;
    m_accu.m_bAlleLebsPassen = true;
    m_accu.m_sLebsString = m_accu.m_sKzvNr = "04";
    m_accu.m_vLstErsatz.resize(1);
    m_accu.m_vBehHits.resize(1);
    m_accu.Clear_Selekt();
    SSelektion erwartet;
    erwartet.OhneKchSach = erwartet.Arzt = true;
    EXPECT_TRUE(m_accu.Selektion() == erwartet);
    EXPECT_TRUE(m_accu.m_lAnzHits == 0 && !m_accu.m_bAlleLebsPassen && m_accu.m_vLstErsatz.empty());
    EXPECT_EQ(m_accu.m_sLebsString + m_accu.m_sKzvNr, ""_t);
    EXPECT_EQ(m_accu.m_vBehHits.size(), 1u) << "the hits stay";
}

TEST_F(SelektionTest, SetterDieMehrTunAlsSpeichern) {
    EXPECT_EQ(SetzeNummern(""), "||");
    EXPECT_EQ(SetzeNummern("  7 "), "         7| 7| 7");
    EXPECT_EQ(SetzeNummern("abc"), "         0| 0| 0");
    EXPECT_EQ(SetzeNummern("12345678901"), "2345678901|2147483647|2147483647");
    EXPECT_EQ(SetzeZaehler(5), "5|4|3|2");
    EXPECT_EQ(SetzeZaehler(-1), "|||");
    for (const auto & sZeichen : {"ük"_t, ""_t}) {
        m_accu.SetGipsArt(sZeichen);
        m_accu.SetStdKTraeger(sZeichen);
        EXPECT_EQ(Werte(m_accu.GetGipsArt(), m_accu.GetStdKTraeger()), sZeichen.IsEmpty() ? "|" : "ü|ü");
    }
}

TEST_F(SelektionTest, FragenAnDieAuswahl) {
    EXPECT_TRUE(m_accu.PwLArtOk('2') && m_accu.PwLArtOk(0) && m_accu.OnlyAbrechenbareOk('0'));
    m_accu.SetPwLArt("13");
    m_accu.SetOnlyAbrechenbare(true);
    EXPECT_TRUE(m_accu.PwLArtOk('1') && m_accu.PwLArtOk('3') && m_accu.OnlyAbrechenbareOk('1'));
    EXPECT_FALSE(m_accu.PwLArtOk('2') || m_accu.PwLArtOk(0));
    EXPECT_FALSE(m_accu.OnlyAbrechenbareOk('0') || m_accu.OnlyAbrechenbareOk(0));
    for (const auto & [iBits, pErwartet] :
         {std::pair(0, ""), {1, "1237"}, {2, "acikpsw"}, {4, ""}, {7, "1237acikpsw"}}) {
        m_accu.SetTecGoSubArten(iBits);
        std::string sUnterarten;
        for (const char cSubArt : "01237acikpsw8A") {
            CBehHitLine hit;
            hit.GOSUBART = cSubArt;
            EXPECT_TRUE(m_accu.IsTecGoSubArtOK(hit));
            hit.GOART = '7';
            if (m_accu.IsTecGoSubArtOK(hit)) sUnterarten += cSubArt;
        }
        EXPECT_EQ(sUnterarten, pErwartet);
    }
}

} // namespace
} // namespace orvostat
