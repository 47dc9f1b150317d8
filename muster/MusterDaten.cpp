#include "MusterDaten.h"

#include "MusterDatei.h" // made by the build: MUSTERDATEIEN, the texts of data/*.csv by name

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>

namespace orvostat {

namespace {

// Cuts the front of s off, up to the separator, which goes too.
std::string_view Naechstes(std::string_view & s, char cTrenner) {
    const std::size_t iEnde = std::min(s.find(cTrenner), s.size());
    const std::string_view sTeil = s.substr(0, iEnde);
    s.remove_prefix(std::min(iEnde + 1, s.size()));
    return sTeil;
}

std::vector<std::string_view> Zellen(std::string_view sZeile) {
    std::vector<std::string_view> v;
    for (const auto iTrenner = std::ranges::count(sZeile, ';'); std::ssize(v) <= iTrenner;)
        v.push_back(Naechstes(sZeile, ';'));
    return v;
}

std::string_view Datei(std::string_view sName) {
    for (const auto & [pName, pText] : MUSTERDATEIEN)
        if (sName == pName) return pText;
    throw std::out_of_range("no such data file: " + std::string(sName));
}

} // namespace

CMusterDaten::CZeile::CZeile(const std::vector<std::string_view> & vTitel, std::string_view sZeile)
    : m_pTitel(&vTitel), m_vZellen(Zellen(sZeile)) {
    if (m_vZellen.size() != vTitel.size())
        throw std::out_of_range("not as many cells as titles: " + std::string(sZeile));
}

std::string_view CMusterDaten::CZeile::operator[](std::string_view sTitel) const {
    const auto it = std::ranges::find(*m_pTitel, sTitel);
    if (it == m_pTitel->end()) throw std::out_of_range("no such title: " + std::string(sTitel));
    return m_vZellen[static_cast<std::size_t>(it - m_pTitel->begin())];
}

int CMusterDaten::CZeile::Zahl(std::string_view sTitel) const {
    const std::string_view s = (*this)[sTitel];
    int i = 0;
    std::from_chars(s.data(), s.data() + s.size(), i);
    return i;
}

char CMusterDaten::CZeile::Zeichen(std::string_view sTitel) const {
    const std::string_view s = (*this)[sTitel];
    return s.empty() ? '\0' : s[0];
}

CMusterDaten::CMusterDaten(std::string_view sName) {
    std::string_view sText = Datei(sName);
    m_vTitel = Zellen(Naechstes(sText, '\n'));
    while (!sText.empty())
        if (const std::string_view sZeile = Naechstes(sText, '\n'); !sZeile.starts_with('#'))
            m_vZeilen.emplace_back(m_vTitel, sZeile);
}

const std::vector<CString> & Namen(std::string_view sArt) {
    static const auto s_mapNamen = [] {
        std::map<std::string, std::vector<CString>, std::less<>> mapNamen;
        for (const CMusterDaten::CZeile & zeile : CMusterDaten("namen"))
            mapNamen[std::string(zeile["art"])].push_back(AusUtf8(zeile["text"]));
        return mapNamen;
    }();
    const auto it = s_mapNamen.find(sArt);
    if (it == s_mapNamen.end()) throw std::out_of_range("no names of this kind: " + std::string(sArt));
    return it->second;
}

} // namespace orvostat
