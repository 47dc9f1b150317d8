// The schema of the file, as texts: one place for the names that several statements share.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvostat::schema {

inline constexpr int ANWENDUNG = 0x4F535442;

// What the versions of the schema have brought since the first: a table, or a column of a table that was there before;
// for a key after the first, the column with its bytes. Everything that is not listed has been there from the start.
// The last row's version is this program's.
struct SNeues {
    int iVersion;
    std::string_view sTabelle;
    std::string_view sSpalte = {};
};
inline constexpr SNeues NEUES[] = {
    {2, "GOBUDGET"},
    {2, "DATEI"},
    {2, "BEH", "SCHLUESSEL2"},
};
inline constexpr int VERSION = std::end(NEUES)[-1].iVersion;

// Whether a version of the schema has a table; a column of it.
[[nodiscard]] bool Hat(int iVersion, const STabelle & tabelle, std::string_view sSpalte = {});

// All objects of a version of the schema: name and the statement that creates it.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> Objekte(int iVersion);
// The statements that make this program's version of an older one. A table with new columns is written anew, which
// leaves its texts as they stand.
[[nodiscard]] std::vector<std::string> Erweiterung(int iVon);
// The statements that let a connection read an older version as this program's: a new table is empty, a new column
// an empty text, a new key computed. They do not touch the file.
[[nodiscard]] std::vector<std::string> Ansichten(int iVersion);
// The function that both need: the bytes of a key, of an EVergleich and the parts.
inline constexpr const char * SCHLUESSELFUNKTION = "ORVOSTAT_SCHLUESSEL";

// The last running number given.
inline constexpr const char * ERSTE_LAUFNUMMER = R"(INSERT INTO "LAUFNUMMER" VALUES (0))";
inline constexpr std::string_view LIES_LAUFNUMMER = R"(SELECT "LETZTE" FROM "LAUFNUMMER")";
inline constexpr std::string_view SCHREIBE_LAUFNUMMER = R"(UPDATE "LAUFNUMMER" SET "LETZTE" = ?1)";

// Where the file comes from: a table beyond the versions, only in files that somebody has marked.
inline constexpr const char * MACHE_HERKUNFT = R"(CREATE TABLE "HERKUNFT" ("TEXT" TEXT NOT NULL))";
inline constexpr std::string_view SCHREIBE_HERKUNFT = R"(INSERT INTO "HERKUNFT" VALUES (CAST(?1 AS TEXT)))";
inline constexpr const char * LIES_HERKUNFT = R"(SELECT "TEXT" FROM "HERKUNFT")";

// What the rows of a walk have behind the columns of the table.
enum class EDazu {
    Nichts,
    Schluessel, // the key of the walk
    Platz,      // LFD, the keys and the last running number when the walk began
};

// A walk: parameters 1 and 2 are the bounds, the second only if bBis.
[[nodiscard]] std::string Weg(const STabelle & tabelle, int iSchluessel, bool bAbsteigend, bool bBis,
                              EDazu eDazu);
// The parameters are the columns, LFD and the keys; for Aendere the former LFD and key 1 follow, and Loesche has only
// these two.
[[nodiscard]] std::string Fuege(const STabelle & tabelle);
[[nodiscard]] std::string Aendere(const STabelle & tabelle);
[[nodiscard]] std::string Loesche(const STabelle & tabelle);
[[nodiscard]] std::string Zaehle(const STabelle & tabelle);
// Reads one row if there is one, of the table itself: an index would do for SQLite.
[[nodiscard]] std::string Probe(const STabelle & tabelle);

} // namespace orvostat::schema
