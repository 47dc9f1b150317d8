# One executable per folder under tests/, each test case a test of its own for ctest.

include(GoogleTest)

# Builders and recorders that several folders' tests share, included as "support/<name>.h".
file(GLOB support CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/support/*.cpp)
if(support)
    add_library(orvo_test_support STATIC ${support})
    orvo_compiler(orvo_test_support)
    target_include_directories(orvo_test_support PRIVATE
        ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/include)
    target_link_libraries(orvo_test_support PUBLIC GTest::gtest)
endif()

# orvo_test_executable(<folder> <include directory> <folder>...): tests/<folder>/*.cpp, linked to the folders named.
function(orvo_test_executable folder include)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    set(target orvo_test_${folder})
    add_executable(${target} ${sources})
    orvo_compiler(${target})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${include})
    target_compile_definitions(${target} PRIVATE ORVOSTATBS_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
    if(TARGET orvo_test_support)
        target_link_libraries(${target} PRIVATE orvo_test_support)
    endif()
    target_link_libraries(${target} PRIVATE GTest::gtest_main ${CMAKE_DL_LIBS})
    orvo_link_folders(${target} ${ARGN})
    # Those that need a server share one, so they are one test.
    gtest_discover_tests(${target} TEST_PREFIX ${folder}. NO_PRETTY_VALUES TEST_FILTER "-Server*"
        DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 LABELS ${folder})
    if(ORVOSTATBS_POSTGRES AND folder MATCHES "^(store|program)$")
        add_test(NAME ${folder}.Server COMMAND ${target} --gtest_filter=Server*)
        set_tests_properties(${folder}.Server PROPERTIES TIMEOUT 300 LABELS ${folder})
    endif()
endfunction()

# orvo_tests(<folder> USES <folder>...): sees the public headers of those folders and of both stores.
function(orvo_tests folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES")
    orvo_view(view test_${folder} ${arg_USES} store sqlite postgres)
    orvo_test_executable(${folder} ${view} ${arg_USES} ${ORVO_STORES})
endfunction()

# The program's tests see everything and run the built program, whose path they get as ORVOSTATBS_PROGRAM_PATH.
function(orvo_program_tests)
    orvo_test_executable(program ${PROJECT_SOURCE_DIR}/include program muster ${ORVO_ENGINE} ${ORVO_STORES})
    if(TARGET orvo_test_program AND TARGET orvostat)
        target_compile_definitions(orvo_test_program PRIVATE ORVOSTATBS_PROGRAM_PATH="$<TARGET_FILE:orvostat>")
        if(ORVOSTATBS_SANITIZE)
            target_compile_definitions(orvo_test_program PRIVATE ORVOSTATBS_SANITIZED)
        endif()
        target_link_libraries(orvo_test_program PRIVATE nlohmann_json::nlohmann_json)
        add_dependencies(orvo_test_program orvostat)
    endif()
endfunction()
