#include "PostgresDatenbank.h"

#include <chrono>
#include <new>
#include <string_view>
#include <thread>

namespace orvostat {

namespace {

// So much is sent at once.
constexpr std::size_t SENDUNG = 256 * 1024;

// Statements of a table beside its walks, whose numbers are 16 and more.
enum EAnweisung : int { ANWEISUNG_AENDERE, ANWEISUNG_LOESCHE, ANWEISUNG_ZAEHLE };

void LiesSchluessel(SServerplatz & platz, const STabelle & tabelle, CWerte vWerte) {
    for (std::size_t k = 1; k <= tabelle.vSchluessel.size(); ++k)
        platz.vSchluessel.push_back(Schluesselbytes(tabelle, static_cast<int>(k), vWerte));
}

// A value of a row as COPY takes it, with its length before it.
template <class F> void HaengeFeldAn(std::string & sBytes, F fHaenge) {
    const std::size_t iAb = sBytes.size();
    sBytes.append(4, '\0');
    fHaenge();
    std::string sLaenge;
    HaengeZahlAn(sLaenge, static_cast<std::int64_t>(sBytes.size() - iAb - 4), 4);
    sBytes.replace(iAb, 4, sLaenge);
}

} // namespace

// ---- reads

bool CServerdatenbank::Lesebereit() {
    if (m_v.Getrennt() && !m_v.Verbinde()) return false;
    if (!NurLesen()) return Sende();
    return m_v.InTransaktion() || m_v.FuehreAlle("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

template <class F>
CServererzeugnis CServerdatenbank::Fuehre(const STabelle & tabelle, int iArt, F fSql, CServerwerte & werte) {
    CServererzeugnis p = m_v.Fuehre(m_mapAnweisungen[{&tabelle, iArt}], fSql, werte);
    if (!p) (void)Steht();
    return p;
}

namespace {

void HaengeGrenzenAn(CServerwerte & werte, const serverschema::SWegart & art, std::string_view sAb,
                     std::int64_t iAb, std::string_view sBis) {
    if (art.bAb) werte.Bytes(sAb).Zahl(iAb);
    if (art.bBis) werte.Bytes(sBis);
}

} // namespace

CServererzeugnis CServerdatenbank::Block(const STabelle & tabelle, const serverschema::SWegart & art,
                                         std::int64_t iZeilen, std::string_view sAb, std::int64_t iAb,
                                         std::string_view sBis) {
    CServerwerte werte;
    werte.Bytes(m_sPraxis).Zahl(iZeilen);
    HaengeGrenzenAn(werte, art, sAb, iAb, sBis);
    return Fuehre(
        tabelle, art.Nummer(), [&] { return serverschema::Block(tabelle, art); }, werte);
}

bool CServerdatenbank::OeffneZeiger(const std::string & sName, const STabelle & tabelle,
                                    const serverschema::SWegart & art, std::string_view sAb, std::int64_t iAb,
                                    std::string_view sBis) {
    CServerwerte werte;
    werte.Bytes(m_sPraxis).Zahl(0);
    HaengeGrenzenAn(werte, art, sAb, iAb, sBis);
    const std::string sSql =
        "DECLARE " + sName + " NO SCROLL CURSOR FOR " + serverschema::Zeiger(tabelle, art);
    return m_v.Fuehre(sSql.c_str(), werte) != nullptr;
}

std::int64_t CServerdatenbank::Zaehle(const STabelle & tabelle) {
    CServerwerte werte;
    werte.Bytes(m_sPraxis);
    if (!Lesebereit()) return -1;
    const auto p = Fuehre(
        tabelle, ANWEISUNG_ZAEHLE, [&] { return serverschema::Zaehle(tabelle); }, werte);
    return p ? Zahl(p.get(), 0, 0) : -1;
}

// ---- groups

// Whether the open group is still one on the server. Every failure there, and every lost connection, has ended it.
bool CServerdatenbank::Steht() {
    if (m_iTiefe > 0 && !m_bVerloren && m_v.Stand() != m_iGruppenstand) NimmZurueck();
    return m_iTiefe > 0 && !m_bVerloren;
}

bool CServerdatenbank::BeginneTransaktion() {
    if (m_v.Getrennt() && !m_v.Verbinde()) return false;
    if (!m_v.FuehreAlle("BEGIN ISOLATION LEVEL READ COMMITTED")) return false;
    CServerwerte werte;
    werte.Bytes(m_sPraxis);
    const auto p = m_v.Fuehre(m_bNeu ? serverschema::ERSTE_LAUFNUMMER : serverschema::LIES_LAUFNUMMER, werte);
    if (!p || PQntuples(p.get()) != 1) {
        if (p) m_v.Scheitere(EServerursache::Veraendert);
        if (m_v.InTransaktion()) (void)m_v.FuehreAlle("ROLLBACK");
        return false;
    }
    m_iLfd = m_iLfdAmAnfang = Zahl(p.get(), 0, 0);
    m_sTransaktion = Bytes(p.get(), 0, 1);
    m_iGruppenstand = m_v.Stand();
    return true;
}

int CServerdatenbank::Beginne() {
    if (NurLesen()) return ZEILE_VERWEIGERT;
    if (m_iTiefe == 0) {
        if (!BeginneTransaktion()) return ZEILE_FEHLER;
        m_bVerworfen = m_bVerloren = false;
    }
    ++m_iTiefe;
    return ZEILE_OK;
}

// Lets go of what the group has written; the server has done so already or is about to.
void CServerdatenbank::NimmZurueck() {
    m_bVerloren = true;
    m_sWartende.clear();
    ++m_iAenderungen;
}

int CServerdatenbank::Beende(bool bUebernehmen) {
    if (NurLesen()) return ZEILE_VERWEIGERT;
    if (m_iTiefe == 0) return ZEILE_FEHLER;
    (void)Steht();
    m_bVerworfen = m_bVerworfen || m_bVerloren || !bUebernehmen;
    if (m_iTiefe == 1) {
        if (!m_bVerworfen && Uebernimm())
            m_bNeu = false;
        else
            Verwirf();
    }
    --m_iTiefe;
    return bUebernehmen && m_bVerworfen ? ZEILE_FEHLER : ZEILE_OK;
}

void CServerdatenbank::Verwirf() {
    m_bVerworfen = true;
    NimmZurueck();
    if (!m_v.Getrennt() && m_v.InTransaktion()) (void)m_v.FuehreAlle("ROLLBACK");
}

bool CServerdatenbank::Uebernimm() {
    if (!Sende()) return false;
    if (m_iLfd != m_iLfdAmAnfang) {
        CServerwerte werte;
        werte.Bytes(m_sPraxis).Zahl(m_iLfd);
        if (!m_v.Fuehre(serverschema::SCHREIBE_LAUFNUMMER, werte)) return false;
    }
    const auto p = m_v.FuehreAlle("COMMIT");
    if (p) return std::string_view(PQcmdStatus(p.get())) == "COMMIT";
    return m_v.Getrennt() && IstUebernommen();
}

// A connection that breaks while a group ends leaves open whether it took effect: so the server is asked, as soon as
// it can be.
bool CServerdatenbank::IstUebernommen() {
    using namespace std::chrono_literals;
    for (int i = 0; i < 50; ++i, std::this_thread::sleep_for(100ms)) {
        if (m_v.Getrennt() && !m_v.Verbinde()) continue;
        CServerwerte werte;
        werte.Bytes(m_sTransaktion);
        const auto p = m_v.Fuehre("SELECT pg_xact_status($1::text::xid8)", werte);
        const std::string_view sStand = p ? Bytes(p.get(), 0, 0) : "";
        if (sStand == "committed") return true;
        if (sStand == "aborted") return m_v.Scheitere(EServerursache::Verbindung);
    }
    return m_v.Scheitere(EServerursache::Offen);
}

// ---- writes

// Runs a write inside the open group, or in one of its own.
template <class F> int CServerdatenbank::InGruppe(F f) {
    if (NurLesen()) return ZEILE_VERWEIGERT;
    if (m_iTiefe > 0) return Steht() ? f() : static_cast<int>(ZEILE_FEHLER);
    if (const int iBeginn = Beginne(); iBeginn != ZEILE_OK) return iBeginn;
    int iErgebnis;
    try {
        iErgebnis = f();
    } catch (...) {
        Beende(false);
        throw;
    }
    const int iEnde = Beende(iErgebnis == ZEILE_OK);
    return iErgebnis == ZEILE_OK ? iEnde : iErgebnis;
}

bool CServerdatenbank::Sende() {
    if (m_iTiefe == 0 || m_sWartende.empty()) return true;
    const std::string sZeilen = std::exchange(m_sWartende, {});
    if (!Steht()) return false;
    if (m_v.Lade(serverschema::Lade(*m_pWarteschlange).c_str(), sZeilen)) return true;
    NimmZurueck();
    return false;
}

int CServerdatenbank::Fuege(const STabelle & tabelle, CWerte vWerte) {
    return InGruppe([&]() -> int {
        if ((m_pWarteschlange != &tabelle || m_sWartende.size() >= SENDUNG) && !Sende()) return ZEILE_FEHLER;
        m_pWarteschlange = &tabelle;
        const std::size_t iAb = m_sWartende.size();
        try {
            HaengeZahlAn(m_sWartende,
                         static_cast<std::int64_t>(2 + vWerte.size() + tabelle.vSchluessel.size()), 2);
            HaengeFeldAn(m_sWartende, [&] { m_sWartende += m_sPraxis; });
            for (const CString * pWert : vWerte)
                HaengeFeldAn(m_sWartende, [&] { HaengeTextAn(m_sWartende, *pWert); });
            HaengeFeldAn(m_sWartende, [&] { HaengeZahlAn(m_sWartende, m_iLfd + 1); });
            for (int k = 1; k <= static_cast<int>(tabelle.vSchluessel.size()); ++k)
                HaengeFeldAn(m_sWartende, [&] { HaengeSchluesselAn(m_sWartende, tabelle, k, vWerte); });
        } catch (const std::bad_alloc &) {
            m_sWartende.resize(iAb);
            throw;
        }
        ++m_iLfd;
        return ZEILE_OK;
    });
}

// What a change of rows has answered.
int CServerdatenbank::Geaendert(const CServererzeugnis & p) {
    if (!p) return ZEILE_FEHLER;
    if (std::string_view(PQcmdTuples(p.get())) == "0") return ZEILE_KEINE;
    ++m_iAenderungen;
    return ZEILE_OK;
}

int CServerdatenbank::Loesche(const STabelle & tabelle, const SServerplatz & platz) {
    return InGruppe([&]() -> int {
        CServerwerte werte;
        werte.Bytes(m_sPraxis).Bytes(platz.vSchluessel[0]).Zahl(platz.iLfd);
        return Geaendert(Fuehre(
            tabelle, ANWEISUNG_LOESCHE, [&] { return serverschema::Loesche(tabelle); }, werte));
    });
}

int CServerdatenbank::Aendere(const STabelle & tabelle, SServerplatz & platz, CWerte vWerte) {
    SServerplatz neu;
    const int iErgebnis = InGruppe([&]() -> int {
        LiesSchluessel(neu, tabelle, vWerte);
        neu.iLfd = neu.vSchluessel == platz.vSchluessel ? platz.iLfd : ++m_iLfd;
        CServerwerte werte;
        werte.Bytes(m_sPraxis);
        for (const CString * pWert : vWerte)
            werte.Text(*pWert);
        werte.Zahl(neu.iLfd);
        for (const std::string & sSchluessel : neu.vSchluessel)
            werte.Bytes(sSchluessel);
        werte.Bytes(platz.vSchluessel[0]).Zahl(platz.iLfd);
        return Geaendert(Fuehre(
            tabelle, ANWEISUNG_AENDERE, [&] { return serverschema::Aendere(tabelle); }, werte));
    });
    if (iErgebnis == ZEILE_OK) platz = std::move(neu);
    return iErgebnis;
}

} // namespace orvostat
