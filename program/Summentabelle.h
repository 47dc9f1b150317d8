// Sums of a run's hits by one or two of their properties.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/accu/StatAccu.h"

#include <span>
#include <string>
#include <vector>

namespace orvostat {

// A property by which hits are summed.
struct SKriterium {
    const char * pWort;                          // of the command line
    const char * pName;                          // of its column
    CString (*fSchluessel)(const CBehHitLine &); // equal for one group; the groups stand in this order
    CString (*fName)(CStatAccu &, const CBehHitLine &);
};

enum class ENach { Behandler, Kostentraeger, Art, Kasse, Monat, Leistung, Patient };
[[nodiscard]] const SKriterium & Kriterium(ENach eNach);
// The words of all; the one of a word, null for another.
[[nodiscard]] std::vector<std::string> Kriterienworte();
[[nodiscard]] const SKriterium * FindeKriterium(const std::string & sWort);

// Hits, points and amount of each group, and of all. The points are those of the insurers' services: those of the
// private schedule are of another worth. Amounts are added up exactly and in euro.
void SchreibeSummen(CDokument & dokument, CStatAccu & accu, std::span<const SKriterium * const> vNach);

} // namespace orvostat
