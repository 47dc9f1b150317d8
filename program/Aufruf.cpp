#include "Aufruf.h"

#include "Datenbank.h"

#include "orvostatbs/version.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <numeric>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace orvostat {

namespace {

// The commands that the user has named, the program first.
std::vector<const CLI::App *> Genannte(const CLI::App & app) {
    std::vector<const CLI::App *> v{&app};
    while (!v.back()->get_subcommands().empty())
        v.push_back(v.back()->get_subcommands().front());
    return v;
}

// What those commands take, in the order in which the library looks at it.
std::vector<const CLI::Option *> Angaben(const std::vector<const CLI::App *> & vBefehle) {
    std::vector<const CLI::Option *> v;
    for (const CLI::App * pBefehl : vBefehle)
        for (const CLI::Option * pAngabe : pBefehl->get_options())
            v.push_back(pAngabe);
    return v;
}

// The option that a message of the library is about: the first whose name stands in it, of several the longest.
const CLI::Option * Gemeinte(const std::vector<const CLI::Option *> & vAngaben, std::string_view sMeldung) {
    const CLI::Option * pGemeinte = nullptr;
    const auto Stelle = [&](const CLI::Option & angabe) { return sMeldung.find(angabe.get_name()); };
    for (const CLI::Option * pAngabe : vAngaben) {
        if (Stelle(*pAngabe) == sMeldung.npos) continue;
        if (pGemeinte == nullptr || Stelle(*pAngabe) < Stelle(*pGemeinte) ||
            (Stelle(*pAngabe) == Stelle(*pGemeinte) &&
             pAngabe->get_name().size() > pGemeinte->get_name().size()))
            pGemeinte = pAngabe;
    }
    return pGemeinte;
}

// How many letters one has to add, drop or change to make the one of the other; 1 where their order alone differs.
std::size_t Abstand(std::string_view sA, std::string_view sB) {
    if (sA != sB && std::ranges::is_permutation(sA, sB)) return 1;
    std::vector<std::size_t> vZeile(sB.size() + 1);
    std::iota(vZeile.begin(), vZeile.end(), std::size_t{0});
    for (std::size_t i = 0; i < sA.size(); ++i) {
        std::size_t iSchraeg = std::exchange(vZeile[0], i + 1);
        for (std::size_t j = 0; j < sB.size(); ++j) {
            const std::size_t iTausch = iSchraeg + (sA[i] == sB[j] ? 0 : 1);
            iSchraeg = vZeile[j + 1];
            vZeile[j + 1] = std::min({iTausch, iSchraeg + 1, vZeile[j] + 1});
        }
    }
    return vZeile.back();
}

std::string Klein(std::string_view s) { return CLI::detail::to_lower(std::string(s)); }

std::vector<std::string> Namen(const std::vector<const CLI::App *> & vBefehle) {
    std::vector<std::string> v;
    for (const CLI::App * pBefehl : vBefehle)
        v.push_back(pBefehl->get_name());
    return v;
}

std::string KeinBefehl(const std::string & sWort, const CLI::App & befehl) {
    const auto vBefehle = befehl.get_subcommands([](const CLI::App *) { return true; });
    return fmt::format("Einen Befehl \"{}\" gibt es nicht.{}", sWort, Vorschlag(sWort, Namen(vBefehle)));
}

// Superfluous words; where one looks like an option, the option that it may stand for.
std::string Ueberzaehlige(const std::vector<std::string> & vWorte,
                          const std::vector<const CLI::Option *> & vAngaben) {
    std::vector<std::string> vOptionen;
    for (const CLI::Option * pAngabe : vAngaben)
        for (const std::string & sName : pAngabe->get_lnames())
            vOptionen.push_back("--" + sName);
    std::string s = "Überzählig oder unbekannt: " + CLI::detail::join(vWorte, " ");
    for (const std::string & sWort : vWorte)
        if (sWort.starts_with('-')) {
            const std::string sName = sWort.substr(0, sWort.find('='));
            const std::string sVorschlag = Vorschlag(sName, vOptionen);
            if (!sVorschlag.empty()) return s + "." + sVorschlag;
        }
    return s;
}

std::string Fehlendes(const CLI::App & befehl, const std::vector<const CLI::Option *> & vAngaben) {
    for (const CLI::Option * pAngabe : vAngaben)
        if (pAngabe->get_required() && pAngabe->count() == 0) return "Es fehlt: " + pAngabe->get_name();
    const std::vector<std::string> vRest = befehl.remaining();
    if (vRest.empty()) return "Es fehlt ein Befehl.";
    return vRest.front().starts_with('-') ? Ueberzaehlige(vRest, vAngaben)
                                          : KeinBefehl(vRest.front(), befehl);
}

// A pair of options of which the first is given, and the second, which it names, is given or not.
template <class F>
std::string Paar(const std::vector<const CLI::Option *> & vAngaben, F fGenannte, bool bGegeben,
                 fmt::format_string<std::string, std::string> sText) {
    for (const CLI::Option * pAngabe : vAngaben)
        for (const CLI::Option * pGenannte : (pAngabe->*fGenannte)())
            if (pAngabe->count() > 0 && (pGenannte->count() > 0) == bGegeben)
                return fmt::format(sText, pAngabe->get_name(), pGenannte->get_name());
    return {};
}

std::string FalscheAnzahl(const CLI::Option & angabe) {
    const int iAnzahl = static_cast<int>(angabe.count());
    const int iHoechstens = angabe.get_items_expected_max();
    if (iHoechstens == 0) return angabe.get_name() + " ist ein Schalter ohne Wert";
    if (iHoechstens == 1 && iAnzahl > 1)
        return fmt::format("{}: nur einmal erlaubt, nicht {}-mal", angabe.get_name(), iAnzahl);
    if (iAnzahl > iHoechstens) return angabe.get_name() + ": zu viele Angaben";
    const bool bZuwenig = iAnzahl > 0 && iAnzahl < angabe.get_items_expected_min();
    return angabe.get_name() + (bZuwenig ? ": zu wenige Angaben" : ": die Angabe dazu fehlt");
}

// What was wrong, by the exception's type and by what the commands hold after it; the library's English words are not
// looked at. A ValidationError comes from checks of ours and has their words.
std::string Meldung(const CLI::App & app, const CLI::ParseError & fehler) {
    const std::vector<const CLI::App *> vBefehle = Genannte(app);
    const std::vector<const CLI::Option *> vAngaben = Angaben(vBefehle);
    const CLI::Option * pGemeinte = Gemeinte(vAngaben, fehler.what());
    std::string s;
    if (dynamic_cast<const CLI::ValidationError *>(&fehler) != nullptr)
        s = fehler.what();
    else if (dynamic_cast<const CLI::RequiredError *>(&fehler) != nullptr)
        s = Fehlendes(*vBefehle.back(), vAngaben);
    else if (dynamic_cast<const CLI::ExtrasError *>(&fehler) != nullptr)
        s = Ueberzaehlige(app.remaining(true), vAngaben);
    else if (dynamic_cast<const CLI::RequiresError *>(&fehler) != nullptr)
        s = Paar(vAngaben, &CLI::Option::get_needs, false, "{} geht nur zusammen mit {}");
    else if (dynamic_cast<const CLI::ExcludesError *>(&fehler) != nullptr)
        s = Paar(vAngaben, &CLI::Option::get_excludes, true, "{} und {} schließen sich aus");
    else if (dynamic_cast<const CLI::ConversionError *>(&fehler) != nullptr && pGemeinte != nullptr)
        s = fmt::format("Nicht lesbar: {} = {}", pGemeinte->get_name(),
                        CLI::detail::join(pGemeinte->results()));
    else if (dynamic_cast<const CLI::ArgumentMismatch *>(&fehler) != nullptr && pGemeinte != nullptr)
        s = FalscheAnzahl(*pGemeinte);
    return s.empty() ? "Die Angaben passen nicht zusammen." : s;
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
    "orvostat help BEFEHL erklärt einen Befehl, orvostat help hvm BEFEHL einen von hvm.\n"
    "Tage: TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT. Worte wie csv oder nw gelten groß und klein.\n"
    "Ende: 0 in Ordnung, 1 verweigert oder gescheitert, 2 falscher Aufruf, 130 abgebrochen.";

// The library's form of the help, in German: what goes only with another option stands behind the explanation, what a
// switch may take in brackets, and long explanations are broken between their words.
class CHilfeform : public CLI::Formatter {
public:
    [[nodiscard]] std::string make_option_name(const CLI::Option * pAngabe, bool bStelle) const override {
        const std::string s = CLI::Formatter::make_option_name(pAngabe, bStelle);
        const std::string sTyp = pAngabe->get_type_name();
        if (!s.ends_with('}')) return s;
        return s.substr(0, s.find('{')) + (sTyp.empty() || sTyp == "BOOLEAN" ? "" : "[=" + sTyp + ']');
    }
    [[nodiscard]] std::string make_option_opts(const CLI::Option * pAngabe) const override {
        if (!pAngabe->get_option_text().empty()) return ' ' + pAngabe->get_option_text();
        if (pAngabe->get_type_size() == 0 || pAngabe->get_name(false, true).ends_with('}')) return {};
        const std::string sTyp = get_label(pAngabe->get_type_name());
        const std::string sVorgabe = pAngabe->get_default_str();
        const bool bMehrere = pAngabe->get_expected_max() == CLI::detail::expected_max_vector_size;
        return (sTyp.empty() ? "" : ' ' + sTyp) + (sVorgabe.empty() ? "" : '=' + sVorgabe) +
               (bMehrere ? " ..." : "") + (pAngabe->get_required() ? " (Pflicht)" : "");
    }
    [[nodiscard]] std::string make_option_desc(const CLI::Option * pAngabe) const override {
        std::string s = Nebenbei("nur mit ", pAngabe->get_needs());
        const std::string sOhne = Nebenbei("nicht mit ", pAngabe->get_excludes());
        if (!s.empty() && !sOhne.empty()) s += ", ";
        s += sOhne;
        return pAngabe->get_description() + (s.empty() ? s : " (" + s + ')');
    }
    // One blank line between groups; the library has put one behind each already.
    [[nodiscard]] std::string make_group(std::string sGruppe, bool bStellen,
                                         std::vector<const CLI::Option *> vAngaben) const override {
        const bool bErste = bStellen || sGruppe == "Optionen";
        return CLI::Formatter::make_group(std::move(sGruppe), bStellen, std::move(vAngaben))
            .substr(bErste ? 0 : 1);
    }
    [[nodiscard]] std::string make_option(const CLI::Option * pAngabe, bool bStelle) const override {
        std::string s = "  " + make_option_name(pAngabe, bStelle) + make_option_opts(pAngabe);
        std::size_t iSpalte = Laenge(s);
        std::istringstream worte(make_option_desc(pAngabe));
        const auto Breche = [&] {
            s += '\n' + std::string(column_width_, ' ');
            iSpalte = column_width_;
        };
        if (iSpalte + 2 > column_width_)
            Breche();
        else
            s.append(column_width_ - std::exchange(iSpalte, column_width_), ' ');
        for (std::string sWort; worte >> sWort; s += sWort, iSpalte += Laenge(sWort)) {
            if (iSpalte == column_width_) continue;
            if (iSpalte + 1 + Laenge(sWort) > HILFEBREITE)
                Breche();
            else
                s += ' ', ++iSpalte;
        }
        return s + '\n';
    }

private:
    static constexpr std::size_t HILFEBREITE = 100;
    // The number of characters.
    static std::size_t Laenge(std::string_view sUtf8) {
        return static_cast<std::size_t>(
            std::ranges::count_if(sUtf8, [](char c) { return (c & 0xC0) != 0x80; }));
    }
    static std::string Nebenbei(const char * pWorte, const std::set<CLI::Option *> & andere) {
        std::string s;
        for (const CLI::Option * pAndere : andere)
            s += (s.empty() ? pWorte : " und ") + pAndere->get_name();
        return s;
    }
};

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

// The command help: the help of the program or of the command whose words follow.
void FuegeHilfeHinzu(CLI::App & app) {
    const auto pWorte = std::make_shared<std::vector<std::string>>();
    CLI::App * pHilfe = app.add_subcommand("help", "Erklärt das Programm oder einen Befehl");
    pHilfe->add_option("BEFEHL", *pWorte, "Der Befehl, auch zwei Worte wie hvm set");
    pHilfe->callback([&app, pWorte] {
        CLI::App * pBefehl = &app;
        for (const std::string & sWort : *pWorte) {
            const auto v = pBefehl->get_subcommands([&](const CLI::App * p) { return p->check_name(sWort); });
            if (v.empty()) throw CLI::ValidationError(KeinBefehl(sWort, *pBefehl));
            pBefehl = v.front();
        }
        std::cout << pBefehl->get_formatter()->make_help(pBefehl, Befehlszeile(*pBefehl),
                                                         CLI::AppFormatMode::Normal);
    });
}

} // namespace

bool GleichesWort(std::string_view sA, std::string_view sB) { return Klein(sA) == Klein(sB); }

std::string Vorschlag(std::string_view sWort, const std::vector<std::string> & vWorte) {
    const std::string sGesucht = Klein(sWort);
    std::string sBestes;
    std::size_t iBester = std::max<std::size_t>(1, sGesucht.size() / 4) + 1;
    for (const std::string & s : vWorte) {
        const std::string sKlein = Klein(s);
        const bool bAnfang = sGesucht.size() > 3 && sKlein.starts_with(sGesucht);
        const std::size_t iAbstand = bAnfang ? 1 : Abstand(sGesucht, sKlein);
        if (iAbstand >= iBester) continue;
        iBester = iAbstand;
        sBestes = s;
    }
    return sBestes.empty() ? std::string() : " Meinten Sie " + sBestes + '?';
}

CLI::Validator NichtLeer() {
    return CLI::Validator(
        [](const std::string & sWert) { return sWert.empty() ? "die Angabe ist leer" : std::string(); }, "");
}

CLI::Validator Bereich(long long iVon, long long iBis) {
    const auto Pruefe = [=](const std::string & sWert) {
        long long iWert = 0;
        if (!CLI::detail::lexical_cast(sWert, iWert)) return '"' + sWert + "\" ist keine Zahl";
        if (iWert >= iVon && iWert <= iBis) return std::string();
        return sWert + " liegt nicht zwischen " + std::to_string(iVon) + " und " + std::to_string(iBis);
    };
    return CLI::Validator(Pruefe, "");
}

CLI::Validator Wortwahl(std::vector<std::string> vWorte) {
    const auto Pruefe = [vWorte = std::move(vWorte)](std::string & sWert) {
        const auto it =
            std::ranges::find_if(vWorte, [&](const std::string & s) { return GleichesWort(s, sWert); });
        if (it == vWorte.end()) return '"' + sWert + "\" ist keines von " + CLI::detail::join(vWorte, ", ");
        sWert = *it;
        return std::string();
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
        ->transform(Wortwahl(vNamen))
        ->type_name("FORMAT");
}

std::string Version() { return ORVOSTATBS_VERSION; }

void Beschrifte(CLI::App & app) {
    app.name("orvostat");
    app.description("Statistik einer Zahnarztpraxis");
    app.set_help_flag("-h,--help", "Zeigt diese Hilfe");
    app.option_defaults()->group("Optionen");
    app.set_version_flag("--version", "orvostat " ORVOSTATBS_VERSION, "Zeigt die Version")->group("Optionen");
    app.require_subcommand(1);
    app.ignore_case();
    const auto pForm = std::make_shared<CHilfeform>();
    app.formatter(pForm);
    pForm->column_width(28);
    pForm->label("Usage", "Aufruf");
    pForm->label("OPTIONS", "OPTIONEN");
    pForm->label("SUBCOMMAND", "BEFEHL");
    pForm->label("SUBCOMMANDS", "BEFEHLE");
    pForm->label("Positionals", "Angaben");
    pForm->label("Subcommands", "Befehle");
    pForm->label("TEXT", "");
    pForm->label("INT", "ZAHL");
}

int FuehreAus(CLI::App & app, int argc, const char * const * argv) {
    FuegeHilfeHinzu(app);
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
        std::cerr << fmt::format("Falscher Aufruf. {}\nHilfe: {} --help\n", Meldung(app, fehler),
                                 Befehlszeile(*Genannte(app).back()));
        return ENDE_AUFRUF;
    }
}

} // namespace orvostat
