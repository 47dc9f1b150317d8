#include "orvostatbs/host/Textfunktionen.h"

#include "support/Rekorder.h"

#include <filesystem>
#include <fstream>
#include <limits>

namespace orvostat {

namespace {

constexpr int INT_GROSS = std::numeric_limits<int>::max();
constexpr int INT_KLEIN = std::numeric_limits<int>::min();

struct SZahl {
    CString sText;
    int iZahl;
};

TEST(Textfunktionen, GetMidStrWirdAufDasVorhandeneGekuerzt) {
    const struct {
        int iPos, iLen;
        CString sErwartet;
    } vFaelle[] = {{2, 2, "cd"},           {4, 9, "e"},   {2, -1, "cde"}, {5, 1, ""}, {0, 0, ""},
                   {1, INT_GROSS, "bcde"}, {-1, 2, "ab"}, {1, -2, ""}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(GetMidStr("abcde", fall.iPos, fall.iLen), fall.sErwartet) << fall.iPos << ',' << fall.iLen;
}

TEST(Textfunktionen, BlanksAnDenEndenUndUeberall) {
    const CString s = " Frau Müller-Öhm "_t;
    EXPECT_EQ(Trim(s), "Frau Müller-Öhm"_t);
    EXPECT_EQ(TrimRight(s), " Frau Müller-Öhm"_t);
    EXPECT_EQ(RemoveBlanks(s), "FrauMüller-Öhm"_t);
    EXPECT_EQ(Trim("    ") + TrimRight("    ") + RemoveBlanks("    "), CString());
    EXPECT_EQ(Trim("\ta\n") + TrimRight("\ta\n") + RemoveBlanks("\ta\n"), "\ta\n\ta\n\ta\n"_t);
    EXPECT_TRUE(Blank("") && Blank("    "));
    EXPECT_FALSE(Blank(" a ") || Blank("\t"));
}

TEST(Textfunktionen, FixFuelltUndSchneidetAufDieLaenge) {
    const struct {
        CString sText;
        int iLen;
        char cFill;
        CString sRechts, sLinks;
    } vFaelle[] = {{"5", 3, ' ', "  5", "5  "},   {"", 2, '0', "00", "00"}, {"12345", 3, ' ', "345", "123"},
                   {"123", 3, 'x', "123", "123"}, {"12", 0, ' ', "", ""},   {"12", INT_KLEIN, ' ', "", ""}};
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(RightFix(fall.sText, fall.iLen, fall.cFill), fall.sRechts);
        EXPECT_EQ(LeftFix(fall.sText, fall.iLen, fall.cFill), fall.sLinks);
    }
}

TEST(Textfunktionen, ReplaceCharWithErsetztJedeStelle) {
    CString s = ";a;;b;";
    ReplaceCharWith(s, ';', '|', 1);
    EXPECT_EQ(s, CString("|a||b|"));
}

TEST(Textfunktionen, SeparatedStrToVecBehaeltLeereTeile) {
    const struct {
        CString sText;
        std::vector<CString> vErwartet;
    } vFaelle[] = {{"", {}}, {"a", {"a"}}, {";", {"", ""}}, {"a;;Müller;"_t, {"a", "", "Müller", ""}}};
    for (const auto & fall : vFaelle) {
        std::vector<CString> v = {"alt"};
        SeparatedStrToVec(fall.sText, ';', v);
        EXPECT_EQ(v, fall.vErwartet) << fall.sText.Utf8();
    }
    std::vector<CString> v = {"ein langer Text;ein zweiter"_t};
    SeparatedStrToVec(v[0], ';', v); // the text to split is an element of the result
    EXPECT_EQ(v, (std::vector<CString>{"ein langer Text"_t, "ein zweiter"_t}));
}

TEST(Textfunktionen, ZahlLiestDenAnfangUndItocSchreibtIhn) {
    constexpr std::int64_t KLEINSTE = std::numeric_limits<std::int64_t>::min();
    const struct {
        CString sText;
        int iZahl;
        std::int64_t iZahl64;
    } vGross[] = {{"2147483648", INT_GROSS, 2147483648},
                  {"-2147483649", INT_KLEIN, -2147483649},
                  {"9223372036854775808"_t, INT_GROSS, 9223372036854775807},
                  {"99999999999999999999999999"_t, INT_GROSS, 9223372036854775807},
                  {"-9223372036854775809"_t, INT_KLEIN, KLEINSTE}};
    for (const auto & fall : vGross) {
        EXPECT_EQ(Zahl(fall.sText), fall.iZahl) << fall.sText.Utf8();
        EXPECT_EQ(Zahl64(fall.sText), fall.iZahl64) << fall.sText.Utf8();
    }
    const SZahl vKlein[] = {{"", 0},    {"007", 7},   {"  -12 3", -12}, {"\t\n+5", 5}, {"- 5", 0},
                            {"+-5", 0}, {"12,5", 12}, {"a1", 0},        {"\u00B2", 0}};
    for (const auto & fall : vKlein)
        EXPECT_EQ(Zahl(fall.sText), fall.iZahl) << fall.sText.Utf8();
    EXPECT_EQ(itoc(-120), CString("-120"));
    EXPECT_EQ(itoc(KLEINSTE), "-9223372036854775808"_t);
}

TEST(Textfunktionen, MulDivRundetHaelftenVonNullWeg) {
    const struct {
        int iZahl, iZaehler, iNenner, iErwartet;
    } vFaelle[] = {{10000, 1, 3, 3333}, {10000, 2, 3, 6667}, {1, 1, 2, 1},   {1, -1, 2, -1}, {-1, -1, -2, -1},
                   {1, -249, 100, -2},  {7, 5, -10, -4},     {0, 5, -10, 0}, {5, 3, 0, -1}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(MulDiv(fall.iZahl, fall.iZaehler, fall.iNenner), fall.iErwartet)
            << fall.iZahl << " * " << fall.iZaehler << " / " << fall.iNenner;
    EXPECT_EQ(MulDiv(INT_GROSS, INT_GROSS, INT_GROSS), INT_GROSS) << "the product needs 64 bits";
    EXPECT_EQ(MulDiv(INT_KLEIN, INT_KLEIN, INT_KLEIN), INT_KLEIN);
    EXPECT_EQ(MulDiv(INT_KLEIN, 1, -1), -1);
    EXPECT_EQ(MulDiv(INT_GROSS, 2, 1), -1);
}

TEST(Textfunktionen, MwStSaetze) {
    const SZahl vFaelle[] = {{"", 0},    {" ", 0},   {"h", 7}, {"7", 7},  {"g", 19},
                             {"1 ", 19}, {"16", 16}, {"x", 0}, {"-5", 0}, {"7x", 0}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(UStKey2MwStSatz(fall.sText), fall.iZahl) << fall.sText.Utf8();
}

TEST(Textfunktionen, BildVonRechtsNachLinks) {
    const struct {
        CString sWert, sBild, sErwartet;
    } vFaelle[] = {{"4711 ", "ZZZZZX", "  4711"},
                   {"1234567", "ZZZX", "4567"},
                   {"", "ZXX", " 00"},
                   {"1-2a3", "ZZZX", " 123"}, // what is no digit takes no place
                   {"-12", "VZZX", "- 12"},
                   {"12-", "VZZX", "- 12"},
                   {"512", "VZX", " 12"},    // the sign takes the place of a digit
                   {"-512", "XVXX", "0 12"}, // a sign further left than its place is not seen yet
                   {"123", "ZZ.XX", " 1.23"},
                   {"45", "ZZ.XX", "   45"}, // nothing is left of the point
                   {"12", "X,X-a9", "1,2-a9"}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(BildeBild(fall.sWert, fall.sBild), fall.sErwartet)
            << fall.sWert.Utf8() << " in " << fall.sBild.Utf8();
}

TEST(Textfunktionen, SortierschluesselIstInGrundbuchstabenUndGekuerzt) {
    const auto Schluessel = [](const CString & s) { return CMxField::MakeKY(s, INT_GROSS); };
    EXPECT_EQ(Schluessel("Müller, Anna"_t), "MULLER, ANNA"_t);
    EXPECT_EQ(Schluessel("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸŠŽŒ"_t), "AAAAAAAECEEEEIIIIDNOOOOOOUUUUYTHYSZOE"_t);
    EXPECT_EQ(Schluessel("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿšžœß"_t),
              "AAAAAAAECEEEEIIIIDNOOOOOOUUUUYTHYSZOESS"_t);
    EXPECT_EQ(Schluessel("a×b÷c€[_]"_t), "A×B÷C€[_]"_t);
    EXPECT_EQ(CMxField::MakeKY("Strauß", 6), CString("STRAUS")); // also within a letter that becomes two
    EXPECT_EQ(CMxField::MakeKY("Strauß", 7), CString("STRAUSS"));
    EXPECT_EQ(CMxField::MakeKY("Strauß", -1), CString());
}

class TextfunktionenAmHost : public CHostTest {}; // today is 1 July 2024

TEST_F(TextfunktionenAmHost, GeburtsdatumLiegtNichtInDerZukunft) {
    EXPECT_EQ(CorrectGebDate("20240702"), CString("19240702"));
    EXPECT_EQ(CorrectGebDate("99991231"), CString("98991231"));
    for (const CString & s : {CString("20240701"), CString("20991301"), CString("209912"), CString()})
        EXPECT_EQ(CorrectGebDate(s), s);
    m_uhr.m_zeit = {1999, 12, 31, 8, 0};
    EXPECT_EQ(CorrectGebDate("20000229"), CString("19000228")); // 1900 was no leap year
    m_uhr.m_zeit = {50, 1, 1, 8, 0};
    EXPECT_EQ(CorrectGebDate("01010501"), CString("00010501"));
    EXPECT_EQ(CorrectGebDate("01000501"), CString("01000501")); // there was no year 0
}

TEST_F(TextfunktionenAmHost, FileExistsKenntDateienUndKeineVerzeichnisse) {
    const CString sDatei = GetOrvoDataPath() + "Prüfung 1.SVE"_t;
    EXPECT_FALSE(FileExists(sDatei));
    std::ofstream(m_verzeichnis / "daten" / "Prüfung 1.SVE") << "x";
    EXPECT_TRUE(FileExists(sDatei));
    EXPECT_FALSE(FileExists(GetOrvoDataPath()));
    EXPECT_FALSE(FileExists(""));
}

} // namespace

} // namespace orvostat
