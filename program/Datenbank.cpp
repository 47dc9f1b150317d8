#include "Datenbank.h"

#include "Konsole.h"
#include "Praxis.h"

#include "orvostatbs/host/Oberflaeche.h"
#ifdef ORVOSTATBS_POSTGRES
#include "orvostatbs/postgres/PostgresSpeicher.h"
#endif

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <utility>

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

// The database as libpq takes it, and the practice.
std::pair<std::string, std::string> Serverangabe(std::string s) {
    constexpr std::string_view WORT = "praxis=";
    std::size_t i = s.find(WORT);
    while (i != s.npos && s[i - 1] != '?' && s[i - 1] != '&')
        i = s.find(WORT, i + 1);
    if (i == s.npos) return {std::move(s), {}};
    const std::size_t iEnde = s.find('&', i);
    std::string sPraxis;
    for (std::size_t j = i + WORT.size(); j < std::min(iEnde, s.size()); ++j) {
        const bool bZahl = s[j] == '%' && j + 2 < s.size();
        sPraxis += bZahl ? static_cast<char>(std::strtol(s.substr(j + 1, 2).c_str(), nullptr, 16)) : s[j];
        if (bZahl) j += 2;
    }
    if (iEnde == s.npos)
        s.erase(i - 1);
    else
        s.erase(i, iEnde + 1 - i);
    return {std::move(s), std::move(sPraxis)};
}

#ifdef ORVOSTATBS_POSTGRES
std::shared_ptr<CZeilenspeicher> OeffneServer(const std::string & sDatei, EModus eModus) {
    const EServermodus eServermodus = eModus == EModus::Lesen       ? EServermodus::Lesen
                                      : eModus == EModus::Schreiben ? EServermodus::Schreiben
                                                                    : EServermodus::Anlegen;
    const auto [sVerbindung, sPraxis] = Serverangabe(sDatei);
    CString sMeldung;
    auto pSpeicher = CPostgresSpeicher::OeffneServer(sVerbindung, sPraxis, eServermodus, sMeldung);
    if (!pSpeicher) Verweigere(sMeldung.Utf8());
    return pSpeicher;
}
std::string Servername(const std::string & sVerbindung) {
    return CPostgresSpeicher::Anzeigename(sVerbindung);
}
#else
std::shared_ptr<CZeilenspeicher> OeffneServer(const std::string &, EModus) {
    Verweigere("Dieses Programm ist ohne die Anbindung an einen Server gebaut.");
}
std::string Servername(const std::string &) { return "Server"; }
#endif

} // namespace

bool IstServer(const std::string & sDatei) {
    return sDatei.starts_with("postgresql://") || sDatei.starts_with("postgres://");
}

std::string MitPraxis(const std::string & sDatei, const std::string & sPraxis) {
    if (!IstServer(sDatei))
        Verweigere("Eine Praxisdatei hält nur eine Praxis; --praxis gilt für einen Server.");
    static constexpr char ZIFFERN[] = "0123456789ABCDEF";
    std::string s = Serverangabe(sDatei).first;
    s += s.find('?') == s.npos ? "?praxis=" : "&praxis=";
    for (const char c : sPraxis)
        (s += '%') +=
            {ZIFFERN[static_cast<unsigned char>(c) >> 4], ZIFFERN[static_cast<unsigned char>(c) & 15]};
    return s;
}

std::string Praxisname(const std::string & sDatei) {
    if (!IstServer(sDatei)) return sDatei;
    const auto [sVerbindung, sPraxis] = Serverangabe(sDatei);
    return Servername(sVerbindung) + (sPraxis.empty() ? "" : ", Praxis \"" + sPraxis + '"');
}

void VerweigereServer(const std::string & sDatei) {
    if (IstServer(sDatei))
        Verweigere("Das geht nur mit einer Praxisdatei. \"orvostat copy\" macht eine aus der Praxis auf dem "
                   "Server.");
}

std::shared_ptr<CZeilenspeicher> OeffnePraxis(const std::string & sDatei, EModus eModus) {
    if (IstServer(sDatei)) return OeffneServer(sDatei, eModus);
    return OeffneSpeicher(sDatei, eModus);
}

std::string Fehlergrund(const CZeilenspeicher * pSpeicher) {
#ifdef ORVOSTATBS_POSTGRES
    if (const auto * pServer = dynamic_cast<const CPostgresSpeicher *>(pSpeicher)) {
        const std::string sGrund = Ursachentext(pServer->LetzteUrsache());
        return sGrund.empty() ? pServer->LetzterFehler() : sGrund;
    }
#endif
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
    VerweigereServer(sDatei);
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
