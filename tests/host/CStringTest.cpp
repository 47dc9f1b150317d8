#include "orvostatbs/host/CString.h"

#include "support/Wert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace orvostat {

namespace {

using namespace std::string_literals;

CString Bytes(std::string_view s) { return CString(s); }
std::string Lies(const CString & s) { return std::string(s.Sicht().Text()); }

// One text has one form, whatever road led to it: it must be indistinguishable from a fresh one.
void PruefeText(const CString & s, const std::string & sSoll) {
    const CString frisch = Bytes(sSoll);
    ASSERT_EQ(Lies(s), sSoll);
    ASSERT_TRUE(s == frisch && s.Compare(frisch) == 0 && s.Hash() == frisch.Hash()) << sSoll;
    ASSERT_TRUE(s.Sicht().c_str()[sSoll.size()] == '\0' && s.GetLength() == static_cast<int>(sSoll.size()))
        << sSoll;
    ASSERT_TRUE(s.IsEmpty() == sSoll.empty() && s.Erstes() == (sSoll.empty() ? '\0' : sSoll[0])) << sSoll;
    ASSERT_EQ(s.GetAt(s.GetLength() - 1), sSoll.empty() ? '\0' : sSoll.back());
}

// Results as UTF-8 with "|" between them.
template <class... T> std::string Alle(const T &... texte) {
    (PruefeText(texte, Lies(texte)), ...);
    return Werte(texte...);
}

TEST(CStringTest, OperationenAnIhrenEnden) {
    constexpr int GROSS = 2147483647;
    const CString s = "Zähne"_t;
    const auto Mit = [](CString sText, auto fTu) { return fTu(sText), sText; };
    EXPECT_EQ(Alle(s.Left(-1), s.Right(GROSS), s.Mid(99), s.Mid(1, 3), s.Mid(1, GROSS), s.Mid(1, -1),
                   s.Mid(-GROSS - 1, 1), "Behandler 20240131"_t.Mid(10)),
              "|Zähne||ähn|ähne||Z|20240131");
    EXPECT_EQ(Alle(" \t\r\n\v\fa b\n "_t.Trim(), "\u00A0a\u00A0"_t.Trim(), "a\\b\\\\"_t.TrimRight('\\')),
              "a b|\u00A0a\u00A0|a\\b");
    EXPECT_EQ(Alle(Mit("abc", [](CString & t) { t.Delete(2, GROSS); }),
                   Mit("abc", [](CString & t) { t.Delete(3); }),
                   Mit("abc", [](CString & t) { t.Delete(-1); }),
                   Mit("aabb", [](CString & t) { t.Replace("ab", ""); }),
                   Mit("a", [](CString & t) { t.Replace("a", "aa"); }),
                   Mit("abc", [](CString & t) { t.Replace("", "x"); }), Mit(s, [](CString & t) { t += t; }),
                   'a' + "bc"_t + 'd' + "e", CString('x', 0) + CString('x', -1),
                   (CString('x', 900) + CString('y', 900)).Mid(899, 2)),
              "ab|abc|abc|ab|aa|abc|ZähneZähne|abcde||xy");
    CString t("aXbXc");
    EXPECT_EQ(t.Replace('X', 'Y'), 2);
    EXPECT_TRUE(t.Replace("Y", "") == 2 && t.Replace("Y", "") == 0 && t.Delete(1) == 2 && t.Delete(7) == 2);
    t = "a,b,"_t;
    EXPECT_EQ(Werte(t.Find(','), t.Find(',', 2), t.Find(',', -1), t.Find('\0'), t.Find("b,"), t.Find("b,,"),
                    t.Find(",", 2), t.Find("", 4), t.Find("", 5), "20240131"_t.Find("0131")),
              "1|3|-1|-1|2|-1|3|4|-1|4");
    EXPECT_EQ(std::string({t[0], t[3], t[4], t[-1]}), "a,\0\0"s);
}

TEST(CStringTest, FalscherGebrauchWirft) {
    const char * pNull = nullptr;
    EXPECT_THROW(CString{pNull}, std::invalid_argument);
    EXPECT_THROW((void)(CString("a") == pNull), std::invalid_argument);
    EXPECT_THROW((void)CString("a").Compare(pNull), std::invalid_argument);
    for (CString s : {CString(), CString("abc"), CString("20240131"), "Behandlerliste"_t}) {
        EXPECT_THROW(s.SetAt(s.GetLength(), 'x'), std::invalid_argument);
        EXPECT_THROW(s.SetAt(-1, 'x'), std::invalid_argument);
    }
}

// A literal is the same text whether the compiler reads it, or reads it in code that runs, or is not asked.
template <std::size_t N> void PruefeLiteral(const char (&acUtf8)[N]) {
    const std::string sSoll = Lies(AusUtf8({acUtf8, N - 1}));
    ASSERT_NO_FATAL_FAILURE(PruefeText(acUtf8, sSoll));
    constexpr auto BYTES = std::make_index_sequence<N - 1>();
    EXPECT_EQ(wort::WortAusLeser(wort::LiesLiteral(acUtf8, BYTES), acUtf8),
              wort::Packe(sSoll.data(), sSoll.size()))
        << acUtf8;
}

TEST(CStringTest, LiteraleSindWindows1252) {
    EXPECT_EQ(Lies("ÄÖÜß€"), "\xC4\xD6\xDC\xDF\x80");
    EXPECT_EQ(Lies("Die €-Größe „Žœ™“…"), "Die \x80-Gr\xF6\xDF"
                                          "e \x84\x8E\x9C\x99\x93\x85");
    EXPECT_EQ(Lies("a\0b\0"), "a\0b"s);
    EXPECT_EQ("ein langes\0Literal\0"_t, "ein langes\0Literal");
    EXPECT_EQ("Die €-Größe"_t, "Die €-Größe");
    const auto Alle = [](const auto &... literal) { (PruefeLiteral(literal), ...); };
    Alle("", "20240131", " -./3456789e9 ", "123456789012345", "2024013x", "Zähneßü", "„€Ž“", "bg-01z01");

    const auto Falsch = [](const auto &... literal) {
        const auto Eines = []<std::size_t N>(const char(&acUtf8)[N]) {
            EXPECT_FALSE(wort::LiesLiteral(acUtf8, std::make_index_sequence<N - 1>()).bGut) << acUtf8;
            const char(*volatile pUtf8)[N] = &acUtf8; // so that the compiler does not see which one it is
            EXPECT_THROW(CString{*pUtf8}, std::invalid_argument) << acUtf8;
        };
        (Eines(literal), ...);
    };
    Falsch("Łódź", "\xE4", "\xC3x", "\xE0\x80\xA4", "\xF0\x9F\xA6\xB7");
}

// What a caller would write.
TEST(CStringTest, TexteWoManSieSchreibt) {
    CString s("einstell");
    EXPECT_EQ(s, "einstell");
    EXPECT_TRUE(s != "Einstell" && s < "einstellx");
    s = "bg-01z01";
    EXPECT_EQ(s + " Größe", "bg-01z01 Größe");
    for (const bool b : {false, true}) {
        s = b ? "ä" : "ö";
        EXPECT_EQ(s.Utf8(), b ? "ä" : "ö");
    }
    const auto paar = std::pair<CString, CString>{"Größe", "b"};
    EXPECT_EQ(paar.first.Utf8() + paar.second.Utf8(), "Größeb");
    s.Format("%s, mehr als %d", "Text", 7);
    EXPECT_EQ(s, "Text, mehr als 7");

    char acBytes[] = {'Z', '\xE4', '\0', 'x'}; // may be written, so these are bytes
    EXPECT_EQ(CString(acBytes).Utf8(), "Zä");
    acBytes[2] = 'h';
    EXPECT_EQ(CString(acBytes).Utf8(), "Zähx");
}

TEST(CStringTest, Utf8Hin) {
    std::string sAlle;
    for (int i = 0; i < 256; ++i)
        sAlle += static_cast<char>(i);
    EXPECT_EQ(Lies(AusUtf8(NachUtf8(sAlle))), sAlle);
    EXPECT_EQ(NachUtf8("\x80\xE4\x81\xFF"), "€ä\u0081ÿ");

    // Lacking in Windows-1252, cut off, without a beginning, overlong, and beyond Unicode.
    std::string sGelesen;
    for (const char * p : {"\u0080", "\xBFz", "\u0141\u00F3d", "\xE4hnlich", "\xF0\x80\x80\xA4", "\xC3z",
                           "\xE2\x82", "\xF0\x9F\xA6\xB7z", "\xED\xA0\x80z", "\xC1\x81z", "\xE0\x80\xA4z",
                           "\xFF\xFEz", "z\xC3", "\xF4\x90\x80\x80z"})
        sGelesen += AusUtf8(p).Utf8() + " ";
    EXPECT_EQ(sGelesen, "? ?z ?ód ?hnlich ???? ?z ?? ?z ?z ??z ???z ??z z? ?z ");
}

TEST(CStringTest, GrossUndKlein) {
    const CString sGross = "ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜÀÁÂÃÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕØÙÚÛÝÞŠŒŽŸ"_t;
    const CString sKlein = "abcdefghijklmnopqrstuvwxyzäöüàáâãåæçèéêëìíîïðñòóôõøùúûýþšœžÿ"_t;
    const CString sOhne = "ß×÷€ƒªº@[`{0129 \x7F"_t;
    EXPECT_EQ((sKlein + sOhne).MakeUpper().Utf8(), (sGross + sOhne).Utf8());
    EXPECT_EQ((sGross + sOhne).MakeLower().Utf8(), (sKlein + sOhne).Utf8());
    for (int i = 0; i < sGross.GetLength(); ++i) { // one letter alone in a short text
        EXPECT_EQ((CString(sKlein[i]) + "-1").MakeUpper(), CString(sGross[i]) + "-1") << i;
        EXPECT_EQ((CString(sGross[i]) + "-1").MakeLower(), CString(sKlein[i]) + "-1") << i;
    }
    ASSERT_NO_FATAL_FAILURE(PruefeText("2024-01-31E"_t.MakeLower(), "2024-01-31e"));
    EXPECT_EQ(sGross.CompareNoCase(sKlein), 0);
    EXPECT_GT(CString("ä").CompareNoCase("Z"), 0);
    EXPECT_LT(CString("a").CompareNoCase("AB"), 0);
    EXPECT_LT(CString("_").CompareNoCase("A"), 0) << "letters compare in lower case";
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
    for (int i = 0; i < 300'000; ++i) {
        const std::size_t a = zufall() % vBytes.size();
        const std::size_t b = zufall() % vBytes.size();
        const int iSoll = Zeichen(std::string_view(vBytes[a]).compare(vBytes[b]));
        ASSERT_EQ(Zeichen(vTexte[a].Compare(vTexte[b])), iSoll) << vBytes[a] << "|" << vBytes[b];
        ASSERT_TRUE((vTexte[a] == vTexte[b]) == (iSoll == 0) && (vTexte[a] <=> vTexte[b]) == (iSoll <=> 0));
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
        const int iPos = static_cast<int>(iAb);
        const std::function<void()> aAenderungen[] = {
            [&] { s += c, sSoll += c; },
            [&] { s += Bytes(sTeil), sSoll += sTeil; },
            [&] { s = c + s, sSoll = c + sSoll; },
            [&] { s.Delete(iPos, static_cast<int>(iAnzahl)), sSoll.erase(iAb, iAnzahl); },
            [&] { s = s.Mid(iPos), sSoll = sSoll.substr(iAb); },
            [&] { s = s.Left(14), sSoll = sSoll.substr(0, 14); },
            [&] { s.Replace('x', c), std::replace(sSoll.begin(), sSoll.end(), 'x', c); },
            [&] { s = Bytes(sTeil), sSoll = sTeil; },
            [&] { s += '9', sSoll += '9', s.SetAt(iPos, c), sSoll[iAb] = c; },
        };
        aAenderungen[zufall() % std::size(aAenderungen)]();
        ASSERT_NO_FATAL_FAILURE(PruefeText(s, sSoll));
        ASSERT_NO_FATAL_FAILURE(PruefeText(sKopie, sVorher));
        ASSERT_EQ(s.Find(c), static_cast<int>(sSoll.find(c)));
        ASSERT_EQ(s.Find(Bytes(sTeil)), static_cast<int>(sSoll.find(sTeil)));
    }
}

TEST(CStringTest, EinTextAufMehrerenThreads) {
    const CString sText = Bytes("ein Text, den alle Kopien teilen");
    std::atomic<int> iFalsch = 0;
    const auto Kopiere = [sText, &iFalsch] {
        for (int i = 0; i < 5000; ++i) {
            std::vector<CString> v(8, sText);
            v.back() += 'x';
            v.front().Empty();
            if (v[1] != sText || v[7].GetLength() != sText.GetLength() + 1) ++iFalsch;
        }
    };
    std::vector<std::thread> vThreads;
    for (int i = 0; i < 4; ++i)
        vThreads.emplace_back(Kopiere);
    for (std::thread & thread : vThreads)
        thread.join();
    EXPECT_TRUE(iFalsch == 0 && sText.Utf8() == "ein Text, den alle Kopien teilen");
}

TEST(CStringTest, Format) {
    CString s;
    const auto Formatiert = [&s](const CString & sFormat, const auto &... werte) {
        s.Format(sFormat, werte...);
        return s.Utf8();
    };
    EXPECT_EQ(Formatiert("%02d.%04d %d%% %c%c %.2f"_t, 1, 2024, -7, CChar('a'), 'b', 0.125),
              "01.2024 -7% ab 0.12");
    EXPECT_EQ(Formatiert("%s|%5s|%-3s|%s"_t, CString("Zähne"), CString("ä"), "Behandlerliste"_t, CString()),
              "Zähne|    ä|Behandlerliste|");
    EXPECT_EQ(Formatiert("%s%s", s.Left(1), s), "ZZähne|    ä|Behandlerliste|");
    EXPECT_EQ(Formatiert("%s", CString('x', 1000)), std::string(1000, 'x'));
}

} // namespace

} // namespace orvostat
