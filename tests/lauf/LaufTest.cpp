#include "orvostatbs/lauf/Lauf.h"

#include "Muster.h"
#include "orvostatbs/host/Leistungsarten.h"
#include "support/Praxis.h"

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

namespace orvostat {
namespace {

class CLaufImSpeicher : public ::testing::Test {
protected:
    CLaufImSpeicher() {
        EXPECT_EQ(ErzeugeMuster(m_praxis.Speicher(), {.iPatienten = 60, .iJahre = 1}), ZEILE_OK);
    }
    ~CLaufImSpeicher() override { EXPECT_EQ(EntlieheneRSets(), 0); }
    static void Waehle(CStatAccu & accu, const CString & sPatient = {}) {
        accu.SetIsAbgerechnet(true);
        accu.SetIsErfasst(true);
        accu.SetELab(true);
        accu.SetGLab(true);
        accu.SetPatient(sPatient);
    }

    // The hits with a plan, of a kind of billing.
    static std::int64_t Planhits(const CString & sAbrArt, const SLaufauftrag & auftrag = {}) {
        CStatAccu accu;
        Waehle(accu);
        accu.SetAbrArt(sAbrArt);
        EXPECT_EQ(CLauf(accu, auftrag).Laufe(), ELauf::Fertig);
        return std::ranges::count(accu.m_vBehHits, false, [](auto & hit) { return hit.PLANNR.IsEmpty(); });
    }

    template <class T, class F> static void Loesche(F fIst) {
        T zeile(dbDatabase);
        for (int i = zeile.GetAll(); i == ZEILE_OK;)
            i = fIst(zeile) ? zeile.DeleteRec() : zeile.Next();
    }
    // Gives the number of rows.
    template <class T, class F> static int Aendere(F fAendere) {
        T zeile(dbDatabase);
        int iZeilen = 0;
        for (int i = zeile.GetAll(); i == ZEILE_OK; i = zeile.Next(), ++iZeilen) {
            fAendere(zeile);
            EXPECT_EQ(zeile.RewriteRec(), 0);
        }
        return iZeilen;
    }

    int m_iBisSchluss = 0;
    CRekorder m_rekorder;
    CTestpraxis m_praxis;

private:
    COberflaecheErsatz m_ersatz{m_rekorder};
};

TEST_F(CLaufImSpeicher, ACancelledRunKeepsWhatItHas) {
    for (const bool bJa : {true, false}) {
        CStatAccu accu;
        Waehle(accu);
        m_rekorder.m_iAbbruchAb = static_cast<int>(m_rekorder.m_vSchritte.size()) + 1;
        m_rekorder.m_vAntworten = {bJa};
        EXPECT_EQ(CLauf(accu, SLaufauftrag()).Laufe(), bJa ? ELauf::Abgebrochen : ELauf::Fertig);
        EXPECT_GT(accu.m_vBehHits.size(), bJa ? 400U : 1200U);
        EXPECT_LT(accu.m_vBehHits.size(), bJa ? 513U : 9999U);
    }
}

TEST_F(CLaufImSpeicher, EachStepOfAHitLeavesItsTrace) {
    CStatAccu accu;
    Waehle(accu);
    accu.SetSortierung('1');
    ASSERT_EQ(CLauf(accu, {}).Laufe(), ELauf::Fertig);
    const std::vector<CBehHitLine> & vHits = accu.m_vBehHits;
    EXPECT_FALSE(std::ranges::is_sorted(vHits, {}, &CBehHitLine::PATNR)) << "sorted by name";
    const auto Einer = [&](auto pFeld) {
        return std::ranges::any_of(vHits, [&](auto & hit) { return hit.*pFeld != CBehHitLine().*pFeld; });
    };
    using H = CBehHitLine;
    EXPECT_TRUE(Einer(&H::BEFUND) && Einer(&H::m_iLebAbschlag) && Einer(&H::PROVISONSWERT));
    EXPECT_TRUE(Einer(&H::ISPRIVATPATIENT));
    for (const CBehHitLine & hit : vHits)
        EXPECT_EQ(hit.ISPRIVATPATIENT, hit.VDABDATUM.IsEmpty() || IstPrivatNachweis(hit.VNACHWEIS));
}

// The plan gate knows orthodontics by its letter "k"; only behind it multiband treatment gets its own.
TEST_F(CLaufImSpeicher, MultibandComesBehindThePlanGate) {
    for (const char * pStand : {"0", "80"}) {
        Aendere<CTPlan>([&](CTPlan & plan) { plan.m_PLANNUM = pStand; });
        EXPECT_EQ(Planhits("m") > 0, *pStand == '8');
    }
    Loesche<CTBeh>([](CTBeh & beh) { return beh.m_LSTNR >= "126" && beh.m_LSTNR < "129"; });
    EXPECT_EQ(Planhits("m"), 0) << "nothing is remembered from the run before";
    Aendere<CTPlan>([](CTPlan & plan) { plan.m_PAR22A = "1"; });
    EXPECT_GT(Planhits("p"), 0);
    EXPECT_EQ(Planhits("p", {.bOhne22a = true}), 0) << "plans of the shortened procedure are left out";
}

TEST_F(CLaufImSpeicher, ASecondRunStartsFromNothing) {
    CStatAccu accu;
    Waehle(accu, "      1001");
    CLauf lauf(accu, SLaufauftrag());
    std::vector<std::string> vHits;
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
        EXPECT_NE(accu.m_pRPat, nullptr) << "the record sets stay for whoever reads the tables";
        std::string & s = vHits.emplace_back(std::to_string(lauf.Zahlen().iBehandlungen));
        for (const CBehHitLine & hit : accu.m_vBehHits)
            s += Werte(hit.DATUM, hit.LSTNR, hit.BETRAG, hit.KASKUERZEL, hit.PATNAME);
        EXPECT_EQ(accu.m_lAnzHits, static_cast<int>(accu.m_vBehHits.size()));
    }
    EXPECT_EQ(vHits[0], vHits[1]);
    accu.SetZeitraum("29990101", "");
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    EXPECT_TRUE(accu.m_vBehHits.empty());
    lauf.Nachlauf();
    EXPECT_EQ(accu.m_pRPat, nullptr);
}

// Each record is its patient's, the collective invoices are nobody's, and no laboratory service counts twice.
TEST_F(CLaufImSpeicher, SideRecordsAreChosenAsTreatmentsAre) {
    using AZahlen = std::array<std::size_t, 5>;
    const auto Laufe = [](CStatAccu & accu) {
        CLauf lauf(accu, {.bNebenakten = true});
        EXPECT_EQ(lauf.Laufe(), ELauf::Fertig);
        return AZahlen{accu.m_vBehHits.size(), accu.m_vGlabHits.size(), accu.m_vGipsHits.size(),
                       accu.m_vRechHits.size(), accu.m_vVerordnungHits.size()};
    };
    CTLBlockEntry eintrag(dbDatabase); // of a block that a patient's treatments are in
    ASSERT_EQ(eintrag.GetAll(), ZEILE_OK);
    Aendere<CTBeh>([&](CTBeh & beh) {
        if (beh.m_PATNR != eintrag.m_PATNR) return;
        beh.m_LFDLBLOCK = eintrag.m_LFDLBLOCK;
        beh.m_LSTNR = eintrag.m_LSTNR;
    });
    CStatAccu alle;
    Waehle(alle);
    const AZahlen aAlle = Laufe(alle);
    EXPECT_TRUE(std::ranges::all_of(m_rekorder.m_vSchritte,
                                    [](auto & s) { return s.first >= 0 && s.first <= s.second; }));
    EXPECT_EQ(std::ranges::count(aAlle, 0U), 0);
    EXPECT_FALSE(alle.m_vGlabFaktHits.empty());
    std::set<CString> setBehandelt;
    int iBloecke = 0;
    for (const CBehHitLine & hit :
         alle.m_vBehHits) { // those of blocks come last and have no number of an entry
        const CString sLeistung = hit.PATNR + "/" + hit.LFDLBLOCK + "/" + hit.LSTNR;
        if (!hit.LFDBEHEINTRAG.IsEmpty() && !hit.LFDLBLOCK.IsEmpty()) setBehandelt.insert(sLeistung);
        if (!hit.LFDBEHEINTRAG.IsEmpty() || hit.LFDLBLOCK.IsEmpty()) continue;
        ++iBloecke;
        EXPECT_FALSE(setBehandelt.contains(sLeistung));
        EXPECT_FALSE(hit.PATNAME.IsEmpty() || hit.VDABDATUM.IsEmpty());
    }
    EXPECT_FALSE(setBehandelt.empty());
    EXPECT_GT(iBloecke, 0);

    AZahlen aSumme = {};
    std::set<CString> setPatienten; // an invoice of an association's package has a number of its own
    for (const CPat & pat : alle.m_vPat)
        setPatienten.insert(pat.PATNR);
    for (const CRechHitLine & hit : alle.m_vRechHits)
        setPatienten.insert(hit.PATNR);
    for (const CString & sPatNr : setPatienten) {
        CStatAccu accu;
        Waehle(accu, sPatNr);
        const AZahlen aZahlen = Laufe(accu);
        for (std::size_t i = 0; i < aSumme.size(); ++i)
            aSumme[i] += aZahlen[i];
        EXPECT_TRUE(accu.m_vGlabFaktHits.empty());
    }
    EXPECT_EQ(aSumme, aAlle);

    CStatAccu praxis; // the second, and one treater
    Waehle(praxis);
    praxis.SetMandant("2");
    praxis.SetLebs({"   3"});
    Laufe(praxis);
    EXPECT_LT(praxis.m_vGlabFaktHits.size(), alle.m_vGlabFaktHits.size());
    for (const CBehHitLine & hit : praxis.m_vBehHits)
        EXPECT_EQ(hit.PRAXISNR + hit.BEHANDLERNR, " 2   3"_t);
    for (const CGipsHitLine & hit : praxis.m_vGipsHits)
        EXPECT_EQ(hit.BEHANDLERNR, "   3"_t);
    for (const CRechHitLine & hit : praxis.m_vRechHits)
        EXPECT_EQ(hit.PRAXISNR, " 2"_t);

    praxis.SetZeitraum("29990101", "");
    EXPECT_EQ(Laufe(praxis), AZahlen());
    praxis.SetZeitraum("", "");
    praxis.SetSelektion("zzz");
    EXPECT_EQ(Laufe(praxis), AZahlen());
}

// A section leaves out for its own reason only, and with every reason the account closes: the rows read are hits or
// counted once.
TEST_F(CLaufImSpeicher, WhatIsLeftOutIsCountedUnderOneReason) {
    using enum EWeglassgrund;
    using CWahl = void (*)(CStatAccu &);
    const std::pair<EWeglassgrund, CWahl> aFaelle[] = {
        {Zeitraum, [](CStatAccu & a) { a.SetZeitraum("20240201", "20240831"); }},
        {Patient, [](CStatAccu & a) { a.SetSelektion("zzz"); }},
        {Behandler, [](CStatAccu & a) { a.SetLebs({"   3"}); }},
        {Gebuehrenart, [](CStatAccu & a) { a.SetGoArt('q'); }},
        {Erfasser, [](CStatAccu & a) { a.SetErfasser("XYZ"); }},
        {Status, [](CStatAccu & a) { a.SetIsErfasst(false); }},
        {Plan, [](CStatAccu & a) { a.SetPlan("  1"); }},
        {Planstand, [](CStatAccu &) {}},
        {Abrechnungsart, [](CStatAccu & a) { a.SetAbrArt("c"); }},
        {Praxis, [](CStatAccu & a) { a.SetMandant(" 2"); }},
        {Versicherung, [](CStatAccu & a) { a.SetRsa(true); }},
        {Kasse, [](CStatAccu & a) { a.SetKasse("AOK01"); }},
        {Leistung, [](CStatAccu & a) { a.SetLst("13a"); }},
        {Punktwertart, [](CStatAccu & a) { a.SetPwLArt("a"); }},
        {Abrechenbar, [](CStatAccu & a) { a.SetOnlyAbrechenbare(true); }},
        {Technik, [](CStatAccu & a) { a.SetTecGoSubArten(0); }},
        {PlanFehlt, [](CStatAccu &) { Loesche<CTPlan>([](CTPlan &) { return true; }); }},
        {OhnePlannummer, [](CStatAccu &) { Aendere<CTBill>([](CTBill & b) { b.m_PLANNR = ""; }); }},
        {BehandlerUnbekannt,
         [](CStatAccu &) { Loesche<CTLeb>([](CTLeb & leb) { return leb.m_LEB == "   3"; }); }},
        {PraxisUnbekannt,
         [](CStatAccu &) { Loesche<CTMandant>([](CTMandant & md) { return md.m_MDID == " 2"; }); }},
    };
    EXPECT_EQ(std::size(aFaelle), WEGLASSGRUENDE);
    const int iAlle = Aendere<CTBeh>([](CTBeh &) {});
    for (const auto & [eGrund, fWaehle] : aFaelle) {
        SCOPED_TRACE(Weglassname(eGrund).Utf8());
        CStatAccu accu;
        Waehle(accu);
        accu.SetTecGoSubArten(3);
        fWaehle(accu);
        const bool bPlangatter = eGrund == Planstand || eGrund == PlanFehlt || eGrund == OhnePlannummer;
        CLauf lauf(accu, {.bPlangatter = bPlangatter});
        ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
        const SLaufzahlen & zahlen = lauf.Zahlen();
        EXPECT_EQ(zahlen.iBehandlungen, iAlle);
        EXPECT_EQ(zahlen.iTreffer, static_cast<std::int64_t>(accu.m_vBehHits.size()));
        EXPECT_EQ(zahlen.iTreffer + zahlen.Weggelassen(), iAlle);
        EXPECT_GT(zahlen.Weggelassen(eGrund), 0);
        for (const auto & [eAnderer, fDort] : aFaelle) // the defects stay from row to row
            EXPECT_TRUE(eAnderer == eGrund || IstMangel(eAnderer) || zahlen.Weggelassen(eAnderer) == 0);
    }
}

TEST_F(CLaufImSpeicher, TheFirstOfTwoReasonsCountsAndAMissingPatientIsNoReason) {
    Loesche<CTAdr>([](CTAdr &) { return true; });
    for (const bool bBewerten : {false, true}) {
        CStatAccu accu;
        Waehle(accu);
        CLauf ganz(accu, {.bWeggelasseneBewerten = bBewerten});
        ASSERT_EQ(ganz.Laufe(), ELauf::Fertig);
        EXPECT_EQ(ganz.Zahlen().iOhnePatient, ganz.Zahlen().iHits);
        accu.SetGoArt('q');
        accu.SetLst("13a");
        CLauf lauf(accu, {.bWeggelasseneBewerten = bBewerten});
        ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
        EXPECT_GT(lauf.Zahlen().Weggelassen(EWeglassgrund::Gebuehrenart), 0);
        EXPECT_EQ(lauf.Zahlen().Weggelassen(), lauf.Zahlen().iBehandlungen);
        EXPECT_LT(lauf.Zahlen().Weggelassen(EWeglassgrund::Leistung),
                  lauf.Zahlen().Weggelassen(EWeglassgrund::Gebuehrenart));
    }
}

// Whether it is valued or not, a treatment that is left out changes no hit; and only one that is selected has an error.
TEST_F(CLaufImSpeicher, WhatIsLeftOutLeavesNoTrace) {
    Loesche<CTPlan>([](CTPlan & plan) { return plan.m_PATNR > "      1010"; });
    Loesche<CTGO>([](CTGO & go) { return go.m_LSTNR == "01"; });
    for (const char * pLeistung : {"", "89", "91b", "nix"}) {
        std::vector<CBehHitLine> vHits;
        std::vector<CBehErrors> vFehler;
        for (const bool bBewerten : {false, true}) {
            std::int64_t iGemeldet = 0;
            std::int64_t iBewertet = 0;
            CStatAccu accu;
            Waehle(accu);
            accu.SetLst(pLeistung);
            const auto Nimm = [&](const CTBeh & beh, EWeglassgrund eGrund) {
                ++iGemeldet;
                if (!IstMangel(eGrund)) return;
                EXPECT_EQ(accu.m_BehHit.PATNR + accu.m_BehHit.DATUM, beh.m_PATNR + beh.m_DATUM);
                iBewertet += accu.m_BehHit.PUNKTWERT.IsZero() ? 0 : 1;
            };
            CLauf lauf(accu, {.bWeggelasseneBewerten = bBewerten, .fWeggelassen = Nimm});
            ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
            EXPECT_EQ(iGemeldet, lauf.Zahlen().Weggelassen());
            EXPECT_EQ(iBewertet > 0, bBewerten && CString(pLeistung) != "nix") << pLeistung;
            EXPECT_EQ(accu.m_vBehErrors.empty(), CString(pLeistung) == "nix") << pLeistung;
            for (const CBehErrors & fehler : accu.m_vBehErrors)
                EXPECT_TRUE(*pLeistung == 0 || fehler.LSTIN == pLeistung);
            if (!bBewerten) {
                vHits = accu.m_vBehHits;
                vFehler = accu.m_vBehErrors;
            }
            EXPECT_TRUE(accu.m_vBehErrors == vFehler);
            EXPECT_TRUE(std::ranges::equal(accu.m_vBehHits, vHits, [](const auto & a, const auto & b) {
                return a.BETRAG == b.BETRAG && a.PUNKTWERT == b.PUNKTWERT;
            }));
        }
    }
}

// ---- the observer

// Whoever takes the hits out patient by patient gets those of a run that keeps them, and the same numbers.
TEST_F(CLaufImSpeicher, AnObserverMayEmptyTheTables) {
    CStatAccu soll;
    Waehle(soll);
    CLauf plain(soll, {.bNebenakten = true});
    ASSERT_EQ(plain.Laufe(), ELauf::Fertig);
    for (const int iSchluss : {0, 5, 7}) { // after how many calls the observer ends the run; 0: never
        CStatAccu accu;
        Waehle(accu);
        std::vector<CBehHitLine> vHits;
        std::vector<ELaufstelle> vStellen;
        std::size_t iFakt = 0;
        const auto Nach = [&](ELaufstelle eStelle) {
            for (const CBehHitLine & hit : accu.m_vBehHits)
                EXPECT_TRUE(eStelle != ELaufstelle::Patient || hit.PATNR == accu.m_vBehHits[0].PATNR);
            vHits.insert(vHits.end(), accu.m_vBehHits.begin(), accu.m_vBehHits.end());
            std::vector<CBehHitLine>().swap(accu.m_vBehHits);
            iFakt += accu.m_vRechHits.size();
            accu.m_vRechHits.clear();
            if (vStellen.empty() || vStellen.back() != eStelle) vStellen.push_back(eStelle);
            return --m_iBisSchluss != 0;
        };
        m_iBisSchluss = iSchluss;
        CLauf lauf(accu, {.bNebenakten = true, .fNach = Nach});
        EXPECT_EQ(lauf.Laufe(), iSchluss == 0 ? ELauf::Fertig : ELauf::Gescheitert);
        const SLaufzahlen & zahlen = lauf.Zahlen();
        EXPECT_EQ(zahlen.iBehandlungen, zahlen.iTreffer + zahlen.Weggelassen());
        EXPECT_TRUE(accu.m_vBehHits.empty());
        EXPECT_EQ(zahlen.iHits, static_cast<std::int64_t>(vHits.size()));
        EXPECT_EQ(accu.m_lAnzHits, static_cast<int>(vHits.size()));
        EXPECT_TRUE(std::equal(vHits.begin(), vHits.end(), soll.m_vBehHits.begin()));
        EXPECT_EQ(zahlen.iHits == plain.Zahlen().iHits, iSchluss == 0);
        if (iSchluss != 0) {
            EXPECT_EQ(m_iBisSchluss, 0) << "not called again";
            continue;
        }
        std::set<CString> setPatienten;
        Aendere<CTBeh>([&](CTBeh & beh) { setPatienten.insert(beh.m_PATNR); });
        EXPECT_EQ(m_iBisSchluss, -static_cast<int>(setPatienten.size()) - 7) << "once for each";
        EXPECT_EQ(zahlen.iRechnungen, static_cast<std::int64_t>(iFakt));
        using enum ELaufstelle;
        EXPECT_EQ(vStellen, (std::vector{Patient, Behandlungen, Laborbloecke, Gewerbelabor, Sammelrechnungen,
                                         Gipsmodelle, Rechnungen, Verordnungen}));
    }
}

// Nothing of what is missing stands in the way, and a second run does not find the hits of the first.
TEST_F(CLaufImSpeicher, RawHitsNeedNoMasterData) {
    SLaufauftrag roh;
    roh.bPlangatter = roh.bSelektion = roh.bBewertung = roh.bStammdatenNoetig = roh.bPatienten = false;
    const auto Alle = [](auto &) { return true; };
    Loesche<CTLeb>(Alle);
    Loesche<CTMandant>(Alle);
    Loesche<CTSelectPool>(Alle);
    Loesche<CTAdr>(Alle);
    CStatAccu accu;
    accu.SetLst("nothing is asked"_t);
    CLauf lauf(accu, roh);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
        EXPECT_EQ(lauf.Zahlen().iTreffer, lauf.Zahlen().iBehandlungen);
        EXPECT_EQ(lauf.Zahlen().iOhnePatient, 0);
        EXPECT_EQ(accu.m_vBehHits.size(), static_cast<std::size_t>(lauf.Zahlen().iTreffer));
        EXPECT_FALSE(accu.m_vBehHits.back().PATNAME.IsEmpty());
        EXPECT_TRUE(accu.m_vPat.empty());
    }
    EXPECT_EQ(CLauf(accu, SLaufauftrag()).Laufe(), ELauf::Gescheitert);
}

// Whatever operation of a small run fails, also of a single look-up: the run does not pass for whole, and the next one
// has forgotten it.
TEST_F(CLaufImSpeicher, NoOperationFailsWithoutAWord) {
    const auto pSpeicher = std::make_shared<CMemorySpeicher>();
    const auto pFehler = std::make_shared<CFehlerspeicher>(pSpeicher);
    ASSERT_EQ(ErzeugeMuster(*pSpeicher, {.iPatienten = 3, .iJahre = 1}), ZEILE_OK);
    std::tuple<CString, std::size_t, std::size_t> soll, ist; // sum, invoices, kinds of services
    int iAlle = 0;
    for (int i = 0; i <= iAlle && !HasFailure(); ++i) {
        SCOPED_TRACE("operation " + std::to_string(i));
        dbDatabase.Verbinde(pFehler);
        dbDatabaseRO.Verbinde(pFehler);
        CStatAccu accu;
        Waehle(accu);
        CLauf lauf(accu, {.bErsatz = true, .bKassenanteil = true, .bNebenakten = true});
        pFehler->FehlerBei(i);
        EXPECT_EQ(i > 0 ? lauf.Laufe() : ELauf::Unlesbar, ELauf::Unlesbar);
        if (i > 200 && i % 10 != 0) continue; // master data are read first
        EXPECT_EQ(lauf.Laufe(), ELauf::Fertig);
        CDBetrag summe(0.0, 'e');
        for (const CBehHitLine & hit : accu.m_vBehHits)
            summe += hit.BETRAG;
        ist = {summe.ToExt(0, false), accu.m_vRechHits.size(), accu.m_vSpGoStat.size()};
        EXPECT_EQ(ist, i == 0 ? soll = ist : soll);
        if (i == 0) iAlle = pFehler->Operationen();
    }
    EXPECT_GT(iAlle, 300);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty()) << "none of the master data is called missing";
}

} // namespace
} // namespace orvostat
