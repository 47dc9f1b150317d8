// How a table class is described: once.
//
// ORVO_SPALTEN lists the columns of the table that stands below it, each with the kind of text it holds; the
// database's column is the word itself, the member the same word with "m_" before it. ORVO_TABELLE makes of the
// list the field class, the description that the stores work with, and nothing else is written down anywhere: the
// schema of the SQLite store, reading, writing, copying and checking all derive from it.
//
//   #include "orvostatbs/host/detail/Tabellenmakros.def"    // ORVO_TABELLE is there
//   #define ORVO_SPALTEN(S) S(PATNR, Text) S(DATUM, Datum)
//   ORVO_TABELLE(CTBeispiel, "BEISPIEL", Genau, "PATNR DATUM", "DATUM")
//   #undef ORVO_SPALTEN
//   class CTBeispiel : public CTabelle<CTBeispiel_Fields> { ... };
//   #include "orvostatbs/host/detail/Tabellenmakros.def"    // and is gone again
//
// A long list that is read in several places has a file of its own (Selektion.def, Schalter.def); a table's columns are
// a line or two, read by ORVO_TABELLE alone, and stand above their class.
//
// The texts behind the comparison are the keys, key 1 first, each its columns in order.
#pragma once

#include "orvostatbs/host/RSet.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvostat {

// What ORVO_TABELLE specialises for a field class: the column pointers and the description.
template <class TFelder> struct SBeschreibung;

namespace detail {

// The key of a text of column names; an unknown name does not compile.
template <std::size_t N>
constexpr SSchluessel MakeSchluessel(const SSpalteInfo (&aSpalten)[N], std::string_view s) {
    SSchluessel schluessel{};
    while (!s.empty()) {
        const std::size_t iLaenge = s.find(' ') == std::string_view::npos ? s.size() : s.find(' ');
        std::size_t i = 0;
        while (i < N && std::string_view(aSpalten[i].pName) != s.substr(0, iLaenge))
            ++i;
        if (i == N) throw std::invalid_argument("no such column");
        schluessel.aiSpalten[schluessel.iAnzahl++] = static_cast<std::uint8_t>(i);
        s.remove_prefix(iLaenge == s.size() ? iLaenge : iLaenge + 1);
    }
    return schluessel;
}

template <std::size_t N, class... T>
consteval auto MakeSchluesselliste(const SSpalteInfo (&aSpalten)[N], const T &... vTexte) {
    static_assert(sizeof...(T) >= 1 && sizeof...(T) <= SCHLUESSEL_MAX);
    return std::array<SSchluessel, sizeof...(T)>{MakeSchluessel(aSpalten, vTexte)...};
}

} // namespace detail

// The common part of all table classes: a row of TFelder with the record layer's operations.
template <class TFelder> class CTabelle : public TFelder, public COrvoRSetEx {
public:
    explicit CTabelle(CMxDatabase & db = dbDatabaseRO) : COrvoRSetEx(db) { MerkeFelder(); }
    CTabelle(const CTabelle & t) : TFelder(t), COrvoRSetEx(t) { MerkeFelder(); }
    CTabelle & operator=(const CTabelle & t) {
        CMxRSet::operator=(t);
        return *this;
    }
    friend bool operator==(const CTabelle & a, const CTabelle & b) { return a.CMxRSet::operator==(b); }

    [[nodiscard]] const STabelle & Tabelle() const override { return SBeschreibung<TFelder>::tabelle; }

protected:
    [[nodiscard]] CFelder Felder() override { return m_apFelder; }

private:
    void MerkeFelder() {
        std::size_t i = 0;
        for (const auto pZeiger : SBeschreibung<TFelder>::aZeiger)
            m_apFelder[i++] = &(static_cast<TFelder *>(this)->*pZeiger);
    }
    std::array<CString *, std::size(SBeschreibung<TFelder>::aZeiger)> m_apFelder;
};

} // namespace orvostat
