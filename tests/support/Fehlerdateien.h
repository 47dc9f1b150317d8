// A store of files that passes everything on to another one and fails with a cause when it is told to.
#pragma once

#include "orvostatbs/host/Dateispeicher.h"

#include <memory>
#include <utility>

namespace orvostat {

class CFehlerdateien final : public CDateispeicher {
public:
    explicit CFehlerdateien(CDateispeicher & innen) : m_pInnen(&innen) {}

    // Which operations fail, all from now on, and with what.
    enum EWo { NIRGENDS, OEFFNEN, LESEN, SCHREIBEN, SICHERN, SCHLIESSEN, LOESCHEN };
    void FehlerBei(EWo eWo, int iUrsache = URSACHE_SONST) {
        m_eWo = eWo;
        m_iUrsache = iUrsache;
    }

    std::unique_ptr<CDateizugriff> Oeffne(const CString & sPfad, unsigned iModus, int & iUrsache) override {
        iUrsache = Fehler(OEFFNEN);
        if (iUrsache != URSACHE_KEINE) return nullptr;
        auto pInnen = m_pInnen->Oeffne(sPfad, iModus, iUrsache);
        return pInnen ? std::make_unique<CZugriff>(*this, std::move(pInnen)) : nullptr;
    }
    int Loesche(const CString & sPfad) override {
        const int iUrsache = Fehler(LOESCHEN);
        return iUrsache != URSACHE_KEINE ? iUrsache : m_pInnen->Loesche(sPfad);
    }
    bool Existiert(const CString & sPfad) override { return m_pInnen->Existiert(sPfad); }
    std::vector<SDateieintrag> Suche(const CString & sMuster) override { return m_pInnen->Suche(sMuster); }

private:
    class CZugriff final : public CDateizugriff {
    public:
        CZugriff(CFehlerdateien & dateien, std::unique_ptr<CDateizugriff> pInnen)
            : m_dateien(dateien), m_pInnen(std::move(pInnen)) {}
        int Lies(std::uint64_t iPos, std::span<char> acZiel, std::size_t & iGelesen) override {
            iGelesen = 0;
            const int iUrsache = m_dateien.Fehler(LESEN);
            return iUrsache != URSACHE_KEINE ? iUrsache : m_pInnen->Lies(iPos, acZiel, iGelesen);
        }
        int Schreibe(std::uint64_t iPos, std::string_view sBytes) override {
            const int iUrsache = m_dateien.Fehler(SCHREIBEN);
            return iUrsache != URSACHE_KEINE ? iUrsache : m_pInnen->Schreibe(iPos, sBytes);
        }
        std::uint64_t Laenge() override { return m_pInnen->Laenge(); }
        int Sichere() override {
            const int iUrsache = m_dateien.Fehler(SICHERN);
            return iUrsache != URSACHE_KEINE ? iUrsache : m_pInnen->Sichere();
        }
        int Schliesse() override {
            const int iUrsache = m_dateien.Fehler(SCHLIESSEN);
            return iUrsache != URSACHE_KEINE ? iUrsache : m_pInnen->Schliesse();
        }

    private:
        CFehlerdateien & m_dateien;
        std::unique_ptr<CDateizugriff> m_pInnen;
    };

    [[nodiscard]] int Fehler(EWo eWo) const { return m_eWo == eWo ? m_iUrsache : URSACHE_KEINE; }

    CDateispeicher * m_pInnen;
    EWo m_eWo = NIRGENDS;
    int m_iUrsache = URSACHE_KEINE;
};

} // namespace orvostat
