// Rows for a test, one line each.
#pragma once

#include "orvostatbs/host/RSet.h"

#include <gtest/gtest.h>

namespace orvostat {

template <class> using CSpaltenwert = const CString &;

// Adds a row of table class T with the given values in these columns.
template <class T, class... TSpalten> auto Schreiber(TSpalten... spalten) {
    return [=](CSpaltenwert<TSpalten>... werte) {
        T zeile(dbDatabase);
        ((zeile.*spalten = werte), ...);
        EXPECT_EQ(zeile.Write(), 0);
    };
}

} // namespace orvostat
