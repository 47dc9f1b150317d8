// Shows that the installed package is complete: its headers compile and its library links.
#include "orvostatbs/orvostatbs.h"
#ifdef CONSUMER_SQLITE
#include "orvostatbs/sqlite/SqliteSpeicher.h"
#endif

#include <cstdio>

int main() {
    CString sText("Zähne");
    sText.MakeUpper();
    if (sText != CString("ZÄHNE")) return 1;
    std::printf("%d letters\n", sText.GetLength());
    return 0;
}
