// CStatAccu: one statistic from selection to hits.
//
// The accumulator holds what a screen has selected, the master data that a run reads, and the tables that it fills.
// A run keeps this order; CLauf (lauf/Lauf.h) does 2 to 5:
//
//   1. construct, set the selection (CSelektion)
//   2. GetAllMd, GetAllLeb
//   3. DataSumVorlauf; on a code other than 0 DisplayGlobalDataError, DataSumNachlauf, stop
//   4. for each treatment: the filters, then the work hit m_BehHit in the order that lauf/Lauf.cpp states, with
//      GetGOData, GetPunkte and GetBetrag, then into m_vBehHits; likewise the other kinds of hit
//   5. DoSortLines
//   6. hand the accumulator on to files, sums or plan statistics
//   7. DataSumNachlauf
//
// A `Find...` looks in the tables in memory, a `Get...` reads through to the record layer on a miss. A filter, named
// `...Ok` or `...OK`, takes a value and answers one question; it is true when its section is switched off, reports
// nothing and calls no other filter. Positions are -1 for none, pointers null. No operation throws; a row that cannot
// be read counts as absent. An accumulator is used by one thread, and there is one run in a process at a time
// (Faden.h).
//
// A debug build of the library (without NDEBUG) says so on stderr and aborts where a row is to be read without
// DataSumVorlauf, where GetBetrag comes between GetGOData and GetPunkte, and where MoveBeh fills a hit that was not
// cleared. In a release build the first of these is undefined, the others give wrong hits.
//
// The valuation works on the fields of a hit, wherever they come from. A private service has rate and factor and is
// rounded once, before the quantity; a service of an insurer has points and a point value and is not rounded:
//
// ```
// CStatAccu accu;
// CBehHitLine hit;
// hit.GOART = 'p';
// hit.EINFACHSATZ = CDBetrag("e1005"); // 10.05 euro at factor 1
// hit.FAKTOR = "23000";                // factor 2.3
// hit.ANZAHL = 200;                    // two of them
// accu.GetBetrag(hit, nullptr);
// assert(hit.BETRAG == CDBetrag("e4624"));
//
// hit.Clear();
// hit.GOART = 'k';
// hit.PUNKTE = 3300;                   // 33 points
// hit.PUNKTWERT = CDPw("e12285");      // 1.2285 euro each
// hit.ANZAHL = 100;
// accu.GetBetrag(hit, nullptr);
// assert(hit.BETRAG == CDBetrag("e4054.05"));
// ```
//
// A section of the selection that is off lets everybody pass, and one that is on only who is in it:
//
// ```
// assert(accu.PatAlterOk("19500630"));
// accu.SetAlter("0", "17");
// accu.SetChAlter(true);
// assert(!accu.PatAlterOk("19500630"));
// ```
//
// A run that cannot start says why by a code, shows it and ends; here the practice has not a single row:
//
// ```
// const int iCode = accu.DataSumVorlauf(true);
// if (iCode != 0) accu.DisplayGlobalDataError(iCode);
// accu.DataSumNachlauf();
// assert(iCode == 14);                  // no list of statistic kinds in the select pool
// ```
#pragma once

#include "orvostatbs/accu/IndexVektor.h"
#include "orvostatbs/accu/Letztposition.h"
#include "orvostatbs/accu/Selektion.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/NebenHits.h"
#include "orvostatbs/records/Pat.h"
#include "orvostatbs/records/Plan.h"
#include "orvostatbs/records/Schluesseltext.h"
#include "orvostatbs/records/Stammdaten.h"

#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvostat {

class CBewertungsspur;

// The hash of the patient index: FNV's over every character of a short number, over about ten of a long one, at a
// stride. A caller who asks for the same patient again and again should keep his position.
struct SPatientenHash {
    [[nodiscard]] std::size_t operator()(const CString & sPatNr) const;
};

// For maps whose keys are numbers of patients: trailing blanks do not count.
struct SSchluesselHash {
    [[nodiscard]] std::size_t operator()(const CString & s) const { return Schluesseltext(s).Hash(); }
};
struct SSchluesselGleich {
    [[nodiscard]] bool operator()(const CString & a, const CString & b) const {
        return GleicherSchluessel(a, b);
    }
};

// The block of the billing library's specialities; its layout is that library's. The library "kelabr" has two functions
// for it:
//
//   int InitialisiereFachbereiche(SFachbereiche *, CTPraxis *, CTMandantAdr *, std::vector<CString> *)
//   int PunkteOrdination(SFachbereiche *, CTVDesc *)
//
// The first is called for each practice owner that is read, with the practice's first row, the owner and an empty
// vector to work in; its result is not used. The second gives the points (hundredths) of the visit fee for the special
// insurer type and the state of membership in the record. By convention the library may use 5284 bytes of the block.
struct SFachbereiche {
    std::array<CString, 99> asFachbereiche;
    std::array<CString, 562> asWeitere;
};
static_assert(sizeof(SFachbereiche) >= 5284);

// What belongs to one accumulator and not to its copies: a copy starts with null, assignment keeps the target's own.
struct SEigenes {
    SEigenes() = default;
    SEigenes(const SEigenes &) noexcept {}
    SEigenes & operator=(const SEigenes &) noexcept { return *this; }

    // The record sets of a run, null outside of one.
    CTPat * m_pRPat = nullptr;
    CTAdr * m_pRAdr = nullptr;
    CTBeh * m_pRBeh = nullptr;
    CTVDesc * m_pRVDesc = nullptr;
    CTOrvoKas * m_pROrvoKas = nullptr;
    CTABefund * m_pRABefund = nullptr;
    // Null without the billing library; freed by the accumulator.
    SFachbereiche * m_pFachbereiche = nullptr;
    // Where the valuation notes what it did; null, the start, costs nothing. The caller's.
    CBewertungsspur * m_pSpur = nullptr;
};

// Positions with which a caller steps through tables; never read here. A copy starts at -1, assignment copies.
struct SLaufpositionen {
    SLaufpositionen() = default;
    SLaufpositionen(const SLaufpositionen &) noexcept {}
    SLaufpositionen & operator=(const SLaufpositionen &) = default;

    std::int32_t m_iGlabPos = -1;
    std::int32_t m_iErrPos = -1;
    std::int32_t m_iGipsPos = -1;
    std::int32_t m_iRechPos = -1;
};

class CStatAccu : public CSelektion, public SEigenes, public SLaufpositionen {
public:
    // The window under which prompts appear; may be null, not owned.
    explicit CStatAccu(HWND hParent = nullptr);
    // Frees what is owned, except the record sets of a run: DataSumNachlauf does that.
    virtual ~CStatAccu();
    // Copies selection, tables, maps and work records; for pointers and cursors see their bases.
    CStatAccu(const CStatAccu & accu) = default;
    CStatAccu & operator=(const CStatAccu & accu) = default;

    // ---- the life of a run (StatAccu.cpp)

    // Starts a run: record sets, global data, empty tables; the changed points of services (CTGO) are read anew. 0, or
    // a code of GetGlobalData with the tables as they were. Twice without DataSumNachlauf leaves the first record sets
    // unfreed. The flag has no effect.
    int DataSumVorlauf(bool bNeu);
    // Empties what a run collects and lists the selected treaters anew, as a DataSumVorlauf that succeeds does.
    void LeereTabellen();
    // Ends a run, also one that did not start: frees the record sets.
    void DataSumNachlauf();
    // The record sets of a run; freeing them twice does nothing.
    void GetMemForTables();
    void DeleteMemForTables();
    // Reads the regional factor, the point values and the select-pool tables that are still empty. 0, or 14 to 19 for
    // the first table that has no entries or could not be read, which is then empty. The flag has no effect.
    int GetGlobalData(bool bNeu);
    // Shows the message of a code: 1, 2, 10 to 19; nothing for any other.
    void DisplayGlobalDataError(int iCode);

    // Enters a problem of the hit into m_vBehErrors, once, as CBehErrors compares; m_BehError holds it in any case.
    void AddError(const CBehHitLine & hit, int iFehler);
    // Position of the first equal one in m_vBehErrors.
    int FindError(const CBehErrors & fehler);

    // Billed and entered services as IsAbgerechnet and IsErfasst admit them; FAKT1 or FAKT2 means billed.
    [[nodiscard]] bool IsLstStatusOK(const CBehHitLine & hit);
    // True for all kinds but "7"; those pass by sub-kind and the bits of TecGoSubArten.
    [[nodiscard]] bool IsTecGoSubArtOK(const CBehHitLine & hit);

    void ClearP(); // patients
    void ClearV(); // insurance periods
    // The selection to its start, with the bookkeeping of a run.
    void Clear_Selekt();

    // Sorts m_vBehHits by Sortierung: "1" name, "2" patient, date, visit, entry; any other leaves the order.
    void DoSortLines();

    // Moves the work hit to the practice that treater sLeb bills in, if that practice carries a code for the hit's
    // kind of billing. A private hit stays.
    void ChangeHitMdId(const CString & sLeb);
    // ChangeHitMdId for the work hit's treater (0) or for the treater of patient m_vPat[iPat] (1).
    void Braitretru(int iModus, int iPat);
    // Treatment duration of all patients of m_vPat together.
    [[nodiscard]] int GesamtBehDauer();

    // Physicians' mode: on only in an installation with physician fees and for an owner of kind "b" or "d". A change
    // empties m_vGO.
    void SetArzt(const CString & sMdId);
    // The full name behind an address number; empty for none.
    [[nodiscard]] CString ReadArzt(const CString & sAdrNr);

    // ---- master data (Stammdaten.cpp)

    // Reads the selected practice owner, or all, into m_vMd; true if there are any. With both flags the branches of
    // the practice other than the current one (dbMdId) are left out.
    bool GetAllMd(bool bFilter, bool bNurEigenes);
    // The same from an open record set, sorted by number; the size of m_vMd. Without any site in the practice 0, and
    // m_vMd stays.
    int FillMdStruct(CTMandantAdr & rMd, bool bFilter, bool bNurEigenes);
    // Position in m_vMd of exactly that number.
    int FindMd(const CString & sMdId);

    // Reads the treaters into m_vLeb and m_vLebAlle; true if m_vLeb has any. Deleted ones come along where the
    // parameter pool says so ("showdelleb"). Where the read fails, the tables stay.
    bool GetAllLeb(bool bFilter, bool bAlle);
    // The same from an open record set; the size of m_vLeb. A treater outside of the selection goes to m_vLebAlle
    // only, without name. With bFilter and without bAlle the selected ones who are not the current person (dbPId) are
    // left out of both. Where treaters are bound to sites (dbPraxisLeb), those of another site go to m_vLebAlle only.
    // m_vLeb is sorted by number, m_vLebAlle stands in read order.
    int FillLebStruct(CTLeb & rLeb, bool bFilter, bool bAlle);
    // In m_vLeb.
    int FindLeb(const CString & sLeb) const;
    // The treaters of m_vLeb that bill in the selected practice, as a list for queries; sets m_bAlleLebsPassen.
    CString Lebs2String();

    // Reads a person with address into the record set; false if there is none.
    static bool GetPersAdr(CTPersonalAdr & rPersonal, const CString & sPers);
    // Adds the addresses of all persons of the practice, by person.
    static void GetPersAdrCache(std::map<CString, CTAdr_Fields> & mapAdr);

    // Appends all groups, also those that are there already; true if m_vPwGrp has any.
    bool GetAllPwGrp();
    // Position in m_vPwGrp of the first group of that name, upper and lower case alike.
    int FindPwGrp(const CString & sGrp);
    // Appends all point values to m_mapPw, each group's newest first; true if there are any.
    bool GetAllPw();
    // The newest value of group (upper and lower case alike) and kind that is valid on the date, null for none; the
    // pointer holds until the next GetAllPw.
    const CPw * FindPw(const CString & sGrp, CChar cLArt, const CString & sDatum);

    // Fee rows are read when they are first asked for.
    bool GetAllGO() { return true; }
    // Appends the rows from the current one to the end of the record set; the size of m_vGO. Of rows that follow each
    // other with one number and kind the first one read stands.
    int FillGOStruct(CTGO * pGO);
    // Position of the first fee row of that number (or short code), upper and lower case alike, and kind; a row that is
    // not in m_vGO is read. -1 where the schedule has none, and the next call asks it again.
    int FindGO(const CString & sLst, CChar cGoArt);
    int FindGOKuerzel(const CString & sKuerzel, CChar cGoArt);
    // Reads all rows of that key into m_vGO; false where there are none, and for an empty text. Without a kind (0) the
    // rows of all kinds are read.
    bool GetGOLstFromTable(const CString & sLst, CChar cGoArt);
    bool GetGOKuerzelFromTable(const CString & sKuerzel, CChar cGoArt);

    // Appends the entries of a select pool, with bNeu to an emptied vector and with an entry "Unbekannt ..." of empty
    // key behind them. False if vDaten has no entries then, and if the pool could not be read: nothing is appended.
    bool GetSelectPoolData(const CString & sKey, std::vector<CSPData> & vDaten, bool bNeu);
    // Position of the first entry with exactly that key.
    int FindSelectPoolData(const std::vector<CSPData> & vDaten, const CString & sKey);
    // Loads m_vLstErsatz from group iNr of the parameter pool; always true. The replacement is a row's short code from
    // its third character on, the service stands in the row's value behind the first blank; a value that begins with
    // "0" is switched off.
    bool ReadParPoolData(int iNr);

    // ---- valuation (Bewertung.cpp)

    // Fee row of the hit's service; error 6 where there is none. Always true.
    bool GetGOData(CBehHitLine & hit);
    // The standard factor of the hit's fee row in ten-thousandths; empty without a row.
    CString GetStdFaktor(const CBehHitLine & hit);
    // Point value, and the points of the visit fee; error 5 for an insurer service without one. Always true.
    bool GetPunkte(CBehHitLine & hit);
    // The date of the hit's plan, YYYYMMDD, and into PUNKTWERT the point value frozen with it; both empty for a plan
    // that is missing, orthodontic or not yet fixed. For a periodontal plan under the guideline of July 2021
    // bNeuerParPlan becomes true, the date is empty and PUNKTWERT stays. A plan is read on its first hit and then
    // stands in m_vPwPlaene, also one that freezes nothing.
    CString GetPwFromPlanDatum(CBehHitLine & hit, bool & bNeuerParPlan);
    // The hit may carry a mixed point value: an insurer service ("k", "g"), no material, of a denture or periodontal
    // plan. Changes nothing.
    [[nodiscard]] bool IsMischPwFaehig(CBehHitLine & hit);
    // The amount. pAbschlag, if given, takes the regional deduction of a private service and stays for others.
    void GetBetrag(CBehHitLine & hit, CDBetrag * pAbschlag);
    // Takes the regional deduction off BETRAG (m_iLQPunktwert ten-thousandths of it remain) and gives it in abschlag,
    // unrounded. abschlag is empty and BETRAG stays for a factor of 10000, for ABRMERKMAL "<", for any GOART but "p"
    // and "q", for material and for the GOSUBART "v", "w", "y" and "z".
    void AbzglAbschlagOst(CBehHitLine & hit, CDBetrag & abschlag);
    // The regional factor as stored, ten-thousandths; "10000" for none. Sets m_sKzvNr.
    CString GetLQPunktwert();
    // Reduces BETRAG to the insurer's share: of plan iPlan of vPlaene (as FindPlan gives it), or iProzent percent for
    // -1. It stays for any ABRART but "z" and "k", for a denture service without plan number or position, for an
    // orthodontic one that is no material, and for a position outside of the vector.
    void NurDenKassenanteil(std::vector<CPlan> & vPlaene, CBehHitLine & hit, int iPlan, int iProzent);
    // Replaces the service by its substitute; true if there is one, also when it has no fee row.
    bool GetLstErsatz(CBehHitLine & hit);
    // The first substitute that m_vLstErsatz has for the short code, upper and lower case alike; empty for none.
    CString FindInLstErsatz(const CString & sKuerzel);
    // The finding of an examination; false where the service asks for none or there is none.
    bool GetBefund(CBehHitLine & hit);
    // What a service group is called in the select pools, for cArt "T" in that of the technicians first; empty for an
    // unknown one.
    [[nodiscard]] CString GetLstGrpName(CChar cArt, CChar cGrp);

    // ---- patients (Patientenfilter.cpp)

    // The patient's row exists; m_pRPat then stands on it.
    bool ReadPat(const CString & sPatNr);
    // Position in m_vPat, from the index and, without bNurIndex, also from the table itself: patients that were read
    // from a statistic file stand only there.
    int FindPat(const CString & sPatNr, bool bNurIndex);
    // The same, reading the patient with his insurance periods since 1980 on first use. A patient without row or
    // address is -1 and is read again when asked for again. The flag has no effect.
    int GetPat(const CString & sPatNr, bool bNeu);

    // A filter takes the patient's value of one section of the selection. What an empty selection lets pass, with the
    // section switched on:
    //   everybody, and the switch does not count: SELEKTION, RISIKOANAMNESE
    //   patients without a value: PATANREDE, PATSTRASSE, PATPLZ and PATORT (both empty), LASTBEHDATUM (both bounds)
    //   patients with any value: UEBERWARZT, HAUSARZT
    //   everybody: age (both bounds), MFRDIG
    // Texts are compared in upper case, doctors exactly. An empty value fails where the selection is not empty; a last
    // treatment date, which is in a range, where the range has a start.
    [[nodiscard]] bool PatSelektOk(const CString & sSelektion);
    [[nodiscard]] bool PatAnamneseOk(const CString & sAnamnese);
    [[nodiscard]] bool PatAnredeOk(const CString & sAnrede);
    // Of postcode and town the selected ones count.
    [[nodiscard]] bool PatPlzOrtOk(const CString & sPlz, const CString & sOrt);
    [[nodiscard]] bool PatStrasseOk(const CString & sStrasse);
    // From LetzterBesuchVon to LetzterBesuchBis, both included; an empty LetzterBesuchBis is no open end.
    [[nodiscard]] bool LastBehDatumOk(const CString & sDatum);
    [[nodiscard]] bool UeberwArztOk(const CString & sArzt);
    [[nodiscard]] bool HausArztOk(const CString & sArzt);
    // A birthday, month and day, from GeburtstagVon (1 January where empty) to GeburtstagBis; everybody where
    // GeburtstagBis is empty, nobody where the range would run over the year's end. Has no switch.
    [[nodiscard]] bool PatGebDatOk(const CString & sDatum);
    // Completed years today, from AlterVon to AlterBis, both included; 0 and 200 where one is empty.
    [[nodiscard]] bool PatAlterOk(const CString & sDatum);
    // The value stands somewhere in the selected ones. Switched on by ChKvk.
    [[nodiscard]] bool MFR_Ok(const CString & sMfrDig);
    // A number other than 0. Switched on by KvkRsa.
    [[nodiscard]] bool RSA_Ok(const CString & sRsa);
    // Replaces vFragen by the names of the selection, trimmed and in capitals.
    void GetFragebogenVec(std::vector<CString> & vFragen);

    // The patient has no recall: none on, no interval, none in the past. Has no switch.
    [[nodiscard]] bool PatRecallIsEmpty(CPat pat);
    // The patient has the recall of the selection: of kind RecallArt ("*" for any of the kinds 0 to 39, empty for
    // 0), with that interval digit, the last one before RecallLast. With nothing selected: no recall at all.
    [[nodiscard]] bool PatRecallOk(CTPat * pPat);
    [[nodiscard]] bool PatRecallOk(CPat pat);
    // The same for one kind, whatever switch and RecallArt say. sArten and sIntervalle have a digit for each kind.
    [[nodiscard]] bool PatRecallOk(CTPat * pPat, int iArt);
    [[nodiscard]] bool PatRecallOk(CPat pat, int iArt);
    [[nodiscard]] bool PatRecallOk(const CString & sPatNr, const CString & sArten,
                                   const CString & sIntervalle, int iArt);
    // The patient has a treatment of the run's treaters in the run's period, on which pBeh then stands; has none in
    // the section's own. The third text has no effect.
    [[nodiscard]] bool PatLastLstOK(CTBeh * pBeh, const CString & sPatNr, const CString & sLst);
    [[nodiscard]] bool PatOhneLstOK(CTBeh * pBeh, const CString & sPatNr, const CString & sLst);

    // ---- insurance (Versicherung.cpp); between DataSumVorlauf and DataSumNachlauf only, as far as rows are read

    // Adds the patient's periods that are valid on the date or later, newest first, with their insurers' rows. A
    // period without insurer row is left out; false if none came in. A second call adds them again.
    bool GetVDesc(const CString & sPatNr, const CString & sDatum);
    // Adds the period that is valid on the date, whatever its insurer; null if there is none. This and the next two
    // point into the patient's periods; valid until one is added or ClearV.
    CVDesc * GetActVDesc(const CString & sPatNr, const CString & sDatum);
    CVDesc * FindVDesc(const CString & sPatNr, const CString & sVDescNr);
    // The period of the day, today for an empty date: a statutory one before a private, one without special insurer
    // type before one with, then the first in the table.
    CVDesc * FindVDescByDate(const CString & sPatNr, CString sDatum);
    // No statutory period touches the days from sVon to sBis; no period at all is private. An empty bound is that of
    // the run; if both are empty there too, today.
    [[nodiscard]] bool IsPrivatPatient(const CString & sPatNr, CString sVon, CString sBis);
    // The card section for the periods in memory. With KvkFehlt: a card is missing, that is, none covers the
    // section's days, and pBeh finds a treatment in them that needs one. Otherwise: a proof of the selected kinds
    // was read in or began in them.
    [[nodiscard]] bool KvkVorgabenOk(CTBeh * pBeh, const CString & sPatNr);
    // The proof is of a selected kind; any is if none is selected.
    [[nodiscard]] bool CheckKvkVorgaben(const CVDesc & vdesc);
    // Puts m_pROrvoKas on the insurer's newest row, the older ones following with Next: 0, or 1 for none.
    int ReadKas(const CString & sKuerzel);
    // Position in m_vKas of the insurer's first row that is valid on the date, in upper and lower case alike; -1 for
    // an insurer not met so far, -2 for one that has no row for the date.
    int FindKas(const CString & sKuerzel, const CString & sDatum);
    // The insurer is in m_vKas with a row for the date; an insurer not met so far is read, and his oldest row is
    // valid from the start. The third text has no effect.
    bool GetKasFromVDesc(const CString & sKuerzel, const CString & sDatum, const CString & sBis);
    // Fills m_vKas anew with the insurers of the patient's periods, which it sorts by insurer, each back to its row
    // valid on AbDatum. Always true.
    bool GetKasFromAllVDesc(const CString & sPatNr);

    // ---- plans and bills (PlanUndRechnung.cpp)

    // The gate for denture, orthodontic and periodontal hits: true if the hit may be counted. vPlaene is the caller's
    // memory of plans, to which a plan is added when it is first met, also one that is refused; iPos becomes the
    // plan's position in it, or -1 where no plan is asked for and where one is refused for the first time. bOhne22a
    // refuses periodontal plans of the shortened procedure, bParMarken and bParBeva give a hit of kind "p" a finer
    // kind. A missing plan number or row is entered as an error of the work hit, once.
    bool OnlyForZEorKFOorPAROk(CTPlan * pPlan, std::vector<CPlan> & vPlaene, CBehHitLine & hit, bool bOhne22a,
                               bool bParMarken, bool bParBeva, CTBeh * pBeh, int & iPos);
    // The state of the row in pPlan (not null): a denture plan that is billed, one with additional costs, a private
    // one; an orthodontic plan that is billed, any orthodontic plan.
    [[nodiscard]] bool IsZEPlanOK(CTPlan * pPlan);
    [[nodiscard]] bool IsMehrkostenPlanOK(CTPlan * pPlan);
    [[nodiscard]] bool IsZEPrivatPlanOK(CTPlan * pPlan);
    [[nodiscard]] bool IsKFOPlanOK(CTPlan * pPlan);
    [[nodiscard]] bool IsKFOPlan(CTPlan * pPlan);
    // Position of the hit's plan, the last one if there are several. Numbers compare without trailing blanks, here and
    // for bills. The vector may be changed, moved and replaced between the calls in any way but one: an entry that is
    // there keeps its two numbers.
    [[nodiscard]] int FindPlan(const std::vector<CPlan> & vPlaene, const CBehHitLine & hit);
    // Pointers into the patient's bills, valid until one is added; null for none. FindBill enters an empty list for a
    // patient not met so far. GetBill reads a bill that is not in memory; a number of blanks only is nobody's and no
    // bill. A bill that is there keeps its number.
    CBill * FindBill(const CString & sPatNr, const CString & sPatBill);
    CBill * GetBill(const CString & sPatNr, const CString & sPatBill);
    // The owner is the selected one or, where none is selected, one of m_vMd.
    [[nodiscard]] bool IsFuerMandant(const CString & sMdId);
    [[nodiscard]] bool IsFuerMandant(const CBill & bill);

    // ---- record sets

    // Beside those of SEigenes, these live as long as the object.
    CTGO m_rGO;
    CTGoCheck m_rGoCheck;
    CTBill m_rBill;
    CTHistRecall m_rHistRecall;

    // ---- plain fields

    HWND m_pParent = nullptr;
    bool m_bAlleLebsPassen = false; // by Lebs2String: every treater of m_vLeb bills in the selected practice
    CString m_sLebsString;          // its list, as the run's start has made it
    std::int32_t m_lAnzHits = 0;    // the caller's
    std::int32_t m_iLQPunktwert = 10000; // ten-thousandths; 10000 is none
    CString m_sKzvNr;                    // of the practice's association, by GetLQPunktwert

    // ---- tables

    // Filled by the operations above, or by the caller's run (the ...Hits); those that nothing here names are the
    // caller's. Those with an index are vectors in all they do. Their one restriction: a reference to an element that
    // is held across a search must not change the element's key, which is named above each; see IndexVektor.h.
    std::vector<CMdStruct> m_vMd;
    std::vector<CLebStruct> m_vLeb;
    std::vector<CLebStruct> m_vLebAlle;
    // Key: m_sLst, m_sKuerzel, m_cGoArt; searched by FindGO and FindGOKuerzel.
    CIndexVektor<CGOStruct> m_vGO;
    std::vector<CPat> m_vPat;
    // Key: KASKUERZEL; searched by FindKas and what calls it.
    CIndexVektor<CKas> m_vKas;
    std::vector<CPwGrp> m_vPwGrp;
    std::vector<std::array<CString, 30>> m_vAuxLines;
    std::vector<CBehHitLine> m_vBehHits;
    std::vector<CGlabHitLine> m_vGlabHits;
    std::vector<CGlabFaktHitLine> m_vGlabFaktHits;
    // Key: what == compares; searched by FindError and AddError.
    CIndexVektor<CBehErrors> m_vBehErrors;
    std::vector<CGipsHitLine> m_vGipsHits;
    std::vector<CRechHitLine> m_vRechHits;
    std::vector<CVerordnungHitLine> m_vVerordnungHits;
    std::vector<CString> m_vUewStrings;
    std::vector<CPlan> m_vMischPwPlaene;
    std::vector<CPlan> m_vPwPlaene;
    std::vector<std::pair<CString, CString>> m_vAuxPairs;
    std::vector<CSPData> m_vSpGoStat, m_vSpTechLst, m_vSpStatistik, m_vSpMedStatistik, m_vSpKassenArt,
        m_vSpKassenGrp, m_vSpHvm;
    std::vector<std::pair<CString, CString>> m_vLstErsatz; // short code, its replacement

    std::unordered_map<CString, int, SPatientenHash> m_mapPat;   // position in m_vPat
    std::unordered_map<CString, std::vector<CVDesc>> m_mapVDesc; // by patient
    // By patient, trailing blanks of his number apart.
    std::unordered_map<CString, std::vector<CBill>, SSchluesselHash, SSchluesselGleich> m_mapBill;
    std::unordered_map<CString, std::vector<CPw>> m_mapPw; // by lower-case group, newest first

    // ---- work records, filled hit by hit

    CBehHitLine m_BehHit;
    CGlabHitLine m_GlabHit;
    CGlabFaktHitLine m_GlabFaktHit;
    std::array<CString, 30> m_AuxLine;
    CBehErrors m_BehError;
    CGipsHitLine m_GipsHit;
    CRechHitLine m_RechHit;

private:
    using SGoSchluessel = std::pair<CString, char>;
    struct SGoHash {
        std::size_t operator()(const SGoSchluessel & s) const {
            return s.first.Hash() * 31 + static_cast<unsigned char>(s.second);
        }
    };

    using CTexte = std::pair<CString, CString>;
    struct STexteHash {
        std::size_t operator()(const CTexte & s) const { return s.first.Hash() * 31 + s.second.Hash(); }
    };

    struct SFehlerHash {
        std::size_t operator()(const CBehErrors & fehler) const;
    };

    bool LiesGO(int iKey, const CString & sWert, CChar cGoArt);
    bool RecallOk(const CString & sPatNr, const CString & sArten, const CString & sIntervalle);
    bool NimmKasse();
    void NimmKassenzeilen(const CString & sKuerzel);
    bool KarteFehlt(CTBeh * pBeh, const CString & sPatNr, const std::vector<CVDesc> & vVDesc);
    bool IstPlanstandOk(CTPlan * pPlan, char cAbrArt, bool bOhne22a);
    void PunkteOrdination(CBehHitLine & hit);
    void FragePwGruppe(const CString & sGrp);
    bool PunktwertAusTafel(CBehHitLine & hit, const CString & sPlanDatum);
    void PunkteAusMischwert(CBehHitLine & hit);
    void WaehlePunkte(CBehHitLine & hit);
    void BetragGespeichert(CBehHitLine & hit);
    void BetragPrivat(CBehHitLine & hit, CDBetrag * pAbschlag);
    void BetragPunkte(CBehHitLine & hit);

    CString m_sPwGruppe; // that FragePwGruppe has seen last, when m_mapPw had m_iPwGruppen groups
    std::size_t m_iPwGruppen = 0;
    CErstposition<CGOStruct, SGoSchluessel, SGoHash> m_indexGoLst;
    CErstposition<CGOStruct, SGoSchluessel, SGoHash> m_indexGoKuerzel;
    CErstposition<CBehErrors, CBehErrors, SFehlerHash> m_indexFehler;
    CTextpositionen<CKas, &CKas::KASKUERZEL> m_indexKas;
    CLetztposition<CPlan, CTexte, STexteHash> m_indexPlan;
    CLetztposition<CBill, CString> m_indexBill;
};

} // namespace orvostat
