// Where an amount comes from, in plain German.
#pragma once

#include "orvostatbs/accu/Bewertungsspur.h"
#include "orvostatbs/records/BehHitLine.h"

#include <string>
#include <vector>

namespace orvostat {

// One line for each step that the valuation has noted, in its order, as UTF-8.
[[nodiscard]] std::vector<std::string> Erlaeutere(const CBewertungsspur & spur);
[[nodiscard]] std::string Erlaeutere(const SBewertungsschritt & schritt);

// Numbers of the engine as a person writes them: hundredths and ten-thousandths with a comma, no trailing zeros.
[[nodiscard]] std::string AusHundertsteln(int iWert);
[[nodiscard]] std::string AusZehntausendsteln(int iWert);
// "12,34 EUR"; more places where the amount has them.
[[nodiscard]] std::string AlsGeld(const CWBetragBasis & betrag);

} // namespace orvostat
