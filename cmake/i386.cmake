# Builds for 32-bit x86 with a 64-bit machine's own g++ or clang++ (on Debian, install g++-multilib).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
# Where Debian and its relatives keep 32-bit libraries and what comes with them: /usr/lib/i386-linux-gnu.
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_CXX_FLAGS_INIT -m32)

# Naming the system makes CMake assume a foreign one. These programs run here: try_run and the tests work as usual.
set(CMAKE_CROSSCOMPILING OFF)
