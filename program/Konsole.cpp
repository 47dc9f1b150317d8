#include "Konsole.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <initializer_list>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace orvostat {

namespace {

// How often Ctrl-C was pressed since the last question.
volatile std::sig_atomic_t s_iGedrueckt = 0;

// What shall not outlive the program.
std::array<std::atomic<const char *>, 4> s_apUnfertig{};
static_assert(std::atomic<const char *>::is_always_lock_free); // a handler asks it

constexpr int ENDET = static_cast<int>(SA_RESETHAND);
// Ends the program by the signal itself, so that who waits for it learns of it.
void Beende(int iSignal) {
    for (const auto & pUnfertig : s_apUnfertig)
        if (const char * const pDatei = pUnfertig) unlink(pDatei);
    raise(iSignal); // taken when the handler returns, by the default that SA_RESETHAND has brought back
}

void Fange(int iSignal, void (*pHandler)(int), int iArt) {
    struct sigaction art {};
    art.sa_handler = pHandler;
    art.sa_flags = iArt;
    sigaction(iSignal, &art, nullptr);
}

void Merke(int) {
    s_iGedrueckt = s_iGedrueckt + 1;
    if (s_iGedrueckt > 1) Fange(SIGINT, Beende, ENDET); // the next one ends the program
}

// Starts to count anew. iArt is SA_RESTART, or 0 where Ctrl-C shall end a read that waits.
void Horche(int iArt) {
    s_iGedrueckt = 0;
    Fange(SIGINT, Merke, iArt);
}

// The error output as it was at first: the progress box moves the cursor, and cleans its texts itself.
std::ostream & Roh() {
    static std::ostream s_roh(std::cerr.rdbuf());
    return s_roh;
}

} // namespace

CKonsole::CKonsole() : CTerminal(std::cin, Roh(), isatty(STDERR_FILENO) != 0) {
    Horche(SA_RESTART);
    // A write beyond the user's file size limit shall fail like any other.
    std::signal(SIGXFSZ, SIG_IGN);
}
CKonsole::~CKonsole() { std::signal(SIGINT, SIG_DFL); }

// The engine's titles name its operations and write paths with "\"; a user knows neither.
void CKonsole::Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) {
    CString s = sTitel;
    if (s.Right(2) == "()" || s == "ReadSelektionsFile") s.Empty();
    for (const auto & [sVorgang, sDeutsch] :
         std::initializer_list<std::pair<CString, CString>>{{"WriteDaten ", "Schreiben von "},
                                                            {"ReadDaten ", "Lesen von "},
                                                            {"DeleteFile ", "Löschen von "}}) {
        if (s.Find(sVorgang) != 0) continue;
        s = sDeutsch + s.Mid(sVorgang.GetLength());
        s.Replace("\\", "/");
        if (s.Right(1) == "!") s = s.Left(s.GetLength() - 1);
    }
    CTerminal::Hinweis(eHinweis, s, sText, iArt);
}

bool CKonsole::Fortschritt(long iPos, long iMax) {
    return s_iGedrueckt == 0 && CTerminal::Fortschritt(iPos, iMax);
}

bool CKonsole::Frage(const CString & sTitel, const CString & sText, int iArt) {
    if (sTitel != AbbruchTitel()) return CTerminal::Frage(sTitel, sText, iArt);
    const bool bSchonBestaetigt = s_iGedrueckt > 1;
    Horche(0);
    const bool bJa =
        bSchonBestaetigt || CTerminal::Frage(sTitel, sText, iArt) || s_iGedrueckt > 0 || std::cin.fail();
    Horche(SA_RESTART);
    std::clearerr(stdin);
    std::cin.clear();
    return bJa;
}

CSignalschutz::CSignalschutz(const std::string & sDatei) {
    while (m_iPlatz < s_apUnfertig.size() && s_apUnfertig[m_iPlatz] != nullptr)
        ++m_iPlatz;
    if (m_iPlatz < s_apUnfertig.size()) s_apUnfertig[m_iPlatz] = sDatei.c_str();
    for (std::size_t i = 0; i < SIGNALE.size(); ++i) {
        sigaction(SIGNALE[i], nullptr, &m_aVorher[i]);
        if (m_aVorher[i].sa_handler == SIG_IGN) continue; // nohup
        Fange(SIGNALE[i], Beende, ENDET);
    }
}

CSignalschutz::~CSignalschutz() {
    for (std::size_t i = 0; i < SIGNALE.size(); ++i)
        sigaction(SIGNALE[i], &m_aVorher[i], nullptr);
    if (m_iPlatz < s_apUnfertig.size()) s_apUnfertig[m_iPlatz] = nullptr;
}

bool AbbruchVerlangt() { return s_iGedrueckt > 0 && FrageAbbruch(); }

} // namespace orvostat
