// Rows for a person, a spreadsheet or a program.
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
    Csv,  // UTF-8 with byte order mark, semicolons, German dates and decimal commas: opens in a spreadsheet
    Json, // an array of objects; dates YYYY-MM-DD, numbers as numbers, null for empty ones
};

enum class EZelle { Text, Datum, Zahl };

struct SAusgabespalte {
    const char * pName; // of the column, and of the member in Json
    EZelle eZelle;
    int iBreite; // the widest a table shows it; longer texts end in "...", numbers are never cut
};

// Writes rows. Cells come in a neutral form: dates YYYYMMDD, numbers with a decimal point.
class CAusgabe {
public:
    // The stream and the columns must outlive the object.
    static std::unique_ptr<CAusgabe> Neu(EFormat eFormat, std::ostream & aus,
                                         std::span<const SAusgabespalte> vSpalten);
    virtual ~CAusgabe() = default;
    // One cell for each column.
    virtual void Zeile(const std::vector<CString> & vZellen) = 0;
    // After the last row, also if there was none.
    virtual void Ende() = 0;
};

// The number iWert / 10^iStellen with its sign, at least one digit before the point and at least iMindestens behind it;
// trailing zeros go as far as that, and with no digit left behind it the point goes as well.
[[nodiscard]] std::string Dezimal(std::int64_t iWert, int iStellen, int iMindestens, char cPunkt);

// Cells in that neutral form: a whole number of so many decimals (trailing zeros behind the second go), an amount.
[[nodiscard]] CString DezimalZelle(std::int64_t iWert, int iStellen);
[[nodiscard]] CString BetragZelle(const CWBetragBasis & betrag);

// The names of the formats, for the command line: "table", "csv", "json".
[[nodiscard]] std::vector<std::pair<std::string, EFormat>> Formate();

} // namespace orvostat
