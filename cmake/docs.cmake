# The reference as HTML, in reference/html of the build directory.
find_package(Doxygen REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
configure_file(docs/Doxyfile.in Doxyfile @ONLY)
file(GLOB pages CONFIGURE_DEPENDS docs/*)
set(index ${PROJECT_BINARY_DIR}/reference/html/index.html)
add_custom_command(OUTPUT ${index}
  COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  DEPENDS ${pages} ${BEDPLATE_HEADERS} README.md ${PROJECT_BINARY_DIR}/Doxyfile
  COMMENT "Making the reference: ${index}" VERBATIM)
add_custom_target(bedplate_docs ALL DEPENDS ${index})
