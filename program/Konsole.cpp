#include "Konsole.h"

#include <csignal>
#include <iostream>

#include <unistd.h>

namespace orvostat {

namespace {

volatile std::sig_atomic_t s_bAbbruch = 0;

void Merke(int) {
    s_bAbbruch = 1;
    std::signal(SIGINT, SIG_DFL); // the next one ends the program
}

} // namespace

CKonsole::CKonsole() : CTerminal(std::cin, std::cerr, isatty(STDERR_FILENO) != 0) {
    std::signal(SIGINT, Merke);
}
CKonsole::~CKonsole() { std::signal(SIGINT, SIG_DFL); }

bool CKonsole::Fortschritt(long iPos, long iMax) {
    if (s_bAbbruch == 0) return CTerminal::Fortschritt(iPos, iMax);
    s_bAbbruch = 0;
    std::signal(SIGINT, Merke);
    return false;
}

} // namespace orvostat
