# The sample practice. It may use the engine's headers and the library's; the program, benchmarks and tests use it. The
# files of data/ become part of it, as MusterDatei.h in the build tree; a change to one of them configures anew.

set(daten "")
file(GLOB dateien CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/*.csv)
foreach(datei IN LISTS dateien)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${datei})
    cmake_path(GET datei STEM name)
    file(READ ${datei} text)
    string(APPEND daten "    {\"${name}\", R\"csv(${text})csv\"},\n")
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/muster/MusterDatei.h @ONLY CONTENT
"#pragma once
namespace orvostat {
inline constexpr struct {
    const char * pName;
    const char * pText;
} MUSTERDATEIEN[] = {
@daten@};
} // namespace orvostat
")

orvo_folder(muster USES host records hvm calendar)
target_include_directories(orvo_muster
    PUBLIC ${PROJECT_SOURCE_DIR}/muster PRIVATE ${PROJECT_BINARY_DIR}/muster)
