# Cross build for 64-bit Windows with Debian's mingw-w64 (POSIX threads),
# run under Debian's wine64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Self-contained programs: wine finds no mingw runtime libraries beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# Each build has a wine prefix of its own, so its C: drive is its own too.
set(CMAKE_CROSSCOMPILING_EMULATOR
  sh ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh ${CMAKE_BINARY_DIR}/wine)
