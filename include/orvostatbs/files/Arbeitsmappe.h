// The workbook for a hand-over to a spreadsheet program.
//
// The template is flat OpenDocument text; ours is data/Orvo2Excel.fods. Where it names the files that it picks up it
// has marks, which become those of one hand-over:
//
//   @CSV@, @INI@   addresses of the data file and of its description
//   @SPALTEN@      how to read each of the data file's columns: amounts and counts as numbers with a decimal comma,
//                  all others as the text that they are, so that keys keep their blanks and leading zeros
//
// The program takes the data over when the user lets it update the links, and again whenever he does.
#pragma once

#include "orvostatbs/host/CString.h"

#include <string>
#include <string_view>

namespace orvostat {

// The template, UTF-8, with its marks replaced, for data of a layout, which ends with -1 and is not kept (null has no
// columns). sCsv and sIni are path texts, not empty. To be written as COrvo2Excel::m_sVorlage.
[[nodiscard]] std::string Arbeitsmappe(std::string_view sVorlage, const int * pStruct, const CString & sCsv,
                                       const CString & sIni);

} // namespace orvostat
