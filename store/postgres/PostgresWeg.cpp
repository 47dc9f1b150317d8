#include "PostgresWeg.h"

#include <algorithm>
#include <new>
#include <utility>

namespace orvostat {

namespace {

constexpr std::int64_t ERSTER_BLOCK = 32;
constexpr std::int64_t BLOCK_MAX = 1024;
// From pieces of this size on a cursor pays, and so much it gives at once.
constexpr std::int64_t BLOCK_ZEIGER = 256;
constexpr const char * ZEIGERZEILEN = "2000";

} // namespace

CPostgresWeg::CPostgresWeg(CServerdatenbank & datenbank, const STabelle & tabelle, const SBereich & bereich)
    : m_datenbank(datenbank), m_tabelle(tabelle),
      m_sGrenze(bereich.bAbsteigend ? bereich.sVon : bereich.sBis), m_art{bereich.iSchluessel,
                                                                          bereich.bAbsteigend,
                                                                          !bereich.bAbsteigend ||
                                                                              !bereich.sBis.empty(),
                                                                          !m_sGrenze.empty(),
                                                                          !datenbank.NurLesen()},
      m_spalten(tabelle, m_art), m_sAb(bereich.bAbsteigend ? bereich.sBis : bereich.sVon),
      m_iBisLfd(datenbank.LaufnummerInGruppe()), m_iBlockzeilen(ERSTER_BLOCK) {}

CPostgresWeg::~CPostgresWeg() { Ende(m_iEnde); }

int CPostgresWeg::Ende(int iErgebnis) noexcept {
    CSerververbindung & v = m_datenbank.Verbindung();
    v.Vergiss(m_vorgriff);
    if (!m_sSchliesse.empty() && v.Stand() == m_iStand && !v.Getrennt())
        (void)v.FuehreAlle(m_sSchliesse.c_str());
    m_sSchliesse.clear();
    m_pBlock.reset();
    m_bZeile = false;
    return m_iEnde = iErgebnis;
}

// Whether the row came into the table after the walk had begun.
bool CPostgresWeg::SpaeterGeschrieben() {
    if (!m_art.bPlatz) return false;
    if (m_iBisLfd < 0) m_iBisLfd = Zahl(m_pBlock.get(), m_iZeile, m_spalten.iLaufnummer);
    return Zahl(m_pBlock.get(), m_iZeile, m_spalten.iLfd) > m_iBisLfd;
}

// The place of the last row that was given or passed over becomes the one behind which to read on.
void CPostgresWeg::MerkeStelle() {
    if (!m_pBlock || m_iZeile == 0) return;
    m_sAb = Bytes(m_pBlock.get(), m_iZeile - 1, m_spalten.iSchluessel);
    m_iAb = Zahl(m_pBlock.get(), m_iZeile - 1, m_spalten.iLfd);
    m_art.bAb = true;
}

bool CPostgresWeg::LiesBlock() {
    MerkeStelle();
    m_pBlock.reset();
    const std::int64_t iZeilen = m_iBlockzeilen;
    m_iBlockzeilen = std::min(iZeilen * 2, BLOCK_MAX);
    m_pBlock = m_datenbank.Block(m_tabelle, m_art, iZeilen, m_sAb, m_iAb, m_sGrenze);
    m_iZeile = 0;
    if (!m_pBlock) return false;
    m_iAenderungen = m_datenbank.Aenderungen();
    m_bLetzter = PQntuples(m_pBlock.get()) < iZeilen;
    return true;
}

bool CPostgresWeg::LiesMitZeiger() {
    CSerververbindung & v = m_datenbank.Verbindung();
    if (m_sHole.empty()) {
        MerkeStelle();
        m_pBlock.reset();
        const std::string sName = "w" + std::to_string(m_datenbank.NaechsterName());
        m_sHole = std::string("FETCH FORWARD ") + ZEIGERZEILEN + " FROM " + sName;
        std::string sSchliesse = "CLOSE " + sName;
        if (!m_datenbank.OeffneZeiger(sName, m_tabelle, m_art, m_sAb, m_iAb, m_sGrenze)) return false;
        m_sSchliesse = std::move(sSchliesse);
        v.Schicke(m_sHole.c_str(), m_vorgriff);
    }
    m_pBlock = v.Hole(m_vorgriff);
    m_iZeile = 0;
    if (!m_pBlock) return false;
    m_bLetzter = PQntuples(m_pBlock.get()) == 0;
    if (!m_bLetzter) v.Schicke(m_sHole.c_str(), m_vorgriff);
    return true;
}

// Has the next row in the piece; false at the end of the rows or if the store failed, which ends the walk.
bool CPostgresWeg::Weiter() {
    for (;;) {
        const bool bStand =
            !m_datenbank.NurLesen() || !m_pBlock || m_datenbank.Verbindung().Stand() == m_iStand;
        if (!bStand) return Ende(ZEILE_FEHLER), false;
        const bool bVeraltet = m_pBlock && m_art.bPlatz && m_iAenderungen != m_datenbank.Aenderungen();
        if (bVeraltet) m_iBlockzeilen = ERSTER_BLOCK;
        if (m_pBlock && !bVeraltet && m_iZeile < PQntuples(m_pBlock.get())) return true;
        if (m_bLetzter && !bVeraltet) return Ende(ZEILE_KEINE), false;
        const bool bErster = m_iStand == 0;
        if (!m_datenbank.Lesebereit()) return Ende(ZEILE_FEHLER), false;
        if (bErster) m_iStand = m_datenbank.Verbindung().Stand();
        const bool bZeiger = !m_art.bPlatz && m_iBlockzeilen >= BLOCK_ZEIGER;
        if (bZeiger ? !LiesMitZeiger() : !LiesBlock()) return Ende(ZEILE_FEHLER), false;
    }
}

int CPostgresWeg::Naechste(CFelder vFelder) {
    m_bZeile = m_bPlatz = false;
    if (m_iEnde != ZEILE_OK) return m_iEnde;
    try {
        while (Weiter()) {
            const bool bSpaeter = SpaeterGeschrieben();
            ++m_iZeile;
            if (bSpaeter) continue;
            LiesZeile(m_pBlock.get(), m_iZeile - 1, vFelder);
            m_bZeile = true;
            return ZEILE_OK;
        }
    } catch (const std::bad_alloc &) { // the row would be missed
        m_datenbank.Verbindung().Scheitere(EServerursache::KeinSpeicher);
        Ende(ZEILE_FEHLER);
        throw;
    }
    return m_iEnde;
}

SServerplatz & CPostgresWeg::Platz() {
    if (m_bPlatz) return m_platz;
    const int iZeile = m_iZeile - 1;
    m_platz.iLfd = Zahl(m_pBlock.get(), iZeile, m_spalten.iLfd);
    m_platz.vSchluessel.clear();
    for (std::size_t k = 0; k < m_tabelle.vSchluessel.size(); ++k)
        m_platz.vSchluessel.emplace_back(
            Bytes(m_pBlock.get(), iZeile, m_spalten.iErster + static_cast<int>(k)));
    m_bPlatz = true;
    return m_platz;
}

// The rows ahead are not touched by what a walk does to its own.
int CPostgresWeg::NachAenderung(int iErgebnis, std::uint64_t iVorher) {
    if (iErgebnis == ZEILE_OK && m_iAenderungen == iVorher) m_iAenderungen = m_datenbank.Aenderungen();
    return iErgebnis;
}

int CPostgresWeg::Loesche() {
    if (m_datenbank.NurLesen()) return ZEILE_VERWEIGERT;
    if (!m_bZeile) return ZEILE_KEINE;
    const std::uint64_t iVorher = m_datenbank.Aenderungen();
    const int iErgebnis = NachAenderung(m_datenbank.Loesche(m_tabelle, Platz()), iVorher);
    if (iErgebnis == ZEILE_OK) m_bZeile = false;
    return iErgebnis;
}

int CPostgresWeg::Ersetze(CWerte vWerte) {
    if (m_datenbank.NurLesen()) return ZEILE_VERWEIGERT;
    if (!m_bZeile) return ZEILE_KEINE;
    const std::uint64_t iVorher = m_datenbank.Aenderungen();
    return NachAenderung(m_datenbank.Aendere(m_tabelle, Platz(), vWerte), iVorher);
}

} // namespace orvostat
