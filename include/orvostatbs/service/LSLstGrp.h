// The records that a service statistic adds up in: lines, groups of lines, and all that a treater, the
// practice or an insurer did.
//
// Every sum and every line is a CLSLst. A hit goes into many of them, chosen by three questions:
//
//   who pays       the insurer (KASSENABR), a private patient (ISPRIVATPATIENT), or anybody else
//   which bucket   Std: no laboratory kind and no statistic kind "k", "l", "m"; K: statistic kind "k"; LM: the rest
//   deducted set   material that a practice hands on: kinds "k", "g" of sub-kind "6", "p", "q" of "o", "q". The
//                  Netto sums go without it, and what of it falls into none of Std and K stands in Abz, not in LM
//
// So a hit is always in m_Gesamt and in one Ges, and m_SumStd + m_SumK + m_SumLM is m_Gesamt less the three
// Abz.
//
// Units: counts in hundredths of a piece, points as the hits have them, shares and deviations in hundredths
// of a percent. Counts and points are summed in 64 bits and stay at the end of their 32 bits where they pass
// it; so do shares. All records are values, everything is public, and a fresh record is as after Clear.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/BehHitLine.h"

#include <cstdint>
#include <vector>

namespace orvostat {

// An insurer group: the character code of the hit's KASSENGRP, 0 for none.
enum STATKASGRP : int { STATKASGRP_KEINE = 0, STATKASGRP_1 = '1', STATKASGRP_2 = '2', STATKASGRP_9 = '9' };

// The line of one service, and the form of every sum. The texts are those of the last hit taken in.
class CLSLst {
public:
    CString LSTNR; // what makes the line
    CString LSTKUERZEL;
    CString EINHEIT;
    std::int32_t ANZAHL = 0;
    CDBetrag BETRAG; // tax and surcharge included
    std::int32_t PUNKTE = 0;
    std::int32_t ANTEILBEH = 0; // share of the amount in its own sum; ANTEILKAS is the same number
    std::int32_t ANTEILKAS = 0;
    std::int32_t ANTEILPRAXIS = 0;      // share of the amount in the practice's figure
    std::int32_t m_iF100Soll = 0;       // norm per hundred cases in hundredths, 0 for none
    std::int32_t m_iF100Abweichung = 0; // from the norm
    std::int32_t m_iAnteilAnz = 0;      // share of ANZAHL
    std::int32_t m_iAnzJe100Fall = 0;   // hundredths of a piece
    std::int32_t m_iAnzDiff = 0;        // actual less expected, whole pieces
    std::int32_t m_iAnzGrund4 = 0;      // ANZAHL of the hits of DTAGRUND "4", "5"
    std::int32_t m_iAnzGrund5 = 0;

    void Clear() { *this = CLSLst(); }
    // Takes in a hit. One of ABRMERKMAL "o" or "n" counts as a piece but adds neither money nor points.
    void MoveLst(const CBehHitLine & hit);
    // Adds ANZAHL, BETRAG and PUNKTE of another line and takes its texts; everything else stays.
    void MoveLst(const CLSLst & lst);

    // ---- Derived figures. Where the first condition does not hold the field stays as it is.

    // ANTEILBEH and ANTEILKAS, ANTEILPRAXIS: of a positive amount in a basis that is not zero.
    void SumAnteilGesamtBetrag(const CLSLst & basis);
    void SumAnteilPxBetrag(const CLSLst & basis);
    // m_iAnteilAnz: in a count that is not zero. m_iAnzJe100Fall: for a number of cases that is not zero.
    void SumAnteilAnz(const CLSLst & gesamt);
    void SumAnteilAnz100Fall(int iFaelle);
    // m_iAnzDiff: always; without norm nothing is expected.
    void SumAnzDiff(int iFaelle);
    // m_iF100Abweichung: 0 without norm, without cases, on the norm, and where nothing was rendered.
    void Sum100FallAbweichung(int iFaelle);

    // The same service number, letter for letter.
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const { return LSTNR == hit.LSTNR; }
    [[nodiscard]] bool operator==(const CLSLst & lst) const { return LSTNR == lst.LSTNR; }
};

// The lines of one payer, one class of fee schedules and one statistic kind. Classes "K" and "P" count as the
// same wherever groups are compared, so that a group keeps the class of its first hit and takes both.
class CLSLstGrp {
public:
    char m_cZahler = 0;  // "0" insurer, "1" private patient, "2" any other; 0 while fresh
    char m_cGoTyp = 0;   // "K" points, "P" private fees, "T" laboratory, any other the kind itself
    char m_cStatArt = 0; // statistic kind, for "T" the laboratory digit
    std::vector<CLSLst> m_vLst;
    CLSLst m_Sum;

    void Clear() { *this = CLSLstGrp(); }
    // Takes in a hit: into its line, a new one at the end if there is none, and into the sum. A fresh group
    // takes its three characters from the hit.
    void MoveLstGrp(const CBehHitLine & hit);
    // Adds the lines of another group to lines and sum, and takes its three characters.
    void MoveLstGrp(const CLSLstGrp & grp);
    [[nodiscard]] bool IstGleicheLstGrp(const CLSLstGrp & grp) const;
    // The hit belongs into this group.
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const;
    [[nodiscard]] bool operator==(const CLSLstGrp & grp) const { return IstGleicheLstGrp(grp); }
};

// A statistic kind that occurs in the practice; screens make their columns of them.
class CPxLstGrp {
public:
    char m_cZahler = 0; // of hits "0", for laboratory kinds "T"; of a group its payer
    char m_cStatArt = 0;

    void Clear() { *this = CPxLstGrp(); }
    void MoveLstGrp(const CBehHitLine & hit);
    void MoveLstGrp(const CLSLstGrp & grp);
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const;
    // Both the class and the statistic kind of the group are this kind, which is hardly ever so.
    [[nodiscard]] bool operator==(const CLSLstGrp & grp) const;
};

// All that one treater did.
class CLSBehLstGrp {
public:
    CString BEHANDLERNR;
    std::vector<CLSLstGrp> m_vLstGrp;
    CLSLst m_Gesamt;
    CLSLst m_PrivatStd;
    CLSLst m_PrivatK;
    CLSLst m_PrivatLM;
    CLSLst m_KasseStd;
    CLSLst m_KasseK;
    CLSLst m_KasseLM;
    CLSLst m_SonstStd;
    CLSLst m_SonstK;
    CLSLst m_SonstLM;
    CLSLst m_SumStd;
    CLSLst m_SumK;
    CLSLst m_SumLM;
    CLSLst m_PrivatGes;
    CLSLst m_KasseGes;
    CLSLst m_SonstGes;
    CLSLst m_PrivatAbz;
    CLSLst m_KasseAbz;
    CLSLst m_SonstAbz;
    CLSLst m_PrivatNetto;
    CLSLst m_KasseNetto;
    CLSLst m_SonstNetto;
    CLSLst m_SumNetto;
    std::int32_t m_iAnzFaelle = 0; // counted by nobody: cases belong to the practice

    void Clear() { *this = CLSBehLstGrp(); }
    void MoveBehLstGrp(const CBehHitLine & hit);
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const { return BEHANDLERNR == hit.BEHANDLERNR; }
};

// One insurer of one practice owner.
class CLSKasLstGrp {
public:
    CString PRAXISNR;
    CString KASKUERZEL;
    CString KASSTATISTIKART;
    CString KASMEDSTATISTIKART;
    CString KASSENART;
    bool FREMDKASSE = false;
    STATKASGRP KASSENGRP = STATKASGRP_KEINE;
    std::vector<CLSLstGrp> m_vLstGrp;
    CLSLst m_Gesamt;
    CLSLst m_Leer;     // filled by nothing
    CLSLst m_Sum;      // every hit again; the base of the shares of the groups
    CLSLst m_KasseGes; // the hits billed to the insurer
    std::int32_t m_iAnzFaelle = 0;

    void Clear() { *this = CLSKasLstGrp(); }
    void MoveKasLstGrp(const CBehHitLine & hit, bool bNeuerFall);
    // Adds another insurer; the last one added gives its name and kinds to the whole.
    void MoveKasSel(const CLSKasLstGrp & kas);
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const {
        return KASKUERZEL == hit.KASKUERZEL && PRAXISNR == hit.PRAXISNR;
    }
    [[nodiscard]] bool operator==(const CLSKasLstGrp & kas) const {
        return KASKUERZEL == kas.KASKUERZEL && PRAXISNR == kas.PRAXISNR;
    }
};

// All that the practice did. m_SumNetto stands before the three Netto here, and behind them with the treater.
class CLSPxLstGrp {
public:
    CString m_sPraxis;
    std::vector<CLSLstGrp> m_vLstGrp;
    CLSLst m_Gesamt;
    std::vector<CPxLstGrp> m_vPxLstGrp; // the statistic kinds that occur
    CLSLst m_PrivatStd;
    CLSLst m_PrivatK;
    CLSLst m_PrivatLM;
    CLSLst m_KasseStd;
    CLSLst m_KasseK;
    CLSLst m_KasseLM;
    CLSLst m_SonstStd;
    CLSLst m_SonstK;
    CLSLst m_SonstLM;
    CLSLst m_SumStd;
    CLSLst m_SumK;
    CLSLst m_SumLM;
    CLSLst m_PrivatGes;
    CLSLst m_KasseGes;
    CLSLst m_SonstGes;
    std::int32_t m_iAnzFaelle = 0;
    CLSLst m_PrivatAbz;
    CLSLst m_KasseAbz;
    CLSLst m_SonstAbz;
    CLSLst m_SumNetto;
    CLSLst m_PrivatNetto;
    CLSLst m_KasseNetto;
    CLSLst m_SonstNetto;

    void Clear() { *this = CLSPxLstGrp(); }
    void MovePxLstGrp(const CBehHitLine & hit, const CString & sPraxis, bool bNeuerFall);
    // Adds the groups and cases of an insurer. The sums stay: CLSSum::AnalyseKasDataSum fills those it needs.
    void MovePxLstSel(const CLSKasLstGrp & kas);
    [[nodiscard]] bool operator==(const CString & sPraxis) const { return m_sPraxis == sPraxis; }
};

} // namespace orvostat
