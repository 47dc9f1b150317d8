#include "support/Verzeichnis.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
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

std::vector<std::string> CTempVerzeichnis::Inhalt() const {
    std::vector<std::string> vNamen;
    for (const auto & eintrag : std::filesystem::directory_iterator(m_pfad))
        vNamen.push_back(eintrag.path().filename().string());
    std::sort(vNamen.begin(), vNamen.end());
    return vNamen;
}

std::string LiesDatei(const std::filesystem::path & pfad) {
    std::ostringstream s;
    s << std::ifstream(pfad, std::ios::binary).rdbuf(); // nothing of what cannot be read
    return s.str();
}

} // namespace orvostat
