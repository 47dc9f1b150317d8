// A test with a practice of its own in memory, empty at first.
#pragma once

#include "orvostatbs/host/RSet.h"
#include "orvostatbs/records/BehHitLine.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Rekorder.h"

#include <memory>

namespace orvostat {

// Both handles share the store; afterwards they have none. The hits' stored answers are empty before and after.
class CPraxisFixture : public CHostTest {
protected:
    CPraxisFixture() {
        const auto pSpeicher = std::make_shared<CMemorySpeicher>();
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
        CBehHitLine::ClearMaps();
    }
    ~CPraxisFixture() override {
        CBehHitLine::ClearMaps();
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    // Adds the row of table class T that f fills.
    template <class T, class F> static void Zeile(F f) {
        T zeile(dbDatabase);
        f(zeile);
        EXPECT_EQ(zeile.Write(), 0);
    }
};

} // namespace orvostat
