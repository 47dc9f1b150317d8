// The file of the SQLite store: what is refused, what another tool sees of it, and what it survives.
#include "SqliteTest.h"

#include "support/Rechte.h"

#include "orvostatbs/host/Tabellen.h"

#include <cstdlib>
#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {
namespace {

class SqliteDateiTest : public CSqliteTest {
protected:
    // A practice with one patient; made once, from then on copied.
    void Mache() {
        static std::string s_sBytes;
        if (s_sBytes.empty()) {
            ASSERT_TRUE(Oeffne(EModus::Neu)) << m_sMeldung.Utf8();
            ASSERT_EQ(Schreibe(*Oeffne(EModus::Schreiben), "         1", "Öztürk", "Ayse"), ZEILE_OK);
            s_sBytes = LiesDatei(m_sDatei);
        }
        std::ofstream(m_sDatei, std::ios::binary) << s_sBytes;
    }
};

TEST_F(SqliteDateiTest, RefusesWhatIsNoPracticeAndLeavesItAsItWas) {
    struct SFall {
        const char * pName;
        std::function<void(const std::string &)> fMache; // gets a sound practice's file
        const char * pGrund;
    };
    const auto Sql = [](const char * pSql) {
        return [pSql](const std::string & s) { EXPECT_EQ(CWerkzeug(s).Sql(pSql), ""); };
    };
    const auto Anders = [](const std::function<void(const std::string &)> & f) {
        return [f](const std::string & s) {
            std::filesystem::remove(s);
            f(s);
        };
    };
    const SFall aFaelle[] = {
        {"no file", Anders([](const std::string &) {}), "gibt es nicht."},
        {"a directory", Anders([](const std::string & s) { std::filesystem::create_directory(s); }),
         "ist ein Verzeichnis."},
        {"a pipe", Anders([](const std::string & s) { ASSERT_EQ(mkfifo(s.c_str(), 0600), 0); }),
         "ist keine gewöhnliche Datei."},
        {"a file whose bytes cannot be read",
         Anders([](const std::string & s) { std::filesystem::create_symlink("/proc/self/mem", s); }),
         "lässt sich nicht lesen: der Datenträger meldet einen Fehler."},
        {"an empty file", Anders([](const std::string & s) { std::ofstream aus(s); }),
         "ist keine Datenbank."},
        {"a text", Anders([](const std::string & s) { std::ofstream(s) << std::string(5000, 'x'); }),
         "ist keine Datenbank."},
        {"another program's",
         Anders([](const std::string & s) { CWerkzeug(s).Sql("CREATE TABLE BEH (PATNR)"); }),
         "ist die Datenbank eines anderen Programms."},
        {"a newer schema", Sql("PRAGMA user_version = 7"),
         "ist eine Praxisdatenbank der Schemaversion 7; dieses Programm kennt die Versionen 1 bis 2."},
        {"a schema before the first", Sql("PRAGMA user_version = 0"),
         "ist eine Praxisdatenbank der Schemaversion 0; dieses Programm kennt die Versionen 1 bis 2."},
        {"put into WAL mode by a tool",
         [](const std::string & s) { EXPECT_EQ(CWerkzeug(s).Sql("PRAGMA journal_mode = WAL"), "wal"); },
         "ist von einem anderen Werkzeug auf das WAL-Verfahren umgestellt worden."},
        {"a table altered", Sql("ALTER TABLE BEH ADD COLUMN NEU TEXT"),
         "ist verändert worden: BEH fehlt oder ist anders aufgebaut."},
        {"an index dropped", Sql("DROP INDEX PAT_SCHLUESSEL2"),
         "ist verändert worden: PAT_SCHLUESSEL2 fehlt oder ist anders aufgebaut."},
        {"no running number", Sql("DELETE FROM LAUFNUMMER"), "ist beschädigt."},
        {"cut off", [](const std::string & s) { std::filesystem::resize_file(s, 20000); }, "ist beschädigt."},
        {"a broken schema", [](const std::string & s) { Ueberschreibe(s, 100, 60); }, "ist beschädigt."},
        {"a broken root",
         [](const std::string & s) {
             const std::string sSeite =
                 CWerkzeug(s).Sql("SELECT rootpage FROM sqlite_schema WHERE name = 'BEH'");
             Ueberschreibe(s, (std::stol(sSeite) - 1) * 8192, 60);
         },
         "ist beschädigt."},
    };
    for (const SFall & fall : aFaelle)
        for (const EModus eModus : {EModus::Lesen, EModus::Schreiben}) {
            SCOPED_TRACE(fall.pName);
            std::filesystem::remove_all(m_sDatei);
            Mache();
            fall.fMache(m_sDatei);
            const bool bDatei = std::filesystem::is_regular_file(m_sDatei);
            const std::string sVorher = bDatei ? LiesDatei(m_sDatei) : "";
            const auto vInhalt = m_verzeichnis.Inhalt();
            EXPECT_EQ(Oeffne(eModus), nullptr);
            EXPECT_EQ(m_sMeldung.Utf8(), "Die Datei \"" + m_sDatei + "\" " + fall.pGrund);
            EXPECT_EQ(m_verzeichnis.Inhalt(), vInhalt);
            EXPECT_EQ(bDatei ? LiesDatei(m_sDatei) : "", sVorher);
        }
}

TEST_F(SqliteDateiTest, RefusesFilesThatMayNotBeReadOrWritten) {
    Mache();
    const COhneRootrechte ohne(std::filesystem::path(m_sDatei).parent_path());
    chmod(m_sDatei.c_str(), 0400);
    EXPECT_EQ(Oeffne(EModus::Schreiben), nullptr);
    EXPECT_EQ(m_sMeldung.Utf8(), "Die Datei \"" + m_sDatei + "\" ist schreibgeschützt.");
    EXPECT_TRUE(Oeffne(EModus::Lesen));
    chmod(m_sDatei.c_str(), 0);
    EXPECT_EQ(Oeffne(EModus::Lesen), nullptr);
    EXPECT_EQ(m_sMeldung.Utf8(),
              "Die Datei \"" + m_sDatei + "\" lässt sich nicht lesen; vermutlich fehlt die Berechtigung.");
}

TEST_F(SqliteDateiTest, RefusesALockedFileUntilItIsFree) {
    Mache();
    {
        CWerkzeug werkzeug(m_sDatei);
        EXPECT_EQ(werkzeug.Sql("BEGIN EXCLUSIVE"), "");
        EXPECT_EQ(Oeffne(EModus::Lesen), nullptr);
        EXPECT_EQ(m_sMeldung.Utf8(), "Die Datei \"" + m_sDatei +
                                         "\" ist gesperrt; ein anderes Programm schreibt gerade in sie.");
    }
    EXPECT_TRUE(Oeffne(EModus::Lesen));
    EXPECT_EQ(m_sMeldung, CString());
}

TEST_F(SqliteDateiTest, MakesNoFileOverAnother) {
    std::ofstream(m_sDatei) << "Brief";
    EXPECT_EQ(Oeffne(EModus::Neu), nullptr);
    EXPECT_EQ(m_sMeldung.Utf8(), "Die Datei \"" + m_sDatei + "\" gibt es schon.");
    EXPECT_EQ(LiesDatei(m_sDatei), "Brief");
    for (const std::string & sName :
         {m_verzeichnis.Datei("kein/praxis.db"), std::string(), m_verzeichnis.Datei("")})
        EXPECT_EQ(CSqliteSpeicher::OeffneDatei(sName, EModus::Neu, m_sMeldung), nullptr) << sName;
    EXPECT_EQ(m_verzeichnis.Inhalt(), std::vector<std::string>{"praxis.db"});
}

TEST_F(SqliteDateiTest, AReadOnlyStoreRefusesEveryWrite) {
    Mache();
    const std::string sVorher = LiesDatei(m_sDatei);
    ErwarteNurLesen(*Oeffne(EModus::Lesen));
    EXPECT_EQ(LiesDatei(m_sDatei), sVorher);
}

TEST_F(SqliteDateiTest, AnyToolCanReadTheFile) {
    Mache();
    CWerkzeug werkzeug(m_sDatei);
    struct SFall {
        const char * pSql;
        const char * pSoll;
    };
    const SFall aFaelle[] = {
        {"SELECT PATNAME FROM PAT WHERE PATNR = '         1'", "Öztürk"},
        {"SELECT typeof(PATNAME) || typeof(PATGEBDATUM) || typeof(SCHLUESSEL1) FROM PAT", "texttextblob"},
        {"SELECT hex(SCHLUESSEL1) FROM PAT", "2020202020202020203100"},
        {"SELECT hex(SCHLUESSEL2) FROM PAT", "D67A74FC726B004179736500"},
        {"SELECT LFD FROM PAT", "1"},
        {"SELECT group_concat(name) FROM pragma_table_info('TBENTRY')", "SCHLUESSEL1,LFD,TBKEY,TBLFD,TBTEXT"},
        {"PRAGMA application_id", "1330861122"},
        {"PRAGMA user_version", "2"},
        {"PRAGMA integrity_check", "ok"},
    };
    for (const SFall & fall : aFaelle)
        EXPECT_EQ(werkzeug.Sql(fall.pSql), fall.pSoll) << fall.pSql;
}

TEST_F(SqliteDateiTest, ReadsWhatItWouldNotWriteWithoutHarm) {
    Mache();
    struct SFall {
        const char * pSql;
        CString sSoll;
    };
    const SFall aFaelle[] = {
        {"NULL", ""},
        {"42", "42"},
        {"CAST(-1.5 AS REAL)", "-1.5"},
        {"x''", ""},
        {"x'4D6169'", "Mai"},
        {"CAST(x'41C342' AS TEXT)", "A?B"},
        {"CAST(x'FFFE80' AS TEXT)", "???"},
        {"CAST(x'4D61C3' AS TEXT)", "Ma?"},
        {"'漢 €'", "? €"},
        {"'Müller-Lüdenscheidt, geborene Schmidt'", "Müller-Lüdenscheidt, geborene Schmidt"_t},
    };
    const char * const pSchema = "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, "
                                 "'\"%s', '\"%s') WHERE name = 'PAT'";
    for (const SFall & fall : aFaelle) {
        SCOPED_TRACE(fall.pSql);
        char acSql[200];
        std::snprintf(acSql, sizeof acSql, pSchema, "PATNAME\" TEXT NOT NULL", "PATNAME\" BLOB");
        EXPECT_EQ(CWerkzeug(m_sDatei).Sql(acSql), "");
        EXPECT_EQ(CWerkzeug(m_sDatei).Sql(std::string("UPDATE PAT SET PATNAME = ") + fall.pSql), "");
        std::snprintf(acSql, sizeof acSql, pSchema, "PATNAME\" BLOB", "PATNAME\" TEXT NOT NULL");
        EXPECT_EQ(CWerkzeug(m_sDatei).Sql(acSql), "");
        const auto p = Oeffne(EModus::Lesen);
        ASSERT_TRUE(p) << m_sMeldung.Utf8();
        CPatientenweg weg(*p);
        weg.m_zeile.m_PATNAME = "vorher";
        ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        EXPECT_EQ(weg.m_zeile.m_PATNAME, fall.sSoll);
    }
}

TEST_F(SqliteDateiTest, EqualKeysKeepTheirOrderFromOneOpeningToTheNext) {
    Mache();
    for (const CString & sNummer : {CString("c"), CString("b"), CString("a")}) {
        const auto p = Oeffne(EModus::Schreiben);
        ASSERT_TRUE(p);
        Schreibe(*p, sNummer, "Mai");
    }
    EXPECT_EQ(Nummern(*Oeffne(EModus::Lesen), {2, false, "Mai", ""}), "c b a          1");
}

TEST_F(SqliteDateiTest, TwoStoresOfOneFileSeeEachOthersWrites) {
    Mache();
    const auto pLeser = Oeffne(EModus::Lesen);
    const auto pErster = Oeffne(EModus::Schreiben);
    const auto pZweiter = Oeffne(EModus::Schreiben);
    ASSERT_TRUE(pLeser && pErster && pZweiter);
    EXPECT_EQ(Schreibe(*pErster, "2"), ZEILE_OK);
    EXPECT_EQ(Schreibe(*pZweiter, "3"), ZEILE_OK);
    EXPECT_EQ(Schreibe(*pErster, "4"), ZEILE_OK);
    EXPECT_EQ(Nummern(*pLeser), "         1 2 3 4");
    CPatientenweg weg(*pZweiter); // its rows are all older than the next write
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(Schreibe(*pZweiter, "5"), ZEILE_OK);
    EXPECT_EQ(weg.Rest(), "2 3 4");
}

TEST_F(SqliteDateiTest, ACrashInAGroupLeavesTheFormerRows) {
    Mache();
    const pid_t iKind = fork();
    ASSERT_GE(iKind, 0);
    if (iKind == 0) { // so much that pages have reached the file before the end
        const auto p = Oeffne(EModus::Schreiben);
        if (!p || p->Beginne() != ZEILE_OK) _exit(1);
        CPatientenweg(*p).Naechste();
        for (int i = 0; i < 4000; ++i)
            if (Schreibe(*p, "x", CString('n', 12000)) != ZEILE_OK) _exit(1);
        _exit(0);
    }
    int iStatus = 1;
    ASSERT_EQ(waitpid(iKind, &iStatus, 0), iKind);
    ASSERT_EQ(iStatus, 0);
    ASSERT_EQ(m_verzeichnis.Inhalt(), (std::vector<std::string>{"praxis.db", "praxis.db-journal"}));
    EXPECT_EQ(Oeffne(EModus::Lesen), nullptr);
    EXPECT_EQ(
        m_sMeldung.Utf8(),
        "Die Datei \"" + m_sDatei +
            "\" trägt noch eine unterbrochene Änderung; wer sie zum Schreiben öffnet, nimmt diese zurück.");
    EXPECT_EQ(Nummern(*Oeffne(EModus::Schreiben)), "         1");
    EXPECT_EQ(Nummern(*Oeffne(EModus::Lesen)), "         1");
    EXPECT_EQ(m_verzeichnis.Inhalt(), std::vector<std::string>{"praxis.db"});
}

TEST_F(SqliteDateiTest, EveryTableOfThePracticeCanBeWrittenAndReadByEveryKey) {
    const auto p = Oeffne(EModus::Neu);
    ASSERT_TRUE(p);
    for (const STabelle * pTabelle : AlleTabellen()) {
        SCOPED_TRACE(pTabelle->pName);
        std::vector<CString> vTexte;
        for (const SSpalteInfo & spalte : pTabelle->vSpalten)
            vTexte.emplace_back(spalte.pName);
        std::vector<CString> vGelesen(vTexte.size());
        std::vector<CString *> vZiel;
        std::vector<const CString *> vWerte;
        for (std::size_t i = 0; i < vTexte.size(); ++i) {
            vWerte.push_back(&vTexte[i]);
            vZiel.push_back(&vGelesen[i]);
        }
        ASSERT_EQ(p->Schreibe(*pTabelle, vWerte), ZEILE_OK);
        for (std::size_t k = 1; k <= pTabelle->vSchluessel.size(); ++k)
            for (const bool bAbsteigend : {false, true}) {
                vGelesen.assign(vGelesen.size(), CString());
                const auto pWeg = p->Oeffne(*pTabelle, {static_cast<int>(k), bAbsteigend, "", ""});
                ASSERT_TRUE(pWeg);
                ASSERT_EQ(pWeg->Naechste(vZiel), ZEILE_OK);
                EXPECT_EQ(vGelesen, vTexte);
                EXPECT_EQ(pWeg->Naechste(vZiel), ZEILE_KEINE);
            }
    }
    EXPECT_EQ(p->Pruefe(), std::vector<CString>());
}

} // namespace
} // namespace orvostat
