// A store that passes everything on to another one, counts it, and fails when it is told to.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <functional>
#include <memory>
#include <utility>

namespace orvostat {

class CFehlerspeicher final : public CZeilenspeicher {
public:
    explicit CFehlerspeicher(std::shared_ptr<CZeilenspeicher> pInnen) : m_pInnen(std::move(pInnen)) {}

    // Every call of the store and of its walks is an operation, closing a walk is none.
    [[nodiscard]] int Operationen() const { return m_iOperationen; }
    [[nodiscard]] int OffeneWege() const { return m_iOffeneWege; }
    // Lets one operation fail, the n-th from now (1: the next); 0 lets none fail. A failing operation changes
    // nothing in the other store, except that a failing Beende takes the group's writes back.
    // fStattdessen is called before it fails.
    void FehlerBei(int iOperation, std::function<void()> fStattdessen = nullptr) {
        m_iNochGut = iOperation;
        m_fStattdessen = std::move(fStattdessen);
    }

    std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) override;
    int Schreibe(const STabelle & tabelle, CWerte vWerte) override;
    int Beginne() override;
    int Beende(bool bUebernehmen) override;
    [[nodiscard]] std::int64_t Zeilenzahl(const STabelle & tabelle) override;
    [[nodiscard]] bool NurLesen() const override { return m_pInnen->NurLesen(); }
    [[nodiscard]] EZeilenursache Fehlerursache() const override { return m_eUrsache; }
    EZeilenursache m_eUrsache = EZeilenursache::Unbekannt;

private:
    friend class CFehlerweg;
    // Counts an operation; true if it is the one to fail.
    bool Scheitert();

    std::shared_ptr<CZeilenspeicher> m_pInnen;
    int m_iOperationen = 0;
    int m_iOffeneWege = 0;
    int m_iNochGut = 0;
    std::function<void()> m_fStattdessen;
};

} // namespace orvostat
