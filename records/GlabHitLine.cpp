#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/NebenHits.h"

#include <cstdint>
#include <utility>

namespace orvostat {

namespace {

// Tax in percent, which is also the rate in hundredths, as the product takes it.
constexpr const char * UST_ERMAESSIGT = "7";
constexpr const char * UST_VOLL = "16";

constexpr int BREITE_BLOCK = 10;
constexpr int BREITE_SAMMEL = 9;

CString SummeGepackt(const CString & sBetraege) {
    std::int64_t iSumme = 0;
    for (int iPos = 1; iPos <= 91; iPos += 10)
        iSumme += Zahl(GetMidStr(sBetraege, iPos, 10));
    return itoc(iSumme);
}

// The amounts and totals of a laboratory line, each read by way of TBetrag.
template <class TBetrag, class THit>
void MoveBetraege(THit & hit, const CString & sBetraege, const CString & sUst) {
    const auto Lies = [](const CString & s) { return CVzW7Betrag(TBetrag(s)); };
    hit.TECHNLST = Lies(THit::GetBetrag(sBetraege, 0));
    hit.MATERIAL = Lies(THit::GetBetrag(sBetraege, 1));
    hit.METALL = Lies(THit::GetBetrag(sBetraege, 2));
    hit.PRAXMAT = Lies(THit::GetBetrag(sBetraege, 3));
    hit.USTGES = Lies(sUst);
    if (hit.PRAXMAT.IsEmpty()) hit.PRAXMAT = Lies("e         0");
    hit.GESAMT = Lies("e" + THit::GetGesamtBetragBrutto(sBetraege));
    hit.NETTO = hit.GESAMT - hit.USTGES;
}

// A customer's running number iLfd, or any of the customer where the number is not said.
bool IstGleich(const CString & sKunde, const CString & sLfd, const CString & sAndererKunde,
               const CString & sAndere) {
    return sKunde == sAndererKunde && (sLfd.IsEmpty() || sLfd == sAndere);
}

// ---- The tax of a block, in stored texts ---------------------------------------------------------------------------

// The product of two digit texts of two decimals each, as one of two decimals, halves away from zero. It wraps where
// 64 bits do not hold it.
std::int64_t Produkt(CString sA, CString sB) {
    bool bNegativ = false;
    for (CString * pZahl : {&sA, &sB})
        if (pZahl->Erstes() == '-') {
            pZahl->Delete(0);
            bNegativ = !bNegativ;
        }
    const auto iProdukt = static_cast<std::int64_t>(static_cast<std::uint64_t>(Zahl64(sA)) *
                                                    static_cast<std::uint64_t>(Zahl64(sB)));
    std::int64_t iErgebnis = iProdukt / 100;
    if (iProdukt % 100 >= 50) ++iErgebnis;
    if (iProdukt % 100 <= -50) --iErgebnis;
    return bNegativ ? -iErgebnis : iErgebnis;
}

// A stored amount times a digit text of two decimals; the currency letter stays in front.
CString Mal(const CString & sBetrag, const CString & sFaktor) {
    return sBetrag.Left(1) + itoc(Produkt(sBetrag.Mid(1), sFaktor));
}

CString Plus(const CString & sA, const CString & sB) {
    const auto Lies = [](const CString & s) { return s == "0" ? CVzW7Betrag() : CVzW7Betrag(s); };
    return Lies(sA) + Lies(sB);
}

// The hundredths of a quantity, without the unit that may stand in front.
CString OhneEinheit(const CString & sAnzahl) {
    const char cErstes = sAnzahl.Erstes();
    return ismxdigit(cErstes) || cErstes == '-' ? sAnzahl : sAnzahl.Mid(1);
}

CString Steuer(const CString & sSumme, const CString & sSatz) {
    return Mal(sSumme.IsEmpty() ? "e      0" : sSumme, sSatz);
}

} // namespace

void CGlabHitLine::Clear() { *this = CGlabHitLine(); }

void CGlabHitLine::MoveLabRech(CTGLBloc & rec) {
    LABORKUNDE = rec.m_LABORKUNDE;
    LFDGLBLOC = rec.m_LFDGLBLOC;
    if (rec.m_GLBLOCSTATUS == "0") m_bGlabStatus = false;
    if (rec.m_GLBLOCSTATUS == "1") m_bGlabStatus = true;
    m_sGlab1 = rec.m_AUFTRAG;
    m_sGlab2 = rec.m_LABORNAME;
    m_sGlab3 = rec.m_TECHNIKER;
    m_sGlab4 = rec.m_ARBEIT;
    m_sGlab5 = rec.m_FARBE;
    m_sGlab6 = rec.m_MATERIALTEXT;
    m_sGlab7 = rec.m_CHARGE;
    m_sGlab8 = rec.m_EINGANG;
    m_sGlab9 = rec.m_LIEFERUNG;
    m_sGlab10 = rec.m_RECHNUNGNR;
    m_sGlab11 = rec.m_RECHDATUM;
    m_sGlab12 = rec.m_ZAHLZIEL;
    m_sGlab13 = rec.m_GLBEMERKUNG;
    m_sGlab14 = rec.m_GLKENNUNG;
    CString sUst7;
    CString sUst16;
    GetGesamtUst(sUst7, sUst16, LFDGLBLOC, LABORKUNDE);
    MoveBetraege<CVzW7Betrag>(*this, rec.m_GLBLOCBETRAEGE, rec.m_UST);
}

void CGlabHitLine::GetGesamtUst(CString & sUst7, CString & sUst16, const CString & sBlock,
                                const CString & sKunde) {
    CString sSumme7;
    CString sSumme16;
    const CAutoRSet<CTGLBlocEntry> pEntry;
    pEntry->m_LABORKUNDE = sKunde;
    pEntry->m_LFDGLBLOC = sBlock;
    for (int i = pEntry->GetByK1(MATCH_ALLE); i == 0; i = pEntry->Next()) {
        CString * pSumme = pEntry->m_USTKEY == "7" ? &sSumme7 : pEntry->m_USTKEY == "g" ? &sSumme16 : nullptr;
        if (pSumme) *pSumme = Plus(*pSumme, Mal(pEntry->m_BETRAG, OhneEinheit(pEntry->m_ANZAHL)));
    }
    sUst7 = Steuer(sSumme7, UST_ERMAESSIGT);
    sUst16 = Steuer(sSumme16, UST_VOLL);
}

CString CGlabHitLine::GetBetrag(const CString & sBetraege, int iIndex) {
    return RemoveBlanks(GepackterBetrag(sBetraege, iIndex, BREITE_BLOCK));
}

CString CGlabHitLine::GetGesamtBetragBrutto(const CString & sBetraege) { return SummeGepackt(sBetraege); }

bool CGlabHitLine::operator==(const CTGLBloc & rec) const {
    return IstGleich(LABORKUNDE, LFDGLBLOC, rec.m_LABORKUNDE, rec.m_LFDGLBLOC);
}

bool CGlabHitLine::operator==(const CGlabHitLine & hit) const {
    return IstGleich(LABORKUNDE, LFDGLBLOC, hit.LABORKUNDE, hit.LFDGLBLOC);
}

void CGlabFaktHitLine::Clear() {
    CGlabFaktHitLine frisch;
    frisch.SKONTOPROZENT = std::move(SKONTOPROZENT);
    *this = std::move(frisch);
}

void CGlabFaktHitLine::MoveSammelLabRech(CTGLKuFakt & rec) {
    PRAXISNR = rec.m_PRAXISNR;
    LABORKUNDE = rec.m_LABORKUNDE;
    LFDGLKUFAKT = rec.m_LFDGLKUFAKT;
    FAKTDATUM = rec.m_FAKTDATUM;
    VONDATUM = rec.m_VONDATUM;
    BISDATUM = rec.m_BISDATUM;
    ANZGLBLOCKS = rec.m_ANZGLBLOCKS;
    BEGLICHEN = rec.m_BEGLICHEN;
    STORNIERT = rec.m_STORNIERT == "1";
    MoveBetraege<CW7Betrag>(*this, rec.m_KUFAKTBETRAEGE, rec.m_UST);
}

CString CGlabFaktHitLine::GetBetrag(const CString & sBetraege, int iIndex) {
    return RemoveBlanks(GepackterBetrag(sBetraege, iIndex, BREITE_SAMMEL));
}

CString CGlabFaktHitLine::GetGesamtBetragBrutto(const CString & sBetraege) { return SummeGepackt(sBetraege); }

bool CGlabFaktHitLine::operator==(const CTGLKuFakt & rec) const {
    return IstGleich(LABORKUNDE, LFDGLKUFAKT, rec.m_LABORKUNDE, rec.m_LFDGLKUFAKT);
}

bool CGlabFaktHitLine::operator==(const CGlabFaktHitLine & hit) const {
    return IstGleich(LABORKUNDE, LFDGLKUFAKT, hit.LABORKUNDE, hit.LFDGLKUFAKT);
}

} // namespace orvostat
