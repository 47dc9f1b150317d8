// An open file: its connection, the statements made for it and the group of writes.
#pragma once

#include "SqliteSchema.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <sqlite3.h>

namespace orvostat {

struct SSchliesser {
    void operator()(sqlite3 * p) const { sqlite3_close_v2(p); }
    void operator()(sqlite3_stmt * p) const { sqlite3_finalize(p); }
};
using CVerbindung = std::unique_ptr<sqlite3, SSchliesser>;
using CAnweisung = std::unique_ptr<sqlite3_stmt, SSchliesser>;

// Lends a statement for one reading: whatever ends that, the statement can be bound anew.
struct SRuecksteller {
    void operator()(sqlite3_stmt * p) const { sqlite3_reset(p); }
};
using CLesung = std::unique_ptr<sqlite3_stmt, SRuecksteller>;

// Binds bytes that stay where they are until the statement has run; false if there is no memory for them.
[[nodiscard]] inline bool BindeBytes(sqlite3_stmt * pAnweisung, int i, std::string_view s) {
    return sqlite3_bind_blob64(pAnweisung, i, s.data(), s.size(), SQLITE_STATIC) == SQLITE_OK;
}

// Opens a connection to the file at a path in UTF-8, with SQLite's open flags; null if that fails, and errno says
// why. It waits so many milliseconds for another program's lock.
[[nodiscard]] CVerbindung Verbinde(const std::string & sPfad, int iArt, int iGeduld);

// The errno behind SQLite's last failure to read, write or open; 0 where it knows none.
[[nodiscard]] int Systemfehler(sqlite3 * p);

// Where a row lies in its table.
struct SPlatz {
    std::int64_t iLfd = 0;
    std::vector<std::string> vSchluessel;
};

// Reads a column of the row under a statement; false if there is no memory for it.
[[nodiscard]] inline bool LiesText(sqlite3_stmt * pAnweisung, int iSpalte, CString & sText) {
    const auto * pText = reinterpret_cast<const char *>(sqlite3_column_text(pAnweisung, iSpalte));
    const auto iLaenge = static_cast<std::size_t>(sqlite3_column_bytes(pAnweisung, iSpalte));
    if (pText == nullptr && iLaenge > 0) return false;
    sText.SetzeUtf8(pText, iLaenge);
    return true;
}

class CSqliteDatei {
public:
    CSqliteDatei(CVerbindung pVerbindung, bool bNurLesen)
        : m_pVerbindung(std::move(pVerbindung)), m_bNurLesen(bNurLesen) {}

    [[nodiscard]] sqlite3 * Verbindung() const { return m_pVerbindung.get(); }
    [[nodiscard]] bool NurLesen() const { return m_bNurLesen; }
    // The same file for reading over a connection of its own, which waits for nobody; null where there is none, or
    // where the file's path leads to another file by now.
    [[nodiscard]] std::unique_ptr<CSqliteDatei> Zweite() const;
    [[nodiscard]] const std::string & LetzterFehler() const { return m_sFehler; }
    [[nodiscard]] ESpeicherursache LetzteUrsache() const { return m_eUrsache; }

    // The version of the schema that the file has; -1 if the store failed.
    [[nodiscard]] int Version();
    // Lets a file of an older version be read as one of this program's; for a connection that only reads.
    [[nodiscard]] bool LiesAls(int iVersion);
    // Makes the file one of this program's version, in one group: what fails leaves it as it was once this object is
    // gone.
    [[nodiscard]] bool Erweitere();

    // A statement for a walk, out of those that are free or new, with its bounds; null if the store failed. Gib
    // makes it free again.
    [[nodiscard]] CAnweisung NimmWeg(const STabelle & tabelle, const SBereich & bereich);
    void GibWeg(const STabelle & tabelle, const SBereich & bereich, CAnweisung pAnweisung) noexcept;

    // A walk has read its first row; it has ended. From the first to the last of them all walks see the same rows,
    // unless this connection changes some: that time has a number of its own in Lesestand, which is 0 without a walk.
    void BeginntWeg() { ++m_iLaufende; }
    void EndetWeg();
    [[nodiscard]] std::uint64_t Lesestand() const { return m_iLaufende > 0 ? m_iStand : 0; }

    // How many walks were asked for so far.
    void ZaehleWeg() { ++m_iWege; }
    [[nodiscard]] std::uint64_t Wege() const { return m_iWege; }

    [[nodiscard]] SVorausgelesen & Vorausgelesen() { return m_vorausgelesen; }

    int Fuege(const STabelle & tabelle, CWerte vWerte);
    int Loesche(const STabelle & tabelle, const SPlatz & platz);
    // platz becomes the row's new place.
    int Aendere(const STabelle & tabelle, SPlatz & platz, CWerte vWerte);
    [[nodiscard]] std::int64_t Zaehle(const STabelle & tabelle);

    int Beginne();
    int Beende(bool bUebernehmen);
    // The last running number, as far as a group is open; else -1.
    [[nodiscard]] std::int64_t LaufnummerInGruppe() const { return m_iTiefe > 0 ? m_iLfd : -1; }

    // What a walk reads beside the columns: the places of its rows, where they can be changed.
    [[nodiscard]] schema::EDazu Dazu() const {
        return m_bNurLesen ? schema::EDazu::Nichts : schema::EDazu::Platz;
    }
    // Prepares a statement; null, and the failure noted, if that does not go.
    [[nodiscard]] CAnweisung Bereite(std::string_view sSql);
    // Runs a statement without result, or a text of such.
    bool Fuehre(sqlite3_stmt * pAnweisung);
    bool Fuehre(const char * pSql);
    // Notes what SQLite says on the failure that has just occurred, or that memory has ended. Both are ZEILE_FEHLER.
    int Fehler() noexcept;
    int KeinSpeicher() noexcept;

private:
    struct STabellenstand {
        std::array<std::vector<CAnweisung>, SCHLUESSEL_MAX * 4> avWege; // free statements of each kind
        CAnweisung pFuege, pAendere, pLoesche;
    };

    [[nodiscard]] bool KenneSchluessel();
    template <class F> int InGruppe(F f);
    bool LiesLaufnummer();
    bool SchreibeLaufnummer();
    [[nodiscard]] std::vector<CAnweisung> & Freie(const STabelle & tabelle, const SBereich & bereich);
    [[nodiscard]] bool Binde(sqlite3_stmt * pAnweisung, CWerte vWerte, const SPlatz & platz);
    [[nodiscard]] static bool BindePlatz(sqlite3_stmt * pAnweisung, int iAb, const SPlatz & platz);
    int Schreibe(sqlite3_stmt * pAnweisung, bool bGebunden);

    CVerbindung m_pVerbindung; // first: the statements end before it
    bool m_bNurLesen;
    int m_iVersion = schema::VERSION; // of the file, as LiesAls was told
    int m_iLaufende = 0;              // walks between their first row and their end
    std::uint64_t m_iStand = 1;
    std::uint64_t m_iWege = 0;
    SVorausgelesen m_vorausgelesen;
    std::unordered_map<const STabelle *, STabellenstand> m_mapTabellen;
    int m_iTiefe = 0;
    bool m_bVerworfen = false;
    std::int64_t m_iLfd = 0;         // the last running number given; known while a group is open
    std::int64_t m_iLfdAmAnfang = 0; // the same when the group began
    SPlatz m_platz;                  // of the row being added, reused like the next two
    std::string m_sTexte;            // what is bound
    std::vector<std::size_t> m_viEnden;
    std::string m_sFehler;
    ESpeicherursache m_eUrsache = ESpeicherursache::Keine;
};

} // namespace orvostat
