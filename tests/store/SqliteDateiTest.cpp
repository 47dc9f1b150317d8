// The file of the SQLite store: what is refused, what another tool sees of it, and what it survives.
#include "SqliteTest.h"

#include "support/Rechte.h"

#include "orvostatbs/host/Tabellen.h"

#include <cstdlib>

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
    const auto Verweigert = [this](const std::string & sGrund, const auto & fMache) {
        for (const EModus eModus : {EModus::Lesen, EModus::Schreiben}) {
            std::filesystem::remove_all(m_sDatei);
            Mache();
            fMache(); // of a sound practice's file
            const bool bDatei = std::filesystem::is_regular_file(m_sDatei);
            const std::string sVorher = bDatei ? LiesDatei(m_sDatei) : "";
            const auto vInhalt = m_verzeichnis.Inhalt();
            EXPECT_EQ(Grund(eModus), sGrund);
            EXPECT_TRUE(m_verzeichnis.Inhalt() == vInhalt && (!bDatei || LiesDatei(m_sDatei) == sVorher))
                << sGrund;
        }
    };
    const auto Anders = [&](const std::string & sGrund, const auto & fMache) {
        Verweigert(sGrund, [&] { std::filesystem::remove(m_sDatei), fMache(); });
    };
    const auto Nach = [&](const char * pSql, const std::string & sGrund, const char * pSoll = "") {
        Verweigert(sGrund, [&] { EXPECT_EQ(Sql(pSql), pSoll); });
    };
    Anders("gibt es nicht.", [] {});
    Anders("ist ein Verzeichnis.", [&] { std::filesystem::create_directory(m_sDatei); });
    Anders("ist keine gewöhnliche Datei.", [&] { EXPECT_EQ(mkfifo(m_sDatei.c_str(), 0600), 0); });
    Anders("lässt sich nicht lesen: der Datenträger meldet einen Fehler.",
           [&] { std::filesystem::create_symlink("/proc/self/mem", m_sDatei); });
    Anders("ist keine Datenbank.", [&] { std::ofstream aus(m_sDatei); });
    Anders("ist keine Datenbank.", [&] { std::ofstream(m_sDatei) << std::string(5000, 'x'); });
    Anders("ist die Datenbank eines anderen Programms.", [&] { Sql("CREATE TABLE BEH (PATNR)"); });
    Nach("PRAGMA user_version = 7",
         "ist eine Praxisdatenbank der Schemaversion 7; dieses Programm kennt die Versionen 1 bis 2.");
    Nach("PRAGMA user_version = 0",
         "ist eine Praxisdatenbank der Schemaversion 0; dieses Programm kennt die Versionen 1 bis 2.");
    Nach("PRAGMA journal_mode = WAL",
         "ist von einem anderen Werkzeug auf das WAL-Verfahren umgestellt worden.", "wal");
    Nach("ALTER TABLE BEH ADD COLUMN NEU TEXT", "ist verändert worden: BEH fehlt oder ist anders aufgebaut.");
    Nach("DROP INDEX PAT_SCHLUESSEL2",
         "ist verändert worden: PAT_SCHLUESSEL2 fehlt oder ist anders aufgebaut.");
    Nach("DELETE FROM LAUFNUMMER", "ist beschädigt.");
    Verweigert("ist beschädigt.", [&] { std::filesystem::resize_file(m_sDatei, 20000); });
    Verweigert("ist beschädigt.", [&] { Ueberschreibe(m_sDatei, 100, 60); }); // the schema
    Verweigert("ist beschädigt.", [&] {
        const std::string sSeite = Sql("SELECT rootpage FROM sqlite_schema WHERE name = 'BEH'");
        Ueberschreibe(m_sDatei, (std::stol(sSeite) - 1) * 8192, 60);
    });
}

TEST_F(SqliteDateiTest, RefusesFilesThatAreLockedOrMayNotBeReadOrWritten) {
    Mache();
    {
        CWerkzeug werkzeug(m_sDatei);
        EXPECT_EQ(werkzeug.Sql("BEGIN EXCLUSIVE"), "");
        EXPECT_EQ(Grund(EModus::Lesen), "ist gesperrt; ein anderes Programm schreibt gerade in sie.");
    }
    EXPECT_TRUE(Oeffne(EModus::Lesen) && m_sMeldung.IsEmpty());
    const COhneRootrechte ohne(std::filesystem::path(m_sDatei).parent_path());
    chmod(m_sDatei.c_str(), 0400);
    EXPECT_EQ(Grund(EModus::Schreiben), "ist schreibgeschützt.");
    EXPECT_TRUE(Oeffne(EModus::Lesen));
    chmod(m_sDatei.c_str(), 0);
    EXPECT_EQ(Grund(EModus::Lesen), "lässt sich nicht lesen; vermutlich fehlt die Berechtigung.");
}

TEST_F(SqliteDateiTest, MakesNoFileOverAnother) {
    std::ofstream(m_sDatei) << "Brief";
    EXPECT_EQ(Grund(EModus::Neu), "gibt es schon.");
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
    const std::pair<const char *, const char *> aFaelle[] = {
        {"SELECT PATNAME FROM PAT WHERE PATNR = '         1'", "Öztürk"},
        {"SELECT typeof(PATNAME) || typeof(PATGEBDATUM) || typeof(SCHLUESSEL1) FROM PAT", "texttextblob"},
        {"SELECT hex(SCHLUESSEL1) || '/' || hex(SCHLUESSEL2) || '/' || LFD FROM PAT",
         "2020202020202020203100/D67A74FC726B004179736500/1"},
        {"SELECT group_concat(name) FROM pragma_table_info('TBENTRY')", "SCHLUESSEL1,LFD,TBKEY,TBLFD,TBTEXT"},
        {"PRAGMA application_id", "1330861122"},
        {"PRAGMA user_version", "2"},
        {"PRAGMA integrity_check", "ok"},
    };
    for (const auto & [pSql, pSoll] : aFaelle)
        EXPECT_EQ(Sql(pSql), pSoll) << pSql;
}

TEST_F(SqliteDateiTest, ReadsWhatItWouldNotWriteWithoutHarm) {
    Mache();
    const auto Ersetze = [this](const char * pAlt, const char * pNeu) {
        EXPECT_EQ(
            Sql(std::string(
                    "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'PATNAME\" ") +
                pAlt + "', 'PATNAME\" " + pNeu + "') WHERE name = 'PAT'"),
            "");
    };
    const std::pair<const char *, const char *> aFaelle[] = {
        {"NULL", ""},
        {"42", "42"},
        {"CAST(-1.5 AS REAL)", "-1.5"},
        {"x''", ""},
        {"x'4D6169'", "Mai"},
        {"CAST(x'41C342' AS TEXT)", "A?B"},
        {"CAST(x'FFFE80' AS TEXT)", "???"},
        {"CAST(x'4D61C3' AS TEXT)", "Ma?"},
        {"'漢 €'", "? €"},
        {"'Müller-Lüdenscheidt, geborene Schmidt'", "Müller-Lüdenscheidt, geborene Schmidt"}};
    for (const auto & [pSql, pSoll] : aFaelle) {
        Ersetze("TEXT NOT NULL", "BLOB");
        EXPECT_EQ(Sql(std::string("UPDATE PAT SET PATNAME = ") + pSql), "");
        Ersetze("BLOB", "TEXT NOT NULL");
        const auto p = Oeffne(EModus::Lesen);
        ASSERT_TRUE(p) << m_sMeldung.Utf8();
        CPatientenweg weg(*p);
        weg.m_zeile.m_PATNAME = "vorher";
        ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        EXPECT_EQ(weg.m_zeile.m_PATNAME.Utf8(), pSoll) << pSql;
    }
}

TEST_F(SqliteDateiTest, StoresOfOneFileSeeEachOthersWritesInTheirOrder) {
    Mache();
    const auto pLeser = Oeffne(EModus::Lesen);
    const auto pErster = Oeffne(EModus::Schreiben);
    const auto pZweiter = Oeffne(EModus::Schreiben);
    ASSERT_TRUE(pLeser && pErster && pZweiter);
    EXPECT_EQ(Schreibe(*pErster, "2", "Mai") + Schreibe(*pZweiter, "4", "Mai") +
                  Schreibe(*pErster, "3", "Mai"),
              ZEILE_OK);
    EXPECT_EQ(Nummern(*pLeser), "         1 2 3 4");
    CPatientenweg weg(*pZweiter); // its rows are all older than the next write
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(Schreibe(*pZweiter, "1", "Mai"), ZEILE_OK);
    EXPECT_EQ(weg.Rest(), "2 3 4");
    EXPECT_EQ(Nummern(*Oeffne(EModus::Lesen), {2, false, "Mai", ""}), "2 4 3 1          1") << "equal keys";
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
    EXPECT_EQ(Grund(EModus::Lesen),
              "trägt noch eine unterbrochene Änderung; wer sie zum Schreiben öffnet, nimmt diese zurück.");
    EXPECT_EQ(Nummern(*Oeffne(EModus::Schreiben)), "         1");
    EXPECT_EQ(Nummern(*Oeffne(EModus::Lesen)), "         1");
    EXPECT_EQ(m_verzeichnis.Inhalt(), std::vector<std::string>{"praxis.db"});
}

TEST_F(SqliteDateiTest, EveryTableOfThePracticeCanBeWrittenAndReadByEveryKey) {
    const auto p = Oeffne(EModus::Neu);
    ASSERT_TRUE(p);
    for (const STabelle * pTabelle : AlleTabellen()) {
        std::vector<CString> vTexte;
        std::string sSoll;
        for (const SSpalteInfo & spalte : pTabelle->vSpalten) {
            vTexte.emplace_back(spalte.pName);
            sSoll += std::string(sSoll.empty() ? "" : "|") + spalte.pName;
        }
        std::vector<const CString *> vWerte;
        for (const CString & sText : vTexte)
            vWerte.push_back(&sText);
        ASSERT_EQ(p->Schreibe(*pTabelle, vWerte), ZEILE_OK);
        for (int k = 1; k <= std::ssize(pTabelle->vSchluessel); ++k)
            for (const bool bAbsteigend : {false, true})
                EXPECT_EQ(Zeilen(*p, *pTabelle, {k, bAbsteigend, "", ""}), sSoll + "\n") << pTabelle->pName;
    }
    EXPECT_EQ(p->Pruefe(), std::vector<CString>());
}

} // namespace
} // namespace orvostat
