#include "orvostatbs/host/Praxispruefung.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

namespace orvostat {
namespace {

// Texts with a stroke between them; "!" stands before those that are not sound.
TEST(Mangel, KnowsWhichTextsAreSound) {
    constexpr std::pair<EArt, const char *> FAELLE[] = {
        {EArt::Text, "|x\x01"},
        {EArt::Zahl, "|  12|-7|2147483647|!12a|!-|!1 2|!2147483648|!99999999999999999999"},
        {EArt::Datum, "|20240229|19560000|19560500|99991231|        |!20230229|!19561300|!00000000|!2024010"
                      "|!01.01.2024"},
        {EArt::Betrag, "|e12345|e         0| -5|12345|e4366.89|e-1000000000|!e1.1234567|!e|!12,34|!e12.|!x100"
                       "|!e--5|!e1000000001|!e1000000000000000000"},
        {EArt::Punktwert, "|e13233|e13233.1234|!e1.12345|!1.3233 Euro|!e-1|!e1000001"},
        {EArt::Punkte, "|0|3300|10000000|!-5|!10000001|!1.5"},
        {EArt::Menge, "|x250|x| 100|z1000000|!xABC|!250|!-100|!x-100|!x1.5|!x1000001"},
        {EArt::Faktor, "|23000|e10408|1000000|!-23000|!2,3|!2.3|!e1,1|!1000001|!99999999999999999999"},
    };
    for (const auto & [eArt, pTexte] : FAELLE) {
        std::istringstream ein(pTexte);
        for (std::string s; std::getline(ein, s, '|');) {
            const bool bGut = !s.starts_with('!');
            EXPECT_EQ(Mangel(eArt, s.substr(bGut ? 0 : 1)) == nullptr, bGut) << '"' << s << '"';
        }
    }
}

} // namespace
} // namespace orvostat
