// Runs the built program as a user does.
#pragma once

#include "support/Rekorder.h"

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace orvostat {

struct SProgrammende {
    int iCode = -1; // exit code; -1 where a signal ended the program
    std::string sAus;
    std::string sFehler;
};

// A directory of its own, the program run in it.
class CProgrammTest : public ::testing::Test {
protected:
    // Runs orvostat with the arguments. iSignalNachMs above 0 sends the program a signal after so many milliseconds.
    SProgrammende Laufe(const std::vector<std::string> & vArgumente, const std::string & sEingabe = {},
                        int iSignalNachMs = 0, int iSignal = SIGINT);
    // The same in words: arguments without blanks in them, '' for an empty one.
    SProgrammende Laufe(const std::string & sArgumente) { return Laufe(Worte(sArgumente)); }

    [[nodiscard]] std::filesystem::path Pfad(const std::string & sName) const {
        return m_verzeichnis / sName;
    }
    [[nodiscard]] std::string Inhalt(const std::string & sName) const;
    // The names of the files, sorted, with a blank between them.
    [[nodiscard]] std::string Dateien() const;
    // Runs statements on a practice file, as a foreign tool would.
    void Sql(const std::string & sName, const std::string & sAnweisungen);
    // Damages the page of a practice file that holds the text.
    void Zerstoere(const std::string & sName, const std::string & sText);
    // The first column of all rows, with a blank between them.
    [[nodiscard]] std::string Frage(const std::string & sName, const std::string & sAnweisung) const;

    // Runs the commands of a text file, "$ orvostat ..." with their output below, up to an empty line, a fence or the
    // next command; a last line "[2]" is the exit code where that is not 0, and "..." the rest of the output. A row
    // "[0] COMMAND -> LINE" is a command whose output has this line, "[1] COMMAND -> MESSAGE" one that is refused with
    // it, and "[2]" wrong usage; " ..." is the rest. How many commands.
    int PruefeBefehle(const std::string & sDatei);

    static std::vector<std::string> Worte(const std::string & s);

private:
    bool PruefeZeile(const std::string & sZeile);
    CTempVerzeichnis m_verzeichnis;
};

} // namespace orvostat
