// What the tests of the stores share: the stores themselves, and rows of a small table.
#pragma once

#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/Zeilenspeicher.h"
#include "support/Verzeichnis.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orvostat {

// A kind of store: its name in the test's name, and how to make an empty one.
struct SSpeicherart {
    const char * pName;
    std::shared_ptr<CZeilenspeicher> (*fMache)(const CTempVerzeichnis &);
};

// The patients' table, of which the tests use the number (key 1) and surname and first name (key 2).
[[nodiscard]] const STabelle & Patienten();
int Schreibe(CZeilenspeicher & speicher, const CString & sNummer, const CString & sName = CString(),
             const CString & sVorname = CString());
// What a walk meets, as numbers with a blank between them; a failure shows as "!".
[[nodiscard]] std::string Nummern(CZeilenspeicher & speicher, const SBereich & bereich = {});

// That a store with one row refuses every write.
void ErwarteNurLesen(CZeilenspeicher & speicher);

// A row to read into and to write from, and a walk that uses it.
class CPatientenweg {
public:
    explicit CPatientenweg(CZeilenspeicher & speicher, const SBereich & bereich = {});
    int Naechste() { return m_pWeg ? m_pWeg->Naechste(m_vZeiger) : static_cast<int>(ZEILE_FEHLER); }
    int Loesche() { return m_pWeg->Loesche(); }
    int Ersetze() { return m_pWeg->Ersetze({m_vZeiger.data(), m_vZeiger.size()}); }
    // Changes one field of the row and replaces it.
    int Setze(CString CTPat_Fields::*pFeld, const CString & sText) {
        return m_zeile.*pFeld = sText, Ersetze();
    }
    // The numbers of all rows ahead.
    [[nodiscard]] std::string Rest();

    CTPat_Fields m_zeile;

private:
    std::vector<CString *> m_vZeiger;
    std::unique_ptr<CZeilenmenge> m_pWeg;
};

} // namespace orvostat
