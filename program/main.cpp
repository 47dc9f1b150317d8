// orvostat: the engine's program for administrators and engineers. Here the commands are wired, nothing else.
#include "Aufruf.h"
#include "Befehle.h"
#include "Datenbank.h"
#include "Konsole.h"

#include <iostream>
#include <new>

namespace {

int Fuehre(int argc, char ** argv) {
    orvostat::CKonsole konsole;
    const orvostat::COberflaecheErsatz ersatz(konsole);

    CLI::App app;
    orvostat::Beschrifte(app);
    orvostat::FuegeMusterHinzu(app);
    orvostat::FuegeHitsHinzu(app);
    orvostat::FuegeRunHinzu(app);
    orvostat::FuegeLeistungenHinzu(app);
    orvostat::FuegeHundertHinzu(app);
    orvostat::FuegeKassenHinzu(app);
    orvostat::FuegeZeplanHinzu(app);
    orvostat::FuegeBerichtHinzu(app);
    orvostat::FuegeGespeichertHinzu(app);
    orvostat::FuegeOeffnenHinzu(app);
    orvostat::FuegeVergleichenHinzu(app);
    orvostat::FuegePruefenHinzu(app);
    orvostat::FuegeTabelleHinzu(app);
    orvostat::FuegeExplainHinzu(app);
    orvostat::FuegePruefungHinzu(app);
    orvostat::FuegeKopieHinzu(app);
    orvostat::FuegeHvmHinzu(app);
    orvostat::FuegeKalenderHinzu(app);
    return orvostat::FuehreAus(app, argc, argv);
}

} // namespace

int main(int argc, char ** argv) {
    try {
        return Fuehre(argc, argv);
    } catch (const std::bad_alloc &) {
        std::cerr << "Nicht genug Speicher.\n";
    } catch (const std::exception &) {
        std::cerr << "Unerwarteter Fehler im Programm; der Befehl ist nicht zu Ende gekommen.\n";
    }
    return orvostat::ENDE_FEHLER;
}
