#include "orvostatbs/service/Fall.h"

#include "Register.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

// The list holds one quarter; a hit of another one wipes it.
void BeginneQuartal(std::vector<CFallJeQuartal> & vFaelle, const CString & sQuartal) {
    if (!vFaelle.empty() && vFaelle.front().m_sQuartal != sQuartal) vFaelle.clear();
}

} // namespace

void CLastFall::MoveNewFall(const CBehHitLine & hit) {
    PRAXISNR = static_cast<std::int16_t>(Zahl(hit.PRAXISNR));
    PATNR = Zahl64(hit.PATNR);
    KASKUERZEL = hit.KASKUERZEL;
    MFRDIG = hit.MFRDIG;
    WSO = hit.WSO;
    ABRART = hit.ABRART;
}

bool CLastFall::operator==(const CLastFall & fall) const {
    return PRAXISNR == fall.PRAXISNR && PATNR == fall.PATNR && KASKUERZEL == fall.KASKUERZEL &&
           MFRDIG == fall.MFRDIG && WSO == fall.WSO;
}

bool CLastFall::operator==(const CBehHitLine & hit) const {
    CLastFall fall;
    fall.MoveNewFall(hit);
    return *this == fall;
}

void CFallJeQuartal::MoveNewFall(const CBehHitLine & hit) {
    m_sQuartal = DbDate2Quartal(hit.DATUM);
    m_Fall.MoveNewFall(hit);
}

int FindFallImQuartal(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit) {
    CFallJeQuartal neu;
    neu.MoveNewFall(hit);
    BeginneQuartal(vFaelle, neu.m_sQuartal);
    for (std::size_t i = vFaelle.size(); i > 0; --i)
        if (vFaelle[i - 1].m_Fall == neu.m_Fall) return static_cast<int>(i - 1);
    vFaelle.push_back(std::move(neu));
    return -1;
}

int FindFallImQuartalMitAbrArt(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit) {
    CFallJeQuartal neu;
    neu.MoveNewFall(hit);
    BeginneQuartal(vFaelle, neu.m_sQuartal);
    int iErgebnis = -2;
    for (std::size_t i = vFaelle.size(); i > 0; --i) {
        if (!(vFaelle[i - 1].m_Fall == neu.m_Fall)) continue;
        if (vFaelle[i - 1].GleicheAbrArt(hit)) return static_cast<int>(i - 1);
        iErgebnis = -1;
    }
    vFaelle.push_back(std::move(neu));
    return iErgebnis;
}

// Fills m_fall, converting only the texts that differ from the last hit's.
void CFallregister::Merke(const CBehHitLine & hit) {
    CLastFall & fall = m_fall.m_Fall;
    m_iTag = static_cast<std::size_t>(m_daten.Nummer(hit.DATUM));
    if (m_iTag == m_vQuartale.size()) m_vQuartale.push_back(DbDate2Quartal(hit.DATUM));
    m_fall.m_sQuartal = m_vQuartale[m_iTag];
    if (m_sPraxis != hit.PRAXISNR) {
        m_sPraxis = hit.PRAXISNR;
        fall.PRAXISNR = static_cast<std::int16_t>(Zahl(hit.PRAXISNR));
    }
    if (m_sPat != hit.PATNR) {
        m_sPat = hit.PATNR;
        fall.PATNR = Zahl64(hit.PATNR);
    }
    fall.KASKUERZEL = hit.KASKUERZEL;
    fall.MFRDIG = hit.MFRDIG;
    fall.WSO = hit.WSO;
    fall.ABRART = hit.ABRART;
}

bool CFallregister::IstNeu(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit) {
    Merke(hit);
    BeginneQuartal(vFaelle, m_fall.m_sQuartal);
    if (!vFaelle.empty() && vFaelle.back().m_Fall == m_fall.m_Fall) return false;
    const std::uint32_t iHash = HashVon(m_fall);
    const auto IstDieser = [&](const CFallJeQuartal & fall) { return fall.m_Fall == m_fall.m_Fall; };
    if (m_index.Finde(vFaelle, iHash, IstDieser) >= 0) return false;
    vFaelle.push_back(m_fall);
    m_index.Angehaengt(vFaelle, iHash);
    return true;
}

} // namespace orvostat
