# Installs in two components: `runtime` is the library, `development` everything that is needed to build against it.
include(CMakePackageConfigHelpers)

# The library, and the link that linkers look for.
install(TARGETS korbase EXPORT korbase-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

# The headers, in a folder of their own.
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/korbase COMPONENT development)

# find_package(korbase 1.4) gives the target korbase::korbase.
set(korbase_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/korbase)
install(EXPORT korbase-targets NAMESPACE korbase:: DESTINATION ${korbase_package_dir}
        COMPONENT development)
configure_package_config_file(cmake/korbase-config.cmake.in korbase-config.cmake
                              INSTALL_DESTINATION ${korbase_package_dir})
write_basic_package_version_file(korbase-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korbase-config.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/korbase-config-version.cmake
        DESTINATION ${korbase_package_dir} COMPONENT development)

# pkg-config. The file finds its prefix from where it stands, so that an installed tree may move.
set(korbase_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH korbase_pkgconfig_up /${korbase_pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" korbase_pkgconfig_up ${korbase_pkgconfig_up})
configure_file(cmake/korbase.pc.in korbase.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/korbase.pc DESTINATION ${korbase_pkgconfig_dir}
        COMPONENT development)

# gdb finds the printers by the path of the library when both are below /usr.
install(FILES debug/korbase_gdb.py RENAME libkorbase.so.1.4-gdb.py COMPONENT development
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR})
