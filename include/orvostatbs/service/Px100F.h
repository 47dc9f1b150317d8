// The hundred-case statistic: how often is a service rendered per hundred cases, beside the norm of the
// dental association, apart for primary insurers (RVO) and substitute insurers (VDAK).
//
// Norms are kept per kind of fee schedule, day from which they hold, and short code; they are hundredths of a
// piece per hundred cases. A date before the first norm has none.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/service/LSLstGrp.h"

#include <array>
#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace orvostat {

// The norms of one service from one day on, as digits.
struct SGoBudget {
    CString m_sKuerzel; // short code of the service
    CString m_sText;
    CString m_sRvo;
    CString m_sVdak;
    CString m_sGesamt;
    CString m_sRvoMkg; // the second set; empty unless the installation has physicians' fees
    CString m_sVdakMkg;
    CString m_sGesamtMkg;
};

// A ratio to watch. Each side is a list of short codes with a blank before and behind each.
class CVerhLst {
public:
    CString m_sZaehler;
    CString m_sNenner;
};

// One column.
class CKasArt100F {
public:
    CString KASSENART;             // of the last hit
    std::vector<CLSLst> m_vLst;    // one line per service
    CLSLst m_Gesamt;               // all hits
    std::int32_t m_iAnzFaelle = 0; // new cases
    CLSLst m_Nebenleistung;        // material and laboratory
    CLSLst m_Hauptleistung;        // everything else
    // The counts of numerator and denominator for each entry of s_vVerhLst at the time of Clear.
    std::vector<std::pair<std::int32_t, std::int32_t>> m_vVerh;

    // The ratios; filled by the screens before a run and only read here.
    static std::vector<CVerhLst> s_vVerhLst;

    // Empties all and gives m_vVerh a zero pair for each ratio.
    void Clear();
    // Takes in a hit. iSoll is the norm that a line gets with its first hit. Of m_vVerh and s_vVerhLst the
    // shorter one counts.
    void MoveKasArt100F(const CBehHitLine & hit, bool bNeuerFall, int iSoll);
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const { return KASSENART == hit.KASSENART; }
};

// The columns by their positions. Primary insurers of a column are those of the practice's own association.
enum E100FSpalte : std::size_t {
    SPALTE_GESAMT,
    SPALTE_VDAK,
    SPALTE_VDAK_PRIMAER,
    SPALTE_VDAK_FREMD,
    SPALTE_RVO,
    SPALTE_RVO_PRIMAER,
    SPALTE_RVO_FREMD,
    SPALTE_GRUPPE9,
    SPALTEN_100F
};

class CPx100F {
public:
    using CBudgetJeTag = std::map<CString, std::vector<SGoBudget>>;

    CString m_sPraxis;
    std::array<CKasArt100F, SPALTEN_100F> m_aSpalten;
    // The period runs over a change of the norms; set by LoadBudgets and never taken back.
    bool m_bQuartalsuebergreifend = false;
    std::map<char, CBudgetJeTag> m_mBudgets; // by GOART and first day; only added to

    // Practice and columns; the norms stay, and so does m_bQuartalsuebergreifend.
    void Clear();
    // Takes in a hit. Insurer group "9" is dropped without bMitGruppe9 and stands in its own column with
    // bGruppe9Extra, unless it is a VDAK insurer. bZweiterSatz takes the norms of the second set.
    void MovePx100F(const CBehHitLine & hit, const CString & sPraxis, bool bNeuerFall, bool bMitGruppe9,
                    bool bGruppe9Extra, bool bZweiterSatz);
    // Reads the norms, adding to those that are there. If those of kind "g" change between the two days the
    // user is told, and the newest norm counts for all hits from now on.
    void LoadBudgets(const CString & sVon, const CString & sBis);
    // Reads the norms of one kind: by first day, whose dates also go into sDaten.
    static void LoadBudget(CTGoBudget & budget, char cGoArt, CBudgetJeTag & mDaten,
                           std::set<CString> & sDaten);
    [[nodiscard]] bool operator==(const CString & sPraxis) const { return m_sPraxis == sPraxis; }
};

} // namespace orvostat
