// Files of older versions of the schema, one in tests/data for each. They are read as they are and extended by who
// writes, and whatever happens meanwhile, a file is of one version or of the other.
#include "SqliteTest.h"

#include "orvostatbs/host/Tabellen.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <cerrno>

#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {
namespace {

const STabelle & Behandlungen() { return SBeschreibung<CTBeh_Fields>::tabelle; }

bool Gleich(CZeilenspeicher & a, CZeilenspeicher & b) {
    return std::ranges::all_of(AlleTabellen(), [&](const STabelle * p) { return GleicheTabelle(a, b, *p); });
}

class SqliteVersionTest : public CSqliteTest {
protected:
    void Mache(int iVersion) {
        std::filesystem::remove(m_sDatei);
        ASSERT_EQ(Sql(AlteVersion(iVersion)), "");
    }
    // The rows of the file as it is.
    std::shared_ptr<CMemorySpeicher> LiesAlles() {
        auto p = std::make_shared<CMemorySpeicher>();
        const auto pDatei = Oeffne(EModus::Lesen);
        for (const STabelle * pTabelle : AlleTabellen())
            EXPECT_TRUE(pDatei && KopiereTabelle(*pDatei, *p, *pTabelle) == ZEILE_OK) << m_sMeldung.Utf8();
        return p;
    }
    const std::string m_sHeutige = [this] {
        Oeffne(EModus::Neu);
        return Sql("PRAGMA user_version");
    }();
    const std::string m_sSchema = Sql(SCHEMA);
    static constexpr const char * SCHEMA =
        "SELECT group_concat(sql, '; ') FROM (SELECT sql FROM sqlite_schema ORDER BY type, name)";
};

TEST_F(SqliteVersionTest, AnOlderFileIsReadAsItIsAndExtendedByWhoWrites) {
    for (int iVersion = 1; std::to_string(iVersion) != m_sHeutige; ++iVersion) {
        SCOPED_TRACE(iVersion);
        Mache(iVersion);
        const std::string sVorher = LiesDatei(m_sDatei);
        const auto pZeilen = LiesAlles();
        const SBereich quartal{2, false, "20240101", "20240401"};
        for (const bool bAbsteigend : {false, true})
            for (const SBereich & bereich : {SBereich{2, bAbsteigend, "", ""}, quartal, {1, false, "", ""}})
                EXPECT_EQ(Zeilen(*Oeffne(EModus::Lesen), Behandlungen(), bereich),
                          Zeilen(*pZeilen, Behandlungen(), bereich));
        EXPECT_NE(Zeilen(*pZeilen, Behandlungen(), quartal), "");
        EXPECT_EQ(LiesDatei(m_sDatei), sVorher);

        const auto pLeser = Oeffne(EModus::Lesen);
        EXPECT_EQ(Schreibe(*Oeffne(EModus::Schreiben), "9"), ZEILE_OK) << m_sMeldung.Utf8();
        EXPECT_EQ(Schreibe(*pZeilen, "9"), ZEILE_OK);
        EXPECT_EQ(Sql("PRAGMA user_version"), m_sHeutige);
        EXPECT_EQ(Sql(SCHEMA), m_sSchema);
        EXPECT_EQ(Oeffne(EModus::Lesen)->Pruefe(), std::vector<CString>());
        EXPECT_TRUE(Gleich(*pZeilen, *Oeffne(EModus::Lesen)));
        EXPECT_TRUE(Gleich(*pZeilen, *pLeser)) << "a store that was open before";
        EXPECT_EQ(Zeilen(*Oeffne(EModus::Lesen), Behandlungen(), quartal),
                  Zeilen(*pZeilen, Behandlungen(), quartal));
        EXPECT_EQ(m_verzeichnis.Inhalt(), std::vector<std::string>{"praxis.db"});
    }
}

// SQLite's writes and its removals of journals are counted down; at 0 the program dies, or writes fail from then on.
struct SSystem {
    int iNochGut = 0;
    bool bStirb = false;
    ssize_t (*pSchreibe)(int, const void *, std::size_t, off_t) = nullptr;
    int (*pEntferne)(const char *) = nullptr;
} s_system;

bool Scheitert() {
    if (s_system.iNochGut == 0 || --s_system.iNochGut > 0) return false;
    if (s_system.bStirb) _exit(9);
    s_system.iNochGut = 1;
    errno = ENOSPC;
    return true;
}

void ZaehleSystemrufe() {
    sqlite3_vfs * const pVfs = sqlite3_vfs_find(nullptr);
    const char * const pName = pVfs->xGetSystemCall(pVfs, "pwrite64") ? "pwrite64" : "pwrite";
    s_system.pSchreibe = reinterpret_cast<decltype(s_system.pSchreibe)>(pVfs->xGetSystemCall(pVfs, pName));
    s_system.pEntferne = reinterpret_cast<decltype(s_system.pEntferne)>(pVfs->xGetSystemCall(pVfs, "unlink"));
    const auto Schreibe = +[](int i, const void * p, std::size_t n, off_t iAb) {
        return Scheitert() ? ssize_t{-1} : s_system.pSchreibe(i, p, n, iAb);
    };
    const auto Entferne =
        +[](const char * p) { return s_system.bStirb && Scheitert() ? -1 : s_system.pEntferne(p); };
    pVfs->xSetSystemCall(pVfs, pName, reinterpret_cast<sqlite3_syscall_ptr>(Schreibe));
    pVfs->xSetSystemCall(pVfs, "unlink", reinterpret_cast<sqlite3_syscall_ptr>(Entferne));
}

TEST_F(SqliteVersionTest, AKillOrAFullDiskLeavesTheOldVersionOrTheNew) {
    Mache(1);
    const auto pZeilen = LiesAlles();
    const std::string sAlt = LiesDatei(m_sDatei);
    for (const bool bStirb : {true, false})
        for (int n = 1, iStatus = 1; iStatus != 0; ++n) {
            SCOPED_TRACE((bStirb ? "dies at " : "fails from ") + std::to_string(n));
            std::ofstream(m_sDatei, std::ios::binary) << sAlt;
            const pid_t iKind = fork();
            ASSERT_GE(iKind, 0);
            if (iKind == 0) {
                ZaehleSystemrufe();
                s_system.iNochGut = n;
                s_system.bStirb = bStirb;
                const bool bOffen = Oeffne(EModus::Schreiben) != nullptr;
                _exit(bOffen ? 0 : m_sMeldung.Find("erweitern: der Datenträger ist voll."_t) >= 0 ? 8 : 7);
            }
            ASSERT_EQ(waitpid(iKind, &iStatus, 0), iKind);
            ASSERT_TRUE(iStatus == 0 || WEXITSTATUS(iStatus) == (bStirb ? 9 : 8)) << iStatus;
            const bool bUnterbrochen = CSqliteSpeicher::Unterbrochen(m_sDatei);
            if (bUnterbrochen) {
                EXPECT_TRUE(CSqliteSpeicher::NimmZurueck(m_sDatei, m_sMeldung)) << m_sMeldung.Utf8();
                EXPECT_EQ(Sql("PRAGMA user_version"), "1");
            }
            EXPECT_EQ(LiesDatei(m_sDatei) == sAlt, Sql("PRAGMA user_version") == "1");
            EXPECT_TRUE(Gleich(*pZeilen, *Oeffne(EModus::Lesen))) << m_sMeldung.Utf8();
            EXPECT_TRUE(Gleich(*pZeilen, *Oeffne(EModus::Schreiben))) << m_sMeldung.Utf8();
            EXPECT_EQ(Sql("PRAGMA user_version"), m_sHeutige);
        }
}

TEST_F(SqliteVersionTest, AFileSomebodyReadsOrHasChangedIsNotExtended) {
    Mache(1);
    const std::string sAlt = LiesDatei(m_sDatei);
    {
        const auto pLeser = Oeffne(EModus::Lesen);
        CPatientenweg weg(*pLeser);
        ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        EXPECT_EQ(Grund(EModus::Schreiben),
                  "lässt sich nicht erweitern; ein anderes Programm arbeitet mit ihr.");
    }
    EXPECT_EQ(LiesDatei(m_sDatei), sAlt);
    Sql("CREATE VIEW JAHR AS SELECT DATUM FROM BEH");
    EXPECT_TRUE(Oeffne(EModus::Schreiben)) << "an addition of the practice's own";
    EXPECT_EQ(Sql("SELECT count(*) FROM JAHR"), "27");
    Mache(1);
    Sql("CREATE TABLE BEH_ALT (X)");
    EXPECT_EQ(Grund(EModus::Schreiben), "lässt sich nicht erweitern.");
    EXPECT_EQ(Sql("PRAGMA user_version"), "1");
    Sql("ALTER TABLE BEH ADD COLUMN NEU TEXT");
    EXPECT_EQ(Grund(EModus::Schreiben), "ist verändert worden: BEH fehlt oder ist anders aufgebaut.");
}

} // namespace
} // namespace orvostat
