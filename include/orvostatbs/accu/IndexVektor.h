// A vector with an index beside it.
//
// The tables of a run are public vectors that callers read and change, and some of them are searched for every hit.
// This vector lets a search keep an index of it without ever answering from an outdated one: whatever could change an
// element or the order goes through a non-const member, and those raise Stand. A reference that was taken before a
// search must not be written through after it.
#pragma once

#include "orvostatbs/host/CString.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvostat {

template <class T> class CIndexVektor {
public:
    using value_type = T;
    using iterator = typename std::vector<T>::iterator;
    using const_iterator = typename std::vector<T>::const_iterator;

    CIndexVektor() = default;
    CIndexVektor(std::initializer_list<T> liste) : m_v(liste) {}
    CIndexVektor(std::vector<T> v) : m_v(std::move(v)) {} // NOLINT: a vector is one
    // A copy keeps the Stand of its model, so that an index copied along with it stays good.
    CIndexVektor(const CIndexVektor &) = default;
    CIndexVektor(CIndexVektor && v) noexcept : m_v(std::move(v.m_v)), m_iStand(v.m_iStand++) {}
    ~CIndexVektor() = default;
    // An index of either side is void.
    CIndexVektor & operator=(CIndexVektor v) noexcept {
        m_v.swap(v.m_v);
        m_iStand = std::max(m_iStand, v.m_iStand) + 1;
        return *this;
    }

    // Reading.
    [[nodiscard]] std::size_t size() const { return m_v.size(); }
    [[nodiscard]] bool empty() const { return m_v.empty(); }
    [[nodiscard]] const T & operator[](std::size_t i) const { return m_v[i]; }
    [[nodiscard]] const T & at(std::size_t i) const { return m_v.at(i); }
    [[nodiscard]] const T & front() const { return m_v.front(); }
    [[nodiscard]] const T & back() const { return m_v.back(); }
    [[nodiscard]] const_iterator begin() const { return m_v.begin(); }
    [[nodiscard]] const_iterator end() const { return m_v.end(); }
    [[nodiscard]] auto rbegin() const { return m_v.rbegin(); }
    [[nodiscard]] auto rend() const { return m_v.rend(); }
    [[nodiscard]] const std::vector<T> & Lesend() const { return m_v; }
    operator const std::vector<T> &() const { return m_v; } // NOLINT: a vector is one

    // Changing: from here on an index of the elements before is void.
    [[nodiscard]] T & operator[](std::size_t i) { return Aendernd()[i]; }
    [[nodiscard]] T & at(std::size_t i) { return Aendernd().at(i); }
    [[nodiscard]] T & front() { return Aendernd().front(); }
    [[nodiscard]] T & back() { return Aendernd().back(); }
    [[nodiscard]] iterator begin() { return Aendernd().begin(); }
    [[nodiscard]] iterator end() { return Aendernd().end(); }
    void clear() { Aendernd().clear(); }
    void pop_back() { Aendernd().pop_back(); }
    template <class... A> void assign(A &&... args) { Aendernd().assign(std::forward<A>(args)...); }
    void swap(CIndexVektor & v) noexcept { Aendernd().swap(v.Aendernd()); }
    iterator erase(const_iterator it) { return Aendernd().erase(it); }
    iterator erase(const_iterator von, const_iterator bis) { return Aendernd().erase(von, bis); }
    iterator insert(const_iterator it, const T & wert) { return Aendernd().insert(it, wert); }
    void resize(std::size_t n) { Aendernd().resize(n); }
    // The vector itself, for anything else.
    [[nodiscard]] std::vector<T> & Aendernd() {
        ++m_iStand;
        return m_v;
    }

    // Adding at the end leaves an index of the elements before as it is.
    void push_back(const T & wert) { m_v.push_back(wert); }
    void push_back(T && wert) { m_v.push_back(std::move(wert)); }
    template <class... A> T & emplace_back(A &&... args) {
        return m_v.emplace_back(std::forward<A>(args)...);
    }
    void reserve(std::size_t n) { m_v.reserve(n); }

    // Changes whenever an element that is there may have changed.
    [[nodiscard]] std::uint64_t Stand() const { return m_iStand; }

private:
    std::vector<T> m_v;
    std::uint64_t m_iStand = 0;
};

// The first position of each key in such a vector. FSCHLUESSEL gives an element's key.
template <class T, class K, class FHash = std::hash<K>> class CErstposition {
public:
    // The position of the first element with this key, -1 for none.
    template <class F> int Finde(const CIndexVektor<T> & v, const K & schluessel, F fSchluessel) {
        if (m_iStand != v.Stand() || m_iBis > v.size()) {
            m_map.clear();
            m_iBis = 0;
            m_iStand = v.Stand();
        }
        for (; m_iBis < v.size(); ++m_iBis)
            m_map.try_emplace(fSchluessel(v[m_iBis]), static_cast<int>(m_iBis));
        const auto it = m_map.find(schluessel);
        return it == m_map.end() ? -1 : it->second;
    }

private:
    std::uint64_t m_iStand = ~0ULL;
    std::size_t m_iBis = 0; // elements before this position are in the map
    std::unordered_map<K, int, FHash> m_map;
};

// All positions of each text in such a vector, upper and lower case alike. FELD is the elements' text. A spelling that
// has been asked for is not folded again, and a caller who has only read costs a comparison but no new index.
template <class T, CString T::*FELD> class CTextpositionen {
public:
    // The positions in ascending order, none for an unknown text; valid until the next call.
    [[nodiscard]] std::span<const int> Finde(const CIndexVektor<T> & v, const CString & sText) {
        Aktualisiere(v);
        auto it = m_mapGruppe.find(sText);
        if (it == m_mapGruppe.end()) {
            const auto itKlein = m_mapGruppe.find(CString(sText).MakeLower());
            if (itKlein == m_mapGruppe.end()) return {};
            it = m_mapGruppe.emplace(sText, itKlein->second).first;
        }
        return m_vGruppen[it->second];
    }

private:
    void Aktualisiere(const CIndexVektor<T> & v) {
        if (m_iStand != v.Stand()) {
            if (!IstAnfang(v)) *this = CTextpositionen();
            m_iStand = v.Stand();
        }
        while (m_vTexte.size() < v.size())
            Fuege(v[m_vTexte.size()].*FELD);
    }
    // The texts in the index are those at the start of the vector.
    [[nodiscard]] bool IstAnfang(const CIndexVektor<T> & v) const {
        return m_vTexte.size() <= v.size() &&
               std::equal(m_vTexte.begin(), m_vTexte.end(), v.begin(),
                          [](const CString & s, const T & element) { return s == element.*FELD; });
    }
    void Fuege(const CString & sText) {
        const auto [it, bNeu] = m_mapGruppe.try_emplace(CString(sText).MakeLower(), m_vGruppen.size());
        if (bNeu) m_vGruppen.emplace_back();
        m_vGruppen[it->second].push_back(static_cast<int>(m_vTexte.size()));
        m_vTexte.push_back(sText);
    }

    std::uint64_t m_iStand = ~0ULL;
    std::vector<CString> m_vTexte; // of the elements in the index, as they are spelled
    std::vector<std::vector<int>> m_vGruppen;
    std::unordered_map<CString, std::size_t>
        m_mapGruppe; // by lower-case text and by every other spelling met
};

} // namespace orvostat
