#include "Konsole.h"

#include <csignal>
#include <cstdio>
#include <iostream>

#include <unistd.h>

namespace orvostat {

namespace {

// How often Ctrl-C was pressed since the last question.
volatile std::sig_atomic_t s_iGedrueckt = 0;

void Merke(int) {
    s_iGedrueckt = s_iGedrueckt + 1;
    if (s_iGedrueckt > 1) std::signal(SIGINT, SIG_DFL); // the next one ends the program
}

// Starts to count anew. iArt is SA_RESTART, or 0 where Ctrl-C shall end a read that waits.
void Horche(int iArt) {
    struct sigaction art {};
    art.sa_handler = Merke;
    art.sa_flags = iArt;
    s_iGedrueckt = 0;
    sigaction(SIGINT, &art, nullptr);
}

} // namespace

CKonsole::CKonsole() : CTerminal(std::cin, std::cerr, isatty(STDERR_FILENO) != 0) {
    Horche(SA_RESTART);
    // A write beyond the user's file size limit shall fail like any other.
    std::signal(SIGXFSZ, SIG_IGN);
}
CKonsole::~CKonsole() { std::signal(SIGINT, SIG_DFL); }

void CKonsole::Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) {
    CTerminal::Hinweis(eHinweis, sTitel.Right(2) == "()" ? CString() : sTitel, sText, iArt);
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

bool AbbruchVerlangt() { return s_iGedrueckt > 0 && FrageAbbruch(); }

} // namespace orvostat
