// What only the store on a server has: one reading over many pieces, practices side by side, and a server that fails.
#ifdef ORVOSTATBS_POSTGRES
#include "SpeicherTest.h"

#include "orvostatbs/postgres/PostgresSpeicher.h"
#include "orvostatbs/store/MemorySpeicher.h"
#include "support/Testserver.h"

#include <functional>
#include <random>

namespace orvostat {
namespace {

class ServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!m_server.Hindernis().empty()) GTEST_SKIP() << "NOT RUN: " << m_server.Hindernis();
        m_sPraxis = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    }
    std::shared_ptr<CPostgresSpeicher> Oeffne(EServermodus eModus, const std::string & sBenutzer = "orvo") {
        auto p =
            CPostgresSpeicher::OeffneServer(m_server.Verbindung(sBenutzer), m_sPraxis, eModus, m_sMeldung);
        EXPECT_TRUE(p) << m_sMeldung.Utf8();
        return p;
    }

    CTestserver & m_server = CTestserver::Einziger();
    std::string m_sPraxis;
    CString m_sMeldung;
};

TEST_F(ServerTest, AReadingStoreGivesWhatAPlainOneDoesWhateverThePieces) {
    CMemorySpeicher soll;
    const auto p = Oeffne(EServermodus::Anlegen);
    std::mt19937 zufall(3);
    ASSERT_EQ(p->Beginne(), ZEILE_OK);
    for (int i = 0; i < 9000; ++i) {
        const CString sNummer(std::to_string(zufall() % 3000).c_str());
        const CString sName(i % 50 == 0 ? std::string_view("\0\xE4", 2) : std::string_view("n"));
        ASSERT_EQ(Schreibe(*p, sNummer, sName) | Schreibe(soll, sNummer, sName), ZEILE_OK);
    }
    ASSERT_EQ(p->Beende(true), ZEILE_OK);
    const auto pLesend = Oeffne(EServermodus::Lesen);
    EXPECT_TRUE(GleicheTabelle(*pLesend, soll, Patienten()));
    for (const int iSchluessel : {1, 2})
        for (const bool bAbsteigend : {false, true})
            for (const auto & [pVon, pBis] :
                 {std::pair{"", ""}, {"2", ""}, {"", "2"}, {"15", "16"}, {"n", ""}})
                EXPECT_EQ(Nummern(*pLesend, {iSchluessel, bAbsteigend, pVon, pBis}),
                          Nummern(soll, {iSchluessel, bAbsteigend, pVon, pBis}));
    CPatientenweg aussen(*pLesend), aussenSoll(soll);
    while (aussenSoll.Naechste() == ZEILE_OK) {
        ASSERT_EQ(aussen.Naechste(), ZEILE_OK);
        ASSERT_EQ(aussen.m_zeile, aussenSoll.m_zeile);
        std::string sVon = aussen.m_zeile.m_PATNR.Utf8();
        const SBereich bereich{1, zufall() % 2 == 0, sVon, Danach(sVon)};
        ASSERT_EQ(Nummern(*pLesend, bereich), Nummern(soll, bereich));
    }
    EXPECT_EQ(aussen.Naechste(), ZEILE_KEINE);
}

TEST_F(ServerTest, AReadingStoreSeesOnePracticeAtOneTime) {
    const auto p = Oeffne(EServermodus::Anlegen);
    ASSERT_EQ(Schreibe(*p, "1"), ZEILE_OK);
    const auto pLesend = Oeffne(EServermodus::Lesen);
    ErwarteNurLesen(*pLesend);
    ASSERT_EQ(Schreibe(*p, "2"), ZEILE_OK);
    EXPECT_EQ(Nummern(*pLesend), "1");
    EXPECT_EQ(Nummern(*Oeffne(EServermodus::Lesen)), "1 2");
    m_sPraxis += "!";
    EXPECT_EQ(Schreibe(*Oeffne(EServermodus::Anlegen), "3"), ZEILE_OK);
    EXPECT_EQ(Nummern(*Oeffne(EServermodus::Schreiben)), "3");
    EXPECT_EQ(p->Zeilenzahl(Patienten()), 2);
}

TEST_F(ServerTest, SaysWhyItOpensNothing) {
    const std::string sGut = m_server.Verbindung();
    const std::string sName = "Die Datenbank \"postgres\" auf \"" + sGut.substr(sGut.find('=') + 1) + "\" ";
    Schreibe(*Oeffne(EServermodus::Anlegen), "1");
    m_server.Sql("CREATE ROLE leser LOGIN; CREATE ROLE fremder LOGIN; CREATE SCHEMA alt; CREATE SCHEMA halb;"
                 "CREATE TABLE alt.\"SCHEMAVERSION\" AS SELECT 7 AS \"VERSION\";"
                 "CREATE TABLE halb.\"SCHEMAVERSION\" AS SELECT 1 AS \"VERSION\";"
                 "GRANT SELECT ON ALL TABLES IN SCHEMA public TO leser");
    const struct {
        std::string sVerbindung;
        const char * pPraxis;
        EServermodus eModus;
        std::string sSatz;
    } aFaelle[] = {
        {sGut, "x", EServermodus::Lesen, sName + "hat keine Praxis \"x\"."},
        {sGut, m_sPraxis.c_str(), EServermodus::Anlegen,
         sName + "hat schon eine Praxis \"" + m_sPraxis + "\"."},
        {m_server.Verbindung("leser"), m_sPraxis.c_str(), EServermodus::Schreiben,
         sName + "ist schreibgeschützt."},
        {m_server.Verbindung("fremder"), m_sPraxis.c_str(), EServermodus::Lesen,
         sName + "lässt sich nicht lesen: die Berechtigung dafür fehlt."},
        {sGut + "&options=-csearch_path%3Dleer", "", EServermodus::Lesen, sName + "enthält keine Praxis."},
        {sGut + "&options=-csearch_path%3Dalt", "", EServermodus::Lesen,
         sName + "hat die Schemaversion 7; dieses Programm kennt die Version 1."},
        {sGut + "&options=-csearch_path%3Dhalb", "", EServermodus::Lesen,
         sName + "lässt sich nicht lesen: eine Tabelle fehlt oder ist anders aufgebaut."},
        {"postgresql://u:geheim@/p?host=/gibtesnicht", "", EServermodus::Lesen,
         "Die Datenbank \"p\" auf \"/gibtesnicht\" lässt sich nicht öffnen: die Verbindung zum Server kommt "
         "nicht "
         "zustande oder ist abgebrochen."},
    };
    for (const auto & fall : aFaelle) {
        EXPECT_EQ(CPostgresSpeicher::OeffneServer(fall.sVerbindung, fall.pPraxis, fall.eModus, m_sMeldung),
                  nullptr);
        EXPECT_EQ(m_sMeldung.Utf8().substr(0, fall.sSatz.size() - 1) + ".", fall.sSatz);
        EXPECT_EQ(m_sMeldung.Utf8().find("geheim"), std::string::npos);
    }
}

// Something happens between two writes of a group, or to the group's end: nothing of it stays, and what follows goes
// on as if it had not been.
TEST_F(ServerTest, AGroupThatFailsLeavesTheRowsAsTheyWere) {
    m_server.Sql("CREATE ROLE schreiber LOGIN");
    ASSERT_EQ(Schreibe(*Oeffne(EServermodus::Anlegen), "1"), ZEILE_OK);
    m_server.Sql(
        "GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO schreiber;"
        "CREATE FUNCTION voll() RETURNS trigger LANGUAGE plpgsql AS "
        "$$BEGIN RAISE EXCEPTION USING ERRCODE = '53100'; END$$;"
        "CREATE FUNCTION weg() RETURNS trigger LANGUAGE plpgsql AS "
        "$$BEGIN PERFORM pg_terminate_backend(pg_backend_pid()); PERFORM pg_sleep(1); RETURN NEW; END$$;"
        "ALTER FUNCTION weg() SECURITY DEFINER");
    const struct {
        const char * pName;
        bool bInnen; // it happens between the writes
        EServerursache eUrsache;
        std::function<void()> fEreignis, fAbhilfe;
    } aFaelle[] = {
        {"the server is killed", true, EServerursache::Verbindung, [&] { m_server.Toete(); },
         [&] { m_server.Starte(); }},
        {"the connection is ended", true, EServerursache::Verbindung,
         [&] {
             m_server.Sql(
                 "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE usename = 'schreiber'");
         },
         [] {}},
        {"the disk is full", false, EServerursache::Voll,
         [&] {
             m_server.Sql("CREATE TRIGGER t BEFORE INSERT ON \"PAT\" FOR EACH ROW EXECUTE FUNCTION voll()");
         },
         [&] { m_server.Sql("DROP TRIGGER t ON \"PAT\""); }},
        {"the right is taken", false, EServerursache::KeinRecht,
         [&] { m_server.Sql("REVOKE INSERT ON \"PAT\" FROM schreiber"); },
         [&] { m_server.Sql("GRANT INSERT ON \"PAT\" TO schreiber"); }},
        {"the connection ends within the group's end", false, EServerursache::Verbindung,
         [&] {
             m_server.Sql(
                 "CREATE CONSTRAINT TRIGGER t AFTER UPDATE ON \"LAUFNUMMER\" DEFERRABLE INITIALLY DEFERRED "
                 "FOR EACH ROW EXECUTE FUNCTION weg()");
         },
         [&] { m_server.Sql("DROP TRIGGER t ON \"LAUFNUMMER\""); }},
    };
    const auto p = Oeffne(EServermodus::Schreiben, "schreiber");
    for (const auto & fall : aFaelle) {
        SCOPED_TRACE(fall.pName);
        if (!fall.bInnen) fall.fEreignis();
        ASSERT_EQ(p->Beginne(), ZEILE_OK);
        EXPECT_EQ(Schreibe(*p, "2"), ZEILE_OK);
        if (fall.bInnen) {
            EXPECT_EQ(Nummern(*p), "1 2");
            fall.fEreignis();
        }
        EXPECT_EQ(Schreibe(*p, "3"), ZEILE_OK) << "it has not been sent yet";
        EXPECT_EQ(p->Beende(true), ZEILE_FEHLER);
        EXPECT_EQ(p->LetzteUrsache(), fall.eUrsache) << p->LetzterFehler();
        EXPECT_EQ(p->Fehlerursache() == EZeilenursache::Voll, fall.eUrsache == EServerursache::Voll);
        EXPECT_EQ(p->Beende(true), ZEILE_FEHLER) << "no group is open";
        fall.fAbhilfe();
        EXPECT_EQ(Nummern(*p), "1") << "and the store goes on";
        ASSERT_EQ(p->Beginne(), ZEILE_OK);
        EXPECT_EQ(Schreibe(*p, "2"), ZEILE_OK);
        EXPECT_EQ(p->Beende(false), ZEILE_OK);
    }
    ASSERT_EQ(p->Beginne(), ZEILE_OK);
    const auto pWartend = Oeffne(EServermodus::Schreiben);
    EXPECT_EQ(Schreibe(*pWartend, "2"), ZEILE_FEHLER);
    EXPECT_EQ(pWartend->LetzteUrsache(), EServerursache::Gesperrt);
    EXPECT_EQ(p->Beende(true), ZEILE_OK);
    EXPECT_EQ(Schreibe(*pWartend, "2"), ZEILE_OK);
}

TEST_F(ServerTest, AWalkWhoseConnectionEndsFailsAndTheNextOneDoesNot) {
    {
        const auto p = Oeffne(EServermodus::Anlegen);
        ASSERT_EQ(p->Beginne(), ZEILE_OK);
        for (int i = 10000; i < 15000; ++i)
            ASSERT_EQ(Schreibe(*p, CString(std::to_string(i).c_str())), ZEILE_OK);
        ASSERT_EQ(p->Beende(true), ZEILE_OK);
    }
    const auto p = Oeffne(EServermodus::Lesen);
    for (const int iSchritte : {0, 1, 40, 1000, 4900}) {
        CPatientenweg weg(*p), anderer(*p);
        for (int i = 0; i < iSchritte; ++i)
            ASSERT_EQ(weg.Naechste(), ZEILE_OK);
        ASSERT_EQ(anderer.Naechste(), ZEILE_OK);
        m_server.Sql(
            "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND "
            "backend_type = 'client backend'");
        const std::string sRest = weg.Rest();
        EXPECT_TRUE(sRest.empty() || sRest.back() == '!' || iSchritte == 4900) << sRest.size();
        EXPECT_EQ(anderer.Rest().back(), '!') << "another reading than the one that goes on";
        EXPECT_EQ(CPatientenweg(*p).Rest().size(), 5000u * 6 - 1);
    }
}

} // namespace
} // namespace orvostat
#endif
