#include "Arbeitskalender.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <ostream>

namespace orvostat {

namespace {

CString Jahrestext(int iJahr) { return RightFix(itoc(iJahr), 4, '0'); }

} // namespace

CArbeitskalender::CArbeitskalender(const SKalenderwahl & wahl, bool bInhaber)
    : m_wahl(wahl), m_pLand(wahl.sLand.empty() ? nullptr : FindeBundesland(wahl.sLand)) {
    if (wahl.sPraxis.empty()) return;
    m_praxis.emplace(wahl.sPraxis, EModus::Lesen);
    LiesSchalter();
    if (bInhaber) LiesInhaber();
}

CArbeitskalender::CArbeitskalender(const std::string & sMandant) {
    m_wahl.sMandant = sMandant;
    LiesSchalter();
    LiesInhaber();
}

void CArbeitskalender::LiesSchalter() {
    m_schalter.ReadFeiertage();
    VerweigereNachLesefehler();
}

void CArbeitskalender::LiesInhaber() {
    m_sInhaber = MandantOderErster(m_wahl.sMandant);
    m_einstellungen.emplace().ReadUr(m_sInhaber);
    VerweigereNachLesefehler();
}

CHoliday CArbeitskalender::Jahr(int iJahr) const {
    CHoliday kalender = m_pLand == nullptr ? CHoliday() : KalenderFuer(*m_pLand, iJahr);
    for (const auto pSchalter : FEIERTAGSSCHALTER)
        kalender.*pSchalter = kalender.*pSchalter || m_schalter.*pSchalter;
    for (int i = 0; i < 7; ++i) // Monday first there, 1 for Sunday here
        kalender.m_abWochentag[i == 6 ? 1 : i + 2] = Arbeitet(iJahr, static_cast<std::size_t>(i));
    for (const auto & [sVon, sBis] : Urlaube(CString(), LETZTER_TAG))
        kalender.m_vFerien.push_back({sVon, sBis, CString()});
    return kalender;
}

int CArbeitskalender::Arbeitstage(const CString & sVon, const CString & sBis) const {
    int iTage = 0;
    for (int iJahr = Zahl(sVon.Left(4)); iJahr <= Zahl(sBis.Left(4)); ++iJahr)
        iTage += ArbeitstageIm(iJahr, sVon, sBis);
    return iTage;
}

CString CArbeitskalender::Naechster(const CString & sAb) const {
    for (int iJahr = Zahl(sAb.Left(4)); iJahr <= 9999; ++iJahr) {
        if (ArbeitstageIm(iJahr, sAb, LETZTER_TAG) == 0) continue;
        const CHoliday kalender = Jahr(iJahr);
        CMxDate tag(std::max(sAb, Jahrestext(iJahr) + "0101"));
        while (kalender.GetAnzArbeitsTage(tag, tag) == 0)
            tag = tag + 1;
        return tag;
    }
    return {};
}

void CArbeitskalender::NenneFeiertage(std::ostream & aus) const {
    aus << "Feiertage    bundesweite";
    if (m_pLand != nullptr) aus << ", " << m_pLand->pName;
    if (m_praxis) aus << ", Praxis" << Praxisfeiertage();
    aus << '\n';
}

void CArbeitskalender::Nenne(std::ostream & aus, const CString & sVon, const CString & sBis) const {
    NenneFeiertage(aus);
    std::string sVorher;
    for (int iJahr = Zahl(sVon.Left(4)); iJahr <= Zahl(sBis.Left(4)); ++iJahr) {
        const std::string sTage = Wochentage(iJahr);
        if (sTage != sVorher)
            aus << (sVorher.empty() ? "Wochentage   " : "             ") << sTage
                << (sVorher.empty() ? "" : " ab " + std::to_string(iJahr)) << '\n';
        sVorher = sTage;
    }
    if (!m_einstellungen) return;
    aus << "Inhaber      " << Trim(m_sInhaber).Utf8() << '\n';
    const auto vUrlaube = Urlaube(sVon, sBis);
    if (vUrlaube.empty()) aus << "Urlaub       keiner\n";
    for (const auto & [sErster, sLetzter] : vUrlaube)
        aus << "Urlaub       " << Db2Date(sErster).Utf8() << " bis " << Db2Date(sLetzter).Utf8() << '\n';
}

int CArbeitskalender::ArbeitstageIm(int iJahr, const CString & sVon, const CString & sBis) const {
    const CString sJahr = Jahrestext(iJahr);
    return Jahr(iJahr).GetAnzArbeitsTage(std::max(sVon, sJahr + "0101"), std::min(sBis, sJahr + "1231"));
}

// The owner's year, or what holds without one.
const CHVMUrParam & CArbeitskalender::Ur(int iJahr) const {
    static const CHVMUrParam s_ohne;
    const int i = m_einstellungen ? m_einstellungen->FindUrParam(m_sInhaber, Jahrestext(iJahr)) : -1;
    return i < 0 ? s_ohne : m_einstellungen->m_vUrParam[static_cast<std::size_t>(i)];
}

// i counts from Monday.
bool CArbeitskalender::Arbeitet(int iJahr, std::size_t i) const {
    if (m_wahl.vWochentage.empty()) return Ur(iJahr).m_abArbeitstag[i];
    return std::ranges::find(m_wahl.vWochentage, WochentagKuerzel()[i]) != m_wahl.vWochentage.end();
}

std::string CArbeitskalender::Wochentage(int iJahr) const {
    std::string s;
    for (std::size_t i = 0; i < 7; ++i)
        if (Arbeitet(iJahr, i)) s += (s.empty() ? "" : ",") + WochentagKuerzel()[i];
    return s.empty() ? "keine" : s;
}

std::string CArbeitskalender::Praxisfeiertage() const {
    std::string s;
    for (const auto pSchalter : FEIERTAGSSCHALTER)
        if (m_schalter.*pSchalter) s += (s.empty() ? " (" : ", ") + NameDesSchalters(pSchalter);
    return s.empty() ? " (keine)" : s + ')';
}

// The vacations that touch the period.
std::vector<std::pair<CString, CString>> CArbeitskalender::Urlaube(const CString & sVon,
                                                                   const CString & sBis) const {
    std::vector<std::pair<CString, CString>> v;
    if (!m_einstellungen) return v;
    for (const CHVMUrParam & ur : m_einstellungen->m_vUrParam)
        std::ranges::copy_if(ur.m_vUrlaub, std::back_inserter(v), [&](const auto & urlaub) {
            return urlaub.first <= sBis && urlaub.second >= sVon;
        });
    std::ranges::sort(v);
    return v;
}

} // namespace orvostat
