// Writes rows of the sample practice into a store.
#pragma once

#include "orvostatbs/host/Tabelle.h"

#include <array>
#include <vector>

namespace orvostat {

// Writes until the store fails once; from then on it does nothing.
class CMusterSchreiber {
public:
    explicit CMusterSchreiber(CZeilenspeicher & speicher) : m_speicher(speicher) {}
    [[nodiscard]] bool Ok() const { return m_bOk; }
    // Something else could not be written to the store.
    void Gescheitert() { m_bOk = false; }

    template <class TFelder> void Schreibe(const TFelder & zeile) {
        using SB = SBeschreibung<TFelder>;
        std::array<const CString *, std::size(SB::aZeiger)> apWerte;
        std::size_t i = 0;
        for (const auto pZeiger : SB::aZeiger)
            apWerte[i++] = &(zeile.*pZeiger);
        m_bOk = m_bOk && m_speicher.Schreibe(SB::tabelle, apWerte) == ZEILE_OK;
    }
    template <class TFelder> void Schreibe(const std::vector<TFelder> & vZeilen) {
        for (const TFelder & zeile : vZeilen)
            Schreibe(zeile);
    }

private:
    CZeilenspeicher & m_speicher;
    bool m_bOk = true;
};

} // namespace orvostat
