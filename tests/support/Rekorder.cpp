#include "support/Rekorder.h"

#include <string>

namespace orvostat {

void PrintTo(const CString & s, std::ostream * pAus) { *pAus << '"' << s.Utf8() << '"'; }

namespace {

CString Unterverzeichnis(const std::filesystem::path & verzeichnis, const char * pName) {
    std::filesystem::create_directory(verzeichnis / pName);
    return Verzeichnistext((verzeichnis / pName).string());
}

SPrompt::EArt Art(EHinweis eHinweis) {
    switch (eHinweis) {
    case EHinweis::Fehler:
        return SPrompt::HALT_E;
    case EHinweis::Information:
        return SPrompt::HALT_I;
    case EHinweis::Hinweis:
        break;
    }
    return SPrompt::HALT;
}

} // namespace

std::ostream & operator<<(std::ostream & aus, const SPrompt & prompt) {
    constexpr const char * NAMEN[] = {"Halt", "HaltE", "HaltI", "SollIch"};
    return aus << NAMEN[prompt.eArt] << "(\"" << prompt.sTitel.Utf8() << "\", \"" << prompt.sText.Utf8()
               << "\", " << prompt.iArt << ')';
}

void CRekorder::Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) {
    m_vPrompts.push_back({Art(eHinweis), sTitel, sText, iArt});
}

bool CRekorder::Frage(const CString & sTitel, const CString & sText, int iArt) {
    m_vPrompts.push_back({SPrompt::FRAGE, sTitel, sText, iArt});
    if (m_vAntworten.empty()) return false;
    const bool bAntwort = m_vAntworten.front();
    m_vAntworten.pop_front();
    return bAntwort;
}

bool CRekorder::OeffneFortschritt(HWND, const CString & sTitel, const CString & sText) {
    m_vBoxTexte.push_back(sTitel.IsEmpty() ? sText : sTitel + " / " + sText);
    return m_bBoxOffen = m_bBoxGeht;
}

bool CRekorder::Fortschritt(long iPos, long iMax) {
    m_vSchritte.emplace_back(iPos, iMax);
    return m_iAbbruchAb == 0 || m_vSchritte.size() < static_cast<std::size_t>(m_iAbbruchAb);
}

CHostTest::CHostTest()
    : m_pfade{Unterverzeichnis(m_verzeichnis, "programm"), Unterverzeichnis(m_verzeichnis, "daten"),
              Unterverzeichnis(m_verzeichnis, "temp")},
      m_vorher{dbMdId, dbPId, dbPraxisId, dbLfdWorkstation, dbPraxisLeb, dbMKGVersion} {
    dbMdId = dbPId = dbPraxisId = CString();
    dbLfdWorkstation = " 1";
    dbPraxisLeb = dbMKGVersion = false;
}

CHostTest::~CHostTest() {
    dbMdId = m_vorher.sMdId;
    dbPId = m_vorher.sPId;
    dbPraxisId = m_vorher.sPraxisId;
    dbLfdWorkstation = m_vorher.sWorkstation;
    dbPraxisLeb = m_vorher.bPraxisLeb;
    dbMKGVersion = m_vorher.bMKGVersion;
}

} // namespace orvostat
