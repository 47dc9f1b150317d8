#include "orvostatbs/host/Textfunktionen.h"

#include "support/Rekorder.h"

#include <filesystem>
#include <fstream>
#include <limits>

namespace {

using namespace orvostat;

constexpr int INT_GROSS = std::numeric_limits<int>::max();
constexpr int INT_KLEIN = std::numeric_limits<int>::min();

TEST(Textfunktionen, GetMidStrWirdAufDasVorhandeneGekuerzt) {
    const struct {
        int iPos, iLen;
        CString sErwartet;
    } vFaelle[] = {{0, 3, "abc"}, {2, 2, "cd"},  {4, 9, "e"},        {2, -1, "cde"},
                   {5, 1, ""},    {6, -1, ""},   {INT_GROSS, 1, ""}, {1, INT_GROSS, "bcde"},
                   {0, 0, ""},    {-1, 2, "ab"}, {1, -2, ""},        {INT_KLEIN, -1, "abcde"}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(GetMidStr("abcde", fall.iPos, fall.iLen), fall.sErwartet) << fall.iPos << ',' << fall.iLen;
}

TEST(Textfunktionen, BlanksAnDenEndenUndUeberall) {
    const struct {
        CString sText, sTrim, sTrimRight, sRemoveBlanks;
        bool bBlank;
    } vFaelle[] = {
        {"", "", "", "", true},
        {"    ", "", "", "", true},
        {" a b ", "a b", " a b", "ab", false},
        {"e     0", "e     0", "e     0", "e0", false},
        {"\ta\n", "\ta\n", "\ta\n", "\ta\n", false},
        {" Frau Müller-Öhm "_t, "Frau Müller-Öhm"_t, " Frau Müller-Öhm"_t, "FrauMüller-Öhm"_t, false},
    };
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(Trim(fall.sText), fall.sTrim);
        EXPECT_EQ(TrimRight(fall.sText), fall.sTrimRight);
        EXPECT_EQ(RemoveBlanks(fall.sText), fall.sRemoveBlanks);
        EXPECT_EQ(Blank(fall.sText), fall.bBlank) << fall.sText.Utf8();
    }
    EXPECT_EQ(Blank(3), CString("   "));
    EXPECT_EQ(Blank(-1), CString());
}

TEST(Textfunktionen, FixFuelltUndSchneidetAufDieLaenge) {
    const struct {
        CString sText;
        int iLen;
        char cFill;
        CString sRechts, sLinks;
    } vFaelle[] = {
        {"5", 3, ' ', "  5", "5  "},
        {"", 2, '0', "00", "00"},
        {"12345", 3, ' ', "345", "123"},
        {"123", 3, 'x', "123", "123"},
        {"12", 0, ' ', "", ""},
        {"12", INT_KLEIN, ' ', "", ""},
        {"4711", 10, ' ', "      4711", "4711      "},
    };
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(RightFix(fall.sText, fall.iLen, fall.cFill), fall.sRechts);
        EXPECT_EQ(LeftFix(fall.sText, fall.iLen, fall.cFill), fall.sLinks);
    }
    EXPECT_EQ(RightFix("7", 2), CString(" 7"));
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
    } vFaelle[] = {{"", {}},
                   {"a", {"a"}},
                   {"a;b", {"a", "b"}},
                   {";", {"", ""}},
                   {"a;;Müller;"_t, {"a", "", "Müller", ""}}};
    for (const auto & fall : vFaelle) {
        std::vector<CString> v = {"alt"};
        SeparatedStrToVec(fall.sText, ';', v);
        EXPECT_EQ(v, fall.vErwartet) << fall.sText.Utf8();
    }
    std::vector<CString> v = {"ein langer Text;ein zweiter"_t};
    SeparatedStrToVec(v[0], ';', v); // the text to split is an element of the result
    EXPECT_EQ(v, (std::vector<CString>{"ein langer Text"_t, "ein zweiter"_t}));
}

TEST(Textfunktionen, ZahlLiestDenAnfang) {
    const struct {
        CString sText;
        int iZahl;
        std::int64_t iZahl64;
    } vFaelle[] = {
        {"", 0, 0},
        {"007", 7, 7},
        {"  -12 3", -12, -12},
        {"\t\n+5", 5, 5},
        {"- 5", 0, 0},
        {"+-5", 0, 0},
        {"12,5", 12, 12},
        {"a1", 0, 0},
        {"2147483647", INT_GROSS, 2147483647},
        {"2147483648", INT_GROSS, 2147483648},
        {"-2147483648", INT_KLEIN, -2147483648},
        {"-2147483649", INT_KLEIN, -2147483649},
        {"9223372036854775807"_t, INT_GROSS, 9223372036854775807},
        {"9223372036854775808"_t, INT_GROSS, 9223372036854775807},
        {"99999999999999999999999999"_t, INT_GROSS, 9223372036854775807},
        {"-9223372036854775808"_t, INT_KLEIN, std::numeric_limits<std::int64_t>::min()},
        {"-9223372036854775809"_t, INT_KLEIN, std::numeric_limits<std::int64_t>::min()},
        {"\u00B2", 0, 0}, // a superscript is no digit
    };
    for (const auto & fall : vFaelle) {
        EXPECT_EQ(Zahl(fall.sText), fall.iZahl) << fall.sText.Utf8();
        EXPECT_EQ(Zahl64(fall.sText), fall.iZahl64) << fall.sText.Utf8();
    }
}

TEST(Textfunktionen, ItocSchreibtDezimal) {
    EXPECT_EQ(itoc(0), CString("0"));
    EXPECT_EQ(itoc(-120), CString("-120"));
    EXPECT_EQ(itoc(INT_KLEIN), CString("-2147483648"));
    EXPECT_EQ(itoc(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808"_t);
}

TEST(Textfunktionen, MulDivRundetHaelftenVonNullWeg) {
    const struct {
        int iZahl, iZaehler, iNenner, iErwartet;
    } vFaelle[] = {
        {10000, 1, 3, 3333},
        {10000, 2, 3, 6667},
        {1, 1, 2, 1},
        {1, -1, 2, -1},
        {-1, -1, -2, -1},
        {1, 49, 100, 0},
        {1, -250, 100, -3},
        {1, -249, 100, -2},
        {7, 5, -10, -4},
        {0, 5, -10, 0},
        {INT_GROSS, INT_GROSS, INT_GROSS, INT_GROSS}, // the product needs 64 bits
        {INT_KLEIN, INT_KLEIN, INT_KLEIN, INT_KLEIN},
        {INT_KLEIN, 1, -1, -1},
        {INT_GROSS, 2, 1, -1},
        {5, 3, 0, -1},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(MulDiv(fall.iZahl, fall.iZaehler, fall.iNenner), fall.iErwartet)
            << fall.iZahl << " * " << fall.iZaehler << " / " << fall.iNenner;
}

TEST(Textfunktionen, MwStSaetze) {
    const struct {
        CString sKey;
        int iSatz;
    } vFaelle[] = {{"", 0},    {" ", 0},   {"0", 0},   {"h", 7}, {"7", 7},  {"g", 19}, {"1", 19},
                   {"1 ", 19}, {"16", 16}, {"19", 19}, {"x", 0}, {"-5", 0}, {"7x", 0}};
    for (const auto & fall : vFaelle)
        EXPECT_EQ(UStKey2MwStSatz(fall.sKey), fall.iSatz) << fall.sKey.Utf8();
}

TEST(Textfunktionen, BildVonRechtsNachLinks) {
    const struct {
        CString sWert, sBild, sErwartet;
    } vFaelle[] = {
        {"4711", "ZZZZZZZZZX"_t, "      4711"},
        {"", "ZZZZZZZZZX"_t, "         0"},
        {"4711   ", "ZZZZZZZZZX"_t, "      4711"},
        {"123456789012", "ZZZZZZZZZX"_t, "3456789012"},
        {"7", "ZX", " 7"},
        {"345", "ZX", "45"},
        {"", "XXX", "000"},
        {"1-2a3", "ZZZX", " 123"}, // what is no digit takes no place
        {"-12", "VZZX", "- 12"},
        {"12-", "VZZX", "- 12"},
        {"12", "VZX", " 12"},
        {"512", "VZX", " 12"}, // the sign takes the place of a digit
        {"-512", "VXZX", "-512"},
        {"-512", "XVXX", "0 12"}, // a sign further left than its place is not seen yet
        {"12345", "ZZZ.XX", "123.45"},
        {"45", "ZZZ.XX", "    45"}, // nothing is left of the point
        {"145", "ZZZ.XX", "  1.45"},
        {"1234", "XX/XX", "12/34"},
        {"12", "X,X-a9", "1,2-a9"}, // other characters stand for themselves
        {"12", "", ""},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(BildeBild(fall.sWert, fall.sBild), fall.sErwartet)
            << fall.sWert.Utf8() << " in " << fall.sBild.Utf8();
}

TEST(Textfunktionen, SortierschluesselOrdnetNamenWieEinLeser) {
    const struct {
        CString sName, sSchluessel;
    } vFaelle[] = {
        // in the order of a list
        {"Ärmel", "ARMEL"},
        {"Arndt", "ARNDT"},
        {"Aßmann", "ASSMANN"},
        {"Assmus", "ASSMUS"},
        {"de Boer", "DE BOER"},
        {"Mueller-Lüd"_t, "MUELLER-LUD"_t},
        {"Müller, Anna"_t, "MULLER, ANNA"_t},
        {"Müllers", "MULLERS"},
        {"Œhler", "OEHLER"},
        {"Öhm", "OHM"},
        {"Østerby", "OSTERBY"},
        {"ÿsaye", "YSAYE"},
        {"Žák", "ZAK"},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(CMxField::MakeKY(fall.sName, INT_GROSS), fall.sSchluessel);

    EXPECT_EQ(CMxField::MakeKY("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸŠŽŒ"_t, INT_GROSS),
              "AAAAAAAECEEEEIIIIDNOOOOOOUUUUYTHYSZOE"_t);
    EXPECT_EQ(CMxField::MakeKY("àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿšžœß"_t, INT_GROSS),
              "AAAAAAAECEEEEIIIIDNOOOOOOUUUUYTHYSZOESS"_t);
    EXPECT_EQ(CMxField::MakeKY("a×b÷c€[_]"_t, INT_GROSS), "A×B÷C€[_]"_t);
}

TEST(Textfunktionen, SortierschluesselWirdGekuerzt) {
    EXPECT_EQ(CMxField::MakeKY("Strauß", 6), CString("STRAUS")); // also within a letter that becomes two
    EXPECT_EQ(CMxField::MakeKY("Strauß", 7), CString("STRAUSS"));
    EXPECT_EQ(CMxField::MakeKY("Strauß", 0), CString());
    EXPECT_EQ(CMxField::MakeKY("Strauß", -1), CString());
}

class TextfunktionenAmHost : public CHostTest {}; // today is 1 July 2024

TEST_F(TextfunktionenAmHost, GeburtsdatumLiegtNichtInDerZukunft) {
    const struct {
        CString sDatum, sErwartet;
    } vFaelle[] = {
        {"20240701", "20240701"},
        {"20240702", "19240702"},
        {"20991231", "19991231"},
        {"19560101", "19560101"},
        {"", ""},
        {"20991301", "20991301"},
        {"209912", "209912"},
        {"99991231", "98991231"},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(CorrectGebDate(fall.sDatum), fall.sErwartet);

    m_uhr.m_zeit = {1999, 12, 31, 8, 0};
    EXPECT_EQ(CorrectGebDate("20000229"), CString("19000228")); // 1900 was no leap year
}

TEST_F(TextfunktionenAmHost, FileExistsKenntDateienUndKeineVerzeichnisse) {
    const CString sDatei = GetOrvoDataPath() + "Prüfung 1.SVE"_t;
    EXPECT_FALSE(FileExists(sDatei));
    std::ofstream(Dateipfad(sDatei)) << "x";
    EXPECT_TRUE(FileExists(sDatei));
    EXPECT_TRUE(std::filesystem::exists(m_verzeichnis / "daten" / "Prüfung 1.SVE"));
    EXPECT_FALSE(FileExists(GetOrvoDataPath()));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(sDatei + "\\x"));
}

} // namespace
