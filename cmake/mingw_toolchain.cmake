# Cross build for Windows x64 with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# gcc 12 for Windows: with -fipa-ra a caller relies on the registers that its own copy of an inline function leaves alone,
# but the linker may keep the copy of another object. Drop when it no longer takes such functions for local ones.
set(CMAKE_CXX_FLAGS_INIT -fno-ipa-ra)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What is built here is run with Wine: CTest puts it before each program.
find_program(TRADEBOOK_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(TRADEBOOK_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TRADEBOOK_WINE})
endif()
