// A run's hits in files: a set that somebody else can read, and a run that keeps its table short by moving hits out.
#include "Muster.h"
#include "orvostatbs/files/Statistikdatei.h"
#include "orvostatbs/files/ZwSich2File.h"
#include "orvostatbs/lauf/Lauf.h"
#include "support/Praxis.h"
#include "support/Verzeichnis.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace orvostat {
namespace {

class CSchreiber : public CStat2File<CStdioFile> {
public:
    CSchreiber() : CStat2File(nullptr) { m_sDateiName = "FS"; }
    int * SetLineStruct() override { return iFS_SICHERUNG; }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        for (const CBehHitLine & hit : m_pFilter->m_vBehHits) {
            m_Line.MoveHit(hit);
            WriteLines(file, m_Line);
        }
        return CODE_OK;
    }
};

template <class T> class CLeser : public CFile2Stat<T> {
public:
    CLeser() : CFile2Stat<T>(nullptr) { this->m_sDateiName = "FS"; }
    int * SetLineStruct() override { return iFS_SICHERUNG; }
};

// The figures of a run as scripts/check-set wants them: "Spalte;Wert;Hits;Punkte;Betrag".
std::string Zahlen(const CStatAccu & accu) {
    struct SSumme {
        int iHits = 0;
        std::int64_t iPunkte = 0;
        CDBetrag betrag{0.0, 'e'};
    };
    std::map<std::string, SSumme> mapSummen;
    for (const CBehHitLine & hit : accu.m_vBehHits)
        for (const CString & sGruppe :
             {";"_t, "BEHANDLERNR;"_t + hit.BEHANDLERNR, "KASKUERZEL;"_t + hit.KASKUERZEL,
              "GOSTATISTIKART;"_t + (hit.GOSTATISTIKART == 0 ? CString() : CString(hit.GOSTATISTIKART))}) {
            SSumme & summe = mapSummen[sGruppe.Utf8()];
            ++summe.iHits;
            summe.iPunkte += hit.PUNKTE;
            summe.betrag += hit.BETRAG;
        }
    std::string s = "Spalte;Wert;Hits;Punkte;Betrag\n";
    for (const auto & [sGruppe, summe] : mapSummen)
        s += sGruppe + ';' + std::to_string(summe.iHits) + ';' + std::to_string(summe.iPunkte) + ';' +
             summe.betrag.ToExt(0, false).Utf8() + '\n';
    return s;
}

class SatzTest : public CPraxisTest {
protected:
    SatzTest() {
        std::filesystem::create_directories(m_verzeichnis / "daten" / "stat" / "01");
        EXPECT_EQ(ErzeugeMuster(m_praxis.Speicher(), {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
        m_accu.SetIsAbgerechnet(true);
        m_accu.SetIsErfasst(true);
        m_accu.SetZeitraum("20240101", "20241231");
    }
    CStatAccu m_accu;
    CStatAccu m_gelesen;
};

TEST_F(SatzTest, EinFremderLeserKommtAufDieselbenSummen) {
    ASSERT_EQ(CLauf(m_accu, {}).Laufe(), ELauf::Fertig);
    ASSERT_GT(m_accu.m_vBehHits.size(), 1000U);
    CSchreiber schreiber;
    schreiber.SetFilter(&m_accu);
    ASSERT_TRUE(schreiber.WriteDaten());
    CLeser<CStdioFile> leser;
    leser.SetFilter(&m_gelesen);
    ASSERT_TRUE(leser.ReadDaten());
    EXPECT_EQ(Zahlen(m_gelesen), Zahlen(m_accu));

    const std::filesystem::path daten = m_verzeichnis / "daten";
    const auto Pruefe = [&](const std::string & sZahlen) {
        std::ofstream(daten / "zahlen.csv") << sZahlen;
        const std::string sBefehl = ORVOSTATBS_SOURCE_DIR "/scripts/check-set " +
                                    (daten / "stat" / "01" / "FS.SVE").string() + " " +
                                    (daten / "zahlen.csv").string() + " >" + (daten / "antwort").string();
        return std::system(sBefehl.c_str()); // NOLINT(cert-env33-c): the command is this test's own
    };
    std::string sZahlen = Zahlen(m_accu);
    EXPECT_EQ(Pruefe(sZahlen), 0) << LiesDatei(daten / "antwort");
    sZahlen[sZahlen.size() - 2] ^= 1; // a cent beside the truth
    EXPECT_NE(Pruefe(sZahlen), 0);
}

TEST_F(SatzTest, EinLaufMitZwischensicherungenGibtDieselbenSummen) {
    ASSERT_EQ(CLauf(m_accu, {}).Laufe(), ELauf::Fertig);
    const std::string sZahlen = Zahlen(m_accu);

    CZwSich2File sicherung("FS", CString(), iFS_SICHERUNG, nullptr);
    sicherung.m_bZwSich = true;
    int iSicherungen = 0;
    const auto Sichere = [&] {
        ++iSicherungen;
        return sicherung.WriteZwDaten(m_accu.m_vBehHits, &m_accu);
    };
    SLaufauftrag auftrag;
    auftrag.fNach = [&](ELaufstelle) { return m_accu.m_vBehHits.size() < 100 || Sichere(); };
    CLauf lauf(m_accu, auftrag);
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    Sichere(); // what has come in since the last one
    EXPECT_GT(iSicherungen, 8);
    CLeser<CDBStdioFile> leser;
    leser.SetFilter(&m_gelesen);
    ASSERT_TRUE(leser.ReadDaten());
    EXPECT_EQ(static_cast<std::int64_t>(m_gelesen.m_vBehHits.size()), lauf.Zahlen().iHits);
    EXPECT_EQ(Zahlen(m_gelesen), sZahlen);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
}

} // namespace
} // namespace orvostat
