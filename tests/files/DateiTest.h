// The fixture of the tests of the statistic files: a practice in memory, whose pools are filled, an accumulator, and
// the directories that a set needs.
#pragma once

#include "accu/AccuTest.h"
#include "orvostatbs/files/Orvo2Excel.h"
#include "orvostatbs/files/Statistikdatei.h"
#include "orvostatbs/files/ZwSich2File.h"
#include "orvostatbs/host/Arbeitsplatz.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "support/Fehlerdateien.h"

#include <string>
#include <utility>

namespace orvostat {

// An evaluator whose protected operations a test may call.
template <class T> class CPruefeval : public CStatEval<T> {
public:
    CPruefeval() : CStatEval<T>(nullptr) {}
    using CStatEval<T>::GetField;
    using CStatEval<T>::FindFieldTitel;
    using CStatEval<T>::GetLineFields;
    using CStatEval<T>::MoveLineFields;
};

// A file's bytes as UTF-8, "-" where there is none; writing them.
template <class T> [[nodiscard]] std::string Inhalt(const CString & sPfad) {
    T datei;
    if (!datei.Open(sPfad, T::modeRead)) return "-";
    std::string s(static_cast<std::size_t>(datei.GetLength()), '\0');
    datei.Read(s.data(), static_cast<unsigned>(s.size()));
    return NachUtf8(s);
}
template <class T> void Lege(const CString & sPfad, const std::string & sText) {
    T datei;
    ASSERT_TRUE(datei.Open(sPfad, T::modeCreate | T::modeWrite));
    datei.WriteString(std::string_view(sText));
    datei.Close();
}

class CDateiTest : public CAccuTest {
protected:
    CDateiTest() {
        std::filesystem::create_directories(m_verzeichnis / "daten" / "stat" / "01");
        for (const char * pPool :
             {"gostattyp", "gostattyp2", "gostattyp3", "gostattyp4", "statistikspalte", "medstatistikspalte",
              "kassenarttyp", "techlsttyp", "kassengrptyp", "hvmbudget"})
            Schreibe(std::string("SELECTPOOL SPLFD=1 SPKEY=k SPPOOL=") + pPool);
    }

    // Lets an operation of the files of both kinds fail from now on; none without one.
    void Stoere(CFehlerdateien::EWo eWo = CFehlerdateien::NIRGENDS, int iUrsache = 13) {
        m_platte.FehlerBei(eWo, iUrsache);
        m_bestand.FehlerBei(eWo, iUrsache);
    }
    // What the user was told since the last call: "E title: text".
    [[nodiscard]] std::string Gesagt() {
        std::string s;
        for (const SPrompt & prompt : std::exchange(m_rekorder.m_vPrompts, {}))
            s += std::string(1, "HEI?"[prompt.eArt]) + ' ' + (prompt.sTitel + ": " + prompt.sText).Utf8();
        return s;
    }

private:
    CFehlerdateien m_platte{Plattendateien()}, m_bestand{Bestandsdateien()};
    CPlattendateienErsatz m_platteErsatz{m_platte};
    CBestandsdateienErsatz m_bestandErsatz{m_bestand};
};

} // namespace orvostat
