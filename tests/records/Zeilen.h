// A practice in memory, empty at first, for the tests of the records that are read from tables.
#pragma once

#include "orvostatbs/host/RSet.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include "support/Rekorder.h"

#include <memory>

class CZeilenTest : public orvostat::CHostTest {
protected:
    CZeilenTest() {
        const auto pSpeicher = std::make_shared<orvostat::CMemorySpeicher>();
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
    }
    ~CZeilenTest() override {
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
