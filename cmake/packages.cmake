# Debian packages, one for each component: libkorbase1.4 and libkorbase-dev. scripts/package builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korbase)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_CONTACT "libkorbase developers <korbase@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# CPack cannot write the second field, so it rides on the first: both architectures can be installed side by side.
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional\nMulti-Arch: same")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libkorbase1.4)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"Text, numbers with scale letters, containers, services of the operating
system, typed messages on sockets, and integer geometry of polygons.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkorbase-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"Headers, the link to the shared library, and what CMake and pkg-config
need to build programs against libkorbase.")

# What dpkg-shlibdeps says of programs that link the library, and the trigger that runs ldconfig.
set(korbase_debian_dir ${CMAKE_CURRENT_BINARY_DIR}/debian)
file(WRITE ${korbase_debian_dir}/shlibs "libkorbase 1.4 libkorbase1.4 (>= ${PROJECT_VERSION})\n")
file(WRITE ${korbase_debian_dir}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${korbase_debian_dir}/shlibs ${korbase_debian_dir}/triggers)

if(CMAKE_LIBRARY_ARCHITECTURE STREQUAL "arm-linux-gnueabihf")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
elseif(CMAKE_LIBRARY_ARCHITECTURE STREQUAL "x86_64-linux-gnu")
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
endif()
# What the library links, in the packages of the oldest Debian that it is built for. CPack would ask dpkg-shlibdeps, but
# then it also adds scripts that call ldconfig; and for another architecture dpkg-shlibdeps has no answer.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= 2.36), libgcc-s1 (>= 12), libstdc++6 (>= 12)")
include(CPack)
