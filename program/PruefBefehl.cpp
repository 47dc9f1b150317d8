#include "Befehle.h"

#include "Ausgabe.h"
#include "Datenbank.h"

#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Praxispruefung.h"
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <iostream>
#include <memory>

namespace orvostat {

namespace {

constexpr SAusgabespalte SPALTEN[] = {
    {"Tabelle", EZelle::Text, 20}, {"Zeilen", EZelle::Zahl, 12}, {"Mängel", EZelle::Zahl, 12}};

std::int64_t AlleZeilen(CZeilenspeicher & speicher) {
    std::int64_t iZeilen = 0;
    for (const STabelle * pTabelle : AlleTabellen())
        iZeilen += std::max<std::int64_t>(0, speicher.Zeilenzahl(*pTabelle));
    return iZeilen;
}

void Pruefe(const std::string & sDatei) {
    if (NimmUnterbrocheneZurueck(sDatei))
        std::cout << "Eine unterbrochene Änderung wurde zurückgenommen.\n\n";
    const auto pSpeicher = OeffneSpeicher(sDatei, EModus::Lesen);
    std::vector<std::string> vMaengel;
    for (const CString & sMangel : pSpeicher->Pruefe())
        vMaengel.push_back("Datei: " + sMangel.Utf8());

    const std::int64_t iAlle = AlleZeilen(*pSpeicher);
    std::int64_t iGelesen = 0;
    CPraxispruefung pruefung(
        *pSpeicher, [&](const std::string & sMangel) { vMaengel.push_back(sMangel); },
        [&] { Fortschritt(++iGelesen, iAlle); });
    const auto pAusgabe = CAusgabe::Neu(EFormat::Tabelle, std::cout, SPALTEN);
    OrvoOpenProgressBox(0, 0, "Praxisdatei wird geprüft ..."_t);
    for (const STabelle * pTabelle : AlleTabellen()) {
        const std::size_t iVorher = vMaengel.size();
        const std::int64_t iZeilen = pruefung.Pruefe(*pTabelle);
        // A file that cannot be read to its end is named above.
        (void)pSpeicher->SucheVerluste(*pTabelle, [&](CWerte vZeile, std::size_t iSpalte) {
            vMaengel.push_back(Zeilenname(*pTabelle, vZeile) + ": " + pTabelle->vSpalten[iSpalte].pName +
                               " \"" + vZeile[iSpalte]->Utf8() +
                               "\" hat in der Datei Zeichen, die Windows-1252 fehlen");
        });
        (void)pSpeicher->SucheFremdeSchluessel(*pTabelle, [&](CWerte vZeile, int iSchluessel) {
            vMaengel.push_back(Zeilenname(*pTabelle, vZeile) + ": Schlüssel " + std::to_string(iSchluessel) +
                               " passt nicht zu den Spalten");
        });
        pAusgabe->Zeile({CString(pTabelle->pName), itoc(iZeilen),
                         itoc(static_cast<std::int64_t>(vMaengel.size() - iVorher))});
    }
    OrvoCloseProgressBox();

    pAusgabe->Ende();
    std::cout << '\n';
    for (const std::string & sMangel : vMaengel)
        std::cout << sMangel << '\n';
    if (vMaengel.empty()) {
        std::cout << "Die Praxisdatei ist in Ordnung.\n";
        return;
    }
    std::cout << vMaengel.size() << (vMaengel.size() == 1 ? " Mangel\n" : " Mängel\n");
    throw CLI::RuntimeError(ENDE_FEHLER);
}

} // namespace

void FuegePruefungHinzu(CLI::App & app) {
    CLI::App * pBefehl = app.add_subcommand("check", "Prüft eine Praxisdatei Zeile für Zeile");
    auto pDatei = std::make_shared<std::string>();
    pBefehl->add_option("DATEI", *pDatei, "Die Praxisdatei")->required();
    pBefehl->callback([pDatei] { Pruefe(*pDatei); });
}

} // namespace orvostat
