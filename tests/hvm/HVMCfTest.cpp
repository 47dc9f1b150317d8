#include "orvostatbs/hvm/HVMCf.h"

#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "support/Praxis.h"

#include <algorithm>
#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {
namespace {

// Short code and value of a row of group 53.
using CReihen = std::vector<std::pair<std::string, std::string>>;

class HVMCf : public CPraxisTest {
protected:
    std::shared_ptr<CZeilenspeicher> Sqlite() {
        const std::filesystem::path datei = m_verzeichnis / "praxis.db";
        CString sMeldung;
        return CSqliteSpeicher::OeffneDatei(datei.string(), exists(datei) ? EModus::Schreiben : EModus::Neu,
                                            sMeldung);
    }
    // Calls f with a practice in memory and with one in a file.
    template <class F> void InJedemSpeicher(F f) {
        for (const auto & pSpeicher : {dbDatabase.Speicher(), Sqlite()}) {
            SCOPED_TRACE(pSpeicher == dbDatabase.Speicher() ? "memory" : "file");
            const CTestpraxis praxis(pSpeicher);
            f();
        }
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

// The value of a switch.
int Wert(const CHVMCf & cf, const SHvmSchalter & schalter) {
    return schalter.pFlag ? cf.*schalter.pFlag : cf.*schalter.pZahl;
}

// A configuration with something in every field, and the rows that it makes.
void Fuelle(CHVMCf & cf) {
    cf.m_bKCHMitKFO = cf.m_bMitBPG9 = cf.m_bPARNiedersachsen = true;
    cf.m_bEinstell16 = false;
    cf.m_iEinstell14 = 7;
    cf.m_abFeiertag[0] = cf.m_abFeiertag[8] = true;
    CHVMBgParam kch{"01", 'c', {}, false, -12, true, 4711};
    kch.m_mSel['g'] = {{""_t, ""_t}, {"name"_t, "x1"_t}, {"alt"_t, "y|2"_t}};
    kch.m_mSel['e'][""] = "Kons";
    CHVMBgParam blank{"01", ' ', {}, true, -12, true, 4711};
    blank.m_mSel['z'][""] = "";
    CHVMBgParam andere{"2", 'c', {}, false, -12, true, 0}; // the key has two places
    andere.m_mSel['n']["b"] = "x";
    cf.m_vBgParam = {kch, blank, andere};
    cf.m_vUrParam = {{"01", "20240101", {true, true, false, true, true}, {{"20240701"_t, "20240712"_t}}}};
    cf.m_vUrParam[0].m_vUrlaub.emplace_back("20241223"_t, "20241231"_t);
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

TEST_F(HVMCf, SchreibtLiestUndAendertJedeReihe) {
    InJedemSpeicher([] {
        CHVMCf soll, cf;
        Fuelle(soll);
        EXPECT_FALSE(soll.Gespeichert());
        EXPECT_TRUE(soll.WriteParPool() && soll.Gespeichert() && soll.WriteFt() && soll.Gespeichert());
        EXPECT_EQ(Lies(), REIHEN);
        EXPECT_TRUE(cf.ExistHVMConf() && cf.ReadEi() && cf.ReadFt() && cf.ReadBg("01") && cf.ReadBg(" 2"));
        EXPECT_TRUE(cf.ReadUr("01") && cf.ReadLs());
        for (const SHvmSchalter & schalter : HVM_SCHALTER)
            EXPECT_EQ(Wert(cf, schalter), Wert(soll, schalter)) << schalter.pName;
        EXPECT_TRUE(std::ranges::equal(cf.m_abFeiertag, soll.m_abFeiertag));
        EXPECT_EQ(cf.m_sFeiertag, "10000000100000000000"_t);
        EXPECT_EQ(cf.m_vUrParam, soll.m_vUrParam);
        EXPECT_EQ(cf.m_vLeistungen, soll.m_vLeistungen);
        ASSERT_EQ(cf.m_vBgParam.size(), 34u);
        // An empty selection is read as "e", and a name begins behind the first separator.
        soll.m_vBgParam[0].m_mSel['g'] = {{""_t, "e"_t}, {"name"_t, "x1"_t}, {"2|alt"_t, "y"_t}};
        EXPECT_EQ(cf.m_vBgParam[0], soll.m_vBgParam[0]);
        EXPECT_EQ(cf.m_vBgParam[static_cast<std::size_t>(cf.FindBgParam("01", ' '))], soll.m_vBgParam[1]);
        EXPECT_EQ(cf.m_vBgParam[4], (CHVMBgParam{"01", 'b', {}, false, 1, false, 4711})) << "no rows: fresh";
        EXPECT_EQ(cf.m_vBgParam[17].m_sMandant + cf.m_vBgParam[16].m_cArt, " 29"_t);
        EXPECT_EQ(cf.FindBgParam("01", 'q'), -1);

        cf.m_vBgParam.resize(17); // rows of other owners stay
        cf.m_vBgParam[0].m_mSel['g'].erase("name");
        cf.m_vUrParam[0].m_vUrlaub.pop_back();
        cf.m_vLeistungen = {"04"};
        cf.WriteParPool();
        CReihen vReihen = REIHEN;
        vReihen[13].second = "04     ";
        for (const int iWeg : {16, 14, 4})
            vReihen.erase(vReihen.begin() + iWeg);
        EXPECT_EQ(Lies(), vReihen);
    });
}

// What each row becomes when all is read and written: "" for none. However often that happens, no row becomes two.
TEST_F(HVMCf, GelesenUndGeschrieben) {
    constexpr const char * REIHE[][3] = {
        {"at-01  24", "1", "1"},
        {"at-012023", "0000001", "00000010000000000000"},
        {"at-012023x", "1111110", "1111110"},
        {"at-012024", "", "11111000000000000000"},
        {"bc-01k", "last group decides|1|8|0|", "last group decides|1|8|0|"},
        {"bg-011", "eKons|1|25|1|", "eKons|1|25|1|"},
        {"bg-012", "eeeK|0|1|0|", "eK|0|1|0|"},
        {"bg-013", "ee|0|1|0|", "e|0|1|0|"},
        {"bg-014", "a|1|1|1|x|y|", "a|1|1|1|"},
        {"bg-015", "a|1|1|1", "a|1|1|0|"},
        {"bg-016", "a|1|", "a|1|-1|0|"},
        {"bg-017", "", ""},
        {"bg-019", "a|2| -7z|9|", "a|1|-7|1|"},
        {"bg-01b", "a|0|99999999999|0|", "a|0|2147483647|0|"},
        {"bg-01k", "H|0|5|1|", "H|1|8|0|"},
        {"bg-01k01", "x1|name", "eA|e"},
        {"bg-01k02", "|leer", "B|kurz"},
        {"bg-01k03", "ohne", "x1|name"},
        {"bg-01k04", "eeA|e", ""},
        {"bg-01k1", "B|kurz", ""},
        {"bg-01q", "unknown kind|1|9|1|", "unknown kind|1|9|1|"},
        {"bg-02k", "other owner|1|9|1|", "other owner|1|9|1|"},
        {"bq-01k", "unknown group|1|9|0|", "unknown group|1|9|0|"},
        {"bw-01", "", "0"},
        {"feiertag", "1", "00000000000000000000"},
        {"feiertag", "01", ""},
        {"feiertag2", "bleibt", "bleibt"},
        {"leistung", "vor", ""},
        {"leistung00", "ab     c      d1     12345678", "vor    ab     d1     1234567"},
        {"ur-01", "2024070120240712", "2024070120240712"},
        {"ur-0120240", "2024070120240712", "2024070120240712"},
        {"ur-0120241", "2024122", "20241223        "},
        {"ur-0120242", "20241223", ""},
        {"ur-0120247", "2024070120240712", "2024070120240712"},
        {"ur-012025", "x", "x"},
        {"ur-01abcd0", "2024070120240712", "2024070120240712"},
        {"ur-0220240", "2024010120240102", "2024010120240102"},
    };
    CReihen vVorher, vNachher;
    for (const auto & [pKuerzel, pVorher, pNachher] : REIHE) {
        if (*pVorher) vVorher.emplace_back(pKuerzel, pVorher);
        if (*pNachher) vNachher.emplace_back(pKuerzel, pNachher);
    }
    Schreibe(vVorher);
    for (int iMal = 0; iMal < 3; ++iMal) {
        CHVMCf cf;
        cf.m_vLeistungen = {"alt"};
        cf.ReadBg("01"), cf.ReadUr("01"), cf.ReadLs();
        for (const auto & [pMandant, pJahr, iSoll] : {std::tuple("01", "2024", 0),
                                                      {"01", "20240101", 0},
                                                      {"01", "20240102", -1},
                                                      {"01", "2023", 1},
                                                      {"02", "2024", -1}})
            EXPECT_EQ(cf.FindUrParam(pMandant, pJahr), iSoll) << pJahr;
        cf.m_vUrParam.emplace_back().m_sMandant = "01"; // a year that no key can hold
        cf.WriteFt(), cf.WriteParPool();
        CReihen vReihen = Lies();
        std::erase_if(vReihen, [](const auto & reihe) { return reihe.first.starts_with("einstell"); });
        EXPECT_EQ(vReihen, vNachher);
        cf.Init();
        EXPECT_TRUE(cf.m_vBgParam.empty() && cf.m_vUrParam.empty());
    }
}

// ---- switches

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

// A "1" at a place turns on the switch of that place and nothing else. Stored rows have these places.
TEST_F(HVMCf, JederSchalterHatSeineStelle) {
    std::string sStellen;
    for (const SHvmSchalter & gesetzt : HVM_SCHALTER) {
        const bool bX = gesetzt.eZeile == EHvmZeile::EinstellX;
        sStellen += (bX ? " x" : " ") + std::to_string(gesetzt.iStelle);
        CReihen vReihen = {{"einstell", std::string(21, '0')}, {"einstellx", std::string(20, '0')}};
        vReihen[bX].second[static_cast<std::size_t>(gesetzt.iStelle)] = '1';
        Schreibe(vReihen);
        CHVMCf cf;
        EXPECT_TRUE(cf.ReadEi());
        for (const SHvmSchalter & schalter : HVM_SCHALTER)
            EXPECT_EQ(Wert(cf, schalter), &schalter == &gesetzt) << gesetzt.pName << schalter.pName;
        cf.WriteParPool();
        EXPECT_EQ(Lies(), vReihen);
    }
    EXPECT_EQ(sStellen,
              " 0 1 2 3 10 11 x8 13 4 5 6 7 8 9 x6 12 14 15 16 17 20 18 19 x7 x12 x0 x1 x2 x3 x4 x5 x9 "
              "x10 x11 x13 x14 x15");
}

TEST_F(HVMCf, AlteUndFalscheWerteDerErstenReihe) {
    constexpr const char * FAELLE[][2] = {
        {"00000000000000000000", "000000000000000000001"},   // 20 characters: an older row
        {"0000000000000000000001", "000000000000000000000"}, // further characters are ignored
        {"70000000000000 0 0000", "100000000000000010000"},  // any digit is on; only "0" is off at 16
        {"x0000000000000xxx0000x", "000000000000000010000"}, // no digit is 0
        {"00000000000000700000", "000000000000007000001"},   {"", "000000000000000010001"},
    };
    for (const auto & [pVorher, pNachher] : FAELLE) {
        Schreibe({{"einstell", pVorher}, {"einstellx", ""}});
        CHVMCf cf;
        EXPECT_TRUE(cf.ReadEi() && cf.WriteParPool());
        EXPECT_EQ(Lies(), (CReihen{{"einstell", pNachher}, {"einstellx", "00011000000000000000"}}));
    }
    for (const bool bErste : {false, true}) { // one row is missing: the other one is read all the same
        Schreibe({{bErste ? "einstell" : "einstellx", "1"}});
        CHVMCf cf;
        EXPECT_TRUE(!cf.ReadEi() && cf.KBRMitLab() == bErste && cf.m_bEinstellX0 != bErste);
    }
    for (const auto & [iWert, cZiffer] :
         {std::pair(10, '0'), {128, '8'}, {-3, '3'}, {-2147483647 - 1, '8'}}) {
        CHVMCf cf;
        cf.m_iEinstell14 = iWert;
        cf.WriteParPool();
        EXPECT_EQ(Lies()[0].second[14], cZiffer) << iWert;
    }
}

// ---- pots and years

// The value of an owner is written where his pots begin.
TEST_F(HVMCf, ToepfeOhneSchluesselUndMehrAlsFuenfUrlaube) {
    CHVMCf cf;
    for (const auto & [sMandant, iBw] : {std::pair("01", 5), {"02", 7}, {"01", 8}, {"01", 9}})
        cf.m_vBgParam.push_back({CString(sMandant), 'c', {}, false, 1, false, iBw});
    cf.m_vBgParam.emplace_back().m_mSel['g'][""] = "a"; // of nobody and of no kind: no row
    CHVMUrParam & jahr = cf.m_vUrParam.emplace_back(CHVMUrParam{"01", "20240101", {}, {}});
    for (const char cMonat : {'1', '2', '3', '4', '5', '6'})
        jahr.m_vUrlaub.emplace_back(CString("20240") + cMonat + "01", CString());
    cf.WriteParPool();
    EXPECT_EQ(Lies("b"), (CReihen{{"bw-  ", "0"}, {"bw-01", "8"}, {"bw-02", "7"}}));
    EXPECT_TRUE(Lies("ur").size() == 5 && Lies("ur").back().second == "20240501        ");
}

TEST_F(HVMCf, GetSelText) {
    for (const auto & [pAktiv, pText] :
         {std::pair("czkbpi2e", "KCH+ZE+KFO+KBR+PAR+IMP+ZE+PAR"), {"m -1", ""}}) {
        CHVMCf cf;
        for (const char * p = pAktiv; *p; ++p)
            cf.m_vBgParam.push_back({"01", *p, {}, false, 1, true, 0});
        cf.m_vBgParam.push_back({"01", 'k', {}, false, 1, false, 0}); // not active
        cf.m_vBgParam.push_back({"02", 'k', {}, false, 1, true, 0});  // another owner's
        EXPECT_EQ(cf.GetSelText("01"), CString(pText));
    }
}

// ---- all or nothing

// Old rows, and a configuration that changes, adds and deletes rows of every kind.
const CReihen ALT = {{"at-012024", "0"},    {"bg-01c", "b|0|1|0|"},
                     {"bg-01c03", "x|weg"}, {"bw-01", "1"},
                     {"einstell", "1"},     {"feiertag", "10000000100000000000"},
                     {"leistung05", "weg"}, {"ur-0120244", "2024010120240102"}};

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

TEST_F(HVMCf, EinFehlerAnJederStelleLaesstAlteOderNeueReihen) {
    CReihen vGeaendert = REIHEN;
    vGeaendert[10].second[2] = vGeaendert[12].second[1] = '1';
    const struct {
        bool (*pSchreibe)();
        CReihen vVorher, vNachher;
        int iFehlschlaege; // at least: walks, deletions and writes have failed
    } aFaelle[] = {{&SchreibeNeu, ALT, REIHEN, 50}, {&LiesAendereSchreibe, REIHEN, vGeaendert, 150}};
    InJedemSpeicher([&] {
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
    });
}

// The process is killed before its n-th operation, for each n; the file then holds the old rows or the new ones.
TEST_F(HVMCf, EinAbbruchDesProzessesLaesstAlteOderNeueReihen) {
    {
        const CTestpraxis praxis(Sqlite());
        Schreibe(ALT);
    }
    int iStelle = 1;
    for (bool bGelungen = false; !bGelungen; ++iStelle) {
        const pid_t kind = fork();
        ASSERT_GE(kind, 0);
        if (kind == 0) {
            const auto pFehler = std::make_shared<CFehlerspeicher>(Sqlite());
            pFehler->FehlerBei(iStelle, [] { kill(getpid(), SIGKILL); });
            dbDatabase.Verbinde(pFehler);
            _exit(SchreibeNeu() ? 0 : 1);
        }
        int iStatus = 0;
        ASSERT_EQ(waitpid(kind, &iStatus, 0), kind);
        bGelungen = WIFEXITED(iStatus);
        ASSERT_TRUE(bGelungen ? WEXITSTATUS(iStatus) == 0 : WTERMSIG(iStatus) == SIGKILL);
        const CTestpraxis praxis(Sqlite());
        ASSERT_EQ(Lies(), bGelungen ? REIHEN : ALT) << "killed before operation " << iStelle;
    }
    EXPECT_GT(iStelle, 50);
}

TEST_F(HVMCf, OhneSchreibrechtUndNachEinemLesefehlerBleibtAllesStehen) {
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    CTestpraxis praxis(pSpeicher);
    praxis.ZaehleAlles();
    Schreibe(ALT);
    pSpeicher->SetzeNurLesen(true);
    EXPECT_FALSE(SchreibeNeu());
    pSpeicher->SetzeNurLesen(false);
    CHVMCf cf;
    praxis.Lesend().FehlerBei(2);
    cf.ReadLs();
    EXPECT_TRUE(cf.WriteFt() && cf.WriteParPool());
    EXPECT_FALSE(cf.Vollstaendig() || cf.Gespeichert());
    EXPECT_EQ(Lies(), ALT);
    cf.Init();
    EXPECT_TRUE(cf.Vollstaendig() && cf.WriteFt() && cf.Gespeichert());
    dbDatabase.Verbinde(nullptr);
    EXPECT_FALSE(SchreibeNeu());
}

} // namespace
} // namespace orvostat
