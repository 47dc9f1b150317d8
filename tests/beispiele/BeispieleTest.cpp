// The examples in the public headers. They stand there only; Beispiele.h is made of them when the build is configured,
// one test for each header.
#include "orvostatbs/orvostatbs.h"
#include "support/Rekorder.h"

#include <memory>

namespace orvostat {
namespace {

// With an empty practice behind both handles, and a user who answers nothing.
class CBeispiele : public CHostTest {
protected:
    CBeispiele() { Verbinde(std::make_shared<CMemorySpeicher>()); }
    ~CBeispiele() override { Verbinde(nullptr); }
    static void Verbinde(const std::shared_ptr<CZeilenspeicher> & pSpeicher) {
        dbDatabase.Verbinde(pSpeicher);
        dbDatabaseRO.Verbinde(pSpeicher);
    }
};

#undef assert
#define assert(...) EXPECT_TRUE((__VA_ARGS__))
#include "Beispiele.h"

} // namespace
} // namespace orvostat
