// A walk over rows of the file.
#pragma once

#include "SqliteVorlauf.h"

namespace orvostat {

class CSqliteWeg final : public CZeilenmenge {
public:
    CSqliteWeg(CSqliteDatei & datei, const STabelle & tabelle, const SBereich & bereich,
               CAnweisung pAnweisung);
    ~CSqliteWeg() override;

    int Naechste(CFelder vFelder) override;
    int Loesche() override;
    int Ersetze(CWerte vWerte) override;

private:
    int Ende(int iErgebnis);
    [[nodiscard]] bool LohntVorlauf() const;
    int Schritt(CFelder vFelder);
    int SchrittImVorlauf(CFelder vFelder);
    [[nodiscard]] bool SpaeterGeschrieben();
    [[nodiscard]] SPlatz & Platz();

    CSqliteDatei & m_datei;
    const STabelle & m_tabelle;
    const SBereich m_bereich;
    CAnweisung m_pAnweisung;
    std::int64_t m_iBisLfd;     // rows written later do not belong to the walk; -1 until the first step tells
    std::int64_t m_iZeilen = 0; // given so far
    const std::uint64_t m_iWegeVorher; // asked for before this one
    // Gives the rows from ZEILEN_OHNE_VORLAUF on, while the statement stays behind.
    std::unique_ptr<CSqliteVorlauf> m_pVorlauf;
    int m_iEnde = ZEILE_OK; // what ended the walk
    bool m_bLaeuft = false; // between its first row and its end
    bool m_bZeile = false;  // the statement stands on a row that is still there
    bool m_bPlatz = false;  // m_platz is its place
    SPlatz m_platz;
};

} // namespace orvostat
