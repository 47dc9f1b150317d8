#include "orvostatbs/host/Textfunktionen.h"

#include "support/Rekorder.h"
#include "support/Wert.h"

#include <fstream>
#include <limits>
#include <utility>

namespace orvostat {

namespace {

constexpr int INT_GROSS = std::numeric_limits<int>::max();
constexpr int INT_KLEIN = std::numeric_limits<int>::min();

TEST(Textfunktionen, TeileUndBlanks) {
    const auto Mitte = [](int iPos, int iLen) { return GetMidStr("abcde", iPos, iLen); };
    EXPECT_EQ(Werte(Mitte(2, 2), Mitte(4, 9), Mitte(2, -1), Mitte(5, 1), Mitte(1, INT_GROSS), Mitte(-1, 2),
                    Mitte(1, -2)),
              "cd|e|cde||bcde|ab|");
    for (const auto & [sText, sSoll] :
         {std::pair(" Frau Müller-Öhm "_t, "Frau Müller-Öhm| Frau Müller-Öhm|FrauMüller-Öhm"),
          {CString("    "), "||"},
          {CString("\ta\n"), "\ta\n|\ta\n|\ta\n"}})
        EXPECT_EQ(Werte(Trim(sText), TrimRight(sText), RemoveBlanks(sText)), sSoll);
    EXPECT_TRUE(Blank("") && Blank("    ") && !Blank(" a ") && !Blank("\t"));
    const auto Fix = [](const char * p, int iLen, char cFill) {
        return Werte(RightFix(CString(p), iLen, cFill), LeftFix(CString(p), iLen, cFill));
    };
    EXPECT_EQ(Werte(Fix("5", 3, ' '), Fix("", 2, '0'), Fix("12345", 3, ' '), Fix("123", 3, 'x'),
                    Fix("12", INT_KLEIN, ' ')),
              "  5|5  |00|00|345|123|123|123||");
    CString s = ";a;;b;";
    ReplaceCharWith(s, ';', '|', 1);
    EXPECT_EQ(s, CString("|a||b|"));
    std::vector<CString> v = {"alt"};
    const auto Geteilt = [&v](const CString & sText) {
        return SeparatedStrToVec(sText, ';', v), Elemente(v) + "/" + Wert(v.size());
    };
    EXPECT_EQ(Werte(Geteilt(CString()), Geteilt("a"), Geteilt(";"), Geteilt("a;;Müller;"_t)),
              "/|a/1|,/2|a,,Müller,/4");
    v = {"ein langer Text;ein zweiter"_t};
    SeparatedStrToVec(v[0], ';', v); // the text to split is an element of the result
    EXPECT_EQ(Elemente(v), "ein langer Text,ein zweiter");
}

TEST(Textfunktionen, ZahlLiestDenAnfangUndItocSchreibtIhn) {
    const auto Gelesen = [](const char * p) { return Werte(Zahl(CString(p)), Zahl64(CString(p))); };
    EXPECT_EQ(Werte(Gelesen("2147483648"), Gelesen("-2147483649"), Gelesen("9223372036854775808"),
                    Gelesen("99999999999999999999999999"), Gelesen("-9223372036854775809")),
              "2147483647|2147483648|-2147483648|-2147483649|2147483647|9223372036854775807|2147483647|"
              "9223372036854775807|"
              "-2147483648|-9223372036854775808");
    EXPECT_EQ(Werte(Zahl(""), Zahl("007"), Zahl("  -12 3"), Zahl("\t\n+5"), Zahl("- 5"), Zahl("+-5"),
                    Zahl("12,5"), Zahl("a1"), Zahl("\u00B2")),
              "|7|-12|5|||12||");
    EXPECT_EQ(Werte(itoc(-120), itoc(std::numeric_limits<std::int64_t>::min())), "-120|-9223372036854775808");
}

TEST(Textfunktionen, MulDivRundetHaelftenVonNullWeg) {
    EXPECT_EQ(Werte(MulDiv(10000, 1, 3), MulDiv(10000, 2, 3), MulDiv(1, 1, 2), MulDiv(1, -1, 2),
                    MulDiv(-1, -1, -2), MulDiv(1, -249, 100), MulDiv(7, 5, -10), MulDiv(0, 5, -10),
                    MulDiv(5, 3, 0)),
              "3333|6667|1|-1|-1|-2|-4||-1");
    EXPECT_EQ(MulDiv(INT_GROSS, INT_GROSS, INT_GROSS), INT_GROSS) << "the product needs 64 bits";
    EXPECT_EQ(MulDiv(INT_KLEIN, INT_KLEIN, INT_KLEIN), INT_KLEIN);
    EXPECT_TRUE(MulDiv(INT_KLEIN, 1, -1) == -1 && MulDiv(INT_GROSS, 2, 1) == -1);
}

TEST(Textfunktionen, MwStSaetze) {
    const auto Satz = [](const char * p) { return UStKey2MwStSatz(CString(p)); };
    EXPECT_EQ(Werte(Satz(" "), Satz("h"), Satz("7"), Satz("g"), Satz("1 "), Satz("16"), Satz("x"), Satz("-5"),
                    Satz("7x")),
              "|7|7|19|19|16|||");
}

// What is no digit takes no place; the sign takes a digit's place, and further left than its own it is not seen yet.
TEST(Textfunktionen, BildVonRechtsNachLinks) {
    const auto Bild = [](const char * pWert, const char * pBild) {
        return BildeBild(CString(pWert), CString(pBild));
    };
    EXPECT_EQ(Werte(Bild("4711 ", "ZZZZZX"), Bild("1234567", "ZZZX"), Bild("", "ZXX"), Bild("1-2a3", "ZZZX"),
                    Bild("-12", "VZZX"), Bild("12-", "VZZX"), Bild("512", "VZX"), Bild("-512", "XVXX"),
                    Bild("123", "ZZ.XX"), Bild("45", "ZZ.XX"), Bild("12", "X,X-a9")),
              "  4711|4567| 00| 123|- 12|- 12| 12|0 12| 1.23|   45|1,2-a9");
}

TEST(Textfunktionen, SortierschluesselIstInGrundbuchstabenUndGekuerzt) {
    const auto Schluessel = [](const CString & s, int i = INT_GROSS) { return CMxField::MakeKY(s, i); };
    const std::string sGrund = "AAAAAAAECEEEEIIIIDNOOOOOOUUUUYTHYSZOE";
    EXPECT_EQ(Wert(Schluessel("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸŠŽŒ"_t)), sGrund);
    EXPECT_EQ(Wert(Schluessel("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿšžœß"_t)), sGrund + "SS");
    // The length may end within a letter that becomes two.
    EXPECT_EQ(Werte(Schluessel("az×b÷c€[_], "_t), Schluessel("\u00A0"), Schluessel("Strauß", 6),
                    Schluessel("Strauß", 7), Schluessel("Strauß", -1)),
              "AZ×B÷C€[_], | |STRAUS|STRAUSS|");
}

class TextfunktionenAmHost : public CHostTest {}; // today is 1 July 2024

TEST_F(TextfunktionenAmHost, GeburtsdatumLiegtNichtInDerZukunft) {
    const auto Richtig = [](const char * p) { return CorrectGebDate(CString(p)); };
    EXPECT_EQ(Werte(Richtig("20240702"), Richtig("99991231"), Richtig("20240701"), Richtig("20991301"),
                    Richtig("209912"), Richtig("")),
              "19240702|98991231|20240701|20991301|209912|");
    m_uhr.m_zeit = {1999, 12, 31, 8, 0};
    EXPECT_EQ(Wert(Richtig("20000229")), "19000228"); // 1900 was no leap year
    m_uhr.m_zeit = {50, 1, 1, 8, 0};
    EXPECT_EQ(Werte(Richtig("01010501"), Richtig("01000501")), "00010501|01000501"); // there was no year 0
}

TEST_F(TextfunktionenAmHost, FileExistsKenntDateienUndKeineVerzeichnisse) {
    const CString sDatei = GetOrvoDataPath() + "Prüfung 1.SVE"_t;
    EXPECT_FALSE(FileExists(sDatei) || FileExists(GetOrvoDataPath()) || FileExists(""));
    std::ofstream(m_verzeichnis / "daten" / "Prüfung 1.SVE") << "x";
    EXPECT_TRUE(FileExists(sDatei));
}

} // namespace

} // namespace orvostat
