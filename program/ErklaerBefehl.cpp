#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Erlaeuterung.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/lauf/Lauf.h"

#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

struct SErklaerbefehl {
    std::string sDatei;
    std::string sPatient;
    std::string sDatum;
    std::string sLeistung;
    SLaufauftrag auftrag;
};

// ---- what a service shows

// Why a run leaves out the service of a hit that its plan gate has refused: "der Plan 1 fehlt".
std::string Gattergrund(const CBehHitLine & hit, EWeglassgrund eGrund) {
    if (eGrund == EWeglassgrund::OhnePlannummer) return Weglassname(eGrund).Utf8();
    return "der Plan " + Trim(hit.PLANNR).Utf8() +
           (eGrund == EWeglassgrund::PlanFehlt ? " fehlt" : " ist nicht im abrechenbaren Stand");
}

void ZeigeKopf(const CBehHitLine & hit) {
    std::cout << hit.PATNAME.Utf8() << " (" << Trim(hit.PATNR).Utf8() << "), " << Db2Date(hit.DATUM).Utf8()
              << '\n';
}

void ZeigeLeistung(const CBehHitLine & hit, const CBewertungsspur & spur,
                   const std::optional<EWeglassgrund> & weggelassen) {
    std::cout << "\nLeistung " << hit.LSTNR.Utf8();
    if (!hit.TEETH.IsEmpty()) std::cout << ", Zähne " << hit.TEETH.Utf8();
    std::cout << ", Behandler " << Trim(hit.BEHANDLERNR).Utf8();
    if (!hit.KASKUERZEL.IsEmpty()) std::cout << ", Kasse " << hit.KASKUERZEL.Utf8();
    std::cout << '\n';
    if (weggelassen) std::cout << "  Im Lauf nicht gezählt: " << Gattergrund(hit, *weggelassen) << '\n';
    for (const std::string & sZeile : Erlaeutere(spur))
        std::cout << "  " << sZeile << '\n';
    std::cout << "  Ergebnis: " << AlsGeld(hit.BETRAG) << '\n';
}

// ---- the walk

SLaufauftrag OhneGatter(SLaufauftrag auftrag) {
    auftrag.bPlangatter = false;
    return auftrag;
}

class CErklaerung {
public:
    explicit CErklaerung(const SErklaerbefehl & befehl)
        : m_lauf(m_accu, befehl.auftrag), m_laufOhneGatter(m_accu, OhneGatter(befehl.auftrag)),
          m_sTag(LiesDatum(befehl.sDatum)), m_sPatient(PruefePatient(befehl.sPatient)),
          m_sLeistung(AusUtf8(befehl.sLeistung)) {
        m_accu.SetPatient(m_sPatient);
        m_accu.SetIsAbgerechnet(true);
        m_accu.SetIsErfasst(true);
    }

    // Prints the services. Ends the command where there is none, or where the file cannot be read to the end.
    void Zeige() {
        const bool bBegonnen = m_lauf.Vorlauf();
        VerweigereNachLesefehler();
        if (!bBegonnen) throw CLI::RuntimeError(ENDE_FEHLER);
        m_accu.m_pSpur = &m_spur;
        // All treatments of the patient up to the day: a plan's mixed point value comes from its first service.
        CTBeh & beh = *m_accu.m_pRBeh;
        int i = beh.GetForPatSel(m_sPatient, ERSTER_TAG, m_sTag, CString(), true);
        for (; i == ZEILE_OK; i = beh.Next())
            NimmBehandlung(beh);
        m_lauf.Nachlauf();
        VerweigereNachLesefehler();
        if (m_iHits == 0) Verweigere("An diesem Tag hat der Patient keine solche Leistung.");
    }

private:
    // Values the treatment as a run does; one that the plan gate refuses, without the gate, which is the same up to
    // the insurer's share. A plan's services are all counted or all refused, so neither sees the other's mixed value.
    void NimmBehandlung(const CTBeh & beh) {
        m_spur.Leere();
        std::optional<EWeglassgrund> weggelassen;
        if (!m_lauf.BaueHit(beh)) weggelassen = m_lauf.Weglassgrund();
        if (weggelassen && !m_laufOhneGatter.BaueHit(beh)) return;
        if (beh.m_DATUM != m_sTag || beh.m_LSTNR.IsEmpty() || !IstLeistung(beh)) return;
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
    CLauf m_laufOhneGatter;
    CString m_sTag;
    CString m_sPatient;
    CString m_sLeistung;
    int m_iHits = 0;
};

} // namespace

void FuegeExplainHinzu(CLI::App & app) {
    CLI::App * pApp = app.add_subcommand("explain", "Erklärt die Beträge eines Tages Schritt für Schritt");
    const auto pBefehl = std::make_shared<SErklaerbefehl>();
    SLaufauftrag & auftrag = pBefehl->auftrag;
    pApp->add_option("DATEI", pBefehl->sDatei, "Die Praxisdatei")->required();
    pApp->add_option("--patient", pBefehl->sPatient, "Patientennummer")->required();
    pApp->add_option("--datum", pBefehl->sDatum, "Tag, TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT")->required();
    pApp->add_option("--lst", pBefehl->sLeistung, "Nur diese Leistungsnummer");
    pApp->add_flag("--kassenanteil", auftrag.bKassenanteil, "ZE und KFO nur mit dem Anteil der Kasse");
    const CLI::Option * pErsatz =
        pApp->add_flag("--ersatz{" + std::to_string(auftrag.iErsatzgruppe) + "}", auftrag.iErsatzgruppe,
                       "Leistungen durch ihren Ersatz zählen; mit =GRUPPE aus dieser Gruppe der Parameter");
    pApp->callback([pBefehl, pErsatz] {
        pBefehl->auftrag.bErsatz = pErsatz->count() > 0;
        const CPraxis praxis(pBefehl->sDatei, EModus::Lesen);
        CErklaerung(*pBefehl).Zeige();
    });
}

} // namespace orvostat
