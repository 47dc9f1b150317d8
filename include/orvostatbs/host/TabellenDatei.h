// Files in the practice's own store.
#pragma once

#include "orvostatbs/host/Tabelle.h"

namespace orvostat {

// A file is a row with STUECK "00000000" and no content, and its bytes in order in the rows from "00000001" on: each
// STUECK_LAENGE bytes long, the last one shorter. The bytes stand as they are, each a Windows-1252 character.
struct CTDatei_Fields {
    CString m_DATEINAME;
    CString m_STUECK;
    CString m_INHALT;
    friend bool operator==(const CTDatei_Fields &, const CTDatei_Fields &) = default;
};
template <> struct SBeschreibung<CTDatei_Fields> {
    static constexpr CString CTDatei_Fields::*aZeiger[] = {
        &CTDatei_Fields::m_DATEINAME, &CTDatei_Fields::m_STUECK, &CTDatei_Fields::m_INHALT};
    static constexpr SSpalteInfo aSpalten[] = {
        {"DATEINAME", EArt::Text}, {"STUECK", EArt::Zahl}, {"INHALT", EArt::Text}};
    static constexpr auto aSchluessel = detail::MakeSchluesselliste(aSpalten, "DATEINAME STUECK");
    static constexpr STabelle tabelle{"DATEI", aSpalten, aSchluessel, EVergleich::Genau};
};
class CTDatei : public CTabelle<CTDatei_Fields> {
public:
    using CTabelle::CTabelle;
    static constexpr std::size_t STUECK_LAENGE = 65536;
};

} // namespace orvostat
