#include "Posten.h"

#include "orvostatbs/service/LSLstGrp.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

namespace orvostat {

namespace {

// iZahl * iZaehler / iNenner to the nearest, halves away from zero. The platform's MulDiv is not enough: it
// gives -1 for what 32 bits do not hold.
std::int64_t Verhaeltnis(std::int64_t iZahl, std::int64_t iZaehler, std::int64_t iNenner) {
    const std::int64_t iProdukt = iZahl * iZaehler;
    const std::int64_t iBetragNenner = std::abs(iNenner);
    const std::int64_t iBetrag = (std::abs(iProdukt) + iBetragNenner / 2) / iBetragNenner;
    return (iProdukt < 0) == (iNenner < 0) ? iBetrag : -iBetrag;
}

constexpr std::int64_t ALLES = 10000;  // hundredths of a percent
__extension__ typedef __int128 Int128; // an amount times ALLES may be beyond what amounts hold

// The share of an amount, its half added and the rest cut off towards zero; none of a zero or negative one, and none in
// nothing.
std::optional<std::int32_t> Anteil(const CLSLst & lst, const CLSLst & basis) {
    if (!lst.BETRAG.IsPos() || basis.BETRAG.IsZero()) return std::nullopt;
    CDBetrag teiler = basis.BETRAG;
    if (lst.BETRAG.GetWaehrung() != 0) teiler.ToW(lst.BETRAG.GetWaehrung());
    const Int128 iTeiler = teiler.GetEinheiten();
    const Int128 iAnteil = (2 * Int128{lst.BETRAG.GetEinheiten()} * ALLES + iTeiler) / (2 * iTeiler);
    return static_cast<std::int32_t>(std::clamp<Int128>(iAnteil, std::numeric_limits<std::int32_t>::min(),
                                                        std::numeric_limits<std::int32_t>::max()));
}

} // namespace

void CLSLst::MoveLst(const CBehHitLine & hit) { Addiere(*this, PostenVon(hit)); }

void CLSLst::MoveLst(const CLSLst & lst) {
    LSTNR = lst.LSTNR;
    LSTKUERZEL = lst.LSTKUERZEL;
    EINHEIT = lst.EINHEIT;
    Plus(ANZAHL, lst.ANZAHL);
    BETRAG += lst.BETRAG;
    Plus(PUNKTE, lst.PUNKTE);
}

void CLSLst::SumAnteilGesamtBetrag(const CLSLst & basis) {
    if (const auto iAnteil = Anteil(*this, basis)) ANTEILBEH = ANTEILKAS = *iAnteil;
}

void CLSLst::SumAnteilPxBetrag(const CLSLst & basis) {
    if (const auto iAnteil = Anteil(*this, basis)) ANTEILPRAXIS = *iAnteil;
}

void CLSLst::SumAnteilAnz(const CLSLst & gesamt) {
    if (gesamt.ANZAHL != 0) m_iAnteilAnz = Begrenzt(Verhaeltnis(10000, ANZAHL, gesamt.ANZAHL));
}

void CLSLst::SumAnteilAnz100Fall(int iFaelle) {
    if (iFaelle != 0) m_iAnzJe100Fall = Begrenzt(Verhaeltnis(100, ANZAHL, iFaelle));
}

void CLSLst::SumAnzDiff(int iFaelle) {
    m_iAnzDiff = Begrenzt(Verhaeltnis(1, ANZAHL - Verhaeltnis(iFaelle, m_iF100Soll, 100), 100));
}

void CLSLst::Sum100FallAbweichung(int iFaelle) {
    const std::int64_t iSoll = std::int64_t{m_iF100Soll} * iFaelle;
    const std::int64_t iIst = iSoll == 0 ? 0 : Verhaeltnis(1000000, ANZAHL, iSoll);
    // Nothing rendered reads as on the norm, not as 100 % below it: screens show no deviation then.
    m_iF100Abweichung = iIst == 0 ? 0 : Begrenzt(iIst - 10000);
}

} // namespace orvostat
