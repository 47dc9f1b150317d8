// The hit line: one treatment of one patient with everything that a statistic needs to know of it.
//
// A run walks the treatments, and for each it fills one work hit: the entry itself, its bill, the insurance period,
// the insurer, the fee row, the point value, the finding and the money end in one flat record. Finished hits are
// copied into the accumulator's vector, sorted, written as statistic lines and summed. All fields are public;
// screens read and write them.
//
// The moves have an order, since each reads what earlier ones have set; CLauf::Baue in lauf/Lauf.cpp states it.
//
// Units: quantities and points in hundredths, factors in ten-thousandths, dates YYYYMMDD, letters 0 for none.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/Suche.h"

#include <cstdint>
#include <map>
#include <vector>

namespace orvostat {

class CBefunde;
class CBill;
class CGOStruct;
class CKas;
class CLebStruct;
class CPw;
class CTABefund;
class CTBeh;
class CTFakt;
class CTGLBloc;
class CTGLBlocEntry;
class CTLBlock;
class CTLBlockEntry;
class CTRoeBefund;
class CVDesc;

class CBehHitLine {
public:
    // Every initial value is the value after Clear.

    // ---- the entry
    CString PRAXISNR; // practice owner
    CString BEHANDLERNR;
    CString PATNR;
    CString PATNAME; // name and first name in capitals
    CString DATUM;
    CString LSTNR;      // service number, the key into the fee schedule
    CString LSTKUERZEL; // its short code
    CString TEETH;
    CString EINHEIT;         // unit, one character
    std::int32_t ANZAHL = 0; // quantity, 100 is one
    CString LSTIN;           // service number as entered
    CString TEXT;
    CString FAKTOR; // the entry's own, or the fee row's
    CDBetrag BETRAG;
    CString PATBILL;
    char ABRART = 0;         // billing kind
    bool KASSENABR = true;   // billed through the insurer
    bool m_bAbrArtE = false; // of the bill, for callers
    char GOART = 0;          // kind of fee schedule
    char GOSUBART = 0;
    char m_cBehKz = 0; // "0": a private service that stays on the insurer's bill
    CString DRUCKBILD; // print image code
    CString LAGE;
    CString UHRZEIT;
    char DTAGRUND = 0;
    char TEXTART = 0; // 0 without text
    CString ICDCODE;
    char ICDNOTATIONSKZ = 0;
    CString ERFASSER;
    char SITZUNG = ' ';
    CString PLANNR;
    CDBetrag EINFACHSATZ;    // fee at factor 1 on the day
    CDBetrag m_EinfachsatzV; // the same for m_cSonderKsArt "V"
    CString FAKT1;           // invoice references
    CString FAKT2;
    CString m_sBehInfo;
    CString LFDBEFENTRY; // running number of the entry's finding
    CString LFDLBLOCK;   // of its laboratory block
    CString BEFUND;      // one character per tooth position, at least 33 after MoveBefund
    CString ZAHNSTEIN;   // "1" or "0"
    CString MUNDKRANKHEIT;
    CString LFDBEHEINTRAG;
    char ABRMERKMAL = 0;
    CString ENTFERNUNG;
    CString m_sBillInfo1;
    CString m_sBillInfo2;

    // ---- insurance
    CString KASKUERZEL;
    CString m_sAbrKennung;
    CString VDABDATUM;
    CString VDBISDATUM;
    CString MFRDIG;
    CString WSO;     // region mark, "1" where the period has none
    CString WSO_ERG; // resolved: "9" east, "1" otherwise
    CString RSA;
    CString VNACHWEIS; // proof; "p", "P", "O" mean private
    CString EINLESEDATUM;
    bool ISPRIVATPATIENT = false; // set by callers
    char m_cSonderKsArt = 0;
    CString BPG;

    // ---- points, point value, statistic kinds
    std::int32_t PUNKTE = 0;
    std::int32_t m_iPunkte2 = 0;
    std::int32_t m_iPunkte3 = 0;
    std::int32_t m_iPunkte4 = 0;
    CDPw PUNKTWERT;
    char PWLART = 0; // service kind in the table of point values
    CString KASSENPWGRP;
    char GOSTATISTIKART = 0;
    CString KASSTATISTIKART;
    CString KASMEDSTATISTIKART;
    CString KASSENART;
    bool FREMDKASSE = false;
    char KASSENGRP = 0;
    char m_cKasKz = 0;
    std::int32_t m_iLebAbschlag = 0; // hundredths of a percent
    std::int32_t m_iHitFrei1 = 0;    // this and the other ...Frei... fields are the callers'
    CString m_sHitFrei1;
    CString m_sHitFrei2;
    CDBetrag ZUSCHLAG;
    std::int32_t MWSTSATZ = 0; // percent
    std::int32_t F100AEV = 0;
    std::int32_t PRUEFZEITT = 0; // audit minutes per day and per quarter
    std::int32_t PRUEFZEITQ = 0;
    char m_cGoKz = 0;
    CString m_sGoText;
    CString PROVISONSGRP;           // commission group, two characters
    std::int32_t PROVISONSWERT = 0; // its percentage
    std::int32_t m_iHitFrei2 = 0;

    // ---- laboratory, material book
    CString MATBUCHUNG;
    CString m_sGbAnzahl;
    CString DMBETRAG;
    CString GESBETRAG;
    CString ENDGEWICHT;
    CString SCHLEIFRESTE;
    CString PREISOMWST;
    CString SCHLEIFRESTEGES;
    CString BESTANDOSR;
    std::int32_t RECART = 0;
    CString LABORKUNDE;
    CString LFDGLBLOC;
    CString m_sLblNr;

    // ---- X-ray book
    CString ROEGRAV;
    CString ROEANZAHL;
    CString ROEGERAET;
    CString ROEXRAYMS;
    CString ROEXRAYCURRENT;
    CString ROEXRAYVOLTAGE;
    CString ROEBELICHTUNG;
    CString ROEINDIKATION;
    CString ROEBEMERKUNG;
    CString ROELFDNR;
    CString ROELASTDATUM;
    CString ROELASTREGIO;
    CString ROELASTPASSDRUCK;

    // ---- the rest
    CString m_sBefundKuerzel; // two characters per tooth position; the caller's, Clear leaves it
    CString PRAXISID;
    bool ISELAB = true;
    bool ISORVOPAT = true;
    bool m_bMitEintrag = false; // these two are the watch's over the order of calls, see CStatAccu
    bool m_bOhnePunktwert = false;
    CString CHARGENNUMMER;
    std::vector<CQueryTeeth> SUCHKRITERIEN;
    std::vector<CString> m_vHitFrei1;
    std::vector<CString> m_vHitFrei2;
    std::int32_t m_iHitFrei3 = 0;
    std::int32_t m_iHitFrei4 = 0;
    CString TASCHENTIEFED; // pocket depths
    CString TASCHENTIEFEM;
    CString TASCHENTIEFEF;
    CString TASCHENTIEFEO;
    CString TASCHENTIEFED2;
    CString TASCHENTIEFEM2;
    CString GEBUEHRENBEFREITBIS;
    CString m_sAbrJJME; // billing period of the entry

    // All fields but m_sBefundKuerzel to their initial values; the vectors keep their room.
    void Clear();

    // ---- Moves: take what a record says, which stays unchanged and must not be null. Fields not named stay.

    // Of a treatment: the fields of the columns' names, the quantity split into EINHEIT and ANZAHL (0 counts as 100).
    // A text of kind exactly "c" is not taken, and TEXTART is 0 without a text.
    void MoveBeh(const CTBeh * pBeh);
    // Writes the hit's key into a treatment record, ready for GetByK1.
    void MoveLst2BehKey1(CTBeh * pBeh) const;
    // PRAXISNR by KASSENABR.
    void MoveMdId(const CString & sMdKasse, const CString & sMdPrivat);
    // PATNAME.
    void MovePatName(const CString & sName, const CString & sVorname);
    // m_iLebAbschlag, only for an ICDNOTATIONSKZ of "s", "t", "n", "v" and a private service.
    void MoveLeb(const CLebStruct & leb);
    // The bill; KASSENABR is decided with the service, see IsKasZu. Invoice references that the bill does not have
    // stay.
    void MoveBill(const CBill & bill);
    // The fields of insurance but ISPRIVATPATIENT, and GEBUEHRENBEFREITBIS; an empty WSO or WSO_ERG becomes "1".
    void MoveVDesc(const CVDesc & vdesc);
    // KASSENPWGRP, KASSTATISTIKART, KASMEDSTATISTIKART, KASSENART, KASSENGRP, FREMDKASSE and m_cKasKz.
    void MoveKas(const CKas & kas);
    // The fee row, with rates and points of DATUM. GOSTATISTIKART and PWLART depend on ABRART; an own FAKTOR stays.
    void MoveGO(const CGOStruct & go);
    // PUNKTWERT by region, for services valued by points only.
    void MovePw(const CPw & pw);
    // BEFUND, filled up with blanks to 33 places, ZAHNSTEIN and MUNDKRANKHEIT.
    void MoveBefund(CTABefund * pBefund);
    // PROVISONSWERT of the hit's commission group; stays without a group.
    void MoveProvision(const CLebStruct & leb);

    // Puts the code of finding number iBefund at position iPos of m_sBefundKuerzel, its second character behind the
    // first; an unknown number changes nothing. Befund2Kuerzel2 also puts the finding's letter, or a blank, at
    // position iPos / 2 of BEFUND. The caller gives both texts their length first: std::invalid_argument for a
    // position outside.
    void Befund2Kuerzel(CBefunde & befunde, int iBefund, int iPos);
    void Befund2Kuerzel2(CBefunde & befunde, int iBefund, int iPos);

    // "M/1": state of membership (M, F, R or nothing), "/" and region mark; empty if both are.
    [[nodiscard]] CString GetMFR_OW() const;

    // Laboratory entries of a denture plan; BETRAG is amount times quantity.
    void MoveZEKasseLBlockEntry(const CTLBlockEntry & entry);
    void MoveZEKasseGLBlocEntry(const CTGLBlocEntry & entry);
    // Heads of the own laboratory's blocks and of commercial laboratories' invoices: patient, plan, block, treater,
    // date, owner and the two laboratory flags.
    void MoveLBlock(const CTLBlock * pLBlock);
    void MoveGLBloc(const CTGLBloc * pGLBloc);
    // PATNR and DATUM.
    void MoveFakt(const CTFakt * pFakt);
    // The ROE... fields and PRAXISID.
    void MoveRoeBuch(const CTRoeBefund * pRoe);

    // ---- Tests. The answers of the record layer are kept per patient and quarter of DATUM until ClearMaps, which a
    // program calls when treatments may have changed; it forgets the last patient's name, too.
    static void ClearMaps();
    // Turns ABRART "k" into "m" where the patient has multiband treatment in the quarter.
    void TestMultiband();
    // A service outside of orthodontics, or of a quarter with the orthodontic deductions.
    [[nodiscard]] bool TestKFOAbschlaege();
    // A service outside of jaw fractures or of periodontics, or one of the services that the test is named for; with
    // bMitSach also material.
    [[nodiscard]] bool TestKBRKX(bool bMitSach) const;
    [[nodiscard]] bool TestPARP20X(bool bMitSach) const;
    // A service outside of orthodontics or of another statistic kind than "a", or an X-ray service.
    [[nodiscard]] bool TestKFORoe() const;

    // The private service that is billed through the insurer on any bill.
    [[nodiscard]] bool IsKasZu() const;
    [[nodiscard]] bool IsPrivatSachkosten() const;
    // The patient's fee for the insurer and its refund.
    [[nodiscard]] bool IsKKGebEnt() const;
    [[nodiscard]] bool IsPrivat() const;
    // Gives the fictitious services 13a to 13d a number of their own by DTAGRUND: "0" behind it for "f", "1" for "i".
    void FiktiveLeistungen();

    // The same entry: patient, treater, date, service, running numbers, plan, text, billing kind, laboratory and
    // material booking. Amounts, points and the insurer play no part.
    [[nodiscard]] bool operator==(const CBehHitLine & hit) const;

private:
    // Patient number to first day of a quarter to the answer.
    using CQuartalsCache = std::map<CString, std::map<CString, bool>>;
    using CFrage = bool(const CString & sPat, const CString & sVon, const CString & sBis);

    [[nodiscard]] bool ImQuartal(CQuartalsCache & cache, CFrage * pFrage) const;

    static CQuartalsCache s_mapMultiband;
    static CQuartalsCache s_mapKfoAbschlaege;

    // A patient's treatments stand behind each other, so the name built last is kept, and all his hits share one text.
    struct SPatName {
        CString sName, sVorname, sErgebnis;
    };
    static SPatName s_patname;
};

} // namespace orvostat
