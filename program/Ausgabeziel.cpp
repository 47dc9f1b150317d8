#include "Ausgabeziel.h"

#include "Aufruf.h"
#include "Dateiablage.h"
#include "Datenbank.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Umgebung.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <fmt/format.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view DATENBANKANFANG = "SQLite format 3";

bool IstDatenbank(const std::string & sDatei) {
    std::array<char, DATENBANKANFANG.size()> ac{};
    std::ifstream(sDatei, std::ios::binary).read(ac.data(), static_cast<std::streamsize>(ac.size()));
    return std::string_view(ac.data(), ac.size()) == DATENBANKANFANG;
}

void PruefeZiel(const SAusgabeoptionen & optionen) {
    const std::string sName = '"' + optionen.sDatei + '"';
    std::error_code fehler;
    if (!fs::path(optionen.sDatei).has_filename()) Verweigere(sName + " ist kein Dateiname.");
    const fs::file_status status = fs::symlink_status(optionen.sDatei, fehler);
    if (!fs::exists(status)) return;
    if (!fs::is_regular_file(status)) Verweigere(sName + " ist keine gewöhnliche Datei.");
    if (IstDatenbank(optionen.sDatei))
        Verweigere(sName + " ist eine Datenbank und wird nicht überschrieben.");
    if (!optionen.bErsetzen)
        Verweigere(sName + " gibt es schon und wird nicht überschrieben; --force tut auch das.");
}

[[noreturn]] void Scheitere(const std::string & sDatei, int iErrno) {
    Verweigere('"' + sDatei + "\" lässt sich nicht schreiben: " + Systemgrund(iErrno) + '.');
}

// Why the file takes no more: the stream has not kept it, so it is tried again. The first try may fill up the last
// block.
int Schreibfehler(int iHandle) {
    const std::array<char, 4096> acNichts{};
    lseek(iHandle, 0, SEEK_END);
    for (int i = 0; i < 2; ++i)
        if (write(iHandle, acNichts.data(), acNichts.size()) < 0) return errno;
    return EIO;
}

// The options that select: neither file nor period, which the head names by themselves, nor what belongs to the output.
bool IstAuswahl(const CLI::Option & option) {
    return !option.get_positional() && option.get_group() != AUSGABEGRUPPE && option.get_name() != "--von" &&
           option.get_name() != "--bis";
}

} // namespace

void FuegeAusgabeHinzu(CLI::App & app, SAusgabeoptionen & optionen) {
    OptionFormat(app, optionen.eFormat);
    app.get_option("--format")->group(AUSGABEGRUPPE);
    CLI::Option * pDatei =
        app.add_option("-o,--ausgabe", optionen.sDatei, "In diese Datei, ganz oder gar nicht")
            ->type_name("NAME");
    pDatei->group(AUSGABEGRUPPE)->check(NichtLeer());
    app.add_flag("--force", optionen.bErsetzen, "Eine Datei dieses Namens ersetzen")
        ->needs(pDatei)
        ->group(AUSGABEGRUPPE);
    app.add_flag("--ohne-kopf", optionen.bOhneKopf, "Ohne Datei, Zeitraum, Auswahl, Version und Zeit davor")
        ->group(AUSGABEGRUPPE);
}

CAusgabeziel::CAusgabeziel(const SAusgabeoptionen & optionen) : m_optionen(optionen) {
    if (!IstDatei()) return;
    PruefeZiel(optionen);
    std::string sName = optionen.sDatei + ".neu-XXXXXX";
    m_iHandle = mkstemp(sName.data());
    if (m_iHandle < 0) Scheitere(optionen.sDatei, errno);
    m_sVorlaeufig = sName;
    m_schutz.emplace(m_sVorlaeufig);
    m_datei.open(m_sVorlaeufig, std::ios::binary);
    m_sauber.emplace(m_datei);
}

CAusgabeziel::~CAusgabeziel() {
    m_sauber.reset();
    if (!m_sVorlaeufig.empty()) unlink(m_sVorlaeufig.c_str());
    if (m_iHandle >= 0) close(m_iHandle);
}

std::ostream & CAusgabeziel::Strom() { return IstDatei() ? m_datei : std::cout; }

void CAusgabeziel::Fertig() {
    if (!IstDatei()) return;
    m_datei.flush();
    const bool bGeschrieben = m_datei.good();
    m_sauber.reset(); // a stream that gets its buffer back forgets what has failed
    if (!bGeschrieben) Scheitere(m_optionen.sDatei, Schreibfehler(m_iHandle));
    m_datei.close();
    if (fsync(m_iHandle) != 0) Scheitere(m_optionen.sDatei, errno);
    if (!GibNamen(m_sVorlaeufig, m_optionen.sDatei, m_optionen.bErsetzen)) {
        if (errno == EEXIST) Verweigere('"' + m_optionen.sDatei + "\" gibt es schon.");
        Scheitere(m_optionen.sDatei, errno);
    }
    m_sVorlaeufig.clear();
    if (!SichereVerzeichnis(m_optionen.sDatei)) Scheitere(m_optionen.sDatei, errno);
}

void MeldeAbbruch(const CAusgabeziel & ziel) {
    if (!ziel.IstDatei()) {
        std::cerr << "Abgebrochen. Gezeigt wird, was bis dahin gelesen war.\n";
        return;
    }
    std::cerr << "Abgebrochen. Die Ausgabedatei ist nicht geschrieben.\n";
    throw CLI::RuntimeError(ENDE_ABBRUCH);
}

std::string Auswahltext(const CLI::App & app) {
    std::string s;
    for (const CLI::Option * pOption : app.get_options()) {
        if (pOption->count() == 0 || !IstAuswahl(*pOption)) continue;
        s += (s.empty() ? "" : ", ") + pOption->get_name().substr(2);
        if (pOption->get_items_expected_max() != 0)
            s += " = \"" + CLI::detail::join(pOption->results()) + '"';
    }
    return s;
}

std::vector<std::string> Auswahlworte(const CLI::App & app) {
    std::vector<std::string> v;
    for (const CLI::Option * pOption : app.get_options()) {
        if (pOption->count() == 0 || pOption->get_positional() || pOption->get_group() == AUSGABEGRUPPE)
            continue;
        const std::string sName = pOption->get_name();
        if (pOption->get_items_expected_max() == 0) v.push_back(sName);
        // An empty value cannot stand behind "=", and one that looks like an option must.
        for (const std::string & sWert :
             pOption->get_items_expected_max() == 0 ? std::vector<std::string>() : pOption->results())
            if (sWert.empty())
                v.insert(v.end(), {sName, sWert});
            else
                v.push_back(sName + '=' + sWert);
    }
    return v;
}

std::string Zeitraumtext(const CString & sVon, const CString & sBis) {
    if (sVon.IsEmpty() && sBis.IsEmpty()) return "alle Tage";
    std::string s = sVon.IsEmpty() ? "" : (sBis.IsEmpty() ? "ab " : "") + Db2Date(sVon).Utf8();
    if (!sBis.IsEmpty()) s += (sVon.IsEmpty() ? "bis " : " bis ") + Db2Date(sBis).Utf8();
    return s;
}

std::vector<SKopfzeile> Ausgabekopf(const std::string & sPraxisdatei, const CString & sVon,
                                    const CString & sBis, const std::string & sAuswahl,
                                    const std::string & sUnvollstaendig) {
    const SZeitpunkt jetzt = Uhr().Jetzt();
    std::vector<SKopfzeile> v = {
        {"Datei", Praxisname(sPraxisdatei)},
        {"Zeitraum", Zeitraumtext(sVon, sBis)},
        {"Auswahl", sAuswahl.empty() ? "alles" : sAuswahl},
        {"Version", Version()},
        {"Erstellt", fmt::format("{:02}.{:02}.{} {:02}:{:02}", jetzt.iTag, jetzt.iMonat, jetzt.iJahr,
                                 jetzt.iStunde, jetzt.iMinute)}};
    if (!sUnvollstaendig.empty()) v.push_back({"Stand", sUnvollstaendig});
    return v;
}

std::unique_ptr<CDokument> BeginneDokument(CAusgabeziel & ziel, const SAusgabeoptionen & optionen,
                                           const std::vector<SKopfzeile> & vKopf,
                                           const std::string & sUnvollstaendig) {
    std::unique_ptr<CDokument> pDokument = CDokument::Neu(optionen.eFormat, ziel.Strom());
    const bool bSchirm = optionen.eFormat == EFormat::Tabelle && !ziel.IstDatei();
    if (bSchirm && !sUnvollstaendig.empty()) pDokument->Satz(sUnvollstaendig);
    if (!bSchirm && !optionen.bOhneKopf) pDokument->Kopf(vKopf);
    return pDokument;
}

} // namespace orvostat
