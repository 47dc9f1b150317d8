// Amounts of money and point values.
//
// The practice's records reach back into the time before the euro, so every amount carries its currency, and a sum
// converts what it adds: 1 euro is 1.95583 of the old currency (Council Regulation (EC) No 2866/98). An amount can
// also be empty, which is not the same as zero: an empty field of a record says nothing, a zero says that the service
// costs nothing. A point value is the price of one point of an insurer's fee schedule; with the points of a service it
// gives an amount that is kept with all its decimals, and only an explicit Round or RoundDown brings it to cents.
//
// A value is a whole number of hundred-millionths, which is what a stored text holds: it does not change on its way
// through a file, and a sum is exact in whatever order it is formed. Values reach to 92 billion euro; what goes beyond
// stays the largest there is, in sums as well.
//
// A product or quotient is formed exactly and then cut to a hundred-millionth: towards zero, but one unit up where a
// digit 0 or 5 would become the last and something behind it is dropped. So a later Round or RoundDown, also of a
// difference, gives what the exact value would give, and what is not zero does not become zero.
//
// A double stands for the decimal that it means: the one of at most eight decimals whose double it is, else the one
// with the fewest decimals that lies beside it by no more than the errors of a few multiplications. 2.3 is 23/10, and
// 3 * 0.0001 is 3/10000. Infinity is beyond every value: times it is the largest, through it zero, and zero times it is
// zero; a double below 1e-22 is the other way round. NaN makes an amount empty.
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
// Blanks may stand between letter, sign and number, as fixed columns have them, and in front of a letter; in front of
// anything else the first of them is the letter of the old currency. Reading ends at the first character that does not
// belong to the number; a letter without number is zero, nothing but blanks is empty. More than eight decimals are cut
// as in a product.
//
// A fee is rounded when the rules of billing say so and not before:
//
// ```
// CDBetrag betrag("e1005");      // 10.05 euro at factor 1
// betrag.MalBruch(23000, 10000); // factor 2.3: 23.115, nothing is lost
// assert(betrag.ToDb(0, true, false, 0, 0) == "e2311.5");
// betrag.Round();                // to cents, halves away from zero
// assert(betrag.ToExt(0, false) == "23,12");
// ```
//
// A sum starts empty, takes the currency of what comes first and converts what comes later:
//
// ```
// CDBetrag summe;
// assert(summe.IsEmpty() && summe.IsZero());
// summe += CDBetrag("e5");
// summe += CDBetrag(" 195583");  // 1955.83 marks are 1000 euro
// assert(summe == CDBetrag("e100005"));
// ```
//
// A point value times points is an amount with all its decimals:
//
// ```
// const CDPw pw("e12285");       // 1.2285 euro a point
// assert(CDBetrag(pw * 33) == CDBetrag("e4054.05"));
// ```
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>
#include <type_traits>

namespace orvostat {

// What all amounts share. A plain value of 16 bytes; a fresh one is empty.
class CWBetragBasis {
public:
    CWBetragBasis() = default;

    // No value and no currency.
    void Empty() { *this = CWBetragBasis(); }
    [[nodiscard]] bool IsEmpty() const { return !m_bGesetzt; }
    // Value zero; the currency stays.
    void Zero();
    // Empty amounts are zero as well, and never positive.
    [[nodiscard]] bool IsZero() const { return m_iWert == 0; }
    [[nodiscard]] bool IsPos() const { return m_iWert > 0; }

    [[nodiscard]] char GetWaehrung() const { return m_cWaehrung; }
    // The value in hundred-millionths.
    [[nodiscard]] std::int64_t GetEinheiten() const { return m_iWert; }

    // Converts in place, without rounding to cents. Where one of the two letters has no rate only the letter changes;
    // an empty amount stays as it is.
    CWBetragBasis & ToW(char cW);

    // To the nearest cent in place, halves away from zero: 10.05 x 2.3 is 23.115 and becomes 23.12.
    CWBetragBasis & Round();

    // Times iZaehler / iNenner in place, cut once, as the rules of billing have it: a factor in ten-thousandths is
    // MalBruch(iFaktor, 10000). With a denominator of 0, and where it is empty, the amount stays as it is.
    CWBetragBasis & MalBruch(std::int64_t iZaehler, std::int64_t iNenner);

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
    static constexpr std::int64_t EINHEITEN_JE_EURO = 100'000'000;

    constexpr CWBetragBasis(std::int64_t iEinheiten, char cWaehrung, bool bGesetzt)
        : m_iWert(iEinheiten), m_cWaehrung(cWaehrung), m_bGesetzt(bGesetzt) {}
    CWBetragBasis(double dWert, char cWaehrung);

    // Adds the other amount in this one's currency, or takes it off. A side without currency takes the other's, an
    // empty side changes nothing.
    void Addiere(const CWBetragBasis & betrag, bool bAbziehen);
    void AddiereUmgerechnet(CWBetragBasis betrag, bool bAbziehen);
    void Multipliziere(double dFaktor);

    friend double operator/(const CWBetragBasis & a, const CWBetragBasis & b);

    std::int64_t m_iWert = 0; // hundred-millionths of euro or marks, from -(2^63 - 1) on; 0 when empty
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
    // dWert euro or marks; empty for NaN.
    CDBetrag(double dWert, char cWaehrung) : CWBetragBasis(dWert, cWaehrung) {}
    // So many hundred-millionths.
    [[nodiscard]] static constexpr CDBetrag AusEinheiten(std::int64_t iEinheiten, char cWaehrung) {
        return {iEinheiten == INT64_MIN ? -INT64_MAX : iEinheiten, cWaehrung, true};
    }

    // Cuts to whole cents towards zero, in place.
    CDBetrag & RoundDown();

    CDBetrag & operator+=(const CWBetragBasis & betrag);
    [[nodiscard]] CDBetrag operator+(const CWBetragBasis & betrag) const;
    [[nodiscard]] CDBetrag operator-(const CWBetragBasis & betrag) const;
    CDBetrag & operator*=(double dFaktor);
    [[nodiscard]] CDBetrag operator*(double dFaktor) const;
    // Through 0 the amount stays as it is.
    CDBetrag & operator/=(double dTeiler);

private:
    using CWBetragBasis::CWBetragBasis;
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

} // namespace orvostat
