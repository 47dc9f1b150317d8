#include "orvostatbs/records/BehHitLine.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/host/detail/Reihenfolge.h"
#include "orvostatbs/records/Gebuehr.h"
#include "orvostatbs/records/Stammdaten.h"

#include <utility>

namespace orvostat {

namespace {

constexpr int BEFUND_LAENGE = 33;

// Splits a stored quantity: one character of the unit, behind it the hundredths; no number means one.
void NimmMenge(CBehHitLine & hit, const CString & sMenge) {
    hit.EINHEIT = sMenge.Left(1);
    hit.ANZAHL = Zahl(sMenge.Mid(1));
    if (hit.ANZAHL == 0) hit.ANZAHL = 100;
}

// An invoice reference: the number, else the old marker, else what was there.
void NimmFakt(CString & sFakt, const CString & sNummer, const CString & sAltMarke) {
    if (!sNummer.IsEmpty())
        sFakt = sNummer;
    else if (CBill::IstAltMarke(sAltMarke))
        sFakt = sAltMarke;
}

constexpr CBuchstaben HatAbschlagKz{"stnv"}; // of ICDNOTATIONSKZ
constexpr CBuchstaben HatAbschlagGOZ{"pqa"};

char StatistikartVonGO(const CBehHitLine & hit, char cStatArt) {
    const SAbrechnungsart * pArt = cStatArt == 'x' ? FindeBuchstabe(ABRECHNUNGSARTEN, hit.ABRART) : nullptr;
    return pArt == nullptr ? cStatArt : pArt->cStatArt;
}

char PwLArtVonGO(const CBehHitLine & hit, char cPwLArt) {
    if (BehaeltPwLArt(cPwLArt)) return cPwLArt;
    if (IstKfoAbrArt(hit.ABRART) && IstKassenArt(hit.GOART) && !IstKGSachLeistung(hit.GOART, hit.GOSUBART) &&
        IstKfoPwLArt(cPwLArt))
        return cPwLArt;
    const SAbrechnungsart * pArt = FindeBuchstabe(ABRECHNUNGSARTEN, hit.ABRART);
    return pArt == nullptr ? cPwLArt : pArt->cPwLArt;
}

// Rates or points, by the kind of the row.
void NimmBewertung(CBehHitLine & hit, const CGOStruct & go) {
    const bool bPunktGoz = go.m_cGoSubArt == '1' && IstGozArt(go.m_cGoArt);
    if (go.m_cGoArt == 'q' && bPunktGoz) {
        hit.PUNKTE = go.GetGebPkt(hit.DATUM);
    } else if (IstPrivatArt(go.m_cGoArt)) {
        const char cWaehrung = hit.DATUM < "20020101" ? ' ' : 'e';
        hit.EINFACHSATZ = CTGO::EinfachsatzToW(go.m_Einfachsatz, bPunktGoz, cWaehrung);
        hit.m_EinfachsatzV = CTGO::EinfachsatzToW(go.m_EinfachsatzV, false, cWaehrung);
    } else if (IstPunktArt(go.m_cGoArt)) {
        hit.PUNKTE = go.GetGebPkt(hit.DATUM);
        hit.m_iPunkte2 = go.m_iPunkte2;
        hit.m_iPunkte3 = go.m_iPunkte3;
        hit.m_iPunkte4 = go.m_iPunkte4;
    } else if (IstLaborArt(go.m_cGoArt)) {
        hit.GOSTATISTIKART = go.m_cGoArt;
    }
}

// The name as the hits show it.
CString GrosserName(const CString & sName, const CString & sVorname) {
    CString sErgebnis = sName + " " + sVorname;
    sErgebnis.MakeUpper();
    int iAnfang = 0;
    while (sErgebnis[iAnfang] == ' ')
        ++iAnfang;
    return sErgebnis.Mid(iAnfang);
}

// A code of up to two characters into the text of codes.
void SetzeKuerzel(CString & sZiel, const CString & sKuerzel, int iPos) {
    for (int i = 0; i < 2 && i < sKuerzel.GetLength(); ++i)
        sZiel.SetAt(iPos + i, sKuerzel[i]);
}

// What both kinds of laboratory entries of a denture plan have.
template <class TEntry> void NimmPlanEntry(CBehHitLine & hit, const TEntry & entry, const CString & sArt) {
    hit.DATUM = entry.m_DATUM;
    hit.BEHANDLERNR = entry.m_BEHANDLERNR;
    hit.CHARGENNUMMER = entry.m_CHARGE;
    hit.LSTIN = entry.m_LSTNR;
    hit.LSTNR = entry.m_LSTNR;
    NimmMenge(hit, entry.m_ANZAHL);
    hit.BETRAG = CDBetrag(entry.m_BETRAG);
    hit.BETRAG.MalBruch(hit.ANZAHL, 100);
    hit.ABRART = 'z';
    hit.GOART = sArt.Erstes();
    if (Zahl(entry.m_LBLNR) != 0) hit.m_sLblNr = entry.m_LBLNR;
}

template <class TBlock> void NimmBlock(CBehHitLine & hit, const TBlock & block) {
    hit.PATNR = block.m_PATNR;
    hit.PLANNR = block.m_PLANNR;
    hit.LFDLBLOCK = block.m_LFDLBLOCK;
    hit.BEHANDLERNR = block.m_BEHANDLERNR;
    hit.DATUM = block.m_DATUM;
    hit.PRAXISNR = block.m_PRAXISNR;
}

} // namespace

// Flattened, so that the compiler sees the fresh object's words and all that is left of an assignment is a store.
[[gnu::flatten]] void CBehHitLine::Clear() {
    const CBehHitLine frisch;
    CString sBefundKuerzel(std::move(m_sBefundKuerzel));
    *this = frisch;
    m_sBefundKuerzel = std::move(sBefundKuerzel);
}

// ---- the entry

void CBehHitLine::MoveBeh(const CTBeh * pBeh) {
    Verlange(!m_bMitEintrag,
             "MoveBeh is called for a hit that holds an entry: Clear comes before the next one.");
    m_bMitEintrag = true;
    PATNR = pBeh->m_PATNR;
    DATUM = pBeh->m_DATUM;
    TEETH = pBeh->m_TEETH;
    LSTIN = pBeh->m_LSTIN;
    LSTNR = pBeh->m_LSTNR;
    BEHANDLERNR = pBeh->m_BEHANDLERNR;
    FAKTOR = pBeh->m_FAKTOR;
    LAGE = pBeh->m_LAGE;
    UHRZEIT = pBeh->m_UHRZEIT;
    ICDCODE = pBeh->m_ICDCODE;
    ERFASSER = pBeh->m_ERFASSER;
    LFDBEHEINTRAG = pBeh->m_LFDBEHEINTRAG;
    ENTFERNUNG = pBeh->m_ENTFERNUNG;
    LFDLBLOCK = pBeh->m_LFDLBLOCK;
    LFDBEFENTRY = pBeh->m_LFDBEFENTRY;
    PATBILL = pBeh->m_PATBILL;
    m_sBehInfo = pBeh->m_BEHINFO;
    NimmMenge(*this, pBeh->m_ANZAHL);
    BETRAG = CDBetrag(pBeh->m_BETRAG);
    GOART = pBeh->m_GOART.Erstes();
    DTAGRUND = pBeh->m_DTAGRUND.Erstes();
    ICDNOTATIONSKZ = pBeh->m_ICDNOTATIONSKZ.Erstes();
    ABRMERKMAL = pBeh->m_ABRMERKMAL.Erstes();
    m_cBehKz = pBeh->m_BEHKZ.Erstes();
    SITZUNG = pBeh->m_SITZUNG.IsEmpty() ? ' ' : pBeh->m_SITZUNG.Erstes();
    if (pBeh->m_TEXTART != "c") {
        TEXT = pBeh->m_TEXT;
        TEXTART = pBeh->m_TEXTART.Erstes();
    }
    if (TEXT.IsEmpty()) TEXTART = 0;
    MWSTSATZ = UStKey2MwStSatz(pBeh->m_USTKEY);
    CHARGENNUMMER = Trim(pBeh->GetCharge());
    m_sAbrJJME = pBeh->GetAbrJJME();
}

void CBehHitLine::MoveLst2BehKey1(CTBeh * pBeh) const {
    pBeh->m_PATNR = PATNR;
    pBeh->m_DATUM = DATUM;
    pBeh->m_SITZUNG = SITZUNG == 0 ? CString() : CString(SITZUNG);
    pBeh->m_LFDBEHEINTRAG = LFDBEHEINTRAG;
}

void CBehHitLine::MoveMdId(const CString & sMdKasse, const CString & sMdPrivat) {
    PRAXISNR = KASSENABR ? sMdKasse : sMdPrivat;
}

void CBehHitLine::MovePatName(const CString & sName, const CString & sVorname) {
    if (sName != s_patname.sName || sVorname != s_patname.sVorname)
        s_patname = {sName, sVorname, GrosserName(sName, sVorname)};
    PATNAME = s_patname.sErgebnis;
}

// ---- bill, insurance, fee row, money

void CBehHitLine::MoveBill(const CBill & bill) {
    PATBILL = bill.PATBILL;
    PRAXISNR = bill.PRAXISNR;
    ABRART = bill.ABRART;
    KASSENABR = bill.KASSENABR;
    if (IsKasZu())
        KASSENABR = true;
    else if (IstPrivatArt(GOART) && m_cBehKz != '0')
        KASSENABR = false;
    m_bAbrArtE = bill.m_bAbrArtE;
    PLANNR = bill.PLANNR;
    if (IsKKGebEnt()) {
        FAKT1 = bill.m_sKKFakt;
    } else {
        NimmFakt(FAKT2, bill.m_sFakt2, bill.m_sFakt2Alt);
        NimmFakt(FAKT1, bill.m_sFakt1, bill.m_sFakt1Alt);
    }
    m_sAbrKennung = bill.KASSENABR ? bill.m_sKennung1 : bill.m_sKennung2;
    m_sBillInfo1 = bill.m_sBillInfo1;
    m_sBillInfo2 = bill.m_sBillInfo2;
}

void CBehHitLine::MoveVDesc(const CVDesc & vdesc) {
    KASKUERZEL = vdesc.KASKUERZEL;
    m_sAbrKennung = vdesc.m_sVDescNr;
    VDABDATUM = vdesc.VDABDATUM;
    VDBISDATUM = vdesc.VDBISDATUM;
    MFRDIG = vdesc.MFRDIG;
    WSO = vdesc.WSO.IsEmpty() ? CString("1") : vdesc.WSO;
    WSO_ERG = vdesc.WSO_ERG.IsEmpty() ? CString("1") : vdesc.WSO_ERG;
    RSA = vdesc.RSA;
    VNACHWEIS = vdesc.VNACHWEIS;
    EINLESEDATUM = vdesc.EINLESEDATUM;
    m_cSonderKsArt = vdesc.m_cSonderKsArt;
    GEBUEHRENBEFREITBIS = vdesc.GEBUEHRENBEFREITBIS;
    BPG = vdesc.BPG;
}

void CBehHitLine::MoveKas(const CKas & kas) {
    KASSTATISTIKART = kas.KASSTATISTIKART;
    KASMEDSTATISTIKART = kas.KASMEDSTATISTIKART;
    KASSENART = kas.KASSENART;
    KASSENPWGRP = kas.KASSENPWGRP;
    KASSENGRP = static_cast<char>(kas.KASSENGRP);
    FREMDKASSE = kas.FREMDKASSE;
    m_cKasKz = kas.m_cKasKz;
}

void CBehHitLine::MoveLeb(const CLebStruct & leb) {
    if (!HatAbschlagKz(ICDNOTATIONSKZ)) return;
    if (HatAbschlagGOZ(GOART))
        m_iLebAbschlag = leb.m_iAbschlagGOZ;
    else if (GOART == 'u')
        m_iLebAbschlag = leb.m_iAbschlagU;
}

void CBehHitLine::MoveGO(const CGOStruct & go) {
    LSTNR = go.m_sLst;
    LSTKUERZEL = go.m_sKuerzel;
    NimmBewertung(*this, go);
    GOSUBART = go.m_cGoSubArt;
    DRUCKBILD = go.m_sDruckbild;
    ZUSCHLAG = go.m_Zuschlag;
    ZUSCHLAG.MalBruch(ANZAHL, 100);
    F100AEV = go.m_iF100AEV;
    PRUEFZEITT = go.m_iPruefZeitT;
    PRUEFZEITQ = go.m_iPruefZeitQ;
    m_cGoKz = go.m_cGoKz;
    m_sGoText = go.m_sGoText;
    if (FAKTOR.IsEmpty()) FAKTOR = go.m_sFaktor;
    PROVISONSGRP = go.m_sProvGrp.IsEmpty() ? CString(" 0") : go.m_sProvGrp;
    if ((IstPrivatArt(GOART) || IstPunktArt(GOART)) && go.m_cStatArt != 0)
        GOSTATISTIKART = StatistikartVonGO(*this, go.m_cStatArt);
    PWLART = PwLArtVonGO(*this, go.m_cPwLArt);
}

void CBehHitLine::MovePw(const CPw & pw) {
    if (!IstPunktArt(GOART)) return;
    PUNKTWERT = CTVDesc::IsWsoOst(WSO_ERG, DATUM) ? pw.m_PwOst : pw.m_PwWest;
}

void CBehHitLine::MoveProvision(const CLebStruct & leb) {
    const int iGrp = Zahl(PROVISONSGRP);
    if (iGrp > 0) PROVISONSWERT = Zahl(leb.GetProvisionForGrp(iGrp));
}

CString CBehHitLine::GetMFR_OW() const {
    const int iStand = Zahl(MFRDIG);
    const CString sStand = iStand == 1 ? "M" : iStand == 3 ? "F" : iStand == 5 ? "R" : "";
    return sStand.IsEmpty() && WSO.IsEmpty() ? CString() : sStand + "/" + WSO;
}

// ---- finding

void CBehHitLine::MoveBefund(CTABefund * pBefund) {
    BEFUND = pBefund->m_BEFUND;
    if (BEFUND.GetLength() < BEFUND_LAENGE) BEFUND = LeftFix(BEFUND, BEFUND_LAENGE);
    ZAHNSTEIN = pBefund->m_ZAHNSTEIN.Find('1') >= 0 ? CString("1") : CString("0");
    MUNDKRANKHEIT = pBefund->m_MUNDKRANKHEIT;
}

void CBehHitLine::Befund2Kuerzel(CBefunde & befunde, int iBefund, int iPos) {
    CString sBefund, sKuerzel;
    befunde.Befund2Kuerzel(iBefund, sBefund, sKuerzel);
    SetzeKuerzel(m_sBefundKuerzel, sKuerzel, iPos);
}

void CBehHitLine::Befund2Kuerzel2(CBefunde & befunde, int iBefund, int iPos) {
    CString sBefund, sKuerzel;
    befunde.Befund2Kuerzel(iBefund, sBefund, sKuerzel);
    if (sKuerzel.IsEmpty()) return;
    BEFUND.SetAt(iPos / 2, sBefund.IsEmpty() ? ' ' : sBefund.Erstes());
    SetzeKuerzel(m_sBefundKuerzel, sKuerzel, iPos);
}

// ---- entries that are no treatments

void CBehHitLine::MoveZEKasseLBlockEntry(const CTLBlockEntry & entry) {
    NimmPlanEntry(*this, entry, entry.m_LBLOCKENTRYART);
    PATNR = entry.m_PATNR;
    TEETH = entry.m_TEETH;
    FAKTOR = entry.m_FAKTOR;
    PLANNR = entry.m_PLANNR;
}

void CBehHitLine::MoveZEKasseGLBlocEntry(const CTGLBlocEntry & entry) {
    NimmPlanEntry(*this, entry, entry.m_GLBLOCENTRYART);
}

void CBehHitLine::MoveLBlock(const CTLBlock * pLBlock) {
    NimmBlock(*this, *pLBlock);
    ISELAB = true;
    ISORVOPAT = true;
}

void CBehHitLine::MoveGLBloc(const CTGLBloc * pGLBloc) {
    NimmBlock(*this, *pGLBloc);
    ISELAB = false;
    ISORVOPAT = !pGLBloc->m_PATREF.IsEmpty();
}

void CBehHitLine::MoveFakt(const CTFakt * pFakt) {
    PATNR = pFakt->m_PATNR;
    DATUM = pFakt->m_DATUM;
}

void CBehHitLine::MoveRoeBuch(const CTRoeBefund * pRoe) {
    ROEGRAV = pRoe->m_ROEGRAV;
    ROEANZAHL = pRoe->m_ROEANZAHL;
    ROEGERAET = pRoe->m_ROEGERAET;
    ROEXRAYMS = pRoe->m_ROEXRAYMS;
    ROEXRAYCURRENT = pRoe->m_ROEXRAYCURRENT;
    ROEXRAYVOLTAGE = pRoe->m_ROEXRAYVOLTAGE;
    ROEBELICHTUNG = pRoe->m_ROEBELICHTUNG;
    ROEINDIKATION = pRoe->m_ROEINDIKATION;
    ROEBEMERKUNG = pRoe->m_ROEBEMERKUNG;
    ROELFDNR = pRoe->m_ROELFDNR;
    ROELASTDATUM = pRoe->m_ROELASTDATUM;
    ROELASTREGIO = pRoe->m_ROELASTREGIO;
    ROELASTPASSDRUCK = pRoe->m_ROELASTPASSDRUCK;
    PRAXISID = pRoe->m_PRAXISID;
}

} // namespace orvostat
