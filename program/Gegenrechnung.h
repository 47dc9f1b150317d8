// A second opinion on a run: the amounts of its hits, computed by SQL inside SQLite, without the engine.
//
// SQL values what needs nothing but rows of the database: private services (simple rate or points times factor, the
// regional factor), insurer services without a plan (points times point value), and stored amounts. It leaves out
// what depends on the run itself: services of a plan, distances, group services, deductions of a treater, substitutes,
// and everything before the euro.
#pragma once

#include "orvostatbs/records/BehHitLine.h"

#include <cstdint>
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

struct SGegenrechnung {
    bool bGerechnet = false; // false: sFehler says why
    std::string sFehler;     // UTF-8
    std::int64_t iGeprueft = 0;
    std::int64_t iAusgelassen = 0;
    std::vector<SGegensumme> vSummen; // by treater and service
};

// Values the hits of a run over the practice file sDatei (a path of the platform) and compares.
[[nodiscard]] SGegenrechnung RechneGegen(const std::string & sDatei, const std::vector<CBehHitLine> & vHits);

} // namespace orvostat
