// The command hvm: shows and changes the fee-distribution configuration of a practice file.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeHvmHinzu(CLI::App & app);

} // namespace orvostat
