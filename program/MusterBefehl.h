// The command sample: makes a sample practice.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeMusterHinzu(CLI::App & app);

} // namespace orvostat
