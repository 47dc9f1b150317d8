// The statements of the server's store, as texts: one place for the names that several of them share.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <string>

namespace orvostat::serverschema {

inline constexpr int VERSION = 1;

// Makes all tables that are not there; several statements.
[[nodiscard]] std::string Anlage();
// Fails unless all tables are there with their columns and may be read; several statements.
[[nodiscard]] std::string Probe();

// What a walk's statement asks for.
struct SWegart {
    int iSchluessel = 1;
    bool bAbsteigend = false;
    bool bAb = true;   // only behind the place given by two parameters: key bytes and LFD
    bool bBis = false; // only before these key bytes, descending: from them on
    bool bPlatz =
        false; // LFD, all keys and the last running number behind the columns; else the walk's key and LFD
    [[nodiscard]] int Nummer() const {
        return iSchluessel * 16 + (bAbsteigend ? 1 : 0) + (bAb ? 2 : 0) + (bBis ? 4 : 0) + (bPlatz ? 8 : 0);
    }
};

// The next rows of a walk. $1 is the practice, $2 how many rows at most, then those of bAb and bBis.
[[nodiscard]] std::string Block(const STabelle & tabelle, const SWegart & art);
// The same without limit as a cursor's query, with the columns alone: $1 and $3 on as above.
[[nodiscard]] std::string Zeiger(const STabelle & tabelle, const SWegart & art);
// The positions of LFD, of the walk's key and of key 1 in a block.
struct SBlockspalten {
    SBlockspalten(const STabelle & tabelle, const SWegart & art)
        : iLfd(static_cast<int>(tabelle.vSpalten.size())), iErster(iLfd + 1),
          iSchluessel(art.bPlatz ? iLfd + art.iSchluessel : iLfd + 1),
          iLaufnummer(iErster + static_cast<int>(tabelle.vSchluessel.size())) {}
    int iLfd;
    int iErster; // only with bPlatz, as the last
    int iSchluessel;
    int iLaufnummer;
};

// COPY from the client: practice, columns, LFD, keys.
[[nodiscard]] std::string Lade(const STabelle & tabelle);
// The same values as parameters, then the former key 1 and LFD; Loesche has the practice and these two.
[[nodiscard]] std::string Aendere(const STabelle & tabelle);
[[nodiscard]] std::string Loesche(const STabelle & tabelle);
[[nodiscard]] std::string Zaehle(const STabelle & tabelle);

inline constexpr const char * LIES_LAUFNUMMER =
    R"(SELECT "LETZTE", pg_current_xact_id()::text FROM "LAUFNUMMER" WHERE "PRAXIS" = $1 FOR UPDATE)";
inline constexpr const char * ERSTE_LAUFNUMMER =
    R"(INSERT INTO "LAUFNUMMER" VALUES ($1, 0) RETURNING "LETZTE", pg_current_xact_id()::text)";
inline constexpr const char * SCHREIBE_LAUFNUMMER =
    R"(UPDATE "LAUFNUMMER" SET "LETZTE" = $2 WHERE "PRAXIS" = $1)";

} // namespace orvostat::serverschema
