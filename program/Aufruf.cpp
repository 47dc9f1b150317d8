#include "Aufruf.h"

#include "Datenbank.h"

#include <iostream>
#include <string_view>

namespace orvostat {

namespace {

// The library's messages: each has what the user wrote before or behind some words of its own.
struct SMeldung {
    CLI::ExitCodes eCode;
    std::string_view sTrenner; // the library's words
    std::string_view sDeutsch; // "<" is what stands before them, ">" what stands behind
};
constexpr SMeldung MELDUNGEN[] = {
    {CLI::ExitCodes::ExtrasError, " expected: ", "Überzählig oder unbekannt: >"},
    {CLI::ExitCodes::RequiredError, " is required", "Es fehlt: <"},
    {CLI::ExitCodes::ConversionError, "Could not convert: ", "Nicht lesbar: >"},
    {CLI::ExitCodes::ConversionError, ": Should be ", "< ist ein Schalter ohne Wert"},
    {CLI::ExitCodes::ConversionError, ": too many ", "< ist ein Schalter ohne Wert"},
    {CLI::ExitCodes::ArgumentMismatch, ": 1 required ", "<: die Angabe dazu fehlt"},
    {CLI::ExitCodes::ArgumentMismatch, ": At least ", "<: zu wenige Angaben"},
    {CLI::ExitCodes::ArgumentMismatch, ": At Most 1 required but received ",
     "<: nur einmal erlaubt, nicht >-mal"},
    {CLI::ExitCodes::ArgumentMismatch, " was given ", "< ist ein Schalter ohne Wert"},
    {CLI::ExitCodes::ExcludesError, " excludes ", "< und > schließen sich aus"},
    {CLI::ExitCodes::RequiresError, " requires ", "< geht nur zusammen mit >"},
};

std::string Deutsch(CLI::ExitCodes eCode, std::string_view sMeldung) {
    for (const SMeldung & meldung : MELDUNGEN) {
        const auto i = eCode == meldung.eCode ? sMeldung.find(meldung.sTrenner) : sMeldung.npos;
        if (i == sMeldung.npos) continue;
        std::string s;
        for (std::string_view sRest = meldung.sDeutsch; !sRest.empty(); sRest.remove_prefix(1)) {
            if (sRest.front() == '<')
                s += sMeldung.substr(0, i);
            else if (sRest.front() == '>')
                s += sMeldung.substr(i + meldung.sTrenner.size());
            else
                s += sRest.front();
        }
        return s;
    }
    return std::string(sMeldung);
}

// The command the user has named last, or the program.
const CLI::App & Letzter(const CLI::App & app) {
    const auto vBefehle = app.get_subcommands();
    return vBefehle.empty() ? app : Letzter(*vBefehle.front());
}

std::string Meldung(const CLI::App & befehl, const CLI::ParseError & fehler) {
    const auto eCode = static_cast<CLI::ExitCodes>(fehler.get_exit_code());
    const std::string sMeldung = fehler.what();
    if (eCode != CLI::ExitCodes::RequiredError || sMeldung != "A subcommand is required")
        return Deutsch(eCode, sMeldung);
    const std::vector<std::string> vRest = befehl.remaining();
    return vRest.empty() ? "Es fehlt ein Befehl." : "Einen Befehl \"" + vRest.front() + "\" gibt es nicht.";
}

// "orvostat hvm DATEI set": as the user writes it.
std::string Befehlszeile(const CLI::App & befehl) {
    if (befehl.get_parent() == nullptr) return befehl.get_name();
    std::string s = Befehlszeile(*befehl.get_parent());
    for (const CLI::Option * pAngabe : befehl.get_parent()->get_options())
        if (pAngabe->get_positional()) s += ' ' + pAngabe->get_name();
    return s + ' ' + befehl.get_name();
}

constexpr const char * FUSSZEILE =
    "orvostat BEFEHL --help erklärt einen Befehl, orvostat hvm DATEI BEFEHL --help einen von hvm.\n"
    "Tage: TT.MM.JJJJ oder JJJJMMTT.\n"
    "Ende: 0 in Ordnung, 1 verweigert oder gescheitert, 2 falscher Aufruf, 130 abgebrochen.";

int BeendeAusgabe() {
    std::cout.flush();
    if (std::cout) return ENDE_OK;
    std::cerr << "Die Ausgabe ließ sich nicht schreiben.\n";
    return ENDE_FEHLER;
}

// Commands and their help options make themselves with the library's group names.
void GruppiereHilfe(CLI::App & app) {
    if (app.get_help_ptr() != nullptr) const_cast<CLI::Option *>(app.get_help_ptr())->group("Optionen");
    for (CLI::App * pBefehl : app.get_subcommands([](const CLI::App *) { return true; })) {
        pBefehl->group("Befehle");
        GruppiereHilfe(*pBefehl);
    }
}

} // namespace

CLI::Validator Bereich(long long iVon, long long iBis) {
    const auto Pruefe = [=](const std::string & sWert) {
        long long iWert = 0;
        if (!CLI::detail::lexical_cast(sWert, iWert)) return '"' + sWert + "\" ist keine Zahl";
        if (iWert >= iVon && iWert <= iBis) return std::string();
        return sWert + " liegt nicht zwischen " + std::to_string(iVon) + " und " + std::to_string(iBis);
    };
    return CLI::Validator(Pruefe, "");
}

CLI::Validator EinesVon(std::vector<std::string> vWorte) {
    const auto Pruefe = [vWorte = std::move(vWorte)](const std::string & sWert) {
        std::string sListe;
        for (const std::string & sWort : vWorte) {
            if (sWort == sWert) return std::string();
            sListe += (sListe.empty() ? "" : ", ") + sWort;
        }
        return '"' + sWert + "\" ist keines von " + sListe;
    };
    return CLI::Validator(Pruefe, "");
}

void OptionFormat(CLI::App & befehl, EFormat & eFormat) {
    std::vector<std::string> vNamen;
    for (const auto & [sName, eWert] : Formate())
        vNamen.push_back(sName);
    const auto Setze = [&eFormat](const std::string & sGewaehlt) {
        for (const auto & [sName, eWert] : Formate())
            if (sName == sGewaehlt) eFormat = eWert;
    };
    befehl.add_option_function<std::string>("--format", Setze, "table, csv oder json")
        ->check(EinesVon(vNamen))
        ->type_name("FORMAT");
}

void Beschrifte(CLI::App & app) {
    app.name("orvostat");
    app.description("Statistik einer Zahnarztpraxis");
    app.set_help_flag("-h,--help", "Zeigt diese Hilfe");
    app.option_defaults()->group("Optionen");
    app.set_version_flag("--version", "orvostat " ORVOSTATBS_VERSION, "Zeigt die Version")->group("Optionen");
    app.require_subcommand(1);
    const auto pForm = app.get_formatter();
    pForm->column_width(28);
    pForm->label("Usage", "Aufruf");
    pForm->label("OPTIONS", "OPTIONEN");
    pForm->label("SUBCOMMAND", "BEFEHL");
    pForm->label("SUBCOMMANDS", "BEFEHLE");
    pForm->label("Positionals", "Angaben");
    pForm->label("Subcommands", "Befehle");
    pForm->label("REQUIRED", "(Pflicht)");
    pForm->label("TEXT", "");
    pForm->label("INT", "ZAHL");
    pForm->label("Excludes", "Nicht mit");
    pForm->label("Needs", "Nur mit");
}

int FuehreAus(CLI::App & app, int argc, const char * const * argv) {
    GruppiereHilfe(app);
    app.footer(FUSSZEILE); // of the program alone: commands have taken over what was there before
    try {
        app.parse(argc, argv);
        return BeendeAusgabe();
    } catch (const CLI::RuntimeError & ende) {
        return ende.get_exit_code();
    } catch (const CLI::Success & hilfe) {
        app.exit(hilfe);
        return BeendeAusgabe();
    } catch (const CLI::ParseError & fehler) {
        if (argc < 2) {
            std::cerr << app.help();
            return ENDE_AUFRUF;
        }
        const CLI::App & befehl = Letzter(app);
        std::cerr << "Falscher Aufruf. " << Meldung(befehl, fehler) << "\nHilfe: " << Befehlszeile(befehl)
                  << " --help\n";
        return ENDE_AUFRUF;
    }
}

} // namespace orvostat
