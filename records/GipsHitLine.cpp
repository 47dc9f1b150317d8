#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/NebenHits.h"
#include "orvostatbs/records/Pat.h"

namespace orvostat {

void CGipsHitLine::Clear() { *this = CGipsHitLine(); }

void CGipsHitLine::MoveGips(const CTGips * pGips) {
    constexpr int DATUM_LAENGE = 8;
    GIPSNR = pGips->m_GIPSNR;
    PATNR = pGips->m_PATNR;
    DATUM = pGips->m_DATUM;
    GIPSART = pGips->m_GIPSART.Erstes();
    BEHANDLERNR = pGips->m_BEHANDLERNR;
    BESCHREIBUNG = pGips->m_BESCHREIBUNG;
    GEDRUCKT = Zahl(pGips->m_GEDRUCKT) != 0;
    ARCHIVIERT = pGips->m_ARCHIVIERT.GetLength() == DATUM_LAENGE ? pGips->m_ARCHIVIERT : CString();
}

void CGipsHitLine::MovePat(const CPat & pat) {
    PATNAME = pat.PATNAME;
    PATVORNAME = pat.PATVORNAME;
    PATTITEL = pat.PATTITEL;
    PATZUSATZ = pat.PATZUSATZ;
    PATGEBDATUM = pat.PATGEBDATUM;
}

} // namespace orvostat
