// The statistic run: from a set selection to finished tables.
//
// The accumulator brings the rules; the order in which they are asked stands here. A CLauf takes an accumulator whose
// selection is set, reads the master data, walks the treatments and the side records of the period, and leaves the
// tables in the accumulator. Every treatment it reads is either a hit or counted under one reason.
#pragma once

#include "orvostatbs/accu/StatAccu.h"

#include <array>
#include <cstdint>
#include <functional>
#include <numeric>
#include <optional>
#include <unordered_set>
#include <vector>

namespace orvostat {

// Where a run has come to: behind all treatments of a patient, or behind all records of a kind.
enum class ELaufstelle {
    Patient,
    Behandlungen,
    Laborbloecke,
    Gewerbelabor,
    Sammelrechnungen,
    Gipsmodelle,
    Rechnungen,
    Verordnungen,
};

// Why a treatment that was read is no hit: the first section of the selection that leaves it out, in the order in which
// they are asked; for one that is selected, its first defect.
enum class EWeglassgrund {
    Zeitraum,
    Patient,
    Behandler,
    Gebuehrenart,
    Erfasser,
    Status,
    Plan,
    Abrechnungsart,
    Praxis,
    Versicherung,
    Kasse,
    Leistung,
    Punktwertart,
    Abrechenbar,
    Technik,            // a service of the kind "7" whose sub-kind is not among TecGoSubArten
    BehandlerUnbekannt, // from here on: defects
    PraxisUnbekannt,
    OhnePlannummer, // from here on: the plan gate
    PlanFehlt,
    Planstand,
};
inline constexpr std::size_t WEGLASSGRUENDE = static_cast<std::size_t>(EWeglassgrund::Planstand) + 1;
// The reason in German, for a report: "Plan fehlt".
[[nodiscard]] const CString & Weglassname(EWeglassgrund eGrund);
// The treatment is selected and yet does not count: nobody bills it.
[[nodiscard]] constexpr bool IstMangel(EWeglassgrund eGrund) {
    return eGrund >= EWeglassgrund::BehandlerUnbekannt;
}

// What a run does beside the selection.
struct SLaufauftrag {
    bool bPlangatter = true; // denture, orthodontic and periodontal services count only with a plan in order
    bool bOhne22a = false;   // without periodontal plans of the shortened procedure
    bool bParMarken = false; // finer kinds of periodontal billing
    bool bParBeva = false;   // the same in three stages
    bool bErsatz = false; // replace services by their substitutes, group iErsatzgruppe of the parameter pool
    int iErsatzgruppe = 54;
    bool bKassenanteil = false; // denture and orthodontic amounts by the insurer's share
    bool bNebenakten =
        false; // laboratory blocks, collective invoices, plaster models, invoices, prescriptions

    // false: of the selection only the period and the patient of Laufe count. A treater who is not selected or not
    // known leaves the hit without his practice, deduction and commission.
    bool bSelektion = true;
    // false: BETRAG stays as it was entered; points and point value are those of a run. No share of the insurer.
    bool bBewertung = true;
    // false: owners, treaters and select pools may be missing; a table without rows is empty. A failed read still
    // ends the run.
    bool bStammdatenNoetig = true;
    // false: of a patient only his name is read, which then needs no address, and all that was read for him, his
    // errors too, is forgotten with him: m_vPat stays empty. His sections of the selection see no values.
    bool bPatienten = true;
    // true: a treatment of the period that is left out is built and valued too, as far as its rows allow, and the
    // accumulator's work hit holds it in fWeggelassen and behind BaueHit. It changes no other hit and leaves no more
    // errors than else.
    bool bWeggelasseneBewerten = false;

    // Called for each treatment of the run that is no hit, in their order.
    std::function<void(const CTBeh &, EWeglassgrund)> fWeggelassen = nullptr;

    // Called at each ELaufstelle, for a kind that is not wanted not at all: for Patient when the next patient's first
    // treatment comes and behind the last one, whether or not he has hits. May empty the accumulator's tables of hits
    // (m_vBehHits, m_vGlabHits ...), which are then not given room in advance; nothing else of the accumulator. False
    // ends the run as ELauf::Gescheitert. A run that ends early, by whatever cause, does not call it again.
    std::function<bool(ELaufstelle)> fNach = nullptr;
};

enum class ELauf {
    Fertig,
    Abgebrochen, // the user has confirmed to stop
    Unlesbar,    // the store failed, be it in one look-up: the sums are not those of the rows
    Gescheitert, // master data are missing, and the accumulator's message has been shown; or fNach said so
};

// What the run met on its way, for a report. The numbers are those of the whole run, whatever fNach took out of the
// tables.
struct SLaufzahlen {
    std::int64_t iBehandlungen = 0; // rows read: iTreffer and all of aiWeggelassen
    std::int64_t iTreffer = 0;      // treatments that became hits
    std::array<std::int64_t, WEGLASSGRUENDE> aiWeggelassen = {};
    std::int64_t iOhneBill = 0;    // hits without a bill
    std::int64_t iOhnePatient = 0; // hits of patients whose row or address is missing
    std::int64_t iOhneKasse = 0;   // hits without an insurance period or insurer at their date
    std::int64_t iUnlesbar = 0;    // treatments among the hits whose quantity or factor is unsound

    std::int64_t iHits = 0; // iTreffer and the hits of laboratory entries
    std::int64_t iLaborrechnungen = 0;
    std::int64_t iSammelrechnungen = 0;
    std::int64_t iGipsmodelle = 0;
    std::int64_t iRechnungen = 0;
    std::int64_t iVerordnungen = 0;

    [[nodiscard]] std::int64_t Weggelassen(EWeglassgrund eGrund) const {
        return aiWeggelassen[static_cast<std::size_t>(eGrund)];
    }
    [[nodiscard]] std::int64_t Weggelassen() const {
        return std::accumulate(aiWeggelassen.begin(), aiWeggelassen.end(), std::int64_t{0});
    }
};

class CLauf {
public:
    // The accumulator belongs to the caller and outlives the run.
    CLauf(CStatAccu & accu, const SLaufauftrag & auftrag);
    CLauf(const CLauf &) = delete;
    CLauf & operator=(const CLauf &) = delete;
    ~CLauf() { Nachlauf(); }

    // Runs and sorts. After any end but Fertig the tables hold what was collected until then; a run ends at the
    // first row behind a read that failed. m_lAnzHits becomes iHits. Nachlauf is the caller's, when he has done with
    // the accumulator.
    ELauf Laufe();
    [[nodiscard]] const SLaufzahlen & Zahlen() const { return m_stand.zahlen; }

    // Builds the accumulator's work hit of one treatment, whatever its day; false if it is left out, then
    // Weglassgrund() says why. Either is counted. Between Vorlauf and Nachlauf only.
    bool BaueHit(const CTBeh & beh);
    [[nodiscard]] EWeglassgrund Weglassgrund() const {
        return m_stand.grund.value_or(EWeglassgrund::Zeitraum);
    }
    // Start and end by hand, for a caller that walks treatments of its own. A Vorlauf that fails has shown the
    // message, unless Lesefehler. Both may be called again and again; each Vorlauf starts from nothing.
    bool Vorlauf();
    void Nachlauf() { m_accu.DataSumNachlauf(); }
    // A read has failed since Vorlauf, also one of the caller's: what was built misses rows.
    [[nodiscard]] bool Lesefehler() const { return Fehlschlaege() != m_stand.iFehlschlaege; }

private:
    [[nodiscard]] static std::uint64_t Fehlschlaege() {
        return dbDatabase.Fehlschlaege() + dbDatabaseRO.Fehlschlaege();
    }
    void Vergiss();
    [[nodiscard]] int LiesStammdaten(); // 0, or the accumulator's code

    void Baue(const CTBeh & beh);
    void Bewerte(CBehHitLine & hit, const CLebStruct * pLeb, int iPlan);
    void LasseWeg(const CTBeh & beh, EWeglassgrund eGrund);
    // Whether a section lets pass, or none is asked; the reason is kept where not. True also where the hit is built on
    // in spite of it: m_stand.grund says whether it counts.
    [[nodiscard]] bool Passt(EWeglassgrund eGrund, bool bPasst);
    [[nodiscard]] bool Merke(EWeglassgrund eGrund);
    void FragePlan(CBehHitLine & hit, int & iPlan);
    // Whether a hit passes the sections of the selection that look at what the named steps have given.
    [[nodiscard]] bool BehandlerPasst(const CString & sLeb, bool bGewaehlt);
    [[nodiscard]] bool PraxisPasst(const CString & sPraxis);
    [[nodiscard]] bool EintragPasst(const CBehHitLine & hit);
    [[nodiscard]] bool RechnungPasst(const CBehHitLine & hit);
    [[nodiscard]] bool AbrechnungsartPasst(const CBehHitLine & hit);
    [[nodiscard]] bool KassePasst(const CBehHitLine & hit);
    [[nodiscard]] bool LeistungPasst(const CBehHitLine & hit);
    [[nodiscard]] bool PatientPasst(const CPat & pat);
    [[nodiscard]] bool RecallPasst(const CPat & pat);
    [[nodiscard]] bool ImZeitraum(const CString & sDatum) const;

    bool NimmPatient(const CString & sPatNr);
    bool NimmNamen(const CString & sPatNr);
    [[nodiscard]] const CPat * Patient() const; // the patient at hand, null if he cannot be read
    void MovePatient(CBehHitLine & hit);
    bool MoveVersicherung(CBehHitLine & hit);                               // whether there is an insurer
    [[nodiscard]] const CLebStruct * Behandler(const CString & sLeb) const; // a selected one, or null

    // Calls fNimm for each row of the set that was opened with the result iErgebnis. False, and the run's end says
    // why, if not all was read.
    template <class TTabelle, class F> bool Gehe(TTabelle & tabelle, int iErgebnis, F fNimm) {
        for (; iErgebnis == ZEILE_OK && Weiter(); iErgebnis = tabelle.Next())
            fNimm();
        return LaeuftNoch();
    }
    [[nodiscard]] bool LaeuftNoch();
    [[nodiscard]] bool Weiter();
    [[nodiscard]] bool Melde(ELaufstelle eStelle);
    [[nodiscard]] bool MeldePatient(const CString & sNaechster);
    std::int64_t Erwarte(const CMxRSet & tabelle); // rows to come in all
    void ReserviereHits(std::int64_t iZeilen);
    bool LaufeBehandlungen();
    void NimmBehandlung(const CTBeh & beh);
    void Behalte(const CBehHitLine & hit);

    // LaufNebenakten.cpp
    [[nodiscard]] static CString Blockleistung(const CString & sPatNr, const CString & sBlock,
                                               const CString & sLst);
    [[nodiscard]] bool NebenaktePasst(const CString & sDatum, const CString & sPatNr, const CString & sLeb,
                                      const CString & sPraxis);
    void NimmLaborhit(CBehHitLine & hit);
    bool LaufeNebenakten();
    bool LaufeLaborbloecke();
    bool LaufeGewerbelabor();
    bool LaufeSammelrechnungen();
    bool LaufeGipsmodelle();
    bool LaufeRechnungen();
    bool LaufeVerordnungen();

    // What belongs to one run: Vorlauf makes it anew.
    struct SStand {
        ELauf eLauf = ELauf::Fertig;
        std::uint64_t iFehlschlaege = 0; // of both handles before the first read
        SLaufzahlen zahlen;
        std::optional<EWeglassgrund> grund; // why the hit at hand is left out
        std::size_t iFehlerNachGatter = 0;  // what the plan gate has left behind
        std::int64_t iZeile = 0;            // of iZeilen, for the progress box
        std::int64_t iZeilen = 0;
        CString sVon;
        CString sBis;
        std::vector<CPlan> vPlaene;
        std::unordered_set<CString> setBlockleistungen; // treatments that belong to a laboratory block
        std::optional<CString> sGemeldet;               // whose treatments are walked, for fNach
        std::optional<CString> sPatNr;                  // the patient at hand
        int iPat = -1;
        bool bName = false; // m_pRPat stands on him
        bool bPatient = false;
    };

    CStatAccu & m_accu;
    SLaufauftrag m_auftrag;
    CTPlan m_rPlan;   // work record of the plan gate
    CTBeh m_rBehPlan; // the plan's own treatments: GetWithBEVX moves it
    SStand m_stand;
};

} // namespace orvostat
