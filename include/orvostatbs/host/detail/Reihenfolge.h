// The watch over the order of calls: for the library's own sources only.
#pragma once

namespace orvostat {

// In a debug build (without NDEBUG) says pSatz on stderr and aborts where bErfuellt is false; else does nothing.
#ifdef NDEBUG
inline void Verlange(bool, const char *) {}
#else
void Verlange(bool bErfuellt, const char * pSatz);
#endif

} // namespace orvostat
