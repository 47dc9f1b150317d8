#include "MusterPatienten.h"

#include "MusterDaten.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <string>

namespace orvostat {

namespace {

// Ages and their shares.
struct SAlter {
    int iVon;
    int iBis;
    int iGewicht;
};
constexpr SAlter ALTER[] = {{2, 5, 4}, {6, 17, 14}, {18, 39, 28}, {40, 66, 37}, {67, 95, 17}};

// A place where patients live, with its share of them.
struct SOrt {
    CString sPlz;
    CString sName;
    int iGewicht;
};
const std::vector<SOrt> & Orte() {
    static const auto s_vOrte = [] {
        std::vector<SOrt> vOrte;
        for (const CMusterDaten::CZeile & zeile : CMusterDaten("orte"))
            vOrte.push_back({AusUtf8(zeile["plz"]), AusUtf8(zeile["name"]), zeile.Zahl("gewicht")});
        return vOrte;
    }();
    return s_vOrte;
}

CString Geburtstag(int iAlter, const CMusterKalender & kalender, CZufall & zufall) {
    const int iJahr = Jahr(kalender.Tag(0)) - iAlter - 1;
    const int iMonat = zufall.Zwischen(1, 12);
    const CString sDatum = Datum(iJahr, iMonat, zufall.Zwischen(1, LastDayI(iMonat, iJahr)));
    return zufall.Promille(3) ? Datum(iJahr, 0, 0) : sDatum; // of some only the year is known
}

void SetzeKontakte(CTAdr_Fields & adr, CZufall & zufall) {
    const auto Nummer = [&zufall](const char * pVorwahl) {
        return CString(std::string_view(pVorwahl + std::to_string(zufall.Zwischen(10000, 9999999))));
    };
    if (zufall.Prozent(80)) adr.m_TELEFON1 = Nummer("0990 ");
    if (zufall.Prozent(60)) adr.m_TELEFON2 = Nummer("0179 ");
    if (zufall.Prozent(10)) adr.m_TELEFON3 = Nummer("0991 ");
    if (zufall.Prozent(45))
        adr.m_EMAIL =
            CString(std::string_view("patient" + std::to_string(zufall.Unter(1000000)) + "@post.example"));
    if (zufall.Prozent(30)) adr.m_TELEFONPRIO = CString(zufall.Prozent(70) ? '2' : '5');
}

CTAdr_Fields ErzeugeAdresse(int iLfd, bool bFrau, CZufall & zufall) {
    CTAdr_Fields adr;
    const SOrt & ort = zufall.Gewichtet(Orte());
    adr.m_ADRNR = Stellen(MUSTER_ERSTE_PATIENTENADRESSE + iLfd, 10);
    adr.m_ADRLFD = " 1";
    adr.m_ADRART = "p";
    if (zufall.Prozent(4)) adr.m_PATTITEL = zufall.Eines(Namen("titel"));
    adr.m_PATVORNAME = bFrau ? zufall.Eines(Namen("frau")) : zufall.Eines(Namen("mann"));
    if (zufall.Prozent(2)) adr.m_PATZUSATZ = zufall.Prozent(50) ? CString("von") : CString("van der"_t);
    adr.m_PATNAME = zufall.Eines(Namen("nachname"));
    if (zufall.Prozent(12)) adr.m_PATNAME += '-' + zufall.Eines(Namen("nachname"));
    const CString sHausnummer = itoc(zufall.Zwischen(1, 120));
    adr.m_PATSTRASSE = zufall.Eines(Namen("strasse")) + ' ' + sHausnummer;
    adr.m_PATPLZ = ort.sPlz;
    adr.m_PATORT = ort.sName;
    adr.m_PATANREDE = bFrau ? CString("Frau") : CString("Herr");
    adr.m_GESCHLECHT = CString(zufall.Promille(4) ? 'd' : bFrau ? 'f' : 'm');
    if (zufall.Prozent(3)) adr.m_FRUEHERENAMEN = zufall.Eines(Namen("nachname"));
    SetzeKontakte(adr, zufall);
    return adr;
}

void SetzeMerkmale(SMusterPatient & patient, const CMusterKalender & kalender, CZufall & zufall) {
    CTPat_Fields & pat = patient.pat;
    pat.m_EINTRDATUM = TagePlus(kalender.Tag(0), -zufall.Zwischen(30, 4000));
    if (zufall.Prozent(10)) pat.m_SELEKTION = CString(static_cast<char>('A' + zufall.Unter(4)));
    if (zufall.Prozent(8)) pat.m_UEBERWARZT = zufall.Eines(Namen("arzt"));
    if (zufall.Prozent(60)) pat.m_HAUSARZT = zufall.Eines(Namen("arzt"));
    if (zufall.Prozent(9)) pat.m_RISIKOANAMNESE = zufall.Eines(Namen("risiko"));
    if (zufall.Prozent(50)) pat.m_BENACHRICHTIGUNG = CString(zufall.Prozent(60) ? 'e' : 's');
    if (zufall.Prozent(1)) pat.m_PATPROZENT = "80";
    pat.m_INDEXMARKERS = itoc(zufall.Prozent(85) ? 0 : 1 << zufall.Unter(12));
    if (!patient.bPflege) return;
    pat.m_PFLEGEGRAD = CString(static_cast<char>('1' + zufall.Unter(5)));
    if (zufall.Prozent(30))
        pat.m_PFLEGEGRADENDE = TagePlus(kalender.Tag(kalender.Anzahl() - 1), zufall.Unter(900));
}

EKostentraeger Kostentraeger(CZufall & zufall) {
    const int i = zufall.Unter(1000);
    return i < 875   ? EKostentraeger::Gesetzlich
           : i < 985 ? EKostentraeger::Privat
                     : EKostentraeger::Sonstiger;
}

// ---- insurance periods

// Proofs of a statutory insurance and their shares.
struct SNachweis {
    const char * pNachweis;
    int iGewicht;
};
constexpr SNachweis NACHWEISE[] = {{"G", 88}, {"g", 5}, {"j", 4}, {"n", 3}};

CTVDesc_Fields Zeitraum(const SMusterPatient & patient, std::size_t iNr, const CString & sAb,
                        const CString & sBis, const SMusterKasse & kasse) {
    CTVDesc_Fields vdesc;
    vdesc.m_PATNR = patient.pat.m_PATNR;
    vdesc.m_VDESCNR = Stellen(static_cast<int>(iNr), 4);
    vdesc.m_VDABDATUM = sAb;
    vdesc.m_VDBISDATUM = sBis;
    vdesc.m_KASKUERZEL = kasse.sKuerzel;
    return vdesc;
}

// What stays the same from card to card: membership, region mark, special kinds.
CTVDesc_Fields Status(const SMusterPatient & patient, CZufall & zufall) {
    CTVDesc_Fields vdesc;
    const int i = zufall.Unter(100);
    vdesc.m_PATNR = patient.pat.m_PATNR;
    vdesc.m_MFRDIG = CString(patient.iAlter < 20 ? '3' : patient.iAlter > 66 ? '5' : '1');
    vdesc.m_WSO = patient.bAusland ? CString("7") : i < 82 ? CString("1") : i < 92 ? CString("9") : CString();
    vdesc.m_RSA = CString(zufall.Prozent(6) ? '1' : '0');
    if (patient.bAusland)
        vdesc.m_KSART = CString(static_cast<char>('A' + zufall.Unter(3)));
    else if (zufall.Prozent(3))
        vdesc.m_KSART = "a";
    return vdesc;
}

void SetzeNachweis(CTVDesc_Fields & vdesc, CZufall & zufall) {
    vdesc.m_VNACHWEIS = CString(zufall.Gewichtet(NACHWEISE).pNachweis);
    if (vdesc.m_VNACHWEIS == "G" || vdesc.m_VNACHWEIS == "g") vdesc.m_EINLESEDATUM = vdesc.m_VDABDATUM;
    if (vdesc.m_VNACHWEIS == "G" && zufall.Prozent(92)) {
        vdesc.m_EGK = "1";
        vdesc.m_EGKDATEN =
            zufall.Prozent(4) ? CString("BPG=0") + itoc(zufall.Zwischen(4, 9)) : CString("DMP=0");
    }
    // The electronic proof stands beside a paper form or a card that the office has read.
    if ((vdesc.m_VNACHWEIS == "g" || vdesc.m_VNACHWEIS == "j") && zufall.Prozent(40)) vdesc.m_EEB = "1";
    if (zufall.Promille(6)) vdesc.m_KOSTENERSTATTUNG = "1";
}

// The other kinds of insurance have one open period, a private one now and then a second.
void PrivateZeitraeume(std::vector<CTVDesc_Fields> & v, const SMusterPatient & patient,
                       const CMusterKalender & kalender, const CMusterKassen & kassen, CZufall & zufall) {
    const bool bPrivat = patient.pKasse->eTraeger == EKostentraeger::Privat;
    v.push_back(Zeitraum(patient, 1, patient.pat.m_EINTRDATUM, CString(), *patient.pKasse));
    v.back().m_VNACHWEIS = !bPrivat ? CString("j") : zufall.Prozent(85) ? CString("p") : CString("P");
    if (bPrivat && zufall.Prozent(5)) v.back().m_EEB = "1";
    if (!bPrivat || zufall.Prozent(4))
        v.back().m_KSART = CString(bPrivat ? 'V' : static_cast<char>('A' + zufall.Unter(4)));
    v.back().m_WSO = CString(zufall.Prozent(90) ? '1' : '9');
    v.back().m_MFRDIG = "1";
    if (!bPrivat || kalender.Jahre() < 2 || !zufall.Prozent(6)) return;
    CTVDesc_Fields zweiter = v.back();
    zweiter.m_VDESCNR = Stellen(2, 4);
    zweiter.m_VDABDATUM = Datum(Jahr(kalender.Tag(0)) + 1, 1, 1);
    zweiter.m_KASKUERZEL = kassen.Ziehe(EKostentraeger::Privat, zufall).sKuerzel;
    v.back().m_VDBISDATUM = Datum(Jahr(kalender.Tag(0)), 12, 31);
    v.push_back(zweiter);
}

void GesetzlicheZeitraeume(std::vector<CTVDesc_Fields> & v, const SMusterPatient & patient,
                           const std::vector<int> & viTage, const CMusterKalender & kalender,
                           const CMusterKassen & kassen, CZufall & zufall) {
    const SMusterKasse * pKasse = patient.pKasse;
    const CTVDesc_Fields status = Status(patient, zufall);
    const bool bBefreit = zufall.Prozent(4);
    const auto Neuer = [&](const CString & sTag) {
        CTVDesc_Fields & vdesc = v.emplace_back(status);
        vdesc.m_VDESCNR = Stellen(static_cast<int>(v.size()), 4);
        vdesc.m_VDABDATUM = sTag;
        vdesc.m_VDBISDATUM = QuartalsEnde(sTag);
        vdesc.m_KASKUERZEL = pKasse->sKuerzel;
        if (bBefreit) vdesc.m_GEBUEHRENBEFREITBIS = sTag.Left(4) + "1231";
        SetzeNachweis(vdesc, zufall);
    };
    if (zufall.Prozent(3)) { // a private insurance beside the statutory one
        v.push_back(Zeitraum(patient, 1, patient.pat.m_EINTRDATUM, CString(),
                             kassen.Ziehe(EKostentraeger::Privat, zufall)));
        v.back().m_VNACHWEIS = "p";
    }
    CString sQuartal;
    for (const int iTag : viTage) {
        const CString & sTag = kalender.Tag(iTag);
        const bool bNeuesQuartal = DbDate2Quartal(sTag) != sQuartal;
        const bool bWechsel = zufall.Promille(bNeuesQuartal ? 15 : 6);
        if (!bNeuesQuartal && (!bWechsel || v.back().m_VDABDATUM == sTag)) continue;
        if (bWechsel) pKasse = &kassen.Ziehe(EKostentraeger::Gesetzlich, zufall);
        if (!bNeuesQuartal) v.back().m_VDBISDATUM = TagePlus(sTag, -1);
        sQuartal = DbDate2Quartal(sTag);
        Neuer(sTag);
    }
    if (!v.empty()) v.back().m_VDBISDATUM.Empty();
}

} // namespace

CString Stellen(int iNummer, int iStellen) { return RightFix(itoc(iNummer), iStellen); }

SMusterPatient ErzeugePatient(int iLfd, const CMusterKalender & kalender, const CMusterKassen & kassen,
                              CZufall & zufall) {
    SMusterPatient patient;
    const bool bFrau = zufall.Prozent(52);
    const SAlter & alter = zufall.Gewichtet(ALTER);
    patient.iAlter = zufall.Zwischen(alter.iVon, alter.iBis);
    patient.adr = ErzeugeAdresse(iLfd, bFrau, zufall);
    patient.pKasse = &kassen.Ziehe(Kostentraeger(zufall), zufall);
    patient.pBehandler = &zufall.Gewichtet(MusterBehandler());
    if (patient.pBehandler->bKfo && !patient.Kind()) patient.pBehandler = &MusterBehandler().front();
    patient.bPflege = patient.iAlter > 75 && patient.Gesetzlich() && zufall.Prozent(12);
    patient.bAusland = patient.Gesetzlich() && zufall.Promille(12);

    CTPat_Fields & pat = patient.pat;
    pat.m_PATNR = Stellen(1001 + iLfd, 10);
    pat.m_ADRNR = patient.adr.m_ADRNR;
    pat.m_PATVORNAME = patient.adr.m_PATVORNAME;
    pat.m_PATNAME = patient.adr.m_PATNAME;
    pat.m_PATGEBDATUM = Geburtstag(patient.iAlter, kalender, zufall);
    pat.m_BEHANDLERNR = CString(patient.pBehandler->pNr);
    SetzeMerkmale(patient, kalender, zufall);
    return patient;
}

std::vector<CTVDesc_Fields> ErzeugeVersicherungen(const SMusterPatient & patient,
                                                  const std::vector<int> & viTage,
                                                  const CMusterKalender & kalender,
                                                  const CMusterKassen & kassen, CZufall & zufall) {
    std::vector<CTVDesc_Fields> v;
    if (zufall.Promille(6)) return v;
    if (patient.Gesetzlich())
        GesetzlicheZeitraeume(v, patient, viTage, kalender, kassen, zufall);
    else
        PrivateZeitraeume(v, patient, kalender, kassen, zufall);
    return v;
}

std::vector<CTHistRecall_Fields> ErzeugeRecalls(SMusterPatient & patient, const CMusterKalender & kalender,
                                                CZufall & zufall) {
    std::vector<CTHistRecall_Fields> v;
    if (!zufall.Prozent(55)) return v;
    const bool bProphylaxe = zufall.Prozent(40);
    patient.pat.m_RECALLART = bProphylaxe ? CString("11") : CString("10");
    patient.pat.m_RECALLITV = bProphylaxe ? CString("63") : CString("60");
    for (int iArt = 0; iArt <= (bProphylaxe ? 1 : 0); ++iArt) {
        int iTag = zufall.Unter(kalender.Anzahl());
        for (; iTag < kalender.Anzahl(); iTag += zufall.Zwischen(110, 180))
            v.push_back({patient.pat.m_PATNR, itoc(iArt), kalender.Tag(iTag), itoc(iArt == 0 ? 26 : 13)});
    }
    return v;
}

} // namespace orvostat
