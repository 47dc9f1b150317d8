#include "Erlaeuterung.h"

#include "Ausgabe.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <fmt/format.h>

namespace orvostat {

namespace {

std::string Text(const CString & s) { return s.Utf8(); }
std::string Plan(const CString & sPlanNr) { return Trim(sPlanNr).Utf8(); }
std::string Buchstabe(char c) { return fmt::format("\"{}\"", CString(c).Utf8()); }

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
    std::string sZeile = fmt::format("Gebührenzeile {}, {}", Text(s.sText), Art(s.cArt, GEBUEHRENARTEN));
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
    return fmt::format("Punktwert {}: Gruppe {}, {}, {}, {}, gültig ab {}", AlsGeld(s.betrag), Text(s.sText),
                       Art(s.cArt, PUNKTWERTARTEN), s.cUnterart == '9' ? "Ost" : "West", Stichtag(s),
                       Datum(s.sText3));
}

std::string KeinPunktwert(const SBewertungsschritt & s) {
    if (s.sText.IsEmpty() && s.sText3.IsEmpty())
        return fmt::format("Kein Punktwert: am {} keine Kasse", Datum(s.sText2));
    if (s.sText.IsEmpty()) return "Kein Punktwert: keine Punktwertgruppe zur Kasse " + Text(s.sText3);
    return fmt::format("Kein Punktwert: Gruppe {}, {}, {}", Text(s.sText), Art(s.cArt, PUNKTWERTARTEN),
                       Stichtag(s));
}

// The simple rate's name: insurer kind "V" has a second one.
std::string Satzname(const SBewertungsschritt & s) {
    return s.cArt == 0 ? "Einfachsatz" : "Zweiter Einfachsatz (Kassenart " + Buchstabe(s.cArt) + ")";
}

std::string Einfachsatz(const SBewertungsschritt & s, const char * pRundung) {
    return fmt::format("{} {} x Faktor {} = {} ({})", Satzname(s), AlsGeld(s.betrag2),
                       AusZehntausendsteln(s.iZahl2), AlsGeld(s.betrag), pRundung);
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
        return fmt::format("Keine Gebührenzeile zur Leistung {}, {}", Text(s.sText),
                           Art(s.cArt, GEBUEHRENARTEN));
    case EBewertung::Ersatzleistung:
        return fmt::format("Ersetzt: {} wird als {} gezählt", Text(s.sText2), Text(s.sText));
    case EBewertung::Ordination:
        return "Punkte nach Fachbereich: " + AusHundertsteln(s.iZahl);
    case EBewertung::PunktwertPlan:
        return fmt::format("Punktwert {}: mit Plan {} vom {} festgeschrieben", AlsGeld(s.betrag),
                           Plan(s.sText), Datum(s.sText2));
    case EBewertung::NeuerParPlan:
        return fmt::format("Plan {} schreibt keinen Punktwert fest", Plan(s.sText));
    case EBewertung::PunktwertTafel:
        return PunktwertTafel(s);
    case EBewertung::KeinPunktwert:
        return KeinPunktwert(s);
    case EBewertung::Mischwert:
        return fmt::format("Stattdessen Mischpunktwert {} aus der ersten Leistung des Plans {}",
                           AlsGeld(s.betrag), Plan(s.sText));
    case EBewertung::MischwertFaktor:
        return fmt::format("Stattdessen Mischpunktwert {} aus dem Faktor dieser Leistung, für Plan {}",
                           AlsGeld(s.betrag), Plan(s.sText));
    case EBewertung::Gespeichert:
        return "Der eingetragene Betrag gilt: " + AlsGeld(s.betrag);
    case EBewertung::Eingetragen:
        return fmt::format("{}, wie eingetragen: {}",
                           IstLaborArt(s.cArt) ? "Betrag der Laborleistung" : "Betrag", AlsGeld(s.betrag));
    case EBewertung::Gruppenleistung:
        return fmt::format("Gruppenleistung für {} Patienten: je Kopf {}", s.iZahl, AlsGeld(s.betrag));
    case EBewertung::OhneFaktor:
        return "Faktor 0: Betrag 0";
    case EBewertung::OhneSatz:
        return s.cArt == 0 ? "Ohne Einfachsatz und Punkte: Betrag 0" : Satzname(s) + " 0: Betrag 0";
    case EBewertung::PunkteQ:
        return fmt::format("{} Punkte x 5,62421 Cent x Faktor {} = {} (gerundet, GOZ § 5)", s.iZahl,
                           AusZehntausendsteln(s.iZahl2), AlsGeld(s.betrag));
    case EBewertung::Einfachsatz:
        return Einfachsatz(s, "gerundet");
    case EBewertung::EinfachsatzAb:
        return Einfachsatz(s, "abgerundet");
    case EBewertung::Anzahl:
        return fmt::format("x Anzahl {} = {}", AusHundertsteln(s.iZahl), AlsGeld(s.betrag));
    case EBewertung::Regionalabschlag:
        return fmt::format("Regionaler Faktor {}: Abzug {}, bleibt {}", AusZehntausendsteln(s.iZahl),
                           AlsGeld(s.betrag2), AlsGeld(s.betrag));
    case EBewertung::Waehrung:
        return fmt::format("In {}: {}", Waehrungsname(s.cArt), AlsGeld(s.betrag));
    case EBewertung::Behandlerabschlag:
        return fmt::format("Abschlag des Behandlers {}, bleibt {}", Prozent(s.iZahl), AlsGeld(s.betrag));
    case EBewertung::AnderePunkte:
        return "Punkte dieser Kasse: " + AusHundertsteln(s.iZahl);
    case EBewertung::EntfernungBetrag:
        return fmt::format("Entfernung {} % des eingetragenen Betrags, x Anzahl: {}", s.iZahl,
                           AlsGeld(s.betrag));
    case EBewertung::EntfernungPunkte:
        return fmt::format("Entfernung {} % von {} Punkten: {} Punkte", s.iZahl, AusHundertsteln(s.iZahl3),
                           AusHundertsteln(s.iZahl2));
    case EBewertung::PunkteMalWert:
        if (s.betrag2.IsEmpty()) return AusHundertsteln(s.iZahl) + " Punkte ohne Punktwert: kein Betrag";
        return fmt::format("{} Punkte x Anzahl {} x {} = {}", AusHundertsteln(s.iZahl),
                           AusHundertsteln(s.iZahl2), AlsGeld(s.betrag2), AlsGeld(s.betrag));
    case EBewertung::Kassenanteil:
        return fmt::format("Anteil der Kasse {} %: {}", s.iZahl, AlsGeld(s.betrag));
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
