// Saved statistics: sets of the program's own, as files in a folder or in the practice's own file store.
//
// A set is the engine's file set with one section more in its selection file, which readers of the stated format pass
// over:
//
//   [OrvoStat]
//   Layout=alles            the layout's word, see Layoutworte
//   Praxis=praxis.db
//   Abfrage001=--von        the words of the command line that produced it
//   Zeilen=1540             of the data file
//   Block0001=<sum>         of each thousand lines of the data file
//   Auswahl=<sum>           of the lines above
//
// A sum is the first 32 digits of the SHA-256 of the bytes.
#pragma once

#include "Satzablage.h"

#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/files/Statistikdatei.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace orvostat {

// Where sets lie.
struct SSatzoptionen {
    std::string sOrdner;     // empty: "stat" beside the practice file
    bool bImBestand = false; // in the practice's own store
};
void FuegeSatzortHinzu(CLI::App & app, SSatzoptionen & optionen);

// One set by name; the practice is open, and for writing into its own store open for that.
class CSatz {
public:
    // Ends the command for a name that is none: empty, longer than 64 characters, with a separator, a drive, a control
    // character or a wildcard in it, beginning with a point, or a device's.
    CSatz(const std::string & sPraxisdatei, const SSatzoptionen & optionen, const std::string & sName);

    // Writes the finished run of accu, with the words that select it; what was there under this name is replaced as a
    // whole or stays as it was. Ends the command on failure.
    void Schreibe(CStatAccu & accu, const std::string & sLayout,
                  const std::vector<std::string> & vAbfrage) const;
    // Reads selection, hits and errors into accu. Ends the command where the set is not there, unfinished, damaged, not
    // one of the program's, or replaced meanwhile. Edits and another practice are told on the error output.
    void Lies(CStatAccu & accu) const;
    // The words of the command line that produced it; as Lies for what is not there.
    [[nodiscard]] std::vector<std::string> Abfrage() const;
    [[nodiscard]] std::string Abfragetext() const;

    // The columns of sums that its layout does not have, by their titles.
    [[nodiscard]] std::vector<std::string> FehlendeSpalten() const;

    // What a test of the files finds.
    enum class EBefund { Unversehrt, Beschaedigt, DatenGeaendert, AuswahlGeaendert };
    struct SPruefung {
        EBefund eBefund = EBefund::Unversehrt;
        long lZeile = 0;  // of the data file, from which on it is not as written; 0 for the selection file
        long lZeilen = 0; // of the data file now
    };
    // As Lies for what is not there.
    [[nodiscard]] SPruefung Pruefe() const;
    [[nodiscard]] std::string Befundtext(const SPruefung & pruefung) const;

    // The layout's positions, ending in -1.
    [[nodiscard]] int * Spalten() const;
    [[nodiscard]] CString Datendatei() const { return m_sPfad + ".SVE"; }
    [[nodiscard]] CString Auswahldatei() const { return m_sPfad + ".ISV"; }
    [[nodiscard]] const std::string & Name() const { return m_sName; }

private:
    [[nodiscard]] std::optional<CSatzsperre> Sperre() const;
    void VerlangeFertig() const;
    [[nodiscard]] SPruefung PruefeDateien() const;
    [[nodiscard]] CString Wert(const char * pAbschnitt, const char * pSchluessel) const;

    bool m_bImBestand;
    std::string m_sName;
    std::string m_sPraxisdatei;
    CString m_sPfad; // without ending
};

// What a list shows of a set.
struct SSatzeintrag {
    std::string sName;
    bool bFertig = false;
    CString sArt, sVersion, sDatum, sZeit, sVon, sBis; // as the selection file has them
    long lHits = 0;
};
// The sets of a place by name.
[[nodiscard]] std::vector<SSatzeintrag> Saetze(const std::string & sPraxisdatei,
                                               const SSatzoptionen & optionen);

// The layouts that a run can be saved with; the first is the program's own and has every column that a sum needs.
[[nodiscard]] std::vector<std::string> Layoutworte();

} // namespace orvostat
