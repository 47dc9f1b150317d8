// The statistics of one denture plan (Zahnersatz): the amounts of its fitting block, and the laboratory
// entries that were agreed with the patient outside of the insurers' scheme (Abdingung).
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/records/BehHitLine.h"

#include <vector>

namespace orvostat {

// An empty patient or plan number is no plan. A row that cannot be read reads as not there.
class CStatZE {
public:
    std::vector<CBehHitLine> m_vHits; // what the last GetAbdingungsLst found, whatever it returned

    CStatZE() = default;
    virtual ~CStatZE() = default;
    CStatZE(const CStatZE &) = default;
    CStatZE & operator=(const CStatZE &) = default;

    // The amounts of columns 5, 6 and 2 (from 0) of the plan's first fitting block; without such a block
    // false, and the amounts stay as they are. A column that the block does not have is empty.
    bool GetLBlockData(const CString & sPat, const CString & sPlan, CDBetrag & betrag1, CDBetrag & betrag2,
                       CDBetrag & betrag3);
    // Fills m_vHits with the sample entries of the plan's first fitting block: their number.
    int GetAbdingungsLst(const CString & sPat, const CString & sPlan);

protected:
    // Reads the plan into m_rPlan.
    bool GetPlan(const CString & sPat, const CString & sPlan);
    // Reads the plan's first fitting block.
    bool GetLBlockArtEingliederung(const CString & sPat, const CString & sPlan, CTLBlock & block);
    [[nodiscard]] bool IsZePlan(const CString & sPlan, const CString & sAbrArt) const;
    // Appends the entries of the block that belong to the sample: the number of all hits then.
    int ReadMusterLBlockEntry(CTLBlockEntry & entry, const CString & sPat, const CString & sPlan,
                              const CString & sLfdLBlock, const CString & sMusterArt);
    // The entry belongs to the sample of this kind.
    [[nodiscard]] bool CheckGemMuster(const CString & sMusterArt, const CTLBlockEntry & entry) const;
    // The lines of a text block with a blank between them.
    [[nodiscard]] CString ReadBegr(const CString & sKey);
    // Opens the lines of a text block.
    bool GetTB(CTTbEntry & entry, const CString & sKey);

    CTPlan m_rPlan{dbDatabase};
};

} // namespace orvostat
