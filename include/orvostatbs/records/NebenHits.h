// The side hit lines: what a statistic lists beside treatments. Plaster models, invoices of commercial laboratories
// and their collective invoices, the practice's own invoices, and prescriptions each have a flat record that is filled
// from a row of the practice's tables and kept in a table of the accumulator.
//
// All of them are plain values. Clear brings every field to its initial value unless its comment says otherwise. The
// Move operations set what they name and leave everything else; rows must not be null and stay unchanged. Dates are
// YYYYMMDD, letters 0 for none.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"

namespace orvostat {

class CHMVRecord;
class CPat;
class CTFakt;
class CTGips;
class CTGLBloc;
class CTGLKuFakt;
class CTRezept;

// A plaster model of a patient's teeth, which a practice has to keep.
class CGipsHitLine {
public:
    CString GIPSNR;
    CString PATNR;
    CString DATUM;
    char GIPSART = 0;
    CString BEHANDLERNR;
    CString BESCHREIBUNG;
    bool GEDRUCKT = false;
    CString ARCHIVIERT; // date; empty for a model that is not archived
    CString PATNAME;
    CString PATVORNAME;
    CString PATTITEL;
    CString PATZUSATZ;
    CString PATGEBDATUM;
    int m_iGipsFrei = 0; // this and the next two are the callers'
    bool m_bGipsFrei1 = false;
    bool m_bGipsFrei2 = true;

    void Clear();
    // All fields of the model. ARCHIVIERT is empty where the row does not hold eight characters.
    void MoveGips(const CTGips * pGips);
    // Name and birth date.
    void MovePat(const CPat & pat);
};

// An invoice block of a commercial laboratory.
//
// The laboratories' tables pack the amounts of a block into one text of fixed columns, currency letter first:
//
//     e    12345e     6789e        0e        0      technical work, material, metal, practice material
//
// in a block ten characters wide, in a collective invoice nine.
class CGlabHitLine {
public:
    CString LABORKUNDE; // this and the next identify the block
    CString LFDGLBLOC;
    bool m_bGlabStatus = false;
    CString m_sGlab1;     // order
    CString m_sGlab2;     // laboratory
    CString m_sGlab3;     // technician
    CString m_sGlab4;     // work
    CString m_sGlab5;     // colour
    CString m_sGlab6;     // material
    CString m_sGlab7;     // batch
    CString m_sGlab8;     // received
    CString m_sGlab9;     // delivered
    CString m_sGlab10;    // invoice number
    CString m_sGlab11;    // invoice date
    CString m_sGlab12;    // days for payment
    CString m_sGlab13;    // remark
    CString m_sGlab14;    // mark
    CVzW7Betrag TECHNLST; // technical work
    CVzW7Betrag MATERIAL;
    CVzW7Betrag METALL;
    CVzW7Betrag PRAXMAT; // material of the practice; zero euro where the block has none
    CVzW7Betrag USTGES;  // tax
    CVzW7Betrag NETTO;   // GESAMT without USTGES
    CVzW7Betrag GESAMT;

    void Clear();
    // Takes the block and forms the totals. m_bGlabStatus stays where the row's status is neither "0" nor "1".
    void MoveLabRech(CTGLBloc & rec);

    // The tax in a block, worked out from its entries: stored texts of the part taxed with mark "7" and of the part
    // with mark "g". The rates 7 and 16 percent hold for every date. An entry counts with amount times quantity,
    // rounded to cents, halves away from zero; a part without entries gives "e0". Reads the table of entries by a set
    // of its own.
    static void GetGesamtUst(CString & sUst7, CString & sUst16, const CString & sBlock,
                             const CString & sKunde);
    // Packed amount iIndex (from 0) without its blanks; empty behind the end.
    [[nodiscard]] static CString GetBetrag(const CString & sBetraege, int iIndex);
    // The sum of all packed amounts in hundredths, as digits: of the numbers at the places 1, 11, 21 to 91, ten
    // characters each. A number ends at the letter of the next amount; currencies are not told apart.
    [[nodiscard]] static CString GetGesamtBetragBrutto(const CString & sBetraege);

    // The same block; without an own LFDGLBLOC any block of the same customer.
    [[nodiscard]] bool operator==(const CTGLBloc & rec) const;
    [[nodiscard]] bool operator==(const CGlabHitLine & hit) const;
};

// A collective invoice of a commercial laboratory over several blocks.
class CGlabFaktHitLine {
public:
    CString PRAXISNR;   // practice owner
    CString LABORKUNDE; // this and the next identify the invoice
    CString LFDGLKUFAKT;
    CString m_sGlabFakt1; // the callers'
    CString FAKTDATUM;
    CString VONDATUM;
    CString BISDATUM;
    CString ANZGLBLOCKS; // number of blocks
    CString BEGLICHEN;
    CString SKONTOPROZENT; // the callers'; Clear leaves it
    bool STORNIERT = false;
    CVzW7Betrag TECHNLST; // amounts as in a block
    CVzW7Betrag MATERIAL;
    CVzW7Betrag METALL;
    CVzW7Betrag PRAXMAT;
    CVzW7Betrag USTGES;
    CVzW7Betrag NETTO;
    CVzW7Betrag GESAMT;

    void Clear();
    // Takes the invoice and forms the totals.
    void MoveSammelLabRech(CTGLKuFakt & rec);

    // As in a block, with amounts of nine characters. The sum reads the same places as there and so misses the first
    // one to three places of the later amounts: the second counts up to 99999.99, the third up to 9999.99, the fourth
    // up to 999.99.
    [[nodiscard]] static CString GetBetrag(const CString & sBetraege, int iIndex);
    [[nodiscard]] static CString GetGesamtBetragBrutto(const CString & sBetraege);

    // The same invoice; without an own LFDGLKUFAKT any invoice of the same customer.
    [[nodiscard]] bool operator==(const CTGLKuFakt & rec) const;
    [[nodiscard]] bool operator==(const CGlabFaktHitLine & hit) const;
};

// An invoice of the practice. It has two groups of amounts, the patient's and the insurer's; an invoice that stands
// for a package of an association (KZV, KV) is the insurer's alone.
class CRechHitLine {
public:
    CString PRAXISNR;
    CString PATNR;
    CString FAKT1; // invoice number
    CString FORTLFDJAHR;
    CString FORTLFDFAKT;
    CString DATUM;
    CString FORMULARNR;
    CString PATNAME;
    CString PATVORNAME;
    CDBetrag RECHBETRAG;    // the patient's share; empty for a package
    CDBetrag RECHBETRAGK;   // the insurer's share
    CDBetrag HONORAR;       // this and the next four of both shares together
    CDBetrag HONMWSTBETRAG; // tax of the fees
    CDBetrag ELABGESAMT;    // own laboratory
    CDBetrag FLABGESAMT;    // commercial laboratory
    CDBetrag ELABMWSTBETRAG;
    CDBetrag BEGLICHEN;  // paid
    CDBetrag AUSGEBUCHT; // written off
    bool STORNIERT = false;
    char MAHNSTUFE = 0; // how often the patient was reminded
    char KTRAEGER = 0;  // kind of cost bearer
    CString KASKUERZEL;
    CString PATTELEFON;
    CString BEHANDLERNR;
    CString CASHDATUM; // this and the next are the callers'
    CString ZAHLUNGSWEGDESC;

    void Clear();
    // Takes the invoice; the tax of its fees is added to HONMWSTBETRAG, so clear the line first.
    void MoveFakt(const CTFakt * pFakt);
    // Name, treater and, by the contact's number from 1 to 7 as CPat counts them, PATTELEFON; with any other number
    // it stays.
    void MovePat(const CPat & pat, int iTelefon);
    // What is still to be paid: of the share that PATNR's invoices are about, without BEGLICHEN and AUSGEBUCHT.
    [[nodiscard]] CDBetrag Offen() const;
};

// A remedy prescription (Heilmittelverordnung) as its form was printed.
class CVerordnungHitLine {
public:
    CString m_sVoKey1; // patient and number of the prescription
    CString m_sVoKey2;
    CString m_sVoName; // "Muster, Eva"
    CString m_sVoGebDatum;
    CString m_sVoFeld;        // ten characters from the form's sixth line
    CString m_sVoSchluessel;  // diagnosis group
    bool m_bVoBlanko = false; // a form on which the therapist decides
    CString m_sVoIcd1;        // with their points
    CString m_sVoIcd2;
    CString m_sVoIcdListe; // those that are there, "K02.1; K05.3"
    int m_iVoAnzahl = 0;   // units
    CDBetrag m_VoBetrag;

    void Clear();
    // Takes prescription and form. Name, birth date and m_sVoFeld stay where the form's text ends before their lines.
    void MoveVerordnung(const CTRezept & rez, const CHMVRecord & hmv);
};

} // namespace orvostat
