// The hundred-case columns: which of them a hit reaches, what it does there, and a run over many hits.
#pragma once

#include "Gruppen.h"
#include "Register.h"

#include "orvostatbs/service/Px100F.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace orvostat {

struct SNormen {
    int iGesamt = 0;
    int iVdak = 0;
    int iRvo = 0;
};

// Numerator and denominator of a ratio that take a hit.
struct SVerhTreffer {
    bool bZaehler;
    bool bNenner;
};

// For each ratio, what it takes of a hit of this short code.
[[nodiscard]] std::vector<SVerhTreffer> VerhTrefferVon(const CString & sKuerzel);

// The norms that are valid for the hit, null for none. The map gets an entry for the hit's kind.
[[nodiscard]] const std::vector<SGoBudget> * BudgetVon(CPx100F & px, const CBehHitLine & hit);
[[nodiscard]] SNormen NormenVon(const std::vector<SGoBudget> * pBudgets, const CString & sKuerzel,
                                bool bZweiterSatz);

// Calls f with each column that the hit reaches and the norm there. A substitute insurer of group "9" is a
// substitute insurer: the group's own column is only asked for behind them.
template <class F> void JedeSpalte(const CBehHitLine & hit, const SNormen & normen, bool bGruppe9Extra, F f) {
    f(SPALTE_GESAMT, normen.iGesamt);
    if (hit.KASSENART == "7" || hit.KASSENART == "8") {
        f(SPALTE_VDAK, normen.iVdak);
        f(hit.FREMDKASSE ? SPALTE_VDAK_FREMD : SPALTE_VDAK_PRIMAER, normen.iVdak);
    } else if (bGruppe9Extra && hit.KASSENGRP == STATKASGRP_9) {
        f(SPALTE_GRUPPE9, normen.iRvo);
    } else {
        f(SPALTE_RVO, normen.iRvo);
        f(hit.FREMDKASSE ? SPALTE_RVO_FREMD : SPALTE_RVO_PRIMAER, normen.iRvo);
    }
}

// What MoveKasArt100F does. *pStelle is the position of the hit's line, -1 for a line that is yet to come; for null it
// is searched for.
void NimmInSpalte(CKasArt100F & spalte, const SHit & h, bool bNeuerFall, int iSoll, int * pStelle,
                  const std::vector<SVerhTreffer> & vTreffer);

// MovePx100F for many hits and columns that are empty at first: norms and ratios are looked up once for each short
// code.
class CHundertlauf {
public:
    CHundertlauf(CPx100F & px, const CString & sPraxis, bool bMitGruppe9, bool bGruppe9Extra,
                 bool bZweiterSatz);
    void Nimm(const CBehHitLine & hit, bool bNeuerFall);

private:
    struct SKuerzel {
        std::vector<std::pair<const std::vector<SGoBudget> *, SNormen>> vNormen; // by where they come from
        std::vector<SVerhTreffer> vTreffer;
    };

    // A service, and the number of the short code that its last hit had.
    struct SLeistung {
        CString sKuerzel;
        int iKuerzel = -1;
        std::array<int, SPALTEN_100F> aStellen; // of its lines, -1 for none
    };

    [[nodiscard]] SLeistung & Leistung(const CBehHitLine & hit);
    [[nodiscard]] SNormen Normen(const CBehHitLine & hit, SKuerzel & kuerzel);

    CPx100F & m_px;
    const CString m_sPraxis;
    const bool m_bMitGruppe9;
    const bool m_bGruppe9Extra;
    const bool m_bZweiterSatz;
    CNummern<CString> m_leistungen;
    CNummern<CString> m_kuerzel;
    std::vector<SLeistung> m_vLeistungen;
    std::vector<SKuerzel> m_vKuerzel;
    CString m_sTag; // of the last hit, as the next two
    char m_cGoArt = 0;
    const std::vector<SGoBudget> * m_pBudgets = nullptr;
};

} // namespace orvostat
