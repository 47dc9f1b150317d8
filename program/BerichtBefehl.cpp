#include "Befehle.h"

#include "Aufruf.h"
#include "Bericht.h"
#include "Datenbank.h"
#include "Laufrahmen.h"
#include "Praxis.h"
#include "Saetze.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

struct SBerichtbefehl {
    SLaufoptionen optionen;
    SAusgabeoptionen ausgabe;
    SSatzoptionen satzort;
    std::string sAus;        // the name of a saved statistic; empty: a run
    std::string sVergleiche; // the name of another one; empty: none
    bool bVorjahr = false;
    int iGrenze = 40;
    bool bMitNamen = false;
};

// The same day a year before; the last day of a February stays that.
CString VorEinemJahr(const CString & sTag) {
    const CString sVorher = RightFix(itoc(Zahl(sTag.Left(4)) - 1), 4, '0') + sTag.Mid(4);
    if (sTag.Mid(4) == "0229") return sVorher.Left(4) + "0228";
    if (sTag.Mid(4) == "0228" && !GueltigesDatum(sTag.Left(4) + "0229") &&
        GueltigesDatum(sVorher.Left(4) + "0229"))
        return sVorher.Left(4) + "0229";
    return sVorher;
}

// What the words of a run select, a year before; of a period that runs on, as much of it as has passed.
SKernzahlen Vorjahr(const SBerichtbefehl & befehl, const std::vector<std::string> & vWorte) {
    CStatAccu accu;
    CString sPraxis;
    LaufeWorte(vWorte, befehl.optionen.sDatei, accu, [&](SLaufoptionen & o) {
        if (o.sVon.empty() || o.sBis.empty())
            Verweigere("--vorjahr braucht einen Zeitraum mit --von und --bis.");
        CString sHeute;
        AmStichtag(o, [&] { sHeute = CMxDate(); });
        const CString sVon = LiesDatum(o.sVon);
        const CString sBis = sVon <= sHeute ? std::min(LiesDatum(o.sBis), sHeute) : LiesDatum(o.sBis);
        o.sVon = VorEinemJahr(sVon).Utf8();
        o.sBis = VorEinemJahr(sBis).Utf8();
        sPraxis = Praxisnummer(o);
    });
    return Kernzahlen("Vorjahr", accu, sPraxis);
}

SKernzahlen Gespeichert(const SBerichtbefehl & befehl, const CString & sPraxis) {
    CStatAccu accu;
    const CSatz satz(befehl.optionen.sDatei, befehl.satzort, befehl.sVergleiche);
    satz.Lies(accu);
    return Kernzahlen("„" + befehl.sVergleiche + "“", accu, sPraxis);
}

// A saved statistic is selected already; only the owner and the day of the report are still to be chosen.
void VerlangeNurGespeichertes(const CLI::App & app) {
    for (const CLI::Option * pOption : app.get_options())
        if (pOption->count() > 0 && !pOption->get_positional() && pOption->get_group() != AUSGABEGRUPPE &&
            pOption->get_name() != "--mandant" && pOption->get_name() != "--stichtag")
            throw CLI::ValidationError(
                "--aus", pOption->get_name() +
                             " wählt für einen Lauf aus; eine gespeicherte Statistik ist schon gewählt");
}

void FuehreBerichtAus(const CLI::App & app, SBerichtbefehl & befehl) {
    if (app.count("--format") == 0) {
        befehl.ausgabe.eFormat = EFormat::Html;
        if (befehl.ausgabe.sDatei.empty())
            throw CLI::ValidationError("-o", "die Seite braucht einen Dateinamen: -o bericht.html");
    }
    if (!befehl.sAus.empty()) VerlangeNurGespeichertes(app);
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    std::optional<CSatz> satz;
    if (!befehl.sAus.empty()) satz.emplace(befehl.optionen.sDatei, befehl.satzort, befehl.sAus);

    SBerichtauftrag auftrag{.sPraxis = Praxisnummer(befehl.optionen),
                            .sMandant = befehl.optionen.sMandant,
                            .iGrenze = befehl.iGrenze,
                            .bMitNamen = befehl.bMitNamen};
    if (befehl.bVorjahr)
        auftrag.vVergleiche.push_back(Vorjahr(befehl, satz ? satz->Abfrage() : Auswahlworte(app)));
    if (!befehl.sVergleiche.empty()) auftrag.vVergleiche.push_back(Gespeichert(befehl, auftrag.sPraxis));

    CStatAccu accu;
    const auto Zeige = [&](CDokument & dokument, CStatAccu &, const CLauf * pLauf) {
        if (pLauf != nullptr) auftrag.zahlen = pLauf->Zahlen();
        AmStichtag(befehl.optionen, [&] { SchreibeBericht(dokument, ErstelleBericht(accu, auftrag)); });
        return true;
    };
    const SLaufrahmen rahmen{app, befehl.optionen, befehl.ausgabe, Zeige};
    if (satz) {
        satz->Lies(accu);
        auftrag.vFehlendeSpalten = satz->FehlendeSpalten();
        ZeigeOhneLauf(rahmen, accu, satz->Abfragetext());
        return;
    }
    SLaufauftrag lauf = Laufauftrag(befehl.optionen);
    // The other defects are errors of the run, too.
    lauf.fWeggelassen = [&](const CTBeh &, EWeglassgrund eGrund) {
        if (eGrund != EWeglassgrund::BehandlerUnbekannt && eGrund != EWeglassgrund::PraxisUnbekannt &&
            eGrund != EWeglassgrund::Planstand)
            return;
        const CBehHitLine & hit = accu.m_BehHit;
        auftrag.vMaengel.push_back({hit.PATNR, hit.PATNAME, hit.DATUM, hit.LSTIN, eGrund});
    };
    FuehreLaufAus(rahmen, accu, lauf);
}

} // namespace

void FuegeBerichtHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SBerichtbefehl>();
    CLI::App * pApp = app.add_subcommand(
        "bericht", "Ein Bericht zum Ansehen und Drucken: eine HTML-Seite mit Bildern und Tabellen");
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    LasseStichtagAllein(*pApp);
    pApp->get_option("--stichtag")
        ->description("Tag, der als heute gilt, für das Alter und das laufende Quartal; ohne: heute");
    FuegeAusgabeHinzu(*pApp, pBefehl->ausgabe);
    pApp->get_option("--format")
        ->description("table, csv oder json: die Zahlen des Berichts statt der Seite");
    CLI::Option * pAus =
        pApp->add_option("--aus", pBefehl->sAus, "Aus dieser gespeicherten Statistik statt aus einem Lauf")
            ->type_name("NAME");
    CLI::Option * pVergleiche = pApp->add_option("--vergleich", pBefehl->sVergleiche,
                                                 "Mit dieser gespeicherten Statistik vergleichen")
                                    ->type_name("NAME");
    CLI::Option * pVorjahr =
        pApp->add_flag("--vorjahr", pBefehl->bVorjahr, "Mit demselben Zeitraum des Jahres davor vergleichen");
    CLI::Option * pGrenze =
        pApp->add_option("--grenze", pBefehl->iGrenze,
                         "Markiert Leistungen, die so viel Prozent über der Norm sind (40)")
            ->check(Bereich(1, 100000))
            ->type_name("PROZENT");
    CLI::Option * pNamen =
        pApp->add_flag("--mit-namen", pBefehl->bMitNamen, "Patienten auch mit Namen; sonst nur mit Nummern");
    for (CLI::Option * p : {pAus, pVergleiche, pVorjahr, pGrenze, pNamen})
        p->group(AUSGABEGRUPPE);
    FuegeSatzortHinzu(*pApp, pBefehl->satzort);
    pApp->callback([pApp, pBefehl] { FuehreBerichtAus(*pApp, *pBefehl); });
}

} // namespace orvostat
