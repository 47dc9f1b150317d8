// What a finished run shows: counts, sums, errors, hits.
#pragma once

#include "Ausgabe.h"
#include "Gegenrechnung.h"
#include "Summentabelle.h"

#include "orvostatbs/lauf/Lauf.h"

#include <iosfwd>
#include <vector>

namespace orvostat {

// Counts of the run, what has become of each treatment, what it met on its way, and the errors with their plain
// meaning.
void ZeigeZahlen(CDokument & dokument, const CStatAccu & accu, const CLauf & lauf);
// Amounts and points by treater, by payer and by statistic kind, or as vNach says.
void ZeigeSummen(CDokument & dokument, CStatAccu & accu, const std::vector<const SKriterium *> & vNach);
// Each valued hit; false, with the table ended, if the user stops it.
[[nodiscard]] bool ZeigeHits(CDokument & dokument, const CStatAccu & accu);
// The comparison with SQL: the differing sums, and a line that tells what was compared. True if nothing differs.
[[nodiscard]] bool ZeigeGegenrechnung(std::ostream & aus, const SGegenrechnung & rechnung);

} // namespace orvostat
