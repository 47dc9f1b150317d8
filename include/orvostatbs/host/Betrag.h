// Amounts of money and point values.
//
// The practice's records reach back into the time before the euro, so every amount carries its currency, and a sum
// converts what it adds: 1 euro is 1.95583 of the old currency (Council Regulation (EC) No 2866/98). An amount can
// also be empty, which is not the same as zero: an empty field of a record says nothing, a zero says that the service
// costs nothing. A point value is the price of one point of an insurer's fee schedule; with the points of a service it
// gives an amount that is kept as the product gives it, and only an explicit Round or RoundDown brings it to cents.
//
// Currency letters: 'e' euro, ' ' the old currency, 0 none. Any other letter stays with its amount, but has no rate.
//
// Stored text, in records and statistic files: letter, optional "-", and digits that count hundredths (for a point
// value ten-thousandths), behind a "." what is left of the eight decimals that are kept, without zeros at the end.
//
//     "e12345"      123.45 euro              "e4366.89"     43.6689 euro
//     " -5"         -0.05 old currency       "12345"        123.45 without currency
//     ""            empty                    "e13233"       as a point value 1.3233 euro
//
// Blanks may stand between letter and number, as fixed columns have them. Reading ends at the first character that
// does not belong to the number; a letter without number is zero, nothing but blanks is empty. An absurdly long number
// reads as the largest one there is.
#pragma once

#include "orvostatbs/host/CString.h"

#include <type_traits>

// What all amounts share. A plain value of 16 bytes; a fresh one is empty.
class CWBetragBasis {
public:
    CWBetragBasis() = default;

    // No value and no currency.
    void Empty() { *this = CWBetragBasis(); }
    [[nodiscard]] bool IsEmpty() const { return !m_bGesetzt; }
    // Value zero; the currency stays.
    void Zero();
    // Nothing of the value would be stored, as in a difference that leaves only what doubles cannot hold. Empty
    // amounts are zero as well, and never positive.
    [[nodiscard]] bool IsZero() const;
    [[nodiscard]] bool IsPos() const;

    [[nodiscard]] char GetWaehrung() const { return m_cWaehrung; }

    // Converts in place, without rounding. Where one of the two letters has no rate only the letter changes; an empty
    // amount stays as it is.
    CWBetragBasis & ToW(char cW);

    // To the nearest cent in place, halves away from zero. It is the decimal value that counts: a product that is a
    // half or a whole cent in decimal arithmetic is taken as such, although its double lies a few units of the last
    // place beside it (10.05 x 2.3 is 23.115 and becomes 23.12).
    CWBetragBasis & Round();

    // Stored text, empty for an empty amount. iWidth is the width of the whole text, 0 for as long as it is: blanks
    // fill it behind the letter, and where there is none behind the number. Without bSigned the sign is dropped. The
    // other arguments have no effect.
    [[nodiscard]] CString ToDb(int iWidth, bool bSigned, bool bReserve, double dReserve1,
                               double dReserve2) const;

    // Display text, "1234,56" or with bThousands "1.234,56": rounded to cents, without currency, blanks in front up
    // to iWidth. Empty for an empty amount.
    [[nodiscard]] CString ToExt(int iWidth, bool bThousands) const;

    // Same value, same letter, both or neither empty.
    [[nodiscard]] friend bool operator==(const CWBetragBasis &, const CWBetragBasis &) = default;

protected:
    CWBetragBasis(double dWert, char cWaehrung) : m_dWert(dWert), m_cWaehrung(cWaehrung), m_bGesetzt(true) {}

    // Adds dFaktor times the other amount in this one's currency. A side without currency takes the other's, an
    // empty side changes nothing.
    void Addiere(const CWBetragBasis & betrag, double dFaktor);
    void Multipliziere(double dFaktor);

    friend double operator/(const CWBetragBasis & a, const CWBetragBasis & b);

    double m_dWert = 0; // euro or marks, not cents; 0 when empty
    char m_cWaehrung = 0;
    bool m_bGesetzt = false;
};

// How often b goes into a, whatever their currencies; 0 where b is zero or empty.
[[nodiscard]] double operator/(const CWBetragBasis & a, const CWBetragBasis & b);

// The amount of a hit, a fee row or a bill.
//
// In sums the right side is converted to the left side's currency; a side without currency takes the other's, an empty
// side changes nothing, and two empty sides stay empty. An empty amount times or through a number is empty.
class CDBetrag : public CWBetragBasis {
public:
    CDBetrag() = default;
    explicit CDBetrag(const CString & sStored);
    CDBetrag(const CWBetragBasis & betrag) : CWBetragBasis(betrag) {} // NOLINT(google-explicit-constructor)
    CDBetrag(double dWert, char cWaehrung) : CWBetragBasis(dWert, cWaehrung) {}

    // Cuts to whole cents towards zero, in place; of the decimal value, as in Round.
    CDBetrag & RoundDown();

    CDBetrag & operator+=(const CWBetragBasis & betrag);
    [[nodiscard]] CDBetrag operator+(const CWBetragBasis & betrag) const;
    [[nodiscard]] CDBetrag operator-(const CWBetragBasis & betrag) const;
    CDBetrag & operator*=(double dFaktor);
    [[nodiscard]] CDBetrag operator*(double dFaktor) const;
    // Through 0 the amount stays as it is.
    CDBetrag & operator/=(double dTeiler);
};

[[nodiscard]] CDBetrag operator*(double dFaktor, const CDBetrag & betrag);

// A point value. Its stored text counts ten-thousandths, so that "23000", a factor as the records have it, is 2.3.
class CDPw : public CWBetragBasis {
public:
    CDPw() = default;
    explicit CDPw(const CString & sStored);

    // Stored text in ten-thousandths; otherwise as for amounts.
    [[nodiscard]] CString ToDb(int iWidth, bool bSigned, bool bReserve, double dReserve1,
                               double dReserve2) const;
    // Stored text with its sign, of natural width.
    operator CString() const; // NOLINT(google-explicit-constructor)

    // Still with all decimals; as a CDBetrag it is the amount of so many points.
    [[nodiscard]] CDPw operator*(double dFaktor) const;
};

// An amount out of a fixed column. Besides the stored text it reads the display text, which it knows by its comma:
// "1234,56" or "1.234,56", with or without letter in front. Blanks before a display text are padding and no currency.
class CWBetrag : public CWBetragBasis {
public:
    CWBetrag() = default;
    explicit CWBetrag(const CString & sText);
    CWBetrag(double dWert, char cWaehrung) : CWBetragBasis(dWert, cWaehrung) {}

    // As with CDBetrag.
    [[nodiscard]] CWBetrag operator+(const CWBetragBasis & betrag) const;
    [[nodiscard]] CWBetrag operator-(const CWBetragBasis & betrag) const;
};

// An amount of the laboratories' collective invoices.
class CW7Betrag : public CWBetragBasis {
public:
    CW7Betrag() = default;
    explicit CW7Betrag(const CString & sStored);
};

// The signed amount of the laboratory hits.
class CVzW7Betrag : public CWBetragBasis {
public:
    CVzW7Betrag() = default;
    explicit CVzW7Betrag(const CString & sStored);
    CVzW7Betrag(const CWBetragBasis & betrag)
        : CWBetragBasis(betrag) {} // NOLINT(google-explicit-constructor)

    // Stored text with its sign, of natural width.
    operator CString() const; // NOLINT(google-explicit-constructor)

    // As with CDBetrag.
    [[nodiscard]] CVzW7Betrag operator+(const CWBetragBasis & betrag) const;
    [[nodiscard]] CVzW7Betrag operator-(const CWBetragBasis & betrag) const;
};

static_assert(sizeof(CDBetrag) == 16 && std::is_trivially_copyable_v<CDBetrag>);
static_assert(sizeof(CDPw) == 16 && std::is_trivially_copyable_v<CDPw>);
