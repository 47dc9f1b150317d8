// What the commands on top of a run have in common: the practice, the selection, the run, the document, and what a
// cancel or a failed read makes of it.
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

// Runs over the practice file. Whatever the moment of a cancel, what was collected until then is shown; but a file is
// whole. auftrag may hold hooks on accu, which belongs to the caller and has no selection yet.
void FuehreLaufAus(const SLaufrahmen & rahmen, CStatAccu & accu, const SLaufauftrag & auftrag);

} // namespace orvostat
