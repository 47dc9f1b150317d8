// Reads of a read-only SQLite store while a walk is open: what comes out of rows read ahead is what the file holds.
#include "SqliteTest.h"

#include <functional>
#include <random>

namespace orvostat {
namespace {

constexpr int ERSTE = 100;
constexpr int LETZTE = 400;

CString Nummer(int i) { return CString(std::to_string(i).c_str()); }

// The bytes of a key that begins so.
std::string Teil(const CString & s) {
    std::string sBytes;
    HaengeTeilAn(sBytes, Patienten(), s, false);
    return sBytes;
}

SBereich EinSchluessel(const CString & s, int iSchluessel = 1, bool bAbsteigend = false) {
    return {iSchluessel, bAbsteigend, Teil(s), Danach(Teil(s))};
}

class SqliteVorratTest : public CSqliteTest {
protected:
    // Every third number is missing, every fifth stands twice, and a name has many.
    void SetUp() override {
        const auto p = Oeffne(EModus::Neu);
        ASSERT_TRUE(p && p->Beginne() == ZEILE_OK);
        for (int i = ERSTE; i < LETZTE; ++i)
            for (int j = i % 3 == 0 ? 0 : i % 5 == 0 ? 2 : 1; j > 0; --j)
                ASSERT_EQ(Schreibe(*p, Nummer(i), Nummer(i % 70)), ZEILE_OK);
        ASSERT_EQ(p->Beende(true), ZEILE_OK);
    }
};

TEST_F(SqliteVorratTest, ReadsUnderAWalkFindWhatReadsWithoutOneFind) {
    const auto pMit = Oeffne(EModus::Lesen);
    const auto pOhne = Oeffne(EModus::Lesen);
    CPatientenweg weg(*pMit);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);

    std::mt19937 zufall(3);
    const std::function<int(int)> aFolgen[] = {
        // the number of the i-th read
        [](int i) { return ERSTE - 2 + i; },
        [](int i) { return LETZTE + 2 - i; },
        [](int i) { return ERSTE + i / 2 * 3; }, // each twice, some left out
        [](int i) { return ERSTE + i / 3 + 2 * (i % 3); },
        [&](int) { return ERSTE - 2 + static_cast<int>(zufall() % (LETZTE - ERSTE + 4)); },
    };
    for (const auto & fNummer : aFolgen)
        for (int i = 0; i < LETZTE - ERSTE + 4; ++i) {
            const int iNummer = fNummer(i);
            const CString sAb = Nummer(iNummer);
            const int iBreite = static_cast<int>(zufall() % 30);
            const SBereich aBereiche[] = {
                EinSchluessel(sAb),
                EinSchluessel(sAb, 1, true),
                EinSchluessel(Nummer(iNummer % 70), 2, i % 2 == 0),
                {1, i % 3 == 0, Teil(sAb), Teil(Nummer(iNummer + iBreite))},
                {1, false, Teil(sAb), Teil(Nummer(iNummer - 1))},
                {1, i % 2 == 0, "", Teil(Nummer(ERSTE + iBreite))},
            };
            for (const SBereich & bereich : aBereiche)
                ASSERT_EQ(Nummern(*pMit, bereich), Nummern(*pOhne, bereich))
                    << &fNummer - aFolgen << ", read " << i << " of " << iNummer;
        }
    EXPECT_EQ(pOhne->Vorausgelesen().iBereiche, 0U);
    const std::uint64_t iVorher = pMit->Vorausgelesen().iBereiche;
    for (int i = ERSTE; i < LETZTE; ++i)
        ASSERT_NE(Nummern(*pMit, EinSchluessel(Nummer(i))), "!");
    EXPECT_GT(pMit->Vorausgelesen().iBereiche - iVorher, 280U) << "of 300 in the order of their keys";
}

TEST_F(SqliteVorratTest, AWalkKeepsItsRowsWhileOthersReadOn) {
    const auto p = Oeffne(EModus::Lesen);
    CPatientenweg aussen(*p);
    ASSERT_EQ(aussen.Naechste(), ZEILE_OK);
    const SBereich bereich{1, false, Teil("100"), Teil("106")};
    for (int i = ERSTE; i < ERSTE + 10; ++i)
        ASSERT_NE(Nummern(*p, EinSchluessel(Nummer(i))), "!");
    CPatientenweg weg(*p, bereich);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    for (int i = ERSTE; i < LETZTE; ++i)
        ASSERT_NE(Nummern(*p, EinSchluessel(Nummer(i))), "!");
    EXPECT_EQ(weg.Rest(), "100 101 103 104");
    EXPECT_TRUE(weg.Naechste() == ZEILE_KEINE && weg.Loesche() == ZEILE_VERWEIGERT &&
                weg.Ersetze() == ZEILE_VERWEIGERT);
}

TEST_F(SqliteVorratTest, AWriteIsSeenOnceNoWalkHoldsTheFile) {
    const auto p = Oeffne(EModus::Lesen);
    const auto Lies = [&] { return Nummern(*p, EinSchluessel("202")); };
    const auto UnterEinemWeg = [&] {
        CPatientenweg weg(*p);
        EXPECT_EQ(weg.Naechste(), ZEILE_OK);
        return Lies();
    };
    EXPECT_EQ(UnterEinemWeg(), "202");
    ASSERT_EQ(Schreibe(*Oeffne(EModus::Schreiben), "202"), ZEILE_OK);
    EXPECT_EQ(Lies(), "202 202");
    EXPECT_EQ(UnterEinemWeg(), "202 202");
    ASSERT_EQ(Schreibe(*Oeffne(EModus::Schreiben), "202"), ZEILE_OK);
    EXPECT_EQ(UnterEinemWeg(), "202 202 202");
}

} // namespace
} // namespace orvostat
