// A selection file of any bytes: it is read or refused, a selection that was read comes back from a file written of it,
// and a key that is changed in it has its new value while another keeps its own.
//
// The input is the file.
#include "Fuzz.h"
#include "orvostatbs/files/Statistikdatei.h"

namespace orvostat {
namespace {

void Pruefe(const CEingabe & eingabe) {
    CStatAccu & accu = Umgebung().accu;
    auto & mapDateien = Umgebung().dateien.m_mapDateien;
    mapDateien.clear();
    accu.Clear_Selekt();
    accu.m_vBehHits = {};
    CFile2Stat<CStdioFile> leser(nullptr);
    leser.m_sDateiName = "F";
    leser.SetFilter(&accu);
    const CString sIni = leser.GetIniFilename();
    mapDateien[sIni] = std::string(eingabe.Rest());
    static_cast<void>(leser.ReadAnzHits(sIni));
    static_cast<void>(leser.GetLastEditDateText());
    const CString sVersion = leser.GetStatVersion();
    Fordere(accu.m_vBehHits.capacity() <= 10'000); // there is no data file
    const SSelektion vorher = accu.Selektion();
    const bool bGelesen = leser.ReadSelektionsFile(sIni);
    Fordere(bGelesen || accu.Selektion() == vorher);

    CIniFile ini(sIni);
    const CString sVorher = ini.ReadString("Allgemein"_t, "Version", "*");
    Fordere(ini.WriteString("Selektion"_t, "Kasse", "neu") && ini.Save());
    Fordere(CIniFile::ReadOneString(sIni, "Selektion"_t, "Kasse", "*") == "neu");
    Fordere(CIniFile::ReadOneString(sIni, "Allgemein"_t, "Version", "*") == sVorher);
    if (!bGelesen) return;

    const auto Runde = [&] {
        mapDateien.clear();
        CStat2File<CStdioFile> schreiber(nullptr);
        schreiber.SetFilter(&accu);
        schreiber.SetStatVersion(sVersion);
        Fordere(schreiber.CreateSelektionsFile(sIni));
        Fordere(leser.ReadSelektionsFile(sIni));
        return accu.Selektion();
    };
    const SSelektion erste = Runde();
    Fordere(Runde() == erste);
}

} // namespace
} // namespace orvostat

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t * p, std::size_t n) {
    orvostat::Pruefe({p, n});
    return 0;
}
