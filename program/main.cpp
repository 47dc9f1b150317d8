// orvostat: the engine's program for administrators and engineers. Here the commands are wired, nothing else.
#include "Aufruf.h"
#include "Konsole.h"

#include "HitsBefehl.h"
#include "HvmBefehle.h"
#include "KalenderBefehle.h"
#include "KopierBefehl.h"
#include "LaufBefehle.h"
#include "MusterBefehl.h"
#include "PruefBefehl.h"

int main(int argc, char ** argv) {
    orvostat::CKonsole konsole;
    const orvostat::COberflaecheErsatz ersatz(konsole);

    CLI::App app;
    orvostat::Beschrifte(app);
    orvostat::FuegeMusterHinzu(app);
    orvostat::FuegeHitsHinzu(app);
    orvostat::FuegeLaufBefehleHinzu(app);
    orvostat::FuegePruefungHinzu(app);
    orvostat::FuegeKopieHinzu(app);
    orvostat::FuegeHvmHinzu(app);
    orvostat::FuegeKalenderHinzu(app);
    return orvostat::FuehreAus(app, argc, argv);
}
