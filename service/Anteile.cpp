// The shares of a service statistic.
#include "Gruppen.h"
#include "Posten.h"
#include "Register.h"

#include "orvostatbs/service/LSSum.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvostat {

namespace {

// Gives each line the share in the practice's line of its service: of the first practice group of the same
// kind that has one. A line that the practice lacks keeps its share.
void Praxisanteile(CLSLstGrp & grp, const CLSPxLstGrp & praxis, CZeilenregister & reg) {
    std::vector<std::size_t> vGleiche;
    for (std::size_t i = 0; i < praxis.m_vLstGrp.size(); ++i)
        if (praxis.m_vLstGrp[i].IstGleicheLstGrp(grp)) vGleiche.push_back(i);
    for (CLSLst & lst : grp.m_vLst) {
        const std::uint32_t iHash = HashVon(lst);
        for (const std::size_t iGrp : vGleiche) {
            const CLSLstGrp & pxGrp = praxis.m_vLstGrp[iGrp];
            const int iZeile = reg.FindeZeile(pxGrp, iGrp, lst.LSTNR, iHash);
            if (iZeile < 0) continue;
            lst.SumAnteilPxBetrag(pxGrp.m_vLst[static_cast<std::size_t>(iZeile)]);
            break;
        }
    }
}

template <class T> const CLSLst & Topfsumme(const T & rec, const CLSLstGrp & grp) {
    return rec.*BASEN<T>[TopfVon(grp)];
}

} // namespace

void CLSSum::DoPraxisAnteile() {
    JedeZahlersumme(m_Praxis, [&](CLSLst & summe, int iBasis) {
        summe.SumAnteilPxBetrag(m_Praxis.*BASEN<CLSPxLstGrp>[iBasis]);
    });
    for (CLSLstGrp & grp : m_Praxis.m_vLstGrp) {
        const CLSLst & basis = Topfsumme(m_Praxis, grp);
        grp.m_Sum.SumAnteilPxBetrag(basis);
        for (CLSLst & lst : grp.m_vLst)
            lst.SumAnteilPxBetrag(basis);
    }
    SortiereArten(m_Praxis.m_vPxLstGrp);
    SortiereGruppen(m_Praxis.m_vLstGrp);
}

void CLSSum::LstGrpAnteil(CLSLstGrp & grp, const CLSLst & behBasis, const CLSLst & pxBasis,
                          CZeilenregister & praxis) {
    grp.m_Sum.SumAnteilGesamtBetrag(behBasis);
    grp.m_Sum.SumAnteilPxBetrag(pxBasis);
    for (CLSLst & lst : grp.m_vLst)
        lst.SumAnteilGesamtBetrag(behBasis);
    Praxisanteile(grp, m_Praxis, praxis);
}

void CLSSum::DoLstGrpAnteil(CLSLstGrp & grp, const CLSLst & behBasis, const CLSLst & pxBasis) {
    CZeilenregister praxis;
    LstGrpAnteil(grp, behBasis, pxBasis, praxis);
}

void CLSSum::DoBehandlerAnteile() {
    CZeilenregister praxis;
    for (CLSBehLstGrp & beh : m_vBeh) {
        JedeZahlersumme(beh, [&](CLSLst & summe, int iBasis) {
            summe.SumAnteilGesamtBetrag(beh.*BASEN<CLSBehLstGrp>[iBasis]);
            summe.SumAnteilPxBetrag(m_Praxis.*BASEN<CLSPxLstGrp>[iBasis]);
        });
        for (CLSLstGrp & grp : beh.m_vLstGrp)
            LstGrpAnteil(grp, Topfsumme(beh, grp), Topfsumme(m_Praxis, grp), praxis);
    }
    std::sort(m_vBeh.begin(), m_vBeh.end(),
              [](const CLSBehLstGrp & a, const CLSBehLstGrp & b) { return a.BEHANDLERNR < b.BEHANDLERNR; });
    for (CLSBehLstGrp & beh : m_vBeh)
        SortiereGruppen(beh.m_vLstGrp);
}

void CLSSum::KasAnteile(CLSKasLstGrp & kas, CZeilenregister & praxis) {
    kas.m_KasseGes.SumAnteilGesamtBetrag(kas.m_Gesamt);
    kas.m_KasseGes.SumAnteilPxBetrag(m_Praxis.m_Gesamt);
    kas.m_Leer.SumAnteilGesamtBetrag(kas.m_Sum);
    kas.m_Leer.SumAnteilPxBetrag(m_Praxis.m_SumStd);
    for (CLSLstGrp & grp : kas.m_vLstGrp)
        LstGrpAnteil(grp, kas.m_Sum, m_Praxis.m_SumStd, praxis);
}

void CLSSum::SumKassenAnteile(CLSKasLstGrp & kas) {
    CZeilenregister praxis;
    KasAnteile(kas, praxis);
}

void CLSSum::DoKassenAnteile() {
    CZeilenregister praxis;
    KasAnteile(m_KasSum, praxis);
    SortiereGruppen(m_KasSum.m_vLstGrp);
    for (CLSKasLstGrp & kas : m_vKas)
        KasAnteile(kas, praxis);
    std::sort(m_vKas.begin(), m_vKas.end(),
              [](const CLSKasLstGrp & a, const CLSKasLstGrp & b) { return a.KASKUERZEL < b.KASKUERZEL; });
    for (CLSKasLstGrp & kas : m_vKas)
        SortiereGruppen(kas.m_vLstGrp);
}

} // namespace orvostat
