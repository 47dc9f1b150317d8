#include "orvostatbs/host/Textfunktionen.h"

#include "orvostatbs/host/Dateispeicher.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Umgebung.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>

namespace orvostat {

namespace {

std::string_view OhneBlanksRechts(std::string_view s) {
    const auto iLetztes = s.find_last_not_of(' ');
    return s.substr(0, iLetztes == std::string_view::npos ? 0 : iLetztes + 1);
}

std::string_view OhneBlanks(std::string_view s) {
    return OhneBlanksRechts(s.substr(std::min(s.find_first_not_of(' '), s.size())));
}

// The part of s that a sight shows; the text itself where nothing was taken off.
CString Teil(const CString & s, std::string_view sTeil) {
    return static_cast<int>(sTeil.size()) == s.GetLength() ? s : CString(sTeil);
}

// The letters of the sort key: one or two for each byte.
struct SBuchstaben {
    char ac[2] = {0, 0};
};

consteval std::array<SBuchstaben, 256> MakeSortierung() {
    // The capitals' block from 0xC0 on; the small letters stand 0x20 behind. A dot stays as it is.
    constexpr std::string_view ERSTER = "AAAAAAACEEEEIIIIDNOOOOO.OUUUUYTS";
    std::array<SBuchstaben, 256> vBuchstaben{};
    for (std::size_t i = 0; i < 256; ++i)
        vBuchstaben[i].ac[0] = static_cast<char>(i >= 'a' && i <= 'z' ? i - 0x20 : i);
    for (std::size_t i = 0; i < ERSTER.size(); ++i)
        if (ERSTER[i] != '.') vBuchstaben[0xC0 + i].ac[0] = vBuchstaben[0xE0 + i].ac[0] = ERSTER[i];
    vBuchstaben[0xFF].ac[0] = 'Y'; // where the block repeats "ß"
    const auto Paar = [&](std::size_t iGross, std::size_t iKlein, char cErster, char cZweiter) {
        vBuchstaben[iGross] = vBuchstaben[iKlein] = {{cErster, cZweiter}};
    };
    Paar(0xC6, 0xE6, 'A', 'E');
    Paar(0xDE, 0xFE, 'T', 'H');
    Paar(0xDF, 0xDF, 'S', 'S');
    Paar(0x8C, 0x9C, 'O', 'E');
    Paar(0x8A, 0x9A, 'S', 0);
    Paar(0x8E, 0x9E, 'Z', 0);
    Paar(0x9F, 0x9F, 'Y', 0);
    Paar(0xA0, 0xA0, ' ', 0); // the blank that does not break
    return vBuchstaben;
}

constexpr std::array<SBuchstaben, 256> SORTIERUNG = MakeSortierung();

// The digits and the sign of a number's text, taken one by one from its end.
class CZiffernVonRechts {
public:
    explicit CZiffernVonRechts(std::string_view s) : m_s(OhneBlanksRechts(s)) {}
    // Passes over what is no digit and remembers a "-".
    void Ueberspringe() {
        for (; !Leer() && !ismxdigit(m_s.back()); m_s.remove_suffix(1))
            if (m_s.back() == '-') m_cVorzeichen = '-';
    }
    [[nodiscard]] bool Leer() const { return m_s.empty(); }
    [[nodiscard]] char Vorzeichen() const { return m_cVorzeichen; }
    // The next digit, cSonst where none is left.
    char Nimm(char cSonst) {
        if (Leer()) return cSonst;
        const char c = m_s.back();
        m_s.remove_suffix(1);
        return c;
    }

private:
    std::string_view m_s;
    char m_cVorzeichen = ' ';
};

// What a place of a picture becomes. The sign takes a digit's place with it.
char Bildstelle(char cBild, CZiffernVonRechts & ziffern) {
    switch (cBild) {
    case '.':
        return ziffern.Leer() ? ' ' : '.';
    case 'V':
        ziffern.Nimm(' ');
        return ziffern.Vorzeichen();
    case 'X':
        return ziffern.Nimm('0');
    case 'Z':
        return ziffern.Nimm(' ');
    default:
        return cBild;
    }
}

} // namespace

CString GetMidStr(const CString & s, int iPos, int iLen) {
    return iLen == -1 ? s.Mid(iPos) : s.Mid(iPos, iLen);
}

CString Trim(const CString & s) {
    const CSicht sicht(s);
    return Teil(s, OhneBlanks(sicht));
}

CString TrimRight(const CString & s) {
    const CSicht sicht(s);
    return Teil(s, OhneBlanksRechts(sicht));
}

CString RemoveBlanks(const CString & s) {
    if (s.Find(' ') < 0) return s;
    std::string sErgebnis(s.Sicht().Text());
    std::erase(sErgebnis, ' ');
    return CString(std::string_view(sErgebnis));
}

CString Blank(int iLen) { return CString(' ', iLen); }

bool Blank(const CString & s) { return s.Sicht().Text().find_first_not_of(' ') == std::string_view::npos; }

CString RightFix(const CString & s, int iLen, char cFill) {
    const int iFehlt = std::max(iLen, 0) - s.GetLength();
    return iFehlt > 0 ? CString(cFill, iFehlt) + s : s.Right(iLen);
}

CString LeftFix(const CString & s, int iLen, char cFill) {
    const int iFehlt = std::max(iLen, 0) - s.GetLength();
    return iFehlt > 0 ? s + CString(cFill, iFehlt) : s.Left(iLen);
}

void ReplaceCharWith(CString & s, char cOld, char cNew, int) {
    if (s.Find(cOld) >= 0) s.Replace(cOld, cNew);
}

void SeparatedStrToVec(const CString & s, char cSep, std::vector<CString> & v) {
    const CString sText = s; // may be one of v's own
    v.clear();
    if (sText.IsEmpty()) return;
    const CSicht sicht(sText);
    std::string_view sRest = sicht;
    for (auto i = sRest.find(cSep); i != std::string_view::npos; i = sRest.find(cSep)) {
        v.emplace_back(sRest.substr(0, i));
        sRest.remove_prefix(i + 1);
    }
    v.emplace_back(sRest);
}

CString itoc(std::int64_t iValue) {
    char ac[24];
    const auto ergebnis = std::to_chars(ac, ac + sizeof ac, iValue);
    return CString(std::string_view(ac, static_cast<std::size_t>(ergebnis.ptr - ac)));
}

int MulDiv(int iZahl, int iZaehler, int iNenner) {
    if (iNenner == 0) return -1;
    const std::int64_t iProdukt = std::int64_t{iZahl} * iZaehler;
    const std::int64_t iBetragNenner = std::abs(std::int64_t{iNenner});
    const std::int64_t iBetrag = (std::abs(iProdukt) + iBetragNenner / 2) / iBetragNenner;
    const std::int64_t iErgebnis = (iProdukt < 0) == (iNenner < 0) ? iBetrag : -iBetrag;
    const bool bPasst =
        iErgebnis >= std::numeric_limits<int>::min() && iErgebnis <= std::numeric_limits<int>::max();
    return bPasst ? static_cast<int>(iErgebnis) : -1;
}

int UStKey2MwStSatz(const CString & sKey) {
    const CString s = Trim(sKey);
    if (s == "h") return 7;
    if (s == "g" || s == "1") return 19;
    const CSicht sicht(s);
    return std::all_of(sicht.Text().begin(), sicht.Text().end(), ismxdigit) ? Zahl(s) : 0;
}

CString CorrectGebDate(const CString & sDatum) {
    constexpr int JAHRHUNDERT = 100;
    if (!GueltigesDatum(sDatum) || sDatum <= GetMxDate()) return sDatum;
    const int iDatum = Zahl(sDatum);
    const int iJahr = iDatum / 10'000 - JAHRHUNDERT;
    if (iJahr < 1) return sDatum;
    const int iMonat = iDatum / 100 % 100;
    const int iTag = std::min(iDatum % 100, LastDayI(iMonat, iJahr));
    return RightFix(itoc(iJahr * 10'000 + iMonat * 100 + iTag), 8, '0');
}

bool FileExists(const CString & sPfad) { return Plattendateien().Existiert(sPfad); }

CString CMxField::MakeKY(const CString & s, int iLen) {
    if (iLen <= 0) return {};
    const CSicht sicht(s);
    const auto iGrenze = static_cast<std::size_t>(iLen);
    std::string sKey;
    sKey.reserve(std::min(sicht.Text().size() + 4, iGrenze + 1));
    for (const char c : sicht.Text()) {
        if (sKey.size() >= iGrenze) break;
        const SBuchstaben & buchstaben = SORTIERUNG[static_cast<unsigned char>(c)];
        sKey += buchstaben.ac[0];
        if (buchstaben.ac[1] != 0) sKey += buchstaben.ac[1];
    }
    return CString(std::string_view(sKey).substr(0, iGrenze));
}

std::int64_t Zahl64(const CString & s) {
    const CSicht sicht(s);
    const char * p = sicht.c_str(); // ends in a 0
    while (*p == ' ' || (*p >= '\t' && *p <= '\r'))
        ++p;
    const bool bNegativ = *p == '-';
    if (*p == '-' || *p == '+') ++p;
    const std::uint64_t iGrenze =
        std::uint64_t{std::numeric_limits<std::int64_t>::max()} + (bNegativ ? 1 : 0);
    std::uint64_t iWert = 0;
    for (; ismxdigit(*p); ++p) {
        const auto iZiffer = static_cast<std::uint64_t>(*p - '0');
        if (iWert > (iGrenze - iZiffer) / 10) {
            iWert = iGrenze;
            break;
        }
        iWert = iWert * 10 + iZiffer;
    }
    return static_cast<std::int64_t>(bNegativ ? 0 - iWert : iWert);
}

int Zahl(const CString & s) {
    return static_cast<int>(std::clamp<std::int64_t>(Zahl64(s), std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

CString GepackterBetrag(const CString & sBetraege, int iIndex, int iBreite) {
    const std::int64_t iPos = std::int64_t{iIndex} * iBreite;
    const auto iGrenze = std::int64_t{std::numeric_limits<int>::max()};
    return GetMidStr(sBetraege, static_cast<int>(std::clamp(iPos, -iGrenze, iGrenze)), iBreite);
}

CString BildeBild(const CString & sWert, const CString & sBild) {
    const CSicht wert(sWert);
    CZiffernVonRechts ziffern(wert);
    std::string sErgebnis(sBild.Sicht().Text());
    for (auto it = sErgebnis.rbegin(); it != sErgebnis.rend(); ++it) {
        ziffern.Ueberspringe();
        *it = Bildstelle(*it, ziffern);
    }
    return CString(std::string_view(sErgebnis));
}

} // namespace orvostat
