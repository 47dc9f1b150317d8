// The program's terminal: the engine's own, and Ctrl-C is the cancel key. The only place that knows signals.
#pragma once

#include "Steuerzeichenfilter.h"

#include "orvostatbs/host/Oberflaeche.h"

#include <array>
#include <csignal>
#include <iostream>
#include <string>

namespace orvostat {

// Prompts and progress go to the error output, answers come from the input. While the object lives, no control
// character passes std::cout and std::cerr but ends of lines, and Ctrl-C makes
// Fortschritt return false until FrageAbbruch has been asked. A second one before that question counts as its yes;
// the third without a question ends the program at once, for work that never looks, as every other signal does that
// ends programs.
class CKonsole : public CTerminal {
public:
    CKonsole();
    ~CKonsole() override;
    // Without a title that is the name of a function.
    void Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool Fortschritt(long iPos, long iMax) override;
    // To the question of FrageAbbruch also Ctrl-C and the end of the input are yes: a script must be able to stop.
    [[nodiscard]] bool Frage(const CString & sTitel, const CString & sText, int iArt) override;

private:
    CSauber m_ausgabe{std::cout};
    CSauber m_fehler{std::cerr};
};

// While the object lives, a signal that ends the program first removes a file. Of objects that live at once the first
// four count.
class CSignalschutz {
public:
    // The text outlives the object; there need be no file of that name.
    explicit CSignalschutz(const std::string & sDatei);
    ~CSignalschutz();
    CSignalschutz(const CSignalschutz &) = delete;
    CSignalschutz & operator=(const CSignalschutz &) = delete;

    static constexpr std::array SIGNALE{SIGHUP, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU};

private:
    std::size_t m_iPlatz = 0;
    std::array<struct sigaction, SIGNALE.size()> m_aVorher{};
};

// True if Ctrl-C was pressed since the last question and the user means it; asks only then, and needs no progress
// box. Costs next to nothing.
[[nodiscard]] bool AbbruchVerlangt();

} // namespace orvostat
