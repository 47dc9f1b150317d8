// What the commands on top of a run have in common: the selection, the run, the document, and what a cancel or a
// failed read makes of it.
#pragma once

#include "Ausgabeziel.h"
#include "Selektionsoptionen.h"

#include "orvostatbs/lauf/Lauf.h"

#include <functional>

namespace orvostat {

struct SLaufrahmen {
    const CLI::App & app;
    const SLaufoptionen & optionen;
    const SAusgabeoptionen & ausgabe;
    // Shows what the run has brought; false when the user has stopped it.
    std::function<bool(CDokument &, CStatAccu &, const CLauf &)> fZeige;
    // After a document that is whole; empty for nothing.
    std::function<void(CStatAccu &)> fDanach = nullptr;
};

// The run's orders without those that need the accumulator.
[[nodiscard]] SLaufauftrag Laufauftrag(const SLaufoptionen & optionen);

// Runs over the practice, which the caller has opened before he made accu. Whatever the moment of a cancel, what was
// collected until then is shown; but a file is whole. auftrag may hold hooks on accu; the selection is set here.
void FuehreLaufAus(const SLaufrahmen & rahmen, CStatAccu & accu, const SLaufauftrag & auftrag);

} // namespace orvostat
