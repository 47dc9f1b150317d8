// What stands around the treatments of the sample practice: invoices, laboratory blocks, prescriptions, plaster models.
#pragma once

#include "MusterBehandlungen.h"

#include "orvostatbs/host/TabellenLabor.h"

#include <map>
#include <vector>

namespace orvostat {

// Makes and writes these records patient by patient, in the order of the patients. The invoices of commercial
// laboratories sort by laboratory, so they are kept until Beende.
class CMusterNebenakten {
public:
    explicit CMusterNebenakten(CMusterSchreiber & schreiber) : m_schreiber(schreiber) {}
    // Writes the patient's own records and enters invoice numbers into his bills, which are not written yet.
    void Patient(SMusterAkte & akte, CZufall & zufall);
    // Writes what was kept, and the package of the first quarter; sVon is the first day of the sample.
    void Beende(const CString & sVon);

private:
    void Rechnungen(SMusterAkte & akte, CZufall & zufall);
    void Eigenlabor(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall);
    void Fremdlabor(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall);
    void Rezept(const SMusterAkte & akte, CZufall & zufall);
    void Gipsmodell(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall);
    void Sammelrechnungen();

    CMusterSchreiber & m_schreiber;
    int m_iRechnung = 0;
    int m_iGips = 0;
    std::map<CString, std::vector<CTGLBloc_Fields>> m_mapBloecke; // by laboratory
    std::map<CString, std::vector<CTGLBlocEntry_Fields>> m_mapEintraege;
};

} // namespace orvostat
