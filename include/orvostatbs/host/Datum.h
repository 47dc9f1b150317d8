// Dates of the practice: texts of eight digits YYYYMMDD in the Gregorian calendar, years 0001 to 9999, compared as
// texts. The open bounds of a period are "19800101" and "99991231". An empty text is "no date".
//
// Two things are asked of a date here. Quarter and display form read its places and do not mind a day that the
// calendar lacks, since practices store "19560000" where only the year is known; weekday, adding days and
// GueltigesDatum follow the calendar. No text makes any of these functions fail: what has no answer gives the empty
// text, 0 or false. None of them allocates.
#pragma once

#include "orvostatbs/host/CString.h"

#include <compare>

namespace orvostat {

// Both dates lie in one calendar quarter. Texts without a quarter (empty, malformed, a month outside of 1 to 12)
// count as one quarter of their own.
[[nodiscard]] bool GleichesQuartal(const CString & sDatumA, const CString & sDatumB);
// First and last day of the date's quarter; empty without a quarter.
[[nodiscard]] CString QuartalsAnfang(const CString & sDatum);
[[nodiscard]] CString QuartalsEnde(const CString & sDatum);
// The quarter as YYYYQ, "20241" to "20244"; empty without a quarter.
[[nodiscard]] CString DbDate2Quartal(const CString & sDatum);

// Days of a month, leap years included; 0 for a month outside of 1 to 12.
[[nodiscard]] int LastDayI(int iMonat, int iJahr);

// YYYYMMDD to DD.MM.YYYY. A text that is not eight digits comes back as it is, so that a list shows what is stored.
[[nodiscard]] CString Db2Date(const CString & sDatum);
// D.M.YYYY to YYYYMMDD, day and month with one or two digits; any other text gives the empty text. Eight digits are
// accepted as the date they are. The calendar is not asked: "31.02.2024" becomes "20240231".
[[nodiscard]] CString Date2Db(const CString & sDatum);
// The display form of a field by the number of its kind and its length: kind 5 is a date, as Db2Date; a text of any
// other kind comes back as it is.
[[nodiscard]] CString StrToExt(const CString & sWert, int iArt, int iLaenge);

// Today as YYYYMMDD, and the time of day as HH:MM, of the current clock.
[[nodiscard]] CString GetMxDate();
[[nodiscard]] CString GetMxTime();

// A day of the calendar, or none. Adding days to none, and leaving the years 1 to 9999, gives none.
class CMxDate {
public:
    // Today.
    CMxDate();
    // YYYYMMDD or DD.MM.YYYY, told apart by their looks; a text that is no day of the calendar gives none. The flag
    // has no effect.
    explicit CMxDate(const CString & sDatum, bool bIntern = true);

    [[nodiscard]] CMxDate operator+(long iTage) const;
    // YYYYMMDD; empty for none.
    operator CString() const; // NOLINT(google-explicit-constructor)
    [[nodiscard]] bool IsValid() const { return m_iTag != 0; }
    // 1 Sunday to 7 Saturday, 0 for none.
    [[nodiscard]] int Wochentag() const;

    // In the calendar's order, none before all others.
    [[nodiscard]] friend bool operator==(const CMxDate &, const CMxDate &) = default;
    [[nodiscard]] friend std::strong_ordering operator<=>(const CMxDate &, const CMxDate &) = default;

private:
    long m_iTag = 0; // days counted from 1 for 1 January of year 1
};

// The bounds of a period that a selection leaves open.
inline constexpr CString ERSTER_TAG = "19800101";
inline constexpr CString LETZTER_TAG = "99991231";

// The text, or the other one where it is empty; a reference to one of the two.
[[nodiscard]] inline const CString & Oder(const CString & s, const CString & sErsatz) {
    return s.IsEmpty() ? sErsatz : s;
}

// The text is eight digits and a day of the calendar.
[[nodiscard]] bool GueltigesDatum(const CString & sDatum);
// 1 Sunday to 7 Saturday; 0 for a text that is no day of the calendar.
[[nodiscard]] int Wochentag(const CString & sDatum);

} // namespace orvostat
