// Rows read ahead of their being asked for.
//
// A statistic walks the treatments and asks for bills, findings and patients one by one, nearly in the order of their
// keys, and each question takes a way to the server and back. So a read of a short range takes rows behind it along,
// the more the better the last ones were used, and the next reads find theirs here. A store that only reads is one
// transaction, so no read can tell the difference.
#pragma once

#include "PostgresDatenbank.h"

#include <array>

namespace orvostat {

class CServervorrat {
public:
    explicit CServervorrat(CServerdatenbank & datenbank) : m_datenbank(datenbank) {}

    // A walk over the range with all its rows at hand; null where it has to be walked on the server.
    [[nodiscard]] std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich);

private:
    // What is at hand of a table under one key: one block, and how many rows the next one shall have.
    struct SReihe {
        std::shared_ptr<const PGresult> pBlock;
        std::string sVon;         // all rows from these key bytes on are in it: to the end of the table,
        bool bBisEnde = false;    // or before the last one's
        std::uint64_t iStand = 0; // of the connection when it was read
        std::int64_t iZeilen = 0;
        bool bGenutzt = false; // a later read has found its rows in it
    };

    void Lies(SReihe & reihe, const STabelle & tabelle, const serverschema::SWegart & art,
              const std::string & sVon);

    CServerdatenbank & m_datenbank;
    std::unordered_map<const STabelle *, std::array<SReihe, SCHLUESSEL_MAX>> m_mapReihen; // by key
};

} // namespace orvostat
