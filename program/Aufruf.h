// The command line: German help and messages, and the exit code.
#pragma once

#include "Ausgabe.h"

#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace orvostat {

[[nodiscard]] std::string Version();

// Gives the app its description and German help texts. Comes first: commands take them over when they are added.
void Beschrifte(CLI::App & app);

// Reads the command line and runs the command. A command ends normally or throws CLI::RuntimeError with its exit
// code; wrong usage is reported and is exit code 2. Any other exception passes through.
[[nodiscard]] int FuehreAus(CLI::App & app, int argc, const char * const * argv);

// What an option takes: a whole number from iVon to iBis, one of some words in whatever case, a text that is not empty.
// The message is German, and the help text says nothing of it. Wortwahl is for transform(), not for check(): the value
// becomes the word as it stands in the list.
[[nodiscard]] CLI::Validator Bereich(long long iVon, long long iBis);
[[nodiscard]] CLI::Validator Wortwahl(std::vector<std::string> vWorte);
[[nodiscard]] CLI::Validator NichtLeer();
// Equal but for the case of ASCII letters.
[[nodiscard]] bool GleichesWort(std::string_view sA, std::string_view sB);
// " Meinten Sie x?" where one of the words is like the one that there is not; else empty.
[[nodiscard]] std::string Vorschlag(std::string_view sWort, const std::vector<std::string> & vWorte);
// The option --format of a command that writes rows; eFormat keeps its value where it is not given and outlives the
// command.
void OptionFormat(CLI::App & befehl, EFormat & eFormat);

} // namespace orvostat
