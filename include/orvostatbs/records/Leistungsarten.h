// The letters by which fee schedules and bills are told apart, and the groups that the engine's rules name.
//
// A service has a kind letter (GOART), the fee schedule it comes from, and a sub-kind letter (GOSUBART) within it; a
// bill has a billing kind (ABRART), the branch of dentistry it settles. 0 is "no letter" and belongs to no group.
// Each group stands here once; nothing in this header allocates.
#pragma once

#include "orvostatbs/host/CString.h"

#include <cstddef>
#include <cstdint>

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

// ---- groups of GOART

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

// ---- groups of ABRART

inline constexpr CBuchstaben IstKfoAbrArt{"km"};    // orthodontics, "m" is multiband
inline constexpr CBuchstaben IstKbrAbrArt{"b45"};   // jaw fractures
inline constexpr CBuchstaben IstParAbrArt{"p6789"}; // periodontics

// ---- proofs of insurance (VNACHWEIS)

// The proof says that the patient is privately insured.
[[nodiscard]] inline bool IstPrivatNachweis(const CString & sNachweis) {
    return sNachweis == "p" || sNachweis == "P" || sNachweis == "O";
}

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
