// Owners of what SQLite gives out, for the commands that recount by SQL.
#pragma once

#include <memory>

#include <sqlite3.h>

namespace orvostat {

struct SSqliteSchliesse {
    void operator()(sqlite3 * p) const { sqlite3_close(p); }
    void operator()(sqlite3_stmt * p) const { sqlite3_finalize(p); }
};
using CSqliteDatei = std::unique_ptr<sqlite3, SSqliteSchliesse>;
using CSqliteAnweisung = std::unique_ptr<sqlite3_stmt, SSqliteSchliesse>;

// Null where SQLite does not take the statement.
[[nodiscard]] inline CSqliteAnweisung Bereite(sqlite3 * pDatei, const char * pSql) {
    sqlite3_stmt * p = nullptr;
    sqlite3_prepare_v2(pDatei, pSql, -1, &p, nullptr);
    return CSqliteAnweisung(p);
}

} // namespace orvostat
