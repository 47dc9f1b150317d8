// The insurers of the sample practice, all invented.
#pragma once

#include "MusterSchreiber.h"
#include "MusterZufall.h"
#include "orvostatbs/host/TabellenPraxis.h"

#include <vector>

namespace orvostat {

// Who pays: a statutory insurer, a private one, or one that pays by a schedule of its own.
enum class EKostentraeger { Gesetzlich, Privat, Sonstiger };

struct SMusterKasse {
    CString sKuerzel;
    EKostentraeger eTraeger;
    char cGoArt;  // schedule of the services: "k", "q", or "e", "f", "h", "u" of the other payers
    int iGewicht; // its share of the patients of its kind
    std::vector<CTOrvoKas_Fields> vZeilen; // its history, oldest first
};

class CMusterKassen {
public:
    // The histories draw from the seed's own stream.
    explicit CMusterKassen(std::uint64_t iSaat);
    [[nodiscard]] const SMusterKasse & Ziehe(EKostentraeger eTraeger, CZufall & zufall) const;
    // Insurers and dental associations.
    void Schreibe(CMusterSchreiber & schreiber) const;

private:
    std::vector<SMusterKasse> m_vKassen[3]; // by EKostentraeger
};

} // namespace orvostat
