#include "Befehle.h"

#include "Aufruf.h"
#include "Feiertagsausgabe.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include <fmt/format.h>

namespace orvostat {

namespace {

// Where a calendar comes from: a practice's settings, a federal state, or neither (the nationwide holidays).
struct SKalenderwahl {
    std::string sLand;
    std::string sPraxis;
    std::string sMandant;
    std::vector<std::string> vWochentage;
};

std::vector<std::string> Kuerzel() {
    std::vector<std::string> v;
    for (const SBundesland & land : Bundeslaender())
        v.emplace_back(land.sKuerzel);
    return v;
}

CLI::Option * OptionLand(CLI::App & befehl, std::string & sLand) {
    return befehl.add_option("--land", sLand, "Feiertage eines Bundeslandes (NW, BY, ...)")
        ->check(EinesVon(Kuerzel()))
        ->type_name("LAND");
}

void OptionenKalender(CLI::App & befehl, SKalenderwahl & wahl) {
    CLI::Option * pLand = OptionLand(befehl, wahl.sLand);
    befehl.add_option("--praxis", wahl.sPraxis, "Feiertage und Arbeitszeiten einer Praxisdatei")
        ->excludes(pLand)
        ->type_name("DATEI");
    befehl.add_option("--wochentage", wahl.vWochentage, "Gearbeitete Tage, zum Beispiel mo,di,mi,do,fr")
        ->delimiter(',')
        ->check(EinesVon(WochentagKuerzel()))
        ->type_name("TAGE");
}

CHoliday MakeKalender(const SKalenderwahl & wahl, std::optional<CPraxis> & praxis) {
    CHoliday kalender = wahl.sLand.empty() ? CHoliday() : KalenderFuer(*FindeBundesland(wahl.sLand));
    if (!wahl.sPraxis.empty()) {
        praxis.emplace(wahl.sPraxis, EModus::Lesen);
        kalender.ReadFeiertage();
        VerweigereNachLesefehler();
    }
    if (wahl.vWochentage.empty()) return kalender;
    std::ranges::fill(kalender.m_abWochentag, false);
    for (const std::string & sTag : wahl.vWochentage)
        kalender.m_abWochentag[WochentagNummer(sTag)] = true;
    return kalender;
}

// ---- kalender

struct SJahre {
    int iVon, iBis;
};

// "2024" or "2024-2030".
SJahre LiesJahre(const std::string & sText) {
    int iVon = 0;
    int iBis = 0;
    int iEnde = 0;
    if (std::sscanf(sText.c_str(), "%4d%n", &iVon, &iEnde) == 1 && iEnde == 4 && sText.size() == 4)
        iBis = iVon;
    else if (sText.size() != 9 || std::sscanf(sText.c_str(), "%4d-%4d%n", &iVon, &iBis, &iEnde) != 2 ||
             iEnde != 9)
        iVon = 0;
    if (iVon < 1 || iBis < iVon)
        throw CLI::ValidationError("JAHR",
                                   "\"" + sText + "\" ist weder ein Jahr noch ein Bereich wie 2024-2030");
    return {iVon, iBis};
}

struct SKalenderBefehl {
    SKalenderwahl wahl;
    std::vector<std::string> vArgumente;
    std::string sFormat = Formate().front().first;

    void Laufe() {
        const std::size_t iErwartet = wahl.sLand.empty() ? 2 : 1;
        if (vArgumente.size() != iErwartet)
            throw CLI::ValidationError("kalender", "erwartet entweder DATEI JAHR oder --land LAND JAHR");
        if (wahl.sLand.empty()) wahl.sPraxis = vArgumente.front();
        const SJahre jahre = LiesJahre(vArgumente.back());
        std::optional<CPraxis> praxis;
        const auto vFeiertage = Feiertage(MakeKalender(wahl, praxis), jahre.iVon, jahre.iBis);
        if (sFormat == ICS) return SchreibeIcs(std::cout, vFeiertage);
        for (const auto & [sName, eFormat] : Formate())
            if (sName == sFormat) SchreibeFeiertage(std::cout, eFormat, vFeiertage);
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
    pApp->add_option("ANGABE", pBefehl->vArgumente, "Praxisdatei (ohne --land) und Jahr, auch 2024-2030")
        ->required()
        ->option_text("[DATEI] JAHR (Pflicht)");
    OptionLand(*pApp, pBefehl->wahl.sLand);
    pApp->add_option("--format", pBefehl->sFormat, "table, csv, json oder ics (für Kalenderprogramme)")
        ->check(EinesVon(SKalenderBefehl::Formatnamen()))
        ->type_name("FORMAT");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- arbeitstage

struct SArbeitstageBefehl {
    SKalenderwahl wahl;
    std::string sVon, sBis;

    void Laufe() {
        const CString sAb = LiesDatum(sVon);
        const CString sEnde = LiesDatum(sBis);
        if (sEnde < sAb) throw CLI::ValidationError("BIS", "das Ende liegt vor dem Anfang");
        if (!wahl.sMandant.empty() && wahl.sPraxis.empty())
            throw CLI::ValidationError("--mandant", "nur zusammen mit --praxis");
        std::optional<CPraxis> praxis;
        CHoliday kalender = MakeKalender(wahl, praxis);
        const int iTage =
            praxis ? TageDerPraxis(kalender, sAb, sEnde) : kalender.GetAnzArbeitsTage(sAb, sEnde);
        std::cout << "Zeitraum     " << Db2Date(sAb).Utf8() << " bis " << Db2Date(sEnde).Utf8()
                  << "\nArbeitstage  " << iTage << "\nMonate       "
                  << Kommazahl(CHoliday::GetAnzMonate(sAb, sEnde)) << "\nQuartale     "
                  << Kommazahl(CHoliday::GetAnzQuartale(sAb, sEnde)) << "\nJahre        "
                  << Kommazahl(CHoliday::GetAnzJahre(sAb, sEnde)) << '\n';
    }

    // Year by year, since an owner's weekdays differ by year; his vacations are closed periods.
    int TageDerPraxis(CHoliday & kalender, const CString & sAb, const CString & sEnde) {
        CHVMCf einstellungen;
        const CString sId = MandantOderErster(wahl.sMandant);
        einstellungen.ReadUr(sId);
        VerweigereNachLesefehler();
        for (const CHVMUrParam & ur : einstellungen.m_vUrParam)
            for (const auto & [sUrlaubVon, sUrlaubBis] : ur.m_vUrlaub)
                kalender.m_vFerien.push_back({sUrlaubVon, sUrlaubBis, CString()});
        int iTage = 0;
        for (int iJahr = Zahl(sAb.Left(4)); iJahr <= Zahl(sEnde.Left(4)); ++iJahr) {
            const CString sJahr = RightFix(itoc(iJahr), 4, '0');
            const int iUr = einstellungen.FindUrParam(sId, sJahr);
            if (wahl.vWochentage.empty())
                SetzeWochentage(kalender, iUr < 0 ? CHVMUrParam() : Ur(einstellungen, iUr));
            iTage +=
                kalender.GetAnzArbeitsTage(std::max(sAb, sJahr + "0101"), std::min(sEnde, sJahr + "1231"));
        }
        return iTage;
    }

    static const CHVMUrParam & Ur(const CHVMCf & einstellungen, int i) {
        return einstellungen.m_vUrParam[static_cast<std::size_t>(i)];
    }

    static void SetzeWochentage(CHoliday & kalender, const CHVMUrParam & ur) {
        for (int i = 0; i < 7; ++i) // Monday first there, 1 for Sunday here
            kalender.m_abWochentag[i == 6 ? 1 : i + 2] = ur.m_abArbeitstag[i];
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
    pApp->add_option("VON", pBefehl->sVon, "Erster Tag, TT.MM.JJJJ oder JJJJMMTT")->required();
    pApp->add_option("BIS", pBefehl->sBis, "Letzter Tag")->required();
    OptionenKalender(*pApp, pBefehl->wahl);
    pApp->add_option("--mandant", pBefehl->wahl.sMandant, "Urlaube und Arbeitstage dieses Praxisinhabers")
        ->type_name("NR");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- naechster

struct SNaechsterBefehl {
    SKalenderwahl wahl;
    std::string sDatum;

    void Laufe() const {
        CString sTag = LiesDatum(sDatum);
        std::optional<CPraxis> praxis;
        const CHoliday kalender = MakeKalender(wahl, praxis);
        kalender.NaechsterArbeitstag(sTag);
        if (!kalender.IstArbeitstag(sTag)) Verweigere("Danach kommt kein Arbeitstag.");
        std::cout << Db2Date(sTag).Utf8() << "  " << Wochentagname(sTag).Utf8() << '\n';
    }
};

void FuegeNaechster(CLI::App & app) {
    const auto pBefehl = std::make_shared<SNaechsterBefehl>();
    CLI::App * pApp =
        app.add_subcommand("naechster", "Nächster Arbeitstag ab einem Tag, diesen eingeschlossen");
    pApp->add_option("TAG", pBefehl->sDatum, "TT.MM.JJJJ oder JJJJMMTT")->required();
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
