#include "Leistungstabellen.h"

#include "Summenpruefung.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

namespace {

constexpr int BREITE_NAME = 34;
constexpr int BREITE_ZAHL = 14;

// Hundredths as a cell with two places.
CString Hundertstel(std::int64_t i) { return DezimalZelle(i, 2); }

} // namespace

CString Zahlername(char c) {
    switch (c) {
    case '0':
        return "Kasse";
    case '1':
        return "Privat";
    default:
        return "Sonstige"_t;
    }
}

// The class of a group in words is the name of its kind; the letter stands before it.
CString Artname(CStatAccu & accu, const CLSLstGrp & grp) {
    const CString sName = accu.GetLstGrpName(grp.m_cGoTyp == 'T' ? 'T' : 'K', grp.m_cStatArt);
    const CString sArt(grp.m_cStatArt);
    return sName.IsEmpty() ? sArt : sArt + " " + sName;
}

CString Behandlername(CStatAccu & accu, const CString & sNr) {
    const int i = accu.FindLeb(sNr);
    return i < 0 ? sNr : accu.m_vLeb[static_cast<std::size_t>(i)].GetLebLine();
}

void OrdneNachQuartalen(std::vector<CBehHitLine> & vHits) {
    // Hits are large: their places are sorted, and each hit is moved once, along the cycles of the new order.
    std::vector<std::pair<CString, std::size_t>> vOrdnung;
    vOrdnung.reserve(vHits.size());
    for (const CBehHitLine & hit : vHits)
        vOrdnung.emplace_back(DbDate2Quartal(hit.DATUM), vOrdnung.size());
    if (std::ranges::is_sorted(vOrdnung)) return;
    std::ranges::sort(vOrdnung);
    for (std::size_t i = 0; i < vHits.size(); ++i) {
        if (vOrdnung[i].second == i) continue;
        CBehHitLine erster = std::move(vHits[i]);
        std::size_t iLeer = i;
        for (std::size_t iVon; (iVon = std::exchange(vOrdnung[iLeer].second, iLeer)) != i; iLeer = iVon)
            vHits[iLeer] = std::move(vHits[iVon]);
        vHits[iLeer] = std::move(erster);
    }
}

void LadeNormen(CPx100F & px, const CStatAccu & accu) {
    CString sVon = accu.GetAbDatum();
    CString sBis = accu.GetBisDatum();
    if (const auto & vHits = accu.m_vBehHits; !vHits.empty()) {
        const auto [itErster, itLetzter] = std::ranges::minmax_element(vHits, {}, &CBehHitLine::DATUM);
        if (sVon.IsEmpty()) sVon = itErster->DATUM;
        if (sBis.IsEmpty()) sBis = itLetzter->DATUM;
    }
    // Without hits an open end says nothing about the norms.
    if (sVon.IsEmpty()) sVon = sBis;
    if (sBis.IsEmpty()) sBis = sVon;
    px.LoadBudgets(sVon, sBis);
}

const char * Auslassgrund(const CLSSum & sum, const CBehHitLine & hit, const CString & sPraxis) {
    if (sum.TestBehSelOk(hit, sPraxis)) return nullptr;
    if (hit.GOSTATISTIKART == 0) return "ohne Statistikart";
    if (!hit.LSTIN.IsEmpty()) return sum.TestBehSelOk(hit, "") ? "anderer Praxisinhaber" : "nicht zu zählen";
    CBehHitLine mitLeistung(hit);
    mitLeistung.LSTIN = "1";
    return sum.TestBehSelOk(mitLeistung, "") ? "ohne Leistung" : "nicht zu zählen";
}

int Behandlertage(const CLSSum & sum, const CString & sNr) {
    const int iNr = Zahl(sNr);
    const auto it = std::ranges::find(sum.m_vBehTage, iNr, [](const auto & tage) { return tage.first; });
    return iNr == 0 || it == sum.m_vBehTage.end() ? -1 : it->second;
}

bool UeberGrenze(const CLSLst & lst, int iGrenze) { return lst.m_iF100Abweichung > iGrenze * 100; }

std::array<SZahlersummen, 3> Zahlersummen(const CLSPxLstGrp & px) {
    return {
        {{'0', px.m_KasseStd, px.m_KasseK, px.m_KasseLM, px.m_KasseAbz, px.m_KasseGes, px.m_KasseNetto},
         {'1', px.m_PrivatStd, px.m_PrivatK, px.m_PrivatLM, px.m_PrivatAbz, px.m_PrivatGes, px.m_PrivatNetto},
         {'2', px.m_SonstStd, px.m_SonstK, px.m_SonstLM, px.m_SonstAbz, px.m_SonstGes, px.m_SonstNetto}}};
}

namespace {

// ---- sums at the limit

// The counts and points of all records that stand at the limit of their fields.
class CGrenzen {
public:
    template <class... T> void Nimm(const T &... lst) { (NimmEine(lst), ...); }
    void Nimm(const std::vector<CLSLst> & vLst) {
        for (const CLSLst & lst : vLst)
            Nimm(lst);
    }
    void Nimm(const std::vector<CLSLstGrp> & vGrp) {
        for (const CLSLstGrp & grp : vGrp) {
            Nimm(grp.m_Sum);
            Nimm(grp.m_vLst);
        }
    }
    void Schreibe(CDokument & dokument) const {
        const auto Satz = [&](int iSummen, const char * pWas) {
            if (iSummen == 0) return;
            dokument.Satz(std::to_string(iSummen) + (iSummen == 1 ? " Summe" : " Summen") + " der " + pWas +
                          (iSummen == 1 ? " steht" : " stehen") +
                          " an der Grenze von 21474836,47: In Wahrheit ist es mehr, und was daraus gerechnet "
                          "ist, stimmt nicht.");
        };
        Satz(m_iAnzahl, "Anzahl");
        Satz(m_iPunkte, "Punkte");
    }

private:
    static bool AnGrenze(std::int32_t i) {
        return i == std::numeric_limits<std::int32_t>::max() || i == std::numeric_limits<std::int32_t>::min();
    }
    void NimmEine(const CLSLst & lst) {
        m_iAnzahl += AnGrenze(lst.ANZAHL) ? 1 : 0;
        m_iPunkte += AnGrenze(lst.PUNKTE) ? 1 : 0;
    }

    int m_iAnzahl = 0;
    int m_iPunkte = 0;
};

// The sums that practice and treaters have alike.
template <class T> void NimmSummen(CGrenzen & grenzen, const T & t) {
    grenzen.Nimm(t.m_Gesamt, t.m_PrivatStd, t.m_PrivatK, t.m_PrivatLM, t.m_KasseStd, t.m_KasseK, t.m_KasseLM,
                 t.m_SonstStd, t.m_SonstK, t.m_SonstLM, t.m_SumStd, t.m_SumK, t.m_SumLM, t.m_PrivatGes,
                 t.m_KasseGes, t.m_SonstGes, t.m_PrivatAbz, t.m_KasseAbz, t.m_SonstAbz, t.m_SumNetto,
                 t.m_PrivatNetto, t.m_KasseNetto, t.m_SonstNetto);
    grenzen.Nimm(t.m_vLstGrp);
}

// ---- practice and treaters

const SAusgabespalte PRAXISSPALTEN[] = {
    {"Kostenträger", EZelle::Text, BREITE_NAME},          {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
    {"Leistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"},     {"Art k", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Labor/Material", EZelle::Zahl, BREITE_ZAHL, "EUR"}, {"Abzug", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Gesamt", EZelle::Zahl, BREITE_ZAHL, "EUR"},         {"Netto", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
};

void SchreibePraxis(CDokument & dokument, const CLSPxLstGrp & px) {
    CAusgabe & tabelle = dokument.Tabelle("Praxis", PRAXISSPALTEN);
    const auto Zeile = [](const CString & sName, const CLSLst & std, const CLSLst & k, const CLSLst & lm,
                          const CDBetrag & abz, const CLSLst & ges, const CLSLst & netto,
                          const CString & sAnteil) {
        return std::vector<CString>{sName,
                                    Hundertstel(ges.ANZAHL),
                                    BetragZelle(std.BETRAG),
                                    BetragZelle(k.BETRAG),
                                    BetragZelle(lm.BETRAG),
                                    BetragZelle(abz),
                                    BetragZelle(ges.BETRAG),
                                    BetragZelle(netto.BETRAG),
                                    sAnteil};
    };
    CDBetrag abz(0.0, 'e');
    for (const SZahlersummen & z : Zahlersummen(px)) {
        tabelle.Zeile(Zeile(Zahlername(z.cZahler), z.std, z.k, z.lm, z.abz.BETRAG, z.ges, z.netto,
                            Hundertstel(z.ges.ANTEILPRAXIS)));
        abz += z.abz.BETRAG;
    }
    tabelle.Summe(Zeile("Gesamt", px.m_SumStd, px.m_SumK, px.m_SumLM, abz, px.m_Gesamt, px.m_SumNetto, {}));
    tabelle.Ende();
}

const SAusgabespalte BEHANDLERSPALTEN[] = {
    {"Behandler", EZelle::Text, BREITE_NAME},       {"Tage", EZelle::Zahl, BREITE_ZAHL},
    {"Anzahl", EZelle::Zahl, BREITE_ZAHL},          {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Kasse", EZelle::Zahl, BREITE_ZAHL, "EUR"},    {"Kasse Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Privat", EZelle::Zahl, BREITE_ZAHL, "EUR"},   {"Privat Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Sonstige", EZelle::Zahl, BREITE_ZAHL, "EUR"}, {"Sonstige Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
};

void SchreibeBehandler(CDokument & dokument, CStatAccu & accu, const CLSSum & sum) {
    CAusgabe & tabelle = dokument.Tabelle("Behandler", BEHANDLERSPALTEN);
    const auto Zeile = [&](const CString & sName, const CString & sTage, const auto & t) {
        return std::vector<CString>{sName,
                                    sTage,
                                    Hundertstel(t.m_Gesamt.ANZAHL),
                                    BetragZelle(t.m_Gesamt.BETRAG),
                                    BetragZelle(t.m_KasseGes.BETRAG),
                                    Hundertstel(t.m_KasseGes.ANTEILPRAXIS),
                                    BetragZelle(t.m_PrivatGes.BETRAG),
                                    Hundertstel(t.m_PrivatGes.ANTEILPRAXIS),
                                    BetragZelle(t.m_SonstGes.BETRAG),
                                    Hundertstel(t.m_SonstGes.ANTEILPRAXIS)};
    };
    for (const CLSBehLstGrp & beh : sum.m_vBeh) {
        const int iTage = Behandlertage(sum, beh.BEHANDLERNR);
        tabelle.Zeile(Zeile(Behandlername(accu, beh.BEHANDLERNR), iTage < 0 ? CString() : itoc(iTage), beh));
    }
    tabelle.Summe(
        Zeile("Gesamt", sum.m_vBehTage.empty() ? CString() : itoc(sum.m_vBehTage[0].second), sum.m_Praxis));
    tabelle.Ende();
}

// ---- groups

// Names, then what Werte gives, then shares.
std::vector<SAusgabespalte> Gruppenspalten(std::initializer_list<const char *> vNamen,
                                           std::initializer_list<const char *> vAnteile) {
    std::vector<SAusgabespalte> v;
    for (const char * pName : vNamen)
        v.push_back({pName, EZelle::Text, BREITE_NAME});
    v.insert(v.end(), {{"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                       {"Kassenpunkte", EZelle::Zahl, BREITE_ZAHL},
                       {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                       {"Betrag genau", EZelle::Zahl, BREITE_ZAHL, "EUR", true}});
    for (const char * pAnteil : vAnteile)
        v.push_back({pAnteil, EZelle::Zahl, BREITE_ZAHL, "%"});
    return v;
}

// Points of the insurers' services only: those of private schedules are of another worth.
std::vector<CString> Werte(const CLSLst & lst, char cZahler = 0) {
    return {Hundertstel(lst.ANZAHL), cZahler == '0' ? Hundertstel(lst.PUNKTE) : CString(),
            BetragZelle(lst.BETRAG), GenauZelle(lst.BETRAG)};
}

std::vector<CString> Reihe(std::vector<CString> vKopf, const std::vector<CString> & vWerte,
                           std::initializer_list<CString> vAnteile) {
    vKopf.insert(vKopf.end(), vWerte.begin(), vWerte.end());
    vKopf.insert(vKopf.end(), vAnteile);
    return vKopf;
}

void SchreibeNachArt(CDokument & dokument, CStatAccu & accu, const CLSPxLstGrp & px) {
    const auto vSpalten = Gruppenspalten({"Kostenträger", "Statistikart"}, {"Anteil Praxis"});
    CAusgabe & tabelle = dokument.Tabelle("Nach Statistikart", vSpalten);
    for (const CLSLstGrp & grp : px.m_vLstGrp)
        tabelle.Zeile(Reihe({Zahlername(grp.m_cZahler), Artname(accu, grp)}, Werte(grp.m_Sum, grp.m_cZahler),
                            {Hundertstel(grp.m_Sum.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", ""}, Werte(px.m_Gesamt), {CString()}));
    tabelle.Ende();
}

// Buckets of each payer, each with its share of the practice's bucket.
void SchreibeNachZahler(CDokument & dokument, const CLSPxLstGrp & px) {
    const auto vSpalten = Gruppenspalten({"Kostenträger", "Bereich"}, {"Anteil Praxis"});
    CAusgabe & tabelle = dokument.Tabelle("Nach Kostenträger", vSpalten);
    for (const SZahlersummen & z : Zahlersummen(px))
        for (const auto & [sBereich, pLst] : {std::pair{"Leistungen"_t, &z.std},
                                              {"Art k"_t, &z.k},
                                              {"Labor/Material"_t, &z.lm},
                                              {"Abzug"_t, &z.abz},
                                              {"Gesamt"_t, &z.ges},
                                              {"Netto"_t, &z.netto}})
            if (pLst->ANZAHL != 0) // what is deducted has no share
                tabelle.Zeile(Reihe({Zahlername(z.cZahler), sBereich}, Werte(*pLst, z.cZahler),
                                    {pLst == &z.abz ? CString() : Hundertstel(pLst->ANTEILPRAXIS)}));
    tabelle.Ende();
}

void SchreibeNachBehandler(CDokument & dokument, CStatAccu & accu, const CLSSum & sum) {
    const auto vSpalten =
        Gruppenspalten({"Behandler", "Kostenträger", "Statistikart"}, {"Anteil Behandler", "Anteil Praxis"});
    CAusgabe & tabelle = dokument.Tabelle("Nach Behandler und Statistikart", vSpalten);
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        for (const CLSLstGrp & grp : beh.m_vLstGrp)
            tabelle.Zeile(
                Reihe({Behandlername(accu, beh.BEHANDLERNR), Zahlername(grp.m_cZahler), Artname(accu, grp)},
                      Werte(grp.m_Sum, grp.m_cZahler),
                      {Hundertstel(grp.m_Sum.ANTEILBEH), Hundertstel(grp.m_Sum.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", "", ""}, Werte(sum.m_Praxis.m_Gesamt), {CString(), CString()}));
    tabelle.Ende();
}

void SchreibeNachLeistung(CDokument & dokument, CStatAccu & accu, const CLSPxLstGrp & px) {
    const auto vSpalten =
        Gruppenspalten({"Kostenträger", "Statistikart", "Leistung", "Kürzel"}, {"Anteil Praxis"});
    CAusgabe & tabelle = dokument.Tabelle("Nach Leistung", vSpalten);
    for (const CLSLstGrp & grp : px.m_vLstGrp)
        for (const CLSLst & lst : grp.m_vLst)
            tabelle.Zeile(Reihe({Zahlername(grp.m_cZahler), Artname(accu, grp), lst.LSTNR, lst.LSTKUERZEL},
                                Werte(lst, grp.m_cZahler), {Hundertstel(lst.ANTEILPRAXIS)}));
    tabelle.Summe(Reihe({"Gesamt", "", "", ""}, Werte(px.m_Gesamt), {CString()}));
    tabelle.Ende();
}

// Why the statistic has fewer hits than the run.
void SchreibeAusgelassene(CDokument & dokument, const CStatAccu & accu, const CLSSum & sum,
                          const CString & sPraxis) {
    std::map<std::string, int> mapGrund;
    for (const CBehHitLine & hit : accu.m_vBehHits)
        if (const char * pGrund = Auslassgrund(sum, hit, sPraxis)) ++mapGrund[pGrund];
    std::string sSatz;
    for (const auto & [sGrund, iAnzahl] : mapGrund)
        sSatz += (sSatz.empty() ? "Nicht in der Statistik: " : ", ") + std::to_string(iAnzahl) + ' ' + sGrund;
    if (!sSatz.empty()) dokument.Satz(sSatz + '.');
}

// Cases, and where the practice has several owners the days of each.
void SchreibeFaelleUndTage(CDokument & dokument, const CLSSum & sum) {
    dokument.Satz(itoc(sum.m_Praxis.m_iAnzFaelle).Utf8() +
                  (sum.m_Praxis.m_iAnzFaelle == 1 ? " Fall." : " Fälle."));
    if (sum.m_vPraxisTage.size() < 3) return; // number 0 is all together
    std::string sSatz;
    for (const auto & [iNr, iTage] : sum.m_vPraxisTage)
        if (iNr != 0)
            sSatz += (sSatz.empty() ? "Tage je Praxisinhaber: Nr. " : ", Nr. ") + std::to_string(iNr) +
                     " an " + std::to_string(iTage);
    dokument.Satz(sSatz + '.');
}

// Why shares do not add up: rounding always, the rest where there is such money.
void SchreibeAnteilsnoten(CDokument & dokument, const CLSSum & sum) {
    const CLSPxLstGrp & px = sum.m_Praxis;
    dokument.Satz("Anteile sind auf Hundertstel gerundet und stehen gegen die Summe des eigenen Bereichs; "
                  "Beträge bis 0 haben keinen. So ergeben sie zusammen nicht immer 100 %.");
    if (px.m_KasseAbz.ANZAHL != 0 || px.m_PrivatAbz.ANZAHL != 0 || px.m_SonstAbz.ANZAHL != 0)
        dokument.Satz("Gruppen und Leistungen mit abgezogenem Material stehen gegen Labor/Material, wo der "
                      "Abzug fehlt: Dort sind es zusammen mehr als 100 %.");
    if (std::ranges::any_of(sum.m_vBeh, [](const auto & beh) { return Zahl(beh.BEHANDLERNR) == 0; }))
        dokument.Satz("Ein Behandler, dessen Nummer keine Zahl ist, hat keine eigenen Tage; sie zählen nur "
                      "im Ganzen.");
    CGrenzen grenzen;
    NimmSummen(grenzen, px);
    for (const CLSBehLstGrp & beh : sum.m_vBeh)
        NimmSummen(grenzen, beh);
    grenzen.Schreibe(dokument);
}

} // namespace

void SchreibeLeistungen(CDokument & dokument, CStatAccu & accu, const CLSSum & sum, const CString & sPraxis,
                        ELeistungNach eNach) {
    SchreibePraxis(dokument, sum.m_Praxis);
    SchreibeBehandler(dokument, accu, sum);
    switch (eNach) {
    case ELeistungNach::Art:
        SchreibeNachArt(dokument, accu, sum.m_Praxis);
        break;
    case ELeistungNach::Zahler:
        SchreibeNachZahler(dokument, sum.m_Praxis);
        break;
    case ELeistungNach::Behandler:
        SchreibeNachBehandler(dokument, accu, sum);
        break;
    case ELeistungNach::Leistung:
        SchreibeNachLeistung(dokument, accu, sum.m_Praxis);
        break;
    }
    SchreibeFaelleUndTage(dokument, sum);
    SchreibeAusgelassene(dokument, accu, sum, sPraxis);
    SchreibeAnteilsnoten(dokument, sum);
}

// ---- hundred cases

namespace {

constexpr const char * SPALTENNAMEN[] = {"Gesamt", "VDAK",       "VDAK primär", "VDAK fremd",
                                         "RVO",    "RVO primär", "RVO fremd",   "Gruppe 9"};
static_assert(std::size(SPALTENNAMEN) == SPALTEN_100F);

// Own and foreign insurers apart are shown on demand only, an empty column never.
bool Gezeigt(const CPx100F & px, std::size_t i, const SHundertwahl & wahl) {
    const bool bTeil = i == SPALTE_VDAK_PRIMAER || i == SPALTE_VDAK_FREMD || i == SPALTE_RVO_PRIMAER ||
                       i == SPALTE_RVO_FREMD;
    return !px.m_aSpalten[i].m_vLst.empty() && (wahl.bAlleSpalten || !bTeil);
}

void SchreibeSpalten(CDokument & dokument, const CPx100F & px) {
    static const SAusgabespalte SPALTEN[] = {{"Spalte", EZelle::Text, BREITE_NAME},
                                             {"Fälle", EZelle::Zahl, BREITE_ZAHL},
                                             {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
                                             {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Hauptleistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"},
                                             {"Nebenleistungen", EZelle::Zahl, BREITE_ZAHL, "EUR"}};
    CAusgabe & tabelle = dokument.Tabelle("Spalten", SPALTEN);
    for (std::size_t i = 0; i < SPALTEN_100F; ++i) {
        const CKasArt100F & spalte = px.m_aSpalten[i];
        tabelle.Zeile({AusUtf8(SPALTENNAMEN[i]), itoc(spalte.m_iAnzFaelle),
                       Hundertstel(spalte.m_Gesamt.ANZAHL), BetragZelle(spalte.m_Gesamt.BETRAG),
                       BetragZelle(spalte.m_Hauptleistung.BETRAG),
                       BetragZelle(spalte.m_Nebenleistung.BETRAG)});
    }
    tabelle.Ende();
}

void SchreibeSpalte(CDokument & dokument, const CKasArt100F & spalte, const std::string & sName,
                    const SHundertwahl & wahl) {
    static const SAusgabespalte SPALTEN[] = {
        {"Kürzel", EZelle::Text, BREITE_NAME},          {"Leistung", EZelle::Text, BREITE_NAME},
        {"Anzahl", EZelle::Zahl, BREITE_ZAHL},          {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
        {"je 100 Fälle", EZelle::Zahl, BREITE_ZAHL},    {"Norm", EZelle::Zahl, BREITE_ZAHL},
        {"Abweichung", EZelle::Zahl, BREITE_ZAHL, "%"}, {"Differenz", EZelle::Zahl, BREITE_ZAHL},
        {"Hinweis", EZelle::Text, BREITE_NAME}};
    CAusgabe & tabelle = dokument.Tabelle(sName, SPALTEN);
    for (const CLSLst & lst : spalte.m_vLst) {
        if (lst.m_iF100Soll == 0 && !wahl.bAlleZeilen) continue;
        const bool bUeber = wahl.iGrenze > 0 && UeberGrenze(lst, wahl.iGrenze);
        tabelle.Zeile({lst.LSTKUERZEL, lst.LSTNR, Hundertstel(lst.ANZAHL), Hundertstel(lst.m_iAnteilAnz),
                       Hundertstel(lst.m_iAnzJe100Fall),
                       lst.m_iF100Soll == 0 ? CString() : Hundertstel(lst.m_iF100Soll),
                       lst.m_iF100Soll == 0 ? CString() : Hundertstel(lst.m_iF100Abweichung),
                       lst.m_iF100Soll == 0 ? CString() : itoc(lst.m_iAnzDiff),
                       bUeber ? "über der Grenze"_t : CString()});
    }
    tabelle.Ende();
}

// "F3 F4/F1" as " F3 F4 " and " F1 ".
CVerhLst Verhaeltnis(const SSelectPool & eintrag) {
    const int iTrenner = eintrag.m_sExtra.Find('/');
    return {" " + eintrag.m_sExtra.Left(iTrenner) + " ", " " + eintrag.m_sExtra.Mid(iTrenner + 1) + " "};
}

std::vector<SSelectPool *> Verhaeltniseintraege() {
    std::vector<SSelectPool *> v;
    GetSPEntries("verhaeltnis"_t, v);
    return v;
}

bool OhneTrenner(const SSelectPool * pEintrag) { return pEintrag->m_sExtra.Find('/') < 0; }

// Numerators per hundred denominators in hundredths, to the nearest. MulDiv knows 32 bits only.
std::int64_t Je100(std::int64_t iZaehler, std::int64_t iNenner) {
    const std::int64_t iDoppelt = 2 * 10000 * iZaehler / iNenner;
    return (iDoppelt + (iDoppelt < 0 ? -1 : 1)) / 2;
}

void SchreibeVerhaeltnisse(CDokument & dokument, const CPx100F & px, const SHundertwahl & wahl) {
    static const SAusgabespalte SPALTEN[] = {{"Verhältnis", EZelle::Text, 50},
                                             {"Spalte", EZelle::Text, BREITE_NAME},
                                             {"Zähler", EZelle::Zahl, BREITE_ZAHL},
                                             {"Nenner", EZelle::Zahl, BREITE_ZAHL},
                                             {"je 100", EZelle::Zahl, BREITE_ZAHL}};
    std::vector<SSelectPool *> vEintraege = Verhaeltniseintraege();
    for (const SSelectPool * pEintrag : vEintraege)
        if (OhneTrenner(pEintrag))
            dokument.Satz("Das Verhältnis \"" + pEintrag->m_sText.Utf8() +
                          "\" hat in der Auswahlliste keinen Nenner (\"/\") und fehlt deshalb.");
    std::erase_if(vEintraege, OhneTrenner);
    if (vEintraege.empty()) return;
    CAusgabe & tabelle = dokument.Tabelle("Verhältnisse", SPALTEN);
    for (std::size_t iVerh = 0; iVerh < vEintraege.size(); ++iVerh)
        for (std::size_t i = 0; i < SPALTEN_100F; ++i) {
            if (!Gezeigt(px, i, wahl) || iVerh >= px.m_aSpalten[i].m_vVerh.size()) continue;
            const auto [iZaehler, iNenner] = px.m_aSpalten[i].m_vVerh[iVerh];
            tabelle.Zeile({vEintraege[iVerh]->m_sText, AusUtf8(SPALTENNAMEN[i]), Hundertstel(iZaehler),
                           Hundertstel(iNenner),
                           iNenner == 0 ? CString() : Hundertstel(Je100(iZaehler, iNenner))});
        }
    tabelle.Ende();
}

} // namespace

void LadeVerhaeltnisse() {
    CKasArt100F::s_vVerhLst.clear();
    for (const SSelectPool * pEintrag : Verhaeltniseintraege())
        if (!OhneTrenner(pEintrag)) CKasArt100F::s_vVerhLst.push_back(Verhaeltnis(*pEintrag));
}

namespace {

// What there is to say of the norms themselves.
void SchreibeNormnoten(CDokument & dokument, const CPx100F & px, bool bZweiterSatz) {
    int iNormen = 0;
    int iUnbrauchbar = 0;
    CString sErste;
    for (const auto & [cArt, mTage] : px.m_mBudgets)
        for (const auto & [sAb, vNormen] : mTage) {
            if (sErste.IsEmpty() || sAb < sErste) sErste = sAb;
            iNormen += static_cast<int>(vNormen.size());
            iUnbrauchbar += static_cast<int>(std::ranges::count_if(vNormen, [&](const SGoBudget & n) {
                return bZweiterSatz
                           ? Zahl(n.m_sGesamtMkg) <= 0 || Zahl(n.m_sVdakMkg) <= 0 || Zahl(n.m_sRvoMkg) <= 0
                           : Zahl(n.m_sGesamt) <= 0 || Zahl(n.m_sVdak) <= 0 || Zahl(n.m_sRvo) <= 0;
            }));
        }
    if (iNormen == 0)
        return dokument.Satz("Die Praxis hat keine Normen; mit --alle-leistungen stehen die Leistungen da.");
    dokument.Satz(px.m_bQuartalsuebergreifend
                      ? "Die Norm wechselt im Zeitraum: Für alle Hits gilt die neueste."
                      : "Normen gibt es ab dem " + Db2Date(sErste).Utf8() + "; frühere Hits haben keine.");
    if (iUnbrauchbar != 0)
        dokument.Satz(std::to_string(iUnbrauchbar) + " von " + std::to_string(iNormen) +
                      " Normzeilen haben eine Norm, die leer, keine Zahl, 0 oder negativ ist: Mit 0 und ohne "
                      "Zahl gibt es keine Abweichung, mit einer negativen keine sinnvolle.");
}

} // namespace

void SchreibeHundert(CDokument & dokument, const CLSSum & sum, const SHundertauftrag & auftrag,
                     const SHundertwahl & wahl) {
    const CPx100F & px = sum.m_100F;
    SchreibeSpalten(dokument, px);
    for (std::size_t i = 0; i < SPALTEN_100F; ++i)
        if (Gezeigt(px, i, wahl)) SchreibeSpalte(dokument, px.m_aSpalten[i], SPALTENNAMEN[i], wahl);
    SchreibeVerhaeltnisse(dokument, px, wahl);
    SchreibeNormnoten(dokument, px, auftrag.bZweiterSatz);
    dokument.Satz(std::string(wahl.bAlleZeilen ? "" : "Gezeigt sind Leistungen mit Norm. ") +
                  "Der Anteil steht in jeder Spalte gegen alle Leistungen der Spalte Gesamt.");
    if (!auftrag.bMitGruppe9) dokument.Satz("Ohne Kassen der Gruppe 9.");
    if (auftrag.bFesteFallzahl && auftrag.iFallzahl == 0)
        dokument.Satz("Bei 0 Fällen gibt es keine Werte je 100 Fälle und keine Abweichung.");
    CGrenzen grenzen;
    for (const CKasArt100F & spalte : px.m_aSpalten) {
        grenzen.Nimm(spalte.m_Gesamt, spalte.m_Hauptleistung, spalte.m_Nebenleistung);
        grenzen.Nimm(spalte.m_vLst);
    }
    grenzen.Schreibe(dokument);
}

// ---- insurers

namespace {

// The selections of insurers that the program knows. The letters are the kinds (KASSENART) of the insurers.
constexpr KAS_GRP_SEL SELEKTIONEN[] = {
    {"Prim\xE4rkassen", "", STATKASGRP_1, "", "", ""}, {"Ersatzkassen", "", STATKASGRP_2, "", "", ""},
    {"AOK", "", STATKASGRP_KEINE, "a", "", ""},        {"BKK", "", STATKASGRP_KEINE, "b", "", ""},
    {"IKK", "", STATKASGRP_KEINE, "i", "", ""},        {"Fremdkassen", "", STATKASGRP_KEINE, "", "", "1"},
    {"Sonstige", "", STATKASGRP_KEINE, "s", "", ""},
};

const SAusgabespalte KASSENSPALTEN[] = {
    {"Praxis", EZelle::Text, BREITE_NAME},
    {"Kasse", EZelle::Text, BREITE_NAME},
    {"Art", EZelle::Text, BREITE_NAME},
    {"Gruppe", EZelle::Text, BREITE_NAME},
    {"fremd", EZelle::Text, BREITE_NAME},
    {"Fälle", EZelle::Zahl, BREITE_ZAHL},
    {"Anzahl", EZelle::Zahl, BREITE_ZAHL},
    {"Betrag", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"je Fall", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"über Kasse", EZelle::Zahl, BREITE_ZAHL, "EUR"},
    {"Anteil", EZelle::Zahl, BREITE_ZAHL, "%"},
    {"Anteil Praxis", EZelle::Zahl, BREITE_ZAHL, "%"},
};

std::vector<CString> Kassenzeile(const CLSKasLstGrp & kas, bool bEine) {
    const CString sGruppe =
        kas.KASSENGRP == STATKASGRP_KEINE ? CString() : CString(static_cast<char>(kas.KASSENGRP));
    CDBetrag jeFall(kas.m_Gesamt.BETRAG);
    if (kas.m_iAnzFaelle != 0) jeFall /= kas.m_iAnzFaelle;
    return {bEine ? kas.PRAXISNR : CString(),
            kas.KASKUERZEL,
            bEine ? kas.KASSENART : CString(),
            bEine ? sGruppe : CString(),
            CString(bEine && kas.FREMDKASSE ? "ja" : ""),
            itoc(kas.m_iAnzFaelle),
            Hundertstel(kas.m_Gesamt.ANZAHL),
            BetragZelle(kas.m_Gesamt.BETRAG),
            kas.m_iAnzFaelle == 0 ? CString() : BetragZelle(jeFall),
            BetragZelle(kas.m_KasseGes.BETRAG),
            Hundertstel(kas.m_KasseGes.ANTEILKAS),
            Hundertstel(kas.m_KasseGes.ANTEILPRAXIS)};
}

} // namespace

void SchreibeKassen(CDokument & dokument, CLSSum & sum, const CString & sPraxis, const SKassenwahl & wahl) {
    CAusgabe & kassen = dokument.Tabelle("Kassen", KASSENSPALTEN);
    for (const CLSKasLstGrp & kas : sum.m_vKas)
        if (wahl.sKuerzel.IsEmpty() || kas.KASKUERZEL == wahl.sKuerzel) kassen.Zeile(Kassenzeile(kas, true));
    CLSKasLstGrp gesamt(sum.m_KasSum);
    gesamt.KASKUERZEL = wahl.sKuerzel.IsEmpty() ? CString("Gesamt") : CString("alle Kassen");
    kassen.Summe(Kassenzeile(gesamt, false));
    kassen.Ende();

    CAusgabe & selektionen = dokument.Tabelle("Auswahlen von Kassen", KASSENSPALTEN);
    std::vector<CFallJeQuartal> vFaelle;
    for (const KAS_GRP_SEL & selektion : SELEKTIONEN) {
        sum.AnalyseForKasSel(sPraxis, sum.m_vKas, sum.m_KasSel, vFaelle, selektion, wahl.sKuerzel,
                             wahl.bFremdGrp1, wahl.bFremdGrp2);
        sum.m_KasSel.KASKUERZEL = CString(std::string_view(selektion.m_szName));
        selektionen.Zeile(Kassenzeile(sum.m_KasSel, false));
    }
    selektionen.Ende();
    if (!wahl.sKuerzel.IsEmpty() && std::ranges::none_of(sum.m_vKas, [&](const CLSKasLstGrp & kas) {
            return kas.KASKUERZEL == wahl.sKuerzel;
        }))
        dokument.Satz("Kein Hit ist von der Kasse " + wahl.sKuerzel.Utf8() + '.');
    if (wahl.iAusgelassen != 0)
        dokument.Satz("Ohne Kasse oder nicht in der Leistungsstatistik: " +
                      std::to_string(wahl.iAusgelassen) + (wahl.iAusgelassen == 1 ? " Hit." : " Hits."));
    dokument.Satz(
        "Eine Kasse kann in mehreren Auswahlen stehen oder in keiner; sie ergeben zusammen nicht die Summe. "
        "Der Anteil ist das über die Kasse Abgerechnete am Ganzen der Kasse, der Anteil Praxis am Ganzen "
        "aller Kassen: Was nicht über Kassen abgerechnet ist, fehlt beiden zu 100 %.");
    CGrenzen grenzen;
    grenzen.Nimm(sum.m_KasSum.m_Gesamt, sum.m_KasSum.m_KasseGes);
    grenzen.Nimm(sum.m_KasSum.m_vLstGrp);
    for (const CLSKasLstGrp & kas : sum.m_vKas) {
        grenzen.Nimm(kas.m_Gesamt, kas.m_KasseGes);
        grenzen.Nimm(kas.m_vLstGrp);
    }
    grenzen.Schreibe(dokument);
}

} // namespace orvostat
