#include "Programmlauf.h"

#include "support/Verzeichnis.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {

namespace {

void Lenke(const std::filesystem::path & pfad, int iArt, int iNummer) {
    const int iDatei = open(pfad.c_str(), iArt, 0600);
    dup2(iDatei, iNummer);
    close(iDatei);
}

class CDatenbank {
public:
    explicit CDatenbank(const std::filesystem::path & pfad) {
        if (sqlite3_open(pfad.c_str(), &m_p) != SQLITE_OK)
            throw std::runtime_error("cannot open " + pfad.string());
    }
    ~CDatenbank() { sqlite3_close(m_p); }
    CDatenbank(const CDatenbank &) = delete;
    CDatenbank & operator=(const CDatenbank &) = delete;
    std::string Fuehre(const std::string & sSql) {
        std::string sErgebnis;
        const auto Sammle = [](void * p, int, char ** apTexte, char **) {
            auto & s = *static_cast<std::string *>(p);
            if (!s.empty()) s += ' ';
            s += apTexte[0] ? apTexte[0] : "NULL";
            return 0;
        };
        if (sqlite3_exec(m_p, sSql.c_str(), Sammle, &sErgebnis, nullptr) != SQLITE_OK)
            throw std::runtime_error(sSql + ": " + sqlite3_errmsg(m_p));
        return sErgebnis;
    }

private:
    sqlite3 * m_p = nullptr;
};

} // namespace

SProgrammende CProgrammTest::Laufe(const std::vector<std::string> & vArgumente, const std::string & sEingabe,
                                   int iSignalNachMs, int iSignal) {
    std::ofstream(Pfad(".ein")) << sEingabe;
    std::vector<std::string> vAlle{ORVOSTATBS_PROGRAM_PATH};
    vAlle.insert(vAlle.end(), vArgumente.begin(), vArgumente.end());
    std::vector<char *> apArgumente;
    for (std::string & s : vAlle)
        apArgumente.push_back(s.data());
    apArgumente.push_back(nullptr);

    const pid_t iKind = fork();
    if (iKind == 0) {
        if (chdir(Pfad("").c_str()) != 0) _exit(125);
        Lenke(".ein", O_RDONLY, STDIN_FILENO);
        Lenke(".aus", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        Lenke(".fehler", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execv(apArgumente[0], apArgumente.data());
        _exit(126);
    }
    if (iSignalNachMs > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(iSignalNachMs));
        kill(iKind, iSignal);
    }
    int iStatus = 0;
    waitpid(iKind, &iStatus, 0);
    return {WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1, LiesDatei(Pfad(".aus")),
            LiesDatei(Pfad(".fehler"))};
}

std::string CProgrammTest::Inhalt(const std::string & sName) const { return LiesDatei(Pfad(sName)); }

std::string CProgrammTest::Dateien() const {
    std::string s;
    for (const std::string & sName : m_verzeichnis.Inhalt())
        if (!sName.starts_with('.'))
            s += (s.empty() ? "" : " ") + sName; // not the program's input and outputs
    return s;
}

void CProgrammTest::Sql(const std::string & sName, const std::string & sAnweisungen) {
    CDatenbank(Pfad(sName)).Fuehre(sAnweisungen);
}

void CProgrammTest::Zerstoere(const std::string & sName, const std::string & sText) {
    const auto iStelle = Inhalt(sName).find(sText);
    ASSERT_NE(iStelle, std::string::npos) << sText;
    std::fstream(Pfad(sName), std::ios::in | std::ios::out | std::ios::binary)
            .seekp(static_cast<std::streamoff>(iStelle / 8192 * 8192))
        << std::string(60, '\xff');
}

std::string CProgrammTest::Frage(const std::string & sName, const std::string & sAnweisung) const {
    return CDatenbank(Pfad(sName)).Fuehre(sAnweisung);
}

bool CProgrammTest::PruefeZeile(const std::string & sZeile) {
    const std::size_t iPfeil = sZeile.find(" -> ");
    if (!sZeile.starts_with('[') || iPfeil == sZeile.npos) return false;
    const int iCode = sZeile.at(1) - '0';
    std::string sSoll = (iCode == 2 ? "Falscher Aufruf. " : "") + sZeile.substr(iPfeil + 4);
    const bool bRest = sSoll.ends_with(" ...");
    if (bRest) sSoll.resize(sSoll.size() - 4);
    const SProgrammende ende = Laufe(sZeile.substr(4, iPfeil - 4));
    bool bDa = false;
    std::istringstream aus(iCode == 0 ? ende.sAus : ende.sFehler);
    for (std::string s; !bDa && std::getline(aus >> std::ws, s);) {
        if (s.ends_with('\r')) s.pop_back();
        bDa = bRest ? s.starts_with(sSoll) : s == sSoll;
        if (iCode != 0) break; // the message comes first
    }
    EXPECT_TRUE(bDa) << sZeile << '\n' << ende.sAus << ende.sFehler;
    EXPECT_EQ(ende.iCode, iCode) << sZeile;
    EXPECT_TRUE(iCode == 0 || ende.sAus.empty()) << sZeile;
    return true;
}

int CProgrammTest::PruefeBefehle(const std::string & sDatei) {
    const std::string BEFEHL = "$ orvostat ";
    std::ifstream ein(sDatei);
    int iBefehle = 0;
    std::string s;
    for (bool bDa = static_cast<bool>(std::getline(ein, s)); bDa;) {
        if (!s.starts_with(BEFEHL)) {
            iBefehle += PruefeZeile(s);
            bDa = static_cast<bool>(std::getline(ein, s));
            continue;
        }
        const std::string sBefehl = s.substr(BEFEHL.size());
        std::string sSoll;
        int iCode = 0;
        while ((bDa = static_cast<bool>(std::getline(ein, s))) && !s.starts_with("$ ") && s != "```" &&
               !(s.empty() && sDatei.ends_with(".txt")))
            if (s.size() == 3 && s.front() == '[' && s.back() == ']')
                iCode = std::stoi(s.substr(1));
            else if (s.starts_with('[') && s.find(" -> ") != s.npos)
                break;
            else
                sSoll += s + '\n';
        const SProgrammende ende = Laufe(sBefehl);
        std::string sIst = ende.sAus + ende.sFehler;
        if (sSoll.ends_with("...\n")) {
            sSoll.resize(sSoll.size() - 4);
            sIst.resize(std::min(sIst.size(), sSoll.size()));
        }
        EXPECT_EQ(sIst, sSoll) << sDatei << ": " << sBefehl;
        EXPECT_EQ(ende.iCode, iCode) << sDatei << ": " << sBefehl;
        ++iBefehle;
    }
    EXPECT_GT(iBefehle, 0) << sDatei << " has no commands";
    return iBefehle;
}

std::vector<std::string> CProgrammTest::Worte(const std::string & s) {
    std::istringstream ein(s);
    std::vector<std::string> v{std::istream_iterator<std::string>(ein), std::istream_iterator<std::string>()};
    std::ranges::replace(v, "''", std::string());
    return v;
}

} // namespace orvostat
