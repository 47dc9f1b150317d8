// What each record takes from its row.
#include "orvostatbs/host/TabellenLabor.h"
#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "records/Zug.h"
#include "support/Satzfelder.h"

#include <string>

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
         {"pw", Zug<CPw, CTPunktWert>([](CFall &, CPw & pw, CTPunktWert & zeile) { pw.MovePw(&zeile); })},
         {"pwgrp",
          Zug<CPwGrp, CTPwGroup>([](CFall &, CPwGrp & pw, CTPwGroup & zeile) { pw.MovePw(&zeile); })},
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
         {"gips", Zug<CGipsHitLine, CTGips>(
                      [](CFall &, CGipsHitLine & hit, CTGips & zeile) { hit.MoveGips(&zeile); })},
         {"glab", Zug<CGlabHitLine, CTGLBloc>(
                      [](CFall &, CGlabHitLine & hit, CTGLBloc & zeile) { hit.MoveLabRech(zeile); })},
         {"glabfakt",
          Zug<CGlabFaktHitLine, CTGLKuFakt>(
              [](CFall &, CGlabFaktHitLine & hit, CTGLKuFakt & zeile) { hit.MoveSammelLabRech(zeile); })},
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

} // namespace
} // namespace orvostat
