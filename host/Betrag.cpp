#include "orvostatbs/host/Betrag.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace orvostat {

namespace {

__extension__ typedef unsigned __int128 UInt128;

constexpr std::size_t NACHKOMMA = 8; // decimals of a value
constexpr std::uint64_t EINHEITEN_JE_CENT = 1'000'000;
constexpr std::int64_t GROESSTER = std::numeric_limits<std::int64_t>::max(); // and its negative the smallest

// A number as a fraction, without its sign. Everything that a double can say to an amount fits in.
struct SBruch {
    UInt128 iZaehler, iNenner;
};

// Council Regulation (EC) No 2866/98: 1 euro is 1.95583 of the old currency.
constexpr int KURS_ZAEHLER = 195583;
constexpr int KURS_NENNER = 100000;

// ---- Whole numbers -------------------------------------------------------------------------------------------------

// A value without its sign, and one put together again, the largest where it is larger.
constexpr std::uint64_t OhneVorzeichen(std::int64_t i) {
    return i < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(i) : static_cast<std::uint64_t>(i);
}
constexpr std::int64_t MitVorzeichen(std::uint64_t i, bool bMinus) {
    const auto iWert = static_cast<std::int64_t>(std::min(i, static_cast<std::uint64_t>(GROESSTER)));
    return bMinus ? -iWert : iWert;
}

std::int64_t Summe(std::int64_t iA, std::int64_t iB) {
    std::int64_t iSumme = 0;
    if (__builtin_add_overflow(iA, iB, &iSumme) || iSumme < -GROESSTER)
        return iA < 0 ? -GROESSTER : GROESSTER;
    return iSumme;
}

// What is left of a value when the rest behind it is cut off. A last digit 0 or 5 would lie to a later rounding or
// difference about that rest, so it goes one up.
std::uint64_t Geschnitten(std::uint64_t iWert, bool bRest) {
    return iWert + (bRest && iWert % 5 == 0 ? 1 : 0);
}

// The same of a product's quotient; the largest where it does not fit. Rare, and kept out of the way of the others.
[[gnu::noinline]] std::uint64_t Geteilt(UInt128 iProdukt, UInt128 iNenner) {
    const UInt128 iGanze = iProdukt / iNenner;
    if (iGanze >= static_cast<std::uint64_t>(GROESSTER)) return GROESSTER;
    return Geschnitten(static_cast<std::uint64_t>(iGanze), iProdukt % iNenner != 0);
}

// Most products of the practice fit in 64 bits, where a division is several times as fast.
std::uint64_t MalGeteilt(std::uint64_t iWert, std::uint64_t iZaehler, std::uint64_t iNenner) {
    std::uint64_t iProdukt = 0;
    if (__builtin_mul_overflow(iWert, iZaehler, &iProdukt))
        return Geteilt(static_cast<UInt128>(iWert) * iZaehler, iNenner);
    return Geschnitten(iProdukt / iNenner, iProdukt % iNenner != 0);
}

// The same with a fraction of any size: what overflows the product overflows the result as well.
std::uint64_t MalGeteilt(std::uint64_t iWert, const SBruch & bruch) {
    UInt128 iProdukt = 0;
    if (__builtin_mul_overflow(UInt128{iWert}, bruch.iZaehler, &iProdukt)) return GROESSTER;
    return Geteilt(iProdukt, bruch.iNenner);
}

// ---- Doubles -------------------------------------------------------------------------------------------------------

// The powers of ten that doubles hold exactly.
constexpr std::array<double, 23> ZEHNER = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                           1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The whole number nearest to d times a power of ten; the product's own rounding is taken back.
double Ganze(double d, double dZehner) {
    const double dGanze = std::round(d * dZehner);
    return dGanze + std::round(std::fma(d, dZehner, -dGanze));
}

// The power of ten of as many decimals as a double means: as many as give the very double, if those of an amount do;
// else as few as lie beside it by no more than the errors of a few multiplications. A double without such ones is
// below 1e-7, and with 22 decimals near enough for any amount.
double Zehner(double d) {
    for (std::size_t i = 0; i <= NACHKOMMA; ++i)
        if (Ganze(d, ZEHNER[i]) / ZEHNER[i] == d) return ZEHNER[i];
    const double dSpielraum = d * 4 * std::numeric_limits<double>::epsilon();
    for (const double dZehner : ZEHNER)
        if (std::abs(Ganze(d, dZehner) / dZehner - d) <= dSpielraum) return dZehner;
    return ZEHNER.back();
}

SBruch Dezimal(double dZahl) {
    const double d = std::min(std::abs(dZahl), 0x1p63);
    const double dNenner = Zehner(d);
    return {static_cast<UInt128>(Ganze(d, dNenner)), static_cast<UInt128>(dNenner)};
}

bool IstZiffer(char c) { return c >= '0' && c <= '9'; }
bool IstVorzeichen(char c) { return c == '-' || c == '+'; }

// ---- Reading -------------------------------------------------------------------------------------------------------

// How a number is written: its decimal point, what stands between thousands (0 nothing), and the place of its unit.
struct SZahlform {
    char cKomma;
    char cTausender;
    std::size_t iSkala;
};
constexpr SZahlform HUNDERTSTEL{'.', 0, 2};
constexpr SZahlform ZEHNTAUSENDSTEL{'.', 0, 4};
constexpr SZahlform ANZEIGE{',', '.', 0};

// The part of s, from its start, that is an unsigned number.
std::string_view Zahlanfang(std::string_view s, const SZahlform & form) {
    bool bKomma = false;
    std::size_t i = 0;
    for (; i < s.size(); ++i) {
        const bool bJetztKomma = s[i] == form.cKomma && !bKomma;
        const bool bTausender = s[i] == form.cTausender && form.cTausender != 0 && !bKomma;
        if (!IstZiffer(s[i]) && !bJetztKomma && !bTausender) break;
        bKomma |= bJetztKomma;
    }
    return s.substr(0, i);
}

// The powers of ten up to a euro.
constexpr std::array<std::uint64_t, NACHKOMMA + 1> EINER = {1,      10,      100,      1000,     10000,
                                                            100000, 1000000, 10000000, 100000000};

// The units of a number, the largest where it has too many.
std::int64_t Wert(std::string_view sZahl, const SZahlform & form) {
    std::uint64_t iWert = 0;
    std::size_t iStellen = NACHKOMMA - form.iSkala; // that are still to come behind the point
    bool bKomma = false;
    bool bRest = false;
    for (const char c : sZahl) {
        bKomma |= c == form.cKomma;
        if (!IstZiffer(c)) continue;
        if (bKomma && iStellen == 0) {
            bRest |= c != '0';
            continue;
        }
        if (iWert > std::uint64_t{GROESSTER} / 10) return GROESSTER;
        iWert = iWert * 10 + static_cast<std::uint64_t>(c - '0');
        if (bKomma) --iStellen;
    }
    if (__builtin_mul_overflow(iWert, EINER[iStellen], &iWert)) return GROESSTER;
    return MitVorzeichen(Geschnitten(iWert, bRest), false);
}

std::string_view OhneBlanks(std::string_view s) {
    while (!s.empty() && s[0] == ' ')
        s.remove_prefix(1);
    return s;
}

CDBetrag Lies(std::string_view s, const SZahlform & form) {
    const std::string_view sText = OhneBlanks(s);
    if (sText.empty()) return {};
    const auto IstZahlanfang = [&form](char c) {
        return IstZiffer(c) || IstVorzeichen(c) || c == form.cKomma;
    };
    if (!IstZahlanfang(sText[0])) s = sText; // a letter behind blanks is the currency, not they
    char cWaehrung = 0;
    if (!IstZiffer(s[0]) && !IstVorzeichen(s[0])) {
        cWaehrung = s[0];
        s = OhneBlanks(s.substr(1));
    }
    const bool bMinus = !s.empty() && s[0] == '-';
    if (!s.empty() && IstVorzeichen(s[0])) s = OhneBlanks(s.substr(1));
    const std::int64_t iWert = Wert(Zahlanfang(s, form), form);
    return CDBetrag::AusEinheiten(bMinus ? -iWert : iWert, cWaehrung);
}

CDBetrag LiesMitAnzeige(std::string_view s) {
    if (s.find(',') == std::string_view::npos) return Lies(s, HUNDERTSTEL);
    s.remove_prefix(s.find_first_not_of(' '));
    return Lies(s, ANZEIGE);
}

// ---- Rounding and writing ------------------------------------------------------------------------------------------

std::uint64_t GerundeteCent(std::int64_t iWert) {
    return (OhneVorzeichen(iWert) + EINHEITEN_JE_CENT / 2) / EINHEITEN_JE_CENT;
}

// Long enough for the digits of a value, point included.
using AText = std::array<char, 24>;

std::string_view Text(const AText & acText, const char * pEnde) {
    return {acText.data(), static_cast<std::size_t>(pEnde - acText.data())};
}

// The digits of units, counted in the iSkala-th decimal.
std::string_view Ziffern(std::uint64_t iEinheiten, std::size_t iSkala, AText & acText) {
    std::uint64_t iTeiler = EINER[NACHKOMMA - iSkala];
    char * p = std::to_chars(acText.data(), acText.data() + acText.size(), iEinheiten / iTeiler).ptr;
    std::uint64_t iRest = iEinheiten % iTeiler;
    if (iRest != 0) *p++ = '.';
    for (; iRest != 0; iRest %= iTeiler) {
        iTeiler /= 10;
        *p++ = static_cast<char>('0' + iRest / iTeiler);
    }
    return Text(acText, p);
}

// A stored text: letter, blanks up to the width, sign and digits.
CString Stored(std::int64_t iWert, char cWaehrung, std::size_t iSkala, int iWidth, bool bSigned) {
    AText acText;
    std::string s(bSigned && iWert < 0 ? 1 : 0, '-');
    s += Ziffern(OhneVorzeichen(iWert), iSkala, acText);
    const std::size_t iLaenge = s.size() + (cWaehrung != 0 ? 1 : 0);
    const std::size_t iBreite = static_cast<std::size_t>(std::max(iWidth, 0));
    if (iBreite > iLaenge) s.insert(cWaehrung != 0 ? 0 : s.size(), iBreite - iLaenge, ' ');
    if (cWaehrung != 0) s.insert(s.begin(), cWaehrung);
    return CString(std::string_view(s));
}

CString NurBlanks(int iWidth) { return CString(' ', iWidth); }

} // namespace

CWBetragBasis::CWBetragBasis(double dWert, char cWaehrung) {
    if (std::isnan(dWert)) return;
    m_iWert = EINHEITEN_JE_EURO;
    m_cWaehrung = cWaehrung;
    m_bGesetzt = true;
    Multipliziere(dWert);
}

void CWBetragBasis::Zero() {
    m_iWert = 0;
    m_bGesetzt = true;
}

CWBetragBasis & CWBetragBasis::ToW(char cW) {
    if (IsEmpty()) return *this;
    const std::uint64_t iWert = OhneVorzeichen(m_iWert);
    if (m_cWaehrung == 'e' && cW == ' ')
        m_iWert = MitVorzeichen(MalGeteilt(iWert, KURS_ZAEHLER, KURS_NENNER), m_iWert < 0);
    if (m_cWaehrung == ' ' && cW == 'e')
        m_iWert = MitVorzeichen(MalGeteilt(iWert, KURS_NENNER, KURS_ZAEHLER), m_iWert < 0);
    m_cWaehrung = cW;
    return *this;
}

CWBetragBasis & CWBetragBasis::Round() {
    m_iWert = MitVorzeichen(GerundeteCent(m_iWert) * EINHEITEN_JE_CENT, m_iWert < 0);
    return *this;
}

CWBetragBasis & CWBetragBasis::MalBruch(std::int64_t iZaehler, std::int64_t iNenner) {
    if (iNenner == 0) return *this;
    const bool bMinus = ((m_iWert < 0) != (iZaehler < 0)) != (iNenner < 0);
    m_iWert = MitVorzeichen(
        MalGeteilt(OhneVorzeichen(m_iWert), OhneVorzeichen(iZaehler), OhneVorzeichen(iNenner)), bMinus);
    return *this;
}

CString CWBetragBasis::ToDb(int iWidth, bool bSigned, bool, double, double) const {
    if (IsEmpty()) return NurBlanks(iWidth);
    return Stored(m_iWert, m_cWaehrung, HUNDERTSTEL.iSkala, iWidth, bSigned);
}

CString CWBetragBasis::ToExt(int iWidth, bool bThousands) const {
    if (IsEmpty()) return NurBlanks(iWidth);
    const std::uint64_t iCent = GerundeteCent(m_iWert);
    std::string s = std::to_string(iCent);
    s.insert(0, s.size() < 3 ? 3 - s.size() : 0, '0');
    s.insert(s.size() - 2, 1, ',');
    for (std::size_t i = s.size() - 3; bThousands && i > 3; i -= 3)
        s.insert(i - 3, 1, '.');
    if (m_iWert < 0 && iCent != 0) s.insert(0, 1, '-');
    const std::size_t iBreite = static_cast<std::size_t>(std::max(iWidth, 0));
    if (s.size() < iBreite) s.insert(0, iBreite - s.size(), ' ');
    return CString(std::string_view(s));
}

void CWBetragBasis::Addiere(const CWBetragBasis & betrag, bool bAbziehen) {
    if (betrag.IsEmpty()) return;
    if (m_cWaehrung == 0) m_cWaehrung = betrag.m_cWaehrung;
    if (betrag.m_cWaehrung != m_cWaehrung) return AddiereUmgerechnet(betrag, bAbziehen);
    m_iWert = Summe(m_iWert, bAbziehen ? -betrag.m_iWert : betrag.m_iWert);
    m_bGesetzt = true;
}

[[gnu::noinline]] void CWBetragBasis::AddiereUmgerechnet(CWBetragBasis betrag, bool bAbziehen) {
    Addiere(betrag.ToW(m_cWaehrung), bAbziehen);
}

double operator/(const CWBetragBasis & a, const CWBetragBasis & b) {
    if (b.IsZero()) return 0;
    const double dQuotient = static_cast<double>(a.m_iWert) / static_cast<double>(b.m_iWert);
    if (a.m_cWaehrung == 'e' && b.m_cWaehrung == ' ') return dQuotient * KURS_ZAEHLER / KURS_NENNER;
    if (a.m_cWaehrung == ' ' && b.m_cWaehrung == 'e') return dQuotient * KURS_NENNER / KURS_ZAEHLER;
    return dQuotient;
}

void CWBetragBasis::Multipliziere(double dFaktor) {
    if (std::isnan(dFaktor)) return Empty();
    m_iWert = MitVorzeichen(MalGeteilt(OhneVorzeichen(m_iWert), Dezimal(dFaktor)),
                            (m_iWert < 0) != std::signbit(dFaktor));
}

CDBetrag::CDBetrag(const CString & sStored) : CDBetrag(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CDBetrag & CDBetrag::RoundDown() {
    m_iWert -= m_iWert % static_cast<std::int64_t>(EINHEITEN_JE_CENT);
    return *this;
}

CDBetrag & CDBetrag::operator+=(const CWBetragBasis & betrag) {
    Addiere(betrag, false);
    return *this;
}

CDBetrag CDBetrag::operator+(const CWBetragBasis & betrag) const { return CDBetrag(*this) += betrag; }

CDBetrag CDBetrag::operator-(const CWBetragBasis & betrag) const {
    CDBetrag differenz = *this;
    differenz.Addiere(betrag, true);
    return differenz;
}

CDBetrag & CDBetrag::operator*=(double dFaktor) {
    Multipliziere(dFaktor);
    return *this;
}

CDBetrag CDBetrag::operator*(double dFaktor) const { return CDBetrag(*this) *= dFaktor; }

CDBetrag operator*(double dFaktor, const CDBetrag & betrag) { return betrag * dFaktor; }

CDBetrag & CDBetrag::operator/=(double dTeiler) {
    if (dTeiler == 0) return *this;
    if (!std::isfinite(dTeiler)) return *this *= std::isnan(dTeiler) ? dTeiler : 0;
    const SBruch bruch = Dezimal(dTeiler);
    const std::uint64_t iWert = OhneVorzeichen(m_iWert);
    m_iWert = MitVorzeichen(bruch.iZaehler == 0 ? iWert == 0 ? 0 : GROESSTER
                                                : MalGeteilt(iWert, {bruch.iNenner, bruch.iZaehler}),
                            (m_iWert < 0) != std::signbit(dTeiler));
    return *this;
}

CDPw::CDPw(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), ZEHNTAUSENDSTEL)) {}

CString CDPw::ToDb(int iWidth, bool bSigned, bool, double, double) const {
    if (IsEmpty()) return NurBlanks(iWidth);
    return Stored(m_iWert, m_cWaehrung, ZEHNTAUSENDSTEL.iSkala, iWidth, bSigned);
}

CDPw::operator CString() const { return ToDb(0, true, false, 0, 0); }

CDPw CDPw::operator*(double dFaktor) const {
    CDPw produkt = *this;
    produkt.Multipliziere(dFaktor);
    return produkt;
}

CWBetrag::CWBetrag(const CString & sText) : CWBetragBasis(LiesMitAnzeige(sText.Sicht())) {}

CWBetrag CWBetrag::operator+(const CWBetragBasis & betrag) const {
    CWBetrag summe = *this;
    summe.Addiere(betrag, false);
    return summe;
}

CWBetrag CWBetrag::operator-(const CWBetragBasis & betrag) const {
    CWBetrag differenz = *this;
    differenz.Addiere(betrag, true);
    return differenz;
}

CW7Betrag::CW7Betrag(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CVzW7Betrag::CVzW7Betrag(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CVzW7Betrag::operator CString() const { return ToDb(0, true, false, 0, 0); }

CVzW7Betrag CVzW7Betrag::operator+(const CWBetragBasis & betrag) const { return CDBetrag(*this) + betrag; }

CVzW7Betrag CVzW7Betrag::operator-(const CWBetragBasis & betrag) const { return CDBetrag(*this) - betrag; }

} // namespace orvostat
