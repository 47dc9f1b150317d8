#include "SpeicherTest.h"

#ifdef ORVOSTATBS_POSTGRES
#include "orvostatbs/postgres/PostgresSpeicher.h"
#include "support/Testserver.h"
#endif
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Fehlerspeicher.h"

#include <algorithm>
#include <functional>
#include <random>

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
    EXPECT_TRUE(speicher.NurLesen());
    CPatientenweg weg(speicher);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(weg.Loesche(), ZEILE_VERWEIGERT);
    EXPECT_EQ(weg.Ersetze(), ZEILE_VERWEIGERT);
    EXPECT_EQ(Schreibe(speicher, "2"), ZEILE_VERWEIGERT);
    EXPECT_EQ(speicher.Beginne(), ZEILE_VERWEIGERT);
    EXPECT_EQ(speicher.Beende(true), ZEILE_VERWEIGERT);
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
};

std::string Teil(const char * p, bool bLetzter = false) {
    std::string s;
    HaengeTeilAn(s, Patienten(), CString(p), bLetzter);
    return s;
}

SBereich Bereich(int iSchluessel, bool bAbsteigend, std::string sVon = {}, std::string sBis = {}) {
    return {iSchluessel, bAbsteigend, std::move(sVon), std::move(sBis)};
}

TEST_P(SpeicherTest, RowsComeInTheByteOrderOfTheKey) {
    SchreibeAlle({"b", "ä", "a", "B", "10", "9", "ab", "a b", "€"});
    EXPECT_EQ(Nummern(m_s), "10 9 B a a b ab b € ä");
    EXPECT_EQ(Nummern(m_s, Bereich(1, true)), "ä € b ab a b a B 9 10");
}

// A part ends before the next one counts, and rows of equal key keep the order of writing.
TEST_P(SpeicherTest, RowsComeInTheOrderOfTheirKeysParts) {
    Schreibe(m_s, "1", "Mai", "Zoe");
    Schreibe(m_s, "2", "Maier", "Anna");
    Schreibe(m_s, "7", "Mai ", "Yann");
    Schreibe(m_s, "3", "Mai", "Yann");
    Schreibe(m_s, "5", "Mai", "Yann ");
    Schreibe(m_s, "4", "", "Udo");
    EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "4 7 3 5 1 2");
    EXPECT_EQ(Nummern(m_s, Bereich(2, true)), "2 1 5 3 7 4");
}

TEST_P(SpeicherTest, RangesIncludeTheirStartAndExcludeTheirEnd) {
    SchreibeAlle({"1", "2", "22", "3", "ÿ", "ÿ\x01"});
    struct SFall {
        const char * pName;
        std::string sVon, sBis;
        const char * pSoll;
    };
    const SFall aFaelle[] = {
        {"all", "", "", "1 2 22 3 ÿ ÿ\x01"},
        {"from", Teil("2"), "", "2 22 3 ÿ ÿ\x01"},
        {"up to", "", Teil("22"), "1 2"},
        {"one key", Teil("2"), Danach(Teil("2")), "2"},
        {"prefix", "2", Danach("2"), "2 22"},
        {"prefix of the last byte", "\xFF", Danach("\xFF"), "ÿ ÿ\x01"},
        {"no such key", Teil("4"), Danach(Teil("4")), ""},
        {"end before start", Teil("3"), Teil("1"), ""},
    };
    for (const SFall & fall : aFaelle)
        EXPECT_EQ(Nummern(m_s, Bereich(1, false, fall.sVon, fall.sBis)), fall.pSoll) << fall.pName;
    EXPECT_EQ(Nummern(m_s, Bereich(1, true, Teil("2"), Danach(Teil("3")))), "3 22 2");
}

TEST_P(SpeicherTest, AKeyThatTheTableLacksOpensNothing) {
    EXPECT_EQ(m_s.Oeffne(Patienten(), Bereich(3, false)), nullptr);
    EXPECT_EQ(m_s.Oeffne(Patienten(), Bereich(0, false)), nullptr);
}

TEST_P(SpeicherTest, TextsComeBackAsTheyWere) {
    std::string sAlle;
    for (int c = 1; c < 256; ++c)
        sAlle += static_cast<char>(c);
    const CString asTexte[] = {CString(),
                               " ",
                               "20240229",
                               "e-123.4567890",
                               CString('x', 7),
                               CString('x', 8),
                               CString('x', 15),
                               CString('7', 14),
                               CString('7', 15),
                               CString(sAlle.c_str()),
                               CString('\xE4', 70000),
                               CString(std::string_view("a\0b", 3))};
    for (const CString & sText : asTexte) {
        ASSERT_EQ(Schreibe(m_s, "1", sText), ZEILE_OK);
        CPatientenweg weg(m_s);
        ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        EXPECT_EQ(weg.m_zeile.m_PATNAME, sText);
        ASSERT_EQ(weg.Loesche(), ZEILE_OK);
    }
}

TEST_P(SpeicherTest, TheEndLeavesTheFieldsAndGoesOnBeingTheEnd) {
    SchreibeAlle({"1"});
    CPatientenweg weg(m_s);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(weg.Naechste(), ZEILE_KEINE);
    EXPECT_EQ(weg.m_zeile.m_PATNR, CString("1"));
    SchreibeAlle({"2"});
    EXPECT_EQ(weg.Naechste(), ZEILE_KEINE);
    EXPECT_EQ(weg.Loesche(), ZEILE_KEINE);
    EXPECT_EQ(weg.Ersetze(), ZEILE_KEINE);
    EXPECT_EQ(Nummern(m_s), "1 2");
}

TEST_P(SpeicherTest, OnlyARowThatIsThereCanBeDeleted) {
    SchreibeAlle({"1", "2", "3"});
    CPatientenweg weg(m_s);
    EXPECT_EQ(weg.Loesche(), ZEILE_KEINE) << "before the first row";
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(weg.Loesche(), ZEILE_OK);
    EXPECT_EQ(weg.Loesche(), ZEILE_KEINE) << "twice";
    EXPECT_EQ(weg.Ersetze(), ZEILE_KEINE);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    CPatientenweg anderer(m_s);
    ASSERT_EQ(anderer.Naechste(), ZEILE_OK);
    ASSERT_EQ(anderer.Loesche(), ZEILE_OK);
    EXPECT_EQ(weg.Loesche(), ZEILE_KEINE) << "somebody else has deleted it";
    EXPECT_EQ(weg.Ersetze(), ZEILE_KEINE);
    EXPECT_EQ(weg.Rest(), "3");
    EXPECT_EQ(Nummern(m_s), "3");
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 1);
}

TEST_P(SpeicherTest, AReplacedRowKeepsItsPlaceUnlessItsKeyChanges) {
    for (const CString & sNummer : {CString("1"), CString("2"), CString("3")})
        Schreibe(m_s, sNummer, "Mai");
    CPatientenweg weg(m_s);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    weg.m_zeile.m_PATGEBDATUM = "19700101";
    EXPECT_EQ(weg.Ersetze(), ZEILE_OK);
    EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "1 2 3");
    weg.m_zeile.m_PATNAME = "Abt";
    EXPECT_EQ(weg.Ersetze(), ZEILE_OK);
    EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "1 2 3");
    weg.m_zeile.m_PATNAME = "Mai";
    EXPECT_EQ(weg.Ersetze(), ZEILE_OK) << "the same row, although its key has changed";
    EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "2 3 1");
    EXPECT_EQ(weg.Rest(), "2 3");
    CPatientenweg danach(m_s);
    ASSERT_EQ(danach.Naechste(), ZEILE_OK);
    EXPECT_EQ(danach.m_zeile.m_PATGEBDATUM, CString("19700101"));
}

// A walk over rows 1 to 5 stands on row 2 when something happens to the table; what is ahead of it then?
TEST_P(SpeicherTest, AWalkGoesOnWhateverHappensToTheTable) {
    struct SFall {
        const char * pName;
        bool bAbsteigend;
        std::function<void(CPatientenweg &)> fEreignis;
        const char * pVoraus;
    };
    const auto Wo = [this](const CString & sNummer, const std::function<void(CPatientenweg &)> & f) {
        CPatientenweg weg(m_s);
        while (weg.Naechste() == ZEILE_OK)
            if (weg.m_zeile.m_PATNR == sNummer) f(weg);
    };
    const auto Loesche = [&](const CString & s) {
        Wo(s, [](CPatientenweg & w) { EXPECT_EQ(w.Loesche(), ZEILE_OK); });
    };
    const auto Benenne = [&](const CString & s, const CString & sNeu) {
        Wo(s, [&](CPatientenweg & w) {
            w.m_zeile.m_PATNR = sNeu;
            EXPECT_EQ(w.Ersetze(), ZEILE_OK);
        });
    };
    const SFall aFaelle[] = {
        {"nothing", false, [](CPatientenweg &) {}, "3 4 5"},
        {"its own row goes", false, [](CPatientenweg & w) { w.Loesche(); }, "3 4 5"},
        {"its own row goes, descending", true, [](CPatientenweg & w) { w.Loesche(); }, "1"},
        {"another walk takes the row", false, [&](CPatientenweg &) { Loesche("2"); }, "3 4 5"},
        {"the next row goes", false, [&](CPatientenweg &) { Loesche("3"); }, "4 5"},
        {"all others go", false,
         [&](CPatientenweg &) {
             for (const CString & s : {CString("1"), CString("3"), CString("4"), CString("5")})
                 Loesche(s);
         },
         ""},
        {"the next row changes its key to behind the walk", false,
         [&](CPatientenweg &) { Benenne("3", "0"); }, "4 5"},
        {"a row behind changes its key to ahead", false, [&](CPatientenweg &) { Benenne("1", "45"); },
         "3 4 5"},
        {"its own row changes its key to ahead", false,
         [](CPatientenweg & w) {
             w.m_zeile.m_PATNR = "45";
             w.Ersetze();
         },
         "3 4 5"},
        {"its own row changes its key to ahead, descending", true,
         [](CPatientenweg & w) {
             w.m_zeile.m_PATNR = "05";
             w.Ersetze();
         },
         "1"},
    };
    for (const SFall & fall : aFaelle) {
        SchreibeAlle({"1", "2", "3", "4", "5"});
        CPatientenweg weg(m_s, Bereich(1, fall.bAbsteigend));
        while (weg.m_zeile.m_PATNR != "2")
            ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        fall.fEreignis(weg);
        EXPECT_EQ(weg.Rest(), fall.pVoraus) << fall.pName;
        CPatientenweg alle(m_s);
        while (alle.Naechste() == ZEILE_OK)
            alle.Loesche();
    }
}

TEST_P(SpeicherTest, ARowChangedAheadIsMetAsItIsNow) {
    SchreibeAlle({"1", "2"});
    CPatientenweg weg(m_s);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    CPatientenweg anderer(m_s, Bereich(1, true));
    ASSERT_EQ(anderer.Naechste(), ZEILE_OK);
    anderer.m_zeile.m_PATGEBDATUM = "19800101";
    ASSERT_EQ(anderer.Ersetze(), ZEILE_OK);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    EXPECT_EQ(weg.m_zeile.m_PATGEBDATUM, CString("19800101"));
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
    const auto Aendere = [this] {
        SchreibeAlle({"4"});
        CPatientenweg weg(m_s);
        weg.Naechste();
        weg.Loesche(); // 1
        weg.Naechste();
        weg.m_zeile.m_PATNAME = "Neu"; // 2, a key
        weg.Ersetze();
        weg.Naechste();
        weg.m_zeile.m_PATNR = "33";
        weg.Ersetze();
        weg.m_zeile.m_PATGEBDATUM = "19990101"; // no key
        weg.Ersetze();
        EXPECT_EQ(Nummern(m_s), "2 33 4") << "inside";
        EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "4 33 2") << "inside";
    };
    SchreibeAlle({"3", "1", "2"});
    ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
    Aendere();
    ASSERT_EQ(m_s.Beende(false), ZEILE_OK);
    EXPECT_EQ(Nummern(m_s), "1 2 3");
    EXPECT_EQ(Nummern(m_s, Bereich(2, false)), "3 1 2");
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 3);

    ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
    Aendere();
    ASSERT_EQ(m_s.Beende(true), ZEILE_OK);
    EXPECT_EQ(Nummern(m_s), "2 33 4");
    EXPECT_EQ(m_s.Zeilenzahl(Patienten()), 3);
}

TEST_P(SpeicherTest, TheOutermostGroupDecidesAndOneFalseInsideSpoilsIt) {
    struct SFall {
        bool bInnen, bAussen;
        int iInnen, iAussen;
        const char * pRest;
    };
    const SFall aFaelle[] = {{true, false, ZEILE_OK, ZEILE_OK, ""},
                             {false, true, ZEILE_OK, ZEILE_FEHLER, ""},
                             {false, false, ZEILE_OK, ZEILE_OK, ""},
                             {true, true, ZEILE_OK, ZEILE_OK, "1 2 3"}};
    for (const SFall & fall : aFaelle) {
        ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
        SchreibeAlle({"1"});
        ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
        SchreibeAlle({"2"});
        EXPECT_EQ(m_s.Beende(fall.bInnen), fall.iInnen);
        SchreibeAlle({"3"});
        EXPECT_EQ(m_s.Beende(fall.bAussen), fall.iAussen);
        EXPECT_EQ(Nummern(m_s), fall.pRest);
    }
}

TEST_P(SpeicherTest, AGroupThatIsNotOpenCannotEnd) {
    EXPECT_EQ(m_s.Beende(true), ZEILE_FEHLER);
    SchreibeAlle({"1"});
    EXPECT_EQ(m_s.Beende(false), ZEILE_FEHLER);
    EXPECT_EQ(Nummern(m_s), "1");
}

TEST_P(SpeicherTest, AWalkGoesOnWhenAGroupIsTakenBack) {
    SchreibeAlle({"1", "2", "3"});
    CPatientenweg weg(m_s);
    ASSERT_EQ(weg.Naechste(), ZEILE_OK);
    ASSERT_EQ(m_s.Beginne(), ZEILE_OK);
    SchreibeAlle({"15"});
    CPatientenweg loescher(m_s);
    while (loescher.Naechste() == ZEILE_OK)
        loescher.Loesche();
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
        std::stable_sort(v.begin(), v.end(),
                         [&](const SZeile & a, const SZeile & b) { return a.*pSchluessel < b.*pSchluessel; });
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
        } else {
            // The k-th row of a number is the same in both.
            const CString sNummer = vModell[zufall() % vModell.size()].sNummer;
            const auto it = std::find_if(vModell.begin(), vModell.end(),
                                         [&](const SZeile & z) { return z.sNummer == sNummer; });
            CPatientenweg weg(m_s, Bereich(1, false, sNummer.Utf8()));
            ASSERT_EQ(weg.Naechste(), ZEILE_OK);
            ASSERT_EQ(weg.m_zeile.m_PATNAME, it->sName);
            if (iTat < 8) {
                ASSERT_EQ(weg.Loesche(), ZEILE_OK);
                vModell.erase(it);
            } else {
                const SZeile neu{Wert(), it->sName};
                weg.m_zeile.m_PATNR = neu.sNummer;
                ASSERT_EQ(weg.Ersetze(), ZEILE_OK);
                if (neu.sNummer != sNummer) {
                    vModell.erase(it);
                    vModell.push_back(neu);
                }
            }
        }
        if (i % 50 == 0) {
            ASSERT_EQ(Nummern(m_s), Soll(&SZeile::sNummer));
            ASSERT_EQ(Nummern(m_s, Bereich(2, false)), Soll(&SZeile::sName));
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
    ASSERT_EQ(KopiereTabelle(m_s, kopie, Patienten()), ZEILE_OK);
    EXPECT_TRUE(GleicheTabelle(m_s, kopie, Patienten()));
    EXPECT_TRUE(GleicheTabelle(kopie, m_s, Patienten()));
    Schreibe(kopie, "3");
    EXPECT_FALSE(GleicheTabelle(m_s, kopie, Patienten())) << "longer";
    Schreibe(m_s, "3", "Mai");
    EXPECT_FALSE(GleicheTabelle(m_s, kopie, Patienten())) << "another text";
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
        CPatientenweg weg(speicher, Bereich(iSchluessel, false));
        for (int i = 0; i < 90; ++i) {
            ASSERT_EQ(weg.Naechste(), ZEILE_OK);
            ASSERT_EQ(weg.Loesche(), ZEILE_OK);
        }
    }
    EXPECT_EQ(speicher.Zeilenzahl(Patienten()), 20);
    const std::string s = Nummern(speicher);
    EXPECT_EQ(std::count(s.begin(), s.end(), ' '), 19);
}

} // namespace
} // namespace orvostat
