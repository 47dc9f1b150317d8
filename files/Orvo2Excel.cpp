#include "orvostatbs/files/Orvo2Excel.h"

#include "orvostatbs/host/Arbeitsplatz.h"
#include "orvostatbs/host/Datum.h"

namespace orvostat {

namespace {

constexpr int TABELLENPROGRAMM = 2;
constexpr int FENSTER_ZEIGEN = 5;

// The spreadsheet program's path; false if there is none.
bool Programmpfad(CString & sPfad) {
    auto * const pFunktion = LadeFunktionAls<bool(int, CString &)>("orvofremd"_t, "GetFremdProgPath"_t);
    return pFunktion != nullptr && pFunktion(TABELLENPROGRAMM, sPfad);
}

CString InAnfuehrung(const CString & s) { return "\"" + s + "\""; }

// The workbook that plots; empty for a kind that there is none of.
CString Plotvorlage(int iArt, int iVersion) {
    if (iArt == 1 && iVersion == 2007) return "orvoexcelplotbycolumns2007.xls"_t;
    if (iArt == 1) return "orvoexcelplotbycolumns.xls"_t;
    return iArt == 0 ? "orvoexcelplotbyrows.xls"_t : CString();
}

} // namespace

CString COrvo2Excel::TempDatei(const CString & sEndung) const {
    CString sPfad = TempPfad();
    if (sPfad.Right(1) != "\\") sPfad += '\\';
    sPfad += m_sDateiName + sEndung;
    AddDeleteOrvoTempFile(sPfad);
    return sPfad;
}

bool COrvo2Excel::CreateSelektionsFile(const CString & sFile) {
    const CStatAccu & accu = *m_pFilter;
    const struct {
        CString sAbschnitt, sSchluessel, sWert;
    } aKeys[] = {
        {"[Allgemein]"_t, "Statistikart"_t, m_sStatistikart},
        {"[Allgemein]"_t, "Erstellungsdatum"_t, Db2Date(GetMxDate())},
        {"[Allgemein]"_t, "Erstellungszeit"_t, GetMxTime()},
        {"[Allgemein]"_t, "Waehrung"_t, m_cWaehrung == ' ' ? CString("DM") : CString("€")},
        {"[Selektion]"_t, "DatumVon"_t, Db2Date(accu.GetAbDatum())},
        {"[Selektion]"_t, "DatumBis"_t, Db2Date(accu.GetBisDatum())},
        {"[Selektion]"_t, "Praxisinhaber"_t, m_sMandant},
        {"[Selektion]"_t, "Behandler"_t, m_sLeb},
        {"[Selektion]"_t, "Patient"_t, m_sPatient},
        {"[Selektion]"_t, "Kasse"_t, m_sKasse},
        {"[Selektion]"_t, "Kassengruppe"_t, accu.GetKasStat()},
        {"[Selektion]"_t, "PatSelektion"_t, accu.GetPatSelekt()},
    };
    for (const auto & key : aKeys)
        if (vdsetprofilestring1(sFile, key.sAbschnitt, key.sSchluessel, key.sWert) != PROFIL_OK) return false;
    return true;
}

CString COrvo2Excel::FormatBetrag(CDBetrag betrag) {
    if (betrag.IsZero()) return {};
    return betrag.ToW(m_cWaehrung).ToExt(0, false);
}

bool COrvo2Excel::StartExcel() {
    CString sProgramm;
    if (!Programmpfad(sProgramm) || !WriteDaten()) return false;
    const CString sZiel = GetDatFilePath("Orvo2Excel.xls"_t);
    NimmSchreibschutz(sZiel);
    KopiereDatei(m_sVorlage, sZiel, false);
    auto * const pStarte = LadeFunktionAls<void(const CString &)>("orvocockpit"_t, "OrvoCockpitExcel"_t);
    if (pStarte != nullptr) pStarte(InAnfuehrung(sProgramm) + " " + InAnfuehrung(sZiel));
    return true;
}

bool COrvo2Excel::StartExcel(const CString & sFile, int iArt, int iVersion) {
    CString sProgramm;
    if (!Programmpfad(sProgramm)) return false;
    const CString sVorlage = Plotvorlage(iArt, iVersion);
    if (sVorlage.IsEmpty()) return false;
    WinExec(InAnfuehrung(sProgramm) + " /e" + InAnfuehrung(sFile) + " " +
                InAnfuehrung(GetOrvoExePath() + sVorlage),
            FENSTER_ZEIGEN);
    return true;
}

bool OrvoStartExcel(const CString & sFile, int iArt, int iVersion) {
    return COrvo2Excel::StartExcel(sFile, iArt, iVersion);
}

} // namespace orvostat
