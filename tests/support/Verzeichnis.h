// The one way to a temporary directory.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orvostat {

// A directory of its own, removed at the end with all that is in it.
class CTempVerzeichnis {
public:
    CTempVerzeichnis();
    ~CTempVerzeichnis();
    // The one that somebody holds, or a new one: so that a thousand cases need not make a thousand.
    [[nodiscard]] static std::shared_ptr<CTempVerzeichnis> Gemeinsam();
    CTempVerzeichnis(const CTempVerzeichnis &) = delete;
    CTempVerzeichnis & operator=(const CTempVerzeichnis &) = delete;
    [[nodiscard]] std::filesystem::path operator/(const std::string & sName) const { return m_pfad / sName; }
    operator const std::filesystem::path &() const { return m_pfad; } // NOLINT(google-explicit-constructor)
    [[nodiscard]] std::string Datei(const std::string & sName) const { return (m_pfad / sName).string(); }
    // The names in it, sorted.
    [[nodiscard]] std::vector<std::string> Inhalt() const;

private:
    std::filesystem::path m_pfad;
};

[[nodiscard]] std::string LiesDatei(const std::filesystem::path & pfad);

} // namespace orvostat
