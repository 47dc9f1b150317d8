#include "Saetze.h"

#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Praxis.h"
#include "Pruefsumme.h"

#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

constexpr const char * ABSCHNITT = "OrvoStat";
constexpr long BLOCKZEILEN = 1000;
constexpr std::size_t NAME_HOECHSTENS = 64;
constexpr const char * SATZVERSION = "1";

// ---- layouts

// All that a hit needs for the tables of run and of the service statistics.
constexpr const char * ALLES =
    "ART;PATNR;PATNAME;PATVORNAME;PATGEBDATUM;SELEKTION;PRAXISNR;BEHANDLERNR;ERFASSER;DATUM;SITZUNG;"
    "LFDBEHEINTRAG;"
    "TEETH;ANZAHL;EINHEIT;LSTIN;LSTNR;FAKTOR;BETRAG;ABRART;GOART;LAGE;UHRZEIT;ENTFERNUNG;DTAGRUND;TEXTART;"
    "TEXT;"
    "ICDCODE;ICDNOTATIONSKZ;PLANNR;FAKT1;FAKT2;ABRMERKMAL;KASSENABR;LSTKUERZEL;GOSUBART;DRUCKBILD;"
    "EINFACHSATZ;"
    "LFDBEFENTRY;BEFUND;KASKUERZEL;VDABDATUM;VDBISDATUM;MFRDIG;WSO;ISPRIVATPATIENT;PUNKTE;PUNKTWERT;PWLART;"
    "KASSENPWGRP;ZUSCHLAG;MWSTSATZ;GOSTATISTIKART;KASSTATISTIKART;KASSENART;KASSENGRP;FREMDKASSE;"
    "PROVISONSGRP;"
    "PROVISONSWERT;LFDLBLOCK";

struct SLayout {
    const char * pWort;
    int * pStruct; // null: the program's own
};
const SLayout LAYOUTS[] = {{"alles", nullptr},    {"fs", iFS_SICHERUNG}, {"ts", iTS_SICHERUNG},
                           {"tp", iTP_SICHERUNG}, {"ls", iLS_SICHERUNG}, {"kzv", iKZV_SICHERUNG}};

// Finds titles; the catalogue is the evaluator's.
class CTitel : public CStatEval<CStdioFile> {
public:
    CTitel() : CStatEval(nullptr) {}
    std::vector<int> Suche(const char * pTitel) {
        std::vector<int> v;
        std::istringstream ein(pTitel);
        for (std::string s; std::getline(ein, s, ';');)
            v.push_back(FindFieldTitel(AusUtf8(s)));
        v.push_back(-1);
        return v;
    }
};

// Null for a word that is none.
int * Layout(const std::string & sWort) {
    const auto * const p = std::ranges::find(LAYOUTS, sWort, &SLayout::pWort);
    if (p == std::end(LAYOUTS)) return nullptr;
    static std::vector<int> s_viAlles = CTitel().Suche(ALLES);
    return p->pStruct == nullptr ? s_viAlles.data() : p->pStruct;
}

std::size_t Spaltenzahl(const int * pStruct) {
    std::size_t i = 0;
    while (pStruct[i] >= 0)
        ++i;
    return i;
}

bool HatSpalte(const int * pStruct, const char * pTitel) {
    const int * const pEnde = pStruct + Spaltenzahl(pStruct);
    return std::find(pStruct, pEnde, CTitel().Suche(pTitel).front()) != pEnde;
}

// ---- names and places

// A name that some system takes for a device, whatever stands behind a point.
bool IstGeraet(std::string sName) {
    sName.resize(std::min(sName.find('.'), sName.size()));
    std::ranges::transform(sName, sName.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    static const std::vector<std::string> GERAETE = {"CON", "PRN", "AUX", "NUL"};
    if (std::ranges::find(GERAETE, sName) != GERAETE.end()) return true;
    return sName.size() == 4 && (sName.starts_with("COM") || sName.starts_with("LPT")) &&
           std::isdigit(sName[3]) != 0;
}

void PruefeName(const std::string & sName) {
    const CString s1252 = AusUtf8(sName);
    std::string sGrund;
    if (sName.empty())
        sGrund = "er ist leer";
    else if (static_cast<std::size_t>(s1252.GetLength()) > NAME_HOECHSTENS)
        sGrund = fmt::format("er ist länger als {} Zeichen", NAME_HOECHSTENS);
    else if (s1252.Utf8() != sName)
        sGrund = "er hat Zeichen, die Windows-1252 fehlen";
    else if (sName.front() == '.' || sName.back() == '.' || sName.front() == ' ' || sName.back() == ' ')
        sGrund = "er beginnt oder endet mit Punkt oder Leerzeichen";
    else if (std::ranges::any_of(sName, [](unsigned char c) {
                 return c < 0x20 || c == 0x7F ||
                        std::string_view("\\/:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
             }))
        sGrund = "er hat ein Zeichen, das in Dateinamen nicht geht";
    else if (IstGeraet(sName))
        sGrund = "so heißt ein Gerät";
    if (!sGrund.empty()) Verweigere("\"" + sName + "\" ist kein Name für eine Statistik: " + sGrund + '.');
}

// The place as a path text that ends in "\".
CString Ort(const std::string & sPraxisdatei, const SSatzoptionen & optionen) {
    if (optionen.bImBestand) return GetOrvoStatPath();
    if (!optionen.sOrdner.empty()) return Verzeichnistext(fs::absolute(optionen.sOrdner).string());
    if (IstServer(sPraxisdatei))
        Verweigere(
            "Neben einer Praxis auf dem Server liegt kein Ordner; --daten oder --im-bestand sagt, wohin.");
    return Verzeichnistext((fs::absolute(sPraxisdatei).parent_path() / "stat").string());
}

// ---- the files themselves

template <class T> class CSatzschreiber : public CStat2File<T> {
public:
    CSatzschreiber(CStatAccu & accu, CString sPfad, int * pStruct)
        : CStat2File<T>(nullptr), m_sPfad(std::move(sPfad)), m_pLayout(pStruct) {
        this->SetFilter(&accu);
        this->m_sStatistikart = "LAUF";
        this->SetStatVersion(SATZVERSION);
    }
    [[nodiscard]] bool Abgebrochen() const { return m_bAbgebrochen; }
    int * SetLineStruct() override { return m_pLayout; }
    long GetGesamtPos() override { return static_cast<long>(this->m_pFilter->m_vBehHits.size()); }
    CString GetDatFilename() override { return m_sPfad + ".SVE"; }
    CString GetIniFilename() override { return m_sPfad + ".ISV"; }
    int DoData(T & file, int & iCount) override {
        this->WriteTitel(file);
        for (const CBehHitLine & hit : this->m_pFilter->m_vBehHits) {
            if (!this->DoProgress(++this->m_lPos, this->m_lGesamtPos)) {
                m_bAbgebrochen = true;
                return CODE_ABBRUCH;
            }
            this->m_Line.MoveHit(hit);
            this->m_Line.PATNAME = hit.PATNAME; // which a hit's own line leaves out
            this->WriteLines(file, this->m_Line);
            ++iCount;
        }
        for (const CBehErrors & fehler : this->m_pFilter->m_vBehErrors) {
            this->m_Line.MoveError2File(fehler);
            this->WriteErrorLines(file, this->m_Line);
            ++iCount;
        }
        iCount = std::max(iCount, 1); // a run without hits is one that can be saved, too
        return CODE_OK;
    }

private:
    CString m_sPfad;
    int * m_pLayout;
    bool m_bAbgebrochen = false;
};

template <class T> class CSatzleser : public CFile2Stat<T> {
public:
    CSatzleser(CStatAccu & accu, CString sPfad, int * pStruct)
        : CFile2Stat<T>(nullptr), m_sPfad(std::move(sPfad)), m_pLayout(pStruct) {
        this->SetFilter(&accu);
    }
    int * SetLineStruct() override { return m_pLayout; }
    CString GetDatFilename() override { return m_sPfad + ".SVE"; }
    CString GetIniFilename() override { return m_sPfad + ".ISV"; }
    bool MoveDataFromFile(CStatLines & line) override {
        const bool bHit = CFile2Stat<T>::MoveDataFromFile(line) && line.ART == "H";
        if (bHit) this->m_pFilter->m_vBehHits.back().PATNAME = line.PATNAME;
        return bHit;
    }

private:
    CString m_sPfad;
    int * m_pLayout;
};

// What stands in a data file, line by line.
struct SDateibild {
    std::vector<std::string> vBloecke;
    long lZeilen = 0;
    long lUnform = 0; // the first line that is none; 0 without
};

template <class T> SDateibild LiesBild(const CString & sDatei, std::size_t iSpalten) {
    SDateibild bild;
    T file;
    if (!file.Open(sDatei, T::modeRead)) return bild;
    CPruefsumme summe;
    const std::size_t iFehlerspalten = Spaltenzahl(iERR_SICHERUNG);
    std::string sRest;
    const auto Nimm = [&](std::string_view sZeile, bool bEnde) {
        summe.Nimm(sZeile);
        const auto iHat = static_cast<std::size_t>(std::ranges::count(sZeile, ';')) + 1;
        ++bild.lZeilen;
        if (bild.lUnform == 0 && (!bEnde || iHat != (sZeile.starts_with("E;") ? iFehlerspalten : iSpalten)))
            bild.lUnform = bild.lZeilen;
        if (bild.lZeilen % BLOCKZEILEN == 0) bild.vBloecke.push_back(summe.Ende());
    };
    std::array<char, 65536> ac{};
    for (unsigned n = 0; (n = file.Read(ac.data(), static_cast<unsigned>(ac.size()))) > 0;) {
        sRest.append(ac.data(), n);
        std::size_t iVon = 0;
        for (std::size_t i = 0; (i = sRest.find('\n', iVon)) != std::string::npos; iVon = i + 1)
            Nimm(std::string_view(sRest).substr(iVon, i + 1 - iVon), true);
        sRest.erase(0, iVon);
    }
    if (!sRest.empty()) Nimm(sRest, false);
    if (bild.lZeilen % BLOCKZEILEN != 0) bild.vBloecke.push_back(summe.Ende());
    file.Close();
    return bild;
}

// The lines above our own section.
template <class T> std::string Auswahlsumme(const CString & sDatei) {
    CPruefsumme summe;
    T file;
    if (file.Open(sDatei, T::modeRead)) {
        for (CString sZeile;
             file.ReadString(sZeile) && sZeile != "[" + CString(std::string_view(ABSCHNITT)) + "]";)
            summe.Nimm(std::string(sZeile.Sicht().Text()) + '\n');
        file.Close();
    }
    return summe.Ende();
}

CString Text(const std::string & sUtf8) { return AusUtf8(sUtf8); }

// Adds our own section to a set whose files are written; false where that fails.
template <class T>
bool SchreibeAbschnitt(const CString & sPfad, const std::string & sLayout, const std::string & sPraxis,
                       const std::vector<std::string> & vAbfrage) {
    typename SDateifamilie<T>::CIni ini(sPfad + ".ISV");
    const CString sAbschnitt = Text(ABSCHNITT);
    const std::string sAuswahl = Auswahlsumme<T>(sPfad + ".ISV");
    bool bOk = true;
    const auto Setze = [&](const std::string & sSchluessel, const std::string & sWert) {
        bOk = bOk && ini.WriteString(sAbschnitt, Text(sSchluessel), Text(sWert));
    };
    Setze("Layout", sLayout);
    Setze("Praxis", sPraxis);
    for (std::size_t i = 0; i < vAbfrage.size(); ++i)
        Setze(fmt::format("Abfrage{:03}", i + 1), '"' + vAbfrage[i] + '"');
    const SDateibild bild = LiesBild<T>(sPfad + ".SVE", Spaltenzahl(Layout(sLayout)));
    Setze("Zeilen", std::to_string(bild.lZeilen));
    Setze("Auswahl", sAuswahl);
    for (std::size_t i = 0; i < bild.vBloecke.size(); ++i)
        Setze(fmt::format("Block{:04}", i + 1), bild.vBloecke[i]);
    return bOk && ini.Save();
}

// ENDE_ABBRUCH where the user has cancelled.
template <class T>
int SchreibeSatz(CStatAccu & accu, const CString & sPfad, const std::string & sLayout,
                 const std::string & sPraxis, const std::vector<std::string> & vAbfrage) {
    CSatzschreiber<T> schreiber(accu, sPfad, Layout(sLayout));
    if (schreiber.WriteDaten() && SchreibeAbschnitt<T>(sPfad, sLayout, sPraxis, vAbfrage)) return 0;
    return schreiber.Abgebrochen() ? ENDE_ABBRUCH : ENDE_FEHLER;
}

// Puts the new files in the place of the old ones; without a selection file a set is unfinished, so it goes first and
// comes last.
bool Tausche(const CString & sNeu, const CString & sPfad) {
    const auto Name = [](const CString & s, const char * pEnde) { return Dateipfad(s) + pEnde; };
    std::remove(Name(sPfad, ".ISV").c_str());
    return std::rename(Name(sNeu, ".SVE").c_str(), Name(sPfad, ".SVE").c_str()) == 0 &&
           std::rename(Name(sNeu, ".ISV").c_str(), Name(sPfad, ".ISV").c_str()) == 0;
}

// Removes the files of a name when it ends.
class CAufraeumer {
public:
    explicit CAufraeumer(const CString & sPfad) : m_sPfad(Dateipfad(sPfad)) {}
    ~CAufraeumer() {
        std::remove((m_sPfad + ".SVE").c_str());
        std::remove((m_sPfad + ".ISV").c_str());
    }
    CAufraeumer(const CAufraeumer &) = delete;
    CAufraeumer & operator=(const CAufraeumer &) = delete;

private:
    std::string m_sPfad;
};

// What the layout lacks and the master data know: the insurer's kinds, the fee row's text.
void Ergaenze(CStatAccu & accu, const int * pStruct) {
    const bool bMitGruppe = HatSpalte(pStruct, "KASSENGRP");
    for (CBehHitLine & hit : accu.m_vBehHits) {
        if (const int i = accu.FindGO(hit.LSTNR, hit.GOART); i >= 0)
            hit.m_sGoText = accu.m_vGO[static_cast<std::size_t>(i)].m_sGoText;
        if (bMitGruppe || hit.KASKUERZEL.IsEmpty()) continue;
        if (accu.GetKasFromVDesc(hit.KASKUERZEL, hit.DATUM, {}))
            hit.MoveKas(accu.m_vKas[static_cast<std::size_t>(accu.FindKas(hit.KASKUERZEL, hit.DATUM))]);
    }
}

template <class F> auto MitFamilie(bool bImBestand, F f) {
    return bImBestand ? f.template operator()<CDBStdioFile>() : f.template operator()<CStdioFile>();
}

} // namespace

std::vector<std::string> Layoutworte() {
    std::vector<std::string> v;
    for (const SLayout & layout : LAYOUTS)
        v.emplace_back(layout.pWort);
    return v;
}

void FuegeSatzortHinzu(CLI::App & app, SSatzoptionen & optionen) {
    CLI::Option * pOrdner =
        app.add_option("--daten", optionen.sOrdner,
                       "Ordner der gespeicherten Statistiken; sonst stat neben der Praxisdatei")
            ->type_name("ORDNER");
    pOrdner->group(AUSGABEGRUPPE);
    app.add_flag("--im-bestand", optionen.bImBestand, "Die Statistiken liegen in der Praxisdatei selbst")
        ->excludes(pOrdner)
        ->group(AUSGABEGRUPPE);
}

CSatz::CSatz(const std::string & sPraxisdatei, const SSatzoptionen & optionen, const std::string & sName)
    : m_bImBestand(optionen.bImBestand), m_sName(sName),
      m_sPraxis(IstServer(sPraxisdatei) ? Praxisname(sPraxisdatei)
                                        : fs::path(sPraxisdatei).filename().string()) {
    PruefeName(sName);
    m_sPfad = Ort(sPraxisdatei, optionen) + AusUtf8(sName);
}

void CSatz::Schreibe(CStatAccu & accu, const std::string & sLayout,
                     const std::vector<std::string> & vAbfrage) const {
    int iEnde = 0;
    if (m_bImBestand) {
        CMxGruppe gruppe(dbDatabase);
        iEnde = SchreibeSatz<CDBStdioFile>(accu, m_sPfad, sLayout, m_sPraxis, vAbfrage);
        if (!gruppe.Beende(iEnde == 0) && iEnde == 0) iEnde = ENDE_FEHLER;
    } else {
        std::error_code fehler;
        fs::create_directories(fs::path(Dateipfad(m_sPfad)).parent_path(), fehler);
        const CString sNeu = m_sPfad + Text(fmt::format(".neu-{}", getpid()));
        const CAufraeumer aufraeumer(sNeu);
        iEnde = SchreibeSatz<CStdioFile>(accu, sNeu, sLayout, m_sPraxis, vAbfrage);
        if (iEnde == 0 && !Tausche(sNeu, m_sPfad)) iEnde = ENDE_FEHLER;
    }
    if (iEnde == 0) return;
    std::cerr << "Die Statistik \"" << m_sName
              << "\" ist nicht gespeichert; was vorher da war, ist unverändert.\n";
    throw CLI::RuntimeError(iEnde);
}

CString CSatz::Wert(const char * pAbschnitt, const char * pSchluessel) const {
    return MitFamilie(m_bImBestand, [&]<class T>() {
        return SDateifamilie<T>::CIni::ReadOneString(Auswahldatei(), Text(pAbschnitt), Text(pSchluessel),
                                                     CString());
    });
}

void CSatz::VerlangeFertig() const {
    const auto Da = [this](const CString & sDatei) {
        return MitFamilie(m_bImBestand, [&]<class T>() { return SDateifamilie<T>::Existiert(sDatei); });
    };
    const bool bDaten = Da(Datendatei());
    if (!bDaten && !Da(Auswahldatei()))
        Verweigere("Es gibt keine gespeicherte Statistik \"" + m_sName + "\".");
    if (!bDaten || !Da(Auswahldatei())) Verweigere("Die Statistik \"" + m_sName + "\" ist unfertig.");
    if (Layout(Wert(ABSCHNITT, "Layout").Utf8()) == nullptr)
        Verweigere("Die Statistik \"" + m_sName + "\" ist nicht von diesem Programm geschrieben.");
}

void CSatz::Lies(CStatAccu & accu) const {
    VerlangeFertig();
    int * const pStruct = Layout(Wert(ABSCHNITT, "Layout").Utf8());
    CLauf lauf(accu, {}); // brings the master data, whose names the tables show
    if (!lauf.Vorlauf()) throw CLI::RuntimeError(ENDE_FEHLER);
    const bool bOk = MitFamilie(m_bImBestand, [&]<class T>() {
        CSatzleser<T> leser(accu, m_sPfad, pStruct);
        return leser.ReadSelektionsFile(leser.GetIniFilename()) && leser.ReadDaten();
    });
    if (!bOk) Verweigere("Die Statistik \"" + m_sName + "\" lässt sich nicht lesen.");
    accu.m_lAnzHits = static_cast<std::int32_t>(accu.m_vBehHits.size());
    Ergaenze(accu, pStruct);
}

std::vector<std::string> CSatz::Abfrage() const {
    VerlangeFertig();
    std::vector<std::string> v;
    for (int i = 1;; ++i) {
        const CString s = MitFamilie(m_bImBestand, [&]<class T>() {
            return SDateifamilie<T>::CIni::ReadOneString(Auswahldatei(), Text(ABSCHNITT),
                                                         Text(fmt::format("Abfrage{:03}", i)), "\x01");
        });
        if (s == "\x01") return v;
        v.push_back(s.Utf8());
    }
}

std::vector<std::string> CSatz::FehlendeSpalten() const {
    const int * const pStruct = Layout(Wert(ABSCHNITT, "Layout").Utf8());
    std::vector<std::string> v;
    for (const char * pTitel : {"BEHANDLERNR", "PRAXISNR", "GOART", "LSTNR", "ANZAHL", "PUNKTE", "BETRAG",
                                "ZUSCHLAG", "KASSENABR", "KASKUERZEL", "GOSTATISTIKART", "ABRMERKMAL"})
        if (!HatSpalte(pStruct, pTitel)) v.emplace_back(pTitel);
    return v;
}

std::string CSatz::Abfragetext() const {
    std::string sText;
    for (const std::string & sWort : Abfrage())
        sText += (sText.empty() ? "" : " ") + sWort;
    return sText;
}

CSatz::SPruefung CSatz::Pruefe() const {
    VerlangeFertig();
    return MitFamilie(m_bImBestand, [&]<class T>() {
        typename SDateifamilie<T>::CIni ini(Auswahldatei());
        const auto Lies = [&](const std::string & sSchluessel) {
            return ini.ReadString(Text(ABSCHNITT), Text(sSchluessel), CString()).Utf8();
        };
        const SDateibild bild = LiesBild<T>(Datendatei(), Spaltenzahl(Layout(Lies("Layout"))));
        SPruefung p;
        p.lZeilen = bild.lZeilen;
        p.bAuswahl = Lies("Auswahl") == Auswahlsumme<T>(Auswahldatei());
        const long lErwartet = std::atol(Lies("Zeilen").c_str());
        for (std::size_t i = 0; p.lZeile == 0 && i < bild.vBloecke.size(); ++i)
            if (Lies(fmt::format("Block{:04}", i + 1)) != bild.vBloecke[i])
                p.lZeile = static_cast<long>(i) * BLOCKZEILEN + 1;
        if (p.lZeile == 0 && bild.lZeilen < lErwartet) p.lZeile = bild.lZeilen + 1;
        p.bBeschaedigt = p.lZeile != 0 && (bild.lUnform != 0 || bild.lZeilen < lErwartet);
        if (p.bBeschaedigt) p.lZeile = bild.lUnform != 0 ? bild.lUnform : std::max(p.lZeile, 1L);
        return p;
    });
}

std::vector<SSatzeintrag> Saetze(const std::string & sPraxisdatei, const SSatzoptionen & optionen) {
    return MitFamilie(optionen.bImBestand, [&]<class T>() {
        using CIni = typename SDateifamilie<T>::CIni;
        const CString sOrt = Ort(sPraxisdatei, optionen);
        std::vector<SSatzeintrag> v;
        typename SDateifamilie<T>::CSuche suche;
        for (bool bMehr = suche.FindFile(sOrt + "*.SVE"); bMehr;) {
            bMehr = suche.FindNextFile();
            if (suche.IsDirectory()) continue;
            const CString sName = suche.GetFileName().Left(suche.GetFileName().GetLength() - 4);
            CIni ini(sOrt + sName + ".ISV");
            const auto Lies = [&](const char * pAbschnitt, const char * pSchluessel) {
                return ini.ReadString(Text(pAbschnitt), Text(pSchluessel), CString());
            };
            v.push_back({sName.Utf8(), SDateifamilie<T>::Existiert(sOrt + sName + ".ISV"),
                         Lies("Allgemein", "Statistikart"), Lies("Allgemein", "Version"),
                         Lies("Allgemein", "Erstellungsdatum"), Lies("Allgemein", "Erstellungszeit"),
                         Lies("Selektion", "DatumVon"), Lies("Selektion", "DatumBis"),
                         Zahl(Lies("Allgemein", "AnzahlHits"))});
        }
        return v;
    });
}

} // namespace orvostat
