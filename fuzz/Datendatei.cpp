// A data file of any bytes under any layout: it is read, or refused for a line with too many columns; what was read
// fits the file, and written and read again it is the same, to the byte and to the last decimal of every amount.
//
// The input: a layout's number, or a number beyond the last one and the columns as bytes up to a 255; the number of
// hits that the selection file claims, as a line; the data file.
#include "Fuzz.h"
#include "orvostatbs/files/Statistikdatei.h"

#include <stdexcept>

namespace orvostat {
namespace {

// The layouts of whole lines. Those of sums have nothing that is read back.
int * const LAYOUTS[] = {iQS_SICHERUNG, iGLAB_SICHERUNG, iMD_SICHERUNG,  iGIPS_SICHERUNG, iGA_SICHERUNG,
                         iRS_SICHERUNG, iGB_SICHERUNG,   iFS_SICHERUNG,  iSU_SICHERUNG,   iGOZ_SICHERUNG,
                         iTS_SICHERUNG, iLU_SICHERUNG,   iUEW_SICHERUNG, iPS_SICHERUNG,   iKZV_SICHERUNG,
                         iRB_SICHERUNG, iLS_SICHERUNG,   iTP_SICHERUNG,  iHVM_SICHERUNG,  iERR_SICHERUNG};

class CSchreiber final : public CStat2File<CStdioFile> {
public:
    explicit CSchreiber(int * pLayout) : CStat2File(nullptr), m_pLayout(pLayout) {
        m_sDateiName = "F";
        SetFilter(&Umgebung().accu);
    }
    int * SetLineStruct() override { return m_pLayout; }
    template <class TListe, class F> void Alle(CStdioFile & file, const TListe & v, F fHin) {
        for (const auto & satz : v) {
            (m_Line.*fHin)(satz);
            m_Line.ART == "E" ? WriteErrorLines(file, m_Line) : WriteLines(file, m_Line);
        }
    }
    int DoData(CStdioFile & file, int &) override {
        const CStatAccu & accu = *m_pFilter;
        Alle(file, accu.m_vBehErrors.Lesend(), &CStatLines::MoveError2File);
        Alle(file, accu.m_vPat, &CStatLines::MovePat);
        Alle(file, accu.m_vKas.Lesend(), &CStatLines::MoveKas2File);
        Alle(file, accu.m_vBehHits, &CStatLines::MoveHit);
        Alle(file, accu.m_vGipsHits, &CStatLines::MoveGips2File);
        Alle(file, accu.m_vRechHits, &CStatLines::MoveRech2File);
        Alle(file, accu.m_vUewStrings, &CStatLines::MoveUEW2File);
        return CODE_OK;
    }

private:
    int * m_pLayout;
};

class CLeser final : public CFile2Stat<CStdioFile> {
public:
    explicit CLeser(int * pLayout) : CFile2Stat(nullptr), m_pLayout(pLayout) {
        m_sDateiName = "F";
        SetFilter(&Umgebung().accu);
    }
    int * SetLineStruct() override { return m_pLayout; }

private:
    int * m_pLayout;
};

// A title line of any text.
class CTitelleser final : public CStatEval<CStdioFile> {
public:
    CTitelleser() : CStatEval(nullptr) {}
    CString GetDatFilename() override { return CSchreiber(nullptr).GetDatFilename(); }
    bool BeforeMoveDataFromFile() override { return true; }
    bool MoveDataFromFile(CStatLines &) override { return true; }
};

template <class T> bool Liest(T & leser) {
    try {
        return leser.ReadDaten();
    } catch (const std::invalid_argument &) { // more columns than the layout has, or no title
        return false;
    }
}

std::vector<CBehHitLine> Schreibe(int * pLayout) {
    CSchreiber schreiber(pLayout);
    Fordere(schreiber.WriteDaten());
    return Umgebung().accu.m_vBehHits;
}

void Pruefe(CEingabe eingabe) {
    CStatAccu & accu = Umgebung().accu;
    auto & mapDateien = Umgebung().dateien.m_mapDateien;
    std::vector<int> vEigenes;
    const unsigned iLayout = eingabe.Byte();
    if (iLayout >= std::size(LAYOUTS)) {
        for (unsigned i = eingabe.Byte(); i < 255 && vEigenes.size() < 300; i = eingabe.Byte())
            vEigenes.push_back(static_cast<int>(i));
        vEigenes.push_back(-1);
    }
    int * const pLayout = vEigenes.empty() ? LAYOUTS[iLayout] : vEigenes.data();

    CLeser leser(pLayout);
    const CString sDat = leser.GetDatFilename();
    const std::string sHits(eingabe.Zeile());
    mapDateien.clear();
    mapDateien[leser.GetIniFilename()] = "[Allgemein]\nAnzahlHits=" + sHits + "\n";
    mapDateien[sDat] = std::string(eingabe.Rest());
    accu.m_vBehHits = {};
    accu.m_vUewStrings.clear();
    CTitelleser titelleser;
    Liest(titelleser);
    const bool bGanz = Liest(leser);
    const std::size_t iZeilen = eingabe.Rest().size() / 2 + 1; // a kind and a delimiter at least
    Fordere(accu.m_vBehHits.size() <= iZeilen && accu.m_vPat.size() <= iZeilen);
    Fordere(accu.m_vBehHits.capacity() <= std::max<std::size_t>(2 * iZeilen, 10'000));
    if (!bGanz) return;

    // By the first saving texts lose what a column cannot hold, and records what the layout lacks; by the second one
    // referrals stand in the order of such texts. Hits need their kind.
    if (pLayout[0] != 0 || pLayout[1] == -1) return;
    Schreibe(pLayout);
    CLeser einmal(pLayout);
    Fordere(einmal.ReadDaten());
    Schreibe(pLayout);
    const std::string sErste = mapDateien[sDat];
    CLeser wieder(pLayout);
    Fordere(wieder.ReadDaten());
    const std::vector<CBehHitLine> vHits = accu.m_vBehHits;
    Schreibe(pLayout);
    Fordere(mapDateien[sDat] == sErste);
    CLeser nochmal(pLayout);
    Fordere(nochmal.ReadDaten() && accu.m_vBehHits.size() == vHits.size());
    for (std::size_t i = 0; i < vHits.size(); ++i)
        Fordere(accu.m_vBehHits[i].BETRAG == vHits[i].BETRAG && accu.m_vBehHits[i].PUNKTE == vHits[i].PUNKTE);
}

} // namespace
} // namespace orvostat

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t * p, std::size_t n) {
    orvostat::Pruefe({p, n});
    return 0;
}
