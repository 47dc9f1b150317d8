#include "orvostatbs/hvm/HVMCf.h"

#include "hvm/Abbruchspeicher.h"
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"
#include "support/Rekorder.h"

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
    static void Schreibe(const CReihen & vReihen) {
        ASSERT_EQ(dbDatabase.Speicher()->Beginne(), 0);
        for (const auto & [sKuerzel, sWert] : vReihen) {
            CTParPool pool(dbDatabase);
            pool.m_GRUPPE = "53";
            pool.m_KUERZEL = AusUtf8(sKuerzel);
            pool.m_WERT = AusUtf8(sWert);
            ASSERT_EQ(pool.Write(), 0);
        }
        ASSERT_EQ(dbDatabase.Speicher()->Beende(true), 0);
    }
    static void Leere() {
        ASSERT_EQ(dbDatabase.Speicher()->Beginne(), 0);
        CTParPool pool(dbDatabase);
        pool.GetAll();
        ASSERT_EQ(pool.DeleteRows(), 0);
        ASSERT_EQ(dbDatabase.Speicher()->Beende(true), 0);
    }
    static CReihen Lies() {
        CReihen vReihen;
        CTParPool pool(dbDatabase);
        pool.m_GRUPPE = "53";
        for (int i = pool.GetByK1(MATCH_ALLE); i == 0; i = pool.Next())
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
    CHVMCf cf;
    EXPECT_TRUE(cf.ExistHVMConf());
    EXPECT_TRUE(cf.ReadEi());
    EXPECT_TRUE(cf.ReadFt());
    EXPECT_TRUE(cf.ReadBg("01"));
    EXPECT_TRUE(cf.ReadBg(" 2"));
    EXPECT_TRUE(cf.ReadUr("01"));
    EXPECT_TRUE(cf.ReadLs());

    CHVMCf soll;
    Fuelle(soll);
    for (std::size_t i = 0; i < std::size(HVM_SCHALTER); ++i)
        EXPECT_EQ(Wert(cf, i), Wert(soll, i)) << HVM_SCHALTER[i].pName;
    EXPECT_TRUE(std::ranges::equal(cf.m_abFeiertag, soll.m_abFeiertag));
    EXPECT_EQ(cf.m_sFeiertag, "10000000100000000000"_t);
    EXPECT_EQ(cf.m_vUrParam, soll.m_vUrParam);
    EXPECT_EQ(cf.m_vLeistungen, soll.m_vLeistungen);
    ASSERT_EQ(cf.m_vBgParam.size(), 34u);
    const CHVMBgParam & kch = cf.m_vBgParam[0];
    const CGruppen mSel = {
        {'g',
         Auswahl({{"", "e"}, {"name", "x1"}, {"2|alt", "y"}})}, // a name begins behind the first separator
        {'e', Auswahl({{"", "Kons"}})}};
    EXPECT_EQ(kch.m_mSel, mSel);
    EXPECT_EQ(kch.m_iWert, -12);
    EXPECT_TRUE(kch.m_bAktiv);
    EXPECT_FALSE(kch.m_bBudget);
    EXPECT_EQ(kch.m_iBw, 4711);
    const CHVMBgParam & blank = cf.m_vBgParam[static_cast<std::size_t>(cf.FindBgParam("01", ' '))];
    EXPECT_TRUE(blank.m_bBudget);
    EXPECT_EQ(blank.m_mSel, (CGruppen{{'z', Auswahl({{"", ""}})}}));
    EXPECT_EQ(cf.m_vBgParam[17].m_sMandant, " 2"_t);
    EXPECT_EQ(cf.m_vBgParam[17].m_iBw, 0);
    EXPECT_EQ(cf.m_vBgParam[16].m_cArt, '9');
}

// What has been read and is written again makes the same rows, and nothing of other owners and groups goes away.
TEST_P(HVMCfSpeicher, LesenUndSchreibenAendertNichts) {
    CReihen vReihen = REIHEN;
    vReihen[3] = {"bg-01c01", "y2|alt"};
    vReihen.push_back({"ur-0220240", "2024070120240712"});
    Schreibe(vReihen);
    CHVMCf cf;
    cf.ReadEi();
    cf.ReadFt();
    cf.ReadBg("01");
    cf.ReadUr("01");
    cf.ReadLs();
    cf.WriteParPool();
    cf.WriteFt();
    EXPECT_EQ(Lies(), vReihen);
}

TEST_P(HVMCfSpeicher, WasWegfielStehtNichtMehrDa) {
    Schreibe(REIHEN);
    CHVMCf cf;
    cf.ReadBg("01");
    cf.ReadUr("01");
    cf.m_vBgParam[0].m_mSel['g'].erase("name"_t);
    cf.m_vBgParam[0].m_mSel['g'].erase("2|alt"_t);
    cf.m_vUrParam[0].m_vUrlaub.pop_back();
    cf.m_vLeistungen = {"04"};
    cf.WriteParPool();

    CReihen vErwartet = REIHEN;
    std::erase_if(vErwartet, [](const auto & reihe) {
        return reihe.first == "bg-01c01" || reihe.first == "bg-01c02" || reihe.first == "leistung01" ||
               reihe.first == "ur-0120241";
    });
    for (auto & [sKuerzel, sWert] : vErwartet) {
        if (sKuerzel == "leistung00") sWert = "04     ";
        if (sKuerzel == "einstell") sWert = "000000000000000010000"; // not read: start values
        if (sKuerzel == "einstellx") sWert = "00011000000000000000";
    }
    EXPECT_EQ(Lies(), vErwartet);
}

// Rows that stand twice are replaced by one.
TEST_P(HVMCfSpeicher, DoppelteReihenWerdenEine) {
    Schreibe({{"feiertag", "1"}, {"feiertag", "01"}, {"feiertag2", "bleibt"}});
    CHVMCf cf;
    cf.WriteFt();
    EXPECT_EQ(Lies(), (CReihen{{"feiertag", "00000000000000000000"}, {"feiertag2", "bleibt"}}));
}

// ---- switches

// Typed from the description of the rows, in field order.
constexpr struct {
    const char * pName;
    char cZeile;
    int iStelle;
    bool bStart;
    bool (CHVMCf::*fGetter)() const;
} SCHALTER[] = {
    {"KBRMitLab", 'e', 0, false, &CHVMCf::KBRMitLab},
    {"KCHMitKFO", 'e', 1, false, &CHVMCf::KCHMitKFO},
    {"KCHMitIP", 'e', 2, false, &CHVMCf::KCHMitIP},
    {"KFOMitLab", 'e', 3, false, &CHVMCf::KFOMitLab},
    {"KFOMitIP", 'e', 10, false, &CHVMCf::KFOMitIP},
    {"KFOMitSach", 'e', 11, false, &CHVMCf::KFOMitSach},
    {"KFONurRoe", 'x', 8, false, &CHVMCf::KFONurRoe},
    {"KFOMitNeufall", 'e', 13, false, &CHVMCf::KFOMitNeufall},
    {"MitBKS", 'e', 4, false, &CHVMCf::MitBKS},
    {"MitSonstKas", 'e', 5, false, &CHVMCf::MitSonstKas},
    {"PARMitLab", 'e', 6, false, &CHVMCf::PARMitLab},
    {"PrimaerTrennung", 'e', 7, false, &CHVMCf::PrimaerTrennung},
    {"ErsatzTrennung", 'e', 8, false, &CHVMCf::ErsatzTrennung},
    {"RVOFremdTrennung", 'e', 9, false, &CHVMCf::RVOFremdTrennung},
    {"ErsatzFremdTrennung", 'x', 6, false, &CHVMCf::ErsatzFremdTrennung},
    {"MitFremd", 'e', 12, false, &CHVMCf::MitFremd},
    {"Einstell14", 'e', 14, false, nullptr},
    {"Einstell15", 'e', 15, false, nullptr},
    {"Einstell16", 'e', 16, true, nullptr},
    {"MitWso4", 'e', 17, false, &CHVMCf::MitWso4},
    {"MitBPG9", 'e', 20, false, &CHVMCf::MitBPG9},
    {"MitKKGeb", 'e', 18, false, &CHVMCf::MitKKGeb},
    {"PARZuKCH", 'e', 19, false, &CHVMCf::PARZuKCH},
    {"KBRZuKCH", 'x', 7, false, &CHVMCf::KBRZuKCH},
    {"EinstellX12", 'x', 12, false, nullptr},
    {"EinstellX0", 'x', 0, false, nullptr},
    {"EinstellX1", 'x', 1, false, nullptr},
    {"EinstellX2", 'x', 2, false, nullptr},
    {"EinstellX3", 'x', 3, true, nullptr},
    {"EinstellX4", 'x', 4, true, nullptr},
    {"EinstellX5", 'x', 5, false, nullptr},
    {"EinstellX9", 'x', 9, false, nullptr},
    {"EinstellX10", 'x', 10, false, nullptr},
    {"KBRFallgruppen", 'x', 11, false, &CHVMCf::KBRFallgruppen},
    {"EinstellX13", 'x', 13, false, nullptr},
    {"PARFallgruppen3", 'x', 14, false, &CHVMCf::PARFallgruppen3},
    {"PARNiedersachsen", 'x', 15, false, &CHVMCf::PARNiedersachsen},
};

TEST_F(HVMCf, OhneReihenStehenDieAnfangswerte) {
    ASSERT_EQ(std::size(HVM_SCHALTER), std::size(SCHALTER));
    CHVMCf cf;
    for (const SHvmSchalter & schalter : HVM_SCHALTER) // all upside down
        if (schalter.pFlag) cf.*schalter.pFlag = !schalter.bStart;
    cf.m_iEinstell14 = 9;
    cf.m_abFeiertag[3] = true;
    EXPECT_FALSE(cf.ExistHVMConf());
    EXPECT_FALSE(cf.ReadEi());
    EXPECT_FALSE(cf.ReadFt());
    EXPECT_FALSE(cf.m_abFeiertag[3]);
    for (std::size_t i = 0; i < std::size(SCHALTER); ++i) {
        EXPECT_STREQ(HVM_SCHALTER[i].pName, SCHALTER[i].pName);
        EXPECT_EQ(Wert(cf, i), SCHALTER[i].bStart ? 1 : 0) << SCHALTER[i].pName;
    }
}

// A "1" at a place turns on the switch of that place, its getter, and nothing else.
TEST_F(HVMCf, JederSchalterHatSeineStelle) {
    for (std::size_t i = 0; i < std::size(SCHALTER); ++i) {
        CHVMCf cf;
        std::string asWerte[] = {std::string(21, '0'), std::string(20, '0')};
        asWerte[SCHALTER[i].cZeile == 'x'][static_cast<std::size_t>(SCHALTER[i].iStelle)] = '1';
        Verbinde(Memory({}));
        Schreibe({{"einstell", asWerte[0]}, {"einstellx", asWerte[1]}});
        EXPECT_TRUE(cf.ReadEi());
        for (std::size_t k = 0; k < std::size(SCHALTER); ++k) {
            EXPECT_EQ(Wert(cf, k), k == i ? 1 : 0)
                << SCHALTER[i].pName << " set, " << SCHALTER[k].pName << " asked";
            if (SCHALTER[k].fGetter == nullptr) continue;
            EXPECT_EQ((cf.*SCHALTER[k].fGetter)(), k == i) << SCHALTER[k].pName;
        }
        cf.WriteParPool();
        EXPECT_EQ(Lies(), (CReihen{{"einstell", asWerte[0]}, {"einstellx", asWerte[1]}}));
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
        {"000000000000000000000", false, false, 0, false},  //
        {"000000000000000000001", true, false, 0, false},   //
        {"0000000000000000000001", false, false, 0, false}, // further characters are ignored
        {"70000000000000 0 0000", false, true, 0, true},    // any digit is on; only "0" is off at 16
        {"x0000000000000xxx0000x", false, true, 0, false},  // no digit is 0
        {"00000000000000700000", true, false, 7, false},
        {"1", true, true, 0, true},
        {"", true, true, 0, false},
    };
    for (const auto & fall : FAELLE) {
        Verbinde(Memory({}));
        Schreibe({{"einstell", fall.pWert}, {"einstellx", ""}});
        CHVMCf cf;
        EXPECT_TRUE(cf.ReadEi());
        EXPECT_EQ(cf.MitBPG9(), fall.bBPG9) << fall.pWert;
        EXPECT_EQ(cf.m_bEinstell16, fall.bEinstell16) << fall.pWert;
        EXPECT_EQ(cf.m_iEinstell14, fall.iEinstell14) << fall.pWert;
        EXPECT_EQ(cf.KBRMitLab(), fall.bKBRMitLab) << fall.pWert;
        EXPECT_TRUE(cf.m_bEinstellX3);
        EXPECT_FALSE(cf.m_bEinstellX5);
    }
}

TEST_F(HVMCf, EineDerBeidenReihenFehlt) {
    Schreibe({{"einstellx", "1"}});
    CHVMCf cf;
    cf.m_bKBRMitLab = true;
    EXPECT_FALSE(cf.ReadEi());
    EXPECT_TRUE(cf.m_bEinstellX0); // read all the same
    EXPECT_FALSE(cf.KBRMitLab());

    Verbinde(Memory({}));
    Schreibe({{"einstell", "1"}});
    EXPECT_FALSE(cf.ReadEi());
    EXPECT_TRUE(cf.KBRMitLab());
    EXPECT_FALSE(cf.m_bEinstellX0);
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
        const char * pWert;
        const char * pAuswahl;
        bool bBudget;
        int iWert;
        bool bAktiv;
    } vFaelle[] = {
        {"eKons|1|25|1|", "eKons", true, 25, true},
        {"eeKons|0|1|0|", "eKons", false, 1, false},
        {"eeeK|0|1|0|", "eK", false, 1, false},
        {"ee|0|1|0|", "e", false, 1, false},
        {"|1|1|0|", "", true, 1, false},
        {"a|1|1|1|x|y|", "a", true, 1, true}, // further fields are ignored
        {"a|1|1|1", "a", true, 1, false},     // so is a text behind the last separator
        {"a|1|", "a", true, -1, false},
        {"abc", "", false, -1, false},
        {"", "", false, -1, false},
        {"||||", "", false, 0, false},
        {"a|x|y|z|", "a", false, 0, false},
        {"a|2| -7z|9|", "a", true, -7, true},
        {"a|0|99999999999|0|", "a", false, 2147483647, false},
    };
    for (const auto & fall : vFaelle) {
        Verbinde(Memory({}));
        Schreibe({{"bg-01c", fall.pWert}});
        CHVMCf cf;
        cf.ReadBg("01");
        const CHVMBgParam & bg = cf.m_vBgParam.at(0);
        EXPECT_EQ(bg.m_mSel, (CGruppen{{'g', Auswahl({{"", fall.pAuswahl}})}})) << fall.pWert;
        EXPECT_EQ(bg.m_bBudget, fall.bBudget) << fall.pWert;
        EXPECT_EQ(bg.m_iWert, fall.iWert) << fall.pWert;
        EXPECT_EQ(bg.m_bAktiv, fall.bAktiv) << fall.pWert;
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
    CHVMBgParam neu;
    neu.m_sMandant = "01";
    neu.m_cArt = 'b';
    EXPECT_EQ(cf.m_vBgParam.at(4), neu);
    EXPECT_EQ(neu.m_iWert, 1);
    cf.ReadBg("01");
    EXPECT_EQ(cf.m_vBgParam.size(), 34u);
    EXPECT_EQ(cf.FindBgParam("01", 'c'), 0);
    cf.Init();
    EXPECT_TRUE(cf.m_vBgParam.empty());
}

// The value of an owner is written where his pots begin.
TEST_F(HVMCf, BwStehtBeimErstenTopfJedesMandanten) {
    CHVMCf cf;
    for (const auto & [sMandant, iBw] : {std::pair("01", 5), {"01", 6}, {"02", 7}, {"01", 8}}) {
        CHVMBgParam & bg = cf.m_vBgParam.emplace_back();
        bg.m_sMandant = CString(sMandant);
        bg.m_cArt = 'c';
        bg.m_iBw = iBw;
    }
    cf.m_vBgParam.push_back({});                                 // of nobody
    cf.m_vBgParam.back().m_mSel = {{'g', Auswahl({{"", "a"}})}}; // and of no kind: no row
    cf.WriteParPool();
    const CReihen vErwartet = {{"bw-  ", "0"}, {"bw-01", "8"}, {"bw-02", "7"}};
    CReihen vReihen = Lies();
    std::erase_if(vReihen, [](const auto & reihe) { return reihe.first[0] != 'b'; });
    EXPECT_EQ(vReihen, vErwartet);
}

TEST_F(HVMCf, GetSelText) {
    const struct {
        const char * pAktiv; // kinds in order
        const char * pText;
    } vFaelle[] = {{"cm2", "KCH+ZE"},
                   {"czkbpi2e", "KCH+ZE+KFO+KBR+PAR+IMP+ZE+PAR"},
                   {"m -1", ""},
                   {"", ""},
                   {"p", "PAR"}};
    for (const auto & fall : vFaelle) {
        CHVMCf cf;
        for (const char * p = fall.pAktiv; *p; ++p)
            cf.m_vBgParam.push_back({"01", *p, {}, false, 1, true, 0});
        cf.m_vBgParam.push_back({"01", 'k', {}, false, 1, false, 0}); // not active
        cf.m_vBgParam.push_back({"02", 'k', {}, false, 1, true, 0});  // another owner's
        EXPECT_EQ(cf.GetSelText("01"), CString(fall.pText)) << fall.pAktiv;
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
    const bool abVorgabe[7] = {true, true, true, true, true, false, false};
    EXPECT_TRUE(std::ranges::equal(jahr.m_abArbeitstag, abVorgabe)); // no row of working days
    const int iVorjahr = cf.FindUrParam("01", "2023");
    const bool abWochenende[7] = {false, false, false, false, false, true, true};
    ASSERT_EQ(iVorjahr, 2); // vacations are read first
    EXPECT_TRUE(std::ranges::equal(cf.m_vUrParam[2].m_abArbeitstag, abWochenende));
}

TEST_F(HVMCf, FuenfUrlaubeWerdenGespeichert) {
    CHVMCf cf;
    CHVMUrParam & jahr = cf.m_vUrParam.emplace_back();
    jahr.m_sMandant = "01";
    jahr.m_sJahr = "20240101";
    for (const CString & s : {CString("20240101"), CString("20240201"), CString("20240301"),
                              CString("20240401"), CString("20240501"), CString("20240601")})
        jahr.m_vUrlaub.emplace_back(s, s);
    cf.WriteParPool();
    CHVMCf gelesen;
    gelesen.ReadUr("01");
    ASSERT_EQ(gelesen.m_vUrParam.size(), 1u);
    ASSERT_EQ(gelesen.m_vUrParam[0].m_vUrlaub.size(), 5u);
    EXPECT_EQ(gelesen.m_vUrParam[0].m_vUrlaub[4].first, "20240501"_t);

    jahr.m_vUrlaub.clear();
    cf.WriteParPool();
    CReihen vReihen = Lies();
    std::erase_if(vReihen, [](const auto & reihe) { return reihe.first[0] == 'e'; });
    EXPECT_EQ(vReihen, (CReihen{{"at-012024", "11111000000000000000"}}));
}

TEST_F(HVMCf, LeistungenAusBeliebigenReihen) {
    Schreibe({{"leistung", "vor"},
              {"leistung00", "ab     c      d1"},
              {"leistung01", ""},
              {"leistungx", "12345678 9"}});
    CHVMCf cf;
    cf.m_vLeistungen = {"alt"};
    EXPECT_TRUE(cf.ReadLs());
    EXPECT_EQ(cf.m_vLeistungen, (std::vector<CString>{"vor", "ab", "d1", "1234567", "8 9"}));
}

// ---- all or nothing

// Old rows, and a configuration that changes, adds and deletes rows of every kind.
const CReihen ALT = {{"at-012024", "0"},
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
                     {"ur-0120244", "2024010120240102"}};

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
        if (bGelungen) {
            Leere();
            Schreibe(ALT);
        }
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
