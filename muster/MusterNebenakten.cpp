#include "MusterNebenakten.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <array>
#include <string>

namespace orvostat {

namespace {

constexpr const char * LABORE[] = {"   301", "   302", "   315"};
constexpr const char * LABORNAMEN[] = {"Dentallabor Göllner", "Zahntechnik Süd", "Fräszentrum Mühlgau"};
constexpr int UST_PROZENT = 7;
const CString PAKET_PATIENT = "         1"; // the cost bearer that stands for an association's package

CString Euro(std::int64_t iCent) { return 'e' + itoc(iCent); }
// A column of an amount among others: letter, blanks, cents.
CString Spalte(std::int64_t iCent, int iBreite) { return 'e' + RightFix(itoc(iCent), iBreite - 1); }
// The same as display text, "1234,56".
CString Anzeige(std::int64_t iCent, int iBreite) {
    return RightFix(itoc(iCent / 100) + ',' + RightFix(itoc(iCent % 100), 2, '0'), iBreite);
}
// Value added tax that is contained in an amount.
std::int64_t Enthalten(std::int64_t iCent) {
    return (iCent * UST_PROZENT + (100 + UST_PROZENT) / 2) / (100 + UST_PROZENT);
}

// Technical work, material, metal and practice material of a laboratory's invoice.
std::array<std::int64_t, 4> Teile(std::int64_t iCent) {
    const std::int64_t iMaterial = iCent / 5;
    const std::int64_t iMetall = iCent / 10;
    return {iCent - iMaterial - iMetall, iMaterial, iMetall, 0};
}

CString Spalten(const std::array<std::int64_t, 4> & aiCent, int iBreite) {
    CString s;
    for (const std::int64_t iCent : aiCent)
        s += Spalte(iCent, iBreite);
    return s;
}

} // namespace

void CMusterNebenakten::Patient(SMusterAkte & akte, CZufall & zufall) {
    Rechnungen(akte, zufall);
    for (const SLaborarbeit & labor : akte.vLabor) {
        labor.bEigen ? Eigenlabor(akte, labor, zufall) : Fremdlabor(akte, labor, zufall);
        if (zufall.Prozent(70)) Gipsmodell(akte, labor, zufall);
    }
    if (!akte.viTage.empty() && zufall.Prozent(9)) Rezept(akte, zufall);
}

// ---- invoices

namespace {

CTFakt_Fields Rechnung(const SMusterBill & bill, int iNr, CZufall & zufall) {
    const std::int64_t iGesamt = bill.iHonorar + bill.iLabor;
    const bool bKasse = bill.zeile.m_ABRART.Erstes() >= 'a';
    const std::int64_t iKasse = bKasse ? bill.iLabor / 2 : 0;
    CTFakt_Fields fakt;
    fakt.m_PRAXISNR = bill.zeile.m_PRAXISNR;
    fakt.m_PATNR = bill.zeile.m_PATNR;
    fakt.m_FAKT1 = Stellen(iNr, 7);
    fakt.m_DATUM = TagePlus(bill.sLetzterTag, zufall.Zwischen(1, 30));
    fakt.m_FORTLFDJAHR = fakt.m_DATUM.Left(4);
    fakt.m_FORTLFDFAKT = fakt.m_FAKT1;
    fakt.m_FORMULARNR = itoc(bKasse ? 21 : 12);
    fakt.m_BETRAG1 = Euro(iGesamt - iKasse);
    fakt.m_HONORAR1 = Euro(bill.iHonorar);
    fakt.m_ELABGESAMT1 = Euro(bill.iLabor - iKasse);
    fakt.m_FLABGESAMT1 = Euro(0);
    fakt.m_ELABMWST1 = Euro(Enthalten(bill.iLabor - iKasse));
    if (iKasse > 0) {
        fakt.m_BETRAG2 = Euro(iKasse);
        fakt.m_HONORAR2 = Euro(0);
        fakt.m_ELABGESAMT2 = Euro(iKasse);
        fakt.m_FLABGESAMT2 = Euro(0);
        fakt.m_ELABMWST2 = Euro(Enthalten(iKasse));
    }
    const int iZahlung = zufall.Unter(100);
    fakt.m_BEGLICHEN = iZahlung < 84 ? fakt.m_BETRAG1 : Euro(iZahlung < 90 ? (iGesamt - iKasse) / 2 : 0);
    fakt.m_AUSGEBUCHT = Euro(0);
    if (bill.iHonorar > 50000) fakt.m_MWSTLISTE = 'g' + Spalte(4500, 10) + '7' + Spalte(1200, 10);
    fakt.m_STORNIERT = CString(zufall.Prozent(1) ? '1' : '0');
    fakt.m_MAHNSTUFE = CString(iZahlung < 90 ? '0' : static_cast<char>('0' + zufall.Unter(4)));
    fakt.m_KTRAEGER = CString(bKasse ? 'k' : 'p');
    return fakt;
}

} // namespace

void CMusterNebenakten::Rechnungen(SMusterAkte & akte, CZufall & zufall) {
    for (SMusterBill & bill : akte.vBills) {
        if (bill.iHonorar + bill.iLabor <= 0) continue;
        if (zufall.Prozent(2)) { // settled by a former program, which left a marker
            bill.zeile.m_FAKT1ALT = "9999";
            continue;
        }
        if (!zufall.Prozent(88)) continue;
        CTFakt_Fields fakt = Rechnung(bill, ++m_iRechnung, zufall);
        fakt.m_KASKUERZEL = akte.patient.pKasse->sKuerzel;
        bill.zeile.m_FAKT1 = fakt.m_FAKT1;
        if (!fakt.m_BETRAG2.IsEmpty()) bill.zeile.m_FAKT2 = fakt.m_FAKT1;
        m_schreiber.Schreibe(fakt);
    }
}

// ---- laboratory

namespace {

CTLBlock_Fields Block(const SMusterAkte & akte, const SLaborarbeit & labor, const char * pLfd,
                      const char * pArt) {
    CString sBetraege;
    const std::int64_t aiCent[10] = {labor.iCent, 0, labor.iCent / 5, 0, 0, labor.iCent, labor.iCent / 2, 0,
                                     0,           0};
    for (const std::int64_t iCent : aiCent)
        sBetraege += Anzeige(iCent, 11);
    return {akte.patient.pat.m_PATNR, labor.sPlanNr, CString(pLfd),  CString(pArt), sBetraege,
            labor.sBehandlerNr,       labor.sDatum,  labor.sPraxisNr};
}

} // namespace

// The block of the estimate and that of the fitting, with an entry for each treatment row and now and then a service
// that was agreed outside of the insurer's list.
void CMusterNebenakten::Eigenlabor(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall) {
    m_schreiber.Schreibe(Block(akte, labor, " 1", "1"));
    m_schreiber.Schreibe(Block(akte, labor, " 2", "4"));
    CTLBlockEntry_Fields entry;
    entry.m_PATNR = akte.patient.pat.m_PATNR;
    entry.m_PLANNR = labor.sPlanNr;
    entry.m_LFDLBLOCK = labor.sLfdBlock;
    entry.m_DATUM = labor.sDatum;
    entry.m_BEHANDLERNR = labor.sBehandlerNr;
    int iLfd = 0;
    for (const std::size_t iPosten : labor.vPosten) {
        const CTBeh_Fields & beh = akte.vBeh[iPosten];
        entry.m_LFDENTRY = Stellen(++iLfd, 3);
        entry.m_LBLOCKENTRYART = beh.m_GOART;
        entry.m_LSTNR = beh.m_LSTNR;
        entry.m_TEETH = beh.m_TEETH;
        entry.m_ANZAHL = beh.m_ANZAHL;
        entry.m_BETRAG = Euro(Zahl64(beh.m_BETRAG.Mid(1)) * 100 / Zahl(beh.m_ANZAHL.Mid(1)));
        entry.m_CHARGE = zufall.Prozent(30) ? CString("C") + itoc(zufall.Zwischen(1000, 9999)) : CString();
        m_schreiber.Schreibe(entry);
    }
    if (!zufall.Prozent(40)) return;
    entry.m_LFDENTRY = Stellen(++iLfd, 3);
    entry.m_LBLOCKENTRYART = "q";
    entry.m_LBLNR = "4";
    entry.m_BEGRKEY = CString("BGR0") + itoc(zufall.Zwischen(1, 3));
    entry.m_LSTNR = "2210";
    entry.m_FAKTOR = "23000";
    entry.m_ANZAHL = "x100";
    entry.m_BETRAG = "e21706";
    m_schreiber.Schreibe(entry);
}

void CMusterNebenakten::Fremdlabor(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall) {
    static constexpr const char * ARBEITEN[] = {"Krone", "Brücke", "Teleskopprothese", "Modellguß",
                                                "Totale Prothese"};
    static constexpr const char * FARBEN[] = {"A2", "A3", "A3,5", "B2", "C1"};
    const int iLabor = zufall.Unter(static_cast<int>(std::size(LABORE)));
    const CString sKunde(LABORE[iLabor]);
    std::vector<CTGLBloc_Fields> & vBloecke = m_mapBloecke[sKunde];
    CTGLBloc_Fields & bloc = vBloecke.emplace_back();
    bloc.m_LABORKUNDE = sKunde;
    bloc.m_LFDGLBLOC = Stellen(static_cast<int>(vBloecke.size()), 6);
    bloc.m_GLBLOCSTATUS = CString(zufall.Prozent(95) ? '1' : '0');
    bloc.m_PATNR = akte.patient.pat.m_PATNR;
    bloc.m_PLANNR = labor.sPlanNr;
    bloc.m_LFDLBLOCK = labor.sLfdBlock;
    bloc.m_BEHANDLERNR = labor.sBehandlerNr;
    bloc.m_DATUM = labor.sDatum;
    bloc.m_PRAXISNR = labor.sPraxisNr;
    if (zufall.Prozent(90)) bloc.m_PATREF = akte.patient.pat.m_PATNR;
    bloc.m_AUFTRAG = CString("A") + bloc.m_LFDGLBLOC;
    bloc.m_LABORNAME = AusUtf8(LABORNAMEN[iLabor]);
    bloc.m_ARBEIT = AusUtf8(zufall.Eines(ARBEITEN));
    bloc.m_FARBE = CString(zufall.Eines(FARBEN));
    bloc.m_EINGANG = TagePlus(labor.sDatum, -12);
    bloc.m_LIEFERUNG = TagePlus(labor.sDatum, -1);
    bloc.m_RECHNUNGNR = CString("R") + bloc.m_LFDGLBLOC;
    bloc.m_RECHDATUM = labor.sDatum;
    bloc.m_ZAHLZIEL = "30";
    bloc.m_GLBLOCBETRAEGE = Spalten(Teile(labor.iCent), 10);
    bloc.m_UST = Euro(Enthalten(labor.iCent));

    const auto aiTeile = Teile(labor.iCent);
    static constexpr const char * LEISTUNGEN[] = {"1021", "1500", "9100"};
    for (int i = 0; i < 3; ++i)
        m_mapEintraege[sKunde].push_back(
            {sKunde, bloc.m_LFDGLBLOC, Stellen(i + 1, 3), CString(i == 2 ? '4' : '2'), "", labor.sDatum,
             labor.sBehandlerNr, CString(LEISTUNGEN[i]), "x100", Euro(aiTeile[static_cast<std::size_t>(i)]),
             CString(i == 2 ? 'g' : '7'), ""});
}

// One collective invoice per laboratory and month. Blocks come by patients, so each is put to its month first.
void CMusterNebenakten::Sammelrechnungen() {
    for (const auto & [sKunde, vBloecke] : m_mapBloecke) {
        std::map<CString, std::pair<int, std::int64_t>> mapMonate; // blocks and cents by owner and month
        for (const CTGLBloc_Fields & bloc : vBloecke) {
            auto & [iAnzahl, iCent] = mapMonate[bloc.m_DATUM.Left(6) + bloc.m_PRAXISNR];
            ++iAnzahl;
            for (int i = 0; i < 4; ++i)
                iCent += Zahl64(bloc.m_GLBLOCBETRAEGE.Mid(i * 10 + 1, 9));
        }
        int iLfd = 0;
        for (const auto & [sMonat, summe] : mapMonate) {
            const CString sBis =
                Datum(Jahr(sMonat), Zahl(sMonat.Mid(4, 2)), LastDayI(Zahl(sMonat.Mid(4, 2)), Jahr(sMonat)));
            m_schreiber.Schreibe(CTGLKuFakt_Fields{
                sMonat.Mid(6), sKunde, Stellen(++iLfd, 6), TagePlus(sBis, 3), sMonat.Left(6) + "01", sBis,
                itoc(summe.first), CString(iLfd % 5 == 0 ? '0' : '1'), CString(iLfd % 40 == 7 ? '1' : '0'),
                Spalten(Teile(summe.second), 9), Euro(Enthalten(summe.second))});
        }
    }
}

// ---- prescriptions, plaster models

void CMusterNebenakten::Rezept(const SMusterAkte & akte, CZufall & zufall) {
    static constexpr const char * SCHLUESSEL[] = {"CD1  ", "CD2  ", "LYZ1 ", "SPZ  "};
    const CTPat_Fields & pat = akte.patient.pat;
    const CTBeh_Fields & beh =
        akte.vBeh.empty()
            ? CTBeh_Fields()
            : akte.vBeh[static_cast<std::size_t>(zufall.Unter(static_cast<int>(akte.vBeh.size())))];
    if (beh.m_DATUM.IsEmpty()) return;
    const bool bZweite = zufall.Prozent(30);
    m_schreiber.Schreibe(CTRezept_Fields{pat.m_PATNR, "   1", beh.m_DATUM,
                                         CString(zufall.Eines(SCHLUESSEL)) + "K076   "_t +
                                             (bZweite ? "M2651  "_t : CString())});
    CHMVRecord_Fields hmv;
    const CString sGeb = pat.m_PATGEBDATUM;
    hmv.m_PATNR = pat.m_PATNR;
    hmv.m_REZEPTNR = "   1";
    hmv.m_FORMULARNAME = zufall.Prozent(15) ? "BLANKOVERORDNUNG"_t : "HEILMITTELVERORDNUNG"_t;
    hmv.m_TEXTBLOCK = akte.patient.adr.m_PATORT + '\n' + pat.m_PATNAME + '\n' +
                      LeftFix(pat.m_PATVORNAME, 22) + sGeb.Mid(6) + '.' + sGeb.Mid(4, 2) + '.' +
                      sGeb.Mid(2, 2) + '\n' + akte.patient.adr.m_PATSTRASSE + '\n' +
                      akte.patient.adr.m_PATPLZ + '\n' + "Nr.       "_t + pat.m_PATNR;
    hmv.m_ANZAHL1 = itoc(zufall.Zwischen(0, 1) * 6);
    hmv.m_ANZAHL2 = "0";
    hmv.m_ANZAHL3 = "0";
    hmv.m_ANZAHL4 = "10";
    hmv.m_BETRAG = Euro(zufall.Zwischen(9000, 24000));
    m_schreiber.Schreibe(hmv);
}

void CMusterNebenakten::Gipsmodell(const SMusterAkte & akte, const SLaborarbeit & labor, CZufall & zufall) {
    static constexpr const char * TEXTE[] = {"Oberkiefer Meistermodell", "Unterkiefer Situationsmodell",
                                             "Gegenbiß, beschädigt"};
    m_schreiber.Schreibe(CTGips_Fields{Stellen(++m_iGips, 8), akte.patient.pat.m_PATNR, labor.sDatum,
                                       CString(zufall.Prozent(70) ? 'm' : 's'), labor.sBehandlerNr,
                                       AusUtf8(zufall.Eines(TEXTE)), CString(zufall.Prozent(60) ? '1' : '0'),
                                       zufall.Prozent(30) ? TagePlus(labor.sDatum, 90) : CString()});
}

// ---- the end

void CMusterNebenakten::Beende(const CString & sVon) {
    for (const auto & [sKunde, vBloecke] : m_mapBloecke)
        m_schreiber.Schreibe(vBloecke);
    for (const auto & [sKunde, vEintraege] : m_mapEintraege)
        m_schreiber.Schreibe(vEintraege);
    Sammelrechnungen();
    // An association's package: its invoices stand under a patient number that is no patient.
    m_schreiber.Schreibe(CTKTraeger_Fields{PAKET_PATIENT, "p", "Quartalspaket"_t});
    CTFakt_Fields paket;
    paket.m_PRAXISNR = " 1";
    paket.m_PATNR = PAKET_PATIENT;
    paket.m_FAKT1 = Stellen(++m_iRechnung, 7);
    paket.m_FORTLFDFAKT = paket.m_FAKT1;
    paket.m_DATUM = QuartalsEnde(sVon);
    paket.m_FORTLFDJAHR = paket.m_DATUM.Left(4);
    paket.m_BETRAG1 = paket.m_HONORAR1 = "e8431207";
    paket.m_BEGLICHEN = "e8000000";
    paket.m_AUSGEBUCHT = Euro(0);
    paket.m_STORNIERT = paket.m_MAHNSTUFE = "0";
    m_schreiber.Schreibe(paket);
}

} // namespace orvostat
