// How the word of a CString holds its text: for CString and its own sources only.
//
// A short text has its characters from the most significant byte on. A digits text has four bits for each character,
// from the most significant on too, so that words compare as their texts. A shared text's word is its block's address.
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace orvostat::wort {

// ---- the word

// The low four bits: 0 to 7 is the length of a short text, 8 stands for a block's address, 9 to 15 is the length of a
// digits text plus one.
inline constexpr std::uint64_t FORM = 0xF;
inline constexpr std::uint64_t SHARED = 0x8;
inline constexpr std::size_t KURZ_MAX = 7;
inline constexpr std::size_t ZIFFERN_MAX = 14;

[[nodiscard]] constexpr bool IstShared(std::uint64_t w) { return (w & FORM) == SHARED; }
[[nodiscard]] constexpr bool IstKurz(std::uint64_t w) { return (w & 8) == 0; }

// The characters are packed eight at a time, in words whose most significant byte is the first character. In the
// digits form a character's code is 1 for a blank, 2 to 14 for "-" to "9" in their byte order and 15 for "e", 0
// being none.
inline constexpr std::uint64_t JE = 0x0101010101010101; // times a byte: that byte in each place
inline constexpr std::uint64_t HOCH = 0x80 * JE;

[[nodiscard]] constexpr std::uint64_t Vier(const char * p) {
    const auto b = [p](int i) { return static_cast<std::uint64_t>(static_cast<unsigned char>(p[i])); };
    return (b(0) << 24) | (b(1) << 16) | (b(2) << 8) | b(3);
}
[[nodiscard]] constexpr std::uint64_t Acht(const char * p) {
    const auto b = [p](int i) { return static_cast<std::uint64_t>(static_cast<unsigned char>(p[i])); };
    return (b(0) << 56) | (b(1) << 48) | (b(2) << 40) | (b(3) << 32) | (b(4) << 24) | (b(5) << 16) |
           (b(6) << 8) | b(7);
}
// The high bit of each byte of w that is c; both below 0x80.
[[nodiscard]] constexpr std::uint64_t Gleiche(std::uint64_t w, unsigned char c) {
    return ~((w ^ (c * JE)) + 0x7F * JE) & HOCH;
}

// The codes of eight characters, 32 bits, the first the most significant; bGut becomes false if one has no code.
[[nodiscard]] constexpr std::uint64_t Codes(std::uint64_t w, bool & bGut) {
    const std::uint64_t wBlanks = Gleiche(w & ~HOCH, ' ');
    const std::uint64_t wE = Gleiche(w & ~HOCH, 'e');
    const std::uint64_t wMitte =
        ((w & ~HOCH) + (0x80 - '-') * JE) & ~((w & ~HOCH) + (0x80 - '9' - 1) * JE) & HOCH;
    bGut = bGut && (w & HOCH) == 0 && (wBlanks | wE | wMitte) == HOCH;
    std::uint64_t c = (w + (wBlanks >> 7) * ('-' - 1 - ' ') - (wE >> 7) * ('e' - '9' - 1)) - ('-' - 2) * JE;
    c = (c | (c >> 4)) & 0x00FF00FF00FF00FF;
    c = (c | (c >> 8)) & 0x0000FFFF0000FFFF;
    return (c | (c >> 16)) & 0xFFFFFFFF;
}
// The other way round: eight characters of 32 bits of codes; what stands for a code of 0 is not said.
[[nodiscard]] constexpr std::uint64_t Zeichen(std::uint64_t iCodes) {
    std::uint64_t c = (iCodes | (iCodes << 16)) & 0x0000FFFF0000FFFF;
    c = (c | (c << 8)) & 0x00FF00FF00FF00FF;
    c = (c | (c << 4)) & 0x0F0F0F0F0F0F0F0F;
    const std::uint64_t wBlanks = Gleiche(c, 1);
    const std::uint64_t wE = Gleiche(c, 15);
    return c + ('-' - 2) * JE - (wBlanks >> 7) * ('-' - 1 - ' ') + (wE >> 7) * ('e' - '9' - 1);
}

// The other way round of Acht.
inline void SchreibeAcht(char * p, std::uint64_t w) {
    if constexpr (std::endian::native == std::endian::little) w = __builtin_bswap64(w);
    std::memcpy(p, &w, 8);
}

// The high bit of each byte of ASCII that is from cVon to cBis.
[[nodiscard]] constexpr std::uint64_t Zwischen(std::uint64_t w, unsigned char cVon, unsigned char cBis) {
    const std::uint64_t wUnten = w & ~HOCH;
    return (wUnten + (0x80u - cVon) * JE) & ~(wUnten + (0x7Fu - cBis) * JE) & ~w & HOCH;
}

// The word of a short or digits text; SHARED where the text needs a block.
[[nodiscard]] constexpr std::uint64_t Packe(const char * p, std::size_t n) {
    const auto b = [p](std::size_t i) {
        return static_cast<std::uint64_t>(static_cast<unsigned char>(p[i])) << (56 - 8 * i);
    };
    if (n == 0) return 0;
    if (n < 4) return b(0) | b(n / 2) | b(n - 1) | n;
    if (n <= KURZ_MAX) return (Vier(p) << 32) | (Vier(p + n - 4) << (64 - 8 * n)) | n;
    if (n > ZIFFERN_MAX) return SHARED;
    bool bGut = true;
    const std::uint64_t iErste = Codes(Acht(p), bGut);
    const std::uint64_t iLetzte = Codes(Acht(p + n - 8), bGut); // overlaps the first eight
    return bGut ? (iErste << 32) | ((iLetzte << (64 - 4 * n)) & 0xFFFFFFFF) | (n + 1) : SHARED;
}

// ---- Windows-1252 and UTF-8

// Unicode of the bytes 0x80 to 0x9F; the bytes behind them stand for themselves.
inline constexpr char32_t UNICODE_80[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                            0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

// The bytes of UNICODE_80's characters, each at its character modulo the size: no two of them meet.
inline constexpr auto BYTE_80 = [] {
    std::array<unsigned char, 122> ac{};
    for (unsigned i = 0; i < 32; ++i) {
        unsigned char & c = ac[UNICODE_80[i] % ac.size()];
        if (c != 0) throw std::logic_error("two characters in one place");
        c = static_cast<unsigned char>(0x80 + i);
    }
    return ac;
}();

// The byte of a Unicode character, -1 where Windows-1252 has none.
[[nodiscard]] constexpr int Byte1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    const unsigned char cByte = BYTE_80[c % BYTE_80.size()];
    return cByte != 0 && UNICODE_80[cByte - 0x80] == c ? cByte : -1;
}

// Reads one character of UTF-8 at iPos and moves behind it; 0xFFFFFFFF for malformed bytes, one of them skipped.
[[nodiscard]] constexpr char32_t LiesUtf8(const char * p, std::size_t n, std::size_t & iPos) {
    constexpr char32_t FALSCH = 0xFFFFFFFF;
    const auto b = [&](std::size_t i) { return static_cast<unsigned char>(p[i]); };
    const unsigned char b0 = b(iPos++);
    if (b0 < 0x80) return b0;
    const std::size_t iWeitere = b0 >= 0xF0 ? 3 : b0 >= 0xE0 ? 2 : 1;
    if (b0 < 0xC2 || b0 > 0xF4 || iPos + iWeitere > n) return FALSCH;
    char32_t c = b0 & (0x3Fu >> iWeitere);
    for (std::size_t i = 0; i < iWeitere; ++i) {
        if ((b(iPos + i) & 0xC0) != 0x80) return FALSCH;
        c = (c << 6) | (b(iPos + i) & 0x3Fu);
    }
    if ((iWeitere == 2 && c < 0x800) || (iWeitere == 3 && c < 0x10000)) return FALSCH;
    iPos += iWeitere;
    return c;
}

// ---- literals and blocks

// How many of n characters stand before a 0.
[[nodiscard]] inline std::size_t BisNull(const char * p, std::size_t n) {
    const void * const pNull = std::memchr(p, 0, n);
    return pNull == nullptr ? n : static_cast<std::size_t>(static_cast<const char *>(pNull) - p);
}

// A literal in Windows-1252, converted by the compiler. Zeros at its end are no part of it.
template <std::size_t N> struct SLiteral {
    std::size_t iLaenge = 0;
    char ac[N] = {};
    constexpr SLiteral(const char (&acUtf8)[N]) { // NOLINT(google-explicit-constructor)
        for (std::size_t i = 0; i + 1 < N;) {
            const int iByte = Byte1252(LiesUtf8(acUtf8, N - 1, i));
            if (iByte < 0) throw std::invalid_argument("a character of this literal is not in Windows-1252");
            ac[iLaenge++] = static_cast<char>(iByte);
        }
        while (iLaenge > 0 && ac[iLaenge - 1] == 0)
            --iLaenge;
    }
};

// Reads a literal in code that runs, byte by byte and without a loop, so that an optimising compiler is left with the
// result alone.
struct SLeser {
    std::uint64_t wKurz = 0;    // the first seven characters
    std::uint64_t wZiffern = 0; // the codes of the first fourteen
    bool bZiffern = true;       // each has one
    std::size_t iLaenge = 0;
    char32_t cZeichen = 0;
    char32_t cMindestens = 0; // what needs that many bytes
    unsigned iWeitere = 0;    // bytes of this character that are still to come
    bool bGut = true;

    [[gnu::always_inline]] constexpr void Nimm(char c) {
        const auto b = static_cast<unsigned char>(c);
        const bool bFolgt = iWeitere > 0;
        bGut = bGut && (bFolgt ? (b & 0xC0) == 0x80 : b < 0x80 || (b >= 0xC2 && b < 0xF0));
        if (bFolgt) {
            cZeichen = (cZeichen << 6) | (b & 0x3Fu);
            --iWeitere;
        } else {
            cZeichen = b < 0x80 ? b : b & (b < 0xE0 ? 0x1Fu : 0x0Fu);
            iWeitere = b < 0x80 ? 0 : b < 0xE0 ? 1 : 2;
            cMindestens = b < 0xE0 ? 0 : 0x800;
        }
        if (iWeitere > 0) return;
        const int iByte = Byte1252(cZeichen);
        bGut = bGut && iByte >= 0 && cZeichen >= cMindestens;
        if (iLaenge < KURZ_MAX) wKurz |= (static_cast<std::uint64_t>(iByte) & 0xFF) << (56 - 8 * iLaenge);
        const std::uint64_t iCode = b == ' '               ? 1u
                                    : b >= '-' && b <= '9' ? b - ('-' - 2u)
                                    : b == 'e'             ? 15u
                                                           : 0u;
        bZiffern = bZiffern && iCode != 0;
        if (iLaenge < ZIFFERN_MAX) wZiffern |= iCode << (60 - 4 * iLaenge);
        ++iLaenge;
    }
};
template <std::size_t... I>
[[nodiscard, gnu::always_inline]] constexpr SLeser LiesLiteral(const char * p, std::index_sequence<I...>) {
    SLeser leser;
    (leser.Nimm(p[I]), ...);
    leser.bGut = leser.bGut && leser.iWeitere == 0;
    return leser;
}
// The word of the literal ac that a reader has read; SHARED where it needs a block, or is to be looked at when it runs.
template <std::size_t N>
[[nodiscard, gnu::always_inline]] constexpr std::uint64_t WortAusLeser(const SLeser & leser,
                                                                       const char (&ac)[N]) {
    if (!leser.bGut || ac[N - 1] != 0) return SHARED;
    if constexpr (N > 1)
        if (ac[N - 2] == 0) return SHARED;
    if (leser.iLaenge <= KURZ_MAX) return leser.wKurz | leser.iLaenge;
    return leser.bZiffern && leser.iLaenge <= ZIFFERN_MAX ? leser.wZiffern | (leser.iLaenge + 1) : SHARED;
}

// The literals that a compiler is asked to read in code that runs: up to this size.
#ifdef __OPTIMIZE__
inline constexpr std::size_t LITERAL_MAX = 65;
#else
inline constexpr std::size_t LITERAL_MAX = 0;
#endif

// Is not there: a call of it remains where the compiler has seen that a literal is wrong.
[[gnu::error("a character of this literal is not in Windows-1252")]] void LiteralOhneZeichen();

// The counted text of the shared form. A literal's block is static, and its count never reaches zero.
struct alignas(16) SBlock {
    mutable std::atomic<std::uint32_t> iAnzahl;
    std::uint32_t iLaenge;
    [[nodiscard]] const char * Text() const { return reinterpret_cast<const char *>(this + 1); }
};

template <std::size_t N> struct SLiteralBlock {
    constexpr explicit SLiteralBlock(const SLiteral<N> & literal)
        : kopf{1, static_cast<std::uint32_t>(literal.iLaenge)} {
        for (std::size_t i = 0; i < N; ++i)
            ac[i] = literal.ac[i];
    }
    SBlock kopf;
    char ac[N] = {}; // a 0 at the end included
};

template <SLiteral L> struct SLiteralHalter { static constinit inline SLiteralBlock<sizeof(L.ac)> block{L}; };

} // namespace orvostat::wort
