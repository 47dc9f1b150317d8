// The evaluator: how a statistic becomes a file, and how a file is read.
//
// A statistic's file set is a data file and a selection file. The data file is Windows-1252 text: a title line, then a
// line for each record, columns separated by ";" without quotes; a ";" or a line end inside a text is replaced. What is
// written, and what a line that was read is for, say derived classes through the virtual operations:
//
//   writing   SetLineStruct, GetGesamtPos, and DoData or GetLineData2File; CreateSelektionsFile
//   reading   BeforeMoveDataFromFile, MoveDataFromFile
//
// T is the file class: CStdioFile, plain files, or CDBStdioFile, files in the practice's own store. Both are one code.
//
// False is a failure. The user is told by a prompt, except where the data file cannot be opened, there is no layout, he
// has cancelled, or a code below says that it is silent. std::invalid_argument is thrown for a line with more columns
// than its layout, and for a column without title where a title line is written or read; CFileException by WriteTitel,
// WriteLines and WriteErrorLines outside of WriteDaten.
#pragma once

#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/files/StatLines.h"
#include "orvostatbs/files/VarNames.h"
#include "orvostatbs/host/Dateien.h"
#include "orvostatbs/host/Oberflaeche.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvostat {

// The directory of the statistics, and of this workstation's statistics; both end in "\".
[[nodiscard]] CString GetOrvoStatPath();
[[nodiscard]] CString GetOrvoStatWSPath();

// What belongs to a file class besides it.
template <class T> struct SDateifamilie;
template <> struct SDateifamilie<CStdioFile> {
    using CIni = CIniFile;
    using CSuche = CFileFind;
    // There is such a file.
    [[nodiscard]] static bool Existiert(const CString & sDatei);
    // True if the file is gone, after a prompt if not.
    static bool Loesche(const CString & sDatei);
};
template <> struct SDateifamilie<CDBStdioFile> {
    using CIni = CDBIniFile;
    using CSuche = CDBFileFind;
    // As above.
    [[nodiscard]] static bool Existiert(const CString & sDatei);
    static bool Loesche(const CString & sDatei);
};

// What a DoData or a reading step that fails hands up.
enum EDateicode : int {
    CODE_OK = 0,
    CODE_STILL = 1,       // ends without a message
    CODE_KEINE_DATEN = 5, // writing: nothing found; reading: no title line
    CODE_SELEKTION = 10,  // writing: no selection file; reading: refused, without a message
    CODE_ABBRUCH = 100,   // cancelled, without a message
};

template <class T> class CStatEval {
public:
    // The window may be null; it is not owned.
    explicit CStatEval(CWnd * pParent);

    // ---- the derived class's part, in this order

    // The layout to write; it ends with -1 and is borrowed until the write or read has ended. Null writes and reads
    // nothing.
    virtual int * SetLineStruct() { return nullptr; }
    // Puts the next line into the record; false for a step without a line.
    virtual bool GetLineData2File(CStatLines &) { return false; }
    // The progress box's total, in the derived class's own steps; 0 counts as 1.
    virtual long GetGesamtPos() { return 0; }
    // Writes the selection file, behind the last line; false fails the write, after a prompt.
    virtual bool CreateSelektionsFile(const CString & /*sFile*/) { return true; }
    // What to do with a line that was read; the result has no effect.
    virtual bool MoveDataFromFile(CStatLines &) { return false; }
    // Called before the first line is read; false reads nothing.
    virtual bool BeforeMoveDataFromFile() { return false; }
    virtual CString GetDatFilename() { return "std.dat"; }
    virtual CString GetIniFilename() { return "std.ini"; }
    // Writes the data file: 0, or one of EDateicode; any other ends the write without a message. iCount, from 0, is the
    // caller's to count lines in and has no effect. The default writes the title line and then what GetLineData2File
    // gives, until the user cancels, and returns CODE_STILL.
    virtual int DoData(T & file, int & iCount);
    // Takes a line: the first one as title line where IsFirstLineStruct says so, any other into the record and on to
    // MoveDataFromFile. False only for a title line that is none. A line without delimiter is passed over.
    virtual bool DoDataFromFile(bool bFirst, const CString & sLine);
    // Makes m_aLineStruct of a title line; false for a line without delimiter.
    virtual bool GetLineStruct(const CString & sLine);
    virtual bool IsFirstLineStruct() { return true; }
    // The progress box's total of a read.
    virtual long ReadAnzHits(const CString & /*sFile*/) { return 1000; }
    // What a screen adds to the selection file that CreateSelektionsFile has written; false fails the write.
    virtual bool CreateMoreSelektions(const CString & /*sFile*/) { return true; }
    virtual ~CStatEval() = default;

    CStatEval(const CStatEval &) = delete;
    CStatEval & operator=(const CStatEval &) = delete;

    // ---- writing and reading

    // Deletes the former set, writes the data file and then the selection file: without the latter a set is
    // unfinished. With m_bZwSich the data file is kept and added to, without progress and questions.
    bool WriteDaten();
    // Reads the data file line by line. False if it could not be read to its end; what was read stays. The box is shown
    // with m_bZwSich too, but does not move.
    bool ReadDaten();
    // The title line of m_pLineStruct; a line by m_pLineStruct, or by the layout of error lines. Always true.
    bool WriteTitel(T & file);
    bool WriteLines(T & file, CStatLines & line);
    bool WriteErrorLines(T & file, CStatLines & line);
    // Moves the progress box; false once the user has confirmed to stop. Always true with m_bZwSich.
    bool DoProgress(long & lPos, long lGesamt);
    // Deletes the files of a directory, not its subdirectories; stops at the first that cannot be deleted, with false
    // after a prompt. A file whose name Windows-1252 cannot write stays. The empty path is the working directory.
    bool RemoveFiles(CString sPath);
    // Deletes a file; false after a prompt. One that is not there is deleted.
    static bool DeleteFileA(const CString & sName) { return SDateifamilie<T>::Loesche(sName); }

    int * m_pLineStruct = nullptr; // while writing
    CStatLines m_Line;             // the line at hand
    CWnd * m_pParent;
    long m_lPos = 0; // of the progress box while writing
    long m_lGesamtPos = 0;
    char m_cDelimiter = ';';
    char m_cErsatz = '|'; // stands in a text for the delimiter
    bool m_bZwSich = false;
    int m_iZwKapazitaet = 5000;      // hits that the table keeps room for after an intermediate save
    std::vector<int> m_aLineStruct;  // layout of the lines being read
    std::vector<int> m_aErrorStruct; // of those of kind "E"

protected:
    // The text of a column as it is written; empty outside of the catalogue.
    [[nodiscard]] CString GetField(int iField, CStatLines & line);
    // The index of a title; std::invalid_argument for a text that is no title.
    int FindFieldTitel(const CString & sTitel);
    // Puts the columns of a line into the record; false for a line without delimiter.
    bool GetLineFields(CString sLine, CStatLines & line);
    // Puts one column into the record; none outside of the catalogue.
    void MoveLineFields(int iField, const CString & sValue, CStatLines & line);
    // By the given layout; null writes nothing. Always true.
    bool WriteLines(T & file, CStatLines & line, int * pStruct);

private:
    int SchreibeDaten(T & file, const CString & sIni);
    int LiesDaten(T & file, long lHits);
    bool OeffneFortschritt();

    std::string m_sZeile; // the line being written, reused
};

extern template class CStatEval<CStdioFile>;
extern template class CStatEval<CDBStdioFile>;

// An evaluator of a file set by name, beside an accumulator.
template <class T> class CStatEval2 : public CStatEval<T> {
public:
    explicit CStatEval2(CWnd * pParent) : CStatEval<T>(pParent) {}
    // Borrowed; needed by everything that touches selection or tables.
    void SetFilter(CStatAccu * pFilter) { m_pFilter = pFilter; }
    CString GetDatFilename() override { return GetOrvoStatWSPath() + m_sDateiName + ".SVE"; }
    CString GetIniFilename() override { return GetOrvoStatWSPath() + m_sDateiName + ".ISV"; }

    CString m_sDateiName; // the set's name
    CStatAccu * m_pFilter = nullptr;
};

} // namespace orvostat
