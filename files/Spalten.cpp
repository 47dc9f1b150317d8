#include "Spalten.h"

#include "Katalog.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
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

// A line being built in a text that has room behind what is written.
class CBau {
public:
    explicit CBau(std::string & s) : m_s(s) {
        if (m_s.size() < RAUM) m_s.resize(RAUM);
    }
    void Zeichen(char c) {
        Platz(1);
        m_s[m_n++] = c;
    }
    void Text(const CString & sText) {
        const CSicht sicht(sText);
        Bytes(sicht);
    }
    void Bytes(std::string_view s) {
        Platz(s.size());
        std::memcpy(m_s.data() + m_n, s.data(), s.size());
        m_n += s.size();
    }
    [[nodiscard]] std::size_t Laenge() const { return m_n; }
    [[nodiscard]] char * Ab(std::size_t i) { return m_s.data() + i; }
    void Schliesse() { m_s.resize(m_n); }

private:
    static constexpr std::size_t RAUM = 1024;
    void Platz(std::size_t n) {
        if (m_s.size() - m_n < n) m_s.resize(2 * (m_s.size() + n));
    }
    std::string & m_s;
    std::size_t m_n = 0;
};

void HaengeAn(CBau & bau, const SSlot & slot, const CStatLines & line) {
    switch (slot.eForm) {
    case EForm::Ohne:
        break;
    case EForm::Text:
        bau.Text(line.*slot.pText);
        break;
    case EForm::Zeichen:
        if (line.*slot.pZeichen != 0) bau.Zeichen(line.*slot.pZeichen);
        break;
    case EForm::Zeichenzahl:
        if (line.*slot.pZeichenzahl != 0) bau.Zeichen(static_cast<char>(line.*slot.pZeichenzahl));
        break;
    case EForm::FlaggeEins:
    case EForm::FlaggeZahl:
    case EForm::FlaggeNichtNull:
        bau.Zeichen(line.*slot.pFlagge ? '1' : '0');
        break;
    case EForm::Zahl:
        bau.Text(itoc(static_cast<std::uint32_t>(line.*slot.pZahl)));
        break;
    }
}

void Ersetze(char * p, std::size_t n, STrennung trennung) {
    for (char * const pEnde = p + n; p < pEnde; ++p) {
        if (*p == trennung.cDelimiter) *p = trennung.cErsatz;
        if (*p == '\n' || *p == '\r') *p = ' ';
    }
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

void BaueZeile(std::string & sZeile, const int * pStruct, const CStatLines & line, STrennung trennung) {
    CBau bau(sZeile);
    for (const int * p = pStruct; *p != -1; ++p) {
        if (p != pStruct) bau.Zeichen(trennung.cDelimiter);
        const std::size_t iAb = bau.Laenge();
        HaengeAn(bau, Slot(*p), line);
        Ersetze(bau.Ab(iAb), bau.Laenge() - iAb, trennung);
    }
    bau.Zeichen('\n');
    bau.Schliesse();
}

CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung) {
    std::string s;
    CBau bau(s);
    HaengeAn(bau, Slot(iSpalte), line);
    Ersetze(bau.Ab(0), bau.Laenge(), trennung);
    return CString(std::string_view(s).substr(0, bau.Laenge()));
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
