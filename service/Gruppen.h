// Taking hits and groups into a record's groups. The register finds groups and lines; without one a search
// does.
#pragma once

#include "Posten.h"
#include "Register.h"

#include <cstdint>
#include <vector>

namespace orvostat {

// A hit with what its record's sums need of it, and the number and hash that the register finds its place
// with.
struct SHit {
    const CBehHitLine & hit;
    SPosten posten;
    int iArt = 0;
    std::uint32_t iLstHash = 0;

    explicit SHit(const CBehHitLine & h) : hit(h), posten(PostenVon(h)) {}
    SHit(const CBehHitLine & h, CNummern<std::uint32_t> & arten)
        : hit(h), posten(PostenVon(h)), iArt(arten.Nummer(Gruppenart(h))), iLstHash(HashVon(h.LSTNR)) {}
};

// Sends for the line that a hit will be taken into: where it stands at once, itself with HoleZeile.
class CWegweiser {
public:
    CWegweiser(CZeilenregister & reg, const std::vector<CLSLstGrp> & vGrp, const SHit & h)
        : m_iHash(h.iLstHash), m_iGrp(reg.FindeGruppe(vGrp, h.iArt, h.hit)) {
        if (m_iGrp < 0) return;
        m_pGrp = &vGrp[static_cast<std::size_t>(m_iGrp)];
        m_pIndex = &reg.Zeilen(static_cast<std::size_t>(m_iGrp));
        m_pIndex->HoleFach(m_iHash);
    }
    void HoleZeile() const {
        if (m_pGrp) m_pIndex->HoleElement(m_pGrp->m_vLst, m_iHash);
    }

    // The position of the hit's group, -1 for none.
    [[nodiscard]] int Gruppe() const { return m_iGrp; }

private:
    const std::uint32_t m_iHash;
    const int m_iGrp;
    const CLSLstGrp * m_pGrp = nullptr;
    const CNebenindex<CLSLst> * m_pIndex = nullptr;
};

// The line of the hit's service, a new one if there is none.
CLSLst & Zeile(std::vector<CLSLst> & vLst, const SHit & h, CNebenindex<CLSLst> * pIndex);
// Puts a new line at the end, which is empty but for its service number.
CLSLst & NeueZeile(std::vector<CLSLst> & vLst, const CString & sLst);

// The position of the hit's group, -1 for none.
[[nodiscard]] int FindeGruppe(const std::vector<CLSLstGrp> & vGrp, const CBehHitLine & hit);
// Puts the hit into the group at this position, or for -1 into a new one at the end, and into its line.
void NimmInGruppe(std::vector<CLSLstGrp> & vGrp, int iGrp, const SHit & h, CZeilenregister * pRegister);

// The same as CLSKasLstGrp::MoveKasLstGrp and, without the sums, CLSPxLstGrp::MovePxLstGrp; iGrp as above.
void NimmInKasse(CLSKasLstGrp & kas, int iGrp, const SHit & h, bool bNeuerFall, CZeilenregister * pRegister);
void NimmInPraxisgruppe(CLSPxLstGrp & praxis, int iGrp, const SHit & h, const CString & sPraxis,
                        bool bNeuerFall, CZeilenregister * pRegister);

// MoveKasSel and MovePxLstSel with a register of the groups that are added to.
void MischeKasse(CLSKasLstGrp & summe, const CLSKasLstGrp & kas, CZeilenregister & reg);
void MischeInPraxis(CLSPxLstGrp & praxis, const CLSKasLstGrp & kas, CZeilenregister & reg);

// ---- Orders

void SortiereZeilen(std::vector<CLSLst> & vLst);
// The groups, and the lines of each.
void SortiereGruppen(std::vector<CLSLstGrp> & vGrp);
void SortiereArten(std::vector<CPxLstGrp> & vArten);

} // namespace orvostat
