#include "orvostatbs/host/TabellenPraxis.h"

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

// Fills the address part of a joined record; without a row it is empty.
void LiesAdresse(CTAdr_Fields & ziel, const CString & sAdrNr) {
    ziel = CTAdr_Fields();
    const CAutoRSet<CTAdr> pAdr;
    if (pAdr->GetByAdrNr(sAdrNr) == 0) ziel = *pAdr;
}

} // namespace

CString CTKzv::RLP(const CString & sNr) {
    const CAutoRSet<CTKzv> pKzv;
    pKzv->m_KZVNR = sNr;
    return pKzv->GetByK1() == 0 && !Blank(pKzv->m_REGION) ? pKzv->m_REGION : TrimRight(sNr);
}

int CTMandant::GetValidMandant(const CString & sMd) {
    ModifyFilter([this] { return m_GELOESCHT != "1"; });
    return LiesMit(1, MATCH_ALLE, {sMd});
}

void CTMandantAdr::NachLesen() { LiesAdresse(*this, m_MDADRNR); }
void CTPersonalAdr::NachLesen() { LiesAdresse(*this, m_PERSADRNR); }

int CTLeb::GetValidLebs(const CString & sLeb) {
    ModifyFilter([this] { return m_GELOESCHT != "1"; });
    return LiesMit(1, MATCH_ALLE, {sLeb});
}

CString CTAdr::MakeFullName(FULLNAMECONST eForm) const {
    CString sName;
    const auto Haenge = [&sName](const CString & sTeil) {
        if (sTeil.IsEmpty()) return;
        if (!sName.IsEmpty()) sName += ' ';
        sName += sTeil;
    };
    if (eForm == FULLNAME_ANREDE) Haenge(m_PATANREDE);
    for (const CString * pTeil : {&m_PATTITEL, &m_PATVORNAME, &m_PATZUSATZ, &m_PATNAME})
        Haenge(*pTeil);
    return sName;
}

CString CTAdr::GetRufNummer(const CString & sFeld) { return CString(sFeld).Trim(); }
CString CTAdr::GetEMail(const CString & sFeld) { return CString(sFeld).Trim(); }

CString CTAdr::LoadPrioTelefon() const {
    const CString * const apKontakte[] = {&m_TELEFON1, &m_TELEFON2, &m_TELEFON3,
                                          &m_TELEFON4, &m_EMAIL,    &m_TELEFON6};
    const int iPrio = m_TELEFONPRIO.Erstes() - '0';
    return iPrio >= 1 && iPrio <= 6 ? GetRufNummer(*apKontakte[iPrio - 1]) : CString();
}

CDPw CTPunktWert::PwToBetrag(bool bWest) const { return CDPw(bWest ? m_PWWEST : m_PWOST); }

void CTParPool::VorZugriff() {
    if (!m_GRUPPE.IsEmpty() && m_GRUPPE.GetLength() < 3) m_GRUPPE = RightFix(m_GRUPPE, 3, ' ');
}

} // namespace orvostat
