// The tables of a patient: the person, insurance periods, findings, recalls.
#pragma once

#include "orvostatbs/host/Tabelle.h"
#include "orvostatbs/host/TabellenPraxis.h"

#include <cstdint>

#include "orvostatbs/host/detail/Tabellenmakros.def"

namespace orvostat {

// Patients. PATNR has ten places, right-aligned; RECALLART and RECALLITV have one character per recall kind.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(SELEKTION, Text) S(ADRNR, Text) S(PATVORNAME, Text) S(PATNAME, Text) \
    S(PATGEBDATUM, Datum) S(LASTBEHDATUM, Datum) S(UEBERWARZT, Text) S(HAUSARZT, Text) \
    S(EINTRDATUM, Datum) S(RISIKOANAMNESE, Text) S(RECALLART, Text) S(RECALLITV, Text) \
    S(BENACHRICHTIGUNG, Text) S(PATFELD1, Text) S(PATFELD3, Text) S(BEHANDLERNR, Text) \
    S(PATPROZENT, Zahl) S(FRUCHT, Text) S(PFLEGEGRAD, Text) S(PFLEGEGRADENDE, Datum) \
    S(FALLBESONDERHEIT, Text) S(INDEXMARKERS, Zahl)
// clang-format on
ORVO_TABELLE(CTPat, "PAT", Genau, "PATNR", "PATNAME PATVORNAME")
#undef ORVO_SPALTEN
class CTPat : public CTabelle<CTPat_Fields> {
public:
    using CTabelle::CTabelle;
    // Reads the patient's row; 0, 1 or 2 as every read.
    int GetByPatNr(const CString & sPatNr);
    [[nodiscard]] char GetFrucht() const { return m_FRUCHT.Erstes(); }
    // Care level and the last day it holds.
    void GetPflegegrad(CString & sGrad, CString & sEnde) const;
    [[nodiscard]] CString GetFallBesonderheit() const { return m_FALLBESONDERHEIT; }
    // A bit set; 0 where the column is no number.
    [[nodiscard]] std::uint32_t GetIndexMarkers() const;
};

// Recalls that have taken place; RECALLITV is the interval in weeks, RECALLART the kind as a number.
// clang-format off
#define ORVO_SPALTEN(S) S(PATNR, Text) S(RECALLART, Text) S(RECALLDATUM, Datum) S(RECALLITV, Zahl)
// clang-format on
ORVO_TABELLE(CTHistRecall, "HISTRECALL", Genau, "PATNR RECALLART RECALLDATUM")
#undef ORVO_SPALTEN
class CTHistRecall : public CTabelle<CTHistRecall_Fields> {
public:
    using CTabelle::CTabelle;
    // Date of the patient's last recall of kind iArt, -1 for any kind; empty if there is none. iErgebnis takes the
    // interval of that recall, 0 for none. Moves the record set.
    CString LastRecallDatum(const CString & sPat, int iArt, int & iErgebnis);
};

// Insurance periods. VNACHWEIS tells how the insurance was proved, KSART is a special insurer type, WSO the region
// mark; EEB, EGK and KOSTENERSTATTUNG are flags "1".
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(VDESCNR, Text) S(VDABDATUM, Datum) S(VDBISDATUM, Datum) S(EINLESEDATUM, Datum) \
    S(KASKUERZEL, Text) S(VNACHWEIS, Text) S(KSART, Text) S(VDESCFELD, Text) S(MFRDIG, Text) \
    S(RSA, Text) S(WSO, Text) S(VDESCEXTRA, Text) S(KOSTENERSTATTUNG, Text) \
    S(GEBUEHRENBEFREITBIS, Datum) S(EEB, Text) S(EGK, Text) S(EGKDATEN, Text)
// clang-format on
ORVO_TABELLE(CTVDesc, "VDESC", Genau, "PATNR VDABDATUM VDESCNR")
#undef ORVO_SPALTEN
class CTVDesc : public CTabelle<CTVDesc_Fields> {
public:
    using CTabelle::CTabelle;
    // The east region: of the row, or of a region mark on a date.
    [[nodiscard]] bool IsWsoOst() const { return IsWsoOst(m_WSO, m_VDABDATUM); }
    [[nodiscard]] static bool IsWsoOst(const CString & sWso, const CString & sDatum);
    // The electronic proof, the health card, the reimbursement of private bills.
    [[nodiscard]] bool GetEEB() const { return m_EEB == "1"; }
    [[nodiscard]] bool IsEGK() const { return m_EGK == "1"; }
    [[nodiscard]] bool GetPrivateKostenerstattung() const { return m_KOSTENERSTATTUNG == "1"; }
    // Opens the patient's periods that end on or after the date or have no end, in the direction of SetKey. The
    // last three arguments are accepted without effect.
    int GetByIntervall(const CString & sPat, const CString & sDatum, const CString & sKasse,
                       const CString & sArt, bool bAlle);
    // Reads the patient's period that is valid at the date: among several a statutory one before a private, one
    // without special insurer type before one with, then the latest; among several of one key that row itself. A
    // store that failed on the way is a failure, whatever was found before. iArt is accepted without effect.
    int FindMatching(const CString & sPat, const CString & sDatum, int iArt);

private:
    [[nodiscard]] int Rang() const;
};

// Findings: BEFUND has one character per tooth position, ZAHNSTEIN a "1" where there is tartar.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(LFDBEFENTRY, Text) S(BEFUND, Text) S(ZAHNSTEIN, Text) S(MUNDKRANKHEIT, Text)
// clang-format on
ORVO_TABELLE(CTABefund, "ABEFUND", Genau, "PATNR LFDBEFENTRY")
#undef ORVO_SPALTEN
class CTABefund : public CTabelle<CTABefund_Fields> {
public:
    using CTabelle::CTabelle;
};

// The host's catalogue of findings.
class CBefunde {
public:
    // The letter of finding number iBefund in a finding text, and its code of one or two characters; both empty for
    // an unknown number.
    void Befund2Kuerzel(int iBefund, CString & sBefund, CString & sKuerzel) const;
};

// The insured person's data as a health card holds them, as far as a statistic asks for them.
struct SEGKVersichertenstammdaten {
    CString m_sBesonderePersonengruppe;
};

// Parses stored card data: elements "NAME=text" with "|" between them, among them BPG, the special person group.
// False, and daten unchanged, if an element is malformed or there is none.
bool StringToEGKVersichertenstammdaten(const CString & sDaten, SEGKVersichertenstammdaten & daten);

} // namespace orvostat

#include "orvostatbs/host/detail/Tabellenmakros.def"
