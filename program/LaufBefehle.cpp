#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabe.h"
#include "Datenbank.h"
#include "Gegenrechnung.h"
#include "Konsole.h"
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

// Shows the tables; false if the user stops it.
bool ZeigeErgebnis(const SLaufbefehl & befehl, CStatAccu & accu, const CLauf & lauf) {
    if (befehl.bHits) return ZeigeHits(std::cout, accu, befehl.eFormat);
    ZeigeZahlen(std::cout, accu, lauf);
    ZeigeSummen(std::cout, accu);
    return true;
}

// Compares with SQL; ends the command where something differs.
void Pruefe(const SLaufbefehl & befehl, const CStatAccu & accu) {
    const SLaufoptionen & o = befehl.optionen;
    const SGegenauftrag auftrag{.bErsatz = o.auftrag.bErsatz,
                                .bKassenanteil = o.auftrag.bKassenanteil,
                                .bNurGesetzliche = o.bNurGesetzliche};
    const SGegenrechnung rechnung = RechneGegen(o.sDatei, accu.m_vBehHits, auftrag);
    if (AbbruchVerlangt()) throw CLI::RuntimeError(ENDE_ABBRUCH);
    if (!ZeigeGegenrechnung(befehl.bHits ? std::cerr : std::cout, rechnung))
        throw CLI::RuntimeError(ENDE_FEHLER);
}

// Whatever the moment of a cancel, what was collected until then is shown.
void FuehreLaufAus(const CLI::App & app, const SLaufbefehl & befehl) {
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    CStatAccu accu;
    SetzeSelektion(app, befehl.optionen, accu);
    CLauf lauf(accu, Auftrag(befehl.optionen));
    const ELauf eLauf = LaufeAmStichtag(befehl.optionen, lauf);
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    VerweigereNachLesefehler();
    bool bAbgebrochen = eLauf == ELauf::Abgebrochen || AbbruchVerlangt();
    if (bAbgebrochen) std::cerr << "Abgebrochen. Gezeigt wird, was bis dahin gelesen war.\n";
    bAbgebrochen = !ZeigeErgebnis(befehl, accu, lauf) || bAbgebrochen || AbbruchVerlangt();
    VerweigereNachLesefehler(); // names in the tables are read too
    lauf.Nachlauf();
    if (bAbgebrochen) throw CLI::RuntimeError(ENDE_ABBRUCH);
    if (befehl.bPruefe) Pruefe(befehl, accu);
}

} // namespace

void FuegeRunHinzu(CLI::App & app) {
    CLI::App * pApp =
        app.add_subcommand("run", "Bewertet die Behandlungen einer Auswahl und zeigt die Summen");
    const auto pBefehl = std::make_shared<SLaufbefehl>();
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    pApp->add_flag("--hits", pBefehl->bHits, "Die bewerteten Hits statt der Summen");
    OptionFormat(*pApp, pBefehl->eFormat);
    pApp->get_option("--format")->needs("--hits");
    pApp->add_flag("--check", pBefehl->bPruefe, "Rechnet die Summen mit SQL nach; Ende 1 bei Abweichungen");
    pApp->footer(
        "Ein Abschnitt der Auswahl gilt, wenn seine Option angegeben ist, auch mit leerem Wert ('').");
    pApp->callback([pApp, pBefehl] { FuehreLaufAus(*pApp, *pBefehl); });
}

} // namespace orvostat
