#include "orvostatbs/records/BehErrors.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/BehHitLine.h"

#include <tuple>

namespace orvostat {

CString BehFehlertext(int iFehler, const CString & sPlanNr) {
    switch (iFehler) {
    case FEHLER_PUNKTWERT:
        return "kein Punktwert für eine Kassenleistung"_t;
    case FEHLER_GEBUEHR:
        return "keine Gebührenzeile zur Leistung"_t;
    case FEHLER_PLAN_FEHLT:
        return "der Plan "_t + Oder(Trim(sPlanNr), "der Leistung"_t) + " fehlt";
    case FEHLER_OHNE_PLANNR:
        return "Leistung ohne Plannummer"_t;
    default:
        return "unbekannt"_t;
    }
}

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
