#include "Erlaeuterung.h"

#include "orvostatbs/host/Datum.h"

#include <cstdlib>
#include <string_view>

namespace orvostat {

namespace {

std::string Dezimal(int iWert, int iStellen) {
    std::string s = std::to_string(std::abs(static_cast<long>(iWert)));
    if (s.size() <= static_cast<std::size_t>(iStellen))
        s.insert(0, static_cast<std::size_t>(iStellen) + 1 - s.size(), '0');
    std::string sNach = s.substr(s.size() - static_cast<std::size_t>(iStellen));
    sNach.erase(sNach.find_last_not_of('0') + 1);
    s.resize(s.size() - static_cast<std::size_t>(iStellen));
    return (iWert < 0 ? "-" : "") + s + (sNach.empty() ? "" : "," + sNach);
}

std::string Text(const CString & s) { return s.Utf8(); }
std::string Buchstabe(char c) { return c == 0 ? "ohne" : "\"" + CString(c).Utf8() + "\""; }
std::string Datum(const CString & s) { return Db2Date(s).Utf8(); }
std::string Prozent(int iHundertstel) { return AusHundertsteln(iHundertstel) + " %"; }

std::string Waehrungsname(char c) {
    return c == 'e' ? "EUR" : c == ' ' ? "DM" : c == 0 ? "" : std::string(1, c);
}

std::string Gebuehrenzeile(const SBewertungsschritt & s) {
    std::string sZeile = "Gebührenzeile " + Text(s.sText) + " der Art " + Buchstabe(s.cArt);
    if (s.cUnterart != 0) sZeile += ", Unterart " + Buchstabe(s.cUnterart);
    if (!s.sText2.IsEmpty()) sZeile += ", Kürzel " + Text(s.sText2);
    return sZeile;
}

std::string PunktwertTafel(const SBewertungsschritt & s) {
    return "Punktwert " + AlsGeld(s.betrag) + ": Gruppe " + Text(s.sText) + ", Art " + Buchstabe(s.cArt) +
           ", " + (s.cUnterart == '9' ? "Ost" : "West") + ", gefragt zum " + Datum(s.sText2) +
           ", gültig ab " + Datum(s.sText3);
}

std::string Einfachsatz(const SBewertungsschritt & s, const char * pRundung) {
    return "Einfachsatz " + AlsGeld(s.betrag2) + " x Faktor " + AusZehntausendsteln(s.iZahl2) + " = " +
           AlsGeld(s.betrag) + " (" + pRundung + ")";
}

} // namespace

std::string AusHundertsteln(int iWert) { return Dezimal(iWert, 2); }
std::string AusZehntausendsteln(int iWert) { return Dezimal(iWert, 4); }

std::string AlsGeld(const CWBetragBasis & betrag) {
    if (betrag.IsEmpty()) return "kein Betrag";
    // The stored text has hundredths and what is beyond them: "e2311.5" is 23,115.
    std::string s = betrag.ToDb(0, true, false, 0.0, 0.0).Utf8();
    if (betrag.GetWaehrung() != 0) s.erase(0, 1);
    const bool bMinus = s.starts_with('-');
    if (bMinus) s.erase(0, 1);
    const std::size_t iPunkt = s.find('.');
    const std::string sRest = iPunkt == std::string::npos ? "" : s.substr(iPunkt + 1);
    if (iPunkt != std::string::npos) s.resize(iPunkt);
    if (s.size() < 3) s.insert(0, 3 - s.size(), '0');
    const std::string sName = Waehrungsname(betrag.GetWaehrung());
    return (bMinus ? "-" : "") + s.substr(0, s.size() - 2) + "," + s.substr(s.size() - 2) + sRest +
           (sName.empty() ? "" : " " + sName);
}

std::string Erlaeutere(const SBewertungsschritt & s) {
    switch (s.eSchritt) {
    case EBewertung::Gebuehrenzeile:
        return Gebuehrenzeile(s);
    case EBewertung::KeineZeile:
        return "Keine Gebührenzeile zur Leistung " + Text(s.sText) + " der Art " + Buchstabe(s.cArt);
    case EBewertung::Ersatzleistung:
        return "Ersetzt: " + Text(s.sText2) + " wird als " + Text(s.sText) + " gezählt";
    case EBewertung::Ordination:
        return "Punkte nach Fachbereich: " + AusHundertsteln(s.iZahl);
    case EBewertung::PunktwertPlan:
        return "Punktwert " + AlsGeld(s.betrag) + ": mit Plan " + Text(s.sText) + " vom " + Datum(s.sText2) +
               " festgeschrieben";
    case EBewertung::NeuerParPlan:
        return "Plan " + Text(s.sText) + " schreibt keinen Punktwert fest";
    case EBewertung::PunktwertTafel:
        return PunktwertTafel(s);
    case EBewertung::KeinPunktwert:
        return "Kein Punktwert: Gruppe " + Text(s.sText) + ", Art " + Buchstabe(s.cArt) + ", gefragt zum " +
               Datum(s.sText2);
    case EBewertung::Mischwert:
        return "Mischpunktwert " + AlsGeld(s.betrag) + " des Plans " + Text(s.sText);
    case EBewertung::Gespeichert:
        return "Der eingetragene Betrag gilt: " + AlsGeld(s.betrag);
    case EBewertung::Gruppenleistung:
        return "Gruppenleistung für " + std::to_string(s.iZahl) + " Patienten: je Kopf " + AlsGeld(s.betrag);
    case EBewertung::OhneFaktor:
        return "Faktor 0: kein Betrag";
    case EBewertung::OhneSatz:
        return "Ohne Einfachsatz und Punkte: kein Betrag";
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
        return "Abschlag des Behandlers " + Prozent(s.iZahl) + ": " + AlsGeld(s.betrag);
    case EBewertung::AnderePunkte:
        return "Punkte dieser Kasse: " + AusHundertsteln(s.iZahl);
    case EBewertung::EntfernungBetrag:
        return "Entfernung " + std::to_string(s.iZahl) +
               " % des eingetragenen Betrags, x Anzahl: " + AlsGeld(s.betrag);
    case EBewertung::EntfernungPunkte:
        return "Entfernung " + std::to_string(s.iZahl) + " %: " + AusHundertsteln(s.iZahl2) + " Punkte";
    case EBewertung::PunkteMalWert:
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
