#include "orvostatbs/host/TabellenLabor.h"

namespace orvostat {

bool CTKTraeger::IsKzvOrKvPaket(const CString & sPatNr) {
    const CAutoRSet<CTKTraeger> pKTraeger;
    pKTraeger->m_PATNR = sPatNr;
    return pKTraeger->GetByK1() == 0 && pKTraeger->m_KTART == "p";
}

CString CTIcd::AddPoint(const CString & sCode) {
    if (sCode.GetLength() <= 3 || sCode.Find('.') >= 0) return sCode;
    return sCode.Left(3) + "." + sCode.Mid(3);
}

} // namespace orvostat
