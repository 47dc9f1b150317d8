#include "SqliteDatei.h"
#include "SqliteSchema.h"
#include "SqliteVorrat.h"
#include "SqliteWeg.h"

#include "orvostatbs/host/Tabellen.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

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

// What can be told without SQLite, which would already repair or lock what is not ours.
CGrund PruefeDatei(const fs::path & pfad) {
    std::error_code fehler;
    const fs::file_status status = fs::status(pfad, fehler);
    if (!fs::exists(status)) return "gibt es nicht."_t;
    if (fs::is_directory(status)) return "ist ein Verzeichnis."_t;
    if (!fs::is_regular_file(status)) return "ist keine gewöhnliche Datei."_t;
    std::ifstream ein(pfad, std::ios::binary);
    if (!ein) return "lässt sich nicht lesen; vermutlich fehlt die Berechtigung."_t;
    CDateikopf kopf;
    if (!kopf.Lies(ein) || !kopf.IstDatenbank()) return "ist keine Datenbank."_t;
    if (kopf.Anwendung() != static_cast<std::uint32_t>(schema::ANWENDUNG))
        return "ist die Datenbank eines anderen Programms."_t;
    if (kopf.Version() != static_cast<std::uint32_t>(schema::VERSION)) {
        CString sGrund;
        sGrund.Format(
            "ist eine Praxisdatenbank der Schemaversion %u; dieses Programm kennt die Version %d."_t,
            kopf.Version(), schema::VERSION);
        return sGrund;
    }
    if (kopf.MitWal()) return "ist von einem anderen Werkzeug auf das WAL-Verfahren umgestellt worden."_t;
    return {};
}

// What SQLite's result means for the user.
CString Grund(int iErgebnis) {
    switch (iErgebnis & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "ist gesperrt; ein anderes Programm schreibt gerade in sie."_t;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "ist beschädigt."_t;
    case SQLITE_READONLY:
        return "trägt noch eine unterbrochene Änderung; öffnen Sie sie einmal zum Schreiben."_t;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        return "lässt sich nicht öffnen; vermutlich fehlt die Berechtigung."_t;
    default:
        return "lässt sich nicht lesen."_t;
    }
}

CGrund PruefeSchema(CSqliteDatei & datei) {
    const CAnweisung pAnweisung = datei.Bereite("SELECT name, sql FROM sqlite_schema WHERE sql IS NOT NULL");
    if (!pAnweisung) return Grund(sqlite3_errcode(datei.Verbindung()));
    const auto Text = [&](int i) {
        return reinterpret_cast<const char *>(sqlite3_column_text(pAnweisung.get(), i));
    };
    std::map<std::string, std::string> mapObjekte;
    int iErgebnis;
    while ((iErgebnis = sqlite3_step(pAnweisung.get())) == SQLITE_ROW)
        if (Text(0) && Text(1)) mapObjekte[Text(0)] = Text(1);
    if (iErgebnis != SQLITE_DONE) return Grund(iErgebnis);
    for (const auto & [sName, sSql] : schema::Objekte())
        if (mapObjekte[sName] != sSql) {
            CString sGrund;
            sGrund.Format("ist verändert worden: %s fehlt oder ist anders aufgebaut."_t,
                          CString(sName.c_str()));
            return sGrund;
        }
    return {};
}

// Touches every table once, so that a file with a damaged or missing root does not pass for a practice.
CGrund PruefeTabellen(CSqliteDatei & datei) {
    for (const STabelle * pTabelle : AlleTabellen()) {
        const CAnweisung pAnweisung = datei.Bereite(schema::Probe(*pTabelle));
        const int iErgebnis = pAnweisung ? sqlite3_step(pAnweisung.get()) : SQLITE_ERROR;
        if (iErgebnis != SQLITE_ROW && iErgebnis != SQLITE_DONE)
            return Grund(sqlite3_errcode(datei.Verbindung()));
    }
    const CAnweisung pLaufnummer = datei.Bereite(schema::LIES_LAUFNUMMER);
    if (!pLaufnummer || sqlite3_step(pLaufnummer.get()) != SQLITE_ROW) return Grund(SQLITE_CORRUPT);
    return {};
}

CGrund OeffneVorhandene(const fs::path & pfad, bool bNurLesen, std::unique_ptr<CSqliteDatei> & pDatei) {
    if (CGrund grund = PruefeDatei(pfad)) return grund;
    CVerbindung pVerbindung =
        Verbinde(AlsUtf8(pfad), bNurLesen ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, GEDULD_OEFFNEN_MS);
    if (!pVerbindung) return Grund(SQLITE_CANTOPEN);
    if (!bNurLesen && sqlite3_db_readonly(pVerbindung.get(), "main") != 0) return "ist schreibgeschützt."_t;
    pDatei = std::make_unique<CSqliteDatei>(std::move(pVerbindung), bNurLesen);
    if (CGrund grund = PruefeSchema(*pDatei)) return grund;
    return PruefeTabellen(*pDatei);
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
    for (const auto & [sName, sSql] : schema::Objekte())
        if (!datei.Fuehre(sSql.c_str())) return false;
    return datei.Fuehre(schema::ERSTE_LAUFNUMMER) && datei.Fuehre("COMMIT");
}

CGrund MacheNeue(const fs::path & pfad, bool bUngesichert, std::unique_ptr<CSqliteDatei> & pDatei) {
    std::error_code fehler;
    if (!pfad.has_filename()) return "ist kein Dateiname."_t;
    if (fs::exists(fs::symlink_status(pfad, fehler))) return "gibt es schon."_t;
    CVerbindung pVerbindung =
        Verbinde(AlsUtf8(pfad), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, GEDULD_OEFFNEN_MS);
    if (!pVerbindung)
        return "lässt sich nicht anlegen; vermutlich fehlt das Verzeichnis oder die Berechtigung."_t;
    pDatei = std::make_unique<CSqliteDatei>(std::move(pVerbindung), false);
    if (LegeAn(*pDatei, bUngesichert)) return {};
    pDatei.reset();
    fs::remove(pfad, fehler);
    return "lässt sich nicht anlegen; vermutlich ist der Datenträger voll."_t;
}

} // namespace

std::shared_ptr<CSqliteSpeicher> CSqliteSpeicher::OeffneDatei(const std::string & sPfad, EModus eModus,
                                                              CString & sMeldung) {
    // The whole path: SQLite takes some short names for something else than files.
    std::error_code fehler;
    const fs::path pfad = fs::absolute(fs::path(std::u8string(sPfad.begin(), sPfad.end())), fehler);
    std::unique_ptr<CSqliteDatei> pDatei;
    const bool bNeu = eModus == EModus::Neu || eModus == EModus::NeuUngesichert;
    CGrund grund = bNeu ? MacheNeue(pfad, eModus == EModus::NeuUngesichert, pDatei)
                        : OeffneVorhandene(pfad, eModus == EModus::Lesen, pDatei);
    if (!grund && !pDatei->Fuehre("PRAGMA cache_size = -32768")) grund = Grund(SQLITE_ERROR);
    if (grund) {
        sMeldung.Format("Die Datei \"%s\" %s"_t, AusUtf8(sPfad), *grund);
        return nullptr;
    }
    sMeldung.Empty();
    sqlite3_busy_timeout(pDatei->Verbindung(), GEDULD_MS);
    return std::shared_ptr<CSqliteSpeicher>(new CSqliteSpeicher(std::move(pDatei)));
}

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
const std::string & CSqliteSpeicher::LetzterFehler() const { return m_pDatei->LetzterFehler(); }

std::string CSqliteSpeicher::WegSql(const STabelle & tabelle) const {
    return schema::Weg(tabelle, 1, false, false, m_pDatei->Dazu());
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
