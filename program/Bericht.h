// The figures of a report: all that it shows, worked out once, for whatever writes it.
//
// A report is a list of tables, each with its sentences and, for who draws, a picture of it. A page, a list for a
// spreadsheet and one for a program come from the same tables, and so have the same figures.
#pragma once

#include "Ausgabe.h"

#include "orvostatbs/accu/StatAccu.h"
#include "orvostatbs/lauf/Lauf.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvostat {

struct SBerichttafel {
    std::string sTitel;
    std::vector<SAusgabespalte> vSpalten;
    std::vector<std::vector<CString>> vZeilen; // neutral cells
    std::vector<CString> vSumme = {};          // empty: none
    std::vector<std::string> vSaetze = {};     // behind the table
    std::optional<SBild> bild = {};
};

struct SBericht {
    std::vector<std::string> vEinleitung;
    std::vector<SBerichttafel> vTafeln;
};

// The few figures by which two periods are compared. Amounts in hundred-millionths of a euro.
struct SKernzahlen {
    std::string sName; // "Vorjahr"
    CString sVon;      // the period; empty where it is open
    CString sBis;
    std::int64_t iHits = 0;
    std::int64_t iPatienten = 0;
    std::int64_t iFaelle = 0;
    std::int64_t aiBetrag[3] = {};                     // insurers, private patients, others
    std::map<CString, std::int64_t> mapMonat = {};     // by YYYYMM
    std::map<CString, std::int64_t> mapBehandler = {}; // by number
};
// Those of the hits of an accumulator that the service statistic of sPraxis counts. The hits are put into the order of
// quarters.
[[nodiscard]] SKernzahlen Kernzahlen(const std::string & sName, CStatAccu & accu, const CString & sPraxis);

// A treatment that the selection has and nobody bills, and that no error of the run names.
struct SMangel {
    CString sPatNr, sName, sDatum, sLeistung;
    EWeglassgrund eGrund;
};

struct SBerichtauftrag {
    CString sPraxis;      // the owner's number; empty for all
    std::string sMandant; // the owner whose calendar holds; empty for the first one
    int iGrenze = 40;     // percent above the norm
    bool bMitNamen = false;
    std::optional<SLaufzahlen> zahlen = {}; // of the run, where there was one
    std::vector<SMangel> vMaengel = {};
    std::vector<SKernzahlen> vVergleiche = {};
    std::vector<std::string> vFehlendeSpalten = {}; // that the saved statistic does not have
};

// The practice is open, and accu holds the hits. Patients stand in it by number, by name only where the order wants
// that. The running quarter is that of today.
[[nodiscard]] SBericht ErstelleBericht(CStatAccu & accu, const SBerichtauftrag & auftrag);

void SchreibeBericht(CDokument & dokument, const SBericht & bericht);

} // namespace orvostat
