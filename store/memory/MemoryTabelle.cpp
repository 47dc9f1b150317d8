#include "MemoryTabelle.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace orvostat {

namespace {

std::uint32_t * Enden(SMemoryZeile & zeile) {
    return reinterpret_cast<std::uint32_t *>(zeile.Spalten() + zeile.iSpalten);
}

} // namespace

SMemoryZeile * SMemoryZeile::Neu(const STabelle & tabelle, CWerte vWerte, std::uint64_t iLfd) {
    const std::size_t iAnzahl = tabelle.vSchluessel.size();
    std::uint32_t aiEnden[SCHLUESSEL_MAX];
    static thread_local std::string s_sBytes;
    s_sBytes.clear();
    for (std::size_t k = 0; k < iAnzahl; ++k) {
        HaengeSchluesselAn(s_sBytes, tabelle, static_cast<int>(k + 1), vWerte);
        aiEnden[k] = static_cast<std::uint32_t>(s_sBytes.size());
    }
    void * p = ::operator new(sizeof(SMemoryZeile) + vWerte.size() * sizeof(CString) +
                              iAnzahl * sizeof(std::uint32_t) + s_sBytes.size());
    auto * pZeile = new (p) SMemoryZeile{iLfd, 1, static_cast<std::uint16_t>(vWerte.size()),
                                         static_cast<std::uint8_t>(iAnzahl), false};
    for (std::size_t i = 0; i < vWerte.size(); ++i)
        new (pZeile->Spalten() + i) CString(*vWerte[i]);
    std::memcpy(Enden(*pZeile), aiEnden, iAnzahl * sizeof(std::uint32_t));
    std::memcpy(Enden(*pZeile) + iAnzahl, s_sBytes.data(), s_sBytes.size());
    return pZeile;
}

void SMemoryZeile::Gib() {
    if (--iHalter > 0) return;
    std::destroy_n(Spalten(), iSpalten);
    ::operator delete(this);
}

std::string_view SMemoryZeile::Schluessel(std::size_t k) const {
    const std::uint32_t * piEnden = Enden(const_cast<SMemoryZeile &>(*this));
    const std::uint32_t iAb = k == 0 ? 0 : piEnden[k - 1];
    return {reinterpret_cast<const char *>(piEnden + iSchluessel) + iAb, piEnden[k] - iAb};
}

bool SMemoryZeile::GleicheSchluessel(const SMemoryZeile & zeile) const {
    for (std::size_t k = 0; k < iSchluessel; ++k)
        if (Schluessel(k) != zeile.Schluessel(k)) return false;
    return true;
}

bool COrdnung::Vor(const SMemoryZeile & a, const SMemoryZeile & b) const {
    const int iVergleich = a.Schluessel(m_iSchluessel).compare(b.Schluessel(m_iSchluessel));
    return iVergleich != 0 ? iVergleich < 0 : a.iLfd < b.iLfd;
}

void COrdnung::Ordne() {
    if (m_iGeordnet == m_vZeilen.size()) return;
    const auto vor = [this](const SMemoryZeile * a, const SMemoryZeile * b) { return Vor(*a, *b); };
    const auto mitte = m_vZeilen.begin() + static_cast<std::ptrdiff_t>(m_iGeordnet);
    if (!std::is_sorted(mitte, m_vZeilen.end(), vor)) std::sort(mitte, m_vZeilen.end(), vor);
    // Most rows come in key order, so only what lies behind the first new one has to move.
    const auto erste = std::upper_bound(m_vZeilen.begin(), mitte, *mitte, vor);
    if (erste != mitte) std::inplace_merge(erste, mitte, m_vZeilen.end(), vor);
    m_iGeordnet = m_vZeilen.size();
    ++m_iStand;
}

void COrdnung::Raeume() {
    Ordne();
    std::erase_if(m_vZeilen, [](const SMemoryZeile * p) { return p->bGeloescht; });
    m_iGeordnet = m_vZeilen.size();
    ++m_iStand;
}

// Reads mostly go on near the last one, and ranges are mostly short: so the search spreads from a place, in steps that
// double, until it has gone too far.
std::size_t COrdnung::VorSchluessel(std::string_view sSchluessel, std::size_t iAb) const {
    const auto Vorher = [&](const SMemoryZeile * p) { return p->Schluessel(m_iSchluessel) < sSchluessel; };
    std::size_t iVon = std::max(iAb, std::min(m_iZuletzt, m_iGeordnet));
    std::size_t iBis = iVon;
    for (std::size_t iSchritt = 1; iVon > iAb && !Vorher(m_vZeilen[iVon - 1]); iSchritt *= 2) {
        iBis = iVon - 1;
        iVon -= std::min(iSchritt, iVon - iAb);
    }
    if (iVon == iBis)
        for (std::size_t iSchritt = 1; iBis < m_iGeordnet && Vorher(m_vZeilen[iBis]); iSchritt *= 2) {
            iVon = iBis + 1;
            iBis += std::min(iSchritt, m_iGeordnet - iBis);
        }
    return m_iZuletzt = Zaehle(Vorher, iVon, iBis);
}

std::size_t COrdnung::VorZeile(const SMemoryZeile & zeile, bool bMitIhr) const {
    const auto Vorher = [&](const SMemoryZeile * p) {
        return Vor(*p, zeile) || (bMitIhr && !Vor(zeile, *p));
    };
    return Zaehle(Vorher, 0, m_iGeordnet);
}

CMemoryTabelle::CMemoryTabelle(const STabelle & tabelle) : m_tabelle(tabelle) {
    for (std::size_t k = 0; k < tabelle.vSchluessel.size(); ++k)
        m_vOrdnungen.emplace_back(k);
}

CMemoryTabelle::~CMemoryTabelle() {
    for (SMemoryZeile * pZeile : m_vOrdnungen[0].Alle())
        pZeile->Gib();
}

SMemoryZeile & CMemoryTabelle::Fuege(CWerte vWerte) {
    for (COrdnung & ordnung : m_vOrdnungen)
        ordnung.Erwarte();
    SMemoryZeile & zeile = *SMemoryZeile::Neu(m_tabelle, vWerte, m_iLfd + 1);
    ++m_iLfd;
    for (COrdnung & ordnung : m_vOrdnungen)
        ordnung.Fuege(zeile);
    return zeile;
}

void CMemoryTabelle::Loesche(SMemoryZeile & zeile) noexcept {
    zeile.bGeloescht = true;
    ++m_iGeloescht;
}

void CMemoryTabelle::Hole(SMemoryZeile & zeile) noexcept {
    zeile.bGeloescht = false;
    --m_iGeloescht;
}

const COrdnung & CMemoryTabelle::Geordnet(std::size_t iSchluessel, bool bRaeumen) {
    constexpr std::size_t ZU_WENIGE = 16;
    if (bRaeumen && m_iGeloescht > ZU_WENIGE && m_iGeloescht > Anzahl() / 2) Raeume();
    m_vOrdnungen[iSchluessel].Ordne();
    return m_vOrdnungen[iSchluessel];
}

void CMemoryTabelle::Raeume() {
    std::vector<SMemoryZeile *> vGeloeschte;
    for (SMemoryZeile * pZeile : m_vOrdnungen[0].Alle())
        if (pZeile->bGeloescht) vGeloeschte.push_back(pZeile);
    for (COrdnung & ordnung : m_vOrdnungen)
        ordnung.Raeume();
    for (SMemoryZeile * pZeile : vGeloeschte)
        pZeile->Gib();
    m_iGeloescht = 0;
}

} // namespace orvostat
