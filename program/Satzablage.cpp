#include "Satzablage.h"

#include "Dateiablage.h"
#include "Praxis.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

constexpr const char * BEISEITE = ".alt";
constexpr auto GEDULD = std::chrono::seconds(30);

using CNamen = std::vector<std::pair<std::string, std::string>>; // from, to

std::string OhneEndung(const std::string & s, std::size_t iEndung) { return s.substr(0, s.size() - iEndung); }

// All or none; errno says why none.
bool BenenneUm(const CNamen & vNamen) {
    for (std::size_t i = 0; i < vNamen.size(); ++i) {
        if (std::rename(vNamen[i].first.c_str(), vNamen[i].second.c_str()) == 0) continue;
        const int iErrno = errno;
        while (i-- > 0)
            std::rename(vNamen[i].second.c_str(), vNamen[i].first.c_str());
        errno = iErrno;
        return false;
    }
    return true;
}

// Brings to its end, or takes back, what a program that was killed had begun. sAuswahl is the selection file's name.
void Erhole(const std::string & sAuswahl) {
    const std::string sDaten = OhneEndung(sAuswahl, 4) + ".SVE";
    const std::string sAlteDaten = sDaten + BEISEITE;
    const std::string sAlteAuswahl = sAuswahl + BEISEITE;
    if (Steht(sAuswahl)) {
        std::remove(sAlteDaten.c_str());
        std::remove(sAlteAuswahl.c_str());
        return;
    }
    if (Steht(sAlteDaten)) std::rename(sAlteDaten.c_str(), sDaten.c_str());
    std::rename(sAlteAuswahl.c_str(), sAuswahl.c_str());
}

std::vector<std::string> Unterbrochene(const std::string & sOrdner) {
    const std::string sEndung = std::string(".ISV") + BEISEITE;
    std::vector<std::string> v;
    std::error_code fehler;
    for (fs::directory_iterator it(sOrdner, fehler), ende; !fehler && it != ende; it.increment(fehler))
        if (it->path().string().ends_with(sEndung))
            v.push_back(OhneEndung(it->path().string(), std::string_view(BEISEITE).size()));
    return v;
}

// No signal ends the program while the object lives.
class CUngestoert {
public:
    CUngestoert() {
        sigset_t alle;
        sigfillset(&alle);
        sigprocmask(SIG_BLOCK, &alle, &m_vorher);
    }
    ~CUngestoert() { sigprocmask(SIG_SETMASK, &m_vorher, nullptr); }
    CUngestoert(const CUngestoert &) = delete;
    CUngestoert & operator=(const CUngestoert &) = delete;

private:
    sigset_t m_vorher{};
};

} // namespace

CSatzsperre::CSatzsperre(const std::string & sOrdner, EArt eArt)
    : m_sOrdner(sOrdner), m_iHandle(open(sOrdner.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (m_iHandle < 0) return;
    Nimm(eArt == EArt::Lesen ? LOCK_SH : LOCK_EX);
    if (Unterbrochene(sOrdner).empty()) return;
    if (eArt == EArt::Lesen) Nimm(LOCK_EX);
    for (const std::string & sAuswahl : Unterbrochene(sOrdner))
        Erhole(sAuswahl);
    if (eArt == EArt::Lesen) Nimm(LOCK_SH);
}

CSatzsperre::~CSatzsperre() {
    if (m_iHandle >= 0) close(m_iHandle);
}

void CSatzsperre::Nimm(int iArt) const {
    const auto bis = std::chrono::steady_clock::now() + GEDULD;
    while (flock(m_iHandle, iArt | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (std::chrono::steady_clock::now() > bis)
            Verweigere("Ein anderes Programm arbeitet mit den Statistiken in \"" + m_sOrdner + "\".");
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

CVertraulich::CVertraulich() : m_iVorher(umask(077)) {}
CVertraulich::~CVertraulich() { umask(m_iVorher); }

namespace {

// Makes the folder of a path, with the user's usual permissions; ends the command where nothing can be written there.
const std::string & MitOrdner(const std::string & sPfad) {
    const fs::path ordner = fs::path(sPfad).parent_path();
    std::error_code fehler;
    fs::create_directories(ordner, fehler);
    if (!fehler && access(ordner.c_str(), W_OK | X_OK) != 0) fehler = {errno, std::generic_category()};
    if (fehler)
        Verweigere("In \"" + ordner.string() +
                   "\" lässt sich nichts speichern: " + Systemgrund(fehler.value()) + '.');
    return sPfad;
}

} // namespace

CNeuerSatz::CNeuerSatz(const std::string & sPfad)
    : m_sDaten(MitOrdner(sPfad) + ".SVE"), m_sAuswahl(sPfad + ".ISV"), m_sNeueDaten(EigenerName(m_sDaten)),
      m_sNeueAuswahl(EigenerName(m_sAuswahl)) {
    std::error_code fehler;
    for (const std::string & sDatei : {m_sDaten, m_sAuswahl})
        if (fs::is_directory(fs::symlink_status(sDatei, fehler)))
            Verweigere('"' + sDatei + "\" ist ein Verzeichnis.");
}

CNeuerSatz::~CNeuerSatz() {
    std::remove(m_sNeueDaten.c_str());
    std::remove(m_sNeueAuswahl.c_str());
}

void CNeuerSatz::Fertig(const std::string & sVorbild) {
    const CSatzsperre sperre(fs::path(m_sDaten).parent_path().string(), CSatzsperre::EArt::Ersetzen);
    const bool bErsetzt = Steht(m_sAuswahl);
    const mode_t iRechte = Rechte(bErsetzt ? m_sAuswahl : sVorbild) & 0666;
    CNamen vNamen = {{m_sNeueDaten, m_sDaten}, {m_sNeueAuswahl, m_sAuswahl}};
    // A set without selection file is none, and needs not be brought back.
    if (bErsetzt && Steht(m_sDaten)) vNamen.insert(vNamen.begin(), {m_sDaten, m_sDaten + BEISEITE});
    if (bErsetzt) vNamen.insert(vNamen.begin(), {m_sAuswahl, m_sAuswahl + BEISEITE});
    const CUngestoert ungestoert;
    if (!SichereDatei(m_sNeueDaten, iRechte) || !SichereDatei(m_sNeueAuswahl, iRechte) ||
        !BenenneUm(vNamen) || !SichereVerzeichnis(m_sDaten))
        Verweigere('"' + m_sAuswahl + "\" lässt sich nicht schreiben: " + Systemgrund(errno) + '.');
    if (bErsetzt) Erhole(m_sAuswahl);
}

} // namespace orvostat
