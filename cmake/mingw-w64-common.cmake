# Shared part of the MinGW-w64 toolchains; the per-target files set
# ZEL_MINGW_TRIPLE and include this one.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 6.1)

# The POSIX thread model gives the C++ runtime std::mutex and std::thread;
# linked statically, it adds no DLL of its own. Fall back to the plain name
# where the distribution ships only one flavour.
find_program(ZEL_MINGW_CXX NAMES ${ZEL_MINGW_TRIPLE}-g++-posix ${ZEL_MINGW_TRIPLE}-g++ REQUIRED)
find_program(ZEL_MINGW_CC NAMES ${ZEL_MINGW_TRIPLE}-gcc-posix ${ZEL_MINGW_TRIPLE}-gcc REQUIRED)
find_program(ZEL_MINGW_RC NAMES ${ZEL_MINGW_TRIPLE}-windres)
set(CMAKE_CXX_COMPILER ${ZEL_MINGW_CXX})
set(CMAKE_C_COMPILER ${ZEL_MINGW_CC})
if(ZEL_MINGW_RC)
  set(CMAKE_RC_COMPILER ${ZEL_MINGW_RC})
endif()

set(CMAKE_FIND_ROOT_PATH /usr/${ZEL_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

