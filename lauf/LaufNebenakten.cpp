// The side records of a run: laboratory blocks, collective invoices, plaster models, invoices, prescriptions.
//
// They are chosen as the treatments are: by their day, and by patient, treater and practice where they name one.
#include "orvostatbs/lauf/Lauf.h"

#include <algorithm>

namespace orvostat {

CString CLauf::Blockleistung(const CString & sPatNr, const CString & sBlock, const CString & sLst) {
    return sPatNr + '/' + sBlock + '/' + sLst;
}

bool CLauf::LaufeNebenakten() {
    const struct {
        bool bGewaehlt;
        bool (CLauf::*pLaufe)();
        ELaufstelle eStelle;
    } aArten[] = {
        {m_accu.GetELabChecked(), &CLauf::LaufeLaborbloecke, ELaufstelle::Laborbloecke},
        {m_accu.GetGLabChecked(), &CLauf::LaufeGewerbelabor, ELaufstelle::Gewerbelabor},
        {true, &CLauf::LaufeSammelrechnungen, ELaufstelle::Sammelrechnungen},
        {true, &CLauf::LaufeGipsmodelle, ELaufstelle::Gipsmodelle},
        {true, &CLauf::LaufeRechnungen, ELaufstelle::Rechnungen},
        {true, &CLauf::LaufeVerordnungen, ELaufstelle::Verordnungen},
    };
    return std::ranges::all_of(aArten, [this](const auto & art) {
        return !art.bGewaehlt || ((this->*art.pLaufe)() && Melde(art.eStelle));
    });
}

// A text that is empty, since the record names none, is not asked; but a run of one patient leaves out what is
// nobody's.
bool CLauf::NebenaktePasst(const CString & sDatum, const CString & sPatNr, const CString & sLeb,
                           const CString & sPraxis) {
    const CString sPatient = m_accu.GetPatient();
    m_stand.grund.reset();
    return ImZeitraum(sDatum) && (sPatient.IsEmpty() || sPatient == sPatNr) &&
           (sLeb.IsEmpty() || BehandlerPasst(sLeb, Behandler(sLeb) != nullptr)) &&
           (sPraxis.IsEmpty() || PraxisPasst(sPraxis)) &&
           Passt(EWeglassgrund::Patient, NimmPatient(sPatNr)) && !m_stand.grund;
}

// Takes the hit of a laboratory entry; it has an amount and no fee row.
void CLauf::NimmLaborhit(CBehHitLine & hit) {
    MovePatient(hit);
    MoveVersicherung(hit);
    m_stand.grund.reset();
    if (EintragPasst(hit) && RechnungPasst(hit) && AbrechnungsartPasst(hit) && KassePasst(hit) &&
        LeistungPasst(hit) && !m_stand.grund)
        Behalte(hit);
}

// Blocks of the own laboratory: a hit for each entry that is not among the treatments anyway.
bool CLauf::LaufeLaborbloecke() {
    const CAutoRSet<CTLBlock> pBlock;
    const CAutoRSet<CTLBlockEntry> pEntry;
    CBehHitLine & hit = m_accu.m_BehHit;
    Erwarte(*pBlock);
    Erwarte(*pEntry);
    return Gehe(*pBlock, pBlock->GetAll(), [&] {
        if (!NebenaktePasst(pBlock->m_DATUM, pBlock->m_PATNR, pBlock->m_BEHANDLERNR, pBlock->m_PRAXISNR))
            return;
        const auto & block = *pBlock;
        Gehe(*pEntry, pEntry->LiesMit(1, MATCH_ALLE, {block.m_PATNR, block.m_PLANNR, block.m_LFDLBLOCK}),
             [&] {
                 if (m_stand.setBlockleistungen.contains(
                         Blockleistung(pEntry->m_PATNR, pEntry->m_LFDLBLOCK, pEntry->m_LSTNR)))
                     return;
                 hit.Clear();
                 hit.MoveLBlock(&*pBlock);
                 hit.MoveZEKasseLBlockEntry(*pEntry);
                 NimmLaborhit(hit);
             });
    });
}

bool CLauf::LaufeGewerbelabor() {
    const CAutoRSet<CTGLBloc> pBlock;
    const CAutoRSet<CTGLBlocEntry> pEntry;
    CBehHitLine & hit = m_accu.m_BehHit;
    Erwarte(*pBlock);
    Erwarte(*pEntry);
    return Gehe(*pBlock, pBlock->GetAll(), [&] {
        if (!NebenaktePasst(pBlock->m_DATUM, pBlock->m_PATNR, pBlock->m_BEHANDLERNR, pBlock->m_PRAXISNR))
            return;
        ++m_stand.zahlen.iLaborrechnungen;
        m_accu.m_GlabHit.Clear();
        m_accu.m_GlabHit.MoveLabRech(*pBlock);
        m_accu.m_vGlabHits.push_back(m_accu.m_GlabHit);
        pEntry->ClearKey();
        pEntry->m_LABORKUNDE = pBlock->m_LABORKUNDE;
        pEntry->m_LFDGLBLOC = pBlock->m_LFDGLBLOC;
        Gehe(*pEntry, pEntry->GetByK1(MATCH_ALLE), [&] {
            hit.Clear();
            hit.MoveGLBloc(&*pBlock);
            hit.MoveZEKasseGLBlocEntry(*pEntry);
            NimmLaborhit(hit);
        });
    });
}

// They are the practice's: a selection of patients leaves them out.
bool CLauf::LaufeSammelrechnungen() {
    const CAutoRSet<CTGLKuFakt> pFakt;
    Erwarte(*pFakt);
    return Gehe(*pFakt, pFakt->GetAll(), [&] {
        if (!NebenaktePasst(pFakt->m_FAKTDATUM, CString(), CString(), pFakt->m_PRAXISNR)) return;
        ++m_stand.zahlen.iSammelrechnungen;
        m_accu.m_GlabFaktHit.Clear();
        m_accu.m_GlabFaktHit.MoveSammelLabRech(*pFakt);
        m_accu.m_vGlabFaktHits.push_back(m_accu.m_GlabFaktHit);
    });
}

bool CLauf::LaufeGipsmodelle() {
    const CAutoRSet<CTGips> pGips;
    Erwarte(*pGips);
    return Gehe(*pGips, pGips->GetAll(), [&] {
        if (!NebenaktePasst(pGips->m_DATUM, pGips->m_PATNR, pGips->m_BEHANDLERNR, CString())) return;
        ++m_stand.zahlen.iGipsmodelle;
        m_accu.m_GipsHit.Clear();
        m_accu.m_GipsHit.MoveGips(&*pGips);
        if (const CPat * const pPat = Patient()) m_accu.m_GipsHit.MovePat(*pPat);
        m_accu.m_vGipsHits.push_back(m_accu.m_GipsHit);
    });
}

bool CLauf::LaufeRechnungen() {
    const CAutoRSet<CTFakt> pFakt;
    Erwarte(*pFakt);
    return Gehe(*pFakt, pFakt->GetAll(), [&] {
        if (!NebenaktePasst(pFakt->m_DATUM, pFakt->m_PATNR, CString(), pFakt->m_PRAXISNR)) return;
        ++m_stand.zahlen.iRechnungen;
        m_accu.m_RechHit.Clear();
        m_accu.m_RechHit.MoveFakt(&*pFakt);
        if (const CPat * const pPat = Patient()) m_accu.m_RechHit.MovePat(*pPat, m_accu.GetChTelefon());
        m_accu.m_vRechHits.push_back(m_accu.m_RechHit);
    });
}

bool CLauf::LaufeVerordnungen() {
    const CAutoRSet<CTRezept> pRezept;
    const CAutoRSet<CHMVRecord> pHmv;
    Erwarte(*pRezept);
    return Gehe(*pRezept, pRezept->GetAll(), [&] {
        if (!NebenaktePasst(pRezept->m_DATUM, pRezept->m_PATNR, CString(), CString())) return;
        pHmv->m_PATNR = pRezept->m_PATNR;
        pHmv->m_REZEPTNR = pRezept->m_REZEPTNR;
        if (pHmv->GetByK1() != 0) return;
        ++m_stand.zahlen.iVerordnungen;
        CVerordnungHitLine hit;
        hit.MoveVerordnung(*pRezept, *pHmv);
        m_accu.m_vVerordnungHits.push_back(hit);
    });
}

} // namespace orvostat
