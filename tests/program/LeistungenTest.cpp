#include "Programmlauf.h"

#include "Leistungstabellen.h"
#include "Praxis.h"
#include "Summenpruefung.h"
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>
#include <filesystem>
#include <functional>

namespace orvostat {
namespace {

using CLeistungenTest = CProgrammTest;

TEST_F(CLeistungenTest, EveryFigureIsWhatSqlMakesOfTheHits) {
    ASSERT_EQ(Laufe("sample a.db --patients 60 --years 2").iCode, 0);
    for (const char * pBefehl :
         {"leistungen a.db", "leistungen a.db --mandant 2 --nebenakten", "leistungen a.db --patient 9999999",
          "leistungen a.db --von 01.01.2030", "hundert a.db --von 01.01.2030", "kassen a.db --nebenakten",
          "kassen a.db --mandant 1", "hundert a.db", "hundert a.db --gruppe9 --faelle 0",
          "hundert a.db --gruppe9 --gruppe9-extra --zweiter-satz --von 01.07.2024 --bis 30.09.2024"}) {
        const SProgrammende ende = Laufe(std::string(pBefehl) + " --check");
        const bool bFremd = std::string(pBefehl).find("9999999") != std::string::npos;
        EXPECT_EQ(ende.iCode, bFremd ? 1 : 0) << pBefehl << '\n' << ende.sFehler;
        EXPECT_EQ(ende.sFehler.find(", 0 weichen ab.") != std::string::npos, !bFremd) << ende.sFehler;
    }
}

TEST_F(CLeistungenTest, TheTablesStandAsWritten) {
    ASSERT_EQ(Laufe("sample praxis.db --patients 60 --years 1").iCode, 0);
    EXPECT_EQ(PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/leistungen.txt"), 6);
}

// Each damage is told, and what can be compared is the same for SQL.
TEST_F(CLeistungenTest, BadRecordsAreTold) {
    ASSERT_EQ(Laufe("sample gut.db --patients 40 --years 1").iCode, 0);
    const struct {
        const char *pSql, *pBefehl, *pMeldung;
    } aFaelle[] = {
        {"DELETE FROM GOBUDGET", "hundert", "hat keine Normen"},
        {"UPDATE GOBUDGET SET GESAMT = 'abc', RVO = '0', VDAK = '-99999999999' WHERE LSTKUERZEL = 'U'",
         "hundert --gruppe9 --alle-leistungen", "4 von 160 Normzeilen"},
        {"UPDATE GOBUDGET SET GUELTIGAB = '20240201' WHERE GUELTIGAB = '20010101'",
         "hundert --bis 31.01.2024", "ab dem 01.02.2024; frühere Hits haben keine"},
        {"UPDATE SELECTPOOL SET SPEXTRA = 'WK VitE' WHERE SPEXTRA = 'WK/VitE'", "hundert", "keinen Nenner"},
        {"UPDATE BEH SET ANZAHL = '99999999' WHERE PATNR LIKE '%4'", "leistungen", "an der Grenze"},
        {"UPDATE BEH SET ANZAHL = '99999999' WHERE PATNR LIKE '%4'", "kassen", "an der Grenze"},
        {"UPDATE BEH SET ANZAHL = '99999999' WHERE PATNR LIKE '%4'", "hundert", "an der Grenze"},
        {"UPDATE BEH SET BETRAG = ' 5000' WHERE PATNR LIKE '%3'", "leistungen", "Nicht nachgerechnet: "},
        {"", "kassen --nur-kasse XX", "Kein Hit ist von der Kasse XX."}};
    for (const auto & fall : aFaelle) {
        std::filesystem::copy_file(Pfad("gut.db"), Pfad("a.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("a.db", fall.pSql);
        const std::string sBefehl = fall.pBefehl;
        const auto iWort = std::min(sBefehl.find(' '), sBefehl.size());
        const SProgrammende ende =
            Laufe(sBefehl.substr(0, iWort) + " a.db" + sBefehl.substr(iWort) + " --check");
        EXPECT_EQ(ende.iCode, 0) << fall.pBefehl << '\n' << ende.sFehler;
        EXPECT_NE((ende.sAus + ende.sFehler).find(fall.pMeldung), std::string::npos)
            << fall.pSql << '\n'
            << ende.sAus << ende.sFehler;
    }
}

// A figure that is wrong by one is found, whatever it is.
TEST_F(CLeistungenTest, TheCheckNoticesEachFigure) {
    ASSERT_EQ(Laufe("sample a.db --patients 30 --years 1").iCode, 0);
    const std::string sDatei = Pfad("a.db").string();
    const CPraxis praxis(sDatei, EModus::Lesen);
    CStatAccu accu;
    accu.SetZeitraum("20240101"_t, "20240331"_t);
    accu.SetIsAbgerechnet(true);
    accu.SetIsErfasst(true);
    ASSERT_EQ(CLauf(accu, {}).Laufe(), ELauf::Fertig);
    const std::vector<CBehHitLine> & vHits = accu.m_vBehHits;
    CLSSum gut;
    gut.Analyse("", vHits, nullptr);
    CKasArt100F::s_vVerhLst = {{" U "_t, " Zst "_t}};
    gut.m_100F.LoadBudgets("20240101"_t, "20240331"_t);
    CLSSum kassen;
    for (const CBehHitLine & hit : vHits)
        kassen.AddKasData(hit);
    kassen.AnalyseKasDataSum("", kassen.m_vKasData);
    CLSSum hundert(gut);
    hundert.m_vFaelle.clear();
    const SHundertauftrag auftrag{.bMitGruppe9 = true};
    hundert.Analyse100Fall("", vHits, false, 0, true, false, false);

    const auto Abweichungen = [&](CLSSum sum, int iWas, const std::function<void(CLSSum &)> & fVerstelle) {
        fVerstelle(sum);
        const SSummenpruefung p = iWas == 0   ? PruefeLeistungen(vHits, "", sum)
                                  : iWas == 1 ? PruefeKassen(vHits, "", sum)
                                              : PruefeHundert(vHits, "", sum, auftrag, sDatei);
        EXPECT_TRUE(p.bGerechnet) << p.sFehler;
        return p.iAbweichungen;
    };
    const CLSSum * aSummen[] = {&gut, &kassen, &hundert};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Abweichungen(*aSummen[i], i, [](CLSSum &) {}), 0);
    const struct {
        int iWas;
        std::function<void(CLSSum &)> fVerstelle;
    } aFaelle[] = {
        {0, [](CLSSum & s) { ++s.m_Praxis.m_iAnzFaelle; }},
        {0, [](CLSSum & s) { ++s.m_Praxis.m_KasseNetto.ANTEILPRAXIS; }},
        {0, [](CLSSum & s) { s.m_vBeh[1].m_SumStd.BETRAG += CDBetrag::AusEinheiten(1, 'e'); }},
        {0, [](CLSSum & s) { --s.m_vBeh[0].m_vLstGrp[0].m_vLst[0].ANTEILBEH; }},
        {0, [](CLSSum & s) { ++s.m_Praxis.m_vLstGrp[0].m_Sum.PUNKTE; }},
        {0, [](CLSSum & s) { ++s.m_vBehTage[0].second; }},
        {0, [](CLSSum & s) { ++s.m_vPraxisTage[1].second; }},
        {1, [](CLSSum & s) { ++s.m_vKas[2].m_iAnzFaelle; }},
        {1, [](CLSSum & s) { ++s.m_KasSum.m_KasseGes.ANTEILBEH; }},
        {1, [](CLSSum & s) { ++s.m_vKas[1].m_vLstGrp[0].m_vLst[0].ANTEILPRAXIS; }},
        {2, [](CLSSum & s) { ++s.m_100F.m_aSpalten[5].m_iAnzFaelle; }},
        {2, [](CLSSum & s) { ++s.m_100F.m_aSpalten[0].m_vLst[0].m_iF100Soll; }},
        {2, [](CLSSum & s) { ++s.m_100F.m_aSpalten[4].m_vLst[1].m_iAnzDiff; }},
        {2, [](CLSSum & s) { ++s.m_100F.m_aSpalten[1].m_vLst[0].m_iAnzJe100Fall; }},
        {2, [](CLSSum & s) { ++s.m_100F.m_aSpalten[0].m_vVerh[0].second; }},
    };
    for (const auto & fall : aFaelle)
        EXPECT_EQ(Abweichungen(*aSummen[fall.iWas], fall.iWas, fall.fVerstelle), 1) << &fall - aFaelle;
}

} // namespace
} // namespace orvostat
