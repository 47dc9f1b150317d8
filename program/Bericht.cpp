#include "Bericht.h"

#include "Arbeitskalender.h"
#include "Ausgabeziel.h"
#include "Leistungstabellen.h"
#include "Praxis.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/plan/StatZE.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/service/LSSum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include <fmt/format.h>

namespace orvostat {

namespace {

// Where a table ends that grows with the practice.
constexpr std::size_t MELDUNGEN = 200;
constexpr std::size_t KASSENZEILEN = 40;
constexpr std::size_t PLANZEILEN = 50;
constexpr std::size_t LEISTUNGSZEILEN = 100;
constexpr std::size_t BALKEN = 20;

constexpr SAusgabespalte TextSpalte(const char * pName) { return {pName, EZelle::Text, 40}; }
constexpr SAusgabespalte ZahlSpalte(const char * pName, const char * pEinheit = "") {
    return {pName, EZelle::Zahl, 14, pEinheit};
}

// ---- amounts

std::int64_t Einheiten(const CDBetrag & betrag) {
    CDBetrag euro(betrag);
    return euro.ToW('e').GetEinheiten();
}

// Cents, halves away from zero.
CString Euro(std::int64_t iEinheiten) { return BetragZelle(CDBetrag::AusEinheiten(iEinheiten, 'e')); }
CString Euro(const CDBetrag & betrag) { return Euro(Einheiten(betrag)); }

// A number of pieces; parts of one where there are some.
CString Stueck(std::int64_t iHundertstel) {
    return iHundertstel % 100 == 0 ? itoc(iHundertstel / 100) : DezimalZelle(iHundertstel, 2);
}

CString Je(std::int64_t iEinheiten, std::int64_t iTeiler) {
    return iTeiler == 0 ? CString() : Euro(iEinheiten / iTeiler);
}

// In percent with two places; empty without a whole.
CString Prozent(std::int64_t iTeil, std::int64_t iGanzes) {
    if (iGanzes == 0) return {};
    return DezimalZelle(std::llround(10000.0 * static_cast<double>(iTeil) / static_cast<double>(iGanzes)), 2);
}

std::string Mit(std::int64_t iAnzahl, const char * pEiner, const char * pMehrere) {
    return std::to_string(iAnzahl) + ' ' + (iAnzahl == 1 ? pEiner : pMehrere);
}

CString Monat(const CString & sJJJJMM) { return sJJJJMM.Left(4) + "-" + sJJJJMM.Mid(4); }

std::size_t Zahler(const CBehHitLine & hit) { return hit.KASSENABR ? 0 : hit.ISPRIVATPATIENT ? 1 : 2; }

// ---- one pass over the hits

// A sum apart by payer.
struct SPosten {
    std::array<CLSLst, 3> aZahler;

    [[nodiscard]] std::int64_t Betrag(std::size_t i) const { return Einheiten(aZahler[i].BETRAG); }
    [[nodiscard]] std::int64_t Betrag() const { return Betrag(0) + Betrag(1) + Betrag(2); }
    [[nodiscard]] std::int64_t Anzahl() const {
        return std::int64_t{aZahler[0].ANZAHL} + aZahler[1].ANZAHL + aZahler[2].ANZAHL;
    }
};

struct SLeistung {
    CString sName;
    CString sText;
    CLSLst lst;
};

struct SPlanposten {
    CString sPatNr, sName, sPlanNr;
    CLSLst lst;
};

// What the service statistic counts, added up as its own sums are: a hit's amount with tax and surcharge.
struct SSammlung {
    std::map<CString, SPosten> mapMonat;
    std::unordered_map<CString, SLeistung> mapLeistung;
    std::map<CString, SPlanposten> mapPlan;
    std::unordered_set<CString> setPatienten;
    std::map<std::string, std::int64_t> mapAusgelassen;
    CString sErster, sLetzter; // days
    std::int64_t iHits = 0;

    void Nimm(const CBehHitLine & hit) {
        ++iHits;
        setPatienten.insert(hit.PATNR);
        if (sErster.IsEmpty() || hit.DATUM < sErster) sErster = hit.DATUM;
        if (hit.DATUM > sLetzter) sLetzter = hit.DATUM;
        mapMonat[hit.DATUM.Left(6)].aZahler[Zahler(hit)].MoveLst(hit);
        SLeistung & leistung = mapLeistung[CString(hit.GOART) + hit.LSTNR];
        leistung.lst.MoveLst(hit);
        if (leistung.sName.IsEmpty()) leistung.sName = Leistungsname(hit);
        if (leistung.sText.IsEmpty()) leistung.sText = hit.m_sGoText;
        if (hit.ABRART == 'z' && Zahl64(hit.PLANNR) != 0) {
            SPlanposten & plan = mapPlan[hit.PATNR + "|" + hit.PLANNR];
            if (plan.sPatNr.IsEmpty()) plan = {hit.PATNR, hit.PATNAME, hit.PLANNR, {}};
            plan.lst.MoveLst(hit);
        }
    }

    static CString Leistungsname(const CBehHitLine & hit) {
        const SBuchstabe * const pArt = FindeBuchstabe(GEBUEHRENARTEN, hit.GOART);
        const CString sKuerzel =
            hit.LSTKUERZEL.IsEmpty() || hit.LSTKUERZEL == hit.LSTNR ? CString() : " (" + hit.LSTKUERZEL + ")";
        return (pArt == nullptr ? CString(hit.GOART) : AusUtf8(pArt->pName)) + " " + hit.LSTNR + sKuerzel;
    }
};

// ---- the report

class CErsteller {
public:
    CErsteller(CStatAccu & accu, const SBerichtauftrag & auftrag)
        : m_accu(accu), m_auftrag(auftrag), m_kalender(auftrag.sMandant) {}

    SBericht Erstelle() {
        OrdneNachQuartalen(m_accu.m_vBehHits);
        m_sum.Analyse(m_auftrag.sPraxis, m_accu.m_vBehHits, nullptr);
        Sammle();
        Einleitung();
        Kennzahlen();
        for (const SKernzahlen & vergleich : m_auftrag.vVergleiche)
            Vergleich(vergleich);
        NachMonat();
        NachBehandler();
        NachZahler();
        NachArt();
        Leistungen();
        Hundert();
        Kassen();
        Plaene();
        Weggelassenes();
        Fehler();
        return std::move(m_bericht);
    }

private:
    SBerichttafel & Tafel(std::string sTitel, std::vector<SAusgabespalte> vSpalten) {
        m_bericht.vTafeln.push_back({std::move(sTitel), std::move(vSpalten), {}});
        return m_bericht.vTafeln.back();
    }

    void Sammle() {
        for (const CBehHitLine & hit : m_accu.m_vBehHits) {
            if (const char * pGrund = Auslassgrund(m_sum, hit, m_auftrag.sPraxis))
                ++m_alles.mapAusgelassen[pGrund];
            else
                m_alles.Nimm(hit);
        }
        m_iGesamt = Einheiten(m_sum.m_Praxis.m_Gesamt.BETRAG);
        m_sVon = Oder(m_accu.GetAbDatum(), m_alles.sErster);
        m_sBis = Oder(m_accu.GetBisDatum(), m_alles.sLetzter);
        // Of a period that runs on, what has passed.
        if (const CString sHeute = CMxDate(); m_sBis > sHeute) m_sBis = std::max(sHeute, m_alles.sLetzter);
        if (!m_sVon.IsEmpty() && m_sVon <= m_sBis) m_iArbeitstage = m_kalender.Arbeitstage(m_sVon, m_sBis);
    }

    void Einleitung() {
        std::string sInhaber;
        CTMandant mandant(dbDatabaseRO);
        for (const CString & sId : Mandanten()) {
            if (!m_auftrag.sPraxis.IsEmpty() && sId != m_auftrag.sPraxis) continue;
            mandant.m_MDID = sId;
            if (mandant.GetByK1(MATCH_GENAU) == ZEILE_OK)
                sInhaber += (sInhaber.empty() ? "Praxis " : ", ") + Trim(mandant.m_MDNAME).Utf8();
        }
        if (!sInhaber.empty()) m_bericht.vEinleitung.push_back(sInhaber);
        std::string sFehlend;
        for (const std::string & sTitel : m_auftrag.vFehlendeSpalten)
            sFehlend += (sFehlend.empty() ? "" : ", ") + sTitel;
        if (!sFehlend.empty())
            m_bericht.vEinleitung.push_back("Die gespeicherte Statistik hat diese Spalten nicht, und was aus "
                                            "ihnen gerechnet wird, fehlt: " +
                                            sFehlend + '.');
    }

    void Kennzahlen() {
        SBerichttafel & t =
            Tafel("Kennzahlen", {TextSpalte("Kennzahl"), ZahlSpalte("Wert"), TextSpalte("Einheit")});
        const std::int64_t iFaelle = m_sum.m_Praxis.m_iAnzFaelle;
        const CString sKein;
        t.vZeilen = {{"Umsatz", Euro(m_iGesamt), "EUR"},
                     {"Umsatz je Fall"_t, Je(m_iGesamt, iFaelle), "EUR"},
                     {"Umsatz je Arbeitstag"_t, Je(m_iGesamt, m_iArbeitstage), "EUR"},
                     {"Fälle"_t, itoc(iFaelle), sKein},
                     {"Patienten"_t, itoc(static_cast<std::int64_t>(m_alles.setPatienten.size())), sKein},
                     {"Leistungen (Hits)"_t, itoc(m_alles.iHits), sKein},
                     {"Arbeitstage"_t, itoc(m_iArbeitstage), sKein},
                     {"Tage mit Leistungen"_t, itoc(Tage()), sKein}};
        t.bild = SBild{.eBild = EBild::Karten, .sTitel = {}, .sText = {}, .sEinheit = {}, .viReihen = {}};
        if (m_iArbeitstage > 0)
            t.vSaetze.push_back("Arbeitstage vom " + Zeitraumtext(m_sVon, m_sBis) +
                                " nach den Wochentagen des Praxisinhabers, ohne Feiertage und Urlaub.");
    }

    // Of the practice.
    [[nodiscard]] int Tage() const { return m_sum.m_vBehTage.empty() ? 0 : m_sum.m_vBehTage[0].second; }

    // ---- turnover

    // Name, pieces, the three payers, the whole and its share.
    static std::vector<SAusgabespalte> Zahlerspalten(const char * pName) {
        return {TextSpalte(pName),           ZahlSpalte("Anzahl"),          ZahlSpalte("Kasse", "EUR"),
                ZahlSpalte("Privat", "EUR"), ZahlSpalte("Sonstige", "EUR"), ZahlSpalte("Gesamt", "EUR"),
                ZahlSpalte("Anteil", "%")};
    }
    [[nodiscard]] std::vector<CString> Zahlerzeile(const CString & sName, std::int64_t iAnzahl,
                                                   std::int64_t iKasse, std::int64_t iPrivat,
                                                   std::int64_t iSonstige) const {
        const std::int64_t iSumme = iKasse + iPrivat + iSonstige;
        return {sName,        Stueck(iAnzahl),           Euro(iKasse), Euro(iPrivat), Euro(iSonstige),
                Euro(iSumme), Prozent(iSumme, m_iGesamt)};
    }
    [[nodiscard]] std::vector<CString> Gesamtzeile() const {
        const CLSPxLstGrp & px = m_sum.m_Praxis;
        std::vector<CString> v =
            Zahlerzeile("Gesamt", px.m_Gesamt.ANZAHL, Einheiten(px.m_KasseGes.BETRAG),
                        Einheiten(px.m_PrivatGes.BETRAG), Einheiten(px.m_SonstGes.BETRAG));
        v.back() = CString();
        return v;
    }
    static SBild Zahlerbild(EBild eBild, const std::string & sTitel, std::string sText) {
        return {.eBild = eBild,
                .sTitel = sTitel,
                .sText = std::move(sText),
                .sEinheit = "EUR",
                .viReihen = {2, 3, 4},
                .bGestapelt = true};
    }

    // "am meisten 2024-03 mit 12.345,00 EUR", from a table of amounts in column 5.
    static std::string Groesstes(const SBerichttafel & t) {
        const std::vector<CString> * pGroesste = nullptr;
        double fGroesste = 0;
        for (const std::vector<CString> & vZeile : t.vZeilen)
            if (const double f = std::atof(vZeile[5].Utf8().c_str()); pGroesste == nullptr || f > fGroesste) {
                pGroesste = &vZeile;
                fGroesste = f;
            }
        if (pGroesste == nullptr) return "Keine Umsätze.";
        std::string sBetrag = (*pGroesste)[5].Utf8();
        std::ranges::replace(sBetrag, '.', ',');
        return "Am meisten: " + (*pGroesste)[0].Utf8() + " mit " + sBetrag + " EUR. " +
               Mit(static_cast<std::int64_t>(t.vZeilen.size()), "Zeile", "Zeilen") +
               " in der Tabelle darunter.";
    }

    void NachMonat() {
        SBerichttafel & t = Tafel("Umsatz nach Monat", Zahlerspalten("Monat"));
        for (const auto & [sMonat, posten] : m_alles.mapMonat)
            t.vZeilen.push_back(Zahlerzeile(Monat(sMonat), posten.Anzahl(), posten.Betrag(0),
                                            posten.Betrag(1), posten.Betrag(2)));
        t.vSumme = Gesamtzeile();
        t.bild = Zahlerbild(EBild::Saeulen, "Umsatz je Monat nach Kostenträger", Groesstes(t));
    }

    void NachBehandler() {
        std::vector<SAusgabespalte> vSpalten = Zahlerspalten("Behandler");
        vSpalten.push_back(ZahlSpalte("Tage"));
        vSpalten.push_back(ZahlSpalte("je Tag", "EUR"));
        SBerichttafel & t = Tafel("Umsatz nach Behandler", vSpalten);
        for (const CLSBehLstGrp & beh : m_sum.m_vBeh) {
            std::vector<CString> v =
                Zahlerzeile(Trim(Behandlername(m_accu, beh.BEHANDLERNR)), beh.m_Gesamt.ANZAHL,
                            Einheiten(beh.m_KasseGes.BETRAG), Einheiten(beh.m_PrivatGes.BETRAG),
                            Einheiten(beh.m_SonstGes.BETRAG));
            const int iTage = Behandlertage(m_sum, beh.BEHANDLERNR);
            v.push_back(iTage < 0 ? CString() : itoc(iTage));
            v.push_back(iTage < 0 ? CString() : Je(Einheiten(beh.m_Gesamt.BETRAG), iTage));
            t.vZeilen.push_back(std::move(v));
        }
        t.vSumme = Gesamtzeile();
        t.vSumme.push_back(itoc(Tage()));
        t.vSumme.push_back(Je(m_iGesamt, Tage()));
        t.vSaetze.push_back("Tage sind Tage, an denen es eine Leistung gab.");
        t.bild = Zahlerbild(EBild::Balken, "Umsatz je Behandler nach Kostenträger", Groesstes(t));
    }

    void NachZahler() {
        const CLSPxLstGrp & px = m_sum.m_Praxis;
        SBerichttafel & t =
            Tafel("Umsatz nach Kostenträger",
                  {TextSpalte("Kostenträger"), ZahlSpalte("Leistungen", "EUR"), ZahlSpalte("Art k", "EUR"),
                   ZahlSpalte("Labor/Material", "EUR"), ZahlSpalte("Abzug", "EUR"),
                   ZahlSpalte("Gesamt", "EUR"), ZahlSpalte("Anteil", "%")});
        std::int64_t aiSumme[4] = {};
        for (const SZahlersummen & z : Zahlersummen(px)) {
            const std::int64_t aiTeil[] = {Einheiten(z.std.BETRAG), Einheiten(z.k.BETRAG),
                                           Einheiten(z.lm.BETRAG), Einheiten(z.abz.BETRAG)};
            for (std::size_t i = 0; i < std::size(aiTeil); ++i)
                aiSumme[i] += aiTeil[i];
            t.vZeilen.push_back({Zahlername(z.cZahler), Euro(aiTeil[0]), Euro(aiTeil[1]), Euro(aiTeil[2]),
                                 Euro(aiTeil[3]), Euro(z.ges.BETRAG),
                                 Prozent(Einheiten(z.ges.BETRAG), m_iGesamt)});
        }
        t.vSumme = {"Gesamt",         Euro(aiSumme[0]), Euro(aiSumme[1]), Euro(aiSumme[2]),
                    Euro(aiSumme[3]), Euro(m_iGesamt),  CString()};
        t.vSaetze.push_back("Abzug ist Material, das die Praxis weitergibt.");
        t.bild = SBild{.eBild = EBild::Balken,
                       .sTitel = "Umsatz je Kostenträger nach Bereich",
                       .sText = Groesstes(t),
                       .sEinheit = "EUR",
                       .viReihen = {1, 2, 3, 4},
                       .bGestapelt = true};
    }

    void NachArt() {
        struct SArt {
            std::int64_t iAnzahl = 0;
            std::array<std::int64_t, 3> aiBetrag = {};
            [[nodiscard]] std::int64_t Summe() const { return aiBetrag[0] + aiBetrag[1] + aiBetrag[2]; }
        };
        std::map<CString, SArt> mapArt;
        for (const CLSLstGrp & grp : m_sum.m_Praxis.m_vLstGrp) {
            SArt & art = mapArt[Artname(m_accu, grp)];
            art.iAnzahl += grp.m_Sum.ANZAHL;
            art.aiBetrag[static_cast<std::size_t>(grp.m_cZahler - '0')] += Einheiten(grp.m_Sum.BETRAG);
        }
        std::vector<std::pair<CString, SArt>> vArten(mapArt.begin(), mapArt.end());
        std::ranges::stable_sort(vArten, std::greater(), [](const auto & art) { return art.second.Summe(); });
        SBerichttafel & t = Tafel("Umsatz nach Statistikart", Zahlerspalten("Statistikart"));
        for (const auto & [sName, art] : vArten)
            t.vZeilen.push_back(
                Zahlerzeile(sName, art.iAnzahl, art.aiBetrag[0], art.aiBetrag[1], art.aiBetrag[2]));
        t.vSumme = Gesamtzeile();
        t.bild = Zahlerbild(EBild::Balken, "Umsatz je Statistikart nach Kostenträger", Groesstes(t));
    }

    // The services from the top down to four fifths of the turnover.
    void Leistungen() {
        std::vector<std::pair<std::int64_t, const SLeistung *>> vLeistungen;
        for (const auto & [sSchluessel, leistung] : m_alles.mapLeistung)
            vLeistungen.emplace_back(Einheiten(leistung.lst.BETRAG), &leistung);
        std::ranges::sort(vLeistungen, [](const auto & a, const auto & b) {
            return a.first != b.first ? a.first > b.first : a.second->sName < b.second->sName;
        });
        SBerichttafel & t = Tafel("Leistungen, die 80 % des Umsatzes machen",
                                  {TextSpalte("Leistung"), TextSpalte("Text"), ZahlSpalte("Anzahl"),
                                   ZahlSpalte("Betrag", "EUR"), ZahlSpalte("Anteil", "%"),
                                   ZahlSpalte("Anteil bis hier", "%")});
        std::int64_t iBisHier = 0;
        for (const auto & [iBetrag, pLeistung] : vLeistungen) {
            if (iBetrag <= 0 || iBisHier * 10 >= m_iGesamt * 8 || t.vZeilen.size() >= LEISTUNGSZEILEN) break;
            iBisHier += iBetrag;
            t.vZeilen.push_back({pLeistung->sName, pLeistung->sText, Stueck(pLeistung->lst.ANZAHL),
                                 Euro(iBetrag), Prozent(iBetrag, m_iGesamt), Prozent(iBisHier, m_iGesamt)});
        }
        t.vSaetze.push_back(std::to_string(t.vZeilen.size()) + " von " +
                            Mit(static_cast<std::int64_t>(vLeistungen.size()), "Leistung", "Leistungen") +
                            '.');
        t.bild = SBild{.eBild = EBild::Balken,
                       .sTitel = "Umsatz je Leistung, die größten " + std::to_string(BALKEN),
                       .sText = t.vZeilen.empty() ? "Keine Umsätze."
                                                  : "Am meisten: " + t.vZeilen[0][0].Utf8() + '.',
                       .sEinheit = "EUR",
                       .viReihen = {3},
                       .iHoechstens = BALKEN};
    }

    // ---- hundred cases

    // The working days of the running quarter, and how many have passed; empty where the hits are of another time, also
    // of one to come.
    struct SLaufend {
        std::vector<CString> vTage;
        std::size_t iVergangen = 0;
    };
    [[nodiscard]] SLaufend LaufendesQuartal() const {
        SLaufend q;
        const CString sHeute = CMxDate();
        const CString sQuartal = DbDate2Quartal(sHeute);
        if (m_alles.iHits == 0 || DbDate2Quartal(m_alles.sErster) != sQuartal || m_alles.sLetzter > sHeute)
            return q;
        const int iMonat = (Zahl(sHeute.Mid(4, 2)) - 1) / 3 * 3 + 1;
        const CMxDate anfang(sHeute.Left(4) + RightFix(itoc(iMonat), 2, '0') + "01");
        if (!m_accu.GetAbDatum().IsEmpty() && m_accu.GetAbDatum() > CString(anfang)) return q;
        for (CMxDate tag = anfang; DbDate2Quartal(tag) == sQuartal; tag = tag + 1) {
            if (m_kalender.Arbeitstage(tag, tag) == 0) continue;
            q.vTage.push_back(tag);
            if (CString(tag) <= sHeute) ++q.iVergangen;
        }
        if (q.iVergangen == 0 || q.iVergangen == q.vTage.size()) return {};
        return q;
    }

    // At the pace so far the cases of the whole quarter are foreseen, and so is what the norm and the limit allow for
    // them; the day is that on which the pieces go beyond. Empty where they do not in this quarter.
    [[nodiscard]] CString Grenztag(const SLaufend & q, const CLSLst & lst, int iFaelle) const {
        if (lst.ANZAHL <= 0 || lst.m_iF100Soll == 0) return {};
        const double fTage = static_cast<double>(lst.m_iF100Soll) * iFaelle * (100 + m_auftrag.iGrenze) *
                             static_cast<double>(q.vTage.size()) / (10000.0 * lst.ANZAHL);
        const auto iTag = static_cast<std::size_t>(std::max(0.0, std::floor(fTage + 1e-9)));
        return iTag < q.vTage.size() ? q.vTage[iTag] : CString();
    }

    void Hundert() {
        CLSSum sum;
        LadeNormen(sum.m_100F, m_accu);
        sum.Analyse100Fall(m_auftrag.sPraxis, m_accu.m_vBehHits, false, 0, false, false, false);
        const struct {
            E100FSpalte eSpalte;
            const char * pName;
        } aSpalten[] = {{SPALTE_GESAMT, "alle Kassen"},
                        {SPALTE_RVO, "Primärkassen (RVO)"},
                        {SPALTE_VDAK, "Ersatzkassen (VDAK)"}};
        const SLaufend q = LaufendesQuartal();
        for (const auto & spalte : aSpalten)
            Hundertspalte(sum.m_100F.m_aSpalten[spalte.eSpalte], spalte.pName, q);
    }

    void Hundertspalte(const CKasArt100F & spalte, const std::string & sName, const SLaufend & q) {
        std::vector<const CLSLst *> vLst;
        for (const CLSLst & lst : spalte.m_vLst)
            if (lst.m_iF100Soll != 0) vLst.push_back(&lst);
        if (vLst.empty()) return;
        std::ranges::stable_sort(vLst, std::greater(), [](const CLSLst * p) { return p->m_iF100Abweichung; });
        std::vector<SAusgabespalte> vSpalten = {TextSpalte("Kürzel"),    TextSpalte("Leistung"),
                                                ZahlSpalte("Anzahl"),    ZahlSpalte("je 100 Fälle"),
                                                ZahlSpalte("Norm"),      ZahlSpalte("Abweichung", "%"),
                                                ZahlSpalte("Differenz"), TextSpalte("Hinweis")};
        if (!q.vTage.empty()) vSpalten.push_back({"Grenze erreicht", EZelle::Datum, 10});
        SBerichttafel & t = Tafel("Je 100 Fälle gegen die Norm: " + sName, vSpalten);
        std::size_t iUeber = 0;
        for (const CLSLst * pLst : vLst) {
            const bool bUeber = UeberGrenze(*pLst, m_auftrag.iGrenze);
            if (bUeber) ++iUeber;
            t.vZeilen.push_back({pLst->LSTKUERZEL, pLst->LSTNR, Stueck(pLst->ANZAHL),
                                 DezimalZelle(pLst->m_iAnzJe100Fall, 2), DezimalZelle(pLst->m_iF100Soll, 2),
                                 DezimalZelle(pLst->m_iF100Abweichung, 2), itoc(pLst->m_iAnzDiff),
                                 bUeber ? "über der Grenze"_t : CString()});
            if (!q.vTage.empty()) t.vZeilen.back().push_back(Grenztag(q, *pLst, spalte.m_iAnzFaelle));
        }
        t.vSaetze.push_back(
            fmt::format("{}; {} mehr als {} % über der Norm.", Mit(spalte.m_iAnzFaelle, "Fall", "Fälle"),
                        Mit(static_cast<std::int64_t>(iUeber), "Leistung", "Leistungen"), m_auftrag.iGrenze));
        if (!q.vTage.empty())
            t.vSaetze.push_back(fmt::format("Das Quartal läuft: {} von {} Arbeitstagen sind vergangen. "
                                            "„Grenze erreicht“ ist der Tag, an dem "
                                            "die Leistung bei diesem Tempo über das hinauskommt, was Norm "
                                            "und Grenze für die hochgerechneten "
                                            "Fälle des ganzen Quartals zulassen.",
                                            q.iVergangen, q.vTage.size()));
        t.bild = SBild{.eBild = EBild::Abweichung,
                       .sTitel = "Abweichung von der Norm, " + sName + "; gestrichelt die Grenze von " +
                                 std::to_string(m_auftrag.iGrenze) + " %",
                       .sText = std::to_string(iUeber) + " von " + std::to_string(vLst.size()) +
                                " Leistungen sind über der Grenze von " + std::to_string(m_auftrag.iGrenze) +
                                " %; sie tragen ein Dreieck.",
                       .sEinheit = "%",
                       .viReihen = {5},
                       .iMarke = 7,
                       .iGrenze = m_auftrag.iGrenze};
    }

    // ---- insurers

    void Kassen() {
        struct SKasse {
            CString sKuerzel;
            std::int64_t iFaelle = 0, iAnzahl = 0, iBetrag = 0;
        };
        CLSSum sum;
        for (const CBehHitLine & hit : m_accu.m_vBehHits)
            if (!hit.KASKUERZEL.IsEmpty() && sum.TestBehSelOk(hit, m_auftrag.sPraxis)) sum.AddKasData(hit);
        sum.AnalyseKasDataSum(m_auftrag.sPraxis, sum.m_vKasData);
        std::map<CString, SKasse> mapKassen; // an insurer of two owners is one
        SKasse gesamt{"Gesamt"};
        for (const CLSKasLstGrp & kas : sum.m_vKas)
            for (SKasse * p : {&mapKassen[kas.KASKUERZEL], &gesamt}) {
                p->iFaelle += kas.m_iAnzFaelle;
                p->iAnzahl += kas.m_Gesamt.ANZAHL;
                p->iBetrag += Einheiten(kas.m_Gesamt.BETRAG);
            }
        std::vector<SKasse> vKassen;
        for (auto & [sKuerzel, kasse] : mapKassen) {
            kasse.sKuerzel = sKuerzel;
            vKassen.push_back(kasse);
        }
        std::ranges::stable_sort(vKassen, std::greater(), &SKasse::iBetrag);
        if (vKassen.size() > KASSENZEILEN) {
            SKasse rest{AusUtf8(fmt::format("{} weitere", vKassen.size() - KASSENZEILEN + 1))};
            for (std::size_t i = KASSENZEILEN - 1; i < vKassen.size(); ++i) {
                rest.iFaelle += vKassen[i].iFaelle;
                rest.iAnzahl += vKassen[i].iAnzahl;
                rest.iBetrag += vKassen[i].iBetrag;
            }
            vKassen.resize(KASSENZEILEN - 1);
            vKassen.push_back(rest);
        }
        SBerichttafel & t = Tafel("Kassen", {TextSpalte("Kasse"), ZahlSpalte("Fälle"), ZahlSpalte("Anzahl"),
                                             ZahlSpalte("Betrag", "EUR"), ZahlSpalte("je Fall", "EUR"),
                                             ZahlSpalte("Anteil", "%")});
        const auto Zeile = [&](const SKasse & k) {
            return std::vector<CString>{
                k.sKuerzel,      itoc(k.iFaelle),          Stueck(k.iAnzahl),
                Euro(k.iBetrag), Je(k.iBetrag, k.iFaelle), Prozent(k.iBetrag, gesamt.iBetrag)};
        };
        for (const SKasse & kasse : vKassen)
            t.vZeilen.push_back(Zeile(kasse));
        t.vSumme = Zeile(gesamt);
        t.vSumme.back() = CString();
        t.vSaetze.push_back(
            "Betrag ist alles, was für Versicherte der Kasse erbracht ist, auch privat Gezahltes.");
        t.bild = SBild{.eBild = EBild::Balken,
                       .sTitel = "Betrag je Kasse, die größten " + std::to_string(BALKEN),
                       .sText = vKassen.empty() ? "Keine Kassen."
                                                : "Am meisten: " + vKassen[0].sKuerzel.Utf8() + '.',
                       .sEinheit = "EUR",
                       .viReihen = {3},
                       .iHoechstens = BALKEN};
    }

    // ---- denture plans

    void Plaene() {
        if (m_alles.mapPlan.empty()) return;
        std::vector<std::pair<std::int64_t, const SPlanposten *>> vPlaene;
        CLSLst gesamt;
        for (const auto & [sSchluessel, plan] : m_alles.mapPlan) {
            vPlaene.emplace_back(Einheiten(plan.lst.BETRAG), &plan);
            gesamt.MoveLst(plan.lst);
        }
        std::ranges::stable_sort(vPlaene, std::greater(),
                                 &std::pair<std::int64_t, const SPlanposten *>::first);
        std::vector<SAusgabespalte> vSpalten = {TextSpalte("Patient"),        TextSpalte("Plan"),
                                                ZahlSpalte("Anzahl"),         ZahlSpalte("Betrag", "EUR"),
                                                ZahlSpalte("Block 6", "EUR"), ZahlSpalte("Block 7", "EUR"),
                                                ZahlSpalte("Block 3", "EUR")};
        if (m_auftrag.bMitNamen) vSpalten.push_back(TextSpalte("Name"));
        SBerichttafel & t = Tafel("Zahnersatzpläne", vSpalten);
        CStatZE ze;
        for (const auto & [iBetrag, pPlan] : vPlaene) {
            if (t.vZeilen.size() >= PLANZEILEN) break;
            CDBetrag aBlock[3];
            const bool bBlock =
                ze.GetLBlockData(pPlan->sPatNr, pPlan->sPlanNr, aBlock[0], aBlock[1], aBlock[2]);
            const auto Block = [&](std::size_t i) {
                return bBlock && !aBlock[i].IsEmpty() ? Euro(aBlock[i]) : CString();
            };
            t.vZeilen.push_back({Trim(pPlan->sPatNr), Trim(pPlan->sPlanNr), Stueck(pPlan->lst.ANZAHL),
                                 Euro(iBetrag), Block(0), Block(1), Block(2)});
            if (m_auftrag.bMitNamen) t.vZeilen.back().push_back(pPlan->sName);
        }
        t.vSumme = {"Gesamt", CString(), Stueck(gesamt.ANZAHL), Euro(gesamt.BETRAG)};
        t.vSumme.resize(vSpalten.size());
        t.vSaetze.push_back(Mit(static_cast<std::int64_t>(vPlaene.size()), "Plan", "Pläne") +
                            " mit Leistungen" +
                            Gekuerzt(vPlaene.size(), PLANZEILEN, "mit dem größten Betrag") +
                            "; Block sind die Beträge an den Stellen 6, 7 und 3 des Eingliederungsblocks.");
    }

    static std::string Gekuerzt(std::size_t iAlle, std::size_t iGezeigt, const char * pWelche) {
        return iAlle <= iGezeigt ? "" : fmt::format(", gezeigt die {} {}", iGezeigt, pWelche);
    }

    // ---- what was left out

    void Weggelassenes() {
        SBerichttafel & t = Tafel("Was nicht gezählt ist", {TextSpalte("Posten"), ZahlSpalte("Anzahl")});
        if (const auto & zahlen = m_auftrag.zahlen) {
            t.vZeilen.push_back({"Behandlungen gelesen"_t, itoc(zahlen->iBehandlungen)});
            t.vZeilen.push_back({"davon gezählt"_t, itoc(zahlen->iTreffer)});
            for (std::size_t i = 0; i < WEGLASSGRUENDE; ++i)
                if (const auto iAnzahl = zahlen->aiWeggelassen[i]; iAnzahl != 0)
                    t.vZeilen.push_back(
                        {"davon "_t + Weglassname(static_cast<EWeglassgrund>(i)), itoc(iAnzahl)});
        }
        t.vZeilen.push_back({"Hits", itoc(static_cast<std::int64_t>(m_accu.m_vBehHits.size()))});
        t.vZeilen.push_back({"davon in diesem Bericht"_t, itoc(m_alles.iHits)});
        for (const auto & [sGrund, iAnzahl] : m_alles.mapAusgelassen)
            t.vZeilen.push_back({AusUtf8("davon " + sGrund), itoc(iAnzahl)});
    }

    struct SMeldung {
        CString sGrund, sPatNr, sDatum, sLeistung, sName;
        friend auto operator<=>(const SMeldung &, const SMeldung &) = default;
    };

    [[nodiscard]] std::vector<SMeldung> Meldungen() const {
        std::unordered_map<CString, CString> mapName;
        if (m_auftrag.bMitNamen)
            for (const CBehHitLine & hit : m_accu.m_vBehHits)
                mapName.try_emplace(hit.PATNR, hit.PATNAME);
        std::vector<SMeldung> v;
        for (const CBehErrors & fehler : m_accu.m_vBehErrors) {
            const auto it = mapName.find(fehler.PATNR);
            v.push_back({BehFehlertext(fehler.m_iFehler), Trim(fehler.PATNR), fehler.DATUM, fehler.LSTIN,
                         it == mapName.end() ? CString() : it->second});
        }
        for (const SMangel & mangel : m_auftrag.vMaengel)
            v.push_back({Weglassname(mangel.eGrund), Trim(mangel.sPatNr), mangel.sDatum, mangel.sLeistung,
                         m_auftrag.bMitNamen ? mangel.sName : CString()});
        std::ranges::sort(v);
        return v;
    }

    void Fehler() {
        const std::vector<SMeldung> vMeldungen = Meldungen();
        struct SArt {
            std::int64_t iAnzahl = 0;
            std::set<CString> setPatienten;
        };
        std::map<CString, SArt> mapArt;
        for (const SMeldung & m : vMeldungen) {
            ++mapArt[m.sGrund].iAnzahl;
            mapArt[m.sGrund].setPatienten.insert(m.sPatNr);
        }
        SBerichttafel & arten =
            Tafel("Fehler nach Art", {TextSpalte("Fehler"), ZahlSpalte("Anzahl"), ZahlSpalte("Patienten")});
        for (const auto & [sGrund, art] : mapArt)
            arten.vZeilen.push_back(
                {sGrund, itoc(art.iAnzahl), itoc(static_cast<std::int64_t>(art.setPatienten.size()))});
        if (vMeldungen.empty()) {
            arten.vSaetze.emplace_back("Keine Fehler.");
            return;
        }
        std::vector<SAusgabespalte> vSpalten = {
            TextSpalte("Fehler"), TextSpalte("Patient"), {"Tag", EZelle::Datum, 10}, TextSpalte("Leistung")};
        if (m_auftrag.bMitNamen) vSpalten.push_back(TextSpalte("Name"));
        SBerichttafel & t = Tafel("Zum Nachsehen", vSpalten);
        for (const SMeldung & m : vMeldungen) {
            if (t.vZeilen.size() >= MELDUNGEN) break;
            t.vZeilen.push_back({m.sGrund, m.sPatNr, m.sDatum, m.sLeistung});
            if (m_auftrag.bMitNamen) t.vZeilen.back().push_back(m.sName);
        }
        t.vSaetze.push_back(Mit(static_cast<std::int64_t>(vMeldungen.size()), "Meldung", "Meldungen") +
                            Gekuerzt(vMeldungen.size(), MELDUNGEN, "ersten") + '.');
    }

    // ---- comparison

    static std::vector<CString> Vergleichszeile(const CString & sName, const CString & sEinheit,
                                                std::int64_t iHier, std::int64_t iDort, bool bBetrag) {
        const auto Wert = [bBetrag](std::int64_t i) { return bBetrag ? Euro(i) : itoc(i); };
        return {
            sName, sEinheit, Wert(iHier), Wert(iDort), Wert(iHier - iDort), Prozent(iHier - iDort, iDort)};
    }

    void Vergleich(const SKernzahlen & dort) {
        const SKernzahlen hier = KernzahlenAus("", m_accu, m_sum, m_alles);
        const std::string sZeit = Zeitraumtext(dort.sVon, dort.sBis);
        SBerichttafel & t =
            Tafel("Vergleich: " + dort.sName,
                  {TextSpalte("Posten"), TextSpalte("Einheit"), ZahlSpalte("Bericht"),
                   ZahlSpalte("Vergleich"), ZahlSpalte("Änderung"), ZahlSpalte("Änderung", "%")});
        const auto Summe = [](const SKernzahlen & k) {
            return k.aiBetrag[0] + k.aiBetrag[1] + k.aiBetrag[2];
        };
        const auto JeFall = [&](const SKernzahlen & k) { return k.iFaelle == 0 ? 0 : Summe(k) / k.iFaelle; };
        t.vZeilen = {Vergleichszeile("Umsatz", "EUR", Summe(hier), Summe(dort), true),
                     Vergleichszeile("davon Kasse"_t, "EUR", hier.aiBetrag[0], dort.aiBetrag[0], true),
                     Vergleichszeile("davon Privat"_t, "EUR", hier.aiBetrag[1], dort.aiBetrag[1], true),
                     Vergleichszeile("davon Sonstige"_t, "EUR", hier.aiBetrag[2], dort.aiBetrag[2], true),
                     Vergleichszeile("Umsatz je Fall"_t, "EUR", JeFall(hier), JeFall(dort), true),
                     Vergleichszeile("Fälle"_t, {}, hier.iFaelle, dort.iFaelle, false),
                     Vergleichszeile("Patienten"_t, {}, hier.iPatienten, dort.iPatienten, false),
                     Vergleichszeile("Leistungen (Hits)"_t, {}, hier.iHits, dort.iHits, false)};
        std::set<CString> setBehandler;
        for (const SKernzahlen * p : {&hier, &dort})
            for (const auto & [sNr, iBetrag] : p->mapBehandler)
                setBehandler.insert(sNr);
        const auto Wert = [](const std::map<CString, std::int64_t> & map, const CString & s) {
            const auto it = map.find(s);
            return it == map.end() ? std::int64_t{0} : it->second;
        };
        for (const CString & sNr : setBehandler)
            t.vZeilen.push_back(Vergleichszeile("Behandler "_t + Trim(Behandlername(m_accu, sNr)), "EUR",
                                                Wert(hier.mapBehandler, sNr), Wert(dort.mapBehandler, sNr),
                                                true));
        t.vSaetze.push_back("Verglichen mit: " + sZeit + '.');
        Monatsvergleich(hier, dort);
    }

    // Months side by side by their place, the first with the first.
    void Monatsvergleich(const SKernzahlen & hier, const SKernzahlen & dort) {
        const std::vector<std::pair<CString, std::int64_t>> vHier = Monate(hier);
        const std::vector<std::pair<CString, std::int64_t>> vDort = Monate(dort);
        SBerichttafel & t =
            Tafel("Monate im Vergleich: " + dort.sName,
                  {TextSpalte("Monat"), ZahlSpalte("Bericht", "EUR"), TextSpalte("Vergleichsmonat"),
                   ZahlSpalte("Vergleich", "EUR"), ZahlSpalte("Änderung", "%")});
        for (std::size_t i = 0; i < std::max(vHier.size(), vDort.size()); ++i) {
            const auto a = i < vHier.size() ? vHier[i] : std::pair<CString, std::int64_t>();
            const auto b = i < vDort.size() ? vDort[i] : std::pair<CString, std::int64_t>();
            t.vZeilen.push_back(
                {a.first, Euro(a.second), b.first, Euro(b.second), Prozent(a.second - b.second, b.second)});
        }
        t.bild = SBild{.eBild = EBild::Saeulen,
                       .sTitel = "Umsatz je Monat, dieser Bericht und " + dort.sName,
                       .sText = Mit(static_cast<std::int64_t>(t.vZeilen.size()), "Monat", "Monate") +
                                " nebeneinander, Zahlen in der Tabelle darunter.",
                       .sEinheit = "EUR",
                       .viReihen = {1, 3}};
    }

    // Every month of the period, also one without a hit, up to the last with one.
    static std::vector<std::pair<CString, std::int64_t>> Monate(const SKernzahlen & k) {
        std::vector<std::pair<CString, std::int64_t>> v;
        if (k.mapMonat.empty()) return v;
        const CString sErster = Oder(k.sVon, k.mapMonat.begin()->first).Left(6);
        int iJahr = Zahl(sErster.Left(4));
        int iMonat = Zahl(sErster.Mid(4));
        for (;;) {
            const CString sMonat = RightFix(itoc(iJahr), 4, '0') + RightFix(itoc(iMonat), 2, '0');
            if (sMonat > k.mapMonat.rbegin()->first) return v;
            const auto it = k.mapMonat.find(sMonat);
            v.emplace_back(Monat(sMonat), it == k.mapMonat.end() ? 0 : it->second);
            iJahr += iMonat / 12;
            iMonat = iMonat % 12 + 1;
        }
    }

    CStatAccu & m_accu;
    const SBerichtauftrag & m_auftrag;
    CArbeitskalender m_kalender;
    CLSSum m_sum;
    SSammlung m_alles;
    std::int64_t m_iGesamt = 0;
    CString m_sVon, m_sBis; // what has passed of the period
    int m_iArbeitstage = 0;
    SBericht m_bericht;

public:
    static SKernzahlen KernzahlenAus(const std::string & sName, const CStatAccu & accu, const CLSSum & sum,
                                     const SSammlung & alles) {
        SKernzahlen k{.sName = sName, .sVon = accu.GetAbDatum(), .sBis = accu.GetBisDatum()};
        k.iHits = alles.iHits;
        k.iPatienten = static_cast<std::int64_t>(alles.setPatienten.size());
        k.iFaelle = sum.m_Praxis.m_iAnzFaelle;
        for (const auto & [sMonat, posten] : alles.mapMonat) {
            k.mapMonat[sMonat] = posten.Betrag();
            for (std::size_t i = 0; i < 3; ++i)
                k.aiBetrag[i] += posten.Betrag(i);
        }
        for (const CLSBehLstGrp & beh : sum.m_vBeh)
            k.mapBehandler[beh.BEHANDLERNR] = Einheiten(beh.m_Gesamt.BETRAG);
        return k;
    }
};

} // namespace

SKernzahlen Kernzahlen(const std::string & sName, CStatAccu & accu, const CString & sPraxis) {
    OrdneNachQuartalen(accu.m_vBehHits);
    CLSSum sum;
    sum.Analyse(sPraxis, accu.m_vBehHits, nullptr);
    SSammlung alles;
    for (const CBehHitLine & hit : accu.m_vBehHits)
        if (sum.TestBehSelOk(hit, sPraxis)) alles.Nimm(hit);
    return CErsteller::KernzahlenAus(sName, accu, sum, alles);
}

SBericht ErstelleBericht(CStatAccu & accu, const SBerichtauftrag & auftrag) {
    return CErsteller(accu, auftrag).Erstelle();
}

void SchreibeBericht(CDokument & dokument, const SBericht & bericht) {
    for (const std::string & sSatz : bericht.vEinleitung)
        dokument.Satz(sSatz);
    for (const SBerichttafel & tafel : bericht.vTafeln) {
        if (tafel.bild) dokument.Bild(*tafel.bild);
        CAusgabe & ausgabe = dokument.Tabelle(tafel.sTitel, tafel.vSpalten);
        for (const std::vector<CString> & vZeile : tafel.vZeilen)
            ausgabe.Zeile(vZeile);
        if (!tafel.vSumme.empty()) ausgabe.Summe(tafel.vSumme);
        ausgabe.Ende();
        for (const std::string & sSatz : tafel.vSaetze)
            dokument.Satz(sSatz);
    }
}

} // namespace orvostat
