#include "orvostatbs/hvm/HVMCf.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

#include <algorithm>
#include <array>
#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {

namespace {

// Short code and value of a row of group 53.
using CReihen = std::vector<std::pair<std::string, std::string>>;
using FSpeicher = std::shared_ptr<CZeilenspeicher> (*)(const std::filesystem::path & verzeichnis);

// Of names and selections, or of first and last days.
template <class T> T Paare(const CReihen & vPaare) {
    T ziel;
    for (const auto & [sA, sB] : vPaare)
        ziel.insert(ziel.end(), {AusUtf8(sA), AusUtf8(sB)});
    return ziel;
}
constexpr auto Auswahl = &Paare<std::map<CString, CString>>;
constexpr auto Urlaube = &Paare<std::vector<std::pair<CString, CString>>>;

std::shared_ptr<CZeilenspeicher> Memory(const std::filesystem::path &) {
    return std::make_shared<CMemorySpeicher>();
}

std::shared_ptr<CZeilenspeicher> Sqlite(const std::filesystem::path & verzeichnis) {
    const std::filesystem::path datei = verzeichnis / "praxis.db";
    CString sMeldung;
    return CSqliteSpeicher::OeffneDatei(datei.string(), exists(datei) ? EModus::Schreiben : EModus::Neu,
                                        sMeldung);
}

class HVMCfBasis : public CHostTest {
protected:
    ~HVMCfBasis() override {
        dbDatabase.Verbinde(nullptr);
        dbDatabaseRO.Verbinde(nullptr);
    }
    void Verbinde(std::shared_ptr<CZeilenspeicher> pSpeicher) {
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(std::move(pSpeicher));
    }
    // The group's rows become these.
    static void Schreibe(const CReihen & vReihen) {
        ASSERT_EQ(dbDatabase.Speicher()->Beginne(), 0);
        CTParPool pool(dbDatabase);
        pool.GetAll();
        (void)pool.DeleteRows(); // there may be none
        for (const auto & [sKuerzel, sWert] : vReihen) {
            pool.m_GRUPPE = "53";
            pool.m_KUERZEL = AusUtf8(sKuerzel);
            pool.m_WERT = AusUtf8(sWert);
            ASSERT_EQ(pool.Write(), 0);
        }
        ASSERT_EQ(dbDatabase.Speicher()->Beende(true), 0);
    }
    // The rows whose short code begins like that.
    static CReihen Lies(const std::string & sVorsatz = "") {
        CReihen vReihen;
        CTParPool pool(dbDatabase);
        pool.m_GRUPPE = "53";
        for (int i = pool.GetByK1(MATCH_ALLE); i == 0; i = pool.Next())
            if (pool.m_KUERZEL.Utf8().starts_with(sVorsatz))
                vReihen.emplace_back(pool.m_KUERZEL.Utf8(), pool.m_WERT.Utf8());
        return vReihen;
    }
};

// What does not depend on the store.
class HVMCf : public HVMCfBasis {
protected:
    HVMCf() { Verbinde(Memory({})); }
};

class HVMCfSpeicher : public HVMCfBasis, public ::testing::WithParamInterface<FSpeicher> {
protected:
    HVMCfSpeicher() { Verbinde(GetParam()(m_verzeichnis)); }
};
INSTANTIATE_TEST_SUITE_P(Speicher, HVMCfSpeicher, ::testing::Values(&Memory, &Sqlite),
                         [](const auto & fall) { return fall.param == &Memory ? "Memory" : "Sqlite"; });

// The value of a switch by its place in the list.
int Wert(const CHVMCf & cf, std::size_t i) {
    const SHvmSchalter & schalter = HVM_SCHALTER[i];
    return schalter.pFlag ? cf.*schalter.pFlag : cf.*schalter.pZahl;
}

// A configuration with something in every field, and the rows that it makes.
void Fuelle(CHVMCf & cf) {
    cf.m_bKCHMitKFO = cf.m_bMitBPG9 = cf.m_bPARNiedersachsen = true;
    cf.m_bEinstell16 = false;
    cf.m_iEinstell14 = 7;
    cf.m_abFeiertag[0] = cf.m_abFeiertag[8] = true;
    CHVMBgParam kch;
    kch.m_sMandant = "01";
    kch.m_cArt = 'c';
    kch.m_mSel['g'] = Auswahl({{"", ""}, {"name", "x1"}, {"alt", "y|2"}});
    kch.m_mSel['e'] = Auswahl({{"", "Kons"}});
    kch.m_iWert = -12;
    kch.m_bAktiv = true;
    kch.m_iBw = 4711;
    CHVMBgParam blank = kch;
    blank.m_cArt = ' ';
    blank.m_bBudget = true;
    blank.m_mSel = {{'z', Auswahl({{"", ""}})}};
    CHVMBgParam andere = kch;
    andere.m_sMandant = "2"; // the key has two places
    andere.m_mSel = {{'n', Auswahl({{"b", "x"}})}};
    andere.m_iBw = 0;
    cf.m_vBgParam = {kch, blank, andere};
    CHVMUrParam jahr;
    jahr.m_sMandant = "01";
    jahr.m_sJahr = "20240101";
    jahr.m_abArbeitstag[2] = false;
    jahr.m_vUrlaub = Urlaube({{"20240701", "20240712"}, {"20241223", "20241231"}});
    cf.m_vUrParam = {jahr};
    cf.m_vLeistungen = {"01", "04", "107a", "Ä1", "12", "13a", "13b", "IP1", "IP2", "IP4", "ab", "40"};
}

const CReihen REIHEN = {
    {"at-012024", "11011000000000000000"},
    {"be-01c", "Kons|0|-12|1|"},
    {"bg-01c", "e|0|-12|1|"},
    {"bg-01c01", "y|2|alt"},
    {"bg-01c02", "x1|name"},
    {"bn- 2c", "e|0|-12|1|"},
    {"bn- 2c01", "x|b"},
    {"bw- 2", "0"},
    {"bw-01", "4711"},
    {"bz-01 ", "|1|-12|1|"},
    {"einstell", "010000000000007000001"},
    {"einstellx", "00011000000000010000"},
    {"feiertag", "10000000100000000000"},
    {"leistung00", "01     04     107a   Ä1     12     13a    13b    IP1    IP2    IP4    ab     "},
    {"leistung01", "40     "},
    {"ur-0120240", "2024070120240712"},
    {"ur-0120241", "2024122320241231"},
};

// ---- writing and reading back

TEST_P(HVMCfSpeicher, SchreibtLiestUndAendertJedeReihe) {
    CHVMCf soll;
    Fuelle(soll);
    EXPECT_FALSE(soll.Gespeichert());
    EXPECT_TRUE(soll.WriteParPool() && soll.Gespeichert() && soll.WriteFt() && soll.Gespeichert());
    EXPECT_EQ(Lies(), REIHEN);

    CHVMCf cf;
    EXPECT_TRUE(cf.ExistHVMConf() && cf.ReadEi() && cf.ReadFt() && cf.ReadBg("01") && cf.ReadBg(" 2"));
    EXPECT_TRUE(cf.ReadUr("01") && cf.ReadLs());
    for (std::size_t i = 0; i < std::size(HVM_SCHALTER); ++i)
        EXPECT_EQ(Wert(cf, i), Wert(soll, i)) << HVM_SCHALTER[i].pName;
    EXPECT_TRUE(std::ranges::equal(cf.m_abFeiertag, soll.m_abFeiertag));
    EXPECT_EQ(cf.m_sFeiertag, "10000000100000000000"_t);
    EXPECT_EQ(cf.m_vUrParam, soll.m_vUrParam);
    EXPECT_EQ(cf.m_vLeistungen, soll.m_vLeistungen);
    ASSERT_EQ(cf.m_vBgParam.size(), 34u);
    // An empty selection is read as "e", and a name begins behind the first separator.
    soll.m_vBgParam[0].m_mSel['g'] = Auswahl({{"", "e"}, {"name", "x1"}, {"2|alt", "y"}});
    EXPECT_EQ(cf.m_vBgParam[0], soll.m_vBgParam[0]);
    EXPECT_EQ(cf.m_vBgParam[static_cast<std::size_t>(cf.FindBgParam("01", ' '))], soll.m_vBgParam[1]);
    EXPECT_EQ(cf.m_vBgParam[16].m_cArt, '9');
    EXPECT_EQ(cf.m_vBgParam[17].m_sMandant, " 2"_t);
    EXPECT_EQ(cf.m_vBgParam[17].m_iBw, 0);

    cf.m_vBgParam.resize(17); // rows of other owners stay
    cf.m_vBgParam[0].m_mSel['g'] = Auswahl({{"", "e"}});
    cf.m_vUrParam[0].m_vUrlaub.pop_back();
    cf.m_vLeistungen = {"04"};
    cf.WriteParPool();
    CReihen vReihen = REIHEN;
    vReihen[13].second = "04     ";
    for (const int iWeg : {16, 14, 4, 3})
        vReihen.erase(vReihen.begin() + iWeg);
    EXPECT_EQ(Lies(), vReihen);
}

// Rows that stand twice are replaced by one.
TEST_P(HVMCfSpeicher, DoppelteReihenWerdenEine) {
    Schreibe({{"feiertag", "1"}, {"feiertag", "01"}, {"feiertag2", "bleibt"}});
    CHVMCf cf;
    cf.WriteFt();
    EXPECT_EQ(Lies(), (CReihen{{"feiertag", "00000000000000000000"}, {"feiertag2", "bleibt"}}));
}

// ---- switches

// In field order: row and place, and getter.
constexpr std::pair<char, int> STELLEN[] = {
    {'e', 0},  {'e', 1},  {'e', 2},  {'e', 3},  {'e', 10}, {'e', 11}, {'x', 8},  {'e', 13},
    {'e', 4},  {'e', 5},  {'e', 6},  {'e', 7},  {'e', 8},  {'e', 9},  {'x', 6},  {'e', 12},
    {'e', 14}, {'e', 15}, {'e', 16}, {'e', 17}, {'e', 20}, {'e', 18}, {'e', 19}, {'x', 7},
    {'x', 12}, {'x', 0},  {'x', 1},  {'x', 2},  {'x', 3},  {'x', 4},  {'x', 5},  {'x', 9},
    {'x', 10}, {'x', 11}, {'x', 13}, {'x', 14}, {'x', 15}};
using FGetter = bool (CHVMCf::*)() const;
template <class... F> std::vector<FGetter> Liste(F... fGetter) { return {fGetter...}; }
const std::vector<FGetter> GETTER =
    Liste(&CHVMCf::KBRMitLab, &CHVMCf::KCHMitKFO, &CHVMCf::KCHMitIP, &CHVMCf::KFOMitLab, &CHVMCf::KFOMitIP,
          &CHVMCf::KFOMitSach, &CHVMCf::KFONurRoe, &CHVMCf::KFOMitNeufall, &CHVMCf::MitBKS,
          &CHVMCf::MitSonstKas, &CHVMCf::PARMitLab, &CHVMCf::PrimaerTrennung, &CHVMCf::ErsatzTrennung,
          &CHVMCf::RVOFremdTrennung, &CHVMCf::ErsatzFremdTrennung, &CHVMCf::MitFremd, nullptr, nullptr,
          nullptr, &CHVMCf::MitWso4, &CHVMCf::MitBPG9, &CHVMCf::MitKKGeb, &CHVMCf::PARZuKCH,
          &CHVMCf::KBRZuKCH, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
          &CHVMCf::KBRFallgruppen, nullptr, &CHVMCf::PARFallgruppen3, &CHVMCf::PARNiedersachsen);

TEST_F(HVMCf, OhneReihenStehenDieAnfangswerte) {
    CHVMCf cf;
    for (const SHvmSchalter & schalter : HVM_SCHALTER) // all upside down
        if (schalter.pFlag) cf.*schalter.pFlag = !schalter.bStart;
    cf.m_iEinstell14 = 9;
    cf.m_abFeiertag[3] = true;
    EXPECT_FALSE(cf.ExistHVMConf() || cf.ReadEi() || cf.ReadFt() || cf.m_abFeiertag[3]);
    cf.WriteParPool();
    EXPECT_EQ(Lies(),
              (CReihen{{"einstell", "000000000000000010000"}, {"einstellx", "00011000000000000000"}}));
}

// A "1" at a place turns on the switch of that place, its getter, and nothing else.
TEST_F(HVMCf, JederSchalterHatSeineStelle) {
    ASSERT_EQ(std::size(HVM_SCHALTER), std::size(STELLEN));
    ASSERT_EQ(std::size(HVM_SCHALTER), std::size(GETTER));
    for (std::size_t i = 0; i < std::size(STELLEN); ++i) {
        const auto [cZeile, iStelle] = STELLEN[i];
        CReihen vReihen = {{"einstell", std::string(21, '0')}, {"einstellx", std::string(20, '0')}};
        vReihen[cZeile == 'x'].second[static_cast<std::size_t>(iStelle)] = '1';
        Schreibe(vReihen);
        CHVMCf cf;
        EXPECT_TRUE(cf.ReadEi());
        for (std::size_t k = 0; k < std::size(STELLEN); ++k) {
            SCOPED_TRACE(std::string(HVM_SCHALTER[i].pName) + " set, asked " + HVM_SCHALTER[k].pName);
            EXPECT_EQ(Wert(cf, k), k == i ? 1 : 0);
            EXPECT_EQ(GETTER[k] && (cf.*GETTER[k])(), GETTER[k] && k == i);
        }
        cf.WriteParPool();
        EXPECT_EQ(Lies(), vReihen);
    }
}

TEST_F(HVMCf, AlteUndFalscheWerteDerErstenReihe) {
    constexpr struct {
        const char * pWert;
        bool bBPG9, bEinstell16;
        int iEinstell14;
        bool bKBRMitLab;
    } FAELLE[] = {
        {"00000000000000000000", true, false, 0, false},    // 20 characters: an older row
        {"0000000000000000000001", false, false, 0, false}, // further characters are ignored
        {"70000000000000 0 0000", false, true, 0, true},    // any digit is on; only "0" is off at 16
        {"x0000000000000xxx0000x", false, true, 0, false},  // no digit is 0
        {"00000000000000700000", true, false, 7, false},    {"", true, true, 0, false},
    };
    for (const auto & fall : FAELLE) {
        SCOPED_TRACE(fall.pWert);
        Schreibe({{"einstell", fall.pWert}, {"einstellx", ""}});
        CHVMCf cf;
        EXPECT_TRUE(cf.ReadEi());
        EXPECT_EQ(cf.MitBPG9(), fall.bBPG9);
        EXPECT_EQ(cf.m_bEinstell16, fall.bEinstell16);
        EXPECT_EQ(cf.m_iEinstell14, fall.iEinstell14);
        EXPECT_EQ(cf.KBRMitLab(), fall.bKBRMitLab);
        EXPECT_TRUE(cf.m_bEinstellX3 && !cf.m_bEinstellX5);
    }
}

TEST_F(HVMCf, EineDerBeidenReihenFehlt) {
    CHVMCf cf;
    for (const bool bErste : {false, true}) { // the other one is read all the same
        Schreibe({{bErste ? "einstell" : "einstellx", "1"}});
        EXPECT_TRUE(!cf.ReadEi() && cf.KBRMitLab() == bErste && cf.m_bEinstellX0 != bErste);
    }
}

TEST_F(HVMCf, EinstellungVierzehnSchreibtIhreLetzteZiffer) {
    for (const auto & [iWert, cZiffer] :
         {std::pair(7, '7'), {10, '0'}, {128, '8'}, {-3, '3'}, {-2147483647 - 1, '8'}}) {
        CHVMCf cf;
        cf.m_iEinstell14 = iWert;
        cf.WriteParPool();
        EXPECT_EQ(Lies()[0].second[14], cZiffer) << iWert;
    }
}

// ---- pots

TEST_F(HVMCf, HauptreihenEinesTopfs) {
    const struct {
        const char *pWert, *pAuswahl;
        bool bBudget;
        int iWert;
        bool bAktiv;
    } vFaelle[] = {
        {"eKons|1|25|1|", "eKons", true, 25, true},
        {"eeeK|0|1|0|", "eK", false, 1, false},
        {"ee|0|1|0|", "e", false, 1, false},
        {"a|1|1|1|x|y|", "a", true, 1, true}, // further fields are ignored
        {"a|1|1|1", "a", true, 1, false},     // so is a text behind the last separator
        {"a|1|", "a", true, -1, false},
        {"", "", false, -1, false},
        {"||||", "", false, 0, false},
        {"a|2| -7z|9|", "a", true, -7, true},
        {"a|0|99999999999|0|", "a", false, 2147483647, false},
    };
    for (const auto & fall : vFaelle) {
        Schreibe({{"bg-01c", fall.pWert}});
        CHVMCf cf;
        cf.ReadBg("01");
        const CHVMBgParam soll{
            "01", 'c', {{'g', Auswahl({{"", fall.pAuswahl}})}}, fall.bBudget, fall.iWert, fall.bAktiv, 0};
        EXPECT_EQ(cf.m_vBgParam.at(0), soll) << fall.pWert;
    }
}

TEST_F(HVMCf, ExtrareihenEinesTopfs) {
    Schreibe({{"bg-01k01", "x1|name"},
              {"bg-01k02", "|leer"},
              {"bg-01k03", "ohne"},
              {"bg-01k04", "eeA|e"},
              {"bg-01k1", "B|kurz"},
              {"bg-01k", "H|0|5|1|"},
              {"bq-01k", "unknown group|1|9|0|"},
              {"bc-01k", "last group|1|8|0|"},
              {"bg-01q", "unknown kind|1|9|1|"},
              {"bg-02k", "other owner|1|9|1|"}});
    CHVMCf cf;
    cf.ReadBg("01");
    const CHVMBgParam & kfo = cf.m_vBgParam.at(static_cast<std::size_t>(cf.FindBgParam("01", 'k')));
    EXPECT_EQ(kfo.m_mSel.at('g'), Auswahl({{"", "H"}, {"name", "x1"}, {"e", "eA"}, {"kurz", "B"}}));
    EXPECT_EQ(kfo.m_mSel.size(), 2u);
    EXPECT_EQ(kfo.m_iWert, 8); // the last main row decides
    EXPECT_EQ(cf.m_vBgParam.at(4), (CHVMBgParam{"01", 'b', {}, false, 1, false, 0})) << "no rows: as fresh";
    EXPECT_EQ(cf.FindBgParam("01", 'q'), -1);
    cf.ReadBg("01");
    EXPECT_EQ(cf.m_vBgParam.size(), 34u);
    EXPECT_EQ(cf.FindBgParam("01", 'c'), 0);
    cf.m_vUrParam.resize(1);
    cf.Init();
    EXPECT_TRUE(cf.m_vBgParam.empty() && cf.m_vUrParam.empty());
}

// The value of an owner is written where his pots begin.
TEST_F(HVMCf, BwStehtBeimErstenTopfJedesMandanten) {
    CHVMCf cf;
    for (const auto & [sMandant, iBw] : {std::pair("01", 5), {"02", 7}, {"01", 8}, {"01", 9}})
        cf.m_vBgParam.push_back({CString(sMandant), 'c', {}, false, 1, false, iBw});
    cf.m_vBgParam.push_back({});                                 // of nobody
    cf.m_vBgParam.back().m_mSel = {{'g', Auswahl({{"", "a"}})}}; // and of no kind: no row
    cf.WriteParPool();
    EXPECT_EQ(Lies("b"), (CReihen{{"bw-  ", "0"}, {"bw-01", "8"}, {"bw-02", "7"}}));
}

TEST_F(HVMCf, GetSelText) {
    constexpr std::pair<const char *, const char *> FAELLE[] = {
        {"cm2", "KCH+ZE"}, {"czkbpi2e", "KCH+ZE+KFO+KBR+PAR+IMP+ZE+PAR"}, {"m -1", ""}};
    for (const auto & [pAktiv, pText] : FAELLE) { // kinds in order
        CHVMCf cf;
        for (const char * p = pAktiv; *p; ++p)
            cf.m_vBgParam.push_back({"01", *p, {}, false, 1, true, 0});
        cf.m_vBgParam.push_back({"01", 'k', {}, false, 1, false, 0}); // not active
        cf.m_vBgParam.push_back({"02", 'k', {}, false, 1, true, 0});  // another owner's
        EXPECT_EQ(cf.GetSelText("01"), CString(pText)) << pAktiv;
    }
}

// ---- years and services

// What is no year and no date stays out; and however often the years are written, no row becomes two and none changes.
TEST_F(HVMCf, JahreEinesMandanten) {
    CReihen vVorher, vNachher;
    for (const auto & [sKuerzel, sVorher, sNachher] : std::initializer_list<std::array<std::string, 3>>{
             {"at-01  24", "1", "1"},
             {"at-012023", "0000001", "00000010000000000000"},
             {"at-012023x", "1111110", "1111110"},
             {"at-012024", "", "11111000000000000000"},
             {"at-022024", "1", "1"},
             {"ur-01", "2024070120240712", "2024070120240712"},
             {"ur-01202", "2024070120240712", "2024070120240712"},
             {"ur-0120240", "2024070120240712", "2024070120240712"},
             {"ur-0120241", "2024122", "20241223        "},
             {"ur-0120242", "20241223", ""},
             {"ur-0120247", "2024070120240712", "2024070120240712"},
             {"ur-012025", "x", "x"},
             {"ur-01abcd0", "2024070120240712", "2024070120240712"},
             {"ur-0220240", "2024010120240102", "2024010120240102"}}) {
        if (!sVorher.empty()) vVorher.emplace_back(sKuerzel, sVorher);
        if (!sNachher.empty()) vNachher.emplace_back(sKuerzel, sNachher);
    }
    Schreibe(vVorher);
    for (int iMal = 0; iMal < 3; ++iMal) {
        CHVMCf cf;
        cf.ReadUr("01");
        ASSERT_EQ(cf.m_vUrParam.size(), 2u);
        const auto vUrlaube = Urlaube({{"20240701", "20240712"}, {"20241223", ""}});
        EXPECT_EQ(cf.m_vUrParam[0], (CHVMUrParam{"01", "20240101", {1, 1, 1, 1, 1, 0, 0}, vUrlaube}));
        EXPECT_EQ(cf.m_vUrParam[1], (CHVMUrParam{"01", "20230101", {0, 0, 0, 0, 0, 0, 1}, {}}));
        for (const auto & [pJahr, iSoll] :
             {std::pair("2024", 0), {"20240101", 0}, {"20240102", -1}, {"2023", 1}})
            EXPECT_EQ(cf.FindUrParam("01", pJahr), iSoll) << pJahr;
        EXPECT_EQ(cf.FindUrParam("02", "2024"), -1);
        cf.m_vUrParam.emplace_back().m_sMandant = "01"; // a year that no key can hold
        cf.WriteParPool();
        CReihen vReihen = Lies();
        std::erase_if(vReihen, [](const auto & reihe) { return reihe.first.starts_with('e'); });
        EXPECT_EQ(vReihen, vNachher);
    }
}

TEST_F(HVMCf, FuenfUrlaubeWerdenGespeichert) {
    CHVMCf cf;
    CHVMUrParam & jahr = cf.m_vUrParam.emplace_back(CHVMUrParam{"01", "20240101", {}, {}});
    for (const char cMonat : {'1', '2', '3', '4', '5', '6'})
        jahr.m_vUrlaub.emplace_back(CString("20240") + cMonat + "01", CString());
    cf.WriteParPool();
    EXPECT_TRUE(Lies("ur").size() == 5 && Lies("ur").back().second == "20240501        ");
    jahr.m_vUrlaub.clear();
    cf.WriteParPool();
    EXPECT_EQ(Lies("ur"), CReihen{});
    EXPECT_EQ(Lies("at"), (CReihen{{"at-012024", "00000000000000000000"}}));
}

TEST_F(HVMCf, LeistungenAusBeliebigenReihen) {
    Schreibe({{"leistung", "vor"}, {"leistung00", "ab     c      d1"}, {"leistungx", "12345678 9"}});
    CHVMCf cf;
    cf.m_vLeistungen = {"alt"};
    EXPECT_TRUE(cf.ReadLs());
    EXPECT_EQ(cf.m_vLeistungen, (std::vector<CString>{"vor", "ab", "d1", "1234567", "8 9"}));
}

// ---- all or nothing

// Old rows, and a configuration that changes, adds and deletes rows of every kind.
const CReihen ALT = {
    {"at-012024", "0"},
    {"be-01c", "a|0|1|0|"},
    {"bg-01c", "b|0|1|0|"},
    {"bg-01c01", "x|alt"},
    {"bg-01c03", "x|weg"},
    {"bw-01", "1"},
    {"einstell", "1"},
    {"einstellx", "1"},
    {"feiertag", "10000000100000000000"},
    {"leistung00", "alt"},
    {"leistung05", "weg"},
    {"ur-0120240", "2024010120240102"},
    {"ur-0120244", "2024010120240102"},
};

bool SchreibeNeu() {
    CHVMCf cf;
    Fuelle(cf);
    cf.WriteParPool();
    return cf.Gespeichert();
}

// One switch is changed and one vacation more comes in, as a screen does it that shares the practice with others.
bool LiesAendereSchreibe() {
    CMxGruppe gruppe(dbDatabase);
    if (!gruppe.Offen()) return false;
    CHVMCf cf;
    cf.m_sBgArten = "c "; // fewer reads
    cf.ReadEi(), cf.ReadFt(), cf.ReadBg("01"), cf.ReadUr("01"), cf.ReadLs(), (void)cf.ExistHVMConf();
    EXPECT_EQ(cf.Vollstaendig(), dbDatabase.Fehlschlaege() == 0);
    cf.m_bKCHMitIP = cf.m_abFeiertag[1] = true;
    cf.WriteFt();
    const bool bFeiertage = cf.Gespeichert();
    cf.WriteParPool();
    return gruppe.Beende(bFeiertage && cf.Gespeichert());
}

CReihen Geaendert() {
    CReihen v = REIHEN;
    v[10].second[2] = v[12].second[1] = '1';
    return v;
}

TEST_P(HVMCfSpeicher, EinFehlerAnJederStelleLaesstAlteOderNeueReihen) {
    const struct {
        bool (*pSchreibe)();
        CReihen vVorher, vNachher;
        int iFehlschlaege; // at least: walks, deletions and writes have failed
    } aFaelle[] = {{&SchreibeNeu, ALT, REIHEN, 70}, {&LiesAendereSchreibe, REIHEN, Geaendert(), 150}};
    const auto pDarunter = dbDatabase.Speicher();
    const auto pFehler = std::make_shared<CFehlerspeicher>(pDarunter);
    for (const auto & fall : aFaelle) {
        int iStelle = 0;
        int iAlt = 0;
        for (bool bFehler = true, bGelungen = true; bFehler;) { // until it does not come any more
            dbDatabase.Verbinde(pDarunter);
            if (bGelungen) Schreibe(fall.vVorher);
            dbDatabase.Verbinde(pFehler);
            pFehler->FehlerBei(++iStelle);
            bGelungen = fall.pSchreibe();
            bFehler = dbDatabase.Fehlschlaege() != 0;
            iAlt += !bGelungen;
            pFehler->FehlerBei(0);
            ASSERT_TRUE(bGelungen || bFehler);
            ASSERT_EQ(Lies(), bGelungen ? fall.vNachher : fall.vVorher) << "failure " << iStelle;
            ASSERT_EQ(pFehler->OffeneWege(), 0);
        }
        EXPECT_GT(iAlt, fall.iFehlschlaege);
    }
}

// The process is killed before its n-th operation, for each n; the file then holds the old rows or the new ones.
TEST_F(HVMCf, EinAbbruchDesProzessesLaesstAlteOderNeueReihen) {
    Verbinde(Sqlite(m_verzeichnis));
    Schreibe(ALT);
    Verbinde(nullptr);
    int iStelle = 1;
    for (bool bGelungen = false; !bGelungen; ++iStelle) {
        const pid_t kind = fork();
        ASSERT_GE(kind, 0);
        if (kind == 0) {
            const auto pFehler = std::make_shared<CFehlerspeicher>(Sqlite(m_verzeichnis));
            pFehler->FehlerBei(iStelle, [] { kill(getpid(), SIGKILL); });
            dbDatabase.Verbinde(pFehler);
            _exit(SchreibeNeu() ? 0 : 1);
        }
        int iStatus = 0;
        ASSERT_EQ(waitpid(kind, &iStatus, 0), kind);
        bGelungen = WIFEXITED(iStatus);
        ASSERT_TRUE(bGelungen ? WEXITSTATUS(iStatus) == 0 : WTERMSIG(iStatus) == SIGKILL);
        Verbinde(Sqlite(m_verzeichnis));
        ASSERT_EQ(Lies(), bGelungen ? REIHEN : ALT) << "killed before operation " << iStelle;
        Verbinde(nullptr);
    }
    EXPECT_GT(iStelle, 70);
}

TEST_F(HVMCf, OhneSchreibrechtUndNachEinemLesefehlerBleibtAllesStehen) {
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    const auto pFehler = std::make_shared<CFehlerspeicher>(pSpeicher);
    Verbinde(pFehler);
    Schreibe(ALT);
    pSpeicher->SetzeNurLesen(true);
    EXPECT_FALSE(SchreibeNeu());
    pSpeicher->SetzeNurLesen(false);
    CHVMCf cf;
    pFehler->FehlerBei(2);
    cf.ReadLs();
    EXPECT_TRUE(cf.WriteFt() && cf.WriteParPool());
    EXPECT_FALSE(cf.Vollstaendig() || cf.Gespeichert());
    EXPECT_EQ(Lies(), ALT);
    cf.Init();
    EXPECT_TRUE(cf.Vollstaendig() && cf.WriteFt() && cf.Gespeichert());
    Verbinde(nullptr);
    EXPECT_FALSE(SchreibeNeu());
}

} // namespace

} // namespace orvostat
