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

    // The hits of a kind of billing: without a plan, with one.
    using AHits = std::array<int, 2>;
    static AHits Hits(const CString & sAbrArt, const SLaufauftrag & auftrag) {
        CStatAccu accu;
        Waehle(accu);
        accu.SetAbrArt(sAbrArt);
        EXPECT_EQ(CLauf(accu, auftrag).Laufe(), ELauf::Fertig);
        AHits aiHits = {};
        for (const CBehHitLine & hit : accu.m_vBehHits)
            ++aiHits[hit.PLANNR.IsEmpty() ? 0 : 1];
        return aiHits;
    }

    // Whose the treatments are, for each one.
    static std::vector<CString> Patienten() {
        std::vector<CString> v;
        CTBeh beh(dbDatabase);
        for (int i = beh.GetAll(); i == ZEILE_OK; i = beh.Next())
            v.push_back(beh.m_PATNR);
        return v;
    }

    template <class T, class F> static void Loesche(F fIst) {
        T zeile(dbDatabase);
        for (int i = zeile.GetAll(); i == ZEILE_OK;)
            i = fIst(zeile) ? zeile.DeleteRec() : zeile.Next();
    }

    template <class T, class F> static void Aendere(F fAendere) {
        T zeile(dbDatabase);
        for (int i = zeile.GetAll(); i == ZEILE_OK; i = zeile.Next()) {
            fAendere(zeile);
            EXPECT_EQ(zeile.RewriteRec(), 0);
        }
    }

    int m_iBisSchluss = 0;
    CRekorder m_rekorder;
    CTestpraxis m_praxis;

private:
    COberflaecheErsatz m_ersatz{m_rekorder};
};

TEST_F(CLaufImSpeicher, ACancelledRunKeepsWhatItHas) {
    const auto Laufe = [&](int iAntwort) {
        CStatAccu accu;
        Waehle(accu);
        m_rekorder.m_iAbbruchAb = static_cast<int>(m_rekorder.m_vSchritte.size()) + 1;
        m_rekorder.m_vAntworten = {iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA, iAntwort == SOLLICH_JA};
        CLauf lauf(accu, SLaufauftrag());
        const ELauf eLauf = lauf.Laufe();
        return std::pair(eLauf, accu.m_vBehHits.size());
    };
    const auto [eJa, iJa] = Laufe(SOLLICH_JA);
    EXPECT_EQ(eJa, ELauf::Abgebrochen);
    EXPECT_GT(iJa, 400U);
    EXPECT_LT(iJa, 513U);
    const auto [eNein, iNein] = Laufe(0);
    EXPECT_EQ(eNein, ELauf::Fertig);
    EXPECT_GT(iNein, 1200U);
    for (const auto & [iPos, iMax] : m_rekorder.m_vSchritte)
        EXPECT_LE(iPos, iMax);
}

TEST_F(CLaufImSpeicher, EachStepOfAHitLeavesItsTrace) {
    CStatAccu accu;
    Waehle(accu);
    accu.SetSortierung('1');
    CLauf lauf(accu, {.bOhne22a = true});
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    const std::vector<CBehHitLine> & vHits = accu.m_vBehHits;
    EXPECT_FALSE(std::ranges::is_sorted(vHits, {}, &CBehHitLine::PATNR)) << "sorted by name";
    const auto Einer = [&](auto fIst) { EXPECT_TRUE(std::ranges::any_of(vHits, fIst)); };
    Einer([](const CBehHitLine & hit) { return !hit.BEFUND.IsEmpty(); });
    Einer([](const CBehHitLine & hit) { return hit.m_iLebAbschlag != 0; });
    Einer([](const CBehHitLine & hit) { return hit.PROVISONSWERT != 0; });
    Einer([](const CBehHitLine & hit) { return hit.ISPRIVATPATIENT; });
    for (const CBehHitLine & hit : vHits)
        EXPECT_EQ(hit.ISPRIVATPATIENT, hit.VDABDATUM.IsEmpty() || IstPrivatNachweis(hit.VNACHWEIS));
}

// The plan gate knows orthodontics by its letter "k"; only behind it multiband treatment gets its own.
TEST_F(CLaufImSpeicher, MultibandComesBehindThePlanGate) {
    EXPECT_GT(Hits("m", {})[1], 0);
    Aendere<CTPlan>([](CTPlan & plan) { plan.m_PLANNUM = "0"; });
    EXPECT_EQ(Hits("m", {})[1], 0);
    Aendere<CTPlan>([](CTPlan & plan) { plan.m_PLANNUM = "80"; });
    EXPECT_GT(Hits("m", {})[1], 0);
    Loesche<CTBeh>([](const CTBeh & beh) { return beh.m_LSTNR >= "126" && beh.m_LSTNR < "129"; });
    EXPECT_EQ(Hits("m", {}), (AHits{})) << "nothing is remembered from the run before";
}

TEST_F(CLaufImSpeicher, PlansOfTheShortenedProcedureCanBeLeftOut) {
    Aendere<CTPlan>([](CTPlan & plan) { plan.m_PAR22A = "1"; });
    EXPECT_GT(Hits("p", {}), (AHits{}));
    EXPECT_EQ(Hits("p", {.bOhne22a = true}), (AHits{}));
}

TEST_F(CLaufImSpeicher, ASecondRunStartsFromNothing) {
    CStatAccu accu;
    Waehle(accu, "      1001");
    CLauf lauf(accu, SLaufauftrag());
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    const std::vector<CBehHitLine> vErste = accu.m_vBehHits;
    const std::int64_t iBehandlungen = lauf.Zahlen().iBehandlungen;
    EXPECT_NE(accu.m_pRPat, nullptr) << "the record sets stay for whoever reads the tables";
    EXPECT_EQ(accu.m_lAnzHits, static_cast<int>(vErste.size()));
    ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
    EXPECT_EQ(lauf.Zahlen().iBehandlungen, iBehandlungen);
    ASSERT_EQ(accu.m_vBehHits.size(), vErste.size());
    for (std::size_t i = 0; i < vErste.size(); ++i) {
        EXPECT_TRUE(accu.m_vBehHits[i] == vErste[i]);
        EXPECT_EQ(accu.m_vBehHits[i].KASKUERZEL, vErste[i].KASKUERZEL);
        EXPECT_EQ(accu.m_vBehHits[i].PATNAME, vErste[i].PATNAME);
    }
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
    CStatAccu alle;
    Waehle(alle);
    const AZahlen aAlle = Laufe(alle);
    for (const auto & [iPos, iMax] : m_rekorder.m_vSchritte)
        EXPECT_LE(iPos, iMax);
    EXPECT_FALSE(alle.m_vGlabFaktHits.empty());
    std::set<std::tuple<CString, CString, CString>> setBehandelt;
    int iBloecke = 0;
    for (const CBehHitLine & hit : alle.m_vBehHits)
        if (!hit.ISORVOPAT && !hit.LFDLBLOCK.IsEmpty())
            setBehandelt.emplace(hit.PATNR, hit.LFDLBLOCK, hit.LSTNR);
    for (const CBehHitLine & hit : alle.m_vBehHits) {
        if (!hit.ISELAB) continue;
        ++iBloecke;
        EXPECT_FALSE(setBehandelt.contains({hit.PATNR, hit.LFDLBLOCK, hit.LSTNR}));
        EXPECT_FALSE(hit.PATNAME.IsEmpty() || hit.VDABDATUM.IsEmpty());
    }
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

    CStatAccu niemand;
    Waehle(niemand);
    niemand.SetChAnrede(true);
    niemand.SetPatAnrede("zzz");
    EXPECT_EQ(Laufe(niemand), AZahlen());
}

// A section leaves out for its own reason only, and with every reason the account closes: the rows read are hits or
// counted once.
TEST_F(CLaufImSpeicher, WhatIsLeftOutIsCountedUnderOneReason) {
    struct SFall {
        EWeglassgrund eGrund;
        void (*pWaehle)(CStatAccu &);
        bool bPlangatter = false;
    };
    using enum EWeglassgrund;
    const auto Nichts = [](CStatAccu &) {};
    const SFall aFaelle[] = {
        {Zeitraum, [](CStatAccu & a) { a.SetZeitraum("20240201", "20240831"); }},
        {Patient,
         [](CStatAccu & a) {
             a.SetChAnrede(true);
             a.SetPatAnrede("Frau");
         }},
        {Behandler, [](CStatAccu & a) { a.SetLebs({"   3"}); }},
        {Gebuehrenart, [](CStatAccu & a) { a.SetGoArt('q'); }},
        {Erfasser, [](CStatAccu & a) { a.SetErfasser("XYZ"); }},
        {Status, [](CStatAccu & a) { a.SetIsErfasst(false); }},
        {Plan, [](CStatAccu & a) { a.SetPlan("  1"); }},
        {Planstand, Nichts, true},
        {Abrechnungsart, [](CStatAccu & a) { a.SetAbrArt("c"); }},
        {Praxis, [](CStatAccu & a) { a.SetMandant(" 2"); }},
        {Versicherung, [](CStatAccu & a) { a.SetRsa(true); }},
        {Kasse, [](CStatAccu & a) { a.SetKasse("AOK01"); }},
        {Leistung, [](CStatAccu & a) { a.SetLst("13a"); }},
        {Punktwertart, [](CStatAccu & a) { a.SetPwLArt("a"); }},
        {Abrechenbar, [](CStatAccu & a) { a.SetOnlyAbrechenbare(true); }},
        {Technik, [](CStatAccu & a) { a.SetTecGoSubArten(0); }},
        {PlanFehlt, [](CStatAccu &) { Loesche<CTPlan>([](const CTPlan &) { return true; }); }, true},
        {OhnePlannummer, [](CStatAccu &) { Aendere<CTBill>([](CTBill & bill) { bill.m_PLANNR = ""; }); },
         true},
        {BehandlerUnbekannt,
         [](CStatAccu &) { Loesche<CTLeb>([](const CTLeb & leb) { return leb.m_LEB == "   3"; }); }},
        {PraxisUnbekannt,
         [](CStatAccu &) { Loesche<CTMandant>([](const CTMandant & md) { return md.m_MDID == " 2"; }); }},
    };
    EXPECT_EQ(std::size(aFaelle), WEGLASSGRUENDE);
    const auto iAlle = static_cast<std::int64_t>(Patienten().size());
    for (const SFall & fall : aFaelle) {
        SCOPED_TRACE(Weglassname(fall.eGrund).Utf8());
        CStatAccu accu;
        Waehle(accu);
        accu.SetTecGoSubArten(3);
        fall.pWaehle(accu);
        CLauf lauf(accu, {.bPlangatter = fall.bPlangatter});
        ASSERT_EQ(lauf.Laufe(), ELauf::Fertig);
        const SLaufzahlen & zahlen = lauf.Zahlen();
        EXPECT_EQ(zahlen.iBehandlungen, iAlle);
        EXPECT_EQ(zahlen.iTreffer, static_cast<std::int64_t>(accu.m_vBehHits.size()));
        EXPECT_EQ(zahlen.iTreffer + zahlen.Weggelassen(), iAlle);
        EXPECT_GT(zahlen.Weggelassen(fall.eGrund), 0);
        for (const SFall & anderer : aFaelle) // the defects stay from row to row
            EXPECT_TRUE(anderer.eGrund == fall.eGrund || IstMangel(anderer.eGrund) ||
                        zahlen.Weggelassen(anderer.eGrund) == 0);
    }
}

// Whether it is valued or not, a treatment that is left out changes no hit; and only one that is selected has an error.
TEST_F(CLaufImSpeicher, WhatIsLeftOutLeavesNoTrace) {
    Loesche<CTPlan>([](const CTPlan & plan) { return plan.m_PATNR > "      1010"; });
    Loesche<CTGO>([](const CTGO & go) { return go.m_LSTNR == "01"; });
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
        if (iSchluss != 0) {
            EXPECT_EQ(m_iBisSchluss, 0) << "not called again";
            EXPECT_LT(vHits.size(), soll.m_vBehHits.size());
            continue;
        }
        EXPECT_EQ(zahlen.iHits, plain.Zahlen().iHits);
        EXPECT_EQ(zahlen.iRechnungen, static_cast<std::int64_t>(iFakt));
        using enum ELaufstelle;
        EXPECT_EQ(vStellen, (std::vector{Patient, Behandlungen, Laborbloecke, Gewerbelabor, Sammelrechnungen,
                                         Gipsmodelle, Rechnungen, Verordnungen}));
        const std::vector<CString> vPatienten = Patienten();
        const std::set<CString> setPatienten(vPatienten.begin(), vPatienten.end());
        EXPECT_EQ(m_iBisSchluss, -static_cast<int>(setPatienten.size()) - 7) << "once for each";
    }
}

// Nothing of what is missing stands in the way, and a second run does not find the hits of the first.
TEST_F(CLaufImSpeicher, RawHitsNeedNoMasterData) {
    const SLaufauftrag roh = {.bPlangatter = false,
                              .bSelektion = false,
                              .bBewertung = false,
                              .bStammdatenNoetig = false,
                              .bPatienten = false};
    Loesche<CTLeb>([](const CTLeb &) { return true; });
    Loesche<CTMandant>([](const CTMandant &) { return true; });
    Loesche<CTSelectPool>([](const CTSelectPool &) { return true; });
    Loesche<CTAdr>([](const CTAdr &) { return true; });
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
