// What is done at the visits of the sample practice.
//
// A template is a visit: services with the share of visits in which they occur. Frequencies are guesses at a
// practice's everyday, no statistics.
#pragma once

#include <cstdint>
#include <span>

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
    const char * pLst; // alternatives with "|" between them; the visit draws once which place it takes
    int iProzent;
    EBezug eBezug = EBezug::Mund;
    EWann eWann = EWann::Immer;
};

struct SVorlage {
    char cAkte;   // the bill: a general, b denture, c orthodontics, d jaw fracture, e periodontics
    int iGewicht; // among the visits of its list
    int iTextProzent;
    std::span<const SPosten> vPosten;
};

// Lists of everyday visits: statutory adults and children, private patients, home visits, payers with a schedule of
// their own.
extern const std::span<const SVorlage> VORLAGEN_KASSE;
extern const std::span<const SVorlage> VORLAGEN_KIND;
extern const std::span<const SVorlage> VORLAGEN_PRIVAT;
extern const std::span<const SVorlage> VORLAGEN_HEIM;
[[nodiscard]] std::span<const SVorlage> VorlagenSonstige(char cGoArt);

// Visits of a treatment that goes over several: one list per visit, days are working days from the visit before.
struct SAbschnitt {
    int iTageVon;
    int iTageBis;
    bool bEingliederung; // the visit at which laboratory work is fitted
    SVorlage vorlage;
};
extern const std::span<const SAbschnitt> FOLGE_ENDO;
extern const std::span<const SAbschnitt> FOLGE_ZE_KASSE;
extern const std::span<const SAbschnitt> FOLGE_ZE_PRIVAT;
extern const std::span<const SAbschnitt> FOLGE_PAR;
extern const std::span<const SAbschnitt> FOLGE_PAR_PRIVAT;
extern const std::span<const SAbschnitt> FOLGE_PAR_CHIRURGIE; // behind FOLGE_PAR for some
extern const std::span<const SAbschnitt> FOLGE_UPT;
extern const std::span<const SAbschnitt> FOLGE_KFO;
extern const std::span<const SAbschnitt> FOLGE_KFO_PRIVAT;
extern const std::span<const SAbschnitt> FOLGE_KBR;
extern const std::span<const SAbschnitt> FOLGE_IMPLANTAT;
extern const SVorlage KFO_KONTROLLE; // once or twice a quarter during orthodontics

} // namespace orvostat
