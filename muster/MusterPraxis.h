// Owners, sites, treaters and settings of the sample practice.
#pragma once

#include "MusterSchreiber.h"

#include <span>

namespace orvostat {

// What a treater does, and how much of it.
struct SMusterBehandler {
    const char * pNr;      // four places
    const char * pMdKasse; // owners for insurer and private billing
    const char * pMdPrivat;
    const char * pPraxisId;
    int iGewicht; // his share of the patients
    bool bKfo;    // treats orthodontics only
};
[[nodiscard]] std::span<const SMusterBehandler> MusterBehandler();

// The first address number of a patient; those below belong to the practice.
inline constexpr int MUSTER_ERSTE_PATIENTENADRESSE = 101;

// Sites, owners, persons with addresses, treaters, the parameter pool and text blocks.
void SchreibePraxis(CMusterSchreiber & schreiber);

} // namespace orvostat
