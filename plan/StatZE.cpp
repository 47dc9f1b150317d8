#include "orvostatbs/plan/StatZE.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <initializer_list>

namespace orvostat {

namespace {

constexpr int BREITE_BETRAG = 11; // of the ten columns of LBLOCKBETRAEGE

// The main key of a record set, from its first part on. The parts may be its own fields.
template <class T>
void SetzeSchluessel(T & rec, std::initializer_list<CString T::*> vFelder,
                     std::initializer_list<CString> vTeile) {
    rec.ClearKey();
    rec.SetKey(1, true);
    auto itTeil = vTeile.begin(); // copies
    for (CString T::*pFeld : vFelder)
        rec.*pFeld = *itTeil++;
}

CDBetrag Blockbetrag(const CTLBlock & block, int iSpalte) {
    return CWBetrag(GepackterBetrag(block.m_LBLOCKBETRAEGE, iSpalte, BREITE_BETRAG));
}

} // namespace

bool CStatZE::GetPlan(const CString & sPat, const CString & sPlan) {
    if (sPat.IsEmpty() || sPlan.IsEmpty()) return false;
    SetzeSchluessel<CTPlan>(m_rPlan, {&CTPlan::m_PATNR, &CTPlan::m_PLANNR}, {sPat, sPlan});
    return m_rPlan.GetByK1(MATCH_GENAU) == 0;
}

bool CStatZE::GetLBlockArtEingliederung(const CString & sPat, const CString & sPlan, CTLBlock & block) {
    if (sPat.IsEmpty() || sPlan.IsEmpty()) return false;
    SetzeSchluessel<CTLBlock>(block, {&CTLBlock::m_PATNR, &CTLBlock::m_PLANNR}, {sPat, sPlan});
    int i = block.GetByK1(MATCH_ALLE);
    while (i == 0 && block.m_LBLOCKART != "4")
        i = block.Next();
    return i == 0;
}

bool CStatZE::GetLBlockData(const CString & sPat, const CString & sPlan, CDBetrag & betrag1,
                            CDBetrag & betrag2, CDBetrag & betrag3) {
    const CAutoRSet<CTLBlock> pBlock;
    if (!GetLBlockArtEingliederung(sPat, sPlan, *pBlock)) return false;
    betrag1 = Blockbetrag(*pBlock, 5);
    betrag2 = Blockbetrag(*pBlock, 6);
    betrag3 = Blockbetrag(*pBlock, 2);
    return true;
}

bool CStatZE::IsZePlan(const CString & sPlan, const CString & sAbrArt) const {
    return Zahl64(sPlan) != 0 && sAbrArt == "z";
}

int CStatZE::GetAbdingungsLst(const CString & sPatNr, const CString & sPlanNr) {
    const CString sPat = sPatNr; // they may be those of a hit that goes now
    const CString sPlan = sPlanNr;
    m_vHits.clear();
    if (!GetPlan(sPat, sPlan)) return 0;
    const CString & sArt = m_rPlan.m_PLANSUBART;
    if (sArt != "3" && sArt != "4" && sArt != "5" && sArt != "1") return 0;
    const CAutoRSet<CTLBlock> pBlock;
    if (!GetLBlockArtEingliederung(sPat, sPlan, *pBlock)) return 0;
    const CAutoRSet<CTLBlockEntry> pEntry;
    const CString sMusterArt(sArt == "3" ? '3' : '4');
    return ReadMusterLBlockEntry(*pEntry, sPat, sPlan, pBlock->m_LFDLBLOCK, sMusterArt);
}

int CStatZE::ReadMusterLBlockEntry(CTLBlockEntry & entry, const CString & sPat, const CString & sPlan,
                                   const CString & sLfdLBlock, const CString & sMusterArt) {
    SetzeSchluessel<CTLBlockEntry>(
        entry, {&CTLBlockEntry::m_PATNR, &CTLBlockEntry::m_PLANNR, &CTLBlockEntry::m_LFDLBLOCK},
        {sPat, sPlan, sLfdLBlock});
    for (int i = entry.GetByK1(MATCH_ALLE); i == 0; i = entry.Next()) {
        if (!CheckGemMuster(sMusterArt, entry)) continue;
        CBehHitLine & hit = m_vHits.emplace_back();
        hit.MoveZEKasseLBlockEntry(entry);
        if (sMusterArt != "3") hit.m_sLblNr = sMusterArt;
        hit.TEXT = ReadBegr(entry.m_BEGRKEY);
        if (!hit.TEXT.IsEmpty()) hit.TEXTART = 'b';
    }
    return static_cast<int>(m_vHits.size());
}

// Kind "3" has no sample: no entry passes, and a plan of that kind has no agreed entries. It is to stay so.
bool CStatZE::CheckGemMuster(const CString & sMusterArt, const CTLBlockEntry & entry) const {
    const char cArt = entry.m_LBLOCKENTRYART.Erstes();
    const bool bGebuehr = cArt == 'p' || cArt == 'q' || cArt == 'k' || cArt == 'g';
    return sMusterArt == "4" && entry.m_LBLNR == "4" && bGebuehr;
}

CString CStatZE::ReadBegr(const CString & sKey) {
    if (sKey.IsEmpty()) return {};
    const CAutoRSet<CTTbEntry> pText;
    if (!GetTB(*pText, sKey)) return {};
    CString sText = pText->m_TBTEXT;
    while (pText->Next() == 0)
        sText += ' ' + pText->m_TBTEXT;
    return sText;
}

bool CStatZE::GetTB(CTTbEntry & entry, const CString & sKey) {
    SetzeSchluessel<CTTbEntry>(entry, {&CTTbEntry::m_TBKEY}, {sKey});
    return entry.GetByK1(MATCH_ALLE) == 0;
}

} // namespace orvostat
