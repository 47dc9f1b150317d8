// A column of a line as text, and back.
#pragma once

#include "orvostatbs/files/StatLines.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace orvostat {

// The characters that a column must not hold.
struct STrennung {
    char cDelimiter;
    char cErsatz;
};

// The columns of a layout, which ends with -1, and a line feed. A delimiter in a text becomes its substitute, a line end
// a blank. The line stands in sPuffer, which keeps its size from line to line, until that is used again.
[[nodiscard]] std::string_view BaueZeile(std::string & sPuffer, const int * pStruct, const CStatLines & line,
                                         STrennung trennung);
// The text of one column.
[[nodiscard]] CString Spaltentext(int iSpalte, const CStatLines & line, STrennung trennung);
// Puts the text of a column into its slot; nothing for an index without slot.
void SetzeSpalte(int iSpalte, std::string_view sWert, CStatLines & line);

// Cuts a line at its delimiters, finding them eight characters at a time. What stands behind the last one is a column
// if it is not empty.
class CSpaltenteiler {
public:
    CSpaltenteiler(std::string_view s, char cDelimiter)
        : m_s(s), m_wMuster(static_cast<unsigned char>(cDelimiter) * wort::JE) {}
    bool Naechste(std::string_view & sWert) {
        while (m_wTreffer == 0 && m_iGesucht < m_s.size())
            Suche();
        const std::size_t iEnde =
            m_wTreffer == 0 ? m_s.size() : m_iGesucht - 8 + static_cast<std::size_t>(std::countr_zero(m_wTreffer)) / 8;
        if (m_iAb >= m_s.size()) return false;
        sWert = std::string_view(m_s.data() + m_iAb, iEnde - m_iAb);
        m_wTreffer &= m_wTreffer - 1;
        m_iAb = iEnde + 1;
        return true;
    }

private:
    // Marks the delimiters among the next eight characters, each by the high bit of its byte, the first one lowest.
    void Suche() {
        unsigned char ac[8] = {};
        const std::size_t n = m_s.size() - m_iGesucht;
        std::memcpy(ac, m_s.data() + m_iGesucht, n < 8 ? n : 8);
        std::uint64_t w = 0;
        std::memcpy(&w, ac, 8);
        static_assert(std::endian::native == std::endian::little);
        const std::uint64_t x = w ^ m_wMuster;
        m_wTreffer = ~(((x & ~wort::HOCH) + ~wort::HOCH) | x | ~wort::HOCH);
        if (n < 8) m_wTreffer &= (1ULL << (8 * n)) - 1;
        m_iGesucht += 8;
    }

    std::string_view m_s;
    std::uint64_t m_wMuster;
    std::uint64_t m_wTreffer = 0;
    std::size_t m_iGesucht = 0; // up to here delimiters have been looked for
    std::size_t m_iAb = 0;      // the next column
};

} // namespace orvostat
