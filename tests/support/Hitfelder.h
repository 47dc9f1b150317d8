// Records as text: which fields of a hit an operation changed, and that it changed no other.
#pragma once

#include "orvostatbs/host/Tabelle.h"
#include "orvostatbs/records/BehHitLine.h"
#include "support/Wert.h"

#include <string>
#include <type_traits>
#include <vector>

namespace orvostat {

// All fields of a hit in their order.
template <class THit, class F>
requires std::same_as<std::remove_const_t<THit>, CBehHitLine>
void JedesFeld(THit & hit, F f) {
    // clang-format off
#define FELD(NAME) f(#NAME, hit.NAME);
    FELD(PRAXISNR) FELD(BEHANDLERNR) FELD(PATNR) FELD(PATNAME) FELD(DATUM) FELD(LSTNR) FELD(LSTKUERZEL)
    FELD(TEETH) FELD(EINHEIT) FELD(ANZAHL) FELD(LSTIN) FELD(TEXT) FELD(FAKTOR) FELD(BETRAG) FELD(PATBILL)
    FELD(ABRART) FELD(KASSENABR) FELD(m_bAbrArtE) FELD(GOART) FELD(GOSUBART) FELD(m_cBehKz) FELD(DRUCKBILD)
    FELD(LAGE) FELD(UHRZEIT) FELD(DTAGRUND) FELD(TEXTART) FELD(ICDCODE) FELD(ICDNOTATIONSKZ) FELD(ERFASSER)
    FELD(SITZUNG) FELD(PLANNR) FELD(EINFACHSATZ) FELD(m_EinfachsatzV) FELD(FAKT1) FELD(FAKT2) FELD(m_sBehInfo)
    FELD(LFDBEFENTRY) FELD(LFDLBLOCK) FELD(BEFUND) FELD(ZAHNSTEIN) FELD(MUNDKRANKHEIT) FELD(LFDBEHEINTRAG)
    FELD(ABRMERKMAL) FELD(ENTFERNUNG) FELD(m_sBillInfo1) FELD(m_sBillInfo2) FELD(KASKUERZEL) FELD(m_sAbrKennung)
    FELD(VDABDATUM) FELD(VDBISDATUM) FELD(MFRDIG) FELD(WSO) FELD(WSO_ERG) FELD(RSA) FELD(VNACHWEIS)
    FELD(EINLESEDATUM) FELD(ISPRIVATPATIENT) FELD(m_cSonderKsArt) FELD(BPG) FELD(PUNKTE) FELD(m_iPunkte2)
    FELD(m_iPunkte3) FELD(m_iPunkte4) FELD(PUNKTWERT) FELD(PWLART) FELD(KASSENPWGRP) FELD(GOSTATISTIKART)
    FELD(KASSTATISTIKART) FELD(KASMEDSTATISTIKART) FELD(KASSENART) FELD(FREMDKASSE) FELD(KASSENGRP)
    FELD(m_cKasKz) FELD(m_iLebAbschlag) FELD(m_iHitFrei1) FELD(m_sHitFrei1) FELD(m_sHitFrei2) FELD(ZUSCHLAG)
    FELD(MWSTSATZ) FELD(F100AEV) FELD(PRUEFZEITT) FELD(PRUEFZEITQ) FELD(m_cGoKz) FELD(m_sGoText)
    FELD(PROVISONSGRP) FELD(PROVISONSWERT) FELD(m_iHitFrei2) FELD(MATBUCHUNG) FELD(m_sGbAnzahl) FELD(DMBETRAG)
    FELD(GESBETRAG) FELD(ENDGEWICHT) FELD(SCHLEIFRESTE) FELD(PREISOMWST) FELD(SCHLEIFRESTEGES) FELD(BESTANDOSR)
    FELD(RECART) FELD(LABORKUNDE) FELD(LFDGLBLOC) FELD(m_sLblNr) FELD(ROEGRAV) FELD(ROEANZAHL) FELD(ROEGERAET)
    FELD(ROEXRAYMS) FELD(ROEXRAYCURRENT) FELD(ROEXRAYVOLTAGE) FELD(ROEBELICHTUNG) FELD(ROEINDIKATION)
    FELD(ROEBEMERKUNG) FELD(ROELFDNR) FELD(ROELASTDATUM) FELD(ROELASTREGIO) FELD(ROELASTPASSDRUCK)
    FELD(m_sBefundKuerzel) FELD(PRAXISID) FELD(ISELAB) FELD(ISORVOPAT) FELD(CHARGENNUMMER) FELD(SUCHKRITERIEN)
    FELD(m_vHitFrei1) FELD(m_vHitFrei2) FELD(m_iHitFrei3) FELD(m_iHitFrei4) FELD(TASCHENTIEFED)
    FELD(TASCHENTIEFEM) FELD(TASCHENTIEFEF) FELD(TASCHENTIEFEO) FELD(TASCHENTIEFED2) FELD(TASCHENTIEFEM2)
    FELD(GEBUEHRENBEFREITBIS) FELD(m_sAbrJJME)
#undef FELD
    // clang-format on
}

inline void Markiere(CString & s, const char * pName) { s = AusUtf8("<" + std::string(pName) + ">"); }
inline void Markiere(char & c, const char *) { c = '~'; }
inline void Markiere(bool & b, const char *) { b = !b; }
inline void Markiere(std::int32_t & i, const char *) { i = -77; }
inline void Markiere(CDBetrag & betrag, const char *) { betrag = CDBetrag(-7.77, 'e'); }
inline void Markiere(CDPw & pw, const char *) { pw = CDPw(CString("e-77777")); }
template <class T> void Markiere(std::vector<T> & v, const char *) { v.resize(7); }

// A hit with a mark in each field; all flags as given.
inline CBehHitLine MarkierterHit(bool bFlags) {
    CBehHitLine hit;
    JedesFeld(hit, [&](const char * pName, auto & wert) {
        Markiere(wert, pName);
        if constexpr (std::is_same_v<decltype(wert), bool &>) wert = bFlags;
    });
    return hit;
}

// The fields that differ from an earlier state, with their new values and ", " between them.
inline std::string Aenderungen(const CBehHitLine & vorher, const CBehHitLine & hit) {
    std::vector<std::string> vAlt;
    JedesFeld(vorher, [&](const char *, const auto & wert) { vAlt.push_back(Wert(wert)); });
    std::string s;
    auto it = vAlt.begin();
    JedesFeld(hit, [&](const char * pName, const auto & wert) {
        if (Wert(wert) != *it++) s += (s.empty() ? "" : ", ") + std::string(pName) + "=" + Wert(wert);
    });
    return s;
}

} // namespace orvostat
