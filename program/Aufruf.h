// The command line: German help and messages, and the exit code.
#pragma once

#include "Ausgabe.h"

#include <CLI/CLI.hpp>

namespace orvostat {

[[nodiscard]] std::string Version();

// Gives the app its description and German help texts. Comes first: commands take them over when they are added.
void Beschrifte(CLI::App & app);

// Reads the command line and runs the command. A command ends normally or throws CLI::RuntimeError with its exit
// code; wrong usage is reported and is exit code 2. Any other exception passes through.
[[nodiscard]] int FuehreAus(CLI::App & app, int argc, const char * const * argv);

// What an option takes: a whole number from iVon to iBis, one of some words. The message is German, and the help text
// says nothing of it.
[[nodiscard]] CLI::Validator Bereich(long long iVon, long long iBis);
[[nodiscard]] CLI::Validator EinesVon(std::vector<std::string> vWorte);
// The option --format of a command that writes rows; eFormat keeps its value where it is not given and outlives the
// command.
void OptionFormat(CLI::App & befehl, EFormat & eFormat);

} // namespace orvostat
