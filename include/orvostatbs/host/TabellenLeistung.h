// The tables of services: treatments, bills, plans, fee schedules, X-ray book.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/Tabelle.h"

#include "orvostatbs/host/detail/Tabellenmakros.def"

namespace orvostat {

// Treatments. SITZUNG is the visit's letter, LFDBEHEINTRAG the entry's running number; ANZAHL is a unit character
// with the quantity in hundredths behind it, FAKTOR ten-thousandths, USTKEY the tax key, LSTIN the service as entered
// and LSTNR as billed.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(DATUM, Datum) S(SITZUNG, Text) S(LFDBEHEINTRAG, Text) S(BEHANDLERNR, Text) \
    S(ERFASSER, Text) S(TEETH, Text) S(ANZAHL, Menge) S(LSTIN, Text) S(LSTNR, Text) S(GOART, Text) \
    S(ABRART, Text) S(FAKTOR, Faktor) S(BETRAG, Betrag) S(USTKEY, Text) S(LAGE, Text) S(ENTFERNUNG, Text) \
    S(UHRZEIT, Text) S(DTAGRUND, Text) S(TEXTART, Text) S(ICDCODE, Text) S(ICDNOTATIONSKZ, Text) \
    S(TEXT, Text) S(ABRMERKMAL, Text) S(PATBILL, Text) S(BEHKZ, Text) S(LFDBEFENTRY, Text) \
    S(LFDLBLOCK, Text) S(BEHINFO, Text) S(CHARGE, Text) S(ABRJJME, Text)
// clang-format on
ORVO_TABELLE(CTBeh, "BEH", Genau, "PATNR DATUM SITZUNG LFDBEHEINTRAG", "DATUM PATNR SITZUNG LFDBEHEINTRAG")
#undef ORVO_SPALTEN
class CTBeh : public CTabelle<CTBeh_Fields> {
public:
    using CTabelle::CTabelle;
    // Batch number and billing period (YYYYMM) of the current row.
    [[nodiscard]] CString GetCharge() const { return m_CHARGE; }
    [[nodiscard]] CString GetAbrJJME() const { return m_ABRJJME; }
    // Opens the patient's treatments from sVon to sBis whose treater is in sLebs, numbers in apostrophes with commas
    // between them; the empty list means all treaters. With bAlle false only the first is needed.
    int GetForPatSel(const CString & sPat, const CString & sVon, const CString & sBis, const CString & sLebs,
                     bool bAlle);
    // Opens the patient's services "beva" and "bevb" whose bill belongs to the plan.
    int GetWithBEVX(const CString & sPat, const CString & sPlan);
    // Whether the patient has, from sVon to sBis, an insurer service of the multiband treatment (126 to 128), of the
    // orthodontic deductions (119, 120), each with any letter.
    static bool IsMultibandBehandlung(const CString & sPat, const CString & sVon, const CString & sBis);
    static bool IsKfoAbschlaege(const CString & sPat, const CString & sVon, const CString & sBis);

private:
    int OeffneZeitraum(const CString & sPat, const CString & sVon, const CString & sBis);
};

// Bills. The first character of ABRART tells the kind; FAKT1 and FAKT2 are invoice numbers, the fields with ALT their
// old markers, KKFAKT the insurer's invoice.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(PATBILL, Text) S(PRAXISNR, Text) S(ABRART, Text) S(KENNUNG1, Text) \
    S(KENNUNG2, Text) S(PLANNR, Text) S(FAKT1, Text) S(FAKT1ALT, Text) S(FAKT2, Text) S(FAKT2ALT, Text) \
    S(KKFAKT, Text) S(BILLINFO1, Text) S(BILLINFO2, Text)
// clang-format on
ORVO_TABELLE(CTBill, "BILL", Genau, "PATNR PATBILL")
#undef ORVO_SPALTEN
class CTBill : public CTabelle<CTBill_Fields> {
public:
    using CTabelle::CTabelle;
};

// Treatment plans. PLANNUM is the insurer's share in percent, PLANPW the point value frozen with the plan.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(PLANNR, Text) S(PLANART, Text) S(PLANSUBART, Text) S(PLANSTATUS, Text) \
    S(PLANSTATUS2, Text) S(PLANNUM, Zahl) S(PLANDATUM, Datum) S(PLANPW, Punktwert) S(PAR22A, Text)
// clang-format on
ORVO_TABELLE(CTPlan, "PLAN", Genau, "PATNR PLANNR")
#undef ORVO_SPALTEN
class CTPlan : public CTabelle<CTPlan_Fields> {
public:
    using CTabelle::CTabelle;
    // Whether the plan falls under the shortened periodontal procedure of section 22a of the Fifth Social Code.
    [[nodiscard]] bool IsPAR22a() const { return m_PAR22A == "1"; }
};

// Fee rows. GEBPKT and GOWERT2 to GOWERT4 are points in hundredths, GOWERT2 of the private kinds a second simple
// rate, and GEBPKT of the dentists' private schedule (kind "q", subkind "1") the number of points as it is printed;
// EINFACHSATZ and ZUSCHLAG are amounts; FAKTOR and STDFAKTOR ten-thousandths.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(GOART, Text) S(LSTNR, Text) S(LSTKUERZEL, Text) S(GOSUBART, Text) S(DRUCKBILD, Text) \
    S(PWLART, Text) S(STATART, Text) S(GOFELD1, Text) S(GOFELD2, Text) S(GOFELD3, Text) S(GEBPKT, Punkte) \
    S(GOWERT2, Text) S(GOWERT3, Text) S(GOWERT4, Text) S(ZUSCHLAG, Betrag) S(BETRAG2, Betrag) \
    S(EINFACHSATZ, Betrag) S(F100AEVWERT, Text) S(GOKZ, Text) S(GOTEXT, Text) S(FAKTOR, Faktor) \
    S(STDFAKTOR, Faktor)
// clang-format on
ORVO_TABELLE(CTGO, "GO", OhneGross, "GOART LSTNR", "GOART LSTKUERZEL")
#undef ORVO_SPALTEN
class CTGO : public CTabelle<CTGO_Fields> {
public:
    using CTabelle::CTabelle;
    // The simple rate in currency cWaehrung. bArzt marks a row of the physicians' schedule; its rates convert alike.
    [[nodiscard]] static CDBetrag EinfachsatzToW(const CDBetrag & satz, bool bArzt, char cWaehrung);
    // Points of a service on a date, as digits in hundredths: those of the latest change not after the date, or
    // sPunkte as given.
    [[nodiscard]] static CString GetGebPkt(const CString & sGoArt, const CString & sLst,
                                           const CString & sPunkte, const CString & sDatum);
    // The same for numbers, without the way through texts.
    [[nodiscard]] static int GetGebPkt(char cGoArt, const CString & sLst, int iPunkte,
                                       const CString & sDatum);
    // The changes are read when the first service asks for them, and again after a write through a handle of this
    // process. What another workstation has changed since is seen after this call, with which a run begins.
    static void VergissGebPkt();
    // The field of that name: norm per hundred cases, which is also the commission group.
    [[nodiscard]] CString m_F100AEV() const { return m_F100AEVWERT; }
};

// Changed points of services: from PKTAB on PUNKTE (hundredths) hold.
// clang-format off
#define ORVO_SPALTEN(S) S(GOART, Text) S(LSTNR, Text) S(PKTAB, Datum) S(PUNKTE, Punkte)
// clang-format on
ORVO_TABELLE(CTGoPunkte, "GOPUNKTE", OhneGross, "GOART LSTNR PKTAB")
#undef ORVO_SPALTEN
class CTGoPunkte : public CTabelle<CTGoPunkte_Fields> {
public:
    using CTabelle::CTabelle;
};

// Checks of a service: CHECKTEXT holds, for EXTRAFLAG "p", audit minutes in places 1 to 6 and their kind in place 9.
// clang-format off
#define ORVO_SPALTEN(S) S(GOART, Text) S(LSTNR, Text) S(EXTRAFLAG, Text) S(CHECKTEXT, Text)
// clang-format on
ORVO_TABELLE(CTGoCheck, "GOCHECK", OhneGross, "GOART LSTNR EXTRAFLAG")
#undef ORVO_SPALTEN
class CTGoCheck : public CTabelle<CTGoCheck_Fields> {
public:
    using CTabelle::CTabelle;
    // Reads the service's check of that flag; 0, 1 or 2 as every read.
    int GetByExtraFlag(const CString & sGoArt, const CString & sLst, char cFlag);
};

// Norms of the hundred-case statistic: hundredths of a piece per hundred cases for primary, substitute and all
// insurers, and the second set of installations with physicians' fees.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(GOART, Text) S(LSTKUERZEL, Text) S(GUELTIGAB, Datum) S(TEXT, Text) S(RVO, Zahl) S(VDAK, Zahl) \
    S(GESAMT, Zahl) S(RVOMKG, Zahl) S(VDAKMKG, Zahl) S(GESAMTMKG, Zahl)
// clang-format on
ORVO_TABELLE(CTGoBudget, "GOBUDGET", Genau, "GOART LSTKUERZEL GUELTIGAB")
#undef ORVO_SPALTEN
class CTGoBudget : public CTabelle<CTGoBudget_Fields> {
public:
    using CTabelle::CTabelle;
};

// The X-ray book.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(ROELFDNR, Text) S(PRAXISID, Text) S(ROEGRAV, Text) S(ROEANZAHL, Text) \
    S(ROEGERAET, Text) S(ROEXRAYMS, Text) S(ROEXRAYCURRENT, Text) S(ROEXRAYVOLTAGE, Text) \
    S(ROEBELICHTUNG, Text) S(ROEINDIKATION, Text) S(ROEBEMERKUNG, Text) S(ROELASTDATUM, Datum) \
    S(ROELASTREGIO, Text) S(ROELASTPASSDRUCK, Text)
// clang-format on
ORVO_TABELLE(CTRoeBefund, "ROEBEFUND", Genau, "PATNR ROELFDNR")
#undef ORVO_SPALTEN
class CTRoeBefund : public CTabelle<CTRoeBefund_Fields> {
public:
    using CTabelle::CTabelle;
};

} // namespace orvostat

#include "orvostatbs/host/detail/Tabellenmakros.def"
