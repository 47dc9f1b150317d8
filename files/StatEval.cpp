#include "orvostatbs/files/StatEval.h"

#include "Katalog.h"
#include "Spalten.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

namespace orvostat {

CString GetOrvoStatPath() { return GetOrvoDataPath(0) + "stat\\"; }

CString GetOrvoStatWSPath() {
    CString sNummer = dbLfdWorkstation;
    sNummer.Replace(' ', '0');
    return GetOrvoStatPath() + sNummer + "\\";
}

namespace {

// ---- what the user is told

enum class EVorgang { Loeschen, Schreiben, Lesen };

CString Titel(EVorgang eVorgang, const CString & sDatei) {
    CString sTitel;
    switch (eVorgang) {
    case EVorgang::Loeschen:
        sTitel.Format("DeleteFile %s gescheitert!"_t, sDatei);
        break;
    case EVorgang::Schreiben:
        sTitel.Format("WriteDaten %s gescheitert!"_t, sDatei);
        break;
    case EVorgang::Lesen:
        sTitel.Format("ReadDaten %s gescheitert!"_t, sDatei);
        break;
    }
    return sTitel;
}

CString Ursachentext(EVorgang eVorgang, int iUrsache) {
    CString sText;
    sText.Format("Sonstiger Fehler! Bitte Fehlernummer merken: %d"_t, iUrsache);
    switch (iUrsache) {
    case URSACHE_KEINE:
    case URSACHE_KEINE_DATEI:
        return eVorgang == EVorgang::Lesen ? "Datei nicht gefunden!"_t : sText;
    case URSACHE_SONST:
        return "Generic Fehler!"_t;
    case URSACHE_PFAD:
        return "Ungültige Pfadangabe!"_t;
    case URSACHE_KEIN_ZUGRIFF:
        return "Zugriff nicht erlaubt! Datei schreibgeschützt?"_t;
    case URSACHE_GERAET:
        return "HARDWAREFEHLER!"_t;
    case URSACHE_VOLL:
        return eVorgang == EVorgang::Schreiben
                   ? "Es ist kein Speicherplatz mehr verfügbar! Festplatte ist voll."_t
                   : sText;
    default:
        return sText;
    }
}

// A file exception as prompt and result; some causes are none.
bool Melde(EVorgang eVorgang, const CString & sDatei, int iUrsache) {
    const bool bGut = (iUrsache == URSACHE_KEINE && eVorgang != EVorgang::Lesen) ||
                      (iUrsache == URSACHE_KEINE_DATEI && eVorgang == EVorgang::Loeschen);
    if (!bGut) HaltE(Titel(eVorgang, sDatei), Ursachentext(eVorgang, iUrsache), 0);
    return bGut;
}

void MeldeSammlung(const CString & sText) { HaltI("Datensammlung gescheitert."_t, sText, 0); }

// A failure code of a write or a read as prompt; the result is the call's.
bool MeldeSchreibcode(int iCode) {
    if (iCode == CODE_KEINE_DATEN)
        MeldeSammlung("Keine Leistungen gefunden. Bitte überprüfen Sie Ihre Einstellungen."_t);
    if (iCode == CODE_SELEKTION) MeldeSammlung("Selektionsdatei konnte nicht erstellt werden"_t);
    return iCode == CODE_OK;
}

bool MeldeLesecode(int iCode) {
    if (iCode == CODE_KEINE_DATEN) MeldeSammlung("Keine Kopfzeile gefunden!"_t);
    return iCode == CODE_OK;
}

// Closes the file; failing in that spoils the result.
template <class T> bool Schliesse(T & file, bool bErgebnis, EVorgang eVorgang, const CString & sDatei) {
    try {
        file.Close();
    } catch (const CFileException & fehler) {
        if (bErgebnis) return Melde(eVorgang, sDatei, fehler.m_cause);
    }
    return bErgebnis;
}

} // namespace

// ---- the two families

bool SDateifamilie<CStdioFile>::Existiert(const CString & sDatei) { return FileExists(sDatei); }
bool SDateifamilie<CStdioFile>::Loesche(const CString & sDatei) {
    try {
        CFile::Remove(sDatei);
        return true;
    } catch (const CFileException & fehler) {
        return Melde(EVorgang::Loeschen, sDatei, fehler.m_cause);
    }
}

bool SDateifamilie<CDBStdioFile>::Existiert(const CString & sDatei) { return FileExistsDB(sDatei); }
bool SDateifamilie<CDBStdioFile>::Loesche(const CString & sDatei) {
    if (!FileExistsDB(sDatei) || DeleteFileDB(sDatei) != 0) return true;
    HaltE("Statistik"_t, "Löschen der Datei '"_t + sDatei + "' gescheitert!"_t, 0);
    return false;
}

// ---- writing

template <class T> CStatEval<T>::CStatEval(CWnd * pParent) : m_pParent(pParent) {}

template <class T> bool CStatEval<T>::OeffneFortschritt() {
    return OrvoOpenProgressBox(CWnd::GetSafeHwnd(m_pParent), CString(), "Bitte ein wenig Geduld..."_t);
}

template <class T> bool CStatEval<T>::WriteDaten() {
    const CString sDat = GetDatFilename();
    const CString sIni = GetIniFilename();
    DeleteFileA(sIni);
    if (!m_bZwSich && !DeleteFileA(sDat)) return false;

    m_pLineStruct = SetLineStruct();
    m_lPos = 0;
    m_lGesamtPos = GetGesamtPos();
    if (m_pLineStruct == nullptr) return false;

    T file;
    const unsigned iModus = T::modeCreate | T::modeWrite | (m_bZwSich ? T::modeNoTruncate : 0u);
    if (!file.Open(sDat, iModus)) return false;
    if (!m_bZwSich) OeffneFortschritt();
    bool bErgebnis = false;
    try {
        bErgebnis = MeldeSchreibcode(SchreibeDaten(file, sIni));
    } catch (const CFileException & fehler) {
        bErgebnis = Melde(EVorgang::Schreiben, sDat, fehler.m_cause);
    }
    if (!m_bZwSich) OrvoCloseProgressBox();
    const bool bZu = Schliesse(file, bErgebnis, EVorgang::Schreiben, sDat);
    if (bErgebnis && !bZu) DeleteFileA(sIni); // which says that the data are whole
    return bZu;
}

// The guarded part of a write. The data stand in the file before the selection file says that they do.
template <class T> int CStatEval<T>::SchreibeDaten(T & file, const CString & sIni) {
    if (m_bZwSich) file.SeekToEnd();
    int iCount = 0;
    if (const int iCode = DoData(file, iCount); iCode != CODE_OK) return iCode;
    file.Flush();
    return CreateSelektionsFile(sIni) && CreateMoreSelektions(sIni) ? CODE_OK : CODE_SELEKTION;
}

template <class T> int CStatEval<T>::DoData(T & file, int & iCount) {
    WriteTitel(file);
    bool bZeile = GetLineData2File(m_Line);
    while (DoProgress(m_lPos, m_lGesamtPos)) {
        if (bZeile) {
            WriteLines(file, m_Line);
            ++iCount;
        }
        bZeile = GetLineData2File(m_Line);
    }
    return CODE_STILL;
}

template <class T> bool CStatEval<T>::WriteTitel(T & file) {
    for (const int * p = m_pLineStruct; p != nullptr && *p != -1; ++p) {
        if (p != m_pLineStruct) file.WriteString(CString(m_cDelimiter));
        file.WriteString(CString(*p < 0 || *p > KATALOG_LETZTER ? nullptr : VarNames[*p]));
    }
    file.WriteString(CString('\n'));
    return true;
}

template <class T> bool CStatEval<T>::WriteLines(T & file, CStatLines & line) {
    return WriteLines(file, line, m_pLineStruct);
}

template <class T> bool CStatEval<T>::WriteErrorLines(T & file, CStatLines & line) {
    return WriteLines(file, line, iERR_SICHERUNG);
}

template <class T> bool CStatEval<T>::WriteLines(T & file, CStatLines & line, int * pStruct) {
    if (pStruct == nullptr) return true;
    file.WriteString(BaueZeile(m_sZeile, pStruct, line, {m_cDelimiter, m_cErsatz}));
    return true;
}

template <class T> CString CStatEval<T>::GetField(int iField, CStatLines & line) {
    return Spaltentext(iField, line, {m_cDelimiter, m_cErsatz});
}

template <class T> bool CStatEval<T>::DoProgress(long & lPos, long lGesamt) {
    if (m_bZwSich || OrvoUpdateProgressBox2(lPos, lGesamt == 0 ? 1 : lGesamt)) return true;
    if (!FrageAbbruch()) return true;
    OrvoCloseProgressBox();
    return false;
}

// ---- reading

template <class T> bool CStatEval<T>::ReadDaten() {
    const CString sDat = GetDatFilename();
    const CString sIni = GetIniFilename();
    const long lHits = ReadAnzHits(sIni);

    T file;
    if (!file.Open(sDat, T::modeRead)) return false;
    if (!OeffneFortschritt()) return false;
    bool bErgebnis = false;
    try {
        bErgebnis = MeldeLesecode(LiesDaten(file, lHits));
    } catch (const CFileException & fehler) {
        bErgebnis = Melde(EVorgang::Lesen, sDat, fehler.m_cause);
    }
    OrvoCloseProgressBox();
    return Schliesse(file, bErgebnis, EVorgang::Lesen, sDat);
}

// The guarded part of a read.
template <class T> int CStatEval<T>::LiesDaten(T & file, long lHits) {
    if (!BeforeMoveDataFromFile()) return CODE_SELEKTION;
    bool bFirst = true;
    long lPos = 0;
    CString sLine;
    while (true) {
        const bool bDa = file.ReadString(sLine);
        ++lPos;
        if (!bDa) break;
        if (!DoProgress(lPos, lHits)) return CODE_ABBRUCH;
        if (!DoDataFromFile(bFirst, sLine)) return CODE_KEINE_DATEN;
        bFirst = false;
    }
    return DoProgress(lPos, lHits) ? CODE_OK : CODE_ABBRUCH;
}

template <class T> bool CStatEval<T>::DoDataFromFile(bool bFirst, const CString & sLine) {
    m_Line.Clear();
    if (bFirst && IsFirstLineStruct()) return GetLineStruct(sLine);
    // GetLineFields, without a copy of the line.
    if (LiesSpalten(sLine.Sicht(), m_cDelimiter, m_aLineStruct, m_aErrorStruct, m_Line))
        MoveDataFromFile(m_Line);
    return true;
}

template <class T> bool CStatEval<T>::GetLineStruct(const CString & sLine) {
    const CSicht sicht = sLine.Sicht();
    std::string_view sRest = sicht;
    if (sRest.find(m_cDelimiter) == std::string_view::npos) return false;
    m_aLineStruct.clear();
    while (!sRest.empty()) {
        const auto iEnde = sRest.find(m_cDelimiter);
        m_aLineStruct.push_back(FindFieldTitel(CString(sRest.substr(0, iEnde))));
        sRest.remove_prefix(iEnde == std::string_view::npos ? sRest.size() : iEnde + 1);
    }
    return true;
}

template <class T> int CStatEval<T>::FindFieldTitel(const CString & sTitel) {
    for (int i = 0; i <= KATALOG_LETZTER; ++i)
        if (sTitel == CString(VarNames[i])) return i;
    return -1;
}

template <class T> bool CStatEval<T>::GetLineFields(CString sLine, CStatLines & line) {
    return LiesSpalten(sLine.Sicht(), m_cDelimiter, m_aLineStruct, m_aErrorStruct, line);
}

template <class T> void CStatEval<T>::MoveLineFields(int iField, const CString & sValue, CStatLines & line) {
    const CSicht sicht = sValue.Sicht();
    SetzeSpalte(iField, sicht, line);
}

// ---- files

template <class T> bool CStatEval<T>::RemoveFiles(CString sPath) {
    if (!sPath.IsEmpty() && sPath.Right(1) != "\\") sPath += '\\';
    typename SDateifamilie<T>::CSuche suche;
    for (bool bMehr = suche.FindFile(sPath + "*.*"); bMehr;) {
        bMehr = suche.FindNextFile();
        if (!suche.IsDirectory() && !DeleteFileA(suche.GetFilePath())) return false;
    }
    return true;
}

template class CStatEval<CStdioFile>;
template class CStatEval<CDBStdioFile>;

} // namespace orvostat
