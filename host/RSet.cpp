#include "orvostatbs/host/RSet.h"

#include "orvostatbs/host/TabellenPraxis.h"

#include <utility>

using namespace orvostat;

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

const std::vector<std::unique_ptr<SSelectPool>> & CMxDatabase::SelectPool(const CString & sKey) {
    static const std::vector<std::unique_ptr<SSelectPool>> s_vKeine;
    if (const auto it = m_mapSelectPool.find(sKey); it != m_mapSelectPool.end()) return it->second;
    std::vector<std::unique_ptr<SSelectPool>> vEintraege;
    CTSelectPool pool(*this);
    pool.m_SPPOOL = sKey;
    int i;
    for (i = pool.GetByK1(MATCH_ALLE); i == 0; i = pool.Next())
        vEintraege.push_back(
            std::make_unique<SSelectPool>(SSelectPool{pool.m_SPKEY, pool.m_SPTEXT, pool.m_SPEXTRA}));
    if (i != ZEILE_KEINE) return s_vKeine;
    return m_mapSelectPool[sKey] = std::move(vEintraege);
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
    vEintraege.clear();
    if (sKey.IsEmpty()) return false;
    for (const auto & pEintrag : dbDatabaseRO.SelectPool(sKey))
        vEintraege.push_back(pEintrag.get());
    return !vEintraege.empty();
}

namespace orvostat {

int & EntlieheneRSets() {
    static int s_iAnzahl = 0;
    return s_iAnzahl;
}

} // namespace orvostat

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
    m_pWeg.reset();
    m_pSpeicher.reset();
    m_menge.bOffen = false;
    m_menge.fFilter = nullptr;
    m_pZwischen.reset();
    m_fFilter = nullptr;
    m_iZustand = ZEILE_KEINE;
}

void CMxRSet::ModifyFilter(std::function<bool()> f) { m_fFilter = std::move(f); }

void CMxRSet::AddKeysBW(const CString & sVon, const CString & sBis) {
    m_pZwischen = std::make_unique<CZwischen>(sVon, sBis);
}

int CMxRSet::ExecSQL(const CString &) { return ZEILE_FEHLER; }

int CMxRSet::GetAll() {
    if (!NeueMenge(m_iKey)) return ZEILE_FEHLER;
    return First();
}

int CMxRSet::GetRecByParam(std::initializer_list<CString> vTeile) {
    ClearKey();
    const std::size_t iKey = static_cast<std::size_t>(m_iKey) - 1;
    if (iKey >= Tabelle().vSchluessel.size()) return ZEILE_FEHLER;
    const auto vSpalten = Tabelle().vSchluessel[iKey].Spalten();
    std::size_t i = 0;
    for (const CString & sTeil : vTeile)
        if (i < vSpalten.size()) *Felder()[vSpalten[i++]] = sTeil;
    return GetRecByKey(m_iKey, MATCH_GENAU);
}

int CMxRSet::GetRecByKey(int iKey, MatchMode mode) {
    const auto pZwischen = std::move(m_pZwischen);
    if (!NeueMenge(iKey)) return ZEILE_FEHLER;
    VorZugriff();
    Begrenze(mode, pZwischen.get());
    return First();
}

// Begins the set of a read with the whole table; false for a key that the table lacks.
bool CMxRSet::NeueMenge(int iKey) {
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
