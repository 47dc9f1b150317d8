// The program's terminal: the engine's own, and Ctrl-C is the cancel key. The only place that knows signals.
#pragma once

#include "orvostatbs/host/Oberflaeche.h"

namespace orvostat {

// Prompts and progress go to the error output, answers come from the input. While the object lives, Ctrl-C makes
// Fortschritt return false until FrageAbbruch has been asked. A second one before that question counts as its yes;
// the third without a question ends the program at once, for work that never looks.
class CKonsole : public CTerminal {
public:
    CKonsole();
    ~CKonsole() override;
    // Without a title that is the name of a function.
    void Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool Fortschritt(long iPos, long iMax) override;
    // To the question of FrageAbbruch also Ctrl-C and the end of the input are yes: a script must be able to stop.
    [[nodiscard]] bool Frage(const CString & sTitel, const CString & sText, int iArt) override;
};

// True if Ctrl-C was pressed since the last question and the user means it; asks only then, and needs no progress
// box. Costs next to nothing.
[[nodiscard]] bool AbbruchVerlangt();

} // namespace orvostat
