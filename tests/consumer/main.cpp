// Shows that the installed package is complete: its headers compile, its library links, and a screen that is written
// against the given names finds them in the global namespace.
#include "orvostatbs/global.h"
#ifdef CONSUMER_SQLITE
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#endif

#include <cstdio>

int Fremde(); // of a library that has a CString of its own

int main() {
    CString sText("Zähne");
    sText.MakeUpper();
    if (sText != CString("ZÄHNE")) return 1;
    const CStatAccu accu;
    if (!accu.m_vBehHits.empty() || QuartalsEnde("20240201") != "20240331") return 1;
    std::printf("%d letters\n", sText.GetLength() + Fremde());
    return 0;
}
