#include "PostgresVerbindung.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace orvostat {

namespace {

// In UTF-8 what stands for a character of 0.
constexpr std::string_view ERSATZ_FUER_NULL = "\xE2\x90\x80";

// Rows come by key, always: the walks of a practice are long or short, but never unordered. A group waits for another
// one of the same practice as long as it would for a file.
constexpr const char * SITZUNG =
    "SET enable_seqscan = off; SET enable_bitmapscan = off; SET enable_sort = off;"
    "SET plan_cache_mode = force_generic_plan; SET jit = off;"
    "SET max_parallel_workers_per_gather = 0; SET lock_timeout = 5000;"
    "SET idle_in_transaction_session_timeout = 0; SET bytea_output = hex";

// What the server's five letters mean for the user, by their beginning; the first that fits counts.
constexpr struct {
    std::string_view sAnfang;
    EServerursache eUrsache;
} ZUSTAENDE[] = {
    {"08", EServerursache::Verbindung},     {"57P", EServerursache::Verbindung},
    {"28", EServerursache::Anmeldung},      {"3D", EServerursache::KeineDatenbank},
    {"42501", EServerursache::KeinRecht},   {"53100", EServerursache::Voll},
    {"53", EServerursache::Ueberlastet},    {"55P03", EServerursache::Gesperrt},
    {"40", EServerursache::Gesperrt},       {"25006", EServerursache::NurLesen},
    {"54000", EServerursache::Schluessel},  {"57014", EServerursache::Abgebrochen},
    {"42P01", EServerursache::Veraendert},  {"42703", EServerursache::Veraendert},
    {"23505", EServerursache::SchonDa},     {"XX001", EServerursache::Beschaedigt},
    {"XX002", EServerursache::Beschaedigt}, {"58030", EServerursache::Beschaedigt},
    {"25P03", EServerursache::Verbindung},
};

EServerursache Ursache(std::string_view sZustand) {
    for (const auto & [sAnfang, eUrsache] : ZUSTAENDE)
        if (sZustand.starts_with(sAnfang)) return eUrsache;
    return EServerursache::Andere;
}

// On one line.
std::string Einzeilig(const char * pText) {
    std::string s(pText == nullptr ? "" : pText);
    s.erase(s.find_last_not_of(" \n\r") + 1);
    std::replace(s.begin(), s.end(), '\n', ' ');
    return s;
}

} // namespace

const char * Ursachentext(EServerursache eUrsache) {
    switch (eUrsache) {
    case EServerursache::Verbindung:
        return "die Verbindung zum Server kommt nicht zustande oder ist abgebrochen";
    case EServerursache::Anmeldung:
        return "der Server lässt diese Anmeldung nicht zu";
    case EServerursache::KeineDatenbank:
        return "der Server kennt diese Datenbank nicht";
    case EServerursache::KeinRecht:
        return "die Berechtigung dafür fehlt";
    case EServerursache::Gesperrt:
        return "ein anderes Programm schreibt gerade in die Praxis";
    case EServerursache::Voll:
        return "der Datenträger des Servers ist voll";
    case EServerursache::NurLesen:
        return "der Server lässt nur Lesen zu";
    case EServerursache::Veraendert:
        return "eine Tabelle fehlt oder ist anders aufgebaut";
    case EServerursache::Schluessel:
        return "ein Schlüssel ist für den Server zu lang";
    case EServerursache::Beschaedigt:
        return "der Server meldet einen Schaden an der Datenbank oder am Datenträger";
    case EServerursache::Ueberlastet:
        return "der Server ist überlastet";
    case EServerursache::KeinSpeicher:
        return "der Speicher reicht nicht";
    case EServerursache::Abgebrochen:
        return "der Server hat die Anfrage abgebrochen";
    case EServerursache::SchonDa:
        return "die Praxis gibt es schon";
    case EServerursache::Offen:
        return "die Verbindung brach beim Abschließen ab, und ob die Änderung gilt, ist offen";
    case EServerursache::Keine:
    case EServerursache::Andere:
        break;
    }
    return "";
}

// ---- values

void HaengeZahlAn(std::string & sBytes, std::int64_t iZahl, int iBytes) {
    for (int i = iBytes - 1; i >= 0; --i)
        sBytes += static_cast<char>(static_cast<std::uint64_t>(iZahl) >> (8 * i));
}

void HaengeTextAn(std::string & sBytes, const CString & sText) {
    const CSicht sicht = sText.Sicht();
    const std::size_t iAb = sBytes.size();
    if (IstAscii(sicht))
        sBytes += sicht;
    else
        sBytes += NachUtf8(sicht);
    for (std::size_t i = iAb; (i = sBytes.find('\0', i)) != sBytes.npos; i += ERSATZ_FUER_NULL.size())
        sBytes.replace(i, 1, ERSATZ_FUER_NULL);
}

CServerwerte & CServerwerte::Ende() {
    m_viLaengen.push_back(static_cast<int>(m_sBytes.size() - (m_viEnden.empty() ? 0 : m_viEnden.back())));
    m_viEnden.push_back(m_sBytes.size());
    m_viFormate.push_back(1);
    return *this;
}
CServerwerte & CServerwerte::Bytes(std::string_view s) {
    m_sBytes += s;
    return Ende();
}
CServerwerte & CServerwerte::Zahl(std::int64_t i) {
    HaengeZahlAn(m_sBytes, i);
    return Ende();
}
CServerwerte & CServerwerte::Text(const CString & s) {
    HaengeTextAn(m_sBytes, s);
    return Ende();
}

const char * const * CServerwerte::Werte() {
    m_vpWerte.clear();
    for (std::size_t i = 0; i < m_viEnden.size(); ++i)
        m_vpWerte.push_back(m_sBytes.data() + (i == 0 ? 0 : m_viEnden[i - 1]));
    return m_vpWerte.data();
}

std::int64_t Zahl(const PGresult * p, int iZeile, int iSpalte) {
    std::uint64_t i = 0;
    for (const char c : Bytes(p, iZeile, iSpalte))
        i = i << 8 | static_cast<unsigned char>(c);
    return static_cast<std::int64_t>(i);
}

namespace {

// One with characters of 0, or the substitute by a foreign hand.
void LiesMitErsatz(std::string_view s, CString & sText) {
    std::string sBytes;
    for (std::size_t i = 0; i < s.size();) {
        const std::size_t iStelle = s.find(ERSATZ_FUER_NULL, i);
        sBytes += CSicht(AusUtf8(s.substr(i, iStelle - i))).Text();
        if (iStelle == s.npos) break;
        sBytes += '\0';
        i = iStelle + ERSATZ_FUER_NULL.size();
    }
    sText = CString(std::string_view(sBytes));
}

} // namespace

void LiesZeile(const PGresult * p, int iZeile, CFelder vFelder) {
    int i = 0;
    for (CString * pFeld : vFelder) {
        const std::string_view s = Bytes(p, iZeile, i++);
        if (s.size() >= ERSATZ_FUER_NULL.size() &&
            std::memchr(s.data(), ERSATZ_FUER_NULL[0], s.size()) != nullptr &&
            s.find(ERSATZ_FUER_NULL) != s.npos)
            LiesMitErsatz(s, *pFeld);
        else
            pFeld->SetzeUtf8(s.data(), s.size());
    }
}

// ---- the connection

bool CSerververbindung::Verbinde() {
    // What stands before the connection's text is a default, what stands behind it counts in any case.
    const char * const apNamen[] = {"connect_timeout",
                                    "keepalives_idle",
                                    "tcp_user_timeout",
                                    "application_name",
                                    "dbname",
                                    "client_encoding",
                                    nullptr};
    const char * const apWerte[] = {"10", "30", "30000", "orvostat", m_sVerbindung.c_str(), "UTF8", nullptr};
    m_pUnterwegs = nullptr;
    m_p.reset();
    m_p.reset(PQconnectdbParams(apNamen, apWerte, 1));
    ++m_iVerbindung;
    ++m_iStand;
    if (Getrennt()) {
        Merke(nullptr);
        if (PQconnectionNeedsPassword(m_p.get()) != 0 || PQconnectionUsedPassword(m_p.get()) != 0)
            m_eUrsache = EServerursache::Anmeldung;
        return false;
    }
    PQsetNoticeProcessor(
        m_p.get(), [](void *, const char *) {}, nullptr);
    return FuehreAlle(SITZUNG) && (!m_bNurLesen || FuehreAlle("SET default_transaction_read_only = on"));
}

bool CSerververbindung::Scheitere(EServerursache eUrsache) noexcept {
    m_eUrsache = eUrsache;
    m_sFehler.clear();
    return false;
}

// A connection that breaks while it is made or used has no letters.
void CSerververbindung::Merke(const PGresult * p) noexcept {
    try {
        const char * pZustand = p == nullptr ? nullptr : PQresultErrorField(p, PG_DIAG_SQLSTATE);
        const char * pText = p == nullptr ? nullptr : PQresultErrorField(p, PG_DIAG_MESSAGE_PRIMARY);
        m_sFehler = Einzeilig(pText == nullptr ? PQerrorMessage(m_p.get()) : pText);
        m_eUrsache = pZustand != nullptr ? Ursache(pZustand)
                     : Getrennt()        ? EServerursache::Verbindung
                                         : EServerursache::Andere;
        if (m_eUrsache == EServerursache::Andere && m_sFehler.starts_with("out of memory"))
            m_eUrsache = EServerursache::KeinSpeicher;
    } catch (const std::bad_alloc &) {
        Scheitere(EServerursache::KeinSpeicher);
    }
}

CServererzeugnis CSerververbindung::Nimm(PGresult * pRoh) {
    CServererzeugnis p(pRoh);
    const ExecStatusType eStatus = PQresultStatus(p.get());
    if (eStatus == PGRES_TUPLES_OK || eStatus == PGRES_COMMAND_OK || eStatus == PGRES_COPY_IN) return p;
    Merke(p.get());
    if (!Getrennt() && PQtransactionStatus(m_p.get()) == PQTRANS_INERROR)
        PQclear(PQexec(m_p.get(), "ROLLBACK"));
    ++m_iStand;
    return nullptr;
}

void CSerververbindung::Raeume() {
    if (m_pUnterwegs == nullptr) return;
    SVorgriff & vorgriff = *std::exchange(m_pUnterwegs, nullptr);
    vorgriff.bUnterwegs = false;
    PGresult * const pErstes = PQgetResult(m_p.get());
    while (PGresult * p = PQgetResult(m_p.get()))
        PQclear(p);
    vorgriff.pErgebnis = Nimm(pErstes);
}

CServererzeugnis CSerververbindung::Fuehre(const char * pSql, CServerwerte & werte) {
    Raeume();
    return Nimm(PQexecParams(m_p.get(), pSql, werte.Anzahl(), nullptr, werte.Werte(), werte.Laengen(),
                             werte.Formate(), 1));
}

CServererzeugnis CSerververbindung::FuehreAlle(const char * pSql) {
    Raeume();
    return Nimm(PQexec(m_p.get(), pSql));
}

bool CSerververbindung::Bereite(SServeranweisung & anweisung, const std::string & sSql) {
    Raeume();
    anweisung.sName = "a" + std::to_string(++m_iAnweisungen);
    if (!Nimm(PQprepare(m_p.get(), anweisung.sName.c_str(), sSql.c_str(), 0, nullptr))) return false;
    anweisung.iVerbindung = m_iVerbindung;
    return true;
}

bool CSerververbindung::Lade(const char * pSql, std::string_view sZeilen) {
    static constexpr std::string_view KOPF{"PGCOPY\n\377\r\n\0\0\0\0\0\0\0\0\0", 19};
    static constexpr std::string_view ENDE{"\377\377", 2};
    if (!FuehreAlle(pSql)) return false;
    bool bGut = true;
    for (const std::string_view s : {KOPF, sZeilen, ENDE})
        bGut = bGut && PQputCopyData(m_p.get(), s.data(), static_cast<int>(s.size())) == 1;
    bGut = PQputCopyEnd(m_p.get(), bGut ? nullptr : "aborted") == 1 && bGut;
    PGresult * const pErstes = PQgetResult(m_p.get());
    while (PGresult * p = PQgetResult(m_p.get()))
        PQclear(p);
    return Nimm(pErstes) && bGut;
}

void CSerververbindung::Schicke(const char * pSql, SVorgriff & vorgriff) {
    Raeume();
    vorgriff.pErgebnis = nullptr;
    if (PQsendQueryParams(m_p.get(), pSql, 0, nullptr, nullptr, nullptr, nullptr, 1) == 0) {
        Merke(nullptr);
        return;
    }
    vorgriff.bUnterwegs = true;
    m_pUnterwegs = &vorgriff;
}

CServererzeugnis CSerververbindung::Hole(SVorgriff & vorgriff) {
    if (m_pUnterwegs == &vorgriff) Raeume();
    return std::move(vorgriff.pErgebnis);
}

void CSerververbindung::Vergiss(SVorgriff & vorgriff) noexcept {
    if (m_pUnterwegs == &vorgriff) Raeume();
}

} // namespace orvostat
