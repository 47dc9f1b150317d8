// An open practice on the server: its reading transaction, the group of writes and the rows that wait to be sent.
#pragma once

#include "PostgresSchema.h"
#include "PostgresVerbindung.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace orvostat {

// Where a row lies in its table.
struct SServerplatz {
    std::int64_t iLfd = 0;
    std::vector<std::string> vSchluessel;
};

class CServerdatenbank {
public:
    CServerdatenbank(const std::string & sVerbindung, bool bNurLesen) : m_v(sVerbindung, bNurLesen) {}

    [[nodiscard]] CSerververbindung & Verbindung() { return m_v; }
    [[nodiscard]] const CSerververbindung & Verbindung() const { return m_v; }
    [[nodiscard]] bool NurLesen() const { return m_v.NurLesen(); }
    [[nodiscard]] const std::string & Praxis() const { return m_sPraxis; }
    // Before the first row is read or written; bNeu: it has to be made.
    void SetzePraxis(std::string sPraxis, bool bNeu) {
        m_sPraxis = std::move(sPraxis);
        m_bNeu = bNeu;
    }

    // Connects again where that is needed, begins the transaction of a store that only reads, sends what waits; false
    // if that fails. Every read comes behind it.
    [[nodiscard]] bool Lesebereit();
    // The rows of a walk, as serverschema::Block and Zeiger put them. sAb and iAb are the place, as far as the kind has
    // one. Null if it fails.
    [[nodiscard]] CServererzeugnis Block(const STabelle & tabelle, const serverschema::SWegart & art,
                                         std::int64_t iZeilen, std::string_view sAb, std::int64_t iAb,
                                         std::string_view sBis);
    [[nodiscard]] bool OeffneZeiger(const std::string & sName, const STabelle & tabelle,
                                    const serverschema::SWegart & art, std::string_view sAb, std::int64_t iAb,
                                    std::string_view sBis);
    [[nodiscard]] std::uint64_t NaechsterName() { return ++m_iNamen; }

    int Fuege(const STabelle & tabelle, CWerte vWerte);
    int Loesche(const STabelle & tabelle, const SServerplatz & platz);
    // platz becomes the row's new place.
    int Aendere(const STabelle & tabelle, SServerplatz & platz, CWerte vWerte);
    [[nodiscard]] std::int64_t Zaehle(const STabelle & tabelle);

    int Beginne();
    int Beende(bool bUebernehmen);
    // The last running number, as far as a group is open; else -1.
    [[nodiscard]] std::int64_t LaufnummerInGruppe() const {
        return m_iTiefe > 0 && !m_bVerloren ? m_iLfd : -1;
    }
    // Changes whenever a row that was read may be another by this store's hand.
    [[nodiscard]] std::uint64_t Aenderungen() const { return m_iAenderungen; }

private:
    template <class F> int InGruppe(F f);
    template <class F>
    [[nodiscard]] CServererzeugnis Fuehre(const STabelle & tabelle, int iArt, F fSql, CServerwerte & werte);
    [[nodiscard]] bool Steht();
    bool BeginneTransaktion();
    bool Uebernimm();
    void Verwirf();
    bool IstUebernommen();
    bool Sende();
    int Geaendert(const CServererzeugnis & p);
    void NimmZurueck();

    CSerververbindung m_v;
    std::string m_sPraxis;
    bool m_bNeu = false;
    std::map<std::pair<const STabelle *, int>, SServeranweisung> m_mapAnweisungen;
    std::uint64_t m_iNamen = 0;
    std::uint64_t m_iAenderungen = 0;

    int m_iTiefe = 0;
    bool m_bVerworfen = false;         // false was asked for inside
    bool m_bVerloren = false;          // the server has taken it back
    std::uint64_t m_iGruppenstand = 0; // the connection's when the group began
    std::int64_t m_iLfd = 0;           // the last running number given; known while a group is open
    std::int64_t m_iLfdAmAnfang = 0;   // the same when the group began
    std::string m_sTransaktion;        // its number on the server

    const STabelle * m_pWarteschlange = nullptr; // whose rows wait
    std::string m_sWartende;                     // as COPY takes them
};

} // namespace orvostat
