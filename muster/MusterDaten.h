// The data files of the sample practice, data/*.csv, as they were when the program was built.
//
// A file is UTF-8 and has a title line, ";" between columns and no quotes; a line that begins with "#" is a remark.
#pragma once

#include "orvostatbs/host/CString.h"

#include <string_view>
#include <vector>

namespace orvostat {

// One file, cut into cells; all texts live as long as the program.
class CMusterDaten {
public:
    class CZeile {
    public:
        CZeile(const std::vector<std::string_view> & vTitel, std::string_view sZeile);
        // The cell under a title, the number in it (0 for none), its first character (0 for none). A title that the
        // file does not have is std::out_of_range.
        [[nodiscard]] std::string_view operator[](std::string_view sTitel) const;
        [[nodiscard]] int Zahl(std::string_view sTitel) const;
        [[nodiscard]] char Zeichen(std::string_view sTitel) const;

    private:
        const std::vector<std::string_view> * m_pTitel;
        std::vector<std::string_view> m_vZellen;
    };

    // The file of this name, without its ending; std::out_of_range if there is none.
    explicit CMusterDaten(std::string_view sName);
    CMusterDaten(const CMusterDaten &) = delete; // the lines look at the titles
    CMusterDaten & operator=(const CMusterDaten &) = delete;
    ~CMusterDaten() = default;
    [[nodiscard]] auto begin() const { return m_vZeilen.begin(); }
    [[nodiscard]] auto end() const { return m_vZeilen.end(); }

private:
    std::vector<std::string_view> m_vTitel;
    std::vector<CZeile> m_vZeilen;
};

// The invented names and sentences of one kind, from data/namen.csv; std::out_of_range if it has none.
[[nodiscard]] const std::vector<CString> & Namen(std::string_view sArt);

} // namespace orvostat
