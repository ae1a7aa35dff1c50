# Debian packages by CPack: libbedplate1 and libbedplate-dev, for the architecture that the build is for. scripts/package
# calls this with the directories that Debian wants.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386) # CPack would name the machine's
endif()
find_program(BEDPLATE_DPKG dpkg REQUIRED)
execute_process(COMMAND ${BEDPLATE_DPKG} --print-architecture
  OUTPUT_VARIABLE machine OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(CPACK_DEBIAN_PACKAGE_ARCHITECTURE STREQUAL "i386" AND machine STREQUAL "amd64")
  file(CONFIGURE OUTPUT cpack-project.cmake @ONLY
    CONTENT "set(SHLIBDEPS_EXECUTABLE @CMAKE_CURRENT_LIST_DIR@/dpkg-shlibdeps-multilib)\n")
  set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_BINARY_DIR}/cpack-project.cmake)
endif()

set(library libbedplate${PROJECT_VERSION_MAJOR})
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog entry LIMIT_COUNT 1)
string(REGEX REPLACE ".*[(](.*)-(.*)[)].*" "\\1;\\2" version "${entry}")
list(GET version 0 upstream_version)
list(GET version 1 CPACK_DEBIAN_PACKAGE_RELEASE)
if(NOT upstream_version STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "cmake/debian/changelog is about ${upstream_version}, but this is ${PROJECT_VERSION}")
endif()

# Policy wants these in each package.
execute_process(COMMAND gzip -9n INPUT_FILE ${CMAKE_CURRENT_LIST_DIR}/changelog
  OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.Debian.gz COMMAND_ERROR_IS_FATAL ANY)
file(READ LICENSE license)
string(REGEX MATCH "Copyright [(]c[)] ([^\n]*)\n+(.*)" license "${license}")
set(copyright_holder ${CMAKE_MATCH_1})
string(REGEX REPLACE "\n\n" "\n.\n" license "${CMAKE_MATCH_2}")
string(REGEX REPLACE "\n([^\n])" "\n \\1" license "\n${license}")
file(CONFIGURE OUTPUT copyright @ONLY CONTENT
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: bedplate

Files: *
Copyright: @copyright_holder@
License: Expat@license@")
foreach(component runtime development)
  set(directory ${library})
  if(component STREQUAL "development")
    set(directory libbedplate-dev)
  endif()
  install(FILES ${PROJECT_BINARY_DIR}/changelog.Debian.gz ${CMAKE_CURRENT_BINARY_DIR}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${directory} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/changelog maintainer REGEX "^ -- ")
string(REGEX REPLACE "^ -- (.*>)  .*" "\\1" CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

# CPack has no variable for Multi-Arch yet; what follows the section's line break becomes a field of its own.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs\nMulti-Arch: same")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Strings with in-place editing, growable arrays, hash tables, dates, time
stamps and number formatting as plain C++ classes with a pinned binary
layout.
.
This package contains the shared library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/triggers)
# Whatever the permissions of the checkout are.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbedplate-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel\nMulti-Arch: same")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Strings with in-place editing, growable arrays, hash tables, dates, time
stamps and number formatting as plain C++ classes with a pinned binary
layout.
.
This package contains the headers, the documentation, the files for CMake
and pkg-config, and the debugger's pretty-printers.")
include(CPack)
