// Rows that follow each other, read out of the file in one go.
#pragma once

#include "SqliteDatei.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace orvostat {

class CSqliteBlock {
public:
    explicit CSqliteBlock(std::size_t iSpalten) : m_iSpalten(iSpalten) {}

    [[nodiscard]] std::size_t Zeilen() const { return m_iZeilen; }
    // Texts keep what they hold for rows to come.
    void Leere() { m_iZeilen = 0; }
    // Adds the row under a statement; false if there is no memory for it.
    [[nodiscard]] bool Nimm(sqlite3_stmt * pAnweisung) {
        const std::size_t iAb = m_iZeilen * m_iSpalten;
        if (m_vTexte.size() < iAb + m_iSpalten) m_vTexte.resize(iAb + m_iSpalten);
        for (std::size_t i = 0; i < m_iSpalten; ++i)
            if (!LiesText(pAnweisung, static_cast<int>(i), m_vTexte[iAb + i])) return false;
        ++m_iZeilen;
        return true;
    }
    // A row into the fields: a copy, or the texts themselves in exchange for what the fields hold.
    void Kopiere(std::size_t iZeile, CFelder vFelder) const {
        const CString * pText = &m_vTexte[iZeile * m_iSpalten];
        for (CString * pFeld : vFelder)
            *pFeld = *pText++;
    }
    void Tausche(std::size_t iZeile, CFelder vFelder) {
        CString * pText = &m_vTexte[iZeile * m_iSpalten];
        for (CString * pFeld : vFelder)
            std::swap(*pFeld, *pText++);
    }

private:
    std::size_t m_iSpalten;
    std::size_t m_iZeilen = 0;
    std::vector<CString> m_vTexte; // m_iSpalten of each row
};

} // namespace orvostat
