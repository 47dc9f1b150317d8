// The vocabulary of the statistic files: 220 column titles, and which of them a file of each kind has.
//
// A statistic file has a title line, and behind it a line for each hit with the same columns. A title's number is its
// place in VarNames; a layout lists numbers in the order of the columns and ends with -1. Every layout begins with ART,
// the kind of a line. Numbers, titles and layouts are part of the file format and never change.
#pragma once

namespace orvostat {

// The titles. Slots 220 to 223 are null: 220 to 222 are columns without a title, which only iLU_SICHERUNG has.
extern const char * const (&VarNames)[224];

// The layouts. They are not to be changed; a writing class hands one to the evaluator as it is.
// Error lines of any file; the one layout the library itself uses.
extern int (&iERR_SICHERUNG)[11 + 1];
// Patient, recall and treatment columns with tooth search criteria and pocket depths.
extern int (&iQS_SICHERUNG)[39 + 1];
// Invoices of a commercial laboratory to the practice: lines of kind "W".
extern int (&iGLAB_SICHERUNG)[18 + 1];
// Only the line kind.
extern int (&iMD_SICHERUNG)[1 + 1];
// Plaster models: lines of kind "I".
extern int (&iGIPS_SICHERUNG)[14 + 1];
// Treatment columns with patient sex and the fee-schedule statistic group.
extern int (&iGA_SICHERUNG)[32 + 1];
// Sum lines by service group with the number of cases.
extern int (&iFSSTATISTIK)[8 + 1];
// Invoices: lines of kind "R".
extern int (&iRS_SICHERUNG)[27 + 1];
// Material book: lines of kind "G".
extern int (&iGB_SICHERUNG)[25 + 1];
// Treatment hits with patient, finding, insurance period, point value and statistic groups.
extern int (&iFS_SICHERUNG)[57 + 1];
// Treatment search with patient address and ICD code.
extern int (&iSU_SICHERUNG)[47 + 1];
// Private fee-schedule (GOZ) evaluation with the invoice sums.
extern int (&iGOZ_SICHERUNG)[32 + 1];
// Sum lines by service with shares of treater and practice.
extern int (&iLSTSTATISTIK)[12 + 1];
// Treatment hits with commission group and value, laboratory and patient flags and batch number.
extern int (&iTS_SICHERUNG)[35 + 1];
// Laboratory sums of a treatment by VAT rate.
extern int (&iLU_SICHERUNG)[30 + 1];
// Fee-distribution (HVM) sum lines with case counters.
extern int (&iHVM_SICHERUNG)[22 + 1];
// Referrals: patient, last visit, referring doctor, insurer period.
extern int (&iUEW_SICHERUNG)[21 + 1];
// Patient statistic: lines of kind "P".
extern int (&iPS_SICHERUNG)[40 + 1];
// Treatments for the dentists' association billing (KZV) with hundred-case values.
extern int (&iKZV_SICHERUNG)[42 + 1];
// X-ray book.
extern int (&iRB_SICHERUNG)[29 + 1];
// Service statistic hits with insurer groups and case count.
extern int (&iLS_SICHERUNG)[45 + 1];
// Treatment hits with the fullest column set, with check times and ICD notation mark.
extern int (&iTP_SICHERUNG)[63 + 1];
// Sum lines by insurer with values per case and shares.
extern int (&iKASSTATISTIK)[13 + 1];
// Only the line kind.
extern int (&iEXPERTENSTATISTIK)[1 + 1];
// Day protocol sum lines.
extern int (&iTAGESPROTOKOLL)[5 + 1];

} // namespace orvostat
