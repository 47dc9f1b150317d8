// Records into lines and back.
#include "files/DateiTest.h"

namespace orvostat {
namespace {

// Every text, letter, flag and number field a value of its own, by the order of the fields in the list.
class CFueller {
public:
    void operator()(CString & s) { s = "w" + itoc(++m_i); }
    void operator()(char & c) { c = static_cast<char>('A' + ++m_i % 26); }
    void operator()(bool & b) { b = !b; }
    void operator()(std::int32_t & i) { i = ++m_i; }
    void operator()(std::uint32_t & i) { i = 0x80000000 + static_cast<std::uint32_t>(++m_i); }
    void operator()(CDBetrag & betrag) { betrag = CDBetrag("e-" + itoc(++m_i) + ".25"); }
    void operator()(CDPw & pw) { pw = CDPw("e" + itoc(++m_i) + ".5"); }
    void operator()(CVzW7Betrag & betrag) { betrag = CVzW7Betrag("e-" + itoc(++m_i)); }

private:
    int m_i = 0;
};

class UmwandlungTest : public CDateiTest {
protected:
    // Writes the record, reads it into a fresh one and writes that: both lines must be what is expected.
    template <class T, class THin, class THer>
    void Pruefe(const T & satz, THin fHin, THer fHer, const std::string & sErwartet) {
        CStatLines line;
        line.SELEKTION = "weg"; // a line is cleared first
        line.ISELAB = false;
        line.m_sLineFrei1 = "weg";
        (line.*fHin)(satz);
        EXPECT_EQ(Spalten(line), sErwartet);
        EXPECT_EQ(line.m_sLineFrei1, ""_t);
        T zurueck{};
        (line.*fHer)(zurueck);
        CStatLines nochmal;
        (nochmal.*fHin)(zurueck);
        EXPECT_EQ(Spalten(nochmal), sErwartet);
    }
};

#define FUELLE(NAME) fuelle(satz.NAME);

TEST_F(UmwandlungTest, Hit) {
    CBehHitLine satz;
    CFueller fuelle;
// clang-format off
#define FELDER(T) \
    T(PRAXISNR) T(BEHANDLERNR) T(PATNR) T(DATUM) T(TEETH) T(EINHEIT) T(LSTIN) T(LSTNR) T(TEXT) T(FAKTOR) \
    T(ABRART) T(GOART) T(LAGE) T(UHRZEIT) T(DTAGRUND) T(ICDCODE) T(ICDNOTATIONSKZ) T(ERFASSER) T(PLANNR) \
    T(FAKT1) T(FAKT2) T(ABRMERKMAL) T(KASSENABR) T(ENTFERNUNG) T(SITZUNG) T(LFDBEHEINTRAG) T(LSTKUERZEL) \
    T(GOSUBART) T(DRUCKBILD) T(LFDBEFENTRY) T(ZAHNSTEIN) T(MUNDKRANKHEIT) T(KASKUERZEL) T(VDABDATUM) T(VDBISDATUM) \
    T(MFRDIG) T(WSO) T(EINLESEDATUM) T(PWLART) T(KASSENPWGRP) T(KASSTATISTIKART) T(KASMEDSTATISTIKART) \
    T(KASSENART) T(BEFUND) T(RSA) T(VNACHWEIS) T(PROVISONSGRP) T(KASSENGRP) T(LFDLBLOCK) T(MATBUCHUNG) \
    T(DMBETRAG) T(GESBETRAG) T(ENDGEWICHT) T(SCHLEIFRESTE) T(SCHLEIFRESTEGES) T(PREISOMWST) T(BESTANDOSR) \
    T(ROEGRAV) T(ROEANZAHL) T(ROEGERAET) T(ROEXRAYMS) T(ROEXRAYCURRENT) T(ROEXRAYVOLTAGE) \
    T(ROEBELICHTUNG) T(ROEINDIKATION) T(ROEBEMERKUNG) T(ROELFDNR) T(ROELASTDATUM) T(ROELASTREGIO) \
    T(ROELASTPASSDRUCK) T(ISELAB) T(ISORVOPAT) T(PATBILL) T(TASCHENTIEFED) T(TASCHENTIEFEM) \
    T(TASCHENTIEFEF) T(TASCHENTIEFEO) T(TASCHENTIEFED2) T(TASCHENTIEFEM2) T(GEBUEHRENBEFREITBIS) \
    T(PRAXISID) T(BPG) T(CHARGENNUMMER) T(ANZAHL) T(PUNKTE) T(MWSTSATZ) T(F100AEV) T(PRUEFZEITT) \
    T(PRUEFZEITQ) T(PROVISONSWERT) T(BETRAG) T(ZUSCHLAG) T(EINFACHSATZ) T(PUNKTWERT) T(TEXTART) \
    T(GOSTATISTIKART) T(FREMDKASSE) T(ISPRIVATPATIENT)
    // clang-format on
    FELDER(FUELLE);
#undef FELDER
    satz.SUCHKRITERIEN = {{"a", "b", 7, {}}, {"c", "", 0, {"11", "", "12"}}};
    Pruefe(
        satz, &CStatLines::MoveHit, &CStatLines::MoveFile2Hit,
        "ART=H PRAXISNR=w1 BEHANDLERNR=w2 PATNR=w3 VNACHWEIS=w45 MFRDIG=w35 RSA=w44 WSO=w36 KASKUERZEL=w32 "
        "KASSENART=w42 DATUM=w4 LSTNR=w8 TEETH=w5 LSTIN=w7 TEXT=w9 ABRART=L GOART=M LAGE=w13 UHRZEIT=w14 "
        "DTAGRUND=P TEXTART=O ERFASSER=w18 PLANNR=w19 EINFACHSATZ=e90.25 FAKT1=w20 FAKT2=w21 BEFUND=w43 "
        "ABRMERKMAL=W BETRAG=e-88.25 PUNKTE=82 FAKTOR=w10 EINHEIT=w6 ANZAHL=81 LSTKUERZEL=w26 "
        "GOSTATISTIKART=P "
        "GOSUBART=B KASSTATISTIKART=w40 KASMEDSTATISTIKART=w41 KASSENPWGRP=w39 PUNKTWERT=e91.5 PWLART=M "
        "ENTFERNUNG=w23 SITZUNG=Y LFDBEHEINTRAG=w25 FREMDKASSE=1 DRUCKBILD=w28 LFDBEFENTRY=w29 ZAHNSTEIN=w30 "
        "MUNDKRANKHEIT=w31 VDABDATUM=w33 ZUSCHLAG=e-89.25 MWSTSATZ=83 KASSENGRP=V PROVISONSGRP=w46 "
        "PROVISONSWERT=87 ISPRIVATPATIENT=1 EINLESEDATUM=w37 LFDLBLOCK=w48 F100AEV=84 MATBUCHUNG=w49 "
        "ENDGEWICHT=w52 DMBETRAG=w50 GESBETRAG=w51 SCHLEIFRESTE=w53 PREISOMWST=w55 SCHLEIFRESTEGES=w54 "
        "BESTANDOSR=w56 VDBISDATUM=w34 PRUEFZEITT=85 PRUEFZEITQ=86 ROEGRAV=w57 ROEANZAHL=w58 ROEGERAET=w59 "
        "ROEBELICHTUNG=w63 ROEINDIKATION=w64 ROEBEMERKUNG=w65 ROELFDNR=w66 ROELASTDATUM=w67 ROELASTREGIO=w68 "
        "ROELASTPASSDRUCK=w69 ISELAB=0 ISORVOPAT=0 SUCHKRITERIEN=[a|b|7][c||0|11||12] ICDNOTATIONSKZ=R "
        "PATBILL=w70 ICDCODE=w16 ROEXRAYMS=w60 ROEXRAYCURRENT=w61 ROEXRAYVOLTAGE=w62 TASCHENTIEFED=w71 "
        "TASCHENTIEFEM=w72 TASCHENTIEFEF=w73 TASCHENTIEFEO=w74 TASCHENTIEFED2=w75 TASCHENTIEFEM2=w76 "
        "GEBUEHRENBEFREITBIS=w77 PRAXISID=w78 BPG=w79 CHARGENNUMMER=w80");
}

// What stays behind, and the values that a line of a fresh hit has.
TEST_F(UmwandlungTest, WasNichtReist) {
    CBehHitLine hit;
    hit.PATNAME = hit.WSO_ERG = hit.LABORKUNDE = hit.LFDGLBLOC = hit.m_sGbAnzahl = "x";
    hit.RECART = hit.m_iPunkte2 = 5;
    hit.m_cSonderKsArt = 'V';
    CStatLines line;
    line.MoveHit(hit);
    EXPECT_EQ(Spalten(line), "ART=H KASSENABR=1 PUNKTE=0 ANZAHL=0 SITZUNG=  FREMDKASSE=0 MWSTSATZ=0 "
                             "PROVISONSWERT=0 ISPRIVATPATIENT=0 F100AEV=0 PRUEFZEITT=0 PRUEFZEITQ=0");
    line.MoveFile2Hit(hit);
    EXPECT_EQ(hit.PATNAME, "x"_t);
    EXPECT_EQ(hit.RECART, 5);
    line.TEXTART = "ab";
    line.FREMDKASSE = "2";
    line.ISPRIVATPATIENT = "1";
    line.ANZAHL = "-7x";
    line.KASSENGRP = '3';
    line.MoveFile2Hit(hit);
    EXPECT_EQ(hit.TEXTART, 'a');
    EXPECT_FALSE(hit.FREMDKASSE);
    EXPECT_TRUE(hit.ISPRIVATPATIENT);
    EXPECT_EQ(hit.ANZAHL, -7);
    EXPECT_EQ(hit.KASSENGRP, '3');
}

TEST_F(UmwandlungTest, Suchkriterien) {
    const auto Lies = [](const CString & sText) {
        CStatLines line;
        line.SUCHKRITERIEN = sText;
        CBehHitLine hit;
        hit.SUCHKRITERIEN.emplace_back().m_sQuery1 = "alt";
        line.MoveFile2Hit(hit); // adds
        std::string s;
        for (std::size_t i = 1; i < hit.SUCHKRITERIEN.size(); ++i) {
            const CQueryTeeth & q = hit.SUCHKRITERIEN[i];
            s += '<' + q.m_sQuery1.Utf8() + ',' + q.m_sQuery2.Utf8() + ',' + std::to_string(q.m_iQuery);
            for (const CString & sZahn : q.m_vTeeth)
                s += '/' + sZahn.Utf8();
            s += '>';
        }
        return s;
    };
    const struct {
        CString sText;
        std::string sErwartet;
    } vFaelle[] = {
        {"", ""},
        {"[a|b|1]", "<a,b,1>"},
        {"[a|b|1|11|12][|c|x]"_t, "<a,b,1/11/12><,c,0>"},
        {"[a|b]", "<a,b,0>"},
        {"[a|b|1|]"_t, "<a,b,1/>"},
        {"[a|]", "<a,,0>"},
        {"[|]", "<,,0>"},
        {"xy[a|b|2]"_t, "<a,b,2>"},
        {"[a|b|1]rest"_t, "<a,b,1>"},
        {"[a|b|1]|[c|d|2]"_t, "<a,b,1>"},
        {"[a|b|1]][c|d|2]"_t, "<a,b,1>"},
        {"[a]", ""},
        {"[a|b", ""},
        {"]", ""},
        {"[]|", ""},
        {"[[a|b|1]"_t, "<[a,b,1>"},
        {"|[a|b]", ""},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(Lies(fall.sText), fall.sErwartet) << fall.sText.Utf8();
}

TEST_F(UmwandlungTest, Patient) {
    CPat satz;
    CFueller fuelle;
// clang-format off
#define FELDER(T) \
    T(PATNR) T(SELEKTION) T(PATTITEL) T(PATVORNAME) T(PATZUSATZ) T(PATGEBDATUM) T(PATNAME) T(PATORT) \
    T(PATPLZ) T(PATSTRASSE) T(PATTELEFON) T(TELEFONPRIO) T(PATEMAIL) T(GESCHLECHT) T(EINTRDATUM) \
    T(RISIKOANAMNESE) T(RECALLART) T(RECALLITV) T(LASTRECALL) T(UEBERWARZT) T(HAUSARZT) T(LASTBEHDATUM) \
    T(BENACHRICHTIGUNG) T(FRUEHERENAMEN) T(FRUCHT) T(PATANREDE) T(INDEXMARKERS) T(BEHDAUER)
    // clang-format on
    FELDER(FUELLE);
#undef FELDER
    satz.BEHANDLERNR = satz.m_sTelefon2 = "x"; // stay behind
    Pruefe(satz, &CStatLines::MovePat, &CStatLines::MoveFile2Pat,
           "ART=P PATNR=w1 PATNAME=w7 SELEKTION=w2 PATTITEL=w3 PATVORNAME=w4 PATZUSATZ=w5 PATGEBDATUM=w6 "
           "PATORT=w8 "
           "PATPLZ=w9 PATTELEFON=w11 GESCHLECHT=w14 RISIKOANAMNESE=w16 LASTRECALL=w19 UEBERWARZT=w20 "
           "LASTBEHDATUM=w22 EINTRDATUM=w15 BENACHRICHTIGUNG=X PATSTRASSE=w10 HAUSARZT=w21 BEHDAUER=28 "
           "RECALLART=w17 "
           "RECALLITV=w18 PATEMAIL=w13 FRUEHERENAMEN=w24 FRUCHT=Z PATANREDE=w26 INDEXMARKERS=2147483675 "
           "TELEFONPRIO=w12");
}

TEST_F(UmwandlungTest, FehlerUndKasse) {
    CBehErrors fehler;
    CFueller fuelle;
    {
        auto & satz = fehler;
// clang-format off
#define FELDER(T) \
    T(PATNR) T(DATUM) T(LSTIN) T(SITZUNG) T(LFDBEHEINTRAG) T(KASKUERZEL) T(MFRDIG) T(WSO) T(GOART)
        // clang-format on
        FELDER(FUELLE);
        FUELLE(m_iFehler);
#undef FELDER
    }
    fehler.WSO_ERG = "x";
    Pruefe(fehler, &CStatLines::MoveError2File, &CStatLines::MoveFile2Error,
           "ART=E PATNR=w1 MFRDIG=w7 WSO=w8 KASKUERZEL=w6 DATUM=w2 LSTIN=w3 GOART=J TEXTART=10 SITZUNG=E "
           "LFDBEHEINTRAG=w5");
    CKas kas;
    kas.KASKUERZEL = "AOK";
    kas.BKVKASNR = "b";
    kas.KASSENART = "P";
    kas.KASSTATISTIKART = "1";
    kas.KASMEDSTATISTIKART = "2";
    kas.m_sKasSort = "s";
    kas.KASSENPWGRP = "x";
    kas.KASSENGRP = '1';
    Pruefe(kas, &CStatLines::MoveKas2File, &CStatLines::MoveFile2Kas,
           "ART=K PATNR=s KASKUERZEL=AOK BKVKASNR=b KASSENART=P KASSTATISTIKART=1 KASMEDSTATISTIKART=2");
}

TEST_F(UmwandlungTest, GipsUeberweisungMaterialbuch) {
    CFueller fuelle;
    CGipsHitLine gips;
    {
        auto & satz = gips;
// clang-format off
#define FELDER(T) \
    T(GIPSNR) T(PATNR) T(DATUM) T(GIPSART) T(BEHANDLERNR) T(BESCHREIBUNG) T(PATNAME) T(PATVORNAME) \
    T(PATTITEL) T(PATZUSATZ) T(PATGEBDATUM) T(ARCHIVIERT) T(GEDRUCKT)
        // clang-format on
        FELDER(FUELLE);
#undef FELDER
    }
    Pruefe(gips, &CStatLines::MoveGips2File, &CStatLines::MoveFile2Gips,
           "ART=I BEHANDLERNR=w5 PATNR=w2 PATNAME=w7 DATUM=w3 PATTITEL=w9 PATVORNAME=w8 PATZUSATZ=w10 "
           "PATGEBDATUM=w11 GIPSNR=w1 GIPSART=E BESCHREIBUNG=w6 ARCHIVIERT=w12 GEDRUCKT=1");
    CStatLines line;
    line.TEXT = "Dr. Groß"_t;
    line.MoveUEW2File(line.TEXT); // its own field
    EXPECT_EQ(Spalten(line), "ART=U TEXT=Dr. Groß");
    CBehHitLine hit;
    line.MoveFile2UEW(hit);
    EXPECT_EQ(hit.TEXT, "Dr. Groß"_t);

    CBehHitLine satz;
// clang-format off
#define FELDER(T) \
    T(PRAXISNR) T(BEHANDLERNR) T(PATNR) T(DATUM) T(LSTNR) T(TEXT) T(ABRMERKMAL) T(GOART) T(SITZUNG) \
    T(LFDBEHEINTRAG) T(LSTKUERZEL) T(MATBUCHUNG) T(DMBETRAG) T(GESBETRAG) T(ENDGEWICHT) T(SCHLEIFRESTE) \
    T(SCHLEIFRESTEGES) T(PREISOMWST) T(BESTANDOSR) T(PLANNR) T(LABORKUNDE) T(LFDGLBLOC) T(ISORVOPAT) \
    T(RECART) T(m_sGbAnzahl)
    // clang-format on
    FELDER(FUELLE);
#undef FELDER
    satz.ANZAHL = 300;
    satz.BETRAG = CDBetrag("e1");
    Pruefe(satz, &CStatLines::MoveGB2File, &CStatLines::MoveFile2GB,
           "ART=G PRAXISNR=w13 BEHANDLERNR=w14 PATNR=w15 DATUM=w16 LSTNR=w17 TEXT=w18 GOART=U PLANNR=w32 "
           "ABRMERKMAL=T ANZAHL=w36 LSTKUERZEL=w23 SITZUNG=V LFDBEHEINTRAG=w22 MATBUCHUNG=w24 ENDGEWICHT=w27 "
           "DMBETRAG=w25 GESBETRAG=w26 SCHLEIFRESTE=w28 PREISOMWST=w30 SCHLEIFRESTEGES=w29 BESTANDOSR=w31 "
           "LABORKUNDE=w33 ISORVOPAT=0 RECART=35 LFDGLBLOC=w34");
}

TEST_F(UmwandlungTest, RechnungUndSammelrechnung) {
    CFueller fuelle;
    CRechHitLine rech;
    {
        auto & satz = rech;
// clang-format off
#define FELDER(T) \
    T(PRAXISNR) T(PATNR) T(PATNAME) T(PATVORNAME) T(FAKT1) T(FORTLFDJAHR) T(FORTLFDFAKT) T(DATUM) \
    T(FORMULARNR) T(STORNIERT) T(MAHNSTUFE) T(KTRAEGER) T(KASKUERZEL) T(PATTELEFON) T(BEHANDLERNR) \
    T(CASHDATUM) T(ZAHLUNGSWEGDESC) T(RECHBETRAG) T(RECHBETRAGK) T(HONORAR) T(HONMWSTBETRAG) \
    T(ELABGESAMT) T(FLABGESAMT) T(ELABMWSTBETRAG) T(BEGLICHEN) T(AUSGEBUCHT)
        // clang-format on
        FELDER(FUELLE);
#undef FELDER
    }
    Pruefe(rech, &CStatLines::MoveRech2File, &CStatLines::MoveFile2Rech,
           "ART=R PRAXISNR=w1 BEHANDLERNR=w14 PATNR=w2 PATNAME=w3 KASKUERZEL=w12 DATUM=w8 FAKT1=w5 "
           "PATVORNAME=w4 "
           "PATTELEFON=w13 ELABGESAMT=e21.25 ELABMWSTBETRAG=e23.25 RECHBETRAG=e17.25 HONORAR=e19.25 "
           "FLABGESAMT=e22.25 FORMULARNR=w9 KTRAEGER=L BEGLICHEN=e24.25 AUSGEBUCHT=e25.25 STORNIERT=1 "
           "MAHNSTUFE=K "
           "FORTLFDJAHR=w6 FORTLFDFAKT=w7 CASHDATUM=w15 RECHBETRAGK=e18.25 HONMWSTBETRAG=e20.25 "
           "ZAHLUNGSWEGDESC=w16");
    CGlabFaktHitLine glab;
    {
        auto & satz = glab;
// clang-format off
#define FELDER(T) \
    T(PRAXISNR) T(LABORKUNDE) T(LFDGLKUFAKT) T(FAKTDATUM) T(VONDATUM) T(BISDATUM) T(ANZGLBLOCKS) \
    T(BEGLICHEN) T(SKONTOPROZENT) T(STORNIERT) T(TECHNLST) T(MATERIAL) T(METALL) T(PRAXMAT) T(USTGES) \
    T(NETTO) T(GESAMT)
        // clang-format on
        FELDER(FUELLE);
#undef FELDER
    }
    const std::string sErwartet =
        "ART=W PRAXISNR=w26 BEGLICHEN=w33 STORNIERT=1 LABORKUNDE=w27 LFDGLKUFAKT=w28 FAKTDATUM=w29 "
        "VONDATUM=w30 "
        "BISDATUM=w31 ANZGLBLOCKS=w32 SKONTOPROZENT=w34 TECHNLST=e-35 MATERIAL=e-36 METALL=e-37 PRAXMAT=e-38 "
        "USTGES=e-39 NETTO=e-40 GESAMT=e-41";
    Pruefe(glab, &CStatLines::MoveGlab2File, &CStatLines::MoveFile2Glab, sErwartet);
    CStatLines line;
    line.MoveFile2Glab(glab); // writes into its source
    EXPECT_EQ(line.ART, "W"_t);
}

} // namespace
} // namespace orvostat
