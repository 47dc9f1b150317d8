#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Gegenrechnung.h"
#include "Konsole.h"
#include "Laufbericht.h"
#include "Laufrahmen.h"
#include "Praxis.h"
#include "Saetze.h"
#include "Selektionsoptionen.h"
#include "Summentabelle.h"
#include "Weggelassenes.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

struct SLaufbefehl {
    SLaufoptionen optionen;
    SAusgabeoptionen ausgabe;
    std::vector<const SKriterium *> vNach;
    std::string sWeggelassen; // "maengel", "alle", or empty
    bool bHits = false;
    bool bPruefe = false;
    std::string sName; // to be saved under; empty: not at all
    std::string sLayout = Layoutworte().front();
    SSatzoptionen satzort;
};

SLaufauftrag Auftrag(const SLaufbefehl & befehl, CWeggelassenes & weggelassenes) {
    SLaufauftrag auftrag = Laufauftrag(befehl.optionen);
    if (befehl.sWeggelassen.empty()) return auftrag;
    auftrag.bWeggelasseneBewerten = true;
    auftrag.fWeggelassen = [&](const CTBeh & beh, EWeglassgrund eGrund) { weggelassenes.Nimm(beh, eGrund); };
    return auftrag;
}

// Shows the tables; false if the user stops it.
bool ZeigeErgebnis(const SLaufbefehl & befehl, CDokument & dokument, CStatAccu & accu, const CLauf & lauf,
                   const CWeggelassenes & weggelassenes) {
    bool bWeiter = true;
    if (befehl.bHits) {
        bWeiter = ZeigeHits(dokument, accu);
    } else {
        ZeigeZahlen(dokument, accu, lauf);
        ZeigeSummen(dokument, accu, befehl.vNach);
    }
    if (!befehl.sWeggelassen.empty()) weggelassenes.Schreibe(dokument);
    return bWeiter;
}

// Compares with SQL; ends the command where something differs.
void Pruefe(const SLaufbefehl & befehl, const CStatAccu & accu) {
    const SLaufoptionen & o = befehl.optionen;
    const SGegenauftrag auftrag{.bErsatz = o.auftrag.bErsatz,
                                .bKassenanteil = o.auftrag.bKassenanteil,
                                .bNurGesetzliche = o.bNurGesetzliche};
    const SGegenrechnung rechnung = RechneGegen(o.sDatei, accu.m_vBehHits, auftrag);
    if (AbbruchVerlangt()) throw CLI::RuntimeError(ENDE_ABBRUCH);
    const bool bFrei =
        !befehl.bHits && befehl.ausgabe.sDatei.empty() && befehl.ausgabe.eFormat == EFormat::Tabelle;
    if (!ZeigeGegenrechnung(bFrei ? std::cout : std::cerr, rechnung)) throw CLI::RuntimeError(ENDE_FEHLER);
}

void FuehreLaufAus(const CLI::App & app, const SLaufbefehl & befehl) {
    if (befehl.bPruefe) VerweigereServer(befehl.optionen.sDatei);
    const CPraxis praxis(befehl.optionen.sDatei,
                         befehl.satzort.bImBestand ? EModus::Schreiben : EModus::Lesen);
    std::optional<CSatz> satz;
    if (app.count("--speichern") > 0) satz.emplace(befehl.optionen.sDatei, befehl.satzort, befehl.sName);
    CStatAccu accu;
    CWeggelassenes weggelassenes(accu, befehl.sWeggelassen == "alle");
    const auto Zeige = [&](CDokument & dokument, CStatAccu &, const CLauf * pLauf) {
        return ZeigeErgebnis(befehl, dokument, accu, *pLauf, weggelassenes);
    };
    const auto Danach = [&](CStatAccu &) {
        if (befehl.bPruefe) Pruefe(befehl, accu);
        if (satz) satz->Schreibe(accu, befehl.sLayout, Auswahlworte(app));
    };
    try {
        FuehreLaufAus({app, befehl.optionen, befehl.ausgabe, Zeige, Danach}, accu,
                      Auftrag(befehl, weggelassenes));
    } catch (const CLI::RuntimeError &) {
        if (satz)
            std::cerr << "Die Statistik \"" << befehl.sName
                      << "\" ist nicht gespeichert; was vorher da war, ist unverändert.\n";
        throw;
    }
}

void FuegeErgebnisHinzu(CLI::App & app, SLaufbefehl & befehl) {
    CLI::Option * pHits = app.add_flag("--hits", befehl.bHits, "Die bewerteten Hits statt der Summen");
    FuegeNachHinzu(app, befehl.vNach)->excludes(pHits);
    app.add_flag("--weggelassen{maengel}", befehl.sWeggelassen,
                 "Auch, was nicht gezählt ist, obwohl es keine Option ausschließt; mit =alle auch das "
                 "Ausgeschlossene")
        ->transform(Wortwahl({"maengel", "alle"}))
        ->type_name("alle")
        ->group(AUSGABEGRUPPE);
    pHits->group(AUSGABEGRUPPE);
    FuegeAusgabeHinzu(app, befehl.ausgabe);
    CLI::Option * pName =
        app.add_option("--speichern", befehl.sName, "Die Statistik unter diesem Namen speichern")
            ->type_name("NAME");
    pName->group(AUSGABEGRUPPE);
    app.add_option("--layout", befehl.sLayout, "Ihre Spalten: alles, oder die einer Statistik des Systems")
        ->transform(Wortwahl(Layoutworte()))
        ->needs(pName)
        ->type_name("WORT")
        ->group(AUSGABEGRUPPE);
    FuegeSatzortHinzu(app, befehl.satzort);
    for (const char * pOption : {"--daten", "--im-bestand"})
        app.get_option(pOption)->needs(pName);
}

} // namespace

void FuegeRunHinzu(CLI::App & app) {
    CLI::App * pApp =
        app.add_subcommand("run", "Bewertet die Behandlungen einer Auswahl und zeigt die Summen");
    const auto pBefehl = std::make_shared<SLaufbefehl>();
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegePraxisHinzu(*pApp, pBefehl->optionen.sDatei);
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    FuegeErgebnisHinzu(*pApp, *pBefehl);
    pApp->add_flag("--check", pBefehl->bPruefe, "Rechnet die Summen mit SQL nach; Ende 1 bei Abweichungen")
        ->group(AUSGABEGRUPPE);
    pApp->footer(
        "Ein Abschnitt der Auswahl gilt, wenn seine Option angegeben ist, auch mit leerem Wert ('').");
    pApp->callback([pApp, pBefehl] { FuehreLaufAus(*pApp, *pBefehl); });
}

} // namespace orvostat
