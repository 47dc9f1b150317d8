// The configuration of the fee-distribution statistic (HVM, Honorarverteilungsmassstab).
//
// A regional dental association pays a practice out of budgets, the pots: conservative treatment, dentures,
// orthodontics and so on. Which services and insurers fill which pot differs from region to region and from year to
// year, so these rules are no code but settings: some forty switches, the pots of each practice owner with their
// selections, the working days and vacations of each owner and year, a list of services, and the holidays of the
// practice's federal state. CHVMCf reads and writes them as rows of the parameter pool, group 53; what the settings
// mean to the pots is the screens' business. docs/hvm.md shows the rows.
//
// Rows of former versions load; a malformed value gives zero or false fields, never an error. A row that the store
// could not give reads like one that is missing, but then nothing is written any more. One thread.
#pragma once

#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/TabellenPraxis.h"

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

namespace orvostat {

// The two rows of switches.
enum class EHvmZeile { Einstell, EinstellX };

// How the character of a switch is read.
enum class EHvmLesen {
    Zahl,        // on if it is a digit other than "0"
    AusserNull,  // on unless it is "0", also where the value is too short
    FehlendWahr, // as Zahl, but on where the value is too short
};

inline constexpr int HVM_GRUPPE = 53;
inline constexpr int HVM_FEIERTAGE = 9;

// The holidays row: its short code, and the switches from its value. Missing characters are off.
[[nodiscard]] CString HvmFeiertagKuerzel();
void LiesHvmFeiertage(const CString & sWert, bool (&abFeiertag)[HVM_FEIERTAGE]);

// One pot of one practice owner.
struct CHVMBgParam {
    CString m_sMandant; // owner, two places as in the row keys: " 1"
    char m_cArt = 0;    // kind, one of CHVMCf::m_sBgArten
    // By group letter: selections by name. The entry without name is the group's main selection.
    std::map<char, std::map<CString, CString>> m_mSel;
    bool m_bBudget = false;
    std::int32_t m_iWert = 1;
    bool m_bAktiv = false;  // the pot counts for GetSelText
    std::int32_t m_iBw = 0; // of the owner, the same in all of his pots

    friend bool operator==(const CHVMBgParam &, const CHVMBgParam &) = default;
};

// One year of one practice owner.
struct CHVMUrParam {
    CString m_sMandant;
    CString m_sJahr;                                                       // YYYY0101; others are not written
    bool m_abArbeitstag[7] = {true, true, true, true, true, false, false}; // Monday first
    // From and to, YYYYMMDD; an end that is no date is empty.
    std::vector<std::pair<CString, CString>> m_vUrlaub;

    friend bool operator==(const CHVMUrParam &, const CHVMUrParam &) = default;
};

// Use: construct; ReadEi, ReadFt and ReadLs once, ReadBg and ReadUr for each owner; change fields; WriteParPool, and
// WriteFt if the holidays changed. The readers of owners append, so call Init before reading anew. Where others may
// change settings at the same time, reading and writing stand in one group, else the later one writes the other's
// change over with what stood before it:
//
//   CMxGruppe gruppe(dbDatabase);
//   if (!gruppe.Offen()) return false; // somebody else is writing, or the store fails
//   CHVMCf cf;
//   cf.ReadEi(), cf.ReadLs();
//   cf.m_bKCHMitIP = true;
//   cf.WriteParPool();
//   return gruppe.Beende(cf.Gespeichert());
//
// An owner's id may be given in any width; keys hold its last two places, filled up with a blank at the left.
//
// WriteParPool and WriteFt each form one group of writes: whatever ends them early, a failing store or a crash, either
// the rows from before the call stand or all new ones. Their result does not tell which; Gespeichert does.
class CHVMCf {
public:
    std::vector<CHVMBgParam> m_vBgParam; // the pots of the owners read so far, 17 for each
    CHVMBgParam m_BgArbeit;              // the pot that is being read
#define SCHALTER(NAME, ZEILE, STELLE, LESEN, START) bool m_b##NAME = START;
#define OHNE(NAME, ZEILE, STELLE, LESEN, START) bool m_b##NAME = START;
#define ZIFFER(NAME, ZEILE, STELLE) std::int32_t m_i##NAME = 0;
#include "orvostatbs/hvm/Schalter.def"

    bool m_abFeiertag[HVM_FEIERTAGE] = {}; // in the order of CHoliday's switches
    CString m_sFeiertag;                   // the holidays row as ReadFt found it
    std::vector<CHVMUrParam> m_vUrParam;
    std::vector<CString> m_vLeistungen;
    CTParPool m_ParPool{dbDatabase};
    CString m_sGruppe;   // " 53"
    CString m_sEinstell; // short codes of the two rows of switches and of the holidays
    CString m_sEinstellX;
    CString m_sFeiertagKey;
    CString m_sBgArten; // the kinds of pots, 17 letters

    // The 19 letters of the groups that a pot's selections can have.
    static const CString s_sBgGruppen;

    CHVMCf();

    // All switches to their start values; no holidays, pots, years and services; Vollstaendig. Rows are not touched.
    void Init();
    // No read has failed since Init. Else fields hold start values in the place of the practice's settings, and
    // WriteFt and WriteParPool leave all rows as they are.
    [[nodiscard]] bool Vollstaendig() const { return m_bVollstaendig; }

    // The switches. False if one of the two rows is missing; its switches then have their start values.
    bool ReadEi();
    // The holidays. False without a row: all are off then, m_sFeiertag stays.
    bool ReadFt();
    // Appends the owner's 17 pots, those without rows with the values of a fresh one. Always true.
    bool ReadBg(const CString & sMandant);
    // Appends the owner's years; vacations of a year that is there already are added to it. Passed over are rows
    // whose year has not four digits, and vacations whose first day has not eight. Always true.
    bool ReadUr(const CString & sMandant);
    // The services, replacing m_vLeistungen; those of one character are passed over. Always true.
    bool ReadLs();

    // The holidays. Always true; see Gespeichert.
    bool WriteFt();
    // Everything else: switches, pots, years, services. Always true; see Gespeichert. Of a year the first five
    // vacations are stored, of a service the first seven characters. Rows of owners, groups and years that are not
    // in the fields stay.
    bool WriteParPool();
    // The rows of the last WriteFt or WriteParPool stand in the store, or will with the caller's group around them;
    // false before the first, and where it was refused since not all had been read.
    [[nodiscard]] bool Gespeichert() const { return m_bGespeichert; }

    // Position of the owner's pot or year in the vectors, the first of several; -1 for none. A year may be given as
    // YYYY.
    [[nodiscard]] int FindBgParam(const CString & sMandant, CChar cArt) const;
    [[nodiscard]] int FindUrParam(const CString & sMandant, CString sJahr) const;

    // There is a row of any kind.
    [[nodiscard]] bool ExistHVMConf();
    // The owner's active pots in words, "KCH+ZE"; kinds without a word are passed over.
    [[nodiscard]] CString GetSelText(const CString & sMandant) const;

#define SCHALTER(NAME, ZEILE, STELLE, LESEN, START)                                                          \
    [[nodiscard]] bool NAME() const { return m_b##NAME; }
#define OHNE(NAME, ZEILE, STELLE, LESEN, START)
#define ZIFFER(NAME, ZEILE, STELLE)
#include "orvostatbs/hvm/Schalter.def"

private:
    // These give false where the store failed; a group of writes ends there.
    bool WriteEi();
    bool WriteFeiertage();
    bool WriteAlles();
    bool WriteBg();
    bool WriteBgGruppe(const CHVMBgParam & bg, char cGruppe, const std::map<CString, CString> & mSel);
    bool WriteUr();
    bool WriteUrJahr(const CHVMUrParam & ur);
    bool WriteLs();
    bool DeleteParPool(const CString & sKuerzel);
    bool DeleteParPoolAll(const CString & sKuerzel);
    bool Schreibe(const CString & sKuerzel, const CString & sWert);
    bool Ersetze(const CString & sKuerzel, const CString & sWert) {
        return DeleteParPool(sKuerzel) && Schreibe(sKuerzel, sWert);
    }

    void SetzeSchalter();
    void SetzeSchluessel(const CString & sKuerzel);
    bool Gelesen(int iErgebnis);
    [[nodiscard]] bool LiesZeile(const CString & sKuerzel, MatchMode mode = MATCH_GENAU);
    void LiesSchalter(EHvmZeile eZeile);
    [[nodiscard]] CString SchalterWert(EHvmZeile eZeile) const;
    void LiesBgGruppe(const CString & sMandant, char cArt, char cGruppe);
    template <class F> void LiesUrZeilen(const CString & sVorsatz, const CString & sMandant, F fUebernimm);
    CHVMUrParam & UrParam(const CString & sMandant, const CString & sJahr);
    void Gruppiert(bool (CHVMCf::*pSchreibe)());

    bool m_bVollstaendig = true;
    bool m_bGespeichert = false;
};

// A switch as Schalter.def describes it. One of the two pointers is null.
struct SHvmSchalter {
    const char * pName; // as the getter is or would be called
    EHvmZeile eZeile;
    int iStelle;
    bool CHVMCf::*pFlag;
    std::int32_t CHVMCf::*pZahl;
    EHvmLesen eLesen;
    bool bStart;
};

inline constexpr SHvmSchalter HVM_SCHALTER[] = {
#define SCHALTER(NAME, ZEILE, STELLE, LESEN, START)                                                          \
    {#NAME, EHvmZeile::ZEILE, STELLE, &CHVMCf::m_b##NAME, nullptr, EHvmLesen::LESEN, START},
#define OHNE SCHALTER
#define ZIFFER(NAME, ZEILE, STELLE)                                                                          \
    {#NAME, EHvmZeile::ZEILE, STELLE, nullptr, &CHVMCf::m_i##NAME, EHvmLesen::Zahl, false},
#include "orvostatbs/hvm/Schalter.def"
};

} // namespace orvostat
