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

constexpr SSlot KEIN_SLOT;

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

// How many of the characters are delimiters, and a huge number where there is a line end among them.
std::size_t Trennzeichen(std::string_view s, char cDelimiter) {
    constexpr std::size_t ZEILENENDE = 1ULL << 32;
    const std::uint64_t wMuster = static_cast<unsigned char>(cDelimiter) * wort::JE;
    std::size_t iAnzahl = 0;
    std::uint64_t wEnden = 0;
    for (; s.size() >= 8; s.remove_prefix(8)) {
        std::uint64_t w = 0;
        std::memcpy(&w, s.data(), 8);
        iAnzahl += static_cast<std::size_t>((Gleich(w, wMuster) >> 7) * wort::JE >> 56);
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

// Cuts a line at its delimiters, finding them eight characters at a time. What stands behind the last one is a column
// if it is not empty.
class CSpaltenteiler {
public:
    CSpaltenteiler(std::string_view s, char cDelimiter)
        : m_s(s), m_wMuster(static_cast<unsigned char>(cDelimiter) * wort::JE) {}
    bool Naechste(std::string_view & sWert) {
        while (m_wTreffer == 0 && m_iGesucht < m_s.size())
            Suche();
        if (m_iAb >= m_s.size()) return false;
        const std::size_t iEnde =
            m_wTreffer == 0 ? m_s.size()
                            : m_iGesucht - 8 + static_cast<std::size_t>(std::countr_zero(m_wTreffer)) / 8;
        sWert = std::string_view(m_s.data() + m_iAb, iEnde - m_iAb);
        m_wTreffer &= m_wTreffer - 1;
        m_iAb = iEnde + 1;
        return true;
    }

private:
    // Marks the delimiters among the next eight characters, each by the high bit of its byte, the first one lowest.
    void Suche() {
        static_assert(std::endian::native == std::endian::little);
        const std::size_t n = m_s.size() - m_iGesucht;
        std::uint64_t w = 0;
        if (n >= 8)
            std::memcpy(&w, m_s.data() + m_iGesucht, 8);
        else
            std::memcpy(&w, m_s.data() + m_iGesucht, n);
        m_wTreffer = Gleich(w, m_wMuster);
        if (n < 8) m_wTreffer &= (1ULL << (8 * n)) - 1;
        m_iGesucht += 8;
    }

    std::string_view m_s;
    std::uint64_t m_wMuster;
    std::uint64_t m_wTreffer = 0;
    std::size_t m_iGesucht = 0; // up to here delimiters have been looked for
    std::size_t m_iAb = 0;      // the next column
};

} // namespace

void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line) {
    Setze(Slot(iSpalte), sWert, sWert.data() + sWert.size(), line);
}

bool LiesSpalten(std::string_view s, char cDelimiter, std::span<const int> vStruct,
                 std::span<const int> vFehlerStruct, CStatLines & line) {
    if (s.find(cDelimiter) == std::string_view::npos) return false;
    CSpaltenteiler teiler(s, cDelimiter);
    std::string_view sWert;
    for (std::size_t iSpalte = 0; teiler.Naechste(sWert); ++iSpalte) {
        const std::span<const int> v = iSpalte > 0 && line.ART == "E" ? vFehlerStruct : vStruct;
        if (iSpalte >= v.size()) throw std::invalid_argument("a line has more columns than its layout");
        Setze(Slot(v[iSpalte]), sWert, s.data() + s.size(), line);
    }
    return true;
}

} // namespace orvostat
