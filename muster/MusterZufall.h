// Chance for the sample practice.
//
// A sample must be the same, byte by byte, on every machine and with every standard library. So the generator
// (xoshiro256**, seeded by splitmix64; both in the public domain) and the ways to draw from it stand here, and
// nothing of <random> is used. Each patient draws from a stream of its own: what one patient gets does not depend on
// how many there are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

namespace orvostat {

class CZufall {
public:
    // The stream number iStrom of a seed.
    CZufall(std::uint64_t iSaat, std::uint64_t iStrom) {
        std::uint64_t i = iSaat * 0x9E3779B97F4A7C15 + iStrom;
        for (std::uint64_t & iZustand : m_ai)
            iZustand = Splitmix(i);
    }

    // 0 to iAnzahl - 1; iAnzahl is above 0.
    [[nodiscard]] int Unter(int iAnzahl) {
        return static_cast<int>((Naechste() >> 32) * static_cast<std::uint64_t>(iAnzahl) >> 32);
    }
    // iVon to iBis, both included.
    [[nodiscard]] int Zwischen(int iVon, int iBis) { return iVon + Unter(iBis - iVon + 1); }
    // True in iProzent of a hundred cases, in iPromille of a thousand.
    [[nodiscard]] bool Prozent(int iProzent) { return Unter(100) < iProzent; }
    [[nodiscard]] bool Promille(int iPromille) { return Unter(1000) < iPromille; }
    // One element of a range that is not empty.
    template <class T> [[nodiscard]] const auto & Eines(const T & v) {
        return std::data(v)[Unter(static_cast<int>(std::size(v)))];
    }
    // One element, by the weights iGewicht of the elements.
    template <class T> [[nodiscard]] const auto & Gewichtet(const T & v) {
        int iSumme = 0;
        for (const auto & element : v)
            iSumme += element.iGewicht;
        int iRest = Unter(iSumme);
        std::size_t i = 0;
        while (iRest >= std::data(v)[i].iGewicht)
            iRest -= std::data(v)[i++].iGewicht;
        return std::data(v)[i];
    }

private:
    static std::uint64_t Splitmix(std::uint64_t & i) {
        std::uint64_t z = i += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }
    static std::uint64_t Drehe(std::uint64_t i, int iBits) { return (i << iBits) | (i >> (64 - iBits)); }
    std::uint64_t Naechste() {
        const std::uint64_t iErgebnis = Drehe(m_ai[1] * 5, 7) * 9;
        const std::uint64_t iSchub = m_ai[1] << 17;
        m_ai[2] ^= m_ai[0];
        m_ai[3] ^= m_ai[1];
        m_ai[1] ^= m_ai[2];
        m_ai[0] ^= m_ai[3];
        m_ai[2] ^= iSchub;
        m_ai[3] = Drehe(m_ai[3], 45);
        return iErgebnis;
    }

    std::uint64_t m_ai[4];
};

} // namespace orvostat
