#include "orvostatbs/hvm/HVMCf.h"

#include "hvm/Abbruchspeicher.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

#include <algorithm>

#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace orvostat;

// Short code and value of a row of group 53.
using CReihen = std::vector<std::pair<std::string, std::string>>;
using FSpeicher = std::shared_ptr<CZeilenspeicher> (*)(const std::filesystem::path & verzeichnis);

using CPaare = CReihen; // of names and selections, or of first and last days
std::map<CString, CString> Auswahl(const CPaare & vPaare) {
    std::map<CString, CString> m;
    for (const auto & [sName, sAuswahl] : vPaare)
        m[AusUtf8(sName)] = AusUtf8(sAuswahl);
    return m;
}
std::vector<std::pair<CString, CString>> Urlaube(const CPaare & vPaare) {
    std::vector<std::pair<CString, CString>> v;
    for (const auto & [sVon, sBis] : vPaare)
        v.emplace_back(AusUtf8(sVon), AusUtf8(sBis));
    return v;
}
using CGruppen = std::map<char, std::map<CString, CString>>;

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

TEST_P(HVMCfSpeicher, SchreibtJedeReihe) {
    CHVMCf cf;
    Fuelle(cf);
    EXPECT_FALSE(cf.Gespeichert());
    EXPECT_TRUE(cf.WriteParPool());
    EXPECT_TRUE(cf.Gespeichert());
    EXPECT_TRUE(cf.WriteFt());
    EXPECT_TRUE(cf.Gespeichert());
    EXPECT_EQ(Lies(), REIHEN);
}

TEST_P(HVMCfSpeicher, WasGeschriebenWurdeWirdSoGelesen) {
    Schreibe(REIHEN);
    CHVMCf cf, soll;
    EXPECT_TRUE(cf.ExistHVMConf() && cf.ReadEi() && cf.ReadFt() && cf.ReadBg("01") && cf.ReadBg(" 2"));
    EXPECT_TRUE(cf.ReadUr("01") && cf.ReadLs());
    Fuelle(soll);
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
}

// What has been read and is written again makes the same rows; rows of other owners stay.
TEST_P(HVMCfSpeicher, GelesenGeaendertGeschrieben) {
    CReihen vReihen = REIHEN;
    vReihen[3] = {"bg-01c01", "y2|alt"};
    vReihen.push_back({"ur-0220240", "2024070120240712"});
    Schreibe(vReihen);
    CHVMCf cf;
    EXPECT_TRUE(cf.ReadEi() && cf.ReadFt() && cf.ReadBg("01") && cf.ReadUr("01") && cf.ReadLs());
    cf.WriteParPool();
    cf.WriteFt();
    EXPECT_EQ(Lies(), vReihen);

    cf.m_vBgParam[0].m_mSel['g'].erase("name"_t);
    cf.m_vBgParam[0].m_mSel['g'].erase("alt"_t);
    cf.m_vUrParam[0].m_vUrlaub.pop_back();
    cf.m_vLeistungen = {"04"};
    cf.WriteParPool();
    std::erase_if(vReihen, [](const auto & reihe) {
        return reihe.first == "bg-01c01" || reihe.first == "bg-01c02" || reihe.first == "leistung01" ||
               reihe.first == "ur-0120241";
    });
    std::ranges::find(vReihen, "leistung00", &CReihen::value_type::first)->second = "04     ";
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
    EXPECT_FALSE(cf.ExistHVMConf() || cf.ReadEi() || cf.ReadFt());
    EXPECT_FALSE(cf.m_abFeiertag[3]);
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
        EXPECT_TRUE(cf.m_bEinstellX3);
        EXPECT_FALSE(cf.m_bEinstellX5);
    }
}

TEST_F(HVMCf, EineDerBeidenReihenFehlt) {
    CHVMCf cf;
    for (const bool bErste : {false, true}) {
        Schreibe({{bErste ? "einstell" : "einstellx", "1"}});
        EXPECT_FALSE(cf.ReadEi());
        EXPECT_EQ(cf.KBRMitLab(), bErste);
        EXPECT_EQ(cf.m_bEinstellX0, !bErste); // read all the same
    }
}

TEST_F(HVMCf, EinstellungVierzehnSchreibtIhreLetzteZiffer) {
    constexpr std::pair<int, char> FAELLE[] = {
        {7, '7'}, {10, '0'}, {128, '8'}, {-3, '3'}, {-2147483647 - 1, '8'}};
    for (const auto & [iWert, cZiffer] : FAELLE) {
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
    const auto mErwartet = Auswahl({{"", "H"}, {"name", "x1"}, {"e", "eA"}, {"kurz", "B"}});
    EXPECT_EQ(kfo.m_mSel.at('g'), mErwartet);
    EXPECT_EQ(kfo.m_mSel.size(), 2u);
    EXPECT_EQ(kfo.m_iWert, 8); // the last main row decides
    EXPECT_EQ(cf.m_vBgParam.size(), 17u);
    EXPECT_EQ(cf.FindBgParam("01", 'q'), -1);
}

TEST_F(HVMCf, EinTopfOhneReihenHatDieWerteEinesNeuen) {
    CHVMCf cf;
    cf.ReadBg("01");
    EXPECT_EQ(cf.m_vBgParam.at(4), (CHVMBgParam{"01", 'b', {}, false, 1, false, 0}));
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

TEST_F(HVMCf, JahreEinesMandanten) {
    Schreibe({{"at-012023", "0000011"},
              {"at-022024", "1111111"},
              {"ur-0120240", "2024070120240712"},
              {"ur-0120241", "20241223"},
              {"ur-0220240", "2024010120240102"},
              {"ur-01", "malformed"}});
    CHVMCf cf;
    cf.ReadUr("01");
    ASSERT_EQ(cf.m_vUrParam.size(), 3u);
    EXPECT_EQ(cf.FindUrParam("01", "2024"), 1);
    EXPECT_EQ(cf.FindUrParam("01", "20240101"), 1);
    EXPECT_EQ(cf.FindUrParam("01", "20240102"), -1);
    EXPECT_EQ(cf.FindUrParam("02", "2024"), -1);
    const CHVMUrParam & jahr = cf.m_vUrParam[1];
    EXPECT_EQ(jahr.m_sJahr, "20240101"_t);
    EXPECT_EQ(jahr.m_vUrlaub, Urlaube({{"20240701", "20240712"}, {"20241223", ""}}));
    EXPECT_EQ(cf.FindUrParam("01", "2023"), 2); // vacations are read first
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(jahr.m_abArbeitstag[i], i < 5) << "without a row: Monday to Friday";
        EXPECT_EQ(cf.m_vUrParam[2].m_abArbeitstag[i], i >= 5);
    }
}

TEST_F(HVMCf, FuenfUrlaubeWerdenGespeichert) {
    CHVMCf cf;
    CHVMUrParam & jahr = cf.m_vUrParam.emplace_back();
    jahr.m_sMandant = "01";
    jahr.m_sJahr = "20240101";
    for (const char cMonat : {'1', '2', '3', '4', '5', '6'})
        jahr.m_vUrlaub.emplace_back(CString("20240") + cMonat + "01", CString());
    cf.WriteParPool();
    CHVMCf gelesen;
    gelesen.ReadUr("01");
    ASSERT_EQ(gelesen.m_vUrParam.size(), 1u);
    ASSERT_EQ(gelesen.m_vUrParam[0].m_vUrlaub.size(), 5u);
    EXPECT_EQ(gelesen.m_vUrParam[0].m_vUrlaub[4].first, "20240501"_t);

    jahr.m_vUrlaub.clear();
    cf.WriteParPool();
    EXPECT_EQ(Lies("ur"), CReihen{});
    EXPECT_EQ(Lies("at"), (CReihen{{"at-012024", "11111000000000000000"}}));
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
    {"feiertag", "1"},
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

CReihen OhneFeiertag(CReihen vReihen) {
    std::erase_if(vReihen, [](const auto & reihe) { return reihe.first == "feiertag"; });
    return vReihen;
}

TEST_P(HVMCfSpeicher, EinFehlerAnJederStelleLaesstAlteOderNeueReihen) {
    const auto pDarunter = dbDatabase.Speicher();
    const auto pFehler = std::make_shared<CFehlerspeicher>(pDarunter);
    Schreibe(ALT);
    int iStelle = 0;
    int iAlt = 0;
    bool bGelungen = false;
    for (bool bEnde = false; !bEnde;) {
        if (bGelungen) Schreibe(ALT);
        const int iVorher = pFehler->Operationen();
        pFehler->FehlerBei(++iStelle);
        dbDatabase.Verbinde(pFehler);
        bGelungen = SchreibeNeu();
        dbDatabase.Verbinde(pDarunter);
        const CReihen vReihen = Lies();
        ASSERT_EQ(OhneFeiertag(vReihen), OhneFeiertag(bGelungen ? REIHEN : ALT)) << "failure " << iStelle;
        ASSERT_EQ(pFehler->OffeneWege(), 0);
        iAlt += !bGelungen;
        bEnde = iStelle > pFehler->Operationen() - iVorher; // the failure did not come any more
    }
    EXPECT_TRUE(bGelungen);
    EXPECT_GT(iAlt, 80); // walks, deletions and writes have failed
}

// The process is killed before its n-th change, for each n; the file then holds the old rows or the new ones.
TEST_F(HVMCf, EinAbbruchDesProzessesLaesstAlteOderNeueReihen) {
    Verbinde(Sqlite(m_verzeichnis));
    Schreibe(ALT);
    Verbinde(nullptr);
    bool bGelungen = false;
    int iStelle = 0;
    while (!bGelungen) {
        ++iStelle;
        const pid_t kind = fork();
        ASSERT_GE(kind, 0);
        if (kind == 0) {
            dbDatabase.Verbinde(std::make_shared<CAbbruchspeicher>(Sqlite(m_verzeichnis), iStelle));
            _exit(SchreibeNeu() ? 0 : 1);
        }
        int iStatus = 0;
        ASSERT_EQ(waitpid(kind, &iStatus, 0), kind);
        bGelungen = WIFEXITED(iStatus);
        ASSERT_TRUE(bGelungen ? WEXITSTATUS(iStatus) == 0 : WTERMSIG(iStatus) == SIGKILL);
        Verbinde(Sqlite(m_verzeichnis));
        if (bGelungen)
            EXPECT_EQ(OhneFeiertag(Lies()), OhneFeiertag(REIHEN));
        else
            ASSERT_EQ(Lies(), ALT) << "killed before change " << iStelle;
        Verbinde(nullptr);
    }
    EXPECT_GT(iStelle, 25);
}

TEST_F(HVMCf, OhneSchreibrechtBleibtAllesStehen) {
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    Verbinde(pSpeicher);
    Schreibe(ALT);
    pSpeicher->SetzeNurLesen(true);
    EXPECT_FALSE(SchreibeNeu());
    EXPECT_EQ(Lies(), ALT);
    Verbinde(nullptr);
    EXPECT_FALSE(SchreibeNeu());
}

} // namespace
