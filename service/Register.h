// Indexes beside the public vectors of a service statistic.
//
// Each answers what a search through the vector would, and notices by itself when the vector has been changed
// behind its back: another size or place, or an element that is not where it was. So a run and AddKasData
// cost the same per hit in a large practice as in a small one.
#pragma once

#include "Posten.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/service/Fall.h"
#include "orvostatbs/service/LSLstGrp.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace orvostat {

// ---- Hashes of what makes an element

[[nodiscard]] inline std::uint32_t Gemischt(std::uint64_t i) {
    i *= 0x9E3779B97F4A7C15ULL;
    return static_cast<std::uint32_t>(i ^ (i >> 32));
}
[[nodiscard]] inline std::uint32_t HashVon(const CString & s) { return Gemischt(s.Hash()); }
[[nodiscard]] inline std::uint32_t HashVon(std::uint32_t i) { return Gemischt(i); }
[[nodiscard]] inline std::uint32_t HashVon(const CLSLst & lst) { return HashVon(lst.LSTNR); }
[[nodiscard]] inline std::uint32_t HashVon(const CLSBehLstGrp & beh) { return HashVon(beh.BEHANDLERNR); }
[[nodiscard]] inline std::uint32_t HashVon(const CString & sPraxis, const CString & sKasse) {
    return Gemischt(sPraxis.Hash() * 31 + sKasse.Hash());
}
[[nodiscard]] inline std::uint32_t HashVon(const CLSKasLstGrp & kas) {
    return HashVon(kas.PRAXISNR, kas.KASKUERZEL);
}
[[nodiscard]] inline std::uint32_t HashVon(const CLastFall & fall) {
    const std::uint64_t iPat =
        static_cast<std::uint64_t>(fall.PATNR) * 31 + static_cast<std::uint16_t>(fall.PRAXISNR);
    return Gemischt((iPat * 31 + fall.KASKUERZEL.Hash()) * 31 + fall.MFRDIG.Hash() * 7 + fall.WSO.Hash());
}
[[nodiscard]] inline std::uint32_t HashVon(const CFallJeQuartal & fall) { return HashVon(fall.m_Fall); }

// ---- Asking for memory before it is needed: a hint

inline void Hole(const void * p) {
#if defined(__GNUC__)
    __builtin_prefetch(p, 1);
#else
    static_cast<void>(p);
#endif
}

// ---- One vector

// Which of several equal elements a search finds.
enum class ESuche { VonVorn, VonHinten };

// Positions of the elements of a vector.
template <class T, ESuche SUCHE = ESuche::VonVorn> class CNebenindex {
public:
    // The position of the element with this hash for which fGleich holds, -1 for none.
    template <class F> [[nodiscard]] int Finde(const std::vector<T> & v, std::uint32_t iHash, F fGleich) {
        if (v.data() != m_pDaten || v.size() != m_iGroesse) Baue(v);
        bool bAndere = false;
        int iPos = Suche(v, iHash, fGleich, bAndere);
        if (iPos >= 0 || !bAndere) return iPos;
        Baue(v); // the order has changed, or two elements share a hash
        return Suche(v, iHash, fGleich, bAndere);
    }
    // Hints that the element with this hash will be asked for: first where the index has it, then the
    // element.
    void HoleFach(std::uint32_t iHash) const {
        if (!m_vFaecher.empty()) Hole(&m_vFaecher[iHash & (m_vFaecher.size() - 1)]);
    }
    void HoleElement(const std::vector<T> & v, std::uint32_t iHash) const {
        if (m_vFaecher.empty()) return;
        const SFach & fach = m_vFaecher[iHash & (m_vFaecher.size() - 1)];
        if (fach.iPos < 0 || static_cast<std::size_t>(fach.iPos) >= v.size()) return;
        const auto * p = reinterpret_cast<const char *>(&v[static_cast<std::size_t>(fach.iPos)]);
        Hole(p);
        Hole(p + sizeof(T) - 1);
    }
    // An element that was not there has been put at the end, right after Finde said so.
    void Angehaengt(const std::vector<T> & v, std::uint32_t iHash) {
        if (v.size() != m_iGroesse + 1 || v.size() * 4 > m_vFaecher.size() * 3) return Baue(v);
        Fuege(iHash, static_cast<int>(m_iGroesse));
        m_pDaten = v.data();
        m_iGroesse = v.size();
    }

private:
    struct SFach {
        std::uint32_t iHash = 0;
        std::int32_t iPos = -1; // none: the place is free
    };
    static constexpr std::size_t FAECHER_MIN = 16;

    template <class F>
    [[nodiscard]] int Suche(const std::vector<T> & v, std::uint32_t iHash, F & fGleich,
                            bool & bAndere) const {
        if (m_iGroesse == 0) return -1;
        const std::size_t iMaske = m_vFaecher.size() - 1;
        for (std::size_t i = iHash & iMaske; m_vFaecher[i].iPos >= 0; i = (i + 1) & iMaske) {
            if (m_vFaecher[i].iHash != iHash) continue;
            if (fGleich(v[static_cast<std::size_t>(m_vFaecher[i].iPos)])) return m_vFaecher[i].iPos;
            bAndere = true;
        }
        return -1;
    }
    void Fuege(std::uint32_t iHash, int iPos) {
        const std::size_t iMaske = m_vFaecher.size() - 1;
        std::size_t i = iHash & iMaske;
        while (m_vFaecher[i].iPos >= 0)
            i = (i + 1) & iMaske;
        m_vFaecher[i] = {iHash, iPos};
    }
    // Of equal elements the one that is to be found comes first.
    void Baue(const std::vector<T> & v) {
        m_vFaecher.assign(std::bit_ceil(std::max(v.size() * 2, FAECHER_MIN)), SFach());
        for (std::size_t n = 0; n < v.size(); ++n) {
            const std::size_t i = SUCHE == ESuche::VonVorn ? n : v.size() - 1 - n;
            Fuege(HashVon(v[i]), static_cast<int>(i));
        }
        m_pDaten = v.data();
        m_iGroesse = v.size();
    }

    std::vector<SFach> m_vFaecher;
    const T * m_pDaten = nullptr; // of the vector as it was last seen
    std::size_t m_iGroesse = 0;
};

// ---- Numbers for values that come again and again

// A number from 0 on for each value.
template <class T> class CNummern {
public:
    [[nodiscard]] int Nummer(const T & wert) {
        if (m_iLetzte >= 0 && m_vWerte[static_cast<std::size_t>(m_iLetzte)] == wert) return m_iLetzte;
        const std::uint32_t iHash = HashVon(wert);
        m_iLetzte = m_index.Finde(m_vWerte, iHash, [&](const T & w) { return w == wert; });
        if (m_iLetzte >= 0) return m_iLetzte;
        m_vWerte.push_back(wert);
        m_index.Angehaengt(m_vWerte, iHash);
        return m_iLetzte = static_cast<int>(m_vWerte.size()) - 1;
    }
    [[nodiscard]] std::size_t Anzahl() const { return m_vWerte.size(); }

private:
    std::vector<T> m_vWerte;
    CNebenindex<T> m_index;
    int m_iLetzte = -1;
};

// What decides which group a hit belongs to, as one value.
[[nodiscard]] inline std::uint32_t Gruppenart(const CBehHitLine & hit) {
    const auto b = [](char c) { return static_cast<std::uint32_t>(static_cast<unsigned char>(c)); };
    return b(Zahler(hit)) << 16 | b(hit.GOART) << 8 | b(hit.GOSTATISTIKART);
}

// ---- Groups and their lines

class CZeilenregister {
public:
    // The group of a hit of this kind (the number of its Gruppenart), -1 for none.
    [[nodiscard]] int FindeGruppe(const std::vector<CLSLstGrp> & vGrp, int iArt, const CBehHitLine & hit) {
        if (static_cast<std::size_t>(iArt) >= m_vGruppe.size())
            m_vGruppe.resize(static_cast<std::size_t>(iArt) + 1, -1);
        int & iGrp = m_vGruppe[static_cast<std::size_t>(iArt)];
        const auto iAnzahl = static_cast<int>(vGrp.size());
        if (iGrp >= 0 && iGrp < iAnzahl && IstGruppeVon(vGrp[static_cast<std::size_t>(iGrp)], hit))
            return iGrp;
        iGrp = static_cast<int>(std::find(vGrp.begin(), vGrp.end(), hit) - vGrp.begin());
        return iGrp < iAnzahl ? iGrp : iGrp = -1;
    }
    // The index of the lines of group iGrp.
    [[nodiscard]] CNebenindex<CLSLst> & Zeilen(std::size_t iGrp) {
        if (iGrp >= m_vZeilen.size()) m_vZeilen.resize(iGrp + 1);
        return m_vZeilen[iGrp];
    }
    [[nodiscard]] int FindeZeile(const CLSLstGrp & grp, std::size_t iGrp, const CString & sLst,
                                 std::uint32_t iHash) {
        return Zeilen(iGrp).Finde(grp.m_vLst, iHash, [&](const CLSLst & lst) { return lst.LSTNR == sLst; });
    }

private:
    std::vector<int> m_vGruppe; // by number of the kind
    std::vector<CNebenindex<CLSLst>> m_vZeilen;
};

// ---- Cases

// Tells new cases from known ones as FindFallImQuartal does, beside its list.
class CFallregister {
public:
    // True for a new case, which is then in the list.
    [[nodiscard]] bool IstNeu(std::vector<CFallJeQuartal> & vFaelle, const CBehHitLine & hit);
    // The number of the last hit's day, from 0 on.
    [[nodiscard]] std::size_t Tag() const { return m_iTag; }

private:
    void Merke(const CBehHitLine & hit);

    CNummern<CString> m_daten;
    std::size_t m_iTag = 0;
    std::vector<CString> m_vQuartale; // by number of the day
    CString m_sPraxis;                // of the last hit, as are these
    CString m_sPat;
    CFallJeQuartal m_fall;
    CNebenindex<CFallJeQuartal, ESuche::VonHinten> m_index;
};

// ---- Insurers

class CKasRegister {
public:
    // The insurer's position, -1 for none.
    [[nodiscard]] int Finde(const std::vector<CLSKasLstGrp> & vKas, const CBehHitLine & hit) {
        // A patient's hits come together.
        if (vKas.size() == m_iGroesse && m_iLetzte >= 0 && vKas[static_cast<std::size_t>(m_iLetzte)] == hit)
            return m_iLetzte;
        m_iHash = HashVon(hit.PRAXISNR, hit.KASKUERZEL);
        m_iGroesse = vKas.size();
        return m_iLetzte = m_index.Finde(vKas, m_iHash, [&](const CLSKasLstGrp & kas) { return kas == hit; });
    }
    void Angehaengt(const std::vector<CLSKasLstGrp> & vKas) { m_index.Angehaengt(vKas, m_iHash); }
    [[nodiscard]] CZeilenregister & Zeilen(std::size_t iKas) {
        if (iKas >= m_vZeilen.size()) m_vZeilen.resize(iKas + 1);
        return m_vZeilen[iKas];
    }
    CFallregister m_faelle;
    CNummern<std::uint32_t> m_arten;

private:
    std::uint32_t m_iHash = 0; // of the last hit that was searched for, as the next two
    int m_iLetzte = -1;
    std::size_t m_iGroesse = 0;
    CNebenindex<CLSKasLstGrp, ESuche::VonHinten> m_index;
    std::vector<CZeilenregister> m_vZeilen;
};

} // namespace orvostat
