// What the commands share: an open practice, its owners, and dates and weekdays as a user writes them.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace orvostat {

// Ends the command with exit code 1 after a message on the error output.
[[noreturn]] void Verweigere(const std::string & sMeldung);

// A practice, in a file or on a server, behind both database handles for the life of the object. One that is refused
// ends the command.
class CPraxis {
public:
    CPraxis(const std::string & sDatei, EModus eModus);
    ~CPraxis();
    CPraxis(const CPraxis &) = delete;
    CPraxis & operator=(const CPraxis &) = delete;
};

// The option --praxis, for a practice named before it.
void FuegePraxisHinzu(CLI::App & app, std::string & sDatei);

// Ends the command with a message if a read of the open practice has failed since it was opened: what the command has
// worked out until then misses rows. sFolge is a sentence about what that means.
void VerweigereNachLesefehler(const std::string & sFolge = {});
// Ends the command like Verweigere because some row is missing; where a read has failed, that is what it says.
[[noreturn]] void VerweigereFehlendes(const std::string & sMeldung);

// The owner's id as rows hold it, two places; for the empty text that of the practice's first owner. Ends the
// command where the practice has no such owner.
[[nodiscard]] CString MandantOderErster(const std::string & sMandant);
// The ids of all owners.
[[nodiscard]] std::vector<CString> Mandanten();

// The number of a patient or a treater as rows hold it. Ends the command where it is nobody's.
[[nodiscard]] CString PruefePatient(const std::string & sPatient);
[[nodiscard]] CString PruefeBehandler(const std::string & sBehandler);
// Treaters with commas between them; none for the empty text.
[[nodiscard]] std::vector<CString> PruefeBehandlerliste(const std::string & sListe);

// A day as TT.MM.JJJJ, JJJJ-MM-TT or JJJJMMTT, as JJJJMMTT; anything else is wrong usage.
[[nodiscard]] CString LiesDatum(const std::string & sText);
// A period that ends before it begins is wrong usage of the option; an empty end is open.
void PruefeFolge(const std::string & sOption, const CString & sVon, const CString & sBis);

// "mo" to "so", and the weekday's number, 1 for Sunday to 7 for Saturday; 0 for another text.
[[nodiscard]] std::vector<std::string> WochentagKuerzel();
[[nodiscard]] int WochentagNummer(std::string_view sKuerzel);

} // namespace orvostat
