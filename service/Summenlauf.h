// One run over hits that adds them to a practice and its treaters.
#pragma once

#include "Gruppen.h"
#include "Register.h"

#include "orvostatbs/service/LSSum.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace orvostat {

// Counts the distinct days under numbers, and all of them under 0.
class CTage {
public:
    // The days of one number.
    struct SFach {
        std::vector<bool> vGesehen; // by number of the day
        std::int32_t iAnzahl = 0;
        void Nimm(std::size_t iTag);
    };

    // The days of this number; what is no number counts under 0. Valid as long as this object.
    [[nodiscard]] SFach * Fach(const CString & sNr);
    void Nimm(SFach * pFach, std::size_t iTag);
    void HaengeAn(std::vector<std::pair<std::int32_t, std::int32_t>> & vTage) const;

private:
    std::map<std::int32_t, SFach> m_mTage; // with number 0 from the first day on
    SFach * m_pAlle = nullptr;
};

// The sums of treaters and practice are the same for all hits of one place (payer, bucket, deducted or not),
// so a run adds up per treater and place and distributes at its end. That is only exact while all money is of
// one currency: the first hit in another one ends it, and each hit goes into its sums at once.
class CSummenlauf {
public:
    CSummenlauf(CLSSum & sum, const CString & sPraxis);

    void Nimm(const CBehHitLine & hit);
    // Distributes what has been added up. A run that ends without it leaves the sums behind the groups.
    void Verteile();
    void HaengeTageAn();

private:
    using CVorrat = std::array<SPosten, SSummenplatz::ANZAHL>; // by number of the place

    [[nodiscard]] std::size_t Behandler(const CBehHitLine & hit);
    void NimmTag(const CBehHitLine & hit, std::size_t iBeh);
    [[nodiscard]] bool KannWarten(const SPosten & posten);
    void NimmSumme(std::size_t iBeh, const SSummenplatz & platz, const SPosten & posten);

    CLSSum & m_sum;
    const CString m_sPraxis;
    CNummern<std::uint32_t> m_arten;
    CFallregister m_faelle;
    CZeilenregister m_praxiszeilen;
    CNebenindex<CLSBehLstGrp> m_behIndex;
    std::size_t m_iLetzter = 0;                // the last hit's treater
    std::vector<CZeilenregister> m_vBehZeilen; // by treater, as the next two
    std::vector<CVorrat> m_vVorrat;
    std::vector<CTage::SFach *> m_vBehTage;
    CTage m_behTage;
    CTage m_praxisTage;
    CTage::SFach * m_pPraxisTage = nullptr; // of the practice of the last hit
    CString m_sPraxisTage;
    bool m_bSofort = false;
    char m_cWaehrung = 0; // of the amounts that wait
};

} // namespace orvostat
