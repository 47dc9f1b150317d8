// What a finished run shows: counts, sums, errors, hits.
#pragma once

#include "Ausgabe.h"
#include "Gegenrechnung.h"

#include "orvostatbs/lauf/Lauf.h"

#include <iosfwd>

namespace orvostat {

// Counts of the run, what it met on its way, and the errors with their plain meaning.
void ZeigeZahlen(std::ostream & aus, const CStatAccu & accu, const CLauf & lauf);
// Amounts and points by treater, by payer and by statistic kind.
void ZeigeSummen(std::ostream & aus, CStatAccu & accu);
// Each valued hit; false, with the table ended, if the user stops it.
[[nodiscard]] bool ZeigeHits(std::ostream & aus, const CStatAccu & accu, EFormat eFormat);
// The comparison with SQL: the differing sums, and a line that tells what was compared. True if nothing differs.
[[nodiscard]] bool ZeigeGegenrechnung(std::ostream & aus, const SGegenrechnung & rechnung);

} // namespace orvostat
