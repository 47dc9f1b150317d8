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
        SetzeNummer("1");
        SetzeZeichen("g");
        SetzeZaehler(4);
        Schreibe(R"(MANDANT MDID=" 1" MDART=b)");
        dbMKGVersion = true;
        m_accu.SetArzt(" 1");
    }
    void SetzeNummer(const CString & s) {
        m_accu.SetPatient(s);
        m_accu.SetMandant(s);
        m_accu.SetPraxisId(s);
    }
    void SetzeZeichen(const CString & s) {
        m_accu.SetGipsArt(s);
        m_accu.SetStdKTraeger(s);
    }
    void SetzeZaehler(int i) {
        m_accu.SetHatLstArt(i);
        m_accu.SetOhneLstArt(i - 1);
        m_accu.SetHatLstAbg(i - 2);
        m_accu.SetOhneLstAbg(i - 3);
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
    constexpr const char * NUMMERN[][2] = {
        {"", "||"}, {"  7 ", "         7| 7| 7"}, {"abc", "         0| 0| 0"}, {"123", "       123|123|123"}};
    for (const auto & [pNummer, pErwartet] : NUMMERN) {
        SetzeNummer(pNummer);
        EXPECT_EQ(Werte(m_accu.GetPatient(), m_accu.GetMandant(), m_accu.GetPraxisId()), pErwartet);
    }
    m_accu.SetPatient("12345678901");
    EXPECT_EQ(m_accu.GetPatient(), "2345678901"_t);
    for (const auto & [iWert, pErwartet] : {std::pair(5, "5|4|3|2"), {0, "|||"}}) {
        SetzeZaehler(iWert);
        EXPECT_EQ(Werte(m_accu.GetHatLstArt(), m_accu.GetOhneLstArt(), m_accu.GetHatLstAbg(),
                        m_accu.GetOhneLstAbg()),
                  pErwartet);
    }
    for (const auto & [sZeichen, pErwartet] : {std::pair{"ük"_t, "ü|ü"}, {""_t, "|"}}) {
        SetzeZeichen(sZeichen);
        EXPECT_EQ(Werte(m_accu.GetGipsArt(), m_accu.GetStdKTraeger()), pErwartet);
    }
}

TEST_F(SelektionTest, FragenAnDieAuswahl) {
    const auto Ja = [](const auto & f) {
        std::string s;
        for (const char c : "01237acikpsw8A")
            if (f(c)) s += c == 0 ? '-' : c;
        return s;
    };
    const auto PwLArt = [this](char c) { return m_accu.PwLArtOk(c); };
    const auto Abrechenbare = [this](char c) { return m_accu.OnlyAbrechenbareOk(c); };
    const std::string sAlle = "01237acikpsw8A-";
    EXPECT_EQ(Ja(PwLArt) + Ja(Abrechenbare), sAlle + sAlle);
    m_accu.SetPwLArt("13");
    m_accu.SetOnlyAbrechenbare(true);
    EXPECT_EQ(Ja(PwLArt) + Ja(Abrechenbare), "131");
    for (const auto & [iBits, pErwartet] :
         {std::pair(0, ""), {1, "1237"}, {2, "acikpsw"}, {4, ""}, {7, "1237acikpsw"}}) {
        m_accu.SetTecGoSubArten(iBits);
        for (const char cGoArt : {'7', '8'})
            EXPECT_EQ(Ja([&](char c) {
                          CBehHitLine hit;
                          hit.GOART = cGoArt;
                          hit.GOSUBART = c;
                          return m_accu.IsTecGoSubArtOK(hit);
                      }),
                      cGoArt == '7' ? pErwartet : sAlle)
                << iBits;
    }
}

} // namespace
} // namespace orvostat
