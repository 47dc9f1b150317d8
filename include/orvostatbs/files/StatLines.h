// A line of a statistic file: one flat record with a field for every column that any kind of line has.
//
// The line stands between a record in memory and its text in the file. A Move... into the line takes a record, first
// clears the line and sets ART to the record's kind; a MoveFile2... gives the line to a record, which the caller has
// cleared before, and leaves what no column carries. Texts stand as they are, numbers as digits, amounts and point
// values as their stored texts; so what a file brings back is what had a column, to the last decimal.
//
//   ART   written by        read by           record
//   H     MoveHit           MoveFile2Hit      treatment
//   P     MovePat           MoveFile2Pat      patient
//   E     MoveError2File    MoveFile2Error    error; its code stands in TEXTART
//   K     MoveKas2File      MoveFile2Kas      insurer; its sort key stands in PATNR
//   I     MoveGips2File     MoveFile2Gips     plaster model
//   U     MoveUEW2File      MoveFile2UEW      text of a referral
//   R     MoveRech2File     MoveFile2Rech     invoice
//   G     MoveGB2File       MoveFile2GB       material book; its quantity is the text m_sGbAnzahl
//   W     MoveGlab2File     MoveFile2Glab     laboratory's collective invoice
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/records/NebenHits.h"
#include "orvostatbs/records/Pat.h"
#include "orvostatbs/records/Stammdaten.h"

namespace orvostat {

class CStatLines {
public:
#define FELD(TYP, NAME, START) TYP NAME = START;
#include "orvostatbs/files/StatLines.def"

    // Every field to its initial value.
    void Clear();

    // Of a treatment everything travels that has a column, except PATNAME and the other columns of a patient, RECART,
    // LABORKUNDE and LFDGLBLOC. BETRAG and ZUSCHLAG keep their sign, EINFACHSATZ does not.
    void MoveHit(const CBehHitLine & hit);
    // Adds the line's search criteria to those of the hit. A text that is no list of criteria ends the list; what
    // stands before it counts.
    void MoveFile2Hit(CBehHitLine & hit) const;
    void MovePat(const CPat & pat);
    void MoveFile2Pat(CPat & pat) const;
    void MoveError2File(const CBehErrors & fehler);
    void MoveFile2Error(CBehErrors & fehler) const;
    void MoveKas2File(const CKas & kas);
    void MoveFile2Kas(CKas & kas) const;
    void MoveGips2File(const CGipsHitLine & gips);
    void MoveFile2Gips(CGipsHitLine & gips) const;
    void MoveUEW2File(const CString & sText);
    void MoveFile2UEW(CBehHitLine & hit) const;
    // Amounts of invoices travel without their sign.
    void MoveRech2File(const CRechHitLine & rech);
    void MoveFile2Rech(CRechHitLine & rech) const;
    void MoveGB2File(const CBehHitLine & hit);
    void MoveFile2GB(CBehHitLine & hit) const;
    void MoveGlab2File(const CGlabFaktHitLine & glab);
    // Also sets the line's own ART to "W".
    void MoveFile2Glab(CGlabFaktHitLine & glab);

private:
    void ClearOhneHit();
};

} // namespace orvostat
