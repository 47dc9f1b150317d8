#include "orvostatbs/records/Stammdaten.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

// The one letter of a text; 0 for any other length.
char EinBuchstabe(const CString & s) { return s.GetLength() == 1 ? s.Erstes() : char(0); }

bool IstModerneKasNr(const CString & sKasNr) { return sKasNr.GetLength() == 12; }

bool IstFremdkasse(const CKas & kas, const CString & sKzvNr) {
    if (IstModerneKasNr(kas.BKVKASNR)) return CTKzv::RLP(sKzvNr) != CTKzv::RLP(kas.BKVKASNR.Mid(1, 2));
    return IstFremdeStatistikart(EinBuchstabe(kas.KASSTATISTIKART));
}

char Kassengruppe(const CKas & kas) {
    if (IstModerneKasNr(kas.BKVKASNR) && kas.BKVKASNR.Erstes() != '0') return kas.BKVKASNR.Erstes();
    const char cStatistik = EinBuchstabe(kas.KASSTATISTIKART);
    if (IstStatistikartGrp1(cStatistik)) return '1';
    return IstStatistikartGrp2(cStatistik) ? '2' : '9';
}

// The special person group by region mark, from the time before the cards held it.
bool IstPersonengruppeNachWso(const CTVDesc & vdesc) {
    return vdesc.m_WSO == "9" && vdesc.m_VDABDATUM >= "20150101" &&
           (vdesc.m_VNACHWEIS == "j" || vdesc.m_VNACHWEIS == "n");
}

} // namespace

// ---- practice owner

void CMdStruct::Clear() { *this = CMdStruct(); }

void CMdStruct::MoveMd(CTMandantAdr * pMd) {
    m_sMdId = pMd->m_MDID;
    m_sMdName = pMd->m_MDNAME;
    m_sMdInfo = pMd->m_MDINFO;
    m_sMdCodes = pMd->m_MDCODES;
    m_sMdAdr1 = pMd->m_PATSTRASSE;
    m_sMdAdr2 = pMd->m_PATPLZ;
    m_sMdAdr3 = pMd->m_PATORT;
    m_sMdAdr4 = pMd->m_TELEFON1;
    m_sMdAdr4b = pMd->m_TELEFON1;
    m_sMdVollName = pMd->m_PATVORNAME + " " + pMd->m_PATNAME;
    m_sMdAb = pMd->m_MDAB;
    if (pMd->m_MDABAKTIV != "1")
        m_sMdAb.Empty();
    else if (m_sMdAb.IsEmpty())
        m_sMdAb = ERSTER_TAG;
}

// ---- treater

void CLebStruct::Clear() { *this = CLebStruct(); }

void CLebStruct::MoveLeb(const CTLeb * pLeb) {
    m_sLeb = pLeb->m_LEB;
    m_sLebAnr = pLeb->m_LEBANR;
    m_sPersId = pLeb->m_PID;
    m_sMdKasse = pLeb->m_MDKASSE;
    m_sMdPrivat = pLeb->m_MDPRIVAT;
    m_sProvision = pLeb->m_PROVISION;
    m_iAbschlagGOZ = Zahl(pLeb->m_ABSCHLAGGOZ);
    m_iAbschlagU = Zahl(pLeb->m_ABSCHLAGU);
    m_bLebKz = pLeb->m_LEBKZ == "1";
    m_sLebInfo = pLeb->m_LEBINFO;
}

void CLebStruct::MoveAdr(CTAdr_Fields * pAdr) {
    m_sLebName = pAdr->m_PATTITEL + " ";
    m_sLebName.TrimLeft();
    m_sLebName += pAdr->m_PATVORNAME + " ";
    m_sLebName.TrimLeft();
    if (!pAdr->m_PATZUSATZ.IsEmpty()) m_sLebName += pAdr->m_PATZUSATZ + " ";
    m_sLebName.TrimLeft();
    m_sLebName += pAdr->m_PATNAME;
}

CString CLebStruct::GetProvisionForGrp(int iGrp) const {
    if (iGrp < 1 || iGrp > m_sProvision.GetLength()) return {};
    return GetMidStr(m_sProvision, iGrp * 5 - 5, 5);
}

CString CLebStruct::GetLebLine() const {
    const CString sZeile = m_sLeb + "-" + m_sLebName;
    return m_sLebAnr.IsEmpty() ? sZeile : sZeile + " / " + m_sLebAnr;
}

// ---- insurance period

void CVDesc::Clear() { *this = CVDesc(); }

void CVDesc::MoveVDesc(CTVDesc * pVDesc) {
    PATNR = pVDesc->m_PATNR;
    m_sVDescNr = pVDesc->m_VDESCNR;
    VDABDATUM = pVDesc->m_VDABDATUM;
    VDBISDATUM = pVDesc->m_VDBISDATUM;
    EINLESEDATUM = pVDesc->m_EINLESEDATUM;
    KASKUERZEL = pVDesc->m_KASKUERZEL;
    VNACHWEIS = pVDesc->GetEEB() ? ElektronischerNachweis(pVDesc->m_VNACHWEIS) : pVDesc->m_VNACHWEIS;
    m_cSonderKsArt = pVDesc->m_KSART.Erstes();
    m_sVDescFeld = pVDesc->m_VDESCFELD;
    MFRDIG = pVDesc->m_MFRDIG;
    RSA = pVDesc->m_RSA;
    WSO = pVDesc->m_WSO;
    WSO_ERG = pVDesc->IsWsoOst() ? CString("9") : CString("1");
    m_sVDescExtra = pVDesc->m_VDESCEXTRA;
    m_bKostenerstattung = pVDesc->GetPrivateKostenerstattung();
    GEBUEHRENBEFREITBIS = pVDesc->m_GEBUEHRENBEFREITBIS;
    if (pVDesc->IsEGK()) {
        SEGKVersichertenstammdaten daten;
        if (StringToEGKVersichertenstammdaten(pVDesc->m_EGKDATEN, daten))
            BPG = daten.m_sBesonderePersonengruppe;
    } else if (IstPersonengruppeNachWso(*pVDesc)) {
        BPG = pVDesc->m_WSO;
    }
}

bool CVDesc::operator==(const CTVDesc * pVDesc) const {
    return PATNR == pVDesc->m_PATNR && KASKUERZEL == pVDesc->m_KASKUERZEL && MFRDIG == pVDesc->m_MFRDIG &&
           WSO == pVDesc->m_WSO && GleichesQuartal(VDABDATUM, pVDesc->m_VDABDATUM);
}

bool CVDesc::IsPrivat() const { return IstPrivatNachweis(VNACHWEIS); }

// ---- bill

void CBill::Clear() { *this = CBill(); }

void CBill::MoveBill(CTBill * pBill) {
    const char cArt = pBill->m_ABRART.Erstes();
    m_marke.Loese();
    PATNR = pBill->m_PATNR;
    PATBILL = pBill->m_PATBILL;
    PRAXISNR = pBill->m_PRAXISNR;
    ABRART = AbrArtDerRechnung(cArt);
    KASSENABR = IstKassenRechnung(cArt);
    m_bAbrArtE = ABRART == 'e';
    m_sKennung1 = pBill->m_KENNUNG1;
    m_sFakt2 = pBill->m_FAKT2;
    m_sFakt2Alt = pBill->m_FAKT2ALT;
    m_sKKFakt = pBill->m_KKFAKT;
    m_sKennung2 = pBill->m_KENNUNG2;
    m_sFakt1 = pBill->m_FAKT1;
    m_sFakt1Alt = pBill->m_FAKT1ALT;
    PLANNR = pBill->m_PLANNR;
    m_sBillInfo1 = pBill->m_BILLINFO1;
    m_sBillInfo2 = pBill->m_BILLINFO2;
}

bool CBill::IsAltAbrechnung() const { return IstAltMarke(m_sFakt2Alt) || IstAltMarke(m_sFakt1Alt); }

bool CBill::IsAbgerechnet() const { return !m_sFakt2.IsEmpty() || !m_sFakt1.IsEmpty() || IsAltAbrechnung(); }

// ---- insurer

void CKas::Clear() { *this = CKas(); }

void CKas::MoveKas(CTOrvoKas * pKas, CString sKzvNr) {
    KASKUERZEL = pKas->m_KASKUERZEL;
    m_sKasFeld0 = pKas->m_KASFELD0;
    m_sGueltigAb = pKas->m_GUELTIGAB;
    m_bKasKz = pKas->m_KASFLAG1 == "1";
    KASSENPWGRP = pKas->m_KASSENPWGRP;
    m_sKasIk = pKas->m_KASIK;
    BKVKASNR = pKas->m_BKVKASNR;
    KASSENART = pKas->m_KASSENART;
    m_sKasFeld1 = pKas->m_KASFELD1;
    m_sKasFeld2 = pKas->m_KASFELD2;
    m_sKasSort = pKas->m_KASSORT.IsEmpty() ? KASKUERZEL : pKas->m_KASSORT;
    KASSTATISTIKART = pKas->m_KASSTATISTIKART;
    KASMEDSTATISTIKART = pKas->m_KASMEDSTATISTIKART;
    m_iKasFlag2 = static_cast<unsigned char>(pKas->m_KASFLAG2.Erstes());
    m_cKasKz = pKas->m_KASKZ.Erstes();
    FREMDKASSE = IstFremdkasse(*this, sKzvNr);
    KASSENGRP = static_cast<unsigned char>(Kassengruppe(*this));
}

bool CKas::operator==(const CTOrvoKas * pKas) const {
    return KASKUERZEL == pKas->m_KASKUERZEL && m_sGueltigAb == pKas->m_GUELTIGAB &&
           m_bKasKz == (pKas->m_KASFLAG1 == "1") && KASSENPWGRP == pKas->m_KASSENPWGRP &&
           BKVKASNR == pKas->m_BKVKASNR && KASSENART == pKas->m_KASSENART &&
           m_sKasFeld1 == pKas->m_KASFELD1 && m_sKasFeld2 == pKas->m_KASFELD2 &&
           KASSTATISTIKART == pKas->m_KASSTATISTIKART && KASMEDSTATISTIKART == pKas->m_KASMEDSTATISTIKART;
}

// ---- point value, its group, entry of a select pool

void CPw::Clear() { *this = CPw(); }

void CPw::MovePw(CTPunktWert * pPw) {
    m_sPwGrp = pPw->m_PWGRP;
    m_cPwLArt = pPw->m_PWLART.Erstes();
    m_sPwAb = pPw->m_PWAB;
    m_PwWest = pPw->PwToBetrag(true);
    m_PwOst = pPw->PwToBetrag(false);
    m_sPwInfo = pPw->m_PWINFO;
}

void CPwGrp::Clear() { *this = CPwGrp(); }

void CPwGrp::MovePw(CTPwGroup * pGrp) {
    m_sPwGrp = pGrp->m_PWGRP;
    m_sPwGrpName = pGrp->m_PWGRPNAME;
}

void CSPData::Clear() { *this = CSPData(); }

void CSPData::MoveSP(const SSelectPool * pSP) {
    m_sKey = pSP->m_sKey;
    m_sText = pSP->m_sText;
    m_sExtra = pSP->m_sExtra;
}

} // namespace orvostat
