#include "accu/AccuTest.h"

#include <iterator>
#include <sstream>
#include <string>

namespace {

using namespace orvostat;

// ---- the list of fields

const char * Kuerzel(const CString &) { return "s"; }
const char * Kuerzel(const std::vector<CString> &) { return "v"; }
const char * Kuerzel(CChar) { return "c"; }
const char * Kuerzel(bool) { return "b"; }
const char * Kuerzel(KZVKFO) { return "k"; }
const char * Kuerzel(int) { return "i"; }
const char * Kuerzel(char) { return "z"; }
const char * Kuerzel(std::uint32_t) { return "u"; }

// "Name:kind", with "=1" where the start is anything but empty, and "<Setter" where that is not the name: a digit
// behind it is the argument's number, "*" an accessor that does more than store.
template <class T>
std::string Zeile(const std::string & sName, const T & start, const std::string & sSetter) {
    return sName + ':' + Kuerzel(start) + (start == T() ? "" : "=1") +
           (sSetter == sName ? "" : '<' + sSetter);
}

constexpr const char * FELDER = R"(
AbDatum:s<Zeitraum1 BisDatum:s<Zeitraum2 Mandant:s<* Lebs:v<* Patient:s<* GoArt:c Lst:s AbrArt:s
Privat:c Erfasser:s PwLArt:s Plan:s KasKuerzel:s<Kasse KasStat:s KasMedStat:s KasArt:s
PatSelekt:s<Selektion ArtStat:s NurGesetzlicheKassen:b OhneLabLst:b OnlyAbrechenbare:b RVOFremd:b
ErsatzFremd:b UEWML:b UEWOL:b UEWJV:b KFO:k MitFremd:b MitSonst:b TrennSonst:b NoChangeMdId:b OhneIP:b
OhneKchSach:b IsAbgerechnet:b IsErfasst:b ELabChecked:b<ELab GLabChecked:b<GLab FiktivChecked:b<Fiktiv
Sortierung:c TecGoArten:s TecGoSubArten:i PlanArten:s PatAnrede:s PatUeber:s<* RisikoAnamnese:s MFR:s
Wso:s RecallArt:s<* RecallIntervall:s<* RecallLast:s<* AlterVon:s<Alter1 AlterBis:s<Alter2
GeburtstagVon:s<Geburtstag1 GeburtstagBis:s<Geburtstag2 ErsterBesuchVon:s<ErsterBesuch1
ErsterBesuchBis:s<ErsterBesuch2 LetzterBesuchVon:s<LetzterBesuch1 LetzterBesuchBis:s<LetzterBesuch2
Plz:s<PlzOrt1 Ort:s<PlzOrt2 Strasse:s KvkVon:s<KvkDatum1 KvkBis:s<KvkDatum2 KvkFehlt:b KvkDurchzug:b
KvkMev:b KvkSchein:b<Schein EEB:b KvkRsa:b<Rsa GebuehrenBefreit:b UeberwArzt:s UeberwAdrSubArt:c
HausArzt:s OhneLstVon:s<OhneLst1 OhneLstBis:s<OhneLst2 HatLstArt:i<* OhneLstArt:i<* HatLstAbg:i<*
OhneLstAbg:i<* StdKTraeger:z<* Telefon:s Kassenwechsel:s Fragebogen:s PatTodoVon:s<PatTodo1
PatTodoBis:s<PatTodo2 PatInfoArt:s PatTodoLeb:s TerminVon:s<Termin1 TerminBis:s<Termin2 TerminSkip:s
Fruechte:s Fallbesonderheit:s IndexMarkers:u ChHatLst:b ChOhneLst:b ChErsterBesuch:b ChLetzterBesuch:b
ChKvk:b ChGeburtstag:b ChAlter:b ChSelektion:b ChRisikoAnamnese:b ChPlzOrt:b ChStrasse:b ChAnrede:b
ChUeberwArzt:b ChHausArzt:b ChKasse:b ChRecall:b ChKTraeger:b ChTelefon:i ChKassenwechsel:b ChRgName:b
ChFruehereNamen:b ChVerstorben:b ChFragebogen:b ChVIP:b ChPatTodo:b ChTermin:b ChFruechte:b
ChFallbesonderheit:b ChCAVE:b ChIndexMarker:b ChEPatNr:b ChAdrIdR:b ChEmoji:b MitDM:b=1 NurMitMwSt:b
TecMitMwSt:b ChNurKasAnteil:b ChVorjahr:b GipsArt:z<* Laborkunde:s ProzPrivatSachkosten:i
RechSelectDate:b MitRZPaket:b MitKCHPaket:b MitKBRPaket:b MitPARPaket:b MitKFOPaket:b MitZEPaket:b
MitMEDPaket:b MitKCFall:b MitKBRFall:b MitPARFall:b MitZahlungsweg:b Arzt:b<* Pflegegrad:s
EndePflegegradVon:s EndePflegegradBis:s PraxisId:s<* Chargennummer:s
)";

std::vector<std::string> Woerter(const std::string & s) {
    std::istringstream ein(s);
    return {std::istream_iterator<std::string>(ein), {}};
}

class SelektionTest : public CAccuTest {
protected:
    // Gives every field a value that is not its start, each by its own setter.
    void SetzeAlles();
    void SetzeEigene();
};

TEST_F(SelektionTest, FelderStehenInIhrerReihenfolgeMitIhremStart) {
    std::vector<std::string> vIst;
    const SSelektion & s = m_accu.Selektion();
#define FELD(TYP, NAME, SETTER, START) vIst.push_back(Zeile(#NAME, s.NAME, #SETTER));
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    vIst.push_back(Zeile(#ERSTES, s.ERSTES, #SETTER "1"));                                                   \
    vIst.push_back(Zeile(#ZWEITES, s.ZWEITES, #SETTER "2"));
#define EIGEN(TYP, NAME, START) vIst.push_back(Zeile(#NAME, s.NAME, "*"));
#include "orvostatbs/accu/Selektion.def"
    EXPECT_EQ(vIst, Woerter(FELDER));
}

// ---- setters, getters, Clear_Selekt

CString Anders(const CString &) { return "x"; }
CChar Anders(CChar) { return 'x'; }
bool Anders(bool bStart) { return !bStart; }
KZVKFO Anders(KZVKFO) { return KZVKFO_NUR; }
int Anders(int) { return 7; }
std::uint32_t Anders(std::uint32_t) { return 0x80000001; }

void SelektionTest::SetzeEigene() {
    m_accu.SetMandant("1");
    m_accu.SetLebs({"  5"});
    m_accu.SetPatient("1");
    m_accu.SetPatUeber("x");
    m_accu.SetRecallData("*", "6", "20240101");
    m_accu.SetHatLstArt(1);
    m_accu.SetOhneLstArt(2);
    m_accu.SetHatLstAbg(3);
    m_accu.SetOhneLstAbg(4);
    m_accu.SetStdKTraeger("k");
    m_accu.SetGipsArt("g");
    m_accu.SetPraxisId("2");
    Schreibe<CTMandant>({.m_MDID = " 1", .m_MDART = "b"});
    dbMKGVersion = true;
    m_accu.SetArzt(" 1");
}

void SelektionTest::SetzeAlles() {
#define FELD(TYP, NAME, SETTER, START)                                                                       \
    m_accu.Set##SETTER(Anders(m_accu.Get##NAME()));                                                          \
    EXPECT_EQ(m_accu.Get##NAME(), Anders(SSelektion().NAME)) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    m_accu.Set##SETTER("von", "bis");                                                                        \
    EXPECT_EQ(m_accu.Get##ERSTES(), "von"_t) << #ERSTES;                                                     \
    EXPECT_EQ(m_accu.Get##ZWEITES(), "bis"_t) << #ZWEITES;
#define EIGEN(TYP, NAME, START)
#include "orvostatbs/accu/Selektion.def"
    SetzeEigene();
    const SSelektion & s = m_accu.Selektion();
    const SSelektion start;
#define FELD(TYP, NAME, SETTER, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#define PAAR(SETTER, ERSTES, ZWEITES)
#define EIGEN(TYP, NAME, START) EXPECT_NE(s.NAME, start.NAME) << #NAME;
#include "orvostatbs/accu/Selektion.def"
}

TEST_F(SelektionTest, ClearSelektLaesstNurZweiFelderStehen) {
    SetzeAlles();
    SSelektion erwartet;
    erwartet.OhneKchSach = true;
    erwartet.Arzt = true;
    m_accu.Clear_Selekt();
    EXPECT_TRUE(m_accu.Selektion() == erwartet);
    EXPECT_TRUE(m_accu.GetMitDM());
}

TEST_F(SelektionTest, ClearSelektSetztDieBuchfuehrungZurueck) {
    m_accu.m_lAnzHits = 5;
    m_accu.m_bAlleLebsPassen = true;
    m_accu.m_sLebsString = "'1'";
    m_accu.m_sKzvNr = "04";
    m_accu.m_vLstErsatz.resize(1);
    m_accu.m_vBehHits.resize(1);
    m_accu.Clear_Selekt();
    EXPECT_EQ(m_accu.m_lAnzHits, 0);
    EXPECT_FALSE(m_accu.m_bAlleLebsPassen);
    EXPECT_EQ(m_accu.m_sLebsString, ""_t);
    EXPECT_EQ(m_accu.m_sKzvNr, ""_t);
    EXPECT_TRUE(m_accu.m_vLstErsatz.empty());
    EXPECT_EQ(m_accu.m_vBehHits.size(), 1u);
}

TEST_F(SelektionTest, KopieUndZuweisungNehmenAlleFelder) {
    SetzeAlles();
    const CStatAccu kopie(m_accu);
    CStatAccu ziel;
    ziel = m_accu;
    EXPECT_TRUE(kopie.Selektion() == m_accu.Selektion());
    EXPECT_TRUE(ziel.Selektion() == m_accu.Selektion());
}

// ---- setters that do more than store

TEST_F(SelektionTest, MandantUndPraxisIdHabenZweiStellen) {
    const struct {
        CString sGesetzt, sErwartet;
    } vFaelle[] = {
        {"", ""},    {"7", " 7"}, {" 7", " 7"},  {"12", "12"}, {"007", " 7"},
        {"0", " 0"}, {" ", " 0"}, {"abc", " 0"}, {"5a", " 5"}, {"123", "123"},
    };
    for (const auto & fall : vFaelle) {
        m_accu.SetMandant(fall.sGesetzt);
        m_accu.SetPraxisId(fall.sGesetzt);
        EXPECT_EQ(m_accu.GetMandant(), fall.sErwartet) << fall.sGesetzt.Utf8();
        EXPECT_EQ(m_accu.GetPraxisId(), fall.sErwartet) << fall.sGesetzt.Utf8();
    }
}

TEST_F(SelektionTest, PatientHatZehnStellen) {
    const struct {
        CString sGesetzt, sErwartet;
    } vFaelle[] = {
        {"", ""},
        {"4711", "      4711"},
        {"  4711  ", "      4711"},
        {"0", "         0"},
        {" ", "         0"},
        {"abc", "         0"},
        {"47-11", "      4711"},
        {"12345678901", "2345678901"},
    };
    for (const auto & fall : vFaelle) {
        m_accu.SetPatient(fall.sGesetzt);
        EXPECT_EQ(m_accu.GetPatient(), fall.sErwartet) << fall.sGesetzt.Utf8();
    }
}

TEST_F(SelektionTest, ZaehlerWerdenNieNegativ) {
    m_accu.SetHatLstArt(-3);
    m_accu.SetOhneLstArt(-1);
    m_accu.SetHatLstAbg(std::numeric_limits<int>::min());
    m_accu.SetOhneLstAbg(-2);
    EXPECT_EQ(m_accu.GetHatLstArt(), 0);
    EXPECT_EQ(m_accu.GetOhneLstArt(), 0);
    EXPECT_EQ(m_accu.GetHatLstAbg(), 0);
    EXPECT_EQ(m_accu.GetOhneLstAbg(), 0);
    m_accu.SetHatLstArt(1);
    m_accu.SetOhneLstArt(2);
    m_accu.SetHatLstAbg(3);
    m_accu.SetOhneLstAbg(4);
    EXPECT_EQ(m_accu.GetHatLstArt(), 1);
    EXPECT_EQ(m_accu.GetOhneLstArt(), 2);
    EXPECT_EQ(m_accu.GetHatLstAbg(), 3);
    EXPECT_EQ(m_accu.GetOhneLstAbg(), 4);
}

TEST_F(SelektionTest, ZeichenfelderBehaltenDasErsteZeichen) {
    m_accu.SetGipsArt("ab");
    m_accu.SetStdKTraeger("ük");
    EXPECT_EQ(m_accu.GetGipsArt(), "a"_t);
    EXPECT_EQ(m_accu.GetStdKTraeger(), "ü"_t);
    m_accu.SetGipsArt("");
    m_accu.SetStdKTraeger("");
    EXPECT_EQ(m_accu.GetGipsArt(), ""_t);
    EXPECT_EQ(m_accu.GetStdKTraeger(), ""_t);
}

TEST_F(SelektionTest, RecallFelderStehenInIhrerReihenfolge) {
    m_accu.SetRecallData("3", "6", "20240101");
    EXPECT_EQ(m_accu.GetRecallArt(), "3"_t);
    EXPECT_EQ(m_accu.GetRecallIntervall(), "6"_t);
    EXPECT_EQ(m_accu.GetRecallLast(), "20240101"_t);
}

// ---- questions that the selection answers itself

TEST_F(SelektionTest, LebsListeStehtInApostrophen) {
    EXPECT_EQ(m_accu.GetLebsListe(), ""_t);
    m_accu.SetLebs({"  5"});
    EXPECT_EQ(m_accu.GetLebsListe(), "'  5'"_t);
    m_accu.SetLebs({"", "  5", " 12"});
    EXPECT_EQ(m_accu.GetLebsListe(), "'','  5',' 12'"_t);
}

TEST_F(SelektionTest, PunktwertArtenUndAbrechenbare) {
    EXPECT_TRUE(m_accu.PwLArtOk('1'));
    EXPECT_TRUE(m_accu.PwLArtOk(0));
    m_accu.SetPwLArt("13");
    EXPECT_TRUE(m_accu.PwLArtOk('1'));
    EXPECT_TRUE(m_accu.PwLArtOk('3'));
    EXPECT_FALSE(m_accu.PwLArtOk('2'));
    EXPECT_FALSE(m_accu.PwLArtOk(0));

    EXPECT_TRUE(m_accu.OnlyAbrechenbareOk('0'));
    m_accu.SetOnlyAbrechenbare(true);
    EXPECT_TRUE(m_accu.OnlyAbrechenbareOk('1'));
    EXPECT_FALSE(m_accu.OnlyAbrechenbareOk('0'));
    EXPECT_FALSE(m_accu.OnlyAbrechenbareOk(0));
}

TEST_F(SelektionTest, TechnischeUnterarten) {
    const struct {
        char cGoArt, cGoSubArt;
        bool abErwartet[4]; // by the bits of TecGoSubArten
    } vFaelle[] = {
        {'7', '1', {false, true, false, true}},   {'7', '7', {false, true, false, true}},
        {'7', '8', {false, false, false, false}}, {'7', '0', {false, false, false, false}},
        {'7', 'a', {false, false, true, true}},   {'7', 'c', {false, false, true, true}},
        {'7', 'i', {false, false, true, true}},   {'7', 'k', {false, false, true, true}},
        {'7', 'p', {false, false, true, true}},   {'7', 's', {false, false, true, true}},
        {'7', 'w', {false, false, true, true}},   {'7', 'A', {false, false, false, false}},
        {'7', 0, {false, false, false, false}},   {'8', '8', {true, true, true, true}},
        {0, 0, {true, true, true, true}},
    };
    for (const auto & fall : vFaelle)
        for (const int iBits : {0, 1, 2, 3, 4, 7}) {
            CBehHitLine hit;
            hit.GOART = fall.cGoArt;
            hit.GOSUBART = fall.cGoSubArt;
            m_accu.SetTecGoSubArten(iBits);
            EXPECT_EQ(m_accu.IsTecGoSubArtOK(hit), fall.abErwartet[iBits & 3])
                << fall.cGoArt << fall.cGoSubArt << iBits;
        }
}

} // namespace
