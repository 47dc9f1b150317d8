#include "Summenlauf.h"

#include <algorithm>

namespace orvostat {

namespace {

// Adds the amounts of all places to the record's sums, those of the latest hits last: they name the sums.
template <class T> void VerteileVorrat(T & rec, const std::array<SPosten, SSummenplatz::ANZAHL> & aVorrat) {
    std::vector<std::size_t> vPlaetze;
    for (std::size_t i = 0; i < aVorrat.size(); ++i)
        if (aVorrat[i].pHit) vPlaetze.push_back(i);
    std::sort(vPlaetze.begin(), vPlaetze.end(),
              [&](std::size_t a, std::size_t b) { return std::less<>()(aVorrat[a].pHit, aVorrat[b].pHit); });
    for (const std::size_t i : vPlaetze)
        Verteile(rec, SSummenplatz::Aus(i), aVorrat[i]);
}

} // namespace

void CTage::SFach::Nimm(std::size_t iTag) {
    if (iTag >= vGesehen.size()) vGesehen.resize(iTag + 1);
    if (vGesehen[iTag]) return;
    vGesehen[iTag] = true;
    ++iAnzahl;
}

CTage::SFach * CTage::Fach(const CString & sNr) {
    m_pAlle = &m_mTage[0];
    return &m_mTage[Zahl(sNr)];
}

void CTage::Nimm(SFach * pFach, std::size_t iTag) {
    pFach->Nimm(iTag);
    m_pAlle->Nimm(iTag);
}

void CTage::HaengeAn(std::vector<std::pair<std::int32_t, std::int32_t>> & vTage) const {
    for (const auto & [iNr, tage] : m_mTage)
        vTage.emplace_back(iNr, tage.iAnzahl);
}

CSummenlauf::CSummenlauf(CLSSum & sum, const CString & sPraxis) : m_sum(sum), m_sPraxis(sPraxis) {}

std::size_t CSummenlauf::Behandler(const CBehHitLine & hit) {
    auto & vBeh = m_sum.m_vBeh;
    if (m_iLetzter < m_vVorrat.size() && vBeh[m_iLetzter] == hit) return m_iLetzter;
    const std::uint32_t iHash = HashVon(hit.BEHANDLERNR);
    int i = m_behIndex.Finde(vBeh, iHash, [&](const CLSBehLstGrp & beh) { return beh == hit; });
    if (i < 0) {
        vBeh.emplace_back().BEHANDLERNR = hit.BEHANDLERNR;
        m_behIndex.Angehaengt(vBeh, iHash);
        i = static_cast<int>(vBeh.size()) - 1;
    }
    if (m_vVorrat.size() < vBeh.size()) {
        m_vVorrat.resize(vBeh.size());
        m_vBehZeilen.resize(vBeh.size());
        m_vBehTage.resize(vBeh.size());
    }
    return m_iLetzter = static_cast<std::size_t>(i);
}

bool CSummenlauf::KannWarten(const SPosten & posten) {
    if (m_bSofort) return false;
    if (!posten.bGemischt && posten.betrag.IsEmpty()) return true;
    const CDBetrag & gesamt = m_sum.m_Praxis.m_Gesamt.BETRAG; // empty, or what a former run has left
    if (m_cWaehrung == 0) m_cWaehrung = posten.betrag.GetWaehrung();
    if (!posten.bGemischt && posten.betrag.GetWaehrung() == m_cWaehrung &&
        (gesamt.IsEmpty() || gesamt.GetWaehrung() == m_cWaehrung))
        return true;
    Verteile();
    m_bSofort = true;
    return false;
}

void CSummenlauf::NimmSumme(std::size_t iBeh, const SSummenplatz & platz, const SPosten & posten) {
    if (KannWarten(posten)) {
        m_vVorrat[iBeh][platz.Nummer()] += posten;
        return;
    }
    orvostat::Verteile(m_sum.m_vBeh[iBeh], platz, posten);
    orvostat::Verteile(m_sum.m_Praxis, platz, posten);
}

void CSummenlauf::NimmTag(const CBehHitLine & hit, std::size_t iBeh) {
    if (m_vBehTage[iBeh] == nullptr) m_vBehTage[iBeh] = m_behTage.Fach(hit.BEHANDLERNR);
    if (m_pPraxisTage == nullptr || m_sPraxisTage != hit.PRAXISNR) {
        m_sPraxisTage = hit.PRAXISNR;
        m_pPraxisTage = m_praxisTage.Fach(hit.PRAXISNR);
    }
    m_behTage.Nimm(m_vBehTage[iBeh], m_faelle.Tag());
    m_praxisTage.Nimm(m_pPraxisTage, m_faelle.Tag());
}

// In a large practice the lines are far away in memory: they are sent for while there is other work to do.
void CSummenlauf::Nimm(const CBehHitLine & hit) {
    const SHit h(hit, m_arten);
    const std::size_t iBeh = Behandler(hit);
    auto & vBehGruppen = m_sum.m_vBeh[iBeh].m_vLstGrp;
    const CWegweiser beh(m_vBehZeilen[iBeh], vBehGruppen, h);
    const CWegweiser praxis(m_praxiszeilen, m_sum.m_Praxis.m_vLstGrp, h);
    const bool bNeuerFall = m_faelle.IstNeu(m_sum.m_vFaelle, hit);
    NimmTag(hit, iBeh);
    beh.HoleZeile();
    praxis.HoleZeile();
    NimmInPraxisgruppe(m_sum.m_Praxis, praxis.Gruppe(), h, m_sPraxis, bNeuerFall, &m_praxiszeilen);
    NimmInGruppe(vBehGruppen, beh.Gruppe(), h, &m_vBehZeilen[iBeh]);
    NimmSumme(iBeh, PlatzVon(hit), h.posten);
}

void CSummenlauf::Verteile() {
    CVorrat praxis;
    for (std::size_t iBeh = 0; iBeh < m_vVorrat.size(); ++iBeh) {
        VerteileVorrat(m_sum.m_vBeh[iBeh], m_vVorrat[iBeh]);
        for (std::size_t i = 0; i < praxis.size(); ++i)
            if (m_vVorrat[iBeh][i].pHit) praxis[i] += m_vVorrat[iBeh][i];
    }
    VerteileVorrat(m_sum.m_Praxis, praxis);
    m_vVorrat.assign(m_vVorrat.size(), CVorrat());
}

void CSummenlauf::HaengeTageAn() {
    m_behTage.HaengeAn(m_sum.m_vBehTage);
    m_praxisTage.HaengeAn(m_sum.m_vPraxisTage);
}

} // namespace orvostat
