#include "orvostatbs/host/Oberflaeche.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace orvostat {

void Halt(const CString & sCaption, const CString & sText, int iArt) {
    Oberflaeche().Hinweis(EHinweis::Hinweis, sCaption, sText, iArt);
}

void HaltE(const CString & sCaption, const CString & sText, int iArt) {
    Oberflaeche().Hinweis(EHinweis::Fehler, sCaption, sText, iArt);
}

void HaltI(const CString & sCaption, const CString & sText, int iArt) {
    Oberflaeche().Hinweis(EHinweis::Information, sCaption, sText, iArt);
}

void MxHaltE(const CString & sCaption, const CString & sText, int iArt) { HaltE(sCaption, sText, iArt); }

int SollIch(const CString & sCaption, const CString & sText, int iArt) {
    return Oberflaeche().Frage(sCaption, sText, iArt) ? SOLLICH_JA : 0;
}

bool OrvoUpdateProgressBox2(long iPos, long iMax) {
    return Oberflaeche().Fortschritt(iPos, std::max(iMax, 1L));
}

void OrvoCloseProgressBox() { Oberflaeche().SchliesseFortschritt(); }

void BeginWaitCursor() { Oberflaeche().Wartezeiger(true); }

void EndWaitCursor() { Oberflaeche().Wartezeiger(false); }

namespace {

constexpr auto BILDABSTAND = std::chrono::milliseconds(100);
constexpr int FORTSCHRITT_BREITE = 50;
constexpr int VERSUCHE = 3;
constexpr const char * ZEILE_LEER = "\r\033[K";

constinit COberflaeche * s_pOberflaeche = nullptr; // null is the terminal

constexpr bool IstSteuerzeichen(unsigned char c) {
    return c < 0x20 || c == 0x7F || c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D;
}

// A text for the screen. Line feeds become sUmbruch, other control characters "?".
std::string FuerSchirm(const CString & s, const char * sUmbruch) {
    const CSicht sicht(s);
    std::string sErgebnis;
    for (const char c : sicht.Text()) {
        if (c == '\n')
            sErgebnis += sUmbruch;
        else if (IstSteuerzeichen(static_cast<unsigned char>(c)))
            sErgebnis += '?';
        else
            sErgebnis += c;
    }
    return NachUtf8(sErgebnis);
}

// "Titel: Text", either part may be missing; further lines of the text are set in.
std::string Zeile(const CString & sTitel, const CString & sText) {
    const std::string sKopf = FuerSchirm(sTitel, " ");
    const std::string sRest = FuerSchirm(sText, "\n  ");
    return sKopf.empty() || sRest.empty() ? sKopf + sRest : sKopf + ": " + sRest;
}

const char * Kopf(EHinweis eHinweis) {
    switch (eHinweis) {
    case EHinweis::Fehler:
        return "Fehler";
    case EHinweis::Information:
        return "Information";
    case EHinweis::Hinweis:
        break;
    }
    return "Hinweis";
}

// 'j', 'n', or 0 for an answer that is neither.
char Antwort(const std::string & sZeile) {
    const CString s = AusUtf8(sZeile).Trim().MakeLower();
    if (s == "j" || s == "ja") return 'j';
    return s == "n" || s == "nein" ? 'n' : '\0';
}

} // namespace

COberflaeche & Oberflaeche() {
    if (s_pOberflaeche != nullptr) return *s_pOberflaeche;
    static CTerminal s_terminal(std::cin, std::cerr, isatty(STDERR_FILENO) != 0);
    return s_terminal;
}

const CString & AbbruchTitel() {
    static const CString s_sTitel = "Vorgang abbrechen..."_t;
    return s_sTitel;
}

bool FrageAbbruch() {
    return SollIch(AbbruchTitel(), "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0) == SOLLICH_JA;
}

COberflaeche * SetzeOberflaeche(COberflaeche * pOberflaeche) {
    return std::exchange(s_pOberflaeche, pOberflaeche);
}

CTerminal::CTerminal(std::istream & ein, std::ostream & aus, bool bZeichnen)
    : m_ein(ein), m_aus(aus), m_bZeichnen(bZeichnen) {}

void CTerminal::LoescheZeile() {
    if (std::exchange(m_bZeileSteht, false)) m_aus << ZEILE_LEER;
}

void CTerminal::Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int) {
    LoescheZeile();
    m_aus << Kopf(eHinweis) << ": " << Zeile(sTitel, sText) << std::endl;
}

bool CTerminal::Frage(const CString & sTitel, const CString & sText, int) {
    LoescheZeile();
    for (int i = 0; i < VERSUCHE; ++i) {
        m_aus << Zeile(sTitel, sText) << " [j/n] " << std::flush;
        std::string sZeile;
        if (!std::getline(m_ein, sZeile)) {
            m_aus << std::endl;
            return false;
        }
        if (const char c = Antwort(sZeile)) return c == 'j';
    }
    return false;
}

bool CTerminal::OeffneFortschritt(HWND, const CString & sTitel, const CString & sText) {
    LoescheZeile();
    const CString sTrenner = sTitel.IsEmpty() || sText.IsEmpty() ? CString() : CString(" - ");
    m_sFortschritt = FuerSchirm((sTitel + sTrenner + sText).Left(FORTSCHRITT_BREITE), " ");
    m_bOffen = true;
    m_naechstesBild = {};
    return true;
}

bool CTerminal::Fortschritt(long iPos, long iMax) {
    if (!m_bOffen || !m_bZeichnen) return true;
    const auto jetzt = std::chrono::steady_clock::now();
    if (jetzt < m_naechstesBild) return true;
    m_naechstesBild = jetzt + BILDABSTAND;

    const double dAnteil = static_cast<double>(iPos) / static_cast<double>(std::max(iMax, 1L));
    const int iProzent = static_cast<int>(std::clamp(dAnteil * 100.0, 0.0, 100.0));
    m_aus << ZEILE_LEER << m_sFortschritt << "  " << iProzent << " %  (" << iPos << " von " << iMax << ')'
          << std::flush;
    m_bZeileSteht = true;
    return true;
}

void CTerminal::SchliesseFortschritt() {
    LoescheZeile();
    m_aus << std::flush;
    m_bOffen = false;
}

void CTerminal::Wartezeiger(bool) {}

} // namespace orvostat
