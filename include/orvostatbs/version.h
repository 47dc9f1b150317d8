// The version, for those who compile against more than one: the only macros that the headers leave. The build reads it
// from here.
//
// Versions of one MAJOR.MINOR fit together: a program that was linked with the shared library of one runs with that of
// any other.
#pragma once

#define ORVOSTATBS_VERSION_MAJOR 0
#define ORVOSTATBS_VERSION_MINOR 1
#define ORVOSTATBS_VERSION_PATCH 0
#define ORVOSTATBS_VERSION "0.1.0"
