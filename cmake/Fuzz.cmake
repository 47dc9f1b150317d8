# One fuzz target per file in fuzz/, made by clang++ only. They see everything but the program's main function.

file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*.cpp)
foreach(source IN LISTS sources)
    cmake_path(GET source STEM name)
    set(target orvo_fuzz_${name})
    add_executable(${target} ${source})
    orvo_compiler(${target})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR})
    target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    target_link_libraries(${target} PRIVATE ${CMAKE_DL_LIBS})
    orvo_link_folders(${target} program muster ${ORVO_ENGINE} ${ORVO_STORES})
endforeach()
