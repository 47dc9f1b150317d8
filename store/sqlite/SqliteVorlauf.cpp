#include "SqliteVorlauf.h"

#include <exception>
#include <utility>

namespace orvostat {

namespace {

constexpr std::size_t ZEILEN_JE_BLOCK = 256;

} // namespace

std::unique_ptr<CSqliteVorlauf> CSqliteVorlauf::Starte(const CSqliteDatei & datei, const STabelle & tabelle,
                                                       const SBereich & bereich, std::int64_t iAb) {
    if (std::thread::hardware_concurrency() < 2) return nullptr;
    try {
        std::unique_ptr<CSqliteDatei> pDatei = datei.Zweite();
        CAnweisung pAnweisung = pDatei ? pDatei->NimmWeg(tabelle, bereich) : nullptr;
        if (!pAnweisung) return nullptr;
        std::unique_ptr<CSqliteVorlauf> p(
            new CSqliteVorlauf(std::move(pDatei), std::move(pAnweisung), tabelle.vSpalten.size()));
        p->m_faden = std::thread(&CSqliteVorlauf::Lies, p.get(), iAb);
        return p;
    } catch (const std::exception &) { // no memory, no thread
        return nullptr;
    }
}

CSqliteVorlauf::CSqliteVorlauf(std::unique_ptr<CSqliteDatei> pDatei, CAnweisung pAnweisung,
                               std::size_t iSpalten)
    : m_pDatei(std::move(pDatei)), m_pAnweisung(std::move(pAnweisung)),
      m_vBloecke(BLOECKE, CSqliteBlock(iSpalten)) {}

CSqliteVorlauf::~CSqliteVorlauf() {
    if (!m_faden.joinable()) return;
    {
        const std::lock_guard sperre(m_mutex);
        m_bHalt = true;
    }
    m_cvGeleert.notify_one();
    m_faden.join();
}

// ---- the walk's side

int CSqliteVorlauf::Naechste(CFelder vFelder) {
    if (m_pBlock == nullptr || m_iZeile == m_pBlock->Zeilen()) {
        if (const int iErgebnis = NaechsterBlock(); iErgebnis != ZEILE_OK) return iErgebnis;
    }
    m_pBlock->Tausche(m_iZeile++, vFelder);
    return ZEILE_OK;
}

// Gives back the block that is read and takes the next one; what has ended the thread where there is none.
int CSqliteVorlauf::NaechsterBlock() {
    std::unique_lock sperre(m_mutex);
    if (m_pBlock != nullptr) {
        m_pBlock = nullptr;
        ++m_iGeleert;
        m_cvGeleert.notify_one();
    }
    m_cvGefuellt.wait(sperre, [this] { return m_iGeleert < m_iGefuellt || m_iEnde != ZEILE_OK; });
    if (m_iGeleert == m_iGefuellt) return m_iEnde;
    m_pBlock = &m_vBloecke[m_iGeleert % BLOECKE];
    m_iZeile = 0;
    return ZEILE_OK;
}

// ---- the thread's side

void CSqliteVorlauf::Lies(std::int64_t iAb) {
    int iErgebnis = ZEILE_OK;
    try {
        for (; iAb > 0 && iErgebnis == ZEILE_OK; --iAb)
            iErgebnis = Schritt();
        for (std::uint64_t i = 0; iErgebnis == ZEILE_OK && WarteAufPlatz(i); ++i)
            iErgebnis = FuelleBlock(m_vBloecke[i % BLOECKE]);
    } catch (const std::exception &) {
        iErgebnis = ZEILE_FEHLER;
    }
    const std::lock_guard sperre(m_mutex);
    m_iEnde = iErgebnis == ZEILE_OK ? ZEILE_FEHLER : iErgebnis;
    m_cvGefuellt.notify_one();
}

int CSqliteVorlauf::Schritt() {
    const int iSchritt = sqlite3_step(m_pAnweisung.get());
    return iSchritt == SQLITE_ROW ? ZEILE_OK : iSchritt == SQLITE_DONE ? ZEILE_KEINE : ZEILE_FEHLER;
}

// Waits until block number i is free; false if nobody wants it any more.
bool CSqliteVorlauf::WarteAufPlatz(std::uint64_t i) {
    std::unique_lock sperre(m_mutex);
    m_cvGeleert.wait(sperre, [&] { return m_bHalt || i < m_iGeleert + BLOECKE; });
    return !m_bHalt;
}

// Reads rows into the block and hands it over; what came behind them, ZEILE_OK if it is full.
int CSqliteVorlauf::FuelleBlock(CSqliteBlock & block) {
    block.Leere();
    int iErgebnis = ZEILE_OK;
    while (iErgebnis == ZEILE_OK && block.Zeilen() < ZEILEN_JE_BLOCK) {
        iErgebnis = Schritt();
        if (iErgebnis == ZEILE_OK && !block.Nimm(m_pAnweisung.get())) iErgebnis = ZEILE_FEHLER;
    }
    if (block.Zeilen() == 0) return iErgebnis;
    const std::lock_guard sperre(m_mutex);
    ++m_iGefuellt;
    m_cvGefuellt.notify_one();
    return iErgebnis;
}

} // namespace orvostat
