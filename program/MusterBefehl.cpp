#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Muster.h"
#include "NeueDatei.h"
#include "Praxis.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"

#include <iostream>
#include <memory>

namespace orvostat {

namespace {

struct SAufruf {
    std::string sDatei;
    std::string sVon = "01.01.2024";
    SMusterwahl wahl;
    bool bErsetzen = false;
    bool bWirklich = false;
};

void Lege(SAufruf & aufruf) {
    aufruf.wahl.sVon = LiesDatum(aufruf.sVon);
    if (aufruf.wahl.sVon < "20020101" || aufruf.wahl.sVon > "20991231")
        throw CLI::ValidationError("--von", "die Musterpraxis beginnt zwischen 2002 und 2099");
    CNeueDatei datei(aufruf.sDatei, !aufruf.bErsetzen  ? EVorhanden::Bleibt
                                    : aufruf.bWirklich ? EVorhanden::Weicht
                                                       : EVorhanden::MusterWeicht);
    const int iErgebnis = ErzeugeMuster(datei.Speicher(), aufruf.wahl);
    if (iErgebnis == ZEILE_KEINE) BrichAb();
    if (iErgebnis != ZEILE_OK || !datei.Speicher().SetzeHerkunft(HERKUNFT_MUSTER))
        Scheitere("\"" + aufruf.sDatei + "\" lässt sich nicht schreiben", datei.Speicher());
    const auto iBehandlungen = datei.Speicher().Zeilenzahl(SBeschreibung<CTBeh_Fields>::tabelle);
    datei.Fertig();
    std::cout << "Musterpraxis \"" << aufruf.sDatei << "\": " << aufruf.wahl.iPatienten
              << (aufruf.wahl.iPatienten == 1 ? " Patient, " : " Patienten, ") << iBehandlungen
              << (iBehandlungen == 1 ? " Behandlung\n" : " Behandlungen\n");
}

} // namespace

void FuegeMusterHinzu(CLI::App & app) {
    CLI::App * pBefehl = app.add_subcommand("sample", "Legt eine Musterpraxis an, jedes Mal dieselbe");
    auto pAufruf = std::make_shared<SAufruf>();
    SMusterwahl & wahl = pAufruf->wahl;
    pBefehl->add_option("DATEI", pAufruf->sDatei, "Die neue Praxisdatei")->required();
    pBefehl->add_option("--patients", wahl.iPatienten, "Anzahl der Patienten, bis 1000000")
        ->check(Bereich(1, 1000000))
        ->capture_default_str()
        ->type_name("ZAHL");
    pBefehl
        ->add_option("--years", wahl.iJahre,
                     "Anzahl der Jahre, bis 30; etwa 25 Behandlungen je Patient und Jahr")
        ->check(Bereich(1, 30))
        ->capture_default_str()
        ->type_name("ZAHL");
    pBefehl->add_option("--seed", wahl.iSaat, "Eine andere Zahl gibt eine andere Praxis, 0 bis 999999999")
        ->check(Bereich(0, 999999999))
        ->capture_default_str()
        ->type_name("ZAHL");
    pBefehl->add_option("--von", pAufruf->sVon, "Erster Tag, 2002 bis 2099")
        ->capture_default_str()
        ->type_name("TAG");
    pBefehl->add_flag("--force", pAufruf->bErsetzen, "Überschreibt eine vorhandene Musterpraxis");
    pBefehl->add_flag("--wirklich", pAufruf->bWirklich, "Überschreibt mit --force jede Datei")
        ->needs("--force");
    pBefehl->callback([pAufruf] { Lege(*pAufruf); });
}

} // namespace orvostat
