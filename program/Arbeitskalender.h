// The calendar that a practice works by, year by year.
#pragma once

#include "Praxis.h"

#include "orvostatbs/calendar/Feiertage.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

// Where a calendar comes from: a practice's settings, a federal state, both, or neither (the nationwide holidays).
struct SKalenderwahl {
    std::string sLand;
    std::string sPraxis;
    std::string sMandant;
    std::vector<std::string> vWochentage;
};

// The calendars of the years, by the law of each, with an owner's weekdays and vacations. A read that fails ends the
// command.
class CArbeitskalender {
public:
    // bInhaber: a practice's owner is asked, too.
    CArbeitskalender(const SKalenderwahl & wahl, bool bInhaber);
    // That of an owner, of the first one for the empty text, of the practice that is open.
    explicit CArbeitskalender(const std::string & sMandant);

    [[nodiscard]] CHoliday Jahr(int iJahr) const;
    [[nodiscard]] int Arbeitstage(const CString & sVon, const CString & sBis) const;
    // The first working day from this one on; empty for none.
    [[nodiscard]] CString Naechster(const CString & sAb) const;

    void NenneFeiertage(std::ostream & aus) const;
    // Which holidays, weekdays, owner and vacations an answer about the period goes by.
    void Nenne(std::ostream & aus, const CString & sVon, const CString & sBis) const;

private:
    void LiesSchalter();
    void LiesInhaber();
    [[nodiscard]] int ArbeitstageIm(int iJahr, const CString & sVon, const CString & sBis) const;
    [[nodiscard]] const CHVMUrParam & Ur(int iJahr) const;
    [[nodiscard]] bool Arbeitet(int iJahr, std::size_t i) const;
    [[nodiscard]] std::string Wochentage(int iJahr) const;
    [[nodiscard]] std::string Praxisfeiertage() const;
    [[nodiscard]] std::vector<std::pair<CString, CString>> Urlaube(const CString & sVon,
                                                                   const CString & sBis) const;

    SKalenderwahl m_wahl;
    const SBundesland * m_pLand = nullptr;
    std::optional<CPraxis> m_praxis;
    CHoliday m_schalter; // the practice's
    CString m_sInhaber;
    std::optional<CHVMCf> m_einstellungen;
};

} // namespace orvostat
