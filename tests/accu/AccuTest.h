// The fixture of the accumulator's tests: an empty practice in memory and an accumulator beside it.
//
//   Schreibe<CTPat>({.m_PATNR = "4711", .m_ADRNR = "7"});
//   m_accu.GetMemForTables();
//   EXPECT_TRUE(m_accu.ReadPat("4711"));
#pragma once

#include "orvostatbs/accu/StatAccu.h"
#include "support/Hitfelder.h"
#include "support/Praxis.h"

// A row names the fields it sets; the others are empty.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace orvostat {

// The struct of a table class's fields.
template <class TFelder> TFelder FelderVon(const CTabelle<TFelder> *);
template <class T> using CZeileVon = decltype(FelderVon(static_cast<T *>(nullptr)));

class CAccuTest : public CPraxisTest {
public:
    ~CAccuTest() override { m_accu.DeleteMemForTables(); }

    static void Schreibe(const std::string & sZeilen) { orvostat::Schreibe(sZeilen); }
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

    CStatAccu m_accu;
};

// Sets what a case names of the selection.
inline void Waehle(CStatAccu & accu, CFall & fall) {
#define FELD(TYP, NAME, SETTER, START) accu.Set##SETTER(fall.Ein<TYP>(#NAME, accu.Get##NAME()));
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    accu.Set##SETTER(fall.Ein(#ERSTES, accu.Get##ERSTES()), fall.Ein(#ZWEITES, accu.Get##ZWEITES()));
#define EIGEN(TYP, NAME, START)
#include "orvostatbs/accu/Selektion.def"
    if (fall.Hat("Mandant")) accu.SetMandant(fall.Ein("Mandant"));
    if (fall.Hat("Lebs")) accu.SetLebs(fall.Ein<std::vector<CString>>("Lebs"));
    accu.SetRecallData(fall.Ein("RecallArt", accu.GetRecallArt()),
                       fall.Ein("RecallIntervall", accu.GetRecallIntervall()),
                       fall.Ein("RecallLast", accu.GetRecallLast()));
}

} // namespace orvostat
