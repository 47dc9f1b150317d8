// A walk over rows of the server.
//
// It reads them in pieces that grow. Where rows may change meanwhile, each piece is asked for from the place of the
// last row on, and asked for anew when this store has changed some; a store that only reads goes over to a cursor when
// the walk gets long, and has the next piece on its way while one is walked.
#pragma once

#include "PostgresDatenbank.h"

namespace orvostat {

class CPostgresWeg final : public CZeilenmenge {
public:
    CPostgresWeg(CServerdatenbank & datenbank, const STabelle & tabelle, const SBereich & bereich);
    ~CPostgresWeg() override;

    int Naechste(CFelder vFelder) override;
    int Loesche() override;
    int Ersetze(CWerte vWerte) override;

private:
    int Ende(int iErgebnis) noexcept;
    [[nodiscard]] bool Weiter();
    bool LiesBlock();
    bool LiesMitZeiger();
    [[nodiscard]] bool SpaeterGeschrieben();
    void MerkeStelle();
    [[nodiscard]] SServerplatz & Platz();
    [[nodiscard]] int NachAenderung(int iErgebnis, std::uint64_t iVorher);

    CServerdatenbank & m_datenbank;
    const STabelle & m_tabelle;
    const std::string m_sGrenze; // the other end: where an ascending walk ends, a descending one too
    serverschema::SWegart m_art;
    const serverschema::SBlockspalten m_spalten;
    std::string m_sAb; // the place behind which the next piece begins
    std::int64_t m_iAb = 0;
    std::int64_t m_iBisLfd; // rows written later do not belong to the walk; -1 until the first piece tells
    std::uint64_t m_iStand = 0;       // the connection's, of the pieces of a store that only reads
    std::uint64_t m_iAenderungen = 0; // the store's when the piece was read

    CServererzeugnis m_pBlock;
    int m_iZeile = 0;            // the next one in the piece
    std::int64_t m_iBlockzeilen; // of the next piece
    bool m_bLetzter = false;     // no further piece comes
    std::string m_sHole;         // fetches from the cursor, where there is one
    std::string m_sSchliesse;    // closes it
    SVorgriff m_vorgriff;

    int m_iEnde = ZEILE_OK; // what ended the walk
    bool m_bZeile = false;  // the row before m_iZeile is still there
    bool m_bPlatz = false;  // m_platz is its place
    SServerplatz m_platz;
};

} // namespace orvostat
