# The program orvostat. It may use everything. Everything but its main function is an object library, so that tests
# and benchmarks can make a sample practice without starting a process.

# orvo_embed(<name> <file>): the file's bytes as the std::string_view <name> in embedded.cpp, which
# EingebetteteDateien.h declares.
set(embedded "#include \"EingebetteteDateien.h\"\n")
macro(orvo_embed name file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(APPEND embedded "static constexpr unsigned char BYTES_${name}[] = {${bytes}};\n"
        "const std::string_view orvostat::${name}(reinterpret_cast<const char *>(BYTES_${name}), sizeof BYTES_${name});\n")
endmacro()

# The library that draws, with its licence, goes into every report.
find_file(ORVOSTATBS_CHARTJS chart.min.js PATHS /usr/share/javascript/chart.js /usr/share/nodejs/chart.js/dist)
find_file(ORVOSTATBS_CHARTJS_LICENCE copyright PATHS /usr/share/doc/libjs-chart.js NO_DEFAULT_PATH)
if(NOT ORVOSTATBS_CHARTJS OR NOT ORVOSTATBS_CHARTJS_LICENCE)
    message(FATAL_ERROR "Chart.js is missing: apt-get install libjs-chart.js, or set ORVOSTATBS_CHARTJS and "
        "ORVOSTATBS_CHARTJS_LICENCE to chart.min.js and its licence")
endif()
orvo_embed(BERICHT_CSS ${PROJECT_SOURCE_DIR}/program/bericht/bericht.css)
orvo_embed(BERICHT_JS ${PROJECT_SOURCE_DIR}/program/bericht/bericht.js)
orvo_embed(CHART_JS ${ORVOSTATBS_CHARTJS})
orvo_embed(CHART_LIZENZ ${ORVOSTATBS_CHARTJS_LICENCE})
orvo_embed(TABELLENVORLAGE ${PROJECT_SOURCE_DIR}/data/Orvo2Excel.fods)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/program/embedded.cpp @ONLY CONTENT "${embedded}")

file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/program/*.cpp)
set(main ${PROJECT_SOURCE_DIR}/program/main.cpp)
list(REMOVE_ITEM sources ${main})

if(sources)
    add_library(orvo_program OBJECT ${sources} ${PROJECT_BINARY_DIR}/program/embedded.cpp)
    orvo_compiler(orvo_program)
    target_include_directories(orvo_program
        PUBLIC ${PROJECT_SOURCE_DIR}/program ${PROJECT_SOURCE_DIR}/muster PRIVATE ${PROJECT_SOURCE_DIR}/include)
    if(ORVOSTATBS_POSTGRES)
        target_compile_definitions(orvo_program PRIVATE ORVOSTATBS_POSTGRES)
    endif()
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
