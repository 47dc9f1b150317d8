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
// Literals stand in UTF-8 in the sources and become Windows-1252 wherever a CString is wanted: `s == "ä1"`,
// `s = b ? "1" : "2"`, `CString s("Kein Mandant")`. Where an optimising compiler sees a literal of up to 64 bytes, a
// character that Windows-1252 lacks does not compile; elsewhere it throws when the code runs. Such a text costs nothing
// if it is short or digits, else a block each time; written with its suffix, `"Kein Mandant"_t`, it has a static one,
// and the characters are checked in any build.
//
// An array of constant characters is a literal. All that is no literal holds Windows-1252: an array that can be
// written, a pointer (also `b ? "Zahn" : "Zähne"`, two literals of different length), a std::string_view.
#pragma once

#include "orvostatbs/host/detail/Wort.h"

#include <atomic>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
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

// The characters of a text for reading, with a 0 behind them; valid as long as this object and the text it came
// from live unchanged.
class CSicht {
public:
    explicit CSicht(const CString & s);
    [[nodiscard]] const char * c_str() const { return m_pText ? m_pText : m_ac; }
    [[nodiscard]] std::string_view Text() const { return {c_str(), m_iLaenge}; }
    operator std::string_view() const { return Text(); } // NOLINT(google-explicit-constructor)
    // Copies the characters to where there is room for 16 more than they are; the end of the copy.
    char * Kopiere(char * pZiel) const {
        if (m_pText != nullptr) {
            std::memcpy(pZiel, m_pText, m_iLaenge);
        } else {
            std::memcpy(pZiel, m_ac, 8);
            if (m_iLaenge > 8) std::memcpy(pZiel + 8, m_ac + 8, 8);
        }
        return pZiel + m_iLaenge;
    }

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
    // A literal; zeros at its end are no part of it. Throws std::invalid_argument for characters that are not in
    // Windows-1252 and for malformed UTF-8.
    template <std::size_t N>
    [[gnu::always_inline]] constexpr CString(const char (&acUtf8)[N]); // NOLINT(google-explicit-constructor)
    // Windows-1252 bytes up to a 0, or to the end of the array.
    template <std::size_t N>
    CString(char (&acBytes)[N]) // NOLINT(google-explicit-constructor)
        : CString(std::string_view(acBytes, wort::BisNull(acBytes, N))) {}
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

    // The n characters at p, at most 7, of eight that can be read: for those who cut many short texts out of a long
    // one.
    static CString AusAcht(const char * p, std::size_t n) {
        CString s;
        if (n > 0) s.m_w = (wort::Acht(p) & (~0ULL << (64 - 8 * n))) | n;
        return s;
    }
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
    static std::uint64_t WortAusLiteral(std::string_view sUtf8);
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

template <std::size_t N> constexpr CString::CString(const char (&acUtf8)[N]) {
    if (std::is_constant_evaluated()) {
        const wort::SLiteral<N> literal(acUtf8);
        m_w = wort::Packe(literal.ac, literal.iLaenge);
        if (wort::IstShared(m_w))
            throw std::invalid_argument("this text is no constant, only its literal with _t is");
    } else {
        std::uint64_t w = wort::SHARED;
        if constexpr (N <= wort::LITERAL_MAX) {
            const wort::SLeser leser = wort::LiesLiteral(acUtf8, std::make_index_sequence<N - 1>());
            if (__builtin_constant_p(leser.bGut) && !leser.bGut) wort::LiteralOhneZeichen();
            w = wort::WortAusLeser(leser, acUtf8);
        }
        m_w = __builtin_constant_p(w) && !wort::IstShared(w) ? w : WortAusLiteral({acUtf8, N});
    }
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
