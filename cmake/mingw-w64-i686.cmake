# Cross build of ClientData.dll for 32-bit Windows, the client's own target:
#   cmake -S . -B build-win32 -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-i686.cmake
# Member functions use thiscall (object in ECX, callee pops its arguments),
# the convention of the client's compiler and GCC's default on this target.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(ZEL_MINGW_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
