#include "support/Verzeichnis.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace orvostat {

CTempVerzeichnis::CTempVerzeichnis() {
    std::string sVorlage = (std::filesystem::temp_directory_path() / "orvostatbs-XXXXXX").string();
    if (mkdtemp(sVorlage.data()) == nullptr) throw std::runtime_error("no temporary directory for a test");
    m_pfad = sVorlage;
}

CTempVerzeichnis::~CTempVerzeichnis() {
    std::error_code fehler;
    std::filesystem::remove_all(m_pfad, fehler);
}

std::shared_ptr<CTempVerzeichnis> CTempVerzeichnis::Gemeinsam() {
    static std::weak_ptr<CTempVerzeichnis> s_pDas;
    std::shared_ptr<CTempVerzeichnis> p = s_pDas.lock();
    if (!p) s_pDas = p = std::make_shared<CTempVerzeichnis>();
    return p;
}

std::string LiesDatei(const std::filesystem::path & pfad) {
    std::ifstream ein(pfad, std::ios::binary);
    return {std::istreambuf_iterator<char>(ein), std::istreambuf_iterator<char>()};
}

} // namespace orvostat
