#include "orvostatbs/calendar/Feiertage.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <iterator>

namespace orvostat {

namespace {

// Columns: Allerheiligen, Buss- und Bettag, Fronleichnam, Heiligabend, Drei Koenige, Mariae Himmelfahrt,
// Reformationstag, Rosenmontag, Silvester.
constexpr SBundesland LAENDER[] = {
    {"BB", "Brandenburg", "000000100"},
    {"BE", "Berlin", "000000000"},
    {"BW", "Baden-Württemberg", "101010000"},
    {"BY", "Bayern", "101011000"},
    {"HB", "Bremen", "000000100"},
    {"HE", "Hessen", "001000000"},
    {"HH", "Hamburg", "000000100"},
    {"MV", "Mecklenburg-Vorpommern", "000000100"},
    {"NI", "Niedersachsen", "000000100"},
    {"NW", "Nordrhein-Westfalen", "101000000"},
    {"RP", "Rheinland-Pfalz", "101000000"},
    {"SH", "Schleswig-Holstein", "000000100"},
    {"SL", "Saarland", "101001000"},
    {"SN", "Sachsen", "010000100"},
    {"ST", "Sachsen-Anhalt", "000010100"},
    {"TH", "Thüringen", "000000100"},
};

struct SName {
    const char * pName;
    bool CHoliday::*pSchalter; // null: everywhere
    const char * pMonatTag;    // or null:
    CString (*fDatum)(const CString & sJahr);
};

constexpr SName NAMEN[] = {
    {"Neujahr", nullptr, "0101", nullptr},
    {"Heilige Drei Könige", &CHoliday::m_bDreiKoenige, "0106", nullptr},
    {"Rosenmontag", &CHoliday::m_bRosenmontag, nullptr, &CHoliday::GetRosenmontag},
    {"Karfreitag", nullptr, nullptr, &CHoliday::GetKarfreitag},
    {"Ostermontag", nullptr, nullptr, &CHoliday::GetOstermontag},
    {"Tag der Arbeit", nullptr, "0501", nullptr},
    {"Christi Himmelfahrt", nullptr, nullptr, &CHoliday::GetChristiHimmelfahrt},
    {"Pfingstmontag", nullptr, nullptr, &CHoliday::GetPfingstmontag},
    {"Fronleichnam", &CHoliday::m_bFronleichnam, nullptr, &CHoliday::GetFronleichnam},
    {"Mariä Himmelfahrt", &CHoliday::m_bMariaHimmelfahrt, "0815", nullptr},
    {"Tag der Deutschen Einheit", nullptr, "1003", nullptr},
    {"Reformationstag", &CHoliday::m_bReformationstag, "1031", nullptr},
    {"Allerheiligen", &CHoliday::m_bAllerheiligen, "1101", nullptr},
    {"Buß- und Bettag", &CHoliday::m_bBussBettag, nullptr, &CHoliday::GetBussBettag},
    {"Heiligabend", &CHoliday::m_bHeiligabend, "1224", nullptr},
    {"Erster Weihnachtstag", nullptr, "1225", nullptr},
    {"Zweiter Weihnachtstag", nullptr, "1226", nullptr},
    {"Silvester", &CHoliday::m_bSilvester, "1231", nullptr},
};

constexpr const char * WOCHENTAGE[] = {"",         "Sonntag",    "Montag",  "Dienstag",
                                       "Mittwoch", "Donnerstag", "Freitag", "Samstag"};

CString Jahrestext(int iJahr) { return RightFix(itoc(iJahr), 4, '0'); }

CString NameDesTages(const CHoliday & kalender, const CString & sDatum) {
    const CString sJahr = sDatum.Left(4);
    std::string sNamen;
    for (const SName & name : NAMEN) {
        if (name.pSchalter && !(kalender.*name.pSchalter)) continue;
        if (sDatum != (name.fDatum ? name.fDatum(sJahr) : sJahr + CString(name.pMonatTag))) continue;
        if (!sNamen.empty()) sNamen += " / ";
        sNamen += name.pName;
    }
    return AusUtf8(sNamen);
}

} // namespace

std::span<const SBundesland> Bundeslaender() { return LAENDER; }

const SBundesland * FindeBundesland(std::string_view sKuerzel) {
    const auto it = std::ranges::find(LAENDER, sKuerzel, &SBundesland::sKuerzel);
    return it == std::end(LAENDER) ? nullptr : it;
}

CHoliday KalenderFuer(const SBundesland & land) {
    CHoliday kalender;
    for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
        kalender.*FEIERTAGSSCHALTER[i] = land.sSchalter[i] == '1';
    return kalender;
}

std::string NameDesSchalters(bool CHoliday::*pSchalter) {
    const auto it = std::ranges::find(NAMEN, pSchalter, &SName::pSchalter);
    return it == std::end(NAMEN) ? std::string() : it->pName;
}

CString Wochentagname(const CString & sDatum) { return CString(WOCHENTAGE[Wochentag(sDatum)]); }

std::vector<SFeiertag> Feiertage(const CHoliday & kalender, int iVonJahr, int iBisJahr) {
    std::vector<CFerien> vFerien;
    kalender.GetAllHolidays(vFerien, Jahrestext(iVonJahr) + "0101", Jahrestext(iBisJahr) + "1231");
    std::vector<CString> vTage;
    std::ranges::transform(vFerien, std::back_inserter(vTage), &CFerien::m_sVon);
    std::ranges::sort(vTage);
    vTage.erase(std::unique(vTage.begin(), vTage.end()), vTage.end());

    std::vector<SFeiertag> vFeiertage;
    vFeiertage.reserve(vTage.size());
    for (const CString & sDatum : vTage)
        vFeiertage.push_back({sDatum, Wochentagname(sDatum), NameDesTages(kalender, sDatum)});
    return vFeiertage;
}

} // namespace orvostat
