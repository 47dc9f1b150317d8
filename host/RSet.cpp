#include "orvostatbs/host/RSet.h"

#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orvostat {

CMxDatabase dbDatabase(false);
CMxDatabase dbDatabaseRO(true);

std::uint64_t CMxDatabase::s_iStand = 0;

CMxDatabase::CMxDatabase(bool bNurLesen) : m_bNurLesen(bNurLesen) {}
CMxDatabase::~CMxDatabase() = default;

void CMxDatabase::Verbinde(std::shared_ptr<CZeilenspeicher> pSpeicher) {
    m_mapSelectPool.clear();
    m_pSpeicher = std::move(pSpeicher);
    m_iFehlschlaege = 0;
    Geaendert();
}

int CMxDatabase::SelectPool(const CString & sKey, std::vector<SSelectPool *> & vEintraege) {
    vEintraege.clear();
    if (Blank(sKey)) return ZEILE_KEINE;
    std::vector<SSelectPool> vGelesen;
    CTSelectPool pool(*this);
    int i = pool.LiesMit(1, MATCH_ALLE, {sKey});
    for (; i == ZEILE_OK; i = pool.Next())
        vGelesen.push_back({pool.m_SPKEY, pool.m_SPTEXT, pool.m_SPEXTRA});
    if (i != ZEILE_KEINE || vGelesen.empty()) return i;
    auto & vVorrat = m_mapSelectPool[TrimRight(sKey)];
    for (SSelectPool & eintrag : vGelesen) {
        const auto itPlatz = vVorrat.begin() + std::ssize(vEintraege);
        const auto it = std::find_if(itPlatz, vVorrat.end(), [&](const auto & p) { return *p == eintrag; });
        if (it != vVorrat.end())
            std::iter_swap(itPlatz, it);
        else
            vVorrat.insert(itPlatz, std::make_unique<SSelectPool>(std::move(eintrag)));
        vEintraege.push_back(vVorrat[vEintraege.size()].get());
    }
    return ZEILE_OK;
}

int CMxDatabase::Beginne() {
    return m_bNurLesen || !m_pSpeicher ? ZEILE_VERWEIGERT : Zaehle(m_pSpeicher->Beginne());
}

int CMxDatabase::Beende(bool bUebernehmen) {
    if (m_bNurLesen || !m_pSpeicher) return ZEILE_VERWEIGERT;
    Geaendert();
    return Zaehle(m_pSpeicher->Beende(bUebernehmen));
}

std::int64_t CMxDatabase::Zeilenzahl(const STabelle & tabelle) {
    const std::int64_t iZeilen = m_pSpeicher ? m_pSpeicher->Zeilenzahl(tabelle) : 0;
    if (iZeilen < 0) Zaehle(ZEILE_FEHLER);
    return iZeilen;
}

bool GetSPEntries(const CString & sKey, std::vector<SSelectPool *> & vEintraege) {
    return dbDatabaseRO.SelectPool(sKey, vEintraege) == ZEILE_OK;
}

int & EntlieheneRSets() {
    static int s_iAnzahl = 0;
    return s_iAnzahl;
}

CMxRSet::CMxRSet(CMxDatabase & db) : m_pDb(&db) {}
CMxRSet::CMxRSet(const CMxRSet & r) : m_pDb(r.m_pDb), m_iKey(r.m_iKey), m_bAufsteigend(r.m_bAufsteigend) {}
CMxRSet::~CMxRSet() = default;

CMxRSet & CMxRSet::operator=(const CMxRSet & r) {
    if (this == &r || &Tabelle() != &r.Tabelle()) return *this;
    InitI();
    m_pDb = r.m_pDb;
    m_iKey = r.m_iKey;
    m_bAufsteigend = r.m_bAufsteigend;
    const CWerte vQuelle = r.Werte();
    const CFelder vZiel = Felder();
    for (std::size_t i = 0; i < vZiel.size(); ++i)
        *vZiel[i] = *vQuelle[i];
    return *this;
}

bool CMxRSet::operator==(const CMxRSet & r) const {
    if (&Tabelle() != &r.Tabelle()) return false;
    const CWerte vA = Werte();
    const CWerte vB = r.Werte();
    for (std::size_t i = 0; i < vA.size(); ++i)
        if (*vA[i] != *vB[i]) return false;
    return true;
}

CWerte CMxRSet::Werte() const {
    const CFelder vFelder = const_cast<CMxRSet *>(this)->Felder();
    return {vFelder.data(), vFelder.size()};
}

void CMxRSet::SetKey(int iKey, bool bAscending) {
    m_iKey = iKey;
    m_bAufsteigend = bAscending;
}

void CMxRSet::ClearKey() {
    for (const SSchluessel & schluessel : Tabelle().vSchluessel)
        for (const std::uint8_t iSpalte : schluessel.Spalten())
            Felder()[iSpalte]->Empty();
}

void CMxRSet::ClearAll() {
    for (CString * pFeld : Felder())
        pFeld->Empty();
    NachLesen();
}

void CMxRSet::Init() {
    InitI();
    SetKey(1);
    ClearAll();
}

void CMxRSet::InitI() {
    SchliesseMenge();
    m_pZwischen.reset();
    m_fFilter = nullptr;
    m_iZustand = ZEILE_KEINE;
}

void CMxRSet::ModifyFilter(std::function<bool()> f) { m_fFilter = std::move(f); }

void CMxRSet::AddKeysBW(const CString & sVon, const CString & sBis) {
    m_pZwischen = std::make_unique<CZwischen>(sVon, sBis);
}

int CMxRSet::ExecSQL(const CString &) {
    InitI();
    return ZEILE_FEHLER;
}

int CMxRSet::GetAll() { return NeueMenge(m_iKey) ? LiesErste() : static_cast<int>(ZEILE_FEHLER); }

int CMxRSet::GetRecByParam(std::initializer_list<CString> vTeile) {
    return LiesMit(m_iKey, MATCH_GENAU, vTeile);
}

int CMxRSet::LiesMit(int iKey, MatchMode mode, std::initializer_list<CString> vTeile) {
    ClearKey();
    const std::size_t iSchluessel = static_cast<std::size_t>(iKey) - 1;
    if (iSchluessel >= Tabelle().vSchluessel.size()) return Lies(iKey, mode, true);
    const auto vSpalten = Tabelle().vSchluessel[iSchluessel].Spalten();
    std::size_t i = 0;
    for (const CString & sTeil : vTeile)
        if (i < vSpalten.size()) *Felder()[vSpalten[i++]] = sTeil;
    return Lies(iKey, mode, i > 0);
}

int CMxRSet::GetRecByKey(int iKey, MatchMode mode) { return Lies(iKey, mode, false); }

// Reads by the key fields; with bGegeben the first of them is asked for even if it is empty.
int CMxRSet::Lies(int iKey, MatchMode mode, bool bGegeben) {
    const auto pZwischen = std::move(m_pZwischen);
    if (!NeueMenge(iKey)) return ZEILE_FEHLER;
    VorZugriff();
    if (FragtNachNiemand(mode, bGegeben)) {
        SchliesseMenge();
        return ZEILE_KEINE;
    }
    Begrenze(mode, pZwischen.get());
    return LiesErste();
}

// The first row of the set of a read; one that fails, or has no store, leaves no set.
int CMxRSet::LiesErste() {
    const int iErgebnis = First();
    if ((iErgebnis != ZEILE_OK && iErgebnis != ZEILE_KEINE) || !m_pSpeicher) SchliesseMenge();
    return iErgebnis;
}

void CMxRSet::SchliesseMenge() {
    m_pWeg.reset();
    m_pSpeicher.reset();
    m_menge.bOffen = false;
    m_menge.fFilter = nullptr;
}

// The key begins with the empty number of a patient or an address, and the read asks for it: in an exact read, and in
// another where the number is given or all blank.
bool CMxRSet::FragtNachNiemand(MatchMode mode, bool bGegeben) const {
    const std::uint8_t iSpalte = Schluesselspalten().front();
    const CString & sNummer = *Werte()[iSpalte];
    if (!Blank(sNummer) || (sNummer.IsEmpty() && mode != MATCH_GENAU && !bGegeben)) return false;
    const std::string_view sName = Tabelle().vSpalten[iSpalte].pName;
    return sName == "PATNR" || sName == "ADRNR";
}

// Begins the set of a read with the whole table; false for a key that the table lacks.
bool CMxRSet::NeueMenge(int iKey) {
    SchliesseMenge();
    m_menge.bOffen = iKey >= 1 && static_cast<std::size_t>(iKey) <= Tabelle().vSchluessel.size();
    m_menge.bEineZeile = false;
    m_menge.bereich.iSchluessel = iKey;
    m_menge.bereich.bAbsteigend = !m_bAufsteigend;
    m_menge.bereich.sVon.clear();
    m_menge.bereich.sBis.clear();
    m_menge.vWeitereTeile.clear();
    m_menge.fFilter = std::exchange(m_fFilter, nullptr);
    m_pZwischen.reset();
    m_iZustand = ZEILE_KEINE;
    return m_menge.bOffen;
}

// Narrows the set to what the key fields ask for.
void CMxRSet::Begrenze(MatchMode mode, const CZwischen * pZwischen) {
    const STabelle & tabelle = Tabelle();
    const auto vSpalten = Schluesselspalten();
    const CFelder vFelder = Felder();
    const auto Teil = [&](std::size_t i) -> const CString & { return *vFelder[vSpalten[i]]; };
    const auto HaengeAn = [&](std::string & s, std::size_t i, const CString & sTeil) {
        HaengeTeilAn(s, tabelle, sTeil, i + 1 == vSpalten.size());
    };

    std::size_t iGesetzt = vSpalten.size(); // parts up to and including the last one set
    if (mode != MATCH_GENAU)
        while (iGesetzt > 0 && Teil(iGesetzt - 1).IsEmpty())
            --iGesetzt;

    SBereich & bereich = m_menge.bereich;
    std::size_t i = 0;
    for (; i < iGesetzt && !(mode == MATCH_ALLE && Teil(i).IsEmpty()); ++i)
        HaengeAn(bereich.sVon, i, Teil(i));
    if (mode == MATCH_TEIL && i > 0) bereich.sVon.pop_back(); // the last part is open: drop its end mark
    bereich.sBis = bereich.sVon;
    if (mode == MATCH_ALLE && pZwischen && i < vSpalten.size()) {
        HaengeAn(bereich.sVon, i, pZwischen->first);
        HaengeAn(bereich.sBis, i, pZwischen->second);
    }
    bereich.sBis = Danach(std::move(bereich.sBis));
    m_menge.bEineZeile = mode == MATCH_GENAU;
    for (; i < iGesetzt; ++i)
        if (!Teil(i).IsEmpty())
            HaengeAn(m_menge.vWeitereTeile.emplace_back(vSpalten[i], "").second, i, Teil(i));
}

std::span<const std::uint8_t> CMxRSet::Schluesselspalten() const {
    return Tabelle().vSchluessel[static_cast<std::size_t>(m_menge.bereich.iSchluessel - 1)].Spalten();
}

int CMxRSet::First() {
    m_pWeg.reset();
    m_iZustand = ZEILE_KEINE;
    m_pSpeicher = m_pDb->Speicher();
    if (!m_menge.bOffen || !m_pSpeicher) return ZEILE_KEINE;
    m_pWeg = m_pSpeicher->Oeffne(Tabelle(), m_menge.bereich);
    m_iZustand = m_pWeg ? Schritt() : m_pDb->Zaehle(ZEILE_FEHLER);
    // One row that cannot be changed needs its walk no longer, and a store may hold locks for a walk.
    if (m_menge.bEineZeile && m_pDb->NurLesen()) m_pWeg.reset();
    return m_iZustand;
}

int CMxRSet::Next() { return m_iZustand = m_pWeg && !m_menge.bEineZeile ? Schritt() : ZEILE_KEINE; }

int CMxRSet::Schritt() {
    const bool bFilter = m_menge.fFilter || !m_menge.vWeitereTeile.empty();
    const int iErgebnis = bFilter ? SchrittMitFilter() : m_pWeg->Naechste(Felder());
    if (iErgebnis == ZEILE_OK) NachLesen();
    return m_pDb->Zaehle(iErgebnis);
}

// A filter looks at the fields, so the row that is left when the set ends has to be put back.
int CMxRSet::SchrittMitFilter() {
    const CFelder vFelder = Felder();
    m_vVorher.clear();
    for (const CString * pFeld : vFelder)
        m_vVorher.push_back(*pFeld);
    int iErgebnis;
    while ((iErgebnis = m_pWeg->Naechste(vFelder)) == ZEILE_OK)
        if (Passt()) return ZEILE_OK;
    for (std::size_t i = 0; i < vFelder.size(); ++i)
        *vFelder[i] = m_vVorher[i];
    return iErgebnis;
}

bool CMxRSet::Passt() {
    const CWerte vWerte = Werte();
    for (const auto & [iSpalte, sSoll] : m_menge.vWeitereTeile) {
        m_sTeil.clear();
        HaengeTeilAn(m_sTeil, Tabelle(), *vWerte[iSpalte], iSpalte == Schluesselspalten().back());
        if (m_sTeil != sSoll) return false;
    }
    return !m_menge.fFilter || m_menge.fFilter();
}

int CMxRSet::Write(const CString &) { return WriteRec(); }

int CMxRSet::WriteRec() {
    const auto & pSpeicher = m_pDb->Speicher();
    if (m_pDb->NurLesen() || !pSpeicher) return ZEILE_VERWEIGERT;
    VorZugriff();
    CMxDatabase::Geaendert();
    return m_pDb->Zaehle(pSpeicher->Schreibe(Tabelle(), Werte()));
}

int CMxRSet::RewriteRec() {
    if (m_pDb->NurLesen()) return ZEILE_VERWEIGERT;
    if (m_iZustand != ZEILE_OK) return m_iZustand;
    VorZugriff();
    CMxDatabase::Geaendert();
    return m_pDb->Zaehle(m_pWeg->Ersetze(Werte()));
}

int CMxRSet::DeleteRec() {
    if (m_pDb->NurLesen()) return ZEILE_VERWEIGERT;
    if (m_iZustand != ZEILE_OK) return m_iZustand;
    CMxDatabase::Geaendert();
    const int iErgebnis = m_pDb->Zaehle(m_pWeg->Loesche());
    if (iErgebnis == ZEILE_OK) Next();
    return iErgebnis;
}

int CMxRSet::DeleteRows() {
    int iErgebnis = DeleteRec();
    while (iErgebnis == ZEILE_OK && m_iZustand == ZEILE_OK)
        iErgebnis = DeleteRec();
    return iErgebnis == ZEILE_OK && m_iZustand != ZEILE_KEINE ? m_iZustand : iErgebnis;
}

} // namespace orvostat
