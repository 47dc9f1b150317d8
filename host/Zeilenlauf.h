// Rows of any table, without its class: for commands that treat all tables alike.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <memory>
#include <vector>

namespace orvostat {

// Walks a whole table in the order of a key. A store that fails at once gives no row and Ergebnis ZEILE_FEHLER.
class CZeilenlauf {
public:
    CZeilenlauf(CZeilenspeicher & speicher, const STabelle & tabelle, int iSchluessel = 1)
        : m_vTexte(tabelle.vSpalten.size()) {
        for (CString & sText : m_vTexte)
            m_vZeiger.push_back(&sText);
        SBereich bereich;
        bereich.iSchluessel = iSchluessel;
        m_pMenge = speicher.Oeffne(tabelle, bereich);
    }
    // Reads the next row; false at the end and after a failure.
    bool Naechste() {
        m_iErgebnis = m_pMenge ? m_pMenge->Naechste(m_vZeiger) : static_cast<int>(ZEILE_FEHLER);
        return m_iErgebnis == ZEILE_OK;
    }
    // Of the last Naechste: ZEILE_KEINE is the end of the table.
    [[nodiscard]] int Ergebnis() const { return m_iErgebnis; }
    [[nodiscard]] const std::vector<CString> & Texte() const { return m_vTexte; }
    [[nodiscard]] CWerte Werte() const { return {m_vZeiger.data(), m_vZeiger.size()}; }

private:
    std::vector<CString> m_vTexte;
    std::vector<CString *> m_vZeiger;
    std::unique_ptr<CZeilenmenge> m_pMenge;
    int m_iErgebnis = ZEILE_KEINE;
};

} // namespace orvostat
