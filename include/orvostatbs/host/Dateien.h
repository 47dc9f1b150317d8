// The file classes: plain files, and the same over the practice's own store.
//
//   CStdioFile file;
//   if (!file.Open(sPfad, CStdioFile::modeRead)) return false;
//   for (CString sZeile; file.ReadString(sZeile);) ...
//   file.Close();
//
// CDBFile, CDBStdioFile, CDBFileFind and CDBIniFile behave as CFile, CStdioFile, CFileFind and CIniFile do; only the
// place of the files differs (Dateispeicher.h). Open reports by its result, everything else that fails throws a
// CFileException with its cause. Text is Windows-1252; a line ends in a line feed, and reading takes carriage returns
// before it, or at the end of the file, as part of the end.
#pragma once

#include "orvostatbs/host/Dateispeicher.h"

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvostat {

// What both families share. Written bytes are buffered until Flush, Close or a change of position.
class CDateibasis {
public:
    enum EModus : unsigned {
        modeRead = DATEI_LESEN,
        modeWrite = DATEI_SCHREIBEN,
        modeCreate = DATEI_ANLEGEN,
        modeNoTruncate = DATEI_BEHALTEN,
    };
    enum EAnfang : unsigned { begin = 0, current = 1, end = 2 };

    // The store must outlive the object, as with the two classes below.
    explicit CDateibasis(CDateispeicher & speicher) : m_pSpeicher(&speicher) {}
    // Closes the file; a failure goes unheard, and a file of the practice's store is then as it was at the last Flush.
    ~CDateibasis();
    CDateibasis(const CDateibasis &) = delete;
    CDateibasis & operator=(const CDateibasis &) = delete;

    // Opens at position 0, closing what was open. False with the cause in pFehler, if given.
    bool Open(const CString & sPfad, unsigned iModus, CFileException * pFehler = nullptr);
    [[nodiscard]] bool IsOpen() const { return m_pZugriff != nullptr; }
    // Writes out what is buffered. Does nothing on a closed file.
    void Flush();
    void Close();

    // Bytes from the position on; the number read is less than asked for only at the end.
    unsigned Read(void * pZiel, unsigned iAnzahl);
    void Write(const void * pBytes, unsigned iAnzahl);
    // Moves the position, never out of the file, and gives it.
    std::uint64_t Seek(std::int64_t iWeite, unsigned iVon);
    std::uint64_t SeekToEnd() { return Seek(0, end); }
    // In bytes, what is buffered included.
    [[nodiscard]] std::uint64_t GetLength();
    [[nodiscard]] const CString & GetFilePath() const { return m_sPfad; }

protected:
    void SchreibeText(std::string_view sBytes);
    // The next line without its end; false at the end of the file. The view holds until the next operation.
    bool LiesZeile(std::string_view & sZeile);

private:
    void Pruefe(int iUrsache);
    void Leere();
    bool Fuelle();

    CDateispeicher * m_pSpeicher;
    std::unique_ptr<CDateizugriff> m_pZugriff;
    CString m_sPfad;
    std::uint64_t m_iPos = 0; // of the file, behind what has been read or handed on
    std::string m_sPuffer;    // written and not yet handed on; or in m_iVon to m_iBis read and not yet taken
    std::size_t m_iVon = 0;
    std::size_t m_iBis = 0;
    bool m_bSchreiben = false;
};

class CFile : public CDateibasis {
public:
    CFile() : CDateibasis(Plattendateien()) {}
    // Deletes a file.
    static void Remove(const CString & sPfad);
};
class CDBFile : public CDateibasis {
public:
    CDBFile() : CDateibasis(Bestandsdateien()) {}
};

// True if there is such a file. DeleteFileDB is 0 if it could not be deleted.
[[nodiscard]] bool FileExistsDB(const CString & sPfad);
int DeleteFileDB(const CString & sPfad);

// Text by lines.
template <std::derived_from<CDateibasis> TDatei> class CTextdatei : public TDatei {
public:
    using TDatei::TDatei;
    // The text as it stands, without a line end of its own.
    void WriteString(const CString & sText) { this->SchreibeText(sText.Sicht()); }
    template <std::same_as<std::string_view> T> void WriteString(T sText) { this->SchreibeText(sText); }
    // The next line without its end; false and an empty text at the end of the file. The view of the second form
    // holds until the next operation.
    bool ReadString(CString & sZeile) {
        std::string_view s;
        const bool bDa = this->LiesZeile(s);
        sZeile = CString(s);
        return bDa;
    }
    template <std::same_as<std::string_view> T> bool ReadString(T & sZeile) {
        return this->LiesZeile(sZeile);
    }
};
class CStdioFile : public CTextdatei<CFile> {};
class CDBStdioFile : public CTextdatei<CDBFile> {};

// Walks a folder:
//
//   for (bool bMehr = suche.FindFile(sMuster); bMehr;) {
//       bMehr = suche.FindNextFile();
//       ... suche.GetFilePath() ...
//   }
class CDateisuche {
public:
    explicit CDateisuche(CDateispeicher & speicher) : m_pSpeicher(&speicher) {}
    // Starts; true if there is anything to step to. The pattern is CDateispeicher::Suche's.
    bool FindFile(const CString & sMuster);
    // Steps to the next entry; true if there is another one behind it.
    bool FindNextFile();
    void Close() { m_vEintraege.clear(); }
    // Of the entry stepped to.
    [[nodiscard]] bool IsDirectory() const { return Eintrag().bOrdner; }
    [[nodiscard]] CString GetFileName() const { return Eintrag().sName; }
    [[nodiscard]] CString GetFilePath() const { return m_sOrdner + Eintrag().sName; }

private:
    [[nodiscard]] const SDateieintrag & Eintrag() const;
    CDateispeicher * m_pSpeicher;
    CString m_sOrdner;
    std::vector<SDateieintrag> m_vEintraege;
    std::size_t m_iNaechster = 0; // the entry stepped to stands before it
};
class CFileFind : public CDateisuche {
public:
    CFileFind() : CDateisuche(Plattendateien()) {}
};
class CDBFileFind : public CDateisuche {
public:
    CDBFileFind() : CDateisuche(Bestandsdateien()) {}
};

// Settings by section and key:
//
//   [Abschnitt]
//   Schluessel=Wert
//
// Names compare exactly, and of two equal keys the first counts. A value is what stands behind the equals sign, blanks
// included; reading takes off double quotes around it. The file is read at the first question or change and kept in
// memory; a file that is missing or cannot be read has no keys.
class CInidatei {
public:
    CInidatei(CDateispeicher & speicher, CString sDatei)
        : m_pSpeicher(&speicher), m_sDatei(std::move(sDatei)) {}
    // sErsatz where there is no such key.
    [[nodiscard]] CString ReadString(const CString & sAbschnitt, const CString & sSchluessel,
                                     const CString & sErsatz);
    // Changes or adds a key, in memory. Line ends in a value become blanks. False where the file is there but cannot be
    // read, since saving would lose what it holds.
    bool WriteString(const CString & sAbschnitt, const CString & sSchluessel, const CString & sWert);
    // Writes the file: no blank lines, everything else in its place. False if that failed; then the file is removed,
    // so that nobody takes a part for the whole.
    bool Save();

private:
    void Lies();
    [[nodiscard]] std::size_t Abschnittsende(std::size_t iAbschnitt) const;

    CDateispeicher * m_pSpeicher;
    CString m_sDatei;
    bool m_bGelesen = false;
    bool m_bLesbar = true;
    std::vector<std::string> m_vZeilen;
};
class CIniFile : public CInidatei {
public:
    explicit CIniFile(const CString & sDatei) : CInidatei(Plattendateien(), sDatei) {}
    [[nodiscard]] static CString ReadOneString(const CString & sDatei, const CString & sAbschnitt,
                                               const CString & sSchluessel, const CString & sErsatz) {
        return CIniFile(sDatei).ReadString(sAbschnitt, sSchluessel, sErsatz);
    }
};
class CDBIniFile : public CInidatei {
public:
    explicit CDBIniFile(const CString & sDatei) : CInidatei(Bestandsdateien(), sDatei) {}
    [[nodiscard]] static CString ReadOneString(const CString & sDatei, const CString & sAbschnitt,
                                               const CString & sSchluessel, const CString & sErsatz) {
        return CDBIniFile(sDatei).ReadString(sAbschnitt, sSchluessel, sErsatz);
    }
};

} // namespace orvostat
