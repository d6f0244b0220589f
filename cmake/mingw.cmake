# A toolchain for Windows on Linux, x86-64: MinGW builds, Wine runs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

find_program(NRV718_MINGW ${CMAKE_CXX_COMPILER})
find_program(NRV718_WINE NAMES wine wine64)
find_path(NRV718_GOOGLETEST_SOURCE googletest/CMakeLists.txt PATHS /usr/src/googletest NO_CMAKE_FIND_ROOT_PATH)
if(NOT NRV718_MINGW OR NOT NRV718_WINE OR NOT NRV718_GOOGLETEST_SOURCE)
  message(FATAL_ERROR "Missing: apt-get install g++-mingw-w64-x86-64-posix wine64 wine googletest")
endif()

# The runtime inside each program, and the stack that Linux gives.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--stack,8388608")
# A Windows of the build's own, which says nothing of itself and asks for no more of it.
set(CMAKE_CROSSCOMPILING_EMULATOR env WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml= ${NRV718_WINE})

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
