// The report as one page of HTML that needs nothing but itself.
#pragma once

#include "Ausgabe.h"

namespace orvostat {

// Writes the page at its end. The stream must outlive the object, and so do the columns of all tables. Every text is
// escaped, whoever has written it, and the page runs no script but its own two.
[[nodiscard]] std::unique_ptr<CDokument> NeueBerichtseite(std::ostream & aus);

} // namespace orvostat
