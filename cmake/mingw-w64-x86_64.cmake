# Cross-builds for 64-bit Windows with Debian's MinGW-w64 compilers. The
# "posix" flavour is the one whose C++ library has std::thread and
# std::mutex (over winpthreads).
#
#   cmake -S . -B build-windows -G Ninja \
#     -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
#
# scripts/test-windows.sh adds the Wine emulator and runs the tests.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VXUTILITY_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VXUTILITY_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VXUTILITY_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${VXUTILITY_MINGW_TRIPLET}-windres)

# Target libraries and packages come from the MinGW tree only; programs run
# on the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${VXUTILITY_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# RapidJSON is header-only, so the build machine's copy serves this target
# too; the package file beside this one hands it over.
set(RapidJSON_DIR ${CMAKE_CURRENT_LIST_DIR}/mingw-w64 CACHE PATH "RapidJSON package for the Windows build")
