// The commands run and explain: a valued run, and where the amounts of a day come from.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeLaufBefehleHinzu(CLI::App & app);

} // namespace orvostat
