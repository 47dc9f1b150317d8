#include "Programmlauf.h"

#include "Lauf.h"
#include "Muster.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"

#include <array>
#include <fstream>
#include <set>
#include <tuple>

namespace orvostat {
namespace {

class CLaufTest : public CProgrammTest {
protected:
    CLaufTest() { EXPECT_EQ(Laufe("sample a.db --patients 40 --years 1").iCode, 0); }
};

// What is missing in the data has its reading: the run goes on and says so, or ends with the stated message.
TEST_F(CLaufTest, MissingRowsAreReadAsStated) {
    const struct {
        const char * pSql;
        const char * pText;
        int iCode;
    } aFaelle[] = {
        {"DELETE FROM BILL", "Hits ohne Rechnung", 0},
        {"DELETE FROM ADR WHERE ADRART = 'p'", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM PAT", "Hits ohne lesbaren Patienten", 0},
        {"DELETE FROM VDESC", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM ORVOKAS", "Hits ohne Versicherung oder Kasse am Tag", 0},
        {"DELETE FROM GO", "keine Gebührenzeile zur Leistung", 0},
        {"DELETE FROM PUNKTWERT", "kein Punktwert für eine Kassenleistung", 0},
        {"DELETE FROM PLAN", "der Plan der Leistung fehlt", 0},
        {"DELETE FROM BEH", "0 Behandlungen gelesen, 0 Hits", 0},
        {"DELETE FROM MANDANT", "Kein Mandant verfügbar!", 1},
        {"DELETE FROM LEB", "Kein Behandler verfügbar!", 1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL = 'hvmbudget'", "Keine HVM-Gruppen im Selectpool verfügbar!",
         1},
        {"DELETE FROM SELECTPOOL WHERE SPPOOL LIKE 'gostattyp%'",
         "Keine GO-Statistiktypen im Selectpool verfügbar!", 1},
    };
    for (const auto & fall : aFaelle) {
        std::filesystem::copy_file(Pfad("a.db"), Pfad("b.db"),
                                   std::filesystem::copy_options::overwrite_existing);
        Sql("b.db", fall.pSql);
        const SProgrammende ende = Laufe("run b.db");
        EXPECT_EQ(ende.iCode, fall.iCode) << fall.pSql;
        EXPECT_NE((ende.sAus + ende.sFehler).find(fall.pText), std::string::npos) << fall.pSql << '\n'
                                                                                  << ende.sAus;
    }
}

TEST_F(CLaufTest, ASelectionThatFitsNobodyIsNoFailure) {
    for (const char * pWahl :
         {"--selektion zzz", "--alter 150..160", "--behandler 99", "--von 01.01.1999 --bis 02.01.1999"}) {
        const SProgrammende ende = Laufe("run a.db " + std::string(pWahl));
        const bool bLeer = ende.iCode == 0 && ende.sAus.find(" 0 Hits") != std::string::npos;
        const bool bKeinBehandler =
            ende.iCode == 1 && ende.sFehler.find("Kein Behandler") != std::string::npos;
        EXPECT_TRUE(bLeer || bKeinBehandler) << pWahl << '\n' << ende.sAus << ende.sFehler;
    }
}

TEST_F(CLaufTest, WrongUsageIsTwo) {
    for (const char * pWahl :
         {"--von 31.02.2024", "--sort alter", "--status offen", "--recall-vor gestern", "--unbekannt"})
        EXPECT_EQ(Laufe("run a.db " + std::string(pWahl)).iCode, 2) << pWahl;
    EXPECT_EQ(Laufe("run").iCode, 2);
    EXPECT_EQ(Laufe("explain a.db --patient 1001").iCode, 2);
}

// The engine reads a fraction of a ten-thousandth that the SQL does not: the comparison has to notice.
TEST_F(CLaufTest, TheComparisonWithSqlFindsWhatDiffers) {
    EXPECT_EQ(Laufe("run a.db --check").iCode, 0);
    Sql("a.db", "UPDATE PUNKTWERT SET PWWEST = PWWEST || '.9', PWOST = PWOST || '.9'");
    const SProgrammende ende = Laufe("run a.db --check");
    EXPECT_EQ(ende.iCode, 1);
    EXPECT_NE(ende.sAus.find("Abweichungen von der Gegenrechnung mit SQL"), std::string::npos);
}

TEST_F(CLaufTest, EverySectionCanBeReachedAndNarrows) {
    const auto Hits = [this](const std::vector<std::string> & vWahl) {
        std::vector<std::string> vArgumente{"run", "a.db", "--hits", "--format", "csv"};
        vArgumente.insert(vArgumente.end(), vWahl.begin(), vWahl.end());
        const SProgrammende ende = Laufe(vArgumente);
        EXPECT_EQ(ende.iCode, 0) << ende.sFehler;
        return std::count(ende.sAus.begin(), ende.sAus.end(), '\n');
    };
    const auto iAlle = Hits({});
    const std::vector<std::string> avWahlen[] = {
        {"--anrede", "Frau"},
        {"--alter", "18..60"},
        {"--geburtstag", "01.01.2024..30.06.2024"},
        {"--plz", "50667"},
        {"--strasse", ""},
        {"--letzter-besuch", "01.01.2024..30.06.2024"},
        {"--ueberweiser", ""},
        {"--hausarzt", ""},
        {"--ohne-leistung", "01.01.2024..31.12.2024"},
        {"--recall", "*"},
        {"--recall", ""},
        {"--karte", "01.01.2024..31.03.2024"},
        {"--kasse", "keine"},
        {"--goart", "q"},
        {"--leistung", "13a"},
        {"--abrart", "z"},
        {"--status", "abgerechnet"},
        {"--karte", "01.01.2024..31.12.2024", "--karte-fehlt"},
        {"--mfr", "1"},
        {"--rsa"},
        {"--pwlart", "a"},
        {"--selektion", "zzz"},
        {"--anamnese", "zzz"},
    };
    for (const auto & vWahl : avWahlen)
        EXPECT_LT(Hits(vWahl), iAlle) << vWahl.front() << (vWahl.size() > 1 ? " " + vWahl[1] : "");
}

// What the selection leaves out is not valued: it leaves no error.
TEST_F(CLaufTest, TreatmentsOutsideTheSelectionHaveNoErrors) {
    Sql("a.db", "DELETE FROM PUNKTWERT; DELETE FROM PLAN; UPDATE GO SET PWLART = 'a' WHERE GOART = 'k'");
    EXPECT_EQ(Laufe("run a.db").sAus.find(" 0 Fehler"), std::string::npos);
    for (const char * pWahl :
         {"--goart q", "--abrart x", "--leistung zzz", "--pwlart z --abrart b", "--rsa --abrart x"}) {
        const std::string sAus = Laufe("run a.db --ohne-plangatter " + std::string(pWahl)).sAus;
        EXPECT_NE(sAus.find(" 0 Fehler"), std::string::npos) << pWahl << '\n' << sAus;
        EXPECT_TRUE(sAus.find(" 0 Hits") == std::string::npos || sAus.find("Hits ohne") == std::string::npos);
    }
}

// ---- in the process

class CLaufImSpeicher : public ::testing::Test {
protected:
    CLaufImSpeicher() {
        EXPECT_EQ(ErzeugeMuster(*m_pSpeicher, {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pLesend);
    }
    ~CLaufImSpeicher() override {
        EXPECT_EQ(EntlieheneRSets(), 0);
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    static void Waehle(CStatAccu & accu, const CString & sPatient = {}) {
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        accu.SetELab(true);
        accu.SetGLab(true);
        accu.SetPatient(sPatient);
    }

    CRekorder m_rekorder;
    std::shared_ptr<CMemorySpeicher> m_pSpeicher = std::make_shared<CMemorySpeicher>();
    std::shared_ptr<CFehlerspeicher> m_pLesend = std::make_shared<CFehlerspeicher>(m_pSpeicher);

private:
    COberflaecheErsatz m_ersatz{m_rekorder};
};

TEST_F(CLaufImSpeicher, ACancelledRunKeepsWhatItHas) {
    const auto Laufe = [&](int iAntwort) {
        CStatAccu accu;
        Waehle(accu);
        m_rekorder.m_iAbbruchAb = static_cast<int>(m_rekorder.m_vSchritte.size()) + 1;
        m_rekorder.m_vAntworten = {iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA};
        CLauf lauf(accu, SLaufauftrag());
        const ELauf eLauf = lauf.Laufe();
        return std::pair(eLauf, accu.m_vBehHits.size());
    };
    const auto [eJa, iJa] = Laufe(SOLLICH_JA);
    EXPECT_EQ(eJa, ELauf::Abgebrochen);
    EXPECT_GT(iJa, 400U);
    EXPECT_LT(iJa, 513U);
    const auto [eNein, iNein] = Laufe(0);
    EXPECT_EQ(eNein, ELauf::Fertig);
    EXPECT_GT(iNein, 1200U);
    for (const auto & [iPos, iMax] : m_rekorder.m_vSchritte)
        EXPECT_LE(iPos, iMax);
}

TEST_F(CLaufImSpeicher, ASecondRunStartsFromNothing) {
    CStatAccu accu;
    Waehle(accu, "      1001");
    CLauf lauf(accu, SLaufauftrag());
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    const std::vector<CBehHitLine> vErste = accu.m_vBehHits;
    const std::int64_t iBehandlungen = lauf.Zahlen().iBehandlungen;
    EXPECT_NE(accu.m_pRPat, nullptr) << "the record sets stay for whoever reads the tables";
    EXPECT_EQ(accu.m_lAnzHits, static_cast<int>(vErste.size()));
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    EXPECT_EQ(lauf.Zahlen().iBehandlungen, iBehandlungen);
    ASSERT_EQ(accu.m_vBehHits.size(), vErste.size());
    for (std::size_t i = 0; i < vErste.size(); ++i) {
        EXPECT_TRUE(accu.m_vBehHits[i] == vErste[i]);
        EXPECT_EQ(accu.m_vBehHits[i].KASKUERZEL, vErste[i].KASKUERZEL);
        EXPECT_EQ(accu.m_vBehHits[i].PATNAME, vErste[i].PATNAME);
    }
    accu.SetZeitraum("29990101", "");
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    EXPECT_TRUE(accu.m_vBehHits.empty());
    lauf.Nachlauf();
    EXPECT_EQ(accu.m_pRPat, nullptr);
}

// Each record is its patient's, the collective invoices are nobody's, and no laboratory service counts twice.
TEST_F(CLaufImSpeicher, SideRecordsAreChosenAsTreatmentsAre) {
    using AZahlen = std::array<std::size_t, 5>;
    const auto Laufe = [](CStatAccu & accu) {
        CLauf lauf(accu, {.bNebenakten = true});
        EXPECT_EQ(lauf.Laufe(), ELauf::Fertig);
        return AZahlen{accu.m_vBehHits.size(), accu.m_vGlabHits.size(), accu.m_vGipsHits.size(),
                       accu.m_vRechHits.size(), accu.m_vVerordnungHits.size()};
    };
    CStatAccu alle;
    Waehle(alle);
    const AZahlen aAlle = Laufe(alle);
    EXPECT_FALSE(alle.m_vGlabFaktHits.empty());
    std::set<std::tuple<CString, CString, CString>> setBehandelt;
    int iBloecke = 0;
    for (const CBehHitLine & hit : alle.m_vBehHits)
        if (!hit.ISORVOPAT && !hit.LFDLBLOCK.IsEmpty())
            setBehandelt.emplace(hit.PATNR, hit.LFDLBLOCK, hit.LSTNR);
    for (const CBehHitLine & hit : alle.m_vBehHits) {
        if (!hit.ISELAB) continue;
        ++iBloecke;
        EXPECT_FALSE(setBehandelt.contains({hit.PATNR, hit.LFDLBLOCK, hit.LSTNR}));
        EXPECT_FALSE(hit.PATNAME.IsEmpty());
    }
    EXPECT_GT(iBloecke, 0);

    AZahlen aSumme = {};
    std::set<CString> setPatienten; // an invoice of an association's package has a number of its own
    for (const CPat & pat : alle.m_vPat)
        setPatienten.insert(pat.PATNR);
    for (const CRechHitLine & hit : alle.m_vRechHits)
        setPatienten.insert(hit.PATNR);
    for (const CString & sPatNr : setPatienten) {
        CStatAccu accu;
        Waehle(accu, sPatNr);
        const AZahlen aZahlen = Laufe(accu);
        for (std::size_t i = 0; i < aSumme.size(); ++i)
            aSumme[i] += aZahlen[i];
        EXPECT_TRUE(accu.m_vGlabFaktHits.empty());
    }
    EXPECT_EQ(aSumme, aAlle);

    CStatAccu niemand;
    Waehle(niemand);
    niemand.SetChAnrede(true);
    niemand.SetPatAnrede("zzz");
    EXPECT_EQ(Laufe(niemand), AZahlen());
}

TEST_F(CLaufImSpeicher, AStoreThatFailsOnTheWayEndsTheRun) {
    CStatAccu accu;
    Waehle(accu);
    CLauf lauf(accu, {.bNebenakten = true});
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    const int iAlle = m_pLesend->Operationen();
    int iUnlesbar = 0;
    for (int i = 1; i < iAlle; i += iAlle / 25) {
        m_pLesend->FehlerBei(i);
        if (lauf.Laufe() == ELauf::Unlesbar) ++iUnlesbar;
    }
    EXPECT_GT(iUnlesbar, 5) << "a read of a single row that fails reads as a missing row";
}

// ---- the README's examples

TEST_F(CProgrammTest, TheReadmeShowsWhatTheProgramSays) {
    std::ifstream ein(std::filesystem::path(ORVOSTATBS_SOURCE_DIR) / "README.md");
    std::string sZeile;
    while (std::getline(ein, sZeile) && !sZeile.starts_with("$ orvostat"))
        ;
    int iBeispiele = 0;
    while (sZeile.starts_with("$ orvostat ")) {
        const std::string sBefehl = sZeile.substr(11);
        std::string sSoll;
        while (std::getline(ein, sZeile) && !sZeile.starts_with("$ ") && sZeile != "```")
            sSoll += sZeile + '\n';
        EXPECT_EQ(Laufe(sBefehl).sAus, sSoll) << sBefehl;
        ++iBeispiele;
    }
    EXPECT_EQ(iBeispiele, 3);
}

} // namespace
} // namespace orvostat
