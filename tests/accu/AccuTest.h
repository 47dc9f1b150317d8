// The fixture of the accumulator's tests: an empty practice in memory and an accumulator beside it.
//
//   Schreibe<CTPat>({.m_PATNR = "4711", .m_ADRNR = "7"});
//   m_accu.GetMemForTables();
//   EXPECT_TRUE(m_accu.ReadPat("4711"));
#pragma once

#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

#include <memory>
#include <utility>

// A row names the fields it sets; the others are empty.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace orvostat {

// As long as it lives, both database handles work on its store.
class CPraxisErsatz {
public:
    CPraxisErsatz() {
        dbDatabase.Verbinde(m_pSpeicher);
        dbDatabaseRO.Verbinde(m_pLesend);
    }
    ~CPraxisErsatz() {
        dbDatabase.Verbinde(m_pVorher);
        dbDatabaseRO.Verbinde(m_pVorherRO);
    }
    CPraxisErsatz(const CPraxisErsatz &) = delete;
    CPraxisErsatz & operator=(const CPraxisErsatz &) = delete;
    [[nodiscard]] int Lesezugriffe() const { return m_pLesend->Operationen(); }

private:
    std::shared_ptr<CMemorySpeicher> m_pSpeicher = std::make_shared<CMemorySpeicher>();
    std::shared_ptr<CFehlerspeicher> m_pLesend = std::make_shared<CFehlerspeicher>(m_pSpeicher);
    std::shared_ptr<CZeilenspeicher> m_pVorher = dbDatabase.Speicher();
    std::shared_ptr<CZeilenspeicher> m_pVorherRO = dbDatabaseRO.Speicher();
};

// The struct of a table class's fields.
template <class TFelder> TFelder FelderVon(const CTabelle<TFelder> *);
template <class T> using CZeileVon = decltype(FelderVon(static_cast<T *>(nullptr)));

class CAccuTest : public CHostTest {
protected:
    ~CAccuTest() override { m_accu.DeleteMemForTables(); }

    // Adds a row to the table of class T.
    template <class T> static void Schreibe(const CZeileVon<T> & zeile) {
        T tabelle(dbDatabase);
        static_cast<CZeileVon<T> &>(tabelle) = zeile;
        ASSERT_EQ(tabelle.Write(), 0);
    }

    // A patient who can be read: with the address row that he needs.
    static void SchreibePatient(const CString & sPatNr) {
        Schreibe<CTPat>({.m_PATNR = sPatNr, .m_ADRNR = sPatNr});
        Schreibe<CTAdr>({.m_ADRNR = sPatNr, .m_ADRART = "p"});
    }

    // Whether the read-only handle has touched the store since the last question.
    [[nodiscard]] bool HatGelesen() {
        const int iVorher = std::exchange(m_iZugriffe, m_praxis.Lesezugriffe());
        return iVorher != m_iZugriffe;
    }

private:
    int m_iZugriffe = 0;
    CPraxisErsatz m_praxis; // before the accumulator, whose record sets must not outlive the store

protected:
    CStatAccu m_accu;
};

} // namespace orvostat
