// What surrounds the engine: the clock, the directories, the sibling libraries and the practice's settings.
//
// Clock, directories and libraries each have a default that works and can be replaced. A replacement is an object of
// the caller's, put in place by a CErsatz that brings the former one back when it ends:
//
//   CMeineUhr uhr;
//   orvostat::CUhrErsatz ersatz(uhr); // from here on, today is what uhr says
//
// All of it belongs to the thread that runs the statistic; nothing is locked.
#pragma once

#include "orvostatbs/host/CString.h"

#include <map>
#include <set>
#include <string>
#include <utility>

namespace orvostat {

// The settings of the workstation, set by the program before a statistic starts.
extern CString dbMdId;           // current practice
extern CString dbPId;            // current person
extern bool dbPraxisLeb;         // treaters are bound to a site
extern CString dbPraxisId;       // current site
extern bool dbMKGVersion;        // installation with physician fees
extern CString dbLfdWorkstation; // current workstation, two characters: " 1" at the start

// The program's directory and the directory of its data, as texts that end in "\". The argument has no effect.
[[nodiscard]] CString GetOrvoExePath(int iArt = 0);
[[nodiscard]] CString GetOrvoDataPath(int iArt = 0);

// Puts an object of the caller's in the place of a seam's current one for its own life. The object must outlive it;
// replacements end in the reverse order of their beginning. SETZE takes the new object (null: the default) and
// returns the former one.
template <class T, T * (*SETZE)(T *)> class CErsatz {
public:
    explicit CErsatz(T & neu) : m_pVorher(SETZE(&neu)) {}
    ~CErsatz() { SETZE(m_pVorher); }
    CErsatz(const CErsatz &) = delete;
    CErsatz & operator=(const CErsatz &) = delete;

private:
    T * m_pVorher;
};

// ---- the clock

// A moment in local time, month and day from 1.
struct SZeitpunkt {
    int iJahr = 0;
    int iMonat = 0;
    int iTag = 0;
    int iStunde = 0;
    int iMinute = 0;
};

// Where "today" and "now" come from. The default is the machine's clock.
class CUhr {
public:
    virtual ~CUhr() = default;
    [[nodiscard]] virtual SZeitpunkt Jetzt() const = 0;
};

[[nodiscard]] CUhr & Uhr();
CUhr * SetzeUhr(CUhr * pUhr);
using CUhrErsatz = CErsatz<CUhr, &SetzeUhr>;

// ---- the directories

// Path texts of the engine separate with "\", and a directory ends in one. The defaults are the directory of the
// running program, the working directory at the first question, and the system's directory for temporary files.
struct SPfade {
    CString sProgramm;
    CString sDaten;
    CString sTemp;
};

[[nodiscard]] SPfade & Pfade();
SPfade * SetzePfade(SPfade * pPfade);
using CPfadeErsatz = CErsatz<SPfade, &SetzePfade>;

// The directory for temporary files, ending in "\".
[[nodiscard]] CString TempPfad();

// A path text as the platform writes it: its own separator, UTF-8. Every access to a file goes through this.
[[nodiscard]] std::string Dateipfad(const CString & sPfad);
// The other way round. A name that Windows-1252 cannot write has no path text: its letters become "?".
[[nodiscard]] CString Pfadtext(const std::string & sDateipfad);
// The same for a directory: ends in "\".
[[nodiscard]] CString Verzeichnistext(const std::string & sDateipfad);

// ---- the sibling libraries

// Functions that other libraries of the system bring along, found by the names of library and function: first in
// this table, then in the platform's shared libraries. A program that links such a library statically enters its
// functions here, and so does a test.
class CBibliotheken {
public:
    // The library belongs to the installation, even if no function of it stands in the table.
    void Installiere(const CString & sBibliothek) { m_setInstalliert.insert(sBibliothek); }
    // Enters a function; its library belongs to the installation from now on.
    void Registriere(const CString & sBibliothek, const CString & sFunktion, void * pFunktion);
    template <class F>
    void Registriere(const CString & sBibliothek, const CString & sFunktion, F * pFunktion) {
        Registriere(sBibliothek, sFunktion, reinterpret_cast<void *>(pFunktion));
    }

    [[nodiscard]] bool Installiert(const CString & sBibliothek) const {
        return m_setInstalliert.contains(sBibliothek);
    }
    // The table's function, null where it has none.
    [[nodiscard]] void * Suche(const CString & sBibliothek, const CString & sFunktion) const;
    // The table has a function of this library.
    [[nodiscard]] bool Kennt(const CString & sBibliothek) const;

private:
    std::set<CString> m_setInstalliert;
    std::map<std::pair<CString, CString>, void *> m_mapFunktionen;
};

// The default table starts empty: no sibling library belongs to the installation until the program says so.
[[nodiscard]] CBibliotheken & Bibliotheken();
CBibliotheken * SetzeBibliotheken(CBibliotheken * pBibliotheken);
using CBibliothekenErsatz = CErsatz<CBibliotheken, &SetzeBibliotheken>;

// The address of a sibling library's function; it stays valid until the process ends, since a library once loaded
// stays loaded. The library's file is looked for in the program's directory, then where the platform looks.
// Null after a prompt: "LoadLibrary fehlgeschlagen!" where there is no such library, "Programm in Vorbereitung!"
// where the library lacks the function. A caller that must stay silent without the library asks Installiert first.
[[nodiscard]] void * LadeFunktion(const CString & sBibliothek, const CString & sFunktion);
// The same as a function of type F, such as int(const CString &).
template <class F> [[nodiscard]] F * LadeFunktionAls(const CString & sBibliothek, const CString & sFunktion) {
    return reinterpret_cast<F *>(LadeFunktion(sBibliothek, sFunktion));
}

} // namespace orvostat
