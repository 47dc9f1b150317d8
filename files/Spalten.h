// A column of a line as text, and back.
#pragma once

#include "orvostatbs/files/StatLines.h"

#include <string>
#include <string_view>

namespace orvostat {

// The characters that a column must not hold.
struct STrennung {
    char cDelimiter;
    char cErsatz;
};

// Writes the columns of a layout, which ends with -1, and a line feed into sZeile, replacing what it held. A delimiter
// in a text becomes its substitute, a line end a blank.
void BaueZeile(std::string & sZeile, const int * pStruct, const CStatLines & line, STrennung trennung);
// The text of one column.
[[nodiscard]] CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung);
// Puts the text of a column into its slot; nothing for an index without slot.
void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line);

} // namespace orvostat
