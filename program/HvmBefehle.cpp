#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Feiertagsausgabe.h"
#include "HvmDatei.h"
#include "Praxis.h"

#include "orvostatbs/calendar/Feiertage.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

// What the switches say by their name. What they do is the business of the statistic that reads them.
constexpr struct {
    const char * pName;
    const char * pText;
} SCHALTERTEXTE[] = {
    {"KBRMitLab", "Laborbeträge zählen zum KBR-Topf"},
    {"KCHMitKFO", "KFO zählt zum KCH-Topf"},
    {"KCHMitIP", "Individualprophylaxe zählt zum KCH-Topf"},
    {"KFOMitLab", "Laborbeträge zählen zum KFO-Topf"},
    {"KFOMitIP", "Individualprophylaxe zählt zum KFO-Topf"},
    {"KFOMitSach", "Sachleistungen zählen zum KFO-Topf"},
    {"KFONurRoe", "im KFO-Topf nur Röntgenleistungen"},
    {"KFOMitNeufall", "neue KFO-Fälle werden gezählt"},
    {"MitBKS", "BKS zählt mit"},
    {"MitSonstKas", "sonstige Kassen zählen mit"},
    {"PARMitLab", "Laborbeträge zählen zum PAR-Topf"},
    {"PrimaerTrennung", "Primärkassen getrennt"},
    {"ErsatzTrennung", "Ersatzkassen getrennt"},
    {"RVOFremdTrennung", "fremde RVO-Kassen getrennt"},
    {"ErsatzFremdTrennung", "fremde Ersatzkassen getrennt"},
    {"MitFremd", "fremde Kassen zählen mit"},
    {"MitWso4", "Versicherte mit dem Regionskennzeichen (WSO) 4 zählen mit"},
    {"MitBPG9", "Versicherte der besonderen Personengruppe (BPG) 9 zählen mit"},
    {"MitKKGeb", "Kassengebühren (kkgeb, kkent) zählen mit"},
    {"PARZuKCH", "PAR zählt zum KCH-Topf"},
    {"KBRZuKCH", "KBR zählt zum KCH-Topf"},
    {"KBRFallgruppen", "KBR nach Fallgruppen"},
    {"PARFallgruppen3", "PAR nach drei Fallgruppen"},
    {"PARNiedersachsen", "PAR nach den Regeln von Niedersachsen"},
};

std::string Schaltertext(const SHvmSchalter & schalter) {
    for (const auto & [pName, pText] : SCHALTERTEXTE)
        if (std::string_view(schalter.pName) == pName) return pText;
    return "ohne Namen, Stelle " + std::to_string(schalter.iStelle) + " der Reihe einstell" +
           (schalter.eZeile == EHvmZeile::Einstell ? "" : "x") + (schalter.pFlag ? "" : ", eine Ziffer");
}

// The pots whose letter says what they hold.
constexpr SBuchstabe POTNAMEN[] = {{'c', "konservierend-chirurgisch, KCH"},
                                   {'z', "Zahnersatz, ZE"},
                                   {'k', "Kieferorthopädie, KFO"},
                                   {'b', "Kieferbruch, KBR"},
                                   {'p', "Parodontologie, PAR"},
                                   {'2', "Zahnersatz, ZE"}};

std::string Topfname(char cArt) {
    const SBuchstabe * pName = FindeBuchstabe(POTNAMEN, cArt);
    return pName == nullptr ? "freier Topf" : pName->pName;
}

// ---- reading and writing

// The settings of a practice, to be shown or changed. To be changed they are read and written in one group of the
// store, so that of two who change settings at the same time the second one reads what the first has written. Ends
// the command rather than show or write start values in the place of settings that cannot be read.
class CEinstellungen {
public:
    CEinstellungen(const std::string & sDatei, bool bAendern)
        : m_praxis(sDatei, bAendern ? EModus::Schreiben : EModus::Lesen) {
        if (!bAendern) return;
        m_gruppe.emplace(dbDatabase);
        if (!m_gruppe->Offen()) VerweigereSpeichern();
    }

    // What belongs to no owner, since a writer stores all kinds of rows, and of these owners everything.
    void Lies(const std::vector<CString> & vMandanten = {}) {
        m_vMandanten = vMandanten;
        m_cf.Init();
        m_cf.ReadEi();
        m_cf.ReadFt();
        m_cf.ReadLs();
        for (const CString & sMandant : vMandanten) {
            m_cf.ReadBg(sMandant);
            m_cf.ReadUr(sMandant);
        }
        VerweigereNachLesefehler(m_gruppe ? "Es wurde nichts geändert. " : "");
    }
    CHVMCf & operator*() { return m_cf; }
    CHVMCf * operator->() { return &m_cf; }

    // Stores what is in the fields by these operations; then the fields hold what the rows say.
    void Speichere(std::initializer_list<bool (CHVMCf::*)()> vSchreibe = {&CHVMCf::WriteParPool}) {
        bool bGespeichert = true;
        for (const auto pSchreibe : vSchreibe) {
            (m_cf.*pSchreibe)();
            bGespeichert = bGespeichert && m_cf.Gespeichert();
        }
        SchliesseAb(bGespeichert);
    }
    void SpeichereAlles(const CHVMCf & vorher) {
        if (!LoescheEntfallene(vorher, m_cf)) SchliesseAb(false);
        Speichere({&CHVMCf::WriteParPool, &CHVMCf::WriteFt});
    }

private:
    void SchliesseAb(bool bGespeichert) {
        if (!m_gruppe->Beende(bGespeichert)) VerweigereSpeichern();
        m_gruppe.reset();
        Lies(m_vMandanten);
    }
    [[noreturn]] static void VerweigereSpeichern() {
        const std::string sGrund = Fehlergrund(dbDatabase.Speicher().get());
        Verweigere("Die Einstellungen konnten nicht gespeichert werden" +
                   (sGrund.empty() ? "" : ": " + sGrund) + "; es gelten die alten.");
    }

    CPraxis m_praxis; // outlives the group, and this one the walks of the settings
    std::optional<CMxGruppe> m_gruppe;
    CHVMCf m_cf;
    std::vector<CString> m_vMandanten;
};

[[noreturn]] void FalscherWert(const std::string & sOption, const std::string & sText) {
    throw CLI::ValidationError(sOption, sText);
}

bool LiesAnAus(const std::string & sOption, const std::string & sText) {
    const auto Ist = [&](const char * pWort) { return GleichesWort(sText, pWort); };
    if (Ist("1") || Ist("an") || Ist("ja")) return true;
    if (Ist("0") || Ist("aus") || Ist("nein")) return false;
    FalscherWert(sOption, "\"" + sText + "\" ist weder an noch aus");
}

const char * AnAus(bool b) { return b ? "an" : "aus"; }

// ---- show

std::string Wochentage(const CHVMUrParam & ur) {
    const std::vector<std::string> vKuerzel = WochentagKuerzel();
    std::string s;
    for (std::size_t i = 0; i < vKuerzel.size(); ++i)
        if (ur.m_abArbeitstag[i]) s += (s.empty() ? "" : ",") + vKuerzel[i];
    return s.empty() ? "keine" : s;
}

void ZeigeSchalter(const CHVMCf & cf) {
    std::cout << "Schalter\n";
    for (const SHvmSchalter & schalter : HVM_SCHALTER) {
        std::string sZeile = "  ";
        sZeile += schalter.pFlag ? AnAus(cf.*schalter.pFlag) : std::to_string(cf.*schalter.pZahl);
        sZeile.resize(7, ' ');
        sZeile += schalter.pName;
        sZeile.resize(27, ' ');
        std::cout << sZeile << Schaltertext(schalter) << '\n';
    }
}

void ZeigeFeiertage(const CHVMCf & cf) {
    std::string s;
    for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
        if (cf.m_abFeiertag[i]) s += (s.empty() ? "" : ", ") + NameDesSchalters(FEIERTAGSSCHALTER[i]);
    std::cout << "Feiertage neben den bundesweiten\n  " << (s.empty() ? "keine" : s) << '\n';
}

void ZeigeLeistungen(const CHVMCf & cf) {
    std::cout << "Leistungen\n ";
    for (const CString & sLeistung : cf.m_vLeistungen)
        std::cout << ' ' << sLeistung.Utf8();
    std::cout << (cf.m_vLeistungen.empty() ? " keine\n" : "\n");
}

void ZeigeTopf(const CHVMBgParam & bg) {
    std::cout << "  Topf \"" << bg.m_cArt << "\" (" << Topfname(bg.m_cArt)
              << "): " << (bg.m_bAktiv ? "aktiv" : "ruht") << ", Budget " << AnAus(bg.m_bBudget) << ", Wert "
              << bg.m_iWert << '\n';
    for (const auto & [cGruppe, mSel] : bg.m_mSel)
        for (const auto & [sName, sAuswahl] : mSel)
            std::cout << "    Gruppe " << cGruppe << (sName.IsEmpty() ? "" : " \"" + sName.Utf8() + '"')
                      << ": " << sAuswahl.Utf8() << '\n';
}

bool GleicherMandant(const CString & sA, const CString & sB) { return RightFix(sA, 2) == RightFix(sB, 2); }

void ZeigeInhaber(const CString & sMandant) {
    std::cout << "Praxisinhaber " << Trim(sMandant).Utf8() << '\n';
}

// The owner's pots that have rows, and all of them if bAlle.
void ZeigeToepfe(const CHVMCf & cf, const CString & sMandant, bool bAlle) {
    const std::string sAktiv = cf.GetSelText(sMandant).Utf8();
    std::cout << "  Aktiv: " << (sAktiv.empty() ? "nichts" : sAktiv);
    const int iErster = cf.FindBgParam(sMandant, cf.m_sBgArten.Erstes());
    if (iErster >= 0) std::cout << "  (bw " << cf.m_vBgParam[static_cast<std::size_t>(iErster)].m_iBw << ')';
    std::cout << '\n';
    for (const CHVMBgParam & bg : cf.m_vBgParam)
        if (GleicherMandant(bg.m_sMandant, sMandant) && (bAlle || !bg.m_mSel.empty())) ZeigeTopf(bg);
}

// The owner's years, or the one of them.
void ZeigeJahre(const CHVMCf & cf, const CString & sMandant, const CString & sJahr = {}) {
    for (const CHVMUrParam & ur : cf.m_vUrParam) {
        if (!GleicherMandant(ur.m_sMandant, sMandant) || (!sJahr.IsEmpty() && ur.m_sJahr.Left(4) != sJahr))
            continue;
        std::cout << "  Jahr " << ur.m_sJahr.Left(4).Utf8() << "  Arbeitstage " << Wochentage(ur) << '\n';
        for (const auto & [sVon, sBis] : ur.m_vUrlaub)
            std::cout << "    Urlaub " << Db2Date(sVon).Utf8() << " bis " << Db2Date(sBis).Utf8() << '\n';
    }
}

void ZeigeAlles(const CHVMCf & cf, const std::vector<CString> & vMandanten) {
    ZeigeSchalter(cf);
    ZeigeFeiertage(cf);
    ZeigeLeistungen(cf);
    for (const CString & sMandant : vMandanten) {
        ZeigeInhaber(sMandant);
        ZeigeToepfe(cf, sMandant, false);
        ZeigeJahre(cf, sMandant);
    }
}

constexpr const char * JSON = "json";

void Zeige(const std::string & sDatei, const std::string & sFormat) {
    CEinstellungen einstellungen(sDatei, false);
    const std::vector<CString> vMandanten = Mandanten();
    const bool bVorhanden = einstellungen->ExistHVMConf();
    einstellungen.Lies(vMandanten);
    if (!bVorhanden)
        std::cerr << "Die Praxis hat noch keine HVM-Einstellungen; es gelten die Anfangswerte.\n";
    if (sFormat == JSON) return SchreibeHvmJson(std::cout, *einstellungen, vMandanten);
    ZeigeAlles(*einstellungen, vMandanten);
}

void FuegeShow(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pFormat = std::make_shared<std::string>();
    CLI::App * pApp = hvm.add_subcommand("show", "Zeigt alle Einstellungen");
    pApp->add_option("--format", *pFormat, "table, oder json, wie set --aus es liest")
        ->transform(Wortwahl({"table", JSON}))
        ->type_name("FORMAT");
    pApp->callback([pDatei, pFormat] { Zeige(*pDatei, *pFormat); });
}

// ---- set

struct SSet {
    std::shared_ptr<std::string> pDatei;
    std::string sName, sWert, sLand, sAus;

    void Laufe() const {
        const int iAngaben = int{!sName.empty()} + int{!sLand.empty()} + int{!sAus.empty()};
        if (iAngaben != 1 || (!sName.empty() && sWert.empty()))
            FalscherWert("set", "erwartet entweder SCHALTER WERT, --land LAND oder --aus DATEI");
        if (!sAus.empty()) return SetzeAlles();
        CEinstellungen einstellungen(*pDatei, true);
        einstellungen.Lies();
        if (!sLand.empty())
            SetzeLand(einstellungen);
        else if (!SetzeFeiertag(einstellungen))
            SetzeSchalter(einstellungen);
    }

    void SetzeAlles() const {
        const CHvmJson json(sAus);
        CEinstellungen einstellungen(*pDatei, true);
        const std::vector<CString> vMandanten = Mandanten();
        einstellungen.Lies(vMandanten);
        const CHVMCf vorher = *einstellungen;
        json.Setze(*einstellungen);
        einstellungen.SpeichereAlles(vorher);
        ZeigeAlles(*einstellungen, vMandanten);
    }

    void SetzeLand(CEinstellungen & einstellungen) const {
        const CHoliday kalender = KalenderFuer(*FindeBundesland(sLand));
        for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
            einstellungen->m_abFeiertag[i] = kalender.*FEIERTAGSSCHALTER[i];
        SpeichereFeiertage(einstellungen);
        for (const CFerien & tag : kalender.m_vFerien)
            std::cout << "  " << tag.m_sName.Utf8()
                      << " hat keinen Schalter; \"kalender\", \"arbeitstage\" und "
                      << "\"naechster\" kennen ihn mit --land " << sLand << '\n';
    }

    // True if the name is that of a holiday.
    bool SetzeFeiertag(CEinstellungen & einstellungen) const {
        const auto it = std::ranges::find_if(FEIERTAGSSCHALTER, [&](const auto pSchalter) {
            return AusUtf8(NameDesSchalters(pSchalter)).CompareNoCase(AusUtf8(sName)) == 0;
        });
        if (it == std::end(FEIERTAGSSCHALTER)) return false;
        einstellungen->m_abFeiertag[it - std::begin(FEIERTAGSSCHALTER)] = LiesAnAus("WERT", sWert);
        SpeichereFeiertage(einstellungen);
        return true;
    }

    static void SpeichereFeiertage(CEinstellungen & einstellungen) {
        einstellungen.Speichere({&CHVMCf::WriteFt});
        ZeigeFeiertage(*einstellungen);
    }

    [[noreturn]] void KeinSchalter() const {
        std::vector<std::string> vNamen;
        for (const SHvmSchalter & schalter : HVM_SCHALTER)
            vNamen.emplace_back(schalter.pName);
        for (const auto pSchalter : FEIERTAGSSCHALTER)
            vNamen.push_back(NameDesSchalters(pSchalter));
        const std::string sVorschlag = Vorschlag(sName, vNamen);
        FalscherWert("SCHALTER", "\"" + sName + "\" gibt es nicht." +
                                     (sVorschlag.empty() ? " \"hvm DATEI show\" nennt alle." : sVorschlag));
    }

    void SetzeSchalter(CEinstellungen & einstellungen) const {
        CHVMCf & cf = *einstellungen;
        const auto it = std::ranges::find_if(
            HVM_SCHALTER, [&](const SHvmSchalter & s) { return GleichesWort(s.pName, sName); });
        if (it == std::end(HVM_SCHALTER)) KeinSchalter();
        if (it->pFlag)
            cf.*it->pFlag = LiesAnAus("WERT", sWert);
        else if (sWert.size() == 1 && ismxdigit(sWert[0]))
            cf.*it->pZahl = sWert[0] - '0';
        else
            FalscherWert("WERT", std::string(it->pName) + " ist eine Ziffer von 0 bis 9");
        einstellungen.Speichere();
        std::cout << it->pName << " = " << (it->pFlag ? AnAus(cf.*it->pFlag) : std::to_string(cf.*it->pZahl))
                  << '\n';
    }
};

void FuegeSet(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SSet>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp = hvm.add_subcommand("set", "Ändert einen Schalter, die Feiertage oder alles");
    pApp->add_option("SCHALTER", pBefehl->sName, "Name wie in show, auch der eines Feiertags");
    pApp->add_option("WERT", pBefehl->sWert, "An oder aus; bei Einstell14 eine Ziffer");
    pApp->add_option("--land", pBefehl->sLand, "Setzt die neun Feiertage auf die eines Bundeslandes")
        ->transform(Wortwahl(Landeskuerzel()))
        ->type_name("LAND");
    pApp->add_option(
            "--aus", pBefehl->sAus,
            "Setzt, was in einer Datei steht, wie show --format json sie schreibt; - ist die Eingabe")
        ->check(NichtLeer())
        ->type_name("DATEI");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- pots

struct SPots {
    std::shared_ptr<std::string> pDatei;
    std::string sArt, sMandant, sGruppe, sName;
    std::optional<std::string> sAktiv, sBudget, sAuswahl;
    std::optional<std::int32_t> iWert, iBw;

    [[nodiscard]] bool Aendert() const { return sAktiv || sBudget || sAuswahl || iWert || iBw; }

    void Laufe() const {
        if (Aendert() && sArt.empty()) FalscherWert("ART", "zum Ändern eines Topfes fehlt seine Art");
        if (sAuswahl && (sGruppe.size() != 1 || CHVMCf::s_sBgGruppen.Find(sGruppe[0]) < 0))
            FalscherWert("--gruppe", "erlaubt ist einer der Buchstaben " + CHVMCf::s_sBgGruppen.Utf8());
        CEinstellungen einstellungen(*pDatei, Aendert());
        const CString sId = MandantOderErster(sMandant);
        einstellungen.Lies({sId});
        if (Aendert()) {
            Aendere(*einstellungen, Topf(*einstellungen, sId));
            einstellungen.Speichere();
        }
        const CHVMBgParam * const pTopf = sArt.empty() ? nullptr : &Topf(*einstellungen, sId);
        ZeigeInhaber(sId);
        if (pTopf == nullptr)
            ZeigeToepfe(*einstellungen, sId, true);
        else
            ZeigeTopf(*pTopf);
    }

    [[nodiscard]] CHVMBgParam & Topf(CHVMCf & cf, const CString & sId) const {
        const int i = sArt.size() == 1 ? cf.FindBgParam(sId, CLI::detail::to_lower(sArt)[0]) : -1;
        if (i < 0)
            FalscherWert("ART", "\"" + sArt + "\" gibt es nicht, erlaubt sind die Zeichen \"" +
                                    cf.m_sBgArten.Utf8() + "\"");
        return cf.m_vBgParam[static_cast<std::size_t>(i)];
    }

    void Aendere(CHVMCf & cf, CHVMBgParam & bg) const {
        if (sAktiv) bg.m_bAktiv = LiesAnAus("--aktiv", *sAktiv);
        if (sBudget) bg.m_bBudget = LiesAnAus("--budget", *sBudget);
        if (iWert) bg.m_iWert = *iWert;
        if (iBw)
            for (CHVMBgParam & topf : cf.m_vBgParam)
                topf.m_iBw = *iBw;
        if (sAuswahl) SetzeAuswahl(bg);
        if (bg.m_mSel.empty())
            bg.m_mSel[CHVMCf::s_sBgGruppen.Erstes()]; // a pot's values stand in the rows of groups
    }

    void SetzeAuswahl(CHVMBgParam & bg) const {
        const bool bLoesche = sAuswahl->empty() && !sName.empty();
        const std::string sFehler =
            FehlerAuswahl(AusUtf8(sName), bLoesche ? CString("-") : AusUtf8(*sAuswahl));
        if (!sFehler.empty()) FalscherWert("--auswahl", sFehler);
        auto & mSel = bg.m_mSel[sGruppe[0]];
        if (bLoesche)
            mSel.erase(AusUtf8(sName));
        else
            mSel[AusUtf8(sName)] = AusUtf8(*sAuswahl);
    }
};

// "c konservierend-chirurgisch, KCH; ..." and the letters that have no name.
std::string Topfarten() {
    std::string s;
    std::string sFreie;
    const CString sArten = CHVMCf().m_sBgArten;
    const CSicht sicht(sArten);
    for (const char c : sicht.Text())
        if (FindeBuchstabe(POTNAMEN, c) == nullptr)
            sFreie += c == ' ' ? ", Leerzeichen" : std::string(", ") + c;
        else
            s += std::string(1, c) + ' ' + Topfname(c) + "; ";
    return s + "frei: " + sFreie.substr(2);
}

void FuegePots(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SPots>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp = hvm.add_subcommand("pots", "Zeigt oder ändert die Töpfe eines Praxisinhabers");
    pApp->add_option("ART", pBefehl->sArt,
                     "Art des Topfes, ein Zeichen (" + Topfarten() + "); ohne: alle Töpfe");
    pApp->add_option("--mandant", pBefehl->sMandant, "Praxisinhaber, sonst der erste")
        ->check(NichtLeer())
        ->type_name("NR");
    pApp->add_option("--aktiv", pBefehl->sAktiv, "An oder aus: ob der Topf zählt")->type_name("WERT");
    pApp->add_option("--budget", pBefehl->sBudget, "An oder aus: ob er ein Budget hat")->type_name("WERT");
    pApp->add_option("--wert", pBefehl->iWert, "Wert des Topfes")->type_name("ZAHL");
    pApp->add_option("--bw", pBefehl->iBw, "bw-Wert des Praxisinhabers, in allen seinen Töpfen")
        ->type_name("ZAHL");
    CLI::Option * pAuswahl =
        pApp->add_option("--auswahl", pBefehl->sAuswahl, "Neue Auswahl; leer löscht eine benannte")
            ->type_name("AUSWAHL");
    CLI::Option * pGruppe =
        pApp->add_option("--gruppe", pBefehl->sGruppe,
                         "Gruppe der Auswahl, einer der Buchstaben " + CHVMCf::s_sBgGruppen.Utf8() +
                             "; welche Leistungen sie hat, sagt die Auswertung")
            ->needs(pAuswahl)
            ->type_name("GRUPPE");
    pAuswahl->needs(pGruppe);
    pApp->add_option("--name", pBefehl->sName, "Name der Auswahl; ohne ihn die Hauptauswahl der Gruppe")
        ->needs(pAuswahl)
        ->type_name("NAME");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- vacation

struct SVacation {
    std::shared_ptr<std::string> pDatei;
    std::string sJahr, sMandant;
    std::vector<std::string> vUrlaub, vTage;
    bool bKeiner = false;

    [[nodiscard]] bool Aendert() const { return !vUrlaub.empty() || !vTage.empty() || bKeiner; }

    void Laufe() const {
        if (!sJahr.empty() && !GueltigesDatum(Jahr() + "0101"))
            FalscherWert("JAHR", "\"" + sJahr + "\" ist kein Jahr");
        if (Aendert() && sJahr.empty()) FalscherWert("JAHR", "zum Ändern fehlt das Jahr");
        CUrlaube vZeiten;
        for (const std::string & sText : vUrlaub)
            vZeiten.push_back(LiesUrlaub(sText));
        CEinstellungen einstellungen(*pDatei, Aendert());
        const CString sId = MandantOderErster(sMandant);
        einstellungen.Lies({sId});
        if (Aendert()) {
            Aendere(*einstellungen, sId, vZeiten);
            einstellungen.Speichere();
        }
        ZeigeInhaber(sId);
        ZeigeJahre(*einstellungen, sId, Jahr());
    }

    [[nodiscard]] CString Jahr() const { return AusUtf8(sJahr); }

    // Vacations are added to those of the year, or stand in their place.
    void Aendere(CHVMCf & cf, const CString & sId, const CUrlaube & vZeiten) const {
        int i = cf.FindUrParam(sId, Jahr());
        if (i < 0) {
            i = static_cast<int>(cf.m_vUrParam.size());
            CHVMUrParam & neu = cf.m_vUrParam.emplace_back();
            neu.m_sMandant = sId;
            neu.m_sJahr = Jahr() + "0101";
        }
        CHVMUrParam & ur = cf.m_vUrParam[static_cast<std::size_t>(i)];
        if (bKeiner) ur.m_vUrlaub.clear();
        std::ranges::copy(vZeiten, std::back_inserter(ur.m_vUrlaub));
        if (!vZeiten.empty())
            if (const std::string s = FehlerUrlaube(Jahr(), ur.m_vUrlaub); !s.empty())
                FalscherWert("--urlaub", s);
        if (!vTage.empty())
            for (std::size_t k = 0; k < std::size(ur.m_abArbeitstag); ++k)
                ur.m_abArbeitstag[k] = std::ranges::find(vTage, WochentagKuerzel()[k]) != vTage.end();
    }
};

void FuegeVacation(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SVacation>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp =
        hvm.add_subcommand("vacation", "Zeigt oder ändert Arbeitstage und Urlaube eines Jahres");
    pApp->add_option("JAHR", pBefehl->sJahr, "Ohne das Jahr werden alle gezeigt");
    pApp->add_option("--mandant", pBefehl->sMandant, "Praxisinhaber, sonst der erste")
        ->check(NichtLeer())
        ->type_name("NR");
    pApp->add_option("--urlaub", pBefehl->vUrlaub,
                     "Kommt zu den Urlauben des Jahres, 01.07.2024..12.07.2024; ein Jahr hat höchstens fünf")
        ->delimiter(',')
        ->check(NichtLeer())
        ->type_name("VON..BIS");
    pApp->add_flag("--kein-urlaub", pBefehl->bKeiner,
                   "Streicht die Urlaube des Jahres; mit --urlaub gelten nur die neuen");
    pApp->add_option("--tage", pBefehl->vTage, "Die Arbeitstage des Jahres, zum Beispiel mo,di,mi,do,fr")
        ->delimiter(',')
        ->transform(Wortwahl(WochentagKuerzel()))
        ->type_name("TAGE");
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

// ---- services

struct SServices {
    std::shared_ptr<std::string> pDatei;
    std::vector<std::string> vLeistungen;
    bool bKeine = false;

    void Laufe() const {
        std::vector<CString> vNeu;
        for (const std::string & sText : vLeistungen)
            vNeu.push_back(Trim(AusUtf8(sText)));
        if (const std::string s = FehlerLeistungen(vNeu); !s.empty()) FalscherWert("LEISTUNG", s);
        const bool bAendert = bKeine || !vNeu.empty();
        CEinstellungen einstellungen(*pDatei, bAendert);
        einstellungen.Lies();
        if (bAendert) {
            einstellungen->m_vLeistungen = vNeu;
            einstellungen.Speichere();
        }
        ZeigeLeistungen(*einstellungen);
    }
};

void FuegeServices(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SServices>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp = hvm.add_subcommand("services", "Zeigt oder ersetzt die Liste der Leistungen");
    CLI::Option * pListe =
        pApp->add_option("LEISTUNG", pBefehl->vLeistungen, "Die neue Liste, auch mit Komma")->delimiter(',');
    pApp->add_flag("--keine", pBefehl->bKeine, "Leert die Liste")->excludes(pListe);
    pApp->callback([pBefehl] { pBefehl->Laufe(); });
}

} // namespace

void FuegeHvmHinzu(CLI::App & app) {
    const auto pDatei = std::make_shared<std::string>();
    CLI::App * pHvm = app.add_subcommand("hvm", "Einstellungen der Honorarverteilung einer Praxis");
    pHvm->add_option("DATEI", *pDatei, "Die Praxisdatei")->required();
    pHvm->require_subcommand(1);
    FuegeShow(*pHvm, pDatei);
    FuegeSet(*pHvm, pDatei);
    FuegePots(*pHvm, pDatei);
    FuegeVacation(*pHvm, pDatei);
    FuegeServices(*pHvm, pDatei);
}

} // namespace orvostat
