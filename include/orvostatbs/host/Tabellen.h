// All tables of a practice, in the order in which a person would read a practice, and what refers to what.
#pragma once

#include "orvostatbs/host/TabellenDatei.h"
#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"

#include <span>

namespace orvostat {

// The description of every table class, each once: what a store creates, copies and checks.
[[nodiscard]] std::span<const STabelle * const> AlleTabellen();

// Columns of one table that name a row of another: they are the first parts of that table's key 1. A reference whose
// last column is blank refers to nothing.
struct SVerweis {
    const STabelle * pVon;
    SSchluessel spalten;
    const STabelle * pNach;
};
[[nodiscard]] std::span<const SVerweis> AlleVerweise();

} // namespace orvostat
