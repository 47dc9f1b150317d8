#include "Laufbericht.h"

#include "Hittabelle.h"
#include "Konsole.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/records/BehErrors.h"

#include <iostream>
#include <map>
#include <tuple>
#include <utility>

namespace orvostat {

namespace {

// Amounts in euro of some hits, and the points of the insurers' services among them in hundredths; the points of the
// private schedule are of another worth and are not added.
struct SSumme {
    std::int64_t iHits = 0;
    std::int64_t iPunkte = 0;
    CDBetrag betrag{0.0, 'e'};

    void Nimm(const CBehHitLine & hit) {
        ++iHits;
        if (IstPunktArt(hit.GOART)) iPunkte += static_cast<std::int64_t>(hit.PUNKTE) * hit.ANZAHL / 100;
        CDBetrag euro(hit.BETRAG);
        betrag += euro.ToW('e');
    }
    SSumme & operator+=(const SSumme & summe) {
        iHits += summe.iHits;
        iPunkte += summe.iPunkte;
        betrag += summe.betrag;
        return *this;
    }
};

// Sums by a key; its name is asked for once, and keys of one name are one group.
template <class K> class CGruppen {
public:
    template <class F> void Nimm(const K & schluessel, const CBehHitLine & hit, F fName) {
        const auto [it, bNeu] = m_map.try_emplace(schluessel);
        if (bNeu) it->second.first = fName();
        it->second.second.Nimm(hit);
    }
    [[nodiscard]] std::map<CString, SSumme> NachNamen() const {
        std::map<CString, SSumme> map;
        for (const auto & [schluessel, gruppe] : m_map)
            map[gruppe.first] += gruppe.second;
        return map;
    }

private:
    std::map<K, std::pair<CString, SSumme>> m_map;
};

constexpr SAusgabespalte SUMMENSPALTEN[] = {{"Gruppe", EZelle::Text, 34},
                                            {"Hits", EZelle::Zahl, 10},
                                            {"Kassenpunkte", EZelle::Zahl, 14},
                                            {"Betrag EUR", EZelle::Zahl, 16}};

void ZeigeGruppen(std::ostream & aus, const char * pTitel, const std::map<CString, SSumme> & map) {
    aus << '\n' << pTitel << '\n';
    const auto pAusgabe = CAusgabe::Neu(EFormat::Tabelle, aus, SUMMENSPALTEN);
    SSumme gesamt;
    const auto Gib = [&](const CString & sName, const SSumme & summe) {
        pAusgabe->Zeile(
            {sName, itoc(summe.iHits), DezimalZelle(summe.iPunkte, 2), BetragZelle(summe.betrag)});
    };
    for (const auto & [sName, summe] : map) {
        Gib(sName, summe);
        gesamt += summe;
    }
    Gib("Gesamt", gesamt);
    pAusgabe->Ende();
}

void ZeigeFehler(std::ostream & aus, const CStatAccu & accu) {
    std::map<int, int> mapAnzahl;
    for (const CBehErrors & fehler : accu.m_vBehErrors)
        ++mapAnzahl[fehler.m_iFehler];
    for (const auto & [iFehler, iAnzahl] : mapAnzahl)
        aus << "  Fehler " << iFehler << ": " << iAnzahl << " x " << BehFehlertext(iFehler).Utf8() << '\n';
    constexpr int BEISPIELE = 5;
    int iGezeigt = 0;
    for (const CBehErrors & fehler : accu.m_vBehErrors) {
        if (++iGezeigt > BEISPIELE) break;
        aus << "    Patient " << Trim(fehler.PATNR).Utf8() << " am " << Db2Date(fehler.DATUM).Utf8()
            << ", Leistung " << fehler.LSTIN.Utf8() << ": " << BehFehlertext(fehler.m_iFehler).Utf8() << '\n';
    }
}

CString Behandlername(CStatAccu & accu, const CString & sLeb) {
    const int i = accu.FindLeb(sLeb);
    return i < 0 ? sLeb : accu.m_vLeb[static_cast<std::size_t>(i)].GetLebLine();
}

// A letter and what it stands for.
CString MitName(char c, const CString & sName) {
    const CString sLetter = c == 0 ? CString("-") : CString(c);
    return sName.IsEmpty() ? sLetter : sLetter + " " + sName;
}

CString Kostentraeger(CStatAccu & accu, const CBehHitLine & hit) {
    if (!hit.KASSENABR) return "Privat";
    if (hit.KASKUERZEL.IsEmpty()) return "(ohne Kasse)"_t;
    const int i = accu.FindSelectPoolData(accu.m_vSpKassenGrp, CString(hit.KASSENGRP));
    return "Kassengruppe "_t +
           MitName(hit.KASSENGRP,
                   i < 0 ? CString() : accu.m_vSpKassenGrp[static_cast<std::size_t>(i)].m_sText);
}

// Laboratory services are counted under the letter of their kind.
CString Statistikart(CStatAccu & accu, char c) {
    return MitName(c, accu.GetLstGrpName(IstLaborArt(c) ? 'T' : 'K', c));
}

// Hundred-millionths of a euro with four decimals, halves away from zero.
CString Euro(std::int64_t iEinheiten) {
    constexpr std::int64_t JE_STELLE = 10'000;
    const std::int64_t iHalbe = iEinheiten % JE_STELLE / (JE_STELLE / 2); // -1, 0 or 1
    return AusUtf8(Dezimal(iEinheiten / JE_STELLE + iHalbe, 4, 4, '.'));
}

constexpr SAusgabespalte GEGENSPALTEN[] = {{"Beh", EZelle::Text, 4},       {"GO", EZelle::Text, 2},
                                           {"Leistung", EZelle::Text, 8},  {"Hits", EZelle::Zahl, 8},
                                           {"Lauf EUR", EZelle::Zahl, 16}, {"SQL EUR", EZelle::Zahl, 16}};

} // namespace

void ZeigeZahlen(std::ostream & aus, const CStatAccu & accu, const CLauf & lauf) {
    const SLaufzahlen & z = lauf.Zahlen();
    aus << z.iBehandlungen << " Behandlungen gelesen, " << z.iHits << " Hits, " << accu.m_vPat.size()
        << (accu.m_vPat.size() == 1 ? " Patient, " : " Patienten, ") << accu.m_vBehErrors.size()
        << " Fehler\n";
    const std::pair<std::int64_t, const char *> aHinweise[] = {
        {z.iOhneBill, " Hits ohne Rechnung"},
        {z.iOhnePatient, " Hits ohne lesbaren Patienten"},
        {z.iOhneKasse, " Hits ohne Versicherung oder Kasse am Tag"},
        {z.iUnlesbar, " Hits, deren Menge oder Faktor unlesbar oder unmöglich ist"},
        {z.Weggelassen(EWeglassgrund::Behandler) + z.Weggelassen(EWeglassgrund::BehandlerUnbekannt),
         " Behandlungen anderer Behandler"},
        {z.iLaborrechnungen, " Laborrechnungen"},
        {z.iSammelrechnungen, " Sammelrechnungen"},
        {z.iGipsmodelle, " Gipsmodelle"},
        {z.iRechnungen, " Rechnungen"},
        {z.iVerordnungen, " Verordnungen"}};
    for (const auto & [iAnzahl, pText] : aHinweise)
        if (iAnzahl != 0) aus << "  " << iAnzahl << pText << '\n';
    ZeigeFehler(aus, accu);
}

void ZeigeSummen(std::ostream & aus, CStatAccu & accu) {
    CGruppen<CString> behandler;
    CGruppen<std::tuple<bool, bool, char>> traeger;
    CGruppen<char> arten;
    for (const CBehHitLine & hit : accu.m_vBehHits) {
        behandler.Nimm(hit.BEHANDLERNR, hit, [&] { return Behandlername(accu, hit.BEHANDLERNR); });
        traeger.Nimm({hit.KASSENABR, hit.KASKUERZEL.IsEmpty(), hit.KASSENGRP}, hit,
                     [&] { return Kostentraeger(accu, hit); });
        arten.Nimm(hit.GOSTATISTIKART, hit, [&] { return Statistikart(accu, hit.GOSTATISTIKART); });
    }
    ZeigeGruppen(aus, "Nach Behandler", behandler.NachNamen());
    ZeigeGruppen(aus, "Nach Kostenträger", traeger.NachNamen());
    ZeigeGruppen(aus, "Nach Statistikart", arten.NachNamen());
}

bool ZeigeHits(std::ostream & aus, const CStatAccu & accu, EFormat eFormat) {
    CHittabelle tabelle(aus, eFormat, EHitspalten::Alle);
    bool bWeiter = true;
    for (const CBehHitLine & hit : accu.m_vBehHits) {
        if (!(bWeiter = !AbbruchVerlangt())) break;
        tabelle.Zeile(hit);
    }
    tabelle.Ende();
    return bWeiter;
}

bool ZeigeGegenrechnung(std::ostream & aus, const SGegenrechnung & rechnung) {
    if (!rechnung.bGerechnet) {
        aus << "\nDie Gegenrechnung mit SQL ist gescheitert: " << rechnung.sFehler << '\n';
        return false;
    }
    std::int64_t iVerschieden = 0;
    const auto pAusgabe = CAusgabe::Neu(EFormat::Tabelle, aus, GEGENSPALTEN);
    for (const SGegensumme & summe : rechnung.vSummen) {
        if (!summe.Verschieden()) continue;
        if (iVerschieden++ == 0) aus << "\nAbweichungen von der Gegenrechnung mit SQL\n";
        pAusgabe->Zeile({Trim(summe.sBehandler), CString(summe.cGoArt), summe.sLeistung, itoc(summe.iHits),
                         Euro(summe.iLauf), Euro(summe.iSql)});
    }
    if (iVerschieden != 0) pAusgabe->Ende();
    std::int64_t iAusgelassen = 0;
    std::string sGruende;
    for (const auto & [sGrund, iHits] : rechnung.mapAusgelassen) {
        iAusgelassen += iHits;
        sGruende += (sGruende.empty() ? " (" : ", ") + sGrund + " " + std::to_string(iHits);
    }
    aus << "\nGegenrechnung mit SQL: " << rechnung.iGeprueft << " Hits in " << rechnung.vSummen.size()
        << " Summen geprüft, " << iVerschieden << " Summen weichen ab, " << iAusgelassen
        << " Hits rechnet SQL nicht" << sGruende << (sGruende.empty() ? "\n" : ")\n");
    return iVerschieden == 0;
}

} // namespace orvostat
