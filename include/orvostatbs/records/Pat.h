// The patient in the form that a statistic needs: one flat record out of the patient's row, the address row that it
// points to and the history of recalls.
//
// The accumulator keeps one record per patient seen, the statistic file stores it as a line of its own, and the side
// hit lines copy names and contacts from it. A record is built once: cleared, then filled from the tables
// (ReadAndMovePat, MoveValidPat) or from a line of a file, of which only some fields come back. Afterwards only
// BEHDAUER and LASTBEHDATUM change. It is a plain value. Dates are YYYYMMDD, letters 0 for none.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>

namespace orvostat {

class CTAdr;
class CTHistRecall;
class CTPat;

class CPat {
public:
    // Every initial value is the value after Clear.
    CString PATNR;
    CString SELEKTION;
    CString m_sAdrNr; // key of the address row
    CString PATTITEL;
    CString PATVORNAME;
    CString PATZUSATZ; // name addition, "von"
    CString PATNAME;
    CString PATGEBDATUM;
    CString PATSTRASSE;
    CString PATPLZ;
    CString PATORT;
    CString PATANREDE;
    CString PATTELEFON; // contact 1; contacts are display texts
    CString m_sTelefon2;
    CString m_sTelefon3;
    CString m_sTelefon4;
    CString PATEMAIL; // contact 5
    CString m_sTelefon6;
    CString TELEFONPRIO;  // contact 7: the one of the six that the patient prefers
    CString LASTBEHDATUM; // last treatment
    CString GESCHLECHT;   // "w", "m", "d"; "?" where the address says none of them
    CString UEBERWARZT;   // referring doctor
    CString HAUSARZT;
    CString EINTRDATUM; // date of entry
    CString RISIKOANAMNESE;
    CString RECALLART; // one digit per recall kind
    CString RECALLITV; // "W" and a number of weeks, from the last recall; otherwise one digit per recall kind
    CString LASTRECALL;        // last recall of any kind
    char BENACHRICHTIGUNG = 0; // how the patient is notified
    CString m_sPatFeld1;
    bool m_bPatValid = false; // the record is usable
    CString BEHANDLERNR;      // the patient's own treater
    int m_iPatProzent = 0;    // percent
    bool m_bPatGelesen = false;
    int BEHDAUER = 0; // duration of the treatments, summed by the run
    CString FRUEHERENAMEN;
    char FRUCHT = 0;
    CString m_sPflegegrad;
    CString m_sPflegegradEnde; // its last day
    CString m_sPatFeld2;       // the callers'
    CString m_sFallBesonderheit;
    std::uint32_t INDEXMARKERS = 0; // bit set
    CString m_sPatFeld3;

    // All fields to their initial values but m_bPatGelesen, which tells of the whole life of the record.
    void Clear();
    // LASTBEHDATUM to empty.
    void ClearBeh() { LASTBEHDATUM.Empty(); }

    // Fills all fields but BEHDAUER, m_sPatFeld2 and m_bPatValid from the row that pPat holds, and sets
    // m_bPatGelesen. False where the address row does not exist: then only PATNR, m_sPatFeld1, BEHANDLERNR and
    // m_iPatProzent are taken. A blank percentage is 100. Moves pAdr and pRecall; none of the three may be null.
    bool MovePatFields(CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall);
    // The same after reading the patient's row. False with only PATNR set where there is none.
    bool ReadAndMovePat(CString sPatNr, CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall);
    // MovePatFields, and PatIsValid if that succeeds.
    bool MoveValidPat(CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall);
    // Declares the record usable.
    void PatIsValid() { m_bPatValid = true; }

    // ---- The name for letters and lists.

    // "Dr. Eva von Muster". An empty first name behind a title leaves its blank; otherwise blanks of empty parts are
    // left out.
    [[nodiscard]] CString GetName() const;
    // "Muster, Dr. Eva von". A blank stands behind the first name, also where nothing follows and where it is empty.
    [[nodiscard]] CString BuildNameUndVn() const;
    // "Muster, E."; without first name "Muster, .".
    [[nodiscard]] CString BuildNVPkt() const;
    // GetName, BuildNameUndVn with the birth date behind: " *01.02.1960", without a date " *".
    [[nodiscard]] CString GetNameUndGeb() const;
    [[nodiscard]] CString GetNameVornameUndGeb() const;
};

} // namespace orvostat
