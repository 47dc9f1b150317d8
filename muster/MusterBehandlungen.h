// What happened to a patient of the sample practice: visits with their services, bills, plans, findings, X-rays.
#pragma once

#include "MusterKataloge.h"
#include "MusterPatienten.h"
#include "MusterVorlagen.h"

#include <cstdint>
#include <vector>

namespace orvostat {

// A bill with what the invoice needs of it.
struct SMusterBill {
    CTBill_Fields zeile;
    CString sGruppe; // quarter or plan that the bill collects
    CString sLetzterTag;
    std::int64_t iHonorar = 0; // cents
    std::int64_t iLabor = 0;
};

// A piece of laboratory work that was fitted.
struct SLaborarbeit {
    CString sPlanNr;
    CString sLfdBlock;
    CString sDatum;
    CString sBehandlerNr;
    CString sPraxisNr;
    bool bEigen = false;              // made by the practice's own laboratory
    std::vector<std::size_t> vPosten; // the treatment rows that bill it
    std::int64_t iCent = 0;
};

// A patient's records. All lists stand in the order of their main keys.
struct SMusterAkte {
    SMusterPatient patient;
    std::vector<int> viTage; // working days of the visits, ascending
    std::vector<CTVDesc_Fields> vVDesc;
    std::vector<CTHistRecall_Fields> vRecalls;
    std::vector<CTBeh_Fields> vBeh;
    std::vector<SMusterBill> vBills;
    std::vector<CTPlan_Fields> vPlaene;
    std::vector<CTABefund_Fields> vBefunde;
    std::vector<CTRoeBefund_Fields> vRoe;
    std::vector<SLaborarbeit> vLabor;
};

// Treats the patient of an akte that holds nothing else yet.
void ErzeugeBehandlungen(SMusterAkte & akte, const CMusterKatalog & katalog, const CMusterKalender & kalender,
                         CZufall & zufall);

} // namespace orvostat
