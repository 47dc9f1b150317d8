#include "Datenbank.h"

#include "Konsole.h"
#include "Praxis.h"

#include "orvostatbs/host/Oberflaeche.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <system_error>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

// The file and what SQLite may have left beside it.
void Entferne(const std::string & sDatei) {
    std::error_code fehler;
    for (const char * pEndung : {"", "-journal", "-wal", "-shm"})
        fs::remove(sDatei + pEndung, fehler);
}

void PruefeZiel(const std::string & sDatei, bool bErsetzen) {
    std::error_code fehler;
    if (!fs::path(sDatei).has_filename()) Verweigere("\"" + sDatei + "\" ist kein Dateiname.");
    const fs::file_status status = fs::status(sDatei, fehler);
    if (!fs::exists(status)) return;
    if (!fs::is_regular_file(status)) Verweigere("\"" + sDatei + "\" ist keine gewöhnliche Datei.");
    if (!bErsetzen) Verweigere("\"" + sDatei + "\" gibt es schon und wird nicht überschrieben.");
}

// Why a file failed, for behind "...: "; empty where only SQLite has words for it.
const char * Ursachentext(ESpeicherursache eUrsache) {
    switch (eUrsache) {
    case ESpeicherursache::Beschaedigt:
        return "sie ist beschädigt";
    case ESpeicherursache::Gesperrt:
        return "ein anderes Programm schreibt gerade in die Datei";
    case ESpeicherursache::Voll:
        return "der Datenträger ist voll";
    case ESpeicherursache::Schreibgeschuetzt:
        return "die Datei ist schreibgeschützt";
    case ESpeicherursache::Datentraeger:
        return "der Datenträger meldet einen Fehler";
    case ESpeicherursache::KeineNebendatei:
        return "neben der Datei lässt sich keine anlegen";
    case ESpeicherursache::ZuGross:
        return "die Datei würde größer als erlaubt";
    case ESpeicherursache::KeinSpeicher:
        return "der Speicher reicht nicht";
    case ESpeicherursache::Keine:
    case ESpeicherursache::Andere:
        break;
    }
    return "";
}

} // namespace

std::string Fehlergrund(const CZeilenspeicher * pSpeicher) {
    const auto * pSqlite = dynamic_cast<const CSqliteSpeicher *>(pSpeicher);
    if (pSqlite == nullptr) return {};
    const std::string sGrund = Ursachentext(pSqlite->LetzteUrsache());
    return sGrund.empty() ? pSqlite->LetzterFehler() : sGrund;
}

std::shared_ptr<CSqliteSpeicher> OeffneSpeicher(const std::string & sDatei, EModus eModus) {
    CString sMeldung;
    auto pSpeicher = CSqliteSpeicher::OeffneDatei(sDatei, eModus, sMeldung);
    if (pSpeicher) return pSpeicher;
    const bool bHilftPruefen = eModus == EModus::Lesen && CSqliteSpeicher::Unterbrochen(sDatei);
    Verweigere(sMeldung.Utf8() + (bHilftPruefen ? " \"orvostat check\" tut das." : ""));
}

bool NimmUnterbrocheneZurueck(const std::string & sDatei) {
    if (!CSqliteSpeicher::Unterbrochen(sDatei)) return false;
    CString sMeldung;
    if (!CSqliteSpeicher::NimmZurueck(sDatei, sMeldung)) Verweigere(sMeldung.Utf8());
    return true;
}

CNeueDatei::CNeueDatei(const std::string & sDatei, bool bErsetzen)
    : m_sDatei(sDatei), m_sVorlaeufig(sDatei + ".neu") {
    PruefeZiel(m_sDatei, bErsetzen);
    Entferne(m_sVorlaeufig);
    std::error_code fehler;
    if (fs::exists(m_sVorlaeufig, fehler)) Verweigere("\"" + m_sVorlaeufig + "\" steht im Weg.");
    CString sMeldung;
    m_pSpeicher = CSqliteSpeicher::OeffneDatei(m_sVorlaeufig, EModus::NeuUngesichert, sMeldung);
    if (m_pSpeicher) return;
    // The user knows the file by its own name.
    sMeldung.Replace(AusUtf8(m_sVorlaeufig), AusUtf8(m_sDatei));
    Verweigere(sMeldung.Utf8());
}

CNeueDatei::~CNeueDatei() {
    if (!m_pSpeicher) return;
    m_pSpeicher.reset();
    Entferne(m_sVorlaeufig);
}

void CNeueDatei::Fertig() {
    m_pSpeicher.reset();
    std::error_code fehler;
    fs::rename(m_sVorlaeufig, m_sDatei, fehler);
    if (!fehler) return;
    Entferne(m_sVorlaeufig);
    Verweigere("\"" + m_sDatei + "\" lässt sich nicht anlegen; vermutlich fehlt die Berechtigung.");
}

void Fortschritt(std::int64_t iPos, std::int64_t iMax) {
    if (OrvoUpdateProgressBox2(static_cast<long>(iPos), static_cast<long>(iMax))) return;
    if (FrageAbbruch()) BrichAb();
}

void BrichAb() {
    OrvoCloseProgressBox();
    std::cerr << "Abgebrochen.\n";
    throw CLI::RuntimeError(ENDE_ABBRUCH);
}

} // namespace orvostat
