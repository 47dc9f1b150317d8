// Where the practice's rows lie: the one interface between the record layer and a store.
//
// A store knows tables, and in each table rows of texts, one text for each column. It gives rows back in the byte
// order of a key that the record layer computes; rows of equal key stand in the order in which they were written.
// Everything else that a table class offers (match modes, filters, joins) is built above this interface, so a store
// is small, and two stores that pass the same tests behave alike.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace orvostat {

// The result of a row operation; 0 is success. A caller that only asks "is there a row" tests for 0.
enum EZeile : int {
    ZEILE_OK = 0,
    ZEILE_KEINE = 1,      // no such row, or no further one
    ZEILE_FEHLER = 2,     // the store failed
    ZEILE_VERWEIGERT = 3, // a write on a read-only handle or store
};

// What a column holds. All columns are texts; the kind says which texts are sound.
enum class EArt {
    Text,
    Zahl,
    Datum,
    Betrag,
    Punktwert,
    Punkte, // hundredths
    Menge,  // a unit character and hundredths
    Faktor, // ten-thousandths, or with a currency letter the mixed point value of a plan
};

// How key texts compare. Trailing blanks never count, except where the row below says so.
enum class EVergleich {
    Genau,        // byte by byte
    OhneGross,    // upper and lower case alike
    MitEndblanks, // the last part of the key keeps its trailing blanks
};

struct SSpalteInfo {
    const char * pName; // ASCII capitals, the column's name in the database
    EArt eArt;
};

// The most keys of a table, and the most columns of a key.
inline constexpr std::size_t SCHLUESSEL_MAX = 4;

// A key: positions of its columns in the row, most significant first.
struct SSchluessel {
    std::uint8_t aiSpalten[SCHLUESSEL_MAX];
    std::uint8_t iAnzahl;
    [[nodiscard]] constexpr std::span<const std::uint8_t> Spalten() const { return {aiSpalten, iAnzahl}; }
};

// A table as the store sees it. Descriptions are static and live as long as the program.
struct STabelle {
    const char * pName;                       // ASCII capitals
    std::span<const SSpalteInfo> vSpalten;    // in the order of the row's texts
    std::span<const SSchluessel> vSchluessel; // key 1, the main key, first
    EVergleich eVergleich;
};

// A row for reading into and for writing from: one text per column, owned by the caller.
using CFelder = std::span<CString * const>;
using CWerte = std::span<const CString * const>;

// The bytes by which a row sorts under key iSchluessel (from 1); the same behind what sBytes holds already.
[[nodiscard]] std::string Schluesselbytes(const STabelle & tabelle, int iSchluessel, CWerte vZeile);
void HaengeSchluesselAn(std::string & sBytes, const STabelle & tabelle, int iSchluessel, CWerte vZeile);
// The bytes of one key part, its end mark included; bLetzter for the last part of the key.
void HaengeTeilAn(std::string & sBytes, const STabelle & tabelle, const CString & sTeil, bool bLetzter);
// The first key bytes behind all that begin with sAnfang; empty where there are none.
[[nodiscard]] std::string Danach(std::string sAnfang);

// A piece of a table under one of its keys.
struct SBereich {
    int iSchluessel = 1;
    bool bAbsteigend = false;
    std::string sVon; // the first key bytes inside
    std::string sBis; // the first key bytes behind; empty: to the end of the table
};

// A walk over a piece of a table. The walk is owned by who opened it and ends with its object; it must not outlive
// its store. Rows written, changed or deleted during the walk never make it fail or give a row twice. A row that is
// changed without touching its keys is met as it then is; one whose key changes counts as newly written, and whether
// a newly written row ahead is met is not said.
class CZeilenmenge {
public:
    CZeilenmenge() = default;
    virtual ~CZeilenmenge() = default;
    CZeilenmenge(const CZeilenmenge &) = delete;
    CZeilenmenge & operator=(const CZeilenmenge &) = delete;
    // Steps to the next row and puts its columns into vFelder, which has as many as the table. Any other result than
    // ZEILE_OK leaves vFelder as it was, and the walk has ended: it goes on giving that result.
    virtual int Naechste(CFelder vFelder) = 0;
    // Deletes, or replaces by vWerte, the row last given. ZEILE_KEINE when there is none: before the first and behind
    // the last row, after Loesche, and when somebody else has deleted it. A row that keeps its keys keeps its place.
    virtual int Loesche() = 0;
    virtual int Ersetze(CWerte vWerte) = 0;
};

// Why a store has failed, as far as files in it have to know.
enum class EZeilenursache { Unbekannt, KeinZugriff, Geraet, Voll };

// A store of rows. Used by one thread at a time. After a failure the store can be used on, also after std::bad_alloc:
// then the call has written nothing, an open group goes on without it, and a walk that was stepping has ended with
// ZEILE_FEHLER and may leave parts of a row in vFelder.
class CZeilenspeicher {
public:
    CZeilenspeicher() = default;
    virtual ~CZeilenspeicher() = default;
    CZeilenspeicher(const CZeilenspeicher &) = delete;
    CZeilenspeicher & operator=(const CZeilenspeicher &) = delete;
    // A walk before its first row; null if the store failed. The range is read during the call only.
    virtual std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) = 0;
    // Adds a row.
    virtual int Schreibe(const STabelle & tabelle, CWerte vWerte) = 0;
    // Groups the writes up to the matching Beende: they take effect together with true and not at all with false,
    // and a crash before Beende leaves the rows as they were at Beginne. Groups may be nested; then the outermost
    // decides, and one false inside makes it false. Beende is ZEILE_FEHLER where no group is open, and where true was
    // asked for but the rows are as they were at Beginne. A read-only store answers both with ZEILE_VERWEIGERT.
    virtual int Beginne() = 0;
    virtual int Beende(bool bUebernehmen) = 0;
    // The number of rows of a table; -1 if the store failed.
    [[nodiscard]] virtual std::int64_t Zeilenzahl(const STabelle & tabelle) = 0;
    // Every write is answered with ZEILE_VERWEIGERT and changes nothing.
    [[nodiscard]] virtual bool NurLesen() const = 0;
    // Of the last call that ended with ZEILE_FEHLER.
    [[nodiscard]] virtual EZeilenursache Fehlerursache() const { return EZeilenursache::Unbekannt; }
};

// Adds all rows of a table of one store to the same table of another, in the order of the main key.
[[nodiscard]] int KopiereTabelle(CZeilenspeicher & von, CZeilenspeicher & nach, const STabelle & tabelle);
// Whether the table holds the same rows in the same order of the main key in both stores; false also on a failure.
[[nodiscard]] bool GleicheTabelle(CZeilenspeicher & a, CZeilenspeicher & b, const STabelle & tabelle);

} // namespace orvostat
