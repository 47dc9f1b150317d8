// The command explain: where the amounts of a day come from, in the steps that the valuation has noted.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeExplainHinzu(CLI::App & app);

} // namespace orvostat
