// The schema of the file, as texts: one place for the names that several statements share.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvostat::schema {

inline constexpr int ANWENDUNG = 0x4F535442;
inline constexpr int VERSION = 1;

// All objects of the schema: name and the statement that creates it.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> Objekte();

// The last running number given.
inline constexpr const char * ERSTE_LAUFNUMMER = R"(INSERT INTO "LAUFNUMMER" VALUES (0))";
inline constexpr std::string_view LIES_LAUFNUMMER = R"(SELECT "LETZTE" FROM "LAUFNUMMER")";
inline constexpr std::string_view SCHREIBE_LAUFNUMMER = R"(UPDATE "LAUFNUMMER" SET "LETZTE" = ?1)";

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
// Reads one row if there is one.
[[nodiscard]] std::string Probe(const STabelle & tabelle);

} // namespace orvostat::schema
