#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Gegenrechnung.h"
#include "Konsole.h"
#include "Laufbericht.h"
#include "Praxis.h"
#include "Selektionsoptionen.h"
#include "Summentabelle.h"
#include "Weggelassenes.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <sstream>

namespace orvostat {

namespace {

struct SLaufbefehl {
    SLaufoptionen optionen;
    SAusgabeoptionen ausgabe;
    std::vector<const SKriterium *> vNach;
    std::string sWeggelassen; // "maengel", "alle", or empty
    bool bHits = false;
    bool bPruefe = false;
};

// The auftrag of the flags that say the opposite.
SLaufauftrag Auftrag(const SLaufbefehl & befehl, CWeggelassenes & weggelassenes) {
    SLaufauftrag auftrag = befehl.optionen.auftrag;
    auftrag.bPlangatter = !befehl.optionen.bPlangatterAus;
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

// Whatever the moment of a cancel, what was collected until then is shown; but a file is whole.
void FuehreLaufAus(const CLI::App & app, const SLaufbefehl & befehl) {
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    CStatAccu accu;
    SetzeSelektion(app, befehl.optionen, accu);
    CAusgabeziel ziel(befehl.ausgabe);
    CWeggelassenes weggelassenes(accu, befehl.sWeggelassen == "alle");
    CLauf lauf(accu, Auftrag(befehl, weggelassenes));
    ELauf eLauf = ELauf::Gescheitert;
    AmStichtag(befehl.optionen, [&] { eLauf = lauf.Laufe(); });
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    VerweigereNachLesefehler();
    std::string sUnvollstaendig = eLauf == ELauf::Abgebrochen || AbbruchVerlangt() ? ABGEBROCHEN : "";
    if (!sUnvollstaendig.empty()) MeldeAbbruch(ziel);

    const std::unique_ptr<CDokument> pDokument =
        BeginneDokument(ziel, befehl.ausgabe,
                        Ausgabekopf(befehl.optionen.sDatei, accu.GetAbDatum(), accu.GetBisDatum(),
                                    Auswahltext(app), sUnvollstaendig),
                        sUnvollstaendig);
    if ((!ZeigeErgebnis(befehl, *pDokument, accu, lauf, weggelassenes) || AbbruchVerlangt()) &&
        sUnvollstaendig.empty()) {
        sUnvollstaendig = ABGEBROCHEN;
        MeldeAbbruch(ziel);
    }
    if (lauf.Lesefehler()) sUnvollstaendig = UNLESBAR; // names in the tables are read too
    pDokument->Ende(sUnvollstaendig);
    VerweigereNachLesefehler();
    lauf.Nachlauf();
    if (!sUnvollstaendig.empty()) throw CLI::RuntimeError(ENDE_ABBRUCH);
    ziel.Fertig();
    if (befehl.bPruefe) Pruefe(befehl, accu);
}

// One or two criteria with a comma between them.
std::string LiesKriterien(const std::string & sWert, std::vector<const SKriterium *> & vNach) {
    vNach.clear();
    std::istringstream ein(sWert + ',');
    for (std::string sWort; std::getline(ein, sWort, ',');) {
        if (const std::string sFehler = Wortwahl(Kriterienworte())(sWort); !sFehler.empty()) return sFehler;
        const SKriterium * const pKriterium = FindeKriterium(sWort);
        if (std::ranges::find(vNach, pKriterium) != vNach.end()) return '"' + sWort + "\" steht doppelt";
        vNach.push_back(pKriterium);
    }
    return vNach.size() > 2 ? "mehr als zwei Kriterien" : "";
}

void FuegeErgebnisHinzu(CLI::App & app, SLaufbefehl & befehl) {
    CLI::Option * pHits = app.add_flag("--hits", befehl.bHits, "Die bewerteten Hits statt der Summen");
    std::string sWorte;
    for (const std::string & sWort : Kriterienworte())
        sWorte += (sWorte.empty() ? "" : ", ") + sWort;
    const auto Lies = [&befehl](const std::string & sWert) { return LiesKriterien(sWert, befehl.vNach); };
    app.add_option_function<std::string>(
           "--nach", [](const std::string &) {}, "Summen nach einem oder zwei mit Komma: " + sWorte)
        ->check(CLI::Validator(Lies, ""))
        ->excludes(pHits)
        ->type_name("WORT")
        ->group(AUSGABEGRUPPE);
    app.add_flag("--weggelassen{maengel}", befehl.sWeggelassen,
                 "Auch, was nicht gezählt ist, obwohl es keine Option ausschließt; mit =alle auch das "
                 "Ausgeschlossene")
        ->transform(Wortwahl({"maengel", "alle"}))
        ->group(AUSGABEGRUPPE);
    pHits->group(AUSGABEGRUPPE);
    FuegeAusgabeHinzu(app, befehl.ausgabe);
}

} // namespace

void FuegeRunHinzu(CLI::App & app) {
    CLI::App * pApp =
        app.add_subcommand("run", "Bewertet die Behandlungen einer Auswahl und zeigt die Summen");
    const auto pBefehl = std::make_shared<SLaufbefehl>();
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    FuegeErgebnisHinzu(*pApp, *pBefehl);
    pApp->add_flag("--check", pBefehl->bPruefe, "Rechnet die Summen mit SQL nach; Ende 1 bei Abweichungen")
        ->group(AUSGABEGRUPPE);
    pApp->footer(
        "Ein Abschnitt der Auswahl gilt, wenn seine Option angegeben ist, auch mit leerem Wert ('').");
    pApp->callback([pApp, pBefehl] { FuehreLaufAus(*pApp, *pBefehl); });
}

} // namespace orvostat
