#include "Dateiablage.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvostat {

namespace fs = std::filesystem;

bool Steht(const std::string & sDatei) {
    std::error_code fehler;
    return fs::exists(fs::symlink_status(sDatei, fehler));
}

// Not every file system has each way.
bool GibNamen(const std::string & sVon, const std::string & sNach, bool bErsetzen) {
    const char * const pVon = sVon.c_str();
    const char * const pNach = sNach.c_str();
    if (bErsetzen) return std::rename(pVon, pNach) == 0;
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, pVon, AT_FDCWD, pNach, RENAME_NOREPLACE) == 0) return true;
    if (errno == EEXIST) return false;
#endif
    if (link(pVon, pNach) == 0) return unlink(pVon) == 0;
    if (errno == EEXIST) return false;
    if (!Steht(sNach)) return std::rename(pVon, pNach) == 0;
    errno = EEXIST;
    return false;
}

std::string EigenerName(const std::string & sDatei) {
    std::random_device zufall;
    std::string s;
    do
        s = fmt::format("{}.neu-{:08x}{:08x}", sDatei, zufall(), zufall());
    while (Steht(s));
    return s;
}

mode_t Rechte(const std::string & sDatei) {
    struct stat status {};
    return stat(sDatei.c_str(), &status) == 0 ? status.st_mode & 0777 : 0600;
}

std::string Systemgrund(int iErrno) {
    switch (iErrno) {
    case ENOSPC:
    case EDQUOT:
        return "der Datenträger ist voll";
    case EFBIG:
        return "die Datei würde größer als erlaubt";
    case EIO:
        return "der Datenträger meldet einen Fehler";
    case EROFS:
        return "der Datenträger ist schreibgeschützt";
    case EACCES:
    case EPERM:
        return "vermutlich fehlt die Berechtigung";
    case ENOENT:
    case ENOTDIR:
        return "das Verzeichnis gibt es nicht";
    case EISDIR:
        return "an der Stelle steht ein Verzeichnis";
    default:
        return fmt::format("Fehler {} des Betriebssystems", iErrno);
    }
}

bool SichereVerzeichnis(const std::string & sDatei) {
    const fs::path pfad = fs::path(sDatei).parent_path();
    const int iHandle = open(pfad.empty() ? "." : pfad.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (iHandle < 0) return true; // to write in it the right to read it is not needed
    const bool bGut = fsync(iHandle) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
    const int iErrno = errno;
    close(iHandle);
    errno = iErrno;
    return bGut;
}

bool SichereDatei(const std::string & sDatei, mode_t iRechte) {
    const int iHandle = open(sDatei.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (iHandle < 0) return false;
    // Not every file system has permissions.
    const bool bGut = (fchmod(iHandle, iRechte) == 0 || errno != EIO) && fsync(iHandle) == 0;
    const int iErrno = errno;
    close(iHandle);
    errno = iErrno;
    return bGut;
}

} // namespace orvostat
