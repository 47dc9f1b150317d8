// Wrong usage and bad files: every one has its message and its exit code.
#include "Programmlauf.h"

#include "support/Rechte.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include <sqlite3.h>
#include <unistd.h>

namespace orvostat {
namespace {

using CAufrufTest = CProgrammTest;

// Wrong usage is said in German only, and nothing is made or read.
TEST_F(CAufrufTest, Befehle) {
    PruefeBefehle(ORVOSTATBS_SOURCE_DIR "/tests/program/faelle/aufruf.txt");
    EXPECT_FALSE(std::filesystem::exists(Pfad("a.db")));
    EXPECT_EQ(Laufe("").iCode, 2);
}

TEST_F(CAufrufTest, OneThingCanBeSaidInSeveralWays) {
    ASSERT_EQ(Laufe("sample a.db --patients 60 --years 1").iCode, 0);
    const std::pair<const char *, const char *> PAARE[] = {
        {"run a.db --hits --format CSV --von 2024-01-01 --bis 2024-06-30 --alter 40..50 --stichtag "
         "2034-07-01",
         "run a.db --hits --format csv --von 01.01.2024 --bis 20240630 --alter 30..40 --stichtag 01.07.2024"},
        {"run a.db --hits --format csv --leistung 13A --abrart C,z --status Abgerechnet --sort NAME --mfr "
         "1,3,5",
         "run a.db --hits --format csv --leistung 13a --abrart cz --status abgerechnet --sort name --mfr "
         "135"},
        {"HITS a.db --behandler 1,3 --von 2024-01-02 --bis 02.01.2024",
         "hits a.db --behandler 3,1 --von 02.01.2024 --bis 20240102"}};
    const auto Tabelle = [&](const char * pBefehl) {
        const std::string sAus = Laufe(pBefehl).sAus;
        return sAus.substr(std::min(sAus.find("Datum"), sAus.size()));
    };
    for (const auto & [pEine, pAndere] : PAARE) {
        const std::string sTabelle = Tabelle(pEine);
        EXPECT_EQ(sTabelle, Tabelle(pAndere)) << pEine;
        EXPECT_GT(std::ranges::count(sTabelle, '\n'), 2) << pEine;
    }
}

TEST_F(CAufrufTest, HelpIsGermanAndNoError) {
    for (const char * pBefehl :
         {"", "sample ", "hits ", "run ", "explain ", "check ", "copy ", "arbeitstage ", "hvm a.db pots "}) {
        const SProgrammende ende = Laufe(std::string(pBefehl) + "--help");
        EXPECT_EQ(ende.iCode, 0) << pBefehl;
        EXPECT_NE(ende.sAus.find("Aufruf: orvostat"), std::string::npos) << ende.sAus;
        EXPECT_NE(ende.sAus.find("Zeigt diese Hilfe"), std::string::npos) << ende.sAus;
        for (const char * pEnglisch :
             {"Usage", "Options:", "Subcommands", "REQUIRED", "Print this", "INT", "Needs", "Excludes"})
            EXPECT_EQ(ende.sAus.find(pEnglisch), std::string::npos) << ende.sAus;
    }
}

TEST_F(CAufrufTest, TheProgramTellsItsVersionAndItsExitCodes) {
    EXPECT_EQ(Laufe("--version").sAus.substr(0, 9), "orvostat ");
    EXPECT_EQ(Laufe("--version").iCode, 0);
    EXPECT_NE(Laufe("--help").sAus.find("130 abgebrochen"), std::string::npos);
    EXPECT_EQ(Laufe("hits --help").sAus.find("130 abgebrochen"), std::string::npos);
}

// A locked file: a connection that writes.
class CSperre {
public:
    explicit CSperre(const std::filesystem::path & pfad, const char * pSql = "BEGIN EXCLUSIVE") {
        sqlite3_open(pfad.c_str(), &m_p);
        sqlite3_exec(m_p, pSql, nullptr, nullptr, nullptr);
    }
    ~CSperre() { sqlite3_close(m_p); }
    CSperre(const CSperre &) = delete;
    CSperre & operator=(const CSperre &) = delete;

private:
    sqlite3 * m_p = nullptr;
};

TEST_F(CAufrufTest, BadFilesAreRefusedWithAReason) {
    ASSERT_EQ(Laufe("sample gut.db --patients 2").iCode, 0);
    std::ofstream(Pfad("text.db")) << "Das ist keine Datenbank.";
    std::filesystem::copy_file(Pfad("gut.db"), Pfad("neuer.db"));
    Sql("neuer.db", "PRAGMA user_version = 99");

    const std::pair<const char *, const char *> aFaelle[] = {{"nirgends.db", "gibt es nicht"},
                                                             {"text.db", "ist keine Datenbank"},
                                                             {"neuer.db", "Schemaversion 99"}};
    for (const std::string sBefehl : {"hits ", "check "})
        for (const auto & [pDatei, pMeldung] : aFaelle) {
            const SProgrammende ende = Laufe(sBefehl + pDatei);
            EXPECT_EQ(ende.iCode, 1) << sBefehl << pDatei;
            EXPECT_NE(ende.sFehler.find(pMeldung), std::string::npos) << ende.sFehler;
            EXPECT_EQ(ende.sAus, "") << sBefehl << pDatei;
        }
    EXPECT_EQ(Dateien(), "gut.db neuer.db text.db");
}

TEST_F(CAufrufTest, ALockedFileIsRefused) {
    ASSERT_EQ(Laufe("sample a.db --patients 2").iCode, 0);
    const CSperre sperre(Pfad("a.db"));
    for (const char * pBefehl : {"hits a.db", "check a.db", "copy a.db b.db"}) {
        const SProgrammende ende = Laufe(pBefehl);
        EXPECT_EQ(ende.iCode, 1) << pBefehl;
        EXPECT_NE(ende.sFehler.find("\"a.db\" ist gesperrt"), std::string::npos) << ende.sFehler;
    }
}

TEST_F(CAufrufTest, TheCheckTakesBackWhatACrashHasLeft) {
    ASSERT_EQ(Laufe("sample a.db --patients 20").iCode, 0);
    {
        const CSperre schreiber(Pfad("a.db"), "PRAGMA cache_size = 5; BEGIN; UPDATE BEH SET BETRAG = "
                                              "'e1', TEXT = hex(zeroblob(2000))");
        for (const std::string sEndung : {"", "-journal"})
            std::filesystem::copy_file(Pfad("a.db" + sEndung), Pfad("b.db" + sEndung));
    }
    const SProgrammende vorher = Laufe("hits b.db");
    EXPECT_EQ(vorher.iCode, 1);
    EXPECT_NE(vorher.sFehler.find(" nimmt diese zurück. \"orvostat check\" tut das.\n"), std::string::npos)
        << vorher.sFehler;
    const SProgrammende pruefung = Laufe("check b.db");
    EXPECT_EQ(pruefung.iCode, 0);
    EXPECT_EQ(pruefung.sAus.find("Eine unterbrochene Änderung wurde zurückgenommen.\n"), 0U) << pruefung.sAus;
    EXPECT_EQ(Laufe("check b.db").sAus.find("unterbrochene"), std::string::npos);
    EXPECT_EQ(Laufe("hits b.db").sAus, Laufe("hits a.db").sAus);
}

// Where the user's limits for files and memory end a command, it says so and leaves nothing behind.
TEST_F(CAufrufTest, ALimitEndsACommandWithItsReason) {
    ASSERT_EQ(Laufe("sample a.db --patients 100").iCode, 0);
    const auto LaufeMit = [&](const std::string & sGrenze, const std::string & sBefehl) {
        return std::system(("cd '" + Pfad("").string() + "' && ulimit " + sGrenze +
                            " && exec " ORVOSTATBS_PROGRAM_PATH " " + sBefehl + " > aus 2> fehler")
                               .c_str());
    };
    const auto NichtsDa = [&] {
        return std::ranges::none_of(std::filesystem::directory_iterator(Pfad("")), [](const auto & eintrag) {
            return eintrag.path().filename().string().starts_with("b.db");
        });
    };
    for (const auto & [pGrenze, pBefehl] : {std::pair{"-f 100", "sample b.db --patients 600"},
                                            {"-f 2500", "sample b.db --patients 600"},
                                            {"-f 100", "run a.db --hits --format csv -o b.db"}}) {
        EXPECT_EQ(LaufeMit(pGrenze, pBefehl), 1 << 8) << pGrenze;
        EXPECT_NE(Inhalt("fehler").find(" würde größer als erlaubt"), std::string::npos) << Inhalt("fehler");
        EXPECT_TRUE(NichtsDa()) << pGrenze;
    }
#ifndef ORVOSTATBS_SANITIZED // which takes address space without end
    int iZuwenig = 0;
    for (int iKb = 4000; iKb < 60000; iKb += 1500) {
        const std::string sGrenze = "-v " + std::to_string(iKb);
        if (LaufeMit(sGrenze, "--version") != 0) continue; // not even loaded
        if (LaufeMit(sGrenze, "copy a.db b.db") == 0) break;
        EXPECT_NE(Inhalt("fehler").find("Speicher"), std::string::npos) << sGrenze << Inhalt("fehler");
        EXPECT_TRUE(NichtsDa()) << sGrenze;
        ++iZuwenig;
    }
    EXPECT_GT(iZuwenig, 0);
#endif
}

// A file that may only be read, in a directory that may only be read.
TEST_F(CAufrufTest, AReadOnlyFileCanBeReadAndNotReplaced) {
    using std::filesystem::perms;
    std::filesystem::create_directory(Pfad("fest"));
    ASSERT_EQ(Laufe("sample fest/a.db --patients 2").iCode, 0);
    const COhneRootrechte ohne(Pfad(""));
    std::filesystem::permissions(Pfad("fest/a.db"), perms::owner_read);
    std::filesystem::permissions(Pfad("fest"), perms::owner_read | perms::owner_exec);
    EXPECT_EQ(Laufe("check fest/a.db").iCode, 0);
    EXPECT_EQ(Laufe("sample fest/a.db --force").iCode, 1);
    std::filesystem::permissions(Pfad("fest"), perms::owner_all);
}

TEST_F(CAufrufTest, AFullOutputIsAFailure) {
    ASSERT_EQ(Laufe("sample a.db --patients 2").iCode, 0);
    for (const std::string sBefehl : {"hits a.db", "--help", "--version"}) {
        EXPECT_EQ(std::system(("cd '" + Pfad("").string() + "' && " ORVOSTATBS_PROGRAM_PATH " " + sBefehl +
                               " > /dev/full 2> fehler")
                                  .c_str()),
                  1 << 8)
            << sBefehl;
        EXPECT_EQ(Inhalt("fehler"), "Die Ausgabe ließ sich nicht schreiben.\n") << sBefehl;
    }
}

} // namespace
} // namespace orvostat
