#include "PostgresVorrat.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orvostat {

namespace {

constexpr std::int64_t ZEILEN_MIN = 8;
constexpr std::int64_t ZEILEN_MAX = 512;

// How many rows of a block have a lesser key.
int Vor(const PGresult * p, int iSpalte, std::string_view sBytes) {
    int iVon = 0;
    for (int iBis = PQntuples(p); iVon < iBis;) {
        const int iMitte = iVon + (iBis - iVon) / 2;
        if (Bytes(p, iMitte, iSpalte) < sBytes)
            iVon = iMitte + 1;
        else
            iBis = iMitte;
    }
    return iVon;
}

class CVorratsweg final : public CZeilenmenge {
public:
    CVorratsweg(std::shared_ptr<const PGresult> pBlock, int iSpalte, const SBereich & bereich)
        : m_pBlock(std::move(pBlock)), m_bAbsteigend(bereich.bAbsteigend),
          m_iVon(Vor(m_pBlock.get(), iSpalte, bereich.sVon)),
          m_iBis(std::max(m_iVon, Vor(m_pBlock.get(), iSpalte, bereich.sBis))) {}

    int Naechste(CFelder vFelder) override {
        if (m_iVon >= m_iBis) return ZEILE_KEINE;
        LiesZeile(m_pBlock.get(), m_bAbsteigend ? --m_iBis : m_iVon++, vFelder);
        return ZEILE_OK;
    }
    int Loesche() override { return ZEILE_VERWEIGERT; }
    int Ersetze(CWerte) override { return ZEILE_VERWEIGERT; }

private:
    std::shared_ptr<const PGresult> m_pBlock;
    bool m_bAbsteigend;
    int m_iVon; // the rows ahead
    int m_iBis;
};

} // namespace

std::unique_ptr<CZeilenmenge> CServervorrat::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    if (!m_datenbank.NurLesen() || bereich.sBis.empty()) return nullptr;
    const serverschema::SWegart art{bereich.iSchluessel, false, true, false, false};
    const int iSpalte = serverschema::SBlockspalten(tabelle, art).iSchluessel;
    SReihe & reihe = m_mapReihen[&tabelle][static_cast<std::size_t>(bereich.iSchluessel - 1)];
    const auto HatVon = [&](std::string_view sBis) {
        if (!reihe.pBlock || reihe.iStand != m_datenbank.Verbindung().Stand() || bereich.sVon < reihe.sVon)
            return false;
        const int iZeilen = PQntuples(reihe.pBlock.get());
        return reihe.bBisEnde || (iZeilen > 0 && Bytes(reihe.pBlock.get(), iZeilen - 1, iSpalte) >= sBis);
    };
    if (HatVon(bereich.sBis)) {
        reihe.bGenutzt = true;
    } else {
        // A range that begins in the block or right behind it shows as well that the rows are read in order.
        const bool bInFolge = reihe.bGenutzt || HatVon(bereich.sVon);
        reihe.iZeilen = bInFolge ? std::min(reihe.iZeilen * 2, ZEILEN_MAX) : ZEILEN_MIN;
        reihe.bGenutzt = false;
        reihe.pBlock.reset();
        Lies(reihe, tabelle, art, bereich.sVon);
        if (!HatVon(bereich.sBis)) return nullptr;
    }
    return std::make_unique<CVorratsweg>(reihe.pBlock, iSpalte, bereich);
}

// Leaves no block if the server failed, which a walk there will then tell.
void CServervorrat::Lies(SReihe & reihe, const STabelle & tabelle, const serverschema::SWegart & art,
                         const std::string & sVon) {
    if (!m_datenbank.Lesebereit()) return;
    CServererzeugnis p = m_datenbank.Block(tabelle, art, reihe.iZeilen, sVon, 0, {});
    if (!p) return;
    reihe.bBisEnde = PQntuples(p.get()) < reihe.iZeilen;
    reihe.sVon = sVon;
    reihe.iStand = m_datenbank.Verbindung().Stand();
    reihe.pBlock = std::shared_ptr<const PGresult>(
        p.release(), [](const PGresult * q) { PQclear(const_cast<PGresult *>(q)); });
}

} // namespace orvostat
