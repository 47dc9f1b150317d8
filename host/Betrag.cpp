#include "orvostatbs/host/Betrag.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

namespace {

// Council Regulation (EC) No 2866/98: 1 euro in the old currency.
constexpr double EURO_KURS = 1.95583;

constexpr int NACHKOMMA_MAX = 8;                // decimals that a stored text keeps
constexpr double KLEINSTER = 0.000000005;       // half of the last of them: below this nothing is stored
constexpr double GANZ_MAX = 9007199254740992.0; // 2^53: up to here doubles hold every integer

// The powers of ten that doubles hold exactly.
constexpr std::array<double, 23> ZEHNER = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                           1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double Zehner(int iStellen) { return ZEHNER[static_cast<std::size_t>(iStellen)]; }

bool IstZiffer(char c) { return c >= '0' && c <= '9'; }
bool IstVorzeichen(char c) { return c == '-' || c == '+'; }

// ---- Reading -------------------------------------------------------------------------------------------------------

// How a number is written: its decimal point, what stands between thousands (0 nothing), and the place of its unit.
struct SZahlform {
    char cKomma;
    char cTausender;
    int iSkala;
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

// The value of a number with too many digits for one division.
double WertLang(std::string_view sZahl, const SZahlform & form) {
    std::string s;
    for (const char c : sZahl)
        if (c != form.cTausender) s += c == form.cKomma ? '.' : c;
    const auto iErsteZiffer = s.find_first_not_of('0');
    s += "e-" + std::to_string(form.iSkala);
    double dWert = 0;
    const auto [_, fehler] = std::from_chars(s.data(), s.data() + s.size(), dWert);
    if (fehler == std::errc() && std::isfinite(dWert)) return dWert;
    return IstZiffer(s[iErsteZiffer]) ? std::numeric_limits<double>::max() : 0.0;
}

// The double next to a number's decimal value. Integer and power of ten are exact, so their quotient is that double.
double Wert(std::string_view sZahl, const SZahlform & form) {
    std::uint64_t iZiffern = 0;
    int iStellen = form.iSkala;
    bool bKomma = false;
    for (const char c : sZahl) {
        if (c == form.cKomma) bKomma = true;
        if (!IstZiffer(c)) continue;
        iZiffern = iZiffern * 10 + static_cast<std::uint64_t>(c - '0');
        iStellen += bKomma ? 1 : 0;
        if (iZiffern > static_cast<std::uint64_t>(GANZ_MAX) || iStellen >= static_cast<int>(ZEHNER.size()))
            return WertLang(sZahl, form);
    }
    return static_cast<double>(iZiffern) / Zehner(iStellen);
}

CDBetrag Lies(std::string_view s, const SZahlform & form) {
    if (s.find_first_not_of(' ') == std::string_view::npos) return {};
    char cWaehrung = 0;
    if (!IstZiffer(s[0]) && !IstVorzeichen(s[0])) {
        cWaehrung = s[0];
        s.remove_prefix(std::min(s.find_first_not_of(' ', 1), s.size()));
    }
    const double dVorzeichen = !s.empty() && s[0] == '-' ? -1 : 1;
    if (!s.empty() && IstVorzeichen(s[0])) s.remove_prefix(1);
    return {dVorzeichen * Wert(Zahlanfang(s, form), form), cWaehrung};
}

CDBetrag LiesMitAnzeige(std::string_view s) {
    if (s.find(',') == std::string_view::npos) return Lies(s, HUNDERTSTEL);
    s.remove_prefix(s.find_first_not_of(' '));
    return Lies(s, ANZEIGE);
}

// ---- Rounding and writing ------------------------------------------------------------------------------------------

// The cents of a value, cut off towards zero or brought to the nearest. What lies beside a half or a whole cent by no
// more than the errors of a few multiplications is taken for it.
double Cent(double dWert, bool bAbschneiden) {
    const double dCent = std::abs(dWert) * 100;
    const double dSpielraum = std::min(dCent * 4 * std::numeric_limits<double>::epsilon(), 0.25);
    const double dGanze = std::floor(dCent);
    const bool bAuf = dCent - dGanze >= (bAbschneiden ? 1.0 : 0.5) - dSpielraum;
    return std::copysign(bAuf ? dGanze + 1 : dGanze, dWert);
}

// Long enough for the largest double with its decimals.
using AText = std::array<char, 400>;

std::string_view Text(const AText & acText, const char * pEnde) {
    return {acText.data(), static_cast<std::size_t>(pEnde - acText.data())};
}

// The digits of a value that is not negative, in units of the iSkala-th decimal.
std::string_view Ziffern(double dWert, int iSkala, AText & acText) {
    char * const pAnfang = acText.data();
    char * const pEnde = pAnfang + acText.size();
    const double dEinheiten = std::round(dWert * Zehner(iSkala));
    if (dEinheiten <= GANZ_MAX && dEinheiten / Zehner(iSkala) == dWert)
        return Text(acText, std::to_chars(pAnfang, pEnde, static_cast<std::uint64_t>(dEinheiten)).ptr);

    char * const pLetzte = std::to_chars(pAnfang, pEnde, dWert, std::chars_format::fixed, NACHKOMMA_MAX).ptr;
    char * const pKomma = std::find(pAnfang, pLetzte, '.');
    std::rotate(pKomma, pKomma + 1, pKomma + 1 + iSkala);
    std::string_view s = Text(acText, pLetzte);
    s = s.substr(0, s.find_last_not_of('0') + 1);
    if (s.back() == '.') s.remove_suffix(1);
    return s.substr(
        std::min(s.find_first_not_of('0'), static_cast<std::size_t>(pKomma - pAnfang + iSkala - 1)));
}

// A stored text: letter, blanks up to the width, sign and digits.
CString Stored(double dWert, char cWaehrung, int iSkala, int iWidth, bool bSigned) {
    AText acText;
    const std::string_view sZiffern = Ziffern(std::abs(dWert), iSkala, acText);
    std::string s(1, '-');
    s += sZiffern;
    if (!bSigned || dWert >= 0 || sZiffern == "0") s.erase(0, 1);
    const std::size_t iLaenge = s.size() + (cWaehrung != 0 ? 1 : 0);
    const std::size_t iBreite = static_cast<std::size_t>(std::max(iWidth, 0));
    if (iBreite > iLaenge) s.insert(cWaehrung != 0 ? 0 : s.size(), iBreite - iLaenge, ' ');
    if (cWaehrung != 0) s.insert(s.begin(), cWaehrung);
    return CString(std::string_view(s));
}

CString NurBlanks(int iWidth) { return CString(' ', iWidth); }

} // namespace

void CWBetragBasis::Zero() {
    m_dWert = 0;
    m_bGesetzt = true;
}

bool CWBetragBasis::IsZero() const { return std::abs(m_dWert) < KLEINSTER; }

bool CWBetragBasis::IsPos() const { return m_dWert >= KLEINSTER; }

CWBetragBasis & CWBetragBasis::ToW(char cW) {
    if (IsEmpty()) return *this;
    if (m_cWaehrung == 'e' && cW == ' ') m_dWert *= EURO_KURS;
    if (m_cWaehrung == ' ' && cW == 'e') m_dWert /= EURO_KURS;
    m_cWaehrung = cW;
    return *this;
}

CWBetragBasis & CWBetragBasis::Round() {
    m_dWert = Cent(m_dWert, false) / 100;
    return *this;
}

CString CWBetragBasis::ToDb(int iWidth, bool bSigned, bool, double, double) const {
    if (IsEmpty() || !std::isfinite(m_dWert)) return NurBlanks(iWidth);
    return Stored(m_dWert, m_cWaehrung, HUNDERTSTEL.iSkala, iWidth, bSigned);
}

CString CWBetragBasis::ToExt(int iWidth, bool bThousands) const {
    if (IsEmpty() || !std::isfinite(m_dWert)) return NurBlanks(iWidth);
    AText acText;
    const double dCent = Cent(m_dWert, false);
    std::string s(Ziffern(std::abs(dCent), 0, acText));
    s.insert(0, s.size() < 3 ? 3 - s.size() : 0, '0');
    s.insert(s.size() - 2, 1, ',');
    for (std::size_t i = s.size() - 3; bThousands && i > 3; i -= 3)
        s.insert(i - 3, 1, '.');
    if (dCent < 0) s.insert(0, 1, '-');
    const std::size_t iBreite = static_cast<std::size_t>(std::max(iWidth, 0));
    if (s.size() < iBreite) s.insert(0, iBreite - s.size(), ' ');
    return CString(std::string_view(s));
}

void CWBetragBasis::Addiere(const CWBetragBasis & betrag, double dFaktor) {
    if (betrag.IsEmpty()) return;
    CWBetragBasis summand = betrag;
    if (m_cWaehrung == 0) m_cWaehrung = betrag.m_cWaehrung;
    summand.ToW(m_cWaehrung);
    m_dWert += dFaktor * summand.m_dWert;
    m_bGesetzt = true;
}

double operator/(const CWBetragBasis & a, const CWBetragBasis & b) {
    CWBetragBasis teiler = b;
    if (a.m_cWaehrung != 0) teiler.ToW(a.m_cWaehrung);
    return b.IsZero() ? 0.0 : a.m_dWert / teiler.m_dWert;
}

void CWBetragBasis::Multipliziere(double dFaktor) {
    if (!IsEmpty()) m_dWert *= dFaktor;
}

CDBetrag::CDBetrag(const CString & sStored) : CDBetrag(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CDBetrag & CDBetrag::RoundDown() {
    m_dWert = Cent(m_dWert, true) / 100;
    return *this;
}

CDBetrag & CDBetrag::operator+=(const CWBetragBasis & betrag) {
    Addiere(betrag, 1);
    return *this;
}

CDBetrag CDBetrag::operator+(const CWBetragBasis & betrag) const { return CDBetrag(*this) += betrag; }

CDBetrag CDBetrag::operator-(const CWBetragBasis & betrag) const {
    CDBetrag differenz = *this;
    differenz.Addiere(betrag, -1);
    return differenz;
}

CDBetrag & CDBetrag::operator*=(double dFaktor) {
    Multipliziere(dFaktor);
    return *this;
}

CDBetrag CDBetrag::operator*(double dFaktor) const { return CDBetrag(*this) *= dFaktor; }

CDBetrag operator*(double dFaktor, const CDBetrag & betrag) { return betrag * dFaktor; }

CDBetrag & CDBetrag::operator/=(double dTeiler) {
    if (dTeiler != 0) m_dWert /= dTeiler;
    return *this;
}

CDPw::CDPw(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), ZEHNTAUSENDSTEL)) {}

CString CDPw::ToDb(int iWidth, bool bSigned, bool, double, double) const {
    if (IsEmpty() || !std::isfinite(m_dWert)) return NurBlanks(iWidth);
    return Stored(m_dWert, m_cWaehrung, ZEHNTAUSENDSTEL.iSkala, iWidth, bSigned);
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
    summe.Addiere(betrag, 1);
    return summe;
}

CWBetrag CWBetrag::operator-(const CWBetragBasis & betrag) const {
    CWBetrag differenz = *this;
    differenz.Addiere(betrag, -1);
    return differenz;
}

CW7Betrag::CW7Betrag(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CVzW7Betrag::CVzW7Betrag(const CString & sStored) : CWBetragBasis(Lies(sStored.Sicht(), HUNDERTSTEL)) {}

CVzW7Betrag::operator CString() const { return ToDb(0, true, false, 0, 0); }

CVzW7Betrag CVzW7Betrag::operator+(const CWBetragBasis & betrag) const { return CDBetrag(*this) + betrag; }

CVzW7Betrag CVzW7Betrag::operator-(const CWBetragBasis & betrag) const { return CDBetrag(*this) - betrag; }
