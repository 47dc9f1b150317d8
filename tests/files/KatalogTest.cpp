// The vocabulary of the files, as faelle/katalog.txt has it.
#include "files/DateiTest.h"

#include <string>
#include <vector>

namespace orvostat {
namespace {

// clang-format off
#define L(NAME) {#NAME, NAME}
const std::pair<const char *, const int *> LAYOUTS[] = {
    L(iERR_SICHERUNG), L(iQS_SICHERUNG), L(iGLAB_SICHERUNG), L(iMD_SICHERUNG), L(iGIPS_SICHERUNG),
    L(iGA_SICHERUNG), L(iFSSTATISTIK), L(iRS_SICHERUNG), L(iGB_SICHERUNG), L(iFS_SICHERUNG),
    L(iSU_SICHERUNG), L(iGOZ_SICHERUNG), L(iLSTSTATISTIK), L(iTS_SICHERUNG), L(iLU_SICHERUNG),
    L(iHVM_SICHERUNG), L(iUEW_SICHERUNG), L(iPS_SICHERUNG), L(iKZV_SICHERUNG), L(iRB_SICHERUNG),
    L(iLS_SICHERUNG), L(iTP_SICHERUNG), L(iKASSTATISTIK), L(iEXPERTENSTATISTIK), L(iTAGESPROTOKOLL)};
#undef L
// clang-format on

std::string Zeile(const std::string & sName) {
    return LiesZeile(ORVOSTATBS_SOURCE_DIR "/tests/files/faelle/katalog.txt", sName);
}

class KatalogTest : public CDateiTest {
protected:
    CPruefeval<CStdioFile> m_eval;

    // What a column gives back of a text.
    std::string Nach(int i, const CString & sWert) {
        CStatLines line;
        m_eval.MoveLineFields(i, sWert, line);
        return m_eval.GetField(i, line).Utf8();
    }
    // By what comes back of "2x" and of an empty text.
    char Form(int i) {
        const std::pair<std::string, std::string> paar{Nach(i, "2x"), Nach(i, "")};
        const std::pair<char, std::pair<std::string, std::string>> aFormen[] = {
            {'s', {"2x", ""}}, {'c', {"2", ""}},  {'e', {"0", "0"}}, {'z', {"1", "0"}},
            {'n', {"1", "1"}}, {'u', {"2", "0"}}, {'-', {"", ""}}};
        for (const auto & [c, erwartet] : aFormen)
            if (paar == erwartet) return c;
        return '?';
    }
};

TEST_F(KatalogTest, TitelUndFormen) {
    std::string sIst;
    for (int i = 0; i < 220; ++i)
        sIst += std::string(" ") + VarNames[i] + ':' + Form(i);
    EXPECT_EQ(sIst, " " + Zeile("columns"));
    static_assert(sizeof VarNames == 224 * sizeof *VarNames);
    for (int i = 220; i < 224; ++i) {
        EXPECT_EQ(VarNames[i], nullptr);
        EXPECT_EQ(Form(i), i < 223 ? 's' : '-');
    }
    for (const int i : {-2, -1, 223, 224, 100'000}) {
        CStatLines line;
        m_eval.MoveLineFields(i, "x", line);
        EXPECT_EQ(m_eval.GetField(i, line), ""_t);
        EXPECT_EQ(Spalten(line), "");
    }
}

TEST_F(KatalogTest, FelderInIhrerReihenfolge) {
    const CStatLines line;
    std::string sIst;
    std::vector<const void *> vOrte;
#define FELD(TYP, NAME, START)                                                                               \
    sIst += " " #NAME;                                                                                       \
    vOrte.push_back(&line.NAME);
#include "orvostatbs/files/StatLines.def"
    EXPECT_EQ(sIst, " " + Zeile("fields"));
    EXPECT_TRUE(std::is_sorted(vOrte.begin(), vOrte.end()));
}

// Each column has a slot of its own, but for two pairs.
TEST_F(KatalogTest, JederTitelHatSeinFeld) {
    std::string sPaare;
    for (int i = 0; i <= 222; ++i) {
        if (Form(i) == '-') continue;
        CStatLines line;
        m_eval.MoveLineFields(i, i == 174 || i == 175 ? CString("0") : CString("1"), line);
        for (int j = 0; j <= 222; ++j) {
            const bool bGeaendert = m_eval.GetField(j, line) != m_eval.GetField(j, m_leer);
            if (bGeaendert && i < j) sPaare += std::string(VarNames[i]) + '/' + VarNames[j] + ' ';
            EXPECT_FALSE(i == j && !bGeaendert) << i;
        }
    }
    EXPECT_EQ(sPaare, "BEHANDLERNR/TECHNIKER TEXT/BEMERKUNG ");
}

TEST_F(KatalogTest, Layouts) {
    for (const auto & [pName, pLayout] : LAYOUTS) {
        std::string sIst;
        int iSpalten = 0;
        for (const int * p = pLayout; *p != -1; ++p, ++iSpalten)
            sIst += ' ' + (VarNames[*p] ? std::string(VarNames[*p]) : std::to_string(*p));
        EXPECT_EQ(std::to_string(iSpalten) + sIst, Zeile(pName)) << pName;
    }
    EXPECT_EQ(std::size(LAYOUTS), 25u);
}

TEST_F(KatalogTest, SpaltenImEinzelnen) {
    const struct {
        int iSpalte;
        CString sWert;
        std::string sZurueck;
    } vFaelle[] = {
        {36, "1", "1"},
        {36, "10", "0"},
        {36, " 1", "0"},
        {122, "-1", "1"},
        {122, "0", "0"},
        {138, "x1", "0"},
        {174, "0", "0"},
        {174, "00", "1"},
        {92, "12", "1"},
        {55, " a", " "},
        {212, "-1", "4294967295"},
        {212, "4294967295", "4294967295"},
        {212, "99999999999"_t, "4294967295"},
        {212, "x", "0"},
        {21, "nur ein\nUmbruch"_t, "nur ein Umbruch"},
        {21, "nur eine\rRueckkehr"_t, "nur eine Rueckkehr"},
        {21, "a;b\r\nc"_t, "a|b  c"},
        {22, ";", "|"},
        {19, "1;2;3;4;5;6;7"_t, "1|2|3|4|5|6|7"},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(Nach(fall.iSpalte, fall.sWert), fall.sZurueck) << fall.iSpalte << " " << fall.sWert.Utf8();
}

} // namespace
} // namespace orvostat
