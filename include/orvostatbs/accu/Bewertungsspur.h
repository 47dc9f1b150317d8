// What a valuation did, step by step, for showing where an amount comes from.
//
// A caller that wants to know points CStatAccu::m_pSpur at a spur; GetGOData, GetLstErsatz, GetPunkte, GetBetrag and
// NurDenKassenanteil then note each step as they take it, behind what stands there already. Nothing is computed for
// the spur's sake, so it cannot differ from the valuation.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"

#include <utility>
#include <vector>

namespace orvostat {

// A step, and what its fields hold. Points and quantities are hundredths, factors ten-thousandths; "after" is the
// amount that the step leaves. Fields not named are empty. A step about the point value is noted only where the amount
// comes from points.
enum class EBewertung {
    // The fee row. sText service, cArt its kind.
    Gebuehrenzeile, // found; sText2 short code, cUnterart sub-kind
    KeineZeile,
    Ersatzleistung, // substitute taken; sText2 the short code replaced, cUnterart sub-kind

    // Points and point value.
    Ordination,    // visit fee by speciality; iZahl points
    PunktwertPlan, // frozen with the plan; betrag value, sText plan, sText2 its date
    NeuerParPlan,  // the plan freezes no value; sText plan, sText2 its date
    // From the table; betrag value, sText group, sText2 date asked for, sText3 valid from, sText4 plan whose date that
    // is (empty for the service's own), cArt kind, cUnterart region ("9" east).
    PunktwertTafel,
    // Not in the table; sText group, sText2 date asked for, sText3 insurer, sText4 as above, cArt kind.
    KeinPunktwert,
    Mischwert,       // mixed value that an earlier service of the plan has set; betrag value, sText plan
    MischwertFaktor, // the same, set by this service's factor

    // The stored amount.
    Gespeichert,     // stands for its mark; betrag
    Eingetragen,     // stands since nothing is derived for this kind of service, cArt; betrag
    Gruppenleistung, // divided by the heads; iZahl heads, betrag after

    // A private service.
    OhneFaktor, // factor 0; betrag zero
    OhneSatz,   // simple rate or points 0; betrag zero; cArt as for Einfachsatz
    PunkteQ,    // points times 5.62421 euro times factor, rounded; iZahl points, iZahl2 factor, betrag after
    // Rate times factor, rounded; betrag2 rate, cArt "V" for the second rate, which special insurers have, iZahl2
    // factor, betrag after.
    Einfachsatz,
    EinfachsatzAb,     // the same, rounded down
    Anzahl,            // times the quantity; iZahl quantity, betrag after
    Regionalabschlag,  // times the region's factor; iZahl factor, betrag2 taken off, betrag after
    Waehrung,          // converted to currency cArt; betrag after
    Behandlerabschlag, // iZahl hundredths of a percent taken off; betrag after

    // An insurer's service.
    AnderePunkte,     // alternative points; iZahl points
    EntfernungBetrag, // percentage of the stored amount, times the quantity; iZahl percent, betrag after
    EntfernungPunkte, // percentage of the points; iZahl percent, iZahl2 points after, iZahl3 points before
    PunkteMalWert, // points times quantity times value; iZahl points, iZahl2 quantity, betrag2 value, betrag after

    Kassenanteil, // the insurer's share; iZahl percent, betrag after
};

struct SBewertungsschritt {
    EBewertung eSchritt;
    CString sText{};
    CString sText2{};
    CString sText3{};
    CString sText4{};
    char cArt = 0;
    char cUnterart = 0;
    int iZahl = 0;
    int iZahl2 = 0;
    int iZahl3 = 0;
    CDBetrag betrag{};
    CDBetrag betrag2{};

    [[nodiscard]] friend bool operator==(const SBewertungsschritt &, const SBewertungsschritt &) = default;
};

class CBewertungsspur {
public:
    void Notiere(SBewertungsschritt schritt) { m_vSchritte.push_back(std::move(schritt)); }
    void Leere() { m_vSchritte.clear(); }
    // In the order in which they were taken.
    [[nodiscard]] const std::vector<SBewertungsschritt> & Schritte() const { return m_vSchritte; }

private:
    std::vector<SBewertungsschritt> m_vSchritte;
};

} // namespace orvostat
