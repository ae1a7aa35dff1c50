# Builds for 32-bit x86 with a 64-bit machine's own g++ or clang++ (on Debian, install g++-multilib).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
# Where Debian and its relatives keep 32-bit libraries and what comes with them: /usr/lib/i386-linux-gnu.
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_CXX_FLAGS_INIT -m32)

# Naming the system makes CMake assume a foreign one. These programs run here: try_run and the tests work as usual.
set(CMAKE_CROSSCOMPILING OFF)

# By the kernel or by an emulator: run-32 says it, once in a run of CMake, which reads this file for each of its own tests
# of the compiler too. Where there is no way at all, run-32 takes the emulator's place and says so.
set(BEDPLATE_RUN_32 ${CMAKE_CURRENT_LIST_DIR}/../scripts/run-32)
if(NOT CMAKE_CROSSCOMPILING_EMULATOR AND EXISTS ${BEDPLATE_RUN_32})
  execute_process(COMMAND ${BEDPLATE_RUN_32}
    OUTPUT_VARIABLE BEDPLATE_RUN_32_WAY OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{BEDPLATE_RUN32} "${BEDPLATE_RUN_32_WAY}")
  if(BEDPLATE_RUN_32_WAY MATCHES "^emulator (.*)")
    separate_arguments(CMAKE_CROSSCOMPILING_EMULATOR UNIX_COMMAND "${CMAKE_MATCH_1}")
  elseif(BEDPLATE_RUN_32_WAY STREQUAL "none")
    set(CMAKE_CROSSCOMPILING_EMULATOR ${BEDPLATE_RUN_32})
  endif()
  if(NOT BEDPLATE_RUN_32_WAY STREQUAL "kernel" AND CMAKE_BUILD_TYPE STREQUAL "Asan")
    message(FATAL_ERROR "AddressSanitizer at 32 bits takes a kernel that starts 32-bit programs: "
      "use the presets native-asan and i386-ubsan here")
  endif()
endif()
