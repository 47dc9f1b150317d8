// The patients of the sample practice, all invented: person, address, insurance, recalls.
#pragma once

#include "MusterKalender.h"
#include "MusterKassen.h"
#include "MusterPraxis.h"
#include "MusterZufall.h"
#include "orvostatbs/host/TabellenPatient.h"

#include <vector>

namespace orvostat {

struct SMusterPatient {
    CTPat_Fields pat;
    CTAdr_Fields adr;
    const SMusterKasse * pKasse = nullptr; // the insurer at the start
    const SMusterBehandler * pBehandler = nullptr;
    int iAlter = 0;       // at the start of the sample
    bool bPflege = false; // lives in a home and is visited there
    bool bAusland = false;
    [[nodiscard]] bool Kind() const { return iAlter < 18; }
    [[nodiscard]] bool Gesetzlich() const { return pKasse->eTraeger == EKostentraeger::Gesetzlich; }
};

// The patient number iLfd, counted from 0.
[[nodiscard]] SMusterPatient ErzeugePatient(int iLfd, const CMusterKalender & kalender,
                                            const CMusterKassen & kassen, CZufall & zufall);

// The insurance periods of a patient who comes on these days (working days, ascending). A statutory card is read on
// the first day of a quarter; some patients change their insurer, even within a quarter, and a few have no insurance.
[[nodiscard]] std::vector<CTVDesc_Fields>
ErzeugeVersicherungen(const SMusterPatient & patient, const std::vector<int> & viTage,
                      const CMusterKalender & kalender, const CMusterKassen & kassen, CZufall & zufall);

// Recalls that have taken place; sets the patient's recall fields.
[[nodiscard]] std::vector<CTHistRecall_Fields>
ErzeugeRecalls(SMusterPatient & patient, const CMusterKalender & kalender, CZufall & zufall);

// A number in so many places, blanks in front.
[[nodiscard]] CString Stellen(int iNummer, int iStellen);

} // namespace orvostat
