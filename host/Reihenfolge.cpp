#include "orvostatbs/host/detail/Reihenfolge.h"

#ifndef NDEBUG

#include <cstdio>
#include <cstdlib>

namespace orvostat {

void Verlange(bool bErfuellt, const char * pSatz) {
    if (bErfuellt) return;
    std::fprintf(stderr, "OrvoStatBs: %s\n", pSatz);
    std::abort();
}

} // namespace orvostat

#endif
