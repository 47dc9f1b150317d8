#include "support/Fehlerspeicher.h"

namespace orvostat {

class CFehlerweg final : public CZeilenmenge {
public:
    CFehlerweg(CFehlerspeicher & speicher, std::unique_ptr<CZeilenmenge> pInnen)
        : m_speicher(speicher), m_pInnen(std::move(pInnen)) {
        ++m_speicher.m_iOffeneWege;
    }
    ~CFehlerweg() override { --m_speicher.m_iOffeneWege; }

    int Naechste(CFelder vFelder) override {
        m_bGescheitert = m_bGescheitert || m_speicher.Scheitert();
        return m_bGescheitert ? static_cast<int>(ZEILE_FEHLER) : m_pInnen->Naechste(vFelder);
    }
    int Loesche() override {
        return m_speicher.Scheitert() ? static_cast<int>(ZEILE_FEHLER) : m_pInnen->Loesche();
    }
    int Ersetze(CWerte vWerte) override {
        return m_speicher.Scheitert() ? static_cast<int>(ZEILE_FEHLER) : m_pInnen->Ersetze(vWerte);
    }

private:
    CFehlerspeicher & m_speicher;
    std::unique_ptr<CZeilenmenge> m_pInnen;
    bool m_bGescheitert = false; // a walk that has failed goes on failing
};

bool CFehlerspeicher::Scheitert() {
    ++m_iOperationen;
    if (m_iNochGut == 0 || --m_iNochGut > 0) return false;
    if (m_fStattdessen) m_fStattdessen();
    return true;
}

std::unique_ptr<CZeilenmenge> CFehlerspeicher::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    if (Scheitert()) return nullptr;
    auto pInnen = m_pInnen->Oeffne(tabelle, bereich);
    return pInnen ? std::make_unique<CFehlerweg>(*this, std::move(pInnen)) : nullptr;
}

int CFehlerspeicher::Schreibe(const STabelle & tabelle, CWerte vWerte) {
    return Scheitert() ? static_cast<int>(ZEILE_FEHLER) : m_pInnen->Schreibe(tabelle, vWerte);
}

int CFehlerspeicher::Beginne() { return Scheitert() ? static_cast<int>(ZEILE_FEHLER) : m_pInnen->Beginne(); }

int CFehlerspeicher::Beende(bool bUebernehmen) {
    if (!Scheitert()) return m_pInnen->Beende(bUebernehmen);
    m_pInnen->Beende(false);
    return ZEILE_FEHLER;
}

std::int64_t CFehlerspeicher::Zeilenzahl(const STabelle & tabelle) {
    return Scheitert() ? -1 : m_pInnen->Zeilenzahl(tabelle);
}

} // namespace orvostat
