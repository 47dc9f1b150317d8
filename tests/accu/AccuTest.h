// The fixture of the accumulator's tests: an empty practice in memory and an accumulator beside it.
//
//   Schreibe("PAT PATNR=4711 ADRNR=7");
//   m_accu.GetMemForTables();
//   EXPECT_TRUE(m_accu.ReadPat("4711"));
#pragma once

#include "orvostatbs/accu/StatAccu.h"
#include "support/Hitfelder.h"
#include "support/Praxis.h"

namespace orvostat {

class CAccuTest : public CPraxisTest {
public:
    ~CAccuTest() override { m_accu.DeleteMemForTables(); }

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
