#include "orvostatbs/store/MemorySpeicher.h"

#include "MemoryTabelle.h"

#include <algorithm>
#include <utility>

namespace orvostat {

// A change of the open group: a row added, taken out, or overwritten (then with its former columns).
struct CMemorySpeicher::SAenderung {
    CMemoryTabelle * pTabelle;
    CHalter zeile;
    CHalter vorher;
    bool bNeu;
};

// A walk remembers the row it stands on, and finds its place anew when the order has changed under it.
class CMemoryWeg final : public CZeilenmenge {
public:
    CMemoryWeg(CMemorySpeicher & speicher, CMemoryTabelle & tabelle, const COrdnung & ordnung,
               const SBereich & bereich)
        : m_speicher(speicher), m_tabelle(tabelle), m_ordnung(ordnung), m_bereich(bereich),
          m_iBisLfd(tabelle.LetzteLfd()) {
        Suche();
    }

    int Naechste(CFelder vFelder) override {
        if (m_bEnde) return ZEILE_KEINE;
        if (m_iStand != m_ordnung.Stand()) Suche();
        while (m_iVon < m_iBis) {
            SMemoryZeile & zeile = m_ordnung[m_bereich.bAbsteigend ? --m_iBis : m_iVon++];
            if (zeile.bGeloescht || zeile.iLfd > m_iBisLfd) continue;
            const CString * pSpalten = zeile.Spalten();
            for (CString * pFeld : vFelder)
                *pFeld = *pSpalten++;
            m_platz.Setze(&zeile);
            m_zeile.Setze(&zeile);
            return ZEILE_OK;
        }
        m_bEnde = true;
        m_zeile.Setze(nullptr);
        return ZEILE_KEINE;
    }

    int Loesche() override {
        if (m_speicher.NurLesen()) return ZEILE_VERWEIGERT;
        if (!m_zeile || m_zeile->bGeloescht) return ZEILE_KEINE;
        m_speicher.Loesche(m_tabelle, *m_zeile);
        m_zeile.Setze(nullptr);
        return ZEILE_OK;
    }

    int Ersetze(CWerte vWerte) override {
        if (m_speicher.NurLesen()) return ZEILE_VERWEIGERT;
        if (!m_zeile || m_zeile->bGeloescht) return ZEILE_KEINE;
        m_zeile.Setze(&m_speicher.Aendere(m_tabelle, *m_zeile, vWerte));
        return ZEILE_OK;
    }

private:
    void Suche() {
        m_iStand = m_ordnung.Stand();
        m_iVon = m_ordnung.VorSchluessel(m_bereich.sVon);
        m_iBis =
            m_bereich.sBis.empty() ? m_ordnung.Geordnet() : m_ordnung.VorSchluessel(m_bereich.sBis, m_iVon);
        if (m_platz && !m_bereich.bAbsteigend) m_iVon = m_ordnung.VorZeile(*m_platz, true);
        if (m_platz && m_bereich.bAbsteigend) m_iBis = m_ordnung.VorZeile(*m_platz, false);
    }

    CMemorySpeicher & m_speicher;
    CMemoryTabelle & m_tabelle;
    const COrdnung & m_ordnung;
    const SBereich m_bereich;
    const std::uint64_t m_iBisLfd; // rows written later do not belong to the walk
    std::uint64_t m_iStand = 0;
    std::size_t m_iVon = 0; // the rows ahead
    std::size_t m_iBis = 0;
    bool m_bEnde = false;
    CHalter m_platz; // the last row given: where the walk stands
    CHalter m_zeile; // the same row for changing, none after Loesche
};

CMemorySpeicher::CMemorySpeicher() = default;
CMemorySpeicher::~CMemorySpeicher() = default;

CMemoryTabelle & CMemorySpeicher::Tabelle(const STabelle & tabelle) {
    auto & pTabelle = m_mapTabellen[&tabelle];
    if (!pTabelle) pTabelle = std::make_unique<CMemoryTabelle>(tabelle);
    return *pTabelle;
}

std::unique_ptr<CZeilenmenge> CMemorySpeicher::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    const auto iSchluessel = static_cast<std::size_t>(bereich.iSchluessel - 1);
    if (iSchluessel >= tabelle.vSchluessel.size()) return nullptr;
    CMemoryTabelle & t = Tabelle(tabelle);
    return std::make_unique<CMemoryWeg>(*this, t, t.Geordnet(iSchluessel, m_iTiefe == 0), bereich);
}

int CMemorySpeicher::Schreibe(const STabelle & tabelle, CWerte vWerte) {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    Fuege(Tabelle(tabelle), vWerte);
    return ZEILE_OK;
}

std::int64_t CMemorySpeicher::Zeilenzahl(const STabelle & tabelle) {
    return static_cast<std::int64_t>(Tabelle(tabelle).Anzahl());
}

// What may fail for want of memory comes before the first change, so a write happens as a whole or not at all.

SMemoryZeile & CMemorySpeicher::Fuege(CMemoryTabelle & tabelle, CWerte vWerte) {
    MachePlatz(m_vAenderungen, 1);
    SMemoryZeile & zeile = tabelle.Fuege(vWerte);
    Merke({&tabelle, CHalter(&zeile), CHalter(), true});
    return zeile;
}

void CMemorySpeicher::Loesche(CMemoryTabelle & tabelle, SMemoryZeile & zeile) {
    MachePlatz(m_vAenderungen, 1);
    tabelle.Loesche(zeile);
    Merke({&tabelle, CHalter(&zeile), CHalter(), false});
}

SMemoryZeile & CMemorySpeicher::Aendere(CMemoryTabelle & tabelle, SMemoryZeile & zeile, CWerte vWerte) {
    MachePlatz(m_vAenderungen, 2);
    CHalter neu = CHalter::Neu(tabelle.Beschreibung(), vWerte, zeile.iLfd);
    if (!neu->GleicheSchluessel(zeile)) {
        SMemoryZeile & andere = Fuege(tabelle, vWerte);
        Loesche(tabelle, zeile);
        return andere;
    }
    std::swap_ranges(zeile.Spalten(), zeile.Spalten() + zeile.iSpalten, neu->Spalten());
    Merke({&tabelle, CHalter(&zeile), std::move(neu), false});
    return zeile;
}

// Notes a change for which there is room, if it may have to be taken back.
void CMemorySpeicher::Merke(SAenderung aenderung) noexcept {
    if (m_iTiefe > 0) m_vAenderungen.push_back(std::move(aenderung));
}

int CMemorySpeicher::Beginne() {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    if (m_iTiefe++ == 0) m_bVerworfen = false;
    return ZEILE_OK;
}

int CMemorySpeicher::Beende(bool bUebernehmen) {
    if (m_bNurLesen) return ZEILE_VERWEIGERT;
    if (m_iTiefe == 0) return ZEILE_FEHLER;
    m_bVerworfen = m_bVerworfen || !bUebernehmen;
    if (--m_iTiefe == 0) {
        if (m_bVerworfen) NimmZurueck();
        m_vAenderungen.clear();
    }
    return bUebernehmen && m_bVerworfen ? ZEILE_FEHLER : ZEILE_OK;
}

void CMemorySpeicher::NimmZurueck() noexcept {
    for (auto it = m_vAenderungen.rbegin(); it != m_vAenderungen.rend(); ++it) {
        if (it->vorher)
            std::swap_ranges(it->zeile->Spalten(), it->zeile->Spalten() + it->zeile->iSpalten,
                             it->vorher->Spalten());
        else if (it->bNeu)
            it->pTabelle->Loesche(*it->zeile);
        else
            it->pTabelle->Hole(*it->zeile);
    }
}

} // namespace orvostat
