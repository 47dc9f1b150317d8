# The package: find_package(OrvoStatBs [COMPONENTS Sqlite Postgres]) and pkg-config. Both stay right when the installed
# tree is moved. The stores over a database have exports of their own, so that the engine alone asks for nothing.

include(CMakePackageConfigHelpers)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/OrvoStatBs)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/orvostatbs DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN sqlite EXCLUDE PATTERN postgres EXCLUDE)
install(TARGETS orvostatbs EXPORT OrvoStatBsTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT OrvoStatBsTargets NAMESPACE OrvoStatBs:: DESTINATION ${package})

set(pkgconfig orvostatbs)
foreach(store IN ITEMS Sqlite Postgres)
    string(TOLOWER ${store} name)
    if(NOT TARGET orvostatbs_${name})
        continue()
    endif()
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/orvostatbs/${name}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/orvostatbs FILES_MATCHING PATTERN "*.h" PATTERN "*.def")
    install(TARGETS orvostatbs_${name} EXPORT OrvoStatBs${store}Targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(EXPORT OrvoStatBs${store}Targets NAMESPACE OrvoStatBs:: DESTINATION ${package})
    list(APPEND pkgconfig orvostatbs-${name})
endforeach()

if(TARGET orvostat)
    install(TARGETS orvostat RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN "*.md")

# Who links the shared library of the SQLite part needs no libsqlite3 of his own to build.
set(ORVO_SHARED OFF)
if(BUILD_SHARED_LIBS)
    set(ORVO_SHARED ON)
endif()
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OrvoStatBsConfig.cmake.in
    ${PROJECT_BINARY_DIR}/OrvoStatBsConfig.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrvoStatBsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvoStatBsConfig.cmake ${PROJECT_BINARY_DIR}/OrvoStatBsConfigVersion.cmake
    DESTINATION ${package})

# From the directory of the .pc files up to the prefix.
file(RELATIVE_PATH ORVO_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
set(ORVO_PC_SQLITE ", sqlite3")
if(BUILD_SHARED_LIBS)
    set(ORVO_PC_SQLITE "\nRequires.private: sqlite3")
endif()
set(ORVO_PC_DL)
if(CMAKE_DL_LIBS)
    set(ORVO_PC_DL " -l${CMAKE_DL_LIBS}")
endif()
foreach(name IN LISTS pkgconfig)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
