# Cross-compiles the Qt-free core, quarle-qc and the core tests for Windows
# with mingw-w64; ctest runs the results under wine.
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
# One self-contained executable each: no runtime DLLs to find under wine.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
find_program(QUARLE_WINE NAMES wine64 wine)
if(QUARLE_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${QUARLE_WINE})
endif()
