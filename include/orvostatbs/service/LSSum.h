// The service statistic: who did what, how often, for how much, paid by whom.
//
// A screen hands over the hits of a run and reads the public records afterwards. Three statistics share the
// object:
//
//   Analyse                                   the practice and its treaters, with days and shares
//   LoadBudgets of m_100F, Analyse100Fall     the hundred-case columns
//   AddKasData per hit, AnalyseKasDataSum,    the insurers, and any selection of them
//   AnalyseForKasSel as often as needed
//
// They also share the list of cases, and none of them clears what an earlier one has left: ClearAll begins
// anew.
//
// What a share is of: ANTEILBEH of a treater's figure is its part of the treater's matching sum, ANTEILPRAXIS
// its part of the practice's matching sum or, for a line, of the practice's line of that service. In the
// practice's own record ANTEILPRAXIS of groups and lines is the part of their bucket. An insurer's lines and
// groups stand against the insurer's sum. The bucket of a group is judged by its statistic kind alone, so a
// group of deducted services (see LSLstGrp.h) is measured against m_SumLM although its hits are not in it.
//
// Vectors are searched by an index beside them. It notices elements that were added, taken away or put in
// another order; the key fields of an element (service number, insurer, practice, a case) must not be changed
// in place between two calls of AddKasData.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/service/Fall.h"
#include "orvostatbs/service/LSLstGrp.h"
#include "orvostatbs/service/Px100F.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace orvostat {

// A selection of insurers. Texts are Windows-1252; null counts as empty.
struct KAS_GRP_SEL {
    const char * m_szName = nullptr; // names the result
    const char * m_szText = nullptr;
    STATKASGRP m_eGrp = STATKASGRP_KEINE; // 0 for any
    const char * m_szKassenArt = nullptr; // KASSENART, empty for any
    const char * m_szStatArt = nullptr;   // KASSTATISTIKART, empty for any
    const char * m_szFremd = nullptr;     // first character "1": foreign insurers only; empty for any
};

class CKasRegister;
class CZeilenregister;

class CLSSum {
public:
    CLSPxLstGrp m_Praxis;
    std::vector<CLSBehLstGrp> m_vBeh;      // one per treater
    std::vector<CFallJeQuartal> m_vFaelle; // the cases of the current quarter
    std::vector<CLSKasLstGrp> m_vKas;      // insurers of the last AnalyseKasDataSum
    CLSKasLstGrp m_KasSum;                 // their total; emptied by ClearAll only
    std::vector<CLSKasLstGrp> m_vKasData;  // insurers as AddKasData collects them
    CLSKasLstGrp m_KasSel;                 // room for a caller's selection
    // Number of a treater, of a practice owner, and on how many days there was a hit. Number 0 is all
    // together and also takes what is no number.
    std::vector<std::pair<std::int32_t, std::int32_t>> m_vBehTage;
    std::vector<std::pair<std::int32_t, std::int32_t>> m_vPraxisTage;
    CPx100F m_100F;

    CLSSum();
    virtual ~CLSSum();
    CLSSum(const CLSSum & sum);
    CLSSum & operator=(const CLSSum & sum);

    void ClearAll();

    // Adds the hits of sPraxis, empty for all, to the practice and the treaters, appends to the lists of days
    // and forms the shares. More than 1000 hits show a progress box. If the user cancels, what has been added
    // stays, days and shares are not formed, and the wait cursor is left on.
    void Analyse(const CString & sPraxis, const std::vector<CBehHitLine> & vHits, HWND hWnd);
    // Fills m_100F anew. Each column stands against its own cases or, with bFesteFallzahl, against iFallzahl;
    // the other three are those of CPx100F::MovePx100F.
    void Analyse100Fall(const CString & sPraxis, const std::vector<CBehHitLine> & vHits, bool bFesteFallzahl,
                        int iFallzahl, bool bMitGruppe9, bool bGruppe9Extra, bool bZweiterSatz);
    // Takes a hit, which the caller has chosen, into its insurer of m_vKasData.
    void AddKasData(const CBehHitLine & hit);
    // Fills m_vKas and m_Praxis anew from the insurers of sPraxis, empty for all, and adds them to m_KasSum.
    // Of the sums of m_Praxis only m_Gesamt, m_KasseStd, m_SumStd and m_KasseGes are filled; each holds the
    // whole.
    void AnalyseKasDataSum(const CString & sPraxis, const std::vector<CLSKasLstGrp> & vKas);
    // Fills result with the sum of the insurers that are in the selection and, unless sKuerzel is empty, have
    // that short code; the shares are those of m_Praxis. vFaelle is emptied. The first argument is not read.
    void AnalyseForKasSel(const CString & sPraxis, const std::vector<CLSKasLstGrp> & vKas,
                          CLSKasLstGrp & result, std::vector<CFallJeQuartal> & vFaelle,
                          const KAS_GRP_SEL & sel, const CString & sKuerzel, bool bFremdGrp1,
                          bool bFremdGrp2);
    // 1 if an insurer of these kinds is in the selection, else 0. A foreign one is in a plain selection of
    // group "1" or "2" only if the flag of that group says so.
    [[nodiscard]] static int KasInSel(const CString & sKassenArt, STATKASGRP eGrp, const CString & sStatArt,
                                      bool bFremd, const KAS_GRP_SEL & sel, bool bFremdGrp1, bool bFremdGrp2);

    // ---- Look-ups. Positions are -1 for none.

    // The hit belongs into the statistic of sPraxis.
    [[nodiscard]] bool TestBehSelOk(const CBehHitLine & hit, const CString & sPraxis) const;
    [[nodiscard]] int FindBeh(const CBehHitLine & hit) const;
    // From the end.
    [[nodiscard]] int FindKas(const std::vector<CLSKasLstGrp> & vKas, const CBehHitLine & hit) const;
    [[nodiscard]] int FindLSLstGrp(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                   CChar cStatArt) const;
    // Of the sum of the group that FindLSLstGrp finds; empty or 0 without one.
    [[nodiscard]] CDBetrag GetLstGrpBetrag(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler,
                                           CChar cGoTyp, CChar cStatArt) const;
    [[nodiscard]] int GetLstGrpPunkte(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                      CChar cStatArt) const;
    [[nodiscard]] int GetLstGrpPxAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                        CChar cStatArt) const;
    [[nodiscard]] int GetLstGrpBehAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                         CChar cStatArt) const;
    [[nodiscard]] int GetLstGrpKasAnteil(const std::vector<CLSLstGrp> & vLstGrp, CChar cZahler, CChar cGoTyp,
                                         CChar cStatArt) const;
    // Lines that a statistic will take, for a progress display.
    [[nodiscard]] long GetAnzStatLines() const;

    // ---- Steps of the runs. Each forms shares and then sorts what it has formed them for.

    void DoPraxisAnteile();
    void DoBehandlerAnteile();
    // One group of a treater: shares of its sum and lines in behBasis, of its sum in pxBasis, of its lines in
    // the practice's lines.
    void DoLstGrpAnteil(CLSLstGrp & grp, const CLSLst & behBasis, const CLSLst & pxBasis);
    void DoKassenAnteile();
    // Does not sort.
    void SumKassenAnteile(CLSKasLstGrp & kas);
    // Counts and deviations of a column's lines, which are then sorted.
    void Do100F_Anteile(std::vector<CLSLst> & vLst, const CLSLst & gesamt, int iFaelle);
    void Sort100Fall(std::vector<CLSLst> & vLst);

private:
    void LstGrpAnteil(CLSLstGrp & grp, const CLSLst & behBasis, const CLSLst & pxBasis,
                      CZeilenregister & praxis);
    void KasAnteile(CLSKasLstGrp & kas, CZeilenregister & praxis);

    // The index of AddKasData. A copied statistic begins without one.
    struct SRegister {
        SRegister();
        ~SRegister();
        SRegister(const SRegister &) : SRegister() {}
        SRegister & operator=(const SRegister &);
        std::unique_ptr<CKasRegister> p;
    };

    SRegister m_register;
};

} // namespace orvostat
