// Insurance periods and insurers: which one applies at a date, who is private, and the card section of the selection.
#include "orvostatbs/accu/StatAccu.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/detail/Reihenfolge.h"

#include <algorithm>
#include <span>

namespace orvostat {

namespace {

// The kinds of billing that need an insurance card. They look like the point kinds of services, which stand in for them
// in rows without a kind of billing, but are a list of their own.
constexpr CBuchstaben BrauchtKarte{"befhkg"};

// The insurance period touches the days from sVon to sBis.
bool Beruehrt(const CVDesc & vdesc, const CString & sVon, const CString & sBis) {
    return vdesc.VDABDATUM <= sBis && (vdesc.VDBISDATUM.IsEmpty() || vdesc.VDBISDATUM >= sVon);
}

// Of two periods of one day, whether the second takes the place of the first: statutory before private, plain before
// special, else the first stays.
bool Vorzuziehen(const CVDesc & wahl, const CVDesc & kandidat) {
    if (kandidat.IsPrivat()) return false;
    return wahl.IsPrivat() || (wahl.HasSonderKsArt() && !kandidat.HasSonderKsArt());
}

bool IstKarte(const CString & sNachweis) { return sNachweis == "g" || sNachweis == "G" || sNachweis == "j"; }

// A card that covers days of the period; without an end it counts to the end of the quarter in which it began.
bool KarteDeckt(const CVDesc & vdesc, const CString & sVon, const CString & sBis) {
    if (!IstKarte(vdesc.VNACHWEIS)) return false;
    const CString sEnde = vdesc.VDBISDATUM.IsEmpty() ? QuartalsEnde(vdesc.VDABDATUM) : vdesc.VDBISDATUM;
    return vdesc.VDABDATUM <= sBis && sEnde >= sVon;
}

} // namespace

// ---- insurers

int CStatAccu::ReadKas(const CString & sKuerzel) {
    Verlange(m_pROrvoKas != nullptr, "ReadKas is called outside of a run: DataSumVorlauf comes before.");
    m_pROrvoKas->SetKey(1, false);
    m_pROrvoKas->SetForwardOnly(true);
    return m_pROrvoKas->LiesMit(1, MATCH_ALLE, {sKuerzel}) == 0 ? 0 : 1;
}

int CStatAccu::FindKas(const CString & sKuerzel, const CString & sDatum) {
    const std::span<const int> vZeilen = m_indexKas.Finde(m_vKas, sKuerzel);
    const std::vector<CKas> & vKas = m_vKas.Lesend();
    for (const int iPos : vZeilen)
        if (vKas[static_cast<std::size_t>(iPos)].m_sGueltigAb <= sDatum) return iPos;
    return vZeilen.empty() ? -1 : -2;
}

// Takes the row under m_pROrvoKas into m_vKas. A row that differs from the last entry in nothing but its date melts
// into it. False for a row that the selection leaves out.
bool CStatAccu::NimmKasse() {
    CTOrvoKas * const pKas = m_pROrvoKas;
    if (m_Selekt.NurGesetzlicheKassen && pKas->m_KASFLAG1 != "1") return false;
    if (!m_vKas.empty()) {
        CKas letzte = m_vKas.Lesend().back();
        letzte.m_sGueltigAb = pKas->m_GUELTIGAB;
        if (letzte == pKas) {
            m_vKas.back().m_sGueltigAb = pKas->m_GUELTIGAB;
            return true;
        }
    }
    CKas kas;
    kas.MoveKas(pKas, m_sKzvNr);
    m_vKas.push_back(std::move(kas));
    return true;
}

bool CStatAccu::GetKasFromVDesc(const CString & sKuerzel, const CString & sDatum, const CString &) {
    const int iPos = FindKas(sKuerzel, sDatum);
    if (iPos != -1) return iPos >= 0;
    const std::size_t iVorher = m_vKas.size();
    bool bGefunden = false;
    for (int i = ReadKas(sKuerzel); i == 0; i = m_pROrvoKas->Next())
        if (NimmKasse()) bGefunden = true;
    if (m_vKas.size() > iVorher) m_vKas.back().m_sGueltigAb = ERSTER_TAG;
    return bGefunden;
}

// Takes in the rows of one insurer, newest first, up to the one that is valid on the first day of the run. Where the
// rows run out before, the last entry of the table is valid from the start, even if it is another insurer's.
void CStatAccu::NimmKassenzeilen(const CString & sKuerzel) {
    if (ReadKas(sKuerzel) != 0) return;
    do {
        NimmKasse();
        if (m_pROrvoKas->m_GUELTIGAB <= m_Selekt.AbDatum) return;
    } while (m_pROrvoKas->Next() == 0);
    if (!m_vKas.empty()) m_vKas.back().m_sGueltigAb = ERSTER_TAG;
}

bool CStatAccu::GetKasFromAllVDesc(const CString & sPatNr) {
    std::vector<CVDesc> & vVDesc = m_mapVDesc[sPatNr];
    std::sort(vVDesc.begin(), vVDesc.end(),
              [](const CVDesc & a, const CVDesc & b) { return a.KASKUERZEL < b.KASKUERZEL; });
    m_vKas.clear();
    CString sVorige;
    for (const CVDesc & vdesc : vVDesc) {
        if (vdesc.KASKUERZEL == sVorige) continue;
        NimmKassenzeilen(vdesc.KASKUERZEL);
        sVorige = vdesc.KASKUERZEL;
    }
    return true;
}

// ---- periods

bool CStatAccu::GetVDesc(const CString & sPatNr, const CString & sDatum) {
    Verlange(m_pRVDesc != nullptr, "GetVDesc is called outside of a run: DataSumVorlauf comes before.");
    CTVDesc & rVDesc = *m_pRVDesc;
    const CString sNr = sPatNr; // which may be the record set's own, and the walk moves
    rVDesc.SetKey(1, false);
    rVDesc.SetForwardOnly(true);
    bool bGefunden = false;
    for (int i = rVDesc.GetByIntervall(sNr, sDatum, CString(), CString(), false); i == 0; i = rVDesc.Next()) {
        if (rVDesc.m_KASKUERZEL.IsEmpty()) continue;
        if (!GetKasFromVDesc(rVDesc.m_KASKUERZEL, rVDesc.m_VDABDATUM, sDatum)) continue;
        m_mapVDesc[sNr].emplace_back().MoveVDesc(&rVDesc);
        bGefunden = true;
    }
    return bGefunden;
}

CVDesc * CStatAccu::GetActVDesc(const CString & sPatNr, const CString & sDatum) {
    Verlange(m_pRVDesc != nullptr, "GetActVDesc is called outside of a run: DataSumVorlauf comes before.");
    const CString sNr = sPatNr; // which may be the record set's own
    if (m_pRVDesc->FindMatching(sNr, sDatum, 0) != 0) return nullptr;
    CVDesc & vdesc = m_mapVDesc[sNr].emplace_back();
    vdesc.MoveVDesc(m_pRVDesc);
    return &vdesc;
}

CVDesc * CStatAccu::FindVDesc(const CString & sPatNr, const CString & sVDescNr) {
    std::vector<CVDesc> & vVDesc = m_mapVDesc[sPatNr];
    const auto it = std::find_if(vVDesc.rbegin(), vVDesc.rend(),
                                 [&](const CVDesc & vdesc) { return vdesc.m_sVDescNr == sVDescNr; });
    return it == vVDesc.rend() ? nullptr : &*it;
}

CVDesc * CStatAccu::FindVDescByDate(const CString & sPatNr, CString sDatum) {
    if (sDatum.IsEmpty()) sDatum = GetMxDate();
    CVDesc * pWahl = nullptr;
    for (CVDesc & vdesc : m_mapVDesc[sPatNr])
        if (Beruehrt(vdesc, sDatum, sDatum) && (pWahl == nullptr || Vorzuziehen(*pWahl, vdesc)))
            pWahl = &vdesc;
    return pWahl;
}

bool CStatAccu::IsPrivatPatient(const CString & sPatNr, CString sVon, CString sBis) {
    if (sVon.IsEmpty()) sVon = m_Selekt.AbDatum;
    if (sBis.IsEmpty()) sBis = m_Selekt.BisDatum;
    if (sVon.IsEmpty() && sBis.IsEmpty()) sVon = sBis = GetMxDate();
    if (sVon.IsEmpty()) sVon = ERSTER_TAG;
    if (sBis.IsEmpty()) sBis = LETZTER_TAG;
    const std::vector<CVDesc> & vVDesc = m_mapVDesc[sPatNr];
    return std::none_of(vVDesc.begin(), vVDesc.end(), [&](const CVDesc & vdesc) {
        return Beruehrt(vdesc, sVon, sBis) && !vdesc.IsPrivat();
    });
}

// ---- the card section

bool CStatAccu::CheckKvkVorgaben(const CVDesc & vdesc) {
    const SSelektion & s = m_Selekt;
    const CString & sNachweis = vdesc.VNACHWEIS;
    if (!s.KvkDurchzug && !s.KvkMev && !s.KvkSchein && !s.EEB) return true;
    return (s.KvkDurchzug && sNachweis == "G") || (s.KvkMev && sNachweis == "g") ||
           (s.KvkSchein && sNachweis == "j") || (s.EEB && (sNachweis == "E" || sNachweis == "O"));
}

bool CStatAccu::KvkVorgabenOk(CTBeh * pBeh, const CString & sPatNr) {
    if (!m_Selekt.ChKvk) return true;
    const std::vector<CVDesc> & vVDesc = m_mapVDesc[sPatNr];
    if (m_Selekt.KvkFehlt) return KarteFehlt(pBeh, sPatNr, vVDesc);
    return std::any_of(vVDesc.begin(), vVDesc.end(), [this](const CVDesc & vdesc) {
        const CString & sTag = Oder(vdesc.EINLESEDATUM, vdesc.VDABDATUM);
        return m_Selekt.KvkVon <= sTag && sTag <= m_Selekt.KvkBis && CheckKvkVorgaben(vdesc);
    });
}

// The patient was treated in the section's period, needed a card for it, and has none that covers it.
bool CStatAccu::KarteFehlt(CTBeh * pBeh, const CString & sPatNr, const std::vector<CVDesc> & vVDesc) {
    const CString & sVon = m_Selekt.KvkVon;
    const CString & sBis = m_Selekt.KvkBis;
    for (const CVDesc & vdesc : vVDesc)
        if (KarteDeckt(vdesc, sVon, sBis)) return false;
    for (int i = pBeh->GetForPatSel(sPatNr, sVon, sBis, m_sLebsString, true); i == 0; i = pBeh->Next())
        if (BrauchtKarte(Oder(pBeh->m_ABRART, pBeh->m_GOART).Erstes())) return true;
    return false;
}

} // namespace orvostat
