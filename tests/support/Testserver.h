// A PostgreSQL server for tests and benchmarks: a cluster of its own in a temporary directory, reached by a socket in
// it, run by an ordinary user (root lends it to one) and gone at the end, whatever happens to this process.
#pragma once

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <grp.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvostat {

class CTestserver {
public:
    // The one of this process, started when it is first asked for.
    static CTestserver & Einziger() {
        static CTestserver s_server;
        return s_server;
    }
    CTestserver(const CTestserver &) = delete;
    CTestserver & operator=(const CTestserver &) = delete;

    // Why there is none; empty where there is one.
    [[nodiscard]] const std::string & Hindernis() const { return m_sHindernis; }
    [[nodiscard]] std::string Verbindung(const std::string & sBenutzer = "orvo") const {
        return "postgresql://" + sBenutzer + "@/postgres?host=" + m_pfad.string();
    }

    // Ends the server as a crash would; lets it recover.
    void Toete() {
        if (m_iServer <= 0) return;
        kill(m_iServer, SIGQUIT);
        waitpid(m_iServer, nullptr, 0);
        m_iServer = 0;
    }
    void Starte() {
        m_iServer =
            Beginne({"postgres", "-D", Daten(), "-k", m_pfad.string(), "-c", "listen_addresses=", "-F", "-c",
                     "shared_buffers=64MB", "-c", "max_wal_size=4GB"});
        for (int i = 0; i < 200; ++i, usleep(50'000))
            if (PQping(Verbindung().c_str()) == PQPING_OK) return;
        m_sHindernis = "the server does not answer: " + Protokoll();
    }
    // Runs statements as the database's owner; gives the first column of the last row, or the failure.
    std::string Sql(const std::string & sSql) {
        PGconn * p = PQconnectdb(Verbindung().c_str());
        PGresult * pErgebnis = PQexec(p, sSql.c_str());
        std::string s = PQresultErrorMessage(pErgebnis);
        if (PQntuples(pErgebnis) > 0) s = PQgetvalue(pErgebnis, PQntuples(pErgebnis) - 1, 0);
        PQclear(pErgebnis);
        PQfinish(p);
        return s;
    }

private:
    CTestserver() {
        namespace fs = std::filesystem;
        // As Debian lays them, unless ORVOSTATBS_POSTGRES_BIN says where.
        std::error_code fehler;
        if (const char * pProgramme = std::getenv("ORVOSTATBS_POSTGRES_BIN"))
            m_programme = pProgramme;
        else
            for (const auto & eintrag : fs::directory_iterator("/usr/lib/postgresql", fehler))
                m_programme = std::max(m_programme, eintrag.path() / "bin");
        if (m_programme.empty() || !fs::exists(m_programme / "initdb", fehler)) {
            m_sHindernis = "no PostgreSQL server is installed";
            return;
        }
        if (geteuid() == 0)
            for (const char * pName : {"postgres", "nobody"})
                if (m_pKonto == nullptr) m_pKonto = getpwnam(pName);
        std::string sMuster = (fs::temp_directory_path() / "orvopg-XXXXXX").string();
        const bool bOrdner = mkdtemp(sMuster.data()) != nullptr;
        if (bOrdner) m_pfad = sMuster;
        if (!bOrdner ||
            (m_pKonto != nullptr && chown(sMuster.c_str(), m_pKonto->pw_uid, m_pKonto->pw_gid) != 0)) {
            m_sHindernis = "no directory for a cluster";
            return;
        }
        int iStatus = 0;
        waitpid(
            Beginne({"initdb", "-D", Daten(), "-A", "trust", "-U", "orvo", "-E", "UTF8", "--locale=C", "-N"}),
            &iStatus, 0);
        if (iStatus == 0)
            Starte();
        else
            m_sHindernis = "no cluster can be made: " + Protokoll();
    }
    ~CTestserver() {
        Toete();
        std::error_code fehler;
        if (!m_pfad.empty()) std::filesystem::remove_all(m_pfad, fehler);
    }

    [[nodiscard]] std::string Daten() const { return (m_pfad / "daten").string(); }
    [[nodiscard]] std::string Protokoll() const {
        std::ifstream ein(m_pfad / "protokoll");
        return {std::istreambuf_iterator<char>(ein), {}};
    }
    // Starts a program of the server's under its account; it ends with this process.
    pid_t Beginne(const std::vector<std::string> & vWorte) {
        const std::string sProgramm = (m_programme / vWorte[0]).string();
        const std::string sProtokoll = (m_pfad / "protokoll").string();
        std::vector<char *> vpWorte;
        for (const std::string & sWort : vWorte)
            vpWorte.push_back(const_cast<char *>(sWort.c_str()));
        vpWorte.push_back(nullptr);
        const pid_t iKind = fork();
        if (iKind != 0) return iKind;
        if (m_pKonto != nullptr &&
            (setgroups(0, nullptr) != 0 || setgid(m_pKonto->pw_gid) != 0 || setuid(m_pKonto->pw_uid) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGQUIT);
        const int iProtokoll = open(sProtokoll.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        dup2(iProtokoll, STDOUT_FILENO);
        dup2(iProtokoll, STDERR_FILENO);
        if (chdir("/") == 0) execv(sProgramm.c_str(), vpWorte.data());
        _exit(1);
    }

    std::filesystem::path m_programme;
    std::filesystem::path m_pfad;
    const passwd * m_pKonto = nullptr;
    pid_t m_iServer = 0;
    std::string m_sHindernis;
};

} // namespace orvostat
