#include "orvostatbs/host/Dateien.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvostat {

namespace {

constexpr std::size_t PUFFER = 256 * 1024;

} // namespace

// ---- files

CDateibasis::~CDateibasis() {
    try {
        Leere();
    } catch (const CFileException &) { // who wants to know closes himself
    }
}

bool CDateibasis::Open(const CString & sPfad, unsigned iModus, CFileException * pFehler) {
    Close();
    int iUrsache = URSACHE_KEINE;
    m_pZugriff = m_pSpeicher->Oeffne(sPfad, iModus, iUrsache);
    m_sPfad = sPfad;
    m_iPos = 0;
    m_iVon = m_iBis = 0;
    m_sPuffer.clear();
    m_bSchreiben = (iModus & modeWrite) != 0;
    if (pFehler != nullptr) *pFehler = CFileException(iUrsache, sPfad);
    return m_pZugriff != nullptr;
}

// A file that has failed keeps nothing that Close could fail with again.
void CDateibasis::Pruefe(int iUrsache) {
    if (iUrsache == URSACHE_KEINE) return;
    m_sPuffer.clear();
    m_iVon = m_iBis = 0;
    m_pZugriff.reset();
    throw CFileException(iUrsache, m_sPfad);
}

void CDateibasis::Leere() {
    if (!m_pZugriff || !m_bSchreiben || m_sPuffer.empty()) return;
    Pruefe(m_pZugriff->Schreibe(m_iPos, m_sPuffer));
    m_iPos += m_sPuffer.size();
    m_sPuffer.clear();
}

void CDateibasis::Flush() {
    if (!m_pZugriff) return;
    Leere();
    Pruefe(m_pZugriff->Sichere());
}

void CDateibasis::Close() {
    if (!m_pZugriff) return;
    Leere();
    const auto pZugriff = std::move(m_pZugriff);
    Pruefe(pZugriff->Schliesse());
}

void CDateibasis::SchreibeText(std::string_view sBytes) {
    if (!m_pZugriff || !m_bSchreiben) throw CFileException(URSACHE_KEIN_ZUGRIFF, m_sPfad);
    m_sPuffer += sBytes;
    if (m_sPuffer.size() >= PUFFER) Leere();
}

void CDateibasis::Write(const void * pBytes, unsigned iAnzahl) {
    SchreibeText({static_cast<const char *>(pBytes), iAnzahl});
}

// Reads ahead, keeping what has not been taken yet; false at the end of the file.
bool CDateibasis::Fuelle() {
    if (!m_pZugriff || m_bSchreiben) throw CFileException(URSACHE_KEIN_ZUGRIFF, m_sPfad);
    std::memmove(m_sPuffer.data(), m_sPuffer.data() + m_iVon, m_iBis - m_iVon);
    m_iBis -= std::exchange(m_iVon, 0);
    // No more room than the file can fill; most files are a screen of settings.
    const std::uint64_t iRest = m_pZugriff->Laenge() - std::min(m_iPos, m_pZugriff->Laenge());
    const std::size_t iGroesse = std::min<std::uint64_t>(std::max(2 * m_iBis, PUFFER), m_iBis + iRest + 1);
    if (m_sPuffer.size() < iGroesse) m_sPuffer.resize(iGroesse);
    std::size_t iGelesen = 0;
    const int iUrsache = m_pZugriff->Lies(m_iPos, std::span(m_sPuffer).subspan(m_iBis), iGelesen);
    m_iBis += iGelesen;
    m_iPos += iGelesen;
    Pruefe(iUrsache);
    return iGelesen > 0;
}

unsigned CDateibasis::Read(void * pZiel, unsigned iAnzahl) {
    unsigned iGelesen = 0;
    while (iGelesen < iAnzahl && (m_iVon < m_iBis || Fuelle())) {
        const std::size_t n = std::min<std::size_t>(m_iBis - m_iVon, iAnzahl - iGelesen);
        std::memcpy(static_cast<char *>(pZiel) + iGelesen, m_sPuffer.data() + m_iVon, n);
        m_iVon += n;
        iGelesen += static_cast<unsigned>(n);
    }
    return iGelesen;
}

bool CDateibasis::LiesZeile(std::string_view & sZeile) {
    const auto Gelesen = [this] { return std::string_view(m_sPuffer).substr(m_iVon, m_iBis - m_iVon); };
    std::size_t iEnde = Gelesen().find('\n');
    while (iEnde == std::string_view::npos) {
        const std::size_t iGesehen = Gelesen().size();
        if (!Fuelle()) break;
        iEnde = Gelesen().find('\n', iGesehen);
    }
    sZeile = Gelesen().substr(0, iEnde);
    m_iVon += sZeile.size() + (iEnde == std::string_view::npos ? 0 : 1);
    const bool bDa = iEnde != std::string_view::npos || !sZeile.empty();
    while (sZeile.ends_with('\r')) // also of a file that was cut off within a line end
        sZeile.remove_suffix(1);
    return bDa;
}

std::uint64_t CDateibasis::Seek(std::int64_t iWeite, unsigned iVon) {
    if (!m_pZugriff) throw CFileException(URSACHE_KEIN_ZUGRIFF, m_sPfad);
    Leere();
    const auto iJetzt = static_cast<std::int64_t>(m_iPos - (m_iBis - m_iVon));
    const auto iLaenge = static_cast<std::int64_t>(m_pZugriff->Laenge());
    const std::int64_t iAnfang = iVon == begin ? 0 : iVon == current ? iJetzt : iLaenge;
    m_iPos = static_cast<std::uint64_t>(std::clamp(iWeite, -iAnfang, iLaenge - iAnfang) + iAnfang);
    m_iVon = m_iBis = 0;
    return m_iPos;
}

std::uint64_t CDateibasis::GetLength() {
    if (!m_pZugriff) throw CFileException(URSACHE_KEIN_ZUGRIFF, m_sPfad);
    Leere();
    return m_pZugriff->Laenge();
}

void CFile::Remove(const CString & sPfad) {
    const int iUrsache = Plattendateien().Loesche(sPfad);
    if (iUrsache != URSACHE_KEINE) throw CFileException(iUrsache, sPfad);
}

bool FileExistsDB(const CString & sPfad) { return Bestandsdateien().Existiert(sPfad); }
int DeleteFileDB(const CString & sPfad) { return Bestandsdateien().Loesche(sPfad) == URSACHE_KEINE ? 1 : 0; }

// ---- walking a folder

bool CDateisuche::FindFile(const CString & sMuster) {
    m_sOrdner = Ordnerteil(sMuster);
    m_vEintraege = m_pSpeicher->Suche(sMuster);
    m_iNaechster = 0;
    return !m_vEintraege.empty();
}

bool CDateisuche::FindNextFile() {
    if (m_iNaechster < m_vEintraege.size()) ++m_iNaechster;
    return m_iNaechster < m_vEintraege.size();
}

const SDateieintrag & CDateisuche::Eintrag() const {
    static const SDateieintrag s_keiner;
    return m_iNaechster == 0 || m_iNaechster > m_vEintraege.size() ? s_keiner
                                                                   : m_vEintraege[m_iNaechster - 1];
}

} // namespace orvostat
