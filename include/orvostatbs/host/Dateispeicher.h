// Where files lie: the one interface between the file classes and a store of files.
//
// A statistic ends as files, and there are two places for them: the platform's file system, and the practice's own
// store, where a file is a handful of rows and travels with the practice. Both are a CDateispeicher, the file classes
// of Dateien.h are written once above it, and a test or a program may put a store of its own in either place.
//
// Paths separate with "\". Failures are causes, numbers as the system's file classes have always had them.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Umgebung.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace orvostat {

// Why a file operation failed.
enum EUrsache : int {
    URSACHE_KEINE = 0,
    URSACHE_SONST = 1,        // anything that has no number of its own
    URSACHE_KEINE_DATEI = 2,  // its folder is there, the file is not
    URSACHE_PFAD = 3,         // no such folder, a part of the path that is no folder, a name that is too long
    URSACHE_KEIN_ZUGRIFF = 5, // no right, read-only, a directory in the file's place
    URSACHE_GERAET = 10,      // the device failed
    URSACHE_VOLL = 13,        // disk or quota full
};

// What the file classes throw, by value.
class CFileException : public std::exception {
public:
    explicit CFileException(int iUrsache = URSACHE_KEINE, CString sDatei = CString())
        : m_cause(iUrsache), m_strFileName(std::move(sDatei)) {}
    [[nodiscard]] const char * what() const noexcept override { return "file exception"; }

    int m_cause;
    CString m_strFileName;
};

// An open file. Positions count bytes from 0. Results are causes, 0 for success; after a failure the file is only fit
// to be closed. Ending the object without Schliesse closes the file; what was written since the last Sichere may then
// be lost, as a whole.
class CDateizugriff {
public:
    CDateizugriff() = default;
    virtual ~CDateizugriff() = default;
    CDateizugriff(const CDateizugriff &) = delete;
    CDateizugriff & operator=(const CDateizugriff &) = delete;
    // Reads from iPos on; iGelesen is less than asked for only at the end of the file.
    [[nodiscard]] virtual int Lies(std::uint64_t iPos, std::span<char> acZiel, std::size_t & iGelesen) = 0;
    // Writes all of it; iPos is at most the length.
    [[nodiscard]] virtual int Schreibe(std::uint64_t iPos, std::string_view sBytes) = 0;
    // In bytes; 0 where it cannot be asked for.
    [[nodiscard]] virtual std::uint64_t Laenge() = 0;
    // What was written so far stays, whatever happens to this object.
    [[nodiscard]] virtual int Sichere() = 0;
    [[nodiscard]] virtual int Schliesse() = 0;
};

// How a file is opened: DATEI_LESEN, or DATEI_SCHREIBEN with the other two as needed.
enum EDateimodus : unsigned {
    DATEI_LESEN = 0,
    DATEI_SCHREIBEN = 1,
    DATEI_ANLEGEN = 0x1000,  // if it does not exist; if it does, empty it
    DATEI_BEHALTEN = 0x2000, // with DATEI_ANLEGEN: leave what is in it
};

struct SDateieintrag {
    CString sName; // without folder
    bool bOrdner = false;
};

// A store of files.
class CDateispeicher {
public:
    CDateispeicher() = default;
    virtual ~CDateispeicher() = default;
    CDateispeicher(const CDateispeicher &) = delete;
    CDateispeicher & operator=(const CDateispeicher &) = delete;
    // Null with a cause.
    [[nodiscard]] virtual std::unique_ptr<CDateizugriff> Oeffne(const CString & sPfad, unsigned iModus,
                                                                int & iUrsache) = 0;
    // A cause.
    [[nodiscard]] virtual int Loesche(const CString & sPfad) = 0;
    // A directory is no file.
    [[nodiscard]] virtual bool Existiert(const CString & sPfad) = 0;
    // What a folder holds whose name fits: "*" in the last part of the path stands for any characters, "?" for one,
    // and "*.*" for every name. Sorted by name; a folder that cannot be read has nothing.
    [[nodiscard]] virtual std::vector<SDateieintrag> Suche(const CString & sMuster) = 0;
};

// The platform's files, and the practice's. The latter are rows of CTDatei on dbDatabase; folders need not be made
// there, a path below the data directory counts from it, and what is written between two Sichere is one group of
// writes: it takes effect as a whole or leaves the file as it was.
[[nodiscard]] CDateispeicher & Plattendateien();
[[nodiscard]] CDateispeicher & Bestandsdateien();
// Not owned; null is the default. They give the former one.
CDateispeicher * SetzePlattendateien(CDateispeicher * pSpeicher);
CDateispeicher * SetzeBestandsdateien(CDateispeicher * pSpeicher);
using CPlattendateienErsatz = CErsatz<CDateispeicher, &SetzePlattendateien>;
using CBestandsdateienErsatz = CErsatz<CDateispeicher, &SetzeBestandsdateien>;

// The name fits the pattern, as Suche says.
[[nodiscard]] bool PasstAufMuster(std::string_view sName, std::string_view sMuster);
// The part of a path in front of its last "\", that included.
[[nodiscard]] CString Ordnerteil(const CString & sPfad);

} // namespace orvostat
