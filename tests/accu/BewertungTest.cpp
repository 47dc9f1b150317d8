#include "orvostatbs/accu/Bewertungsspur.h"

#include "accu/AccuTest.h"

#include <string>
#include <vector>

namespace orvostat {
namespace {

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
        if (!betrag.IsEmpty()) s += " [" + Wert(betrag) + "]";
    return s;
}

std::string Text(const CBewertungsspur & spur) {
    std::string s;
    for (const SBewertungsschritt & schritt : spur.Schritte())
        s += (s.empty() ? "" : "; ") + Zeile(schritt);
    return s;
}

class CBewertungTest : public CAccuTest {
public:
    static CBehHitLine Hit(CFall & fall) {
        CBehHitLine hit;
        hit.PATNR = "1";
        hit.DATUM = "20240515";
        hit.LSTNR = "100";
        hit.ANZAHL = 100;
        hit.KASSENPWGRP = "aok";
        hit.WSO_ERG = "1";
        return fall.Fuelle(hit);
    }
    void Fehler(CFall & fall) const {
        std::vector<int> v;
        for (const CBehErrors & fehler : m_accu.m_vBehErrors.Lesend())
            v.push_back(fehler.m_iFehler);
        fall.Aus("FEHLER", v);
    }

    // It reads nothing, and whatever it does, its last note is the amount.
    void Betrag(CFall & fall) {
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        CDBetrag abschlag = fall.Ein<CDBetrag>("ABSCHLAG");
        fall.Nimm("LQ", m_accu.m_iLQPunktwert);
        CBewertungsspur spur;
        m_accu.m_pSpur = &spur;
        (void)HatGelesen();
        m_accu.GetBetrag(hit, &abschlag);
        if (HatGelesen()) fall.Melde("it has read");
        if (!spur.Schritte().empty() && spur.Schritte().back().betrag != hit.BETRAG) fall.Melde(Text(spur));
        m_accu.m_pSpur = nullptr;
        fall.Aus("ABSCHLAG", abschlag);
        fall.Geaendert(vorher, hit);
    }
    void Regionalabschlag(CFall & fall) {
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        CDBetrag abschlag = fall.Ein<CDBetrag>("ABSCHLAG");
        fall.Nimm("LQ", m_accu.m_iLQPunktwert);
        m_accu.AbzglAbschlagOst(hit, abschlag);
        fall.Aus("ABSCHLAG", abschlag);
        fall.Geaendert(vorher, hit);
    }
    void Gebuehr(CFall & fall) {
        CBehHitLine hit = Hit(fall);
        fall.Aus("STDFAKTOR", m_accu.GetStdFaktor(hit));
        EXPECT_TRUE(m_accu.GetGOData(hit));
        EXPECT_TRUE(m_accu.GetGOData(hit));
        fall.Genannt(hit);
        Fehler(fall);
    }
    void Ersatz(CFall & fall) {
        m_accu.m_vLstErsatz = {{"f1"_t, ""_t}, {"F1"_t, "f2"_t}, {"f1"_t, "be"_t}, {"x"_t, "fehlt"_t}};
        CBehHitLine hit = Hit(fall);
        fall.Aus("JA", m_accu.GetLstErsatz(hit));
        fall.Genannt(hit);
        Fehler(fall);
    }
    void Punkte(CFall & fall) {
        if (m_accu.m_mapPw.empty()) m_accu.GetAllPw();
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        EXPECT_TRUE(m_accu.GetPunkte(hit));
        fall.Geaendert(vorher, hit);
        Fehler(fall);
    }
    void Plan(CFall & fall) {
        m_accu.GetAllPw();
        const CBehHitLine leistung = Hit(fall);
        for (int i = 0; i < 2; ++i) { // read, remembered
            CBehHitLine hit = leistung, privat = leistung;
            bool bNeuerPar = !fall.Erwartet("NEUERPAR");
            fall.Aus("PLANDATUM", m_accu.GetPwFromPlanDatum(hit, bNeuerPar));
            fall.Aus("NEUERPAR", bNeuerPar);
            m_accu.GetPunkte(hit);
            fall.Aus("KASSE", hit.PUNKTWERT);
            privat.GOART = 'p';
            m_accu.GetPunkte(privat);
            fall.Aus("PRIVAT", privat.PUNKTWERT);
        }
        EXPECT_EQ(m_accu.m_vPwPlaene.size(), 1u);
    }
    void Mischfaehig(CFall & fall) {
        CBehHitLine hit = Hit(fall);
        fall.Aus("JA", m_accu.IsMischPwFaehig(hit));
    }
    void Regionalfaktor(CFall & fall) {
        m_accu.m_sKzvNr = "alt";
        fall.Aus("LQ", m_accu.GetLQPunktwert());
        fall.Aus("KZVNR", m_accu.m_sKzvNr);
    }
    void Kassenanteil(CFall & fall) {
        std::vector<CPlan> vPlaene(2);
        vPlaene[1].m_iKasProzent = 65;
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        m_accu.NurDenKassenanteil(vPlaene, hit, fall.Ein<int>("PLAN"), 80);
        fall.Geaendert(vorher, hit);
    }
    void Befund(CFall & fall) {
        if (fall.Ein<bool>("LAUF")) m_accu.GetMemForTables();
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        fall.Aus("JA", m_accu.GetBefund(hit));
        fall.Geaendert(vorher, hit);
    }
    void Gruppenname(CFall & fall) {
        m_accu.m_vSpTechLst = {Eintrag("1", "Labor"), Eintrag("$", "Dollar")};
        m_accu.m_vSpGoStat = {Eintrag("1", "Eins"), Eintrag("2", "Zwei"), Eintrag("", "Ohne")};
        fall.Aus("NAME", m_accu.GetLstGrpName(fall.Ein<char>("ART"), fall.Ein<char>("GRP")));
    }
    void Bewertung(CFall & fall) {
        if (m_accu.m_mapPw.empty()) m_accu.GetAllPw();
        if (fall.Ein<bool>("ERSATZ")) m_accu.m_vLstErsatz = {{"f1"_t, "f2"_t}};
        fall.Nimm("LQ", m_accu.m_iLQPunktwert);
        CBehHitLine hit = Hit(fall), ohne = hit;
        CStatAccu accuOhne(m_accu);
        CBewertungsspur spur;
        m_accu.m_pSpur = &spur;
        Bewerte(m_accu, hit);
        m_accu.m_pSpur = nullptr;
        Bewerte(accuOhne, ohne);
        fall.Aus("SPUR", Text(spur));
        fall.Aus("BETRAG", ohne.BETRAG);
        fall.Genannt(hit);
        fall.Genannt(ohne);
    }

private:
    static CSPData Eintrag(const CString & sKey, const CString & sText) {
        CSPData eintrag;
        eintrag.m_sKey = sKey;
        eintrag.m_sText = sText;
        return eintrag;
    }
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

TEST(Bewertung, Faelle) {
    PruefeFaelle<CBewertungTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/bewertung.txt",
                                 {{"betrag", &CBewertungTest::Betrag},
                                  {"regionalabschlag", &CBewertungTest::Regionalabschlag},
                                  {"gebuehr", &CBewertungTest::Gebuehr},
                                  {"ersatz", &CBewertungTest::Ersatz},
                                  {"punkte", &CBewertungTest::Punkte},
                                  {"mischfaehig", &CBewertungTest::Mischfaehig},
                                  {"plan", &CBewertungTest::Plan},
                                  {"regionalfaktor", &CBewertungTest::Regionalfaktor},
                                  {"kassenanteil", &CBewertungTest::Kassenanteil},
                                  {"befund", &CBewertungTest::Befund},
                                  {"gruppenname", &CBewertungTest::Gruppenname},
                                  {"bewertung", &CBewertungTest::Bewertung}});
}

TEST_F(CBewertungTest, PlanWirdNurEinmalGelesen) {
    CBehHitLine hit;
    hit.PATNR = hit.PLANNR = "1";
    bool bNeuerPar = true;
    EXPECT_EQ(m_accu.GetPwFromPlanDatum(hit, bNeuerPar), ""_t);
    EXPECT_FALSE(bNeuerPar);
    Schreibe("PLAN PATNR=1 PLANNR=1 PLANART=3 PLANSTATUS=4 PLANDATUM=20230601 PLANPW=e8888");
    EXPECT_TRUE(HatGelesen());
    EXPECT_EQ(m_accu.GetPwFromPlanDatum(hit, bNeuerPar), ""_t) << "a missing plan is remembered as well";
    EXPECT_FALSE(HatGelesen());
}

// ---- the visit fee of the billing library

std::vector<std::string> s_vGerufen; // kind of insurer and region of each call

const SFachbereiche * s_pFachbereiche = nullptr; // of the last call

int TestOrdination(SFachbereiche * pFachbereiche, CTVDesc * pVDesc) {
    s_pFachbereiche = pFachbereiche;
    s_vGerufen.push_back(Werte(pVDesc->m_KSART, pVDesc->m_MFRDIG));
    return 1850;
}

class COrdinationTest : public CAccuTest {
public:
    int Punkte(char cGoArt, const CString & sLstNr, char cSonderKsArt = 0) {
        CBehHitLine hit;
        hit.GOART = cGoArt;
        hit.PUNKTE = 1000;
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
    CBewertungsspur spur;
    m_accu.m_pSpur = &spur;
    EXPECT_EQ(Punkte('b', "1", 'A'), 1850);
    EXPECT_EQ(Zeile(spur.Schritte().front()), "Ordination 1850");
    EXPECT_EQ(Punkte('b', "1"), 1850);
    EXPECT_EQ(s_pFachbereiche, m_accu.m_pFachbereiche);
    EXPECT_EQ(Punkte('b', "01"), 1000);
    EXPECT_EQ(Punkte('b', "1a"), 1000);
    EXPECT_EQ(Punkte('k', "1"), 1000);
    EXPECT_EQ(s_vGerufen, (std::vector<std::string>{"A|5", "|5"}));
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

} // namespace
} // namespace orvostat
