#include "orvostatbs/host/Datum.h"

#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

#include <array>
#include <chrono>

namespace orvostat {

namespace {

constexpr int LAENGE = 8;           // YYYYMMDD
constexpr int ART_DATUM = 5;        // kind of a date field
constexpr long TAG_1970 = 719'163;  // 1 January 1970, counted from 1 for 1 January of year 1
constexpr long TAG_MAX = 3'652'059; // 31 December 9999
constexpr std::array<int, 12> TAGE = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// The eight digits as a number; -1 for any other text.
int AchtZiffern(const CString & s) {
    if (s.GetLength() != LAENGE) return -1;
    const CSicht sicht(s);
    int iWert = 0;
    for (const char c : sicht.Text()) {
        if (!ismxdigit(c)) return -1;
        iWert = iWert * 10 + (c - '0');
    }
    return iWert;
}

void Schreibe(char * pZiel, int iWert, int iStellen) {
    for (int i = iStellen; i-- > 0; iWert /= 10)
        pZiel[i] = static_cast<char>('0' + iWert % 10);
}

CString DatumText(int iDatum) {
    char ac[LAENGE];
    Schreibe(ac, iDatum, LAENGE);
    return CString(std::string_view(ac, sizeof ac));
}

// Year and quarter as YYYYQ; 0 without a quarter.
int Quartal(const CString & sDatum) {
    const int iMonatszahl = AchtZiffern(sDatum) / 100;
    const int iJahr = iMonatszahl / 100;
    const int iMonat = iMonatszahl % 100;
    return iJahr < 1 || iMonat < 1 || iMonat > 12 ? 0 : iJahr * 10 + (iMonat + 2) / 3;
}

// The day's number in m_iTag's count; 0 for no day of the calendar.
long Tagesnummer(int iDatum) {
    if (iDatum < 1) return 0;
    const std::chrono::year_month_day tag(std::chrono::year(iDatum / 10'000),
                                          std::chrono::month(static_cast<unsigned>(iDatum / 100 % 100)),
                                          std::chrono::day(static_cast<unsigned>(iDatum % 100)));
    if (!tag.ok() || iDatum < 10'000) return 0;
    return std::chrono::sys_days(tag).time_since_epoch().count() + TAG_1970;
}

// Moves over one or two digits at iPos and the point behind them, and writes them as two digits; false where they
// do not stand there.
bool LiesZweistellig(std::string_view s, std::size_t & iPos, char * pZiel) {
    const std::size_t iEnde = s.find('.', iPos);
    if (iEnde == std::string_view::npos || iEnde == iPos || iEnde > iPos + 2) return false;
    int iWert = 0;
    for (; iPos < iEnde; ++iPos) {
        if (!ismxdigit(s[iPos])) return false;
        iWert = iWert * 10 + (s[iPos] - '0');
    }
    Schreibe(pZiel, iWert, 2);
    ++iPos;
    return true;
}

} // namespace

bool GleichesQuartal(const CString & sDatumA, const CString & sDatumB) {
    return sDatumA == sDatumB || Quartal(sDatumA) == Quartal(sDatumB);
}

CString QuartalsAnfang(const CString & sDatum) {
    const int iQuartal = Quartal(sDatum);
    if (iQuartal == 0) return {};
    return DatumText(iQuartal / 10 * 10'000 + (iQuartal % 10 * 3 - 2) * 100 + 1);
}

CString QuartalsEnde(const CString & sDatum) {
    const int iQuartal = Quartal(sDatum);
    if (iQuartal == 0) return {};
    const int iMonat = iQuartal % 10 * 3;
    return DatumText(iQuartal / 10 * 10'000 + iMonat * 100 + TAGE[static_cast<std::size_t>(iMonat - 1)]);
}

CString DbDate2Quartal(const CString & sDatum) {
    const int iQuartal = Quartal(sDatum);
    if (iQuartal == 0) return {};
    char ac[5];
    Schreibe(ac, iQuartal, 5);
    return CString(std::string_view(ac, sizeof ac));
}

int LastDayI(int iMonat, int iJahr) {
    if (iMonat < 1 || iMonat > 12) return 0;
    const bool bSchaltjahr = iJahr % 4 == 0 && (iJahr % 100 != 0 || iJahr % 400 == 0);
    return TAGE[static_cast<std::size_t>(iMonat - 1)] + (iMonat == 2 && bSchaltjahr ? 1 : 0);
}

CString Db2Date(const CString & sDatum) {
    const int iDatum = AchtZiffern(sDatum);
    if (iDatum < 0) return sDatum;
    char ac[] = "DD.MM.YYYY";
    Schreibe(ac, iDatum % 100, 2);
    Schreibe(ac + 3, iDatum / 100 % 100, 2);
    Schreibe(ac + 6, iDatum / 10'000, 4);
    return CString(std::string_view(ac, sizeof ac - 1));
}

CString Date2Db(const CString & sDatum) {
    if (AchtZiffern(sDatum) >= 0) return sDatum;
    const CSicht sicht(sDatum);
    const std::string_view s = sicht;
    char ac[LAENGE];
    std::size_t iPos = 0;
    if (!LiesZweistellig(s, iPos, ac + 6) || !LiesZweistellig(s, iPos, ac + 4) || s.size() != iPos + 4)
        return {};
    for (std::size_t i = 0; i < 4; ++i) {
        if (!ismxdigit(s[iPos + i])) return {};
        ac[i] = s[iPos + i];
    }
    return CString(std::string_view(ac, sizeof ac));
}

CString StrToExt(const CString & sWert, int iArt, int) { return iArt == ART_DATUM ? Db2Date(sWert) : sWert; }

CString GetMxDate() {
    const SZeitpunkt zeit = Uhr().Jetzt();
    return DatumText(zeit.iJahr * 10'000 + zeit.iMonat * 100 + zeit.iTag);
}

CString GetMxTime() {
    const SZeitpunkt zeit = Uhr().Jetzt();
    char ac[] = "HH:MM";
    Schreibe(ac, zeit.iStunde, 2);
    Schreibe(ac + 3, zeit.iMinute, 2);
    return CString(std::string_view(ac, sizeof ac - 1));
}

CMxDate::CMxDate() : CMxDate(GetMxDate()) {}

CMxDate::CMxDate(const CString & sDatum, bool) : m_iTag(Tagesnummer(AchtZiffern(Date2Db(sDatum)))) {}

CMxDate CMxDate::operator+(long iTage) const {
    CMxDate ergebnis = *this;
    const bool bImKalender =
        iTage > -TAG_MAX && iTage < TAG_MAX && m_iTag + iTage >= 1 && m_iTag + iTage <= TAG_MAX;
    ergebnis.m_iTag = IsValid() && bImKalender ? m_iTag + iTage : 0;
    return ergebnis;
}

CMxDate::operator CString() const {
    if (!IsValid()) return {};
    const std::chrono::year_month_day tag(std::chrono::sys_days(std::chrono::days(m_iTag - TAG_1970)));
    return DatumText(
        static_cast<int>(tag.year()) * 10'000 +
        static_cast<int>(static_cast<unsigned>(tag.month()) * 100 + static_cast<unsigned>(tag.day())));
}

// 1 January of year 1 is a Monday.
int CMxDate::Wochentag() const { return IsValid() ? static_cast<int>(m_iTag % 7) + 1 : 0; }

bool GueltigesDatum(const CString & sDatum) { return Tagesnummer(AchtZiffern(sDatum)) != 0; }

int Wochentag(const CString & sDatum) { return GueltigesDatum(sDatum) ? CMxDate(sDatum).Wochentag() : 0; }

} // namespace orvostat
