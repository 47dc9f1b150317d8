#include "Muster.h"

#include "MusterBehandlungen.h"
#include "MusterHvm.h"
#include "MusterKassen.h"
#include "MusterNebenakten.h"

#include "orvostatbs/host/Oberflaeche.h"

namespace orvostat {

namespace {

SMusterAkte ErzeugeAkte(int iLfd, const CMusterKatalog & katalog, const CMusterKalender & kalender,
                        const CMusterKassen & kassen, CZufall & zufall) {
    SMusterAkte akte;
    akte.patient = ErzeugePatient(iLfd, kalender, kassen, zufall);
    ErzeugeBehandlungen(akte, katalog, kalender, zufall);
    akte.vVDesc = ErzeugeVersicherungen(akte.patient, akte.viTage, kalender, kassen, zufall);
    akte.vRecalls = ErzeugeRecalls(akte.patient, kalender, zufall);
    return akte;
}

void Schreibe(CMusterSchreiber & schreiber, const SMusterAkte & akte) {
    schreiber.Schreibe(akte.patient.adr);
    schreiber.Schreibe(akte.patient.pat);
    schreiber.Schreibe(akte.vVDesc);
    schreiber.Schreibe(akte.vRecalls);
    schreiber.Schreibe(akte.vBefunde);
    schreiber.Schreibe(akte.vPlaene);
    for (const SMusterBill & bill : akte.vBills)
        schreiber.Schreibe(bill.zeile);
    schreiber.Schreibe(akte.vBeh);
    schreiber.Schreibe(akte.vRoe);
}

// The user wants to stop, and has confirmed it.
bool Abgebrochen(int iPos, int iMax) { return !OrvoUpdateProgressBox2(iPos, iMax) && FrageAbbruch(); }

// False when the user has cancelled.
bool SchreibePatienten(CMusterSchreiber & schreiber, const CMusterKatalog & katalog,
                       const CMusterKassen & kassen, const SMusterwahl & wahl) {
    const CMusterKalender kalender(wahl.sVon, wahl.iJahre);
    CMusterNebenakten nebenakten(schreiber);
    for (int i = 0; i < wahl.iPatienten && schreiber.Ok(); ++i) {
        if (Abgebrochen(i, wahl.iPatienten)) return false;
        CZufall zufall(wahl.iSaat, static_cast<std::uint64_t>(i) + 1);
        SMusterAkte akte = ErzeugeAkte(i, katalog, kalender, kassen, zufall);
        nebenakten.Patient(akte, zufall);
        Schreibe(schreiber, akte);
    }
    nebenakten.Beende(wahl.sVon);
    return true;
}

} // namespace

int ErzeugeMuster(CZeilenspeicher & speicher, const SMusterwahl & wahl) {
    if (speicher.Beginne() != ZEILE_OK) return ZEILE_FEHLER;
    CMusterSchreiber schreiber(speicher);
    const CMusterKatalog katalog;
    const CMusterKassen kassen(wahl.iSaat);
    SchreibePraxis(schreiber);
    kassen.Schreibe(schreiber);
    SchreibePunktwerte(schreiber);
    SchreibeSelectPool(schreiber);
    katalog.Schreibe(schreiber);
    SchreibeNormen(schreiber);
    const int iErstesJahr = Jahr(wahl.sVon);
    if (!SchreibeHvmMuster(speicher, {" 1", " 2"}, iErstesJahr, iErstesJahr + wahl.iJahre))
        schreiber.Gescheitert();

    OrvoOpenProgressBox(0, 0, "Musterpraxis mit %d Patienten wird angelegt ..."_t, wahl.iPatienten);
    const bool bFertig = SchreibePatienten(schreiber, katalog, kassen, wahl);
    OrvoCloseProgressBox();
    const int iErgebnis = speicher.Beende(bFertig && schreiber.Ok());
    CMxDatabase::Geaendert();
    return !bFertig ? ZEILE_KEINE : schreiber.Ok() ? iErgebnis : ZEILE_FEHLER;
}

} // namespace orvostat
