#include "Laufbericht.h"

#include "Hittabelle.h"
#include "Konsole.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/BehErrors.h"

#include <iostream>
#include <map>
#include <string>
#include <unordered_set>

namespace orvostat {

namespace {

constexpr SAusgabespalte BILANZSPALTEN[] = {{"Posten", EZelle::Text, 40}, {"Behandlungen", EZelle::Zahl, 12}};
constexpr SAusgabespalte ZAEHLSPALTEN[] = {{"Posten", EZelle::Text, 50}, {"Anzahl", EZelle::Zahl, 12}};
constexpr SAusgabespalte FEHLERSPALTEN[] = {{"Fehler", EZelle::Zahl, 6},
                                            {"Text", EZelle::Text, 50},
                                            {"Patient", EZelle::Text, 10},
                                            {"Datum", EZelle::Datum, 10},
                                            {"Leistung", EZelle::Text, 8}};

struct SPosten {
    std::string sText;
    std::int64_t iAnzahl = 0;
};

// "1 Hit", "2 Hits".
std::string Anzahl(std::int64_t iAnzahl, const char * pEiner, const char * pMehrere) {
    return std::to_string(iAnzahl) + ' ' + (iAnzahl == 1 ? pEiner : pMehrere);
}

// What the treatments read have become; the numbers add up to theirs.
std::vector<SPosten> Bilanz(const SLaufzahlen & zahlen) {
    std::vector<SPosten> v{{"gezählt", zahlen.iTreffer}};
    for (std::size_t i = 0; i < WEGLASSGRUENDE; ++i) {
        const auto eGrund = static_cast<EWeglassgrund>(i);
        if (zahlen.Weggelassen(eGrund) != 0)
            v.push_back({Weglassname(eGrund).Utf8(), zahlen.Weggelassen(eGrund)});
    }
    return v;
}

// Counted words for a person; as names of a table they are always the same.
std::vector<SPosten> Hinweise(const SLaufzahlen & z, bool bFuerPersonen) {
    const struct {
        std::int64_t iAnzahl;
        const char * pEiner;
        const char * pMehrere;
    } aHinweise[] = {
        {z.iHits - z.iTreffer, "Hit des Labors ohne Behandlung", "Hits des Labors ohne Behandlung"},
        {z.iOhneBill, "Hit ohne Rechnung", "Hits ohne Rechnung"},
        {z.iOhnePatient, "Hit ohne lesbaren Patienten", "Hits ohne lesbaren Patienten"},
        {z.iOhneKasse, "Hit ohne Versicherung oder Kasse am Tag", "Hits ohne Versicherung oder Kasse am Tag"},
        {z.iUnlesbar, "Hit, dessen Menge oder Faktor unlesbar oder unmöglich ist",
         "Hits, deren Menge oder Faktor unlesbar oder unmöglich ist"},
        {z.iLaborrechnungen, "Laborrechnung", "Laborrechnungen"},
        {z.iSammelrechnungen, "Sammelrechnung", "Sammelrechnungen"},
        {z.iGipsmodelle, "Gipsmodell", "Gipsmodelle"},
        {z.iRechnungen, "Rechnung", "Rechnungen"},
        {z.iVerordnungen, "Verordnung", "Verordnungen"}};
    std::vector<SPosten> v;
    for (const auto & h : aHinweise)
        if (h.iAnzahl != 0) v.push_back({h.iAnzahl == 1 && bFuerPersonen ? h.pEiner : h.pMehrere, h.iAnzahl});
    return v;
}

std::int64_t Patienten(const CStatAccu & accu) {
    std::unordered_set<CString> set;
    for (const CBehHitLine & hit : accu.m_vBehHits)
        set.insert(hit.PATNR);
    return static_cast<std::int64_t>(set.size());
}

void ZeigeFehler(CDokument & dokument, const CStatAccu & accu) {
    std::map<int, int> mapAnzahl;
    for (const CBehErrors & fehler : accu.m_vBehErrors)
        ++mapAnzahl[fehler.m_iFehler];
    for (const auto & [iFehler, iAnzahl] : mapAnzahl)
        dokument.Satz("  Fehler " + std::to_string(iFehler) + ": " + std::to_string(iAnzahl) + " x " +
                      BehFehlertext(iFehler).Utf8());
    constexpr int BEISPIELE = 5;
    int iGezeigt = 0;
    for (const CBehErrors & fehler : accu.m_vBehErrors) {
        if (++iGezeigt > BEISPIELE) break;
        dokument.Satz("    Patient " + Trim(fehler.PATNR).Utf8() + " am " + Db2Date(fehler.DATUM).Utf8() +
                      ", Leistung " + fehler.LSTIN.Utf8() + ": " + BehFehlertext(fehler.m_iFehler).Utf8());
    }
}

void SchreibePosten(CDokument & dokument, const char * pTitel, std::span<const SAusgabespalte> vSpalten,
                    const std::vector<SPosten> & vPosten) {
    CAusgabe & tabelle = dokument.Tabelle(pTitel, vSpalten);
    for (const SPosten & posten : vPosten)
        tabelle.Zeile({AusUtf8(posten.sText), itoc(posten.iAnzahl)});
    tabelle.Ende();
}

void SchreibeFehler(CDokument & dokument, const CStatAccu & accu) {
    CAusgabe & tabelle = dokument.Tabelle("Fehler", FEHLERSPALTEN);
    for (const CBehErrors & fehler : accu.m_vBehErrors)
        tabelle.Zeile({itoc(fehler.m_iFehler), BehFehlertext(fehler.m_iFehler), Trim(fehler.PATNR),
                       fehler.DATUM, fehler.LSTIN});
    tabelle.Ende();
}

// Hundred-millionths of a euro with four decimals, halves away from zero.
CString Euro(std::int64_t iEinheiten) {
    constexpr std::int64_t JE_STELLE = 10'000;
    const std::int64_t iHalbe = iEinheiten % JE_STELLE / (JE_STELLE / 2); // -1, 0 or 1
    return AusUtf8(Dezimal(iEinheiten / JE_STELLE + iHalbe, 4, 4, '.'));
}

constexpr SAusgabespalte GEGENSPALTEN[] = {{"Beh", EZelle::Text, 4},       {"GO", EZelle::Text, 2},
                                           {"Leistung", EZelle::Text, 8},  {"Hits", EZelle::Zahl, 8},
                                           {"Lauf EUR", EZelle::Zahl, 16}, {"SQL EUR", EZelle::Zahl, 16}};

} // namespace

void ZeigeZahlen(CDokument & dokument, const CStatAccu & accu, const CLauf & lauf) {
    const SLaufzahlen & z = lauf.Zahlen();
    const auto iFehler = static_cast<std::int64_t>(accu.m_vBehErrors.size());
    const std::vector<SPosten> vBilanz = Bilanz(z);
    std::vector<SPosten> vHinweise = Hinweise(z, dokument.FuerPersonen());
    if (!dokument.FuerPersonen()) {
        SchreibePosten(dokument, "Bilanz", BILANZSPALTEN, vBilanz);
        vHinweise.insert(vHinweise.begin(), {{"Behandlungen gelesen", z.iBehandlungen},
                                             {"Hits", z.iHits},
                                             {"Patienten", Patienten(accu)},
                                             {"Fehler", iFehler}});
        SchreibePosten(dokument, "Zahlen", ZAEHLSPALTEN, vHinweise);
        return SchreibeFehler(dokument, accu);
    }
    dokument.Satz(Anzahl(z.iBehandlungen, "Behandlung", "Behandlungen") + " gelesen, " +
                  Anzahl(z.iHits, "Hit, ", "Hits, ") + Anzahl(Patienten(accu), "Patient, ", "Patienten, ") +
                  std::to_string(iFehler) + " Fehler");
    std::string sBilanz;
    for (const SPosten & posten : vBilanz)
        sBilanz += (sBilanz.empty() ? " = " : " + ") + std::to_string(posten.iAnzahl) + ' ' + posten.sText;
    dokument.Satz("  " + std::to_string(z.iBehandlungen) + sBilanz);
    for (const SPosten & posten : vHinweise)
        dokument.Satz("  " + std::to_string(posten.iAnzahl) + ' ' + posten.sText);
    ZeigeFehler(dokument, accu);
}

void ZeigeSummen(CDokument & dokument, CStatAccu & accu, const std::vector<const SKriterium *> & vNach) {
    if (!vNach.empty())
        SchreibeSummen(dokument, accu, vNach);
    else
        for (const ENach eNach : {ENach::Behandler, ENach::Kostentraeger, ENach::Art}) {
            const SKriterium * const apNach[] = {&Kriterium(eNach)};
            SchreibeSummen(dokument, accu, apNach);
        }
    dokument.Satz(
        "Summen sind vor dem Runden gebildet: die gerundeten Zeilen können um Cents von ihnen abweichen.");
}

bool ZeigeHits(CDokument & dokument, const CStatAccu & accu) {
    CHittabelle tabelle(dokument, EHitspalten::Alle);
    bool bWeiter = true;
    for (const CBehHitLine & hit : accu.m_vBehHits) {
        if (!(bWeiter = !AbbruchVerlangt())) break;
        tabelle.Zeile(hit);
    }
    tabelle.Ende();
    return bWeiter;
}

bool ZeigeGegenrechnung(std::ostream & aus, const SGegenrechnung & rechnung) {
    if (!rechnung.bGerechnet) {
        aus << "\nDie Gegenrechnung mit SQL ist gescheitert: " << rechnung.sFehler << '\n';
        return false;
    }
    std::int64_t iVerschieden = 0;
    const auto pAusgabe = CAusgabe::Neu(EFormat::Tabelle, aus, GEGENSPALTEN);
    for (const SGegensumme & summe : rechnung.vSummen) {
        if (!summe.Verschieden()) continue;
        if (iVerschieden++ == 0) aus << "\nAbweichungen von der Gegenrechnung mit SQL\n";
        pAusgabe->Zeile({Trim(summe.sBehandler), CString(summe.cGoArt), summe.sLeistung, itoc(summe.iHits),
                         Euro(summe.iLauf), Euro(summe.iSql)});
    }
    if (iVerschieden != 0) pAusgabe->Ende();
    std::int64_t iAusgelassen = 0;
    std::string sGruende;
    for (const auto & [sGrund, iHits] : rechnung.mapAusgelassen) {
        iAusgelassen += iHits;
        sGruende += (sGruende.empty() ? " (" : ", ") + sGrund + " " + std::to_string(iHits);
    }
    aus << "\nGegenrechnung mit SQL: " << rechnung.iGeprueft << " Hits in " << rechnung.vSummen.size()
        << " Summen geprüft, " << iVerschieden << " Summen weichen ab, " << iAusgelassen
        << " Hits rechnet SQL nicht" << sGruende << (sGruende.empty() ? "\n" : ")\n");
    return iVerschieden == 0;
}

} // namespace orvostat
