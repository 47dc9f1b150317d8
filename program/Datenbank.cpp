#include "Datenbank.h"

#include "Konsole.h"
#include "Praxis.h"

#include "orvostatbs/host/Oberflaeche.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace orvostat {

namespace {

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

void Scheitere(const std::string & sSatz, const CZeilenspeicher & speicher) {
    const std::string sGrund = Fehlergrund(&speicher);
    Verweigere(sSatz + (sGrund.empty() ? "." : ": " + sGrund + "."));
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
