// What the commands share that read and make whole practice files, and how a command ends.
#pragma once

#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <memory>
#include <string>

namespace orvostat {

// The exit codes of the program.
enum EEnde : int {
    ENDE_OK = 0,
    ENDE_FEHLER = 1,    // refused or failed
    ENDE_AUFRUF = 2,    // wrong usage
    ENDE_ABBRUCH = 130, // cancelled by the user
};

// Whether a practice lies on a server: what the user has named is "postgresql://...", with "praxis=ID" as one more
// parameter where the database has several. Everything below that speaks of a file refuses it.
[[nodiscard]] bool IstServer(const std::string & sDatei);
// The same with a practice named; ends the command where it is a file.
[[nodiscard]] std::string MitPraxis(const std::string & sDatei, const std::string & sPraxis);
// How a practice is named in what a user reads or keeps: the file as it was given, a database without password.
[[nodiscard]] std::string Praxisname(const std::string & sDatei);
// Opens a practice in a file or on a server, to read or to write; or makes one on a server, which is there as soon as a
// group has taken effect. One that is refused ends the command.
[[nodiscard]] std::shared_ptr<CZeilenspeicher> OeffnePraxis(const std::string & sDatei, EModus eModus);
// Ends the command where the practice lies on a server.
void VerweigereServer(const std::string & sDatei);

// Opens a practice file. A file that is refused ends the command with its reason and exit code 1; where a crash has
// left a change half done, that names the command that mends it.
[[nodiscard]] std::shared_ptr<CSqliteSpeicher> OeffneSpeicher(const std::string & sDatei, EModus eModus);

// Takes back a change that a crash has left half done; true if there was one. A file that cannot be written ends the
// command.
[[nodiscard]] bool NimmUnterbrocheneZurueck(const std::string & sDatei);

// Why the last read or write of a practice file failed, for behind "...: "; empty where the store does not know.
[[nodiscard]] std::string Fehlergrund(const CZeilenspeicher * pSpeicher);
// Ends the command like Verweigere with a sentence, given without its point, and that reason.
[[noreturn]] void Scheitere(const std::string & sSatz, const CZeilenspeicher & speicher);

// Moves the progress box. Ends the command with exit code 130 when the user cancels and confirms it.
void Fortschritt(std::int64_t iPos, std::int64_t iMax);

// Ends the command with exit code 130.
[[noreturn]] void BrichAb();

} // namespace orvostat
