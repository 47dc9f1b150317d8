#include "MusterBehandlungen.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <string_view>

namespace orvostat {

namespace {

// A visit that is to come.
struct STermin {
    int iTag; // working day
    const SVorlage * pVorlage;
    int iPlan = -1; // place in vPlaene, -1 without plan
};

constexpr const char * ERFASSER[] = {"ZF1", "ZF2", "ZA1", "ZA3"};
constexpr const char * FLAECHEN[] = {"o", "mo", "mod", "modv"};
constexpr int STUFEN_PROZENT[] = {45, 30, 18, 7}; // of the alternatives of a service, together 100

// Factors of private services in ten-thousandths; 0 leaves the schedule's own.
struct SFaktor {
    int iFaktor;
    int iGewicht;
};
constexpr SFaktor FAKTOREN[] = {{23000, 64}, {35000, 9}, {10000, 7}, {18000, 5}, {28000, 5}, {0, 10}};

bool IstRoentgen(char cGoArt, const CString & sLst) {
    return cGoArt == 'p'
               ? sLst == "5000" || sLst == "5004"
               : IstKassenArt(cGoArt) && (sLst.Left(3) == "ä92" || sLst.Left(3) == "ä93") && sLst != "ä928";
}

bool IstUntersuchung(const CString & sDruckbild) {
    return sDruckbild == "01" || sDruckbild == "01k" || sDruckbild == "001" || sDruckbild == "0010";
}

class CBehandlung {
public:
    CBehandlung(SMusterAkte & akte, const CMusterKatalog & katalog, const CMusterKalender & kalender,
                CZufall & zufall)
        : m_akte(akte), m_patient(akte.patient), m_katalog(katalog), m_kalender(kalender), m_zufall(zufall) {}

    void Plane();
    void Behandle();

private:
    // planning
    void PlaneAlltag();
    void PlaneFolgen();
    void PlaneZahnersatz(int iTag);
    void PlanePar(int iTag);
    void PlaneKfo();
    int PlaneFolge(std::string_view sListe, int iTag, int iPlan = -1);
    int NeuerPlan(const char * pArt, const char * pProzent, int iTag);
    [[nodiscard]] std::span<const SVorlage> Alltag() const;
    [[nodiscard]] bool JeJahr(int iPromille);

    // visits
    void Behandle(const STermin & termin);
    void Leistung(const STermin & termin, const SPosten & posten);
    void Notiz();
    void Fremdlabor(const STermin & termin);
    CTBeh_Fields & NeueZeile();
    void SetzeMenge(CTBeh_Fields & beh, EBezug eBezug);
    void SetzeFaktor(CTBeh_Fields & beh, const SGebuehr & gebuehr);
    void SetzeBetrag(CTBeh_Fields & beh, const SGebuehr & gebuehr);
    void SetzeBesonderes(CTBeh_Fields & beh, const SPosten & posten, const SGebuehr & gebuehr);
    void SetzeBegleitung(CTBeh_Fields & beh);
    void Befunde(CTBeh_Fields & beh);
    void Roentgenbuch();
    void Berechne(CTBeh_Fields & beh, const STermin & termin);
    SLaborarbeit & Labor(const STermin & termin);
    [[nodiscard]] char Rechnungsart(const STermin & termin, char cGoArt) const;
    SMusterBill & Rechnung(const STermin & termin, char cArt);
    [[nodiscard]] CString Zaehne(EBezug eBezug, int iAnzahl);

    SMusterAkte & m_akte;
    SMusterPatient & m_patient;
    const CMusterKatalog & m_katalog;
    const CMusterKalender & m_kalender;
    CZufall & m_zufall;

    std::vector<STermin> m_vTermine;
    char m_cKfoBill = 'c';
    // Of the current visit:
    CString m_sDatum;
    char m_cSitzung = 'a';
    int m_iLfd = 0;
    int m_iMinute = 0;
    int m_iZahn = 0;
    int m_iStufe = 0; // which alternative
    bool m_bMehrkosten = false;
    bool m_bGetrennt = false;   // private services of a statutory patient go on a bill of their own
    bool m_bSonderbill = false; // a bill of a seldom kind
    bool m_bEigenlabor = false;
    CString m_sMischPw; // of the visit's plan; empty without
    CString m_sBefund;
    CString m_sErfasser;
    const SMusterBehandler * m_pBehandler = nullptr;
};

// ---- planning

std::span<const SVorlage> CBehandlung::Alltag() const {
    if (m_patient.pKasse->eTraeger == EKostentraeger::Sonstiger)
        return Besuche({&m_patient.pKasse->cGoArt, 1}); // a payer with a schedule of its own
    if (!m_patient.Gesetzlich()) return Besuche("privat");
    return Besuche(m_patient.bPflege ? "heim" : m_patient.Kind() ? "kind" : "kasse");
}

// Whether something happens that happens to so many patients of a thousand in a year.
bool CBehandlung::JeJahr(int iPromille) {
    return m_zufall.Promille(std::min(900, iPromille * m_kalender.Jahre()));
}

void CBehandlung::PlaneAlltag() {
    if (m_zufall.Prozent(5)) return; // a patient of the card index only
    const auto vVorlagen = Alltag();
    const int iJeJahr = m_patient.bPflege      ? 6
                        : m_zufall.Prozent(25) ? m_zufall.Zwischen(3, 5)
                                               : m_zufall.Zwischen(7, 11);
    for (int i = iJeJahr * m_kalender.Jahre(); i > 0; --i)
        m_vTermine.push_back({m_zufall.Unter(m_kalender.Anzahl()), &m_zufall.Gewichtet(vVorlagen)});
}

int CBehandlung::NeuerPlan(const char * pArt, const char * pProzent, int iTag) {
    CTPlan_Fields plan;
    plan.m_PATNR = m_patient.pat.m_PATNR;
    plan.m_PLANNR = Stellen(static_cast<int>(m_akte.vPlaene.size()) + 1, 3);
    plan.m_PLANART = CString(pArt);
    plan.m_PLANNUM = CString(pProzent);
    plan.m_PLANDATUM = m_kalender.Tag(iTag);
    plan.m_PLANSTATUS = "4";
    plan.m_PLANSTATUS2 = "4";
    m_akte.vPlaene.push_back(plan);
    return static_cast<int>(m_akte.vPlaene.size()) - 1;
}

// Appends the visits that lie inside of the sample; the day of the last one.
int CBehandlung::PlaneFolge(std::string_view sListe, int iTag, int iPlan) {
    for (const SVorlage & vorlage : Besuche(sListe)) {
        iTag += m_zufall.Zwischen(vorlage.iTageVon, vorlage.iTageBis);
        if (iTag >= m_kalender.Anzahl()) break;
        m_vTermine.push_back({iTag, &vorlage, iPlan});
    }
    return iTag;
}

void CBehandlung::PlaneZahnersatz(int iTag) {
    static constexpr const char * ANTEILE[] = {"60", "60", "65", "70", "75", "100"};
    static constexpr const char * UNTERARTEN[] = {"", "", "", "1", "3", "4", "4", "5"};
    const bool bKasse = m_patient.Gesetzlich();
    const char * const pAnteil = bKasse ? m_zufall.Eines(ANTEILE) : "0";
    const int iPlan = NeuerPlan(m_zufall.Prozent(90) ? "3" : "2", pAnteil, iTag);
    CTPlan_Fields & plan = m_akte.vPlaene.back();
    plan.m_PLANSUBART = CString(m_zufall.Eines(UNTERARTEN));
    if (!bKasse) {
        plan.m_PLANSTATUS = CString(static_cast<char>('1' + m_zufall.Unter(3)));
    } else if (m_zufall.Prozent(12)) { // not yet approved
        plan.m_PLANSTATUS = "1";
        plan.m_PLANSTATUS2 = "2";
    } else if (m_zufall.Prozent(60)) {
        plan.m_PLANPW = 'e' + itoc(m_zufall.Zwischen(10900, 11300));
    }
    PlaneFolge(bKasse ? "ze_kasse" : "ze_privat", iTag, iPlan);
}

void CBehandlung::PlanePar(int iTag) {
    const int iPlan = NeuerPlan(m_zufall.Prozent(85) ? "4" : "p", "100", iTag);
    if (m_zufall.Prozent(6)) m_akte.vPlaene.back().m_PAR22A = "1";
    if (!m_patient.Gesetzlich()) {
        PlaneFolge("par_privat", iTag, iPlan);
        return;
    }
    int iEnde = PlaneFolge("par", iTag, iPlan);
    if (m_zufall.Prozent(25)) iEnde = PlaneFolge("par_chirurgie", iEnde, iPlan);
    PlaneFolge("upt", iEnde, iPlan);
}

void CBehandlung::PlaneKfo() {
    const int iBeginn = m_zufall.Unter(m_kalender.Anzahl());
    int iPlan = -1;
    if (m_zufall.Prozent(95)) {
        const char * const pAnteil = m_zufall.Prozent(75) ? "80" : "90";
        iPlan = NeuerPlan(m_zufall.Prozent(70) ? "8" : "9", pAnteil, iBeginn);
    }
    m_cKfoBill = m_zufall.Prozent(70) ? 'c' : 'p';
    if (!m_patient.Gesetzlich()) {
        PlaneFolge("kfo_privat", iBeginn, iPlan);
        return;
    }
    int iTag = PlaneFolge("kfo", iBeginn, iPlan);
    while ((iTag += m_zufall.Zwischen(25, 45)) < m_kalender.Anzahl())
        m_vTermine.push_back({iTag, &Besuche("kfo_kontrolle").front(), iPlan});
}

void CBehandlung::PlaneFolgen() {
    const auto Beginn = [this] { return m_zufall.Unter(m_kalender.Anzahl()); };
    if (m_patient.bPflege || m_patient.pKasse->eTraeger == EKostentraeger::Sonstiger) return;
    if (m_patient.Kind()) {
        if (m_patient.iAlter > 8 && m_zufall.Prozent(22)) PlaneKfo();
        return;
    }
    if (m_patient.Gesetzlich() && JeJahr(45)) PlaneFolge("endo", Beginn());
    if (m_patient.iAlter > 30 && JeJahr(90)) PlaneZahnersatz(Beginn());
    if (m_patient.iAlter > 30 && JeJahr(45)) PlanePar(Beginn());
    if (m_patient.Gesetzlich() && JeJahr(12)) PlaneFolge("kbr", Beginn());
    if (m_patient.iAlter > 40 && JeJahr(10)) PlaneFolge("implantat", Beginn());
}

void CBehandlung::Plane() {
    PlaneAlltag();
    PlaneFolgen();
    std::ranges::stable_sort(m_vTermine, {}, &STermin::iTag);
    for (const STermin & termin : m_vTermine)
        m_akte.viTage.push_back(termin.iTag);
}

// ---- visits

void CBehandlung::Behandle() {
    for (const STermin & termin : m_vTermine)
        Behandle(termin);
    if (!m_sDatum.IsEmpty()) m_patient.pat.m_LASTBEHDATUM = m_sDatum;
}

void CBehandlung::Behandle(const STermin & termin) {
    const CString & sDatum = m_kalender.Tag(termin.iTag);
    m_cSitzung = sDatum == m_sDatum ? static_cast<char>(m_cSitzung + 1) : 'a';
    m_sDatum = sDatum;
    m_iLfd = 0;
    m_iMinute = 8 * 60 + 5 * m_zufall.Unter(110);
    const int iQuadrant = m_zufall.Zwischen(1, 4);
    m_iZahn = iQuadrant * 10 + m_zufall.Zwischen(1, 8) + (m_patient.iAlter < 10 ? 40 : 0);
    if (m_patient.iAlter < 10 && m_iZahn % 10 > 5) m_iZahn -= 3;
    m_iStufe = 0;
    for (int i = m_zufall.Unter(100); i >= STUFEN_PROZENT[m_iStufe]; ++m_iStufe)
        i -= STUFEN_PROZENT[m_iStufe];
    m_bMehrkosten = m_zufall.Prozent(22);
    m_bGetrennt = m_zufall.Prozent(80);
    m_bSonderbill = m_zufall.Promille(8);
    m_bEigenlabor = m_zufall.Prozent(55);
    m_sMischPw =
        termin.iPlan >= 0 && m_zufall.Prozent(12) ? 'e' + itoc(m_zufall.Zwischen(10400, 11400)) : CString();
    m_sBefund.Empty();
    m_sErfasser = CString(m_zufall.Eines(ERFASSER));
    const bool bKfo = termin.pVorlage->cAkte == 'c';
    m_pBehandler = bKfo                   ? &MusterBehandler()[4]
                   : m_zufall.Prozent(88) ? m_patient.pBehandler
                                          : &m_zufall.Gewichtet(MusterBehandler());

    for (const SPosten & posten : termin.pVorlage->vPosten)
        if (m_zufall.Prozent(posten.iProzent)) Leistung(termin, posten);
    if (termin.pVorlage->bEingliederung && !m_bEigenlabor) Fremdlabor(termin);
    if (m_zufall.Prozent(termin.pVorlage->iTextProzent)) Notiz();
}

CTBeh_Fields & CBehandlung::NeueZeile() {
    CTBeh_Fields & beh = m_akte.vBeh.emplace_back();
    beh.m_PATNR = m_patient.pat.m_PATNR;
    beh.m_DATUM = m_sDatum;
    beh.m_SITZUNG = CString(m_cSitzung);
    beh.m_LFDBEHEINTRAG = Stellen(++m_iLfd, 4);
    beh.m_BEHANDLERNR = CString(m_pBehandler->pNr);
    beh.m_ERFASSER = m_sErfasser;
    return beh;
}

// The part of a list with "|" that the visit has drawn; the last one where the list is shorter.
std::string_view Teil(std::string_view s, int i) {
    for (std::size_t iEnde; i > 0 && (iEnde = s.find('|')) != std::string_view::npos; --i)
        s.remove_prefix(iEnde + 1);
    return s.substr(0, s.find('|'));
}

void CBehandlung::Leistung(const STermin & termin, const SPosten & posten) {
    if (posten.eWann == EWann::Mehrkosten && !m_bMehrkosten) return;
    if (posten.eWann == EWann::Labor && !m_bEigenlabor) return;
    const SGebuehr & gebuehr = m_katalog.Finde(posten.cGoArt, Teil(posten.sLst, m_iStufe));
    CTBeh_Fields & beh = NeueZeile();
    beh.m_GOART = CString(posten.cGoArt);
    beh.m_ABRART = beh.m_GOART;
    beh.m_LSTNR = gebuehr.zeile.m_LSTNR;
    beh.m_LSTIN = gebuehr.zeile.m_LSTKUERZEL;
    SetzeMenge(beh, posten.eBezug);
    SetzeFaktor(beh, gebuehr);
    SetzeBetrag(beh, gebuehr);
    SetzeBesonderes(beh, posten, gebuehr);
    SetzeBegleitung(beh);
    if (IstUntersuchung(gebuehr.zeile.m_DRUCKBILD)) Befunde(beh);
    if (IstRoentgen(posten.cGoArt, beh.m_LSTNR)) Roentgenbuch();
    if (termin.pVorlage->bEingliederung && IstLaborArt(posten.cGoArt)) {
        SLaborarbeit & labor = Labor(termin);
        labor.vPosten.push_back(m_akte.vBeh.size() - 1);
        labor.iCent += Zahl(beh.m_BETRAG.Mid(1));
        beh.m_LFDLBLOCK = labor.sLfdBlock;
    }
    Berechne(beh, termin);
}

CString CBehandlung::Zaehne(EBezug eBezug, int iAnzahl) {
    if (eBezug == EBezug::Mund || eBezug == EBezug::Gebiss) return {};
    if (eBezug == EBezug::Anderer) return itoc(m_iZahn / 10 * 10 + (m_iZahn % 10 > 1 ? m_iZahn % 10 - 1 : 2));
    CString sZaehne = itoc(m_iZahn);
    if (eBezug == EBezug::Einige)
        for (int i = 1; i < std::min(iAnzahl, 5); ++i)
            sZaehne += ' ' + itoc(m_iZahn / 10 * 10 + (m_iZahn % 10 + i - 1) % 8 + 1);
    return sZaehne;
}

// A unit letter and hundredths behind it: "z" counts teeth.
void CBehandlung::SetzeMenge(CTBeh_Fields & beh, EBezug eBezug) {
    int iAnzahl = 1;
    if (eBezug == EBezug::Kanal)
        iAnzahl = m_iZahn % 10 > 5 ? m_zufall.Zwischen(2, 4) : m_zufall.Zwischen(1, 2);
    if (eBezug == EBezug::Einige) iAnzahl = m_zufall.Zwischen(2, 5);
    if (eBezug == EBezug::Gebiss) iAnzahl = m_zufall.Zwischen(8, 28);
    beh.m_ANZAHL = (eBezug == EBezug::Gebiss ? 'z' : 'x') + itoc(iAnzahl * 100);
    beh.m_TEETH = Zaehne(eBezug, iAnzahl);
}

void CBehandlung::SetzeFaktor(CTBeh_Fields & beh, const SGebuehr & gebuehr) {
    const char cGoArt = beh.m_GOART.Erstes();
    if (cGoArt == 'q' && gebuehr.iPunkte > 0) {
        const int iFaktor = m_zufall.Gewichtet(FAKTOREN).iFaktor;
        if (iFaktor > 0) beh.m_FAKTOR = itoc(iFaktor);
        if (iFaktor > 23000 && m_zufall.Prozent(70)) {
            beh.m_TEXTART = "b";
            beh.m_TEXT = m_zufall.Eines(Namen("begruendung"));
        }
    } else if (IstPrivatArt(cGoArt)) {
        beh.m_FAKTOR = gebuehr.zeile.m_STDFAKTOR;
    }
    if (IstKassenArt(cGoArt) && gebuehr.iPunkte > 0) beh.m_FAKTOR = m_sMischPw;
}

// The fee as the practice's invoices had it: points of the private schedule at 5.62421 cents (GOZ section 5 (1)), or
// the price times the factor; rounded once, before the quantity. Insurer services by points carry no amount.
std::int64_t Honorar(const SGebuehr & gebuehr, std::int64_t iFaktor) {
    if (gebuehr.iPunkte > 0) return (gebuehr.iPunkte * iFaktor * 562421 + 500'000'000) / 1'000'000'000;
    const std::int64_t iProdukt = gebuehr.iCent * iFaktor;
    return gebuehr.zeile.m_GOART == "p" && gebuehr.zeile.m_GOSUBART == "1" ? iProdukt / 10000
                                                                           : (iProdukt + 5000) / 10000;
}

void CBehandlung::SetzeBetrag(CTBeh_Fields & beh, const SGebuehr & gebuehr) {
    const char cGoArt = beh.m_GOART.Erstes();
    const int iAnzahl = Zahl(beh.m_ANZAHL.Mid(1));
    if (IstPunktArt(cGoArt) && gebuehr.iCent == 0) return;
    std::int64_t iCent = gebuehr.iCent;
    if (IstPrivatArt(cGoArt))
        iCent = Honorar(gebuehr, Zahl(beh.m_FAKTOR.IsEmpty() ? gebuehr.zeile.m_STDFAKTOR : beh.m_FAKTOR));
    iCent = iCent * iAnzahl / 100;
    if (IstPrivatArt(cGoArt) && m_zufall.Prozent(1)) { // an agreed amount
        beh.m_ABRMERKMAL = "=";
        iCent = (iCent + 50) / 100 * 100;
    }
    if (IstPunktArt(cGoArt)) beh.m_ABRMERKMAL = "=";
    if (IstLaborArt(cGoArt)) beh.m_USTKEY = "7";
    beh.m_BETRAG = 'e' + itoc(iCent);
}

void CBehandlung::SetzeBesonderes(CTBeh_Fields & beh, const SPosten & posten, const SGebuehr & gebuehr) {
    const char cGoArt = posten.cGoArt;
    const bool bFuellung = beh.m_LSTNR.Left(2) == "13" && cGoArt == 'k';
    if (bFuellung) beh.m_LAGE = CString(FLAECHEN[m_iStufe]);
    if (bFuellung && m_bMehrkosten) beh.m_DTAGRUND = CString(m_zufall.Prozent(70) ? 'f' : 'i');
    if (bFuellung && m_zufall.Prozent(8))
        beh.m_CHARGE = CString(std::string_view("LOT" + std::to_string(m_zufall.Unter(9000) + 1000)));
    if (gebuehr.zeile.m_DRUCKBILD.GetLength() == 4 && cGoArt == 'g') { // travel money of a tour
        beh.m_TEXTART = "t";
        beh.m_TEXT = "PAT/"_t + itoc(m_zufall.Zwischen(1, 6)) + " Pflegeheim"_t;
        beh.m_ENTFERNUNG = itoc(m_zufall.Zwischen(1, 9));
    }
    if (IstKassenArt(cGoArt) && m_zufall.Promille(2))
        beh.m_ENTFERNUNG = CString("K") + itoc(m_zufall.Prozent(50) ? 50 : 75);
    if (IstPrivatArt(cGoArt)) {
        if (m_zufall.Promille(6)) beh.m_ABRMERKMAL = "<";
        if (m_zufall.Prozent(3)) {
            beh.m_ICDCODE = m_zufall.Eines(Namen("diagnose"));
            beh.m_ICDNOTATIONSKZ = CString("stnv"[m_zufall.Unter(4)]);
        }
    } else if (m_zufall.Promille(2)) {
        beh.m_ABRMERKMAL = CString(m_zufall.Prozent(50) ? 'o' : 'n');
    }
}

void CBehandlung::SetzeBegleitung(CTBeh_Fields & beh) {
    m_iMinute += m_zufall.Zwischen(1, 9);
    beh.m_UHRZEIT = RightFix(itoc(m_iMinute / 60 * 100 + m_iMinute % 60), 4, '0');
    beh.m_ABRJJME = m_sDatum.Left(6);
    if (beh.m_ICDCODE.IsEmpty() && m_zufall.Prozent(10)) {
        beh.m_ICDCODE = m_zufall.Eines(Namen("diagnose"));
        beh.m_ICDNOTATIONSKZ = "g";
    }
    if (m_zufall.Promille(5)) beh.m_BEHINFO = "Notiz";
}

void CBehandlung::Notiz() {
    CTBeh_Fields & beh = NeueZeile();
    beh.m_TEXTART = CString(m_zufall.Prozent(85) ? 't' : 'c'); // "c" is for the practice alone
    beh.m_TEXT = m_zufall.Eines(Namen("notiz"));
    beh.m_PATBILL = " ";
    SetzeBegleitung(beh);
}

void CBehandlung::Befunde(CTBeh_Fields & beh) {
    if (m_sBefund.IsEmpty()) {
        static constexpr char BEFUND[] = "           cffxkbe   ";
        CTABefund_Fields & befund = m_akte.vBefunde.emplace_back();
        std::string sZaehne(32, ' ');
        std::string sStein(32, '0');
        for (char & c : sZaehne)
            c = BEFUND[m_zufall.Unter(sizeof BEFUND - 1)];
        if (m_zufall.Prozent(60))
            for (int i = 0; i < 6; ++i)
                sStein[static_cast<std::size_t>(m_zufall.Unter(32))] = '1';
        m_sBefund = Stellen(static_cast<int>(m_akte.vBefunde.size()), 4);
        befund = {beh.m_PATNR, m_sBefund, CString(std::string_view(sZaehne)),
                  CString(std::string_view(sStein)),
                  itoc(m_zufall.Prozent(90) ? 0 : m_zufall.Zwischen(1, 3))};
    }
    beh.m_LFDBEFENTRY = m_sBefund;
}

void CBehandlung::Roentgenbuch() {
    static constexpr const char * INDIKATIONEN[] = {"Kariesdiagnostik", "Apikaler Status", "Übersicht",
                                                    "Prä-OP"};
    CTRoeBefund_Fields & roe = m_akte.vRoe.emplace_back();
    const CString sLetztes = m_akte.vRoe.size() > 1
                                 ? m_akte.viTage.empty() ? CString() : m_kalender.Tag(m_akte.viTage.front())
                                 : CString();
    roe.m_PATNR = m_patient.pat.m_PATNR;
    roe.m_ROELFDNR = Stellen(static_cast<int>(m_akte.vRoe.size()), 4);
    roe.m_PRAXISID = CString(m_pBehandler->pPraxisId);
    roe.m_ROEGRAV = m_zufall.Promille(5) ? CString("ja") : CString("nein");
    roe.m_ROEANZAHL = itoc(m_zufall.Zwischen(1, 2));
    roe.m_ROEGERAET = CString(m_zufall.Prozent(70) ? "Klein-1" : "Pano-2");
    roe.m_ROEXRAYMS = itoc(m_zufall.Zwischen(80, 320));
    roe.m_ROEXRAYCURRENT = "7";
    roe.m_ROEXRAYVOLTAGE = "65";
    roe.m_ROEBELICHTUNG = "0.12";
    roe.m_ROEINDIKATION = AusUtf8(m_zufall.Eines(INDIKATIONEN));
    if (m_zufall.Prozent(5)) roe.m_ROEBEMERKUNG = "Aufnahme wiederholt"_t;
    roe.m_ROELASTDATUM = sLetztes;
    if (!sLetztes.IsEmpty()) roe.m_ROELASTREGIO = itoc(m_iZahn);
}

// The block that the laboratory work of this visit goes into.
SLaborarbeit & CBehandlung::Labor(const STermin & termin) {
    const CString sPlan = m_akte.vPlaene[static_cast<std::size_t>(termin.iPlan)].m_PLANNR;
    if (m_akte.vLabor.empty() || m_akte.vLabor.back().sPlanNr != sPlan) {
        SLaborarbeit & labor = m_akte.vLabor.emplace_back();
        labor.sPlanNr = sPlan;
        labor.sLfdBlock = " 2";
        labor.sDatum = m_sDatum;
        labor.sBehandlerNr = CString(m_pBehandler->pNr);
        labor.sPraxisNr = CString(m_patient.Gesetzlich() ? m_pBehandler->pMdKasse : m_pBehandler->pMdPrivat);
        labor.bEigen = m_bEigenlabor;
    }
    return m_akte.vLabor.back();
}

// One entry with the sum of the commercial laboratory's invoice.
void CBehandlung::Fremdlabor(const STermin & termin) {
    CTBeh_Fields & beh = NeueZeile();
    SLaborarbeit & labor = Labor(termin);
    labor.iCent = m_zufall.Zwischen(9000, 95000);
    labor.vPosten.push_back(m_akte.vBeh.size() - 1);
    beh.m_GOART = beh.m_ABRART = "8";
    beh.m_LSTNR = beh.m_LSTIN = "8000";
    beh.m_ANZAHL = "x100";
    beh.m_BETRAG = 'e' + itoc(labor.iCent);
    beh.m_USTKEY = "7";
    beh.m_LFDLBLOCK = labor.sLfdBlock;
    SetzeBegleitung(beh);
    Berechne(beh, termin);
}

// ---- bills

// The stored kind of the bill that a service of this visit goes on.
char CBehandlung::Rechnungsart(const STermin & termin, char cGoArt) const {
    const char cAkte = termin.pVorlage->cAkte;
    if (m_patient.pKasse->eTraeger == EKostentraeger::Sonstiger) return cAkte;
    if (!m_patient.Gesetzlich()) return static_cast<char>(cAkte - 'a' + '1');
    if (cAkte == 'c') return m_cKfoBill;
    if (cAkte != 'a') return cAkte;
    if (IstPrivatArt(cGoArt) && m_bGetrennt) return '1';
    if (m_bSonderbill) return m_patient.Kind() ? '6' : m_bGetrennt ? 's' : 'n';
    return 'a';
}

SMusterBill & CBehandlung::Rechnung(const STermin & termin, char cArt) {
    const bool bPlan = termin.iPlan >= 0 && cArt != 'a' && cArt != '1';
    const CString sPlanNr =
        bPlan ? m_akte.vPlaene[static_cast<std::size_t>(termin.iPlan)].m_PLANNR : CString();
    const bool bJeQuartal = !bPlan || cArt == m_cKfoBill;
    const CString sGruppe = bJeQuartal ? DbDate2Quartal(m_sDatum) + sPlanNr : sPlanNr;
    for (auto it = m_akte.vBills.rbegin(); it != m_akte.vBills.rend(); ++it)
        if (it->zeile.m_ABRART.Erstes() == cArt && it->sGruppe == sGruppe) return *it;
    const bool bKasse = cArt >= 'a' && cArt <= 'z';
    SMusterBill & bill = m_akte.vBills.emplace_back();
    bill.sGruppe = sGruppe;
    bill.zeile.m_PATNR = m_patient.pat.m_PATNR;
    bill.zeile.m_PATBILL = Stellen(static_cast<int>(m_akte.vBills.size()), 4);
    bill.zeile.m_PRAXISNR = CString(bKasse ? m_pBehandler->pMdKasse : m_pBehandler->pMdPrivat);
    bill.zeile.m_ABRART = CString(cArt);
    bill.zeile.m_KENNUNG1 = DbDate2Quartal(m_sDatum);
    bill.zeile.m_KENNUNG2 = bKasse ? CString() : CString("P") + itoc(m_zufall.Unter(1000));
    bill.zeile.m_PLANNR = sPlanNr;
    return bill;
}

void CBehandlung::Berechne(CTBeh_Fields & beh, const STermin & termin) {
    const char cGoArt = beh.m_GOART.Erstes();
    SMusterBill & bill = Rechnung(termin, Rechnungsart(termin, cGoArt));
    const std::int64_t iCent = Zahl64(beh.m_BETRAG.Mid(1));
    beh.m_PATBILL = bill.zeile.m_PATBILL;
    bill.sLetzterTag = beh.m_DATUM;
    (IstLaborArt(cGoArt) ? bill.iLabor : bill.iHonorar) += iCent;
    // A private service that stays on the insurer's bill, now and then to be paid by the insurer.
    if (IstPrivatArt(cGoArt) && bill.zeile.m_ABRART == "a" && m_zufall.Prozent(25)) beh.m_BEHKZ = "0";
    if (beh.m_LSTNR == "kkgeb" || beh.m_LSTNR == "kkent")
        bill.zeile.m_KKFAKT = CString("KK") + bill.zeile.m_PATBILL;
}

} // namespace

void ErzeugeBehandlungen(SMusterAkte & akte, const CMusterKatalog & katalog, const CMusterKalender & kalender,
                         CZufall & zufall) {
    CBehandlung behandlung(akte, katalog, kalender, zufall);
    behandlung.Plane();
    behandlung.Behandle();
}

} // namespace orvostat
