// Master data in the form that a statistic needs: practice owner, treater, insurance period, bill, insurer, point
// value, entry of the select pool.
//
// Each record holds what one row of a table says and lives in the accumulator's tables. The Move operations take a
// row that has been read (never null, unchanged, not kept) and set exactly the fields that their comments name;
// Clear brings a record back to its fresh state: texts empty, numbers and letters 0, flags false, amounts empty.
// Dates are YYYYMMDD. All records are plain values.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"
#include "orvostatbs/records/Indexmarke.h"

#include <cstdint>

namespace orvostat {

class CTBill;
class CTLeb;
class CTMandantAdr;
class CTOrvoKas;
class CTPunktWert;
class CTPwGroup;
class CTVDesc;
struct CTAdr_Fields;
struct SSelectPool;

// A practice owner (Mandant).
class CMdStruct {
public:
    CString m_sMdId;
    CString m_sMdName;
    CString m_sMdAdr4; // telephone
    CString m_sMdAb;   // the first day that counts; empty: all days count
    CString m_sMdInfo;
    CString m_sMdCodes;    // three practice codes of two characters: for kind "e", kind "c", all others
    CString m_sMdAdr3;     // town
    CString m_sMdAdr4b;    // as m_sMdAdr4
    CString m_sMdAdr1;     // street
    CString m_sMdAdr2;     // postcode
    CString m_sMdVollName; // first name, blank, surname

    void Clear();
    // Takes all fields. m_sMdAb is empty unless the row says that its first day counts; a day that counts but is
    // not given is 19800101.
    void MoveMd(CTMandantAdr * pMd);
    [[nodiscard]] bool operator<(const CMdStruct & md) const { return m_sMdId < md.m_sMdId; }
};

// A treater (Leistungserbringer).
class CLebStruct {
public:
    CString m_sLeb;
    CString m_sLebAnr; // second line of GetLebLine
    CString m_sPersId;
    CString m_sLebName;
    CString m_sMdKasse;              // owner for insurer billing
    CString m_sMdPrivat;             // owner for private billing
    CString m_sProvision;            // five characters per commission group
    std::int32_t m_iAbschlagGOZ = 0; // deduction for kinds "p", "q", "a" in hundredths of a percent
    std::int32_t m_iAbschlagU = 0;   // the same for kind "u"
    bool m_bLebKz = false;
    CString m_sLebInfo;

    void Clear();
    // Takes all fields but m_sLebName.
    void MoveLeb(const CTLeb * pLeb);
    // Sets m_sLebName: title, first name, addition and surname with a blank between what is there.
    void MoveAdr(CTAdr_Fields * pAdr);
    // The commission of a group counted from 1, as stored: shorter or empty where the table ends before it.
    [[nodiscard]] CString GetProvisionForGrp(int iGrp) const;
    // "12-Dr. Eva Gold / Oberärztin"; without m_sLebAnr the part from the blank before "/" on is missing.
    [[nodiscard]] CString GetLebLine() const;
    [[nodiscard]] bool operator<(const CLebStruct & leb) const { return m_sLeb < leb.m_sLeb; }
};

// An insurance period of a patient.
class CVDesc {
public:
    CString PATNR;
    CString m_sVDescNr;
    CString VDABDATUM;
    CString VDBISDATUM;
    CString EINLESEDATUM;
    CString KASKUERZEL;
    CString VNACHWEIS; // how the insurance was proved; "E", "O": electronically, statutory and private
    char m_cSonderKsArt = 0;
    CString m_sVDescFeld;
    CString MFRDIG; // state of membership: "1" member, "3" family, "5" pensioner
    CString RSA;
    CString WSO;     // region mark as stored
    CString WSO_ERG; // "9" east, else "1"
    CString m_sVDescExtra;
    bool m_bKostenerstattung = false;
    CString GEBUEHRENBEFREITBIS;
    CString BPG; // special person group

    void Clear();
    // Takes all fields. BPG comes from the health card's data where the row has a card; without a card it is the
    // region mark "9" of a statutory proof ("j", "n") from 2015 on. In all other cases BPG stays as it is.
    void MoveVDesc(CTVDesc * pVDesc);
    // Same patient, insurer, state, region mark and quarter of the first day.
    [[nodiscard]] bool operator==(const CTVDesc * pVDesc) const;
    [[nodiscard]] bool IsPrivat() const;
    [[nodiscard]] bool HasSonderKsArt() const { return m_cSonderKsArt != 0 && m_cSonderKsArt != 'a'; }
};

// The bill that a treatment belongs to. Of one that a search has seen the number stays.
class CBill {
public:
    CString PATNR;
    CString PATBILL;
    CString PRAXISNR;
    // Billing kind: c, z denture, k orthodontics, b jaw fracture, p periodontics, i, e, r, s others.
    char ABRART = 0;
    bool KASSENABR = false;
    bool m_bAbrArtE = false;
    CIndexMarke m_marke; // the search's own
    CString m_sKennung1; // reference for insurer billing
    CString m_sFakt2;
    CString m_sFakt2Alt;
    CString m_sKKFakt;   // the insurer's invoice
    CString m_sKennung2; // reference for private billing
    CString m_sFakt1;
    CString m_sFakt1Alt;
    CString PLANNR;
    CString m_sBillInfo1;
    CString m_sBillInfo2;

    void Clear();
    // Takes all fields. The three letters come from the first character of the stored kind, case-sensitive.
    void MoveBill(CTBill * pBill);
    // An invoice has been written.
    [[nodiscard]] bool IsAbgerechnet() const;
    // An old marker, from "9999" on in the order of texts, stands for an invoice.
    [[nodiscard]] bool IsAltAbrechnung() const;
    // The text is such an old marker.
    [[nodiscard]] static bool IstAltMarke(const CString & sMarke) { return sMarke >= "9999"; }
};

// An insurer as it was from a day on.
class CKas {
public:
    CString KASKUERZEL;
    CString m_sKasFeld0;
    CString m_sGueltigAb;
    bool m_bKasKz = false;
    CString KASSENPWGRP;
    CString m_sKasIk;
    CString BKVKASNR; // twelve characters in the modern form: group digit, association, number
    CString KASSENART;
    CString m_sKasFeld1;
    CString m_sKasFeld2;
    CString m_sKasSort; // sort key
    CString KASSTATISTIKART;
    CString KASMEDSTATISTIKART;
    std::int32_t KASSENGRP = 0;   // character code of the group digit
    std::int32_t m_iKasFlag2 = 0; // character code, 0 for none
    bool FREMDKASSE = false;
    char m_cKasKz = 0;

    void Clear();
    // Takes all fields. sKzvNr is the association of the practice, which makes an insurer of another region a
    // foreign one. Group and foreign mark come from a twelve-character BKVKASNR, otherwise from the statistic kind.
    void MoveKas(CTOrvoKas * pKas, CString sKzvNr);
    // Short code, first day, mark, point-value group, BKVKASNR, kind, both free fields and both statistic kinds are
    // those of the row.
    [[nodiscard]] bool operator==(const CTOrvoKas * pKas) const;
    [[nodiscard]] bool operator<(const CKas & kas) const { return m_sKasSort < kas.m_sKasSort; }
};

// A point value: holds for its group and service kind from m_sPwAb until a later one.
class CPw {
public:
    CString m_sPwGrp;
    char m_cPwLArt = 0;
    CString m_sPwAb;
    CDPw m_PwWest;
    CDPw m_PwOst;
    CString m_sPwInfo;

    void Clear();
    // Takes all fields.
    void MovePw(CTPunktWert * pPw);
};

// The name of a group of point values.
class CPwGrp {
public:
    CString m_sPwGrp;
    CString m_sPwGrpName;

    void Clear();
    // Takes all fields.
    void MovePw(CTPwGroup * pGrp);
};

// An entry of a select pool.
class CSPData {
public:
    CString m_sKey;
    CString m_sText;
    CString m_sExtra;

    void Clear();
    // Takes all fields.
    void MoveSP(const SSelectPool * pSP);
};

} // namespace orvostat
