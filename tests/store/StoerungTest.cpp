// Memory that ends, and a system that refuses. Whichever allocation of an operation fails, the program's or SQLite's:
// rows are as they were before or as they are after it, the same operation succeeds the next time, and no group is left
// open.
#include "SqliteTest.h"

#include "orvostatbs/store/MemorySpeicher.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <new>
#include <thread>

namespace orvostat {
namespace {

std::atomic<int> s_iNochGut{0};    // the allocation that fails, counted down; below 1 none does
std::atomic<bool> s_bFaden{false}; // only those of other threads count, else only those of this one
const std::thread::id s_ich = std::this_thread::get_id();

bool Scheitert() {
    return s_iNochGut > 0 && (std::this_thread::get_id() != s_ich) == s_bFaden && s_iNochGut-- == 1;
}

sqlite3_mem_methods s_sqlite;
const bool s_bGezaehlt = [] {
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &s_sqlite);
    sqlite3_mem_methods gezaehlt = s_sqlite;
    gezaehlt.xMalloc = [](int n) { return Scheitert() ? nullptr : s_sqlite.xMalloc(n); };
    gezaehlt.xRealloc = [](void * p, int n) { return Scheitert() ? nullptr : s_sqlite.xRealloc(p, n); };
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &gezaehlt) == SQLITE_OK;
}();

} // namespace
} // namespace orvostat

void * operator new(std::size_t n, const std::nothrow_t &) noexcept {
    return orvostat::Scheitert() ? nullptr : std::malloc(n);
}
void * operator new(std::size_t n) {
    void * p = operator new(n, std::nothrow);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}
[[gnu::noinline]] void operator delete(void * p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void * p, std::size_t) noexcept { std::free(p); }

namespace orvostat {
namespace {

// Lets the n-th allocation of f fail; what f gives, or vScheitern where it throws. bErreicht: there were so many.
template <class F, class T> T Mit(int n, bool bFaden, bool & bErreicht, F f, T vScheitern) {
    s_bFaden = bFaden;
    s_iNochGut = n;
    try {
        vScheitern = f();
    } catch (const std::bad_alloc &) {
    }
    bErreicht = s_iNochGut.exchange(0) < 1;
    return vScheitern;
}

std::string Stand(CZeilenspeicher & speicher) {
    std::string s;
    for (const int iSchluessel : {1, 2}) {
        CPatientenweg weg(speicher, {iSchluessel, false, "", ""});
        while (weg.Naechste() == ZEILE_OK)
            s += (weg.m_zeile.m_PATNR + weg.m_zeile.m_PATNAME + weg.m_zeile.m_PATGEBDATUM + " ").Utf8();
    }
    return s;
}

using StoerungTest = CSqliteTest;

TEST_F(StoerungTest, AWriteHappensOnceOrNotAtAllAndCanBeRepeated) {
    ASSERT_TRUE(s_bGezaehlt);
    using FSchreibe = int (*)(CZeilenspeicher &, CPatientenweg &); // on a walk that stands on row 2
    static const std::pair<FSchreibe, const char *> OPERATIONEN[] = {
        {[](CZeilenspeicher & s, CPatientenweg &) { return Schreibe(s, "25", "o"); },
         "1z 2y 25o 3x 4 4 25o 3x 2y 1z "},
        {[](CZeilenspeicher &, CPatientenweg & weg) { return weg.Loesche(); }, "1z 3x 4 4 3x 1z "},
        {[](CZeilenspeicher &, CPatientenweg & weg) { return weg.Setze(&CTPat_Fields::m_PATNAME, "a"); },
         "1z 2a 3x 4 4 2a 3x 1z "},
        {[](CZeilenspeicher &, CPatientenweg & weg) {
             return weg.Setze(&CTPat_Fields::m_PATGEBDATUM, "19700101");
         },
         "1z 2y19700101 3x 4 4 3x 2y19700101 1z "}};
    const std::string sAnfang = "1z 2y 3x 3x 2y 1z ";
    const std::string sVorher = "1z 2y 3x 4 4 3x 2y 1z ";
    const auto Fuelle = [](CZeilenspeicher & s) {
        for (const auto & [pNummer, pName] : {std::pair{"1", "z"}, {"2", "y"}, {"3", "x"}})
            ASSERT_EQ(Schreibe(s, pNummer, pName), ZEILE_OK);
    };
    Fuelle(*Oeffne(EModus::NeuUngesichert));
    const auto Mache = [&](bool bSqlite) -> std::shared_ptr<CZeilenspeicher> {
        const std::string sDatei = m_verzeichnis.Datei("kopie.db");
        std::filesystem::copy_file(m_sDatei, sDatei, std::filesystem::copy_options::overwrite_existing);
        if (bSqlite) return CSqliteSpeicher::OeffneDatei(sDatei, EModus::Schreiben, m_sMeldung);
        auto p = std::make_shared<CMemorySpeicher>();
        Fuelle(*p);
        return p;
    };
    for (const bool bSqlite : {false, true})
        for (const auto & [fSchreibe, pNachher] : OPERATIONEN)
            for (const bool bGruppe : {false, true}) {
                bool bErreicht = true;
                for (int n = 1; bErreicht; n += n < 40 ? 1 : 4) {
                    SCOPED_TRACE(std::string(pNachher) + (bSqlite ? "in a file" : "in memory") +
                                 (bGruppe ? " in a group, " : ", ") + std::to_string(n));
                    const auto p = Mache(bSqlite);
                    ASSERT_TRUE(p) << m_sMeldung.Utf8();
                    ASSERT_EQ(bGruppe ? p->Beginne() : 0, ZEILE_OK);
                    ASSERT_EQ(Schreibe(*p, "4"), ZEILE_OK);
                    CPatientenweg weg(*p);
                    ASSERT_TRUE(weg.Naechste() == ZEILE_OK && weg.Naechste() == ZEILE_OK);
                    const auto Versuche = [&, f = fSchreibe] { return f(*p, weg); };
                    const int iErgebnis = Mit(n, false, bErreicht, Versuche, static_cast<int>(ZEILE_FEHLER));
                    // SQLite may have ended the group; then nothing goes into it any more.
                    const std::string sDanach = Stand(*p);
                    const bool bBeendet = bSqlite && bGruppe && sDanach == sAnfang;
                    if (iErgebnis != ZEILE_OK) {
                        EXPECT_TRUE(bBeendet || sDanach == sVorher) << sDanach;
                        EXPECT_EQ(Versuche() == ZEILE_OK, !bBeendet);
                    }
                    EXPECT_EQ(Stand(*p), bBeendet ? sAnfang : pNachher);
                    if (bGruppe) {
                        const bool bUebernehmen = bBeendet || n % 2 == 0;
                        EXPECT_EQ(p->Beende(bUebernehmen), bBeendet ? ZEILE_FEHLER : ZEILE_OK);
                        EXPECT_EQ(Stand(*p), bUebernehmen && !bBeendet ? pNachher : sAnfang);
                    }
                    EXPECT_EQ(p->Beende(true), ZEILE_FEHLER) << "no group is open";
                }
            }
}

TEST_F(StoerungTest, AReadGivesItsRowsOrFailsAndCanBeRepeated) {
    SchreibeZeilen("", 16000, CString('n', 40));
    const auto Bereiche = [](CZeilenspeicher & s, int iAb) {
        std::string sGelesen;
        for (int i = iAb; i < iAb + 70; ++i)
            sGelesen += Nummern(s, {1, false, std::to_string(i), std::to_string(i + 1)});
        return sGelesen;
    };
    const auto UnterEinemWeg = [&](CZeilenspeicher & s) {
        CPatientenweg weg(s);
        return weg.Naechste() == ZEILE_OK ? Bereiche(s, 10500) : "!";
    };
    const auto Lang = [&](CZeilenspeicher & s) {
        CPatientenweg weg(s);
        return weg.Naechste() != ZEILE_OK || Bereiche(s, 15000).empty() ? "!" : weg.Rest();
    };
    // Ranges under a walk; a long walk, and its thread that reads ahead.
    const std::pair<bool, std::function<std::string(CZeilenspeicher &)>> aOperationen[] = {
        {false, UnterEinemWeg}, {false, Lang}, {true, Lang}};
    for (const auto & [bFaden, fLies] : aOperationen) {
        const std::string sSoll = fLies(*Oeffne(EModus::Lesen));
        ASSERT_EQ(sSoll.find('!'), sSoll.npos);
        bool bErreicht = true;
        for (int n = 1; n < 250 && bErreicht; n += n < 20 ? 1 : 5) {
            SCOPED_TRACE(n);
            const auto p = Oeffne(EModus::Lesen);
            const std::string s = Mit(
                n, bFaden, bErreicht, [&, &f = fLies] { return f(*p); }, std::string("!"));
            EXPECT_TRUE(s == sSoll || (!bFaden && s.find('!') != s.npos)) << s;
            EXPECT_EQ(fLies(*p), sSoll) << "the second time";
            EXPECT_EQ(UnterEinemWeg(*p), UnterEinemWeg(*Oeffne(EModus::Lesen)));
        }
    }
}

TEST_F(StoerungTest, AnOlderFileIsExtendedOrLeftAndCanBeExtendedAgain) {
    ASSERT_EQ(Sql(AlteVersion(1)), "");
    const std::string sAlt = LiesDatei(m_sDatei);
    for (const EModus eModus : {EModus::Lesen, EModus::Schreiben}) {
        bool bErreicht = true;
        for (int n = 1; bErreicht; n += n < 40 ? 3 : 67) {
            SCOPED_TRACE(n);
            std::ofstream(m_sDatei, std::ios::binary) << sAlt;
            const auto Versuche = [&] { return Oeffne(eModus) != nullptr; };
            const bool bOffen = Mit(n, false, bErreicht, Versuche, false);
            if (!bOffen || eModus == EModus::Lesen) {
                EXPECT_EQ(LiesDatei(m_sDatei), sAlt);
            }
            const auto p = Oeffne(eModus);
            ASSERT_TRUE(p) << m_sMeldung.Utf8();
            EXPECT_EQ(Nummern(*p), "      1001       1002");
        }
    }
}

// The system refuses SQLite what it has allowed us.
TEST_F(StoerungTest, TellsAFailureOfTheSystemFromAMissingRight) {
    Oeffne(EModus::Neu);
    static int s_iErrno;
    sqlite3_vfs * const pVfs = sqlite3_vfs_find(nullptr);
    const auto pOpen = pVfs->xGetSystemCall(pVfs, "open");
    const auto Scheitere = +[](const char *, int, int) { return errno = s_iErrno, -1; };
    const std::tuple<int, EModus, const char *> aFaelle[] = {
        {EIO, EModus::Lesen, "lesen: der Datenträger meldet einen Fehler."},
        {EIO, EModus::Schreiben, "lesen: der Datenträger meldet einen Fehler."},
        {EMFILE, EModus::Lesen, "lesen: zu viele Dateien sind offen."},
        {EACCES, EModus::Lesen, "lesen; vermutlich fehlt die Berechtigung."},
        {ENXIO, EModus::Lesen, "lesen (Fehler 6 des Betriebssystems)."},
        {ENOSPC, EModus::Neu, "anlegen: der Datenträger ist voll."},
    };
    for (const auto & [iErrno, eModus, pGrund] : aFaelle) {
        s_iErrno = iErrno;
        if (eModus == EModus::Neu) std::filesystem::remove(m_sDatei);
        pVfs->xSetSystemCall(pVfs, "open", reinterpret_cast<sqlite3_syscall_ptr>(Scheitere));
        EXPECT_EQ(Grund(eModus), std::string("lässt sich nicht ") + pGrund);
        pVfs->xSetSystemCall(pVfs, "open", pOpen);
    }
    Oeffne(EModus::Neu);
    EXPECT_TRUE(Oeffne(EModus::Lesen));
}

TEST_F(StoerungTest, NothingIsWrittenWithoutItsRunningNumber) {
    Oeffne(EModus::Neu);
    const auto p = Oeffne(EModus::Schreiben);
    EXPECT_EQ(Sql("DELETE FROM LAUFNUMMER"), "");
    EXPECT_EQ(Schreibe(*p, "2"), ZEILE_FEHLER);
    EXPECT_EQ(p->Beende(true), ZEILE_FEHLER) << "no group is open";
    EXPECT_EQ(Sql("INSERT INTO LAUFNUMMER VALUES (1)"), "") << "and no lock is left";
    EXPECT_EQ(Schreibe(*p, "2"), ZEILE_OK);
}

} // namespace

} // namespace orvostat
