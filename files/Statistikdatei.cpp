#include "orvostatbs/files/Statistikdatei.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <stdexcept>

namespace orvostat {

namespace {

constexpr int BEHANDLER_BREITE = 3;

// The sections, and the text that stands for a key that is missing.
const CString & Allgemein() {
    static const CString s_s = "Allgemein"_t;
    return s_s;
}
const CString & Selektion() {
    static const CString s_s = "Selektion"_t;
    return s_s;
}
constexpr CString FEHLT = "*";

CString OderLeer(const CString & s) { return s == FEHLT ? CString() : s; }
CString Flagge(bool b) { return b ? CString("1") : CString("0"); }

// A key of the selection and how its field is written and read. The two dates are read by hand, since without them
// nothing is.
struct SSelektionsfeld {
    CString sSchluessel;
    CString (*fText)(const CStatAccu &);
    void (*fSetze)(CStatAccu &, const CString &); // null: read by hand
};

void VecZuText(const std::vector<CString> & v, CString & sOut, int iWidth) {
    sOut.Empty();
    for (const CString & s : v)
        sOut += s.GetLength() > iWidth ? s : RightFix(s, iWidth, ' ');
}

void TextZuVec(const CString & s, std::vector<CString> & v, int iWidth) {
    v.clear();
    for (int i = 0; iWidth > 0 && i < s.GetLength(); i += iWidth)
        v.push_back(GetMidStr(s, i, iWidth));
}

CString Behandlertext(const CStatAccu & accu) {
    CString s;
    VecZuText(accu.GetLebs(), s, BEHANDLER_BREITE);
    return s.IsEmpty() ? s : "\"" + s + "\"";
}

void SetzeBehandler(CStatAccu & accu, const CString & s) {
    std::vector<CString> vLebs;
    if (s != FEHLT && s.GetLength() >= BEHANDLER_BREITE) TextZuVec(s, vLebs, BEHANDLER_BREITE);
    accu.SetLebs(vLebs);
}

using CAccu = const CStatAccu &;
using CWert = const CString &;

// In the order in which they are written.
const std::vector<SSelektionsfeld> & Selektionsfelder() {
    static const std::vector<SSelektionsfeld> s_v = {
        {"DatumVon"_t, [](CAccu a) { return Db2Date(a.GetAbDatum()); }, nullptr},
        {"DatumBis"_t, [](CAccu a) { return Db2Date(a.GetBisDatum()); }, nullptr},
        {"Praxisinhaber"_t, [](CAccu a) { return a.GetMandant(); },
         [](CStatAccu & a, CWert s) { a.SetMandant(OderLeer(s)); }},
        {"Behandler"_t, Behandlertext, SetzeBehandler},
        {"Patient", [](CAccu a) { return a.GetPatient(); },
         [](CStatAccu & a, CWert s) { a.SetPatient(OderLeer(s)); }},
        {"Kasse", [](CAccu a) { return a.GetKasKuerzel(); },
         [](CStatAccu & a, CWert s) { a.SetKasse(OderLeer(s)); }},
        {"KasStat", [](CAccu a) { return a.GetKasStat(); },
         [](CStatAccu & a, CWert s) { a.SetKasStat(OderLeer(s)); }},
        {"KasMedStat"_t, [](CAccu a) { return a.GetKasMedStat(); },
         [](CStatAccu & a, CWert s) { a.SetKasMedStat(OderLeer(s)); }},
        {"PatSelektion"_t, [](CAccu a) { return a.GetPatSelekt(); },
         [](CStatAccu & a, CWert s) { a.SetSelektion(OderLeer(s)); }},
        // These two take the text for a missing key as it is.
        {"Sortierung"_t,
         [](CAccu a) {
             return a.GetSortierung() == 0 ? CString() : CString(static_cast<char>(a.GetSortierung()));
         },
         [](CStatAccu & a, CWert s) { a.SetSortierung(s.Erstes()); }},
        {"Erweiterung"_t, [](CAccu a) { return a.GetArtStat(); },
         [](CStatAccu & a, CWert s) { a.SetArtStat(s); }},
        {"NurMitMwSt"_t, [](CAccu a) { return Flagge(a.GetNurMitMwSt()); },
         [](CStatAccu & a, CWert s) { a.SetNurMitMwSt(Zahl(s) != 0); }},
        {"TecMitMwSt"_t, [](CAccu a) { return Flagge(a.GetTecMitMwSt()); },
         [](CStatAccu & a, CWert s) { a.SetTecMitMwSt(Zahl(s) != 0); }},
        {"ProzPrivatSachkosten"_t, [](CAccu a) { return itoc(a.GetProzPrivatSachkosten()); },
         [](CStatAccu & a, CWert s) { a.SetProzPrivatSachkosten(Zahl(s)); }},
    };
    return s_v;
}

} // namespace

// ---- writing

template <class T>
void CStat2File<T>::Vec2String(const std::vector<CString> & v, CString & sOut, int iWidth) {
    VecZuText(v, sOut, iWidth);
}

template <class T> bool CStat2File<T>::CreateSelektionsFile(const CString & sFile) {
    const CStatAccu & accu = *this->m_pFilter;
    CString sHits;
    sHits.Format("%d", static_cast<int>(accu.m_lAnzHits));
    typename SDateifamilie<T>::CIni ini(sFile);
    bool bOk = ini.WriteString(Allgemein(), "Statistikart"_t, m_sStatistikart) &&
               ini.WriteString(Allgemein(), "Version", m_sVersion) &&
               ini.WriteString(Allgemein(), "Erstellungsdatum"_t, Db2Date(GetMxDate())) &&
               ini.WriteString(Allgemein(), "Erstellungszeit"_t, GetMxTime()) &&
               ini.WriteString(Allgemein(), "AnzahlHits"_t, sHits);
    for (const SSelektionsfeld & feld : Selektionsfelder())
        bOk = bOk && ini.WriteString(Selektion(), feld.sSchluessel, feld.fText(accu));
    return bOk && ini.Save();
}

// ---- reading: the selection file

template <class T> bool CFile2Stat<T>::ReadSelektionsFile(const CString & sFile) {
    typename SDateifamilie<T>::CIni ini(sFile);
    const CString sVon = ini.ReadString(Selektion(), "DatumVon"_t, FEHLT);
    const CString sBis = ini.ReadString(Selektion(), "DatumBis"_t, FEHLT);
    if (sVon == FEHLT || sBis == FEHLT) {
        HaltE("ReadSelektionsFile"_t, "Lesen der Filterselektionen für Statistik gescheitert!"_t, 0);
        return false;
    }
    CStatAccu & accu = *this->m_pFilter;
    accu.SetZeitraum(Date2Db(sVon), Date2Db(sBis));
    for (const SSelektionsfeld & feld : Selektionsfelder())
        if (feld.fSetze != nullptr) feld.fSetze(accu, ini.ReadString(Selektion(), feld.sSchluessel, FEHLT));
    return true;
}

template <class T> CString CFile2Stat<T>::LiesAllgemein(const CString & sSchluessel) {
    return SDateifamilie<T>::CIni::ReadOneString(this->GetIniFilename(), Allgemein(), sSchluessel, CString());
}

template <class T> CString CFile2Stat<T>::GetLastEditDate() { return LiesAllgemein("Erstellungsdatum"_t); }
template <class T> CString CFile2Stat<T>::GetStatVersion() { return LiesAllgemein("Version"); }

template <class T> CString CFile2Stat<T>::GetLastEditDateText() {
    typename SDateifamilie<T>::CIni ini(this->GetIniFilename());
    const CString sDatum = ini.ReadString(Allgemein(), "Erstellungsdatum"_t, FEHLT);
    const CString sZeit = ini.ReadString(Allgemein(), "Erstellungszeit"_t, FEHLT);
    CString sWann;
    if (sDatum != FEHLT && sZeit != FEHLT) sWann.Format("vom %s um %s Uhr"_t, sDatum, sZeit);
    CString sText;
    sText.Format("F3 - Zuletzt erstellte Liste %s bearbeiten"_t, sWann);
    return sText;
}

template <class T> bool CFile2Stat<T>::ExistAllFiles() {
    return SDateifamilie<T>::Existiert(this->GetDatFilename()) &&
           SDateifamilie<T>::Existiert(this->GetIniFilename());
}

namespace {

// So much room is made on the file's word alone; more only where the data file is long enough for so many lines.
constexpr std::uint64_t HITS_OHNE_FRAGE = 10'000;

template <class T> std::uint64_t Dateilaenge(const CString & sDatei) {
    try {
        T datei;
        return datei.Open(sDatei, T::modeRead) ? datei.GetLength() : 0;
    } catch (const CFileException &) {
        return 0;
    }
}

// The shortest line that a writer makes of a layout: a character for the kind, the delimiters and the line end.
std::uint64_t KuerzesteZeile(const int * pStruct) {
    std::uint64_t iSpalten = 0;
    while (pStruct != nullptr && pStruct[iSpalten] != -1)
        ++iSpalten;
    return std::max<std::uint64_t>(iSpalten, 2) + 1;
}

} // namespace

template <class T> long CFile2Stat<T>::ReadAnzHits(const CString & sFile) {
    const auto lHits = static_cast<long>(
        Zahl64(SDateifamilie<T>::CIni::ReadOneString(sFile, Allgemein(), "AnzahlHits"_t, "0")));
    auto & vHits = this->m_pFilter->m_vBehHits;
    if (lHits <= 0) return lHits;
    const auto iHits = static_cast<std::uint64_t>(lHits);
    if (iHits <= vHits.size() || iHits <= vHits.capacity()) return lHits;
    const std::uint64_t iMoeglich = iHits <= HITS_OHNE_FRAGE ? iHits
                                                             : Dateilaenge<T>(this->GetDatFilename()) /
                                                                   KuerzesteZeile(this->SetLineStruct());
    try {
        if (iHits <= iMoeglich) vHits.reserve(iHits);
    } catch (const std::bad_alloc &) { // the number is a hint
    } catch (const std::length_error &) {
    }
    return lHits;
}

// ---- reading: the data file

template <class T> bool CFile2Stat<T>::BeforeMoveDataFromFile() {
    CStatAccu & accu = *this->m_pFilter;
    if (accu.GetGlobalData(true) != 0) return false;
    accu.m_vBehHits.clear();
    accu.m_vBehErrors.clear();
    accu.ClearP();
    accu.ClearV();
    accu.m_vKas.clear();
    accu.m_iGipsPos = -1;
    accu.m_vGipsHits.clear();
    accu.m_iRechPos = -1;
    accu.m_vRechHits.clear();
    accu.m_iErrPos = -1;
    accu.m_vGlabFaktHits.clear();
    m_pUewZiel = nullptr;
    OnlyForProgBeforeMoveDataFromFile();
    return GetThisLineStruct();
}

template <class T> bool CFile2Stat<T>::GetThisLineStruct() {
    const auto Nimm = [](std::vector<int> & v, const int * pStruct) {
        v.clear();
        for (; pStruct != nullptr && *pStruct != -1; ++pStruct)
            v.push_back(*pStruct);
    };
    const int * const pStruct = this->SetLineStruct();
    Nimm(this->m_aLineStruct, pStruct);
    Nimm(this->m_aErrorStruct, iERR_SICHERUNG);
    return pStruct != nullptr;
}

template <class T> void CFile2Stat<T>::String2Vec(const CString & s, std::vector<CString> & v, int iWidth) {
    TextZuVec(s, v, iWidth);
}

template <class T> bool CFile2Stat<T>::MoveDataFromFile(CStatLines & line) {
    const bool bErgebnis = NimmSatz(line);
    FuelleUeberweisungen();
    return bErgebnis;
}

// Adds the record that the line holds to its table.
template <class T> bool CFile2Stat<T>::NimmSatz(const CStatLines & line) {
    CStatAccu & accu = *this->m_pFilter;
    switch (line.ART.GetLength() == 1 ? line.ART.Erstes() : '\0') {
    case 'E':
        m_Error.Clear();
        line.MoveFile2Error(m_Error);
        accu.m_vBehErrors.push_back(m_Error);
        return false;
    case 'H':
        m_Hit.Clear();
        line.MoveFile2Hit(m_Hit);
        m_Hit.DATUM = line.DATUM;
        accu.m_vBehHits.push_back(m_Hit);
        return true;
    case 'P':
        m_Pat.Clear();
        line.MoveFile2Pat(m_Pat);
        m_Pat.PatIsValid();
        accu.m_vPat.push_back(m_Pat);
        return true;
    case 'K':
        m_Kas.Clear();
        line.MoveFile2Kas(m_Kas);
        accu.m_vKas.push_back(m_Kas);
        return true;
    case 'I':
        m_Gips.Clear();
        line.MoveFile2Gips(m_Gips);
        accu.m_vGipsHits.push_back(m_Gips);
        return true;
    case 'U':
        m_Hit.Clear();
        line.MoveFile2UEW(m_Hit);
        MerkeUeberweisung(m_Hit.TEXT);
        return true;
    case 'G':
        m_Hit.Clear();
        line.MoveFile2GB(m_Hit);
        accu.m_vBehHits.push_back(m_Hit);
        return true;
    case 'R':
        m_Rech.Clear();
        line.MoveFile2Rech(m_Rech);
        accu.m_vRechHits.push_back(m_Rech);
        return true;
    default:
        return false;
    }
}

// m_vUewStrings is m_setUew in order behind every line, at a price only where there is something new.
template <class T> void CFile2Stat<T>::MerkeUeberweisung(const CString & sText) {
    FuelleUeberweisungen();
    std::vector<CString> & vUew = this->m_pFilter->m_vUewStrings;
    if (m_setUew.insert(sText).second) vUew.insert(std::lower_bound(vUew.begin(), vUew.end(), sText), sText);
}

template <class T> void CFile2Stat<T>::FuelleUeberweisungen() {
    std::vector<CString> & vUew = this->m_pFilter->m_vUewStrings;
    if (m_pUewZiel == this->m_pFilter && vUew.size() == m_setUew.size()) return;
    vUew.assign(m_setUew.begin(), m_setUew.end());
    m_pUewZiel = this->m_pFilter;
}

template class CStat2File<CStdioFile>;
template class CStat2File<CDBStdioFile>;
template class CFile2Stat<CStdioFile>;
template class CFile2Stat<CDBStdioFile>;

} // namespace orvostat
