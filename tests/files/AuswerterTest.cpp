// The evaluator over both file classes.
#include "files/DateiTest.h"

#include <functional>
#include <stdexcept>

namespace orvostat {
namespace {

// An evaluator that a test steers.
template <class T> class CSteuer : public CPruefeval<T> {
public:
    std::vector<std::string> m_vRufe; // what was called
    int * m_pLayout = iERR_SICHERUNG;
    int m_iCode = CODE_OK;
    int m_iZeilen = 1;
    bool m_bSelektion = true;
    bool m_bMehr = true;
    bool m_bVorher = true;
    bool m_bKopfzeile = false;
    std::function<void(T &)> m_fDazu;
    std::vector<std::string> m_vGelesen;
    CDateiTest * m_pTest = nullptr;

    int * SetLineStruct() override { return Ruf("layout"), m_pLayout; }
    long GetGesamtPos() override { return Ruf("gesamt"), m_iZeilen; }
    CString GetDatFilename() override { return Ruf("dat"), GetOrvoStatWSPath() + "x.SVE"; }
    CString GetIniFilename() override { return Ruf("ini"), GetOrvoStatWSPath() + "x.ISV"; }
    bool CreateSelektionsFile(const CString &) override { return Ruf("selektion"), m_bSelektion; }
    bool CreateMoreSelektions(const CString &) override { return Ruf("mehr"), m_bMehr; }
    int DoData(T & file, int &) override {
        Ruf("daten");
        if (!this->m_bZwSich) this->WriteTitel(file);
        this->m_Line.ART = "H";
        this->m_Line.PATNR = "a;b";
        for (int i = 0; i < m_iZeilen; ++i)
            this->WriteLines(file, this->m_Line);
        if (m_fDazu) m_fDazu(file);
        return m_iCode;
    }
    long ReadAnzHits(const CString &) override { return Ruf("anzahl"), 7; }
    bool BeforeMoveDataFromFile() override {
        Ruf("vorher");
        this->m_aLineStruct.assign(iERR_SICHERUNG, iERR_SICHERUNG + 3);
        this->m_aErrorStruct.assign(iERR_SICHERUNG, iERR_SICHERUNG + 5);
        return m_bVorher;
    }
    bool IsFirstLineStruct() override { return m_bKopfzeile; }
    bool MoveDataFromFile(CStatLines & line) override {
        m_vGelesen.push_back(
            (line.ART + "/" + line.PATNR + "/" + line.DATUM + "/" + line.LSTIN + "/" + line.TEXTART).Utf8());
        return false; // without effect
    }

private:
    void Ruf(const char * pWas) { m_vRufe.emplace_back(pWas); }
};

template <class T> class AuswerterTest : public CDateiTest {
protected:
    CSteuer<T> m_eval;
    [[nodiscard]] static CString Dat() { return GetOrvoStatWSPath() + "x.SVE"; }
    [[nodiscard]] static CString Ini() { return GetOrvoStatWSPath() + "x.ISV"; }
    bool Lies(const std::string & sText) {
        Lege<T>(Dat(), sText);
        m_eval.m_vGelesen.clear();
        m_rekorder.m_vPrompts.clear();
        return m_eval.ReadDaten();
    }
    using CListe = std::vector<std::string>;
};
using CKlassen = ::testing::Types<CStdioFile, CDBStdioFile>;
TYPED_TEST_SUITE(AuswerterTest, CKlassen);

constexpr const char * TITELZEILE =
    "ART;PATNR;DATUM;LSTIN;TEXTART;SITZUNG;LFDBEHEINTRAG;KASKUERZEL;MFRDIG;WSO;GOART\n";

TYPED_TEST(AuswerterTest, WoDieDateienLiegen) {
    EXPECT_EQ(GetOrvoStatPath(), this->m_pfade.sDaten + "stat\\");
    dbLfdWorkstation = " 7";
    EXPECT_EQ(GetOrvoStatWSPath(), this->m_pfade.sDaten + "stat\\07\\"_t);
    CStatEval<TypeParam> eval(nullptr);
    EXPECT_EQ(eval.GetDatFilename(), "std.dat"_t);
    EXPECT_EQ(eval.GetIniFilename(), "std.ini"_t);
    EXPECT_EQ(eval.ReadAnzHits(CString()), 1000);
    EXPECT_TRUE(eval.m_cDelimiter == ';' && eval.m_cErsatz == '|' && !eval.m_bZwSich &&
                eval.m_iZwKapazitaet == 5000);
    EXPECT_TRUE(eval.CreateSelektionsFile(CString()) && eval.CreateMoreSelektions(CString()) &&
                eval.IsFirstLineStruct());
    EXPECT_FALSE(eval.WriteDaten() || eval.ReadDaten()); // without layout
}

TYPED_TEST(AuswerterTest, SchreibenInSeinerReihenfolge) {
    this->template Lege<TypeParam>(this->Dat(), "alt\n");
    this->template Lege<TypeParam>(this->Ini(), "alt\n");
    auto & eval = this->m_eval;
    eval.m_fDazu = [&](TypeParam & file) { eval.WriteErrorLines(file, eval.m_Line); };
    EXPECT_TRUE(eval.WriteDaten());
    EXPECT_EQ(eval.m_vRufe,
              (std::vector<std::string>{"dat", "ini", "layout", "gesamt", "daten", "selektion", "mehr"}));
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Dat()),
              std::string(TITELZEILE) + "H;a|b;;;;;;;;;\nH;a|b;;;;;;;;;\n");
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Ini()), "-");
    EXPECT_EQ(this->m_rekorder.m_vBoxTexte, std::vector<CString>{"Bitte ein wenig Geduld..."_t});
    EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
    EXPECT_TRUE(this->m_rekorder.m_vPrompts.empty());

    // Intermediate saves add to the file, show nothing and ask nothing, and the selection file goes each time.
    this->template Lege<TypeParam>(this->Ini(), "alt\n");
    eval.m_bZwSich = true;
    eval.m_fDazu = nullptr;
    EXPECT_TRUE(eval.WriteDaten());
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Dat()),
              std::string(TITELZEILE) + "H;a|b;;;;;;;;;\nH;a|b;;;;;;;;;\nH;a|b;;;;;;;;;\n");
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Ini()), "-");
    EXPECT_EQ(this->m_rekorder.m_vBoxTexte.size(), 1u);
}

TYPED_TEST(AuswerterTest, CodesDesSchreibens) {
    const struct {
        int iCode;
        bool bSelektion, bMehr;
        const char * pText;
    } vFaelle[] = {
        {0, true, true, ""},
        {5, true, true, "Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."},
        {10, true, true, "Selektionsdatei konnte nicht erstellt werden"},
        {0, false, true, "Selektionsdatei konnte nicht erstellt werden"},
        {0, true, false, "Selektionsdatei konnte nicht erstellt werden"},
        {1, true, true, ""},
        {100, true, true, ""},
        {-1, true, true, ""},
    };
    for (const auto & fall : vFaelle) {
        CSteuer<TypeParam> eval;
        eval.m_iCode = fall.iCode;
        eval.m_bSelektion = fall.bSelektion;
        eval.m_bMehr = fall.bMehr;
        this->m_rekorder.m_vPrompts.clear();
        EXPECT_EQ(eval.WriteDaten(), fall.iCode == 0 && fall.bSelektion && fall.bMehr);
        EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
        std::vector<SPrompt> vErwartet;
        if (*fall.pText != 0)
            vErwartet.push_back({SPrompt::HALT_I, "Datensammlung gescheitert."_t, AusUtf8(fall.pText), 0});
        EXPECT_EQ(this->m_rekorder.m_vPrompts, vErwartet) << fall.iCode;
        EXPECT_NE(this->template Inhalt<TypeParam>(this->Dat()), "-");
    }
}

TYPED_TEST(AuswerterTest, CodesDesLesens) {
    auto & eval = this->m_eval;
    EXPECT_TRUE(this->Lies("H;1;20240101\nH;2;\n"));
    EXPECT_EQ(eval.m_vGelesen, (std::vector<std::string>{"H/1/20240101//", "H/2///"}));
    EXPECT_EQ(eval.m_vRufe, (std::vector<std::string>{"dat", "ini", "anzahl", "vorher"}));
    EXPECT_EQ(this->m_rekorder.m_vSchritte, (std::vector<std::pair<long, long>>{{1, 7}, {2, 7}, {3, 7}}));

    eval.m_bVorher = false;
    EXPECT_FALSE(this->Lies("H;1;\n"));
    EXPECT_TRUE(this->m_rekorder.m_vPrompts.empty() && eval.m_vGelesen.empty() &&
                !this->m_rekorder.m_bBoxOffen);
    eval.m_bVorher = true;
    eval.m_bKopfzeile = true;
    EXPECT_TRUE(this->Lies("ART;LSTIN;TEXTART\r\nH;x;y\r\n"));
    EXPECT_EQ(eval.m_vGelesen, std::vector<std::string>{"H///x/y"});
    for (const char * pOhneKopf : {"\nH;1\n", "ART\nH;1\n"}) {
        EXPECT_FALSE(this->Lies(pOhneKopf));
        EXPECT_EQ(this->m_rekorder.m_vPrompts,
                  (std::vector<SPrompt>{
                      {SPrompt::HALT_I, "Datensammlung gescheitert."_t, "Keine Kopfzeile gefunden!"_t, 0}}));
    }
    EXPECT_TRUE(this->Lies("")); // no line, no title line missing
    this->m_rekorder.m_bBoxGeht = false;
    EXPECT_FALSE(this->Lies("ART;PATNR\n"));
    DeleteFileDB(this->Dat());
    std::filesystem::remove(Dateipfad(this->Dat()));
    EXPECT_FALSE(eval.ReadDaten());
    EXPECT_TRUE(this->m_rekorder.m_vPrompts.empty());
}

TYPED_TEST(AuswerterTest, BeschaedigteZeilen) {
    auto & eval = this->m_eval;
    EXPECT_TRUE(this->Lies("\n;\nohne\nE;1;2;3;4\nX;;\nEE;5;\n;6;7\nH;\xFF;\nH;8;9;\n"));
    EXPECT_EQ(eval.m_vGelesen, (std::vector<std::string>{"////", "E/1/2/3/4", "X////", "EE/5///", "/6/7//",
                                                         "H/ÿ///", "H/8/9//"}));
    // More columns than the layout: the exception passes, the box stays open.
    for (const char * pZuViele : {"H;1;2;3\n", "E;1;2;3;4;5\n", "ART;1;2;;\n"}) {
        EXPECT_THROW(this->Lies(pZuViele), std::invalid_argument) << pZuViele;
        EXPECT_TRUE(this->m_rekorder.m_bBoxOffen);
    }
    eval.m_bKopfzeile = true;
    EXPECT_THROW(this->Lies("ART;GIBTESNICHT\n"), std::invalid_argument);
    EXPECT_THROW(this->Lies("ART;art\n"), std::invalid_argument);
    EXPECT_EQ(eval.FindFieldTitel("CHARGENNUMMER"_t), 219);
    CPruefeval<TypeParam> leer; // an error line without its layout
    leer.m_aLineStruct = {0, 5};
    CStatLines line;
    EXPECT_THROW(leer.GetLineFields("E;1", line), std::invalid_argument);
    EXPECT_TRUE(leer.GetLineFields("H;1", line));
    EXPECT_FALSE(leer.GetLineFields("H1", line) || leer.GetLineFields("", line));
    line.ART = "E"; // of the line before: the first column is the layout's all the same
    EXPECT_TRUE(leer.GetLineFields("H;2", line));
    EXPECT_EQ(line.PATNR, "2"_t);
    // Bytes of every kind, in lines of every length.
    std::uint32_t iZufall = 1;
    for (int iLauf = 0; iLauf < 300; ++iLauf) {
        std::string sText;
        for (int i = 0; i < iLauf; ++i)
            sText += "H;;\n\r\0E\xFF[|1-;U\n"[(iZufall = iZufall * 1664525 + 1013904223) >> 28];
        eval.m_bKopfzeile = false;
        try {
            this->Lies(sText);
        } catch (const std::invalid_argument &) {
        }
    }
}

// Lines whose columns end at every place of the eight characters that are searched at once.
TYPED_TEST(AuswerterTest, SpaltenJederLaenge) {
    CPruefeval<TypeParam> eval;
    eval.m_aLineStruct = {0, 5, 17, 21};
    for (int iA = 0; iA < 20; ++iA)
        for (int iB = 0; iB < 20; ++iB) {
            const CString sA('a', iA), sB('b', iB);
            CStatLines line;
            EXPECT_TRUE(eval.GetLineFields("H;" + sA + ";;" + sB, line));
            EXPECT_TRUE(line.PATNR == sA && line.DATUM.IsEmpty() && line.TEXT == sB) << iA << " " << iB;
        }
}

TYPED_TEST(AuswerterTest, JedeUrsacheHatIhrenText) {
    CFehlerdateien platte(Plattendateien()), bestand(Bestandsdateien());
    const CPlattendateienErsatz platteErsatz(platte);
    const CBestandsdateienErsatz bestandErsatz(bestand);
    const auto Fehler = [&](CFehlerdateien::EWo eWo, int iUrsache) {
        platte.FehlerBei(eWo, iUrsache);
        bestand.FehlerBei(eWo, iUrsache);
        this->m_rekorder.m_vPrompts.clear();
    };
    const char * const SONST = "Sonstiger Fehler! Bitte Fehlernummer merken: ";
    const char * const RECHT = "Zugriff nicht erlaubt! Datei schreibgeschützt?";
    const char * const VOLL = "Es ist kein Speicherplatz mehr verfügbar! Festplatte ist voll.";
    const struct {
        int iUrsache;
        const char *pLoeschen, *pSchreiben, *pLesen; // empty for no prompt; SONST with the number behind it
    } vFaelle[] = {
        {0, "", "", "Datei nicht gefunden!"},
        {1, "Generic Fehler!", "Generic Fehler!", "Generic Fehler!"},
        {2, "", SONST, "Datei nicht gefunden!"},
        {3, "Ungültige Pfadangabe!", "Ungültige Pfadangabe!", "Ungültige Pfadangabe!"},
        {5, RECHT, RECHT, RECHT},
        {10, "HARDWAREFEHLER!", "HARDWAREFEHLER!", "HARDWAREFEHLER!"},
        {13, SONST, VOLL, SONST},
        {4, SONST, SONST, SONST},
        {99, SONST, SONST, SONST},
    };
    const auto Erwarte = [&](const char * pText, const std::string & sTitel, int iUrsache) {
        std::vector<SPrompt> vErwartet;
        const std::string sText = pText + (pText == SONST ? std::to_string(iUrsache) : "");
        if (!sText.empty()) vErwartet.push_back({SPrompt::HALT_E, AusUtf8(sTitel), AusUtf8(sText), 0});
        EXPECT_EQ(this->m_rekorder.m_vPrompts, vErwartet) << iUrsache;
    };
    const std::string sDat = this->Dat().Utf8();
    for (const auto & fall : vFaelle) {
        // The wrapper has no failure that is none: cause 0 comes from a derived class.
        const int iUrsache = fall.iUrsache;
        CSteuer<TypeParam> eval;
        eval.m_fDazu = [&](TypeParam &) {
            if (iUrsache == 0) throw CFileException(0);
        };
        Fehler(CFehlerdateien::SICHERN, iUrsache);
        EXPECT_EQ(eval.WriteDaten(), iUrsache == 0);
        Erwarte(fall.pSchreiben, "WriteDaten " + sDat + " gescheitert!", iUrsache);
        EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
        EXPECT_EQ(std::count(eval.m_vRufe.begin(), eval.m_vRufe.end(), "selektion"), 0);
        Fehler(CFehlerdateien::NIRGENDS, 0);
        this->template Lege<TypeParam>(this->Dat(), "H;1;\n");
        if (iUrsache != 0) {
            Fehler(CFehlerdateien::LESEN, iUrsache);
            EXPECT_FALSE(eval.ReadDaten());
            Erwarte(fall.pLesen, "ReadDaten " + sDat + " gescheitert!", iUrsache);
            EXPECT_FALSE(this->m_rekorder.m_bBoxOffen);
            Fehler(CFehlerdateien::LOESCHEN, iUrsache);
            const bool bPlatte = std::is_same_v<TypeParam, CStdioFile>;
            EXPECT_EQ(eval.DeleteFileA(this->Dat()), bPlatte && iUrsache == 2);
            if (bPlatte)
                Erwarte(fall.pLoeschen, "DeleteFile " + sDat + " gescheitert!", iUrsache);
            else
                Erwarte(("Löschen der Datei '" + sDat + "' gescheitert!").c_str(), "Statistik", iUrsache);
            EXPECT_TRUE(iUrsache == 2 || !eval.WriteDaten()); // the former data file cannot go
            Fehler(CFehlerdateien::OEFFNEN, iUrsache);
            EXPECT_FALSE(eval.WriteDaten() || eval.ReadDaten());
            EXPECT_TRUE(this->m_rekorder.m_vPrompts.empty());
        }
        Fehler(CFehlerdateien::NIRGENDS, 0);
    }
    EXPECT_TRUE(this->m_eval.DeleteFileA(this->Dat()) && this->m_eval.DeleteFileA(this->Dat()));
}

TYPED_TEST(AuswerterTest, FremdeAusnahmenGehenDurch) {
    auto & eval = this->m_eval;
    eval.m_pLayout = iLU_SICHERUNG;
    EXPECT_THROW(eval.WriteDaten(), std::invalid_argument); // a column without title
    EXPECT_TRUE(this->m_rekorder.m_bBoxOffen);
    eval.m_bZwSich = true; // without title line
    EXPECT_TRUE(eval.WriteDaten());
    eval.m_Line.m_sLuFrei222 = "c";
    CDBStdioFile file;
    eval.m_pLayout = iMD_SICHERUNG;
    eval.m_bZwSich = false;
    EXPECT_TRUE(eval.WriteDaten());
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Dat()), "ART\nH\n");
    eval.m_pLayout = nullptr;
    EXPECT_FALSE(eval.WriteDaten());
}

TYPED_TEST(AuswerterTest, FortschrittUndAbbruch) {
    CPruefeval<TypeParam> eval;
    auto & rekorder = this->m_rekorder;
    long lPos = 3;
    EXPECT_TRUE(eval.DoProgress(lPos, 0));
    EXPECT_EQ(rekorder.m_vSchritte.back(), (std::pair<long, long>{3, 1}));
    rekorder.m_iAbbruchAb = 1;
    rekorder.m_vAntworten = {false, true};
    rekorder.m_bBoxOffen = true;
    EXPECT_TRUE(eval.DoProgress(lPos, 9));
    EXPECT_TRUE(rekorder.m_bBoxOffen);
    EXPECT_FALSE(eval.DoProgress(lPos, 9));
    EXPECT_FALSE(rekorder.m_bBoxOffen);
    EXPECT_EQ(rekorder.m_vPrompts.back(), (SPrompt{SPrompt::FRAGE, "Vorgang abbrechen..."_t,
                                                   "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0}));
    eval.m_bZwSich = true;
    EXPECT_TRUE(eval.DoProgress(lPos, 9));
    EXPECT_EQ(rekorder.m_vPrompts.size(), 2u);
    rekorder.m_vAntworten = {true};
    EXPECT_FALSE(this->Lies("H;1;\n"));
    EXPECT_EQ(rekorder.m_vPrompts.size(), 1u); // the question, no message
}

// The default DoData: a step without line writes none, only a cancel ends it, and that is a silent failure.
TYPED_TEST(AuswerterTest, DoDataDerBasis) {
    class CBasis : public CStatEval<TypeParam> {
    public:
        CBasis() : CStatEval<TypeParam>(nullptr) {}
        int m_iRuf = 0;
        int * SetLineStruct() override { return iMD_SICHERUNG; }
        CString GetDatFilename() override { return AuswerterTest<TypeParam>::Dat(); }
        bool GetLineData2File(CStatLines & line) override {
            line.ART = itoc(++m_iRuf);
            return m_iRuf != 2;
        }
    } eval;
    this->m_rekorder.m_iAbbruchAb = 4;
    this->m_rekorder.m_vAntworten = {true};
    EXPECT_FALSE(eval.WriteDaten());
    EXPECT_EQ(this->template Inhalt<TypeParam>(AuswerterTest<TypeParam>::Dat()), "ART\n1\n3\n");
    EXPECT_EQ(this->m_rekorder.m_vPrompts.size(), 1u);
}

TYPED_TEST(AuswerterTest, RemoveFiles) {
    std::filesystem::create_directory(this->m_verzeichnis / "daten" / "stat" / "01" / "unter");
    for (const CString & sName : {"a.SVE"_t, "ohne"_t, "unter\\b.SVE"_t})
        this->template Lege<TypeParam>(GetOrvoStatWSPath() + sName, "x");
    auto & eval = this->m_eval;
    const CString sOrdner = GetOrvoStatWSPath();
    EXPECT_TRUE(eval.RemoveFiles(sOrdner.Left(sOrdner.GetLength() - 1))); // the separator is added
    EXPECT_EQ(this->template Inhalt<TypeParam>(sOrdner + "ohne"), "-");
    EXPECT_EQ(this->template Inhalt<TypeParam>(sOrdner + "unter\\b.SVE"_t), "x");
    EXPECT_TRUE(eval.RemoveFiles(sOrdner + "gibtesnicht"_t));
    CFehlerdateien platte(Plattendateien()), bestand(Bestandsdateien());
    const CPlattendateienErsatz platteErsatz(platte);
    const CBestandsdateienErsatz bestandErsatz(bestand);
    platte.FehlerBei(CFehlerdateien::LOESCHEN, 5);
    bestand.FehlerBei(CFehlerdateien::LOESCHEN, 5);
    EXPECT_FALSE(eval.RemoveFiles(sOrdner + "unter"));
}

} // namespace
} // namespace orvostat
