// The given names in the global namespace, for screens that are written against them.
//
// Everything of this library stands in namespace orvostat, so that it links beside any other, whatever that calls its
// classes. A screen that says CString and CStatAccu without a namespace includes this header instead of orvostatbs.h:
//
//   #include "orvostatbs/global.h"
//   CStatAccu accu;
#pragma once

#include "orvostatbs/orvostatbs.h"

// Values and texts
using orvostat::CChar;
using orvostat::CDBetrag;
using orvostat::CDPw;
using orvostat::CMxDate;
using orvostat::CMxField;
using orvostat::CString;
using orvostat::CVzW7Betrag;
using orvostat::CW7Betrag;
using orvostat::CWBetrag;
using orvostat::CWBetragBasis;
using orvostat::operator""_t;

// Helpers for texts, dates and files
using orvostat::Blank;
using orvostat::CorrectGebDate;
using orvostat::Date2Db;
using orvostat::Db2Date;
using orvostat::DbDate2Quartal;
using orvostat::FileExists;
using orvostat::GetMidStr;
using orvostat::GetMxDate;
using orvostat::GetMxTime;
using orvostat::GetOrvoDataPath;
using orvostat::GetOrvoExePath;
using orvostat::GleichesQuartal;
using orvostat::ismxdigit;
using orvostat::itoc;
using orvostat::LastDayI;
using orvostat::LeftFix;
using orvostat::MulDiv;
using orvostat::QuartalsAnfang;
using orvostat::QuartalsEnde;
using orvostat::RemoveBlanks;
using orvostat::ReplaceCharWith;
using orvostat::RightFix;
using orvostat::SeparatedStrToVec;
using orvostat::StrToExt;
using orvostat::Trim;
using orvostat::TrimRight;
using orvostat::UStKey2MwStSatz;

// Files, on disk and in the practice's own store
using orvostat::CDBFile;
using orvostat::CDBFileFind;
using orvostat::CDBIniFile;
using orvostat::CDBStdioFile;
using orvostat::CFile;
using orvostat::CFileException;
using orvostat::CFileFind;
using orvostat::CIniFile;
using orvostat::CStdioFile;
using orvostat::DeleteFileDB;
using orvostat::FileExistsDB;
using orvostat::GetDatFilePath;
using orvostat::vdsetprofilestring1;

// The user
using orvostat::BeginWaitCursor;
using orvostat::CWaitCursor;
using orvostat::CWnd;
using orvostat::EndWaitCursor;
using orvostat::Halt;
using orvostat::HaltE;
using orvostat::HaltI;
using orvostat::HWND;
using orvostat::MxHaltE;
using orvostat::OrvoCloseProgressBox;
using orvostat::OrvoOpenProgressBox;
using orvostat::OrvoUpdateProgressBox2;
using orvostat::SollIch;

// Settings of the host
using orvostat::dbLfdWorkstation;
using orvostat::dbMdId;
using orvostat::dbMKGVersion;
using orvostat::dbPId;
using orvostat::dbPraxisId;
using orvostat::dbPraxisLeb;

// The record layer
using orvostat::CAutoRSet;
using orvostat::CMxDatabase;
using orvostat::CMxRSet;
using orvostat::COrvoRSetEx;
using orvostat::dbDatabase;
using orvostat::dbDatabaseRO;
using orvostat::FULLNAMECONST;
using orvostat::GetSPEntries;
using orvostat::MatchMode;
using orvostat::OPENTYPE;
using orvostat::SSelectPool;
using enum orvostat::MatchMode;
using enum orvostat::OPENTYPE;
using enum orvostat::FULLNAMECONST;

// Tables and their fields
using orvostat::CBefunde;
using orvostat::CHMVRecord;
using orvostat::CHMVRecord_Fields;
using orvostat::CTABefund;
using orvostat::CTABefund_Fields;
using orvostat::CTAdr;
using orvostat::CTAdr_Fields;
using orvostat::CTBeh;
using orvostat::CTBeh_Fields;
using orvostat::CTBill;
using orvostat::CTBill_Fields;
using orvostat::CTFakt;
using orvostat::CTFakt_Fields;
using orvostat::CTGips;
using orvostat::CTGips_Fields;
using orvostat::CTGLBloc;
using orvostat::CTGLBloc_Fields;
using orvostat::CTGLBlocEntry;
using orvostat::CTGLBlocEntry_Fields;
using orvostat::CTGLKuFakt;
using orvostat::CTGLKuFakt_Fields;
using orvostat::CTGO;
using orvostat::CTGO_Fields;
using orvostat::CTGoBudget;
using orvostat::CTGoBudget_Fields;
using orvostat::CTGoCheck;
using orvostat::CTGoCheck_Fields;
using orvostat::CTGoPunkte;
using orvostat::CTGoPunkte_Fields;
using orvostat::CTHistRecall;
using orvostat::CTHistRecall_Fields;
using orvostat::CTIcd;
using orvostat::CTKTraeger;
using orvostat::CTKTraeger_Fields;
using orvostat::CTKzv;
using orvostat::CTKzv_Fields;
using orvostat::CTLBlock;
using orvostat::CTLBlock_Fields;
using orvostat::CTLBlockEntry;
using orvostat::CTLBlockEntry_Fields;
using orvostat::CTLeb;
using orvostat::CTLeb_Fields;
using orvostat::CTMandant;
using orvostat::CTMandant_Fields;
using orvostat::CTMandantAdr;
using orvostat::CTOrvoKas;
using orvostat::CTOrvoKas_Fields;
using orvostat::CTParPool;
using orvostat::CTParPool_Fields;
using orvostat::CTPat;
using orvostat::CTPat_Fields;
using orvostat::CTPersonal;
using orvostat::CTPersonal_Fields;
using orvostat::CTPersonalAdr;
using orvostat::CTPlan;
using orvostat::CTPlan_Fields;
using orvostat::CTPraxis;
using orvostat::CTPraxis_Fields;
using orvostat::CTPunktWert;
using orvostat::CTPunktWert_Fields;
using orvostat::CTPwGroup;
using orvostat::CTPwGroup_Fields;
using orvostat::CTRezept;
using orvostat::CTRezept_Fields;
using orvostat::CTRoeBefund;
using orvostat::CTRoeBefund_Fields;
using orvostat::CTSelectPool;
using orvostat::CTSelectPool_Fields;
using orvostat::CTTbEntry;
using orvostat::CTTbEntry_Fields;
using orvostat::CTVDesc;
using orvostat::CTVDesc_Fields;
using orvostat::SEGKVersichertenstammdaten;
using orvostat::StringToEGKVersichertenstammdaten;

// Records of a run
using orvostat::CBehErrors;
using orvostat::CBehHitLine;
using orvostat::CBill;
using orvostat::CGipsHitLine;
using orvostat::CGlabFaktHitLine;
using orvostat::CGlabHitLine;
using orvostat::CGOStruct;
using orvostat::CHVMLstStruct;
using orvostat::CKas;
using orvostat::CLebStruct;
using orvostat::CMdStruct;
using orvostat::CPat;
using orvostat::CPlan;
using orvostat::CPw;
using orvostat::CPwGrp;
using orvostat::CQueryTeeth;
using orvostat::CRechHitLine;
using orvostat::CSPData;
using orvostat::CSucheLstStruct;
using orvostat::CSucheTbStruct;
using orvostat::CVDesc;
using orvostat::CVerordnungHitLine;
using orvostat::CWPFMatrixBase;
using orvostat::GetGOPosLstNr;
using orvostat::IstKGSachLeistung;
using orvostat::IstPrivatSachLeistung;
using orvostat::IstSachLeistung;
using orvostat::SucheGO;
using orvostat::SucheLstStructGoArten;

// The accumulator
using orvostat::CStatAccu;
using orvostat::KZVKFO;
using enum orvostat::KZVKFO;

// Calendar and fee distribution
using orvostat::CFerien;
using orvostat::CHoliday;
using orvostat::CHVMBgParam;
using orvostat::CHVMCf;
using orvostat::CHVMUrParam;
using orvostat::CWPFApplication;
using orvostat::NaechsterArbeitstag;
using orvostat::SetWPFHolidays;

// Statistic files
using orvostat::CFile2Stat;
using orvostat::COrvo2Excel;
using orvostat::CStat2File;
using orvostat::CStatEval;
using orvostat::CStatEval2;
using orvostat::CStatLines;
using orvostat::CZwSich2File;
using orvostat::GetOrvoStatPath;
using orvostat::GetOrvoStatWSPath;
using orvostat::iERR_SICHERUNG;
using orvostat::iEXPERTENSTATISTIK;
using orvostat::iFS_SICHERUNG;
using orvostat::iFSSTATISTIK;
using orvostat::iGA_SICHERUNG;
using orvostat::iGB_SICHERUNG;
using orvostat::iGIPS_SICHERUNG;
using orvostat::iGLAB_SICHERUNG;
using orvostat::iGOZ_SICHERUNG;
using orvostat::iHVM_SICHERUNG;
using orvostat::iKASSTATISTIK;
using orvostat::iKZV_SICHERUNG;
using orvostat::iLS_SICHERUNG;
using orvostat::iLSTSTATISTIK;
using orvostat::iLU_SICHERUNG;
using orvostat::iMD_SICHERUNG;
using orvostat::iPS_SICHERUNG;
using orvostat::iQS_SICHERUNG;
using orvostat::iRB_SICHERUNG;
using orvostat::iRS_SICHERUNG;
using orvostat::iSU_SICHERUNG;
using orvostat::iTAGESPROTOKOLL;
using orvostat::iTP_SICHERUNG;
using orvostat::iTS_SICHERUNG;
using orvostat::iUEW_SICHERUNG;
using orvostat::OrvoStartExcel;
using orvostat::VarNames;

// Service statistics
using orvostat::CFallJeQuartal;
using orvostat::CKasArt100F;
using orvostat::CLastFall;
using orvostat::CLSBehLstGrp;
using orvostat::CLSKasLstGrp;
using orvostat::CLSLst;
using orvostat::CLSLstGrp;
using orvostat::CLSPxLstGrp;
using orvostat::CLSSum;
using orvostat::CPx100F;
using orvostat::CPxLstGrp;
using orvostat::CVerhLst;
using orvostat::FindFallImQuartal;
using orvostat::FindFallImQuartalMitAbrArt;
using orvostat::KAS_GRP_SEL;
using orvostat::STATKASGRP;
using enum orvostat::STATKASGRP;

// Plan statistics
using orvostat::CStatZE;
