// Long walks of a read-only SQLite store, which a second thread reads ahead: they give what the file holds, and they
// hold and release it as short ones do.
#include "SqliteTest.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <thread>

namespace orvostat {
namespace {

constexpr int ZEILEN = 6000; // many times what a walk reads by itself

class SqliteVorlaufTest : public CSqliteTest {
protected:
    void SetUp() override { SchreibeZeilen("", 10000 + ZEILEN, "Name "); }
    // Only a walk between whose rows others are asked for is read ahead.
    static void LiesNebenbei(CZeilenspeicher & speicher) {
        for (int i = 0; i < 100; ++i)
            ASSERT_EQ(Nummern(speicher, {1, false, "15998", "15999"}), "15998");
    }
    // The walk's next rows are those, counted from 0.
    static void Erwarte(CPatientenweg & weg, int iVon, int iBis) {
        for (int i = iVon; i < iBis; ++i) {
            ASSERT_EQ(weg.Naechste(), ZEILE_OK) << i;
            ASSERT_EQ(weg.m_zeile.m_PATNR.Utf8(), std::to_string(10000 + i));
        }
    }
};

TEST_F(SqliteVorlaufTest, EveryWholeTableWalkGivesTheRowsInTheirOrder) {
    const auto pLeser = Oeffne(EModus::Lesen);
    const auto pZeilenweise = Oeffne(EModus::Schreiben); // reads nothing ahead
    std::uint64_t iImFaden = 0;
    for (const SBereich & bereich :
         {SBereich{1, false, "", ""}, SBereich{1, true, "", ""}, SBereich{2, false, "", ""},
          SBereich{2, true, "", ""}, SBereich{1, false, "11234", ""}, SBereich{1, true, "13950", ""}}) {
        CPatientenweg weg(*pLeser, bereich);
        LiesNebenbei(*pLeser);
        const std::string sRest = weg.Rest();
        EXPECT_EQ(sRest, Nummern(*pZeilenweise, bereich))
            << bereich.iSchluessel << bereich.bAbsteigend << bereich.sVon;
        iImFaden += static_cast<std::uint64_t>(std::count(sRest.begin(), sRest.end(), ' ')) + 1 - 2048;
    }
    EXPECT_EQ(pLeser->Vorausgelesen().iZeilen, std::thread::hardware_concurrency() < 2 ? 0 : iImFaden);
}

TEST_F(SqliteVorlaufTest, AWalkHoldsTheFileWhereverItEnds) {
    const auto p = Oeffne(EModus::Lesen);
    for (const int iZeilen : {1, 2047, 2048, 2049, 2304, 2305, ZEILEN - 1, ZEILEN}) {
        CPatientenweg weg(*p);
        LiesNebenbei(*p);
        Erwarte(weg, 0, iZeilen);
    }
    CPatientenweg weg(*p);
    CPatientenweg zurueck(*p, {1, true, "", ""}); // keeps apart from the other
    LiesNebenbei(*p);
    for (int i = 0; i < ZEILEN; ++i) {
        Erwarte(weg, i, i + 1);
        ASSERT_EQ(zurueck.Naechste(), ZEILE_OK);
        ASSERT_EQ(zurueck.m_zeile.m_PATNR.Utf8(), std::to_string(10000 + ZEILEN - 1 - i));
        ASSERT_EQ(i % 1000 == 0 ? Sql("UPDATE PAT SET PATNAME = 'neu'") : "database is locked",
                  "database is locked");
    }
    EXPECT_TRUE(weg.Naechste() == ZEILE_KEINE && zurueck.Naechste() == ZEILE_KEINE);
    EXPECT_EQ(weg.m_zeile.m_PATNR.Utf8(), "15999") << "the end leaves the fields";
    EXPECT_TRUE(weg.Naechste() == ZEILE_KEINE && weg.Loesche() == ZEILE_VERWEIGERT);
    EXPECT_EQ(Sql("UPDATE PAT SET PATNAME = 'neu'"), "") << "no lock is left";
}

TEST_F(SqliteVorlaufTest, AFileMovedAwayUnderTheWalkIsReadOn) {
    const auto p = Oeffne(EModus::Lesen);
    CPatientenweg weg(*p);
    LiesNebenbei(*p);
    Erwarte(weg, 0, 10);
    std::filesystem::rename(m_sDatei, m_sDatei + ".alt");
    SchreibeZeilen("x", 10000 + ZEILEN, "Name ");
    Erwarte(weg, 10, ZEILEN);
}

// The rows before the damage come, and then the walk fails as one does that is not read ahead.
TEST_F(SqliteVorlaufTest, DamageIsMetWhereItLies) {
    EXPECT_TRUE(Oeffne(EModus::Lesen)->Pruefe().empty());
    Ueberschreibe(m_sDatei, static_cast<std::streamoff>(std::filesystem::file_size(m_sDatei)) / 4 * 3,
                  4 * 8192);
    const auto p = Oeffne(EModus::Lesen);
    ASSERT_TRUE(p) << m_sMeldung.Utf8();
    const std::string sZeilenweise = Nummern(*p);
    ASSERT_EQ(sZeilenweise.back(), '!');
    ASSERT_GT(sZeilenweise.size(), 2500 * std::strlen("10000 ")) << "behind the start of the thread";
    CPatientenweg weg(*p);
    LiesNebenbei(*p);
    EXPECT_EQ(weg.Rest(), sZeilenweise);
    EXPECT_EQ(p->LetzteUrsache(), ESpeicherursache::Beschaedigt);
    EXPECT_FALSE(p->LetzterFehler().empty());
    EXPECT_FALSE(p->Pruefe().empty());
    EXPECT_EQ(CPatientenweg(*p).Naechste(), ZEILE_OK) << "the store goes on";
}

} // namespace
} // namespace orvostat
