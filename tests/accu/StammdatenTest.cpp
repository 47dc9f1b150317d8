#include "accu/AccuTest.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <tuple>

namespace orvostat {

namespace {

template <class V, class T> std::vector<CString> Spalte(const V & v, CString T::*pFeld) {
    std::vector<CString> vWerte;
    for (const T & t : v)
        vWerte.push_back(t.*pFeld);
    return vWerte;
}

using CTexte = std::vector<CString>;

class StammdatenTest : public CAccuTest {
public:
    // Two owners, one of them deleted, a branch of each; three treaters and a deleted one at two sites.
    StammdatenTest() {
        Schreibe(R"(PRAXIS PRAXISID=" 1" KZVNR=04
                    MANDANT MDID=" 4" MDZWEIG=z
                    MANDANT MDID=" 3" GELOESCHT=1
                    MANDANT MDID=" 2" MDZWEIG=z MDADRNR=7
                    MANDANT MDID=" 1"
                    ADR ADRNR=7 ADRART=m PATORT=Ulm
                    LEB LEB="  1" PID=A PRAXISID=" 1" MDKASSE=" 1" MDPRIVAT=" 1"
                    LEB LEB="  2" PID=B PRAXISID=" 1" MDKASSE=" 2"
                    LEB LEB="  3" PID=A PRAXISID=" 2" MDPRIVAT=" 2"
                    LEB LEB="  4" PID=C PRAXISID=" 2" GELOESCHT=1
                    PERSONAL PID=A PERSADRNR="70 "
                    PERSONAL PID=B PERSADRNR=71
                    PERSONAL PID=D PERSADRNR=79
                    PERSONAL PID=E
                    ADR ADRART=w PATNAME=Niemand
                    ADR ADRNR=70 ADRART=w PATTITEL=Dr. PATVORNAME=Eva PATNAME=Gold
                    ADR ADRNR=71 ADRART=p PATNAME=Patient)");
    }
    void MandantenFall(CFall & fall) {
        dbMdId = fall.Ein("MDID");
        Waehle(m_accu, fall);
        fall.Aus("JA", m_accu.GetAllMd(fall.Ein<bool>("FILTER"), fall.Ein<bool>("EIGENES")));
        fall.Aus("MD", Mandanten());
        if (fall.Erwartet("ORT")) fall.Aus("ORT", Spalte(m_accu.m_vMd, &CMdStruct::m_sMdAdr3));
    }
    void BehandlerFall(CFall & fall) {
        dbPraxisId = " 2";
        dbPId = fall.Ein("PID");
        fall.Nimm("PRAXISLEB", dbPraxisLeb);
        Waehle(m_accu, fall);
        fall.Aus("JA", m_accu.GetAllLeb(fall.Ein<bool>("FILTER"), fall.Ein<bool>("ALLE")));
        fall.Aus("LEB", Behandler());
        fall.Aus("LEBALLE", Spalte(m_accu.m_vLebAlle, &CLebStruct::m_sLeb));
        if (fall.Erwartet("LISTE")) fall.Aus("LISTE", m_accu.Lebs2String());
        if (fall.Erwartet("PASSEN")) fall.Aus("PASSEN", m_accu.m_bAlleLebsPassen);
        if (fall.Erwartet("NAMEN")) fall.Aus("NAMEN", Spalte(m_accu.m_vLebAlle, &CLebStruct::m_sLebName));
    }
    void Punktwert(CFall & fall) {
        EXPECT_TRUE(m_accu.GetAllPw());
        const CPw * pPw = m_accu.FindPw(fall.Ein("GRP"), fall.Ein<char>("ART"), fall.Ein("DATUM"));
        fall.Aus("AB", pPw ? pPw->m_sPwAb : CString());
    }
    void Ersatzliste(CFall & fall) {
        using CErsatz = std::pair<CString, CString>;
        m_accu.m_vLstErsatz.resize(1);
        EXPECT_TRUE(m_accu.ReadParPoolData(fall.Ein<int>("NR")));
        fall.Aus("ALT", Spalte(m_accu.m_vLstErsatz, &CErsatz::first));
        fall.Aus("NEU", Spalte(m_accu.m_vLstErsatz, &CErsatz::second));
    }

    [[nodiscard]] CTexte Mandanten() const { return Spalte(m_accu.m_vMd, &CMdStruct::m_sMdId); }
    [[nodiscard]] CTexte Behandler() const { return Spalte(m_accu.m_vLeb, &CLebStruct::m_sLeb); }
    [[nodiscard]] CTexte Gebuehren() const { return Spalte(m_accu.m_vGO.Lesend(), &CGOStruct::m_sGoText); }
};

TEST_F(StammdatenTest, Faelle) {
    PruefeFaelle<StammdatenTest>(ORVOSTATBS_SOURCE_DIR "/tests/accu/faelle/stammdaten.txt",
                                 {{"mandanten", &StammdatenTest::MandantenFall},
                                  {"behandler", &StammdatenTest::BehandlerFall},
                                  {"punktwert", &StammdatenTest::Punktwert},
                                  {"ersatzliste", &StammdatenTest::Ersatzliste}});
}

// ---- the billing library

SFachbereiche * s_pBlock;
CTexte s_vAufrufe; // the practice, the owner

int Initialisiere(SFachbereiche * pBlock, CTPraxis * pPraxis, CTMandantAdr * pMd, CTexte * pArbeit) {
    EXPECT_TRUE(s_pBlock == nullptr || s_pBlock == pBlock) << "the same block each time";
    EXPECT_TRUE(pArbeit->empty());
    s_pBlock = pBlock;
    s_vAufrufe.push_back(pPraxis->m_PRAXISID + "/" + pMd->m_MDID);
    pArbeit->push_back("weg");
    return 1;
}

TEST_F(StammdatenTest, AbrechnungsbibliothekWirdJeMandantGefragt) {
    dbMdId = " 4";
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(m_accu.m_pFachbereiche, nullptr) << "not installed";
    m_bibliotheken.Registriere("kelabr", "Anderes"_t, &Initialisiere);
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(m_rekorder.m_vPrompts.size(), 2u) << "the function is missing, for each owner";
    m_bibliotheken.Registriere("kelabr", "InitialisiereFachbereiche"_t, &Initialisiere);
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(s_vAufrufe, (CTexte{" 1/ 1"_t, " 1/ 4"_t}));
    EXPECT_TRUE(s_pBlock != nullptr && s_pBlock == m_accu.m_pFachbereiche);
    EXPECT_EQ(m_rekorder.m_vPrompts.size(), 2u);
}

TEST_F(StammdatenTest, SucheNachNummerUndPersonenadressen) {
    EXPECT_TRUE(m_accu.GetAllMd(false, false) && m_accu.GetAllLeb(false, false));
    EXPECT_TRUE(m_accu.FindMd(" 2") == 1 && m_accu.FindMd("2") == -1);
    EXPECT_TRUE(m_accu.FindLeb("  2") == 1 && m_accu.FindLeb("  4") == -1);
    std::map<CString, CTAdr_Fields> mapAdr;
    mapAdr["Z"].m_PATNAME = "alt";
    CStatAccu::GetPersAdrCache(mapAdr);
    ASSERT_EQ(mapAdr.size(), 2u);
    EXPECT_EQ(mapAdr["A"].m_PATNAME + mapAdr["Z"].m_PATNAME, "Goldalt"_t);

    CTPersonalAdr rPersonal;
    rPersonal.SetKey(1, false);
    EXPECT_TRUE(CStatAccu::GetPersAdr(rPersonal, "A") && rPersonal.m_PATVORNAME == "Eva");
    EXPECT_FALSE(CStatAccu::GetPersAdr(rPersonal, "X"));
    EXPECT_TRUE(CStatAccu::GetPersAdr(rPersonal, "E"));
    EXPECT_EQ(rPersonal.m_PATNAME, ""_t) << "no number, no address";
    EXPECT_TRUE(rPersonal.GetAll() == 0 && rPersonal.m_PID == "A") << "ascending from now on";
}

// ---- point values

TEST_F(StammdatenTest, PunktwertgruppenWerdenAngehaengt) {
    EXPECT_FALSE(m_accu.GetAllPwGrp());
    Schreibe(R"(PWGROUP PWGRP=vdek
                PWGROUP PWGRP=AÖK)");
    EXPECT_TRUE(m_accu.GetAllPwGrp() && m_accu.GetAllPwGrp());
    EXPECT_EQ(Spalte(m_accu.m_vPwGrp, &CPwGrp::m_sPwGrp), (CTexte{"AÖK", "vdek", "AÖK", "vdek"}));
    EXPECT_EQ(Werte(m_accu.FindPwGrp("VDEK"), m_accu.FindPwGrp("aök"), m_accu.FindPwGrp("vde")), "1||-1");
}

// Also of a hit that takes no value from the table.
TEST_F(StammdatenTest, JedeBewertungHinterlaesstIhrePunktwertgruppe) {
    CBehHitLine hit;
    hit.LSTNR = "1";
    hit.GOART = 'p';
    for (const char * pGrp : {"BKK", "", "BKK", "aok"}) {
        if (*pGrp == 0) m_accu.m_mapPw.clear();
        hit.KASSENPWGRP = pGrp;
        m_accu.GetPunkte(hit);
    }
    EXPECT_EQ(Werte(m_accu.m_mapPw.size(), m_accu.m_mapPw.count("aok"), m_accu.m_mapPw.count("bkk")),
              "2|1|1");
}

// ---- fee rows

TEST_F(StammdatenTest, GebuehrenzeileWirdEinmalGelesenUndEineFehlendeJedesmal) {
    Schreibe(R"(GO GOART=e LSTNR=ä1 LSTKUERZEL=kä GOTEXT=erste
                GO GOART=p LSTNR=Ä1 LSTKUERZEL=kä GOTEXT=privat
                GOCHECK GOART=e LSTNR=ä1 EXTRAFLAG=p CHECKTEXT=x000012yy3)");
    EXPECT_TRUE(m_accu.GetAllGO() && m_accu.m_vGO.empty());
    for (const bool bGelesen : {true, false}) {
        EXPECT_EQ(Wert(std::vector{m_accu.FindGO("Ä1", 'e'), m_accu.FindGO("ä1", 'p')}), ",1");
        EXPECT_EQ(Wert(std::vector{m_accu.FindGOKuerzel("kä", 'e'), m_accu.FindGOKuerzel("KÄ", 'p')}), ",1");
        EXPECT_EQ(HatGelesen(), bGelesen);
    }
    EXPECT_EQ(Gebuehren(), (CTexte{"erste", "privat"}));
    EXPECT_EQ(m_accu.m_vGO.Lesend()[0].m_iPruefZeitQ, 12);
    const int iVorher = m_praxis.Lesend().Operationen();
    for (int i = 1; i <= 2; ++i) {
        EXPECT_EQ(Werte(m_accu.FindGO("02", 'e'), m_accu.FindGO("", 'e'), m_accu.FindGOKuerzel("V", 'e'),
                        m_accu.FindGOKuerzel("", 'e')),
                  "-1|-1|-1|-1");
        EXPECT_EQ(m_praxis.Lesend().Operationen() - iVorher, 4 * i) << "walks and ends, an empty text none";
    }
    Schreibe("GO GOART=e LSTNR=02 LSTKUERZEL=V");
    EXPECT_EQ(m_accu.FindGO("02", 'e'), 2);
    m_accu.m_rGO.m_LSTNR = "ä1";
    EXPECT_EQ(m_accu.FindGO(m_accu.m_rGO.m_LSTNR, 'e'), 0);
}

TEST_F(StammdatenTest, VonMehrerenZeilenEinesSchluesselsStehtDieErste) {
    Schreibe(R"(GO GOART=e LSTNR=Ä1 LSTKUERZEL=K GOTEXT=erste
                GO GOART=e LSTNR=ä1 LSTKUERZEL=K GOTEXT=zweite
                GO GOART=e LSTNR=2 LSTKUERZEL=K GOTEXT=andere)");
    EXPECT_EQ(m_accu.FindGO("ä1", 'e'), 0);
    EXPECT_EQ(Gebuehren(), CTexte{"erste"});
    m_accu.m_vGO.clear();
    EXPECT_EQ(m_accu.FindGOKuerzel("k", 'e'), 1); // two numbers of one code: the last one read
    EXPECT_EQ(Gebuehren(), (CTexte{"erste", "andere"}));
    EXPECT_EQ(m_accu.FindGOKuerzel("k", 'e'), 0); // from now on the first in the table
}

// Whatever a caller does with the table, the answers are those of a search through it.
TEST_F(StammdatenTest, SucheAntwortetWieEinGangDurchDieTabelle) {
    std::mt19937 zufall(1);
    const CTexte vTexte{"1", "10", "a1", "A1", "ä", "Ä", "Ä12345678"_t, "ä12345678"_t, ""};
    auto & v = m_accu.m_vGO;
    const auto Wurf = [&](std::size_t iMax) { return static_cast<std::size_t>(zufall()) % iMax; };
    const auto Stelle = [&] { return static_cast<std::ptrdiff_t>(Wurf(v.size())); };
    const auto Neue = [&] {
        CGOStruct go;
        go.m_sLst = vTexte[Wurf(vTexte.size())];
        go.m_sKuerzel = vTexte[Wurf(vTexte.size())];
        go.m_cGoArt = Wurf(2) == 0 ? 'e' : 'p';
        return go;
    };
    std::vector<CGOStruct> vVorrat{Neue(), Neue(), Neue(), Neue(), Neue()};
    CIndexVektor<CGOStruct> andere{Neue(), Neue()};
    std::vector<CGOStruct> * pVergeben = nullptr; // taken when a third of the steps is done
    const std::function<void()> aAenderungen[] = {
        [&] { v.push_back(Neue()); }, // always while the table is short
        [&] { v.emplace_back(Neue()); },
        [&] { v.erase(v.begin() + Stelle()); },
        [&] { v[Wurf(v.size())].m_sLst = Neue().m_sLst; },
        [&] { v.back().m_cGoArt = Neue().m_cGoArt; },
        [&] { v.begin()->m_sKuerzel = Neue().m_sKuerzel; },
        [&] { std::swap(v[0], v[Wurf(v.size())]); },
        [&] { v.clear(); },
        [&] { v.pop_back(); },
        [&] { v.insert(v.begin() + Stelle(), Neue()); },
        [&] { v.insert(v.cend(), 2, Neue()); },
        [&] { v.emplace(v.begin() + Stelle(), Neue()); },
        [&] { v.assign(vVorrat.rbegin(), vVorrat.rend()); },
        [&] { v.rbegin()->m_sLst = Neue().m_sLst; },
        [&] { v.data()[1] = Neue(); },
        [&] { v.swap(vVorrat); },
        [&] { v.shrink_to_fit(); },
        [&] { v.resize(v.size() + 1); },
        [&] { erase_if(v, [](const CGOStruct & go) { return go.m_cGoArt == 'p'; }); },
        [&] { v = vVorrat; },
        [&] { std::swap(v, andere); },
        [&] {
            CStatAccu kopie(m_accu);
            kopie.m_vGO[0] = Neue();
            m_accu = kopie;
        },
        [&] { pVergeben->push_back(Neue()); }, // these only then
        [&] { pVergeben->pop_back(); },
        [&] { pVergeben->at(Wurf(v.size())).m_sLst = Neue().m_sLst; },
    };
    const auto Linear = [&](CString CGOStruct::*pFeld, CString sWert, char cArt) {
        sWert.MakeLower();
        const auto it = std::find_if(v.Lesend().begin(), v.Lesend().end(), [&](const CGOStruct & go) {
            return CString(go.*pFeld).MakeLower() == sWert && go.m_cGoArt == cArt;
        });
        return it == v.Lesend().end() ? -1 : static_cast<int>(it - v.Lesend().begin());
    };
    for (int i = 0; i < 4000; ++i) {
        if (i == 1300) pVergeben = &static_cast<std::vector<CGOStruct> &>(v);
        const std::size_t iAuswahl = std::size(aAenderungen) - (pVergeben == nullptr ? 3U : 0U);
        aAenderungen[v.Lesend().size() < 3 ? 0 : Wurf(iAuswahl)]();
        if (i % 3 == 0) continue;
        for (const CString & sText : vTexte)
            for (const char cArt : {'e', 'p', 'x'}) {
                ASSERT_EQ(m_accu.FindGO(sText, cArt), Linear(&CGOStruct::m_sLst, sText, cArt)) << i;
                ASSERT_EQ(m_accu.FindGOKuerzel(sText, cArt), Linear(&CGOStruct::m_sKuerzel, sText, cArt))
                    << i;
            }
    }
}

// ---- pools and a store that fails

TEST_F(StammdatenTest, SelectPoolMitUndOhneUnbekannt) {
    Schreibe(R"(SELECTPOOL SPPOOL=p SPLFD=2 SPKEY=b SPTEXT=Zwei
                SELECTPOOL SPPOOL=p SPLFD=1 SPKEY=B SPTEXT=Eins
                SELECTPOOL SPPOOL=q SPLFD=1 SPTEXT=Ohne)");
    std::vector<CSPData> v(1);
    EXPECT_TRUE(m_accu.GetSelectPoolData("p", v, true));
    EXPECT_EQ(m_accu.FindSelectPoolData(v, "b"_t), 1);
    EXPECT_TRUE(m_accu.GetSelectPoolData("p", v, false) && m_accu.GetSelectPoolData("leer", v, false));
    EXPECT_EQ(Spalte(v, &CSPData::m_sText), (CTexte{"Eins", "Zwei", "Unbekannt ..."_t, "Eins", "Zwei"}));
    EXPECT_FALSE(m_accu.GetSelectPoolData("q", v, true)); // an entry without key is none
    EXPECT_TRUE(v.empty());
    m_praxis.Lesend().FehlerBei(3);
    EXPECT_FALSE(m_accu.GetSelectPoolData("p", v, false)) << "a store that fails";
    EXPECT_TRUE(v.empty());
}

TEST_F(StammdatenTest, EinGescheiterterZugriffIstEinFehlendeZeile) {
    Schreibe("GO GOART=e LSTNR=01");
    m_praxis.ZaehleAlles();
    CFehlerspeicher & speicher = m_praxis.Lesend();
    speicher.FehlerBei(1);
    EXPECT_EQ(Wert(std::vector{m_accu.FindGO("01", 'e'), m_accu.FindGO("01", 'e')}), "-1,");
    m_accu.m_vMd.resize(1);
    speicher.FehlerBei(1);
    EXPECT_FALSE(m_accu.GetAllMd(false, false));
    EXPECT_EQ(Mandanten(), CTexte{""});
    m_accu.m_vLeb.resize(1);
    speicher.FehlerBei(4); // the switch is asked first: its walk and that walk's end
    EXPECT_FALSE(m_accu.GetAllLeb(false, false));
    EXPECT_EQ(Behandler(), CTexte{""});
    for (const auto pLies : {&CStatAccu::GetAllMd, &CStatAccu::GetAllLeb}) {
        for (int i = 1; i < 40; ++i) {
            speicher.FehlerBei(i);
            static_cast<void>((m_accu.*pLies)(false, false));
        }
        speicher.FehlerBei(0);
        EXPECT_TRUE((m_accu.*pLies)(false, false));
    }
    EXPECT_EQ(Werte(Mandanten(), Behandler()), " 1, 2, 4|  1,  2,  3");
    EXPECT_EQ(EntlieheneRSets(), 0);
}

} // namespace

} // namespace orvostat
