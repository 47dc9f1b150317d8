# orvo_compiler(<target>): language, warnings and sanitizers, the same for every target of this project.

function(orvo_compiler target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)

    # g++ 12 reports overlaps inside std::string that are none (its bug 105651, fixed in 13).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()

    # Nobody puts a function of his own in the place of one of ours, so calls among them need not be prepared for it.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    endif()

    if(ORVOSTATBS_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()

    if(ORVOSTATBS_SANITIZE)
        set(sanitizers -fsanitize=${ORVOSTATBS_SANITIZE} -fno-sanitize-recover=all)
        target_compile_options(${target} PRIVATE ${sanitizers} -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC ${sanitizers})
        # With the checks compiled in, g++ takes the paths they add for uses of unset variables.
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
        endif()
    endif()
endfunction()
