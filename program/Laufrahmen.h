// What the commands on top of a run have in common: the selection, the run, the document, and what a cancel or a
// failed read makes of it.
#pragma once

#include "Ausgabeziel.h"
#include "Selektionsoptionen.h"
#include "Summentabelle.h"

#include "orvostatbs/lauf/Lauf.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace orvostat {

struct SLaufrahmen {
    const CLI::App & app;
    const SLaufoptionen & optionen;
    const SAusgabeoptionen & ausgabe;
    // Shows what the run has brought; false when the user has stopped it.
    std::function<bool(CDokument &, CStatAccu &, const CLauf *)>
        fZeige; // the run is null where there was none
    // After a document that is whole; empty for nothing.
    std::function<void(CStatAccu &)> fDanach = nullptr;
};

// Adds --nach, one or two criteria with a comma between them; vNach must outlive app.
CLI::Option * FuegeNachHinzu(CLI::App & app, std::vector<const SKriterium *> & vNach);

// The run's orders without those that need the accumulator.
[[nodiscard]] SLaufauftrag Laufauftrag(const SLaufoptionen & optionen);

// Runs over the practice, which the caller has opened before he made accu. Whatever the moment of a cancel, what was
// collected until then is shown; but a file is whole. auftrag may hold hooks on accu; the selection is set here.
void FuehreLaufAus(const SLaufrahmen & rahmen, CStatAccu & accu, const SLaufauftrag & auftrag);
// Runs the selection that words of a command line give, on the practice that is open, without a document. fAendere
// changes what they say. Ends the command where there is no such selection, and where the run does not come to its end.
void LaufeWorte(std::vector<std::string> vWorte, const std::string & sDatei, CStatAccu & accu,
                const std::function<void(SLaufoptionen &)> & fAendere = nullptr);
// As FuehreLaufAus for hits that are in accu already, as sAuswahl has selected them. That the practice was read in full
// is the caller's to know.
void ZeigeOhneLauf(const SLaufrahmen & rahmen, CStatAccu & accu, const std::string & sAuswahl);

} // namespace orvostat
