#include "Befehle.h"

#include "Arbeitskalender.h"
#include "Aufruf.h"
#include "Feiertagsausgabe.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <memory>
#include <optional>

#include <fmt/format.h>

namespace orvostat {

namespace {

CLI::Option * OptionLand(CLI::App & befehl, std::string & sLand) {
    return befehl
        .add_option("--land", sLand,
                    "Feiertage eines Bundeslandes (NW, BY, ...), mit ihrer Geschichte ab 1991")
        ->transform(Wortwahl(Landeskuerzel()))
        ->type_name("LAND");
}

void OptionenKalender(CLI::App & befehl, SKalenderwahl & wahl) {
    OptionLand(befehl, wahl.sLand);
    CLI::Option * pPraxis =
        befehl.add_option("--praxis", wahl.sPraxis, "Feiertage, Arbeitstage und Urlaube einer Praxisdatei")
            ->type_name("DATEI");
    befehl.add_option("--mandant", wahl.sMandant, "Praxisinhaber, sonst der erste")
        ->check(NichtLeer())
        ->needs(pPraxis)
        ->type_name("NR");
    befehl.add_option("--wochentage", wahl.vWochentage, "Gearbeitete Tage, zum Beispiel mo,di,mi,do,fr")
        ->delimiter(',')
        ->transform(Wortwahl(WochentagKuerzel()))
        ->type_name("TAGE");
}

// ---- kalender

struct SJahre {
    int iVon, iBis;
};

// "2024", "2024-2030" or "2024..2030".
SJahre LiesJahre(const std::string & sText) {
    const auto LiesJahr = [](std::string_view s) {
        int iJahr = 0;
        const auto [pEnde, eFehler] = std::from_chars(s.data(), s.data() + s.size(), iJahr);
        return s.size() == 4 && pEnde == s.data() + 4 ? iJahr : 0;
    };
    const std::string_view s = sText;
    const std::size_t iTrenner = std::min({s.find(".."), s.find('-'), s.size()});
    const std::size_t iBreite = s.substr(iTrenner).starts_with('.') ? 2 : 1;
    const int iVon = LiesJahr(s.substr(0, iTrenner));
    const int iBis = iTrenner == s.size() ? iVon : LiesJahr(s.substr(iTrenner + iBreite));
    if (iVon < 1 || iBis < iVon)
        throw CLI::ValidationError("JAHR",
                                   "\"" + sText + "\" ist weder ein Jahr noch ein Bereich wie 2024..2030");
    return {iVon, iBis};
}

struct SKalenderBefehl {
    SKalenderwahl wahl;
    std::vector<std::string> vArgumente;
    std::string sFormat = Formate().front().first;

    void Laufe() {
        if (vArgumente.size() > 2 || (vArgumente.size() == 1 && wahl.sLand.empty()))
            throw CLI::ValidationError("kalender", "erwartet DATEI JAHR, --land LAND JAHR oder beides");
        if (vArgumente.size() == 2) wahl.sPraxis = vArgumente.front();
        const SJahre jahre = LiesJahre(vArgumente.back());
        const CArbeitskalender kalender(wahl, false);
        std::vector<SFeiertag> vFeiertage;
        for (int iJahr = jahre.iVon; iJahr <= jahre.iBis; ++iJahr)
            std::ranges::copy(Feiertage(kalender.Jahr(iJahr), iJahr, iJahr), std::back_inserter(vFeiertage));
        if (sFormat == ICS) return SchreibeIcs(std::cout, vFeiertage);
        for (const auto & [sName, eFormat] : Formate())
            if (sName == sFormat) SchreibeFeiertage(std::cout, eFormat, vFeiertage);
        if (sFormat != Formate().front().first) return;
        std::cout << '\n';
        kalender.NenneFeiertage(std::cout);
    }

    static constexpr const char * ICS = "ics";
    static std::vector<std::string> Formatnamen() {
        std::vector<std::string> v;
        for (const auto & format : Formate())
            v.push_back(format.first);
        v.emplace_back(ICS);
        return v;
    }
};

void FuegeKalender(CLI::App & app) {
    const auto pBefehl = std::make_shared<SKalenderBefehl>();
    CLI::App * pApp = app.add_subcommand("kalender", "Feiertage eines Jahres, nach Praxis oder Bundesland");
    pApp->add_option("ANGABE", pBefehl->vArgumente,
                     "Praxisdatei (ohne --land nötig) und Jahr, auch 2024..2030")
        ->required()
        ->option_text("[DATEI] JAHR (Pflicht)");
    OptionLand(*pApp, pBefehl->wahl.sLand);
    pApp->add_option("--format", pBefehl->sFormat, "table, csv, json oder ics (für Kalenderprogramme)")
        ->transform(Wortwahl(SKalenderBefehl::Formatnamen()))
        ->type_name("FORMAT");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- arbeitstage

struct SArbeitstageBefehl {
    SKalenderwahl wahl;
    std::string sVon, sBis;

    void Laufe() const {
        const CString sAb = LiesDatum(sVon);
        const CString sEnde = LiesDatum(sBis);
        PruefeFolge("BIS", sAb, sEnde);
        const CArbeitskalender kalender(wahl, true);
        std::cout << "Zeitraum     " << Db2Date(sAb).Utf8() << " bis " << Db2Date(sEnde).Utf8()
                  << "\nArbeitstage  " << kalender.Arbeitstage(sAb, sEnde) << "\nMonate       "
                  << Kommazahl(CHoliday::GetAnzMonate(sAb, sEnde)) << "\nQuartale     "
                  << Kommazahl(CHoliday::GetAnzQuartale(sAb, sEnde)) << "\nJahre        "
                  << Kommazahl(CHoliday::GetAnzJahre(sAb, sEnde)) << '\n';
        kalender.Nenne(std::cout, sAb, sEnde);
    }

    static std::string Kommazahl(double fWert) {
        std::string s = fmt::format("{:.4f}", fWert);
        std::ranges::replace(s, '.', ',');
        return s;
    }
};

void FuegeArbeitstage(CLI::App & app) {
    const auto pBefehl = std::make_shared<SArbeitstageBefehl>();
    CLI::App * pApp = app.add_subcommand("arbeitstage", "Arbeitstage eines Zeitraums und seine Länge");
    pApp->add_option("VON", pBefehl->sVon, "Erster Tag, TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT")->required();
    pApp->add_option("BIS", pBefehl->sBis, "Letzter Tag")->required();
    OptionenKalender(*pApp, pBefehl->wahl);
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- naechster

struct SNaechsterBefehl {
    SKalenderwahl wahl;
    std::string sDatum;

    void Laufe() const {
        const CString sAb = LiesDatum(sDatum);
        const CArbeitskalender kalender(wahl, true);
        const CString sTag = kalender.Naechster(sAb);
        if (sTag.IsEmpty()) Verweigere("Danach kommt kein Arbeitstag.");
        std::cout << Db2Date(sTag).Utf8() << "  " << Wochentagname(sTag).Utf8() << '\n';
        kalender.Nenne(std::cout, sAb, sTag);
    }
};

void FuegeNaechster(CLI::App & app) {
    const auto pBefehl = std::make_shared<SNaechsterBefehl>();
    CLI::App * pApp =
        app.add_subcommand("naechster", "Nächster Arbeitstag ab einem Tag, diesen eingeschlossen");
    pApp->add_option("TAG", pBefehl->sDatum, "TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT")->required();
    OptionenKalender(*pApp, pBefehl->wahl);
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

} // namespace

void FuegeKalenderHinzu(CLI::App & app) {
    FuegeKalender(app);
    FuegeArbeitstage(app);
    FuegeNaechster(app);
}

} // namespace orvostat
