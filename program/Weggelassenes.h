// What a run has read and not counted.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/lauf/Lauf.h"

#include <vector>

namespace orvostat {

// Collects the treatments that a run leaves out: those that nobody has excluded and nobody bills, or all.
class CWeggelassenes {
public:
    // The accumulator is the run's.
    CWeggelassenes(const CStatAccu & accu, bool bAlle) : m_accu(accu), m_bAlle(bAlle) {}
    // For the run: its amounts are those of a valuation where there was one, else the entered ones.
    void Nimm(const CTBeh & beh, EWeglassgrund eGrund);
    void Schreibe(CDokument & dokument) const;

private:
    const CStatAccu & m_accu;
    bool m_bAlle;
    std::vector<std::vector<CString>> m_vZeilen;
    CDBetrag m_summe{0.0, 'e'};
};

} // namespace orvostat
