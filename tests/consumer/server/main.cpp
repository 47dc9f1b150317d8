// A practice on a server that is not there: the store is complete, and says so.
#include "orvostatbs/global.h"
#include "orvostatbs/postgres/PostgresSpeicher.h"

#include <cstdio>

int main() {
    CString sMeldung;
    const auto pPraxis = orvostat::CPostgresSpeicher::OeffneServer(
        "postgresql:///praxis?host=/gibtesnicht", "", orvostat::EServermodus::Lesen, sMeldung);
    std::puts(sMeldung.Utf8().c_str());
    return pPraxis || sMeldung.IsEmpty() ? 1 : 0;
}
