#include "SqliteVorrat.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orvostat {

namespace {

// Of a block at least the row asked for and the one behind it, which ends its range.
constexpr std::size_t ZEILEN_MIN = 2;
constexpr std::size_t ZEILEN_MAX = 64;
// So many are read to complete a range.
constexpr std::size_t ZEILEN_JE_BEREICH = 8;

} // namespace

// Rows under a key from one place on, with their key bytes.
struct SVorratsblock {
    explicit SVorratsblock(std::size_t iSpalten)
        : iSchluesselspalte(static_cast<int>(iSpalten)), zeilen(iSpalten) {}

    const int iSchluesselspalte;
    CSqliteBlock zeilen;
    std::vector<std::string> vSchluessel; // of each row, with room for more
    // All rows from these key bytes on are here: to the end of the table, or before the last one's.
    std::string sVon;
    bool bBisEnde = false;

    void Leere(const std::string & sAb) {
        zeilen.Leere();
        sVon = sAb;
        bBisEnde = false;
    }
    // Adds the row under a statement; false if there is no memory for it.
    [[nodiscard]] bool Nimm(sqlite3_stmt * pAnweisung) {
        const auto * pBytes = static_cast<const char *>(sqlite3_column_blob(pAnweisung, iSchluesselspalte));
        const auto iLaenge = static_cast<std::size_t>(sqlite3_column_bytes(pAnweisung, iSchluesselspalte));
        if ((pBytes == nullptr && iLaenge > 0) || !zeilen.Nimm(pAnweisung)) return false;
        if (vSchluessel.size() < zeilen.Zeilen()) vSchluessel.emplace_back();
        vSchluessel[zeilen.Zeilen() - 1].assign(pBytes == nullptr ? "" : pBytes, iLaenge);
        return true;
    }
    // Whether no row before sBis is missing at the end.
    [[nodiscard]] bool ReichtBis(const std::string & sBis) const {
        return bBisEnde || (zeilen.Zeilen() > 0 && vSchluessel[zeilen.Zeilen() - 1] >= sBis);
    }
    // How many rows have a lesser key, at least iAb.
    [[nodiscard]] std::size_t Vor(std::string_view sBytes, std::size_t iAb) const {
        const auto anfang = vSchluessel.begin();
        const auto ende = anfang + static_cast<std::ptrdiff_t>(zeilen.Zeilen());
        const auto it = std::lower_bound(anfang + static_cast<std::ptrdiff_t>(iAb), ende, sBytes);
        return static_cast<std::size_t>(it - anfang);
    }
};

namespace {

class CVorratsweg final : public CZeilenmenge {
public:
    CVorratsweg(std::shared_ptr<const SVorratsblock> pBlock, const SBereich & bereich)
        : m_pBlock(std::move(pBlock)), m_bAbsteigend(bereich.bAbsteigend),
          m_iVon(m_pBlock->Vor(bereich.sVon, 0)), m_iBis(m_pBlock->Vor(bereich.sBis, m_iVon)) {}

    int Naechste(CFelder vFelder) override {
        if (m_iVon >= m_iBis) return ZEILE_KEINE;
        m_pBlock->zeilen.Kopiere(m_bAbsteigend ? --m_iBis : m_iVon++, vFelder);
        return ZEILE_OK;
    }
    int Loesche() override { return ZEILE_VERWEIGERT; }
    int Ersetze(CWerte) override { return ZEILE_VERWEIGERT; }

private:
    std::shared_ptr<const SVorratsblock> m_pBlock;
    bool m_bAbsteigend;
    std::size_t m_iVon; // the rows ahead
    std::size_t m_iBis;
};

} // namespace

std::unique_ptr<CZeilenmenge> CSqliteVorrat::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    const std::uint64_t iStand = m_datei.Lesestand();
    const auto iSchluessel = static_cast<std::size_t>(bereich.iSchluessel - 1);
    if (!m_datei.NurLesen() || iStand == 0 || bereich.sBis.empty() ||
        iSchluessel >= tabelle.vSchluessel.size())
        return nullptr;
    SReihe & reihe = m_mapReihen[&tabelle][iSchluessel];
    const auto HatVon = [&](const std::string & sAb) {
        return reihe.iStand == iStand && reihe.pBlock->sVon <= bereich.sVon && reihe.pBlock->ReichtBis(sAb);
    };
    if (HatVon(bereich.sBis)) {
        reihe.bGenutzt = true;
        ++m_datei.Vorausgelesen().iBereiche;
    } else {
        // A range that begins in the block or right behind it shows as well that the rows are read in order.
        const bool bInFolge = reihe.bGenutzt || HatVon(bereich.sVon);
        reihe.iZeilen = bInFolge ? std::min(reihe.iZeilen * 2, ZEILEN_MAX) : ZEILEN_MIN;
        reihe.bGenutzt = false;
        reihe.iStand = 0; // a reading that ends with an exception leaves no block
        if (Lies(reihe, tabelle, bereich)) reihe.iStand = iStand;
        if (!HatVon(bereich.sBis)) return nullptr;
    }
    return std::make_unique<CVorratsweg>(reihe.pBlock, bereich);
}

// Fills the block from the start of the range on; false if the file failed, which a walk in the file will then tell.
bool CSqliteVorrat::Lies(SReihe & reihe, const STabelle & tabelle, const SBereich & bereich) {
    if (!reihe.pAnweisung)
        reihe.pAnweisung = m_datei.Bereite(
            schema::Weg(tabelle, bereich.iSchluessel, false, false, schema::EDazu::Schluessel));
    if (!reihe.pAnweisung) return false;
    const CLesung pAnweisung(reihe.pAnweisung.get());
    // A walk may still stand on the former block.
    if (!reihe.pBlock || reihe.pBlock.use_count() > 1)
        reihe.pBlock = std::make_shared<SVorratsblock>(tabelle.vSpalten.size());
    SVorratsblock & block = *reihe.pBlock;
    block.Leere(bereich.sVon);
    bool bGut = BindeBytes(pAnweisung.get(), 1, block.sVon);
    while (bGut && !block.bBisEnde &&
           (block.zeilen.Zeilen() < reihe.iZeilen ||
            (block.zeilen.Zeilen() < ZEILEN_JE_BEREICH && !block.ReichtBis(bereich.sBis)))) {
        const int iSchritt = sqlite3_step(pAnweisung.get());
        block.bBisEnde = iSchritt == SQLITE_DONE;
        bGut = block.bBisEnde || (iSchritt == SQLITE_ROW && block.Nimm(pAnweisung.get()));
    }
    return bGut;
}

} // namespace orvostat
