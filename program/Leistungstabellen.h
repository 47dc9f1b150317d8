// The tables of the service statistics: practice and treaters, hundred cases, insurers.
//
// Shares are shown in percent with two places. Sentences below say why they do not add up to 100 where they do not, what
// was left out, and which sums stand at the limit of their 32 bits.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/service/LSSum.h"

#include <cstddef>

namespace orvostat {

struct SHundertauftrag;

// What the groups of a service statistic are shown by.
enum class ELeistungNach { Art, Zahler, Behandler, Leistung };

// Practice by payer and bucket, treaters with their days, and the groups. vHits are those that Analyse has had.
void SchreibeLeistungen(CDokument & dokument, CStatAccu & accu, const CLSSum & sum, const CString & sPraxis,
                        ELeistungNach eNach);

struct SHundertwahl {
    int iGrenze = 0;           // percent above the norm from which a line is marked, 0 for none
    bool bAlleZeilen = false;  // services without a norm as well
    bool bAlleSpalten = false; // the columns apart by own and foreign insurers as well
};
// The columns, their services against the norms, and the ratios of the select pool "verhaeltnis".
void SchreibeHundert(CDokument & dokument, const CLSSum & sum, const SHundertauftrag & auftrag,
                     const SHundertwahl & wahl);

struct SKassenwahl {
    CString sKuerzel; // only this insurer; empty for all
    bool bFremdGrp1 = true;
    bool bFremdGrp2 = true;
    std::size_t iAusgelassen = 0; // hits that the statistic has not had
};
// Each insurer with its values per case, and the selections of insurers.
void SchreibeKassen(CDokument & dokument, CLSSum & sum, const CString & sPraxis, const SKassenwahl & wahl);

// Puts the ratios of the select pool into CKasArt100F::s_vVerhLst. An entry without "/" is none; SchreibeHundert says so.
void LadeVerhaeltnisse();

} // namespace orvostat
