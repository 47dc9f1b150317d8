#include "orvostatbs/files/Arbeitsmappe.h"

#include "Katalog.h"
#include "orvostatbs/host/Umgebung.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>

namespace orvostat {

namespace {

// The columns that a spreadsheet calculates with.
constexpr std::string_view ZAHLEN =
    "EINFACHSATZ BETRAG PUNKTE FAKTOR ANZAHL PUNKTWERT ANTEILBEH ANTEILPRAXIS ZUSCHLAG MWSTSATZ "
    "ANTEILKAS BETRAGJEFALL PUNKTEJEFALL F100RVO F100VDAK F100GESAMT ELABGESAMT ELABNETTOGESAMT "
    "ELABMWSTBETRAG LABLSTNETTO MATERIALNETTO METALLNETTO ANZ01 ANZKFONEUFALL ANZFAELLE "
    "ANZFALLJEABRART PROVISONSWERT RECHBETRAG HONORAR FLABGESAMT SONSTLAB WEGEGELD "
    "KASSENZUSCHUSS ZUSATZKOSTEN F100AEV DMBETRAG GESBETRAG PREISOMWST BEGLICHEN AUSGEBUCHT "
    "PRUEFZEITT PRUEFZEITQ ANZGLBLOCKS SKONTOPROZENT TECHNLST MATERIAL METALL PRAXMAT USTGES "
    "NETTO GESAMT RECHBETRAGK LABLSTNETTO7 LABLSTNETTOOUST METALLNETTO7 TECHNMATNETTO "
    "TECHNMATNETTO7 HONMWSTBETRAG LABLSTNETTO5 METALLNETTO5 TECHNMATNETTO5";

constexpr auto MakeZahlen() {
    std::array<bool, std::size(KATALOG)> abZahl = {};
    for (std::string_view s = ZAHLEN; !s.empty();) {
        const std::size_t n = std::min(s.find(' '), s.size());
        abZahl[static_cast<std::size_t>(Katalogindex(s.substr(0, n)))] = true;
        s.remove_prefix(std::min(n + 1, s.size()));
    }
    return abZahl;
}
constexpr auto IST_ZAHL = MakeZahlen();

// "1/2/2/2/3/1": column, kind; 1 is a number where it reads as one, 2 is text.
std::string Spaltenarten(const int * pStruct) {
    std::string s;
    for (int i = 1; pStruct != nullptr && *pStruct != -1; ++pStruct, ++i) {
        const bool bZahl =
            *pStruct >= 0 && *pStruct <= KATALOG_LETZTER && IST_ZAHL[static_cast<std::size_t>(*pStruct)];
        s += (s.empty() ? "" : "/") + std::to_string(i) + (bZahl ? "/1" : "/2");
    }
    return s;
}

// A file's address; whatever is not a plain letter, digit or one of a few signs stands as %XX.
std::string Adresse(const CString & sDatei) {
    constexpr std::string_view ZIFFERN = "0123456789ABCDEF", SCHLICHT = "/-._~:";
    std::string sAdresse = "file://";
    for (const char c : std::filesystem::absolute(Dateipfad(sDatei)).generic_string()) {
        const auto i = static_cast<unsigned char>(c);
        const bool bBuchstabe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (bBuchstabe || SCHLICHT.find(c) != std::string_view::npos)
            sAdresse += c;
        else
            (sAdresse += '%') += {ZIFFERN[i / 16], ZIFFERN[i % 16]};
    }
    return sAdresse;
}

void Ersetze(std::string & s, std::string_view sMarke, std::string_view sWert) {
    for (auto i = s.find(sMarke); i != std::string::npos; i = s.find(sMarke, i + sWert.size()))
        s.replace(i, sMarke.size(), sWert);
}

} // namespace

std::string Arbeitsmappe(std::string_view sVorlage, const int * pStruct, const CString & sCsv,
                         const CString & sIni) {
    std::string s(sVorlage);
    Ersetze(s, "@CSV@", Adresse(sCsv));
    Ersetze(s, "@INI@", Adresse(sIni));
    Ersetze(s, "@SPALTEN@", Spaltenarten(pStruct));
    return s;
}

} // namespace orvostat
