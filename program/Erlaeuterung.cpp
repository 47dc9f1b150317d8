#include "Erlaeuterung.h"

#include "Ausgabe.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

std::string Text(const CString & s) { return s.Utf8(); }
std::string Plan(const CString & sPlanNr) { return Trim(sPlanNr).Utf8(); }
std::string Buchstabe(char c) { return "\"" + CString(c).Utf8() + "\""; }

// "Art "k" (BEMA)"; "ohne Art".
template <std::size_t N> std::string Art(char c, const SBuchstabe (&aNamen)[N]) {
    if (c == 0) return "ohne Art";
    const std::string sArt = "Art " + Buchstabe(c);
    const SBuchstabe * pArt = FindeBuchstabe(aNamen, c);
    return pArt == nullptr ? sArt : sArt + " (" + pArt->pName + ")";
}

std::string Datum(const CString & s) { return Db2Date(s).Utf8(); }
std::string Prozent(int iHundertstel) { return AusHundertsteln(iHundertstel) + " %"; }

std::string Waehrungsname(char c) {
    return c == 'e' ? "EUR" : c == ' ' ? "DM" : c == 0 ? "" : std::string(1, c);
}

std::string Gebuehrenzeile(const SBewertungsschritt & s) {
    std::string sZeile = "Gebührenzeile " + Text(s.sText) + ", " + Art(s.cArt, GEBUEHRENARTEN);
    if (s.cUnterart != 0) sZeile += ", Unterart " + Buchstabe(s.cUnterart);
    if (!s.sText2.IsEmpty()) sZeile += ", Kürzel " + Text(s.sText2);
    return sZeile;
}

// The day that the table of point values was asked for.
std::string Stichtag(const SBewertungsschritt & s) {
    const std::string sTag = "Stichtag " + Datum(s.sText2);
    return s.sText4.IsEmpty() ? sTag : sTag + " (Datum des Plans " + Plan(s.sText4) + ")";
}

std::string PunktwertTafel(const SBewertungsschritt & s) {
    return "Punktwert " + AlsGeld(s.betrag) + ": Gruppe " + Text(s.sText) + ", " +
           Art(s.cArt, PUNKTWERTARTEN) + ", " + (s.cUnterart == '9' ? "Ost" : "West") + ", " + Stichtag(s) +
           ", gültig ab " + Datum(s.sText3);
}

std::string KeinPunktwert(const SBewertungsschritt & s) {
    if (s.sText.IsEmpty() && s.sText3.IsEmpty())
        return "Kein Punktwert: am " + Datum(s.sText2) + " keine Kasse";
    if (s.sText.IsEmpty()) return "Kein Punktwert: keine Punktwertgruppe zur Kasse " + Text(s.sText3);
    return "Kein Punktwert: Gruppe " + Text(s.sText) + ", " + Art(s.cArt, PUNKTWERTARTEN) + ", " +
           Stichtag(s);
}

// The simple rate's name: insurer kind "V" has a second one.
std::string Satzname(const SBewertungsschritt & s) {
    return s.cArt == 0 ? "Einfachsatz" : "Zweiter Einfachsatz (Kassenart " + Buchstabe(s.cArt) + ")";
}

std::string Einfachsatz(const SBewertungsschritt & s, const char * pRundung) {
    return Satzname(s) + " " + AlsGeld(s.betrag2) + " x Faktor " + AusZehntausendsteln(s.iZahl2) + " = " +
           AlsGeld(s.betrag) + " (" + pRundung + ")";
}

} // namespace

std::string AusHundertsteln(int iWert) { return Dezimal(iWert, 2, 0, ','); }
std::string AusZehntausendsteln(int iWert) { return Dezimal(iWert, 4, 0, ','); }

std::string AlsGeld(const CWBetragBasis & betrag) {
    if (betrag.IsEmpty()) return "kein Betrag";
    const std::string sName = Waehrungsname(betrag.GetWaehrung());
    return Dezimal(betrag.GetEinheiten(), 8, 2, ',') + (sName.empty() ? "" : " " + sName);
}

std::string Erlaeutere(const SBewertungsschritt & s) {
    switch (s.eSchritt) {
    case EBewertung::Gebuehrenzeile:
        return Gebuehrenzeile(s);
    case EBewertung::KeineZeile:
        return "Keine Gebührenzeile zur Leistung " + Text(s.sText) + ", " + Art(s.cArt, GEBUEHRENARTEN);
    case EBewertung::Ersatzleistung:
        return "Ersetzt: " + Text(s.sText2) + " wird als " + Text(s.sText) + " gezählt";
    case EBewertung::Ordination:
        return "Punkte nach Fachbereich: " + AusHundertsteln(s.iZahl);
    case EBewertung::PunktwertPlan:
        return "Punktwert " + AlsGeld(s.betrag) + ": mit Plan " + Plan(s.sText) + " vom " + Datum(s.sText2) +
               " festgeschrieben";
    case EBewertung::NeuerParPlan:
        return "Plan " + Plan(s.sText) + " schreibt keinen Punktwert fest";
    case EBewertung::PunktwertTafel:
        return PunktwertTafel(s);
    case EBewertung::KeinPunktwert:
        return KeinPunktwert(s);
    case EBewertung::Mischwert:
        return "Stattdessen Mischpunktwert " + AlsGeld(s.betrag) + " aus der ersten Leistung des Plans " +
               Plan(s.sText);
    case EBewertung::MischwertFaktor:
        return "Stattdessen Mischpunktwert " + AlsGeld(s.betrag) +
               " aus dem Faktor dieser Leistung, für Plan " + Plan(s.sText);
    case EBewertung::Gespeichert:
        return "Der eingetragene Betrag gilt: " + AlsGeld(s.betrag);
    case EBewertung::Eingetragen:
        return std::string(IstLaborArt(s.cArt) ? "Betrag der Laborleistung" : "Betrag") +
               ", wie eingetragen: " + AlsGeld(s.betrag);
    case EBewertung::Gruppenleistung:
        return "Gruppenleistung für " + std::to_string(s.iZahl) + " Patienten: je Kopf " + AlsGeld(s.betrag);
    case EBewertung::OhneFaktor:
        return "Faktor 0: Betrag 0";
    case EBewertung::OhneSatz:
        return s.cArt == 0 ? "Ohne Einfachsatz und Punkte: Betrag 0" : Satzname(s) + " 0: Betrag 0";
    case EBewertung::PunkteQ:
        return std::to_string(s.iZahl) + " Punkte x 5,62421 Cent x Faktor " + AusZehntausendsteln(s.iZahl2) +
               " = " + AlsGeld(s.betrag) + " (gerundet, GOZ § 5)";
    case EBewertung::Einfachsatz:
        return Einfachsatz(s, "gerundet");
    case EBewertung::EinfachsatzAb:
        return Einfachsatz(s, "abgerundet");
    case EBewertung::Anzahl:
        return "x Anzahl " + AusHundertsteln(s.iZahl) + " = " + AlsGeld(s.betrag);
    case EBewertung::Regionalabschlag:
        return "Regionaler Faktor " + AusZehntausendsteln(s.iZahl) + ": Abzug " + AlsGeld(s.betrag2) +
               ", bleibt " + AlsGeld(s.betrag);
    case EBewertung::Waehrung:
        return "In " + Waehrungsname(s.cArt) + ": " + AlsGeld(s.betrag);
    case EBewertung::Behandlerabschlag:
        return "Abschlag des Behandlers " + Prozent(s.iZahl) + ", bleibt " + AlsGeld(s.betrag);
    case EBewertung::AnderePunkte:
        return "Punkte dieser Kasse: " + AusHundertsteln(s.iZahl);
    case EBewertung::EntfernungBetrag:
        return "Entfernung " + std::to_string(s.iZahl) +
               " % des eingetragenen Betrags, x Anzahl: " + AlsGeld(s.betrag);
    case EBewertung::EntfernungPunkte:
        return "Entfernung " + std::to_string(s.iZahl) + " % von " + AusHundertsteln(s.iZahl3) +
               " Punkten: " + AusHundertsteln(s.iZahl2) + " Punkte";
    case EBewertung::PunkteMalWert:
        if (s.betrag2.IsEmpty()) return AusHundertsteln(s.iZahl) + " Punkte ohne Punktwert: kein Betrag";
        return AusHundertsteln(s.iZahl) + " Punkte x Anzahl " + AusHundertsteln(s.iZahl2) + " x " +
               AlsGeld(s.betrag2) + " = " + AlsGeld(s.betrag);
    case EBewertung::Kassenanteil:
        return "Anteil der Kasse " + std::to_string(s.iZahl) + " %: " + AlsGeld(s.betrag);
    }
    return {};
}

std::vector<std::string> Erlaeutere(const CBewertungsspur & spur) {
    std::vector<std::string> v;
    for (const SBewertungsschritt & schritt : spur.Schritte())
        v.push_back(Erlaeutere(schritt));
    return v;
}

} // namespace orvostat
