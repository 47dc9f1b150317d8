#include "Befehle.h"

#include "Aufruf.h"
#include "Datenbank.h"
#include "Praxis.h"

#include "orvostatbs/calendar/Feiertage.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

namespace orvostat {

namespace {

// What the switches say, for those that say it by their name.
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
    {"MitSonstKas", "sonstige Kassen zählen mit"},
    {"PARMitLab", "Laborbeträge zählen zum PAR-Topf"},
    {"PrimaerTrennung", "Primärkassen getrennt"},
    {"ErsatzTrennung", "Ersatzkassen getrennt"},
    {"RVOFremdTrennung", "fremde RVO-Kassen getrennt"},
    {"ErsatzFremdTrennung", "fremde Ersatzkassen getrennt"},
    {"MitFremd", "fremde Kassen zählen mit"},
    {"PARZuKCH", "PAR zählt zum KCH-Topf"},
    {"KBRZuKCH", "KBR zählt zum KCH-Topf"},
    {"KBRFallgruppen", "KBR nach Fallgruppen"},
    {"PARFallgruppen3", "PAR nach drei Fallgruppen"},
    {"PARNiedersachsen", "PAR nach den Regeln von Niedersachsen"},
};

const char * Schaltertext(std::string_view sName) {
    for (const auto & [pName, pText] : SCHALTERTEXTE)
        if (sName == pName) return pText;
    return "";
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

    // What belongs to no owner, since a writer stores all kinds of rows, and what fLies reads.
    template <class F> void Lies(F fLies) {
        m_cf.ReadEi();
        m_cf.ReadFt();
        m_cf.ReadLs();
        fLies(m_cf);
        VerweigereNachLesefehler(m_gruppe ? "Es wurde nichts geändert. " : "");
    }
    void Lies() {
        Lies([](CHVMCf &) {});
    }
    CHVMCf & operator*() { return m_cf; }
    CHVMCf * operator->() { return &m_cf; }

    void Speichere(bool (CHVMCf::*pSchreibe)() = &CHVMCf::WriteParPool) {
        (m_cf.*pSchreibe)();
        if (!m_gruppe->Beende(m_cf.Gespeichert())) VerweigereSpeichern();
    }

private:
    [[noreturn]] static void VerweigereSpeichern() {
        const std::string sGrund = Fehlergrund(dbDatabase.Speicher().get());
        Verweigere("Die Einstellungen konnten nicht gespeichert werden" +
                   (sGrund.empty() ? "" : ": " + sGrund) + "; es gelten die alten.");
    }

    CPraxis m_praxis; // outlives the group, and this one the walks of the settings
    std::optional<CMxGruppe> m_gruppe;
    CHVMCf m_cf;
};

[[noreturn]] void FalscherWert(const std::string & sOption, const std::string & sText) {
    throw CLI::ValidationError(sOption, sText);
}

bool LiesAnAus(const std::string & sText) {
    if (sText == "1" || sText == "an" || sText == "ja") return true;
    if (sText == "0" || sText == "aus" || sText == "nein") return false;
    FalscherWert("WERT", "\"" + sText + "\" ist weder an noch aus");
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
        const std::string sText = Schaltertext(schalter.pName);
        if (!sText.empty()) sZeile.resize(27, ' ');
        std::cout << sZeile << sText << '\n';
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
    std::cout << "  Topf \"" << bg.m_cArt << "\": " << (bg.m_bAktiv ? "aktiv" : "ruht") << ", Budget "
              << AnAus(bg.m_bBudget) << ", Wert " << bg.m_iWert << '\n';
    for (const auto & [cGruppe, mSel] : bg.m_mSel)
        for (const auto & [sName, sAuswahl] : mSel)
            std::cout << "    Gruppe " << cGruppe << (sName.IsEmpty() ? "" : " \"" + sName.Utf8() + '"')
                      << ": " << sAuswahl.Utf8() << '\n';
}

// The pots that have rows, and all of them if bAlle.
void ZeigeToepfe(const CHVMCf & cf, const CString & sMandant, bool bAlle) {
    const std::string sAktiv = cf.GetSelText(sMandant).Utf8();
    std::cout << "  Aktiv: " << (sAktiv.empty() ? "nichts" : sAktiv);
    const int iErster = cf.FindBgParam(sMandant, cf.m_sBgArten.Erstes());
    if (iErster >= 0) std::cout << "  (bw " << cf.m_vBgParam[static_cast<std::size_t>(iErster)].m_iBw << ')';
    std::cout << '\n';
    for (const CHVMBgParam & bg : cf.m_vBgParam)
        if (bAlle || !bg.m_mSel.empty()) ZeigeTopf(bg);
}

void ZeigeJahre(const CHVMCf & cf) {
    for (const CHVMUrParam & ur : cf.m_vUrParam) {
        std::cout << "  Jahr " << ur.m_sJahr.Left(4).Utf8() << "  Arbeitstage " << Wochentage(ur) << '\n';
        for (const auto & [sVon, sBis] : ur.m_vUrlaub)
            std::cout << "    Urlaub " << Db2Date(sVon).Utf8() << " bis " << Db2Date(sBis).Utf8() << '\n';
    }
}

void Zeige(const std::string & sDatei) {
    CEinstellungen einstellungen(sDatei, false);
    std::vector<std::pair<CString, CHVMCf>> vEigene; // of each owner
    bool bVorhanden = false;
    einstellungen.Lies([&](CHVMCf & cf) {
        bVorhanden = cf.ExistHVMConf();
        for (const CString & sMandant : Mandanten()) {
            CHVMCf & eigene = vEigene.emplace_back(sMandant, CHVMCf()).second;
            eigene.ReadBg(sMandant);
            eigene.ReadUr(sMandant);
        }
    });
    if (!bVorhanden)
        std::cout << "Die Praxis hat noch keine HVM-Einstellungen; es gelten die Anfangswerte.\n";
    ZeigeSchalter(*einstellungen);
    ZeigeFeiertage(*einstellungen);
    ZeigeLeistungen(*einstellungen);
    for (const auto & [sMandant, eigene] : vEigene) {
        std::cout << "Praxisinhaber " << Trim(sMandant).Utf8() << '\n';
        ZeigeToepfe(eigene, sMandant, false);
        ZeigeJahre(eigene);
    }
}

void FuegeShow(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    hvm.add_subcommand("show", "Zeigt alle Einstellungen")->callback([pDatei] { Zeige(*pDatei); });
}

// ---- set

struct SSet {
    std::shared_ptr<std::string> pDatei;
    std::string sName, sWert, sLand;

    void Laufe() const {
        if (sName.empty() == sLand.empty() || (!sName.empty() && sWert.empty()))
            FalscherWert("set", "erwartet entweder SCHALTER WERT oder --land LAND");
        CEinstellungen einstellungen(*pDatei, true);
        einstellungen.Lies();
        if (!sLand.empty())
            SetzeLand(einstellungen);
        else if (!SetzeFeiertag(einstellungen))
            SetzeSchalter(einstellungen);
    }

    void SetzeLand(CEinstellungen & einstellungen) const {
        const CHoliday kalender = KalenderFuer(*FindeBundesland(sLand));
        for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
            einstellungen->m_abFeiertag[i] = kalender.*FEIERTAGSSCHALTER[i];
        SchreibeFeiertage(einstellungen);
    }

    // True if the name is that of a holiday.
    bool SetzeFeiertag(CEinstellungen & einstellungen) const {
        const auto it = std::ranges::find(FEIERTAGSSCHALTER, sName, NameDesSchalters);
        if (it == std::end(FEIERTAGSSCHALTER)) return false;
        einstellungen->m_abFeiertag[it - std::begin(FEIERTAGSSCHALTER)] = LiesAnAus(sWert);
        SchreibeFeiertage(einstellungen);
        return true;
    }

    static void SchreibeFeiertage(CEinstellungen & einstellungen) {
        einstellungen.Speichere(&CHVMCf::WriteFt);
        ZeigeFeiertage(*einstellungen);
    }

    void SetzeSchalter(CEinstellungen & einstellungen) const {
        CHVMCf & cf = *einstellungen;
        const auto it =
            std::ranges::find_if(HVM_SCHALTER, [&](const SHvmSchalter & s) { return s.pName == sName; });
        if (it == std::end(HVM_SCHALTER))
            FalscherWert("SCHALTER", "\"" + sName + "\" gibt es nicht; siehe \"hvm DATEI show\"");
        if (it->pFlag)
            cf.*it->pFlag = LiesAnAus(sWert);
        else if (sWert.size() == 1 && ismxdigit(sWert[0]))
            cf.*it->pZahl = sWert[0] - '0';
        else
            FalscherWert("WERT", sName + " ist eine Ziffer von 0 bis 9");
        einstellungen.Speichere();
        std::cout << sName << " = " << (it->pFlag ? AnAus(cf.*it->pFlag) : sWert.c_str()) << '\n';
    }
};

void FuegeSet(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SSet>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp = hvm.add_subcommand("set", "Ändert einen Schalter oder die Feiertage");
    pApp->add_option("SCHALTER", pBefehl->sName, "Name wie in show, auch der eines Feiertags");
    pApp->add_option("WERT", pBefehl->sWert, "An oder aus; bei Einstell14 eine Ziffer");
    std::vector<std::string> vLaender;
    for (const SBundesland & land : Bundeslaender())
        vLaender.emplace_back(land.sKuerzel);
    pApp->add_option("--land", pBefehl->sLand, "Setzt die neun Feiertage auf die eines Bundeslandes")
        ->check(EinesVon(vLaender))
        ->type_name("LAND");
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
        if (sAuswahl && sGruppe.size() != 1)
            FalscherWert("--gruppe", "zu einer Auswahl gehört ein Gruppenbuchstabe");
        if (!sGruppe.empty() && CHVMCf::s_sBgGruppen.Find(sGruppe[0]) < 0)
            FalscherWert("--gruppe", "erlaubt sind " + CHVMCf::s_sBgGruppen.Utf8());
        CEinstellungen einstellungen(*pDatei, Aendert());
        const CString sId = MandantOderErster(sMandant);
        einstellungen.Lies([&](CHVMCf & cf) { cf.ReadBg(sId); });
        if (Aendert()) {
            Aendere(*einstellungen, Topf(*einstellungen, sId));
            einstellungen.Speichere();
        }
        if (sArt.empty())
            ZeigeToepfe(*einstellungen, sId, true);
        else
            ZeigeTopf(Topf(*einstellungen, sId));
    }

    [[nodiscard]] CHVMBgParam & Topf(CHVMCf & cf, const CString & sId) const {
        const int i = sArt.size() == 1 ? cf.FindBgParam(sId, sArt[0]) : -1;
        if (i < 0)
            FalscherWert("ART", "\"" + sArt + "\" gibt es nicht, erlaubt sind die Zeichen \"" +
                                    cf.m_sBgArten.Utf8() + "\"");
        return cf.m_vBgParam[static_cast<std::size_t>(i)];
    }

    void Aendere(CHVMCf & cf, CHVMBgParam & bg) const {
        if (sAktiv) bg.m_bAktiv = LiesAnAus(*sAktiv);
        if (sBudget) bg.m_bBudget = LiesAnAus(*sBudget);
        if (iWert) bg.m_iWert = *iWert;
        if (iBw)
            for (CHVMBgParam & topf : cf.m_vBgParam)
                topf.m_iBw = *iBw;
        if (sAuswahl) SetzeAuswahl(bg);
        if (bg.m_mSel.empty())
            bg.m_mSel[CHVMCf::s_sBgGruppen.Erstes()]; // a pot's values stand in the rows of groups
    }

    void SetzeAuswahl(CHVMBgParam & bg) const {
        const std::string sBeides = *sAuswahl + sName;
        if (sBeides.find('|') != std::string::npos)
            FalscherWert("--auswahl", "das Zeichen | trennt die Felder der Zeile");
        if (sAuswahl->starts_with("ee"))
            FalscherWert("--auswahl", "ein doppeltes e am Anfang liest sich als eines");
        auto & mSel = bg.m_mSel[sGruppe[0]];
        if (sAuswahl->empty() && !sName.empty())
            mSel.erase(AusUtf8(sName));
        else
            mSel[AusUtf8(sName)] = AusUtf8(*sAuswahl);
    }
};

void FuegePots(CLI::App & hvm, const std::shared_ptr<std::string> & pDatei) {
    const auto pBefehl = std::make_shared<SPots>();
    pBefehl->pDatei = pDatei;
    CLI::App * pApp = hvm.add_subcommand("pots", "Zeigt oder ändert die Töpfe eines Praxisinhabers");
    pApp->add_option("ART", pBefehl->sArt, "Art des Topfes, ein Zeichen; ohne sie werden alle gezeigt");
    pApp->add_option("--mandant", pBefehl->sMandant, "Praxisinhaber, sonst der erste")->type_name("NR");
    pApp->add_option("--aktiv", pBefehl->sAktiv, "An oder aus")->type_name("WERT");
    pApp->add_option("--budget", pBefehl->sBudget, "An oder aus")->type_name("WERT");
    pApp->add_option("--wert", pBefehl->iWert, "Wert des Topfes")->type_name("ZAHL");
    pApp->add_option("--bw", pBefehl->iBw, "bw-Wert des Praxisinhabers")->type_name("ZAHL");
    pApp->add_option("--gruppe", pBefehl->sGruppe, "Gruppenbuchstabe der Auswahl")->type_name("GRUPPE");
    pApp->add_option("--name", pBefehl->sName, "Name der Auswahl; ohne ihn die Hauptauswahl der Gruppe")
        ->type_name("NAME");
    pApp->add_option("--auswahl", pBefehl->sAuswahl, "Neue Auswahl; leer löscht eine benannte")
        ->type_name("TEXT");
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
        if (vUrlaub.size() > 5) FalscherWert("--urlaub", "ein Jahr hat höchstens fünf Urlaube");
        const auto vZeiten = Zeiten();
        CEinstellungen einstellungen(*pDatei, Aendert());
        const CString sId = MandantOderErster(sMandant);
        einstellungen.Lies([&](CHVMCf & cf) { cf.ReadUr(sId); });
        if (Aendert()) {
            Aendere(*einstellungen, sId, vZeiten);
            einstellungen.Speichere();
        }
        if (!sJahr.empty())
            std::erase_if(einstellungen->m_vUrParam,
                          [&](const auto & ur) { return ur.m_sJahr.Left(4) != Jahr(); });
        ZeigeJahre(*einstellungen);
    }

    [[nodiscard]] CString Jahr() const { return AusUtf8(sJahr); }

    [[nodiscard]] std::vector<std::pair<CString, CString>> Zeiten() const {
        std::vector<std::pair<CString, CString>> v;
        for (const std::string & sText : vUrlaub) {
            const std::size_t iTrenner = std::min(sText.find('-'), sText.size());
            const CString sVon = LiesDatum(sText.substr(0, iTrenner));
            const CString sBis = iTrenner == sText.size() ? sVon : LiesDatum(sText.substr(iTrenner + 1));
            if (sBis < sVon) FalscherWert("--urlaub", "\"" + sText + "\" endet vor dem Anfang");
            if (sVon.Left(4) != Jahr() || sBis.Left(4) != Jahr())
                FalscherWert("--urlaub", "\"" + sText + "\" liegt nicht ganz im Jahr " + sJahr);
            v.emplace_back(sVon, sBis);
        }
        return v;
    }

    void Aendere(CHVMCf & cf, const CString & sId,
                 const std::vector<std::pair<CString, CString>> & vZeiten) const {
        int i = cf.FindUrParam(sId, Jahr());
        if (i < 0) {
            i = static_cast<int>(cf.m_vUrParam.size());
            CHVMUrParam & neu = cf.m_vUrParam.emplace_back();
            neu.m_sMandant = sId;
            neu.m_sJahr = Jahr() + "0101";
        }
        CHVMUrParam & ur = cf.m_vUrParam[static_cast<std::size_t>(i)];
        if (!vZeiten.empty() || bKeiner) ur.m_vUrlaub = vZeiten;
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
    pApp->add_option("--mandant", pBefehl->sMandant, "Praxisinhaber, sonst der erste")->type_name("NR");
    pApp->add_option("--urlaub", pBefehl->vUrlaub,
                     "Die Urlaube des Jahres, 01.07.2024-12.07.2024; höchstens fünf")
        ->type_name("VON-BIS");
    pApp->add_flag("--kein-urlaub", pBefehl->bKeiner, "Das Jahr hat keinen Urlaub")->excludes("--urlaub");
    pApp->add_option("--tage", pBefehl->vTage, "Die Arbeitstage des Jahres, zum Beispiel mo,di,mi,do,fr")
        ->delimiter(',')
        ->check(EinesVon(WochentagKuerzel()))
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
        for (const std::string & sText : vLeistungen) {
            vNeu.push_back(TrimRight(AusUtf8(sText)));
            if (vNeu.back().GetLength() < 2 || vNeu.back().GetLength() > 7)
                FalscherWert("LEISTUNG", "\"" + sText + "\" hat nicht 2 bis 7 Zeichen");
        }
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
    CLI::Option * pListe = pApp->add_option("LEISTUNG", pBefehl->vLeistungen, "Die neue Liste");
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
