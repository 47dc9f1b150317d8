// A problem that was found while a hit was built: what was wrong, and which entry it was. The hit itself stays in the
// statistic; the list of distinct errors ends as lines of its own in the statistic file.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>

namespace orvostat {

class CBehHitLine;

// The codes of m_iFehler.
enum EBehFehler : std::int32_t {
    FEHLER_PUNKTWERT = 5,   // no point value for a service of an insurer
    FEHLER_GEBUEHR = 6,     // no fee row for the service
    FEHLER_PLAN_FEHLT = 8,  // the service's plan does not exist
    FEHLER_OHNE_PLANNR = 9, // the service needs a plan and has no plan number
};

// What a code says, as a German phrase; "unbekannt" for any other. The missing plan is named where its number is given.
[[nodiscard]] CString BehFehlertext(int iFehler, const CString & sPlanNr = CString());

class CBehErrors {
public:
    // Every initial value is the value after Clear. The fields mean what they mean in the hit.
    CString PATNR;
    CString DATUM;
    CString LSTIN;
    CString KASKUERZEL;
    CString MFRDIG;
    CString WSO;
    CString WSO_ERG;
    std::int32_t m_iFehler = 0;
    char SITZUNG = ' ';
    CString LFDBEHEINTRAG;
    char GOART = 0;

    void Clear() { *this = CBehErrors(); }
    // Takes the hit's entry and the code.
    void MoveError(const CBehHitLine & hit, int iFehler);
    // The same error: patient, date, service as entered, insurer, state of membership, region mark and code. So the
    // same service twice on one day is one error, whatever its visit and running number.
    [[nodiscard]] bool operator==(const CBehErrors & fehler) const;
};

} // namespace orvostat
