// The commands about days: kalender, arbeitstage, naechster.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeKalenderHinzu(CLI::App & app);

} // namespace orvostat
