#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Laufrahmen.h"
#include "Leistungstabellen.h"
#include "Praxis.h"
#include "Saetze.h"
#include "Summenpruefung.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/plan/StatZE.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <numeric>
#include <utility>

namespace orvostat {

namespace {

// In the order of ELeistungNach.
const std::vector<std::string> NACHWORTE = {"art", "zahler", "behandler", "leistung"};

struct SLeistungsbefehl {
    SLaufoptionen optionen;
    SAusgabeoptionen ausgabe;
    std::string sNach = "art";
    SHundertauftrag auftrag;
    SHundertwahl hundert;
    SKassenwahl kassen;
    std::string sKasse;
    bool bPruefe = false;
    std::string sAus; // the name of a saved statistic; empty: a run
    SSatzoptionen satzort;
};

// Says what was compared and what differs; ends the command where something does.
void ZeigePruefung(const SSummenpruefung & pruefung) {
    if (!pruefung.bGerechnet)
        Verweigere("Die Summen lassen sich nicht mit SQL nachrechnen: " + pruefung.sFehler + '.');
    for (const SSummenabweichung & a : pruefung.vAbweichungen)
        std::cerr << a.sName << ": " << a.iEngine << " statt " << a.iSql << '\n';
    std::cerr << pruefung.iFiguren << " Werte mit SQL nachgerechnet, " << pruefung.iAbweichungen
              << (pruefung.iAbweichungen == 1 ? " weicht ab.\n" : " weichen ab.\n");
    if (pruefung.iAusgelassen != 0)
        std::cerr << "Nicht nachgerechnet: " << pruefung.iAusgelassen
                  << " Werte aus Beträgen in mehreren Währungen.\n";
    if (pruefung.iAbweichungen != 0) throw CLI::RuntimeError(ENDE_FEHLER);
}

// Shows a statistic over the hits of a run and compares it, if asked, with SQL. Both get the hits of the statistic.
// fRechne is false when the user has stopped it.
template <class FRechne, class FZeige, class FPruefe>
void FuehreStatistikAus(const CLI::App & app, const SLeistungsbefehl & befehl, FRechne fRechne, FZeige fZeige,
                        FPruefe fPruefe) {
    const CPraxis praxis(befehl.optionen.sDatei, EModus::Lesen);
    CLSSum sum;
    CStatAccu accu;
    CString sPraxis;
    const auto Zeige = [&](CDokument & dokument, CStatAccu &, const CLauf *) {
        sPraxis = Praxisnummer(befehl.optionen);
        OrdneNachQuartalen(accu.m_vBehHits);
        const bool bGanz = fRechne(sum, accu, sPraxis);
        fZeige(dokument, accu, sum, sPraxis);
        if (!bGanz) dokument.Satz("Die Summen sind nur die eines Teils der Hits; Tage und Anteile fehlen.");
        return bGanz;
    };
    const auto Pruefe = [&](CStatAccu &) {
        if (befehl.bPruefe) ZeigePruefung(fPruefe(accu.m_vBehHits, sPraxis, sum));
    };
    const SLaufrahmen rahmen{app, befehl.optionen, befehl.ausgabe, Zeige, Pruefe};
    if (befehl.sAus.empty()) {
        FuehreLaufAus(rahmen, accu, Laufauftrag(befehl.optionen));
        return;
    }
    const CSatz satz(befehl.optionen.sDatei, befehl.satzort, befehl.sAus);
    satz.Lies(accu);
    ZeigeOhneLauf(rahmen, accu, satz.Abfragetext());
}

void FuehreLeistungenAus(const CLI::App & app, const SLeistungsbefehl & befehl) {
    FuehreStatistikAus(
        app, befehl,
        [](CLSSum & sum, CStatAccu & accu, const CString & sPraxis) {
            sum.Analyse(sPraxis, accu.m_vBehHits, nullptr);
            // A cancel is not told, but it leaves the days out, of which every hit of the statistic has one.
            return !sum.m_vBehTage.empty() ||
                   std::ranges::none_of(accu.m_vBehHits, [&](const CBehHitLine & hit) {
                       return sum.TestBehSelOk(hit, sPraxis);
                   });
        },
        [&](CDokument & dokument, CStatAccu & accu, const CLSSum & sum, const CString & sPraxis) {
            const auto iNach = std::ranges::find(NACHWORTE, befehl.sNach) - NACHWORTE.begin();
            SchreibeLeistungen(dokument, accu, sum, sPraxis, static_cast<ELeistungNach>(iNach));
        },
        PruefeLeistungen);
}

void FuehreHundertAus(const CLI::App & app, const SLeistungsbefehl & befehl) {
    const SHundertauftrag & a = befehl.auftrag;
    FuehreStatistikAus(
        app, befehl,
        [&](CLSSum & sum, CStatAccu & accu, const CString & sPraxis) {
            LadeVerhaeltnisse();
            dbMKGVersion = a.bZweiterSatz; // else the second norms are not read
            LadeNormen(sum.m_100F, accu);
            sum.Analyse100Fall(sPraxis, accu.m_vBehHits, a.bFesteFallzahl, a.iFallzahl, a.bMitGruppe9,
                               a.bGruppe9Extra, a.bZweiterSatz);
            return true;
        },
        [&](CDokument & dokument, CStatAccu &, const CLSSum & sum, const CString &) {
            SchreibeHundert(dokument, sum, a, befehl.hundert);
        },
        [&](const std::vector<CBehHitLine> & vHits, const CString & sPraxis, const CLSSum & sum) {
            return PruefeHundert(vHits, sPraxis, sum, a, befehl.optionen.sDatei);
        });
}

// Of the hits those of the service statistic that an insurer is known for.
void FuehreKassenAus(const CLI::App & app, const SLeistungsbefehl & befehl) {
    SKassenwahl wahl = befehl.kassen;
    wahl.sKuerzel = AusUtf8(befehl.sKasse);
    FuehreStatistikAus(
        app, befehl,
        [&](CLSSum & sum, CStatAccu & accu, const CString & sPraxis) {
            wahl.iAusgelassen = std::erase_if(accu.m_vBehHits, [&](const CBehHitLine & hit) {
                return hit.KASKUERZEL.IsEmpty() || !sum.TestBehSelOk(hit, sPraxis);
            });
            for (const CBehHitLine & hit : accu.m_vBehHits)
                sum.AddKasData(hit);
            sum.AnalyseKasDataSum(sPraxis, sum.m_vKasData);
            return true;
        },
        [&](CDokument & dokument, CStatAccu &, CLSSum & sum, const CString & sPraxis) {
            SchreibeKassen(dokument, sum, sPraxis, wahl);
        },
        PruefeKassen);
}

// A command on a selection, with what all of them have.
CLI::App * FuegeStatistikHinzu(CLI::App & app, const char * pName, const char * pText,
                               SLeistungsbefehl & befehl) {
    CLI::App * pApp = app.add_subcommand(pName, pText);
    pApp->add_option("DATEI", befehl.optionen.sDatei, "Die Praxisdatei")->required();
    FuegeSelektionHinzu(*pApp, befehl.optionen);
    FuegeAusgabeHinzu(*pApp, befehl.ausgabe);
    CLI::Option * pAus =
        pApp->add_option("--aus", befehl.sAus, "Aus dieser gespeicherten Statistik statt aus einem Lauf")
            ->type_name("NAME");
    pAus->group(AUSGABEGRUPPE);
    FuegeSatzortHinzu(*pApp, befehl.satzort);
    for (const char * pOption : {"--daten", "--im-bestand"})
        pApp->get_option(pOption)->needs(pAus);
    pApp->add_flag("--check", befehl.bPruefe, "Rechnet alle Werte mit SQL nach; Ende 1 bei Abweichungen")
        ->group(AUSGABEGRUPPE);
    return pApp;
}

// ---- denture plans

struct SPlanbefehl {
    std::string sDatei;
    std::string sPatient;
    std::string sPlan;
    SAusgabeoptionen ausgabe;
};

void FuehrePlanAus(const SPlanbefehl & befehl) {
    static const SAusgabespalte BLOCKSPALTEN[] = {{"Stelle", EZelle::Text, 10},
                                                  {"Betrag", EZelle::Zahl, 14, "EUR"}};
    static const SAusgabespalte MUSTERSPALTEN[] = {{"Leistung", EZelle::Text, 12},
                                                   {"Zähne", EZelle::Text, 20},
                                                   {"Menge", EZelle::Zahl, 10},
                                                   {"Betrag", EZelle::Zahl, 14, "EUR"},
                                                   {"Text", EZelle::Text, 60}};
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    const CString sPat = PruefePatient(befehl.sPatient);
    const CString sNummer = AusUtf8(befehl.sPlan);
    const CString sPlan = RightFix(sNummer, 3);
    CTPlan plan(dbDatabaseRO);
    plan.m_PATNR = sPat;
    plan.m_PLANNR = sPlan;
    if (sNummer.GetLength() > 3 || plan.GetByK1(MATCH_GENAU) != ZEILE_OK)
        VerweigereFehlendes("Patient " + befehl.sPatient + " hat keinen Plan " + befehl.sPlan + '.');

    CStatZE ze;
    CDBetrag aBetraege[3];
    const bool bBlock = ze.GetLBlockData(sPat, sPlan, aBetraege[0], aBetraege[1], aBetraege[2]);
    ze.GetAbdingungsLst(sPat, sPlan);
    VerweigereNachLesefehler();

    CAusgabeziel ziel(befehl.ausgabe);
    const auto pDokument = CDokument::Neu(befehl.ausgabe.eFormat, ziel.Strom());
    CAusgabe & block = pDokument->Tabelle("Eingliederungsblock", BLOCKSPALTEN);
    const char * aStellen[] = {"6", "7", "3"};
    for (std::size_t i = 0; bBlock && i < std::size(aBetraege); ++i)
        block.Zeile({CString(std::string_view(aStellen[i])), BetragZelle(aBetraege[i])});
    block.Ende();
    if (!bBlock) pDokument->Satz("Der Plan hat keinen Eingliederungsblock.");
    CAusgabe & muster = pDokument->Tabelle("Mustereinträge", MUSTERSPALTEN);
    for (const CBehHitLine & hit : ze.m_vHits)
        muster.Zeile({hit.LSTNR, hit.TEETH, DezimalZelle(hit.ANZAHL, 2), BetragZelle(hit.BETRAG), hit.TEXT});
    muster.Ende();
    pDokument->Ende({});
    ziel.Fertig();
}

} // namespace

void FuegeLeistungenHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SLeistungsbefehl>();
    CLI::App * pApp = FuegeStatistikHinzu(
        app, "leistungen", "Die Leistungsstatistik: Praxis, Behandler und Gruppen mit ihren Anteilen",
        *pBefehl);
    pApp->add_option("--nach", pBefehl->sNach, "Gruppen nach art, zahler, behandler oder leistung")
        ->transform(Wortwahl(NACHWORTE))
        ->type_name("WORT")
        ->group(AUSGABEGRUPPE);
    pApp->callback([pApp, pBefehl] { FuehreLeistungenAus(*pApp, *pBefehl); });
}

void FuegeHundertHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SLeistungsbefehl>();
    CLI::App * pApp = FuegeStatistikHinzu(
        app, "hundert", "Die 100-Fall-Statistik: Leistungen je 100 Fälle gegen die Norm", *pBefehl);
    CLI::Option * pFaelle =
        pApp->add_option("--faelle", pBefehl->auftrag.iFallzahl, "Feste Fallzahl statt der gezählten Fälle")
            ->check(Bereich(0, 1000000))
            ->type_name("ZAHL");
    pApp->add_flag("--gruppe9", pBefehl->auftrag.bMitGruppe9, "Auch Kassen der Gruppe 9");
    pApp->add_flag("--gruppe9-extra", pBefehl->auftrag.bGruppe9Extra, "Gruppe 9 in einer eigenen Spalte")
        ->needs("--gruppe9");
    pApp->add_flag("--zweiter-satz", pBefehl->auftrag.bZweiterSatz, "Die zweite Reihe der Normen");
    pApp->add_flag("--alle-leistungen", pBefehl->hundert.bAlleZeilen, "Auch Leistungen ohne Norm");
    pApp->add_flag("--alle-spalten", pBefehl->hundert.bAlleSpalten, "Eigene und fremde Kassen getrennt");
    pApp->add_option("--grenze", pBefehl->hundert.iGrenze,
                     "Markiert Leistungen, die so viel Prozent über der Norm sind")
        ->check(Bereich(1, 100000))
        ->type_name("PROZENT");
    pApp->callback([pApp, pBefehl, pFaelle] {
        pBefehl->auftrag.bFesteFallzahl = pFaelle->count() > 0;
        FuehreHundertAus(*pApp, *pBefehl);
    });
}

void FuegeKassenHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<SLeistungsbefehl>();
    CLI::App * pApp = FuegeStatistikHinzu(
        app, "kassen", "Die Kassenstatistik: Kassen und Auswahlen von Kassen je Fall", *pBefehl);
    pApp->add_option("--nur-kasse", pBefehl->sKasse, "Nur die Kasse mit diesem Kürzel")->type_name("KÜRZEL");
    pApp->add_flag("!--ohne-fremde1", pBefehl->kassen.bFremdGrp1, "Primärkassen ohne die fremden");
    pApp->add_flag("!--ohne-fremde2", pBefehl->kassen.bFremdGrp2, "Ersatzkassen ohne die fremden");
    pApp->callback([pApp, pBefehl] { FuehreKassenAus(*pApp, *pBefehl); });
}

void FuegeZeplanHinzu(CLI::App & app) {
    CLI::App * pApp = app.add_subcommand("zeplan", "Ein Zahnersatzplan: Blockbeträge und Mustereinträge");
    const auto pBefehl = std::make_shared<SPlanbefehl>();
    pApp->add_option("DATEI", pBefehl->sDatei, "Die Praxisdatei")->required();
    pApp->add_option("--patient", pBefehl->sPatient, "Nummer des Patienten")->required()->type_name("NR");
    pApp->add_option("--plan", pBefehl->sPlan, "Nummer des Plans")->required()->type_name("NR");
    FuegeAusgabeHinzu(*pApp, pBefehl->ausgabe);
    pApp->callback([pBefehl] { FuehrePlanAus(*pBefehl); });
}

} // namespace orvostat
