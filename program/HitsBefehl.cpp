#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Hittabelle.h"
#include "Konsole.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>
#include <iostream>
#include <memory>

namespace orvostat {

namespace {

struct SAuswahl {
    std::string sDatei;
    std::string sVon;
    std::string sBis;
    std::string sPatient;
    std::string sBehandler;
    int iLimit = 0; // 0 is all
    SAusgabeoptionen ausgabe;
};

// Every treatment is a hit, with what its rows say and no more.
const SLaufauftrag ROH = {.bPlangatter = false,
                          .bSelektion = false,
                          .bBewertung = false,
                          .bStammdatenNoetig = false,
                          .bPatienten = false};

// ---- the walk

CString Grenze(const std::string & sText, const CString & sOhne) {
    return sText.empty() ? sOhne : LiesDatum(sText);
}

// Opens the treatments in key order, of one patient by his key.
int Oeffne(CTBeh & beh, const SAuswahl & auswahl, const CString & sVon, const CString & sBis) {
    if (auswahl.sPatient.empty()) return beh.GetAll();
    beh.m_PATNR = PruefePatient(auswahl.sPatient);
    beh.AddKeysBW(sVon, sBis);
    return beh.GetByK1(MATCH_ALLE);
}

void Zeige(const CLI::App & app, const SAuswahl & auswahl) {
    const CString sVon = Grenze(auswahl.sVon, ERSTER_TAG);
    const CString sBis = Grenze(auswahl.sBis, LETZTER_TAG);
    PruefeFolge("--bis", sVon, sBis);
    const CPraxis praxis(auswahl.sDatei, EModus::Lesen);
    const std::vector<CString> vBehandler = PruefeBehandlerliste(auswahl.sBehandler);
    CAusgabeziel ziel(auswahl.ausgabe);
    CStatAccu accu;
    CLauf lauf(accu, ROH);
    if (!lauf.Vorlauf()) VerweigereNachLesefehler();
    const auto pDokument = BeginneDokument(
        ziel, auswahl.ausgabe,
        Ausgabekopf(auswahl.sDatei, Grenze(auswahl.sVon, {}), Grenze(auswahl.sBis, {}), Auswahltext(app), {}),
        {});
    CHittabelle tabelle(*pDokument, EHitspalten::Kurz);
    CTBeh beh;
    int iHits = 0;
    int i = Oeffne(beh, auswahl, sVon, sBis);
    bool bAbbruch = false;
    for (; i == ZEILE_OK && (auswahl.iLimit == 0 || iHits < auswahl.iLimit); i = beh.Next()) {
        if ((bAbbruch = AbbruchVerlangt())) break;
        if (beh.m_DATUM < sVon || beh.m_DATUM > sBis ||
            (!vBehandler.empty() && std::ranges::find(vBehandler, beh.m_BEHANDLERNR) == vBehandler.end()))
            continue;
        lauf.BaueHit(beh);
        tabelle.Zeile(accu.m_BehHit);
        ++iHits;
    }
    tabelle.Ende();
    pDokument->Satz(std::to_string(iHits) + (iHits == 1 ? " Hit" : " Hits"));
    pDokument->Ende(lauf.Lesefehler() ? UNLESBAR : bAbbruch ? ABGEBROCHEN : "");
    VerweigereNachLesefehler();
    if (bAbbruch) BrichAb();
    ziel.Fertig();
}

} // namespace

void FuegeHitsHinzu(CLI::App & app) {
    CLI::App * pBefehl = app.add_subcommand("hits", "Zeigt die Hits der Behandlungen, unbewertet");
    auto pAuswahl = std::make_shared<SAuswahl>();
    pBefehl->add_option("DATEI", pAuswahl->sDatei, "Die Praxisdatei")->required();
    pBefehl->add_option("--von", pAuswahl->sVon, "Erster Tag, TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT")
        ->check(NichtLeer())
        ->type_name("TAG");
    pBefehl->add_option("--bis", pAuswahl->sBis, "Letzter Tag")->check(NichtLeer())->type_name("TAG");
    pBefehl->add_option("--patient", pAuswahl->sPatient, "Nur dieser Patient")
        ->check(NichtLeer())
        ->type_name("NR");
    pBefehl->add_option("--behandler", pAuswahl->sBehandler, "Ein Behandler oder mehrere mit Komma")
        ->check(NichtLeer())
        ->type_name("NR");
    pBefehl->add_option("--limit", pAuswahl->iLimit, "Höchstens so viele Hits")
        ->check(Bereich(1, 1'000'000'000))
        ->type_name("ZAHL");
    FuegeAusgabeHinzu(*pBefehl, pAuswahl->ausgabe);
    pBefehl->callback([pBefehl, pAuswahl] { Zeige(*pBefehl, *pAuswahl); });
}

} // namespace orvostat
