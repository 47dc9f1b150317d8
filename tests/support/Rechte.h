// For tests of file permissions: root may do everything, so a test that runs as root gives its files to an ordinary
// user and becomes that user for a while.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <unistd.h>

namespace orvostat {

class COhneRootrechte {
public:
    // Hands verzeichnis and all in it to the user. Does nothing for an ordinary user.
    explicit COhneRootrechte(const std::filesystem::path & verzeichnis) : m_bRoot(geteuid() == 0) {
        if (!m_bRoot) return;
        Uebergib(verzeichnis);
        for (const auto & eintrag : std::filesystem::recursive_directory_iterator(verzeichnis))
            Uebergib(eintrag.path());
        if (setresuid(NIEMAND, NIEMAND, 0) != 0) throw std::runtime_error("cannot drop root's rights");
    }
    ~COhneRootrechte() {
        if (m_bRoot && setresuid(0, 0, 0) != 0) std::abort();
    }
    COhneRootrechte(const COhneRootrechte &) = delete;
    COhneRootrechte & operator=(const COhneRootrechte &) = delete;

private:
    static constexpr uid_t NIEMAND = 65534;
    static void Uebergib(const std::filesystem::path & pfad) {
        if (chown(pfad.c_str(), NIEMAND, static_cast<gid_t>(-1)) != 0)
            throw std::runtime_error("cannot hand over " + pfad.string());
    }
    bool m_bRoot;
};

} // namespace orvostat
