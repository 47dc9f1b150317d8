#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Erlaeuterung.h"
#include "Praxis.h"
#include "Selektionsoptionen.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/lauf/Lauf.h"

#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

struct SErklaerbefehl {
    SLaufoptionen optionen;
    std::string sDatum;
    std::string sLeistung;
};

// ---- what a service shows

// Why a run leaves out the treatment of a hit: "der Plan 1 fehlt".
std::string Grund(const CBehHitLine & hit, EWeglassgrund eGrund) {
    switch (eGrund) {
    case EWeglassgrund::BehandlerUnbekannt:
        return "den Behandler " + Trim(hit.BEHANDLERNR).Utf8() + " gibt es nicht";
    case EWeglassgrund::PraxisUnbekannt:
        return "der Behandler " + Trim(hit.BEHANDLERNR).Utf8() + " hat keinen bekannten Praxisinhaber";
    case EWeglassgrund::OhnePlannummer:
        return "Leistung ohne Plannummer";
    case EWeglassgrund::PlanFehlt:
        return "der Plan " + Trim(hit.PLANNR).Utf8() + " fehlt";
    case EWeglassgrund::Planstand:
        return "der Plan " + Trim(hit.PLANNR).Utf8() + " ist nicht im abrechenbaren Stand";
    case EWeglassgrund::Technik:
        return "Leistungen der Art 7 zählen nur mit --technik";
    default:
        return Weglassname(eGrund).Utf8();
    }
}

void ZeigeKopf(const CBehHitLine & hit) {
    std::cout << hit.PATNAME.Utf8() << " (" << Trim(hit.PATNR).Utf8() << "), " << Db2Date(hit.DATUM).Utf8()
              << '\n';
}

void ZeigeLeistung(const CBehHitLine & hit, const CBewertungsspur & spur,
                   const std::optional<EWeglassgrund> & weggelassen) {
    if (hit.LSTNR.IsEmpty())
        std::cout << "\nEintrag ohne Leistung" << (hit.TEXT.IsEmpty() ? "" : ": " + hit.TEXT.Utf8());
    else
        std::cout << "\nLeistung " << hit.LSTNR.Utf8();
    if (!hit.TEETH.IsEmpty()) std::cout << ", Zähne " << hit.TEETH.Utf8();
    std::cout << ", Behandler " << Trim(hit.BEHANDLERNR).Utf8();
    if (!hit.KASKUERZEL.IsEmpty()) std::cout << ", Kasse " << hit.KASKUERZEL.Utf8();
    std::cout << '\n';
    if (weggelassen) std::cout << "  Im Lauf nicht gezählt: " << Grund(hit, *weggelassen) << '\n';
    for (const std::string & sZeile : Erlaeutere(spur))
        std::cout << "  " << sZeile << '\n';
    std::cout << "  Ergebnis: " << AlsGeld(hit.BETRAG) << '\n';
}

// ---- the walk

// As a run with these options, but that it tells of each treatment.
SLaufauftrag Auftrag(const SLaufoptionen & optionen) {
    SLaufauftrag auftrag = optionen.auftrag;
    auftrag.bPlangatter = !optionen.bPlangatterAus;
    auftrag.bWeggelasseneBewerten = true;
    return auftrag;
}

class CErklaerung {
public:
    // The run's selection without the patient, who is chosen by his number alone: treatments may be there without him.
    CErklaerung(const CLI::App & app, const SErklaerbefehl & befehl)
        : m_lauf(m_accu, Auftrag(befehl.optionen)), m_sTag(LiesDatum(befehl.sDatum)),
          m_sPatient(befehl.optionen.sPatient), m_sLeistung(AusUtf8(befehl.sLeistung)) {
        SLaufoptionen optionen = befehl.optionen;
        optionen.sPatient.clear();
        SetzeSelektion(app, optionen, m_accu);
        m_accu.SetPatient(RightFix(AusUtf8(m_sPatient), 10));
    }

    // Prints the services. Ends the command where there is none, or where the file cannot be read to the end.
    void Zeige() {
        const bool bBegonnen = m_lauf.Vorlauf();
        VerweigereNachLesefehler();
        if (!bBegonnen) throw CLI::RuntimeError(ENDE_FEHLER);
        m_accu.m_pSpur = &m_spur;
        // All treatments of the patient up to the day: a plan's mixed point value comes from its first service.
        CTBeh & beh = *m_accu.m_pRBeh;
        int i = beh.GetForPatSel(m_accu.GetPatient(), ERSTER_TAG, LETZTER_TAG, CString(), true);
        const bool bBehandelt = i == ZEILE_OK;
        for (; i == ZEILE_OK && beh.m_DATUM <= m_sTag; i = beh.Next())
            NimmBehandlung(beh);
        m_lauf.Nachlauf();
        VerweigereNachLesefehler();
        if (!bBehandelt) (void)PruefePatient(m_sPatient);
        if (m_iHits == 0)
            Verweigere(m_sLeistung.IsEmpty() ? "An diesem Tag hat der Patient keine Leistung."
                                             : "An diesem Tag hat der Patient keine solche Leistung.");
    }

private:
    void NimmBehandlung(const CTBeh & beh) {
        m_spur.Leere();
        std::optional<EWeglassgrund> weggelassen;
        if (!m_lauf.BaueHit(beh)) weggelassen = m_lauf.Weglassgrund();
        if (beh.m_DATUM != m_sTag || !IstLeistung(beh)) return;
        if (m_iHits++ == 0) ZeigeKopf(m_accu.m_BehHit);
        ZeigeLeistung(m_accu.m_BehHit, m_spur, weggelassen);
    }
    // The service is the wanted one by the number it was entered under or by the one it is counted under.
    [[nodiscard]] bool IstLeistung(const CTBeh & beh) const {
        return m_sLeistung.IsEmpty() || beh.m_LSTNR.CompareNoCase(m_sLeistung) == 0 ||
               m_accu.m_BehHit.LSTNR.CompareNoCase(m_sLeistung) == 0;
    }

    CBewertungsspur m_spur;
    CStatAccu m_accu;
    CLauf m_lauf;
    CString m_sTag;
    std::string m_sPatient;
    CString m_sLeistung;
    int m_iHits = 0;
};

} // namespace

void FuegeExplainHinzu(CLI::App & app) {
    CLI::App * pApp = app.add_subcommand("explain", "Erklärt die Beträge eines Tages Schritt für Schritt");
    const auto pBefehl = std::make_shared<SErklaerbefehl>();
    SLaufoptionen & optionen = pBefehl->optionen;
    SLaufauftrag & auftrag = optionen.auftrag;
    pApp->add_option("DATEI", optionen.sDatei, "Die Praxisdatei")->required();
    pApp->add_option("--datum", pBefehl->sDatum, "TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT")
        ->required()
        ->type_name("TAG");
    pApp->add_option("--lst", pBefehl->sLeistung, "Nur diese Leistungsnummer zeigen")->type_name("NR");
    // The options of a run: what it would not count is shown with the reason.
    FuegeSelektionHinzu(*pApp, optionen);
    pApp->get_option("--patient")->required()->description("Patientennummer");
    for (const char * pOhneSinn : {"--von", "--bis", "--sort", "--nebenakten", "--ersatz"})
        pApp->remove_option(pApp->get_option(pOhneSinn));
    const CLI::Option * pErsatz =
        pApp->add_flag("--ersatz{" + std::to_string(auftrag.iErsatzgruppe) + "}", auftrag.iErsatzgruppe,
                       "Leistungen durch ihren Ersatz zählen; mit =GRUPPE aus dieser Gruppe der Parameter")
            ->type_name("GRUPPE");
    pApp->callback([pApp, pBefehl, pErsatz] {
        pBefehl->optionen.auftrag.bErsatz = pErsatz->count() > 0;
        const CPraxis praxis(pBefehl->optionen.sDatei, EModus::Lesen);
        AmStichtag(pBefehl->optionen, [&] { CErklaerung(*pApp, *pBefehl).Zeige(); });
    });
}

} // namespace orvostat
