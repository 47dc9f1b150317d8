#include "Praxis.h"

#include "Ausgabeziel.h"
#include "Datenbank.h"

#include "orvostatbs/host/Datum.h"
#include "orvostatbs/host/TabellenPatient.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/host/Textfunktionen.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <iterator>

namespace orvostat {

namespace {

constexpr std::string_view WOCHENTAGE[] = {"mo", "di", "mi", "do", "fr", "sa", "so"};

void Verbinde(const std::shared_ptr<CZeilenspeicher> & pSpeicher) {
    dbDatabase.Verbinde(pSpeicher);
    dbDatabaseRO.Verbinde(pSpeicher);
}

} // namespace

void Verweigere(const std::string & sMeldung) {
    std::cerr << sMeldung << '\n';
    throw CLI::RuntimeError(ENDE_FEHLER);
}

CPraxis::CPraxis(const std::string & sDatei, EModus eModus) { Verbinde(OeffnePraxis(sDatei, eModus)); }

void FuegePraxisHinzu(CLI::App & app, std::string & sDatei) {
    const auto Setze = [&sDatei](const std::string & sPraxis) { sDatei = MitPraxis(sDatei, sPraxis); };
    app.add_option_function<std::string>("--praxis", Setze,
                                         "Die Praxis, wo die Datenbank auf dem Server mehrere hat")
        ->type_name("ID")
        ->group(AUSGABEGRUPPE); // a saved selection does not name it
}

CPraxis::~CPraxis() { Verbinde(nullptr); }

void VerweigereNachLesefehler(const std::string & sFolge) {
    if (dbDatabase.Fehlschlaege() + dbDatabaseRO.Fehlschlaege() == 0) return;
    const std::string sGrund = Fehlergrund(dbDatabaseRO.Speicher().get());
    const bool bDatei = dynamic_cast<const CSqliteSpeicher *>(dbDatabaseRO.Speicher().get()) != nullptr;
    Verweigere(std::string("UNVOLLSTÄNDIG. Die ") + (bDatei ? "Datei" : "Praxis") +
               " ist nicht vollständig lesbar" + (sGrund.empty() ? "" : ": " + sGrund) + ". " + sFolge +
               (bDatei ? "\"orvostat check\" zeigt die Schäden." : ""));
}

void VerweigereFehlendes(const std::string & sMeldung) {
    VerweigereNachLesefehler();
    Verweigere(sMeldung);
}

std::vector<CString> Mandanten() {
    std::vector<CString> v;
    CTMandant mandant(dbDatabaseRO);
    for (int i = mandant.GetValidMandant(CString()); i == ZEILE_OK; i = mandant.Next())
        v.push_back(mandant.m_MDID);
    return v;
}

CString MandantOderErster(const std::string & sMandant) {
    const std::vector<CString> v = Mandanten();
    if (v.empty()) VerweigereFehlendes("Die Praxis hat keinen Praxisinhaber.");
    if (sMandant.empty()) return RightFix(v.front(), 2);
    const CString sId = RightFix(AusUtf8(sMandant), 2);
    const bool bBekannt = std::ranges::any_of(v, [&](const CString & s) { return RightFix(s, 2) == sId; });
    if (!bBekannt) VerweigereFehlendes("Die Praxis hat keinen Praxisinhaber \"" + sMandant + "\".");
    return sId;
}

CString PruefePatient(const std::string & sPatient) {
    CTPat pat(dbDatabaseRO);
    const CString sNr = RightFix(AusUtf8(sPatient), 10);
    if (pat.GetByPatNr(sNr) != 0) VerweigereFehlendes("Einen Patienten \"" + sPatient + "\" gibt es nicht.");
    return sNr;
}

CString PruefeBehandler(const std::string & sBehandler) {
    CTLeb leb(dbDatabaseRO);
    leb.m_LEB = RightFix(AusUtf8(sBehandler), 4);
    if (leb.GetByK1() != 0) VerweigereFehlendes("Einen Behandler \"" + sBehandler + "\" gibt es nicht.");
    return leb.m_LEB;
}

std::vector<CString> PruefeBehandlerliste(const std::string & sListe) {
    std::vector<CString> v;
    SeparatedStrToVec(AusUtf8(sListe), ',', v);
    for (CString & sLeb : v)
        sLeb = PruefeBehandler(Trim(sLeb).Utf8());
    return v;
}

CString LiesDatum(const std::string & sText) {
    std::string s = sText;
    const bool bIso = s.size() == 10 && s[4] == '-' && s[7] == '-';
    if (bIso) std::erase(s, '-');
    const CString sDatum = Date2Db(AusUtf8(s));
    if (!GueltigesDatum(sDatum) || (bIso && s.size() != 8))
        throw CLI::ValidationError('"' + sText +
                                   "\" ist kein Tag, erwartet wird TT.MM.JJJJ, JJJJ-MM-TT oder JJJJMMTT");
    return sDatum;
}

void PruefeFolge(const std::string & sOption, const CString & sVon, const CString & sBis) {
    if (!sBis.IsEmpty() && sBis < sVon) throw CLI::ValidationError(sOption, "das Ende liegt vor dem Anfang");
}

std::vector<std::string> WochentagKuerzel() { return {std::begin(WOCHENTAGE), std::end(WOCHENTAGE)}; }

int WochentagNummer(std::string_view sKuerzel) {
    const auto it = std::ranges::find(WOCHENTAGE, sKuerzel);
    if (it == std::end(WOCHENTAGE)) return 0;
    const int iAbMontag = static_cast<int>(it - std::begin(WOCHENTAGE));
    return iAbMontag == 6 ? 1 : iAbMontag + 2;
}

} // namespace orvostat
