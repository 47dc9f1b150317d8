#include "orvostatbs/host/Dateien.h"
#include "orvostatbs/host/Arbeitsplatz.h"
#include "orvostatbs/host/TabellenDatei.h"
#include "support/Fehlerdateien.h"
#include "support/Praxis.h"
#include "support/Rechte.h"

#include <string>

namespace orvostat {
namespace {

using namespace std::string_view_literals;

struct SPlatte {
    using CDatei = CStdioFile;
    using CSuche = CFileFind;
    using CIni = CIniFile;
    static CDateispeicher & Dateien() { return Plattendateien(); }
};
struct SBestand {
    using CDatei = CDBStdioFile;
    using CSuche = CDBFileFind;
    using CIni = CDBIniFile;
    static CDateispeicher & Dateien() { return Bestandsdateien(); }
};

// What a call throws; 0 where it does not.
template <class F> int UrsacheVon(F f) {
    try {
        f();
    } catch (const CFileException & fehler) {
        return fehler.m_cause;
    }
    return 0;
}

class CDateienTest : public CPraxisTest {
protected:
    CDateienTest() { m_praxis.ZaehleAlles(); }
    [[nodiscard]] CString Pfad(const CString & sName) const { return m_pfade.sDaten + sName; }

    CFehlerspeicher * const m_pSpeicher = &m_praxis.Lesend();
};

// One suite over both families.
template <class F> class DateienTest : public CDateienTest {
protected:
    using CDatei = typename F::CDatei;
    static constexpr unsigned NEU = CDatei::modeCreate | CDatei::modeWrite;
    static constexpr unsigned ANHANG = NEU | CDatei::modeNoTruncate;

    void Schreibe(const CString & sName, std::string_view sText, unsigned iModus = NEU) {
        CDatei datei;
        ASSERT_TRUE(datei.Open(Pfad(sName), iModus));
        datei.SeekToEnd();
        datei.WriteString(sText);
        datei.Close();
    }
    // The lines, each in brackets; "-" without a file.
    [[nodiscard]] std::string Zeilen(const CString & sName) {
        CDatei datei;
        if (!datei.Open(Pfad(sName), CDatei::modeRead)) return "-";
        std::string s;
        for (CString sZeile; datei.ReadString(sZeile);)
            s += '[' + std::string(sZeile.Sicht().Text()) + ']';
        return s;
    }
    // Why a file cannot be opened; 0 where it can.
    [[nodiscard]] int Ursache(const CString & sPfad, unsigned iModus) {
        CFileException fehler;
        return CDatei().Open(sPfad, iModus, &fehler) ? 0 : fehler.m_cause;
    }
    [[nodiscard]] std::string Namen(const CString & sMuster) {
        std::string s;
        typename F::CSuche suche;
        for (bool bMehr = suche.FindFile(Pfad(sMuster)); bMehr;) {
            bMehr = suche.FindNextFile();
            s += suche.GetFileName().Utf8() + (suche.IsDirectory() ? "\\ " : " ");
            EXPECT_EQ(suche.GetFilePath(), Ordnerteil(Pfad(sMuster)) + suche.GetFileName());
        }
        const CString sLetzte = suche.GetFileName();
        EXPECT_TRUE(!suche.FindNextFile() && suche.GetFileName() == sLetzte);
        return s;
    }
};
using CFamilien = ::testing::Types<SPlatte, SBestand>;
TYPED_TEST_SUITE(DateienTest, CFamilien);

TYPED_TEST(DateienTest, ZeilenMitBeidenEnden) {
    std::string s;
    for (const std::string_view sText : {""sv, "\n"sv, "a\nb\n"sv, "a\r\n\r\nb\r\n"sv, "a\rb\n"sv, "a\r"sv,
                                         "b\r\r\n"sv, "\xE4;\xDF\n"sv, "a\0b\n"sv}) {
        this->Schreibe("x", sText);
        s += this->Zeilen("x") + "|";
    }
    EXPECT_EQ(s, "|[]|[a][b]|[a][][b]|[a\rb]|[a]|[b]|[\xE4;\xDF]|[a\0b]|"sv);
}

// Lines longer than the buffer, lines across its end, files longer than a piece of the store.
TYPED_TEST(DateienTest, LangeDateienUndAnhaengen) {
    std::string sText, sErwartet;
    for (int i = 0; i < 300; ++i) {
        const std::string sZeile(static_cast<std::size_t>(i % 50 == 7 ? 400'000 : i * 7),
                                 static_cast<char>('a' + i % 26));
        sText += sZeile + '\n';
        sErwartet += '[' + sZeile + ']';
    }
    for (std::size_t i = 0; i < sText.size(); i += 100'000)
        this->Schreibe("x", std::string_view(sText).substr(i, 100'000), TestFixture::ANHANG);
    EXPECT_TRUE(this->Zeilen("x") == sErwartet);
    this->Schreibe("x", "neu");
    EXPECT_EQ(this->Zeilen("x"), "[neu]");
    this->Schreibe("y", "behind it, and longer");
    this->Schreibe("x", "er", TestFixture::ANHANG);
    EXPECT_EQ(this->Zeilen("x"), "[neuer]");
}

TYPED_TEST(DateienTest, LesenUndSchreibenAnJederStelle) {
    const std::string sLang(100'000, '.');
    this->Schreibe("x", sLang);
    typename TypeParam::CDatei datei;
    ASSERT_TRUE(datei.Open(this->Pfad("x"), datei.modeWrite));
    EXPECT_EQ(datei.Seek(-34'465, datei.end), 65'535u);
    datei.Write("abc", 3);
    EXPECT_EQ(datei.Seek(-1, datei.current), 65'537u);
    datei.Write("X", 1);
    EXPECT_EQ(datei.GetLength(), 100'000u);
    ASSERT_TRUE(datei.Open(this->Pfad("x"), datei.modeRead));
    char ac[6] = {};
    EXPECT_TRUE(datei.Seek(65'534, datei.begin) == 65'534u && datei.Read(ac, 5) == 5u);
    EXPECT_STREQ(ac, ".abX.");
    EXPECT_EQ(datei.Seek(0, datei.current), 65'539u);
    EXPECT_TRUE(datei.Seek(99, datei.end) == 100'000u && datei.Read(ac, 5) == 0u);
    EXPECT_TRUE(datei.Seek(65'530, datei.begin) == 65'530u && datei.Read(ac, 5) == 5u);
    ASSERT_TRUE(datei.Open(this->Pfad("x"), datei.modeRead) && datei.Read(ac, 5) == 5u) << "from its start";
    EXPECT_STREQ(ac, ".....");
    EXPECT_THROW(datei.WriteString("x"), CFileException);
}

TYPED_TEST(DateienTest, UrsachenDesOeffnensUndLoeschens) {
    const CString sZuLang = this->Pfad(CString('n', 256));
    EXPECT_EQ(Werte(this->Ursache(this->Pfad("fehlt"), CFile::modeRead),
                    this->Ursache(this->Pfad("fehlt"), CFile::modeWrite), this->Ursache("", CFile::modeRead),
                    this->Ursache(sZuLang, TestFixture::NEU),
                    TypeParam::Dateien().Loesche(this->Pfad("fehlt")), TypeParam::Dateien().Loesche(sZuLang)),
              "2|2|2|3|2|3");
}

TYPED_TEST(DateienTest, SuchenUndLoeschen) {
    std::filesystem::create_directory(this->m_verzeichnis / "daten" / "unter");
    for (const CString & sName : {"a.SVE"_t, "b.ISV"_t, "ohne"_t, "ä.SVE"_t, "unter\\c.SVE"_t})
        this->Schreibe(sName, "x");
    EXPECT_EQ(Werte(this->Namen("*.*"), this->Namen("*.SVE"), this->Namen("?.?S*V"),
                    this->Namen("unter\\*"_t), this->Namen("fehlt\\*"_t)),
              "a.SVE b.ISV ohne unter\\ ä.SVE |a.SVE ä.SVE |b.ISV |c.SVE |");
    CDateispeicher & dateien = TypeParam::Dateien();
    EXPECT_TRUE(dateien.Existiert(this->Pfad("a.SVE")) && dateien.Loesche(this->Pfad("a.SVE")) == 0);
    EXPECT_FALSE(dateien.Existiert(this->Pfad("a.SVE")) || dateien.Existiert(this->Pfad("unter")));
    EXPECT_EQ(this->Zeilen("ohne"), "[x]");
}

TYPED_TEST(DateienTest, Inidatei) {
    using CIni = typename TypeParam::CIni;
    const CString sDatei = this->Pfad("x.ISV");
    const auto Gelesen = [&](const CString & s, const CString & sK) {
        return CIni::ReadOneString(sDatei, s, sK, "*");
    };
    EXPECT_EQ(Gelesen("A", "k"), "*"_t);
    CIni ini(sDatei);
    EXPECT_TRUE(ini.WriteString("A", "q", "") && ini.WriteString("A", "q", "\"  5 12\""_t) &&
                ini.WriteString("A", "k", " 1 ") && ini.WriteString("B", "k", "") &&
                ini.WriteString("A", "z", "a\nb\r") && ini.WriteString("A", "k", "2") && ini.Save());
    EXPECT_EQ(this->Zeilen("x.ISV"), "[[A]][q=\"  5 12\"][k=2][z=a b ][[B]][k=]");
    EXPECT_EQ(Werte(Gelesen("A", "q"), Gelesen("B", "k"), Gelesen("a", "k"), Gelesen("A", "K")),
              "  5 12||*|*");
    this->Schreibe("x.ISV", "k=vor\n\n[A]\r\nk=1\nkeine Zeile\nk=2\n[B]\nk = 3\n");
    EXPECT_EQ(Werte(Gelesen("A", "k"), Gelesen("B", "k")), "1|*");
    CIni dazu(sDatei);
    EXPECT_TRUE(dazu.WriteString("A", "n", "x") && dazu.WriteString("C", "m", "y") && dazu.Save());
    EXPECT_EQ(this->Zeilen("x.ISV"), "[k=vor][[A]][k=1][keine Zeile][k=2][n=x][[B]][k = 3][[C]][m=y]");
}

// The wrapper over either family: every cause at every operation comes out as the exception's.
TYPED_TEST(DateienTest, JedeUrsacheAnJederStelle) {
    CFehlerdateien dateien(TypeParam::Dateien());
    const CPlattendateienErsatz platte(dateien);
    const CBestandsdateienErsatz bestand(dateien);
    const auto Pruefe = [&](auto eWo, auto fTu) {
        this->Schreibe("x", "abc");
        for (const int iUrsache : {1, 2, 3, 5, 10, 13, 99}) {
            typename TypeParam::CDatei datei;
            EXPECT_TRUE(
                datei.Open(this->Pfad("x"), eWo == CFehlerdateien::LESEN ? datei.modeRead : datei.modeWrite));
            dateien.FehlerBei(eWo, iUrsache);
            EXPECT_EQ(UrsacheVon([&] { fTu(datei); }), iUrsache) << eWo;
            datei.Close(); // has nothing left to fail with
            dateien.FehlerBei(CFehlerdateien::NIRGENDS);
        }
    };
    CString s;
    Pruefe(CFehlerdateien::LESEN, [&](auto & datei) { datei.ReadString(s); });
    Pruefe(CFehlerdateien::SCHREIBEN, [&](auto & datei) { datei.WriteString("x"), datei.Flush(); });
    Pruefe(CFehlerdateien::SCHREIBEN, [&](auto & datei) { datei.WriteString("x"), datei.Close(); });
    Pruefe(CFehlerdateien::SICHERN, [&](auto & datei) { datei.Flush(); });
    Pruefe(CFehlerdateien::SCHLIESSEN, [&](auto & datei) { datei.Close(); });
    // A settings file that could not be written whole is gone; one that cannot be read is not written.
    for (const auto eWo : {CFehlerdateien::OEFFNEN, CFehlerdateien::SCHREIBEN, CFehlerdateien::SCHLIESSEN}) {
        typename TypeParam::CIni ini(this->Pfad("x.ISV"));
        EXPECT_TRUE(ini.WriteString("A", "k", "1"));
        dateien.FehlerBei(eWo, 13);
        EXPECT_FALSE(ini.Save());
        dateien.FehlerBei(CFehlerdateien::NIRGENDS);
        EXPECT_FALSE(dateien.Existiert(this->Pfad("x.ISV")));
    }
    this->Schreibe("x.ISV", "[A]\nk=1\n");
    for (const auto eWo : {CFehlerdateien::OEFFNEN, CFehlerdateien::LESEN}) {
        dateien.FehlerBei(eWo, 5);
        typename TypeParam::CIni ini(this->Pfad("x.ISV"));
        EXPECT_TRUE(ini.ReadString("A", "k", "*") == "*" && !ini.WriteString("A", "k", "2") && !ini.Save());
        dateien.FehlerBei(CFehlerdateien::NIRGENDS);
    }
    EXPECT_EQ(this->Zeilen("x.ISV"), "[[A]][k=1]");
}

// ---- what only a disk does

using PlatteTest = DateienTest<SPlatte>;

TEST_F(PlatteTest, UrsachenDesBetriebssystems) {
    const auto daten = m_verzeichnis / "daten";
    std::filesystem::create_directory(daten / "ordner");
    Schreibe("datei", "x");
    Schreibe("nurles", "x");
    std::filesystem::permissions(daten / "nurles", std::filesystem::perms::owner_read);
    const COhneRootrechte ersatz(m_verzeichnis);
    EXPECT_EQ(Werte(Ursache(Pfad("ordner"), CFile::modeRead), Ursache(Pfad("ordner"), NEU),
                    Ursache(Pfad("weg\\x"), CFile::modeRead), Ursache(Pfad("weg\\x"), NEU),
                    Ursache(Pfad("datei\\x"), NEU), Ursache(Pfad("nurles"), NEU),
                    Ursache(Pfad("nurles"), CFile::modeRead)),
              "5|5|3|3|3|5|");
    Schreibe("ordner\\x"_t, "x");
    std::filesystem::permissions(daten / "ordner",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(Werte(Plattendateien().Loesche(Pfad("ordner")), Plattendateien().Loesche(Pfad("weg\\x")),
                    Plattendateien().Loesche(Pfad("ordner\\x"_t))),
              "5|3|5");
    std::filesystem::permissions(daten / "ordner", std::filesystem::perms::owner_all);
    EXPECT_NO_THROW(CFile::Remove(Pfad("nurles"))); // its folder decides
    CStdioFile voll;
    ASSERT_TRUE(voll.Open("\\dev\\full"_t, CFile::modeWrite));
    voll.WriteString("x");
    EXPECT_EQ(UrsacheVon([&] { voll.Flush(); }), 13);
}

// ---- what only the practice's store does

using BestandTest = DateienTest<SBestand>;

TEST_F(BestandTest, EineSchlechteSchreibgruppeLaesstDieAlteDatei) {
    const std::string sNeu(200'000, 'n');
    for (int iBei = 1; iBei < 40; ++iBei) {
        Schreibe("x", "alt");
        m_pSpeicher->FehlerBei(iBei);
        m_pSpeicher->m_eUrsache = static_cast<EZeilenursache>(iBei % 4);
        bool bGut = false;
        const int iUrsache = UrsacheVon([&] {
            CDBStdioFile datei;
            bGut = datei.Open(Pfad("x"), NEU);
            if (bGut) datei.WriteString(std::string_view(sNeu));
            datei.Close();
        });
        constexpr int URSACHEN[] = {1, 5, 10, 13};
        EXPECT_TRUE(iUrsache == 0 || iUrsache == URSACHEN[iBei % 4]) << iUrsache;
        bGut = bGut && iUrsache == 0;
        m_pSpeicher->FehlerBei(0);
        EXPECT_TRUE(Zeilen("x") == (bGut ? '[' + sNeu + ']' : "[alt]")) << iBei;
        EXPECT_EQ(m_pSpeicher->OffeneWege(), 0);
        if (bGut) return; // so far the failures reached
    }
    ADD_FAILURE() << "never written";
}

TEST_F(BestandTest, WandertMitDerPraxisUndVerweigertOhneRecht) {
    Schreibe("stat\\01\\x"_t, "a");
    m_pfade.sDaten = "\\anderswo\\"_t;
    EXPECT_EQ(Zeilen("stat\\01\\x"_t), "[a]");
    EXPECT_TRUE(FileExistsDB("stat\\01\\x"_t));
    dbDatabase.Verbinde(nullptr); // only reading is left
    EXPECT_EQ(Ursache(Pfad("y"), NEU), 5);
    EXPECT_EQ(DeleteFileDB("stat\\01\\x"_t), 0);
    EXPECT_EQ(Zeilen("stat\\01\\x"_t), "[a]");
}

TEST_F(BestandTest, OhneCloseGiltDerLetzteFlush) {
    {
        CDBStdioFile datei;
        ASSERT_TRUE(datei.Open(Pfad("x"), NEU));
        datei.WriteString("bleibt"), datei.Flush(), datei.WriteString(" nicht"_t);
    }
    EXPECT_EQ(Zeilen("x"), "[bleibt]");
}

TEST_F(BestandTest, EinFehlendesStueckIstEinSchaden) {
    Schreibe("x", std::string(200'000, 'n'));
    CTDatei zeile(dbDatabase);
    ASSERT_EQ(zeile.GetRecByParam({"x", "00000002"}) + zeile.Delete(), 0);
    EXPECT_EQ(UrsacheVon([&] { static_cast<void>(Zeilen("x")); }), 10);
}

// ---- the workstation

TEST_F(CDateienTest, ArbeitsplatzStartetUndSchreibtProfile) {
    const CString sDatei = Pfad("profil.ini"_t);
    EXPECT_EQ(vdsetprofilestring1(sDatei, "[A]", "k", "€"), -2000);
    EXPECT_EQ(CIniFile::ReadOneString(sDatei, "A", "k", "*"), "€"_t);
    EXPECT_NE(vdsetprofilestring1(Pfad("weg\\p.ini"_t), "[A]", "k", "1"), -2000);
    EXPECT_TRUE(WinExec("\"true\" \"a b\""_t, 5));
    EXPECT_FALSE(WinExec("\"" + Pfad("kein Programm"_t) + "\"", 5));
    EXPECT_FALSE(WinExec(CString(), 5));
    EXPECT_EQ(GetDatFilePath("x.xls"), m_pfade.sDaten + "x.xls");
}

} // namespace
} // namespace orvostat
