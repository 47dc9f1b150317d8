#include "orvostatbs/host/Arbeitsplatz.h"

#include "orvostatbs/host/Dateien.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char ** environ;

namespace orvostat {

namespace {

// The parts of a command line, without the quotes around them and with the platform's separators.
std::vector<std::string> Argumente(const CString & sBefehl) {
    std::vector<std::string> vTeile;
    bool bInTeil = false;
    bool bInAnfuehrung = false;
    for (const char c : Dateipfad(sBefehl)) {
        if (c == ' ' && !bInAnfuehrung) {
            bInTeil = false;
            continue;
        }
        if (!std::exchange(bInTeil, true)) vTeile.emplace_back();
        if (c == '"')
            bInAnfuehrung = !bInAnfuehrung;
        else
            vTeile.back() += c;
    }
    return vTeile;
}

class CDieserArbeitsplatz final : public CArbeitsplatz {
public:
    ~CDieserArbeitsplatz() override {
        for (const std::string & sDatei : m_setTemp) {
            std::error_code fehler; // a file that somebody still holds stays
            std::filesystem::remove(sDatei, fehler);
        }
    }

    bool StarteProgramm(const CString & sBefehl, int) override {
        std::erase_if(m_vKinder, [](pid_t kind) { return waitpid(kind, nullptr, WNOHANG) != 0; });
        std::vector<std::string> vTeile = Argumente(sBefehl);
        if (vTeile.empty()) return false;
        std::vector<char *> vZeiger;
        for (std::string & sTeil : vTeile)
            vZeiger.push_back(sTeil.data());
        vZeiger.push_back(nullptr);
        pid_t kind = 0;
        if (posix_spawnp(&kind, vZeiger[0], nullptr, nullptr, vZeiger.data(), environ) != 0) return false;
        m_vKinder.push_back(kind);
        return true;
    }
    void MerkeTempDatei(const CString & sDatei) override { m_setTemp.insert(Dateipfad(sDatei)); }
    int SetzeProfil(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        CIniFile ini(sDatei);
        CString sName = sAbschnitt;
        if (sName.GetLength() >= 2 && sName[0] == '[') sName = sName.Mid(1, sName.GetLength() - 2);
        return ini.WriteString(sName, sSchluessel, sWert) && ini.Save() ? PROFIL_OK : 0;
    }

private:
    std::vector<pid_t> m_vKinder; // started and not known to have ended
    std::set<std::string> m_setTemp;
};

constinit CArbeitsplatz * s_pArbeitsplatz = nullptr; // null is the default

} // namespace

CArbeitsplatz & Arbeitsplatz() {
    static CDieserArbeitsplatz s_arbeitsplatz;
    return s_pArbeitsplatz != nullptr ? *s_pArbeitsplatz : s_arbeitsplatz;
}
CArbeitsplatz * SetzeArbeitsplatz(CArbeitsplatz * pArbeitsplatz) {
    return std::exchange(s_pArbeitsplatz, pArbeitsplatz);
}

bool WinExec(const CString & sBefehl, int iAnzeige) {
    return Arbeitsplatz().StarteProgramm(sBefehl, iAnzeige);
}
void AddDeleteOrvoTempFile(const CString & sDatei) { Arbeitsplatz().MerkeTempDatei(sDatei); }
int vdsetprofilestring1(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                        const CString & sWert) {
    return Arbeitsplatz().SetzeProfil(sDatei, sAbschnitt, sSchluessel, sWert);
}

CString GetDatFilePath(const CString & sDatei) { return GetOrvoDataPath(0) + sDatei; }

void NimmSchreibschutz(const CString & sDatei) {
    namespace fs = std::filesystem;
    const std::string sPfad = Dateipfad(sDatei);
    std::error_code fehler;
    const auto stand = fs::status(sPfad, fehler);
    if (fs::exists(stand) && (stand.permissions() & fs::perms::owner_write) == fs::perms::none)
        fs::permissions(sPfad, fs::perms::owner_write, fs::perm_options::add, fehler);
}

bool KopiereDatei(const CString & sVon, const CString & sNach, bool bNurNeu) {
    namespace fs = std::filesystem;
    std::error_code fehler;
    const auto wie = bNurNeu ? fs::copy_options::none : fs::copy_options::overwrite_existing;
    return fs::copy_file(Dateipfad(sVon), Dateipfad(sNach), wie, fehler);
}

} // namespace orvostat
