// Ctrl-C at the program's terminal: when it asks, and what counts as an answer.
#include "Konsole.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
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
    void Tippe(const std::string & s) {
        EXPECT_EQ(write(m_aiRohr[1], s.data(), s.size()), static_cast<ssize_t>(s.size()));
    }
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

TEST_F(CKonsoleTest, TheThirdCtrlCEndsAProgramThatNeverLooks) {
    const auto Druecke = [](int iMal) {
        for (int i = 0; i < iMal; ++i)
            std::raise(SIGINT);
        _exit(0);
    };
    EXPECT_EXIT(Druecke(2), ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT(Druecke(3), ::testing::KilledBySignal(SIGINT), "");
}

} // namespace
} // namespace orvostat
