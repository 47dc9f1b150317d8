// The tables around a treatment: laboratory blocks, invoices, prescriptions, plaster models, text blocks.
#pragma once

#include "orvostatbs/host/Tabelle.h"

#include "orvostatbs/host/detail/Tabellenmakros.def"

namespace orvostat {

// Blocks of the practice's own laboratory. LBLOCKBETRAEGE holds ten amounts of eleven characters.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(PLANNR, Text) S(LFDLBLOCK, Text) S(LBLOCKART, Text) S(LBLOCKBETRAEGE, Text) \
    S(BEHANDLERNR, Text) S(DATUM, Datum) S(PRAXISNR, Text)
// clang-format on
ORVO_TABELLE(CTLBlock, "LBLOCK", Genau, "PATNR PLANNR LFDLBLOCK")
#undef ORVO_SPALTEN
class CTLBlock : public CTabelle<CTLBlock_Fields> {
public:
    using CTabelle::CTabelle;
};

// Entries of such a block. ANZAHL is written as in a treatment, the first character of LBLOCKENTRYART is the kind of
// fee schedule, BEGRKEY the key of a text block.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(PLANNR, Text) S(LFDLBLOCK, Text) S(LFDENTRY, Text) S(LBLOCKENTRYART, Text) \
    S(LBLNR, Text) S(BEGRKEY, Text) S(DATUM, Datum) S(BEHANDLERNR, Text) S(LSTNR, Text) S(TEETH, Text) \
    S(FAKTOR, Faktor) S(ANZAHL, Menge) S(BETRAG, Betrag) S(CHARGE, Text)
// clang-format on
ORVO_TABELLE(CTLBlockEntry, "LBLOCKENTRY", Genau, "PATNR PLANNR LFDLBLOCK LFDENTRY")
#undef ORVO_SPALTEN
class CTLBlockEntry : public CTabelle<CTLBlockEntry_Fields> {
public:
    using CTabelle::CTabelle;
};

// Invoice blocks of commercial laboratories. GLBLOCBETRAEGE holds four amounts of ten characters (technical work,
// material, metal, practice material), PATREF the practice's patient if it is one.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(LABORKUNDE, Text) S(LFDGLBLOC, Text) S(GLBLOCSTATUS, Text) S(PATNR, Text) S(PLANNR, Text) \
    S(LFDLBLOCK, Text) S(BEHANDLERNR, Text) S(DATUM, Datum) S(PRAXISNR, Text) S(PATREF, Text) \
    S(AUFTRAG, Text) S(LABORNAME, Text) S(TECHNIKER, Text) S(ARBEIT, Text) S(FARBE, Text) \
    S(MATERIALTEXT, Text) S(CHARGE, Text) S(EINGANG, Text) S(LIEFERUNG, Text) S(RECHNUNGNR, Text) \
    S(RECHDATUM, Text) S(ZAHLZIEL, Text) S(GLBEMERKUNG, Text) S(GLKENNUNG, Text) S(GLBLOCBETRAEGE, Text) \
    S(UST, Betrag)
// clang-format on
ORVO_TABELLE(CTGLBloc, "GLBLOC", Genau, "LABORKUNDE LFDGLBLOC")
#undef ORVO_SPALTEN
class CTGLBloc : public CTabelle<CTGLBloc_Fields> {
public:
    using CTabelle::CTabelle;
};

// clang-format off
#define ORVO_SPALTEN(S) \
    S(LABORKUNDE, Text) S(LFDGLBLOC, Text) S(LFDENTRY, Text) S(GLBLOCENTRYART, Text) S(LBLNR, Text) \
    S(DATUM, Datum) S(BEHANDLERNR, Text) S(LSTNR, Text) S(ANZAHL, Menge) S(BETRAG, Betrag) \
    S(USTKEY, Text) S(CHARGE, Text)
// clang-format on
ORVO_TABELLE(CTGLBlocEntry, "GLBLOCENTRY", Genau, "LABORKUNDE LFDGLBLOC LFDENTRY")
#undef ORVO_SPALTEN
class CTGLBlocEntry : public CTabelle<CTGLBlocEntry_Fields> {
public:
    using CTabelle::CTabelle;
};
using CTGLBlockEntry = CTGLBlocEntry; // both spellings are in use

// Collective invoices of commercial laboratories. KUFAKTBETRAEGE holds four amounts of nine characters.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PRAXISNR, Text) S(LABORKUNDE, Text) S(LFDGLKUFAKT, Text) S(FAKTDATUM, Datum) S(VONDATUM, Datum) \
    S(BISDATUM, Datum) S(ANZGLBLOCKS, Zahl) S(BEGLICHEN, Text) S(STORNIERT, Text) \
    S(KUFAKTBETRAEGE, Text) S(UST, Betrag)
// clang-format on
ORVO_TABELLE(CTGLKuFakt, "GLKUFAKT", Genau, "LABORKUNDE LFDGLKUFAKT", "PRAXISNR LABORKUNDE LFDGLKUFAKT")
#undef ORVO_SPALTEN
class CTGLKuFakt : public CTabelle<CTGLKuFakt_Fields> {
public:
    using CTabelle::CTabelle;
};

// Invoices: two groups of amounts (patient, insurer) and in MWSTLISTE up to four pieces of a tax key and ten
// characters of an amount.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PRAXISNR, Text) S(PATNR, Text) S(FAKT1, Text) S(FORTLFDJAHR, Text) S(FORTLFDFAKT, Text) \
    S(DATUM, Datum) S(FORMULARNR, Text) S(BETRAG1, Betrag) S(HONORAR1, Betrag) S(ELABGESAMT1, Betrag) \
    S(FLABGESAMT1, Betrag) S(ELABMWST1, Betrag) S(BETRAG2, Betrag) S(HONORAR2, Betrag) \
    S(ELABGESAMT2, Betrag) S(FLABGESAMT2, Betrag) S(ELABMWST2, Betrag) S(BEGLICHEN, Betrag) \
    S(AUSGEBUCHT, Betrag) S(MWSTLISTE, Text) S(STORNIERT, Text) S(MAHNSTUFE, Text) S(KTRAEGER, Text) \
    S(KASKUERZEL, Text)
// clang-format on
ORVO_TABELLE(CTFakt, "FAKT", Genau, "PATNR FAKT1", "DATUM PATNR")
#undef ORVO_SPALTEN
class CTFakt : public CTabelle<CTFakt_Fields> {
public:
    using CTabelle::CTabelle;
};

// Cost bearers that are booked like patients; KTART "p" is an association's package.
// clang-format off
#define ORVO_SPALTEN(S) S(PATNR, Text) S(KTART, Text) S(KTNAME, Text)
// clang-format on
ORVO_TABELLE(CTKTraeger, "KTRAEGER", Genau, "PATNR")
#undef ORVO_SPALTEN
class CTKTraeger : public CTabelle<CTKTraeger_Fields> {
public:
    using CTabelle::CTabelle;
    // Whether the invoice of this patient number stands for a package of an association (KZV or KV).
    static bool IsKzvOrKvPaket(const CString & sPatNr);
};

// Prescriptions. REZEPTSCHLUESSEL has 5 characters of a key and twice 7 of an ICD code.
// clang-format off
#define ORVO_SPALTEN(S) S(PATNR, Text) S(REZEPTNR, Text) S(DATUM, Datum) S(REZEPTSCHLUESSEL, Text)
// clang-format on
ORVO_TABELLE(CTRezept, "REZEPT", Genau, "PATNR REZEPTNR", "DATUM PATNR")
#undef ORVO_SPALTEN
class CTRezept : public CTabelle<CTRezept_Fields> {
public:
    using CTabelle::CTabelle;
};

// The remedy prescription (Heilmittelverordnung) behind a CTRezept: the form's text lines and its counts.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(PATNR, Text) S(REZEPTNR, Text) S(FORMULARNAME, Text) S(TEXTBLOCK, Text) S(ANZAHL1, Zahl) \
    S(ANZAHL2, Zahl) S(ANZAHL3, Zahl) S(ANZAHL4, Zahl) S(BETRAG, Betrag)
// clang-format on
ORVO_TABELLE(CHMVRecord, "HMV", Genau, "PATNR REZEPTNR")
#undef ORVO_SPALTEN
class CHMVRecord : public CTabelle<CHMVRecord_Fields> {
public:
    using CTabelle::CTabelle;
};

class CTIcd {
public:
    // "K021" becomes "K02.1"; a code that has its point already, or no place for one, stays.
    [[nodiscard]] static CString AddPoint(const CString & sCode);
};

// Plaster models.
// clang-format off
#define ORVO_SPALTEN(S) \
    S(GIPSNR, Text) S(PATNR, Text) S(DATUM, Datum) S(GIPSART, Text) S(BEHANDLERNR, Text) \
    S(BESCHREIBUNG, Text) S(GEDRUCKT, Text) S(ARCHIVIERT, Text)
// clang-format on
ORVO_TABELLE(CTGips, "GIPS", Genau, "GIPSNR", "PATNR DATUM")
#undef ORVO_SPALTEN
class CTGips : public CTabelle<CTGips_Fields> {
public:
    using CTabelle::CTabelle;
};

// Text blocks, one row per line.
// clang-format off
#define ORVO_SPALTEN(S) S(TBKEY, Text) S(TBLFD, Text) S(TBTEXT, Text)
// clang-format on
ORVO_TABELLE(CTTbEntry, "TBENTRY", Genau, "TBKEY TBLFD")
#undef ORVO_SPALTEN
class CTTbEntry : public CTabelle<CTTbEntry_Fields> {
public:
    using CTabelle::CTabelle;
};

} // namespace orvostat

#include "orvostatbs/host/detail/Tabellenmakros.def"
