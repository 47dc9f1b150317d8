#include "Spalten.h"

#include "Katalog.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace orvostat {

namespace {

constexpr SSlot KEIN_SLOT{};

const SSlot & Slot(int iSpalte) {
    return iSpalte < 0 || iSpalte > KATALOG_LETZTER ? KEIN_SLOT
                                                    : KATALOG[static_cast<std::size_t>(iSpalte)].slot;
}

// ---- writing

constexpr std::size_t LUFT = 32; // more room than a column of any form but text needs

// Writes a column of any other form than text at p; the end of it.
char * SchreibeKurz(char * p, const SSlot & slot, const CStatLines & line) {
    char c = 0;
    switch (slot.eForm) {
    case EForm::Ohne:
    case EForm::Text:
        return p;
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
    if (c != 0) *p++ = c;
    return p;
}

// Writes a column at p; the end of it, with LUFT behind it, or null where there is not so much room before pGrenze.
inline char * SchreibeSpalte(char * p, char * pGrenze, const SSlot & slot, const CStatLines & line) {
    if (static_cast<std::size_t>(pGrenze - p) < 3 * LUFT) return nullptr;
    if (slot.eForm != EForm::Text) return SchreibeKurz(p, slot, line);
    const CString & sText = line.*slot.pText;
    if (sText.IsEmpty()) return p;
    const CSicht sicht(sText);
    if (static_cast<std::size_t>(pGrenze - p) < sicht.Text().size() + 3 * LUFT) return nullptr;
    return sicht.Kopiere(p);
}

void Ersetze(char * p, std::size_t n, STrennung trennung) {
    for (char * const pEnde = p + n; p < pEnde; ++p) {
        if (*p == trennung.cDelimiter) *p = trennung.cErsatz;
        if (*p == '\n' || *p == '\r') *p = ' ';
    }
}

// The high bit of each byte in which the two agree.
inline std::uint64_t Gleich(std::uint64_t w, std::uint64_t wMuster) {
    const std::uint64_t x = w ^ wMuster;
    return ~(((x & ~wort::HOCH) + ~wort::HOCH) | x | ~wort::HOCH);
}

// How many bytes have their high bit set; no other bit is.
inline std::size_t Anzahl(std::uint64_t w) { return static_cast<std::size_t>((w >> 7) * wort::JE >> 56); }

// How many of the characters are delimiters, and a huge number where there is a line end among them.
std::size_t Trennzeichen(std::string_view s, char cDelimiter) {
    constexpr std::size_t ZEILENENDE = 1ULL << 32;
    const std::uint64_t wMuster = static_cast<unsigned char>(cDelimiter) * wort::JE;
    std::size_t iAnzahl = 0;
    std::uint64_t wEnden = 0;
    for (; s.size() >= 8; s.remove_prefix(8)) {
        std::uint64_t w = 0;
        std::memcpy(&w, s.data(), 8);
        iAnzahl += Anzahl(Gleich(w, wMuster));
        wEnden |= Gleich(w, '\n' * wort::JE) | Gleich(w, '\r' * wort::JE);
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

} // namespace

namespace {

// Writes the columns with a delimiter behind each, bSorgsam looking into every text; the end of them, or null where the
// room does not suffice.
template <bool bSorgsam>
char * SchreibeSpalten(char * p, char * pGrenze, const int * pStruct, const CStatLines & line,
                       STrennung trennung) {
    for (; *pStruct != -1; ++pStruct) {
        char * const pAnfang = p;
        p = SchreibeSpalte(p, pGrenze, Slot(*pStruct), line);
        if (p == nullptr) return nullptr;
        if constexpr (bSorgsam) Ersetze(pAnfang, static_cast<std::size_t>(p - pAnfang), trennung);
        *p++ = trennung.cDelimiter;
    }
    return p;
}

std::size_t Spaltenzahl(const int * pStruct) {
    std::size_t i = 0;
    while (pStruct[i] != -1)
        ++i;
    return i;
}

} // namespace

std::string_view BaueZeile(std::string & sPuffer, const int * pStruct, const CStatLines & line,
                           STrennung trennung) {
    const auto Baue = [&](auto fSchreibe) {
        char * pEnde = nullptr;
        while ((pEnde = fSchreibe(sPuffer.data(), sPuffer.data() + sPuffer.size(), pStruct, line,
                                  trennung)) == nullptr)
            sPuffer.resize(2 * sPuffer.size() + 64 * LUFT);
        return static_cast<std::size_t>(pEnde - sPuffer.data());
    };
    const std::size_t iSpalten = Spaltenzahl(pStruct);
    std::size_t n = Baue(SchreibeSpalten<false>);
    if (Trennzeichen(std::string_view(sPuffer).substr(0, n), trennung.cDelimiter) != iSpalten)
        n = Baue(SchreibeSpalten<true>);
    if (n == 0) sPuffer.resize(++n); // no column
    sPuffer[n - 1] = '\n';           // in the place of the last delimiter
    return std::string_view(sPuffer).substr(0, n);
}

CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung) {
    const int aiStruct[] = {iSpalte, -1};
    std::string sPuffer;
    if (iSpalte == -1) return {};
    const std::string_view s = BaueZeile(sPuffer, aiStruct, line, trennung);
    return CString(s.substr(0, s.size() - 1));
}

namespace {

void SetzeKurz(const SSlot & slot, std::string_view sWert, CStatLines & line) {
    switch (slot.eForm) {
    case EForm::Ohne:
    case EForm::Text:
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

// pLesbar is the end of what may be read behind the text.
inline void Setze(const SSlot & slot, std::string_view sWert, const char * pLesbar, CStatLines & line) {
    if (slot.eForm != EForm::Text) return SetzeKurz(slot, sWert, line);
    const bool bKurz = sWert.size() <= wort::KURZ_MAX && pLesbar - sWert.data() >= 8;
    line.*slot.pText = bKurz ? CString::AusAcht(sWert.data(), sWert.size()) : CString(sWert);
}

// The positions of a character in a text, found eight characters at a time and handed out in blocks.
class CPositionen {
public:
    CPositionen(std::string_view s, char c) : m_s(s), m_wMuster(static_cast<unsigned char>(c) * wort::JE) {}
    // The next positions in order; empty behind the last one.
    std::span<const std::size_t> Naechste() {
        std::size_t n = 0;
        while (m_i < m_s.size() && n <= BLOCK) {
            std::uint64_t wTreffer = Treffer();
            const std::size_t iAnzahl = Anzahl(wTreffer);
            // Four at a time, needed or not: the processor cannot foresee how many there are.
            for (std::size_t i = 0; i < iAnzahl; i += 4)
                for (std::size_t k = 0; k < 4; ++k) {
                    m_ai[n + i + k] = m_i + static_cast<std::size_t>(std::countr_zero(wTreffer)) / 8;
                    wTreffer &= wTreffer - 1;
                }
            n += iAnzahl;
            m_i += 8;
        }
        return {m_ai, n};
    }

private:
    static constexpr std::size_t BLOCK = 64;
    // Marks the characters among the next eight, each by the high bit of its byte, the first one lowest.
    [[nodiscard]] std::uint64_t Treffer() const {
        static_assert(std::endian::native == std::endian::little);
        const std::size_t n = m_s.size() - m_i;
        std::uint64_t w = 0;
        if (n >= 8)
            std::memcpy(&w, m_s.data() + m_i, 8);
        else
            std::memcpy(&w, m_s.data() + m_i, n);
        return Gleich(w, m_wMuster) & (n >= 8 ? ~0ULL : (1ULL << (8 * n)) - 1);
    }

    std::string_view m_s;
    std::uint64_t m_wMuster;
    std::size_t m_i = 0;          // where the next eight characters begin
    std::size_t m_ai[BLOCK + 16]; // set as far as Naechste gives them
};

// Puts columns into the record one behind the other.
class CSpaltenleser {
public:
    CSpaltenleser(std::span<const int> vStruct, std::span<const int> vFehlerStruct, const char * pEnde,
                  CStatLines & line)
        : m_v(vStruct), m_vStruct(vStruct), m_vFehlerStruct(vFehlerStruct), m_pEnde(pEnde), m_line(line) {}
    void Nimm(std::string_view sWert) {
        if (m_iSpalte >= m_v.size()) throw std::invalid_argument("a line has more columns than its layout");
        const int iSpalte = m_v[m_iSpalte];
        Setze(Slot(iSpalte), sWert, m_pEnde, m_line);
        // The line's kind decides on all columns behind it.
        if (m_iSpalte == 0 || iSpalte == 0) m_v = m_line.ART == "E" ? m_vFehlerStruct : m_vStruct;
        ++m_iSpalte;
    }

private:
    std::span<const int> m_v; // the layout of the columns ahead
    std::span<const int> m_vStruct;
    std::span<const int> m_vFehlerStruct;
    const char * m_pEnde;
    CStatLines & m_line;
    std::size_t m_iSpalte = 0;
};

} // namespace

void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line) {
    Setze(Slot(iSpalte), sWert, sWert.data() + sWert.size(), line);
}

bool LiesSpalten(std::string_view s, char cDelimiter, std::span<const int> vStruct,
                 std::span<const int> vFehlerStruct, CStatLines & line) {
    if (s.find(cDelimiter) == std::string_view::npos) return false;
    CSpaltenleser leser(vStruct, vFehlerStruct, s.data() + s.size(), line);
    CPositionen positionen(s, cDelimiter);
    const std::size_t iLaenge = s.size();
    std::size_t iAb = 0;
    for (auto v = positionen.Naechste(); !v.empty() || iAb < iLaenge; v = positionen.Naechste()) {
        if (v.empty()) v = {&iLaenge, 1}; // the column behind the last delimiter
        for (const std::size_t iEnde : v) {
            leser.Nimm({s.data() + iAb, iEnde - iAb});
            iAb = iEnde + 1;
        }
    }
    return true;
}

} // namespace orvostat
