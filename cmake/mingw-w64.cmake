# Cross-compiling for 64-bit Windows with Debian's g++-mingw-w64-x86-64-posix.
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
# One file of system libraries only: nothing to install beside the program.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# ctest runs the test programs through it.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
# GCC takes for granted which registers a template's function leaves alone, from the copy of it that it compiled itself; but the
# linker may have taken another file's copy, compiled with other options.
set(CMAKE_CXX_FLAGS_INIT "-fno-ipa-ra")
