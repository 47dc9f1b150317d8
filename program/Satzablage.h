// Saved statistics in a folder: how the two files of one are replaced as a whole, whoever reads or writes them at the
// same time, and whatever ends the program meanwhile.
//
// Replacing is a row of renamings under a lock of the folder. The earlier files stand aside as "NAME.SVE.alt" and
// "NAME.ISV.alt" until the new selection file has its name. Who takes the lock next and finds them puts them back, or
// removes them where the new set is complete.
#pragma once

#include "Konsole.h"

#include <string>

#include <sys/types.h>

namespace orvostat {

// Holds a folder: several may read, one alone may replace. Waits half a minute for others, then ends the command. A
// folder that is not there, and a file system without locks, are not held.
class CSatzsperre {
public:
    enum class EArt { Lesen, Ersetzen };
    CSatzsperre(const std::string & sOrdner, EArt eArt);
    ~CSatzsperre();
    CSatzsperre(const CSatzsperre &) = delete;
    CSatzsperre & operator=(const CSatzsperre &) = delete;

private:
    void Nimm(int iArt) const;

    std::string m_sOrdner;
    int m_iHandle = -1;
};

// Files that are made while the object lives are the owner's alone.
class CVertraulich {
public:
    CVertraulich();
    ~CVertraulich();
    CVertraulich(const CVertraulich &) = delete;
    CVertraulich & operator=(const CVertraulich &) = delete;

private:
    mode_t m_iVorher;
};

// The files of a new set: they have names of their own until both are complete, and are gone if they never are.
class CNeuerSatz {
public:
    // sPfad is the set's path without endings; its folder is made. Ends the command where the files could not get
    // their names.
    explicit CNeuerSatz(const std::string & sPfad);
    ~CNeuerSatz();
    CNeuerSatz(const CNeuerSatz &) = delete;
    CNeuerSatz & operator=(const CNeuerSatz &) = delete;

    [[nodiscard]] const std::string & Datendatei() const { return m_sNeueDaten; }
    [[nodiscard]] const std::string & Auswahldatei() const { return m_sNeueAuswahl; }
    // Gives the files their names and the permissions of the set that they replace, else those of sVorbild. Ends the
    // command where that fails; the earlier set is then as it was.
    void Fertig(const std::string & sVorbild);

private:
    std::string m_sDaten;
    std::string m_sAuswahl;
    std::string m_sNeueDaten;
    std::string m_sNeueAuswahl;
    CSignalschutz m_schutzDaten{m_sNeueDaten};
    CSignalschutz m_schutzAuswahl{m_sNeueAuswahl};
    CVertraulich m_vertraulich;
};

} // namespace orvostat
