// A row of a fee schedule, and what finds one.
//
// Points stand in hundredths (only those of kind "q", subkind "1", are the number that GOZ prints), factors in
// ten-thousandths (2.3 is "23000"), rates are amounts: BEMA points for the insurer kinds, GOZ and GOÄ rates for the
// private ones.
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"

#include <cstdint>

namespace orvostat {

class CTGO;
class CTGoCheck;
class CWPFMatrixBase; // of the window library

class CGOStruct {
public:
    CString m_sLst;     // as stored
    CString m_sKuerzel; // as stored
    CString m_sLstLower;
    CString m_sKuerzelLower;
    char m_cGoArt = 0;
    char m_cGoSubArt = 0;
    CString m_sDruckbild; // print image code
    char m_cPwLArt = 0;
    char m_cStatArt = 0;
    CString m_sGoFeld1;
    CString m_sGoFeld2;
    CString m_sGoFeld3;
    std::int32_t m_iGebPkt = 0;  // points as stored; those of a date: GetGebPkt
    std::int32_t m_iPunkte2 = 0; // alternative points, kinds "e", "f", "h" only
    std::int32_t m_iPunkte3 = 0;
    std::int32_t m_iPunkte4 = 0;
    CDBetrag m_Zuschlag; // per unit; never set for kind "u"
    CDBetrag m_Betrag2;
    CDBetrag m_Einfachsatz;  // fee at factor 1
    CDBetrag m_EinfachsatzV; // the same for special insurer type "V"; not for kinds "e", "f", "h"
    std::int32_t m_iF100AEV = 0;
    std::int32_t m_iPruefZeitT = 0; // audit minutes per day and per quarter
    std::int32_t m_iPruefZeitQ = 0;
    char m_cGoKz = 0;
    CString m_sGoText;
    CString m_sProvGrp; // commission group, two characters right-aligned, " 0" for none
    CString m_sFaktor;  // the row's factor, the standard factor where it has none
    CString m_sStdFaktor;
    CString m_sGoWert3Text;

    // Back to the fresh state: texts empty, numbers and letters 0, amounts empty.
    void Clear();
    // Takes a row that has been read (not null, unchanged, not kept). With pCheck, which may be null and is moved to
    // another row, the audit minutes are taken from the service's check of kind "p": characters 1 to 6 are the
    // minutes, character 9 says "2" per quarter or "3" per day and per quarter, counted from 0. What the row does
    // not have stays as it is. The flag has no effect.
    void MoveGO(CTGO * pGO, bool bArzt, CTGoCheck * pCheck);
    // The points that hold on the day (YYYYMMDD): those of a fee change, or m_iGebPkt.
    [[nodiscard]] int GetGebPkt(const CString & sDatum) const;
};

// Looks up the service number of a short code in the fee schedule of kind *pGoArt. On success true and sLst is the
// number as stored. False without a short code or a kind, and sLst stays; false without such a row, and sLst is
// empty.
[[nodiscard]] bool GetGOPosLstNr(const CString & sKuerzel, const char * pGoArt, CString & sLst);

// Opens the fee search of the sibling library orvogo: for the services of dentists and physicians and for no kind
// (0) its function SucheGebuehr, for laboratory kinds SucheBEL. Both are
//
//   int SucheX(char cGoArt, void * pEltern, void * pSuche, int iArt)
//
// and get the four arguments as they are: the kind, the window to stand before, the search value, the mode of the
// search. What the pointers mean is between caller and library. Returns the function's result, 0 after a prompt
// where the function is missing.
int SucheGO(char cGoArt, void * pEltern, void * pSuche, int iArt);

// Is given the fee search's matrix of service kinds before it is shown; leaves all rows in place.
void SucheLstStructGoArten(CWPFMatrixBase & matrix);

} // namespace orvostat
