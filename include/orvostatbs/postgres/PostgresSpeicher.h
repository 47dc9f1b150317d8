// The rows of practices in one PostgreSQL database, version 13 or later, in UTF-8.
//
// For each table the database has a table of the same name with the columns as text; around them stand
//
//   PRAXIS       whose row it is, part of every key: a group of practices lives in one database, and one that is spread
//                over several servers by this column keeps each practice in one place
//   LFD          the row's running number in its practice: rows of equal key sort by it
//   SCHLUESSEL1  the bytes by which the row sorts under key 1, and so on for each further key; the primary key is
//                PRAXIS, SCHLUESSEL1 and LFD, each further key has an index
//
// and LAUFNUMMER holds the last running number given in each practice: a row there is what makes a practice.
// SCHEMAVERSION holds the version of all this. A character of 0, which PostgreSQL's texts cannot hold, stands there as
// U+2400. What a foreign hand has written there is read without harm: characters that Windows-1252 lacks are "?".
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orvostat {

class CServerdatenbank;
class CServervorrat;

enum class EServermodus {
    Lesen,     // never writes, whatever is asked of it
    Schreiben, // reads and writes a practice that is there
    Anlegen,   // a practice that must not be there; its first group that takes effect makes it
};

// Why a connection, a read or a write has failed.
enum class EServerursache {
    Keine, // nothing has
    Verbindung,
    Anmeldung,
    KeineDatenbank,
    KeinRecht,
    Gesperrt, // another program writes into the practice
    Voll,     // no room on the server's disk
    NurLesen, // the server takes no writes
    Veraendert,
    Schluessel, // a key too long for an index
    Beschaedigt,
    Ueberlastet, // no memory or no connection left on the server
    KeinSpeicher,
    Abgebrochen, // by the server's limit of time or by its administrator
    SchonDa,
    Offen, // the connection broke while a group ended, and the server could not be asked whether it took effect
    Andere, // LetzterFehler has the words
};

// The cause in German, for behind "...: ", in UTF-8; empty for Keine and Andere.
[[nodiscard]] const char * Ursachentext(EServerursache eUrsache);

// A store opened for reading is one transaction, REPEATABLE READ and READ ONLY, from its first read on: it sees the
// practice as it stood then, waits for nobody and makes nobody wait. After a failure the next read begins another one,
// and walks of the one before end with ZEILE_FEHLER.
//
// A group is a transaction. Within one, rows are sent in large pieces, so a write may be answered before the server has
// seen it. What fails inside a group, a read too, takes the whole group back at once: nothing more goes into it, and
// Beende(true) says ZEILE_FEHLER. The writers of one practice wait for each other, up to five seconds. Where
// the connection breaks, the next call outside of a group makes a new one.
class CPostgresSpeicher final : public CZeilenspeicher {
public:
    // Whether a text names a database ("postgresql://..." or "postgres://...") and no file.
    [[nodiscard]] static bool IstVerbindung(std::string_view sText);
    // The database as users read it, "NAME" auf "SERVER", without what they log in with.
    [[nodiscard]] static std::string Anzeigename(const std::string & sVerbindung);
    // Opens a practice of the database that sVerbindung names as libpq takes it. An empty sPraxis is the only practice
    // there; a name has at most 60 characters. Null where it is refused, with the reason as a German sentence in
    // sMeldung, which never holds a password. Only EServermodus::Anlegen makes tables.
    [[nodiscard]] static std::shared_ptr<CPostgresSpeicher> OeffneServer(const std::string & sVerbindung,
                                                                         const std::string & sPraxis,
                                                                         EServermodus eModus,
                                                                         CString & sMeldung);
    ~CPostgresSpeicher() override;

    std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) override;
    int Schreibe(const STabelle & tabelle, CWerte vWerte) override;
    int Beginne() override;
    int Beende(bool bUebernehmen) override;
    [[nodiscard]] std::int64_t Zeilenzahl(const STabelle & tabelle) override;
    [[nodiscard]] bool NurLesen() const override;

    // The cause of the last failure of this store, and the words of the server or of libpq on it.
    [[nodiscard]] EServerursache LetzteUrsache() const;
    [[nodiscard]] EZeilenursache Fehlerursache() const override;
    [[nodiscard]] const std::string & LetzterFehler() const;
    // The practice opened.
    [[nodiscard]] const std::string & Praxis() const;

private:
    explicit CPostgresSpeicher(std::unique_ptr<CServerdatenbank> pDatenbank);
    std::unique_ptr<CServerdatenbank> m_pDatenbank;
    std::unique_ptr<CServervorrat> m_pVorrat;
};

} // namespace orvostat
