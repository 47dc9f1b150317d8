// Tables that are searched for every hit, and the indexes that find in them.
//
// The tables of a run are public, callers read and change them like vectors, and an index must never answer from the
// past. So such a table is a CIndexVektor, which counts what may have changed it (Stand). An index keeps the keys that
// it knows. Before it answers it asks for Stand; only where that is another one it compares the keys with the table,
// which is cheap, and only where they differ it begins anew. New elements at the end it takes in as they come.
#pragma once

#include "orvostatbs/host/CString.h"

#include <algorithm>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvostat {

// A vector that notices what may change it. It does all that a std::vector does, and converts to one.
//
// Every non-const member that gives or changes an element raises Stand. One thing goes unnoticed, and nobody may do it:
// to change an element's key after a search through a reference, pointer or iterator taken before it. The fields that
// are not part of a key may change at any time.
//
// Who takes the vector itself as std::vector<T> & may keep it for good, and change the table through it when nobody is
// looking; from then on every search compares the keys. Lesend() gives the vector for reading and costs nothing.
template <class T> class CIndexVektor {
public:
    using CVektor = std::vector<T>;
    using value_type = T;
    using allocator_type = typename CVektor::allocator_type;
    using size_type = typename CVektor::size_type;
    using difference_type = typename CVektor::difference_type;
    using reference = T &;
    using const_reference = const T &;
    using pointer = T *;
    using const_pointer = const T *;
    using iterator = typename CVektor::iterator;
    using const_iterator = typename CVektor::const_iterator;
    using reverse_iterator = typename CVektor::reverse_iterator;
    using const_reverse_iterator = typename CVektor::const_reverse_iterator;

    CIndexVektor() = default;
    explicit CIndexVektor(size_type n) : m_v(n) {}
    CIndexVektor(size_type n, const T & wert) : m_v(n, wert) {}
    template <std::input_iterator I> CIndexVektor(I von, I bis) : m_v(von, bis) {}
    CIndexVektor(std::initializer_list<T> liste) : m_v(liste) {}
    CIndexVektor(CVektor v) noexcept : m_v(std::move(v)) {} // NOLINT: a vector is one
    // The new table keeps the Stand of its model, so that an index copied along with it stays good.
    CIndexVektor(const CIndexVektor & v) : m_v(v.m_v), m_iStand(v.Stand()) {}
    CIndexVektor(CIndexVektor && v) noexcept : m_v(std::move(v.m_v)), m_iStand(v.Stand()) { ++v.m_iStand; }
    ~CIndexVektor() = default;
    // An index of either side is void.
    CIndexVektor & operator=(CIndexVektor v) noexcept {
        m_v.swap(v.m_v);
        m_iStand = std::max(m_iStand, v.m_iStand) + 1;
        return *this;
    }

    // ---- reading

    [[nodiscard]] const CVektor & Lesend() const { return m_v; }
    operator const CVektor &() const { return m_v; } // NOLINT: a vector is one
    [[nodiscard]] size_type size() const { return m_v.size(); }
    [[nodiscard]] size_type max_size() const { return m_v.max_size(); }
    [[nodiscard]] size_type capacity() const { return m_v.capacity(); }
    [[nodiscard]] allocator_type get_allocator() const { return m_v.get_allocator(); }
    [[nodiscard]] bool empty() const { return m_v.empty(); }
    [[nodiscard]] const T & operator[](size_type i) const { return m_v[i]; }
    [[nodiscard]] const T & at(size_type i) const { return m_v.at(i); }
    [[nodiscard]] const T & front() const { return m_v.front(); }
    [[nodiscard]] const T & back() const { return m_v.back(); }
    [[nodiscard]] const T * data() const { return m_v.data(); }
    [[nodiscard]] const_iterator begin() const { return m_v.begin(); }
    [[nodiscard]] const_iterator end() const { return m_v.end(); }
    [[nodiscard]] const_iterator cbegin() const { return m_v.begin(); }
    [[nodiscard]] const_iterator cend() const { return m_v.end(); }
    [[nodiscard]] const_reverse_iterator rbegin() const { return m_v.rbegin(); }
    [[nodiscard]] const_reverse_iterator rend() const { return m_v.rend(); }
    [[nodiscard]] const_reverse_iterator crbegin() const { return m_v.rbegin(); }
    [[nodiscard]] const_reverse_iterator crend() const { return m_v.rend(); }
    [[nodiscard]] friend bool operator==(const CIndexVektor & a, const CIndexVektor & b) {
        return a.m_v == b.m_v;
    }
    [[nodiscard]] friend bool operator==(const CIndexVektor & a, const CVektor & v) { return a.m_v == v; }
    [[nodiscard]] friend auto operator<=>(const CIndexVektor & a,
                                          const CIndexVektor & b) requires std::three_way_comparable<T> {
        return a.m_v <=> b.m_v;
    }

    // ---- changing: from here on an index of the elements before has to look again

    operator CVektor &() { // NOLINT: a vector is one
        m_bVergeben = true;
        return m_v;
    }
    [[nodiscard]] T & operator[](size_type i) { return Aendernd()[i]; }
    [[nodiscard]] T & at(size_type i) { return Aendernd().at(i); }
    [[nodiscard]] T & front() { return Aendernd().front(); }
    [[nodiscard]] T & back() { return Aendernd().back(); }
    [[nodiscard]] T * data() { return Aendernd().data(); }
    [[nodiscard]] iterator begin() { return Aendernd().begin(); }
    [[nodiscard]] iterator end() { return Aendernd().end(); }
    [[nodiscard]] reverse_iterator rbegin() { return Aendernd().rbegin(); }
    [[nodiscard]] reverse_iterator rend() { return Aendernd().rend(); }
    void clear() { Aendernd().clear(); }
    void pop_back() { Aendernd().pop_back(); }
    void assign(size_type n, const T & wert) { Aendernd().assign(n, wert); }
    template <std::input_iterator I> void assign(I von, I bis) { Aendernd().assign(von, bis); }
    void assign(std::initializer_list<T> liste) { Aendernd().assign(liste); }
    void resize(size_type n) { Aendernd().resize(n); }
    void resize(size_type n, const T & wert) { Aendernd().resize(n, wert); }
    iterator erase(const_iterator it) { return Aendernd().erase(it); }
    iterator erase(const_iterator von, const_iterator bis) { return Aendernd().erase(von, bis); }
    iterator insert(const_iterator it, const T & wert) { return Aendernd().insert(it, wert); }
    iterator insert(const_iterator it, T && wert) { return Aendernd().insert(it, std::move(wert)); }
    iterator insert(const_iterator it, size_type n, const T & wert) { return Aendernd().insert(it, n, wert); }
    template <std::input_iterator I> iterator insert(const_iterator it, I von, I bis) {
        return Aendernd().insert(it, von, bis);
    }
    iterator insert(const_iterator it, std::initializer_list<T> liste) {
        return Aendernd().insert(it, liste);
    }
    template <class... A> iterator emplace(const_iterator it, A &&... args) {
        return Aendernd().emplace(it, std::forward<A>(args)...);
    }
    void swap(CIndexVektor & v) noexcept { Aendernd().swap(v.Aendernd()); }
    void swap(CVektor & v) noexcept { Aendernd().swap(v); }
    friend void swap(CIndexVektor & a, CIndexVektor & b) noexcept { a.swap(b); }
    template <class F> friend size_type erase_if(CIndexVektor & v, F fWeg) {
        return std::erase_if(v.Aendernd(), fWeg);
    }

    // Adding at the end and making room leave an index of the elements before as it is.
    void push_back(const T & wert) { m_v.push_back(wert); }
    void push_back(T && wert) { m_v.push_back(std::move(wert)); }
    template <class... A> T & emplace_back(A &&... args) {
        return m_v.emplace_back(std::forward<A>(args)...);
    }
    void reserve(size_type n) { m_v.reserve(n); }
    void shrink_to_fit() { m_v.shrink_to_fit(); }

    // A number that is the same as before only if no element that was there then can have changed since.
    [[nodiscard]] std::uint64_t Stand() const { return m_bVergeben ? ++m_iStand : m_iStand; }

private:
    CVektor & Aendernd() {
        ++m_iStand;
        return m_v;
    }

    CVektor m_v;
    mutable std::uint64_t m_iStand = 0; // once the vector is given away, another one whenever it is asked for
    bool m_bVergeben = false;           // as std::vector<T> &
};

// The keys of a table's elements as an index knows them.
template <class T, class K> class CTabellenschluessel {
public:
    // False where the table no longer begins with the known elements. FSCHLUESSEL gives an element's key.
    template <class F> [[nodiscard]] bool IstAnfang(const CIndexVektor<T> & v, F fSchluessel) {
        const std::uint64_t iStand = v.Stand();
        if (iStand == m_iStand) return true;
        m_iStand = iStand;
        return m_v.size() <= v.size() &&
               std::equal(m_v.begin(), m_v.end(), v.begin(),
                          [&](const K & k, const T & element) { return k == fSchluessel(element); });
    }
    void clear() { m_v.clear(); }
    void push_back(K schluessel) { m_v.push_back(std::move(schluessel)); }
    [[nodiscard]] std::size_t size() const { return m_v.size(); }

private:
    std::uint64_t m_iStand = 0;
    std::vector<K> m_v;
};

// The first position of each key in such a table. FSCHLUESSEL gives an element's key, FFALTE a key as it is compared.
template <class T, class K, class FHash = std::hash<K>> class CErstposition {
public:
    // The position of the first element with this key, -1 for none.
    template <class FSchluessel, class FFalte>
    int Finde(const CIndexVektor<T> & v, const K & schluessel, FSchluessel fSchluessel, FFalte fFalte) {
        if (!m_bekannt.IstAnfang(v, fSchluessel)) {
            m_bekannt.clear();
            m_map.clear();
        }
        for (std::size_t i = m_bekannt.size(); i < v.size(); ++i) {
            m_map.try_emplace(fFalte(fSchluessel(v[i])), static_cast<int>(i));
            m_bekannt.push_back(fSchluessel(v[i]));
        }
        const auto it = m_map.find(fFalte(schluessel));
        return it == m_map.end() ? -1 : it->second;
    }

private:
    CTabellenschluessel<T, K> m_bekannt;
    std::unordered_map<K, int, FHash> m_map;
};

// All positions of each text in such a table, upper and lower case alike. FELD is the elements' text. A spelling that
// has been asked for is not folded again.
template <class T, CString T::*FELD> class CTextpositionen {
public:
    // The positions in ascending order, none for an unknown text; valid until the next call.
    [[nodiscard]] std::span<const int> Finde(const CIndexVektor<T> & v, const CString & sText) {
        if (!m_bekannt.IstAnfang(v, std::mem_fn(FELD))) {
            m_bekannt.clear();
            m_vGruppen.clear();
            m_mapGruppe.clear();
        }
        while (m_bekannt.size() < v.size())
            Fuege(v[m_bekannt.size()].*FELD);
        auto it = m_mapGruppe.find(sText);
        if (it == m_mapGruppe.end()) {
            const auto itKlein = m_mapGruppe.find(CString(sText).MakeLower());
            if (itKlein == m_mapGruppe.end()) return {};
            it = m_mapGruppe.emplace(sText, itKlein->second).first;
        }
        return m_vGruppen[it->second];
    }

private:
    void Fuege(const CString & sText) {
        const auto [it, bNeu] = m_mapGruppe.try_emplace(CString(sText).MakeLower(), m_vGruppen.size());
        if (bNeu) m_vGruppen.emplace_back();
        m_vGruppen[it->second].push_back(static_cast<int>(m_bekannt.size()));
        m_bekannt.push_back(sText);
    }

    CTabellenschluessel<T, CString> m_bekannt;
    std::vector<std::vector<int>> m_vGruppen;
    // By lower-case text and by every other spelling met.
    std::unordered_map<CString, std::size_t> m_mapGruppe;
};

} // namespace orvostat
