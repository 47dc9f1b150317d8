#include "orvostatbs/records/Pat.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <utility>

namespace orvostat {

namespace {

constexpr int PROZENT_OHNE_ANGABE = 100;

CString OhneBlanksLinks(const CString & s) {
    int iErstes = 0;
    while (s[iErstes] == ' ')
        ++iErstes;
    return s.Mid(iErstes);
}

// The form for the screens of an address row's sex.
CString Geschlecht(const CString & sAdresse) {
    if (sAdresse == "f") return "w";
    if (sAdresse == "m" || sAdresse == "d") return sAdresse;
    return "?";
}

CString Geburtstag(const CPat & pat) { return " *" + StrToExt(pat.PATGEBDATUM, 5, 8); }

void MoveAdresse(CPat & pat, const CTAdr & adr) {
    pat.PATTITEL = adr.m_PATTITEL;
    pat.PATZUSATZ = adr.m_PATZUSATZ;
    pat.PATSTRASSE = adr.m_PATSTRASSE;
    pat.PATPLZ = adr.m_PATPLZ;
    pat.PATORT = adr.m_PATORT;
    pat.PATANREDE = adr.m_PATANREDE;
    pat.PATTELEFON = CTAdr::GetRufNummer(adr.m_TELEFON1);
    pat.m_sTelefon2 = CTAdr::GetRufNummer(adr.m_TELEFON2);
    pat.m_sTelefon3 = CTAdr::GetRufNummer(adr.m_TELEFON3);
    pat.m_sTelefon4 = CTAdr::GetRufNummer(adr.m_TELEFON4);
    pat.PATEMAIL = CTAdr::GetEMail(adr.m_EMAIL);
    pat.m_sTelefon6 = CTAdr::GetRufNummer(adr.m_TELEFON6);
    pat.TELEFONPRIO = adr.LoadPrioTelefon();
    pat.FRUEHERENAMEN = adr.m_FRUEHERENAMEN;
    pat.GESCHLECHT = Geschlecht(adr.m_GESCHLECHT);
}

void MovePerson(CPat & pat, const CTPat & person) {
    pat.PATNAME = person.m_PATNAME;
    pat.PATVORNAME = person.m_PATVORNAME;
    pat.SELEKTION = person.m_SELEKTION;
    pat.m_sAdrNr = person.m_ADRNR;
    pat.PATGEBDATUM = person.m_PATGEBDATUM;
    pat.LASTBEHDATUM = person.m_LASTBEHDATUM;
    pat.UEBERWARZT = person.m_UEBERWARZT;
    pat.HAUSARZT = person.m_HAUSARZT;
    pat.EINTRDATUM = person.m_EINTRDATUM;
    pat.RISIKOANAMNESE = person.m_RISIKOANAMNESE;
    pat.RECALLART = person.m_RECALLART;
    pat.BENACHRICHTIGUNG = person.m_BENACHRICHTIGUNG.Erstes();
    pat.FRUCHT = person.GetFrucht();
    person.GetPflegegrad(pat.m_sPflegegrad, pat.m_sPflegegradEnde);
    pat.m_sFallBesonderheit = person.GetFallBesonderheit();
    pat.INDEXMARKERS = person.GetIndexMarkers();
    pat.m_sPatFeld3 = person.m_PATFELD3;
}

void MoveRecall(CPat & pat, const CTPat & person, CTHistRecall & recall) {
    constexpr int JEDE_ART = -1;
    int iWochen = 0;
    pat.LASTRECALL = recall.LastRecallDatum(person.m_PATNR, JEDE_ART, iWochen);
    pat.RECALLITV = iWochen > 0 ? "W" + itoc(iWochen) : person.m_RECALLITV;
}

} // namespace

void CPat::Clear() {
    const bool bGelesen = m_bPatGelesen;
    *this = CPat();
    m_bPatGelesen = bGelesen;
}

bool CPat::MovePatFields(CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall) {
    PATNR = pPat->m_PATNR;
    m_sPatFeld1 = pPat->m_PATFELD1;
    BEHANDLERNR = pPat->m_BEHANDLERNR;
    m_iPatProzent = Blank(pPat->m_PATPROZENT) ? PROZENT_OHNE_ANGABE : Zahl(pPat->m_PATPROZENT);
    if (pAdr->GetByAdrNr(pPat->m_ADRNR) != 0) return false;
    MoveAdresse(*this, *pAdr);
    MovePerson(*this, *pPat);
    MoveRecall(*this, *pPat, *pRecall);
    m_bPatGelesen = true;
    return true;
}

bool CPat::ReadAndMovePat(CString sPatNr, CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall) {
    PATNR = std::move(sPatNr);
    return pPat->GetByPatNr(PATNR) == 0 && MovePatFields(pPat, pAdr, pRecall);
}

bool CPat::MoveValidPat(CTPat * pPat, CTAdr * pAdr, CTHistRecall * pRecall) {
    if (!MovePatFields(pPat, pAdr, pRecall)) return false;
    PatIsValid();
    return true;
}

CString CPat::GetName() const {
    CString sName = OhneBlanksLinks(PATTITEL + ' ');
    sName = OhneBlanksLinks(sName + PATVORNAME + ' ');
    if (!PATZUSATZ.IsEmpty()) sName += PATZUSATZ + ' ';
    return sName + PATNAME;
}

CString CPat::BuildNameUndVn() const {
    CString sName = PATNAME + ", ";
    if (!PATTITEL.IsEmpty()) sName += PATTITEL + ' ';
    sName += PATVORNAME + ' ';
    return OhneBlanksLinks(sName + PATZUSATZ);
}

CString CPat::BuildNVPkt() const {
    return OhneBlanksLinks(PATNAME + ", " + GetMidStr(PATVORNAME, 0, 1) + '.');
}

CString CPat::GetNameUndGeb() const { return GetName() + Geburtstag(*this); }

CString CPat::GetNameVornameUndGeb() const { return BuildNameUndVn() + Geburtstag(*this); }

} // namespace orvostat
