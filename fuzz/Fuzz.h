// What the fuzz targets share. A target is a file of this folder with a function LLVMFuzzerTestOneInput; what it starts
// from are the files of korpus/<its name>/, and scripts/fuzz builds and runs all of them.
#pragma once

#include "Muster.h"
#include "bench/Stumm.h"
#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/host/Dateispeicher.h"
#include "orvostatbs/host/Oberflaeche.h"
#include "orvostatbs/store/MemorySpeicher.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orvostat {

inline void Fordere(bool bWahr) {
    if (!bWahr) std::abort();
}

// An input, taken apart from the front.
class CEingabe {
public:
    CEingabe(const std::uint8_t * p, std::size_t n) : m_s(reinterpret_cast<const char *>(p), n) {}
    [[nodiscard]] unsigned Byte() { return m_s.empty() ? 0 : static_cast<unsigned char>(Nimm(1)[0]); }
    [[nodiscard]] std::string_view Nimm(std::size_t n) {
        const std::string_view s = m_s.substr(0, n);
        m_s.remove_prefix(s.size());
        return s;
    }
    // Up to the next line feed, which is taken as well.
    [[nodiscard]] std::string_view Zeile() {
        const std::string_view s = Nimm(std::min(m_s.find('\n'), m_s.size()));
        static_cast<void>(Nimm(1));
        return s;
    }
    [[nodiscard]] std::string_view Rest() const { return m_s; }

private:
    std::string_view m_s;
};

// Files in memory.
class CSpeicherdateien final : public CDateispeicher {
public:
    std::map<CString, std::string> m_mapDateien;

    std::unique_ptr<CDateizugriff> Oeffne(const CString & sPfad, unsigned iModus, int & iUrsache) override {
        const bool bDa = m_mapDateien.contains(sPfad);
        iUrsache = bDa || (iModus & DATEI_ANLEGEN) != 0 ? URSACHE_KEINE : URSACHE_KEINE_DATEI;
        if (iUrsache != URSACHE_KEINE) return nullptr;
        std::string & s = m_mapDateien[sPfad];
        if ((iModus & DATEI_ANLEGEN) != 0 && (iModus & DATEI_BEHALTEN) == 0) s.clear();
        return std::make_unique<CZugriff>(s);
    }
    int Loesche(const CString & sPfad) override {
        return m_mapDateien.erase(sPfad) == 1 ? URSACHE_KEINE : URSACHE_KEINE_DATEI;
    }
    bool Existiert(const CString & sPfad) override { return m_mapDateien.contains(sPfad); }
    std::vector<SDateieintrag> Suche(const CString &) override { return {}; }

private:
    class CZugriff final : public CDateizugriff {
    public:
        explicit CZugriff(std::string & s) : m_s(s) {}
        int Lies(std::uint64_t iPos, std::span<char> acZiel, std::size_t & iGelesen) override {
            iGelesen = iPos < m_s.size() ? m_s.copy(acZiel.data(), acZiel.size(), iPos) : 0;
            return URSACHE_KEINE;
        }
        int Schreibe(std::uint64_t iPos, std::string_view sBytes) override {
            m_s.replace(iPos, sBytes.size(), sBytes);
            return URSACHE_KEINE;
        }
        std::uint64_t Laenge() override { return m_s.size(); }
        int Sichere() override { return URSACHE_KEINE; }
        int Schliesse() override { return URSACHE_KEINE; }

    private:
        std::string & m_s;
    };
};

// What stands around a target for the life of the process: nobody who answers, files in memory, and an accumulator that
// has read the master data of the smallest practice; the practice itself is empty then, so that no input waits for it.
struct SUmgebung {
    CStumm stumm;
    CSpeicherdateien dateien;
    COberflaecheErsatz stummErsatz{stumm};
    CPlattendateienErsatz dateienErsatz{dateien};
    CStatAccu accu;
    SUmgebung() {
        const auto pSpeicher = std::make_shared<CMemorySpeicher>();
        Fordere(ErzeugeMuster(*pSpeicher, {.iPatienten = 1, .iJahre = 1}) == ZEILE_OK);
        Verbinde(pSpeicher);
        Fordere(accu.GetGlobalData(true) == 0);
        Verbinde(std::make_shared<CMemorySpeicher>());
    }
    static void Verbinde(const std::shared_ptr<CZeilenspeicher> & pSpeicher) {
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
    }
};
inline SUmgebung & Umgebung() {
    static auto * const s_p = new SUmgebung; // which no destructor takes apart
    return *s_p;
}

} // namespace orvostat
