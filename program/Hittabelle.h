// Hits as lines of a table, for all commands that list them.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/records/BehHitLine.h"

#include <iosfwd>
#include <memory>
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
    // Writes the head to aus, which outlives the object.
    CHittabelle(std::ostream & aus, EFormat eFormat, EHitspalten eSpalten);
    void Zeile(const CBehHitLine & hit);
    void Ende() { m_pAusgabe->Ende(); }

private:
    EHitspalten m_eSpalten;
    std::vector<SAusgabespalte> m_vSpalten;
    std::unique_ptr<CAusgabe> m_pAusgabe;
};

} // namespace orvostat
