// The fee schedules, point values and lists of choices of the sample practice.
#pragma once

#include "MusterDaten.h"
#include "MusterSchreiber.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPraxis.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace orvostat {

// A fee row, and what the treatments of the sample need of it.
struct SGebuehr {
    CTGO_Fields zeile;
    int iPunkte = 0; // as stored
    int iCent = 0;   // the price of a service without points, for rows of the laboratory and of material
};

// The fee schedules: "k" and "g" insurer services, "q" private ones (sub-kind "1" with points), "p" physicians',
// "b", "e", "f", "h" those of other payers, "a" and "u" material and accident fees, digits the laboratory's.
class CMusterKatalog {
public:
    CMusterKatalog();
    // The row of a service that the catalogue has; std::out_of_range otherwise.
    [[nodiscard]] const SGebuehr & Finde(char cGoArt, std::string_view sLstUtf8) const;
    // Fee rows, changed points, checks.
    void Schreibe(CMusterSchreiber & schreiber) const;

private:
    void Fuege(char cGoArt, std::string_view sLst, SGebuehr gebuehr);
    void FuegeFiktive(char cGoArt, const CMusterDaten::CZeile & bema);

    std::map<std::pair<char, std::string>, SGebuehr> m_map;
};

// Norms of the hundred-case statistic, the same for both kinds of insurer services.
void SchreibeNormen(CMusterSchreiber & schreiber);

// Point values and their groups.
void SchreibePunktwerte(CMusterSchreiber & schreiber);

// The select pool's lists of choices.
void SchreibeSelectPool(CMusterSchreiber & schreiber);

} // namespace orvostat
