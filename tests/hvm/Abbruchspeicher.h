// A store that kills the process before its n-th change: a write, a deletion, a group's beginning or end.
#pragma once

#include "orvostatbs/host/Zeilenspeicher.h"

#include <csignal>
#include <memory>
#include <utility>

#include <unistd.h>

namespace orvostat {

class CAbbruchspeicher : public CZeilenspeicher {
public:
    CAbbruchspeicher(std::shared_ptr<CZeilenspeicher> pInnen, int iStelle)
        : m_pInnen(std::move(pInnen)), m_iNoch(iStelle) {}

    std::unique_ptr<CZeilenmenge> Oeffne(const STabelle & tabelle, const SBereich & bereich) override {
        return std::make_unique<CMenge>(*this, m_pInnen->Oeffne(tabelle, bereich));
    }
    int Schreibe(const STabelle & tabelle, CWerte vWerte) override {
        return Innen().Schreibe(tabelle, vWerte);
    }
    int Beginne() override { return Innen().Beginne(); }
    int Beende(bool bUebernehmen) override { return Innen().Beende(bUebernehmen); }
    std::int64_t Zeilenzahl(const STabelle & tabelle) override { return m_pInnen->Zeilenzahl(tabelle); }
    [[nodiscard]] bool NurLesen() const override { return m_pInnen->NurLesen(); }

private:
    class CMenge : public CZeilenmenge {
    public:
        CMenge(CAbbruchspeicher & speicher, std::unique_ptr<CZeilenmenge> pInnen)
            : m_speicher(speicher), m_pInnen(std::move(pInnen)) {}
        int Naechste(CFelder vFelder) override { return m_pInnen->Naechste(vFelder); }
        int Loesche() override {
            m_speicher.Zaehle();
            return m_pInnen->Loesche();
        }
        int Ersetze(CWerte vWerte) override {
            m_speicher.Zaehle();
            return m_pInnen->Ersetze(vWerte);
        }

    private:
        CAbbruchspeicher & m_speicher;
        std::unique_ptr<CZeilenmenge> m_pInnen;
    };

    void Zaehle() {
        if (--m_iNoch == 0) kill(getpid(), SIGKILL);
    }
    CZeilenspeicher & Innen() {
        Zaehle();
        return *m_pInnen;
    }

    std::shared_ptr<CZeilenspeicher> m_pInnen;
    int m_iNoch;
};

} // namespace orvostat
