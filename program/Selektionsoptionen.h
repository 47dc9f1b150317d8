// The selection of a run on the command line: one option for each section.
#pragma once

#include "orvostatbs/accu/Selektion.h"
#include "orvostatbs/lauf/Lauf.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace orvostat {

// What the options of a run say; it lives as long as the application that it was added to.
struct SLaufoptionen {
    std::string sDatei;
    std::string sVon;
    std::string sBis;
    std::string sMandant;
    std::string sBehandler; // numbers with commas between them
    std::string sPatient;
    std::string sSortierung;
    std::string sStatus;
    std::string sStichtag;
    bool bNurGesetzliche = false;
    bool bNurAbrechenbare = false;
    bool bPraxiswechselAus = false;
    bool bPlangatterAus = false;
    std::string sPlz;
    std::string sOrt;
    std::string sRecall;
    std::string sRecallIntervall;
    std::string sRecallVor;
    std::string sMfr;
    std::string sKarte;
    std::string sKartenarten;
    bool bKarteFehlt = false;
    bool bHatLeistung = false;
    bool bRsa = false;
    SLaufauftrag auftrag;
    // Texts of the sections that one option sets, in the order of the table of sections.
    std::vector<std::string> vWerte;
};

// Adds the options of selection and run; optionen must outlive app.
void FuegeSelektionHinzu(CLI::App & app, SLaufoptionen & optionen);

// Sets the selection, with a practice open. A period that ends before it begins is wrong usage; a patient, treater,
// owner or insurer that the practice does not have ends the command.
void SetzeSelektion(const CLI::App & app, const SLaufoptionen & optionen, CSelektion & selektion);

// The practice whose figures are asked for: the number of the owner that --mandant names, empty for all.
[[nodiscard]] CString Praxisnummer(const SLaufoptionen & optionen);

// Takes --stichtag without --alter, for a command that shows how far a period has run.
void LasseStichtagAllein(CLI::App & app);
// Does something with --stichtag in the place of today.
void AmStichtag(const SLaufoptionen & optionen, const std::function<void()> & fTue);

} // namespace orvostat
