// Handing a statistic over to a spreadsheet program.
//
// The lines go as <name>.CSV into the directory for temporary files, what they are about as <name>.INI beside them, and
// the program is started with a workbook that picks them up. The program is the host's to know: the sibling library
// "orvofremd" has
//
//   bool GetFremdProgPath(int iProgramm, CString & sPfad)       2 is the spreadsheet program
//
// and "orvocockpit" starts a command line:
//
//   void OrvoCockpitExcel(const CString & sBefehl)
//
// A library or function that is missing is told by a prompt, and nothing is started.
#pragma once

#include "orvostatbs/files/StatEval.h"

namespace orvostat {

class COrvo2Excel : public CStatEval<CStdioFile> {
public:
    explicit COrvo2Excel(CWnd * pParent) : CStatEval(pParent) {}

    // The .INI file; false as soon as a key cannot be written.
    bool CreateSelektionsFile(const CString & sFile) override;
    // Both names are put on the list of files that the host deletes later.
    CString GetDatFilename() override { return TempDatei(".CSV"); }
    CString GetIniFilename() override { return TempDatei(".INI"); }

    // Display texts for the .INI file.
    void SetMandant(const CString & s) { m_sMandant = s; }
    void SetLeb(const CString & s) { m_sLeb = s; }
    void SetKasse(const CString & s) { m_sKasse = s; }
    void SetPatient(const CString & s) { m_sPatient = s; }
    // A blank is the old currency, any other letter the euro.
    void SetWaehrung(char c) { m_cWaehrung = c; }
    // Borrowed, and needed for a write; its period and selections are written.
    void SetFilter(CStatAccu * pFilter) { m_pFilter = pFilter; }

    // Writes the files, copies m_sVorlage over the workbook "Orvo2Excel.xls" of the data directory and starts the
    // program with it; false without program, and where the files could not be written. A workbook that cannot be
    // copied leaves the one that is there. True says that the files stand, not that the program has started.
    bool StartExcel();
    // Starts the program with a file and a plotting workbook of the program's directory: by columns (iArt 1, with
    // iVersion 2007 its own one) or by rows (0). False without program and for any other iArt; true also where it did
    // not start.
    static bool StartExcel(const CString & sFile, int iArt, int iVersion);

    CString m_sMandant;
    CString m_sLeb;
    CString m_sKasse;
    CString m_sPatient;
    CString m_sVorlage;      // path of the workbook to copy
    CString m_sStatistikart; // for the .INI file
    CStatAccu * m_pFilter = nullptr;
    CString m_sDateiName; // of both files, without directory and ending
    char m_cWaehrung = 'e';

protected:
    // The amount in the currency of the statistic as display text; empty for zero.
    [[nodiscard]] CString FormatBetrag(CDBetrag betrag);

private:
    [[nodiscard]] CString TempDatei(const CString & sEndung) const;
};

// COrvo2Excel::StartExcel with a file.
bool OrvoStartExcel(const CString & sFile, int iArt, int iVersion);

} // namespace orvostat
