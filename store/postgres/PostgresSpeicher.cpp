#include "orvostatbs/postgres/PostgresSpeicher.h"

#include "PostgresVorrat.h"
#include "PostgresWeg.h"

#include <optional>
#include <utility>

namespace orvostat {

namespace {

constexpr int AELTESTER_SERVER = 130000;
constexpr std::size_t PRAXISNAME_MAX = 60;

// Why a database is refused; the sentence goes on behind its name.
using CGrund = std::optional<CString>;

CGrund Grund(const CSerververbindung & v, const CString & sWas) {
    const std::string sText = Ursachentext(v.LetzteUrsache());
    CString s;
    s.Format("lässt sich nicht %s: %s."_t, sWas, AusUtf8(sText.empty() ? v.LetzterFehler() : sText));
    return s;
}

// The first column of a statement's first row as its text; nothing if there is no row, the failure noted if it failed.
std::optional<std::string> Text(CSerververbindung & v, const char * pSql, bool & bGut) {
    const auto p = v.FuehreAlle(pSql);
    bGut = p != nullptr;
    if (!p || PQntuples(p.get()) == 0) return {};
    return std::string(Bytes(p.get(), 0, 0));
}

// An unlocked look first: who only adds a practice need not be allowed to make tables.
bool LegeAn(CSerververbindung & v) {
    bool bGut = false;
    const auto sDa = Text(v, R"(SELECT to_regclass('"SCHEMAVERSION"'))", bGut);
    if (!bGut || !sDa->empty()) return bGut;
    const std::string sSql =
        "BEGIN; SELECT pg_advisory_xact_lock(1330861122);" + serverschema::Anlage() + "COMMIT";
    return v.FuehreAlle(sSql.c_str()) != nullptr;
}

CGrund PruefeServer(CSerververbindung & v) {
    if (PQserverVersion(v.Griff()) < AELTESTER_SERVER) return "liegt auf einem Server vor der Version 13."_t;
    const char * pZeichen = PQparameterStatus(v.Griff(), "server_encoding");
    if (pZeichen == nullptr || std::string_view(pZeichen) != "UTF8") return "ist nicht in UTF-8 angelegt."_t;
    return {};
}

CGrund PruefeSchema(CSerververbindung & v) {
    bool bGut = false;
    const auto sDa = Text(v, R"(SELECT to_regclass('"SCHEMAVERSION"'))", bGut);
    if (!bGut) return Grund(v, "lesen");
    if (sDa->empty()) return "enthält keine Praxis."_t;
    const auto sVersion = Text(v, R"(SELECT "VERSION" FROM "SCHEMAVERSION")", bGut);
    if (!bGut) return Grund(v, "lesen");
    if (sVersion.value_or("") != std::to_string(serverschema::VERSION)) {
        CString s;
        s.Format("hat die Schemaversion %s; dieses Programm kennt die Version %d."_t,
                 AusUtf8(sVersion.value_or("")), serverschema::VERSION);
        return s;
    }
    if (!v.FuehreAlle(serverschema::Probe().c_str())) return Grund(v, "lesen");
    return {};
}

// A server that follows another one, and a user who may only read.
CGrund PruefeSchreibrecht(CSerververbindung & v) {
    bool bGut = false;
    const auto s =
        Text(v, R"(SELECT NOT pg_is_in_recovery() AND has_table_privilege('"LAUFNUMMER"', 'UPDATE'))", bGut);
    if (!bGut) return Grund(v, "schreiben"_t);
    if (*s != "t") return "ist schreibgeschützt."_t;
    return {};
}

// The practice meant, as it is named in the database; bNeu: it must not be there yet.
CGrund WaehlePraxis(CSerververbindung & v, bool bNeu, std::string & sPraxis) {
    if (bNeu && sPraxis.empty()) sPraxis = "1";
    if (sPraxis.size() > PRAXISNAME_MAX || sPraxis.find('\0') != sPraxis.npos)
        return "kann keine Praxis dieses Namens haben."_t;
    CServerwerte werte;
    werte.Bytes(sPraxis);
    const auto p = v.Fuehre(
        R"(SELECT "PRAXIS" FROM "LAUFNUMMER" WHERE $1::text = '' OR "PRAXIS" = $1::text ORDER BY 1 LIMIT 2)",
        werte);
    if (!p) return Grund(v, "lesen");
    const int iAnzahl = PQntuples(p.get());
    CString s;
    if (bNeu && iAnzahl > 0)
        s.Format("hat schon eine Praxis \"%s\"."_t, AusUtf8(sPraxis));
    else if (!bNeu && iAnzahl == 0 && sPraxis.empty())
        s = "enthält keine Praxis."_t;
    else if (!bNeu && iAnzahl == 0)
        s.Format("hat keine Praxis \"%s\"."_t, AusUtf8(sPraxis));
    else if (iAnzahl > 1)
        s = "hat mehrere Praxen; gesagt werden muss, welche gemeint ist."_t;
    if (!s.IsEmpty()) return s;
    if (iAnzahl == 1) sPraxis = Bytes(p.get(), 0, 0);
    return {};
}

CGrund OeffneDatenbank(CServerdatenbank & datenbank, EServermodus eModus, std::string sPraxis) {
    CSerververbindung & v = datenbank.Verbindung();
    const bool bNeu = eModus == EServermodus::Anlegen;
    if (!v.Verbinde()) {
        CGrund grund = Grund(v, "öffnen");
        if (!v.LetzterFehler().empty()) *grund += " ("_t + AusUtf8(v.LetzterFehler()) + ")"_t;
        return grund;
    }
    if (CGrund grund = PruefeServer(v)) return grund;
    if (bNeu && !LegeAn(v)) return Grund(v, "anlegen"_t);
    if (CGrund grund = PruefeSchema(v)) return grund;
    if (eModus != EServermodus::Lesen)
        if (CGrund grund = PruefeSchreibrecht(v)) return grund;
    if (CGrund grund = WaehlePraxis(v, bNeu, sPraxis)) return grund;
    datenbank.SetzePraxis(std::move(sPraxis), bNeu);
    return {};
}

} // namespace

std::string CPostgresSpeicher::Anzeigename(const std::string & sVerbindung) {
    struct SFreigabe {
        void operator()(PQconninfoOption * p) const { PQconninfoFree(p); }
    };
    const std::unique_ptr<PQconninfoOption, SFreigabe> p(PQconninfoParse(sVerbindung.c_str(), nullptr));
    std::string sName, sServer;
    for (const PQconninfoOption * q = p.get(); q != nullptr && q->keyword != nullptr; ++q) {
        const std::string_view sWort = q->keyword;
        if (q->val == nullptr) continue;
        if (sWort == "dbname") sName = q->val;
        if (sWort == "host" || (sWort == "hostaddr" && sServer.empty())) sServer = q->val;
    }
    return "\"" + sName + "\"" + (sServer.empty() ? "" : " auf \"" + sServer + "\"");
}

bool CPostgresSpeicher::IstVerbindung(std::string_view sText) {
    return sText.starts_with("postgresql://") || sText.starts_with("postgres://");
}

std::shared_ptr<CPostgresSpeicher> CPostgresSpeicher::OeffneServer(const std::string & sVerbindung,
                                                                   const std::string & sPraxis,
                                                                   EServermodus eModus, CString & sMeldung) {
    auto pDatenbank = std::make_unique<CServerdatenbank>(sVerbindung, eModus == EServermodus::Lesen);
    sMeldung.Empty();
    if (const CGrund grund = OeffneDatenbank(*pDatenbank, eModus, sPraxis)) {
        sMeldung.Format("Die Datenbank %s %s"_t, AusUtf8(Anzeigename(sVerbindung)), *grund);
        return nullptr;
    }
    return std::shared_ptr<CPostgresSpeicher>(new CPostgresSpeicher(std::move(pDatenbank)));
}

CPostgresSpeicher::CPostgresSpeicher(std::unique_ptr<CServerdatenbank> pDatenbank)
    : m_pDatenbank(std::move(pDatenbank)), m_pVorrat(std::make_unique<CServervorrat>(*m_pDatenbank)) {}
CPostgresSpeicher::~CPostgresSpeicher() = default;

std::unique_ptr<CZeilenmenge> CPostgresSpeicher::Oeffne(const STabelle & tabelle, const SBereich & bereich) {
    if (bereich.iSchluessel < 1 || static_cast<std::size_t>(bereich.iSchluessel) > tabelle.vSchluessel.size())
        return nullptr;
    if (auto pWeg = m_pVorrat->Oeffne(tabelle, bereich)) return pWeg;
    return std::make_unique<CPostgresWeg>(*m_pDatenbank, tabelle, bereich);
}

int CPostgresSpeicher::Schreibe(const STabelle & tabelle, CWerte vWerte) {
    return m_pDatenbank->Fuege(tabelle, vWerte);
}
int CPostgresSpeicher::Beginne() { return m_pDatenbank->Beginne(); }
int CPostgresSpeicher::Beende(bool bUebernehmen) { return m_pDatenbank->Beende(bUebernehmen); }
std::int64_t CPostgresSpeicher::Zeilenzahl(const STabelle & tabelle) { return m_pDatenbank->Zaehle(tabelle); }
bool CPostgresSpeicher::NurLesen() const { return m_pDatenbank->NurLesen(); }
EServerursache CPostgresSpeicher::LetzteUrsache() const { return m_pDatenbank->Verbindung().LetzteUrsache(); }

EZeilenursache CPostgresSpeicher::Fehlerursache() const {
    switch (LetzteUrsache()) {
    case EServerursache::Voll:
        return EZeilenursache::Voll;
    case EServerursache::Beschaedigt: // the database or its disk
        return EZeilenursache::Geraet;
    case EServerursache::KeinRecht:
    case EServerursache::NurLesen:
        return EZeilenursache::KeinZugriff;
    default:
        return EZeilenursache::Unbekannt;
    }
}
const std::string & CPostgresSpeicher::LetzterFehler() const {
    return m_pDatenbank->Verbindung().LetzterFehler();
}
const std::string & CPostgresSpeicher::Praxis() const { return m_pDatenbank->Praxis(); }

} // namespace orvostat
