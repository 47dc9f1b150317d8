#include "MusterKataloge.h"

#include "orvostatbs/host/Textfunktionen.h"

#include <iterator>

namespace orvostat {

namespace {

// The part of dentistry a service belongs to; it decides point-value kind, statistic kind and commission group.
enum EBereich { KCH, IP, KFO, ZE, PAR, KBR };

struct SBereichswerte {
    char cPwLArt;
    char cStatArt; // "x": by the bill
    int iProvGrp;
};
constexpr SBereichswerte BEREICHE[] = {{'a', 'x', 1}, {'c', 'e', 2}, {'i', 'f', 5},
                                       {'f', 'c', 4}, {'g', 'd', 3}, {'h', 'g', 4}};

// ---- published: Bewertungsmassstab zahnaerztlicher Leistungen (BEMA), number, short code, points

struct SBema {
    const char * pLst;
    const char * pKuerzel;
    int iPunkte;
    EBereich eBereich;
    const char * pText;
};
constexpr SBema BEMA[] = {
    {"ä1", "Ber", 9, KCH, "Beratung"},
    {"ä161", "Inz1", 15, KCH, "Inzision eines oberflächlichen Abszesses"},
    {"ä925a", "Rö2", 12, KCH, "Röntgendiagnostik bis 2 Aufnahmen"},
    {"ä925b", "Rö5", 19, KCH, "Röntgendiagnostik bis 5 Aufnahmen"},
    {"ä925c", "Rö8", 27, KCH, "Röntgendiagnostik bis 8 Aufnahmen"},
    {"ä925d", "Stat", 34, KCH, "Röntgendiagnostik mehr als 8 Aufnahmen"},
    {"ä928", "ä928", 30, KFO, "Röntgenaufnahme der Hand"},
    {"ä934a", "ä934a", 19, KFO, "Schädelaufnahme, eine"},
    {"ä934b", "ä934b", 30, KFO, "Schädelaufnahme, zwei"},
    {"ä934c", "ä934c", 36, KFO, "Schädelaufnahme, mehr als zwei"},
    {"ä935a", "ä935a", 21, KCH, "Teilaufnahme des Schädels, eine"},
    {"ä935b", "ä935b", 25, KCH, "Teilaufnahme des Schädels, zwei"},
    {"ä935c", "ä935c", 31, KCH, "Teilaufnahme des Schädels, mehr als zwei"},
    {"ä935d", "OPG", 36, KCH, "Orthopantomogramm"},
    {"01", "U", 18, KCH, "Eingehende Untersuchung"},
    {"01k", "U-KFO", 28, KFO, "Kieferorthopädische Untersuchung"},
    {"02", "02", 20, KCH, "Hilfeleistung bei Ohnmacht oder Kollaps"},
    {"03", "Zu", 15, KCH, "Zuschlag außerhalb der Sprechstunde"},
    {"04", "PSI", 12, KCH, "Erhebung des PSI-Codes"},
    {"05", "05", 20, KCH, "Gewinnung von Zellmaterial"},
    {"8", "ViPr", 6, KCH, "Sensibilitätsprüfung"},
    {"10", "üZ", 6, KCH, "Behandlung überempfindlicher Zähne"},
    {"11", "pV", 19, KCH, "Provisorischer Verschluss einer Kavität"},
    {"12", "bMF", 10, KCH, "Besondere Maßnahmen beim Präparieren oder Füllen"},
    {"13a", "F1", 33, KCH, "Füllung einflächig"},
    {"13b", "F2", 41, KCH, "Füllung zweiflächig"},
    {"13c", "F3", 53, KCH, "Füllung dreiflächig"},
    {"13d", "F4", 63, KCH, "Füllung mehr als dreiflächig"},
    {"25", "Cp", 6, KCH, "Indirekte Überkappung"},
    {"26", "P", 6, KCH, "Direkte Überkappung"},
    {"28", "VitE", 18, KCH, "Exstirpation der vitalen Pulpa"},
    {"31", "Trep1", 11, KCH, "Trepanation eines pulpatoten Zahnes"},
    {"32", "WK", 29, KCH, "Aufbereitung des Wurzelkanalsystems"},
    {"34", "Med", 15, KCH, "Medikamentöse Einlage"},
    {"35", "WF", 17, KCH, "Wurzelkanalfüllung"},
    {"38", "N", 10, KCH, "Nachbehandlung nach chirurgischem Eingriff"},
    {"40", "I", 8, KCH, "Infiltrationsanästhesie"},
    {"41a", "L1", 12, KCH, "Leitungsanästhesie intraoral"},
    {"41b", "L2", 16, KCH, "Leitungsanästhesie extraoral"},
    {"43", "X1", 10, KCH, "Entfernen eines einwurzeligen Zahnes"},
    {"44", "X2", 15, KCH, "Entfernen eines mehrwurzeligen Zahnes"},
    {"45", "X3", 40, KCH, "Entfernen eines tieffrakturierten Zahnes"},
    {"47a", "Ost1", 58, KCH, "Entfernen eines Zahnes durch Osteotomie"},
    {"48", "Ost2", 78, KCH, "Entfernen eines verlagerten Zahnes durch Osteotomie"},
    {"58", "58", 48, KCH, "Knochenresektion am Alveolarfortsatz"},
    {"63", "63", 80, KCH, "Freilegung eines retinierten Zahnes"},
    {"105", "Mu", 8, KCH, "Lokale medikamentöse Behandlung"},
    {"107", "Zst", 16, KCH, "Entfernen harter Zahnbeläge"},
    {"108", "Beb", 6, PAR, "Einschleifen des natürlichen Gebisses"},
    {"111", "111", 10, PAR, "Nachbehandlung im Rahmen der PAR-Behandlung"},
    {"ip1", "IP1", 20, IP, "Mundhygienestatus"},
    {"ip2", "IP2", 17, IP, "Mundgesundheitsaufklärung"},
    {"ip4", "IP4", 12, IP, "Lokale Fluoridierung"},
    {"ip5", "IP5", 16, IP, "Versiegelung von Fissuren"},
    {"20a", "20a", 148, ZE, "Metallische Vollkrone"},
    {"20b", "20b", 158, ZE, "Vestibulär verblendete Krone"},
    {"20c", "20c", 187, ZE, "Metallische Teilkrone"},
    {"24a", "24a", 25, ZE, "Wiedereinsetzen einer Krone"},
    {"24b", "24b", 43, ZE, "Erneuern einer Verblendung"},
    {"24c", "24c", 7, ZE, "Abnahme und Wiederbefestigung einer provisorischen Krone"},
    {"89", "89", 16, ZE, "Beseitigung grober Artikulationsstörungen"},
    {"90", "90", 154, ZE, "Wurzelstiftkappe mit Kugelknopfanker"},
    {"91a", "91a", 118, ZE, "Brückenanker metallische Vollkrone"},
    {"91b", "91b", 128, ZE, "Brückenanker verblendete Krone"},
    {"91c", "91c", 136, ZE, "Brückenanker metallische Teilkrone"},
    {"91d", "91d", 190, ZE, "Brückenanker Teleskopkrone"},
    {"91e", "91e", 43, ZE, "Brückenanker mit Geschiebe"},
    {"92", "92", 62, ZE, "Brückenspanne"},
    {"96a", "96a", 57, ZE, "Prothese bis 4 Zähne"},
    {"97a", "97a", 250, ZE, "Totale Prothese im Oberkiefer"},
    {"98f", "98f", 22, ZE, "Halte- und Stützvorrichtungen"},
    {"atg", "ATG", 28, PAR, "Parodontologisches Aufklärungsgespräch"},
    {"mhu", "MHU", 45, PAR, "Mundhygieneunterweisung"},
    {"aita", "AITa", 14, PAR, "Antiinfektiöse Therapie einwurzelig"},
    {"aitb", "AITb", 26, PAR, "Antiinfektiöse Therapie mehrwurzelig"},
    {"beva", "BEVa", 32, PAR, "Befundevaluation nach AIT"},
    {"bevb", "BEVb", 32, PAR, "Befundevaluation nach chirurgischer Therapie"},
    {"upta", "UPTa", 18, PAR, "UPT Mundhygienekontrolle"},
    {"upte", "UPTe", 5, PAR, "UPT subgingivale Instrumentierung einwurzelig"},
    {"k1", "k1", 106, KBR, "Aufbissbehelf mit adjustierter Oberfläche"},
    {"k2", "k2", 45, KBR, "Aufbissbehelf ohne adjustierte Oberfläche"},
    {"k4", "k4", 11, KBR, "Semipermanente Schienung"},
    {"116", "116", 15, KFO, "Fotografie"},
    {"117", "117", 35, KFO, "Modellanalyse"},
    {"118", "118", 29, KFO, "Kephalometrische Auswertung"},
    {"119a", "119a", 132, KFO, "Umformung eines Kiefers, einfach"},
    {"119b", "119b", 204, KFO, "Umformung eines Kiefers, mittel"},
    {"119c", "119c", 276, KFO, "Umformung eines Kiefers, schwierig"},
    {"119d", "119d", 336, KFO, "Umformung eines Kiefers, besonders schwierig"},
    {"120a", "120a", 204, KFO, "Einstellung in den Regelbiss, einfach"},
    {"120b", "120b", 228, KFO, "Einstellung in den Regelbiss, mittel"},
    {"122a", "122a", 21, KFO, "Kontrolle des Behandlungsverlaufs"},
    {"126a", "126a", 18, KFO, "Eingliedern eines Brackets"},
    {"126b", "126b", 42, KFO, "Eingliedern eines Bandes"},
    {"128a", "128a", 32, KFO, "Eingliedern eines Bogens"},
};

// ---- published: Gebuehrenordnung fuer Zahnaerzte (GOZ), number and points

struct SGoz {
    const char * pLst;
    int iPunkte;
    const char * pText;
};
constexpr SGoz GOZ[] = {
    {"0010", 100, "Eingehende Untersuchung"},
    {"0030", 200, "Aufstellung eines schriftlichen Heil- und Kostenplans"},
    {"0070", 50, "Vitalitätsprüfung"},
    {"0080", 30, "Intraorale Oberflächenanästhesie"},
    {"0090", 60, "Intraorale Infiltrationsanästhesie"},
    {"0100", 70, "Intraorale Leitungsanästhesie"},
    {"1000", 200, "Mundhygienestatus"},
    {"1020", 50, "Lokale Fluoridierung"},
    {"1040", 28, "Professionelle Zahnreinigung je Zahn"},
    {"2000", 90, "Versiegelung von Fissuren"},
    {"2020", 98, "Temporärer speicheldichter Verschluss"},
    {"2060", 527, "Kompositrestauration einflächig"},
    {"2080", 556, "Kompositrestauration zweiflächig"},
    {"2100", 642, "Kompositrestauration dreiflächig"},
    {"2120", 770, "Kompositrestauration mehr als dreiflächig"},
    {"2150", 1141, "Einlagefüllung einflächig"},
    {"2197", 130, "Adhäsive Befestigung"},
    {"2200", 1322, "Vollkrone Tangentialpräparation"},
    {"2210", 1678, "Vollkrone Hohlkehlpräparation"},
    {"2220", 2067, "Teilkrone, Veneer"},
    {"2390", 65, "Trepanation eines Zahnes"},
    {"2410", 392, "Aufbereitung eines Wurzelkanals"},
    {"2440", 258, "Füllung eines Wurzelkanals"},
    {"3000", 70, "Entfernung eines einwurzeligen Zahnes"},
    {"3010", 110, "Entfernung eines mehrwurzeligen Zahnes"},
    {"3020", 270, "Entfernung eines tief frakturierten Zahnes"},
    {"3030", 350, "Entfernung eines Zahnes durch Osteotomie"},
    {"4000", 160, "Erstellen eines Parodontalstatus"},
    {"4005", 80, "Erhebung eines Gingivalindex"},
    {"4050", 10, "Entfernung harter und weicher Beläge einwurzelig"},
    {"4070", 100, "Parodontalchirurgische Therapie einwurzelig"},
    {"4075", 130, "Parodontalchirurgische Therapie mehrwurzelig"},
    {"5000", 1016, "Brückenanker Tangentialpräparation"},
    {"5010", 1483, "Brückenanker Hohlkehlpräparation"},
    {"5040", 2605, "Brückenanker Teleskopkrone"},
    {"5070", 400, "Verbindung durch Brücken oder Stege"},
    {"5210", 1400, "Modellgussprothese"},
    {"7010", 800, "Aufbissbehelf mit adjustierter Oberfläche"},
    {"8000", 500, "Klinische Funktionsanalyse"},
    {"9000", 884, "Implantatbezogene Analyse"},
    {"9010", 1545, "Implantatinsertion"},
    {"9100", 2694, "Aufbau des Alveolarfortsatzes"},
};

// ---- invented: points of services that the published list above lacks

constexpr SBema BEMA_ERFUNDEN[] = {
    {"4", "4", 44, PAR, "Befunderhebung und Erstellen eines Parodontalstatus"},
    {"csta", "CPTa", 22, PAR, "Chirurgische Therapie einwurzelig"},
    {"cstb", "CPTb", 34, PAR, "Chirurgische Therapie mehrwurzelig"},
    {"uptb", "UPTb", 24, PAR, "UPT Mundhygieneunterweisung"},
    {"uptc", "UPTc", 3, PAR, "UPT supragingivale Reinigung"},
    {"uptd", "UPTd", 15, PAR, "UPT Messung von Sondierungstiefen"},
    {"uptf", "UPTf", 12, PAR, "UPT subgingivale Instrumentierung mehrwurzelig"},
    {"uptg", "UPTg", 32, PAR, "UPT Untersuchung des Parodontalzustands"},
    {"p200", "P200", 28, PAR, "Parodontale Zusatzleistung 200"},
    {"p201", "P201", 19, PAR, "Parodontale Zusatzleistung 201"},
    {"k3", "K3", 61, KBR, "Umarbeitung eines Aufbissbehelfs"},
    {"up3", "UP3", 35, KBR, "Kontrolle eines Aufbissbehelfs"},
    {"151", "Bs1", 38, KCH, "Besuch eines Versicherten"},
    {"152a", "Bs2a", 34, KCH, "Besuch in einer Einrichtung"},
};

// ---- invented: everything else, numbers, points and prices

struct SErfunden {
    char cGoArt;
    char cSubArt; // 0 for none
    const char * pLst;
    const char * pKuerzel;
    int iPunkte; // hundredths
    int iCent;
    char cPwLArt;
    char cStatArt;
    const char * pDruckbild;
    const char * pText;
};
constexpr SErfunden ERFUNDEN[] = {
    // the patient's fee for the insurer, material on insurer bills, travel money shared by the patients of a tour
    {'k', 0, "kkgeb", "KKG", 0, 1000, '0', 'n', "", "Kassengebühr"},
    {'k', 0, "kkent", "KKE", 0, -1000, '0', 'n', "", "Kassengebühr erstattet"},
    {'k', '7', "602", "Vers", 0, 620, '0', 'n', "", "Versandgang"},
    {'k', '8', "603", "Abf", 0, 340, '0', 'n', "", "Abformmaterial"},
    {'g', '7', "602", "Vers", 0, 620, '0', 'n', "", "Versandgang"},
    {'g', '8', "603", "Abf", 0, 340, '0', 'n', "", "Abformmaterial"},
    {'g', 0, "7810", "W2T", 0, 430, '0', 'a', "7810", "Wegegeld bis 2 km bei Tag"},
    {'g', 0, "7811", "W2N", 0, 860, '0', 'a', "7811", "Wegegeld bis 2 km bei Nacht"},
    {'g', 0, "7820", "W5T", 0, 800, '0', 'a', "7820", "Wegegeld bis 5 km bei Tag"},
    {'g', 0, "7821", "W5N", 0, 1230, '0', 'a', "7821", "Wegegeld bis 5 km bei Nacht"},
    {'g', 0, "7928", "RE", 0, 5600, '0', 'a', "7928", "Reiseentschädigung"},
    // private services without points
    {'q', 't', "m2197", "mAd", 0, 1180, 'p', 'x', "", "Adhäsivmaterial"},
    {'q', 'u', "m9010", "mImp", 0, 21900, 'p', 'h', "", "Implantat mit Zubehör"},
    {'q', 'y', "v0100", "Verl", 0, 4500, 'p', 'x', "", "Verlangensleistung"},
    {'q', '2', "s0010", "Sach", 0, 750, 'p', 'x', "", "Sachkosten"},
    {'q', 't', "9262", "ZuzKa", 0, 1250, 'p', 'x', "", "Zuzahlung über die Kasse"},
    // physicians' schedule
    {'p', '2', "1", "Ä1", 0, 470, 'p', 'x', "", "Beratung"},
    {'p', '2', "5", "Ä5", 0, 475, 'p', 'x', "001", "Symptombezogene Untersuchung"},
    {'p', '2', "60", "Kons", 0, 710, 'p', 'x', "", "Konsil"},
    {'p', '1', "5000", "Rö", 0, 296, 'p', 'x', "", "Röntgenaufnahme eines Zahns"},
    {'p', '1', "5004", "OPG", 0, 2349, 'p', 'x', "", "Panoramaschichtaufnahme"},
    // material without factor, accident insurance
    {'a', 0, "a100", "Mat", 0, 290, 'p', 'x', "", "Praxismaterial"},
    {'u', 0, "u100", "UBer", 0, 980, 'p', 'x', "", "Beratung nach Unfall"},
    {'u', 0, "u200", "USch", 0, 5240, 'p', 'x', "", "Schienung nach Unfall"},
    // other payers; the alternative points follow from these, see Zeile
    {'b', 0, "1", "Ord", 0, 0, 'd', 'a', "", "Ordination"},
    {'e', 0, "e01", "eU", 1900, 0, 'd', 'a', "01", "Untersuchung"},
    {'e', 0, "e13", "eF", 4300, 0, 'd', 'a', "", "Füllung"},
    {'f', 0, "f01", "fU", 1800, 0, 'd', 'a', "01", "Untersuchung"},
    {'f', 0, "f43", "fX", 1200, 0, 'd', 'a', "", "Zahnentfernung"},
    {'h', 0, "h01", "hU", 2000, 0, 'e', 'a', "01", "Untersuchung"},
    {'h', 0, "h97", "hP", 26000, 0, 'e', 'c', "", "Totale Prothese"},
    // laboratory: 1 own, insurer's list; 2 foreign, insurer's list; 3 own, free; 4 metal; 7 own technical work; 8
    // foreign invoice; 5, 6, 9 seldom
    {'1', 0, "0010", "Mod", 0, 830, 0, 0, "", "Modell"},
    {'1', 0, "0120", "Fix", 0, 1125, 0, 0, "", "Mittelwertartikulator"},
    {'1', 0, "1021", "VK", 0, 8940, 0, 0, "", "Vollkrone, Metall"},
    {'1', 0, "1500", "Verb", 0, 9810, 0, 0, "", "Vestibuläre Verblendung"},
    {'1', 0, "1100", "BrG", 0, 6680, 0, 0, "", "Brückenglied"},
    {'2', 0, "2010", "MGB", 0, 11350, 0, 0, "", "Metallbasis"},
    {'2', 0, "3021", "Aufst", 0, 2480, 0, 0, "", "Aufstellung je Zahn"},
    {'3', 0, "5050", "VollK", 0, 17200, 0, 0, "", "Keramikkrone"},
    {'4', 0, "9100", "NEM", 0, 1860, 0, 0, "", "Nichtedelmetall-Legierung"},
    {'5', 0, "9500", "Port", 0, 510, 0, 0, "", "Versand"},
    {'6', 0, "9600", "Repar", 0, 3890, 0, 0, "", "Instandsetzung"},
    {'7', '1', "7010", "Löf", 0, 2140, 0, 0, "", "Individueller Löffel"},
    {'7', 'a', "7020", "Schie", 0, 9560, 0, 0, "", "Aufbissschiene"},
    {'8', 0, "8000", "FLab", 0, 0, 0, 0, "", "Fremdlaborrechnung"},
    {'9', 0, "9900", "Zahn", 0, 1490, 0, 0, "", "Konfektionszahn"},
};

// ---- points that have changed: the point counts are published, the days are partly invented

struct SGeaendert {
    const char * pLst;
    const char * pAb;
    const char * pPunkte;
};
constexpr SGeaendert GEAENDERT[] = {{"13a", "20020101", "3200"},
                                    {"13a", "20250101", "3300"},
                                    {"04", "20020101", "1000"},
                                    {"04", "20190101", "1200"}};

// ---- invented: audit minutes of a service, "2" per quarter, "3" per day and quarter

struct SPruefzeit {
    char cGoArt;
    const char * pLst;
    const char * pText; // minutes in places 1 to 6, kind in place 9
};
constexpr SPruefzeit PRUEFZEITEN[] = {{'k', "01", "p000010  3"},
                                      {'k', "13b", "p000018  3"},
                                      {'k', "107", "p000012  2"},
                                      {'q', "2080", "p000035  3"}};

CString Ziffern(int i) { return i == 0 ? CString() : itoc(i); }

constexpr const char * ABRECHENBAR = "1";

// A price as a stored amount.
CString Eurobetrag(int iCent) { return iCent == 0 ? CString() : 'e' + itoc(iCent); }

SGebuehr Zeile(char cGoArt, const char * pLst, const char * pKuerzel, const char * pText) {
    SGebuehr gebuehr;
    gebuehr.zeile.m_GOART = CString(cGoArt);
    gebuehr.zeile.m_LSTNR = AusUtf8(pLst);
    gebuehr.zeile.m_LSTKUERZEL = AusUtf8(pKuerzel);
    gebuehr.zeile.m_GOTEXT = AusUtf8(pText);
    return gebuehr;
}

SGebuehr BemaZeile(char cGoArt, const SBema & bema) {
    SGebuehr gebuehr = Zeile(cGoArt, bema.pLst, bema.pKuerzel, bema.pText);
    const SBereichswerte & bereich = BEREICHE[bema.eBereich];
    const std::string_view sLst = bema.pLst;
    gebuehr.iPunkte = bema.iPunkte * 100;
    gebuehr.zeile.m_GEBPKT = itoc(gebuehr.iPunkte);
    gebuehr.zeile.m_PWLART = CString(bereich.cPwLArt);
    gebuehr.zeile.m_STATART = CString(bereich.cStatArt);
    gebuehr.zeile.m_F100AEVWERT = itoc(bereich.iProvGrp);
    gebuehr.zeile.m_GOKZ = ABRECHENBAR;
    if (sLst == "01" || sLst == "01k") gebuehr.zeile.m_DRUCKBILD = gebuehr.zeile.m_LSTNR;
    return gebuehr;
}

// The statistic kind of a private service by the part of the schedule.
char GozStatArt(std::string_view sLst) {
    switch (sLst[0]) {
    case '1':
        return 'e';
    case '4':
        return 'd';
    case '5':
        return 'c';
    case '9':
        return 'h';
    default:
        return sLst >= "2150" && sLst < "2300" && sLst != "2197" ? 'c' : 'x';
    }
}

// GOZ points stand unscaled: 100 of them as hundredths are one point of 5.62421 euro.
SGebuehr GozZeile(const SGoz & goz) {
    SGebuehr gebuehr = Zeile('q', goz.pLst, goz.pLst, goz.pText);
    gebuehr.iPunkte = goz.iPunkte;
    gebuehr.zeile.m_GOSUBART = "1";
    gebuehr.zeile.m_GEBPKT = itoc(goz.iPunkte);
    gebuehr.zeile.m_PWLART = "p";
    gebuehr.zeile.m_STATART = CString(GozStatArt(goz.pLst));
    gebuehr.zeile.m_STDFAKTOR = "23000";
    gebuehr.zeile.m_F100AEVWERT = "6";
    gebuehr.zeile.m_GOKZ = ABRECHENBAR;
    if (std::string_view(goz.pLst) == "0010") gebuehr.zeile.m_DRUCKBILD = gebuehr.zeile.m_LSTNR;
    return gebuehr;
}

SGebuehr ErfundeneZeile(const SErfunden & e) {
    SGebuehr gebuehr = Zeile(e.cGoArt, e.pLst, e.pKuerzel, e.pText);
    CTGO_Fields & zeile = gebuehr.zeile;
    gebuehr.iPunkte = e.iPunkte;
    gebuehr.iCent = e.iCent;
    if (e.cSubArt != 0) zeile.m_GOSUBART = CString(e.cSubArt);
    if (e.cPwLArt != 0) zeile.m_PWLART = CString(e.cPwLArt);
    if (e.cStatArt != 0) zeile.m_STATART = CString(e.cStatArt);
    zeile.m_DRUCKBILD = CString(e.pDruckbild);
    zeile.m_GEBPKT = Ziffern(e.iPunkte);
    zeile.m_EINFACHSATZ = Eurobetrag(e.iCent);
    // The patient's fee passes through the practice, the foreign invoice is another's.
    if (!std::string_view(e.pLst).starts_with("kk") && e.cGoArt != '8') zeile.m_GOKZ = ABRECHENBAR;
    switch (e.cGoArt) {
    case 'e':
    case 'f':
    case 'h':
        zeile.m_GOWERT2 = itoc(e.iPunkte + 100);
        zeile.m_GOWERT3 = itoc(e.iPunkte - 200);
        zeile.m_GOWERT4 = itoc(e.iPunkte - 100);
        break;
    case 'p':
    case 'q':
        zeile.m_GOWERT2 = Eurobetrag(e.iCent * 9 / 10);
        zeile.m_STDFAKTOR = e.cSubArt == '1' ? CString("18000") : CString("10000");
        zeile.m_F100AEVWERT = "6";
        break;
    case 'a':
    case 'u':
        zeile.m_STDFAKTOR = "10000";
        break;
    default:
        break;
    }
    return gebuehr;
}

} // namespace

CMusterKatalog::CMusterKatalog() {
    for (const char cGoArt : {'k', 'g'}) {
        for (const SBema & bema : BEMA)
            Fuege(cGoArt, bema.pLst, BemaZeile(cGoArt, bema));
        for (const SBema & bema : BEMA_ERFUNDEN)
            Fuege(cGoArt, bema.pLst, BemaZeile(cGoArt, bema));
        // The fictitious fillings, counted under numbers of their own.
        for (const SBema & bema : BEMA)
            if (std::string_view(bema.pLst).starts_with("13"))
                for (const char * pEnde : {"0", "1"}) {
                    SGebuehr gebuehr = BemaZeile(cGoArt, bema);
                    gebuehr.zeile.m_LSTNR += pEnde[0];
                    gebuehr.zeile.m_LSTKUERZEL += pEnde[0] == '0' ? 'f' : 'i';
                    Fuege(cGoArt, (bema.pLst + std::string(pEnde)).c_str(), std::move(gebuehr));
                }
    }
    for (const SGoz & goz : GOZ)
        Fuege('q', goz.pLst, GozZeile(goz));
    for (const SErfunden & erfunden : ERFUNDEN)
        Fuege(erfunden.cGoArt, erfunden.pLst, ErfundeneZeile(erfunden));
}

void CMusterKatalog::Fuege(char cGoArt, const char * pLst, SGebuehr gebuehr) {
    m_map.emplace(std::pair(cGoArt, std::string(pLst)), std::move(gebuehr));
}

const SGebuehr & CMusterKatalog::Finde(char cGoArt, std::string_view sLstUtf8) const {
    return m_map.at({cGoArt, std::string(sLstUtf8)});
}

void CMusterKatalog::Schreibe(CMusterSchreiber & schreiber) const {
    for (const auto & [schluessel, gebuehr] : m_map)
        schreiber.Schreibe(gebuehr.zeile);
    for (const char cGoArt : {'k', 'g'})
        for (const SGeaendert & g : GEAENDERT)
            schreiber.Schreibe(
                CTGoPunkte_Fields{CString(cGoArt), AusUtf8(g.pLst), CString(g.pAb), CString(g.pPunkte)});
    for (const SPruefzeit & p : PRUEFZEITEN)
        schreiber.Schreibe(CTGoCheck_Fields{CString(p.cGoArt), AusUtf8(p.pLst), "p", CString(p.pText)});
}

// ---- point values

namespace {

constexpr const char * GRUPPEN[] = {"aok", "ersatz", "bkk", "ikk", "lkk", "knapp", "sonst"};
constexpr const char * GRUPPENNAMEN[] = {"Regionalkassen",
                                         "Ersatzkassen",
                                         "Betriebskrankenkassen",
                                         "Innungskrankenkassen",
                                         "Landwirtschaftliche Kasse",
                                         "Knappschaft",
                                         "Sonstige Kostenträger"};
constexpr int GRUPPENSATZ[] = {1000, 1012, 996, 994, 990, 1008, 1060}; // invented: permille of the base value

// Published by associations; ten-thousandths of a euro.
struct SPunktwert {
    const char * pGruppe;
    char cPwLArt;
    const char * pAb;
    int iWert;
};
constexpr SPunktwert VEROEFFENTLICHT[] = {
    {"aok", 'a', "20120401", 8904},    {"aok", 'c', "20120401", 9032},    {"aok", 'i', "20120401", 7252},
    {"aok", 'f', "20120401", 7771},    {"aok", 'a', "20160101", 10040},   {"aok", 'c', "20160101", 10940},
    {"aok", 'i', "20160101", 8833},    {"aok", 'f', "20240101", 11197},   {"aok", 'a', "20250101", 13233},
    {"ersatz", 'a', "20120401", 9588}, {"ersatz", 'c', "20120401", 9700}, {"ersatz", 'i', "20120401", 7827},
    {"ersatz", 'f', "20120401", 7771},
};

// Invented: base values by kind and day. They never stand between two published values of a group and kind.
constexpr const char * STAENDE[] = {"20020101", "20080101", "20130101", "20180101",
                                    "20220101", "20240101", "20250101"};
struct SGrundwert {
    char cPwLArt;
    int aiWert[std::size(STAENDE)];
};
constexpr SGrundwert GRUNDWERTE[] = {
    {'a', {8050, 8420, 9210, 10560, 11470, 12140, 13010}},
    {'b', {8050, 8420, 9210, 10560, 11470, 12140, 13010}},
    {'c', {8300, 8710, 9480, 11020, 12060, 12810, 13640}},
    {'d', {9100, 9500, 10100, 11200, 12300, 12900, 13500}},
    {'e', {9000, 9400, 10000, 11100, 12200, 12800, 13400}},
    {'f', {7120, 7430, 7940, 9610, 10280, 11080, 11520}},
    {'g', {7980, 8360, 9150, 10490, 11400, 12060, 12930}},
    {'h', {7900, 8270, 9050, 10380, 11270, 11930, 12790}},
    {'i', {6780, 7050, 7490, 8920, 9560, 10130, 10690}},
    {'j', {8300, 8710, 9480, 11020, 12060, 12810, 13640}},
};

// A published value of the group and kind stands on or after the day, and one on or before it.
bool Veroeffentlicht(std::string_view sGruppe, char cPwLArt, std::string_view sAb) {
    bool bDavor = false;
    bool bDanach = false;
    for (const SPunktwert & pw : VEROEFFENTLICHT)
        if (pw.pGruppe == sGruppe && pw.cPwLArt == cPwLArt) {
            bDavor = bDavor || pw.pAb <= sAb;
            bDanach = bDanach || pw.pAb >= sAb;
        }
    return bDavor && bDanach;
}

// The east value is always invented: 97 percent of the other.
CTPunktWert_Fields PunktwertZeile(const char * pGruppe, char cPwLArt, const char * pAb, int iWert,
                                  const char * pInfo) {
    return {
        CString(pAb),  CString(pGruppe), CString(cPwLArt), 'e' + itoc(iWert), 'e' + itoc(iWert * 97 / 100),
        AusUtf8(pInfo)};
}

} // namespace

std::span<const char * const> Punktwertgruppen() { return GRUPPEN; }

void SchreibePunktwerte(CMusterSchreiber & schreiber) {
    for (std::size_t i = 0; i < std::size(GRUPPEN); ++i)
        schreiber.Schreibe(CTPwGroup_Fields{CString(GRUPPEN[i]), AusUtf8(GRUPPENNAMEN[i])});
    for (const SPunktwert & pw : VEROEFFENTLICHT)
        schreiber.Schreibe(PunktwertZeile(pw.pGruppe, pw.cPwLArt, pw.pAb, pw.iWert, "veröffentlicht"));
    for (std::size_t iStand = 0; iStand < std::size(STAENDE); ++iStand)
        for (std::size_t i = 0; i < std::size(GRUPPEN); ++i)
            for (const SGrundwert & grundwert : GRUNDWERTE)
                if (!Veroeffentlicht(GRUPPEN[i], grundwert.cPwLArt, STAENDE[iStand]))
                    schreiber.Schreibe(PunktwertZeile(GRUPPEN[i], grundwert.cPwLArt, STAENDE[iStand],
                                                      grundwert.aiWert[iStand] * GRUPPENSATZ[i] / 1000,
                                                      "erfunden"));
}

// ---- lists of choices

namespace {

struct SAuswahl {
    const char * pPool;
    const char * pKey;
    const char * pText;
    const char * pExtra;
};
constexpr SAuswahl AUSWAHL[] = {
    {"gostattyp", "a", "Konservierend/chirurgisch", "1"},
    {"gostattyp", "c", "Zahnersatz", "1"},
    {"gostattyp", "d", "Parodontologie", "1"},
    {"gostattyp", "e", "Individualprophylaxe", "1"},
    {"gostattyp", "f", "Kieferorthopädie", "1"},
    {"gostattyp", "g", "Kieferbruch", "1"},
    {"gostattyp2", "h", "Implantologie", ""},
    {"gostattyp2", "x", "Nach Abrechnungsart", ""},
    {"gostattyp3", "n", "Ohne Punktwert", ""},
    {"gostattyp4", "p", "Privat sonstige", ""},
    {"hvmbudget", "1", "Konservierend/chirurgisch", "KCH"},
    {"hvmbudget", "2", "Parodontologie und Kieferbruch", "PAR"},
    {"hvmbudget", "3", "Kieferorthopädie", "KFO"},
    {"kassenarttyp", "a", "Regionalkasse", ""},
    {"kassenarttyp", "b", "Betriebskrankenkasse", ""},
    {"kassenarttyp", "e", "Ersatzkasse", ""},
    {"kassenarttyp", "i", "Innungskrankenkasse", ""},
    {"kassenarttyp", "l", "Landwirtschaftliche Kasse", ""},
    {"kassenarttyp", "k", "Knappschaft", ""},
    {"kassenarttyp", "p", "Private Versicherung", ""},
    {"kassenarttyp", "s", "Sonstiger Kostenträger", ""},
    {"kassengrptyp", "1", "Primärkassen", ""},
    {"kassengrptyp", "2", "Ersatzkassen", ""},
    {"kassengrptyp", "9", "Übrige", ""},
    {"medstatistikspalte", "1", "Primärkassen", ""},
    {"medstatistikspalte", "2", "Ersatzkassen", ""},
    {"medstatistikspalte", "9", "Übrige", ""},
    {"statistikspalte", "1", "Primärkassen, eigener Bezirk", ""},
    {"statistikspalte", "2", "Primärkassen, fremder Bezirk", ""},
    {"statistikspalte", "4", "Ersatzkassen", ""},
    {"statistikspalte", "5", "Ersatzkassen, fremder Bezirk", ""},
    {"statistikspalte", "6", "Private Versicherungen", ""},
    {"statistikspalte", "9", "Sonstige Kostenträger", ""},
    {"techlsttyp", "1", "Eigenlabor, Kassenliste", ""},
    {"techlsttyp", "2", "Fremdlabor, Kassenliste", ""},
    {"techlsttyp", "3", "Eigenlabor, frei", ""},
    {"techlsttyp", "4", "Metall", ""},
    {"techlsttyp", "7", "Technische Leistungen der Praxis", ""},
    {"techlsttyp", "8", "Fremdlaborrechnungen", ""},
};

} // namespace

void SchreibeSelectPool(CMusterSchreiber & schreiber) {
    int iLfd = 0;
    for (const SAuswahl & auswahl : AUSWAHL)
        schreiber.Schreibe(CTSelectPool_Fields{CString(auswahl.pPool), RightFix(itoc(++iLfd), 4),
                                               CString(auswahl.pKey), AusUtf8(auswahl.pText),
                                               CString(auswahl.pExtra)});
}

} // namespace orvostat
