// Files that the build puts into the program: what a report's page is made of beside its figures, and the workbook.
#pragma once

#include <string_view>

namespace orvostat {

extern const std::string_view BERICHT_CSS;
extern const std::string_view BERICHT_JS;
extern const std::string_view CHART_JS;        // the library that draws
extern const std::string_view CHART_LIZENZ;    // its licence
extern const std::string_view TABELLENVORLAGE; // for Arbeitsmappe

} // namespace orvostat
