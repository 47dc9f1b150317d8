#include "Aufruf.h"

#include "Datenbank.h"

#include <iostream>
#include <string_view>

namespace orvostat {

namespace {

// What is behind ": " in a message of the command line reader, or before " is required" or around " requires ": the
// part that names what the user has written.
std::string Gegenstand(std::string_view s) {
    constexpr std::string_view BRAUCHT = " requires ";
    if (const auto i = s.find(BRAUCHT); i != s.npos)
        return std::string(s.substr(i + BRAUCHT.size())) + " zu " + std::string(s.substr(0, i));
    if (const auto i = s.find(" is required"); i != s.npos) return std::string(s.substr(0, i));
    const auto i = s.find(": ");
    return std::string(i == s.npos ? s : s.substr(i + 2));
}

struct SFehlerart {
    CLI::ExitCodes eCode;
    const char * pText;
};
constexpr SFehlerart FEHLERARTEN[] = {
    {CLI::ExitCodes::ExtrasError, "Überzählig oder unbekannt: "},
    {CLI::ExitCodes::RequiredError, "Es fehlt: "},
    {CLI::ExitCodes::ConversionError, "Nicht lesbar: "},
    {CLI::ExitCodes::ArgumentMismatch, "Falsche Zahl von Angaben: "},
    {CLI::ExitCodes::ExcludesError, "Schließt sich aus: "},
    {CLI::ExitCodes::RequiresError, "Es gehört dazu: "},
};

std::string Meldung(const CLI::App & app, const CLI::ParseError & fehler, const char * pErstes) {
    const auto eCode = static_cast<CLI::ExitCodes>(fehler.get_exit_code());
    const bool bBefehl =
        eCode == CLI::ExitCodes::RequiredError && Gegenstand(fehler.what()) == "A subcommand";
    if (bBefehl && app.get_subcommands().empty())
        return std::string("Einen Befehl \"") + pErstes + "\" gibt es nicht.";
    if (bBefehl) return "Es fehlt ein Unterbefehl.";
    for (const SFehlerart & art : FEHLERARTEN)
        if (eCode == art.eCode) return art.pText + Gegenstand(fehler.what());
    return fehler.what();
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
    app.require_subcommand(1);
    const auto pForm = app.get_formatter();
    pForm->column_width(28);
    pForm->label("Usage", "Aufruf");
    pForm->label("OPTIONS", "OPTIONEN");
    pForm->label("SUBCOMMAND", "BEFEHL");
    pForm->label("SUBCOMMANDS", "BEFEHLE");
    pForm->label("Positionals", "Angaben");
    pForm->label("Subcommands", "Befehle");
    pForm->label("REQUIRED", "(nötig)");
    pForm->label("Needs", "verlangt");
    pForm->label("TEXT", "");
}

int FuehreAus(CLI::App & app, int argc, const char * const * argv) {
    GruppiereHilfe(app);
    try {
        app.parse(argc, argv);
        std::cout.flush();
        if (std::cout) return ENDE_OK;
        std::cerr << "Die Ausgabe ließ sich nicht schreiben.\n";
        return ENDE_FEHLER;
    } catch (const CLI::RuntimeError & ende) {
        return ende.get_exit_code();
    } catch (const CLI::Success & hilfe) {
        return app.exit(hilfe);
    } catch (const CLI::ParseError & fehler) {
        if (argc < 2) {
            std::cerr << app.help();
            return ENDE_AUFRUF;
        }
        std::cerr << "Falscher Aufruf. " << Meldung(app, fehler, argv[1]) << "\nHilfe: orvostat --help\n";
        return ENDE_AUFRUF;
    } catch (const std::exception & fehler) {
        std::cerr << "Fehler: " << fehler.what() << '\n';
        return ENDE_FEHLER;
    }
}

} // namespace orvostat
