#include "Befehle.h"

#include "Aufruf.h"
#include "Ausgabe.h"
#include "Ausgabeziel.h"
#include "Dateiablage.h"
#include "Datenbank.h"
#include "EingebetteteDateien.h"
#include "Praxis.h"
#include "Saetze.h"
#include "Satzablage.h"

#include "orvostatbs/files/Arbeitsmappe.h"
#include "orvostatbs/files/Orvo2Excel.h"
#include "orvostatbs/host/Arbeitsplatz.h"
#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include <unistd.h>

namespace orvostat {

namespace {

namespace fs = std::filesystem;

constexpr const char * MAPPE = "Orvo2Excel.xls";
constexpr int FENSTER = 5;

struct STabellenbefehl {
    std::string sDatei;
    std::string sName;
    SSatzoptionen ort;
    std::string sNach; // empty: "tabelle/NAME" beside the practice file
    std::string sProgramm;
    bool bErsetzen = false;
    bool bStarten = false;
};

// ---- the sibling libraries' part: which program there is, and what is to be started

// What the two functions have in common with the command; they are found by name and take nothing else.
struct SProgramm {
    std::string sPfad;
    CString sBefehl;
};
SProgramm & Programm() {
    static SProgramm s_programm;
    return s_programm;
}

bool GetFremdProgPath(int iProgramm, CString & sPfad) {
    sPfad = Pfadtext(Programm().sPfad);
    return iProgramm == 2 && !sPfad.IsEmpty();
}
void OrvoCockpitExcel(const CString & sBefehl) { Programm().sBefehl = sBefehl; }

void Registriere() {
    Bibliotheken().Registriere("orvofremd", "GetFremdProgPath", &GetFremdProgPath);
    Bibliotheken().Registriere("orvocockpit", "OrvoCockpitExcel", &OrvoCockpitExcel);
}

bool IstProgramm(const fs::path & pfad) {
    std::error_code fehler;
    return fs::is_regular_file(pfad, fehler) && access(pfad.c_str(), X_OK) == 0;
}

// The first of LibreOffice's names on the search path.
std::string FindeProgramm() {
    const char * const pSuchpfad = std::getenv("PATH");
    for (const char * pName : {"localc", "soffice", "libreoffice"}) {
        std::istringstream ein(pSuchpfad == nullptr ? "" : pSuchpfad);
        for (std::string sOrdner; std::getline(ein, sOrdner, ':');)
            if (const fs::path pfad = fs::path(sOrdner) / pName;
                fs::path(sOrdner).is_absolute() && IstProgramm(pfad))
                return pfad.string();
    }
    return {};
}

// ---- the hand-over

// The machine itself, but the files stay: the spreadsheet program reads them when this one has ended.
class CBleibend final : public CArbeitsplatz {
public:
    bool StarteProgramm(const CString & sBefehl, int iAnzeige) override {
        return m_innen.StarteProgramm(sBefehl, iAnzeige);
    }
    void MerkeTempDatei(const CString &) override {}
    int SetzeProfil(const CString & sDatei, const CString & sAbschnitt, const CString & sSchluessel,
                    const CString & sWert) override {
        return m_innen.SetzeProfil(sDatei, sAbschnitt, sSchluessel, sWert);
    }

private:
    CArbeitsplatz & m_innen = Arbeitsplatz();
};

// A set's lines in its layout, as somebody reads them.
class CTabelle : public COrvo2Excel {
public:
    CTabelle(CStatAccu & accu, int * pStruct) : COrvo2Excel(nullptr), m_pLayout(pStruct) {
        SetFilter(&accu);
        m_sStatistikart = "LAUF";
        SetMandant(Trim(accu.GetMandant()));
        SetPatient(Trim(accu.GetPatient()));
        SetKasse(accu.GetKasKuerzel());
        CString sLebs;
        for (const CString & sLeb : accu.GetLebs())
            sLebs += (sLebs.IsEmpty() ? CString() : CString(", ")) + Trim(sLeb);
        SetLeb(sLebs);
    }
    [[nodiscard]] bool Abgebrochen() const { return m_bAbgebrochen; }
    int * SetLineStruct() override { return m_pLayout; }
    long GetGesamtPos() override { return static_cast<long>(m_pFilter->m_vBehHits.size()); }
    int DoData(CStdioFile & file, int &) override {
        WriteTitel(file);
        for (const CBehHitLine & hit : m_pFilter->m_vBehHits) {
            if (!DoProgress(++m_lPos, m_lGesamtPos)) {
                m_bAbgebrochen = true;
                return CODE_ABBRUCH;
            }
            m_Line.MoveHit(hit);
            m_Line.PATNAME = hit.PATNAME;
            Lesbar(hit);
            WriteLines(file, m_Line);
        }
        return CODE_OK;
    }

private:
    // Days, amounts and numbers in the forms of the user. Amounts keep all decimals, so that the sheet's sums are those
    // of the run.
    void Lesbar(const CBehHitLine & hit) {
        for (CString CStatLines::*pTag :
             {&CStatLines::DATUM, &CStatLines::VDABDATUM, &CStatLines::VDBISDATUM})
            m_Line.*pTag = Db2Date(m_Line.*pTag);
        m_Line.BETRAG = Betrag(hit.BETRAG);
        m_Line.ZUSCHLAG = Betrag(hit.ZUSCHLAG);
        m_Line.EINFACHSATZ = Betrag(hit.EINFACHSATZ);
        m_Line.PUNKTWERT = MitKomma(GenauZelle(hit.PUNKTWERT));
        m_Line.ANZAHL = MitKomma(DezimalZelle(hit.ANZAHL, 2));
        if (!hit.FAKTOR.IsEmpty()) m_Line.FAKTOR = MitKomma(DezimalZelle(Zahl(hit.FAKTOR), 4));
    }
    CString Betrag(CDBetrag betrag) const { return MitKomma(GenauZelle(betrag.ToW(m_cWaehrung))); }
    static CString MitKomma(CString s) {
        s.Replace('.', ',');
        return s;
    }

    int * m_pLayout;
    bool m_bAbgebrochen = false;
};

// A folder of the hand-over's own, as the directory for both data and temporary files.
SPfade Zielpfade(const STabellenbefehl & befehl) {
    if (befehl.sNach.empty() && IstServer(befehl.sDatei))
        Verweigere("Neben einer Praxis auf dem Server liegt kein Ordner; --nach sagt, wohin.");
    const fs::path ordner = fs::absolute(befehl.sNach.empty() ? fs::absolute(befehl.sDatei).parent_path() /
                                                                    "tabelle" / befehl.sName
                                                              : fs::path(befehl.sNach));
    SPfade pfade = Pfade();
    pfade.sDaten = pfade.sTemp = Verzeichnistext(ordner.string());
    if (Dateipfad(pfade.sDaten) != (ordner / "").string())
        Verweigere('"' + ordner.string() +
                   "\" hat Zeichen, die Windows-1252 fehlen; --nach nennt einen anderen Ordner.");
    std::error_code fehler;
    fs::create_directories(ordner, fehler);
    if (fehler)
        Verweigere('"' + ordner.string() + "\" lässt sich nicht anlegen: " + Systemgrund(fehler.value()) +
                   '.');
    return pfade;
}

void VerlangeFreieNamen(const STabellenbefehl & befehl, const SPfade & pfade) {
    for (const std::string & sDatei : {befehl.sName + ".CSV", befehl.sName + ".INI", std::string(MAPPE)}) {
        const std::string sPfad = Dateipfad(pfade.sDaten) + sDatei;
        std::error_code fehler;
        const fs::file_status status = fs::symlink_status(sPfad, fehler);
        if (fs::exists(status) && !fs::is_regular_file(status))
            Verweigere('"' + sPfad + "\" ist keine gewöhnliche Datei.");
        if (fs::exists(status) && !befehl.bErsetzen)
            Verweigere('"' + sPfad + "\" gibt es schon und wird nicht überschrieben; --force tut auch das.");
    }
}

// The workbook with the hand-over's own marks, to be copied by the engine; gone with the object.
class CVorlage {
public:
    CVorlage(CTabelle & tabelle, const SPfade & pfade)
        : m_sDatei(EigenerName(Dateipfad(pfade.sDaten) + MAPPE)) {
        std::ofstream datei(m_sDatei, std::ios::binary);
        datei << Arbeitsmappe(TABELLENVORLAGE, tabelle.SetLineStruct(), tabelle.GetDatFilename(),
                              tabelle.GetIniFilename());
        datei.close();
        if (!datei) Verweigere('"' + m_sDatei + "\" lässt sich nicht schreiben.");
        tabelle.m_sVorlage = Pfadtext(m_sDatei);
    }
    ~CVorlage() { std::remove(m_sDatei.c_str()); }
    CVorlage(const CVorlage &) = delete;
    CVorlage & operator=(const CVorlage &) = delete;

private:
    std::string m_sDatei;
    CSignalschutz m_schutz{m_sDatei};
};

void Uebergib(const STabellenbefehl & befehl) {
    Programm() = {befehl.sProgramm.empty() ? FindeProgramm() : fs::absolute(befehl.sProgramm).string(), {}};
    if (!IstProgramm(Programm().sPfad))
        Verweigere(
            befehl.sProgramm.empty()
                ? "Auf diesem Rechner ist LibreOffice nicht zu finden; --programm nennt ein Tabellenprogramm."
                : '"' + befehl.sProgramm + "\" ist kein Programm.");
    const CPraxis praxis(befehl.sDatei, EModus::Lesen);
    CStatAccu accu;
    const CSatz satz(befehl.sDatei, befehl.ort, befehl.sName);
    satz.Lies(accu);
    int * const pLayout = satz.Spalten();
    VerweigereNachLesefehler();

    SPfade pfade = Zielpfade(befehl);
    VerlangeFreieNamen(befehl, pfade);
    const CPfadeErsatz anderePfade(pfade);
    CBleibend platz;
    const CArbeitsplatzErsatz andererPlatz(platz);
    const CVertraulich vertraulich;
    Registriere();
    CTabelle tabelle(accu, pLayout);
    tabelle.m_sDateiName = AusUtf8(befehl.sName);
    const CVorlage vorlage(tabelle, pfade);
    if (!tabelle.StartExcel()) throw CLI::RuntimeError(tabelle.Abgebrochen() ? ENDE_ABBRUCH : ENDE_FEHLER);
    if (!fs::exists(Dateipfad(pfade.sDaten) + MAPPE))
        Verweigere("Die Arbeitsmappe lässt sich nicht schreiben.");
    std::cout << Dateipfad(Programm().sBefehl) << '\n';
    if (befehl.bStarten && !WinExec(Programm().sBefehl, FENSTER))
        Verweigere('"' + Programm().sPfad + "\" lässt sich nicht starten.");
}

} // namespace

void FuegeTabelleHinzu(CLI::App & app) {
    const auto pBefehl = std::make_shared<STabellenbefehl>();
    CLI::App * pApp =
        app.add_subcommand("tabelle", "Übergibt eine gespeicherte Statistik an ein Tabellenprogramm");
    pApp->add_option("DATEI", pBefehl->sDatei, "Die Praxisdatei")->required();
    pApp->add_option("NAME", pBefehl->sName, "Name der Statistik")->required();
    FuegeSatzortHinzu(*pApp, pBefehl->ort);
    pApp->add_option("--nach", pBefehl->sNach,
                     "Ordner der Übergabe; sonst tabelle/NAME neben der Praxisdatei")
        ->type_name("ORDNER")
        ->check(NichtLeer())
        ->group(AUSGABEGRUPPE);
    pApp->add_option("--programm", pBefehl->sProgramm,
                     "Das Tabellenprogramm; sonst LibreOffice, wo es gefunden wird")
        ->type_name("PFAD")
        ->check(NichtLeer())
        ->group(AUSGABEGRUPPE);
    pApp->add_flag("--starten", pBefehl->bStarten, "Das Programm gleich starten")->group(AUSGABEGRUPPE);
    pApp->add_flag("--force", pBefehl->bErsetzen, "Eine frühere Übergabe ersetzen")->group(AUSGABEGRUPPE);
    pApp->footer(
        "Geschrieben werden NAME.CSV, NAME.INI und die Arbeitsmappe Orvo2Excel.xls, die beide aufnimmt;\n"
        "gezeigt wird die Befehlszeile, die sie öffnet.");
    pApp->callback([pBefehl] { Uebergib(*pBefehl); });
}

} // namespace orvostat
