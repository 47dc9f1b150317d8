// What a command shows, for a person, a spreadsheet or a program.
//
// A command describes its tables by columns and gives their rows as neutral cells; each format has its own writer. Rows
// alone are a CAusgabe. A CDokument puts a head before its tables and says at the end whether something is missing.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

enum class EFormat {
    Tabelle, // aligned columns, German dates and decimal commas
    // UTF-8 with byte order mark, semicolons, German dates and decimal commas: opens in a spreadsheet, where no text is
    // taken for a formula, since one that begins like one gets an apostrophe before it
    Csv,
    Html, // one page with pictures of the tables, of the report only
    Json, // objects; dates YYYY-MM-DD, numbers as numbers, null for empty ones
};

enum class EZelle { Text, Datum, Zahl };

struct SAusgabespalte {
    const char * pName; // of the column; with the unit behind it also of the member in Json
    EZelle eZelle;
    int iBreite; // the widest a table shows it; longer texts end in "...", numbers are never cut
    const char * pEinheit = "";
    bool bNurDaten = false; // too exact for a table: only in Csv and Json
};

// Writes rows. Cells come in a neutral form: dates YYYYMMDD, numbers with a decimal point. No control character of a
// cell is written raw.
class CAusgabe {
public:
    // The stream and the columns must outlive the object.
    static std::unique_ptr<CAusgabe> Neu(EFormat eFormat, std::ostream & aus,
                                         std::span<const SAusgabespalte> vSpalten);
    virtual ~CAusgabe() = default;
    // One cell for each column.
    virtual void Zeile(const std::vector<CString> & vZellen) = 0;
    // What the rows add up to, once and behind them; in a Json array it is left out.
    virtual void Summe(const std::vector<CString> & vZellen) { Zeile(vZellen); }
    // After the last row, also if there was none.
    virtual void Ende() = 0;
};

// A line of a document's head: "Zeitraum", "01.10.2024 bis 31.12.2024", as UTF-8.
struct SKopfzeile {
    std::string sName;
    std::string sWert;
};

// How a table is drawn. Its first column names what is drawn.
enum class EBild {
    Karten,     // no picture: each row a card of name, number and unit
    Saeulen,    // upright
    Balken,     // lying
    Abweichung, // lying, around zero
};
struct SBild {
    EBild eBild;
    std::string sTitel; // UTF-8, as the next one
    std::string sText;  // what is to be seen, for who does not see it
    std::string sEinheit;
    std::vector<std::size_t> viReihen; // the columns of numbers that are drawn
    bool bGestapelt = false;
    std::size_t iHoechstens = 0; // rows from the top; 0 for all
    std::size_t iMarke = 0;      // rows with a text in this column are marked, also in the table; 0 for none
    int iGrenze = 0;             // Abweichung: where a line is drawn; 0 for none
};

// Tables behind each other: for a person with their titles; as Csv the head and each table parted by an empty line; as
// Json one object with the members "kopf", "tabellen" (of "zeilen" and, where there are, "titel" and "gesamt"),
// "vollständig" and, where it is not, "hinweis".
class CDokument {
public:
    // The stream must outlive the object.
    static std::unique_ptr<CDokument> Neu(EFormat eFormat, std::ostream & aus);
    virtual ~CDokument() = default;
    // Once, before the first table.
    virtual void Kopf(const std::vector<SKopfzeile> & vKopf) = 0;
    // Begins a table; the writer is the document's, and its Ende comes before the next table. The columns must outlive
    // it.
    virtual CAusgabe & Tabelle(const std::string & sTitel, std::span<const SAusgabespalte> vSpalten) = 0;
    // A picture of the table that comes next; most formats have none.
    virtual void Bild(const SBild &) {}
    // A sentence for a person; the other formats have none, but tables instead.
    virtual void Satz(const std::string &) {}
    [[nodiscard]] virtual bool FuerPersonen() const { return false; }
    // The end. A document that is not whole says why in sUnvollstaendig.
    virtual void Ende(const std::string & sUnvollstaendig) = 0;
};

// The number iWert / 10^iStellen with its sign, at least one digit before the point and at least iMindestens behind it;
// trailing zeros go as far as that, and with no digit left behind it the point goes as well.
[[nodiscard]] std::string Dezimal(std::int64_t iWert, int iStellen, int iMindestens, char cPunkt);

// Cells in that neutral form: a whole number of so many decimals (trailing zeros behind the second go), an amount.
[[nodiscard]] CString DezimalZelle(std::int64_t iWert, int iStellen);
[[nodiscard]] CString BetragZelle(const CWBetragBasis & betrag);
// All decimals that an amount has, at least two.
[[nodiscard]] CString GenauZelle(const CWBetragBasis & betrag);

// The names of the formats, for the command line: "table", "csv", "json".
[[nodiscard]] std::vector<std::pair<std::string, EFormat>> Formate();

} // namespace orvostat
