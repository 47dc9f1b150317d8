#include "SqliteDatei.h"

#include "SqliteSchema.h"

#include <cerrno>
#include <new>
#include <utility>

namespace orvostat {

namespace {

// Statements kept of one kind: so many walks of it may be nested cheaply.
constexpr std::size_t FREIE_HOECHSTENS = 8;

// The cause behind SQLite's last result.
ESpeicherursache Ursache(sqlite3 * p) {
    const int iErgebnis = sqlite3_extended_errcode(p);
    switch (iErgebnis & 0xFF) {
    case SQLITE_CORRUPT:
        return ESpeicherursache::Beschaedigt;
    case SQLITE_BUSY:
        return ESpeicherursache::Gesperrt;
    case SQLITE_FULL:
        return ESpeicherursache::Voll;
    case SQLITE_READONLY:
        return ESpeicherursache::Schreibgeschuetzt;
    case SQLITE_CANTOPEN:
        return ESpeicherursache::KeineNebendatei;
    case SQLITE_NOMEM:
        return ESpeicherursache::KeinSpeicher;
    case SQLITE_IOERR:
        if (iErgebnis == SQLITE_IOERR_NOMEM) return ESpeicherursache::KeinSpeicher;
        return Systemfehler(p) == EFBIG ? ESpeicherursache::ZuGross : ESpeicherursache::Datentraeger;
    default:
        return ESpeicherursache::Andere;
    }
}

} // namespace

CVerbindung Verbinde(const std::string & sPfad, int iArt, int iGeduld) {
    sqlite3 * p = nullptr;
    const int iErgebnis = sqlite3_open_v2(sPfad.c_str(), &p, iArt | SQLITE_OPEN_NOMUTEX, nullptr);
    CVerbindung pVerbindung(p);
    if (iErgebnis != SQLITE_OK) {
        const int iGrund = p != nullptr && iErgebnis != SQLITE_NOMEM ? sqlite3_system_errno(p) : ENOMEM;
        pVerbindung.reset();
        errno = iGrund;
        return nullptr;
    }
    sqlite3_busy_timeout(p, iGeduld);
    // What a file brings along never runs.
    sqlite3_db_config(p, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(p, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(p, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    return pVerbindung;
}

int Systemfehler(sqlite3 * p) {
    int iErrno = 0;
    if (sqlite3_file_control(p, "main", SQLITE_FCNTL_LAST_ERRNO, &iErrno) == SQLITE_OK && iErrno != 0)
        return iErrno;
    return sqlite3_system_errno(p);
}

std::unique_ptr<CSqliteDatei> CSqliteDatei::Zweite() const {
    CVerbindung pZweite = Verbinde(sqlite3_db_filename(Verbindung(), "main"), SQLITE_OPEN_READONLY, 0);
    int iBewegt = 1;
    if (!pZweite ||
        sqlite3_file_control(Verbindung(), "main", SQLITE_FCNTL_HAS_MOVED, &iBewegt) != SQLITE_OK ||
        iBewegt != 0)
        return nullptr;
    auto pDatei = std::make_unique<CSqliteDatei>(std::move(pZweite), true);
    return pDatei->LiesAls(m_iVersion) ? std::move(pDatei) : nullptr;
}

int CSqliteDatei::Fehler() noexcept {
    m_eUrsache = Ursache(Verbindung());
    try {
        // SQLite has no words of its own for a file that has reached the user's limit.
        m_sFehler = m_eUrsache == ESpeicherursache::ZuGross ? "file too large" : sqlite3_errmsg(Verbindung());
    } catch (const std::bad_alloc &) {
        return KeinSpeicher();
    }
    return ZEILE_FEHLER;
}

int CSqliteDatei::KeinSpeicher() noexcept {
    m_eUrsache = ESpeicherursache::KeinSpeicher;
    m_sFehler = "out of memory"; // so short that it takes none
    return ZEILE_FEHLER;
}

CAnweisung CSqliteDatei::Bereite(std::string_view sSql) {
    sqlite3_stmt * p = nullptr;
    if (sqlite3_prepare_v3(Verbindung(), sSql.data(), static_cast<int>(sSql.size()),
                           SQLITE_PREPARE_PERSISTENT, &p, nullptr) != SQLITE_OK)
        Fehler();
    return CAnweisung(p);
}

bool CSqliteDatei::Fuehre(sqlite3_stmt * pAnweisung) {
    const bool bFertig = sqlite3_step(pAnweisung) == SQLITE_DONE;
    if (sqlite3_reset(pAnweisung) == SQLITE_OK && bFertig) return true;
    Fehler();
    return false;
}

bool CSqliteDatei::Fuehre(const char * pSql) {
    if (sqlite3_exec(Verbindung(), pSql, nullptr, nullptr, nullptr) == SQLITE_OK) return true;
    Fehler();
    return false;
}

std::vector<CAnweisung> & CSqliteDatei::Freie(const STabelle & tabelle, const SBereich & bereich) {
    const std::size_t iArt = (bereich.bAbsteigend ? 1u : 0u) + (bereich.sBis.empty() ? 0u : 2u);
    return m_mapTabellen[&tabelle].avWege[static_cast<std::size_t>(bereich.iSchluessel - 1) * 4 + iArt];
}

CAnweisung CSqliteDatei::NimmWeg(const STabelle & tabelle, const SBereich & bereich) {
    if (bereich.iSchluessel < 1 || static_cast<std::size_t>(bereich.iSchluessel) > tabelle.vSchluessel.size())
        return nullptr;
    std::vector<CAnweisung> & vFreie = Freie(tabelle, bereich);
    vFreie.reserve(FREIE_HOECHSTENS); // GibWeg needs no memory
    CAnweisung pAnweisung;
    if (vFreie.empty()) {
        pAnweisung = Bereite(
            schema::Weg(tabelle, bereich.iSchluessel, bereich.bAbsteigend, !bereich.sBis.empty(), Dazu()));
        if (!pAnweisung) return nullptr;
    } else {
        pAnweisung = std::move(vFreie.back());
        vFreie.pop_back();
    }
    // An empty text at null would be NULL; what is bound here must outlive the call.
    const auto Binde = [&](int i, const std::string & s) {
        return sqlite3_bind_blob64(pAnweisung.get(), i, s.c_str(), s.size(), SQLITE_TRANSIENT) == SQLITE_OK;
    };
    if (Binde(1, bereich.sVon) && (bereich.sBis.empty() || Binde(2, bereich.sBis))) return pAnweisung;
    Fehler();
    return nullptr;
}

void CSqliteDatei::GibWeg(const STabelle & tabelle, const SBereich & bereich,
                          CAnweisung pAnweisung) noexcept {
    sqlite3_reset(pAnweisung.get());
    std::vector<CAnweisung> & vFreie = Freie(tabelle, bereich);
    if (vFreie.size() < FREIE_HOECHSTENS) vFreie.push_back(std::move(pAnweisung));
}

void CSqliteDatei::EndetWeg() {
    if (--m_iLaufende == 0) ++m_iStand;
}

// ---- groups

int CSqliteDatei::Beginne() {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    if (m_iTiefe == 0) {
        if (!Fuehre("BEGIN IMMEDIATE")) return ZEILE_FEHLER;
        if (!LiesLaufnummer()) {
            Fuehre("ROLLBACK");
            return ZEILE_FEHLER;
        }
        m_bVerworfen = false;
    }
    ++m_iTiefe;
    return ZEILE_OK;
}

int CSqliteDatei::Beende(bool bUebernehmen) {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    if (m_iTiefe == 0) return ZEILE_FEHLER;
    m_bVerworfen = m_bVerworfen || !bUebernehmen;
    if (--m_iTiefe == 0) {
        if (!m_bVerworfen) m_bVerworfen = !SchreibeLaufnummer() || !Fuehre("COMMIT");
        if (m_bVerworfen && sqlite3_get_autocommit(Verbindung()) == 0) Fuehre("ROLLBACK");
    }
    return bUebernehmen && m_bVerworfen ? ZEILE_FEHLER : ZEILE_OK;
}

// Runs a write inside the open group, or in one of its own. SQLite itself ends a group after some failures (the disk
// is full); then nothing more goes in it. An exception is thrown before the write reaches SQLite.
template <class F> int CSqliteDatei::InGruppe(F f) {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    if (m_iTiefe > 0) {
        const int iErgebnis =
            sqlite3_get_autocommit(Verbindung()) == 0 ? f() : static_cast<int>(ZEILE_FEHLER);
        if (sqlite3_get_autocommit(Verbindung()) != 0) m_bVerworfen = true;
        return iErgebnis;
    }
    if (const int iBeginn = Beginne(); iBeginn != ZEILE_OK) return iBeginn;
    int iErgebnis;
    try {
        iErgebnis = f();
    } catch (...) {
        Beende(false);
        throw;
    }
    const int iEnde = Beende(iErgebnis == ZEILE_OK);
    return iErgebnis == ZEILE_OK ? iEnde : iErgebnis;
}

// Runs a write whose values are bound, or tells that they could not be.
int CSqliteDatei::Schreibe(sqlite3_stmt * pAnweisung, bool bGebunden) {
    if (!bGebunden) return Fehler();
    if (!Fuehre(pAnweisung)) return ZEILE_FEHLER;
    return sqlite3_changes(Verbindung()) > 0 ? ZEILE_OK : ZEILE_KEINE;
}

bool CSqliteDatei::LiesLaufnummer() {
    const CAnweisung pAnweisung = Bereite(schema::LIES_LAUFNUMMER);
    if (!pAnweisung) return false;
    if (sqlite3_step(pAnweisung.get()) != SQLITE_ROW) {
        Fehler();
        return false;
    }
    m_iLfd = m_iLfdAmAnfang = sqlite3_column_int64(pAnweisung.get(), 0);
    return true;
}

bool CSqliteDatei::SchreibeLaufnummer() {
    if (m_iLfd == m_iLfdAmAnfang) return true;
    const CAnweisung pAnweisung = Bereite(schema::SCHREIBE_LAUFNUMMER);
    if (!pAnweisung) return false;
    return Schreibe(pAnweisung.get(), sqlite3_bind_int64(pAnweisung.get(), 1, m_iLfd) == SQLITE_OK) ==
           ZEILE_OK;
}

// ---- writes

bool CSqliteDatei::Binde(sqlite3_stmt * pAnweisung, CWerte vWerte, const SPlatz & platz) {
    m_sTexte.clear();
    m_viEnden.clear();
    for (const CString * pWert : vWerte) {
        const CSicht sicht = pWert->Sicht();
        if (IstAscii(sicht))
            m_sTexte += sicht;
        else
            m_sTexte += NachUtf8(sicht);
        m_viEnden.push_back(m_sTexte.size());
    }
    int i = 1;
    std::size_t iAb = 0;
    bool bGut = true;
    for (const std::size_t iEnde : m_viEnden) {
        bGut = bGut && sqlite3_bind_text64(pAnweisung, i++, m_sTexte.data() + iAb, iEnde - iAb, SQLITE_STATIC,
                                           SQLITE_UTF8) == SQLITE_OK;
        iAb = iEnde;
    }
    bGut = bGut && sqlite3_bind_int64(pAnweisung, i++, platz.iLfd) == SQLITE_OK;
    for (const std::string & sSchluessel : platz.vSchluessel)
        bGut = bGut && BindeBytes(pAnweisung, i++, sSchluessel);
    return bGut;
}

bool CSqliteDatei::BindePlatz(sqlite3_stmt * pAnweisung, int iAb, const SPlatz & platz) {
    return sqlite3_bind_int64(pAnweisung, iAb, platz.iLfd) == SQLITE_OK &&
           BindeBytes(pAnweisung, iAb + 1, platz.vSchluessel[0]);
}

namespace {

void LiesSchluessel(SPlatz & platz, const STabelle & tabelle, CWerte vWerte) {
    platz.vSchluessel.resize(tabelle.vSchluessel.size());
    for (std::size_t k = 0; k < platz.vSchluessel.size(); ++k) {
        platz.vSchluessel[k].clear();
        HaengeSchluesselAn(platz.vSchluessel[k], tabelle, static_cast<int>(k + 1), vWerte);
    }
}

} // namespace

int CSqliteDatei::Fuege(const STabelle & tabelle, CWerte vWerte) {
    return InGruppe([&]() -> int {
        CAnweisung & pAnweisung = m_mapTabellen[&tabelle].pFuege;
        if (!pAnweisung) pAnweisung = Bereite(schema::Fuege(tabelle));
        if (!pAnweisung) return ZEILE_FEHLER;
        LiesSchluessel(m_platz, tabelle, vWerte);
        m_platz.iLfd = ++m_iLfd;
        return Schreibe(pAnweisung.get(), Binde(pAnweisung.get(), vWerte, m_platz));
    });
}

int CSqliteDatei::Loesche(const STabelle & tabelle, const SPlatz & platz) {
    return InGruppe([&]() -> int {
        CAnweisung & pAnweisung = m_mapTabellen[&tabelle].pLoesche;
        if (!pAnweisung) pAnweisung = Bereite(schema::Loesche(tabelle));
        if (!pAnweisung) return ZEILE_FEHLER;
        return Schreibe(pAnweisung.get(), BindePlatz(pAnweisung.get(), 1, platz));
    });
}

int CSqliteDatei::Aendere(const STabelle & tabelle, SPlatz & platz, CWerte vWerte) {
    SPlatz neu;
    const int iErgebnis = InGruppe([&]() -> int {
        CAnweisung & pAnweisung = m_mapTabellen[&tabelle].pAendere;
        if (!pAnweisung) pAnweisung = Bereite(schema::Aendere(tabelle));
        if (!pAnweisung) return ZEILE_FEHLER;
        LiesSchluessel(neu, tabelle, vWerte);
        neu.iLfd = neu.vSchluessel == platz.vSchluessel ? platz.iLfd : ++m_iLfd;
        const int iDahinter = static_cast<int>(vWerte.size() + 1 + neu.vSchluessel.size() + 1);
        const bool bGebunden =
            Binde(pAnweisung.get(), vWerte, neu) && BindePlatz(pAnweisung.get(), iDahinter, platz);
        return Schreibe(pAnweisung.get(), bGebunden);
    });
    if (iErgebnis == ZEILE_OK) platz = std::move(neu); // the group's end may have failed as well
    return iErgebnis;
}

std::int64_t CSqliteDatei::Zaehle(const STabelle & tabelle) {
    const CAnweisung pAnweisung = Bereite(schema::Zaehle(tabelle));
    if (!pAnweisung) return -1;
    if (sqlite3_step(pAnweisung.get()) == SQLITE_ROW) return sqlite3_column_int64(pAnweisung.get(), 0);
    Fehler();
    return -1;
}

} // namespace orvostat
