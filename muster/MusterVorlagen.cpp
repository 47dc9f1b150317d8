#include "MusterVorlagen.h"

#include "MusterDaten.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvostat {

namespace {

// In the order of the enumerators.
constexpr std::string_view BEZUEGE[] = {"Mund", "Zahn", "Anderer", "Kanal", "Einige", "Gebiss"};
constexpr std::string_view WANN[] = {"Immer", "Mehrkosten", "Labor"};

template <class E, std::size_t N> E Wort(std::string_view s, const std::string_view (&asWorte)[N]) {
    const auto it = std::ranges::find(asWorte, s);
    if (it == std::end(asWorte)) throw std::out_of_range("unknown word: " + std::string(s));
    return static_cast<E>(it - std::begin(asWorte));
}

class CVorlagen {
public:
    CVorlagen() {
        for (const auto & zeile : m_leistungen)
            m_mapPosten[zeile["besuch"]].push_back(
                {zeile.Zeichen("goart"), zeile["nummer"], zeile.Zahl("prozent"),
                 Wort<EBezug>(zeile["bezug"], BEZUEGE), Wort<EWann>(zeile["wann"], WANN)});
        for (const auto & zeile : m_besuche)
            m_mapListen[zeile["liste"]].push_back({zeile.Zeichen("akte"), zeile.Zahl("gewicht"),
                                                   zeile.Zahl("text_prozent"), zeile.Zahl("tage_von"),
                                                   zeile.Zahl("tage_bis"), zeile.Zahl("eingliederung") != 0,
                                                   m_mapPosten.at(zeile["besuch"])});
    }
    [[nodiscard]] std::span<const SVorlage> Liste(std::string_view sName) const {
        return m_mapListen.at(sName);
    }

private:
    CMusterDaten m_leistungen{"leistungen"};
    CMusterDaten m_besuche{"besuche"};
    std::map<std::string_view, std::vector<SPosten>> m_mapPosten;
    std::map<std::string_view, std::vector<SVorlage>> m_mapListen;
};

} // namespace

std::span<const SVorlage> Besuche(std::string_view sListe) {
    static const CVorlagen s_vorlagen;
    return s_vorlagen.Liste(sListe);
}

} // namespace orvostat
