// The vocabulary of the files, as faelle/katalog.txt has it.
#include "files/DateiTest.h"

#include <string>

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
        EXPECT_TRUE(VarNames[i] == nullptr && Form(i) == (i < 223 ? 's' : '-'));
    }
    CStatLines line;
    for (int i = -2; i < 230; ++i)
        m_eval.MoveLineFields(i, itoc(i), line);
    sIst.clear();
    for (int i = -2; i < 230; ++i)
        if (m_eval.GetField(i, line) != itoc(i) && Form(i) == 's') sIst += VarNames[i] + std::string(" ");
    EXPECT_EQ(sIst, "BEHANDLERNR TEXT "); // their slots are TECHNIKER's and BEMERKUNG's too
    EXPECT_EQ(m_eval.GetField(-1, line) + m_eval.GetField(223, line), ""_t);
}

TEST_F(KatalogTest, Layouts) {
    for (const auto & [pName, pLayout] : LAYOUTS) {
        std::string sIst;
        for (const int * p = pLayout; *p != -1; ++p)
            sIst += ' ' + (VarNames[*p] ? std::string(VarNames[*p]) : std::to_string(*p));
        EXPECT_EQ(sIst, " " + Zeile(pName)) << pName;
    }
}

TEST_F(KatalogTest, SpaltenImEinzelnen) {
    const struct {
        int iSpalte;
        CString sWert;
        std::string sZurueck;
    } vFaelle[] = {
        {36, " 1", "0"},
        {122, "-1", "1"},
        {122, "x1", "0"},
        {174, "00", "1"},
        {55, " a", " "},
        {212, "-1", "4294967295"},
        {212, "99999999999"_t, "4294967295"},
        {212, "-99999999999"_t, "2147483648"},
        {21, "a;b\r\nc"_t, "a|b  c"},
        {21, "nur eine\rRueckkehr"_t, "nur eine Rueckkehr"},
        {22, ";", "|"},
        {19, "1;2;3;4;5;6;7"_t, "1|2|3|4|5|6|7"},
    };
    for (const auto & fall : vFaelle)
        EXPECT_EQ(Nach(fall.iSpalte, fall.sWert), fall.sZurueck) << fall.iSpalte << " " << fall.sWert.Utf8();
}

} // namespace
} // namespace orvostat
