#include "SqliteDatei.h"
#include "SqliteSchema.h"
#include "SqliteVorrat.h"
#include "SqliteWeg.h"

#include "orvostatbs/host/Tabellen.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

// Waiting for another program's lock: short when the user waits for the file to open, longer within a run.
constexpr int GEDULD_OEFFNEN_MS = 500;
constexpr int GEDULD_MS = 5000;

constexpr int SEITE = 8192;

// As SQLite takes paths.
std::string AlsUtf8(const fs::path & pfad) {
    const std::u8string s = pfad.u8string();
    return {s.begin(), s.end()};
}

// Why a file is refused; the sentence goes on behind its name.
using CGrund = std::optional<CString>;

// The head of a database file, as SQLite documents its format.
class CDateikopf {
public:
    // False where the file is too short for one.
    [[nodiscard]] bool Lies(std::istream & ein) {
        return static_cast<bool>(ein.read(m_ac.data(), static_cast<std::streamsize>(m_ac.size())));
    }
    [[nodiscard]] bool IstDatenbank() const { return std::memcmp(m_ac.data(), "SQLite format 3", 16) == 0; }
    [[nodiscard]] bool MitWal() const { return m_ac[18] == 2 || m_ac[19] == 2; }
    [[nodiscard]] std::uint32_t Version() const { return Zahl(60); }
    [[nodiscard]] std::uint32_t Anwendung() const { return Zahl(68); }

private:
    [[nodiscard]] std::uint32_t Zahl(std::size_t i) const {
        return static_cast<std::uint32_t>(wort::Vier(m_ac.data() + i));
    }
    std::array<char, 100> m_ac{};
};

// What the system's word on a file means for the user. EACCES does not come where SQLite has tried to open the file
// in a second way.
constexpr struct {
    int iErrno;
    const char * pGrund;
} SYSTEMGRUENDE[] = {
    {EACCES, "; vermutlich fehlt die Berechtigung"},
    {EPERM, "; vermutlich fehlt die Berechtigung"},
    {ENOENT, "; vermutlich fehlt das Verzeichnis oder die Berechtigung"},
    {ENOTDIR, "; vermutlich fehlt das Verzeichnis oder die Berechtigung"},
    {EIO, ": der Datenträger meldet einen Fehler"},
    {ENOSPC, ": der Datenträger ist voll"},
    {EFBIG, ": sie würde größer als erlaubt"},
    {EMFILE, ": zu viele Dateien sind offen"},
    {ENFILE, ": zu viele Dateien sind offen"},
    {ENOMEM, ": der Speicher reicht nicht"},
};

// sWas is "lesen", "anlegen" or "erweitern".
CString Systemgrund(const CString & sWas, int iErrno) {
    CString s;
    for (const auto & [iBekannt, pGrund] : SYSTEMGRUENDE)
        if (iBekannt == iErrno) {
            s.Format("lässt sich nicht %s%s."_t, sWas, AusUtf8(pGrund));
            return s;
        }
    s.Format("lässt sich nicht %s (Fehler %d des Betriebssystems)."_t, sWas, iErrno);
    return s;
}

// What can be told without SQLite, which would already repair or lock what is not ours.
CGrund PruefeDatei(const fs::path & pfad) {
    std::error_code fehler;
    const fs::file_status status = fs::status(pfad, fehler);
    if (!fs::status_known(status)) return Systemgrund("lesen", fehler.value());
    if (!fs::exists(status)) return "gibt es nicht."_t;
    if (fs::is_directory(status)) return "ist ein Verzeichnis."_t;
    if (!fs::is_regular_file(status)) return "ist keine gewöhnliche Datei."_t;
    std::ifstream ein(pfad, std::ios::binary);
    if (!ein) return Systemgrund("lesen", errno);
    CDateikopf kopf;
    const bool bGelesen = kopf.Lies(ein);
    if (ein.bad()) return Systemgrund("lesen", EIO);
    if (!bGelesen || !kopf.IstDatenbank()) return "ist keine Datenbank."_t;
    if (kopf.Anwendung() != static_cast<std::uint32_t>(schema::ANWENDUNG))
        return "ist die Datenbank eines anderen Programms."_t;
    if (kopf.Version() < 1 || kopf.Version() > static_cast<std::uint32_t>(schema::VERSION)) {
        CString sGrund;
        sGrund.Format(
            "ist eine Praxisdatenbank der Schemaversion %u; dieses Programm kennt die Versionen 1 bis %d."_t,
            kopf.Version(), schema::VERSION);
        return sGrund;
    }
    if (kopf.MitWal()) return "ist von einem anderen Werkzeug auf das WAL-Verfahren umgestellt worden."_t;
    return {};
}

// What SQLite's last result means for the user.
CString Grund(const CSqliteDatei & datei, const CString & sWas) {
    const int iErgebnis = sqlite3_extended_errcode(datei.Verbindung());
    const int iErrno = Systemfehler(datei.Verbindung());
    switch (iErgebnis & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        if (sWas == "erweitern"_t)
            return "lässt sich nicht erweitern; ein anderes Programm arbeitet mit ihr."_t;
        return "ist gesperrt; ein anderes Programm schreibt gerade in sie."_t;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "ist beschädigt."_t;
    case SQLITE_READONLY:
        return "trägt noch eine unterbrochene Änderung; wer sie zum Schreiben öffnet, nimmt diese zurück."_t;
    case SQLITE_FULL:
        return Systemgrund(sWas, ENOSPC);
    case SQLITE_CANTOPEN:
        return Systemgrund(sWas, iErrno != 0 ? iErrno : EACCES);
    case SQLITE_IOERR:
        if (iErgebnis != SQLITE_IOERR_NOMEM) return Systemgrund(sWas, iErrno != 0 ? iErrno : EIO);
        [[fallthrough]];
    case SQLITE_NOMEM:
        return Systemgrund(sWas, ENOMEM);
    default:
        CString s;
        s.Format("lässt sich nicht %s."_t, sWas);
        return s;
    }
}

CGrund PruefeSchema(CSqliteDatei & datei, int iVersion) {
    const CAnweisung pAnweisung = datei.Bereite("SELECT name, sql FROM sqlite_schema WHERE sql IS NOT NULL");
    if (!pAnweisung) return Grund(datei, "lesen");
    const auto Text = [&](int i) {
        return reinterpret_cast<const char *>(sqlite3_column_text(pAnweisung.get(), i));
    };
    std::map<std::string, std::string> mapObjekte;
    int iErgebnis;
    while ((iErgebnis = sqlite3_step(pAnweisung.get())) == SQLITE_ROW)
        if (Text(0) && Text(1)) mapObjekte[Text(0)] = Text(1);
    if (iErgebnis != SQLITE_DONE) return Grund(datei, "lesen");
    for (const auto & [sName, sSql] : schema::Objekte(iVersion))
        if (mapObjekte[sName] != sSql) {
            CString sGrund;
            sGrund.Format("ist verändert worden: %s fehlt oder ist anders aufgebaut."_t,
                          CString(sName.c_str()));
            return sGrund;
        }
    return {};
}

// Touches every table once, so that a file with a damaged or missing root does not pass for a practice.
CGrund PruefeTabellen(CSqliteDatei & datei, int iVersion) {
    for (const STabelle * pTabelle : AlleTabellen()) {
        if (!schema::Hat(iVersion, *pTabelle)) continue;
        const CAnweisung pAnweisung = datei.Bereite(schema::Probe(*pTabelle));
        const int iErgebnis = pAnweisung ? sqlite3_step(pAnweisung.get()) : SQLITE_ERROR;
        if (iErgebnis != SQLITE_ROW && iErgebnis != SQLITE_DONE) return Grund(datei, "lesen");
    }
    const CAnweisung pLaufnummer = datei.Bereite(schema::LIES_LAUFNUMMER);
    const int iErgebnis = pLaufnummer ? sqlite3_step(pLaufnummer.get()) : SQLITE_ERROR;
    if (iErgebnis == SQLITE_ROW) return {};
    return iErgebnis == SQLITE_DONE ? "ist beschädigt."_t : Grund(datei, "lesen");
}

// The version is only sure here: a crash may have left another one in the file's head.
CGrund PruefeInhalt(CSqliteDatei & datei, int & iVersion) {
    iVersion = datei.Version();
    if (iVersion < 0) return Grund(datei, "lesen");
    if (CGrund grund = PruefeSchema(datei, iVersion)) return grund;
    return PruefeTabellen(datei, iVersion);
}

// Opens the file as it is.
CGrund OeffneVorhandene(const fs::path & pfad, bool bNurLesen, std::unique_ptr<CSqliteDatei> & pDatei,
                        int & iVersion) {
    if (CGrund grund = PruefeDatei(pfad)) return grund;
    CVerbindung pVerbindung =
        Verbinde(AlsUtf8(pfad), bNurLesen ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, GEDULD_OEFFNEN_MS);
    if (!pVerbindung) return Systemgrund("lesen", errno);
    if (!bNurLesen && sqlite3_db_readonly(pVerbindung.get(), "main") != 0) return "ist schreibgeschützt."_t;
    pDatei = std::make_unique<CSqliteDatei>(std::move(pVerbindung), bNurLesen);
    // One reading, so that nobody extends the file meanwhile.
    if (!pDatei->Fuehre("BEGIN")) return Grund(*pDatei, "lesen");
    if (CGrund grund = PruefeInhalt(*pDatei, iVersion)) return grund;
    if (!pDatei->Fuehre("COMMIT")) return Grund(*pDatei, "lesen");
    return {};
}

// Opens the file with this program's version of the schema.
CGrund OeffneAlsHeutige(const fs::path & pfad, bool bNurLesen, std::unique_ptr<CSqliteDatei> & pDatei) {
    int iVersion = 0;
    if (CGrund grund = OeffneVorhandene(pfad, bNurLesen, pDatei, iVersion)) return grund;
    if (iVersion == schema::VERSION) return {};
    if (bNurLesen ? pDatei->LiesAls(iVersion) : pDatei->Erweitere()) return {};
    return Grund(*pDatei, bNurLesen ? "lesen" : "erweitern"_t);
}

bool LegeAn(CSqliteDatei & datei, bool bUngesichert) {
    const auto Setze = [&](const std::string & sName, int iWert) {
        return datei.Fuehre(("PRAGMA " + sName + " = " + std::to_string(iWert)).c_str());
    };
    if (!Setze("page_size", SEITE)) return false;
    if (bUngesichert && !datei.Fuehre("PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY")) return false;
    if (!datei.Fuehre("BEGIN IMMEDIATE") || !Setze("application_id", schema::ANWENDUNG) ||
        !Setze("user_version", schema::VERSION))
        return false;
    for (const auto & [sName, sSql] : schema::Objekte(schema::VERSION))
        if (!datei.Fuehre(sSql.c_str())) return false;
    return datei.Fuehre(schema::ERSTE_LAUFNUMMER) && datei.Fuehre("COMMIT");
}

// Removes a file at the end unless it has become a whole one.
class CUnfertig {
public:
    CUnfertig() = default;
    ~CUnfertig() {
        std::error_code fehler;
        if (!m_pfad.empty()) fs::remove(m_pfad, fehler);
    }
    CUnfertig(const CUnfertig &) = delete;
    CUnfertig & operator=(const CUnfertig &) = delete;
    void Beginnt(const fs::path & pfad) { m_pfad = pfad; }
    void Fertig() { m_pfad.clear(); }

private:
    fs::path m_pfad;
};

CGrund MacheNeue(const fs::path & pfad, bool bUngesichert, std::unique_ptr<CSqliteDatei> & pDatei,
                 CUnfertig & unfertig) {
    if (!pfad.has_filename()) return "ist kein Dateiname."_t;
    // By us, since SQLite would take a file that somebody else has made meanwhile.
    const int iHandle = open(pfad.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (iHandle < 0) return errno == EEXIST ? "gibt es schon."_t : Systemgrund("anlegen"_t, errno);
    close(iHandle);
    unfertig.Beginnt(pfad);
    CVerbindung pVerbindung = Verbinde(AlsUtf8(pfad), SQLITE_OPEN_READWRITE, GEDULD_OEFFNEN_MS);
    if (!pVerbindung) return Systemgrund("anlegen"_t, errno);
    pDatei = std::make_unique<CSqliteDatei>(std::move(pVerbindung), false);
    if (LegeAn(*pDatei, bUngesichert)) return {};
    return Grund(*pDatei, "anlegen"_t);
}

// The whole path: SQLite takes some short names for something else than files.
fs::path GanzerPfad(const std::string & sPfad) {
    std::error_code fehler;
    return fs::absolute(fs::path(std::u8string(sPfad.begin(), sPfad.end())), fehler);
}

// True without a reason against the file; else the sentence that tells it.
bool Melde(const std::string & sPfad, const CGrund & grund, CString & sMeldung) {
    sMeldung.Empty();
    if (grund) sMeldung.Format("Die Datei \"%s\" %s"_t, AusUtf8(sPfad), *grund);
    return !grund;
}

} // namespace

std::shared_ptr<CSqliteSpeicher> CSqliteSpeicher::OeffneDatei(const std::string & sPfad, EModus eModus,
                                                              CString & sMeldung) {
    const fs::path pfad = GanzerPfad(sPfad);
    CUnfertig unfertig; // goes behind the connection
    std::unique_ptr<CSqliteDatei> pDatei;
    const bool bNeu = eModus == EModus::Neu || eModus == EModus::NeuUngesichert;
    CGrund grund = bNeu ? MacheNeue(pfad, eModus == EModus::NeuUngesichert, pDatei, unfertig)
                        : OeffneAlsHeutige(pfad, eModus == EModus::Lesen, pDatei);
    if (!grund && !pDatei->Fuehre("PRAGMA cache_size = -32768")) grund = Grund(*pDatei, "lesen");
    if (!Melde(sPfad, grund, sMeldung)) return nullptr;
    sqlite3_busy_timeout(pDatei->Verbindung(), GEDULD_MS);
    std::shared_ptr<CSqliteSpeicher> pSpeicher(new CSqliteSpeicher(std::move(pDatei)));
    unfertig.Fertig();
    return pSpeicher;
}

bool CSqliteSpeicher::Unterbrochen(const std::string & sPfad) {
    const fs::path pfad = GanzerPfad(sPfad);
    if (PruefeDatei(pfad)) return false;
    const CVerbindung p = Verbinde(AlsUtf8(pfad), SQLITE_OPEN_READONLY, 0);
    return p &&
           sqlite3_exec(p.get(), "SELECT 1 FROM sqlite_schema", nullptr, nullptr, nullptr) != SQLITE_OK &&
           sqlite3_extended_errcode(p.get()) == SQLITE_READONLY_ROLLBACK;
}

bool CSqliteSpeicher::NimmZurueck(const std::string & sPfad, CString & sMeldung) {
    std::unique_ptr<CSqliteDatei> pDatei;
    int iVersion = 0;
    return Melde(sPfad, OeffneVorhandene(GanzerPfad(sPfad), false, pDatei, iVersion), sMeldung);
}

namespace {

std::string_view Bytes(sqlite3_stmt * pAnweisung, std::size_t iSpalte) {
    const auto * p =
        reinterpret_cast<const char *>(sqlite3_column_text(pAnweisung, static_cast<int>(iSpalte)));
    return {p ? p : "",
            static_cast<std::size_t>(sqlite3_column_bytes(pAnweisung, static_cast<int>(iSpalte)))};
}

// Gives the rows of a walk to its end; false if the file failed.
template <class F>
bool JedeZeile(CSqliteDatei & datei, const CAnweisung & pAnweisung, const STabelle & tabelle, F fZeile) {
    std::vector<CString> vTexte(tabelle.vSpalten.size());
    std::vector<const CString *> vZeile;
    for (const CString & sText : vTexte)
        vZeile.push_back(&sText);
    int iErgebnis = SQLITE_ERROR;
    while (pAnweisung && (iErgebnis = sqlite3_step(pAnweisung.get())) == SQLITE_ROW) {
        for (std::size_t i = 0; i < vTexte.size(); ++i)
            if (!LiesText(pAnweisung.get(), static_cast<int>(i), vTexte[i])) return datei.Fehler(), false;
        fZeile(vZeile);
    }
    if (pAnweisung && iErgebnis != SQLITE_DONE) datei.Fehler();
    return iErgebnis == SQLITE_DONE;
}

} // namespace

CSqliteSpeicher::CSqliteSpeicher(std::unique_ptr<CSqliteDatei> pDatei)
    : m_pDatei(std::move(pDatei)), m_pVorrat(std::make_unique<CSqliteVorrat>(*m_pDatei)) {}
CSqliteSpeicher::~CSqliteSpeicher() = default;

std::unique_ptr<CZeilenmenge> CSqliteSpeicher::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    m_pDatei->ZaehleWeg();
    if (auto pWeg = m_pVorrat->Oeffne(tabelle, bereich)) return pWeg;
    CAnweisung pAnweisung = m_pDatei->NimmWeg(tabelle, bereich);
    if (!pAnweisung) return nullptr;
    return std::make_unique<CSqliteWeg>(*m_pDatei, tabelle, bereich, std::move(pAnweisung));
}

int CSqliteSpeicher::Schreibe(const STabelle & tabelle, CWerte vWerte) {
    return m_pDatei->Fuege(tabelle, vWerte);
}
int CSqliteSpeicher::Beginne() { return m_pDatei->Beginne(); }
int CSqliteSpeicher::Beende(bool bUebernehmen) { return m_pDatei->Beende(bUebernehmen); }
std::int64_t CSqliteSpeicher::Zeilenzahl(const STabelle & tabelle) { return m_pDatei->Zaehle(tabelle); }
bool CSqliteSpeicher::NurLesen() const { return m_pDatei->NurLesen(); }
ESpeicherursache CSqliteSpeicher::LetzteUrsache() const { return m_pDatei->LetzteUrsache(); }

EZeilenursache CSqliteSpeicher::Fehlerursache() const {
    switch (LetzteUrsache()) {
    case ESpeicherursache::Voll:
        return EZeilenursache::Voll;
    case ESpeicherursache::Datentraeger:
        return EZeilenursache::Geraet;
    case ESpeicherursache::Schreibgeschuetzt:
    case ESpeicherursache::KeineNebendatei:
        return EZeilenursache::KeinZugriff;
    default:
        return EZeilenursache::Unbekannt;
    }
}
const std::string & CSqliteSpeicher::LetzterFehler() const { return m_pDatei->LetzterFehler(); }

bool CSqliteSpeicher::SetzeHerkunft(std::string_view sHerkunft) {
    if (NurLesen() || !m_pDatei->Fuehre(schema::MACHE_HERKUNFT)) return false;
    const CAnweisung pAnweisung = m_pDatei->Bereite(schema::SCHREIBE_HERKUNFT);
    return pAnweisung && BindeBytes(pAnweisung.get(), 1, sHerkunft) && m_pDatei->Fuehre(pAnweisung.get());
}

std::string CSqliteSpeicher::Herkunft() {
    sqlite3_stmt * p = nullptr; // null, and no failure, where the file has no such table
    sqlite3_prepare_v2(m_pDatei->Verbindung(), schema::LIES_HERKUNFT, -1, &p, nullptr);
    const CAnweisung pAnweisung(p);
    return p && sqlite3_step(p) == SQLITE_ROW ? std::string(Bytes(p, 0)) : std::string();
}

std::string CSqliteSpeicher::WegSql(const STabelle & tabelle) const {
    return schema::Weg(tabelle, 1, false, false, m_pDatei->Dazu());
}

SVorausgelesen CSqliteSpeicher::Vorausgelesen() const { return m_pDatei->Vorausgelesen(); }

bool CSqliteSpeicher::SucheVerluste(const STabelle & tabelle,
                                    const std::function<void(CWerte, std::size_t)> & fVerlust) {
    const CAnweisung pAnweisung = m_pDatei->NimmWeg(tabelle, {});
    return JedeZeile(*m_pDatei, pAnweisung, tabelle, [&](CWerte vZeile) {
        for (std::size_t i = 0; i < vZeile.size(); ++i)
            if (const std::string_view s = Bytes(pAnweisung.get(), i); !IstAscii(s) && vZeile[i]->Utf8() != s)
                fVerlust(vZeile, i);
    });
}

bool CSqliteSpeicher::SucheFremdeSchluessel(const STabelle & tabelle,
                                            const std::function<void(CWerte, int)> & fFremd) {
    const std::size_t iSpalte = tabelle.vSpalten.size();
    bool bGut = true;
    for (int k = 1; k <= static_cast<int>(tabelle.vSchluessel.size()); ++k) {
        const CAnweisung pAnweisung =
            m_pDatei->Bereite(schema::Weg(tabelle, k, false, false, schema::EDazu::Schluessel));
        const auto Vergleiche = [&](CWerte vZeile) {
            if (Bytes(pAnweisung.get(), iSpalte) != Schluesselbytes(tabelle, k, vZeile)) fFremd(vZeile, k);
        };
        bGut = pAnweisung && BindeBytes(pAnweisung.get(), 1, "") &&
               JedeZeile(*m_pDatei, pAnweisung, tabelle, Vergleiche) && bGut;
    }
    return bGut;
}

std::vector<CString> CSqliteSpeicher::Pruefe() {
    std::vector<CString> vZeilen;
    const CAnweisung pAnweisung = m_pDatei->Bereite("PRAGMA quick_check");
    int iErgebnis = SQLITE_ERROR;
    while (pAnweisung && (iErgebnis = sqlite3_step(pAnweisung.get())) == SQLITE_ROW) {
        const auto * pText = reinterpret_cast<const char *>(sqlite3_column_text(pAnweisung.get(), 0));
        if (pText && std::strcmp(pText, "ok") != 0) vZeilen.push_back(AusUtf8(pText));
    }
    if (iErgebnis != SQLITE_DONE) {
        m_pDatei->Fehler();
        vZeilen.push_back(AusUtf8(LetzterFehler()));
    }
    return vZeilen;
}

} // namespace orvostat
