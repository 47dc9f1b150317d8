// Who uses the engine at the moment: one thread at a time.
//
// The database handles, the pool of record sets and the caches of the records are the process's and not protected. A
// thread uses them from the first record set that it has out of the pool, or the first run that it has begun
// (GetMemForTables), until the last of them is given back (ReleaseRSet, DeleteMemForTables). Then another thread may go
// on. One that does not wait for that corrupts them.
//
// A debug build of the library (without NDEBUG) says so on stderr and aborts; a release build checks nothing. What is
// not checked: record sets made by hand, and runs that overlap without either of those two. Threads that a store starts
// for itself are no users.
#pragma once

namespace orvostat {

// One use begins or ends; it may end on another thread. An end without a beginning is ignored.
void BeginneNutzung();
void BeendeNutzung();

} // namespace orvostat
