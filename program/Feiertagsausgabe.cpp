#include "Feiertagsausgabe.h"

#include "orvostatbs/host/Datum.h"

#include <ostream>

namespace orvostat {

namespace {

constexpr SAusgabespalte SPALTEN[] = {
    {"datum", EZelle::Datum, 10}, {"wochentag", EZelle::Text, 10}, {"name", EZelle::Text, 60}};

} // namespace

std::vector<std::string> Landeskuerzel() {
    std::vector<std::string> v;
    for (const SBundesland & land : Bundeslaender())
        v.emplace_back(land.sKuerzel);
    return v;
}

void SchreibeFeiertage(std::ostream & aus, EFormat eFormat, const std::vector<SFeiertag> & vFeiertage) {
    const auto pAusgabe = CAusgabe::Neu(eFormat, aus, SPALTEN);
    for (const SFeiertag & tag : vFeiertage)
        pAusgabe->Zeile({tag.sDatum, tag.sWochentag, tag.sName});
    pAusgabe->Ende();
}

// A day without an end lasts that day.
void SchreibeIcs(std::ostream & aus, const std::vector<SFeiertag> & vFeiertage) {
    const std::string sStempel = GetMxDate().Utf8() + "T000000Z";
    aus << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//OrvoStatBs//Kalender//DE\r\nCALSCALE:GREGORIAN\r\n";
    for (const SFeiertag & tag : vFeiertage) {
        const std::string sDatum = tag.sDatum.Utf8();
        aus << "BEGIN:VEVENT\r\nUID:feiertag-" << sDatum << "@orvostat\r\nDTSTAMP:" << sStempel
            << "\r\nDTSTART;VALUE=DATE:" << sDatum << "\r\nSUMMARY:" << tag.sName.Utf8()
            << "\r\nTRANSP:TRANSPARENT\r\nEND:VEVENT\r\n";
    }
    aus << "END:VCALENDAR\r\n";
}

} // namespace orvostat
