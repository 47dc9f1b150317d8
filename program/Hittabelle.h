// Hits as lines of a table, for all commands that list them.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/records/BehHitLine.h"

#include <vector>

namespace orvostat {

enum class EHitspalten {
    Kurz, // what a single treatment says
    Alle, // and what a run adds: the practice
};

// The points of a hit as its fee schedule counts them: those of the dentists' private schedule are stored whole, all
// others in hundredths. Empty for none.
[[nodiscard]] CString Punktzelle(const CBehHitLine & hit);

class CHittabelle {
public:
    // Writes the head to the document, which outlives the object.
    CHittabelle(CDokument & dokument, EHitspalten eSpalten);
    void Zeile(const CBehHitLine & hit);
    void Ende() { m_ausgabe.Ende(); }

private:
    EHitspalten m_eSpalten;
    std::vector<SAusgabespalte> m_vSpalten;
    CAusgabe & m_ausgabe;
};

} // namespace orvostat
