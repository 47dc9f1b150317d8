#include "orvostatbs/host/Oberflaeche.h"

#include "support/Rekorder.h"

#include <cmath>
#include <filesystem>
#include <sstream>

#include <dlfcn.h>

namespace {

using namespace orvostat;

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
                  {SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0},
              }));
}

TEST_F(OberflaecheTest, SollIchGibtZehnNurFuerJa) {
    m_rekorder.m_vAntworten = {true, false};
    EXPECT_EQ(SollIch("Vorgang abbrechen..."_t, "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0), 10);
    EXPECT_NE(SollIch("a", "b", 0), 10);
    EXPECT_NE(SollIch("a", "b", 0), 10);
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

TEST_F(OberflaecheTest, WartezeigerGehtMitSeinemObjekt) {
    {
        const CWaitCursor warten;
        EXPECT_TRUE(m_rekorder.m_bWartezeiger);
    }
    EXPECT_FALSE(m_rekorder.m_bWartezeiger);
}

TEST_F(OberflaecheTest, EinErsatzBringtDenVorigenZurueck) {
    {
        CRekorder innen;
        const COberflaecheErsatz ersatz(innen);
        Halt("", "innen");
        EXPECT_EQ(innen.m_vPrompts.size(), 1u);
    }
    Halt("", "aussen");
    EXPECT_EQ(m_rekorder.m_vPrompts, (std::vector<SPrompt>{{SPrompt::HALT, "", "aussen", 0}}));
}

TEST(Terminal, MeldungenSindZeilenInUtf8) {
    const struct {
        EHinweis eHinweis;
        CString sTitel, sText;
        const char * pErwartet;
    } vFaelle[] = {
        {EHinweis::Hinweis, "", "Grüße", "Hinweis: Grüße\n"},
        {EHinweis::Fehler, "Statistik"_t, "Löschen gescheitert!"_t,
         "Fehler: Statistik: Löschen gescheitert!\n"},
        {EHinweis::Information, "T\nU", "a\nb", "Information: T U: a\n  b\n"},
        {EHinweis::Fehler, "T", "\x1b[2J\r\x7f", "Fehler: T: ?[2J??\n"}, // nothing may drive the screen
    };
    for (const auto & fall : vFaelle) {
        std::istringstream ein;
        std::ostringstream aus;
        CTerminal(ein, aus, false).Hinweis(fall.eHinweis, fall.sTitel, fall.sText, 0);
        EXPECT_EQ(aus.str(), fall.pErwartet);
    }
}

TEST(Terminal, FrageLiestDieAntwort) {
    const struct {
        const char * pEingabe;
        bool bJa;
        int iGefragt;
    } vFaelle[] = {{"j\n", true, 1},    {" JA \r\n", true, 1},   {"nein\n", false, 1},      {"", false, 1},
                   {"x\nj\n", true, 2}, {"\n\n\nj\n", false, 3}, {"jein\nn\nj\n", false, 2}};
    for (const auto & fall : vFaelle) {
        std::istringstream ein(fall.pEingabe);
        std::ostringstream aus;
        EXPECT_EQ(CTerminal(ein, aus, false).Frage("Abbruch", "Wirklich?"_t, 0), fall.bJa) << fall.pEingabe;
        int iGefragt = 0;
        for (auto i = aus.str().find("Abbruch: Wirklich? [j/n] "); i != std::string::npos;
             i = aus.str().find("Abbruch", i + 1))
            ++iGefragt;
        EXPECT_EQ(iGefragt, fall.iGefragt) << fall.pEingabe;
    }
}

TEST(Terminal, FortschrittWirdSeltenGezeichnetUndGeloescht) {
    std::istringstream ein;
    std::ostringstream aus;
    CTerminal terminal(ein, aus, true);
    EXPECT_TRUE(terminal.Fortschritt(1, 2)); // no box, nothing drawn
    ASSERT_TRUE(terminal.OeffneFortschritt(nullptr, "Lauf", "Größe"));
    for (long i = 250; i < 450; ++i)
        EXPECT_TRUE(terminal.Fortschritt(i, 1000));
    EXPECT_EQ(aus.str(), "\r\033[KLauf - Größe  25 %  (250 von 1000)");
    terminal.SchliesseFortschritt();
    terminal.SchliesseFortschritt();
    EXPECT_EQ(aus.str(), "\r\033[KLauf - Größe  25 %  (250 von 1000)\r\033[K");
}

TEST(Terminal, EineMeldungRaeumtDenFortschrittWeg) {
    std::istringstream ein;
    std::ostringstream aus;
    CTerminal terminal(ein, aus, true);
    ASSERT_TRUE(terminal.OeffneFortschritt(nullptr, "", "Lauf"));
    EXPECT_TRUE(terminal.Fortschritt(12, 10));
    terminal.Hinweis(EHinweis::Hinweis, "", "Text", 0);
    EXPECT_EQ(aus.str(), "\r\033[KLauf  100 %  (12 von 10)\r\033[KHinweis: Text\n");
}

TEST(Terminal, OhneSchirmKeinFortschritt) {
    std::istringstream ein;
    std::ostringstream aus;
    CTerminal terminal(ein, aus, false);
    ASSERT_TRUE(terminal.OeffneFortschritt(nullptr, "", "Lauf"));
    EXPECT_TRUE(terminal.Fortschritt(5, 10));
    terminal.SchliesseFortschritt();
    EXPECT_EQ(aus.str(), "");
}

// ---- directories and sibling libraries

class UmgebungTest : public CHostTest {
protected:
    static int Doppelt(int i) { return 2 * i; }
};

TEST(Umgebung, PfadtexteUndDateipfade) {
    EXPECT_EQ(Dateipfad("\\home\\Müller\\stat\\07\\x.SVE"_t), "/home/Müller/stat/07/x.SVE");
    EXPECT_EQ(Pfadtext("/home/Müller/x"), "\\home\\Müller\\x"_t);
    EXPECT_EQ(Verzeichnistext("/tmp"), CString("\\tmp\\"));
    EXPECT_EQ(Verzeichnistext("/tmp/"), CString("\\tmp\\"));
    EXPECT_EQ(Verzeichnistext("/"), CString("\\"));
}

TEST(Umgebung, VerzeichnisseGibtEsAuchOhneErsatz) {
    for (const CString & sPfad : {GetOrvoExePath(), GetOrvoDataPath(0), TempPfad()}) {
        EXPECT_EQ(sPfad.Right(1), CString("\\"));
        EXPECT_TRUE(std::filesystem::is_directory(Dateipfad(sPfad))) << sPfad.Utf8();
    }
}

TEST_F(UmgebungTest, FunktionAusDerTabelle) {
    EXPECT_FALSE(m_bibliotheken.Installiert("orvogo"));
    m_bibliotheken.Registriere("orvogo", "Doppelt", &Doppelt);
    EXPECT_TRUE(m_bibliotheken.Installiert("orvogo"));
    const auto pDoppelt = LadeFunktionAls<int(int)>("orvogo", "Doppelt");
    ASSERT_NE(pDoppelt, nullptr);
    EXPECT_EQ(pDoppelt(21), 42);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
}

TEST_F(UmgebungTest, FehlendeFunktionUndFehlendeBibliothek) {
    m_bibliotheken.Registriere("orvogo", "Doppelt", &Doppelt);
    m_bibliotheken.Installiere("kelabr");
    EXPECT_EQ(LadeFunktion("orvogo", "SucheBEL"_t), nullptr);
    EXPECT_EQ(LadeFunktion("kelabr", "PunkteOrdination"_t), nullptr);
    EXPECT_EQ(LadeFunktion("orvo", "Doppelt"), nullptr); // the beginning of a name is another library
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{
                  {SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0},
                  {SPrompt::HALT_E, "LoadLibrary fehlgeschlagen!"_t, "kelabr\nPunkteOrdination"_t, 0},
                  {SPrompt::HALT_E, "LoadLibrary fehlgeschlagen!"_t, "orvo\nDoppelt"_t, 0},
              }));
}

TEST_F(UmgebungTest, BibliothekNebenDemProgramm) {
    Dl_info info{};
    ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, "cos"), &info), 0);
    std::filesystem::create_symlink(info.dli_fname, m_verzeichnis / "programm" / "libkelabr.so");
    const auto pCos = LadeFunktionAls<double(double)>("kelabr", "cos");
    ASSERT_NE(pCos, nullptr);
    EXPECT_DOUBLE_EQ(pCos(0.0), 1.0);
    EXPECT_EQ(LadeFunktion("kelabr", "PunkteOrdination"_t), nullptr);
    EXPECT_EQ(m_rekorder.m_vPrompts,
              (std::vector<SPrompt>{{SPrompt::HALT_E, "Hinweis", "Programm in Vorbereitung!"_t, 0}}));
}

} // namespace
