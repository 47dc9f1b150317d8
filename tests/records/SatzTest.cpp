// What each record takes from its row.
#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/records/BehErrors.h"
#include "orvostatbs/records/Suche.h"
#include "records/Zug.h"
#include "support/Satzfelder.h"

#include <string>
#include <tuple>

namespace orvostat {
namespace {

void Name(CPraxisTest &, CFall & fall) {
    CPat pat;
    fall.Fuelle(pat);
    fall.Aus("BRIEF", pat.GetName());
    fall.Aus("LISTE", pat.BuildNameUndVn());
    fall.Aus("KURZ", pat.BuildNVPkt());
    EXPECT_EQ(pat.GetNameUndGeb(), pat.GetName() + " *");
    pat.PATGEBDATUM = "19600201";
    EXPECT_EQ(pat.GetNameVornameUndGeb(), pat.BuildNameUndVn() + " *01.02.1960"_t);
}

void Steuer(CPraxisTest &, CFall & fall) {
    CString sUst7, sUst16;
    CGlabHitLine::GetGesamtUst(sUst7, sUst16, "1", "K1");
    fall.Aus("UST7", sUst7);
    fall.Aus("UST16", sUst16);
    EXPECT_EQ(EntlieheneRSets(), 0);
}

// Block and collective invoice pack alike, ten and nine characters wide.
void Fenster(CPraxisTest &, CFall & fall) {
    const int i = fall.Ein<int>("INDEX");
    fall.Aus("BETRAG", CGlabHitLine::GetBetrag(fall.Ein("BLOCK"), i));
    fall.Aus("BETRAG", CGlabFaktHitLine::GetBetrag(fall.Ein("SAMMEL"), i));
}

void Brutto(CPraxisTest &, CFall & fall) {
    fall.Aus("SUMME", CGlabHitLine::GetGesamtBetragBrutto(fall.Ein("BETRAEGE")));
    fall.Aus("SUMME", CGlabFaktHitLine::GetGesamtBetragBrutto(fall.Ein("BETRAEGE")));
}

void Punkte(CPraxisTest &, CFall & fall) {
    CGOStruct go;
    fall.Fuelle(go);
    fall.Aus("PUNKTE", go.GetGebPkt(fall.Ein("DATUM")));
}

void Kassengruppe(CPraxisTest &, CFall & fall) {
    CTOrvoKas zeile = Zeile<CTOrvoKas>(fall);
    CKas kas;
    kas.MoveKas(&zeile, fall.Ein("KZVNR"));
    fall.Aus("GRP", static_cast<char>(kas.KASSENGRP));
    fall.Aus("FREMD", kas.FREMDKASSE);
}

void Neu(CPraxisTest &, CFall & fall) {
    CPlan plan;
    fall.Fuelle(plan);
    fall.Aus("JA", plan.IsNewPARPlan());
}

void Marken(CPraxisTest &, CFall & fall) {
    CPlan plan;
    const CPlan vorher = fall.Fuelle(plan);
    CBehHitLine hit;
    hit.LSTIN = fall.Ein("LSTIN");
    hit.m_sGoText = fall.Ein("GOTEXT");
    plan.WithLst5orAbschlag(hit);
    fall.Geaendert(vorher, plan);
}

// The columns in which a row must not differ to be still the record's.
template <class TSatz, class TZeile, class TFelder, class F> auto Entscheidende(F f) {
    return [f](CPraxisTest &, CFall & fall) {
        TSatz satz;
        TZeile zeile = Zeile<TZeile>(fall);
        f(satz, zeile);
        std::string sSpalten;
        JedesFeld(static_cast<TFelder &>(zeile), [&](const char * pName, CString & s) {
            const CString sVorher = std::exchange(s, fall.Ein("ANDERS"));
            if (!(satz == &zeile)) sSpalten += (sSpalten.empty() ? "" : " ") + std::string(pName);
            s = sVorher;
        });
        fall.Aus("SPALTEN", sSpalten);
    };
}

TEST(Saetze, Faelle) {
    const auto Kas = [](CKas & kas, CTOrvoKas & zeile) { kas.MoveKas(&zeile, ""); };
    const auto VDesc = [](CVDesc & vdesc, CTVDesc & zeile) { vdesc.MoveVDesc(&zeile); };
    PruefeFaelle<CPraxisTest>(
        ORVOSTATBS_SOURCE_DIR "/tests/records/faelle/saetze.txt",
        {{"md", Zug<CMdStruct, CTMandantAdr>([](CFall & fall, CMdStruct & md, CTMandantAdr & zeile) {
              if (fall.Ein<bool>("VOLL")) Fuelle<CTAdr_Fields>(zeile);
              md.MoveMd(&zeile);
          })},
         {"leb", Zug<CLebStruct, CTLeb>([](CFall & fall, CLebStruct & leb, CTLeb & zeile) {
              leb.MoveLeb(&zeile);
              fall.Aus("ZEILE", leb.GetLebLine());
              const auto Fuer = [&](int i) { return leb.GetProvisionForGrp(i); };
              if (fall.Erwartet("PROVISION"))
                  fall.Aus("PROVISION",
                           Werte(Fuer(1), Fuer(2), Fuer(3), Fuer(4), Fuer(0), Fuer(-1), Fuer(2147483647)));
          })},
         {"lebname",
          Zug<CLebStruct, CTAdr>([](CFall &, CLebStruct & leb, CTAdr & adr) { leb.MoveAdr(&adr); })},
         {"vdesc",
          Zug<CVDesc, CTVDesc>([=](CFall &, CVDesc & vdesc, CTVDesc & zeile) { VDesc(vdesc, zeile); })},
         {"bill", Zug<CBill, CTBill>([](CFall & fall, CBill & bill, CTBill & zeile) {
              bill.MoveBill(&zeile);
              fall.Aus("ALT", bill.IsAltAbrechnung());
              fall.Aus("ABGERECHNET", bill.IsAbgerechnet());
          })},
         {"kas", Zug<CKas, CTOrvoKas>([](CFall & fall, CKas & kas, CTOrvoKas & zeile) {
              kas.MoveKas(&zeile, fall.Ein("KZVNR"));
          })},
         {"kasgruppe", &Kassengruppe},
         {"kasgleich", Entscheidende<CKas, CTOrvoKas, CTOrvoKas_Fields>(Kas)},
         {"vdescgleich", Entscheidende<CVDesc, CTVDesc, CTVDesc_Fields>(VDesc)},
         {"pw", Zug(&CPw::MovePw)},
         {"pwgrp", Zug(&CPwGrp::MovePw)},
         {"go", Zug<CGOStruct, CTGO>([](CFall & fall, CGOStruct & go, CTGO & zeile) {
              CTGoCheck suche(dbDatabaseRO);
              go.MoveGO(&zeile, fall.Ein<bool>("ARZT"), fall.Ein<bool>("PRUEFUNG") ? &suche : nullptr);
          })},
         {"punkte", &Punkte},
         {"pat", Zug<CPat, CTPat>([](CFall & fall, CPat & pat, CTPat & zeile) {
              CTAdr adr;
              CTHistRecall recall;
              fall.Aus("JA", pat.MovePatFields(&zeile, &adr, &recall));
          })},
         {"name", &Name},
         {"plan", Zug<CPlan, CTPlan>([](CFall & fall, CPlan & plan, CTPlan & zeile) {
              CTBeh beh;
              plan.MovePlan(&zeile, fall.Ein<bool>("BEH") ? &beh : nullptr);
          })},
         {"neu", &Neu},
         {"marken", &Marken},
         {"gips", Zug(&CGipsHitLine::MoveGips)},
         {"glab", Zug(&CGlabHitLine::MoveLabRech)},
         {"glabfakt", Zug(&CGlabFaktHitLine::MoveSammelLabRech)},
         {"steuer", &Steuer},
         {"fenster", &Fenster},
         {"brutto", &Brutto},
         {"rech", Zug<CRechHitLine, CTFakt>([](CFall & fall, CRechHitLine & hit, CTFakt & zeile) {
              hit.MoveFakt(&zeile);
              if (fall.Erwartet("OFFEN")) fall.Aus("OFFEN", hit.Offen());
          })},
         {"verordnung",
          Zug<CVerordnungHitLine, CTRezept>([](CFall & fall, CVerordnungHitLine & hit, CTRezept & zeile) {
              hit.MoveVerordnung(zeile, Zeile<CHMVRecord>(fall));
          })}});
}

// The fields that keep a value when the record is cleared.
template <class T> std::string Bleibt() {
    T leer, satz;
    JedesFeld(satz, [](const std::string &, auto & wert) {
        if constexpr (std::same_as<decltype(wert), bool &>)
            wert = !wert;
        else
            Lies("1", wert);
    });
    satz.Clear();
    std::vector<std::string> vLeer;
    JedesFeld(leer, [&](const std::string &, const auto & wert) { vLeer.push_back(Wert(wert)); });
    std::string s;
    auto it = vLeer.begin();
    JedesFeld(satz, [&](const std::string & sName, const auto & wert) {
        if (Wert(wert) != *it++) s += sName;
    });
    return s;
}

TEST(Saetze, ClearLaesstNurWasDemAufruferGehoert) {
    EXPECT_EQ(Bleibt<CPat>(), "m_bPatGelesen");
    EXPECT_EQ(Bleibt<CGlabFaktHitLine>(), "SKONTOPROZENT");
    EXPECT_EQ(Bleibt<CBill>() + Bleibt<CGOStruct>() + Bleibt<CGipsHitLine>() + Bleibt<CGlabHitLine>() +
                  Bleibt<CRechHitLine>() + Bleibt<CVerordnungHitLine>() + Bleibt<CPlan>(),
              "PATNR");
    CPat pat;
    pat.PATNR = pat.LASTBEHDATUM = "1";
    pat.ClearBeh();
    EXPECT_EQ(Werte(pat.PATNR, pat.LASTBEHDATUM), "1|");
}

TEST(Saetze, AbrechnungsartAllerGespeichertenBuchstaben) {
    std::string sAbrArt, sKasse, sAbrArtE; // stored letter and what it gives, where that is not "s"
    for (int c = 0; c < 256; ++c) {
        CTBill row;
        if (c != 0) row.m_ABRART = CString(static_cast<char>(c));
        CBill bill;
        bill.MoveBill(&row);
        if (bill.ABRART != 's') sAbrArt += std::string{static_cast<char>(c), bill.ABRART, ' '};
        if (bill.KASSENABR) sKasse += static_cast<char>(c);
        if (bill.m_bAbrArtE) sAbrArtE += static_cast<char>(c);
    }
    EXPECT_EQ(sAbrArt, "1c 2z 3k 4b 5p 6i 7e 8e ac bz ck db ep ge nr pk te ");
    EXPECT_EQ(sKasse, "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(sAbrArtE, "78gt");
}

TEST(Saetze, PoolUndLeereSuche) {
    const SSelectPool eintrag{"k", "text", "extra"};
    CSPData sp;
    sp.MoveSP(&eintrag);
    EXPECT_EQ(Werte(sp.m_sKey, sp.m_sText, sp.m_sExtra), "k|text|extra");
    for (const auto & [pLst, cGoArt, bLeer] :
         {std::tuple("", '\0', true), {"", 'k', true}, {"13a", '\0', true}, {"13a", 'k', false}}) {
        EXPECT_EQ((CSucheLstStruct{"F1", pLst, cGoArt, 0, 0}.IsEmpty()), bLeer);
        EXPECT_EQ((CHVMLstStruct{"F1", pLst, cGoArt}.IsEmpty()), bLeer);
    }
    EXPECT_TRUE((CSucheTbStruct{"", "text"}.IsEmpty()) && !(CSucheTbStruct{"tb", ""}.IsEmpty()));
}

// ---- patients

class CPatTest : public CPraxisTest {};

TEST_F(CPatTest, OhneAdresseOderZeileKommenNurDieErstenFelder) {
    Schreibe(R"(ADR ADRNR=A1 ADRLFD=1 PATORT=Anders
                ADR ADRNR=A2 ADRLFD=1 PATORT=Ort
                ADR ADRLFD=1 PATORT=Niemandes)");
    CTPat rPat;
    CTAdr rAdr;
    CTHistRecall rRecall;
    CPat pat;
    rPat.m_PATNR = "4711";
    rPat.m_PATNAME = "Muster";
    rPat.m_BEHANDLERNR = " 5";
    for (const char * pAdrNr : {"A9", "", "  "}) { // none, or nobody's
        rPat.m_ADRNR = CString(pAdrNr);
        EXPECT_FALSE(pat.MoveValidPat(&rPat, &rAdr, &rRecall)) << pAdrNr;
        EXPECT_EQ(Werte(pat.PATNR, pat.BEHANDLERNR, pat.m_iPatProzent, pat.PATNAME, pat.PATORT),
                  "4711| 5|100||");
        EXPECT_FALSE(pat.m_bPatGelesen || pat.m_bPatValid);
    }
    rPat.m_ADRNR = "A2"; // with any running number, not that of the address before
    rAdr.m_ADRLFD = "2";
    EXPECT_TRUE(pat.MoveValidPat(&rPat, &rAdr, &rRecall));
    EXPECT_TRUE(pat.m_bPatGelesen && pat.m_bPatValid && pat.PATORT == "Ort");
    pat = CPat();
    EXPECT_FALSE(pat.ReadAndMovePat("4712", &rPat, &rAdr, &rRecall));
    EXPECT_EQ(pat.PATNR + pat.BEHANDLERNR, "4712"_t);
    Schreibe("PAT PATNR=4712 ADRNR=A1");
    EXPECT_TRUE(pat.ReadAndMovePat("4712", &rPat, &rAdr, &rRecall));
    EXPECT_EQ(pat.PATORT, "Anders"_t);
}

TEST(Pat, NameUndKontaktKommenInDieNebenzeilen) {
    CPat pat;
    CString * const apFelder[] = {&pat.PATTELEFON, &pat.m_sTelefon2, &pat.m_sTelefon3, &pat.m_sTelefon4,
                                  &pat.PATEMAIL,   &pat.m_sTelefon6, &pat.TELEFONPRIO, &pat.PATNAME,
                                  &pat.PATVORNAME, &pat.PATTITEL,    &pat.PATZUSATZ,   &pat.PATGEBDATUM,
                                  &pat.BEHANDLERNR};
    for (std::size_t i = 0; i < std::size(apFelder); ++i)
        *apFelder[i] = CString(static_cast<char>('a' + i));
    CGipsHitLine gips;
    gips.MovePat(pat);
    EXPECT_EQ(Werte(gips.PATNAME, gips.PATVORNAME, gips.PATTITEL, gips.PATZUSATZ, gips.PATGEBDATUM),
              "h|i|j|k|l");
    std::string sKontakte;
    for (int i = 0; i <= 8; ++i) {
        CRechHitLine rech;
        rech.PATTELEFON = "-";
        rech.MovePat(pat, i);
        sKontakte += Wert(rech.PATTELEFON);
        EXPECT_EQ(Werte(rech.PATNAME, rech.PATVORNAME, rech.BEHANDLERNR), "h|i|m") << i;
    }
    EXPECT_EQ(sKontakte, "-abcdefg-");
}

// ---- plans, errors, blocks of laboratories

CBehHitLine Hit(const char * pPat, const char * pPlan) {
    CBehHitLine hit;
    hit.PATNR = pPat;
    hit.PLANNR = pPlan;
    return hit;
}

TEST(Plan, MischwertUndUnbrauchbarerPlan) {
    CPlan plan;
    plan.m_sPlanArt = plan.m_sPlanDatum = "p";
    plan.m_PlanPw = CDPw("e11234");
    plan.MovePlanForMischPw("4711", "P1", "", CDPw("e10500"));
    EXPECT_EQ(Werte(plan.PATNR, plan.PLANNR, plan.m_sPlanArt, plan.m_MischPw, plan.m_PlanPw),
              "4711|P1||e10500|e11234");
    plan.MovePlanNotOk(Hit("815", "P7"));
    EXPECT_EQ(Werte(plan.m_PlanPw, plan.m_sPlanDatum, plan.m_bPlanOk), "||");
    EXPECT_TRUE(plan == Hit("815", "P7") && plan == Hit("815 ", "P7  "));
    for (const auto & hit : {Hit("815", "P1"), Hit("4711", "P7"), Hit(" 815", "P7"), Hit("815", "")})
        EXPECT_FALSE(plan == hit) << hit.PATNR.Utf8() << hit.PLANNR.Utf8();
}

TEST(BehErrors, DerEintragUnterscheidetNicht) {
    CBehHitLine hit;
    hit.SITZUNG = 'a';
    hit.LFDBEHEINTRAG = "04";
    hit.GOART = 'k';
    hit.WSO_ERG = "9";
    hit.LSTNR = "02";
    CBehErrors fehler, ohne;
    EXPECT_EQ(fehler.SITZUNG, ' ');
    fehler.MoveError(hit, 8);
    ohne.MoveError(CBehHitLine(), 8);
    EXPECT_EQ(Werte(fehler.SITZUNG, fehler.LFDBEHEINTRAG, fehler.GOART, fehler.WSO_ERG, fehler.m_iFehler),
              "a|04|k|9|8");
    EXPECT_TRUE(fehler == ohne);
    ohne.m_iFehler = FEHLER_GEBUEHR;
    EXPECT_FALSE(fehler == ohne);
    fehler.Clear();
    EXPECT_EQ(Werte(fehler.SITZUNG, fehler.GOART, fehler.LFDBEHEINTRAG), " ||");
}

TEST(GlabHitLine, OhneNummerGiltJederBlockDesKunden) {
    for (const auto & [pLfd, pAndererKunde, pAndereLfd, bGleich] : {std::tuple("7", "K1", "7", true),
                                                                    {"7", "K1", "8", false},
                                                                    {"", "K1", "8", true},
                                                                    {"7", "K1", "", false},
                                                                    {"", "K2", "", false}}) {
        CGlabHitLine hit, anderer;
        CGlabFaktHitLine fakt, andererFakt;
        CTGLBloc rec;
        CTGLKuFakt recFakt;
        hit.LABORKUNDE = fakt.LABORKUNDE = "K1";
        hit.LFDGLBLOC = fakt.LFDGLKUFAKT = pLfd;
        rec.m_LABORKUNDE = recFakt.m_LABORKUNDE = pAndererKunde;
        rec.m_LFDGLBLOC = recFakt.m_LFDGLKUFAKT = pAndereLfd;
        anderer.MoveLabRech(rec);
        andererFakt.MoveSammelLabRech(recFakt);
        EXPECT_TRUE((hit == rec) == bGleich && (hit == anderer) == bGleich);
        EXPECT_TRUE((fakt == recFakt) == bGleich && (fakt == andererFakt) == bGleich);
    }
}

} // namespace
} // namespace orvostat
