// Where a command's output goes: to the terminal, or into a file that is there whole or not at all.
#pragma once

#include "Ausgabe.h"
#include "Konsole.h"

#include <fstream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace orvostat {

struct SAusgabeoptionen {
    EFormat eFormat = EFormat::Tabelle;
    std::string sDatei; // empty: the terminal
    bool bErsetzen = false;
    bool bOhneKopf = false;
};

// The group of the options that say what is shown and where; all others select.
inline constexpr const char * AUSGABEGRUPPE = "Ausgabe";
// Adds --format, -o, --force and --ohne-kopf; optionen must outlive app.
void FuegeAusgabeHinzu(CLI::App & app, SAusgabeoptionen & optionen);

// Until Fertig the file has a name of its own beside the wanted one, and is the user's alone. What fails, is cancelled
// or ended by a signal leaves nothing behind. A database is never replaced.
class CAusgabeziel {
public:
    // Ends the command with exit code 1 where the name is taken and may not be replaced, or no file can be made.
    explicit CAusgabeziel(const SAusgabeoptionen & optionen);
    // What is not complete goes.
    ~CAusgabeziel();
    CAusgabeziel(const CAusgabeziel &) = delete;
    CAusgabeziel & operator=(const CAusgabeziel &) = delete;

    [[nodiscard]] std::ostream & Strom();
    [[nodiscard]] bool IstDatei() const { return !m_optionen.sDatei.empty(); }
    // Gives the file its name when it is safely on the disk; ends the command where that fails.
    void Fertig();

private:
    const SAusgabeoptionen & m_optionen;
    std::string m_sVorlaeufig; // empty: no file, or not any more
    std::optional<CSignalschutz> m_schutz;
    int m_iHandle = -1;
    std::ofstream m_datei;
    std::optional<CSauber> m_sauber;
};

// Why an output is not whole, for CDokument::Ende.
inline constexpr const char * ABGEBROCHEN =
    "UNVOLLSTÄNDIG. Abgebrochen: hier steht, was bis dahin gelesen war.";
inline constexpr const char * UNLESBAR = "UNVOLLSTÄNDIG. Die Praxisdatei ist nicht vollständig lesbar.";
// Tells the user that he has cancelled; ends the command with exit code 130 where the output was to be a file.
void MeldeAbbruch(const CAusgabeziel & ziel);

// What the command line selects: behandler = "1,3", rsa.
[[nodiscard]] std::string Auswahltext(const CLI::App & app);
// The same word by word with the period, as the command line can be given them again.
[[nodiscard]] std::vector<std::string> Auswahlworte(const CLI::App & app);

// "01.10.2024 bis 31.12.2024", "ab ...", "bis ...", "alle Tage"; YYYYMMDD, an empty side is open.
[[nodiscard]] std::string Zeitraumtext(const CString & sVon, const CString & sBis);

// What an output says of itself when it leaves the terminal: file, period (an empty side is open), selection, version,
// time; and, where it is known already, that it is not whole.
[[nodiscard]] std::vector<SKopfzeile> Ausgabekopf(const std::string & sPraxisdatei, const CString & sVon,
                                                  const CString & sBis, const std::string & sAuswahl,
                                                  const std::string & sUnvollstaendig);

// A document in its format, begun with the head where the options and the format want one: on a terminal a table has
// none but that it is not whole.
[[nodiscard]] std::unique_ptr<CDokument> BeginneDokument(CAusgabeziel & ziel,
                                                         const SAusgabeoptionen & optionen,
                                                         const std::vector<SKopfzeile> & vKopf,
                                                         const std::string & sUnvollstaendig);

} // namespace orvostat
