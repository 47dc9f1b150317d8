#include "SpeicherTest.h"

#ifdef ORVOSTATBS_POSTGRES
#include "orvostatbs/postgres/PostgresSpeicher.h"
#include "support/Testserver.h"
#endif
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <random>
#include <utility>

namespace orvostat {

const STabelle & Patienten() { return SBeschreibung<CTPat_Fields>::tabelle; }

namespace {

std::vector<CString *> Zeiger(CTPat_Fields & zeile) {
    std::vector<CString *> vZeiger;
    for (const auto pFeld : SBeschreibung<CTPat_Fields>::aZeiger)
        vZeiger.push_back(&(zeile.*pFeld));
    return vZeiger;
}

} // namespace

int Schreibe(CZeilenspeicher & speicher, const CString & sNummer, const CString & sName,
             const CString & sVorname) {
    CTPat_Fields zeile;
    zeile.m_PATNR = sNummer;
    zeile.m_PATNAME = sName;
    zeile.m_PATVORNAME = sVorname;
    const auto vZeiger = Zeiger(zeile);
    return speicher.Schreibe(Patienten(), {vZeiger.data(), vZeiger.size()});
}

CPatientenweg::CPatientenweg(CZeilenspeicher & speicher, const SBereich & bereich)
    : m_vZeiger(Zeiger(m_zeile)), m_pWeg(speicher.Oeffne(Patienten(), bereich)) {}

std::string CPatientenweg::Rest() {
    std::string s;
    int iErgebnis;
    while ((iErgebnis = Naechste()) == ZEILE_OK)
        s += (s.empty() ? "" : " ") + m_zeile.m_PATNR.Utf8();
    return iErgebnis == ZEILE_KEINE ? s : s + "!";
}

void ErwarteNurLesen(CZeilenspeicher & speicher) {
    CPatientenweg weg(speicher);
    ASSERT_TRUE(speicher.NurLesen() && weg.Naechste() == ZEILE_OK);
    for (const int iErgebnis :
         {weg.Loesche(), weg.Ersetze(), Schreibe(speicher, "2"), speicher.Beginne(), speicher.Beende(true)})
        EXPECT_EQ(iErgebnis, ZEILE_VERWEIGERT);
    EXPECT_EQ(speicher.Zeilenzahl(Patienten()), 1);
}

std::string Nummern(CZeilenspeicher & speicher, const SBereich & bereich) {
    return CPatientenweg(speicher, bereich).Rest();
}

namespace {

std::shared_ptr<CZeilenspeicher> MacheMemory(const CTempVerzeichnis &) {
    return std::make_shared<CMemorySpeicher>();
}

std::shared_ptr<CZeilenspeicher> MacheSqlite(const CTempVerzeichnis & verzeichnis) {
    CString sMeldung;
    auto p = CSqliteSpeicher::OeffneDatei(verzeichnis.Datei("p.db"), EModus::NeuUngesichert, sMeldung);
    EXPECT_TRUE(p) << sMeldung.Utf8();
    return p;
}

#ifdef ORVOSTATBS_POSTGRES
// Each a practice of its own, in one database; null where there is no server.
std::shared_ptr<CZeilenspeicher> MachePostgres(const CTempVerzeichnis &) {
    static int s_iPraxis = 0;
    const CTestserver & server = CTestserver::Einziger();
    if (!server.Hindernis().empty()) return nullptr;
    CString sMeldung;
    auto p = CPostgresSpeicher::OeffneServer(server.Verbindung(), "suite " + std::to_string(++s_iPraxis),
                                             EServermodus::Anlegen, sMeldung);
    if (!p) throw std::runtime_error(sMeldung.Utf8());
    return p;
}
#endif

template <std::shared_ptr<CZeilenspeicher> (*INNEN)(const CTempVerzeichnis &)>
std::shared_ptr<CZeilenspeicher> MacheVerpackt(const CTempVerzeichnis & verzeichnis) {
    return std::make_shared<CFehlerspeicher>(INNEN(verzeichnis));
}

class SpeicherTest : public ::testing::TestWithParam<SSpeicherart> {
protected:
    void SetUp() override {
        if (!m_pGemachter) GTEST_SKIP() << "NOT RUN: there is no server";
    }

    CTempVerzeichnis m_verzeichnis;
    std::shared_ptr<CZeilenspeicher> m_pGemachter = GetParam().fMache(m_verzeichnis);
    std::shared_ptr<CZeilenspeicher> m_pSpeicher =
        m_pGemachter ? m_pGemachter : std::make_shared<CMemorySpeicher>();
    CZeilenspeicher & m_s = *m_pSpeicher;

    void SchreibeAlle(std::initializer_list<CString> vNummern) {
        for (const CString & sNummer : vNummern)
            EXPECT_EQ(Schreibe(m_s, sNummer), ZEILE_OK);
    }
    // The numbers in the order of key 2.
    [[nodiscard]] std::string NachNamen(bool bAbsteigend = false) {
        return Nummern(m_s, {2, bAbsteigend, "", ""});
    }
    void LoescheAlle() {
        CPatientenweg weg(m_s);
        while (weg.Naechste() == ZEILE_OK)
            weg.Loesche();
    }
};

std::string Teil(const char * p) {
    std::string s;
    HaengeTeilAn(s, Patienten(), CString(p), false);
    return s;
}

TEST_P(SpeicherTest, RowsComeInTheByteOrderOfTheKey) {
    SchreibeAlle({"b", "ä", "a", "B", "10", "9", "ab", "a b", "€"});
    EXPECT_EQ(Nummern(m_s), "10 9 B a a b ab b € ä");
    EXPECT_EQ(Nummern(m_s, {1, true, "", ""}), "ä € b ab a b a B 9 10");
}

// A part ends before the next one counts, and rows of equal key keep the order of writing.
TEST_P(SpeicherTest, RowsComeInTheOrderOfTheirKeysParts) {
    constexpr const char * ZEILEN[][3] = {{"1", "Mai", "Zoe"},  {"2", "Maier", "Anna"}, {"7", "Mai ", "Yann"},
                                          {"3", "Mai", "Yann"}, {"5", "Mai", "Yann "},  {"4", "", "Udo"}};
    for (const auto & [pNummer, pName, pVorname] : ZEILEN)
        Schreibe(m_s, CString(pNummer), CString(pName), CString(pVorname));
    EXPECT_EQ(NachNamen(), "4 7 3 5 1 2");
    EXPECT_EQ(NachNamen(true), "2 1 5 3 7 4");
}

TEST_P(SpeicherTest, RangesIncludeTheirStartAndExcludeTheirEnd) {
    SchreibeAlle({"1", "2", "22", "3", "ÿ", "ÿ\x01"});
    const auto Gelesen = [this](const std::string & sVon, const std::string & sBis) {
        return Nummern(m_s, {1, false, sVon, sBis});
    };
    EXPECT_EQ(Gelesen(Teil("2"), ""), "2 22 3 ÿ ÿ\x01");
    EXPECT_EQ(Gelesen("", Teil("22")), "1 2");
    EXPECT_EQ(Gelesen(Teil("2"), Danach(Teil("2"))), "2");
    EXPECT_EQ(Gelesen("2", Danach("2")), "2 22") << "a prefix";
    EXPECT_EQ(Gelesen("\xFF", Danach("\xFF")), "ÿ ÿ\x01") << "a prefix of the last byte";
    EXPECT_EQ(Gelesen(Teil("4"), Danach(Teil("4"))) + Gelesen(Teil("3"), Teil("1")), "")
        << "no such key, an end before its start";
    EXPECT_EQ(Nummern(m_s, {1, true, Teil("2"), Danach(Teil("3"))}), "3 22 2");
    for (const int iSchluessel : {0, 3}) // keys that the table lacks
        EXPECT_EQ(m_s.Oeffne(Patienten(), {iSchluessel, false, "", ""}), nullptr);
}

TEST_P(SpeicherTest, TextsComeBackAsTheyWere) {
    std::string sAlle;
    for (int c = 0; c < 256; ++c)
        sAlle += static_cast<char>(c);
    for (const CString & sText :
         {CString(), CString(" "), CString("20240229"), CString('x', 7), CString('x', 8), CString('7', 14),
          CString('7', 15), CString(std::string_view(sAlle)), CString('\xE4', 70000)}) {
        ASSERT_EQ(Schreibe(m_s, "1", sText), ZEILE_OK);
        CPatientenweg weg(m_s);
        ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        EXPECT_EQ(weg.m_zeile.m_PATNAME, sText);
        ASSERT_EQ(weg.Loesche(), ZEILE_OK);
    }
}

TEST_P(SpeicherTest, OnlyARowThatIsThereCanBeDeletedAndTheEndStaysTheEnd) {
    SchreibeAlle({"1", "2", "3"});
    CPatientenweg weg(m_s);
    EXPECT_EQ(weg.Loesche(), ZEILE_KEINE) << "before the first row";
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(weg.Loesche(), ZEILE_OK);
    EXPECT_TRUE(weg.Loesche() == ZEILE_KEINE && weg.Ersetze() == ZEILE_KEINE) << "twice";
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    CPatientenweg anderer(m_s);
    ASSERT_TRUE(anderer.Naechste() == ZEILE_OK && anderer.Loesche() == ZEILE_OK);
    EXPECT_TRUE(weg.Loesche() == ZEILE_KEINE && weg.Ersetze() == ZEILE_KEINE)
        << "somebody else has deleted it";
    EXPECT_EQ(weg.Rest(), "3");
    EXPECT_EQ(weg.m_zeile.m_PATNR, CString("3")) << "the end leaves the fields";
    SchreibeAlle({"4"});
    for (const int iErgebnis : {weg.Naechste(), weg.Loesche(), weg.Ersetze()})
        EXPECT_EQ(iErgebnis, ZEILE_KEINE);
    EXPECT_EQ(Nummern(m_s), "3 4");
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 2);
}

TEST_P(SpeicherTest, AReplacedRowKeepsItsPlaceUnlessItsKeyChanges) {
    for (const CString & sNummer : {CString("1"), CString("2"), CString("3")})
        Schreibe(m_s, sNummer, "Mai");
    CPatientenweg weg(m_s);
    CPatientenweg anderer(m_s, {1, true, "", ""});
    ASSERT_TRUE(weg.Naechste() == ZEILE_OK && anderer.Naechste() == ZEILE_OK &&
                anderer.Naechste() == ZEILE_OK);
    EXPECT_EQ(weg.Setze(&CTPat_Fields::m_PATGEBDATUM, "19700101"), ZEILE_OK);
    EXPECT_EQ(NachNamen(), "1 2 3");
    ASSERT_EQ(anderer.Naechste(), ZEILE_OK);
    EXPECT_EQ(anderer.m_zeile.m_PATGEBDATUM, CString("19700101"))
        << "a row changed ahead is met as it is now";
    EXPECT_EQ(weg.Setze(&CTPat_Fields::m_PATNAME, "Abt"), ZEILE_OK);
    EXPECT_EQ(NachNamen(), "1 2 3");
    EXPECT_EQ(weg.Setze(&CTPat_Fields::m_PATNAME, "Mai"), ZEILE_OK)
        << "the same row, although its key has changed";
    EXPECT_EQ(NachNamen(), "2 3 1");
    EXPECT_EQ(weg.Rest(), "2 3");
}

// A walk over rows 1 to 5 stands on row 2 when something happens to the table; what is ahead of it then?
TEST_P(SpeicherTest, AWalkGoesOnWhateverHappensToTheTable) {
    constexpr struct {
        bool bAbsteigend;
        const char * pEigene; // the new number of the walk's own row, "-" for its end
        const char * pWeg;    // the numbers of rows that others delete
        const char * pAlt;    // that others give another number
        const char * pNeu;
        const char * pVoraus;
    } FAELLE[] = {{false, "", "", "", "", "3 4 5"},   {false, "-", "", "", "", "3 4 5"},
                  {true, "-", "", "", "", "1"},       {false, "", "2", "", "", "3 4 5"},
                  {false, "", "3", "", "", "4 5"},    {false, "", "1345", "", "", ""},
                  {false, "", "", "3", "0", "4 5"},   {false, "", "", "1", "45", "3 4 5"},
                  {false, "45", "", "", "", "3 4 5"}, {true, "05", "", "", "", "1"},
                  {true, "", "", "3", "0", "1"}};
    for (const auto & fall : FAELLE) {
        SchreibeAlle({"1", "2", "3", "4", "5"});
        CPatientenweg weg(m_s, {1, fall.bAbsteigend, "", ""});
        while (weg.m_zeile.m_PATNR != "2")
            ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        if (*fall.pEigene != 0) {
            weg.m_zeile.m_PATNR = CString(fall.pEigene);
            EXPECT_EQ(*fall.pEigene == '-' ? weg.Loesche() : weg.Ersetze(), ZEILE_OK);
        }
        CPatientenweg anderer(m_s);
        while (anderer.Naechste() == ZEILE_OK) {
            const CString sNummer = std::exchange(anderer.m_zeile.m_PATNR, CString(fall.pNeu));
            const bool bWeg = CString(fall.pWeg).Find(sNummer) >= 0;
            const bool bNeu = sNummer == CString(fall.pAlt);
            EXPECT_EQ(bWeg ? anderer.Loesche() : bNeu ? anderer.Ersetze() : 0, ZEILE_OK);
        }
        EXPECT_NE(Nummern(m_s), "") << "a walk that opens brings the rows into their order";
        EXPECT_EQ(weg.Rest(), fall.pVoraus) << &fall - FAELLE;
        LoescheAlle();
    }
}

TEST_P(SpeicherTest, AWalkThatWritesARowForEachItMeetsComesToItsEnd) {
    SchreibeAlle({"1", "2", "3"});
    for (const bool bGruppe : {false, true}) {
        ASSERT_EQ(bGruppe ? m_s.Beginne() : 0, ZEILE_OK);
        CPatientenweg weg(m_s);
        int iAnzahl = 0;
        for (; iAnzahl < 100 && weg.Naechste() == ZEILE_OK; ++iAnzahl) {
            Schreibe(m_s, weg.m_zeile.m_PATNR + "1");
            EXPECT_EQ(Nummern(m_s).substr(0, 4), "1 11") << "another walk meets what was written before it";
        }
        EXPECT_EQ(iAnzahl, bGruppe ? 6 : 3);
        ASSERT_EQ(bGruppe ? m_s.Beende(true) : 0, ZEILE_OK);
    }
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 12);
}

TEST_P(SpeicherTest, WalksOfOneKindMayBeNested) {
    SchreibeAlle({"1", "2", "3"});
    std::string s;
    CPatientenweg aussen(m_s);
    while (aussen.Naechste() == ZEILE_OK) {
        CPatientenweg mitte(m_s);
        while (mitte.Naechste() == ZEILE_OK)
            s += Nummern(m_s) == "1 2 3" ? mitte.m_zeile.m_PATNR.Utf8() : "?";
    }
    EXPECT_EQ(s, "123123123");
}

// ---- groups

TEST_P(SpeicherTest, AGroupTakesEffectAsAWhole) {
    SchreibeAlle({"3", "1", "2"});
    for (const bool bUebernehmen : {false, true}) {
        ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
        SchreibeAlle({"4"});
        CPatientenweg weg(m_s);
        weg.Naechste(), weg.Loesche();
        weg.Naechste(), weg.Setze(&CTPat_Fields::m_PATNAME, "Neu"); // a key
        weg.Naechste(), weg.Setze(&CTPat_Fields::m_PATNR, "33"),
            weg.Setze(&CTPat_Fields::m_PATGEBDATUM, "19990101");
        EXPECT_EQ(Nummern(m_s) + "/" + NachNamen(), "2 33 4/4 33 2") << "inside";
        ASSERT_EQ(m_s.Beende(bUebernehmen), ZEILE_OK);
        EXPECT_EQ(Nummern(m_s) + "/" + NachNamen(), bUebernehmen ? "2 33 4/4 33 2" : "1 2 3/3 1 2");
        EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 3);
    }
}

TEST_P(SpeicherTest, TheOutermostGroupDecidesAndOneFalseInsideSpoilsIt) {
    EXPECT_EQ(m_s.Beende(true), ZEILE_FEHLER) << "no group is open";
    for (const auto & [bInnen, bAussen] :
         {std::pair{true, false}, {false, true}, {false, false}, {true, true}}) {
        ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
        SchreibeAlle({"1"});
        ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
        SchreibeAlle({"2"});
        EXPECT_EQ(m_s.Beende(bInnen), ZEILE_OK);
        SchreibeAlle({"3"});
        EXPECT_EQ(m_s.Beende(bAussen), bAussen && !bInnen ? ZEILE_FEHLER : ZEILE_OK);
        EXPECT_EQ(Nummern(m_s), bInnen && bAussen ? "1 2 3" : "");
    }
    EXPECT_EQ(m_s.Beende(false), ZEILE_FEHLER);
    EXPECT_EQ(Nummern(m_s), "1 2 3");
}

TEST_P(SpeicherTest, AWalkGoesOnWhenAGroupIsTakenBack) {
    SchreibeAlle({"1", "2", "3"});
    CPatientenweg weg(m_s);
    ASSERT_TRUE(weg.Naechste() == ZEILE_OK && m_s.Beginne() == ZEILE_OK);
    SchreibeAlle({"15"});
    LoescheAlle();
    ASSERT_EQ(m_s.Beende(false), ZEILE_OK);
    EXPECT_EQ(weg.Rest(), "2 3");
}

// ---- against a plain model

TEST_P(SpeicherTest, AThousandWritesAtRandomLeaveWhatAPlainListHolds) {
    struct SZeile {
        CString sNummer, sName;
    };
    std::vector<SZeile> vModell; // in writing order; a changed key moves its row to the end
    std::mt19937 zufall(7);
    const auto Wert = [&] { return CString(static_cast<char>('a' + zufall() % 6)); };
    const auto Soll = [&](CString SZeile::*pSchluessel) {
        std::vector<SZeile> v = vModell;
        std::ranges::stable_sort(v, {}, pSchluessel);
        std::string s;
        for (const SZeile & z : v)
            s += (s.empty() ? "" : " ") + z.sNummer.Utf8();
        return s;
    };
    ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
    for (int i = 0; i < 1000; ++i) {
        const auto iTat = zufall() % 10;
        if (iTat < 5 || vModell.empty()) {
            vModell.push_back({Wert(), Wert()});
            ASSERT_EQ(Schreibe(m_s, vModell.back().sNummer, vModell.back().sName), ZEILE_OK);
        } else { // the k-th row of a number is the same in both
            const CString sNummer = vModell[zufall() % vModell.size()].sNummer;
            const auto it = std::ranges::find(vModell, sNummer, &SZeile::sNummer);
            const SZeile neu{Wert(), it->sName};
            CPatientenweg weg(m_s, {1, false, sNummer.Utf8(), ""});
            ASSERT_TRUE(weg.Naechste() == ZEILE_OK && weg.m_zeile.m_PATNAME == it->sName);
            weg.m_zeile.m_PATNR = neu.sNummer;
            ASSERT_EQ(iTat < 8 ? weg.Loesche() : weg.Ersetze(), ZEILE_OK);
            if (iTat < 8 || neu.sNummer != sNummer) vModell.erase(it);
            if (iTat >= 8 && neu.sNummer != sNummer) vModell.push_back(neu);
        }
        if (i % 50 == 0) {
            ASSERT_EQ(Nummern(m_s), Soll(&SZeile::sNummer));
            ASSERT_EQ(NachNamen(), Soll(&SZeile::sName));
        }
    }
    ASSERT_EQ(m_s.Beende(true), ZEILE_OK);
    EXPECT_EQ(Nummern(m_s), Soll(&SZeile::sNummer));
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), static_cast<std::int64_t>(vModell.size()));
}

// ---- copies and failures

TEST_P(SpeicherTest, ACopyIsEqualUntilOneOfTheTwoChanges) {
    SchreibeAlle({"2", "1", "1"});
    CMemorySpeicher kopie;
    const auto Gleich = [&] {
        return GleicheTabelle(m_s, kopie, Patienten()) && GleicheTabelle(kopie, m_s, Patienten());
    };
    ASSERT_EQ(KopiereTabelle(m_s, kopie, Patienten()), ZEILE_OK);
    EXPECT_TRUE(Gleich());
    Schreibe(kopie, "3");
    EXPECT_FALSE(GleicheTabelle(m_s, kopie, Patienten()) || GleicheTabelle(kopie, m_s, Patienten()))
        << "longer";
    Schreibe(m_s, "3", "Mai");
    EXPECT_FALSE(Gleich()) << "another text";
    CMemorySpeicher eine, zwei;
    Schreibe(eine, "1"), Schreibe(zwei, "1"), Schreibe(zwei, "1");
    EXPECT_FALSE(GleicheTabelle(eine, zwei, Patienten()) || GleicheTabelle(zwei, eine, Patienten()))
        << "twice";
}

INSTANTIATE_TEST_SUITE_P(Speicher, SpeicherTest,
                         ::testing::Values(SSpeicherart{"Memory", MacheMemory},
                                           SSpeicherart{"Sqlite", MacheSqlite},
                                           SSpeicherart{"MemoryVerpackt", MacheVerpackt<MacheMemory>},
                                           SSpeicherart{"SqliteVerpackt", MacheVerpackt<MacheSqlite>}),
                         [](const auto & art) { return std::string(art.param.pName); });
#ifdef ORVOSTATBS_POSTGRES
INSTANTIATE_TEST_SUITE_P(Server, SpeicherTest, ::testing::Values(SSpeicherart{"Postgres", MachePostgres}),
                         [](const auto & art) { return std::string(art.param.pName); });
#endif

TEST(MemorySpeicherTest, RefusesWritesWhenReadOnly) {
    CMemorySpeicher speicher;
    Schreibe(speicher, "1");
    speicher.SetzeNurLesen(true);
    ErwarteNurLesen(speicher);
}

TEST(MemorySpeicherTest, GivesDeletedRowsBack) {
    CMemorySpeicher speicher;
    for (int i = 0; i < 200; ++i)
        Schreibe(speicher, CString(static_cast<char>('a' + i % 26)), CString(i % 2 ? 'x' : 'y'));
    for (const int iSchluessel : {1, 2}) { // the second walk opens upon orders that have been cleared up
        CPatientenweg weg(speicher, {iSchluessel, false, "", ""});
        for (int i = 0; i < 90; ++i)
            ASSERT_TRUE(weg.Naechste() == ZEILE_OK && weg.Loesche() == ZEILE_OK);
    }
    EXPECT_EQ(speicher.Zeilenzahl(Patienten()), 20);
    const std::string s = Nummern(speicher);
    EXPECT_EQ(std::count(s.begin(), s.end(), ' '), 19);
}

} // namespace
} // namespace orvostat
