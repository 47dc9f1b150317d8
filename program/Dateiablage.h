// How a new file gets to the disk and to its name: what all commands that write files have in common.
#pragma once

#include <string>

#include <sys/types.h>

namespace orvostat {

// Something has this name, be it a link to nowhere.
[[nodiscard]] bool Steht(const std::string & sDatei);
// Puts the file sVon under the name sNach. False with errno, EEXIST where the name is taken and bErsetzen is not set.
[[nodiscard]] bool GibNamen(const std::string & sVon, const std::string & sNach, bool bErsetzen);
// A name of its own for a file that is to become sDatei, in the same folder: "NAME.neu-" and digits.
[[nodiscard]] std::string EigenerName(const std::string & sDatei);
// The permissions of a file; the owner's alone where there is none.
[[nodiscard]] mode_t Rechte(const std::string & sDatei);
// Why the system refuses to write, for behind "...: ".
[[nodiscard]] std::string Systemgrund(int iErrno);
// Brings a folder's names to the disk, that of this file; true also where the file system has no such thing.
[[nodiscard]] bool SichereVerzeichnis(const std::string & sDatei);
// Gives the file its permissions and brings its bytes to the disk.
[[nodiscard]] bool SichereDatei(const std::string & sDatei, mode_t iRechte);

} // namespace orvostat
