#include "orvostatbs/host/CString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::string_literals;

CString Bytes(std::string_view s) { return CString(s); }
std::string Lies(const CString & s) { return std::string(s.Sicht().Text()); }

// One text has one form, whatever road led to it: it must be indistinguishable from a fresh one.
void PruefeText(const CString & s, const std::string & sSoll) {
    const CString frisch = Bytes(sSoll);
    ASSERT_EQ(Lies(s), sSoll);
    ASSERT_EQ(s.Sicht().c_str()[sSoll.size()], '\0');
    ASSERT_EQ(s.GetLength(), static_cast<int>(sSoll.size()));
    ASSERT_EQ(s.IsEmpty(), sSoll.empty());
    ASSERT_TRUE(s == frisch && s.Compare(frisch) == 0 && s.Hash() == frisch.Hash()) << "'" << sSoll << "'";
    ASSERT_EQ(s.Erstes(), sSoll.empty() ? '\0' : sSoll[0]);
    ASSERT_EQ(s.GetAt(s.GetLength() - 1), sSoll.empty() ? '\0' : sSoll.back());
}

// Every operation at its ends. Left of the arrow the text before, right of it the text after; UTF-8.
TEST(CStringTest, OperationenAnIhrenEnden) {
    struct SFall {
        const char * pVorher;
        CString (*pOperation)(CString);
        const char * pNachher;
    };
    const SFall faelle[] = {
        {"Zähne", [](CString s) { return s.Left(2); }, "Zä"},
        {"Zähne", [](CString s) { return s.Left(0); }, ""},
        {"Zähne", [](CString s) { return s.Left(-1); }, ""},
        {"Zähne", [](CString s) { return s.Left(6); }, "Zähne"},
        {"", [](CString s) { return s.Left(1); }, ""},
        {"Zähne", [](CString s) { return s.Right(2); }, "ne"},
        {"Zähne", [](CString s) { return s.Right(-1); }, ""},
        {"Zähne", [](CString s) { return s.Right(2147483647); }, "Zähne"},
        {"Zähne", [](CString s) { return s.Mid(4); }, "e"},
        {"Zähne", [](CString s) { return s.Mid(5); }, ""},
        {"Zähne", [](CString s) { return s.Mid(99); }, ""},
        {"Zähne", [](CString s) { return s.Mid(-3); }, "Zähne"},
        {"Zähne", [](CString s) { return s.Mid(1, 3); }, "ähn"},
        {"Zähne", [](CString s) { return s.Mid(1, 2147483647); }, "ähne"},
        {"Zähne", [](CString s) { return s.Mid(1, -1); }, ""},
        {"Zähne", [](CString s) { return s.Mid(-2147483647 - 1, 1); }, "Z"},
        {"20240131", [](CString s) { return s.Left(4); }, "2024"},
        {"20240131", [](CString s) { return s.Right(7); }, "0240131"},
        {"Behandler 20240131", [](CString s) { return s.Mid(10); }, "20240131"},

        {" \t\r\n\v\fa b\n ", [](CString s) { return s.Trim(); }, "a b"},
        {" \t\na b\n ", [](CString s) { return s.TrimLeft(); }, "a b\n "},
        {" \t\na b\n ", [](CString s) { return s.TrimRight(); }, " \t\na b"},
        {"   \t   \r\n   ", [](CString s) { return s.Trim(); }, ""},
        {"\u00A0a\u00A0", [](CString s) { return s.Trim(); }, "\u00A0a\u00A0"},
        {"", [](CString s) { return s.Trim().TrimLeft().TrimRight().TrimRight('x'); }, ""},
        {"a\\b\\\\", [](CString s) { return s.TrimRight('\\'); }, "a\\b"},
        {"\\\\", [](CString s) { return s.TrimRight('\\'); }, ""},
        {"a ", [](CString s) { return s.TrimRight('\\'); }, "a "},

        {"abc", [](CString s) { return s.Delete(1), s; }, "ac"},
        {"abc", [](CString s) { return s.Delete(0, 3), s; }, ""},
        {"abc", [](CString s) { return s.Delete(2, 2147483647), s; }, "ab"},
        {"abc", [](CString s) { return s.Delete(3), s; }, "abc"},
        {"abc", [](CString s) { return s.Delete(-1), s; }, "abc"},
        {"abc", [](CString s) { return s.Delete(1, 0), s; }, "abc"},
        {"abc", [](CString s) { return s.Delete(1, -1), s; }, "abc"},
        {"20240131", [](CString s) { return s.Delete(0), s; }, "0240131"},
        {"2024-01-31x", [](CString s) { return s.Delete(10), s; }, "2024-01-31"},

        {"a;b;", [](CString s) { return s.Replace(';', ','), s; }, "a,b,"},
        {"a;b;", [](CString s) { return s.Replace('x', ','), s; }, "a;b;"},
        {"2024.01.31", [](CString s) { return s.Replace('.', ':'), s; }, "2024:01:31"},
        {"2024:01:31", [](CString s) { return s.Replace(':', '.'), s; }, "2024.01.31"},
        {"aaa", [](CString s) { return s.Replace("aa", "a"), s; }, "aa"},
        {"aabb", [](CString s) { return s.Replace("ab", ""), s; }, "ab"},
        {"a", [](CString s) { return s.Replace("a", "aa"), s; }, "aa"},
        {"abc", [](CString s) { return s.Replace("", "x"), s; }, "abc"},
        {"abc", [](CString s) { return s.Replace(s, s), s; }, "abc"},
        {"PAT/3", [](CString s) { return s.Replace("PAT/", "Patienten: "_t), s; }, "Patienten: 3"},

        {"", [](CString s) { return s += s; }, ""},
        {"Zähne", [](CString s) { return s += s; }, "ZähneZähne"},
        {"2024", [](CString s) { return s += s; }, "20242024"},
        {"1234567", [](CString s) { return s += 'x'; }, "1234567x"},
        {"1234567", [](CString s) { return s += '8'; }, "12345678"},
        {"12345678901234", [](CString s) { return s += '5'; }, "123456789012345"},
        {"bc", [](CString s) { return 'a' + s + 'd' + "e"; }, "abcde"},
        {"abc", [](CString s) { return s.SetAt(2, '3'), s; }, "ab3"},
        {"20240131", [](CString s) { return s.SetAt(0, 'x'), s; }, "x0240131"},
        {"x0240131", [](CString s) { return s.SetAt(0, '2'), s; }, "20240131"},
        {"Zähne", [](CString s) { return s.Empty(), s; }, ""},
        {"Behandlerliste", [](CString s) { return s.Empty(), s; }, ""},
        {"Behandlerliste", [](CString s) { return s = s.Left(99), s; }, "Behandlerliste"},
        {"alt", [](CString) { return CString('x', 9); }, "xxxxxxxxx"},
        {"alt", [](CString) { return CString('x'); }, "x"},
        {"alt", [](CString) { return CString('x', 0) + CString('x', -1); }, ""},
    };
    for (const SFall & f : faelle) {
        const CString sVorher = orvostat::AusUtf8(f.pVorher);
        const CString sNachher = f.pOperation(sVorher);
        EXPECT_EQ(sNachher.Utf8(), f.pNachher) << "aus '" << f.pVorher << "'";
        EXPECT_EQ(sVorher.Utf8(), f.pVorher) << "a copy was changed";
        ASSERT_NO_FATAL_FAILURE(PruefeText(sNachher, Lies(orvostat::AusUtf8(f.pNachher))));
    }
}

TEST(CStringTest, ErgebnisseDerAenderungen) {
    CString s("aXbXc");
    EXPECT_EQ(s.Replace('X', 'Y'), 2);
    EXPECT_EQ(s.Replace("Y", ""), 2);
    EXPECT_EQ(s.Replace("Y", ""), 0);
    EXPECT_EQ(s.Delete(1), 2);
    EXPECT_EQ(s.Delete(7), 2);
}

TEST(CStringTest, Suchen) {
    const CString s = "a,b,"_t;
    EXPECT_EQ(s.Find(','), 1);
    EXPECT_EQ(s.Find(',', 1), 1);
    EXPECT_EQ(s.Find(',', 2), 3);
    EXPECT_EQ(s.Find(',', 4), -1);
    EXPECT_EQ(s.Find(',', -1), -1);
    EXPECT_EQ(s.Find('x'), -1);
    EXPECT_EQ(s.Find('\0'), -1);
    EXPECT_EQ(s.Find("b,"), 2);
    EXPECT_EQ(s.Find("b,,"), -1);
    EXPECT_EQ(s.Find(",", 2), 3);
    EXPECT_EQ(s.Find(",", 5), -1);
    EXPECT_EQ(s.Find("", 4), 4);
    EXPECT_EQ(CString().Find(""), 0);
    EXPECT_EQ(CString().Find('x'), -1);
    EXPECT_EQ("20240131"_t.Find("0131"), 4);
    EXPECT_EQ(s.GetAt(0), 'a');
    EXPECT_EQ(s[3], ',');
    EXPECT_EQ(s[4], '\0');
    EXPECT_EQ(s[-1], '\0');
}

TEST(CStringTest, FalscherGebrauchWirft) {
    const char * pNull = nullptr;
    EXPECT_THROW(CString{pNull}, std::invalid_argument);
    EXPECT_THROW(CString{nullptr}, std::invalid_argument);
    EXPECT_THROW((void)(CString("a") == pNull), std::invalid_argument);
    EXPECT_THROW((void)CString("a").Compare(pNull), std::invalid_argument);
    for (const CString & sText : {CString(), CString("abc"), CString("20240131"), "Behandlerliste"_t}) {
        CString s = sText;
        EXPECT_THROW(s.SetAt(s.GetLength(), 'x'), std::invalid_argument);
        EXPECT_THROW(s.SetAt(-1, 'x'), std::invalid_argument);
        EXPECT_TRUE(s == sText);
    }
}

TEST(CStringTest, LiteraleSindWindows1252) {
    EXPECT_EQ(Lies("€ß"), "\x80\xDF");
    EXPECT_EQ(Lies("ÄÖÜäöü"), "\xC4\xD6\xDC\xE4\xF6\xFC");
    EXPECT_EQ(Lies("Möchten Sie wirklich den Vorgang abbrechen?"_t),
              "M\xF6"
              "chten Sie wirklich den Vorgang abbrechen?");
    EXPECT_EQ(Lies("„Žœ™“…"), "\x84\x8E\x9C\x99\x93\x85");
    EXPECT_EQ(Lies("a\0b"), "a\0b"s);
    EXPECT_EQ(Lies("ein langes\0Literal"_t), "ein langes\0Literal"s);
    EXPECT_TRUE("20240131" == "20240131"_t && CString("") == CString() && ""_t == CString());
    EXPECT_TRUE("Behandlerliste"_t == Bytes("Behandlerliste") && "Behandlerliste"_t == "Behandlerliste"_t);
    const char acBytes[] = {'Z', '\xE4', '\0', 'x'};
    const char * pBytes = acBytes;
    EXPECT_EQ(CString(pBytes).Utf8(), "Zä");
}

TEST(CStringTest, Utf8Hin) {
    std::string sAlle;
    for (int i = 0; i < 256; ++i)
        sAlle += static_cast<char>(i);
    EXPECT_EQ(Lies(orvostat::AusUtf8(orvostat::NachUtf8(sAlle))), sAlle);
    EXPECT_EQ(orvostat::NachUtf8("\x80\xE4\x81\xFF"), "€ä\u0081ÿ");

    struct SFall {
        std::string sUtf8;
        const char * pSoll;
    };
    for (const SFall & f : {
             SFall{"\u0141\u00F3d\u017A", "?ód?"},       // letters that Windows-1252 lacks
             SFall{"a\xF0\x9F\xA6\xB7z", "a?z"},         // a character beyond the first plane
             SFall{"\u0080", "?"},                       // a control that is no byte of Windows-1252
             SFall{"\xC3", "?"},                         // cut off at the end
             SFall{"\xE2\x82", "??"},                    //
             SFall{"\xC3z", "?z"},                       // the second byte missing
             SFall{"\xE4hnlich", "?hnlich"},             // Windows-1252 taken for UTF-8
             SFall{"\xBFz", "?z"},                       // a second byte alone
             SFall{"\xC1\x81z", "??z"},                  // overlong
             SFall{"\xE0\x80\xA4z", "???z"},             //
             SFall{"\xF0\x80\x80\xA4", "????"},          //
             SFall{"\xED\xA0\x80z", "?z"},               // a surrogate
             SFall{"\xF4\x90\x80\x80\xFF\xFEz", "???z"}, // beyond Unicode, and bytes that never occur
         })
        EXPECT_EQ(orvostat::AusUtf8(f.sUtf8).Utf8(), f.pSoll);
}

TEST(CStringTest, GrossUndKlein) {
    const CString sGross = "ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜÀÁÂÃÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕØÙÚÛÝÞŠŒŽŸ"_t;
    const CString sKlein = "abcdefghijklmnopqrstuvwxyzäöüàáâãåæçèéêëìíîïðñòóôõøùúûýþšœžÿ"_t;
    const CString sOhne = "ß×÷€ƒªº@[`{0129 \x7F"_t;
    EXPECT_EQ((sKlein + sOhne).MakeUpper().Utf8(), (sGross + sOhne).Utf8());
    EXPECT_EQ((sGross + sOhne).MakeLower().Utf8(), (sKlein + sOhne).Utf8());
    EXPECT_EQ(CString("äé").MakeUpper().Utf8(), "ÄÉ");
    EXPECT_EQ(CString().MakeUpper().Utf8(), "");
    EXPECT_EQ("2024-01-31e"_t.MakeUpper().Utf8(), "2024-01-31E");
    EXPECT_EQ("2024-01-31E"_t.MakeLower().Utf8(), "2024-01-31e");
    ASSERT_NO_FATAL_FAILURE(PruefeText("2024-01-31E"_t.MakeLower(), "2024-01-31e"));

    EXPECT_EQ(sGross.CompareNoCase(sKlein), 0);
    EXPECT_EQ(CString("Öl").CompareNoCase("öL"), 0);
    EXPECT_LT(CString("a").CompareNoCase("B"), 0);
    EXPECT_GT(CString("ä").CompareNoCase("Z"), 0);
    EXPECT_LT(CString("a").CompareNoCase("AB"), 0);
    EXPECT_LT(CString("_").CompareNoCase("A"), 0) << "letters compare in lower case";
    EXPECT_GT(CString("ß").CompareNoCase("SS"), 0);
}

// Texts of all three forms, each a small change of one before it, so that neighbours in the order are frequent.
std::vector<std::string> VerwandteTexte(std::size_t iAnzahl, std::mt19937 & zufall) {
    const std::string sZeichen = " -./0123456789e09 \0\x01"
                                 "abcE:\x7F\x80\xE4\xFF"s;
    std::vector<std::string> v{""};
    while (v.size() < iAnzahl) {
        std::string s = zufall() % 3 ? v[zufall() % v.size()] : "2024-01";
        const std::size_t iBereich = zufall() % 3 ? 15 : sZeichen.size(); // mostly what the digits form holds
        for (std::size_t i = zufall() % 3 * 4; i > 0; --i)
            s += sZeichen[zufall() % iBereich];
        if (!s.empty() && zufall() % 2) s[zufall() % s.size()] = sZeichen[zufall() % iBereich];
        if (!s.empty() && zufall() % 4 == 0) s.pop_back();
        v.push_back(s.substr(0, 20));
    }
    return v;
}

int Zeichen(int i) { return (i > 0) - (i < 0); }

TEST(CStringTest, OrdnungIstDieDerBytes) {
    std::mt19937 zufall(1252);
    const std::vector<std::string> vBytes = VerwandteTexte(4000, zufall);
    const std::vector<CString> vTexte(vBytes.begin(), vBytes.end());
    int aiFormen[3] = {};
    for (const std::string & s : vBytes)
        ++aiFormen[s.size() < 8                                                        ? 0
                   : s.size() < 15 && s.find_first_not_of(" -./0123456789e") == s.npos ? 1
                                                                                       : 2];
    ASSERT_TRUE(aiFormen[0] > 400 && aiFormen[1] > 400 && aiFormen[2] > 400)
        << "a form is hardly met: " << aiFormen[0] << ", " << aiFormen[1] << ", " << aiFormen[2];

    for (int i = 0; i < 300'000; ++i) {
        const std::size_t a = zufall() % vBytes.size();
        const std::size_t b = zufall() % vBytes.size();
        const int iSoll = Zeichen(std::string_view(vBytes[a]).compare(vBytes[b]));
        ASSERT_EQ(Zeichen(vTexte[a].Compare(vTexte[b])), iSoll) << vBytes[a] << "|" << vBytes[b];
        ASSERT_EQ(vTexte[a] == vTexte[b], iSoll == 0);
        ASSERT_TRUE((vTexte[a] <=> vTexte[b]) == (iSoll <=> 0));
        ASSERT_TRUE(iSoll != 0 || vTexte[a].Hash() == vTexte[b].Hash());
    }
}

// A long chain of changes, each made on a CString and on a std::string, with copies kept alive beside it.
TEST(CStringTest, AenderungenWieAnEinemGewoehnlichenText) {
    std::mt19937 zufall(14);
    const std::vector<std::string> vTeile = VerwandteTexte(300, zufall);
    CString s;
    std::string sSoll;
    for (int i = 0; i < 50'000; ++i) {
        const CString sKopie = s;
        const std::string sVorher = sSoll;
        const std::string & sTeil = vTeile[zufall() % vTeile.size()];
        const char c = "0123456789e.x\xE4"[zufall() % 14];
        const std::size_t iAb = sSoll.empty() ? 0 : zufall() % sSoll.size();
        const std::size_t iAnzahl = 1 + zufall() % 6;
        switch (zufall() % 9) {
        case 0:
            s += c, sSoll += c;
            break;
        case 1:
            s += Bytes(sTeil), sSoll += sTeil;
            break;
        case 2:
            s = c + s, sSoll = c + sSoll;
            break;
        case 3:
            s.Delete(static_cast<int>(iAb), static_cast<int>(iAnzahl)), sSoll.erase(iAb, iAnzahl);
            break;
        case 4:
            s = s.Mid(static_cast<int>(iAb)), sSoll = sSoll.substr(iAb);
            break;
        case 5:
            s = s.Left(14), sSoll = sSoll.substr(0, 14);
            break;
        case 6:
            s.Replace('x', c), std::replace(sSoll.begin(), sSoll.end(), 'x', c);
            break;
        case 7:
            s = Bytes(sTeil), sSoll = sTeil;
            break;
        default:
            if (!sSoll.empty()) s.SetAt(static_cast<int>(iAb), c), sSoll[iAb] = c;
        }
        ASSERT_NO_FATAL_FAILURE(PruefeText(s, sSoll));
        ASSERT_NO_FATAL_FAILURE(PruefeText(sKopie, sVorher));
        ASSERT_EQ(s.Find(c), static_cast<int>(sSoll.find(c)));
        ASSERT_EQ(s.Find(Bytes(sTeil)), static_cast<int>(sSoll.find(sTeil)));
    }
}

TEST(CStringTest, EinTextAufMehrerenThreads) {
    const CString sFrei = Bytes("ein Text, den alle Kopien teilen");
    const CString sLiteral = "ein Literal, das alle Kopien teilen"_t;
    std::vector<std::thread> vThreads;
    std::vector<int> vFalsch(4, -1);
    for (int & iFalsch : vFalsch)
        vThreads.emplace_back([sFrei, sLiteral, &iFalsch] {
            int iAnzahl = 0;
            for (int i = 0; i < 5000; ++i) {
                std::vector<CString> v(8, i % 2 ? sFrei : sLiteral);
                v.back() += 'x';
                v.front().Empty();
                if (v[1] != (i % 2 ? sFrei : sLiteral) || v[7].GetLength() != v[1].GetLength() + 1) ++iAnzahl;
            }
            iFalsch = iAnzahl;
        });
    for (std::thread & thread : vThreads)
        thread.join();
    EXPECT_EQ(vFalsch, std::vector<int>(4, 0));
    EXPECT_EQ(sFrei.Utf8(), "ein Text, den alle Kopien teilen");
    EXPECT_EQ(sLiteral.Utf8(), "ein Literal, das alle Kopien teilen");
}

TEST(CStringTest, Format) {
    CString s("alt");
    s.Format("%02d.%02d.%04d"_t, 1, 12, 2024);
    EXPECT_EQ(s.Utf8(), "01.12.2024");
    s.Format("%s|%5s|%-3s|"_t, CString("Zähne"), CString("ä"), "Behandlerliste"_t);
    EXPECT_EQ(s.Utf8(), "Zähne|    ä|Behandlerliste|");
    s.Format("%s%s", s.Left(1), s);
    EXPECT_EQ(s.Utf8(), "ZZähne|    ä|Behandlerliste|");
    s.Format("%d%%", -7);
    EXPECT_EQ(s.Utf8(), "-7%");
    s.Format("%c%c", CChar('a'), 'b');
    EXPECT_EQ(s.Utf8(), "ab");
    s.Format("%.2f", 0.125);
    EXPECT_EQ(s.Utf8(), "0.12");
    s.Format("%s", CString());
    EXPECT_EQ(s.Utf8(), "");
    s.Format("%s", CString('x', 1000));
    EXPECT_EQ(s.GetLength(), 1000);
}

} // namespace
