// Values as the tests write them: amounts and point values as stored, letters as a text of one, nothing as "".
#pragma once

#include "orvostatbs/host/Betrag.h"
#include "orvostatbs/host/CString.h"
#include "orvostatbs/host/Tabelle.h"

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orvostat {

inline std::string Wert(const CString & s) { return s.Utf8(); }
inline std::string Wert(const std::string & s) { return s; }
inline std::string Wert(std::same_as<bool> auto b) { return b ? "1" : ""; }
template <class T>
requires((std::is_integral_v<T> || std::is_enum_v<T>)&&!std::same_as<T, bool> &&
         !std::same_as<T, char>) std::string Wert(T i) {
    return i == T{} ? "" : std::to_string(static_cast<long long>(i));
}
inline std::string Wert(const std::same_as<char> auto & c) {
    return c == 0 ? "" : CString(std::string_view(&c, 1)).Utf8();
}
inline std::string Wert(const std::same_as<CChar> auto & c) { return Wert(static_cast<char>(c)); }
inline std::string Wert(const CWBetragBasis & betrag) { return betrag.ToDb(0, true, false, 0, 0).Utf8(); }
inline std::string Wert(const CDPw & pw) { return pw.ToDb(0, true, false, 0, 0).Utf8(); }
// Elements with commas between them; of records their number.
template <class T>
constexpr bool IST_WERT = std::is_integral_v<T> || std::same_as<T, CString> || std::same_as<T, std::string>;
template <class T> std::string Elemente(const std::vector<T> & v) {
    std::string s;
    for (const T & t : v)
        s += (&t == v.data() ? "" : ",") + Wert(t);
    return s;
}
template <class T> std::string Wert(const std::vector<T> & v) {
    if constexpr (!IST_WERT<T>)
        return v.empty() ? "" : std::to_string(v.size());
    else
        return Elemente(v);
}

// The same the other way; false where the text is no value of the kind.
inline bool Lies(const std::string & s, CString & ziel) { return ziel = AusUtf8(s), true; }
inline bool Lies(const std::string & s, std::string & ziel) { return ziel = s, true; }
inline bool Lies(const std::string & s, bool & ziel) { return (ziel = s == "1") || s.empty() || s == "0"; }
inline bool Lies(const std::string & s, char & ziel) {
    const CString sText = AusUtf8(s);
    return ziel = sText.Erstes(), sText.GetLength() < 2;
}
template <class T>
requires((std::is_integral_v<T> || std::is_enum_v<T>)&&!std::same_as<T, bool> &&
         !std::same_as<T, char>) bool Lies(const std::string & s, T & ziel) {
    long long iWert = 0;
    const auto [pEnde, fehler] = std::from_chars(s.data(), s.data() + s.size(), iWert);
    ziel = static_cast<T>(iWert);
    return s.empty() || (fehler == std::errc() && pEnde == s.data() + s.size());
}
inline bool Lies(const std::string & s, CChar & ziel) {
    char c = 0;
    const bool bOk = Lies(s, c);
    return ziel = c, bOk;
}
template <std::derived_from<CWBetragBasis> T> bool Lies(const std::string & s, T & ziel) {
    return ziel = T(AusUtf8(s)), true;
}
template <class T> bool Lies(const std::string & s, std::vector<T> & ziel) {
    ziel.clear();
    if constexpr (!IST_WERT<T>)
        return false;
    else
        for (std::size_t iVon = 0, iBis = 0; !s.empty() && iBis != s.npos; iVon = iBis + 1) {
            iBis = s.find(',', iVon);
            if (!Lies(s.substr(iVon, iBis - iVon), ziel.emplace_back())) return false;
        }
    return true;
}

// All columns of a row, with their names.
template <class TFelder, class F>
requires requires { SBeschreibung<std::remove_const_t<TFelder>>::aZeiger; }
void JedesFeld(TFelder & zeile, F f) {
    using SDieser = SBeschreibung<std::remove_const_t<TFelder>>;
    for (std::size_t i = 0; i < std::size(SDieser::aZeiger); ++i)
        f(SDieser::aSpalten[i].pName, zeile.*SDieser::aZeiger[i]);
}

// A row in which each column has its own name as its text, where it has no other.
template <class TFelder> void Fuelle(TFelder & zeile) {
    JedesFeld(zeile, [](const char * pName, CString & s) {
        if (s.IsEmpty()) s = CString(pName);
    });
}

// Some values with "|" between them.
template <class... T> std::string Werte(const T &... werte) {
    std::string s;
    std::size_t i = 0;
    ((s += (i++ == 0 ? "" : "|") + Wert(werte)), ...);
    return s;
}

} // namespace orvostat
