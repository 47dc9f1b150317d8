#include "orvostatbs/calendar/Holiday.h"

#include "orvostatbs/calendar/WPFApplication.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

namespace orvostat {

namespace {

constexpr int MITTWOCH = 4;

// Days from Easter Sunday.
constexpr int ROSENMONTAG = -48;
constexpr int KARFREITAG = -2;
constexpr int OSTERMONTAG = 1;
constexpr int CHRISTI_HIMMELFAHRT = 39;
constexpr int PFINGSTMONTAG = 50;
constexpr int FRONLEICHNAM = 60;

enum class ERegel { Fest, Ostern, BussBettag };

struct SFeiertag {
    bool CHoliday::*pSchalter; // null: a holiday everywhere
    ERegel eRegel;
    int iWert; // Fest: month and day as MMDD; Ostern: days from Easter Sunday
};

// In the order in which GetAllHolidays gives them.
constexpr SFeiertag FEIERTAGE[] = {
    {&CHoliday::m_bAllerheiligen, ERegel::Fest, 1101},
    {&CHoliday::m_bBussBettag, ERegel::BussBettag, 0},
    {&CHoliday::m_bFronleichnam, ERegel::Ostern, FRONLEICHNAM},
    {&CHoliday::m_bDreiKoenige, ERegel::Fest, 106},
    {&CHoliday::m_bMariaHimmelfahrt, ERegel::Fest, 815},
    {&CHoliday::m_bReformationstag, ERegel::Fest, 1031},
    {&CHoliday::m_bHeiligabend, ERegel::Fest, 1224},
    {&CHoliday::m_bSilvester, ERegel::Fest, 1231},
    {&CHoliday::m_bRosenmontag, ERegel::Ostern, ROSENMONTAG},
    {nullptr, ERegel::Ostern, KARFREITAG},
    {nullptr, ERegel::Ostern, OSTERMONTAG},
    {nullptr, ERegel::Ostern, CHRISTI_HIMMELFAHRT},
    {nullptr, ERegel::Ostern, PFINGSTMONTAG},
    {nullptr, ERegel::Fest, 1225},
    {nullptr, ERegel::Fest, 1226},
    {nullptr, ERegel::Fest, 101},
    {nullptr, ERegel::Fest, 501},
    {nullptr, ERegel::Fest, 1003},
};

static_assert(std::size(FEIERTAGSSCHALTER) == HVM_FEIERTAGE);

// The weekdays of the mask's bits, 1 Sunday to 7 Saturday; 0 for a bit without a day.
constexpr int MASKE[] = {2, 3, 4, 5, 6, 0, 7, 1};

CString Stellen(std::int64_t i, int iStellen) { return RightFix(itoc(i), iStellen, '0'); }

CString Jahr(const CString & sDatum) { return sDatum.Left(4); }

// The day of a text YYYYMMDD, none for any other.
CMxDate Tag(const CString & sDatum) { return CMxDate(GueltigesDatum(sDatum) ? sDatum : CString()); }

CMxDate Ostern(const CString & sJahr) { return CMxDate(CHoliday::OsternImJahr(sJahr)); }

CString OsternPlus(const CString & sJahr, int iTage) { return Ostern(sJahr) + iTage; }

CString DatumImJahr(const SFeiertag & feiertag, const CString & sJahr) {
    switch (feiertag.eRegel) {
    case ERegel::Ostern:
        return OsternPlus(sJahr, feiertag.iWert);
    case ERegel::BussBettag:
        return CHoliday::GetBussBettag(sJahr);
    case ERegel::Fest:
        break;
    }
    return sJahr + Stellen(feiertag.iWert, 4);
}

bool Gilt(const SFeiertag & feiertag, const CHoliday & kalender) {
    return !feiertag.pSchalter || kalender.*feiertag.pSchalter;
}

bool IstFeiertag(const CHoliday & kalender, const CString & sDatum, const CMxDate & tag) {
    const CString sJahr = Jahr(sDatum);
    const CMxDate ostern = Ostern(sJahr);
    const int iMonatTag = Zahl(sDatum.Mid(4));
    return std::ranges::any_of(FEIERTAGE, [&](const SFeiertag & feiertag) {
        if (!Gilt(feiertag, kalender)) return false;
        switch (feiertag.eRegel) {
        case ERegel::Ostern:
            return tag == ostern + feiertag.iWert;
        case ERegel::BussBettag:
            return sDatum == CHoliday::GetBussBettag(sJahr);
        case ERegel::Fest:
            break;
        }
        return iMonatTag == feiertag.iWert;
    });
}

struct SDatum {
    int iJahr, iMonat, iTag;
    explicit SDatum(const CString & s)
        : iJahr(Zahl(Jahr(s))), iMonat(Zahl(s.Mid(4, 2))), iTag(Zahl(s.Mid(6, 2))) {}
    [[nodiscard]] int Quartal() const { return (iMonat - 1) / 3 + 1; }
    [[nodiscard]] int LetzterTag() const { return LastDayI(iMonat, iJahr); }
    [[nodiscard]] bool ImMonat(int iM, int iJ) const { return iMonat == iM && iJahr == iJ; }
};

// A share of days; 0 of a month that is none.
double Anteil(int iTeil, int iGesamt) { return iGesamt == 0 ? 0.0 : static_cast<double>(iTeil) / iGesamt; }

// The days of a month that lie inside the period.
int TageImMonat(int iMonat, int iJahr, const SDatum & von, const SDatum & bis) {
    const bool bVon = von.ImMonat(iMonat, iJahr);
    const bool bBis = bis.ImMonat(iMonat, iJahr);
    if (bVon) return (bBis ? bis.iTag : von.LetzterTag()) - von.iTag + 1;
    if (bBis) return bis.iTag;
    const bool bDazwischen =
        (von.iMonat < iMonat || von.iJahr < iJahr) && (iMonat < bis.iMonat || iJahr < bis.iJahr);
    return bDazwischen ? LastDayI(iMonat, iJahr) : 0;
}

// The covered share of the months iMonatVon to iMonatBis of a year.
double AnteilZeitraum(int iJahr, int iMonatVon, int iMonatBis, const SDatum & von, const SDatum & bis) {
    int iTeil = 0;
    int iGesamt = 0;
    for (int iMonat = iMonatVon; iMonat <= iMonatBis; ++iMonat) {
        iTeil += TageImMonat(iMonat, iJahr, von, bis);
        iGesamt += LastDayI(iMonat, iJahr);
    }
    return Anteil(iTeil, iGesamt);
}

} // namespace

CHoliday::CHoliday() { Init(); }

void CHoliday::Init() {
    m_vFerien.clear();
    for (int i = 0; i < 8; ++i)
        m_abWochentag[i] = i >= 2 && i <= 6;
    for (const auto pSchalter : FEIERTAGSSCHALTER)
        this->*pSchalter = false;
}

bool CHoliday::ReadFeiertage() {
    const CAutoRSet<CTParPool> pPool;
    pPool->m_GRUPPE = itoc(HVM_GRUPPE);
    pPool->m_KUERZEL = HvmFeiertagKuerzel();
    const int iErgebnis = pPool->GetByK1(MATCH_GENAU);
    if (iErgebnis != ZEILE_OK) return iErgebnis == ZEILE_KEINE;
    bool abFeiertag[HVM_FEIERTAGE];
    LiesHvmFeiertage(pPool->m_WERT, abFeiertag);
    for (std::size_t i = 0; i < std::size(abFeiertag); ++i)
        this->*FEIERTAGSSCHALTER[i] = abFeiertag[i];
    return true;
}

// ---- working days

bool CHoliday::IstArbeitstag(const CString & sDatum) const {
    const CMxDate tag = Tag(sDatum);
    return m_abWochentag[tag.Wochentag()] && !IstFeiertag(*this, sDatum, tag);
}

bool CHoliday::NaechsterArbeitstag(CString & sDatum) const {
    if (std::none_of(std::begin(m_abWochentag) + 1, std::end(m_abWochentag), [](bool b) { return b; }))
        return true;
    if (!GueltigesDatum(sDatum)) return true;
    CString sTag = sDatum;
    while (!sTag.IsEmpty() && !IstArbeitstag(sTag))
        sTag = CMxDate(sTag) + 1;
    if (!sTag.IsEmpty()) sDatum = sTag;
    return true;
}

int CHoliday::GetAnzArbeitsTage(const CString & sVon, const CString & sBis) const {
    std::vector<CFerien> vFeiertage; // single days: sorted, a day is found in a few steps
    GetAllHolidays(vFeiertage, sVon, sBis);
    std::ranges::sort(vFeiertage, {}, &CFerien::m_sVon);
    int iAnzahl = 0;
    for (CMxDate tag = Tag(sVon); tag.IsValid(); tag = tag + 1) {
        const CString sTag = tag;
        if (sTag > sBis) break;
        if (m_abWochentag[tag.Wochentag()] &&
            !std::ranges::binary_search(vFeiertage, sTag, {}, &CFerien::m_sVon) &&
            !DayInHoliday(m_vFerien, sTag))
            ++iAnzahl;
    }
    return iAnzahl;
}

// ---- holidays of a period

void CHoliday::GetAllHolidays(std::vector<CFerien> & vOut, const CString & sVon, const CString & sBis) const {
    const int iBis = Zahl(Jahr(sBis));
    CString sJahr = Jahr(sVon);
    for (int iJahr = Zahl(sJahr); iJahr <= iBis; sJahr = Stellen(++iJahr, 4))
        for (const SFeiertag & feiertag : FEIERTAGE)
            if (Gilt(feiertag, *this)) AddIfIsInZeitraum(DatumImJahr(feiertag, sJahr), sVon, sBis, vOut);
}

bool CHoliday::AddIfIsInZeitraum(const CString & sDatum, const CString & sVon, const CString & sBis,
                                 std::vector<CFerien> & vOut) {
    if (sDatum < sVon || sDatum > sBis) return false;
    vOut.push_back({sDatum, sDatum, CString()});
    return true;
}

bool CHoliday::DayInHoliday(const std::vector<CFerien> & v, const CString & sDatum) {
    return std::ranges::any_of(
        v, [&](const CFerien & ferien) { return ferien.m_sVon <= sDatum && sDatum <= ferien.m_sBis; });
}

// ---- feasts

CString CHoliday::OsternImJahr(const CString & sJahr) {
    const std::int64_t J = Zahl(sJahr);
    const std::int64_t K = J / 100;                                  // the century
    const std::int64_t M = 15 + (3 * K + 3) / 4 - (8 * K + 13) / 25; // the moon's shift in it
    const std::int64_t S = 2 - (3 * K + 3) / 4;                      // the sun's shift in it
    const std::int64_t A = J % 19;                                   // the year's place in the moon's cycle
    const std::int64_t D = (19 * A + M) % 30;                        // the first full moon of spring, about
    const std::int64_t R = (D / 28 - D / 29) * (A / 11) + D / 29;    // its correction
    const std::int64_t OG = 21 + D - R;                              // the Easter limit, counted from 1 March
    const std::int64_t OE = 7 - (OG - (7 - (J + J / 4 + S) % 7)) % 7;
    const std::int64_t OS = OG + OE; // Easter Sunday, counted from 1 March
    const bool bMaerz = OS < 32;
    return sJahr + Stellen(bMaerz ? 3 : 4, 2) + Stellen(bMaerz ? OS : OS - 31, 2);
}

CString CHoliday::GetKarfreitag(const CString & sJahr) { return OsternPlus(sJahr, KARFREITAG); }
CString CHoliday::GetOstermontag(const CString & sJahr) { return OsternPlus(sJahr, OSTERMONTAG); }
CString CHoliday::GetChristiHimmelfahrt(const CString & sJahr) {
    return OsternPlus(sJahr, CHRISTI_HIMMELFAHRT);
}
CString CHoliday::GetPfingstmontag(const CString & sJahr) { return OsternPlus(sJahr, PFINGSTMONTAG); }
CString CHoliday::GetFronleichnam(const CString & sJahr) { return OsternPlus(sJahr, FRONLEICHNAM); }
CString CHoliday::GetRosenmontag(const CString & sJahr) { return OsternPlus(sJahr, ROSENMONTAG); }

CString CHoliday::GetBussBettag(const CString & sJahr) {
    CMxDate tag(sJahr + "1116");
    for (int i = 0; i < 7; ++i, tag = tag + 1)
        if (tag.Wochentag() == MITTWOCH) return tag;
    return {};
}

// ---- lengths

double CHoliday::GetAnzMonate(const CString & sVon, const CString & sBis) {
    const SDatum von(sVon);
    const SDatum bis(sBis);
    const int iDazwischen = bis.iMonat - 1 + (bis.iJahr - von.iJahr) * 12 - von.iMonat;
    return Anteil(bis.iTag, bis.LetzterTag()) + iDazwischen +
           Anteil(von.LetzterTag() - von.iTag + 1, von.LetzterTag());
}

double CHoliday::GetAnzQuartale(const CString & sVon, const CString & sBis) {
    const SDatum von(sVon);
    const SDatum bis(sBis);
    const auto AnteilQuartal = [&](const SDatum & datum) {
        const int iQuartal = datum.Quartal();
        return AnteilZeitraum(datum.iJahr, 3 * iQuartal - 2, 3 * iQuartal, von, bis);
    };
    const int iDazwischen = (bis.iJahr - von.iJahr) * 4 - von.Quartal() - 1 + bis.Quartal();
    if (von.iJahr == bis.iJahr && von.Quartal() == bis.Quartal()) return AnteilQuartal(von);
    return AnteilQuartal(von) + iDazwischen + AnteilQuartal(bis);
}

double CHoliday::GetAnzJahre(const CString & sVon, const CString & sBis) {
    const SDatum von(sVon);
    const SDatum bis(sBis);
    const auto AnteilJahr = [&](int iJahr) { return AnteilZeitraum(iJahr, 1, 12, von, bis); };
    if (von.iJahr == bis.iJahr) return AnteilJahr(von.iJahr);
    return AnteilJahr(von.iJahr) + (bis.iJahr - von.iJahr - 1) + AnteilJahr(bis.iJahr);
}

// ---- the outer world

bool NaechsterArbeitstag(int iWochentage, CString & sDatum) {
    CHoliday kalender;
    bool bEinTag = false;
    for (std::size_t i = 0; i < std::size(MASKE); ++i) {
        if (MASKE[i] == 0) continue;
        const bool bGesetzt = (iWochentage & (1 << i)) != 0;
        kalender.m_abWochentag[MASKE[i]] = bGesetzt;
        bEinTag = bEinTag || bGesetzt;
    }
    return bEinTag && kalender.ReadFeiertage() && kalender.NaechsterArbeitstag(sDatum);
}

void SetWPFHolidays() {
    CHVMCf einstellungen;
    einstellungen.ReadFt();
    einstellungen.ReadUr(dbMdId);
    std::vector<std::pair<CString, CString>> vPerioden;
    for (const CHVMUrParam & ur : einstellungen.m_vUrParam)
        vPerioden.insert(vPerioden.end(), ur.m_vUrlaub.begin(), ur.m_vUrlaub.end());
    CWPFApplication::SetHolidays(einstellungen.m_sFeiertag, vPerioden);
}

} // namespace orvostat
