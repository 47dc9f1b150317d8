// How the engine speaks with the user: prompts, one question, a progress box and the wait cursor.
//
// The engine calls the free functions below; each hands its arguments to the current orvostat::COberflaeche. That is
// the terminal until a program or a test puts its own object in place:
//
//   CMeineOberflaeche oberflaeche;
//   orvostat::COberflaecheErsatz ersatz(oberflaeche); // until ersatz ends
//
// All calls come from the thread that runs the statistic.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Umgebung.h"

#include <chrono>
#include <iosfwd>
#include <string>

namespace orvostat {

// A window's handle, and a window that has one. The engine only passes them on; both may be null.
struct HWND__;
using HWND = HWND__ *;

class CWnd {
public:
    explicit CWnd(HWND hWnd = nullptr) : m_hWnd(hWnd) {}
    // The window's handle; null for a null window, which may be asked too.
    [[nodiscard]] static HWND GetSafeHwnd(const CWnd * pWnd) {
        return pWnd == nullptr ? nullptr : pWnd->m_hWnd;
    }
    HWND m_hWnd;
};

// Notices: plain, error, information, and the error notice of the window library. Each returns when the user has
// seen it. iArt is handed on as it is.
void Halt(const CString & sCaption, const CString & sText, int iArt = 0);
void HaltE(const CString & sCaption, const CString & sText, int iArt = 0);
void HaltI(const CString & sCaption, const CString & sText, int iArt = 0);
void MxHaltE(const CString & sCaption, const CString & sText, int iArt = 0);

// Asks a yes or no question: 10 for yes, 0 for no.
[[nodiscard]] int SollIch(const CString & sCaption, const CString & sText, int iArt = 0);

// The progress box. There is one: opening it again gives it new texts. Open returns false when the box could not be
// opened, and the caller gives up then. Update moves the bar and returns false when the user wants to cancel; iMax
// below 1 counts as 1. Texts come as printf format and arguments, a CString among them for %s.
[[nodiscard]] bool OrvoUpdateProgressBox2(long iPos, long iMax);
void OrvoCloseProgressBox();
template <class... T>
bool OrvoOpenProgressBox(HWND hParent, const CString & sTitel, const CString & sFormat, const T &... args);
template <class... T>
bool OrvoOpenProgressBox(int iArg1, int iArg2, const CString & sFormat, const T &... args);

// The wait cursor by hand. The last call counts, nothing is nested.
void BeginWaitCursor();
void EndWaitCursor();

// The wait cursor during the life of an object.
class CWaitCursor {
public:
    CWaitCursor() { BeginWaitCursor(); }
    ~CWaitCursor() { EndWaitCursor(); }
    CWaitCursor(const CWaitCursor &) = delete;
    CWaitCursor & operator=(const CWaitCursor &) = delete;
};

enum class EHinweis { Hinweis, Fehler, Information };

// What SollIch returns for yes.
inline constexpr int SOLLICH_JA = 10;

// The user interface. Texts are borrowed for the call.
class COberflaeche {
public:
    virtual ~COberflaeche() = default;
    // Shows a notice; MxHaltE comes as an error.
    virtual void Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) = 0;
    // True for yes.
    [[nodiscard]] virtual bool Frage(const CString & sTitel, const CString & sText, int iArt) = 0;
    // False when the box could not be opened.
    [[nodiscard]] virtual bool OeffneFortschritt(HWND hParent, const CString & sTitel,
                                                 const CString & sText) = 0;
    // Comes often, between any two lines of a run, also while no box is open. iMax is at least 1. False to cancel.
    [[nodiscard]] virtual bool Fortschritt(long iPos, long iMax) = 0;
    // Also comes while no box is open.
    virtual void SchliesseFortschritt() = 0;
    virtual void Wartezeiger(bool bAn) = 0;
};

[[nodiscard]] COberflaeche & Oberflaeche();

// Asks whether to stop, for a caller to whom OrvoUpdateProgressBox2 has returned false: "Möchten Sie wirklich den
// Vorgang abbrechen?" under AbbruchTitel. True for yes.
[[nodiscard]] bool FrageAbbruch();
[[nodiscard]] const CString & AbbruchTitel();
// Null is the terminal; returns the former one, null for the terminal.
COberflaeche * SetzeOberflaeche(COberflaeche * pOberflaeche);
using COberflaecheErsatz = CErsatz<COberflaeche, &SetzeOberflaeche>;

// The default: notices and the question as UTF-8 lines on aus, the answer as a line from ein ("j" or "ja" is yes, "n"
// or "nein" is no, the end of ein and the third unclear answer are no). A notice does not wait. The progress box is
// one line that is drawn over, at most ten times a second and only if bZeichnen says that aus is a screen. The user
// cannot cancel; a program that can tell (Ctrl-C) derives from this class and overrides Fortschritt. Control
// characters in texts from the database never reach the screen. Both streams must outlive the object.
class CTerminal : public COberflaeche {
public:
    CTerminal(std::istream & ein, std::ostream & aus, bool bZeichnen);

    void Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool Frage(const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool OeffneFortschritt(HWND hParent, const CString & sTitel,
                                         const CString & sText) override;
    [[nodiscard]] bool Fortschritt(long iPos, long iMax) override;
    void SchliesseFortschritt() override;
    void Wartezeiger(bool bAn) override;

private:
    void LoescheZeile();

    std::istream & m_ein;
    std::ostream & m_aus;
    bool m_bZeichnen;
    bool m_bOffen = false;
    bool m_bZeileSteht = false;
    std::string m_sFortschritt;
    std::chrono::steady_clock::time_point m_naechstesBild;
};

template <class... T>
bool OrvoOpenProgressBox(HWND hParent, const CString & sTitel, const CString & sFormat, const T &... args) {
    CString sText;
    sText.Format(sFormat, args...);
    return Oberflaeche().OeffneFortschritt(hParent, sTitel, sText);
}

template <class... T> bool OrvoOpenProgressBox(int, int, const CString & sFormat, const T &... args) {
    return OrvoOpenProgressBox(HWND(nullptr), CString(), sFormat, args...);
}

} // namespace orvostat
