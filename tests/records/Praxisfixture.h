// A practice of its own, empty at first, and hits without stored answers before and after.
#pragma once

#include "orvostatbs/records/BehHitLine.h"
#include "support/Praxis.h"

namespace orvostat {

class CPraxisFixture : public CPraxisTest {
public:
    CPraxisFixture() { CBehHitLine::ClearMaps(); }
    ~CPraxisFixture() override { CBehHitLine::ClearMaps(); }
};

} // namespace orvostat
