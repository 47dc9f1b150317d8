// Holidays and working days of a German practice.
//
// Nine days are holidays everywhere: Neujahr, Karfreitag, Ostermontag, 1 May, Christi Himmelfahrt, Pfingstmontag,
// 3 October, 25 and 26 December. Nine more differ by federal state, or are kept by some practices only (Rosenmontag,
// Heiligabend, Silvester); the practice switches them on one by one, and there is no table of states here. Easter
// Sunday and Whit Sunday are Sundays anyway. Which weekdays are worked is a set of its own, and closed periods
// (vacations) are a third thing: they count in GetAnzArbeitsTage and nowhere else.
//
// Dates are texts YYYYMMDD, years texts of four digits, the calendar is the Gregorian one. Nothing here fails: a text
// that is no day of the calendar is no working day and gives 0 or empty results. Nothing is remembered between calls.
#pragma once

#include "orvostatbs/host/CString.h"

#include <vector>

namespace orvostat {

// A period, both days included. A single holiday begins and ends on the same day and has no name.
struct CFerien {
    CString m_sVon;
    CString m_sBis;
    CString m_sName;

    friend bool operator==(const CFerien &, const CFerien &) = default;
};

class CHoliday {
public:
    std::vector<CFerien> m_vFerien; // closed periods, filled by the caller
    // Worked weekdays, 1 Sunday to 7 Saturday. 0 is the answer for a text that is no day of the calendar.
    bool m_abWochentag[8];
    // The holidays that can be switched, in the order of the stored row.
    bool m_bAllerheiligen;    // 1 November
    bool m_bBussBettag;       // the Wednesday from 16 to 22 November
    bool m_bFronleichnam;     // 60 days after Easter Sunday
    bool m_bHeiligabend;      // 24 December
    bool m_bDreiKoenige;      // 6 January
    bool m_bMariaHimmelfahrt; // 15 August
    bool m_bReformationstag;  // 31 October
    bool m_bRosenmontag;      // 48 days before Easter Sunday
    bool m_bSilvester;        // 31 December

    CHoliday();
    CHoliday(const CHoliday &) = default;
    CHoliday & operator=(const CHoliday &) = default;
    virtual ~CHoliday() = default;

    // Monday to Friday, no switched holiday, no closed period.
    void Init();
    // The switches from the practice's settings, by the read-only database. True also where there are none, and the
    // switches stay; false where the store failed, and the object stays.
    bool ReadFeiertage();

    // A worked weekday that is no holiday. Closed periods are not asked: a day of a vacation is a working day here.
    [[nodiscard]] bool IstArbeitstag(const CString & sDatum) const;
    // Moves the date forward to a working day, not at all if it is one. Always true. Where there is no such day (no
    // weekday is worked, the date is none, the calendar ends) the date stays.
    bool NaechsterArbeitstag(CString & sDatum) const;
    // Worked weekdays from sVon to sBis, both included, that are neither holidays nor in a closed period. sBis is
    // compared as a text and may lie behind the calendar's end.
    [[nodiscard]] int GetAnzArbeitsTage(const CString & sVon, const CString & sBis) const;

    // Appends the holidays of the period, worked weekdays or not, unsorted: year by year, in each first the switched
    // ones. A day that is a holiday for two reasons comes twice.
    void GetAllHolidays(std::vector<CFerien> & vOut, const CString & sVon, const CString & sBis) const;
    // Appends the day if it lies in the period; true if so.
    static bool AddIfIsInZeitraum(const CString & sDatum, const CString & sVon, const CString & sBis,
                                  std::vector<CFerien> & vOut);
    // The day lies in one of the periods, texts compared.
    [[nodiscard]] static bool DayInHoliday(const std::vector<CFerien> & v, const CString & sDatum);

    // Easter Sunday by Gauss's rule in Lichtenberg's form: the year as given, then month and day.
    [[nodiscard]] static CString OsternImJahr(const CString & sJahr);
    // The feasts of a year, switched on or not; empty where the year makes no date.
    [[nodiscard]] static CString GetKarfreitag(const CString & sJahr);
    [[nodiscard]] static CString GetOstermontag(const CString & sJahr);
    [[nodiscard]] static CString GetChristiHimmelfahrt(const CString & sJahr);
    [[nodiscard]] static CString GetPfingstmontag(const CString & sJahr);
    [[nodiscard]] static CString GetFronleichnam(const CString & sJahr);
    [[nodiscard]] static CString GetRosenmontag(const CString & sJahr);
    [[nodiscard]] static CString GetBussBettag(const CString & sJahr);

    // The length of a period, both days included. Months: the first and the last month count by their share of days,
    // those between as whole ones. Quarters and years: the same with the share of the quarter's or year's days.
    [[nodiscard]] static double GetAnzMonate(const CString & sVon, const CString & sBis);
    [[nodiscard]] static double GetAnzQuartale(const CString & sVon, const CString & sBis);
    [[nodiscard]] static double GetAnzJahre(const CString & sVon, const CString & sBis);
};

// The switches in the order of the stored row.
inline constexpr bool CHoliday::*FEIERTAGSSCHALTER[] = {
    &CHoliday::m_bAllerheiligen,   &CHoliday::m_bBussBettag,  &CHoliday::m_bFronleichnam,
    &CHoliday::m_bHeiligabend,     &CHoliday::m_bDreiKoenige, &CHoliday::m_bMariaHimmelfahrt,
    &CHoliday::m_bReformationstag, &CHoliday::m_bRosenmontag, &CHoliday::m_bSilvester,
};

// The next working day by the practice's holidays and a mask of weekdays: 1 Monday, 2 Tuesday, 4 Wednesday,
// 8 Thursday, 16 Friday, 64 Saturday, 128 Sunday; other bits name no day. False for a mask without a day and where
// the store failed; the date stays then. A date that is none, or has no next working day, stays too.
bool NaechsterArbeitstag(int iWochentage, CString & sDatum);

// Sends the holiday row and all vacations of the current practice owner (dbMdId) to the screen layer; without those
// that could not be read, which dbDatabase.Fehlschlaege() counts.
void SetWPFHolidays();

} // namespace orvostat
