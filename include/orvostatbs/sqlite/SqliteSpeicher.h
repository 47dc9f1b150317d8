// The rows of a practice in one SQLite file that any tool can read.
//
// For each table the file has a table of the same name with the columns as TEXT in UTF-8; around them stand
//
//   LFD          the row's running number: rows of equal key sort by it
//   SCHLUESSEL1  the bytes by which the row sorts under key 1, and so on for each further key; the tables are
//                clustered by SCHLUESSEL1 and LFD, the further keys have an index
//
// LAUFNUMMER holds the last running number given, and HERKUNFT, which need not be there, where the file comes from. The
// database's application_id is 0x4F535442 ("OSTB"), its user_version the version of this schema. A file of an older
// version becomes one of this when it is opened for writing, and when it is opened for reading is read as it is: what
// it lacks is empty. A tool that only reads needs none of this; who writes with one has to keep SCHLUESSEL1 in step
// with the columns.
//
// What a file may hold that this store would not write is read without harm: NULL is the empty text, numbers and
// blobs are their text, characters that Windows-1252 lacks and malformed UTF-8 are "?".
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvostat {

class CSqliteDatei;
class CSqliteVorrat;

enum class EModus {
    Lesen,          // never writes, whatever is asked of it
    Schreiben,      // reads and writes an existing file, and first brings one of an older version to this one
    Neu,            // makes the file, which must not exist, for the user alone
    NeuUngesichert, // the same faster, for filling it in one go: a crash or a power cut may leave it useless
};

// Why a read or write of an open file has failed.
enum class ESpeicherursache {
    Keine, // nothing has
    Beschaedigt,
    Gesperrt, // another program writes
    Voll,     // no room on the disk
    Schreibgeschuetzt,
    Datentraeger,    // the disk reports a failure
    KeineNebendatei, // no file can be made beside it, as writing needs
    ZuGross,         // the file has reached the user's limit
    KeinSpeicher,
    Andere, // LetzterFehler has the words
};

// What was read ahead and then asked for: ranges out of the rows at hand, rows of the second thread. Both could be 0
// and nobody would notice but for the time it takes.
struct SVorausgelesen {
    std::uint64_t iBereiche = 0;
    std::uint64_t iZeilen = 0;
};

// Walks hold a read lock on the file until they have reached their end or are closed. So two stores on one file, in
// one program or in two, can both read at any time, and a write waits up to five seconds for the walks of the other
// store to end before it fails; within one store walks and writes mix freely.
//
// A store opened for reading only reads ahead: short ranges by some rows, and a long walk over a whole table, between
// whose rows others are asked for, with a thread and a connection of its own. Neither shows in what comes back.
class CSqliteSpeicher final : public CZeilenspeicher {
public:
    // Opens the file at sPfad (UTF-8, as the platform writes paths). Null where it is refused, with the reason as a
    // German sentence for the user in sMeldung: no file or no plain one, not to be read or written, no database,
    // that of another program, a version of the schema that is not known, damaged, locked, no room to extend it. A
    // refused file is left as it was, and none is left beside it; opening makes no file unless eModus says so. A crash
    // while a file is extended leaves it of the older version, with a change half done.
    // A store that only reads a file of an older version goes on seeing it so where another program extends it: of
    // what is new in it, it sees nothing.
    [[nodiscard]] static std::shared_ptr<CSqliteSpeicher> OeffneDatei(const std::string & sPfad,
                                                                      EModus eModus, CString & sMeldung);
    // Whether a crash has left a change half done, so that the file cannot be opened for reading only; opening it for
    // writing takes the change back.
    [[nodiscard]] static bool Unterbrochen(const std::string & sPfad);
    // Takes it back and does nothing else, the file keeps its version; false where it is refused, with the reason.
    [[nodiscard]] static bool NimmZurueck(const std::string & sPfad, CString & sMeldung);
    ~CSqliteSpeicher() override;

    std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) override;
    int Schreibe(const STabelle & tabelle, CWerte vWerte) override;
    int Beginne() override;
    int Beende(bool bUebernehmen) override;
    [[nodiscard]] std::int64_t Zeilenzahl(const STabelle & tabelle) override;
    [[nodiscard]] bool NurLesen() const override;

    // Reads the whole file and tells what is damaged in it, a line each; none for a sound file. Takes its time.
    [[nodiscard]] std::vector<CString> Pruefe();
    // Gives the texts of a table that a CString cannot hold, which are read with "?" in them: the row as it is read,
    // in the order of key 1, and the position of the column. False if the file failed.
    [[nodiscard]] bool
    SucheVerluste(const STabelle & tabelle,
                  const std::function<void(CWerte vZeile, std::size_t iSpalte)> & fVerlust);
    // Gives the rows beside which the file has another key than their columns make, by damage or another tool's hand:
    // reads by that key pass them over. False if the file failed.
    [[nodiscard]] bool
    SucheFremdeSchluessel(const STabelle & tabelle,
                          const std::function<void(CWerte vZeile, int iSchluessel)> & fFremd);
    // The cause of the last failure of this store, and SQLite's own words on it, empty if there was none; "file too
    // large" where the file has reached the user's limit.
    [[nodiscard]] ESpeicherursache LetzteUrsache() const;
    [[nodiscard]] EZeilenursache Fehlerursache() const override;
    [[nodiscard]] const std::string & LetzterFehler() const;

    // A word (UTF-8) on where the file comes from, which belongs to the file and not to the practice: a copy by rows
    // does not have it. Set once; false if that fails. Empty in a file without one.
    [[nodiscard]] bool SetzeHerkunft(std::string_view sHerkunft);
    [[nodiscard]] std::string Herkunft();

    // The statement behind a walk over a whole table in the order of key 1, as it is given to SQLite. For
    // measurements.
    [[nodiscard]] std::string WegSql(const STabelle & tabelle) const;
    [[nodiscard]] SVorausgelesen Vorausgelesen() const;

private:
    explicit CSqliteSpeicher(std::unique_ptr<CSqliteDatei> pDatei);
    std::unique_ptr<CSqliteDatei> m_pDatei;
    std::unique_ptr<CSqliteVorrat> m_pVorrat; // its statements end before the file's connection
};

} // namespace orvostat
