// The command check: looks for what is wrong in a practice file.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegePruefungHinzu(CLI::App & app);

} // namespace orvostat
