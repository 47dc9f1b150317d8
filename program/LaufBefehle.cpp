#include "LaufBefehle.h"

#include "Aufruf.h"
#include "Ausgabe.h"
#include "Datenbank.h"
#include "ErklaerBefehl.h"
#include "Gegenrechnung.h"
#include "Laufbericht.h"
#include "Praxis.h"
#include "Selektionsoptionen.h"

#include <iostream>
#include <memory>

namespace orvostat {

namespace {

struct SLaufbefehl {
    SLaufoptionen optionen;
    bool bHits = false;
    bool bPruefe = false;
    EFormat eFormat = EFormat::Tabelle;
};

// The auftrag of the flags that say the opposite.
SLaufauftrag Auftrag(const SLaufoptionen & optionen) {
    SLaufauftrag auftrag = optionen.auftrag;
    auftrag.bPlangatter = !optionen.bPlangatterAus;
    return auftrag;
}

void FuehreLaufAus(const CLI::App & app, const SLaufbefehl & befehl) {
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    CStatAccu accu;
    SetzeSelektion(app, befehl.optionen, accu);
    CLauf lauf(accu, Auftrag(befehl.optionen));
    const ELauf eLauf = lauf.Laufe();
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    if (befehl.bHits) {
        ZeigeHits(std::cout, accu, befehl.eFormat);
    } else {
        ZeigeZahlen(std::cout, accu, lauf);
        ZeigeSummen(std::cout, accu);
    }
    if (eLauf == ELauf::Abgebrochen) throw CLI::RuntimeError(ENDE_ABBRUCH);
    if (befehl.bPruefe &&
        !ZeigeGegenrechnung(std::cout, RechneGegen(befehl.optionen.sDatei, accu.m_vBehHits)))
        throw CLI::RuntimeError(ENDE_FEHLER);
}

void FuegeRunHinzu(CLI::App & app) {
    CLI::App * pApp =
        app.add_subcommand("run", "Bewertet die Behandlungen einer Auswahl und zeigt die Summen");
    const auto pBefehl = std::make_shared<SLaufbefehl>();
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    pApp->add_flag("--hits", pBefehl->bHits, "Die bewerteten Hits statt der Summen");
    OptionFormat(*pApp, pBefehl->eFormat);
    pApp->add_flag("--check", pBefehl->bPruefe, "Rechnet die Summen mit SQL nach; Ende 1 bei Abweichungen");
    pApp->footer(
        "Ein Abschnitt der Auswahl gilt, wenn seine Option angegeben ist, auch mit leerem Wert ('').");
    pApp->callback([pApp, pBefehl] { FuehreLaufAus(*pApp, *pBefehl); });
}

} // namespace

void FuegeLaufBefehleHinzu(CLI::App & app) {
    FuegeRunHinzu(app);
    FuegeExplainHinzu(app);
}

} // namespace orvostat
