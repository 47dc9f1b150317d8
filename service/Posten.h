// What a hit adds to the sums, and to which of them: the rules of payer, bucket and deducted set, once for
// treaters and practice.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/service/LSLstGrp.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace orvostat {

// ---- 32-bit sums

[[nodiscard]] inline std::int32_t Begrenzt(std::int64_t iWert) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(iWert, std::numeric_limits<std::int32_t>::min(),
                                                              std::numeric_limits<std::int32_t>::max()));
}
inline void Plus(std::int32_t & iSumme, std::int64_t iWert) { iSumme = Begrenzt(iSumme + iWert); }

// ---- The keys of a hit

inline constexpr CBuchstaben IstTopfArt{"klm"};        // statistic kinds with a bucket of their own
inline constexpr CBuchstaben IstPrivatAbzSubArt{"oq"}; // deducted sub-kinds of the dentists' private schedule
inline constexpr CBuchstaben IstNurStueckMerkmal{"on"}; // billing marks of hits without money and points

// "0" insurer, "1" private patient, "2" any other.
[[nodiscard]] inline char Zahler(const CBehHitLine & hit) {
    return hit.KASSENABR ? '0' : hit.ISPRIVATPATIENT ? '1' : '2';
}

// The class of a kind of fee schedule; of a laboratory kind the kind itself.
[[nodiscard]] inline char GoTyp(char cGoArt) {
    return IstPunktArt(cGoArt) ? 'K' : IstPrivatArt(cGoArt) ? 'P' : cGoArt;
}

// Required, odd as it looks: "K" and "P" are one class in every comparison.
[[nodiscard]] inline bool IstGleicherGoTyp(char cA, char cB) {
    return cA == cB || ((cA == 'K' || cA == 'P') && (cB == 'K' || cB == 'P'));
}

[[nodiscard]] inline bool IstAbzug(char cGoArt, char cGoSubArt) {
    return (IstKassenArt(cGoArt) && cGoSubArt == '6') || (IstGozArt(cGoArt) && IstPrivatAbzSubArt(cGoSubArt));
}

enum ETopf : int { TOPF_STD, TOPF_K, TOPF_LM, TOPF_ABZ };

// A deducted service of a plain statistic kind stays in Std: the deducted set is asked for last.
[[nodiscard]] inline ETopf TopfVon(const CBehHitLine & hit) {
    if (!IstLaborArt(hit.GOART) && !IstTopfArt(hit.GOSTATISTIKART)) return TOPF_STD;
    if (hit.GOSTATISTIKART == 'k') return TOPF_K;
    return IstAbzug(hit.GOART, hit.GOSUBART) ? TOPF_ABZ : TOPF_LM;
}

// The bucket whose sum is the base of a group's shares. A group of deducted services has LM as well, although
// its hits are in none: its shares and the others' then make more than the whole. That is how it is to be.
[[nodiscard]] inline ETopf TopfVon(const CLSLstGrp & grp) {
    if (grp.m_cGoTyp != 'T' && !IstTopfArt(grp.m_cStatArt)) return TOPF_STD;
    return grp.m_cStatArt == 'k' ? TOPF_K : TOPF_LM;
}

// Where among the sums of a treater or the practice a hit belongs.
struct SSummenplatz {
    int iZahler;
    ETopf eTopf;
    bool bAbzug;

    // A number for each place.
    static constexpr std::size_t ANZAHL = 3 * 4 * 2;
    [[nodiscard]] std::size_t Nummer() const {
        return static_cast<std::size_t>((iZahler * 4 + eTopf) * 2 + (bAbzug ? 1 : 0));
    }
    [[nodiscard]] static SSummenplatz Aus(std::size_t iNummer) {
        const int i = static_cast<int>(iNummer);
        return {i / 8, static_cast<ETopf>(i / 2 % 4), i % 2 != 0};
    }
};
[[nodiscard]] inline SSummenplatz PlatzVon(const CBehHitLine & hit) {
    return {Zahler(hit) - '0', TopfVon(hit), IstAbzug(hit.GOART, hit.GOSUBART)};
}

// The hit belongs into the group.
[[nodiscard]] inline bool IstGruppeVon(const CLSLstGrp & grp, const CBehHitLine & hit) {
    if (grp.m_cZahler != Zahler(hit)) return false;
    if (grp.m_cGoTyp == 'T' && IstLaborArt(hit.GOART) && hit.GOART == grp.m_cStatArt) return true;
    return IstGleicherGoTyp(GoTyp(hit.GOART), grp.m_cGoTyp) && grp.m_cStatArt == hit.GOSTATISTIKART;
}

// ---- What is added

// What a hit adds, worked out once for the many sums that take it; or what many hits of one currency add
// together.
struct SPosten {
    const CBehHitLine * pHit = nullptr; // the last hit: it names the sum
    std::int64_t iAnzahl = 0;
    std::int64_t iPunkte = 0;
    std::int64_t iGrund4 = 0;
    std::int64_t iGrund5 = 0;
    CDBetrag betrag;
    bool bGemischt = false; // the money of the hit has two currencies, and the amount is not worked out
    bool bViele = false;

    SPosten & operator+=(const SPosten & posten) {
        pHit = std::max(pHit, posten.pHit, std::less<>()); // all of one vector
        iAnzahl += posten.iAnzahl;
        iPunkte += posten.iPunkte;
        iGrund4 += posten.iGrund4;
        iGrund5 += posten.iGrund5;
        betrag += posten.betrag;
        bViele = true;
        return *this;
    }
};

// Adds the hit's money with tax and surcharge, each part in the currency of the sum.
inline void AddiereBetrag(CDBetrag & summe, const CBehHitLine & hit) {
    if (IstNurStueckMerkmal(hit.ABRMERKMAL)) return;
    summe += hit.BETRAG;
    if (hit.MWSTSATZ != 0) summe += hit.BETRAG * static_cast<double>(hit.MWSTSATZ) * 0.01;
    summe += hit.ZUSCHLAG;
}

[[nodiscard]] inline SPosten PostenVon(const CBehHitLine & hit) {
    SPosten posten;
    posten.pHit = &hit;
    posten.iAnzahl = hit.ANZAHL;
    if (hit.DTAGRUND == '4') posten.iGrund4 = hit.ANZAHL;
    if (hit.DTAGRUND == '5') posten.iGrund5 = hit.ANZAHL;
    if (IstNurStueckMerkmal(hit.ABRMERKMAL)) return posten;
    posten.iPunkte = std::int64_t{hit.PUNKTE} * hit.ANZAHL / 100;
    posten.bGemischt = !hit.BETRAG.IsEmpty() && !hit.ZUSCHLAG.IsEmpty() &&
                       hit.BETRAG.GetWaehrung() != hit.ZUSCHLAG.GetWaehrung();
    if (!posten.bGemischt) AddiereBetrag(posten.betrag, hit);
    return posten;
}

// The amount worked out may be added to a sum without a conversion.
[[nodiscard]] inline bool IstWaehrungVon(const CDBetrag & summe, const SPosten & posten) {
    if (posten.bGemischt) return false;
    return summe.GetWaehrung() == 0 || posten.betrag.IsEmpty() ||
           summe.GetWaehrung() == posten.betrag.GetWaehrung();
}

inline void Addiere(CLSLst & lst, const SPosten & posten) {
    const CBehHitLine & hit = *posten.pHit;
    lst.LSTNR = hit.LSTNR;
    lst.LSTKUERZEL = hit.LSTKUERZEL;
    lst.EINHEIT = hit.EINHEIT;
    Plus(lst.ANZAHL, posten.iAnzahl);
    if (posten.bViele || IstWaehrungVon(lst.BETRAG, posten))
        lst.BETRAG += posten.betrag;
    else
        AddiereBetrag(lst.BETRAG, hit);
    Plus(lst.PUNKTE, posten.iPunkte);
    if (posten.iGrund4 != 0) Plus(lst.m_iAnzGrund4, posten.iGrund4);
    if (posten.iGrund5 != 0) Plus(lst.m_iAnzGrund5, posten.iGrund5);
}

// ---- The sums of a treater and of the practice

template <class T> struct SZahlersummen {
    CLSLst T::*pGes;
    CLSLst T::*pNetto;
    CLSLst T::*apTopf[4]; // by ETopf
};
template <class T>
inline constexpr SZahlersummen<T> ZAHLERSUMMEN[] = {
    {&T::m_KasseGes, &T::m_KasseNetto, {&T::m_KasseStd, &T::m_KasseK, &T::m_KasseLM, &T::m_KasseAbz}},
    {&T::m_PrivatGes, &T::m_PrivatNetto, {&T::m_PrivatStd, &T::m_PrivatK, &T::m_PrivatLM, &T::m_PrivatAbz}},
    {&T::m_SonstGes, &T::m_SonstNetto, {&T::m_SonstStd, &T::m_SonstK, &T::m_SonstLM, &T::m_SonstAbz}}};

// The sums of all payers: those of the buckets by ETopf, and behind them the whole and the net.
constexpr int BASIS_GESAMT = 3;
constexpr int BASIS_NETTO = 4;
template <class T>
inline constexpr CLSLst T::*BASEN[] = {&T::m_SumStd, &T::m_SumK, &T::m_SumLM, &T::m_Gesamt, &T::m_SumNetto};

template <class T> void Verteile(T & rec, const SSummenplatz & platz, const SPosten & posten) {
    const SZahlersummen<T> & zahler = ZAHLERSUMMEN<T>[platz.iZahler];
    Addiere(rec.m_Gesamt, posten);
    Addiere(rec.*zahler.pGes, posten);
    if (!platz.bAbzug) {
        Addiere(rec.*zahler.pNetto, posten);
        Addiere(rec.m_SumNetto, posten);
    }
    if (platz.eTopf != TOPF_ABZ) Addiere(rec.*BASEN<T>[platz.eTopf], posten);
    Addiere(rec.*zahler.apTopf[platz.eTopf], posten);
}

// Calls f with each sum that has shares and the number of its base in BASEN. The Abz sums have none.
template <class T, class F> void JedeZahlersumme(T & rec, F f) {
    for (const SZahlersummen<T> & zahler : ZAHLERSUMMEN<T>) {
        f(rec.*zahler.pGes, BASIS_GESAMT);
        for (const ETopf eTopf : {TOPF_STD, TOPF_K, TOPF_LM})
            f(rec.*zahler.apTopf[eTopf], static_cast<int>(eTopf));
        f(rec.*zahler.pNetto, BASIS_NETTO);
    }
}

} // namespace orvostat
