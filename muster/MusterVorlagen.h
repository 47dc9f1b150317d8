// What is done at the visits of the sample practice: data/besuche.csv and data/leistungen.csv.
//
// A template is a visit: services with the share of visits in which they occur. Frequencies are guesses at a
// practice's everyday, no statistics.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace orvostat {

// What a service refers to: nothing, the visit's tooth, another one, the tooth's canals, some or nearly
// all teeth.
enum class EBezug : std::uint8_t { Mund, Zahn, Anderer, Kanal, Einige, Gebiss };

// When a service is done at all.
enum class EWann : std::uint8_t {
    Immer,
    Mehrkosten, // at visits of a filling that is better than the insurer pays for
    Labor,      // of a plan whose work the practice's own laboratory does
};

struct SPosten {
    char cGoArt;
    std::string_view sLst; // alternatives with "|" between them; the visit draws once which place it takes
    int iProzent;
    EBezug eBezug;
    EWann eWann;
};

struct SVorlage {
    char cAkte;   // the bill: a general, b denture, c orthodontics, d jaw fracture, e periodontics
    int iGewicht; // among the visits of its list
    int iTextProzent;
    // Of a treatment that goes over several visits: working days from the visit before, and whether this is the visit
    // at which laboratory work is fitted.
    int iTageVon;
    int iTageBis;
    bool bEingliederung;
    std::span<const SPosten> vPosten;
};

// A list of visits by its name in the file: either everyday visits to draw from, or one treatment's visits in their
// order. std::out_of_range for a name that the file does not have.
[[nodiscard]] std::span<const SVorlage> Besuche(std::string_view sListe);

} // namespace orvostat
