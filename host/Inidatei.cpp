#include "orvostatbs/host/Dateien.h"

#include <algorithm>

namespace orvostat {

namespace {

// A line of its own, whatever stands in the text.
std::string Zeile(const CString & sText) {
    std::string s(sText.Sicht().Text());
    std::replace_if(
        s.begin(), s.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return s;
}

std::string Kopf(const CString & sAbschnitt) { return '[' + Zeile(sAbschnitt) + ']'; }
bool IstKopf(std::string_view sZeile) { return sZeile.starts_with('[') && sZeile.ends_with(']'); }

std::string_view OhneAnfuehrung(std::string_view s) {
    return s.size() >= 2 && s.front() == '"' && s.back() == '"' ? s.substr(1, s.size() - 2) : s;
}

} // namespace

void CInidatei::Lies() {
    if (m_bGelesen) return;
    m_bGelesen = true;
    CTextdatei<CDateibasis> datei(*m_pSpeicher);
    CFileException fehler;
    if (!datei.Open(m_sDatei, CDateibasis::modeRead, &fehler)) {
        m_bLesbar = fehler.m_cause == URSACHE_KEINE_DATEI || fehler.m_cause == URSACHE_PFAD;
        return;
    }
    try {
        for (std::string_view sZeile; datei.ReadString(sZeile);)
            if (!sZeile.empty()) m_vZeilen.emplace_back(sZeile);
    } catch (const CFileException &) {
        m_bLesbar = false;
        m_vZeilen.clear();
    }
}

CString CInidatei::ReadString(const CString & sAbschnitt, const CString & sSchluessel,
                              const CString & sErsatz) {
    Lies();
    const std::string sKopf = Kopf(sAbschnitt);
    const std::string sAnfang = Zeile(sSchluessel) + '=';
    bool bDrin = false;
    for (const std::string_view sZeile : m_vZeilen) {
        if (IstKopf(sZeile))
            bDrin = sZeile == sKopf;
        else if (bDrin && sZeile.starts_with(sAnfang))
            return CString(OhneAnfuehrung(sZeile.substr(sAnfang.size())));
    }
    return sErsatz;
}

// Behind the last line of the section whose head stands at iAbschnitt.
std::size_t CInidatei::Abschnittsende(std::size_t iAbschnitt) const {
    std::size_t i = iAbschnitt + 1;
    while (i < m_vZeilen.size() && !IstKopf(m_vZeilen[i]))
        ++i;
    return i;
}

bool CInidatei::WriteString(const CString & sAbschnitt, const CString & sSchluessel, const CString & sWert) {
    Lies();
    if (!m_bLesbar) return false;
    const std::string sAnfang = Zeile(sSchluessel) + '=';
    const auto itKopf = std::find(m_vZeilen.begin(), m_vZeilen.end(), Kopf(sAbschnitt));
    const auto iKopf = static_cast<std::size_t>(itKopf - m_vZeilen.begin());
    if (itKopf == m_vZeilen.end()) m_vZeilen.push_back(Kopf(sAbschnitt));
    const std::size_t iEnde = Abschnittsende(iKopf);
    for (std::size_t i = iKopf + 1; i < iEnde; ++i)
        if (m_vZeilen[i].starts_with(sAnfang)) {
            m_vZeilen[i] = sAnfang + Zeile(sWert);
            return true;
        }
    m_vZeilen.insert(m_vZeilen.begin() + static_cast<std::ptrdiff_t>(iEnde), sAnfang + Zeile(sWert));
    return true;
}

bool CInidatei::Save() {
    Lies();
    if (!m_bLesbar) return false;
    CTextdatei<CDateibasis> datei(*m_pSpeicher);
    if (!datei.Open(m_sDatei, CDateibasis::modeCreate | CDateibasis::modeWrite)) return false;
    try {
        for (const std::string & sZeile : m_vZeilen)
            datei.WriteString(std::string_view(sZeile + '\n'));
        datei.Close();
        return true;
    } catch (const CFileException &) {
        static_cast<void>(m_pSpeicher->Loesche(m_sDatei));
        return false;
    }
}

} // namespace orvostat
