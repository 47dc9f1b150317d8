#include "orvostatbs/calendar/Feiertage.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <iterator>

namespace orvostat {

namespace {

constexpr SBundesland LAENDER[] = {
    {"BB", "Brandenburg"},
    {"BE", "Berlin"},
    {"BW", "Baden-Württemberg"},
    {"BY", "Bayern"},
    {"HB", "Bremen"},
    {"HE", "Hessen"},
    {"HH", "Hamburg"},
    {"MV", "Mecklenburg-Vorpommern"},
    {"NI", "Niedersachsen"},
    {"NW", "Nordrhein-Westfalen"},
    {"RP", "Rheinland-Pfalz"},
    {"SH", "Schleswig-Holstein"},
    {"SL", "Saarland"},
    {"SN", "Sachsen"},
    {"ST", "Sachsen-Anhalt"},
    {"TH", "Thüringen"},
};

// A day of the year.
struct STagImJahr {
    const char * pMonatTag; // or null:
    CString (*fDatum)(const CString & sJahr);
    [[nodiscard]] CString Im(const CString & sJahr) const {
        return pMonatTag == nullptr ? fDatum(sJahr) : sJahr + CString(pMonatTag);
    }
};

struct SName {
    const char * pName;
    bool CHoliday::*pSchalter; // null: everywhere
    STagImJahr tag;
};

constexpr SName NAMEN[] = {
    {"Neujahr", nullptr, {"0101", nullptr}},
    {"Heilige Drei Könige", &CHoliday::m_bDreiKoenige, {"0106", nullptr}},
    {"Rosenmontag", &CHoliday::m_bRosenmontag, {nullptr, &CHoliday::GetRosenmontag}},
    {"Karfreitag", nullptr, {nullptr, &CHoliday::GetKarfreitag}},
    {"Ostermontag", nullptr, {nullptr, &CHoliday::GetOstermontag}},
    {"Tag der Arbeit", nullptr, {"0501", nullptr}},
    {"Christi Himmelfahrt", nullptr, {nullptr, &CHoliday::GetChristiHimmelfahrt}},
    {"Pfingstmontag", nullptr, {nullptr, &CHoliday::GetPfingstmontag}},
    {"Fronleichnam", &CHoliday::m_bFronleichnam, {nullptr, &CHoliday::GetFronleichnam}},
    {"Mariä Himmelfahrt", &CHoliday::m_bMariaHimmelfahrt, {"0815", nullptr}},
    {"Tag der Deutschen Einheit", nullptr, {"1003", nullptr}},
    {"Reformationstag", &CHoliday::m_bReformationstag, {"1031", nullptr}},
    {"Allerheiligen", &CHoliday::m_bAllerheiligen, {"1101", nullptr}},
    {"Buß- und Bettag", &CHoliday::m_bBussBettag, {nullptr, &CHoliday::GetBussBettag}},
    {"Heiligabend", &CHoliday::m_bHeiligabend, {"1224", nullptr}},
    {"Erster Weihnachtstag", nullptr, {"1225", nullptr}},
    {"Zweiter Weihnachtstag", nullptr, {"1226", nullptr}},
    {"Silvester", &CHoliday::m_bSilvester, {"1231", nullptr}},
};

CString Pfingstsonntag(const CString & sJahr) {
    return CMxDate(CHoliday::GetPfingstmontag(sJahr)) + -1; // none stays none
}

// What the laws of the states add to the nationwide holidays, and when. A name stands where there is no switch.
constexpr int JE = 0;
constexpr int HEUTE = NACH_GELTENDEM_RECHT;
constexpr const char * ALLE = "BB BE BW BY HB HE HH MV NI NW RP SH SL SN ST TH";
constexpr struct SGesetz {
    std::string_view sLaender;
    int iVon, iBis; // years
    bool CHoliday::*pSchalter;
    const char * pName = nullptr;
    STagImJahr tag = {};
} GESETZE[] = {
    {"BW BY ST", JE, HEUTE, &CHoliday::m_bDreiKoenige},
    {"BW BY HE NW RP SL", JE, HEUTE, &CHoliday::m_bFronleichnam},
    {"BY SL", JE, HEUTE, &CHoliday::m_bMariaHimmelfahrt},
    {"BW BY NW RP SL", JE, HEUTE, &CHoliday::m_bAllerheiligen},
    {"BB MV SN ST TH", JE, HEUTE, &CHoliday::m_bReformationstag},
    {"HB HH NI SH", 2018, HEUTE, &CHoliday::m_bReformationstag},
    {ALLE, 2017, 2017, &CHoliday::m_bReformationstag}, // 500 years after Luther's theses
    {ALLE, JE, 1994, &CHoliday::m_bBussBettag},        // given up for the long-term care insurance
    {"SN", 1995, HEUTE, &CHoliday::m_bBussBettag},
    {"BB", JE, HEUTE, nullptr, "Ostersonntag", {nullptr, &CHoliday::OsternImJahr}},
    {"BB", JE, HEUTE, nullptr, "Pfingstsonntag", {nullptr, &Pfingstsonntag}},
    {"BE", 2019, HEUTE, nullptr, "Frauentag", {"0308", nullptr}},
    {"MV", 2023, HEUTE, nullptr, "Frauentag", {"0308", nullptr}},
    {"TH", 2019, HEUTE, nullptr, "Weltkindertag", {"0920", nullptr}},
    {"BE", 2020, 2020, nullptr, "Tag der Befreiung", {"0508", nullptr}},
    {"BE", 2025, 2025, nullptr, "Tag der Befreiung", {"0508", nullptr}},
    {"BE", 2028, 2028, nullptr, "Jahrestag des Volksaufstandes", {"0617", nullptr}},
};

constexpr const char * WOCHENTAGE[] = {"",         "Sonntag",    "Montag",  "Dienstag",
                                       "Mittwoch", "Donnerstag", "Freitag", "Samstag"};

CString Jahrestext(int iJahr) { return RightFix(itoc(iJahr), 4, '0'); }

// A closed single day with a name.
bool IstFeiertag(const CFerien & ferien) {
    return ferien.m_sVon == ferien.m_sBis && !ferien.m_sName.IsEmpty();
}

CString NameDesTages(const CHoliday & kalender, const CString & sDatum) {
    CString sNamen;
    const auto Nenne = [&](const CString & sName) { sNamen += (sNamen.IsEmpty() ? "" : " / ") + sName; };
    for (const SName & name : NAMEN)
        if ((!name.pSchalter || kalender.*name.pSchalter) && sDatum == name.tag.Im(sDatum.Left(4)))
            Nenne(AusUtf8(name.pName));
    for (const CFerien & ferien : kalender.m_vFerien)
        if (ferien.m_sVon == sDatum && IstFeiertag(ferien)) Nenne(ferien.m_sName);
    return sNamen;
}

} // namespace

std::span<const SBundesland> Bundeslaender() { return LAENDER; }

const SBundesland * FindeBundesland(std::string_view sKuerzel) {
    const auto it = std::ranges::find(LAENDER, sKuerzel, &SBundesland::sKuerzel);
    return it == std::end(LAENDER) ? nullptr : it;
}

CHoliday KalenderFuer(const SBundesland & land, int iJahr) {
    CHoliday kalender;
    for (const SGesetz & gesetz : GESETZE) {
        if (iJahr < gesetz.iVon || iJahr > gesetz.iBis ||
            gesetz.sLaender.find(land.sKuerzel) == std::string_view::npos)
            continue;
        const CString sTag = gesetz.pSchalter ? CString() : gesetz.tag.Im(Jahrestext(iJahr));
        if (gesetz.pSchalter)
            kalender.*gesetz.pSchalter = true;
        else
            kalender.m_vFerien.push_back({sTag, sTag, AusUtf8(gesetz.pName)});
    }
    return kalender;
}

std::string NameDesSchalters(bool CHoliday::*pSchalter) {
    const auto it = std::ranges::find(NAMEN, pSchalter, &SName::pSchalter);
    return it == std::end(NAMEN) ? std::string() : it->pName;
}

CString Wochentagname(const CString & sDatum) { return CString(WOCHENTAGE[Wochentag(sDatum)]); }

std::vector<SFeiertag> Feiertage(const CHoliday & kalender, int iVonJahr, int iBisJahr) {
    std::vector<CFerien> vFerien;
    const CString sAb = Jahrestext(iVonJahr);
    const CString sEnde = Jahrestext(iBisJahr);
    kalender.GetAllHolidays(vFerien, sAb + "0101", sEnde + "1231");
    for (const CFerien & ferien : kalender.m_vFerien)
        if (IstFeiertag(ferien) && ferien.m_sVon.Left(4) >= sAb && ferien.m_sVon.Left(4) <= sEnde)
            vFerien.push_back(ferien);
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
