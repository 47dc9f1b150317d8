# The program orvostat. It may use everything. Everything but its main function is an object library, so that tests
# and benchmarks can make a sample practice without starting a process.

file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/program/*.cpp)
set(main ${PROJECT_SOURCE_DIR}/program/main.cpp)
list(REMOVE_ITEM sources ${main})

# The spreadsheet's workbook is part of it, as Tabellenvorlage.h in the build tree.
set(datei ${PROJECT_SOURCE_DIR}/data/Orvo2Excel.fods)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${datei})
file(READ ${datei} text)
file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/program/Tabellenvorlage.h CONTENT
"#pragma once
namespace orvostat {
inline constexpr const char * TABELLENVORLAGE = R\"fods(${text})fods\";
} // namespace orvostat
")

if(sources)
    add_library(orvo_program OBJECT ${sources})
    orvo_compiler(orvo_program)
    target_include_directories(orvo_program
        PUBLIC ${PROJECT_SOURCE_DIR}/program ${PROJECT_SOURCE_DIR}/muster PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/program)
    target_link_libraries(orvo_program PUBLIC CLI11::CLI11 fmt::fmt OpenSSL::Crypto PRIVATE nlohmann_json::nlohmann_json)
endif()

if(EXISTS ${main})
    add_executable(orvostat ${main})
    orvo_compiler(orvostat)
    target_include_directories(orvostat PRIVATE
        ${PROJECT_SOURCE_DIR}/program ${PROJECT_SOURCE_DIR}/muster ${PROJECT_SOURCE_DIR}/include)
    target_link_libraries(orvostat PRIVATE CLI11::CLI11 fmt::fmt OpenSSL::Crypto ${CMAKE_DL_LIBS})
    orvo_link_folders(orvostat program muster ${ORVO_ENGINE} ${ORVO_STORES})
endif()
