// A second opinion on the service statistics: every sum, share, day and case, computed by SQL over the valued hits,
// without the engine.
//
// The hits stand in a table of SQLite in memory. Each figure has a name ("B|   1|0|KP|a|01|BETRAG"); what the engine
// has and what SQL forms from the hits are compared name by name, a figure that one side lacks counting as 0. Where the
// hits have amounts in several currencies, sums and shares of money are not recomputed, but counted.
#pragma once

#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/service/LSSum.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvostat {

struct SSummenabweichung {
    std::string sName; // of the figure
    std::int64_t iEngine = 0;
    std::int64_t iSql = 0;
};

struct SSummenpruefung {
    bool bGerechnet = false; // false: sFehler says why
    std::string sFehler;     // UTF-8
    std::int64_t iFiguren = 0;
    std::vector<SSummenabweichung> vAbweichungen; // the first hundred of iAbweichungen
    std::int64_t iAbweichungen = 0;
    std::int64_t iAusgelassen = 0; // figures of money in several currencies
};

// What a hundred-case run was asked for.
struct SHundertauftrag {
    bool bFesteFallzahl = false;
    int iFallzahl = 0;
    bool bMitGruppe9 = false;
    bool bGruppe9Extra = false;
    bool bZweiterSatz = false;
};

// Each over the hits that the statistic has had, sorted by quarter, and the finished statistic of practice sPraxis,
// empty for all.
[[nodiscard]] SSummenpruefung PruefeLeistungen(const std::vector<CBehHitLine> & vHits,
                                               const CString & sPraxis, const CLSSum & sum);
// Hits and sums of AddKasData; m_vKas, m_KasSum and m_Praxis are compared.
[[nodiscard]] SSummenpruefung PruefeKassen(const std::vector<CBehHitLine> & vHits, const CString & sPraxis,
                                           const CLSSum & sum);
// The norms are read from the practice file sDatei once more.
[[nodiscard]] SSummenpruefung PruefeHundert(const std::vector<CBehHitLine> & vHits, const CString & sPraxis,
                                            const CLSSum & sum, const SHundertauftrag & auftrag,
                                            const std::string & sDatei);

} // namespace orvostat
