// Records into lines and back.
#include "files/DateiTest.h"
#include "support/Satzfelder.h"

#include <map>

namespace orvostat {
namespace {

// Each field gets a value of its own.
void Setze(CString & s, int i) { s = "w" + itoc(i); }
void Setze(char & c, int i) { c = static_cast<char>('A' + i % 26); }
void Setze(bool & b, int) { b = !b; }
void Setze(std::int32_t & i, int iWert) { i = iWert; }
void Setze(std::uint32_t & i, int iWert) { i = 0x80000000 + static_cast<std::uint32_t>(iWert); }
void Setze(CDBetrag & betrag, int i) { betrag = CDBetrag("e-" + itoc(i) + ".25"); }
void Setze(CDPw & pw, int i) { pw = CDPw("e" + itoc(i) + ".5"); }
void Setze(CVzW7Betrag & betrag, int i) { betrag = CVzW7Betrag("e-" + itoc(i)); }
template <class T> void Setze(std::vector<T> &, int) {}

template <class T> std::map<std::string, std::string> Felder(const T & satz) {
    std::map<std::string, std::string> map;
    JedesFeld(satz, [&](const std::string & sName, const auto & wert) {
        if constexpr (std::is_same_v<decltype(wert), const bool &>)
            map[sName] = wert ? "1" : "0";
        else
            map[sName] = Wert(wert);
    });
    return map;
}

// Of a record that goes into a line and back: the columns that are not the text of the field of their name, and the
// fields that stay behind, or that come back.
enum EListe { BLEIBT, KOMMT };
template <class T, class THin, class THer>
void Pruefe(THin fHin, THer fHer, const std::string & sAnders, EListe eListe, const std::string & sFelder) {
    T satz, zurueck;
    int iFeld = 0;
    JedesFeld(satz, [&](const std::string &, auto & wert) { Setze(wert, ++iFeld); });
    CStatLines line, leer;
    line.SONSTLAB = line.m_sLineFrei1 = "weg"; // a line is cleared first
    (line.*fHin)(satz);
    EXPECT_EQ(line.m_sLineFrei1, ""_t);
    auto mapSatz = Felder(satz);
    std::string sSpalten, s;
    CPruefeval<CStdioFile> eval;
    for (int i = 0; i <= 222; ++i) {
        if (i == 129 || i == 134) continue; // share the slots of others
        const std::string sWert = eval.GetField(i, line).Utf8();
        const std::string sSpalte = VarNames[i] ? VarNames[i] : "";
        if (sWert != eval.GetField(i, leer).Utf8() && sWert != mapSatz[sSpalte])
            sSpalten += ' ' + sSpalte + '=' + sWert;
    }
    EXPECT_EQ(sSpalten, sAnders);
    (line.*fHer)(zurueck);
    auto mapZurueck = Felder(zurueck);
    for (const auto & [sName, sWert] : mapSatz)
        if (!sWert.empty() && (mapZurueck[sName] == sWert) == (eListe == KOMMT)) s += ' ' + sName;
    EXPECT_EQ(s, sFelder);
}

using UmwandlungTest = CDateiTest;

TEST_F(UmwandlungTest, HinUndZurueck) {
    using Z = CStatLines;
    Pruefe<CBehHitLine>(
        &Z::MoveHit, &Z::MoveFile2Hit, " ART=H EINFACHSATZ=e32.25", BLEIBT,
        " EINFACHSATZ LABORKUNDE LFDGLBLOC PATNAME RECART WSO_ERG m_EinfachsatzV m_bAbrArtE m_cBehKz m_cGoKz "
        "m_cKasKz m_cSonderKsArt m_iHitFrei1 m_iHitFrei2 m_iHitFrei3 m_iHitFrei4 m_iLebAbschlag m_iPunkte2 "
        "m_iPunkte3 m_iPunkte4 m_sAbrJJME m_sAbrKennung m_sBefundKuerzel m_sBehInfo m_sBillInfo1 "
        "m_sBillInfo2 m_sGbAnzahl m_sGoText m_sHitFrei1 m_sHitFrei2 m_sLblNr");
    Pruefe<CPat>(&Z::MovePat, &Z::MoveFile2Pat, " ART=P", BLEIBT,
                 " BEHANDLERNR m_bPatGelesen m_bPatValid m_iPatProzent m_sAdrNr m_sFallBesonderheit "
                 "m_sPatFeld1 m_sPatFeld2 m_sPatFeld3 m_sPflegegrad m_sPflegegradEnde m_sTelefon2 "
                 "m_sTelefon3 m_sTelefon4 m_sTelefon6");
    Pruefe<CBehErrors>(&Z::MoveError2File, &Z::MoveFile2Error, " ART=E TEXTART=8", BLEIBT, " WSO_ERG");
    Pruefe<CKas>(&Z::MoveKas2File, &Z::MoveFile2Kas, " ART=K PATNR=w11", KOMMT,
                 " BKVKASNR KASKUERZEL KASMEDSTATISTIKART KASSENART KASSTATISTIKART m_sKasSort");
    Pruefe<CGipsHitLine>(&Z::MoveGips2File, &Z::MoveFile2Gips, " ART=I", BLEIBT,
                         " m_bGipsFrei1 m_bGipsFrei2 m_iGipsFrei");
    Pruefe<CBehHitLine>(
        &Z::MoveGB2File, &Z::MoveFile2GB, " ART=G ANZAHL=w89", KOMMT,
        " ABRMERKMAL BEHANDLERNR BESTANDOSR DATUM DMBETRAG ENDGEWICHT GESBETRAG GOART ISORVOPAT LABORKUNDE "
        "LFDBEHEINTRAG LFDGLBLOC LSTKUERZEL LSTNR MATBUCHUNG PATNR PLANNR PRAXISNR PREISOMWST RECART "
        "SCHLEIFRESTE SCHLEIFRESTEGES SITZUNG TEXT m_sGbAnzahl");
    Pruefe<CRechHitLine>(
        &Z::MoveRech2File, &Z::MoveFile2Rech,
        " ART=R ELABGESAMT=e14.25 ELABMWSTBETRAG=e16.25 RECHBETRAG=e10.25 HONORAR=e12.25 FLABGESAMT=e15.25 "
        "BEGLICHEN=e17.25 AUSGEBUCHT=e18.25 RECHBETRAGK=e11.25 HONMWSTBETRAG=e13.25",
        BLEIBT,
        " AUSGEBUCHT BEGLICHEN ELABGESAMT ELABMWSTBETRAG FLABGESAMT HONMWSTBETRAG HONORAR RECHBETRAG "
        "RECHBETRAGK");
    Pruefe<CGlabFaktHitLine>(&Z::MoveGlab2File, &Z::MoveFile2Glab, " ART=W", BLEIBT, " m_sGlabFakt1");
}

TEST_F(UmwandlungTest, Einzelheiten) {
    CBehHitLine hit;
    CStatLines line;
    line.TEXTART = "ab";
    line.FREMDKASSE = "2";
    line.ANZAHL = "-7x";
    line.KASSENGRP = '3';
    line.MoveFile2Hit(hit);
    EXPECT_EQ(Werte(hit.TEXTART, hit.FREMDKASSE, hit.ANZAHL, hit.KASSENGRP), "a||-7|3");
    hit.PUNKTE = 9;
    hit.MWSTSATZ = 10;
    hit.BETRAG = CDBetrag("e1");
    line.MoveHit(hit);
    EXPECT_EQ(Werte(line.PUNKTE, line.MWSTSATZ, line.BETRAG, line.ZUSCHLAG, line.EINFACHSATZ), "9|10|e1||");
    line.TEXT = "Dr. Groß"_t;
    line.MoveUEW2File(line.TEXT); // its own field
    EXPECT_EQ(Werte(line.ART, line.TEXT, line.PUNKTE), "U|Dr. Groß|");
    hit.Clear();
    line.MoveFile2UEW(hit);
    EXPECT_EQ(Aenderungen(CBehHitLine(), hit), "TEXT=Dr. Groß");
    CGlabFaktHitLine glab;
    line.MoveFile2Glab(glab); // writes into its source
    EXPECT_EQ(line.ART, "W"_t);
}

// A text as it is written again, behind what the hit had.
TEST_F(UmwandlungTest, Suchkriterien) {
    const std::pair<const char *, std::string> vFaelle[] = {
        {"[a|b|1|11||12][|c|x]", "[a|b|1|11||12][|c|0]"},
        {"[a|b]", "[a|b|0]"},
        {"[a|b|1|]", "[a|b|1|]"},
        {"[|]", "[||0]"},
        {"xy[a|b|2]", "[a|b|2]"},
        {"[a|b|1]|[c|d|2]", "[a|b|1]"},
        {"[a|b|1]][c|d|2]", "[a|b|1]"},
        {"[a]", ""},
        {"[a|b", ""},
        {"a|b]", ""},
        {"[[a|b|1]", "[[a|b|1]"},
        {"|[a|b]", ""},
    };
    for (const auto & [pText, sSoll] : vFaelle) {
        CStatLines line;
        line.SUCHKRITERIEN = AusUtf8(pText);
        CBehHitLine hit;
        hit.SUCHKRITERIEN.emplace_back().m_sQuery1 = "alt";
        line.MoveFile2Hit(hit);
        line.MoveHit(hit);
        EXPECT_EQ(line.SUCHKRITERIEN.Utf8(), "[alt||0]" + sSoll) << pText;
    }
}

} // namespace
} // namespace orvostat
