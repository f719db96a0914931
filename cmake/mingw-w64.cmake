# Windows from Linux: Debian's MinGW-w64 with POSIX threads; what it builds runs under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

# Nothing of the building machine's own headers and libraries. Who needs more than the compiler brings
# names its folder in CMAKE_FIND_ROOT_PATH.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The compiler's runtime goes into the program: no DLL has to lie beside it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# GCC 12, when it optimises, takes parts of a std::string for memory that overlaps itself.
set(CMAKE_CXX_FLAGS_INIT -Wno-restrict)
