// The tables of the practice itself: owners, treaters, insurers, pools.
#pragma once

#include "orvostatbs/host/Tabelle.h"

#include <vector>

#include "orvostatbs/host/detail/Tabellenmakros.def"

namespace orvostat {

// The practice's sites; the first row is the practice as its association knows it.
// clang-format off
#define ORVO_SPALTEN(S) S(PRAXISID, Text) S(PRAXISNAME, Text) S(KZVNR, Text)
// clang-format on
ORVO_TABELLE(CTPraxis, "PRAXIS", Genau, "PRAXISID")
#undef ORVO_SPALTEN
class CTPraxis : public CTabelle<CTPraxis_Fields> {
public:
    using CTabelle::CTabelle;
};

// Dental associations. LQ is the regional factor of private fees in ten-thousandths.
// clang-format off
#define ORVO_SPALTEN(S) S(KZVNR, Text) S(KZVNAME, Text) S(LQ, Faktor) S(REGION, Text)
// clang-format on
ORVO_TABELLE(CTKzv, "KZV", Genau, "KZVNR")
#undef ORVO_SPALTEN
class CTKzv : public CTabelle<CTKzv_Fields> {
public:
    using CTabelle::CTabelle;
    // The region of an association: its region column, or its number where there is no row or no region in it.
    static CString RLP(const CString & sNr);
};

// Practice owners (Mandanten). MDABAKTIV "1" makes MDAB, the first day, count; GELOESCHT "1" marks a deleted row.
// MDCODES holds three two-character codes, MDZWEIG the branch of an owner who is not the practice's first.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(MDID, Text) S(MDNAME, Text) S(MDINFO, Text) S(MDCODES, Text) S(MDABAKTIV, Text) S(MDAB, Datum) \
    S(MDZWEIG, Text) S(MDART, Text) S(MDADRNR, Text) S(GELOESCHT, Text)
// clang-format on
ORVO_TABELLE(CTMandant, "MANDANT", Genau, "MDID")
#undef ORVO_SPALTEN
class CTMandant : public CTabelle<CTMandant_Fields> {
public:
    using CTabelle::CTabelle;
    // Opens the valid (not deleted) rows of an owner, of all for the empty text.
    int GetValidMandant(const CString & sMd);
};

// Addresses. ADRART is the kind ("p" patient, "m" owner, "w" person of the practice), TELEFONPRIO the number (1 to 6)
// of the contact that is preferred, EMAIL contact 5.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(ADRNR, Text) S(ADRLFD, Text) S(ADRART, Text) S(PATTITEL, Text) S(PATVORNAME, Text) \
    S(PATZUSATZ, Text) S(PATNAME, Text) S(PATSTRASSE, Text) S(PATPLZ, Text) S(PATORT, Text) \
    S(PATANREDE, Text) S(GESCHLECHT, Text) S(TELEFON1, Text) S(TELEFON2, Text) S(TELEFON3, Text) \
    S(TELEFON4, Text) S(EMAIL, Text) S(TELEFON6, Text) S(TELEFONPRIO, Text) S(FRUEHERENAMEN, Text)
// clang-format on
ORVO_TABELLE(CTAdr, "ADR", Genau, "ADRNR ADRLFD", "PATNAME PATVORNAME", "ADRART")
#undef ORVO_SPALTEN

enum FULLNAMECONST : int { FULLNAME_ANREDE = 0, FULLNAME_NAME = 1 };

class CTAdr : public CTabelle<CTAdr_Fields> {
public:
    using CTabelle::CTabelle;
    // Opens the address rows of a number.
    int GetByAdrNr(const CString & sAdrNr) { return LiesMit(1, MATCH_ALLE, {sAdrNr}); }
    // Title, first name, addition and surname, one blank between what is there; with FULLNAME_ANREDE the form of
    // address before them.
    [[nodiscard]] CString MakeFullName(FULLNAMECONST eForm) const;
    // The display text of a stored contact field.
    [[nodiscard]] static CString GetRufNummer(const CString & sFeld);
    [[nodiscard]] static CString GetEMail(const CString & sFeld);
    // The contact that is marked as preferred; empty without a mark.
    [[nodiscard]] CString LoadPrioTelefon() const;
};

// A practice owner joined with the address of MDADRNR; without such a row the address fields are empty.
class CTMandantAdr : public CTMandant, public CTAdr_Fields {
public:
    explicit CTMandantAdr(CMxDatabase & db = dbDatabase) : CTMandant(db) {}

protected:
    void NachLesen() override;
};

// Persons of the practice and their addresses.
// clang-format off
#define ORVO_SPALTEN(S) S(PID, Text) S(PERSADRNR, Text)
// clang-format on
ORVO_TABELLE(CTPersonal, "PERSONAL", Genau, "PID")
#undef ORVO_SPALTEN
class CTPersonal : public CTabelle<CTPersonal_Fields> {
public:
    using CTabelle::CTabelle;
};

class CTPersonalAdr : public CTPersonal, public CTAdr_Fields {
public:
    using CTPersonal::CTPersonal;

protected:
    void NachLesen() override;
};

// Treaters (Leistungserbringer). PROVISION has five characters per commission group, the deductions are hundredths
// of a percent, GELOESCHT "1" marks a deleted row.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(LEB, Text) S(LEBANR, Text) S(PID, Text) S(MDKASSE, Text) S(MDPRIVAT, Text) S(PROVISION, Text) \
    S(ABSCHLAGGOZ, Zahl) S(ABSCHLAGU, Zahl) S(LEBKZ, Text) S(LEBINFO, Text) S(PRAXISID, Text) \
    S(GELOESCHT, Text)
// clang-format on
ORVO_TABELLE(CTLeb, "LEB", Genau, "LEB")
#undef ORVO_SPALTEN
class CTLeb : public CTabelle<CTLeb_Fields> {
public:
    using CTabelle::CTabelle;
    // Opens the valid (not deleted) rows of a treater, of all for the empty text.
    int GetValidLebs(const CString & sLeb);
};

// Insurers, one row for each day on which something changed. KASFLAG1 "1" is a statutory insurer.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(KASKUERZEL, Text) S(KASFELD0, Text) S(GUELTIGAB, Datum) S(KASFLAG1, Text) S(KASSENPWGRP, Text) \
    S(KASIK, Text) S(BKVKASNR, Text) S(KASSENART, Text) S(KASFELD1, Text) S(KASFELD2, Text) \
    S(KASSORT, Text) S(KASSTATISTIKART, Text) S(KASMEDSTATISTIKART, Text) S(KASFLAG2, Text) \
    S(KASKZ, Text)
// clang-format on
ORVO_TABELLE(CTOrvoKas, "ORVOKAS", Genau, "KASKUERZEL GUELTIGAB")
#undef ORVO_SPALTEN
class CTOrvoKas : public CTabelle<CTOrvoKas_Fields> {
public:
    using CTabelle::CTabelle;
};

// Point values and their groups. A value holds from PWAB on until a later one of its group and kind.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PWAB, Datum) S(PWGRP, Text) S(PWLART, Text) S(PWWEST, Punktwert) S(PWOST, Punktwert) \
    S(PWINFO, Text)
// clang-format on
ORVO_TABELLE(CTPunktWert, "PUNKTWERT", Genau, "PWAB PWGRP PWLART")
#undef ORVO_SPALTEN
class CDPw;
class CTPunktWert : public CTabelle<CTPunktWert_Fields> {
public:
    using CTabelle::CTabelle;
    // The point value of the row: west for true, east for false.
    [[nodiscard]] CDPw PwToBetrag(bool bWest) const;
};

// clang-format off
#define ORVO_SPALTEN(S) S(PWGRP, Text) S(PWGRPNAME, Text)
// clang-format on
ORVO_TABELLE(CTPwGroup, "PWGROUP", Genau, "PWGRP")
#undef ORVO_SPALTEN
class CTPwGroup : public CTabelle<CTPwGroup_Fields> {
public:
    using CTabelle::CTabelle;
};

// The parameter pool: settings by group and short code. The group is a number, right-aligned to three places as soon
// as it is read by or written.
// clang-format off
#define ORVO_SPALTEN(S) S(GRUPPE, Text) S(KUERZEL, Text) S(WERT, Text)
// clang-format on
ORVO_TABELLE(CTParPool, "PARPOOL", MitEndblanks, "GRUPPE KUERZEL")
#undef ORVO_SPALTEN
class CTParPool : public CTabelle<CTParPool_Fields> {
public:
    using CTabelle::CTabelle;
    // Opens the rows of m_GRUPPE whose short code begins with m_KUERZEL.
    int GetByTeilKuerzel() { return GetByK1(MATCH_TEIL); }

protected:
    void VorZugriff() override;
};

// The select pool: the host's lists of choices, SPLFD their order within a pool.
// clang-format off
#define ORVO_SPALTEN(S) S(SPPOOL, Text) S(SPLFD, Text) S(SPKEY, Text) S(SPTEXT, Text) S(SPEXTRA, Text)
// clang-format on
ORVO_TABELLE(CTSelectPool, "SELECTPOOL", Genau, "SPPOOL SPLFD")
#undef ORVO_SPALTEN
class CTSelectPool : public CTabelle<CTSelectPool_Fields> {
public:
    using CTabelle::CTabelle;
};

struct SSelectPool {
    CString m_sKey;
    CString m_sText;
    CString m_sExtra;
    friend bool operator==(const SSelectPool &, const SSelectPool &) = default;
};

// The entries of one pool in their order, read from dbDatabaseRO each time; true if there are any. They belong to the
// host and stay until its store is detached. An empty key names no pool. False is also the answer of a store that
// failed; CMxDatabase::SelectPool tells it from a pool without entries.
bool GetSPEntries(const CString & sKey, std::vector<SSelectPool *> & vEintraege);

} // namespace orvostat

#include "orvostatbs/host/detail/Tabellenmakros.def"
