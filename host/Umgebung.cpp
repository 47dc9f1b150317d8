#include "orvostatbs/host/Umgebung.h"

#include "orvostatbs/host/Oberflaeche.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <system_error>

#include <dlfcn.h>

namespace orvostat {

constinit CString dbMdId;
constinit CString dbPId;
constinit bool dbPraxisLeb = false;
constinit CString dbPraxisId;
constinit bool dbMKGVersion = false;
constinit CString dbLfdWorkstation = " 1";

CString GetOrvoExePath(int) { return Pfade().sProgramm; }
CString GetOrvoDataPath(int) { return Pfade().sDaten; }

namespace {

class CSystemuhr : public CUhr {
public:
    SZeitpunkt Jetzt() const override {
        const std::time_t jetzt = std::time(nullptr);
        std::tm zeit{};
        localtime_r(&jetzt, &zeit);
        return {zeit.tm_year + 1900, zeit.tm_mon + 1, zeit.tm_mday, zeit.tm_hour, zeit.tm_min};
    }
};

SPfade MakePfade() {
    std::error_code fehler; // a directory that cannot be had stays the working directory
    const std::filesystem::path programm = std::filesystem::read_symlink("/proc/self/exe", fehler);
    const std::filesystem::path aktuell = std::filesystem::current_path(fehler);
    const std::filesystem::path temp = std::filesystem::temp_directory_path(fehler);
    return {Verzeichnistext(programm.empty() ? aktuell.string() : programm.parent_path().string()),
            Verzeichnistext(aktuell.string()),
            Verzeichnistext(temp.empty() ? aktuell.string() : temp.string())};
}

// What stands in the seams; null is the default.
constinit CUhr * s_pUhr = nullptr;
constinit SPfade * s_pPfade = nullptr;
constinit CBibliotheken * s_pBibliotheken = nullptr;

// An open shared library. It stays loaded when the handle is dropped.
class CGriff {
public:
    explicit CGriff(const CString & sBibliothek) {
        const std::string sDatei = "lib" + sBibliothek.Utf8() + ".so";
        m_pGriff = Oeffne(Dateipfad(GetOrvoExePath()) + sDatei);
        if (m_pGriff == nullptr) m_pGriff = Oeffne(sDatei);
    }
    ~CGriff() {
        if (m_pGriff != nullptr) dlclose(m_pGriff);
    }
    CGriff(const CGriff &) = delete;
    CGriff & operator=(const CGriff &) = delete;

    [[nodiscard]] bool Offen() const { return m_pGriff != nullptr; }
    [[nodiscard]] void * Funktion(const CString & sFunktion) const {
        return Offen() ? dlsym(m_pGriff, sFunktion.Utf8().c_str()) : nullptr;
    }

private:
    static void * Oeffne(const std::string & sDatei) {
        return dlopen(sDatei.c_str(), RTLD_NOW | RTLD_NODELETE);
    }
    void * m_pGriff = nullptr;
};

} // namespace

CUhr & Uhr() {
    static CSystemuhr s_systemuhr;
    return s_pUhr != nullptr ? *s_pUhr : s_systemuhr;
}
CUhr * SetzeUhr(CUhr * pUhr) { return std::exchange(s_pUhr, pUhr); }

SPfade & Pfade() {
    if (s_pPfade != nullptr) return *s_pPfade;
    static SPfade s_pfade = MakePfade();
    return s_pfade;
}
SPfade * SetzePfade(SPfade * pPfade) { return std::exchange(s_pPfade, pPfade); }

CBibliotheken & Bibliotheken() {
    static CBibliotheken s_bibliotheken;
    return s_pBibliotheken != nullptr ? *s_pBibliotheken : s_bibliotheken;
}
CBibliotheken * SetzeBibliotheken(CBibliotheken * pBibliotheken) {
    return std::exchange(s_pBibliotheken, pBibliotheken);
}

CString TempPfad() { return Pfade().sTemp; }

std::string Dateipfad(const CString & sPfad) {
    std::string s = sPfad.Utf8();
    std::replace(s.begin(), s.end(), '\\', static_cast<char>(std::filesystem::path::preferred_separator));
    return s;
}

CString Pfadtext(const std::string & sDateipfad) {
    CString s = AusUtf8(sDateipfad);
    s.Replace('/', '\\');
    return s;
}

CString Verzeichnistext(const std::string & sDateipfad) {
    CString s = Pfadtext(sDateipfad);
    if (s.Right(1) != "\\") s += '\\';
    return s;
}

void CBibliotheken::Registriere(const CString & sBibliothek, const CString & sFunktion, void * pFunktion) {
    Installiere(sBibliothek);
    m_mapFunktionen[{sBibliothek, sFunktion}] = pFunktion;
}

void * CBibliotheken::Suche(const CString & sBibliothek, const CString & sFunktion) const {
    const auto it = m_mapFunktionen.find({sBibliothek, sFunktion});
    return it == m_mapFunktionen.end() ? nullptr : it->second;
}

bool CBibliotheken::Kennt(const CString & sBibliothek) const {
    const auto it = m_mapFunktionen.lower_bound({sBibliothek, CString()});
    return it != m_mapFunktionen.end() && it->first.first == sBibliothek;
}

void * LadeFunktion(const CString & sBibliothek, const CString & sFunktion) {
    const CBibliotheken & tabelle = Bibliotheken();
    if (void * const pFunktion = tabelle.Suche(sBibliothek, sFunktion)) return pFunktion;

    const CGriff griff(sBibliothek);
    if (!griff.Offen() && !tabelle.Kennt(sBibliothek)) {
        MxHaltE("LoadLibrary fehlgeschlagen!"_t, sBibliothek + '\n' + sFunktion, 0);
        return nullptr;
    }
    void * const pFunktion = griff.Funktion(sFunktion);
    if (pFunktion == nullptr) MxHaltE("Hinweis", "Programm in Vorbereitung!"_t, 0);
    return pFunktion;
}

} // namespace orvostat
