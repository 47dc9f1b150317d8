#include "Programmlauf.h"

#include "support/Verzeichnis.h"

#include <chrono>
#include <csignal>
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

CProgrammTest::CProgrammTest() {
    std::string sVorlage = (std::filesystem::temp_directory_path() / "orvostat-XXXXXX").string();
    if (mkdtemp(sVorlage.data()) == nullptr) throw std::runtime_error("no temporary directory for a test");
    m_verzeichnis = sVorlage;
}

CProgrammTest::~CProgrammTest() {
    std::error_code fehler;
    std::filesystem::remove_all(m_verzeichnis, fehler);
}

SProgrammende CProgrammTest::Laufe(const std::vector<std::string> & vArgumente, const std::string & sEingabe,
                                   int iSignalNachMs) {
    std::ofstream(Pfad(".ein")) << sEingabe;
    std::vector<std::string> vAlle{ORVOSTATBS_PROGRAM_PATH};
    vAlle.insert(vAlle.end(), vArgumente.begin(), vArgumente.end());
    std::vector<char *> apArgumente;
    for (std::string & s : vAlle)
        apArgumente.push_back(s.data());
    apArgumente.push_back(nullptr);

    const pid_t iKind = fork();
    if (iKind == 0) {
        if (chdir(m_verzeichnis.c_str()) != 0) _exit(125);
        Lenke(".ein", O_RDONLY, STDIN_FILENO);
        Lenke(".aus", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        Lenke(".fehler", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        execv(apArgumente[0], apArgumente.data());
        _exit(126);
    }
    if (iSignalNachMs > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(iSignalNachMs));
        kill(iKind, SIGINT);
    }
    int iStatus = 0;
    waitpid(iKind, &iStatus, 0);
    return {WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1, LiesDatei(Pfad(".aus")),
            LiesDatei(Pfad(".fehler"))};
}

std::string CProgrammTest::Inhalt(const std::string & sName) const { return LiesDatei(Pfad(sName)); }

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

std::vector<std::string> CProgrammTest::Worte(const std::string & s) {
    std::istringstream ein(s);
    return {std::istream_iterator<std::string>(ein), std::istream_iterator<std::string>()};
}

} // namespace orvostat
