#include "orvostatbs/host/Oberflaeche.h"

#include "support/Rekorder.h"

#include <cmath>
#include <filesystem>
#include <sstream>

#include <dlfcn.h>

namespace orvostat {

namespace {

class OberflaecheTest : public CHostTest {};

TEST_F(OberflaecheTest, JedeMeldungKommtMitIhrerArtAn) {
    Halt("", "Neue Norm"_t, 6);
    HaltE("Statistik"_t, "Löschen der Datei 'a' gescheitert!"_t, 0);
    HaltI("Datensammlung gescheitert."_t, "Keine Kopfzeile gefunden!"_t);
    MxHaltE("Hinweis", "Programm in Vorbereitung!"_t, 0);
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{
                  {SPrompt::HALT, "", "Neue Norm"_t, 6},
                  {SPrompt::HALT_E, "Statistik"_t, "Löschen der Datei 'a' gescheitert!"_t, 0},
                  {SPrompt::HALT_I, "Datensammlung gescheitert."_t, "Keine Kopfzeile gefunden!"_t, 0},
                  {SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0}}));
}

TEST_F(OberflaecheTest, SollIchGibtZehnNurFuerJa) {
    m_rekorder.m_vAntworten = {true, false};
    EXPECT_EQ(SollIch("Abbruch", "Vorgang abbrechen?"_t, 0), 10);
    EXPECT_NE(SollIch("Abbruch", "Vorgang abbrechen?"_t, 0), 10);
}

TEST_F(OberflaecheTest, FortschrittMitFormatUndAbbruch) {
    m_rekorder.m_iAbbruchAb = 2;
    const CWnd wnd;
    EXPECT_TRUE(
        OrvoOpenProgressBox(CWnd::GetSafeHwnd(&wnd), "Auswertung"_t, "%s: %d %%"_t, CString("Ärzte"), 7));
    EXPECT_TRUE(OrvoOpenProgressBox(0, 0, "Bitte ein wenig Geduld..."_t));
    EXPECT_TRUE(m_rekorder.m_bBoxOffen);
    EXPECT_TRUE(OrvoUpdateProgressBox2(0, 0));
    EXPECT_FALSE(OrvoUpdateProgressBox2(5, 10));
    OrvoCloseProgressBox();
    EXPECT_FALSE(m_rekorder.m_bBoxOffen);
    EXPECT_EQ(m_rekorder.m_vBoxTexte,
              (std::vector<CString>{"Auswertung / Ärzte: 7 %"_t, "Bitte ein wenig Geduld..."_t}));
    EXPECT_EQ(m_rekorder.m_vSchritte, (std::vector<std::pair<long, long>>{{0, 1}, {5, 10}}));

    m_rekorder.m_bBoxGeht = false;
    EXPECT_FALSE(OrvoOpenProgressBox(nullptr, "", "x"));
}

TEST_F(OberflaecheTest, WartezeigerUndErsatzGehenMitIhremObjekt) {
    {
        const CWaitCursor warten;
        EXPECT_TRUE(m_rekorder.m_bWartezeiger);
        CRekorder innen;
        const COberflaecheErsatz ersatz(innen);
        Halt("", "innen");
        EXPECT_EQ(innen.m_vPrompts.size(), 1u);
    }
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
    Halt("", "aussen");
    EXPECT_EQ(m_rekorder.m_vPrompts, (std::vector<SPrompt>{{SPrompt::HALT, "", "aussen", 0}}));
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
    const std::string sFrage = "Abbruch: Wirklich? [j/n] ";
    const struct {
        const char * pEingabe;
        bool bJa;
        std::string sGefragt;
    } vFaelle[] = {{"j\n", true, sFrage},
                   {" JA \r\n", true, sFrage},
                   {"nein\n", false, sFrage},
                   {"", false, sFrage + "\n"},
                   {"jein\nn\nj\n", false, sFrage + sFrage},
                   {"\n\n\nj\n", false, sFrage + sFrage + sFrage}};
    for (const auto & fall : vFaelle) {
        m_ein = std::istringstream(fall.pEingabe);
        m_aus.str("");
        EXPECT_EQ(m_datei.Frage("Abbruch", "Wirklich?"_t, 0), fall.bJa) << fall.pEingabe;
        EXPECT_EQ(m_aus.str(), fall.sGefragt) << fall.pEingabe;
    }
}

TEST_F(Terminal, FortschrittWirdSeltenGezeichnetUndGeloescht) {
    EXPECT_TRUE(m_schirm.Fortschritt(1, 2)); // no box, nothing drawn
    ASSERT_TRUE(m_schirm.OeffneFortschritt(nullptr, "Lauf", "Größe"));
    for (long i = 250; i < 450; ++i)
        EXPECT_TRUE(m_schirm.Fortschritt(i, 1000));
    m_schirm.SchliesseFortschritt();
    m_schirm.SchliesseFortschritt();
    EXPECT_EQ(m_aus.str(), "\r\033[KLauf - Größe  25 %  (250 von 1000)\r\033[K");
}

TEST_F(Terminal, EineMeldungRaeumtDenFortschrittWegDenEineDateiNichtHat) {
    for (CTerminal * p : {&m_schirm, &m_datei}) {
        ASSERT_TRUE(p->OeffneFortschritt(nullptr, "", "Lauf"));
        EXPECT_TRUE(p->Fortschritt(12, 10));
        p->Hinweis(EHinweis::Hinweis, "", "Text", 0);
    }
    EXPECT_EQ(m_aus.str(), "\r\033[KLauf  100 %  (12 von 10)\r\033[KHinweis: Text\nHinweis: Text\n");
}

// ---- directories and sibling libraries

class UmgebungTest : public CHostTest {};

int Doppelt(int i) { return 2 * i; }

TEST(Umgebung, PfadtexteUndDateipfade) {
    EXPECT_EQ(Dateipfad("\\home\\Müller\\stat\\07\\x.SVE"_t), "/home/Müller/stat/07/x.SVE");
    EXPECT_EQ(Pfadtext("/home/Müller/x"), "\\home\\Müller\\x"_t);
    EXPECT_EQ(Verzeichnistext("/tmp"), CString("\\tmp\\"));
    EXPECT_EQ(Verzeichnistext("/"), CString("\\"));
}

TEST(Umgebung, VerzeichnisseGibtEsAuchOhneErsatz) {
    for (const CString & sPfad : {GetOrvoExePath(), GetOrvoDataPath(0), TempPfad()}) {
        EXPECT_EQ(sPfad.Right(1), CString("\\"));
        EXPECT_TRUE(std::filesystem::is_directory(Dateipfad(sPfad))) << sPfad.Utf8();
    }
}

TEST_F(UmgebungTest, FunktionenDerTabelle) {
    EXPECT_FALSE(m_bibliotheken.Installiert("orvogo"));
    m_bibliotheken.Registriere("orvogo", "Doppelt", &Doppelt);
    EXPECT_TRUE(m_bibliotheken.Installiert("orvogo"));
    const auto pDoppelt = LadeFunktionAls<int(int)>("orvogo", "Doppelt");
    ASSERT_NE(pDoppelt, nullptr);
    EXPECT_EQ(pDoppelt(21), 42);
    EXPECT_EQ(LadeFunktion("orvogo", "SucheBEL"_t), nullptr);
    EXPECT_EQ(LadeFunktion("orvo", "Doppelt"), nullptr); // the beginning of a name is another library
    EXPECT_EQ(
        m_rekorder.m_vPrompts,
        (std::vector<SPrompt>{{SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0},
                              {SPrompt::HALT_E, "LoadLibrary fehlgeschlagen!"_t, "orvo\nDoppelt"_t, 0}}));
}

TEST_F(UmgebungTest, BibliothekNebenDemProgramm) {
    m_bibliotheken.Installiere("kelabr"); // does not make it loadable
    EXPECT_EQ(LadeFunktion("kelabr", "cos"), nullptr);
    Dl_info info{};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "cos"), &info), 0);
    std::filesystem::create_symlink(info.dli_fname, m_verzeichnis / "programm" / "libkelabr.so");
    const auto pCos = LadeFunktionAls<double(double)>("kelabr", "cos");
    ASSERT_NE(pCos, nullptr);
    EXPECT_DOUBLE_EQ(pCos(0.0), 1.0);
    EXPECT_EQ(LadeFunktion("kelabr", "PunkteOrdination"_t), nullptr);
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{{SPrompt::HALT_E, "LoadLibrary fehlgeschlagen!"_t, "kelabr\ncos"_t, 0},
                                    {SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0}}));
}

} // namespace

} // namespace orvostat
