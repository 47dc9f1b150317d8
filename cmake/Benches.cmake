# One benchmark executable per file in bench/. They see everything, the program's sample practice included.
#
# ctest runs each shortly, to show that it works: label "bench", with ORVOSTATBS_BENCH_SMALL=1 in the environment, on
# which a benchmark takes its smallest practice. Numbers worth reading come from running one by hand.

file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/bench/*.cpp)
foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    if(name STREQUAL "ServerBench" AND NOT ORVOSTATBS_POSTGRES)
        continue()
    endif()
    set(target orvo_bench_${name})
    add_executable(${target} ${source})
    orvo_compiler(${target})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${target} PRIVATE benchmark::benchmark ${CMAKE_DL_LIBS})
    orvo_link_folders(${target} program muster ${ORVO_ENGINE} ${ORVO_STORES})
    add_test(NAME bench.${name} COMMAND ${target} --benchmark_min_time=0.01)
    set_tests_properties(bench.${name} PROPERTIES
        LABELS bench TIMEOUT 300 ENVIRONMENT ORVOSTATBS_BENCH_SMALL=1)
endforeach()
