// One table in memory: its rows and, for each key, their order.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace orvostat {

// A row in one piece of memory: this head, the columns, the end of each key among the key bytes, the key bytes. It
// is counted: the table holds it, and so do walks that stand on it and changes that may have to be taken back.
struct SMemoryZeile {
    std::uint64_t iLfd;    // rows of equal key sort by it
    std::uint32_t iHalter; // how many hold it
    std::uint16_t iSpalten;
    std::uint8_t iSchluessel;
    bool bGeloescht; // out of the table, though still in its orders

    static SMemoryZeile * Neu(const STabelle & tabelle, CWerte vWerte, std::uint64_t iLfd);
    void Gib();

    [[nodiscard]] CString * Spalten() { return reinterpret_cast<CString *>(this + 1); }
    // Under key iSchluessel, counted from 0 here.
    [[nodiscard]] std::string_view Schluessel(std::size_t iSchluessel) const;
    [[nodiscard]] bool GleicheSchluessel(const SMemoryZeile & zeile) const;
};

// Holds a row or none.
class CHalter {
public:
    CHalter() = default;
    explicit CHalter(SMemoryZeile * pZeile) : m_pZeile(pZeile) {
        if (m_pZeile) ++m_pZeile->iHalter;
    }
    // A new row that nobody else holds.
    static CHalter Neu(const STabelle & tabelle, CWerte vWerte, std::uint64_t iLfd) {
        CHalter halter;
        halter.m_pZeile = SMemoryZeile::Neu(tabelle, vWerte, iLfd);
        return halter;
    }
    CHalter(CHalter && h) noexcept : m_pZeile(std::exchange(h.m_pZeile, nullptr)) {}
    CHalter & operator=(CHalter && h) noexcept {
        std::swap(m_pZeile, h.m_pZeile);
        return *this;
    }
    ~CHalter() {
        if (m_pZeile) m_pZeile->Gib();
    }
    // Holds pZeile from now on.
    void Setze(SMemoryZeile * pZeile) {
        if (m_pZeile == pZeile) return;
        CHalter neu(pZeile);
        std::swap(m_pZeile, neu.m_pZeile);
    }
    explicit operator bool() const { return m_pZeile != nullptr; }
    SMemoryZeile & operator*() const { return *m_pZeile; }
    SMemoryZeile * operator->() const { return m_pZeile; }

private:
    SMemoryZeile * m_pZeile = nullptr;
};

// Makes room for iMehr further entries, so that adding them cannot fail.
template <class T> void MachePlatz(std::vector<T> & v, std::size_t iMehr) {
    if (v.capacity() - v.size() < iMehr) v.reserve(std::max(v.size() * 2, v.size() + iMehr));
}

// The rows under one key. What is added goes to the end, and Ordne brings it into its place.
class COrdnung {
public:
    explicit COrdnung(std::size_t iSchluessel) : m_iSchluessel(iSchluessel) {}

    // Makes room for the row that Fuege adds next.
    void Erwarte() { MachePlatz(m_vZeilen, 1); }
    void Fuege(SMemoryZeile & zeile) noexcept { m_vZeilen.push_back(&zeile); }
    void Ordne();
    // Takes the deleted rows out of the order, without giving them back.
    void Raeume();

    // How many of the ordered rows have a lesser key, at least iAb; stand before a row's place, the row itself
    // counted or not.
    [[nodiscard]] std::size_t VorSchluessel(std::string_view sSchluessel, std::size_t iAb = 0) const;
    [[nodiscard]] std::size_t VorZeile(const SMemoryZeile & zeile, bool bMitIhr) const;
    [[nodiscard]] std::size_t Geordnet() const { return m_iGeordnet; }
    [[nodiscard]] SMemoryZeile & operator[](std::size_t i) const { return *m_vZeilen[i]; }
    [[nodiscard]] const std::vector<SMemoryZeile *> & Alle() const { return m_vZeilen; }
    // Changes whenever a position found before may be another row's now.
    [[nodiscard]] std::uint64_t Stand() const { return m_iStand; }

private:
    [[nodiscard]] bool Vor(const SMemoryZeile & a, const SMemoryZeile & b) const;
    template <class F> [[nodiscard]] std::size_t Zaehle(F fVorher, std::size_t iAb, std::size_t iBis) const {
        const auto anfang = m_vZeilen.begin();
        return static_cast<std::size_t>(std::partition_point(anfang + static_cast<std::ptrdiff_t>(iAb),
                                                             anfang + static_cast<std::ptrdiff_t>(iBis),
                                                             fVorher) -
                                        anfang);
    }

    std::size_t m_iSchluessel;
    std::vector<SMemoryZeile *> m_vZeilen;
    std::size_t m_iGeordnet = 0;
    mutable std::size_t m_iZuletzt = 0; // where the last search ended, to begin the next one
    std::uint64_t m_iStand = 0;
};

class CMemoryTabelle {
public:
    explicit CMemoryTabelle(const STabelle & tabelle);
    ~CMemoryTabelle();
    CMemoryTabelle(const CMemoryTabelle &) = delete;
    CMemoryTabelle & operator=(const CMemoryTabelle &) = delete;

    // Adds a new row, or none where memory ends; takes a row out; brings a row back that was taken out.
    SMemoryZeile & Fuege(CWerte vWerte);
    void Loesche(SMemoryZeile & zeile) noexcept;
    void Hole(SMemoryZeile & zeile) noexcept;
    // The order under a key (from 0) with every row in its place. With bRaeumen rows taken out may be given back.
    const COrdnung & Geordnet(std::size_t iSchluessel, bool bRaeumen);

    [[nodiscard]] const STabelle & Beschreibung() const { return m_tabelle; }
    [[nodiscard]] std::uint64_t LetzteLfd() const { return m_iLfd; }
    [[nodiscard]] std::size_t Anzahl() const { return m_vOrdnungen[0].Alle().size() - m_iGeloescht; }

private:
    void Raeume();

    const STabelle & m_tabelle;
    std::vector<COrdnung> m_vOrdnungen; // one for each key; the first one's rows are held
    std::uint64_t m_iLfd = 0;
    std::size_t m_iGeloescht = 0;
};

} // namespace orvostat
