#include "LaufBefehle.h"

#include "Aufruf.h"
#include "Ausgabe.h"
#include "Datenbank.h"
#include "Erlaeuterung.h"
#include "Gegenrechnung.h"
#include "Laufbericht.h"
#include "Praxis.h"
#include "Selektionsoptionen.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

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

void FuehreLaufAus(const CLI::App & app, const SLaufbefehl & befehl) {
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    CStatAccu accu;
    SetzeSelektion(app, befehl.optionen, accu);
    CLauf lauf(accu, Auftrag(befehl.optionen));
    const ELauf eLauf = lauf.Laufe();
    if (eLauf == ELauf::Gescheitert) throw CLI::RuntimeError(ENDE_FEHLER);
    if (befehl.bHits) {
        ZeigeHits(std::cout, accu, befehl.eFormat);
    } else {
        ZeigeZahlen(std::cout, accu, lauf);
        ZeigeSummen(std::cout, accu);
    }
    if (eLauf == ELauf::Abgebrochen) throw CLI::RuntimeError(ENDE_ABBRUCH);
    const SLaufoptionen & o = befehl.optionen;
    const SGegenauftrag auftrag{.bErsatz = o.auftrag.bErsatz,
                                .bKassenanteil = o.auftrag.bKassenanteil,
                                .bNurGesetzliche = o.bNurGesetzliche};
    if (befehl.bPruefe && !ZeigeGegenrechnung(std::cout, RechneGegen(o.sDatei, accu.m_vBehHits, auftrag)))
        throw CLI::RuntimeError(ENDE_FEHLER);
}

void FuegeRunHinzu(CLI::App & app) {
    CLI::App * pApp =
        app.add_subcommand("run", "Bewertet die Behandlungen einer Auswahl und zeigt die Summen");
    const auto pBefehl = std::make_shared<SLaufbefehl>();
    pApp->add_option("DATEI", pBefehl->optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, pBefehl->optionen);
    pApp->add_flag("--hits", pBefehl->bHits, "Die bewerteten Hits statt der Summen");
    OptionFormat(*pApp, pBefehl->eFormat);
    pApp->add_flag("--check", pBefehl->bPruefe, "Rechnet die Summen mit SQL nach; Ende 1 bei Abweichungen");
    pApp->footer(
        "Ein Abschnitt der Auswahl gilt, wenn seine Option angegeben ist, auch mit leerem Wert ('').");
    pApp->callback([pApp, pBefehl] { FuehreLaufAus(*pApp, *pBefehl); });
}

// ---- explain

struct SErklaerbefehl {
    std::string sDatei;
    std::string sPatient;
    std::string sDatum;
    std::string sLeistung;
};

void Erklaere(const CBehHitLine & hit, const CBewertungsspur & spur) {
    std::cout << "\nLeistung " << hit.LSTNR.Utf8();
    if (!hit.TEETH.IsEmpty()) std::cout << ", Zähne " << hit.TEETH.Utf8();
    std::cout << ", Behandler " << Trim(hit.BEHANDLERNR).Utf8();
    if (!hit.KASKUERZEL.IsEmpty()) std::cout << ", Kasse " << hit.KASKUERZEL.Utf8();
    std::cout << '\n';
    for (const std::string & sZeile : Erlaeutere(spur))
        std::cout << "  " << sZeile << '\n';
    std::cout << "  Ergebnis: " << AlsGeld(hit.BETRAG) << '\n';
}

void FuehreErklaerungAus(const SErklaerbefehl & befehl) {
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    CStatAccu accu;
    const CString sTag = LiesDatum(befehl.sDatum);
    accu.SetPatient(AusUtf8(befehl.sPatient));
    accu.SetIsAbgerechnet(true);
    accu.SetIsErfasst(true);
    SLaufauftrag auftrag;
    auftrag.bPlangatter = false;
    CLauf lauf(accu, auftrag);
    if (!lauf.Vorlauf()) throw CLI::RuntimeError(ENDE_FEHLER);
    CBewertungsspur spur;
    accu.m_pSpur = &spur;
    int iHits = 0;
    // All treatments of the patient up to the day: a plan's mixed point value comes from its first service.
    CTBeh & beh = *accu.m_pRBeh;
    for (int i = beh.GetForPatSel(accu.GetPatient(), ERSTER_TAG, sTag, CString(), true); i == 0;
         i = beh.Next()) {
        spur.Leere();
        if (!lauf.BaueHit(beh) || beh.m_DATUM != sTag || beh.m_LSTNR.IsEmpty()) continue;
        if (!befehl.sLeistung.empty() && beh.m_LSTNR != AusUtf8(befehl.sLeistung)) continue;
        if (iHits++ == 0)
            std::cout << accu.m_BehHit.PATNAME.Utf8() << " (" << Trim(accu.m_BehHit.PATNR).Utf8() << "), "
                      << Db2Date(sTag).Utf8() << '\n';
        Erklaere(accu.m_BehHit, spur);
    }
    lauf.Nachlauf();
    if (iHits == 0) Verweigere("An diesem Tag hat der Patient keine solche Leistung.");
}

void FuegeExplainHinzu(CLI::App & app) {
    CLI::App * pApp = app.add_subcommand("explain", "Erklärt die Beträge eines Tages Schritt für Schritt");
    const auto pBefehl = std::make_shared<SErklaerbefehl>();
    pApp->add_option("DATEI", pBefehl->sDatei, "Die Praxisdatei")->required();
    pApp->add_option("--patient", pBefehl->sPatient, "Patientennummer")->required();
    pApp->add_option("--datum", pBefehl->sDatum, "Tag, TT.MM.JJJJ oder JJJJMMTT")->required();
    pApp->add_option("--lst", pBefehl->sLeistung, "Nur diese Leistungsnummer");
    pApp->callback([pBefehl] { FuehreErklaerungAus(*pBefehl); });
}

} // namespace

void FuegeLaufBefehleHinzu(CLI::App & app) {
    FuegeRunHinzu(app);
    FuegeExplainHinzu(app);
}

} // namespace orvostat
