#include "HvmDatei.h"

#include "Aufruf.h"
#include "Praxis.h"

#include "orvostatbs/calendar/Feiertage.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <set>
#include <sstream>
#include <system_error>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace orvostat {

namespace {

using CJson = nlohmann::ordered_json; // members in the order of writing

constexpr std::size_t MAX_URLAUBE = 5;

bool GleicherMandant(const CString & sA, const CString & sB) { return RightFix(sA, 2) == RightFix(sB, 2); }

std::string IsoTag(const CString & s) { return (s.Left(4) + '-' + s.Mid(4, 2) + '-' + s.Mid(6)).Utf8(); }

std::string Zeitraum(const CString & sVon, const CString & sBis) {
    return Db2Date(sVon).Utf8() + " bis " + Db2Date(sBis).Utf8();
}

// ---- writing

CJson Topf(const CHVMBgParam & bg) {
    CJson gruppen = CJson::object();
    for (const auto & [cGruppe, mSel] : bg.m_mSel)
        for (const auto & [sName, sAuswahl] : mSel)
            gruppen[std::string(1, cGruppe)][sName.Utf8()] = sAuswahl.Utf8();
    return {{"aktiv", bg.m_bAktiv}, {"budget", bg.m_bBudget}, {"wert", bg.m_iWert}, {"gruppen", gruppen}};
}

CJson Jahr(const CHVMUrParam & ur) {
    CJson tage = CJson::array();
    const std::vector<std::string> vKuerzel = WochentagKuerzel();
    for (std::size_t i = 0; i < vKuerzel.size(); ++i)
        if (ur.m_abArbeitstag[i]) tage.push_back(vKuerzel[i]);
    CJson urlaube = CJson::array();
    for (const auto & [sVon, sBis] : ur.m_vUrlaub)
        if (GueltigesDatum(sVon) && GueltigesDatum(sBis))
            urlaube.push_back(IsoTag(sVon) + ".." + IsoTag(sBis));
    return {{"arbeitstage", tage}, {"urlaub", urlaube}};
}

CJson Inhaber(const CHVMCf & cf, const CString & sMandant) {
    CJson inhaber = {{"bw", 0}, {"toepfe", CJson::object()}, {"jahre", CJson::object()}};
    for (const CHVMBgParam & bg : cf.m_vBgParam) {
        if (!GleicherMandant(bg.m_sMandant, sMandant)) continue;
        inhaber["bw"] = bg.m_iBw;
        if (!bg.m_mSel.empty()) inhaber["toepfe"][std::string(1, bg.m_cArt)] = Topf(bg);
    }
    for (const CHVMUrParam & ur : cf.m_vUrParam)
        if (GleicherMandant(ur.m_sMandant, sMandant)) inhaber["jahre"][ur.m_sJahr.Left(4).Utf8()] = Jahr(ur);
    return inhaber;
}

// ---- reading

// A place in the file, with its name for messages.
class CStelle {
public:
    CStelle(const CJson & json, std::string sPfad) : m_json(json), m_sPfad(std::move(sPfad)) {}

    [[noreturn]] void Fehler(const std::string & sText) const {
        Verweigere((m_sPfad.empty() ? "Die Datei" : m_sPfad) + ": " + sText + '.');
    }
    void Pruefe(const std::string & sFehler) const {
        if (!sFehler.empty()) Fehler(sFehler);
    }

    template <class F> void JeMitglied(F f) const {
        if (!m_json.is_object()) Fehler("erwartet wird { Name: Wert, ... }");
        for (const auto & [sName, wert] : m_json.items())
            f(sName, CStelle(wert, m_sPfad.empty() ? sName : m_sPfad + '.' + sName));
    }
    template <class F> void JeElement(F f) const {
        if (!m_json.is_array()) Fehler("erwartet wird [ Wert, ... ]");
        for (std::size_t i = 0; i < m_json.size(); ++i)
            f(CStelle(m_json[i], fmt::format("{}[{}]", m_sPfad, i + 1)));
    }

    [[nodiscard]] bool AnAus() const {
        if (!m_json.is_boolean()) Fehler("erwartet wird true oder false");
        return m_json.get<bool>();
    }
    [[nodiscard]] std::int32_t Zahl(std::int64_t iVon = std::numeric_limits<std::int32_t>::min(),
                                    std::int64_t iBis = std::numeric_limits<std::int32_t>::max()) const {
        const bool bPasst = m_json.is_number_integer() && m_json >= iVon && m_json <= iBis;
        if (!bPasst) Fehler(fmt::format("erwartet wird eine ganze Zahl von {} bis {}", iVon, iBis));
        return m_json.get<std::int32_t>();
    }
    [[nodiscard]] std::string Text() const {
        if (!m_json.is_string()) Fehler("erwartet wird ein Text");
        return m_json.get<std::string>();
    }
    [[nodiscard]] CString PraxisText() const { return AlsPraxisText(Text()); }
    [[nodiscard]] CString AlsPraxisText(const std::string & sText) const {
        const CString s = AusUtf8(sText);
        const bool bSteuer = std::ranges::any_of(sText, [](char c) { return c >= 0 && c < ' '; });
        if (bSteuer || s.Utf8() != sText) Fehler("\"" + sText + "\" hat Zeichen, die Windows-1252 fehlen");
        return s;
    }

private:
    const CJson & m_json;
    std::string m_sPfad;
};

void LiesSchalter(CHVMCf & cf, const std::string & sName, const CStelle & stelle) {
    const auto it =
        std::ranges::find_if(HVM_SCHALTER, [&](const SHvmSchalter & s) { return s.pName == sName; });
    if (it == std::end(HVM_SCHALTER)) stelle.Fehler("diesen Schalter gibt es nicht");
    if (it->pFlag)
        cf.*it->pFlag = stelle.AnAus();
    else
        cf.*it->pZahl = stelle.Zahl(0, 9);
}

void LiesFeiertage(CHVMCf & cf, const CStelle & stelle) {
    std::ranges::fill(cf.m_abFeiertag, false);
    stelle.JeElement([&](const CStelle & tag) {
        const auto it = std::ranges::find(FEIERTAGSSCHALTER, tag.Text(), NameDesSchalters);
        if (it == std::end(FEIERTAGSSCHALTER)) tag.Fehler("diesen Feiertag kann man nicht schalten");
        cf.m_abFeiertag[it - std::begin(FEIERTAGSSCHALTER)] = true;
    });
}

void LiesLeistungen(CHVMCf & cf, const CStelle & stelle) {
    cf.m_vLeistungen.clear();
    stelle.JeElement([&](const CStelle & s) { cf.m_vLeistungen.push_back(TrimRight(s.PraxisText())); });
    stelle.Pruefe(FehlerLeistungen(cf.m_vLeistungen));
}

void LiesGruppen(CHVMBgParam & bg, const CStelle & stelle) {
    stelle.JeMitglied([&](const std::string & sGruppe, const CStelle & gruppe) {
        if (sGruppe.size() != 1 || CHVMCf::s_sBgGruppen.Find(sGruppe[0]) < 0)
            gruppe.Fehler("diese Gruppe gibt es nicht");
        auto & mSel = bg.m_mSel[sGruppe[0]];
        gruppe.JeMitglied([&](const std::string & sName, const CStelle & auswahl) {
            const CString s = auswahl.PraxisText();
            auswahl.Pruefe(FehlerAuswahl(auswahl.AlsPraxisText(sName), s));
            mSel[AusUtf8(sName)] = s;
        });
    });
}

void LiesTopf(CHVMBgParam & bg, const CStelle & stelle) {
    stelle.JeMitglied([&](const std::string & sName, const CStelle & wert) {
        if (sName == "aktiv")
            bg.m_bAktiv = wert.AnAus();
        else if (sName == "budget")
            bg.m_bBudget = wert.AnAus();
        else if (sName == "wert")
            bg.m_iWert = wert.Zahl();
        else if (sName == "gruppen")
            LiesGruppen(bg, wert);
        else
            wert.Fehler("diese Angabe gibt es nicht");
    });
    if (bg.m_mSel.empty()) stelle.Fehler("ein Topf hat mindestens eine Gruppe");
}

void LiesToepfe(CHVMCf & cf, const CString & sMandant, const CStelle & stelle) {
    for (CHVMBgParam & bg : cf.m_vBgParam)
        if (GleicherMandant(bg.m_sMandant, sMandant)) {
            CHVMBgParam leer;
            leer.m_sMandant = bg.m_sMandant;
            leer.m_cArt = bg.m_cArt;
            leer.m_iBw = bg.m_iBw;
            bg = leer;
        }
    stelle.JeMitglied([&](const std::string & sArt, const CStelle & topf) {
        const int i = sArt.size() == 1 ? cf.FindBgParam(sMandant, sArt[0]) : -1;
        if (i < 0) topf.Fehler("diesen Topf gibt es nicht");
        LiesTopf(cf.m_vBgParam[static_cast<std::size_t>(i)], topf);
    });
}

void LiesJahr(CHVMUrParam & ur, const CStelle & stelle) {
    const std::vector<std::string> vKuerzel = WochentagKuerzel();
    stelle.JeMitglied([&](const std::string & sName, const CStelle & wert) {
        if (sName == "arbeitstage") {
            std::ranges::fill(ur.m_abArbeitstag, false);
            wert.JeElement([&](const CStelle & tag) {
                const auto it = std::ranges::find(vKuerzel, tag.Text());
                if (it == vKuerzel.end()) tag.Fehler("erwartet wird einer von mo bis so");
                ur.m_abArbeitstag[it - vKuerzel.begin()] = true;
            });
        } else if (sName == "urlaub") {
            wert.JeElement([&](const CStelle & urlaub) {
                try {
                    ur.m_vUrlaub.push_back(LiesUrlaub(urlaub.Text()));
                } catch (const CLI::ValidationError & fehler) {
                    urlaub.Fehler(fehler.what());
                }
            });
            wert.Pruefe(FehlerUrlaube(ur.m_sJahr.Left(4), ur.m_vUrlaub));
        } else {
            wert.Fehler("diese Angabe gibt es nicht");
        }
    });
}

void LiesJahre(CHVMCf & cf, const CString & sMandant, const CStelle & stelle) {
    std::erase_if(cf.m_vUrParam,
                  [&](const CHVMUrParam & ur) { return GleicherMandant(ur.m_sMandant, sMandant); });
    stelle.JeMitglied([&](const std::string & sJahr, const CStelle & jahr) {
        CHVMUrParam & ur = cf.m_vUrParam.emplace_back();
        ur.m_sMandant = sMandant;
        ur.m_sJahr = AusUtf8(sJahr) + "0101";
        if (!GueltigesDatum(ur.m_sJahr)) jahr.Fehler("das ist kein Jahr");
        LiesJahr(ur, jahr);
    });
}

void LiesInhaber(CHVMCf & cf, const CString & sMandant, const CStelle & stelle) {
    stelle.JeMitglied([&](const std::string & sName, const CStelle & wert) {
        if (sName == "toepfe") return LiesToepfe(cf, sMandant, wert);
        if (sName == "jahre") return LiesJahre(cf, sMandant, wert);
        if (sName != "bw") wert.Fehler("diese Angabe gibt es nicht");
        for (CHVMBgParam & bg : cf.m_vBgParam)
            if (GleicherMandant(bg.m_sMandant, sMandant)) bg.m_iBw = wert.Zahl();
    });
}

bool LoescheReihen(const CString & sKuerzel) {
    CTParPool pool(dbDatabase);
    for (;;) {
        pool.m_GRUPPE = itoc(HVM_GRUPPE);
        pool.m_KUERZEL = sKuerzel;
        const int i = pool.GetByTeilKuerzel();
        if (i != ZEILE_OK) return i == ZEILE_KEINE;
        if (pool.Delete() != ZEILE_OK) return false;
    }
}

} // namespace

std::string FehlerLeistungen(const std::vector<CString> & vLeistungen) {
    std::set<std::string> aGesehen;
    for (const CString & s : vLeistungen) {
        if (s.GetLength() < 2 || s.GetLength() > 7) return '"' + s.Utf8() + "\" hat nicht 2 bis 7 Zeichen";
        CString sGross = s;
        sGross.MakeUpper();
        if (!aGesehen.insert(sGross.Utf8()).second) return '"' + s.Utf8() + "\" steht zweimal in der Liste";
    }
    return {};
}

std::string FehlerAuswahl(const CString & sName, const CString & sAuswahl) {
    if ((sName + sAuswahl).Find('|') >= 0) return "das Zeichen | trennt die Felder der Zeile";
    if (sAuswahl.Left(2) == "ee") return "ein doppeltes e am Anfang liest sich als eines";
    if (!sName.IsEmpty() && sAuswahl.IsEmpty()) return "eine benannte Auswahl ist nicht leer";
    return {};
}

std::string FehlerUrlaube(const CString & sJahr, const CUrlaube & vUrlaube) {
    if (vUrlaube.size() > MAX_URLAUBE)
        return fmt::format("ein Jahr hat höchstens fünf Urlaube, nicht {}", vUrlaube.size());
    for (auto it = vUrlaube.begin(); it != vUrlaube.end(); ++it) {
        const auto & [sVon, sBis] = *it;
        if (sBis < sVon) return Zeitraum(sVon, sBis) + ": das Ende liegt vor dem Anfang";
        if (sVon.Left(4) != sJahr || sBis.Left(4) != sJahr)
            return Zeitraum(sVon, sBis) + " liegt nicht ganz im Jahr " + sJahr.Utf8();
        for (auto itVorher = vUrlaube.begin(); itVorher != it; ++itVorher)
            if (sVon <= itVorher->second && itVorher->first <= sBis)
                return Zeitraum(sVon, sBis) + " überschneidet den Urlaub " +
                       Zeitraum(itVorher->first, itVorher->second);
    }
    return {};
}

std::pair<CString, CString> LiesUrlaub(const std::string & sText) {
    if (const std::size_t iPunkte = sText.find(".."); iPunkte != std::string::npos)
        return {LiesDatum(sText.substr(0, iPunkte)), LiesDatum(sText.substr(iPunkte + 2))};
    // A hyphen stands between two days, and in days, too: the middle one is the one between.
    const auto iStriche = std::ranges::count(sText, '-');
    if (iStriche % 2 == 0) return {LiesDatum(sText), LiesDatum(sText)};
    std::size_t iMitte = sText.find('-');
    for (auto i = iStriche / 2; i > 0; --i)
        iMitte = sText.find('-', iMitte + 1);
    return {LiesDatum(sText.substr(0, iMitte)), LiesDatum(sText.substr(iMitte + 1))};
}

void SchreibeHvmJson(std::ostream & aus, const CHVMCf & cf, const std::vector<CString> & vMandanten) {
    CJson json;
    for (const SHvmSchalter & schalter : HVM_SCHALTER)
        if (schalter.pFlag)
            json["schalter"][schalter.pName] = cf.*schalter.pFlag;
        else
            json["schalter"][schalter.pName] = cf.*schalter.pZahl;
    json["feiertage"] = CJson::array();
    for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
        if (cf.m_abFeiertag[i]) json["feiertage"].push_back(NameDesSchalters(FEIERTAGSSCHALTER[i]));
    json["leistungen"] = CJson::array();
    for (const CString & sLeistung : cf.m_vLeistungen)
        json["leistungen"].push_back(sLeistung.Utf8());
    json["inhaber"] = CJson::object();
    for (const CString & sMandant : vMandanten)
        json["inhaber"][Trim(sMandant).Utf8()] = Inhaber(cf, sMandant);
    aus << json.dump(2, ' ', false, CJson::error_handler_t::replace) << '\n';
}

struct CHvmJson::SInhalt {
    CJson json;
};

CHvmJson::CHvmJson(const std::string & sDatei) : m_pInhalt(std::make_unique<SInhalt>()) {
    std::ifstream datei;
    if (sDatei != "-") datei.open(sDatei, std::ios::binary);
    std::ostringstream inhalt;
    if (datei) inhalt << (sDatei == "-" ? std::cin : datei).rdbuf();
    std::error_code fehler;
    if (sDatei != "-" && !std::filesystem::exists(sDatei, fehler))
        Verweigere("Die Datei \"" + sDatei + "\" gibt es nicht.");
    if (!datei || !inhalt) Verweigere("Die Datei \"" + sDatei + "\" ist leer oder lässt sich nicht lesen.");
    m_pInhalt->json = CJson::parse(inhalt.str(), nullptr, false);
    if (m_pInhalt->json.is_discarded()) Verweigere("Die Datei \"" + sDatei + "\" ist kein JSON.");
}

CHvmJson::~CHvmJson() = default;

void CHvmJson::Setze(CHVMCf & cf) const {
    CStelle(m_pInhalt->json, {}).JeMitglied([&](const std::string & sName, const CStelle & wert) {
        if (sName == "schalter")
            wert.JeMitglied(
                [&](const std::string & s, const CStelle & schalter) { LiesSchalter(cf, s, schalter); });
        else if (sName == "feiertage")
            LiesFeiertage(cf, wert);
        else if (sName == "leistungen")
            LiesLeistungen(cf, wert);
        else if (sName == "inhaber")
            wert.JeMitglied([&](const std::string & s, const CStelle & inhaber) {
                if (s.empty()) inhaber.Fehler("die Nummer des Praxisinhabers fehlt");
                LiesInhaber(cf, MandantOderErster(s), inhaber);
            });
        else
            wert.Fehler("diese Angabe gibt es nicht");
    });
}

bool LoescheEntfallene(const CHVMCf & vorher, const CHVMCf & nachher) {
    for (const CHVMBgParam & bg : vorher.m_vBgParam) {
        const int i = nachher.FindBgParam(bg.m_sMandant, bg.m_cArt);
        for (const auto & [cGruppe, mSel] : bg.m_mSel)
            if ((i < 0 || !nachher.m_vBgParam[static_cast<std::size_t>(i)].m_mSel.contains(cGruppe)) &&
                !LoescheReihen(CString("b") + cGruppe + "-" + RightFix(bg.m_sMandant, 2) + bg.m_cArt))
                return false;
    }
    for (const CHVMUrParam & ur : vorher.m_vUrParam)
        if (nachher.FindUrParam(ur.m_sMandant, ur.m_sJahr) < 0)
            for (const char * pVorsatz : {"at-", "ur-"})
                if (!LoescheReihen(CString(pVorsatz) + RightFix(ur.m_sMandant, 2) + ur.m_sJahr.Left(4)))
                    return false;
    return true;
}

} // namespace orvostat
