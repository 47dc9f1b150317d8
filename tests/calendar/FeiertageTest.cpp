#include "orvostatbs/calendar/Feiertage.h"

#include "support/Wert.h"

#include <gtest/gtest.h>

namespace orvostat {
namespace {

TEST(Feiertage, Bundeslaender) {
    std::string s;
    for (const SBundesland & land : Bundeslaender())
        s += std::string(land.sKuerzel) + ' ' + land.pName + ' ';
    EXPECT_EQ(s, "BB Brandenburg BE Berlin BW Baden-Württemberg BY Bayern HB Bremen HE Hessen HH Hamburg "
                 "MV Mecklenburg-Vorpommern NI Niedersachsen NW Nordrhein-Westfalen RP Rheinland-Pfalz "
                 "SH Schleswig-Holstein SL Saarland SN Sachsen ST Sachsen-Anhalt TH Thüringen ");
}

// Days before and after the law of a state has changed.
TEST(Feiertage, NachDemRechtDesJahres) {
    constexpr struct {
        const char *pLand, *pDatum, *pName;
    } FAELLE[] = {
        {"MV", "20220308", ""},
        {"MV", "20230308", "Frauentag"},
        {"NI", "19941116", "Buß- und Bettag"},
        {"NI", "19951122", ""},
        {"SN", "19951122", "Buß- und Bettag"},
        {"NI", "20161031", ""},
        {"BE", "20171031", "Reformationstag"},
        {"NI", "20181031", "Reformationstag"},
        {"BE", "20200508", "Tag der Befreiung"},
        {"BB", "20240331", "Ostersonntag"},
        {"BY", "20240530", "Fronleichnam"},
        {"TH", "20240530", ""},
        {"HE", "20080501", "Tag der Arbeit / Christi Himmelfahrt"},
    };
    for (const auto & fall : FAELLE) {
        const CString sDatum(fall.pDatum);
        const int iJahr = std::stoi(sDatum.Left(4).Utf8());
        std::string sName;
        for (const SFeiertag & tag :
             Feiertage(KalenderFuer(*FindeBundesland(fall.pLand), iJahr), iJahr, iJahr))
            if (tag.sDatum == sDatum) sName = tag.sName.Utf8();
        EXPECT_EQ(sName, fall.pName) << fall.pLand << sDatum.Utf8();
    }
}

} // namespace
} // namespace orvostat
