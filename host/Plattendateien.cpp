// Files of the platform.
#include "orvostatbs/host/Dateispeicher.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

bool IstOrdner(const fs::path & pfad) {
    std::error_code fehler;
    return fs::is_directory(pfad, fehler);
}

// The cause of an error number; sDatei tells a missing file from a missing folder.
int Ursache(int iErrno, const std::string & sDatei) {
    switch (iErrno) {
    case ENOENT: {
        const fs::path ordner = fs::path(sDatei).parent_path();
        return ordner.empty() || IstOrdner(ordner) ? URSACHE_KEINE_DATEI : URSACHE_PFAD;
    }
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return URSACHE_PFAD;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
        return URSACHE_KEIN_ZUGRIFF;
    case EIO:
        return URSACHE_GERAET;
    case ENOSPC:
    case EDQUOT:
        return URSACHE_VOLL;
    default:
        return URSACHE_SONST;
    }
}

class CPlattenzugriff final : public CDateizugriff {
public:
    explicit CPlattenzugriff(int iGriff) : m_iGriff(iGriff) {}
    ~CPlattenzugriff() override {
        if (m_iGriff >= 0) close(m_iGriff);
    }

    int Lies(std::uint64_t iPos, std::span<char> acZiel, std::size_t & iGelesen) override {
        iGelesen = 0;
        while (iGelesen < acZiel.size()) {
            const auto iTeil = pread(m_iGriff, acZiel.data() + iGelesen, acZiel.size() - iGelesen,
                                     static_cast<off_t>(iPos + iGelesen));
            if (iTeil == 0) break;
            if (iTeil > 0) iGelesen += static_cast<std::size_t>(iTeil);
            if (iTeil < 0 && errno != EINTR) return Ursache(errno, {});
        }
        return URSACHE_KEINE;
    }
    int Schreibe(std::uint64_t iPos, std::string_view sBytes) override {
        while (!sBytes.empty()) {
            const auto iTeil = pwrite(m_iGriff, sBytes.data(), sBytes.size(), static_cast<off_t>(iPos));
            if (iTeil < 0 && errno != EINTR) return Ursache(errno, {});
            if (iTeil <= 0) continue;
            sBytes.remove_prefix(static_cast<std::size_t>(iTeil));
            iPos += static_cast<std::uint64_t>(iTeil);
        }
        return URSACHE_KEINE;
    }
    std::uint64_t Laenge() override {
        struct stat stand {};
        return fstat(m_iGriff, &stand) == 0 ? static_cast<std::uint64_t>(stand.st_size) : 0;
    }
    int Sichere() override { return URSACHE_KEINE; }
    int Schliesse() override {
        const int iGriff = std::exchange(m_iGriff, -1);
        return iGriff < 0 || close(iGriff) == 0 || errno == EINTR ? static_cast<int>(URSACHE_KEINE)
                                                                  : Ursache(errno, {});
    }

private:
    int m_iGriff;
};

int Platzmodus(unsigned iModus) {
    if ((iModus & DATEI_SCHREIBEN) == 0) return O_RDONLY;
    const bool bAnlegen = (iModus & DATEI_ANLEGEN) != 0;
    const bool bLeeren = bAnlegen && (iModus & DATEI_BEHALTEN) == 0;
    return O_WRONLY | (bAnlegen ? O_CREAT : 0) | (bLeeren ? O_TRUNC : 0);
}

class CPlattendateien final : public CDateispeicher {
public:
    std::unique_ptr<CDateizugriff> Oeffne(const CString & sPfad, unsigned iModus, int & iUrsache) override {
        const std::string sDatei = Dateipfad(sPfad);
        if (IstOrdner(sDatei)) {
            iUrsache = URSACHE_KEIN_ZUGRIFF;
            return nullptr;
        }
        // Not to wait, where a pipe stands in the file's place.
        const int iGriff = open(sDatei.c_str(), Platzmodus(iModus) | O_CLOEXEC | O_NONBLOCK, 0666);
        iUrsache = iGriff < 0 ? Ursache(errno, sDatei) : static_cast<int>(URSACHE_KEINE);
        return iGriff < 0 ? nullptr : std::make_unique<CPlattenzugriff>(iGriff);
    }
    int Loesche(const CString & sPfad) override {
        const std::string sDatei = Dateipfad(sPfad);
        return unlink(sDatei.c_str()) == 0 ? static_cast<int>(URSACHE_KEINE) : Ursache(errno, sDatei);
    }
    bool Existiert(const CString & sPfad) override {
        std::error_code fehler; // a path that cannot be asked for does not exist
        const auto stand = fs::status(Dateipfad(sPfad), fehler);
        return fs::exists(stand) && !fs::is_directory(stand);
    }
    std::vector<SDateieintrag> Suche(const CString & sMuster) override {
        const CString sOrdner = Ordnerteil(sMuster);
        const std::string sMaske(sMuster.Mid(sOrdner.GetLength()).Sicht().Text());
        std::vector<SDateieintrag> vEintraege;
        std::error_code fehler;
        fs::directory_iterator it(sOrdner.IsEmpty() ? std::string(".") : Dateipfad(sOrdner), fehler);
        for (; !fehler && it != fs::directory_iterator(); it.increment(fehler)) {
            const CString sName = Pfadtext(it->path().filename().string());
            if (PasstAufMuster(sName.Sicht(), sMaske)) vEintraege.push_back({sName, IstOrdner(it->path())});
        }
        std::sort(vEintraege.begin(), vEintraege.end(),
                  [](const SDateieintrag & a, const SDateieintrag & b) { return a.sName < b.sName; });
        return vEintraege;
    }
};

constinit CDateispeicher * s_pPlatte = nullptr; // null is the default

} // namespace

CDateispeicher & Plattendateien() {
    static CPlattendateien s_dateien;
    return s_pPlatte != nullptr ? *s_pPlatte : s_dateien;
}
CDateispeicher * SetzePlattendateien(CDateispeicher * pSpeicher) {
    return std::exchange(s_pPlatte, pSpeicher);
}

bool PasstAufMuster(std::string_view sName, std::string_view sMuster) {
    if (sMuster == "*.*") return true;
    std::size_t n = 0, m = 0;
    std::size_t iStern = std::string_view::npos, iAb = 0; // where to go on if the rest does not fit
    while (n < sName.size()) {
        if (m < sMuster.size() && sMuster[m] == '*') {
            iStern = m++;
            iAb = n;
        } else if (m < sMuster.size() && (sMuster[m] == '?' || sMuster[m] == sName[n])) {
            ++m;
            ++n;
        } else if (iStern != std::string_view::npos) {
            m = iStern + 1;
            n = ++iAb;
        } else {
            return false;
        }
    }
    return sMuster.find_first_not_of('*', m) == std::string_view::npos;
}

CString Ordnerteil(const CString & sPfad) {
    const auto iStrich = sPfad.Sicht().Text().rfind('\\');
    return iStrich == std::string_view::npos ? CString() : sPfad.Left(static_cast<int>(iStrich) + 1);
}

} // namespace orvostat
