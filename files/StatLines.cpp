#include "orvostatbs/files/StatLines.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <type_traits>

namespace orvostat {

namespace {

// ---- the conversions, chosen by the types of the line's field and of the record's

void Setze(CString & sLinie, const CString & s) { sLinie = s; }
void Setze(char & cLinie, char c) { cLinie = c; }
void Setze(int & iLinie, char c) { iLinie = c; }
void Setze(bool & bLinie, bool b) { bLinie = b; }
void Setze(unsigned long & iLinie, std::uint32_t i) { iLinie = i; }
void Setze(CString & sLinie, std::int32_t i) {
    sLinie = i >= 0 && i <= 9 ? CString(static_cast<char>('0' + i)) : itoc(i);
}
void Setze(CString & sLinie, char c) { sLinie = c == 0 ? CString() : CString(c); }
void Setze(CString & sLinie, bool b) { sLinie = b ? CString("1") : CString("0"); }
void Setze(CString & sLinie, const CDBetrag & betrag) {
    sLinie = betrag.IsEmpty() ? CString() : betrag.ToDb(0, false, false, 0.0, 0.0);
}
void SetzeMitVorzeichen(CString & sLinie, const CDBetrag & betrag) {
    sLinie = betrag.IsEmpty() ? CString() : betrag.ToDb(0, true, false, 0.0, 0.0);
}
void Setze(CString & sLinie, const CDPw & pw) { sLinie = pw.IsEmpty() ? CString() : CString(pw); }
void Setze(CString & sLinie, const CVzW7Betrag & betrag) { sLinie = betrag; }

void Hole(CString & s, const CString & sLinie) { s = sLinie; }
void Hole(char & c, char cLinie) { c = cLinie; }
void Hole(char & c, int iLinie) { c = static_cast<char>(iLinie); }
void Hole(bool & b, bool bLinie) { b = bLinie; }
void Hole(std::uint32_t & i, unsigned long iLinie) { i = static_cast<std::uint32_t>(iLinie); }
void Hole(std::int32_t & i, const CString & sLinie) {
    const char c = sLinie.Erstes();
    if (sLinie.IsEmpty())
        i = 0;
    else
        i = sLinie.GetLength() == 1 && ismxdigit(c) ? c - '0' : Zahl(sLinie);
}
void Hole(char & c, const CString & sLinie) { c = sLinie.Erstes(); }
void Hole(bool & b, const CString & sLinie) { b = sLinie == "1"; }
void Hole(CDBetrag & betrag, const CString & sLinie) {
    betrag = sLinie.IsEmpty() ? CDBetrag() : CDBetrag(sLinie);
}
void Hole(CDPw & pw, const CString & sLinie) { pw = sLinie.IsEmpty() ? CDPw() : CDPw(sLinie); }
void Hole(CVzW7Betrag & betrag, const CString & sLinie) { betrag = CVzW7Betrag(sLinie); }

// ---- search criteria: "[service|kind|number|tooth|tooth]", one behind the other

CString Suchtext(const std::vector<CQueryTeeth> & vKriterien) {
    CString s;
    for (const CQueryTeeth & kriterium : vKriterien) {
        s += "[" + kriterium.m_sQuery1 + "|" + kriterium.m_sQuery2 + "|" + itoc(kriterium.m_iQuery);
        for (const CString & sZahn : kriterium.m_vTeeth)
            s += "|" + sZahn;
        s += ']';
    }
    return s;
}

// Takes the part in front of the next "|" off the text, which becomes null behind its last part.
CString NimmTeil(std::string_view & s) {
    const auto iStrich = s.find('|');
    const CString sTeil(s.substr(0, iStrich));
    s = iStrich == std::string_view::npos ? std::string_view() : s.substr(iStrich + 1);
    return sTeil;
}

void LiesSuchtext(std::string_view s, std::vector<CQueryTeeth> & vKriterien) {
    constexpr auto KEINE = std::string_view::npos;
    while (true) {
        const auto iAuf = s.find('[');
        const auto iStrich = s.find('|');
        const auto iZu = s.find(']');
        if (iAuf == KEINE || iStrich == KEINE || iZu == KEINE || iStrich < iAuf || iZu < iStrich) return;
        std::string_view sRest = s.substr(iAuf + 1, iZu - iAuf - 1);
        CQueryTeeth & kriterium = vKriterien.emplace_back();
        kriterium.m_sQuery1 = NimmTeil(sRest);
        kriterium.m_sQuery2 = NimmTeil(sRest);
        if (sRest.data() != nullptr) kriterium.m_iQuery = Zahl(NimmTeil(sRest));
        while (sRest.data() != nullptr)
            kriterium.m_vTeeth.push_back(NimmTeil(sRest));
        s.remove_prefix(iZu + 1);
    }
}

} // namespace

// ---- what travels, for each record once

// clang-format off
#define HIT(T) \
    T(PRAXISNR) T(BEHANDLERNR) T(PATNR) T(DATUM) T(TEETH) T(EINHEIT) T(LSTIN) T(LSTNR) T(TEXT) T(FAKTOR) \
    T(ABRART) T(GOART) T(LAGE) T(UHRZEIT) T(DTAGRUND) T(ICDCODE) T(ICDNOTATIONSKZ) T(ERFASSER) T(PLANNR) \
    T(FAKT1) T(FAKT2) T(ABRMERKMAL) T(KASSENABR) T(ENTFERNUNG) T(SITZUNG) T(LFDBEHEINTRAG) T(LSTKUERZEL) \
    T(GOSUBART) T(DRUCKBILD) T(LFDBEFENTRY) T(ZAHNSTEIN) T(MUNDKRANKHEIT) T(KASKUERZEL) T(VDABDATUM) \
    T(VDBISDATUM) T(MFRDIG) T(WSO) T(EINLESEDATUM) T(PWLART) T(KASSENPWGRP) T(KASSTATISTIKART) \
    T(KASMEDSTATISTIKART) T(KASSENART) T(BEFUND) T(RSA) T(VNACHWEIS) T(PROVISONSGRP) T(KASSENGRP) \
    T(LFDLBLOCK) T(MATBUCHUNG) T(DMBETRAG) T(GESBETRAG) T(ENDGEWICHT) T(SCHLEIFRESTE) T(SCHLEIFRESTEGES) \
    T(PREISOMWST) T(BESTANDOSR) T(ROEGRAV) T(ROEANZAHL) T(ROEGERAET) T(ROEXRAYMS) T(ROEXRAYCURRENT) \
    T(ROEXRAYVOLTAGE) T(ROEBELICHTUNG) T(ROEINDIKATION) T(ROEBEMERKUNG) T(ROELFDNR) T(ROELASTDATUM) \
    T(ROELASTREGIO) T(ROELASTPASSDRUCK) T(ISELAB) T(ISORVOPAT) T(PATBILL) T(TASCHENTIEFED) T(TASCHENTIEFEM) \
    T(TASCHENTIEFEF) T(TASCHENTIEFEO) T(TASCHENTIEFED2) T(TASCHENTIEFEM2) T(GEBUEHRENBEFREITBIS) T(PRAXISID) \
    T(BPG) T(CHARGENNUMMER) T(ANZAHL) T(PUNKTE) T(MWSTSATZ) T(F100AEV) T(PRUEFZEITT) T(PRUEFZEITQ) \
    T(PROVISONSWERT) T(EINFACHSATZ) T(PUNKTWERT) T(TEXTART) T(GOSTATISTIKART) T(FREMDKASSE) T(ISPRIVATPATIENT)
#define PAT(T) \
    T(PATNR) T(SELEKTION) T(PATTITEL) T(PATVORNAME) T(PATZUSATZ) T(PATGEBDATUM) T(PATNAME) T(PATORT) T(PATPLZ) \
    T(PATSTRASSE) T(PATTELEFON) T(TELEFONPRIO) T(PATEMAIL) T(GESCHLECHT) T(EINTRDATUM) T(RISIKOANAMNESE) \
    T(RECALLART) T(RECALLITV) T(LASTRECALL) T(UEBERWARZT) T(HAUSARZT) T(LASTBEHDATUM) T(BENACHRICHTIGUNG) \
    T(FRUEHERENAMEN) T(FRUCHT) T(PATANREDE) T(INDEXMARKERS) T(BEHDAUER)
#define FEHLER(T) \
    T(PATNR) T(DATUM) T(LSTIN) T(SITZUNG) T(LFDBEHEINTRAG) T(KASKUERZEL) T(MFRDIG) T(WSO) T(GOART)
#define KAS(T) T(KASKUERZEL) T(BKVKASNR) T(KASSENART) T(KASSTATISTIKART) T(KASMEDSTATISTIKART)
#define GIPS(T) \
    T(GIPSNR) T(PATNR) T(DATUM) T(GIPSART) T(BEHANDLERNR) T(BESCHREIBUNG) T(PATNAME) T(PATVORNAME) T(PATTITEL) \
    T(PATZUSATZ) T(PATGEBDATUM) T(ARCHIVIERT) T(GEDRUCKT)
#define RECH(T) \
    T(PRAXISNR) T(PATNR) T(PATNAME) T(PATVORNAME) T(FAKT1) T(FORTLFDJAHR) T(FORTLFDFAKT) T(DATUM) T(FORMULARNR) \
    T(STORNIERT) T(MAHNSTUFE) T(KTRAEGER) T(KASKUERZEL) T(PATTELEFON) T(BEHANDLERNR) T(CASHDATUM) \
    T(ZAHLUNGSWEGDESC) T(RECHBETRAG) T(RECHBETRAGK) T(HONORAR) T(HONMWSTBETRAG) T(ELABGESAMT) T(FLABGESAMT) \
    T(ELABMWSTBETRAG) T(BEGLICHEN) T(AUSGEBUCHT)
#define GB(T) \
    T(PRAXISNR) T(BEHANDLERNR) T(PATNR) T(DATUM) T(LSTNR) T(TEXT) T(ABRMERKMAL) T(GOART) T(SITZUNG) \
    T(LFDBEHEINTRAG) T(LSTKUERZEL) T(MATBUCHUNG) T(DMBETRAG) T(GESBETRAG) T(ENDGEWICHT) T(SCHLEIFRESTE) \
    T(SCHLEIFRESTEGES) T(PREISOMWST) T(BESTANDOSR) T(PLANNR) T(LABORKUNDE) T(LFDGLBLOC) T(ISORVOPAT) T(RECART)
#define GLAB(T) \
    T(PRAXISNR) T(LABORKUNDE) T(LFDGLKUFAKT) T(FAKTDATUM) T(VONDATUM) T(BISDATUM) T(ANZGLBLOCKS) T(BEGLICHEN) \
    T(SKONTOPROZENT) T(STORNIERT) T(TECHNLST) T(MATERIAL) T(METALL) T(PRAXMAT) T(USTGES) T(NETTO) T(GESAMT)
// clang-format on

#define HIN(TITEL) Setze(TITEL, satz.TITEL);
#define HER(TITEL) Hole(satz.TITEL, TITEL);

namespace {

// Most texts of a line are empty, and to ask is cheaper than to empty them.
inline void Leere(CString & s, const CString & /*sStart*/) {
    if (!s.IsEmpty()) s = CString();
}
template <class T> inline void Leere(T & feld, std::type_identity_t<T> start) { feld = start; }

} // namespace

void CStatLines::Clear() {
#define FELD(TYP, NAME, START) Leere(NAME, START);
#include "orvostatbs/files/StatLines.def"
}

// Clears what the list HIT does not set anyway: of all records the hit is the one that a run has by the million.
void CStatLines::ClearOhneHit() {
#define NAME_VON(TITEL) #TITEL,
    static constexpr std::string_view asHit[] = {HIT(NAME_VON)};
#undef NAME_VON
#define FELD(TYP, NAME, START)                                                                               \
    if constexpr (std::ranges::find(asHit, std::string_view(#NAME)) == std::end(asHit)) Leere(NAME, START);
#include "orvostatbs/files/StatLines.def"
}

void CStatLines::MoveHit(const CBehHitLine & satz) {
    ClearOhneHit();
    ART = "H";
    HIT(HIN)
    SetzeMitVorzeichen(BETRAG, satz.BETRAG);
    SetzeMitVorzeichen(ZUSCHLAG, satz.ZUSCHLAG);
    if (!satz.SUCHKRITERIEN.empty()) SUCHKRITERIEN = Suchtext(satz.SUCHKRITERIEN);
}

void CStatLines::MoveFile2Hit(CBehHitLine & satz) const {
    HIT(HER)
    Hole(satz.BETRAG, BETRAG);
    Hole(satz.ZUSCHLAG, ZUSCHLAG);
    if (!SUCHKRITERIEN.IsEmpty()) LiesSuchtext(SUCHKRITERIEN.Sicht(), satz.SUCHKRITERIEN);
}

void CStatLines::MovePat(const CPat & satz) {
    Clear();
    ART = "P";
    PAT(HIN)
}

void CStatLines::MoveFile2Pat(CPat & satz) const { PAT(HER) }

void CStatLines::MoveError2File(const CBehErrors & satz) {
    Clear();
    ART = "E";
    FEHLER(HIN)
    Setze(TEXTART, satz.m_iFehler);
}

void CStatLines::MoveFile2Error(CBehErrors & satz) const {
    FEHLER(HER)
    Hole(satz.m_iFehler, TEXTART);
}

void CStatLines::MoveKas2File(const CKas & satz) {
    Clear();
    ART = "K";
    KAS(HIN)
    PATNR = satz.m_sKasSort;
}

void CStatLines::MoveFile2Kas(CKas & satz) const {
    KAS(HER)
    satz.m_sKasSort = PATNR;
}

void CStatLines::MoveGips2File(const CGipsHitLine & satz) {
    Clear();
    ART = "I";
    GIPS(HIN)
}

void CStatLines::MoveFile2Gips(CGipsHitLine & satz) const { GIPS(HER) }

void CStatLines::MoveUEW2File(const CString & sText) {
    const CString sKopie = sText; // which may be a field of the line
    Clear();
    ART = "U";
    TEXT = sKopie;
}

void CStatLines::MoveFile2UEW(CBehHitLine & hit) const { hit.TEXT = TEXT; }

void CStatLines::MoveRech2File(const CRechHitLine & satz) {
    Clear();
    ART = "R";
    RECH(HIN)
}

void CStatLines::MoveFile2Rech(CRechHitLine & satz) const { RECH(HER) }

void CStatLines::MoveGB2File(const CBehHitLine & satz) {
    Clear();
    ART = "G";
    GB(HIN)
    ANZAHL = satz.m_sGbAnzahl;
}

void CStatLines::MoveFile2GB(CBehHitLine & satz) const {
    GB(HER)
    satz.m_sGbAnzahl = ANZAHL;
}

void CStatLines::MoveGlab2File(const CGlabFaktHitLine & satz) {
    Clear();
    ART = "W";
    GLAB(HIN)
}

void CStatLines::MoveFile2Glab(CGlabFaktHitLine & satz) {
    ART = "W";
    GLAB(HER)
}

} // namespace orvostat
