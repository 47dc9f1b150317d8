// A user interface that shows nothing, so that only the work is measured; for fuzz targets too.
#pragma once

#include "orvostatbs/host/Oberflaeche.h"

namespace orvostat {

class CStumm : public COberflaeche {
public:
    void Hinweis(EHinweis, const CString &, const CString &, int) override {}
    bool Frage(const CString &, const CString &, int) override { return false; }
    bool OeffneFortschritt(HWND, const CString &, const CString &) override { return true; }
    bool Fortschritt(long, long) override { return true; }
    void SchliesseFortschritt() override {}
    void Wartezeiger(bool) override {}
};

} // namespace orvostat
