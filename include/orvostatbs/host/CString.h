// The system's text: a value of eight bytes that holds Windows-1252 characters.
//
// A practice's records consist of short codes, dates, numbers and a few longer texts, and a statistic keeps a
// million records of ninety texts each, so the size of a text decides what a run costs. A CString is one machine
// word in one of three forms:
//
//   short    up to 7 characters, in the word itself
//   digits   8 to 14 characters out of "0" to "9", blank, "-", ".", "/" and "e", four bits each: dates, patient
//            numbers, amounts
//   shared   anything else, in a block that all copies share (counted, so copies may be made on several threads)
//
// Each text has exactly one form, and inside the first two forms words compare as their texts do. So a copy is a
// word, an equality mostly one comparison, and only longer free texts ever allocate.
//
// Literals stand in UTF-8 in the sources and become Windows-1252 in the compiler: a short or digits text converts
// by itself (`s == "ä1"`, `sDatum < "20020101"`), any other is written with its suffix (`"Kein Mandant"_t`). A
// character that Windows-1252 lacks does not compile.
#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orvostat {

class CString;

// The Unicode character of a Windows-1252 byte. The five bytes without a character stand for themselves, so that
// every byte has a character of its own.
[[nodiscard]] char32_t Zeichen1252(unsigned char cByte);

// The texts of whole strings, Windows-1252 to UTF-8 and back. A character that Windows-1252 lacks and malformed
// UTF-8 become "?".
[[nodiscard]] std::string NachUtf8(std::string_view s1252);
[[nodiscard]] CString AusUtf8(std::string_view sUtf8);
// The same into a buffer of at least sUtf8.size() bytes; returns the length written.
std::size_t AusUtf8(std::string_view sUtf8, char * pZiel);

// No byte is 0x80 or above.
[[nodiscard]] bool IstAscii(std::string_view s);

// Upper and lower case of a Windows-1252 byte; bytes without case come back as they are.
[[nodiscard]] char Gross(char c);
[[nodiscard]] char Klein(char c);

// How a word holds a text. Public for the compiler's sake only.
namespace wort {

inline constexpr std::uint64_t FORM = 0xF; // the low four bits: 0 to 7 the length of a short text,
inline constexpr std::uint64_t SHARED =
    0x8; // 8 a block's address, 9 to 15 the length of a digits text plus one
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
    for (int i = 0; i < 8; ++i)
        p[i] = static_cast<char>(w >> (56 - 8 * i));
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

// A literal in Windows-1252, converted by the compiler.
template <std::size_t N> struct SLiteral {
    std::size_t iLaenge = 0;
    char ac[N] = {};
    constexpr SLiteral(const char (&acUtf8)[N]); // NOLINT(google-explicit-constructor)
};

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

} // namespace wort

// The characters of a text for reading, with a 0 behind them; valid as long as this object and the text it came
// from live unchanged.
class CSicht {
public:
    explicit CSicht(const CString & s);
    [[nodiscard]] const char * c_str() const { return m_pText ? m_pText : m_ac; }
    [[nodiscard]] std::string_view Text() const { return {c_str(), m_iLaenge}; }
    operator std::string_view() const { return Text(); } // NOLINT(google-explicit-constructor)

private:
    const char * m_pText = nullptr; // null: the characters stand in m_ac
    std::size_t m_iLaenge;
    char m_ac[16];
};

// Positions count from 0. Nothing here fails, except that std::invalid_argument is thrown for a null pointer as
// text and for a SetAt outside of the text. Case covers the letters of Windows-1252, umlauts included; order is
// that of the bytes, and a byte of 0 is a character like any other.
class CString {
public:
    constexpr CString() noexcept = default;
    // A literal that is a short or digits text; for any other write its suffix: "..."_t.
    template <std::size_t N>
    consteval CString(const char (&acUtf8)[N]); // NOLINT(google-explicit-constructor)
    // Windows-1252 bytes up to a 0.
    template <class T>
    requires std::is_same_v<T, const char *> || std::is_same_v<T, char *> || std::is_same_v<T, std::nullptr_t>
    CString(const T & pBytes) : CString(Gueltig(pBytes)) {} // NOLINT(google-explicit-constructor)
    // Windows-1252 bytes.
    explicit CString(std::string_view sBytes) : m_w(wort::Packe(sBytes.data(), sBytes.size())) {
        if (wort::IstShared(m_w)) m_w = NeuerBlock(sBytes);
    }
    explicit CString(char cZeichen) : m_w(wort::Packe(&cZeichen, 1)) {}
    // One character, iAnzahl times; below 1 the empty text.
    CString(char cZeichen, int iAnzahl);

    CString(const CString & s) noexcept : m_w(s.m_w) { Teile(m_w); }
    CString(CString && s) noexcept : m_w(std::exchange(s.m_w, 0)) {}
    constexpr ~CString() { Gib(m_w); }
    CString & operator=(const CString & s) noexcept {
        Teile(s.m_w);
        Gib(std::exchange(m_w, s.m_w));
        return *this;
    }
    CString & operator=(CString && s) noexcept {
        std::swap(m_w, s.m_w);
        return *this;
    }

    [[nodiscard]] int GetLength() const {
        const std::uint64_t iForm = m_w & wort::FORM;
        if (iForm == wort::SHARED) return static_cast<int>(Block(m_w).iLaenge);
        return static_cast<int>(iForm) - (wort::IstKurz(m_w) ? 0 : 1);
    }
    [[nodiscard]] bool IsEmpty() const { return m_w == 0; }
    void Empty() { *this = CString(); }
    // The character, or 0 outside of the text.
    [[nodiscard]] char GetAt(int iPos) const {
        if (iPos < 0 || iPos >= GetLength()) return '\0';
        return wort::IstKurz(m_w) ? static_cast<char>(m_w >> (56 - 8 * iPos)) : Zeichen(iPos);
    }
    [[nodiscard]] char operator[](int iPos) const { return GetAt(iPos); }
    // The first character, 0 for an empty text: how the records read their one-letter codes.
    [[nodiscard]] char Erstes() const {
        return wort::IstKurz(m_w) ? static_cast<char>(m_w >> 56) : Zeichen(0);
    }
    void SetAt(int iPos, char cZeichen);

    // Below, equal to or above 0.
    [[nodiscard]] int Compare(const CString & s) const {
        if (m_w == s.m_w) return 0;
        const bool bShared = wort::IstShared(m_w) || wort::IstShared(s.m_w);
        if (!bShared && ((m_w ^ s.m_w) & wort::SHARED) == 0) return m_w < s.m_w ? -1 : 1;
        return VergleicheZeichen(s);
    }
    [[nodiscard]] int CompareNoCase(const CString & s) const;

    // First position at or behind iAb; -1 for none, also for a start outside of the text.
    [[nodiscard]] int Find(char cZeichen, int iAb = 0) const;
    [[nodiscard]] int Find(const CString & sTeil, int iAb = 0) const;

    // Parts; lengths and positions are cut to what is there.
    [[nodiscard]] CString Left(int iAnzahl) const;
    [[nodiscard]] CString Right(int iAnzahl) const;
    [[nodiscard]] CString Mid(int iAb) const;
    [[nodiscard]] CString Mid(int iAb, int iAnzahl) const;

    // In place, all of them; the trims take off blanks, tabs and line ends.
    CString & MakeUpper();
    CString & MakeLower();
    CString & Trim();
    CString & TrimLeft();
    CString & TrimRight();
    CString & TrimRight(char cZeichen);
    // Number of places changed.
    int Replace(char cAlt, char cNeu);
    int Replace(const CString & sAlt, const CString & sNeu);
    // Takes iAnzahl characters out from iPos on; the new length.
    int Delete(int iPos, int iAnzahl = 1);

    // printf's rules; a CString may be given for %s.
    template <class... T> void Format(const CString & sFormat, const T &... args);

    CString & operator+=(const CString & s);
    CString & operator+=(char cZeichen);

    [[nodiscard]] friend bool operator==(const CString & a, const CString & b) {
        return a.m_w == b.m_w || (wort::IstShared(a.m_w) && a.GleicherBlock(b));
    }
    [[nodiscard]] friend std::strong_ordering operator<=>(const CString & a, const CString & b) {
        return a.Compare(b) <=> 0;
    }
    friend CString operator+(const CString & a, const CString & b);
    [[nodiscard]] friend CString operator+(const CString & a, char c) { return CString(a) += c; }
    [[nodiscard]] friend CString operator+(char c, const CString & b) { return CString(c) += b; }

    // Becomes the text that stands in UTF-8 at p, as AusUtf8 reads it. What it holds already it keeps, so that a long
    // text that comes again and again takes its memory once.
    void SetzeUtf8(const char * p, std::size_t n) {
        const std::uint64_t w = wort::Packe(p, n);
        const bool bAscii = n > wort::KURZ_MAX || (w & wort::HOCH) == 0;
        if (wort::IstShared(w) || !bAscii) return SetzeLangesUtf8({p, n});
        if (w != m_w) Gib(std::exchange(m_w, w));
    }

    // The characters for reading; see CSicht for how long they stay.
    [[nodiscard]] CSicht Sicht() const { return CSicht(*this); }
    [[nodiscard]] std::string Utf8() const { return NachUtf8(Sicht()); }
    [[nodiscard]] std::size_t Hash() const;

    // The text of a literal's static block.
    static CString AusBlock(const wort::SBlock & block) {
        CString s;
        s.m_w = reinterpret_cast<std::uintptr_t>(&block) | wort::SHARED;
        Teile(s.m_w);
        return s;
    }

private:
    friend class CSicht;

    static void Teile(std::uint64_t w) noexcept {
        if (wort::IstShared(w)) Block(w).iAnzahl.fetch_add(1, std::memory_order_relaxed);
    }
    static constexpr void Gib(std::uint64_t w) noexcept {
        if (wort::IstShared(w)) GibBlock(w);
    }
    static const wort::SBlock & Block(std::uint64_t w) {
        return *reinterpret_cast<const wort::SBlock *>(static_cast<std::uintptr_t>(w & ~wort::FORM));
    }
    static void GibBlock(std::uint64_t w) noexcept;
    static std::uint64_t NeuerBlock(std::string_view sBytes);
    static std::string_view Gueltig(const char * pBytes);
    void SetzeBytes(std::string_view sBytes);
    void SetzeLangesUtf8(std::string_view sUtf8);
    [[nodiscard]] bool GleicherBlock(const CString & s) const;
    [[nodiscard]] int VergleicheZeichen(const CString & s) const;
    [[nodiscard]] char Zeichen(int iPos) const;
    CString & Wandle(char (*fZeichen)(char), char cVon, char cBis);

    std::uint64_t m_w = 0;
};

static_assert(sizeof(CString) == 8);

} // namespace orvostat

template <> struct std::hash<orvostat::CString> {
    std::size_t operator()(const orvostat::CString & s) const noexcept { return s.Hash(); }
};

namespace orvostat {

inline CSicht::CSicht(const CString & s) {
    const std::uint64_t w = s.m_w;
    if (wort::IstKurz(w)) {
        m_iLaenge = w & wort::FORM;
        wort::SchreibeAcht(m_ac, w & ~0xFFULL);
    } else if (wort::IstShared(w)) {
        const wort::SBlock & block = CString::Block(w);
        m_pText = block.Text();
        m_iLaenge = block.iLaenge;
    } else {
        m_iLaenge = (w & wort::FORM) - 1;
        wort::SchreibeAcht(m_ac, wort::Zeichen(w >> 32));
        wort::SchreibeAcht(m_ac + 8, wort::Zeichen(w & 0xFFFFFFFF));
        m_ac[m_iLaenge] = 0;
    }
}

// One character as a value: a char in, a char out.
class CChar {
public:
    constexpr CChar(char c = 0) : m_c(c) {}         // NOLINT(google-explicit-constructor)
    constexpr operator char() const { return m_c; } // NOLINT(google-explicit-constructor)

private:
    char m_c;
};

namespace wort {

// Unicode of the bytes 0x80 to 0x9F; the bytes behind them stand for themselves.
inline constexpr char32_t UNICODE_80[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                            0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

// The byte of a Unicode character, -1 where Windows-1252 has none.
[[nodiscard]] constexpr int Byte1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
    for (int i = 0; i < 32; ++i)
        if (UNICODE_80[i] == c) return 0x80 + i;
    return -1;
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

template <std::size_t N> constexpr SLiteral<N>::SLiteral(const char (&acUtf8)[N]) {
    for (std::size_t i = 0; i + 1 < N;) {
        const int iByte = Byte1252(LiesUtf8(acUtf8, N - 1, i));
        if (iByte < 0) throw std::invalid_argument("a character of this literal is not in Windows-1252");
        ac[iLaenge++] = static_cast<char>(iByte);
    }
}

template <SLiteral L> struct SLiteralHalter { static constinit inline SLiteralBlock<sizeof(L.ac)> block{L}; };

// A value as printf takes it.
template <class T> [[nodiscard]] const T & FuerFormat(const T & wert) { return wert; }
[[nodiscard]] inline CSicht FuerFormat(const CString & s) { return s.Sicht(); }
[[nodiscard]] inline char FuerFormat(const CChar & c) { return c; }
template <class T> [[nodiscard]] auto Argument(const T & wert) { return wert; }
[[nodiscard]] inline const char * Argument(const CSicht & sicht) { return sicht.c_str(); }

template <class... T> [[nodiscard]] std::string Formatiere(const char * pFormat, const T &... args) {
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#endif
    const int iLaenge = std::snprintf(nullptr, 0, pFormat, Argument(args)...);
    if (iLaenge <= 0) return {};
    std::string s(static_cast<std::size_t>(iLaenge), '\0');
    std::snprintf(s.data(), s.size() + 1, pFormat, Argument(args)...);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    return s;
}

} // namespace wort

template <std::size_t N> consteval CString::CString(const char (&acUtf8)[N]) {
    const wort::SLiteral<N> literal(acUtf8);
    m_w = wort::Packe(literal.ac, literal.iLaenge);
    if (wort::IstShared(m_w)) throw std::invalid_argument("write this longer literal with its suffix _t");
}

// A literal of any length.
template <wort::SLiteral L> [[nodiscard]] CString operator""_t() {
    constexpr std::uint64_t w = wort::Packe(L.ac, L.iLaenge);
    if constexpr (wort::IstShared(w))
        return CString::AusBlock(wort::SLiteralHalter<L>::block.kopf);
    else
        return CString(std::string_view(L.ac, L.iLaenge));
}

template <class... T> void CString::Format(const CString & sFormat, const T &... args) {
    const CSicht format = sFormat.Sicht();
    *this = CString(std::string_view(wort::Formatiere(
        format.c_str(), static_cast<const decltype(wort::FuerFormat(args)) &>(wort::FuerFormat(args))...)));
}

} // namespace orvostat
