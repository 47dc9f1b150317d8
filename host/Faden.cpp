#include "orvostatbs/host/Faden.h"

#include "orvostatbs/host/detail/Reihenfolge.h"

#ifndef NDEBUG
#include <mutex>
#include <thread>
#endif

namespace orvostat {

#ifndef NDEBUG

namespace {

std::mutex s_mutex;
std::thread::id s_faden; // of the user, while there is one
int s_iNutzungen = 0;

} // namespace

void BeginneNutzung() {
    const std::lock_guard sperre(s_mutex);
    if (s_iNutzungen++ == 0) s_faden = std::this_thread::get_id();
    Verlange(s_faden == std::this_thread::get_id(), "a second thread uses the engine while another one's run "
                                                    "or record sets are open; there is one run in "
                                                    "a process at a time.");
}

void BeendeNutzung() {
    const std::lock_guard sperre(s_mutex);
    if (s_iNutzungen > 0) --s_iNutzungen;
}

#else

void BeginneNutzung() {}
void BeendeNutzung() {}

#endif

} // namespace orvostat
