#include "Gruppen.h"

#include "orvostatbs/host/CString.h"

#include <algorithm>
#include <tuple>

namespace orvostat {

namespace {

// A fresh group takes the characters of its first hit and keeps them: a group opened by a private service
// stays "P" when insurers' services join it.
void SetzeSchluessel(CLSLstGrp & grp, const CBehHitLine & hit) {
    if (grp.m_cZahler != 0) return;
    const bool bLabor = IstLaborArt(hit.GOART);
    grp.m_cZahler = Zahler(hit);
    grp.m_cGoTyp = bLabor ? 'T' : GoTyp(hit.GOART);
    grp.m_cStatArt = bLabor ? hit.GOART : hit.GOSTATISTIKART;
}

int FindeLinear(const std::vector<CLSLst> & vLst, const CBehHitLine & hit) {
    const auto it = std::find(vLst.begin(), vLst.end(), hit);
    return it == vLst.end() ? -1 : static_cast<int>(it - vLst.begin());
}

void MischeZeile(CLSLstGrp & grp, const CLSLst & lst, CNebenindex<CLSLst> & index) {
    const std::uint32_t iHash = HashVon(lst);
    grp.m_Sum.MoveLst(lst);
    const int i = index.Finde(grp.m_vLst, iHash, [&](const CLSLst & l) { return l == lst; });
    if (i >= 0) return grp.m_vLst[static_cast<std::size_t>(i)].MoveLst(lst);
    grp.m_vLst.push_back(lst);
    index.Angehaengt(grp.m_vLst, iHash);
}

// The other group's sum is not read: what its lines say counts.
void MischeGruppe(CLSLstGrp & grp, const CLSLstGrp & andere, CNebenindex<CLSLst> & index) {
    grp.m_cZahler = andere.m_cZahler;
    grp.m_cGoTyp = andere.m_cGoTyp;
    grp.m_cStatArt = andere.m_cStatArt;
    for (const CLSLst & lst : andere.m_vLst)
        MischeZeile(grp, lst, index);
}

// Merges into the group that is the same, or appends a copy: true.
bool MischeGruppe(std::vector<CLSLstGrp> & vGrp, const CLSLstGrp & andere, CZeilenregister & reg) {
    const auto it = std::find(vGrp.begin(), vGrp.end(), andere);
    if (it == vGrp.end()) {
        vGrp.push_back(andere);
        return true;
    }
    MischeGruppe(*it, andere, reg.Zeilen(static_cast<std::size_t>(it - vGrp.begin())));
    return false;
}

signed char Vorzeichen(char c) { return static_cast<signed char>(c); }

// The letter order: folded first, then as they stand, so that "A" comes before "a".
auto Buchstabenfolge(char c) { return std::make_tuple(Vorzeichen(Klein(c)), Vorzeichen(c)); }

} // namespace

CLSLst & Zeile(std::vector<CLSLst> & vLst, const SHit & h, CNebenindex<CLSLst> * pIndex) {
    const int i = pIndex == nullptr
                      ? FindeLinear(vLst, h.hit)
                      : pIndex->Finde(vLst, h.iLstHash, [&](const CLSLst & lst) { return lst == h.hit; });
    if (i >= 0) return vLst[static_cast<std::size_t>(i)];
    CLSLst & neu = NeueZeile(vLst, h.hit.LSTNR);
    if (pIndex) pIndex->Angehaengt(vLst, h.iLstHash);
    return neu;
}

CLSLst & NeueZeile(std::vector<CLSLst> & vLst, const CString & sLst) {
    constexpr std::size_t ZEILEN_MIN = 8; // a group with one service mostly has more
    if (vLst.capacity() == 0) vLst.reserve(ZEILEN_MIN);
    CLSLst & neu = vLst.emplace_back();
    neu.LSTNR = sLst;
    return neu;
}

int FindeGruppe(const std::vector<CLSLstGrp> & vGrp, const CBehHitLine & hit) {
    const auto it = std::find(vGrp.begin(), vGrp.end(), hit);
    return it == vGrp.end() ? -1 : static_cast<int>(it - vGrp.begin());
}

void NimmInGruppe(std::vector<CLSLstGrp> & vGrp, int iGrp, const SHit & h, CZeilenregister * pRegister) {
    const std::size_t i = iGrp < 0 ? vGrp.size() : static_cast<std::size_t>(iGrp);
    if (iGrp < 0) vGrp.emplace_back();
    CLSLstGrp & grp = vGrp[i];
    SetzeSchluessel(grp, h.hit);
    Addiere(Zeile(grp.m_vLst, h, pRegister ? &pRegister->Zeilen(i) : nullptr), h.posten);
    Addiere(grp.m_Sum, h.posten);
}

void NimmInKasse(CLSKasLstGrp & kas, int iGrp, const SHit & h, bool bNeuerFall, CZeilenregister * pRegister) {
    kas.PRAXISNR = h.hit.PRAXISNR;
    kas.KASKUERZEL = h.hit.KASKUERZEL;
    kas.KASSTATISTIKART = h.hit.KASSTATISTIKART;
    kas.KASMEDSTATISTIKART = h.hit.KASMEDSTATISTIKART;
    kas.KASSENART = h.hit.KASSENART;
    kas.FREMDKASSE = h.hit.FREMDKASSE;
    kas.KASSENGRP = static_cast<STATKASGRP>(h.hit.KASSENGRP);
    NimmInGruppe(kas.m_vLstGrp, iGrp, h, pRegister);
    Addiere(kas.m_Gesamt, h.posten);
    if (h.hit.KASSENABR) Addiere(kas.m_KasseGes, h.posten);
    Addiere(kas.m_Sum, h.posten);
    if (bNeuerFall) Plus(kas.m_iAnzFaelle, 1);
}

void NimmInPraxisgruppe(CLSPxLstGrp & praxis, int iGrp, const SHit & h, const CString & sPraxis,
                        bool bNeuerFall, CZeilenregister * pRegister) {
    praxis.m_sPraxis = sPraxis;
    NimmInGruppe(praxis.m_vLstGrp, iGrp, h, pRegister);
    auto & vArten = praxis.m_vPxLstGrp;
    if (iGrp < 0 && std::find(vArten.begin(), vArten.end(), h.hit) == vArten.end())
        vArten.emplace_back().MoveLstGrp(h.hit);
    if (bNeuerFall) Plus(praxis.m_iAnzFaelle, 1);
}

void MischeKasse(CLSKasLstGrp & summe, const CLSKasLstGrp & kas, CZeilenregister & reg) {
    summe.PRAXISNR = kas.PRAXISNR;
    summe.KASKUERZEL = kas.KASKUERZEL;
    summe.KASSTATISTIKART = kas.KASSTATISTIKART;
    summe.KASMEDSTATISTIKART = kas.KASMEDSTATISTIKART;
    summe.KASSENART = kas.KASSENART;
    summe.FREMDKASSE = kas.FREMDKASSE;
    summe.KASSENGRP = kas.KASSENGRP;
    Plus(summe.m_iAnzFaelle, kas.m_iAnzFaelle);
    summe.m_Gesamt.MoveLst(kas.m_Gesamt);
    summe.m_Leer.MoveLst(kas.m_Leer);
    summe.m_Sum.MoveLst(kas.m_Sum);
    summe.m_KasseGes.MoveLst(kas.m_KasseGes);
    for (const CLSLstGrp & grp : kas.m_vLstGrp)
        MischeGruppe(summe.m_vLstGrp, grp, reg);
}

void MischeInPraxis(CLSPxLstGrp & praxis, const CLSKasLstGrp & kas, CZeilenregister & reg) {
    praxis.m_sPraxis = kas.PRAXISNR;
    Plus(praxis.m_iAnzFaelle, kas.m_iAnzFaelle);
    auto & vArten = praxis.m_vPxLstGrp;
    for (const CLSLstGrp & grp : kas.m_vLstGrp) {
        if (!MischeGruppe(praxis.m_vLstGrp, grp, reg)) continue;
        // A kind equals a group only where class and statistic kind are the same letter, so nearly every new
        // group adds its kind again. Screens reckon with it.
        if (std::find(vArten.begin(), vArten.end(), grp) == vArten.end())
            vArten.emplace_back().MoveLstGrp(grp);
    }
}

void SortiereZeilen(std::vector<CLSLst> & vLst) {
    std::sort(vLst.begin(), vLst.end(),
              [](const CLSLst & a, const CLSLst & b) { return a.LSTKUERZEL < b.LSTKUERZEL; });
}

void SortiereGruppen(std::vector<CLSLstGrp> & vGrp) {
    const auto Schluessel = [](const CLSLstGrp & g) {
        return std::make_tuple(Vorzeichen(g.m_cZahler), Vorzeichen(g.m_cGoTyp),
                               Buchstabenfolge(g.m_cStatArt));
    };
    std::sort(vGrp.begin(), vGrp.end(),
              [&](const CLSLstGrp & a, const CLSLstGrp & b) { return Schluessel(a) < Schluessel(b); });
    for (CLSLstGrp & grp : vGrp)
        SortiereZeilen(grp.m_vLst);
}

void SortiereArten(std::vector<CPxLstGrp> & vArten) {
    const auto Schluessel = [](const CPxLstGrp & a) {
        return std::make_tuple(Vorzeichen(a.m_cZahler), Buchstabenfolge(a.m_cStatArt));
    };
    std::sort(vArten.begin(), vArten.end(),
              [&](const CPxLstGrp & a, const CPxLstGrp & b) { return Schluessel(a) < Schluessel(b); });
}

// ---- The public records ----------------------------------------------------------------------------

void CLSLstGrp::MoveLstGrp(const CBehHitLine & hit) {
    const SHit h(hit);
    SetzeSchluessel(*this, hit);
    Addiere(Zeile(m_vLst, h, nullptr), h.posten);
    Addiere(m_Sum, h.posten);
}

void CLSLstGrp::MoveLstGrp(const CLSLstGrp & grp) {
    CNebenindex<CLSLst> index;
    MischeGruppe(*this, grp, index);
}

bool CLSLstGrp::IstGleicheLstGrp(const CLSLstGrp & grp) const {
    return m_cZahler == grp.m_cZahler && IstGleicherGoTyp(m_cGoTyp, grp.m_cGoTyp) &&
           m_cStatArt == grp.m_cStatArt;
}

bool CLSLstGrp::operator==(const CBehHitLine & hit) const { return IstGruppeVon(*this, hit); }

void CPxLstGrp::MoveLstGrp(const CBehHitLine & hit) {
    const bool bLabor = IstLaborArt(hit.GOART);
    m_cZahler = bLabor ? 'T' : '0';
    m_cStatArt = bLabor ? hit.GOART : hit.GOSTATISTIKART;
}

void CPxLstGrp::MoveLstGrp(const CLSLstGrp & grp) {
    m_cZahler = grp.m_cZahler;
    m_cStatArt = grp.m_cStatArt;
}

bool CPxLstGrp::operator==(const CBehHitLine & hit) const {
    return m_cStatArt == (IstLaborArt(hit.GOART) ? hit.GOART : hit.GOSTATISTIKART);
}

bool CPxLstGrp::operator==(const CLSLstGrp & grp) const {
    return m_cStatArt == grp.m_cGoTyp && m_cStatArt == grp.m_cStatArt;
}

void CLSBehLstGrp::MoveBehLstGrp(const CBehHitLine & hit) {
    const SHit h(hit);
    BEHANDLERNR = hit.BEHANDLERNR;
    NimmInGruppe(m_vLstGrp, FindeGruppe(m_vLstGrp, hit), h, nullptr);
    Verteile(*this, PlatzVon(hit), h.posten);
}

void CLSKasLstGrp::MoveKasLstGrp(const CBehHitLine & hit, bool bNeuerFall) {
    NimmInKasse(*this, FindeGruppe(m_vLstGrp, hit), SHit(hit), bNeuerFall, nullptr);
}

void CLSKasLstGrp::MoveKasSel(const CLSKasLstGrp & kas) {
    CZeilenregister reg;
    MischeKasse(*this, kas, reg);
}

void CLSPxLstGrp::MovePxLstGrp(const CBehHitLine & hit, const CString & sPraxis, bool bNeuerFall) {
    const SHit h(hit);
    NimmInPraxisgruppe(*this, FindeGruppe(m_vLstGrp, hit), h, sPraxis, bNeuerFall, nullptr);
    Verteile(*this, PlatzVon(hit), h.posten);
}

void CLSPxLstGrp::MovePxLstSel(const CLSKasLstGrp & kas) {
    CZeilenregister reg;
    MischeInPraxis(*this, kas, reg);
}

} // namespace orvostat
