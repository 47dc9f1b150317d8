// All tables of a practice, in the order in which a person would read a practice.
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

} // namespace orvostat
