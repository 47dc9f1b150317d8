# Folders as targets, each seeing only the public headers it may use.
#
# The public headers of all folders stand together under include/orvostatbs/. A target does not get that directory to
# search but a view of it in the build tree, with a link for each folder it may use and nothing else: an include of
# any other folder does not compile.

# orvo_view(<variable> <name> <folder>...): makes or updates the view <name>; its directory goes into <variable>.
function(orvo_view variable name)
    set(view ${PROJECT_BINARY_DIR}/views/${name})
    file(MAKE_DIRECTORY ${view}/orvostatbs)
    file(GLOB present RELATIVE ${view}/orvostatbs ${view}/orvostatbs/*)
    foreach(folder IN LISTS present)
        if(NOT folder IN_LIST ARGN)
            file(REMOVE ${view}/orvostatbs/${folder})
        endif()
    endforeach()
    foreach(folder IN LISTS ARGN)
        if(EXISTS ${PROJECT_SOURCE_DIR}/include/orvostatbs/${folder} AND NOT IS_SYMLINK ${view}/orvostatbs/${folder})
            file(CREATE_LINK ${PROJECT_SOURCE_DIR}/include/orvostatbs/${folder} ${view}/orvostatbs/${folder} SYMBOLIC)
        endif()
    endforeach()
    set(${variable} ${view} PARENT_SCOPE)
endfunction()

# orvo_target_name(<variable> <folder>): store/memory is orvo_store_memory.
function(orvo_target_name variable folder)
    string(REPLACE "/" "_" name ${folder})
    set(${variable} orvo_${name} PARENT_SCOPE)
endfunction()

# orvo_folder(<folder> [HEADERS <name>] [USES <folder>...] [LINKS <library>...])
#
# An object library of the folder's sources. HEADERS is the name of its public header folder where that differs. A
# folder that has no sources yet is passed over.
function(orvo_folder folder)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "HEADERS" "USES;LINKS")
    if(NOT arg_HEADERS)
        set(arg_HEADERS ${folder})
    endif()
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    if(NOT sources)
        return()
    endif()
    orvo_target_name(target ${folder})
    orvo_view(view ${target} ${arg_HEADERS} ${arg_USES})
    add_library(${target} OBJECT ${sources})
    orvo_compiler(${target})
    target_include_directories(${target} PRIVATE ${view} ${PROJECT_SOURCE_DIR}/${folder})
    target_link_libraries(${target} PUBLIC ${arg_LINKS})
endfunction()

# orvo_link_folders(<target> <folder>...): adds the objects of those folders that have any.
function(orvo_link_folders target)
    foreach(folder IN LISTS ARGN)
        orvo_target_name(library ${folder})
        if(TARGET ${library})
            target_link_libraries(${target} PRIVATE ${library})
        endif()
    endforeach()
endfunction()

# orvo_library(<target> <exported name> <folder>...): the folders as one library for other projects, shared or static as
# BUILD_SHARED_LIBS says.
function(orvo_library target exported)
    set(objects)
    foreach(folder IN LISTS ARGN)
        orvo_target_name(library ${folder})
        if(TARGET ${library})
            list(APPEND objects $<TARGET_OBJECTS:${library}>)
        endif()
    endforeach()
    if(NOT objects)
        return()
    endif()
    add_library(${target} ${objects})
    add_library(OrvoStatBs::${exported} ALIAS ${target})
    orvo_compiler(${target})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${exported} LINKER_LANGUAGE CXX
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    target_include_directories(${target} INTERFACE
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${target} PUBLIC ${CMAKE_DL_LIBS})
endfunction()

set(ORVO_STORES store/memory store/sqlite store/postgres)
set(ORVO_ENGINE host records accu lauf files service plan hvm calendar)
