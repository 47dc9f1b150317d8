#include "MusterPraxis.h"

#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

namespace orvostat {

namespace {

constexpr SMusterBehandler BEHANDLER[] = {
    {"   1", " 1", " 1", " 1", 28, false}, {"   2", " 1", " 1", " 1", 22, false},
    {"   3", " 2", " 2", " 2", 20, false}, {"   5", " 1", " 2", " 2", 14, false},
    {"   8", " 2", " 2", " 1", 10, true},  {"  12", " 1", " 1", " 1", 6, false},
};

struct SPerson {
    const char * pPid;
    const char * pTitel;
    const char * pVorname;
    const char * pZusatz;
    const char * pName;
    const char * pGeschlecht;
};
// The order is that of the addresses: the owners first, then the treaters as above, then the staff.
constexpr SPerson PERSONEN[] = {
    {"ZA1", "Dr.", "Käthe", "", "Böhmländer", "f"},
    {"ZA2", "Dr. med. dent.", "Jörg", "von", "Süßmilch", "m"},
    {"ZA3", "Dr.", "Änne", "", "Großkreutz", "f"},
    {"ZA4", "", "Björn", "", "Kühnapfel", "m"},
    {"ZA5", "Dr.", "Zoë", "", "Weißbrod", "f"},
    {"ZA6", "", "Lutz", "", "Dürrbeck", "m"},
    {"ZF1", "", "Rosemarie", "", "Häberle-Öhring", "f"},
    {"ZF2", "", "Günay", "", "Yildizsöz", "f"},
    {"ZA9", "Dr.", "Ottokar", "", "Altmühl", "m"},
};
constexpr int INHABER = 2;

struct SLebZeile {
    const char * pPid;
    const char * pAnr;
    const char * pProvision; // five characters per commission group
    int iAbschlagGoz;
    int iAbschlagU;
    const char * pInfo;
};
constexpr SLebZeile LEB[] = {
    {"ZA1", "Inhaberin", "    0    0    0    0    0    0", 0, 0, ""},
    {"ZA2", "Inhaber", "    0    0    0    0    0    0", 0, 0, ""},
    {"ZA3", "Oberärztin", "   25   20   25   30    0   30", 500, 250, "Teilzeit"},
    {"ZA4", "", "   22   18   22   27    0   27", 0, 0, ""},
    {"ZA5", "Kieferorthopädin", "    0    0    0    0   35   35", 1000, 0, ""},
    {"ZA6", "Assistenzarzt", "   15   15   15   15    0   15", 0, 500, "Befristet"},
};

// Settings of the practice; the group has three places.
struct SParameter {
    const char * pGruppe;
    const char * pKuerzel;
    const char * pWert;
};
constexpr SParameter PARAMETER[] = {
    {"  0", "mahnfrist", "30"},
    {"  0", "praxisname", "Zahnärzte am Mühltor"},
    {"  0", "showdelleb", "0"},
    // Replaced services: behind two characters the replacement, behind a blank what it replaces; "0" is switched off.
    {" 54", "01Rö5", "1 Rö8"},
    {" 54", "02X2", "1 X3"},
    {" 54", "03L1", "0 L2"},
};

// Text blocks by which a material was agreed outside of the insurer's list.
constexpr const char * TEXTBAUSTEINE[][3] = {
    {"BGR01", "Abweichend von der Regelversorgung", "wurde eine Vollverblendung vereinbart."},
    {"BGR02", "Auf Wunsch des Patienten", "Ausführung in Keramik."},
    {"BGR03", "Erhöhter Aufwand", "bei stark gekippten Pfeilerzähnen."},
};

CString Nummer(int i, int iStellen) { return RightFix(itoc(i), iStellen); }

CTAdr_Fields Adresse(int iNr, const char * pArt, const SPerson & person) {
    CTAdr_Fields adr;
    adr.m_ADRNR = Nummer(iNr, 10);
    adr.m_ADRLFD = " 1";
    adr.m_ADRART = CString(pArt);
    adr.m_PATTITEL = AusUtf8(person.pTitel);
    adr.m_PATVORNAME = AusUtf8(person.pVorname);
    adr.m_PATZUSATZ = AusUtf8(person.pZusatz);
    adr.m_PATNAME = AusUtf8(person.pName);
    adr.m_PATSTRASSE = AusUtf8("Am Mühltor " + std::to_string(iNr));
    adr.m_PATPLZ = "99998";
    adr.m_PATORT = "Münzbrück"_t;
    adr.m_GESCHLECHT = CString(person.pGeschlecht);
    adr.m_TELEFON1 = CString(std::string_view("0990 " + std::to_string(4000 + iNr)));
    return adr;
}

void SchreibeInhaber(CMusterSchreiber & schreiber) {
    schreiber.Schreibe(CTPraxis_Fields{" 1", "Zahnärzte am Mühltor"_t, "11"});
    schreiber.Schreibe(CTPraxis_Fields{" 2", "Zahnärzte am Mühltor, Filiale Süd"_t, "11"});
    schreiber.Schreibe(CTMandant_Fields{" 1", "Dr. Böhmländer"_t, "Stammpraxis"_t, " 1 1 1", "1", "20050401",
                                        "", "z", Nummer(1, 10), ""});
    schreiber.Schreibe(CTMandant_Fields{" 2", "Dr. von Süßmilch"_t, "Filiale"_t, " 2 2 2", "0", "", "F", "z",
                                        Nummer(2, 10), ""});
}

void SchreibePersonen(CMusterSchreiber & schreiber) {
    int iAdrNr = 1;
    for (int i = 0; i < INHABER; ++i)
        schreiber.Schreibe(Adresse(iAdrNr++, "m", PERSONEN[i]));
    for (const SPerson & person : PERSONEN) {
        schreiber.Schreibe(CTPersonal_Fields{CString(person.pPid), Nummer(iAdrNr, 10)});
        schreiber.Schreibe(Adresse(iAdrNr++, "w", person));
    }
}

void SchreibeBehandler(CMusterSchreiber & schreiber) {
    for (std::size_t i = 0; i < std::size(BEHANDLER); ++i) {
        const SMusterBehandler & b = BEHANDLER[i];
        const SLebZeile & l = LEB[i];
        CTLeb_Fields leb{CString(b.pNr),       AusUtf8(l.pAnr),      CString(l.pPid),
                         CString(b.pMdKasse),  CString(b.pMdPrivat), CString(l.pProvision),
                         itoc(l.iAbschlagGoz), itoc(l.iAbschlagU),   b.bKfo ? "1" : "",
                         AusUtf8(l.pInfo),     CString(b.pPraxisId), ""};
        schreiber.Schreibe(leb);
    }
    // One who has left.
    schreiber.Schreibe(
        CTLeb_Fields{"  90", "ausgeschieden"_t, "ZA9", " 1", " 1", "", "0", "0", "", "", " 1", "1"});
}

} // namespace

std::span<const SMusterBehandler> MusterBehandler() { return BEHANDLER; }

void SchreibePraxis(CMusterSchreiber & schreiber) {
    static_assert(std::size(BEHANDLER) == std::size(LEB));
    SchreibeInhaber(schreiber);
    SchreibePersonen(schreiber);
    SchreibeBehandler(schreiber);
    for (const SParameter & p : PARAMETER)
        schreiber.Schreibe(CTParPool_Fields{CString(p.pGruppe), AusUtf8(p.pKuerzel), AusUtf8(p.pWert)});
    for (const auto & apTexte : TEXTBAUSTEINE)
        for (int i = 1; i < 3; ++i)
            schreiber.Schreibe(CTTbEntry_Fields{CString(apTexte[0]), Nummer(i, 3), AusUtf8(apTexte[i])});
}

} // namespace orvostat
