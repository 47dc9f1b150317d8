// The program's commands, in the order in which the help names them. Each function adds its command to the program.
#pragma once

#include <CLI/CLI.hpp>

namespace orvostat {

void FuegeMusterHinzu(CLI::App & app);      // sample: makes a sample practice
void FuegeHitsHinzu(CLI::App & app);        // hits: the hits of a practice's treatments
void FuegeRunHinzu(CLI::App & app);         // run: a valued run
void FuegeLeistungenHinzu(CLI::App & app);  // leistungen: the service statistic of practice and treaters
void FuegeHundertHinzu(CLI::App & app);     // hundert: services per hundred cases against the norms
void FuegeKassenHinzu(CLI::App & app);      // kassen: insurers and selections of them
void FuegeZeplanHinzu(CLI::App & app);      // zeplan: block amounts and sample entries of a denture plan
void FuegeBerichtHinzu(CLI::App & app);     // bericht: all of these as a page to look at and to print
void FuegeGespeichertHinzu(CLI::App & app); // gespeichert: the saved statistics
void FuegeOeffnenHinzu(CLI::App & app);     // oeffnen: shows one of them
void FuegeVergleichenHinzu(
    CLI::App & app); // vergleichen: what differs between two, or one and the practice of today
void FuegePruefenHinzu(CLI::App & app);  // pruefen: whether one is as it was written
void FuegeTabelleHinzu(CLI::App & app);  // tabelle: hands one over to a spreadsheet program
void FuegeExplainHinzu(CLI::App & app);  // explain: where the amounts of a day come from
void FuegePruefungHinzu(CLI::App & app); // check: looks for what is wrong in a practice file
void FuegeKopieHinzu(CLI::App & app);    // copy: copies a practice file table by table
void FuegeHvmHinzu(CLI::App & app);      // hvm: shows and changes the fee-distribution configuration
void FuegeKalenderHinzu(CLI::App & app); // kalender, arbeitstage, naechster: about days

} // namespace orvostat
