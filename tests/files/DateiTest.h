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

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>
#include <type_traits>

namespace orvostat {

// An evaluator whose protected operations a test may call.
template <class T> class CPruefeval : public CStatEval<T> {
public:
    CPruefeval() : CStatEval<T>(nullptr) {}
    using CStatEval<T>::GetField;
    using CStatEval<T>::FindFieldTitel;
    using CStatEval<T>::GetLineFields;
    using CStatEval<T>::MoveLineFields;
    using CStatEval<T>::WriteLines;
};

class CDateiTest : public CAccuTest {
protected:
    CDateiTest() {
        std::filesystem::create_directories(m_verzeichnis / "daten" / "stat" / "01");
        for (const CString & sPool :
             {"gostattyp"_t, "gostattyp2"_t, "gostattyp3"_t, "gostattyp4"_t, "statistikspalte"_t,
              "medstatistikspalte"_t, "kassenarttyp"_t, "techlsttyp"_t, "kassengrptyp"_t, "hvmbudget"_t})
            Schreibe("SELECTPOOL SPLFD=1 SPKEY=k SPPOOL=" + sPool.Utf8());
    }

    // The columns of a line that differ from those of an empty one: "DATUM=20240101 TEXT=..."
    [[nodiscard]] std::string Spalten(const CStatLines & zeile) {
        CPruefeval<CStdioFile> eval;
        CStatLines line = zeile;
        std::string s;
        for (int i = 0; i <= 222; ++i) {
            const CString sWert = eval.GetField(i, line);
            if (sWert == eval.GetField(i, m_leer) || i == 129 || i == 134) continue; // shared slots once
            s += (s.empty() ? "" : " ") + (VarNames[i] ? std::string(VarNames[i]) : std::to_string(i)) + '=' +
                 sWert.Utf8();
        }
        return s;
    }

    // A file's bytes as UTF-8, "-" where there is none; writing them.
    template <class T> [[nodiscard]] static std::string Inhalt(const CString & sPfad) {
        T datei;
        if (!datei.Open(sPfad, T::modeRead)) return "-";
        std::string s(static_cast<std::size_t>(datei.GetLength()), '\0');
        datei.Read(s.data(), static_cast<unsigned>(s.size()));
        return NachUtf8(s);
    }
    template <class T> static void Lege(const CString & sPfad, const std::string & sText) {
        T datei;
        ASSERT_TRUE(datei.Open(sPfad, T::modeCreate | T::modeWrite));
        datei.WriteString(std::string_view(sText));
        datei.Close();
    }

    CStatLines m_leer;
};

} // namespace orvostat
