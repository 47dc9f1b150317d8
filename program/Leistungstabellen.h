// The tables of the service statistics: practice and treaters, hundred cases, insurers.
//
// Shares are shown in percent with two places. Sentences below say why they do not add up to 100 where they do not,
// what was left out, and which sums stand at the limit of their 32 bits.
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

// Cases are counted quarter by quarter; within a quarter the order of the run stays.
void OrdneNachQuartalen(std::vector<CBehHitLine> & vHits);
// The norms of the selected period, or where it is open of the hits' days.
void LadeNormen(CPx100F & px, const CStatAccu & accu);

// What a payer and a statistic kind are called: "Kasse", "a Konservierend/chirurgisch".
[[nodiscard]] CString Zahlername(char c);
[[nodiscard]] CString Artname(CStatAccu & accu, const CLSLstGrp & grp);
// A treater's number and name; of one who is not known the number.
[[nodiscard]] CString Behandlername(CStatAccu & accu, const CString & sNr);
// The days of a treater; none, -1, for one whose number is no number, since 0 is the practice's.
[[nodiscard]] int Behandlertage(const CLSSum & sum, const CString & sNr);
// The line lies more than iGrenze percent above its norm.
[[nodiscard]] bool UeberGrenze(const CLSLst & lst, int iGrenze);

// The practice's sums of a payer by bucket.
struct SZahlersummen {
    char cZahler;
    const CLSLst &std, &k, &lm, &abz, &ges, &netto;
};
// Of the three payers, in the order of their letters. They refer to px.
[[nodiscard]] std::array<SZahlersummen, 3> Zahlersummen(const CLSPxLstGrp & px);

// Why the statistic of sPraxis leaves a hit out, in the order of CLSSum::TestBehSelOk; null for one that it has.
[[nodiscard]] const char * Auslassgrund(const CLSSum & sum, const CBehHitLine & hit, const CString & sPraxis);

// Puts the ratios of the select pool into CKasArt100F::s_vVerhLst. An entry without "/" is none; SchreibeHundert says
// so.
void LadeVerhaeltnisse();

} // namespace orvostat
