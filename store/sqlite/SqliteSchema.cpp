#include "SqliteSchema.h"

#include "orvostatbs/host/Tabellen.h"

namespace orvostat::schema {

namespace {

std::string Name(std::string_view s) { return '"' + std::string(s) + '"'; }
std::string Schluesselspalte(std::size_t iSchluessel) {
    return Name("SCHLUESSEL" + std::to_string(iSchluessel));
}
std::string Tabelle(const STabelle & tabelle) { return Name(tabelle.pName); }

std::vector<std::string> Spalten(const STabelle & tabelle) {
    std::vector<std::string> vNamen;
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        vNamen.push_back(Name(spalte.pName));
    return vNamen;
}

// LFD and the keys.
std::vector<std::string> Platz(const STabelle & tabelle) {
    std::vector<std::string> vNamen{Name("LFD")};
    for (std::size_t k = 1; k <= tabelle.vSchluessel.size(); ++k)
        vNamen.push_back(Schluesselspalte(k));
    return vNamen;
}

std::vector<std::string> Alle(const STabelle & tabelle) {
    std::vector<std::string> vNamen = Spalten(tabelle);
    for (std::string & sName : Platz(tabelle))
        vNamen.push_back(std::move(sName));
    return vNamen;
}

// The names with a text behind each, separated by commas.
std::string Liste(const std::vector<std::string> & vNamen, std::string_view sDahinter = {}) {
    std::string s;
    for (const std::string & sName : vNamen) {
        if (!s.empty()) s += ", ";
        s += sName;
        s += sDahinter;
    }
    return s;
}

std::string DieseZeile() { return " WHERE \"LFD\" = ? AND \"SCHLUESSEL1\" = ?"; }

// The clustering key stands first: with it behind other columns SQLite 3.40 takes every NOT NULL of the table for
// violated when it checks the file.
std::string MacheTabelle(const STabelle & tabelle) {
    std::string s = "CREATE TABLE " + Tabelle(tabelle) + " (" + Schluesselspalte(1) +
                    R"( BLOB NOT NULL, "LFD" INTEGER NOT NULL, )" + Liste(Spalten(tabelle), " TEXT NOT NULL");
    for (std::size_t k = 2; k <= tabelle.vSchluessel.size(); ++k)
        s += ", " + Schluesselspalte(k) + " BLOB NOT NULL";
    return s + R"(, PRIMARY KEY ("SCHLUESSEL1", "LFD")) WITHOUT ROWID)";
}

} // namespace

std::vector<std::pair<std::string, std::string>> Objekte() {
    std::vector<std::pair<std::string, std::string>> vObjekte{
        {"LAUFNUMMER", R"(CREATE TABLE "LAUFNUMMER" ("LETZTE" INTEGER NOT NULL))"}};
    for (const STabelle * pTabelle : AlleTabellen()) {
        vObjekte.emplace_back(pTabelle->pName, MacheTabelle(*pTabelle));
        for (std::size_t k = 2; k <= pTabelle->vSchluessel.size(); ++k) {
            const std::string sIndex = std::string(pTabelle->pName) + "_SCHLUESSEL" + std::to_string(k);
            vObjekte.emplace_back(sIndex, "CREATE INDEX " + Name(sIndex) + " ON " + Tabelle(*pTabelle) +
                                              " (" + Schluesselspalte(k) + R"(, "LFD"))");
        }
    }
    return vObjekte;
}

std::string Weg(const STabelle & tabelle, int iSchluessel, bool bAbsteigend, bool bBis, EDazu eDazu) {
    const std::string sSchluessel = Schluesselspalte(static_cast<std::size_t>(iSchluessel));
    const std::string sRichtung = bAbsteigend ? " DESC" : "";
    std::string s = "SELECT " + Liste(eDazu == EDazu::Platz ? Alle(tabelle) : Spalten(tabelle));
    if (eDazu == EDazu::Platz) s += ", (" + std::string(LIES_LAUFNUMMER) + ")";
    if (eDazu == EDazu::Schluessel) s += ", " + sSchluessel;
    s += " FROM " + Tabelle(tabelle) + " WHERE " + sSchluessel + " >= ?1";
    if (bBis) s += " AND " + sSchluessel + " < ?2";
    return s + " ORDER BY " + sSchluessel + sRichtung + ", \"LFD\"" + sRichtung;
}

std::string Fuege(const STabelle & tabelle) {
    const std::vector<std::string> vNamen = Alle(tabelle);
    return "INSERT INTO " + Tabelle(tabelle) + " (" + Liste(vNamen) + ") VALUES (" +
           Liste(std::vector<std::string>(vNamen.size(), "?")) + ")";
}

std::string Aendere(const STabelle & tabelle) {
    return "UPDATE " + Tabelle(tabelle) + " SET " + Liste(Alle(tabelle), " = ?") + DieseZeile();
}

std::string Loesche(const STabelle & tabelle) { return "DELETE FROM " + Tabelle(tabelle) + DieseZeile(); }
std::string Zaehle(const STabelle & tabelle) { return "SELECT count(*) FROM " + Tabelle(tabelle); }
std::string Probe(const STabelle & tabelle) { return "SELECT 1 FROM " + Tabelle(tabelle) + " LIMIT 1"; }

} // namespace orvostat::schema
