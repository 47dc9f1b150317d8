#include "Laufrahmen.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Konsole.h"
#include "Praxis.h"

#include <algorithm>
#include <sstream>

#include <CLI/CLI.hpp>

namespace orvostat {

namespace {

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

} // namespace

CLI::Option * FuegeNachHinzu(CLI::App & app, std::vector<const SKriterium *> & vNach) {
    std::string sWorte;
    for (const std::string & sWort : Kriterienworte())
        sWorte += (sWorte.empty() ? "" : ", ") + sWort;
    const auto Lies = [&vNach](const std::string & sWert) { return LiesKriterien(sWert, vNach); };
    return app
        .add_option_function<std::string>(
            "--nach", [](const std::string &) {}, "Summen nach einem oder zwei mit Komma: " + sWorte)
        ->check(CLI::Validator(Lies, ""))
        ->type_name("WORT")
        ->group(AUSGABEGRUPPE);
}

SLaufauftrag Laufauftrag(const SLaufoptionen & optionen) {
    SLaufauftrag auftrag = optionen.auftrag;
    auftrag.bPlangatter = !optionen.bPlangatterAus;
    return auftrag;
}

namespace {

// Begins the document, shows and ends it. sUnvollstaendig is what is known to be missing already.
void Zeige(const SLaufrahmen & rahmen, CStatAccu & accu, CLauf * pLauf, const std::string & sAuswahl,
           CAusgabeziel & ziel, std::string sUnvollstaendig) {
    const std::unique_ptr<CDokument> pDokument = BeginneDokument(
        ziel, rahmen.ausgabe,
        Ausgabekopf(rahmen.optionen.sDatei, accu.GetAbDatum(), accu.GetBisDatum(), sAuswahl, sUnvollstaendig),
        sUnvollstaendig);
    const std::uint64_t iVorher = dbDatabase.Fehlschlaege() + dbDatabaseRO.Fehlschlaege();
    if ((!rahmen.fZeige(*pDokument, accu, pLauf) || AbbruchVerlangt()) && sUnvollstaendig.empty()) {
        sUnvollstaendig = ABGEBROCHEN;
        MeldeAbbruch(ziel);
    }
    // Names in the tables are read too.
    if (dbDatabase.Fehlschlaege() + dbDatabaseRO.Fehlschlaege() != iVorher) sUnvollstaendig = UNLESBAR;
    pDokument->Ende(sUnvollstaendig);
    VerweigereNachLesefehler();
    if (pLauf != nullptr) pLauf->Nachlauf();
    if (!sUnvollstaendig.empty()) throw CLI::RuntimeError(ENDE_ABBRUCH);
    ziel.Fertig();
    if (rahmen.fDanach) rahmen.fDanach(accu);
}

} // namespace

void FuehreLaufAus(const SLaufrahmen & rahmen, CStatAccu & accu, const SLaufauftrag & auftrag) {
    SetzeSelektion(rahmen.app, rahmen.optionen, accu);
    CAusgabeziel ziel(rahmen.ausgabe);
    CLauf lauf(accu, auftrag);
    ELauf eLauf = ELauf::Gescheitert;
    AmStichtag(rahmen.optionen, [&] { eLauf = lauf.Laufe(); });
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    VerweigereNachLesefehler();
    const std::string sUnvollstaendig = eLauf == ELauf::Abgebrochen || AbbruchVerlangt() ? ABGEBROCHEN : "";
    if (!sUnvollstaendig.empty()) MeldeAbbruch(ziel);
    Zeige(rahmen, accu, &lauf, Auswahltext(rahmen.app), ziel, sUnvollstaendig);
}

void LaufeWorte(std::vector<std::string> vWorte, const std::string & sDatei, CStatAccu & accu,
                const std::function<void(SLaufoptionen &)> & fAendere) {
    CLI::App app;
    SLaufoptionen optionen;
    FuegeSelektionHinzu(app, optionen);
    LasseStichtagAllein(app);
    std::ranges::reverse(vWorte);
    try {
        app.parse(vWorte);
    } catch (const CLI::ParseError &) {
        Verweigere("Die gespeicherte Statistik nennt eine Auswahl, die es nicht gibt.");
    }
    optionen.sDatei = sDatei;
    if (fAendere) fAendere(optionen);
    SetzeSelektion(app, optionen, accu);
    CLauf lauf(accu, Laufauftrag(optionen));
    ELauf eLauf = ELauf::Gescheitert;
    AmStichtag(optionen, [&] { eLauf = lauf.Laufe(); });
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    VerweigereNachLesefehler();
    if (eLauf == ELauf::Abgebrochen || AbbruchVerlangt()) throw CLI::RuntimeError(ENDE_ABBRUCH);
}

void ZeigeOhneLauf(const SLaufrahmen & rahmen, CStatAccu & accu, const std::string & sAuswahl) {
    CAusgabeziel ziel(rahmen.ausgabe);
    VerweigereNachLesefehler();
    Zeige(rahmen, accu, nullptr, sAuswahl, ziel, {});
}

} // namespace orvostat
