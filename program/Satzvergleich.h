// What differs between two statistics: sums, and the treatments that make the difference.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/accu/StatAccu.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvostat {

struct SUnterschiede {
    std::int64_t iDazu = 0;
    std::int64_t iFort = 0;
    std::int64_t iAnders = 0;
    [[nodiscard]] bool Keine() const { return iDazu + iFort + iAnders == 0; }
};

// Compares the hits entry by entry: the same patient, day, session and number, and for laboratory entries the same
// block and service. What differs between two states of one entry are the columns that sums are formed of, but those of
// vOhne, which one of the two does not have.
[[nodiscard]] SUnterschiede Vergleiche(const CStatAccu & alt, const CStatAccu & neu,
                                       const std::vector<std::string> & vOhne);
// Shows the sums by treater, payer and statistic kind that differ, and each entry with both values.
SUnterschiede ZeigeVergleich(CDokument & dokument, CStatAccu & alt, CStatAccu & neu,
                             const std::vector<std::string> & vOhne);

} // namespace orvostat
