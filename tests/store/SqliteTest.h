// A practice's file for tests of the SQLite store, and another tool that has it open.
#pragma once

#include "SpeicherTest.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <fstream>
#include <memory>
#include <string>

#include <sqlite3.h>

namespace orvostat {

class CWerkzeug {
public:
    explicit CWerkzeug(const std::string & sDatei) { sqlite3_open(sDatei.c_str(), &m_p); }
    ~CWerkzeug() { sqlite3_close(m_p); }
    CWerkzeug(const CWerkzeug &) = delete;
    CWerkzeug & operator=(const CWerkzeug &) = delete;
    // Runs statements; gives the first column of the last row, or the failure.
    std::string Sql(const std::string & sSql) {
        std::string sErgebnis;
        const auto Zeile = [](void * p, int, char ** ppWerte, char **) {
            *static_cast<std::string *>(p) = ppWerte[0] ? ppWerte[0] : "NULL";
            return 0;
        };
        if (sqlite3_exec(m_p, sSql.c_str(), Zeile, &sErgebnis, nullptr) != SQLITE_OK)
            return sqlite3_errmsg(m_p);
        return sErgebnis;
    }

private:
    sqlite3 * m_p = nullptr;
};

// The statements that make a practice's file as the programs of that version of the schema did.
inline std::string AlteVersion(int iVersion) {
    return LiesDatei(ORVOSTATBS_SOURCE_DIR "/tests/data/praxis-v" + std::to_string(iVersion) + ".sql");
}

inline void Ueberschreibe(const std::string & sDatei, std::streamoff iAb, std::size_t iAnzahl) {
    std::fstream f(sDatei, std::ios::binary | std::ios::in | std::ios::out);
    f.seekp(iAb);
    f << std::string(iAnzahl, '\x5A');
}

// What a walk over a table meets, each row as a line of texts.
inline std::string Zeilen(CZeilenspeicher & speicher, const STabelle & tabelle, const SBereich & bereich) {
    std::vector<CString> vTexte(tabelle.vSpalten.size());
    std::vector<CString *> vZeile;
    for (CString & sText : vTexte)
        vZeile.push_back(&sText);
    std::string s;
    const auto pWeg = speicher.Oeffne(tabelle, bereich);
    while (pWeg && pWeg->Naechste(vZeile) == ZEILE_OK)
        for (const CString & sText : vTexte)
            s += sText.Utf8() + (&sText == &vTexte.back() ? '\n' : '|');
    return s;
}

// The file does not exist until a test makes it.
class CSqliteTest : public ::testing::Test {
protected:
    std::shared_ptr<CSqliteSpeicher> Oeffne(EModus eModus) {
        return CSqliteSpeicher::OeffneDatei(m_sDatei, eModus, m_sMeldung);
    }
    // Why the file cannot be opened: the message behind its name.
    std::string Grund(EModus eModus) {
        EXPECT_EQ(Oeffne(eModus), nullptr);
        const std::string sAnfang = "Die Datei \"" + m_sDatei + "\" ";
        const std::string s = m_sMeldung.Utf8();
        return s.starts_with(sAnfang) ? s.substr(sAnfang.size()) : s;
    }
    // A new file with the numbers from 10000 on and their last two digits behind a name.
    void SchreibeZeilen(const std::string & sVorNummer, int iBis, const CString & sName) {
        const auto p = Oeffne(EModus::NeuUngesichert);
        ASSERT_TRUE(p && p->Beginne() == ZEILE_OK);
        for (int i = 10000; i < iBis; ++i) {
            const CString sNummer = AusUtf8(std::to_string(i));
            ASSERT_EQ(Schreibe(*p, AusUtf8(sVorNummer) + sNummer, sName + sNummer.Mid(3)), ZEILE_OK);
        }
        ASSERT_EQ(p->Beende(true), ZEILE_OK);
    }
    std::string Sql(const std::string & sSql) { return CWerkzeug(m_sDatei).Sql(sSql); }

    CTempVerzeichnis m_verzeichnis;
    std::string m_sDatei = m_verzeichnis.Datei("praxis.db");
    CString m_sMeldung;
};

} // namespace orvostat
