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

// Opens a practice file. A file that is refused ends the command with its reason and exit code 1; where a crash has
// left a change half done, that names the command that mends it.
[[nodiscard]] std::shared_ptr<CSqliteSpeicher> OeffneSpeicher(const std::string & sDatei, EModus eModus);

// Takes back a change that a crash has left half done; true if there was one. A file that cannot be written ends the
// command.
[[nodiscard]] bool NimmUnterbrocheneZurueck(const std::string & sDatei);

// Why the last read or write of a practice file failed, for behind "...: "; empty where the store does not know.
[[nodiscard]] std::string Fehlergrund(const CZeilenspeicher * pSpeicher);

// A new practice file that appears under its name only when it is complete.
class CNeueDatei {
public:
    // Ends the command with exit code 1 where the name is taken and bErsetzen is not set, or no file can be made.
    CNeueDatei(const std::string & sDatei, bool bErsetzen);
    // Removes what is not complete.
    ~CNeueDatei();
    CNeueDatei(const CNeueDatei &) = delete;
    CNeueDatei & operator=(const CNeueDatei &) = delete;

    [[nodiscard]] CSqliteSpeicher & Speicher() { return *m_pSpeicher; }
    // Closes the file and gives it its name; ends the command where that fails.
    void Fertig();

private:
    std::string m_sDatei;
    std::string m_sVorlaeufig;
    std::shared_ptr<CSqliteSpeicher> m_pSpeicher;
};

// Moves the progress box. Ends the command with exit code 130 when the user cancels and confirms it.
void Fortschritt(std::int64_t iPos, std::int64_t iMax);

// Ends the command with exit code 130.
[[noreturn]] void BrichAb();

} // namespace orvostat
