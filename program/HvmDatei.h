// The settings of the fee distribution as a JSON file: to keep them, to compare them, to take them to another practice.
#pragma once

#include "orvostatbs/hvm/HVMCf.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvostat {

// What is wrong with a setting that the stored rows could not hold or would read differently; empty where nothing is.
[[nodiscard]] std::string FehlerLeistungen(const std::vector<CString> & vLeistungen);
[[nodiscard]] std::string FehlerAuswahl(const CString & sName, const CString & sAuswahl);
using CUrlaube = std::vector<std::pair<CString, CString>>;
[[nodiscard]] std::string FehlerUrlaube(const CString & sJahr, const CUrlaube & vUrlaube);

// "A..B", "A-B" or one day as a vacation; anything else is wrong usage.
[[nodiscard]] std::pair<CString, CString> LiesUrlaub(const std::string & sText);

// The settings of which all has been read, holidays included.
void SchreibeHvmJson(std::ostream & aus, const CHVMCf & cf, const std::vector<CString> & vMandanten);

// Settings read from such a file, to be set whole or in part. What the file does not name stays; a list that it
// names is replaced, and so are all pots or all years of an owner for whom it names them.
class CHvmJson {
public:
    // Reads the file, "-" is the standard input. One that cannot be read, or is no such file, ends the command.
    explicit CHvmJson(const std::string & sDatei);
    ~CHvmJson();
    CHvmJson(const CHvmJson &) = delete;
    CHvmJson & operator=(const CHvmJson &) = delete;

    // Changes settings of which all has been read. Ends the command at the first place that says something else than
    // settings, and names it.
    void Setze(CHVMCf & cf) const;

private:
    struct SInhalt;
    std::unique_ptr<SInhalt> m_pInhalt;
};

// Deletes the rows of groups and years that the settings had and have no more; writing leaves such rows alone. Inside
// the caller's group of writes. False where the store failed.
[[nodiscard]] bool LoescheEntfallene(const CHVMCf & vorher, const CHVMCf & nachher);

} // namespace orvostat
