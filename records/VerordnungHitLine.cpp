#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/NebenHits.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace orvostat {

namespace {

constexpr int VORNAME_BREITE = 22; // of the line with first name and birth date

// A part of a line or of a column text without the filling behind it.
CString Feld(const CString & s, int iPos, int iLen) { return GetMidStr(s, iPos, iLen).TrimRight(); }

// DD.MM.YY of the form to YYYYMMDD, not after today.
CString Geburtsdatum(const CString & sForm) {
    return CorrectGebDate("20" + GetMidStr(sForm, 6, 2) + GetMidStr(sForm, 3, 2) + GetMidStr(sForm, 0, 2));
}

CString Icd(const CString & sCode) { return sCode.IsEmpty() ? sCode : CTIcd::AddPoint(sCode); }

// The units of the first three counts, or of the fourth where those are all 0.
int Einheiten(const CHMVRecord & hmv) {
    const int aiAnzahl[] = {Zahl(hmv.m_ANZAHL1), Zahl(hmv.m_ANZAHL2), Zahl(hmv.m_ANZAHL3)};
    if (std::ranges::all_of(aiAnzahl, [](int i) { return i == 0; })) return Zahl(hmv.m_ANZAHL4);
    std::int64_t iSumme = 0;
    for (const int iAnzahl : aiAnzahl)
        iSumme += iAnzahl;
    return static_cast<int>(
        std::clamp<std::int64_t>(iSumme, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

void MoveTextzeilen(CVerordnungHitLine & hit, const CString & sText) {
    std::vector<CString> vZeilen;
    SeparatedStrToVec(sText, '\n', vZeilen);
    if (vZeilen.size() >= 2) hit.m_sVoName = CString(vZeilen[1]).TrimRight();
    if (vZeilen.size() >= 3) {
        const CString sVorname = Feld(vZeilen[2], 0, VORNAME_BREITE);
        if (!sVorname.IsEmpty()) hit.m_sVoName += ", " + sVorname;
        const CString sDatum = GetMidStr(vZeilen[2], VORNAME_BREITE).Trim();
        if (!sDatum.IsEmpty()) hit.m_sVoGebDatum = Geburtsdatum(sDatum);
    }
    if (vZeilen.size() >= 6) hit.m_sVoFeld = Feld(vZeilen[5], 10, 10);
}

} // namespace

void CVerordnungHitLine::Clear() { *this = CVerordnungHitLine(); }

void CVerordnungHitLine::MoveVerordnung(const CTRezept & rez, const CHMVRecord & hmv) {
    m_sVoKey1 = rez.m_PATNR;
    m_sVoKey2 = rez.m_REZEPTNR;
    MoveTextzeilen(*this, hmv.m_TEXTBLOCK);
    m_sVoSchluessel = Feld(rez.m_REZEPTSCHLUESSEL, 0, 5);
    m_sVoIcd1 = Icd(Feld(rez.m_REZEPTSCHLUESSEL, 5, 7));
    m_sVoIcd2 = Icd(Feld(rez.m_REZEPTSCHLUESSEL, 12, 7));
    m_bVoBlanko = hmv.m_FORMULARNAME == "BLANKOVERORDNUNG"_t;
    const bool bBeide = !m_sVoIcd1.IsEmpty() && !m_sVoIcd2.IsEmpty();
    m_sVoIcdListe = m_sVoIcd1 + (bBeide ? "; " : "") + m_sVoIcd2;
    m_iVoAnzahl = Einheiten(hmv);
    m_VoBetrag = CDBetrag(hmv.m_BETRAG);
}

} // namespace orvostat
