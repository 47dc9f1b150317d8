#include "SqliteSchema.h"

#include "orvostatbs/host/Tabellen.h"

#include <algorithm>
#include <utility>

namespace orvostat::schema {

namespace {

std::string Name(std::string_view s) { return '"' + std::string(s) + '"'; }
std::string Schluesselname(std::size_t iSchluessel) { return "SCHLUESSEL" + std::to_string(iSchluessel); }
std::string Schluesselspalte(std::size_t iSchluessel) { return Name(Schluesselname(iSchluessel)); }
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
std::string MacheTabelle(const STabelle & tabelle, int iVersion) {
    std::string s = "CREATE TABLE " + Tabelle(tabelle) + " (" + Schluesselspalte(1) +
                    R"( BLOB NOT NULL, "LFD" INTEGER NOT NULL)";
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        if (Hat(iVersion, tabelle, spalte.pName)) s += ", " + Name(spalte.pName) + " TEXT NOT NULL";
    for (std::size_t k = 2; k <= tabelle.vSchluessel.size(); ++k)
        if (Hat(iVersion, tabelle, Schluesselname(k))) s += ", " + Schluesselspalte(k) + " BLOB NOT NULL";
    return s + R"(, PRIMARY KEY ("SCHLUESSEL1", "LFD")) WITHOUT ROWID)";
}

void HaengeIndexeAn(std::vector<std::pair<std::string, std::string>> & vObjekte, const STabelle & tabelle,
                    int iVersion) {
    for (std::size_t k = 2; k <= tabelle.vSchluessel.size(); ++k) {
        if (!Hat(iVersion, tabelle, Schluesselname(k))) continue;
        const std::string sIndex = tabelle.pName + ("_" + Schluesselname(k));
        vObjekte.emplace_back(sIndex, "CREATE INDEX " + Name(sIndex) + " ON " + Tabelle(tabelle) + " (" +
                                          Schluesselspalte(k) + R"(, "LFD"))");
    }
}

// Whether a version has all of the table that this program's has.
bool HatGanz(int iVersion, const STabelle & tabelle) {
    return std::ranges::none_of(NEUES, [&](const SNeues & neues) {
        return neues.iVersion > iVersion && neues.sTabelle == tabelle.pName;
    });
}

// What stands for a column in a file of a version that lacks it, computed from those that it has.
std::string Ersatz(int iVersion, const STabelle & tabelle, const SSchluessel * pSchluessel) {
    if (pSchluessel == nullptr) return "''";
    std::string s = SCHLUESSELFUNKTION + ("(" + std::to_string(static_cast<int>(tabelle.eVergleich)));
    for (const std::uint8_t iSpalte : pSchluessel->Spalten()) {
        const char * pName = tabelle.vSpalten[iSpalte].pName;
        s += ", " + (Hat(iVersion, tabelle, pName) ? Name(pName) : "''");
    }
    return s + ')';
}

// Reads a table of an older version with all columns of this program's, out of the table of that name.
std::string Auswahl(int iVersion, const STabelle & tabelle, const std::string & sVon) {
    std::string s;
    const auto Haenge = [&](const std::string & sName, const SSchluessel * pSchluessel) {
        s += s.empty() ? "SELECT " : ", ";
        if (!Hat(iVersion, tabelle, sName)) s += Ersatz(iVersion, tabelle, pSchluessel) + " AS ";
        s += Name(sName);
    };
    for (const SSpalteInfo & spalte : tabelle.vSpalten)
        Haenge(spalte.pName, nullptr);
    Haenge("LFD", nullptr);
    for (std::size_t k = 1; k <= tabelle.vSchluessel.size(); ++k)
        Haenge(Schluesselname(k), &tabelle.vSchluessel[k - 1]);
    return s + (Hat(iVersion, tabelle) ? " FROM " + sVon : " WHERE 0");
}

} // namespace

bool Hat(int iVersion, const STabelle & tabelle, std::string_view sSpalte) {
    return std::ranges::none_of(NEUES, [&](const SNeues & neues) {
        return neues.iVersion > iVersion && neues.sTabelle == tabelle.pName &&
               (neues.sSpalte.empty() || neues.sSpalte == sSpalte);
    });
}

std::vector<std::pair<std::string, std::string>> Objekte(int iVersion) {
    std::vector<std::pair<std::string, std::string>> vObjekte{
        {"LAUFNUMMER", R"(CREATE TABLE "LAUFNUMMER" ("LETZTE" INTEGER NOT NULL))"}};
    for (const STabelle * pTabelle : AlleTabellen()) {
        if (!Hat(iVersion, *pTabelle)) continue;
        vObjekte.emplace_back(pTabelle->pName, MacheTabelle(*pTabelle, iVersion));
        HaengeIndexeAn(vObjekte, *pTabelle, iVersion);
    }
    return vObjekte;
}

std::vector<std::string> Erweiterung(int iVon) {
    std::vector<std::string> vSql;
    for (const STabelle * pTabelle : AlleTabellen()) {
        if (HatGanz(iVon, *pTabelle)) continue;
        const std::string sAlt = Name(std::string(pTabelle->pName) + "_ALT");
        const bool bDa = Hat(iVon, *pTabelle);
        if (bDa) vSql.push_back("ALTER TABLE " + Tabelle(*pTabelle) + " RENAME TO " + sAlt);
        vSql.push_back(MacheTabelle(*pTabelle, VERSION));
        if (bDa) {
            vSql.push_back("INSERT INTO " + Tabelle(*pTabelle) + " (" + Liste(Alle(*pTabelle)) + ") " +
                           Auswahl(iVon, *pTabelle, sAlt) + R"( ORDER BY "SCHLUESSEL1", "LFD")");
            vSql.push_back("DROP TABLE " + sAlt); // its indexes have the names of the new ones
        }
        std::vector<std::pair<std::string, std::string>> vIndexe;
        HaengeIndexeAn(vIndexe, *pTabelle, VERSION);
        for (auto & [sName, sSql] : vIndexe)
            vSql.push_back(std::move(sSql));
    }
    if (!vSql.empty()) vSql.push_back("PRAGMA user_version = " + std::to_string(VERSION));
    return vSql;
}

std::vector<std::string> Ansichten(int iVersion) {
    std::vector<std::string> vSql;
    for (const STabelle * pTabelle : AlleTabellen())
        if (!HatGanz(iVersion, *pTabelle))
            vSql.push_back("CREATE TEMP VIEW " + Tabelle(*pTabelle) + " AS " +
                           Auswahl(iVersion, *pTabelle, "main." + Tabelle(*pTabelle)));
    return vSql;
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
std::string Probe(const STabelle & tabelle) {
    return "SELECT 1 FROM " + Tabelle(tabelle) + R"( ORDER BY "SCHLUESSEL1", "LFD" LIMIT 1)";
}

} // namespace orvostat::schema
