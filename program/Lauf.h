// A statistic run as a screen drives it: the example that other screens copy.
//
// The accumulator brings the rules; the order in which they are asked is the screen's, and it stands here. A CLauf
// takes an accumulator whose selection is set, reads the master data, walks the treatments and the side records of the
// period, and leaves the finished tables in the accumulator.
#pragma once

#include "orvostatbs/accu/StatAccu.h"

#include <cstdint>
#include <vector>

namespace orvostat {

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
};

enum class ELauf { Fertig, Abgebrochen, Gescheitert };

// What the run met on its way, for a report.
struct SLaufzahlen {
    std::int64_t iBehandlungen = 0;  // rows read
    std::int64_t iOhneBill = 0;      // hits without a bill
    std::int64_t iOhnePatient = 0;   // hits of patients whose row or address is missing
    std::int64_t iOhneKasse = 0;     // hits without an insurance period or insurer at their date
    std::int64_t iOhneBehandler = 0; // treatments of treaters who are not selected or not known
};

class CLauf {
public:
    // Both belong to the caller and outlive the run.
    CLauf(CStatAccu & accu, const SLaufauftrag & auftrag);
    CLauf(const CLauf &) = delete;
    CLauf & operator=(const CLauf &) = delete;

    // Runs and sorts. Gescheitert after the accumulator's own message; Abgebrochen when the user has confirmed to
    // stop: the tables then hold what was collected.
    ELauf Laufe();
    [[nodiscard]] const SLaufzahlen & Zahlen() const { return m_zahlen; }

    // Builds the accumulator's work hit of one treatment; false if the selection leaves it out. Between Vorlauf and
    // Nachlauf only.
    bool BaueHit(const CTBeh & beh);
    // Start and end by hand, for a caller that walks treatments of its own.
    bool Vorlauf();
    void Nachlauf() { m_accu.DataSumNachlauf(); }

private:
    void ReserviereHits();
    bool LaufeBehandlungen();
    bool NimmPatient(const CString & sPatNr);
    [[nodiscard]] bool PatientPasst(const CPat & pat);
    void MoveVersicherung(CBehHitLine & hit);
    [[nodiscard]] const CLebStruct * Behandler(const CString & sLeb);
    [[nodiscard]] bool HitPasst(const CBehHitLine & hit);
    [[nodiscard]] bool ImZeitraum(const CString & sDatum) const;
    [[nodiscard]] bool Weiter(std::int64_t iPos);

    void LaufeNebenakten();
    void LaufeLaborbloecke();
    void LaufeGewerbelabor();
    void LaufeSammelrechnungen();
    void LaufeGipsmodelle();
    void LaufeRechnungen();
    void LaufeVerordnungen();

    CStatAccu & m_accu;
    SLaufauftrag m_auftrag;
    SLaufzahlen m_zahlen;
    CString m_sVon;
    CString m_sBis;
    CTPlan m_rPlan;               // work record of the plan gate
    CTBeh m_rBehPlan;             // the plan's own treatments: GetWithBEVX moves it
    std::vector<CPlan> m_vPlaene; // of the patient at hand
    CString m_sPatNr;             // the patient at hand
    int m_iPat = -1;
    bool m_bPatient = false;
};

} // namespace orvostat
