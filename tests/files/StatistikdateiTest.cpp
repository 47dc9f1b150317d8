// Sets by name: the selection file, a whole run written and reopened, intermediate saves, the spreadsheet link.
#include "files/DateiTest.h"
#include "orvostatbs/files/Arbeitsmappe.h"
#include "support/Rechte.h"
#include "support/Verzeichnis.h"

#include <array>
#include <cstdlib>

namespace orvostat {
namespace {

template <class T> class CSchreiber : public CStat2File<T> {
public:
    CSchreiber() : CStat2File<T>(nullptr) { this->m_sDateiName = "LS"; }
    using CStat2File<T>::Vec2String;
    int * m_pLayout = iTP_SICHERUNG;
    bool m_bMehr = false;
    int * SetLineStruct() override { return m_pLayout; }
    int DoData(T & file, int &) override {
        const CStatAccu & accu = *this->m_pFilter;
        this->WriteTitel(file);
        const auto Schreibe = [&](const auto & vSaetze, auto fHin) {
            for (const auto & satz : vSaetze) {
                (this->m_Line.*fHin)(satz);
                if (this->m_Line.ART == "E")
                    this->WriteErrorLines(file, this->m_Line);
                else
                    this->WriteLines(file, this->m_Line);
            }
        };
        Schreibe(accu.m_vBehErrors.Lesend(), &CStatLines::MoveError2File);
        Schreibe(accu.m_vPat, &CStatLines::MovePat);
        Schreibe(accu.m_vKas.Lesend(), &CStatLines::MoveKas2File);
        Schreibe(accu.m_vBehHits, &CStatLines::MoveHit);
        Schreibe(accu.m_vGipsHits, &CStatLines::MoveGips2File);
        Schreibe(accu.m_vRechHits, &CStatLines::MoveRech2File);
        Schreibe(accu.m_vGlabFaktHits, &CStatLines::MoveGlab2File);
        Schreibe(accu.m_vUewStrings, &CStatLines::MoveUEW2File);
        return CODE_OK;
    }
    bool CreateMoreSelektions(const CString & sFile) override {
        if (!m_bMehr) return true;
        typename SDateifamilie<T>::CIni ini(sFile);
        return ini.WriteString("Zusatz", "Frage", "ja") && ini.Save();
    }
};

template <class T> class CLeser : public CFile2Stat<T> {
public:
    CLeser() : CFile2Stat<T>(nullptr) { this->m_sDateiName = "LS"; }
    using CFile2Stat<T>::String2Vec;
    int * m_pLayout = iTP_SICHERUNG;
    int m_iLeer = -1; // hits in the table when the hook was called
    int * SetLineStruct() override { return m_pLayout; }
    bool OnlyForProgBeforeMoveDataFromFile() override {
        m_iLeer = static_cast<int>(this->m_pFilter->m_vBehHits.size());
        return false; // without effect
    }
};

template <class T> class StatistikdateiTest : public CDateiTest {
protected:
    StatistikdateiTest() {
        m_schreiber.SetFilter(&m_accu);
        m_leser.SetFilter(&m_gelesen);
    }
    CSchreiber<T> m_schreiber;
    CLeser<T> m_leser;
    CStatAccu m_gelesen;
    [[nodiscard]] static CString Ini() { return GetOrvoStatWSPath() + "LS.ISV"; }
    [[nodiscard]] static CString Dat() { return GetOrvoStatWSPath() + "LS.SVE"; }

    void Waehle() {
        m_accu.SetZeitraum("20231001", "20231231");
        m_accu.SetMandant("1");
        m_accu.SetLebs({"  5", " 12"});
        m_accu.SetPatient("4711");
        m_accu.SetKasse("AOK");
        m_accu.SetKasStat("1");
        m_accu.SetKasMedStat("2");
        m_accu.SetSelektion("s");
        m_accu.SetSortierung('1');
        m_accu.SetArtStat("ä;b");
        m_accu.SetNurMitMwSt(true);
        m_accu.SetProzPrivatSachkosten(-15);
        m_accu.m_lAnzHits = 1200;
        m_schreiber.m_sStatistikart = "LS";
        m_schreiber.SetStatVersion("2");
    }
};
using CKlassen = ::testing::Types<CStdioFile, CDBStdioFile>;
TYPED_TEST_SUITE(StatistikdateiTest, CKlassen);
using StatistikdateiSeite = StatistikdateiTest<CStdioFile>;

constexpr const char * SELEKTION =
    "[Allgemein]\nStatistikart=LS\nVersion=2\nErstellungsdatum=01.07.2024\nErstellungszeit=09:05\nAnzahlHits="
    "1200\n"
    "[Selektion]\nDatumVon=01.10.2023\nDatumBis=31.12.2023\nPraxisinhaber= 1\nBehandler=\"  5 12\"\n"
    "Patient=      4711\nKasse=AOK\nKasStat=1\nKasMedStat=2\nPatSelektion=s\nSortierung=1\nErweiterung=ä;b\n"
    "NurMitMwSt=1\nTecMitMwSt=0\nProzPrivatSachkosten=-15\n";

TYPED_TEST(StatistikdateiTest, SelektionHinUndZurueck) {
    this->Waehle();
    EXPECT_FALSE(this->m_leser.ExistAllFiles());
    EXPECT_TRUE(this->m_schreiber.WriteDaten());
    EXPECT_EQ(this->template Inhalt<TypeParam>(this->Ini()), SELEKTION);
    EXPECT_TRUE(this->m_leser.ExistAllFiles());
    EXPECT_TRUE(this->m_leser.ReadSelektionsFile(this->Ini()));
    EXPECT_EQ(this->m_gelesen.Selektion(), this->m_accu.Selektion());
    EXPECT_EQ(this->m_leser.GetStatVersion(), "2"_t);
    EXPECT_EQ(this->m_leser.GetLastEditDate(), "01.07.2024"_t);
    EXPECT_EQ(this->m_leser.GetLastEditDateText(),
              "F3 - Zuletzt erstellte Liste vom 01.07.2024 um 09:05 Uhr bearbeiten"_t);
    EXPECT_EQ(this->m_leser.ReadAnzHits(this->Ini()), 1200);
    EXPECT_GE(this->m_gelesen.m_vBehHits.capacity(), 1200u);

    this->m_accu.Clear_Selekt();
    this->m_schreiber.m_bMehr = true;
    EXPECT_TRUE(this->m_schreiber.WriteDaten());
    EXPECT_EQ(SDateifamilie<TypeParam>::CIni::ReadOneString(this->Ini(), "Zusatz", "Frage", "*"), "ja"_t);
    EXPECT_TRUE(this->m_leser.ReadSelektionsFile(this->Ini()));
    EXPECT_EQ(this->m_gelesen.Selektion(), this->m_accu.Selektion());
}

TYPED_TEST(StatistikdateiTest, SelektionMitLuecken) {
    const std::vector<SPrompt> vKlage{{SPrompt::HALT_E, "ReadSelektionsFile"_t,
                                       "Lesen der Filterselektionen für Statistik gescheitert!"_t, 0}};
    this->m_gelesen.SetKasse("alt");
    for (const char * pText :
         {"", "[Selektion]\nDatumVon=01.10.2023\n", "[Selektion]\nDatumBis=01.10.2023\nKasse=x\n",
          "DatumVon=1\nDatumBis=2\n", "[Selektion\nDatumVon=1.1.2024\nDatumBis=2.1.2024\n"}) {
        this->template Lege<TypeParam>(this->Ini(), pText);
        this->m_rekorder.m_vPrompts.clear();
        EXPECT_FALSE(this->m_leser.ReadSelektionsFile(this->Ini())) << pText;
        EXPECT_EQ(this->m_rekorder.m_vPrompts, vKlage);
        EXPECT_TRUE(this->m_gelesen.GetKasKuerzel() == "alt" && this->m_gelesen.GetAbDatum().IsEmpty());
    }
    EXPECT_FALSE(this->m_leser.ReadSelektionsFile(this->Ini() + "x"));
    EXPECT_EQ(this->m_leser.ReadAnzHits(this->Ini() + "x"), 0);

    const std::string sZeitraum = "[Selektion]\nDatumVon=\nDatumBis=31.12.2023\n";
    const auto Lies = [&](const std::string & sText) -> const SSelektion & {
        this->template Lege<TypeParam>(this->Ini(), sText);
        this->m_gelesen.SetLebs({"alt"});
        EXPECT_TRUE(this->m_leser.ReadSelektionsFile(this->Ini()));
        return this->m_gelesen.Selektion();
    };
    const SSelektion & leer = Lies(sZeitraum);
    EXPECT_TRUE(leer.Mandant.IsEmpty() && leer.Lebs.empty() && leer.Patient.IsEmpty() &&
                leer.KasKuerzel.IsEmpty());
    EXPECT_TRUE(leer.Sortierung == '*' && leer.ArtStat == "*" && !leer.NurMitMwSt &&
                leer.ProzPrivatSachkosten == 0);
    EXPECT_TRUE(leer.AbDatum.IsEmpty() && leer.BisDatum == "20231231");
    const SSelektion & voll =
        Lies(sZeitraum + "Praxisinhaber=x\nBehandler=12\nPatient=4711\nSortierung=\nNurMitMwSt=7\n"
                         "TecMitMwSt=x\nProzPrivatSachkosten=9x\n");
    EXPECT_TRUE(voll.Mandant == " 0" && voll.Lebs.empty() && voll.Patient == "      4711" &&
                voll.Sortierung == 0);
    EXPECT_TRUE(voll.NurMitMwSt && !voll.TecMitMwSt && voll.ProzPrivatSachkosten == 9);
    EXPECT_EQ(Lies(sZeitraum + "Behandler=  51234\n").Lebs, (std::vector<CString>{"  5", "123", "4"}));

    this->template Lege<TypeParam>(this->Ini(), "[Allgemein]\nErstellungsdatum=01.01.2024\n");
    EXPECT_EQ(this->m_leser.GetLastEditDateText(), "F3 - Zuletzt erstellte Liste  bearbeiten"_t);
    EXPECT_EQ(this->m_leser.GetStatVersion(), ""_t);
    std::uint32_t iZufall = 1; // bytes of every kind
    for (int iLauf = 0; iLauf < 200; ++iLauf) {
        std::string sBytes = "[Selektion]\nDatumVon=";
        for (int i = 0; i < iLauf; ++i)
            sBytes += "[]=\n\"\r\0 9DatumBis"[(iZufall = iZufall * 1664525 + 1013904223) >> 28];
        this->template Lege<TypeParam>(this->Ini(), sBytes);
        static_cast<void>(this->m_leser.ReadSelektionsFile(this->Ini()));
        static_cast<void>(this->m_leser.ReadAnzHits(this->Ini()));
    }
    CString sText;
    this->m_schreiber.Vec2String({"1", "12345", ""}, sText, 3);
    EXPECT_EQ(sText, "  112345   "_t);
    std::vector<CString> v{"alt"};
    this->m_leser.String2Vec("1234567", v, 3);
    EXPECT_EQ(v, (std::vector<CString>{"123", "456", "7"}));
}

// The examples in docs/dateien.md are what is written.
TEST_F(StatistikdateiSeite, ZeigtWasGeschriebenWird) {
    Waehle();
    for (const bool bKasse : {true, false}) {
        CBehHitLine & hit = m_accu.m_vBehHits.emplace_back();
        hit.PRAXISNR = " 1";
        hit.BEHANDLERNR = bKasse ? CString("  5") : CString(" 12");
        hit.DATUM = "20240115"_t;
        hit.ANZAHL = 1;
        hit.BETRAG = bKasse ? CDBetrag("e1376.25"_t) : CDBetrag("e-500");
        hit.GOART = bKasse ? 'k' : 'q';
        hit.KASKUERZEL = bKasse ? "BKKÖ01"_t : CString();
        hit.PUNKTE = bKasse ? 1200 : 0;
        hit.FREMDKASSE = bKasse;
    }
    CBehErrors & fehler = m_accu.m_vBehErrors.emplace_back();
    fehler.PATNR = "      1234"_t;
    fehler.DATUM = "20240115"_t;
    fehler.LSTIN = "Ä1";
    fehler.m_iFehler = 5;
    m_accu.m_lAnzHits = 2;
    m_schreiber.m_pLayout = iHVM_SICHERUNG;
    ASSERT_TRUE(m_schreiber.WriteDaten());
    const std::string sSeite = LiesDatei(ORVOSTATBS_SOURCE_DIR "/docs/dateien.md");
    for (const CString & sDatei : {Dat(), Ini()}) {
        const std::string sText = Inhalt<CStdioFile>(sDatei);
        EXPECT_NE(sSeite.find("```text\n" + sText + "```\n"), std::string::npos) << sText;
    }
}

// A number of hits is a hint: what the data file cannot hold is not reserved.
TYPED_TEST(StatistikdateiTest, AnzahlHitsReserviertNurWasSeinKann) {
    this->template Lege<TypeParam>(this->Dat(), std::string(64 * 20'000, 'x'));
    const struct {
        const char * pText;
        long lHits;
        bool bPlatz;
    } vFaelle[] = {
        {"5000", 5000, true},
        {"20000", 20'000, true},
        {"20001", 20'001, false},
        {"-5", -5, false},
        {"x", 0, false},
        {"4000000000", 4'000'000'000, false},
        {"9223372036854775807", 9223372036854775807, false},
    };
    for (const auto & fall : vFaelle) {
        std::vector<CBehHitLine>().swap(this->m_gelesen.m_vBehHits);
        this->template Lege<TypeParam>(this->Ini(),
                                       std::string("[Allgemein]\nAnzahlHits=") + fall.pText + "\n");
        EXPECT_EQ(this->m_leser.ReadAnzHits(this->Ini()), fall.lHits);
        EXPECT_EQ(this->m_gelesen.m_vBehHits.capacity(),
                  fall.bPlatz ? static_cast<std::size_t>(fall.lHits) : 0);
    }
}

// ---- a whole run

// Hits whose amounts go to the last decimal that a stored text keeps.
CBehHitLine MakeHit(int i) {
    CBehHitLine hit;
    hit.PATNR = RightFix(itoc(1000 + i % 97), 10);
    hit.DATUM = "202401" + RightFix(itoc(1 + i % 28), 2, '0');
    hit.LSTNR = i % 2 == 0 ? CString("13a") : CString("2060");
    hit.BETRAG =
        CDBetrag((i % 7 == 0 ? "e-" : "e") + itoc(1 + i * 31) + (i % 3 == 0 ? CString(".125") : CString()));
    hit.ZUSCHLAG = i % 5 == 0 ? CDBetrag() : CDBetrag("e" + itoc(i));
    hit.PUNKTWERT = CDPw("e11234.5");
    hit.PUNKTE = i;
    hit.ANZAHL = 100 + i;
    hit.GOART = i % 2 == 0 ? 'k' : 'q';
    hit.TEXT = i % 4 == 0 ? "Füllung; Zahn\n16, größer als üblich"_t : CString();
    hit.ISPRIVATPATIENT = i % 3 == 0;
    return hit;
}

TYPED_TEST(StatistikdateiTest, EinLaufWirdGespeichertUndWiederGeoeffnet) {
    CDBetrag summe, zuschlaege;
    std::int64_t iPunkte = 0;
    const auto Summiere = [&](const CStatAccu & accu) {
        summe = zuschlaege = CDBetrag();
        iPunkte = 0;
        for (const CBehHitLine & hit : accu.m_vBehHits) {
            summe += hit.BETRAG;
            zuschlaege += hit.ZUSCHLAG;
            iPunkte += hit.PUNKTE;
        }
        return std::string(summe.ToDb(0, true, false, 0, 0).Utf8() + ' ' +
                           zuschlaege.ToDb(0, true, false, 0, 0).Utf8() + ' ' + std::to_string(iPunkte));
    };
    for (int i = 0; i < 3000; ++i)
        this->m_accu.m_vBehHits.push_back(MakeHit(i));
    this->m_accu.m_vBehErrors.emplace_back().m_iFehler = 6;
    this->m_accu.m_vPat.emplace_back().PATNR = "1";
    this->m_accu.m_vKas.emplace_back().m_sKasSort = "2";
    this->m_accu.m_vGipsHits.emplace_back().PATNR = "3";
    this->m_accu.m_vRechHits.emplace_back().PATNR = "4";
    this->m_accu.m_vGlabFaktHits.emplace_back().PRAXISNR = "5";
    this->m_accu.m_vUewStrings = {"b", "a", "b"};
    this->m_accu.m_lAnzHits = 3000;
    EXPECT_TRUE(this->m_schreiber.WriteDaten());

    CStatAccu & g = this->m_gelesen;
    g.m_vBehHits.resize(2);
    g.m_vGlabHits.resize(1);
    g.m_vVerordnungHits.resize(1);
    g.m_iGlabPos = g.m_iErrPos = g.m_iGipsPos = g.m_iRechPos = 7;
    EXPECT_TRUE(this->m_leser.ReadDaten());
    EXPECT_EQ(this->m_leser.m_iLeer, 0);
    EXPECT_EQ(Summiere(g), Summiere(this->m_accu));
    ASSERT_EQ(g.m_vBehHits.size(), 3000u);
    EXPECT_EQ(g.m_vBehHits[4].TEXT, "Füllung| Zahn 16, größer als üblich"_t);
    EXPECT_EQ(g.m_vBehHits[4].DATUM, "20240105"_t);
    EXPECT_TRUE(g.m_vBehHits[3].ISPRIVATPATIENT && !g.m_vBehHits[4].ISPRIVATPATIENT);
    ASSERT_TRUE(g.m_vBehErrors.size() == 1 && g.m_vPat.size() == 1 && g.m_vKas.size() == 1);
    EXPECT_EQ(g.m_vBehErrors.Lesend()[0].m_iFehler, 6);
    EXPECT_TRUE(g.m_vPat[0].PATNR == "1" && g.m_vPat[0].m_bPatValid);
    EXPECT_EQ(g.m_vKas.Lesend()[0].m_sKasSort, "2"_t);
    EXPECT_TRUE(g.m_vGipsHits.size() == 1 && g.m_vRechHits.size() == 1 && g.m_vGlabFaktHits.empty());
    EXPECT_EQ(g.m_vUewStrings, (std::vector<CString>{"a", "b"}));
    EXPECT_TRUE(g.m_vGlabHits.size() == 1 && g.m_vVerordnungHits.size() == 1); // not a file's
    EXPECT_TRUE(g.m_iGlabPos == 7 && g.m_iErrPos == -1 && g.m_iGipsPos == -1 && g.m_iRechPos == -1);
    EXPECT_EQ(this->m_rekorder.m_vSchritte.back(),
              (std::pair<long, long>{3011, 3000})); // one more than the lines
    // Again: the tables are emptied, the referrals are kept.
    g.m_vUewStrings.clear();
    EXPECT_TRUE(this->m_leser.ReadDaten());
    EXPECT_TRUE(g.m_vBehHits.size() == 3000 && g.m_vPat.size() == 1 && g.m_vUewStrings.size() == 2);

    this->m_leser.m_pLayout = nullptr;
    EXPECT_FALSE(this->m_leser.ReadDaten());
    CStatAccu ohnePools;
    this->m_leser.SetFilter(&ohnePools);
    dbDatabaseRO.Verbinde(std::make_shared<CMemorySpeicher>());
    EXPECT_FALSE(this->m_leser.ReadDaten());
    EXPECT_TRUE(this->m_rekorder.m_vPrompts.empty());
}

TYPED_TEST(StatistikdateiTest, ZeilenarteDerReihenfolgeNach) {
    CLeser<TypeParam> & leser = this->m_leser;
    CStatLines line;
    const auto Nimm = [&](const CString & sArt, const CString & sText) {
        line.ART = sArt;
        line.TEXT = sText;
        const bool bErgebnis = leser.MoveDataFromFile(line);
        std::string s = bErgebnis ? "1" : "0";
        for (const CString & sUew : this->m_gelesen.m_vUewStrings)
            s += ' ' + sUew.Utf8();
        return s;
    };
    EXPECT_EQ(Nimm("U", "b"), "1 b");
    EXPECT_EQ(Nimm("U", "a"), "1 a b");
    EXPECT_EQ(Nimm("U", "a"), "1 a b");
    this->m_gelesen.m_vUewStrings.clear();
    for (const CString & sArt : {"W"_t, "HH"_t, ""_t, "ART"_t, "h"_t, "E"_t})
        EXPECT_EQ(Nimm(sArt, "x"), "0 a b") << sArt.Utf8();
    for (const CString & sArt : {"H"_t, "P"_t, "K"_t, "I"_t, "G"_t, "R"_t})
        EXPECT_EQ(Nimm(sArt, "x"), "1 a b") << sArt.Utf8();
    EXPECT_EQ(this->m_gelesen.m_vBehHits.size(), 2u);
    EXPECT_EQ(leser.m_Hit.TEXT, "x"_t);
    EXPECT_EQ(this->m_gelesen.m_vBehErrors.size(), 1u);
    CStatAccu anderer; // as many texts, but not these
    anderer.m_vUewStrings = {"x", "y"};
    leser.SetFilter(&anderer);
    line.ART = "W";
    leser.MoveDataFromFile(line);
    EXPECT_EQ(anderer.m_vUewStrings, (std::vector<CString>{"a", "b"}));
}

// A full disk at any moment: no set is called complete with lost lines.
TYPED_TEST(StatistikdateiTest, EinScheiternHinterlaesstKeinenFertigenSatz) {
    CFehlerdateien platte(Plattendateien()), bestand(Bestandsdateien());
    const CPlattendateienErsatz platteErsatz(platte);
    const CBestandsdateienErsatz bestandErsatz(bestand);
    this->m_accu.m_vBehHits.push_back(MakeHit(1));
    for (const auto eWo : {CFehlerdateien::OEFFNEN, CFehlerdateien::SCHREIBEN, CFehlerdateien::SICHERN,
                           CFehlerdateien::SCHLIESSEN, CFehlerdateien::LOESCHEN}) {
        EXPECT_TRUE(this->m_schreiber.WriteDaten());
        platte.FehlerBei(eWo, 13);
        bestand.FehlerBei(eWo, 13);
        EXPECT_FALSE(this->m_schreiber.WriteDaten());
        platte.FehlerBei(CFehlerdateien::NIRGENDS);
        bestand.FehlerBei(CFehlerdateien::NIRGENDS);
        const bool bAlter = eWo == CFehlerdateien::LOESCHEN; // the former set stands as it was
        EXPECT_EQ(this->m_leser.ExistAllFiles(), bAlter) << eWo;
    }
}

// ---- intermediate saves

class ZwSichTest : public CDateiTest {
protected:
    CZwSich2File m_zw{"ZW", "egal", iFS_SICHERUNG, nullptr};
    void Sichere(int iHits) {
        for (int i = 0; i < iHits; ++i)
            m_accu.m_vBehHits.push_back(MakeHit(i));
        EXPECT_TRUE(m_zw.WriteZwDaten(m_accu.m_vBehHits, &m_accu));
    }
    [[nodiscard]] std::int64_t Zeilen() const {
        const std::string s =
            Inhalt<CDBStdioFile>(m_zw.m_pZwStruct ? GetOrvoStatWSPath() + "ZW.SVE" : CString());
        return s == "-" ? -1 : std::count(s.begin(), s.end(), '\n');
    }
};

TEST_F(ZwSichTest, SichernUndZuruecklesen) {
    Sichere(3); // switched off
    EXPECT_EQ(Zeilen(), -1);
    EXPECT_EQ(m_accu.m_vBehHits.size(), 3u);
    m_accu.m_vBehHits.clear();
    m_accu.m_vBehHits.shrink_to_fit();

    m_zw.m_bZwSich = true;
    Sichere(0);
    EXPECT_EQ(Zeilen(), 0);
    EXPECT_GE(m_accu.m_vBehHits.capacity(), 5000u);
    Lege<CDBStdioFile>(GetOrvoStatWSPath() + "ZW.ISV", "x");
    Sichere(3);
    EXPECT_TRUE(m_accu.m_vBehHits.empty());
    EXPECT_FALSE(FileExistsDB(GetOrvoStatWSPath() + "ZW.ISV"));
    Sichere(2);
    EXPECT_EQ(Zeilen(), 5);
    EXPECT_TRUE(Inhalt<CDBStdioFile>(GetOrvoStatWSPath() + "ZW.SVE").starts_with("H;      1000;"));
    EXPECT_TRUE(m_rekorder.m_vBoxTexte.empty() && m_rekorder.m_vPrompts.empty());

    class CZurueck : public CLeser<CDBStdioFile> {
    public:
        CZurueck() { m_sDateiName = "ZW"; }
    } leser;
    leser.m_pLayout = iFS_SICHERUNG;
    leser.SetFilter(&m_accu);
    EXPECT_TRUE(leser.ReadDaten());
    ASSERT_EQ(m_accu.m_vBehHits.size(), 5u);
    EXPECT_EQ(m_accu.m_vBehHits[2].BETRAG, MakeHit(2).BETRAG);
    EXPECT_EQ(m_accu.m_vBehHits[3].BETRAG, MakeHit(0).BETRAG);
    m_zw.DeleteZwFiles();
    EXPECT_EQ(Zeilen(), -1);
    m_zw.DeleteZwFiles();
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());
}

TEST_F(ZwSichTest, EinScheiternVerliertDieHitsMitAnsage) {
    CFehlerdateien bestand(Bestandsdateien());
    const CBestandsdateienErsatz ersatz(bestand);
    m_zw.m_bZwSich = true;
    Sichere(2);
    bestand.FehlerBei(CFehlerdateien::SICHERN, 13);
    Sichere(1);
    EXPECT_TRUE(m_accu.m_vBehHits.empty());
    EXPECT_EQ(m_rekorder.m_vPrompts.size(), 1u);
    bestand.FehlerBei(CFehlerdateien::NIRGENDS);
    EXPECT_EQ(Zeilen(), 2);
    CZwSich2File ohneLayout("ZW", CString(), nullptr, nullptr);
    EXPECT_EQ(ohneLayout.GetGesamtPos(), 0);
}

// ---- the spreadsheet link

class CTestplatz final : public CArbeitsplatz {
public:
    std::vector<std::string> m_vRufe;
    int m_iProfile = 99; // that many succeed
    bool StarteProgramm(const CString & sBefehl, int iAnzeige) override {
        m_vRufe.push_back(sBefehl.Utf8() + " " + std::to_string(iAnzeige));
        return false; // without effect
    }
    void MerkeTempDatei(const CString & sDatei) override { m_vRufe.push_back(sDatei.Utf8()); }
    int SetzeProfil(const CString &, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        m_vRufe.push_back((sAbschnitt + sSchluessel + "=" + sWert).Utf8());
        return m_iProfile-- > 0 ? PROFIL_OK : 0;
    }
};

std::string s_sBefehl;
bool s_bProgramm;
bool Fremdprogramm(int iProgramm, CString & sPfad) {
    sPfad = "C:\\calc"_t;
    return s_bProgramm && iProgramm == 2;
}
void Cockpit(const CString & sBefehl) { s_sBefehl = sBefehl.Utf8(); }

class CExcel : public COrvo2Excel {
public:
    CExcel() : COrvo2Excel(nullptr) {}
    using COrvo2Excel::FormatBetrag;
    int * SetLineStruct() override { return iTAGESPROTOKOLL; }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        return CODE_OK;
    }
};

class ExcelTest : public CDateiTest {
protected:
    ExcelTest() {
        s_sBefehl.clear();
        s_bProgramm = true;
        m_bibliotheken.Registriere("orvofremd"_t, "GetFremdProgPath"_t, &Fremdprogramm);
        m_bibliotheken.Registriere("orvocockpit"_t, "OrvoCockpitExcel"_t, &Cockpit);
        m_pfade.sTemp = m_pfade.sTemp.Left(m_pfade.sTemp.GetLength() - 1); // the separator is added
        m_excel.m_sDateiName = "T";
        m_excel.m_sStatistikart = "TP";
        m_excel.SetFilter(&m_accu);
        m_excel.SetMandant("M");
        m_excel.SetLeb("L");
        m_excel.SetKasse("K");
        m_excel.SetPatient("P");
        m_accu.SetZeitraum("20240101", "20240331");
        m_accu.SetKasStat("ks");
        m_accu.SetSelektion("ps");
    }
    CExcel m_excel;
    CTestplatz m_platz;
    CArbeitsplatzErsatz m_ersatz{m_platz};
};

TEST_F(ExcelTest, UebergabeUndStart) {
    m_excel.m_sVorlage = m_pfade.sDaten + "vorlage.xls"_t;
    const CString sZiel = m_pfade.sDaten + "Orvo2Excel.xls"_t;
    Lege<CStdioFile>(m_excel.m_sVorlage, "neu");
    Lege<CStdioFile>(sZiel, "alt");
    std::filesystem::permissions(Dateipfad(sZiel), std::filesystem::perms::owner_read);
    const COhneRootrechte ohneRechte(m_verzeichnis);
    EXPECT_TRUE(m_excel.StartExcel());
    EXPECT_EQ(Inhalt<CStdioFile>(sZiel), "neu");
    EXPECT_EQ(s_sBefehl, "\"C:\\calc\" \"" + sZiel.Utf8() + '"');
    const std::string sTemp = m_pfade.sTemp.Utf8() + '\\';
    EXPECT_EQ(m_platz.m_vRufe,
              (std::vector<std::string>{
                  sTemp + "T.CSV", sTemp + "T.INI", "[Allgemein]Statistikart=TP",
                  "[Allgemein]Erstellungsdatum=01.07.2024", "[Allgemein]Erstellungszeit=09:05",
                  "[Allgemein]Waehrung=€", "[Selektion]DatumVon=01.01.2024", "[Selektion]DatumBis=31.03.2024",
                  "[Selektion]Praxisinhaber=M", "[Selektion]Behandler=L", "[Selektion]Patient=P",
                  "[Selektion]Kasse=K", "[Selektion]Kassengruppe=ks", "[Selektion]PatSelektion=ps"}));
    EXPECT_EQ(Inhalt<CStdioFile>(m_pfade.sTemp + "\\T.CSV"),
              "ART;GOSTATISTIKART;GOSTATISTIKNAME;PUNKTE;BETRAG\n");
    m_excel.m_sVorlage.Empty(); // the former workbook stays
    m_excel.SetWaehrung(' ');
    EXPECT_TRUE(m_excel.StartExcel());
    EXPECT_EQ(Inhalt<CStdioFile>(sZiel), "neu");
    EXPECT_EQ(std::count(m_platz.m_vRufe.begin(), m_platz.m_vRufe.end(), "[Allgemein]Waehrung=DM"), 1);
    EXPECT_TRUE(m_rekorder.m_vPrompts.empty());

    m_platz.m_vRufe.clear();
    m_platz.m_iProfile = 3;
    EXPECT_FALSE(m_excel.StartExcel());
    EXPECT_EQ(m_platz.m_vRufe.size(), 6u); // stops at the fourth key
    EXPECT_EQ(m_rekorder.m_vPrompts.at(0).sText, "Selektionsdatei konnte nicht erstellt werden"_t);
    s_bProgramm = false;
    EXPECT_FALSE(m_excel.StartExcel() || OrvoStartExcel("x", 1, 2007));
    m_bibliotheken = CBibliotheken();
    EXPECT_FALSE(m_excel.StartExcel());
    EXPECT_EQ(m_rekorder.m_vPrompts.back().sTitel, "LoadLibrary fehlgeschlagen!"_t);
}

TEST_F(ExcelTest, Plotvorlagen) {
    const struct {
        int iArt, iVersion;
        const char * pVorlage;
    } vFaelle[] = {{1, 2007, "orvoexcelplotbycolumns2007.xls"},
                   {1, 2003, "orvoexcelplotbycolumns.xls"},
                   {0, 2007, "orvoexcelplotbyrows.xls"},
                   {2, 2007, nullptr},
                   {-1, 0, nullptr}};
    for (const auto & fall : vFaelle) {
        m_platz.m_vRufe.clear();
        EXPECT_EQ(OrvoStartExcel("d.csv", fall.iArt, fall.iVersion), fall.pVorlage != nullptr);
        std::vector<std::string> vErwartet;
        if (fall.pVorlage)
            vErwartet.push_back("\"C:\\calc\" /e\"d.csv\" \"" + m_pfade.sProgramm.Utf8() + fall.pVorlage +
                                "\" 5");
        EXPECT_EQ(m_platz.m_vRufe, vErwartet);
    }
    EXPECT_EQ(m_excel.FormatBetrag(CDBetrag("e-123456")), "-1234,56"_t);
    EXPECT_EQ(m_excel.FormatBetrag(CDBetrag("e0")), ""_t);
    EXPECT_EQ(m_excel.FormatBetrag(CDBetrag()), ""_t);
    m_excel.SetWaehrung(' ');
    EXPECT_EQ(m_excel.FormatBetrag(CDBetrag("e10000")), "195,58"_t);
}

// A hand-over that stays. scripts/check-spreadsheet names a folder for it and opens it with a spreadsheet program.
class CBleibeplatz final : public CArbeitsplatz {
public:
    explicit CBleibeplatz(CArbeitsplatz & innen) : m_innen(innen) {}
    bool StarteProgramm(const CString &, int) override { return false; }
    void MerkeTempDatei(const CString &) override {}
    int SetzeProfil(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        return m_innen.SetzeProfil(sDatei, sAbschnitt, sSchluessel, sWert);
    }

private:
    CArbeitsplatz & m_innen;
};

class CHitExcel : public CExcel {
public:
    int * SetLineStruct() override { return iTP_SICHERUNG; }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        for (const CBehHitLine & hit : m_pFilter->m_vBehHits) {
            m_Line.MoveHit(hit);
            m_Line.PATNAME = hit.PATNAME;
            m_Line.BETRAG = FormatBetrag(hit.BETRAG);
            WriteLines(file, m_Line);
        }
        return CODE_OK;
    }
};

TEST_F(ExcelTest, EineUebergabeMitArbeitsmappe) {
    SetzeArbeitsplatz(nullptr);
    CBleibeplatz platz(Arbeitsplatz());
    SetzeArbeitsplatz(&platz);
    if (const char * pOrdner = std::getenv("ORVOSTATBS_UEBERGABE"); pOrdner != nullptr)
        m_pfade.sTemp = m_pfade.sDaten = Verzeichnistext(pOrdner);
    for (const auto & [sName, sBetrag, sText] : std::initializer_list<std::array<CString, 3>>{
             {"Müller-Lüdenscheidt"_t, "e123456"_t, "10 € Zuzahlung, groß"_t},
             {"Groß"_t, "e-5"_t, "  zwei Blanks; ein Semikolon"_t},
             {"Ångström"_t, "e99"_t, "\"in Anführung\", 1.5 und 007"_t}}) {
        CBehHitLine & hit = m_accu.m_vBehHits.emplace_back(MakeHit(1));
        hit.PATNAME = sName;
        hit.BETRAG = CDBetrag(sBetrag);
        hit.TEXT = sText;
    }
    CHitExcel excel;
    excel.m_sDateiName = "Übergabe 1"_t;
    excel.SetFilter(&m_accu);
    excel.SetMandant("Dr. Böhmländer"_t);
    const std::string sMappe = Arbeitsmappe(LiesDatei(ORVOSTATBS_SOURCE_DIR "/data/Orvo2Excel.fods"),
                                            iTP_SICHERUNG, excel.GetDatFilename(), excel.GetIniFilename());
    EXPECT_EQ(sMappe.find('@'), std::string::npos);
    EXPECT_NE(sMappe.find("/%C3%9Cbergabe%201.CSV\""), std::string::npos);
    EXPECT_NE(sMappe.find(",1/2/2/2/3/2/4/2/5/2"), std::string::npos) << "keys are texts";
    EXPECT_NE(sMappe.find("/18/1/"), std::string::npos) << "ANZAHL is a number";
    excel.m_sVorlage = m_pfade.sDaten + "vorlage.fods"_t;
    Lege<CStdioFile>(excel.m_sVorlage, sMappe);
    EXPECT_TRUE(excel.StartExcel());
    EXPECT_EQ(LiesDatei(Dateipfad(m_pfade.sDaten + "Orvo2Excel.xls"_t)), sMappe);
}

} // namespace
} // namespace orvostat
