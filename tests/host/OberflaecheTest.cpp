#include "orvostatbs/host/Oberflaeche.h"

#include "support/Rekorder.h"
#include "support/Wert.h"

#include <filesystem>
#include <sstream>

#include <dlfcn.h>

namespace orvostat {

namespace {

class OberflaecheTest : public CHostTest {
protected:
    [[nodiscard]] std::string Gesagt() const {
        std::string s;
        for (const SPrompt & p : m_rekorder.m_vPrompts)
            s += "HEIF"[p.eArt] + (":" + Werte(p.sTitel, p.sText, p.iArt)) + " ";
        return s;
    }
};

TEST_F(OberflaecheTest, JedeMeldungUndFrageKommtMitIhrerArtBeiDerEingesetztenAn) {
    Halt("", "Neue Norm"_t, 6);
    HaltE("T", "E", 1);
    HaltI("T", "I");
    MxHaltE("T", "M", 0);
    m_rekorder.m_vAntworten = {true, false};
    EXPECT_EQ(SollIch("Abbruch", "Ende?", 0), 10);
    EXPECT_NE(SollIch("Abbruch", "Ende?", 0), 10);
    {
        const CWaitCursor warten;
        EXPECT_TRUE(m_rekorder.m_bWartezeiger);
        CRekorder innen;
        const COberflaecheErsatz ersatz(innen);
        Halt("", "innen");
        EXPECT_EQ(innen.m_vPrompts.size(), 1u);
    }
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
    EXPECT_EQ(Gesagt(), "H:|Neue Norm|6 E:T|E|1 I:T|I| E:T|M| F:Abbruch|Ende?| F:Abbruch|Ende?| ");
}

TEST_F(OberflaecheTest, FortschrittMitFormatUndAbbruch) {
    m_rekorder.m_iAbbruchAb = 2;
    const CWnd wnd;
    EXPECT_TRUE(
        OrvoOpenProgressBox(CWnd::GetSafeHwnd(&wnd), "Auswertung"_t, "%s: %d %%"_t, CString("Ärzte"), 7));
    EXPECT_TRUE(OrvoOpenProgressBox(0, 0, "Bitte ein wenig Geduld..."_t) && m_rekorder.m_bBoxOffen);
    EXPECT_TRUE(OrvoUpdateProgressBox2(0, 0));
    EXPECT_FALSE(OrvoUpdateProgressBox2(5, 10));
    OrvoCloseProgressBox();
    EXPECT_FALSE(m_rekorder.m_bBoxOffen);
    EXPECT_EQ(Elemente(m_rekorder.m_vBoxTexte), "Auswertung / Ärzte: 7 %,Bitte ein wenig Geduld...");
    EXPECT_EQ(m_rekorder.m_vSchritte, (std::vector<std::pair<long, long>>{{0, 1}, {5, 10}}));
    m_rekorder.m_bBoxGeht = false;
    EXPECT_FALSE(OrvoOpenProgressBox(nullptr, "", "x"));
}

// A terminal with what it reads and writes.
class Terminal : public ::testing::Test {
protected:
    std::istringstream m_ein;
    std::ostringstream m_aus;
    CTerminal m_schirm{m_ein, m_aus, true};
    CTerminal m_datei{m_ein, m_aus, false};
};

TEST_F(Terminal, MeldungenSindZeilenInUtf8) {
    m_datei.Hinweis(EHinweis::Hinweis, "", "Grüße", 0);
    m_datei.Hinweis(EHinweis::Fehler, "Statistik"_t, "Löschen gescheitert!"_t, 0);
    m_datei.Hinweis(EHinweis::Information, "T\nU", "a\nb", 0);
    m_datei.Hinweis(EHinweis::Fehler, "T", "\x1b[2J\r\x7f", 0); // nothing may drive the screen
    EXPECT_EQ(m_aus.str(), "Hinweis: Grüße\nFehler: Statistik: Löschen gescheitert!\n"
                           "Information: T U: a\n  b\nFehler: T: ?[2J??\n");
}

TEST_F(Terminal, FrageLiestDieAntwort) {
    std::string s;
    for (const char * pEingabe : {"j\n", " JA \r\n", "nein\n", "", "jein\nn\nj\n", "\n\n\nj\n"}) {
        m_ein = std::istringstream(pEingabe);
        m_aus.str("");
        s += m_datei.Frage("A", "B?", 0) ? "ja " : "nein ";
        s += m_aus.str() + "|";
    }
    EXPECT_EQ(s, "ja A: B? [j/n] |ja A: B? [j/n] |nein A: B? [j/n] |nein A: B? [j/n] \n|"
                 "nein A: B? [j/n] A: B? [j/n] |nein A: B? [j/n] A: B? [j/n] A: B? [j/n] |");
}

TEST_F(Terminal, FortschrittWirdSeltenGezeichnetUndGeloescht) {
    EXPECT_TRUE(m_schirm.Fortschritt(1, 2)); // no box, nothing drawn
    ASSERT_TRUE(m_schirm.OeffneFortschritt(nullptr, "Lauf", "Größe"));
    for (long i = 250; i < 450; ++i)
        EXPECT_TRUE(m_schirm.Fortschritt(i, 1000));
    m_schirm.SchliesseFortschritt();
    m_schirm.SchliesseFortschritt();
    for (CTerminal * p : {&m_schirm, &m_datei}) { // a message clears what a file does not have
        ASSERT_TRUE(p->OeffneFortschritt(nullptr, "", "Lauf"));
        EXPECT_TRUE(p->Fortschritt(12, 10));
        p->Hinweis(EHinweis::Hinweis, "", "Text", 0);
    }
    EXPECT_EQ(m_aus.str(), "\r\033[KLauf - Größe  25 %  (250 von 1000)\r\033[K"
                           "\r\033[KLauf  100 %  (12 von 10)\r\033[KHinweis: Text\nHinweis: Text\n");
}

// ---- directories and sibling libraries

TEST(Umgebung, PfadtexteUndVerzeichnisse) {
    EXPECT_EQ(Dateipfad("\\home\\Müller\\x.SVE"_t), "/home/Müller/x.SVE");
    EXPECT_EQ(Werte(Pfadtext("/home/Müller/x"), Verzeichnistext("/tmp"), Verzeichnistext("/")),
              "\\home\\Müller\\x|\\tmp\\|\\");
    for (const CString & sPfad : {GetOrvoExePath(), GetOrvoDataPath(0), TempPfad()})
        EXPECT_TRUE(sPfad.Right(1) == "\\" && std::filesystem::is_directory(Dateipfad(sPfad)))
            << sPfad.Utf8();
}

int Doppelt(int i) { return 2 * i; }

TEST_F(OberflaecheTest, FunktionenStehenInDerTabelleOderNebenDemProgramm) {
    EXPECT_FALSE(m_bibliotheken.Installiert("orvogo"));
    m_bibliotheken.Registriere("orvogo", "Doppelt", &Doppelt);
    m_bibliotheken.Installiere("kelabr"); // does not make it loadable
    EXPECT_TRUE(m_bibliotheken.Installiert("orvogo"));
    const auto pDoppelt = LadeFunktionAls<int(int)>("orvogo", "Doppelt");
    EXPECT_EQ(pDoppelt ? pDoppelt(21) : 0, 42);
    EXPECT_EQ(LadeFunktion("orvogo", "SucheBEL"_t), nullptr);
    EXPECT_EQ(LadeFunktion("orvo", "Doppelt"), nullptr); // the beginning of a name is another library
    EXPECT_EQ(LadeFunktion("kelabr", "cos"), nullptr);
    Dl_info info{};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "cos"), &info), 0);
    std::filesystem::create_symlink(info.dli_fname, m_verzeichnis / "programm" / "libkelabr.so");
    const auto pCos = LadeFunktionAls<double(double)>("kelabr", "cos");
    EXPECT_DOUBLE_EQ(pCos ? pCos(0.0) : 0.0, 1.0);
    EXPECT_EQ(LadeFunktion("kelabr", "PunkteOrdination"_t), nullptr);
    EXPECT_EQ(Gesagt(), "E:Hinweis|Programm in Vorbereitung!| E:LoadLibrary fehlgeschlagen!|orvo\nDoppelt| "
                        "E:LoadLibrary fehlgeschlagen!|kelabr\ncos| E:Hinweis|Programm in Vorbereitung!| ");
}

} // namespace

} // namespace orvostat
