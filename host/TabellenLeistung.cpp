#include "orvostatbs/host/TabellenLeistung.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvostat {

namespace {

// The number sNr, alone or with one letter behind it.
bool HatNummer(const CString & sLst, std::string_view sNr) {
    const CSicht sicht = sLst.Sicht();
    const std::string_view s = sicht;
    if (!s.starts_with(sNr) || s.size() > sNr.size() + 1) return false;
    return s.size() == sNr.size() || (Klein(s.back()) >= 'a' && Klein(s.back()) <= 'z');
}

template <std::size_t N>
bool HatKassenleistung(CTBeh & beh, int iErgebnis, const std::string_view (&asNummern)[N]) {
    for (; iErgebnis == 0; iErgebnis = beh.Next())
        for (const std::string_view sNr : asNummern)
            if (IstKassenArt(beh.m_GOART.Erstes()) && HatNummer(beh.m_LSTNR, sNr)) return true;
    return false;
}

// The table of changed points, read once in a run and again after a change through a handle: it is asked for every
// hit.
class CPunktetafel {
public:
    const CString * Finde(char cGoArt, const CString & sLst, const CString & sDatum) {
        if (m_iStand != CMxDatabase::Stand()) Lies();
        if (m_map.empty()) return nullptr;
        const auto it = m_map.find(Nummer(sLst));
        if (it == m_map.end()) return nullptr;
        const CString * pPunkte = nullptr;
        for (const SAenderung & aenderung : it->second)
            if (aenderung.cGoArt == Klein(cGoArt) && aenderung.sAb <= sDatum) pPunkte = &aenderung.sPunkte;
        return pPunkte;
    }

    void Vergiss() { m_iStand = NIE; }

private:
    static constexpr std::uint64_t NIE = ~0ULL;

    struct SAenderung {
        char cGoArt; // lower case
        CString sAb;
        CString sPunkte;
    };

    // A number as the table's key compares it.
    static CString Nummer(CString sLst) {
        if (sLst.GetAt(sLst.GetLength() - 1) == ' ') sLst.TrimRight(' ');
        sLst.MakeLower();
        return sLst; // moved, not copied
    }

    void Lies() {
        m_map.clear();
        CTGoPunkte punkte(dbDatabaseRO);
        int i = punkte.GetAll();
        for (; i == 0; i = punkte.Next())
            m_map[Nummer(punkte.m_LSTNR)].push_back(
                {Klein(punkte.m_GOART.Erstes()), TrimRight(punkte.m_PKTAB), punkte.m_PUNKTE});
        // A table that could not be read to its end is read again for the next hit.
        m_iStand = i == ZEILE_KEINE ? CMxDatabase::Stand() : NIE;
    }
    std::uint64_t m_iStand = NIE;
    std::unordered_map<CString, std::vector<SAenderung>> m_map; // by service, each in order of kind and day
};

CPunktetafel & Punktetafel() {
    static CPunktetafel s_tafel;
    return s_tafel;
}

} // namespace

int CTBeh::OeffneZeitraum(const CString & sPat, const CString & sVon, const CString & sBis) {
    SetKey(1);
    AddKeysBW(sVon, sBis);
    return LiesMit(1, MATCH_ALLE, {sPat});
}

int CTBeh::GetForPatSel(const CString & sPat, const CString & sVon, const CString & sBis,
                        const CString & sLebs, bool) {
    if (!sLebs.IsEmpty())
        ModifyFilter([this, sLebs] { return sLebs.Find('\'' + m_BEHANDLERNR + '\'') >= 0; });
    return OeffneZeitraum(sPat, sVon, sBis);
}

int CTBeh::GetWithBEVX(const CString & sPat, const CString & sPlan) {
    SetKey(1);
    ModifyFilter([this, sPlan] {
        if (m_LSTNR != "beva" && m_LSTNR != "bevb") return false;
        CTBill bill(Datenbank());
        bill.m_PATNR = m_PATNR;
        bill.m_PATBILL = m_PATBILL;
        return bill.GetByK1() == 0 && bill.m_PLANNR == sPlan;
    });
    return LiesMit(1, MATCH_ALLE, {sPat});
}

bool CTBeh::IsMultibandBehandlung(const CString & sPat, const CString & sVon, const CString & sBis) {
    CTBeh beh(dbDatabaseRO);
    return HatKassenleistung(beh, beh.OeffneZeitraum(sPat, sVon, sBis), {"126", "127", "128"});
}

bool CTBeh::IsKfoAbschlaege(const CString & sPat, const CString & sVon, const CString & sBis) {
    CTBeh beh(dbDatabaseRO);
    return HatKassenleistung(beh, beh.OeffneZeitraum(sPat, sVon, sBis), {"119", "120"});
}

CDBetrag CTGO::EinfachsatzToW(const CDBetrag & satz, bool, char cWaehrung) {
    CDBetrag betrag(satz);
    betrag.ToW(cWaehrung);
    return betrag;
}

CString CTGO::GetGebPkt(const CString & sGoArt, const CString & sLst, const CString & sPunkte,
                        const CString & sDatum) {
    const CString * pGeaendert = Punktetafel().Finde(sGoArt.Erstes(), sLst, sDatum);
    return pGeaendert ? *pGeaendert : sPunkte;
}

int CTGO::GetGebPkt(char cGoArt, const CString & sLst, int iPunkte, const CString & sDatum) {
    const CString * pGeaendert = Punktetafel().Finde(cGoArt, sLst, sDatum);
    return pGeaendert ? Zahl(*pGeaendert) : iPunkte;
}

void CTGO::VergissGebPkt() { Punktetafel().Vergiss(); }

int CTGoCheck::GetByExtraFlag(const CString & sGoArt, const CString & sLst, char cFlag) {
    return LiesMit(1, MATCH_GENAU, {sGoArt, sLst, CString(cFlag)});
}

} // namespace orvostat
