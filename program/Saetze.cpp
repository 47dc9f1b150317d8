#include "Saetze.h"

#include "Aufruf.h"
#include "Ausgabeziel.h"
#include "Datenbank.h"
#include "Praxis.h"
#include "Pruefsumme.h"

#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

constexpr const char * ABSCHNITT = "OrvoStat";
constexpr std::string_view SUMME = "Auswahl=";
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

// What a set names its practice by.
std::string Praxiskennung(const std::string & sPraxisdatei) {
    return IstServer(sPraxisdatei) ? Praxisname(sPraxisdatei) : fs::path(sPraxisdatei).filename().string();
}

// The place as a path text that ends in "\".
CString Ort(const std::string & sPraxisdatei, const SSatzoptionen & optionen) {
    if (optionen.bImBestand) return GetOrvoStatPath();
    if (optionen.sOrdner.empty() && IstServer(sPraxisdatei))
        Verweigere(
            "Neben einer Praxis auf dem Server liegt kein Ordner; --daten oder --im-bestand sagt, wohin.");
    const fs::path ordner = optionen.sOrdner.empty() ? fs::absolute(sPraxisdatei).parent_path() / "stat"
                                                     : fs::absolute(optionen.sOrdner);
    const CString sOrt = Verzeichnistext(ordner.string());
    if (Dateipfad(sOrt) != (ordner / "").string())
        Verweigere('"' + ordner.string() +
                   "\" hat Zeichen, die Windows-1252 fehlen, oder einen umgekehrten "
                   "Schrägstrich; --im-bestand braucht keinen Ordner.");
    return sOrt;
}

// ---- the files themselves

struct SDateinamen {
    CString sDaten, sAuswahl;
};

template <class T> class CSatzschreiber : public CStat2File<T> {
public:
    CSatzschreiber(CStatAccu & accu, SDateinamen namen, int * pStruct)
        : CStat2File<T>(nullptr), m_namen(std::move(namen)), m_pLayout(pStruct) {
        this->SetFilter(&accu);
        this->m_sStatistikart = "LAUF";
        this->SetStatVersion(SATZVERSION);
    }
    [[nodiscard]] bool Abgebrochen() const { return m_bAbgebrochen; }
    int * SetLineStruct() override { return m_pLayout; }
    long GetGesamtPos() override { return static_cast<long>(this->m_pFilter->m_vBehHits.size()); }
    CString GetDatFilename() override { return m_namen.sDaten; }
    CString GetIniFilename() override { return m_namen.sAuswahl; }
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
    SDateinamen m_namen;
    int * m_pLayout;
    bool m_bAbgebrochen = false;
};

template <class T> class CSatzleser : public CFile2Stat<T> {
public:
    CSatzleser(CStatAccu & accu, SDateinamen namen, int * pStruct)
        : CFile2Stat<T>(nullptr), m_namen(std::move(namen)), m_pLayout(pStruct) {
        this->SetFilter(&accu);
    }
    int * SetLineStruct() override { return m_pLayout; }
    CString GetDatFilename() override { return m_namen.sDaten; }
    CString GetIniFilename() override { return m_namen.sAuswahl; }
    // A read that ends early has been cancelled: what cannot be read at all has not begun.
    [[nodiscard]] bool Begonnen() const { return m_bBegonnen; }
    bool MoveDataFromFile(CStatLines & line) override {
        m_bBegonnen = true;
        const bool bHit = CFile2Stat<T>::MoveDataFromFile(line) && line.ART == "H";
        if (bHit) this->m_pFilter->m_vBehHits.back().PATNAME = line.PATNAME;
        return bHit;
    }

private:
    SDateinamen m_namen;
    int * m_pLayout;
    bool m_bBegonnen = false;
};

// What stands in a data file, line by line.
struct SDateibild {
    std::vector<std::string> vBloecke;
    long lZeilen = 0;
    long lUnform = 0; // the first line that is none; 0 without
    bool bLesbar = true;
};

template <class T> SDateibild LiesBild(const CString & sDatei, std::size_t iSpalten) {
    SDateibild bild;
    T file;
    bild.bLesbar = file.Open(sDatei, T::modeRead);
    if (!bild.bLesbar) return bild;
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
        std::size_t iAb = sRest.size(); // before it there is no end of a line
        sRest.append(ac.data(), n);
        std::size_t iVon = 0;
        for (std::size_t i = 0; (i = sRest.find('\n', iAb)) != std::string::npos; iAb = iVon = i + 1)
            Nimm(std::string_view(sRest).substr(iVon, i + 1 - iVon), true);
        sRest.erase(0, iVon);
    }
    if (!sRest.empty()) Nimm(sRest, false);
    if (bild.lZeilen % BLOCKZEILEN != 0) bild.vBloecke.push_back(summe.Ende());
    file.Close();
    return bild;
}

CString Text(const std::string & sUtf8) { return AusUtf8(sUtf8); }

// Of all lines above the sum itself.
template <class T> std::string Auswahlsumme(const CString & sDatei) {
    CPruefsumme summe;
    T file;
    if (file.Open(sDatei, T::modeRead)) {
        for (CString sZeile; file.ReadString(sZeile) && !sZeile.Sicht().Text().starts_with(SUMME);)
            summe.Nimm(std::string(sZeile.Sicht().Text()) + '\n');
        file.Close();
    }
    return summe.Ende();
}

// Adds our own section to a set whose files are written; false where that fails.
template <class T>
bool SchreibeAbschnitt(const SDateinamen & namen, const std::string & sLayout, const std::string & sPraxis,
                       const std::vector<std::string> & vAbfrage) {
    typename SDateifamilie<T>::CIni ini(namen.sAuswahl);
    const auto Setze = [&](const std::string & sSchluessel, const std::string & sWert) {
        return ini.WriteString(Text(ABSCHNITT), Text(sSchluessel), Text(sWert));
    };
    bool bOk = Setze("Layout", sLayout) && Setze("Praxis", sPraxis);
    for (std::size_t i = 0; i < vAbfrage.size(); ++i)
        bOk = bOk && Setze(fmt::format("Abfrage{:03}", i + 1), '"' + vAbfrage[i] + '"');
    const SDateibild bild = LiesBild<T>(namen.sDaten, Spaltenzahl(Layout(sLayout)));
    bOk = bOk && bild.bLesbar && Setze("Zeilen", std::to_string(bild.lZeilen));
    for (std::size_t i = 0; i < bild.vBloecke.size(); ++i)
        bOk = bOk && Setze(fmt::format("Block{:04}", i + 1), bild.vBloecke[i]);
    return bOk && ini.Save() && Setze("Auswahl", Auswahlsumme<T>(namen.sAuswahl)) && ini.Save();
}

// ENDE_ABBRUCH where the user has cancelled.
template <class T>
int SchreibeSatz(CStatAccu & accu, const SDateinamen & namen, const std::string & sLayout,
                 const std::string & sPraxis, const std::vector<std::string> & vAbfrage) {
    CSatzschreiber<T> schreiber(accu, namen, Layout(sLayout));
    try {
        if (schreiber.WriteDaten() && SchreibeAbschnitt<T>(namen, sLayout, sPraxis, vAbfrage)) return 0;
    } catch (const CFileException &) { // of what has just been written
    }
    return schreiber.Abgebrochen() ? ENDE_ABBRUCH : ENDE_FEHLER;
}

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
            ->type_name("ORDNER")
            ->check(NichtLeer());
    pOrdner->group(AUSGABEGRUPPE);
    app.add_flag("--im-bestand", optionen.bImBestand, "Die Statistiken liegen in der Praxisdatei selbst")
        ->excludes(pOrdner)
        ->group(AUSGABEGRUPPE);
}

CSatz::CSatz(const std::string & sPraxisdatei, const SSatzoptionen & optionen, const std::string & sName)
    : m_bImBestand(optionen.bImBestand), m_sName(sName), m_sPraxisdatei(sPraxisdatei) {
    PruefeName(sName);
    m_sPfad = Ort(sPraxisdatei, optionen) + AusUtf8(sName);
}

void CSatz::Schreibe(CStatAccu & accu, const std::string & sLayout,
                     const std::vector<std::string> & vAbfrage) const {
    const std::string sPraxis = Praxiskennung(m_sPraxisdatei);
    int iEnde = 0;
    if (m_bImBestand) {
        CMxGruppe gruppe(dbDatabase);
        iEnde = SchreibeSatz<CDBStdioFile>(accu, {Datendatei(), Auswahldatei()}, sLayout, sPraxis, vAbfrage);
        if (!gruppe.Beende(iEnde == 0) && iEnde == 0) iEnde = ENDE_FEHLER;
    } else {
        CNeuerSatz neu(Dateipfad(m_sPfad));
        iEnde = SchreibeSatz<CStdioFile>(accu, {Pfadtext(neu.Datendatei()), Pfadtext(neu.Auswahldatei())},
                                         sLayout, sPraxis, vAbfrage);
        if (iEnde == 0) neu.Fertig(m_sPraxisdatei);
    }
    if (iEnde != 0) throw CLI::RuntimeError(iEnde);
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
    if (Spalten() == nullptr)
        Verweigere("Die Statistik \"" + m_sName + "\" ist nicht von diesem Programm geschrieben.");
}

std::optional<CSatzsperre> CSatz::Sperre() const {
    if (m_bImBestand) return {};
    const fs::path ordner = fs::path(Dateipfad(m_sPfad)).parent_path();
    return std::optional<CSatzsperre>(std::in_place, ordner.string(), CSatzsperre::EArt::Lesen);
}

int * CSatz::Spalten() const { return Layout(Wert(ABSCHNITT, "Layout").Utf8()); }

void CSatz::Lies(CStatAccu & accu) const {
    const std::optional<CSatzsperre> sperre = Sperre();
    const SPruefung pruefung = PruefeDateien();
    if (pruefung.eBefund == EBefund::Beschaedigt) Verweigere(Befundtext(pruefung));
    if (pruefung.eBefund != EBefund::Unversehrt) std::cerr << Befundtext(pruefung) << '\n';
    const CString sPraxis = Wert(ABSCHNITT, "Praxis");
    if (!m_bImBestand && sPraxis != Text(Praxiskennung(m_sPraxisdatei)))
        std::cerr << "Die Statistik \"" << m_sName << "\" ist aus der Praxis \"" << sPraxis.Utf8() << "\".\n";
    int * const pStruct = Spalten();
    const CString sSumme = Wert(ABSCHNITT, "Auswahl");
    CLauf lauf(accu, {}); // brings the master data, whose names the tables show
    if (!lauf.Vorlauf()) throw CLI::RuntimeError(ENDE_FEHLER);
    const int iEnde = MitFamilie(m_bImBestand, [&]<class T>() -> int {
        CSatzleser<T> leser(accu, {Datendatei(), Auswahldatei()}, pStruct);
        try {
            if (leser.ReadSelektionsFile(leser.GetIniFilename()) && leser.ReadDaten()) return ENDE_OK;
            return leser.Begonnen() ? ENDE_ABBRUCH : ENDE_FEHLER;
        } catch (const std::invalid_argument &) { // a line of a file that somebody has edited
            OrvoCloseProgressBox();
            return ENDE_FEHLER;
        }
    });
    if (iEnde == ENDE_ABBRUCH) BrichAb();
    if (iEnde != ENDE_OK) Verweigere("Die Statistik \"" + m_sName + "\" lässt sich nicht lesen.");
    if (sSumme != Wert(ABSCHNITT, "Auswahl"))
        Verweigere("Die Statistik \"" + m_sName + "\" ist während des Lesens ersetzt worden.");
    accu.m_lAnzHits = static_cast<std::int32_t>(accu.m_vBehHits.size());
    Ergaenze(accu, pStruct);
}

std::vector<std::string> CSatz::Abfrage() const {
    const std::optional<CSatzsperre> sperre = Sperre();
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
    VerlangeFertig();
    const int * const pStruct = Spalten();
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
    const std::optional<CSatzsperre> sperre = Sperre();
    return PruefeDateien();
}

namespace {

// The selection file's sum comes first, since it vouches for those of the data file.
template <class CIni>
CSatz::SPruefung Befinde(CIni & ini, const SDateibild & bild, const std::string & sAuswahlsumme) {
    using enum CSatz::EBefund;
    const auto Lies = [&](const std::string & sSchluessel) {
        return ini.ReadString(Text(ABSCHNITT), Text(sSchluessel), CString()).Utf8();
    };
    const std::string sSumme = Lies("Auswahl");
    if (sSumme.empty()) return {Beschaedigt, 0, bild.lZeilen};
    if (sSumme != sAuswahlsumme) return {AuswahlGeaendert, 0, bild.lZeilen};
    const long lErwartet = std::atol(Lies("Zeilen").c_str());
    long lAb = 0;
    for (std::size_t i = 0; lAb == 0 && i < bild.vBloecke.size(); ++i)
        if (Lies(fmt::format("Block{:04}", i + 1)) != bild.vBloecke[i])
            lAb = static_cast<long>(i) * BLOCKZEILEN + 1;
    if (lAb == 0 && bild.lZeilen < lErwartet) lAb = bild.lZeilen + 1;
    if (lAb == 0) return {Unversehrt, 0, bild.lZeilen};
    if (bild.lUnform != 0) return {Beschaedigt, bild.lUnform, bild.lZeilen};
    return {bild.lZeilen < lErwartet ? Beschaedigt : DatenGeaendert, lAb, bild.lZeilen};
}

} // namespace

CSatz::SPruefung CSatz::PruefeDateien() const {
    VerlangeFertig();
    return MitFamilie(m_bImBestand, [&]<class T>() {
        try {
            const SDateibild bild = LiesBild<T>(Datendatei(), Spaltenzahl(Spalten()));
            typename SDateifamilie<T>::CIni ini(Auswahldatei());
            if (bild.bLesbar) return Befinde(ini, bild, Auswahlsumme<T>(Auswahldatei()));
        } catch (const CFileException &) { // as unreadable as one that cannot be opened
        }
        Verweigere("Die Statistik \"" + m_sName + "\" lässt sich nicht lesen.");
    });
}

std::string CSatz::Befundtext(const SPruefung & pruefung) const {
    const std::string sName = "Die Statistik \"" + m_sName + "\" ist ";
    switch (pruefung.eBefund) {
    case EBefund::Beschaedigt:
        return sName + (pruefung.lZeile == 0 ? std::string("beschädigt: ihre Auswahldatei ist unvollständig.")
                                             : fmt::format("beschädigt ab Zeile {}.", pruefung.lZeile));
    case EBefund::DatenGeaendert:
        return sName + fmt::format("von Hand geändert, in den tausend Zeilen ab Zeile {}.", pruefung.lZeile);
    case EBefund::AuswahlGeaendert:
        return sName + "in ihrer Auswahl von Hand geändert.";
    case EBefund::Unversehrt:
        break;
    }
    return sName + fmt::format("unversehrt: {} Zeilen.", pruefung.lZeilen);
}

std::vector<SSatzeintrag> Saetze(const std::string & sPraxisdatei, const SSatzoptionen & optionen) {
    const CString sOrt = Ort(sPraxisdatei, optionen);
    std::optional<CSatzsperre> sperre;
    if (!optionen.bImBestand) sperre.emplace(Dateipfad(sOrt), CSatzsperre::EArt::Lesen);
    return MitFamilie(optionen.bImBestand, [&]<class T>() {
        using CIni = typename SDateifamilie<T>::CIni;
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
