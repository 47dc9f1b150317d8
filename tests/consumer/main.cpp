// Shows that the installed package is complete: its headers compile, its library links, and a screen that is written
// against the given names finds them in the global namespace, one of each kind.
#include "orvostatbs/global.h"
#include "orvostatbs/version.h"

#include <cstdio>
#include <string_view>

#ifndef CONSUMER_VERSION
#define CONSUMER_VERSION ORVOSTATBS_VERSION
#endif

int Fremde(); // of a library that has a CString of its own

namespace {

// A screen's own file set: one line for each treater.
class CBehandlerdatei : public CStat2File<CStdioFile> {
public:
    using CStat2File::CStat2File;
    int * SetLineStruct() override { return iMD_SICHERUNG; }
    bool GetLineData2File(CStatLines & line) override { return line.ART.IsEmpty(); }
};

bool StatistikenStimmen() {
    CBehandlerdatei datei(nullptr);
    datei.m_sDateiName = "screen";
    CBehHitLine hit;
    hit.PATNR = "         1";
    hit.DATUM = "20240201";
    hit.LSTIN = "01";
    hit.GOSTATISTIKART = 'a';
    std::vector<CFallJeQuartal> vFaelle;
    const int iNeu = FindFallImQuartalMitAbrArt(vFaelle, hit);
    CLSSum summe;
    summe.Analyse("", {hit}, nullptr);
    const KAS_GRP_SEL auswahl{"alle", "", STATKASGRP_KEINE, "", "", ""};
    CStatZE plan;
    return datei.GetDatFilename().Right(10) == "screen.SVE" && std::string_view(VarNames[0]) == "ART" &&
           iNeu == -2 && summe.m_vBeh.size() == 1 && auswahl.m_eGrp == 0 && plan.m_vHits.empty() &&
           CKasArt100F::s_vVerhLst.empty() && !FileExistsDB("stat\\keine.dat");
}

} // namespace

int main() {
    const CStatAccu accu;
    if (!accu.m_vBehHits.empty() || QuartalsEnde("20240201") != "20240331") return 1;
    if (!StatistikenStimmen()) return 2;
    if (std::string_view(CONSUMER_VERSION) != ORVOSTATBS_VERSION) return 3;
    std::printf("%d letters\n", CString("Zähne").GetLength() + Fremde());
    return 0;
}
