#include "orvostatbs/records/Gebuehr.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/Umgebung.h"

namespace orvostat {

namespace {

CString Kleinschrift(CString s) { return s.MakeLower(); }

// The check row's audit minutes, for the day as well only where it says so.
void NimmPruefzeit(CGOStruct & go, const CString & sCheck) {
    if (sCheck.GetLength() < 10) return;
    const int iMinuten = Zahl(sCheck.Mid(1, 6));
    const char cArt = sCheck[9];
    if (cArt == '2' || cArt == '3') go.m_iPruefZeitQ = iMinuten;
    if (cArt == '3') go.m_iPruefZeitT = iMinuten;
}

void NimmWerte(CGOStruct & go, const CTGO & row) {
    if (IstAlternativArt(go.m_cGoArt)) {
        go.m_iPunkte2 = Zahl(row.m_GOWERT2);
        go.m_iPunkte3 = Zahl(row.m_GOWERT3);
        go.m_iPunkte4 = Zahl(row.m_GOWERT4);
    } else {
        go.m_EinfachsatzV = CDBetrag(row.m_GOWERT2);
    }
    if (row.m_GOART != "u") go.m_Zuschlag = CDBetrag(row.m_ZUSCHLAG);
    go.m_Betrag2 = CDBetrag(row.m_BETRAG2);
    go.m_Einfachsatz = CDBetrag(row.m_EINFACHSATZ);
    go.m_iGebPkt = Zahl(row.m_GEBPKT);
}

} // namespace

void CGOStruct::Clear() { *this = CGOStruct(); }

void CGOStruct::MoveGO(CTGO * pGO, bool, CTGoCheck * pCheck) {
    m_sLst = pGO->m_LSTNR;
    m_sKuerzel = pGO->m_LSTKUERZEL;
    m_sLstLower = Kleinschrift(m_sLst);
    m_sKuerzelLower = Kleinschrift(m_sKuerzel);
    m_cGoArt = pGO->m_GOART.Erstes();
    m_cGoSubArt = pGO->m_GOSUBART.Erstes();
    m_sDruckbild = pGO->m_DRUCKBILD;
    m_cPwLArt = pGO->m_PWLART.Erstes();
    m_cStatArt = pGO->m_STATART.Erstes();
    m_sGoFeld1 = pGO->m_GOFELD1;
    m_sGoFeld2 = pGO->m_GOFELD2;
    m_sGoFeld3 = pGO->m_GOFELD3;
    NimmWerte(*this, *pGO);
    m_iF100AEV = Zahl(pGO->m_F100AEV());
    m_cGoKz = pGO->m_GOKZ.Erstes();
    m_sGoText = pGO->m_GOTEXT;
    m_sGoWert3Text = pGO->m_GOWERT3;

    if (pCheck != nullptr && pCheck->GetByExtraFlag(pGO->m_GOART, pGO->m_LSTNR, 'p') == 0)
        NimmPruefzeit(*this, pCheck->m_CHECKTEXT);
    m_sStdFaktor = pGO->m_STDFAKTOR;
    m_sFaktor = Zahl(pGO->m_FAKTOR) == 0 ? pGO->m_STDFAKTOR : pGO->m_FAKTOR;
    m_sProvGrp = BildeBild(pGO->m_F100AEV(), "ZX");
}

int CGOStruct::GetGebPkt(const CString & sDatum) const {
    return CTGO::GetGebPkt(m_cGoArt, m_sLst, m_iGebPkt, sDatum);
}

bool GetGOPosLstNr(const CString & sKuerzel, const char * pGoArt, CString & sLst) {
    if (sKuerzel.IsEmpty() || pGoArt == nullptr || *pGoArt == 0) return false;
    const CAutoRSet<CTGO> pGO;
    pGO->SetKey(2);
    pGO->m_GOART = CString(*pGoArt);
    pGO->m_LSTKUERZEL = sKuerzel;
    sLst.Empty();
    if (pGO->GetByK2(MATCH_GENAU) != 0) return false;
    sLst = pGO->m_LSTNR;
    return true;
}

int SucheGO(char cGoArt, void * pEltern, void * pSuche, int iArt) {
    using CSuche = int(char, void *, void *, int);
    const bool bGebuehr = cGoArt == 0 || IstPunktArt(cGoArt) || IstPrivatArt(cGoArt);
    CSuche * pFunktion = LadeFunktionAls<CSuche>("orvogo", bGebuehr ? "SucheGebuehr"_t : "SucheBEL"_t);
    return pFunktion == nullptr ? 0 : pFunktion(cGoArt, pEltern, pSuche, iArt);
}

void SucheLstStructGoArten(CWPFMatrixBase &) {}

} // namespace orvostat
