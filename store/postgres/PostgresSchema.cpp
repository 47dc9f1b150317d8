#include "PostgresSchema.h"

#include "orvostatbs/host/Tabellen.h"

#include <string_view>
#include <vector>

namespace orvostat::serverschema {

namespace {

std::string Name(std::string_view s) { return '"' + std::string(s) + '"'; }
std::string Schluessel(int iSchluessel) { return Name("SCHLUESSEL" + std::to_string(iSchluessel)); }
int Schluesselzahl(const STabelle & tabelle) { return static_cast<int>(tabelle.vSchluessel.size()); }
std::string Tabelle(const STabelle & tabelle) { return Name(tabelle.pName); }

void Haenge(std::string & s, std::string_view sTeil) {
    if (!s.empty()) s += ", ";
    s += sTeil;
}

std::string Spalten(const STabelle & tabelle) {
    std::string s;
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        Haenge(s, Name(spalte.pName));
    return s;
}

std::string Platz(const STabelle & tabelle) {
    std::string s = Name("LFD");
    for (int k = 1; k <= Schluesselzahl(tabelle); ++k)
        Haenge(s, Schluessel(k));
    return s;
}

// "$3", and the next time "$4".
class CParameterzahl {
public:
    explicit CParameterzahl(int iErster) : m_i(iErster) {}
    std::string operator()() { return '$' + std::to_string(m_i++); }

private:
    int m_i;
};

std::string Woher(const STabelle & tabelle, const SWegart & art) {
    const std::string sSchluessel = Schluessel(art.iSchluessel);
    const std::string sRichtung = art.bAbsteigend ? " DESC" : "";
    CParameterzahl parameter(3);
    std::string s = " FROM " + Tabelle(tabelle) + R"( WHERE "PRAXIS" = $1)";
    if (art.bAb) {
        const std::string sBytes = parameter();
        s += " AND (" + sSchluessel + ", \"LFD\") " + (art.bAbsteigend ? "<" : ">") + " (" + sBytes +
             "::bytea, " + parameter() + "::bigint)";
    }
    if (art.bBis) s += " AND " + sSchluessel + (art.bAbsteigend ? " >= " : " < ") + parameter() + "::bytea";
    return s + " ORDER BY " + sSchluessel + sRichtung + ", \"LFD\"" + sRichtung;
}

} // namespace

std::string Anlage() {
    std::string s = R"(CREATE TABLE IF NOT EXISTS "SCHEMAVERSION" ("VERSION" integer NOT NULL);
        INSERT INTO "SCHEMAVERSION" SELECT )" +
                    std::to_string(VERSION) + R"( WHERE NOT EXISTS (SELECT 1 FROM "SCHEMAVERSION");
        CREATE TABLE IF NOT EXISTS "LAUFNUMMER" ("PRAXIS" text PRIMARY KEY, "LETZTE" bigint NOT NULL);)";
    for (const STabelle * pTabelle : AlleTabellen()) {
        s += "CREATE TABLE IF NOT EXISTS " + Tabelle(*pTabelle) +
             R"( ("PRAXIS" text NOT NULL, "SCHLUESSEL1" bytea NOT NULL, "LFD" bigint NOT NULL)";
        for (const SSpalteInfo & spalte : pTabelle->vSpalten)
            s += ", " + Name(spalte.pName) + " text NOT NULL";
        for (int k = 2; k <= Schluesselzahl(*pTabelle); ++k)
            s += ", " + Schluessel(k) + " bytea NOT NULL";
        s += R"(, PRIMARY KEY ("PRAXIS", "SCHLUESSEL1", "LFD"));)";
        for (int k = 2; k <= Schluesselzahl(*pTabelle); ++k)
            s += "CREATE INDEX IF NOT EXISTS " + Name(pTabelle->pName + ("_SCHLUESSEL" + std::to_string(k))) +
                 " ON " + Tabelle(*pTabelle) + " (\"PRAXIS\", " + Schluessel(k) + ", \"LFD\");";
    }
    return s;
}

std::string Probe() {
    std::string s;
    for (const STabelle * pTabelle : AlleTabellen())
        s += R"(SELECT "PRAXIS", )" + Spalten(*pTabelle) + ", " + Platz(*pTabelle) + " FROM " +
             Tabelle(*pTabelle) + " LIMIT 0;";
    return s;
}

std::string Block(const STabelle & tabelle, const SWegart & art) {
    const std::string sDazu =
        art.bPlatz ? Platz(tabelle) + R"(, (SELECT "LETZTE" FROM "LAUFNUMMER" WHERE "PRAXIS" = $1))"
                   : "\"LFD\", " + Schluessel(art.iSchluessel);
    return "SELECT " + Spalten(tabelle) + ", " + sDazu + Woher(tabelle, art) + " LIMIT $2::bigint";
}

// $2 takes part, so that both statements have the same parameters.
std::string Zeiger(const STabelle & tabelle, const SWegart & art) {
    return "SELECT " + Spalten(tabelle) + Woher(tabelle, art) + " OFFSET 0 * $2::bigint";
}

std::string Lade(const STabelle & tabelle) {
    return "COPY " + Tabelle(tabelle) + R"( ("PRAXIS", )" + Spalten(tabelle) + ", " + Platz(tabelle) +
           ") FROM STDIN (FORMAT binary)";
}

std::string Aendere(const STabelle & tabelle) {
    CParameterzahl parameter(1);
    std::string s = R"("PRAXIS" = )" + parameter();
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        Haenge(s, Name(spalte.pName) + " = " + parameter());
    Haenge(s, "\"LFD\" = " + parameter());
    for (int k = 1; k <= Schluesselzahl(tabelle); ++k)
        Haenge(s, Schluessel(k) + " = " + parameter());
    s = "UPDATE " + Tabelle(tabelle) + " SET " + s + R"( WHERE "PRAXIS" = $1 AND "SCHLUESSEL1" = )" +
        parameter();
    return s + " AND \"LFD\" = " + parameter();
}

std::string Loesche(const STabelle & tabelle) {
    return "DELETE FROM " + Tabelle(tabelle) +
           R"( WHERE "PRAXIS" = $1 AND "SCHLUESSEL1" = $2 AND "LFD" = $3)";
}

std::string Zaehle(const STabelle & tabelle) {
    return "SELECT count(*) FROM " + Tabelle(tabelle) + R"( WHERE "PRAXIS" = $1)";
}

} // namespace orvostat::serverschema
