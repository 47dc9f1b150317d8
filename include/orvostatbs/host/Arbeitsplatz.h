// What a statistic asks of the workstation besides files: starting a program, a list of temporary files, and profile
// files of other programs. A program or a test can put its own object in place, as with clock and paths.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Umgebung.h"

namespace orvostat {

// What vdsetprofilestring1 returns for success.
inline constexpr int PROFIL_OK = -2000;

class CArbeitsplatz {
public:
    CArbeitsplatz() = default;
    virtual ~CArbeitsplatz() = default;
    CArbeitsplatz(const CArbeitsplatz &) = delete;
    CArbeitsplatz & operator=(const CArbeitsplatz &) = delete;
    // Starts a program without waiting for it. Parts of the command line that hold blanks stand in double quotes, paths
    // separate with "\". iAnzeige is the window's state, 5 for shown. True if it was started.
    virtual bool StarteProgramm(const CString & sBefehl, int iAnzeige) = 0;
    // Takes note of a file that is to be deleted when the program ends.
    virtual void MerkeTempDatei(const CString & sDatei) = 0;
    // Sets one key of a profile file, which is written at once. sAbschnitt comes with its brackets. PROFIL_OK, or any
    // other number on failure.
    virtual int SetzeProfil(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                            const CString & sWert) = 0;
};

// The default does all three on this machine.
[[nodiscard]] CArbeitsplatz & Arbeitsplatz();
// Not owned; null is the default. Gives the former one.
CArbeitsplatz * SetzeArbeitsplatz(CArbeitsplatz * pArbeitsplatz);
using CArbeitsplatzErsatz = CErsatz<CArbeitsplatz, &SetzeArbeitsplatz>;

// The same under the host's names.
bool WinExec(const CString & sBefehl, int iAnzeige);
void AddDeleteOrvoTempFile(const CString & sDatei);
int vdsetprofilestring1(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                        const CString & sWert);
// A file's path in the data directory.
[[nodiscard]] CString GetDatFilePath(const CString & sDatei);

// Makes a file writable that is read-only; does nothing where there is none.
void NimmSchreibschutz(const CString & sDatei);
// Copies a file over another one or, with bNurNeu, to where there is none. False on failure.
bool KopiereDatei(const CString & sVon, const CString & sNach, bool bNurNeu);

} // namespace orvostat
