# The install rules: component "runtime" is what programs need to run, "development" what building them takes.
include(CMakePackageConfigHelpers)
set(BEDPLATE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/bedplate)
set(BEDPLATE_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS bedplate bedplate_bare_headers EXPORT bedplate
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

# The library depends on no other package, so the exported targets are the whole package configuration.
install(EXPORT bedplate NAMESPACE bedplate:: FILE bedplate-config.cmake
  DESTINATION ${BEDPLATE_CMAKE_DIR} COMPONENT development)
write_basic_package_version_file(bedplate-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/bedplate-config-version.cmake
  DESTINATION ${BEDPLATE_CMAKE_DIR} COMPONENT development)

# The .pc files find the prefix from their own place, so the installed tree may be moved.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
  BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${BEDPLATE_PKGCONFIG_DIR} OUTPUT_VARIABLE BEDPLATE_PC_TO_PREFIX)
foreach(package bedplate bedplate-bare-headers)
  configure_file(cmake/${package}.pc.in ${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${BEDPLATE_PKGCONFIG_DIR} COMPONENT development)
endforeach()

# As in the source tree, so that the pages' links to each other, to the examples and to the headers hold; these are there
# by a link.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg")
if(BEDPLATE_DOCS)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
endif()
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
  PATTERN CMakeLists.txt EXCLUDE)
file(RELATIVE_PATH headers ${CMAKE_INSTALL_FULL_DOCDIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR}/bedplate)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/documents)
file(CREATE_LINK ${headers} ${PROJECT_BINARY_DIR}/documents/include SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/documents/include DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

# gdb looks for a library's printers beside it, where it must be told to trust them, and in a directory of its own that
# it trusts, which only an installation into the system may use. A static library's are for gdb's command "source".
set(printers libbedplate.so.${PROJECT_VERSION}-gdb.py)
if(BEDPLATE_TYPE STREQUAL "STATIC")
  set(printers bedplate-gdb.py)
  set(BEDPLATE_GDB_DIR ${CMAKE_INSTALL_DATADIR}/bedplate)
endif()
if(NOT DEFINED BEDPLATE_GDB_DIR)
  set(BEDPLATE_GDB_DIR ${CMAKE_INSTALL_LIBDIR})
  if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(BEDPLATE_GDB_DIR ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR})
  endif()
endif()
install(FILES debugger/bedplate-gdb.py RENAME ${printers}
  DESTINATION ${BEDPLATE_GDB_DIR} COMPONENT development)
