#include "Laufrahmen.h"

#include "Datenbank.h"
#include "Konsole.h"
#include "Praxis.h"

#include <CLI/CLI.hpp>

namespace orvostat {

SLaufauftrag Laufauftrag(const SLaufoptionen & optionen) {
    SLaufauftrag auftrag = optionen.auftrag;
    auftrag.bPlangatter = !optionen.bPlangatterAus;
    return auftrag;
}

void FuehreLaufAus(const SLaufrahmen & rahmen, CStatAccu & accu, const SLaufauftrag & auftrag) {
    SetzeSelektion(rahmen.app, rahmen.optionen, accu);
    CAusgabeziel ziel(rahmen.ausgabe);
    CLauf lauf(accu, auftrag);
    const ELauf eLauf = lauf.Laufe();
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    VerweigereNachLesefehler();
    std::string sUnvollstaendig = eLauf == ELauf::Abgebrochen || AbbruchVerlangt() ? ABGEBROCHEN : "";
    if (!sUnvollstaendig.empty()) MeldeAbbruch(ziel);

    const std::unique_ptr<CDokument> pDokument =
        BeginneDokument(ziel, rahmen.ausgabe,
                        Ausgabekopf(rahmen.optionen.sDatei, accu.GetAbDatum(), accu.GetBisDatum(),
                                    Auswahltext(rahmen.app), sUnvollstaendig),
                        sUnvollstaendig);
    if ((!rahmen.fZeige(*pDokument, accu, lauf) || AbbruchVerlangt()) && sUnvollstaendig.empty()) {
        sUnvollstaendig = ABGEBROCHEN;
        MeldeAbbruch(ziel);
    }
    if (lauf.Lesefehler()) sUnvollstaendig = UNLESBAR; // names in the tables are read too
    pDokument->Ende(sUnvollstaendig);
    VerweigereNachLesefehler();
    lauf.Nachlauf();
    if (!sUnvollstaendig.empty()) throw CLI::RuntimeError(ENDE_ABBRUCH);
    ziel.Fertig();
    if (rahmen.fDanach) rahmen.fDanach(accu);
}

} // namespace orvostat
