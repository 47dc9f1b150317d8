#include "Selektionsoptionen.h"

#include "Aufruf.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
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

// Both bounds of a range that has at least one; without any it stays empty.
CBereich MitOffenenSeiten(const CBereich & b) {
    if (b.first.IsEmpty() && b.second.IsEmpty()) return b;
    return {Oder(b.first, ERSTER_TAG), Oder(b.second, LETZTER_TAG)};
}

// ---- what an option takes

constexpr const char * ZIFFERN = "0123456789";
constexpr const char * VERKEHRT = "das Ende liegt vor dem Anfang";

// What is wrong with the text of an option; empty where nothing is. A day that is none ends by itself.
std::string FehlerTag(const std::string & s) {
    (void)Tag(s);
    return {};
}

std::string FehlerTage(const std::string & s) {
    const auto [sVon, sBis] = MitOffenenSeiten(Datumsbereich(s));
    return sBis < sVon ? VERKEHRT : "";
}

std::string FehlerGeburtstage(const std::string & s) {
    const auto [sVon, sBis] = MitOffenenSeiten(Datumsbereich(s));
    return sBis.Mid(4) < sVon.Mid(4) ? "der Bereich geht über das Jahresende" : "";
}

std::string FehlerAlter(const std::string & s) {
    const auto [sVon, sBis] = Bereich(s);
    for (const CString & sSeite : {sVon, sBis})
        if (sSeite.Utf8().find_first_not_of(ZIFFERN) != std::string::npos || sSeite.GetLength() > 3)
            return '"' + sSeite.Utf8() + "\" ist kein Alter in Jahren";
    return !sBis.IsEmpty() && Zahl(sBis) < Zahl(sVon) ? VERKEHRT : "";
}

std::string FehlerRecallart(const std::string & s) {
    const bool bZahl = s.find_first_not_of(ZIFFERN) == std::string::npos && s.size() <= 2;
    return bZahl || s == "*" ? std::string() : '"' + s + "\" ist weder eine Recallart noch *";
}

std::string FehlerLeer(const std::string & s) { return s.empty() ? "die Angabe ist leer" : ""; }

std::string FehlerPflichttag(const std::string & s) { return s.empty() ? FehlerLeer(s) : FehlerTag(s); }

// The values of an option: the word for them in the help, the characters and the length that they may have, and what
// else is asked of them. Null and 0 are no limit.
struct SWertart {
    const char * pTyp;
    const char * pZeichen = nullptr;
    std::size_t iLaenge = 0;
    std::string (*fFehler)(const std::string &) = nullptr;
    bool bListe = false; // of letters, which may have commas between them
};

constexpr SWertart WERT{"WERT"};
constexpr SWertart NR{"NR"};
constexpr SWertart PFLICHTNR{"NR", nullptr, 0, FehlerLeer};
constexpr SWertart PFLICHTTAG{"TAG", nullptr, 0, FehlerPflichttag};
constexpr SWertart TAG{"TAG", nullptr, 0, FehlerTag};
constexpr SWertart TAGE{"VON..BIS", nullptr, 0, FehlerTage};
constexpr SWertart GEBURTSTAGE{"VON..BIS", nullptr, 0, FehlerGeburtstage};
constexpr SWertart ALTER{"VON..BIS", nullptr, 0, FehlerAlter};
constexpr SWertart RECALLART{"NR", nullptr, 0, FehlerRecallart};
// The bits of the sub-kinds of the kind "7".
struct STechnik {
    const char * pWort;
    int iBits;
};
constexpr STechnik TECHNIKEN[] = {{"ziffern", 1}, {"buchstaben", 2}, {"alle", 3}};

const STechnik * FindeTechnik(const std::string & s) {
    const auto * const p =
        std::ranges::find_if(TECHNIKEN, [&](const STechnik & t) { return GleichesWort(t.pWort, s); });
    return p == std::end(TECHNIKEN) ? nullptr : p;
}

std::string FehlerTechnik(const std::string & s) {
    return FindeTechnik(s) != nullptr ? "" : '"' + s + "\" ist keines von ziffern, buchstaben, alle";
}

constexpr SWertart TECHNIK{"WORT", nullptr, 0, FehlerTechnik};
constexpr SWertart INTERVALL{"ZIFFER", ZIFFERN, 1};
constexpr SWertart PLANNR{"NR", "0123456789 ", 3};
constexpr SWertart STATUSZIFFERN{"ZIFFERN", ZIFFERN, 0, nullptr, true};
constexpr SWertart GOARTEN{"BUCHSTABE", "kgqpaubefh123456789", 1};
constexpr SWertart ABRARTEN{"BUCHSTABEN", "0123456789abcdefghijklmnopqrstuvwxyz", 0, nullptr, true};
constexpr SWertart PWLARTEN{"BUCHSTABEN", "0abcdefghijklmnopqrstuvwxyz", 0, nullptr, true};
constexpr SWertart KARTENARTEN{"BUCHSTABEN", "GgjE", 0, nullptr, true};

// What stands for the text of an option: a list of letters without its commas, and letters small where no kind has a
// capital one.
std::string Bereinigt(const SWertart & art, std::string s) {
    if (art.pZeichen == nullptr) return s;
    if (art.bListe) std::erase(s, ',');
    const std::string_view sZeichen = art.pZeichen;
    const auto IstKlein = [](char c) { return c >= 'a' && c <= 'z'; };
    const auto IstGross = [](char c) { return c >= 'A' && c <= 'Z'; };
    if (std::ranges::any_of(sZeichen, IstKlein) && std::ranges::none_of(sZeichen, IstGross))
        s = CLI::detail::to_lower(s);
    return s;
}

std::string Fehler(const SWertart & art, const std::string & s) {
    if (art.pZeichen != nullptr && s.find_first_not_of(art.pZeichen) != std::string::npos)
        return '"' + s + "\": erlaubt sind nur die Zeichen " + art.pZeichen;
    if (art.iLaenge != 0 && s.size() > art.iLaenge)
        return '"' + s + "\" ist länger als " + std::to_string(art.iLaenge) + " Zeichen";
    return art.fFehler == nullptr ? std::string() : art.fFehler(s);
}

// The one way to declare an option with a value: checked as it is read, its kind of value in the help.
CLI::Option * Option(CLI::App & app, const char * pName, const SWertart & art, std::string & sWert,
                     const std::string & sHilfe) {
    const auto Pruefe = [art](std::string & s) {
        s = Bereinigt(art, s);
        return Fehler(art, s);
    };
    return app.add_option(pName, sWert, sHilfe)->type_name(art.pTyp)->transform(CLI::Validator(Pruefe, ""));
}

CLI::Option * OptionWort(CLI::App & app, const char * pName, const std::vector<std::string> & vWorte,
                         std::string & sWert, const char * pHilfe) {
    return app.add_option(pName, sWert, pHilfe)->type_name("WORT")->transform(Wortwahl(vWorte));
}

// ---- the sections

// A value as the rows of a table have it, whatever the case of the letters; empty for the empty text. Ends the command
// where there is none, or several that differ in case and none is written like this.
template <class TTabelle>
CString FindeWert(const char * pWas, CString TTabelle::*pFeld, const std::string & sWert) {
    const CString sGesucht = Text(sWert);
    if (sGesucht.IsEmpty()) return sGesucht;
    std::set<CString> aGleiche;
    TTabelle tabelle(dbDatabaseRO);
    for (int i = tabelle.GetAll(); i == ZEILE_OK; i = tabelle.Next())
        if ((tabelle.*pFeld).CompareNoCase(sGesucht) == 0) aGleiche.insert(tabelle.*pFeld);
    if (aGleiche.contains(sGesucht)) return sGesucht;
    const std::string sName = pWas + (" \"" + sWert) + '"';
    if (aGleiche.empty()) VerweigereFehlendes("Eine " + sName + " gibt es nicht.");
    if (aGleiche.size() > 1) Verweigere("Die " + sName + " ist nicht eindeutig geschrieben.");
    return *aGleiche.begin();
}

// "z ZE, k KFO" of the letters z and k.
template <class TZeile, std::size_t N>
std::string MitNamen(const TZeile (&aZeilen)[N], std::string_view sBuchstaben) {
    std::string s;
    for (const char c : sBuchstaben)
        s += (s.empty() ? std::string() : ", ") + c + ' ' + FindeBuchstabe(aZeilen, c)->pName;
    return s;
}

// A section of the selection that one option sets: given, it is switched on and takes the option's value.
struct SAbschnitt {
    const char * pOption;
    const SWertart & art;
    std::string sHilfe;
    void (*fSetze)(CSelektion &, const std::string & sWert);
};

const SAbschnitt ABSCHNITTE[] = {
    {"--selektion", WERT, "Patientenselektion; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetSelektion(Text(sWert)); }},
    {"--anamnese", WERT, "Risikoanamnese; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetRisikoAnamnese(Text(sWert)); }},
    {"--anrede", WERT, "Anrede; leer (''): nur Patienten ohne Anrede",
     [](CSelektion & s, const std::string & sWert) {
         s.SetChAnrede(true);
         s.SetPatAnrede(Text(sWert));
     }},
    {"--strasse", WERT, "Straße; leer (''): nur Patienten ohne Straße",
     [](CSelektion & s, const std::string & sWert) {
         s.SetChStrasse(true);
         s.SetStrasse(Text(sWert));
     }},
    {"--alter", ALTER,
     "Alter in Jahren am --stichtag, sonst heute; eine leere Seite ist offen, eine Zahl allein ist beides",
     [](CSelektion & s, const std::string & sWert) {
         const auto [sVon, sBis] = Bereich(sWert);
         s.SetChAlter(true);
         s.SetAlter(sVon, sBis);
     }},
    {"--geburtstag", GEBURTSTAGE,
     "Geburtstag, nur Tag und Monat zählen; eine leere Seite ist offen; nicht über das Jahresende",
     [](CSelektion & s, const std::string & sWert) {
         const auto [sVon, sBis] = MitOffenenSeiten(Datumsbereich(sWert));
         s.SetGeburtstag(sVon, sBis);
     }},
    {"--letzter-besuch", TAGE, "Letzter Besuch; eine leere Seite ist offen; '..': nur Patienten ohne Datum",
     [](CSelektion & s, const std::string & sWert) {
         const auto [sVon, sBis] = MitOffenenSeiten(Datumsbereich(sWert));
         s.SetChLetzterBesuch(true);
         s.SetLetzterBesuch(sVon, sBis);
     }},
    {"--ueberweiser", WERT, "Überweisender Arzt; leer (''): irgendeiner",
     [](CSelektion & s, const std::string & sWert) {
         s.SetChUeberwArzt(true);
         s.SetUeberwArzt(Text(sWert));
     }},
    {"--hausarzt", WERT, "Hausarzt; leer (''): irgendeiner",
     [](CSelektion & s, const std::string & sWert) {
         s.SetChHausArzt(true);
         s.SetHausArzt(Text(sWert));
     }},
    // An open period of the run opens the section's bounds with it: said with its days, it leaves them alone.
    {"--ohne-leistung", TAGE,
     "Patienten ohne Leistung der Behandler in diesen Tagen; eine leere Seite ist offen",
     [](CSelektion & s, const std::string & sWert) {
         const auto [sVon, sBis] = Datumsbereich(sWert);
         s.SetZeitraum(Oder(s.GetAbDatum(), ERSTER_TAG), Oder(s.GetBisDatum(), LETZTER_TAG));
         s.SetChOhneLst(true);
         s.SetOhneLst(Oder(sVon, ERSTER_TAG), Oder(sBis, LETZTER_TAG));
     }},
    {"--goart", GOARTEN,
     "Gebührenordnung: k oder " + MitNamen(GEBUEHRENARTEN, "gqp") +
         ", a Material, u Unfall, b, e, f, h andere Kostenträger, 1 bis 9 Labor; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetGoArt(Text(sWert).Erstes()); }},
    // Numbers of laboratory entries have no fee row.
    {"--leistung", NR, "Leistungsnummer, groß oder klein; leer: alle",
     [](CSelektion & s, const std::string & sWert) {
         s.SetLst(s.GetELabChecked() ? Text(sWert) : FindeWert<CTGO>("Leistung", &CTGO::m_LSTNR, sWert));
     }},
    {"--abrart", ABRARTEN,
     "Abrechnungsarten, auch mit Komma: " + MitNamen(ABRECHNUNGSARTEN, "czk") +
         " (m, wo im Quartal Multiband behandelt ist), " + MitNamen(ABRECHNUNGSARTEN, "p") +
         " (6 bis 8 mit --par-marken und --par-beva), " + MitNamen(ABRECHNUNGSARTEN, "bi") +
         ", e, r und s andere Rechnungen; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetAbrArt(Text(sWert)); }},
    {"--pwlart", PWLARTEN,
     "Leistungsarten des Punktwerts, auch mit Komma: " + MitNamen(PUNKTWERTARTEN, "a") + ", c und " +
         MitNamen(PUNKTWERTARTEN, "jfghi") + ", b, d, e andere, p privat, 0 ohne Punktwert; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetPwLArt(Text(sWert)); }},
    {"--technik", TECHNIK,
     "Leistungen der Art 7: ziffern (Unterarten 1 bis 7), buchstaben (a, c, i, k, p, s, w) oder alle; ohne "
     "die Option zählt keine",
     [](CSelektion & s, const std::string & sWert) { s.SetTecGoSubArten(FindeTechnik(sWert)->iBits); }},
    {"--plan", PLANNR, "Plannummer; leer: alle",
     [](CSelektion & s, const std::string & sWert) {
         const CString sPlan = Trim(Text(sWert));
         s.SetPlan(sPlan.IsEmpty() ? sPlan : RightFix(sPlan, 3));
     }},
    {"--kasse", WERT, "Kürzel der Kasse, groß oder klein; leer: alle",
     [](CSelektion & s, const std::string & sWert) {
         s.SetKasse(FindeWert<CTOrvoKas>("Kasse", &CTOrvoKas::m_KASKUERZEL, sWert));
     }},
    {"--kasstat", WERT, "Statistikart der Kasse; leer: alle",
     [](CSelektion & s, const std::string & sWert) {
         s.SetKasStat(FindeWert<CTOrvoKas>("Statistikart", &CTOrvoKas::m_KASSTATISTIKART, sWert));
     }},
    {"--erfasser", WERT, "Erfasser der Leistung; leer: alle",
     [](CSelektion & s, const std::string & sWert) { s.SetErfasser(Text(sWert)); }},
};

// ---- the options

void FuegeZeitraumHinzu(CLI::App & app, SLaufoptionen & o) {
    Option(app, "--von", PFLICHTTAG, o.sVon, "Erster Tag, TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT; ohne: offen");
    Option(app, "--bis", PFLICHTTAG, o.sBis, "Letzter Tag; ohne: offen");
    Option(app, "--mandant", PFLICHTNR, o.sMandant, "Praxisinhaber; ohne: alle");
    Option(app, "--behandler", PFLICHTNR, o.sBehandler, "Ein Behandler oder mehrere mit Komma; ohne: alle");
    Option(app, "--patient", PFLICHTNR, o.sPatient, "Patientennummer; ohne: alle");
    OptionWort(app, "--sort", {"name", "patient"}, o.sSortierung,
               "Reihenfolge der Treffer: name oder patient");
}

void FuegeLaufHinzu(CLI::App & app, SLaufoptionen & o) {
    const char * pGruppe = "Lauf";
    OptionWort(app, "--status", {"abgerechnet", "erfasst"}, o.sStatus,
               "Nur die Hits, die abgerechnet oder die erfasst sind; ohne: beide")
        ->group(pGruppe);
    const struct {
        const char * pOption;
        bool & bWert;
        const char * pHilfe;
    } aFlaggen[] = {
        {"--nur-gesetzliche", o.bNurGesetzliche,
         "Private Kassen nicht nachschlagen: ihre Hits bleiben, ohne Kasse und Punktwert"},
        {"--nur-abrechenbare", o.bNurAbrechenbare,
         "Nur Leistungen, deren Gebührenzeile als abrechenbar gilt"},
        {"--ohne-plangatter", o.bPlangatterAus, "Leistungen auch ohne ordentlichen Plan zählen"},
        {"--ohne-22a", o.auftrag.bOhne22a, "Ohne PAR-Pläne nach § 22a SGB V"},
        {"--par-marken", o.auftrag.bParMarken, "PAR-Leistungen feiner unterscheiden"},
        {"--par-beva", o.auftrag.bParBeva, "Dasselbe in drei Stufen"},
        {"--kassenanteil", o.auftrag.bKassenanteil, "ZE und KFO nur mit dem Anteil der Kasse"},
        {"--ersatz", o.auftrag.bErsatz, "Leistungen durch ihren Ersatz zählen"},
        {"--praxis-lassen", o.bPraxiswechselAus,
         "Den Hit nicht noch zur Kassenpraxis seines Behandlers verschieben; er steht schon dort"},
        {"--nebenakten", o.auftrag.bNebenakten,
         "Auch Labor, Sammelrechnungen, Gipsmodelle, Rechnungen und Verordnungen"},
    };
    for (const auto & flagge : aFlaggen)
        app.add_flag(flagge.pOption, flagge.bWert, flagge.pHilfe)->group(pGruppe);
}

constexpr const char * AUSWAHL = "Auswahl der Patienten und Leistungen";

void FuegeRecallHinzu(CLI::App & app, SLaufoptionen & o) {
    Option(app, "--recall", RECALLART, o.sRecall,
           "Recallart als Zahl ab 0, * für irgendeine; alle drei Recall-Optionen leer: nur Patienten ohne "
           "Recall")
        ->group(AUSWAHL);
    Option(app, "--recall-intervall", INTERVALL, o.sRecallIntervall,
           "Intervallziffer der Recallart, ohne --recall der Art 0")
        ->group(AUSWAHL);
    Option(app, "--recall-vor", TAG, o.sRecallVor, "Der letzte Recall liegt vor diesem Tag")->group(AUSWAHL);
}

void FuegeKarteHinzu(CLI::App & app, SLaufoptionen & o) {
    Option(app, "--mfr", STATUSZIFFERN, o.sMfr,
           "Versichertenstatus: eine oder mehrere Ziffern (1 Mitglied, 3 Familie, 5 Rentner); Patienten ohne "
           "Versicherungszeitraum fallen weg; leer: alle")
        ->group(AUSWAHL);
    CLI::Option * pKarte = Option(app, "--karte", TAGE, o.sKarte,
                                  "Versichertenkarte eingelesen in diesen Tagen; eine leere Seite ist offen")
                               ->group(AUSWAHL);
    Option(app, "--kartenart", KARTENARTEN, o.sKartenarten,
           "Nachweise in --karte: G eingelesene Karte, g Ersatzverfahren, j Schein, E elektronische "
           "Ersatzbescheinigung; leer: alle")
        ->needs(pKarte)
        ->group(AUSWAHL);
    app.add_flag("--karte-fehlt", o.bKarteFehlt, "Patienten, deren Karte in --karte fehlt")->group(AUSWAHL);
}

void FuegeAbschnitteHinzu(CLI::App & app, SLaufoptionen & o) {
    o.vWerte.resize(std::size(ABSCHNITTE));
    for (std::size_t i = 0; i < std::size(ABSCHNITTE); ++i) {
        const SAbschnitt & abschnitt = ABSCHNITTE[i];
        Option(app, abschnitt.pOption, abschnitt.art, o.vWerte[i], abschnitt.sHilfe)->group(AUSWAHL);
    }
    Option(app, "--stichtag", PFLICHTTAG, o.sStichtag,
           "Tag, der dem Lauf als heute gilt, für das Alter; ohne: heute")
        ->needs(app.get_option("--alter"))
        ->group(AUSWAHL);
    Option(app, "--plz", WERT, o.sPlz, "Postleitzahl; mit leerem Ort ('' und ''): nur Patienten ohne beides")
        ->group(AUSWAHL);
    Option(app, "--ort", WERT, o.sOrt, "Ort")->group(AUSWAHL);
    FuegeRecallHinzu(app, o);
    app.add_flag("--hat-leistung", o.bHatLeistung, "Nur Patienten mit Leistungen der Behandler im Zeitraum")
        ->group(AUSWAHL);
    app.add_flag("--rsa", o.bRsa, "Nur Treffer mit RSA-Kennzeichen")->group(AUSWAHL);
    FuegeKarteHinzu(app, o);
}

// ---- the selection

bool Gesetzt(const CLI::App & app, const char * pOption) { return app.count(pOption) > 0; }

void SetzeZeitraum(const SLaufoptionen & o, CSelektion & s) {
    const CString sVon = Tag(o.sVon);
    const CString sBis = Tag(o.sBis);
    PruefeFolge("--bis", sVon, sBis);
    s.SetZeitraum(sVon, sBis);
}

void SetzeGrund(const SLaufoptionen & o, CSelektion & s) {
    SetzeZeitraum(o, s);
    if (!o.sMandant.empty()) s.SetMandant(MandantOderErster(o.sMandant));
    if (!o.sPatient.empty()) s.SetPatient(PruefePatient(o.sPatient));
    s.SetLebs(PruefeBehandlerliste(o.sBehandler));
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

// Insurance status and card are one section: whoever asks for the status alone asks for any card of any day.
void SetzeKarte(const CLI::App & app, const SLaufoptionen & o, CSelektion & s) {
    if (!Gesetzt(app, "--karte") && !o.bKarteFehlt && o.sMfr.empty()) return;
    const CBereich karte = Datumsbereich(o.sKarte);
    s.SetChKvk(true);
    s.SetMFR(Text(o.sMfr));
    s.SetKvkDatum(Oder(karte.first, ERSTER_TAG), Oder(karte.second, LETZTER_TAG));
    s.SetKvkFehlt(o.bKarteFehlt);
    const auto Hat = [&o](char c) { return o.sKartenarten.find(c) != std::string::npos; };
    s.SetKvkDurchzug(Hat('G'));
    s.SetKvkMev(Hat('g'));
    s.SetSchein(Hat('j'));
    s.SetEEB(Hat('E'));
}

// A clock that stands on a day. Its time of day goes on.
class CStichtaguhr : public CUhr {
public:
    explicit CStichtaguhr(const CString & sTag)
        : m_iJahr(Zahl(sTag.Left(4))), m_iMonat(Zahl(sTag.Mid(4, 2))), m_iTag(Zahl(sTag.Mid(6))) {}
    [[nodiscard]] SZeitpunkt Jetzt() const override {
        SZeitpunkt jetzt = m_uhr.Jetzt();
        jetzt.iJahr = m_iJahr;
        jetzt.iMonat = m_iMonat;
        jetzt.iTag = m_iTag;
        return jetzt;
    }

private:
    const CUhr & m_uhr = Uhr();
    int m_iJahr, m_iMonat, m_iTag;
};

} // namespace

CString Praxisnummer(const SLaufoptionen & o) {
    return o.sMandant.empty() ? CString() : MandantOderErster(o.sMandant);
}

void LasseStichtagAllein(CLI::App & app) {
    app.get_option("--stichtag")->remove_needs(app.get_option("--alter"));
}

void AmStichtag(const SLaufoptionen & o, const std::function<void()> & fTue) {
    if (o.sStichtag.empty()) return fTue();
    CStichtaguhr uhr(LiesDatum(o.sStichtag));
    const CUhrErsatz ersatz(uhr);
    fTue();
}

void FuegeSelektionHinzu(CLI::App & app, SLaufoptionen & optionen) {
    FuegeZeitraumHinzu(app, optionen);
    FuegeLaufHinzu(app, optionen);
    FuegeAbschnitteHinzu(app, optionen);
}

void SetzeSelektion(const CLI::App & app, const SLaufoptionen & o, CSelektion & s) {
    SetzeGrund(o, s);
    SetzeKarte(app, o, s);
    for (std::size_t i = 0; i < std::size(ABSCHNITTE); ++i)
        if (Gesetzt(app, ABSCHNITTE[i].pOption)) ABSCHNITTE[i].fSetze(s, o.vWerte[i]);
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
