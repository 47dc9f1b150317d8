#include "MusterKataloge.h"

#include "orvostatbs/host/Leistungsarten.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>

namespace orvostat {

namespace {

// What a branch of dentistry decides for its services. The kind of point value is the first of that name; the statistic
// kind of conservative treatment is left to the bill ("x").
struct SBereich {
    std::string_view sName;
    int iProvGrp;
    [[nodiscard]] char PwLArt() const {
        return std::ranges::find(PUNKTWERTARTEN, sName, &SBuchstabe::pName)->cBuchstabe;
    }
    [[nodiscard]] char StatArt() const {
        if (sName == "KCH") return 'x';
        return std::ranges::find(ABRECHNUNGSARTEN, sName, &SAbrechnungsart::pName)->cStatArt;
    }
};
constexpr SBereich BEREICHE[] = {{"KCH", 1}, {"IP", 2}, {"KFO", 5}, {"ZE", 4}, {"PAR", 3}, {"KBR", 4}};

const SBereich & Bereich(std::string_view sName) {
    return *std::ranges::find(BEREICHE, sName, &SBereich::sName);
}

using CZeile = CMusterDaten::CZeile;

CString Text(std::string_view sUtf8) { return AusUtf8(sUtf8); }
CString Text(char c) { return c == 0 ? CString() : CString(c); }

CString Ziffern(int i) { return i == 0 ? CString() : itoc(i); }

constexpr const char * ABRECHENBAR = "1";

// A price as a stored amount.
CString Eurobetrag(int iCent) { return iCent == 0 ? CString() : 'e' + itoc(iCent); }

SGebuehr Zeile(char cGoArt, const CZeile & zeile, std::string_view sKuerzel) {
    SGebuehr gebuehr;
    gebuehr.zeile.m_GOART = CString(cGoArt);
    gebuehr.zeile.m_LSTNR = Text(zeile["nummer"]);
    gebuehr.zeile.m_LSTKUERZEL = Text(sKuerzel);
    gebuehr.zeile.m_GOTEXT = Text(zeile["text"]);
    return gebuehr;
}

SGebuehr BemaZeile(char cGoArt, const CZeile & bema) {
    SGebuehr gebuehr = Zeile(cGoArt, bema, bema["kuerzel"]);
    const SBereich & bereich = Bereich(bema["gruppe"]);
    gebuehr.iPunkte = bema.Zahl("punkte") * 100;
    gebuehr.zeile.m_GEBPKT = itoc(gebuehr.iPunkte);
    gebuehr.zeile.m_PWLART = CString(bereich.PwLArt());
    gebuehr.zeile.m_STATART = CString(bereich.StatArt());
    gebuehr.zeile.m_F100AEVWERT = itoc(bereich.iProvGrp);
    gebuehr.zeile.m_GOKZ = ABRECHENBAR;
    if (bema["nummer"].starts_with("01")) gebuehr.zeile.m_DRUCKBILD = gebuehr.zeile.m_LSTNR;
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
SGebuehr GozZeile(const CZeile & goz) {
    SGebuehr gebuehr = Zeile('q', goz, goz["nummer"]);
    gebuehr.iPunkte = goz.Zahl("punkte");
    gebuehr.zeile.m_GOSUBART = "1";
    gebuehr.zeile.m_GEBPKT = itoc(gebuehr.iPunkte);
    gebuehr.zeile.m_PWLART = "p";
    gebuehr.zeile.m_STATART = CString(GozStatArt(goz["nummer"]));
    gebuehr.zeile.m_STDFAKTOR = "23000";
    gebuehr.zeile.m_F100AEVWERT = "6";
    gebuehr.zeile.m_GOKZ = ABRECHENBAR;
    if (goz["nummer"] == "0010") gebuehr.zeile.m_DRUCKBILD = gebuehr.zeile.m_LSTNR;
    return gebuehr;
}

// What the rows of a schedule have beside what the file says.
void SetzeArtfelder(SGebuehr & gebuehr, char cGoArt, char cSubArt) {
    CTGO_Fields & zeile = gebuehr.zeile;
    switch (cGoArt) {
    case 'e':
    case 'f':
    case 'h':
        zeile.m_GOWERT2 = itoc(gebuehr.iPunkte + 100);
        zeile.m_GOWERT3 = itoc(gebuehr.iPunkte - 200);
        zeile.m_GOWERT4 = itoc(gebuehr.iPunkte - 100);
        break;
    case 'p':
    case 'q':
        zeile.m_GOWERT2 = Eurobetrag(gebuehr.iCent * 9 / 10);
        zeile.m_STDFAKTOR = cSubArt == '1' ? CString("18000") : CString("10000");
        zeile.m_F100AEVWERT = "6";
        break;
    case 'a':
    case 'u':
        zeile.m_STDFAKTOR = "10000";
        break;
    default:
        break;
    }
}

SGebuehr WeitereZeile(const CZeile & weitere) {
    const char cGoArt = weitere.Zeichen("goart");
    const char cSubArt = weitere.Zeichen("unterart");
    SGebuehr gebuehr = Zeile(cGoArt, weitere, weitere["kuerzel"]);
    CTGO_Fields & zeile = gebuehr.zeile;
    gebuehr.iPunkte = weitere.Zahl("punkte");
    gebuehr.iCent = weitere.Zahl("cent");
    zeile.m_GOSUBART = Text(cSubArt);
    zeile.m_PWLART = Text(weitere["pwlart"]);
    zeile.m_STATART = Text(weitere["statart"]);
    zeile.m_DRUCKBILD = Text(weitere["druckbild"]);
    zeile.m_GEBPKT = Ziffern(gebuehr.iPunkte);
    zeile.m_EINFACHSATZ = Eurobetrag(gebuehr.iCent);
    // The patient's fee passes through the practice, the foreign invoice is another's.
    if (!weitere["nummer"].starts_with("kk") && cGoArt != '8') zeile.m_GOKZ = ABRECHENBAR;
    SetzeArtfelder(gebuehr, cGoArt, cSubArt);
    return gebuehr;
}

} // namespace

CMusterKatalog::CMusterKatalog() {
    const CMusterDaten bema("bema");
    for (const char cGoArt : {'k', 'g'})
        for (const CZeile & zeile : bema) {
            Fuege(cGoArt, zeile["nummer"], BemaZeile(cGoArt, zeile));
            if (zeile["nummer"].starts_with("13")) FuegeFiktive(cGoArt, zeile);
        }
    for (const CZeile & zeile : CMusterDaten("goz"))
        Fuege('q', zeile["nummer"], GozZeile(zeile));
    for (const CZeile & zeile : CMusterDaten("weitere"))
        Fuege(zeile.Zeichen("goart"), zeile["nummer"], WeitereZeile(zeile));
}

// The fictitious fillings, counted under numbers of their own.
void CMusterKatalog::FuegeFiktive(char cGoArt, const CZeile & bema) {
    for (const char cEnde : {'0', '1'}) {
        SGebuehr gebuehr = BemaZeile(cGoArt, bema);
        gebuehr.zeile.m_LSTNR += cEnde;
        gebuehr.zeile.m_LSTKUERZEL += cEnde == '0' ? 'f' : 'i';
        Fuege(cGoArt, std::string(bema["nummer"]) + cEnde, std::move(gebuehr));
    }
}

void CMusterKatalog::Fuege(char cGoArt, std::string_view sLst, SGebuehr gebuehr) {
    m_map.emplace(std::pair(cGoArt, std::string(sLst)), std::move(gebuehr));
}

const SGebuehr & CMusterKatalog::Finde(char cGoArt, std::string_view sLstUtf8) const {
    return m_map.at({cGoArt, std::string(sLstUtf8)});
}

void CMusterKatalog::Schreibe(CMusterSchreiber & schreiber) const {
    for (const auto & [schluessel, gebuehr] : m_map)
        schreiber.Schreibe(gebuehr.zeile);
    for (const CZeile & zeile : CMusterDaten("punkte_geaendert"))
        for (const char cGoArt : {'k', 'g'})
            schreiber.Schreibe(CTGoPunkte_Fields{CString(cGoArt), Text(zeile["nummer"]), Text(zeile["ab"]),
                                                 Text(zeile["punkte"])});
    for (const CZeile & zeile : CMusterDaten("pruefzeiten"))
        schreiber.Schreibe(
            CTGoCheck_Fields{Text(zeile["goart"]), Text(zeile["nummer"]), "p", Text(zeile["text"])});
}

void SchreibeNormen(CMusterSchreiber & schreiber) {
    for (const CZeile & norm : CMusterDaten("normen"))
        for (const char cGoArt : {'k', 'g'})
            schreiber.Schreibe(CTGoBudget_Fields{CString(cGoArt), Text(norm["kuerzel"]), Text(norm["ab"]),
                                                 CString(), Text(norm["rvo"]), Text(norm["vdak"]),
                                                 Text(norm["gesamt"]), Text(norm["rvo2"]),
                                                 Text(norm["vdak2"]), Text(norm["gesamt2"])});
}

// ---- point values

namespace {

// A value with four decimals, "1.0040", in ten-thousandths.
int Zehntausendstel(std::string_view sEuro) {
    std::string s(sEuro);
    return std::stoi(s.erase(s.find('.'), 1));
}

// A published value of the group and kind stands on or after the day, and one on or before it.
bool Veroeffentlicht(const CMusterDaten & werte, std::string_view sGruppe, char cPwLArt,
                     std::string_view sAb) {
    bool bDavor = false;
    bool bDanach = false;
    for (const CZeile & wert : werte)
        if (wert["gruppe"] == sGruppe && Bereich(wert["art"]).PwLArt() == cPwLArt) {
            bDavor = bDavor || wert["ab"] <= sAb;
            bDanach = bDanach || wert["ab"] >= sAb;
        }
    return bDavor && bDanach;
}

// The east value is always invented: 97 percent of the other.
CTPunktWert_Fields PunktwertZeile(std::string_view sGruppe, char cPwLArt, std::string_view sAb, int iWert,
                                  const CString & sInfo) {
    return {Text(sAb), Text(sGruppe), CString(cPwLArt), 'e' + itoc(iWert), 'e' + itoc(iWert * 97 / 100),
            sInfo};
}

} // namespace

// Invented values fill the gaps: base values by kind and day, times a permille of the group. They never stand between
// two published values of a group and kind.
void SchreibePunktwerte(CMusterSchreiber & schreiber) {
    const CMusterDaten gruppen("punktwertgruppen");
    const CMusterDaten veroeffentlicht("punktwerte");
    for (const CZeile & gruppe : gruppen)
        schreiber.Schreibe(CTPwGroup_Fields{Text(gruppe["gruppe"]), Text(gruppe["name"])});
    for (const CZeile & wert : veroeffentlicht)
        schreiber.Schreibe(PunktwertZeile(wert["gruppe"], Bereich(wert["art"]).PwLArt(), wert["ab"],
                                          Zehntausendstel(wert["wert_euro"]), "veröffentlicht"_t));
    for (const CZeile & grundwert : CMusterDaten("punktwerte_erfunden"))
        for (const CZeile & gruppe : gruppen)
            if (const char cPwLArt = grundwert.Zeichen("pwlart");
                !Veroeffentlicht(veroeffentlicht, gruppe["gruppe"], cPwLArt, grundwert["ab"]))
                schreiber.Schreibe(PunktwertZeile(gruppe["gruppe"], cPwLArt, grundwert["ab"],
                                                  grundwert.Zahl("wert") * gruppe.Zahl("promille") / 1000,
                                                  "erfunden"_t));
}

// ---- lists of choices

void SchreibeSelectPool(CMusterSchreiber & schreiber) {
    int iLfd = 0;
    for (const CZeile & auswahl : CMusterDaten("auswahl"))
        schreiber.Schreibe(CTSelectPool_Fields{Text(auswahl["pool"]), RightFix(itoc(++iLfd), 4),
                                               Text(auswahl["schluessel"]), Text(auswahl["text"]),
                                               Text(auswahl["extra"])});
}

} // namespace orvostat
