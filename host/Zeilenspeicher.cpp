#include "orvostatbs/host/Zeilenspeicher.h"

#include <algorithm>
#include <vector>

namespace orvostat {

namespace {

// A row with its own texts.
class CZeile {
public:
    explicit CZeile(const STabelle & tabelle) : m_vTexte(tabelle.vSpalten.size()) {
        for (CString & sText : m_vTexte)
            m_vZeiger.push_back(&sText);
    }
    [[nodiscard]] CFelder Felder() { return m_vZeiger; }
    [[nodiscard]] CWerte Werte() const { return {m_vZeiger.data(), m_vZeiger.size()}; }
    friend bool operator==(const CZeile & a, const CZeile & b) { return a.m_vTexte == b.m_vTexte; }

private:
    std::vector<CString> m_vTexte;
    std::vector<CString *> m_vZeiger;
};

} // namespace

// A part ends with a byte of 0, so that "ab" sorts before "abc" whatever follows in the next part. A 0 inside a text
// would end the part early; no key of a practice holds one.
void HaengeTeilAn(std::string & sBytes, const STabelle & tabelle, const CString & sTeil, bool bLetzter) {
    const CSicht sicht(sTeil);
    std::string_view s = sicht;
    if (!(bLetzter && tabelle.eVergleich == EVergleich::MitEndblanks))
        s = s.substr(0, s.find_last_not_of(' ') + 1);
    const std::size_t iAnfang = sBytes.size();
    sBytes += s;
    if (tabelle.eVergleich == EVergleich::OhneGross)
        std::transform(sBytes.begin() + static_cast<std::ptrdiff_t>(iAnfang), sBytes.end(),
                       sBytes.begin() + static_cast<std::ptrdiff_t>(iAnfang), Klein);
    sBytes += '\0';
}

void HaengeSchluesselAn(std::string & sBytes, const STabelle & tabelle, int iSchluessel, CWerte vZeile) {
    const auto vSpalten = tabelle.vSchluessel[static_cast<std::size_t>(iSchluessel - 1)].Spalten();
    for (const std::uint8_t & iSpalte : vSpalten)
        HaengeTeilAn(sBytes, tabelle, *vZeile[iSpalte], &iSpalte == &vSpalten.back());
}

std::string Schluesselbytes(const STabelle & tabelle, int iSchluessel, CWerte vZeile) {
    std::string sBytes;
    sBytes.reserve(48);
    HaengeSchluesselAn(sBytes, tabelle, iSchluessel, vZeile);
    return sBytes;
}

std::string Danach(std::string sAnfang) {
    while (!sAnfang.empty() && static_cast<unsigned char>(sAnfang.back()) == 0xFF)
        sAnfang.pop_back();
    if (!sAnfang.empty()) sAnfang.back() = static_cast<char>(static_cast<unsigned char>(sAnfang.back()) + 1);
    return sAnfang;
}

int KopiereTabelle(CZeilenspeicher & von, CZeilenspeicher & nach, const STabelle & tabelle) {
    const auto pWeg = von.Oeffne(tabelle, {});
    if (!pWeg) return ZEILE_FEHLER;
    CZeile zeile(tabelle);
    int iErgebnis;
    while ((iErgebnis = pWeg->Naechste(zeile.Felder())) == ZEILE_OK)
        if (const int iSchreiben = nach.Schreibe(tabelle, zeile.Werte()); iSchreiben != ZEILE_OK)
            return iSchreiben;
    return iErgebnis == ZEILE_KEINE ? ZEILE_OK : iErgebnis;
}

bool GleicheTabelle(CZeilenspeicher & a, CZeilenspeicher & b, const STabelle & tabelle) {
    const auto pWegA = a.Oeffne(tabelle, {});
    const auto pWegB = b.Oeffne(tabelle, {});
    if (!pWegA || !pWegB) return false;
    CZeile zeileA(tabelle);
    CZeile zeileB(tabelle);
    for (;;) {
        const int iA = pWegA->Naechste(zeileA.Felder());
        const int iB = pWegB->Naechste(zeileB.Felder());
        if (iA == ZEILE_KEINE && iB == ZEILE_KEINE) return true;
        if (iA != ZEILE_OK || iB != ZEILE_OK || !(zeileA == zeileB)) return false;
    }
}

} // namespace orvostat
