#include "orvostatbs/records/BehErrors.h"

#include "orvostatbs/records/BehHitLine.h"

#include <tuple>

namespace orvostat {

void CBehErrors::MoveError(const CBehHitLine & hit, int iFehler) {
    PATNR = hit.PATNR;
    DATUM = hit.DATUM;
    LSTIN = hit.LSTIN;
    KASKUERZEL = hit.KASKUERZEL;
    MFRDIG = hit.MFRDIG;
    WSO = hit.WSO;
    WSO_ERG = hit.WSO_ERG;
    m_iFehler = iFehler;
    SITZUNG = hit.SITZUNG;
    LFDBEHEINTRAG = hit.LFDBEHEINTRAG;
    GOART = hit.GOART;
}

bool CBehErrors::operator==(const CBehErrors & fehler) const {
    const auto Gleichheit = [](const CBehErrors & f) {
        return std::tie(f.PATNR, f.DATUM, f.LSTIN, f.KASKUERZEL, f.MFRDIG, f.WSO, f.m_iFehler);
    };
    return Gleichheit(*this) == Gleichheit(fehler);
}

} // namespace orvostat
