#include "Befehle.h"

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

// Where a calendar comes from: a practice's settings, a federal state, both, or neither (the nationwide holidays).
struct SKalenderwahl {
    std::string sLand;
    std::string sPraxis;
    std::string sMandant;
    std::vector<std::string> vWochentage;
};

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

CString Jahrestext(int iJahr) { return RightFix(itoc(iJahr), 4, '0'); }

// The calendars of the years, by the law of each, with an owner's weekdays and vacations.
class CArbeitskalender {
public:
    // bInhaber: a practice's owner is asked, too.
    CArbeitskalender(const SKalenderwahl & wahl, bool bInhaber)
        : m_wahl(wahl), m_pLand(wahl.sLand.empty() ? nullptr : FindeBundesland(wahl.sLand)) {
        if (wahl.sPraxis.empty()) return;
        m_praxis.emplace(wahl.sPraxis, EModus::Lesen);
        m_schalter.ReadFeiertage();
        VerweigereNachLesefehler();
        if (!bInhaber) return;
        m_sInhaber = MandantOderErster(wahl.sMandant);
        m_einstellungen.emplace().ReadUr(m_sInhaber);
        VerweigereNachLesefehler();
    }

    [[nodiscard]] CHoliday Jahr(int iJahr) const {
        CHoliday kalender = m_pLand == nullptr ? CHoliday() : KalenderFuer(*m_pLand, iJahr);
        for (const auto pSchalter : FEIERTAGSSCHALTER)
            kalender.*pSchalter = kalender.*pSchalter || m_schalter.*pSchalter;
        for (int i = 0; i < 7; ++i) // Monday first there, 1 for Sunday here
            kalender.m_abWochentag[i == 6 ? 1 : i + 2] = Arbeitet(iJahr, static_cast<std::size_t>(i));
        for (const auto & [sVon, sBis] : Urlaube(CString(), LETZTER_TAG))
            kalender.m_vFerien.push_back({sVon, sBis, CString()});
        return kalender;
    }

    [[nodiscard]] int Arbeitstage(const CString & sVon, const CString & sBis) const {
        int iTage = 0;
        for (int iJahr = Zahl(sVon.Left(4)); iJahr <= Zahl(sBis.Left(4)); ++iJahr)
            iTage += ArbeitstageIm(iJahr, sVon, sBis);
        return iTage;
    }

    // The first working day from this one on; empty for none.
    [[nodiscard]] CString Naechster(const CString & sAb) const {
        for (int iJahr = Zahl(sAb.Left(4)); iJahr <= 9999; ++iJahr) {
            if (ArbeitstageIm(iJahr, sAb, LETZTER_TAG) == 0) continue;
            const CHoliday kalender = Jahr(iJahr);
            CMxDate tag(std::max(sAb, Jahrestext(iJahr) + "0101"));
            while (kalender.GetAnzArbeitsTage(tag, tag) == 0)
                tag = tag + 1;
            return tag;
        }
        return {};
    }

    void NenneFeiertage(std::ostream & aus) const {
        aus << "Feiertage    bundesweite";
        if (m_pLand != nullptr) aus << ", " << m_pLand->pName;
        if (m_praxis) aus << ", Praxis" << Praxisfeiertage();
        aus << '\n';
    }

    // Which holidays, weekdays, owner and vacations an answer about the period goes by.
    void Nenne(std::ostream & aus, const CString & sVon, const CString & sBis) const {
        NenneFeiertage(aus);
        std::string sVorher;
        for (int iJahr = Zahl(sVon.Left(4)); iJahr <= Zahl(sBis.Left(4)); ++iJahr) {
            const std::string sTage = Wochentage(iJahr);
            if (sTage != sVorher)
                aus << (sVorher.empty() ? "Wochentage   " : "             ") << sTage
                    << (sVorher.empty() ? "" : " ab " + std::to_string(iJahr)) << '\n';
            sVorher = sTage;
        }
        if (!m_einstellungen) return;
        aus << "Inhaber      " << Trim(m_sInhaber).Utf8() << '\n';
        const auto vUrlaube = Urlaube(sVon, sBis);
        if (vUrlaube.empty()) aus << "Urlaub       keiner\n";
        for (const auto & [sErster, sLetzter] : vUrlaube)
            aus << "Urlaub       " << Db2Date(sErster).Utf8() << " bis " << Db2Date(sLetzter).Utf8() << '\n';
    }

private:
    [[nodiscard]] int ArbeitstageIm(int iJahr, const CString & sVon, const CString & sBis) const {
        const CString sJahr = Jahrestext(iJahr);
        return Jahr(iJahr).GetAnzArbeitsTage(std::max(sVon, sJahr + "0101"), std::min(sBis, sJahr + "1231"));
    }

    // The owner's year, or what holds without one.
    [[nodiscard]] const CHVMUrParam & Ur(int iJahr) const {
        static const CHVMUrParam s_ohne;
        const int i = m_einstellungen ? m_einstellungen->FindUrParam(m_sInhaber, Jahrestext(iJahr)) : -1;
        return i < 0 ? s_ohne : m_einstellungen->m_vUrParam[static_cast<std::size_t>(i)];
    }

    // i counts from Monday.
    [[nodiscard]] bool Arbeitet(int iJahr, std::size_t i) const {
        if (m_wahl.vWochentage.empty()) return Ur(iJahr).m_abArbeitstag[i];
        return std::ranges::find(m_wahl.vWochentage, WochentagKuerzel()[i]) != m_wahl.vWochentage.end();
    }

    [[nodiscard]] std::string Wochentage(int iJahr) const {
        std::string s;
        for (std::size_t i = 0; i < 7; ++i)
            if (Arbeitet(iJahr, i)) s += (s.empty() ? "" : ",") + WochentagKuerzel()[i];
        return s.empty() ? "keine" : s;
    }

    [[nodiscard]] std::string Praxisfeiertage() const {
        std::string s;
        for (const auto pSchalter : FEIERTAGSSCHALTER)
            if (m_schalter.*pSchalter) s += (s.empty() ? " (" : ", ") + NameDesSchalters(pSchalter);
        return s.empty() ? " (keine)" : s + ')';
    }

    // The vacations that touch the period.
    [[nodiscard]] std::vector<std::pair<CString, CString>> Urlaube(const CString & sVon,
                                                                   const CString & sBis) const {
        std::vector<std::pair<CString, CString>> v;
        if (!m_einstellungen) return v;
        for (const CHVMUrParam & ur : m_einstellungen->m_vUrParam)
            std::ranges::copy_if(ur.m_vUrlaub, std::back_inserter(v), [&](const auto & urlaub) {
                return urlaub.first <= sBis && urlaub.second >= sVon;
            });
        std::ranges::sort(v);
        return v;
    }

    const SKalenderwahl & m_wahl;
    const SBundesland * m_pLand;
    std::optional<CPraxis> m_praxis;
    CHoliday m_schalter; // the practice's
    CString m_sInhaber;
    std::optional<CHVMCf> m_einstellungen;
};

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
