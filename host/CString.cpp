#include "orvostatbs/host/CString.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <new>

namespace orvostat {

namespace {

constexpr bool IstLuft(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Case of the letters of Windows-1252: ASCII, the Latin-1 letters, and the four that stand in the block 0x80.
struct SFaelle {
    std::array<char, 256> acGross{};
    std::array<char, 256> acKlein{};
};

consteval SFaelle MakeFaelle() {
    SFaelle f;
    for (std::size_t i = 0; i < 256; ++i)
        f.acGross[i] = f.acKlein[i] = static_cast<char>(i);
    const auto Paar = [&f](unsigned iGross, unsigned iKlein) {
        f.acGross[iKlein] = static_cast<char>(iGross);
        f.acKlein[iGross] = static_cast<char>(iKlein);
    };
    for (unsigned c = 'A'; c <= 'Z'; ++c)
        Paar(c, c + 0x20);
    for (unsigned c = 0xC0; c <= 0xDE; ++c)
        if (c != 0xD7) Paar(c, c + 0x20);
    Paar(0x8A, 0x9A); // S with caron
    Paar(0x8C, 0x9C); // OE
    Paar(0x8E, 0x9E); // Z with caron
    Paar(0x9F, 0xFF); // Y with diaeresis
    return f;
}

constexpr SFaelle FAELLE = MakeFaelle();

// A text being changed: the characters in a buffer, written back as a text at the end.
std::string Kopie(const CString & s) { return std::string(s.Sicht().Text()); }

} // namespace

char32_t Zeichen1252(unsigned char cByte) {
    return cByte >= 0x80 && cByte < 0xA0 ? wort::UNICODE_80[cByte - 0x80] : cByte;
}

char Gross(char c) { return FAELLE.acGross[static_cast<unsigned char>(c)]; }
char Klein(char c) { return FAELLE.acKlein[static_cast<unsigned char>(c)]; }

std::string NachUtf8(std::string_view s1252) {
    std::string s;
    s.reserve(s1252.size() + 8);
    for (const char cByte : s1252) {
        const char32_t c = Zeichen1252(static_cast<unsigned char>(cByte));
        if (c < 0x80) {
            s += static_cast<char>(c);
            continue;
        }
        if (c < 0x800) {
            s += static_cast<char>(0xC0 | (c >> 6));
        } else {
            s += static_cast<char>(0xE0 | (c >> 12));
            s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        }
        s += static_cast<char>(0x80 | (c & 0x3F));
    }
    return s;
}

std::size_t AusUtf8(std::string_view sUtf8, char * pZiel) {
    char * p = pZiel;
    for (std::size_t i = 0; i < sUtf8.size();) {
        const int iByte = wort::Byte1252(wort::LiesUtf8(sUtf8.data(), sUtf8.size(), i));
        *p++ = iByte < 0 ? '?' : static_cast<char>(iByte);
    }
    return static_cast<std::size_t>(p - pZiel);
}

CString AusUtf8(std::string_view sUtf8) {
    CString s;
    s.SetzeUtf8(sUtf8.data(), sUtf8.size());
    return s;
}

bool IstAscii(std::string_view s) {
    const char * p = s.data();
    std::size_t n = s.size();
    std::uint64_t w = 0;
    for (; n >= 8; n -= 8, p += 8)
        w |= wort::Acht(p);
    for (; n > 0; --n)
        w |= static_cast<unsigned char>(*p++);
    return (w & wort::HOCH) == 0;
}

CString::CString(char cZeichen, int iAnzahl)
    : CString(std::string_view(std::string(static_cast<std::size_t>(std::max(iAnzahl, 0)), cZeichen))) {}

std::uint64_t CString::NeuerBlock(std::string_view sBytes) {
    static_assert(__STDCPP_DEFAULT_NEW_ALIGNMENT__ >= alignof(wort::SBlock));
    void * p = ::operator new(sizeof(wort::SBlock) + sBytes.size() + 1);
    auto * pBlock = new (p) wort::SBlock{1, static_cast<std::uint32_t>(sBytes.size())};
    char * pText = static_cast<char *>(p) + sizeof(wort::SBlock);
    std::memcpy(pText, sBytes.data(), sBytes.size());
    pText[sBytes.size()] = 0;
    return reinterpret_cast<std::uintptr_t>(pBlock) | wort::SHARED;
}

void CString::GibBlock(std::uint64_t w) noexcept {
    const wort::SBlock & block = Block(w);
    if (block.iAnzahl.fetch_sub(1, std::memory_order_acq_rel) == 1)
        ::operator delete(const_cast<wort::SBlock *>(&block));
}

std::string_view CString::Gueltig(const char * pBytes) {
    if (pBytes == nullptr) throw std::invalid_argument("CString: no text");
    return pBytes;
}

// Of an array of characters, its last 0 included if it has one.
std::uint64_t CString::WortAusLiteral(std::string_view sUtf8) {
    const std::size_t iEnde = sUtf8.find_last_not_of('\0') + 1;
    std::string s;
    for (std::size_t i = 0; i < iEnde;) {
        const int iByte = wort::Byte1252(wort::LiesUtf8(sUtf8.data(), iEnde, i));
        if (iByte < 0)
            throw std::invalid_argument("a character of this literal is not in Windows-1252: " +
                                        std::string(sUtf8.substr(0, iEnde)));
        s += static_cast<char>(iByte);
    }
    CString sText{std::string_view(s)};
    return std::exchange(sText.m_w, 0);
}

void CString::SetzeBytes(std::string_view sBytes) {
    if (wort::IstShared(m_w) && CSicht(*this).Text() == sBytes) return;
    *this = CString(sBytes);
}

void CString::SetzeLangesUtf8(std::string_view sUtf8) {
    if (IstAscii(sUtf8)) return SetzeBytes(sUtf8);
    char acKurz[512];
    if (sUtf8.size() <= sizeof acKurz) return SetzeBytes({acKurz, AusUtf8(sUtf8, acKurz)});
    std::string s(sUtf8.size(), '\0');
    s.resize(AusUtf8(sUtf8, s.data()));
    SetzeBytes(s);
}

bool CString::GleicherBlock(const CString & s) const {
    return wort::IstShared(s.m_w) && CSicht(*this).Text() == CSicht(s).Text();
}

// Of a text that is not short.
char CString::Zeichen(int iPos) const { return CSicht(*this).c_str()[iPos]; }

void CString::SetAt(int iPos, char cZeichen) {
    if (iPos < 0 || iPos >= GetLength())
        throw std::invalid_argument("CString::SetAt: position outside of the text");
    std::string s = Kopie(*this);
    s[static_cast<std::size_t>(iPos)] = cZeichen;
    *this = CString(std::string_view(s));
}

int CString::VergleicheZeichen(const CString & s) const {
    return CSicht(*this).Text().compare(CSicht(s).Text());
}

int CString::CompareNoCase(const CString & s) const {
    const CSicht a(*this);
    const CSicht b(s);
    const auto Vergleich = std::lexicographical_compare_three_way(
        a.Text().begin(), a.Text().end(), b.Text().begin(), b.Text().end(), [](char ca, char cb) {
            return static_cast<unsigned char>(Klein(ca)) <=> static_cast<unsigned char>(Klein(cb));
        });
    return Vergleich < 0 ? -1 : Vergleich > 0 ? 1 : 0;
}

int CString::Find(char cZeichen, int iAb) const {
    if (iAb < 0 || iAb >= GetLength()) return -1;
    const auto iPos = CSicht(*this).Text().find(cZeichen, static_cast<std::size_t>(iAb));
    return iPos == std::string_view::npos ? -1 : static_cast<int>(iPos);
}

int CString::Find(const CString & sTeil, int iAb) const {
    if (iAb < 0 || iAb > GetLength()) return -1;
    const auto iPos = CSicht(*this).Text().find(CSicht(sTeil).Text(), static_cast<std::size_t>(iAb));
    return iPos == std::string_view::npos ? -1 : static_cast<int>(iPos);
}

CString CString::Left(int iAnzahl) const { return Mid(0, iAnzahl); }

CString CString::Right(int iAnzahl) const {
    const int iLaenge = GetLength();
    return Mid(iLaenge - std::clamp(iAnzahl, 0, iLaenge));
}

CString CString::Mid(int iAb) const { return Mid(iAb, GetLength()); }

CString CString::Mid(int iAb, int iAnzahl) const {
    const int iLaenge = GetLength();
    iAb = std::clamp(iAb, 0, iLaenge);
    iAnzahl = std::clamp(iAnzahl, 0, iLaenge - iAb);
    if (iAnzahl == iLaenge) return *this;
    if (iAnzahl == 0) return {};
    if (wort::IstKurz(m_w)) {
        CString s;
        s.m_w = ((m_w << (8 * iAb)) & (~0ULL << (64 - 8 * iAnzahl))) | static_cast<unsigned>(iAnzahl);
        return s;
    }
    return CString(
        CSicht(*this).Text().substr(static_cast<std::size_t>(iAb), static_cast<std::size_t>(iAnzahl)));
}

CString & CString::MakeUpper() { return Wandle(Gross, 'a', 'z'); }
CString & CString::MakeLower() { return Wandle(Klein, 'A', 'Z'); }

// Texts that the change leaves as they are, the common case of keys, stay without being built anew: short ones that
// have no letter from cVon to cBis nor one beyond ASCII are known by their word.
CString & CString::Wandle(char (*fZeichen)(char), char cVon, char cBis) {
    const std::uint64_t w = m_w & ~0xFFULL;
    if (wort::IstKurz(m_w) && ((w & wort::HOCH) | wort::Zwischen(w, static_cast<unsigned char>(cVon),
                                                                 static_cast<unsigned char>(cBis))) == 0)
        return *this;
    const CSicht sicht(*this);
    const std::string_view sAlt = sicht;
    const auto Bleibt = [fZeichen](char c) { return fZeichen(c) == c; };
    if (std::all_of(sAlt.begin(), sAlt.end(), Bleibt)) return *this;
    std::string s(sAlt);
    std::transform(s.begin(), s.end(), s.begin(), fZeichen);
    return *this = CString(std::string_view(s));
}

CString & CString::Trim() { return TrimRight().TrimLeft(); }

CString & CString::TrimLeft() {
    const CSicht sicht(*this);
    const std::string_view s = sicht;
    const auto it = std::find_if_not(s.begin(), s.end(), IstLuft);
    if (it != s.begin()) *this = CString(s.substr(static_cast<std::size_t>(it - s.begin())));
    return *this;
}

CString & CString::TrimRight() {
    const CSicht sicht(*this);
    std::string_view s = sicht;
    while (!s.empty() && IstLuft(s.back()))
        s.remove_suffix(1);
    if (s.size() != sicht.Text().size()) *this = CString(s);
    return *this;
}

CString & CString::TrimRight(char cZeichen) {
    const CSicht sicht(*this);
    std::string_view s = sicht;
    while (!s.empty() && s.back() == cZeichen)
        s.remove_suffix(1);
    if (s.size() != sicht.Text().size()) *this = CString(s);
    return *this;
}

int CString::Replace(char cAlt, char cNeu) {
    std::string s = Kopie(*this);
    const auto iAnzahl = std::count(s.begin(), s.end(), cAlt);
    std::replace(s.begin(), s.end(), cAlt, cNeu);
    *this = CString(std::string_view(s));
    return static_cast<int>(iAnzahl);
}

int CString::Replace(const CString & sAlt, const CString & sNeu) {
    if (sAlt.IsEmpty()) return 0;
    const CSicht alt(sAlt);
    const CSicht neu(sNeu);
    std::string s = Kopie(*this);
    int iAnzahl = 0;
    for (std::size_t i = s.find(alt.Text()); i != std::string::npos;
         i = s.find(alt.Text(), i + neu.Text().size())) {
        s.replace(i, alt.Text().size(), neu.Text());
        ++iAnzahl;
    }
    *this = CString(std::string_view(s));
    return iAnzahl;
}

int CString::Delete(int iPos, int iAnzahl) {
    if (iPos >= 0 && iPos < GetLength() && iAnzahl > 0)
        *this = Left(iPos) + Mid(iPos).Right(GetLength() - iPos - std::min(iAnzahl, GetLength() - iPos));
    return GetLength();
}

CString & CString::operator+=(const CString & s) { return *this = *this + s; }

CString & CString::operator+=(char cZeichen) { return *this = *this + CString(cZeichen); }

CString operator+(const CString & a, const CString & b) {
    if (a.IsEmpty()) return b;
    if (b.IsEmpty()) return a;
    const CSicht sichtA(a);
    const CSicht sichtB(b);
    const std::string_view sA = sichtA;
    const std::string_view sB = sichtB;
    char acKurz[128];
    if (sA.size() + sB.size() <= sizeof acKurz) {
        std::memcpy(acKurz, sA.data(), sA.size());
        std::memcpy(acKurz + sA.size(), sB.data(), sB.size());
        return CString(std::string_view(acKurz, sA.size() + sB.size()));
    }
    std::string s(sA);
    s += sB;
    return CString(std::string_view(s));
}

std::size_t CString::Hash() const {
    if (wort::IstShared(m_w)) return std::hash<std::string_view>()(CSicht(*this).Text());
    std::uint64_t h = m_w * 0x9E3779B97F4A7C15ULL;
    return h ^ (h >> 32);
}

} // namespace orvostat
