#include "Selektionsoptionen.h"

#include "Aufruf.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace orvostat {

namespace {

using CBereich = std::pair<CString, CString>;

CString Text(const std::string & sUtf8) { return AusUtf8(sUtf8); }

// "A..B" as two texts; without ".." both are the same.
CBereich Bereich(const std::string & s) {
    const std::size_t iTrenner = s.find("..");
    if (iTrenner == std::string::npos) return {Text(s), Text(s)};
    return {Text(s.substr(0, iTrenner)), Text(s.substr(iTrenner + 2))};
}

// A day as the user writes it, empty for the empty text; anything else is wrong usage.
CString Tag(const std::string & s) { return s.empty() ? CString() : LiesDatum(s); }

// "A..B" as two days; an empty side stays empty.
CBereich Datumsbereich(const std::string & s) {
    const std::size_t iTrenner = s.find("..");
    if (iTrenner == std::string::npos) return {Tag(s), Tag(s)};
    return {Tag(s.substr(0, iTrenner)), Tag(s.substr(iTrenner + 2))};
}

// A section of the selection that one option sets: given, it is switched on and takes the option's value.
struct SAbschnitt {
    const char * pOption;
    const char * pHilfe;
    bool bDatumsbereich;
    void (*fSetze)(CSelektion &, const CString & sWert, const CBereich & bereich);
};

constexpr SAbschnitt ABSCHNITTE[] = {
    {"--selektion", "Patientenselektion; leer: alle", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetSelektion(sWert); }},
    {"--anamnese", "Risikoanamnese; leer: alle", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetRisikoAnamnese(sWert); }},
    {"--anrede", "Anrede; leer (''): nur Patienten ohne Anrede", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) {
         s.SetChAnrede(true);
         s.SetPatAnrede(sWert);
     }},
    {"--strasse", "Straße; leer (''): nur Patienten ohne Straße", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) {
         s.SetChStrasse(true);
         s.SetStrasse(sWert);
     }},
    {"--alter", "Alter VON..BIS in Jahren, heute; eine leere Seite ist offen", false,
     [](CSelektion & s, const CString &, const CBereich & b) {
         s.SetChAlter(true);
         s.SetAlter(b.first, b.second);
     }},
    {"--geburtstag", "Geburtstag VON..BIS, nur Tag und Monat zählen; ohne BIS: alle", true,
     [](CSelektion & s, const CString &, const CBereich & b) { s.SetGeburtstag(b.first, b.second); }},
    {"--letzter-besuch", "Letzter Besuch VON..BIS; '..': nur Patienten ohne Datum", true,
     [](CSelektion & s, const CString &, const CBereich & b) {
         s.SetChLetzterBesuch(true);
         s.SetLetzterBesuch(b.first, b.second);
     }},
    {"--ueberweiser", "Überweisender Arzt; leer (''): irgendeiner", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) {
         s.SetChUeberwArzt(true);
         s.SetUeberwArzt(sWert);
     }},
    {"--hausarzt", "Hausarzt; leer (''): irgendeiner", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) {
         s.SetChHausArzt(true);
         s.SetHausArzt(sWert);
     }},
    {"--ohne-leistung", "Patienten ohne Leistung in VON..BIS; offen, wo --von oder --bis fehlen", true,
     [](CSelektion & s, const CString &, const CBereich & b) {
         s.SetChOhneLst(true);
         s.SetOhneLst(b.first, b.second);
     }},
    {"--mfr", "Versichertenstatus: eine oder mehrere Ziffern (1 Mitglied, 3 Familie, 5 Rentner); leer: alle",
     false,
     [](CSelektion & s, const CString & sWert, const CBereich &) {
         s.SetChKvk(true);
         s.SetMFR(sWert);
     }},
    {"--goart", "Gebührenordnung, ein Buchstabe (k, g, q, p, ...)", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetGoArt(sWert.Erstes()); }},
    {"--leistung", "Leistungsnummer", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetLst(sWert); }},
    {"--abrart", "Abrechnungsarten, Buchstaben ohne Trenner (c, z, k, b, p, i, s)", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetAbrArt(sWert); }},
    {"--pwlart", "Leistungsarten des Punktwerts, Buchstaben ohne Trenner; leer: alle", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetPwLArt(sWert); }},
    {"--plan", "Plannummer", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetPlan(sWert); }},
    {"--kasse", "Kürzel der Kasse", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetKasse(sWert); }},
    {"--kasstat", "Statistikart der Kasse", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetKasStat(sWert); }},
    {"--erfasser", "Erfasser der Leistung", false,
     [](CSelektion & s, const CString & sWert, const CBereich &) { s.SetErfasser(sWert); }},
};

void FuegeZeitraumHinzu(CLI::App & app, SLaufoptionen & o) {
    app.add_option("--von", o.sVon, "Erster Tag, TT.MM.JJJJ oder JJJJMMTT");
    app.add_option("--bis", o.sBis, "Letzter Tag");
    app.add_option("--mandant", o.sMandant, "Praxisinhaber; leer: alle");
    app.add_option("--behandler", o.sBehandler, "Behandlernummern mit Komma dazwischen; leer: alle");
    app.add_option("--patient", o.sPatient, "Patientennummer; leer: alle");
    app.add_option("--sort", o.sSortierung, "Reihenfolge der Treffer: name oder patient")
        ->check(EinesVon({"name", "patient"}));
}

void FuegeLaufHinzu(CLI::App & app, SLaufoptionen & o) {
    const char * pGruppe = "Lauf";
    app.add_option("--status", o.sStatus, "Nur abgerechnet oder nur erfasst; ohne: beide")
        ->check(EinesVon({"abgerechnet", "erfasst"}))
        ->group(pGruppe);
    app.add_flag("--nur-gesetzliche", o.bNurGesetzliche, "Nur gesetzliche Kassen")->group(pGruppe);
    app.add_flag("--nur-abrechenbare", o.bNurAbrechenbare, "Nur abrechenbare Leistungen")->group(pGruppe);
    app.add_flag("--ohne-plangatter", o.bPlangatterAus, "Leistungen auch ohne ordentlichen Plan zählen")
        ->group(pGruppe);
    app.add_flag("--ohne-22a", o.auftrag.bOhne22a, "Ohne PAR-Pläne nach § 22a SGB V")->group(pGruppe);
    app.add_flag("--par-marken", o.auftrag.bParMarken, "PAR-Leistungen feiner unterscheiden")->group(pGruppe);
    app.add_flag("--par-beva", o.auftrag.bParBeva, "Dasselbe in drei Stufen")->group(pGruppe);
    app.add_flag("--kassenanteil", o.auftrag.bKassenanteil, "ZE und KFO nur mit dem Anteil der Kasse")
        ->group(pGruppe);
    app.add_flag("--ersatz", o.auftrag.bErsatz, "Leistungen durch ihren Ersatz zählen")->group(pGruppe);
    app.add_flag("--praxis-lassen", o.bPraxiswechselAus, "Treffer bei der Praxis ihrer Rechnung lassen")
        ->group(pGruppe);
    app.add_flag("--nebenakten", o.auftrag.bNebenakten,
                 "Auch Labor, Sammelrechnungen, Gipsmodelle, Rechnungen und Verordnungen")
        ->group(pGruppe);
}

void FuegeAbschnitteHinzu(CLI::App & app, SLaufoptionen & o) {
    const char * pGruppe = "Auswahl der Patienten und Leistungen";
    o.vWerte.resize(std::size(ABSCHNITTE));
    for (std::size_t i = 0; i < std::size(ABSCHNITTE); ++i)
        app.add_option(ABSCHNITTE[i].pOption, o.vWerte[i], ABSCHNITTE[i].pHilfe)->group(pGruppe);
    app.add_option("--plz", o.sPlz, "Postleitzahl; mit leerem Ort ('' und ''): nur Patienten ohne beides")
        ->group(pGruppe);
    app.add_option("--ort", o.sOrt, "Ort")->group(pGruppe);
    app.add_option("--recall", o.sRecall,
                   "Recallart als Zahl ab 0, * für irgendeine; alle drei Recall-Optionen leer: nur Patienten "
                   "ohne Recall")
        ->group(pGruppe);
    app.add_option("--recall-intervall", o.sRecallIntervall, "Ziffer des Intervalls")->group(pGruppe);
    app.add_option("--recall-vor", o.sRecallVor, "Der letzte Recall liegt vor diesem Tag")->group(pGruppe);
    app.add_flag("--hat-leistung", o.bHatLeistung, "Nur Patienten mit Leistungen der Behandler im Zeitraum")
        ->group(pGruppe);
    app.add_flag("--rsa", o.bRsa, "Nur Treffer mit RSA-Kennzeichen")->group(pGruppe);
    app.add_option("--karte", o.sKarte, "Versichertenkarte eingelesen in VON..BIS")->group(pGruppe);
    app.add_option("--kartenart", o.sKartenarten,
                   "Nachweise, Buchstaben ohne Trenner: G, g, j, E; leer: alle")
        ->group(pGruppe);
    app.add_flag("--karte-fehlt", o.bKarteFehlt, "Patienten, deren Karte in --karte fehlt")->group(pGruppe);
}

bool Gesetzt(const CLI::App & app, const char * pOption) { return app.count(pOption) > 0; }

void SetzeGrund(const SLaufoptionen & o, CSelektion & s) {
    s.SetZeitraum(Tag(o.sVon), Tag(o.sBis));
    s.SetMandant(Text(o.sMandant));
    s.SetPatient(Text(o.sPatient));
    std::vector<CString> vLebs;
    SeparatedStrToVec(Text(o.sBehandler), ',', vLebs);
    for (CString & sLeb : vLebs)
        sLeb = RightFix(Trim(sLeb), 4);
    s.SetLebs(vLebs);
    if (!o.sSortierung.empty()) s.SetSortierung(o.sSortierung == "name" ? '1' : '2');
    s.SetIsAbgerechnet(o.sStatus != "erfasst");
    s.SetIsErfasst(o.sStatus != "abgerechnet");
    s.SetNurGesetzlicheKassen(o.bNurGesetzliche);
    s.SetOnlyAbrechenbare(o.bNurAbrechenbare);
    s.SetNoChangeMdId(o.bPraxiswechselAus);
    s.SetELab(o.auftrag.bNebenakten);
    s.SetGLab(o.auftrag.bNebenakten);
    s.SetChHatLst(o.bHatLeistung);
    s.SetRsa(o.bRsa);
}

void SetzeKarte(const CLI::App & app, const SLaufoptionen & o, CSelektion & s) {
    if (!Gesetzt(app, "--karte") && !o.bKarteFehlt) return;
    const CBereich karte = Datumsbereich(o.sKarte);
    s.SetChKvk(true);
    s.SetKvkDatum(Oder(karte.first, ERSTER_TAG), Oder(karte.second, LETZTER_TAG));
    s.SetKvkFehlt(o.bKarteFehlt);
    const auto Hat = [&o](char c) { return o.sKartenarten.find(c) != std::string::npos; };
    s.SetKvkDurchzug(Hat('G'));
    s.SetKvkMev(Hat('g'));
    s.SetSchein(Hat('j'));
    s.SetEEB(Hat('E'));
}

} // namespace

void FuegeSelektionHinzu(CLI::App & app, SLaufoptionen & optionen) {
    FuegeZeitraumHinzu(app, optionen);
    FuegeLaufHinzu(app, optionen);
    FuegeAbschnitteHinzu(app, optionen);
}

void SetzeSelektion(const CLI::App & app, const SLaufoptionen & o, CSelektion & s) {
    SetzeGrund(o, s);
    SetzeKarte(app, o, s);
    for (std::size_t i = 0; i < std::size(ABSCHNITTE); ++i) {
        const SAbschnitt & abschnitt = ABSCHNITTE[i];
        if (!Gesetzt(app, abschnitt.pOption)) continue;
        const std::string & sWert = o.vWerte[i];
        abschnitt.fSetze(s, Text(sWert), abschnitt.bDatumsbereich ? Datumsbereich(sWert) : Bereich(sWert));
    }
    if (Gesetzt(app, "--plz") || Gesetzt(app, "--ort")) {
        s.SetChPlzOrt(true);
        s.SetPlzOrt(Text(o.sPlz), Text(o.sOrt));
    }
    if (Gesetzt(app, "--recall") || Gesetzt(app, "--recall-intervall") || Gesetzt(app, "--recall-vor")) {
        s.SetChRecall(true);
        s.SetRecallData(Text(o.sRecall), Text(o.sRecallIntervall), Tag(o.sRecallVor));
    }
}

} // namespace orvostat
