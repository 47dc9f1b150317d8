// Ctrl-C at the program's terminal: when it asks, what counts as an answer, and what a signal takes with it.
#include "Konsole.h"

#include "support/Verzeichnis.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <future>
#include <sstream>
#include <thread>

#include <unistd.h>

namespace orvostat {
namespace {

// The program's terminal with a pipe in place of the keyboard.
class CKonsoleTest : public ::testing::Test {
protected:
    CKonsoleTest() : m_iStdin(dup(STDIN_FILENO)) {
        EXPECT_EQ(pipe(m_aiRohr), 0);
        dup2(m_aiRohr[0], STDIN_FILENO);
        close(m_aiRohr[0]);
    }
    ~CKonsoleTest() override {
        Schliesse();
        dup2(m_iStdin, STDIN_FILENO);
        close(m_iStdin);
    }
    void Tippe(std::string_view s) { EXPECT_NE(write(m_aiRohr[1], s.data(), s.size()), -1); }
    void Schliesse() {
        if (m_aiRohr[1] >= 0) close(m_aiRohr[1]);
        m_aiRohr[1] = -1;
    }

    CKonsole m_konsole;
    COberflaecheErsatz m_ersatz{m_konsole};

private:
    int m_iStdin;
    int m_aiRohr[2] = {-1, -1};
};

TEST_F(CKonsoleTest, AsksAfterCtrlCAndTakesTheEndOfTheInputForYes) {
    constexpr struct {
        int iGedrueckt;
        const char * pEingabe; // null is the end of the input
        bool bHalt;
    } FAELLE[] = {{0, "", false},     {1, "n\n", false},  {1, "j\n", true},
                  {2, "", true},      {1, "n\n", false}, // the second one was the answer, so nothing is left
                  {1, nullptr, true}, {0, nullptr, false}};
    for (const auto & fall : FAELLE) {
        if (fall.pEingabe)
            Tippe(fall.pEingabe);
        else
            Schliesse();
        for (int i = 0; i < fall.iGedrueckt; ++i)
            EXPECT_EQ(std::raise(SIGINT), 0);
        EXPECT_EQ(m_konsole.Fortschritt(1, 2), fall.iGedrueckt == 0);
        EXPECT_EQ(AbbruchVerlangt(), fall.bHalt)
            << fall.iGedrueckt << ' ' << (fall.pEingabe ? fall.pEingabe : "");
        EXPECT_TRUE(m_konsole.Fortschritt(1, 2));
    }
}

TEST_F(CKonsoleTest, CtrlCAtTheQuestionIsYesAndDoesNotWaitForTheInput) {
    std::promise<void> fertig;
    bool bGewartet = false;
    std::thread benutzer([&, beendet = fertig.get_future()] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        kill(getpid(), SIGINT);
        bGewartet = beendet.wait_for(std::chrono::seconds(5)) == std::future_status::timeout;
        if (bGewartet) Tippe("n\n");
    });
    EXPECT_TRUE(FrageAbbruch());
    fertig.set_value();
    benutzer.join();
    EXPECT_FALSE(bGewartet);
    EXPECT_TRUE(m_konsole.Fortschritt(1, 2));
}

// Written in any pieces, only ends of lines get through of what could drive a terminal.
TEST(Steuerzeichenfilter, TakesOutWhatDrivesATerminal) {
    const std::string sEin = "\x1b]0;x\x07 a\rb\r\n\tÄ\u009d\u00a0\x7f\r";
    const std::string sSoll = " ]0;x  a b\r\n Ä \u00a0  ";
    for (std::size_t iStueck = 1; iStueck <= sEin.size(); ++iStueck) {
        std::ostringstream aus;
        {
            const CSauber sauber(aus);
            for (std::size_t i = 0; i < sEin.size(); i += iStueck)
                aus << sEin.substr(i, iStueck);
        }
        EXPECT_EQ(aus.str(), sSoll) << iStueck;
    }
}

TEST_F(CKonsoleTest, ASignalThatEndsTheProgramTakesTheUnfinishedFileWithIt) {
    const CTempVerzeichnis verzeichnis;
    const std::string sDatei = verzeichnis.Datei("a.db.neu-1");
    std::signal(SIGHUP, SIG_IGN); // by nohup
    const CSignalschutz schutz(sDatei);
    const auto Sende = [](int iSignal, int iMal) {
        for (int i = 0; i < iMal; ++i)
            std::raise(iSignal);
        _exit(0);
    };
    constexpr struct {
        int iSignal, iMal;
        bool bEnde;
    } FAELLE[] = {{SIGINT, 2, false}, {SIGINT, 3, true}, {SIGTERM, 1, true}, {SIGHUP, 1, false}};
    for (const auto & fall : FAELLE) {
        std::ofstream(sDatei) << "halb";
        if (fall.bEnde)
            EXPECT_EXIT(Sende(fall.iSignal, fall.iMal), ::testing::KilledBySignal(fall.iSignal), "");
        else
            EXPECT_EXIT(Sende(fall.iSignal, fall.iMal), ::testing::ExitedWithCode(0), "");
        EXPECT_NE(std::filesystem::exists(sDatei), fall.bEnde) << fall.iSignal;
    }
    std::signal(SIGHUP, SIG_DFL);
}

} // namespace
} // namespace orvostat
