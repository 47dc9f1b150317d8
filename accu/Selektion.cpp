#include "orvostatbs/accu/Selektion.h"

#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

CString Zweistellig(const CString & s) {
    if (s.IsEmpty()) return s;
    CString sZahl;
    sZahl.Format("%2d", Zahl(s));
    return sZahl;
}

} // namespace

void CSelektion::LeereSelektion() {
    const bool bOhneKchSach = m_Selekt.OhneKchSach;
    const bool bArzt = m_Selekt.Arzt;
    m_Selekt = SSelektion();
    m_Selekt.OhneKchSach = bOhneKchSach;
    m_Selekt.Arzt = bArzt;
}

void CSelektion::SetMandant(const CString & sMandant) { m_Selekt.Mandant = Zweistellig(sMandant); }
void CSelektion::SetPraxisId(const CString & sPraxisId) { m_Selekt.PraxisId = Zweistellig(sPraxisId); }

void CSelektion::SetPatient(const CString & sPatient) {
    m_Selekt.Patient = sPatient.IsEmpty() ? sPatient : BildeBild(sPatient, "ZZZZZZZZZX"_t);
}

void CSelektion::SetRecallData(const CString & sArt, const CString & sIntervall, const CString & sLast) {
    m_Selekt.RecallArt = sArt;
    m_Selekt.RecallIntervall = sIntervall;
    m_Selekt.RecallLast = sLast;
}

CString CSelektion::AlsListe(const std::vector<CString> & vNummern) {
    CString sListe;
    for (const CString & sNummer : vNummern) {
        sListe += sListe.IsEmpty() ? CString("'") : CString(",'");
        sListe += sNummer + '\'';
    }
    return sListe;
}

bool CSelektion::PwLArtOk(CChar c) const { return m_Selekt.PwLArt.IsEmpty() || m_Selekt.PwLArt.Find(c) >= 0; }
bool CSelektion::OnlyAbrechenbareOk(CChar c) const { return !m_Selekt.OnlyAbrechenbare || c == '1'; }

} // namespace orvostat
