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

    // What f does to the case's hit.
    template <class F> void AmHit(CFall & fall, F f) const {
        const CBehHitLine vorher = Hit(fall);
        CBehHitLine hit = vorher;
        f(hit);
        fall.Geaendert(vorher, hit);
    }
    void Betrag(CFall & fall) {
        CDBetrag abschlag = fall.Ein<CDBetrag>("ABSCHLAG");
        fall.Nimm("LQ", m_accu.m_iLQPunktwert);
        (void)HatGelesen();
        AmHit(fall, [&](CBehHitLine & hit) { m_accu.GetBetrag(hit, &abschlag); });
        if (HatGelesen()) fall.Melde("it has read");
        fall.Aus("ABSCHLAG", abschlag);
    }
    void Punkte(CFall & fall) {
        if (m_accu.m_mapPw.empty()) m_accu.GetAllPw();
        AmHit(fall, [&](CBehHitLine & hit) { m_accu.GetPunkte(hit); });
        Fehler(fall);
    }
    void Regionalfaktor(CFall & fall) {
        m_accu.m_sKzvNr = "alt";
        fall.Aus("LQ", m_accu.GetLQPunktwert());
        fall.Aus("KZVNR", m_accu.m_sKzvNr);
    }
    void Kassenanteil(CFall & fall) {
        std::vector<CPlan> vPlaene(2);
        vPlaene[1].m_iKasProzent = 65;
        const int iPlan = fall.Ein<int>("PLAN");
        AmHit(fall, [&](CBehHitLine & hit) { m_accu.NurDenKassenanteil(vPlaene, hit, iPlan, 80); });
    }
    void Befund(CFall & fall) {
        if (fall.Ein<bool>("LAUF")) m_accu.GetMemForTables();
        AmHit(fall, [&](CBehHitLine & hit) { fall.Aus("JA", m_accu.GetBefund(hit)); });
    }
    void Gruppenname(CFall & fall) {
        m_accu.GetSelectPoolData("T", m_accu.m_vSpTechLst, true);
        m_accu.GetSelectPoolData("S", m_accu.m_vSpGoStat, true);
        fall.Aus("NAME", m_accu.GetLstGrpName(fall.Ein<char>("ART"), fall.Ein<char>("GRP")));
    }
    // Everything that a run asks for; without the trace the same hit comes out.
    void Bewertung(CFall & fall) {
        if (m_accu.m_mapPw.empty()) m_accu.GetAllPw();
        if (fall.Ein<bool>("ERSATZ"))
            m_accu.m_vLstErsatz = {{"f1"_t, ""_t}, {"F1"_t, "f2"_t}, {"f1"_t, "be"_t}, {"x"_t, "fehlt"_t}};
        fall.Nimm("LQ", m_accu.m_iLQPunktwert);
        const CBehHitLine leistung = Hit(fall);
        if (fall.Erwartet("STDFAKTOR")) fall.Aus("STDFAKTOR", m_accu.GetStdFaktor(leistung));
        std::vector<CPlan> vPlaene(1);
        vPlaene[0].m_iKasProzent = 60;
        CBewertungsspur spur;
        CStatAccu accuOhne(m_accu);
        m_accu.m_pSpur = &spur;
        for (CStatAccu * pAccu : {&m_accu, &accuOhne}) {
            CBehHitLine hit = leistung;
            pAccu->GetGOData(hit);
            fall.Aus("ERSETZT", pAccu->GetLstErsatz(hit));
            pAccu->GetPunkte(hit);
            pAccu->GetBetrag(hit, nullptr);
            pAccu->NurDenKassenanteil(vPlaene, hit, 0, 0);
            fall.Genannt(hit);
        }
        m_accu.m_pSpur = nullptr;
        if (fall.Erwartet("SPUR")) fall.Aus("SPUR", Text(spur));
        if (fall.Erwartet("FEHLER")) Fehler(fall);
    }
};

TEST(Bewertung, Faelle) {
    PruefeFaelle<CBewertungTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/bewertung.txt",
                                 {{"betrag", &CBewertungTest::Betrag},
                                  {"punkte", &CBewertungTest::Punkte},
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

std::string s_sGerufen;                          // kind of insurer and region of each call
const SFachbereiche * s_pFachbereiche = nullptr; // of the last call

int TestOrdination(SFachbereiche * pFachbereiche, CTVDesc * pVDesc) {
    s_pFachbereiche = pFachbereiche;
    s_sGerufen += Werte(pVDesc->m_KSART, pVDesc->m_MFRDIG) + " ";
    return 1850;
}

TEST_F(CBewertungTest, FragtDieBibliothekNurFuerDieOrdination) {
    const auto Punkte = [this](char cGoArt, const char * pLstNr, char cSonderKsArt = 0) {
        CBehHitLine hit;
        hit.GOART = cGoArt;
        hit.PUNKTE = 1000;
        hit.LSTNR = pLstNr;
        hit.MFRDIG = "5";
        hit.m_cSonderKsArt = cSonderKsArt;
        m_accu.GetPunkte(hit);
        return hit.PUNKTE;
    };
    m_bibliotheken.Registriere("kelabr", "PunkteOrdination"_t, &TestOrdination);
    EXPECT_EQ(Punkte('b', "1"), 1000) << "no library in this run";
    m_accu.m_pFachbereiche = new SFachbereiche;
    CBewertungsspur spur;
    m_accu.m_pSpur = &spur;
    EXPECT_EQ(Wert(std::vector{Punkte('b', "1", 'A'), Punkte('b', "01"), Punkte('k', "1")}),
              "1850,1000,1000");
    EXPECT_EQ(Zeile(spur.Schritte().front()), "Ordination 1850");
    EXPECT_EQ(Punkte('b', "1"), 1850);
    EXPECT_EQ(s_pFachbereiche, m_accu.m_pFachbereiche);
    EXPECT_EQ(s_sGerufen, "A|5 |5 ");
    EXPECT_EQ(EntlieheneRSets(), 0);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
    CBibliotheken ohne;
    ohne.Registriere("kelabr", "InitialisiereFachbereiche"_t, &TestOrdination);
    const CBibliothekenErsatz ersatz(ohne);
    EXPECT_EQ(Punkte('b', "1"), 0);
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{{SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0}}));
}

} // namespace
} // namespace orvostat
