// What can be wrong in the rows of a practice, whatever store they lie in.
#pragma once

#include "orvostatbs/host/Tabellen.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orvostat {

// Why a stored text is not sound for a column of its kind, as a German phrase; null where it is. The empty text and
// blanks always are. A number is sound in form and in a range that no practice leaves: amounts to ten million,
// quantities to ten thousand, factors to a hundred.
[[nodiscard]] const char * Mangel(EArt eArt, std::string_view s1252);

// The row as messages name it: "PAT [1003]".
[[nodiscard]] std::string Zeilenname(const STabelle & tabelle, CWerte vZeile);

// Checks tables one after the other. For each row: every column by its kind, key parts in order and not twice, and that
// the rows it refers to are there; and that there are an owner and a treater, without whom there is no run.
class CPraxispruefung {
public:
    // fMangel takes a German sentence (UTF-8) per fault; fSchritt comes for each row read, and may end the check with
    // an exception. The store must outlive the object.
    CPraxispruefung(CZeilenspeicher & speicher, std::function<void(const std::string &)> fMangel,
                    std::function<void()> fSchritt);
    // Checks one table of AlleTabellen; the number of its rows.
    std::int64_t Pruefe(const STabelle & tabelle);

private:
    using CSchluesselmenge = std::unordered_set<std::string>;
    struct SZiel { // what some columns of a table refer to
        const SVerweis * pVerweis;
        const CSchluesselmenge * pSchluessel; // of the rows that there are
    };

    void PruefeZeile(const STabelle & tabelle, CWerte vZeile);
    void PruefeReihenfolge(const STabelle & tabelle, int iSchluessel);
    std::vector<SZiel> Ziele(const STabelle & tabelle);
    void PruefeVerweise(const STabelle & tabelle, const std::vector<SZiel> & vZiele, CWerte vZeile);
    const CSchluesselmenge & Schluessel(const STabelle & tabelle, std::size_t iTeile);
    void Melde(const STabelle & tabelle, CWerte vZeile, const std::string & sWas);

    CZeilenspeicher & m_speicher;
    std::function<void(const std::string &)> m_fMangel;
    std::function<void()> m_fSchritt;
    std::unordered_map<std::string, CSchluesselmenge> m_mapSchluessel; // by table name and number of parts
};

} // namespace orvostat
