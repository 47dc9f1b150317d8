// A second opinion on a run: the amounts of its hits, computed by SQL inside SQLite, without the engine.
//
// SQL values what needs nothing but rows of the database: private services (simple rate or points times factor, the
// regional factor), insurer services without a plan (points times point value), and stored amounts. It leaves out
// the other fee schedules, services of a plan, distances, stored group services, deductions of a treater, substitutes,
// shares of the insurer, hits whose rows are missing or hold texts that it does not read, and everything before the
// euro.
#pragma once

#include "orvostatbs/records/BehHitLine.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orvostat {

// The sums of one treater and service, in hundred-millionths of a euro.
struct SGegensumme {
    CString sBehandler;
    CString sLeistung;
    char cGoArt = 0;
    std::int64_t iHits = 0;
    std::int64_t iLauf = 0;
    std::int64_t iSql = 0;
    // The sums differ by a cent or more.
    [[nodiscard]] bool Verschieden() const;
};

// What the run did that its hits do not show.
struct SGegenauftrag {
    bool bErsatz = false;         // replaced services by their substitutes
    bool bKassenanteil = false;   // took the insurer's share of denture and orthodontic amounts
    bool bNurGesetzliche = false; // knew statutory insurers only
};

struct SGegenrechnung {
    bool bGerechnet = false; // false: sFehler says why
    std::string sFehler;     // UTF-8
    std::int64_t iGeprueft = 0;
    // Hits that SQL does not value, by the German word for why.
    std::map<std::string, std::int64_t> mapAusgelassen;
    std::vector<SGegensumme> vSummen; // by treater and service
};

// Values the hits of a run over the practice file sDatei (a path of the platform) and compares.
[[nodiscard]] SGegenrechnung RechneGegen(const std::string & sDatei, const std::vector<CBehHitLine> & vHits,
                                         const SGegenauftrag & auftrag);

} // namespace orvostat
