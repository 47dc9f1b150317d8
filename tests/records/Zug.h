// Cases that move a row into a record: the row is the first one of its table.
#pragma once

#include "records/Praxisfixture.h"
#include "support/Hitfelder.h"

namespace orvostat {

template <class TFelder> TFelder FelderVon(const CTabelle<TFelder> *);

// The first row of the table; with VOLL its empty columns have their names as texts.
template <class T> T Zeile(CFall & fall) {
    T zeile(dbDatabase);
    zeile.SetKey(1);
    (void)zeile.GetAll();
    using TFelder = decltype(FelderVon(&zeile));
    if (fall.Ein<bool>("VOLL")) Fuelle<TFelder>(zeile);
    return zeile;
}

// Moves the row into a record that has the fields which the case names; with MARKEN a hit has a mark in all others.
template <class TSatz, class TZeile, class F> auto Zug(F f) {
    return [f](CPraxisTest &, CFall & fall) {
        TSatz satz;
        if constexpr (std::same_as<TSatz, CBehHitLine>)
            if (fall.Ein<bool>("MARKEN")) satz = MarkierterHit(fall.Ein<bool>("FLAGS"));
        const TSatz vorher = fall.Fuelle(satz);
        TZeile zeile = Zeile<TZeile>(fall);
        f(fall, satz, zeile);
        fall.Geaendert(vorher, satz);
    };
}

// The same for a move that takes the row and nothing else.
template <class TSatz, class TArg> auto Zug(void (TSatz::*pMove)(TArg)) {
    using TZeile = std::remove_const_t<std::remove_pointer_t<std::remove_reference_t<TArg>>>;
    return Zug<TSatz, TZeile>([pMove](CFall &, TSatz & satz, TZeile & zeile) {
        if constexpr (std::is_pointer_v<TArg>)
            (satz.*pMove)(&zeile);
        else
            (satz.*pMove)(zeile);
    });
}

} // namespace orvostat
