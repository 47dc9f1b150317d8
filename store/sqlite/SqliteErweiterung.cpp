// Files of older versions of the schema: how they are read, and how they become files of today's.
#include "SqliteDatei.h"

#include <algorithm>
#include <new>

namespace orvostat {

namespace {

// The bytes of a key as SQL computes them: of the comparison and the key's parts.
void Schluesselfunktion(sqlite3_context * pKontext, int iWerte, sqlite3_value ** ppWerte) {
    try {
        const STabelle tabelle{"", {}, {}, static_cast<EVergleich>(sqlite3_value_int(ppWerte[0]))};
        std::string sBytes;
        for (int i = 1; i < iWerte; ++i) {
            const auto * pText = reinterpret_cast<const char *>(sqlite3_value_text(ppWerte[i]));
            const auto iLaenge = static_cast<std::size_t>(sqlite3_value_bytes(ppWerte[i]));
            if (pText == nullptr && iLaenge > 0) throw std::bad_alloc();
            CString sTeil;
            sTeil.SetzeUtf8(pText, iLaenge);
            HaengeTeilAn(sBytes, tabelle, sTeil, i + 1 == iWerte);
        }
        sqlite3_result_blob64(pKontext, sBytes.data(), sBytes.size(), SQLITE_TRANSIENT);
    } catch (const std::bad_alloc &) { // nothing may be thrown through SQLite
        sqlite3_result_error_nomem(pKontext);
    }
}

} // namespace

bool CSqliteDatei::KenneSchluessel() {
    const int iArt = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    if (sqlite3_create_function_v2(Verbindung(), schema::SCHLUESSELFUNKTION, -1, iArt, nullptr,
                                   &Schluesselfunktion, nullptr, nullptr, nullptr) == SQLITE_OK)
        return true;
    Fehler();
    return false;
}

int CSqliteDatei::Version() {
    const CAnweisung pAnweisung = Bereite("PRAGMA user_version");
    if (!pAnweisung) return -1;
    if (sqlite3_step(pAnweisung.get()) == SQLITE_ROW) return sqlite3_column_int(pAnweisung.get(), 0);
    Fehler();
    return -1;
}

bool CSqliteDatei::LiesAls(int iVersion) {
    m_iVersion = iVersion;
    const std::vector<std::string> vSql = schema::Ansichten(iVersion);
    return vSql.empty() || (KenneSchluessel() && std::ranges::all_of(vSql, [this](const std::string & sSql) {
                                return Fuehre(sSql.c_str());
                            }));
}

// Views and triggers that somebody has added go on meaning the table of that name.
bool CSqliteDatei::Erweitere() {
    sqlite3_db_config(Verbindung(), SQLITE_DBCONFIG_LEGACY_ALTER_TABLE, 1, nullptr);
    if (!KenneSchluessel() || !Fuehre("BEGIN IMMEDIATE")) return false;
    const int iVersion = Version(); // another program may have been quicker
    return iVersion >= 0 &&
           std::ranges::all_of(schema::Erweiterung(iVersion),
                               [this](const std::string & sSql) { return Fuehre(sSql.c_str()); }) &&
           Fuehre("COMMIT");
}

} // namespace orvostat
