// Sets by name: the selection file, a whole run written and reopened, intermediate saves, the spreadsheet link.
#include "files/DateiTest.h"
#include "orvostatbs/files/Arbeitsmappe.h"
#include "support/Rechte.h"
#include "support/Verzeichnis.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace orvostat {
namespace {

template <class T> class CSchreiber : public CStat2File<T> {
public:
    CSchreiber() : CStat2File<T>(nullptr) { this->m_sDateiName = "LS"; }
    using CStat2File<T>::Vec2String;
    int * m_pLayout = iTP_SICHERUNG;
    int * SetLineStruct() override { return m_pLayout; }
    int DoData(T & file, int &) override {
        this->WriteTitel(file);
        for (const CBehErrors & fehler : this->m_pFilter->m_vBehErrors) {
            this->m_Line.MoveError2File(fehler);
            this->WriteErrorLines(file, this->m_Line);
        }
        for (const CBehHitLine & hit : this->m_pFilter->m_vBehHits) {
            this->m_Line.MoveHit(hit);
            this->WriteLines(file, this->m_Line);
        }
        return CODE_OK;
    }
};

template <class T> class CLeser : public CFile2Stat<T> {
public:
    CLeser() : CFile2Stat<T>(nullptr) { this->m_sDateiName = "LS"; }
    int * m_pLayout = iTP_SICHERUNG;
    std::size_t m_iLeer = 9; // hits in the table when the hook was called
    int * SetLineStruct() override { return m_pLayout; }
    bool OnlyForProgBeforeMoveDataFromFile() override {
        m_iLeer = this->m_pFilter->m_vBehHits.size();
        return false; // without effect
    }
};

CString Ini() { return GetOrvoStatWSPath() + "LS.ISV"; }

template <class T> class StatistikdateiTest : public CDateiTest {
protected:
    StatistikdateiTest() {
        m_schreiber.SetFilter(&m_accu);
        m_leser.SetFilter(&m_gelesen);
    }
    CSchreiber<T> m_schreiber;
    CLeser<T> m_leser;
    CStatAccu m_gelesen;
};
using CKlassen = ::testing::Types<CStdioFile, CDBStdioFile>;
TYPED_TEST_SUITE(StatistikdateiTest, CKlassen);
using StatistikdateiSeite = StatistikdateiTest<CStdioFile>;

TYPED_TEST(StatistikdateiTest, SelektionHinUndZurueck) {
    const std::string sSelektion =
        "[Selektion]\nDatumVon=01.10.2023\nDatumBis=31.12.2023\nPraxisinhaber= 1\nBehandler=\"  5 12\"\n"
        "Patient=      4711\nKasse=AOK\nKasStat=1\nKasMedStat=2\nPatSelektion=s\nSortierung=1\n"
        "Erweiterung=a;b\nNurMitMwSt=1\nTecMitMwSt=0\nProzPrivatSachkosten=-15\n";
    Lege<TypeParam>(Ini(), sSelektion);
    auto & leser = this->m_leser;
    EXPECT_TRUE(leser.ReadSelektionsFile(Ini()) && !leser.ExistAllFiles());
    const CStatAccu & g = this->m_gelesen;
    EXPECT_EQ(Werte(g.GetAbDatum(), g.GetBisDatum(), g.GetMandant(), Elemente(g.GetLebs()), g.GetPatient(),
                    g.GetKasKuerzel(), g.GetKasStat(), g.GetKasMedStat(), g.GetPatSelekt(), g.GetSortierung(),
                    g.GetArtStat(), g.GetNurMitMwSt(), g.GetTecMitMwSt(), g.GetProzPrivatSachkosten()),
              "20231001|20231231| 1|  5, 12|      4711|AOK|1|2|s|1|a;b|1||-15");
    this->m_gelesen.m_lAnzHits = 1200;
    this->m_schreiber.SetFilter(&this->m_gelesen);
    this->m_schreiber.m_sStatistikart = "LS";
    this->m_schreiber.SetStatVersion("2");
    EXPECT_TRUE(this->m_schreiber.WriteDaten() && leser.ExistAllFiles());
    EXPECT_EQ(Inhalt<TypeParam>(Ini()),
              "[Allgemein]\nStatistikart=LS\nVersion=2\nErstellungsdatum=01.07.2024\nErstellungszeit=09:05\n"
              "AnzahlHits=1200\n" +
                  sSelektion);
    EXPECT_EQ(leser.GetStatVersion() + leser.GetLastEditDate(), "201.07.2024"_t);
    EXPECT_EQ(leser.GetLastEditDateText(),
              "F3 - Zuletzt erstellte Liste vom 01.07.2024 um 09:05 Uhr bearbeiten"_t);
}

TYPED_TEST(StatistikdateiTest, SelektionMitLuecken) {
    auto & leser = this->m_leser;
    this->m_gelesen.SetKasse("alt");
    for (const char * pText : {"[Selektion]\nDatumVon=01.10.2023\nKasse=x\n", "DatumVon=1\nDatumBis=2\n",
                               "[Selektion]\nDatumBis=01.10.2023\nKasse=x\n"}) {
        Lege<TypeParam>(Ini(), pText);
        EXPECT_FALSE(leser.ReadSelektionsFile(Ini())) << pText;
        EXPECT_EQ(this->Gesagt(),
                  "E ReadSelektionsFile: Lesen der Filterselektionen für Statistik gescheitert!");
        EXPECT_EQ(this->m_gelesen.GetKasKuerzel(), "alt"_t);
    }
    EXPECT_FALSE(leser.ReadSelektionsFile(Ini() + "x"));
    EXPECT_EQ(leser.ReadAnzHits(Ini() + "x"), 0);
    EXPECT_EQ(leser.GetLastEditDateText(), "F3 - Zuletzt erstellte Liste  bearbeiten"_t);

    // What is read of a key, as it is written again.
    const struct {
        const char *pGelesen, *pGeschrieben;
    } vFaelle[] = {{"", "DatumVon=\n"},
                   {"", "Praxisinhaber=\nBehandler=\nPatient=\nKasse=\n"},
                   {"", "Sortierung=*\nErweiterung=*\nNurMitMwSt=0\nTecMitMwSt=0\nProzPrivatSachkosten=0\n"},
                   {"Praxisinhaber=x\n", "Praxisinhaber= 0\n"},
                   {"Behandler=12\n", "Behandler=\n"},
                   {"Behandler=  5\n", "Behandler=\"  5\"\n"},
                   {"Behandler=  51234\n", "Behandler=\"  5123  4\"\n"},
                   {"Sortierung=\n", "Sortierung=\n"},
                   {"NurMitMwSt=7\nTecMitMwSt=x\n", "NurMitMwSt=1\nTecMitMwSt=0\n"},
                   {"TecMitMwSt=1\n", "TecMitMwSt=1\n"},
                   {"ProzPrivatSachkosten=9x\n", "ProzPrivatSachkosten=9\n"}};
    this->m_schreiber.SetFilter(&this->m_gelesen);
    for (const auto & fall : vFaelle) {
        this->m_gelesen.SetLebs({"alt"});
        Lege<TypeParam>(Ini(), "[Selektion]\nDatumVon=\nDatumBis=31.12.2023\n" + std::string(fall.pGelesen));
        EXPECT_TRUE(leser.ReadSelektionsFile(Ini()) && this->m_schreiber.CreateSelektionsFile(Ini()));
        EXPECT_NE(Inhalt<TypeParam>(Ini()).find(std::string("\n") + fall.pGeschrieben), std::string::npos)
            << fall.pGelesen << Inhalt<TypeParam>(Ini());
    }
    CString sText;
    this->m_schreiber.Vec2String({"1", "12345", ""}, sText, 3);
    EXPECT_EQ(sText, "  112345   "_t);
}

// The examples in docs/dateien.md are what is written.
TEST_F(StatistikdateiSeite, ZeigtWasGeschriebenWird) {
    const std::string sSeite = LiesDatei(ORVOSTATBS_SOURCE_DIR "/docs/dateien.md");
    const std::size_t iAnfang = sSeite.find("[Allgemein]\nStatistikart=LS");
    Lege<CStdioFile>(
        Ini(),
        std::string(AusUtf8(sSeite.substr(iAnfang, sSeite.find("```", iAnfang) - iAnfang)).Sicht().Text()));
    m_leser.SetFilter(&m_accu);
    ASSERT_TRUE(m_leser.ReadSelektionsFile(Ini()));
    for (const bool bKasse : {true, false}) {
        CBehHitLine & hit = m_accu.m_vBehHits.emplace_back();
        hit.PRAXISNR = " 1";
        hit.BEHANDLERNR = bKasse ? CString("  5") : CString(" 12");
        hit.DATUM = "20240115"_t;
        hit.ANZAHL = 1;
        hit.BETRAG = bKasse ? CDBetrag("e1376.25"_t) : CDBetrag("e-500");
        hit.GOART = bKasse ? 'k' : 'q';
        hit.KASKUERZEL = bKasse ? "BKKÖ01"_t : CString();
        hit.PUNKTE = bKasse ? 1200 : 0;
        hit.FREMDKASSE = bKasse;
    }
    CBehErrors & fehler = m_accu.m_vBehErrors.emplace_back();
    fehler.PATNR = "      1234"_t;
    fehler.DATUM = "20240115"_t;
    fehler.LSTIN = "Ä1";
    fehler.m_iFehler = 5;
    m_accu.m_lAnzHits = 2;
    m_schreiber.m_pLayout = iHVM_SICHERUNG;
    m_schreiber.m_sStatistikart = "LS";
    m_schreiber.SetStatVersion("2");
    ASSERT_TRUE(m_schreiber.WriteDaten());
    for (const CString & sDatei : {m_schreiber.GetDatFilename(), Ini()}) {
        const std::string sText = Inhalt<CStdioFile>(sDatei);
        EXPECT_NE(sSeite.find("```text\n" + sText + "```\n"), std::string::npos) << sText;
    }
}

// A number of hits is a hint: what the data file cannot hold is not reserved.
TYPED_TEST(StatistikdateiTest, AnzahlHitsReserviertNurWasSeinKann) {
    Lege<TypeParam>(GetOrvoStatWSPath() + "LS.SVE", std::string(64 * 20'000, 'x'));
    for (const auto & [lHits, bPlatz] : {std::pair{5000L, true},
                                         {20'000, true},
                                         {20'001, false},
                                         {-5, false},
                                         {9223372036854775807, false}}) {
        std::vector<CBehHitLine> & vHits = this->m_gelesen.m_vBehHits;
        std::vector<CBehHitLine>().swap(vHits);
        Lege<TypeParam>(Ini(), "[Allgemein]\nAnzahlHits=" + std::to_string(lHits) + "\n");
        EXPECT_EQ(this->m_leser.ReadAnzHits(Ini()), lHits);
        EXPECT_EQ(vHits.capacity(), bPlatz ? static_cast<std::size_t>(lHits) : 0);
    }
}

// ---- a whole run

// Hits whose amounts go to the last decimal that a stored text keeps.
CBehHitLine MakeHit(int i) {
    CBehHitLine hit;
    hit.PATNR = RightFix(itoc(1000 + i % 97), 10);
    hit.DATUM = "202401" + RightFix(itoc(1 + i % 28), 2, '0');
    hit.BETRAG = CDBetrag((i % 7 == 0 ? "e-" : "e") + itoc(1 + i * 31) + (i % 3 == 0 ? ".125" : ""));
    if (i % 5 != 0) hit.ZUSCHLAG = CDBetrag("e" + itoc(i));
    hit.PUNKTWERT = CDPw("e11234.5");
    hit.PUNKTE = i;
    return hit;
}

TYPED_TEST(StatistikdateiTest, EinLaufWirdGespeichertUndWiederGeoeffnet) {
    CStatAccu & g = this->m_gelesen;
    for (int i = 0; i < 300; ++i)
        this->m_accu.m_vBehHits.push_back(MakeHit(i));
    EXPECT_TRUE(this->m_schreiber.WriteDaten() && this->m_leser.ReadDaten());
    ASSERT_EQ(g.m_vBehHits.size(), 300u);
    for (std::size_t i = 0; i < 300; ++i)
        EXPECT_EQ(Aenderungen(this->m_accu.m_vBehHits[i], g.m_vBehHits[i]), "");

    int aiLayout[] = {0, 5, 17, 21, -1};
    this->m_leser.m_pLayout = aiLayout;
    Lege<TypeParam>(this->m_leser.GetDatFilename(),
                    "ART;PATNR\nH;1;20240101;x\nG;;;y\nE;2;\nP;3;\nK;4;\nI;5;\nR;6;\nW;7;\nHH;8;\nh;9;\n"
                    "U;;;b\nU;;;a\nU;;;b\n");
    g.m_vGlabHits.resize(1); // not a file's, as the prescriptions are not
    g.m_vVerordnungHits.resize(1);
    for (int i = 0; i < 2; ++i) { // again: the tables are emptied, the referrals are kept
        g.m_iGlabPos = g.m_iErrPos = g.m_iGipsPos = g.m_iRechPos = 7;
        EXPECT_TRUE(this->m_leser.ReadDaten());
        EXPECT_EQ(Werte(this->m_leser.m_iLeer, g.m_vBehHits, g.m_vBehErrors.size(), g.m_vPat, g.m_vKas.size(),
                        g.m_vGipsHits, g.m_vRechHits, g.m_vGlabFaktHits, g.m_vGlabHits, g.m_vVerordnungHits,
                        Elemente(g.m_vUewStrings)),
                  "|2|1|1|1|1|1||1|1|a,b");
        EXPECT_EQ(Werte(g.m_iGlabPos, g.m_iErrPos, g.m_iGipsPos, g.m_iRechPos), "7|-1|-1|-1");
        g.m_vUewStrings.clear();
    }
    EXPECT_EQ(Werte(g.m_vBehHits[0].DATUM, g.m_vBehHits[0].TEXT, g.m_vBehHits[1].TEXT,
                    g.m_vBehErrors.Lesend()[0].PATNR, g.m_vPat[0].PATNR, g.m_vPat[0].m_bPatValid,
                    g.m_vKas.Lesend()[0].m_sKasSort, g.m_vGipsHits[0].PATNR, g.m_vRechHits[0].PATNR),
              "20240101|x|y|2|3|1|4|5|6");
    EXPECT_EQ(this->m_rekorder.m_vSchritte.back().first, 15); // one more than the lines
    CStatAccu anderer;                                        // as many texts, but not these
    anderer.m_vUewStrings = {"x", "y"};
    this->m_leser.SetFilter(&anderer);
    CStatLines line;
    std::string s;
    for (const char * pArt : {"W", "HH", "", "E", "H", "P", "K", "I", "G", "R", "U"}) {
        line.ART = line.TEXT = pArt;
        s += this->m_leser.MoveDataFromFile(line) ? '1' : '0';
        s += line.ART.IsEmpty() ? Elemente(anderer.m_vUewStrings) : "";
    }
    EXPECT_EQ(s + Elemente(anderer.m_vUewStrings), "000a,b01111111U,a,b");

    this->m_leser.m_pLayout = nullptr;
    EXPECT_FALSE(this->m_leser.ReadDaten());
    CStatAccu ohnePools;
    this->m_leser.SetFilter(&ohnePools);
    dbDatabaseRO.Verbinde(std::make_shared<CMemorySpeicher>());
    EXPECT_FALSE(this->m_leser.ReadDaten());
    EXPECT_EQ(this->Gesagt(), "");
}

// A full disk at any moment: no set is called complete with lost lines.
TYPED_TEST(StatistikdateiTest, EinScheiternHinterlaesstKeinenFertigenSatz) {
    this->m_accu.m_vBehHits.push_back(MakeHit(1));
    for (const auto eWo : {CFehlerdateien::OEFFNEN, CFehlerdateien::SCHREIBEN, CFehlerdateien::SICHERN,
                           CFehlerdateien::SCHLIESSEN, CFehlerdateien::LOESCHEN, CFehlerdateien::LESEN}) {
        EXPECT_TRUE(this->m_schreiber.WriteDaten() && this->m_leser.ReadDaten());
        this->Stoere(eWo);
        EXPECT_EQ(this->m_schreiber.WriteDaten(), eWo == CFehlerdateien::LESEN);
        EXPECT_TRUE(eWo != CFehlerdateien::LESEN || !this->m_leser.ReadDaten());
        this->Stoere();
        // The former set stands as it was where it could not go.
        EXPECT_EQ(this->m_leser.ExistAllFiles(),
                  eWo >= CFehlerdateien::LOESCHEN || eWo == CFehlerdateien::LESEN);
        EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
    }
}

// ---- intermediate saves

TYPED_TEST(StatistikdateiTest, Zwischensichern) {
    if (!std::is_same_v<TypeParam, CDBStdioFile>) return;
    CZwSich2File zw("LS", "egal", iFS_SICHERUNG, nullptr);
    CStatAccu & accu = this->m_accu;
    // The lines of the file after a save of so many hits.
    const auto Sichere = [&](int iHits) {
        for (int i = 0; i < iHits; ++i)
            accu.m_vBehHits.push_back(MakeHit(i));
        EXPECT_TRUE(zw.WriteZwDaten(accu.m_vBehHits, &accu));
        const std::string s = Inhalt<CDBStdioFile>(zw.GetDatFilename());
        return s == "-" ? -1 : std::count(s.begin(), s.end(), '\n');
    };
    EXPECT_EQ(Sichere(3), -1); // switched off
    EXPECT_EQ(accu.m_vBehHits.size(), 3u);
    std::vector<CBehHitLine>().swap(accu.m_vBehHits);
    zw.m_bZwSich = true;
    EXPECT_EQ(Sichere(0), 0);
    EXPECT_GE(accu.m_vBehHits.capacity(), 5000u);
    Lege<CDBStdioFile>(Ini(), "x");
    EXPECT_EQ(Sichere(3), 3);
    EXPECT_TRUE(accu.m_vBehHits.empty());
    EXPECT_FALSE(FileExistsDB(Ini()));
    EXPECT_EQ(Sichere(2), 5);
    EXPECT_TRUE(this->m_rekorder.m_vBoxTexte.empty() && this->Gesagt().empty());
    this->Stoere(CFehlerdateien::SICHERN); // the hits are lost, and the user is told
    Sichere(1);
    EXPECT_TRUE(accu.m_vBehHits.empty());
    EXPECT_NE(this->Gesagt(), "");
    this->Stoere();
    EXPECT_TRUE(Inhalt<CDBStdioFile>(zw.GetDatFilename()).starts_with("H;      1000;"));
    for (int i = 0; i < 2; ++i) {
        zw.DeleteZwFiles();
        EXPECT_FALSE(FileExistsDB(zw.GetDatFilename()));
    }
    EXPECT_EQ(this->Gesagt(), "");
}

// ---- the spreadsheet link

std::string s_sRufe;

class CTestplatz final : public CArbeitsplatz {
public:
    int m_iProfile = 99; // that many succeed
    bool StarteProgramm(const CString & sBefehl, int iAnzeige) override {
        s_sRufe += sBefehl.Utf8() + " " + std::to_string(iAnzeige) + "\n";
        return false; // without effect
    }
    void MerkeTempDatei(const CString & sDatei) override { s_sRufe += sDatei.Utf8() + "\n"; }
    int SetzeProfil(const CString &, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        s_sRufe += (sAbschnitt + sSchluessel + "=" + sWert + "\n").Utf8();
        return m_iProfile-- > 0 ? PROFIL_OK : 0;
    }
};

bool s_bProgramm = true;
bool Fremdprogramm(int iProgramm, CString & sPfad) {
    sPfad = "C:\\calc"_t;
    return s_bProgramm && iProgramm == 2;
}
void Cockpit(const CString & sBefehl) { s_sRufe += sBefehl.Utf8() + "\n"; }

class CExcel : public COrvo2Excel {
public:
    CExcel() : COrvo2Excel(nullptr) {}
    using COrvo2Excel::FormatBetrag;
    int * SetLineStruct() override { return iTAGESPROTOKOLL; }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        return CODE_OK;
    }
};

using ExcelTest = CDateiTest;

TEST_F(ExcelTest, UebergabeUndStart) {
    CTestplatz platz;
    const CArbeitsplatzErsatz ersatz(platz);
    m_bibliotheken.Registriere("orvofremd"_t, "GetFremdProgPath"_t, &Fremdprogramm);
    m_bibliotheken.Registriere("orvocockpit"_t, "OrvoCockpitExcel"_t, &Cockpit);
    m_pfade.sTemp = m_pfade.sTemp.Left(m_pfade.sTemp.GetLength() - 1); // the separator is added
    m_accu.SetZeitraum("20240101", "20240331");
    m_accu.SetKasStat("ks");
    m_accu.SetSelektion("ps");
    CExcel excel;
    excel.SetFilter(&m_accu);
    excel.m_sDateiName = "T";
    excel.m_sStatistikart = "TP";
    excel.SetMandant("M");
    excel.SetLeb("L");
    excel.SetKasse("K");
    excel.SetPatient("P");
    excel.m_sVorlage = m_pfade.sDaten + "vorlage.xls"_t;
    const CString sZiel = m_pfade.sDaten + "Orvo2Excel.xls"_t;
    Lege<CStdioFile>(excel.m_sVorlage, "neu");
    Lege<CStdioFile>(sZiel, "alt");
    std::filesystem::permissions(Dateipfad(sZiel), std::filesystem::perms::owner_read);
    const COhneRootrechte ohneRechte(m_verzeichnis);
    const std::string sTemp = m_pfade.sTemp.Utf8() + "\\T.";
    const std::string sSoll = sTemp + "CSV\n" + sTemp +
                              "INI\n[Allgemein]Statistikart=TP\n[Allgemein]Erstellungsdatum=01.07.2024\n"
                              "[Allgemein]Erstellungszeit=09:05\n[Allgemein]Waehrung=";
    for (int i = 0; i < 2; ++i) { // the second time the former workbook stays
        s_sRufe.clear();
        EXPECT_TRUE(excel.StartExcel());
        EXPECT_EQ(s_sRufe, sSoll +
                               "€\n[Selektion]DatumVon=01.01.2024\n[Selektion]DatumBis=31.03.2024\n"
                               "[Selektion]Praxisinhaber=M\n[Selektion]Behandler=L\n"
                               "[Selektion]Patient=P\n[Selektion]Kasse=K\n[Selektion]Kassengruppe=ks\n"
                               "[Selektion]PatSelektion=ps\n\"C:\\calc\" \"" +
                               sZiel.Utf8() + "\"\n");
        EXPECT_EQ(Inhalt<CStdioFile>(sZiel), "neu");
        excel.m_sVorlage.Empty();
        if (i == 0) m_pfade.sTemp += '\\';
    }
    EXPECT_EQ(Gesagt(), "");
    s_sRufe.clear();
    platz.m_iProfile = 3;
    excel.SetWaehrung(' ');
    EXPECT_FALSE(excel.StartExcel());
    EXPECT_EQ(s_sRufe, sSoll + "DM\n"); // stops at the fourth key
    EXPECT_EQ(Gesagt(), "I Datensammlung gescheitert.: Selektionsdatei konnte nicht erstellt werden");
    EXPECT_EQ(excel.FormatBetrag(CDBetrag("e-10000")), "-195,58"_t);
    EXPECT_EQ(excel.FormatBetrag(CDBetrag("e0")), ""_t);

    s_sRufe.clear();
    EXPECT_TRUE(OrvoStartExcel("d.csv", 1, 2007) && OrvoStartExcel("d.csv", 1, 2003) &&
                OrvoStartExcel("d.csv", 0, 2007) && !OrvoStartExcel("d.csv", 2, 2007));
    const std::string sPlot = "\"C:\\calc\" /e\"d.csv\" \"" + m_pfade.sProgramm.Utf8() + "orvoexcelplotby";
    EXPECT_EQ(s_sRufe,
              sPlot + "columns2007.xls\" 5\n" + sPlot + "columns.xls\" 5\n" + sPlot + "rows.xls\" 5\n");
    s_bProgramm = false;
    EXPECT_FALSE(excel.StartExcel() || OrvoStartExcel("x", 1, 2007));
    m_bibliotheken = CBibliotheken();
    EXPECT_FALSE(excel.StartExcel());
    EXPECT_EQ(m_rekorder.m_vPrompts.back().sTitel, "LoadLibrary fehlgeschlagen!"_t);
}

// A hand-over that stays. scripts/check-spreadsheet names a folder for it and opens it with a spreadsheet program.
class CBleibeplatz final : public CArbeitsplatz {
public:
    explicit CBleibeplatz(CArbeitsplatz & innen) : m_innen(innen) {}
    bool StarteProgramm(const CString &, int) override { return false; }
    void MerkeTempDatei(const CString &) override {}
    int SetzeProfil(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        return m_innen.SetzeProfil(sDatei, sAbschnitt, sSchluessel, sWert);
    }

private:
    CArbeitsplatz & m_innen;
};

class CHitExcel : public CExcel {
public:
    int * SetLineStruct() override { return iTP_SICHERUNG; }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        for (const CBehHitLine & hit : m_pFilter->m_vBehHits) {
            m_Line.MoveHit(hit);
            m_Line.PATNAME = hit.PATNAME;
            m_Line.BETRAG = FormatBetrag(hit.BETRAG);
            WriteLines(file, m_Line);
        }
        return CODE_OK;
    }
};

TEST_F(ExcelTest, EineUebergabeMitArbeitsmappe) {
    s_bProgramm = true;
    CBleibeplatz platz(Arbeitsplatz());
    const CArbeitsplatzErsatz ersatz(platz);
    m_bibliotheken.Registriere("orvofremd"_t, "GetFremdProgPath"_t, &Fremdprogramm);
    m_bibliotheken.Registriere("orvocockpit"_t, "OrvoCockpitExcel"_t, &Cockpit);
    if (const char * pOrdner = std::getenv("ORVOSTATBS_UEBERGABE"); pOrdner != nullptr)
        m_pfade.sTemp = m_pfade.sDaten = Verzeichnistext(pOrdner);
    for (const auto & [sName, sBetrag, sText] : std::initializer_list<std::array<CString, 3>>{
             {"Müller-Lüdenscheidt"_t, "e123456"_t, "10 € Zuzahlung, groß"_t},
             {"Groß"_t, "e-5"_t, "  zwei Blanks; ein Semikolon"_t},
             {"Ångström"_t, "e99"_t, "\"in Anführung\", 1.5 und 007"_t}}) {
        CBehHitLine & hit = m_accu.m_vBehHits.emplace_back(MakeHit(1));
        hit.PATNAME = sName;
        hit.BETRAG = CDBetrag(sBetrag);
        hit.TEXT = sText;
    }
    CHitExcel excel;
    excel.m_sDateiName = "Übergabe 1"_t;
    excel.SetFilter(&m_accu);
    excel.SetMandant("Dr. Böhmländer"_t);
    const std::string sMappe = Arbeitsmappe(LiesDatei(ORVOSTATBS_SOURCE_DIR "/data/Orvo2Excel.fods"),
                                            iTP_SICHERUNG, excel.GetDatFilename(), excel.GetIniFilename());
    EXPECT_EQ(sMappe.find('@'), std::string::npos);
    EXPECT_NE(sMappe.find("/%C3%9Cbergabe%201.CSV\""), std::string::npos);
    EXPECT_NE(sMappe.find(",1/2/2/2/3/2/4/2/5/2"), std::string::npos) << "keys are texts";
    EXPECT_NE(sMappe.find("/18/1/"), std::string::npos) << "ANZAHL is a number";
    excel.m_sVorlage = m_pfade.sDaten + "vorlage.fods"_t;
    Lege<CStdioFile>(excel.m_sVorlage, sMappe);
    EXPECT_TRUE(excel.StartExcel());
    EXPECT_EQ(LiesDatei(Dateipfad(m_pfade.sDaten + "Orvo2Excel.xls"_t)), sMappe);
}

} // namespace
} // namespace orvostat
