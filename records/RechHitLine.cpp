#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/NebenHits.h"
#include "orvostatbs/records/Pat.h"

#include <array>
#include <cstddef>

namespace orvostat {

namespace {

// A patient's contacts, number 1 first.
constexpr std::array<CString CPat::*, 7> KONTAKTE{&CPat::PATTELEFON,  &CPat::m_sTelefon2, &CPat::m_sTelefon3,
                                                  &CPat::m_sTelefon4, &CPat::PATEMAIL,    &CPat::m_sTelefon6,
                                                  &CPat::TELEFONPRIO};

CDBetrag Summe(const CString & sA, const CString & sB) { return CDBetrag(sA) + CDBetrag(sB); }

// A list of up to four pieces of a tax key and ten characters of a net amount, stored or display text; what it adds up
// to in tax.
CDBetrag Steuer(const CString & sListe) {
    CDBetrag steuer;
    for (int iPos = 0; iPos <= 33 && iPos < sListe.GetLength(); iPos += 11) {
        CWBetrag betrag(GetMidStr(sListe, iPos + 1, 10));
        if (betrag.IsPos()) steuer += betrag.MalBruch(UStKey2MwStSatz(GetMidStr(sListe, iPos, 1)), 100);
    }
    return steuer;
}

} // namespace

void CRechHitLine::Clear() { *this = CRechHitLine(); }

void CRechHitLine::MoveFakt(const CTFakt * pFakt) {
    PRAXISNR = pFakt->m_PRAXISNR;
    PATNR = pFakt->m_PATNR;
    FAKT1 = pFakt->m_FAKT1;
    FORTLFDJAHR = pFakt->m_FORTLFDJAHR;
    FORTLFDFAKT = pFakt->m_FORTLFDFAKT;
    DATUM = pFakt->m_DATUM;
    FORMULARNR = pFakt->m_FORMULARNR;
    KASKUERZEL = pFakt->m_KASKUERZEL;
    STORNIERT = Zahl(pFakt->m_STORNIERT) != 0;
    MAHNSTUFE = pFakt->m_MAHNSTUFE.Erstes();
    KTRAEGER = pFakt->m_KTRAEGER.Erstes();

    const bool bPaket = CTKTraeger::IsKzvOrKvPaket(PATNR);
    RECHBETRAG = bPaket ? CDBetrag() : CDBetrag(pFakt->m_BETRAG1);
    RECHBETRAGK = CDBetrag(bPaket ? pFakt->m_BETRAG1 : pFakt->m_BETRAG2);
    HONORAR = Summe(pFakt->m_HONORAR1, pFakt->m_HONORAR2);
    ELABGESAMT = Summe(pFakt->m_ELABGESAMT1, pFakt->m_ELABGESAMT2);
    FLABGESAMT = Summe(pFakt->m_FLABGESAMT1, pFakt->m_FLABGESAMT2);
    ELABMWSTBETRAG = Summe(pFakt->m_ELABMWST1, pFakt->m_ELABMWST2);
    BEGLICHEN = CDBetrag(pFakt->m_BEGLICHEN);
    AUSGEBUCHT = CDBetrag(pFakt->m_AUSGEBUCHT);
    HONMWSTBETRAG += Steuer(pFakt->m_MWSTLISTE);
}

void CRechHitLine::MovePat(const CPat & pat, int iTelefon) {
    PATNAME = pat.PATNAME;
    PATVORNAME = pat.PATVORNAME;
    BEHANDLERNR = pat.BEHANDLERNR;
    if (iTelefon >= 1 && iTelefon <= static_cast<int>(KONTAKTE.size()))
        PATTELEFON = pat.*KONTAKTE[static_cast<std::size_t>(iTelefon - 1)];
}

CDBetrag CRechHitLine::Offen() const {
    return (CTKTraeger::IsKzvOrKvPaket(PATNR) ? RECHBETRAGK : RECHBETRAG) - BEGLICHEN - AUSGEBUCHT;
}

} // namespace orvostat
