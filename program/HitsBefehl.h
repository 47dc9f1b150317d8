// The command hits: the hits of a practice's treatments.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeHitsHinzu(CLI::App & app);

} // namespace orvostat
