// The named file set of a statistic: writing one beside its accumulator, and reopening it.
//
// The set is two files in the workstation's directory: the lines in <name>.SVE, and in <name>.ISV when and how the
// statistic was made, so that it can be reopened with the selection that produced it:
//
//   [Allgemein]                    [Selektion]
//   Statistikart=LS                DatumVon=01.10.2023
//   Version=2                      DatumBis=31.12.2023
//   Erstellungsdatum=15.01.2024    Praxisinhaber= 1
//   Erstellungszeit=09:30          Behandler="  5 12"
//   AnzahlHits=1200                ...
//
// The selection file is written last: a set without it is unfinished.
#pragma once

#include "orvostatbs/files/StatEval.h"

#include <set>
#include <vector>

namespace orvostat {

// Writes sets. A derived class says which lines (CStatEval); the accumulator's m_lAnzHits is the number of hits.
template <class T> class CStat2File : public CStatEval2<T> {
public:
    explicit CStat2File(CWnd * pParent) : CStatEval2<T>(pParent) {}

    void SetStatVersion(const CString & sVersion) { m_sVersion = sVersion; }
    // False if a key or the file could not be written.
    bool CreateSelektionsFile(const CString & sFile) override;

    CString m_sStatistikart; // this and the version are written as they stand
    CString m_sVersion;

protected:
    // The entries behind each other, each right-aligned in iWidth places; a longer one stands as it is.
    void Vec2String(const std::vector<CString> & v, CString & sOut, int iWidth);
};

// Reads sets into the accumulator's selection and tables. A derived class overrides SetLineStruct with the layout that
// the set was written with: columns are taken by position, whatever the title line says, so a set of another layout is
// misread. GetStatVersion tells them apart.
template <class T> class CFile2Stat : public CStatEval2<T> {
public:
    explicit CFile2Stat(CWnd * pParent) : CStatEval2<T>(pParent) {}

    // Adds the line's record to its table. False, without effect, for kind "E" and for a kind that is unknown.
    bool MoveDataFromFile(CStatLines & line) override;
    // Reads the global data anew and empties the tables of a run; false if there are no global data or no layout.
    bool BeforeMoveDataFromFile() override;
    bool IsFirstLineStruct() override { return false; }
    // The number of hits as the set has it, 0 where file or key is missing. Makes room for up to 10,000 of them, for
    // more only if so many can be in the data file.
    long ReadAnzHits(const CString & sFile) override;
    // Called when the tables are empty; the result has no effect.
    virtual bool OnlyForProgBeforeMoveDataFromFile() { return true; }

    // Sets the accumulator's selection. False after a prompt, with the accumulator as it was, where the file or its
    // period is missing; any other key that is missing reads as empty, false or 0, except that Sortierung and ArtStat
    // become "*".
    bool ReadSelektionsFile(const CString & sFile);
    // Data file and selection file are there.
    [[nodiscard]] bool ExistAllFiles();
    // "F3 - Zuletzt erstellte Liste vom 15.01.2024 um 09:30 Uhr bearbeiten"; without both where one of them is not
    // known.
    [[nodiscard]] CString GetLastEditDateText();
    // DD.MM.YYYY, and the version; empty where file or key is missing.
    [[nodiscard]] CString GetLastEditDate();
    [[nodiscard]] CString GetStatVersion();

    std::set<CString> m_setUew; // the referrals seen, also of earlier reads
    // One work record of each kind.
    CBehHitLine m_Hit;
    CPat m_Pat;
    CKas m_Kas;
    CBehErrors m_Error;
    CGipsHitLine m_Gips;
    CRechHitLine m_Rech;

protected:
    // Takes the layouts of lines and error lines; false without a layout.
    bool GetThisLineStruct();
    // The text in pieces of so many characters, none for a width below 1, replacing what v held.
    void String2Vec(const CString & s, std::vector<CString> & v, int iWidth);

private:
    bool NimmSatz(const CStatLines & line);
    void MerkeUeberweisung(const CString & sText);
    void FuelleUeberweisungen();
    CString LiesAllgemein(const CString & sSchluessel);

    const CStatAccu * m_pUewZiel = nullptr; // whose m_vUewStrings hold m_setUew
};

extern template class CStat2File<CStdioFile>;
extern template class CStat2File<CDBStdioFile>;
extern template class CFile2Stat<CStdioFile>;
extern template class CFile2Stat<CDBStdioFile>;

} // namespace orvostat
