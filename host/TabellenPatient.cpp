#include "orvostatbs/host/TabellenPatient.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <array>

namespace orvostat {

int CTPat::GetByPatNr(const CString & sPatNr) {
    m_PATNR = sPatNr;
    return GetByK1(MATCH_GENAU);
}

void CTPat::GetPflegegrad(CString & sGrad, CString & sEnde) const {
    sGrad = m_PFLEGEGRAD;
    sEnde = m_PFLEGEGRADENDE;
}

std::uint32_t CTPat::GetIndexMarkers() const { return static_cast<std::uint32_t>(Zahl64(m_INDEXMARKERS)); }

CString CTHistRecall::LastRecallDatum(const CString & sPat, int iArt, int & iErgebnis) {
    CString sLetztes;
    iErgebnis = 0;
    for (int i = LiesMit(1, MATCH_ALLE, {sPat}); i == 0; i = Next()) {
        if (iArt >= 0 && Zahl(m_RECALLART) != iArt) continue;
        if (m_RECALLDATUM <= sLetztes) continue;
        sLetztes = m_RECALLDATUM;
        iErgebnis = Zahl(m_RECALLITV);
    }
    return sLetztes;
}

bool CTVDesc::IsWsoOst(const CString & sWso, const CString &) { return sWso == "9"; }

int CTVDesc::GetByIntervall(const CString & sPat, const CString & sDatum, const CString &, const CString &,
                            bool) {
    ModifyFilter([this, sDatum] { return m_VDBISDATUM.IsEmpty() || m_VDBISDATUM >= sDatum; });
    return LiesMit(1, MATCH_ALLE, {sPat});
}

// The order of preference among periods of one day, the best 0.
int CTVDesc::Rang() const {
    const bool bPrivat = IstPrivatNachweis(GetEEB() ? ElektronischerNachweis(m_VNACHWEIS) : m_VNACHWEIS);
    const char cArt = m_KSART.Erstes();
    return bPrivat ? 2 : cArt != 0 && cArt != 'a' ? 1 : 0;
}

// Of periods of one rank the latest goes first, which the walk meets last in ascending order.
int CTVDesc::FindMatching(const CString & sPat, const CString & sDatum, int) {
    const CString sTag = sDatum; // which may be a field of this object
    int iBester = -1;
    CTVDesc_Fields beste;
    int i = GetByIntervall(sPat, sTag, CString(), CString(), false);
    for (; i == ZEILE_OK; i = Next()) {
        const int iRang = Rang();
        if (m_VDABDATUM > sTag || (iBester >= 0 && iRang >= iBester + (Aufsteigend() ? 1 : 0))) continue;
        iBester = iRang;
        beste = *this;
    }
    if (i != ZEILE_KEINE || iBester < 0) {
        InitI();
        return i;
    }
    static_cast<CTVDesc_Fields &>(*this) = beste;
    ModifyFilter([this, beste] { return static_cast<const CTVDesc_Fields &>(*this) == beste; });
    return GetByK1(MATCH_GENAU);
}

void CBefunde::Befund2Kuerzel(int iBefund, CString & sBefund, CString & sKuerzel) const {
    struct SBefund {
        char cBefund;
        const char * pKuerzel;
    };
    // Letters as in the findings line of the denture plan form, codes as the screens show them.
    static constexpr std::array<SBefund, 16> aBefunde{{{0, ""},
                                                       {'c', "c"},
                                                       {'f', "f"},
                                                       {'z', "z"},
                                                       {'k', "k"},
                                                       {'b', "b"},
                                                       {'e', "e"},
                                                       {'i', "i"},
                                                       {'t', "t"},
                                                       {'x', "x"},
                                                       {'k', "kw"},
                                                       {'p', "pw"},
                                                       {'t', "tw"},
                                                       {'b', "bw"},
                                                       {'i', "ix"},
                                                       {')', ")("}}};
    sBefund.Empty();
    sKuerzel.Empty();
    if (iBefund <= 0 || static_cast<std::size_t>(iBefund) >= aBefunde.size()) return;
    const SBefund & befund = aBefunde[static_cast<std::size_t>(iBefund)];
    sBefund = CString(befund.cBefund);
    sKuerzel = CString(befund.pKuerzel);
}

bool StringToEGKVersichertenstammdaten(const CString & sDaten, SEGKVersichertenstammdaten & daten) {
    if (sDaten.IsEmpty()) return false;
    std::vector<CString> vElemente;
    SeparatedStrToVec(sDaten, '|', vElemente);
    SEGKVersichertenstammdaten gelesen;
    for (const CString & sElement : vElemente) {
        const int iGleich = sElement.Find('=');
        if (iGleich < 1) return false;
        if (sElement.Left(iGleich) == "BPG") gelesen.m_sBesonderePersonengruppe = sElement.Mid(iGleich + 1);
    }
    daten = gelesen;
    return true;
}

} // namespace orvostat
