#include "Spalten.h"

#include "Katalog.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>

namespace orvostat {

namespace {

constexpr SSlot KEIN_SLOT;

const SSlot & Slot(int iSpalte) {
    return iSpalte < 0 || iSpalte > KATALOG_LETZTER ? KEIN_SLOT
                                                    : KATALOG[static_cast<std::size_t>(iSpalte)].slot;
}

// ---- writing

constexpr std::size_t LUFT = 32; // more room than a column of any form but text needs

// Writes a column at p, where there is room for a text and LUFT; the end of it.
inline char * SchreibeSpalte(char * p, const SSlot & slot, const CStatLines & line) {
    char c = 0;
    switch (slot.eForm) {
    case EForm::Ohne:
        return p;
    case EForm::Text:
        return CSicht(line.*slot.pText).Kopiere(p);
    case EForm::Zeichen:
        c = line.*slot.pZeichen;
        break;
    case EForm::Zeichenzahl:
        c = static_cast<char>(line.*slot.pZeichenzahl);
        break;
    case EForm::FlaggeEins:
    case EForm::FlaggeZahl:
    case EForm::FlaggeNichtNull:
        c = line.*slot.pFlagge ? '1' : '0';
        break;
    case EForm::Zahl:
        return std::to_chars(p, p + LUFT, static_cast<std::uint32_t>(line.*slot.pZahl)).ptr;
    }
    *p = c;
    return c == 0 ? p : p + 1;
}

std::size_t Platzbedarf(const SSlot & slot, const CStatLines & line) {
    return LUFT + (slot.eForm == EForm::Text ? static_cast<std::size_t>((line.*slot.pText).GetLength()) : 0);
}

// Puts a column's text behind the first n characters of s, which it enlarges where that is needed, and counts it in.
void HaengeAn(std::string & s, std::size_t & n, const SSlot & slot, const CStatLines & line) {
    const std::size_t iBedarf = Platzbedarf(slot, line);
    if (s.size() - n < iBedarf) s.resize(2 * (s.size() + iBedarf));
    n = static_cast<std::size_t>(SchreibeSpalte(s.data() + n, slot, line) - s.data());
}

void Ersetze(char * p, std::size_t n, STrennung trennung) {
    for (char * const pEnde = p + n; p < pEnde; ++p) {
        if (*p == trennung.cDelimiter) *p = trennung.cErsatz;
        if (*p == '\n' || *p == '\r') *p = ' ';
    }
}

// How many of the characters are delimiters, and a huge number where there is a line end among them.
std::size_t Trennzeichen(std::string_view s, char cDelimiter) {
    using namespace wort;
    constexpr std::size_t ZEILENENDE = 1ULL << 32;
    const auto Gleich = [](std::uint64_t w, char c) { // the high bit of each byte that is c
        const std::uint64_t x = w ^ (static_cast<unsigned char>(c) * JE);
        return ~(((x & ~HOCH) + ~HOCH) | x | ~HOCH);
    };
    std::size_t iAnzahl = 0;
    std::uint64_t wEnden = 0;
    for (; s.size() >= 8; s.remove_prefix(8)) {
        std::uint64_t w = 0;
        std::memcpy(&w, s.data(), 8);
        iAnzahl += static_cast<std::size_t>((Gleich(w, cDelimiter) >> 7) * JE >> 56);
        wEnden |= Gleich(w, '\n') | Gleich(w, '\r');
    }
    for (const char c : s) {
        iAnzahl += c == cDelimiter ? 1 : 0;
        wEnden |= c == '\n' || c == '\r' ? 1 : 0;
    }
    return wEnden == 0 ? iAnzahl : ZEILENENDE;
}

// ---- reading

unsigned long LiesMarken(std::string_view sWert) {
    const std::int64_t i = Zahl64(CString(sWert));
    const std::int64_t iUnten = std::numeric_limits<std::int32_t>::min();
    const std::int64_t iOben = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp(i, iUnten, iOben));
}

char Erstes(std::string_view s) { return s.empty() ? '\0' : s[0]; }

// The line of a record that has a delimiter or a line end in one of its texts, with a delimiter behind every column.
std::size_t BaueSorgsam(std::string & sPuffer, const int * pStruct, const CStatLines & line, STrennung trennung) {
    std::size_t n = 0;
    for (const int * p = pStruct; *p != -1; ++p) {
        const std::size_t iAb = n;
        HaengeAn(sPuffer, n, Slot(*p), line);
        Ersetze(sPuffer.data() + iAb, n - iAb, trennung);
        sPuffer[n++] = trennung.cDelimiter;
    }
    return n;
}

} // namespace

std::string_view BaueZeile(std::string & sPuffer, const int * pStruct, const CStatLines & line,
                           STrennung trennung) {
    std::size_t n = 0;
    std::size_t iTrenner = 0;
    for (const int * p = pStruct; *p != -1; ++p) {
        HaengeAn(sPuffer, n, Slot(*p), line);
        sPuffer[n++] = trennung.cDelimiter;
        ++iTrenner;
    }
    if (Trennzeichen(std::string_view(sPuffer).substr(0, n), trennung.cDelimiter) != iTrenner)
        n = BaueSorgsam(sPuffer, pStruct, line, trennung);
    if (n == 0) sPuffer.resize(++n);
    sPuffer[n - 1] = '\n';
    return std::string_view(sPuffer).substr(0, n);
}

CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung) {
    std::string s;
    std::size_t n = 0;
    HaengeAn(s, n, Slot(iSpalte), line);
    Ersetze(s.data(), n, trennung);
    return CString(std::string_view(s).substr(0, n));
}

void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line) {
    const SSlot & slot = Slot(iSpalte);
    switch (slot.eForm) {
    case EForm::Ohne:
        break;
    case EForm::Text:
        line.*slot.pText = CString(sWert);
        break;
    case EForm::Zeichen:
        line.*slot.pZeichen = Erstes(sWert);
        break;
    case EForm::Zeichenzahl:
        line.*slot.pZeichenzahl = Erstes(sWert);
        break;
    case EForm::FlaggeEins:
        line.*slot.pFlagge = sWert == "1";
        break;
    case EForm::FlaggeZahl:
        line.*slot.pFlagge = Zahl(CString(sWert)) != 0;
        break;
    case EForm::FlaggeNichtNull:
        line.*slot.pFlagge = sWert != "0";
        break;
    case EForm::Zahl:
        line.*slot.pZahl = LiesMarken(sWert);
        break;
    }
}

} // namespace orvostat
