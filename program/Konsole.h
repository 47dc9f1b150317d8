// The program's terminal: the engine's own, and Ctrl-C is the cancel key of the progress box.
#pragma once

#include "orvostatbs/host/Oberflaeche.h"

namespace orvostat {

// Prompts and progress go to the error output, answers come from the input. While the object lives, the first Ctrl-C
// makes the next Fortschritt return false; a second one before that ends the program at once.
class CKonsole : public CTerminal {
public:
    CKonsole();
    ~CKonsole() override;
    [[nodiscard]] bool Fortschritt(long iPos, long iMax) override;
};

} // namespace orvostat
