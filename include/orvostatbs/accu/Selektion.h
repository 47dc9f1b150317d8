// What a statistic shall count: the selection that a screen sets before a run.
//
// The fields stand once, in Selektion.def, with their meaning; the struct and the accessors are made from that list.
// A setter stores and checks nothing, except where it is written out below; texts that should be numbers or dates are
// read when a filter asks for them, and what is no number reads as 0.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

namespace orvostat {

// How orthodontic cases are wanted; passed through to the screens, never compared here.
enum KZVKFO : std::int32_t { KZVKFO_OHNE = 0, KZVKFO_MIT = 1, KZVKFO_NUR = 2 };

// How a setter takes a field: letters, flags and numbers by value.
template <class T> using CSetzwert = std::conditional_t<std::is_trivially_copyable_v<T>, T, const T &>;

struct SSelektion {
#define FELD(TYP, NAME, SETTER, START) TYP NAME = START;
#define PAAR(SETTER, ERSTES, ZWEITES) CString ERSTES, ZWEITES;
#define EIGEN(TYP, NAME, START) TYP NAME = START;
#include "orvostatbs/accu/Selektion.def"

    friend bool operator==(const SSelektion &, const SSelektion &) = default;
};

class CSelektion {
public:
#define FELD(TYP, NAME, SETTER, START)                                                                       \
    void Set##SETTER(CSetzwert<TYP> wert) { m_Selekt.NAME = wert; }                                          \
    [[nodiscard]] TYP Get##NAME() const { return m_Selekt.NAME; }
#define PAAR(SETTER, ERSTES, ZWEITES)                                                                        \
    void Set##SETTER(const CString & sErstes, const CString & sZweites) {                                    \
        m_Selekt.ERSTES = sErstes;                                                                           \
        m_Selekt.ZWEITES = sZweites;                                                                         \
    }                                                                                                        \
    [[nodiscard]] CString Get##ERSTES() const { return m_Selekt.ERSTES; }                                    \
    [[nodiscard]] CString Get##ZWEITES() const { return m_Selekt.ZWEITES; }
#define EIGEN(TYP, NAME, START)
#include "orvostatbs/accu/Selektion.def"

    // The argument's leading number in two places, " 0" where there is none; an empty text stays empty.
    void SetMandant(const CString & sMandant);
    void SetPraxisId(const CString & sPraxisId);
    [[nodiscard]] CString GetMandant() const { return m_Selekt.Mandant; }
    [[nodiscard]] CString GetPraxisId() const { return m_Selekt.PraxisId; }

    void SetLebs(const std::vector<CString> & vLebs) { m_Selekt.Lebs = vLebs; }
    [[nodiscard]] const std::vector<CString> & GetLebs() const { return m_Selekt.Lebs; }
    // The treaters of the selection as a list for queries: each in apostrophes, commas between, no blank.
    [[nodiscard]] CString GetLebsListe() const { return AlsListe(m_Selekt.Lebs); }

    // The number right-aligned in ten places, its last ten digits if it is longer; an empty text stays empty.
    void SetPatient(const CString & sPatient);
    [[nodiscard]] CString GetPatient() const { return m_Selekt.Patient; }

    void SetPatUeber(const CString & sPatUeber) { m_Selekt.PatUeber = sPatUeber; }

    // The recall that is wanted: its kind, its interval digit, the day (YYYYMMDD) before which the last one lies; see
    // CStatAccu::PatRecallOk.
    void SetRecallData(const CString & sArt, const CString & sIntervall, const CString & sLast);
    [[nodiscard]] CString GetRecallArt() const { return m_Selekt.RecallArt; }
    [[nodiscard]] CString GetRecallIntervall() const { return m_Selekt.RecallIntervall; }
    [[nodiscard]] CString GetRecallLast() const { return m_Selekt.RecallLast; }

    // A negative number is stored as 0.
    void SetHatLstArt(int i) { m_Selekt.HatLstArt = i < 0 ? 0 : i; }
    void SetOhneLstArt(int i) { m_Selekt.OhneLstArt = i < 0 ? 0 : i; }
    void SetHatLstAbg(int i) { m_Selekt.HatLstAbg = i < 0 ? 0 : i; }
    void SetOhneLstAbg(int i) { m_Selekt.OhneLstAbg = i < 0 ? 0 : i; }
    [[nodiscard]] int GetHatLstArt() const { return m_Selekt.HatLstArt; }
    [[nodiscard]] int GetOhneLstArt() const { return m_Selekt.OhneLstArt; }
    [[nodiscard]] int GetHatLstAbg() const { return m_Selekt.HatLstAbg; }
    [[nodiscard]] int GetOhneLstAbg() const { return m_Selekt.OhneLstAbg; }

    // The first character counts; none is the empty text.
    void SetStdKTraeger(const CString & s) { m_Selekt.StdKTraeger = s.Erstes(); }
    void SetGipsArt(const CString & s) { m_Selekt.GipsArt = s.Erstes(); }
    [[nodiscard]] CString GetStdKTraeger() const { return AlsText(m_Selekt.StdKTraeger); }
    [[nodiscard]] CString GetGipsArt() const { return AlsText(m_Selekt.GipsArt); }

    // The range in which the care level ends.
    void SetEndePflegegradVon(CString sDatum) { m_Selekt.EndePflegegradVon = std::move(sDatum); }
    void SetEndePflegegradBis(CString sDatum) { m_Selekt.EndePflegegradBis = std::move(sDatum); }
    [[nodiscard]] CString GetEndePflegegradVon() const { return m_Selekt.EndePflegegradVon; }
    [[nodiscard]] CString GetEndePflegegradBis() const { return m_Selekt.EndePflegegradBis; }

    // Whether the physicians' fee rows are read; see CStatAccu::SetArzt.
    [[nodiscard]] bool GetArzt() const { return m_Selekt.Arzt; }

    // True when no kinds are selected or c is one of them.
    [[nodiscard]] bool PwLArtOk(CChar c) const;
    // True when every service is wanted or c is "1".
    [[nodiscard]] bool OnlyAbrechenbareOk(CChar c) const;

    // All fields at once, for copying and comparing selections.
    [[nodiscard]] const SSelektion & Selektion() const { return m_Selekt; }

protected:
    // Every field to its start, except OhneKchSach and Arzt, which stay.
    void LeereSelektion();
    // Numbers as a list for queries, each in apostrophes with commas between them.
    [[nodiscard]] static CString AlsListe(const std::vector<CString> & vNummern);

    SSelektion m_Selekt;

private:
    static CString AlsText(char c) { return c == 0 ? CString() : CString(c); }
};

} // namespace orvostat
