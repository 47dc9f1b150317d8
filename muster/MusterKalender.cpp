#include "MusterKalender.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>

namespace orvostat {

namespace {

bool Arbeitstag(const CMxDate & tag, const CString & sDatum) {
    static const CString s_asFeiertage[] = {"0101", "0501", "1003", "1224", "1225", "1226", "1231"};
    const int iWochentag = tag.Wochentag();
    return iWochentag != 1 && iWochentag != 7 &&
           std::ranges::find(s_asFeiertage, sDatum.Mid(4)) == std::end(s_asFeiertage);
}

} // namespace

CMusterKalender::CMusterKalender(const CString & sVon, int iJahre) : m_iJahre(iJahre) {
    const CString sEnde = Datum(Jahr(sVon) + iJahre, 1, 1).Left(4) + sVon.Mid(4);
    for (CMxDate tag(sVon); tag.IsValid(); tag = tag + 1) {
        const CString sDatum = tag;
        if (sDatum >= sEnde) break;
        if (Arbeitstag(tag, sDatum)) m_vTage.push_back(sDatum);
    }
}

CString TagePlus(const CString & sDatum, int iTage) { return CMxDate(sDatum) + iTage; }

CString Datum(int iJahr, int iMonat, int iTag) {
    return RightFix(itoc(iJahr), 4, '0') + RightFix(itoc(iMonat), 2, '0') + RightFix(itoc(iTag), 2, '0');
}

int Jahr(const CString & sDatum) { return Zahl(sDatum.Left(4)); }

} // namespace orvostat
