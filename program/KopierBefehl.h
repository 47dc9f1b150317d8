// The command copy: copies a practice file table by table.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeKopieHinzu(CLI::App & app);

} // namespace orvostat
