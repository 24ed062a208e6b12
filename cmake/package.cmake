# Debian packages: `cpack` makes one of each component.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Velmara developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each component has its own
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev tools)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}: shared libraries
Typed lists of frequencies of a radio monitoring and direction-finding system,
with their receiver, demodulator, location and detection data.
It validates them and exchanges them as XML, binary streams and CSV files.")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_COMPONENT_DEV_DESCRIPTION "${PROJECT_DESCRIPTION}: development files
Headers, the CMake package Velmara, a pkg-config file and an example program.
Programs need C++20.")
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "${PROJECT_DESCRIPTION}: command line tool
The program velmara works on frequency lists in files.
Here are also the description of the file formats and lists to try.")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/base ${PROJECT_BINARY_DIR}/frequencystore)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvelmara${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libvelmara-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS velmara-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME velmara-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)

include(CPack)
