// Patients of a run, and the questions of the selection about one patient. What an empty selection means differs from
// section to section, on purpose.
#include "orvostatbs/accu/StatAccu.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/detail/Reihenfolge.h"

#include <algorithm>

namespace orvostat {

namespace {

constexpr int RECALLARTEN = 40; // the kinds that "*" tries

bool GleichGross(const CString & a, const CString & b) { return a == b || a.CompareNoCase(b) == 0; }

// A section that asks for any doctor when it names none.
bool ArztOk(bool bAn, const CString & sGewaehlt, const CString & sArzt) {
    if (!bAn) return true;
    if (sArzt.IsEmpty()) return false;
    return sGewaehlt.IsEmpty() || sGewaehlt == sArzt;
}

// A section that asks for patients without a value when it names none.
bool WertOk(bool bAn, const CString & sGewaehlt, const CString & sWert) {
    if (!bAn) return true;
    if (sGewaehlt.IsEmpty()) return sWert.IsEmpty();
    return GleichGross(sGewaehlt, sWert);
}

struct SMonatTag {
    int iMonat;
    int iTag;
    [[nodiscard]] auto operator<=>(const SMonatTag &) const = default;
};
SMonatTag MonatTag(const CString & sDatum) {
    return {Zahl(GetMidStr(sDatum, 4, 2)), Zahl(GetMidStr(sDatum, 6, 2))};
}

// The digit of a recall kind, "0" outside of the text.
char Recallziffer(const CString & s, int iArt) { return iArt >= 0 && iArt < s.GetLength() ? s[iArt] : '0'; }

bool NurNullen(CString s) { return s.TrimRight('0').IsEmpty(); }

bool HatteRecall(CTHistRecall & rHistRecall, const CString & sPatNr) {
    return rHistRecall.LiesMit(1, MATCH_ALLE, {sPatNr}) == 0;
}

} // namespace

std::size_t SPatientenHash::operator()(const CString & sPatNr) const {
    const CSicht sicht = sPatNr.Sicht();
    const std::string_view s = sicht;
    const std::size_t iSchritt = s.size() / 11 + 1; // all ten of a stored number
    std::uint32_t iHash = 2166136261U;
    for (std::size_t i = 0; i < s.size(); i += iSchritt)
        iHash = (iHash * 16777619U) ^ static_cast<unsigned char>(s[i]);
    return iHash;
}

// ---- the patient table

bool CStatAccu::ReadPat(const CString & sPatNr) {
    Verlange(m_pRPat != nullptr, "ReadPat is called outside of a run: DataSumVorlauf comes before.");
    m_pRPat->SetKey(1, true);
    return m_pRPat->GetByPatNr(sPatNr) == 0;
}

int CStatAccu::FindPat(const CString & sPatNr, bool bNurIndex) {
    const auto it = m_mapPat.find(sPatNr);
    if (it != m_mapPat.end()) return it->second;
    if (bNurIndex) return -1;
    for (std::size_t i = m_vPat.size(); i-- > 0;)
        if (m_vPat[i].PATNR == sPatNr) return m_mapPat[sPatNr] = static_cast<int>(i);
    return -1;
}

int CStatAccu::GetPat(const CString & sPatNr, bool) {
    int & iPos = m_mapPat.try_emplace(sPatNr, -1).first->second;
    if (iPos != -1) return iPos;
    Verlange(m_pRPat != nullptr, "GetPat is called outside of a run: DataSumVorlauf comes before.");
    CPat pat;
    const CString sNr = sPatNr; // which may be that of an entry, and the table moves
    if (pat.ReadAndMovePat(sNr, m_pRPat, m_pRAdr, &m_rHistRecall)) {
        m_vPat.push_back(std::move(pat));
        GetVDesc(sNr, ERSTER_TAG);
        iPos = static_cast<int>(m_vPat.size()) - 1;
    }
    return iPos;
}

// ---- plain sections

bool CStatAccu::PatSelektOk(const CString & sSelektion) {
    return m_Selekt.PatSelekt.IsEmpty() || GleichGross(m_Selekt.PatSelekt, sSelektion);
}

bool CStatAccu::PatAnamneseOk(const CString & sAnamnese) {
    return m_Selekt.RisikoAnamnese.IsEmpty() || GleichGross(m_Selekt.RisikoAnamnese, sAnamnese);
}

bool CStatAccu::PatAnredeOk(const CString & sAnrede) {
    return WertOk(m_Selekt.ChAnrede, m_Selekt.PatAnrede, sAnrede);
}

bool CStatAccu::PatStrasseOk(const CString & sStrasse) {
    return WertOk(m_Selekt.ChStrasse, m_Selekt.Strasse, sStrasse);
}

bool CStatAccu::PatPlzOrtOk(const CString & sPlz, const CString & sOrt) {
    if (!m_Selekt.ChPlzOrt) return true;
    if (m_Selekt.Plz.IsEmpty() && m_Selekt.Ort.IsEmpty()) return sPlz.IsEmpty() && sOrt.IsEmpty();
    if (!m_Selekt.Plz.IsEmpty() && !GleichGross(m_Selekt.Plz, sPlz)) return false;
    return m_Selekt.Ort.IsEmpty() || GleichGross(m_Selekt.Ort, sOrt);
}

bool CStatAccu::UeberwArztOk(const CString & sArzt) {
    return ArztOk(m_Selekt.ChUeberwArzt, m_Selekt.UeberwArzt, sArzt);
}

bool CStatAccu::HausArztOk(const CString & sArzt) {
    return ArztOk(m_Selekt.ChHausArzt, m_Selekt.HausArzt, sArzt);
}

bool CStatAccu::MFR_Ok(const CString & sMfrDig) {
    if (!m_Selekt.ChKvk || m_Selekt.MFR.IsEmpty()) return true;
    return !sMfrDig.IsEmpty() && m_Selekt.MFR.Find(sMfrDig) >= 0;
}

bool CStatAccu::RSA_Ok(const CString & sRsa) { return !m_Selekt.KvkRsa || Zahl(sRsa) != 0; }

void CStatAccu::GetFragebogenVec(std::vector<CString> & vFragen) {
    SeparatedStrToVec(m_Selekt.Fragebogen, ';', vFragen);
    for (CString & sFrage : vFragen)
        sFrage.Trim().MakeUpper();
    std::erase(vFragen, CString());
}

// ---- dates

bool CStatAccu::LastBehDatumOk(const CString & sDatum) {
    const CString & sVon = m_Selekt.LetzterBesuchVon;
    const CString & sBis = m_Selekt.LetzterBesuchBis;
    return !m_Selekt.ChLetzterBesuch || (sVon <= sDatum && sDatum <= sBis);
}

// Month and day against both bounds, without a wrap over the year's end: a screen splits such a range.
bool CStatAccu::PatGebDatOk(const CString & sDatum) {
    if (m_Selekt.GeburtstagBis.IsEmpty()) return true;
    if (sDatum.IsEmpty()) return false;
    const SMonatTag tag = MonatTag(sDatum);
    return MonatTag(Oder(m_Selekt.GeburtstagVon, ERSTER_TAG)) <= tag &&
           tag <= MonatTag(m_Selekt.GeburtstagBis);
}

bool CStatAccu::PatAlterOk(const CString & sDatum) {
    if (!m_Selekt.ChAlter || (m_Selekt.AlterVon.IsEmpty() && m_Selekt.AlterBis.IsEmpty())) return true;
    if (sDatum.IsEmpty()) return false;
    const std::int64_t iAlter = (Zahl64(GetMxDate()) - Zahl64(sDatum)) / 10000;
    return Zahl(Oder(m_Selekt.AlterVon, "0")) <= iAlter && iAlter <= Zahl(Oder(m_Selekt.AlterBis, "200"));
}

// ---- treatments in a period

bool CStatAccu::PatLastLstOK(CTBeh * pBeh, const CString & sPatNr, const CString &) {
    if (!m_Selekt.ChHatLst) return true;
    return pBeh->GetForPatSel(sPatNr, Oder(m_Selekt.AbDatum, ERSTER_TAG),
                              Oder(m_Selekt.BisDatum, LETZTER_TAG), m_sLebsString, false) == 0;
}

// Whether a bound is open is asked of the run's period, not of the section's own: an empty AbDatum overrides
// OhneLstVon, and an empty OhneLstVon beside an AbDatum stays empty.
bool CStatAccu::PatOhneLstOK(CTBeh * pBeh, const CString & sPatNr, const CString &) {
    if (!m_Selekt.ChOhneLst) return true;
    const CString & sVon = m_Selekt.AbDatum.IsEmpty() ? ERSTER_TAG : m_Selekt.OhneLstVon;
    const CString & sBis = m_Selekt.BisDatum.IsEmpty() ? LETZTER_TAG : m_Selekt.OhneLstBis;
    return pBeh->GetForPatSel(sPatNr, sVon, sBis, m_sLebsString, false) != 0;
}

// ---- recalls

bool CStatAccu::PatRecallIsEmpty(CPat pat) {
    const bool bHatte = HatteRecall(m_rHistRecall, pat.PATNR);
    return !bHatte && NurNullen(pat.RECALLART) && NurNullen(pat.RECALLITV);
}

bool CStatAccu::RecallOk(const CString & sPatNr, const CString & sArten, const CString & sIntervalle) {
    if (!m_Selekt.ChRecall) return true;
    if (m_Selekt.RecallArt.IsEmpty() && m_Selekt.RecallIntervall.IsEmpty() && m_Selekt.RecallLast.IsEmpty())
        return NurNullen(sArten) && NurNullen(sIntervalle) && !HatteRecall(m_rHistRecall, sPatNr);
    if (m_Selekt.RecallArt != "*") return PatRecallOk(sPatNr, sArten, sIntervalle, Zahl(m_Selekt.RecallArt));
    for (int iArt = 0; iArt < RECALLARTEN; ++iArt)
        if (PatRecallOk(sPatNr, sArten, sIntervalle, iArt)) return true;
    return false;
}

bool CStatAccu::PatRecallOk(CTPat * pPat) {
    return RecallOk(pPat->m_PATNR, pPat->m_RECALLART, pPat->m_RECALLITV);
}

bool CStatAccu::PatRecallOk(CPat pat) { return RecallOk(pat.PATNR, pat.RECALLART, pat.RECALLITV); }

bool CStatAccu::PatRecallOk(CTPat * pPat, int iArt) {
    return PatRecallOk(pPat->m_PATNR, pPat->m_RECALLART, pPat->m_RECALLITV, iArt);
}

bool CStatAccu::PatRecallOk(CPat pat, int iArt) {
    return PatRecallOk(pat.PATNR, pat.RECALLART, pat.RECALLITV, iArt);
}

bool CStatAccu::PatRecallOk(const CString & sPatNr, const CString & sArten, const CString & sIntervalle,
                            int iArt) {
    if (Recallziffer(sArten, iArt) == '0') return false;
    const int iIntervall = Recallziffer(sIntervalle, iArt) - '0';
    if (!m_Selekt.RecallIntervall.IsEmpty() && Zahl(m_Selekt.RecallIntervall) != iIntervall) return false;
    if (m_Selekt.RecallLast.IsEmpty()) return true;
    int iWochen = 0;
    const CString sLetzter = m_rHistRecall.LastRecallDatum(sPatNr, iArt, iWochen);
    return !sLetzter.IsEmpty() && sLetzter < m_Selekt.RecallLast;
}

} // namespace orvostat
