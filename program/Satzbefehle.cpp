#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Konsole.h"
#include "Laufbericht.h"
#include "Laufrahmen.h"
#include "Praxis.h"
#include "Saetze.h"
#include "Satzvergleich.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace orvostat {

namespace {

struct SSatzbefehl {
    std::string sDatei;
    std::string sName;
    std::string sZweiter; // of vergleichen; empty: a fresh run
    SSatzoptionen ort;
    SAusgabeoptionen ausgabe;
    std::vector<const SKriterium *> vNach;
    bool bHits = false;
    bool bOhneLauf = false;
};

std::vector<SKopfzeile> Kopf(const SSatzbefehl & befehl, const CSatz & satz, const CStatAccu & accu) {
    return Ausgabekopf(befehl.sDatei, accu.GetAbDatum(), accu.GetBisDatum(), satz.Abfragetext(), {});
}

// Hands the document to fZeige and ends it.
template <class F>
void ZeigeDokument(const SSatzbefehl & befehl, const std::vector<SKopfzeile> & vKopf, F fZeige) {
    CAusgabeziel ziel(befehl.ausgabe);
    const std::unique_ptr<CDokument> pDokument = BeginneDokument(ziel, befehl.ausgabe, vKopf, {});
    const bool bGanz = fZeige(*pDokument);
    pDokument->Ende(bGanz ? "" : ABGEBROCHEN);
    VerweigereNachLesefehler();
    if (!bGanz) throw CLI::RuntimeError(ENDE_ABBRUCH);
    ziel.Fertig();
}

void ZeigeListe(const SSatzbefehl & befehl) {
    static const SAusgabespalte SPALTEN[] = {
        {"Name", EZelle::Text, 64},  {"Art", EZelle::Text, 10},  {"Version", EZelle::Text, 10},
        {"Datum", EZelle::Text, 10}, {"Zeit", EZelle::Text, 5},  {"Von", EZelle::Text, 10},
        {"Bis", EZelle::Text, 10},   {"Hits", EZelle::Zahl, 12}, {"Stand", EZelle::Text, 10}};
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    const std::vector<SSatzeintrag> vSaetze = Saetze(befehl.sDatei, befehl.ort);
    VerweigereNachLesefehler();
    ZeigeDokument(befehl, {}, [&](CDokument & dokument) {
        CAusgabe & tabelle = dokument.Tabelle("", SPALTEN);
        for (const SSatzeintrag & e : vSaetze)
            tabelle.Zeile({AusUtf8(e.sName), e.sArt, e.sVersion, e.sDatum, e.sZeit, e.sVon, e.sBis,
                           itoc(e.lHits), e.bFertig ? "fertig"_t : "unfertig"_t});
        tabelle.Ende();
        return true;
    });
}

void ZeigeSatz(const SSatzbefehl & befehl) {
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    CStatAccu accu;
    const CSatz satz(befehl.sDatei, befehl.ort, befehl.sName);
    satz.Lies(accu);
    ZeigeDokument(befehl, Kopf(befehl, satz, accu), [&](CDokument & dokument) {
        if (befehl.bHits) return ZeigeHits(dokument, accu);
        dokument.Satz(std::to_string(accu.m_vBehHits.size()) + " Hits, " +
                      std::to_string(accu.m_vBehErrors.size()) + " Fehler");
        ZeigeSummen(dokument, accu, befehl.vNach);
        std::string sFehlend;
        for (const std::string & sTitel : satz.FehlendeSpalten())
            sFehlend += (sFehlend.empty() ? "" : ", ") + sTitel;
        if (!sFehlend.empty())
            dokument.Satz("Das Layout hat diese Spalten nicht, und was aus ihnen summiert wird, fehlt: " +
                          sFehlend + '.');
        return true;
    });
}

void ZeigeUnterschiede(const SSatzbefehl & befehl) {
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    CStatAccu alt;
    CStatAccu neu;
    const CSatz satz(befehl.sDatei, befehl.ort, befehl.sName);
    satz.Lies(alt);
    std::vector<std::string> vOhne = satz.FehlendeSpalten();
    if (befehl.sZweiter.empty())
        LaufeWorte(satz.Abfrage(), befehl.sDatei, neu);
    else {
        const CSatz zweiter(befehl.sDatei, befehl.ort, befehl.sZweiter);
        zweiter.Lies(neu);
        const std::vector<std::string> v = zweiter.FehlendeSpalten();
        vOhne.insert(vOhne.end(), v.begin(), v.end());
    }
    SUnterschiede u;
    ZeigeDokument(befehl, Kopf(befehl, satz, alt), [&](CDokument & dokument) {
        u = ZeigeVergleich(dokument, alt, neu, vOhne);
        dokument.Satz(u.Keine() ? "Kein Unterschied."
                                : std::to_string(u.iDazu) + " dazu, " + std::to_string(u.iFort) + " fort, " +
                                      std::to_string(u.iAnders) + " anders.");
        return true;
    });
    if (!u.Keine()) throw CLI::RuntimeError(ENDE_FEHLER);
}

void PruefeSatz(const SSatzbefehl & befehl) {
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    const CSatz satz(befehl.sDatei, befehl.ort, befehl.sName);
    const CSatz::SPruefung p = satz.Pruefe();
    if (p.eBefund != CSatz::EBefund::Unversehrt) Verweigere(satz.Befundtext(p));
    std::cout << satz.Befundtext(p) << '\n';
    if (befehl.bOhneLauf) return;
    CStatAccu alt;
    CStatAccu neu;
    satz.Lies(alt);
    LaufeWorte(satz.Abfrage(), befehl.sDatei, neu);
    const SUnterschiede u = Vergleiche(alt, neu, satz.FehlendeSpalten());
    if (u.Keine()) {
        std::cout << "Die Praxis ergibt heute dasselbe.\n";
        return;
    }
    std::cout << "Die Praxis hat sich seither geändert: " << u.iDazu << " dazu, " << u.iFort << " fort, "
              << u.iAnders << " anders.\n";
    throw CLI::RuntimeError(ENDE_FEHLER);
}

CLI::App * FuegeSatzbefehlHinzu(CLI::App & app, const char * pName, const char * pText, SSatzbefehl & befehl,
                                bool bMitName) {
    CLI::App * pApp = app.add_subcommand(pName, pText);
    pApp->add_option("DATEI", befehl.sDatei, "Die Praxisdatei")->required();
    if (bMitName) pApp->add_option("NAME", befehl.sName, "Name der Statistik")->required();
    FuegeSatzortHinzu(*pApp, befehl.ort);
    return pApp;
}

} // namespace

void FuegeGespeichertHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SSatzbefehl>();
    CLI::App * pApp =
        FuegeSatzbefehlHinzu(app, "gespeichert", "Die gespeicherten Statistiken", *pBefehl, false);
    FuegeAusgabeHinzu(*pApp, pBefehl->ausgabe);
    pApp->callback([pBefehl] { ZeigeListe(*pBefehl); });
}

void FuegeOeffnenHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SSatzbefehl>();
    CLI::App * pApp = FuegeSatzbefehlHinzu(
        app, "oeffnen", "Eine gespeicherte Statistik, ohne die Behandlungen zu lesen", *pBefehl, true);
    FuegeNachHinzu(*pApp, pBefehl->vNach)
        ->excludes(pApp->add_flag("--hits", pBefehl->bHits, "Die bewerteten Hits statt der Summen")
                       ->group(AUSGABEGRUPPE));
    FuegeAusgabeHinzu(*pApp, pBefehl->ausgabe);
    pApp->callback([pBefehl] { ZeigeSatz(*pBefehl); });
}

void FuegeVergleichenHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SSatzbefehl>();
    CLI::App * pApp = FuegeSatzbefehlHinzu(
        app, "vergleichen", "Was zwei Statistiken unterscheidet, oder eine und die Praxis von heute",
        *pBefehl, true);
    pApp->add_option("ZWEITER", pBefehl->sZweiter,
                     "Name der anderen; ohne ihn ein neuer Lauf derselben Auswahl");
    FuegeAusgabeHinzu(*pApp, pBefehl->ausgabe);
    pApp->callback([pBefehl] { ZeigeUnterschiede(*pBefehl); });
}

void FuegePruefenHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SSatzbefehl>();
    CLI::App * pApp = FuegeSatzbefehlHinzu(
        app, "pruefen", "Ob eine gespeicherte Statistik unversehrt ist und die Praxis noch dasselbe ergibt",
        *pBefehl, true);
    pApp->add_flag("--ohne-lauf", pBefehl->bOhneLauf, "Nur die Dateien, ohne einen neuen Lauf")
        ->group(AUSGABEGRUPPE);
    pApp->callback([pBefehl] { PruefeSatz(*pBefehl); });
}

} // namespace orvostat
