// What is asked of a finished or half-built hit: tests, predicates, equality.
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/records/BehHitLine.h"

#include <algorithm>

namespace orvostat {

namespace {

constexpr CString KBR_LEISTUNGEN[] = {"k1", "k2", "k3", "k4", "up3"};
constexpr CString PAR_LEISTUNGEN[] = {"p200", "p201", "p202", "p203"};
constexpr CString KFO_ROENTGEN[] = {"ä925a", "ä925b", "ä925c", "ä925d", "ä928",  "ä934a", "ä934b",
                                    "ä934c", "ä935a", "ä935b", "ä935c", "ä935d", "12"};
constexpr CString FIKTIVE_LEISTUNGEN[] = {"13a", "13b", "13c", "13d"};
constexpr CBuchstaben IstSachkostenSubArt{"123"};

// Fields that make two hits the same entry; ABRART besides.
constexpr CString CBehHitLine::*GLEICHE_FELDER[] = {
    &CBehHitLine::PATNR,         &CBehHitLine::LFDLBLOCK,
    &CBehHitLine::MATBUCHUNG,    &CBehHitLine::m_sGbAnzahl,
    &CBehHitLine::DMBETRAG,      &CBehHitLine::GESBETRAG,
    &CBehHitLine::ENDGEWICHT,    &CBehHitLine::SCHLEIFRESTE,
    &CBehHitLine::PREISOMWST,    &CBehHitLine::SCHLEIFRESTEGES,
    &CBehHitLine::BESTANDOSR,    &CBehHitLine::BEHANDLERNR,
    &CBehHitLine::DATUM,         &CBehHitLine::LSTNR,
    &CBehHitLine::LFDBEHEINTRAG, &CBehHitLine::TEXT,
    &CBehHitLine::PLANNR,        &CBehHitLine::LFDGLBLOC,
    &CBehHitLine::LABORKUNDE,
};

// The hit is a service of the insurers' schedule and one of the list.
template <std::size_t N> bool IstKassenleistung(const CBehHitLine & hit, const CString (&asLeistungen)[N]) {
    return IstKassenArt(hit.GOART) && std::ranges::find(asLeistungen, hit.LSTNR) != std::end(asLeistungen);
}

} // namespace

CBehHitLine::CQuartalsCache CBehHitLine::s_mapMultiband;
CBehHitLine::CQuartalsCache CBehHitLine::s_mapKfoAbschlaege;
CBehHitLine::SPatName CBehHitLine::s_patname;

void CBehHitLine::ClearMaps() {
    s_mapMultiband.clear();
    s_mapKfoAbschlaege.clear();
    s_patname = SPatName();
}

bool CBehHitLine::ImQuartal(CQuartalsCache & cache, CFrage * pFrage) const {
    const CString sVon = QuartalsAnfang(DATUM);
    auto & mapQuartale = cache[PATNR];
    const auto it = mapQuartale.find(sVon);
    if (it != mapQuartale.end()) return it->second;
    const bool bAntwort = pFrage(PATNR, sVon, QuartalsEnde(DATUM));
    mapQuartale.emplace(sVon, bAntwort);
    return bAntwort;
}

void CBehHitLine::TestMultiband() {
    if (ABRART == 'k' && ImQuartal(s_mapMultiband, &CTBeh::IsMultibandBehandlung)) ABRART = 'm';
}

bool CBehHitLine::TestKFOAbschlaege() {
    return !IstKfoAbrArt(ABRART) || ImQuartal(s_mapKfoAbschlaege, &CTBeh::IsKfoAbschlaege);
}

bool CBehHitLine::TestKBRKX(bool bMitSach) const {
    if (!IstKbrAbrArt(ABRART)) return true;
    if (bMitSach && IstSachLeistung(GOART, GOSUBART)) return true;
    return IstKassenleistung(*this, KBR_LEISTUNGEN);
}

bool CBehHitLine::TestPARP20X(bool bMitSach) const {
    if (!IstParAbrArt(ABRART)) return true;
    if (bMitSach && IstSachLeistung(GOART, GOSUBART)) return true;
    return IstKassenleistung(*this, PAR_LEISTUNGEN);
}

bool CBehHitLine::TestKFORoe() const {
    return !IstKfoAbrArt(ABRART) || GOSTATISTIKART != 'a' || IstKassenleistung(*this, KFO_ROENTGEN);
}

bool CBehHitLine::IsKasZu() const { return IstGozArt(GOART) && LSTNR == "9262"; }

bool CBehHitLine::IsPrivatSachkosten() const {
    return GOART == 'a' || (IstGozArt(GOART) && IstSachkostenSubArt(GOSUBART));
}

bool CBehHitLine::IsKKGebEnt() const { return IstKassenArt(GOART) && (LSTNR == "kkgeb" || LSTNR == "kkent"); }

bool CBehHitLine::IsPrivat() const { return IstPrivatNachweis(VNACHWEIS); }

void CBehHitLine::FiktiveLeistungen() {
    if (!IstKassenleistung(*this, FIKTIVE_LEISTUNGEN)) return;
    if (DTAGRUND == 'f') LSTNR += '0';
    if (DTAGRUND == 'i') LSTNR += '1';
}

bool CBehHitLine::operator==(const CBehHitLine & hit) const {
    return ABRART == hit.ABRART &&
           std::ranges::all_of(GLEICHE_FELDER, [&](auto pFeld) { return this->*pFeld == hit.*pFeld; });
}

} // namespace orvostat
