// A statistic run as a screen drives it: the example that other screens copy.
//
// The accumulator brings the rules; the order in which they are asked is the screen's, and it stands here. A CLauf
// takes an accumulator whose selection is set, reads the master data, walks the treatments and the side records of the
// period, and leaves the finished tables in the accumulator.
#pragma once

#include "orvostatbs/accu/StatAccu.h"

#include <cstdint>
#include <optional>
#include <unordered_set>
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

enum class ELauf {
    Fertig,
    Abgebrochen, // the user has confirmed to stop
    Unlesbar,    // the store failed, be it in one look-up: the sums are not those of the rows
    Gescheitert, // master data are missing; the accumulator's message has been shown
};

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
    ~CLauf() { Nachlauf(); }

    // Runs and sorts. After Abgebrochen and Unlesbar the tables hold what was collected until then; a run ends at the
    // first row behind a read that failed. Nachlauf is the caller's, when he has done with the accumulator.
    ELauf Laufe();
    [[nodiscard]] const SLaufzahlen & Zahlen() const { return m_stand.zahlen; }

    // Builds the accumulator's work hit of one treatment; false if the selection leaves it out. Between Vorlauf and
    // Nachlauf only.
    bool BaueHit(const CTBeh & beh);
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
    // Whether a hit passes the sections of the selection that look at what the named steps have given.
    [[nodiscard]] bool EintragPasst(const CBehHitLine & hit);
    [[nodiscard]] bool RechnungPasst(const CBehHitLine & hit);
    [[nodiscard]] bool AbrechnungsartPasst(const CBehHitLine & hit);
    [[nodiscard]] bool KassePasst(const CBehHitLine & hit);
    [[nodiscard]] bool LeistungPasst(const CBehHitLine & hit);
    [[nodiscard]] bool PatientPasst(const CPat & pat);
    [[nodiscard]] bool RecallPasst(const CPat & pat);
    [[nodiscard]] bool ImZeitraum(const CString & sDatum) const;

    bool NimmPatient(const CString & sPatNr);
    [[nodiscard]] const CPat * Patient() const; // the patient at hand, null if he cannot be read
    void MovePatient(CBehHitLine & hit);
    bool MoveVersicherung(CBehHitLine & hit); // whether there is an insurer
    [[nodiscard]] const CLebStruct * Behandler(const CString & sLeb);

    // Calls fNimm for each row of the set that was opened with the result iErgebnis. False, and the run's end says
    // why, if not all was read.
    template <class TTabelle, class F> bool Gehe(TTabelle & tabelle, int iErgebnis, F fNimm) {
        for (; iErgebnis == ZEILE_OK && Weiter(); iErgebnis = tabelle.Next())
            fNimm();
        return LaeuftNoch();
    }
    [[nodiscard]] bool LaeuftNoch();
    [[nodiscard]] bool Weiter();
    std::int64_t Erwarte(const CMxRSet & tabelle); // rows to come in all
    void ReserviereHits(std::int64_t iZeilen);
    bool LaufeBehandlungen();

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
        std::int64_t iZeile = 0; // of iZeilen, for the progress box
        std::int64_t iZeilen = 0;
        CString sVon;
        CString sBis;
        std::vector<CPlan> vPlaene;
        std::unordered_set<CString> setBlockleistungen; // treatments that belong to a laboratory block
        std::optional<CString> sPatNr;                  // the patient at hand
        int iPat = -1;
        bool bPatient = false;
    };

    CStatAccu & m_accu;
    SLaufauftrag m_auftrag;
    CTPlan m_rPlan;   // work record of the plan gate
    CTBeh m_rBehPlan; // the plan's own treatments: GetWithBEVX moves it
    SStand m_stand;
};

} // namespace orvostat
