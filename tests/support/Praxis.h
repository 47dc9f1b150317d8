// The practice of a test: a store that both database handles work on.
#pragma once

#include "orvostatbs/host/RSet.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Faelle.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

#include <memory>
#include <utility>

namespace orvostat {

// As long as it lives both handles work on its store, in memory if no other is given, and afterwards on what they had.
// What the read-only one does is counted, and can be made to fail.
class CTestpraxis {
public:
    explicit CTestpraxis(std::shared_ptr<CZeilenspeicher> pSpeicher = std::make_shared<CMemorySpeicher>())
        : m_pSpeicher(std::move(pSpeicher)) {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pLesend);
    }
    ~CTestpraxis() {
        dbDatabase.Verbinde(m_pVorher);
        dbDatabaseRO.Verbinde(m_pVorherRO);
    }
    CTestpraxis(const CTestpraxis &) = delete;
    CTestpraxis & operator=(const CTestpraxis &) = delete;

    [[nodiscard]] CZeilenspeicher & Speicher() { return *m_pSpeicher; }
    [[nodiscard]] CFehlerspeicher & Lesend() { return *m_pLesend; }
    // Writes are counted from now on as well.
    void ZaehleAlles() { dbDatabase.Verbinde(m_pLesend); }
    // Whether the read-only handle has touched the store since the last question.
    [[nodiscard]] bool HatGelesen() {
        return std::exchange(m_iZugriffe, m_pLesend->Operationen()) != m_pLesend->Operationen();
    }

private:
    std::shared_ptr<CZeilenspeicher> m_pSpeicher;
    std::shared_ptr<CFehlerspeicher> m_pLesend = std::make_shared<CFehlerspeicher>(m_pSpeicher);
    std::shared_ptr<CZeilenspeicher> m_pVorher = dbDatabase.Speicher();
    std::shared_ptr<CZeilenspeicher> m_pVorherRO = dbDatabaseRO.Speicher();
    int m_iZugriffe = 0;
};

class CPraxisTest : public CHostTest {
public:
    CTestpraxis m_praxis;
    [[nodiscard]] bool HatGelesen() { return m_praxis.HatGelesen(); }
};

} // namespace orvostat
