// What tests put in the place of user, clock and directories, and the fixture that puts it there and takes it away.
#pragma once

#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Umgebung.h"
#include "support/Verzeichnis.h"

#include <deque>
#include <filesystem>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

namespace orvostat {

// A prompt as the user would have seen it.
struct SPrompt {
    enum EArt { HALT, HALT_E, HALT_I, FRAGE };
    EArt eArt = HALT;
    CString sTitel;
    CString sText;
    int iArt = 0;
    [[nodiscard]] friend bool operator==(const SPrompt &, const SPrompt &) = default;
};
std::ostream & operator<<(std::ostream & aus, const SPrompt & prompt);

// Records what the engine says and answers as prepared.
class CRekorder : public COberflaeche {
public:
    // Prepared: answers to the coming questions, "no" when they run out; the number of the progress update from which
    // on the user cancels (1: the first; 0: never); whether the box can be opened.
    std::deque<bool> m_vAntworten;
    int m_iAbbruchAb = 0;
    bool m_bBoxGeht = true;

    // Recorded.
    std::vector<SPrompt> m_vPrompts;
    std::vector<CString>
        m_vBoxTexte; // per opening; title and text with " / " between them, if there is a title
    std::vector<std::pair<long, long>> m_vSchritte;
    bool m_bBoxOffen = false;
    bool m_bWartezeiger = false;

    void Hinweis(EHinweis eHinweis, const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool Frage(const CString & sTitel, const CString & sText, int iArt) override;
    [[nodiscard]] bool OeffneFortschritt(HWND hParent, const CString & sTitel,
                                         const CString & sText) override;
    [[nodiscard]] bool Fortschritt(long iPos, long iMax) override;
    void SchliesseFortschritt() override { m_bBoxOffen = false; }
    void Wartezeiger(bool bAn) override { m_bWartezeiger = bAn; }
};

// A clock that stands.
class CFesteUhr : public CUhr {
public:
    SZeitpunkt m_zeit{2024, 7, 1, 9, 5}; // a Monday
    [[nodiscard]] SZeitpunkt Jetzt() const override { return m_zeit; }
};

// Every test that touches the host: a recorder, a standing clock, an empty table of libraries and an own set of
// directories (made for this test, removed after it) are in place, and the settings of the workstation have their
// values of the start. All of it is as before when the test has ended.
class CHostTest : public ::testing::Test {
public:
    CHostTest();
    ~CHostTest() override;

    CRekorder m_rekorder;
    CFesteUhr m_uhr;
    std::shared_ptr<CTempVerzeichnis> m_pVerzeichnis = CTempVerzeichnis::Gemeinsam();
    const std::filesystem::path & m_verzeichnis = *m_pVerzeichnis; // holds the three directories
    SPfade m_pfade;
    CBibliotheken m_bibliotheken;

private:
    struct SEinstellungen {
        CString sMdId, sPId, sPraxisId, sWorkstation;
        bool bPraxisLeb, bMKGVersion;
    };

    SEinstellungen m_vorher;
    COberflaecheErsatz m_oberflaeche{m_rekorder};
    CUhrErsatz m_uhrErsatz{m_uhr};
    CPfadeErsatz m_pfadeErsatz{m_pfade};
    CBibliothekenErsatz m_bibliothekenErsatz{m_bibliotheken};
};

// Failure messages show a text as UTF-8.
void PrintTo(const CString & s, std::ostream * pAus);

} // namespace orvostat
