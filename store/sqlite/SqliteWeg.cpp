#include "SqliteWeg.h"

#include <new>
#include <utility>

namespace orvostat {

namespace {

// Shorter walks end before a second connection pays, and so do those of a caller who does nothing but walk: who
// computes between the rows asks for some of other tables too.
constexpr std::int64_t ZEILEN_OHNE_VORLAUF = 2048;
constexpr std::uint64_t WEGE_NEBENBEI = 64;

} // namespace

CSqliteWeg::CSqliteWeg(CSqliteDatei & datei, const STabelle & tabelle, const SBereich & bereich,
                       CAnweisung pAnweisung)
    : m_datei(datei), m_tabelle(tabelle), m_bereich(bereich), m_pAnweisung(std::move(pAnweisung)),
      m_iBisLfd(datei.LaufnummerInGruppe()), m_iWegeVorher(datei.Wege()) {}

CSqliteWeg::~CSqliteWeg() {
    m_datei.GibWeg(m_tabelle, m_bereich, std::move(m_pAnweisung));
    if (m_bLaeuft) m_datei.EndetWeg();
}

int CSqliteWeg::Ende(int iErgebnis) {
    sqlite3_reset(m_pAnweisung.get());
    if (std::exchange(m_bLaeuft, false)) m_datei.EndetWeg();
    return m_iEnde = iErgebnis;
}

// Whether the row under the statement came into the table after the walk had begun.
bool CSqliteWeg::SpaeterGeschrieben() {
    const int iLfd = static_cast<int>(m_tabelle.vSpalten.size());
    const int iLaufnummer = iLfd + 1 + static_cast<int>(m_tabelle.vSchluessel.size());
    if (m_iBisLfd < 0) m_iBisLfd = sqlite3_column_int64(m_pAnweisung.get(), iLaufnummer);
    return sqlite3_column_int64(m_pAnweisung.get(), iLfd) > m_iBisLfd;
}

bool CSqliteWeg::LohntVorlauf() const {
    return m_iZeilen == ZEILEN_OHNE_VORLAUF && m_bereich.sBis.empty() && m_datei.NurLesen() &&
           m_datei.Wege() - m_iWegeVorher >= WEGE_NEBENBEI;
}

int CSqliteWeg::Naechste(CFelder vFelder) {
    m_bZeile = m_bPlatz = false;
    if (m_iEnde != ZEILE_OK) return m_iEnde;
    if (LohntVorlauf()) m_pVorlauf = CSqliteVorlauf::Starte(m_datei, m_tabelle, m_bereich, m_iZeilen);
    const int iErgebnis = m_pVorlauf ? SchrittImVorlauf(vFelder) : Schritt(vFelder);
    if (iErgebnis == ZEILE_OK) ++m_iZeilen;
    return iErgebnis;
}

// Where the thread fails, the statement catches up and goes on from there.
int CSqliteWeg::SchrittImVorlauf(CFelder vFelder) {
    const int iErgebnis = m_pVorlauf->Naechste(vFelder);
    if (iErgebnis == ZEILE_KEINE) return Ende(ZEILE_KEINE);
    if (iErgebnis == ZEILE_OK) {
        ++m_datei.Vorausgelesen().iZeilen;
        return ZEILE_OK;
    }
    m_pVorlauf.reset();
    for (std::int64_t i = ZEILEN_OHNE_VORLAUF; i < m_iZeilen; ++i)
        if (sqlite3_step(m_pAnweisung.get()) != SQLITE_ROW) return Ende(m_datei.Fehler());
    return Schritt(vFelder);
}

int CSqliteWeg::Schritt(CFelder vFelder) {
    sqlite3_stmt * const p = m_pAnweisung.get();
    do {
        const int iSchritt = sqlite3_step(p);
        if (iSchritt == SQLITE_DONE) return Ende(ZEILE_KEINE);
        if (iSchritt != SQLITE_ROW) return Ende(m_datei.Fehler());
        if (!std::exchange(m_bLaeuft, true)) m_datei.BeginntWeg();
    } while (!m_datei.NurLesen() && SpaeterGeschrieben());
    try {
        int i = 0;
        for (CString * pFeld : vFelder)
            if (!LiesText(p, i++, *pFeld)) return Ende(m_datei.Fehler());
    } catch (const std::bad_alloc &) { // the statement has gone on, so the row would be missed
        Ende(m_datei.KeinSpeicher());
        throw;
    }
    m_bZeile = true;
    return ZEILE_OK;
}

SPlatz & CSqliteWeg::Platz() {
    if (m_bPlatz) return m_platz;
    sqlite3_stmt * const p = m_pAnweisung.get();
    int i = static_cast<int>(m_tabelle.vSpalten.size());
    m_platz.iLfd = sqlite3_column_int64(p, i++);
    m_platz.vSchluessel.resize(m_tabelle.vSchluessel.size());
    for (std::string & sSchluessel : m_platz.vSchluessel) {
        const auto * pBytes = static_cast<const char *>(sqlite3_column_blob(p, i));
        sSchluessel.assign(pBytes ? pBytes : "", static_cast<std::size_t>(sqlite3_column_bytes(p, i)));
        ++i;
    }
    m_bPlatz = true;
    return m_platz;
}

int CSqliteWeg::Loesche() {
    if (m_datei.NurLesen()) return ZEILE_VERWEIGERT;
    if (!m_bZeile) return ZEILE_KEINE;
    const int iErgebnis = m_datei.Loesche(m_tabelle, Platz());
    if (iErgebnis == ZEILE_OK) m_bZeile = false;
    return iErgebnis;
}

int CSqliteWeg::Ersetze(CWerte vWerte) {
    if (m_datei.NurLesen()) return ZEILE_VERWEIGERT;
    return m_bZeile ? m_datei.Aendere(m_tabelle, Platz(), vWerte) : static_cast<int>(ZEILE_KEINE);
}

} // namespace orvostat
