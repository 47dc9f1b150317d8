// A new practice file: how it is made beside its name and gets it when it is complete.
#pragma once

#include "Konsole.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <memory>
#include <string>

#include <sys/types.h>

namespace orvostat {

// What becomes of a file that has the name already.
enum class EVorhanden {
    Bleibt,
    MusterWeicht, // replaced if it says of itself that it is a sample
    Weicht,       // replaced whatever it is, as long as it is a plain file
};

// The origin that a sample is marked with.
inline constexpr const char * HERKUNFT_MUSTER = "sample";

// A file that appears under its name only when it is complete and on the disk. Until then it has one of its own in the
// same folder, "NAME.neu-" and digits, so that several may make the same file: with Bleibt the first to be complete
// gets the name. What fails, is cancelled or ended by a signal leaves nothing behind.
class CNeueDatei {
public:
    // The new file has the permissions of sVorbild, else of the file that it replaces, else the owner's alone. Ends the
    // command with exit code 1 where the name is taken or no file can be made.
    CNeueDatei(const std::string & sDatei, EVorhanden eVorhanden, const std::string & sVorbild = {});
    ~CNeueDatei();
    CNeueDatei(const CNeueDatei &) = delete;
    CNeueDatei & operator=(const CNeueDatei &) = delete;

    [[nodiscard]] CSqliteSpeicher & Speicher() { return *m_pSpeicher; }
    // Closes the file and gives it its name; ends the command where that fails.
    void Fertig();

private:
    [[nodiscard]] bool PruefeZiel() const;
    [[nodiscard]] bool NochUnsere() const;
    [[noreturn]] void Scheitere(int iErrno) const;

    std::string m_sDatei;
    std::string m_sVorlaeufig;
    EVorhanden m_eVorhanden;
    mode_t m_iRechte = 0600;
    CSignalschutz m_schutz{m_sVorlaeufig};
    std::shared_ptr<CSqliteSpeicher> m_pSpeicher;
    int m_iHandle = -1; // of the same file; closed after the store, whose locks would go with it
};

} // namespace orvostat
