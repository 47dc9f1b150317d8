// The evaluator over both file classes.
#include "files/DateiTest.h"

#include <stdexcept>

namespace orvostat {
namespace {

CString Dat() { return GetOrvoStatWSPath() + "x.SVE"; }
CString Ini() { return GetOrvoStatWSPath() + "x.ISV"; }

// An evaluator that a test steers.
template <class T> class CSteuer : public CPruefeval<T> {
public:
    std::string m_sRufe, m_sGelesen; // what was called, and the lines
    std::string m_sScheitert;        // the call that says no
    int * m_pLayout = iERR_SICHERUNG;
    int m_iCode = CODE_OK, m_iWirft = -1;
    bool m_bKopfzeile = false;

    int * SetLineStruct() override { return Ruf("layout") ? m_pLayout : nullptr; }
    long GetGesamtPos() override { return Ruf("gesamt"); }
    CString GetDatFilename() override { return Ruf("dat") ? Dat() : CString(); }
    CString GetIniFilename() override { return Ruf("ini") ? Ini() : CString(); }
    bool CreateSelektionsFile(const CString &) override { return Ruf("selektion"); }
    bool CreateMoreSelektions(const CString &) override { return Ruf("mehr"); }
    int DoData(T & file, int &) override {
        Ruf("daten");
        if (!this->m_bZwSich) this->WriteTitel(file);
        this->m_Line.ART = "H";
        this->m_Line.PATNR = "a;b";
        this->WriteLines(file, this->m_Line);
        this->WriteErrorLines(file, this->m_Line);
        if (m_iWirft >= 0) throw CFileException(m_iWirft);
        return m_iCode;
    }
    long ReadAnzHits(const CString &) override { return Ruf("anzahl") ? 7 : 0; }
    bool BeforeMoveDataFromFile() override {
        this->m_aLineStruct.assign(iERR_SICHERUNG, iERR_SICHERUNG + 3);
        this->m_aErrorStruct.assign(iERR_SICHERUNG, iERR_SICHERUNG + 5);
        if (m_iWirft >= 0) throw CFileException(m_iWirft);
        return Ruf("vorher");
    }
    bool IsFirstLineStruct() override { return m_bKopfzeile; }
    bool MoveDataFromFile(CStatLines & l) override {
        m_sGelesen += (l.ART + "/" + l.PATNR + "/" + l.DATUM + "/" + l.LSTIN + "/" + l.TEXTART + " ").Utf8();
        return false; // without effect
    }

private:
    bool Ruf(const std::string & sWas) {
        m_sRufe += sWas + ' ';
        return sWas != m_sScheitert;
    }
};

template <class T> class AuswerterTest : public CDateiTest {
protected:
    CSteuer<T> m_eval;
    // The lines that come out of a text, "-" in front where the read fails, "!" where it throws, and what was said.
    std::string Lies(const std::string & sText) {
        Lege<T>(Dat(), sText);
        m_eval.m_sGelesen.clear();
        std::string s = "!";
        try {
            s = m_eval.ReadDaten() ? "" : "-";
            EXPECT_FALSE(m_rekorder.m_bBoxOffen);
        } catch (const std::invalid_argument &) {
            EXPECT_TRUE(m_rekorder.m_bBoxOffen);
        }
        return s + m_eval.m_sGelesen + Gesagt();
    }
};
using CKlassen = ::testing::Types<CStdioFile, CDBStdioFile>;
TYPED_TEST_SUITE(AuswerterTest, CKlassen);

TYPED_TEST(AuswerterTest, SchreibenInSeinerReihenfolge) {
    EXPECT_EQ(GetOrvoStatPath(), this->m_pfade.sDaten + "stat\\");
    dbLfdWorkstation = " 1";
    EXPECT_EQ(GetOrvoStatWSPath(), this->m_pfade.sDaten + "stat\\01\\"_t);
    auto & eval = this->m_eval;
    std::string sSoll = "ART;PATNR\nH;a|b\nH;a|b;;;;;;;;;\n";
    int aiZwei[] = {0, 5, -1};
    eval.m_pLayout = aiZwei;
    for (const bool bZwSich : {false, true}) { // the second one is added, without box
        if (!bZwSich) Lege<TypeParam>(Dat(), "alt\n");
        Lege<TypeParam>(Ini(), "alt\n");
        eval.m_bZwSich = bZwSich;
        eval.m_sRufe.clear();
        EXPECT_TRUE(eval.WriteDaten());
        EXPECT_EQ(eval.m_sRufe, "dat ini layout gesamt daten selektion mehr ");
        EXPECT_EQ(Inhalt<TypeParam>(Dat()), sSoll);
        EXPECT_EQ(Inhalt<TypeParam>(Ini()), "-");
        EXPECT_EQ(this->m_rekorder.m_vBoxTexte, std::vector<CString>{"Bitte ein wenig Geduld..."_t});
        EXPECT_EQ(this->Gesagt(), "");
        EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
        sSoll += "H;a|b\nH;a|b;;;;;;;;;\n";
    }
    eval.m_bZwSich = false;
    eval.m_pLayout = iLU_SICHERUNG; // has a column without title
    EXPECT_THROW(eval.WriteDaten(), std::invalid_argument);
    EXPECT_TRUE(this->m_rekorder.m_bBoxOffen);
    eval.m_pLayout = nullptr;
    EXPECT_FALSE(eval.WriteDaten());
}

TYPED_TEST(AuswerterTest, CodesDesSchreibens) {
    const std::string SELEKTION = "Selektionsdatei konnte nicht erstellt werden";
    const struct {
        int iCode;
        const char * pScheitert;
        std::string sGesagt;
    } vFaelle[] = {{5, "", "Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."},
                   {10, "", SELEKTION},
                   {0, "selektion", SELEKTION},
                   {0, "mehr", SELEKTION},
                   {1, "", ""}};
    for (const auto & fall : vFaelle) {
        this->m_eval.m_iCode = fall.iCode;
        this->m_eval.m_sScheitert = fall.pScheitert;
        EXPECT_FALSE(this->m_eval.WriteDaten() || this->m_rekorder.m_bBoxOffen);
        EXPECT_EQ(this->Gesagt(),
                  fall.sGesagt.empty() ? "" : "I Datensammlung gescheitert.: " + fall.sGesagt);
        EXPECT_NE(Inhalt<TypeParam>(Dat()), "-");
    }
}

TYPED_TEST(AuswerterTest, Lesen) {
    auto & eval = this->m_eval;
    EXPECT_EQ(this->Lies("H;1;20240101\nH;2;\n"), "H/1/20240101// H/2/// ");
    EXPECT_EQ(eval.m_sRufe, "dat ini anzahl vorher ");
    EXPECT_EQ(this->m_rekorder.m_vSchritte, (std::vector<std::pair<long, long>>{{1, 7}, {2, 7}, {3, 7}}));
    const char * const OHNE = "-I Datensammlung gescheitert.: Keine Kopfzeile gefunden!";
    const struct {
        bool bKopfzeile;
        const char *pText, *pSoll;
    } vFaelle[] = {
        {true, "ART;LSTIN;TEXTART\r\nH;x;y\r\n", "H///x/y "},
        {true, "\nH;1\n", OHNE},
        {true, "ART\nH;1\n", OHNE},
        {true, "", ""}, // no line, no title line missing
        {false, "\n;\nohne\nE;1;2;3;4\nX;;\nEE;5;\n;6;7\nH;\xFF;\nH;8;9;\n",
         "//// E/1/2/3/4 X//// EE/5/// /6/7// H/ÿ/// H/8/9// "},
        // More columns than the layout, and titles that are none: the exception passes, the box stays open.
        {false, "H;1;2;3\n", "!"},
        {false, "E;1;2;3;4;5\n", "!"},
        {false, "ART;1;2;;\n", "!"},
        {true, "ART;GIBTESNICHT\n", "!"},
        {true, "ART;art\n", "!"},
    };
    for (const auto & fall : vFaelle) {
        eval.m_bKopfzeile = fall.bKopfzeile;
        EXPECT_EQ(this->Lies(fall.pText), fall.pSoll) << fall.pText;
    }
    EXPECT_EQ(eval.FindFieldTitel("CHARGENNUMMER"_t), 219);
    eval.m_bKopfzeile = false;
    std::uint32_t iZufall = 1; // bytes of every kind, in lines of every length
    for (int iLauf = 0; iLauf < 300; ++iLauf) {
        std::string sText;
        for (int i = 0; i < iLauf; ++i)
            sText += "H;;\n\r\0E\xFF[|1-;U\n"[(iZufall = iZufall * 1664525 + 1013904223) >> 28];
        static_cast<void>(this->Lies(sText));
    }
    this->m_rekorder.m_bBoxOffen = false;
    for (const bool bBoxGeht : {true, false}) {
        this->m_rekorder.m_bBoxGeht = bBoxGeht;
        eval.m_sScheitert = bBoxGeht ? "vorher" : "";
        EXPECT_EQ(this->Lies("H;1;\n"), "-");
    }
    this->m_rekorder.m_bBoxGeht = true;
    eval.DeleteFileA(Dat());
    EXPECT_FALSE(eval.ReadDaten());
    EXPECT_EQ(this->Gesagt(), "");
}

// Lines whose columns end at every place of the eight characters that are searched at once.
TYPED_TEST(AuswerterTest, SpaltenJederLaenge) {
    CPruefeval<TypeParam> eval;
    eval.m_aLineStruct = {0, 5, 17, 21};
    for (int iA = 0; iA < 20; ++iA)
        for (int iB = 0; iB < 20; ++iB) {
            const CString sA('a', iA), sB('b', iB);
            CStatLines line;
            line.ART = "E"; // of the line before: the first column is the layout's all the same
            EXPECT_TRUE(eval.GetLineFields("H;" + sA + ";;" + sB, line));
            EXPECT_TRUE(line.PATNR == sA && line.DATUM.IsEmpty() && line.TEXT == sB) << iA << " " << iB;
        }
    CStatLines line;
    EXPECT_FALSE(eval.GetLineFields("H1", line));
    EXPECT_THROW(eval.GetLineFields("E;1", line), std::invalid_argument); // without the layout of errors
}

TYPED_TEST(AuswerterTest, JedeUrsacheHatIhrenText) {
    const std::string SONST = "Sonstiger Fehler! Bitte Fehlernummer merken: ";
    const std::string RECHT = "Zugriff nicht erlaubt! Datei schreibgeschützt?";
    const struct {
        int iUrsache;
        std::string sSchreiben, sLesen, sLoeschen; // empty: no failure
    } vFaelle[] = {
        {0, "", "Datei nicht gefunden!", ""},
        {1, "Generic Fehler!", "Generic Fehler!", "Generic Fehler!"},
        {2, SONST + "2", "Datei nicht gefunden!", ""},
        {3, "Ungültige Pfadangabe!", "Ungültige Pfadangabe!", "Ungültige Pfadangabe!"},
        {5, RECHT, RECHT, RECHT},
        {10, "HARDWAREFEHLER!", "HARDWAREFEHLER!", "HARDWAREFEHLER!"},
        {13, "Es ist kein Speicherplatz mehr verfügbar! Festplatte ist voll.", SONST + "13", SONST + "13"},
        {99, SONST + "99", SONST + "99", SONST + "99"},
    };
    const std::string sDat = Dat().Utf8();
    const auto Soll = [&](const char * pVorgang, const std::string & sText) {
        return sText.empty() ? "" : "E " + (pVorgang + (" " + sDat)) + " gescheitert!: " + sText;
    };
    auto & eval = this->m_eval;
    for (const auto & fall : vFaelle) {
        eval.m_iWirft = fall.iUrsache;
        EXPECT_EQ(eval.WriteDaten(), fall.sSchreiben.empty());
        EXPECT_EQ(this->Gesagt(), Soll("WriteDaten", fall.sSchreiben));
        EXPECT_FALSE(eval.ReadDaten());
        EXPECT_EQ(this->Gesagt(), Soll("ReadDaten", fall.sLesen));
        EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
        this->Stoere(CFehlerdateien::LOESCHEN, fall.iUrsache);
        if (std::is_same_v<TypeParam, CStdioFile>) {
            EXPECT_EQ(eval.DeleteFileA(Dat()), fall.sLoeschen.empty());
            EXPECT_EQ(this->Gesagt(), Soll("DeleteFile", fall.sLoeschen));
        } else if (fall.iUrsache != 0) {
            EXPECT_FALSE(eval.DeleteFileA(Dat()));
            EXPECT_EQ(this->Gesagt(), "E Statistik: Löschen der Datei '" + sDat + "' gescheitert!");
        }
        this->Stoere();
    }
    EXPECT_TRUE(eval.DeleteFileA(Dat()) && eval.DeleteFileA(Dat()));
    eval.m_iWirft = -1;
    this->Stoere(CFehlerdateien::SCHLIESSEN, 10);
    EXPECT_FALSE(eval.WriteDaten()); // all is written, but the file cannot be closed
    EXPECT_EQ(this->Gesagt(), Soll("WriteDaten", "HARDWAREFEHLER!"));
    this->Stoere();
    Lege<TypeParam>(Dat(), "ART;PATNR\nH;1\n");
    this->Stoere(CFehlerdateien::SCHLIESSEN, 10);
    EXPECT_FALSE(eval.ReadDaten());
    EXPECT_EQ(this->Gesagt(), Soll("ReadDaten", "HARDWAREFEHLER!"));
}

// The default DoData: a step without line writes none, only a cancel ends it, and that is a silent failure.
TYPED_TEST(AuswerterTest, DoDataUndAbbruch) {
    class CBasis : public CStatEval<TypeParam> {
    public:
        CBasis() : CStatEval<TypeParam>(nullptr) {}
        int m_iRuf = 0;
        int * SetLineStruct() override { return iMD_SICHERUNG; }
        CString GetDatFilename() override { return Dat(); }
        bool GetLineData2File(CStatLines & line) override {
            line.ART = itoc(++m_iRuf);
            return m_iRuf != 2;
        }
    } eval;
    const std::string FRAGE = "? Vorgang abbrechen...: Möchten Sie wirklich den Vorgang abbrechen?";
    this->m_rekorder.m_iAbbruchAb = 4;
    this->m_rekorder.m_vAntworten = {false, true, true};
    EXPECT_FALSE(eval.WriteDaten() || this->m_rekorder.m_bBoxOffen);
    EXPECT_EQ(Inhalt<TypeParam>(Dat()), "ART\n1\n3\n4\n");
    EXPECT_EQ(this->Gesagt(), FRAGE + FRAGE);
    EXPECT_EQ(this->m_rekorder.m_vSchritte.back(), (std::pair<long, long>{0, 1})); // without a total
    EXPECT_EQ(this->Lies("H;1;\n"), '-' + FRAGE);
    eval.m_bZwSich = true;
    EXPECT_TRUE(eval.DoProgress(eval.m_lPos, 9));
    EXPECT_EQ(this->Gesagt(), "");
}

TYPED_TEST(AuswerterTest, RemoveFiles) {
    std::filesystem::create_directory(this->m_verzeichnis / "daten" / "stat" / "01" / "unter");
    const CString sOrdner = GetOrvoStatPath() + "01\\";
    for (const CString & sName : {"a.SVE"_t, "ohne"_t, "unter\\b.SVE"_t})
        Lege<TypeParam>(sOrdner + sName, "x");
    auto & eval = this->m_eval;
    EXPECT_TRUE(eval.RemoveFiles(sOrdner.Left(sOrdner.GetLength() - 1))); // the separator is added
    EXPECT_EQ(Inhalt<TypeParam>(sOrdner + "a.SVE") + Inhalt<TypeParam>(sOrdner + "ohne"), "--");
    EXPECT_EQ(Inhalt<TypeParam>(sOrdner + "unter\\b.SVE"_t), "x");
    EXPECT_TRUE(eval.RemoveFiles(sOrdner + "gibtesnicht"_t));
    this->Stoere(CFehlerdateien::LOESCHEN);
    EXPECT_FALSE(eval.RemoveFiles(sOrdner + "unter"));
}

} // namespace
} // namespace orvostat
