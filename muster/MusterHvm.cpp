#include "MusterHvm.h"

#include "orvostatbs/calendar/Feiertage.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"
#include "orvostatbs/hvm/HVMCf.h"

#include <iterator>

namespace orvostat {

namespace {

constexpr struct {
    char cArt;
    char cGruppe;
    const char * pAuswahl; // of the group
    const char * pName;    // of a further selection, or null
    const char * pExtra;
    bool bBudget;
    int iWert;
    bool bAktiv;
} TOEPFE[] = {
    {'c', 'g', "e", nullptr, nullptr, true, 100, true},
    {'c', 'p', "ePrimaer", "Ersatz", "eErsatz", true, 100, true},
    {'z', 'g', "e", nullptr, nullptr, false, 1, true},
    {'k', 'g', "e", "Neufall", "eNeu", true, 80, true},
    {'b', 'g', "e", nullptr, nullptr, false, 1, true},
    {'p', 'g', "ePar", nullptr, nullptr, true, 90, true},
    {'m', 'e', "e", nullptr, nullptr, false, 1, false},
    {'1', 'l', "eLabor", nullptr, nullptr, false, 1, false},
};

constexpr const char * LEISTUNGEN[] = {"01",  "04",   "10",  "12",  "13a", "13b", "13c",
                                       "107", "107a", "IP1", "IP2", "IP4", "Ä1"};

constexpr struct {
    const char * pMonat; // the vacation begins on the first Monday of this month
    int iTage;
} URLAUBE[] = {{"04", 5}, {"08", 19}, {"10", 5}};

constexpr int MONTAG = 2;

CString Jahrestext(int iJahr) { return RightFix(itoc(iJahr), 4, '0'); }

// Later owners take their long vacation a month earlier, so that the practice is never closed.
CHVMUrParam Jahr(const CString & sMandant, const CString & sJahr, bool bErster) {
    CHVMUrParam ur;
    ur.m_sMandant = sMandant;
    ur.m_sJahr = sJahr + "0101";
    ur.m_abArbeitstag[4] = bErster; // the others do not work on Fridays
    for (const auto & [pMonat, iTage] : URLAUBE) {
        const CString sMonat = !bErster && iTage > 7 ? CString("07") : CString(pMonat);
        CMxDate tag(sJahr + sMonat + "01");
        while (tag.IsValid() && tag.Wochentag() != MONTAG)
            tag = tag + 1;
        ur.m_vUrlaub.emplace_back(tag, tag + (iTage - 1));
    }
    ur.m_vUrlaub.emplace_back(sJahr + "1227", sJahr + "1231");
    return ur;
}

void FuelleToepfe(CHVMCf & cf, const CString & sMandant) {
    for (const auto & topf : TOEPFE) {
        const int i = cf.FindBgParam(sMandant, topf.cArt);
        CHVMBgParam & bg = i < 0 ? cf.m_vBgParam.emplace_back() : cf.m_vBgParam[static_cast<std::size_t>(i)];
        bg.m_sMandant = sMandant;
        bg.m_cArt = topf.cArt;
        bg.m_mSel[topf.cGruppe][CString()] = CString(topf.pAuswahl);
        if (topf.pName) bg.m_mSel[topf.cGruppe][CString(topf.pName)] = CString(topf.pExtra);
        bg.m_bBudget = topf.bBudget;
        bg.m_iWert = topf.iWert;
        bg.m_bAktiv = topf.bAktiv;
        bg.m_iBw = 25000;
    }
}

void FuelleFeiertage(CHVMCf & cf) {
    CHoliday kalender = KalenderFuer(*FindeBundesland("NW"));
    kalender.m_bRosenmontag = true;
    for (std::size_t i = 0; i < std::size(FEIERTAGSSCHALTER); ++i)
        cf.m_abFeiertag[i] = kalender.*FEIERTAGSSCHALTER[i];
}

} // namespace

bool SchreibeHvmMuster(CZeilenspeicher & speicher, const std::vector<CString> & vMandanten, int iVonJahr,
                       int iBisJahr) {
    CMxDatabase datenbank(false);
    datenbank.Verbinde(std::shared_ptr<CZeilenspeicher>(&speicher, [](CZeilenspeicher *) {}));
    CHVMCf cf;
    cf.m_ParPool = CTParPool(datenbank);
    cf.m_bKCHMitIP = cf.m_bKFOMitLab = cf.m_bPARMitLab = cf.m_bPrimaerTrennung = cf.m_bErsatzTrennung = true;
    cf.m_bMitFremd = cf.m_bMitBPG9 = cf.m_bKBRFallgruppen = true;
    for (const CString & sMandant : vMandanten) {
        FuelleToepfe(cf, sMandant);
        for (int iJahr = iVonJahr; iJahr <= iBisJahr; ++iJahr)
            cf.m_vUrParam.push_back(Jahr(sMandant, Jahrestext(iJahr), sMandant == vMandanten.front()));
    }
    for (const char * pLeistung : LEISTUNGEN)
        cf.m_vLeistungen.push_back(AusUtf8(pLeistung));
    FuelleFeiertage(cf);
    cf.WriteParPool();
    if (!cf.Gespeichert()) return false;
    cf.WriteFt();
    return cf.Gespeichert();
}

} // namespace orvostat
