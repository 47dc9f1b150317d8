// Rows read ahead of their being asked for.
//
// A statistic walks the treatments and asks for bills, findings and patients one by one, nearly in the order of their
// keys; descending into the file for each costs several times what reading the next row does. So a read of a short
// range takes some rows behind it along, the more the better the last ones were used, and the next reads find theirs
// here.
//
// This is done only where no read can tell the difference: on a read-only connection, and as long as some walk holds
// the file's read lock, since nobody can write then.
#pragma once

#include "SqliteBlock.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace orvostat {

struct SVorratsblock;

class CSqliteVorrat {
public:
    explicit CSqliteVorrat(CSqliteDatei & datei) : m_datei(datei) {}

    // A walk over the range with all its rows at hand; null where it has to be walked in the file.
    [[nodiscard]] std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich);

private:
    // What is at hand of a table under one key: one block, and how many rows the next one shall have.
    struct SReihe {
        CAnweisung pAnweisung;
        std::shared_ptr<SVorratsblock> pBlock;
        std::uint64_t iStand = 0; // the reading that it belongs to
        std::size_t iZeilen = 0;
        bool bGenutzt = false; // a later read has found its rows in the block
    };

    [[nodiscard]] bool Lies(SReihe & reihe, const STabelle & tabelle, const SBereich & bereich);

    CSqliteDatei & m_datei;
    std::unordered_map<const STabelle *, std::array<SReihe, SCHLUESSEL_MAX>> m_mapReihen; // by key
};

} // namespace orvostat
