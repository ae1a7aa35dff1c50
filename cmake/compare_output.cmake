# Runs a program; fails unless it succeeds, writes nothing to stderr, and writes to stdout exactly what a file holds.
# Usage: cmake -D EXPECTED=FILE -D ACTUAL=FILE [-D VARYING=REGEX] -P compare_output.cmake -- PROGRAM [ARGUMENT]...
# ACTUAL is where the output is kept. What matches VARYING in it changes from run to run: "<varying>" takes its place.

set(command "")
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(index RANGE 1 ${last})
  if(DEFINED after_dashes)
    list(APPEND command "${CMAKE_ARGV${index}}")
  elseif(CMAKE_ARGV${index} STREQUAL "--")
    set(after_dashes ON)
  endif()
endforeach()

execute_process(COMMAND ${command} OUTPUT_FILE ${ACTUAL} ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT errors STREQUAL "")
  message(FATAL_ERROR "ended with ${status}, stderr: ${errors}")
endif()

if(VARYING)
  file(READ ${ACTUAL} output)
  string(REGEX REPLACE "${VARYING}" "<varying>" output "${output}")
  file(WRITE ${ACTUAL} "${output}")
endif()

execute_process(COMMAND diff -u ${EXPECTED} ${ACTUAL} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the output differs from ${EXPECTED}")
endif()
