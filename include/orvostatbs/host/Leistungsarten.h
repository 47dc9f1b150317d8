// The letters by which fee schedules, bills, point values, proofs and insurers are told apart: what they stand for, and
// the groups that the engine's rules name.
//
// A service has a kind letter (GOART), the fee schedule it comes from, and a sub-kind letter (GOSUBART) within it; a
// bill has a billing kind (ABRART), the branch of dentistry it settles; a point value has a kind (PWLART), which
// follows the branch. 0 is "no letter", belongs to no group and has no name. Letters and groups stand here once.
// Names are German words in UTF-8.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orvostat {

// A set of letters, asked like a function.
class CBuchstaben {
public:
    template <std::size_t N> explicit consteval CBuchstaben(const char (&acBuchstaben)[N]) {
        for (std::size_t i = 0; i + 1 < N; ++i) {
            const unsigned char c = static_cast<unsigned char>(acBuchstaben[i]);
            m_aiBits[c / 64] |= std::uint64_t{1} << (c % 64);
        }
    }
    [[nodiscard]] constexpr bool operator()(char c) const {
        return c != 0 &&
               (m_aiBits[static_cast<unsigned char>(c) / 64] >> (static_cast<unsigned char>(c) % 64) & 1) !=
                   0;
    }

private:
    std::uint64_t m_aiBits[4] = {};
};

// A letter and its name. Letters that the practice gives a meaning have none.
struct SBuchstabe {
    char cBuchstabe;
    const char * pName;
};

// The row of a letter in one of the tables below; null for a letter without.
template <class TZeile, std::size_t N>
[[nodiscard]] constexpr const TZeile * FindeBuchstabe(const TZeile (&aZeilen)[N], char cBuchstabe) {
    for (const TZeile & zeile : aZeilen)
        if (zeile.cBuchstabe == cBuchstabe) return &zeile;
    return nullptr;
}

// ---- GOART: the fee schedules, and their groups

inline constexpr SBuchstabe GEBUEHRENARTEN[] = {
    {'k', "BEMA"},
    {'g', "BEMA"},
    {'q', "GOZ"},
    {'p', "GOÄ"},
    {'a', "Praxismaterial"},
    {'u', "Unfallversicherung"},
    {'1', "Eigenlabor, Kassenliste"},
    {'2', "Fremdlabor, Kassenliste"},
    {'3', "Eigenlabor, frei"},
    {'4', "Metall"},
    {'7', "Technische Leistungen der Praxis"},
    {'8', "Fremdlaborrechnungen"},
};

inline constexpr CBuchstaben IstPrivatArt{"aupq"};    // private fees: factor times simple rate
inline constexpr CBuchstaben IstPunktArt{"befhkg"};   // points times point value
inline constexpr CBuchstaben IstKassenArt{"kg"};      // the insurers' main schedule
inline constexpr CBuchstaben IstGozArt{"pq"};         // the dentists' private schedule
inline constexpr CBuchstaben IstAlternativArt{"efh"}; // point kinds with alternative points
inline constexpr CBuchstaben IstLaborArt{"123456789"};
inline constexpr CBuchstaben IstSachArt{"123487"}; // laboratory kinds that count as material

// ---- groups of GOSUBART

inline constexpr CBuchstaben IstKGSachSubArt{"7856"};
inline constexpr CBuchstaben IstPrivatSachSubArt{"tursnpoq"};

// ---- ABRART: the branches of dentistry, and their groups

// A billing kind: its branch, and what it makes of a service: the statistic kind, where the fee row leaves it open, and
// the kind in the table of point values.
struct SAbrechnungsart {
    char cBuchstabe;
    const char * pName;
    char cStatArt;
    char cPwLArt;
};
// The first row of a branch is its plain kind; the others are finer ones that a run marks.
inline constexpr SAbrechnungsart ABRECHNUNGSARTEN[] = {
    {'c', "KCH", 'a', 'a'}, {'z', "ZE", 'c', 'f'},  {'k', "KFO", 'f', 'i'}, {'m', "KFO", 'f', 'i'},
    {'b', "KBR", 'g', 'h'}, {'4', "KBR", 'g', 'h'}, {'5', "KBR", 'g', 'h'}, {'p', "PAR", 'd', 'g'},
    {'6', "PAR", 'd', 'g'}, {'7', "PAR", 'd', 'g'}, {'8', "PAR", 'd', 'g'}, {'9', "PAR", 'd', 'g'},
    {'i', "IP", 'e', 'j'},
};

// A stored bill has kinds of its own. Those of insurers are small letters, whether or not they stand in the list.
struct SRechnungsart {
    std::string_view sGespeichert; // the letters
    char cAbrArt;
};
inline constexpr SRechnungsart RECHNUNGSARTEN[] = {
    {"1a", 'c'}, {"2b", 'z'}, {"3cp", 'k'}, {"4d", 'b'}, {"5e", 'p'}, {"6", 'i'}, {"78gt", 'e'}, {"n", 'r'},
};
inline constexpr CBuchstaben IstKassenRechnung{"abcdefghijklmnopqrstuvwxyz"};

// The billing kind of a stored one; "s" for all others.
[[nodiscard]] constexpr char AbrArtDerRechnung(char cGespeichert) {
    for (const SRechnungsart & art : RECHNUNGSARTEN)
        if (cGespeichert != 0 && art.sGespeichert.find(cGespeichert) != std::string_view::npos)
            return art.cAbrArt;
    return 's';
}

inline constexpr CBuchstaben IstKfoAbrArt{"km"};    // orthodontics, "m" is multiband
inline constexpr CBuchstaben IstKbrAbrArt{"b45"};   // jaw fractures
inline constexpr CBuchstaben IstParAbrArt{"p6789"}; // periodontics

// ---- PWLART: kinds of point value

// "c" is the insurers' own letter of prevention, "j" the one that bills of prevention give.
inline constexpr SBuchstabe PUNKTWERTARTEN[] = {{'a', "KCH"}, {'c', "IP"},  {'j', "IP"}, {'f', "ZE"},
                                                {'g', "PAR"}, {'h', "KBR"}, {'i', "KFO"}};

inline constexpr CBuchstaben BehaeltPwLArt{"cde"}; // whatever the bill is
inline constexpr CBuchstaben IstKfoPwLArt{"ab"};   // kept by orthodontic services

// ---- KASSTATISTIKART: insurers, by who they are to the practice's association

inline constexpr CBuchstaben IstFremdeStatistikart{"259"};
inline constexpr CBuchstaben IstStatistikartGrp1{"12"};
inline constexpr CBuchstaben IstStatistikartGrp2{"45789"};

// ---- VNACHWEIS: proofs of insurance

// The proof of a period whose electronic confirmation is there.
[[nodiscard]] inline CString ElektronischerNachweis(const CString & sNachweis) {
    switch (sNachweis.Erstes()) {
    case 'g':
    case 'j':
        return "E";
    case 'p':
        return "O";
    default:
        return sNachweis;
    }
}

// The proof says that the patient is privately insured.
[[nodiscard]] inline bool IstPrivatNachweis(const CString & sNachweis) {
    return sNachweis == "p" || sNachweis == "P" || sNachweis == "O";
}

// ---- services

// Material and laboratory costs by kind and sub-kind. The three lists differ on purpose: the first knows only the
// insurers' main schedule, the third only the dentists' private one, the second both and the laboratory kinds.
[[nodiscard]] constexpr bool IstKGSachLeistung(char cGoArt, char cGoSubArt) {
    return IstKassenArt(cGoArt) && IstKGSachSubArt(cGoSubArt);
}
[[nodiscard]] constexpr bool IstPrivatSachLeistung(char cGoArt, char cGoSubArt) {
    return IstGozArt(cGoArt) && IstPrivatSachSubArt(cGoSubArt);
}
[[nodiscard]] constexpr bool IstSachLeistung(char cGoArt, char cGoSubArt) {
    return IstSachArt(cGoArt) || IstKGSachLeistung(cGoArt, cGoSubArt) ||
           IstPrivatSachLeistung(cGoArt, cGoSubArt);
}

} // namespace orvostat
