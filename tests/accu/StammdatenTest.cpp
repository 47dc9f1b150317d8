#include "accu/AccuTest.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <functional>
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
protected:
    // From here on the reads are counted, and one of them can be made to fail.
    static std::shared_ptr<CFehlerspeicher> ZaehleZugriffe() {
        auto pSpeicher = std::make_shared<CFehlerspeicher>(dbDatabaseRO.Speicher());
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
        return pSpeicher;
    }
    static void SchreibeMandanten();
    static void SchreibeBehandler();
    [[nodiscard]] CTexte Mandanten() const { return Spalte(m_accu.m_vMd, &CMdStruct::m_sMdId); }
    [[nodiscard]] CTexte Behandler() const { return Spalte(m_accu.m_vLeb, &CLebStruct::m_sLeb); }
    [[nodiscard]] CTexte AlleBehandler() const { return Spalte(m_accu.m_vLebAlle, &CLebStruct::m_sLeb); }
    [[nodiscard]] CTexte Gebuehren() const { return Spalte(m_accu.m_vGO.Lesend(), &CGOStruct::m_sGoText); }
};

// ---- practices

// Two first owners, one branch each, and a deleted owner.
void StammdatenTest::SchreibeMandanten() {
    Schreibe<CTPraxis>({.m_PRAXISID = " 1", .m_KZVNR = "04"});
    Schreibe<CTMandant>({.m_MDID = " 4", .m_MDZWEIG = "z"});
    Schreibe<CTMandant>({.m_MDID = " 3", .m_GELOESCHT = "1"});
    Schreibe<CTMandant>({.m_MDID = " 2", .m_MDNAME = "Gold", .m_MDZWEIG = "z", .m_MDADRNR = "7"});
    Schreibe<CTMandant>({.m_MDID = " 1"});
    Schreibe<CTAdr>(
        {.m_ADRNR = "7", .m_ADRART = "m", .m_PATVORNAME = "Eva", .m_PATNAME = "Gold", .m_PATORT = "Ulm"});
}

TEST_F(StammdatenTest, MandantenNachAuswahlUndZweig) {
    SchreibeMandanten();
    const struct {
        bool bFilter, bNurEigenes;
        CString sMdId, sMandant;
        CTexte vErwartet;
    } vFaelle[] = {
        {true, false, " 2", "", {" 1", " 2", " 4"}},
        {false, true, " 2", "", {" 1", " 2", " 4"}},
        {true, true, " 2", "", {" 1", " 2"}},
        {true, true, "", "", {" 1"}},
        {false, false, "", "2", {" 2"}},
        {true, true, " 4", "2", {}},
    };
    for (const auto & fall : vFaelle) {
        dbMdId = fall.sMdId;
        m_accu.SetMandant(fall.sMandant);
        EXPECT_EQ(m_accu.GetAllMd(fall.bFilter, fall.bNurEigenes), !fall.vErwartet.empty())
            << &fall - vFaelle;
        EXPECT_EQ(Mandanten(), fall.vErwartet) << &fall - vFaelle;
    }
}

TEST_F(StammdatenTest, MandantenSindSortiertUndBringenIhreAdresseMit) {
    SchreibeMandanten();
    CTMandantAdr rMd(dbDatabase);
    rMd.SetKey(1, false);
    ASSERT_EQ(rMd.GetAll(), 0);
    EXPECT_EQ(m_accu.FillMdStruct(rMd, false, false), 4); // deleted ones too: the record set's caller decides
    EXPECT_EQ(Mandanten(), (CTexte{" 1", " 2", " 3", " 4"}));
    ASSERT_EQ(m_accu.FindMd(" 2"), 1);
    EXPECT_EQ(Spalte(m_accu.m_vMd, &CMdStruct::m_sMdAdr3), (CTexte{"", "Ulm", "", ""}));
    EXPECT_EQ(m_accu.FindMd("2"), -1);
}

TEST_F(StammdatenTest, OhnePraxisOderMandantBleibtDieTabelle) {
    m_accu.m_vMd.resize(1);
    Schreibe<CTMandant>({.m_MDID = " 1"});
    EXPECT_FALSE(m_accu.GetAllMd(false, false));
    Schreibe<CTPraxis>({.m_PRAXISID = " 1"});
    m_accu.SetMandant("5");
    EXPECT_FALSE(m_accu.GetAllMd(false, false));
    EXPECT_EQ(Mandanten(), CTexte{""});
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
    SchreibeMandanten();
    dbMdId = " 4";
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(m_accu.m_pFachbereiche, nullptr) << "not installed";
    m_bibliotheken.Registriere("kelabr", "Anderes"_t, &Initialisiere);
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(m_rekorder.m_vPrompts.size(), 2u) << "the function is missing, for each owner";
    EXPECT_EQ(Mandanten(), (CTexte{" 1", " 4"}));
    m_rekorder.m_vPrompts.clear();
    m_bibliotheken.Registriere("kelabr", "InitialisiereFachbereiche"_t, &Initialisiere);
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_TRUE(m_accu.GetAllMd(true, true));
    EXPECT_EQ(s_vAufrufe, (CTexte{" 1/ 1"_t, " 1/ 4"_t, " 1/ 1"_t, " 1/ 4"_t}));
    EXPECT_TRUE(s_pBlock != nullptr && s_pBlock == m_accu.m_pFachbereiche);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
}

// ---- treaters

// Two sites, two persons with an address, a deleted treater.
void StammdatenTest::SchreibeBehandler() {
    Schreibe<CTLeb>({.m_LEB = "  1", .m_PID = "A", .m_PRAXISID = " 1"});
    Schreibe<CTLeb>({.m_LEB = "  2", .m_PID = "B", .m_PRAXISID = " 1"});
    Schreibe<CTLeb>({.m_LEB = "  3", .m_PID = "A", .m_PRAXISID = " 2"});
    Schreibe<CTLeb>({.m_LEB = "  4", .m_PID = "C", .m_PRAXISID = " 2", .m_GELOESCHT = "1"});
    Schreibe<CTPersonal>({.m_PID = "A", .m_PERSADRNR = "70 "});
    Schreibe<CTPersonal>({.m_PID = "B", .m_PERSADRNR = "71"});
    Schreibe<CTPersonal>({.m_PID = "D", .m_PERSADRNR = "79"});
    Schreibe<CTPersonal>({.m_PID = "E"});
    Schreibe<CTAdr>({.m_ADRART = "w", .m_PATNAME = "Niemand"});
    Schreibe<CTAdr>(
        {.m_ADRNR = "70", .m_ADRART = "w", .m_PATTITEL = "Dr.", .m_PATVORNAME = "Eva", .m_PATNAME = "Gold"});
    Schreibe<CTAdr>({.m_ADRNR = "71", .m_ADRART = "p", .m_PATNAME = "Patient"_t});
    Schreibe<CTAdr>({.m_ADRNR = "72", .m_ADRART = "w", .m_PATNAME = "Fremd"});
}

TEST_F(StammdatenTest, BehandlerNachAuswahlPersonUndStandort) {
    SchreibeBehandler();
    const struct {
        bool bFilter, bAlle;
        CString sPId;
        bool bPraxisLeb;
        CTexte vLebs, vErwartet, vAlle; // vLebs: the selection
    } vFaelle[] = {
        {false, false, "A", false, {}, {"  1", "  2", "  3"}, {"  1", "  2", "  3"}},
        {true, false, "A", false, {}, {"  1", "  3"}, {"  1", "  3"}},
        {true, true, "A", false, {}, {"  1", "  2", "  3"}, {"  1", "  2", "  3"}},
        {true, false, "X", false, {}, {}, {}},
        {true, false, "A", true, {}, {"  3"}, {"  1", "  3"}},
        {false, false, "A", false, {"  2", "2"}, {"  2"}, {"  1", "  2", "  3"}},
        {true, false, "B", false, {"  1", "  2"}, {"  2"}, {"  2", "  3"}}, // 3: only the selected by person
        {true, false, "B", true, {"  1", "  2"}, {}, {"  2", "  3"}},
    };
    dbPraxisId = " 2";
    for (const auto & fall : vFaelle) {
        dbPId = fall.sPId;
        dbPraxisLeb = fall.bPraxisLeb;
        m_accu.SetLebs(fall.vLebs);
        EXPECT_EQ(m_accu.GetAllLeb(fall.bFilter, fall.bAlle), !fall.vErwartet.empty()) << &fall - vFaelle;
        EXPECT_EQ(Behandler(), fall.vErwartet) << &fall - vFaelle;
        EXPECT_EQ(AlleBehandler(), fall.vAlle) << &fall - vFaelle;
    }
}

TEST_F(StammdatenTest, GeloeschteBehandlerNurMitSchalter) {
    SchreibeBehandler();
    Schreibe<CTParPool>({.m_GRUPPE = "1", .m_KUERZEL = "showdelleb"_t, .m_WERT = "1"}); // of another group
    EXPECT_TRUE(m_accu.GetAllLeb(false, false));
    EXPECT_EQ(Behandler().size(), 3u);
    for (const auto & [pWert, iErwartet] : {std::pair("0", 3u), {"1", 4u}, {"11", 3u}}) {
        CTParPool rPool(dbDatabase);
        rPool.m_GRUPPE = "0";
        rPool.m_KUERZEL = "showdelleb"_t;
        rPool.m_WERT = pWert;
        ASSERT_EQ(rPool.Write(), 0);
        EXPECT_TRUE(m_accu.GetAllLeb(false, false));
        EXPECT_EQ(Behandler().size(), iErwartet) << pWert;
        ASSERT_EQ(rPool.GetByK1(), 0);
        ASSERT_EQ(rPool.Delete(), 0);
    }
}

TEST_F(StammdatenTest, NurDieAusgewaehltenBehandlerSindSortiertUndBenannt) {
    SchreibeBehandler();
    CTLeb rLeb;
    rLeb.SetKey(1, false);
    ASSERT_EQ(rLeb.GetAll(), 0);
    m_accu.SetLebs({"  2", "  1"});
    EXPECT_EQ(m_accu.FillLebStruct(rLeb, false, false), 2);
    EXPECT_EQ(Behandler(), (CTexte{"  1", "  2"}));
    EXPECT_EQ(AlleBehandler(), (CTexte{"  4", "  3", "  2", "  1"}));
    EXPECT_EQ(Spalte(m_accu.m_vLeb, &CLebStruct::m_sLebName), (CTexte{"Dr. Eva Gold"_t, ""}));
    EXPECT_EQ(Spalte(m_accu.m_vLebAlle, &CLebStruct::m_sLebName), (CTexte{"", "", "", "Dr. Eva Gold"_t}));
    EXPECT_EQ(Spalte(m_accu.m_vLebAlle, &CLebStruct::m_sPersId), (CTexte{"C", "A", "B", "A"}));
    EXPECT_EQ(m_accu.FindLeb("  2"), 1);
    EXPECT_EQ(m_accu.FindLeb("  4"), -1); // stands among all, not among the selected
}

TEST_F(StammdatenTest, Personenadressen) {
    SchreibeBehandler();
    std::map<CString, CTAdr_Fields> mapAdr;
    mapAdr["Z"].m_PATNAME = "alt";
    CStatAccu::GetPersAdrCache(mapAdr);
    ASSERT_EQ(mapAdr.size(), 2u);
    EXPECT_EQ(mapAdr["A"].m_PATNAME, "Gold"_t);
    EXPECT_EQ(mapAdr["Z"].m_PATNAME, "alt"_t);

    CTPersonalAdr rPersonal;
    rPersonal.SetKey(1, false);
    EXPECT_TRUE(CStatAccu::GetPersAdr(rPersonal, "A"));
    EXPECT_EQ(rPersonal.m_PATVORNAME, "Eva"_t);
    EXPECT_FALSE(CStatAccu::GetPersAdr(rPersonal, "X"));
    EXPECT_TRUE(CStatAccu::GetPersAdr(rPersonal, "E"));
    EXPECT_EQ(rPersonal.m_PATNAME, ""_t) << "no number, no address";
    ASSERT_EQ(rPersonal.GetAll(), 0); // ascending from now on
    EXPECT_EQ(rPersonal.m_PID, "A"_t);
}

TEST_F(StammdatenTest, LebsStringNachMandant) {
    m_accu.m_bAlleLebsPassen = false;
    EXPECT_EQ(m_accu.Lebs2String(), ""_t);
    EXPECT_TRUE(m_accu.m_bAlleLebsPassen);
    for (const auto & [pLeb, pKasse, pPrivat] :
         {std::tuple("1", " 1", " 1"), {"2", " 2", ""}, {"3", "", " 2"}}) {
        CLebStruct & leb = m_accu.m_vLeb.emplace_back();
        leb.m_sLeb = pLeb;
        leb.m_sMdKasse = pKasse;
        leb.m_sMdPrivat = pPrivat;
    }
    for (const auto & [pMandant, pErwartet] :
         {std::pair("", "'1','2','3'"), {"1", "'1'"}, {"2", "'2','3'"}, {"3", ""}}) {
        m_accu.SetMandant(pMandant);
        EXPECT_EQ(m_accu.Lebs2String().Utf8(), pErwartet);
        EXPECT_EQ(m_accu.m_bAlleLebsPassen, *pMandant == 0) << pMandant;
    }
}

// ---- point values

TEST_F(StammdatenTest, PunktwertgruppenWerdenAngehaengt) {
    EXPECT_FALSE(m_accu.GetAllPwGrp());
    Schreibe<CTPwGroup>({.m_PWGRP = "vdek", .m_PWGRPNAME = "Ersatz"});
    Schreibe<CTPwGroup>({.m_PWGRP = "AÖK", .m_PWGRPNAME = "Orts"});
    EXPECT_TRUE(m_accu.GetAllPwGrp());
    EXPECT_TRUE(m_accu.GetAllPwGrp());
    EXPECT_EQ(Spalte(m_accu.m_vPwGrp, &CPwGrp::m_sPwGrp), (CTexte{"AÖK", "vdek", "AÖK", "vdek"}));
    EXPECT_EQ(m_accu.FindPwGrp("VDEK"), 1);
    EXPECT_EQ(m_accu.FindPwGrp("aök"), 0);
    EXPECT_EQ(m_accu.FindPwGrp("vde"), -1);
}

TEST_F(StammdatenTest, NeuesterPunktwertDerAmTagGilt) {
    EXPECT_FALSE(m_accu.GetAllPw());
    const std::tuple<const char *, const char *, const char *> vZeilen[] = {
        {"20230101", "Aok", "1"}, {"20240101", "AOK", "1"},  {"20220101", "aok", "1"},
        {"20230701", "AOK", "2"}, {"20240601", "vdek", "1"},
    };
    for (const auto & [pAb, pGrp, pLArt] : vZeilen)
        Schreibe<CTPunktWert>({.m_PWAB = pAb, .m_PWGRP = pGrp, .m_PWLART = pLArt});
    EXPECT_TRUE(m_accu.GetAllPw());
    const struct {
        CString sGrp;
        char cLArt;
        CString sDatum, sErwartetAb; // empty: none
    } vFaelle[] = {
        {"AOK", '1', "20211231", ""},          {"AOK", '1', "20220101", "20220101"},
        {"AOK", '1', "20221231", "20220101"},  {"AOK", '1', "20231231", "20230101"},
        {"aOk", '1', "99991231", "20240101"},  {"AOK", '2', "20240101", "20230701"},
        {"AOK", '2', "20230630", ""},          {"AOK", '3', "20240101", ""},
        {"VDEK", '1', "20240601", "20240601"}, {"", '1', "20240101", ""},
        {"bkk", '1', "20240101", ""},          {"AOK", '1', "", ""},
    };
    for (const auto & fall : vFaelle) {
        const CPw * pPw = m_accu.FindPw(fall.sGrp, fall.cLArt, fall.sDatum);
        EXPECT_EQ(pPw ? pPw->m_sPwAb : CString(), fall.sErwartetAb) << &fall - vFaelle;
    }
}

// Also of a hit that takes no value from the table.
TEST_F(StammdatenTest, JedeBewertungHinterlaesstIhrePunktwertgruppe) {
    CBehHitLine hit;
    hit.LSTNR = "1";
    hit.GOART = 'p';
    for (const char * pGrp : {"", "BKK", "BKK", "aok"}) {
        if (*pGrp == 'a') m_accu.m_mapPw.clear();
        hit.KASSENPWGRP = pGrp;
        m_accu.GetPunkte(hit);
    }
    EXPECT_TRUE(m_accu.m_mapPw.size() == 1 && m_accu.m_mapPw.contains("aok"));
    hit.KASSENPWGRP = "BKK";
    m_accu.GetPunkte(hit);
    EXPECT_TRUE(m_accu.m_mapPw.size() == 2 && m_accu.m_mapPw.at("bkk").empty());
    EXPECT_TRUE(m_accu.m_vBehErrors.empty());
}

// ---- fee rows

TEST_F(StammdatenTest, GebuehrenzeileWirdEinmalGelesen) {
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "ä1", .m_LSTKUERZEL = "kä", .m_GOTEXT = "erste"});
    Schreibe<CTGO>({.m_GOART = "p", .m_LSTNR = "Ä1", .m_LSTKUERZEL = "kä", .m_GOTEXT = "privat"});
    Schreibe<CTGoCheck>({.m_GOART = "e", .m_LSTNR = "ä1", .m_EXTRAFLAG = "p", .m_CHECKTEXT = "x000012yy3"_t});
    EXPECT_TRUE(m_accu.GetAllGO());
    EXPECT_TRUE(m_accu.m_vGO.empty());
    EXPECT_EQ(m_accu.FindGO("Ä1", 'e'), 0);
    EXPECT_EQ(m_accu.FindGO("ä1", 'p'), 1);
    EXPECT_TRUE(HatGelesen());
    EXPECT_EQ(m_accu.FindGO("ä1", 'e'), 0);
    EXPECT_EQ(m_accu.FindGO("Ä1", 'p'), 1);
    EXPECT_EQ(m_accu.FindGOKuerzel("KÄ", 'p'), 1);
    EXPECT_EQ(m_accu.FindGOKuerzel("kä", 'e'), 0);
    EXPECT_FALSE(HatGelesen());
    EXPECT_EQ(Gebuehren(), (CTexte{"erste", "privat"}));
    EXPECT_EQ(m_accu.m_vGO.Lesend()[0].m_iPruefZeitQ, 12);
}

TEST_F(StammdatenTest, FehlendeGebuehrenzeileWirdJedesmalGefragt) {
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "01", .m_LSTKUERZEL = "U"});
    const auto pZaehler = ZaehleZugriffe();
    for (int i = 1; i <= 2; ++i) {
        EXPECT_EQ(m_accu.FindGO("02", 'e'), -1);
        EXPECT_EQ(m_accu.FindGO("01", 'p'), -1);
        EXPECT_EQ(m_accu.FindGOKuerzel("V", 'e'), -1);
        EXPECT_EQ(m_accu.FindGO("", 'e'), -1);
        EXPECT_EQ(m_accu.FindGOKuerzel("", 'e'), -1);
        EXPECT_EQ(pZaehler->Operationen(), 6 * i); // each walk and its end; an empty text is not asked for
    }
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "02", .m_LSTKUERZEL = "V"});
    EXPECT_EQ(m_accu.FindGO("02", 'e'), 0);
    m_accu.m_rGO.m_LSTNR = "01";
    EXPECT_EQ(m_accu.FindGO(m_accu.m_rGO.m_LSTNR, 'e'), 1);
}

TEST_F(StammdatenTest, VonMehrerenZeilenEinesSchluesselsStehtDieErste) {
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "Ä1", .m_LSTKUERZEL = "K", .m_GOTEXT = "erste"});
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "ä1", .m_LSTKUERZEL = "K", .m_GOTEXT = "zweite"});
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "2", .m_LSTKUERZEL = "K", .m_GOTEXT = "andere"});
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
    std::vector<CGOStruct> * pVergeben = nullptr; // taken when a third of the steps is done
    const std::function<void()> aVergeben[] = {
        [&] { pVergeben->push_back(Neue()); },
        [&] { pVergeben->pop_back(); },
        [&] { pVergeben->at(Wurf(v.size())).m_sLst = Neue().m_sLst; },
        [&] { pVergeben->front() = Neue(); },
    };
    const std::function<void()> aAenderungen[] = {
        [&] { v.push_back(Neue()); }, // always while the table is short
        [&] { v.emplace_back(Neue()); },
        [&] { v.erase(v.begin() + Stelle()); },
        [&] { v.erase(v.begin() + 1, v.end() - 1); },
        [&] { v[Wurf(v.size())].m_sLst = Neue().m_sLst; },
        [&] { v.back().m_cGoArt = Neue().m_cGoArt; },
        [&] { v.begin()->m_sKuerzel = Neue().m_sKuerzel; },
        [&] { std::swap(v[0], v[Wurf(v.size())]); },
        [&] { v.clear(); },
        [&] { v.pop_back(); },
        [&] { v.insert(v.begin() + Stelle(), Neue()); },
        [&] { v.insert(v.begin() + Stelle(), vVorrat.begin(), vVorrat.end()); },
        [&] { v.insert(v.cend(), 2, Neue()); },
        [&] {
            v.insert(v.begin(), {Neue(), Neue()});
        },
        [&] { v.emplace(v.begin() + Stelle(), Neue()); },
        [&] {
            v.assign({Neue(), Neue(), Neue(), Neue()});
        },
        [&] { v.assign(vVorrat.rbegin(), vVorrat.rend()); },
        [&] { v.rbegin()->m_sLst = Neue().m_sLst; },
        [&] { v.data()[1] = Neue(); },
        [&] { v.swap(vVorrat); },
        [&] { v.shrink_to_fit(); },
        [&] { std::ranges::for_each(v, [&](CGOStruct & go) { go.m_cGoArt = Neue().m_cGoArt; }); },
        [&] {
            std::sort(v.begin(), v.end(), [](const auto & a, const auto & b) { return a.m_sLst < b.m_sLst; });
        },
        [&] { v.resize(v.size() + 1); },
        [&] { std::reverse(v.begin(), v.end()); },
        [&] { erase_if(v, [](const CGOStruct & go) { return go.m_cGoArt == 'p'; }); },
        [&] {
            v = {Neue(), Neue(), Neue()};
        },
        [&] {
            CIndexVektor<CGOStruct> anderer{Neue(), Neue()};
            std::swap(v, anderer);
        },
        [&] {
            CStatAccu kopie(m_accu);
            kopie.m_vGO[0] = Neue();
            m_accu = kopie;
        },
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
        aAenderungen[v.Lesend().size() < 3 ? 0 : Wurf(std::size(aAenderungen))]();
        if (pVergeben != nullptr && v.size() > 2) aVergeben[Wurf(std::size(aVergeben))]();
        if (i % 3 == 0) continue;
        for (const CString & sText : vTexte)
            for (const char cArt : {'e', 'p', 'x'}) {
                ASSERT_EQ(m_accu.FindGO(sText, cArt), Linear(&CGOStruct::m_sLst, sText, cArt)) << i;
                ASSERT_EQ(m_accu.FindGOKuerzel(sText, cArt), Linear(&CGOStruct::m_sKuerzel, sText, cArt))
                    << i;
            }
    }
}

// ---- pools

TEST_F(StammdatenTest, SelectPoolMitUndOhneUnbekannt) {
    Schreibe<CTSelectPool>(
        {.m_SPPOOL = "p", .m_SPLFD = "2", .m_SPKEY = "b", .m_SPTEXT = "Zwei", .m_SPEXTRA = "x"});
    Schreibe<CTSelectPool>({.m_SPPOOL = "p", .m_SPLFD = "1", .m_SPKEY = "B", .m_SPTEXT = "Eins"});
    Schreibe<CTSelectPool>({.m_SPPOOL = "p", .m_SPLFD = "3", .m_SPTEXT = "Ohne"});
    Schreibe<CTSelectPool>({.m_SPPOOL = "q", .m_SPLFD = "1", .m_SPTEXT = "Ohne"});
    std::vector<CSPData> v(1);
    const auto Texte = [&v] { return Spalte(v, &CSPData::m_sText); };
    EXPECT_TRUE(m_accu.GetSelectPoolData("p", v, true));
    EXPECT_EQ(Spalte(v, &CSPData::m_sExtra), (CTexte{"", "x", ""}));
    EXPECT_EQ(m_accu.FindSelectPoolData(v, "b"_t), 1);
    EXPECT_EQ(m_accu.FindSelectPoolData(v, ""_t), 2);
    EXPECT_EQ(m_accu.FindSelectPoolData(v, "c"_t), -1);
    EXPECT_TRUE(m_accu.GetSelectPoolData("p", v, false));
    EXPECT_EQ(Texte(), (CTexte{"Eins", "Zwei", "Unbekannt ..."_t, "Eins", "Zwei"}));
    EXPECT_TRUE(m_accu.GetSelectPoolData("leer", v, false));
    EXPECT_EQ(v.size(), 5u);
    EXPECT_FALSE(m_accu.GetSelectPoolData("q", v, true)); // an entry without key is none
    EXPECT_TRUE(v.empty());
    EXPECT_FALSE(m_accu.GetSelectPoolData("leer", v, false));
    const auto pSpeicher = ZaehleZugriffe();
    v.resize(1);
    pSpeicher->FehlerBei(3);
    EXPECT_FALSE(m_accu.GetSelectPoolData("p", v, false)) << "a store that fails";
    EXPECT_EQ(v.size(), 1u);
}

TEST_F(StammdatenTest, ErsatzlisteAusDemParameterpool) {
    const struct {
        CString sKuerzel, sWert;
    } vZeilen[] = {
        {"01ä1", "1 k1"},    // taken
        {"02A2", "0 k2"},    // switched off
        {"03A3", "ohne"},    // no service
        {"04", "1 k4"},      // no replacement
        {"05A5", "1 "},      // no service
        {"06A6", "10 k6 x"}, // all behind the first blank
        {"07A7", "1  k7"},   // a second blank belongs to the service
        {"09A9", " k9"},     // begins with the blank
        {"0", "1 k0"},       // too short for a replacement
    };
    for (const auto & [sKuerzel, sWert] : vZeilen)
        Schreibe<CTParPool>({.m_GRUPPE = " 12", .m_KUERZEL = sKuerzel, .m_WERT = sWert});
    Schreibe<CTParPool>({.m_GRUPPE = "1", .m_KUERZEL = "99B9", .m_WERT = "1 b9"});
    using CErsatz = std::pair<CString, CString>;
    EXPECT_TRUE(m_accu.ReadParPoolData(12));
    EXPECT_EQ(Spalte(m_accu.m_vLstErsatz, &CErsatz::first), (CTexte{"k1", "k6 x", " k7", "k9"}));
    EXPECT_EQ(Spalte(m_accu.m_vLstErsatz, &CErsatz::second), (CTexte{"ä1", "A6", "A7", "A9"}));
    EXPECT_TRUE(m_accu.ReadParPoolData(3));
    EXPECT_TRUE(m_accu.m_vLstErsatz.empty());
}

// ---- a store that fails

TEST_F(StammdatenTest, EinGescheiterterZugriffIstEinFehlendeZeile) {
    SchreibeMandanten();
    SchreibeBehandler();
    Schreibe<CTGO>({.m_GOART = "e", .m_LSTNR = "01"});
    const auto pSpeicher = ZaehleZugriffe();
    pSpeicher->FehlerBei(1);
    EXPECT_EQ(m_accu.FindGO("01", 'e'), -1);
    EXPECT_EQ(m_accu.FindGO("01", 'e'), 0);

    m_accu.m_vMd.resize(1);
    pSpeicher->FehlerBei(1);
    EXPECT_FALSE(m_accu.GetAllMd(false, false));
    EXPECT_EQ(Mandanten(), CTexte{""});
    m_accu.m_vLeb.resize(1);
    pSpeicher->FehlerBei(4); // the switch is asked first: its walk and that walk's end
    EXPECT_FALSE(m_accu.GetAllLeb(false, false));
    EXPECT_EQ(Behandler(), CTexte{""});
    for (const auto pLies : {&CStatAccu::GetAllMd, &CStatAccu::GetAllLeb}) {
        for (int i = 1; i < 40; ++i) {
            pSpeicher->FehlerBei(i);
            static_cast<void>((m_accu.*pLies)(false, false));
        }
        pSpeicher->FehlerBei(0);
        EXPECT_TRUE((m_accu.*pLies)(false, false));
    }
    EXPECT_EQ(Mandanten(), (CTexte{" 1", " 2", " 4"}));
    EXPECT_EQ(Behandler(), (CTexte{"  1", "  2", "  3"}));
    EXPECT_EQ(EntlieheneRSets(), 0);
}

} // namespace

} // namespace orvostat
