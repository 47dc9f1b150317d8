#include "orvostatbs/records/Stammdaten.h"

#include "orvostatbs/host/TabellenLeistung.h"
#include "orvostatbs/host/TabellenPraxis.h"
#include "orvostatbs/records/Suche.h"
#include "support/Wert.h"

#include <string>

#include <gtest/gtest.h>

namespace orvostat {

namespace {

TEST(Stammdaten, abrechnungsart_aller_gespeicherten_buchstaben) {
    std::string sAbrArt, sKasse, sAbrArtE; // stored letter and what it gives, where that is not "s"
    for (int c = 0; c < 256; ++c) {
        CTBill row;
        if (c != 0) row.m_ABRART = CString(static_cast<char>(c));
        CBill bill;
        bill.MoveBill(&row);
        if (bill.ABRART != 's') sAbrArt += std::string{static_cast<char>(c), bill.ABRART, ' '};
        if (bill.KASSENABR) sKasse += static_cast<char>(c);
        if (bill.m_bAbrArtE) sAbrArtE += static_cast<char>(c);
    }
    EXPECT_EQ(sAbrArt, "1c 2z 3k 4b 5p 6i 7e 8e ac bz ck db ep ge nr pk te ");
    EXPECT_EQ(sKasse, "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(sAbrArtE, "78gt");
}

TEST(Stammdaten, clear_und_pool) {
    CBill bill;
    bill.PATNR = bill.m_sBillInfo2 = "1";
    bill.ABRART = 'z';
    bill.KASSENABR = true;
    bill.Clear();
    EXPECT_EQ(Werte(bill.PATNR, bill.ABRART, bill.KASSENABR, bill.m_sBillInfo2), "|||");
    const SSelectPool eintrag{"k", "text", "extra"};
    CSPData sp;
    sp.MoveSP(&eintrag);
    EXPECT_EQ(Werte(sp.m_sKey, sp.m_sText, sp.m_sExtra), "k|text|extra");
}

TEST(Suche, leer_ohne_nummer_oder_ohne_art) {
    struct SFall {
        CString sLst;
        char cGoArt;
        bool bLeer;
    };
    for (const SFall & fall : {SFall{"", 0, true}, {"", 'k', true}, {"13a", 0, true}, {"13a", 'k', false}}) {
        EXPECT_EQ((CSucheLstStruct{"F1", fall.sLst, fall.cGoArt, 0, 0}.IsEmpty()), fall.bLeer);
        EXPECT_EQ((CHVMLstStruct{"F1", fall.sLst, fall.cGoArt}.IsEmpty()), fall.bLeer);
    }
    EXPECT_TRUE((CSucheTbStruct{"", "text"}.IsEmpty()));
    EXPECT_FALSE((CSucheTbStruct{"tb", ""}.IsEmpty()));
}

} // namespace

} // namespace orvostat
