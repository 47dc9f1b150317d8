#include "Befehle.h"

#include "Datenbank.h"
#include "NeueDatei.h"
#include "Praxis.h"

#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Praxispruefung.h"
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

CZeilenspeicher & Gescheiterter(CZeilenspeicher & von, CZeilenspeicher & nach) {
    return Fehlergrund(&von).empty() ? nach : von;
}

// By way of memory, so that reading and writing do not wait for each other.
void KopiereUndVergleiche(CZeilenspeicher & von, CZeilenspeicher & nach, const STabelle & tabelle) {
    CMemorySpeicher zwischen;
    if (KopiereTabelle(von, zwischen, tabelle) != ZEILE_OK ||
        KopiereTabelle(zwischen, nach, tabelle) != ZEILE_OK)
        Scheitere(std::string("Die Tabelle ") + tabelle.pName + " lässt sich nicht kopieren",
                  Gescheiterter(von, nach));
    if (!GleicheTabelle(von, nach, tabelle))
        Scheitere(std::string("Die Kopie der Tabelle ") + tabelle.pName + " gleicht dem Original nicht",
                  Gescheiterter(von, nach));
}

// Rows reach the copy by way of texts that hold less than the file does.
void VerweigereVerluste(CSqliteSpeicher & quelle) {
    std::int64_t iTexte = 0;
    std::string sErster;
    for (const STabelle * pTabelle : AlleTabellen()) {
        const auto Zaehle = [&](CWerte vZeile, std::size_t iSpalte) {
            if (iTexte++ == 0)
                sErster = Zeilenname(*pTabelle, vZeile) + ' ' + pTabelle->vSpalten[iSpalte].pName;
        };
        if (!quelle.SucheVerluste(*pTabelle, Zaehle))
            Scheitere(std::string("Die Tabelle ") + pTabelle->pName + " lässt sich nicht lesen", quelle);
    }
    if (iTexte > 0)
        Verweigere("Die Kopie verlöre Zeichen, die Windows-1252 fehlen, in " + std::to_string(iTexte) +
                   (iTexte == 1 ? " Text: " : " Texten, zuerst in: ") + sErster + ".");
}

// A file can have lost rows and be read to its end: the copy would pass for a whole one.
void VerweigereSchaeden(CSqliteSpeicher & quelle) {
    if (quelle.Pruefe().empty()) return;
    if (const ESpeicherursache eUrsache = quelle.LetzteUrsache();
        eUrsache != ESpeicherursache::Keine && eUrsache != ESpeicherursache::Beschaedigt)
        Scheitere("Die Praxisdatei lässt sich nicht prüfen", quelle);
    Verweigere("Die Praxisdatei hat Schäden und wird nicht kopiert. \"orvostat check\" zeigt sie.");
}

// A walk that has begun: until it goes, nobody else changes the file, and all tables are of one moment. Null for a
// practice without rows.
std::unique_ptr<CZeilenmenge> HalteStand(CZeilenspeicher & quelle) {
    for (const STabelle * pTabelle : AlleTabellen()) {
        std::vector<CString> vTexte(pTabelle->vSpalten.size());
        std::vector<CString *> vFelder;
        for (CString & sText : vTexte)
            vFelder.push_back(&sText);
        auto pWeg = quelle.Oeffne(*pTabelle, {});
        const int iErgebnis = pWeg ? pWeg->Naechste(vFelder) : static_cast<int>(ZEILE_FEHLER);
        if (iErgebnis == ZEILE_OK) return pWeg;
        if (iErgebnis != ZEILE_KEINE) Scheitere("Die Praxisdatei lässt sich nicht lesen", quelle);
    }
    return nullptr;
}

// In one group, so that the copy is there as a whole or not at all; the number of rows.
std::int64_t KopiereAlle(CZeilenspeicher & von, CZeilenspeicher & nach) {
    const auto ScheitereBeimSchreiben = [&] { Scheitere("Die Kopie lässt sich nicht schreiben", nach); };
    if (nach.Beginne() != ZEILE_OK) ScheitereBeimSchreiben();
    OrvoOpenProgressBox(0, 0, "Praxisdatei wird kopiert ..."_t);
    const auto vTabellen = AlleTabellen();
    std::int64_t iZeilen = 0;
    for (std::size_t i = 0; i < vTabellen.size(); ++i) {
        Fortschritt(static_cast<std::int64_t>(i), static_cast<std::int64_t>(vTabellen.size()));
        KopiereUndVergleiche(von, nach, *vTabellen[i]);
        iZeilen += nach.Zeilenzahl(*vTabellen[i]);
    }
    OrvoCloseProgressBox();
    if (nach.Beende(true) != ZEILE_OK) ScheitereBeimSchreiben();
    return iZeilen;
}

void KopierePraxis(const std::string & sQuelle, const std::string & sZiel) {
    const auto pQuelle = OeffnePraxis(sQuelle, EModus::Lesen);
    const auto pStand = HalteStand(*pQuelle);
    std::optional<CNeueDatei> datei;
    std::shared_ptr<CZeilenspeicher> pServer;
    if (IstServer(sZiel))
        pServer = OeffnePraxis(sZiel, EModus::Neu);
    else
        datei.emplace(sZiel, EVorhanden::Bleibt, IstServer(sQuelle) ? "" : sQuelle);
    if (auto * pDatei = dynamic_cast<CSqliteSpeicher *>(pQuelle.get())) {
        VerweigereSchaeden(*pDatei);
        VerweigereVerluste(*pDatei);
    }
    const std::int64_t iZeilen = KopiereAlle(*pQuelle, pServer ? *pServer : datei->Speicher());
    if (datei) datei->Fertig();
    std::cout << AlleTabellen().size() << " Tabellen mit " << iZeilen << " Zeilen kopiert und verglichen\n";
}

} // namespace

void FuegeKopieHinzu(CLI::App & app) {
    CLI::App * pBefehl =
        app.add_subcommand("copy", "Kopiert eine Praxisdatei Tabelle für Tabelle und vergleicht");
    auto pNamen = std::make_shared<std::pair<std::string, std::string>>();
    pBefehl->add_option("QUELLE", pNamen->first, "Die Praxisdatei oder postgresql://...")->required();
    pBefehl->add_option("ZIEL", pNamen->second, "Die neue Datei, oder eine neue Praxis auf einem Server")
        ->required();
    pBefehl->callback([pNamen] { KopierePraxis(pNamen->first, pNamen->second); });
}

} // namespace orvostat
