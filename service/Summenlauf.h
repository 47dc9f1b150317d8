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

// Counts the distinct days under a number, and all of them under 0.
class CTage {
public:
    // sNr is a number as text: what is none counts under 0.
    void Nimm(const CString & sNr, int iTag);
    void HaengeAn(std::vector<std::pair<std::int32_t, std::int32_t>> & vTage) const;

private:
    struct STage {
        std::vector<bool> vGesehen; // by number of the day
        std::int32_t iAnzahl = 0;
        void Nimm(std::size_t iTag);
    };

    std::map<std::int32_t, STage> m_mTage;
    CNummern<CString> m_texte;
    std::vector<STage *> m_vJeText;
};

// The sums of treaters and practice are the same for all hits of one place (payer, bucket, deducted or not), so a run
// adds up per treater and place and distributes at its end. That is only exact while all money is of one currency:
// the first hit in another one ends it, and each hit goes into its sums at once.
class CSummenlauf {
public:
    CSummenlauf(CLSSum & sum, const CString & sPraxis);

    void Nimm(const CBehHitLine & hit);
    // Distributes what has been added up. A run that ends without it leaves the sums behind the groups.
    void Verteile();
    void HaengeTageAn();

private:
    using CVorrat = std::array<SPosten, SPlatz::ANZAHL>; // by number of the place

    [[nodiscard]] std::size_t Behandler(const CBehHitLine & hit);
    [[nodiscard]] bool KannWarten(const SPosten & posten);
    void NimmSumme(std::size_t iBeh, const SPlatz & platz, const SPosten & posten);

    CLSSum & m_sum;
    const CString m_sPraxis;
    CNummern<std::uint32_t> m_arten;
    CNummern<CString> m_daten;
    CFallregister m_faelle;
    CZeilenregister m_praxiszeilen;
    CNebenindex<CLSBehLstGrp> m_behIndex;
    std::vector<CZeilenregister> m_vBehZeilen; // by treater, as the two below
    std::vector<CVorrat> m_vVorrat;
    CTage m_behTage;
    CTage m_praxisTage;
    bool m_bSofort = false;
    char m_cWaehrung = 0; // of the amounts that wait
};

} // namespace orvostat
