#include "Datenbank.h"

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
    const fs::file_status status = fs::status(sDatei, fehler);
    if (!fs::exists(status)) return;
    if (!fs::is_regular_file(status)) Verweigere("\"" + sDatei + "\" ist keine gewöhnliche Datei.");
    if (!bErsetzen) Verweigere("\"" + sDatei + "\" gibt es schon und wird nicht überschrieben.");
}

} // namespace

std::shared_ptr<CSqliteSpeicher> OeffneSpeicher(const std::string & sDatei, EModus eModus) {
    CString sMeldung;
    auto pSpeicher = CSqliteSpeicher::OeffneDatei(sDatei, eModus, sMeldung);
    if (!pSpeicher) Verweigere(sMeldung.Utf8());
    return pSpeicher;
}

CNeueDatei::CNeueDatei(const std::string & sDatei, bool bErsetzen)
    : m_sDatei(sDatei), m_sVorlaeufig(sDatei + ".neu") {
    PruefeZiel(m_sDatei, bErsetzen);
    Entferne(m_sVorlaeufig);
    m_pSpeicher = OeffneSpeicher(m_sVorlaeufig, EModus::NeuUngesichert);
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
    Verweigere("\"" + m_sDatei + "\" lässt sich nicht anlegen: " + fehler.message());
}

void Fortschritt(std::int64_t iPos, std::int64_t iMax) {
    if (OrvoUpdateProgressBox2(static_cast<long>(iPos), static_cast<long>(iMax))) return;
    if (SollIch("Vorgang abbrechen..."_t, "Möchten Sie wirklich den Vorgang abbrechen?"_t, 0) == SOLLICH_JA)
        BrichAb();
}

void BrichAb() {
    OrvoCloseProgressBox();
    std::cerr << "Abgebrochen.\n";
    throw CLI::RuntimeError(ENDE_ABBRUCH);
}

} // namespace orvostat
