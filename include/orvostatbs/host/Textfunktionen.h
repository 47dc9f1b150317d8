// Small functions on texts and numbers that the whole system shares. Positions count from 0; nothing here fails.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>
#include <vector>

namespace orvostat {

// The part from iPos on, iLen characters or, for -1, all. Cut to what is there: a position behind the end gives the
// empty text, one before the start counts as 0.
[[nodiscard]] CString GetMidStr(const CString & s, int iPos, int iLen = -1);

// Without the blanks at both ends, at the right end, anywhere. Only the blank itself counts here; the members of
// CString take off tabs and line ends too.
[[nodiscard]] CString Trim(const CString & s);
[[nodiscard]] CString TrimRight(const CString & s);
[[nodiscard]] CString RemoveBlanks(const CString & s);

// A text of iLen blanks, below 1 the empty text.
[[nodiscard]] CString Blank(int iLen);
// The text is empty or has only blanks.
[[nodiscard]] bool Blank(const CString & s);

// Exactly iLen characters, below 1 none: filled up or cut. RightFix keeps the right end of the text and fills at the
// left; LeftFix keeps the left end and fills at the right.
[[nodiscard]] CString RightFix(const CString & s, int iLen, char cFill = ' ');
[[nodiscard]] CString LeftFix(const CString & s, int iLen, char cFill = ' ');

// Puts cNew in every place of cOld, in place. The mode has no effect.
void ReplaceCharWith(CString & s, char cOld, char cNew, int iMode = 1);

// The parts between the separators, replacing what v held: n separators give n + 1 parts, empty ones included; the
// empty text gives none.
void SeparatedStrToVec(const CString & s, char cSep, std::vector<CString> & v);

// Decimal digits with "-" in front of a negative number.
[[nodiscard]] CString itoc(std::int64_t iValue);
// "0" to "9".
[[nodiscard]] constexpr bool ismxdigit(char c) { return c >= '0' && c <= '9'; }

// iZahl * iZaehler / iNenner with a product of 64 bits, to the nearest integer, halves away from zero; -1 for a
// denominator of 0 and for a result beyond 32 bits.
[[nodiscard]] int MulDiv(int iZahl, int iZaehler, int iNenner);

// The value added tax of a stored key in percent: "" and "0" are 0, "h" and "7" the reduced rate 7, "g" and "1" the
// full rate 19; other digits are their own number (rates of former years), anything else is 0. Blanks at the ends
// do not count.
[[nodiscard]] int UStKey2MwStSatz(const CString & sKey);

// A birth date YYYYMMDD that was made from a two-digit year with "20" in front: after today it goes back 100 years,
// a 29 February that this year lacks to the 28th. Any other text comes back as it is.
[[nodiscard]] CString CorrectGebDate(const CString & sDatum);

// The file exists; a directory of the name is none. For the path's form see Umgebung.h.
[[nodiscard]] bool FileExists(const CString & sPfad);

class CMxField {
public:
    // A key whose byte order is the order in which a German reader looks for names: capitals, every letter with a
    // mark as its base letter, "ß" as "SS", "Æ" as "AE"; anything else stays. Cut to iLen characters of the key.
    [[nodiscard]] static CString MakeKY(const CString & s, int iLen);
};

// The number at the start of a text: blanks, a sign, digits; what follows is not read. No number is 0, a number
// beyond the type is the type's end. Neither allocates.
[[nodiscard]] int Zahl(const CString & s);
[[nodiscard]] std::int64_t Zahl64(const CString & s);

// Column iIndex, from 0, of a text of columns iBreite wide, as the records pack their amounts: empty behind the end,
// the first one for a negative index.
[[nodiscard]] CString GepackterBetrag(const CString & sBetraege, int iIndex, int iBreite);

// Fits a number's text into a picture of the same length as the result, from right to left: "X" takes a digit or
// "0", "Z" a digit or a blank, "V" the sign, "." stays as long as digits are left and is a blank beyond them; any
// other character stands for itself. Characters of the text that are no digits are passed over, and a "-" among
// them is the sign. Digits that find no place are dropped: "4711" in "ZX" is "11".
[[nodiscard]] CString BildeBild(const CString & sWert, const CString & sBild);

} // namespace orvostat
