// The connection to the server: statements over it, what they fail with, and how it is made again.
#pragma once

#include "orvostatbs/postgres/PostgresSpeicher.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <libpq-fe.h>

namespace orvostat {

struct SServerfreigabe {
    void operator()(PGconn * p) const { PQfinish(p); }
    void operator()(PGresult * p) const { PQclear(p); }
};
using CServererzeugnis = std::unique_ptr<PGresult, SServerfreigabe>;

// A number as the server's binary form has it, so many bytes of it.
void HaengeZahlAn(std::string & sBytes, std::int64_t iZahl, int iBytes = 8);
// A text in UTF-8, its characters of 0 as U+2400.
void HaengeTextAn(std::string & sBytes, const CString & sText);

// The values of a statement's parameters, in the server's binary form.
class CServerwerte {
public:
    CServerwerte & Bytes(std::string_view s);
    CServerwerte & Zahl(std::int64_t i);
    CServerwerte & Text(const CString & s);
    [[nodiscard]] int Anzahl() const { return static_cast<int>(m_viEnden.size()); }
    // Valid until the next value is added.
    [[nodiscard]] const char * const * Werte();
    [[nodiscard]] const int * Laengen() const { return m_viLaengen.data(); }
    [[nodiscard]] const int * Formate() const { return m_viFormate.data(); }

private:
    CServerwerte & Ende();

    std::string m_sBytes;
    std::vector<std::size_t> m_viEnden;
    std::vector<const char *> m_vpWerte;
    std::vector<int> m_viLaengen;
    std::vector<int> m_viFormate;
};

// The columns of a result's row.
[[nodiscard]] inline std::string_view Bytes(const PGresult * p, int iZeile, int iSpalte) {
    return {PQgetvalue(p, iZeile, iSpalte), static_cast<std::size_t>(PQgetlength(p, iZeile, iSpalte))};
}
[[nodiscard]] std::int64_t Zahl(const PGresult * p, int iZeile, int iSpalte);
void LiesZeile(const PGresult * p, int iZeile, CFelder vFelder);

// A statement that the server keeps prepared, as long as the connection is the same.
struct SServeranweisung {
    std::uint64_t iVerbindung = 0;
    std::string sName;
};

// A piece of rows that was asked for before it is needed. It comes when another statement needs the connection, or
// when it is fetched; null if it failed.
struct SVorgriff {
    bool bUnterwegs = false;
    CServererzeugnis pErgebnis;
};

class CSerververbindung {
public:
    CSerververbindung(std::string sVerbindung, bool bNurLesen)
        : m_sVerbindung(std::move(sVerbindung)), m_bNurLesen(bNurLesen) {}

    // Connects, a second time too; false, and the failure noted, if that does not go.
    bool Verbinde();
    [[nodiscard]] bool Getrennt() const { return PQstatus(m_p.get()) != CONNECTION_OK; }
    [[nodiscard]] PGconn * Griff() const { return m_p.get(); }
    [[nodiscard]] bool NurLesen() const { return m_bNurLesen; }
    // Changes with each connection and wherever a transaction ends: what a transaction held is gone then.
    [[nodiscard]] std::uint64_t Stand() const { return m_iStand; }
    [[nodiscard]] bool InTransaktion() const { return PQtransactionStatus(m_p.get()) != PQTRANS_IDLE; }

    // Runs a statement, or several without parameters; its result is binary but for the several. Null, the failure
    // noted and an open transaction taken back, if it fails.
    [[nodiscard]] CServererzeugnis Fuehre(const char * pSql, CServerwerte & werte);
    [[nodiscard]] CServererzeugnis FuehreAlle(const char * pSql);
    // Prepares it, if that has to be, of what fSql gives.
    template <class F>
    [[nodiscard]] CServererzeugnis Fuehre(SServeranweisung & anweisung, F fSql, CServerwerte & werte) {
        if (anweisung.iVerbindung != m_iVerbindung && !Bereite(anweisung, fSql())) return nullptr;
        Raeume();
        return Nimm(PQexecPrepared(m_p.get(), anweisung.sName.c_str(), werte.Anzahl(), werte.Werte(),
                                   werte.Laengen(), werte.Formate(), 1));
    }
    // Sends rows in COPY's form.
    [[nodiscard]] bool Lade(const char * pSql, std::string_view sZeilen);
    // Asks for rows ahead, and fetches them.
    void Schicke(const char * pSql, SVorgriff & vorgriff);
    [[nodiscard]] CServererzeugnis Hole(SVorgriff & vorgriff);
    // A piece that nobody wants any more.
    void Vergiss(SVorgriff & vorgriff) noexcept;

    // Notes a failure; false for the caller to return.
    bool Scheitere(EServerursache eUrsache) noexcept;
    [[nodiscard]] EServerursache LetzteUrsache() const { return m_eUrsache; }
    [[nodiscard]] const std::string & LetzterFehler() const { return m_sFehler; }

private:
    bool Bereite(SServeranweisung & anweisung, const std::string & sSql);
    // Makes the connection free for another statement.
    void Raeume();
    CServererzeugnis Nimm(PGresult * p);
    void Merke(const PGresult * p) noexcept;

    std::string m_sVerbindung;
    bool m_bNurLesen;
    std::unique_ptr<PGconn, SServerfreigabe> m_p;
    std::uint64_t m_iVerbindung = 0;
    std::uint64_t m_iStand = 0;
    std::uint64_t m_iAnweisungen = 0;
    SVorgriff * m_pUnterwegs = nullptr;
    std::string m_sFehler;
    EServerursache m_eUrsache = EServerursache::Keine;
};

} // namespace orvostat
