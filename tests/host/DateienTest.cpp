#include "orvostatbs/host/Dateien.h"
#include "orvostatbs/host/Arbeitsplatz.h"
#include "orvostatbs/host/TabellenDatei.h"
#include "support/Fehlerdateien.h"
#include "support/Praxis.h"
#include "support/Rechte.h"

#include <fstream>
#include <string>

namespace orvostat {
namespace {

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
    [[nodiscard]] std::string Namen(const CString & sMuster) {
        std::string s;
        typename F::CSuche suche;
        for (bool bMehr = suche.FindFile(sMuster); bMehr;) {
            bMehr = suche.FindNextFile();
            s += suche.GetFileName().Utf8() + (suche.IsDirectory() ? "\\ " : " ");
            EXPECT_EQ(suche.GetFilePath(), Ordnerteil(sMuster) + suche.GetFileName());
        }
        return s;
    }
};
using CFamilien = ::testing::Types<SPlatte, SBestand>;
TYPED_TEST_SUITE(DateienTest, CFamilien);

TYPED_TEST(DateienTest, ZeilenMitBeidenEnden) {
    struct SFall {
        std::string_view sText, sZeilen;
    };
    for (const auto & [sText, sZeilen] :
         std::initializer_list<SFall>{{"", ""},
                                      {"\n", "[]"},
                                      {"a", "[a]"},
                                      {"a\nb\n", "[a][b]"},
                                      {"a\r\n\r\nb\r\n", "[a][][b]"},
                                      {"a\rb\n", "[a\rb]"},
                                      {"a\r", "[a]"},
                                      {"b\r\r\n", "[b]"},
                                      {"\xE4;\xDF\n", "[\xE4;\xDF]"},
                                      {std::string_view("a\0b\n", 4), std::string_view("[a\0b]", 5)}}) {
        this->Schreibe("x", sText);
        EXPECT_EQ(this->Zeilen("x"), sZeilen) << sText;
    }
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
    datei.Close();
    ASSERT_TRUE(datei.Open(this->Pfad("x"), datei.modeRead));
    char ac[6] = {};
    EXPECT_EQ(datei.Seek(65'534, datei.begin), 65'534u);
    EXPECT_EQ(datei.Read(ac, 5), 5u);
    EXPECT_STREQ(ac, ".abX.");
    EXPECT_EQ(datei.Seek(0, datei.current), 65'539u);
    EXPECT_EQ(datei.Seek(99, datei.end), 100'000u);
    EXPECT_EQ(datei.Read(ac, 5), 0u);
    EXPECT_THROW(datei.WriteString("x"), CFileException);
}

TYPED_TEST(DateienTest, UrsachenDesOeffnens) {
    CFileException fehler;
    typename TypeParam::CDatei datei;
    EXPECT_FALSE(datei.Open(this->Pfad("fehlt"), datei.modeRead, &fehler));
    EXPECT_EQ(fehler.m_cause, 2);
    EXPECT_FALSE(datei.Open(this->Pfad("fehlt"), datei.modeWrite, &fehler));
    EXPECT_EQ(fehler.m_cause, 2);
    EXPECT_FALSE(datei.Open(this->Pfad(CString('n', 256)), TestFixture::NEU, &fehler));
    EXPECT_EQ(fehler.m_cause, 3);
    EXPECT_EQ(TypeParam::Dateien().Loesche(this->Pfad(CString('n', 256))), 3);
    EXPECT_EQ(TypeParam::Dateien().Loesche(this->Pfad("fehlt")), 2);
    EXPECT_FALSE(datei.Open(CString(), datei.modeRead, &fehler));
    EXPECT_EQ(fehler.m_cause, 2);
}

TYPED_TEST(DateienTest, SuchenUndLoeschen) {
    std::filesystem::create_directory(this->m_verzeichnis / "daten" / "unter");
    for (const CString & sName : {"a.SVE"_t, "b.ISV"_t, "ohne"_t, "ä.SVE"_t, "unter\\c.SVE"_t})
        this->Schreibe(sName, "x");
    EXPECT_EQ(this->Namen(this->Pfad("*.*")), "a.SVE b.ISV ohne unter\\ ä.SVE ");
    EXPECT_EQ(this->Namen(this->Pfad("*.SVE")), "a.SVE ä.SVE ");
    EXPECT_EQ(this->Namen(this->Pfad("?.?S*V")), "b.ISV ");
    EXPECT_EQ(this->Namen(this->Pfad("unter\\*"_t)), "c.SVE ");
    EXPECT_EQ(this->Namen(this->Pfad("fehlt\\*"_t)), "");
    CDateispeicher & dateien = TypeParam::Dateien();
    EXPECT_FALSE(dateien.Existiert(this->Pfad("unter")));
    EXPECT_TRUE(dateien.Existiert(this->Pfad("a.SVE")));
    EXPECT_EQ(dateien.Loesche(this->Pfad("a.SVE")), 0);
    EXPECT_FALSE(dateien.Existiert(this->Pfad("a.SVE")));
    EXPECT_EQ(this->Zeilen("ohne"), "[x]");
}

TYPED_TEST(DateienTest, Inidatei) {
    using CIni = typename TypeParam::CIni;
    const CString sDatei = this->Pfad("x.ISV");
    EXPECT_EQ(CIni::ReadOneString(sDatei, "A", "k", "*"), "*"_t);
    CIni ini(sDatei);
    for (const auto & [sA, sK, sW] : std::initializer_list<std::array<CString, 3>>{{"A", "k", " 1 "},
                                                                                   {"A", "q", "\"  5 12\""_t},
                                                                                   {"B", "k", ""},
                                                                                   {"A", "z", "a\nb\r"},
                                                                                   {"A", "k", "2"}})
        EXPECT_TRUE(ini.WriteString(sA, sK, sW));
    EXPECT_TRUE(ini.Save());
    EXPECT_EQ(this->Zeilen("x.ISV"), "[[A]][k=2][q=\"  5 12\"][z=a b ][[B]][k=]");
    EXPECT_EQ(CIni::ReadOneString(sDatei, "A", "q", "*"), "  5 12"_t);
    EXPECT_EQ(CIni::ReadOneString(sDatei, "B", "k", "*"), ""_t);
    EXPECT_EQ(CIni::ReadOneString(sDatei, "a", "k", "*"), "*"_t);
    EXPECT_EQ(CIni::ReadOneString(sDatei, "A", "K", "*"), "*"_t);

    this->Schreibe("x.ISV", "k=vor\n\n[A]\r\nk=1\nkeine Zeile\nk=2\n[B]\nk = 3\n");
    EXPECT_EQ(CIni::ReadOneString(sDatei, "A", "k", "*"), "1"_t);
    EXPECT_EQ(CIni::ReadOneString(sDatei, "B", "k", "*"), "*"_t);
    CIni dazu(sDatei);
    EXPECT_TRUE(dazu.WriteString("A", "n", "x") && dazu.WriteString("C", "m", "y") && dazu.Save());
    EXPECT_EQ(this->Zeilen("x.ISV"), "[k=vor][[A]][k=1][keine Zeile][k=2][n=x][[B]][k = 3][[C]][m=y]");
}

// The wrapper over either family: every cause at every operation comes out as the exception's.
TYPED_TEST(DateienTest, JedeUrsacheAnJederStelle) {
    CFehlerdateien dateien(TypeParam::Dateien());
    const CPlattendateienErsatz platte(dateien);
    const CBestandsdateienErsatz bestand(dateien);
    const auto Ursache = [&](auto eWo, auto fTu) {
        this->Schreibe("x", "abc");
        typename TypeParam::CDatei datei;
        EXPECT_TRUE(
            datei.Open(this->Pfad("x"), eWo == CFehlerdateien::LESEN ? datei.modeRead : TestFixture::NEU));
        for (const int iUrsache : {1, 2, 3, 5, 10, 13, 99}) {
            dateien.FehlerBei(eWo, iUrsache);
            try {
                fTu(datei);
                ADD_FAILURE() << eWo << " " << iUrsache;
            } catch (const CFileException & fehler) {
                EXPECT_EQ(fehler.m_cause, iUrsache);
            }
            datei.Close(); // has nothing left to fail with
            dateien.FehlerBei(CFehlerdateien::NIRGENDS);
            EXPECT_TRUE(datei.Open(this->Pfad("x"),
                                   eWo == CFehlerdateien::LESEN ? datei.modeRead : TestFixture::NEU));
        }
    };
    CString s;
    Ursache(CFehlerdateien::LESEN, [&](auto & datei) { datei.ReadString(s); });
    Ursache(CFehlerdateien::SCHREIBEN, [&](auto & datei) {
        datei.WriteString("x");
        datei.Flush();
    });
    Ursache(CFehlerdateien::SCHREIBEN, [&](auto & datei) {
        datei.WriteString("x");
        datei.Close();
    });
    Ursache(CFehlerdateien::SICHERN, [&](auto & datei) { datei.Flush(); });
    Ursache(CFehlerdateien::SCHLIESSEN, [&](auto & datei) { datei.Close(); });
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
        EXPECT_EQ(ini.ReadString("A", "k", "*"), "*"_t);
        EXPECT_FALSE(ini.WriteString("A", "k", "2") || ini.Save());
        dateien.FehlerBei(CFehlerdateien::NIRGENDS);
    }
    EXPECT_EQ(this->Zeilen("x.ISV"), "[[A]][k=1]");
}

// ---- what only a disk does

using PlatteTest = DateienTest<SPlatte>;

TEST_F(PlatteTest, UrsachenDesBetriebssystems) {
    const auto Oeffne = [&](const CString & sPfad, unsigned iModus) {
        CFileException fehler;
        return CStdioFile().Open(sPfad, iModus, &fehler) ? 0 : fehler.m_cause;
    };
    std::filesystem::create_directory(m_verzeichnis / "daten" / "ordner");
    Schreibe("datei", "x");
    Schreibe("nurles", "x");
    std::filesystem::permissions(m_verzeichnis / "daten" / "nurles", std::filesystem::perms::owner_read);
    const COhneRootrechte ersatz(m_verzeichnis);
    EXPECT_EQ(Oeffne(Pfad("ordner"), CFile::modeRead), 5);
    EXPECT_EQ(Oeffne(Pfad("ordner"), NEU), 5);
    EXPECT_EQ(Oeffne(Pfad("weg\\x"), CFile::modeRead), 3);
    EXPECT_EQ(Oeffne(Pfad("weg\\x"), NEU), 3);
    EXPECT_EQ(Oeffne(Pfad("datei\\x"), NEU), 3);
    EXPECT_EQ(Oeffne(Pfad("nurles"), NEU), 5);
    EXPECT_EQ(Oeffne(Pfad("nurles"), CFile::modeRead), 0);
    EXPECT_EQ(Plattendateien().Loesche(Pfad("ordner")), 5);
    EXPECT_EQ(Plattendateien().Loesche(Pfad("weg\\x")), 3);
    EXPECT_NO_THROW(CFile::Remove(Pfad("nurles"))); // its folder decides
    Schreibe("ordner\\x"_t, "x");
    std::filesystem::permissions(m_verzeichnis / "daten" / "ordner",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(Plattendateien().Loesche(Pfad("ordner\\x"_t)), 5);
    std::filesystem::permissions(m_verzeichnis / "daten" / "ordner", std::filesystem::perms::owner_all);
    CStdioFile voll;
    ASSERT_TRUE(voll.Open("\\dev\\full"_t, CFile::modeWrite));
    voll.WriteString("x");
    try {
        voll.Flush();
        ADD_FAILURE();
    } catch (const CFileException & fehler) {
        EXPECT_EQ(fehler.m_cause, 13);
    }
}

// ---- what only the practice's store does

using BestandTest = DateienTest<SBestand>;

TEST_F(BestandTest, EineSchlechteSchreibgruppeLaesstDieAlteDatei) {
    const std::string sNeu(200'000, 'n');
    for (int iBei = 1; iBei < 40; ++iBei) {
        Schreibe("x", "alt");
        m_pSpeicher->FehlerBei(iBei);
        bool bGut = false;
        try {
            CDBStdioFile datei;
            bGut = datei.Open(Pfad("x"), NEU);
            if (bGut) datei.WriteString(std::string_view(sNeu));
            datei.Close();
        } catch (const CFileException & fehler) {
            EXPECT_EQ(fehler.m_cause, 1);
            bGut = false;
        }
        m_pSpeicher->FehlerBei(0);
        EXPECT_TRUE(Zeilen("x") == (bGut ? '[' + sNeu + ']' : "[alt]")) << iBei;
        EXPECT_EQ(m_pSpeicher->OffeneWege(), 0);
        if (bGut) return; // so far the failures reached
    }
    ADD_FAILURE() << "never written";
}

TEST_F(BestandTest, OhneCloseGiltDerLetzteFlush) {
    {
        CDBStdioFile datei;
        ASSERT_TRUE(datei.Open(Pfad("x"), NEU));
        datei.WriteString("bleibt");
        datei.Flush();
        datei.WriteString(" nicht"_t);
    }
    EXPECT_EQ(Zeilen("x"), "[bleibt]");
}

TEST_F(BestandTest, WandertMitDerPraxisUndVerweigertOhneRecht) {
    Schreibe("stat\\01\\x"_t, "a");
    m_pfade.sDaten = "\\anderswo\\"_t;
    EXPECT_EQ(Zeilen("stat\\01\\x"_t), "[a]");
    EXPECT_TRUE(FileExistsDB("stat\\01\\x"_t));
    dbDatabase.Verbinde(nullptr); // only reading is left
    CFileException fehler;
    CDBStdioFile datei;
    EXPECT_FALSE(datei.Open(Pfad("y"), NEU, &fehler));
    EXPECT_EQ(fehler.m_cause, 5);
    EXPECT_EQ(DeleteFileDB("stat\\01\\x"_t), 0);
    EXPECT_EQ(Zeilen("stat\\01\\x"_t), "[a]");
}

TEST_F(BestandTest, EinFehlendesStueckIstEinSchaden) {
    Schreibe("x", std::string(200'000, 'n'));
    CTDatei zeile(dbDatabase);
    zeile.m_DATEINAME = "x";
    zeile.m_STUECK = "00000002";
    ASSERT_EQ(zeile.GetByK1(), 0);
    ASSERT_EQ(zeile.Delete(), 0);
    try {
        static_cast<void>(Zeilen("x"));
        ADD_FAILURE();
    } catch (const CFileException & fehler) {
        EXPECT_EQ(fehler.m_cause, 10);
    }
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
