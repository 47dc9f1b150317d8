// Records of the service statistic as texts, so that a test can state all of their fields: what is not
// printed is as in a fresh record.
#pragma once

#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/service/LSSum.h"
#include "support/Hitfelder.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace orvostat {

// "01 U 200 125,00 3600": number, short code, unit, count, amount, points.
inline std::string Zahlen(const CLSLst & lst) {
    return (lst.LSTNR + ' ' + lst.LSTKUERZEL + lst.EINHEIT + ' ').Utf8() + std::to_string(lst.ANZAHL) + ' ' +
           lst.BETRAG.ToExt(0, false).Utf8() + ' ' + std::to_string(lst.PUNKTE);
}
// " b5952 p4762", the shares; of the other fields those that are not 0.
inline std::string Anteile(const CLSLst & lst) {
    std::string s;
    for (const auto & [pName, iWert] : {std::pair{" b", lst.ANTEILBEH},
                                        {" k", lst.ANTEILKAS == lst.ANTEILBEH ? 0 : lst.ANTEILKAS},
                                        {" p", lst.ANTEILPRAXIS},
                                        {" soll", lst.m_iF100Soll},
                                        {" abw", lst.m_iF100Abweichung},
                                        {" anz", lst.m_iAnteilAnz},
                                        {" je100:", lst.m_iAnzJe100Fall},
                                        {" diff", lst.m_iAnzDiff},
                                        {" g4:", lst.m_iAnzGrund4},
                                        {" g5:", lst.m_iAnzGrund5}})
        if (iWert != 0) s += pName + std::to_string(iWert);
    return s;
}
inline std::string Text(const CLSLst & lst) { return Zahlen(lst) + Anteile(lst); }

// A line of its own for each; only " |" and the shares, where it has the figures of its group.
inline std::string Text(const std::vector<CLSLstGrp> & vGrp) {
    std::string s;
    for (const CLSLstGrp & grp : vGrp) {
        s += std::string("  [") + grp.m_cZahler + grp.m_cGoTyp + grp.m_cStatArt + "] " + Text(grp.m_Sum);
        for (const CLSLst & lst : grp.m_vLst)
            s += Zahlen(lst) == Zahlen(grp.m_Sum) ? " |" + Anteile(lst) : "\n    " + Text(lst);
        s += '\n';
    }
    return s;
}

inline void Summe(std::string & s, const char * pName, const CLSLst & lst) {
    if (Text(lst) != Text(CLSLst())) s += std::string("  ") + pName + " " + Text(lst) + '\n';
}

template <class T> std::string Zahlersummen(const T & t) {
    std::string s;
#define SUMME(NAME) Summe(s, #NAME, t.m_##NAME);
    // clang-format off
    SUMME(Gesamt) SUMME(PrivatStd) SUMME(PrivatK) SUMME(PrivatLM) SUMME(KasseStd) SUMME(KasseK) SUMME(KasseLM)
    SUMME(SonstStd) SUMME(SonstK) SUMME(SonstLM) SUMME(SumStd) SUMME(SumK) SUMME(SumLM) SUMME(PrivatGes)
    SUMME(KasseGes) SUMME(SonstGes) SUMME(PrivatAbz) SUMME(KasseAbz) SUMME(SonstAbz) SUMME(PrivatNetto)
    SUMME(KasseNetto) SUMME(SonstNetto) SUMME(SumNetto)
    // clang-format on
#undef SUMME
                    return s;
}

inline std::string Text(const CLSPxLstGrp & px) {
    std::string s =
        "Praxis " + px.m_sPraxis.Utf8() + ", " + std::to_string(px.m_iAnzFaelle) + " Fälle, Arten";
    for (const CPxLstGrp & art : px.m_vPxLstGrp)
        s += std::string(" ") + art.m_cZahler + art.m_cStatArt;
    return s + '\n' + Zahlersummen(px) + Text(px.m_vLstGrp);
}

inline std::string Text(const CLSBehLstGrp & beh) {
    return "Behandler " + beh.BEHANDLERNR.Utf8() + ", " + std::to_string(beh.m_iAnzFaelle) + " Fälle\n" +
           Zahlersummen(beh) + Text(beh.m_vLstGrp);
}

inline std::string Text(const CLSKasLstGrp & kas) {
    std::string s = "Kasse " + (kas.PRAXISNR + ' ' + kas.KASKUERZEL + ' ' + kas.KASSTATISTIKART + ' ' +
                                kas.KASMEDSTATISTIKART + ' ' + kas.KASSENART + ' ')
                                   .Utf8();
    s += std::string(1, static_cast<char>(kas.KASSENGRP)) + (kas.FREMDKASSE ? " fremd, " : ", ") +
         std::to_string(kas.m_iAnzFaelle) + " Fälle\n";
    Summe(s, "Gesamt", kas.m_Gesamt);
    Summe(s, "Leer", kas.m_Leer);
    Summe(s, "Sum", kas.m_Sum);
    Summe(s, "KasseGes", kas.m_KasseGes);
    return s + Text(kas.m_vLstGrp);
}

template <class T> std::string Alle(const std::vector<T> & v) {
    std::string s;
    for (const T & t : v)
        s += Text(t);
    return s;
}

inline std::string Text(const std::vector<std::pair<std::int32_t, std::int32_t>> & v) {
    std::string s;
    for (const auto & [iNr, iAnzahl] : v)
        s += std::to_string(iNr) + ":" + std::to_string(iAnzahl) + " ";
    return s;
}

inline std::string Text(const std::vector<CFallJeQuartal> & vFaelle) {
    std::string s;
    for (const CFallJeQuartal & fall : vFaelle) {
        const CLastFall & f = fall.m_Fall;
        CString sFall = fall.m_sQuartal + '/' + itoc(f.PRAXISNR) + '/' + itoc(f.PATNR) + '/' + f.KASKUERZEL;
        sFall += '/' + f.MFRDIG + '/' + f.WSO;
        if (f.ABRART != 0) sFall += f.ABRART;
        s += sFall.Utf8() + ' ';
    }
    return s;
}

// A hit by its fields, "_" for a blank: "GOART=p LSTNR=2060 PRAXISNR=_2". What is not named is as it stands here.
inline CBehHitLine Hit(const std::string & sFelder) {
    CBehHitLine hit;
    std::istringstream ein(
        "PRAXISNR=_1 PATNR=1 BEHANDLERNR=1 DATUM=20240101 GOART=k GOSTATISTIKART=a ANZAHL=100 "
        "LSTNR=1 BETRAG=e100 " +
        sFelder);
    for (std::string sFeld; ein >> sFeld;) {
        std::replace(sFeld.begin(), sFeld.end(), '_', ' ');
        const auto iGleich = sFeld.find('=');
        bool bOk = false;
        JedesFeld(hit, [&](const std::string & sName, auto & wert) {
            if (sName == sFeld.substr(0, iGleich)) bOk = Lies(sFeld.substr(iGleich + 1), wert);
        });
        EXPECT_TRUE(bOk) << sFeld;
    }
    if (sFelder.find("LSTIN=") == std::string::npos) hit.LSTIN = hit.LSTNR;
    hit.LSTKUERZEL = "K" + hit.LSTNR;
    return hit;
}

} // namespace orvostat
