// A column of a line as text, and back.
#pragma once

#include "orvostatbs/files/StatLines.h"

#include <span>
#include <string>
#include <string_view>

namespace orvostat {

// The characters that a column must not hold.
struct STrennung {
    char cDelimiter;
    char cErsatz;
};

// The columns of a layout, which ends with -1, and a line feed. A delimiter in a text becomes its substitute, a line
// end a blank. The line stands in sPuffer, which keeps its size from line to line, until that is used again.
[[nodiscard]] std::string_view BaueZeile(std::string & sPuffer, const int * pStruct, const CStatLines & line,
                                         STrennung trennung);
// The text of one column.
[[nodiscard]] CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung);
// Puts the text of a column into its slot; nothing for an index without slot.
void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line);

// Puts a line's columns into the record, by the second layout where the line's kind, which stands in its first column,
// is "E". False for a line without delimiter; std::invalid_argument for more columns than the layout has.
bool LiesSpalten(std::string_view s, char cDelimiter, std::span<const int> vStruct,
                 std::span<const int> vFehlerStruct, CStatLines & line);

} // namespace orvostat
